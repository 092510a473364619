#include "sales/ui/pan_fpago.h"

#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"
#include "store/entrada.h"
#include "store/formato.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanFPago::PanFPago(const Almacen& almacen, const QString& claveImpositiva, const DatosFPago& actuales, QWidget* padre)
    : QDialog(padre), almacen_(almacen), entrada_(actuales) {
    setObjectName(QStringLiteral("PanFPago"));
    setWindowTitle(QStringLiteral("Formas de Pago / Cliente"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(18, 16, 18, 12);
    label4_ = new QLabel(QStringLiteral(" Cliente ") + actuales.nombreCliente, this);
    label4_->setObjectName(QStringLiteral("Label4"));
    QFont f = label4_->font();
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.15);
    label4_->setFont(f);
    capa->addWidget(label4_);

    auto* campos = new QFormLayout;
    campos->setSpacing(8);
    combo3_ = new QComboBox(this);
    combo3_->setObjectName(QStringLiteral("Combo3"));
    LlenaCombo(combo3_, almacen_, QStringLiteral("SELECT idTipoComprobante, Tipo FROM TiposDeComprobantes ORDER BY idTipoComprobante"),
               {}, QStringLiteral("Tipo"), QStringLiteral("idTipoComprobante"));
    SelComboId(combo3_, actuales.idTipoComprobante);

    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    LlenaCombo(combo1_, almacen_, QStringLiteral("SELECT idTipoFormaPago, FormaPago FROM FormasDePago ORDER BY idTipoFormaPago"),
               {}, QStringLiteral("FormaPago"), QStringLiteral("idTipoFormaPago"));
    combo1_->setCurrentIndex(actuales.posicionFormaPago < combo1_->count() ? actuales.posicionFormaPago : -1);
    check1_ = new QCheckBox(QStringLiteral("A cuenta..."), this);
    check1_->setObjectName(QStringLiteral("Check1"));
    lblCupon_ = new QLabel(QStringLiteral("Cupón :"), this);
    txCupon_ = new QLineEdit(actuales.cupon, this);
    txCupon_->setObjectName(QStringLiteral("txCupon"));
    txCupon_->setMaximumWidth(140);
    auto* pago = new QHBoxLayout;
    pago->addWidget(combo1_, 1);
    pago->addWidget(lblCupon_);
    pago->addWidget(txCupon_);
    pago->addWidget(check1_);

    combo2_ = new QComboBox(this);
    combo2_->setObjectName(QStringLiteral("Combo2"));
    LlenaCombo(combo2_, almacen_, QStringLiteral("SELECT idTipoIva, TipoIva FROM TipoDeIva ORDER BY idTipoIva"), {},
               QStringLiteral("TipoIva"), QStringLiteral("idTipoIva"));
    SelComboId(combo2_, actuales.idTipoIva);
    text4_ = new QLineEdit(actuales.cuit, this);
    text4_->setObjectName(QStringLiteral("Text4"));
    text2_ = new QLineEdit(QString::number(actuales.descuento, 'g', 12), this);
    text2_->setObjectName(QStringLiteral("Text2"));
    text2_->setMaximumWidth(90);
    text1_ = new QLineEdit(actuales.observaciones, this);
    text1_->setObjectName(QStringLiteral("Text1"));

    campos->addRow(QStringLiteral("Comprobante :"), combo3_);
    campos->addRow(QStringLiteral("Forma de Pago :"), pago);
    campos->addRow(QStringLiteral("Cond. Fiscal :"), combo2_);
    campos->addRow((claveImpositiva.isEmpty() ? QStringLiteral("Cuit-RFC") : claveImpositiva) + QStringLiteral(" :"), text4_);
    campos->addRow(QStringLiteral("Descuento % :"), text2_);
    campos->addRow(QStringLiteral("Detalles / Observaciones :"), text1_);
    capa->addLayout(campos);

    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanFPago::acepta);
    connect(combo1_, &QComboBox::activated, this, &PanFPago::formaElegida);
    connect(check1_, &QCheckBox::clicked, this, &PanFPago::aCuentaCambiado);

    // El cupón se ve sólo con una tarjeta de crédito.
    lblCupon_->hide();
    txCupon_->hide();
    if (combo1_->currentIndex() >= 0)
        if (const auto fp = LeeFormaDePago(almacen_, combo1_->currentData().toLongLong()); fp && fp->tarjeta) {
            lblCupon_->show();
            txCupon_->show();
        }
    resize(560, sizeHint().height());
    CentrarVentana(this);
    combo1_->setFocus();
}

void PanFPago::formaElegida() {
    if (combo1_->currentIndex() < 0) return;
    std::optional<FormaDePago> fp;
    if (!Intenta(this, [&] { fp = LeeFormaDePago(almacen_, combo1_->currentData().toLongLong()); }) || !fp) return;
    if (fp->aCuenta) {
        // Marcar "A cuenta..." hace lo mismo que hacerle clic: "CTA CTE" y la lista quieta.
        check1_->setChecked(true);
        aCuentaCambiado();
        return;
    }
    check1_->setChecked(false);
    combo1_->setEnabled(true);
    lblCupon_->setVisible(fp->tarjeta);
    txCupon_->setVisible(fp->tarjeta);
    if (fp->tarjeta) txCupon_->setFocus();
}

void PanFPago::aCuentaCambiado() {
    const int i = combo1_->findText(check1_->isChecked() ? QStringLiteral("CTA CTE") : QStringLiteral("EFVO"));
    if (i >= 0) combo1_->setCurrentIndex(i);
    combo1_->setEnabled(!check1_->isChecked());
}

DatosFPago PanFPago::datos() const {
    DatosFPago d = entrada_;
    d.idTipoComprobante = combo3_->currentIndex() >= 0 ? combo3_->currentData().toLongLong() : entrada_.idTipoComprobante;
    d.observaciones = text1_->text();
    d.descuento = LeeNumero(text2_->text().trimmed()).value_or(0.0);
    d.cuit = text4_->text();
    d.idTipoIva = combo2_->currentIndex() >= 0 ? combo2_->currentData().toInt() : 0;
    d.cupon = txCupon_->text();
    d.posicionFormaPago = combo1_->currentIndex();
    d.formaPago = combo1_->currentText();
    return d;
}

void PanFPago::acepta() {
    // El descuento se lee como todo porcentaje: "1,5" se rechaza, nunca se toma por 1.
    if (Intenta(this, [this] {
            ValidaFPago(combo2_->count() > 0, combo1_->currentText(), combo2_->currentText(), text2_->text());
            ExigePorcentaje(text2_->text().trimmed(), QStringLiteral("Descuento"));
        }))
        accept();
}

} // namespace orv
