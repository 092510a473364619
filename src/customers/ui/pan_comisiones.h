#pragma once
// panComisiones ("Comisiones Vendedores"): las líneas de comisión de un vendedor en un período con
// lo ganado, lo liquidado y la diferencia; la liquidación (por panLiq), el informe y el borrado de
// una línea.

#include "app/estado.h"
#include "customers/ui/piezas_periodo.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>
#include <QList>
#include <QPair>
#include <optional>


namespace orv {

class Grilla;
class SalidaInformes;

class PanComisiones : public QDialog {
    Q_OBJECT
public:
    // Con un vendedor, la pantalla lo trae elegido, con sus líneas y sus totales de los últimos 30 días.
    PanComisiones(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                  std::optional<qint64> idUsuario, QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }
    // Los tres totales como se ven: comisiones, liquidado, diferencia.
    QStringList totales() const;

    void mostrar();  // btnOk
    void liquidar(); // OsenXPButton1
    void imprimir(); // OsenXPButton2
    void quitar();   // OsenXPButton3

private:
    void armaGrilla();
    std::optional<qint64> vendedor() const;
    // Vuelve a leer las líneas y los totales del vendedor y el período elegidos.
    void actualiza();

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Reloj& reloj_;
    SalidaInformes& salida_;
    FiltroPeriodo filtro_;
    Grilla* grilla_ = nullptr;
    QList<QPair<QString, int>> anchos_; // de las columnas, al ligar la grilla la primera vez
    TotalesPeriodo totales_;
};

} // namespace orv
