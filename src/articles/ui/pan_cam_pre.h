#pragma once
// "Actualizaciones de Precios Masivos": los artículos de un rubro y un proveedor con sus precios de
// costo y venta para corregirlos uno por uno en la grilla, y el cambio por porcentajes de todo un
// rango de códigos, preguntado antes con la cantidad de artículos que cambian.

#include "app/configuracion.h"
#include "app/estado.h"
#include "store/almacen.h"

#include <QDialog>

class QComboBox;
class QLineEdit;

namespace orv {

class Grilla;

class panCamPre : public QDialog {
    Q_OBJECT
public:
    panCamPre(Almacen& almacen, const EstadoAplicacion& estado, const Configuracion& conf, QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }
    // La grilla con el rubro y el proveedor elegidos (cada elección y al salir del rango).
    void muestra();
    // Command1: pregunta con la cantidad de artículos y cambia los precios del rango.
    void generaCambio();

private:
    QWidget* armaFiltros();
    QWidget* armaCambio();
    void armaGrilla();

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Configuracion& conf_;
    QComboBox* combo1_ = nullptr;
    QComboBox* combo2_ = nullptr;
    QLineEdit* text1_ = nullptr;
    QLineEdit* text2_ = nullptr;
    QLineEdit* text3_ = nullptr;
    QLineEdit* text4_ = nullptr;
    Grilla* grilla_ = nullptr;
};

} // namespace orv
