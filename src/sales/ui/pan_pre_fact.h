#pragma once
// "Seleccione el comprobante a predeterminar": el tipo y, si se quiere, el cliente con que
// empieza cada venta.

#include "app/configuracion.h"
#include "store/almacen.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace orv {

class PanPreFact : public QDialog {
    Q_OBJECT
public:
    PanPreFact(const Almacen& almacen, const Configuracion& conf, QWidget* padre = nullptr);

private:
    void acepta();

    const Almacen& almacen_;
    const Configuracion& conf_;
    QComboBox* combo1_;
    QCheckBox* chkUEm_;
    QLineEdit* txtClientePred_;
};

} // namespace orv
