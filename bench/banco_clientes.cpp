// Cuentas de clientes: la pantalla de la cuenta de un cliente con 100 000 líneas (su saldo y la
// primera página de la grilla, contra la sentencia desnuda de esa página) y el informe de saldos
// de 10 000 clientes a PDF. En SQLite y, si ORVANTA_PRUEBA_PG está definida, en PostgreSQL.

#include "customers/cuenta.h"
#include "maintenance/generador.h"
#include "reports/catalogo.h"
#include "reports/informe.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "store/aviso.h"
#include "widgets/grilla.h"
#include "esquema_pg.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

const QDate kHoy(2026, 11, 23);
const QString kMascara = QStringLiteral("###,###,##0.00");

qint64 genera(orv::Almacen& a, const char* motor) {
    QElapsedTimer t;
    t.start();
    orv::actualizaEsquema(a);
    orv::OpcionesGenerador o;
    o.articulos = 0;
    o.filasCaja = 0;
    o.clientes = 10000;
    o.lineasClienteGrande = 100000;
    o.hasta = kHoy;
    const orv::ResumenGeneracion r = orv::generaAlmacenGrande(a, o);
    std::fprintf(stderr, "%s: %lld clientes y una cuenta de %lld líneas en %.1f s\n", motor, o.clientes,
                 o.lineasClienteGrande, double(t.elapsed()) / 1000.0);
    return r.idClienteGrande;
}

// Lo que hace la pantalla al abrirse: el saldo y la primera página de las líneas.
void pantallaCuenta(benchmark::State& estado, orv::Almacen& a, qint64 id) {
    for (auto _ : estado) {
        const orv::Dinero saldo = orv::SaldoCliente(a, id);
        orv::ModeloGrilla m;
        const orv::ConsultaConParametros c = orv::ConsultaLineasCuenta(id);
        m.abre(a, c.sql, c.parametros);
        benchmark::DoNotOptimize(saldo);
        if (m.rowCount() != orv::ModeloGrilla::kPagina) estado.SkipWithError("la primera página no vino entera");
    }
}

// La misma página leída con la sentencia desnuda sobre la tabla, sin vista ni modelo.
void sentenciaDesnuda(benchmark::State& estado, orv::Almacen& a, qint64 id) {
    for (auto _ : estado) {
        QSqlQuery q = a.consulta(QStringLiteral("SELECT Fecha, Tipo, Comision, Liquidacion, idCuentaVendedor FROM Comisiones "
                                                "WHERE idVendedor = ? ORDER BY Fecha, idCuentaVendedor LIMIT 256"),
                                 {id});
        int filas = 0;
        while (q.next()) ++filas;
        benchmark::DoNotOptimize(filas);
    }
}

void saldosPdf(benchmark::State& estado, orv::Almacen& a, const QString& carpeta) {
    const orv::DefinicionInforme d = orv::LeeDefinicion(orv::BuscaDefinicion(QStringLiteral("saldotodosclientes.rpt"), QString()));
    const orv::Seleccion s = orv::SeleccionUsual(QStringLiteral("saldotodosclientes.rpt"), kHoy, kHoy);
    for (auto _ : estado) {
        const int paginas = orv::GuardaInforme(a, d, s, kMascara, QDateTime(kHoy, QTime(9, 0)), carpeta + QStringLiteral("/saldos.pdf"));
        benchmark::DoNotOptimize(paginas);
    }
}

// Sólo el armado (consulta y HTML), sin dibujar páginas.
void saldosArmado(benchmark::State& estado, orv::Almacen& a) {
    const orv::DefinicionInforme d = orv::LeeDefinicion(orv::BuscaDefinicion(QStringLiteral("saldotodosclientes.rpt"), QString()));
    const orv::Seleccion s = orv::SeleccionUsual(QStringLiteral("saldotodosclientes.rpt"), kHoy, kHoy);
    for (auto _ : estado) {
        const orv::InformeArmado inf = orv::ArmaInforme(a, d, s, kMascara, QDateTime(kHoy, QTime(9, 0)));
        benchmark::DoNotOptimize(inf.filas);
    }
}

void registra(const std::string& motor, orv::Almacen& a, qint64 id, const QString& carpeta) {
    Mide("CuentaCliente/SaldoYPrimeraPagina/100k/" + motor,
         [&a, id](benchmark::State& s) { pantallaCuenta(s, a, id); });
    Mide("CuentaCliente/SentenciaDesnuda/100k/" + motor,
         [&a, id](benchmark::State& s) { sentenciaDesnuda(s, a, id); });
    Mide("SaldosClientes/PDF/10k/" + motor,
         [&a, carpeta](benchmark::State& s) { saldosPdf(s, a, carpeta); })
        ->Iterations(3);
    Mide("SaldosClientes/Armado/10k/" + motor,
         [&a](benchmark::State& s) { saldosArmado(s, a); })
        ->Iterations(3);
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    std::vector<std::unique_ptr<orv::Almacen>> almacenes;
    return CorreBancos(argc, argv, [&](const QString& destino, const QString& carpeta, const char* motor) {
        almacenes.push_back(orv::Almacen::abre(destino));
        const qint64 id = genera(*almacenes.back(), motor);
        registra(motor, *almacenes.back(), id, carpeta);
    });
}
