#include "sales/diseno_ticket.h"

#include <QDir>

namespace orv {

namespace {

const QString kPuerto = QStringLiteral("Puerto");
const QString kParametros = QStringLiteral("ParametrosPuerto");
const QString kColumnas = QStringLiteral("Columnas");

// Un número del lugar, siempre con punto decimal, sea cual sea el idioma de la máquina.
std::optional<float> numero(const QString& t) {
    bool ok = false;
    const float v = t.trimmed().toFloat(&ok);
    return ok ? std::optional<float>(v) : std::nullopt;
}

} // namespace

const QList<ElementoTicket>& ElementosTicket() {
    static const QList<ElementoTicket> e = {
        {QStringLiteral("Nombre Negocio"), QStringLiteral("Nombre Negocio")},
        {QStringLiteral("Dirección"), QStringLiteral("Dirección")},
        {QStringLiteral("Teléfono"), QStringLiteral("Telefono")},
        {QStringLiteral("C.Postal"), QStringLiteral("(C Post)")},
        {QStringLiteral("Clave Fiscal (RFC - CUIT)"), QStringLiteral("Clave Fiscal")},
        {QStringLiteral("Nro de Ticket"), QStringLiteral("Nro Ticket : 00000")},
        {QStringLiteral("Vendedor"), QStringLiteral("Vendedor : <vendedor>")},
        {QStringLiteral("Fecha"), QStringLiteral("00/00/0000")},
        {QStringLiteral("Datos del artículo"), QStringLiteral("CGO-CANT-DESCRIPCION-UNITARIO-SUBTOTAL")},
        {QStringLiteral("SubTotal"), QStringLiteral("Sub Total $ 00000.00")},
        {QStringLiteral("Descuento"), QStringLiteral("Descuento 10%  $ 00000.00")},
        {QStringLiteral("Neto"), QStringLiteral("Neto $ 00000.00")},
        {QStringLiteral("Impuesto"), QStringLiteral("Impuesto 10%  $ 00000.00")},
        {QStringLiteral("Total"), QStringLiteral("Total $ 00000.00")},
        {QStringLiteral("Forma de Pago"), QStringLiteral("Forma de Pago")},
        {QStringLiteral("Importe recibido"), QStringLiteral("Su pago  $ 00000.00")},
        {QStringLiteral("Vuelto"), QStringLiteral("Vuelto  $ 00000.00")},
        {QStringLiteral("**Gracias por su compra**"), QStringLiteral("** Gracias por su Compra **")},
    };
    return e;
}

const QList<AnchoTicket>& AnchosTicket() {
    static const QList<AnchoTicket> a = {
        {42, 80.0, QStringLiteral("80 mm, 42 columnas")},
        {48, 80.0, QStringLiteral("80 mm, 48 columnas")},
        {32, 58.0, QStringLiteral("58 mm, 32 columnas")},
    };
    return a;
}

QStringList PuertosTicket() {
    QStringList r;
    for (const char* base : {"LPT", "COM"})
        for (int i = 1; i <= 6; ++i) r << QStringLiteral("%1%2").arg(QLatin1String(base)).arg(i);
    for (const QString& d : QDir(QStringLiteral("/dev")).entryList({QStringLiteral("ttyUSB*")}, QDir::System, QDir::Name))
        r << QStringLiteral("/dev/") + d;
    for (const QString& d : QDir(QStringLiteral("/dev/usb")).entryList({QStringLiteral("lp*")}, QDir::System, QDir::Name))
        r << QStringLiteral("/dev/usb/") + d;
    return r;
}

bool EsPuertoSerie(const QString& puerto) {
    return puerto.left(3) == QStringLiteral("COM") || puerto.startsWith(QStringLiteral("/dev/tty"));
}

DisenoTicket LeeDisenoTicket(const Configuracion& conf) {
    DisenoTicket d;
    for (const ElementoTicket& e : ElementosTicket()) {
        const QString v = conf.lee(clave::ticket, e.titulo);
        const qsizetype coma = v.indexOf(u',');
        const auto x = coma > 0 ? numero(v.left(coma)) : std::nullopt;
        const auto y = coma > 0 ? numero(v.mid(coma + 1)) : std::nullopt;
        d.lugares << (x && y ? std::optional<QPointF>(QPointF(*x, *y)) : std::nullopt);
    }
    d.puerto = conf.lee(clave::ticket, kPuerto);
    d.parametros = conf.lee(clave::ticket, kParametros);
    const int columnas = conf.lee(clave::ticket, kColumnas).trimmed().toInt();
    for (const AnchoTicket& a : AnchosTicket())
        if (a.columnas == columnas) d.columnas = columnas;
    return d;
}

void GrabaDisenoTicket(const Configuracion& conf, const DisenoTicket& d) {
    const QList<ElementoTicket>& elementos = ElementosTicket();
    for (qsizetype i = 0; i < elementos.size(); ++i) {
        const std::optional<QPointF> l = d.lugares.value(i);
        conf.graba(clave::ticket, elementos[i].titulo,
                   l ? QStringLiteral("%1,%2").arg(float(l->x())).arg(float(l->y())) : QString());
    }
    conf.graba(clave::ticket, kPuerto, d.puerto);
    conf.graba(clave::ticket, kParametros, d.parametros);
    conf.graba(clave::ticket, kColumnas, QString::number(d.columnas));
}

} // namespace orv
