// La cuenta corriente del cliente: el saldo paso a paso con ventas y notas de crédito a cuenta,
// líneas a mano y cobranzas, contra cifras hechas a mano; la cobranza con su fila de caja y sus
// rechazos; el día cerrado; el arreglo. En los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "customers/cuenta.h"
#include "sales/registro.h"

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

// La clienta 501 (Ana) y el cliente 502 (Bruno), en la zona de partida; los tipos 11 FACTURA B y
// 12 NOTA DE CREDITO B, que registran caja; el día 2026-11-20 está cerrado.
constexpr qint64 kAna = 501, kBruno = 502, kFactura = 11, kNota = 12;
const QDate kHoy(2026, 11, 23);
const QDate kCerrado(2026, 11, 20);

const QString kLineas = QStringLiteral(
    "SELECT idVendedor, Fecha, idComprobante, Tipo, Comision, Liquidacion FROM Comisiones ORDER BY idCuentaVendedor");
const QString kCaja = QStringLiteral(
    "SELECT c.Cuenta, k.idComprobante, k.Fecha, k.Detalles, k.Ingreso, k.Egreso, k.FormaPago, k.idUsuario "
    "FROM Caja k LEFT JOIN Cuentas c ON c.idCuenta = k.idCuenta ORDER BY k.idCaja");

class Cuenta : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        Almacen& a = almacen();
        a.ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, idZona) VALUES (501, 'Ana O''Neil', 1), "
                                 "(502, 'Bruno', 1)"));
        a.ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (idTipoComprobante, Tipo, Letra, PuntoDeVenta, Correlativo, "
                                 "DescuentaStock, RegistraCaja, OperacionInversa, EsComercial, NombrePlantilla) VALUES "
                                 "(11, 'FACTURA B', 'B', '0001', 0, 0, 1, 0, 1, ''), "
                                 "(12, 'NOTA DE CREDITO B', 'B', '0001', 0, 0, 1, 1, 1, '')"));
        a.ejecuta(QStringLiteral("INSERT INTO CorteCaja (FECHA) VALUES (?)"), {kCerrado});
    }
    // Una venta de una línea por `total` al cliente, con la forma de pago dada.
    qint64 vende(qint64 cliente, qint64 tipo, Dinero total, const char* forma = "CTA CTE") {
        almacen().ejecuta(QStringLiteral("INSERT INTO TmpFac (Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                         "VALUES ('X', 'Uno', 1, ?, ?, 1)"),
                          {total.aVariant(), total.aVariant()});
        DatosRegistro d;
        d.idRed = 1;
        d.idUsuario = 1;
        d.idTipoComprobante = tipo;
        d.idCliente = cliente;
        d.formaPago = QString::fromLatin1(forma);
        d.subTotal = d.neto = d.total = total;
        d.hoy = kHoy;
        return RegistraComprobante(almacen(), d, Ruta::Nada).idComprobante;
    }
    DatosCobranza cobranza(const char* importe, bool caja = true, QDate fecha = kHoy) {
        return {.idVendedor = kAna, .fecha = fecha, .importe = QString::fromLatin1(importe), .formaPago = QStringLiteral("EFVO"),
                .asientaCaja = caja, .detalles = QStringLiteral("Asentar Cobranza a Ana O'Neil"), .idUsuario = 3};
    }
    QString saldo(qint64 cliente = kAna) { return SaldoCliente(almacen(), cliente).aTexto(); }
};

// Cada movimiento cambia el saldo en lo que se calculó a mano, en dinero exacto; el de Bruno no
// toca el de Ana, y borrar un comprobante le quita su línea.
TEST_P(Cuenta, ElSaldoSigueCadaMovimientoEnDineroExacto) {
    EXPECT_EQ(saldo(), "0.0000"); // sin líneas
    qint64 factura = 0;
    const struct {
        const char* que;
        std::function<void()> hace;
        const char* saldoAna;
    } pasos[] = {
        {"venta a cuenta 1,234.56", [&] { factura = vende(kAna, kFactura, Dinero(1234, 5600)); }, "1234.5600"},
        {"venta de contado: no toca la cuenta", [&] { vende(kAna, kFactura, Dinero(99), "EFVO"); }, "1234.5600"},
        {"nota de crédito a cuenta 100.10", [&] { vende(kAna, kNota, Dinero(100, 1000)); }, "1134.4600"},
        {"débito a mano 0.05", [&] { RegistraLineaManual(almacen(), kAna, kHoy, "Intereses", "0.05", true); }, "1134.5100"},
        {"crédito a mano 34.51", [&] { RegistraLineaManual(almacen(), kAna, kHoy, "Bonificación", "34.51", false); }, "1100.0000"},
        {"cobranza 1,000.01", [&] { RegistraCobranza(almacen(), cobranza("1,000.01")); }, "99.9900"},
        {"venta a cuenta de Bruno", [&] { vende(kBruno, kFactura, Dinero(5)); }, "99.9900"},
        {"cobranza de más: saldo a favor", [&] { RegistraCobranza(almacen(), cobranza("100")); }, "-0.0100"},
        {"borrado de la factura", [&] { BorraComprobante(almacen(), *LeeComprobanteABorrar(almacen(), factura)); }, "-1234.5700"},
    };
    for (const auto& p : pasos) {
        p.hace();
        EXPECT_EQ(saldo(), QString::fromLatin1(p.saldoAna)) << p.que;
    }
    EXPECT_EQ(saldo(kBruno), "5.0000");
    // La nota de crédito va como crédito, con el importe en positivo; la factura ya no está.
    EXPECT_EQ(Filas(almacen(), kLineas),
              (QStringList{"501|2026-11-23|3|VENTA CTA CTE|0|100.1", "501|2026-11-23|NULL|Intereses|0.05|0",
                           "501|2026-11-23|NULL|Bonificación|0|34.51", "501|2026-11-23|NULL|PAGO|0|1000.01",
                           "502|2026-11-23|4|VENTA CTA CTE|5|0", "501|2026-11-23|NULL|PAGO|0|100"}));
}

// La cobranza escribe su línea y, si se pide, su fila de caja en "Cobranza Clientes"; el número
// del recibo es el de su línea. Lo que se rechaza no deja nada escrito.
TEST_P(Cuenta, LaCobranzaDejaSuLineaYSuFilaDeCajaONada) {
    const struct {
        DatosCobranza datos;
        const char* aviso;
    } casos[] = {
        {cobranza("1,234.56"), ""},
        {cobranza("50", false), ""},
        {cobranza("abc"), "Importe: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        {cobranza("1.234,56"), "Importe: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        {cobranza("0"), "Error, el importe de la cobranza debe ser mayor que cero!"},
        {cobranza("-5"), "Error, el importe de la cobranza debe ser mayor que cero!"},
        {cobranza("10", true, kCerrado), "Error, fecha cerrada para ingresar movimientos!"},
    };
    QList<qint64> recibos;
    for (const auto& c : casos)
        EXPECT_EQ(AvisoDe([&] { recibos << RegistraCobranza(almacen(), c.datos); }), QString::fromUtf8(c.aviso))
            << c.datos.importe.toStdString();
    EXPECT_EQ(Filas(almacen(), kLineas), (QStringList{"501|2026-11-23|NULL|PAGO|0|1234.56", "501|2026-11-23|NULL|PAGO|0|50"}));
    EXPECT_EQ(Filas(almacen(), kCaja),
              QStringList{"Cobranza Clientes|NULL|2026-11-23|Asentar Cobranza a Ana O'Neil|1234.56|0|EFVO|3"});
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT idCuentaVendedor FROM Comisiones ORDER BY idCuentaVendedor")),
              (QStringList{QString::number(recibos.value(0)), QString::number(recibos.value(1))}));
    // Una línea a mano no mira el día cerrado; sin la cuenta de cobranzas, la cobranza no se toma.
    EXPECT_EQ(AvisoDe([&] { RegistraLineaManual(almacen(), kAna, kCerrado, "Ajuste", "10", false); }), "");
    almacen().ejecuta(QStringLiteral("DELETE FROM Cuentas WHERE Cuenta = 'Cobranza Clientes'"));
    EXPECT_EQ(AvisoDe([&] { RegistraCobranza(almacen(), cobranza("10")); }),
              "Falta la cuenta \"Cobranza Clientes\" en el plan de cuentas: la cobranza no se registró.");
    EXPECT_EQ(saldo(), "-1294.5600");
}

// Las líneas a mano: detalle y un importe que se lea; si no, el mensaje de siempre.
TEST_P(Cuenta, LaLineaAManoPideDetalleEImporte) {
    const struct {
        const char *detalle, *importe;
        bool debito;
        const char* aviso;
    } casos[] = {
        {"", "10", true, "Error, Datos mal ingresados!"},
        {"Flete", "", true, "Error, Datos mal ingresados!"},
        {"Flete", "diez", true, "Error, Datos mal ingresados!"},
        {"Flete", "1,5", true, "Error, Datos mal ingresados!"},
        {"Flete", " 1,500.25 ", true, ""},
        {"Devolución", "0.25", false, ""},
    };
    for (const auto& c : casos)
        EXPECT_EQ(AvisoDe([&] {
                      RegistraLineaManual(almacen(), kAna, kHoy, QString::fromUtf8(c.detalle), QString::fromLatin1(c.importe), c.debito);
                  }),
                  QString::fromUtf8(c.aviso))
            << c.detalle << " / " << c.importe;
    EXPECT_EQ(Filas(almacen(), kLineas),
              (QStringList{"501|2026-11-23|NULL|Flete|1500.25|0", QString::fromUtf8("501|2026-11-23|NULL|Devolución|0|0.25")}));
    const qint64 flete = almacen().valor(QStringLiteral("SELECT MIN(idCuentaVendedor) FROM Comisiones")).toLongLong();
    EXPECT_TRUE(BorraLineaCuenta(almacen(), flete));
    EXPECT_FALSE(BorraLineaCuenta(almacen(), flete));
    EXPECT_EQ(saldo(), "-0.2500");
}

// El arreglo agrega la línea que le falta a cada venta a cuenta de un cliente que existe (la nota
// de crédito como crédito) y la segunda vez no agrega nada.
TEST_P(Cuenta, ArreglarAgregaLoQueFaltaUnaSolaVez) {
    vende(kAna, kFactura, Dinero(300));
    vende(kAna, kNota, Dinero(40));
    vende(kBruno, kFactura, Dinero(7));
    vende(kAna, kFactura, Dinero(11), "EFVO");
    almacen().ejecuta(QStringLiteral("DELETE FROM Comisiones"));
    almacen().ejecuta(QStringLiteral("DELETE FROM Vendedores WHERE idVendedor = ?"), {kBruno});
    EXPECT_EQ(ArreglaCuentas(almacen()), 2);
    EXPECT_EQ(ArreglaCuentas(almacen()), 0);
    EXPECT_EQ(Filas(almacen(), kLineas), (QStringList{"501|2026-11-23|1|VENTA CTA CTE|300|0", "501|2026-11-23|2|VENTA CTA CTE|0|40"}));
    EXPECT_EQ(saldo(), "260.0000");
}

// La búsqueda por día: la posición de la primera línea de ese día en el orden de la grilla.
TEST_P(Cuenta, ElDiaBuscadoEsLaPrimeraLineaDeEseDia) {
    for (const auto& [dia, detalle] : {std::pair{QDate(2026, 11, 3), "c"}, {QDate(2026, 11, 1), "a"}, {QDate(2026, 11, 3), "d"},
                                       {QDate(2026, 11, 2), "b"}, {QDate(2026, 11, 5), "e"}})
        RegistraLineaManual(almacen(), kAna, dia, QString::fromLatin1(detalle), "1", true);
    RegistraLineaManual(almacen(), kBruno, QDate(2026, 10, 1), "otro", "1", true);
    const struct {
        QDate dia;
        std::optional<qint64> fila;
    } casos[] = {{QDate(2026, 11, 1), 0}, {QDate(2026, 11, 3), 2}, {QDate(2026, 11, 5), 4}, {QDate(2026, 11, 4), std::nullopt},
                 {QDate(2026, 10, 1), std::nullopt}};
    for (const auto& c : casos) EXPECT_EQ(PrimeraLineaDelDia(almacen(), kAna, c.dia), c.fila) << c.dia.toString().toStdString();
    const ConsultaConParametros c = ConsultaLineasCuenta(kAna);
    QStringList tipos;
    for (const QString& f : Filas(almacen(), c.sql, c.parametros)) tipos << f.section(u'|', 1, 1);
    EXPECT_EQ(tipos, (QStringList{"a", "b", "c", "d", "e"}));
    EXPECT_EQ(SaldoClienteAntesDe(almacen(), kAna, QDate(2026, 11, 3)).aTexto(), "2.0000");
}

ORV_AMBOS_MOTORES(Cuenta);

} // namespace
} // namespace orv
