// Los puntos de los clientes con tarjeta: lo ganado por unidad y por importe en varios rubros
// (también con una nota de crédito) y cómo se ve en los totales del período; la tabla de premios
// con sus rechazos y su vigencia; el cobro de un premio, sus rechazos y dos puestos que cobran a la
// vez. En los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "customers/puntos.h"
#include "sales/registro.h"

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

// La clienta 501 (Ana, tarjeta 123456, 100 puntos) y el 502 (Bruno, sin puntos). Rubros: 21
// Almacén (2 puntos), 22 Bazar (0.1), 23 Varios (sin puntos). Tipos 11 FACTURA B y 12 NOTA DE
// CREDITO B. Premios: 1 vigente en noviembre (80 puntos), 2 vencido ayer (10), 3 desde mañana (10).
constexpr qint64 kAna = 501, kBruno = 502, kFactura = 11, kNota = 12;
const QDate kHoy(2026, 11, 23);

const QString kDiario = QStringLiteral("SELECT idCliente, Fecha, idUsuario, idComprobante, PuntosVIP FROM Vip ORDER BY idVip");
const QString kPuntosAna = QStringLiteral("SELECT PuntosVIP FROM Vendedores WHERE idVendedor = 501");

class Puntos : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        Almacen& a = almacen();
        a.ejecuta(QStringLiteral("INSERT INTO Rubros (idRubro, Rubro, PuntosVIP) VALUES (21, 'Almacén', 2), (22, 'Bazar', 0.1), "
                                 "(23, 'Varios', NULL)"));
        a.ejecuta(QStringLiteral("INSERT INTO Articulos (idArticulo, Codigo, Descripcion, idRubro) VALUES (101, 'A1', 'Yerba', 21), "
                                 "(102, 'B1', 'Taza', 22), (103, 'V1', 'Vela', 23)"));
        a.ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, NroClienteVIP, PuntosVIP) VALUES "
                                 "(501, 'Ana', '123456', 100), (502, 'Bruno', '654321', NULL)"));
        a.ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (idTipoComprobante, Tipo, Letra, PuntoDeVenta, Correlativo, "
                                 "DescuentaStock, RegistraCaja, OperacionInversa, EsComercial, NombrePlantilla) VALUES "
                                 "(11, 'FACTURA B', 'B', '0001', 0, 0, 0, 0, 1, ''), "
                                 "(12, 'NOTA DE CREDITO B', 'B', '0001', 0, 0, 0, 1, 1, '')"));
        a.ejecuta(QStringLiteral("INSERT INTO TablaVIP (idArticulo, Cantidad, VigenciaDESDE, VigenciaHASTA, PuntosRequeridos) "
                                 "VALUES (102, 1, ?, ?, 80), (101, 2, ?, ?, 10), (103, 1, ?, ?, 10)"),
                  {QDate(2026, 11, 1), QDate(2026, 11, 30), QDate(2026, 11, 1), kHoy.addDays(-1), kHoy.addDays(1),
                   QDate(2026, 12, 31)});
    }
    // Una venta a Ana por su tarjeta: 3 yerbas a 10, 1 taza de 150 y 2 velas a 5.
    qint64 vende(qint64 tipo, const char* forma) {
        almacen().ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                         "VALUES (101, 'A1', 'Yerba', 3, 10, 30, 1), (102, 'B1', 'Taza', 1, 150, 150, 1), "
                                         "(103, 'V1', 'Vela', 2, 5, 10, 1)"));
        DatosRegistro d;
        d.idRed = 1;
        d.idUsuario = 4;
        d.idTipoComprobante = tipo;
        d.idCliente = kAna;
        d.clienteEsVip = true;
        d.subTotal = d.neto = d.total = Dinero(190);
        d.formaCalculoVip = QString::fromLatin1(forma);
        d.hoy = kHoy;
        return RegistraComprobante(almacen(), d, Ruta::Nada).idComprobante;
    }
    QStringList totales(qint64 cliente = kAna) {
        const TotalesPuntos t = TotalesPuntosCliente(almacen(), cliente, kHoy, kHoy);
        return {QString::number(t.obtenidos), QString::number(t.cobrados), QString::number(t.diferencia())};
    }
};

// Por unidad: 3 yerbas × 2 + 1 taza × 0.1 = 6.1; por importe: 30 × 2 + 150 × 0.1 = 75. La vela no
// gana. La nota de crédito gana como una factura. Cada venta suma al acumulado y al período.
TEST_P(Puntos, LoGanadoPorUnidadYPorImporteSeVeEnElPeriodo) {
    const struct {
        qint64 tipo;
        const char* forma;
        QStringList periodo; // obtenidos, cobrados, diferencia
        const char* acumulado;
    } casos[] = {
        {kFactura, "C", {"6", "0", "6"}, "106"},
        {kFactura, "", {"12", "0", "12"}, "112"},
        {kFactura, "P", {"87", "0", "87"}, "187"},
        {kNota, "P", {"162", "0", "162"}, "262"},
    };
    for (const auto& c : casos) {
        vende(c.tipo, c.forma);
        EXPECT_EQ(totales(), c.periodo) << c.forma;
        EXPECT_EQ(Filas(almacen(), kPuntosAna), QStringList{QString::fromLatin1(c.acumulado)}) << c.forma;
    }
    EXPECT_EQ(Filas(almacen(), kDiario),
              (QStringList{"501|2026-11-23|4|1|6", "501|2026-11-23|4|2|6", "501|2026-11-23|4|3|75", "501|2026-11-23|4|4|75"}));
    const ConsultaConParametros c = ConsultaPuntosCliente(kAna, kHoy, kHoy);
    EXPECT_EQ(Filas(almacen(), c.sql, c.parametros).value(3), "2026-11-23|75|NOTA DE CREDITO B|B0001-00000001|-190|NULL|4|501|4|4");
    EXPECT_EQ(totales(kBruno), (QStringList{"0", "0", "0"}));
}

// Ana tiene 100 y cobra dos veces el premio de 80: pasan los dos, el diario muestra -160 y el
// acumulado no cambia. Lo demás se rechaza con su mensaje y sin escribir nada.
TEST_P(Puntos, ElCobroDeUnPremioYSusRechazos) {
    const struct {
        const char* que;
        qint64 cliente, premio;
        QDate dia;
        const char* aviso;
    } casos[] = {
        {"premio de 80 con 100", kAna, 1, kHoy, ""},
        {"otra vez: se mira lo acumulado", kAna, 1, kHoy, ""},
        {"Bruno, sin puntos", kBruno, 1, kHoy,
         "Error, no puede cobrar este premio puesto que posee 0 puntos acumulados y requiere al menos 80"},
        {"vencido ayer", kAna, 2, kHoy, "Error, el premio no está vigente: se ofrece del 01/11/2026 al 22/11/2026."},
        {"vigente desde mañana", kAna, 3, kHoy, "Error, el premio no está vigente: se ofrece del 24/11/2026 al 31/12/2026."},
        {"el último día de la vigencia", kAna, 2, kHoy.addDays(-1), ""},
        {"un premio que ya no está", kAna, 99, kHoy, "El premio ya no está en la tabla: otro puesto lo quitó."},
        {"un cliente que ya no está", 999, 1, kHoy, "El cliente ya no existe: el premio no se cobró."},
    };
    for (const auto& c : casos)
        EXPECT_EQ(AvisoDe([&] { CobraPremio(almacen(), c.cliente, c.premio, c.dia, 6); }), QString::fromUtf8(c.aviso)) << c.que;
    const ConsultaConParametros diario = ConsultaPuntosCliente(kAna, kHoy.addDays(-1), kHoy);
    EXPECT_EQ(Filas(almacen(), diario.sql, diario.parametros),
              (QStringList{"2026-11-22|-10|Premio VIP|NULL|NULL|NULL|3|501|6|0", "2026-11-23|-80|Premio VIP|NULL|NULL|NULL|1|501|6|0",
                           "2026-11-23|-80|Premio VIP|NULL|NULL|NULL|2|501|6|0"}));
    EXPECT_EQ(Filas(almacen(), kPuntosAna), QStringList{"100"});
    EXPECT_EQ(totales(), (QStringList{"0", "160", "-160"}));
    // Lo que la pantalla dice al elegir el premio.
    EXPECT_EQ(QStringList({FaltanPuntos(almacen(), kAna, 1), FaltanPuntos(almacen(), kBruno, 2)}),
              (QStringList{"", "Error, no puede cobrar este premio puesto que posee 0 puntos acumulados y requiere al menos 10"}));
}

// La tabla: lo que se ofrece cada día (ambos extremos incluidos) y lo que la ficha rechaza.
TEST_P(Puntos, LaTablaDePremiosYSuVigencia) {
    const auto vigentes = [&](QDate dia) {
        const ConsultaConParametros c = ConsultaPremiosVigentes(dia);
        return Filas(almacen(), c.sql, c.parametros);
    };
    EXPECT_EQ(vigentes(kHoy), QStringList{"1|Taza"});
    EXPECT_EQ(vigentes(kHoy.addDays(-1)), (QStringList{"1|Taza", "2|Yerba"}));
    EXPECT_EQ(vigentes(kHoy.addDays(1)), (QStringList{"1|Taza", "3|Vela"}));
    const DatosPremio bien{101, QString(), kHoy, kHoy, QStringLiteral("2.5"), QStringLiteral("1,200")};
    const struct {
        std::optional<qint64> id;
        DatosPremio datos;
        const char* aviso;
    } casos[] = {
        {std::nullopt, {101, {}, kHoy, kHoy.addDays(-1), "1", "10"}, "Error! Las fechas estan mal!"},
        {std::nullopt, {std::nullopt, {}, kHoy, kHoy, "1", "10"}, "Seleccione un articulo!"},
        {std::nullopt, {101, {}, kHoy, kHoy, "uno", "10"}, "Cantidad: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        {std::nullopt, {101, {}, kHoy, kHoy, "1", "10.5"}, "Puntos: debe ser un número entero."},
        {std::nullopt, {101, {}, kHoy, kHoy, "1", "-10"}, "Puntos: Importe fuera de rango!"},
        {std::nullopt, bien, ""},
        {2, {103, {}, kHoy, kHoy.addDays(5), "1", "15"}, ""},
        {77, bien, "El premio ya no está en la tabla: otro puesto lo quitó."},
    };
    for (const auto& c : casos)
        EXPECT_EQ(AvisoDe([&] { GuardaPremio(almacen(), c.id, c.datos); }), QString::fromUtf8(c.aviso)) << c.datos.puntos.toStdString();
    const ConsultaConParametros t = ConsultaTablaPremios();
    EXPECT_EQ(Filas(almacen(), t.sql, t.parametros),
              (QStringList{"B1|Taza|1|80|2026-11-01|2026-11-30|1|102", "V1|Vela|1|15|2026-11-23|2026-11-28|2|103",
                           "A1|Yerba|2.5|1200|2026-11-23|2026-11-23|4|101", "V1|Vela|1|10|2026-11-24|2026-12-31|3|103"}));
    EXPECT_TRUE(BorraPremio(almacen(), 3));
    EXPECT_FALSE(BorraPremio(almacen(), 3));
    const std::optional<DatosPremio> leido = LeePremio(almacen(), 4);
    ASSERT_TRUE(leido);
    EXPECT_EQ(QStringList({QString::number(*leido->idArticulo), leido->descripcion, leido->desde.toString(Qt::ISODate),
                           leido->hasta.toString(Qt::ISODate), leido->cantidad, leido->puntos}),
              (QStringList{"101", "Yerba", "2026-11-23", "2026-11-23", "2.5", "1200"}));
}

// Dos puestos cobran a la vez, cada uno por su conexión, premios de 80 para Ana (100 puntos): todos
// pasan, porque el cobro mira lo acumulado, y ninguno se pierde ni se traba con el otro.
TEST_P(Puntos, DosPuestosCobranALaVez) {
    const auto puesto = [](Almacen& a) {
        for (int i = 0; i < 10; ++i) CobraPremio(a, kAna, 1, kHoy, 6);
    };
    EXPECT_EQ(enTerminales({puesto, puesto}), QStringList());
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT count(*), SUM(PuntosVIP) FROM Vip WHERE idCliente = 501")),
              QStringList{"20|-1600"});
    EXPECT_EQ(Filas(almacen(), kPuntosAna), QStringList{"100"});
}

ORV_AMBOS_MOTORES(Puntos);

} // namespace
} // namespace orv
