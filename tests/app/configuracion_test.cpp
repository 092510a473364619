// Configuración de la máquina: dos raíces, promoción al leer, escrituras rechazadas.

#include "apoyo/solo_lectura.h"
#include "app/configuracion.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace orv;

namespace {

class ConfiguracionTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dir_.isValid()); }

    QString datos() const { return dir_.filePath(QStringLiteral("datos")); }
    QString usuario() const { return dir_.filePath(QStringLiteral("usuario.conf")); }
    Configuracion conf() const { return Configuracion(datos(), usuario()); }

    // Un valor en la ubicación vieja (raíz de usuario).
    void ponUsuario(const QString& seccion, const QString& clave, const QString& valor) const {
        QSettings s(usuario(), QSettings::IniFormat);
        s.beginGroup(seccion);
        s.setValue(clave, valor);
        s.sync();
    }
    // Lo que hay escrito en Orvanta.ini, sin pasar por la promoción.
    QVariant enMaquina(const QString& seccion, const QString& clave) const {
        QSettings s(QDir(datos()).filePath(QStringLiteral("Orvanta.ini")), QSettings::IniFormat);
        s.beginGroup(seccion);
        return s.value(clave);
    }

    QTemporaryDir dir_;
};

TEST_F(ConfiguracionTest, ValorQueFaltaEnAmbasRaicesEsVacioYNoSeCrea) {
    const Configuracion c = conf();
    EXPECT_EQ(c.LeeClave(clave::aplicacion, clave::miscelaneas, QStringLiteral("IdRed")), QString());
    EXPECT_FALSE(enMaquina(clave::miscelaneas, QStringLiteral("IdRed")).isValid());
}

TEST_F(ConfiguracionTest, ValorSoloDelUsuarioSePromueveALaMaquina) {
    ponUsuario(clave::miscelaneas, QStringLiteral("MascaraMoneda"), QStringLiteral("#,##0.000"));
    const Configuracion c = conf();
    EXPECT_EQ(c.lee(clave::miscelaneas, QStringLiteral("MascaraMoneda")), QStringLiteral("#,##0.000"));
    EXPECT_EQ(enMaquina(clave::miscelaneas, QStringLiteral("MascaraMoneda")).toString(), QStringLiteral("#,##0.000"));

    // Desde ahora manda la máquina: un cambio en la ubicación vieja ya no se ve.
    ponUsuario(clave::miscelaneas, QStringLiteral("MascaraMoneda"), QStringLiteral("0.0"));
    EXPECT_EQ(c.lee(clave::miscelaneas, QStringLiteral("MascaraMoneda")), QStringLiteral("#,##0.000"));
}

TEST_F(ConfiguracionTest, LaMaquinaGanaAunqueDifiera) {
    ponUsuario(clave::configuracion, QStringLiteral("EmailSMTP"), QStringLiteral("viejo.ejemplo"));
    const Configuracion c = conf();
    c.graba(clave::configuracion, QStringLiteral("EmailSMTP"), QStringLiteral("nuevo.ejemplo"));
    EXPECT_EQ(c.lee(clave::configuracion, QStringLiteral("EmailSMTP")), QStringLiteral("nuevo.ejemplo"));
    // La raíz de usuario no se toca al escribir.
    QSettings s(usuario(), QSettings::IniFormat);
    EXPECT_EQ(s.value(QStringLiteral("Configuracion/EmailSMTP")).toString(), QStringLiteral("viejo.ejemplo"));
}

TEST_F(ConfiguracionTest, GrabarVacioDejaElValorPresenteYLaLecturaTraeElViejo) {
    const Configuracion c = conf();
    c.graba(clave::miscelaneas, QStringLiteral("Pais"), QString());
    EXPECT_TRUE(enMaquina(clave::miscelaneas, QStringLiteral("Pais")).isValid());
    EXPECT_EQ(c.lee(clave::miscelaneas, QStringLiteral("Pais")), QString());

    // Con un valor viejo en la raíz de usuario, el vacío lo deja volver (y se promueve).
    ponUsuario(clave::miscelaneas, QStringLiteral("Pais"), QStringLiteral("URUGUAY"));
    EXPECT_EQ(c.lee(clave::miscelaneas, QStringLiteral("Pais")), QStringLiteral("URUGUAY"));
    EXPECT_EQ(enMaquina(clave::miscelaneas, QStringLiteral("Pais")).toString(), QStringLiteral("URUGUAY"));
}

TEST_F(ConfiguracionTest, UnNuloFinalSeCortaAlLeer) {
    const Configuracion c = conf();
    c.graba(clave::ticket, QStringLiteral("Puerto"), QStringLiteral("COM1") + QChar(u'\0'));
    EXPECT_EQ(c.lee(clave::ticket, QStringLiteral("Puerto")), QStringLiteral("COM1"));
    // Sólo el último.
    c.graba(clave::ticket, QStringLiteral("Puerto"), QStringLiteral("A") + QChar(u'\0') + QChar(u'\0'));
    EXPECT_EQ(c.lee(clave::ticket, QStringLiteral("Puerto")), QStringLiteral("A") + QChar(u'\0'));
}

TEST_F(ConfiguracionTest, LosTextosVuelvenTalCual) {
    const Configuracion c = conf();
    const QStringList valores{
        QStringLiteral("###,###,##0.00"),     QStringLiteral("D'Angelo; #1 = \"ok\""),
        QStringLiteral("  con blancos  "),    QStringLiteral("Configuración ñandú €"),
        QStringLiteral("C:\\datos\\BASE"),    QStringLiteral("línea 1\nlínea 2"),
        QStringLiteral("true"),               QStringLiteral("0012"),
    };
    for (const QString& v : valores) {
        c.graba(clave::miscelaneas, QStringLiteral("Prueba"), v);
        EXPECT_EQ(Configuracion(datos(), usuario()).lee(clave::miscelaneas, QStringLiteral("Prueba")), v);
    }
    // Claves con blancos y acentos (las opciones del ticket llevan el rótulo como nombre).
    c.graba(clave::ticket, QStringLiteral("Corte de papel automático"), QStringLiteral("SI"));
    EXPECT_EQ(c.lee(clave::ticket, QStringLiteral("Corte de papel automático")), QStringLiteral("SI"));
}

TEST_F(ConfiguracionTest, UnArchivoEditadoAManoConComasSeLeeEntero) {
    QDir().mkpath(datos());
    QFile f(QDir(datos()).filePath(QStringLiteral("Orvanta.ini")));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("[Miscelaneas]\nMascaraMoneda=###,###,##0.00\nIdRed=4\n");
    f.close();
    const Configuracion c = conf();
    EXPECT_EQ(c.lee(clave::miscelaneas, QStringLiteral("MascaraMoneda")), QStringLiteral("###,###,##0.00"));
    EXPECT_EQ(c.lee(clave::miscelaneas, QStringLiteral("IdRed")), QStringLiteral("4"));
}

TEST_F(ConfiguracionTest, SeccionesYSeparadoresDoblesNombranLaMismaClave) {
    const Configuracion c = conf();
    c.GrabaClave(clave::aplicacion, clave::miscelaneas, QStringLiteral("Puerto"), QStringLiteral("m"));
    c.GrabaClave(clave::aplicacion, clave::ticket, QStringLiteral("Puerto"), QStringLiteral("t"));
    EXPECT_EQ(c.LeeRegistro(QStringLiteral("SOFTWARE\\Orvanta\\Miscelaneas\\"), QStringLiteral("Puerto"), {}),
              QStringLiteral("m"));
    EXPECT_EQ(c.LeeRegistro(QStringLiteral("SOFTWARE\\\\Orvanta\\\\Ticket\\\\"), QStringLiteral("Puerto"), {}),
              QStringLiteral("t"));
    EXPECT_EQ(c.LeeRegistro(QStringLiteral("SOFTWARE\\Orvanta\\Configuracion\\"), QStringLiteral("Puerto"),
                            QStringLiteral("def")),
              QStringLiteral("def"));
    // Otra aplicación va a su propio archivo.
    c.GrabaClave(QStringLiteral("Otra"), clave::ticket, QStringLiteral("Puerto"), QStringLiteral("x"));
    EXPECT_TRUE(QFile::exists(QDir(datos()).filePath(QStringLiteral("Otra.ini"))));
    EXPECT_EQ(c.LeeClave(clave::aplicacion, clave::ticket, QStringLiteral("Puerto")), QStringLiteral("t"));
}

TEST_F(ConfiguracionTest, LaPrimeraEscrituraCreaLaCarpetaDeDatos) {
    const QString honda = dir_.filePath(QStringLiteral("a/b/c"));
    const Configuracion c(honda, usuario());
    c.graba(clave::miscelaneas, QStringLiteral("IdRed"), QStringLiteral("3"));
    EXPECT_TRUE(QFile::exists(honda + QStringLiteral("/Orvanta.ini")));
    EXPECT_EQ(c.lee(clave::miscelaneas, QStringLiteral("IdRed")), QStringLiteral("3"));
}


TEST_F(ConfiguracionTest, EscrituraRechazadaEsSilenciosaYQuedaElValorAnterior) {
    const Configuracion c = conf();
    c.graba(clave::miscelaneas, QStringLiteral("IdRed"), QStringLiteral("5"));
    ponUsuario(clave::miscelaneas, QStringLiteral("Pais"), QStringLiteral("CHILE"));
    orv::prueba::SoloLectura bloqueo(c.archivoMaquina());
    if (!bloqueo.vale()) GTEST_SKIP() << "este sistema de archivos no permite quitar la escritura";

    c.graba(clave::miscelaneas, QStringLiteral("IdRed"), QStringLiteral("9"));
    EXPECT_EQ(c.lee(clave::miscelaneas, QStringLiteral("IdRed")), QStringLiteral("5"));
    EXPECT_EQ(Configuracion(datos(), usuario()).lee(clave::miscelaneas, QStringLiteral("IdRed")),
              QStringLiteral("5"));
    // La promoción tampoco puede escribir: el valor se devuelve igual y sigue sin estar en la máquina.
    EXPECT_EQ(c.lee(clave::miscelaneas, QStringLiteral("Pais")), QStringLiteral("CHILE"));
    EXPECT_FALSE(enMaquina(clave::miscelaneas, QStringLiteral("Pais")).isValid());
}

} // namespace
