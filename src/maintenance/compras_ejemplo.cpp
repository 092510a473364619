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

// Lo que cambia entre un documento de ejemplo y otro.
struct DocumentoEjemplo {
    qint64 idProveedor;
    QString razon;
    bool conEtiqueta;  // sólo artículos que llevan etiqueta de código de barra
    int desde;         // el primero de los cinco, en el orden de idArticulo
    int numero;        // del documento, para los números y las cantidades
    bool contado;      // factura pagada en efectivo; si no, remito a la cuenta del proveedor
    QDate fecha;
};

// Un documento con cinco artículos del proveedor al costo de su ficha.
void registraDocumento(Almacen& a, const DocumentoEjemplo& doc, qint32 idRed, qint32 idUsuario, qint64 efectivo, qint64 ctaCte,
                       qint64 cuenta) {
    VaciaBorradorCompra(a, idRed);
    QSqlQuery arts = a.consulta(QStringLiteral("SELECT idArticulo, PrecioCosto FROM Articulos WHERE IdProveedor = ? ") +
                                    (doc.conEtiqueta ? QStringLiteral("AND ImprimeCodigoBarra <> 0 ") : QString()) +
                                    QStringLiteral("ORDER BY idArticulo LIMIT 5 OFFSET ?"),
                                {doc.idProveedor, doc.desde});
    QList<QPair<qint64, QString>> lineas;
    while (arts.next()) lineas.append({arts.value(0).toLongLong(), Dinero::desdeVariant(arts.value(1)).aTexto()});
    arts.finish();
    int n = 0;
    for (const auto& [idArticulo, costo] : lineas)
        AgregaLineaCompra(a, idRed, {idArticulo, QString::number(6 * (1 + (n++ + doc.numero) % 4)), costo, QStringLiteral("0")});
    DatosCompra d;
    d.idRed = idRed;
    d.idUsuario = idUsuario;
    d.idProveedor = doc.idProveedor;
    d.nombreProveedor = doc.razon;
    d.tipo = doc.contado ? QStringLiteral("FACTURA") : QStringLiteral("REMITO");
    d.letra = doc.contado ? QStringLiteral("A") : QStringLiteral("R");
    d.sucursal = QString::number(doc.contado ? 3 : 1);
    d.numero = QString::number(1520 + doc.numero * 37);
    d.fecha = doc.fecha;
    d.idFormaPago = doc.contado ? efectivo : ctaCte;
    d.formaPago = doc.contado ? QStringLiteral("EFVO") : kFormaPagoCtaCte;
    d.idCuenta = cuenta;
    d.alicuota = doc.contado ? QStringLiteral("21") : QStringLiteral("0");
    d.pendiente = !doc.contado;
    d.registraCaja = doc.contado;
    d.registraStock = true;
    d.asignaCostos = doc.contado;
    RegistraCompra(a, d);
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

    // De cada uno de los cuatro primeros proveedores, una factura de contado y un remito a cuenta.
    int documento = 0;
    for (const auto& [idProveedor, razon] : proveedores) {
        for (int k = 0; k < 2; ++k) {
            ++documento;
            const bool contado = k == 0;
            registraDocumento(a, {idProveedor, razon, false, k * 5, documento, contado,
                                  hoy.addDays(contado ? -20 + documento : -8 + documento / 2)},
                              idRed, idUsuario, efectivo, ctaCte, cuenta);
        }
    }
    // Y un remito que llegó hoy con artículos que llevan etiqueta: las etiquetas del día tienen qué imprimir.
    QSqlQuery conEtiqueta = a.consulta(QStringLiteral(
        "SELECT p.idProveedor, p.RazonSocial FROM Proveedores p WHERE EXISTS (SELECT 1 FROM Articulos ar "
        "WHERE ar.IdProveedor = p.idProveedor AND ar.ImprimeCodigoBarra <> 0) ORDER BY p.idProveedor LIMIT 1"));
    if (conEtiqueta.next()) {
        const DocumentoEjemplo deHoy{conEtiqueta.value(0).toLongLong(), conEtiqueta.value(1).toString(),
                                     true, 0, ++documento, false, hoy};
        conEtiqueta.finish();
        registraDocumento(a, deHoy, idRed, idUsuario, efectivo, ctaCte, cuenta);
    }
    VaciaBorradorCompra(a, idRed);
    if (!proveedores.isEmpty()) pagoDeEjemplo(a, proveedores.first().first, cuenta, hoy, idUsuario);
    t.confirmar();
}

} // namespace orv
