#include "shell/paneles.h"

#include "shell/grilla.h"

#include <QLabel>
#include <QVBoxLayout>

namespace orv {

QLabel* TituloPanel(const QString& texto, QWidget* padre) {
    auto* t = new QLabel(texto, padre);
    t->setObjectName(QStringLiteral("lblTituloPanel"));
    QFont f = t->font();
    f.setPointSizeF(f.pointSizeF() * 1.6);
    f.setBold(true);
    t->setFont(f);
    return t;
}

PanelLista::PanelLista(Almacen& almacen, const QString& titulo, const QString& nombreGrilla, QWidget* padre)
    : QWidget(padre) {
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(0, 0, 0, 0);
    capa->setSpacing(10);
    capa->addWidget(TituloPanel(titulo, this));
    grilla_ = new Grilla(almacen, this);
    grilla_->setObjectName(nombreGrilla);
    grilla_->fijaTituloImpresion(titulo);
    capa->addWidget(grilla_, 1);
}

void PanelLista::fijaConsulta(const QString& sql, const QVariantList& parametros) {
    try {
        grilla_->fijaConsulta(sql, parametros);
    } catch (const ErrorAlmacen&) {
        // Errores ignorados al cargar: la grilla queda vacía.
    }
}

} // namespace orv
