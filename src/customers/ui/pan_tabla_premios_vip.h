#pragma once
// panTablaPremiosVIP ("Tabla de premios VIP"): los premios con su artículo, cantidad, puntos y
// vigencia; agregar, editar, quitar e imprimir la lista.

#include "app/configuracion.h"
#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>
#include <QList>
#include <QPair>

namespace orv {

class Grilla;

class PanTablaPremiosVIP : public QDialog {
    Q_OBJECT
public:
    PanTablaPremiosVIP(Almacen& almacen, const Configuracion& conf, const EstadoAplicacion& estado, const Reloj& reloj,
                       QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }

    void agregar();  // OsenXPButton1
    void quitar();   // OsenXPButton2
    void editar();   // OsenXPButton3 y doble clic
    void imprimir(); // OsenXPButton4

private:
    void armaGrilla();
    void carga();
    void edita(std::optional<qint64> id);

    Almacen& almacen_;
    const Configuracion& conf_;
    const EstadoAplicacion& estado_;
    const Reloj& reloj_;
    Grilla* grilla_ = nullptr;
    QList<QPair<QString, int>> anchos_; // de las columnas, al ligar la grilla la primera vez
};

} // namespace orv
