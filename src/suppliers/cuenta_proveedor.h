#pragma once
// La cuenta de cada proveedor (CtaProve): Debe es lo que el negocio le debe por sus compras, Haber
// lo que le pagó; el saldo, Debe menos Haber, es una deuda del negocio cuando es positivo. Los pagos
// y las compras impagas que un pago marca como canceladas.

#include "store/almacen.h"
#include "store/dinero.h"
#include "store/rutinas.h"

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

namespace orv {

// La razón social del proveedor; vacía si ya no existe.
QString RazonSocialProveedor(const Almacen& a, qint64 idProveedor);

// Las líneas de la cuenta por fecha, desde una fecha si se da.
ConsultaConParametros CuentaProveedor(qint64 idProveedor, std::optional<QDate> desde);
// Debe menos Haber de todas sus líneas (sin mirar la fecha); nada si no tiene ninguna.
std::optional<Dinero> SaldoProveedor(const Almacen& a, qint64 idProveedor);
// "Quitar": borra la línea y nada más (ni la caja, ni las compras canceladas, ni el stock).
void QuitaMovimientoProveedor(Almacen& a, qint64 idMovCta);
// La compra de una línea que escribió una compra (su detalle empieza con "Compra "), para verla.
std::optional<qint64> CompraDeMovimiento(const Almacen& a, qint64 idMovCta);

struct CompraImpaga {
    qint64 idCompra = 0;
    QString texto; // "A-0001-00000123 20/11/2026 $1,404.81"
    friend bool operator==(const CompraImpaga&, const CompraImpaga&) = default;
};
// Las compras del proveedor sin cancelar, por fecha, como las lista el pago.
QList<CompraImpaga> ComprasImpagas(const Almacen& a, qint64 idProveedor, const QString& mascaraMoneda);

struct PagoProveedor {
    qint64 idProveedor = 0;
    QList<qint64> comprasCanceladas; // las elegidas en la lista; el importe no se compara con ellas
    QString importe;                 // txTot, como se tipeó
    QString formaPago;               // texto de cboFPago
    std::optional<qint64> idCuenta;
    QDate fecha;
    QString referencia;
    QString detalle; // "Observaciones"
    bool registraCaja = false;
    qint32 idUsuario = 0;
};

inline const QString kPagoAsentado = QStringLiteral("Pago asentado correctamente !");
inline const QString kCuentaIncorrecta = QStringLiteral("Error, ingrese una cuenta correcta!");
inline const QString kImporteIncorrecto = QStringLiteral("Error, el importe es incorrecto!");

// Un pago: con la fecha cerrada, sin cuenta o con un importe que no se lee, el aviso de cada caso y
// nada escrito. Si no, en una transacción: las compras elegidas quedan canceladas, la línea de
// Haber en la cuenta y, si se pidió, la salida de caja con el número de esa línea. Devuelve el
// idMovCta del pago.
qint64 RegistraPagoProveedor(Almacen& a, const PagoProveedor& p);

} // namespace orv
