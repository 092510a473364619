// El resultado completo de una consulta a CSV y XLSX, y como tabla HTML con el marcado de siempre,
// en ambos motores.

#include "apoyo/base_prueba.h"
#include "apoyo_informes.h"
#include "reports/exporta.h"
#include "reports/html_consulta.h"
#include "store/esquema.h"

#include <QProcess>
#include <QStandardPaths>

using namespace orv;
using namespace orv::prueba;

namespace {

class Exporta : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (IsSkipped()) return;
        almacen().ejecutaGuion(ddl(almacen().dialecto(), QStringLiteral("CREATE TABLE Expo (id {LARGO}, Nombre {TEXTO(80)}, "
                                                                         "Importe {DINERO}, Fecha {FECHA})")));
        const QVariantList filas[] = {
            {1, "Yerba <1 kg> & más", "1234.5", "2026-11-22"},
            {2, "Con, coma y \"comillas\"", "-0.01", QVariant()},
            {3, "O'Brien\nsegunda línea ñ", QVariant(), "2025-01-31"},
        };
        for (const auto& f : filas) almacen().ejecuta("INSERT INTO Expo VALUES (?, ?, ?, ?)", f);
    }
    QString ruta(const QString& n) { return base().carpeta() + u'/' + n; }
    const QString sql = "SELECT Nombre, Importe, Fecha, id FROM Expo WHERE id >= ? ORDER BY id";
};

TEST_P(Exporta, CSVConTitulosComillasColumnasOmitidasYParametros) {
    OpcionesExporta o;
    o.titulos = {"Descripción", "Importe"};
    ASSERT_EQ(ExportaCSV(almacen(), sql, {1}, o, ruta("a.csv")), 3);
    o.omitir = {"Importe", "id"};
    ASSERT_EQ(ExportaCSV(almacen(), sql, {3}, o, ruta("b.csv")), 1);
    // Sin título, el nombre del campo tal como lo da el motor; el importe, con los decimales del motor.
    const bool pg = GetParam() == Motor::PostgreSQL;
    const QString fecha = pg ? "fecha" : "Fecha";
    EXPECT_EQ(leeArchivo(ruta("a.csv")),
              QStringLiteral("\uFEFFDescripción,Importe,%1,id\r\nYerba <1 kg> & más,%2,2026-11-22,1\r\n"
                             "\"Con, coma y \"\"comillas\"\"\",%3,,2\r\n\"O'Brien\nsegunda línea ñ\",,2025-01-31,3\r\n")
                  .arg(fecha, pg ? "1234.5000" : "1234.5", pg ? "-0.0100" : "-0.01"));
    EXPECT_EQ(leeArchivo(ruta("b.csv")), QStringLiteral("\uFEFFDescripción,") + fecha + "\r\n\"O'Brien\nsegunda línea ñ\",2025-01-31\r\n");
}

TEST_P(Exporta, XLSXConLosValores) {
    const QString archivo = ruta("a.xlsx");
    ASSERT_EQ(ExportaXLSX(almacen(), sql, {1}, {}, archivo), 3);
    ASSERT_TRUE(leeArchivo(archivo).startsWith("PK"));
    if (QStandardPaths::findExecutable("unzip").isEmpty()) GTEST_SKIP() << "sin unzip";
    QProcess p;
    p.start("unzip", {"-p", archivo, "xl/worksheets/sheet1.xml"});
    ASSERT_TRUE(p.waitForFinished(10000));
    const QString hoja = QString::fromUtf8(p.readAllStandardOutput());
    // Los textos tal cual, los importes como números.
    EXPECT_EQ(discrepancias(hoja, {"Con, coma y \"comillas\"", "O'Brien", "<v>1234.5</v>", "<v>-0.01</v>",
                                   "2026-11-22"}),
              "");
}

TEST_P(Exporta, ArchivoQueNoSePuedeEscribirEsUnAviso) {
    EXPECT_THROW(ExportaCSV(almacen(), sql, {1}, {}, ruta("no/existe/a.csv")), Aviso);
    EXPECT_THROW(ExportaXLSX(almacen(), sql, {1}, {}, ruta("no/existe/a.xlsx")), Aviso);
    EXPECT_THROW(ExportaCSV(almacen(), "SELECT * FROM NoHay", {}, {}, ruta("c.csv")),
                 ErrorAlmacen);
}

// Tabla HTML de una consulta: marcado literal, filas, sin filas, nulos y escape.
TEST_P(Exporta, TablaHtmlConElMarcadoDeSiempreNulosYEscape) {
    const QDate hoy(2026, 11, 23);
    const QString h = HtmlDeConsulta(almacen(), "Precios", "SELECT id, Nombre, Importe FROM Expo ORDER BY id", {}, 600, true, hoy);
    EXPECT_TRUE(h.startsWith("<TABLE border=1 cellPadding=2 cellSpacing=0 width=600 bordercolor=\"#808080\"><TBODY><TR vAlign=top>"
                             "<TD align=middle colSpan=3><FONT face=\"Arial\" size=2><B><STRONG> I n f o r m e : Precios al "
                             "23/11/2026</STRONG></B></FONT></TD></TR>"))
        << h.toStdString();
    // Títulos: el nombre de cada campo, el ancho repartido; el nulo deja la celda vacía, sin el relleno.
    EXPECT_EQ(h.count("<TD width=200 bgcolor=\"#45CFCC\"><center><FONT face=\"Arial\" size=1><STRONG><B>"), 3);
    EXPECT_EQ(h.count("<TR vAlign=top>"), 5);
    EXPECT_EQ(discrepancias(h, {"&nbsp;&nbsp;&nbsp; Yerba &lt;1 kg&gt; &amp; más  </FONT></TD>", "&nbsp;&nbsp;&nbsp; 3  </FONT></TD>",
                                "<TD width=500><center><FONT face=\"Arial\" size=1>  </FONT></TD>"}),
              "");
    EXPECT_TRUE(h.endsWith("</TABLE>" + QStringLiteral("<p>&nbsp;</p>").repeated(7)));
    // Sin filas: franja y títulos, ninguna fila de datos; sin separación.
    const QString v = HtmlDeConsulta(almacen(), "Vacío", "SELECT id FROM Expo WHERE Nombre = ?", {"nada"}, 100, false, hoy);
    EXPECT_EQ(v.count("<TR vAlign=top>"), 2);
    EXPECT_FALSE(v.contains("width=500"));
    EXPECT_TRUE(v.endsWith("</TABLE>"));
    // Las fechas como dd/mm/aaaa en los dos motores; la página entera declara UTF-8.
    const QString f = HtmlDeConsulta(almacen(), "Fechas", "SELECT Fecha FROM Expo ORDER BY id", {}, 100, false, hoy);
    EXPECT_EQ(discrepancias(f, {"&nbsp; 22/11/2026 ", "&nbsp; 31/01/2025 "}, {"2026-", "2025-"}), "");
    EXPECT_EQ(PaginaHtml("Envío ñ", f).left(108),
              "<HTML><HEAD><META http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\"><TITLE>Envío ñ</TITLE></HEAD>");
}

ORV_AMBOS_MOTORES(Exporta);

} // namespace
