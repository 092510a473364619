#pragma once
// Verificación del número de contribuyente (CUIT) por módulo 11.

#include <QStringView>

namespace orv {

// De derecha a izquierda, sólo cuentan las cifras (guiones, blancos y letras se saltan):
// la primera es el dígito verificador y las demás se multiplican por 2, 3, 4, 5, 6, 7, 2...
// Válido sólo con 11 cifras exactas y cuando el verificador es 11 - (suma mod 11),
// o 0 si el resto es 0; con resto 1 ningún dígito sirve.
bool CuitValido(QStringView texto);

} // namespace orv
