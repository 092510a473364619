#pragma once
// "Cambios masivos de stock": los artículos por código con su stock actual y mínimo, que se
// corrigen en la misma grilla, y el blanqueo del stock de todos los artículos.

#include "store/almacen.h"

#include <QDialog>

class QLineEdit;
class QVBoxLayout;

namespace orv {

class Grilla;

class panCambStock : public QDialog {
    Q_OBJECT
public:
    explicit panCambStock(Almacen& almacen, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }

    void reseteaStock(); // Command1

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    void armaBusquedas(QVBoxLayout* capa);
    void armaGrilla(QVBoxLayout* capa);
    void armaBotones(QVBoxLayout* capa);

    Almacen& almacen_;
    Grilla* grilla_;
    QLineEdit* text1_;
    QLineEdit* text2_;
};

} // namespace orv
