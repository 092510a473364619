#include "store/formato.h"

#include <QDate>
#include <QDateTime>
#include <QLocale>
#include <QStringList>
#include <clocale>
#include <gtest/gtest.h>

using namespace orv;

namespace {

Dinero d(const char* texto) { return *Dinero::desdeTexto(QString::fromUtf8(texto)); }

QString q(const char* s) { return QString::fromUtf8(s); }

struct Caso {
    const char* valor; // texto decimal exacto
    const char* mascara;
    const char* esperado;
};

// Valores decimales exactos por cada máscara que usa el sistema.
const Caso kMascaras[] = {
    {"0", "###,###,##0.00", "0.00"},
    {"12", "###,###,##0.00", "12.00"},
    {"123456", "###,###,##0.00", "123,456.00"},
    {"1234567890.5", "###,###,##0.00", "1,234,567,890.50"},
    {"-1234.5", "###,###,##0.00", "-1,234.50"},
    {"0.005", "###,###,##0.00", "0.01"},
    {"-0.005", "###,###,##0.00", "-0.01"},
    {"2.675", "###,###,##0.00", "2.68"},
    {"2.665", "###,###,##0.00", "2.67"},
    {"0.004", "###,###,##0.00", "0.00"},
    {"-0.004", "###,###,##0.00", "0.00"},
    {"999.995", "###,###,##0.00", "1,000.00"},
    {"999999999999.99", "###,###,##0.00", "999,999,999,999.99"},
    {"0", "##0.0", "0.0"},
    {"7", "##0.0", "7.0"},
    {"50", "##0.0", "50.0"},
    {"1234.56", "##0.0", "1234.6"},
    {"33.333", "##0.0", "33.3"},
    {"0.04", "##0.0", "0.0"},
    {"0.05", "##0.0", "0.1"},
    {"-0.05", "##0.0", "-0.1"},
    {"1234.5", "#,##0.00", "1,234.50"},
    {"0.5", "#,##0.00", "0.50"},
    {"1000000", "#,##0.00", "1,000,000.00"},
    {"-999.999", "#,##0.00", "-1,000.00"},
    {"7", "##,###,##0.0", "7.0"},
    {"1234567.25", "##,###,##0.0", "1,234,567.3"},
    {"123", "00000000", "00000123"},
    {"0", "00000000", "00000000"},
    {"123456789", "00000000", "123456789"},
    {"12.5", "00000000", "00000013"},
    {"1", "0000", "0001"},
    {"12345", "0000", "12345"},
    {"21", "##0.00", "21.00"},
    {"1234.5", "Currency", "$1,234.50"},
    {"-1234.5", "Currency", "-$1,234.50"},
    {"0", "Currency", "$0.00"},
    {"0.125", "currency", "$0.13"},
    {"1234567.891", "Currency", "$1,234,567.89"},
    {"12.5", "", "12.5"},
    {"-7", "", "-7"},
    {"1234.5", "General Number", "1234.5"},
    {"1234.5", "Fixed", "1234.50"},
    {"1234.5", "Standard", "1,234.50"},
    {"0.215", "0.00%", "21.50%"},
    {"-5", "0.00;(0.00)", "(5.00)"},
    {"5", "0.00;(0.00)", "5.00"},
    {"0", "0.00;(0.00);\"cero\"", "cero"},
    {"5", "#.##", "5."},
    {"5.1", "#.##", "5.1"},
    {"5", "0.00 \"kg\"", "5.00 kg"},
    {"1234567", "#,##0,", "1,235"},
    {"0.5", ".00", ".50"},
    {"1.5", ".00", "1.50"},
};

} // namespace

TEST(Formato, MascarasNumericasConValoresExactos) {
    for (const auto& c : kMascaras) {
        EXPECT_EQ(Formato(d(c.valor), q(c.mascara)), q(c.esperado)) << c.valor << " con " << c.mascara;
        // El mismo valor como texto numérico da lo mismo.
        EXPECT_EQ(Formato(QVariant(q(c.valor)), q(c.mascara)), q(c.esperado)) << c.valor << " texto, " << c.mascara;
    }
}

TEST(Formato, DoublesSeRedondeanPorSuFormaDecimalMasCorta) {
    EXPECT_EQ(Formato(2.675, q("#,##0.00")), q("2.68"));
    EXPECT_EQ(Formato(1.005, q("0.00")), q("1.01"));
    EXPECT_EQ(Formato(0.005, q("###,###,##0.00")), q("0.01"));
    EXPECT_EQ(Formato(-0.005, q("###,###,##0.00")), q("-0.01"));
    EXPECT_EQ(Formato(0.1 + 0.2, q("0.00")), q("0.30"));
    EXPECT_EQ(Formato(1234567890.5, q("###,###,##0.00")), q("1,234,567,890.50"));
    EXPECT_EQ(Formato(-0.5, q("0")), q("-1"));
    EXPECT_EQ(Formato(7.0, q("##,###,##0.0")), q("7.0"));
    EXPECT_EQ(Formato(1e20, q("#,##0")), q("100,000,000,000,000,000,000"));
    EXPECT_EQ(Formato(130.0, q("###,###,##0.00")), q("130.00"));
    EXPECT_EQ(Formato(50.0, q("##0.0")), q("50.0"));
    // Número general: 15 cifras significativas, como el Basic.
    EXPECT_EQ(Formato(0.1 + 0.2, QString()), q("0.3"));
    EXPECT_EQ(Formato(1.0 / 3, QString()), q("0.333333333333333"));
    EXPECT_EQ(Formato(1e15, QString()), q("1E+15"));
    EXPECT_EQ(Formato(123456789012345.0, QString()), q("123456789012345"));
    EXPECT_EQ(Formato(0.00001, QString()), q("1E-05"));
    EXPECT_EQ(Formato(0.0001, QString()), q("0.0001"));
    EXPECT_EQ(Formato(-2.5, QString()), q("-2.5"));
    EXPECT_EQ(Formato(std::numeric_limits<double>::quiet_NaN(), q("0.00")), QString());
}

TEST(Formato, EnterosTextosYNulos) {
    EXPECT_EQ(Formato(5, q("0000")), q("0005"));
    EXPECT_EQ(Formato(qlonglong(123), q("00000000")), q("00000123"));
    EXPECT_EQ(Formato(-42, q("#,##0.00")), q("-42.00"));
    EXPECT_EQ(Formato(qulonglong(18446744073709551615ULL), q("#,##0")), q("18,446,744,073,709,551,615"));
    EXPECT_EQ(Formato(QVariant(), q("0.00")), QString());
    EXPECT_EQ(Formato(QVariant(QString()), q("0.00")), QString());
    EXPECT_EQ(Formato(QVariant(QMetaType(QMetaType::Double)), q("0.00")), QString());
    // Un texto con comas de miles es un número; un texto que no lo es sale igual.
    EXPECT_EQ(Formato(QVariant(q("1,234.5")), q("#,##0.00")), q("1,234.50"));
    EXPECT_EQ(Formato(QVariant(q("abc")), q("0.00")), q("abc"));
    // NUMERIC de PostgreSQL como texto: sin pasar por double.
    EXPECT_EQ(Formato(QVariant(q("12345678901234.5678")), q("#,##0.00")), q("12,345,678,901,234.57"));
    EXPECT_EQ(FormatoMoneda(d("1234.5"), q("###,###,##0.00")), q("1,234.50"));
    EXPECT_EQ(FormatoMoneda(d("1234.5"), QString()), q("1,234.50"));
    EXPECT_EQ(FormatoMoneda(d("-0.004"), q("Currency")), q("$0.00"));
}

TEST(Formato, FechasEnTodasLasMascaras) {
    const QDate f(2026, 11, 22);
    EXPECT_EQ(Formato(f, q("dd/mm/yyyy")), q("22/11/2026"));
    EXPECT_EQ(Formato(f, q("dd/MM/yyyy")), q("22/11/2026"));
    EXPECT_EQ(Formato(f, q("yyyy,mm,dd")), q("2026,11,22"));
    EXPECT_EQ(Formato(f, q("Long Date")), q("domingo, 22 de noviembre de 2026"));
    EXPECT_EQ(Formato(f, q("long date")), q("domingo, 22 de noviembre de 2026"));
    EXPECT_EQ(Formato(f, q("Short Date")), q("22/11/2026"));
    EXPECT_EQ(Formato(f, QString()), q("22/11/2026"));
    EXPECT_EQ(Formato(QDate(2026, 3, 5), q("dd/mm/yyyy")), q("05/03/2026"));
    EXPECT_EQ(Formato(QDate(2026, 3, 5), q("d/m/yy")), q("5/3/26"));
    EXPECT_EQ(Formato(QDate(2026, 3, 5), q("yyyy,mm,dd")), q("2026,03,05"));
    EXPECT_EQ(Formato(QDate(2026, 3, 5), q("Long Date")), q("jueves, 5 de marzo de 2026"));
    EXPECT_EQ(Formato(QDate(2026, 3, 5), q("ddd dd-mmm-yyyy")), q("jue 05-mar-2026"));
    EXPECT_EQ(Formato(QDate(2026, 3, 5), q("YYYYMMDD")), q("20260305"));
    EXPECT_EQ(Formato(QDate(2026, 3, 5), q("\"Fecha:\" dd/mm")), q("Fecha: 05/03"));

    const QDateTime m(QDate(2026, 11, 22), QTime(9, 5, 7));
    EXPECT_EQ(Formato(m, q("hh:mm:ss")), q("09:05:07"));
    EXPECT_EQ(Formato(m, q("HH:mm:ss")), q("09:05:07"));
    EXPECT_EQ(Formato(m, q("dd/mm/yyyy hh:nn")), q("22/11/2026 09:05"));
    EXPECT_EQ(Formato(m, q("HHMMSS")), q("090507"));
    EXPECT_EQ(Formato(m, q("General Date")), q("22/11/2026 09:05:07"));
    EXPECT_EQ(Formato(m, q("Long Time")), q("09:05:07"));
    EXPECT_EQ(Formato(m, q("Short Date")), q("22/11/2026"));

    // Fechas que vienen del almacén como texto ISO (SQLite).
    EXPECT_EQ(Formato(QVariant(q("2026-11-22")), q("dd/mm/yyyy")), q("22/11/2026"));
    EXPECT_EQ(Formato(QVariant(q("2026-11-22")), QString()), q("22/11/2026"));
    EXPECT_EQ(Formato(QVariant(q("2026-11-22T10:30:00")), q("dd/mm/yyyy hh:nn")), q("22/11/2026 10:30"));
    EXPECT_EQ(Formato(QVariant(q("22/11/2026")), q("yyyy,mm,dd")), q("2026,11,22"));
    // Fecha y número de día del Basic, en los dos sentidos.
    EXPECT_EQ(Formato(46348, q("dd/mm/yyyy")), q("22/11/2026"));
    EXPECT_EQ(Formato(QDate(1900, 1, 1), q("0")), q("2"));
    EXPECT_EQ(Formato(QDate(), q("dd/mm/yyyy")), QString());
}

TEST(Formato, NombresDeDiasYMesesEnCastellano) {
    // Del lunes 16 al domingo 22 de noviembre de 2026.
    const char* dias[] = {"lunes", "martes", "miércoles", "jueves", "viernes", "sábado", "domingo"};
    const char* cortos[] = {"lun", "mar", "mié", "jue", "vie", "sáb", "dom"};
    for (int i = 0; i < 7; ++i) {
        const QDate f(2026, 11, 16 + i);
        EXPECT_EQ(Formato(f, q("Long Date")), q(dias[i]) + q(", ") + QString::number(16 + i) + q(" de noviembre de 2026"));
        EXPECT_EQ(Formato(f, q("dddd")), q(dias[i]));
        EXPECT_EQ(Formato(f, q("ddd")), q(cortos[i]));
    }
    const char* meses[] = {"enero", "febrero", "marzo", "abril", "mayo", "junio", "julio",
                           "agosto", "septiembre", "octubre", "noviembre", "diciembre"};
    // Día de la semana del 1.º de cada mes de 2026.
    const char* primeros[] = {"jueves", "domingo", "domingo", "miércoles", "viernes", "lunes",
                              "miércoles", "sábado", "martes", "jueves", "domingo", "martes"};
    for (int m = 1; m <= 12; ++m) {
        const QDate f(2026, m, 1);
        EXPECT_EQ(Formato(f, q("Long Date")), q(primeros[m - 1]) + q(", 1 de ") + q(meses[m - 1]) + q(" de 2026"));
        EXPECT_EQ(Formato(f, q("mmmm")), q(meses[m - 1]));
        EXPECT_EQ(Formato(f, q("mmm")), q(meses[m - 1]).left(3));
    }
}

TEST(Val, ComoElBasic) {
    struct C {
        const char* texto;
        double esperado;
    };
    const C casos[] = {
        {"2,5", 2},       {"", 0},          {"abc", 0},        {" 1 2.5x", 12.5},  {"-3.5", -3.5},
        {"+4", 4},        {"1e3", 1000},    {"1D2", 100},      {"1.5e-2", 0.015},  {"1e", 1},
        {"1e+", 1},       {"&H1F", 31},     {"&h1f", 31},      {"&HFFFF", -1},     {"&H8000", -32768},
        {"&H10000", 65536}, {"&HFFFFFFFF", -1}, {"&O17", 15},  {"&O8", 0},         {"&H", 0},
        {".5", 0.5},      {"5.", 5},        {"1.2.3", 1.2},    {"--1", 0},         {"\t7\n", 7},
        {"12abc34", 12},  {"1,234.50", 1},  {"$5", 0},         {"- 12", -12},      {"0012", 12},
        {"  -  0.25 kg", -0.25},
    };
    for (const auto& c : casos) EXPECT_DOUBLE_EQ(Val(q(c.texto)), c.esperado) << c.texto;
    EXPECT_EQ(Val(q("1e999")), std::numeric_limits<double>::infinity());
}

TEST(EsNumerico, TextosYValores) {
    const char* si[] = {"12",   " 12 ", "-12",   "12-",  "+1.5", "1,5",  "1,234.50", "$1,234.50", "-$5",
                        "$-5",  "(5)",  "( 5 )", "1e5",  "1.5E-3", "1D2", "&H1F",   "&o17",      ".5",
                        "5.",   "0",    "\t3\t", "- 12"};
    for (const char* s : si) EXPECT_TRUE(EsNumerico(QStringView(q(s)))) << s;
    const char* no[] = {"",    "   ", "-",   ".",  "1.2.3", "12a", "abc", "1,,2", ",5",  "5,",   "1e",
                        "&H",  "&HG", "(5",  "--5", "$",    "1 2", "(-5)", "5-5", "&O8", "1,2.3.4", "e5"};
    for (const char* s : no) EXPECT_FALSE(EsNumerico(QStringView(q(s)))) << s;

    EXPECT_TRUE(EsNumerico(QVariant(5)));
    EXPECT_TRUE(EsNumerico(QVariant(2.5)));
    EXPECT_TRUE(EsNumerico(QVariant(q("7"))));
    EXPECT_FALSE(EsNumerico(QVariant(q("x7"))));
    EXPECT_FALSE(EsNumerico(QVariant()));
    EXPECT_FALSE(EsNumerico(QVariant(QDate(2026, 1, 1))));
    EXPECT_FALSE(EsNumerico(QVariant(QString())));
}

TEST(Fechas, TextoYVuelta) {
    EXPECT_EQ(FechaTexto(QDate(2026, 3, 5)), q("05/03/2026"));
    EXPECT_EQ(FechaTexto(QDate()), QString());
    EXPECT_EQ(FechaDesdeTexto(u"22/11/2026"), QDate(2026, 11, 22));
    EXPECT_EQ(FechaDesdeTexto(u" 5/3/2026 "), QDate(2026, 3, 5));
    EXPECT_EQ(FechaDesdeTexto(u"2026-11-22"), QDate(2026, 11, 22));
    EXPECT_EQ(FechaDesdeTexto(u"2026-11-22T10:00:00"), QDate(2026, 11, 22));
    EXPECT_EQ(FechaDesdeTexto(u"22/11/2026 23:59:59"), QDate(2026, 11, 22));
    EXPECT_EQ(FechaDesdeTexto(u"1/2/26"), QDate(2026, 2, 1));
    EXPECT_EQ(FechaDesdeTexto(u"1/2/95"), QDate(1995, 2, 1));
    EXPECT_EQ(FechaDesdeTexto(u"29/2/2024"), QDate(2024, 2, 29));
    const char16_t* malas[] = {u"31/02/2026", u"29/2/2026", u"", u"abc", u"22/11", u"22-11-2026",
                               u"2026-13-01", u"22/11/2026 25:00", u"1/1/123", u"a/b/cccc"};
    for (auto m : malas) EXPECT_FALSE(FechaDesdeTexto(m).has_value()) << QString::fromUtf16(m).toStdString();
    for (QDate f = QDate(2024, 1, 1); f < QDate(2025, 1, 1); f = f.addDays(1))
        ASSERT_EQ(FechaDesdeTexto(FechaTexto(f)), f);
}

// Una fecha leída del almacén se muestra igual venga de PostgreSQL (QDate) o de SQLite (texto
// ISO); un texto que sólo se parece a una fecha (un código, un número) queda afuera.
TEST(Fechas, GuardadasEnLosDosMotores) {
    EXPECT_EQ(FechaGuardadaTexto(QVariant(QDate(2026, 3, 5))), q("05/03/2026"));
    EXPECT_EQ(FechaGuardadaTexto(QVariant(q("2026-03-05"))), q("05/03/2026"));
    EXPECT_EQ(FechaGuardadaTexto(QVariant(QDateTime(QDate(2026, 3, 5), QTime(0, 0)))), q("05/03/2026"));
    EXPECT_EQ(FechaGuardadaTexto(QVariant(q("2026-03-05T00:00:00"))), q("05/03/2026"));
    EXPECT_EQ(FechaGuardadaTexto(QVariant(q("2026-03-05T14:07:59.120"))), q("05/03/2026 14:07"));
    EXPECT_EQ(FechaGuardadaTexto(QVariant(q("2026-03-05 14:07:00"))), q("05/03/2026 14:07"));
    EXPECT_EQ(FechaGuardadaTexto(QVariant(QDateTime(QDate(2026, 3, 5), QTime(9, 5)))), q("05/03/2026 09:05"));
    for (const char* no : {"05/03/2026", "2026-02-30", "2026-03-05x", "2026-0305", "A0001-00000001", "20260305", ""})
        EXPECT_FALSE(FechaGuardadaTexto(QVariant(QString::fromLatin1(no))).has_value()) << no;
    EXPECT_FALSE(FechaGuardadaTexto(QVariant(20260305)).has_value());
    EXPECT_FALSE(FechaGuardadaTexto(QVariant()).has_value());
}

// La configuración regional del equipo no cambia nada.
TEST(Formato, NoDependeDeLaConfiguracionRegional) {
    auto muestra = [] {
        QStringList r;
        for (const auto& c : kMascaras) r << Formato(d(c.valor), q(c.mascara));
        r << Formato(2.675, q("#,##0.00")) << Formato(1234567.5, q("Currency")) << Formato(1.0 / 3, QString())
          << Formato(QDate(2026, 11, 22), q("Long Date")) << Formato(QDate(2026, 11, 22), q("Short Date"))
          << Formato(QVariant(q("1,234.5")), q("#,##0.00")) << QString::number(Val(q("1.5")))
          << (EsNumerico(QStringView(q("1,234.50"))) ? q("si") : q("no"))
          << (EsNumerico(QStringView(q("1.234,50"))) ? q("si") : q("no"))
          << Dinero::desdeTexto(q("1,234.50"))->aTexto() << Dinero::desdeDouble(2.5).aTexto()
          << FechaTexto(*FechaDesdeTexto(u"05/03/2026"));
        return r;
    };
    const QStringList antes = muestra();
    const QLocale previo;
    const std::string previoC = std::setlocale(LC_ALL, nullptr);

    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(muestra(), antes) << "con QLocale alemán";
    for (const char* nombre : {"de_DE.UTF-8", "de_DE.utf8", "es_AR.UTF-8", "C.UTF-8"}) {
        if (std::setlocale(LC_ALL, nombre)) {
            EXPECT_EQ(muestra(), antes) << "con setlocale " << nombre;
        }
    }
    std::setlocale(LC_ALL, previoC.c_str());
    QLocale::setDefault(previo);
    EXPECT_EQ(Val(q("1.5")), 1.5);
}
