#pragma once
// Panel "Proveedores" de la ventana principal: la lista por razón social con su búsqueda por nombre,
// la ficha (nuevo, editar, doble clic), el borrado y el ingreso de una compra del proveedor. Cuenta,
// pagos y el registro de compras tienen su botón, apagado hasta que sus pantallas formen parte del
// programa.

#include "app/configuracion.h"
#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QWidget>
#include <functional>
#include <optional>

class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace orv {

class Grilla;

struct AccionesProveedores {
    // Abre la ficha de un artículo nuevo; su id, o 0 si no se grabó ("Nuevo Artículo.." de la compra).
    std::function<qint64()> articuloNuevo;
    // Una compra registrada: cambió el stock, la caja o los costos.
    std::function<void()> compraRegistrada;
};

class PanelProveedores : public QWidget {
    Q_OBJECT
public:
    PanelProveedores(Almacen& almacen, const EstadoAplicacion& estado, const Configuracion& conf, const Reloj& reloj,
                     AccionesProveedores acciones, QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }

    // La lista, con el nombre buscado (Text13) si hay.
    void carga();
    void nuevo();  // Command40
    void editar(); // Command42 y doble clic
    void quitar(); // Command41
    // "Nueva compra...": el ingreso de una compra del proveedor de la fila actual.
    void nuevaCompra();

private:
    void armaGrilla();
    QVBoxLayout* armaBotones();
    QPushButton* boton(const char* nombre, const QString& texto, void (PanelProveedores::*accion)());
    // El id de la fila actual si es una fila de datos con id.
    std::optional<qint64> idActual() const;
    bool abreFicha(std::optional<qint64> id);

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Configuracion& conf_;
    const Reloj& reloj_;
    AccionesProveedores acciones_;
    Grilla* grilla_ = nullptr;
    QLineEdit* text13_ = nullptr;
    QPushButton* command42_ = nullptr;
    bool anchosPuestos_ = false;
};

} // namespace orv
