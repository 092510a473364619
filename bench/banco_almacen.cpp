// Apertura de un almacén grande y al día: abrir, comprobar la versión del esquema y cerrar.
// El almacén (100 000 artículos, 1 000 000 de filas de caja) se genera una vez por proceso, en
// SQLite en una carpeta temporal y, si ORVANTA_PRUEBA_PG está definida, en un esquema nuevo de
// ese servidor PostgreSQL.

#include "maintenance/generador.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "esquema_pg.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QUrl>
#include <QUrlQuery>


#include <benchmark/benchmark.h>
#include <cstdio>

namespace {

void genera(const QString& destino, const char* motor) {
    QElapsedTimer t;
    t.start();
    auto a = orv::Almacen::abre(destino);
    orv::actualizaEsquema(*a);
    orv::OpcionesGenerador o;
    o.articulos = 100000;
    o.filasCaja = 1000000;
    orv::generaAlmacenGrande(*a, o);
    a->cierra();
    std::fprintf(stderr, "%s: almacén de %lld artículos y %lld filas de caja generado en %.1f s\n", motor, o.articulos,
                 o.filasCaja, double(t.elapsed()) / 1000.0);
}

void abreAlDia(benchmark::State& estado, const QString& destino) {
    for (auto _ : estado) {
        auto a = orv::Almacen::abre(destino);
        const int aplicados = orv::actualizaEsquema(*a);
        benchmark::DoNotOptimize(aplicados);
        a->cierra();
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);

    QTemporaryDir carpeta;
    if (!carpeta.isValid()) return 1;
    const QString sqlite = carpeta.filePath(QStringLiteral("BASE.db"));

    EsquemaPostgreSQL esquema;
    try {
        genera(sqlite, "SQLite");
        benchmark::RegisterBenchmark("AbreAlmacenAlDia/SQLite",
                                     [sqlite](benchmark::State& s) { abreAlDia(s, sqlite); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();

        if (esquema.hay()) {
            const QString postgres = esquema.crea();
            genera(postgres, "PostgreSQL");
            benchmark::RegisterBenchmark("AbreAlmacenAlDia/PostgreSQL",
                                         [postgres](benchmark::State& s) { abreAlDia(s, postgres); })
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime();
        }
        benchmark::RunSpecifiedBenchmarks();
    } catch (const orv::ErrorAlmacen& e) {
        std::fprintf(stderr, "Error del almacén: %s\n", qPrintable(e.descripcion()));
        return 1;
    }
    benchmark::Shutdown();
    return 0;
}
