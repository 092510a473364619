// La caja sobre 1 000 000 de movimientos en tres años (unos 913 por día): las primeras filas del
// panel y sus totales (de un día, un mes y los tres años), el resumen del cierre de una fecha y
// `FechaAbierta`, que corre en cada venta. Al lado de cada uno, la sentencia desnuda que lee lo mismo
// de Caja, como piso. SQLite y, si ORVANTA_PRUEBA_PG está definida, PostgreSQL.

#include "cash/caja.h"
#include "cash/corte.h"
#include "maintenance/generador.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "store/rutinas.h"
#include "widgets/grilla.h"
#include "esquema_pg.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

const QDate kHasta(2026, 11, 23);
constexpr qint64 kFilas = 1000000;
constexpr qint64 kPorDia = 913; // tres años

std::unique_ptr<orv::Almacen> genera(const QString& destino, const char* motor) {
    QElapsedTimer t;
    t.start();
    auto a = orv::Almacen::abre(destino);
    orv::actualizaEsquema(*a);
    orv::OpcionesGenerador o;
    o.articulos = 1000;
    o.filasCaja = kFilas;
    o.filasCajaPorDia = kPorDia;
    o.hasta = kHasta;
    orv::generaAlmacenGrande(*a, o);
    // Un día cerrado hace un año, como en un comercio que cierra algunos días.
    a->ejecuta(QStringLiteral("INSERT INTO CorteCaja (FECHA) VALUES (?)"), {kHasta.addYears(-1)});
    std::fprintf(stderr, "%s: %lld movimientos de caja generados en %.1f s\n", motor, kFilas, double(t.elapsed()) / 1000.0);
    return a;
}

// El panel: la primera página de la grilla del período, como la abre la grilla.
void filas(benchmark::State& s, orv::Almacen& a, int dias) {
    const orv::FiltroCaja f{kHasta.addDays(1 - dias), kHasta, std::nullopt, QString()};
    orv::ModeloGrilla m;
    for (auto _ : s) {
        const orv::ConsultaConParametros c = orv::ConsultaMovimientosCaja(f);
        m.abre(a, c.sql, c.parametros);
        if (m.rowCount() != orv::ModeloGrilla::kPagina) s.SkipWithError("la primera página no está completa");
    }
}

// Piso de la grilla: las mismas filas de Caja, sin la vista.
void filasDesnudas(benchmark::State& s, orv::Almacen& a, int dias) {
    const QDate desde = kHasta.addDays(1 - dias);
    for (auto _ : s) {
        QSqlQuery q = a.consulta(QStringLiteral("SELECT * FROM Caja WHERE Fecha >= ? AND Fecha <= ? ORDER BY Fecha, idCaja LIMIT 256"),
                                 {desde, kHasta});
        int n = 0;
        while (q.next()) ++n;
        benchmark::DoNotOptimize(n);
    }
}

// Los tres totales del panel.
void totales(benchmark::State& s, orv::Almacen& a, int dias) {
    const orv::FiltroCaja f{kHasta.addDays(1 - dias), kHasta, std::nullopt, QString()};
    for (auto _ : s) benchmark::DoNotOptimize(orv::TotalesDeCaja(a, f).diferencia);
}

// Piso de los totales: las dos sumas, en una sola sentencia.
void totalesDesnudos(benchmark::State& s, orv::Almacen& a, int dias) {
    const QDate desde = kHasta.addDays(1 - dias);
    for (auto _ : s)
        benchmark::DoNotOptimize(a.valor(QStringLiteral("SELECT sum(Ingreso) - sum(Egreso) FROM Caja WHERE Fecha >= ? AND Fecha <= ?"),
                                         {desde, kHasta}));
}

void resumen(benchmark::State& s, orv::Almacen& a) {
    for (auto _ : s) {
        const orv::ResumenDia r = orv::ResumenDelDia(a, kHasta.addDays(-200), std::nullopt);
        if (r.cuentas.isEmpty()) s.SkipWithError("el día no tiene movimientos");
        benchmark::DoNotOptimize(orv::ArqueoEsperado(a, kHasta.addDays(-200), std::nullopt));
    }
}

// Piso del resumen: una sola pasada por las filas del día.
void resumenDesnudo(benchmark::State& s, orv::Almacen& a) {
    for (auto _ : s)
        benchmark::DoNotOptimize(a.valor(QStringLiteral("SELECT sum(Ingreso) - sum(Egreso) FROM Caja WHERE Fecha = ?"),
                                         {kHasta.addDays(-200)}));
}

void fechaAbierta(benchmark::State& s, orv::Almacen& a) {
    for (auto _ : s) benchmark::DoNotOptimize(orv::FechaAbierta(a, kHasta));
}

void fechaAbiertaDesnuda(benchmark::State& s, orv::Almacen& a) {
    for (auto _ : s) benchmark::DoNotOptimize(a.valor(QStringLiteral("SELECT 1 FROM CorteCaja WHERE FECHA = ?"), {kHasta}));
}

void registra(orv::Almacen& a, const QString& motor) {
    const auto banco = [&](const QString& nombre, auto f) {
        Mide(qPrintable(nombre + u'/' + motor), [&a, f](benchmark::State& s) { f(s, a); });
    };
    for (const auto& [dias, nombre] : {std::pair{1, "Dia"}, {30, "Mes"}, {1095, "TresAnios"}}) {
        const int d = dias;
        const QString periodo = QLatin1String(nombre);
        banco(QStringLiteral("PanelCajaFilas/") + periodo, [d](benchmark::State& s, orv::Almacen& x) { filas(s, x, d); });
        banco(QStringLiteral("PanelCajaFilasDesnudas/") + periodo, [d](benchmark::State& s, orv::Almacen& x) { filasDesnudas(s, x, d); });
        banco(QStringLiteral("PanelCajaTotales/") + periodo, [d](benchmark::State& s, orv::Almacen& x) { totales(s, x, d); });
        banco(QStringLiteral("PanelCajaTotalesDesnudos/") + periodo,
              [d](benchmark::State& s, orv::Almacen& x) { totalesDesnudos(s, x, d); });
    }
    banco(QStringLiteral("ResumenCierre"), resumen);
    banco(QStringLiteral("ResumenCierreDesnudo"), resumenDesnudo);
    banco(QStringLiteral("FechaAbierta"), fechaAbierta);
    banco(QStringLiteral("FechaAbiertaDesnuda"), fechaAbiertaDesnuda);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    std::vector<std::unique_ptr<orv::Almacen>> almacenes;
    return CorreBancos(argc, argv, [&](const QString& destino, const QString&, const char* motor) {
        almacenes.push_back(genera(destino, motor));
        registra(*almacenes.back(), QString::fromLatin1(motor));
    });
}
