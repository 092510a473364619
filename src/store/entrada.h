#pragma once
// Lo que el usuario escribe, leído sin cambiarlo nunca callado.
//
// Un número que no se puede leer con certeza, o que no cabe donde va, se rechaza con un aviso
// que nombra el campo: nunca se toma por 0, nunca se trunca, nunca se pasa de un double a un
// entero sin mirar el rango. Los textos con un carácter nulo o más largos que su columna
// también se rechazan, igual en los dos motores.

#include "store/aviso.h"
#include "store/dinero.h"

#include <QString>
#include <QStringView>
#include <optional>

namespace orv {

inline const QString kImporteFueraDeRango = QStringLiteral("Importe fuera de rango!");

// Topes de lo que se escribe en un comprobante: así toda línea, todo total y todo importe en
// letras caben holgados en el tipo de dinero (unos 922 billones).
inline constexpr qint64 kImporteMaximo = 999'999'999'999;   // un importe: unitario, subtotal, total
inline constexpr double kCantidadMaxima = 999'999'999.0;    // una cantidad de una línea
inline constexpr double kPorcentajeMaximo = 1000.0;         // un porcentaje, de -1000 a 1000

// La coma sólo agrupa miles, de a tres cifras: "1,234.5" sí; "1,5" o "12,34" son ambiguos (¿una
// coma decimal?) y no se leen.
bool MilesBienAgrupados(QStringView texto);

// Número escrito ("." decimal, "," de miles bien agrupados, signo, exponente); finito.
std::optional<double> LeeNumero(QStringView texto);
// Entero escrito con cifras (signo y comas de miles bien agrupadas), dentro de [minimo, maximo].
// Nunca pasa por un double: "1e300" o veinte cifras no son un entero de este rango.
std::optional<qint64> LeeEntero(QStringView texto, qint64 minimo, qint64 maximo);
// Importe exacto con las mismas reglas; nullopt si no se lee o no cabe en el tipo de dinero.
std::optional<Dinero> LeeImporte(QStringView texto);

// Las mismas lecturas que lanzan un Aviso con el nombre del campo: "mal escrito" si no se lee,
// "fuera de rango" si no cabe entre los topes.
double ExigeNumero(QStringView texto, const QString& campo, double minimo, double maximo);
qint64 ExigeEntero(QStringView texto, const QString& campo, qint64 minimo, qint64 maximo);
// Entre -kImporteMaximo y kImporteMaximo.
Dinero ExigeImporte(QStringView texto, const QString& campo);
// Entre -kPorcentajeMaximo y kPorcentajeMaximo; "1,5" se rechaza, nunca se toma por 1 ni por 15.
double ExigePorcentaje(QStringView texto, const QString& campo);
double ExigeCantidad(QStringView texto, const QString& campo);
// Un importe ya calculado que debe quedar entre los topes (una línea, un total).
void ExigeImporteEnRango(Dinero importe);

// Un texto que va a una columna de `maximo` caracteres: sin caracteres nulos y no más largo.
void ExigeTexto(const QString& texto, int maximo, const QString& campo);

// Los caracteres de un texto como los cuenta el servidor (puntos de código: un emoji es uno).
qsizetype CuentaCaracteres(QStringView texto);
// Los primeros caracteres de `texto` que caben en `maximo`, cortando sólo entre letras enteras:
// nunca en medio de un emoji ni de una letra acentuada hecha de dos puntos de código.
QString CortaTexto(const QString& texto, qsizetype maximo);

} // namespace orv
