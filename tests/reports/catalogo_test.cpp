// Informes del catálogo sobre un comercio chico con movimientos conocidos: cada informe trae las
// filas que su selección pide (ni una de otro día, de otro cliente o de otra cuenta), sus grupos,
// sus totales y sus saldos.

#include "apoyo/base_prueba.h"
#include "reports/catalogo.h"
#include "reports/informe.h"
#include "store/actualizacion.h"

#include <QProcess>
#include <QTemporaryDir>

namespace orv {
namespace {

using prueba::PorMotor;

const QDate kDesde(2026, 11, 1);
const QDate kHasta(2026, 11, 30);

class Catalogo : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (!base_) return;
        actualizaEsquema(almacen());
        carga();
    }

    qint64 id(const QString& sql, const QVariantList& p, const char* columna) {
        return almacen().inserta(sql, p, QString::fromLatin1(columna));
    }
    qint64 cliente(const QString& nombre) {
        return id(QStringLiteral("INSERT INTO Vendedores (Nombre, Domicilio, Localidad, Cuit) VALUES (?, 'Mitre 120', 'Rosario', '20-12345678-6')"),
                  {nombre}, "idVendedor");
    }
    qint64 comprobante(qint64 tipo, qint64 cli, const QString& nombre, const QDate& f, const QString& nro, int total,
                       bool comercial) {
        return id(QStringLiteral("INSERT INTO Comprobantes (Factura, idTipoComprobante, idVendedor, Fecha, Nombre, FormaPago, "
                                 "SubTotal, MontDescuento, ImporteNeto, ImporteIVA, Total, EsComercial) "
                                 "VALUES (?, ?, ?, ?, ?, 'EFVO', ?, 0, ?, ?, ?, ?)"),
                  {nro, tipo, cli, f, nombre, total, total * 100 / 121.0, total - total * 100 / 121.0, total, comercial ? 1 : 0},
                  "idComprobante");
    }
    void linea(qint64 comp, qint64 art, double cant, int subtotal, bool comercial) {
        almacen().ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, Unitario, "
                                         "SubTotal, EsComercial) VALUES (?, ?, ?, ?, ?, ?)"),
                          {comp, art, cant, subtotal / cant, subtotal, comercial ? 1 : 0});
    }

    void carga() {
        Almacen& a = almacen();
        ana_ = cliente(QStringLiteral("Ana O'Neil"));
        bruno_ = cliente(QStringLiteral("Bruno Díaz"));
        const qint64 yerba = id(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, idRubro) VALUES ('A1', 'Yerba 1 kg', 1)"), {}, "idArticulo");
        const qint64 te = id(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, idRubro) VALUES ('A''2', 'Té O''Hara', 1)"), {}, "idArticulo");
        const qint64 factura = id(QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, EsComercial) VALUES ('FACTURA B', 'B', '0001', 1)"), {}, "idTipoComprobante");
        const qint64 presupuesto = id(QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, EsComercial) VALUES ('PRESUPUESTO', 'X', '0001', 0)"), {}, "idTipoComprobante");

        c1_ = comprobante(factura, ana_, QStringLiteral("Ana O'Neil"), QDate(2026, 11, 1), QStringLiteral("B0001-00000011"), 121, true);
        const qint64 c2 = comprobante(factura, bruno_, QStringLiteral("Bruno Díaz"), QDate(2026, 11, 2), QStringLiteral("B0001-00000012"), 242, true);
        const qint64 c3 = comprobante(presupuesto, ana_, QStringLiteral("Ana O'Neil"), QDate(2026, 11, 2), QStringLiteral("X0001-00000003"), 50, false);
        const qint64 c4 = comprobante(factura, ana_, QStringLiteral("Ana O'Neil"), QDate(2026, 10, 31), QStringLiteral("B0001-00000010"), 999, true);
        comprobante(factura, bruno_, QStringLiteral("Bruno Díaz"), QDate(2026, 12, 1), QStringLiteral("B0001-00000013"), 888, true);
        linea(c1_, yerba, 2, 100, true);
        linea(c2, te, 1, 200, true);
        linea(c2, yerba, 0.5, 42, true);
        linea(c3, te, 3, 50, false);
        linea(c4, yerba, 10, 999, true);

        // Cuenta corriente: Ana debe 21; Bruno pagó todo.
        a.ejecuta(QStringLiteral("INSERT INTO Comisiones (idVendedor, idComprobante, Fecha, Tipo, Comision, Liquidacion) VALUES (?, ?, ?, 'VENTA CTA CTE', 121, 0)"),
                  {ana_, c1_, QDate(2026, 11, 1)});
        recibo_ = id(QStringLiteral("INSERT INTO Comisiones (idVendedor, Fecha, Tipo, Comision, Liquidacion) VALUES (?, ?, 'COBRANZA', 0, 100)"),
                     {ana_, QDate(2026, 11, 20)}, "idCuentaVendedor");
        a.ejecuta(QStringLiteral("INSERT INTO Comisiones (idVendedor, idComprobante, Fecha, Tipo, Comision, Liquidacion) VALUES (?, ?, ?, 'VENTA CTA CTE', 242, 0)"),
                  {bruno_, c2, QDate(2026, 11, 2)});
        a.ejecuta(QStringLiteral("INSERT INTO Comisiones (idVendedor, Fecha, Tipo, Comision, Liquidacion) VALUES (?, ?, 'COBRANZA', 0, 242)"),
                  {bruno_, QDate(2026, 11, 3)});

        // Comisiones del vendedor 1 (el supervisor): una en el período, otra antes.
        usuario_ = id(QStringLiteral("INSERT INTO Usuarios (NombreCompleto, NombreUsuario) VALUES ('Carla Vende', 'carla')"), {}, "idUsuario");
        for (const auto& [f, comp, imp] : {std::tuple{QDate(2026, 11, 1), c1_, 5}, std::tuple{QDate(2026, 10, 31), c4, 49}})
            a.ejecuta(QStringLiteral("INSERT INTO DetComisiones (Fecha, Detalle, idUsuario, idComprobante, Porcentaje, Importe) VALUES (?, 'Comision x Vta', ?, ?, 5, ?)"),
                      {f, usuario_, comp, imp});

        // Caja: dos cuentas el 5, otra fila el 6.
        for (const auto& [cuenta, dia, det, ing, egr] :
             {std::tuple{1, 5, "Venta contado", 300, 0}, std::tuple{1, 5, "Venta tarjeta", 150, 0},
              std::tuple{3, 5, "Luz", 0, 80}, std::tuple{1, 6, "Venta del 6", 77, 0}})
            a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago) VALUES (?, ?, ?, ?, ?, 'EFVO')"),
                      {cuenta, QDate(2026, 11, dia), QString::fromUtf8(det), ing, egr});

        // Compras y cuenta de proveedores.
        dangelo_ = id(QStringLiteral("INSERT INTO Proveedores (Nombre, RazonSocial) VALUES ('Luis', 'Distribuidora D''Angelo')"), {}, "idProveedor");
        const qint64 otro = id(QStringLiteral("INSERT INTO Proveedores (Nombre, RazonSocial) VALUES ('Marta', 'Lácteos del Sur')"), {}, "idProveedor");
        for (const auto& [prov, f, nro, total] : {std::tuple{dangelo_, QDate(2026, 11, 3), 501, 1210}, std::tuple{otro, QDate(2026, 11, 4), 77, 500},
                                                  std::tuple{dangelo_, QDate(2026, 10, 30), 499, 9999}})
            a.ejecuta(QStringLiteral("INSERT INTO Compras (LetComprobante, TipComprobante, SucComprobante, NroComprobante, idProveedor, Fecha, Neto, Iva1, Total) "
                                     "VALUES ('A', 'FACTURA', 3, ?, ?, ?, ?, ?, ?)"),
                      {nro, prov, f, total * 100 / 121.0, total - total * 100 / 121.0, total});
        for (const auto& [f, det, debe, haber] : {std::tuple{QDate(2026, 10, 1), "Saldo anterior", 300, 0},
                                                  std::tuple{QDate(2026, 11, 3), "Compra A 3-501", 1210, 0},
                                                  std::tuple{QDate(2026, 11, 10), "Pago en efectivo", 0, 1000}})
            a.ejecuta(QStringLiteral("INSERT INTO CtaProve (idProveedor, Fecha, Detalle, Debe, Haber) VALUES (?, ?, ?, ?, ?)"),
                      {dangelo_, f, QString::fromUtf8(det), debe, haber});

        // Producción: dos materias primas.
        produccion_ = id(QStringLiteral("INSERT INTO RegistroProduccion (Fecha, idArticuloProducido, CantidadProducida, CostoManoObra, CostoTotal) VALUES (?, ?, 4, 50, 350)"),
                         {QDate(2026, 11, 7), yerba}, "idRegistroProduccion");
        a.ejecuta(QStringLiteral("INSERT INTO DetRegistroProduccion (idRegistroProduccion, idArticuloMP, Cantidad, CostoTotal) VALUES (?, ?, 2, 200), (?, ?, 1, 100)"),
                  {produccion_, te, produccion_, yerba});
    }

    QString cuerpo(const char* nombre, const Seleccion& s) {
        const QString n = QString::fromLatin1(nombre);
        const InformeArmado inf = ArmaInforme(almacen(), LeeDefinicion(BuscaDefinicion(n, QString())), s, QStringLiteral("#,##0.00"),
                                              QDateTime(QDate(2026, 11, 23), QTime(8, 0)));
        return inf.cuerpo;
    }
    QString usual(const char* nombre) { return cuerpo(nombre, SeleccionUsual(QString::fromLatin1(nombre), kDesde, kHasta)); }

    qint64 ana_ = 0, bruno_ = 0, c1_ = 0, recibo_ = 0, usuario_ = 0, dangelo_ = 0, produccion_ = 0;
};

// Cuenta las apariciones de un texto.
int veces(const QString& en, const QString& que) { return int(en.count(que)); }

TEST_P(Catalogo, ComprobantesYVentasDelPeriodo) {
    QString t = cuerpo("lista_facturas.rpt", SeleccionListaComprobantes(true, kDesde, kHasta));
    EXPECT_TRUE(t.contains(QStringLiteral("B0001-00000011")) && t.contains(QStringLiteral("B0001-00000012")));
    EXPECT_FALSE(t.contains(QStringLiteral("X0001")));         // no comercial
    EXPECT_FALSE(t.contains(QStringLiteral("B0001-00000010"))); // día anterior
    EXPECT_FALSE(t.contains(QStringLiteral("B0001-00000013"))); // día posterior
    EXPECT_TRUE(t.contains(QStringLiteral("Total del 01/11/2026 (1 comprobantes)")));
    EXPECT_TRUE(t.contains(QStringLiteral("Total del período (2 comprobantes)")));
    EXPECT_TRUE(t.contains(QStringLiteral("363.00")));

    t = cuerpo("lista_no_comerciales.rpt", SeleccionListaComprobantes(false, kDesde, kHasta));
    EXPECT_TRUE(t.contains(QStringLiteral("X0001-00000003")));
    EXPECT_FALSE(t.contains(QStringLiteral("B0001")));
    EXPECT_TRUE(t.contains(QStringLiteral("PRESUPUESTO")));

    t = cuerpo("lista_tot_facturas_diario.rpt", SeleccionVentasResumen(kDesde, kHasta));
    EXPECT_TRUE(t.contains(QStringLiteral("Total del período (2 días)"))) << t.toStdString();
    EXPECT_TRUE(t.contains(QStringLiteral("363.00")));
    EXPECT_FALSE(t.contains(QStringLiteral("999.00")));

    // Artículos: todos, o uno por su código (con apóstrofo).
    t = cuerpo("total_articulos.rpt", SeleccionVentasItems(kDesde, kHasta, QString()));
    EXPECT_TRUE(t.contains(QStringLiteral("Yerba 1 kg")));
    EXPECT_TRUE(t.contains(QStringLiteral("2.50"))) << "cantidad de yerba: 2 + 0,5";
    EXPECT_TRUE(t.contains(QStringLiteral("142.00")));
    EXPECT_TRUE(t.contains(QStringLiteral("Té O&apos;Hara")));
    EXPECT_FALSE(t.contains(QStringLiteral("999.00")));
    t = cuerpo("total_articulos.rpt", SeleccionVentasItems(kDesde, kHasta, QStringLiteral("A'2")));
    EXPECT_TRUE(t.contains(QStringLiteral("Té O&apos;Hara")));
    EXPECT_FALSE(t.contains(QStringLiteral("Yerba")));
    EXPECT_TRUE(t.contains(QStringLiteral("250.00"))); // 200 de la factura + 50 del presupuesto

    // Ventas por cliente: uno por su nombre con apóstrofo, o todos agrupados.
    t = cuerpo("lista_ventas_clientes.rpt", SeleccionVentasClientes(kDesde, kHasta, QStringLiteral("Ana O'Neil")));
    EXPECT_TRUE(t.contains(QStringLiteral("B0001-00000011")) && t.contains(QStringLiteral("X0001-00000003")));
    EXPECT_FALSE(t.contains(QStringLiteral("Bruno")));
    EXPECT_TRUE(t.contains(QStringLiteral("Total de Ana O&apos;Neil (2 comprobantes)")));
    t = usual("lista_ventas_clientes.rpt");
    EXPECT_EQ(veces(t, QStringLiteral("Total de ")), 2);
    EXPECT_TRUE(t.contains(QStringLiteral("Total del período (3 comprobantes)")));

    // Comprobantes de un cliente.
    t = cuerpo("comprobantesporcliente.rpt", SeleccionHistoricoCliente(kDesde, kHasta, bruno_));
    EXPECT_TRUE(t.contains(QStringLiteral("B0001-00000012")));
    EXPECT_FALSE(t.contains(QStringLiteral("B0001-00000013")));
    EXPECT_FALSE(t.contains(QStringLiteral("Ana")));
}

TEST_P(Catalogo, SaldosRankingsYCuentasDeClientes) {
    QString t = usual("saldotodosclientes.rpt");
    EXPECT_TRUE(t.contains(QStringLiteral("Ana O&apos;Neil")));
    EXPECT_TRUE(t.contains(QStringLiteral("<b>21.00</b>")));
    EXPECT_FALSE(t.contains(QStringLiteral("Bruno"))) << "saldo cero";

    // Ranking: Bruno compró 1130 en comerciales, Ana 1120; el presupuesto no cuenta.
    t = usual("total_comisiones.rpt");
    ASSERT_TRUE(t.contains(QStringLiteral("Bruno")));
    EXPECT_LT(t.indexOf(QStringLiteral("Bruno")), t.indexOf(QStringLiteral("Ana")));
    EXPECT_TRUE(t.contains(QStringLiteral("1,130.00")) && t.contains(QStringLiteral("1,120.00")));
    t = usual("ranking_articulos.rpt");
    EXPECT_LT(t.indexOf(QStringLiteral("Yerba")), t.indexOf(QStringLiteral("Té")));
    EXPECT_TRUE(t.contains(QStringLiteral("12.5")));

    // Cuenta corriente de Ana, con su saldo fila a fila.
    t = cuerpo("ctaclientes.rpt", SeleccionCtaCteVendedor(ana_));
    EXPECT_TRUE(t.contains(QStringLiteral("COBRANZA")));
    EXPECT_TRUE(t.contains(QStringLiteral("121.00")) && t.contains(QStringLiteral("100.00")));
    EXPECT_TRUE(t.contains(QStringLiteral("Saldo de Ana O&apos;Neil")));
    EXPECT_TRUE(t.contains(QStringLiteral("21.00")));
    EXPECT_FALSE(t.contains(QStringLiteral("242.00")));

    // Recibo de la cobranza, con el importe en letras.
    t = cuerpo("comprobantecomisiones.rpt", SeleccionLiquidacionComision(recibo_));
    EXPECT_TRUE(t.contains(QStringLiteral("Recibo Nº ") + QString::number(recibo_)));
    EXPECT_TRUE(t.contains(QStringLiteral("Ana O&apos;Neil")));
    EXPECT_TRUE(t.contains(QStringLiteral("CIEN"), Qt::CaseInsensitive)) << t.toStdString();
    EXPECT_FALSE(t.contains(QStringLiteral("121.00")));

    // Comisiones del vendedor en el período.
    t = cuerpo("comisiones.rpt", SeleccionComisionesVenta(kDesde, kHasta, usuario_));
    EXPECT_TRUE(t.contains(QStringLiteral("Vendedor: Carla Vende")));
    EXPECT_TRUE(t.contains(QStringLiteral("5.00")));
    EXPECT_FALSE(t.contains(QStringLiteral("49.00")));
    t = cuerpo("comisiones.rpt", SeleccionComisionesVenta(kDesde, kHasta, usuario_ + 1));
    EXPECT_TRUE(t.contains(QStringLiteral("No hay comisiones en el período.")));
}

TEST_P(Catalogo, CajaComprasProveedoresYProduccion) {
    // Un día de caja, por cuenta, con el saldo de cada una.
    QString t = cuerpo("listacajadesglose.rpt", SeleccionCajaDia(QDate(2026, 11, 5)));
    EXPECT_TRUE(t.contains(QStringLiteral("Total de Ventas Mostrador (2 movimientos)")));
    EXPECT_TRUE(t.contains(QStringLiteral("Total de Gastos Generales (1 movimientos)")));
    EXPECT_TRUE(t.contains(QStringLiteral("450.00")));
    EXPECT_TRUE(t.contains(QStringLiteral("-80.00")));
    EXPECT_FALSE(t.contains(QStringLiteral("Venta del 6")));
    t = cuerpo("listacajasimple.rpt", SeleccionCajaDia(QDate(2026, 11, 6)));
    EXPECT_TRUE(t.contains(QStringLiteral("Venta del 6")));
    EXPECT_FALSE(t.contains(QStringLiteral("Luz")));

    // Estado de una cuenta en el período: sus filas y el saldo acumulado.
    t = cuerpo("movctas.rpt", SeleccionEstadoCuenta(1, kDesde, kHasta));
    EXPECT_TRUE(t.contains(QStringLiteral("Cuenta: Ventas Mostrador")));
    EXPECT_TRUE(t.contains(QStringLiteral("527.00"))) << "300 + 150 + 77";
    EXPECT_FALSE(t.contains(QStringLiteral("Luz")));

    t = cuerpo("compras1.rpt", SeleccionCompras(kDesde, kHasta, std::nullopt));
    EXPECT_TRUE(t.contains(QStringLiteral("Distribuidora D&apos;Angelo")) && t.contains(QStringLiteral("Lácteos del Sur")));
    EXPECT_TRUE(t.contains(QStringLiteral("1,710.00")));
    EXPECT_TRUE(t.contains(QStringLiteral("FACTURA A 3-501")));
    EXPECT_FALSE(t.contains(QStringLiteral("9,999.00")));
    t = cuerpo("compras1.rpt", SeleccionCompras(kDesde, kHasta, dangelo_));
    EXPECT_FALSE(t.contains(QStringLiteral("Lácteos")));
    EXPECT_TRUE(t.contains(QStringLiteral("(1 compras)")));

    t = usual("saldotodosprove.rpt");
    EXPECT_TRUE(t.contains(QStringLiteral("<b>510.00</b>")));
    EXPECT_FALSE(t.contains(QStringLiteral("Lácteos"))) << "sin movimientos en su cuenta";

    // La cuenta del proveedor desde una fecha, con el saldo que manda la pantalla.
    t = cuerpo("saldoProve.rpt", SeleccionCtaProveedor(dangelo_, kDesde, QStringLiteral("510.00")));
    EXPECT_TRUE(t.contains(QStringLiteral("Compra A 3-501")) && t.contains(QStringLiteral("Pago en efectivo")));
    EXPECT_FALSE(t.contains(QStringLiteral("Saldo anterior")));
    EXPECT_TRUE(t.contains(QStringLiteral("Saldo de la cuenta: 510.00")));
    EXPECT_TRUE(t.contains(QStringLiteral("210.00"))) << "saldo del período: 1210 - 1000";

    t = cuerpo("comprobanteproduccion.rpt", SeleccionProduccion(produccion_));
    EXPECT_TRUE(t.contains(QStringLiteral("Producción Nº <b>") + QString::number(produccion_)));
    EXPECT_TRUE(t.contains(QStringLiteral("Té O&apos;Hara")) && t.contains(QStringLiteral("300.00")));
    t = cuerpo("comprobanteproduccion.rpt", SeleccionProduccion(produccion_ + 1));
    EXPECT_TRUE(t.contains(QStringLiteral("No se encontró el registro de producción.")));
}

TEST_P(Catalogo, UnInformeAgrupadoLlegaAlPdfConSusPaginas) {
    QTemporaryDir d;
    const QString pdf = d.filePath(QStringLiteral("ventas.pdf"));
    GuardaInforme(almacen(), LeeDefinicion(BuscaDefinicion(QStringLiteral("lista_ventas_clientes.rpt"), QString())),
                  SeleccionUsual(QStringLiteral("lista_ventas_clientes.rpt"), kDesde, kHasta), QStringLiteral("#,##0.00"),
                  QDateTime(QDate(2026, 11, 23), QTime(8, 0)), pdf);
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    p.waitForFinished(30000);
    const QString t = QString::fromUtf8(p.readAllStandardOutput()).normalized(QString::NormalizationForm_KC);
    for (const char* e : {"Ventas por cliente", "Del 01/11/2026 al 30/11/2026", "Ana O'Neil", "Bruno Díaz", "Total de Bruno Díaz",
                          "413.00", "Página 1 de 1"})
        EXPECT_TRUE(t.contains(QString::fromUtf8(e))) << e << "\n" << t.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Motores, Catalogo, ::testing::Values(prueba::Motor::SQLite, prueba::Motor::PostgreSQL),
                         prueba::nombreMotor);

} // namespace
} // namespace orv
