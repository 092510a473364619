#include "customers/cuenta.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/rutinas.h"

#include <QSqlQuery>

namespace orv {

Dinero SaldoCliente(const Almacen& a, qint64 idVendedor) {
    // Las dos sumas por separado y la resta en dinero exacto: un Null cuenta como 0.
    QSqlQuery q = a.consulta(QStringLiteral("SELECT SUM(Comision), SUM(Liquidacion) FROM Comisiones WHERE idVendedor = ?"),
                             {idVendedor});
    if (!q.next()) return Dinero();
    return Dinero::desdeVariant(q.value(0)) - Dinero::desdeVariant(q.value(1));
}

Dinero SaldoClienteAntesDe(const Almacen& a, qint64 idVendedor, const QDate& dia) {
    QSqlQuery q = a.consulta(
        QStringLiteral("SELECT SUM(Comision), SUM(Liquidacion) FROM Comisiones WHERE idVendedor = ? AND Fecha < ?"),
        {idVendedor, dia});
    if (!q.next()) return Dinero();
    return Dinero::desdeVariant(q.value(0)) - Dinero::desdeVariant(q.value(1));
}

QString NombreCliente(const Almacen& a, qint64 idVendedor) {
    return a.valor(QStringLiteral("SELECT Nombre FROM Vendedores WHERE idVendedor = ?"), {idVendedor}).toString();
}

QString EmailCliente(const Almacen& a, qint64 idVendedor) {
    return a.valor(QStringLiteral("SELECT \"e-mail\" FROM Vendedores WHERE idVendedor = ?"), {idVendedor}).toString().trimmed();
}

ConsultaConParametros ConsultaLineasCuenta(qint64 idVendedor) {
    return {QStringLiteral("SELECT Fecha, Tipo, TipoComprobante, Factura, Comision, Liquidacion, idCuentaVendedor, "
                           "idComprobante FROM ConsultaCtaCte WHERE idVendedor = ? ORDER BY Fecha, idCuentaVendedor"),
            {idVendedor}};
}

std::optional<qint64> PrimeraLineaDelDia(const Almacen& a, qint64 idVendedor, const QDate& dia) {
    if (a.valor(QStringLiteral("SELECT 1 FROM Comisiones WHERE idVendedor = ? AND Fecha = ? LIMIT 1"), {idVendedor, dia})
            .isNull())
        return std::nullopt;
    // Las líneas sin fecha van primero en SQLite y al final en PostgreSQL, como las ordena cada motor.
    const QString sinFecha = a.esPostgreSQL() ? QString() : QStringLiteral(" OR Fecha IS NULL");
    return a.valor(QStringLiteral("SELECT count(*) FROM Comisiones WHERE idVendedor = ? AND (Fecha < ?") + sinFecha +
                       QStringLiteral(")"),
                   {idVendedor, dia})
        .toLongLong();
}

qint64 RegistraLineaManual(Almacen& a, qint64 idVendedor, const QDate& fecha, const QString& detalle,
                           const QString& importe, bool debito) {
    const std::optional<Dinero> monto = LeeImporte(importe.trimmed());
    if (detalle.isEmpty() || !monto) throw Aviso(kErrorDatosCuenta);
    ExigeImporteEnRango(*monto);
    ExigeTexto(detalle, kLargoTipoCuenta, QStringLiteral("Detalle"));
    const Dinero cero;
    return a.inserta(QStringLiteral("INSERT INTO Comisiones (idVendedor, Fecha, Tipo, Comision, Liquidacion) "
                                    "VALUES (?, ?, ?, ?, ?)"),
                     {idVendedor, fecha, detalle, (debito ? *monto : cero).aVariant(), (debito ? cero : *monto).aVariant()},
                     QStringLiteral("idCuentaVendedor"));
}

bool BorraLineaCuenta(Almacen& a, qint64 idCuentaVendedor) {
    return a.ejecuta(QStringLiteral("DELETE FROM Comisiones WHERE idCuentaVendedor = ?"), {idCuentaVendedor}) > 0;
}

qint64 RegistraCobranza(Almacen& a, const DatosCobranza& d) {
    Transaccion tr(a);
    // 1. El día abierto, dentro de la transacción: un cierre de otro puesto no se cuela en medio.
    ExigeFechaAbierta(a, d.fecha);
    // 2. El importe.
    const Dinero importe = ExigeImporte(d.importe.trimmed(), QStringLiteral("Importe"));
    if (importe <= Dinero()) throw Aviso(QStringLiteral("Error, el importe de la cobranza debe ser mayor que cero!"));
    QVariant idCuenta;
    if (d.asientaCaja) {
        idCuenta = a.valor(QStringLiteral("SELECT idCuenta FROM Cuentas WHERE Cuenta = ? ORDER BY idCuenta LIMIT 1"),
                           {kCuentaCobranza});
        if (idCuenta.isNull())
            throw Aviso(QStringLiteral("Falta la cuenta \"") + kCuentaCobranza +
                        QStringLiteral("\" en el plan de cuentas: la cobranza no se registró."));
        ExigeTexto(d.formaPago, 50, QStringLiteral("F.Pago"));
    }
    // 3. La línea de la cuenta: su id es el número del recibo.
    const qint64 id = a.inserta(QStringLiteral("INSERT INTO Comisiones (idVendedor, Fecha, Tipo, Comision, Liquidacion) "
                                               "VALUES (?, ?, 'PAGO', 0, ?)"),
                                {d.idVendedor, d.fecha, importe.aVariant()}, QStringLiteral("idCuentaVendedor"));
    // 4. La fila de caja.
    if (d.asientaCaja)
        a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) "
                                 "VALUES (?, ?, ?, ?, 0, ?, ?)"),
                  {idCuenta, d.fecha, CortaTexto(d.detalles, kLargoDetallesCaja), importe.aVariant(), d.formaPago, d.idUsuario});
    tr.confirmar();
    return id;
}

qint64 ArreglaCuentas(Almacen& a) {
    Transaccion tr(a);
    const int agregadas = a.ejecuta(QStringLiteral(
        "INSERT INTO Comisiones (idVendedor, Fecha, idComprobante, Tipo, Comision, Liquidacion) "
        "SELECT c.idVendedor, c.Fecha, c.idComprobante, 'VENTA CTA CTE', "
        "CASE WHEN c.Total < 0 THEN 0 ELSE COALESCE(c.Total, 0) END, CASE WHEN c.Total < 0 THEN -c.Total ELSE 0 END "
        "FROM Comprobantes c INNER JOIN Vendedores v ON v.idVendedor = c.idVendedor "
        "WHERE c.FormaPago = 'CTA CTE' AND c.EsComercial <> 0 "
        "AND NOT EXISTS (SELECT 1 FROM Comisiones m WHERE m.idComprobante = c.idComprobante) "
        "ORDER BY c.idComprobante"));
    tr.confirmar();
    return agregadas;
}

} // namespace orv
