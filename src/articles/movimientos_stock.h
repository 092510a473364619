#pragma once
// Movimientos de stock hechos a mano: el ajuste de un artículo (una fila del diario
// MovimientoStock y su saldo StockActual), el borrado de un movimiento con su reversión, la
// corrección masiva de StockActual y StockMinimo y el blanqueo del stock.
//
// El saldo se cambia siempre con una suma en el almacén, en la misma transacción que la fila
// del diario: dos puestos que ajustan el mismo artículo a la vez no pierden ninguna cantidad.

#include "store/almacen.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>

namespace orv {

inline const QString kTipoCompra = QStringLiteral("Compra");
inline const QString kErrorCantidadTipo = QStringLiteral("Error, verifique cantidad y tipo de operación!");

// idTipoMovimiento del tipo con ese nombre; nada si no existe.
std::optional<qint64> IdTipoMovimiento(const Almacen& a, const QString& tipo);
// Descripcion del artículo; nada si ya no existe.
std::optional<QString> DescripcionArticulo(const Almacen& a, qint64 idArticulo);

struct AjusteStock {
    qint64 idArticulo = 0;
    std::optional<qint64> idTipoMovimiento; // Label5: nada si el tipo no se encontró
    QString comprobante;                    // Text2
    QString cantidad;                       // Text1, como se tipeó
    bool suma = true;                       // Option1 "Suma"; si no, Option2 "Resta"
};

// "&Aceptar" del ajuste: la cantidad y el tipo deben ser números (si no, kErrorCantidadTipo);
// una cantidad ambigua ("2,5") o fuera de rango se rechaza con un aviso que nombra el campo.
// En una transacción: la fila del diario (Ingreso o Egreso, el otro en 0) con la fecha dada, y
// StockActual = COALESCE(StockActual, 0) ± cantidad; un stock nulo pasa a ser la cantidad. Un
// artículo que ya no existe deja sólo la fila del diario. Devuelve el idMovimientoStock.
qint64 RegistraAjusteStock(Almacen& a, const AjusteStock& ajuste, const QDate& fecha);

// "&Eliminar": borra el movimiento y devuelve su efecto al saldo del artículo
// (StockActual − Ingreso + Egreso, con lo nulo como cero), en una transacción. Si el artículo ya
// no existe sólo se borra la fila. Un movimiento que ya no está (otro puesto lo borró) no cambia
// nada. Devuelve si se borró.
bool BorraMovimientoStock(Almacen& a, qint64 idMovimientoStock);

// Los campos que se corrigen en la grilla de cambios masivos.
QStringList CamposStockEditables();
// Corrección de una celda de la grilla: `campo` es StockActual o StockMinimo, `texto` se lee como
// cantidad (lo ambiguo o fuera de rango se rechaza y la celda vuelve a su valor). No escribe
// ningún movimiento.
void GrabaCampoStock(Almacen& a, qint64 idArticulo, const QString& campo, const QString& texto);

// "&Resetea Stock...": StockActual = 0 en todos los artículos; StockMinimo y el diario quedan.
void BlanqueaStock(Almacen& a);

// Consultas de las grillas: los movimientos por fecha y orden de carga, y los artículos por código.
QString ConsultaMovimientosStock();
QString ConsultaCambioStock();

} // namespace orv
