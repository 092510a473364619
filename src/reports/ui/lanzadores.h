#pragma once
// Informes que se lanzan desde los paneles y pantallas de cada tema: una función por cada uno,
// con su definición y su selección, al destino vigente de la salida de informes.

#include <QDate>
#include <QString>
#include <optional>

namespace orv {

class SalidaInformes;

// "Faltante" de artículos: siempre a una ventana, y la ventana queda como destino de los
// informes que siguen hasta que se cambie la lista de destinos.
bool InformeFaltante(SalidaInformes& s, const QDate& hoy);
// Lista de precios de un rubro (o de todos), por código o por descripción. Vuelve al destino
// elegido en la lista, aunque el faltante lo haya dejado en la ventana.
bool InformeListaPrecios(SalidaInformes& s, std::optional<qint64> idRubro, bool porCodigo, const QDate& hoy);
// "Imprimir" de la caja: el día, simple o completo.
bool InformeCaja(SalidaInformes& s, const QDate& dia, bool completo);
// "&Informe..." de las compras de un proveedor.
bool InformeComprasProveedor(SalidaInformes& s, const QDate& desde, const QDate& hasta, qint64 idProveedor);
// "&Imprimir" de la cuenta de un proveedor, con su saldo.
bool InformeCtaProveedor(SalidaInformes& s, qint64 idProveedor, const QDate& desde, const QString& saldo);
// Cuenta corriente de un cliente.
bool InformeCtaCteCliente(SalidaInformes& s, qint64 idVendedor);
// Saldos de todos los clientes que deben o tienen a favor, al día.
bool InformeSaldoClientes(SalidaInformes& s, const QDate& hoy);
// Recibo de una cobranza de la cuenta corriente.
bool InformeLiquidacionComision(SalidaInformes& s, qint64 idCuentaVendedor);
// Comisiones de un vendedor en un período.
bool InformeComisiones(SalidaInformes& s, const QDate& desde, const QDate& hasta, qint64 idUsuario);
// Comprobantes de un cliente en un período.
bool InformeHistoricoCliente(SalidaInformes& s, const QDate& desde, const QDate& hasta, qint64 idVendedor);
// Comprobante de un registro de producción.
bool InformeProduccion(SalidaInformes& s, qint64 idRegistroProduccion);

} // namespace orv
