#include "reports/catalogo.h"

#include "store/aviso.h"
#include "store/formato.h"

#include <QFileInfo>

namespace orv {

namespace {

// "<campo> >= ? AND <campo> <= ?" con el período, y su texto para el encabezado.
Seleccion entre(const QString& campo, const QDate& desde, const QDate& hasta) {
    Seleccion s;
    s.condicion = campo + QStringLiteral(" >= ? AND ") + campo + QStringLiteral(" <= ?");
    s.parametros = {desde, hasta};
    s.periodo = TextoPeriodo(desde, hasta);
    return s;
}

Seleccion conId(const QString& campo, qint64 id) {
    Seleccion s;
    s.condicion = campo + QStringLiteral(" = ?");
    s.parametros = {id};
    return s;
}

// Agrega "AND <condición>" con su parámetro.
void y(Seleccion& s, const QString& condicion, const QVariant& valor) {
    s.condicion += QStringLiteral(" AND ") + condicion;
    s.parametros << valor;
}

Seleccion fija(const QString& condicion, const QDate& al) {
    Seleccion s;
    s.condicion = condicion;
    s.periodo = QStringLiteral("Al ") + FechaTexto(al);
    return s;
}

} // namespace

QString TextoPeriodo(const QDate& desde, const QDate& hasta) {
    return QStringLiteral("Del ") + FechaTexto(desde) + QStringLiteral(" al ") + FechaTexto(hasta);
}

Seleccion SeleccionComprobante(qint64 idComprobante) { return conId(QStringLiteral("idComprobante"), idComprobante); }

Seleccion SeleccionListaComprobantes(bool comerciales, const QDate& desde, const QDate& hasta) {
    return entre(comerciales ? QStringLiteral("FECDETALLE") : QStringLiteral("Fecha"), desde, hasta);
}

Seleccion SeleccionVentasResumen(const QDate& desde, const QDate& hasta) {
    return entre(QStringLiteral("FECDETALLE"), desde, hasta);
}

Seleccion SeleccionVentasItems(const QDate& desde, const QDate& hasta, const QString& codigo) {
    Seleccion s = entre(QStringLiteral("FECDETALLE"), desde, hasta);
    if (!codigo.isEmpty()) y(s, QStringLiteral("Codigo = ?"), codigo);
    return s;
}

Seleccion SeleccionVentasClientes(const QDate& desde, const QDate& hasta, const QString& nombre) {
    Seleccion s = entre(QStringLiteral("Fecha"), desde, hasta);
    if (!nombre.isEmpty()) y(s, QStringLiteral("Nombre = ?"), nombre);
    return s;
}

Seleccion SeleccionCtaCteVendedor(qint64 idVendedor) { return conId(QStringLiteral("idVendedor"), idVendedor); }

Seleccion SeleccionResumenCuenta(qint64 idVendedor, const QString& nombre, const QDate& desde, const QDate& hasta,
                                  Dinero saldoAnterior, const QString& mascaraMoneda) {
    Seleccion s = entre(QStringLiteral("Fecha"), desde, hasta);
    y(s, QStringLiteral("idVendedor = ?"), idVendedor);
    s.saldoInicial = saldoAnterior;
    s.parametrosInforme.insert(QStringLiteral("SaldoAnterior"), FormatoMoneda(saldoAnterior, mascaraMoneda));
    s.parametrosInforme.insert(QStringLiteral("Hasta"), FechaTexto(hasta));
    s.parametrosInforme.insert(QStringLiteral("Cliente"), nombre);
    return s;
}

Seleccion SeleccionLiquidacionComision(qint64 idCuentaVendedor) {
    return conId(QStringLiteral("IdCuentaVendedor"), idCuentaVendedor);
}

Seleccion SeleccionComisionesVenta(const QDate& desde, const QDate& hasta, qint64 idUsuario) {
    Seleccion s = entre(QStringLiteral("Fecha"), desde, hasta);
    y(s, QStringLiteral("idUsuario = ?"), idUsuario);
    return s;
}

Seleccion SeleccionHistoricoCliente(const QDate& desde, const QDate& hasta, qint64 idVendedor) {
    Seleccion s = entre(QStringLiteral("Fecha"), desde, hasta);
    y(s, QStringLiteral("idVendedor = ?"), idVendedor);
    return s;
}

Seleccion SeleccionCajaDia(const QDate& dia) {
    Seleccion s;
    s.condicion = QStringLiteral("Fecha = ?");
    s.parametros = {dia};
    s.periodo = QStringLiteral("Día ") + FechaTexto(dia);
    return s;
}

Seleccion SeleccionCompras(const QDate& desde, const QDate& hasta, std::optional<qint64> idProveedor) {
    Seleccion s = entre(QStringLiteral("Fecha"), desde, hasta);
    if (idProveedor) y(s, QStringLiteral("idProveedor = ?"), *idProveedor);
    return s;
}

Seleccion SeleccionEstadoCuenta(qint64 idCuenta, const QDate& desde, const QDate& hasta) {
    Seleccion s = entre(QStringLiteral("Fecha"), desde, hasta);
    y(s, QStringLiteral("idCuenta = ?"), idCuenta);
    return s;
}

Seleccion SeleccionCtaProveedor(qint64 idProveedor, const QDate& desde, const QString& saldo) {
    // La pantalla es la de un proveedor: su cuenta desde la fecha, no la de todos.
    Seleccion s;
    s.condicion = QStringLiteral("Fecha >= ? AND idProveedor = ?");
    s.parametros = {desde, idProveedor};
    s.periodo = QStringLiteral("Desde el ") + FechaTexto(desde);
    s.parametrosInforme.insert(QStringLiteral("Saldo"), saldo);
    return s;
}

Seleccion SeleccionProduccion(qint64 idRegistroProduccion) {
    return conId(QStringLiteral("idRegistroProduccion"), idRegistroProduccion);
}

Seleccion SeleccionUsual(const QString& nombre, const QDate& desde, const QDate& hasta) {
    const QString n = QFileInfo(nombre).fileName().toLower();
    const auto es = [&n](const char* x) { return n == QLatin1String(x); };
    // Por período, con todos los sujetos.
    if (es("listacajasimple.rpt") || es("listacajadesglose.rpt") || es("compras1.rpt") || es("movctas.rpt") ||
        es("lista_ventas_clientes.rpt") || es("comisiones.rpt") || es("comprobantesporcliente.rpt") ||
        es("lista_no_comerciales.rpt") || es("resumencuenta.rpt"))
        return entre(QStringLiteral("Fecha"), desde, hasta);
    if (es("lista_facturas.rpt") || es("lista_tot_facturas_diario.rpt") || es("total_articulos.rpt"))
        return entre(QStringLiteral("FECDETALLE"), desde, hasta);
    if (es("saldoprove.rpt")) {
        Seleccion s;
        s.condicion = QStringLiteral("Fecha >= ?");
        s.parametros = {desde};
        s.periodo = QStringLiteral("Desde el ") + FechaTexto(desde);
        return s;
    }
    // Saldos y listas del momento.
    if (es("faltante.rpt")) return fija(QStringLiteral("StockActual <= StockMinimo"), hasta);
    // Todos los rubros: un artículo sin rubro no está en ninguna lista.
    if (es("listadepreciosporcodigo.rpt") || es("listadepreciosporalfabeto.rpt")) return fija(QStringLiteral("idRubro <> 0"), hasta);
    if (es("listadeprecios.rpt") || es("inventario.rpt")) return fija(QString(), hasta);
    if (es("saldotodosclientes.rpt") || es("saldotodosprove.rpt")) return fija(QStringLiteral("Saldo <> 0"), hasta);
    if (es("total_comisiones.rpt")) return fija(QStringLiteral("Nombre <> ''"), hasta);
    if (es("ranking_articulos.rpt")) return fija(QStringLiteral("SumaDeCantidad <> 0"), hasta);
    // Los que se piden por un id: todos.
    if (es("ctaclientes.rpt") || es("comprobantecomisiones.rpt") || es("comprobanteproduccion.rpt")) return fija(QString(), hasta);
    throw Aviso(QStringLiteral("El informe ") + nombre + QStringLiteral(" no es del catálogo."));
}

} // namespace orv
