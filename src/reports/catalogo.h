#pragma once
// Selección de siempre de cada informe del catálogo, para un período.

#include "reports/informe.h"

#include <QDate>
#include <optional>

namespace orv {

// Selección usual del informe (por nombre de archivo) entre dos fechas. Los informes que no
// dependen de fechas no llevan condición. Lanza Aviso para un informe que no es del catálogo.
Seleccion SeleccionUsual(const QString& nombre, const QDate& desde, const QDate& hasta);
// Selección de un comprobante por su id (plantillas de comprobantes).
Seleccion SeleccionComprobante(qint64 idComprobante);
// Las selecciones de cada informe, tal como las piden sus pantallas. Fechas incluidas.
// lista_facturas.rpt (comerciales) o lista_no_comerciales.rpt.
Seleccion SeleccionListaComprobantes(bool comerciales, const QDate& desde, const QDate& hasta);
// lista_tot_facturas_diario.rpt
Seleccion SeleccionVentasResumen(const QDate& desde, const QDate& hasta);
// total_articulos.rpt: un código, o todos con el código vacío.
Seleccion SeleccionVentasItems(const QDate& desde, const QDate& hasta, const QString& codigo);
// lista_ventas_clientes.rpt: un cliente por su nombre, o todos con el nombre vacío.
Seleccion SeleccionVentasClientes(const QDate& desde, const QDate& hasta, const QString& nombre);
// ctaclientes.rpt: la cuenta de un cliente.
Seleccion SeleccionCtaCteVendedor(qint64 idVendedor);
// resumencuenta.rpt: la cuenta de un cliente en un período, con el saldo que traía de antes.
Seleccion SeleccionResumenCuenta(qint64 idVendedor, const QString& nombre, const QDate& desde, const QDate& hasta,
                                  Dinero saldoAnterior, const QString& mascaraMoneda);
// comprobantecomisiones.rpt: el recibo de un movimiento de la cuenta.
Seleccion SeleccionLiquidacionComision(qint64 idCuentaVendedor);
// comisiones.rpt: las comisiones de un vendedor.
Seleccion SeleccionComisionesVenta(const QDate& desde, const QDate& hasta, qint64 idUsuario);
// comprobantesporcliente.rpt: los comprobantes de un cliente.
Seleccion SeleccionHistoricoCliente(const QDate& desde, const QDate& hasta, qint64 idVendedor);
// listacajasimple.rpt y listacajadesglose.rpt: un día de caja.
Seleccion SeleccionCajaDia(const QDate& dia);
// compras1.rpt: las compras del período, de un proveedor o de todos.
Seleccion SeleccionCompras(const QDate& desde, const QDate& hasta, std::optional<qint64> idProveedor);
// movctas.rpt: los movimientos de una cuenta.
Seleccion SeleccionEstadoCuenta(qint64 idCuenta, const QDate& desde, const QDate& hasta);
// saldoProve.rpt: la cuenta de un proveedor desde una fecha, con su saldo (ya con formato).
Seleccion SeleccionCtaProveedor(qint64 idProveedor, const QDate& desde, const QString& saldo);
// comprobanteproduccion.rpt: un registro de producción.
Seleccion SeleccionProduccion(qint64 idRegistroProduccion);

// "Del dd/mm/aaaa al dd/mm/aaaa"
QString TextoPeriodo(const QDate& desde, const QDate& hasta);

} // namespace orv
