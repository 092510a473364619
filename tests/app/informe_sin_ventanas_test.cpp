// "orvanta --informe": arma un informe del catálogo sin abrir ventanas y termina con su código.

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct Corrida {
    int codigo = -1;
    QString salida;
    QString errores;
};

Corrida corre(const QStringList& argumentos) {
    QProcess p;
    QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
    e.remove(QStringLiteral("ORVANTA_PRUEBA_PG"));
    p.setProcessEnvironment(e);
    p.start(QStringLiteral(ORVANTA_PROGRAMA), argumentos);
    EXPECT_TRUE(p.waitForFinished(60000));
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
}

TEST(InformeSinVentanas, ArmaElPdfOTerminaConUnErrorEnCastellano) {
    QTemporaryDir d;
    ASSERT_TRUE(d.isValid());
    ASSERT_EQ(corre({QStringLiteral("--datos"), d.path(), QStringLiteral("--datos-ejemplo")}).codigo, 0);
    const QString pdf = d.filePath(QStringLiteral("precios.pdf"));
    const Corrida bien = corre({QStringLiteral("--datos"), d.path(), QStringLiteral("--informe"),
                                QStringLiteral("listadeprecios.rpt"), QStringLiteral("--archivo"), pdf});
    EXPECT_EQ(bien.codigo, 0) << bien.errores.toStdString();
    QFile f(pdf);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_TRUE(f.read(5) == "%PDF-");

    const Corrida caja = corre({QStringLiteral("--datos"), d.path(), QStringLiteral("--informe"),
                                QStringLiteral("listacajasimple.rpt"), QStringLiteral("--desde"), QStringLiteral("2026-01-01"),
                                QStringLiteral("--hasta"), QStringLiteral("2026-12-31"), QStringLiteral("--archivo"),
                                d.filePath(QStringLiteral("caja.csv"))});
    EXPECT_EQ(caja.codigo, 0) << caja.errores.toStdString();
    EXPECT_TRUE(QFile::exists(d.filePath(QStringLiteral("caja.csv"))));

    const Corrida falta = corre({QStringLiteral("--datos"), d.path(), QStringLiteral("--informe"),
                                 QStringLiteral("no-existe.rpt"), QStringLiteral("--archivo"), pdf});
    EXPECT_NE(falta.codigo, 0);
    EXPECT_TRUE(falta.errores.contains(QStringLiteral("No se encuentra el informe no-existe.rpt")));
    const Corrida fecha = corre({QStringLiteral("--datos"), d.path(), QStringLiteral("--informe"),
                                 QStringLiteral("listacajasimple.rpt"), QStringLiteral("--desde"), QStringLiteral("1/11/2026"),
                                 QStringLiteral("--archivo"), pdf});
    EXPECT_NE(fecha.codigo, 0);
    EXPECT_TRUE(fecha.errores.contains(QStringLiteral("Fecha mal escrita")));
    const Corrida tipo = corre({QStringLiteral("--datos"), d.path(), QStringLiteral("--informe"),
                                QStringLiteral("listadeprecios.rpt"), QStringLiteral("--archivo"),
                                d.filePath(QStringLiteral("x.doc"))});
    EXPECT_NE(tipo.codigo, 0);
    EXPECT_TRUE(tipo.errores.contains(QStringLiteral("Tipo de archivo no admitido")));
}

} // namespace
