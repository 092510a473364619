// Apertura de un almacén grande y al día: abrir, comprobar la versión del esquema y cerrar; en SQLite
// también con el control de integridad del arranque (PRAGMA quick_check acotado, en sólo lectura).
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

void abreAlDia(benchmark::State& estado, const QString& destino, orv::Apertura apertura) {
    for (auto _ : estado) {
        auto a = orv::Almacen::abre(destino, apertura);
        const int aplicados = orv::actualizaEsquema(*a);
        benchmark::DoNotOptimize(aplicados);
        a->cierra();
    }
}

void registra(const QString& destino, const char* motor) {
    const std::string nombre = std::string("AbreAlmacenAlDia/") + motor;
    Mide(nombre, [destino](benchmark::State& s) { abreAlDia(s, destino, orv::Apertura::Comun); });
    if (std::string(motor) == "SQLite")
        Mide(nombre + "/ControlDeIntegridad",
             [destino](benchmark::State& s) { abreAlDia(s, destino, orv::Apertura::ControlaIntegridad); });
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    return CorreBancos(argc, argv, [](const QString& destino, const QString&, const char* motor) {
        genera(destino, motor);
        registra(destino, motor);
    });
}
