#include "store/cuit.h"

#include <QString>
#include <gtest/gtest.h>

using namespace orv;

namespace {
bool valido(const char* s) { return CuitValido(QString::fromUtf8(s)); }
} // namespace

TEST(CuitValido, NumerosConocidosConYSinGuiones) {
    EXPECT_TRUE(valido("20-12345678-6"));
    EXPECT_TRUE(valido("20123456786"));
    EXPECT_EQ(valido("20-12345678-6"), valido("20123456786"));
    EXPECT_TRUE(valido("20-17254359-7"));
    EXPECT_TRUE(valido("20-30123456-3"));
    EXPECT_TRUE(valido("27-00000000-6"));
    // Resto 0: el verificador esperado es 0.
    EXPECT_TRUE(valido("23-00000000-0"));
    EXPECT_TRUE(valido("20-12345670-0"));
    // Resto 10 (verificador 1).
    EXPECT_TRUE(valido("30-71234567-1"));
    EXPECT_TRUE(valido("20-12345675-1"));
}

TEST(CuitValido, VerificadorEquivocadoEsInvalido) {
    for (int v = 0; v <= 9; ++v) {
        const QString cuit = QStringLiteral("20-12345678-") + QString::number(v);
        EXPECT_EQ(CuitValido(cuit), v == 6) << cuit.toStdString();
    }
    // Cifras cambiadas de lugar dan otra suma.
    EXPECT_FALSE(valido("20-21345678-6"));
}

TEST(CuitValido, RestoUnoNoTieneVerificadorPosible) {
    // 2012345676 y 2000000001 suman con resto 1: esperan 10 y ningún dígito sirve.
    for (int v = 0; v <= 9; ++v) {
        EXPECT_FALSE(CuitValido(QStringLiteral("20-12345676-") + QString::number(v))) << v;
        EXPECT_FALSE(CuitValido(QStringLiteral("20-00000001-") + QString::number(v))) << v;
    }
}

TEST(CuitValido, SoloCuentanLasCifras) {
    EXPECT_TRUE(valido(" 20 12345678 6 "));
    EXPECT_TRUE(valido("CUIT: 20.12345678/6"));
    EXPECT_TRUE(valido("2x0-1234y5678-6z"));
    EXPECT_FALSE(valido(""));
    EXPECT_FALSE(valido("---"));
    EXPECT_FALSE(valido("abc"));
    // 12 cifras: falso aunque las últimas once pasen.
    EXPECT_FALSE(valido("120123456786"));
    EXPECT_FALSE(valido("20-12345678-60"));
    // 10 cifras.
    EXPECT_FALSE(valido("2012345678"));
    // Cifras no ASCII no cuentan.
    EXPECT_FALSE(CuitValido(QStringLiteral("20-12345678-\u0666")));
}
