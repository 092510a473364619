#include "cash/caja.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/rutinas.h"

#include <QSqlQuery>

namespace orv {

namespace {

constexpr int kLargoDetalles = 254;

// Las condiciones de cuenta y forma de pago, con sus parámetros, detrás de las de fecha.
void agregaFiltros(const FiltroCaja& f, QString& sql, QVariantList& parametros) {
    if (f.idCuenta) {
        sql += QStringLiteral(" AND idCuenta = ?");
        parametros << *f.idCuenta;
    }
    if (!f.formaPago.isEmpty()) {
        sql += QStringLiteral(" AND FormaPago = ?");
        parametros << f.formaPago;
    }
}

// Un importe escrito: positivo y dentro de los topes.
QVariant importe(const std::optional<Dinero>& d) {
    if (!d) return Dinero().aVariant();
    ExigeImporteEnRango(*d);
    if (*d <= Dinero()) throw AvisoAtencion(QStringLiteral("El importe del movimiento debe ser mayor que cero."));
    return d->aVariant();
}

} // namespace

ConsultaConParametros ConsultaMovimientosCaja(const FiltroCaja& f) {
    ConsultaConParametros c{QStringLiteral("SELECT * FROM ConsultaCaja WHERE Fecha >= ? AND Fecha <= ?"), {f.desde, f.hasta}};
    agregaFiltros(f, c.sql, c.parametros);
    c.sql += QStringLiteral(" ORDER BY Fecha, idCaja");
    return c;
}

TotalesCaja TotalesDeCaja(const Almacen& a, const FiltroCaja& f) {
    QString ingresos = QStringLiteral("SELECT sum(Ingreso) FROM Caja WHERE Fecha >= ? AND Fecha <= ?");
    QString egresos = QStringLiteral("SELECT sum(Egreso) FROM Caja WHERE Fecha = ? AND Fecha <= ?");
    QVariantList pi = {f.desde, f.hasta};
    QVariantList pe = pi;
    agregaFiltros(f, ingresos, pi);
    agregaFiltros(f, egresos, pe);
    TotalesCaja t;
    t.ingreso = Dinero::desdeVariant(a.valor(ingresos, pi));
    t.egreso = Dinero::desdeVariant(a.valor(egresos, pe));
    t.diferencia = t.ingreso - t.egreso;
    return t;
}

std::optional<MovimientoCaja> LeeMovimientoCaja(const Almacen& a, qint64 idCaja) {
    QSqlQuery q = a.consulta(
        QStringLiteral("SELECT Fecha, idCuenta, FormaPago, Detalles, Ingreso, Egreso FROM Caja WHERE idCaja = ?"), {idCaja});
    if (!q.next()) return std::nullopt;
    MovimientoCaja m;
    m.fecha = q.value(0).toDate();
    if (!q.value(1).isNull()) m.idCuenta = q.value(1).toLongLong();
    m.formaPago = q.value(2).toString();
    m.detalles = q.value(3).toString();
    const Dinero ingreso = Dinero::desdeVariant(q.value(4));
    const Dinero egreso = Dinero::desdeVariant(q.value(5));
    if (!ingreso.esCero() || egreso.esCero()) m.ingreso = ingreso;
    if (!egreso.esCero()) m.egreso = egreso;
    return m;
}

std::optional<QDate> FechaDeMovimiento(const Almacen& a, qint64 idCaja) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Fecha FROM Caja WHERE idCaja = ?"), {idCaja});
    if (!q.next()) return std::nullopt;
    return q.value(0).toDate();
}

qint64 GuardaMovimientoCaja(Almacen& a, std::optional<qint64> idCaja, const MovimientoCaja& m, qint32 idUsuario) {
    // 1. Lo que se escribió, antes de tocar el almacén.
    if (!m.fecha.isValid()) throw AvisoAtencion(QStringLiteral("Ingrese la fecha del movimiento."));
    if (!m.idCuenta) throw AvisoAtencion(QStringLiteral("Seleccione una cuenta de la lista!"));
    if (m.formaPago.trimmed().isEmpty()) throw AvisoAtencion(QStringLiteral("Seleccione la forma de pago!"));
    ExigeTexto(m.formaPago, 50, QStringLiteral("F.Pago"));
    ExigeTexto(m.detalles, kLargoDetalles, QStringLiteral("Detalles"));
    if (m.ingreso && m.egreso) throw AvisoAtencion(QStringLiteral("Un movimiento es un ingreso o un egreso, no los dos."));
    if (!m.ingreso && !m.egreso) throw AvisoAtencion(QStringLiteral("Ingrese el importe del movimiento."));
    const QVariant ingreso = importe(m.ingreso);
    const QVariant egreso = importe(m.egreso);

    Transaccion tr(a);
    // 2. El día del movimiento abierto: el cierre promete que ese día no se registra nada más.
    ExigeFechaAbierta(a, m.fecha);
    const QVariantList valores = {m.fecha, *m.idCuenta, m.detalles, ingreso, egreso, m.formaPago, idUsuario};
    qint64 id = 0;
    if (!idCaja) {
        // 3a. Un movimiento nuevo.
        id = a.inserta(QStringLiteral("INSERT INTO Caja (Fecha, idCuenta, Detalles, Ingreso, Egreso, FormaPago, idUsuario) "
                                      "VALUES (?, ?, ?, ?, ?, ?, ?)"),
                       valores, QStringLiteral("idCaja"));
    } else {
        // 3b. El que se edita: tampoco puede salir de un día cerrado.
        id = *idCaja;
        const std::optional<QDate> antes = FechaDeMovimiento(a, id);
        if (!antes) throw Aviso(QStringLiteral("El movimiento de caja ya no existe."));
        ExigeFechaAbierta(a, *antes);
        a.ejecuta(QStringLiteral("UPDATE Caja SET Fecha = ?, idCuenta = ?, Detalles = ?, Ingreso = ?, Egreso = ?, FormaPago = ?, "
                                 "idUsuario = ? WHERE idCaja = ?"),
                  valores + QVariantList{id});
    }
    tr.confirmar();
    return id;
}

void BorraMovimientoCaja(Almacen& a, qint64 idCaja) {
    Transaccion tr(a);
    // 1. El movimiento, si sigue ahí, y su día abierto.
    const std::optional<QDate> fecha = FechaDeMovimiento(a, idCaja);
    if (!fecha) return;
    ExigeFechaAbierta(a, *fecha);
    // 2. El borrado; su causa no se toca.
    a.ejecuta(QStringLiteral("DELETE FROM Caja WHERE idCaja = ?"), {idCaja});
    tr.confirmar();
}

QString PlantillaDeComprobante(const Almacen& a, qint64 idComprobante) {
    return a.valor(QStringLiteral("SELECT NombrePlantilla FROM ConsultaTiposComprobantesPorFecha WHERE idComprobante = ?"),
                   {idComprobante})
        .toString();
}

} // namespace orv
