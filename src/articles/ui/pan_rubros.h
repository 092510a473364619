#pragma once
// "Administración de Rubros": la lista de rubros por nombre, con alta, modificación y baja.

#include "store/almacen.h"

#include <QDialog>

class QPushButton;

namespace orv {

class Grilla;

class PanRubros : public QDialog {
    Q_OBJECT
public:
    PanRubros(Almacen& almacen, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }

    void nuevo();  // Command1
    void quitar(); // Command2
    void editar(); // Command3

private:
    void actualizaBotones();

    Almacen& almacen_;
    Grilla* grilla_;
    QPushButton* quitar_;
    QPushButton* editar_;
};

} // namespace orv
