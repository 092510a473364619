#include "maintenance/ui/pan_help.h"

#include "widgets/ventanas.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <QTextBrowser>
#include <QTextDocument>
#include <QVBoxLayout>

namespace orv {

panHelp::panHelp(int tema, QWidget* padre) : QDialog(padre), temas_(TemasAyuda()) {
    setObjectName(QStringLiteral("panHelp"));
    setWindowTitle(QStringLiteral("Ayuda"));
    auto* capa = new QVBoxLayout(this);
    auto* division = new QSplitter(this);
    lbl_ = new QListWidget(division);
    lbl_->setObjectName(QStringLiteral("lbl"));
    lbl_->setIconSize(QSize(20, 20));
    lbl_->setSpacing(2);
    const QIcon img = style()->standardIcon(QStyle::SP_FileDialogInfoView);
    for (const TemaAyuda& t : temas_) lbl_->addItem(new QListWidgetItem(img, t.titulo));
    rt_ = new QTextBrowser(division);
    rt_->setObjectName(QStringLiteral("rt"));
    rt_->setOpenExternalLinks(true);
    rt_->document()->setDocumentMargin(14);
    division->addWidget(lbl_);
    division->addWidget(rt_);
    division->setStretchFactor(1, 1);
    division->setSizes({220, 560});
    capa->addWidget(division, 1);
    auto* pie = new QHBoxLayout;
    pie->addStretch(1);
    auto* cerrar = new QPushButton(QStringLiteral("&Cerrar"), this);
    cerrar->setObjectName(QStringLiteral("cmdCerrar"));
    pie->addWidget(cerrar);
    capa->addLayout(pie);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::accept);
    connect(lbl_, &QListWidget::currentRowChanged, this, &panHelp::muestraTema);
    // Un vínculo a otra página de la ayuda marca su tema en la lista.
    connect(rt_, &QTextBrowser::sourceChanged, this, [this](const QUrl& url) {
        for (int i = 0; i < temas_.size(); ++i)
            if (temas_[i].direccion() == url.adjusted(QUrl::RemoveFragment) && lbl_->currentRow() != i) {
                const QSignalBlocker sin(lbl_);
                lbl_->setCurrentRow(i);
            }
    });
    resize(860, 600);
    CentrarVentana(this);
    muestraTema(tema >= 0 && tema < temas_.size() ? tema : 0);
}

QStringList panHelp::nombresDesde(const QWidget* control) {
    QStringList nombres;
    for (const QWidget* w = control; w; w = w->parentWidget()) nombres << w->objectName();
    return nombres;
}

void panHelp::muestraTema(int indice) {
    if (indice < 0 || indice >= temas_.size()) return;
    if (lbl_->currentRow() != indice) {
        const QSignalBlocker sin(lbl_);
        lbl_->setCurrentRow(indice);
    }
    rt_->setSource(temas_[indice].direccion());
}

int panHelp::temaActual() const { return lbl_->currentRow(); }

} // namespace orv
