#pragma once
// Importe en letras para los comprobantes: "mil doscientos treinta y cuatro con 50/100.-".

#include "store/dinero.h"

#include <QString>

namespace orv {

// Pesos en palabras y centavos como "con cc/100.-". Hasta 999 999 999,99; el signo se ignora.
// Lanza std::out_of_range desde mil millones.
QString ImporteEnLetras(Dinero importe);

} // namespace orv
