#pragma once
// Tipo de comprobante de la venta: el predeterminado de la terminal y la vista previa del
// próximo número.

#include "app/configuracion.h"
#include "store/almacen.h"

#include <QString>
#include <optional>

namespace orv {

// Número tal como se muestra: Letra + " " + PuntoDeVenta + "-" + el número con ocho cifras.
QString NumeroMostrado(const QString& letra, const QString& puntoDeVenta, qint64 numero);

// Próximo número del tipo (Correlativo + 1) en su forma mostrada; vacío si el tipo no existe.
// Es sólo una vista previa: el número se toma de nuevo al registrar.
QString ProximoNumeroMostrado(const Almacen& a, qint64 idTipoComprobante);

// Tipo predeterminado: el de "ComprobantePredeterminado" si es numérico; si no, el primero de
// la tabla, que queda grabado como predeterminado. Nada si no hay ningún tipo.
std::optional<qint64> TipoComprobantePredeterminado(const Almacen& a, const Configuracion& conf);

} // namespace orv
