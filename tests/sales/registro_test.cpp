// Registro y borrado de comprobantes: cada fila que deja cada clase de comprobante, comparada
// entera, y su borrado por las marcas del comprobante; lo que se rechaza sin dejar rastro; los
// puntos redondeados; y varias terminales a la vez.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "sales/registro.h"
#include "store/actualizacion.h"
#include "store/aviso.h"

#include <atomic>
#include <functional>
#include <set>
#include <thread>
#include <vector>

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::PorMotorAlDia;

// Claves fijas, para que las filas esperadas se lean: yerba 101 (rubro con 2 puntos), vela 102
// (rubro sin puntos, stock nulo), la clienta 501, la vendedora 7 (10 % de comisión), el usuario 1,
// y los tipos 11 FACTURA B, 12 NOTA DE CREDITO B y 13 PRESUPUESTO.
constexpr qint64 kYerba = 101, kVela = 102, kAna = 501, kCarla = 7, kFactura = 11, kNota = 12, kPresupuesto = 13;

// Cada columna que escribe el registro, tabla por tabla, en orden fijo; la tabla entera.
const char* const kTablas[] = {"Comprobantes", "DetalleComprobantes", "MovimientoStock", "Vip", "DetComisiones", "Caja", "Comisiones"};
const char* const kEscrito[] = {
    "SELECT idComprobante, Factura, idTipoComprobante, idVendedor, Fecha, idTipoIva, Nombre, Cuit, FormaPago, HizoCaja, "
    "HizoStock, TipoStock, EsComercial, Cupon, SuPago, SubTotal, PorcDescuento, MontDescuento, ImporteNeto, PorcentajeIVA, "
    "ImporteIVA, Total, idUsuario, idEmpresa, ImpresoFiscal, idVendio, Comision FROM Comprobantes ORDER BY idComprobante",
    "SELECT idComprobante, idArticulo, Cantidad, Unitario, SubTotal, Sn, costounitario, Fecha, EsComercial, idUsuario, "
    "Descripcion FROM DetalleComprobantes ORDER BY idDetalle",
    "SELECT idArticulo, Fecha, idTipoMovimiento, Comprobante, idComprobante, Ingreso, Egreso FROM MovimientoStock "
    "ORDER BY idMovimientoStock",
    "SELECT idCliente, Fecha, idUsuario, idComprobante, PuntosVIP FROM Vip ORDER BY idVip",
    "SELECT Fecha, Detalle, idUsuario, idComprobante, Porcentaje, Importe FROM DetComisiones ORDER BY idDetComisiones",
    "SELECT idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario FROM Caja ORDER BY idCaja",
    "SELECT idVendedor, Fecha, idComprobante, Tipo, Comision, Liquidacion FROM Comisiones ORDER BY idCuentaVendedor",
};
// Stock de la yerba y de la vela, puntos de la clienta, correlativo de cada tipo y líneas del borrador.
const char* const kSaldos =
    "SELECT (SELECT StockActual FROM Articulos WHERE idArticulo = 101), (SELECT StockActual FROM Articulos WHERE idArticulo = 102), "
    "(SELECT PuntosVIP FROM Vendedores WHERE idVendedor = 501), (SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = 11), "
    "(SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = 12), "
    "(SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = 13), (SELECT count(*) FROM TmpFac)";

class Registro : public PorMotorAlDia {
protected:
    void prepara() override {
        Almacen& a = almacen();
        a.ejecuta(QStringLiteral("INSERT INTO Rubros (idRubro, Rubro, PuntosVIP) VALUES (21, 'Almacén', 2), (22, 'Varios', 0)"));
        a.ejecuta(QStringLiteral("INSERT INTO Articulos (idArticulo, Codigo, Descripcion, idRubro, PrecioCosto) "
                                 "VALUES (101, 'A1', 'Yerba 1 kg', 21, 70), (102, 'V1', 'Vela', 22, 5)"));
        a.ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre) VALUES (501, 'Ana O''Neil')"));
        a.ejecuta(QStringLiteral("INSERT INTO Usuarios (idUsuario, NombreCompleto, NombreUsuario, Comision) VALUES (7, 'Carla', 'carla', 10)"));
        a.ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (idTipoComprobante, Tipo, Letra, PuntoDeVenta, DescuentaStock, "
                                 "RegistraCaja, OperacionInversa, EsComercial, NombrePlantilla) VALUES "
                                 "(11, 'FACTURA B', 'B', '0001', 1, 1, 0, 1, ''), (12, 'NOTA DE CREDITO B', 'B', '0001', 1, 1, 1, 1, ''), "
                                 "(13, 'PRESUPUESTO', 'X', '0002', 0, 0, 0, 0, '')"));
        vuelveAlComienzo();
    }
    // Nada registrado: yerba 10, vela sin stock, 100 puntos, correlativos 41, 7 y 0.
    void vuelveAlComienzo() {
        Almacen& a = almacen();
        for (const char* t : kTablas) a.ejecuta(QStringLiteral("DELETE FROM ") + QString::fromLatin1(t));
        a.ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = CASE WHEN idArticulo = 101 THEN 10 END"));
        a.ejecuta(QStringLiteral("UPDATE Vendedores SET PuntosVIP = 100 WHERE idVendedor = 501"));
        a.ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET Correlativo = CASE idTipoComprobante WHEN 11 THEN 41 WHEN 12 THEN 7 "
                                 "ELSE 0 END WHERE idTipoComprobante > 10"));
    }
    // Un tipo que sólo mueve stock, numerado desde 1.
    qint64 tipoConStock(const char* nombre) {
        return almacen().inserta(QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, Correlativo, DescuentaStock) "
                                                "VALUES (?, 'B', '0001', 0, 1)"),
                                 {QString::fromLatin1(nombre)}, QStringLiteral("idTipoComprobante"));
    }
    // El borrador en su orden: yerba, vela con número de serie, un artículo que ya no está en el
    // catálogo y otra vez yerba. Suma 401.25.
    void borrador() {
        almacen().ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, Sn, PCRed) "
                                         "VALUES (101, 'A1', 'Yerba 1 kg', 2, 121, 242, NULL, 1), (102, 'V1', 'Vela', 0.5, 10, 5, 'S/N 9', 1), "
                                         "(9999, 'Z9', 'Ya no está', 1, 3, 3, NULL, 1), (101, 'A1', 'Yerba 1 kg', 1.25, 121, 151.25, NULL, 1)"));
    }
    // La venta como la deja el panel: 10 % de descuento y 21 % de impuesto sobre el neto. Con
    // `tarjeta` ("C" por cantidad, "P" por importe) la clienta vino por su tarjeta.
    static DatosRegistro datos(qint64 idTipo, const char* forma = "EFVO", const char* tarjeta = "") {
        return {.idRed = 1, .idUsuario = 1, .idTipoComprobante = idTipo, .idCliente = kAna, .clienteEsVip = *tarjeta != 0,
                .nombreCliente = QStringLiteral("Ana O'Neil"), .cuitCliente = QStringLiteral("27-12345678-0"), .idTipoIva = 3,
                .formaPago = QString::fromLatin1(forma), .cupon = QString(), .idVendio = kCarla,
                .textoTipo = idTipo == kNota ? QStringLiteral("NOTA DE CREDITO B") : QStringLiteral("FACTURA B"), .suPago = Dinero(500),
                .subTotal = Dinero(401, 2500), .porcDescuento = 10, .montDescuento = Dinero(40, 1300), .neto = Dinero(361, 1200),
                .porcImpuesto = Dinero(21), .importeIva = Dinero(75, 8400), .total = Dinero(436, 9600),
                .formaCalculoVip = QString::fromLatin1(tarjeta), .hoy = QDate(2026, 11, 23)};
    }
    QStringList filas(const QString& sql, const QVariantList& p = {}) { return prueba::Filas(almacen(), sql, p); }
    // Una venta de una unidad de cada artículo (a 10) desde la terminal `red`, por la conexión `a`.
    static Registrado vende(Almacen& a, qint32 red, qint64 idTipo, std::initializer_list<qint64> articulos, const char* tarjeta = "") {
        for (qint64 art : articulos)
            a.ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                     "VALUES (?, 'X', 'Uno', 1, 10, 10, ?)"),
                      {art, red});
        DatosRegistro d = datos(idTipo, "EFVO", tarjeta);
        d.idRed = red;
        return RegistraComprobante(a, d, Ruta::Nada);
    }
    // Todo lo escrito en las tablas del registro, con el nombre de la tabla, y los saldos.
    QStringList foto() {
        QStringList r;
        for (size_t i = 0; i < std::size(kTablas); ++i)
            for (const QString& f : filas(kEscrito[i])) r << QString::fromLatin1(kTablas[i]) + u':' + f;
        return r << filas(kSaldos);
    }
};

// Cada clase de comprobante deja exactamente estas filas, columna por columna ("#" es la clave del
// comprobante recién registrado), estos saldos y este resultado; y su borrado las deshace.
TEST_P(Registro, CadaComprobanteDejaSusFilasExactasYSuBorradoLasDeshace) {
    // Las filas esperadas de cada tabla; los saldos: yerba|vela|puntos de Ana|correlativos 11, 12 y
    // 13|borrador; el resultado: número|factura|puntos.
    struct Caso {
        const char* nombre;
        DatosRegistro datos;
        Ruta ruta;
        QStringList esperado[std::size(kTablas)];
        const char *saldos, *resultado;
    };
    // Las líneas, siempre en el orden del borrador y con los importes como vinieron; el stock sale
    // (o entra, con la operación inversa) también por el artículo que ya no está.
    const auto lineas = [](const char* comercial) {
        QStringList r;
        for (const char* l : {"#|101|2|121|242|NULL|70|2026-11-23|%1|1|Yerba 1 kg", "#|102|0.5|10|5|S/N 9|5|2026-11-23|%1|1|Vela",
                              "#|9999|1|3|3|NULL|0|2026-11-23|%1|1|Ya no está", "#|101|1.25|121|151.25|NULL|70|2026-11-23|%1|1|Yerba 1 kg"})
            r << QString::fromUtf8(l).arg(QLatin1String(comercial));
        return r;
    };
    const auto movimientos = [](const char* factura, bool entra) {
        QStringList r;
        for (const char* c : {"101|2", "102|0.5", "9999|1", "101|1.25"}) {
            const QStringList ac = QString::fromLatin1(c).split(u'|');
            r << ac[0] + "|2026-11-23|2|" + factura + "|#|" + (entra ? ac[1] + "|0" : "0|" + ac[1]);
        }
        return r;
    };
    const QStringList comisionCarla = {"2026-11-23|Comision x Vta|7|#|10|36.112"}; // 10 % del neto
    const QStringList cajaVenta = {"1|#|2026-11-23|VENTA :FACT. a Ana O'Neil Nro.B0001-00000042|436.96|0|EFVO|1"};
    DatosRegistro conCupon = datos(kFactura, "CTA CTE"), sinVendedor = datos(kFactura, "EFVO", "P");
    conCupon.cupon = QStringLiteral("T'0042");
    sinVendedor.idVendio.reset();
    const std::vector<Caso> casos = {
        {"venta de contado", datos(kFactura), Ruta::Plantilla,
         {{"#|B0001-00000042|11|501|2026-11-23|3|Ana O'Neil|27-12345678-0|EFVO|1|1|0|1|0|500|401.25|10|40.13|361.12|21|75.84|436.96|1|1|S|7|10"},
          lineas("1"), movimientos("B0001-00000042", false), {}, comisionCarla, cajaVenta, {}},
         "6.75|-0.5|100|42|7|0|0", "42|B0001-00000042|6"},
        {"venta a cuenta, con cupón, a la impresora fiscal", conCupon, Ruta::Fiscal,
         {{"#|B0001-00000042|11|501|2026-11-23|3|Ana O'Neil|27-12345678-0|CTA CTE|1|1|0|1|T'0042|500|401.25|10|40.13|361.12|21|75.84|436.96|1|1|N|7|10"},
          lineas("1"), movimientos("B0001-00000042", false), {}, comisionCarla, {}, {"501|2026-11-23|#|VENTA CTA CTE|436.96|0"}},
         "6.75|-0.5|100|42|7|0|0", "42|B0001-00000042|6"},
        // Importes de la cabecera en negativo salvo el IVA y el descuento; la caja, un ingreso positivo.
        {"nota de crédito de contado", datos(kNota), Ruta::Nada,
         {{"#|B0001-00000008|12|501|2026-11-23|3|Ana O'Neil|27-12345678-0|EFVO|1|1|1|1|0|500|-401.25|10|40.13|-361.12|21|75.84|-436.96|1|1|S|7|10"},
          lineas("1"), movimientos("B0001-00000008", true), {}, {},
          {"1|#|2026-11-23|VENTA :NOTA. a Ana O'Neil Nro.B0001-00000008|436.96|0|EFVO|1"}, {}},
         "13.25|0.5|100|41|8|0|0", "8|B0001-00000008|6"},
        // El crédito va a Liquidacion, positivo; la nota también da puntos (3.25 yerbas × 2 = 6.5: la
        // fila va al par, 6, y el saldo 106.5 también, 106).
        {"nota de crédito a cuenta, con tarjeta", datos(kNota, "CTA CTE", "C"), Ruta::Nada,
         {{"#|B0001-00000008|12|501|2026-11-23|3|Ana O'Neil|27-12345678-0|CTA CTE|1|1|1|1|0|500|-401.25|10|40.13|-361.12|21|75.84|-436.96|1|1|S|7|10"},
          lineas("1"), movimientos("B0001-00000008", true), {"501|2026-11-23|1|#|6"}, {}, {}, {"501|2026-11-23|#|VENTA CTA CTE|0|436.96"}},
         "13.25|0.5|106|41|8|0|0", "8|B0001-00000008|6"},
        // Sin stock, sin caja, no comercial: cabecera y líneas; los puntos de la tarjeta, sí.
        {"presupuesto con tarjeta, a la impresora de tickets", datos(kPresupuesto, "EFVO", "C"), Ruta::Tickets,
         {{"#|X0002-00000001|13|501|2026-11-23|3|Ana O'Neil|27-12345678-0|EFVO|0|0|0|0|0|500|401.25|10|40.13|361.12|21|75.84|436.96|1|1|S|7|10"},
          lineas("0"), {}, {"501|2026-11-23|1|#|6"}, {}, {}, {}},
         "10|NULL|106|41|7|1|0", "1|X0002-00000001|6"},
        // Por importe: 393.25 de yerba × 2 = 786.5, al par 786; sin vendedora elegida no hay comisión.
        {"cliente con tarjeta, puntos por importe, sin vendedor", sinVendedor, Ruta::Plantilla,
         {{"#|B0001-00000042|11|501|2026-11-23|3|Ana O'Neil|27-12345678-0|EFVO|1|1|0|1|0|500|401.25|10|40.13|361.12|21|75.84|436.96|1|1|S|0|0"},
          lineas("1"), movimientos("B0001-00000042", false), {"501|2026-11-23|1|#|786"}, {}, cajaVenta, {}},
         "6.75|-0.5|886|42|7|0|0", "42|B0001-00000042|786"},
    };
    const auto registra = [&](const Caso& c) {
        vuelveAlComienzo();
        borrador();
        const Registrado r = RegistraComprobante(almacen(), c.datos, c.ruta);
        EXPECT_EQ(QStringLiteral("%1|%2|%3").arg(r.numero).arg(r.factura).arg(r.puntos), c.resultado) << c.nombre;
        for (size_t i = 0; i < std::size(kTablas); ++i) {
            QStringList esperado = c.esperado[i];
            esperado.replaceInStrings(QStringLiteral("#"), QString::number(r.idComprobante));
            EXPECT_EQ(filas(kEscrito[i]), esperado) << c.nombre << ": " << kTablas[i];
        }
        EXPECT_EQ(filas(kSaldos), QStringList{c.saldos}) << c.nombre;
        // El borrado sigue lo que el comprobante guardó aunque el tipo cambie del todo: no queda
        // nada, el stock vuelve (la vela, nula, sigue nula), los puntos y el número no vuelven.
        // Otra terminal que lo había leído lo borra otra vez: lo dice y no deshace dos veces.
        const ComprobanteABorrar leido = *LeeComprobanteABorrar(almacen(), r.idComprobante);
        const QString invierte = QStringLiteral("UPDATE TiposDeComprobantes SET DescuentaStock = 1 - DescuentaStock, "
                                                "RegistraCaja = 1 - RegistraCaja, OperacionInversa = 1 - OperacionInversa");
        almacen().ejecuta(invierte);
        almacen().ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = NULL WHERE idArticulo = 102"));
        BorraComprobante(almacen(), leido);
        almacen().ejecuta(invierte);
        const QStringList borrado = {QStringLiteral("10|NULL|") + QString::fromLatin1(c.saldos).section(u'|', 2)};
        EXPECT_EQ(foto(), borrado) << c.nombre;
        EXPECT_EQ(AvisoDe([&] { BorraComprobante(almacen(), leido); }), kComprobanteYaBorrado) << c.nombre;
        EXPECT_EQ(foto(), borrado) << c.nombre;
    };
    for (const Caso& c : casos) registra(c);
    // Sin la cuenta "Ventas Mostrador" la venta se registra igual y su caja queda sin cuenta.
    almacen().ejecuta(QStringLiteral("DELETE FROM Cuentas WHERE Cuenta = 'Ventas Mostrador'"));
    Caso sinCuenta = casos.front();
    sinCuenta.nombre = "sin la cuenta Ventas Mostrador";
    sinCuenta.esperado[5] = QStringList{"NULL|#|2026-11-23|VENTA :FACT. a Ana O'Neil Nro.B0001-00000042|436.96|0|EFVO|1"};
    registra(sinCuenta);
}

// Lo que no se registra no deja rastro: ni filas, ni stock, ni puntos, ni número; el borrador queda.
TEST_P(Registro, LoRechazadoNoDejaRastroNiConsumeElNumero) {
    const std::tuple<const char*, QStringList, QString> casos[] = {
        {"un borrador vacío", {"DELETE FROM TmpFac"}, "No hay articulos a facturar!"},
        {"una línea imposible, guardada por otro camino", {"UPDATE TmpFac SET Cantidad = 1e300 WHERE Codigo = 'V1'"},
         "La línea \"Vela\" tiene una cantidad o un importe fuera de rango: bórrela o corríjala."},
        // La última escritura, la de caja, la rechaza el almacén (una vista con DISTINCT no se puede
        // escribir en ningún motor): todo lo anterior se deshace.
        {"la caja rechazada por el almacén",
         {"ALTER TABLE Caja RENAME TO CajaGuardada", "CREATE VIEW Caja AS SELECT DISTINCT * FROM CajaGuardada"}, "ErrorAlmacen"},
    };
    const auto estado = [&] { return foto() + filas("SELECT * FROM TmpFac ORDER BY idTmpFac"); };
    for (const auto& [que, prepara, aviso] : casos) {
        borrador();
        for (const QString& sql : prepara) almacen().ejecuta(sql);
        const QStringList antes = estado();
        EXPECT_EQ(AvisoDe([&] { RegistraComprobante(almacen(), datos(kFactura, "EFVO", "C"), Ruta::Plantilla); }), aviso) << que;
        EXPECT_EQ(estado(), antes) << que;
        almacen().ejecuta(QStringLiteral("DELETE FROM TmpFac"));
    }
}

// Los puntos ganados se cuentan con decimales; la fila de la tarjeta y el saldo del cliente los
// guardan enteros, redondeando la mitad al par, y hay fila siempre que se haya ganado algo.
TEST_P(Registro, PuntosConDecimalesRedondeanAlGuardarse) {
    // Puntos del rubro por unidad (se venden 2 yerbas), saldo previo del cliente; puntos de la fila
    // de la tarjeta, si hay, y saldo después.
    struct Caso {
        double puntosDelRubro;
        qint64 saldoPrevio;
        QStringList queda;
    };
    const Caso casos[] = {
        {0.1, 100, {"0", "100"}},  // 0.2 puntos: fila con 0, saldo igual
        {0.25, 100, {"0", "100"}}, // 0.5 sobre 100: 100.5 va al par, 100
        {0.25, 101, {"0", "102"}}, // 0.5 sobre 101: 101.5 va al par, 102
        {0.75, 100, {"2", "102"}}, // 1.5: la fila va al par, 2; el saldo 101.5 también, 102
        {0.75, 101, {"2", "102"}}, // 1.5 sobre 101: 102.5 va al par, 102
        {0.4, -3, {"1", "-2"}},    // 0.8 sobre un saldo negativo: -2.2 es -2
        {0.25, -3, {"0", "-2"}},   // 0.5 sobre -3: -2.5 va al par, -2
        {0.0, 100, {"100"}},       // nada ganado: ninguna fila
    };
    for (const Caso& c : casos) {
        vuelveAlComienzo();
        almacen().ejecuta(QStringLiteral("UPDATE Rubros SET PuntosVIP = ? WHERE idRubro = 21"), {c.puntosDelRubro});
        almacen().ejecuta(QStringLiteral("UPDATE Vendedores SET PuntosVIP = ? WHERE idVendedor = 501"), {c.saldoPrevio});
        vende(almacen(), 1, kPresupuesto, {kYerba, kYerba}, "C");
        EXPECT_EQ(filas("SELECT PuntosVIP FROM Vip") + filas("SELECT PuntosVIP FROM Vendedores WHERE idVendedor = 501"), c.queda)
            << c.puntosDelRubro << " sobre " << c.saldoPrevio;
    }
}

// Cuatro terminales registran a la vez 100 comprobantes del mismo tipo cada una: 400 números
// distintos y seguidos, y el stock exacto.
TEST_P(Registro, CuatroTerminalesALaVezNuncaRepitenNumeroNiPierdenStock) {
    const qint64 factura = tipoConStock("FACTURA C");
    almacen().ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = 1000 WHERE idArticulo = 101"));
    const int kPorTerminal = GetParam() == prueba::Motor::PostgreSQL ? 100 : 25;
    std::vector<qint64> numeros[4];
    std::vector<std::function<void(Almacen&)>> terminales;
    for (qint32 red = 1; red <= 4; ++red)
        terminales.push_back([&, red](Almacen& a) {
            for (int i = 0; i < kPorTerminal; ++i) numeros[red - 1].push_back(vende(a, red, factura, {kYerba}).numero);
        });
    ASSERT_EQ(enTerminales(terminales), QStringList());
    std::set<qint64> todos;
    for (const auto& v : numeros) todos.insert(v.begin(), v.end());
    const qint64 total = 4 * kPorTerminal;
    EXPECT_EQ(std::make_tuple(qint64(todos.size()), *todos.begin(), *todos.rbegin()), std::make_tuple(total, qint64(1), total));
    EXPECT_EQ(filas("SELECT count(DISTINCT Factura), (SELECT StockActual FROM Articulos WHERE idArticulo = 101) FROM Comprobantes"),
              QStringList{QStringLiteral("%1|%2").arg(total).arg(1000 - total)});
}

// Dos terminales con tipos distintos (no se esperan una a la otra por el número) venden los mismos
// dos artículos en órdenes opuestos, y una tercera borra lo que la primera registró: ninguna
// queda trabada con otra ni pierde stock.
TEST_P(Registro, VentasYBorradosCruzadosNoSeTraban) {
    const qint64 facturaA = tipoConStock("FACTURA A"), facturaC = tipoConStock("FACTURA C");
    almacen().ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = 1000"));
    const int kVentas = GetParam() == prueba::Motor::PostgreSQL ? 60 : 20;
    std::atomic<bool> terminoPrimera{false};
    const auto vendedora = [&](qint32 red, qint64 idTipo, qint64 primero, qint64 segundo) {
        return [=, &terminoPrimera](Almacen& a) {
            try {
                for (int i = 0; i < kVentas; ++i) vende(a, red, idTipo, {primero, segundo});
            } catch (...) {
                terminoPrimera = terminoPrimera || red == 1;
                throw;
            }
            terminoPrimera = terminoPrimera || red == 1;
        };
    };
    const auto borradora = [&](Almacen& a) {
        for (int borrados = 0; borrados < kVentas;) {
            // La bandera se lee antes de buscar: si la primera ya había terminado, un hueco
            // quiere decir que no queda nada suyo por borrar, y no que falta confirmar una venta.
            const bool termino = terminoPrimera.load();
            const QVariant id = a.valor(QStringLiteral("SELECT min(idComprobante) FROM Comprobantes WHERE idTipoComprobante = ?"), {facturaA});
            if (id.isNull() && termino) break;
            if (id.isNull()) std::this_thread::yield();
            else if (const auto c = LeeComprobanteABorrar(a, id.toLongLong())) {
                BorraComprobante(a, *c);
                ++borrados;
            }
        }
    };
    ASSERT_EQ(enTerminales({vendedora(1, facturaA, kYerba, kVela), vendedora(2, facturaC, kVela, kYerba), borradora}), QStringList());
    // Lo de la FACTURA A se borró entero; queda lo de la otra: una unidad de cada uno por venta.
    EXPECT_EQ(filas("SELECT (SELECT count(*) FROM Comprobantes WHERE idTipoComprobante = ?), (SELECT count(*) FROM DetalleComprobantes), "
                    "(SELECT count(*) FROM MovimientoStock), (SELECT StockActual FROM Articulos WHERE idArticulo = 101), "
                    "(SELECT StockActual FROM Articulos WHERE idArticulo = 102)",
                    {facturaA}),
              QStringList{QStringLiteral("0|%1|%1|%2|%2").arg(2 * kVentas).arg(1000 - kVentas)});
}

ORV_AMBOS_MOTORES(Registro);

} // namespace
} // namespace orv
