#include "store/formato.h"

#include "store/decimal.h"

#include <QDateTime>
#include <QStringList>
#include <QTime>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace orv {

namespace {

using decimal::Decimal;

const char16_t* const kMeses[12] = {u"enero",  u"febrero", u"marzo",      u"abril",   u"mayo",      u"junio",
                                    u"julio",  u"agosto",  u"septiembre", u"octubre", u"noviembre", u"diciembre"};
const char16_t* const kMesesCortos[12] = {u"ene", u"feb", u"mar", u"abr", u"may", u"jun",
                                          u"jul", u"ago", u"sep", u"oct", u"nov", u"dic"};
// Índice: QDate::dayOfWeek() - 1 (lunes primero).
const char16_t* const kDias[7] = {u"lunes", u"martes", u"miércoles", u"jueves", u"viernes", u"sábado", u"domingo"};
const char16_t* const kDiasCortos[7] = {u"lun", u"mar", u"mié", u"jue", u"vie", u"sáb", u"dom"};

// Día 0 de las fechas como número (el del Basic).
const QDate kFechaCero(1899, 12, 30);

QString cifras(int n, int ancho) { return QString::number(n).rightJustified(ancho, u'0'); }

QString fechaCorta(QDate d) { return cifras(d.day(), 2) + u'/' + cifras(d.month(), 2) + u'/' + cifras(d.year(), 4); }

QString fechaLarga(QDate d) {
    return QString::fromUtf16(kDias[d.dayOfWeek() - 1]) + QStringLiteral(", ") + QString::number(d.day()) + QStringLiteral(" de ") +
           QString::fromUtf16(kMeses[d.month() - 1]) + QStringLiteral(" de ") + QString::number(d.year());
}

QString horaLarga(QTime t) { return cifras(t.hour(), 2) + u':' + cifras(t.minute(), 2) + u':' + cifras(t.second(), 2); }

bool es(const QString& mascara, QLatin1StringView nombre) {
    return mascara.trimmed().compare(nombre, Qt::CaseInsensitive) == 0;
}

// ---- Clasificación de máscaras ----

enum class Clase { General, Numero, Fecha };

struct Mascara {
    Clase clase = Clase::General;
    QString texto; // la máscara a aplicar (los nombres numéricos ya traducidos)
};

bool esLetraDeFecha(QChar c) {
    const char16_t u = c.toLower().unicode();
    return u == u'd' || u == u'm' || u == u'y' || u == u'h' || u == u'n' || u == u's';
}

Mascara clasifica(const QString& m) {
    if (m.trimmed().isEmpty() || es(m, QLatin1StringView("General Number"))) return {Clase::General, {}};
    if (es(m, QLatin1StringView("Currency"))) return {Clase::Numero, QStringLiteral("$#,##0.00")};
    if (es(m, QLatin1StringView("Fixed"))) return {Clase::Numero, QStringLiteral("0.00")};
    if (es(m, QLatin1StringView("Standard"))) return {Clase::Numero, QStringLiteral("#,##0.00")};
    if (es(m, QLatin1StringView("Percent"))) return {Clase::Numero, QStringLiteral("0.00%")};
    for (auto nombre : {"Short Date", "Long Date", "General Date", "Long Time", "Short Time"})
        if (es(m, QLatin1StringView(nombre))) return {Clase::Fecha, m.trimmed()};
    // Una máscara con letras de fecha fuera de comillas es de fecha.
    for (qsizetype i = 0; i < m.size(); ++i) {
        if (m[i] == u'"') {
            const auto cierre = m.indexOf(u'"', i + 1);
            i = cierre < 0 ? m.size() : cierre;
        } else if (m[i] == u'\\') {
            ++i;
        } else if (esLetraDeFecha(m[i])) {
            return {Clase::Fecha, m};
        }
    }
    return {Clase::Numero, m};
}

// ---- Números ----

QString aQString(const std::string& s) { return QString::fromLatin1(s.data(), qsizetype(s.size())); }

QString agrupa(const std::string& cifrasEnteras) {
    QString r;
    const auto n = cifrasEnteras.size();
    for (std::size_t i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0) r += u',';
        r += QChar(char16_t(cifrasEnteras[i]));
    }
    return r;
}

// El número tal cual: exacto; el que viene de un double, a 15 cifras significativas y en
// notación científica fuera de 1E-05..1E+15, como el Basic.
QString general(Decimal x, bool deDouble) {
    if (deDouble) x = x.significativas(15);
    if (x.esCero()) return QStringLiteral("0");
    const QString signo = x.negativo ? QStringLiteral("-") : QString();
    const int orden = int(x.cifras.size()) - 1 + x.exponente;
    if (deDouble && (orden >= 15 || orden < -4)) {
        QString mant = QChar(char16_t(x.cifras[0]));
        if (x.cifras.size() > 1) mant += u'.' + aQString(x.cifras.substr(1));
        const QString exp = cifras(std::abs(orden), 2);
        return signo + mant + (orden < 0 ? QStringLiteral("E-") : QStringLiteral("E+")) + exp;
    }
    std::string entero, fraccion;
    const int decimales = x.exponente < 0 ? -x.exponente : 0;
    x.partes(decimales, entero, fraccion);
    QString r = signo + (entero.empty() ? QStringLiteral("0") : aQString(entero));
    if (!fraccion.empty()) r += u'.' + aQString(fraccion);
    return r;
}

// Divide en secciones por ';' fuera de comillas.
QStringList secciones(const QString& m) {
    QStringList r;
    QString actual;
    bool comillas = false;
    for (qsizetype i = 0; i < m.size(); ++i) {
        const QChar c = m[i];
        if (c == u'"') comillas = !comillas;
        if (c == u'\\' && !comillas && i + 1 < m.size()) {
            actual += c;
            actual += m[++i];
            continue;
        }
        if (c == u';' && !comillas) {
            r << actual;
            actual.clear();
        } else {
            actual += c;
        }
    }
    r << actual;
    return r;
}

struct Pieza {
    enum Tipo { Cero, Almohadilla, Punto, Coma, Porciento, Literal } tipo;
    QString texto;
    bool esCifra() const { return tipo == Cero || tipo == Almohadilla; }
};

std::vector<Pieza> piezas(const QString& s) {
    std::vector<Pieza> r;
    bool hayPunto = false;
    for (qsizetype i = 0; i < s.size(); ++i) {
        const QChar c = s[i];
        if (c == u'"') {
            auto cierre = s.indexOf(u'"', i + 1);
            if (cierre < 0) cierre = s.size();
            r.push_back({Pieza::Literal, s.mid(i + 1, cierre - i - 1)});
            i = cierre;
        } else if (c == u'\\' && i + 1 < s.size()) {
            r.push_back({Pieza::Literal, QString(s[++i])});
        } else if (c == u'0') {
            r.push_back({Pieza::Cero, {}});
        } else if (c == u'#') {
            r.push_back({Pieza::Almohadilla, {}});
        } else if (c == u'.' && !hayPunto) {
            hayPunto = true;
            r.push_back({Pieza::Punto, {}});
        } else if (c == u',') {
            r.push_back({Pieza::Coma, {}});
        } else if (c == u'%') {
            r.push_back({Pieza::Porciento, {}});
        } else {
            r.push_back({Pieza::Literal, QString(c)});
        }
    }
    return r;
}

// Aplica una sección a la magnitud de x; `menos` pide el "-" delante.
QString aplicaSeccion(Decimal x, const QString& seccion, bool menos) {
    x.negativo = false;
    const std::vector<Pieza> ps = piezas(seccion);
    std::size_t punto = ps.size();
    for (std::size_t i = 0; i < ps.size(); ++i)
        if (ps[i].tipo == Pieza::Punto) {
            punto = i;
            break;
        }
    // Cifras de la parte entera, agrupación y división por mil.
    std::vector<std::size_t> lugares;
    for (std::size_t i = 0; i < punto; ++i)
        if (ps[i].esCifra()) lugares.push_back(i);
    bool agrupar = false;
    int porMil = 0;
    if (!lugares.empty()) {
        for (std::size_t i = lugares.front() + 1; i < punto; ++i) {
            if (ps[i].tipo != Pieza::Coma) continue;
            if (i < lugares.back()) agrupar = true;
            else ++porMil;
        }
    }
    int decimales = 0;
    int porcientos = 0;
    for (std::size_t i = 0; i < ps.size(); ++i) {
        if (i > punto && ps[i].esCifra()) ++decimales;
        if (ps[i].tipo == Pieza::Porciento) ++porcientos;
    }
    if (!x.esCero()) x.exponente += 2 * porcientos - 3 * porMil;

    std::string entero, fraccion;
    x.partes(decimales, entero, fraccion);
    if (entero.empty() && fraccion.find_first_not_of('0') == std::string::npos) menos = false;

    // Cifra (o cifras) que toca a cada lugar de la parte entera.
    std::vector<QString> asignado(ps.size());
    if (agrupar) {
        std::size_t obligatorias = 0;
        for (std::size_t k = 0; k < lugares.size(); ++k)
            if (ps[lugares[k]].tipo == Pieza::Cero) {
                obligatorias = lugares.size() - k;
                break;
            }
        std::string c = entero;
        if (c.size() < obligatorias) c.insert(0, obligatorias - c.size(), '0');
        asignado[lugares.front()] = agrupa(c);
    } else {
        std::size_t quedan = entero.size();
        for (std::size_t k = lugares.size(); k-- > 0;) {
            const Pieza& p = ps[lugares[k]];
            QString& a = asignado[lugares[k]];
            if (k == 0 && quedan > 0) {
                a = aQString(entero.substr(0, quedan));
                quedan = 0;
            } else if (quedan > 0) {
                a = QChar(char16_t(entero[--quedan]));
            } else if (p.tipo == Pieza::Cero) {
                a = QStringLiteral("0");
            }
        }
    }
    // Parte decimal: las '#' del final no muestran ceros.
    std::size_t utiles = fraccion.size();
    {
        std::vector<Pieza::Tipo> tipos;
        for (std::size_t i = punto + 1; i < ps.size(); ++i)
            if (ps[i].esCifra()) tipos.push_back(ps[i].tipo);
        while (utiles > 0 && tipos[utiles - 1] == Pieza::Almohadilla && fraccion[utiles - 1] == '0') --utiles;
    }

    QString r = menos ? QStringLiteral("-") : QString();
    std::size_t dec = 0;
    for (std::size_t i = 0; i < ps.size(); ++i) {
        if (i == punto && lugares.empty() && !entero.empty()) r += aQString(entero);
        switch (ps[i].tipo) {
        case Pieza::Cero:
        case Pieza::Almohadilla:
            if (i < punto) {
                r += asignado[i];
            } else {
                if (dec < utiles) r += QChar(char16_t(fraccion[dec]));
                ++dec;
            }
            break;
        case Pieza::Punto: r += u'.'; break;
        case Pieza::Coma: break;
        case Pieza::Porciento: r += u'%'; break;
        case Pieza::Literal: r += ps[i].texto; break;
        }
    }
    if (punto == ps.size() && lugares.empty() && !entero.empty()) r += aQString(entero);
    return r;
}

QString formateaNumero(const Decimal& x, const Mascara& m, bool deDouble) {
    if (m.clase == Clase::General) return general(x, deDouble);
    const QStringList sec = secciones(m.texto);
    if (x.negativo && sec.size() >= 2 && !sec[1].isEmpty()) return aplicaSeccion(x, sec[1], false);
    if (x.esCero() && sec.size() >= 3 && !sec[2].isEmpty()) return aplicaSeccion(x, sec[2], false);
    return aplicaSeccion(x, sec[0], x.negativo);
}

// ---- Fechas ----

// ¿La próxima letra de la máscara, desde i, es una 's'? (mm entre hh y ss son minutos)
bool siguienteEsSegundo(const QString& m, qsizetype i) {
    for (; i < m.size(); ++i) {
        if (m[i].isLetter()) return m[i].toLower() == u's';
    }
    return false;
}

QString formateaFecha(const QDateTime& dt, const Mascara& m) {
    const QDate d = dt.date();
    const QTime t = dt.time();
    if (m.clase == Clase::General || es(m.texto, QLatin1StringView("General Date")))
        return t == QTime(0, 0) ? fechaCorta(d) : fechaCorta(d) + u' ' + horaLarga(t);
    if (es(m.texto, QLatin1StringView("Short Date"))) return fechaCorta(d);
    if (es(m.texto, QLatin1StringView("Long Date"))) return fechaLarga(d);
    if (es(m.texto, QLatin1StringView("Long Time"))) return horaLarga(t);
    if (es(m.texto, QLatin1StringView("Short Time"))) return cifras(t.hour(), 2) + u':' + cifras(t.minute(), 2);

    const QString& s = m.texto;
    QString r;
    bool trasHora = false;
    for (qsizetype i = 0; i < s.size();) {
        const QChar c = s[i];
        if (c == u'"') {
            auto cierre = s.indexOf(u'"', i + 1);
            if (cierre < 0) cierre = s.size();
            r += s.mid(i + 1, cierre - i - 1);
            i = cierre + 1;
            continue;
        }
        if (c == u'\\' && i + 1 < s.size()) {
            r += s[i + 1];
            i += 2;
            continue;
        }
        const QChar l = c.toLower();
        qsizetype n = 1;
        while (i + n < s.size() && s[i + n].toLower() == l) ++n;
        if (!esLetraDeFecha(c)) {
            r += c; // '/', ':' y cualquier otro literal, tal cual
            ++i;
            continue;
        }
        switch (l.unicode()) {
        case u'd':
            if (n == 1) r += QString::number(d.day());
            else if (n == 2) r += cifras(d.day(), 2);
            else if (n == 3) r += QString::fromUtf16(kDiasCortos[d.dayOfWeek() - 1]);
            else if (n == 4) r += QString::fromUtf16(kDias[d.dayOfWeek() - 1]);
            else if (n == 5) r += fechaCorta(d);
            else r += fechaLarga(d);
            break;
        case u'm':
            if (n <= 2 && (trasHora || siguienteEsSegundo(s, i + n)))
                r += n == 1 ? QString::number(t.minute()) : cifras(t.minute(), 2);
            else if (n == 1) r += QString::number(d.month());
            else if (n == 2) r += cifras(d.month(), 2);
            else if (n == 3) r += QString::fromUtf16(kMesesCortos[d.month() - 1]);
            else r += QString::fromUtf16(kMeses[d.month() - 1]);
            break;
        case u'y':
            if (n == 1) r += QString::number(d.dayOfYear());
            else if (n == 2) r += cifras(d.year() % 100, 2);
            else r += cifras(d.year(), 4);
            break;
        case u'h': r += n == 1 ? QString::number(t.hour()) : cifras(t.hour(), 2); break;
        case u'n': r += n == 1 ? QString::number(t.minute()) : cifras(t.minute(), 2); break;
        case u's': r += n == 1 ? QString::number(t.second()) : cifras(t.second(), 2); break;
        default: break;
        }
        trasHora = l == u'h';
        i += n;
    }
    return r;
}

// Número de día (con la hora como fracción) a fecha.
std::optional<QDateTime> fechaDeNumero(double x) {
    if (!std::isfinite(x) || std::abs(x) > 3e6) return std::nullopt;
    const double dias = std::floor(x);
    const auto segundos = qint64(std::llround((x - dias) * 86400.0));
    return QDateTime(kFechaCero.addDays(qint64(dias)), QTime(0, 0)).addSecs(segundos);
}

double numeroDeFecha(const QDateTime& dt) {
    return double(kFechaCero.daysTo(dt.date())) + dt.time().msecsSinceStartOfDay() / 86400000.0;
}

double aDouble(const Decimal& x) {
    std::string s = (x.negativo ? "-" : "") + (x.esCero() ? std::string("0") : x.cifras) + "e" + std::to_string(x.exponente);
    double v = 0;
    std::from_chars(s.data(), s.data() + s.size(), v);
    return v;
}

bool soloCifras(QStringView s, qsizetype minimo, qsizetype maximo) {
    if (s.size() < minimo || s.size() > maximo) return false;
    for (QChar c : s)
        if (c < u'0' || c > u'9') return false;
    return true;
}

std::optional<QDateTime> fechaHoraDesdeTexto(QStringView texto) {
    const QStringView t = texto.trimmed();
    if (t.isEmpty()) return std::nullopt;
    qsizetype corte = t.indexOf(u'T');
    if (corte < 0) corte = t.indexOf(u' ');
    const QStringView fecha = corte < 0 ? t : t.left(corte);
    QTime hora(0, 0);
    if (corte >= 0) {
        const QStringView resto = t.mid(corte + 1).trimmed();
        hora = QTime::fromString(resto.left(8).toString(), resto.size() >= 8 ? QStringLiteral("HH:mm:ss") : QStringLiteral("HH:mm"));
        if (!hora.isValid()) return std::nullopt;
    }
    QDate d;
    if (fecha.size() == 10 && fecha[4] == u'-' && fecha[7] == u'-') {
        if (!soloCifras(fecha.left(4), 4, 4) || !soloCifras(fecha.mid(5, 2), 2, 2) || !soloCifras(fecha.mid(8, 2), 2, 2))
            return std::nullopt;
        d = QDate(fecha.left(4).toInt(), fecha.mid(5, 2).toInt(), fecha.mid(8, 2).toInt());
    } else {
        const auto partes = fecha.split(u'/');
        if (partes.size() != 3 || !soloCifras(partes[0], 1, 2) || !soloCifras(partes[1], 1, 2) ||
            !(soloCifras(partes[2], 4, 4) || soloCifras(partes[2], 2, 2)))
            return std::nullopt;
        int anio = partes[2].toInt();
        if (partes[2].size() == 2) anio += anio < 30 ? 2000 : 1900;
        d = QDate(anio, partes[1].toInt(), partes[0].toInt());
    }
    if (!d.isValid()) return std::nullopt;
    return QDateTime(d, hora);
}

QString formateaDecimal(const Decimal& x, const QString& mascara, bool deDouble) {
    const Mascara m = clasifica(mascara);
    if (m.clase == Clase::Fecha) {
        const auto f = fechaDeNumero(aDouble(x));
        return f ? formateaFecha(*f, m) : QString();
    }
    return formateaNumero(x, m, deDouble);
}

} // namespace

QString Formato(const QVariant& valor, const QString& mascara) {
    if (!valor.isValid() || valor.isNull()) return {};
    switch (valor.typeId()) {
    case QMetaType::QDate:
    case QMetaType::QDateTime: {
        const QDateTime dt = valor.typeId() == QMetaType::QDate ? QDateTime(valor.toDate(), QTime(0, 0)) : valor.toDateTime();
        if (!dt.isValid()) return {};
        const Mascara m = clasifica(mascara);
        if (m.clase == Clase::Numero) return formateaNumero(decimal::desdeDouble(numeroDeFecha(dt)), m, true);
        return formateaFecha(dt, m);
    }
    case QMetaType::QString:
    case QMetaType::QByteArray: {
        const QString t = valor.toString();
        if (t.isEmpty()) return {};
        const Mascara m = clasifica(mascara);
        if (m.clase == Clase::Fecha) {
            if (const auto f = fechaHoraDesdeTexto(t)) return formateaFecha(*f, m);
        } else if (const auto f = fechaHoraDesdeTexto(t); f && m.clase == Clase::General) {
            return formateaFecha(*f, m);
        }
        const auto x = decimal::analiza(t);
        if (!x) return t; // un texto que no es número sale como está
        return formateaDecimal(*x, mascara, false);
    }
    case QMetaType::Double:
    case QMetaType::Float: {
        const double d = valor.toDouble();
        if (!std::isfinite(d)) return {};
        return formateaDecimal(decimal::desdeDouble(d), mascara, true);
    }
    case QMetaType::ULongLong:
        return formateaDecimal(decimal::desdeEnteroSinSigno(valor.toULongLong()), mascara, false);
    default:
        break;
    }
    bool ok = false;
    const qlonglong n = valor.toLongLong(&ok);
    if (ok) return formateaDecimal(decimal::desdeEntero(n), mascara, false);
    return valor.toString();
}

QString Formato(Dinero valor, const QString& mascara) {
    return formateaDecimal(decimal::desdeEscalado(valor.diezmilesimos(), 4), mascara, false);
}

QString FormatoMoneda(Dinero valor, const QString& mascaraMoneda) {
    return Formato(valor, mascaraMoneda.trimmed().isEmpty() ? QStringLiteral("###,###,##0.00") : mascaraMoneda);
}

double Val(QStringView texto) {
    // Sin blancos, tabulaciones ni saltos de línea.
    std::string s;
    s.reserve(std::size_t(texto.size()));
    for (QChar c : texto) {
        if (c == u' ' || c == u'\t' || c == u'\n') continue;
        s.push_back(c.unicode() < 128 ? char(c.unicode()) : '\x7f');
    }
    std::size_t i = 0;
    if (s.size() >= 2 && s[0] == '&' && (s[1] == 'h' || s[1] == 'H' || s[1] == 'o' || s[1] == 'O')) {
        const bool hex = s[1] == 'h' || s[1] == 'H';
        quint64 v = 0;
        bool alguna = false;
        for (i = 2; i < s.size(); ++i) {
            const char c = s[i];
            int d = -1;
            if (c >= '0' && c <= '9') d = c - '0';
            else if (hex && c >= 'a' && c <= 'f') d = c - 'a' + 10;
            else if (hex && c >= 'A' && c <= 'F') d = c - 'A' + 10;
            if (d < 0 || d >= (hex ? 16 : 8)) break;
            if (__builtin_mul_overflow(v, quint64(hex ? 16 : 8), &v) || __builtin_add_overflow(v, quint64(d), &v))
                return std::numeric_limits<double>::infinity();
            alguna = true;
        }
        return alguna ? double(decimal::valorHexOctal(v)) : 0.0;
    }
    std::string num;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) {
        if (s[i] == '-') num.push_back('-');
        ++i;
    }
    bool alguna = false;
    for (; i < s.size() && s[i] >= '0' && s[i] <= '9'; ++i) {
        num.push_back(s[i]);
        alguna = true;
    }
    if (i < s.size() && s[i] == '.') {
        num.push_back('.');
        for (++i; i < s.size() && s[i] >= '0' && s[i] <= '9'; ++i) {
            num.push_back(s[i]);
            alguna = true;
        }
    }
    if (!alguna) return 0.0;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
        std::size_t j = i + 1;
        std::string exp = "e";
        if (j < s.size() && (s[j] == '+' || s[j] == '-')) exp.push_back(s[j++]);
        if (j < s.size() && s[j] >= '0' && s[j] <= '9') {
            for (; j < s.size() && s[j] >= '0' && s[j] <= '9'; ++j) exp.push_back(s[j]);
            num += exp;
        }
    }
    double v = 0;
    const auto res = std::from_chars(num.data(), num.data() + num.size(), v);
    if (res.ec == std::errc::result_out_of_range) {
        // Demasiado grande o demasiado chico: infinito o cero con su signo.
        const bool neg = num[0] == '-';
        const bool grande = num.find("e-") == std::string::npos;
        if (grande) return neg ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
        return neg ? -0.0 : 0.0;
    }
    return v;
}

bool EsNumerico(QStringView texto) { return decimal::analiza(texto).has_value(); }

bool EsTipoNumerico(QMetaType tipo) {
    switch (tipo.id()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Short:
    case QMetaType::UShort:
        return true;
    default:
        return false;
    }
}

bool EsNumerico(const QVariant& valor) {
    if (!valor.isValid() || valor.isNull()) return false;
    switch (valor.typeId()) {
    case QMetaType::QString:
    case QMetaType::QByteArray:
        return EsNumerico(QStringView(valor.toString()));
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return true;
    default:
        return false;
    }
}

QString FechaTexto(QDate fecha) { return fecha.isValid() ? fechaCorta(fecha) : QString(); }

std::optional<QDate> FechaDesdeTexto(QStringView texto) {
    const auto f = fechaHoraDesdeTexto(texto);
    if (!f) return std::nullopt;
    return f->date();
}

std::optional<QString> FechaGuardadaTexto(const QVariant& valor) {
    QDateTime f;
    switch (valor.typeId()) {
    case QMetaType::QDate:
        return FechaTexto(valor.toDate());
    case QMetaType::QDateTime:
        f = valor.toDateTime();
        break;
    case QMetaType::QString: {
        // Sólo la forma ISO que escribe el almacén, para no tomar por fecha un código o un texto.
        const QString t = valor.toString();
        if (t.size() < 10 || t[4] != u'-' || t[7] != u'-' || (t.size() > 10 && t[10] != u'T' && t[10] != u' '))
            return std::nullopt;
        const auto leida = fechaHoraDesdeTexto(t.size() > 19 ? QStringView(t).left(19) : QStringView(t));
        if (!leida) return std::nullopt;
        f = *leida;
        break;
    }
    default:
        return std::nullopt;
    }
    if (!f.isValid()) return std::nullopt;
    if (f.time() == QTime(0, 0)) return FechaTexto(f.date());
    return FechaTexto(f.date()) + f.time().toString(QStringLiteral(" HH:mm"));
}

} // namespace orv

namespace orv {

Dinero ImporteMostrado(QStringView texto) {
    QString t;
    bool negativo = false;
    for (QChar c : texto) {
        if (c == u'(' || c == u')') negativo = true;
        else if (c == u',' || c == u'$' || c.isSpace()) continue;
        else t += c;
    }
    const std::optional<Dinero> d = Dinero::desdeTexto(t);
    if (!d) return Dinero();
    return negativo ? -*d : *d;
}

} // namespace orv
