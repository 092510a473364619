#pragma once
// "Formas de Pago": la lista de las formas aceptadas, y panEditFPago para agregar o cambiar una.

#include "cash/cuentas.h"
#include "store/almacen.h"
#include "widgets/dialogo_lista.h"

#include <QDialog>
#include <optional>

class QCheckBox;
class QLabel;
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

class panFormasPago : public DialogoLista {
    Q_OBJECT
public:
    explicit panFormasPago(Almacen& almacen, QWidget* padre = nullptr);

private:
    static QLabel* nota();
    bool edita(std::optional<qint64> id) override;
    void borraFila(qint64 id) override;
};

} // namespace orv
