// Catálogo de 300 000 artículos en 300 rubros, en SQLite y en PostgreSQL: la grilla del panel de
// artículos hasta su primera página pintada, la búsqueda incremental por código y por código de
// proveedor a la mitad y cerca del final de la lista (una vuelta = una tecla) y del código leído a
// la línea del borrador. Cada medida va junto a las mismas órdenes SQL sueltas, su piso en el
// mismo motor.

#include "esquema_pg.h"
#include "escaneo.h"

#include "articles/consulta_articulos.h"
#include "maintenance/generador.h"
#include "sales/borrador.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "widgets/grilla.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QSqlQuery>
#include <QTableView>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <list>
#include <memory>

namespace {

constexpr qint64 kArticulos = 300000;
using banco::kTerminal;

struct Catalogo {
    std::unique_ptr<orv::Almacen> a;
    QString consulta;        // la del panel
    QString sinOrden;        // la misma sin su ORDER BY, para armar los pisos
    QString bytes;           // cómo compara el panel los códigos en este motor
    QStringList codigos;     // artículos a la mitad y cerca del final de la lista (50 %, 95 % y 99 %)
    QStringList proveedores; // sus códigos de proveedor
    QStringList escaneados;  // códigos que se leen en la venta
};

void primerasFilas(benchmark::State& estado, Catalogo& c) {
    for (auto _ : estado) {
        orv::Grilla g(*c.a);
        g.resize(1280, 800);
        banco::CuentaPintadas cuenta;
        g.tabla()->viewport()->installEventFilter(&cuenta);
        g.fijaConsulta(c.consulta);
        g.show();
        QElapsedTimer limite;
        limite.start();
        while (cuenta.pintadas == 0 && limite.elapsed() < 5000) QApplication::processEvents();
        if (cuenta.pintadas == 0) estado.SkipWithError("la tabla no se pintó");
        estado.PauseTiming();
        g.hide();
        QApplication::processEvents();
        estado.ResumeTiming();
    }
}

void primerasFilasPiso(benchmark::State& estado, Catalogo& c) {
    for (auto _ : estado) {
        QSqlQuery q = c.a->consulta(c.consulta + QStringLiteral(" LIMIT 256"));
        int n = 0;
        while (q.next()) n += q.value(0).isValid() ? 1 : 0;
        if (n != 256) estado.SkipWithError("faltan filas");
    }
}

// Las teclas de los textos, una por vuelta: "3", "30", "300", ... y el otro texto.
QString tecla(const QStringList& textos, qint64 vuelta) {
    qint64 total = 0;
    for (const QString& t : textos) total += t.size();
    qint64 i = vuelta % total;
    for (const QString& t : textos) {
        if (i < t.size()) return t.left(int(i + 1));
        i -= t.size();
    }
    return textos.first();
}

// Una grilla como la del panel, con su navegador, y el tiempo hasta que terminó de contar.
double grillaContada(orv::Grilla& g, Catalogo& c) {
    QElapsedTimer reloj;
    reloj.start();
    g.resize(1280, 800);
    g.muestraNavegador(true);
    g.fijaConsulta(c.consulta);
    g.show();
    while (!g.totalFilas() && reloj.elapsed() < 60000) QApplication::processEvents();
    return double(reloj.nsecsElapsed()) / 1e6;
}

void buscaPorTecla(benchmark::State& estado, Catalogo& c, const QString& campo, const QStringList& textos) {
    orv::Grilla g(*c.a);
    grillaContada(g, c);
    qint64 vuelta = 0;
    for (auto _ : estado) {
        const QString t = tecla(textos, vuelta++);
        if (!g.busca(campo, t)) estado.SkipWithError(qPrintable(QStringLiteral("no halló ") + t));
        QApplication::processEvents();
    }
}

// La primera búsqueda después de abrir el panel, cada vez en una grilla nueva: no hay búsqueda
// anterior desde la que contar, sólo las marcas. Aparte, cuánto tarda la grilla en terminar de contar
// (mientras tanto la pantalla sigue atendiendo: cuenta de a tramos).
void primeraTecla(benchmark::State& estado, Catalogo& c, const QString& campo, const QStringList& textos) {
    qint64 vuelta = 0;
    double contar = 0;
    for (auto _ : estado) {
        estado.PauseTiming();
        auto g = std::make_unique<orv::Grilla>(*c.a);
        contar += grillaContada(*g, c);
        // Cada vez otro comienzo de los códigos: cae en cualquier parte de la lista.
        const QString t = tecla(textos, vuelta++);
        estado.ResumeTiming();
        if (!g->busca(campo, t)) estado.SkipWithError(qPrintable(QStringLiteral("no halló ") + t));
        QApplication::processEvents();
    }
    estado.counters["ms_hasta_el_total"] = contar / double(std::max<qint64>(1, vuelta));
}

// Piso de una tecla: la primera coincidencia por el índice, cuántas filas hay antes y la página.
void buscaPorTeclaPiso(benchmark::State& estado, Catalogo& c, const QString& columna, const QStringList& textos) {
    const QString col = QStringLiteral("Articulos.") + columna + c.bytes;
    const QString primera = QStringLiteral("SELECT Articulos.Codigo FROM Articulos WHERE ") + col + QStringLiteral(" >= ? AND ") +
                            col + QStringLiteral(" < ? ORDER BY Articulos.Codigo") + c.bytes + QStringLiteral(" LIMIT 1");
    qint64 vuelta = 0;
    for (auto _ : estado) {
        const QString t = tecla(textos, vuelta++);
        const QString tope = t.left(t.size() - 1) + QChar(t.back().unicode() + 1);
        const QVariant codigo = c.a->valor(primera, {t, tope});
        const qint64 antes =
            c.a->valor(QStringLiteral("SELECT COUNT(*) FROM Articulos WHERE Codigo") + c.bytes + QStringLiteral(" < ?"), {codigo})
                .toLongLong();
        QSqlQuery p = c.a->consulta(c.sinOrden + QStringLiteral(" WHERE Articulos.Codigo") + c.bytes +
                                        QStringLiteral(" >= ? ORDER BY Codigo LIMIT 256"),
                                    {codigo});
        int n = 0;
        while (p.next()) ++n;
        benchmark::DoNotOptimize(antes + n);
    }
}

void prepara(Catalogo& c, const QString& destino, const char* motor) {
    QElapsedTimer reloj;
    reloj.start();
    c.a = orv::Almacen::abre(destino);
    orv::actualizaEsquema(*c.a);
    c.consulta = orv::ConsultaArticulosCompleta(*c.a);
    c.sinOrden = c.consulta.left(c.consulta.indexOf(QStringLiteral(" ORDER BY")));
    c.bytes = c.a->esPostgreSQL() ? QStringLiteral(" COLLATE \"C\"") : QString();
    orv::OpcionesGenerador o;
    o.articulos = kArticulos;
    o.rubros = 300;
    o.filasCaja = 1000;
    CargaComoDeUsoDiario(*c.a, [&] { orv::generaAlmacenGrande(*c.a, o); });
    for (qint64 lugar : {kArticulos / 2, kArticulos * 95 / 100, kArticulos * 99 / 100}) {
        QSqlQuery q = c.a->consulta(QStringLiteral("SELECT Codigo, CgoProveedor FROM Articulos ORDER BY Codigo") + c.bytes +
                                        QStringLiteral(" LIMIT 1 OFFSET ?"),
                                    {lugar});
        q.next();
        c.codigos << q.value(0).toString();
        c.proveedores << q.value(1).toString();
    }
    QSqlQuery q = c.a->consulta(QStringLiteral("SELECT Codigo FROM Articulos ORDER BY idArticulo LIMIT 1200 OFFSET 250000"));
    QStringList enBorrador;
    while (q.next()) (enBorrador.size() < 200 ? enBorrador : c.escaneados) << q.value(0).toString();
    q.finish();
    for (const QString& codigo : enBorrador)
        banco::agregaPorCodigo(*c.a, codigo);
    std::fprintf(stderr, "%s: %lld artículos en 300 rubros en %.1f s; se buscan %s y %s\n", motor,
                 c.a->valor(QStringLiteral("SELECT count(*) FROM Articulos")).toLongLong(), double(reloj.elapsed()) / 1000.0,
                 qPrintable(c.codigos.join(QStringLiteral(", "))), qPrintable(c.proveedores.join(QStringLiteral(", "))));
}

void registra(Catalogo& c, const QString& motor) {
    auto nombre = [&motor](const char* que) { return (QStringLiteral("Catalogo/") + QLatin1String(que) + u'/' + motor).toStdString(); };
    Mide(nombre("PrimerasFilasDelPanel"), [&c](benchmark::State& s) { primerasFilas(s, c); });
    Mide(nombre("PrimerasFilasDelPanel/Piso"), [&c](benchmark::State& s) { primerasFilasPiso(s, c); });
    Mide(nombre("BuscaCodigoPorTecla"),
         [&c](benchmark::State& s) { buscaPorTecla(s, c, QStringLiteral("Codigo"), c.codigos); });
    Mide(nombre("BuscaCodigoPorTecla/Piso"), [&c](benchmark::State& s) {
        buscaPorTeclaPiso(s, c, QStringLiteral("Codigo"), c.codigos);
    });
    Mide(nombre("PrimeraTeclaDelCodigo"),
         [&c](benchmark::State& s) { primeraTecla(s, c, QStringLiteral("Codigo"), c.codigos); });
    Mide(nombre("PrimeraTeclaDelCgoProveedor"),
         [&c](benchmark::State& s) { primeraTecla(s, c, QStringLiteral("CgoProveedor"), c.proveedores); });
    Mide(nombre("BuscaCgoProveedorPorTecla"), [&c](benchmark::State& s) {
        buscaPorTecla(s, c, QStringLiteral("CgoProveedor"), c.proveedores);
    });
    Mide(nombre("BuscaCgoProveedorPorTecla/Piso"), [&c](benchmark::State& s) {
        buscaPorTeclaPiso(s, c, QStringLiteral("CgoProveedor"), c.proveedores);
    });
    Mide(nombre("EscaneoALinea"), [&c](benchmark::State& s) { banco::escaneaALinea(s, *c.a, c.escaneados); });
    Mide(nombre("EscaneoALinea/Piso"), [&c](benchmark::State& s) { banco::escaneaALineaPiso(s, *c.a, c.escaneados); });
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    std::list<Catalogo> catalogos; // cada uno vive mientras corren sus mediciones
    return CorreBancos(
        argc, argv,
        [&](const QString& destino, const QString&, const char* motor) {
            prepara(catalogos.emplace_back(), destino, motor);
            registra(catalogos.back(), QString::fromLatin1(motor));
        },
        Motores::Ambos, [&] { catalogos.clear(); });
}
