#pragma once
// "Plan de Cuentas": las cuentas que clasifican los movimientos de caja, con alta y baja.

#include "store/almacen.h"

#include <QDialog>
#include <functional>

namespace orv {

class Grilla;

class panPlanCtas : public QDialog {
    Q_OBJECT
public:
    explicit panPlanCtas(Almacen& almacen, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }

    // Pide el nombre de la cuenta nueva; las pruebas lo reemplazan. Vacío: desistió.
    std::function<QString()> pideNombre;

    void nueva();  // Command1
    void quitar(); // Command2

private:
    Almacen& almacen_;
    Grilla* grilla_;
};

} // namespace orv
