#include "customers/comisiones.h"

#include "customers/cuenta.h"
#include "store/aviso.h"
#include "store/entrada.h"

#include <QSqlQuery>

namespace orv {

namespace {

const QString kPeriodoVendedor = QStringLiteral(" FROM ConsultaComisionesVenta WHERE Fecha >= ? AND Fecha <= ? AND idUsuario = ?");

} // namespace

ConsultaConParametros ConsultaComisionesVendedor(qint64 idUsuario, const QDate& desde, const QDate& hasta) {
    return {QStringLiteral("SELECT Fecha, Detalle, Tipo, Factura, Porcentaje, Importe, idDetComisiones, idComprobante, "
                           "NombreCompleto") +
                kPeriodoVendedor + QStringLiteral(" ORDER BY Fecha, idDetComisiones"),
            {desde, hasta, idUsuario}};
}

TotalesComisiones TotalesComisionesVendedor(const Almacen& a, qint64 idUsuario, const QDate& desde, const QDate& hasta) {
    // Las dos sumas en una lectura; un Null cuenta como 0 y la resta se hace en dinero exacto.
    QSqlQuery q = a.consulta(QStringLiteral("SELECT SUM(CASE WHEN Importe > 0 THEN Importe END), "
                                            "SUM(CASE WHEN Importe < 0 THEN Importe END)") +
                                 kPeriodoVendedor,
                             {desde, hasta, idUsuario});
    TotalesComisiones t;
    if (q.next()) {
        t.comisiones = Dinero::desdeVariant(q.value(0));
        t.liquidado = -Dinero::desdeVariant(q.value(1));
    }
    return t;
}

Dinero ValidaLiquidacion(const DatosLiquidacion& d) {
    if (d.asientaCaja && (!d.idCuenta || d.formaPago.isEmpty())) throw Aviso(kErrorCuentaYForma);
    const Dinero importe = ExigeImporte(d.aPagar.trimmed(), QStringLiteral("A Pagar"));
    if (importe.esCero()) throw Aviso(kErrorImporteCero);
    return importe;
}

qint64 LiquidaComisiones(Almacen& a, const DatosLiquidacion& d) {
    // 1. Lo que se pidió en la pantalla, otra vez: nada se escribe a medias.
    const Dinero importe = ValidaLiquidacion(d);
    if (d.asientaCaja) ExigeTexto(d.formaPago, 50, QStringLiteral("Forma de Pago"));
    Transaccion tr(a);
    // 2. La línea negativa: lo pagado baja lo que se le debe al vendedor.
    const qint64 id = a.inserta(QStringLiteral("INSERT INTO DetComisiones (Fecha, Detalle, idUsuario, idComprobante, Porcentaje, "
                                               "Importe) VALUES (?, ?, ?, 0, 0, ?)"),
                                {d.fecha, kDetalleLiquidacion, d.idUsuario, (-importe).aVariant()},
                                QStringLiteral("idDetComisiones"));
    // 3. El egreso de la caja.
    if (d.asientaCaja)
        a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) "
                                 "VALUES (?, 0, ?, ?, 0, ?, ?, ?)"),
                  {*d.idCuenta, d.fecha, CortaTexto(QStringLiteral("Liq.Comisiones a ") + d.nombreVendedor, kLargoDetallesCaja),
                   importe.aVariant(), d.formaPago, d.idUsuarioActual});
    tr.confirmar();
    return id;
}

bool BorraLineaComision(Almacen& a, qint64 idDetComisiones) {
    return a.ejecuta(QStringLiteral("DELETE FROM DetComisiones WHERE idDetComisiones = ?"), {idDetComisiones}) > 0;
}

} // namespace orv
