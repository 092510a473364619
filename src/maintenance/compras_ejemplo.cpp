#include "maintenance/compras_ejemplo.h"

#include "store/aviso.h"
#include "suppliers/compras.h"
#include "suppliers/cuenta_proveedor.h"

#include <QSqlQuery>

namespace orv {

namespace {

qint64 idDe(const Almacen& a, const QString& sql, const QString& nombre) {
    const qint64 id = a.valor(sql, {nombre}).toLongLong();
    if (id == 0) throw Aviso(QStringLiteral("Falta \"%1\" para las compras de ejemplo.").arg(nombre));
    return id;
}

// Al proveedor ya se le pagó en efectivo una parte de su última compra, que queda cancelada.
void pagoDeEjemplo(Almacen& a, qint64 idProveedor, qint64 cuenta, const QDate& hoy, qint32 idUsuario) {
    PagoProveedor p;
    p.idProveedor = idProveedor;
    p.comprasCanceladas << a.valor(QStringLiteral("SELECT MAX(idCompra) FROM Compras WHERE idProveedor = ?"), {idProveedor}).toLongLong();
    p.importe = QStringLiteral("20000");
    p.formaPago = QStringLiteral("EFVO");
    p.idCuenta = cuenta;
    p.fecha = hoy.addDays(-3);
    p.referencia = QStringLiteral("Recibo 0001-00004410");
    p.detalle = QStringLiteral("Pago a cuenta del remito");
    p.registraCaja = true;
    p.idUsuario = idUsuario;
    RegistraPagoProveedor(a, p);
}

} // namespace

void CargaComprasEjemplo(Almacen& a, const QDate& hoy, qint32 idRed, qint32 idUsuario) {
    Transaccion t(a);
    const QString forma = QStringLiteral("SELECT idTipoFormaPago FROM FormasDePago WHERE FormaPago = ? ORDER BY 1 LIMIT 1");
    const qint64 efectivo = idDe(a, forma, QStringLiteral("EFVO"));
    const qint64 ctaCte = idDe(a, forma, kFormaPagoCtaCte);
    const qint64 cuenta =
        idDe(a, QStringLiteral("SELECT idCuenta FROM Cuentas WHERE Cuenta = ? ORDER BY 1 LIMIT 1"), QStringLiteral("Pago a Proveedores"));
    QList<QPair<qint64, QString>> proveedores;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idProveedor, RazonSocial FROM Proveedores ORDER BY idProveedor LIMIT 4"));
    while (q.next()) proveedores.append({q.value(0).toLongLong(), q.value(1).toString()});
    q.finish();

    int documento = 0;
    for (const auto& [idProveedor, razon] : proveedores) {
        for (int k = 0; k < 2; ++k) {
            ++documento;
            const bool contado = k == 0;
            // Los artículos del proveedor, cinco por documento, al costo de su ficha.
            VaciaBorradorCompra(a, idRed);
            QSqlQuery arts = a.consulta(QStringLiteral("SELECT idArticulo, PrecioCosto FROM Articulos WHERE IdProveedor = ? "
                                                       "ORDER BY idArticulo LIMIT 5 OFFSET ?"),
                                        {idProveedor, k * 5});
            QList<QPair<qint64, QString>> lineas;
            while (arts.next()) lineas.append({arts.value(0).toLongLong(), Dinero::desdeVariant(arts.value(1)).aTexto()});
            arts.finish();
            int n = 0;
            for (const auto& [idArticulo, costo] : lineas)
                AgregaLineaCompra(a, idRed, {idArticulo, QString::number(6 * (1 + (n++ + documento) % 4)), costo, QStringLiteral("0")});
            DatosCompra d;
            d.idRed = idRed;
            d.idUsuario = idUsuario;
            d.idProveedor = idProveedor;
            d.nombreProveedor = razon;
            d.tipo = contado ? QStringLiteral("FACTURA") : QStringLiteral("REMITO");
            d.letra = contado ? QStringLiteral("A") : QStringLiteral("R");
            d.sucursal = QString::number(contado ? 3 : 1);
            d.numero = QString::number(1520 + documento * 37);
            d.fecha = hoy.addDays(contado ? -20 + documento : -8 + documento / 2);
            d.idFormaPago = contado ? efectivo : ctaCte;
            d.formaPago = contado ? QStringLiteral("EFVO") : kFormaPagoCtaCte;
            d.idCuenta = cuenta;
            d.alicuota = contado ? QStringLiteral("21") : QStringLiteral("0");
            d.pendiente = !contado;
            d.registraCaja = contado;
            d.registraStock = true;
            d.asignaCostos = contado;
            RegistraCompra(a, d);
        }
    }
    VaciaBorradorCompra(a, idRed);
    if (!proveedores.isEmpty()) pagoDeEjemplo(a, proveedores.first().first, cuenta, hoy, idUsuario);
    t.confirmar();
}

} // namespace orv
