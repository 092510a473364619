#pragma once
// PanNueComision ("Nuevo Registro de Debito al cliente"): una línea a mano en la cuenta del
// cliente, débito o crédito. No escribe caja ni mira si el día está cerrado.

#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>

class QDateEdit;
class QLineEdit;
class QRadioButton;

namespace orv {

class PanNueComision : public QDialog {
    Q_OBJECT
public:
    PanNueComision(Almacen& almacen, const Reloj& reloj, qint64 idVendedor, QWidget* padre = nullptr);

private:
    void acepta();

    Almacen& almacen_;
    qint64 id_;
    QDateEdit* dtPicker1_ = nullptr;
    QLineEdit* text1_ = nullptr;
    QLineEdit* text2_ = nullptr;
    QRadioButton* option1_ = nullptr;
    QRadioButton* option2_ = nullptr;
};

} // namespace orv
