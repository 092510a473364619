#pragma once
// El cierre del día: los totales de una fecha por forma de pago y por cuenta (de un usuario o de
// todos), el arqueo de lo contado contra lo esperado, y la fila de CorteCaja que cierra la fecha.
// Nada de las cifras se guarda, salvo el arqueo que acompaña al cierre.

#include "store/almacen.h"
#include "store/dinero.h"

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

namespace orv {

struct VentasPorForma {
    QString formaPago;
    Dinero total;
    friend bool operator==(const VentasPorForma&, const VentasPorForma&) = default;
};

struct MovimientosPorCuenta {
    QString cuenta; // vacía si la cuenta ya no está
    Dinero ingresos;
    Dinero egresos;
    friend bool operator==(const MovimientosPorCuenta&, const MovimientosPorCuenta&) = default;
};

// Lo que muestra "OK !". Un total sin filas queda vacío, como la pantalla lo muestra.
struct ResumenDia {
    QDate fecha;
    QList<VentasPorForma> ventas;         // sólo las filas de ventas ("VENTA" al comienzo de Detalles)
    QList<MovimientosPorCuenta> cuentas;  // todas las filas del día
    std::optional<Dinero> totalVentas;
    std::optional<Dinero> totalEntrada;
    std::optional<Dinero> totalSalida;
    bool abierta = true;
};

// Los usuarios para elegir de quién son los totales (idUsuario, NombreCompleto).
QString ConsultaUsuariosCorte();

// Los totales de la fecha: de un usuario, o de todos sin él.
ResumenDia ResumenDelDia(const Almacen& a, const QDate& fecha, std::optional<qint64> idUsuario);

// Una línea del arqueo: lo que debería haber de una forma de pago (ingresos menos egresos del
// día) y lo que el operador contó, si lo escribió.
struct LineaArqueo {
    QString formaPago;
    Dinero esperado;
    std::optional<Dinero> contado;
    // Contado menos esperado: positivo sobra, negativo falta. Sin contar, nullopt.
    std::optional<Dinero> diferencia() const {
        if (!contado) return std::nullopt;
        return *contado - esperado;
    }
    friend bool operator==(const LineaArqueo&, const LineaArqueo&) = default;
};

// Las formas de pago a contar de la fecha: las que no son a cuenta y las que aparecen en la caja
// del día, por nombre, con lo esperado de cada una.
QList<LineaArqueo> ArqueoEsperado(const Almacen& a, const QDate& fecha, std::optional<qint64> idUsuario);

// El arqueo guardado con el cierre de la fecha contada, por forma de pago.
QList<LineaArqueo> ArqueoGuardado(const Almacen& a, const QDate& fechaContada);

// "Cerrar Ejercicio del día": cierra `hoy` (la fecha de la máquina, como siempre) y guarda con el
// cierre las líneas contadas del arqueo de `fechaContada`. Todo o nada. Si otra terminal ya cerró
// ese día, no escribe nada y devuelve false: una fecha se cierra una sola vez.
bool CierraDia(Almacen& a, const QDate& hoy, const QDate& fechaContada, const QList<LineaArqueo>& arqueo, qint32 idUsuario);

// La hoja impresa del cierre: fecha, usuario, las dos listas, los totales y el arqueo, en HTML.
QString HojaCorteHtml(const ResumenDia& r, const QString& usuario, const QList<LineaArqueo>& arqueo,
                      const QString& mascaraMoneda);

} // namespace orv
