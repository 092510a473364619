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

// Una hoja de la lista impresa: letras, medidas y columnas ya llevadas al ancho de la hoja.
class HojaGrilla {
public:
    HojaGrilla(Grilla& g, QPrinter& impresora, QPainter& p)
        : m_(g.modelo()), p_(p), cols_(columnasVisibles(g.tabla()->horizontalHeader())) {
        const QRectF area = impresora.pageLayout().paintRectPixels(impresora.resolution());
        hoja_ = QRectF(0, 0, area.width(), area.height());
        double total = 0;
        for (const auto& c : cols_) total += c.ancho;
        for (auto& c : cols_) c.ancho = total > 0 ? c.ancho * hoja_.width() / total : 0;

        fuente_ = QFont(QStringLiteral("Sans Serif"), 8);
        negrita_ = fuente_;
        negrita_.setBold(true);
        grande_ = negrita_;
        grande_.setPointSize(12);
        p_.setFont(fuente_);
        alto_ = p_.fontMetrics().height() * 1.35;
        p_.setFont(grande_);
        altoTitulo_ = p_.fontMetrics().height() * 1.6;
        cabecera_ = altoTitulo_ + alto_ * 1.4;
        pie_ = alto_ * 1.6;
    }

    int filasPorPagina() const { return qMax(1, int((hoja_.height() - cabecera_ - pie_) / alto_)); }

    // Título y fecha, los títulos de las columnas y "Página n de m" al pie.
    void encabezado(const QString& titulo, const QString& fecha, int n, int paginas) {
        p_.setFont(grande_);
        p_.drawText(QRectF(0, 0, hoja_.width(), altoTitulo_), Qt::AlignLeft | Qt::AlignVCenter, titulo);
        p_.setFont(fuente_);
        p_.drawText(QRectF(0, 0, hoja_.width(), altoTitulo_), Qt::AlignRight | Qt::AlignVCenter, fecha);
        p_.setFont(negrita_);
        p_.fillRect(QRectF(0, altoTitulo_, hoja_.width(), alto_ * 1.2), QColor(230, 233, 238));
        double x = 0;
        for (const auto& c : cols_) {
            p_.drawText(QRectF(x + 3, altoTitulo_, c.ancho - 6, alto_ * 1.2), alineacion(c) | Qt::AlignVCenter,
                        m_.titulo(m_.campo(c.logica)));
            x += c.ancho;
        }
        p_.setFont(fuente_);
        const double yp = hoja_.height() - pie_;
        p_.drawLine(QPointF(0, yp), QPointF(hoja_.width(), yp));
        p_.drawText(QRectF(0, yp, hoja_.width(), pie_), Qt::AlignCenter, QStringLiteral("Página %1 de %2").arg(n).arg(paginas));
    }

    // La fila `enPagina` de la página, sombreada una de cada dos; los textos largos se cortan con "…".
    void fila(const QSqlQuery& q, int enPagina) {
        const double y = cabecera_ + enPagina * alto_;
        if (enPagina % 2 == 1) p_.fillRect(QRectF(0, y, hoja_.width(), alto_), QColor(245, 246, 248));
        double x = 0;
        for (const auto& c : cols_) {
            const QString t = p_.fontMetrics().elidedText(m_.texto(q.value(c.logica), c.logica), Qt::ElideRight,
                                                          int(c.ancho - 6));
            p_.drawText(QRectF(x + 3, y, c.ancho - 6, alto_), alineacion(c) | Qt::AlignVCenter, t);
            x += c.ancho;
        }
    }

private:
    int alineacion(const ColumnaImpresa& c) const { return m_.alineaDerecha(c.logica) ? Qt::AlignRight : Qt::AlignLeft; }

    const ModeloGrilla& m_;
    QPainter& p_;
    std::vector<ColumnaImpresa> cols_;
    QRectF hoja_;
    QFont fuente_, negrita_, grande_;
    double alto_ = 0, altoTitulo_ = 0, cabecera_ = 0, pie_ = 0;
};

} // namespace

int ImprimeGrilla(Grilla& g, QPrinter& impresora) {
    QPainter p;
    if (!p.begin(&impresora)) return 0;
    HojaGrilla hoja(g, impresora, p);
    const int porPagina = hoja.filasPorPagina();
    const qint64 filas = cuentaFilas(g); // para "Página n de m"
    const int paginas = int(qMax<qint64>(1, (filas + porPagina - 1) / porPagina));
    const QString titulo = g.tituloImpresion().isEmpty() ? g.window()->windowTitle() : g.tituloImpresion();
    const QString fecha = FechaTexto(QDate::currentDate());

    QSqlQuery q(g.almacen().base());
    q.setForwardOnly(true);
    bool ok = q.prepare(g.sql());
    for (const QVariant& v : g.parametros()) q.addBindValue(v);
    ok = ok && q.exec();

    int pagina = 1;
    int enPagina = 0;
    hoja.encabezado(titulo, fecha, pagina, paginas);
    while (ok && q.next()) {
        if (enPagina == porPagina) {
            impresora.newPage();
            enPagina = 0;
            hoja.encabezado(titulo, fecha, ++pagina, paginas);
        }
        hoja.fila(q, enPagina++);
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
