// Cambio de precios de todo el catálogo de 300 000 artículos por porcentajes: la lógica completa
// (rango por el valor del código, costo, venta y precio final a cuatro decimales exactos, en una
// sentencia y una transacción) y, como piso, la sentencia desnuda que multiplica las mismas tres
// columnas sin condición. SQLite y, si ORVANTA_PRUEBA_PG está definida, PostgreSQL.

#include "articles/cambio_precios.h"
#include "maintenance/generador.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "esquema_pg.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

namespace {

struct Escenario {
    std::unique_ptr<orv::Almacen> a;
};

// Sube y baja un 1 % por vuelta, para que los precios no crezcan sin fin.
void cambio(benchmark::State& s, Escenario& e) {
    const orv::RangoPrecios todos{std::nullopt, std::nullopt, QStringLiteral("0"), QStringLiteral("99999999999999")};
    int vuelta = 0;
    for (auto _ : s) {
        const QString pct = vuelta++ % 2 ? QStringLiteral("-1") : QStringLiteral("1");
        const qint64 n = orv::CambiaPrecios(*e.a, todos, pct, pct, QStringLiteral("21"));
        if (n != 300000) s.SkipWithError("no cambiaron todos los artículos");
    }
}

void piso(benchmark::State& s, Escenario& e) {
    int vuelta = 0;
    for (auto _ : s) {
        const double f = vuelta++ % 2 ? 0.99 : 1.01;
        orv::Transaccion t(*e.a);
        e.a->ejecuta(QStringLiteral("UPDATE Articulos SET PrecioCosto = PrecioCosto * ?, PrecioVenta = PrecioVenta * ?, "
                                    "PrecioFinal = PrecioVenta * ? * 1.21"),
                     {f, f, f});
        t.confirmar();
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    return CorreEscenarios<Escenario>(argc, argv, [](Escenario& e, const QString& destino, const char* motor) {
        e.a = orv::Almacen::abre(destino);
        orv::actualizaEsquema(*e.a);
        orv::OpcionesGenerador o;
        o.articulos = 300000;
        o.filasCaja = 100;
        orv::generaAlmacenGrande(*e.a, o);
        std::fprintf(stderr, "%s: 300 000 artículos\n", motor);
        const std::string n = std::string("Precios/CambioDeTodo300000/") + motor;
        Mide(n, [&e](benchmark::State& s) { cambio(s, e); })->Iterations(4);
        Mide(n + "/SentenciaDesnuda", [&e](benchmark::State& s) { piso(s, e); })->Iterations(4);
    });
}
