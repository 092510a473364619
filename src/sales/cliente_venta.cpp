#include "sales/cliente_venta.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/formato.h"

#include <QSqlQuery>
#include <QStringList>
#include <limits>

namespace orv {

namespace {

const QString kCliente = QStringLiteral(
    "SELECT idVendedor, Nombre, Cuit, idTipoIva, Descuento, idTipoFormaPago, Domicilio, Telefono, Telefono2, "
    "\"e-mail\" FROM Vendedores WHERE ");

std::optional<ClienteVenta> lee(const Almacen& a, const QString& condicion, const QVariant& valor, bool vip) {
    QSqlQuery q = a.consulta(kCliente + condicion + QStringLiteral(" ORDER BY idVendedor"), {valor});
    if (!q.next()) return std::nullopt;
    ClienteVenta c;
    c.idVendedor = q.value(0).toLongLong();
    c.nombre = q.value(1).toString();
    c.cuit = q.value(2).toString();
    c.idTipoIva = q.value(3).toInt();
    c.descuento = q.value(4).toDouble();
    c.idTipoFormaPago = q.value(5);
    c.direccion = QStringList{q.value(6).toString(), q.value(7).toString(), q.value(8).toString(),
                              q.value(9).toString()}
                      .join(QStringLiteral(", "));
    c.vip = vip;
    return c;
}

} // namespace

std::optional<ClienteVenta> ClientePorNumero(const Almacen& a, const QString& texto) {
    if (!EsNumerico(QStringView(texto))) return std::nullopt;
    if (texto.size() < 6) {
        // Un número de cliente es un entero escrito con cifras ("1e99" no lo es).
        const auto id = LeeEntero(texto, std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max());
        if (!id) return std::nullopt;
        return lee(a, QStringLiteral("idVendedor = ?"), *id, false);
    }
    return lee(a, QStringLiteral("NroClienteVIP = ?"), texto, true);
}

std::optional<ClienteVenta> ClientePorId(const Almacen& a, qint64 idVendedor) {
    return lee(a, QStringLiteral("idVendedor = ?"), idVendedor, false);
}

namespace {
const QString kClientePredeterminado = QStringLiteral("ClientePredeterminado");
}

std::optional<ClienteVenta> ClientePredeterminado(const Almacen& a, const Configuracion& conf) {
    const auto id = LeeEntero(conf.lee(clave::miscelaneas, kClientePredeterminado).trimmed(), 1,
                              std::numeric_limits<qint64>::max());
    if (!id) return std::nullopt;
    return ClientePorId(a, *id);
}

void FijaClientePredeterminado(const Almacen& a, const Configuracion& conf, const QString& numero) {
    const QString texto = numero.trimmed();
    if (!texto.isEmpty()) {
        const auto id = LeeEntero(texto, 1, std::numeric_limits<qint64>::max());
        if (!id || !ClientePorId(a, *id))
            throw Aviso(QStringLiteral("No hay ningún cliente con el número ") + texto +
                        QStringLiteral(": escriba el número de un cliente o deje el campo vacío."));
    }
    conf.graba(clave::miscelaneas, kClientePredeterminado, texto);
}

std::optional<FormaDePago> LeeFormaDePago(const Almacen& a, qint64 idTipoFormaPago) {
    QSqlQuery q = a.consulta(
        QStringLiteral("SELECT EsACuenta, EsTarjetaCredito FROM FormasDePago WHERE idTipoFormaPago = ?"), {idTipoFormaPago});
    if (!q.next()) return std::nullopt;
    return FormaDePago{q.value(0).toInt() != 0, q.value(1).toInt() != 0};
}

void ValidaFPago(bool hayTiposIva, const QString& formaPago, const QString& tipoIva, const QString& descuento) {
    if (!hayTiposIva) throw Aviso(QStringLiteral("Seleccione un tipo de iva para el cliente!"));
    if (formaPago.isEmpty() || tipoIva.isEmpty() || !EsNumerico(QStringView(descuento)))
        throw Aviso(QStringLiteral("Datos mal ingresados !"));
}

QString ConsultaSeleccionClientes() {
    return QStringLiteral("SELECT Nombre, idVendedor, Domicilio, Localidad, Telefono, Cuit, NroClienteVIP "
                          "FROM Vendedores ORDER BY Nombre");
}

} // namespace orv
