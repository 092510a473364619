// Las cifras de los informes de ventas cierran entre sí: cada fila cumple subtotal - descuento =
// neto y neto + IVA = total (también la de una nota de crédito), y el resumen, la lista de
// comprobantes, las ventas por cliente, los artículos vendidos y el ranking dan las mismas ventas
// del período, sin presupuestos ni remitos y restando las notas de crédito. Los comprobantes se
// registran con el registro de la venta, en un comercio chico.

#include "apoyo/base_prueba.h"
#include "apoyo_informes.h"
#include "maintenance/ventas_ejemplo.h"
#include "reports/catalogo.h"
#include "reports/informe.h"
#include "store/actualizacion.h"

#include <QSqlQuery>
#include <QSqlRecord>

namespace orv {
namespace {

using namespace prueba;

const QDate kDesde(2026, 11, 1);
const QDate kHasta(2026, 11, 30);

// Tipos con sus cuatro marcas, tres artículos de precio redondo y dos clientes.
const char* const kComercio = R"(
INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, Correlativo, DescuentaStock, RegistraCaja,
  OperacionInversa, EsComercial) VALUES ('FACTURA', 'B', '0001', 0, 1, 1, 0, 1), ('NOTA CREDITO', 'B', '0001', 0, 1, 1, 1, 1),
  ('PRESUPUESTO', 'X', '0001', 0, 0, 0, 0, 0), ('REMITO', 'R', '0001', 0, 1, 0, 0, 0);
INSERT INTO Articulos (idArticulo, Codigo, Descripcion, idRubro, PrecioVenta, StockActual) VALUES
  (201, 'A1', 'Yerba 1 kg', 1, 100, 50), (202, 'A2', 'Azúcar 1 kg', 1, 50, 50), (203, 'A3', 'Café 250 g', 1, 80, 50);
INSERT INTO Vendedores (idVendedor, Nombre, idZona) VALUES (101, 'Ana O''Neil', 1), (102, 'Bruno Díaz', 1)
)";
const qint64 kAna = 101, kBruno = 102;

// Suma de cada columna sobre las filas que el informe lee con su selección.
struct Sumas {
    QMap<QString, Dinero> total;
    qint64 filas = 0;
    QStringList fallas; // filas que no cumplen subtotal - descuento = neto o neto + IVA = total
};

Sumas suma(const Almacen& a, const char* informe, const Seleccion& s) {
    const DefinicionInforme d = LeeDefinicion(BuscaDefinicion(QString::fromLatin1(informe), QString()));
    QString sql = QStringLiteral("SELECT * FROM (") + d.fuente + QStringLiteral(") AS q");
    if (!s.condicion.isEmpty()) sql += QStringLiteral(" WHERE ") + s.condicion;
    QSqlQuery q = a.consulta(sql, s.parametros);
    const QSqlRecord r = q.record();
    const auto col = [&r](const char* n) { return r.indexOf(QString::fromLatin1(n)); };
    const int sub = col("SubTotal"), desc = col("MontDescuento"), neto = col("ImporteNeto"), iva = col("ImporteIVA"),
              total = col("Total");
    Sumas m;
    while (q.next()) {
        ++m.filas;
        for (const QString& c : d.totales) m.total[c.toLower()] += Dinero::desdeVariant(q.value(r.indexOf(c)));
        const auto v = [&q](int c) { return Dinero::desdeVariant(q.value(c)); };
        if ((sub >= 0 && desc >= 0 && neto >= 0 && v(sub) - v(desc) != v(neto)) ||
            (neto >= 0 && iva >= 0 && total >= 0 && v(neto) + v(iva) != v(total)))
            m.fallas << QStringLiteral("%1 fila %2").arg(QString::fromLatin1(informe)).arg(m.filas);
    }
    return m;
}

// "SubTotal=550.0000 ..." con las columnas pedidas, en su orden.
QString cifras(const Sumas& m, const QStringList& columnas) {
    QStringList r;
    for (const QString& c : columnas) r << c + QLatin1Char('=') + m.total.value(c.toLower()).aTexto();
    return r.join(QLatin1Char(' '));
}

class CifrasDeVentas : public PorMotorAlDia {
protected:
    qint64 vende(const QDate& dia, const char* tipo, std::optional<qint64> cliente, const char* forma, double descuento,
                 std::vector<LineaEjemplo> lineas) {
        return RegistraVentaEjemplo(almacen(), {dia, QString::fromUtf8(tipo), cliente, false, QString::fromUtf8(forma),
                                                descuento, 21, std::move(lineas)},
                                    7, 1)
            .idComprobante;
    }
    // El comercio chico con sus seis comprobantes; devuelve el id de la nota de crédito.
    qint64 comercioConVentas() {
        almacen().ejecutaGuion(QString::fromUtf8(kComercio));
        const QDate d2(2026, 11, 2), d3(2026, 11, 3);
        vende(d2, "FACTURA", std::nullopt, "EFVO", 0, {{"A1", 2}, {"A2", 1}});           // 250 + 52.50
        vende(d2, "FACTURA", kAna, "CTA CTE", 10, {{"A3", 5}});                         // 400 - 40 + 75.60
        const qint64 nota = vende(d3, "NOTA CREDITO", kAna, "EFVO", 0, {{"A1", 1}});   // -100 - 21
        vende(d3, "PRESUPUESTO", kAna, "EFVO", 0, {{"A2", 10}});                        // no es venta
        vende(QDate(2026, 11, 4), "REMITO", kBruno, "EFVO", 0, {{"A3", 3}});            // no es venta
        vende(QDate(2026, 10, 31), "FACTURA", kBruno, "EFVO", 0, {{"A2", 2}});          // antes del período
        return nota;
    }
};
ORV_AMBOS_MOTORES(CifrasDeVentas);

TEST_P(CifrasDeVentas, LosInformesDanLasMismasVentasYCadaFilaCierra) {
    Almacen& a = almacen();
    comercioConVentas();

    const QStringList todo = {"SubTotal", "MontDescuento", "ImporteNeto", "ImporteIVA", "Total"};
    const QString ventas = "SubTotal=550.0000 MontDescuento=40.0000 ImporteNeto=510.0000 ImporteIVA=107.1000 Total=617.1000";
    const struct {
        const char* informe;
        Seleccion seleccion;
        QStringList columnas;
        QString esperado;
        qint64 filas;
    } casos[] = {
        {"lista_tot_facturas_diario.rpt", SeleccionVentasResumen(kDesde, kHasta), todo, ventas, 2},
        {"lista_facturas.rpt", SeleccionListaComprobantes(true, kDesde, kHasta), todo, ventas, 3},
        {"lista_ventas_clientes.rpt", SeleccionVentasClientes(kDesde, kHasta, QString()),
         {"SubTotal", "MontDescuento", "Total"}, "SubTotal=550.0000 MontDescuento=40.0000 Total=617.1000", 3},
        // Las ventas sin cliente confirmado quedan a nombre del consumidor final.
        {"lista_ventas_clientes.rpt", SeleccionVentasClientes(kDesde, kHasta, "Cons.Final"), {"Total"},
         "Total=302.5000", 1},
        {"total_articulos.rpt", SeleccionVentasItems(kDesde, kHasta, QString()), {"Cantidad", "SubTotal"},
         "Cantidad=7.0000 SubTotal=550.0000", 4},
        {"total_articulos.rpt", SeleccionVentasItems(kDesde, kHasta, "A1"), {"Cantidad", "SubTotal"},
         "Cantidad=1.0000 SubTotal=100.0000", 2},
        // El ranking no tiene fechas: también la venta del 31/10 (2 de A2, 100).
        {"ranking_articulos.rpt", SeleccionUsual("ranking_articulos.rpt", kDesde, kHasta), {"SumaDeSubTotal"},
         "SumaDeSubTotal=650.0000", 3},
        // La historia del cliente trae todos sus comprobantes, el presupuesto también.
        {"comprobantesporcliente.rpt", SeleccionHistoricoCliente(kDesde, kHasta, kAna),
         {"ImporteNeto", "ImporteIVA", "Total"}, "ImporteNeto=760.0000 ImporteIVA=159.6000 Total=919.6000", 3},
        {"lista_no_comerciales.rpt", SeleccionListaComprobantes(false, kDesde, kHasta), {"SubTotal", "Total"},
         "SubTotal=740.0000 Total=895.4000", 2},
    };
    for (const auto& c : casos) {
        SCOPED_TRACE(std::string(c.informe) + " " + c.seleccion.parametros.value(2).toString().toStdString());
        const Sumas m = suma(a, c.informe, c.seleccion);
        EXPECT_EQ(cifras(m, c.columnas), c.esperado);
        EXPECT_EQ(m.filas, c.filas);
        EXPECT_EQ(m.fallas, QStringList());
    }
}

// La nota de crédito impresa es un papel: sus importes sin signo, y en letras.
TEST_P(CifrasDeVentas, LaNotaDeCreditoImpresaLlevaSusImportesSinSigno) {
    const qint64 nota = comercioConVentas();
    for (const char* plantilla : {"factura.rpt", "factura_discrimina_iva.rpt"}) {
        const QString t = ArmaInforme(almacen(), LeeDefinicion(BuscaDefinicion(plantilla, QString())),
                                      SeleccionComprobante(nota), "#,##0.00", QDateTime(QDate(2026, 11, 3), QTime(9, 0)))
                              .cuerpo;
        EXPECT_EQ(discrepancias(t, {"NOTA CREDITO", "121.00", "ciento veintiuno"}, {"-121", "-100", "-21", "menos"}), "")
            << plantilla;
    }
}

// Un almacén con las consultas de antes (el IVA de la nota de crédito sumaba, la venta sin cliente
// no figuraba por cliente) las recibe nuevas al actualizarse, sin tocar ningún comprobante.
TEST_P(CifrasDeVentas, LaActualizacionRehaceLasConsultasDeVentas) {
    Almacen& a = almacen();
    comercioConVentas();
    a.ejecuta("DROP VIEW ConsultaFacturas");
    a.ejecuta(R"(CREATE VIEW ConsultaFacturas AS
        SELECT Comprobantes.idComprobante, Comprobantes.Factura, Comprobantes.Fecha AS FECDETALLE,
               TiposDeComprobantes.Tipo, Comprobantes.Nombre, Comprobantes.FormaPago, Comprobantes.SubTotal,
               Comprobantes.PorcDescuento, Comprobantes.MontDescuento, Comprobantes.ImporteNeto,
               Comprobantes.PorcentajeIVA, Comprobantes.ImporteIVA, Comprobantes.Total, Comprobantes.HizoCaja,
               Comprobantes.HizoStock, Comprobantes.TipoStock, Comprobantes.EsComercial, Comprobantes.idTipoComprobante,
               Comprobantes.idVendedor, Comprobantes.idUsuario, Comprobantes.ImpresoFiscal
        FROM Comprobantes LEFT JOIN TiposDeComprobantes
             ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante)");
    a.ejecuta("DROP VIEW consultaventasclientes");
    a.ejecuta(R"(CREATE VIEW consultaventasclientes AS
        SELECT Comprobantes.Fecha, Vendedores.Nombre, Comprobantes.idVendedor, TiposDeComprobantes.Tipo,
               Comprobantes.Factura, Comprobantes.FormaPago, Comprobantes.SubTotal, Comprobantes.MontDescuento,
               Comprobantes.Total, Comprobantes.EsComercial, Comprobantes.idComprobante
        FROM (Comprobantes INNER JOIN Vendedores ON Comprobantes.idVendedor = Vendedores.idVendedor)
             LEFT JOIN TiposDeComprobantes ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante)");
    a.ejecuta("DELETE FROM PasosEsquema WHERE Paso >= 3");
    const auto resumen = [&a] {
        return cifras(suma(a, "lista_tot_facturas_diario.rpt", SeleccionVentasResumen(kDesde, kHasta)),
                      {"ImporteNeto", "ImporteIVA", "Total"});
    };
    const auto porCliente = [&a] {
        return cifras(suma(a, "lista_ventas_clientes.rpt", SeleccionVentasClientes(kDesde, kHasta, QString())),
                      {"Total"});
    };
    EXPECT_EQ(resumen(), "ImporteNeto=510.0000 ImporteIVA=149.1000 Total=617.1000");
    EXPECT_EQ(porCliente(), "Total=314.6000");
    const QString guardados = "SELECT SUM(ImporteIVA), SUM(Total) FROM Comprobantes";
    const QVariant antes = a.valor(guardados);
    EXPECT_GE(actualizaEsquema(a), 1); // el paso de las consultas y los que vengan después
    EXPECT_EQ(resumen(), "ImporteNeto=510.0000 ImporteIVA=107.1000 Total=617.1000");
    EXPECT_EQ(porCliente(), "Total=617.1000");
    EXPECT_EQ(a.valor(guardados), antes);
}

} // namespace
} // namespace orv
