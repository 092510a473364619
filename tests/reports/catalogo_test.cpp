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

// Clientes, comprobantes con sus líneas, cuenta corriente, comisiones, caja, compras, cuenta de
// proveedores y producción, con claves propias.
const char* const kComercio = R"(
INSERT INTO Vendedores (idVendedor, Nombre, Domicilio, Localidad, Cuit)
  VALUES (101, 'Ana O''Neil', 'Mitre 120', 'Rosario', '20-12345678-6'), (102, 'Bruno Díaz', 'Mitre 120', 'Rosario', '20-12345678-6');
INSERT INTO Articulos (idArticulo, Codigo, Descripcion, idRubro) VALUES (201, 'A1', 'Yerba 1 kg', 1), (202, 'A''2', 'Té O''Hara', 1);
INSERT INTO TiposDeComprobantes (idTipoComprobante, Tipo, Letra, PuntoDeVenta, EsComercial)
  VALUES (301, 'FACTURA B', 'B', '0001', 1), (302, 'PRESUPUESTO', 'X', '0001', 0);
INSERT INTO Comprobantes (idComprobante, Factura, idTipoComprobante, idVendedor, Fecha, Nombre, FormaPago, SubTotal,
  MontDescuento, ImporteNeto, ImporteIVA, Total, EsComercial) VALUES
  (401, 'B0001-00000011', 301, 101, '2026-11-01', 'Ana O''Neil', 'EFVO', 121, 0, 100, 21, 121, 1),
  (402, 'B0001-00000012', 301, 102, '2026-11-02', 'Bruno Díaz', 'EFVO', 242, 0, 200, 42, 242, 1),
  (403, 'X0001-00000003', 302, 101, '2026-11-02', 'Ana O''Neil', 'EFVO', 50, 0, 41.3223, 8.6777, 50, 0),
  (404, 'B0001-00000010', 301, 101, '2026-10-31', 'Ana O''Neil', 'EFVO', 999, 0, 825.6198, 173.3802, 999, 1),
  (405, 'B0001-00000013', 301, 102, '2026-12-01', 'Bruno Díaz', 'EFVO', 888, 0, 733.8843, 154.1157, 888, 1);
INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, Unitario, SubTotal, EsComercial) VALUES
  (401, 201, 2, 50, 100, 1), (402, 202, 1, 200, 200, 1), (402, 201, 0.5, 84, 42, 1), (403, 202, 3, 16.6667, 50, 0),
  (404, 201, 10, 99.9, 999, 1);
INSERT INTO Comisiones (idCuentaVendedor, idVendedor, idComprobante, Fecha, Tipo, Comision, Liquidacion) VALUES
  (501, 101, NULL, '2026-11-20', 'COBRANZA', 0, 100), (502, 101, 401, '2026-11-01', 'VENTA CTA CTE', 121, 0),
  (503, 102, 402, '2026-11-02', 'VENTA CTA CTE', 242, 0), (504, 102, NULL, '2026-11-03', 'COBRANZA', 0, 242);
INSERT INTO Usuarios (idUsuario, NombreCompleto, NombreUsuario) VALUES (601, 'Carla Vende', 'carla');
INSERT INTO DetComisiones (Fecha, Detalle, idUsuario, idComprobante, Porcentaje, Importe)
  VALUES ('2026-11-01', 'Comision x Vta', 601, 401, 5, 5), ('2026-10-31', 'Comision x Vta', 601, 404, 5, 49);
INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago) VALUES (1, '2026-11-05', 'Venta contado', 300, 0, 'EFVO'),
  (1, '2026-11-05', 'Venta tarjeta', 150, 0, 'EFVO'), (3, '2026-11-05', 'Luz', 0, 80, 'EFVO'), (1, '2026-11-06', 'Venta del 6', 77, 0, 'EFVO');
INSERT INTO Proveedores (idProveedor, Nombre, RazonSocial) VALUES (701, 'Luis', 'Distribuidora D''Angelo'), (702, 'Marta', 'Lácteos del Sur');
INSERT INTO Compras (LetComprobante, TipComprobante, SucComprobante, NroComprobante, idProveedor, Fecha, Neto, Iva1, Total) VALUES
  ('A', 'FACTURA', 3, 501, 701, '2026-11-03', 1000, 210, 1210), ('A', 'FACTURA', 3, 77, 702, '2026-11-04', 413.2231, 86.7769, 500),
  ('A', 'FACTURA', 3, 499, 701, '2026-10-30', 8263.6364, 1735.3636, 9999);
INSERT INTO CtaProve (idProveedor, Fecha, Detalle, Debe, Haber) VALUES (701, '2026-10-01', 'Saldo anterior', 300, 0),
  (701, '2026-11-03', 'Compra A 3-501', 1210, 0), (701, '2026-11-10', 'Pago en efectivo', 0, 1000);
INSERT INTO RegistroProduccion (idRegistroProduccion, Fecha, idArticuloProducido, CantidadProducida, CostoManoObra, CostoTotal)
  VALUES (801, '2026-11-07', 201, 4, 50, 350);
INSERT INTO DetRegistroProduccion (idRegistroProduccion, idArticuloMP, Cantidad, CostoTotal) VALUES (801, 202, 2, 200), (801, 201, 1, 100)
)";
const qint64 ana_ = 101, recibo_ = 501, usuario_ = 601, dangelo_ = 701, produccion_ = 801;

class Catalogo : public PorMotorAlDia {
protected:
    void prepara() override {
        almacen().ejecutaGuion(QString::fromUtf8(kComercio));
    }
    QString cuerpo(const QString& nombre, const Seleccion& s) {
        return ArmaInforme(almacen(), LeeDefinicion(BuscaDefinicion(nombre, QString())), s, "#,##0.00", kAhora).cuerpo;
    }
    static Seleccion usual(const char* nombre) { return SeleccionUsual(QString::fromLatin1(nombre), kDesde, kHasta); }
};

// Lo que cada informe muestra de su selección; las sumas de los informes de ventas, fila por fila,
// las comparan las pruebas de las cifras.
TEST_P(Catalogo, CadaInformeTraeLoQueSuSeleccionPideYNadaMas) {
    const struct {
        const char* informe;
        Seleccion seleccion;
        QStringList trae, noTrae;
    } casos[] = {
        {"lista_facturas.rpt", SeleccionListaComprobantes(true, kDesde, kHasta),
         {"B0001-00000011", "B0001-00000012", "Total del 01/11/2026 (1 comprobante)", "Total del período (2 comprobantes)",
          "363.00"},
         {"X0001", "B0001-00000010", "B0001-00000013"}},
        {"lista_tot_facturas_diario.rpt", SeleccionVentasResumen(kDesde, kHasta),
         {"Total del período (2 días)", "363.00"}, {"999.00"}},
        // Artículos: todos (yerba: 2 + 0,5), o uno por su código con apóstrofo (200 de la factura; el presupuesto no es venta).
        {"total_articulos.rpt", SeleccionVentasItems(kDesde, kHasta, QString()),
         {"Yerba 1 kg", "2.50", "142.00", "Té O&apos;Hara"}, {"999.00"}},
        {"total_articulos.rpt", SeleccionVentasItems(kDesde, kHasta, "A'2"),
         {"Té O&apos;Hara", "200.00"}, {"Yerba", "250.00"}},
        {"lista_ventas_clientes.rpt", SeleccionVentasClientes(kDesde, kHasta, "Ana O'Neil"),
         {"B0001-00000011", "Total de Ana O&apos;Neil (1 comprobante"}, {"Bruno", "X0001-00000003"}},
        {"lista_ventas_clientes.rpt", usual("lista_ventas_clientes.rpt"),
         {"Total de Ana O&apos;Neil", "Total de Bruno Díaz", "Total del período (2 comprobantes)"}, {}},
        // Saldos: Bruno, con saldo cero, no figura.
        {"saldotodosclientes.rpt", usual("saldotodosclientes.rpt"), {"Ana O&apos;Neil", "<b>21.00</b>"}, {"Bruno"}},
        {"total_comisiones.rpt", usual("total_comisiones.rpt"), {"1,130.00", "1,120.00"}, {}},
        {"ranking_articulos.rpt", usual("ranking_articulos.rpt"), {"12.5"}, {}},
        {"ctaclientes.rpt", SeleccionCtaCteVendedor(ana_),
         {"COBRANZA", "121.00", "100.00", "Saldo de Ana O&apos;Neil", "21.00"}, {"242.00"}},
        // El resumen de un período parte del saldo de antes (la venta del 1, 121) y no trae lo de antes.
        {"resumencuenta.rpt", SeleccionResumenCuenta(ana_, "Ana O'Neil", QDate(2026, 11, 15), kHasta, Dinero(121), "#,##0.00"),
         {"Ana O&apos;Neil — saldo anterior", "121.00", "COBRANZA", "<td align=\"right\">21.00</td>", "Saldo al 30/11/2026"},
         {"VENTA CTA CTE", "Bruno"}},
        {"comprobantecomisiones.rpt", SeleccionLiquidacionComision(recibo_),
         {QStringLiteral("Nro. <b>%1</b>").arg(recibo_), "Ana O&apos;Neil", "cien con 00/100"}, {"121.00"}},
        {"comisiones.rpt", SeleccionComisionesVenta(kDesde, kHasta, usuario_), {"Vendedor: Carla Vende", "5.00"}, {"49.00"}},
        {"comisiones.rpt", SeleccionComisionesVenta(kDesde, kHasta, usuario_ + 1),
         {"No hay comisiones en el período."}, {}},
        // Caja de un día, por cuenta; estado de una cuenta en el período (300 + 150 + 77).
        {"listacajadesglose.rpt", SeleccionCajaDia(QDate(2026, 11, 5)),
         {"Total de Ventas Mostrador (2 movimientos)", "Total de Gastos Generales (1 movimiento)", "450.00", "-80.00"},
         {"Venta del 6"}},
        {"listacajasimple.rpt", SeleccionCajaDia(QDate(2026, 11, 6)), {"Venta del 6"}, {"Luz"}},
        {"movctas.rpt", SeleccionEstadoCuenta(1, kDesde, kHasta), {"Cuenta: Ventas Mostrador", "527.00"}, {"Luz"}},
        {"compras1.rpt", SeleccionCompras(kDesde, kHasta, std::nullopt),
         {"Distribuidora D&apos;Angelo", "Lácteos del Sur", "1,710.00", "FACTURA A 3-501"}, {"9,999.00"}},
        {"compras1.rpt", SeleccionCompras(kDesde, kHasta, dangelo_), {"(1 compra)"}, {"Lácteos"}},
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
