// Informes del catálogo sobre un comercio chico con movimientos conocidos: cada informe trae las
// filas que su selección pide (ni una de otro día, de otro cliente o de otra cuenta), sus grupos,
// sus totales y sus saldos.

#include "apoyo/base_prueba.h"
#include "apoyo_informes.h"
#include "reports/catalogo.h"
#include "reports/informe.h"
#include "store/actualizacion.h"


namespace orv {
namespace {

using namespace prueba;

const QDate kDesde(2026, 11, 1);
const QDate kHasta(2026, 11, 30);
const QDateTime kAhora(QDate(2026, 11, 23), QTime(8, 0));

class Catalogo : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (!base_) return;
        actualizaEsquema(almacen());
        carga();
    }
    qint64 id(const QString& sql, const QVariantList& p, const QString& columna) { return almacen().inserta(sql, p, columna); }
    void ejecuta(const QString& sql, const QVariantList& p) { almacen().ejecuta(sql, p); }
    qint64 comprobante(qint64 tipo, qint64 cli, const QDate& f, const char* nro, int total, bool comercial) {
        return id("INSERT INTO Comprobantes (Factura, idTipoComprobante, idVendedor, Fecha, Nombre, FormaPago, SubTotal, "
                  "MontDescuento, ImporteNeto, ImporteIVA, Total, EsComercial) "
                  "VALUES (?, ?, ?, ?, (SELECT Nombre FROM Vendedores WHERE idVendedor = ?), 'EFVO', ?, 0, ?, ?, ?, ?)",
                  {QString::fromLatin1(nro), tipo, cli, f, cli, total, total * 100 / 121.0, total - total * 100 / 121.0,
                   total, comercial ? 1 : 0},
                  "idComprobante");
    }
    void linea(qint64 comp, qint64 art, double cant, int subtotal, bool comercial) {
        ejecuta("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, Unitario, SubTotal, EsComercial) "
                "VALUES (?, ?, ?, ?, ?, ?)",
                {comp, art, cant, subtotal / cant, subtotal, comercial ? 1 : 0});
    }

    void carga() {
        const char* cliente = "INSERT INTO Vendedores (Nombre, Domicilio, Localidad, Cuit) "
                              "VALUES (?, 'Mitre 120', 'Rosario', '20-12345678-6')";
        ana_ = id(cliente, {"Ana O'Neil"}, "idVendedor");
        bruno_ = id(cliente, {"Bruno Díaz"}, "idVendedor");
        const qint64 yerba = id("INSERT INTO Articulos (Codigo, Descripcion, idRubro) VALUES ('A1', 'Yerba 1 kg', 1)", {},
                                "idArticulo");
        const qint64 te = id("INSERT INTO Articulos (Codigo, Descripcion, idRubro) VALUES ('A''2', 'Té O''Hara', 1)", {},
                             "idArticulo");
        const char* tipo = "INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, EsComercial) VALUES (?, ?, '0001', ?)";
        const qint64 factura = id(tipo, {"FACTURA B", "B", 1}, "idTipoComprobante");
        const qint64 presupuesto = id(tipo, {"PRESUPUESTO", "X", 0}, "idTipoComprobante");

        // En el período: 11 y 12 (facturas), 3 (presupuesto); fuera: 10 (día anterior) y 13 (día posterior).
        const qint64 c1 = comprobante(factura, ana_, QDate(2026, 11, 1), "B0001-00000011", 121, true);
        const qint64 c2 = comprobante(factura, bruno_, QDate(2026, 11, 2), "B0001-00000012", 242, true);
        const qint64 c3 = comprobante(presupuesto, ana_, QDate(2026, 11, 2), "X0001-00000003", 50, false);
        const qint64 c4 = comprobante(factura, ana_, QDate(2026, 10, 31), "B0001-00000010", 999, true);
        comprobante(factura, bruno_, QDate(2026, 12, 1), "B0001-00000013", 888, true);
        linea(c1, yerba, 2, 100, true);
        linea(c2, te, 1, 200, true);
        linea(c2, yerba, 0.5, 42, true);
        linea(c3, te, 3, 50, false);
        linea(c4, yerba, 10, 999, true);

        // Cuenta corriente: Ana debe 21; Bruno pagó todo.
        const char* venta = "INSERT INTO Comisiones (idVendedor, idComprobante, Fecha, Tipo, Comision, Liquidacion) "
                            "VALUES (?, ?, ?, 'VENTA CTA CTE', ?, 0)";
        const char* cobranza = "INSERT INTO Comisiones (idVendedor, Fecha, Tipo, Comision, Liquidacion) "
                               "VALUES (?, ?, 'COBRANZA', 0, ?)";
        ejecuta(venta, {ana_, c1, QDate(2026, 11, 1), 121});
        recibo_ = id(cobranza, {ana_, QDate(2026, 11, 20), 100}, "idCuentaVendedor");
        ejecuta(venta, {bruno_, c2, QDate(2026, 11, 2), 242});
        ejecuta(cobranza, {bruno_, QDate(2026, 11, 3), 242});

        // Comisiones de un vendedor: una en el período, otra antes.
        usuario_ = id("INSERT INTO Usuarios (NombreCompleto, NombreUsuario) VALUES ('Carla Vende', 'carla')", {}, "idUsuario");
        for (const auto& [f, comp, imp] : {std::tuple{QDate(2026, 11, 1), c1, 5}, std::tuple{QDate(2026, 10, 31), c4, 49}})
            ejecuta("INSERT INTO DetComisiones (Fecha, Detalle, idUsuario, idComprobante, Porcentaje, Importe) "
                    "VALUES (?, 'Comision x Vta', ?, ?, 5, ?)",
                    {f, usuario_, comp, imp});

        // Caja: dos cuentas el 5, otra fila el 6.
        for (const auto& [cuenta, dia, det, ing, egr] :
             {std::tuple{1, 5, "Venta contado", 300, 0}, std::tuple{1, 5, "Venta tarjeta", 150, 0},
              std::tuple{3, 5, "Luz", 0, 80}, std::tuple{1, 6, "Venta del 6", 77, 0}})
            ejecuta("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago) VALUES (?, ?, ?, ?, ?, 'EFVO')",
                    {cuenta, QDate(2026, 11, dia), QString::fromUtf8(det), ing, egr});

        // Compras y cuenta de proveedores.
        const char* proveedor = "INSERT INTO Proveedores (Nombre, RazonSocial) VALUES (?, ?)";
        dangelo_ = id(proveedor, {"Luis", "Distribuidora D'Angelo"}, "idProveedor");
        const qint64 otro = id(proveedor, {"Marta", "Lácteos del Sur"}, "idProveedor");
        for (const auto& [prov, f, nro, total] : {std::tuple{dangelo_, QDate(2026, 11, 3), 501, 1210},
                                                  std::tuple{otro, QDate(2026, 11, 4), 77, 500},
                                                  std::tuple{dangelo_, QDate(2026, 10, 30), 499, 9999}})
            ejecuta("INSERT INTO Compras (LetComprobante, TipComprobante, SucComprobante, NroComprobante, idProveedor, "
                    "Fecha, Neto, Iva1, Total) VALUES ('A', 'FACTURA', 3, ?, ?, ?, ?, ?, ?)",
                    {nro, prov, f, total * 100 / 121.0, total - total * 100 / 121.0, total});
        for (const auto& [f, det, debe, haber] : {std::tuple{QDate(2026, 10, 1), "Saldo anterior", 300, 0},
                                                  std::tuple{QDate(2026, 11, 3), "Compra A 3-501", 1210, 0},
                                                  std::tuple{QDate(2026, 11, 10), "Pago en efectivo", 0, 1000}})
            ejecuta("INSERT INTO CtaProve (idProveedor, Fecha, Detalle, Debe, Haber) VALUES (?, ?, ?, ?, ?)",
                    {dangelo_, f, QString::fromUtf8(det), debe, haber});

        // Producción: dos materias primas.
        produccion_ = id("INSERT INTO RegistroProduccion (Fecha, idArticuloProducido, CantidadProducida, CostoManoObra, "
                         "CostoTotal) VALUES (?, ?, 4, 50, 350)",
                         {QDate(2026, 11, 7), yerba}, "idRegistroProduccion");
        ejecuta("INSERT INTO DetRegistroProduccion (idRegistroProduccion, idArticuloMP, Cantidad, CostoTotal) "
                "VALUES (?, ?, 2, 200), (?, ?, 1, 100)",
                {produccion_, te, produccion_, yerba});
    }

    QString cuerpo(const QString& nombre, const Seleccion& s) {
        return ArmaInforme(almacen(), LeeDefinicion(BuscaDefinicion(nombre, QString())), s, "#,##0.00",
                           kAhora)
            .cuerpo;
    }
    static Seleccion usual(const char* nombre) { return SeleccionUsual(QString::fromLatin1(nombre), kDesde, kHasta); }

    qint64 ana_ = 0, bruno_ = 0, recibo_ = 0, usuario_ = 0, dangelo_ = 0, produccion_ = 0;
};

TEST_P(Catalogo, CadaInformeTraeLoQueSuSeleccionPideYNadaMas) {
    const struct {
        const char* informe;
        Seleccion seleccion;
        QStringList trae, noTrae;
    } casos[] = {
        {"lista_facturas.rpt", SeleccionListaComprobantes(true, kDesde, kHasta),
         {"B0001-00000011", "B0001-00000012", "Total del 01/11/2026 (1 comprobantes)", "Total del período (2 comprobantes)",
          "363.00"},
         {"X0001", "B0001-00000010", "B0001-00000013"}},
        {"lista_no_comerciales.rpt", SeleccionListaComprobantes(false, kDesde, kHasta),
         {"X0001-00000003", "PRESUPUESTO"}, {"B0001"}},
        {"lista_tot_facturas_diario.rpt", SeleccionVentasResumen(kDesde, kHasta),
         {"Total del período (2 días)", "363.00"}, {"999.00"}},
        // Artículos: todos (yerba: 2 + 0,5), o uno por su código con apóstrofo (200 de la factura + 50 del presupuesto).
        {"total_articulos.rpt", SeleccionVentasItems(kDesde, kHasta, QString()),
         {"Yerba 1 kg", "2.50", "142.00", "Té O&apos;Hara"}, {"999.00"}},
        {"total_articulos.rpt", SeleccionVentasItems(kDesde, kHasta, "A'2"),
         {"Té O&apos;Hara", "250.00"}, {"Yerba"}},
        {"lista_ventas_clientes.rpt", SeleccionVentasClientes(kDesde, kHasta, "Ana O'Neil"),
         {"B0001-00000011", "X0001-00000003", "Total de Ana O&apos;Neil (2 comprobantes)"}, {"Bruno"}},
        {"lista_ventas_clientes.rpt", usual("lista_ventas_clientes.rpt"),
         {"Total de Ana O&apos;Neil", "Total de Bruno Díaz", "Total del período (3 comprobantes)"}, {}},
        {"comprobantesporcliente.rpt", SeleccionHistoricoCliente(kDesde, kHasta, bruno_),
         {"B0001-00000012"}, {"B0001-00000013", "Ana"}},
        // Saldos: Bruno, con saldo cero, no figura.
        {"saldotodosclientes.rpt", usual("saldotodosclientes.rpt"), {"Ana O&apos;Neil", "<b>21.00</b>"}, {"Bruno"}},
        {"total_comisiones.rpt", usual("total_comisiones.rpt"), {"1,130.00", "1,120.00"}, {}},
        {"ranking_articulos.rpt", usual("ranking_articulos.rpt"), {"12.5"}, {}},
        {"ctaclientes.rpt", SeleccionCtaCteVendedor(ana_),
         {"COBRANZA", "121.00", "100.00", "Saldo de Ana O&apos;Neil", "21.00"}, {"242.00"}},
        {"comprobantecomisiones.rpt", SeleccionLiquidacionComision(recibo_),
         {QStringLiteral("Recibo Nº %1").arg(recibo_), "Ana O&apos;Neil", "cien con 00/100"}, {"121.00"}},
        {"comisiones.rpt", SeleccionComisionesVenta(kDesde, kHasta, usuario_), {"Vendedor: Carla Vende", "5.00"}, {"49.00"}},
        {"comisiones.rpt", SeleccionComisionesVenta(kDesde, kHasta, usuario_ + 1),
         {"No hay comisiones en el período."}, {}},
        // Caja de un día, por cuenta; estado de una cuenta en el período (300 + 150 + 77).
        {"listacajadesglose.rpt", SeleccionCajaDia(QDate(2026, 11, 5)),
         {"Total de Ventas Mostrador (2 movimientos)", "Total de Gastos Generales (1 movimientos)", "450.00", "-80.00"},
         {"Venta del 6"}},
        {"listacajasimple.rpt", SeleccionCajaDia(QDate(2026, 11, 6)), {"Venta del 6"}, {"Luz"}},
        {"movctas.rpt", SeleccionEstadoCuenta(1, kDesde, kHasta), {"Cuenta: Ventas Mostrador", "527.00"}, {"Luz"}},
        {"compras1.rpt", SeleccionCompras(kDesde, kHasta, std::nullopt),
         {"Distribuidora D&apos;Angelo", "Lácteos del Sur", "1,710.00", "FACTURA A 3-501"}, {"9,999.00"}},
        {"compras1.rpt", SeleccionCompras(kDesde, kHasta, dangelo_), {"(1 compras)"}, {"Lácteos"}},
        {"saldotodosprove.rpt", usual("saldotodosprove.rpt"), {"<b>510.00</b>"}, {"Lácteos"}},
        // La cuenta del proveedor desde una fecha, con el saldo que manda la pantalla (del período: 1210 - 1000).
        {"saldoProve.rpt", SeleccionCtaProveedor(dangelo_, kDesde, "510.00"),
         {"Compra A 3-501", "Pago en efectivo", "Saldo de la cuenta: 510.00", "210.00"}, {"Saldo anterior"}},
        {"comprobanteproduccion.rpt", SeleccionProduccion(produccion_),
         {QStringLiteral("Producción Nº <b>%1").arg(produccion_), "Té O&apos;Hara", "300.00"}, {}},
        {"comprobanteproduccion.rpt", SeleccionProduccion(produccion_ + 1),
         {"No se encontró el registro de producción."}, {}},
    };
    for (const auto& c : casos) {
        const QString t = cuerpo(QString::fromLatin1(c.informe), c.seleccion);
        EXPECT_EQ(discrepancias(t, c.trae, c.noTrae), "") << c.informe;
    }
    // Los rankings, de mayor a menor: Bruno compró 1130 en comerciales y Ana 1120; la yerba antes que el té.
    for (const auto& [informe, primero, segundo] : {std::tuple{"total_comisiones.rpt", "Bruno", "Ana"},
                                                     std::tuple{"ranking_articulos.rpt", "Yerba", "Té"}}) {
        const QString t = cuerpo(QString::fromLatin1(informe), usual(informe));
        EXPECT_LT(t.indexOf(QString::fromUtf8(primero)), t.indexOf(QString::fromUtf8(segundo))) << informe;
    }
}

ORV_AMBOS_MOTORES(Catalogo);

} // namespace
} // namespace orv
