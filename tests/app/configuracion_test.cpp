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
    QString datos() const { return dir_.filePath("datos"); }
    QString usuario() const { return dir_.filePath("usuario.conf"); }
    Configuracion conf() const { return Configuracion(datos(), usuario()); }

    // Un valor en la ubicación vieja (raíz de usuario).
    void ponUsuario(const QString& seccion, const QString& clave, const QString& valor) const {
        QSettings(usuario(), QSettings::IniFormat).setValue(seccion + '/' + clave, valor);
    }
    // Lo que hay escrito en Orvanta.ini, sin pasar por la promoción.
    QVariant enMaquina(const QString& seccion, const QString& clave) const {
        return QSettings(QDir(datos()).filePath("Orvanta.ini"), QSettings::IniFormat).value(seccion + '/' + clave);
    }

    QTemporaryDir dir_;
};

} // namespace

TEST_F(ConfiguracionTest, LoQueFaltaEsVacioSinCrearseYLaPrimeraEscrituraCreaLaCarpeta) {
    const Configuracion c = conf();
    EXPECT_EQ(c.LeeClave(clave::aplicacion, clave::miscelaneas, "IdRed"), QString());
    EXPECT_FALSE(enMaquina(clave::miscelaneas, "IdRed").isValid());
    const Configuracion honda(dir_.filePath("a/b/c"), usuario());
    honda.graba(clave::miscelaneas, "IdRed", "3");
    EXPECT_TRUE(QFile::exists(dir_.filePath("a/b/c/Orvanta.ini")));
    EXPECT_EQ(honda.lee(clave::miscelaneas, "IdRed"), "3");
}

TEST_F(ConfiguracionTest, LoDelUsuarioSePromueveALaMaquinaDesdeAhiMandaLaMaquinaYElVacioDejaVolverLoViejo) {
    ponUsuario(clave::miscelaneas, "MascaraMoneda", "#,##0.000");
    ponUsuario(clave::configuracion, "EmailSMTP", "viejo.ejemplo");
    const Configuracion c = conf();
    EXPECT_EQ(c.lee(clave::miscelaneas, "MascaraMoneda"), "#,##0.000");
    EXPECT_EQ(enMaquina(clave::miscelaneas, "MascaraMoneda").toString(), "#,##0.000");
    // Un cambio en la ubicación vieja ya no se ve; grabar escribe sólo en la máquina.
    ponUsuario(clave::miscelaneas, "MascaraMoneda", "0.0");
    EXPECT_EQ(c.lee(clave::miscelaneas, "MascaraMoneda"), "#,##0.000");
    c.graba(clave::configuracion, "EmailSMTP", "nuevo.ejemplo");
    EXPECT_EQ(c.lee(clave::configuracion, "EmailSMTP"), "nuevo.ejemplo");
    EXPECT_EQ(QSettings(usuario(), QSettings::IniFormat).value("Configuracion/EmailSMTP").toString(), "viejo.ejemplo");

    // Grabar vacío deja el valor presente; con un valor viejo en la raíz de usuario, el vacío lo deja volver.
    c.graba(clave::miscelaneas, "Pais", QString());
    EXPECT_TRUE(enMaquina(clave::miscelaneas, "Pais").isValid());
    EXPECT_EQ(c.lee(clave::miscelaneas, "Pais"), QString());
    ponUsuario(clave::miscelaneas, "Pais", "URUGUAY");
    EXPECT_EQ(c.lee(clave::miscelaneas, "Pais"), "URUGUAY");
    EXPECT_EQ(enMaquina(clave::miscelaneas, "Pais").toString(), "URUGUAY");
}

TEST_F(ConfiguracionTest, LosTextosVuelvenTalCualSalvoUnNuloFinalAunEditadosAMano) {
    const QChar nulo(u'\0');
    const std::pair<QString, QString> casos[] = {
        {"###,###,##0.00", "###,###,##0.00"}, {"D'Angelo; #1 = \"ok\"", "D'Angelo; #1 = \"ok\""},
        {"  con blancos  ", "  con blancos  "}, {"Configuración ñandú €", "Configuración ñandú €"},
        {"C:\\datos\\BASE", "C:\\datos\\BASE"}, {"línea 1\nlínea 2", "línea 1\nlínea 2"}, {"true", "true"},
        {"0012", "0012"}, {QString("COM1") + nulo, "COM1"}, {QString("A") + nulo + nulo, QString("A") + nulo},
    };
    for (const auto& [grabado, leido] : casos) {
        conf().graba(clave::ticket, "Puerto", grabado);
        EXPECT_EQ(conf().lee(clave::ticket, "Puerto"), leido) << grabado.toStdString();
    }
    // Claves con blancos y acentos (las opciones del ticket llevan el rótulo como nombre).
    conf().graba(clave::ticket, "Corte de papel automático", "SI");
    EXPECT_EQ(conf().lee(clave::ticket, "Corte de papel automático"), "SI");
    // Un archivo editado a mano, con comas en el valor, se lee entero.
    QFile f(conf().archivoMaquina());
    ASSERT_TRUE(f.open(QIODevice::WriteOnly) && f.write("[Miscelaneas]\nMascaraMoneda=###,###,##0.00\n") > 0);
    f.close();
    EXPECT_EQ(conf().lee(clave::miscelaneas, "MascaraMoneda"), "###,###,##0.00");
}

TEST_F(ConfiguracionTest, SeccionesYSeparadoresDoblesNombranLaMismaClave) {
    const Configuracion c = conf();
    c.GrabaClave(clave::aplicacion, clave::miscelaneas, "Puerto", "m");
    c.GrabaClave(clave::aplicacion, clave::ticket, "Puerto", "t");
    EXPECT_EQ(c.LeeRegistro("SOFTWARE\\Orvanta\\Miscelaneas\\", "Puerto", {}), "m");
    EXPECT_EQ(c.LeeRegistro("SOFTWARE\\\\Orvanta\\\\Ticket\\\\", "Puerto", {}), "t");
    EXPECT_EQ(c.LeeRegistro("SOFTWARE\\Orvanta\\Configuracion\\", "Puerto", "def"), "def");
    // Otra aplicación va a su propio archivo.
    c.GrabaClave("Otra", clave::ticket, "Puerto", "x");
    EXPECT_TRUE(QFile::exists(QDir(datos()).filePath("Otra.ini")));
    EXPECT_EQ(c.LeeClave(clave::aplicacion, clave::ticket, "Puerto"), "t");
}

TEST_F(ConfiguracionTest, EscrituraRechazadaEsSilenciosaYQuedaElValorAnterior) {
    const Configuracion c = conf();
    c.graba(clave::miscelaneas, "IdRed", "5");
    ponUsuario(clave::miscelaneas, "Pais", "CHILE");
    orv::prueba::SoloLectura bloqueo(c.archivoMaquina());
    if (!bloqueo.vale()) GTEST_SKIP() << "este sistema de archivos no permite quitar la escritura";
    c.graba(clave::miscelaneas, "IdRed", "9");
    EXPECT_EQ(c.lee(clave::miscelaneas, "IdRed"), "5");
    EXPECT_EQ(conf().lee(clave::miscelaneas, "IdRed"), "5");
    // La promoción tampoco puede escribir: el valor se devuelve igual y sigue sin estar en la máquina.
    EXPECT_EQ(c.lee(clave::miscelaneas, "Pais"), "CHILE");
    EXPECT_FALSE(enMaquina(clave::miscelaneas, "Pais").isValid());
}
