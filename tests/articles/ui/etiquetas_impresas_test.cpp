// Las etiquetas impresas se leen con un lector de verdad: la hoja sale a PDF por la impresora,
// cada página se pasa a imagen y cada etiqueta, recortada en su lugar en milímetros, se decodifica
// con zbarimg. Cada una debe dar el código de su artículo, en su símbolo.

#include "apoyo/filas.h"
#include "articles/etiquetas.h"
#include "articles/ui/imprime_etiquetas.h"

#include <QImage>
#include <QPageSize>
#include <QPrinter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orv {
namespace {

constexpr int kPuntosPorPulgada = 300;

QString ejecuta(const QString& programa, const QStringList& argumentos) {
    QProcess p;
    p.start(programa, argumentos);
    if (!p.waitForFinished(60000)) return QStringLiteral("(no terminó)");
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

// Imprime el trabajo a PDF, lo pasa a imágenes y lee cada etiqueta: "página|símbolo:código".
QStringList leeEtiquetas(const TrabajoEtiquetas& t, const QTemporaryDir& dir) {
    QPrinter impresora(QPrinter::HighResolution);
    impresora.setOutputFormat(QPrinter::PdfFormat);
    impresora.setOutputFileName(dir.filePath(QStringLiteral("hoja.pdf")));
    impresora.setPageSize(QPageSize(QPageSize::A4));
    const int paginas = PintaEtiquetas(impresora, t);
    ejecuta(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QString::number(kPuntosPorPulgada), QStringLiteral("-gray"),
                                         QStringLiteral("-png"), dir.filePath(QStringLiteral("hoja.pdf")),
                                         dir.filePath(QStringLiteral("pag"))});
    QList<QImage> imagenes;
    for (int i = 1; i <= paginas; ++i) imagenes << QImage(dir.filePath(QStringLiteral("pag-%1.png").arg(i)));
    const double px = kPuntosPorPulgada / 25.4;
    QStringList r;
    for (int i = 0; i < t.lugares.size(); ++i) {
        const LugarEtiqueta& l = t.lugares[i];
        const QRect recorte(int(l.origen.x() * px), int(l.origen.y() * px), int(t.hoja.ancho * px), int(t.hoja.largo * px));
        const QString archivo = dir.filePath(QStringLiteral("etiqueta%1.png").arg(i));
        imagenes.value(l.pagina).copy(recorte).save(archivo);
        r << QStringLiteral("%1|%2").arg(l.pagina).arg(ejecuta(QStringLiteral("zbarimg"), {QStringLiteral("-q"), archivo}));
    }
    return r;
}

TEST(EtiquetasImpresas, CadaEtiquetaSeLeeConElCodigoDeSuArticulo) {
    if (QStandardPaths::findExecutable(QStringLiteral("zbarimg")).isEmpty() ||
        QStandardPaths::findExecutable(QStringLiteral("pdftoppm")).isEmpty())
        GTEST_SKIP() << "faltan zbarimg o pdftoppm (scripts/dependencias.sh)";
    QTemporaryDir dir;
    // Una hoja A4 de 3 × 7 etiquetas de 63.5 × 38.1 mm, desde la posición 17: cinco entran en la
    // primera hoja y las demás siguen arriba en la segunda.
    const HojaEtiquetas hoja{QStringLiteral("A4"), 3, 7, 7.2, 15.15, 2.5, 0, 63.5, 38.1, 24};
    const QStringList codigos = {"010001", "010001", "AB-12 X", "abc", "$/+%.", "7790001000019", "7790001000016", "9"};
    TrabajoEtiquetas t{hoja, ReparteEtiquetas(hoja, codigos, 17), true};
    // Las minúsculas salen como mayúsculas; el EAN-13 válido, en EAN-13; el mal verificado, en Code 39.
    EXPECT_EQ(leeEtiquetas(t, dir), (QStringList{"0|CODE-39:010001", "0|CODE-39:010001", "0|CODE-39:AB-12 X", "0|CODE-39:ABC",
                                                  "0|CODE-39:$/+%.", "1|EAN-13:7790001000019", "1|CODE-39:7790001000016",
                                                  "1|CODE-39:9"}));
    // Sin la opción, todo en Code 39; y la fuente chica de una etiqueta de góndola también se lee.
    const HojaEtiquetas chica{QStringLiteral("Gondola"), 4, 10, 5, 5, 2, 2, 45, 20, 14};
    t = {chica, ReparteEtiquetas(chica, {"7790001000019", "REM-07"}, 1), false};
    EXPECT_EQ(leeEtiquetas(t, dir), (QStringList{"0|CODE-39:7790001000019", "0|CODE-39:REM-07"}));
}

} // namespace
} // namespace orv
