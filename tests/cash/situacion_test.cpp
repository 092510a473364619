// La situación de la empresa sobre un almacén chico hecho con ventas registradas (una nota de
// crédito, un presupuesto, una venta a cuenta y una venta borrada), movimientos a mano, una compra a
// cuenta de un proveedor y su pago: todas las cifras de la página, para cada agrupación y período,
// contra las calculadas a mano. En los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "cash/situacion.h"
#include "maintenance/ventas_ejemplo.h"
#include "sales/registro.h"
#include "store/esquema.h"
#include "suppliers/cuenta_proveedor.h"

#include <QElapsedTimer>
#include <QThread>

namespace orv {
namespace {

// Tipos: FACTURA B y NOTA DE CREDITO B entran a la caja; PRESUPUESTO no es comercial ni la toca.

// La página como filas de texto: las cifras sueltas y después una fila por grupo y por rubro.
QStringList FilasDe(const Situacion& s) {
    QStringList r{QStringLiteral("caja|") + s.caja.aTexto(), QStringLiteral("mercaderia|") + s.mercaderia.aTexto(),
                  QStringLiteral("clientes|") + s.deudaClientes.aTexto(),
                  QStringLiteral("proveedores|") + s.deudaProveedores.aTexto()};
    for (const IngresosDelGrupo& g : s.movimientos)
        r << QStringLiteral("%1|%2|%3|%4").arg(g.grupo).arg(g.periodo, g.ingresos.aTexto(), g.gastos.aTexto());
    for (const VentaDelRubro& v : s.rubros) r << v.rubro + QLatin1Char('|') + v.importe.aTexto();
    return r;
}

class SituacionEmpresa : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        Almacen& a = almacen();
        a.ejecuta(QStringLiteral("DELETE FROM TiposDeComprobantes")); // los tipos son éstos, no los de partida
        a.ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (idTipoComprobante, Tipo, Letra, PuntoDeVenta, Correlativo, "
                                 "DescuentaStock, RegistraCaja, OperacionInversa, EsComercial, NombrePlantilla) VALUES "
                                 "(11, 'FACTURA B', 'B', '0001', 0, 0, 1, 0, 1, ''), "
                                 "(12, 'NOTA DE CREDITO B', 'B', '0001', 0, 0, 1, 1, 1, ''), "
                                 "(13, 'PRESUPUESTO', 'X', '0002', 0, 0, 0, 0, 0, '')"));
        a.ejecuta(QStringLiteral("INSERT INTO Rubros (idRubro, Rubro) VALUES (21, 'Almacen'), (22, 'Bebidas'), (23, 'Limpieza')"));
        // Costo por existencia: 30.30 + 0.6666 + 0 - 5 = 25.9666; la existencia negativa resta.
        a.ejecuta(QStringLiteral("INSERT INTO Articulos (idArticulo, idRubro, Codigo, Descripcion, StockActual, PrecioCosto, "
                                 "PrecioVenta) VALUES (31, 21, 'YER', 'Yerba', 3, 10.10, 100.25), "
                                 "(32, 22, 'GAS', 'Gaseosa', 2, 0.3333, 33.33), (33, 23, 'JAB', 'Jabon', 0, 250, 1000), "
                                 "(34, 22, 'AGU', 'Agua', -2, 2.5, 10)"));
        a.ejecuta(QStringLiteral("INSERT INTO Proveedores (idProveedor, Nombre, RazonSocial) VALUES (4, 'Ana', 'Distribuidora Sur')"));

        vende("FACTURA B", QDate(2025, 3, 20), {{"AGU", 5}});                 // el año anterior: 50
        vende("FACTURA B", QDate(2026, 3, 2), {{"YER", 2}, {"GAS", 1}});      // 233.83
        vende("FACTURA B", QDate(2026, 3, 15), {{"JAB", 1}}, "CTA CTE");      // a la cuenta: 1000
        vende("NOTA DE CREDITO B", QDate(2026, 4, 3), {{"YER", 1}});          // devuelve 100.25
        const qint64 borrada = vende("FACTURA B", QDate(2026, 4, 10), {{"AGU", 3}});
        BorraComprobante(a, *LeeComprobanteABorrar(a, borrada));
        vende("PRESUPUESTO", QDate(2026, 4, 20), {{"JAB", 1}});
        vende("FACTURA B", QDate(2026, 5, 1), {{"AGU", 1}}); // después del período: 10

        // Un aporte y un gasto a mano, y una cobranza de la cuenta del cliente.
        const QString caja = QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, FormaPago, "
                                            "idUsuario) VALUES (3, 0, ?, ?, ?, ?, 'EFVO', 1)");
        a.ejecuta(caja, {QDate(2026, 3, 10), QStringLiteral("Aporte del socio"), QStringLiteral("40"), QStringLiteral("0")});
        a.ejecuta(caja, {QDate(2026, 3, 20), QStringLiteral("Luz"), QStringLiteral("0"), QStringLiteral("15.5")});
        a.ejecuta(caja, {QDate(2026, 4, 12), QStringLiteral("Asentar Cobranza a Cliente"), QStringLiteral("250"), QStringLiteral("0")});
        a.ejecuta(QStringLiteral("INSERT INTO Comisiones (idVendedor, Fecha, Tipo, Comision, Liquidacion) VALUES (1, ?, 'PAGO', 0, 250)"),
                  {QDate(2026, 4, 12)});

        // Una compra a cuenta de 500 y un pago de 320.40 con su salida de caja.
        a.ejecuta(QStringLiteral("INSERT INTO CtaProve (idProveedor, idCompra, Fecha, Detalle, Debe, Haber) "
                                 "VALUES (4, 0, ?, 'Compra A-0001-00000001', 500, 0)"),
                  {QDate(2026, 3, 5)});
        PagoProveedor pago;
        pago.idProveedor = 4;
        pago.importe = QStringLiteral("320.40");
        pago.formaPago = QStringLiteral("EFVO");
        pago.idCuenta = 3;
        pago.fecha = QDate(2026, 4, 5);
        pago.registraCaja = true;
        pago.idUsuario = 1;
        RegistraPagoProveedor(a, pago);
    }

    // Al consumidor final, sin IVA: el total es la suma de las líneas al precio de cada artículo.
    qint64 vende(const char* tipo, QDate dia, std::vector<std::pair<const char*, double>> lineas, const char* forma = "EFVO") {
        VentaEjemplo v;
        v.fecha = dia;
        v.tipo = QString::fromLatin1(tipo);
        v.idCliente = 1;
        v.formaPago = QString::fromLatin1(forma);
        v.porcImpuesto = 0;
        for (const auto& [codigo, cantidad] : lineas) v.lineas.push_back({QString::fromLatin1(codigo), cantidad});
        return RegistraVentaEjemplo(almacen(), v, 1, 1).idComprobante;
    }
};

// Caja: 50 + 233.83 + 100.25 (la nota de crédito entra a la caja como ingreso) + 10 + 40 + 250
// - 15.5 - 320.40. Clientes: 1000 a cuenta menos 250 cobrados. Proveedores: 500 menos 320.40.
const QStringList kFijas = {"caja|348.1800", "mercaderia|25.9666", "clientes|750.0000", "proveedores|179.6000"};

TEST_P(SituacionEmpresa, TodasLasCifrasDeCadaPeriodo) {
    const struct {
        const char* que;
        Agrupacion agrupacion;
        QDate desde, hasta;
        QStringList grupos;
    } casos[] = {
        {"por día: la nota de crédito resta; el aporte, la cobranza y la venta a cuenta no son ingresos de ventas",
         Agrupacion::Diario, QDate(2026, 3, 1), QDate(2026, 4, 30),
         {"20260302|02/03/2026|233.8300|0.0000", "20260320|20/03/2026|0.0000|15.5000", "20260403|03/04/2026|-100.2500|0.0000",
          "20260405|05/04/2026|0.0000|320.4000",
          // La venta a cuenta cuenta en su rubro; el presupuesto y la venta borrada, en ninguno.
          "Limpieza|1000.0000", "Almacen|100.2500", "Bebidas|33.3300"}},
        {"por mes", Agrupacion::Mensual, QDate(2026, 3, 1), QDate(2026, 4, 30),
         {"3|Marzo|233.8300|15.5000", "4|Abril|-100.2500|320.4000", "Limpieza|1000.0000", "Almacen|100.2500", "Bebidas|33.3300"}},
        {"por mes, con un cambio de año: marzo junta los dos años", Agrupacion::Mensual, QDate(2025, 3, 1), QDate(2026, 4, 30),
         {"3|Marzo|283.8300|15.5000", "4|Abril|-100.2500|320.4000", "Limpieza|1000.0000", "Almacen|100.2500", "Bebidas|83.3300"}},
        {"por año, los dos días del borde incluidos", Agrupacion::Anual, QDate(2025, 3, 20), QDate(2026, 5, 1),
         {"2025|2025|50.0000|0.0000", "2026|2026|143.5800|335.9000", "Limpieza|1000.0000", "Almacen|100.2500",
          "Bebidas|93.3300"}},
        {"un período sin movimientos: sólo las cifras que no lo miran", Agrupacion::Diario, QDate(2026, 6, 1),
         QDate(2026, 6, 30), {}},
    };
    for (const auto& c : casos)
        EXPECT_EQ(FilasDe(LeeSituacion(almacen(), c.agrupacion, c.desde, c.hasta)), kFijas + c.grupos) << c.que;
}

TEST_P(SituacionEmpresa, UnAlmacenVacioDaCeros) {
    for (const char* t : {"Caja", "Articulos", "Comisiones", "CtaProve", "DetalleComprobantes", "Comprobantes"})
        almacen().ejecuta(QStringLiteral("DELETE FROM ") + QString::fromLatin1(t));
    EXPECT_EQ(FilasDe(LeeSituacion(almacen(), Agrupacion::Anual, QDate(2000, 1, 1), QDate(2030, 1, 1))),
              (QStringList{"caja|0.0000", "mercaderia|0.0000", "clientes|0.0000", "proveedores|0.0000"}));
}

// Las disponibilidades siguen cada cambio en Caja, venga de esta terminal o de otra, y sólo lo
// confirmado: un importe nulo no suma, una corrección cambia lo que cambió, un borrado resta.
TEST_P(SituacionEmpresa, LaCajaSigueCadaCambio) {
    Almacen& a = almacen();
    auto otra = base().otraConexion();
    const bool servidor = a.esPostgreSQL();
    const QString alta = QStringLiteral("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) "
                                        "VALUES (3, '2026-06-01', ?, ?, ?, 'EFVO', 2)");
    const struct {
        const char* que;
        std::function<void()> cambia;
        const char* caja;
    } pasos[] = {
        {"un ingreso desde otra terminal", [&] { otra->ejecuta(alta, {QStringLiteral("Aporte"), QStringLiteral("100"), QStringLiteral("0")}); },
         "448.1800"},
        {"un ingreso nulo no suma",
         [&] { a.ejecuta(alta, {QStringLiteral("Flete"), QVariant(), QStringLiteral("20.0001")}); }, "428.1799"},
        {"lo que se deshace no cuenta",
         [&] {
             Transaccion t(*otra);
             otra->ejecuta(alta, {QStringLiteral("Error"), QStringLiteral("999"), QStringLiteral("0")});
         },
         "428.1799"},
        {"una corrección del importe y la fecha",
         [&] { otra->ejecuta(QStringLiteral("UPDATE Caja SET Ingreso = 60, Fecha = '2026-06-02' WHERE Detalles = 'Aporte del socio'")); },
         "448.1799"},
        {"una corrección sin importes", [&] { a.ejecuta(QStringLiteral("UPDATE Caja SET Detalles = 'Luz de marzo' WHERE Detalles = 'Luz'")); },
         "448.1799"},
        {"un borrado de varias filas",
         [&] { a.ejecuta(QStringLiteral("DELETE FROM Caja WHERE Detalles IN ('Flete', 'Luz de marzo', 'Aporte')")); }, "383.6800"},
        {"vaciar la caja", [&] { a.ejecuta(servidor ? QStringLiteral("TRUNCATE Caja") : QStringLiteral("DELETE FROM Caja")); },
         "0.0000"},
        {"y volver a empezar", [&] { otra->ejecuta(alta, {QStringLiteral("Cambio"), QStringLiteral("5.5"), QStringLiteral("0")}); },
         "5.5000"},
    };
    for (const auto& p : pasos) {
        p.cambia();
        const Situacion s = LeeSituacion(a, Agrupacion::Anual, QDate(2026, 1, 1), QDate(2026, 12, 31));
        EXPECT_EQ(s.caja.aTexto(), QString::fromLatin1(p.caja)) << p.que;
        EXPECT_EQ(s.caja, Dinero::desdeVariant(a.valor(QStringLiteral("SELECT SUM(Ingreso) - SUM(Egreso) FROM Caja")))) << p.que;
    }
    if (!servidor) return;
    const auto cajaEs = [&a](const char* que) {
        EXPECT_EQ(LeeSituacion(a, Agrupacion::Anual, QDate(2026, 1, 1), QDate(2026, 1, 1)).caja.aTexto(), QString::fromLatin1(que));
    };
    // La actualización parte de lo que ya hay en la caja, y repetirla no suma dos veces.
    otra->ejecuta(alta, {QStringLiteral("Venta vieja"), QStringLiteral("44.5"), QStringLiteral("0")});
    for (int vez = 0; vez < 2; ++vez) {
        Transaccion t(a);
        llevaTotalesCaja(a);
        t.confirmar();
        cajaEs("50.0000");
    }
    // Al arrancar, lo de una terminal que ya cerró pasa a la fila de partida; lo de una abierta, no.
    otra->ejecuta(alta, {QStringLiteral("Aporte"), QStringLiteral("10"), QStringLiteral("0")});
    a.ejecuta(alta, {QStringLiteral("Gasto"), QStringLiteral("0"), QStringLiteral("1.25")});
    const QVariant cerrada = otra->valor(QStringLiteral("SELECT pg_backend_pid()"));
    otra.reset();
    QElapsedTimer espera;
    espera.start();
    while (a.valor(QStringLiteral("SELECT count(*) FROM pg_stat_activity WHERE pid = ?"), {cerrada}).toInt() > 0 &&
           espera.elapsed() < 10000)
        QThread::msleep(20);
    JuntaTotalesCaja(a);
    EXPECT_EQ(prueba::Filas(a, QStringLiteral("SELECT CASE WHEN Conexion = 0 THEN 'partida' WHEN Conexion = pg_backend_pid() "
                                              "THEN 'esta' ELSE 'otra' END, Ingreso, Egreso FROM TotalesCaja ORDER BY Conexion")),
              (QStringList{"partida|60|0", "esta|0|1.25"}));
    cajaEs("58.7500");
}

ORV_AMBOS_MOTORES(SituacionEmpresa);

TEST(Agrupaciones, TextosDeLaListaYSuAgrupacion) {
    EXPECT_EQ(TextosAgrupacion(), (QStringList{"Diario", "Mensual", "Anual"}));
    const std::pair<const char*, Agrupacion> casos[] = {
        {"Diario", Agrupacion::Diario}, {"Mensual", Agrupacion::Mensual}, {"Anual", Agrupacion::Anual}, {"Semanal", Agrupacion::Anual}};
    for (const auto& [texto, g] : casos) EXPECT_EQ(AgrupacionDeTexto(QString::fromLatin1(texto)), g) << texto;
}

} // namespace
} // namespace orv
