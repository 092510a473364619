#include "reports/ui/lanzadores.h"

#include "reports/catalogo.h"
#include "reports/ui/salida_informes.h"

namespace orv {

bool InformeFaltante(SalidaInformes& s, const QDate& hoy) {
    s.reinicia();
    s.fijaDestino(SalidaInformes::Ventana);
    const QString faltante = QStringLiteral("faltante.rpt");
    return s.imprime(faltante, SeleccionUsual(faltante, hoy, hoy));
}

bool InformeListaPrecios(SalidaInformes& s, std::optional<qint64> idRubro, bool porCodigo, const QDate& hoy) {
    s.restableceDestino();
    const QString lista =
        porCodigo ? QStringLiteral("listadepreciosporcodigo.rpt") : QStringLiteral("listadepreciosporalfabeto.rpt");
    Seleccion sel = SeleccionUsual(lista, hoy, hoy); // todos los rubros
    if (idRubro) {
        sel.condicion = QStringLiteral("idRubro = ?");
        sel.parametros = {*idRubro};
    }
    return s.imprime(lista, sel);
}

bool InformeCaja(SalidaInformes& s, const QDate& dia, bool completo) {
    return s.imprime(completo ? QStringLiteral("listacajadesglose.rpt") : QStringLiteral("listacajasimple.rpt"),
                     SeleccionCajaDia(dia));
}

bool InformeComprasProveedor(SalidaInformes& s, const QDate& desde, const QDate& hasta, qint64 idProveedor) {
    return s.imprime(QStringLiteral("compras1.rpt"), SeleccionCompras(desde, hasta, idProveedor));
}

bool InformeCtaProveedor(SalidaInformes& s, qint64 idProveedor, const QDate& desde, const QString& saldo) {
    return s.imprime(QStringLiteral("saldoProve.rpt"), SeleccionCtaProveedor(idProveedor, desde, saldo));
}

bool InformeCtaCteCliente(SalidaInformes& s, qint64 idVendedor) {
    return s.imprime(QStringLiteral("ctaclientes.rpt"), SeleccionCtaCteVendedor(idVendedor));
}

bool InformeSaldoClientes(SalidaInformes& s, const QDate& hoy) {
    return s.imprime(QStringLiteral("saldotodosclientes.rpt"), SeleccionUsual(QStringLiteral("saldotodosclientes.rpt"), hoy, hoy));
}

bool InformeLiquidacionComision(SalidaInformes& s, qint64 idCuentaVendedor) {
    return s.imprime(QStringLiteral("comprobantecomisiones.rpt"), SeleccionLiquidacionComision(idCuentaVendedor));
}

bool InformeComisiones(SalidaInformes& s, const QDate& desde, const QDate& hasta, qint64 idUsuario) {
    return s.imprime(QStringLiteral("comisiones.rpt"), SeleccionComisionesVenta(desde, hasta, idUsuario));
}

bool InformeHistoricoCliente(SalidaInformes& s, const QDate& desde, const QDate& hasta, qint64 idVendedor) {
    return s.imprime(QStringLiteral("comprobantesporcliente.rpt"), SeleccionHistoricoCliente(desde, hasta, idVendedor));
}

bool InformeProduccion(SalidaInformes& s, qint64 idRegistroProduccion) {
    return s.imprime(QStringLiteral("comprobanteproduccion.rpt"), SeleccionProduccion(idRegistroProduccion));
}

} // namespace orv
