// Grilla sobre 1 000 000 de filas de caja (SQLite): tiempo hasta la primera página pintada y
// búsqueda incremental de una fila cerca del final.

#include "escaneo.h"

#include "maintenance/generador.h"
#include "widgets/grilla.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "esquema_pg.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QTableView>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

namespace {

const QString kSql = QStringLiteral("SELECT * FROM ConsultaCaja ORDER BY idCaja");

void primeraPagina(benchmark::State& estado, orv::Almacen& a) {
    for (auto _ : estado) {
        orv::Grilla g(a);
        g.resize(1280, 800);
        banco::CuentaPintadas cuenta;
        g.tabla()->viewport()->installEventFilter(&cuenta);
        g.fijaConsulta(kSql);
        g.fijaMascara(QStringLiteral("Ingreso"), QStringLiteral("#,##0.00"));
        g.fijaMascara(QStringLiteral("Egreso"), QStringLiteral("#,##0.00"));
        g.show();
        QElapsedTimer limite;
        limite.start();
        while (cuenta.pintadas == 0 && limite.elapsed() < 5000) QApplication::processEvents();
        const QPixmap imagen = g.grab();
        benchmark::DoNotOptimize(imagen.cacheKey());
        if (cuenta.pintadas == 0) estado.SkipWithError("la tabla no se pintó");
        estado.PauseTiming();
        g.hide();
        QApplication::processEvents();
        estado.ResumeTiming();
    }
}

void buscaCercaDelFinal(benchmark::State& estado, orv::Almacen& a) {
    orv::Grilla g(a);
    g.resize(1280, 800);
    g.fijaConsulta(kSql);
    g.show();
    QApplication::processEvents();
    int i = 0;
    for (auto _ : estado) {
        // Alterna dos destinos para que cada vuelta se mueva de verdad.
        const QString texto = (i++ % 2) ? QStringLiteral("999901") : QStringLiteral("999950");
        if (!g.busca(QStringLiteral("idCaja"), texto)) estado.SkipWithError("no encontró la fila");
        QApplication::processEvents();
    }
}

// Primera búsqueda sobre una grilla recién abierta: incluye leer el total de filas, que las
// búsquedas siguientes ya no leen.
void primeraBusqueda(benchmark::State& estado, orv::Almacen& a) {
    for (auto _ : estado) {
        estado.PauseTiming();
        orv::Grilla g(a);
        g.resize(1280, 800);
        g.fijaConsulta(kSql);
        g.show();
        QApplication::processEvents();
        estado.ResumeTiming();
        if (!g.busca(QStringLiteral("idCaja"), QStringLiteral("999901"))) estado.SkipWithError("no encontró la fila");
        QApplication::processEvents();
    }
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    std::unique_ptr<orv::Almacen> a;
    return CorreBancos(
        argc, argv,
        [&](const QString& destino, const QString&, const char* motor) {
            QElapsedTimer t;
            t.start();
            a = orv::Almacen::abre(destino);
            orv::actualizaEsquema(*a);
            orv::OpcionesGenerador o;
            o.articulos = 1000;
            o.filasCaja = 1000000;
            orv::generaAlmacenGrande(*a, o);
            std::fprintf(stderr, "%s: %lld filas de caja generadas en %.1f s\n", motor, o.filasCaja,
                         double(t.elapsed()) / 1000.0);
            orv::Almacen& almacen = *a;
            Mide("Grilla/PrimeraPaginaPintada/1M",
                 [&almacen](benchmark::State& s) { primeraPagina(s, almacen); });
            Mide("Grilla/BuscaCercaDelFinal/1M",
                 [&almacen](benchmark::State& s) { buscaCercaDelFinal(s, almacen); });
            Mide("Grilla/PrimeraBusquedaCercaDelFinal/1M",
                 [&almacen](benchmark::State& s) { primeraBusqueda(s, almacen); });
        },
        Motores::SoloSQLite);
}
