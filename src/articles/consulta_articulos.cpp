#include "articles/consulta_articulos.h"

#include "store/esquema.h"
#include "store/rutinas.h"

#include <algorithm>

namespace orv {

namespace {

// Los códigos se ordenan y comparan por sus bytes también en PostgreSQL (SQLite ya lo hace): el
// mismo orden en los dos motores, y la búsqueda por el comienzo del código salta por los índices
// del paso 7 sea cual sea la intercalación de la base.
QString columnas(const Almacen& a) {
    const QString bytes = a.esPostgreSQL() ? QStringLiteral(" COLLATE \"C\"") : QString();
    return QStringLiteral("SELECT Articulos.Codigo") + bytes +
           QStringLiteral(" AS Codigo, Articulos.Descripcion, Rubros.Rubro, Articulos.StockActual, "
                          "Articulos.StockMinimo, Articulos.PrecioCosto, Articulos.PrecioVenta, Articulos.CgoProveedor") +
           bytes + QStringLiteral(" AS CgoProveedor, Articulos.idArticulo, Articulos.DescripcionMatriz FROM Articulos ");
}
const QString kOrden = QStringLiteral(" ORDER BY Codigo");

// Los trigramas necesitan al menos tres letras.
constexpr qsizetype kLetrasIndice = 3;
// Desde cuántas coincidencias del índice de SQLite es más rápido recorrer la tabla por código
// (medido con 300 000 artículos: traer y ordenar 25 000 coincidencias lleva 16 ms; recorrer
// hasta llenar la primera página, menos de uno).
constexpr qint64 kMuchasCoincidencias = 4000;

// La condición sobre la descripción y su parámetro.
std::pair<QString, QVariant> condicion(const Almacen& a, const QString& texto, CaminoTexto camino) {
    const bool indice = camino == CaminoTexto::Indice && texto.toUcs4().size() >= kLetrasIndice;
    if (a.esPostgreSQL()) {
        // Con pg_trgm el planificador usa el índice GIN de lower(Descripcion) para el LIKE; strpos
        // no lo puede usar (ni conviene: con menos de tres letras el índice se leería entero).
        if (indice)
            return {QStringLiteral("lower(Articulos.Descripcion) LIKE lower(?) ESCAPE '\\'"),
                    QStringLiteral("%") + EscapaLike(texto) + QStringLiteral("%")};
        return {QStringLiteral("strpos(lower(Articulos.Descripcion), lower(?)) > 0"), texto};
    }
    if (indice && HayIndiceDescripciones(a)) {
        // Una frase entre comillas: la tabla de trigramas la busca como parte de la descripción.
        QString frase = texto;
        frase.replace(u'"', QStringLiteral("\"\""));
        frase = QStringLiteral("\"") + frase + QStringLiteral("\"");
        // Con pocas coincidencias conviene traerlas del índice y ordenarlas; con muchas, recorrer
        // por código, que llena la primera página enseguida y se detiene ahí. Contarlas en el
        // índice cuesta menos de un milisegundo.
        const qint64 coinciden =
            a.valor(QStringLiteral("SELECT count(*) FROM ArticulosTexto WHERE ArticulosTexto MATCH ?"), {frase}).toLongLong();
        if (coinciden < kMuchasCoincidencias)
            return {QStringLiteral("Articulos.idArticulo IN (SELECT rowid FROM ArticulosTexto WHERE ArticulosTexto MATCH ?)"),
                    frase};
    }
    // Un texto ASCII va por el LIKE propio de SQLite, que iguala A-Z con a-z y es más rápido que
    // una función del programa; con otras letras, orv_contiene.
    const bool ascii = std::all_of(texto.cbegin(), texto.cend(), [](QChar c) { return c.unicode() < 128; });
    if (!ascii) return {QStringLiteral("orv_contiene(Articulos.Descripcion, ?) <> 0"), texto};
    return {QStringLiteral("Articulos.Descripcion LIKE ? ESCAPE '\\'"),
            QStringLiteral("%") + EscapaLike(texto) + QStringLiteral("%")};
}

} // namespace

QString ConsultaArticulosCompleta(const Almacen& a) {
    return columnas(a) + QStringLiteral("INNER JOIN Rubros ON Articulos.idRubro = Rubros.idRubro") + kOrden;
}

bool HayArticulosConRubro(const Almacen& a) {
    return !a.valor(QStringLiteral("SELECT 1 FROM Articulos INNER JOIN Rubros ON Articulos.idRubro = Rubros.idRubro "
                                   "LIMIT 1"))
                .isNull();
}

ConsultaConParametros ConsultaArticulosPorDescripcion(const Almacen& a, const QString& texto, CaminoTexto camino) {
    const QString desde = columnas(a) + QStringLiteral("LEFT JOIN Rubros ON Articulos.idRubro = Rubros.idRubro WHERE ");
    if (texto.isEmpty()) return {desde + QStringLiteral("Articulos.Descripcion IS NOT NULL") + kOrden, {}};
    const auto [donde, parametro] = condicion(a, texto, camino);
    return {desde + donde + kOrden, {parametro}};
}

bool HayIndiceDescripciones(const Almacen& a) {
    if (a.esPostgreSQL())
        return a.valor(QStringLiteral("SELECT count(*) FROM pg_indexes WHERE schemaname = current_schema() "
                                      "AND indexname = 'articulos_descripciontrigramas'"))
                   .toInt() > 0;
    return a.existeTabla(QString::fromLatin1(kTablaTextoArticulos));
}

QString FotoDeArticulo(const Almacen& a, qint64 idArticulo) {
    return a.valor(QStringLiteral("SELECT Foto FROM Articulos WHERE idArticulo = ?"), {idArticulo}).toString();
}

} // namespace orv
