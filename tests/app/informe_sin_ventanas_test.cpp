// "orvanta --informe": arma un informe del catálogo sin abrir ventanas y termina con su código.

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// Corre el programa sobre la carpeta de datos y devuelve su código y lo que dijo por stderr.
std::pair<int, QString> corre(const QString& datos, const QStringList& argumentos) {
    QProcess p;
    QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
    e.remove("ORVANTA_PRUEBA_PG");
    p.setProcessEnvironment(e);
    p.start(ORVANTA_PROGRAMA, QStringList{"--datos", datos} + argumentos);
    EXPECT_TRUE(p.waitForFinished(60000));
    return {p.exitCode(), QString::fromUtf8(p.readAllStandardError())};
}

TEST(InformeSinVentanas, ArmaElArchivoOTerminaConUnErrorEnCastellano) {
    QTemporaryDir d;
    ASSERT_EQ(corre(d.path(), {"--datos-ejemplo"}).first, 0);
    const QString pdf = d.filePath("precios.pdf");
    const QString csv = d.filePath("caja.csv");
    const struct {
        QStringList argumentos;
        QString error; // vacío: termina bien
    } casos[] = {
        {{"--informe", "listadeprecios.rpt", "--archivo", pdf}, {}},
        {{"--informe", "listacajasimple.rpt", "--desde", "2026-01-01", "--hasta", "2026-12-31", "--archivo", csv}, {}},
        {{"--informe", "no-existe.rpt", "--archivo", pdf}, "No se encuentra el informe no-existe.rpt"},
        {{"--informe", "listacajasimple.rpt", "--desde", "1/11/2026", "--archivo", pdf}, "Fecha mal escrita"},
        {{"--informe", "listadeprecios.rpt", "--archivo", d.filePath("x.doc")}, "Tipo de archivo no admitido"},
    };
    for (const auto& k : casos) {
        const auto [codigo, errores] = corre(d.path(), k.argumentos);
        EXPECT_EQ(codigo == 0, k.error.isEmpty()) << qPrintable(k.argumentos.join(' ')) << ": " << qPrintable(errores);
        EXPECT_TRUE(errores.contains(k.error)) << qPrintable(errores);
    }
    QFile f(pdf);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.read(5), "%PDF-");
    EXPECT_TRUE(QFile::exists(csv));
}

} // namespace
