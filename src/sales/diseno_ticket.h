#pragma once
// El diseño del ticket de la impresora de tickets: el puerto, sus parámetros serie y el lugar de
// cada elemento en la hoja, guardados en la sección "Ticket" de la configuración de la máquina.
// Todos los tipos de comprobante de ticket comparten un mismo diseño y un mismo puerto.

#include "app/configuracion.h"

#include <QList>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <optional>

namespace orv {

// Un elemento del ticket: su título (también el nombre de su clave) y la muestra en la hoja.
struct ElementoTicket {
    QString titulo;
    QString muestra;
};
// Los dieciocho elementos, en su orden.
const QList<ElementoTicket>& ElementosTicket();

// Los doce nombres de siempre ("LPT1" a "LPT6", "COM1" a "COM6") y, después, las impresoras serie
// y USB que la máquina tiene conectadas (/dev/ttyUSB*, /dev/usb/lp*).
QStringList PuertosTicket();
// Los parámetros serie se usan sólo en un puerto serie: "COM…" o un dispositivo /dev/tty….
bool EsPuertoSerie(const QString& puerto);

// Los anchos de papel que se eligen: las columnas de la letra normal de la impresora y el ancho del
// rollo (las de 80 mm imprimen 42 o 48 según el cabezal). El primero es el de siempre.
struct AnchoTicket {
    int columnas;
    double mm;
    QString texto;
};
const QList<AnchoTicket>& AnchosTicket();

struct DisenoTicket {
    QString puerto;     // Puerto
    QString parametros; // ParametrosPuerto, texto libre ("9600,n,8,1")
    int columnas = 42;  // Columnas: una de AnchosTicket()
    // Uno por elemento, en el orden de ElementosTicket(): el lugar en mm desde la esquina de la
    // hoja, o nada si el elemento no va.
    QList<std::optional<QPointF>> lugares;
};

// Lee la sección "Ticket". Una clave vacía, o que no son dos números separados por ",", deja su
// elemento fuera; unas columnas que no son las de un ancho de papel dejan las de siempre.
DisenoTicket LeeDisenoTicket(const Configuracion& conf);
// Graba la sección: cada elemento con su lugar ("12.5,30") o vacío, el puerto y sus parámetros.
void GrabaDisenoTicket(const Configuracion& conf, const DisenoTicket& d);

} // namespace orv
