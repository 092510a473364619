#include "widgets/previsualiza.h"

#include "widgets/grilla.h"
#include "store/formato.h"

#include <QDate>
#include <QHeaderView>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QSqlError>
#include <QSqlQuery>
#include <QTableView>

#include <vector>

namespace orv {

namespace {

struct ColumnaImpresa {
    int logica;
    double ancho; // en unidades del dispositivo
};

// Columnas visibles en el orden de la pantalla, con su ancho en pantalla (al menos 20).
std::vector<ColumnaImpresa> columnasVisibles(const QHeaderView* enc) {
    std::vector<ColumnaImpresa> cols;
    for (int v = 0; v < enc->count(); ++v) {
        const int l = enc->logicalIndex(v);
        if (!enc->isSectionHidden(l)) cols.push_back({l, double(qMax(20, enc->sectionSize(l)))});
    }
    return cols;
}

// Filas de la consulta de la grilla; 0 si no se pudo contar (la impresión sale igual).
qint64 cuentaFilas(Grilla& g) {
    try {
        return g.almacen().valor(QStringLiteral("SELECT COUNT(*) FROM (") + g.sql() + QStringLiteral(") AS q"),
                                 g.parametros()).toLongLong();
    } catch (const ErrorAlmacen&) {
        return 0;
    }
}

} // namespace

int ImprimeGrilla(Grilla& g, QPrinter& impresora) {
    const ModeloGrilla& m = g.modelo();
    const QHeaderView* enc = g.tabla()->horizontalHeader();

    std::vector<ColumnaImpresa> cols = columnasVisibles(enc);
    double total = 0;
    for (const auto& c : cols) total += c.ancho;

    QPainter p;
    if (!p.begin(&impresora)) return 0;
    const QRectF area = impresora.pageLayout().paintRectPixels(impresora.resolution());
    const QRectF hoja(0, 0, area.width(), area.height());
    for (auto& c : cols) c.ancho = total > 0 ? c.ancho * hoja.width() / total : 0;

    QFont fuente(QStringLiteral("Sans Serif"), 8);
    QFont negrita = fuente;
    negrita.setBold(true);
    QFont grande = fuente;
    grande.setPointSize(12);
    grande.setBold(true);
    p.setFont(fuente);
    const double alto = p.fontMetrics().height() * 1.35;
    p.setFont(grande);
    const double altoTitulo = p.fontMetrics().height() * 1.6;
    const double cabecera = altoTitulo + alto * 1.4;
    const double pie = alto * 1.6;
    const int porPagina = qMax(1, int((hoja.height() - cabecera - pie) / alto));

    const qint64 filas = cuentaFilas(g); // para "Página n de m"
    const int paginas = int(qMax<qint64>(1, (filas + porPagina - 1) / porPagina));
    const QString titulo = g.tituloImpresion().isEmpty() ? g.window()->windowTitle() : g.tituloImpresion();
    const QString fecha = FechaTexto(QDate::currentDate());

    auto encabezado = [&](int n) {
        p.setFont(grande);
        p.drawText(QRectF(0, 0, hoja.width(), altoTitulo), Qt::AlignLeft | Qt::AlignVCenter, titulo);
        p.setFont(fuente);
        p.drawText(QRectF(0, 0, hoja.width(), altoTitulo), Qt::AlignRight | Qt::AlignVCenter, fecha);
        p.setFont(negrita);
        double x = 0;
        const double y = altoTitulo;
        p.fillRect(QRectF(0, y, hoja.width(), alto * 1.2), QColor(230, 233, 238));
        for (const auto& c : cols) {
            const int alin = m.alineaDerecha(c.logica) ? Qt::AlignRight : Qt::AlignLeft;
            p.drawText(QRectF(x + 3, y, c.ancho - 6, alto * 1.2), alin | Qt::AlignVCenter,
                       m.titulo(m.campo(c.logica)));
            x += c.ancho;
        }
        p.setFont(fuente);
        const double yp = hoja.height() - pie;
        p.drawLine(QPointF(0, yp), QPointF(hoja.width(), yp));
        p.drawText(QRectF(0, yp, hoja.width(), pie), Qt::AlignCenter,
                   QStringLiteral("Página %1 de %2").arg(n).arg(paginas));
    };

    QSqlQuery q(g.almacen().base());
    q.setForwardOnly(true);
    bool ok = q.prepare(g.sql());
    for (const QVariant& v : g.parametros()) q.addBindValue(v);
    ok = ok && q.exec();

    int pagina = 1;
    int enPagina = 0;
    encabezado(pagina);
    while (ok && q.next()) {
        if (enPagina == porPagina) {
            impresora.newPage();
            ++pagina;
            enPagina = 0;
            encabezado(pagina);
        }
        const double y = cabecera + enPagina * alto;
        if (enPagina % 2 == 1) p.fillRect(QRectF(0, y, hoja.width(), alto), QColor(245, 246, 248));
        double x = 0;
        for (const auto& c : cols) {
            const int alin = m.alineaDerecha(c.logica) ? Qt::AlignRight : Qt::AlignLeft;
            const QString t = p.fontMetrics().elidedText(m.texto(q.value(c.logica), c.logica), Qt::ElideRight,
                                                         int(c.ancho - 6));
            p.drawText(QRectF(x + 3, y, c.ancho - 6, alto), alin | Qt::AlignVCenter, t);
            x += c.ancho;
        }
        ++enPagina;
    }
    p.end();
    return pagina;
}

void PrevisualizaGrilla(Grilla& grilla) {
    QPrinter impresora(QPrinter::HighResolution);
    impresora.setPageOrientation(QPageLayout::Landscape);
    QPrintPreviewDialog d(&impresora, grilla.window());
    d.setWindowTitle(QStringLiteral("Vista previa de impresión"));
    QObject::connect(&d, &QPrintPreviewDialog::paintRequested, &d,
                     [&grilla](QPrinter* pr) { ImprimeGrilla(grilla, *pr); });
    d.resize(1000, 720);
    d.exec();
}

} // namespace orv
