#include "cash/ui/pan_formas_pago.h"

#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
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

panFormasPago::panFormasPago(Almacen& almacen, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panFormasPago"));
    setWindowTitle(QStringLiteral("Formas de Pago"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    auto* nota = new QLabel(QStringLiteral("Formas de pago aceptadas en el sistema"), this);
    nota->setObjectName(QStringLiteral("Label1"));
    capa->addWidget(nota);
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("DBGrid1"));
    grilla_->permiteAgrupar(false);
    grilla_->fijaTituloImpresion(QStringLiteral("Formas de Pago"));
    grilla_->fijaClave(QStringLiteral("idTipoFormaPago"));
    grilla_->fijaTitulo(QStringLiteral("idTipoFormaPago"), QStringLiteral("Nro."));
    grilla_->fijaTitulo(QStringLiteral("FormaPago"), QStringLiteral("Forma de pago"));
    grilla_->fijaTitulo(QStringLiteral("EsACuenta"), QStringLiteral("A cuenta"));
    grilla_->fijaTitulo(QStringLiteral("EsTarjetaCredito"), QStringLiteral("Tarjeta"));
    Intenta(this, [this] {
        grilla_->fijaConsulta(ConsultaFormasPago());
        grilla_->fijaAnchoColumna(QStringLiteral("FormaPago"), 220);
    });
    capa->addWidget(grilla_, 1);

    auto* botones = new QHBoxLayout;
    const auto boton = [&](const char* nombre, const QString& texto) { return BotonEnFila(botones, nombre, texto, this); };
    connect(boton("OsenXPButton1", QStringLiteral("&Nueva...")), &QPushButton::clicked, this, &panFormasPago::nueva);
    connect(boton("OsenXPButton3", QStringLiteral("&Editar")), &QPushButton::clicked, this, &panFormasPago::editar);
    connect(boton("OsenXPButton2", QStringLiteral("&Borrar")), &QPushButton::clicked, this, &panFormasPago::borrar);
    botones->addStretch(1);
    connect(boton("cmdSalir", QStringLiteral("&Salir")), &QPushButton::clicked, this, &QDialog::accept);
    capa->addLayout(botones);
    connect(grilla_, &Grilla::filaActivada, this, &panFormasPago::editar);
    resize(560, 420);
    CentrarVentana(this);
}

void panFormasPago::abre(std::optional<qint64> id) {
    panEditFPago edicion(almacen_, id, this);
    if (edicion.exec() == QDialog::Accepted) Intenta(this, [this] { grilla_->refresca(); });
}

void panFormasPago::nueva() { abre(std::nullopt); }

void panFormasPago::editar() {
    const auto id = grilla_->claveActual();
    if (id && !id->isNull()) abre(id->toLongLong());
}

void panFormasPago::borrar() {
    const auto id = grilla_->claveActual();
    if (!id || id->isNull()) return;
    if (!Pregunta(QStringLiteral("Elimina éste registro"), this)) return;
    Intenta(this, [&] {
        BorraFormaPago(almacen_, id->toLongLong());
        grilla_->refresca();
    });
}

} // namespace orv
