#pragma once
// Una compra de la terminal 1 a "Distribuidora Norte": letra A, sucursal 1, del 20/11/2026, con la
// cuenta "Pago a Proveedores" y la forma de pago nombrada. Cada prueba cambia lo suyo.

#include "store/almacen.h"
#include "suppliers/compras.h"

namespace orv::prueba {

inline DatosCompra CompraDePrueba(const Almacen& a, qint64 idProveedor, const QString& numero,
                                  const QString& forma = QStringLiteral("EFVO")) {
    DatosCompra d;
    d.idRed = 1;
    d.idProveedor = idProveedor;
    d.nombreProveedor = QStringLiteral("Distribuidora Norte");
    d.letra = QStringLiteral("A");
    d.sucursal = QStringLiteral("1");
    d.numero = numero;
    d.fecha = QDate(2026, 11, 20);
    d.idFormaPago = a.valor(QStringLiteral("SELECT idTipoFormaPago FROM FormasDePago WHERE FormaPago = ?"), {forma}).toLongLong();
    d.formaPago = forma;
    d.idCuenta = a.valor(QStringLiteral("SELECT idCuenta FROM Cuentas WHERE Cuenta = 'Pago a Proveedores'")).toLongLong();
    return d;
}

} // namespace orv::prueba
