#include "sales/ticket.h"

#include "store/aviso.h"
#include "store/formato.h"

#include <QFile>
#include <QProcess>
#include <QSerialPort>
#include <QSqlQuery>
#include <QTcpSocket>
#include <algorithm>
#include <numeric>

namespace orv {

namespace {

constexpr int kEsperaMs = 3000;
const QString kClavePagina = QStringLiteral("PaginaCodigos");

// La mitad alta de CP850, de 0x80 a 0xFF. CP858 sólo cambia 0xD5: el € en lugar de la ı.
const char16_t kCp850[128] = {
    u'Ç', u'ü', u'é', u'â', u'ä', u'à', u'å', u'ç', u'ê', u'ë', u'è', u'ï', u'î', u'ì', u'Ä', u'Å',
    u'É', u'æ', u'Æ', u'ô', u'ö', u'ò', u'û', u'ù', u'ÿ', u'Ö', u'Ü', u'ø', u'£', u'Ø', u'×', u'ƒ',
    u'á', u'í', u'ó', u'ú', u'ñ', u'Ñ', u'ª', u'º', u'¿', u'®', u'¬', u'½', u'¼', u'¡', u'«', u'»',
    u'░', u'▒', u'▓', u'│', u'┤', u'Á', u'Â', u'À', u'©', u'╣', u'║', u'╗', u'╝', u'¢', u'¥', u'┐',
    u'└', u'┴', u'┬', u'├', u'─', u'┼', u'ã', u'Ã', u'╚', u'╔', u'╩', u'╦', u'╠', u'═', u'╬', u'¤',
    u'ð', u'Ð', u'Ê', u'Ë', u'È', u'ı', u'Í', u'Î', u'Ï', u'┘', u'┌', u'█', u'▄', u'¦', u'Ì', u'▀',
    u'Ó', u'ß', u'Ô', u'Ò', u'õ', u'Õ', u'µ', u'þ', u'Þ', u'Ú', u'Û', u'Ù', u'ý', u'Ý', u'¯', u'´',
    u'\u00AD', u'±', u'‗', u'¾', u'¶', u'§', u'÷', u'¸', u'°', u'¨', u'·', u'¹', u'³', u'²', u'■', u'\u00A0'};

// Órdenes ESC/POS.
const QByteArray kInicia("\x1b\x40", 2);
const QByteArray kNegritaSi("\x1b\x45\x01", 3);
const QByteArray kNegritaNo("\x1b\x45\x00", 3);
const QByteArray kIzquierda("\x1b\x61\x00", 3);
const QByteArray kCentro("\x1b\x61\x01", 3);
const QByteArray kCorte("\x1d\x56\x42\x00", 4);      // GS V 66 0: avanza y corta
const QByteArray kCajon("\x1b\x70\x00\x19\xfa", 5);  // ESC p 0: pulso de 50 ms, pausa de 500 ms

QString cifra(const Dinero& d) { return FormatoMoneda(d, QString()); }
QString importe(const Dinero& d) { return QStringLiteral("$ ") + cifra(d); }
QString porcentaje(double p) { return QString::number(p, 'g', 6) + u'%'; }

// Texto a la izquierda y cifra a la derecha en el ancho de la línea.
QString enLinea(const QString& izquierda, const QString& derecha, int columnas) {
    const int lugar = std::max(1, columnas - int(derecha.size()));
    return izquierda.left(lugar - 1).leftJustified(lugar) + derecha;
}

struct Escritor {
    PaginaCodigos pagina;
    int columnas;
    QByteArray b;
    void linea(const QString& t) { b += CodificaTicket(t, pagina) + '\n'; }
    void centrada(const QString& t, bool negrita = false) {
        b += kCentro;
        if (negrita) b += kNegritaSi;
        linea(t.left(columnas));
        if (negrita) b += kNegritaNo;
        b += kIzquierda;
    }
};

void escribeElemento(Escritor& e, int i, const DatosTicket& t) {
    const int c = e.columnas;
    switch (i) {
    case 0: e.centrada(t.negocio, true); break;
    case 1: e.centrada(t.direccion); break;
    case 2: e.centrada(QStringLiteral("Tel. ") + t.telefono); break;
    case 3: e.centrada(u'(' + t.codigoPostal + u')'); break;
    case 4: e.centrada(t.claveFiscal); break;
    case 5: e.linea(QStringLiteral("Nro Ticket : ") + t.numero); break;
    case 6: e.linea(QStringLiteral("Vendedor : ") + t.vendedor); break;
    case 7: e.linea(t.fecha.toString(QStringLiteral("dd/MM/yyyy"))); break;
    case 8:
        for (const LineaTicket& l : t.lineas) {
            e.linea((l.codigo + u' ' + QString::number(l.cantidad, 'g', 10) + QStringLiteral(" x ") + cifra(l.unitario)).left(c));
            e.linea(enLinea(l.descripcion, cifra(l.subtotal), c));
        }
        break;
    case 9: e.linea(enLinea(QStringLiteral("Sub Total"), importe(t.subtotal), c)); break;
    case 10: e.linea(enLinea(QStringLiteral("Descuento ") + porcentaje(t.porcDescuento), importe(t.descuento), c)); break;
    case 11: e.linea(enLinea(QStringLiteral("Neto"), importe(t.neto), c)); break;
    case 12: e.linea(enLinea(QStringLiteral("Impuesto ") + porcentaje(t.porcImpuesto), importe(t.impuesto), c)); break;
    case 13:
        e.b += kNegritaSi;
        e.linea(enLinea(QStringLiteral("Total"), importe(t.total), c));
        e.b += kNegritaNo;
        break;
    case 14: e.linea(QStringLiteral("Forma de Pago : ") + t.formaPago); break;
    case 15: e.linea(enLinea(QStringLiteral("Su pago"), importe(t.suPago), c)); break;
    case 16: e.linea(enLinea(QStringLiteral("Vuelto"), importe(t.suPago > t.total ? t.suPago - t.total : Dinero()), c)); break;
    default: e.centrada(QStringLiteral("** Gracias por su Compra **")); break;
    }
}

QSerialPort::Parity paridad(QChar p) {
    switch (p.toLower().unicode()) {
    case u'e': return QSerialPort::EvenParity;
    case u'o': return QSerialPort::OddParity;
    case u'm': return QSerialPort::MarkParity;
    case u's': return QSerialPort::SpaceParity;
    default: return QSerialPort::NoParity;
    }
}

// "9600,n,8,1"; vacío es 9600,n,8,1. Lo que no se lee se rechaza antes de abrir el puerto.
void configuraSerie(QSerialPort& s, const QString& parametros) {
    const QStringList p = parametros.trimmed().isEmpty() ? QStringList{"9600", "n", "8", "1"}
                                                        : parametros.split(u',', Qt::KeepEmptyParts);
    bool ok = p.size() == 4;
    const int baudios = ok ? p[0].trimmed().toInt(&ok) : 0;
    const QString par = ok ? p[1].trimmed().toLower() : QString();
    const QString datos = ok ? p[2].trimmed() : QString();
    const QString parada = ok ? p[3].trimmed() : QString();
    ok = ok && baudios > 0 && par.size() == 1 && QStringLiteral("neoms").contains(par) &&
         QStringList{"5", "6", "7", "8"}.contains(datos) && QStringList{"1", "1.5", "2"}.contains(parada);
    if (!ok)
        throw AvisoAtencion(QStringLiteral("Los parámetros del puerto \"%1\" no se entienden: escríbalos como 9600,n,8,1.").arg(parametros));
    s.setBaudRate(baudios);
    s.setParity(paridad(par[0]));
    s.setDataBits(QSerialPort::DataBits(datos.toInt()));
    s.setStopBits(parada == u"1" ? QSerialPort::OneStop : parada == u"2" ? QSerialPort::TwoStop : QSerialPort::OneAndHalfStop);
    s.setFlowControl(QSerialPort::NoFlowControl);
}

Aviso noResponde(const QString& puerto, const QString& motivo) {
    return AvisoAtencion(QStringLiteral("La impresora de tickets (%1) no responde: %2.").arg(puerto, motivo));
}

void enviaSerie(const QString& dispositivo, const QString& puerto, const QString& parametros, const QByteArray& bytes) {
    QSerialPort s(dispositivo);
    configuraSerie(s, parametros);
    if (!s.open(QIODevice::WriteOnly)) throw noResponde(puerto, s.errorString());
    configuraSerie(s, parametros); // ya abierto, se aplica al dispositivo
    s.write(bytes);
    while (s.bytesToWrite() > 0)
        if (!s.waitForBytesWritten(kEsperaMs)) throw noResponde(puerto, QStringLiteral("no terminó de recibir el ticket"));
}

void enviaArchivo(const QString& dispositivo, const QString& puerto, const QByteArray& bytes) {
    QFile f(dispositivo);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) throw noResponde(puerto, f.errorString());
    if (f.write(bytes) != bytes.size()) throw noResponde(puerto, f.errorString());
}

void enviaRed(const QString& equipo, quint16 numero, const QString& puerto, const QByteArray& bytes) {
    QTcpSocket s;
    s.connectToHost(equipo, numero);
    if (!s.waitForConnected(kEsperaMs)) throw noResponde(puerto, s.errorString());
    s.write(bytes);
    while (s.bytesToWrite() > 0)
        if (!s.waitForBytesWritten(kEsperaMs)) throw noResponde(puerto, s.errorString());
    s.disconnectFromHost();
    if (s.state() != QAbstractSocket::UnconnectedState) s.waitForDisconnected(kEsperaMs);
}

void enviaCola(const QString& cola, const QString& puerto, const QByteArray& bytes) {
    QProcess lp;
    lp.start(QStringLiteral("lp"), {QStringLiteral("-d"), cola, QStringLiteral("-o"), QStringLiteral("raw")});
    if (!lp.waitForStarted(kEsperaMs)) throw noResponde(puerto, QStringLiteral("no se encontró el programa lp"));
    lp.write(bytes);
    lp.closeWriteChannel();
    if (!lp.waitForFinished(kEsperaMs * 3) || lp.exitCode() != 0)
        throw noResponde(puerto, QString::fromLocal8Bit(lp.readAllStandardError()).trimmed());
}

} // namespace

PaginaCodigos LeePaginaCodigos(const Configuracion& conf) {
    return conf.lee(clave::ticket, kClavePagina).trimmed().toUpper() == QStringLiteral("CP850") ? PaginaCodigos::CP850
                                                                                                : PaginaCodigos::CP858;
}

void GrabaPaginaCodigos(const Configuracion& conf, PaginaCodigos pagina) {
    conf.graba(clave::ticket, kClavePagina, NombrePaginaCodigos(pagina));
}

QString NombrePaginaCodigos(PaginaCodigos pagina) {
    return pagina == PaginaCodigos::CP850 ? QStringLiteral("CP850") : QStringLiteral("CP858");
}

QByteArray CodificaTicket(const QString& texto, PaginaCodigos pagina) {
    QByteArray r;
    r.reserve(texto.size());
    for (const QChar c : texto) {
        const char16_t u = c.unicode();
        if (u >= 0x20 && u < 0x7f) {
            r += char(u);
            continue;
        }
        if (pagina == PaginaCodigos::CP858 && u == u'€') {
            r += char(0xd5);
            continue;
        }
        const char16_t* fin = kCp850 + 128;
        const char16_t* p = std::find(kCp850, fin, u);
        const bool valida = p != fin && !(pagina == PaginaCodigos::CP858 && p - kCp850 == 0x55);
        r += valida ? char(0x80 + (p - kCp850)) : '?';
    }
    return r;
}

DatosTicket LeeDatosTicket(const Almacen& a, qint64 idComprobante) {
    DatosTicket t;
    QSqlQuery c = a.consulta(
        QStringLiteral("SELECT c.Factura, c.Fecha, c.FormaPago, c.SubTotal, c.MontDescuento, c.PorcDescuento, c.ImporteNeto, "
                       "c.ImporteIVA, c.PorcentajeIVA, c.Total, c.SuPago, u.NombreCompleto, "
                       "CASE WHEN EXISTS (SELECT 1 FROM Caja WHERE Caja.idComprobante = c.idComprobante) AND NOT EXISTS "
                       "(SELECT 1 FROM FormasDePago f WHERE f.FormaPago = c.FormaPago AND COALESCE(f.EsTarjetaCredito, 0) <> 0) "
                       "THEN 1 ELSE 0 END "
                       "FROM Comprobantes c LEFT JOIN Usuarios u ON u.idUsuario = c.idVendio WHERE c.idComprobante = ?"),
        {idComprobante});
    if (!c.next()) throw Aviso(QStringLiteral("El comprobante ya no existe."));
    t.numero = c.value(0).toString();
    t.fecha = c.value(1).toDate();
    t.formaPago = c.value(2).toString();
    t.subtotal = Dinero::desdeVariant(c.value(3));
    t.descuento = Dinero::desdeVariant(c.value(4));
    t.porcDescuento = c.value(5).toDouble();
    t.neto = Dinero::desdeVariant(c.value(6));
    t.impuesto = Dinero::desdeVariant(c.value(7));
    t.porcImpuesto = c.value(8).toDouble();
    t.total = Dinero::desdeVariant(c.value(9));
    t.suPago = Dinero::desdeVariant(c.value(10));
    t.vendedor = c.value(11).toString();
    t.abreCajon = c.value(12).toLongLong() > 0;
    c.finish();
    QSqlQuery e = a.consulta(QStringLiteral("SELECT COALESCE(NULLIF(NombreFantasia, ''), NombreEmpresa), Direccion, Telefono, CgoPostal, "
                                            "Cuit FROM Empresa ORDER BY idEmpresa LIMIT 1"));
    if (e.next()) {
        t.negocio = e.value(0).toString();
        t.direccion = e.value(1).toString();
        t.telefono = e.value(2).toString();
        t.codigoPostal = e.value(3).toString();
        t.claveFiscal = e.value(4).toString();
    }
    e.finish();
    QSqlQuery d = a.consulta(QStringLiteral("SELECT a.Codigo, d.Cantidad, d.Descripcion, d.Unitario, d.SubTotal FROM DetalleComprobantes d "
                                            "LEFT JOIN Articulos a ON a.idArticulo = d.idArticulo WHERE d.idComprobante = ? "
                                            "ORDER BY d.idDetalle"),
                             {idComprobante});
    while (d.next())
        t.lineas << LineaTicket{d.value(0).toString(), d.value(1).toDouble(), d.value(2).toString(), Dinero::desdeVariant(d.value(3)),
                                Dinero::desdeVariant(d.value(4))};
    return t;
}

QByteArray ArmaTicket(const DatosTicket& t, const DisenoTicket& d, PaginaCodigos pagina) {
    // Los elementos que van, de arriba abajo y, en una misma altura, de izquierda a derecha.
    QList<int> orden;
    for (int i = 0; i < d.lugares.size(); ++i)
        if (d.lugares[i]) orden << i;
    std::stable_sort(orden.begin(), orden.end(), [&d](int x, int y) {
        const QPointF a = *d.lugares[x], b = *d.lugares[y];
        return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x();
    });
    Escritor e{pagina, d.columnas, kInicia};
    e.b += QByteArray("\x1b\x74", 2) + char(pagina == PaginaCodigos::CP858 ? 19 : 2);
    for (int i : orden) escribeElemento(e, i, t);
    e.b += kCorte;
    if (t.abreCajon) e.b += kCajon;
    return e.b;
}

void EnviaTicket(const QString& puerto, const QString& parametros, const QByteArray& bytes) {
    const QString p = puerto.trimmed();
    if (p.isEmpty()) throw AvisoAtencion(QStringLiteral("No hay puerto elegido para la impresora de tickets."));
    bool ok = false;
    const int n = p.mid(3).toInt(&ok);
    if (p.left(3) == QStringLiteral("COM") && ok && n >= 1) return enviaSerie(QStringLiteral("/dev/ttyS%1").arg(n - 1), p, parametros, bytes);
    if (p.left(3) == QStringLiteral("LPT") && ok && n >= 1) return enviaArchivo(QStringLiteral("/dev/lp%1").arg(n - 1), p, bytes);
    if (p.startsWith(QStringLiteral("/dev/tty")) || p.startsWith(QStringLiteral("/dev/pts/")))
        return enviaSerie(p, p, parametros, bytes);
    if (p.startsWith(u'/')) return enviaArchivo(p, p, bytes);
    if (p.startsWith(QStringLiteral("cups:"))) return enviaCola(p.mid(5), p, bytes);
    const qsizetype dos = p.lastIndexOf(u':');
    const int numero = dos > 0 ? p.mid(dos + 1).toInt(&ok) : 0;
    if (dos > 0 && ok && numero > 0 && numero < 65536) return enviaRed(p.left(dos), quint16(numero), p, bytes);
    throw AvisoAtencion(QStringLiteral("El puerto \"%1\" de la impresora de tickets no se reconoce.").arg(p));
}

bool EsComprobanteDeTicket(const Almacen& a, qint64 idComprobante) {
    return a.valor(QStringLiteral("SELECT t.NombrePlantilla FROM Comprobantes c INNER JOIN TiposDeComprobantes t "
                                  "ON t.idTipoComprobante = c.idTipoComprobante WHERE c.idComprobante = ?"),
                   {idComprobante})
        .toString()
        .startsWith(QStringLiteral("IMPRESORA TICKETS "));
}

void ImprimeTicket(const Almacen& a, const Configuracion& conf, qint64 idComprobante) {
    const DisenoTicket d = LeeDisenoTicket(conf);
    try {
        EnviaTicket(d.puerto, d.parametros, ArmaTicket(LeeDatosTicket(a, idComprobante), d, LeePaginaCodigos(conf)));
    } catch (const Aviso& e) {
        throw Aviso(e.texto() + QStringLiteral("\nEl comprobante quedó registrado: puede volver a imprimirlo desde "
                                               "\"Reimpresion de documentos\"."),
                    e.titulo(), e.icono());
    }
}

} // namespace orv
