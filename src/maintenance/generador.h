#pragma once
// Generador de almacenes grandes para medir rendimiento: muchos artículos y muchas filas de caja,
// armados dentro del propio almacén (INSERT ... SELECT sobre una serie de números), en segundos.

#include "store/almacen.h"

#include <QDate>
#include <QtGlobal>

namespace orv {

struct OpcionesGenerador {
    qint64 articulos = 100000;
    qint64 rubros = 0; // 0: uno cada 9 999 artículos, al menos 50
    qint64 filasCaja = 1000000;
    qint64 filasCajaPorDia = 300; // movimientos de caja de cada día
    QDate hasta; // fecha de la última fila de caja; nula = hoy
    // Clientes con zona, cada uno con una compra a cuenta y una cobranza parcial (saldo distinto
    // de cero); el primero, además, con `lineasClienteGrande` líneas en su cuenta.
    qint64 clientes = 0;
    qint64 lineasClienteGrande = 0;
    // Comprobantes (facturas B y, uno de cada 50, una nota de crédito), `comprobantesPorDia` por día
    // hacia atrás desde `hasta`, con dos líneas cada uno de artículos del almacén; uno de cada
    // `comprobantes / comprobantesClienteGrande` es del cliente grande (o del primero sin clientes).
    qint64 comprobantes = 0;
    qint64 comprobantesPorDia = 300;
    qint64 comprobantesClienteGrande = 0;
};

struct ResumenGeneracion {
    qint64 articulos = 0;
    qint64 filasCaja = 0;
    qint64 ingresos = 0; // suma de Caja.Ingreso agregada, en diezmilésimos
    qint64 egresos = 0;  // suma de Caja.Egreso agregada, en diezmilésimos
    qint64 clientes = 0;
    qint64 idClienteGrande = 0; // el cliente de las muchas líneas (0 sin clientes)
    qint64 comprobantes = 0;
    qint64 comprobantesClienteGrande = 0; // los del cliente grande
};

// La fila de caja número n (desde 1) es un egreso (compra) una de cada diez veces, y si no una venta.
bool esEgresoFilaCaja(qint64 n);
// Importe de la fila de caja número n, en centavos (entre 0,50 y 1 000,40).
qint64 centavosFilaCaja(qint64 n);

// Agrega a un almacén ya actualizado sus propios rubros y proveedores, `articulos` artículos,
// `filasCaja` movimientos de caja (`filasCajaPorDia` por día hacia atrás desde `hasta`) y los
// clientes con sus cuentas (50 líneas por día hacia atrás desde `hasta`), en una transacción.
// Cada artículo lleva el código que propondría la ficha (cifras del rubro y número en el rubro),
// un código de proveedor con el prefijo de su proveedor ("ARC-004217") y una descripción que
// combina producto, marca y presentación ("Yerba Don Pedro 500 g").
ResumenGeneracion generaAlmacenGrande(Almacen& a, const OpcionesGenerador& opciones);

} // namespace orv
