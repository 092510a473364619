#include "cash/cuentas.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/rutinas.h"

#include <QSqlQuery>

namespace orv {

namespace {

constexpr int kLargoNombre = 50;

// ¿Borrar o renombrar esta fila deja al sistema sin una fila con ese nombre fijo?
bool esUnicaDelSistema(const Almacen& a, const QStringList& fijos, const QString& tabla, const QString& columnaId,
                       const QString& columnaNombre, qint64 id, const QString& nombre) {
    if (!fijos.contains(nombre)) return false;
    const QVariant otras = a.valor(QStringLiteral("SELECT count(*) FROM %1 WHERE %2 = ? AND %3 <> ?").arg(tabla, columnaNombre, columnaId),
                                   {nombre, id});
    return otras.toInt() == 0;
}

QString avisoCuentaFija(const QString& nombre) {
    return QStringLiteral("La cuenta \"") + nombre +
           QStringLiteral("\" la usa el sistema para registrar ventas y cobranzas: no se puede borrar.");
}

QString avisoFormaFija(const QString& nombre, const char* accion) {
    return QStringLiteral("La forma de pago \"") + nombre + QStringLiteral("\" tiene un significado fijo en el sistema: no se puede ") +
           QString::fromUtf8(accion) + QLatin1Char('.');
}

} // namespace

const QStringList& CuentasDelSistema() {
    static const QStringList c = {QStringLiteral("Ventas Mostrador"), QStringLiteral("Cobranza Clientes")};
    return c;
}

const QStringList& FormasPagoDelSistema() {
    static const QStringList f = {QStringLiteral("EFVO"), QStringLiteral("CTA CTE"), QStringLiteral("CHEQ")};
    return f;
}

QString ConsultaPlanCuentas() { return QStringLiteral("SELECT idCuenta, Cuenta FROM Cuentas ORDER BY Cuenta"); }

QString ConsultaFormasPago() {
    // Las marcas se leen "Sí" o nada; 1 y -1 cuentan como encendido.
    return QStringLiteral("SELECT idTipoFormaPago, FormaPago, CASE WHEN COALESCE(EsACuenta, 0) <> 0 THEN 'Sí' ELSE '' END AS EsACuenta, "
                          "CASE WHEN COALESCE(EsTarjetaCredito, 0) <> 0 THEN 'Sí' ELSE '' END AS EsTarjetaCredito "
                          "FROM FormasDePago ORDER BY FormaPago");
}

std::optional<qint64> AgregaCuenta(Almacen& a, const QString& nombre) {
    if (nombre.trimmed().isEmpty()) return std::nullopt;
    const QString cortado = CortaTexto(nombre, kLargoNombre); // lo que pasa de 50 se corta, como siempre
    ExigeTexto(cortado, kLargoNombre, QStringLiteral("Cuenta"));
    return a.inserta(QStringLiteral("INSERT INTO Cuentas (Cuenta) VALUES (?)"), {cortado},
                     QStringLiteral("idCuenta"));
}

void BorraCuenta(Almacen& a, qint64 idCuenta) {
    Transaccion tr(a);
    // 1. La cuenta, si sigue ahí.
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Cuenta FROM Cuentas WHERE idCuenta = ?"), {idCuenta});
    if (!q.next()) return;
    const QString nombre = q.value(0).toString();
    q.finish();
    // 2. Las que el sistema busca por nombre no se quedan sin ninguna.
    if (esUnicaDelSistema(a, CuentasDelSistema(), QStringLiteral("Cuentas"), QStringLiteral("idCuenta"), QStringLiteral("Cuenta"),
                          idCuenta, nombre))
        throw AvisoAtencion(avisoCuentaFija(nombre));
    // 3. El borrado; los movimientos de la cuenta no se tocan.
    a.ejecuta(QStringLiteral("DELETE FROM Cuentas WHERE idCuenta = ?"), {idCuenta});
    tr.confirmar();
}

std::optional<FormaPago> LeeFormaPago(const Almacen& a, qint64 idTipoFormaPago) {
    QSqlQuery q = a.consulta(
        QStringLiteral("SELECT FormaPago, EsACuenta, EsTarjetaCredito FROM FormasDePago WHERE idTipoFormaPago = ?"),
        {idTipoFormaPago});
    if (!q.next()) return std::nullopt;
    return FormaPago{q.value(0).toString(), SiNo(q.value(1)), SiNo(q.value(2))};
}

qint64 GuardaFormaPago(Almacen& a, std::optional<qint64> idTipoFormaPago, const FormaPago& f) {
    // 1. El nombre: no vacío y como cabe en la columna.
    const QString nombre = f.nombre.trimmed();
    if (nombre.isEmpty()) throw AvisoAtencion(QStringLiteral("Ingrese el nombre de la forma de pago."));
    ExigeTexto(nombre, kLargoNombre, QStringLiteral("Nombre"));
    Transaccion tr(a);
    const QVariantList valores = {nombre, f.aCuenta ? 1 : 0, f.tarjeta ? 1 : 0};
    qint64 id = 0;
    if (!idTipoFormaPago) {
        // 2a. Una forma nueva.
        id = a.inserta(QStringLiteral("INSERT INTO FormasDePago (FormaPago, EsACuenta, EsTarjetaCredito) VALUES (?, ?, ?)"), valores,
                       QStringLiteral("idTipoFormaPago"));
    } else {
        // 2b. Una existente: la del sistema conserva su nombre.
        id = *idTipoFormaPago;
        const std::optional<FormaPago> antes = LeeFormaPago(a, id);
        if (!antes) throw Aviso(QStringLiteral("La forma de pago ya no existe."));
        if (antes->nombre != nombre && esUnicaDelSistema(a, FormasPagoDelSistema(), QStringLiteral("FormasDePago"),
                                                         QStringLiteral("idTipoFormaPago"), QStringLiteral("FormaPago"), id,
                                                         antes->nombre))
            throw AvisoAtencion(avisoFormaFija(antes->nombre, "cambiar su nombre"));
        a.ejecuta(QStringLiteral("UPDATE FormasDePago SET FormaPago = ?, EsACuenta = ?, EsTarjetaCredito = ? WHERE idTipoFormaPago = ?"),
                  valores + QVariantList{id});
    }
    tr.confirmar();
    return id;
}

void BorraFormaPago(Almacen& a, qint64 idTipoFormaPago) {
    Transaccion tr(a);
    const std::optional<FormaPago> f = LeeFormaPago(a, idTipoFormaPago);
    if (!f) return;
    if (esUnicaDelSistema(a, FormasPagoDelSistema(), QStringLiteral("FormasDePago"), QStringLiteral("idTipoFormaPago"),
                          QStringLiteral("FormaPago"), idTipoFormaPago, f->nombre))
        throw AvisoAtencion(avisoFormaFija(f->nombre, "borrar"));
    a.ejecuta(QStringLiteral("DELETE FROM FormasDePago WHERE idTipoFormaPago = ?"), {idTipoFormaPago});
    tr.confirmar();
}

} // namespace orv
