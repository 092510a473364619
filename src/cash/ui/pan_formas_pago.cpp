#include "cash/ui/pan_formas_pago.h"

#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

panEditFPago::panEditFPago(Almacen& almacen, std::optional<qint64> idTipoFormaPago, QWidget* padre)
    : QDialog(padre), almacen_(almacen), id_(idTipoFormaPago) {
    setObjectName(QStringLiteral("panEditFPago"));
    setWindowTitle(QStringLiteral("Editar Forma de Pago"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* campos = new QFormLayout;
    txNombre_ = new QLineEdit(this);
    txNombre_->setObjectName(QStringLiteral("txNombre"));
    txNombre_->setMaxLength(50);
    txNombre_->setMinimumWidth(260);
    campos->addRow(QStringLiteral("Nombre :"), txNombre_);
    capa->addLayout(campos);
    optACuenta_ = new QCheckBox(QStringLiteral("Es forma cuenta corriente ?"), this);
    optACuenta_->setObjectName(QStringLiteral("optACuenta"));
    optTarjeta_ = new QCheckBox(QStringLiteral("Es tarjeta de crédito"), this);
    optTarjeta_->setObjectName(QStringLiteral("optTarjeta"));
    capa->addWidget(optACuenta_);
    capa->addWidget(optTarjeta_);
    QPushButton* aceptar = BotonesAlPie(this, capa);
    aceptar->setObjectName(QStringLiteral("OsenXPButton1"));
    if (auto* cancelar = findChild<QPushButton*>(QStringLiteral("Command2"))) cancelar->setObjectName(QStringLiteral("OsenXPButton2"));
    connect(aceptar, &QPushButton::clicked, this, &panEditFPago::acepta);
    if (id_)
        Intenta(this, [this] {
            if (const auto f = LeeFormaPago(almacen_, *id_)) {
                txNombre_->setText(f->nombre);
                optACuenta_->setChecked(f->aCuenta);
                optTarjeta_->setChecked(f->tarjeta);
            }
        });
    adjustSize();
    CentrarVentana(this);
    txNombre_->setFocus();
}

void panEditFPago::acepta() {
    const FormaPago f{txNombre_->text(), optACuenta_->isChecked(), optTarjeta_->isChecked()};
    if (Intenta(this, [&] { id_ = GuardaFormaPago(almacen_, id_, f); })) {
        accept();
        return;
    }
    txNombre_->setFocus();
}

panFormasPago::panFormasPago(Almacen& almacen, QWidget* padre)
    : DialogoLista(almacen, QStringLiteral("panFormasPago"), QStringLiteral("Formas de Pago"),
                   {"OsenXPButton1", "OsenXPButton3", "OsenXPButton2"}, nota(), padre) {
    grilla()->fijaClave(QStringLiteral("idTipoFormaPago"));
    grilla()->fijaTitulo(QStringLiteral("idTipoFormaPago"), QStringLiteral("Nro."));
    grilla()->fijaTitulo(QStringLiteral("FormaPago"), QStringLiteral("Forma de pago"));
    grilla()->fijaTitulo(QStringLiteral("EsACuenta"), QStringLiteral("A cuenta"));
    grilla()->fijaTitulo(QStringLiteral("EsTarjetaCredito"), QStringLiteral("Tarjeta"));
    Intenta(this, [this] {
        grilla()->fijaConsulta(ConsultaFormasPago());
        grilla()->fijaAnchoColumna(QStringLiteral("FormaPago"), 220);
    });
    resize(560, 420);
    CentrarVentana(this);
}

QLabel* panFormasPago::nota() {
    auto* nota = new QLabel(QStringLiteral("Formas de pago aceptadas en el sistema"));
    nota->setObjectName(QStringLiteral("Label1"));
    return nota;
}

bool panFormasPago::edita(std::optional<qint64> id) {
    panEditFPago edicion(almacen_, id, this);
    return edicion.exec() == QDialog::Accepted;
}

void panFormasPago::borraFila(qint64 id) { BorraFormaPago(almacen_, id); }

} // namespace orv
