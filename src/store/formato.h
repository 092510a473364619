#pragma once
// Números y fechas a texto y de texto, con formato fijo: "." decimal, "," miles,
// fechas dd/mm/aaaa en castellano. Nunca depende de la configuración regional del equipo.

#include "store/dinero.h"

#include <QDate>
#include <QString>
#include <QStringView>
#include <QVariant>
#include <optional>

namespace orv {

// Da formato a un valor con una máscara al estilo Basic.
//
// Máscaras numéricas: '0' cifra obligatoria, '#' cifra optativa, ',' entre cifras de la
// parte entera agrupa de a miles (al final de la parte entera divide por mil), '.' punto
// decimal, '%' multiplica por cien, "texto" y \c literales, secciones positivo;negativo;cero.
// Redondea la mitad lejos del cero sobre el valor decimal; un negativo lleva "-" adelante
// (salvo que redondee a cero); un valor más ancho que la máscara sale entero.
// Nombres: "Currency" ($ y miles con 2 decimales), "Fixed", "Standard", "Percent",
// "General Number" y la máscara vacía (el número tal cual).
//
// Máscaras de fecha: d dd ddd dddd, m mm mmm mmmm (mes; minutos después de h), yy yyyy,
// h hh, n nn, s ss, "/" y ":" fijos; nombres "Short Date" (22/11/2026), "Long Date"
// (domingo, 22 de noviembre de 2026), "General Date", "Long Time", "Short Time".
//
// Acepta QDate/QDateTime, números, Dinero (en su sobrecarga) y texto: un texto numérico
// se toma por su valor decimal exacto, una fecha en texto (ISO o dd/mm/aaaa) como fecha,
// y otro texto sale sin cambios. Nulo o vacío da "".
QString Formato(const QVariant& valor, const QString& mascara);
QString Formato(Dinero valor, const QString& mascara);

// Importe con la máscara de moneda (la vacía se toma como "###,###,##0.00").
QString FormatoMoneda(Dinero valor, const QString& mascaraMoneda);

// Val del Basic: salta blancos, tabulaciones y saltos de línea en cualquier lugar; signo,
// cifras, un punto, cifras, exponente E/D; se detiene en el primer otro carácter.
// "&H1F" y "&O17" en hexadecimal y octal. Sin número da 0.
double Val(QStringView texto);

// Importe como lo muestra una pantalla ("1,234.50", "$ 12.00", "(5.00)") en dinero exacto;
// vacío o no numérico da 0.
Dinero ImporteMostrado(QStringView texto);

// IsNumeric del Basic con formato fijo: signo adelante o atrás, "$", paréntesis,
// comas de miles entre cifras, punto decimal, exponente, "&H"/"&O". Vacío no es número.
bool EsNumerico(QStringView texto);
bool EsNumerico(const QVariant& valor);
// Tipo de número de una columna o de un valor leído del almacén (enteros y de coma flotante).
bool EsTipoNumerico(QMetaType tipo);

// Fecha corta "dd/MM/yyyy"; una fecha inválida da "".
QString FechaTexto(QDate fecha);
// "d/m/aaaa" (año de 2 cifras: 00-29 es 20xx, 30-99 es 19xx) o ISO "aaaa-mm-dd", con hora
// opcional detrás. nullopt si no es una fecha válida.
std::optional<QDate> FechaDesdeTexto(QStringView texto);
// Una fecha guardada, tal como se lee de cualquiera de los dos motores (QDate, QDateTime o el
// texto ISO "aaaa-mm-dd" con que SQLite la devuelve), en "dd/MM/yyyy"; una fecha con hora
// distinta de 0 agrega " HH:mm". nullopt si el valor no es una fecha.
std::optional<QString> FechaGuardadaTexto(const QVariant& valor);

} // namespace orv
