#include "customers/ui/pan_liq.h"

#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanLiq::PanLiq(const Almacen& almacen, const Reloj& reloj, const QString& aPagar, QWidget* padre) : QDialog(padre) {
    setObjectName(QStringLiteral("panLiq"));
    setWindowTitle(QStringLiteral("Liquidar comisiones"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* f = new QFormLayout;
    f->setSpacing(8);
    dt1_ = CampoFecha(QStringLiteral("dt1"), this);
    dt1_->setDate(reloj.hoy());
    txAPagar_ = new QLineEdit(aPagar, this);
    txAPagar_->setObjectName(QStringLiteral("txAPagar"));
    txAPagar_->setAlignment(Qt::AlignRight);
    txAPagar_->setMaximumWidth(160);
    txAPagar_->setToolTip(QStringLiteral("Con punto decimal y, si quiere, comas de miles: 1,234.56"));
    chkCaja_ = new QCheckBox(QStringLiteral("Asienta movimiento en la caja ?"), this);
    chkCaja_->setObjectName(QStringLiteral("chkCaja"));
    cboCuenta_ = new QComboBox(this);
    cboCuenta_->setObjectName(QStringLiteral("cboCuenta"));
    cboCuenta_->setMinimumWidth(220);
    LlenaCombo(cboCuenta_, almacen, QStringLiteral("SELECT idCuenta, Cuenta FROM Cuentas ORDER BY Cuenta"), {},
               QStringLiteral("Cuenta"), QStringLiteral("idCuenta"));
    cboFPago_ = new QComboBox(this);
    cboFPago_->setObjectName(QStringLiteral("cboFPago"));
    cboFPago_->setMinimumWidth(160);
    LlenaLista(cboFPago_, almacen, QStringLiteral("SELECT FormaPago FROM FormasDePago ORDER BY idTipoFormaPago"), {},
               QStringLiteral("FormaPago"));
    // Las dos listas empiezan sin elegir y, como la caja, apagadas.
    for (QComboBox* c : {cboCuenta_, cboFPago_}) {
        c->setCurrentIndex(-1);
        c->setEnabled(false);
    }
    connect(chkCaja_, &QCheckBox::toggled, this, &PanLiq::cambiaCaja);
    f->addRow(QStringLiteral("Fecha :"), dt1_);
    f->addRow(QStringLiteral("A Pagar :"), txAPagar_);
    f->addRow(QString(), chkCaja_);
    f->addRow(QStringLiteral("Cuenta :"), cboCuenta_);
    f->addRow(QStringLiteral("Forma de Pago :"), cboFPago_);
    capa->addLayout(f);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanLiq::acepta);
    adjustSize();
    CentrarVentana(this);
    txAPagar_->setFocus();
    txAPagar_->selectAll();
}

void PanLiq::cambiaCaja() {
    cboCuenta_->setEnabled(chkCaja_->isChecked());
    cboFPago_->setEnabled(chkCaja_->isChecked());
}

DatosLiquidacion PanLiq::datos() const {
    DatosLiquidacion d;
    d.fecha = dt1_->date();
    d.aPagar = txAPagar_->text();
    d.asientaCaja = chkCaja_->isChecked();
    if (cboCuenta_->currentIndex() >= 0) d.idCuenta = cboCuenta_->currentData().toLongLong();
    d.formaPago = cboFPago_->currentIndex() >= 0 ? cboFPago_->currentText() : QString();
    return d;
}

void PanLiq::acepta() {
    const DatosLiquidacion d = datos();
    if (Intenta(this, [&] { ValidaLiquidacion(d); })) return accept();
    // Lo que falta de la caja se elige en la cuenta; un importe malo se corrige en su lugar.
    if (d.asientaCaja && (!d.idCuenta || d.formaPago.isEmpty())) {
        cboCuenta_->setFocus();
    } else {
        txAPagar_->setFocus();
        txAPagar_->selectAll();
    }
}

} // namespace orv
