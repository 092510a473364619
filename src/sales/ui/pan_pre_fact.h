#pragma once
// "Seleccione el comprobante a predeterminar": el tipo con que empieza cada venta.

#include "app/configuracion.h"
#include "store/almacen.h"

#include <QDialog>

class QCheckBox;
class QComboBox;

namespace orv {

class PanPreFact : public QDialog {
    Q_OBJECT
public:
    PanPreFact(const Almacen& almacen, const Configuracion& conf, QWidget* padre = nullptr);

private:
    void acepta();

    const Configuracion& conf_;
    QComboBox* combo1_;
    QCheckBox* chkUEm_;
};

} // namespace orv
