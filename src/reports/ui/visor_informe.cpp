#include "reports/ui/visor_informe.h"

#include "reports/ui/salida_informes.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"
#include "store/aviso.h"

#include <QDir>
#include <QLabel>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QShortcut>
#include <QToolBar>
#include <QVBoxLayout>

namespace orv {

VisorInforme::VisorInforme(InformeArmado informe, std::function<void(const QString&)> guarda, QWidget* padre)
    : QWidget(padre, Qt::Window), informe_(std::move(informe)), guarda_(std::move(guarda)),
      impresora_(QPrinter::HighResolution) {
    setObjectName(QStringLiteral("visorInforme"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(informe_.titulo.isEmpty() ? QStringLiteral("Informe") : informe_.titulo);
    impresora_.setPageSize(QPageSize(informe_.pagina));
    impresora_.setPageOrientation(informe_.horizontal ? QPageLayout::Landscape : QPageLayout::Portrait);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(0, 0, 0, 0);
    capa->setSpacing(0);
    auto* barra = new QToolBar(this);
    barra->setObjectName(QStringLiteral("barraVisor"));
    barra->setToolButtonStyle(Qt::ToolButtonTextOnly);
    capa->addWidget(barra);
    vista_ = new QPrintPreviewWidget(&impresora_, this);
    vista_->setObjectName(QStringLiteral("paginasInforme"));
    capa->addWidget(vista_, 1);
    connect(vista_, &QPrintPreviewWidget::paintRequested, this,
            [this](QPrinter* p) { PintaInforme(informe_, *p); });

    barra->addAction(QStringLiteral("Imprimir..."), this, &VisorInforme::imprimir)->setObjectName(QStringLiteral("visorImprimir"));
    barra->addAction(QStringLiteral("Exportar..."), this, &VisorInforme::exportar)->setObjectName(QStringLiteral("visorExportar"));
    barra->addSeparator();
    barra->addAction(QStringLiteral("|<"), this, [this] { vista_->setCurrentPage(1); })->setToolTip(QStringLiteral("Primera página"));
    barra->addAction(QStringLiteral("<"), this, [this] { vista_->setCurrentPage(vista_->currentPage() - 1); })
        ->setToolTip(QStringLiteral("Página anterior"));
    pagina_ = new QLabel(barra);
    pagina_->setObjectName(QStringLiteral("visorPagina"));
    pagina_->setMinimumWidth(110);
    pagina_->setAlignment(Qt::AlignCenter);
    barra->addWidget(pagina_);
    barra->addAction(QStringLiteral(">"), this, [this] { vista_->setCurrentPage(vista_->currentPage() + 1); })
        ->setToolTip(QStringLiteral("Página siguiente"));
    barra->addAction(QStringLiteral(">|"), this, [this] { vista_->setCurrentPage(vista_->pageCount()); })
        ->setToolTip(QStringLiteral("Última página"));
    barra->addSeparator();
    barra->addAction(QStringLiteral("Ancho de página"), vista_, &QPrintPreviewWidget::fitToWidth);
    barra->addAction(QStringLiteral("Página entera"), vista_, &QPrintPreviewWidget::fitInView);
    barra->addAction(QStringLiteral("Acercar"), this, [this] { vista_->zoomIn(); });
    barra->addAction(QStringLiteral("Alejar"), this, [this] { vista_->zoomOut(); });
    barra->addSeparator();
    barra->addAction(QStringLiteral("Cerrar"), this, &QWidget::close);
    connect(vista_, &QPrintPreviewWidget::previewChanged, this, &VisorInforme::actualizaPagina);
    new QShortcut(QKeySequence(Qt::Key_Escape), this, this, &QWidget::close);
    new QShortcut(QKeySequence(Qt::Key_PageDown), this, this, [this] { vista_->setCurrentPage(vista_->currentPage() + 1); });
    new QShortcut(QKeySequence(Qt::Key_PageUp), this, this, [this] { vista_->setCurrentPage(vista_->currentPage() - 1); });
    new QShortcut(QKeySequence::Print, this, this, &VisorInforme::imprimir);

    TamanioDeLectura(this);
    vista_->fitToWidth();
    vista_->updatePreview();
    vista_->setCurrentPage(1);
    actualizaPagina();
}

int VisorInforme::paginas() const { return vista_->pageCount(); }
int VisorInforme::paginaActual() const { return vista_->currentPage(); }

void VisorInforme::actualizaPagina() {
    pagina_->setText(QStringLiteral("Página %1 de %2").arg(vista_->currentPage()).arg(vista_->pageCount()));
}

void VisorInforme::imprimir() {
    QPrinter impresora(QPrinter::HighResolution);
    impresora.setPageSize(QPageSize(informe_.pagina));
    impresora.setPageOrientation(informe_.horizontal ? QPageLayout::Landscape : QPageLayout::Portrait);
    QPrintDialog dialogo(&impresora, this);
    dialogo.setWindowTitle(QStringLiteral("Imprimir ") + windowTitle());
    if (dialogo.exec() != QDialog::Accepted) return;
    PintaInforme(informe_, impresora);
}

void VisorInforme::exportar() {
    const QString archivo = EligeArchivoInforme(this, QStringLiteral("Exportar ") + windowTitle(), QDir::homePath());
    if (archivo.isEmpty()) return;
    Intenta(this, [&] {
        guarda_(archivo);
    });
}

} // namespace orv
