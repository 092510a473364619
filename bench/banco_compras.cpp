// Registro de una compra de 200 líneas al contado, con stock, costos, caja y cuenta del proveedor,
// sobre 100 000 artículos: la lógica completa en su transacción y, como piso, las mismas escrituras
// en conjunto, sin lecturas ni controles. SQLite y, si ORVANTA_PRUEBA_PG está definida, PostgreSQL.

#include "maintenance/generador.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "suppliers/compras.h"
#include "esquema_pg.h"

#include <QCoreApplication>
#include <QSqlQuery>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

namespace {

constexpr qint32 kTerminal = 1;
constexpr int kLineas = 200;

struct Escenario {
    std::unique_ptr<orv::Almacen> a;
    QList<qint64> articulos;
    qint64 proveedor = 0;
    qint64 efectivo = 0;
    qint64 cuenta = 0;
};

// El borrador de la terminal, con 200 artículos distintos en cada vuelta.
void cargaBorrador(Escenario& e, int vuelta) {
    orv::Transaccion t(*e.a);
    e.a->ejecuta(QStringLiteral("DELETE FROM TmpFacCompra WHERE PCRed = ?"), {kTerminal});
    for (int i = 0; i < kLineas; ++i)
        e.a->ejecuta(QStringLiteral("INSERT INTO TmpFacCompra (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                    "VALUES (?, 'X', 'Artículo', 6, 95.5, 573, ?)"),
                     {e.articulos.at((vuelta * kLineas + i) % e.articulos.size()), kTerminal});
    t.confirmar();
}

orv::DatosCompra datos(const Escenario& e, int vuelta) {
    orv::DatosCompra d;
    d.idRed = kTerminal;
    d.idUsuario = 1;
    d.idProveedor = e.proveedor;
    d.nombreProveedor = QStringLiteral("Distribuidora Norte");
    d.letra = QStringLiteral("A");
    d.sucursal = QStringLiteral("1");
    d.numero = QString::number(vuelta + 1);
    d.fecha = QDate(2026, 11, 23);
    d.idFormaPago = e.efectivo;
    d.formaPago = QStringLiteral("EFVO");
    d.idCuenta = e.cuenta;
    d.alicuota = QStringLiteral("21");
    d.registraCaja = d.registraStock = d.asignaCostos = true;
    return d;
}

void registro(benchmark::State& s, Escenario& e) {
    static int vuelta = 0; // un número de documento nuevo en cada vuelta, también entre mediciones
    for (auto _ : s) {
        s.PauseTiming();
        cargaBorrador(e, vuelta);
        const orv::DatosCompra d = datos(e, vuelta++);
        s.ResumeTiming();
        benchmark::DoNotOptimize(orv::RegistraCompra(*e.a, d).idCompra);
    }
}

// El piso: las escrituras de la compra, una sentencia por tabla, sin revisar nada.
void piso(benchmark::State& s, Escenario& e) {
    orv::Almacen& a = *e.a;
    int vuelta = 0;
    for (auto _ : s) {
        s.PauseTiming();
        cargaBorrador(e, vuelta++);
        s.ResumeTiming();
        orv::Transaccion t(a);
        const qint64 id = a.inserta(QStringLiteral("INSERT INTO Compras (idProveedor, Fecha, Total) VALUES (?, '2026-11-23', 138666)"),
                                    {e.proveedor}, QStringLiteral("idCompra"));
        a.ejecuta(QStringLiteral("INSERT INTO DetCompras (idCompra, idProveedor, idArticulo, Cantidad, PrecioUnitario, SubTotal) "
                                 "SELECT ?, ?, idArticulo, Cantidad, Unitario, SubTotal FROM TmpFacCompra WHERE PCRed = ?"),
                  {id, e.proveedor, kTerminal});
        a.ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = COALESCE(StockActual, 0) + s.c, PrecioCosto = s.u, "
                                 "UltimaFechaCompra = '2026-11-23' FROM (SELECT idArticulo, SUM(Cantidad) AS c, MAX(Unitario) AS u "
                                 "FROM TmpFacCompra WHERE PCRed = ? GROUP BY idArticulo) AS s WHERE Articulos.idArticulo = s.idArticulo"),
                  {kTerminal});
        a.ejecuta(QStringLiteral("INSERT INTO MovimientoStock (idArticulo, Fecha, idTipoMovimiento, idComprobante, Ingreso) "
                                 "SELECT idArticulo, '2026-11-23', 1, ?, Cantidad FROM TmpFacCompra WHERE PCRed = ?"),
                  {id, kTerminal});
        a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, Egreso) VALUES (?, ?, 138666)"), {e.cuenta, id});
        a.ejecuta(QStringLiteral("INSERT INTO CtaProve (idProveedor, idCompra, Debe, Haber) VALUES (?, ?, 138666, 0), (?, ?, 0, 138666)"),
                  {e.proveedor, id, e.proveedor, id});
        t.confirmar();
    }
}

void prepara(Escenario& e, const QString& destino, const char* motor) {
    e.a = orv::Almacen::abre(destino);
    orv::actualizaEsquema(*e.a);
    orv::OpcionesGenerador o;
    o.articulos = 100000;
    o.filasCaja = 1000;
    orv::generaAlmacenGrande(*e.a, o);
    e.proveedor = e.a->inserta(QStringLiteral("INSERT INTO Proveedores (Nombre, RazonSocial) VALUES ('Ana', 'Distribuidora Norte')"),
                               {}, QStringLiteral("idProveedor"));
    e.efectivo = e.a->valor(QStringLiteral("SELECT idTipoFormaPago FROM FormasDePago WHERE FormaPago = 'EFVO'")).toLongLong();
    e.cuenta = e.a->valor(QStringLiteral("SELECT idCuenta FROM Cuentas WHERE Cuenta = 'Pago a Proveedores'")).toLongLong();
    QSqlQuery q = e.a->consulta(QStringLiteral("SELECT idArticulo FROM Articulos ORDER BY idArticulo LIMIT 20000 OFFSET 20000"));
    while (q.next()) e.articulos << q.value(0).toLongLong();
    std::fprintf(stderr, "%s: 100 000 artículos, compras de %d líneas\n", motor, kLineas);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    return CorreEscenarios<Escenario>(argc, argv, [](Escenario& e, const QString& destino, const char* motor) {
        prepara(e, destino, motor);
        const std::string n = std::string("Compra/200Lineas/") + motor;
        Mide(n, [&e](benchmark::State& s) { registro(s, e); });
        Mide(n + "/EnConjunto", [&e](benchmark::State& s) { piso(s, e); });
    });
}
