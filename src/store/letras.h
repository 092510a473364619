#pragma once
// Importe en letras para los comprobantes: "mil doscientos treinta y cuatro con 50/100.-".

#include "store/dinero.h"

#include <QString>

namespace orv {

// Pesos en palabras y centavos como "con cc/100.-", en todo el rango del dinero (mil millones,
// billones); el signo se ignora.
QString ImporteEnLetras(Dinero importe);

} // namespace orv
