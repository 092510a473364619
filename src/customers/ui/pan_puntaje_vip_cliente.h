#pragma once
// panPuntajeVipCliente ("Puntaje Vip"): el diario de puntos de un cliente con tarjeta en un período,
// con lo obtenido, lo cobrado en premios y la diferencia, y el cobro de un premio.

#include "app/estado.h"
#include "customers/ui/piezas_periodo.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>
#include <QList>
#include <QPair>
#include <optional>

class QHBoxLayout;

namespace orv {

class Grilla;

class PanPuntajeVipCliente : public QDialog {
    Q_OBJECT
public:
    // Con un cliente con tarjeta, la pantalla lo trae elegido y muestra su diario del día.
    PanPuntajeVipCliente(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, std::optional<qint64> idCliente,
                         QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }
    // Los tres totales como se ven: obtenidos, cobrados en premios, diferencia.
    QStringList totales() const;

    void mostrar();      // btnOk
    void cobrarPremio(); // OsenXPButton1

private:
    void armaGrilla();
    QHBoxLayout* armaPie();
    std::optional<qint64> cliente() const;

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Reloj& reloj_;
    FiltroPeriodo filtro_;
    Grilla* grilla_ = nullptr;
    QList<QPair<QString, int>> anchos_; // de las columnas, al ligar la grilla la primera vez
    TotalesPeriodo totales_;
};

} // namespace orv
