#pragma once
// Ventana principal del programa.

#include "app/configuracion.h"
#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QMainWindow>

class QLabel;

namespace orv {

class PanPrincipal : public QMainWindow {
    Q_OBJECT
public:
    PanPrincipal(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf, const Reloj& reloj,
                 QWidget* padre = nullptr);

    // "Orvanta ver M.m.r | Usuario : <nombre>"
    static QString tituloVentana(const QString& nombreUsuario);

private:
    Almacen& almacen_;
    EstadoAplicacion& estado_;
    const Configuracion& conf_;
    const Reloj& reloj_;
    QLabel* fecha_;
};

} // namespace orv
