// Máscaras de números y fechas, Val y EsNumerico: siempre "." decimal y "," de miles, sin mirar el equipo.

#include "apoyo/filas.h"
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
    {"0", "###,###,##0.00", "0.00"}, {"123456", "###,###,##0.00", "123,456.00"},
    {"1234567890.5", "###,###,##0.00", "1,234,567,890.50"}, {"-1234.5", "###,###,##0.00", "-1,234.50"},
    {"0.005", "###,###,##0.00", "0.01"}, {"-0.005", "###,###,##0.00", "-0.01"}, {"2.675", "###,###,##0.00", "2.68"},
    {"2.665", "###,###,##0.00", "2.67"}, {"-0.004", "###,###,##0.00", "0.00"}, {"999.995", "###,###,##0.00", "1,000.00"},
    {"999999999999.99", "###,###,##0.00", "999,999,999,999.99"}, {"0", "##0.0", "0.0"}, {"50", "##0.0", "50.0"},
    {"1234.56", "##0.0", "1234.6"}, {"0.04", "##0.0", "0.0"}, {"0.05", "##0.0", "0.1"}, {"-0.05", "##0.0", "-0.1"},
    {"1234.5", "#,##0.00", "1,234.50"}, {"0.5", "#,##0.00", "0.50"}, {"-999.999", "#,##0.00", "-1,000.00"},
    {"7", "##,###,##0.0", "7.0"}, {"1234567.25", "##,###,##0.0", "1,234,567.3"}, {"123", "00000000", "00000123"},
    {"123456789", "00000000", "123456789"}, {"12.5", "00000000", "00000013"}, {"12345", "0000", "12345"},
    {"21", "##0.00", "21.00"}, {"1234.5", "Currency", "$1,234.50"}, {"-1234.5", "Currency", "-$1,234.50"},
    {"0", "Currency", "$0.00"}, {"0.125", "currency", "$0.13"}, {"12.5", "", "12.5"}, {"-7", "", "-7"},
    {"1234.5", "General Number", "1234.5"}, {"1234.5", "Fixed", "1234.50"}, {"1234.5", "Standard", "1,234.50"},
    {"0.215", "0.00%", "21.50%"}, {"-5", "0.00;(0.00)", "(5.00)"}, {"5", "0.00;(0.00)", "5.00"},
    {"0", "0.00;(0.00);\"cero\"", "cero"}, {"5", "#.##", "5."}, {"5.1", "#.##", "5.1"}, {"5", "0.00 \"kg\"", "5.00 kg"},
    {"1234567", "#,##0,", "1,235"}, {"0.5", ".00", ".50"}, {"1.5", ".00", "1.50"},
};

} // namespace

TEST(Formato, MascarasNumericasConValoresExactos) {
    for (const auto& c : kMascaras) {
        EXPECT_EQ(Formato(d(c.valor), q(c.mascara)), q(c.esperado)) << c.valor << " con " << c.mascara;
        // El mismo valor como texto numérico da lo mismo.
        EXPECT_EQ(Formato(QVariant(q(c.valor)), q(c.mascara)), q(c.esperado)) << c.valor << " texto, " << c.mascara;
    }
}

TEST(Formato, DoublesEnterosTextosFechasYNulos) {
    const QDate f(2026, 11, 22);
    const QDate marzo(2026, 3, 5);
    const QDateTime m(f, QTime(9, 5, 7));
    const struct {
        QVariant valor;
        const char* mascara;
        const char* esperado;
    } casos[] = {
        // Un double se redondea por su forma decimal más corta.
        {2.675, "#,##0.00", "2.68"}, {1.005, "0.00", "1.01"}, {-0.005, "###,###,##0.00", "-0.01"},
        {0.1 + 0.2, "0.00", "0.30"}, {-0.5, "0", "-1"}, {1e20, "#,##0", "100,000,000,000,000,000,000"},
        {std::numeric_limits<double>::quiet_NaN(), "0.00", ""},
        // Número general: 15 cifras significativas, como el Basic.
        {0.1 + 0.2, "", "0.3"}, {1.0 / 3, "", "0.333333333333333"}, {1e15, "", "1E+15"},
        {123456789012345.0, "", "123456789012345"}, {0.00001, "", "1E-05"}, {0.0001, "", "0.0001"},
        // Enteros, nulos, textos con comas de miles y NUMERIC de PostgreSQL como texto (sin pasar por double).
        {5, "0000", "0005"}, {qlonglong(123), "00000000", "00000123"}, {-42, "#,##0.00", "-42.00"},
        {qulonglong(18446744073709551615ULL), "#,##0", "18,446,744,073,709,551,615"}, {QVariant(), "0.00", ""},
        {QString(), "0.00", ""}, {QVariant(QMetaType(QMetaType::Double)), "0.00", ""}, {"1,234.5", "#,##0.00", "1,234.50"},
        {"abc", "0.00", "abc"}, {"12345678901234.5678", "#,##0.00", "12,345,678,901,234.57"},
        // Fechas y horas en todas las máscaras; las del almacén llegan también como texto ISO (SQLite).
        {f, "dd/mm/yyyy", "22/11/2026"}, {f, "dd/MM/yyyy", "22/11/2026"}, {f, "yyyy,mm,dd", "2026,11,22"},
        {f, "long date", "domingo, 22 de noviembre de 2026"}, {f, "Short Date", "22/11/2026"}, {f, "", "22/11/2026"},
        {marzo, "d/m/yy", "5/3/26"}, {marzo, "yyyy,mm,dd", "2026,03,05"}, {marzo, "ddd dd-mmm-yyyy", "jue 05-mar-2026"},
        {marzo, "YYYYMMDD", "20260305"}, {marzo, "\"Fecha:\" dd/mm", "Fecha: 05/03"}, {QDate(), "dd/mm/yyyy", ""},
        {m, "hh:mm:ss", "09:05:07"}, {m, "HH:mm:ss", "09:05:07"}, {m, "dd/mm/yyyy hh:nn", "22/11/2026 09:05"},
        {m, "HHMMSS", "090507"}, {m, "General Date", "22/11/2026 09:05:07"}, {m, "Long Time", "09:05:07"},
        {m, "Short Date", "22/11/2026"}, {"2026-11-22", "dd/mm/yyyy", "22/11/2026"}, {"2026-11-22", "", "22/11/2026"},
        {"2026-11-22T10:30:00", "dd/mm/yyyy hh:nn", "22/11/2026 10:30"}, {"22/11/2026", "yyyy,mm,dd", "2026,11,22"},
        // Fecha y número de día del Basic, en los dos sentidos.
        {46348, "dd/mm/yyyy", "22/11/2026"}, {QDate(1900, 1, 1), "0", "2"},
    };
    for (const auto& c : casos)
        EXPECT_EQ(Formato(c.valor, q(c.mascara)).toStdString(), c.esperado) << c.valor.toString().toStdString() << " con "
                                                                            << c.mascara;
    EXPECT_EQ(FormatoMoneda(d("1234.5"), QString()), q("1,234.50"));
    EXPECT_EQ(FormatoMoneda(d("-0.004"), q("Currency")), q("$0.00"));
}

TEST(Val, ComoElBasic) {
    const std::pair<const char*, double> casos[] = {
        {"2,5", 2},         {"", 0},          {"abc", 0},        {" 1 2.5x", 12.5},  {"-3.5", -3.5},
        {"+4", 4},          {"1e3", 1000},    {"1D2", 100},      {"1.5e-2", 0.015},  {"1e", 1},
        {"1e+", 1},         {"&H1F", 31},     {"&h1f", 31},      {"&HFFFF", -1},     {"&H8000", -32768},
        {"&H10000", 65536}, {"&HFFFFFFFF", -1}, {"&O17", 15},    {"&O8", 0},         {"&H", 0},
        {".5", 0.5},        {"5.", 5},        {"1.2.3", 1.2},    {"--1", 0},         {"\t7\n", 7},
        {"12abc34", 12},    {"1,234.50", 1},  {"$5", 0},         {"- 12", -12},      {"0012", 12},
        {"  -  0.25 kg", -0.25},
    };
    for (const auto& [texto, esperado] : casos) EXPECT_DOUBLE_EQ(Val(q(texto)), esperado) << texto;
    EXPECT_EQ(Val(q("1e999")), std::numeric_limits<double>::infinity());
}

TEST(EsNumerico, TextosYValores) {
    for (const char* s : {"12", " 12 ", "-12", "12-", "+1.5", "1,5", "1,234.50", "$1,234.50", "-$5", "$-5", "(5)", "( 5 )",
                          "1e5", "1.5E-3", "1D2", "&H1F", "&o17", ".5", "5.", "0", "\t3\t", "- 12"})
        EXPECT_TRUE(EsNumerico(QStringView(q(s)))) << s;
    for (const char* s : {"", "   ", "-", ".", "1.2.3", "12a", "abc", "1,,2", ",5", "5,", "1e", "&H", "&HG", "(5", "--5",
                          "$", "1 2", "(-5)", "5-5", "&O8", "1,2.3.4", "e5"})
        EXPECT_FALSE(EsNumerico(QStringView(q(s)))) << s;
    for (const QVariant& si : {QVariant(5), QVariant(2.5), QVariant(q("7"))}) EXPECT_TRUE(EsNumerico(si));
    for (const QVariant& no : {QVariant(q("x7")), QVariant(), QVariant(QDate(2026, 1, 1)), QVariant(QString())})
        EXPECT_FALSE(EsNumerico(no)) << no.toString().toStdString();
}

TEST(Fechas, TextoYVuelta) {
    EXPECT_EQ(FechaTexto(QDate(2026, 3, 5)), q("05/03/2026"));
    EXPECT_EQ(FechaTexto(QDate()), QString());
    const std::pair<const char16_t*, QDate> buenas[] = {
        {u"22/11/2026", {2026, 11, 22}}, {u" 5/3/2026 ", {2026, 3, 5}},          {u"2026-11-22", {2026, 11, 22}},
        {u"2026-11-22T10:00:00", {2026, 11, 22}}, {u"22/11/2026 23:59:59", {2026, 11, 22}}, {u"1/2/26", {2026, 2, 1}},
        {u"1/2/95", {1995, 2, 1}},       {u"29/2/2024", {2024, 2, 29}},
    };
    for (const auto& [texto, fecha] : buenas)
        EXPECT_EQ(FechaDesdeTexto(texto), fecha) << QString::fromUtf16(texto).toStdString();
    for (const char16_t* m : {u"31/02/2026", u"29/2/2026", u"", u"abc", u"22/11", u"22-11-2026", u"2026-13-01",
                              u"22/11/2026 25:00", u"1/1/123", u"a/b/cccc"})
        EXPECT_FALSE(FechaDesdeTexto(m).has_value()) << QString::fromUtf16(m).toStdString();
    for (QDate f = QDate(2024, 1, 1); f < QDate(2025, 1, 1); f = f.addDays(1)) ASSERT_EQ(FechaDesdeTexto(FechaTexto(f)), f);
}

// Una fecha leída del almacén se muestra igual venga de PostgreSQL (QDate) o de SQLite (texto
// ISO); un texto que sólo se parece a una fecha (un código, un número) queda afuera.
TEST(Fechas, GuardadasEnLosDosMotores) {
    const std::pair<QVariant, const char*> casos[] = {
        {QDate(2026, 3, 5), "05/03/2026"}, {"2026-03-05", "05/03/2026"},
        {QDateTime(QDate(2026, 3, 5), QTime(0, 0)), "05/03/2026"}, {"2026-03-05T00:00:00", "05/03/2026"},
        {"2026-03-05T14:07:59.120", "05/03/2026 14:07"}, {"2026-03-05 14:07:00", "05/03/2026 14:07"},
        {QDateTime(QDate(2026, 3, 5), QTime(9, 5)), "05/03/2026 09:05"}, {"05/03/2026", "-"}, {"2026-02-30", "-"},
        {"2026-03-05x", "-"}, {"2026-0305", "-"}, {"A0001-00000001", "-"}, {"20260305", "-"}, {"", "-"},
        {20260305, "-"}, {QVariant(), "-"},
    };
    for (const auto& [valor, esperado] : casos)
        EXPECT_EQ(FechaGuardadaTexto(valor).value_or("-").toStdString(), esperado) << valor.toString().toStdString();
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
        return r.join(u'\n').toStdString();
    };
    const std::string antes = muestra();
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
