#pragma once
// Primer ingreso a un almacén recién creado: el supervisor elige su nombre de usuario y su
// contraseña (dos veces). "&Cancelar" termina el programa sin tocar nada.

#include "store/almacen.h"

#include <QDialog>

class QLineEdit;

namespace orv {

class PanSupervisorInicial : public QDialog {
    Q_OBJECT
public:
    explicit PanSupervisorInicial(Almacen& almacen, QWidget* padre = nullptr);
    // Nombre de usuario elegido (tras Accepted).
    QString usuario() const;

private:
    void acepta();

    Almacen& almacen_;
    QLineEdit* txUser_;
    QLineEdit* txPass_;
    QLineEdit* txPass2_;
};

} // namespace orv
