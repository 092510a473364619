#pragma once
// "Multi-Tablas": los archivos principales, de a uno, en la grilla compartida de sólo lectura,
// con agrupación por columnas e impresión.

#include "store/almacen.h"

#include <QDialog>

class QComboBox;

namespace orv {

class Grilla;

class panTablas : public QDialog {
    Q_OBJECT
public:
    explicit panTablas(Almacen& almacen, QWidget* padre = nullptr);

    void eligeTabla(int indice); // Combo1
    void imprimir();             // Command1
    Grilla* grilla() const { return grilla_; }
    QComboBox* combo() const { return combo1_; }

private:
    void ajustaAnchos();

    Almacen& almacen_;
    QComboBox* combo1_;
    Grilla* grilla_;
};

} // namespace orv
