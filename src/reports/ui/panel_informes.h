#pragma once
// Panel "Estadísticas e informes": el período (Dtpicker4, Dtpicker5) y las entradas que lanzan los
// informes de siempre, cada uno con su selección, al destino vigente.

#include "app/configuracion.h"
#include "store/almacen.h"

#include <QDate>
#include <QWidget>

class QDateEdit;

namespace orv {

class SalidaInformes;

class PanelInformes : public QWidget {
    Q_OBJECT
public:
    PanelInformes(Almacen& almacen, const Configuracion& conf, SalidaInformes& salida, QWidget* padre = nullptr);

    QDateEdit* desde() const { return desde_; }
    QDateEdit* hasta() const { return hasta_; }
    // Pone las dos fechas sin avisar a nadie (la carga de la ventana).
    void fijaPeriodo(const QDate& desde, const QDate& hasta);

    void comprobantes();     // Label25
    void ventasResumen();    // Label27
    void ventasItems();      // Label30
    void deudaClientes();    // Label32
    void ventasCliente();    // Label34
    void rankingClientes();  // Label36
    void rankingArticulos(); // Label38
    void listasPrecios();    // Label40
    void inventario();       // Label42
    void compras();          // Label44
    void deudaProveedores(); // label46
    void estadoCuentas();    // Label48
    void situacion();        // Label50
    void catalogo();         // todas las definiciones

private:
    QDate d1() const;
    QDate d2() const;
    void usual(const QString& nombre);

    Almacen& almacen_;
    const Configuracion& conf_;
    SalidaInformes& salida_;
    QDateEdit* desde_;
    QDateEdit* hasta_;
};

} // namespace orv
