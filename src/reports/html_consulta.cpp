#include "reports/html_consulta.h"

#include "store/formato.h"

#include <QCoreApplication>
#include <QSqlQuery>
#include <QSqlRecord>

namespace orv {

namespace {

// Las fechas como dd/mm/aaaa en los dos motores: PostgreSQL las da como fechas y SQLite como el
// texto ISO que guardó.
QString valorTexto(const QVariant& v) {
    if (v.isNull()) return {};
    if (v.typeId() == QMetaType::Double) return QString::number(v.toDouble(), 'g', 15);
    if (const auto f = FechaGuardadaTexto(v)) return *f;
    return v.toString();
}

} // namespace

QString HtmlDeConsulta(const Almacen& a, const QString& titulo, const QString& sql, const QVariantList& parametros,
                       qint16 ancho, bool separar, const QDate& hoy) {
    QSqlQuery q = a.consulta(sql, parametros);
    const QSqlRecord r = q.record();
    const int n = r.count();
    QString h;
    h += QStringLiteral("<TABLE border=1 cellPadding=2 cellSpacing=0 width=") + QString::number(ancho) +
         QStringLiteral(" bordercolor=\"#808080\">");
    h += QStringLiteral("<TBODY>");
    h += QStringLiteral("<TR vAlign=top>");
    h += QStringLiteral("<TD align=middle colSpan=") + QString::number(n) + QStringLiteral("><FONT ");
    h += QStringLiteral("face=\"Arial\"");
    h += QStringLiteral(" size=2><B><STRONG> I n f o r m e : ") + titulo.toHtmlEscaped() + QStringLiteral(" al ") +
         FechaTexto(hoy);
    h += QStringLiteral("</STRONG></B></FONT></TD></TR>");
    h += QStringLiteral("<TR vAlign=top>");
    const int anchoColumna = n > 0 ? ancho / n : ancho;
    for (int c = 0; c < n; ++c) {
        h += QStringLiteral("<TD width=") + QString::number(anchoColumna) + QStringLiteral(" bgcolor=\"#45CFCC\"><center><FONT ");
        h += QStringLiteral("face=\"Arial\"");
        h += QStringLiteral(" size=1><STRONG><B>") + r.fieldName(c).toHtmlEscaped() + QStringLiteral("</B> </STRONG></FONT></TD>");
    }
    h += QStringLiteral("</FONT></TD></TR>");
    qint64 filas = 0;
    while (q.next()) {
        h += QStringLiteral("<TR vAlign=top>");
        for (int c = 0; c < n; ++c) {
            h += QStringLiteral("<TD width=500><center><FONT ");
            h += QStringLiteral("face=\"Arial\"");
            h += QStringLiteral(" size=1>");
            const QString v = valorTexto(q.value(c));
            if (!v.isEmpty()) h += QStringLiteral("&nbsp;&nbsp;&nbsp; ") + v.toHtmlEscaped();
            h += QStringLiteral("  </FONT></TD>");
        }
        // Una tabla grande tarda: la pantalla sigue viva.
        if (++filas % 200 == 0) QCoreApplication::processEvents();
        h += QStringLiteral("</TR>");
    }
    h += QStringLiteral("</TABLE>");
    if (separar)
        h += QStringLiteral("<p>&nbsp;</p><p>&nbsp;</p><p>&nbsp;</p><p>&nbsp;</p><p>&nbsp;</p><p>&nbsp;</p><p>&nbsp;</p>");
    return h;
}

QString PaginaHtml(const QString& titulo, const QString& cuerpo) {
    return QStringLiteral("<HTML><HEAD><META http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">"
                          "<TITLE>") +
           titulo.toHtmlEscaped() + QStringLiteral("</TITLE></HEAD><BODY>\n") + cuerpo + QStringLiteral("\n</BODY></HTML>\n");
}

} // namespace orv
