#include "store/letras.h"

namespace orv {

namespace {

const char* const kUnidades[] = {"",      "uno ",  "dos ",    "tres ",    "cuatro ", "cinco ", "seis ",
                                 "siete ", "ocho ", "nueve ",  "diez ",    "once ",   "doce ",  "trece ",
                                 "catorce ", "quince "};
const char* const kDecenas[] = {"", "", "veinte ", "treinta ", "cuarenta ", "cincuenta ", "sesenta ", "setenta ",
                                "ochenta ", "noventa "};
const char* const kCentenas[] = {"",              "ciento ",      "doscientos ", "trescientos ", "cuatrocientos ",
                                 "quinientos ",   "seiscientos ", "setecientos ", "ochocientos ", "novecientos "};

QString l(const char* s) { return QString::fromLatin1(s); }

// 1..99; `apocope` da "un" en lugar de "uno" (antes de mil o millones).
QString decenas(int n, bool apocope) {
    auto unidad = [apocope](int u) { return (u == 1 && apocope) ? l("un ") : l(kUnidades[u]); };
    if (n <= 15) return unidad(n);
    if (n < 20) return l("dieci") + unidad(n - 10);
    if (n == 20) return l("veinte ");
    if (n < 30) return l("veinti") + unidad(n - 20);
    const int d = n / 10, u = n % 10;
    return l(kDecenas[d]) + (u ? l("y ") + unidad(u) : QString());
}

// 1..999
QString centenas(int n, bool apocope) {
    if (n == 100) return l("cien ");
    const int c = n / 100, resto = n % 100;
    return l(kCentenas[c]) + (resto ? decenas(resto, apocope) : QString());
}

// Un grupo de millones (1..999 999): "Un millon", "Cien millones", "mil quinientos millones".
QString millones(int m, bool alComienzo) {
    if (m == 1) return l(alComienzo ? "Un millon " : "un millon ");
    if (m == 100) return l(alComienzo ? "Cien millones " : "cien millones ");
    const int milesDeMillon = m / 1000, resto = m % 1000;
    QString t;
    if (milesDeMillon == 1) t += l("mil ");
    else if (milesDeMillon > 1) t += centenas(milesDeMillon, true) + l("mil ");
    if (resto > 0) t += centenas(resto, true);
    return t + l("millones ");
}

} // namespace

QString ImporteEnLetras(Dinero importe) {
    qint64 centavos = importe.redondeado(2).diezmilesimos() / 100;
    if (centavos < 0) centavos = -centavos;
    const qint64 pesos = centavos / 100;
    const int cc = int(centavos % 100);
    // Todo el rango del dinero: hasta unos 922 billones.
    const int billones = int(pesos / 1000000000000);
    const int grupoMillones = int(pesos / 1000000 % 1000000);
    const int miles = int(pesos / 1000 % 1000);
    const int unidades = int(pesos % 1000);
    QString t;
    if (billones == 1) t += l("Un billon ");
    else if (billones > 1) t += centenas(billones, true) + l("billones ");
    if (grupoMillones > 0) t += millones(grupoMillones, t.isEmpty());
    if (miles == 1) t += l("mil ");
    else if (miles == 100) t += l("cien mil ");
    else if (miles > 1) t += centenas(miles, true) + l("mil ");
    if (unidades > 0) t += centenas(unidades, false);
    if (pesos == 0) t = l("cero ");
    return t + l("con ") + QStringLiteral("%1").arg(cc, 2, 10, QLatin1Char('0')) + l("/100.-");
}

} // namespace orv
