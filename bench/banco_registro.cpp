// Registro de una venta de contado de 50 líneas sobre 100 000 artículos: la lógica completa en su
// transacción y, como piso, las mismas escrituras en conjunto (y, al lado, una sentencia por línea);
// en PostgreSQL, además, cuatro terminales vendiendo a la vez. SQLite y, si ORVANTA_PRUEBA_PG está
// definida, PostgreSQL.

#include "maintenance/generador.h"
#include "sales/registro.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "esquema_pg.h"

#include <QCoreApplication>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace {

constexpr qint32 kTerminal = 1;
constexpr int kLineas = 50;

struct Escenario {
    std::unique_ptr<orv::Almacen> a;
    QList<qint64> articulos;
};

void cargaBorrador(Escenario& e, int vuelta) {
    orv::Transaccion t(*e.a);
    for (int i = 0; i < kLineas; ++i) {
        const qint64 art = e.articulos.at((vuelta * kLineas + i) % e.articulos.size());
        e.a->ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                    "VALUES (?, 'X', 'Artículo', 1, 100, 100, ?)"),
                     {art, kTerminal});
    }
    t.confirmar();
}

orv::DatosRegistro datos() {
    orv::DatosRegistro d;
    d.idRed = kTerminal;
    d.idUsuario = 1;
    d.idTipoComprobante = 1; // FACTURA B: stock y caja
    d.idVendio = 1;
    d.subTotal = orv::Dinero(5000);
    d.neto = orv::Dinero(4132, 2314);
    d.importeIva = orv::Dinero(867, 7686);
    d.total = orv::Dinero(5000);
    d.hoy = QDate(2026, 11, 23);
    return d;
}

void registro(benchmark::State& s, Escenario& e) {
    int vuelta = 0;
    for (auto _ : s) {
        s.PauseTiming();
        cargaBorrador(e, vuelta++);
        s.ResumeTiming();
        benchmark::DoNotOptimize(orv::RegistraComprobante(*e.a, datos(), orv::Ruta::Plantilla).numero);
    }
}

// Los pisos: las escrituras del registro sin sus lecturas ni decisiones (número, cabecera, las
// líneas con su stock y movimiento, caja y el borrador vacío), con las líneas escritas por `lineas`.
void piso(benchmark::State& s, Escenario& e, const std::function<void(orv::Almacen&, qint64)>& lineas) {
    int vuelta = 0;
    orv::Almacen& a = *e.a;
    for (auto _ : s) {
        s.PauseTiming();
        cargaBorrador(e, vuelta++);
        s.ResumeTiming();
        orv::Transaccion t(a);
        const QVariant n = a.valor(QStringLiteral("UPDATE TiposDeComprobantes SET Correlativo = Correlativo + 1 "
                                                  "WHERE idTipoComprobante = 1 RETURNING Correlativo"));
        const qint64 id = a.inserta(QStringLiteral("INSERT INTO Comprobantes (Factura, idTipoComprobante, Fecha, Total) VALUES (?, 1, ?, 5000)"),
                                    {n, QDate(2026, 11, 23)}, QStringLiteral("idComprobante"));
        lineas(a, id);
        a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, Ingreso) VALUES (1, ?, 5000)"), {id});
        a.ejecuta(QStringLiteral("DELETE FROM TmpFac WHERE PCRed = ?"), {kTerminal});
        t.confirmar();
    }
}

// Una sentencia por línea y por tabla, como se registraba antes.
void lineasSueltas(orv::Almacen& a, qint64 id) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idArticulo, Cantidad, Unitario, SubTotal FROM TmpFac WHERE PCRed = ?"), {kTerminal});
    QList<QVariantList> filas;
    while (q.next()) filas << QVariantList{q.value(0), q.value(1), q.value(2), q.value(3)};
    q.finish();
    for (const QVariantList& f : filas) {
        a.ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, Unitario, SubTotal) VALUES (?, ?, ?, ?, ?)"),
                  {id, f[0], f[1], f[2], f[3]});
        a.ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = COALESCE(StockActual, 0) - ? WHERE idArticulo = ?"), {f[1], f[0]});
        a.ejecuta(QStringLiteral("INSERT INTO MovimientoStock (idArticulo, idComprobante, Egreso) VALUES (?, ?, ?)"), {f[0], id, f[1]});
    }
}

// El piso de hoy: una sentencia por tabla sea cual sea el largo de la venta.
void lineasEnConjunto(orv::Almacen& a, qint64 id) {
    a.ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, Unitario, SubTotal) "
                             "SELECT ?, idArticulo, Cantidad, Unitario, SubTotal FROM TmpFac WHERE PCRed = ? ORDER BY idTmpFac"),
              {id, kTerminal});
    a.ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = COALESCE(StockActual, 0) - s.c FROM (SELECT idArticulo, "
                             "SUM(Cantidad) AS c FROM TmpFac WHERE PCRed = ? GROUP BY idArticulo) AS s "
                             "WHERE Articulos.idArticulo = s.idArticulo"),
              {kTerminal});
    a.ejecuta(QStringLiteral("INSERT INTO MovimientoStock (idArticulo, idComprobante, Egreso) "
                             "SELECT idArticulo, ?, Cantidad FROM TmpFac WHERE PCRed = ? ORDER BY idTmpFac"),
              {id, kTerminal});
}

// Cuatro terminales registran 100 ventas de 50 líneas cada una a la vez, todas del mismo tipo y
// sobre artículos en parte comunes. Informa ventas por segundo; falla si se repite un número o el
// stock no cierra.
void cuatroTerminales(benchmark::State& s, Escenario& e, const QString& destino) {
    constexpr int kTerminales = 4, kVentas = 100;
    for (auto _ : s) {
        s.PauseTiming();
        const QVariant stockAntes = e.a->valor(QStringLiteral("SELECT SUM(StockActual) FROM Articulos"));
        const QVariant ventasAntes = e.a->valor(QStringLiteral("SELECT count(*) FROM Comprobantes"));
        std::atomic<int> fallas{0};
        s.ResumeTiming();
        std::vector<std::thread> hilos;
        for (int n = 0; n < kTerminales; ++n)
            hilos.emplace_back([&, n] {
                try {
                    // Cada terminal, su conexión, abierta en su propio hilo.
                    const auto conexion = orv::Almacen::abre(destino);
                    orv::Almacen& a = *conexion;
                    for (int v = 0; v < kVentas; ++v) {
                        orv::Transaccion t(a);
                        for (int i = 0; i < kLineas; ++i)
                            a.ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                                     "VALUES (?, 'X', 'Artículo', 1, 100, 100, ?)"),
                                      {e.articulos.at((v * 7 + i * 13 + n) % e.articulos.size()), 100 + n});
                        t.confirmar();
                        orv::DatosRegistro d = datos();
                        d.idRed = 100 + n;
                        orv::RegistraComprobante(a, d, orv::Ruta::Nada);
                    }
                } catch (...) {
                    ++fallas;
                }
            });
        for (auto& h : hilos) h.join();
        s.PauseTiming();
        const qint64 ventas = e.a->valor(QStringLiteral("SELECT count(*) FROM Comprobantes")).toLongLong() - ventasAntes.toLongLong();
        const qint64 distintas = e.a->valor(QStringLiteral("SELECT count(DISTINCT Factura) FROM Comprobantes")).toLongLong();
        const double bajo = stockAntes.toDouble() - e.a->valor(QStringLiteral("SELECT SUM(StockActual) FROM Articulos")).toDouble();
        if (fallas.load() || ventas != kTerminales * kVentas ||
            distintas != e.a->valor(QStringLiteral("SELECT count(*) FROM Comprobantes")).toLongLong() ||
            bajo != double(kTerminales * kVentas * kLineas))
            s.SkipWithError("números repetidos, ventas perdidas o stock que no cierra");
        s.ResumeTiming();
    }
    s.counters["ventas_por_segundo"] =
        benchmark::Counter(double(kTerminales * kVentas) * double(s.iterations()), benchmark::Counter::kIsRate);
}

void prepara(Escenario& e, const QString& destino, const char* motor) {
    e.a = orv::Almacen::abre(destino);
    orv::actualizaEsquema(*e.a);
    orv::OpcionesGenerador o;
    o.articulos = 100000;
    o.filasCaja = 1000;
    orv::generaAlmacenGrande(*e.a, o);
    QSqlQuery q = e.a->consulta(QStringLiteral("SELECT idArticulo FROM Articulos ORDER BY idArticulo LIMIT 5000 OFFSET 20000"));
    while (q.next()) e.articulos << q.value(0).toLongLong();
    std::fprintf(stderr, "%s: 100 000 artículos, ventas de %d líneas\n", motor, kLineas);
}

void registra(Escenario& e, const QString& destino, const std::string& motor) {
    const std::string n = "Registro/Venta50Lineas/" + motor;
    Mide(n, [&e](benchmark::State& s) { registro(s, e); });
    Mide(n + "/SentenciasSueltas", [&e](benchmark::State& s) { piso(s, e, lineasSueltas); });
    Mide(n + "/EnConjunto", [&e](benchmark::State& s) { piso(s, e, lineasEnConjunto); });
    if (motor == "PostgreSQL")
        Mide("Registro/CuatroTerminalesPor100Ventas/PostgreSQL",
             [&e, destino](benchmark::State& s) { cuatroTerminales(s, e, destino); })
            ->Iterations(1)
            ->Repetitions(3);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    return CorreEscenarios<Escenario>(argc, argv, [](Escenario& e, const QString& destino, const char* motor) {
        prepara(e, destino, motor);
        registra(e, destino, motor);
    });
}
