// Del código leído a la línea en el borrador: búsqueda del artículo, escritura en TmpFac y
// totales, sobre 100 000 artículos y un borrador de 200 líneas (SQLite). Se mide la lógica, el
// manejador del panel "Vender" y, como piso, las mismas órdenes SQL sueltas.

#include "escaneo.h"
#include "esquema_pg.h"

#include "app/configuracion.h"
#include "app/estado.h"
#include "maintenance/generador.h"
#include "sales/borrador.h"
#include "sales/ui/panel_venta.h"
#include "store/actualizacion.h"
#include "store/almacen.h"

#include <QApplication>
#include <QLineEdit>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>

namespace {

using banco::kTerminal;

struct Escenario {
    orv::Almacen* a = nullptr;
    QStringList enBorrador; // 200 códigos ya cargados
    QStringList nuevos;     // códigos que se escanean
};

void sumaALinea(benchmark::State& estado, Escenario& e) {
    int i = 0;
    for (auto _ : estado) {
        const QString codigo = e.enBorrador.at(i++ % e.enBorrador.size());
        banco::agregaPorCodigo(*e.a, codigo);
        const orv::Totales t = orv::CalculaTotales(*e.a, kTerminal, 10, 21);
        benchmark::DoNotOptimize(t.total);
    }
}

void panel(benchmark::State& estado, Escenario& e, orv::PanelVenta& p) {
    auto* text7 = p.findChild<QLineEdit*>(QStringLiteral("Text7"));
    int i = 0;
    for (auto _ : estado) {
        text7->setText(e.nuevos.at(i++ % e.nuevos.size()));
        p.agregar(); // lo que hace el Enter del lector
        estado.PauseTiming();
        banco::recortaBorrador(*e.a);
        estado.ResumeTiming();
    }
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    QTemporaryDir carpeta;
    if (!carpeta.isValid()) return 1;
    try {
        auto a = orv::Almacen::abreSQLite(carpeta.filePath(QStringLiteral("BASE.db")));
        orv::actualizaEsquema(*a);
        orv::OpcionesGenerador o;
        o.articulos = 100000;
        o.filasCaja = 1000;
        orv::generaAlmacenGrande(*a, o);

        Escenario e;
        e.a = a.get();
        QSqlQuery q = a->consulta(QStringLiteral("SELECT Codigo FROM Articulos ORDER BY idArticulo LIMIT 1200 OFFSET 5000"));
        while (q.next()) (e.enBorrador.size() < 200 ? e.enBorrador : e.nuevos) << q.value(0).toString();
        q.finish();
        for (const QString& c : e.enBorrador)
            banco::agregaPorCodigo(*a, c);
        std::fprintf(stderr, "SQLite: 100 000 artículos, borrador de %lld líneas\n",
                     a->valor(QStringLiteral("SELECT count(*) FROM TmpFac")).toLongLong());

        const orv::Configuracion conf(carpeta.path(), carpeta.filePath(QStringLiteral("u.conf")));
        orv::EstadoAplicacion estado;
        estado.IdRed = kTerminal;
        estado.idUsuarioActual = 1;
        estado.idNivelActual = 1;
        orv::PanelVenta p(*a, estado, conf);
        p.resize(1280, 800);
        p.llenaTiposComprobante();
        p.llenaVendedores();
        p.llenaFormasPago();
        p.show();
        p.entra();
        QApplication::processEvents();

        Mide("Venta/EscaneoALinea/Logica", [&e](benchmark::State& s) { banco::escaneaALinea(s, *e.a, e.nuevos); });
        Mide("Venta/EscaneoSumaALinea/Logica", [&e](benchmark::State& s) { sumaALinea(s, e); });
        Mide("Venta/EscaneoALinea/Panel", [&e, &p](benchmark::State& s) { panel(s, e, p); });
        Mide("Venta/EscaneoALinea/SQLSuelto", [&e](benchmark::State& s) { banco::escaneaALineaPiso(s, *e.a, e.nuevos); });
        benchmark::RunSpecifiedBenchmarks();
    } catch (const orv::ErrorAlmacen& e) {
        std::fprintf(stderr, "Error del almacén: %s\n", qPrintable(e.descripcion()));
        return 1;
    }
    return 0;
}
