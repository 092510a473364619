#include "customers/clientes.h"

#include "store/aviso.h"
#include "store/cuit.h"
#include "store/entrada.h"
#include "store/rutinas.h"

#include <QSqlQuery>
#include <algorithm>

namespace orv {

namespace {

const QString kClienteBorrado = QStringLiteral("El cliente ya no existe: otro puesto lo borró.");

QString texto(const QVariant& v) { return v.isNull() ? QString() : v.toString(); }

// Un número con decimales como lo muestra la ficha: "5", "12.5".
QString numero(const QVariant& v) { return v.isNull() ? QStringLiteral("0") : QString::number(v.toDouble(), 'g', 15); }

// Una clave elegida en un combo: nula si no hay elección.
QVariant clave(const QVariant& v) { return v.isNull() || !v.isValid() ? QVariant() : QVariant(v.toLongLong()); }

void controlaTextos(const DatosCliente& d) {
    const struct {
        const QString& valor;
        int largo;
        const char* campo;
    } textos[] = {{d.nombre, kLargoNombreCliente, "Nombre y Apellido"},
                  {d.empresa, kLargoEmpresaCliente, "Nombre / Empresa"},
                  {d.domicilio, kLargoDomicilioCliente, "Domicilio"},
                  {d.localidad, kLargoLocalidadCliente, "Localidad"},
                  {d.telefono, kLargoTelefonoCliente, "Telefono"},
                  {d.telefono2, kLargoTelefonoCliente, "Telefono (2)"},
                  {d.email, kLargoEmailCliente, "e-mail"},
                  {d.cuit, kLargoCuitCliente, "CUIT"},
                  {d.nroClienteVIP, kLargoTarjetaCliente, "Cliente VIP nro"}};
    for (const auto& t : textos) ExigeTexto(t.valor, t.largo, QString::fromUtf8(t.campo));
}

void controlaTarjeta(const Almacen& a, std::optional<qint64> idVendedor, const QString& tarjeta) {
    if (tarjeta.isEmpty()) return;
    const bool cifras = std::all_of(tarjeta.cbegin(), tarjeta.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!cifras || tarjeta.size() < kCifrasTarjeta)
        throw Aviso(QStringLiteral("Error, el número de cliente VIP lleva sólo cifras, al menos %1!").arg(kCifrasTarjeta));
    // Una tarjeta leída en la venta tiene que dar un solo cliente.
    QSqlQuery otro = a.consulta(QStringLiteral("SELECT Nombre FROM Vendedores WHERE NroClienteVIP = ? AND idVendedor <> ? "
                                               "ORDER BY idVendedor LIMIT 1"),
                                {tarjeta, idVendedor.value_or(0)});
    if (otro.next())
        throw Aviso(QStringLiteral("Error, la tarjeta ") + tarjeta + QStringLiteral(" ya es del cliente \"") +
                    otro.value(0).toString() + QStringLiteral("\"!"));
}

} // namespace

std::optional<DatosCliente> LeeCliente(const Almacen& a, qint64 idVendedor) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Nombre, Empresa, Domicilio, Localidad, Telefono, Telefono2, \"e-mail\", "
                                            "Cuit, Descuento, NroClienteVIP, idZona, idTipoIva, idTipoFormaPago "
                                            "FROM Vendedores WHERE idVendedor = ?"),
                             {idVendedor});
    if (!q.next()) return std::nullopt;
    DatosCliente d;
    // Los textos en el orden de la consulta; el descuento (8) es un número.
    QString DatosCliente::* const textos[] = {&DatosCliente::nombre,   &DatosCliente::empresa,  &DatosCliente::domicilio,
                                              &DatosCliente::localidad, &DatosCliente::telefono, &DatosCliente::telefono2,
                                              &DatosCliente::email,    &DatosCliente::cuit};
    for (int i = 0; i < int(std::size(textos)); ++i) d.*textos[i] = texto(q.value(i));
    d.descuento = numero(q.value(8));
    d.nroClienteVIP = texto(q.value(9));
    d.idZona = clave(q.value(10));
    d.idTipoIva = clave(q.value(11));
    d.idTipoFormaPago = clave(q.value(12));
    return d;
}

qint64 GrabaCliente(Almacen& a, std::optional<qint64> idVendedor, const DatosCliente& d, bool controlaCuit,
                    const QString& claveImpositiva) {
    if (idVendedor && a.valor(QStringLiteral("SELECT idVendedor FROM Vendedores WHERE idVendedor = ?"), {*idVendedor}).isNull())
        throw Aviso(kClienteBorrado);
    // 1. Nombre, zona y largos.
    if (d.nombre.trimmed().isEmpty()) throw Aviso(QStringLiteral("Error, coloque el nombre del cliente!"));
    if (d.idZona.isNull() ||
        a.valor(QStringLiteral("SELECT idZona FROM Zonas WHERE idZona = ?"), {d.idZona.toLongLong()}).isNull())
        throw Aviso(QStringLiteral("Error, elija la zona del cliente!"));
    controlaTextos(d);
    // 2. El número fiscal.
    const QString cuit = d.cuit.trimmed();
    if (controlaCuit && !cuit.isEmpty() && !CuitValido(cuit))
        throw Aviso(QStringLiteral("Error, el ") + claveImpositiva + QStringLiteral(" ") + cuit +
                    QStringLiteral(" no es válido: revise sus cifras!"));
    // 3. El descuento.
    const double descuento =
        d.descuento.trimmed().isEmpty() ? 0.0 : ExigePorcentaje(d.descuento.trimmed(), QStringLiteral("Descuento %"));
    // 4. La tarjeta.
    const QString tarjeta = d.nroClienteVIP.trimmed();
    controlaTarjeta(a, idVendedor, tarjeta);

    // 5. La fila y la localidad nueva.
    Transaccion tr(a);
    const QVariantList valores = {d.nombre.trimmed(), d.empresa, d.domicilio, d.localidad.trimmed(), d.telefono, d.telefono2,
                                  d.email.trimmed(), cuit, descuento, tarjeta.isEmpty() ? QVariant() : QVariant(tarjeta),
                                  clave(d.idZona), clave(d.idTipoIva), clave(d.idTipoFormaPago)};
    qint64 id = 0;
    if (!idVendedor) {
        id = a.inserta(QStringLiteral("INSERT INTO Vendedores (Nombre, Empresa, Domicilio, Localidad, Telefono, Telefono2, "
                                      "\"e-mail\", Cuit, Descuento, NroClienteVIP, idZona, idTipoIva, idTipoFormaPago, "
                                      "Comision, PuntosVIP) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, 0)"),
                       valores, QStringLiteral("idVendedor"));
    } else {
        id = *idVendedor;
        if (a.ejecuta(QStringLiteral("UPDATE Vendedores SET Nombre = ?, Empresa = ?, Domicilio = ?, Localidad = ?, "
                                     "Telefono = ?, Telefono2 = ?, \"e-mail\" = ?, Cuit = ?, Descuento = ?, NroClienteVIP = ?, "
                                     "idZona = ?, idTipoIva = ?, idTipoFormaPago = ? WHERE idVendedor = ?"),
                      valores + QVariantList{id}) == 0)
            throw Aviso(kClienteBorrado);
    }
    if (!d.localidad.trimmed().isEmpty())
        a.ejecuta(QStringLiteral("INSERT INTO Localidades (Localidad) SELECT ? WHERE NOT EXISTS "
                                 "(SELECT 1 FROM Localidades WHERE Localidad = ?)"),
                  {d.localidad.trimmed(), d.localidad.trimmed()});
    tr.confirmar();
    return id;
}

bool BorraCliente(Almacen& a, qint64 idVendedor) {
    Transaccion tr(a);
    a.ejecuta(QStringLiteral("DELETE FROM Comisiones WHERE idVendedor = ?"), {idVendedor});
    const bool estaba = a.ejecuta(QStringLiteral("DELETE FROM Vendedores WHERE idVendedor = ?"), {idVendedor}) > 0;
    tr.confirmar();
    return estaba;
}

ConsultaConParametros ConsultaPanelClientes(const Almacen& a, const QString& nombre, const QString& localidad) {
    ConsultaConParametros c;
    c.sql = QStringLiteral("SELECT Zonas.Zona, Vendedores.Nombre, Vendedores.Domicilio, Vendedores.Localidad, "
                           "Vendedores.Telefono, Vendedores.Telefono2, Vendedores.\"e-mail\", Vendedores.Cuit, "
                           "Vendedores.Descuento, Vendedores.idVendedor, Vendedores.Empresa "
                           "FROM Zonas INNER JOIN Vendedores ON Zonas.idZona = Vendedores.idZona");
    QStringList condiciones;
    if (!nombre.isEmpty()) {
        condiciones << QStringLiteral("(") + CondicionContiene(a, QStringLiteral("Vendedores.Nombre")) + QStringLiteral(" OR ") +
                           CondicionContiene(a, QStringLiteral("Vendedores.Empresa")) + QStringLiteral(")");
        c.parametros << nombre << nombre;
    }
    if (!localidad.isEmpty()) {
        condiciones << CondicionContiene(a, QStringLiteral("Vendedores.Localidad"));
        c.parametros << localidad;
    }
    if (!condiciones.isEmpty()) c.sql += QStringLiteral(" WHERE ") + condiciones.join(QStringLiteral(" AND "));
    c.sql += QStringLiteral(" ORDER BY Zonas.Zona, Vendedores.Localidad, Vendedores.Nombre, Vendedores.idVendedor");
    return c;
}

QString ConsultaZonas() { return QStringLiteral("SELECT idZona, Zona FROM Zonas ORDER BY Zona"); }
QString ConsultaLocalidades() { return QStringLiteral("SELECT Localidad FROM Localidades ORDER BY Localidad"); }
QString ConsultaTiposIva() { return QStringLiteral("SELECT idTipoIva, TipoIva FROM TipoDeIva ORDER BY idTipoIva"); }
QString ConsultaFormasPagoCliente() {
    return QStringLiteral("SELECT idTipoFormaPago, FormaPago FROM FormasDePago ORDER BY idTipoFormaPago");
}

} // namespace orv
