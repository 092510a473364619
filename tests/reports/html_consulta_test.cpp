// Tabla HTML de una consulta: marcado literal, filas, sin filas, nulos y escape.

#include "apoyo/base_prueba.h"
#include "reports/html_consulta.h"
#include "store/actualizacion.h"

namespace orv {
namespace {

using prueba::PorMotor;

class HtmlConsulta : public PorMotor {};

TEST_P(HtmlConsulta, MarcadoFilasNulosYEscape) {
    Almacen& a = almacen();
    a.ejecuta(QStringLiteral("CREATE TABLE Envio (Codigo TEXT, Detalle TEXT, Precio DOUBLE PRECISION)"));
    a.ejecuta(QStringLiteral("INSERT INTO Envio VALUES ('01', 'Yerba <1 kg> & más', 12.5), ('02', NULL, 3)"));
    const QDate hoy(2026, 11, 23);
    const QString h = HtmlDeConsulta(a, QStringLiteral("Precios"), QStringLiteral("SELECT Codigo, Detalle, Precio FROM Envio "
                                                                                   "ORDER BY Codigo"),
                                     {}, 600, true, hoy);
    EXPECT_TRUE(h.startsWith(QStringLiteral(
        "<TABLE border=1 cellPadding=2 cellSpacing=0 width=600 bordercolor=\"#808080\"><TBODY><TR vAlign=top>"
        "<TD align=middle colSpan=3><FONT face=\"Arial\" size=2><B><STRONG> I n f o r m e : Precios al 23/11/2026"
        "</STRONG></B></FONT></TD></TR>")))
        << h.toStdString();
    // Títulos: el nombre de cada campo, el ancho repartido.
    EXPECT_EQ(h.count(QStringLiteral("<TD width=200 bgcolor=\"#45CFCC\"><center><FONT face=\"Arial\" size=1><STRONG><B>")), 3);
    EXPECT_EQ(h.count(QStringLiteral("<TR vAlign=top>")), 4);
    EXPECT_TRUE(h.contains(QStringLiteral("&nbsp;&nbsp;&nbsp; Yerba &lt;1 kg&gt; &amp; más  </FONT></TD>")));
    EXPECT_TRUE(h.contains(QStringLiteral("&nbsp;&nbsp;&nbsp; 12.5  </FONT></TD>")));
    // El nulo deja la celda vacía, sin el relleno.
    EXPECT_TRUE(h.contains(QStringLiteral("<TD width=500><center><FONT face=\"Arial\" size=1>  </FONT></TD>")));
    EXPECT_TRUE(h.endsWith(QStringLiteral("</TABLE><p>&nbsp;</p><p>&nbsp;</p><p>&nbsp;</p><p>&nbsp;</p><p>&nbsp;</p>"
                                          "<p>&nbsp;</p><p>&nbsp;</p>")));

    // Sin filas: franja y títulos, ninguna fila de datos; sin separación.
    const QString v = HtmlDeConsulta(a, QStringLiteral("Vacío"), QStringLiteral("SELECT Codigo FROM Envio WHERE Codigo = ?"),
                                     {QStringLiteral("nada")}, 100, false, hoy);
    EXPECT_EQ(v.count(QStringLiteral("<TR vAlign=top>")), 2);
    EXPECT_FALSE(v.contains(QStringLiteral("width=500")));
    EXPECT_TRUE(v.endsWith(QStringLiteral("</TABLE>")));
}

ORV_AMBOS_MOTORES(HtmlConsulta);

} // namespace
} // namespace orv
