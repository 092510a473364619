#pragma once
// Control del formato regional del sistema operativo.
//
// El programa nunca convierte números ni fechas con la configuración regional: usa siempre su
// propio formato fijo ("." decimal, "," miles). Igual se leen los separadores del sistema y, si
// no son los del programa, se avisa al usuario, que decide si sigue o no. Nunca se cambia nada
// en el sistema operativo.

#include <QString>

namespace orv {

struct SeparadoresRegionales {
    QString decimal;
    QString fecha;
    QString hora;
    QString decimalMoneda;
    QString moneda; // símbolo
    QString miles;
    QString milesMoneda;
};

// Lee los separadores regionales del usuario sin modificarlos. Deja LC_NUMERIC en "C".
SeparadoresRegionales LeeRegionalSistema();

// Las cuatro pruebas: decimal y decimal de moneda distintos de ",", miles y miles de moneda distintos de ".".
bool FormatoRegionalValido(const SeparadoresRegionales& s);

// Texto de la pregunta que se hace cuando las pruebas fallan.
QString TextoProblemaRegional();

} // namespace orv
