#pragma once
// Panel "Proveedores" de la ventana principal: la lista por razón social con su búsqueda por nombre,
// la ficha (nuevo, editar, doble clic) y el borrado. Cuenta, pagos y compras de cada proveedor tienen
// su botón, apagado hasta que sus pantallas formen parte del programa.

#include "app/estado.h"
#include "store/almacen.h"

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
    PanelProveedores(Almacen& almacen, const EstadoAplicacion& estado, QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }

    // La lista, con el nombre buscado (Text13) si hay.
    void carga();
    void nuevo();  // Command40
    void editar(); // Command42 y doble clic
    void quitar(); // Command41

private:
    void armaGrilla();
    QVBoxLayout* armaBotones();
    QPushButton* boton(const char* nombre, const QString& texto, void (PanelProveedores::*accion)());
    // El id de la fila actual si es una fila de datos con id.
    std::optional<qint64> idActual() const;
    bool abreFicha(std::optional<qint64> id);

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    Grilla* grilla_ = nullptr;
    QLineEdit* text13_ = nullptr;
    QPushButton* command42_ = nullptr;
    bool anchosPuestos_ = false;
};

} // namespace orv
