#include "sales/ui/pan_sel_cliente.h"

#include "sales/cliente_venta.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanSelCliente::PanSelCliente(Almacen& almacen, QWidget* padre) : QDialog(padre) {
    setObjectName(QStringLiteral("panSelCliente"));
    setWindowTitle(QStringLiteral("Seleccione Cliente"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    auto* fila = new QHBoxLayout;
    fila->addWidget(new QLabel(QStringLiteral("Nombre :"), this));
    text1_ = new QLineEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    fila->addWidget(text1_, 1);
    capa->addLayout(fila);

    grilla_ = new Grilla(almacen, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->permiteAgrupar(false);
    grilla_->fijaClave(QStringLiteral("idVendedor"));
    grilla_->fijaTitulo(QStringLiteral("idVendedor"), QStringLiteral("Nro."));
    grilla_->fijaTitulo(QStringLiteral("Telefono"), QStringLiteral("Teléfono"));
    grilla_->fijaTitulo(QStringLiteral("Cuit"), QStringLiteral("CUIT"));
    grilla_->fijaTitulo(QStringLiteral("NroClienteVIP"), QStringLiteral("Tarjeta"));
    Intenta(this, [this] { grilla_->fijaConsulta(ConsultaSeleccionClientes()); });
    grilla_->fijaAnchoColumna(QStringLiteral("Nombre"), 240);
    grilla_->fijaAnchoColumna(QStringLiteral("Domicilio"), 200);
    capa->addWidget(grilla_, 1);

    connect(BotonesAlPie(this, capa, false), &QPushButton::clicked, this, &PanSelCliente::acepta);
    connect(grilla_, &Grilla::filaActivada, this, &PanSelCliente::acepta);
    connect(text1_, &QLineEdit::textChanged, this,
            [this](const QString& t) { grilla_->busca(QStringLiteral("Nombre"), t); });
    connect(text1_, &QLineEdit::returnPressed, this, &PanSelCliente::acepta);
    resize(860, 520);
    CentrarVentana(this);
    text1_->setFocus();
}

void PanSelCliente::acepta() {
    const auto id = grilla_->claveActual();
    if (!id) return;
    id_ = id->toLongLong();
    accept();
}

} // namespace orv
