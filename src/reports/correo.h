#pragma once
// Correo: los datos de la configuración y el envío de un mensaje con un adjunto por SMTP.
//
// La clave del servidor no va en Orvanta.ini: se guarda aparte, en un archivo de la carpeta de
// datos que sólo puede leer su dueño (correo.clave). Una clave vieja que todavía esté en el .ini
// se pasa a ese archivo la primera vez que se lee y se borra del .ini.

#include "app/configuracion.h"

#include <QString>

namespace orv {

struct DatosCorreo { // los nueve valores de "Configuracion"
    QString destino, destinoNombre, de, deNombre, smtp, tituloMensaje, usuario, clave;
    bool autenticacion = false; // TieneAutenticacion == "SI"
    // Archivo PEM con las autoridades de certificación en que se confía al cifrar; vacío, las del
    // sistema. No se guarda en la configuración: sirve a un servidor con certificado propio.
    QString autoridades;
};

DatosCorreo LeeDatosCorreo(const Configuracion& c);
// Graba los valores; la clave sólo si `cambiaClave` (vacía con cambiaClave la borra).
void GrabaDatosCorreo(const Configuracion& c, const DatosCorreo& d, bool cambiaClave);
// Archivo de la clave del correo.
QString ArchivoClaveCorreo(const Configuracion& c);

// Dirección del servidor para libcurl: "host", "host:puerto", "smtp://host:puerto" o
// "smtps://host:puerto" (TLS desde el comienzo). Sin esquema, SMTP con STARTTLS si el servidor
// lo ofrece.
QString UrlServidorCorreo(const QString& smtp);

// Envía un mensaje: de `d.de` (con su nombre, y como dirección de respuesta) a `destinatario`,
// con el asunto, el cuerpo y el adjunto si la ruta no es vacía. Con destinatario vacío no envía
// nada. Con autenticación la conexión tiene que ser cifrada (smtps:// o STARTTLS): el usuario y la
// clave nunca viajan a la vista, y un servidor que no ofrece cifrado no recibe nada. Lanza Aviso
// con el motivo del servidor si falla.
void EnviaMail(const DatosCorreo& d, const QString& destinatario, const QString& asunto, const QString& cuerpo,
               const QString& nombreDestinatario, const QString& adjunto);

} // namespace orv
