#pragma once
// "Cuenta del proveedor": las líneas de la cuenta desde una fecha, el saldo de toda la cuenta, la
// compra de una línea para verla o corregirla, el borrado de una línea y su impresión.

#include "suppliers/ui/contexto_compras.h"

#include <QDialog>

class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orv {

class Grilla;

class panCtaProve : public QDialog {
    Q_OBJECT
public:
    panCtaProve(const ContextoCompras& c, qint64 idProveedor, QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }
    // Líneas desde dt1 y saldo, leídos otra vez (Command3 y cada cambio de la fecha).
    void actualiza();
    void verRegistro(); // Command12
    void quitar();      // Command11
    void imprimir();    // Command1

private:
    void armaGrilla();
    void muestraSaldo();

    ContextoCompras c_;
    qint64 id_;
    QString razon_;
    QDateEdit* dt1_ = nullptr;
    QLineEdit* txTotal_ = nullptr;
    Grilla* grilla_ = nullptr;
};

} // namespace orv
