#include "sales/borrador.h"

#include "articles/articulos.h"
#include "store/aviso.h"
#include "store/entrada.h"
#include "store/formato.h"
#include "store/rutinas.h"

#include <QRegularExpression>
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

// CLng del Basic: al entero más cercano y, en la mitad, al par. Sólo para cantidades ya acotadas.
qint64 enteroAlPar(double x) { return qint64(std::nearbyint(x)); }

const QString kCantidad = QStringLiteral("Cantidad");
const QString kUnitario = QStringLiteral("Unitario");

// Una cantidad que puede quedar en una línea: finita y dentro del tope.
double cantidadEnRango(double cantidad) {
    if (!std::isfinite(cantidad) || std::fabs(cantidad) > kCantidadMaxima)
        throw Aviso(kCantidad + QStringLiteral(": ") + kImporteFueraDeRango);
    return cantidad;
}

// El SubTotal de una línea, con las mismas cuentas del dinero en todas partes: Unitario × Cantidad
// redondeado a diezmilésimos, y nunca más allá del tope de un importe.
Dinero subTotalDe(Dinero unitario, double cantidad) {
    cantidadEnRango(cantidad);
    Dinero r;
    try {
        r = unitario.por(cantidad);
    } catch (const ImporteFueraDeRango&) {
        throw Aviso(kImporteFueraDeRango);
    }
    ExigeImporteEnRango(r);
    return r;
}

// Unitario y Cantidad guardados de una línea, tomada para cambiarla (en el servidor, hasta confirmar).
struct LineaGuardada {
    Dinero unitario;
    double cantidad = 0;
};

std::optional<LineaGuardada> tomaLinea(Almacen& a, qint64 idTmpFac) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Unitario, Cantidad FROM TmpFac WHERE idTmpFac = ?") +
                                 TomaFilas(a),
                             {idTmpFac});
    if (!q.next()) return std::nullopt;
    return LineaGuardada{Dinero::desdeVariant(q.value(0)), q.value(1).toDouble()};
}

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

CodigoConCantidad SeparaCantidad(const QString& texto) {
    static const QRegularExpression multiplicador(QStringLiteral("^([0-9]+(?:\\.[0-9]+)?)\\*(.+)$"));
    const QRegularExpressionMatch m = multiplicador.match(texto);
    if (!m.hasMatch()) return {texto, std::nullopt};
    return {m.captured(2), m.captured(1)};
}

LineaAgregada AgregaLinea(Almacen& a, qint32 idRed, const PedidoLinea& p) {
    std::optional<ArticuloVenta> art;
    if (p.origen != OrigenLinea::Lista) {
        art = ArticuloPorCodigo(a, p.codigo);
    } else {
        if (!p.idDeLista) throw Aviso(QStringLiteral("Error:No hay ningún artículo elegido en la lista."));
        art = ArticuloPorId(a, *p.idDeLista);
    }
    if (!art || !EsNumerico(QStringView(p.unitario))) throw ArticuloNoEncontrado();

    // El precio escrito se toma tal cual o se rechaza: nunca se guarda 0 en lugar de un precio.
    const Dinero unitario = p.origen == OrigenLinea::CodigoBarras ? Dinero::desdeVariant(art->precioVenta)
                                                                  : ExigeImporte(p.unitario, kUnitario);
    ExigeImporteEnRango(unitario);
    // La cantidad escrita, con la coma sólo de miles ("1,5" se rechaza, no se toma por 1).
    const bool hayCantidad = EsNumerico(QStringView(p.cantidad));
    const double pedida = hayCantidad ? ExigeCantidad(p.cantidad, kCantidad) : 0.0;

    Transaccion t(a);
    LineaAgregada r;
    r.idArticulo = art->idArticulo;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idTmpFac, Cantidad FROM TmpFac WHERE PCRed = ? AND idArticulo = ? "
                                            "ORDER BY idTmpFac"),
                             {idRed, art->idArticulo});
    if (!q.next()) {
        q.finish();
        r.cantidad = hayCantidad ? pedida : 1.0;
        const Dinero subTotal = subTotalDe(unitario, r.cantidad);
        r.idTmpFac = a.inserta(
            QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Cantidad, Descripcion, Unitario, SubTotal, PCRed) "
                           "VALUES (?, ?, ?, ?, ?, ?, ?)"),
            {art->idArticulo, art->codigo, r.cantidad, art->descripcion, unitario.aVariant(), subTotal.aVariant(),
             idRed},
            QStringLiteral("idTmpFac"));
    } else {
        r.idTmpFac = q.value(0).toLongLong();
        const double guardada = q.value(1).toDouble();
        q.finish();
        r.fusionada = true;
        // Al sumar, lo que no es un número suma lo que Val lee de su principio ("3 cajas" suma 3).
        r.cantidad = double(enteroAlPar(cantidadEnRango(guardada + (hayCantidad ? pedida : Val(p.cantidad)))));
        a.ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = ?, SubTotal = ? WHERE idTmpFac = ?"),
                  {r.cantidad, subTotalDe(unitario, r.cantidad).aVariant(), r.idTmpFac});
    }
    t.confirmar();
    return r;
}

void CambiaCantidad(Almacen& a, qint64 idTmpFac, double delta) {
    // La línea se toma dentro de la transacción, para no perder un cambio de otra ventana sobre ella.
    Transaccion t(a);
    const auto linea = tomaLinea(a, idTmpFac);
    if (!linea) return;
    const double cantidad = linea->cantidad + delta;
    a.ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = ?, SubTotal = ? WHERE idTmpFac = ?"),
              {cantidad, subTotalDe(linea->unitario, cantidad).aVariant(), idTmpFac});
    t.confirmar();
}

void CorrigeLinea(Almacen& a, qint64 idTmpFac, const QString& campo, const QVariant& valor) {
    const QString texto = valor.toString();
    if (campo.compare(QStringLiteral("Sn"), Qt::CaseInsensitive) == 0) {
        a.ejecuta(QStringLiteral("UPDATE TmpFac SET Sn = ? WHERE idTmpFac = ?"), {CortaTexto(texto, 50), idTmpFac});
        return;
    }
    const bool esCantidad = campo.compare(kCantidad, Qt::CaseInsensitive) == 0;
    if (!esCantidad && campo.compare(kUnitario, Qt::CaseInsensitive) != 0)
        throw Aviso(QStringLiteral("Esa columna no se puede corregir."));

    // Lo escrito se lee o se rechaza (la celda vuelve a su valor), y la línea corregida tiene que
    // poder calcularse: cantidad por unitario dentro del tope de un importe.
    Transaccion t(a);
    const auto linea = tomaLinea(a, idTmpFac);
    if (!linea) return;
    if (esCantidad) {
        const double cantidad = ExigeCantidad(texto, kCantidad);
        subTotalDe(linea->unitario, cantidad);
        a.ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = ? WHERE idTmpFac = ?"), {cantidad, idTmpFac});
    } else {
        const Dinero unitario = ExigeImporte(texto, kUnitario);
        subTotalDe(unitario, linea->cantidad);
        a.ejecuta(QStringLiteral("UPDATE TmpFac SET Unitario = ? WHERE idTmpFac = ?"), {unitario.aVariant(), idTmpFac});
    }
    t.confirmar();
}

void RecalculaLineas(Almacen& a, qint32 idRed) {
    // Con las cuentas del dinero, no con aritmética del motor; sólo se escriben las líneas que cambian.
    Transaccion t(a);
    QList<QPair<qint64, Dinero>> cambian;
    {
        QSqlQuery q = a.consulta(QStringLiteral("SELECT idTmpFac, Unitario, Cantidad, SubTotal FROM TmpFac WHERE PCRed = ? "
                                                "ORDER BY idTmpFac"),
                                 {idRed});
        while (q.next()) {
            const Dinero subTotal = subTotalDe(Dinero::desdeVariant(q.value(1)), q.value(2).toDouble());
            if (q.value(3).isNull() || Dinero::desdeVariant(q.value(3)) != subTotal)
                cambian << qMakePair(q.value(0).toLongLong(), subTotal);
        }
    }
    for (const auto& [id, subTotal] : cambian)
        a.ejecuta(QStringLiteral("UPDATE TmpFac SET SubTotal = ? WHERE idTmpFac = ?"), {subTotal.aVariant(), id});
    t.confirmar();
}

void BorraLinea(Almacen& a, qint64 idTmpFac) {
    a.ejecuta(QStringLiteral("DELETE FROM TmpFac WHERE idTmpFac = ?"), {idTmpFac});
}

void VaciaBorrador(Almacen& a, qint32 idRed) {
    a.ejecuta(QStringLiteral("DELETE FROM TmpFac WHERE PCRed = ?"), {idRed});
}

void RefrescaPrecioFinal(Almacen& a, const QString& coefIva) {
    const double coef = LeeCoefIva(coefIva);
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
    // Línea por línea y con el dinero, para que una fila imposible no trabe el panel: se dice cuál
    // es, los totales quedan en cero y la línea se puede borrar.
    QSqlQuery q = a.consulta(
        QStringLiteral("SELECT idTmpFac, Descripcion, Cantidad, SubTotal FROM TmpFac WHERE PCRed = ? ORDER BY idTmpFac"),
        {idRed});
    Dinero suma;
    while (q.next()) {
        ++t.lineas;
        if (!t.problema.isEmpty()) continue;
        try {
            const double cantidad = cantidadEnRango(q.value(2).toDouble());
            const Dinero subTotal = Dinero::desdeVariant(q.value(3));
            ExigeImporteEnRango(subTotal);
            suma += subTotal;
            ExigeImporteEnRango(suma);
            t.unidades += cantidad;
        } catch (const std::exception&) {
            t.idLineaConProblema = q.value(0).toLongLong();
            t.problema = QStringLiteral("La línea \"") + q.value(1).toString() +
                         QStringLiteral("\" tiene una cantidad o un importe fuera de rango: bórrela o corríjala.");
        }
    }
    if (t.lineas == 0) return t;
    t.hayLineas = true;
    if (!t.problema.isEmpty()) {
        t.unidades = 0;
        return t;
    }
    // Cada importe a centavos antes del siguiente: el neto es el subtotal menos el descuento y el
    // total el neto más el impuesto, al centavo, como los lee el comprobante.
    Dinero subTotal, descuento, neto, impuesto;
    try {
        subTotal = suma.redondeado(2);
        descuento = porcDescuento != 0 ? subTotal.porcentaje(porcDescuento).redondeado(2) : Dinero();
        neto = subTotal - descuento;
        impuesto = porcImpuesto != 0 ? neto.porcentaje(porcImpuesto).redondeado(2) : Dinero();
        ExigeImporteEnRango(neto + impuesto);
    } catch (const std::exception&) {
        t.unidades = 0;
        t.problema = QStringLiteral("El descuento o el impuesto dan un importe fuera de rango: corrija el porcentaje.");
        return t;
    }
    t.subTotal = subTotal.aDouble();
    t.descuento = descuento.aDouble();
    t.neto = neto.aDouble();
    t.impuesto = impuesto.aDouble();
    t.total = (neto + impuesto).aDouble();
    return t;
}

QString TextoItems(const Totales& t) {
    if (!t.hayLineas) return QStringLiteral("0 ítems.");
    return Formato(QVariant(t.unidades), QStringLiteral("##,###,##0.0")) + QStringLiteral(" de ") +
           QString::number(t.lineas) + QStringLiteral(" ítems.");
}

} // namespace orv
