// Importación de una planilla .xlsx de 100 000 artículos: la lectura del libro sola, la importación
// completa (lectura, conversión de cada celda, control de los códigos repetidos en una lectura por
// lote y escritura por lotes de 500 filas, cada lote en su transacción y cien filas por sentencia)
// y, al lado, los INSERT desnudos de las mismas filas ya leídas, uno por fila, en una transacción.
// SQLite y, si ORVANTA_PRUEBA_PG está definida, PostgreSQL.

#include "articles/importacion.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "esquema_pg.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>
#include <xlsxwriter.h>

namespace {

constexpr int kFilas = 100000;

// El libro se escribe fila por fila, como lo deja una exportación de otro sistema.
void escribeLibro(const QString& ruta) {
    lxw_workbook_options op = {};
    op.constant_memory = LXW_TRUE;
    lxw_workbook* libro = workbook_new_opt(ruta.toUtf8().constData(), &op);
    lxw_worksheet* hoja = workbook_add_worksheet(libro, "Hoja1");
    const char* titulos[] = {"Codigo", "Descripcion", "Costo", "Venta", "Stock"};
    for (int c = 0; c < 5; ++c) worksheet_write_string(hoja, 0, lxw_col_t(c), titulos[c], nullptr);
    for (int i = 1; i <= kFilas; ++i) {
        worksheet_write_string(hoja, lxw_row_t(i), 0, QStringLiteral("779%1").arg(i, 10, 10, QLatin1Char('0')).toUtf8().constData(), nullptr);
        worksheet_write_string(hoja, lxw_row_t(i), 1, QStringLiteral("Artículo de prueba número %1").arg(i).toUtf8().constData(), nullptr);
        worksheet_write_number(hoja, lxw_row_t(i), 2, 10.0 + i % 1000 / 100.0, nullptr);
        worksheet_write_number(hoja, lxw_row_t(i), 3, 15.0 + i % 1000 / 50.0, nullptr);
        worksheet_write_number(hoja, lxw_row_t(i), 4, i % 37, nullptr);
    }
    if (workbook_close(libro) != LXW_NO_ERROR) throw orv::Aviso(QStringLiteral("No se pudo escribir el libro del banco."));
}

struct Escenario {
    std::unique_ptr<orv::Almacen> a;
    QString libro;
};

orv::HojaLeida leeLibro(const QString& ruta) {
    auto p = orv::Planilla::abre(ruta);
    return orv::LeeHoja(*p, 0);
}

void vacia(benchmark::State& s, orv::Almacen& a) {
    s.PauseTiming();
    a.ejecuta(QStringLiteral("DELETE FROM Articulos"));
    s.ResumeTiming();
}

void lectura(benchmark::State& s, Escenario& e) {
    for (auto _ : s)
        if (leeLibro(e.libro).filas.size() != kFilas) s.SkipWithError("no se leyeron todas las filas");
}

void importa(benchmark::State& s, Escenario& e) {
    const QList<orv::Mapeo> mapa = {
        {orv::kMapeoColumna, QStringLiteral("Codigo"), QStringLiteral("Codigo"), QStringLiteral("0"), {}},
        {orv::kMapeoColumna, QStringLiteral("Descripcion"), QStringLiteral("Descripcion"), QStringLiteral("0"), {}},
        {orv::kMapeoColumna, QStringLiteral("Costo"), QStringLiteral("PrecioCosto"), QStringLiteral("0"), {}},
        {orv::kMapeoColumna, QStringLiteral("Venta"), QStringLiteral("PrecioVenta"), QStringLiteral("0"), {}},
        {orv::kMapeoColumna, QStringLiteral("Stock"), QStringLiteral("StockActual"), QStringLiteral("0"), {}},
        {orv::kMapeoFijo, QStringLiteral("1"), QStringLiteral("idRubro"), QStringLiteral("0"), {}}};
    for (auto _ : s) {
        vacia(s, *e.a);
        orv::Importacion imp(*e.a, orv::TablaDestino::Articulos, mapa, leeLibro(e.libro), QStringLiteral("21"));
        while (imp.avanza()) {
        }
        if (imp.importadas() != kFilas) s.SkipWithError("no entraron todas las filas");
    }
}

// Las mismas filas, ya leídas, con un INSERT preparado cada una y una sola transacción.
void piso(benchmark::State& s, Escenario& e) {
    const orv::HojaLeida hoja = leeLibro(e.libro);
    for (auto _ : s) {
        vacia(s, *e.a);
        orv::Transaccion t(*e.a);
        for (const orv::FilaPlanilla& f : hoja.filas)
            e.a->ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, PrecioCosto, PrecioVenta, StockActual, idRubro, "
                                        "PrecioFinal) VALUES (?, ?, ?, ?, ?, 1, ?)"),
                         {f.celdas[0].texto, f.celdas[1].texto, f.celdas[2].numero, f.celdas[3].numero, f.celdas[4].numero,
                          f.celdas[3].numero * 1.21});
        t.confirmar();
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir carpetaLibro;
    const QString libro = carpetaLibro.filePath(QStringLiteral("articulos.xlsx"));
    escribeLibro(libro);
    return CorreEscenarios<Escenario>(argc, argv, [&libro](Escenario& e, const QString& destino, const char* motor) {
        e.a = orv::Almacen::abre(destino);
        orv::actualizaEsquema(*e.a);
        e.libro = libro;
        std::fprintf(stderr, "%s: libro de 100 000 artículos\n", motor);
        const std::string n = std::string("Importa/Xlsx100000/") + motor;
        if (std::string(motor) == "SQLite") Mide("Importa/LecturaXlsx100000", [&e](benchmark::State& s) { lectura(s, e); })->Iterations(2);
        Mide(n, [&e](benchmark::State& s) { importa(s, e); })->Iterations(2);
        Mide(n + "/InsertsDesnudos", [&e](benchmark::State& s) { piso(s, e); })->Iterations(2);
    });
}
