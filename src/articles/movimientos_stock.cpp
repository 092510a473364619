#include "articles/movimientos_stock.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/formato.h"

#include <QSqlQuery>

namespace orv {

namespace {

const QString kCampoCantidad = QStringLiteral("Cantidad");
constexpr int kLargoComprobante = 50; // MovimientoStock.Comprobante

} // namespace

std::optional<qint64> IdTipoMovimiento(const Almacen& a, const QString& tipo) {
    const QVariant v = a.valor(QStringLiteral("SELECT idTipoMovimiento FROM TiposMovimientoStock WHERE "
                                              "TipoMovimientoStock = ? ORDER BY idTipoMovimiento LIMIT 1"),
                               {tipo});
    if (v.isNull()) return std::nullopt;
    return v.toLongLong();
}

std::optional<QString> DescripcionArticulo(const Almacen& a, qint64 idArticulo) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Descripcion FROM Articulos WHERE idArticulo = ?"), {idArticulo});
    if (!q.next()) return std::nullopt;
    return q.value(0).toString();
}

qint64 RegistraAjusteStock(Almacen& a, const AjusteStock& ajuste, const QDate& fecha) {
    // 1. Cantidad y tipo, números; la cantidad, además, sin ambigüedad y dentro de los topes.
    if (!EsNumerico(QStringView(ajuste.cantidad.trimmed())) || !ajuste.idTipoMovimiento)
        throw Aviso(kErrorCantidadTipo);
    const double cantidad = ExigeCantidad(ajuste.cantidad.trimmed(), kCampoCantidad);
    ExigeTexto(ajuste.comprobante, kLargoComprobante, QStringLiteral("Comprobante"));

    Transaccion t(a);
    // 2. La fila del diario: lo que entra o lo que sale.
    const qint64 id = a.inserta(
        QStringLiteral("INSERT INTO MovimientoStock (idArticulo, Fecha, idTipoMovimiento, Comprobante, Ingreso, Egreso) "
                       "VALUES (?, ?, ?, ?, ?, ?)"),
        {ajuste.idArticulo, fecha, *ajuste.idTipoMovimiento, ajuste.comprobante, ajuste.suma ? cantidad : 0.0,
         ajuste.suma ? 0.0 : cantidad},
        QStringLiteral("idMovimientoStock"));
    // 3. El saldo, sumado en el almacén; un stock nulo pasa a ser la cantidad movida.
    a.ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = COALESCE(StockActual, 0) + ? WHERE idArticulo = ?"),
              {ajuste.suma ? cantidad : -cantidad, ajuste.idArticulo});
    t.confirmar();
    return id;
}

bool BorraMovimientoStock(Almacen& a, qint64 idMovimientoStock) {
    Transaccion t(a);
    // La fila se borra primero y devuelve lo que movió: si dos puestos borran el mismo
    // movimiento, sólo uno lo revierte.
    QSqlQuery q = a.consulta(QStringLiteral("DELETE FROM MovimientoStock WHERE idMovimientoStock = ? "
                                            "RETURNING idArticulo, COALESCE(Ingreso, 0) - COALESCE(Egreso, 0)"),
                             {idMovimientoStock});
    if (!q.next()) return false;
    const QVariant idArticulo = q.value(0);
    const double neto = q.value(1).toDouble();
    q.finish();
    // Sin artículo (ya no existe) el UPDATE no toca nada.
    if (!idArticulo.isNull())
        a.ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = COALESCE(StockActual, 0) - ? WHERE idArticulo = ?"),
                  {neto, idArticulo});
    t.confirmar();
    return true;
}

QStringList CamposStockEditables() { return {QStringLiteral("StockActual"), QStringLiteral("StockMinimo")}; }

void GrabaCampoStock(Almacen& a, qint64 idArticulo, const QString& campo, const QString& texto) {
    const bool actual = campo.compare(QStringLiteral("StockActual"), Qt::CaseInsensitive) == 0;
    if (!actual && campo.compare(QStringLiteral("StockMinimo"), Qt::CaseInsensitive) != 0)
        throw Aviso(QStringLiteral("Esa columna no se puede corregir."));
    const double valor =
        ExigeCantidad(texto.trimmed(), actual ? QStringLiteral("Stock Actual") : QStringLiteral("Stock Mínimo"));
    a.ejecuta(actual ? QStringLiteral("UPDATE Articulos SET StockActual = ? WHERE idArticulo = ?")
                     : QStringLiteral("UPDATE Articulos SET StockMinimo = ? WHERE idArticulo = ?"),
              {valor, idArticulo});
}

void BlanqueaStock(Almacen& a) { a.ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = 0")); }

QString ConsultaMovimientosStock() {
    return QStringLiteral("SELECT Fecha, Codigo, Descripcion, TipoMovimientoStock, Comprobante, Ingreso, Egreso, "
                          "idMovimientoStock, idArticulo FROM ConsultaMovimientosStock ORDER BY Fecha, idMovimientoStock");
}

QString ConsultaCambioStock() {
    return QStringLiteral("SELECT Codigo, Descripcion, StockActual, StockMinimo, idArticulo FROM Articulos "
                          "ORDER BY Codigo");
}

} // namespace orv
