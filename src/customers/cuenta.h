#pragma once
// La cuenta corriente del cliente (tabla Comisiones): débitos en Comision, créditos en Liquidacion,
// sin saldo guardado. Saldo, líneas, débitos y créditos a mano, cobranzas con su fila de caja, el
// arreglo de las ventas a cuenta sin línea.

#include "store/almacen.h"
#include "store/rutinas.h"
#include "store/dinero.h"

#include <QDate>
#include <QString>
#include <QVariantList>
#include <optional>

namespace orv {

inline const QString kErrorDatosCuenta = QStringLiteral("Error, Datos mal ingresados!");
inline const QString kCuentaCobranza = QStringLiteral("Cobranza Clientes");
inline constexpr int kLargoTipoCuenta = 50;
inline constexpr int kLargoDetallesCaja = 254;

// Débitos menos créditos de todas las líneas del cliente; sin líneas, 0.
Dinero SaldoCliente(const Almacen& a, qint64 idVendedor);
// Lo mismo, sólo con las líneas anteriores a `dia` (lo que el cliente traía al empezar un período).
Dinero SaldoClienteAntesDe(const Almacen& a, qint64 idVendedor, const QDate& dia);
// El nombre del cliente; vacío si ya no existe.
QString NombreCliente(const Almacen& a, qint64 idVendedor);
// El e-mail del cliente; vacío si no tiene.
QString EmailCliente(const Almacen& a, qint64 idVendedor);

// Las líneas del cliente para la grilla, por fecha y orden de carga.
ConsultaConParametros ConsultaLineasCuenta(qint64 idVendedor);
// La posición (desde 0) en esa consulta de la primera línea del día; nullopt si ese día no tiene.
std::optional<qint64> PrimeraLineaDelDia(const Almacen& a, qint64 idVendedor, const QDate& dia);

// "Debitar / Acreditar": una línea a mano, sin caja y sin mirar si el día está cerrado. El detalle
// no puede quedar vacío y el importe debe leerse como importe; si no, kErrorDatosCuenta.
// Devuelve el id de la línea.
qint64 RegistraLineaManual(Almacen& a, qint64 idVendedor, const QDate& fecha, const QString& detalle,
                           const QString& importe, bool debito);

// "Quitar" una línea: sólo la línea (su comprobante o su fila de caja quedan). False si ya no estaba.
bool BorraLineaCuenta(Almacen& a, qint64 idCuentaVendedor);

struct DatosCobranza {
    qint64 idVendedor = 0;
    QDate fecha;
    QString importe;     // como lo escribió el usuario
    QString formaPago;   // va sólo a la fila de caja
    bool asientaCaja = true;
    QString detalles;    // el texto de la fila de caja ("Asentar Cobranza a ...")
    qint32 idUsuario = 0;
};

// Una cobranza:
//   1. El día debe estar abierto.
//   2. El importe se lee como los de la venta ("1,234.56"); mayor que cero.
//   3. La línea "PAGO" con el importe como crédito.
//   4. Con asientaCaja, la fila de caja en la cuenta "Cobranza Clientes" (que debe existir).
// Todo en una transacción; devuelve el id de la línea, el número del recibo.
qint64 RegistraCobranza(Almacen& a, const DatosCobranza& d);

// "Arreglar": a cada comprobante a cuenta corriente comercial de un cliente que existe y que no tiene
// línea, se la agrega con su fecha y su total ("VENTA CTA CTE"). Un total negativo (nota de
// crédito) va como crédito. Devuelve cuántas agregó.
qint64 ArreglaCuentas(Almacen& a);

} // namespace orv
