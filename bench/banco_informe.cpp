// Informes a PDF: la lista de comprobantes de un mes con 10 000 comprobantes y un comprobante de
// 20 líneas en sus dos plantillas (SQLite). Se mide también el armado solo, sin dibujar páginas.

#include "reports/catalogo.h"
#include "reports/informe.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "store/aviso.h"
#include "esquema_pg.h"

#include <QDir>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

namespace {

const QDateTime kAhora(QDate(2026, 12, 1), QTime(9, 0));
const QString kMascara = QStringLiteral("###,###,##0.00");

// 10 000 comprobantes comerciales en noviembre, de 40 clientes, en una sola sentencia.
void cargaMes(orv::Almacen& a) {
    orv::Transaccion t(a);
    a.ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, EsComercial) VALUES ('FACTURA B', 'B', '0001', 1)"));
    a.ejecuta(QStringLiteral(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) "
        "INSERT INTO Comprobantes (Factura, idTipoComprobante, idVendedor, Fecha, Nombre, FormaPago, SubTotal, "
        "MontDescuento, ImporteNeto, ImporteIVA, Total, EsComercial) "
        "SELECT 'B0001-' || substr('0000000' || i, -8, 8), 1, 1, date('2026-11-01', '+' || (i % 30) || ' days'), "
        "'Cliente ' || (i % 40), CASE WHEN i % 5 = 0 THEN 'CTA CTE' ELSE 'EFVO' END, 100 + i % 900, 0, "
        "round((100 + i % 900) / 1.21, 2), (100 + i % 900) - round((100 + i % 900) / 1.21, 2), 100 + i % 900, 1 FROM n"));
    t.confirmar();
}

qint64 cargaComprobante(orv::Almacen& a) {
    orv::Transaccion t(a);
    a.ejecuta(QStringLiteral("INSERT INTO Empresa (NombreEmpresa, Direccion) VALUES ('Almacén Don Tito', 'San Martín 1234')"));
    const qint64 id = a.inserta(QStringLiteral("INSERT INTO Comprobantes (Factura, idTipoComprobante, idVendedor, idTipoIva, "
                                               "Fecha, Nombre, Cuit, FormaPago, SubTotal, ImporteNeto, PorcentajeIVA, ImporteIVA, "
                                               "Total, EsComercial) VALUES ('A0001-00000042', 1, 1, 1, ?, 'Kiosco El Sol', "
                                               "'30-71234567-8', 'EFVO', 2420, 2000, 21, 420, 2420, 1)"),
                                {QDate(2026, 11, 23)}, QStringLiteral("idComprobante"));
    for (int i = 1; i <= 20; ++i)
        a.ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, Cantidad, Unitario, SubTotal, Descripcion) "
                                 "VALUES (?, ?, 121, ?, ?)"),
                  {id, i % 3 + 1, 121 * (i % 3 + 1), QStringLiteral("Artículo de prueba número %1").arg(i)});
    t.confirmar();
    return id;
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    std::unique_ptr<orv::Almacen> a;
    orv::DefinicionInforme lista;
    orv::Seleccion mes;
    qint64 id = 0;
    QString pdf;
    return CorreBancos(
        argc, argv,
        [&](const QString& destino, const QString& carpeta, const char* motor) {
            a = orv::Almacen::abre(destino);
            orv::actualizaEsquema(*a);
            cargaMes(*a);
            id = cargaComprobante(*a);
            lista = orv::LeeDefinicion(orv::BuscaDefinicion(QStringLiteral("lista_facturas.rpt"), QString()));
            mes = orv::SeleccionListaComprobantes(true, QDate(2026, 11, 1), QDate(2026, 11, 30));
            pdf = QDir(carpeta).filePath(QStringLiteral("informe.pdf"));
            std::fprintf(stderr, "%s: %lld comprobantes en el mes\n", motor,
                         a->valor(QStringLiteral("SELECT count(*) FROM Comprobantes")).toLongLong());
            Mide("Informe/ListaFacturas10000/Armado", [&](benchmark::State& s) {
                for (auto _ : s) benchmark::DoNotOptimize(orv::ArmaInforme(*a, lista, mes, kMascara, kAhora).filas);
            });
            Mide("Informe/ListaFacturas10000/PDF", [&](benchmark::State& s) {
                int paginas = 0;
                for (auto _ : s) paginas = orv::GuardaInforme(*a, lista, mes, kMascara, kAhora, pdf);
                s.counters["paginas"] = paginas;
            });
            for (const char* plantilla : {"factura.rpt", "factura_discrimina_iva.rpt"}) {
                const orv::DefinicionInforme d =
                    orv::LeeDefinicion(orv::BuscaDefinicion(QString::fromLatin1(plantilla), QString()));
                Mide(std::string("Comprobante/") + plantilla + "/PDF",
                     [&a, d, &id, &pdf](benchmark::State& s) {
                         for (auto _ : s)
                             orv::GuardaInforme(*a, d, orv::SeleccionComprobante(id), kMascara,
                                                kAhora, pdf);
                                                });
            }
        },
        Motores::SoloSQLite);
}
