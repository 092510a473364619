#pragma once
// "Rubros": alta o modificación de un rubro, con su nombre y su puntaje VIP por ventas. Al
// aceptar graba el rubro; si algo se rechaza, la pantalla sigue abierta con lo escrito.

#include "store/almacen.h"

#include <QDialog>
#include <optional>

class QLineEdit;

namespace orv {

class PanEdRubros : public QDialog {
    Q_OBJECT
public:
    // Sin id, rubro nuevo.
    PanEdRubros(Almacen& almacen, std::optional<qint64> idRubro, QWidget* padre = nullptr);
    // El rubro grabado (después de Accepted).
    std::optional<qint64> idRubro() const { return id_; }

private:
    void acepta();

    Almacen& almacen_;
    std::optional<qint64> id_;
    QLineEdit* text1_;
    QLineEdit* txPuntosVip_;
};

} // namespace orv
