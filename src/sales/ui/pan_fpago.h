#pragma once
// "Formas de Pago / Cliente" ("Mas Datos..."): forma de pago, situación de IVA, número de
// CUIT, descuento, cupón, observaciones y tipo de comprobante de esta venta. No graba nada: quien
// la abre lee datos() y los pone en la venta.

#include "sales/cliente_venta.h"
#include "store/almacen.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace orv {

class PanFPago : public QDialog {
    Q_OBJECT
public:
    PanFPago(const Almacen& almacen, const QString& claveImpositiva, const DatosFPago& actuales, QWidget* padre = nullptr);
    DatosFPago datos() const;

    // Clic en la forma de pago y en "A cuenta...".
    void formaElegida();
    void aCuentaCambiado();

private:
    void acepta();

    const Almacen& almacen_;
    DatosFPago entrada_;
    QComboBox* combo3_;
    QLineEdit* text1_;
    QLineEdit* text2_;
    QLabel* label4_;
    QLineEdit* text4_;
    QComboBox* combo2_;
    QLineEdit* txCupon_;
    QLabel* lblCupon_;
    QComboBox* combo1_;
    QCheckBox* check1_;
};

} // namespace orv
