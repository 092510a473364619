#include "articles/ui/imprime_etiquetas.h"

#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>

namespace orv {

int PintaEtiquetas(QPrinter& impresora, const TrabajoEtiquetas& trabajo) {
    // Las medidas de la hoja cuentan desde el borde del papel, no desde el área imprimible.
    impresora.setFullPage(true);
    QPainter p(&impresora);
    if (!p.isActive()) return 0;
    const double puntosPorMm = impresora.resolution() / 25.4;
    p.scale(puntosPorMm, puntosPorMm);
    const int paginas = PaginasEtiquetas(trabajo.lugares);
    for (int pagina = 0; pagina < paginas; ++pagina) {
        if (pagina > 0) impresora.newPage();
        DibujaPaginaEtiquetas(p, trabajo.hoja, trabajo.lugares, pagina, trabajo.ean13);
    }
    return paginas;
}

void PrevisualizaEtiquetas(QWidget* padre, const TrabajoEtiquetas& trabajo) {
    QPrinter impresora(QPrinter::HighResolution);
    QPrintPreviewDialog d(&impresora, padre);
    d.setObjectName(QStringLiteral("vistaEtiquetas"));
    d.setWindowTitle(QStringLiteral("Vista previa de las etiquetas"));
    QObject::connect(&d, &QPrintPreviewDialog::paintRequested, &d,
                     [&trabajo](QPrinter* pr) { PintaEtiquetas(*pr, trabajo); });
    d.resize(900, 760);
    d.exec();
}

} // namespace orv
