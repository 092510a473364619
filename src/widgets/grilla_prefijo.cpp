// Búsqueda incremental por prefijo de texto sin recorrer la grilla: las filas cuyo texto empieza
// con lo tecleado (sin distinguir mayúsculas) son, en el orden de los bytes, unos pocos rangos del
// índice de la columna, uno por cada forma en mayúsculas y minúsculas del texto que aparece.

#include "widgets/grilla.h"
#include "widgets/grilla_interna.h"

#include <QSqlField>
#include <QSqlRecord>
#include <algorithm>
#include <string>
#include <unordered_map>

namespace orv {

using namespace grilla;

namespace {

constexpr int kSaltosMaximos = 64;    // lecturas del índice para hallar los rangos
constexpr int kRangosMaximos = 8;     // formas distintas del texto presentes a la vez
constexpr qint64 kMuestra = 256;      // coincidencias que se leen para acotar la de menor orden

// Caracteres que la comparación sin mayúsculas puede tomar por c (k: K, k y el signo de grados
// Kelvin), en orden de código, que en UTF-8 es el orden de los bytes. Incluye también los que
// comparten minúscula o mayúscula con c, para abarcar el ILIKE de PostgreSQL.
const std::u32string& claseDe(char32_t c) {
    // unordered_map: las referencias ya entregadas siguen valiendo al agregar otras clases.
    static std::unordered_map<char32_t, std::u32string> hechas;
    if (auto it = hechas.find(c); it != hechas.end()) return it->second;
    const QChar q(char16_t(c & 0xFFFF));
    std::u32string r;
    for (char32_t d = 0; d < 0x10000; ++d) {
        if (d >= 0xD800 && d < 0xE000) continue;
        const QChar e(char16_t(d & 0xFFFF));
        if (e == q || e.toCaseFolded() == q.toCaseFolded() || e.toLower() == q.toLower() || e.toUpper() == q.toUpper())
            r.push_back(d);
    }
    return hechas.emplace(c, std::move(r)).first->second;
}

// Las formas de un texto: en cada lugar, cualquier carácter de su clase.
struct Formas {
    std::vector<const std::u32string*> clases;

    // La menor forma que no queda antes de y en el orden de los bytes (con estricto, la menor que
    // queda después de los primeros caracteres de y); nada si no hay.
    std::optional<QString> desde(const QString& texto, bool estricto) const {
        const std::u32string y = texto.toStdU32String();
        const size_t k = clases.size();
        size_t m = 0; // cuántos caracteres del comienzo de y son de una forma
        while (m < k && m < y.size() && clases[m]->find(y[m]) != std::u32string::npos) ++m;
        if (m == k && !estricto) return QString::fromStdU32String(y.substr(0, k));
        for (size_t d = std::min(m, k - 1) + 1; d-- > 0;) {
            const std::u32string& cl = *clases[d];
            char32_t c = cl.front();
            if (d < y.size()) {
                const auto it = std::upper_bound(cl.begin(), cl.end(), y[d]);
                if (it == cl.end()) continue;
                c = *it;
            }
            std::u32string v = y.substr(0, d);
            v.push_back(c);
            for (size_t j = d + 1; j < k; ++j) v.push_back(clases[j]->front());
            return QString::fromStdU32String(v);
        }
        return std::nullopt;
    }
};

// El primer texto después de todos los que empiezan con p, en el orden de los bytes; nada si no
// hay tope.
std::optional<QString> despuesDelPrefijo(const QString& p) {
    std::u32string u = p.toStdU32String();
    while (!u.empty()) {
        if (u.back() < 0x10FFFF) {
            ++u.back();
            if (u.back() >= 0xD800 && u.back() < 0xE000) u.back() = 0xE000;
            return QString::fromStdU32String(u);
        }
        u.pop_back();
    }
    return std::nullopt;
}

// Intercalaciones de PostgreSQL que ordenan por los bytes del texto (en UTF-8, por código).
bool esDeBytes(QString nombre) {
    nombre = nombre.remove(u'"').toLower();
    return nombre == u"c" || nombre == u"posix" || nombre == u"c.utf-8" || nombre == u"c.utf8" ||
           nombre == u"ucs_basic" || nombre == u"pg_c_utf8";
}

} // namespace

bool Grilla::ordenaPorBytes(const QString& campo) const {
    if (!almacen_.esPostgreSQL()) return true; // SQLite compara el texto con memcmp (BINARY)
    if (auto it = porBytes_.constFind(campo); it != porBytes_.cend()) return it.value();
    bool bytes = false;
    QSqlQuery q = ejecutaAdelante(almacen_,
                                  QStringLiteral("SELECT pg_collation_for(") + campo + QStringLiteral(") FROM (") +
                                      orden_->base + QStringLiteral(") AS q LIMIT 1"),
                                  parametros_);
    if (q.next()) {
        QString nombre = q.value(0).toString();
        if (nombre.remove(u'"') == u"default") {
            QSqlQuery d = ejecutaAdelante(
                almacen_, QStringLiteral("SELECT * FROM pg_database WHERE datname = current_database()"), {});
            if (d.next()) {
                const int proveedor = d.record().indexOf(QStringLiteral("datlocprovider"));
                bytes = (proveedor < 0 || d.value(proveedor).toString() == u"c") &&
                        esDeBytes(d.value(d.record().indexOf(QStringLiteral("datcollate"))).toString());
            }
        } else {
            bytes = esDeBytes(nombre);
        }
    }
    porBytes_.insert(campo, bytes);
    return bytes;
}

std::optional<int> Grilla::posicionPorPrefijo(const QString& campo, const QString& texto) const {
    if (!orden_ || texto.isEmpty() || modelo_->rowCount() == 0) return std::nullopt;
    const QString s = campoSeguro(campo);
    const QString oc = campoSeguro(orden_->columna);
    if (s.isEmpty() || oc.isEmpty()) return std::nullopt;
    if (modelo_->campos().field(s).metaType().id() != QMetaType::QString) return std::nullopt;
    Formas formas;
    for (char32_t c : texto.toStdU32String()) {
        if (c > 0xFFFF) return std::nullopt;
        formas.clases.push_back(&claseDe(c));
    }
    const bool esElOrden = s.compare(oc, Qt::CaseInsensitive) == 0;
    PorOrden o{almacen_, orden_->base, parametros_, oc, orden_->descendente};
    try {
        if (!ordenaPorBytes(s)) return std::nullopt;
        if (const auto fin = o.leeExtremos(true); fin != 0) return esElOrden ? fin : std::nullopt;
        if (!o.entero && !esElOrden && !ordenaPorBytes(oc)) return std::nullopt;

        // 1. Los rangos: se salta por el índice de s de una forma posible a la siguiente; cada
        // fila leída o coincide (su forma es un rango) o dice desde dónde seguir.
        const QString empieza = condicionEmpieza(almacen_, s);
        const QVariant buscado = parametroEmpieza(almacen_, texto);
        const QString salto = QStringLiteral("SELECT ") + s + QStringLiteral(", CASE WHEN ") + empieza +
                              QStringLiteral(" THEN 1 ELSE 0 END FROM (") + orden_->base + QStringLiteral(") AS q WHERE ") +
                              s + QStringLiteral(" >= ? ORDER BY ") + s + QStringLiteral(" LIMIT 1");
        QString rangos;
        QVariantList valores;
        std::optional<QVariant> primera; // la primera coincidencia en el orden de los bytes
        std::optional<QString> desde = formas.desde(QString(), false);
        for (int saltos = 0; desde; ++saltos) {
            if (saltos == kSaltosMaximos || valores.size() == 2 * kRangosMaximos) return std::nullopt;
            QSqlQuery q = ejecutaAdelante(almacen_, salto, QVariantList{buscado} + parametros_ + QVariantList{*desde});
            if (!q.next()) break;
            const QVariant x = q.value(0);
            if (x.typeId() != QMetaType::QString) return std::nullopt;
            if (q.value(1).toInt() == 0) {
                desde = formas.desde(x.toString(), false);
                continue;
            }
            if (!primera) primera = x;
            if (esElOrden && !o.desc) break; // ya es la primera de la grilla
            const QString forma = QString::fromStdU32String(x.toString().toStdU32String().substr(0, formas.clases.size()));
            const std::optional<QString> tope = despuesDelPrefijo(forma);
            if (!tope) return std::nullopt;
            rangos += (rangos.isEmpty() ? QString() : QStringLiteral(" OR ")) + QStringLiteral("(") + s +
                      QStringLiteral(" >= ? AND ") + s + QStringLiteral(" < ?)");
            valores << forma << *tope;
            desde = formas.desde(forma, true);
        }
        if (!primera) return -1;

        // 2. El valor del orden de la primera coincidencia en la grilla.
        std::optional<QVariant> v = primera;
        if (!esElOrden || o.desc) {
            const QString donde = QStringLiteral("(") + rangos + QStringLiteral(") AND ") + empieza;
            v = esElOrden ? std::optional(o.primero(donde, valores + QVariantList{buscado}, o.directo))
                          : ordenDeLaCoincidencia(o, donde, valores + QVariantList{buscado}, empieza, buscado);
            if (!v || v->isNull()) return std::nullopt;
        }
        return posicionDeValor(o, *v);
    } catch (const ErrorAlmacen&) {
        return std::nullopt;
    }
}

// Entre las filas de los rangos de s que coinciden (`donde`, con sus `valores`; `empieza` es la
// condición sola, con su parámetro `buscado`), el valor del orden de la primera en la grilla. Nada si esa fila no se puede ubicar contando: su valor del orden es
// nulo y los nulos van primero, o lo comparte con otras filas.
std::optional<QVariant> Grilla::ordenDeLaCoincidencia(const PorOrden& o, const QString& donde,
                                                      const QVariantList& valores, const QString& empieza,
                                                      const QVariant& buscado) const {
    const bool nulosAntes = almacen_.esPostgreSQL() == o.desc;
    // Una muestra por el índice de s acota el valor buscado; si la muestra es todo, es el valor.
    QSqlQuery m = ejecutaAdelante(almacen_,
                                  QStringLiteral("SELECT ") + (o.desc ? QStringLiteral("MAX(") : QStringLiteral("MIN(")) +
                                      o.c + QStringLiteral("), COUNT(*), COUNT(") + o.c + QStringLiteral(") FROM (SELECT ") +
                                      o.c + o.desde + donde + QStringLiteral(" LIMIT ?) AS m"),
                                  parametros_ + valores + QVariantList{kMuestra});
    if (!m.next()) return std::nullopt;
    QVariant v = m.value(0);
    const qint64 leidas = m.value(1).toLongLong(), conValor = m.value(2).toLongLong();
    if (conValor == 0) return std::nullopt;
    if (nulosAntes && o.cuenta(o.c + QStringLiteral(" IS NULL AND ") + donde, valores) > 0) return std::nullopt;
    if (leidas == kMuestra) {
        // Puede haber una anterior fuera de la muestra: se recorre el índice del orden sólo hasta
        // el valor de la muestra (con muchas coincidencias, no muy lejos), mirando sólo si coincide.
        const QVariant antes = o.primero(o.c + o.antesDe + QStringLiteral(" AND ") + empieza, {v, buscado}, o.directo);
        if (!antes.isNull()) v = antes;
    }
    if (!o.esDeLaColumna(v)) return std::nullopt;
    QSqlQuery iguales = ejecutaAdelante(almacen_,
                                        QStringLiteral("SELECT COUNT(*) FROM (SELECT 1") + o.desde + o.c +
                                            QStringLiteral(" = ? LIMIT 2) AS i"),
                                        parametros_ + QVariantList{v});
    if (!iguales.next() || iguales.value(0).toLongLong() != 1) return std::nullopt;
    return v;
}

} // namespace orv
