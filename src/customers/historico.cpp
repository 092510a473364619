#include "customers/historico.h"

#include <QSqlQuery>

namespace orv {

ConsultaConParametros ConsultaHistoricoCliente(qint64 idVendedor, const QDate& desde, const QDate& hasta) {
    return {QStringLiteral("SELECT idVendedor, Fecha, Tipo, Factura, SubTotal, PorcDescuento, MontDescuento, ImporteNeto, "
                           "PorcentajeIVA, ImporteIVA, Total, FormaPago, idComprobante FROM ConsultaHeaderComprobantes "
                           "WHERE idVendedor = ? AND Fecha >= ? AND Fecha <= ? ORDER BY Fecha, Tipo, Factura, idComprobante"),
            {idVendedor, desde, hasta}};
}

TotalesHistorico TotalesHistoricoCliente(const Almacen& a, qint64 idVendedor, const QDate& desde, const QDate& hasta) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT SUM(CASE WHEN EsComercial <> 0 THEN Total END), "
                                            "SUM(CASE WHEN EsComercial = 0 THEN Total END) FROM Comprobantes "
                                            "WHERE idVendedor = ? AND Fecha >= ? AND Fecha <= ?"),
                             {idVendedor, desde, hasta});
    TotalesHistorico t;
    if (q.next()) {
        t.comerciales = Dinero::desdeVariant(q.value(0));
        t.noComerciales = Dinero::desdeVariant(q.value(1));
    }
    return t;
}

} // namespace orv
