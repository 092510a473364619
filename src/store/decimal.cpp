#include "store/decimal.h"

#include <charconv>
#include <cstdlib>
#include <limits>

namespace orv::decimal {

namespace {

bool esCifra(QChar c) { return c >= u'0' && c <= u'9'; }

// Suma uno a un texto de cifras ("" cuenta como cero).
void incrementa(std::string& s) {
    for (auto i = s.size(); i-- > 0;) {
        if (s[i] != '9') {
            ++s[i];
            return;
        }
        s[i] = '0';
    }
    s.insert(s.begin(), '1');
}

// Cifras de "&H"/"&O" (base 16 u 8); nullopt si no hay ninguna, hay otra cosa o no cabe.
std::optional<quint64> cifrasEnBase(QStringView s, int base) {
    if (s.isEmpty()) return std::nullopt;
    quint64 v = 0;
    for (QChar c : s) {
        int d = -1;
        const char16_t u = c.unicode();
        if (u >= u'0' && u <= u'9') d = u - u'0';
        else if (u >= u'a' && u <= u'f') d = u - u'a' + 10;
        else if (u >= u'A' && u <= u'F') d = u - u'A' + 10;
        if (d < 0 || d >= base) return std::nullopt;
        if (__builtin_mul_overflow(v, quint64(base), &v) || __builtin_add_overflow(v, quint64(d), &v))
            return std::nullopt;
    }
    return v;
}

// El exponente más grande que se acepta en un texto: fuera de eso ni un double lo representa.
constexpr int kExponenteMaximo = 400;

} // namespace

void Decimal::normaliza() {
    const auto primero = cifras.find_first_not_of('0');
    if (primero == std::string::npos) {
        cifras.clear();
        negativo = false;
        exponente = 0;
        return;
    }
    cifras.erase(0, primero);
    const auto ultimo = cifras.find_last_not_of('0');
    const auto sobran = cifras.size() - 1 - ultimo;
    cifras.resize(ultimo + 1);
    exponente += int(sobran);
}

Decimal Decimal::redondeado(int decimales) const {
    if (esCero() || exponente >= -decimales) return *this;
    const auto quitar = std::size_t(-decimales - exponente);
    Decimal r;
    r.negativo = negativo;
    r.exponente = -decimales;
    if (quitar <= cifras.size()) {
        r.cifras = cifras.substr(0, cifras.size() - quitar);
        if (cifras[cifras.size() - quitar] >= '5') incrementa(r.cifras);
    }
    r.normaliza();
    return r;
}

Decimal Decimal::significativas(int n) const {
    if (int(cifras.size()) <= n) return *this;
    const int quitar = int(cifras.size()) - n;
    return redondeado(-(exponente + quitar));
}

void Decimal::partes(int decimales, std::string& entero, std::string& fraccion) const {
    const Decimal r = redondeado(decimales);
    entero.clear();
    fraccion.clear();
    if (r.esCero()) {
        fraccion.assign(std::size_t(decimales), '0');
        return;
    }
    if (r.exponente >= 0) {
        entero = r.cifras + std::string(std::size_t(r.exponente), '0');
        fraccion.assign(std::size_t(decimales), '0');
        return;
    }
    const auto e = std::size_t(-r.exponente);
    if (r.cifras.size() > e) {
        entero = r.cifras.substr(0, r.cifras.size() - e);
        fraccion = r.cifras.substr(r.cifras.size() - e);
    } else {
        fraccion = std::string(e - r.cifras.size(), '0') + r.cifras;
    }
    fraccion.append(std::size_t(decimales) - e, '0');
}

std::optional<qint64> Decimal::escalado(int decimales) const {
    const Decimal r = redondeado(decimales);
    if (r.esCero()) return qint64(0);
    const int ceros = r.exponente + decimales;
    if (int(r.cifras.size()) + ceros > 19) return std::nullopt;
    quint64 v = 0;
    auto agrega = [&v](int d) {
        return !__builtin_mul_overflow(v, quint64(10), &v) && !__builtin_add_overflow(v, quint64(d), &v);
    };
    for (char c : r.cifras)
        if (!agrega(c - '0')) return std::nullopt;
    for (int i = 0; i < ceros; ++i)
        if (!agrega(0)) return std::nullopt;
    if (v > quint64(std::numeric_limits<qint64>::max())) return std::nullopt;
    return r.negativo ? -qint64(v) : qint64(v);
}

Decimal desdeEnteroSinSigno(quint64 v) {
    Decimal d;
    d.cifras = std::to_string(v);
    d.normaliza();
    return d;
}

Decimal desdeEntero(qint64 v) {
    const bool neg = v < 0;
    Decimal d = desdeEnteroSinSigno(neg ? 0 - quint64(v) : quint64(v));
    d.negativo = neg && !d.esCero();
    return d;
}

Decimal desdeEscalado(qint64 v, int decimales) {
    Decimal d = desdeEntero(v);
    if (!d.esCero()) d.exponente -= decimales;
    return d;
}

Decimal desdeDouble(double x) {
    // La forma científica más corta que vuelve al mismo double: "-2.675e+00".
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::scientific);
    const std::string_view s(buf, std::size_t(res.ptr - buf));
    Decimal d;
    std::size_t i = 0;
    if (i < s.size() && s[i] == '-') {
        d.negativo = true;
        ++i;
    }
    int decimales = 0;
    bool trasPunto = false;
    for (; i < s.size() && s[i] != 'e'; ++i) {
        if (s[i] == '.') {
            trasPunto = true;
            continue;
        }
        d.cifras.push_back(s[i]);
        if (trasPunto) ++decimales;
    }
    int exp = 0;
    if (i < s.size()) {
        ++i;
        if (i < s.size() && s[i] == '+') ++i;
        std::from_chars(s.data() + i, s.data() + s.size(), exp);
    }
    d.exponente = exp - decimales;
    d.normaliza();
    return d;
}

qint64 valorHexOctal(quint64 crudo) {
    if (crudo <= 0xFFFFu) return qint16(quint16(crudo));
    if (crudo <= 0xFFFFFFFFu) return qint32(quint32(crudo));
    return qint64(crudo);
}

std::optional<Decimal> analiza(QStringView texto) {
    const QStringView s = texto.trimmed();
    if (s.isEmpty()) return std::nullopt;

    if (s.size() >= 2 && s[0] == u'&') {
        const QChar b = s[1].toUpper();
        if (b != u'H' && b != u'O') return std::nullopt;
        const auto crudo = cifrasEnBase(s.mid(2), b == u'H' ? 16 : 8);
        if (!crudo) return std::nullopt;
        return desdeEntero(valorHexOctal(*crudo));
    }

    QStringView c = s;
    bool parentesis = false;
    if (c.front() == u'(') {
        if (c.back() != u')') return std::nullopt;
        parentesis = true;
        c = c.mid(1, c.size() - 2).trimmed();
    }
    const qsizetype n = c.size();
    qsizetype i = 0;
    bool signo = false, negativo = false, moneda = false;
    // Signo y "$" al comienzo, en cualquier orden.
    for (; i < n; ++i) {
        const QChar ch = c[i];
        if ((ch == u'+' || ch == u'-') && !signo && !parentesis) {
            signo = true;
            negativo = ch == u'-';
        } else if (ch == u'$' && !moneda) {
            moneda = true;
        } else if (ch != u' ') {
            break;
        }
    }
    Decimal d;
    // Parte entera: la coma agrupa sólo entre cifras.
    for (; i < n; ++i) {
        if (esCifra(c[i])) {
            d.cifras.push_back(char(c[i].unicode()));
        } else if (c[i] == u',' && i > 0 && esCifra(c[i - 1]) && i + 1 < n && esCifra(c[i + 1])) {
            continue;
        } else {
            break;
        }
    }
    int decimales = 0;
    if (i < n && c[i] == u'.') {
        for (++i; i < n && esCifra(c[i]); ++i) {
            d.cifras.push_back(char(c[i].unicode()));
            ++decimales;
        }
    }
    if (d.cifras.empty()) return std::nullopt;
    int exp = 0;
    if (i < n && QStringView(u"eEdD").contains(c[i])) {
        qsizetype j = i + 1;
        bool expNeg = false;
        if (j < n && (c[j] == u'+' || c[j] == u'-')) {
            expNeg = c[j] == u'-';
            ++j;
        }
        if (j >= n || !esCifra(c[j])) return std::nullopt;
        for (; j < n && esCifra(c[j]); ++j) {
            exp = exp * 10 + (c[j].unicode() - u'0');
            if (exp > kExponenteMaximo) return std::nullopt;
        }
        if (expNeg) exp = -exp;
        i = j;
    }
    // Signo al final.
    for (; i < n && c[i] == u' '; ++i) {}
    if (i < n && (c[i] == u'+' || c[i] == u'-') && !signo && !parentesis) {
        negativo = c[i] == u'-';
        ++i;
        for (; i < n && c[i] == u' '; ++i) {}
    }
    if (i != n) return std::nullopt;
    d.negativo = negativo || parentesis;
    d.exponente = exp - decimales;
    d.normaliza();
    return d;
}

} // namespace orv::decimal
