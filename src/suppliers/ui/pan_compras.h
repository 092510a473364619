#pragma once
// "Gestión Compras": las compras de un proveedor con su filtro por tipo y fechas, y la puerta a una
// compra nueva, a corregir una, a borrarla (deshaciéndola), a su informe y a los pagos.

#include "suppliers/ui/contexto_compras.h"

#include <QDialog>

class QComboBox;
class QDateEdit;
class QLabel;

namespace orv {

class Grilla;

class panCompras : public QDialog {
    Q_OBJECT
public:
    panCompras(const ContextoCompras& c, qint64 idProveedor, QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }
    void filtra();  // Command1
    void nueva();   // Command2
    void editar();  // Command4 y doble clic
    void borrar();  // Command3
    void informe(); // Command5
    void pagos();   // Command7

private:
    QLayout* armaFiltro();
    void armaGrilla();
    // Las compras, todas (al abrir) o con el filtro.
    void muestra(bool conFiltro);

    ContextoCompras c_;
    qint64 id_;
    QString razon_;
    bool filtrada_ = false;
    QComboBox* cboTipoComprobante_ = nullptr;
    QDateEdit* dt1_ = nullptr;
    QDateEdit* dt2_ = nullptr;
    Grilla* grilla_ = nullptr;
};

} // namespace orv
