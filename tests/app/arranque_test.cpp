// Secuencia de arranque conducida con una interfaz falsa: orden de los pasos, mensajes y finales.

#include "app/arranque.h"
#include "apoyo/base_prueba.h"
#include "store/actualizacion.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <clocale>
#include <gtest/gtest.h>

using namespace orv;

namespace {

struct MensajeVisto {
    QString texto;
    QString titulo;
    Icono icono;
};

class InterfazFalsa : public InterfazArranque {
public:
    QStringList pasos;
    QList<MensajeVisto> mensajes;
    QStringList preguntas;
    QStringList titulosPregunta;
    bool respuesta = true;
    int ancho = 1280;
    SeparadoresRegionales regional{QStringLiteral("."), QStringLiteral("/"), QStringLiteral(":"),
                                   QStringLiteral("."), QStringLiteral("$"), QStringLiteral(","),
                                   QStringLiteral(",")};
    bool ingresa = true;

    void mensaje(const QString& texto, const QString& titulo, Icono icono) override {
        pasos << QStringLiteral("mensaje:") + titulo;
        mensajes.append({texto, titulo, icono});
    }
    bool pregunta(const QString& texto, const QString& titulo) override {
        pasos << QStringLiteral("pregunta");
        preguntas << texto;
        titulosPregunta << titulo;
        return respuesta;
    }
    void muestraPortada() override { pasos << QStringLiteral("portada"); }
    int anchoPantalla() override {
        pasos << QStringLiteral("pantalla");
        return ancho;
    }
    SeparadoresRegionales separadoresRegionales() override {
        pasos << QStringLiteral("regional");
        return regional;
    }
    bool login(Almacen&, EstadoAplicacion& e) override {
        pasos << QStringLiteral("login");
        if (!ingresa) return false;
        e.idUsuarioActual = 1;
        e.idNivelActual = 1;
        return true;
    }
    void muestraVentana(Almacen&, EstadoAplicacion&, const Configuracion&) override {
        pasos << QStringLiteral("ventana");
    }
};

const QString kTextoSinAbrir = QStringLiteral("Error al intentar abrir la base de datos del sistema, Error detectado :");

class ArranqueTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dir_.isValid()); }

    QString datos() const { return dir_.filePath(QStringLiteral("datos")); }
    Configuracion conf(const QString& carpeta = {}) const {
        return Configuracion(carpeta.isEmpty() ? datos() : carpeta, dir_.filePath(QStringLiteral("usuario.conf")));
    }
    QVariant enMaquina(const QString& clave, const QString& seccion = clave::miscelaneas) const {
        QSettings s(QDir(datos()).filePath(QStringLiteral("Orvanta.ini")), QSettings::IniFormat);
        s.beginGroup(seccion);
        return s.value(clave);
    }

    QTemporaryDir dir_;
    RelojFijo reloj_{QDateTime(QDate(2026, 11, 22), QTime(10, 15, 37))};
    InterfazFalsa ui_;
};

TEST_F(ArranqueTest, PrimerArranqueRecorreLosPasosEnOrdenYCreaElAlmacen) {
    const Configuracion c = conf();
    Arranque a(c, reloj_, ui_);
    ASSERT_EQ(a.ejecuta(), FinArranque::Ventana);

    EXPECT_EQ(ui_.pasos, (QStringList{"portada", "pantalla", "regional", "login", "ventana"}));
    EXPECT_TRUE(ui_.mensajes.isEmpty());
    ASSERT_NE(a.almacen(), nullptr);
    EXPECT_TRUE(QFile::exists(QDir(datos()).filePath(QStringLiteral("BASE.db"))));
    EXPECT_EQ(versionEsquema(*a.almacen()), static_cast<int>(pasosDelSistema().size()));
    EXPECT_EQ(a.estado().almacenAbierto, QDir(datos()).filePath(QStringLiteral("BASE.db")));

    // Terminal por los segundos del reloj, grabada; los predeterminados del país sólo en memoria.
    EXPECT_EQ(a.estado().IdRed, 37);
    EXPECT_EQ(enMaquina(QStringLiteral("IdRed")).toString(), QStringLiteral("37"));
    EXPECT_EQ(a.estado().ClaveImpositiva, QStringLiteral("CUIT"));
    EXPECT_EQ(a.estado().MascaraMoneda, QStringLiteral("###,###,##0.00"));
    EXPECT_EQ(a.estado().Pais, QStringLiteral("ARGENTINA"));
    EXPECT_FALSE(enMaquina(QStringLiteral("ClaveImpositiva")).isValid());
    EXPECT_FALSE(enMaquina(QStringLiteral("MascaraMoneda")).isValid());
    EXPECT_FALSE(enMaquina(QStringLiteral("Pais")).isValid());
    EXPECT_EQ(a.estado().NroCifrasArticulo, 4);
    EXPECT_EQ(a.estado().NroCifrasRubro, 2);
    EXPECT_EQ(enMaquina(QStringLiteral("FormaCalculoVIP")).toString(), QStringLiteral("P"));

    // Venta en curso con sus valores de partida.
    EXPECT_EQ(a.estado().NombreClienteActual, QStringLiteral("Cons.Final"));
    EXPECT_EQ(a.estado().FormaPagoActual, QStringLiteral("EFVO"));
    EXPECT_EQ(a.estado().idTipoIvaActual, 1);
    EXPECT_TRUE(a.estado().CuponActual.isEmpty());
}

TEST_F(ArranqueTest, ReglaDelNumeroDeTerminal) {
    struct Caso {
        QString guardado;
        int segundo;
        qint32 esperado;
        QString queda;
    };
    const QList<Caso> casos{
        {QString(), 0, 0, QStringLiteral("0")},          // segundo 0: terminal 0, válida
        {QString(), 59, 59, QStringLiteral("59")},
        {QStringLiteral("abc"), 12, 12, QStringLiteral("12")},
        {QStringLiteral("0"), 37, 0, QStringLiteral("0")}, // "0" se queda
        {QStringLiteral(" 17 "), 5, 17, QStringLiteral(" 17 ")},
        {QStringLiteral("12a"), 8, 8, QStringLiteral("8")},
        {QStringLiteral("99999999999"), 44, 44, QStringLiteral("44")}, // no cabe en 32 bits
    };
    for (const Caso& k : casos) {
        QTemporaryDir d;
        const Configuracion c(d.path(), d.filePath(QStringLiteral("u.conf")));
        if (!k.guardado.isNull()) c.graba(clave::miscelaneas, QStringLiteral("IdRed"), k.guardado);
        const RelojFijo r(QDateTime(QDate(2026, 1, 1), QTime(9, 30, k.segundo)));
        EXPECT_EQ(Arranque::LeeIdRed(c, r), k.esperado) << qPrintable(k.guardado);
        EXPECT_EQ(c.lee(clave::miscelaneas, QStringLiteral("IdRed")), k.queda) << qPrintable(k.guardado);
    }
}

TEST_F(ArranqueTest, ValoresDeLaConfiguracionYSusPredeterminados) {
    const Configuracion c = conf();
    c.graba(clave::miscelaneas, QStringLiteral("ClaveImpositiva"), QStringLiteral("RUT"));
    c.graba(clave::miscelaneas, QStringLiteral("Pais"), QStringLiteral("URUGUAY"));
    c.graba(clave::miscelaneas, QStringLiteral("NroCifrasArticulo"), QString());
    c.graba(clave::miscelaneas, QStringLiteral("NroCifrasRubro"), QStringLiteral("3"));
    c.graba(clave::miscelaneas, QStringLiteral("FormaCalculoVIP"), QStringLiteral("C"));
    Arranque a(c, reloj_, ui_);
    ASSERT_EQ(a.ejecuta(), FinArranque::Ventana);
    EXPECT_EQ(a.estado().ClaveImpositiva, QStringLiteral("RUT"));
    EXPECT_EQ(a.estado().Pais, QStringLiteral("URUGUAY"));
    EXPECT_EQ(a.estado().MascaraMoneda, QStringLiteral("###,###,##0.00"));
    // Vacío: 4, y la configuración sigue vacía.
    EXPECT_EQ(a.estado().NroCifrasArticulo, 4);
    EXPECT_EQ(enMaquina(QStringLiteral("NroCifrasArticulo")).toString(), QString());
    EXPECT_EQ(a.estado().NroCifrasRubro, 3);
    EXPECT_EQ(enMaquina(QStringLiteral("FormaCalculoVIP")).toString(), QStringLiteral("C"));

    // No numérico o fuera de rango: el predeterminado, y la configuración queda como estaba.
    InterfazFalsa otra;
    const Configuracion c2 = conf(dir_.filePath(QStringLiteral("otra")));
    c2.graba(clave::miscelaneas, QStringLiteral("NroCifrasArticulo"), QStringLiteral("cuatro"));
    c2.graba(clave::miscelaneas, QStringLiteral("NroCifrasRubro"), QStringLiteral("70000"));
    Arranque b(c2, reloj_, otra);
    ASSERT_EQ(b.ejecuta(), FinArranque::Ventana);
    EXPECT_EQ(b.estado().NroCifrasArticulo, 4);
    EXPECT_EQ(b.estado().NroCifrasRubro, 2);
    EXPECT_EQ(c2.lee(clave::miscelaneas, QStringLiteral("NroCifrasArticulo")), QStringLiteral("cuatro"));
}

TEST_F(ArranqueTest, SegundaInstanciaAvisaYTerminaSinPortada) {
    QDir().mkpath(datos());
    QLockFile primero(QDir(datos()).filePath(kArchivoBloqueo));
    ASSERT_TRUE(primero.tryLock(0));

    const Configuracion c = conf();
    Arranque a(c, reloj_, ui_);
    const FinArranque fin = a.ejecuta();
    EXPECT_EQ(fin, FinArranque::OtraInstancia);
    EXPECT_NE(codigoSalida(fin), 0);
    EXPECT_EQ(ui_.pasos, QStringList{"mensaje:Error"});
    ASSERT_EQ(ui_.mensajes.size(), 1);
    EXPECT_EQ(ui_.mensajes[0].texto,
              QStringLiteral("Error, el programa ya está ejecutándose, por favor maximice la ventana correspondiente !!"));
    EXPECT_EQ(ui_.mensajes[0].icono, Icono::Stop);
    EXPECT_EQ(a.almacen(), nullptr);
    EXPECT_FALSE(QFile::exists(QDir(datos()).filePath(QStringLiteral("BASE.db"))));
}

TEST_F(ArranqueTest, ElBloqueoDuraLoQueDuraElArranqueYOtraCarpetaNoChoca) {
    const Configuracion c = conf();
    {
        Arranque a(c, reloj_, ui_);
        ASSERT_EQ(a.ejecuta(), FinArranque::Ventana);
        // Mientras vive el primero, otro sobre la misma carpeta no arranca...
        InterfazFalsa otra;
        Arranque b(c, reloj_, otra);
        EXPECT_EQ(b.ejecuta(), FinArranque::OtraInstancia);
        // ...pero sí sobre otra carpeta de datos.
        InterfazFalsa tercera;
        const Configuracion c2 = conf(dir_.filePath(QStringLiteral("otros")));
        Arranque d(c2, reloj_, tercera);
        EXPECT_EQ(d.ejecuta(), FinArranque::Ventana);
    }
    // Cerrado el primero, se puede volver a arrancar.
    InterfazFalsa luego;
    Arranque e(c, reloj_, luego);
    EXPECT_EQ(e.ejecuta(), FinArranque::Ventana);
}

TEST_F(ArranqueTest, UnBloqueoDejadoPorUnProcesoMuertoNoImpideArrancar) {
    QDir().mkpath(datos());
    const QString ruta = QDir(datos()).filePath(kArchivoBloqueo);
    // Bloqueo con el formato real, pero de un proceso que ya terminó.
    QByteArray contenido;
    {
        QLockFile l(ruta);
        ASSERT_TRUE(l.tryLock(0));
        QFile f(ruta);
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        contenido = f.readAll();
        l.unlock();
    }
    QProcess p;
    p.start(QStringLiteral("/bin/true"), {});
    ASSERT_TRUE(p.waitForStarted(5000));
    const qint64 muerto = p.processId();
    ASSERT_TRUE(p.waitForFinished(5000));
    const int fin = contenido.indexOf('\n');
    ASSERT_GT(fin, 0);
    contenido = QByteArray::number(muerto) + contenido.mid(fin);
    {
        QFile f(ruta);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(contenido);
    }
    const Configuracion c = conf();
    Arranque a(c, reloj_, ui_);
    EXPECT_EQ(a.ejecuta(), FinArranque::Ventana);
    EXPECT_TRUE(ui_.mensajes.isEmpty());
}

TEST_F(ArranqueTest, CarpetaDeDatosInutilizableDaLosDosMensajesEnOrdenYTermina) {
    // Una carpeta que no se puede crear porque en su camino hay un archivo.
    QFile tapon(dir_.filePath(QStringLiteral("archivo")));
    ASSERT_TRUE(tapon.open(QIODevice::WriteOnly));
    tapon.close();
    const Configuracion c = conf(dir_.filePath(QStringLiteral("archivo/datos")));

    Arranque a(c, reloj_, ui_);
    const FinArranque fin = a.ejecuta();
    EXPECT_EQ(fin, FinArranque::SinAlmacen);
    EXPECT_EQ(codigoSalida(fin), 1);
    EXPECT_EQ(ui_.pasos, (QStringList{"mensaje:La conexión falló", "portada", "mensaje:Error"}));
    ASSERT_EQ(ui_.mensajes.size(), 2);
    EXPECT_EQ(ui_.mensajes[0].texto, QStringLiteral("No se puede conectar a la base de datos!"));
    EXPECT_EQ(ui_.mensajes[0].icono, Icono::Exclamacion);
    EXPECT_TRUE(ui_.mensajes[1].texto.startsWith(kTextoSinAbrir)) << qPrintable(ui_.mensajes[1].texto);
    EXPECT_TRUE(ui_.mensajes[1].texto.contains(QStringLiteral("\nNumero : ")));
    EXPECT_TRUE(ui_.mensajes[1].texto.endsWith(QStringLiteral("\nModulo : Orvanta\nLínea : 9")));
    EXPECT_EQ(ui_.mensajes[1].icono, Icono::Stop);
    EXPECT_EQ(a.almacen(), nullptr);
}

TEST_F(ArranqueTest, ServidorPostgreSQLQueNoRespondeDaElMensajeYTerminaEnSeguida) {
    const Configuracion c = conf();
    c.graba(clave::configuracion, QStringLiteral("BaseDatos"), QStringLiteral("postgresql://x@127.0.0.1:1/nada"));
    Arranque a(c, reloj_, ui_);
    QElapsedTimer t;
    t.start();
    EXPECT_EQ(a.ejecuta(), FinArranque::SinAlmacen);
    EXPECT_LT(t.elapsed(), 4000);
    EXPECT_EQ(ui_.pasos, (QStringList{"portada", "mensaje:Error"}));
    ASSERT_EQ(ui_.mensajes.size(), 1);
    EXPECT_TRUE(ui_.mensajes[0].texto.startsWith(kTextoSinAbrir)) << qPrintable(ui_.mensajes[0].texto);
    // La descripción del controlador viene detrás, no vacía.
    EXPECT_GT(ui_.mensajes[0].texto.indexOf(QLatin1Char('\n')), kTextoSinAbrir.size());
    EXPECT_FALSE(QFile::exists(QDir(datos()).filePath(QStringLiteral("BASE.db"))));
}

TEST_F(ArranqueTest, AlmacenDanadoSeInformaConElCaminoDeVueltaYNoSeToca) {
    QDir().mkpath(datos());
    const QString ruta = QDir(datos()).filePath(QStringLiteral("BASE.db"));
    prueba::CreaAlmacenDanado(ruta);
    const auto contenido = [&ruta] {
        QFile f(ruta);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    };
    const QByteArray antes = contenido();
    const Configuracion c = conf();
    {
        Arranque a(c, reloj_, ui_);
        EXPECT_EQ(a.ejecuta(), FinArranque::SinAlmacen);
    }
    EXPECT_EQ(ui_.pasos, (QStringList{"portada", "mensaje:Error"}));
    ASSERT_EQ(ui_.mensajes.size(), 1);
    // Qué archivo, y cómo volver: la copia de respaldo en la carpeta de datos, con el nombre de siempre.
    const QString& m = ui_.mensajes[0].texto;
    EXPECT_TRUE(m.startsWith(QStringLiteral("La base de datos del sistema está dañada"))) << qPrintable(m);
    EXPECT_TRUE(m.contains(ruta) && m.contains(QStringLiteral("ORVBACK_")) &&
                m.contains(QStringLiteral("carpeta de datos ") + datos()))
        << qPrintable(m);
    EXPECT_EQ(contenido(), antes) << "sin actualizar ni filas de partida";
}

TEST_F(ArranqueTest, BaseVaciaPreguntaAntesDeVolverseUnAlmacenNuevo) {
    const QString ruta = QDir(datos()).filePath(QStringLiteral("BASE.db"));
    for (const bool si : {false, true}) {
        QDir().mkpath(datos());
        QFile(ruta).open(QIODevice::WriteOnly);
        InterfazFalsa ui;
        ui.respuesta = si;
        const Configuracion c = conf();
        Arranque a(c, reloj_, ui);
        EXPECT_EQ(a.ejecuta(), si ? FinArranque::Ventana : FinArranque::AlmacenVacio);
        ASSERT_EQ(ui.preguntas.size(), 1);
        EXPECT_EQ(ui.preguntas[0], Arranque::textoAlmacenVacio(ruta));
        EXPECT_EQ(QFileInfo(ruta).size() == 0, !si) << "con No, el archivo queda como estaba";
    }
}

TEST_F(ArranqueTest, AlmacenDeUnProgramaMasNuevoSeRechazaConLasDosVersiones) {
    QDir().mkpath(datos());
    const QString ruta = QDir(datos()).filePath(QStringLiteral("BASE.db"));
    const int conocido = pasosDelSistema().back().numero;
    {
        auto previo = Almacen::abreSQLite(ruta);
        actualizaEsquema(*previo);
        previo->ejecuta(QStringLiteral("INSERT INTO PasosEsquema (Paso) VALUES (?)"), {conocido + 4});
    }
    const Configuracion c = conf();
    {
        Arranque a(c, reloj_, ui_);
        EXPECT_EQ(a.ejecuta(), FinArranque::SinActualizar);
    }
    ASSERT_EQ(ui_.mensajes.size(), 1);
    const QString& m = ui_.mensajes[0].texto;
    EXPECT_TRUE(m.contains(QStringLiteral("versión %1 del esquema").arg(conocido + 4)) &&
                m.contains(QStringLiteral("hasta la versión %1").arg(conocido)))
        << qPrintable(m);
    EXPECT_EQ(versionEsquema(*Almacen::abreSQLite(ruta)), conocido + 4);
}

TEST_F(ArranqueTest, CarpetaAlmacenYConfiguracionSonSoloDelDueno) {
    const Configuracion c = conf();
    Arranque a(c, reloj_, ui_);
    ASSERT_EQ(a.ejecuta(), FinArranque::Ventana);
    // Sólo los bits de dueño, grupo y otros (los "User" repiten los del dueño).
    const auto modo = [](const QString& ruta) {
        return QFileInfo(ruta).permissions() & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
    };
    const auto rw = QFile::ReadOwner | QFile::WriteOwner;
    EXPECT_EQ(modo(datos()), rw | QFile::ExeOwner);
    // Con el almacén abierto están también sus diarios.
    for (const char* archivo : {"BASE.db", "BASE.db-wal", "BASE.db-shm", "Orvanta.ini"}) {
        const QString ruta = QDir(datos()).filePath(QString::fromLatin1(archivo));
        ASSERT_TRUE(QFile::exists(ruta)) << archivo;
        EXPECT_EQ(modo(ruta), rw) << archivo;
    }
}

TEST_F(ArranqueTest, ActualizacionQueFallaAvisaTerminaYNoDejaMediaBase) {
    // Un almacén viejo con una tabla que choca con el esquema: el paso se deshace entero.
    QDir().mkpath(datos());
    const QString ruta = QDir(datos()).filePath(QStringLiteral("BASE.db"));
    {
        auto previo = Almacen::abreSQLite(ruta);
        previo->ejecuta(QStringLiteral("CREATE VIEW Articulos AS SELECT 1 AS x"));
    }
    const Configuracion c = conf();
    {
        Arranque a(c, reloj_, ui_);
        EXPECT_EQ(a.ejecuta(), FinArranque::SinActualizar);
    }
    EXPECT_EQ(ui_.pasos, (QStringList{"portada", "mensaje:Error"}));
    ASSERT_EQ(ui_.mensajes.size(), 1);
    EXPECT_TRUE(ui_.mensajes[0].texto.startsWith(
        QStringLiteral("Error al actualizar la base de datos del sistema, Error detectado :")));
    EXPECT_TRUE(ui_.mensajes[0].texto.endsWith(QStringLiteral("Línea : 10")));
    auto despues = Almacen::abreSQLite(ruta);
    EXPECT_EQ(despues->valor(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type = 'table'")).toInt(), 0);
}

TEST_F(ArranqueTest, PantallaAngostaAvisaYSigue) {
    ui_.ancho = 799;
    const Configuracion c = conf();
    Arranque a(c, reloj_, ui_);
    EXPECT_EQ(a.ejecuta(), FinArranque::Ventana);
    EXPECT_EQ(ui_.pasos,
              (QStringList{"portada", "pantalla", "mensaje:Visualización de Video", "regional", "login", "ventana"}));
    ASSERT_EQ(ui_.mensajes.size(), 1);
    EXPECT_EQ(ui_.mensajes[0].texto, kMensajePantalla);
    EXPECT_TRUE(kMensajePantalla.startsWith(QStringLiteral("ATENCION : Para poder visualizar el sistema")));
    EXPECT_EQ(ui_.mensajes[0].icono, Icono::Exclamacion);

    InterfazFalsa justa;
    justa.ancho = 800;
    const Configuracion c2 = conf(dir_.filePath(QStringLiteral("otra")));
    Arranque b(c2, reloj_, justa);
    EXPECT_EQ(b.ejecuta(), FinArranque::Ventana);
    EXPECT_TRUE(justa.mensajes.isEmpty());
}

SeparadoresRegionales sep(const char* dec, const char* miles, const char* decMon, const char* milesMon,
                          const char* fecha = "/") {
    return {QString::fromUtf8(dec),    QString::fromUtf8(fecha),    QStringLiteral(":"), QString::fromUtf8(decMon),
            QStringLiteral("$"),       QString::fromUtf8(miles),    QString::fromUtf8(milesMon)};
}

TEST(FormatoRegional, LasCuatroPruebas) {
    EXPECT_TRUE(FormatoRegionalValido(sep(".", ",", ".", ",")));
    EXPECT_TRUE(FormatoRegionalValido(sep(";", " ", ";", " ")));   // otro carácter pasa
    EXPECT_TRUE(FormatoRegionalValido(sep(".", ",", ".", ",", "-"))); // la fecha no se prueba
    EXPECT_TRUE(FormatoRegionalValido(sep(".", "", ".", "")));      // sin separador de miles
    EXPECT_FALSE(FormatoRegionalValido(sep(".", ".", ".", ",")));   // miles "."
    EXPECT_FALSE(FormatoRegionalValido(sep(",", ".", ",", ".")));   // formato alemán
    EXPECT_FALSE(FormatoRegionalValido(sep(",", " ", ".", ",")));   // decimal ","
    EXPECT_FALSE(FormatoRegionalValido(sep(".", ",", ",", ",")));   // decimal de moneda ","
    EXPECT_FALSE(FormatoRegionalValido(sep(".", ",", ".", ".")));   // miles de moneda "."
}

TEST(FormatoRegional, LaLecturaDelSistemaNoCambiaElFormatoNumericoDelProceso) {
    std::setlocale(LC_NUMERIC, "C");
    const SeparadoresRegionales s = LeeRegionalSistema();
    EXPECT_FALSE(s.decimal.isEmpty());
    EXPECT_FALSE(s.decimalMoneda.isEmpty());
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.2f", 1.5);
    EXPECT_STREQ(buf, "1.50");
}

TEST_F(ArranqueTest, RegionalRechazadoTermina) {
    ui_.regional = sep(".", ".", ".", ",");
    ui_.respuesta = false;
    const Configuracion c = conf();
    Arranque a(c, reloj_, ui_);
    const FinArranque fin = a.ejecuta();
    EXPECT_EQ(fin, FinArranque::RegionalRechazado);
    EXPECT_EQ(codigoSalida(fin), 0);
    EXPECT_EQ(ui_.pasos, (QStringList{"portada", "pantalla", "regional", "pregunta"}));
    ASSERT_EQ(ui_.preguntas.size(), 1);
    EXPECT_EQ(ui_.preguntas[0], TextoProblemaRegional());
    EXPECT_EQ(ui_.titulosPregunta[0], QString());
}

TEST_F(ArranqueTest, RegionalAceptadoSigueUnaSolaVez) {
    ui_.regional = sep(",", ".", ",", ".");
    ui_.respuesta = true;
    const Configuracion c = conf();
    Arranque a(c, reloj_, ui_);
    EXPECT_EQ(a.ejecuta(), FinArranque::Ventana);
    EXPECT_EQ(ui_.pasos, (QStringList{"portada", "pantalla", "regional", "pregunta", "login", "ventana"}));
    EXPECT_EQ(a.estado().regional.decimal, QStringLiteral(","));
}

TEST_F(ArranqueTest, RegionalQuePasaNoPregunta) {
    ui_.regional = sep(";", " ", ";", " ", "-");
    const Configuracion c = conf();
    Arranque a(c, reloj_, ui_);
    EXPECT_EQ(a.ejecuta(), FinArranque::Ventana);
    EXPECT_TRUE(ui_.preguntas.isEmpty());
}

TEST_F(ArranqueTest, SinIngresoNoHayVentana) {
    ui_.ingresa = false;
    const Configuracion c = conf();
    Arranque a(c, reloj_, ui_);
    EXPECT_EQ(a.ejecuta(), FinArranque::SinIngreso);
    EXPECT_EQ(ui_.pasos.last(), QStringLiteral("login"));
}

TEST_F(ArranqueTest, ConPostgreSQLNoSeMiraLaCarpetaYSeActualizaElServidor) {
    if (!prueba::hayPostgreSQL()) GTEST_SKIP() << "ORVANTA_PRUEBA_PG sin definir";
    // Esquema vacío en el servidor de pruebas.
    prueba::AlmacenDePrueba servidor(prueba::Motor::PostgreSQL);
    // La carpeta de datos ni siquiera hace falta para el almacén.
    QFile tapon(dir_.filePath(QStringLiteral("archivo")));
    ASSERT_TRUE(tapon.open(QIODevice::WriteOnly));
    tapon.close();
    const Configuracion c = conf(dir_.filePath(QStringLiteral("archivo/datos")));
    // Orvanta.ini no se puede escribir: el URI llega por la raíz de usuario.
    {
        QSettings u(dir_.filePath(QStringLiteral("usuario.conf")), QSettings::IniFormat);
        u.setValue(QStringLiteral("Configuracion/BaseDatos"), servidor.destino());
    }
    Arranque a(c, reloj_, ui_);
    ASSERT_EQ(a.ejecuta(), FinArranque::Ventana);
    EXPECT_EQ(ui_.pasos, (QStringList{"portada", "pantalla", "regional", "login", "ventana"}));
    ASSERT_NE(a.almacen(), nullptr);
    EXPECT_TRUE(a.almacen()->esPostgreSQL());
    EXPECT_EQ(versionEsquema(*a.almacen()), static_cast<int>(pasosDelSistema().size()));
}

} // namespace
