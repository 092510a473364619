#include "suppliers/borrador_compra.h"

#include "store/aviso.h"
#include "store/entrada.h"

#include <QSqlQuery>

namespace orv {

std::optional<ArticuloCompra> ArticuloDeCompra(const Almacen& a, BuscaArticuloPor por, const QVariant& valor) {
    static const char* const kColumna[] = {"Codigo", "CgoProveedor", "Descripcion", "idArticulo"};
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idArticulo, Codigo, Descripcion, PrecioCosto FROM Articulos WHERE %1 = ? "
                                            "ORDER BY idArticulo LIMIT 1")
                                 .arg(QString::fromLatin1(kColumna[int(por)])),
                             {valor});
    if (!q.next()) return std::nullopt;
    return ArticuloCompra{q.value(0).toLongLong(), q.value(1).toString(), q.value(2).toString(),
                          Dinero::desdeVariant(q.value(3))};
}

ConsultaConParametros ListaArticulosCompra(const Almacen& a, const QString& texto, std::optional<qint64> idProveedor,
                                           int limite) {
    ConsultaConParametros c{QStringLiteral("SELECT idArticulo, Descripcion, Codigo FROM Articulos WHERE 1 = 1"), {}};
    if (!texto.isEmpty()) {
        c.sql += QStringLiteral(" AND ") + CondicionContiene(a, QStringLiteral("Descripcion"));
        c.parametros << texto;
    }
    if (idProveedor) {
        c.sql += QStringLiteral(" AND IdProveedor = ?");
        c.parametros << *idProveedor;
    }
    c.sql += QStringLiteral(" ORDER BY Descripcion, idArticulo LIMIT ?");
    c.parametros << limite;
    return c;
}

qint64 AgregaLineaCompra(Almacen& a, qint32 idRed, const PedidoLineaCompra& p) {
    // 1. El artículo, todavía en el catálogo.
    const std::optional<ArticuloCompra> art =
        p.idArticulo ? ArticuloDeCompra(a, BuscaArticuloPor::Id, *p.idArticulo) : std::nullopt;
    if (!art)
        throw AvisoAtencion(QStringLiteral("Elija el artículo por su código, por el código del proveedor o en la lista."));
    // 2. Los números, como se escribieron.
    const double cantidad = ExigeCantidad(p.cantidad, QStringLiteral("Cantidad"));
    const Dinero costo = ExigeImporte(p.unitario, QStringLiteral("Unitario"));
    const double bonificacion = ExigePorcentaje(p.bonificacion.trimmed().isEmpty() ? QStringLiteral("0") : p.bonificacion,
                                                QStringLiteral("% Bo"));
    // 3. El costo neto de la bonificación y el subtotal de la línea.
    const Dinero unitario = costo - costo.porcentaje(bonificacion);
    const Dinero subTotal = unitario.por(cantidad);
    ExigeImporteEnRango(unitario);
    ExigeImporteEnRango(subTotal);
    return a.inserta(QStringLiteral("INSERT INTO TmpFacCompra (idArticulo, Codigo, Cantidad, Descripcion, Unitario, SubTotal, PCRed) "
                                    "VALUES (?, ?, ?, ?, ?, ?, ?)"),
                     {art->idArticulo, art->codigo, cantidad, art->descripcion, unitario.aVariant(), subTotal.aVariant(), idRed},
                     QStringLiteral("idTmpFacCompra"));
}

void BorraLineaCompra(Almacen& a, qint32 idRed, qint64 idTmpFacCompra) {
    a.ejecuta(QStringLiteral("DELETE FROM TmpFacCompra WHERE idTmpFacCompra = ? AND PCRed = ?"), {idTmpFacCompra, idRed});
}

void VaciaBorradorCompra(Almacen& a, qint32 idRed) {
    a.ejecuta(QStringLiteral("DELETE FROM TmpFacCompra WHERE PCRed = ?"), {idRed});
}

ConsultaConParametros LineasBorradorCompra(qint32 idRed) {
    return {QStringLiteral("SELECT idTmpFacCompra, Codigo, Descripcion, Cantidad, Unitario, SubTotal FROM TmpFacCompra "
                           "WHERE PCRed = ? ORDER BY idTmpFacCompra"),
            {idRed}};
}

TotalesCompra CalculaTotalesCompra(const Almacen& a, qint32 idRed, double porcDescuento, double porcImpuesto) {
    TotalesCompra t;
    Dinero suma;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT SubTotal FROM TmpFacCompra WHERE PCRed = ?"), {idRed});
    while (q.next()) {
        t.hayLineas = true;
        suma += Dinero::desdeVariant(q.value(0));
    }
    try {
        // El descuento sobre la suma de las líneas; el total, el neto por (1 + alícuota).
        const Dinero descuento = suma.porcentaje(porcDescuento);
        const Dinero neto = suma - descuento;
        t.neto = suma.redondeado(2);
        t.montoDescuento = descuento.redondeado(2);
        t.subTotal = neto.redondeado(2);
        t.total = neto.por(1.0 + porcImpuesto / 100.0).redondeado(2);
        t.impuesto = t.total - t.subTotal;
        ExigeImporteEnRango(t.neto);
        ExigeImporteEnRango(t.total);
    } catch (const ImporteFueraDeRango&) {
        throw AvisoAtencion(QStringLiteral("Los totales de la compra quedan fuera de rango: revise las líneas y los porcentajes."));
    }
    return t;
}

} // namespace orv
