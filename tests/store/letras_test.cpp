// Importe en letras de los comprobantes.

#include "store/letras.h"

#include <gtest/gtest.h>
#include <utility>

namespace orv {
namespace {

TEST(ImporteEnLetras, PalabrasYCentavosHastaElTopeDelDinero) {
    const std::pair<const char*, const char*> casos[] = {
        {"0", "cero"}, {"1", "uno"}, {"16", "dieciseis"}, {"21", "veintiuno"}, {"31", "treinta y uno"}, {"100", "cien"},
        {"101", "ciento uno"}, {"1000", "mil"}, {"21000", "veintiun mil"}, {"31001", "treinta y un mil uno"},
        {"100000", "cien mil"}, {"201000", "doscientos un mil"}, {"1000000", "Un millon"},
        {"2500000", "dos millones quinientos mil"}, {"100000000", "Cien millones"}, {"1000000000", "mil millones"},
        {"1001000000", "mil un millones"}, {"1500000001", "mil quinientos millones uno"},
        {"21000000000", "veintiun mil millones"}, {"1000000000000", "Un billon"}, {"1000001000000", "Un billon un millon"},
        {"2000100000000", "dos billones cien millones"}, {"2100000000000", "dos billones cien mil millones"},
        {"999999999999", "novecientos noventa y nueve mil novecientos noventa y nueve millones novecientos noventa y "
                         "nueve mil novecientos noventa y nueve"},
        // Los centavos se redondean como en pantalla, y el signo no se escribe.
        {"15.5", "quince con 50"}, {"1234.5", "mil doscientos treinta y cuatro con 50"}, {"10.005", "diez con 01"},
        {"-12", "doce"},
        {"-922337203685477.5807", "novecientos veintidos billones trescientos treinta y siete mil doscientos tres "
                                  "millones seiscientos ochenta y cinco mil cuatrocientos setenta y siete con 58"},
    };
    // Sin centavos escritos, son "con 00/100".
    for (const auto& [importe, palabras] : casos) {
        QString esperado = QString::fromUtf8(palabras);
        if (!esperado.contains(" con ")) esperado += " con 00";
        EXPECT_EQ(ImporteEnLetras(Dinero::desdeTexto(QString::fromLatin1(importe)).value()).toStdString(),
                  (esperado + "/100.-").toStdString());
    }
}

} // namespace
} // namespace orv
