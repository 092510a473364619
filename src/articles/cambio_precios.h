#pragma once
// Cambio de precios: los artículos de un proveedor y un rubro para corregir precios uno por uno, y el
// cambio de costo y venta por porcentajes de todo un rango de códigos, en una sola sentencia, con el
// precio final (con impuesto) al día.

#include "store/almacen.h"
#include "store/rutinas.h"

#include <QString>
#include <optional>

namespace orv {

// Qué artículos: un rubro y un proveedor (sin ellos, "<Todos>"), y un rango del valor numérico del
// código (las cifras del comienzo del código; un código sin cifras vale 0).
struct RangoPrecios {
    std::optional<qint64> idRubro;
    std::optional<qint64> idProveedor;
    QString desde; // Text1, como se tipeó
    QString hasta; // Text2
};

// La grilla: Codigo, CgoProveedor, Descripcion, DescripcionMatriz, PrecioCosto, PrecioVenta e
// idArticulo de los artículos del rubro y del proveedor, por rubro y descripción. El rango no la
// limita: sólo el cambio lo aplica.
ConsultaConParametros ArticulosParaPrecios(std::optional<qint64> idRubro, std::optional<qint64> idProveedor);

// Cuántos artículos cambiaría el rango (para preguntar antes). Un rango que no se lee se rechaza con
// el aviso de su campo.
qint64 CuentaCambioPrecios(const Almacen& a, const RangoPrecios& r);

// "Generar cambio masivo": costo × (1 + pctCosto / 100) y venta × (1 + pctVenta / 100), a cuatro
// decimales, y el precio final de la venta nueva con el impuesto de `coefIva`, en una sentencia y una
// transacción. Un porcentaje o un rango que no se leen se rechazan con el aviso de su campo y nada
// cambia. Devuelve cuántos artículos cambiaron.
qint64 CambiaPrecios(Almacen& a, const RangoPrecios& r, const QString& pctCosto, const QString& pctVenta,
                     const QString& coefIva);

// Un precio corregido en la grilla ("PrecioCosto" o "PrecioVenta"): el importe como se escribió; con
// la venta, también el precio final. Un importe que no se lee se rechaza con un aviso.
void CambiaPrecioArticulo(Almacen& a, qint64 idArticulo, const QString& campo, const QString& importe, const QString& coefIva);

} // namespace orv
