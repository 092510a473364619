#include "articles/ui/pan_borr_mov_stock.h"

#include "articles/movimientos_stock.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

panBorrMovStock::panBorrMovStock(Almacen& almacen, QWidget* padre)
    : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panBorrMovStock"));
    setWindowTitle(QStringLiteral("Borrar movimientos de stock"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);

    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->permiteAgrupar(false);
    grilla_->fijaTituloImpresion(QStringLiteral("Movimientos de stock"));
    grilla_->fijaClave(QStringLiteral("idMovimientoStock"));
    grilla_->fijaTitulo(QStringLiteral("Codigo"), QStringLiteral("Código"));
    grilla_->fijaTitulo(QStringLiteral("Descripcion"), QStringLiteral("Descripción"));
    grilla_->fijaTitulo(QStringLiteral("TipoMovimientoStock"), QStringLiteral("Tipo"));
    grilla_->fijaTitulo(QStringLiteral("idMovimientoStock"), QStringLiteral("Nro."));
    grilla_->fijaMascara(QStringLiteral("Ingreso"), QStringLiteral("General Number"));
    grilla_->fijaMascara(QStringLiteral("Egreso"), QStringLiteral("General Number"));
    grilla_->ocultaColumna(QStringLiteral("idArticulo"));
    Intenta(this, [this] {
        grilla_->fijaConsulta(ConsultaMovimientosStock());
        grilla_->fijaAnchoColumna(QStringLiteral("Fecha"), 90);
        grilla_->fijaAnchoColumna(QStringLiteral("Codigo"), 120);
        grilla_->fijaAnchoColumna(QStringLiteral("Descripcion"), 240);
        grilla_->fijaAnchoColumna(QStringLiteral("TipoMovimientoStock"), 140);
        grilla_->fijaAnchoColumna(QStringLiteral("Comprobante"), 130);
        grilla_->fijaAnchoColumna(QStringLiteral("Ingreso"), 80);
        grilla_->fijaAnchoColumna(QStringLiteral("Egreso"), 80);
        grilla_->fijaAnchoColumna(QStringLiteral("idMovimientoStock"), 60);
    });
    capa->addWidget(grilla_, 1);

    auto* botones = new QHBoxLayout;
    eliminar_ = new QPushButton(QStringLiteral("&Eliminar"), this);
    eliminar_->setObjectName(QStringLiteral("Command29"));
    eliminar_->setAutoDefault(false);
    eliminar_->setMinimumWidth(100);
    auto* salir = new QPushButton(QStringLiteral("&Salir"), this);
    salir->setObjectName(QStringLiteral("Command2"));
    salir->setAutoDefault(false);
    salir->setMinimumWidth(100);
    botones->addWidget(eliminar_);
    botones->addStretch(1);
    botones->addWidget(salir);
    capa->addLayout(botones);

    connect(eliminar_, &QPushButton::clicked, this, &panBorrMovStock::eliminar);
    connect(salir, &QPushButton::clicked, this, &QDialog::accept);
    connect(grilla_, &Grilla::filaCambiada, this, &panBorrMovStock::actualizaBoton);

    actualizaBoton();
    resize(1000, 560);
    CentrarVentana(this);
}

void panBorrMovStock::actualizaBoton() { eliminar_->setEnabled(grilla_->claveActual().has_value()); }

void panBorrMovStock::eliminar() {
    const auto id = grilla_->claveActual();
    if (!id) return;
    if (!Pregunta(QStringLiteral("Borra el movimiento seleccionado"), this)) return;
    Intenta(this, [&] { BorraMovimientoStock(almacen_, id->toLongLong()); });
    grilla_->refresca();
    actualizaBoton();
}

} // namespace orv
