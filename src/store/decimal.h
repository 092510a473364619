#pragma once
// Número decimal exacto de uso interno (Dinero, Formato, EsNumerico).
//
// Un valor es signo × cifras × 10^exponente, con las cifras en texto: sirve para
// redondear "mitad lejos del cero" sobre el valor decimal que el usuario ve y
// no sobre el binario de un double.

#include <QStringView>
#include <QtGlobal>
#include <optional>
#include <string>

namespace orv::decimal {

struct Decimal {
    bool negativo = false;
    std::string cifras; // sin ceros a la izquierda ni a la derecha; vacío = cero
    int exponente = 0;

    bool esCero() const { return cifras.empty(); }
    // Quita ceros sobrantes; un cero nunca es negativo.
    void normaliza();
    // Redondea a `decimales` cifras decimales, la mitad lejos del cero.
    Decimal redondeado(int decimales) const;
    // Redondea a `n` cifras significativas (n > 0), la mitad lejos del cero.
    Decimal significativas(int n) const;
    // Parte entera (sin ceros a la izquierda; vacía si es cero) y fracción de
    // exactamente `decimales` cifras, después de redondear.
    void partes(int decimales, std::string& entero, std::string& fraccion) const;
    // Valor × 10^decimales redondeado a entero; nullopt si no cabe en 64 bits.
    std::optional<qint64> escalado(int decimales) const;
};

// Entero exacto.
Decimal desdeEntero(qint64 v);
Decimal desdeEnteroSinSigno(quint64 v);
// Valor entero escalado: v × 10^-decimales.
Decimal desdeEscalado(qint64 v, int decimales);
// La representación decimal más corta que vuelve al mismo double. Requiere un valor finito.
Decimal desdeDouble(double d);
// Texto numérico con formato fijo ("." decimal, "," miles): signo adelante o atrás,
// "$", paréntesis como negativo, exponente E/D, "&H" y "&O". nullopt si no es un número.
std::optional<Decimal> analiza(QStringView texto);
// Valor de "&H..." / "&O..." como el Basic: hasta FFFF es entero de 16 bits con signo,
// hasta FFFFFFFF de 32 bits con signo.
qint64 valorHexOctal(quint64 crudo);

} // namespace orv::decimal
