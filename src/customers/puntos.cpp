#include "customers/puntos.h"

#include "store/aviso.h"
#include "store/entrada.h"

#include <QSqlQuery>
#include <cmath>

namespace orv {

namespace {

// Un premio pide puntos enteros, como los guarda el diario; uno con decimales (de un almacén
// viejo) se redondea al par, como se redondean los puntos ganados.
qint64 PuntosEnteros(const QVariant& v) { return qint64(std::nearbyint(v.toDouble())); }

QString MensajeFaltan(qint64 tiene, qint64 requiere) {
    return QStringLiteral("Error, no puede cobrar este premio puesto que posee %1 puntos acumulados y requiere al menos %2")
        .arg(tiene)
        .arg(requiere);
}

// Puntos acumulados del cliente y puntos del premio; nullopt si falta alguno de los dos.
std::optional<std::pair<qint64, qint64>> PuntosYRequeridos(const Almacen& a, qint64 idCliente, qint64 idTablaVIP) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT COALESCE(v.PuntosVIP, 0), t.PuntosRequeridos FROM Vendedores v, TablaVIP t "
                                            "WHERE v.idVendedor = ? AND t.idTablaVIP = ?"),
                             {idCliente, idTablaVIP});
    if (!q.next()) return std::nullopt;
    return std::pair{q.value(0).toLongLong(), PuntosEnteros(q.value(1))};
}

} // namespace

ConsultaConParametros ConsultaTablaPremios() {
    return {QStringLiteral("SELECT Codigo, Descripcion, Cantidad, PuntosRequeridos, VigenciaDESDE, VigenciaHASTA, idTablaVIP, "
                           "idArticulo FROM ConsultaTablaPremiosVIP ORDER BY VigenciaDESDE, Descripcion, idTablaVIP"),
            {}};
}

ConsultaConParametros ConsultaPremiosVigentes(const QDate& hoy) {
    return {QStringLiteral("SELECT idTablaVIP, Descripcion FROM ConsultaTablaPremiosVIP "
                           "WHERE ? BETWEEN VigenciaDESDE AND VigenciaHASTA ORDER BY Descripcion, idTablaVIP"),
            {hoy}};
}

std::optional<DatosPremio> LeePremio(const Almacen& a, qint64 idTablaVIP) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idArticulo, Descripcion, VigenciaDESDE, VigenciaHASTA, Cantidad, "
                                            "PuntosRequeridos FROM ConsultaTablaPremiosVIP WHERE idTablaVIP = ?"),
                             {idTablaVIP});
    if (!q.next()) return std::nullopt;
    DatosPremio d;
    if (!q.value(0).isNull()) d.idArticulo = q.value(0).toLongLong();
    d.descripcion = q.value(1).toString();
    d.desde = q.value(2).toDate();
    d.hasta = q.value(3).toDate();
    d.cantidad = QString::number(q.value(4).toDouble(), 'g', 15);
    d.puntos = QString::number(PuntosEnteros(q.value(5)));
    return d;
}

qint64 GuardaPremio(Almacen& a, std::optional<qint64> idTablaVIP, const DatosPremio& d) {
    if (!d.desde.isValid() || !d.hasta.isValid() || d.desde > d.hasta) throw Aviso(kErrorFechasPremio);
    if (!d.idArticulo) throw Aviso(kErrorArticuloPremio);
    const double cantidad = ExigeCantidad(d.cantidad.trimmed(), QStringLiteral("Cantidad"));
    const qint64 puntos = ExigeEntero(d.puntos.trimmed(), QStringLiteral("Puntos"), 0, 2147483647);
    const QVariantList valores = {*d.idArticulo, cantidad, d.desde, d.hasta, puntos};
    if (!idTablaVIP)
        return a.inserta(QStringLiteral("INSERT INTO TablaVIP (idArticulo, Cantidad, VigenciaDESDE, VigenciaHASTA, PuntosRequeridos) "
                                        "VALUES (?, ?, ?, ?, ?)"),
                         valores, QStringLiteral("idTablaVIP"));
    if (a.ejecuta(QStringLiteral("UPDATE TablaVIP SET idArticulo = ?, Cantidad = ?, VigenciaDESDE = ?, VigenciaHASTA = ?, "
                                 "PuntosRequeridos = ? WHERE idTablaVIP = ?"),
                  valores + QVariantList{*idTablaVIP}) == 0)
        throw AvisoAtencion(QStringLiteral("El premio ya no está en la tabla: otro puesto lo quitó."));
    return *idTablaVIP;
}

bool BorraPremio(Almacen& a, qint64 idTablaVIP) {
    return a.ejecuta(QStringLiteral("DELETE FROM TablaVIP WHERE idTablaVIP = ?"), {idTablaVIP}) > 0;
}

ConsultaConParametros ConsultaPuntosCliente(qint64 idCliente, const QDate& desde, const QDate& hasta) {
    return {QStringLiteral("SELECT Vip.Fecha, Vip.PuntosVIP, "
                           "CASE WHEN Vip.idComprobante = 0 THEN 'Premio VIP' ELSE TiposDeComprobantes.Tipo END AS Tipo, "
                           "Comprobantes.Factura, Comprobantes.Total, "
                           "Usuarios.NombreCompleto, Vip.idVip, Vip.idCliente, Vip.idUsuario, Vip.idComprobante "
                           "FROM Vip LEFT JOIN Comprobantes ON Vip.idComprobante = Comprobantes.idComprobante "
                           "LEFT JOIN TiposDeComprobantes ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante "
                           "LEFT JOIN Usuarios ON Vip.idUsuario = Usuarios.idUsuario "
                           "WHERE Vip.Fecha >= ? AND Vip.Fecha <= ? AND Vip.idCliente = ? ORDER BY Vip.Fecha, Vip.idVip"),
            {desde, hasta, idCliente}};
}

TotalesPuntos TotalesPuntosCliente(const Almacen& a, qint64 idCliente, const QDate& desde, const QDate& hasta) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT SUM(CASE WHEN PuntosVIP > 0 THEN PuntosVIP END), "
                                            "SUM(CASE WHEN PuntosVIP < 0 THEN PuntosVIP END) FROM Vip "
                                            "WHERE Fecha >= ? AND Fecha <= ? AND idCliente = ?"),
                             {desde, hasta, idCliente});
    TotalesPuntos t;
    if (q.next()) {
        t.obtenidos = q.value(0).toLongLong();
        t.cobrados = -q.value(1).toLongLong();
    }
    return t;
}

QString FaltanPuntos(const Almacen& a, qint64 idCliente, qint64 idTablaVIP) {
    const auto p = PuntosYRequeridos(a, idCliente, idTablaVIP);
    if (p && p->first < p->second) return MensajeFaltan(p->first, p->second);
    return {};
}

qint64 CobraPremio(Almacen& a, qint64 idCliente, qint64 idTablaVIP, const QDate& hoy, qint32 idUsuario) {
    Transaccion tr(a);
    // 1. El premio, vigente hoy: la lista de la pantalla pudo quedar abierta de un día para otro,
    // o el premio cambiar en otro puesto.
    QSqlQuery premio = a.consulta(QStringLiteral("SELECT PuntosRequeridos, VigenciaDESDE, VigenciaHASTA FROM TablaVIP "
                                                 "WHERE idTablaVIP = ?"),
                                  {idTablaVIP});
    if (!premio.next()) throw AvisoAtencion(QStringLiteral("El premio ya no está en la tabla: otro puesto lo quitó."));
    const qint64 requeridos = PuntosEnteros(premio.value(0));
    const QDate desde = premio.value(1).toDate(), hasta = premio.value(2).toDate();
    premio.finish();
    if (!desde.isValid() || !hasta.isValid() || hoy < desde || hoy > hasta)
        throw Aviso(QStringLiteral("Error, el premio no está vigente: se ofrece del %1 al %2.")
                        .arg(desde.toString(QStringLiteral("dd/MM/yyyy")), hasta.toString(QStringLiteral("dd/MM/yyyy"))));
    // 2 y 3. La fila del premio sólo si los puntos alcanzan, en la misma sentencia; en el servidor
    // la fila del cliente queda tomada hasta confirmar.
    if (a.esPostgreSQL())
        a.consulta(QStringLiteral("SELECT idVendedor FROM Vendedores WHERE idVendedor = ? FOR UPDATE"), {idCliente}).finish();
    const int escritas = a.ejecuta(QStringLiteral("INSERT INTO Vip (idCliente, Fecha, idUsuario, idComprobante, PuntosVIP) "
                                                  "SELECT idVendedor, ?, ?, 0, ? FROM Vendedores "
                                                  "WHERE idVendedor = ? AND COALESCE(PuntosVIP, 0) >= ?"),
                                   {hoy, idUsuario, -requeridos, idCliente, requeridos});
    if (escritas == 0) {
        const QVariant tiene = a.valor(QStringLiteral("SELECT COALESCE(PuntosVIP, 0) FROM Vendedores WHERE idVendedor = ?"), {idCliente});
        if (tiene.isNull()) throw AvisoAtencion(QStringLiteral("El cliente ya no existe: el premio no se cobró."));
        throw Aviso(MensajeFaltan(tiene.toLongLong(), requeridos));
    }
    const qint64 id = a.valor(QStringLiteral("SELECT MAX(idVip) FROM Vip WHERE idCliente = ? AND idComprobante = 0"), {idCliente})
                          .toLongLong();
    tr.confirmar();
    return id;
}

} // namespace orv
