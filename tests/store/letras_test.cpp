// Importe en letras de los comprobantes.

#include "store/letras.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace orv {
namespace {

QString letras(const char* importe) { return ImporteEnLetras(Dinero::desdeTexto(QString::fromLatin1(importe)).value()); }

TEST(ImporteEnLetras, PalabrasYCentavos) {
    EXPECT_EQ(letras("0"), QStringLiteral("cero con 00/100.-"));
    EXPECT_EQ(letras("1"), QStringLiteral("uno con 00/100.-"));
    EXPECT_EQ(letras("15.5"), QStringLiteral("quince con 50/100.-"));
    EXPECT_EQ(letras("16"), QStringLiteral("dieciseis con 00/100.-"));
    EXPECT_EQ(letras("20"), QStringLiteral("veinte con 00/100.-"));
    EXPECT_EQ(letras("21"), QStringLiteral("veintiuno con 00/100.-"));
    EXPECT_EQ(letras("31"), QStringLiteral("treinta y uno con 00/100.-"));
    EXPECT_EQ(letras("100"), QStringLiteral("cien con 00/100.-"));
    EXPECT_EQ(letras("101"), QStringLiteral("ciento uno con 00/100.-"));
    EXPECT_EQ(letras("1000"), QStringLiteral("mil con 00/100.-"));
    EXPECT_EQ(letras("1234.5"), QStringLiteral("mil doscientos treinta y cuatro con 50/100.-"));
    EXPECT_EQ(letras("21000"), QStringLiteral("veintiun mil con 00/100.-"));
    EXPECT_EQ(letras("31001"), QStringLiteral("treinta y un mil uno con 00/100.-"));
    EXPECT_EQ(letras("100000"), QStringLiteral("cien mil con 00/100.-"));
    EXPECT_EQ(letras("201000"), QStringLiteral("doscientos un mil con 00/100.-"));
    EXPECT_EQ(letras("1000000"), QStringLiteral("Un millon con 00/100.-"));
    EXPECT_EQ(letras("2500000"), QStringLiteral("dos millones quinientos mil con 00/100.-"));
    EXPECT_EQ(letras("100000000"), QStringLiteral("Cien millones con 00/100.-"));
    EXPECT_EQ(letras("999999999.99"),
              QStringLiteral("novecientos noventa y nueve millones novecientos noventa y nueve mil novecientos noventa y "
                             "nueve con 99/100.-"));
    // Los centavos se redondean como en pantalla, y el signo no se escribe.
    EXPECT_EQ(letras("10.005"), QStringLiteral("diez con 01/100.-"));
    EXPECT_EQ(letras("-12"), QStringLiteral("doce con 00/100.-"));
}

TEST(ImporteEnLetras, MilMillonesYBillonesHastaElTopeDelDinero) {
    const std::vector<std::pair<const char*, const char*>> casos = {
        {"1000000000", "mil millones con 00/100.-"},
        {"1001000000", "mil un millones con 00/100.-"},
        {"1500000001", "mil quinientos millones uno con 00/100.-"},
        {"21000000000", "veintiun mil millones con 00/100.-"},
        {"999999999999", "novecientos noventa y nueve mil novecientos noventa y nueve millones novecientos noventa y "
                         "nueve mil novecientos noventa y nueve con 00/100.-"},
        {"1000000000000", "Un billon con 00/100.-"},
        {"1000001000000", "Un billon un millon con 00/100.-"},
        {"2000100000000", "dos billones cien millones con 00/100.-"},
        {"2100000000000", "dos billones cien mil millones con 00/100.-"},
        {"922337203685477.5807", "novecientos veintidos billones trescientos treinta y siete mil doscientos tres "
                                 "millones seiscientos ochenta y cinco mil cuatrocientos setenta y siete con 58/100.-"},
        {"-922337203685477.5807", "novecientos veintidos billones trescientos treinta y siete mil doscientos tres "
                                  "millones seiscientos ochenta y cinco mil cuatrocientos setenta y siete con 58/100.-"},
    };
    for (const auto& [importe, esperado] : casos) EXPECT_EQ(letras(importe).toStdString(), std::string(esperado)) << importe;
}

} // namespace
} // namespace orv
