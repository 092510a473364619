// Correo contra un servidor SMTP real en 127.0.0.1: lo que llega (remitente, nombres, respuesta,
// asunto, cuerpo y adjunto), con y sin autenticación; los errores en castellano con el motivo del
// servidor; y dónde queda la clave.

#include "apoyo/servidor_smtp.h"
#include "reports/correo.h"
#include "store/aviso.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSettings>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>
#include <memory>

namespace orv {

namespace {

DatosCorreo datos(const QString& servidor) {
    DatosCorreo d;
    d.smtp = servidor;
    d.de = QStringLiteral("sucursal@almacen.com.ar");
    d.deNombre = QStringLiteral("Sucursal Peña");
    d.destino = QStringLiteral("central@almacen.com.ar");
    return d;
}

QString textoDeAviso(const std::function<void()>& f) {
    try {
        f();
    } catch (const Aviso& a) {
        return a.texto();
    }
    return {};
}

TEST(Correo, LlegaConRemitenteNombresRespuestaAsuntoCuerpoYAdjunto) {
    ServidorSmtp s;
    ASSERT_TRUE(s.listo());
    QTemporaryDir dir;
    const QString adjunto = dir.filePath(QStringLiteral("caja_noviembre.pdf"));
    QByteArray contenido("%PDF-1.4\n");
    for (int i = 0; i < 3000; ++i) contenido.append(char(i % 256));
    QFile f(adjunto);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(contenido);
    f.close();

    EnviaMail(datos(s.servidor()), QStringLiteral("central@almacen.com.ar"), QStringLiteral("Informe de caja — ñandú"),
              QStringLiteral("Ver archivo adjunto\nSaludos, Peña"), QStringLiteral("Casa Central"), adjunto);
    ASSERT_EQ(s.recibidos(), 1);
    const QJsonObject m = s.mensaje(1);
    EXPECT_EQ(m[QStringLiteral("de")].toString(), QStringLiteral("sucursal@almacen.com.ar"));
    EXPECT_EQ(m[QStringLiteral("para")].toArray().at(0).toString(), QStringLiteral("central@almacen.com.ar"));
    const QJsonObject enc = m[QStringLiteral("encabezados")].toObject();
    EXPECT_EQ(enc[QStringLiteral("Subject")].toString(), QStringLiteral("Informe de caja — ñandú"));
    EXPECT_EQ(enc[QStringLiteral("From")].toString(), QStringLiteral("Sucursal Peña <sucursal@almacen.com.ar>"));
    EXPECT_EQ(enc[QStringLiteral("To")].toString(), QStringLiteral("Casa Central <central@almacen.com.ar>"));
    EXPECT_EQ(enc[QStringLiteral("Reply-To")].toString(), QStringLiteral("sucursal@almacen.com.ar"));
    EXPECT_FALSE(enc[QStringLiteral("Date")].toString().isEmpty());
    EXPECT_EQ(m[QStringLiteral("texto")].toString().trimmed(), QStringLiteral("Ver archivo adjunto\nSaludos, Peña"));
    const QJsonArray adj = m[QStringLiteral("adjuntos")].toArray();
    ASSERT_EQ(adj.size(), 1);
    EXPECT_EQ(adj[0].toObject()[QStringLiteral("nombre")].toString(), QStringLiteral("caja_noviembre.pdf"));
    EXPECT_EQ(QByteArray::fromBase64(adj[0].toObject()[QStringLiteral("contenido")].toString().toLatin1()), contenido);

    // Sin adjunto: sólo el texto.
    EnviaMail(datos(QStringLiteral("smtp://") + s.servidor()), QStringLiteral("otro@almacen.com.ar"), QStringLiteral("Hola"),
              QStringLiteral("Sin adjunto"), QString(), QString());
    ASSERT_EQ(s.recibidos(), 2);
    EXPECT_TRUE(s.mensaje(2)[QStringLiteral("adjuntos")].toArray().isEmpty());
    EXPECT_EQ(s.mensaje(2)[QStringLiteral("encabezados")].toObject()[QStringLiteral("To")].toString(),
              QStringLiteral("otro@almacen.com.ar"));

    // Sin destinatario no se envía nada ni se dice nada.
    EXPECT_NO_THROW(EnviaMail(datos(s.servidor()), QStringLiteral("  "), QStringLiteral("x"), QStringLiteral("y"), QString(), adjunto));
    EXPECT_EQ(s.recibidos(), 2);
}

TEST(Correo, ConUsuarioYClaveSoloPorConexionCifradaYLosErroresEnCastellano) {
    ServidorSmtp cifrado(QStringLiteral("sucursal"), QStringLiteral("cl@ve ñ"), Cifrado::StartTls);
    ServidorSmtp aLaVista(QStringLiteral("sucursal"), QStringLiteral("cl@ve ñ"));
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
        d.usuario = QStringLiteral("sucursal");
        d.clave = QString::fromUtf8(c.clave);
        if (c.confia) d.autoridades = cifrado.certificado();
        const QString error = textoDeAviso([&] { EnviaMail(d, d.destino, QStringLiteral("x"), QStringLiteral("x"), {}, {}); });
        EXPECT_EQ(c.servidor.autenticaciones() - intentos, c.intentos);
        EXPECT_TRUE(*c.motivo ? error.section(QStringLiteral(": "), 1).startsWith(QString::fromUtf8(c.motivo))
                              : error.isEmpty())
            << error.toStdString();
        EXPECT_EQ(c.servidor.recibidos() - recibidos, *c.motivo ? 0 : 1);
    }
    EXPECT_TRUE(cifrado.mensaje(1)[QStringLiteral("cifrado")].toBool());
    EXPECT_EQ(cifrado.mensaje(1)[QStringLiteral("usuario")].toString(), QStringLiteral("sucursal"));
}

TEST(Correo, ConexionRechazadaYAdjuntoQueFalta) {
    quint16 puerto = 0;
    {
        QTcpServer libre;
        libre.listen(QHostAddress::LocalHost, 0);
        puerto = libre.serverPort();
    }
    const DatosCorreo d = datos(QStringLiteral("127.0.0.1:%1").arg(puerto));
    const QString error =
        textoDeAviso([&] { EnviaMail(d, d.destino, QStringLiteral("x"), QStringLiteral("x"), QString(), QString()); });
    EXPECT_TRUE(error.contains(QStringLiteral(": no se pudo conectar con el servidor.\nMotivo: "))) << error.toStdString();
    EXPECT_EQ(textoDeAviso([&] { EnviaMail(d, d.destino, QStringLiteral("x"), QStringLiteral("x"), QString(), QStringLiteral("/no/esta.pdf")); }),
              QStringLiteral("No se puede leer el archivo adjunto /no/esta.pdf"));
    DatosCorreo sinServidor = d;
    sinServidor.smtp.clear();
    EXPECT_FALSE(textoDeAviso([&] { EnviaMail(sinServidor, d.destino, QStringLiteral("x"), QStringLiteral("x"), QString(), QString()); })
                     .isEmpty());
}

TEST(Correo, LaClaveVaEnUnArchivoDelDuenoYNoEnElIni) {
    QTemporaryDir dir;
    const Configuracion c(dir.path(), dir.filePath(QStringLiteral("u.conf")));
    // Una clave vieja en el .ini pasa al archivo propio al leerla.
    c.graba(clave::configuracion, QStringLiteral("AutPass"), QStringLiteral("vieja"));
    c.graba(clave::configuracion, QStringLiteral("TieneAutenticacion"), QStringLiteral("SI"));
    DatosCorreo d = LeeDatosCorreo(c);
    EXPECT_EQ(d.clave, QStringLiteral("vieja"));
    EXPECT_TRUE(d.autenticacion);
    EXPECT_TRUE(c.lee(clave::configuracion, QStringLiteral("AutPass")).isEmpty());
    const QFileInfo archivo(ArchivoClaveCorreo(c));
    ASSERT_TRUE(archivo.exists());
    EXPECT_EQ(archivo.permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteGroup |
                                       QFileDevice::WriteOther),
              QFileDevice::Permissions());

    d.smtp = QStringLiteral("smtp.correo.com.ar:587");
    d.clave = QStringLiteral("nueva");
    d.autenticacion = false;
    GrabaDatosCorreo(c, d, false); // sin cambiar la clave
    EXPECT_EQ(LeeDatosCorreo(c).clave, QStringLiteral("vieja"));
    EXPECT_EQ(c.lee(clave::configuracion, QStringLiteral("TieneAutenticacion")), QStringLiteral("NO"));
    GrabaDatosCorreo(c, d, true);
    EXPECT_EQ(LeeDatosCorreo(c).clave, QStringLiteral("nueva"));
    QFile ini(c.archivoMaquina());
    ASSERT_TRUE(ini.open(QIODevice::ReadOnly));
    EXPECT_FALSE(ini.readAll().contains("nueva"));

    EXPECT_EQ(UrlServidorCorreo(QStringLiteral("smtp.correo.com.ar")), QStringLiteral("smtp://smtp.correo.com.ar"));
    EXPECT_EQ(UrlServidorCorreo(QStringLiteral(" smtps://smtp.correo.com.ar:465 ")), QStringLiteral("smtps://smtp.correo.com.ar:465"));
}

} // namespace
} // namespace orv
