#pragma once
// "Formas de Pago": la lista de las formas aceptadas, y panEditFPago para agregar o cambiar una.

#include "cash/cuentas.h"
#include "store/almacen.h"

#include <QDialog>
#include <optional>

class QCheckBox;
class QLineEdit;

namespace orv {

class Grilla;

class panEditFPago : public QDialog {
    Q_OBJECT
public:
    // Sin id, una forma nueva.
    panEditFPago(Almacen& almacen, std::optional<qint64> idTipoFormaPago, QWidget* padre = nullptr);
    void acepta(); // OsenXPButton1
    QLineEdit* nombre() const { return txNombre_; }

private:
    Almacen& almacen_;
    std::optional<qint64> id_;
    QLineEdit* txNombre_;
    QCheckBox* optACuenta_;
    QCheckBox* optTarjeta_;
};

class panFormasPago : public QDialog {
    Q_OBJECT
public:
    explicit panFormasPago(Almacen& almacen, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }

    void nueva();  // OsenXPButton1
    void editar(); // OsenXPButton3
    void borrar(); // OsenXPButton2

private:
    void abre(std::optional<qint64> id);

    Almacen& almacen_;
    Grilla* grilla_;
};

} // namespace orv
