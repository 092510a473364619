#include "app/ui/interfaz_arranque_qt.h"

#include "access/ingreso.h"
#include "access/ui/pan_ingreso.h"
#include "access/ui/pan_supervisor_inicial.h"
#include "app/ui/pan_portada.h"
#include "widgets/mensajes.h"

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
    QString usuario;
    bool primeraVez = false;
    try {
        primeraVez = FaltaClaveInicial(almacen);
    } catch (const ErrorAlmacen&) {
    }
    if (primeraVez) {
        PanSupervisorInicial supervisor(almacen);
        if (supervisor.exec() != QDialog::Accepted) return false;
        usuario = supervisor.usuario();
    }
    PanIngreso ingreso(almacen);
    if (!usuario.isEmpty()) ingreso.fijaUsuario(usuario);
    if (ingreso.exec() != QDialog::Accepted || !ingreso.usuario()) return false;
    estado.idUsuarioActual = ingreso.usuario()->idUsuario;
    estado.idNivelActual = ingreso.usuario()->idNivel;
    estado.NombreUsuarioActual = ingreso.usuario()->nombreCompleto;
    return true;
}

void InterfazArranqueQt::muestraVentana(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf) {
    ventana_ = std::make_unique<PanPrincipal>(almacen, estado, conf, reloj_);
    ventana_->show();
}

} // namespace orv
