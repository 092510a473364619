#include "production/produccion.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/rutinas.h"

#include <QSqlQuery>

namespace orv {

namespace {

const QString kCampoCantidad = QStringLiteral("Cantidad a producir");
const QString kCampoManoObra = QStringLiteral("Costos de Mano de Obra");

// Las filas de la fórmula cuya materia prima existe: las que la corrida consume.
const QString kFilasConMateria = QStringLiteral(
    "FROM FormulaProduccion f INNER JOIN Articulos m ON m.idArticulo = f.idArticuloMP WHERE f.idArticuloFinal = ?");

} // namespace

QString ConsultaArticulosProducibles() {
    return QStringLiteral("SELECT idArticulo, Descripcion FROM Articulos WHERE esMateriaPrima = 0 ORDER BY Descripcion, idArticulo");
}

QList<MateriaPrima> MateriasPrimas(const Almacen& a) {
    QList<MateriaPrima> r;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idArticulo, Codigo, Descripcion, PrecioCosto FROM Articulos "
                                            "WHERE esMateriaPrima <> 0 ORDER BY Descripcion, idArticulo"));
    while (q.next())
        r << MateriaPrima{q.value(0).toLongLong(), q.value(1).toString(), q.value(2).toString(),
                          q.value(3).isNull() ? Dinero() : Dinero::desdeVariant(q.value(3))};
    return r;
}

LineaFormula LineaDeFormula(const MateriaPrima& mp, const QString& cantidad) {
    const double c = ExigeCantidad(cantidad.trimmed(), QStringLiteral("Cant."));
    if (!(c > 0)) throw AvisoAtencion(QStringLiteral("La cantidad de materia prima debe ser mayor que cero."));
    const Dinero costo = mp.precioCosto.por(c);
    ExigeImporteEnRango(costo);
    return {mp.idArticulo, mp.codigo, mp.descripcion, c, costo};
}

Dinero CostoDeFormula(const QList<LineaFormula>& lineas) {
    Dinero total;
    for (const LineaFormula& l : lineas) total += l.costoTotal;
    return total;
}

QList<LineaFormula> LeeFormula(const Almacen& a, qint64 idArticuloFinal) {
    QList<LineaFormula> r;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT f.idArticuloMP, m.Codigo, m.Descripcion, f.Cantidad, f.CostoTotal ") +
                                 kFilasConMateria + QStringLiteral(" ORDER BY f.idItemFormula"),
                             {idArticuloFinal});
    while (q.next())
        r << LineaFormula{q.value(0).toLongLong(), q.value(1).toString(), q.value(2).toString(), q.value(3).toDouble(),
                          q.value(4).isNull() ? Dinero() : Dinero::desdeVariant(q.value(4))};
    return r;
}

void GuardaFormula(Almacen& a, std::optional<qint64> idArticuloFinal, const QList<LineaFormula>& lineas,
                   std::optional<qint64> reemplaza) {
    // 1. Un artículo y al menos una materia prima.
    if (!idArticuloFinal) throw AvisoAtencion(QStringLiteral("Elija el artículo a producir."));
    if (lineas.isEmpty()) throw AvisoAtencion(QStringLiteral("Agregue al menos una materia prima a la fórmula."));

    Transaccion t(a);
    // 2. Al editar, la fórmula se reemplaza entera.
    if (reemplaza) a.ejecuta(QStringLiteral("DELETE FROM FormulaProduccion WHERE idArticuloFinal = ?"), {*reemplaza});
    // 3. Un artículo tiene una sola fórmula.
    if (a.valor(QStringLiteral("SELECT count(*) FROM FormulaProduccion WHERE idArticuloFinal = ?"), {*idArticuloFinal})
            .toLongLong() > 0)
        throw AvisoAtencion(QStringLiteral("Ese artículo ya tiene su fórmula de producción: elíjala en la lista y use \"Editar\"."));
    // 4. Todas las filas en una sentencia, en el orden de la grilla.
    QString sql = QStringLiteral("INSERT INTO FormulaProduccion (idArticuloFinal, idArticuloMP, Cantidad, CostoTotal) VALUES ");
    QVariantList valores;
    for (const LineaFormula& l : lineas) {
        sql += valores.isEmpty() ? QStringLiteral("(?, ?, ?, ?)") : QStringLiteral(", (?, ?, ?, ?)");
        valores << *idArticuloFinal << l.idArticuloMP << l.cantidad << l.costoTotal.aVariant();
    }
    a.ejecuta(sql, valores);
    t.confirmar();
}

void BorraFormula(Almacen& a, qint64 idArticuloFinal) {
    a.ejecuta(QStringLiteral("DELETE FROM FormulaProduccion WHERE idArticuloFinal = ?"), {idArticuloFinal});
}

QString ConsultaFormulas() {
    return QStringLiteral("SELECT Codigo, PrimeroDeDescripcion, SumaDeCostoTotal, PrimeroDeidArticuloFinal "
                          "FROM ConsultaFormulaProduccion ORDER BY PrimeroDeDescripcion, Codigo");
}

ConsultaAlertas AlertasDeStock(qint64 idArticuloFinal, double cantidad) {
    return {QStringLiteral(
                "SELECT f.Cantidad, m.Codigo, m.Descripcion, m.StockActual, m.StockMinimo, ? * f.Cantidad AS Necesario, "
                "CASE WHEN (? * f.Cantidad) - m.StockActual < m.StockMinimo THEN 'No' ELSE 'Si' END AS Falta, "
                "ROUND(? * f.CostoTotal, 4) AS ElCostoTotal ") +
                kFilasConMateria + QStringLiteral(" ORDER BY f.idItemFormula"),
            {cantidad, cantidad, cantidad, idArticuloFinal}};
}

std::optional<Dinero> TotalCorrida(const Almacen& a, qint64 idArticuloFinal, double cantidad, Dinero manoObra) {
    const QList<LineaFormula> lineas = LeeFormula(a, idArticuloFinal);
    if (lineas.isEmpty()) return std::nullopt;
    Dinero total = manoObra;
    for (const LineaFormula& l : lineas) total += l.costoTotal.por(cantidad);
    return total;
}

qint64 RegistraProduccion(Almacen& a, const Corrida& c) {
    // 1. Artículo, cantidad mayor que cero y mano de obra no negativa, leídas sin ambigüedad.
    if (!c.idArticulo) throw AvisoAtencion(QStringLiteral("Elija el artículo a producir."));
    const double cantidad = ExigeCantidad(c.cantidad.trimmed(), kCampoCantidad);
    if (!(cantidad > 0)) throw AvisoAtencion(QStringLiteral("La cantidad a producir debe ser mayor que cero."));
    const Dinero manoObra = c.manoObra.trimmed().isEmpty() ? Dinero() : ExigeImporte(c.manoObra.trimmed(), kCampoManoObra);
    if (manoObra < Dinero()) throw AvisoAtencion(QStringLiteral("El costo de mano de obra no puede ser negativo."));
    const qint64 producido = *c.idArticulo;

    Transaccion t(a);
    if (a.valor(QStringLiteral("SELECT count(*) ") + kFilasConMateria, {producido}).toLongLong() == 0)
        throw AvisoAtencion(QStringLiteral("Ese artículo no tiene fórmula de producción."));
    // Las filas del producido y de sus materias primas, en el orden de la clave (en el servidor).
    BloqueaArticulos(a, QStringLiteral("SELECT idArticuloMP FROM FormulaProduccion WHERE idArticuloFinal = ? UNION SELECT ?"),
                     {producido, producido});

    // 2. El registro y una fila de detalle por materia prima; el total, mano de obra más materiales.
    const qint64 id = a.inserta(QStringLiteral("INSERT INTO RegistroProduccion (Fecha, idArticuloProducido, CantidadProducida, "
                                               "CostoManoObra, CostoTotal) VALUES (?, ?, ?, ?, ?)"),
                                {c.fecha, producido, cantidad, manoObra.aVariant(), manoObra.aVariant()},
                                QStringLiteral("idRegistroProduccion"));
    a.ejecuta(QStringLiteral("INSERT INTO DetRegistroProduccion (idRegistroProduccion, idArticuloMP, Cantidad, CostoTotal) "
                             "SELECT ?, f.idArticuloMP, ? * f.Cantidad, ROUND(? * f.CostoTotal, 4) ") +
                  kFilasConMateria + QStringLiteral(" ORDER BY f.idItemFormula"),
              {id, cantidad, cantidad, producido});
    a.ejecuta(QStringLiteral("UPDATE RegistroProduccion SET CostoTotal = CostoManoObra + COALESCE((SELECT SUM(d.CostoTotal) "
                             "FROM DetRegistroProduccion d WHERE d.idRegistroProduccion = ?), 0) WHERE idRegistroProduccion = ?"),
              {id, id});
    ExigeImporteEnRango(Dinero::desdeVariant(
        a.valor(QStringLiteral("SELECT CostoTotal FROM RegistroProduccion WHERE idRegistroProduccion = ?"), {id})));

    // 3. Existencias: sube la del producido, baja la de cada materia prima (una vez, por la suma).
    if (a.ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = COALESCE(StockActual, 0) + ? WHERE idArticulo = ?"),
                  {cantidad, producido}) == 0)
        throw AvisoAtencion(QStringLiteral("El artículo a producir ya no existe."));
    a.ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = COALESCE(StockActual, 0) - s.Cantidad FROM "
                             "(SELECT idArticuloMP, SUM(Cantidad) AS Cantidad FROM DetRegistroProduccion "
                             "WHERE idRegistroProduccion = ? GROUP BY idArticuloMP) AS s WHERE Articulos.idArticulo = s.idArticuloMP"),
              {id});

    // 4. El diario de stock: la entrada del producido y la salida de cada materia prima.
    const qint64 tipo = buscaOAgrega(a, QStringLiteral("TiposMovimientoStock"), QStringLiteral("idTipoMovimiento"),
                                     QStringLiteral("TipoMovimientoStock"), kTipoProduccion);
    const QString comprobante = QStringLiteral("PRODUCCION %1").arg(id);
    a.ejecuta(QStringLiteral("INSERT INTO MovimientoStock (idArticulo, Fecha, idTipoMovimiento, Comprobante, Ingreso, Egreso) "
                             "VALUES (?, ?, ?, ?, ?, 0)"),
              {producido, c.fecha, tipo, comprobante, cantidad});
    a.ejecuta(QStringLiteral("INSERT INTO MovimientoStock (idArticulo, Fecha, idTipoMovimiento, Comprobante, Ingreso, Egreso) "
                             "SELECT idArticuloMP, ?, ?, ?, 0, Cantidad FROM DetRegistroProduccion "
                             "WHERE idRegistroProduccion = ? ORDER BY idDetReg"),
              {c.fecha, tipo, comprobante, id});
    t.confirmar();
    return id;
}

QString ConsultaRegistros() {
    return QStringLiteral("SELECT Codigo, Descripcion, idRegistroProduccion, Fecha, CantidadProducida, CostoManoObra, CostoTotal, "
                          "Cantidad, Codigo_1, Descripcion_1, CostoTotal_1 FROM ConsultaRegistroProduccion "
                          "ORDER BY idRegistroProduccion DESC, Codigo_1");
}

} // namespace orv
