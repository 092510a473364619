#pragma once
// Compras de ejemplo: documentos de los primeros proveedores registrados por el mismo registro de la
// compra, para que el stock, su diario, la caja y las cuentas de proveedores muestren movimientos.

#include "store/almacen.h"

#include <QDate>

namespace orv {

// Dos compras de cada uno de los cuatro primeros proveedores, de sus propios artículos, en las tres
// semanas antes de `hoy`: una factura de contado que entra al stock y asigna los costos (los mismos
// de la ficha: los precios de ejemplo siguen cerrando con su utilidad), y un remito en cuenta
// corriente, pendiente, que también entra al stock. Al primer proveedor ya se le pagó una parte de su
// remito. Siempre las mismas. Usa el borrador de compras de la terminal `idRed` y lo deja vacío.
void CargaComprasEjemplo(Almacen& a, const QDate& hoy, qint32 idRed, qint32 idUsuario);

} // namespace orv
