// La situación de la empresa y el histórico de un cliente sobre un almacén de 1 000 000 de
// comprobantes (dos líneas cada uno) y 1 000 000 de filas de caja, 300 por día (algo más de nueve
// años): la página de un año, por mes y por día, y los comprobantes de un cliente con 10 000 de
// ellos con sus dos totales. Al lado de cada uno, las sentencias desnudas que leen lo mismo sin las
// notas de crédito ni lo comercial (la situación) o sin la vista (el histórico), como piso.
// SQLite y, si ORVANTA_PRUEBA_PG está definida, PostgreSQL.

#include "cash/situacion.h"
#include "customers/historico.h"
#include "maintenance/generador.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "esquema_pg.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

namespace {

const QDate kHasta(2026, 11, 23);
const QDate kDesdeAnio = kHasta.addYears(-1).addDays(1);
constexpr qint64 kMillon = 1000000;

struct Escenario {
    std::unique_ptr<orv::Almacen> a;
    qint64 cliente = 0;
};

// Lee todas las filas de una consulta; devuelve cuántas.
int leeTodo(QSqlQuery q) {
    int n = 0;
    while (q.next()) ++n;
    return n;
}

void situacion(benchmark::State& s, Escenario& e, orv::Agrupacion g) {
    for (auto _ : s) {
        const orv::Situacion r = orv::LeeSituacion(*e.a, g, kDesdeAnio, kHasta);
        if (r.rubros.isEmpty() || r.movimientos.isEmpty()) s.SkipWithError("la página salió vacía");
    }
}

// Las sentencias de siempre, una por cifra: la caja, la mercadería, ingresos y gastos por mes por
// separado, la venta por rubro de todas las líneas y las dos deudas.
void situacionDesnuda(benchmark::State& s, Escenario& e) {
    const QString mes = e.a->esPostgreSQL() ? QStringLiteral("EXTRACT(MONTH FROM Fecha)") : QStringLiteral("substr(Fecha, 6, 2)");
    const QString sentencias[] = {
        QStringLiteral("SELECT sum(Ingreso) - sum(Egreso) FROM Caja"),
        QStringLiteral("SELECT sum(PrecioCosto * StockActual) FROM Articulos"),
        QStringLiteral("SELECT ") + mes + QStringLiteral(", sum(Ingreso) FROM Caja WHERE substr(Detalles, 1, 7) = 'VENTA :' "
                                                          "AND Fecha >= ? AND Fecha <= ? GROUP BY ") + mes,
        QStringLiteral("SELECT ") + mes + QStringLiteral(", sum(Egreso) FROM Caja WHERE Fecha >= ? AND Fecha <= ? GROUP BY ") + mes,
        QStringLiteral("SELECT Rubros.Rubro, Sum(DetalleComprobantes.SubTotal) FROM (DetalleComprobantes INNER JOIN Articulos "
                       "ON DetalleComprobantes.idArticulo = Articulos.idArticulo) INNER JOIN Rubros ON Articulos.idRubro = "
                       "Rubros.idRubro WHERE DetalleComprobantes.Fecha >= ? AND DetalleComprobantes.Fecha <= ? GROUP BY Rubros.Rubro"),
        QStringLiteral("SELECT sum(Comision) - sum(Liquidacion) FROM Comisiones"),
        QStringLiteral("SELECT sum(Debe) - sum(Haber) FROM CtaProve"),
    };
    for (auto _ : s) {
        int n = 0;
        for (const QString& q : sentencias)
            n += leeTodo(e.a->consulta(q, q.contains(u'?') ? QVariantList{kDesdeAnio, kHasta} : QVariantList{}));
        benchmark::DoNotOptimize(n);
    }
}

// Todos los comprobantes del cliente (toda la grilla, no sólo su primera página) y los dos totales.
void historico(benchmark::State& s, Escenario& e) {
    const QDate desde(2000, 1, 1);
    for (auto _ : s) {
        const orv::ConsultaConParametros c = orv::ConsultaHistoricoCliente(e.cliente, desde, kHasta);
        const int n = leeTodo(e.a->consulta(c.sql, c.parametros));
        const orv::TotalesHistorico t = orv::TotalesHistoricoCliente(*e.a, e.cliente, desde, kHasta);
        if (n != 10000 || t.comerciales.esCero()) s.SkipWithError("el cliente no tiene sus 10 000 comprobantes");
    }
}

void historicoDesnudo(benchmark::State& s, Escenario& e) {
    const QDate desde(2000, 1, 1);
    for (auto _ : s) {
        int n = leeTodo(e.a->consulta(QStringLiteral("SELECT * FROM Comprobantes WHERE idVendedor = ? AND Fecha >= ? AND Fecha <= ? "
                                                     "ORDER BY Fecha"),
                                      {e.cliente, desde, kHasta}));
        n += leeTodo(e.a->consulta(QStringLiteral("SELECT SUM(Total) FROM Comprobantes WHERE EsComercial <> 0 AND idVendedor = ? "
                                                  "AND Fecha >= ? AND Fecha <= ?"),
                                   {e.cliente, desde, kHasta}));
        benchmark::DoNotOptimize(n);
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    return CorreEscenarios<Escenario>(argc, argv, [](Escenario& e, const QString& destino, const char* motor) {
        QElapsedTimer t;
        t.start();
        e.a = orv::Almacen::abre(destino);
        orv::actualizaEsquema(*e.a);
        orv::OpcionesGenerador o;
        o.articulos = 100000;
        o.filasCaja = kMillon;
        o.filasCajaPorDia = 300;
        o.clientes = 2000;
        o.comprobantes = kMillon;
        o.comprobantesPorDia = 300;
        o.comprobantesClienteGrande = 10000;
        o.hasta = kHasta;
        orv::ResumenGeneracion r;
        CargaComoDeUsoDiario(*e.a, [&] { r = orv::generaAlmacenGrande(*e.a, o); });
        e.cliente = r.idClienteGrande;
        std::fprintf(stderr, "%s: %lld comprobantes y %lld filas de caja generados en %.1f s\n", motor, r.comprobantes, r.filasCaja,
                     double(t.elapsed()) / 1000.0);
        const std::string n = std::string("Situacion/") + motor;
        Mide(n + "/UnAnioPorMes", [&e](benchmark::State& s) { situacion(s, e, orv::Agrupacion::Mensual); })->Iterations(7);
        Mide(n + "/UnAnioPorDia", [&e](benchmark::State& s) { situacion(s, e, orv::Agrupacion::Diario); })->Iterations(7);
        Mide(n + "/UnAnioPorMes/SentenciasDesnudas", [&e](benchmark::State& s) { situacionDesnuda(s, e); })->Iterations(7);
        const std::string h = std::string("Historico/") + motor;
        Mide(h + "/Cliente10000", [&e](benchmark::State& s) { historico(s, e); })->Iterations(15);
        Mide(h + "/Cliente10000/SentenciaDesnuda", [&e](benchmark::State& s) { historicoDesnudo(s, e); })->Iterations(15);
    });
}
