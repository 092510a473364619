#include "articles/articulos.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/formato.h"
#include "store/rutinas.h"

#include <QSqlQuery>
#include <algorithm>
#include <limits>

namespace orv {

namespace {

// El número con `cifras` ceros a la izquierda como mínimo; la máscara sale de una ristra de 48
// ceros cortada a ese ancho, así que no pasa de 48. Ancho 0: el número tal cual.
QString conCifras(qint64 numero, int cifras) {
    const int ancho = std::clamp(cifras, 0, 48);
    return QStringLiteral("%1").arg(numero, ancho, 10, QLatin1Char('0'));
}

// Un campo numérico de la ficha: vacío vale 0.
double cantidadDe(const QString& texto, const QString& campo) {
    return texto.trimmed().isEmpty() ? 0.0 : ExigeCantidad(texto.trimmed(), campo);
}
Dinero importeDe(const QString& texto, const QString& campo) {
    return texto.trimmed().isEmpty() ? Dinero() : ExigeImporte(texto.trimmed(), campo);
}

// Clave nula tipada: los dos motores la ligan como entero nulo.
QVariant claveONula(const QVariant& v) {
    if (v.isNull() || !v.isValid() || v.toString().isEmpty()) return QVariant(QMetaType(QMetaType::LongLong));
    return v.toLongLong();
}

// Número leído del almacén como lo escribe la ficha: "12", "2.5"; nulo da vacío.
QString numeroSimple(const QVariant& v) { return v.isNull() ? QString() : Formato(v, QString()); }

// Número arbitrario del candado de códigos entre terminales PostgreSQL.
constexpr qint32 kCandadoCodigos = 731800;

} // namespace

QString CodigoPropuesto(qint64 idRubro, qint64 articulosDelRubro, int cifrasRubro, int cifrasArticulo) {
    return conCifras(idRubro, cifrasRubro) + conCifras(articulosDelRubro + 1, cifrasArticulo);
}

QString ProponeCodigo(const Almacen& a, qint64 idRubro, int cifrasRubro, int cifrasArticulo) {
    const qint64 cuantos =
        a.valor(QStringLiteral("SELECT count(idArticulo) FROM Articulos WHERE idRubro = ?"), {idRubro}).toLongLong();
    return CodigoPropuesto(idRubro, cuantos, cifrasRubro, cifrasArticulo);
}

std::optional<QString> VentaDesdeMargen(QStringView costo, QStringView margen) {
    const auto c = LeeImporte(costo.trimmed());
    const auto m = LeeNumero(margen.trimmed());
    if (!c || !m || margen.trimmed().isEmpty()) return std::nullopt;
    try {
        return Formato(c->por(*m / 100.0 + 1.0), kMascaraPrecioFicha);
    } catch (const ImporteFueraDeRango&) {
        return std::nullopt;
    }
}

std::optional<QString> MargenDesdeVenta(QStringView costo, QStringView venta) {
    const auto c = LeeImporte(costo.trimmed());
    const auto v = LeeImporte(venta.trimmed());
    if (!c || !v || c->esCero()) return std::nullopt;
    return Formato(QVariant((v->aDouble() / c->aDouble() - 1.0) * 100.0), kMascaraMargen);
}

double LeeCoefIva(const QString& coefIva) { return LeeNumero(coefIva.trimmed()).value_or(0.0); }

Dinero PrecioConImpuesto(Dinero precioVenta, double coef) {
    return coef == 0.0 ? precioVenta : precioVenta + precioVenta.porcentaje(coef);
}

std::optional<DatosArticulo> LeeArticulo(const Almacen& a, qint64 idArticulo) {
    QSqlQuery q = a.consulta(
        QStringLiteral("SELECT Codigo, Descripcion, idRubro, IdProveedor, StockActual, StockMinimo, PrecioCosto, "
                       "PrecioVenta, UtilidadPorcentaje, CgoProveedor, ImprimeCodigoBarra, esMateriaPrima, Foto "
                       "FROM Articulos WHERE idArticulo = ?"),
        {idArticulo});
    if (!q.next()) return std::nullopt;
    DatosArticulo d;
    d.codigo = q.value(0).toString();
    d.descripcion = q.value(1).toString();
    d.idRubro = q.value(2).isNull() ? QVariant() : QVariant(q.value(2).toLongLong());
    d.idProveedor = q.value(3).isNull() ? QVariant() : QVariant(q.value(3).toLongLong());
    d.stockActual = numeroSimple(q.value(4));
    d.stockMinimo = numeroSimple(q.value(5));
    d.precioCosto = q.value(6).isNull() ? QString() : Formato(Dinero::desdeVariant(q.value(6)), kMascaraPrecioFicha);
    d.precioVenta = q.value(7).isNull() ? QString() : Formato(Dinero::desdeVariant(q.value(7)), kMascaraPrecioFicha);
    d.utilidad = numeroSimple(q.value(8));
    d.cgoProveedor = q.value(9).toString();
    d.imprimeCodigoBarra = q.value(10).toInt() != 0;
    d.esMateriaPrima = q.value(11).toInt() != 0;
    d.foto = q.value(12).toString();
    d.existenciaAlAbrir = d.stockActual;
    return d;
}

namespace {

// Entre terminales del servidor, dos que graban el mismo código se esperan aquí hasta que la
// primera termina.
void exigeCodigoLibre(Almacen& a, const QString& codigo, qint64 idArticulo) {
    if (a.esPostgreSQL())
        a.valor(QStringLiteral("SELECT 1 FROM (SELECT pg_advisory_xact_lock(?, hashtext(?))) x"),
                {kCandadoCodigos, codigo});
    QSqlQuery otro = a.consulta(
        QStringLiteral("SELECT Descripcion FROM Articulos WHERE Codigo = ? AND idArticulo <> ? ORDER BY idArticulo"),
        {codigo, idArticulo});
    if (otro.next())
        throw Aviso(QStringLiteral("Error, el código %1 ya es del artículo \"%2\"!").arg(codigo, otro.value(0).toString()));
    otro.finish();
}

void exigeExistenciaComoSeLeyo(Almacen& a, qint64 idArticulo, const QString& existenciaAlAbrir) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT StockActual FROM Articulos WHERE idArticulo = ?") +
                                 TomaFilas(a),
                             {idArticulo});
    q.next();
    const QString ahora = numeroSimple(q.value(0));
    if (ahora != existenciaAlAbrir.trimmed())
        throw AvisoAtencion(QStringLiteral("La existencia cambió mientras editaba el artículo (ahora es %1). "
                                   "Cierre la ficha y vuelva a abrirla para corregirla.")
                        .arg(ahora.isEmpty() ? QStringLiteral("vacía") : ahora));
}

} // namespace

qint64 GrabaArticulo(Almacen& a, qint64 idArticulo, const DatosArticulo& d, const QString& coefIva) {
    // 1. Lo que la ficha no puede dejar vacío, y cada número leído sin ambigüedad.
    const QString codigo = d.codigo.trimmed();
    if (d.descripcion.trimmed().isEmpty()) throw Aviso(QStringLiteral("Error, coloque una descripción!"));
    if (codigo.isEmpty()) throw Aviso(QStringLiteral("Error, coloque un código!"));
    ExigeTexto(codigo, kLargoCodigo, QStringLiteral("Código"));
    ExigeTexto(d.descripcion, std::numeric_limits<int>::max(), QStringLiteral("Descripción"));
    ExigeTexto(d.cgoProveedor, kLargoCodigo, QStringLiteral("Código del proveedor"));
    ExigeTexto(d.foto, kLargoFoto, QStringLiteral("Foto"));
    const double stockActual = cantidadDe(d.stockActual, QStringLiteral("Existencia"));
    const double stockMinimo = cantidadDe(d.stockMinimo, QStringLiteral("Mínimo de Aviso"));
    const Dinero costo = importeDe(d.precioCosto, QStringLiteral("Precio de Costo"));
    const Dinero venta = importeDe(d.precioVenta, QStringLiteral("Precio de Venta"));
    const double utilidad =
        d.utilidad.trimmed().isEmpty() ? 0.0 : ExigeNumero(d.utilidad.trimmed(), QStringLiteral("% Ut."), -1e12, 1e12);
    const Dinero precioFinal = PrecioConImpuesto(venta, LeeCoefIva(coefIva));
    ExigeImporteEnRango(precioFinal);

    Transaccion t(a);
    if (idArticulo != 0 && !a.valor(QStringLiteral("SELECT idArticulo FROM Articulos WHERE idArticulo = ?"), {idArticulo})
                                .isValid())
        throw Aviso(QStringLiteral("No encontrado!"));
    // 2. Un código es de un solo artículo.
    exigeCodigoLibre(a, codigo, idArticulo);

    // 3. La existencia se escribe sólo si el usuario la cambió, y sólo si sigue como la leyó.
    const bool nuevo = idArticulo == 0;
    const bool conStock = nuevo || !d.existenciaAlAbrir || d.stockActual.trimmed() != d.existenciaAlAbrir->trimmed();
    if (!nuevo && conStock && d.existenciaAlAbrir) exigeExistenciaComoSeLeyo(a, idArticulo, *d.existenciaAlAbrir);

    // 4. La fila entera, con el precio con impuesto al día.
    QVariantList valores = {codigo,
                            d.descripcion,
                            claveONula(d.idRubro),
                            claveONula(d.idProveedor),
                            stockMinimo,
                            costo.aVariant(),
                            venta.aVariant(),
                            precioFinal.aVariant(),
                            utilidad,
                            d.cgoProveedor,
                            d.imprimeCodigoBarra ? 1 : 0,
                            d.esMateriaPrima ? 1 : 0,
                            d.foto};
    if (conStock) valores << stockActual;
    qint64 id = idArticulo;
    if (nuevo) {
        id = a.inserta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, idRubro, IdProveedor, StockMinimo, "
                                      "PrecioCosto, PrecioVenta, PrecioFinal, UtilidadPorcentaje, CgoProveedor, "
                                      "ImprimeCodigoBarra, esMateriaPrima, Foto, StockActual) "
                                      "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                       valores, QStringLiteral("idArticulo"));
    } else {
        valores << idArticulo;
        const int cambiadas = a.ejecuta(
            QStringLiteral("UPDATE Articulos SET Codigo = ?, Descripcion = ?, idRubro = ?, IdProveedor = ?, "
                           "StockMinimo = ?, PrecioCosto = ?, PrecioVenta = ?, PrecioFinal = ?, "
                           "UtilidadPorcentaje = ?, CgoProveedor = ?, ImprimeCodigoBarra = ?, esMateriaPrima = ?, "
                           "Foto = ?") +
                (conStock ? QStringLiteral(", StockActual = ?") : QString()) + QStringLiteral(" WHERE idArticulo = ?"),
            valores);
        if (cambiadas == 0) throw Aviso(QStringLiteral("No encontrado!"));
    }
    t.confirmar();
    return id;
}

bool BorraArticulo(Almacen& a, qint64 idArticulo) {
    return a.ejecuta(QStringLiteral("DELETE FROM Articulos WHERE idArticulo = ?"), {idArticulo}) > 0;
}

} // namespace orv
