// Compras: las líneas del borrador y los totales del documento; cada fila que escribe una compra al
// contado y una en cuenta corriente, con y sin costos; la corrección de una compra (lo que se
// deshace y lo que queda); los rechazos y una falla a mitad de camino que dejan la compra anterior
// entera; dos terminales con su propio borrador; el borrado frente a la corrección; y la cuenta del
// proveedor con sus pagos. En los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/compras_prueba.h"
#include "apoyo/filas.h"
#include "suppliers/compras.h"
#include "suppliers/cuenta_proveedor.h"

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

class Compras : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        proveedor_ = almacen().inserta(QStringLiteral("INSERT INTO Proveedores (Nombre, RazonSocial) VALUES ('Ana', 'Distribuidora Norte')"),
                                       {}, QStringLiteral("idProveedor"));
        // Yerba con stock y costo; azúcar con stock nulo; fideos de otro proveedor.
        yerba_ = articulo("7790001", "Yerba 1 kg", "10", "800");
        azucar_ = articulo("7790002", "Azúcar 1 kg", QVariant(), "500");
        fideos_ = articulo("7790003", "Fideos 500 g", "4", "300");
        efectivo_ = almacen().valor(QStringLiteral("SELECT idTipoFormaPago FROM FormasDePago WHERE FormaPago = 'EFVO'")).toLongLong();
        ctaCte_ = almacen().valor(QStringLiteral("SELECT idTipoFormaPago FROM FormasDePago WHERE FormaPago = 'CTA CTE'")).toLongLong();
        cuenta_ = almacen().valor(QStringLiteral("SELECT idCuenta FROM Cuentas WHERE Cuenta = 'Pago a Proveedores'")).toLongLong();
    }
    qint64 articulo(const char* codigo, const char* descripcion, const QVariant& stock, const char* costo) {
        return almacen().inserta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, StockActual, PrecioCosto, PrecioVenta, "
                                                "PrecioFinal, IdProveedor) VALUES (?, ?, ?, ?, 1000, 1210, ?)"),
                                 {QString::fromLatin1(codigo), QString::fromUtf8(descripcion), stock, QString::fromLatin1(costo),
                                  proveedor_},
                                 QStringLiteral("idArticulo"));
    }
    void linea(Almacen& a, qint32 idRed, qint64 id, const char* cantidad, const char* unitario, const char* bonif = "0") {
        AgregaLineaCompra(a, idRed, {id, QString::fromLatin1(cantidad), QString::fromLatin1(unitario), QString::fromLatin1(bonif)});
    }
    DatosCompra compra(const char* numero, const char* forma = "EFVO") {
        DatosCompra d = prueba::CompraDePrueba(almacen(), proveedor_, QString::fromLatin1(numero), QString::fromLatin1(forma));
        d.idUsuario = 7;
        d.referencia = QStringLiteral("Remito 55");
        d.descuento = QStringLiteral("10");
        d.alicuota = QStringLiteral("21");
        d.registraCaja = d.registraStock = true;
        return d;
    }
    // Sin compras ni borrador, y los artículos como al comienzo.
    void sinCompras() {
        for (const char* t : {"Compras", "DetCompras", "MovimientoStock", "Caja", "CtaProve", "TmpFacCompra"})
            almacen().ejecuta(QStringLiteral("DELETE FROM ") + QString::fromLatin1(t));
        almacen().ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = CASE idArticulo WHEN ? THEN 10 WHEN ? THEN NULL ELSE 4 END, "
                                         "PrecioCosto = CASE idArticulo WHEN ? THEN 800 WHEN ? THEN 500 ELSE 300 END, "
                                         "UltimaFechaCompra = NULL"),
                          {yerba_, azucar_, yerba_, azucar_});
    }
    // Todo lo que una compra toca, tabla por tabla.
    QStringList estado() {
        QStringList r;
        const char* consultas[] = {
            "SELECT 'C', LetComprobante, SucComprobante, NroComprobante, TipComprobante, Fecha, idFPago, Cancelada, Neto, Descuento, "
            "MontoDescuento, Iva1, Tasa1, Total, RegistraCaja, RegistraStock, Referencia FROM Compras ORDER BY idCompra",
            "SELECT 'D', idArticulo, Cantidad, PrecioUnitario, SubTotal FROM DetCompras ORDER BY idDetCompra",
            "SELECT 'A', Codigo, StockActual, PrecioCosto, UltimaFechaCompra, PrecioFinal FROM Articulos ORDER BY idArticulo",
            "SELECT 'M', idArticulo, Fecha, idTipoMovimiento, Comprobante, Ingreso, Egreso, Observaciones FROM MovimientoStock "
            "ORDER BY idMovimientoStock",
            "SELECT 'J', Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario FROM Caja ORDER BY idCaja",
            "SELECT 'P', Fecha, Detalle, Debe, Haber, Referencia FROM CtaProve ORDER BY idMovCta"};
        for (const char* c : consultas) r << Filas(almacen(), QString::fromLatin1(c));
        return r;
    }
    qint64 proveedor_ = 0, yerba_ = 0, azucar_ = 0, fideos_ = 0, efectivo_ = 0, ctaCte_ = 0, cuenta_ = 0;
};

TEST_P(Compras, LineasYTotalesDelDocumento) {
    linea(almacen(), 1, yerba_, "10", "100", "10");
    linea(almacen(), 1, yerba_, "1.5", "19.99");
    linea(almacen(), 2, azucar_, "10", "100");
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT PCRed, idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal "
                                              "FROM TmpFacCompra ORDER BY idTmpFacCompra")),
              QStringList({QStringLiteral("1|%1|7790001|Yerba 1 kg|10|90|900").arg(yerba_),
                           QStringLiteral("1|%1|7790001|Yerba 1 kg|1.5|19.99|29.985").arg(yerba_),
                           QStringLiteral("2|%1|7790002|Azúcar 1 kg|10|100|1000").arg(azucar_)}));
    struct Caso {
        qint32 idRed;
        double descuento, alicuota;
        const char* esperado; // neto, monto de descuento, subtotal, impuesto, total
    };
    const Caso casos[] = {{1, 0, 0, "929.99 0.00 929.99 0.00 929.99"},
                          {1, 10, 21, "929.99 93.00 836.99 175.76 1012.75"},
                          {1, 0, 10.5, "929.99 0.00 929.99 97.64 1027.63"},
                          {2, 10, 21, "1000.00 100.00 900.00 189.00 1089.00"},
                          {3, 10, 21, "0.00 0.00 0.00 0.00 0.00"}};
    const auto texto = [](Dinero d) { return QString::number(d.aDouble(), 'f', 2); };
    for (const Caso& c : casos) {
        const TotalesCompra t = CalculaTotalesCompra(almacen(), c.idRed, c.descuento, c.alicuota);
        EXPECT_EQ(QStringList({texto(t.neto), texto(t.montoDescuento), texto(t.subTotal), texto(t.impuesto), texto(t.total)})
                      .join(u' '),
                  QString::fromLatin1(c.esperado))
            << c.idRed << " " << c.alicuota;
        EXPECT_EQ(t.hayLineas, c.idRed != 3);
    }
    // Rechazos de una línea: nada se escribe.
    EXPECT_EQ(AvisoDe([&] { AgregaLineaCompra(almacen(), 1, {std::nullopt, "1", "1", "0"}); }),
              QStringLiteral("Elija el artículo por su código, por el código del proveedor o en la lista."));
    EXPECT_EQ(AvisoDe([&] { linea(almacen(), 1, yerba_, "1,5", "10"); }).left(9), QStringLiteral("Cantidad:"));
    EXPECT_EQ(AvisoDe([&] { linea(almacen(), 1, yerba_, "1", "diez"); }).left(9), QStringLiteral("Unitario:"));
    EXPECT_EQ(CuentaRegistros(almacen(), QStringLiteral("TmpFacCompra")), 3);
}

// Cada fila de una compra, según su forma de pago y sus opciones.
TEST_P(Compras, FilasDeCadaCompra) {
    struct Caso {
        const char* nombre;
        bool ctaCte, stock, costos, pendiente;
        QStringList esperado;
    };
    const QString y = QString::number(yerba_), z = QString::number(azucar_);
    const QString cabecera = QStringLiteral("C|A|1|123|FACTURA|2026-11-20|%1|%2|1290|10|129|243.81|21|1404.81|%3|%4|Remito 55");
    const QString renglones = QStringLiteral("D|%1|10|90|900;D|%2|5|40|200;D|%1|2|95|190").arg(y, z);
    const QString diario = QStringLiteral("M|%1|2026-11-20|1|A0001-00000123|10|0|PROVEEDOR:Distribuidora Norte;"
                                          "M|%2|2026-11-20|1|A0001-00000123|5|0|PROVEEDOR:Distribuidora Norte;"
                                          "M|%1|2026-11-20|1|A0001-00000123|2|0|PROVEEDOR:Distribuidora Norte")
                               .arg(y, z);
    const QString detalle = QStringLiteral("Compra A0001-00000123 / Distribuidora Norte");
    const QString caja = QStringLiteral("J|2026-11-20|") + detalle + QStringLiteral("|0|1404.81|EFVO|7");
    const QString debe = QStringLiteral("P|2026-11-20|") + detalle + QStringLiteral("|1404.81|0|Remito 55");
    const QString haber = QStringLiteral("P|2026-11-20|") + detalle + QStringLiteral("|0|1404.81|EFVO");
    const QString sinCambio = QStringLiteral("A|7790001|10|800|NULL|1210;A|7790002|NULL|500|NULL|1210;A|7790003|4|300|NULL|1210");
    const QString conStock = QStringLiteral("A|7790001|22|%1|2026-11-20|1210;A|7790002|5|%2|2026-11-20|1210;A|7790003|4|300|NULL|1210");
    const Caso casos[] = {
        {"contado, stock y costos", false, true, true, false,
         {cabecera.arg(efectivo_).arg(1).arg(1).arg(1), renglones, conStock.arg(95).arg(40), diario, caja, debe, haber}},
        {"contado, stock sin costos, pendiente", false, true, false, true,
         {cabecera.arg(efectivo_).arg(0).arg(1).arg(1), renglones, conStock.arg(800).arg(500), diario, caja, debe, haber}},
        {"cuenta corriente, sin stock (los costos no se tocan)", true, false, true, false,
         {cabecera.arg(ctaCte_).arg(1).arg(0).arg(0), renglones, sinCambio,
          QString(), QString(), debe, QString()}},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.nombre);
        sinCompras();
        linea(almacen(), 1, yerba_, "10", "100", "10");
        linea(almacen(), 1, azucar_, "5", "40");
        linea(almacen(), 1, yerba_, "2", "95");
        DatosCompra d = compra("123", c.ctaCte ? "CTA CTE" : "EFVO");
        d.registraStock = c.stock;
        d.asignaCostos = c.costos;
        d.pendiente = c.pendiente;
        const CompraRegistrada r = RegistraCompra(almacen(), d);
        EXPECT_EQ(r.numero, QStringLiteral("A0001-00000123"));
        QStringList esperado;
        for (const QString& e : c.esperado)
            if (!e.isEmpty()) esperado << e.split(u';');
        EXPECT_EQ(estado(), esperado);
        EXPECT_EQ(CuentaRegistros(almacen(), QStringLiteral("TmpFacCompra")), 3); // el borrador queda
    }
}

// Corregir una compra: la anterior se deshace (stock por sus renglones, caja, cuenta) y la nueva
// se escribe; el diario conserva las filas de las dos y los costos no vuelven.
TEST_P(Compras, CorreccionDeshaceYVuelveAEscribir) {
    linea(almacen(), 1, yerba_, "10", "100");
    DatosCompra d = compra("7");
    d.asignaCostos = true;
    const qint64 primera = RegistraCompra(almacen(), d).idCompra;
    // Un pago aparte queda en la cuenta; una venta con el mismo número en la caja, también.
    almacen().ejecuta(QStringLiteral("INSERT INTO CtaProve (idProveedor, idCompra, Fecha, Detalle, Haber) VALUES (?, 0, '2026-11-21', 'Pago', 50)"),
                      {proveedor_});
    almacen().ejecuta(QStringLiteral("INSERT INTO Caja (idComprobante, Fecha, Detalles, Ingreso) VALUES (?, '2026-11-20', 'VENTA :FACT', 10)"),
                      {primera});

    const std::optional<CompraGuardada> g = CargaCompra(almacen(), 1, primera);
    ASSERT_TRUE(g);
    EXPECT_EQ(QStringList({g->datos.letra, g->datos.sucursal, g->datos.numero, g->datos.tipo, g->datos.alicuota,
                           g->datos.referencia, g->datos.formaPago, g->total.aTexto()}),
              QStringList({"A", "0001", "00000007", "FACTURA", "21.00", "Remito 55", "EFVO", "1089.0000"}));
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT PCRed, Codigo, Cantidad, Unitario, SubTotal FROM TmpFacCompra")),
              QStringList{"1|7790001|10|100|1000"});
    almacen().ejecuta(QStringLiteral("DELETE FROM TmpFacCompra"));
    linea(almacen(), 1, yerba_, "4", "110");
    linea(almacen(), 1, fideos_, "3", "50");
    DatosCompra cambio = g->datos;
    cambio.idUsuario = 7;
    cambio.registraCaja = true;
    cambio.asignaCostos = false;
    const qint64 segunda = RegistraCompra(almacen(), cambio).idCompra;
    EXPECT_NE(segunda, primera);
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT idCompra, Total FROM Compras")),
              QStringList{QStringLiteral("%1|713.9").arg(segunda)});
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT idCompra, idArticulo, Cantidad FROM DetCompras ORDER BY idDetCompra")),
              QStringList({QStringLiteral("%1|%2|4").arg(segunda).arg(yerba_), QStringLiteral("%1|%2|3").arg(segunda).arg(fideos_)}));
    // Stock: 10 + 10 − 10 + 4; el costo de la primera (100) queda.
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT Codigo, StockActual, PrecioCosto FROM Articulos ORDER BY idArticulo")),
              QStringList({"7790001|14|100", "7790002|NULL|500", "7790003|7|300"}));
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT idComprobante, Ingreso FROM MovimientoStock ORDER BY idMovimientoStock")),
              QStringList({QStringLiteral("%1|10").arg(primera), QStringLiteral("%1|4").arg(segunda),
                           QStringLiteral("%1|3").arg(segunda)}));
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT idComprobante, Detalles, Egreso, Ingreso FROM Caja ORDER BY idCaja")),
              QStringList({QStringLiteral("%1|VENTA :FACT|0|10").arg(primera),
                           QStringLiteral("%1|Compra A0001-00000007 / Distribuidora Norte|713.9|0").arg(segunda)}));
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT idCompra, Debe, Haber FROM CtaProve ORDER BY idMovCta")),
              QStringList({"0|0|50", QStringLiteral("%1|713.9|0").arg(segunda), QStringLiteral("%1|0|713.9").arg(segunda)}));
}

// Un rechazo, un documento repetido o una falla del almacén a mitad de camino dejan la compra que
// se corregía exactamente como estaba.
TEST_P(Compras, RechazoOFallaDejanLaCompraAnteriorEntera) {
    linea(almacen(), 1, yerba_, "10", "100");
    const qint64 anterior = RegistraCompra(almacen(), compra("7")).idCompra;
    linea(almacen(), 1, azucar_, "1", "100");
    RegistraCompra(almacen(), compra("8"));
    const QStringList antes = estado();
    struct Caso {
        const char* numero;
        const char* alicuota;
        const char* tipo;
        QString aviso;
    };
    const Caso casos[] = {
        {"7", "x", "FACTURA", QStringLiteral("Porcentaje/alicuota impositiva incorrecta!!")},
        {"siete", "21", "FACTURA", QStringLiteral("Verifique la numeración del comprobante!!")},
        {"7", "21", "", QStringLiteral("Verifique el tipo de comprobante!!")},
        {"8", "21", "FACTURA", kCompraRepetida},    // choca con la otra compra después de quitar la anterior
        {"7", "21", "FACTURA", QStringLiteral("ErrorAlmacen")}, // la cuenta del proveedor no se puede escribir
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.numero);
        DatosCompra d = compra(c.numero);
        d.idCompraAnterior = anterior;
        d.alicuota = QString::fromLatin1(c.alicuota);
        d.tipo = QString::fromLatin1(c.tipo);
        const bool falla = c.aviso == u"ErrorAlmacen";
        if (falla) almacen().ejecuta(QStringLiteral("ALTER TABLE CtaProve RENAME TO CtaProveFuera"));
        EXPECT_EQ(AvisoDe([&] { RegistraCompra(almacen(), d); }), c.aviso);
        if (falla) almacen().ejecuta(QStringLiteral("ALTER TABLE CtaProveFuera RENAME TO CtaProve"));
        EXPECT_EQ(estado(), antes);
    }
    // Sin líneas, y un documento repetido de un tipo que se guarda cortado.
    almacen().ejecuta(QStringLiteral("DELETE FROM TmpFacCompra"));
    EXPECT_EQ(AvisoDe([&] { RegistraCompra(almacen(), compra("9")); }), QStringLiteral("No ingresó ningún ítem en la lista!!"));
    linea(almacen(), 1, yerba_, "1", "100");
    DatosCompra orden = compra("9");
    orden.tipo = QStringLiteral("ORDEN DE COMPRA");
    RegistraCompra(almacen(), orden);
    EXPECT_EQ(AvisoDe([&] { RegistraCompra(almacen(), orden); }), kCompraRepetida);
    // Una fecha cerrada no detiene una compra.
    almacen().ejecuta(QStringLiteral("INSERT INTO CorteCaja (Fecha) VALUES ('2026-11-20')"));
    EXPECT_EQ(AvisoDe([&] { RegistraCompra(almacen(), compra("10")); }), QString());
}

// Dos terminales arman compras a la vez, cada una con su borrador; el stock y el costo quedan
// exactos después de las dos.
TEST_P(Compras, DosTerminalesConSuPropioBorrador) {
    std::unique_ptr<Almacen> otra = base().otraConexion();
    linea(almacen(), 1, yerba_, "10", "100");
    linea(*otra, 2, yerba_, "5", "120");
    linea(almacen(), 1, azucar_, "2", "40");
    DatosCompra segunda = compra("2");
    segunda.idRed = 2;
    segunda.asignaCostos = true;
    RegistraCompra(*otra, segunda);
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT PCRed, Codigo, Cantidad FROM TmpFacCompra ORDER BY idTmpFacCompra")),
              QStringList({"1|7790001|10", "2|7790001|5", "1|7790002|2"}));
    VaciaBorradorCompra(*otra, 2);
    DatosCompra primera = compra("1");
    primera.asignaCostos = true;
    RegistraCompra(almacen(), primera);
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT NroComprobante, Total FROM Compras ORDER BY idCompra")),
              QStringList({"2|653.4", "1|1176.12"}));
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT Codigo, StockActual, PrecioCosto FROM Articulos ORDER BY idArticulo")),
              QStringList({"7790001|25|100", "7790002|2|40", "7790003|4|300"}));
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT PCRed FROM TmpFacCompra GROUP BY PCRed")), QStringList{"1"});
}

// El borrado y la corrección deshacen la compra de maneras distintas: el borrado vuelve el stock por
// el diario y lo borra, deja los renglones y borra sólo la caja de una compra con su cuenta, fecha y
// número; la corrección vuelve el stock por los renglones y deja el diario.
TEST_P(Compras, BorradoFrenteACorreccion) {
    struct Caso {
        const char* nombre;
        bool borra;
        QStringList esperado; // renglones, stock y costo, diario, caja, cuenta
    };
    const QString y = QString::number(yerba_);
    const Caso casos[] = {
        {"borrado", true,
         {"D|" + y + "|10|90|900", "A|7790001|10|90", "J|VENTA :FACT|10", "P|0|50"}},
        {"corrección sin líneas nuevas", false,
         {"A|7790001|10|90", "M|" + y + "|10", "J|VENTA :FACT|10", "P|0|50"}},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.nombre);
        sinCompras();
        linea(almacen(), 1, yerba_, "10", "100", "10");
        DatosCompra d = compra("7");
        d.asignaCostos = true;
        const qint64 id = RegistraCompra(almacen(), d).idCompra;
        // Un pago aparte y una venta con el mismo número, el mismo día y la misma cuenta.
        almacen().ejecuta(QStringLiteral("INSERT INTO CtaProve (idProveedor, idCompra, Fecha, Haber) VALUES (?, 0, '2026-11-21', 50)"),
                          {proveedor_});
        almacen().ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso) "
                                         "VALUES (?, ?, '2026-11-20', 'VENTA :FACT', 10)"),
                          {cuenta_, id});
        if (c.borra) {
            BorraCompra(almacen(), id);
            BorraCompra(almacen(), id); // otra terminal ya la borró: nada más cambia
        } else {
            // Corregida con otra fecha y sin stock: sale entera la anterior.
            DatosCompra g = CargaCompra(almacen(), 1, id)->datos;
            g.registraStock = g.registraCaja = false;
            g.formaPago = QStringLiteral("CTA CTE");
            g.idFormaPago = ctaCte_;
            // Lo que escribe la compra nueva no interesa aquí.
            const qint64 nueva = RegistraCompra(almacen(), g).idCompra;
            for (const char* t : {"Compras", "DetCompras", "CtaProve"})
                almacen().ejecuta(QStringLiteral("DELETE FROM %1 WHERE idCompra = ?").arg(QString::fromLatin1(t)), {nueva});
        }
        QStringList r;
        for (const char* sql : {"SELECT 'D', idArticulo, Cantidad, PrecioUnitario, SubTotal FROM DetCompras",
                                "SELECT 'A', Codigo, StockActual, PrecioCosto FROM Articulos WHERE Codigo = '7790001'",
                                "SELECT 'M', idArticulo, Ingreso FROM MovimientoStock", "SELECT 'J', Detalles, Ingreso FROM Caja",
                                "SELECT 'P', Debe, Haber FROM CtaProve", "SELECT 'C', idCompra FROM Compras"})
            r << Filas(almacen(), QString::fromLatin1(sql));
        EXPECT_EQ(r, c.esperado);
    }
}

// La cuenta de un proveedor en dinero exacto: compras al contado (saldo 0) y en cuenta corriente,
// pagos con y sin documentos elegidos y con y sin caja, el borrado de una compra y "Quitar".
TEST_P(Compras, CuentaDelProveedorConPagosYBorrados) {
    const auto saldo = [&] { return SaldoProveedor(almacen(), proveedor_).value_or(Dinero(-999999)).aTexto(); };
    EXPECT_FALSE(SaldoProveedor(almacen(), proveedor_));
    linea(almacen(), 1, yerba_, "10", "100");
    RegistraCompra(almacen(), compra("1"));
    EXPECT_EQ(saldo(), QStringLiteral("0.0000"));
    DatosCompra cuenta = compra("2", "CTA CTE");
    cuenta.pendiente = true;
    const qint64 debe = RegistraCompra(almacen(), cuenta).idCompra;
    cuenta.numero = QStringLiteral("3");
    cuenta.descuento = QStringLiteral("0");
    const qint64 otra = RegistraCompra(almacen(), cuenta).idCompra;
    EXPECT_EQ(saldo(), QStringLiteral("2299.0000")); // 1089 + 1210
    EXPECT_EQ(ComprasImpagas(almacen(), proveedor_, QStringLiteral("###,###,##0.00")),
              (QList<CompraImpaga>{{debe, "A-0001-00000002 20/11/2026 1,089.00"}, {otra, "A-0001-00000003 20/11/2026 1,210.00"}}));

    PagoProveedor pago{proveedor_, {debe, otra}, "1,000.50", "EFVO", cuenta_, QDate(2026, 11, 22), "Cheque 123",
                       "transferencia", true, 7};
    // Rechazos: nada se escribe y las compras siguen impagas.
    struct Rechazo {
        const char* importe;
        bool sinCuenta, cerrado;
        QString aviso;
    };
    const Rechazo rechazos[] = {{"mil", false, false, QStringLiteral("Error, el importe es incorrecto!")},
                                {"100", true, false, QStringLiteral("Error, ingrese una cuenta correcta!")},
                                {"100", false, true, QStringLiteral("Error, fecha cerrada para ingresar movimientos!")}};
    almacen().ejecuta(QStringLiteral("INSERT INTO CorteCaja (Fecha) VALUES ('2026-11-25')"));
    for (const Rechazo& x : rechazos) {
        PagoProveedor p = pago;
        p.importe = QString::fromLatin1(x.importe);
        if (x.sinCuenta) p.idCuenta.reset();
        if (x.cerrado) p.fecha = QDate(2026, 11, 25);
        EXPECT_EQ(AvisoDe([&] { RegistraPagoProveedor(almacen(), p); }), x.aviso);
    }
    EXPECT_EQ(saldo(), QStringLiteral("2299.0000"));
    // El pago cancela los dos documentos aunque no alcance para ambos.
    const qint64 idPago = RegistraPagoProveedor(almacen(), pago);
    EXPECT_EQ(saldo(), QStringLiteral("1298.5000"));
    EXPECT_TRUE(ComprasImpagas(almacen(), proveedor_, QString()).isEmpty());
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT idComprobante, Detalles, Egreso, FormaPago, idUsuario FROM Caja "
                                              "WHERE Detalles LIKE 'PAGO%'")),
              QStringList{QStringLiteral("%1|PAGO A PROVE. Distribuidora Norte//transferencia|1000.5|EFVO|7").arg(idPago)});
    // Sin documentos y sin caja: baja la cuenta y la caja no.
    pago.comprasCanceladas.clear();
    pago.registraCaja = false;
    pago.importe = QStringLiteral("298.5");
    RegistraPagoProveedor(almacen(), pago);
    EXPECT_EQ(saldo(), QStringLiteral("1000.0000"));
    EXPECT_EQ(CuentaRegistros(almacen(), QStringLiteral("SELECT 1 FROM Caja WHERE Detalles LIKE 'PAGO%'")), 1);
    // Una compra cancelada se borra igual (aun con la fecha cerrada); los pagos aparte quedan.
    almacen().ejecuta(QStringLiteral("INSERT INTO CorteCaja (Fecha) VALUES ('2026-11-20')"));
    BorraCompra(almacen(), otra);
    EXPECT_EQ(saldo(), QStringLiteral("-210.0000"));
    // "Quitar" el primer pago sube el saldo y deja las compras canceladas.
    QuitaMovimientoProveedor(almacen(), idPago);
    EXPECT_EQ(saldo(), QStringLiteral("790.5000"));
    EXPECT_TRUE(ComprasImpagas(almacen(), proveedor_, QString()).isEmpty());
    EXPECT_EQ(CompraDeMovimiento(almacen(), almacen().valor(QStringLiteral("SELECT MIN(idMovCta) FROM CtaProve")).toLongLong()),
              std::optional<qint64>(almacen().valor(QStringLiteral("SELECT MIN(idCompra) FROM Compras")).toLongLong()));
    EXPECT_FALSE(CompraDeMovimiento(almacen(), almacen().valor(QStringLiteral("SELECT MAX(idMovCta) FROM CtaProve")).toLongLong()));
}

// El registro de compras del proveedor: sin filtro todas; por tipo (también "ORDEN DE COMPRA", que se
// guarda cortado) y fechas; con las fechas al revés, ninguna.
TEST_P(Compras, RegistroFiltradoPorTipoYFechas) {
    const char* tipos[] = {"FACTURA", "ORDEN DE COMPRA", "REMITO"};
    int n = 0;
    for (const char* tipo : tipos) {
        linea(almacen(), 1, yerba_, "1", "100");
        DatosCompra d = compra(QByteArray::number(++n).constData());
        d.tipo = QString::fromLatin1(tipo);
        d.fecha = QDate(2026, 11, 10 * n);
        RegistraCompra(almacen(), d);
    }
    const auto lista = [&](std::optional<FiltroCompras> f) {
        const ConsultaConParametros c = ComprasDeProveedor(proveedor_, f);
        return Filas(almacen(), QStringLiteral("SELECT NroComprobante FROM (") + c.sql + QStringLiteral(") AS q"), c.parametros)
            .join(u',');
    };
    EXPECT_EQ(lista(std::nullopt), QStringLiteral("1,2,3"));
    const QDate d1(2026, 11, 1), d2(2026, 11, 30);
    EXPECT_EQ(lista(FiltroCompras{QStringLiteral("<Todos>"), d1, d2}), QStringLiteral("1,2,3"));
    EXPECT_EQ(lista(FiltroCompras{QStringLiteral("ORDEN DE COMPRA"), d1, d2}), QStringLiteral("2"));
    EXPECT_EQ(lista(FiltroCompras{QStringLiteral("<Todos>"), QDate(2026, 11, 15), d2}), QStringLiteral("2,3"));
    EXPECT_EQ(lista(FiltroCompras{QStringLiteral("<Todos>"), d2, d1}), QString());
}

ORV_AMBOS_MOTORES(Compras);

} // namespace
} // namespace orv
