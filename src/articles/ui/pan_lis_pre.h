#pragma once
// "Lista de precios": por código o por alfabeto, de un rubro o de todos, por la salida de los
// informes.

#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>

class QComboBox;
class QRadioButton;

namespace orv {

class SalidaInformes;

class panLisPre : public QDialog {
    Q_OBJECT
public:
    panLisPre(Almacen& almacen, SalidaInformes& salida, const Reloj& reloj, QWidget* padre = nullptr);

    void acepta(); // "&Aceptar"

private:
    SalidaInformes& salida_;
    const Reloj& reloj_;
    QRadioButton* option1_;
    QRadioButton* option2_;
    QComboBox* combo1_;
};

} // namespace orv
