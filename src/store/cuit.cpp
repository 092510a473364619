#include "store/cuit.h"

namespace orv {

bool CuitValido(QStringView texto) {
    int cuenta = 0;
    int verificador = 0;
    int suma = 0;
    int peso = 2;
    for (auto i = texto.size(); i-- > 0;) {
        const QChar c = texto[i];
        if (c < u'0' || c > u'9') continue;
        const int d = c.unicode() - u'0';
        if (++cuenta == 1) {
            verificador = d;
            continue;
        }
        suma += d * peso;
        if (++peso == 8) peso = 2;
    }
    if (cuenta != 11) return false;
    const int r = suma % 11;
    const int esperado = r == 0 ? 0 : 11 - r;
    return esperado == verificador;
}

} // namespace orv
