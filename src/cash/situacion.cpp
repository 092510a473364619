#include "cash/situacion.h"

#include "store/formato.h"

#include <QSqlQuery>

namespace orv {

namespace {

const char* const kMeses[] = {"Enero", "Febrero", "Marzo",     "Abril",   "Mayo",      "Junio",
                              "Julio", "Agosto",  "Septiembre", "Octubre", "Noviembre", "Diciembre"};

// El grupo de una fila como entero: yyyymmdd, el mes o el año. En SQLite la fecha es el texto ISO.
QString expresionGrupo(Dialecto d, Agrupacion g) {
    if (d == Dialecto::SQLite) {
        switch (g) {
        case Agrupacion::Diario: return QStringLiteral("CAST(replace(substr(k.Fecha, 1, 10), '-', '') AS INTEGER)");
        case Agrupacion::Mensual: return QStringLiteral("CAST(substr(k.Fecha, 6, 2) AS INTEGER)");
        case Agrupacion::Anual: return QStringLiteral("CAST(substr(k.Fecha, 1, 4) AS INTEGER)");
        }
    }
    switch (g) {
    case Agrupacion::Diario: return QStringLiteral("CAST(to_char(k.Fecha, 'YYYYMMDD') AS INTEGER)");
    case Agrupacion::Mensual: return QStringLiteral("CAST(EXTRACT(MONTH FROM k.Fecha) AS INTEGER)");
    case Agrupacion::Anual: return QStringLiteral("CAST(EXTRACT(YEAR FROM k.Fecha) AS INTEGER)");
    }
    return {};
}

QString textoGrupo(Agrupacion g, int grupo) {
    switch (g) {
    case Agrupacion::Diario: return FechaTexto(QDate(grupo / 10000, grupo / 100 % 100, grupo % 100));
    case Agrupacion::Mensual: return NombreMes(grupo);
    case Agrupacion::Anual: return QString::number(grupo);
    }
    return {};
}

// Las notas de crédito del período, por su índice, como tabla para unir (pequeña: se une por
// dispersión, sin buscar cada comprobante); el parámetro es el período, dos veces.
const QString kNotasDelPeriodo = QStringLiteral("(SELECT idComprobante FROM Comprobantes WHERE TipoStock IN (1, -1) "
                                                "AND Fecha >= ? AND Fecha <= ?) n");

// Paso 3: ingresos y gastos por grupo. La fila de caja de una venta lleva el id de su comprobante y
// su fecha: la de una nota de crédito está entre las notas del período. Se suma primero por fecha y
// después por grupo, así la expresión del grupo se calcula una vez por día y no por fila.
QList<IngresosDelGrupo> leeMovimientos(const Almacen& a, Agrupacion g, const QDate& desde, const QDate& hasta) {
    const QString venta = QStringLiteral("substr(k.Detalles, 1, 7) = 'VENTA :'");
    const QString grupo = expresionGrupo(a.dialecto(), g);
    const QString porDia =
        QStringLiteral("SELECT k.Fecha, SUM(CASE WHEN ") + venta +
        QStringLiteral(" THEN CASE WHEN n.idComprobante IS NOT NULL THEN -k.Ingreso ELSE k.Ingreso END END) AS Ingresos, "
                       "SUM(k.Egreso) AS Gastos FROM Caja k LEFT JOIN ") +
        kNotasDelPeriodo + QStringLiteral(" ON n.idComprobante = k.idComprobante AND ") + venta +
        QStringLiteral(" WHERE k.Fecha >= ? AND k.Fecha <= ? AND (") + venta + QStringLiteral(" OR k.Egreso <> 0) GROUP BY k.Fecha");
    QSqlQuery q = a.consulta(QStringLiteral("SELECT ") + grupo + QStringLiteral(" AS Grupo, SUM(k.Ingresos), SUM(k.Gastos) FROM (") +
                                 porDia + QStringLiteral(") k GROUP BY ") + grupo + QStringLiteral(" ORDER BY 1"),
                             {desde, hasta, desde, hasta});
    QList<IngresosDelGrupo> r;
    while (q.next()) {
        const int n = q.value(0).toInt();
        r << IngresosDelGrupo{n, textoGrupo(g, n), Dinero::desdeVariant(q.value(1)), Dinero::desdeVariant(q.value(2))};
    }
    return r;
}

// Paso 4: cada línea lleva la fecha y la marca de comercial de su comprobante, y se lee del índice
// de las líneas; de los comprobantes sólo se buscan las notas de crédito del período. SQLite suma
// primero por artículo y después busca cada artículo una vez; el servidor une las líneas con los
// artículos por dispersión, más rápido que agrupar dos veces.
QList<VentaDelRubro> leeRubros(const Almacen& a, const QDate& desde, const QDate& hasta) {
    const QString importe = QStringLiteral("SUM(CASE WHEN n.idComprobante IS NOT NULL THEN -d.SubTotal ELSE d.SubTotal END)");
    const QString lineas = QStringLiteral(" FROM DetalleComprobantes d LEFT JOIN ") + kNotasDelPeriodo +
                           QStringLiteral(" ON n.idComprobante = d.idComprobante");
    const QString periodo = QStringLiteral(" d.Fecha >= ? AND d.Fecha <= ? AND d.EsComercial <> 0 ");
    const QString rubros = QStringLiteral(" INNER JOIN Rubros r ON r.idRubro = ar.idRubro ");
    const QString sql =
        a.esPostgreSQL()
            ? QStringLiteral("SELECT COALESCE(r.Rubro, ''), ") + importe + lineas +
                  QStringLiteral(" INNER JOIN Articulos ar ON ar.idArticulo = d.idArticulo") + rubros + QStringLiteral("WHERE") +
                  periodo
            : QStringLiteral("SELECT COALESCE(r.Rubro, ''), SUM(x.Importe) FROM (SELECT d.idArticulo, ") + importe +
                  QStringLiteral(" AS Importe") + lineas + QStringLiteral(" WHERE") + periodo +
                  QStringLiteral("GROUP BY d.idArticulo) x INNER JOIN Articulos ar ON ar.idArticulo = x.idArticulo") + rubros;
    QSqlQuery q = a.consulta(sql + QStringLiteral("GROUP BY COALESCE(r.Rubro, '') ORDER BY 2 DESC, 1"), {desde, hasta, desde, hasta});
    QList<VentaDelRubro> r;
    while (q.next()) r << VentaDelRubro{q.value(0).toString(), Dinero::desdeVariant(q.value(1))};
    return r;
}

} // namespace

QStringList TextosAgrupacion() { return {QStringLiteral("Diario"), QStringLiteral("Mensual"), QStringLiteral("Anual")}; }

Agrupacion AgrupacionDeTexto(const QString& texto) {
    if (texto == QStringLiteral("Diario")) return Agrupacion::Diario;
    if (texto == QStringLiteral("Mensual")) return Agrupacion::Mensual;
    return Agrupacion::Anual;
}

QString NombreMes(int mes) { return mes >= 1 && mes <= 12 ? QString::fromLatin1(kMeses[mes - 1]) : QString::number(mes); }

Situacion LeeSituacion(const Almacen& a, Agrupacion agrupacion, const QDate& desde, const QDate& hasta) {
    Situacion s;
    // Pasos 1, 2 y 5 en una lectura: no miran el período. En el servidor la caja sale de los totales
    // que él mismo lleva; el costo por la existencia, exacto (la existencia es un número real).
    const QString caja = a.esPostgreSQL() ? QStringLiteral("TotalesCaja") : QStringLiteral("Caja");
    QSqlQuery q = a.consulta(QStringLiteral(
        "SELECT (SELECT SUM(Ingreso) - SUM(Egreso) FROM ") + caja + QStringLiteral("), "
        "(SELECT SUM(CAST(StockActual AS NUMERIC) * PrecioCosto) FROM Articulos), "
        "(SELECT SUM(Comision) - SUM(Liquidacion) FROM Comisiones), "
        "(SELECT SUM(Debe) - SUM(Haber) FROM CtaProve)"));
    if (q.next()) {
        s.caja = Dinero::desdeVariant(q.value(0));
        s.mercaderia = Dinero::desdeVariant(q.value(1));
        s.deudaClientes = Dinero::desdeVariant(q.value(2));
        s.deudaProveedores = Dinero::desdeVariant(q.value(3));
    }
    s.movimientos = leeMovimientos(a, agrupacion, desde, hasta);
    s.rubros = leeRubros(a, desde, hasta);
    return s;
}

} // namespace orv
