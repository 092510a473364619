#include "widgets/grilla.h"
#include "widgets/grilla_interna.h"
#include "store/funciones_sqlite.h"
#include "store/rutinas.h"

#include <QHeaderView>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QTableView>
#include <QTreeWidget>
#include <algorithm>
#include <cmath>
#include <limits>

namespace orv {

using namespace grilla;

// SQLite: orv_empieza compara sin distinguir mayúsculas (también Ñ, Á...) y convierte a texto por
// sí sola. PostgreSQL: ILIKE sobre el texto tal como se tecleó, con los comodines escapados.
QString grilla::condicionEmpieza(const Almacen& a, const QString& col) {
    if (a.esPostgreSQL()) return QStringLiteral("CAST(") + col + QStringLiteral(" AS TEXT) ILIKE ? ESCAPE '\\'");
    return QStringLiteral("orv_empieza(") + col + QStringLiteral(", ?) <> 0");
}

QVariant grilla::parametroEmpieza(const Almacen& a, const QString& texto) {
    return a.esPostgreSQL() ? QVariant(EscapaLike(texto) + u'%') : QVariant(texto);
}

// --- posición ---

QString Grilla::campoSeguro(const QString& campo) const {
    const int c = modelo_->columna(campo);
    if (c < 0) return {};
    // El nombre sale de la propia consulta; sólo se admite un identificador simple.
    const QString n = modelo_->campo(c);
    for (QChar ch : n)
        if (!(ch.isLetterOrNumber() || ch == u'_')) return {};
    return n;
}

void Grilla::olvidaOrden() {
    orden_.reset();
    extremo_.reset();
    referencia_.reset();
    porBytes_.clear();
}

std::optional<Grilla::Orden> Grilla::ordenDe(const QString& sql) {
    static const QRegularExpression ordenSimple(
        QStringLiteral(R"(^(.*\S)\s+ORDER\s+BY\s+(?:(\w+)\s*\.\s*)?(\w+)(?:\s+(ASC|DESC))?\s*;?\s*$)"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression otroOrden(QStringLiteral(R"(\bORDER\s+BY\b)"),
                                              QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = ordenSimple.match(sql);
    if (!m.hasMatch()) return std::nullopt;
    Orden o{m.captured(1), m.captured(3), m.captured(4).compare(QStringLiteral("DESC"), Qt::CaseInsensitive) == 0};
    // Otro ORDER BY adentro (subconsulta, ventana): la última cláusula podría no ser del todo.
    if (otroOrden.match(o.base).hasMatch()) return std::nullopt;
    const QString tabla = m.captured(2);
    if (!tabla.isEmpty()) {
        // "tabla.columna" ordena por la columna de esa tabla, que puede no ser la del resultado con
        // ese nombre. Se descarta si alguna expresión toma el nombre (AS columna) o si la consulta
        // nombra esa columna de otra tabla.
        const QRegularExpression alias(QStringLiteral(R"(\bAS\s+)") + o.columna + QStringLiteral(R"(\b)"),
                                       QRegularExpression::CaseInsensitiveOption);
        if (alias.match(o.base).hasMatch()) return std::nullopt;
        const QRegularExpression calificada(QStringLiteral(R"((\w+)\s*\.\s*)") + o.columna + QStringLiteral(R"(\b)"),
                                            QRegularExpression::CaseInsensitiveOption);
        for (auto it = calificada.globalMatch(o.base); it.hasNext();)
            if (it.next().captured(1).compare(tabla, Qt::CaseInsensitive) != 0) return std::nullopt;
    }
    return o;
}

bool grilla::esEntero(const QVariant& v) {
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::UShort: return true;
    default: return false;
    }
}

namespace {

// Enteros no negativos cuyo texto empieza con las cifras `texto` (sin ceros a la izquierda):
// los rangos [p·10^k, (p+1)·10^k), crecientes y disjuntos, mientras quepan en 64 bits. El último
// puede quedar sin tope (nullopt) si (p+1)·10^k ya no cabe.
QList<QPair<qint64, std::optional<qint64>>> rangosDePrefijo(qint64 p) {
    QList<QPair<qint64, std::optional<qint64>>> r;
    if (p == 0) return {{0, 1}};
    qint64 lo = p;
    std::optional<qint64> hi;
    if (p < std::numeric_limits<qint64>::max()) hi = p + 1;
    for (;;) {
        r.append({lo, hi});
        if (!hi || __builtin_mul_overflow(lo, 10, &lo)) break;
        qint64 siguiente = 0;
        if (__builtin_mul_overflow(*hi, 10, &siguiente)) hi.reset();
        else hi = siguiente;
    }
    return r;
}

} // namespace

// 1. El valor de la primera fila que coincide con `valor` en la columna entera del orden; nulo si no
// hay. Nada si lo buscado no puede ser un entero de la columna (entonces se recorre la grilla).
std::optional<QVariant> Grilla::valorEntero(const PorOrden& o, const QVariant& valor, bool prefijo) const {
    const QString& c = o.c;
    if (!prefijo) {
        if (!esEntero(valor)) return std::nullopt;
        return o.primero(c + QStringLiteral(" = ?"), {valor.toLongLong()}, o.directo);
    }
    const QString texto = valor.toString();
    if (texto.isEmpty() || texto.size() > 19) return std::nullopt;
    for (QChar ch : texto)
        if (ch < u'0' || ch > u'9') return std::nullopt;
    if (texto.size() > 1 && texto.startsWith(u'0')) return QVariant(); // ningún entero se escribe así
    bool ok = false;
    const qint64 p = texto.toLongLong(&ok);
    if (!ok) return std::nullopt;
    // En orden ascendente el primer rango con alguna fila tiene el valor buscado (el menor de
    // ese rango); en descendente, el último (el mayor). Los rangos fuera de [a, z] no se consultan.
    auto rangos = rangosDePrefijo(p);
    if (o.desc) std::reverse(rangos.begin(), rangos.end());
    const qint64 menor = (o.desc ? o.z : o.a).toLongLong();
    const qint64 mayor = (o.desc ? o.a : o.z).toLongLong();
    for (const auto& [lo, hi] : rangos) {
        if (lo > mayor || (hi && *hi <= menor)) continue;
        const QVariant v = hi ? o.primero(c + QStringLiteral(" >= ? AND ") + c + QStringLiteral(" < ?"), {lo, *hi}, o.directo)
                              : o.primero(c + QStringLiteral(" >= ?"), {lo}, o.directo);
        if (!v.isNull()) return v;
    }
    return QVariant();
}

std::optional<int> Grilla::posicionPorOrden(const QString& campo, const QVariant& valor, bool prefijo) const {
    if (!orden_ || orden_->columna.compare(campo, Qt::CaseInsensitive) != 0) return std::nullopt;
    const QString c = campoSeguro(campo);
    if (c.isEmpty() || modelo_->rowCount() == 0) return std::nullopt;
    PorOrden o{almacen_, orden_->base, parametros_, c, orden_->descendente};
    try {
        if (const auto fin = o.leeExtremos(false); fin != 0) return fin;
        const std::optional<QVariant> encontrado = valorEntero(o, valor, prefijo);
        if (!encontrado) return std::nullopt;
        if (encontrado->isNull()) return -1;
        return posicionDeValor(o, *encontrado);
    } catch (const ErrorAlmacen&) {
        return std::nullopt;
    }
}

// 2. Cuántas filas hay antes de la primera con el valor v en la columna del orden; lee su página.
// Los nulos van primero en SQLite ascendente y en PostgreSQL descendente.
std::optional<int> Grilla::posicionDeValor(const PorOrden& o, const QVariant& v) const {
    const bool nulosAntes = almacen_.esPostgreSQL() == o.desc;
    const qint64 nulos = nulosAntes ? o.cuenta(o.c + QStringLiteral(" IS NULL"), {}) : 0;
    const qint64 antes = nulos + filasAntes(o, v);
    if (antes > std::numeric_limits<int>::max()) return std::nullopt;
    leePaginaDe(o, v, antes, nulos, nulosAntes);
    return int(antes);
}

// Filas con valor antes de v.
qint64 Grilla::filasAntes(const PorOrden& o, const QVariant& v) const {
    if (const auto porMarcas = filasAntesPorMarcas(o, v)) {
        referencia_ = Referencia{v, *porMarcas};
        return *porMarcas;
    }
    const double a = o.clave(o.a), z = o.clave(o.z);
    const auto lugar = [&](const QVariant& x) { return a != z ? (o.clave(x) - a) / (z - a) : 0.0; };
    // Si la fila hallada antes está más cerca que el comienzo y que el final (lo común al seguir
    // tecleando), se cuentan sólo las filas entre las dos.
    if (referencia_ && o.esDeLaColumna(referencia_->valor)) {
        const QVariant w = referencia_->valor;
        if (std::abs(lugar(v) - lugar(w)) < std::min(lugar(v), 1.0 - lugar(v))) {
            const qint64 antes =
                o.despues(v, w)
                    ? referencia_->antes + o.cuenta(o.c + o.desdeV + QStringLiteral(" AND ") + o.c + o.antesDe, {w, v})
                    : referencia_->antes - o.cuenta(o.c + o.desdeV + QStringLiteral(" AND ") + o.c + o.antesDe, {v, w});
            if (antes >= 0) {
                referencia_ = Referencia{v, antes};
                return antes;
            }
        }
    }
    const qint64 antes = filasAntesDesdeLosExtremos(o, v, lugar(v) > 0.5);
    referencia_ = Referencia{v, antes};
    return antes;
}

// Filas con valor antes de v. Cerca del final conviene contar lo que queda detrás y restarlo del total.
qint64 Grilla::filasAntesDesdeLosExtremos(const PorOrden& o, const QVariant& v, bool cercaDelFinal) const {
    if (cercaDelFinal) {
        if (!extremo_ || o.despues(v, extremo_->ultimo)) {
            // Total y último valor en una sola sentencia, para que se correspondan (el último, por el
            // índice; MAX no lo usaría a través de una vista con uniones). El total son todas las
            // filas menos las de valor nulo: un COUNT(*) sin condición sobre una consulta de una
            // sola tabla lo responde SQLite con el índice más chico, sin leer las filas; las nulas
            // se cuentan por el índice de la columna.
            const QString de = QStringLiteral(" FROM (") + o.base + QStringLiteral(") AS q");
            QSqlQuery q = ejecutaAdelante(
                almacen_,
                QStringLiteral("SELECT (SELECT COUNT(*)") + de + QStringLiteral(") - (SELECT COUNT(*)") + de +
                    QStringLiteral(" WHERE ") + o.c + QStringLiteral(" IS NULL), (SELECT ") + o.c + de +
                    QStringLiteral(" WHERE ") + o.c + QStringLiteral(" IS NOT NULL ORDER BY ") + o.c + o.inverso +
                    QStringLiteral(" LIMIT 1)"),
                parametros_ + parametros_ + parametros_);
            if (q.next() && o.esDeLaColumna(q.value(1)))
                extremo_ = Extremo{q.value(0).toLongLong(), q.value(1)};
            else
                extremo_.reset();
        }
        // Lo agregado después de leer el total (más allá de su último valor) no cuenta.
        if (extremo_ && !o.despues(v, extremo_->ultimo)) {
            const qint64 detras = o.cuenta(o.c + o.desdeV + QStringLiteral(" AND ") + o.c + o.hastaV, {v, extremo_->ultimo});
            if (detras <= extremo_->total) return extremo_->total - detras;
        }
    }
    return o.cuenta(o.c + o.antesDe, {v});
}

// 3. La página de la fila de v se lee por el valor del orden y no saltando filas: lo que está antes
// de v (hasta el comienzo de la página) y lo que sigue desde v.
void Grilla::leePaginaDe(const PorOrden& o, const QVariant& v, qint64 antes, qint64 nulos, bool nulosAntes) const {
    const qint64 numero = antes / ModeloGrilla::kPagina;
    const qint64 previas = antes - numero * ModeloGrilla::kPagina;
    if (numero * ModeloGrilla::kPagina < nulos) return; // la página toca el bloque de nulos del comienzo
    const QString todo = QStringLiteral("SELECT * FROM (") + o.base + QStringLiteral(") AS q WHERE ") + o.c;
    ModeloGrilla::Pagina pagina =
        previas > 0 ? modelo_->leeFilas(todo + o.antesDe + QStringLiteral(" ORDER BY ") + o.c + o.inverso +
                                            QStringLiteral(" LIMIT ?"),
                                        parametros_ + QVariantList{v, previas})
                    : ModeloGrilla::Pagina{};
    std::reverse(pagina.begin(), pagina.end());
    const bool completa = pagina.size() == previas; // si no, otra terminal cambió filas
    pagina += modelo_->leeFilas(todo + o.desdeV + QStringLiteral(" ORDER BY ") + o.c + o.directo + QStringLiteral(" LIMIT ?"),
                                parametros_ + QVariantList{v, ModeloGrilla::kPagina - previas});
    // Al final del orden pueden venir los nulos, que las dos lecturas anteriores no traen.
    if (!nulosAntes && pagina.size() < ModeloGrilla::kPagina)
        pagina += modelo_->leeFilas(todo + QStringLiteral(" IS NULL LIMIT ?"),
                                    parametros_ + QVariantList{qint64(ModeloGrilla::kPagina - pagina.size())});
    if (completa) modelo_->ponPagina(numero, std::move(pagina));
}

// Una página leída desde la anterior (lo que sigue a su último valor del orden) o desde la
// siguiente (lo que precede a su primer valor), por el índice del orden, en vez de saltar filas: a
// la mitad de una lista grande, OFFSET recorre todas las filas anteriores. Nada si el orden no es
// de una sola columna, si el valor del borde es nulo, si sus repetidos cruzan el borde (no se sabe
// cuáles ya se mostraron) o si la página llegaría a los nulos; entonces se saltan filas.
std::optional<ModeloGrilla::Pagina> Grilla::leeVecina(qint64 numero, const ModeloGrilla::Pagina* anterior,
                                                      const ModeloGrilla::Pagina* siguiente) const {
    const QString c = orden_ ? campoSeguro(orden_->columna) : QString();
    const int col = modelo_->columna(c);
    if (c.isEmpty() || col < 0) return std::nullopt;
    const PorOrden o{almacen_, orden_->base, parametros_, c, orden_->descendente};
    const QString todo = QStringLiteral("SELECT * FROM (") + o.base + QStringLiteral(") AS q WHERE ") + c;
    constexpr qsizetype n = ModeloGrilla::kPagina;
    // Lee desde el valor del borde de la vecina y quita las k filas de ese valor que la vecina ya
    // tiene; sirve si después de ellas el valor cambia.
    const auto desde = [&](const ModeloGrilla::Pagina& vecina, bool alFinal, const QString& cond,
                           const QString& sentido) -> std::optional<ModeloGrilla::Pagina> {
        const QVariant v = (alFinal ? vecina.back() : vecina.front()).value(col);
        if (v.isNull()) return std::nullopt;
        qsizetype k = 0;
        while (k < vecina.size() && vecina.at(alFinal ? vecina.size() - 1 - k : k).value(col) == v) ++k;
        ModeloGrilla::Pagina filas = modelo_->leeFilas(todo + cond + QStringLiteral(" ORDER BY ") + c + sentido +
                                                           QStringLiteral(" LIMIT ?"),
                                                       parametros_ + QVariantList{v, n + k});
        if (filas.size() < k || (filas.size() > k && filas.at(k).value(col) == v)) return std::nullopt;
        for (qsizetype i = 0; i < k; ++i)
            if (filas.at(i).value(col) != v) return std::nullopt;
        filas.erase(filas.begin(), filas.begin() + k);
        return filas;
    };
    const bool nulosAntes = almacen_.esPostgreSQL() == o.desc;
    try {
        if (anterior && anterior->size() == n)
            if (auto p = desde(*anterior, true, o.desdeV, o.directo); p && (p->size() == n || nulosAntes)) return p;
        if (siguiente && !siguiente->isEmpty() && numero >= 0)
            if (auto p = desde(*siguiente, false, o.hastaV, o.inverso); p && p->size() == n) {
                std::reverse(p->begin(), p->end());
                return p;
            }
    } catch (const ErrorAlmacen&) {
    }
    return std::nullopt;
}

int Grilla::posicionDe(const QString& campo, const QVariant& valor, bool prefijo) const {
    const QString c = campoSeguro(campo);
    if (c.isEmpty() || sql_.isEmpty()) return -1;
    if (const auto rapida = posicionPorOrden(campo, valor, prefijo)) return *rapida;
    if (prefijo)
        if (const auto porIndice = posicionPorPrefijo(campo, valor.toString())) return *porIndice;
    const bool funciones = !almacen_.esPostgreSQL(); // orv_fila(), propia de SQLite
    const QString condicion = prefijo ? condicionEmpieza(almacen_, QStringLiteral("c")) : QStringLiteral("c = ?");
    // Con el numerador, el LIMIT -1 impide que SQLite funda la subconsulta con la de afuera
    // (si no, numeraría sólo las filas que coinciden).
    const QString sql = QStringLiteral("SELECT n FROM (SELECT ") +
                        (funciones ? QStringLiteral("orv_fila()") : QStringLiteral("ROW_NUMBER() OVER ()")) +
                        QStringLiteral(" AS n, c FROM (SELECT ") + c + QStringLiteral(" AS c FROM (") + sql_ +
                        QStringLiteral(") AS q) AS q2") + (funciones ? QStringLiteral(" LIMIT -1") : QString()) +
                        QStringLiteral(") AS t WHERE ") + condicion + QStringLiteral(" LIMIT 1");
    ReiniciaNumeracionDeFilas();
    QVariantList p = parametros_;
    if (!prefijo) p << valor;
    else p << parametroEmpieza(almacen_, valor.toString());
    try {
        QSqlQuery q = ejecutaAdelante(almacen_, sql, p);
        if (q.next()) return q.value(0).toInt() - 1;
    } catch (const ErrorAlmacen&) {
    }
    return -1;
}

bool Grilla::irAFila(int fila) {
    if (!modelo_->asegura(fila)) return false;
    const QModelIndex i = modelo_->index(fila, qMax(0, tabla_->horizontalHeader()->logicalIndex(0)));
    tabla_->setCurrentIndex(i);
    tabla_->scrollTo(i, QAbstractItemView::PositionAtCenter);
    return true;
}

bool Grilla::busca(const QString& campo, const QString& texto) {
    if (agrupada()) {
        const int c = modelo_->columna(campo);
        if (c < 0) return false;
        const QString buscado = texto.toLower();
        for (int g = 0; g < arbol_->topLevelItemCount(); ++g) {
            QTreeWidgetItem* grupo = arbol_->topLevelItem(g);
            cargaGrupo(grupo);
            for (int h = 0; h < grupo->childCount(); ++h) {
                const QVariantList r = grupo->child(h)->data(0, kRolRegistro).toList();
                if (c < r.size() && r.at(c).toString().toLower().startsWith(buscado)) {
                    grupo->setExpanded(true);
                    arbol_->setCurrentItem(grupo->child(h));
                    arbol_->scrollToItem(grupo->child(h));
                    return true;
                }
            }
        }
        return false;
    }
    const int fila = posicionDe(campo, texto, true);
    return fila >= 0 && irAFila(fila);
}

} // namespace orv
