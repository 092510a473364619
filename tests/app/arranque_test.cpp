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
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <clocale>
#include <functional>
#include <gtest/gtest.h>

using namespace orv;

namespace {

SeparadoresRegionales sep(const char* dec, const char* miles, const char* decMon, const char* milesMon,
                          const char* fecha = "/") {
    return {dec, fecha, ":", decMon, "$", miles, milesMon};
}

// Anota cada paso; un mensaje como "mensaje <título> [<icono>]" y su texto aparte, igual que las preguntas.
class InterfazFalsa : public InterfazArranque {
public:
    QStringList pasos;
    QStringList textos;
    bool respuesta = true;
    int ancho = 1280;
    SeparadoresRegionales regional = sep(".", ",", ".", ",");
    bool ingresa = true;

    void mensaje(const QString& texto, const QString& titulo, Icono icono) override {
        const char* iconos[] = {"", "i", "!", "?", "stop"};
        pasos << QStringLiteral("mensaje %1 [%2]").arg(titulo, iconos[int(icono)]);
        textos << texto;
    }
    bool pregunta(const QString& texto, const QString& titulo) override {
        pasos << "pregunta " + titulo;
        textos << texto;
        return respuesta;
    }
    void muestraPortada() override { pasos << "portada"; }
    int anchoPantalla() override {
        pasos << "pantalla";
        return ancho;
    }
    SeparadoresRegionales separadoresRegionales() override {
        pasos << "regional";
        return regional;
    }
    bool login(Almacen&, EstadoAplicacion& e) override {
        pasos << "login";
        e.idUsuarioActual = ingresa ? 1 : 0;
        return ingresa;
    }
    void muestraVentana(Almacen&, EstadoAplicacion&, const Configuracion&) override { pasos << "ventana"; }
};

// Una carpeta de datos nueva, su configuración y una interfaz que anota.
struct Entorno {
    QTemporaryDir dir;
    QString datos = dir.filePath("datos");
    InterfazFalsa ui;
    RelojFijo reloj{QDateTime(QDate(2026, 11, 22), QTime(10, 15, 37))};
    std::unique_ptr<QLockFile> bloqueo;

    Configuracion conf() const { return Configuracion(datos, dir.filePath("usuario.conf")); }
    QString base() const { return QDir(datos).filePath(kArchivoAlmacen); }
    // La carpeta de datos ya creada, y su BASE.db.
    QString baseEnCarpeta() const {
        QDir().mkpath(datos);
        return base();
    }
    QVariant enMaquina(const QString& clave) const {
        return QSettings(QDir(datos).filePath("Orvanta.ini"), QSettings::IniFormat).value(clave::miscelaneas + '/' + clave);
    }
    // Un archivo donde iría una carpeta: la carpeta de datos no se puede crear.
    void tapaCarpeta() {
        QFile(dir.filePath("archivo")).open(QIODevice::WriteOnly);
        datos = dir.filePath("archivo/datos");
    }
};

std::string junta(const QStringList& l) { return l.join(", ").toStdString(); }
QString exacto(const QString& texto) { return "^" + QRegularExpression::escape(texto) + "$"; }

QByteArray contenido(const QString& ruta) {
    QFile f(ruta);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

const QStringList kSinTropiezos = {"portada", "pantalla", "regional", "login", "ventana"};
const QString kSinAbrir = "^Error al intentar abrir la base de datos del sistema, Error detectado :.+";

} // namespace

// Lo grabado en Miscelaneas ("~": nada), lo que el arranque deja en memoria y lo que queda grabado.
TEST(Arranque, LeeLaConfiguracionYCreaElAlmacenSoloParaElDueno) {
    const char* claves[] = {"IdRed", "ClaveImpositiva", "MascaraMoneda", "Pais", "NroCifrasArticulo", "NroCifrasRubro",
                            "FormaCalculoVIP"};
    const struct {
        QStringList grabados;
        const char* estado;
        const char* quedan;
    } casos[] = {
        // Terminal por los segundos del reloj, grabada; los predeterminados del país sólo en memoria.
        {{"~", "~", "~", "~", "~", "~", "~"}, "37, CUIT, ###,###,##0.00, ARGENTINA, 4, 2", "37, , , , , , P"},
        {{"5", "RUT", "#,##0.000", "URUGUAY", "", "3", "C"}, "5, RUT, #,##0.000, URUGUAY, 4, 3",
         "5, RUT, #,##0.000, URUGUAY, , 3, C"},
        // No numérico o fuera de rango: el predeterminado, y la configuración queda como estaba.
        {{"~", "", "~", "~", "cuatro", "70000", "~"}, "37, CUIT, ###,###,##0.00, ARGENTINA, 4, 2",
         "37, , , , cuatro, 70000, P"},
    };
    for (const auto& k : casos) {
        Entorno e;
        const Configuracion c = e.conf();
        for (int i = 0; i < 7; ++i)
            if (k.grabados[i] != "~") c.graba(clave::miscelaneas, claves[i], k.grabados[i]);
        Arranque a(c, e.reloj, e.ui);
        ASSERT_EQ(a.ejecuta(), FinArranque::Ventana);
        EXPECT_EQ(junta(e.ui.pasos), junta(kSinTropiezos));
        ASSERT_NE(a.almacen(), nullptr);
        EXPECT_EQ(versionEsquema(*a.almacen()), pasosDelSistema().back().numero);
        EXPECT_EQ(a.estado().almacenAbierto, e.base());
        const EstadoAplicacion& s = a.estado();
        EXPECT_EQ(junta({QString::number(s.IdRed), s.ClaveImpositiva, s.MascaraMoneda, s.Pais,
                         QString::number(s.NroCifrasArticulo), QString::number(s.NroCifrasRubro)}),
                  k.estado);
        QStringList quedan;
        for (const char* clave : claves) quedan << e.enMaquina(clave).toString();
        EXPECT_EQ(junta(quedan), k.quedan);

        // Carpeta, almacén con sus diarios y configuración sólo para el dueño (los bits "User" repiten los del dueño).
        const auto modo = [](const QString& ruta) {
            return QFileInfo(ruta).permissions() & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
        };
        EXPECT_EQ(modo(e.datos), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        for (const char* archivo : {"BASE.db", "BASE.db-wal", "BASE.db-shm", "Orvanta.ini"})
            EXPECT_EQ(modo(QDir(e.datos).filePath(archivo)), QFile::ReadOwner | QFile::WriteOwner) << archivo;
    }
}

TEST(Arranque, ReglaDelNumeroDeTerminal) {
    const struct {
        QString guardado;
        int segundo;
        qint32 esperado;
        QString queda;
    } casos[] = {
        {QString(), 0, 0, "0"}, // segundo 0: terminal 0, válida
        {QString(), 59, 59, "59"},       {"abc", 12, 12, "12"}, {"0", 37, 0, "0"}, // "0" se queda
        {" 17 ", 5, 17, " 17 "},          {"12a", 8, 8, "8"},
        {"99999999999", 44, 44, "44"}, // no cabe en 32 bits
    };
    for (const auto& k : casos) {
        QTemporaryDir d;
        const Configuracion c(d.path(), d.filePath("u.conf"));
        if (!k.guardado.isNull()) c.graba(clave::miscelaneas, "IdRed", k.guardado);
        const RelojFijo r(QDateTime(QDate(2026, 1, 1), QTime(9, 30, k.segundo)));
        EXPECT_EQ(Arranque::LeeIdRed(c, r), k.esperado) << qPrintable(k.guardado);
        EXPECT_EQ(c.lee(clave::miscelaneas, "IdRed"), k.queda) << qPrintable(k.guardado);
    }
}

// Cada camino de la secuencia: qué se prepara, cómo termina, qué pasos da y qué textos muestra
// (expresiones que cada texto cumple entero, en orden).
TEST(Arranque, CadaCaminoTerminaConSusPasosYSusMensajes) {
    const QString vacio = "^El archivo de la base de datos del sistema está vacío.+";
    const int conocido = pasosDelSistema().back().numero;
    const struct {
        const char* nombre;
        std::function<void(Entorno&)> prepara;
        FinArranque fin;
        int codigo;
        QStringList pasos;
        QStringList textos;
        std::function<void(Entorno&)> comprueba = nullptr;
    } casos[] = {
        {"segunda instancia", [](Entorno& e) {
             e.baseEnCarpeta();
             e.bloqueo = std::make_unique<QLockFile>(QDir(e.datos).filePath(kArchivoBloqueo));
             ASSERT_TRUE(e.bloqueo->tryLock(0));
         }, FinArranque::OtraInstancia, 2, {"mensaje Error [stop]"}, {exacto(kMensajeOtraInstancia)},
         [](Entorno& e) { EXPECT_FALSE(QFile::exists(e.base())); }},
        {"bloqueo de un proceso que ya terminó", [](Entorno& e) {
             // El bloqueo con el formato real, pero con el número de un proceso muerto.
             e.baseEnCarpeta();
             const QString ruta = QDir(e.datos).filePath(kArchivoBloqueo);
             QByteArray bloqueo;
             {
                 QLockFile l(ruta);
                 ASSERT_TRUE(l.tryLock(0));
                 bloqueo = contenido(ruta);
             }
             QProcess p;
             p.start("/bin/true", {});
             ASSERT_TRUE(p.waitForStarted(5000));
             const qint64 muerto = p.processId();
             ASSERT_TRUE(p.waitForFinished(5000));
             QFile f(ruta);
             ASSERT_TRUE(f.open(QIODevice::WriteOnly));
             f.write(QByteArray::number(muerto) + bloqueo.mid(bloqueo.indexOf('\n')));
         }, FinArranque::Ventana, 0, kSinTropiezos, {}},
        {"carpeta de datos inutilizable", [](Entorno& e) { e.tapaCarpeta(); }, FinArranque::SinAlmacen, 1,
         {"mensaje La conexión falló [!]", "portada", "mensaje Error [stop]"},
         {"^No se puede conectar a la base de datos!$", kSinAbrir + "\nNumero : .*\nModulo : Orvanta\nLínea : 9$"}},
        {"servidor PostgreSQL que no responde", [](Entorno& e) {
             e.conf().graba(clave::configuracion, "BaseDatos", "postgresql://x@127.0.0.1:1/nada");
         }, FinArranque::SinAlmacen, 1, {"portada", "mensaje Error [stop]"}, {kSinAbrir + "\n.+"},
         [](Entorno& e) { EXPECT_FALSE(QFile::exists(e.base())); }},
        {"almacén dañado", [](Entorno& e) {
             prueba::CreaAlmacenDanado(e.baseEnCarpeta());
             QFile::copy(e.base(), e.dir.filePath("copia"));
         }, FinArranque::SinAlmacen, 1, {"portada", "mensaje Error [stop]"},
         {"^La base de datos del sistema está dañada.+"},
         [](Entorno& e) {
             // Qué archivo, y cómo volver: la copia de respaldo en la carpeta de datos; el archivo no se toca.
             const QString& m = e.ui.textos.value(0);
             EXPECT_TRUE(m.contains(e.base()) && m.contains("ORVBACK_") && m.contains("carpeta de datos " + e.datos))
                 << qPrintable(m);
             EXPECT_EQ(contenido(e.base()), contenido(e.dir.filePath("copia")));
         }},
        {"almacén de un programa más nuevo", [conocido](Entorno& e) {
             auto previo = Almacen::abreSQLite(e.baseEnCarpeta());
             actualizaEsquema(*previo);
             previo->ejecuta("INSERT INTO PasosEsquema (Paso) VALUES (?)", {conocido + 4});
         }, FinArranque::SinActualizar, 1, {"portada", "mensaje Error [stop]"},
         {QStringLiteral(".*versión %1 del esquema.*hasta la versión %2.*").arg(conocido + 4).arg(conocido)},
         [conocido](Entorno& e) { EXPECT_EQ(versionEsquema(*Almacen::abreSQLite(e.base())), conocido + 4); }},
        {"actualización que falla", [](Entorno& e) {
             // Un almacén viejo con una vista que choca con una tabla del esquema: el paso se deshace entero.
             Almacen::abreSQLite(e.baseEnCarpeta())->ejecuta("CREATE VIEW Articulos AS SELECT 1 AS x");
         }, FinArranque::SinActualizar, 1, {"portada", "mensaje Error [stop]"},
         {"^Error al actualizar la base de datos del sistema, Error detectado :.+Línea : 10$"},
         [](Entorno& e) {
             const auto a = Almacen::abreSQLite(e.base());
             EXPECT_EQ(a->valor("SELECT count(*) FROM sqlite_master WHERE type = 'table'").toInt(), 0);
         }},
        {"BASE.db vacío, No", [](Entorno& e) {
             QFile(e.baseEnCarpeta()).open(QIODevice::WriteOnly);
             e.ui.respuesta = false;
         }, FinArranque::AlmacenVacio, 0, {"portada", "pregunta Atención"}, {vacio},
         [](Entorno& e) {
             EXPECT_EQ(e.ui.textos.value(0), Arranque::textoAlmacenVacio(e.base()));
             EXPECT_EQ(QFileInfo(e.base()).size(), 0) << "el archivo queda como estaba";
         }},
        {"BASE.db vacío, Sí", [](Entorno& e) {
             QFile(e.baseEnCarpeta()).open(QIODevice::WriteOnly);
         }, FinArranque::Ventana, 0, QStringList{"portada", "pregunta Atención"} + kSinTropiezos.mid(1), {vacio},
         [](Entorno& e) { EXPECT_GT(QFileInfo(e.base()).size(), 0); }},
        {"pantalla angosta", [](Entorno& e) { e.ui.ancho = 799; }, FinArranque::Ventana, 0,
         {"portada", "pantalla", "mensaje Visualización de Video [!]", "regional", "login", "ventana"},
         {exacto(kMensajePantalla)}},
        {"regional rechazado", [](Entorno& e) {
             e.ui.regional = sep(".", ".", ".", ",");
             e.ui.respuesta = false;
         }, FinArranque::RegionalRechazado, 0, {"portada", "pantalla", "regional", "pregunta "},
         {exacto(TextoProblemaRegional())}},
        {"regional aceptado", [](Entorno& e) { e.ui.regional = sep(",", ".", ",", "."); }, FinArranque::Ventana, 0,
         {"portada", "pantalla", "regional", "pregunta ", "login", "ventana"},
         {exacto(TextoProblemaRegional())}},
        {"pantalla justa y regional que pasa", [](Entorno& e) {
             e.ui.ancho = 800;
             e.ui.regional = sep(";", " ", ";", " ", "-");
         }, FinArranque::Ventana, 0, kSinTropiezos, {}},
        {"sin ingreso", [](Entorno& e) { e.ui.ingresa = false; }, FinArranque::SinIngreso, 0, kSinTropiezos.mid(0, 4), {}},
    };
    for (const auto& k : casos) {
        SCOPED_TRACE(k.nombre);
        Entorno e;
        k.prepara(e);
        if (::testing::Test::HasFatalFailure()) return;
        const Configuracion c = e.conf();
        QElapsedTimer reloj;
        reloj.start();
        {
            Arranque a(c, e.reloj, e.ui);
            const FinArranque fin = a.ejecuta();
            EXPECT_EQ(fin, k.fin);
            EXPECT_EQ(codigoSalida(fin), k.codigo);
        }
        EXPECT_LT(reloj.elapsed(), 4000) << "nada se cuelga";
        EXPECT_EQ(junta(e.ui.pasos), junta(k.pasos));
        ASSERT_EQ(e.ui.textos.size(), k.textos.size());
        for (int i = 0; i < k.textos.size(); ++i) {
            const QRegularExpression patron(k.textos[i], QRegularExpression::DotMatchesEverythingOption);
            EXPECT_TRUE(patron.match(e.ui.textos[i]).hasMatch()) << qPrintable(e.ui.textos[i]);
        }
        if (k.comprueba) k.comprueba(e);
    }
}

TEST(Arranque, ElBloqueoDuraLoQueDuraElArranque) {
    Entorno e, luego;
    const Configuracion c = e.conf();
    {
        Arranque a(c, e.reloj, e.ui);
        ASSERT_EQ(a.ejecuta(), FinArranque::Ventana);
        InterfazFalsa segunda;
        EXPECT_EQ(Arranque(c, e.reloj, segunda).ejecuta(), FinArranque::OtraInstancia);
    }
    // Cerrado el primero, se puede volver a arrancar.
    EXPECT_EQ(Arranque(c, e.reloj, luego.ui).ejecuta(), FinArranque::Ventana);
}

TEST(Arranque, ConPostgreSQLNoSeMiraLaCarpetaYSeActualizaElServidor) {
    if (!prueba::hayPostgreSQL()) GTEST_SKIP() << "ORVANTA_PRUEBA_PG sin definir";
    prueba::AlmacenDePrueba servidor(prueba::Motor::PostgreSQL);
    // La carpeta de datos no se puede crear; el URI llega por la raíz de usuario.
    Entorno e;
    e.tapaCarpeta();
    QSettings(e.dir.filePath("usuario.conf"), QSettings::IniFormat).setValue("Configuracion/BaseDatos", servidor.destino());
    const Configuracion c = e.conf();
    Arranque a(c, e.reloj, e.ui);
    ASSERT_EQ(a.ejecuta(), FinArranque::Ventana);
    EXPECT_EQ(junta(e.ui.pasos), junta(kSinTropiezos));
    ASSERT_NE(a.almacen(), nullptr);
    EXPECT_TRUE(a.almacen()->esPostgreSQL());
    EXPECT_EQ(versionEsquema(*a.almacen()), pasosDelSistema().back().numero);
}

TEST(FormatoRegional, SoloImportanLosSeparadoresDecimalesYDeMiles) {
    const std::pair<SeparadoresRegionales, bool> casos[] = {
        // Otro carácter pasa, la fecha no se prueba y puede no haber separador de miles.
        {sep(".", ",", ".", ","), true},  {sep(";", " ", ";", " "), true},  {sep(".", ",", ".", ",", "-"), true},
        {sep(".", "", ".", ""), true},
        // Miles "."; formato alemán; decimal ","; decimal de moneda ","; miles de moneda ".".
        {sep(".", ".", ".", ","), false}, {sep(",", ".", ",", "."), false}, {sep(",", " ", ".", ","), false},
        {sep(".", ",", ",", ","), false}, {sep(".", ",", ".", "."), false},
    };
    for (size_t i = 0; i < std::size(casos); ++i) EXPECT_EQ(FormatoRegionalValido(casos[i].first), casos[i].second) << i;
}

TEST(FormatoRegional, LaLecturaDelSistemaNoCambiaElFormatoNumericoDelProceso) {
    std::setlocale(LC_NUMERIC, "C");
    const SeparadoresRegionales s = LeeRegionalSistema();
    EXPECT_FALSE(s.decimal.isEmpty() || s.decimalMoneda.isEmpty());
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.2f", 1.5);
    EXPECT_STREQ(buf, "1.50");
}
