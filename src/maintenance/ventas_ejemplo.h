#pragma once
// Ventas de ejemplo: comprobantes registrados por el mismo registro de la venta, para que caja,
// cuentas de clientes, stock, puntos e informes muestren movimientos reales desde el comienzo.

#include "sales/registro.h"
#include "store/almacen.h"

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

namespace orv {

struct LineaEjemplo {
    QString codigo; // Codigo del artículo, al precio de venta del artículo
    double cantidad = 1;
};

struct VentaEjemplo {
    QDate fecha;
    QString tipo;                      // Tipo de TiposDeComprobantes ("FACTURA B", "REMITO"...)
    std::optional<qint64> idCliente;   // sin cliente: el consumidor final
    bool porTarjeta = false;           // cliente elegido por su tarjeta: suma puntos
    QString formaPago = QStringLiteral("EFVO");
    double porcDescuento = 0;
    double porcImpuesto = 21;
    std::vector<LineaEjemplo> lineas;
};

// Arma el borrador de la terminal `idRed` con las líneas y lo registra con RegistraComprobante,
// con los importes al centavo como los muestra la venta: descuento redondeado, neto = subtotal -
// descuento, IVA redondeado sobre el neto y total = neto + IVA. Los datos del cliente salen de su
// ficha. Lanza Aviso si falta el tipo, el cliente o un artículo; entonces no queda nada escrito.
Registrado RegistraVentaEjemplo(Almacen& a, const VentaEjemplo& v, qint32 idRed, qint32 idUsuario);

// Unas tres semanas de comprobantes hasta el día anterior a `hoy`: ventas de contado y a cuenta,
// facturas A a empresas con descuento, clientes con tarjeta, un presupuesto, un remito y notas de
// crédito; y tres meses de cuenta corriente de los clientes que compran a cuenta (compras, cobranzas,
// intereses y una bonificación). Siempre los mismos, con fechas contadas desde `hoy`. Necesita los artículos, los
// clientes y los tipos de comprobante de los datos de ejemplo.
void CargaVentasEjemplo(Almacen& a, const QDate& hoy);

} // namespace orv
