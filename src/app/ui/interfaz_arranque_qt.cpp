#include "app/ui/interfaz_arranque_qt.h"

#include "app/ui/pan_portada.h"
#include "shell/mensajes.h"

#include <QGuiApplication>
#include <QScreen>

namespace orv {

InterfazArranqueQt::InterfazArranqueQt(const Reloj& reloj) : reloj_(reloj) {}

InterfazArranqueQt::~InterfazArranqueQt() = default;

void InterfazArranqueQt::mensaje(const QString& texto, const QString& titulo, Icono icono) {
    Mensaje(texto, titulo, icono);
}

bool InterfazArranqueQt::pregunta(const QString& texto, const QString& titulo) {
    return PreguntaSiNo(texto, titulo, Icono::Pregunta);
}

void InterfazArranqueQt::muestraPortada() {
    PanPortada portada;
    portada.exec();
}

int InterfazArranqueQt::anchoPantalla() {
    const QScreen* pantalla = QGuiApplication::primaryScreen();
    return pantalla ? pantalla->geometry().width() : 0;
}

SeparadoresRegionales InterfazArranqueQt::separadoresRegionales() { return LeeRegionalSistema(); }

bool InterfazArranqueQt::login(Almacen& almacen, EstadoAplicacion& estado) {
    // Hasta que exista la pantalla de ingreso entra el supervisor (usuario 1, nivel 1).
    estado.idUsuarioActual = 1;
    estado.idNivelActual = 1;
    try {
        estado.NombreUsuarioActual =
            almacen.valor(QStringLiteral("SELECT NombreCompleto FROM Usuarios WHERE idUsuario = ?"), {1}).toString();
    } catch (const ErrorAlmacen&) {
        estado.NombreUsuarioActual.clear();
    }
    return true;
}

void InterfazArranqueQt::muestraVentana(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf) {
    ventana_ = std::make_unique<PanPrincipal>(almacen, estado, conf, reloj_);
    ventana_->show();
}

} // namespace orv
