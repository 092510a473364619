#include "sales/borrador.h"

#include "store/aviso.h"
#include "store/formato.h"

#include <QSqlQuery>
#include <cmath>

namespace orv {

namespace {

const QString kColumnasArticulo =
    QStringLiteral("SELECT idArticulo, Codigo, Descripcion, CgoProveedor, PrecioVenta FROM Articulos WHERE ");

std::optional<ArticuloVenta> leeArticulo(const Almacen& a, const QString& condicion, const QVariant& valor) {
    QSqlQuery q = a.consulta(kColumnasArticulo + condicion + QStringLiteral(" ORDER BY idArticulo"), {valor});
    if (!q.next()) return std::nullopt;
    ArticuloVenta r;
    r.idArticulo = q.value(0).toLongLong();
    r.codigo = q.value(1).toString();
    r.descripcion = q.value(2).toString();
    r.cgoProveedor = q.value(3).toString();
    r.precioVenta = q.value(4);
    return r;
}

// CLng del Basic: al entero más cercano y, en la mitad, al par.
qint64 enteroAlPar(double x) { return qint64(std::nearbyint(x)); }

} // namespace

std::optional<ArticuloVenta> ArticuloPorCodigo(const Almacen& a, const QString& codigo) {
    return leeArticulo(a, QStringLiteral("Codigo = ?"), codigo);
}

std::optional<ArticuloVenta> ArticuloPorId(const Almacen& a, qint64 idArticulo) {
    return leeArticulo(a, QStringLiteral("idArticulo = ?"), idArticulo);
}

std::optional<ArticuloVenta> ArticuloPorCgoProveedor(const Almacen& a, const QString& cgoProveedor) {
    return leeArticulo(a, QStringLiteral("CgoProveedor = ?"), cgoProveedor);
}

LineaAgregada AgregaLinea(Almacen& a, qint32 idRed, const PedidoLinea& p) {
    std::optional<ArticuloVenta> art;
    if (p.origen != OrigenLinea::Lista) {
        art = ArticuloPorCodigo(a, p.codigo);
    } else {
        if (!p.idDeLista) throw Aviso(QStringLiteral("Error:No hay ningún artículo elegido en la lista."));
        art = ArticuloPorId(a, *p.idDeLista);
    }
    if (!art || !EsNumerico(QStringView(p.unitario))) throw Aviso(QStringLiteral("Articulo no encontrado!"));

    Dinero unitario = Dinero::desdeTexto(p.unitario).value_or(Dinero());
    if (p.origen == OrigenLinea::CodigoBarras) unitario = Dinero::desdeVariant(art->precioVenta);

    Transaccion t(a);
    LineaAgregada r;
    r.idArticulo = art->idArticulo;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idTmpFac, Cantidad FROM TmpFac WHERE PCRed = ? AND idArticulo = ? "
                                            "ORDER BY idTmpFac"),
                             {idRed, art->idArticulo});
    if (!q.next()) {
        q.finish();
        r.cantidad = EsNumerico(QStringView(p.cantidad)) ? Val(p.cantidad) : 1.0;
        r.idTmpFac = a.inserta(
            QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Cantidad, Descripcion, Unitario, SubTotal, PCRed) "
                           "VALUES (?, ?, ?, ?, ?, ?, ?)"),
            {art->idArticulo, art->codigo, r.cantidad, art->descripcion, unitario.aVariant(),
             unitario.por(r.cantidad).aVariant(), idRed},
            QStringLiteral("idTmpFac"));
    } else {
        r.idTmpFac = q.value(0).toLongLong();
        const double guardada = q.value(1).toDouble();
        q.finish();
        r.fusionada = true;
        r.cantidad = double(enteroAlPar(guardada + Val(p.cantidad)));
        a.ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = ?, SubTotal = ? WHERE idTmpFac = ?"),
                  {r.cantidad, unitario.por(r.cantidad).aVariant(), r.idTmpFac});
    }
    t.confirmar();
    return r;
}

void CambiaCantidad(Almacen& a, qint64 idTmpFac, double delta) {
    // En el almacén, para no perder un cambio de otra ventana sobre la misma línea.
    a.ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = Cantidad + ?, SubTotal = Unitario * (Cantidad + ?) "
                             "WHERE idTmpFac = ?"),
              {delta, delta, idTmpFac});
}

void CorrigeLinea(Almacen& a, qint64 idTmpFac, const QString& campo, const QVariant& valor) {
    QString columna;
    QVariant v = valor;
    if (campo.compare(QStringLiteral("Cantidad"), Qt::CaseInsensitive) == 0) {
        columna = QStringLiteral("Cantidad");
        v = Val(valor.toString());
    } else if (campo.compare(QStringLiteral("Unitario"), Qt::CaseInsensitive) == 0) {
        columna = QStringLiteral("Unitario");
        v = Dinero::desdeTexto(valor.toString()).value_or(Dinero()).aVariant();
    } else if (campo.compare(QStringLiteral("Sn"), Qt::CaseInsensitive) == 0) {
        columna = QStringLiteral("Sn");
        v = valor.toString().left(50);
    } else {
        throw Aviso(QStringLiteral("Esa columna no se puede corregir."));
    }
    a.ejecuta(QStringLiteral("UPDATE TmpFac SET ") + columna + QStringLiteral(" = ? WHERE idTmpFac = ?"), {v, idTmpFac});
}

void RecalculaLineas(Almacen& a, qint32 idRed) {
    a.ejecuta(QStringLiteral("UPDATE TmpFac SET SubTotal = Unitario * Cantidad WHERE PCRed = ?"), {idRed});
}

void BorraLinea(Almacen& a, qint64 idTmpFac) {
    a.ejecuta(QStringLiteral("DELETE FROM TmpFac WHERE idTmpFac = ?"), {idTmpFac});
}

void VaciaBorrador(Almacen& a, qint32 idRed) {
    a.ejecuta(QStringLiteral("DELETE FROM TmpFac WHERE PCRed = ?"), {idRed});
}

void RefrescaPrecioFinal(Almacen& a, const QString& coefIva) {
    const double coef = EsNumerico(QStringView(coefIva)) ? Val(coefIva) : 0.0;
    if (coef != 0)
        a.ejecuta(QStringLiteral("UPDATE Articulos SET PrecioFinal = PrecioVenta * (1 + (? / 100.0))"), {coef});
    else
        a.ejecuta(QStringLiteral("UPDATE Articulos SET PrecioFinal = PrecioVenta"));
}

ConsultaConParametros BuscaArticulos(const Almacen& a, const QString& texto) {
    QString patron;
    for (QChar c : texto) {
        if (c == u'\\' || c == u'%' || c == u'_') patron += u'\\';
        patron += c;
    }
    const QString como = a.esPostgreSQL() ? QStringLiteral("ILIKE") : QStringLiteral("LIKE");
    return {QStringLiteral("SELECT Codigo, Descripcion, DescripcionMatriz, PrecioVenta, PrecioFinal, StockActual, "
                           "idArticulo FROM Articulos WHERE Descripcion ") +
                como + QStringLiteral(" ? ESCAPE '\\' ORDER BY Descripcion, idArticulo"),
            {QStringLiteral("%") + patron + QStringLiteral("%")}};
}

Totales CalculaTotales(const Almacen& a, qint32 idRed, double porcDescuento, double porcImpuesto) {
    Totales t;
    QSqlQuery q = a.consulta(
        QStringLiteral("SELECT count(*), sum(SubTotal), sum(Cantidad) FROM TmpFac WHERE PCRed = ?"), {idRed});
    if (!q.next() || q.value(0).toLongLong() == 0) return t;
    t.hayLineas = true;
    t.lineas = q.value(0).toLongLong();
    t.subTotal = Dinero::desdeVariant(q.value(1)).aDouble();
    t.unidades = q.value(2).toDouble();
    t.descuento = porcDescuento != 0 ? porcDescuento / 100.0 * t.subTotal : 0.0;
    t.neto = t.subTotal - t.descuento;
    t.impuesto = porcImpuesto != 0 ? porcImpuesto / 100.0 * t.neto : 0.0;
    t.total = t.impuesto + t.neto;
    return t;
}

QString TextoItems(const Totales& t) {
    if (!t.hayLineas) return QStringLiteral("0 ítems.");
    return Formato(QVariant(t.unidades), QStringLiteral("##,###,##0.0")) + QStringLiteral(" de ") +
           QString::number(t.lineas) + QStringLiteral(" ítems.");
}

} // namespace orv
