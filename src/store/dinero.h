#pragma once
// Dinero exacto: un entero de 64 bits con signo que cuenta diezmilésimos (4 decimales,
// como las columnas NUMERIC(19,4) del almacén). Sumas y restas son exactas; sólo se
// redondea al multiplicar, dividir o cuando se pide, siempre la mitad lejos del cero.
// Un desborde lanza ImporteFueraDeRango.

#include <QString>
#include <QStringView>
#include <QVariant>
#include <QtGlobal>
#include <compare>
#include <concepts>
#include <optional>
#include <stdexcept>

namespace orv {

// Un importe que no cabe en el tipo de dinero. La guardia de las pantallas lo muestra como
// "Importe fuera de rango!"; la lógica lo evita acotando lo que se escribe.
class ImporteFueraDeRango : public std::overflow_error {
public:
    ImporteFueraDeRango() : std::overflow_error("Dinero: importe fuera de rango") {}
};

class Dinero {
public:
    static constexpr qint64 kEscala = 10000;

    constexpr Dinero() noexcept = default;
    // Unidades y diezmilésimos; los diezmilésimos llevan el signo de las unidades:
    // Dinero(12, 5000) es 12.5 y Dinero(-12, 5000) es -12.5. Dinero(0, -5) es -0.0005.
    constexpr explicit Dinero(qint64 unidades, qint64 diezmilesimos = 0)
        : v_(compone(unidades, diezmilesimos)) {}
    // Un double no se convierte callado: usar desdeDouble.
    template <std::floating_point T>
    explicit Dinero(T) = delete;

    static constexpr Dinero desdeDiezmilesimos(qint64 v) noexcept {
        Dinero d;
        d.v_ = v;
        return d;
    }
    // Redondea la mitad lejos del cero a 4 decimales sobre la forma decimal más corta del
    // double (2.675 es 2.6750, aunque el binario quede un pelo debajo).
    static Dinero desdeDouble(double d);
    // "1234.5678", "-12.5", "1,234.50", "$1,234.50", "(5.00)", "12.5-", con blancos
    // alrededor. Más de 4 decimales se redondean. nullopt si no es un importe o no cabe.
    static std::optional<Dinero> desdeTexto(QStringView texto);
    // Valor leído del almacén: texto decimal exacto (PostgreSQL), double (SQLite),
    // entero; nulo o texto vacío dan 0. Un texto que no es número lanza std::invalid_argument.
    static Dinero desdeVariant(const QVariant& v);

    // Texto decimal exacto con 4 decimales ("12.5000"): lo aceptan los dos motores para NUMERIC.
    QVariant aVariant() const { return aTexto(); }
    QString aTexto() const;
    double aDouble() const { return double(v_) / double(kEscala); }
    constexpr qint64 diezmilesimos() const noexcept { return v_; }
    constexpr bool esCero() const noexcept { return v_ == 0; }

    Dinero operator-() const;
    Dinero& operator+=(Dinero o);
    Dinero& operator-=(Dinero o);
    friend Dinero operator+(Dinero a, Dinero b) { return a += b; }
    friend Dinero operator-(Dinero a, Dinero b) { return a -= b; }
    friend constexpr bool operator==(Dinero, Dinero) noexcept = default;
    friend constexpr auto operator<=>(Dinero, Dinero) noexcept = default;

    // Importe × cantidad (o coeficiente), redondeado a 4 decimales. El factor se toma por su
    // forma decimal más corta y el producto es exacto antes de redondear: 19.99 × 3 = 59.97.
    Dinero por(double factor) const;
    // Importe × pct / 100, redondeado a 4 decimales.
    Dinero porcentaje(double pct) const;
    // División redondeada a 4 decimales; divisor cero lanza std::domain_error.
    template <std::integral T>
    Dinero dividido(T divisor) const { return divideEntero(qint64(divisor)); }
    Dinero dividido(double divisor) const;
    // Redondeo a 0..4 decimales (2 es lo que guarda un campo de pantalla con formato).
    Dinero redondeado(int decimales) const;

private:
    static constexpr qint64 compone(qint64 unidades, qint64 diezmilesimos) {
        qint64 base = 0;
        qint64 r = 0;
        if (__builtin_mul_overflow(unidades, kEscala, &base) ||
            (unidades < 0 ? __builtin_sub_overflow(base, diezmilesimos, &r)
                          : __builtin_add_overflow(base, diezmilesimos, &r)))
            throw ImporteFueraDeRango();
        return r;
    }
    Dinero divideEntero(qint64 divisor) const;

    qint64 v_ = 0;
};

} // namespace orv
