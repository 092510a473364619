#include "store/dinero.h"

#include "store/decimal.h"

#include <cmath>
#include <limits>

namespace orv {

namespace {

__extension__ typedef __int128 Ent128;

using decimal::Decimal;

[[noreturn]] void desborde() { throw ImporteFueraDeRango(); }

qint64 aEntero64(Ent128 v) {
    if (v > std::numeric_limits<qint64>::max() || v < std::numeric_limits<qint64>::min()) desborde();
    return qint64(v);
}

Ent128 potencia10(int n) {
    Ent128 p = 1;
    for (int i = 0; i < n; ++i) p *= 10;
    return p;
}

// Cociente entero redondeado la mitad lejos del cero (den distinto de cero).
Ent128 divideRedondeando(Ent128 num, Ent128 den) {
    Ent128 q = num / den;
    const Ent128 r = num % den;
    const Ent128 ar = r < 0 ? -r : r;
    const Ent128 ad = den < 0 ? -den : den;
    if (ar >= ad - ar) q += ((num < 0) != (den < 0)) ? -1 : 1;
    return q;
}

Decimal decimalDe(double d) {
    if (std::isnan(d)) throw std::invalid_argument("Dinero: valor no numérico");
    if (std::isinf(d)) desborde();
    return decimal::desdeDouble(d);
}

Ent128 cifrasComoEntero(const Decimal& d) {
    Ent128 m = 0;
    for (char c : d.cifras) m = m * 10 + (c - '0');
    return d.negativo ? -m : m;
}

// v diezmilésimos × f × 10^expExtra, redondeado a diezmilésimos.
qint64 multiplica(qint64 v, const Decimal& f, int expExtra) {
    if (v == 0 || f.esCero()) return 0;
    // El factor sale de un double: a lo sumo 17 cifras, el producto cabe en 128 bits.
    Ent128 p = Ent128(v) * cifrasComoEntero(f);
    const int e = f.exponente + expExtra;
    if (e >= 0) {
        for (int i = 0; i < e; ++i)
            if (__builtin_mul_overflow(p, Ent128(10), &p)) desborde();
    } else {
        if (-e > 38) return 0; // |p| < 1.7e38: queda por debajo de medio diezmilésimo
        p = divideRedondeando(p, potencia10(-e));
    }
    return aEntero64(p);
}

} // namespace

Dinero Dinero::desdeDouble(double d) {
    const auto v = decimalDe(d).escalado(4);
    if (!v) desborde();
    return desdeDiezmilesimos(*v);
}

std::optional<Dinero> Dinero::desdeTexto(QStringView texto) {
    const auto d = decimal::analiza(texto);
    if (!d) return std::nullopt;
    const auto v = d->escalado(4);
    if (!v) return std::nullopt;
    return desdeDiezmilesimos(*v);
}

Dinero Dinero::desdeVariant(const QVariant& v) {
    if (!v.isValid() || v.isNull()) return {};
    switch (v.typeId()) {
    case QMetaType::QString:
    case QMetaType::QByteArray: {
        const QString t = v.toString();
        if (t.trimmed().isEmpty()) return {};
        const auto d = decimal::analiza(t);
        if (!d) throw std::invalid_argument("Dinero: el texto no es un importe");
        const auto e = d->escalado(4);
        if (!e) desborde();
        return desdeDiezmilesimos(*e);
    }
    case QMetaType::Double:
    case QMetaType::Float:
        return desdeDouble(v.toDouble());
    default:
        break;
    }
    bool ok = false;
    const qlonglong n = v.toLongLong(&ok);
    if (!ok) throw std::invalid_argument("Dinero: el valor no es un importe");
    return Dinero(n);
}

QString Dinero::aTexto() const {
    const quint64 u = v_ < 0 ? 0 - quint64(v_) : quint64(v_);
    QString s = QString::number(u / quint64(kEscala)) + u'.' +
                QString::number(u % quint64(kEscala)).rightJustified(4, u'0');
    if (v_ < 0) s.prepend(u'-');
    return s;
}

Dinero Dinero::operator-() const {
    qint64 r = 0;
    if (__builtin_sub_overflow(qint64(0), v_, &r)) desborde();
    return desdeDiezmilesimos(r);
}

// Si desborda, el valor queda como estaba.
Dinero& Dinero::operator+=(Dinero o) {
    qint64 r = 0;
    if (__builtin_add_overflow(v_, o.v_, &r)) desborde();
    v_ = r;
    return *this;
}

Dinero& Dinero::operator-=(Dinero o) {
    qint64 r = 0;
    if (__builtin_sub_overflow(v_, o.v_, &r)) desborde();
    v_ = r;
    return *this;
}

Dinero Dinero::por(double factor) const { return desdeDiezmilesimos(multiplica(v_, decimalDe(factor), 0)); }

Dinero Dinero::porcentaje(double pct) const {
    return desdeDiezmilesimos(multiplica(v_, decimalDe(pct), -2));
}

Dinero Dinero::divideEntero(qint64 divisor) const {
    if (divisor == 0) throw std::domain_error("Dinero: división por cero");
    return desdeDiezmilesimos(aEntero64(divideRedondeando(v_, divisor)));
}

Dinero Dinero::dividido(double divisor) const {
    if (divisor == 0.0) throw std::domain_error("Dinero: división por cero");
    const Decimal f = decimalDe(divisor);
    if (v_ == 0) return {};
    // v / (m × 10^e)
    const Ent128 m = cifrasComoEntero(f);
    Ent128 num = v_;
    Ent128 den = m;
    if (f.exponente <= 0) {
        for (int i = 0; i < -f.exponente; ++i)
            if (__builtin_mul_overflow(num, Ent128(10), &num)) desborde();
    } else {
        for (int i = 0; i < f.exponente; ++i)
            if (__builtin_mul_overflow(den, Ent128(10), &den)) return {}; // cociente menor que medio diezmilésimo
    }
    return desdeDiezmilesimos(aEntero64(divideRedondeando(num, den)));
}

Dinero Dinero::redondeado(int decimales) const {
    if (decimales < 0 || decimales > 4) throw std::invalid_argument("Dinero: se redondea a 0..4 decimales");
    const Ent128 paso = potencia10(4 - decimales);
    return desdeDiezmilesimos(aEntero64(divideRedondeando(v_, paso) * paso));
}

} // namespace orv
