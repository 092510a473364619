#include "sales/registro.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/rutinas.h"

#include <QSqlQuery>
#include <cmath>

namespace orv {

namespace {

const QString kCtaCte = QStringLiteral("CTA CTE");

// Los puntos se guardan enteros, redondeando la mitad al par, como siempre se guardó un número
// con decimales en un campo entero. Los del comprobante están acotados por los topes de la venta.
constexpr double kPuntosMaximos = 2147483647.0; // lo que guarda un campo entero de puntos
qint64 redondeaPuntos(double p) { return qint64(std::nearbyint(p)); }

} // namespace

QString NumeroCompleto(const QString& letra, const QString& puntoDeVenta, qint64 numero) {
    return letra + puntoDeVenta + QLatin1Char('-') + QStringLiteral("%1").arg(numero, 8, 10, QLatin1Char('0'));
}

Registrado RegistraComprobante(Almacen& a, const DatosRegistro& d, Ruta ruta) {
    Transaccion tr(a);
    Registrado r;

    // Paso 7: el número, tomado y leído en la misma sentencia, con la comisión del vendedor elegido.
    const qint64 idVendio = d.idVendio.value_or(0);
    QSqlQuery tipo = a.consulta(
        QStringLiteral("UPDATE TiposDeComprobantes SET Correlativo = COALESCE(Correlativo, 0) + 1 WHERE idTipoComprobante = ? "
                       "RETURNING Correlativo, Letra, PuntoDeVenta, OperacionInversa, DescuentaStock, RegistraCaja, EsComercial, "
                       "(SELECT Comision FROM Usuarios WHERE idUsuario = ?)"),
        {d.idTipoComprobante, d.idVendio ? QVariant(idVendio) : QVariant()});
    if (!tipo.next()) throw Aviso(QStringLiteral("El tipo de comprobante ya no existe."));
    r.numero = tipo.value(0).toLongLong();
    const QString letra = tipo.value(1).toString();
    const QString puntoDeVenta = tipo.value(2).toString();
    const bool inversa = SiNo(tipo.value(3));
    const bool descuentaStock = SiNo(tipo.value(4));
    const bool registraCaja = SiNo(tipo.value(5));
    const bool esComercial = SiNo(tipo.value(6));
    const double porcComision = d.idVendio ? tipo.value(7).toDouble() : 0;
    tipo.finish();
    const QString nroFactura = NumeroCompleto(letra, puntoDeVenta, r.numero);
    r.factura = CortaTexto(nroFactura, 15);
    const int signo = inversa ? -1 : 1;

    // El borrador se lee una vez para revisarlo y contar los puntos del rubro de cada artículo;
    // las escrituras lo toman directamente del almacén.
    struct Linea {
        double cantidad;
        QVariant unitario, subTotal;
        QString descripcion;
        QVariant puntosRubro;
    };
    QList<Linea> lineas;
    {
        QSqlQuery q = a.consulta(
            QStringLiteral("SELECT t.Cantidad, t.Unitario, t.SubTotal, t.Descripcion, ru.PuntosVIP FROM TmpFac t "
                           "LEFT JOIN Articulos ar ON ar.idArticulo = t.idArticulo "
                           "LEFT JOIN Rubros ru ON ru.idRubro = ar.idRubro WHERE t.PCRed = ? ORDER BY t.idTmpFac"),
            {d.idRed});
        while (q.next())
            lineas << Linea{q.value(0).toDouble(), q.value(1), q.value(2), q.value(3).toString(), q.value(4)};
    }
    if (lineas.isEmpty()) throw Aviso(QStringLiteral("No hay articulos a facturar!"));
    // Una línea imposible (guardada por otro camino) no llega a un comprobante.
    for (const Linea& l : lineas) {
        bool enRango = std::isfinite(l.cantidad) && std::fabs(l.cantidad) <= kCantidadMaxima;
        try {
            ExigeImporteEnRango(Dinero::desdeVariant(l.unitario));
            ExigeImporteEnRango(Dinero::desdeVariant(l.subTotal));
        } catch (const std::exception&) {
            enRango = false;
        }
        if (!enRango)
            throw Aviso(QStringLiteral("La línea \"") + l.descripcion +
                        QStringLiteral("\" tiene una cantidad o un importe fuera de rango: bórrela o corríjala."));
    }

    // Paso 12: la cabecera, primero, para escribir las líneas con su id real.
    r.idComprobante = a.inserta(
        QStringLiteral("INSERT INTO Comprobantes (Factura, idTipoComprobante, idVendedor, Fecha, idTipoIva, Nombre, Cuit, "
                       "FormaPago, HizoCaja, HizoStock, TipoStock, EsComercial, Cupon, SuPago, SubTotal, PorcDescuento, "
                       "MontDescuento, ImporteNeto, PorcentajeIVA, ImporteIVA, Total, idUsuario, idEmpresa, ImpresoFiscal, "
                       "idVendio, Comision) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 1, ?, ?, ?)"),
        {r.factura, d.idTipoComprobante, d.idCliente.value_or(0), d.hoy, d.idTipoIva, CortaTexto(d.nombreCliente, 50),
         CortaTexto(d.cuitCliente, 20), CortaTexto(d.formaPago, 10), registraCaja ? 1 : 0, descuentaStock ? 1 : 0, inversa ? 1 : 0,
         esComercial ? 1 : 0, d.cupon.isEmpty() ? QStringLiteral("0") : CortaTexto(d.cupon, 30), d.suPago.aVariant(),
         (signo < 0 ? -d.subTotal : d.subTotal).aVariant(), d.porcDescuento, d.montDescuento.aVariant(),
         (signo < 0 ? -d.neto : d.neto).aVariant(), d.porcImpuesto.aVariant(), d.importeIva.aVariant(),
         (signo < 0 ? -d.total : d.total).aVariant(), d.idUsuario, ImpresoFiscalDe(ruta), idVendio, porcComision},
        QStringLiteral("idComprobante"));

    // Pasos 8 y 9: líneas, stock y movimientos, cada uno en una sola sentencia sobre el borrador
    // de la terminal y en su orden. Un artículo en varias líneas mueve su stock una vez, por la suma.
    a.ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, Unitario, SubTotal, Sn, "
                             "costounitario, Fecha, EsComercial, idUsuario, Descripcion) "
                             "SELECT ?, t.idArticulo, COALESCE(t.Cantidad, 0), t.Unitario, t.SubTotal, t.Sn, "
                             "COALESCE(ar.PrecioCosto, 0), ?, ?, ?, t.Descripcion "
                             "FROM TmpFac t LEFT JOIN Articulos ar ON ar.idArticulo = t.idArticulo "
                             "WHERE t.PCRed = ? ORDER BY t.idTmpFac"),
              {r.idComprobante, d.hoy, esComercial ? 1 : 0, d.idUsuario, d.idRed});
    if (descuentaStock) {
        MueveStock(a, QStringLiteral("TmpFac WHERE PCRed = ?"), d.idRed, inversa, true);
        const QString cantidad = QStringLiteral("COALESCE(t.Cantidad, 0)");
        const QString cero = QStringLiteral("0");
        a.ejecuta(QStringLiteral("INSERT INTO MovimientoStock (idArticulo, Fecha, idTipoMovimiento, Comprobante, idComprobante, "
                                 "Ingreso, Egreso) SELECT t.idArticulo, ?, (SELECT idTipoMovimiento FROM TiposMovimientoStock "
                                 "WHERE TipoMovimientoStock = 'Venta' ORDER BY idTipoMovimiento LIMIT 1), ?, ?, ") +
                      (inversa ? cantidad : cero) + QStringLiteral(", ") + (inversa ? cero : cantidad) +
                      QStringLiteral(" FROM TmpFac t WHERE t.PCRed = ? ORDER BY t.idTmpFac"),
                  {d.hoy, nroFactura, r.idComprobante, d.idRed});
    }

    // Paso 13: puntos del cliente con tarjeta; también en los comprobantes de operación inversa.
    // Cuenta lo ganado antes de redondear: medio punto o menos deja su fila con 0 puntos.
    double puntos = 0;
    const bool porImporte = d.formaCalculoVip == QStringLiteral("P");
    for (const Linea& l : lineas)
        if (!l.puntosRubro.isNull() && l.puntosRubro.toDouble() > 0)
            puntos += (porImporte ? Dinero::desdeVariant(l.subTotal).aDouble() : l.cantidad) * l.puntosRubro.toDouble();
    if (!(puntos <= kPuntosMaximos))
        throw Aviso(QStringLiteral("Los puntos de esta venta no caben en la tarjeta del cliente: revise el puntaje de los rubros."));
    r.puntos = redondeaPuntos(puntos);
    if (d.clienteEsVip && d.idCliente && puntos > 0) {
        a.ejecuta(QStringLiteral("INSERT INTO Vip (idCliente, Fecha, idUsuario, idComprobante, PuntosVIP) VALUES (?, ?, ?, ?, ?)"),
                  {*d.idCliente, d.hoy, d.idUsuario, r.idComprobante, r.puntos});
        // El saldo es el redondeo de saldo + puntos ganados, en una sola sentencia: la parte entera
        // se suma y, si lo ganado termina justo en medio punto, la suma va al par.
        const double entera = std::floor(puntos);
        const double fraccion = puntos - entera;
        const qint64 base = qint64(entera) + (fraccion > 0.5 ? 1 : 0);
        a.ejecuta(QStringLiteral("UPDATE Vendedores SET PuntosVIP = PuntosVIP + ? + "
                                 "CASE WHEN ? = 1 THEN ABS((PuntosVIP + ?) % 2) ELSE 0 END WHERE idVendedor = ?"),
                  {base, fraccion == 0.5 ? 1 : 0, base, *d.idCliente});
    }

    // Paso 15: comisión del vendedor, sobre el neto.
    if (porcComision > 0 && esComercial && !inversa)
        a.ejecuta(QStringLiteral("INSERT INTO DetComisiones (Fecha, Detalle, idUsuario, idComprobante, Porcentaje, Importe) "
                                 "VALUES (?, 'Comision x Vta', ?, ?, ?, ?)"),
                  {d.hoy, idVendio, r.idComprobante, porcComision, d.neto.porcentaje(porcComision).aVariant()});

    // Pasos 16 y 17: caja o cuenta corriente, nunca las dos.
    if (registraCaja && d.formaPago != kCtaCte) {
        // Sin la cuenta "Ventas Mostrador", el movimiento queda sin cuenta y la venta se registra igual.
        const QString detalles = CortaTexto(QStringLiteral("VENTA :") + CortaTexto(d.textoTipo, 4) + QStringLiteral(". a ") +
                                                d.nombreCliente + QStringLiteral(" Nro.") + nroFactura,
                                            65);
        a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) "
                                 "VALUES ((SELECT idCuenta FROM Cuentas WHERE Cuenta = 'Ventas Mostrador' ORDER BY idCuenta "
                                 "LIMIT 1), ?, ?, ?, ?, 0, ?, ?)"),
                  {r.idComprobante, d.hoy, detalles, d.total.aVariant(), d.formaPago, d.idUsuario});
    }
    if (registraCaja && d.formaPago == kCtaCte && d.idCliente)
        a.ejecuta(QStringLiteral("INSERT INTO Comisiones (idVendedor, Fecha, idComprobante, Tipo, Comision, Liquidacion) "
                                 "VALUES (?, ?, ?, ?, ?, ?)"),
                  {*d.idCliente, d.hoy, r.idComprobante, QStringLiteral("VENTA ") + d.formaPago,
                   (inversa ? Dinero() : d.total).aVariant(), (inversa ? d.total : Dinero()).aVariant()});

    // El borrador ya es comprobante.
    a.ejecuta(QStringLiteral("DELETE FROM TmpFac WHERE PCRed = ?"), {d.idRed});
    tr.confirmar();
    return r;
}

std::optional<ComprobanteABorrar> LeeComprobanteABorrar(const Almacen& a, qint64 idComprobante) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT HizoCaja, HizoStock, TipoStock FROM Comprobantes WHERE idComprobante = ?"),
                             {idComprobante});
    if (!q.next()) return std::nullopt;
    return ComprobanteABorrar{idComprobante, SiNo(q.value(0)), SiNo(q.value(1)), SiNo(q.value(2))};
}

void BorraComprobante(Almacen& a, const ComprobanteABorrar& c) {
    Transaccion tr(a);
    const QVariant id = c.idComprobante;
    // Otra terminal pudo borrarlo entre la lectura y ahora: se toma la fila (en el servidor, hasta
    // confirmar) y, si ya no está, no se deshace nada dos veces.
    QSqlQuery existe = a.consulta(QStringLiteral("SELECT idComprobante FROM Comprobantes WHERE idComprobante = ?") +
                                      TomaFilas(a),
                                  {id});
    if (!existe.next()) throw Aviso(kComprobanteYaBorrado);
    existe.finish();
    if (c.hizoCaja) {
        a.ejecuta(QStringLiteral("DELETE FROM Caja WHERE idComprobante = ?"), {id});
        a.ejecuta(QStringLiteral("DELETE FROM Comisiones WHERE idComprobante = ?"), {id});
    }
    a.ejecuta(QStringLiteral("DELETE FROM MovimientoStock WHERE idComprobante = ?"), {id});
    if (c.hizoStock) {
        // Vuelve lo que salió (o sale lo que entró, con la operación inversa). Nulo sigue nulo.
        MueveStock(a, QStringLiteral("DetalleComprobantes WHERE idComprobante = ?"), id, !c.tipoStock, false);
    }
    a.ejecuta(QStringLiteral("DELETE FROM DetComisiones WHERE idComprobante = ?"), {id});
    a.ejecuta(QStringLiteral("DELETE FROM DetalleComprobantes WHERE idComprobante = ?"), {id});
    a.ejecuta(QStringLiteral("DELETE FROM Vip WHERE idComprobante = ?"), {id});
    a.ejecuta(QStringLiteral("DELETE FROM Comprobantes WHERE idComprobante = ?"), {id});
    tr.confirmar();
}

} // namespace orv
