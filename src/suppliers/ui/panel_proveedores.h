#pragma once
// Panel "Proveedores" de la ventana principal: la lista por razón social con su búsqueda por nombre,
// la ficha (nuevo, editar, doble clic), el borrado, y las puertas a la cuenta, los pagos, el registro
// de compras y el ingreso de una compra del proveedor de la fila actual.

#include "suppliers/ui/contexto_compras.h"

#include <QWidget>
#include <optional>

class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace orv {

class Grilla;

class PanelProveedores : public QWidget {
    Q_OBJECT
public:
    PanelProveedores(const ContextoCompras& c, QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }

    // La lista, con el nombre buscado (Text13) si hay.
    void carga();
    void nuevo();  // Command40
    void editar(); // Command42 y doble clic
    void quitar(); // Command41
    void cuenta();  // Command39
    void pago();    // Command43
    void compras(); // Command44
    // "Nueva compra...": el ingreso de una compra del proveedor de la fila actual.
    void nuevaCompra();

private:
    void armaGrilla();
    QVBoxLayout* armaBotones();
    QPushButton* boton(const char* nombre, const QString& texto, void (PanelProveedores::*accion)());
    // El id de la fila actual si es una fila de datos con id.
    std::optional<qint64> idActual() const;
    bool abreFicha(std::optional<qint64> id);

    ContextoCompras c_;
    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    Grilla* grilla_ = nullptr;
    QLineEdit* text13_ = nullptr;
    QPushButton* command42_ = nullptr;
};

} // namespace orv
