// Respaldo de un almacén SQLite de 1 GB: la copia en línea completa (una sola lectura, página por
// página, en su hilo, más la configuración) y, al lado, la copia simple del mismo archivo, que no
// sería coherente con el almacén en uso pero marca lo que cuesta mover esos bytes.

#include "app/configuracion.h"
#include "maintenance/respaldo.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "esquema_pg.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

namespace {

struct Escenario {
    std::unique_ptr<orv::Almacen> a;
    std::unique_ptr<orv::Configuracion> conf;
    QString carpeta;
};

// Un almacén de 1 GB hecho por conjuntos: el diario de stock con filas de unos 250 bytes.
void llena(orv::Almacen& a) {
    constexpr qint64 kObjetivo = 1024LL * 1024 * 1024;
    int tanda = 0;
    while (QFileInfo(a.descripcion()).size() + QFileInfo(a.descripcion() + QStringLiteral("-wal")).size() < kObjetivo) {
        orv::Transaccion t(a);
        a.ejecuta(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 500000) "
                                 "INSERT INTO MovimientoStock (idArticulo, Fecha, Ingreso, Egreso, Observaciones) "
                                 "SELECT i % 3000 + 1, date('2024-01-01', '+' || (i % 365) || ' days'), i % 7, 0, "
                                 "printf('tanda %d movimiento %0200d', ?, i) FROM n"),
                  {++tanda});
        t.confirmar();
        a.valor(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    }
}

void respaldo(benchmark::State& s, Escenario& e) {
    const QDir destino(e.carpeta + QStringLiteral("/respaldos"));
    QDir().mkpath(destino.path());
    int vuelta = 0;
    for (auto _ : s) {
        const QDateTime momento = QDateTime(QDate(2024, 6, 14), QTime(18, 0)).addSecs(vuelta++);
        const orv::ResultadoRespaldo r = orv::HaceRespaldo(*e.a, *e.conf, destino.path(), momento);
        s.PauseTiming();
        s.counters["MB"] = double(r.bytes) / (1024.0 * 1024.0);
        QFile::remove(r.almacen);
        QFile::remove(r.configuracion);
        s.ResumeTiming();
    }
}

void copiaDeArchivo(benchmark::State& s, Escenario& e) {
    const QString copia = e.carpeta + QStringLiteral("/copia.db");
    for (auto _ : s) {
        if (!QFile::copy(e.a->descripcion(), copia)) s.SkipWithError("no se pudo copiar");
        s.PauseTiming();
        QFile::remove(copia);
        s.ResumeTiming();
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    Escenario e;
    return CorreBancos(
        argc, argv,
        [&e](const QString& destino, const QString& carpeta, const char* motor) {
            e.carpeta = carpeta;
            e.a = orv::Almacen::abre(destino);
            orv::actualizaEsquema(*e.a);
            e.conf = std::make_unique<orv::Configuracion>(carpeta, carpeta + QStringLiteral("/usuario.ini"));
            e.conf->graba(orv::clave::miscelaneas, QStringLiteral("IdRed"), QStringLiteral("1"));
            llena(*e.a);
            std::fprintf(stderr, "%s: %lld MB\n", motor, QFileInfo(destino).size() / (1024 * 1024));
            const std::string n = std::string("Respaldo/Almacen1GB/") + motor;
            Mide(n, [&e](benchmark::State& s) { respaldo(s, e); })->Iterations(1);
            Mide(n + "/CopiaDeArchivo", [&e](benchmark::State& s) { copiaDeArchivo(s, e); })->Iterations(1);
        },
        Motores::SoloSQLite, [&e] { e.a.reset(); });
}
