#pragma once
// El ticket impreso: el comprobante registrado, armado en ESC/POS según el diseño de la sección
// "Ticket" (los elementos en el orden de su lugar en la hoja, de arriba abajo), en la página de
// códigos de la impresora, con el corte del papel y, si la venta entró a la caja, el pulso que
// abre el cajón; y su envío al puerto.

#include "app/configuracion.h"
#include "sales/diseno_ticket.h"
#include "store/almacen.h"
#include "store/dinero.h"

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>

namespace orv {

// CP858 (la de siempre, con el €) o CP850. Clave "PaginaCodigos" de la sección "Ticket".
enum class PaginaCodigos { CP858, CP850 };
PaginaCodigos LeePaginaCodigos(const Configuracion& conf);
void GrabaPaginaCodigos(const Configuracion& conf, PaginaCodigos pagina);
QString NombrePaginaCodigos(PaginaCodigos pagina);

// El texto en la página de códigos; lo que no tiene lugar en ella sale como "?".
QByteArray CodificaTicket(const QString& texto, PaginaCodigos pagina);

struct LineaTicket {
    QString codigo;
    double cantidad = 0;
    QString descripcion;
    Dinero unitario, subtotal;
};

// Lo que el ticket muestra de un comprobante.
struct DatosTicket {
    QString negocio, direccion, telefono, codigoPostal, claveFiscal;
    QString numero, vendedor;
    QDate fecha;
    QList<LineaTicket> lineas;
    Dinero subtotal, descuento, neto, impuesto, total, suPago;
    double porcDescuento = 0, porcImpuesto = 0;
    QString formaPago;
    bool abreCajon = false; // la venta entró a la caja y no se pagó con tarjeta: hay dinero para el cajón
};

// Lee el comprobante y los datos del comercio. Aviso si el comprobante ya no existe.
DatosTicket LeeDatosTicket(const Almacen& a, qint64 idComprobante);

// Los bytes del ticket, con las columnas por línea del diseño.
QByteArray ArmaTicket(const DatosTicket& t, const DisenoTicket& d, PaginaCodigos pagina);

// Envía los bytes al puerto: "COM1".. (/dev/ttyS0..) o un dispositivo /dev/tty… por el puerto serie
// con sus parámetros ("9600,n,8,1"); "LPT1".. (/dev/lp0..) o un archivo de dispositivo
// (/dev/usb/lp0); "equipo:puerto" por la red (9100); "cups:cola" a una cola sin filtro. Si la
// impresora no responde lanza un aviso que lo dice.
void EnviaTicket(const QString& puerto, const QString& parametros, const QByteArray& bytes);

// El tipo del comprobante sale por la impresora de tickets.
bool EsComprobanteDeTicket(const Almacen& a, qint64 idComprobante);

// Lee el comprobante, lo arma con el diseño guardado y lo envía. El aviso de una falla dice que el
// comprobante quedó registrado y se puede reimprimir.
void ImprimeTicket(const Almacen& a, const Configuracion& conf, qint64 idComprobante);

} // namespace orv
