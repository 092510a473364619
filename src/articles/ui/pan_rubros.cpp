#include "articles/ui/pan_rubros.h"

#include "articles/rubros.h"
#include "articles/ui/pan_ed_rubros.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanRubros::PanRubros(Almacen& almacen, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("PanRubros"));
    setWindowTitle(QStringLiteral("Administración de Rubros"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);

    auto* nota = new QLabel(
        QStringLiteral("Los rubros representan la forma de agrupar los artículos o mercadería por familias o grupos"),
        this);
    nota->setObjectName(QStringLiteral("Label1"));
    nota->setWordWrap(true);
    capa->addWidget(nota);

    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->permiteAgrupar(false);
    grilla_->fijaTituloImpresion(QStringLiteral("Rubros"));
    grilla_->fijaClave(QStringLiteral("idRubro"));
    grilla_->fijaTitulo(QStringLiteral("idRubro"), QStringLiteral("Nro."));
    grilla_->fijaTitulo(QStringLiteral("Rubro"), QStringLiteral("Rubro"));
    grilla_->fijaTitulo(QStringLiteral("PuntosVIP"), QStringLiteral("Puntaje VIP"));
    Intenta(this, [this] {
        grilla_->fijaConsulta(ConsultaRubros());
        grilla_->fijaAnchoColumna(QStringLiteral("idRubro"), 60);
        grilla_->fijaAnchoColumna(QStringLiteral("Rubro"), 300);
        grilla_->fijaAnchoColumna(QStringLiteral("PuntosVIP"), 100);
    });
    capa->addWidget(grilla_, 1);

    auto* botones = new QHBoxLayout;
    auto boton = [&](const char* nombre, const char* texto) {
        auto* b = new QPushButton(QString::fromUtf8(texto), this);
        b->setObjectName(QString::fromLatin1(nombre));
        b->setAutoDefault(false);
        b->setMinimumWidth(100);
        botones->addWidget(b);
        return b;
    };
    auto* nuevo = boton("Command1", "&Nuevo");
    quitar_ = boton("Command2", "&Quitar");
    editar_ = boton("Command3", "&Editar");
    botones->addStretch(1);
    auto* salir = boton("Command4", "&Salir");
    capa->addLayout(botones);

    connect(nuevo, &QPushButton::clicked, this, &PanRubros::nuevo);
    connect(quitar_, &QPushButton::clicked, this, &PanRubros::quitar);
    connect(editar_, &QPushButton::clicked, this, &PanRubros::editar);
    connect(salir, &QPushButton::clicked, this, &QDialog::accept);
    connect(grilla_, &Grilla::filaCambiada, this, &PanRubros::actualizaBotones);
    connect(grilla_, &Grilla::filaActivada, this, &PanRubros::editar);

    actualizaBotones();
    resize(640, 460);
    CentrarVentana(this);
}

void PanRubros::actualizaBotones() {
    const bool hayFila = grilla_->claveActual().has_value();
    quitar_->setEnabled(hayFila);
    editar_->setEnabled(hayFila);
}

void PanRubros::nuevo() {
    PanEdRubros dialogo(almacen_, std::nullopt, this);
    if (dialogo.exec() != QDialog::Accepted) return;
    grilla_->refresca();
    actualizaBotones();
}

void PanRubros::editar() {
    const auto id = grilla_->claveActual();
    if (!id) return;
    PanEdRubros dialogo(almacen_, id->toLongLong(), this);
    dialogo.exec();
    grilla_->refresca();
    actualizaBotones();
}

void PanRubros::quitar() {
    if (!Pregunta(QStringLiteral("Borra este rubro"), this)) return;
    const auto id = grilla_->claveActual();
    if (!id) {
        MensajeError(QStringLiteral("Seleccione un registro!!"), this);
        return;
    }
    if (!Intenta(this, [&] { BorraRubro(almacen_, id->toLongLong()); })) return;
    grilla_->refresca();
    actualizaBotones();
}

} // namespace orv
