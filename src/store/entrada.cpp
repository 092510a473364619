#include "store/entrada.h"

#include "store/decimal.h"

#include <QTextBoundaryFinder>

#include <cmath>

namespace orv {

namespace {

bool esCifra(QChar c) { return c >= u'0' && c <= u'9'; }

Aviso malEscrito(const QString& campo) {
    return Aviso(campo + QStringLiteral(": el número está mal escrito. Use el punto para los decimales (1234.50)."));
}

Aviso fueraDeRango(const QString& campo) { return Aviso(campo + QStringLiteral(": ") + kImporteFueraDeRango); }

} // namespace

bool MilesBienAgrupados(QStringView texto) {
    // Cada tramo de cifras de la parte entera que sigue a una coma tiene tres cifras exactas, y el
    // primero de una a tres. La parte entera termina en el punto, el exponente o el final.
    int cifrasDelTramo = 0;
    bool hayComa = false;
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const QChar c = texto[i];
        if (esCifra(c)) {
            ++cifrasDelTramo;
        } else if (c == u',') {
            if (hayComa ? cifrasDelTramo != 3 : (cifrasDelTramo < 1 || cifrasDelTramo > 3)) return false;
            hayComa = true;
            cifrasDelTramo = 0;
        } else if (c == u'.' || c == u'e' || c == u'E' || c == u'd' || c == u'D') {
            break;
        } else if (cifrasDelTramo > 0 && hayComa) {
            break; // "12.5-", "1,234)" : el tramo terminó
        }
    }
    return !hayComa || cifrasDelTramo == 3;
}

std::optional<double> LeeNumero(QStringView texto) {
    if (!MilesBienAgrupados(texto)) return std::nullopt;
    const auto d = decimal::analiza(texto);
    if (!d) return std::nullopt;
    // El valor sale del decimal exacto, no de Val, que se detiene en el primer carácter raro.
    std::string s = d->cifras.empty() ? std::string("0") : d->cifras;
    s += 'e';
    s += std::to_string(d->exponente);
    const double r = std::strtod(s.c_str(), nullptr);
    if (!std::isfinite(r)) return std::nullopt;
    return d->negativo ? -r : r;
}

std::optional<qint64> LeeEntero(QStringView texto, qint64 minimo, qint64 maximo) {
    const QStringView t = texto.trimmed();
    if (t.isEmpty() || !MilesBienAgrupados(t)) return std::nullopt;
    qsizetype i = 0;
    bool negativo = false;
    if (t[0] == u'-' || t[0] == u'+') {
        negativo = t[0] == u'-';
        ++i;
    }
    if (i >= t.size()) return std::nullopt;
    qint64 v = 0;
    for (; i < t.size(); ++i) {
        const QChar c = t[i];
        if (c == u',') continue;
        if (!esCifra(c)) return std::nullopt;
        const qint64 cifra = c.unicode() - u'0';
        if (__builtin_mul_overflow(v, qint64(10), &v) ||
            (negativo ? __builtin_sub_overflow(v, cifra, &v) : __builtin_add_overflow(v, cifra, &v)))
            return std::nullopt;
    }
    if (v < minimo || v > maximo) return std::nullopt;
    return v;
}

std::optional<Dinero> LeeImporte(QStringView texto) {
    if (!MilesBienAgrupados(texto)) return std::nullopt;
    return Dinero::desdeTexto(texto);
}

double ExigeNumero(QStringView texto, const QString& campo, double minimo, double maximo) {
    const auto v = LeeNumero(texto);
    if (!v) {
        // Un número que el tipo no representa (1e400) no está mal escrito: no cabe.
        if (MilesBienAgrupados(texto) && decimal::analiza(texto)) throw fueraDeRango(campo);
        throw malEscrito(campo);
    }
    if (*v < minimo || *v > maximo) throw fueraDeRango(campo);
    return *v;
}

qint64 ExigeEntero(QStringView texto, const QString& campo, qint64 minimo, qint64 maximo) {
    if (const auto v = LeeEntero(texto, minimo, maximo)) return *v;
    const auto n = LeeNumero(texto);
    if (!n) {
        // Un número que el tipo no representa (1e400) no está mal escrito: no cabe.
        if (MilesBienAgrupados(texto) && decimal::analiza(texto)) throw fueraDeRango(campo);
        throw malEscrito(campo);
    }
    if (*n != std::trunc(*n)) throw Aviso(campo + QStringLiteral(": debe ser un número entero."));
    // "1e3" es mil; el rango se mira en el double, antes de convertir.
    if (*n < double(minimo) || *n > double(maximo) || std::fabs(*n) > 9007199254740992.0) throw fueraDeRango(campo);
    return qint64(*n);
}

Dinero ExigeImporte(QStringView texto, const QString& campo) {
    if (!MilesBienAgrupados(texto) || !decimal::analiza(texto)) throw malEscrito(campo);
    const auto d = Dinero::desdeTexto(texto);
    if (!d) throw fueraDeRango(campo);
    const Dinero tope(kImporteMaximo);
    if (*d > tope || *d < -tope) throw fueraDeRango(campo);
    return *d;
}

double ExigePorcentaje(QStringView texto, const QString& campo) {
    return ExigeNumero(texto, campo, -kPorcentajeMaximo, kPorcentajeMaximo);
}

double ExigeCantidad(QStringView texto, const QString& campo) {
    return ExigeNumero(texto, campo, -kCantidadMaxima, kCantidadMaxima);
}

void ExigeImporteEnRango(Dinero importe) {
    const Dinero tope(kImporteMaximo);
    if (importe > tope || importe < -tope) throw Aviso(kImporteFueraDeRango);
}

void ExigeTexto(const QString& texto, int maximo, const QString& campo) {
    if (texto.contains(QChar(u'\0')))
        throw Aviso(campo + QStringLiteral(": el texto tiene un carácter nulo, que no se puede guardar."));
    const qsizetype caracteres = CuentaCaracteres(texto);
    if (caracteres > maximo)
        throw AvisoAtencion(campo + QStringLiteral(": admite hasta %1 caracteres (tiene %2).").arg(maximo).arg(caracteres));
}

qsizetype CuentaCaracteres(QStringView texto) {
    qsizetype caracteres = 0;
    for (qsizetype i = 0; i < texto.size(); ++i) {
        if (texto[i].isHighSurrogate() && i + 1 < texto.size() && texto[i + 1].isLowSurrogate()) ++i;
        ++caracteres;
    }
    return caracteres;
}

QString CortaTexto(const QString& texto, qsizetype maximo) {
    if (maximo <= 0) return {};
    if (texto.size() <= maximo) return texto; // cada carácter ocupa al menos una unidad
    // Avanza de letra entera en letra entera mientras quepa.
    QTextBoundaryFinder letras(QTextBoundaryFinder::Grapheme, texto);
    qsizetype corte = 0;
    qsizetype cuenta = 0;
    for (qsizetype siguiente = letras.toNextBoundary(); siguiente != -1; siguiente = letras.toNextBoundary()) {
        cuenta += CuentaCaracteres(QStringView(texto).mid(corte, siguiente - corte));
        if (cuenta > maximo) break;
        corte = siguiente;
    }
    return texto.left(corte);
}

} // namespace orv
