// El navegador "Registros: N de M" y las marcas de posición de la grilla.
//
// Contar todas las filas de un catálogo grande de una vez detendría la pantalla, y contar desde un
// extremo hasta la mitad de la lista, en cada primera tecla de una búsqueda, también. Mientras el
// programa espera, la grilla lee la columna del orden de a tramos, por el índice, y anota un valor
// cada tantas filas con cuántas filas tiene antes. Al terminar queda el total. Una búsqueda que
// cae entre dos marcas cuenta sólo las filas desde la marca anterior.

#include "widgets/grilla.h"
#include "widgets/grilla_interna.h"

#include <QLabel>
#include <QLayout>
#include <QTableView>
#include <QTimer>
#include <algorithm>

namespace orv {

using namespace grilla;

void Grilla::muestraNavegador(bool si) {
    if (si && !navegador_) {
        navegador_ = new QLabel(this);
        navegador_->setObjectName(QStringLiteral("navegadorGrilla"));
        layout()->addWidget(navegador_);
        tramos_ = new QTimer(this);
        tramos_->setSingleShot(true);
        tramos_->setInterval(0);
        connect(tramos_, &QTimer::timeout, this, &Grilla::avanzaMarcas);
        connect(this, &Grilla::filaCambiada, this, &Grilla::actualizaNavegador);
        empiezaMarcas();
    }
    if (navegador_) navegador_->setVisible(si);
}

std::optional<qint64> Grilla::totalFilas() const {
    return marcas_ ? marcas_->total : std::nullopt;
}

void Grilla::fijaTramosMarcas(int cada, int tramo) {
    cadaMarca_ = std::max(1, cada);
    tramoMarcas_ = std::max(2, tramo);
    empiezaMarcas();
}

void Grilla::actualizaNavegador() {
    if (!navegador_) return;
    const QString total = marcas_ && marcas_->total ? QString::number(*marcas_->total) : QStringLiteral("…");
    navegador_->setText(QStringLiteral("Registros: %1 de %2").arg(filaActualNumero() + 1).arg(total));
}

// Vuelve a contar desde el comienzo: la consulta es otra o se volvió a leer.
void Grilla::empiezaMarcas() {
    marcas_.reset();
    if (!navegador_ || sql_.isEmpty()) return;
    marcas_.emplace();
    actualizaNavegador();
    tramos_->start();
}

void Grilla::avanzaMarcas() {
    if (!marcas_ || marcas_->total) return;
    if (!modelo_->canFetchMore({})) { // la grilla ya leyó todo: no hay nada que contar
        marcas_->total = modelo_->rowCount();
        actualizaNavegador();
        return;
    }
    try {
        if (marcas_->c.isEmpty() && !marcas_->porOrden) {
            // Primer tramo: se decide si hay un orden por el que marcar.
            const QString c = orden_ ? campoSeguro(orden_->columna) : QString();
            if (!c.isEmpty()) {
                PorOrden o{almacen_, orden_->base, parametros_, c, orden_->descendente};
                marcas_->porOrden = o.leeExtremos(true) == 0 && (o.entero || ordenaPorBytes(c));
                marcas_->c = c;
                marcas_->entero = o.entero;
            }
        }
        if (marcas_->porOrden) {
            PorOrden o{almacen_, orden_->base, parametros_, marcas_->c, orden_->descendente};
            o.entero = marcas_->entero;
            tramoDeMarcas(o);
        } else {
            QSqlQuery q = ejecutaAdelante(almacen_, QStringLiteral("SELECT COUNT(*) FROM (") + sql_ + QStringLiteral(") AS q"),
                                          parametros_);
            marcas_->total = q.next() ? q.value(0).toLongLong() : 0;
        }
    } catch (const ErrorAlmacen&) {
        marcas_.reset(); // sin total: el navegador queda en "…" y la búsqueda cuenta como siempre
        return;
    }
    if (marcas_ && !marcas_->total) tramos_->start();
    actualizaNavegador();
}

// Un tramo: los siguientes valores de la columna en el orden de la grilla. Se marca el primero de
// cada valor distinto que está a `cadaMarca_` filas o más de la marca anterior.
void Grilla::tramoDeMarcas(const PorOrden& o) {
    Marcas& m = *marcas_;
    const QString donde = m.desde.isNull() ? o.c + QStringLiteral(" IS NOT NULL")
                                           : o.c + (m.estricto ? (o.desc ? QStringLiteral(" < ?") : QStringLiteral(" > ?"))
                                                               : o.desdeV);
    QSqlQuery q = ejecutaAdelante(almacen_,
                                  QStringLiteral("SELECT ") + o.c + o.desde + donde + QStringLiteral(" ORDER BY ") + o.c +
                                      o.directo + QStringLiteral(" LIMIT ?"),
                                  parametros_ + (m.desde.isNull() ? QVariantList{} : QVariantList{m.desde}) +
                                      QVariantList{tramoMarcas_});
    std::vector<QVariant> valores;
    valores.reserve(size_t(tramoMarcas_));
    while (q.next()) {
        valores.push_back(q.value(0));
        if (!o.esDeLaColumna(valores.back())) { // tipos mezclados: sólo el total
            *marcas_ = Marcas{};
            marcas_->c = o.c;
            return;
        }
    }
    size_t ultimoCambio = 0;
    for (size_t i = 0; i < valores.size(); ++i) {
        if (i > 0 && valores[i] == valores[i - 1]) continue;
        ultimoCambio = i;
        const qint64 antes = m.antes + qint64(i);
        const bool yaMarcado = !m.puntos.empty() && m.puntos.back().first == valores[i];
        if (!yaMarcado && (m.puntos.empty() || antes - m.puntos.back().second >= cadaMarca_))
            m.puntos.emplace_back(valores[i], antes);
    }
    if (qint64(valores.size()) < tramoMarcas_) {
        m.total = m.antes + qint64(valores.size()) + o.cuenta(o.c + QStringLiteral(" IS NULL"), {});
    } else if (ultimoCambio > 0) {
        // El último valor del tramo puede seguir en el próximo: se vuelve a leer desde su primera fila.
        m.desde = valores[ultimoCambio];
        m.antes += qint64(ultimoCambio);
        m.estricto = false;
    } else {
        // Todo el tramo es un mismo valor: se cuentan sus filas y se sigue después de él.
        m.antes += o.cuenta(o.c + QStringLiteral(" = ?"), {valores.front()});
        m.desde = valores.front();
        m.estricto = true;
    }
}

// Filas con valor antes de v, contadas desde la última marca que no está después de v. Nada si
// no hay marcas de esta columna o si v cae más allá de la última y todavía no se llegó al final.
std::optional<qint64> Grilla::filasAntesPorMarcas(const PorOrden& o, const QVariant& v) const {
    if (!marcas_ || !marcas_->porOrden || marcas_->c != o.c || marcas_->entero != o.entero || marcas_->puntos.empty() ||
        !o.esDeLaColumna(v))
        return std::nullopt;
    const auto& p = marcas_->puntos;
    auto it = std::upper_bound(p.begin(), p.end(), v,
                               [&o](const QVariant& x, const std::pair<QVariant, qint64>& punto) { return o.despues(punto.first, x); });
    if (it == p.begin()) return std::nullopt;
    if (it == p.end() && !marcas_->total) return std::nullopt;
    --it;
    if (it->first == v) return it->second;
    return it->second + o.cuenta(o.c + o.desdeV + QStringLiteral(" AND ") + o.c + o.antesDe, {it->first, v});
}

} // namespace orv
