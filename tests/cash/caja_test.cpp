// La caja y su cierre: los totales de un día con filas de cada escritor, lo que una fecha cerrada
// rechaza y lo que deja pasar, las filas de nombre fijo de los dos catálogos, el doble cierre
// desde dos puestos y el arqueo en dinero exacto.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "cash/caja.h"
#include "cash/corte.h"
#include "cash/cuentas.h"
#include "sales/registro.h"

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;
using prueba::PorMotorAlDia;

const QDate kDia(2026, 11, 20);
const QString kCerrada = QStringLiteral("Error, fecha cerrada para ingresar movimientos!");
const QString kMovimientos = QStringLiteral(
    "SELECT idCaja, Fecha, idCuenta, Detalles, Ingreso, Egreso, FormaPago, idUsuario FROM Caja ORDER BY idCaja");

QStringList resumenComoFilas(const ResumenDia& r) {
    const auto t = [](const std::optional<Dinero>& d) { return d ? d->aTexto() : QStringLiteral("vacío"); };
    QStringList f;
    for (const VentasPorForma& v : r.ventas) f << QStringLiteral("venta|") + v.formaPago + u'|' + v.total.aTexto();
    for (const MovimientosPorCuenta& c : r.cuentas)
        f << QStringLiteral("cuenta|") + c.cuenta + u'|' + c.ingresos.aTexto() + u'|' + c.egresos.aTexto();
    f << QStringLiteral("totales|") + t(r.totalVentas) + u'|' + t(r.totalEntrada) + u'|' + t(r.totalSalida) +
             (r.abierta ? QStringLiteral("|abierta") : QStringLiteral("|cerrada"));
    return f;
}

class Caja : public PorMotorAlDia {
protected:
    // Cuentas 31 "Gastos" y 32 "Proveedores"; usuarios 5 (Ana) y 6 (Beto).
    void prepara() override {
        Almacen& a = almacen();
        a.ejecuta("INSERT INTO Cuentas (idCuenta, Cuenta) VALUES (31, 'Gastos'), (32, 'Proveedores')");
        a.ejecuta("INSERT INTO Usuarios (idUsuario, NombreCompleto, NombreUsuario) VALUES (5, 'Ana', 'ana'), (6, 'Beto', 'beto')");
    }
    // Una fila como la escribe cada escritor.
    void fila(qint64 cuenta, const QDate& fecha, const char* detalles, const char* ingreso, const char* egreso, const char* forma,
              int usuario) {
        almacen().ejecuta("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) VALUES (?, ?, ?, ?, ?, ?, ?)",
                          {cuenta, fecha, QString::fromUtf8(detalles), QString::fromLatin1(ingreso), QString::fromLatin1(egreso),
                           QString::fromLatin1(forma), usuario});
    }
    qint64 idCuenta(const char* nombre) {
        return almacen().valor("SELECT min(idCuenta) FROM Cuentas WHERE Cuenta = ?", {QString::fromUtf8(nombre)}).toLongLong();
    }
    MovimientoCaja manual(const QDate& fecha, const char* detalles, std::optional<Dinero> ingreso, std::optional<Dinero> egreso) {
        return MovimientoCaja{fecha, 31, QStringLiteral("EFVO"), QString::fromUtf8(detalles), ingreso, egreso};
    }
};
ORV_AMBOS_MOTORES(Caja);

TEST_P(Caja, ResumenDeUnDiaConVentasCobranzasComprasYFilasManualesPorUsuario) {
    const qint64 ventas = idCuenta("Ventas Mostrador"), cobranza = idCuenta("Cobranza Clientes");
    fila(ventas, kDia, "VENTA :FACT. a Cons.Final Nro.B0001-00000042", "1210.50", "0", "EFVO", 5);
    fila(ventas, kDia, "VENTA :FACT. a Ana O'Neil Nro.B0001-00000043", "99.99", "0", "TARJETA", 6);
    fila(ventas, kDia, "VENTA :NOTA. a Cons.Final Nro.B0001-00000007", "-10.00", "0", "EFVO", 5);
    fila(cobranza, kDia, "Asentar Cobranza a Ana O'Neil", "300", "0", "EFVO", 6);
    fila(32, kDia, "Compra 0001-123 / Distribuidora Sur", "0", "450.25", "EFVO", 5);
    fila(31, kDia, "Flete", "0", "80", "EFVO", 6);
    fila(31, kDia, "venta de cajas vacías", "5", "0", "EFVO", 5); // no empieza con "VENTA": no es venta
    fila(ventas, kDia.addDays(1), "VENTA :FACT. a Cons.Final Nro.B0001-00000044", "700", "0", "EFVO", 5);
    const struct {
        std::optional<qint64> usuario;
        QStringList esperado;
    } casos[] = {
        {std::nullopt,
         {"venta|EFVO|1200.5000", "venta|TARJETA|99.9900", "cuenta|Cobranza Clientes|300.0000|0.0000", "cuenta|Gastos|5.0000|80.0000",
          "cuenta|Proveedores|0.0000|450.2500", "cuenta|Ventas Mostrador|1300.4900|0.0000", "totales|1300.4900|1605.4900|530.2500|abierta"}},
        {5,
         {"venta|EFVO|1200.5000", "cuenta|Gastos|5.0000|0.0000", "cuenta|Proveedores|0.0000|450.2500",
          "cuenta|Ventas Mostrador|1200.5000|0.0000", "totales|1200.5000|1205.5000|450.2500|abierta"}},
        {7, {"totales|vacío|vacío|vacío|abierta"}}, // un usuario sin movimientos: todo vacío, se puede cerrar
    };
    for (const auto& c : casos)
        EXPECT_EQ(resumenComoFilas(ResumenDelDia(almacen(), kDia, c.usuario)), c.esperado) << c.usuario.value_or(0);

    // El panel: ingresos del período y egresos sólo del primer día; con filtro de cuenta.
    const TotalesCaja todo = TotalesDeCaja(almacen(), {kDia, kDia.addDays(1), std::nullopt, QString()});
    EXPECT_EQ(todo, (TotalesCaja{Dinero(2305, 4900), Dinero(530, 2500), Dinero(1775, 2400)}));
    const TotalesCaja gastos = TotalesDeCaja(almacen(), {kDia, kDia, 31, QStringLiteral("EFVO")});
    EXPECT_EQ(gastos, (TotalesCaja{Dinero(5), Dinero(80), Dinero(-75)}));
}

TEST_P(Caja, FechaCerradaRechazaLoDeCajaYDejaPasarElBorradoDeComprobantes) {
    Almacen& a = almacen();
    const QDate abierto = kDia.addDays(1);
    ASSERT_TRUE(CierraDia(a, kDia, kDia, {}, 5));
    const qint64 cerrado = GuardaMovimientoCaja(a, std::nullopt, manual(abierto, "x", Dinero(1), std::nullopt), 5);
    a.ejecuta("UPDATE Caja SET Fecha = ? WHERE idCaja = ?", {kDia, cerrado}); // un movimiento del día cerrado
    const qint64 otro = GuardaMovimientoCaja(a, std::nullopt, manual(abierto, "y", std::nullopt, Dinero(2)), 5);
    // Un comprobante del día cerrado con su fila de caja.
    const qint64 comprobante = a.inserta("INSERT INTO Comprobantes (Factura, Fecha, HizoCaja, Total) VALUES ('B0001-00000001', ?, 1, 50)",
                                         {kDia}, "idComprobante");
    a.ejecuta("INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) "
              "VALUES (1, ?, ?, 'VENTA :FACT', 50, 0, 'EFVO', 5)", {comprobante, kDia});
    const struct {
        const char* que;
        std::function<void()> accion;
        QString aviso;
    } casos[] = {
        {"nuevo en el día cerrado", [&] { GuardaMovimientoCaja(a, std::nullopt, manual(kDia, "z", Dinero(3), std::nullopt), 5); }, kCerrada},
        {"editar uno del día cerrado", [&] { GuardaMovimientoCaja(a, cerrado, manual(abierto, "z", Dinero(3), std::nullopt), 5); }, kCerrada},
        {"llevar otro al día cerrado", [&] { GuardaMovimientoCaja(a, otro, manual(kDia, "z", Dinero(3), std::nullopt), 5); }, kCerrada},
        {"borrar uno del día cerrado", [&] { BorraMovimientoCaja(a, cerrado); }, kCerrada},
        {"editar uno del día abierto", [&] { GuardaMovimientoCaja(a, otro, manual(abierto, "y2", std::nullopt, Dinero(4)), 6); }, {}},
        {"borrar el comprobante", [&] { BorraComprobante(a, *LeeComprobanteABorrar(a, comprobante)); }, {}},
    };
    for (const auto& c : casos) EXPECT_EQ(AvisoDe(c.accion), c.aviso) << c.que;
    // Lo rechazado quedó como estaba; el comprobante se llevó su fila aunque el día esté cerrado.
    EXPECT_EQ(Filas(a, kMovimientos),
              QStringList({QStringLiteral("%1|2026-11-20|31|x|1|0|EFVO|5").arg(cerrado),
                           QStringLiteral("%1|2026-11-21|31|y2|0|4|EFVO|6").arg(otro)}));
    EXPECT_FALSE(ResumenDelDia(a, kDia, std::nullopt).abierta);
}

TEST_P(Caja, MovimientoManualMalEscritoNoSeGuarda) {
    const struct {
        MovimientoCaja m;
        const char* aviso;
    } casos[] = {
        {{kDia, std::nullopt, "EFVO", "x", Dinero(1), std::nullopt}, "Seleccione una cuenta de la lista!"},
        {{kDia, 31, "", "x", Dinero(1), std::nullopt}, "Seleccione la forma de pago!"},
        {{kDia, 31, "EFVO", "x", std::nullopt, std::nullopt}, "Ingrese el importe del movimiento."},
        {{kDia, 31, "EFVO", "x", Dinero(1), Dinero(1)}, "Un movimiento es un ingreso o un egreso, no los dos."},
        {{kDia, 31, "EFVO", "x", Dinero(0), std::nullopt}, "El importe del movimiento debe ser mayor que cero."},
        {{kDia, 31, "EFVO", QString(255, u'a'), Dinero(1), std::nullopt}, "Detalles: admite hasta 254 caracteres (tiene 255)."},
    };
    for (const auto& c : casos)
        EXPECT_EQ(AvisoDe([&] { GuardaMovimientoCaja(almacen(), std::nullopt, c.m, 5); }), QString::fromUtf8(c.aviso));
    EXPECT_EQ(Filas(almacen(), kMovimientos), QStringList());
    // Uno bien escrito se lee igual que se escribió.
    const MovimientoCaja bien{kDia, 31, "CHEQ", "Reintegro de O'Brien", std::nullopt, Dinero(12, 3400)};
    const qint64 id = GuardaMovimientoCaja(almacen(), std::nullopt, bien, 6);
    EXPECT_EQ(LeeMovimientoCaja(almacen(), id), bien);
}

TEST_P(Caja, FilasDeNombreFijoNoSeBorranNiRenombran) {
    Almacen& a = almacen();
    const qint64 efvo = a.valor("SELECT idTipoFormaPago FROM FormasDePago WHERE FormaPago = 'EFVO'").toLongLong();
    const qint64 cheq = a.valor("SELECT idTipoFormaPago FROM FormasDePago WHERE FormaPago = 'CHEQ'").toLongLong();
    const qint64 tarjeta = a.valor("SELECT idTipoFormaPago FROM FormasDePago WHERE FormaPago = 'TARJETA'").toLongLong();
    const qint64 ventas = idCuenta("Ventas Mostrador");
    const QString fijaCuenta = QStringLiteral("La cuenta \"Ventas Mostrador\" la usa el sistema para registrar ventas y cobranzas: no se puede borrar.");
    const struct {
        const char* que;
        std::function<void()> accion;
        QString aviso;
    } casos[] = {
        {"borrar Ventas Mostrador", [&] { BorraCuenta(a, ventas); }, fijaCuenta},
        {"cuenta de 60 letras", [&] { AgregaCuenta(a, QString(50, u'n') + QStringLiteral("0123456789")); }, {}},
        {"cuenta vacía", [&] { EXPECT_FALSE(AgregaCuenta(a, QStringLiteral("   "))); }, {}},
        {"otra Ventas Mostrador", [&] { AgregaCuenta(a, QStringLiteral("Ventas Mostrador")); }, {}},
        {"con otra igual, se borra", [&] { BorraCuenta(a, ventas); }, {}},
        {"borrar Gastos", [&] { BorraCuenta(a, 31); }, {}},
        {"borrar EFVO", [&] { BorraFormaPago(a, efvo); }, "La forma de pago \"EFVO\" tiene un significado fijo en el sistema: no se puede borrar."},
        {"renombrar CHEQ", [&] { GuardaFormaPago(a, cheq, {"CHEQUE", false, false}); },
         "La forma de pago \"CHEQ\" tiene un significado fijo en el sistema: no se puede cambiar su nombre."},
        {"CHEQ con tarjeta", [&] { GuardaFormaPago(a, cheq, {"CHEQ", false, true}); }, {}},
        {"renombrar TARJETA", [&] { GuardaFormaPago(a, tarjeta, {"VISA", false, true}); }, {}},
        {"forma sin nombre", [&] { GuardaFormaPago(a, std::nullopt, {" ", false, false}); }, "Ingrese el nombre de la forma de pago."},
        {"forma nueva", [&] { GuardaFormaPago(a, std::nullopt, {"MERCADO PAGO", false, false}); }, {}},
    };
    for (const auto& c : casos) EXPECT_EQ(AvisoDe(c.accion), c.aviso) << c.que;
    QStringList cuentas = Filas(a, "SELECT Cuenta FROM Cuentas");
    cuentas.sort();
    EXPECT_EQ(cuentas, QStringList({"Cobranza Clientes", "Gastos Generales", "Pago a Proveedores", "Proveedores", "Retiros", "Ventas Mostrador",
                                    QString(50, u'n')}));
    QStringList formas = Filas(a, "SELECT FormaPago, EsACuenta, EsTarjetaCredito FROM FormasDePago");
    formas.sort();
    EXPECT_EQ(formas,
              QStringList({"CHEQ|0|1", "CTA CTE|1|0", "EFVO|0|0", "MERCADO PAGO|0|0", "VISA|0|1"}));
}

TEST_P(Caja, DosPuestosCierranElMismoDiaYQuedaUnaFila) {
    auto otro = base().otraConexion();
    const QList<LineaArqueo> contado = {{"EFVO", Dinero(10), Dinero(9)}};
    EXPECT_TRUE(CierraDia(almacen(), kDia, kDia, contado, 5));
    EXPECT_FALSE(CierraDia(*otro, kDia, kDia, contado, 6)); // el segundo no escribe nada, ni su arqueo
    EXPECT_EQ(Filas(almacen(), "SELECT FECHA FROM CorteCaja"), QStringList({"2026-11-20"}));
    EXPECT_EQ(Filas(almacen(), "SELECT FormaPago, Contado, idUsuario FROM ArqueoCaja"), QStringList({"EFVO|9|5"}));
}

TEST_P(Caja, ArqueoEnDineroExacto) {
    fila(1, kDia, "VENTA :FACT", "1000.10", "0", "EFVO", 5);
    fila(1, kDia, "VENTA :FACT", "0.20", "0", "EFVO", 6);
    fila(31, kDia, "Flete", "0", "0.30", "EFVO", 5);
    fila(1, kDia, "VENTA :FACT", "250", "0", "TARJETA", 5);
    fila(1, kDia, "VENTA :FACT", "5", "0", "BONO", 5); // una forma que ya no está en la lista
    fila(1, kDia, "VENTA :FACT", "99", "0", "CTA CTE", 5);
    QList<LineaArqueo> arqueo = ArqueoEsperado(almacen(), kDia, std::nullopt);
    // Las formas a contar: las que no son a cuenta y las del día, aunque sean a cuenta.
    EXPECT_EQ(arqueo, (QList<LineaArqueo>{{"BONO", Dinero(5), {}}, {"CHEQ", Dinero(), {}}, {"CTA CTE", Dinero(99), {}},
                                          {"EFVO", Dinero(1000), {}}, {"TARJETA", Dinero(250), {}}}));
    EXPECT_EQ(ArqueoEsperado(almacen(), kDia, 6), (QList<LineaArqueo>{{"CHEQ", Dinero(), {}}, {"EFVO", Dinero(0, 2000), {}},
                                                                       {"TARJETA", Dinero(), {}}}));
    arqueo[3].contado = Dinero(999, 9000);
    arqueo[4].contado = Dinero(250, 100);
    EXPECT_EQ(arqueo[3].diferencia(), Dinero(0, -1000));
    EXPECT_EQ(arqueo[4].diferencia(), Dinero(0, 100));
    EXPECT_EQ(arqueo[0].diferencia(), std::nullopt);
    ASSERT_TRUE(CierraDia(almacen(), kDia.addDays(2), kDia, arqueo, 5));
    EXPECT_EQ(Filas(almacen(), "SELECT Fecha, FechaCierre, FormaPago, Esperado, Contado, idUsuario FROM ArqueoCaja ORDER BY idArqueo"),
              QStringList({"2026-11-20|2026-11-22|EFVO|1000|999.9|5", "2026-11-20|2026-11-22|TARJETA|250|250.01|5"}));
    EXPECT_EQ(ArqueoGuardado(almacen(), kDia), (QList<LineaArqueo>{{"EFVO", Dinero(1000), Dinero(999, 9000)},
                                                                    {"TARJETA", Dinero(250), Dinero(250, 100)}}));
    // Se cerró el día de la máquina, no el contado.
    EXPECT_EQ(Filas(almacen(), "SELECT FECHA FROM CorteCaja"), QStringList({"2026-11-22"}));
}

} // namespace
} // namespace orv
