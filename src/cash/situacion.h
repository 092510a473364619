#pragma once
// La situación de la empresa: lo que hay en la caja, lo que vale la mercadería, los ingresos por
// ventas y los gastos de un período agrupados por día, mes o año, la venta por rubro y lo que deben
// los clientes y lo que se debe a los proveedores. Todo es lectura, en dinero exacto.

#include "store/almacen.h"
#include "store/dinero.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

namespace orv {

// La agrupación del período ("cboGroup"). Un mes junta ese mes de todos los años del período.
enum class Agrupacion { Diario, Mensual, Anual };
// Los textos de la lista, en el orden de la enumeración.
QStringList TextosAgrupacion();
// Un texto de la lista; uno desconocido agrupa por año.
Agrupacion AgrupacionDeTexto(const QString& texto);

// Una fila de ingresos y gastos del período: el día, el mes (1 a 12) o el año.
struct IngresosDelGrupo {
    int grupo = 0;   // el día como yyyymmdd, el número del mes o el año
    QString periodo; // "05/03/2026", "Marzo" o "2026"
    Dinero ingresos; // ventas que entraron a la caja
    Dinero gastos;   // todo lo que salió de la caja
    friend bool operator==(const IngresosDelGrupo&, const IngresosDelGrupo&) = default;
};

struct VentaDelRubro {
    QString rubro;
    Dinero importe;
    friend bool operator==(const VentaDelRubro&, const VentaDelRubro&) = default;
};

struct Situacion {
    Dinero caja;             // ingresos menos egresos de toda la caja, sin mirar el período
    Dinero mercaderia;       // costo por existencia de todos los artículos
    QList<IngresosDelGrupo> movimientos; // por grupo, en orden
    QList<VentaDelRubro> rubros;         // por nombre de rubro
    Dinero deudaClientes;    // débitos menos créditos de las cuentas de los clientes
    Dinero deudaProveedores; // debe menos haber de las cuentas de los proveedores
    friend bool operator==(const Situacion&, const Situacion&) = default;
};

// La página entera para el período (ambos días incluidos):
//   1. La caja: todo lo que entró menos todo lo que salió.
//   2. La mercadería: costo × stock de cada artículo.
//   3. Ingresos: las filas de caja de las ventas ("VENTA :" al comienzo del detalle), donde la de
//      una nota de crédito resta; gastos: todos los egresos. Por grupo del período.
//   4. Venta por rubro: el subtotal de las líneas de los comprobantes comerciales del período, las
//      de una nota de crédito en negativo.
//   5. Las dos deudas, de todas las líneas de las cuentas.
// Un total sin filas es 0.
Situacion LeeSituacion(const Almacen& a, Agrupacion agrupacion, const QDate& desde, const QDate& hasta);

// El nombre del mes, de 1 a 12 ("Enero").
QString NombreMes(int mes);

} // namespace orv
