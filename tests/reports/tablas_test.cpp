// Dibujo directo de tablas simples: qué HTML entiende (y qué deja al maquetado general), y el
// reparto en páginas con el encabezado de la tabla repetido.

#include "apoyo_informes.h"
#include "reports/informe.h"
#include "reports/tablas.h"

#include <QPdfWriter>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orv {
namespace {

TEST(TablasSimples, EntiendeElHtmlDeLasListasYDejaLoDemas) {
    const auto b = AnalizaCuerpoSimple(QStringLiteral(
        "<table width=\"100%\" cellpadding=\"3\"><thead><tr style=\"background-color: #243447; color: #ffffff; font-weight: bold;\">"
        "<th align=\"left\">Código</th><th align=\"right\">Importe</th></tr></thead>\n"
        "<tr style=\"background-color: #eef2f6;\"><td>O&apos;Brien &amp; hijos &lt;sa&gt;</td><td align=\"right\"><b>1,234.50</b></td></tr>"
        "<tr style=\"border-top: 1px solid #243447;\"><td colspan=\"2\">Dos\n   líneas<br>aquí</td></tr></table>"
        "<p align=\"right\"><i>Nada   más.</i></p>"));
    ASSERT_TRUE(b.has_value());
    ASSERT_EQ(b->size(), 2);
    const BloqueSimple& t = (*b)[0];
    ASSERT_TRUE(t.esTabla);
    ASSERT_EQ(t.filas.size(), 3);
    EXPECT_TRUE(t.filas[0].encabezado);
    EXPECT_TRUE(t.filas[0].negrita);
    EXPECT_EQ(t.filas[0].tinta, QColor(0xff, 0xff, 0xff));
    EXPECT_EQ(t.filas[0].celdas[1].alineacion, Qt::AlignRight);
    EXPECT_FALSE(t.filas[1].encabezado);
    EXPECT_EQ(t.filas[1].fondo, QColor(0xee, 0xf2, 0xf6));
    EXPECT_EQ(t.filas[1].celdas[0].texto, QStringLiteral("O'Brien & hijos <sa>"));
    EXPECT_TRUE(t.filas[1].celdas[1].negrita);
    EXPECT_TRUE(t.filas[2].lineaArriba);
    EXPECT_EQ(t.filas[2].celdas[0].columnas, 2);
    EXPECT_EQ(t.filas[2].celdas[0].texto, QStringLiteral("Dos líneas\naquí"));
    EXPECT_FALSE((*b)[1].esTabla);
    EXPECT_EQ((*b)[1].parrafo.texto, QStringLiteral("Nada más."));
    EXPECT_TRUE((*b)[1].parrafo.cursiva);
    EXPECT_EQ((*b)[1].parrafo.alineacion, Qt::AlignRight);

    // Lo que no está en la lista va al maquetado general.
    for (const char* otro : {"<div>x</div>", "<table><tr><td><table></table></td></tr></table>", "texto suelto",
                             "<table><tr><td style=\"color: red\">x</td></tr></table>", "<p><span>x</span></p>",
                             "<table><tr><td>sin cerrar</td></tr>", "<img src=\"logo.png\">"})
        EXPECT_FALSE(AnalizaCuerpoSimple(QString::fromUtf8(otro)).has_value()) << otro;
}

TEST(TablasSimples, MuchasFilasEnVariasPaginasConElEncabezadoEnCadaUna) {
    QString html = QStringLiteral("<table><thead><tr><th>Columna uno</th><th>Columna dos</th></tr></thead>");
    for (int i = 1; i <= 300; ++i) {
        if (i % 50 == 1) html += QStringLiteral("<tr><td colspan=\"2\">Grupo %1</td></tr>").arg(i / 50 + 1);
        html += QStringLiteral("<tr><td>fila %1</td><td align=\"right\">%2.00</td></tr>").arg(i).arg(i * 3);
    }
    html += QStringLiteral("</table>");
    InformeArmado inf;
    inf.titulo = QStringLiteral("Prueba");
    inf.cuerpo = html;
    QTemporaryDir d;
    const QString pdf = d.filePath(QStringLiteral("t.pdf"));
    int paginas = 0;
    {
        QPdfWriter w(pdf);
        w.setResolution(300);
        paginas = PintaInforme(inf, w);
    }
    ASSERT_GT(paginas, 3);
    const QStringList hojas = prueba::textoDePdf(pdf).split(u'\f', Qt::SkipEmptyParts);
    ASSERT_GE(hojas.size(), paginas);
    int filas = 0;
    for (int n = 0; n < paginas; ++n) {
        const QString& h = hojas[n];
        EXPECT_TRUE(h.contains(QStringLiteral("Columna uno"))) << "página " << n + 1;
        EXPECT_TRUE(h.contains(QStringLiteral("Página %1 de %2").arg(n + 1).arg(paginas)));
        filas += int(h.count(QStringLiteral("fila ")));
        // Un título de grupo nunca es la última línea de una página.
        QStringList lineas = h.split(u'\n', Qt::SkipEmptyParts);
        while (!lineas.isEmpty() && (lineas.last().contains(QStringLiteral("Página")) || lineas.last().trimmed().isEmpty()))
            lineas.removeLast();
        ASSERT_FALSE(lineas.isEmpty());
        EXPECT_FALSE(lineas.last().contains(QStringLiteral("Grupo"))) << "página " << n + 1;
    }
    EXPECT_EQ(filas, 300) << "cada fila una vez, ninguna cortada ni repetida";
    EXPECT_TRUE(hojas[paginas - 1].contains(QStringLiteral("900.00")));
}

} // namespace
} // namespace orv
