// Dígito verificador de la CUIT: sólo cuentan las once cifras.

#include "store/cuit.h"

#include <QString>
#include <gtest/gtest.h>

using namespace orv;

TEST(CuitValido, VerificadorRestoCeroRestoDiezYSoloOnceCifras) {
    // Resto 0 espera 0; resto 10, 1; con o sin guiones, con letras o blancos entre las cifras.
    for (const char* bueno : {"20-12345678-6", "20123456786", "20-17254359-7", "20-30123456-3", "27-00000000-6",
                              "23-00000000-0", "20-12345670-0", "30-71234567-1", "20-12345675-1", " 20 12345678 6 ",
                              "CUIT: 20.12345678/6", "2x0-1234y5678-6z"})
        EXPECT_TRUE(CuitValido(QString::fromUtf8(bueno))) << bueno;
    // Cifras cambiadas de lugar, 12 o 10 cifras, nada, o una cifra que no es ASCII.
    for (const char* malo : {"20-21345678-6", "", "---", "abc", "120123456786", "20-12345678-60", "2012345678",
                             "20-12345678-\u0666"})
        EXPECT_FALSE(CuitValido(QString::fromUtf8(malo))) << malo;
    for (int v = 0; v <= 9; ++v) {
        EXPECT_EQ(CuitValido("20-12345678-" + QString::number(v)), v == 6) << v;
        // Resto 1: espera 10 y ningún dígito sirve.
        const QString cifra = QString::number(v);
        EXPECT_FALSE(CuitValido("20-12345676-" + cifra) || CuitValido("20-00000001-" + cifra)) << v;
    }
}
