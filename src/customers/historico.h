#pragma once
// El histórico de un cliente: los comprobantes que se le hicieron en un período, con lo comercial y
// lo no comercial sumados aparte. Sólo lee.

#include "store/almacen.h"
#include "store/dinero.h"
#include "store/rutinas.h"

#include <QDate>

namespace orv {

// Los comprobantes del cliente entre dos días (ambos incluidos), por fecha, tipo y número, con los
// importes de la cabecera con el signo del total y el id de cada uno (para ver su detalle).
ConsultaConParametros ConsultaHistoricoCliente(qint64 idVendedor, const QDate& desde, const QDate& hasta);

struct TotalesHistorico {
    Dinero comerciales;   // suma de los totales de los comprobantes comerciales (una nota de crédito resta)
    Dinero noComerciales; // lo mismo de los que no lo son (presupuestos, remitos)
    friend bool operator==(const TotalesHistorico&, const TotalesHistorico&) = default;
};
// Los dos totales del período en una lectura; sin comprobantes, ceros.
TotalesHistorico TotalesHistoricoCliente(const Almacen& a, qint64 idVendedor, const QDate& desde, const QDate& hasta);

} // namespace orv
