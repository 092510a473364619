#include "suppliers/cuenta_proveedor.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/formato.h"

#include <QSqlQuery>

namespace orv {

QString RazonSocialProveedor(const Almacen& a, qint64 idProveedor) {
    return a.valor(QStringLiteral("SELECT RazonSocial FROM Proveedores WHERE idProveedor = ?"), {idProveedor}).toString();
}

ConsultaConParametros CuentaProveedor(qint64 idProveedor, std::optional<QDate> desde) {
    ConsultaConParametros c{QStringLiteral("SELECT idMovCta, Fecha, Detalle, Referencia, Debe, Haber, idCompra FROM CtaProve "
                                           "WHERE idProveedor = ?"),
                            {idProveedor}};
    if (desde) {
        c.sql += QStringLiteral(" AND Fecha >= ?");
        c.parametros << *desde;
    }
    c.sql += QStringLiteral(" ORDER BY Fecha, idMovCta");
    return c;
}

std::optional<Dinero> SaldoProveedor(const Almacen& a, qint64 idProveedor) {
    const QVariant v = a.valor(
        QStringLiteral("SELECT SUM(COALESCE(Debe, 0)) - SUM(COALESCE(Haber, 0)) FROM CtaProve WHERE idProveedor = ?"), {idProveedor});
    if (v.isNull()) return std::nullopt;
    return Dinero::desdeVariant(v);
}

void QuitaMovimientoProveedor(Almacen& a, qint64 idMovCta) {
    a.ejecuta(QStringLiteral("DELETE FROM CtaProve WHERE idMovCta = ?"), {idMovCta});
}

std::optional<qint64> CompraDeMovimiento(const Almacen& a, qint64 idMovCta) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idCompra FROM CtaProve WHERE idMovCta = ? AND substr(Detalle, 1, 7) = 'Compra '"),
                             {idMovCta});
    if (!q.next() || q.value(0).isNull()) return std::nullopt;
    return q.value(0).toLongLong();
}

QList<CompraImpaga> ComprasImpagas(const Almacen& a, qint64 idProveedor, const QString& mascaraMoneda) {
    QList<CompraImpaga> r;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idCompra, LetComprobante, SucComprobante, NroComprobante, Fecha, Total FROM Compras "
                                            "WHERE idProveedor = ? AND COALESCE(Cancelada, 0) = 0 ORDER BY Fecha, idCompra"),
                             {idProveedor});
    while (q.next())
        r.append({q.value(0).toLongLong(),
                  QStringLiteral("%1-%2-%3 %4 %5")
                      .arg(q.value(1).toString())
                      .arg(q.value(2).toLongLong(), 4, 10, QLatin1Char('0'))
                      .arg(q.value(3).toLongLong(), 8, 10, QLatin1Char('0'))
                      .arg(FechaGuardadaTexto(q.value(4)).value_or(QString()),
                           FormatoMoneda(Dinero::desdeVariant(q.value(5)), mascaraMoneda))});
    return r;
}

qint64 RegistraPagoProveedor(Almacen& a, const PagoProveedor& p) {
    // 1. La fecha abierta, la cuenta y el importe, antes de escribir nada.
    ExigeFechaAbierta(a, p.fecha);
    if (!p.idCuenta) throw Aviso(kCuentaIncorrecta);
    const std::optional<Dinero> importe = LeeImporte(p.importe.trimmed());
    if (!importe) throw Aviso(kImporteIncorrecto);
    ExigeImporteEnRango(*importe);
    ExigeTexto(p.referencia, 100, QStringLiteral("Referencia"));
    ExigeTexto(p.detalle, 255, QStringLiteral("Observaciones"));

    Transaccion tr(a);
    // 2. Las compras elegidas quedan canceladas, sea cual sea el importe.
    for (qint64 idCompra : p.comprasCanceladas)
        a.ejecuta(QStringLiteral("UPDATE Compras SET Cancelada = 1 WHERE idCompra = ? AND idProveedor = ?"), {idCompra, p.idProveedor});
    // 3. La línea del pago en la cuenta.
    const qint64 idMovCta = a.inserta(
        QStringLiteral("INSERT INTO CtaProve (idProveedor, Fecha, idCompra, idCuenta, Detalle, Debe, Haber, Referencia) "
                       "VALUES (?, ?, 0, ?, ?, 0, ?, ?)"),
        {p.idProveedor, p.fecha, *p.idCuenta, p.detalle, importe->aVariant(), p.referencia}, QStringLiteral("idMovCta"));
    // 4. La salida de caja, con el número de esa línea.
    if (p.registraCaja)
        a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) "
                                 "VALUES (?, ?, ?, ?, 0, ?, ?, ?)"),
                  {*p.idCuenta, idMovCta, p.fecha,
                   CortaTexto(QStringLiteral("PAGO A PROVE. ") + RazonSocialProveedor(a, p.idProveedor) + QStringLiteral("//") +
                                  p.detalle,
                              65),
                   importe->aVariant(), CortaTexto(p.formaPago, 50), p.idUsuario});
    tr.confirmar();
    return idMovCta;
}

} // namespace orv
