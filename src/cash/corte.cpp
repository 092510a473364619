#include "cash/corte.h"

#include "store/formato.h"
#include "store/rutinas.h"

#include <QSqlQuery>

namespace orv {

namespace {

// La condición del usuario, si se eligió uno, detrás de las demás.
QString deUsuario(const QString& sql, std::optional<qint64> idUsuario, QVariantList& parametros, const QString& columna) {
    if (!idUsuario) return sql;
    parametros << *idUsuario;
    return sql + QStringLiteral(" AND ") + columna + QStringLiteral(" = ?");
}

void suma(std::optional<Dinero>& total, Dinero d) { total = total.value_or(Dinero()) + d; }

QString celda(const QString& texto, bool derecha = false) {
    return (derecha ? QStringLiteral("<td align=\"right\">") : QStringLiteral("<td>")) + texto.toHtmlEscaped() +
           QStringLiteral("</td>");
}

QString encabezado(const QStringList& titulos) {
    QString h = QStringLiteral("<tr style=\"background-color:#243447;color:#ffffff;font-weight:bold;\">");
    for (int i = 0; i < titulos.size(); ++i)
        h += (i == 0 ? QStringLiteral("<th align=\"left\">") : QStringLiteral("<th align=\"right\">")) + titulos[i] +
             QStringLiteral("</th>");
    return h + QStringLiteral("</tr>");
}

} // namespace

QString ConsultaUsuariosCorte() { return QStringLiteral("SELECT idUsuario, NombreCompleto FROM Usuarios ORDER BY idUsuario"); }

ResumenDia ResumenDelDia(const Almacen& a, const QDate& fecha, std::optional<qint64> idUsuario) {
    ResumenDia r;
    r.fecha = fecha;
    // 1. Ventas por forma de pago: las filas de la venta se reconocen por el comienzo de Detalles.
    {
        QVariantList p = {fecha};
        const QString sql = deUsuario(QStringLiteral("SELECT FormaPago, sum(Ingreso) FROM Caja WHERE Fecha = ? "
                                                     "AND substr(Detalles, 1, 5) = 'VENTA'"),
                                      idUsuario, p, QStringLiteral("idUsuario")) +
                            QStringLiteral(" GROUP BY FormaPago ORDER BY COALESCE(FormaPago, '')");
        QSqlQuery q = a.consulta(sql, p);
        while (q.next()) {
            r.ventas << VentasPorForma{q.value(0).toString(), Dinero::desdeVariant(q.value(1))};
            suma(r.totalVentas, r.ventas.back().total);
        }
    }
    // 2. Movimientos por cuenta, todos los del día; los totales de entrada y salida son su suma.
    {
        QVariantList p = {fecha};
        const QString sql = deUsuario(QStringLiteral("SELECT Cuenta, sum(Ingreso), sum(Egreso) FROM ConsultaCaja WHERE Fecha = ?"),
                                      idUsuario, p, QStringLiteral("idUsuario")) +
                            QStringLiteral(" GROUP BY Cuenta ORDER BY COALESCE(Cuenta, '')");
        QSqlQuery q = a.consulta(sql, p);
        while (q.next()) {
            r.cuentas << MovimientosPorCuenta{q.value(0).toString(), Dinero::desdeVariant(q.value(1)), Dinero::desdeVariant(q.value(2))};
            suma(r.totalEntrada, r.cuentas.back().ingresos);
            suma(r.totalSalida, r.cuentas.back().egresos);
        }
    }
    // 3. ¿Se puede cerrar?
    r.abierta = FechaAbierta(a, fecha);
    return r;
}

QList<LineaArqueo> ArqueoEsperado(const Almacen& a, const QDate& fecha, std::optional<qint64> idUsuario) {
    QVariantList p = {fecha};
    const QString delDia = deUsuario(QStringLiteral("SELECT COALESCE(FormaPago, '') AS FormaPago FROM Caja WHERE Fecha = ?"),
                                     idUsuario, p, QStringLiteral("idUsuario"));
    p << fecha;
    const QString sql = deUsuario(QStringLiteral("SELECT f.FormaPago, COALESCE(sum(c.Ingreso), 0) - COALESCE(sum(c.Egreso), 0) FROM ("
                                                 "SELECT COALESCE(FormaPago, '') AS FormaPago FROM FormasDePago "
                                                 "WHERE COALESCE(EsACuenta, 0) = 0 UNION ") +
                                      delDia +
                                      QStringLiteral(") f LEFT JOIN Caja c ON COALESCE(c.FormaPago, '') = f.FormaPago AND c.Fecha = ?"),
                                  idUsuario, p, QStringLiteral("c.idUsuario")) +
                        QStringLiteral(" GROUP BY f.FormaPago ORDER BY f.FormaPago");
    QList<LineaArqueo> r;
    QSqlQuery q = a.consulta(sql, p);
    while (q.next()) r << LineaArqueo{q.value(0).toString(), Dinero::desdeVariant(q.value(1)), std::nullopt};
    return r;
}

QList<LineaArqueo> ArqueoGuardado(const Almacen& a, const QDate& fechaContada) {
    QList<LineaArqueo> r;
    QSqlQuery q = a.consulta(
        QStringLiteral("SELECT FormaPago, Esperado, Contado FROM ArqueoCaja WHERE Fecha = ? ORDER BY FormaPago, idArqueo"),
        {fechaContada});
    while (q.next()) r << LineaArqueo{q.value(0).toString(), Dinero::desdeVariant(q.value(1)), Dinero::desdeVariant(q.value(2))};
    return r;
}

bool CierraDia(Almacen& a, const QDate& hoy, const QDate& fechaContada, const QList<LineaArqueo>& arqueo, qint32 idUsuario) {
    Transaccion tr(a);
    // 1. La fila que cierra el día, sólo si ninguna terminal la escribió antes (índice único).
    if (a.ejecuta(QStringLiteral("INSERT INTO CorteCaja (FECHA) VALUES (?) ON CONFLICT DO NOTHING"), {hoy}) == 0) return false;
    // 2. Lo contado, en una sola sentencia, con lo que se esperaba al contarlo.
    QString valores;
    QVariantList p;
    for (const LineaArqueo& l : arqueo) {
        if (!l.contado) continue;
        valores += valores.isEmpty() ? QStringLiteral("(?, ?, ?, ?, ?, ?)") : QStringLiteral(", (?, ?, ?, ?, ?, ?)");
        p << fechaContada << hoy << l.formaPago << l.esperado.aVariant() << l.contado->aVariant() << idUsuario;
    }
    if (!valores.isEmpty())
        a.ejecuta(QStringLiteral("INSERT INTO ArqueoCaja (Fecha, FechaCierre, FormaPago, Esperado, Contado, idUsuario) VALUES ") + valores,
                  p);
    tr.confirmar();
    return true;
}

QString HojaCorteHtml(const ResumenDia& r, const QString& usuario, const QList<LineaArqueo>& arqueo, const QString& mascaraMoneda) {
    const auto m = [&](Dinero d) { return FormatoMoneda(d, mascaraMoneda); };
    const auto mo = [&](const std::optional<Dinero>& d) { return d ? m(*d) : QString(); };
    QString h = QStringLiteral("<html><body style=\"font-family:sans-serif;\"><h2>Corte diario de caja</h2><p>Fecha : <b>") +
                FechaTexto(r.fecha) + QStringLiteral("</b> &nbsp;&nbsp; Usuario : <b>") + usuario.toHtmlEscaped() +
                QStringLiteral("</b>") + (r.abierta ? QString() : QStringLiteral(" &nbsp;&nbsp; (día cerrado)")) + QStringLiteral("</p>");
    const QString tabla = QStringLiteral("<table width=\"100%\" cellspacing=\"0\" cellpadding=\"3\" border=\"1\" "
                                         "style=\"border-collapse:collapse;\">");
    h += QStringLiteral("<h3>Ventas por Valores</h3>") + tabla + encabezado({QStringLiteral("Forma de pago"), QStringLiteral("Total")});
    for (const VentasPorForma& v : r.ventas) h += QStringLiteral("<tr>") + celda(v.formaPago) + celda(m(v.total), true) + QStringLiteral("</tr>");
    h += QStringLiteral("<tr><td><b>Total ventas :</b></td>") + celda(mo(r.totalVentas), true) + QStringLiteral("</tr></table>");
    h += QStringLiteral("<h3>Movimientos por cuenta</h3>") + tabla +
         encabezado({QStringLiteral("Cuenta"), QStringLiteral("Ingresos"), QStringLiteral("Egresos")});
    for (const MovimientosPorCuenta& c : r.cuentas)
        h += QStringLiteral("<tr>") + celda(c.cuenta) + celda(m(c.ingresos), true) + celda(m(c.egresos), true) + QStringLiteral("</tr>");
    h += QStringLiteral("<tr><td><b>Totales</b></td>") + celda(mo(r.totalEntrada), true) + celda(mo(r.totalSalida), true) +
         QStringLiteral("</tr></table>");
    bool hayContado = false;
    for (const LineaArqueo& l : arqueo) hayContado = hayContado || l.contado.has_value();
    if (hayContado) {
        h += QStringLiteral("<h3>Arqueo</h3>") + tabla +
             encabezado({QStringLiteral("Forma de pago"), QStringLiteral("Esperado"), QStringLiteral("Contado"), QStringLiteral("Diferencia")});
        for (const LineaArqueo& l : arqueo)
            h += QStringLiteral("<tr>") + celda(l.formaPago) + celda(m(l.esperado), true) + celda(mo(l.contado), true) +
                 celda(mo(l.diferencia()), true) + QStringLiteral("</tr>");
        h += QStringLiteral("</table>");
    }
    return h + QStringLiteral("</body></html>");
}

} // namespace orv
