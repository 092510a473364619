#pragma once
// El libro de caja: un movimiento por cada suma que entró o salió, lo haya escrito la venta, la
// cobranza, la compra, el pago a un proveedor, la liquidación de comisiones o el usuario a mano.
// No hay saldo guardado: todo total es una consulta sobre Caja.

#include "store/almacen.h"
#include "store/rutinas.h"
#include "store/dinero.h"

#include <QDate>
#include <QString>
#include <QVariantList>
#include <optional>

namespace orv {

// Un movimiento escrito a mano (o el que se edita): ingreso o egreso, nunca los dos.
struct MovimientoCaja {
    QDate fecha;
    std::optional<qint64> idCuenta;
    QString formaPago;
    QString detalles;
    std::optional<Dinero> ingreso; // vacío: el campo quedó en blanco
    std::optional<Dinero> egreso;
    friend bool operator==(const MovimientoCaja&, const MovimientoCaja&) = default;
};

// Los filtros del panel, además del período. Vacíos: todos.
struct FiltroCaja {
    QDate desde;
    QDate hasta;
    std::optional<qint64> idCuenta;
    QString formaPago;
};

// La grilla del panel: los movimientos del período (y los filtros) por fecha y orden de entrada.
ConsultaConParametros ConsultaMovimientosCaja(const FiltroCaja& f);

struct TotalesCaja {
    Dinero ingreso;
    Dinero egreso;
    Dinero diferencia;
    friend bool operator==(const TotalesCaja&, const TotalesCaja&) = default;
};
// Ingresos del período y egresos del primer día del período (así sale el total de egresos del
// panel desde siempre); la diferencia, exacta. Los filtros de cuenta y forma de pago también valen.
TotalesCaja TotalesDeCaja(const Almacen& a, const FiltroCaja& f);

std::optional<MovimientoCaja> LeeMovimientoCaja(const Almacen& a, qint64 idCaja);
// La fecha del movimiento; nullopt si ya no está.
std::optional<QDate> FechaDeMovimiento(const Almacen& a, qint64 idCaja);

// "Aceptar" de PanCaja: valida, exige la fecha abierta (también la que tenía el movimiento que
// se edita) y escribe la fila, con el usuario que la hace. Sin idCaja agrega; devuelve el id.
qint64 GuardaMovimientoCaja(Almacen& a, std::optional<qint64> idCaja, const MovimientoCaja& m, qint32 idUsuario);

// "Quitar": exige la fecha del movimiento abierta y lo borra. Lo que lo causó (una venta, una
// compra, un pago) queda como estaba. Un movimiento que ya no está no es una falla.
void BorraMovimientoCaja(Almacen& a, qint64 idCaja);

// La plantilla del comprobante cuyo id guarda el movimiento (sea cual sea quien lo escribió);
// vacía si no hay comprobante con ese id o su tipo no tiene plantilla.
QString PlantillaDeComprobante(const Almacen& a, qint64 idComprobante);

} // namespace orv
