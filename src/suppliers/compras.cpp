#include "suppliers/compras.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/rutinas.h"

#include <QSqlQuery>
#include <cmath>

namespace orv {

namespace {

Aviso errorDeCompra(const char* texto) { return Aviso(QString::fromUtf8(texto)); }

// Lo escrito en la pantalla, ya leído, con los totales de las líneas: lo que no se lee se rechaza con
// el aviso de su campo, en el orden en que la pantalla los revisa.
struct Revisado {
    double descuento = 0;
    double alicuota = 0;
    qint64 sucursal = 0;
    qint64 numero = 0;
    QString tipoGuardado;
    TotalesCompra totales;
};

Revisado revisa(const Almacen& a, const DatosCompra& d) {
    Revisado r;
    const std::optional<double> descuento = LeeNumero(d.descuento.trimmed());
    if (!descuento || std::abs(*descuento) > kPorcentajeMaximo) throw errorDeCompra("Descuento incorrecto!!");
    const std::optional<double> alicuota = LeeNumero(d.alicuota.trimmed());
    if (!alicuota || std::abs(*alicuota) > kPorcentajeMaximo)
        throw errorDeCompra("Porcentaje/alicuota impositiva incorrecta!!");
    r.descuento = *descuento;
    r.alicuota = *alicuota;
    // Una sola lectura del borrador: sus totales dicen también si tiene líneas.
    r.totales = CalculaTotalesCompra(a, d.idRed, r.descuento, r.alicuota);
    if (!r.totales.hayLineas) throw errorDeCompra("No ingresó ningún ítem en la lista!!");
    const std::optional<qint64> sucursal = LeeEntero(d.sucursal.trimmed(), 0, 9999);
    const std::optional<qint64> numero = LeeEntero(d.numero.trimmed(), 0, 99999999);
    if (!sucursal || !numero || d.letra.trimmed().isEmpty()) throw errorDeCompra("Verifique la numeración del comprobante!!");
    r.sucursal = *sucursal;
    r.numero = *numero;
    if (d.tipo.trimmed().isEmpty()) throw errorDeCompra("Verifique el tipo de comprobante!!");
    // El tipo se guarda en sus primeros 10 caracteres ("ORDEN DE COMPRA" queda "ORDEN DE C").
    r.tipoGuardado = CortaTexto(d.tipo.trimmed(), 10);
    if (!d.idFormaPago) throw AvisoAtencion(QStringLiteral("Elija la forma de pago."));
    if (!d.idCuenta) throw AvisoAtencion(QStringLiteral("Elija la cuenta contable."));
    ExigeTexto(d.referencia, 254, QStringLiteral("Referencia"));
    return r;
}

// Quita la compra que se corrige: su stock vuelve por sus renglones (que se borran sólo si movió
// stock), su fila de caja y su cuenta se borran. El diario de stock y los costos quedan.
void quitaCompraAnterior(Almacen& a, qint64 idProveedor, qint64 idCompra) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT RegistraStock, RegistraCaja FROM Compras WHERE idCompra = ?") +
                                 TomaFilas(a),
                             {idCompra});
    if (!q.next()) return; // ya no está: la compra se agrega como nueva
    const bool registroStock = SiNo(q.value(0));
    const bool registroCaja = SiNo(q.value(1));
    q.finish();
    if (registroStock) {
        MueveStock(a, QStringLiteral("DetCompras WHERE idCompra = ?"), idCompra, false, true);
        a.ejecuta(QStringLiteral("DELETE FROM DetCompras WHERE idCompra = ?"), {idCompra});
    }
    if (registroCaja)
        a.ejecuta(QStringLiteral("DELETE FROM Caja WHERE idComprobante = ? AND substr(Detalles, 1, 6) = 'Compra'"), {idCompra});
    a.ejecuta(QStringLiteral("DELETE FROM CtaProve WHERE idProveedor = ? AND idCompra = ?"), {idProveedor, idCompra});
    a.ejecuta(QStringLiteral("DELETE FROM Compras WHERE idCompra = ?"), {idCompra});
}

// Stock, costo y fecha de última compra de los artículos del borrador, y su diario: una sentencia
// cada uno. Con dos líneas del mismo artículo, el costo es el de la última.
void entraStock(Almacen& a, const DatosCompra& d, qint64 idCompra, const QString& numero) {
    MueveStock(a, QStringLiteral("TmpFacCompra WHERE PCRed = ?"), d.idRed, true, true);
    a.ejecuta(QStringLiteral("UPDATE Articulos SET UltimaFechaCompra = ?, "
                             "PrecioCosto = CASE WHEN ? = 1 THEN c.Unitario ELSE Articulos.PrecioCosto END "
                             "FROM (SELECT t.idArticulo, t.Unitario FROM TmpFacCompra t INNER JOIN (SELECT MAX(idTmpFacCompra) AS ultima "
                             "FROM TmpFacCompra WHERE PCRed = ? GROUP BY idArticulo) AS u ON t.idTmpFacCompra = u.ultima) AS c "
                             "WHERE Articulos.idArticulo = c.idArticulo"),
              {d.fecha, d.asignaCostos ? 1 : 0, d.idRed});
    a.ejecuta(QStringLiteral("INSERT INTO MovimientoStock (idArticulo, Fecha, idTipoMovimiento, idComprobante, Comprobante, "
                             "Ingreso, Egreso, Observaciones) SELECT t.idArticulo, ?, 1, ?, ?, COALESCE(t.Cantidad, 0), 0, ? "
                             "FROM TmpFacCompra t WHERE t.PCRed = ? ORDER BY t.idTmpFacCompra"),
              {d.fecha, idCompra, CortaTexto(numero, 20), CortaTexto(QStringLiteral("PROVEEDOR:") + d.nombreProveedor, 50),
               d.idRed});
}

} // namespace

QStringList TiposDocumentoCompra() {
    return {QStringLiteral("FACTURA"), QStringLiteral("REMITO"), QStringLiteral("ORDEN DE COMPRA"),
            QStringLiteral("PRESUPUESTO")};
}

QStringList LetrasDocumentoCompra() {
    return {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D"),
            QStringLiteral("R"), QStringLiteral("X"), QStringLiteral("Z")};
}

bool EsCuentaCorriente(const QString& formaPago) { return formaPago.toUpper() == kFormaPagoCtaCte; }

QString NumeroDocumentoCompra(const QString& letra, qint64 sucursal, qint64 numero) {
    return letra + QStringLiteral("%1-%2").arg(sucursal, 4, 10, QLatin1Char('0')).arg(numero, 8, 10, QLatin1Char('0'));
}

CompraRegistrada RegistraCompra(Almacen& a, const DatosCompra& d) {
    Transaccion tr(a);
    CompraRegistrada r;

    // 1. Lo escrito, antes de tocar nada: un rechazo deja la compra anterior como estaba.
    const Revisado v = revisa(a, d);
    const QString letra = d.letra.trimmed().left(1);
    r.numero = NumeroDocumentoCompra(letra, v.sucursal, v.numero);
    const QString descripcion =
        CortaTexto(QStringLiteral("Compra ") + r.numero + QStringLiteral(" / ") + d.nombreProveedor, 65);
    r.totales = v.totales;
    // Dos terminales que cargan compras del mismo proveedor se turnan: el control del documento
    // repetido vale también entre ellas.
    QSqlQuery prove = a.consulta(QStringLiteral("SELECT idProveedor FROM Proveedores WHERE idProveedor = ?") +
                                     TomaFilas(a),
                                 {d.idProveedor});
    if (!prove.next()) throw AvisoAtencion(QStringLiteral("El proveedor ya no existe."));
    prove.finish();

    // 2. La compra que se corrige sale entera.
    if (d.idCompraAnterior) quitaCompraAnterior(a, d.idProveedor, *d.idCompraAnterior);

    // 3. El mismo documento del mismo proveedor no entra dos veces.
    if (CuentaRegistros(a,
                        QStringLiteral("SELECT 1 FROM Compras WHERE idProveedor = ? AND LetComprobante = ? AND SucComprobante = ? "
                                       "AND NroComprobante = ? AND TipComprobante = ?"),
                        {d.idProveedor, letra, v.sucursal, v.numero, v.tipoGuardado}) > 0)
        throw Aviso(kCompraRepetida);

    // 4. La compra y sus renglones.
    const bool caja = d.registraCaja && !EsCuentaCorriente(d.formaPago);
    r.idCompra = a.inserta(
        QStringLiteral("INSERT INTO Compras (LetComprobante, SucComprobante, NroComprobante, TipComprobante, idProveedor, Fecha, "
                       "idTipoFormaPago, idFPago, Cancelada, Neto, Descuento, MontoDescuento, Iva1, Tasa1, Total, RegistraCaja, "
                       "RegistraStock, Referencia, idCta) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
        {letra, v.sucursal, v.numero, v.tipoGuardado, d.idProveedor, d.fecha, *d.idFormaPago, *d.idFormaPago,
         d.pendiente ? 0 : 1, r.totales.neto.aVariant(), v.descuento, r.totales.montoDescuento.aVariant(),
         r.totales.impuesto.aVariant(), v.alicuota, r.totales.total.aVariant(), caja ? 1 : 0, d.registraStock ? 1 : 0,
         d.referencia, *d.idCuenta},
        QStringLiteral("idCompra"));
    a.ejecuta(QStringLiteral("INSERT INTO DetCompras (idCompra, idProveedor, idArticulo, Cantidad, PrecioUnitario, SubTotal) "
                             "SELECT ?, ?, t.idArticulo, t.Cantidad, t.Unitario, t.SubTotal FROM TmpFacCompra t "
                             "WHERE t.PCRed = ? ORDER BY t.idTmpFacCompra"),
              {r.idCompra, d.idProveedor, d.idRed});

    // 5. Stock, costos y diario, sólo si la compra mueve stock.
    if (d.registraStock) entraStock(a, d, r.idCompra, r.numero);

    // 6. La salida de caja.
    if (caja)
        a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) "
                                 "VALUES (?, ?, ?, ?, 0, ?, ?, ?)"),
                  {*d.idCuenta, r.idCompra, d.fecha, descripcion, r.totales.total.aVariant(), CortaTexto(d.formaPago, 10),
                   d.idUsuario});

    // 7. La cuenta del proveedor: lo que se le debe y, salvo en cuenta corriente, lo pagado en el acto.
    const QString cuenta = QStringLiteral("INSERT INTO CtaProve (Fecha, idProveedor, idCompra, idCuenta, Detalle, Debe, Haber, "
                                          "Referencia) VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
    a.ejecuta(cuenta, {d.fecha, d.idProveedor, r.idCompra, *d.idCuenta, descripcion, r.totales.total.aVariant(),
                       Dinero().aVariant(), CortaTexto(d.referencia, 50)});
    if (d.formaPago != kFormaPagoCtaCte)
        a.ejecuta(cuenta, {d.fecha, d.idProveedor, r.idCompra, *d.idCuenta, descripcion, Dinero().aVariant(),
                           r.totales.total.aVariant(), CortaTexto(d.formaPago, 100)});
    tr.confirmar();
    return r;
}

std::optional<CompraGuardada> CargaCompra(Almacen& a, qint32 idRed, qint64 idCompra) {
    QSqlQuery q = a.consulta(
        QStringLiteral("SELECT c.idProveedor, p.RazonSocial, c.TipComprobante, c.LetComprobante, c.SucComprobante, "
                       "c.NroComprobante, c.Fecha, c.idFPago, f.FormaPago, c.idCta, c.Referencia, c.Tasa1, c.Cancelada, "
                       "c.RegistraCaja, c.RegistraStock, c.Neto, c.Iva1, c.Total FROM Compras c "
                       "LEFT JOIN Proveedores p ON p.idProveedor = c.idProveedor "
                       "LEFT JOIN FormasDePago f ON f.idTipoFormaPago = c.idFPago WHERE c.idCompra = ?"),
        {idCompra});
    if (!q.next()) return std::nullopt;
    CompraGuardada g;
    DatosCompra& d = g.datos;
    d.idRed = idRed;
    d.idProveedor = q.value(0).toLongLong();
    d.nombreProveedor = q.value(1).toString();
    d.idCompraAnterior = idCompra;
    d.tipo = q.value(2).toString();
    d.letra = q.value(3).toString();
    d.sucursal = QStringLiteral("%1").arg(q.value(4).toLongLong(), 4, 10, QLatin1Char('0'));
    d.numero = QStringLiteral("%1").arg(q.value(5).toLongLong(), 8, 10, QLatin1Char('0'));
    d.fecha = q.value(6).toDate();
    if (!q.value(7).isNull()) d.idFormaPago = q.value(7).toLongLong();
    d.formaPago = q.value(8).toString();
    if (!q.value(9).isNull()) d.idCuenta = q.value(9).toLongLong();
    d.referencia = q.value(10).toString();
    d.alicuota = QString::number(q.value(11).toDouble(), 'f', 2);
    d.pendiente = !SiNo(q.value(12));
    d.registraCaja = SiNo(q.value(13));
    d.registraStock = SiNo(q.value(14));
    g.neto = Dinero::desdeVariant(q.value(15));
    g.impuesto = Dinero::desdeVariant(q.value(16));
    g.total = Dinero::desdeVariant(q.value(17));
    q.finish();

    Transaccion tr(a);
    VaciaBorradorCompra(a, idRed);
    a.ejecuta(QStringLiteral("INSERT INTO TmpFacCompra (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                             "SELECT d.idArticulo, ar.Codigo, ar.Descripcion, d.Cantidad, d.PrecioUnitario, d.SubTotal, ? "
                             "FROM DetCompras d LEFT JOIN Articulos ar ON ar.idArticulo = d.idArticulo "
                             "WHERE d.idCompra = ? ORDER BY d.idDetCompra"),
              {idRed, idCompra});
    tr.confirmar();
    return g;
}

ConsultaConParametros ComprasDeProveedor(qint64 idProveedor, const std::optional<FiltroCompras>& filtro) {
    ConsultaConParametros c{QStringLiteral("SELECT idCompra, Fecha, TipComprobante, LetComprobante, SucComprobante, NroComprobante, "
                                           "Neto, Iva1, Total, Cancelada, RegistraStock, RegistraCaja, Referencia FROM Compras "
                                           "WHERE idProveedor = ?"),
                            {idProveedor}};
    if (filtro) {
        c.sql += QStringLiteral(" AND (TipComprobante = ? OR ? = '<Todos>') AND Fecha >= ? AND Fecha <= ?");
        c.parametros << CortaTexto(filtro->tipo, 10) << filtro->tipo << filtro->desde << filtro->hasta;
    }
    c.sql += QStringLiteral(" ORDER BY Fecha, idCompra");
    return c;
}

void BorraCompra(Almacen& a, qint64 idCompra) {
    Transaccion tr(a);
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idProveedor, RegistraCaja, RegistraStock, idCta, Fecha, LetComprobante, "
                                            "SucComprobante, NroComprobante FROM Compras WHERE idCompra = ?") +
                                 TomaFilas(a),
                             {idCompra});
    if (!q.next()) return;
    const QVariant idProveedor = q.value(0), idCta = q.value(3), fecha = q.value(4);
    const bool caja = SiNo(q.value(1)), stock = SiNo(q.value(2));
    const QString numero = NumeroDocumentoCompra(q.value(5).toString(), q.value(6).toLongLong(), q.value(7).toLongLong());
    q.finish();
    // 1. Toda su cuenta, el pago en el acto incluido; los pagos aparte quedan.
    a.ejecuta(QStringLiteral("DELETE FROM CtaProve WHERE idProveedor = ? AND idCompra = ?"), {idProveedor, idCompra});
    // 2. Su salida de caja: por cuenta, fecha y número, y sólo la de una compra.
    if (caja)
        a.ejecuta(QStringLiteral("DELETE FROM Caja WHERE idCuenta = ? AND Fecha = ? AND idComprobante = ? "
                                 "AND substr(Detalles, 1, 6) = 'Compra'"),
                  {idCta, fecha, idCompra});
    // 3. El stock que su diario dice que entró, y ese diario.
    if (stock) {
        const QString diario = QStringLiteral("MovimientoStock WHERE Comprobante = ? AND idTipoMovimiento = 1 AND Fecha = ? "
                                              "AND idComprobante = ?");
        const QVariantList clave = {CortaTexto(numero, 20), fecha, idCompra};
        BloqueaArticulos(a, QStringLiteral("SELECT idArticulo FROM ") + diario, clave);
        a.ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = COALESCE(StockActual, 0) - s.Ingreso FROM (SELECT idArticulo, "
                                 "SUM(COALESCE(Ingreso, 0)) AS Ingreso FROM ") +
                      diario + QStringLiteral(" GROUP BY idArticulo) AS s WHERE Articulos.idArticulo = s.idArticulo"),
                  clave);
        a.ejecuta(QStringLiteral("DELETE FROM ") + diario, clave);
    }
    // 4. La compra.
    a.ejecuta(QStringLiteral("DELETE FROM Compras WHERE idCompra = ?"), {idCompra});
    tr.confirmar();
}

} // namespace orv
