#include "sales/ui/pan_sel_art.h"

#include "sales/borrador.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace orv {

PanSelArt::PanSelArt(Almacen& almacen, const Configuracion& conf, const QString& mascaraMoneda, QWidget* padre)
    : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panSelArt"));
    setWindowTitle(QStringLiteral("Seleccione Artículo"));
    setModal(true);
    // Si falla, se dice, y la búsqueda sirve igual sin el precio con impuesto al día.
    Intenta(this, [&] { RefrescaPrecioFinal(almacen_, conf.lee(clave::miscelaneas, QStringLiteral("CoefIva"))); });

    auto* capa = new QVBoxLayout(this);
    auto* fila = new QHBoxLayout;
    fila->addWidget(new QLabel(QStringLiteral("Buscar :"), this));
    text1_ = new QLineEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setPlaceholderText(QStringLiteral("Parte de la descripción"));
    fila->addWidget(text1_, 1);
    capa->addLayout(fila);

    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("GridEX1"));
    grilla_->permiteAgrupar(false);
    grilla_->fijaClave(QStringLiteral("idArticulo"));
    grilla_->fijaTitulo(QStringLiteral("Codigo"), QStringLiteral("Codigo"));
    grilla_->fijaTitulo(QStringLiteral("Descripcion"), QStringLiteral("Descripcion"));
    grilla_->fijaTitulo(QStringLiteral("DescripcionMatriz"), QStringLiteral("Características"));
    grilla_->fijaTitulo(QStringLiteral("PrecioVenta"), QStringLiteral("Precio"));
    grilla_->fijaTitulo(QStringLiteral("PrecioFinal"), QStringLiteral("Precio con Impuesto"));
    grilla_->fijaTitulo(QStringLiteral("StockActual"), QStringLiteral("Stock"));
    grilla_->fijaMascara(QStringLiteral("PrecioVenta"), mascaraMoneda);
    grilla_->fijaMascara(QStringLiteral("PrecioFinal"), mascaraMoneda);
    grilla_->ocultaColumna(QStringLiteral("idArticulo"));
    capa->addWidget(grilla_, 1);

    connect(BotonesAlPie(this, capa, false), &QPushButton::clicked, this, &PanSelArt::acepta);
    connect(grilla_, &Grilla::filaActivada, this, &PanSelArt::acepta);
    connect(text1_, &QLineEdit::textChanged, this, &PanSelArt::filtra);
    connect(text1_, &QLineEdit::returnPressed, this, &PanSelArt::acepta);
    text1_->installEventFilter(this);

    filtra();
    grilla_->fijaAnchoColumna(QStringLiteral("Codigo"), 110);
    grilla_->fijaAnchoColumna(QStringLiteral("Descripcion"), 320);
    grilla_->fijaAnchoColumna(QStringLiteral("DescripcionMatriz"), 140);
    grilla_->fijaAnchoColumna(QStringLiteral("PrecioVenta"), 100);
    grilla_->fijaAnchoColumna(QStringLiteral("PrecioFinal"), 150);
    grilla_->fijaAnchoColumna(QStringLiteral("StockActual"), 70);
    resize(900, 560);
    CentrarVentana(this);
    text1_->setFocus();
}

void PanSelArt::filtra() {
    const ConsultaConParametros c = BuscaArticulos(almacen_, text1_->text());
    Intenta(this, [&] { grilla_->fijaConsulta(c.sql, c.parametros); });
}

bool PanSelArt::eventFilter(QObject* o, QEvent* e) {
    // Flechas desde la búsqueda mueven la fila de la grilla.
    if (o == text1_ && e->type() == QEvent::KeyPress) {
        const int k = static_cast<QKeyEvent*>(e)->key();
        if (k == Qt::Key_Down || k == Qt::Key_Up || k == Qt::Key_PageDown || k == Qt::Key_PageUp) {
            QTableView* t = grilla_->tabla();
            QKeyEvent copia(QEvent::KeyPress, k, Qt::NoModifier);
            QCoreApplication::sendEvent(t, &copia);
            return true;
        }
    }
    return QDialog::eventFilter(o, e);
}

void PanSelArt::acepta() {
    const auto fila = grilla_->filaActual();
    if (!fila) {
        MensajeError(QStringLiteral("Seleccione un registro!"), this);
        return;
    }
    codigo_ = fila->value(QStringLiteral("Codigo")).toString();
    accept();
}

} // namespace orv
