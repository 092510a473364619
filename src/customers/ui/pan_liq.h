#pragma once
// panLiq ("Liquidar comisiones"): fecha, importe a pagar y, si se asienta en la caja, cuenta y
// forma de pago. Sólo junta y controla los datos; quien la abre escribe la liquidación.

#include "customers/comisiones.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLineEdit;

namespace orv {

class PanLiq : public QDialog {
    Q_OBJECT
public:
    PanLiq(const Almacen& almacen, const Reloj& reloj, const QString& aPagar, QWidget* padre = nullptr);

    // Lo elegido, con el vendedor en blanco (lo pone quien la abrió).
    DatosLiquidacion datos() const;

private:
    void acepta();
    void cambiaCaja();

    QDateEdit* dt1_ = nullptr;
    QLineEdit* txAPagar_ = nullptr;
    QCheckBox* chkCaja_ = nullptr;
    QComboBox* cboCuenta_ = nullptr;
    QComboBox* cboFPago_ = nullptr;
};

} // namespace orv
