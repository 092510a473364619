#include "apoyo/base_prueba.h"
#include "store/dinero.h"
#include "store/esquema.h"

#include <cmath>
#include <limits>

using namespace orv;
using namespace orv::prueba;

namespace {

Dinero d(const char* texto) {
    const auto v = Dinero::desdeTexto(QString::fromUtf8(texto));
    if (!v) throw std::invalid_argument(texto);
    return *v;
}

constexpr qint64 kMax = std::numeric_limits<qint64>::max();
constexpr qint64 kMin = std::numeric_limits<qint64>::min();

} // namespace

static_assert(Dinero(12, 5000).diezmilesimos() == 125000);
static_assert(Dinero(-12, 5000).diezmilesimos() == -125000);
static_assert(Dinero(0, -5).diezmilesimos() == -5);
static_assert(Dinero() == Dinero(0));
static_assert(Dinero(1) < Dinero(1, 1));

TEST(Dinero, SumasExactasDondeElDoubleSeEquivoca) {
    EXPECT_EQ(d("0.1") + d("0.2"), d("0.3"));
    EXPECT_EQ(Dinero::desdeDouble(0.1) + Dinero::desdeDouble(0.2), Dinero::desdeDouble(0.3));
    EXPECT_EQ((d("0.1") + d("0.2")).aTexto(), QStringLiteral("0.3000"));

    // Un millón de diezmilésimos suman exactamente 100.
    Dinero suma;
    double sumaDouble = 0;
    for (int i = 0; i < 1000000; ++i) {
        suma += Dinero(0, 1);
        sumaDouble += 0.0001;
    }
    EXPECT_EQ(suma, Dinero(100));
    EXPECT_NE(sumaDouble, 100.0); // el double acumula error; el Dinero no
    for (int i = 0; i < 1000000; ++i) suma -= Dinero(0, 1);
    EXPECT_TRUE(suma.esCero());

    EXPECT_EQ(Dinero(5) - Dinero(7, 2500), d("-2.25"));
    EXPECT_EQ(-d("3.5"), d("-3.5"));
    EXPECT_EQ(-Dinero(), Dinero());
}

TEST(Dinero, TextoYConstruccion) {
    EXPECT_EQ(Dinero(12, 5000).aTexto(), QStringLiteral("12.5000"));
    EXPECT_EQ(Dinero(-12, 5000).aTexto(), QStringLiteral("-12.5000"));
    EXPECT_EQ(Dinero(0, -5).aTexto(), QStringLiteral("-0.0005"));
    EXPECT_EQ(Dinero().aTexto(), QStringLiteral("0.0000"));
    EXPECT_EQ(Dinero::desdeDiezmilesimos(kMax).aTexto(), QStringLiteral("922337203685477.5807"));
    EXPECT_EQ(Dinero::desdeDiezmilesimos(kMin).aTexto(), QStringLiteral("-922337203685477.5808"));
    EXPECT_EQ(Dinero(19, 9900).aVariant(), QVariant(QStringLiteral("19.9900")));
    EXPECT_DOUBLE_EQ(d("19.99").aDouble(), 19.99);
    EXPECT_DOUBLE_EQ(d("-0.0001").aDouble(), -0.0001);
}

TEST(Dinero, DesdeDoubleRedondeaLaFormaDecimalMitadLejosDelCero) {
    EXPECT_EQ(Dinero::desdeDouble(2.675).aTexto(), QStringLiteral("2.6750"));
    EXPECT_EQ(Dinero::desdeDouble(19.99).aTexto(), QStringLiteral("19.9900"));
    EXPECT_EQ(Dinero::desdeDouble(0.00005).aTexto(), QStringLiteral("0.0001"));
    EXPECT_EQ(Dinero::desdeDouble(-0.00005).aTexto(), QStringLiteral("-0.0001"));
    // 1.00005 es 1.0000499999... en binario: se redondea el decimal que se escribió.
    EXPECT_EQ(Dinero::desdeDouble(1.00005).aTexto(), QStringLiteral("1.0001"));
    EXPECT_EQ(Dinero::desdeDouble(0.000049999).aTexto(), QStringLiteral("0.0000"));
    EXPECT_EQ(Dinero::desdeDouble(0.1 + 0.2).aTexto(), QStringLiteral("0.3000"));
    EXPECT_EQ(Dinero::desdeDouble(-0.0).aTexto(), QStringLiteral("0.0000"));
    EXPECT_EQ(Dinero::desdeDouble(123456789012.3456).aTexto(), QStringLiteral("123456789012.3456"));
    EXPECT_THROW(Dinero::desdeDouble(1e16), std::overflow_error);
    EXPECT_THROW(Dinero::desdeDouble(std::numeric_limits<double>::infinity()), std::overflow_error);
    EXPECT_THROW(Dinero::desdeDouble(std::nan("")), std::invalid_argument);
}

TEST(Dinero, PrecioPorCantidadYPorcentajes) {
    EXPECT_EQ(d("19.99").por(3), d("59.97"));
    EXPECT_EQ(d("19.99").por(0.5), d("9.995"));
    EXPECT_EQ(d("33.33").por(1.5), d("49.995"));
    EXPECT_EQ(d("10").por(1.21), d("12.1"));
    EXPECT_EQ(d("1234.5678").por(0.333), d("411.1111")); // 411.1110774
    EXPECT_EQ(d("0.0001").por(0.5), d("0.0001"));        // media unidad: lejos del cero
    EXPECT_EQ(d("-0.0001").por(0.5), d("-0.0001"));
    EXPECT_EQ(d("0.0001").por(0.4999), Dinero());
    EXPECT_EQ(d("19.99").por(-2), d("-39.98"));
    EXPECT_EQ(d("100").por(0), Dinero());
    EXPECT_EQ(d("2.5").por(1e-30), Dinero());
    EXPECT_EQ(d("2.5").por(1e10), d("25000000000"));

    EXPECT_EQ(d("100").porcentaje(21), d("21"));
    EXPECT_EQ(d("59.97").porcentaje(10.5), d("6.2969")); // 6.29685
    EXPECT_EQ(d("-59.97").porcentaje(10.5), d("-6.2969"));
    EXPECT_EQ(d("1000").porcentaje(-15), d("-150"));
    EXPECT_EQ(d("0.01").porcentaje(0.5), d("0.0001")); // 0.00005

    EXPECT_THROW(d("100000000000").por(1e5), std::overflow_error);
    EXPECT_THROW(d("1").por(std::numeric_limits<double>::infinity()), std::overflow_error);
    EXPECT_THROW(d("1").por(std::nan("")), std::invalid_argument);
}

TEST(Dinero, DivisionRedondeada) {
    EXPECT_EQ(d("1").dividido(3), d("0.3333"));
    EXPECT_EQ(d("2").dividido(3), d("0.6667"));
    EXPECT_EQ(d("-2").dividido(3), d("-0.6667"));
    EXPECT_EQ(d("2").dividido(-3), d("-0.6667"));
    EXPECT_EQ(d("10").dividido(4), d("2.5"));
    EXPECT_EQ(d("0.0001").dividido(2), d("0.0001"));
    EXPECT_EQ(d("-0.0001").dividido(2), d("-0.0001"));
    EXPECT_EQ(d("0.0001").dividido(3), Dinero());
    EXPECT_EQ(d("3").dividido(1.5), d("2"));
    EXPECT_EQ(d("100").dividido(0.3), d("333.3333"));
    EXPECT_EQ(d("1").dividido(1e30), Dinero());
    EXPECT_THROW(d("1").dividido(1e-30), std::overflow_error);
    EXPECT_THROW(d("1").dividido(0), std::domain_error);
    EXPECT_THROW(d("1").dividido(0.0), std::domain_error);
    EXPECT_THROW(Dinero::desdeDiezmilesimos(kMin).dividido(-1), std::overflow_error);
    // Repartir y volver a sumar: lo que falta es a lo sumo medio diezmilésimo por parte.
    const Dinero parte = d("100").dividido(7);
    EXPECT_EQ(parte, d("14.2857"));
    EXPECT_EQ(d("100") - parte.por(7), d("0.0001"));
}

TEST(Dinero, RedondeoDeCampoDePantalla) {
    EXPECT_EQ(d("10.005").redondeado(2), d("10.01"));
    EXPECT_EQ(d("-10.005").redondeado(2), d("-10.01"));
    EXPECT_EQ(d("10.0049").redondeado(2), d("10.00"));
    EXPECT_EQ(d("2.675").redondeado(2), d("2.68"));
    EXPECT_EQ(d("999.995").redondeado(2), d("1000"));
    EXPECT_EQ(d("2.5").redondeado(0), d("3"));
    EXPECT_EQ(d("-2.5").redondeado(0), d("-3"));
    EXPECT_EQ(d("0.05").redondeado(1), d("0.1"));
    EXPECT_EQ(d("1.2345").redondeado(4), d("1.2345"));
    EXPECT_EQ(d("1.2345").redondeado(3), d("1.235"));
    EXPECT_THROW(d("1").redondeado(5), std::invalid_argument);
    EXPECT_THROW(d("1").redondeado(-1), std::invalid_argument);
    EXPECT_THROW(Dinero::desdeDiezmilesimos(kMax).redondeado(0), std::overflow_error);
}

TEST(Dinero, DesbordesSeDetectan) {
    const Dinero max = Dinero::desdeDiezmilesimos(kMax);
    const Dinero min = Dinero::desdeDiezmilesimos(kMin);
    EXPECT_THROW(max + Dinero(0, 1), std::overflow_error);
    EXPECT_THROW(min - Dinero(0, 1), std::overflow_error);
    EXPECT_THROW(-min, std::overflow_error);
    EXPECT_THROW(Dinero(922337203685478), std::overflow_error);
    EXPECT_THROW(Dinero(-922337203685478), std::overflow_error);
    EXPECT_NO_THROW(Dinero(922337203685477));
    Dinero x = max;
    EXPECT_THROW(x += Dinero(1), std::overflow_error);
    EXPECT_EQ(x, max); // la suma fallida deja el valor como estaba
    EXPECT_EQ(max - max, Dinero());
}

TEST(Dinero, DesdeTextoAceptaImportesYRechazaBasura) {
    struct Caso {
        const char* texto;
        const char* esperado;
    };
    const Caso buenos[] = {
        {"1234.5678", "1234.5678"}, {"-12.5", "-12.5000"},     {"+3", "3.0000"},
        {"1,234.50", "1234.5000"},  {" 7 ", "7.0000"},         {"$1,234.50", "1234.5000"},
        {"-$1,234.50", "-1234.5000"}, {"$-2", "-2.0000"},      {"(5.25)", "-5.2500"},
        {"12.5-", "-12.5000"},      {"0.00005", "0.0001"},     {"-0.00005", "-0.0001"},
        {"1e3", "1000.0000"},       {".5", "0.5000"},          {"5.", "5.0000"},
        {"1,234,567.891", "1234567.8910"}, {"0", "0.0000"},    {"-0", "0.0000"},
    };
    for (const auto& c : buenos) {
        const auto v = Dinero::desdeTexto(QString::fromUtf8(c.texto));
        ASSERT_TRUE(v.has_value()) << c.texto;
        EXPECT_EQ(v->aTexto(), QString::fromUtf8(c.esperado)) << c.texto;
    }
    const char* malos[] = {"", "   ", "abc", "12a", "1.2.3", "-", ".", "1,,2", ",5", "5,", "1 2",
                           "--5", "$", "(5", "1e", "12,5.3.", "99999999999999999999", "1e400"};
    for (const char* m : malos) EXPECT_FALSE(Dinero::desdeTexto(QString::fromUtf8(m)).has_value()) << m;
}

TEST(Dinero, DesdeVariantDeLosDosMotores) {
    // PostgreSQL entrega NUMERIC como texto decimal exacto.
    EXPECT_EQ(Dinero::desdeVariant(QStringLiteral("12345678901234.5678")).diezmilesimos(), 123456789012345678LL);
    EXPECT_EQ(Dinero::desdeVariant(QStringLiteral("-0.0001")), Dinero(0, -1));
    // SQLite entrega double o entero.
    EXPECT_EQ(Dinero::desdeVariant(19.99), d("19.99"));
    EXPECT_EQ(Dinero::desdeVariant(0.1 + 0.2), d("0.3"));
    EXPECT_EQ(Dinero::desdeVariant(5), Dinero(5));
    EXPECT_EQ(Dinero::desdeVariant(qlonglong(-7)), Dinero(-7));
    EXPECT_EQ(Dinero::desdeVariant(QVariant()), Dinero());
    EXPECT_EQ(Dinero::desdeVariant(QVariant(QMetaType(QMetaType::Double))), Dinero());
    EXPECT_EQ(Dinero::desdeVariant(QString()), Dinero());
    EXPECT_EQ(Dinero::desdeVariant(QStringLiteral("  ")), Dinero());
    EXPECT_THROW(Dinero::desdeVariant(QStringLiteral("abc")), std::invalid_argument);
    EXPECT_THROW(Dinero::desdeVariant(QStringLiteral("99999999999999999999")), std::overflow_error);
}

// El importe pasa por el almacén y vuelve igual en los dos motores.
class DineroEnElAlmacen : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (IsSkipped()) return;
        almacen().ejecuta(ddl(almacen().dialecto(),
                              QStringLiteral("CREATE TABLE Importes (id {LARGO}, Monto {DINERO})")));
    }
    Dinero lee(int id) {
        return Dinero::desdeVariant(
            almacen().valor(QStringLiteral("SELECT Monto FROM Importes WHERE id = ?"), {id}));
    }
};
ORV_AMBOS_MOTORES(DineroEnElAlmacen);

TEST_P(DineroEnElAlmacen, IdaYVueltaSinPerderDiezmilesimos) {
    const char* valores[] = {"0.0001", "19.99", "-10.005", "99999999999.9999", "0", "-0.0001",
                             "123.4567", "-99999999999.9999", "1234567.8"};
    int id = 0;
    for (const char* v : valores)
        almacen().ejecuta(QStringLiteral("INSERT INTO Importes (id, Monto) VALUES (?, ?)"), {++id, d(v).aVariant()});
    id = 0;
    for (const char* v : valores) EXPECT_EQ(lee(++id), d(v)) << v;
    // La búsqueda por igualdad encuentra el importe ligado como parámetro.
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT id FROM Importes WHERE Monto = ?"), {d("123.4567").aVariant()}).toInt(), 7);
    // PostgreSQL guarda y devuelve las 18 cifras; SQLite guarda REAL y conserva 15.
    if (almacen().esPostgreSQL()) {
        almacen().ejecuta(QStringLiteral("INSERT INTO Importes (id, Monto) VALUES (?, ?)"),
                          {100, d("12345678901234.5678").aVariant()});
        EXPECT_EQ(lee(100), d("12345678901234.5678"));
    }
}

TEST_P(DineroEnElAlmacen, SumasEnElAlmacenVuelvenExactas) {
    almacen().ejecuta(QStringLiteral("INSERT INTO Importes (id, Monto) VALUES (1, 0)"));
    for (int i = 0; i < 3; ++i)
        almacen().ejecuta(QStringLiteral("UPDATE Importes SET Monto = Monto + ? WHERE id = 1"), {d("0.1").aVariant()});
    EXPECT_EQ(lee(1), d("0.3"));
    for (int i = 0; i < 10; ++i)
        almacen().ejecuta(QStringLiteral("INSERT INTO Importes (id, Monto) VALUES (2, ?)"), {d("0.1").aVariant()});
    EXPECT_EQ(Dinero::desdeVariant(almacen().valor(QStringLiteral("SELECT SUM(Monto) FROM Importes WHERE id = 2"))),
              d("1"));
    EXPECT_EQ(Dinero::desdeVariant(almacen().valor(QStringLiteral("SELECT SUM(Monto) FROM Importes WHERE id = 99"))),
              Dinero());
}
