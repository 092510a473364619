#pragma once
// Las comisiones de los vendedores (tabla DetComisiones): cada venta que corresponde suma una línea
// positiva, cada liquidación una negativa; no hay saldo guardado ni una liquidación marca las
// líneas que paga. Líneas y totales de un vendedor en un período, la liquidación con su fila de
// caja opcional y el borrado de una línea.

#include "store/almacen.h"
#include "store/dinero.h"
#include "store/rutinas.h"

#include <QDate>
#include <QString>
#include <optional>

namespace orv {

inline const QString kDetalleLiquidacion = QStringLiteral("Liquidación");
inline const QString kErrorCuentaYForma = QStringLiteral("Error, debe seleccionar una cuenta y una forma de pago!");
inline const QString kErrorImporteCero = QStringLiteral("Error, no se acepta importe en cero!");

// Las líneas del vendedor entre dos días (ambos incluidos), por fecha y orden de carga.
ConsultaConParametros ConsultaComisionesVendedor(qint64 idUsuario, const QDate& desde, const QDate& hasta);

struct TotalesComisiones {
    Dinero comisiones; // lo ganado en el período (líneas positivas)
    Dinero liquidado;  // lo pagado en el período, en positivo
    Dinero diferencia() const { return comisiones - liquidado; }
};
TotalesComisiones TotalesComisionesVendedor(const Almacen& a, qint64 idUsuario, const QDate& desde, const QDate& hasta);

struct DatosLiquidacion {
    qint64 idUsuario = 0;      // el vendedor
    QString nombreVendedor;    // para el detalle de la fila de caja
    QDate fecha;
    QString aPagar;            // como lo escribió el usuario
    bool asientaCaja = false;
    std::optional<qint64> idCuenta;
    QString formaPago;         // vacío: sin elegir
    qint32 idUsuarioActual = 0;
};

// Lo que "Aceptar" de la liquidación exige antes de cerrar: con caja, cuenta y forma de pago
// elegidas (kErrorCuentaYForma); un importe que se lea, distinto de cero (kErrorImporteCero).
// Devuelve el importe leído. Un importe negativo se acepta: la línea queda positiva.
Dinero ValidaLiquidacion(const DatosLiquidacion& d);

// Una liquidación, sin mirar si el día está cerrado:
//   1. Lo mismo que ValidaLiquidacion.
//   2. La línea "Liquidación" del vendedor con el importe en negativo, sin comprobante ni porcentaje.
//   3. Con asientaCaja, el egreso en la caja por el importe, en la cuenta elegida.
// Todo en una transacción; devuelve el id de la línea.
qint64 LiquidaComisiones(Almacen& a, const DatosLiquidacion& d);

// "Quitar": sólo la línea; la fila de caja de una liquidación queda. False si ya no estaba.
bool BorraLineaComision(Almacen& a, qint64 idDetComisiones);

} // namespace orv
