#include "customers/ui/pan_nue_comision.h"

#include "customers/cuenta.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace orv {

PanNueComision::PanNueComision(Almacen& almacen, const Reloj& reloj, qint64 idVendedor, QWidget* padre)
    : QDialog(padre), almacen_(almacen), id_(idVendedor) {
    setObjectName(QStringLiteral("PanNueComision"));
    setWindowTitle(QStringLiteral("Nuevo Registro de Debito al cliente"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* f = new QFormLayout;
    f->setSpacing(8);
    dtPicker1_ = CampoFecha(QStringLiteral("DTPicker1"), this);
    dtPicker1_->setDate(reloj.hoy());
    text1_ = new QLineEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setMaxLength(kLargoTipoCuenta);
    text1_->setMinimumWidth(300);
    text2_ = new QLineEdit(this);
    text2_->setObjectName(QStringLiteral("Text2"));
    text2_->setMaximumWidth(160);
    text2_->setAlignment(Qt::AlignRight);
    option1_ = new QRadioButton(QStringLiteral("DEBITO"), this);
    option1_->setObjectName(QStringLiteral("Option1"));
    option1_->setChecked(true);
    option2_ = new QRadioButton(QStringLiteral("CREDITO"), this);
    option2_->setObjectName(QStringLiteral("Option2"));
    auto* opciones = new QHBoxLayout;
    opciones->addWidget(option1_);
    opciones->addWidget(option2_);
    opciones->addStretch(1);
    f->addRow(QStringLiteral("Fecha :"), dtPicker1_);
    f->addRow(QStringLiteral("Detalle :"), text1_);
    f->addRow(QStringLiteral("Importe :"), text2_);
    f->addRow(QString(), opciones);
    capa->addLayout(f);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanNueComision::acepta);
    adjustSize();
    CentrarVentana(this);
    text1_->setFocus();
}

void PanNueComision::acepta() {
    if (Intenta(this, [this] {
            RegistraLineaManual(almacen_, id_, dtPicker1_->date(), text1_->text(), text2_->text(), option1_->isChecked());
        }))
        accept();
}

} // namespace orv
