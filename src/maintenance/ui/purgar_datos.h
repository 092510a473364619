#pragma once
// "Purgar datos": con dos confirmaciones, respalda el almacén y vacía los archivos de trabajo
// (comprobantes, detalles, movimientos de stock, caja, cuentas corrientes y compras).

#include "app/configuracion.h"
#include "store/almacen.h"
#include "store/reloj.h"

class QWidget;

namespace orv {

// Verdadero si purgó (quien la llama refresca lo que muestra).
bool PurgarDatos(Almacen& almacen, const Configuracion& conf, const Reloj& reloj, QWidget* padre);

} // namespace orv
