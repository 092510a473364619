#pragma once
// Datos de ejemplo: un comercio chico (almacén, kiosco y librería de barrio) listo para probar.

#include "store/almacen.h"
#include "store/reloj.h"

namespace orv {

// Llena un almacén nuevo o vacío con rubros, 300 artículos (parte con el código de barras del
// paquete como código, parte con el código interno), 40 clientes, 8 proveedores, zonas,
// localidades, los tipos de comprobante de uso diario, el negocio que los emite (Empresa, con sus
// datos fiscales), tres semanas de comprobantes registrados hasta ayer (ver ventas_ejemplo.h), dos
// vendedores con sus comisiones y una liquidación, y los premios de los clientes con tarjeta.
// Todo en una sola transacción y siempre
// con los mismos datos (semilla fija). Con artículos, clientes (salvo el consumidor final),
// comprobantes o movimientos de caja ya cargados, se niega con un Aviso y no toca nada.
void cargaDatosEjemplo(Almacen& a, const Reloj& reloj);

} // namespace orv
