#pragma once
// "Comprobantes y Numeración": los tipos de comprobante, su numeración y su esquema de
// impresión; alta, modificación, baja y el predeterminado de las ventas.

#include "app/configuracion.h"
#include "store/almacen.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;

namespace orv {

class Grilla;

class PanCorrNum : public QDialog {
    Q_OBJECT
public:
    PanCorrNum(Almacen& almacen, const Configuracion& conf, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }

    void nuevo();
    void editar();
    void borrar();
    void predeterminar();

private:
    void muestraFila();

    Almacen& almacen_;
    const Configuracion& conf_;
    Grilla* grilla_;
    QLineEdit* txTipo_;
    QLineEdit* cbLetra_;
    QLineEdit* cbPtoVta_;
    QLineEdit* txCorrelativo_;
    QCheckBox* chkStock_;
    QCheckBox* chkCaja_;
    QCheckBox* chkInversa_;
    QCheckBox* chkEsComercial_;
    QLabel* lblPlantilla_;
};

} // namespace orv
