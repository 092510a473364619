// Dinero exacto: sumas sin error, redondeo la mitad lejos del cero, desbordes y lectura del almacén.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "store/dinero.h"
#include "store/esquema.h"

#include <cmath>
#include <functional>
#include <limits>

using namespace orv;
using namespace orv::prueba;

namespace {

Dinero d(const char* texto) {
    const auto v = Dinero::desdeTexto(QString::fromUtf8(texto));
    if (!v) throw std::invalid_argument(texto);
    return *v;
}

const Dinero kMax = Dinero::desdeDiezmilesimos(std::numeric_limits<qint64>::max());
const Dinero kMin = Dinero::desdeDiezmilesimos(std::numeric_limits<qint64>::min());
constexpr double kInf = std::numeric_limits<double>::infinity();

} // namespace


TEST(Dinero, CadaOperacionDaElImporteExacto) {
    const std::pair<std::function<Dinero()>, const char*> casos[] = {
        // Sumas exactas donde el double se equivoca; construcción y texto.
        {[] { return d("0.1") + d("0.2"); }, "0.3000"},
        {[] { return Dinero::desdeDouble(0.1) + Dinero::desdeDouble(0.2); }, "0.3000"},
        {[] { return Dinero(5) - Dinero(7, 2500); }, "-2.2500"}, {[] { return -d("3.5"); }, "-3.5000"},
        {[] { return -Dinero(); }, "0.0000"}, {[] { return Dinero(12, 5000); }, "12.5000"},
        {[] { return Dinero(-12, 5000); }, "-12.5000"}, {[] { return Dinero(0, -5); }, "-0.0005"},
        {[] { return kMax; }, "922337203685477.5807"}, {[] { return kMin; }, "-922337203685477.5808"},
        {[] { return kMax - kMax; }, "0.0000"},
        // Desde un double: se redondea la forma decimal que se escribió (1.00005 es 1.0000499... en binario).
        {[] { return Dinero::desdeDouble(2.675); }, "2.6750"}, {[] { return Dinero::desdeDouble(0.00005); }, "0.0001"},
        {[] { return Dinero::desdeDouble(-0.00005); }, "-0.0001"}, {[] { return Dinero::desdeDouble(1.00005); }, "1.0001"},
        {[] { return Dinero::desdeDouble(0.000049999); }, "0.0000"}, {[] { return Dinero::desdeDouble(-0.0); }, "0.0000"},
        {[] { return Dinero::desdeDouble(123456789012.3456); }, "123456789012.3456"},
        // Precio por cantidad y porcentajes, redondeados una vez, la mitad lejos del cero.
        {[] { return d("19.99").por(3); }, "59.9700"}, {[] { return d("19.99").por(0.5); }, "9.9950"},
        {[] { return d("10").por(1.21); }, "12.1000"}, {[] { return d("1234.5678").por(0.333); }, "411.1111"},
        {[] { return d("0.0001").por(0.5); }, "0.0001"}, {[] { return d("-0.0001").por(0.5); }, "-0.0001"},
        {[] { return d("0.0001").por(0.4999); }, "0.0000"}, {[] { return d("19.99").por(-2); }, "-39.9800"},
        {[] { return d("2.5").por(1e-30); }, "0.0000"}, {[] { return d("2.5").por(1e10); }, "25000000000.0000"},
        {[] { return d("59.97").porcentaje(10.5); }, "6.2969"}, {[] { return d("-59.97").porcentaje(10.5); }, "-6.2969"},
        {[] { return d("1000").porcentaje(-15); }, "-150.0000"}, {[] { return d("0.01").porcentaje(0.5); }, "0.0001"},
        // División redondeada; repartir y volver a sumar pierde a lo sumo medio diezmilésimo por parte.
        {[] { return d("2").dividido(3); }, "0.6667"}, {[] { return d("-2").dividido(3); }, "-0.6667"},
        {[] { return d("2").dividido(-3); }, "-0.6667"}, {[] { return d("0.0001").dividido(2); }, "0.0001"},
        {[] { return d("-0.0001").dividido(2); }, "-0.0001"}, {[] { return d("0.0001").dividido(3); }, "0.0000"},
        {[] { return d("100").dividido(0.3); }, "333.3333"}, {[] { return d("1").dividido(1e30); }, "0.0000"},
        {[] { return d("100") - d("100").dividido(7).por(7); }, "0.0001"},
        // Redondeo de un campo de pantalla.
        {[] { return d("10.005").redondeado(2); }, "10.0100"}, {[] { return d("-10.005").redondeado(2); }, "-10.0100"},
        {[] { return d("10.0049").redondeado(2); }, "10.0000"}, {[] { return d("999.995").redondeado(2); }, "1000.0000"},
        {[] { return d("-2.5").redondeado(0); }, "-3.0000"}, {[] { return d("1.2345").redondeado(3); }, "1.2350"},
        // Lo que entregan los motores: texto decimal exacto (PostgreSQL), double o entero (SQLite), nulo.
        {[] { return Dinero::desdeVariant(QStringLiteral("12345678901234.5678")); }, "12345678901234.5678"},
        {[] { return Dinero::desdeVariant(QStringLiteral("-0.0001")); }, "-0.0001"},
        {[] { return Dinero::desdeVariant(0.1 + 0.2); }, "0.3000"},
        {[] { return Dinero::desdeVariant(qlonglong(-7)); }, "-7.0000"},
        {[] { return Dinero::desdeVariant(QVariant(QMetaType(QMetaType::Double))); }, "0.0000"},
        {[] { return Dinero::desdeVariant(QStringLiteral("  ")); }, "0.0000"},
    };
    for (size_t i = 0; i < std::size(casos); ++i)
        EXPECT_EQ(casos[i].first().aTexto().toStdString(), casos[i].second) << "caso " << i;
    EXPECT_DOUBLE_EQ(d("-0.0001").aDouble(), -0.0001);
}

TEST(Dinero, DesbordesYValoresImposiblesLanzanSinCambiarElValor) {
    const std::function<void()> desbordes[] = {
        [] { (void)(kMax + Dinero(0, 1)); },    [] { (void)(kMin - Dinero(0, 1)); }, [] { (void)-kMin; },
        [] { Dinero(922337203685478); },        [] { Dinero(-922337203685478); },     [] { Dinero::desdeDouble(1e16); },
        [] { Dinero::desdeDouble(kInf); },      [] { d("100000000000").por(1e5); },   [] { d("1").por(kInf); },
        [] { d("1").dividido(1e-30); },         [] { kMin.dividido(-1); },            [] { kMax.redondeado(0); },
        [] { Dinero::desdeVariant(QStringLiteral("99999999999999999999")); },
    };
    for (size_t i = 0; i < std::size(desbordes); ++i) EXPECT_THROW(desbordes[i](), std::overflow_error) << i;
    const std::function<void()> invalidos[] = {
        [] { Dinero::desdeDouble(std::nan("")); }, [] { d("1").por(std::nan("")); }, [] { d("1").redondeado(5); },
        [] { d("1").redondeado(-1); },             [] { Dinero::desdeVariant(QStringLiteral("abc")); },
    };
    for (size_t i = 0; i < std::size(invalidos); ++i) EXPECT_THROW(invalidos[i](), std::invalid_argument) << i;
    EXPECT_THROW(d("1").dividido(0), std::domain_error);
    EXPECT_THROW(d("1").dividido(0.0), std::domain_error);
    Dinero x = kMax;
    EXPECT_THROW(x += Dinero(1), std::overflow_error);
    EXPECT_EQ(x, kMax) << "la suma fallida deja el valor como estaba";
}

TEST(Dinero, DesdeTextoAceptaImportesYRechazaBasura) {
    const std::pair<const char*, const char*> buenos[] = {
        {"1234.5678", "1234.5678"},  {"-12.5", "-12.5000"},     {"+3", "3.0000"},        {"1,234.50", "1234.5000"},
        {" 7 ", "7.0000"},           {"$1,234.50", "1234.5000"}, {"-$1,234.50", "-1234.5000"}, {"$-2", "-2.0000"},
        {"(5.25)", "-5.2500"},       {"12.5-", "-12.5000"},     {"0.00005", "0.0001"},   {"-0.00005", "-0.0001"},
        {"1e3", "1000.0000"},        {".5", "0.5000"},          {"5.", "5.0000"},        {"-0", "0.0000"},
        {"1,234,567.891", "1234567.8910"},
    };
    for (const auto& [texto, esperado] : buenos) {
        const auto v = Dinero::desdeTexto(QString::fromUtf8(texto));
        EXPECT_EQ(v ? v->aTexto().toStdString() : "nada", esperado) << texto;
    }
    for (const char* m : {"", "   ", "abc", "12a", "1.2.3", "-", ".", "1,,2", ",5", "5,", "1 2", "--5", "$", "(5", "1e",
                          "12,5.3.", "99999999999999999999", "1e400"})
        EXPECT_FALSE(Dinero::desdeTexto(QString::fromUtf8(m)).has_value()) << m;
}

// El importe pasa por el almacén y vuelve igual en los dos motores.
class DineroEnElAlmacen : public PorMotor {};
ORV_AMBOS_MOTORES(DineroEnElAlmacen);

TEST_P(DineroEnElAlmacen, IdaYVueltaYSumasSinPerderDiezmilesimos) {
    Almacen& a = almacen();
    a.ejecuta(ddl(a.dialecto(), "CREATE TABLE Importes (id {LARGO}, Monto {DINERO})"));
    const char* valores[] = {"0.0001", "19.99", "-10.005", "99999999999.9999", "0", "-0.0001", "123.4567",
                             "-99999999999.9999", "1234567.8"};
    int id = 0;
    for (const char* v : valores) a.ejecuta("INSERT INTO Importes (id, Monto) VALUES (?, ?)", {++id, d(v).aVariant()});
    id = 0;
    for (const char* v : valores)
        EXPECT_EQ(Dinero::desdeVariant(a.valor("SELECT Monto FROM Importes WHERE id = ?", {++id})), d(v)) << v;
    // La búsqueda por igualdad encuentra el importe ligado como parámetro.
    EXPECT_EQ(a.valor("SELECT id FROM Importes WHERE Monto = ?", {d("123.4567").aVariant()}).toInt(), 7);
    // Sumas en el almacén: tres veces 0.1 sobre la misma fila, diez filas de 0.1, ninguna fila.
    a.ejecuta("INSERT INTO Importes (id, Monto) VALUES (20, 0)");
    for (int i = 0; i < 3; ++i) a.ejecuta("UPDATE Importes SET Monto = Monto + ? WHERE id = 20", {d("0.1").aVariant()});
    for (int i = 0; i < 10; ++i) a.ejecuta("INSERT INTO Importes (id, Monto) VALUES (30, ?)", {d("0.1").aVariant()});
    for (const auto& [sql, esperado] : {std::pair{"SELECT Monto FROM Importes WHERE id = 20", "0.3"},
                                        std::pair{"SELECT SUM(Monto) FROM Importes WHERE id = 30", "1"},
                                        std::pair{"SELECT SUM(Monto) FROM Importes WHERE id = 99", "0"}})
        EXPECT_EQ(Dinero::desdeVariant(a.valor(sql)), d(esperado)) << sql;
    // PostgreSQL guarda y devuelve las 18 cifras; SQLite guarda REAL y conserva 15.
    if (a.esPostgreSQL()) {
        a.ejecuta("INSERT INTO Importes (id, Monto) VALUES (100, ?)", {d("12345678901234.5678").aVariant()});
        EXPECT_EQ(a.valor("SELECT Monto FROM Importes WHERE id = 100").toString(), "12345678901234.5678");
    }
}
