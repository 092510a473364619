#pragma once
// Plan de cuentas y formas de pago: los dos catálogos que clasifican el dinero. Algunas filas
// valen por su nombre (la venta, la cobranza y el cierre las buscan por texto) y no se pueden
// borrar ni renombrar mientras sean las únicas con ese nombre.

#include "store/almacen.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace orv {

// Cuentas que el sistema busca por nombre.
const QStringList& CuentasDelSistema();
// Formas de pago con un significado fijo: efectivo, cuenta corriente y cheque.
const QStringList& FormasPagoDelSistema();

// Consultas de las grillas de los dos catálogos, por nombre.
QString ConsultaPlanCuentas();
QString ConsultaFormasPago();

// "Nueva Cuenta": guarda los primeros 50 caracteres del nombre y devuelve su id. Un nombre vacío
// (o sólo blancos) no agrega nada: nullopt. Dos cuentas pueden llamarse igual.
std::optional<qint64> AgregaCuenta(Almacen& a, const QString& nombre);
// Borra la cuenta. Una cuenta del sistema que es la única con su nombre se rechaza con un aviso;
// los movimientos de caja que la usan quedan como están.
void BorraCuenta(Almacen& a, qint64 idCuenta);

struct FormaPago {
    QString nombre;
    bool aCuenta = false; // EsACuenta
    bool tarjeta = false; // EsTarjetaCredito
    friend bool operator==(const FormaPago&, const FormaPago&) = default;
};

std::optional<FormaPago> LeeFormaPago(const Almacen& a, qint64 idTipoFormaPago);
// Agrega (sin id) o reescribe la forma de pago; devuelve su id. Rechaza un nombre vacío o de más
// de 50 caracteres, y cambiar el nombre de una forma del sistema que es la única con ese nombre.
qint64 GuardaFormaPago(Almacen& a, std::optional<qint64> idTipoFormaPago, const FormaPago& f);
// Borra la forma de pago; una del sistema que es la única con su nombre se rechaza con un aviso.
// Los comprobantes y movimientos la guardan como texto: no cambian.
void BorraFormaPago(Almacen& a, qint64 idTipoFormaPago);

} // namespace orv
