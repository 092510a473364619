// Exportación a CSV y XLSX del resultado completo de una consulta, en ambos motores.

#include "apoyo/base_prueba.h"
#include "apoyo_informes.h"
#include "reports/exporta.h"
#include "store/esquema.h"

#include <QProcess>
#include <QStandardPaths>
#include <utility>

using namespace orv;
using namespace orv::prueba;

namespace {

// Filas de un CSV (RFC 4180, con BOM), cada una con sus campos separados por "|". La columna
// `numerica` de las filas de datos se lee como número: cada motor da el importe con sus decimales.
std::vector<std::string> leeCSV(const QString& ruta, int numerica = -1) {
    QFile f(ruta);
    EXPECT_TRUE(f.open(QIODevice::ReadOnly) && f.read(3) == "\xEF\xBB\xBF");
    const QString t = QString::fromUtf8(f.readAll());
    std::vector<std::string> filas;
    QStringList fila;
    QString campo;
    bool comillas = false;
    for (qsizetype i = 0; i < t.size(); ++i) {
        const QChar c = t.at(i);
        if (comillas && c == u'"' && t.mid(i + 1, 1) == u'"') {
            campo += t.at(i++);
        } else if (c == u'"') {
            comillas = !comillas;
        } else if (!comillas && (c == u',' || c == u'\r')) {
            fila << std::exchange(campo, QString());
            if (c == u',') continue;
            ++i; // el \n del fin de línea
            if (!filas.empty() && numerica >= 0 && !fila[numerica].isEmpty())
                fila[numerica] = QString::number(fila[numerica].toDouble());
            filas.push_back(std::exchange(fila, QStringList()).join(u'|').toStdString());
        } else {
            campo += c;
        }
    }
    return filas;
}

class Exporta : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (IsSkipped()) return;
        almacen().ejecutaGuion(ddl(almacen().dialecto(), QStringLiteral("CREATE TABLE Expo (id {LARGO}, Nombre {TEXTO(80)}, "
                                                                         "Importe {DINERO}, Fecha {FECHA})")));
        const QVariantList filas[] = {
            {1, QStringLiteral("Simple"), QStringLiteral("1234.5"), QStringLiteral("2026-11-22")},
            {2, QStringLiteral("Con, coma y \"comillas\""), QStringLiteral("-0.01"), QVariant()},
            {3, QStringLiteral("O'Brien\nsegunda línea ñ"), QVariant(), QStringLiteral("2025-01-31")},
        };
        for (const auto& f : filas) almacen().ejecuta(QStringLiteral("INSERT INTO Expo VALUES (?, ?, ?, ?)"), f);
    }
    QString ruta(const QString& n) { return base().carpeta() + u'/' + n; }
    const QString sql = QStringLiteral("SELECT Nombre, Importe, Fecha, id FROM Expo WHERE id >= ? ORDER BY id");
};

TEST_P(Exporta, CSVSeLeeDeVueltaIgualConTitulosColumnasOmitidasYParametros) {
    OpcionesExporta o;
    o.titulos = {QStringLiteral("Descripción"), QStringLiteral("Importe")};
    ASSERT_EQ(ExportaCSV(almacen(), sql, {1}, o, ruta(QStringLiteral("a.csv"))), 3);
    // Sin título, el nombre del campo tal como lo da el motor.
    const std::string fecha = GetParam() == Motor::PostgreSQL ? "fecha" : "Fecha";
    EXPECT_EQ(leeCSV(ruta(QStringLiteral("a.csv")), 1),
              (std::vector<std::string>{"Descripción|Importe|" + fecha + "|id", "Simple|1234.5|2026-11-22|1",
                                        "Con, coma y \"comillas\"|-0.01||2", "O'Brien\nsegunda línea ñ||2025-01-31|3"}));
    o.omitir = {QStringLiteral("Importe"), QStringLiteral("id")};
    ASSERT_EQ(ExportaCSV(almacen(), sql, {3}, o, ruta(QStringLiteral("b.csv"))), 1);
    EXPECT_EQ(leeCSV(ruta(QStringLiteral("b.csv"))),
              (std::vector<std::string>{"Descripción|" + fecha, "O'Brien\nsegunda línea ñ|2025-01-31"}));
}

TEST_P(Exporta, XLSXConLosValores) {
    const QString archivo = ruta(QStringLiteral("a.xlsx"));
    ASSERT_EQ(ExportaXLSX(almacen(), sql, {1}, {}, archivo), 3);
    ASSERT_TRUE(leeArchivo(archivo).startsWith(QStringLiteral("PK")));
    if (QStandardPaths::findExecutable(QStringLiteral("unzip")).isEmpty()) GTEST_SKIP() << "sin unzip";
    QProcess p;
    p.start(QStringLiteral("unzip"), {QStringLiteral("-p"), archivo, QStringLiteral("xl/worksheets/sheet1.xml")});
    ASSERT_TRUE(p.waitForFinished(10000));
    const QString hoja = QString::fromUtf8(p.readAllStandardOutput());
    // Los textos tal cual, los importes como números.
    EXPECT_EQ(discrepancias(hoja, {"Con, coma y \"comillas\"", "O'Brien", "<v>1234.5</v>", "<v>-0.01</v>",
                                   "2026-11-22"}),
              "");
}

TEST_P(Exporta, ArchivoQueNoSePuedeEscribirEsUnAviso) {
    EXPECT_THROW(ExportaCSV(almacen(), sql, {1}, {}, ruta(QStringLiteral("no/existe/a.csv"))), Aviso);
    EXPECT_THROW(ExportaXLSX(almacen(), sql, {1}, {}, ruta(QStringLiteral("no/existe/a.xlsx"))), Aviso);
    EXPECT_THROW(ExportaCSV(almacen(), QStringLiteral("SELECT * FROM NoHay"), {}, {}, ruta(QStringLiteral("c.csv"))),
                 ErrorAlmacen);
}

ORV_AMBOS_MOTORES(Exporta);

} // namespace
