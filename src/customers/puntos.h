#pragma once
// Los puntos de los clientes con tarjeta: el diario Vip (positivo lo ganado en una venta, negativo
// un premio), la tabla de premios TablaVIP con su vigencia y sus puntos, y el cobro de un premio.
//
// Vendedores.PuntosVIP es la suma de todo lo ganado y es la cifra que se mira al cobrar un premio;
// el cobro no la baja: lo canjeado se ve sólo en el diario (la "Diferencia" del período).

#include "store/almacen.h"
#include "store/rutinas.h"

#include <QDate>
#include <QString>
#include <optional>

namespace orv {

inline const QString kErrorFechasPremio = QStringLiteral("Error! Las fechas estan mal!");
inline const QString kErrorArticuloPremio = QStringLiteral("Seleccione un articulo!");
// Días de vigencia de un premio nuevo.
inline constexpr int kDiasVigenciaPremio = 120;

// ----- Tabla de premios

// Los premios, con la descripción del artículo, por vigencia.
ConsultaConParametros ConsultaTablaPremios();
// Los premios que se ofrecen el día dado (ambos días de la vigencia incluidos), por descripción:
// idTablaVIP y Descripcion.
ConsultaConParametros ConsultaPremiosVigentes(const QDate& hoy);

struct DatosPremio {
    std::optional<qint64> idArticulo;
    QString descripcion; // la del artículo, para mostrarla
    QDate desde, hasta;
    QString cantidad;    // como se escribieron
    QString puntos;
};
// El premio guardado; nullopt si ya no está.
std::optional<DatosPremio> LeePremio(const Almacen& a, qint64 idTablaVIP);
// Agrega (sin id) o cambia un premio. Las fechas en orden (kErrorFechasPremio), el artículo elegido
// (kErrorArticuloPremio), cantidad y puntos que se lean como números. Devuelve el id.
qint64 GuardaPremio(Almacen& a, std::optional<qint64> idTablaVIP, const DatosPremio& d);
// Quita un premio de la tabla; lo ya cobrado queda en el diario. False si ya no estaba.
bool BorraPremio(Almacen& a, qint64 idTablaVIP);

// ----- Puntos de un cliente

// Las filas del diario del cliente entre dos días, con el comprobante (un premio, "Premio VIP") y
// el operador, por fecha.
ConsultaConParametros ConsultaPuntosCliente(qint64 idCliente, const QDate& desde, const QDate& hasta);

struct TotalesPuntos {
    qint64 obtenidos = 0; // filas positivas del período
    qint64 cobrados = 0;  // premios del período, en positivo
    qint64 diferencia() const { return obtenidos - cobrados; }
};
TotalesPuntos TotalesPuntosCliente(const Almacen& a, qint64 idCliente, const QDate& desde, const QDate& hasta);

// El cobro de un premio, el día `hoy`:
//   1. El premio debe existir y estar vigente ese día.
//   2. Los puntos acumulados del cliente (Vendedores.PuntosVIP) deben alcanzar los requeridos; si
//      no, "Error, no puede cobrar este premio puesto que posee N puntos acumulados y requiere al
//      menos M".
//   3. La fila del premio en el diario, con los puntos en negativo y sin comprobante.
// La comparación y la fila van en una sola sentencia, con la fila del cliente tomada en el
// servidor: dos puestos que cobran a la vez para la misma tarjeta miran lo mismo que uno solo.
// Devuelve el id de la fila.
qint64 CobraPremio(Almacen& a, qint64 idCliente, qint64 idTablaVIP, const QDate& hoy, qint32 idUsuario);
// El mensaje del paso 2 si el cliente no alcanza los puntos del premio; vacío si alcanza. Es lo
// que la pantalla dice al elegir el premio, antes de cobrarlo.
QString FaltanPuntos(const Almacen& a, qint64 idCliente, qint64 idTablaVIP);

} // namespace orv
