#include "reports/correo.h"

#include "store/aviso.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>
#include <QUuid>
#include <curl/curl.h>
#include <memory>
#include <mutex>

namespace orv {

namespace {

QString lee(const Configuracion& c, const char* nombre) { return c.lee(clave::configuracion, QString::fromLatin1(nombre)); }
void graba(const Configuracion& c, const char* nombre, const QString& valor) {
    c.graba(clave::configuracion, QString::fromLatin1(nombre), valor);
}

void escribeClave(const Configuracion& c, const QString& clave) {
    const QString ruta = ArchivoClaveCorreo(c);
    if (clave.isEmpty()) {
        QFile::remove(ruta);
        return;
    }
    QDir().mkpath(c.carpetaDatos());
    QSaveFile f(ruta);
    if (!f.open(QIODevice::WriteOnly)) throw Aviso(QStringLiteral("No se pudo guardar la clave del correo en ") + ruta);
    f.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    f.write(clave.toUtf8());
    if (!f.commit()) throw Aviso(QStringLiteral("No se pudo guardar la clave del correo en ") + ruta);
    QFile::setPermissions(ruta, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

// Encabezado con texto fuera de ASCII: "=?UTF-8?B?...?=".
QByteArray encabezado(const QString& texto) {
    bool ascii = true;
    for (QChar ch : texto)
        if (ch.unicode() > 126 || ch.unicode() < 32) ascii = false;
    if (ascii) return texto.toLatin1();
    return "=?UTF-8?B?" + texto.toUtf8().toBase64() + "?=";
}

QByteArray direccion(const QString& nombre, const QString& correo) {
    if (nombre.trimmed().isEmpty()) return "<" + correo.toUtf8() + ">";
    QString n = nombre;
    n.remove(u'"');
    const QByteArray codificado = encabezado(n);
    return (codificado.startsWith("=?") ? codificado : "\"" + codificado + "\"") + " <" + correo.toUtf8() + ">";
}

// El motivo de una falla en castellano: por el código de libcurl y, cuando el servidor contestó
// con un rechazo, por su respuesta.
QString motivoEnCastellano(CURLcode r, long respuesta) {
    if (respuesta == 530) return QStringLiteral("el servidor pide usuario y clave");
    if (respuesta >= 400 && r != CURLE_LOGIN_DENIED) return QStringLiteral("el servidor no aceptó el mensaje");
    switch (r) {
    case CURLE_USE_SSL_FAILED:
        // Sólo se pide cifrado obligatorio cuando hay usuario y clave.
        return QStringLiteral("el servidor no ofrece conexión cifrada (STARTTLS) y el usuario y la clave no se "
                              "mandan sin cifrar; use el puerto cifrado del proveedor (smtps://servidor:465 o "
                              "servidor:587)");
    case CURLE_COULDNT_RESOLVE_HOST: return QStringLiteral("no se encontró el servidor");
    case CURLE_COULDNT_CONNECT: return QStringLiteral("no se pudo conectar con el servidor");
    case CURLE_OPERATION_TIMEDOUT: return QStringLiteral("el servidor no respondió a tiempo");
    case CURLE_LOGIN_DENIED: return QStringLiteral("el servidor rechazó el usuario o la clave");
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE: return QStringLiteral("falló la conexión segura con el servidor");
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING: return QStringLiteral("se cortó la conexión con el servidor");
    case CURLE_READ_ERROR: return QStringLiteral("no se pudo leer el archivo adjunto");
    default: return QStringLiteral("el servidor no aceptó el mensaje");
    }
}

struct Curl {
    CURL* h = curl_easy_init();
    curl_slist* rcpt = nullptr;
    curl_slist* encabezados = nullptr;
    curl_mime* mime = nullptr;
    ~Curl() {
        if (mime) curl_mime_free(mime);
        curl_slist_free_all(rcpt);
        curl_slist_free_all(encabezados);
        if (h) curl_easy_cleanup(h);
    }
};

} // namespace

QString ArchivoClaveCorreo(const Configuracion& c) { return QDir(c.carpetaDatos()).filePath(QStringLiteral("correo.clave")); }

DatosCorreo LeeDatosCorreo(const Configuracion& c) {
    DatosCorreo d;
    d.destino = lee(c, "EmailDestino");
    d.destinoNombre = lee(c, "EmailDestinoNombre");
    d.de = lee(c, "EmailDe");
    d.deNombre = lee(c, "EmailDeNombre");
    d.smtp = lee(c, "EmailSMTP");
    d.tituloMensaje = lee(c, "EmailTituloMensaje");
    d.usuario = lee(c, "AutUser");
    d.autenticacion = lee(c, "TieneAutenticacion") == QStringLiteral("SI");
    // Una clave que quedó en el .ini pasa al archivo propio y se borra del .ini.
    const QString vieja = lee(c, "AutPass");
    if (!vieja.isEmpty()) {
        escribeClave(c, vieja);
        graba(c, "AutPass", QString());
    }
    QFile f(ArchivoClaveCorreo(c));
    if (f.open(QIODevice::ReadOnly)) d.clave = QString::fromUtf8(f.readAll());
    return d;
}

void GrabaDatosCorreo(const Configuracion& c, const DatosCorreo& d, bool cambiaClave) {
    graba(c, "EmailDestino", d.destino);
    graba(c, "EmailDestinoNombre", d.destinoNombre);
    graba(c, "EmailDe", d.de);
    graba(c, "EmailDeNombre", d.deNombre);
    graba(c, "EmailSMTP", d.smtp);
    graba(c, "EmailTituloMensaje", d.tituloMensaje);
    graba(c, "AutUser", d.usuario);
    graba(c, "TieneAutenticacion", d.autenticacion ? QStringLiteral("SI") : QStringLiteral("NO"));
    if (!lee(c, "AutPass").isEmpty()) graba(c, "AutPass", QString());
    if (cambiaClave) escribeClave(c, d.clave);
}

QString UrlServidorCorreo(const QString& smtp) {
    const QString s = smtp.trimmed();
    if (s.startsWith(QStringLiteral("smtp://"), Qt::CaseInsensitive) || s.startsWith(QStringLiteral("smtps://"), Qt::CaseInsensitive))
        return s;
    return QStringLiteral("smtp://") + s;
}

void EnviaMail(const DatosCorreo& d, const QString& destinatario, const QString& asunto, const QString& cuerpo,
               const QString& nombreDestinatario, const QString& adjunto) {
    if (destinatario.trimmed().isEmpty()) return;
    static std::once_flag iniciado;
    std::call_once(iniciado, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    if (d.smtp.trimmed().isEmpty()) throw Aviso(QStringLiteral("Falta el servidor de correo (SMTP) en la configuración."));
    if (!adjunto.isEmpty() && !QFileInfo(adjunto).isReadable())
        throw Aviso(QStringLiteral("No se puede leer el archivo adjunto ") + adjunto);

    Curl c;
    if (!c.h) throw Aviso(QStringLiteral("No se pudo preparar el envío del correo."));
    char error[CURL_ERROR_SIZE] = {};
    const QByteArray url = UrlServidorCorreo(d.smtp).toUtf8();
    const QByteArray de = "<" + d.de.trimmed().toUtf8() + ">";
    const QByteArray para = "<" + destinatario.trimmed().toUtf8() + ">";
    const QByteArray usuario = d.usuario.toUtf8();
    const QByteArray clave = d.clave.toUtf8();
    const QByteArray autoridades = QFile::encodeName(d.autoridades);
    curl_easy_setopt(c.h, CURLOPT_ERRORBUFFER, error);
    curl_easy_setopt(c.h, CURLOPT_URL, url.constData());
    // Sin usuario ni clave el cifrado es el que el servidor ofrezca; con ellos es obligatorio, y
    // si el servidor no lo ofrece la conexión se corta antes de mandar nada.
    curl_easy_setopt(c.h, CURLOPT_USE_SSL, long(d.autenticacion ? CURLUSESSL_ALL : CURLUSESSL_TRY));
    if (!autoridades.isEmpty()) curl_easy_setopt(c.h, CURLOPT_CAINFO, autoridades.constData());
    curl_easy_setopt(c.h, CURLOPT_CONNECTTIMEOUT, 20L);
    curl_easy_setopt(c.h, CURLOPT_TIMEOUT, 180L);
    curl_easy_setopt(c.h, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(c.h, CURLOPT_MAIL_FROM, de.constData());
    c.rcpt = curl_slist_append(c.rcpt, para.constData());
    curl_easy_setopt(c.h, CURLOPT_MAIL_RCPT, c.rcpt);
    if (d.autenticacion) {
        curl_easy_setopt(c.h, CURLOPT_USERNAME, usuario.constData());
        curl_easy_setopt(c.h, CURLOPT_PASSWORD, clave.constData());
    }

    // Encabezados: fecha en inglés, como pide el correo, sea cual sea el idioma de la máquina.
    const QDateTime ahora = QDateTime::currentDateTime();
    const int minutos = ahora.offsetFromUtc() / 60;
    const QByteArray fecha = "Date: " +
                             QLocale::c().toString(ahora, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")).toLatin1() +
                             QStringLiteral(" %1%2%3")
                                 .arg(minutos < 0 ? u'-' : u'+')
                                 .arg(qAbs(minutos) / 60, 2, 10, QLatin1Char('0'))
                                 .arg(qAbs(minutos) % 60, 2, 10, QLatin1Char('0'))
                                 .toLatin1();
    const QByteArray desde = d.de.section(u'@', 1).toUtf8();
    const QList<QByteArray> lineas = {
        fecha,
        "From: " + direccion(d.deNombre, d.de.trimmed()),
        "To: " + direccion(nombreDestinatario, destinatario.trimmed()),
        "Reply-To: " + de,
        "Subject: " + encabezado(asunto),
        "Message-ID: <" + QUuid::createUuid().toString(QUuid::WithoutBraces).toLatin1() + "@" +
            (desde.isEmpty() ? QByteArray("orvanta") : desde) + ">"};
    for (const QByteArray& l : lineas) c.encabezados = curl_slist_append(c.encabezados, l.constData());
    curl_easy_setopt(c.h, CURLOPT_HTTPHEADER, c.encabezados);

    c.mime = curl_mime_init(c.h);
    curl_mimepart* texto = curl_mime_addpart(c.mime);
    const QByteArray cuerpo8 = cuerpo.toUtf8();
    curl_mime_data(texto, cuerpo8.constData(), size_t(cuerpo8.size()));
    curl_mime_type(texto, "text/plain; charset=UTF-8");
    curl_mime_encoder(texto, "quoted-printable");
    if (!adjunto.isEmpty()) {
        curl_mimepart* archivo = curl_mime_addpart(c.mime);
        const QByteArray ruta = QFile::encodeName(adjunto);
        curl_mime_filedata(archivo, ruta.constData());
        curl_mime_filename(archivo, QFileInfo(adjunto).fileName().toUtf8().constData());
        // Una página HTML va marcada como tal y en UTF-8, para que el correo del destinatario la
        // muestre con sus acentos.
        const QString ext = QFileInfo(adjunto).suffix().toLower();
        if (ext == QStringLiteral("htm") || ext == QStringLiteral("html")) curl_mime_type(archivo, "text/html; charset=UTF-8");
        else if (ext == QStringLiteral("pdf")) curl_mime_type(archivo, "application/pdf");
        curl_mime_encoder(archivo, "base64");
    }
    curl_easy_setopt(c.h, CURLOPT_MIMEPOST, c.mime);

    const CURLcode r = curl_easy_perform(c.h);
    if (r != CURLE_OK) {
        long codigo = 0;
        curl_easy_getinfo(c.h, CURLINFO_RESPONSE_CODE, &codigo);
        QString detalle = QString::fromUtf8(error).trimmed();
        if (detalle.isEmpty()) detalle = QString::fromUtf8(curl_easy_strerror(r));
        QString texto = QStringLiteral("No se pudo enviar el correo a ") + destinatario.trimmed() +
                        QStringLiteral(" por ") + d.smtp.trimmed() + QStringLiteral(": ") + motivoEnCastellano(r, codigo) +
                        QStringLiteral(".\nMotivo: ") + detalle;
        if (codigo > 0) texto += QStringLiteral(" (respuesta del servidor: %1)").arg(codigo);
        throw Aviso(texto);
    }
}

} // namespace orv
