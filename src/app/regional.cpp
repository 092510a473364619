#include "app/regional.h"

#include <QByteArray>
#include <QLocale>
#include <QStringList>
#include <clocale>

namespace orv {

namespace {

// Primer carácter que no es letra ni comilla en un formato de fecha u hora ("dd/MM/yy" -> "/").
QString separadorDeFormato(const QString& formato) {
    bool enComillas = false;
    for (const QChar c : formato) {
        if (c == QLatin1Char('\'')) {
            enComillas = !enComillas;
            continue;
        }
        if (enComillas || c.isLetter()) continue;
        return QString(c);
    }
    return {};
}

QString deC(const char* s) { return s ? QString::fromLocal8Bit(s) : QString(); }

} // namespace

SeparadoresRegionales LeeRegionalSistema() {
    SeparadoresRegionales r;
    const QLocale sistema = QLocale::system();

    // Se toma la configuración del entorno del usuario, se lee y se deja todo como estaba.
    const char* previo = std::setlocale(LC_ALL, nullptr);
    const QByteArray anterior = previo ? QByteArray(previo) : QByteArray("C");
    if (std::setlocale(LC_ALL, "") != nullptr) {
        const std::lconv* lc = std::localeconv();
        r.decimal = deC(lc->decimal_point);
        r.miles = deC(lc->thousands_sep);
        r.decimalMoneda = deC(lc->mon_decimal_point);
        r.milesMoneda = deC(lc->mon_thousands_sep);
        r.moneda = deC(lc->currency_symbol);
    } else {
        // La biblioteca de C no tiene instalada la configuración pedida: se usa la de Qt.
        r.decimal = sistema.decimalPoint();
        r.miles = sistema.groupSeparator();
        r.decimalMoneda = r.decimal;
        r.milesMoneda = r.miles;
        r.moneda = sistema.currencySymbol();
    }
    std::setlocale(LC_ALL, anterior.constData());
    std::setlocale(LC_NUMERIC, "C");

    if (r.decimal.isEmpty()) r.decimal = sistema.decimalPoint();
    if (r.decimalMoneda.isEmpty()) r.decimalMoneda = r.decimal;
    r.fecha = separadorDeFormato(sistema.dateFormat(QLocale::ShortFormat));
    r.hora = separadorDeFormato(sistema.timeFormat(QLocale::ShortFormat));
    return r;
}

bool FormatoRegionalValido(const SeparadoresRegionales& s) {
    return s.decimal != QLatin1String(",") && s.decimalMoneda != QLatin1String(",") &&
           s.miles != QLatin1String(".") && s.milesMoneda != QLatin1String(".");
}

QString TextoProblemaRegional() {
    static const QStringList lineas{
        QStringLiteral("Se han detectado problemas en la configuración regional del Panel de Control"),
        QStringLiteral("Puede obtener errores en los calculos al utilizar el sistema."),
        QStringLiteral("Para solucionarlo corrija la configuracion regional."),
        QStringLiteral("Estableciendo:"),
        QStringLiteral("El punto (.) para separacion de decimales y decimales de moneda."),
        QStringLiteral("La barra standard (/) para la separacion de fecha."),
        QStringLiteral("Los dos puntos (:) para la separacion de hora."),
        QStringLiteral("La coma (,) para la separacion de miles (en numero y moneda)."),
        QStringLiteral(" "),
        QStringLiteral("La configuración horaria también debe ajustarse al parametro HH:mm:ss "),
        QStringLiteral(" "),
        QStringLiteral("¿Desea que el sistema intente ajustar la configuracion automaticamente?"),
        QStringLiteral("(El mismo no iniciara hasta que no se corrija este punto"),
        QStringLiteral("sin embargo, otras aplicaciones que utilicen la conf. regional"),
        QStringLiteral("pueden dejar de funcionar correctamente)"),
    };
    return lineas.join(QLatin1Char('\n'));
}

} // namespace orv
