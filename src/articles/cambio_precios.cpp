#include "articles/cambio_precios.h"

#include "articles/articulos.h"
#include "store/aviso.h"
#include "store/entrada.h"

namespace orv {

namespace {

// Rubro y proveedor; "<Todos>" no filtra.
ConsultaConParametros filtro(std::optional<qint64> idRubro, std::optional<qint64> idProveedor) {
    ConsultaConParametros c{QStringLiteral(" WHERE 1 = 1"), {}};
    if (idProveedor) {
        c.sql += QStringLiteral(" AND IdProveedor = ?");
        c.parametros << *idProveedor;
    }
    if (idRubro) {
        c.sql += QStringLiteral(" AND idRubro = ?");
        c.parametros << *idRubro;
    }
    return c;
}

// El valor numérico del código: las cifras (y decimales) de su comienzo; sin cifras, 0.
QString valorDelCodigo(const Almacen& a) {
    // En el servidor, un código sólo de cifras (casi todos) se convierte sin pasar por la expresión
    // regular, que cuesta cinco veces más.
    return a.esPostgreSQL()
               ? QStringLiteral("CASE WHEN Codigo ~ '^[0-9]+$' THEN CAST(Codigo AS DOUBLE PRECISION) ELSE "
                                "COALESCE(CAST(substring(Codigo from '^ *([0-9]+(\\.[0-9]+)?)') AS DOUBLE PRECISION), 0) END")
               : QStringLiteral("CAST(Codigo AS REAL)");
}

ConsultaConParametros conRango(const Almacen& a, const RangoPrecios& r) {
    const double desde = ExigeNumero(r.desde.trimmed(), QStringLiteral("Desde Cgo"), -1e15, 1e15);
    const double hasta = ExigeNumero(r.hasta.trimmed(), QStringLiteral("Hasta Cgo"), -1e15, 1e15);
    ConsultaConParametros c = filtro(r.idRubro, r.idProveedor);
    c.sql += QStringLiteral(" AND %1 >= ? AND %1 <= ?").arg(valorDelCodigo(a));
    c.parametros << desde << hasta;
    return c;
}

} // namespace

ConsultaConParametros ArticulosParaPrecios(std::optional<qint64> idRubro, std::optional<qint64> idProveedor) {
    ConsultaConParametros c = filtro(idRubro, idProveedor);
    c.sql = QStringLiteral("SELECT Codigo, CgoProveedor, Descripcion, DescripcionMatriz, PrecioCosto, PrecioVenta, idArticulo "
                           "FROM Articulos") +
            c.sql + QStringLiteral(" ORDER BY idRubro, Descripcion, idArticulo");
    return c;
}

qint64 CuentaCambioPrecios(const Almacen& a, const RangoPrecios& r) {
    const ConsultaConParametros c = conRango(a, r);
    return a.valor(QStringLiteral("SELECT count(*) FROM Articulos") + c.sql, c.parametros).toLongLong();
}

qint64 CambiaPrecios(Almacen& a, const RangoPrecios& r, const QString& pctCosto, const QString& pctVenta,
                     const QString& coefIva) {
    // 1. Los porcentajes y el rango, leídos sin adivinar. Los factores van como texto decimal: el
    //    servidor multiplica exacto y SQLite por la cuenta del dinero del programa.
    const auto factor = [](double pct) { return QString::number(1.0 + pct / 100.0, 'g', 15); };
    const QString costo = factor(ExigeNumero(pctCosto.trimmed(), QStringLiteral("Precio de Costo"), -100, 100000));
    const QString venta = factor(ExigeNumero(pctVenta.trimmed(), QStringLiteral("Precio de Venta"), -100, 100000));
    const QString impuesto = factor(LeeCoefIva(coefIva));
    const ConsultaConParametros c = conRango(a, r);
    // 2. Una sentencia: costo, venta y el precio final de la venta nueva.
    const auto por = [&a](const QString& importe) {
        return a.esPostgreSQL() ? QStringLiteral("ROUND(%1 * CAST(? AS NUMERIC), 4)").arg(importe)
                                : QStringLiteral("orv_por(%1, ?)").arg(importe);
    };
    const QString ventaNueva = por(QStringLiteral("COALESCE(PrecioVenta, 0)"));
    Transaccion tr(a);
    const int filas = a.ejecuta(QStringLiteral("UPDATE Articulos SET PrecioCosto = %1, PrecioVenta = %2, PrecioFinal = %3")
                                        .arg(por(QStringLiteral("COALESCE(PrecioCosto, 0)")), ventaNueva, por(ventaNueva)) +
                                    c.sql,
                                QVariantList{costo, venta, venta, impuesto} + c.parametros);
    tr.confirmar();
    return filas;
}

void CambiaPrecioArticulo(Almacen& a, qint64 idArticulo, const QString& campo, const QString& importe, const QString& coefIva) {
    const bool esVenta = campo.compare(QStringLiteral("PrecioVenta"), Qt::CaseInsensitive) == 0;
    if (!esVenta && campo.compare(QStringLiteral("PrecioCosto"), Qt::CaseInsensitive) != 0)
        throw AvisoAtencion(QStringLiteral("Sólo se corrigen el precio de costo y el de venta."));
    const Dinero precio = ExigeImporte(importe.trimmed(), esVenta ? QStringLiteral("Precio de Venta") : QStringLiteral("Precio de Costo"));
    if (esVenta)
        a.ejecuta(QStringLiteral("UPDATE Articulos SET PrecioVenta = ?, PrecioFinal = ? WHERE idArticulo = ?"),
                  {precio.aVariant(), PrecioConImpuesto(precio, LeeCoefIva(coefIva)).aVariant(), idArticulo});
    else
        a.ejecuta(QStringLiteral("UPDATE Articulos SET PrecioCosto = ? WHERE idArticulo = ?"), {precio.aVariant(), idArticulo});
}

} // namespace orv
