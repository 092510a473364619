#pragma once
// Esquema propio de un banco en el servidor PostgreSQL de pruebas (ORVANTA_PRUEBA_PG): se crea al
// pedirlo y se borra al salir, también si algo falla. Y el cuerpo de main de cada banco.

#include "store/almacen.h"
#include "store/aviso.h"

#include <QCoreApplication>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <functional>
#include <list>
#include <string>
#include <utility>
#include <QRandomGenerator>
#include <QUrl>
#include <QUrlQuery>

struct EsquemaPostgreSQL {
    QString servidor = qEnvironmentVariable("ORVANTA_PRUEBA_PG");
    QString nombre;
    bool hay() const { return !servidor.isEmpty(); }
    // Crea el esquema y devuelve el destino para Almacen::abre.
    QString crea() {
        nombre = QStringLiteral("banco_%1_%2")
                     .arg(QCoreApplication::applicationPid())
                     .arg(QRandomGenerator::global()->generate(), 0, 36);
        orv::Almacen::abrePostgreSQL(servidor)->ejecuta(QStringLiteral("CREATE SCHEMA ") + nombre);
        QUrl url(servidor);
        QUrlQuery q(url);
        q.addQueryItem(QStringLiteral("options"), QStringLiteral("-csearch_path=") + nombre);
        url.setQuery(q);
        return url.toString(QUrl::FullyEncoded);
    }
    ~EsquemaPostgreSQL() {
        if (nombre.isEmpty()) return;
        try {
            orv::Almacen::abrePostgreSQL(servidor)->ejecuta(QStringLiteral("DROP SCHEMA ") + nombre + QStringLiteral(" CASCADE"));
        } catch (const orv::ErrorAlmacen&) {
        }
    }
};

// Registra una medición en milisegundos de tiempo real, como las informan todos los bancos.
template <typename Medicion>
benchmark::internal::Benchmark* Mide(const std::string& nombre, Medicion medicion) {
    return benchmark::RegisterBenchmark(nombre.c_str(), std::move(medicion))->Unit(benchmark::kMillisecond)->UseRealTime();
}

// Carga un almacén (`carga`) y, en el servidor, lo deja como lo deja la limpieza automática con el
// tiempo: tablas analizadas y páginas marcadas como visibles para todos, lo que permite leer sólo
// el índice. La limpieza automática se apaga durante la carga: corriendo a la vez, dejaba en el
// catálogo cuentas viejas de páginas visibles y el planificador elegía otro camino en cada corrida.
// Y el servidor de pruebas confirma sin esperar al disco: mientras lo confirmado no esté asentado,
// la limpieza no marca sus páginas. Se confirma algo esperando, que asienta también la carga, y la
// limpieza espera a cada una de sus propias confirmaciones (que si no, las atrasan de nuevo).
inline void CargaComoDeUsoDiario(orv::Almacen& a, const std::function<void()>& carga) {
    if (!a.esPostgreSQL()) return carga();
    const auto limpiezaAutomatica = [&a](const char* estado) {
        QStringList tablas;
        QSqlQuery q = a.consulta(QStringLiteral("SELECT tablename FROM pg_tables WHERE schemaname = current_schema()"));
        while (q.next()) tablas << q.value(0).toString();
        for (const QString& t : tablas)
            a.ejecuta(QStringLiteral("ALTER TABLE ") + t + QStringLiteral(" SET (autovacuum_enabled = ") + QLatin1String(estado) +
                      QStringLiteral(")"));
    };
    limpiezaAutomatica("off");
    carga();
    a.ejecuta(QStringLiteral("SET synchronous_commit TO on"));
    a.ejecuta(QStringLiteral("CREATE TEMP TABLE AsientoDeCarga (x INTEGER)"));
    a.ejecuta(QStringLiteral("DROP TABLE AsientoDeCarga"));
    a.ejecuta(QStringLiteral("VACUUM ANALYZE"));
    a.ejecuta(QStringLiteral("RESET synchronous_commit"));
    limpiezaAutomatica("on");
}

enum class Motores { Ambos, SoloSQLite };

// El cuerpo de main de un banco (la aplicación Qt ya creada): `prepara(destino, carpeta, motor)`
// arma el almacén de cada motor y registra sus mediciones —SQLite en una carpeta temporal y, si hay
// servidor de pruebas, PostgreSQL en un esquema propio—; después se corren. Un error del almacén o
// un aviso se dicen y el programa sale con 1. `suelta` cierra lo que siga abierto antes de que se
// borre el esquema.
inline int CorreBancos(int& argc, char** argv,
                       const std::function<void(const QString& destino, const QString& carpeta, const char* motor)>& prepara,
                       Motores motores = Motores::Ambos, const std::function<void()>& suelta = {}) {
    benchmark::Initialize(&argc, argv);
    QTemporaryDir carpeta;
    if (!carpeta.isValid()) return 1;
    EsquemaPostgreSQL esquema;
    int salida = 0;
    try {
        prepara(carpeta.filePath(QStringLiteral("BASE.db")), carpeta.path(), "SQLite");
        if (motores == Motores::Ambos && esquema.hay()) prepara(esquema.crea(), carpeta.path(), "PostgreSQL");
        benchmark::RunSpecifiedBenchmarks();
    } catch (const orv::ErrorAlmacen& e) {
        std::fprintf(stderr, "Error del almacén: %s\n", qPrintable(e.descripcion()));
        salida = 1;
    } catch (const orv::Aviso& e) {
        std::fprintf(stderr, "%s\n", qPrintable(e.texto()));
        salida = 1;
    }
    if (suelta) suelta();
    benchmark::Shutdown();
    return salida;
}

// Lo mismo con un escenario por motor (su almacén y lo que mida): vive mientras corren sus
// mediciones y se suelta antes de que se borre el esquema.
template <typename Escenario>
int CorreEscenarios(int& argc, char** argv,
                    const std::function<void(Escenario& e, const QString& destino, const char* motor)>& prepara,
                    Motores motores = Motores::Ambos) {
    std::list<Escenario> escenarios;
    return CorreBancos(
        argc, argv,
        [&](const QString& destino, const QString&, const char* motor) { prepara(escenarios.emplace_back(), destino, motor); },
        motores, [&] { escenarios.clear(); });
}

