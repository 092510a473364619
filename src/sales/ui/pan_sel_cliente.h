#pragma once
// Búsqueda de clientes de la venta: va al primero cuyo nombre empieza con lo escrito.

#include "store/almacen.h"

#include <QDialog>
#include <optional>

class QLineEdit;

namespace orv {

class Grilla;

class PanSelCliente : public QDialog {
    Q_OBJECT
public:
    explicit PanSelCliente(Almacen& almacen, QWidget* padre = nullptr);
    std::optional<qint64> idVendedor() const { return id_; }
    Grilla* grilla() const { return grilla_; }

private:
    void acepta();

    QLineEdit* text1_;
    Grilla* grilla_;
    std::optional<qint64> id_;
};

} // namespace orv
