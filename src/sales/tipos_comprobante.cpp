#include "sales/tipos_comprobante.h"

#include "store/formato.h"

#include <QSqlQuery>

namespace orv {

QString NumeroMostrado(const QString& letra, const QString& puntoDeVenta, qint64 numero) {
    return letra + u' ' + puntoDeVenta + u'-' + QStringLiteral("%1").arg(numero, 8, 10, QLatin1Char('0'));
}

QString ProximoNumeroMostrado(const Almacen& a, qint64 idTipoComprobante) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Letra, PuntoDeVenta, Correlativo FROM TiposDeComprobantes "
                                            "WHERE idTipoComprobante = ?"),
                             {idTipoComprobante});
    if (!q.next()) return {};
    return NumeroMostrado(q.value(0).toString(), q.value(1).toString(), q.value(2).toLongLong() + 1);
}

std::optional<qint64> TipoComprobantePredeterminado(const Almacen& a, const Configuracion& conf) {
    const QString guardado = conf.lee(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado"));
    if (EsNumerico(QStringView(guardado))) return qint64(Val(guardado));
    const QVariant primero =
        a.valor(QStringLiteral("SELECT idTipoComprobante FROM TiposDeComprobantes ORDER BY idTipoComprobante"));
    if (primero.isNull()) return std::nullopt;
    conf.graba(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado"), primero.toString());
    return primero.toLongLong();
}

} // namespace orv
