#include "widgets/dialogo_lista.h"

#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

DialogoLista::DialogoLista(Almacen& almacen, const QString& nombre, const QString& titulo, NombresBotones botones,
                           QWidget* encima, QWidget* padre)
    : QDialog(padre), almacen_(almacen) {
    setObjectName(nombre);
    setWindowTitle(titulo);
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    if (encima) capa->addWidget(encima);
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("DBGrid1"));
    grilla_->permiteAgrupar(false);
    grilla_->fijaTituloImpresion(titulo);
    capa->addWidget(grilla_, 1);

    auto* fila = new QHBoxLayout;
    const auto boton = [&](const char* nombreBoton, const QString& texto) { return BotonEnFila(fila, nombreBoton, texto, this); };
    connect(boton(botones.nueva, QStringLiteral("&Nueva...")), &QPushButton::clicked, this, &DialogoLista::nueva);
    connect(boton(botones.editar, QStringLiteral("&Editar")), &QPushButton::clicked, this, &DialogoLista::editar);
    connect(boton(botones.borrar, QStringLiteral("&Borrar")), &QPushButton::clicked, this, &DialogoLista::borrar);
    fila->addStretch(1);
    connect(boton("cmdSalir", QStringLiteral("&Salir")), &QPushButton::clicked, this, &QDialog::accept);
    capa->addLayout(fila);
    connect(grilla_, &Grilla::filaActivada, this, &DialogoLista::editar);
}

void DialogoLista::abre(std::optional<qint64> id) {
    if (edita(id)) Intenta(this, [this] { grilla_->refresca(); });
}

void DialogoLista::nueva() { abre(std::nullopt); }

void DialogoLista::editar() {
    const auto id = grilla_->claveActual();
    if (!id || id->isNull()) {
        MensajeError(QStringLiteral("Debe seleccionar un registro previamente!"), this);
        return;
    }
    abre(id->toLongLong());
}

void DialogoLista::borrar() {
    const auto id = grilla_->claveActual();
    if (!id || id->isNull()) return;
    if (!Pregunta(QStringLiteral("Elimina éste registro"), this)) return;
    Intenta(this, [&] {
        borraFila(id->toLongLong());
        grilla_->refresca();
    });
}

} // namespace orv
