#pragma once
// "Ingreso de pagos a un proveedor": las compras impagas para elegir cuáles quedan canceladas, el
// importe, la forma de pago, la cuenta, la fecha, la referencia, las observaciones y si sale de caja.

#include "suppliers/ui/contexto_compras.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLineEdit;
class QListWidget;

namespace orv {

class panIngrPagoProve : public QDialog {
    Q_OBJECT
public:
    panIngrPagoProve(const ContextoCompras& c, qint64 idProveedor, QWidget* padre = nullptr);
    void acepta(); // Command1

private:
    QWidget* armaDatos();

    ContextoCompras c_;
    qint64 id_;
    QListWidget* list1_ = nullptr;
    QLineEdit* txTot_ = nullptr;
    QComboBox* cboFPago_ = nullptr;
    QComboBox* cbCta_ = nullptr;
    QDateEdit* dt1_ = nullptr;
    QLineEdit* txRef_ = nullptr;
    QLineEdit* txDetalle_ = nullptr;
    QCheckBox* chRegCaja_ = nullptr;
};

} // namespace orv
