// Exportación a CSV y XLSX del resultado completo de una consulta, en ambos motores.

#include "apoyo/base_prueba.h"
#include "reports/exporta.h"
#include "store/esquema.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace orv;
using namespace orv::prueba;

namespace {

// Lector RFC 4180 mínimo para comprobar lo escrito.
QList<QStringList> leeCSV(const QByteArray& datos) {
    QList<QStringList> filas;
    QStringList fila;
    QString campo;
    const QString t = QString::fromUtf8(datos);
    bool comillas = false;
    for (qsizetype i = 0; i < t.size(); ++i) {
        const QChar c = t.at(i);
        if (comillas) {
            if (c == u'"' && i + 1 < t.size() && t.at(i + 1) == u'"') {
                campo += u'"';
                ++i;
            } else if (c == u'"') {
                comillas = false;
            } else {
                campo += c;
            }
        } else if (c == u'"') {
            comillas = true;
        } else if (c == u',') {
            fila << campo;
            campo.clear();
        } else if (c == u'\r' && i + 1 < t.size() && t.at(i + 1) == u'\n') {
            fila << campo;
            filas << fila;
            fila.clear();
            campo.clear();
            ++i;
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
        almacen().ejecutaGuion(ddl(almacen().dialecto(),
                                   QStringLiteral("CREATE TABLE Expo (id {LARGO}, Nombre {TEXTO(80)}, "
                                                  "Importe {DINERO}, Fecha {FECHA})")));
        const QVariantList filas[] = {
            {1, QStringLiteral("Simple"), QStringLiteral("1234.5"), QStringLiteral("2026-11-22")},
            {2, QStringLiteral("Con, coma y \"comillas\""), QStringLiteral("-0.01"), QVariant()},
            {3, QStringLiteral("O'Brien\nsegunda línea ñ"), QVariant(), QStringLiteral("2025-01-31")},
        };
        for (const auto& f : filas)
            almacen().ejecuta(QStringLiteral("INSERT INTO Expo VALUES (?, ?, ?, ?)"), f);
    }
    QString ruta(const QString& n) { return base().carpeta() + u'/' + n; }
    const QString sql = QStringLiteral("SELECT id, Nombre, Importe, Fecha FROM Expo WHERE id >= ? ORDER BY id");
};

TEST_P(Exporta, CSVSeLeeDeVueltaIgual) {
    OpcionesExporta o;
    o.titulos = {QStringLiteral("Nº"), QStringLiteral("Descripción"), QStringLiteral("Importe")};
    ASSERT_EQ(ExportaCSV(almacen(), sql, {1}, o, ruta(QStringLiteral("a.csv"))), 3);
    QFile f(ruta(QStringLiteral("a.csv")));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    QByteArray datos = f.readAll();
    ASSERT_TRUE(datos.startsWith("\xEF\xBB\xBF"));
    const auto filas = leeCSV(datos.mid(3));
    ASSERT_EQ(filas.size(), 4);
    // Título faltante: el nombre del campo, tal como lo da el motor.
    EXPECT_EQ(filas[0].mid(0, 3), (QStringList{QStringLiteral("Nº"), QStringLiteral("Descripción"),
                                               QStringLiteral("Importe")}));
    EXPECT_EQ(filas[0][3].toLower(), QStringLiteral("fecha"));
    EXPECT_EQ(filas[1][1], QStringLiteral("Simple"));
    EXPECT_DOUBLE_EQ(filas[1][2].toDouble(), 1234.5);
    EXPECT_EQ(filas[1][3], QStringLiteral("2026-11-22"));
    EXPECT_EQ(filas[2][1], QStringLiteral("Con, coma y \"comillas\""));
    EXPECT_DOUBLE_EQ(filas[2][2].toDouble(), -0.01);
    EXPECT_EQ(filas[2][3], QString());
    EXPECT_EQ(filas[3][1], QStringLiteral("O'Brien\nsegunda línea ñ"));
    EXPECT_EQ(filas[3][2], QString()); // nulo: vacío
}

TEST_P(Exporta, CSVOmiteColumnasOcultasYRespetaParametros) {
    OpcionesExporta o;
    o.omitir = {QStringLiteral("Importe"), QStringLiteral("id")};
    ASSERT_EQ(ExportaCSV(almacen(), sql, {3}, o, ruta(QStringLiteral("b.csv"))), 1);
    QFile f(ruta(QStringLiteral("b.csv")));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const auto filas = leeCSV(f.readAll().mid(3));
    ASSERT_EQ(filas.size(), 2);
    ASSERT_EQ(filas[0].size(), 2);
    EXPECT_EQ(filas[1][0], QStringLiteral("O'Brien\nsegunda línea ñ"));
}

TEST_P(Exporta, XLSXConLosValores) {
    const QString archivo = ruta(QStringLiteral("a.xlsx"));
    ASSERT_EQ(ExportaXLSX(almacen(), sql, {1}, {}, archivo), 3);
    QFile f(archivo);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    ASSERT_TRUE(f.read(2) == "PK");
    f.close();
    if (QStandardPaths::findExecutable(QStringLiteral("unzip")).isEmpty()) GTEST_SKIP() << "sin unzip";
    QProcess p;
    p.start(QStringLiteral("unzip"), {QStringLiteral("-p"), archivo, QStringLiteral("xl/worksheets/sheet1.xml")});
    ASSERT_TRUE(p.waitForFinished(10000));
    const QString hoja = QString::fromUtf8(p.readAllStandardOutput());
    EXPECT_TRUE(hoja.contains(QStringLiteral("Con, coma y &quot;comillas&quot;")) ||
                hoja.contains(QStringLiteral("Con, coma y \"comillas\"")));
    EXPECT_TRUE(hoja.contains(QStringLiteral("O'Brien")) || hoja.contains(QStringLiteral("O&apos;Brien")));
    EXPECT_TRUE(hoja.contains(QStringLiteral("<v>1234.5</v>"))); // el importe como número
    EXPECT_TRUE(hoja.contains(QStringLiteral("<v>-0.01</v>")));
    EXPECT_TRUE(hoja.contains(QStringLiteral("2026-11-22")));
}

TEST_P(Exporta, ArchivoQueNoSePuedeEscribirEsUnAviso) {
    const QString mala = ruta(QStringLiteral("no/existe/a.csv"));
    EXPECT_THROW(ExportaCSV(almacen(), sql, {1}, {}, mala), Aviso);
    EXPECT_THROW(ExportaXLSX(almacen(), sql, {1}, {}, ruta(QStringLiteral("no/existe/a.xlsx"))), Aviso);
    EXPECT_THROW(ExportaCSV(almacen(), QStringLiteral("SELECT * FROM NoHay"), {}, {}, ruta(QStringLiteral("c.csv"))),
                 ErrorAlmacen);
}

ORV_AMBOS_MOTORES(Exporta);

} // namespace
