#include "access/ui/panel_usuarios.h"

#include "access/ui/pan_ed_usuario.h"
#include "access/ui/pan_niveles.h"
#include "access/usuarios.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace orv {

PanelUsuarios::PanelUsuarios(Almacen& almacen, QWidget* padre) : QWidget(padre), almacen_(almacen) {
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(0, 0, 0, 0);
    capa->setSpacing(10);
    capa->addWidget(TituloPanel(QStringLiteral("Usuarios del sistema"), this));

    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("DataUsers"));
    grilla_->fijaTituloImpresion(QStringLiteral("Usuarios del sistema"));
    grilla_->fijaClave(QStringLiteral("idUsuario"));
    grilla_->fijaTitulo(QStringLiteral("Nombre"), QStringLiteral("Nivel"));
    grilla_->fijaTitulo(QStringLiteral("idUsuario"), QStringLiteral("Nro."));
    grilla_->fijaTitulo(QStringLiteral("NombreCompleto"), QStringLiteral("Nombre completo"));
    grilla_->fijaTitulo(QStringLiteral("NombreUsuario"), QStringLiteral("Usuario"));
    grilla_->ocultaColumna(QStringLiteral("idNivel"));
    // Si no se puede leer, se dice y la grilla queda vacía.
    Intenta(this, [&] {
        grilla_->fijaConsulta(ConsultaUsuarios());
        grilla_->fijaAnchoColumna(QStringLiteral("Nombre"), 170);
        grilla_->fijaAnchoColumna(QStringLiteral("idUsuario"), 60);
        grilla_->fijaAnchoColumna(QStringLiteral("NombreCompleto"), 280);
        grilla_->fijaAnchoColumna(QStringLiteral("NombreUsuario"), 180);
        grilla_->agrupaPor(QStringLiteral("Nombre"));
        abreGrupos();
    });
    capa->addWidget(grilla_, 1);

    auto* botones = new QHBoxLayout;
    auto boton = [&](const QString& nombre, const QString& texto) {
        auto* b = new QPushButton(texto, this);
        b->setObjectName(nombre);
        b->setMinimumWidth(110);
        botones->addWidget(b);
        return b;
    };
    auto* modificar = boton(QStringLiteral("Command10Users"), QStringLiteral("Modificar"));
    auto* nuevo = boton(QStringLiteral("Command12Users"), QStringLiteral("Nuevo"));
    auto* borrar = boton(QStringLiteral("Command11Users"), QStringLiteral("Borrar"));
    botones->addSpacing(16);
    auto* comisiones = boton(QStringLiteral("Command47"), QStringLiteral("Comisiones"));
    comisiones->setToolTip(QStringLiteral("Las comisiones del vendedor y su liquidación"));
    botones->addStretch(1);
    auto* niveles = boton(QStringLiteral("Command38Users"), QStringLiteral("Niveles de acceso..."));
    capa->addLayout(botones);

    connect(modificar, &QPushButton::clicked, this, &PanelUsuarios::modificar);
    connect(nuevo, &QPushButton::clicked, this, &PanelUsuarios::nuevo);
    connect(borrar, &QPushButton::clicked, this, &PanelUsuarios::borrar);
    connect(niveles, &QPushButton::clicked, this, &PanelUsuarios::niveles);
    connect(comisiones, &QPushButton::clicked, this, &PanelUsuarios::comisiones);
    connect(grilla_, &Grilla::filaActivada, this, &PanelUsuarios::modificar);
}

void PanelUsuarios::abreGrupos() {
    // Los usuarios son pocos: los grupos por nivel se muestran abiertos.
    if (!grilla_->agrupada()) return;
    QTreeWidget* arbol = grilla_->arbol();
    for (int i = 0; i < arbol->topLevelItemCount(); ++i) arbol->topLevelItem(i)->setExpanded(true);
}

void PanelUsuarios::refresca() {
    grilla_->refresca();
    abreGrupos();
}

void PanelUsuarios::edita(std::optional<qint64> id) {
    PanEdUsuario dialogo(almacen_, id, this);
    if (dialogo.exec() == QDialog::Accepted && Intenta(this, [&] { GuardaUsuario(almacen_, id, dialogo.datos()); }))
        Q_EMIT usuariosCambiados();
    refresca();
}

void PanelUsuarios::modificar() {
    const auto id = grilla_->claveActual();
    if (!id) return; // sin fila, o una fila de grupo
    edita(id->toLongLong());
}

void PanelUsuarios::nuevo() { edita(std::nullopt); }

void PanelUsuarios::borrar() {
    const auto id = grilla_->claveActual();
    if (!id) return;
    if (!Pregunta(QStringLiteral("Borra este usuario de la lista"), this)) return;
    if (!Intenta(this, [&] { BorraUsuario(almacen_, id->toLongLong()); })) return;
    refresca();
    Q_EMIT usuariosCambiados();
}

void PanelUsuarios::comisiones() {
    const auto id = grilla_->claveActual();
    if (!id) return;
    Q_EMIT comisionesPedidas(id->toLongLong());
}

void PanelUsuarios::niveles() {
    PanNiveles dialogo(almacen_, this);
    dialogo.exec();
    refresca();
}

} // namespace orv
