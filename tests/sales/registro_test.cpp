// Registro y borrado de comprobantes: cada fila que deja un registro exitoso, las marcas del tipo
// y sus asimetrías, un registro que falla sin dejar rastro, el borrado que deshace por las marcas
// del comprobante, y cuatro terminales numerando a la vez.

#include "apoyo/base_prueba.h"
#include "sales/registro.h"
#include "store/actualizacion.h"
#include "store/aviso.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <atomic>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace orv {
namespace {

using prueba::PorMotor;

const QDate kHoy(2026, 11, 23);

class Registro : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (!base_) return;
        actualizaEsquema(almacen());
        Almacen& a = almacen();
        rubroVip_ = a.inserta(QStringLiteral("INSERT INTO Rubros (Rubro, PuntosVIP) VALUES ('Almacén', 2)"), {}, QStringLiteral("idRubro"));
        const qint64 sinPuntos = a.inserta(QStringLiteral("INSERT INTO Rubros (Rubro, PuntosVIP) VALUES ('Varios', 0)"), {}, QStringLiteral("idRubro"));
        yerba_ = a.inserta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, idRubro, StockActual, PrecioCosto) "
                                          "VALUES ('A1', 'Yerba 1 kg', ?, 10, 70)"),
                           {rubroVip_}, QStringLiteral("idArticulo"));
        vela_ = a.inserta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, idRubro, StockActual, PrecioCosto) "
                                         "VALUES ('V1', 'Vela', ?, NULL, 5)"),
                          {sinPuntos}, QStringLiteral("idArticulo"));
        cliente_ = a.inserta(QStringLiteral("INSERT INTO Vendedores (Nombre, PuntosVIP) VALUES ('Ana O''Neil', 100)"), {},
                             QStringLiteral("idVendedor"));
        vendedor_ = a.inserta(QStringLiteral("INSERT INTO Usuarios (NombreCompleto, NombreUsuario, Comision) VALUES ('Carla', 'carla', 10)"),
                              {}, QStringLiteral("idUsuario"));
    }

    qint64 tipo(const char* nombre, bool stock, bool caja, bool inversa, bool comercial, int correlativo = 41) {
        return almacen().inserta(QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, Correlativo, DescuentaStock, "
                                                "RegistraCaja, OperacionInversa, EsComercial, NombrePlantilla) VALUES (?, 'B', '0001', ?, ?, ?, ?, ?, '')"),
                                 {QString::fromLatin1(nombre), correlativo, stock ? 1 : 0, caja ? 1 : 0, inversa ? 1 : 0, comercial ? 1 : 0},
                                 QStringLiteral("idTipoComprobante"));
    }
    // Borrador: 2 yerbas a 121 y media vela a 10.
    void borrador(qint32 red = 1) {
        almacen().ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, Sn, PCRed) "
                                         "VALUES (?, 'A1', 'Yerba 1 kg', 2, 121, 242, NULL, ?), (?, 'V1', 'Vela', 0.5, 10, 5, 'S/N 9', ?)"),
                          {yerba_, red, vela_, red});
    }
    DatosRegistro datos(qint64 idTipo, const char* forma = "EFVO") {
        DatosRegistro d;
        d.idRed = 1;
        d.idUsuario = 1;
        d.idTipoComprobante = idTipo;
        d.idCliente = cliente_;
        d.nombreCliente = QStringLiteral("Ana O'Neil");
        d.cuitCliente = QStringLiteral("27-12345678-0");
        d.formaPago = QString::fromLatin1(forma);
        d.idVendio = vendedor_;
        d.textoTipo = QStringLiteral("FACTURA B");
        d.suPago = Dinero(300);
        d.subTotal = Dinero(247);
        d.montDescuento = Dinero();
        d.neto = Dinero(204, 1322); // 247 / 1,21
        d.porcImpuesto = Dinero(21);
        d.importeIva = Dinero(42, 8678);
        d.total = Dinero(247);
        d.hoy = kHoy;
        return d;
    }
    QVariant valor(const QString& sql, const QVariantList& p = {}) { return almacen().valor(sql, p); }
    qint64 cuenta(const QString& tabla) { return valor(QStringLiteral("SELECT count(*) FROM ") + tabla).toLongLong(); }
    double stock(qint64 art) { return valor(QStringLiteral("SELECT StockActual FROM Articulos WHERE idArticulo = ?"), {art}).toDouble(); }
    QVariant stockCrudo(qint64 art) { return valor(QStringLiteral("SELECT StockActual FROM Articulos WHERE idArticulo = ?"), {art}); }
    Dinero dinero(const QString& sql, const QVariantList& p) { return Dinero::desdeVariant(valor(sql, p)); }
    // Filas de una consulta, un texto por fila con sus valores separados por "|" (números como
    // números en los dos motores, nulo como "-").
    QStringList filas(const QString& sql, const QVariantList& p = {}) {
        QStringList r;
        QSqlQuery q = almacen().consulta(sql, p);
        while (q.next()) {
            QStringList f;
            for (int i = 0; i < q.record().count(); ++i) {
                bool numero = false;
                const double x = q.value(i).toDouble(&numero);
                f << (q.value(i).isNull() ? QStringLiteral("-") : numero ? QString::number(x) : q.value(i).toString());
            }
            r << f.join(u'|');
        }
        return r;
    }

    qint64 rubroVip_ = 0, yerba_ = 0, vela_ = 0, cliente_ = 0, vendedor_ = 0;
};

TEST_P(Registro, VentaDeContadoDejaCadaFilaComoCorresponde) {
    const qint64 factura = tipo("FACTURA B", true, true, false, true);
    borrador();
    const Registrado r = RegistraComprobante(almacen(), datos(factura), Ruta::Plantilla);
    EXPECT_EQ(r.numero, 42);
    EXPECT_EQ(r.factura, QStringLiteral("B0001-00000042"));
    EXPECT_EQ(valor(QStringLiteral("SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = ?"), {factura}).toInt(), 42);

    QSqlQuery c = almacen().consulta(
        QStringLiteral("SELECT Factura, idVendedor, Fecha, Nombre, Cuit, FormaPago, HizoCaja, HizoStock, TipoStock, EsComercial, Cupon, "
                       "SuPago, SubTotal, ImporteNeto, ImporteIVA, Total, idEmpresa, ImpresoFiscal, idVendio, Comision "
                       "FROM Comprobantes WHERE idComprobante = ?"),
        {r.idComprobante});
    ASSERT_TRUE(c.next());
    EXPECT_EQ(c.value(0).toString(), QStringLiteral("B0001-00000042"));
    EXPECT_EQ(c.value(1).toLongLong(), cliente_);
    EXPECT_EQ(c.value(2).toDate(), kHoy);
    EXPECT_EQ(c.value(3).toString(), QStringLiteral("Ana O'Neil"));
    EXPECT_EQ(c.value(5).toString(), QStringLiteral("EFVO"));
    EXPECT_EQ(c.value(6).toInt(), 1);
    EXPECT_EQ(c.value(7).toInt(), 1);
    EXPECT_EQ(c.value(8).toInt(), 0);
    EXPECT_EQ(c.value(10).toString(), QStringLiteral("0")); // sin cupón
    EXPECT_EQ(Dinero::desdeVariant(c.value(12)), Dinero(247));
    EXPECT_EQ(Dinero::desdeVariant(c.value(15)), Dinero(247));
    EXPECT_EQ(c.value(16).toInt(), 1);
    EXPECT_EQ(c.value(17).toString(), QStringLiteral("S"));
    EXPECT_EQ(c.value(18).toLongLong(), vendedor_);
    EXPECT_DOUBLE_EQ(c.value(19).toDouble(), 10);

    // Líneas con su costo, fecha y número de serie; el stock baja (el nulo cuenta como cero).
    EXPECT_EQ(cuenta(QStringLiteral("DetalleComprobantes")), 2);
    EXPECT_EQ(dinero(QStringLiteral("SELECT costounitario FROM DetalleComprobantes WHERE idArticulo = ?"), {yerba_}), Dinero(70));
    EXPECT_EQ(valor(QStringLiteral("SELECT Sn FROM DetalleComprobantes WHERE idArticulo = ?"), {vela_}).toString(), QStringLiteral("S/N 9"));
    EXPECT_DOUBLE_EQ(stock(yerba_), 8);
    EXPECT_DOUBLE_EQ(stock(vela_), -0.5);
    EXPECT_EQ(valor(QStringLiteral("SELECT count(*) FROM MovimientoStock WHERE idComprobante = ? AND Comprobante = 'B0001-00000042' "
                                   "AND Egreso > 0 AND Ingreso = 0"),
                    {r.idComprobante})
                  .toInt(),
              2);

    // Caja: un ingreso con el detalle de siempre; ninguna cuenta corriente.
    EXPECT_EQ(valor(QStringLiteral("SELECT Detalles FROM Caja WHERE idComprobante = ?"), {r.idComprobante}).toString(),
              QStringLiteral("VENTA :FACT. a Ana O'Neil Nro.B0001-00000042"));
    EXPECT_EQ(dinero(QStringLiteral("SELECT Ingreso FROM Caja WHERE idComprobante = ?"), {r.idComprobante}), Dinero(247));
    EXPECT_EQ(cuenta(QStringLiteral("Comisiones")), 0);
    // Comisión del vendedor sobre el neto: 10 % de 204,1322.
    EXPECT_EQ(dinero(QStringLiteral("SELECT Importe FROM DetComisiones WHERE idComprobante = ?"), {r.idComprobante}), Dinero(20, 4132));
    // Sin tarjeta no hay puntos; el borrador quedó vacío.
    EXPECT_EQ(cuenta(QStringLiteral("Vip")), 0);
    EXPECT_EQ(cuenta(QStringLiteral("TmpFac")), 0);
}

// Líneas y movimientos salen en el orden del borrador, con un artículo repetido (su stock se
// mueve por la suma) y otro borrado del catálogo (línea y movimiento sin stock que mover); la nota
// de crédito hace lo mismo al revés, y borrar la venta devuelve exactamente lo que sacó.
TEST_P(Registro, LineasStockYMovimientosEnElOrdenDelBorrador) {
    const qint64 factura = tipo("FACTURA B", true, true, false, true);
    const qint64 nota = tipo("NOTA DE CREDITO B", true, true, true, true, 7);
    auto carga = [&] {
        almacen().ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, Sn, PCRed) "
                                         "VALUES (?, 'A1', 'Yerba 1 kg', 2, 121, 242, NULL, 1), (?, 'V1', 'Vela', 0.5, 10, 5, 'S/N 9', 1), "
                                         "(9999, 'Z9', 'Ya no está', 1, 3, 3, NULL, 1), (?, 'A1', 'Yerba 1 kg', 1.25, 121, 151.25, NULL, 1)"),
                          {yerba_, vela_, yerba_});
    };
    const QString lineas = QStringLiteral("SELECT idArticulo, Cantidad, Unitario, SubTotal, Sn, costounitario, Descripcion, EsComercial "
                                          "FROM DetalleComprobantes WHERE idComprobante = ? ORDER BY idDetalle");
    const QString movimientos = QStringLiteral("SELECT idArticulo, Comprobante, Ingreso, Egreso FROM MovimientoStock "
                                               "WHERE idComprobante = ? ORDER BY idMovimientoStock");
    const QString y = QString::number(yerba_), v = QString::number(vela_);
    carga();
    const Registrado venta = RegistraComprobante(almacen(), datos(factura), Ruta::Nada);
    EXPECT_EQ(filas(lineas, {venta.idComprobante}),
              QStringList({y + "|2|121|242|-|70|Yerba 1 kg|1", v + "|0.5|10|5|S/N 9|5|Vela|1", "9999|1|3|3|-|0|Ya no está|1",
                           y + "|1.25|121|151.25|-|70|Yerba 1 kg|1"}));
    EXPECT_EQ(filas(movimientos, {venta.idComprobante}),
              QStringList({y + "|B0001-00000042|0|2", v + "|B0001-00000042|0|0.5", "9999|B0001-00000042|0|1",
                           y + "|B0001-00000042|0|1.25"}));
    EXPECT_DOUBLE_EQ(stock(yerba_), 6.75);
    EXPECT_DOUBLE_EQ(stock(vela_), -0.5);

    carga();
    const Registrado devolucion = RegistraComprobante(almacen(), datos(nota), Ruta::Nada);
    EXPECT_EQ(filas(movimientos, {devolucion.idComprobante}),
              QStringList({y + "|B0001-00000008|2|0", v + "|B0001-00000008|0.5|0", "9999|B0001-00000008|1|0",
                           y + "|B0001-00000008|1.25|0"}));
    EXPECT_DOUBLE_EQ(stock(yerba_), 10);
    EXPECT_DOUBLE_EQ(stock(vela_), 0);

    BorraComprobante(almacen(), *LeeComprobanteABorrar(almacen(), venta.idComprobante));
    EXPECT_DOUBLE_EQ(stock(yerba_), 13.25);
    EXPECT_DOUBLE_EQ(stock(vela_), 0.5);
    EXPECT_TRUE(filas(movimientos, {venta.idComprobante}).isEmpty());
}

TEST_P(Registro, CuentaCorrienteNotasDeCreditoYPresupuestos) {
    const qint64 factura = tipo("FACTURA B", true, true, false, true);
    const qint64 nota = tipo("NOTA DE CREDITO B", true, true, true, true, 7);
    const qint64 presupuesto = tipo("PRESUPUESTO", false, false, false, false, 0);

    // A cuenta: el débito va a la cuenta del cliente y no a la caja.
    borrador();
    const Registrado cc = RegistraComprobante(almacen(), datos(factura, "CTA CTE"), Ruta::Nada);
    EXPECT_EQ(cuenta(QStringLiteral("Caja")), 0);
    EXPECT_EQ(valor(QStringLiteral("SELECT Tipo FROM Comisiones WHERE idComprobante = ?"), {cc.idComprobante}).toString(),
              QStringLiteral("VENTA CTA CTE"));
    EXPECT_EQ(dinero(QStringLiteral("SELECT Comision FROM Comisiones WHERE idComprobante = ?"), {cc.idComprobante}), Dinero(247));

    // Nota de crédito de contado: importes negativos, la caja igual lo anota como ingreso positivo,
    // el stock vuelve y no hay comisión del vendedor.
    borrador();
    const Registrado nc = RegistraComprobante(almacen(), datos(nota), Ruta::Nada);
    EXPECT_EQ(nc.numero, 8);
    EXPECT_EQ(dinero(QStringLiteral("SELECT Total FROM Comprobantes WHERE idComprobante = ?"), {nc.idComprobante}), -Dinero(247));
    EXPECT_EQ(dinero(QStringLiteral("SELECT ImporteNeto FROM Comprobantes WHERE idComprobante = ?"), {nc.idComprobante}), -Dinero(204, 1322));
    EXPECT_EQ(dinero(QStringLiteral("SELECT ImporteIVA FROM Comprobantes WHERE idComprobante = ?"), {nc.idComprobante}), Dinero(42, 8678));
    EXPECT_EQ(valor(QStringLiteral("SELECT TipoStock FROM Comprobantes WHERE idComprobante = ?"), {nc.idComprobante}).toInt(), 1);
    EXPECT_EQ(dinero(QStringLiteral("SELECT Ingreso FROM Caja WHERE idComprobante = ?"), {nc.idComprobante}), Dinero(247));
    EXPECT_DOUBLE_EQ(stock(yerba_), 10); // bajó 2 con la factura y volvió 2 con la nota
    EXPECT_EQ(valor(QStringLiteral("SELECT count(*) FROM DetComisiones WHERE idComprobante = ?"), {nc.idComprobante}).toInt(), 0);
    // Nota de crédito a cuenta: el crédito en Liquidacion, positivo.
    borrador();
    const Registrado ncc = RegistraComprobante(almacen(), datos(nota, "CTA CTE"), Ruta::Nada);
    EXPECT_EQ(dinero(QStringLiteral("SELECT Liquidacion FROM Comisiones WHERE idComprobante = ?"), {ncc.idComprobante}), Dinero(247));
    EXPECT_EQ(dinero(QStringLiteral("SELECT Comision FROM Comisiones WHERE idComprobante = ?"), {ncc.idComprobante}), Dinero());

    // Presupuesto: toma número y escribe cabecera y líneas, nada más.
    const qint64 cajaAntes = cuenta(QStringLiteral("Caja"));
    const double stockAntes = stock(yerba_);
    borrador();
    DatosRegistro d = datos(presupuesto);
    d.clienteEsVip = true;
    d.formaCalculoVip = QStringLiteral("C");
    const Registrado p = RegistraComprobante(almacen(), d, Ruta::Nada);
    EXPECT_EQ(p.numero, 1);
    EXPECT_EQ(valor(QStringLiteral("SELECT count(*) FROM DetalleComprobantes WHERE idComprobante = ?"), {p.idComprobante}).toInt(), 2);
    EXPECT_EQ(cuenta(QStringLiteral("Caja")), cajaAntes);
    EXPECT_DOUBLE_EQ(stock(yerba_), stockAntes);
    EXPECT_EQ(valor(QStringLiteral("SELECT count(*) FROM DetComisiones WHERE idComprobante = ?"), {p.idComprobante}).toInt(), 0);
    // ...y los puntos del cliente con tarjeta: 2 yerbas × 2 puntos (la vela es de un rubro sin puntos).
    EXPECT_EQ(p.puntos, 4);
    EXPECT_EQ(valor(QStringLiteral("SELECT PuntosVIP FROM Vip WHERE idComprobante = ?"), {p.idComprobante}).toInt(), 4);
    EXPECT_EQ(valor(QStringLiteral("SELECT PuntosVIP FROM Vendedores WHERE idVendedor = ?"), {cliente_}).toInt(), 104);
}

TEST_P(Registro, PuntosPorImporteOPorCantidadYSoloConTarjeta) {
    const qint64 factura = tipo("FACTURA B", false, false, false, true);
    borrador();
    DatosRegistro d = datos(factura);
    d.clienteEsVip = true;
    d.formaCalculoVip = QStringLiteral("P");
    EXPECT_EQ(RegistraComprobante(almacen(), d, Ruta::Nada).puntos, 484); // 242 × 2
    borrador();
    d.clienteEsVip = false; // elegido por número: no suma
    EXPECT_EQ(RegistraComprobante(almacen(), d, Ruta::Nada).puntos, 484);
    EXPECT_EQ(cuenta(QStringLiteral("Vip")), 1);
    EXPECT_EQ(valor(QStringLiteral("SELECT PuntosVIP FROM Vendedores WHERE idVendedor = ?"), {cliente_}).toInt(), 584);
    // Sin vendedor elegido: ni porcentaje ni comisión.
    borrador();
    d.idVendio.reset();
    const Registrado r = RegistraComprobante(almacen(), d, Ruta::Nada);
    EXPECT_DOUBLE_EQ(valor(QStringLiteral("SELECT Comision FROM Comprobantes WHERE idComprobante = ?"), {r.idComprobante}).toDouble(), 0);
    EXPECT_EQ(valor(QStringLiteral("SELECT idVendio FROM Comprobantes WHERE idComprobante = ?"), {r.idComprobante}).toInt(), 0);
}

TEST_P(Registro, UnaFallaNoDejaRastroNiConsumeElNumeroYGuardaElBorrador) {
    const qint64 factura = tipo("FACTURA B", true, true, false, true);
    // La última escritura, la de caja, falla en el motor: todo lo anterior se deshace.
    almacen().ejecuta(almacen().esPostgreSQL() ? QStringLiteral("DROP TABLE Caja CASCADE") : QStringLiteral("DROP TABLE Caja"));
    borrador();
    EXPECT_THROW(RegistraComprobante(almacen(), datos(factura), Ruta::Plantilla), ErrorAlmacen);
    for (const char* t : {"Comprobantes", "DetalleComprobantes", "MovimientoStock", "DetComisiones", "Vip"})
        EXPECT_EQ(cuenta(QString::fromLatin1(t)), 0) << t;
    EXPECT_EQ(valor(QStringLiteral("SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = ?"), {factura}).toInt(), 41);
    EXPECT_DOUBLE_EQ(stock(yerba_), 10);
    EXPECT_TRUE(stockCrudo(vela_).isNull());
    EXPECT_EQ(cuenta(QStringLiteral("TmpFac")), 2);
    // Un borrador vacío tampoco consume número.
    almacen().ejecuta(QStringLiteral("DELETE FROM TmpFac"));
    EXPECT_THROW(RegistraComprobante(almacen(), datos(factura), Ruta::Plantilla), Aviso);
    EXPECT_EQ(valor(QStringLiteral("SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = ?"), {factura}).toInt(), 41);
}

TEST_P(Registro, SinLaCuentaDeVentasLaVentaSeRegistraConSuCajaSinCuenta) {
    const qint64 factura = tipo("FACTURA B", true, true, false, true);
    almacen().ejecuta(QStringLiteral("DELETE FROM Cuentas WHERE Cuenta = 'Ventas Mostrador'"));
    borrador();
    const Registrado r = RegistraComprobante(almacen(), datos(factura), Ruta::Nada);
    QSqlQuery q = almacen().consulta(QStringLiteral("SELECT idCuenta, idComprobante, Ingreso, FormaPago FROM Caja"));
    ASSERT_TRUE(q.next());
    EXPECT_EQ(QVariantList({q.value(0).isNull(), q.value(1).toLongLong(), Dinero::desdeVariant(q.value(2)).aTexto(),
                            q.value(3).toString()}),
              QVariantList({true, r.idComprobante, QStringLiteral("247.0000"), QStringLiteral("EFVO")}));
    EXPECT_FALSE(q.next());
}

// Los puntos ganados se cuentan con decimales; la fila de la tarjeta y el saldo del cliente los
// guardan enteros, redondeando la mitad al par, y hay fila siempre que se haya ganado algo.
TEST_P(Registro, PuntosConDecimalesRedondeanAlGuardarse) {
    const qint64 factura = tipo("FACTURA B", false, false, false, true);
    struct Caso {
        double puntosDelRubro; // por unidad; el borrador lleva 2 yerbas
        qint64 saldoPrevio;
        QVariantList esperado; // filas de Vip, sus puntos, saldo del cliente
    };
    const std::vector<Caso> casos = {
        {0.1, 100, {1, 0, 100}},   // 0.2 puntos: fila con 0, saldo igual
        {0.25, 100, {1, 0, 100}},  // 0.5 sobre 100: 100.5 va al par, 100
        {0.25, 101, {1, 0, 102}},  // 0.5 sobre 101: 101.5 va al par, 102
        {0.75, 100, {1, 2, 102}},  // 1.5: la fila va al par, 2; el saldo 101.5 también, 102
        {0.75, 101, {1, 2, 102}},  // 1.5 sobre 101: 102.5 va al par, 102
        {0.4, -3, {1, 1, -2}},     // 0.8 sobre un saldo negativo: -2.2 es -2
        {0.25, -3, {1, 0, -2}},    // 0.5 sobre -3: -2.5 va al par, -2
        {0.0, 100, {0, 0, 100}},   // nada ganado: ninguna fila
    };
    for (const Caso& c : casos) {
        almacen().ejecuta(QStringLiteral("DELETE FROM Vip"));
        almacen().ejecuta(QStringLiteral("UPDATE Rubros SET PuntosVIP = ? WHERE idRubro = ?"), {c.puntosDelRubro, rubroVip_});
        almacen().ejecuta(QStringLiteral("UPDATE Vendedores SET PuntosVIP = ? WHERE idVendedor = ?"), {c.saldoPrevio, cliente_});
        borrador();
        DatosRegistro d = datos(factura);
        d.clienteEsVip = true;
        d.formaCalculoVip = QStringLiteral("C");
        RegistraComprobante(almacen(), d, Ruta::Nada);
        const QVariantList visto = {cuenta(QStringLiteral("Vip")),
                                    valor(QStringLiteral("SELECT COALESCE(sum(PuntosVIP), 0) FROM Vip")).toLongLong(),
                                    valor(QStringLiteral("SELECT PuntosVIP FROM Vendedores WHERE idVendedor = ?"), {cliente_})
                                        .toLongLong()};
        EXPECT_EQ(visto, c.esperado) << c.puntosDelRubro << " " << c.saldoPrevio;
    }
}

// Una línea imposible, guardada por otro camino, no llega a un comprobante ni consume número.
TEST_P(Registro, UnaLineaFueraDeRangoNoSeRegistra) {
    const qint64 factura = tipo("FACTURA B", true, true, false, true);
    borrador();
    almacen().ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = 1e300 WHERE Codigo = 'V1'"));
    EXPECT_THROW(RegistraComprobante(almacen(), datos(factura), Ruta::Nada), Aviso);
    EXPECT_EQ(cuenta(QStringLiteral("Comprobantes")), 0);
    EXPECT_EQ(valor(QStringLiteral("SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = ?"), {factura}).toInt(), 41);
}

TEST_P(Registro, ElBorradoDeshacePorLasMarcasDelComprobante) {
    const qint64 factura = tipo("FACTURA B", true, true, false, true);
    const qint64 nota = tipo("NOTA DE CREDITO B", true, true, true, true, 7);
    borrador();
    DatosRegistro d = datos(factura);
    d.clienteEsVip = true;
    d.formaCalculoVip = QStringLiteral("C");
    const Registrado venta = RegistraComprobante(almacen(), d, Ruta::Nada);
    EXPECT_DOUBLE_EQ(stock(yerba_), 8);
    // El tipo cambia después: el borrado sigue lo que el comprobante guardó.
    almacen().ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET DescuentaStock = 0, RegistraCaja = 0 WHERE idTipoComprobante = ?"), {factura});
    almacen().ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = NULL WHERE idArticulo = ?"), {vela_});
    BorraComprobante(almacen(), *LeeComprobanteABorrar(almacen(), venta.idComprobante));
    EXPECT_DOUBLE_EQ(stock(yerba_), 10);
    EXPECT_TRUE(stockCrudo(vela_).isNull()) << "nulo más un número sigue nulo";
    for (const char* t : {"Comprobantes", "DetalleComprobantes", "MovimientoStock", "Caja", "DetComisiones", "Vip"})
        EXPECT_EQ(cuenta(QString::fromLatin1(t)), 0) << t;
    // Los puntos y el número no vuelven.
    EXPECT_EQ(valor(QStringLiteral("SELECT PuntosVIP FROM Vendedores WHERE idVendedor = ?"), {cliente_}).toInt(), 104);
    EXPECT_EQ(valor(QStringLiteral("SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = ?"), {factura}).toInt(), 42);

    // Una nota de crédito: su borrado saca lo que había devuelto.
    almacen().ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = 0 WHERE idArticulo = ?"), {vela_});
    borrador();
    const Registrado nc = RegistraComprobante(almacen(), datos(nota, "CTA CTE"), Ruta::Nada);
    EXPECT_DOUBLE_EQ(stock(yerba_), 12);
    const ComprobanteABorrar leido = *LeeComprobanteABorrar(almacen(), nc.idComprobante);
    BorraComprobante(almacen(), leido);
    EXPECT_DOUBLE_EQ(stock(yerba_), 10);
    // Otra terminal que lo había leído antes lo borra otra vez: lo dice y no deshace dos veces.
    try {
        BorraComprobante(almacen(), leido);
        ADD_FAILURE() << "se borró dos veces";
    } catch (const Aviso& a) {
        EXPECT_EQ(a.texto(), kComprobanteYaBorrado);
    }
    EXPECT_DOUBLE_EQ(stock(yerba_), 10);
    EXPECT_DOUBLE_EQ(stock(vela_), 0);
    EXPECT_EQ(cuenta(QStringLiteral("Comisiones")), 0);
    EXPECT_FALSE(LeeComprobanteABorrar(almacen(), nc.idComprobante).has_value());
}

// Cuatro terminales registran a la vez 100 comprobantes del mismo tipo cada una: 400 números
// distintos y seguidos, y el stock exacto.
TEST_P(Registro, CuatroTerminalesALaVezNuncaRepitenNumeroNiPierdenStock) {
    const qint64 factura = tipo("FACTURA B", true, false, false, true, 0);
    almacen().ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = 1000 WHERE idArticulo = ?"), {yerba_});
    constexpr int kTerminales = 4;
    const int kPorTerminal = GetParam() == prueba::Motor::PostgreSQL ? 100 : 25;
    std::vector<std::vector<qint64>> numeros(kTerminales);
    std::atomic<int> fallas{0};
    auto terminal = [&](int n) {
        try {
            auto a = base().otraConexion();
            for (int i = 0; i < kPorTerminal; ++i) {
                a->ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                          "VALUES (?, 'A1', 'Yerba', 1, 121, 121, ?)"),
                           {yerba_, n + 1});
                DatosRegistro d = datos(factura);
                d.idRed = n + 1;
                numeros[size_t(n)].push_back(RegistraComprobante(*a, d, Ruta::Nada).numero);
            }
        } catch (...) {
            ++fallas;
        }
    };
    std::vector<std::thread> hilos;
    for (int n = 0; n < kTerminales; ++n) hilos.emplace_back(terminal, n);
    for (auto& h : hilos) h.join();
    ASSERT_EQ(fallas.load(), 0);
    std::set<qint64> todos;
    for (const auto& v : numeros) todos.insert(v.begin(), v.end());
    const qint64 total = kTerminales * kPorTerminal;
    ASSERT_EQ(qint64(todos.size()), total);
    EXPECT_EQ(*todos.begin(), 1);
    EXPECT_EQ(*todos.rbegin(), total);
    EXPECT_DOUBLE_EQ(stock(yerba_), 1000 - total);
    EXPECT_EQ(valor(QStringLiteral("SELECT count(DISTINCT Factura) FROM Comprobantes")).toLongLong(), total);
}

// Dos terminales con tipos distintos (no se esperan una a la otra por el número) venden los mismos
// dos artículos en órdenes opuestos, y una tercera borra lo que la primera registró: ninguna
// queda trabada con otra ni pierde stock.
TEST_P(Registro, VentasYBorradosCruzadosNoSeTraban) {
    const qint64 facturaA = tipo("FACTURA A", true, false, false, true, 0);
    const qint64 facturaB = tipo("FACTURA B", true, false, false, true, 0);
    almacen().ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = 1000"));
    const int kVentas = GetParam() == prueba::Motor::PostgreSQL ? 60 : 20;
    std::atomic<int> fallas{0};
    std::atomic<bool> terminoPrimera{false};
    QStringList errores;
    std::mutex mutexErrores;
    auto anota = [&](const QString& e) {
        ++fallas;
        std::lock_guard<std::mutex> l(mutexErrores);
        errores << e;
    };
    auto vende = [&](int red, qint64 idTipo, qint64 primero, qint64 segundo) {
        try {
            auto a = base().otraConexion();
            for (int i = 0; i < kVentas; ++i) {
                a->ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                          "VALUES (?, 'X', 'Uno', 1, 10, 10, ?), (?, 'Y', 'Otro', 2, 10, 20, ?)"),
                           {primero, red, segundo, red});
                DatosRegistro d = datos(idTipo);
                d.idRed = red;
                RegistraComprobante(*a, d, Ruta::Nada);
            }
        } catch (const ErrorAlmacen& e) {
            anota(e.descripcion());
        } catch (const Aviso& e) {
            anota(e.texto());
        }
        if (red == 1) terminoPrimera = true;
    };
    auto borra = [&] {
        try {
            auto a = base().otraConexion();
            int borrados = 0;
            while (borrados < kVentas) {
                // La bandera se lee antes de buscar: si la primera ya había terminado, un hueco
                // quiere decir que no queda nada suyo por borrar, y no que falta confirmar una venta.
                const bool termino = terminoPrimera.load();
                const QVariant id = a->valor(QStringLiteral("SELECT min(idComprobante) FROM Comprobantes WHERE idTipoComprobante = ?"),
                                             {facturaA});
                if (id.isNull()) {
                    if (termino) break;
                    std::this_thread::yield();
                    continue;
                }
                if (const auto c = LeeComprobanteABorrar(*a, id.toLongLong())) {
                    BorraComprobante(*a, *c);
                    ++borrados;
                }
            }
        } catch (const ErrorAlmacen& e) {
            anota(e.descripcion());
        }
    };
    std::thread t1(vende, 1, facturaA, yerba_, vela_);
    std::thread t2(vende, 2, facturaB, vela_, yerba_);
    std::thread t3(borra);
    t1.join();
    t2.join();
    t3.join();
    ASSERT_EQ(fallas.load(), 0) << qPrintable(errores.join(QLatin1Char('\n')));
    // Lo de la FACTURA A se borró entero; queda lo de la FACTURA B: 1 de uno y 2 del otro por venta.
    EXPECT_EQ(valor(QStringLiteral("SELECT count(*) FROM Comprobantes WHERE idTipoComprobante = ?"), {facturaA}).toLongLong(), 0);
    EXPECT_DOUBLE_EQ(stock(vela_), 1000 - kVentas);
    EXPECT_DOUBLE_EQ(stock(yerba_), 1000 - 2 * kVentas);
    EXPECT_EQ(cuenta(QStringLiteral("DetalleComprobantes")), 2 * kVentas);
    EXPECT_EQ(cuenta(QStringLiteral("MovimientoStock")), 2 * kVentas);
}

INSTANTIATE_TEST_SUITE_P(Motores, Registro, ::testing::Values(prueba::Motor::SQLite, prueba::Motor::PostgreSQL),
                         prueba::nombreMotor);

} // namespace
} // namespace orv
