// Las comisiones de un vendedor: las líneas que dejan las ventas (y las que no), los totales de un
// período paso a paso con liquidaciones con y sin caja, las filas completas de comisiones y caja,
// y lo que la liquidación rechaza sin escribir nada. En los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "customers/comisiones.h"
#include "sales/registro.h"

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

// La vendedora 7 (Carla, 2.5 %), el vendedor 8 (Dario, 10 %) y el 9 (Elsa, sin comisión); los
// tipos 11 FACTURA B, 12 NOTA DE CREDITO B y 13 PRESUPUESTO (no comercial). El período es
// noviembre hasta el 23.
constexpr qint64 kCarla = 7, kDario = 8, kElsa = 9, kFactura = 11, kNota = 12, kPresupuesto = 13;
const QDate kDesde(2026, 11, 1), kHasta(2026, 11, 23);

const QString kLineas = QStringLiteral(
    "SELECT Fecha, Detalle, idUsuario, idComprobante, Porcentaje, Importe FROM DetComisiones ORDER BY idDetComisiones");
const QString kCaja = QStringLiteral(
    "SELECT c.Cuenta, k.idComprobante, k.Fecha, k.Detalles, k.Ingreso, k.Egreso, k.FormaPago, k.idUsuario "
    "FROM Caja k LEFT JOIN Cuentas c ON c.idCuenta = k.idCuenta ORDER BY k.idCaja");

class Comisiones : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        Almacen& a = almacen();
        a.ejecuta(QStringLiteral("INSERT INTO Usuarios (idUsuario, NombreCompleto, NombreUsuario, Comision) VALUES "
                                 "(7, 'Carla Vende', 'carla', 2.5), (8, 'Dario', 'dario', 10), (9, 'Elsa', 'elsa', 0)"));
        a.ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (idTipoComprobante, Tipo, Letra, PuntoDeVenta, Correlativo, "
                                 "DescuentaStock, RegistraCaja, OperacionInversa, EsComercial, NombrePlantilla) VALUES "
                                 "(11, 'FACTURA B', 'B', '0001', 0, 0, 0, 0, 1, ''), "
                                 "(12, 'NOTA DE CREDITO B', 'B', '0001', 0, 0, 0, 1, 1, ''), "
                                 "(13, 'PRESUPUESTO', 'X', '0002', 0, 0, 0, 0, 0, '')"));
        // Un día cerrado: la liquidación no lo mira.
        a.ejecuta(QStringLiteral("INSERT INTO CorteCaja (FECHA) VALUES (?)"), {QDate(2026, 11, 20)});
    }
    // Una venta con neto `neto` del vendedor, el día dado.
    qint64 vende(qint64 vendedor, qint64 tipo, Dinero neto, QDate dia) {
        almacen().ejecuta(QStringLiteral("INSERT INTO TmpFac (Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                         "VALUES ('X', 'Uno', 1, ?, ?, 1)"),
                          {neto.aVariant(), neto.aVariant()});
        DatosRegistro d;
        d.idRed = 1;
        d.idUsuario = 1;
        d.idTipoComprobante = tipo;
        d.idVendio = vendedor;
        d.subTotal = d.neto = d.total = neto;
        d.hoy = dia;
        return RegistraComprobante(almacen(), d, Ruta::Nada).idComprobante;
    }
    static DatosLiquidacion liquidacion(const char* importe, QDate dia, bool caja = false, const char* forma = "EFVO") {
        return {.idUsuario = kCarla, .nombreVendedor = QStringLiteral("Carla Vende"), .fecha = dia,
                .aPagar = QString::fromLatin1(importe), .asientaCaja = caja,
                .idCuenta = caja ? std::optional<qint64>(3) : std::nullopt, .formaPago = QString::fromLatin1(forma),
                .idUsuarioActual = 5};
    }
    QStringList totales(qint64 vendedor = kCarla) {
        const TotalesComisiones t = TotalesComisionesVendedor(almacen(), vendedor, kDesde, kHasta);
        return {t.comisiones.aTexto(), t.liquidado.aTexto(), t.diferencia().aTexto()};
    }
};

// Cada paso mueve los totales de Carla en el período como se calculó a mano; lo que no es suyo, lo
// que cae fuera del período y lo que no gana comisión no los toca.
TEST_P(Comisiones, LosTotalesDelPeriodoSiguenVentasYLiquidaciones) {
    EXPECT_EQ(totales(), (QStringList{"0.0000", "0.0000", "0.0000"})); // sin líneas
    const struct {
        const char* que;
        std::function<void()> hace;
        QStringList carla;
    } pasos[] = {
        {"venta de neto 1000 a 2.5 %", [&] { vende(kCarla, kFactura, Dinero(1000), QDate(2026, 11, 2)); },
         {"25.0000", "0.0000", "25.0000"}},
        {"venta de neto 33.33: 0.83325 queda con cuatro decimales", [&] { vende(kCarla, kFactura, Dinero(33, 3300), kHasta); },
         {"25.8333", "0.0000", "25.8333"}},
        {"nota de crédito: ni línea ni reversión", [&] { vende(kCarla, kNota, Dinero(1000), kHasta); }, {"25.8333", "0.0000", "25.8333"}},
        {"presupuesto no comercial", [&] { vende(kCarla, kPresupuesto, Dinero(500), kHasta); }, {"25.8333", "0.0000", "25.8333"}},
        {"venta de octubre, fuera del período", [&] { vende(kCarla, kFactura, Dinero(400), QDate(2026, 10, 31)); },
         {"25.8333", "0.0000", "25.8333"}},
        {"venta de Dario", [&] { vende(kDario, kFactura, Dinero(100), kHasta); }, {"25.8333", "0.0000", "25.8333"}},
        {"venta de Elsa, sin comisión", [&] { vende(kElsa, kFactura, Dinero(100), kHasta); }, {"25.8333", "0.0000", "25.8333"}},
        {"liquidación de 20 con caja, en un día cerrado",
         [&] { LiquidaComisiones(almacen(), liquidacion("20", QDate(2026, 11, 20), true)); }, {"25.8333", "20.0000", "5.8333"}},
        {"liquidación de 5.8333 sin caja", [&] { LiquidaComisiones(almacen(), liquidacion("5.8333", kHasta)); },
         {"25.8333", "25.8333", "0.0000"}},
        {"liquidación de diciembre, fuera del período",
         [&] { LiquidaComisiones(almacen(), liquidacion("1,000", QDate(2026, 12, 1), true, "CHEQ")); },
         {"25.8333", "25.8333", "0.0000"}},
        {"liquidación negativa: una línea positiva",
         [&] { LiquidaComisiones(almacen(), liquidacion("-3", kHasta, true)); }, {"28.8333", "25.8333", "3.0000"}},
    };
    for (const auto& p : pasos) {
        p.hace();
        EXPECT_EQ(totales(), p.carla) << p.que;
    }
    EXPECT_EQ(totales(kDario), (QStringList{"10.0000", "0.0000", "10.0000"}));
    EXPECT_EQ(Filas(almacen(), kLineas),
              (QStringList{"2026-11-02|Comision x Vta|7|1|2.5|25", "2026-11-23|Comision x Vta|7|2|2.5|0.8333",
                           "2026-10-31|Comision x Vta|7|5|2.5|10", "2026-11-23|Comision x Vta|8|6|10|10",
                           QString::fromUtf8("2026-11-20|Liquidación|7|0|0|-20"), QString::fromUtf8("2026-11-23|Liquidación|7|0|0|-5.8333"),
                           QString::fromUtf8("2026-12-01|Liquidación|7|0|0|-1000"), QString::fromUtf8("2026-11-23|Liquidación|7|0|0|3")}));
    // Las tres liquidaciones con caja dejan un egreso cada una, en la cuenta elegida (la 3, Gastos
    // Generales); la negativa, un egreso negativo.
    EXPECT_EQ(Filas(almacen(), kCaja),
              (QStringList{"Gastos Generales|0|2026-11-20|Liq.Comisiones a Carla Vende|0|20|EFVO|5",
                           "Gastos Generales|0|2026-12-01|Liq.Comisiones a Carla Vende|0|1000|CHEQ|5",
                           "Gastos Generales|0|2026-11-23|Liq.Comisiones a Carla Vende|0|-3|EFVO|5"}));
}

// La grilla: las líneas de un vendedor en el período, ambos días incluidos, por fecha; y "Quitar"
// borra sólo la línea, no su fila de caja.
TEST_P(Comisiones, LasLineasDelPeriodoYSuBorrado) {
    vende(kCarla, kFactura, Dinero(200), kHasta);
    vende(kCarla, kFactura, Dinero(100), kDesde);
    vende(kCarla, kFactura, Dinero(300), kHasta.addDays(1));
    vende(kDario, kFactura, Dinero(50), kHasta);
    const qint64 liq = LiquidaComisiones(almacen(), liquidacion("7.5", kHasta, true));
    const auto lineas = [&] {
        const ConsultaConParametros c = ConsultaComisionesVendedor(kCarla, kDesde, kHasta);
        return Filas(almacen(), c.sql, c.parametros);
    };
    EXPECT_EQ(lineas(), (QStringList{"2026-11-01|Comision x Vta|FACTURA B|B0001-00000002|2.5|2.5|2|2|Carla Vende",
                                     "2026-11-23|Comision x Vta|FACTURA B|B0001-00000001|2.5|5|1|1|Carla Vende",
                                     QString::fromUtf8("2026-11-23|Liquidación|NULL|NULL|0|-7.5|5|0|Carla Vende")}));
    EXPECT_TRUE(BorraLineaComision(almacen(), liq));
    EXPECT_FALSE(BorraLineaComision(almacen(), liq));
    EXPECT_EQ(lineas().size(), 2);
    EXPECT_EQ(totales(), (QStringList{"7.5000", "0.0000", "7.5000"}));
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT Egreso FROM Caja")), QStringList{"7.5"});
}

// Lo que "Aceptar" rechaza, con su mensaje, sin escribir nada.
TEST_P(Comisiones, LaLiquidacionRechazadaNoEscribeNada) {
    DatosLiquidacion sinCuenta = liquidacion("10", kHasta, true), sinForma = liquidacion("10", kHasta, true, "");
    sinCuenta.idCuenta.reset();
    const struct {
        DatosLiquidacion datos;
        const char* aviso;
    } casos[] = {
        {sinCuenta, "Error, debe seleccionar una cuenta y una forma de pago!"},
        {sinForma, "Error, debe seleccionar una cuenta y una forma de pago!"},
        {liquidacion("0", kHasta), "Error, no se acepta importe en cero!"},
        {liquidacion("0.00", kHasta, true), "Error, no se acepta importe en cero!"},
        {liquidacion("abc", kHasta), "A Pagar: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        {liquidacion("", kHasta), "A Pagar: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        {liquidacion("1,5", kHasta), "A Pagar: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        {liquidacion("10", kHasta, true, "FORMA DE PAGO CON UN NOMBRE DE MAS DE CINCUENTA LETRAS"),
         "Forma de Pago: admite hasta 50 caracteres (tiene 54)."},
    };
    for (const auto& c : casos)
        EXPECT_EQ(AvisoDe([&] { LiquidaComisiones(almacen(), c.datos); }), QString::fromUtf8(c.aviso)) << c.datos.aPagar.toStdString();
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT count(*) FROM DetComisiones")) + Filas(almacen(), QStringLiteral("SELECT count(*) FROM Caja")),
              (QStringList{"0", "0"}));
}

ORV_AMBOS_MOTORES(Comisiones);

} // namespace
} // namespace orv
