// Correo contra un servidor SMTP real en 127.0.0.1: lo que llega (remitente, nombres, respuesta,
// asunto, cuerpo y adjunto), el usuario y la clave sólo por conexión cifrada, los errores en
// castellano con el motivo, y dónde queda la clave.

#include "apoyo/servidor_smtp.h"
#include "apoyo_informes.h"
#include "reports/correo.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace orv {
namespace {

using namespace prueba;

DatosCorreo datos(const QString& servidor) {
    DatosCorreo d;
    d.smtp = servidor;
    d.de = "sucursal@almacen.com.ar";
    d.deNombre = "Sucursal Peña";
    d.destino = "central@almacen.com.ar";
    return d;
}

// Sobre, encabezados, texto y nombres de los adjuntos de un mensaje recibido, en una línea.
std::string resumen(const QJsonObject& m) {
    const QJsonObject e = m[QStringLiteral("encabezados")].toObject();
    QStringList r{m[QStringLiteral("de")].toString(), m[QStringLiteral("para")].toArray().at(0).toString()};
    for (const char* h : {"Subject", "From", "To", "Reply-To"}) r << e[QString::fromLatin1(h)].toString();
    r << m[QStringLiteral("texto")].toString().trimmed();
    for (const QJsonValue& a : m[QStringLiteral("adjuntos")].toArray()) r << a[QStringLiteral("nombre")].toString();
    return r.join(u'|').toStdString();
}

TEST(Correo, LlegaConRemitenteNombresRespuestaAsuntoCuerpoYAdjunto) {
    ServidorSmtp s;
    ASSERT_TRUE(s.listo());
    QTemporaryDir dir;
    QByteArray contenido("%PDF-1.4\n");
    for (int i = 0; i < 3000; ++i) contenido.append(char(i % 256));
    const QString adjunto = escribeArchivo(dir.filePath("caja_noviembre.pdf"), contenido);

    EnviaMail(datos(s.servidor()), "central@almacen.com.ar", "Informe de caja — ñandú",
              "Ver archivo adjunto\nSaludos, Peña", "Casa Central", adjunto);
    // Sin adjunto y con la dirección como URL: sólo el texto, al destinatario sin nombre.
    EnviaMail(datos(QStringLiteral("smtp://") + s.servidor()), "otro@almacen.com.ar", "Hola",
              "Sin adjunto", QString(), QString());
    // Sin destinatario no se envía nada ni se dice nada.
    EXPECT_NO_THROW(EnviaMail(datos(s.servidor()), "  ", "x", "y", {}, adjunto));
    ASSERT_EQ(s.recibidos(), 2);
    EXPECT_EQ(resumen(s.mensaje(1)), "sucursal@almacen.com.ar|central@almacen.com.ar|Informe de caja — ñandú|"
                                     "Sucursal Peña <sucursal@almacen.com.ar>|Casa Central <central@almacen.com.ar>|"
                                     "sucursal@almacen.com.ar|Ver archivo adjunto\nSaludos, Peña|caja_noviembre.pdf");
    EXPECT_EQ(resumen(s.mensaje(2)), "sucursal@almacen.com.ar|otro@almacen.com.ar|Hola|"
                                     "Sucursal Peña <sucursal@almacen.com.ar>|otro@almacen.com.ar|"
                                     "sucursal@almacen.com.ar|Sin adjunto");
    EXPECT_FALSE(s.mensaje(1)[QStringLiteral("encabezados")][QStringLiteral("Date")].toString().isEmpty());
    const QString base64 = s.mensaje(1)[QStringLiteral("adjuntos")][0][QStringLiteral("contenido")].toString();
    EXPECT_EQ(QByteArray::fromBase64(base64.toLatin1()), contenido);
}

TEST(Correo, ConUsuarioYClaveSoloPorConexionCifradaYLosErroresEnCastellano) {
    ServidorSmtp cifrado("sucursal", "cl@ve ñ", Cifrado::StartTls);
    ServidorSmtp aLaVista("sucursal", "cl@ve ñ");
    ASSERT_TRUE(cifrado.listo() && aLaVista.listo());
    struct Caso {
        const ServidorSmtp& servidor;
        bool autenticacion, confia;
        const char* clave;
        const char* motivo; // vacío: se envía
        int intentos;       // veces que el servidor recibió usuario y clave
    };
    const Caso casos[] = {
        {cifrado, true, true, "cl@ve ñ", "", 1},
        {cifrado, true, true, "otra", "el servidor rechazó el usuario o la clave", 1},
        {cifrado, false, true, "", "el servidor pide usuario y clave", 0},
        {cifrado, true, false, "cl@ve ñ", "falló la conexión segura con el servidor", 0},
        {aLaVista, true, true, "cl@ve ñ", "el servidor no ofrece conexión cifrada (STARTTLS) y el usuario y la clave "
                                          "no se mandan sin cifrar", 0},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.motivo);
        const int recibidos = c.servidor.recibidos(), intentos = c.servidor.autenticaciones();
        DatosCorreo d = datos(c.servidor.servidor());
        d.autenticacion = c.autenticacion;
        d.usuario = "sucursal";
        d.clave = QString::fromUtf8(c.clave);
        if (c.confia) d.autoridades = cifrado.certificado();
        const QString error = AvisoDe([&] { EnviaMail(d, d.destino, "x", "x", {}, {}); });
        EXPECT_EQ(c.servidor.autenticaciones() - intentos, c.intentos);
        EXPECT_TRUE(*c.motivo ? error.section(": ", 1).startsWith(QString::fromUtf8(c.motivo))
                              : error.isEmpty())
            << error.toStdString();
        EXPECT_EQ(c.servidor.recibidos() - recibidos, *c.motivo ? 0 : 1);
    }
    EXPECT_TRUE(cifrado.mensaje(1)[QStringLiteral("cifrado")].toBool());
    EXPECT_EQ(cifrado.mensaje(1)[QStringLiteral("usuario")].toString(), "sucursal");
}

TEST(Correo, ServidorQueNoAtiendeSinServidorYAdjuntoQueFalta) {
    const DatosCorreo d = datos("127.0.0.1:1"); // nadie atiende
    DatosCorreo sinServidor = d;
    sinServidor.smtp.clear();
    auto envia = [&](const DatosCorreo& con, const QString& adjunto) {
        return AvisoDe([&] { EnviaMail(con, d.destino, "x", "x", {}, adjunto); });
    };
    const QString error = envia(d, {});
    EXPECT_TRUE(error.contains(": no se pudo conectar con el servidor.\nMotivo: ")) << error.toStdString();
    EXPECT_EQ(envia(d, "/no/esta.pdf"), "No se puede leer el archivo adjunto /no/esta.pdf");
    EXPECT_FALSE(envia(sinServidor, {}).isEmpty());
}

TEST(Correo, LaClaveVaEnUnArchivoDelDuenoYNoEnElIni) {
    QTemporaryDir dir;
    const Configuracion c(dir.path(), dir.filePath("u.conf"));
    // Una clave vieja en el .ini pasa al archivo propio, sólo legible por el dueño, al leerla.
    c.graba(clave::configuracion, "AutPass", "vieja");
    c.graba(clave::configuracion, "TieneAutenticacion", "SI");
    DatosCorreo d = LeeDatosCorreo(c);
    EXPECT_EQ(d.clave, "vieja");
    EXPECT_TRUE(d.autenticacion);
    EXPECT_TRUE(c.lee(clave::configuracion, "AutPass").isEmpty());
    const QFileInfo archivo(ArchivoClaveCorreo(c));
    ASSERT_TRUE(archivo.exists());
    EXPECT_EQ(archivo.permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteGroup |
                                       QFileDevice::WriteOther),
              QFileDevice::Permissions());

    // Una clave nueva tampoco va al .ini (conservarla o cambiarla desde la pantalla, con la configuración).
    d.clave = "nueva";
    GrabaDatosCorreo(c, d, true);
    EXPECT_EQ(LeeDatosCorreo(c).clave, "nueva");
    EXPECT_FALSE(leeArchivo(c.archivoMaquina()).contains("nueva"));

    EXPECT_EQ(UrlServidorCorreo("smtp.correo.com.ar"), "smtp://smtp.correo.com.ar");
    EXPECT_EQ(UrlServidorCorreo(" smtps://smtp.correo.com.ar:465 "), "smtps://smtp.correo.com.ar:465");
}

} // namespace
} // namespace orv
