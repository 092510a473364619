#pragma once
// Panel "Clientes" de la ventana principal: la grilla de clientes con zona (Data2), sus dos
// filtros (nombre o empresa, localidad), la ficha, el borrado y la entrada a la cuenta corriente.

#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QWidget>
#include <functional>
#include <optional>

class QLineEdit;
class QPushButton;
class QVBoxLayout;
class QHBoxLayout;

namespace orv {

class Grilla;
class SalidaInformes;

// Lo que el panel avisa a la ventana que lo contiene.
struct AccionesClientes {
    // Una cobranza escribió en la caja (la ventana vuelve a leer el panel de caja).
    std::function<void()> cajaCambiada;
};

class PanelClientes : public QWidget {
    Q_OBJECT
public:
    PanelClientes(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                  AccionesClientes acciones, QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }

    // Al abrir la ventana y con cada filtro: la lista con los filtros de Text2 y Text17.
    void carga();
    // Al elegir el panel: "Cuenta y saldos" como botón de Enter, Text2 vacío y con el foco.
    void entra();

    void nuevo();     // Command12
    void editar();    // Command10 y doble clic
    void quitar();    // Command11
    void cuenta();    // Command9
    void cobranza();  // Command8
    void puntosVip(); // Command31
    void historico(); // Command48
    void refresca();

private:
    QHBoxLayout* armaBusquedas();
    QVBoxLayout* armaBotones();
    void armaGrilla();
    QPushButton* boton(const char* nombre, const QString& texto, void (PanelClientes::*accion)());
    bool abreFicha(std::optional<qint64> id);
    // El id de la fila actual si es una fila de datos con id.
    std::optional<qint64> idActual() const;

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Reloj& reloj_;
    SalidaInformes& salida_;
    AccionesClientes acciones_;
    Grilla* grilla_ = nullptr;
    QLineEdit* text2_ = nullptr;
    QLineEdit* text17_ = nullptr;
    QPushButton* command9_ = nullptr;
    QPushButton* command10_ = nullptr;
    bool anchosPuestos_ = false;
};

} // namespace orv
