#pragma once
// "Borrar movimientos de stock": los movimientos por fecha y orden de carga; borrar uno devuelve
// su efecto al stock del artículo.

#include "store/almacen.h"

#include <QDialog>

class QPushButton;

namespace orv {

class Grilla;

class panBorrMovStock : public QDialog {
    Q_OBJECT
public:
    explicit panBorrMovStock(Almacen& almacen, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }

    void eliminar(); // Command29

private:
    void actualizaBoton();

    Almacen& almacen_;
    Grilla* grilla_;
    QPushButton* eliminar_;
};

} // namespace orv
