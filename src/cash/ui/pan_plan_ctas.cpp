#include "cash/ui/pan_plan_ctas.h"

#include "cash/cuentas.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QHBoxLayout>
#include <QInputDialog>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

panPlanCtas::panPlanCtas(Almacen& almacen, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panPlanCtas"));
    setWindowTitle(QStringLiteral("Plan de Cuentas"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->permiteAgrupar(false);
    grilla_->fijaTituloImpresion(QStringLiteral("Plan de Cuentas"));
    grilla_->fijaClave(QStringLiteral("idCuenta"));
    grilla_->fijaTitulo(QStringLiteral("idCuenta"), QStringLiteral("Nro."));
    grilla_->fijaTitulo(QStringLiteral("Cuenta"), QStringLiteral("Cuenta"));
    Intenta(this, [this] {
        grilla_->fijaConsulta(ConsultaPlanCuentas());
        grilla_->fijaAnchoColumna(QStringLiteral("idCuenta"), 60);
        grilla_->fijaAnchoColumna(QStringLiteral("Cuenta"), 320);
    });
    capa->addWidget(grilla_, 1);

    auto* botones = new QHBoxLayout;
    const auto boton = [&](const char* nombre, const QString& texto) { return BotonEnFila(botones, nombre, texto, this); };
    connect(boton("Command1", QStringLiteral("&Nueva")), &QPushButton::clicked, this, &panPlanCtas::nueva);
    connect(boton("Command2", QStringLiteral("&Quitar")), &QPushButton::clicked, this, &panPlanCtas::quitar);
    botones->addStretch(1);
    connect(boton("Command3", QStringLiteral("&Salir")), &QPushButton::clicked, this, &QDialog::accept);
    capa->addLayout(botones);

    pideNombre = [this] {
        return QInputDialog::getText(this, QStringLiteral("Nueva Cuenta"), QStringLiteral("Ingrese el nombre de la cuenta nueva"));
    };
    resize(460, 420);
    CentrarVentana(this);
}

void panPlanCtas::nueva() {
    const QString nombre = pideNombre();
    Intenta(this, [&] {
        if (AgregaCuenta(almacen_, nombre)) grilla_->refresca();
    });
}

void panPlanCtas::quitar() {
    const auto id = grilla_->claveActual();
    if (!id || id->isNull()) return;
    if (!Pregunta(QStringLiteral("Borra esta cuenta"), this)) return;
    Intenta(this, [&] {
        BorraCuenta(almacen_, id->toLongLong());
        grilla_->refresca();
    });
}

} // namespace orv
