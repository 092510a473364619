// Respaldo y restauración del almacén y de la configuración.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"

#include "app/configuracion.h"
#include "maintenance/datos_ejemplo.h"
#include "maintenance/respaldo.h"
#include "maintenance/restauracion.h"
#include "store/actualizacion.h"
#include "store/reloj.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QUrlQuery>
#include <atomic>
#include <thread>

using namespace orv;
using namespace orv::prueba;

namespace {

const QDateTime kMomento(QDate(2024, 6, 14), QTime(18, 5, 9));

QStringList tablasDe(const Almacen& a) {
    return a.esPostgreSQL()
               ? Filas(a, QStringLiteral("SELECT table_name FROM information_schema.tables WHERE table_schema = "
                                         "current_schema() AND table_type = 'BASE TABLE' ORDER BY 1"))
               : Filas(a, QStringLiteral("SELECT lower(name) FROM sqlite_master WHERE type = 'table' AND name NOT "
                                         "LIKE 'sqlite%' ORDER BY 1"));
}

// Cada tabla con sus filas y una suma de control de su contenido: "tabla|filas|md5".
QStringList huella(const Almacen& a) {
    QStringList h;
    for (const QString& t : tablasDe(a)) {
        QStringList filas = Filas(a, QStringLiteral("SELECT * FROM ") + t);
        filas.sort();
        h << t + QStringLiteral("|%1|").arg(filas.size()) +
                 QString::fromLatin1(QCryptographicHash::hash(filas.join(u'\n').toUtf8(), QCryptographicHash::Md5).toHex());
    }
    return h;
}

// "tabla|filas" de cada tabla: de una huella, o de lo que dijo una restauración.
QStringList cantidades(const QStringList& huella) {
    QStringList c;
    for (const QString& h : huella) c << h.section(u'|', 0, 1);
    c.sort();
    return c;
}
QStringList cantidades(const FilasPorTabla& filas) {
    QStringList c;
    for (auto it = filas.cbegin(); it != filas.cend(); ++it) c << it.key().toLower() + u'|' + QString::number(it.value());
    c.sort();
    return c;
}

// La huella de un respaldo SQLite, leída de una copia (abrirlo lo pasaría a modo WAL).
QStringList huellaDeArchivo(const QString& respaldo, const QString& carpeta) {
    const QString copia = QDir(carpeta).filePath(QStringLiteral("lectura.db"));
    QFile::remove(copia);
    EXPECT_TRUE(QFile::copy(respaldo, copia));
    auto a = Almacen::abreSQLite(copia);
    return huella(*a);
}

class Respaldos : public PorMotorAlDia {
protected:
    void prepara() override {
        cargaDatosEjemplo(almacen(), reloj_);
        datos_ = base().carpeta() + QStringLiteral("/datos");
        destino_ = base().carpeta() + QStringLiteral("/pendrive");
        QDir().mkpath(datos_);
        QDir().mkpath(destino_);
        conf_ = std::make_unique<Configuracion>(datos_, base().carpeta() + QStringLiteral("/usuario.ini"));
        conf_->graba(clave::miscelaneas, QStringLiteral("IdRed"), QStringLiteral("7"));
        conf_->graba(clave::miscelaneas, QStringLiteral("MascaraMoneda"), QStringLiteral("#,##0.00"));
        if (almacen().esPostgreSQL()) conf_->graba(clave::configuracion, QStringLiteral("BaseDatos"), base().destino());
    }
    RelojFijo reloj_{QDateTime(QDate(2024, 6, 14), QTime(10, 30))};
    QString datos_;
    QString destino_;
    std::unique_ptr<Configuracion> conf_;
};
ORV_AMBOS_MOTORES(Respaldos);

TEST_P(Respaldos, DosArchivosConFechaYHoraYLaConfiguracionTalCual) {
    const ResultadoRespaldo r = HaceRespaldo(almacen(), *conf_, destino_, kMomento);
    const QString ext = almacen().esPostgreSQL() ? QStringLiteral(".dump") : QStringLiteral(".db");
    QStringList archivos = QDir(destino_).entryList(QDir::Files);
    EXPECT_EQ(archivos, (QStringList{QStringLiteral("ORVBACK_20240614180509") + ext, QStringLiteral("ORVREGBACK20240614180509.ini")}));
    EXPECT_EQ(r.almacen, QDir(destino_).filePath(archivos[0]));
    EXPECT_EQ(r.bytes, QFileInfo(r.almacen).size());
    QFile a(r.configuracion), b(conf_->archivoMaquina());
    ASSERT_TRUE(a.open(QIODevice::ReadOnly) && b.open(QIODevice::ReadOnly));
    EXPECT_EQ(a.readAll(), b.readAll());
    EXPECT_EQ(QFileInfo(r.almacen).permissions() & (QFile::ReadOther | QFile::ReadGroup), QFile::Permissions());
    EXPECT_EQ(ExaminaRespaldo(r.almacen).configuracion, r.configuracion);
}

TEST_P(Respaldos, UnDestinoQueNoSirveSeDiceSinEscribirNada) {
    const QString archivo = destino_ + QStringLiteral("/no_es_carpeta");
    QFile f(archivo);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.close();
    const struct {
        QString carpeta;
        QString aviso;
    } casos[] = {
        {QString(), QStringLiteral("Seleccione un destino !")},
        {destino_ + QStringLiteral("/falta"), QStringLiteral("No existe la carpeta de destino ") + destino_ + QStringLiteral("/falta")},
        {archivo, QStringLiteral("No existe la carpeta de destino ") + archivo},
    };
    for (const auto& c : casos)
        EXPECT_EQ(AvisoDe([&] { HaceRespaldo(almacen(), *conf_, c.carpeta, kMomento); }), c.aviso);
    EXPECT_EQ(QDir(destino_).entryList(QDir::Files), QStringList{QStringLiteral("no_es_carpeta")});
}

// El respaldo es una foto de un instante aunque otro puesto escriba mientras se copia: cada
// venta del otro puesto escribe una fila de caja y una de cuenta corriente juntas, y en la copia
// están las dos o ninguna. Restaurarlo deja cada tabla igual a la copia, fila por fila.
TEST_P(Respaldos, MientrasOtroEscribeYRestauradoQuedaIgualALaCopia) {
    if (almacen().esPostgreSQL()) GTEST_SKIP() << "la foto del servidor la da pg_dump";
    // Un almacén de unos 15 MB, para que la copia dure mientras el otro escribe.
    almacen().ejecuta(QStringLiteral(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 50000) "
        "INSERT INTO MovimientoStock (idArticulo, Fecha, Ingreso, Egreso, Observaciones) "
        "SELECT i % 300 + 1, '2024-06-01', i % 7, 0, printf('relleno %0200d', i) FROM n"));
    std::atomic<bool> seguir{true};
    std::atomic<int> escritas{0};
    std::thread otro([&] {
        auto a = Almacen::abreSQLite(base().destino());
        while (seguir) {
            Transaccion t(*a);
            a->ejecuta(QStringLiteral("INSERT INTO Caja (Fecha, Detalles, Ingreso) VALUES ('2024-06-14', 'otro puesto', 10)"));
            a->ejecuta(QStringLiteral("INSERT INTO Comisiones (idVendedor, Fecha, Tipo, Comision) VALUES (2, '2024-06-14', 'otro puesto', 10)"));
            t.confirmar();
            ++escritas;
        }
    });
    const int antes = escritas;
    const ResultadoRespaldo r = HaceRespaldo(almacen(), *conf_, destino_, kMomento);
    const int durante = escritas - antes;
    seguir = false;
    otro.join();
    EXPECT_GT(durante, 0) << "el otro puesto no llegó a escribir durante la copia";

    const QString control = QDir(base().carpeta()).filePath(QStringLiteral("control.db"));
    ASSERT_TRUE(QFile::copy(r.almacen, control));
    auto copia = Almacen::abreSQLite(control);
    EXPECT_EQ(Filas(*copia, QStringLiteral("PRAGMA integrity_check")), QStringList{QStringLiteral("ok")});
    EXPECT_EQ(copia->valor(QStringLiteral("SELECT count(*) FROM Caja WHERE Detalles = 'otro puesto'")).toInt(),
              copia->valor(QStringLiteral("SELECT count(*) FROM Comisiones WHERE Tipo = 'otro puesto'")).toInt());
    copia.reset();
    const QStringList esperada = huellaDeArchivo(r.almacen, base().carpeta());

    // El almacén sigue cambiando; la restauración lo deja como la copia y guarda el de antes.
    almacen().ejecuta(QStringLiteral("DELETE FROM Articulos WHERE idArticulo <= 10"));
    almacen().ejecuta(QStringLiteral("UPDATE Vendedores SET PuntosVIP = 99"));
    const QStringList reemplazada = huella(almacen());
    const ResultadoRestauracion hecha =
        Restaura(almacen(), *conf_, r.almacen, false, kMomento.addSecs(60));
    EXPECT_EQ(huella(almacen()), esperada);
    EXPECT_EQ(cantidades(hecha.filas), cantidades(esperada));
    EXPECT_EQ(QFileInfo(hecha.respaldoPrevio).fileName(), QStringLiteral("ORVBACK_20240614180609.db"));
    EXPECT_EQ(huellaDeArchivo(hecha.respaldoPrevio, base().carpeta()), reemplazada);
    EXPECT_FALSE(QFileInfo::exists(base().destino() + QStringLiteral(".restaura")));
}

TEST_P(Respaldos, LaConfiguracionVuelveConLaTerminalYElAlmacenDeEstaMaquina) {
    const ResultadoRespaldo r = HaceRespaldo(almacen(), *conf_, destino_, kMomento);
    conf_->graba(clave::miscelaneas, QStringLiteral("MascaraMoneda"), QStringLiteral("###0"));
    conf_->graba(clave::miscelaneas, QStringLiteral("IdRed"), QStringLiteral("12"));
    conf_->graba(clave::miscelaneas, QStringLiteral("Pais"), QStringLiteral("URUGUAY"));
    Restaura(almacen(), *conf_, r.almacen, true, kMomento.addSecs(5));
    const auto valores = [&] {
        QStringList v;
        for (const char* c : {"MascaraMoneda", "IdRed", "Pais"}) v << conf_->lee(clave::miscelaneas, QString::fromLatin1(c));
        v << conf_->lee(clave::configuracion, QStringLiteral("BaseDatos"));
        return v;
    };
    EXPECT_EQ(valores(), (QStringList{QStringLiteral("#,##0.00"), QStringLiteral("12"), QString(),
                                      almacen().esPostgreSQL() ? base().destino() : QString()}));
}

// Un archivo que no es un respaldo de este programa no se restaura, y el almacén queda como estaba.
TEST_P(Respaldos, UnArchivoAjenoSeRechaza) {
    if (almacen().esPostgreSQL()) GTEST_SKIP() << "los archivos SQLite se prueban una vez";
    const QDir d(destino_);
    const auto escribe = [&](const char* nombre, const QByteArray& contenido) {
        QFile f(d.filePath(QString::fromLatin1(nombre)));
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(contenido);
        return f.fileName();
    };
    const QString texto = escribe("ORVBACK_20240101000000.db", "Hola, esto es una planilla\n");
    const QString vacio = escribe("vacio.db", {});
    {
        auto ajena = Almacen::abreSQLite(d.filePath(QStringLiteral("ajena.db")));
        ajena->ejecuta(QStringLiteral("CREATE TABLE Clientes (id INTEGER, nombre TEXT)"));
    }
    const QString danado = d.filePath(QStringLiteral("danado.db"));
    CreaAlmacenDanado(danado);
    const QString noEs = QStringLiteral("no es un respaldo de Orvanta");
    const struct {
        QString archivo;
        QString parte;
    } casos[] = {
        {texto, noEs},
        {vacio, noEs},
        {d.filePath(QStringLiteral("ajena.db")), QStringLiteral("no es un respaldo de Orvanta (le falta la tabla PasosEsquema)")},
        {danado, QStringLiteral("está dañado")},
    };
    const QStringList antes = huella(almacen());
    for (const auto& c : casos) {
        const QString aviso = AvisoDe([&] { Restaura(almacen(), *conf_, c.archivo, true, kMomento); });
        EXPECT_TRUE(aviso.contains(c.parte)) << aviso.toStdString();
        EXPECT_TRUE(aviso.contains(QStringLiteral("No se restauró nada"))) << aviso.toStdString();
    }
    EXPECT_EQ(huella(almacen()), antes);
    // Ninguno se ofrece en la lista de respaldos de la carpeta, ni se respaldó el almacén por ellos.
    EXPECT_TRUE(RespaldosEnCarpeta(destino_).isEmpty());
    EXPECT_FALSE(QDir(CarpetaRespaldos(*conf_)).exists());
}

TEST_P(Respaldos, LaListaDeUnaCarpetaVaDelMasNuevoAlMasViejo) {
    HaceRespaldo(almacen(), *conf_, destino_, kMomento);
    HaceRespaldo(almacen(), *conf_, destino_, kMomento.addDays(1));
    QFile::remove(QDir(destino_).filePath(QStringLiteral("ORVREGBACK20240615180509.ini")));
    QStringList lista;
    for (const InfoRespaldo& i : RespaldosEnCarpeta(destino_))
        lista << QFileInfo(i.ruta).fileName() + u'|' + i.momento.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss")) + u'|' +
                     QFileInfo(i.configuracion).fileName();
    const QString ext = almacen().esPostgreSQL() ? QStringLiteral(".dump") : QStringLiteral(".db");
    EXPECT_EQ(lista, (QStringList{QStringLiteral("ORVBACK_20240615180509") + ext + QStringLiteral("|15/06/2024 18:05:09|"),
                                  QStringLiteral("ORVBACK_20240614180509") + ext +
                                      QStringLiteral("|14/06/2024 18:05:09|ORVREGBACK20240614180509.ini")}));
}

// pg_dump de un esquema y su restauración en una base nueva del mismo servidor: cada tabla igual.
TEST_P(Respaldos, VolcadoDelServidorRestauradoEnUnaBaseNueva) {
    if (!almacen().esPostgreSQL()) GTEST_SKIP() << "sólo el servidor";
    const ResultadoRespaldo r = HaceRespaldo(almacen(), *conf_, destino_, kMomento);
    const QString nombre = QStringLiteral("orvanta_restaura_%1").arg(QCoreApplication::applicationPid());
    auto admin = Almacen::abrePostgreSQL(qEnvironmentVariable("ORVANTA_PRUEBA_PG"));
    admin->ejecuta(QStringLiteral("DROP DATABASE IF EXISTS ") + nombre);
    admin->ejecuta(QStringLiteral("CREATE DATABASE ") + nombre);
    QUrl url(base().destino());
    url.setPath(QLatin1Char('/') + nombre);
    const QString nueva = url.toString(QUrl::FullyEncoded);
    {
        const QString otraCarpeta = destino_ + QStringLiteral("/otra");
        QDir().mkpath(otraCarpeta);
        Configuracion conf(otraCarpeta, otraCarpeta + QStringLiteral("/usuario.ini"));
        conf.graba(clave::configuracion, QStringLiteral("BaseDatos"), nueva);
        auto destino = Almacen::abrePostgreSQL(nueva);
        const ResultadoRestauracion hecha = Restaura(*destino, conf, r.almacen, false, kMomento);
        EXPECT_TRUE(hecha.respaldoPrevio.isEmpty()); // la base nueva no tenía nada que respaldar
        EXPECT_EQ(huella(*destino), huella(almacen()));
        EXPECT_EQ(cantidades(hecha.filas), cantidades(huella(almacen())));
        EXPECT_EQ(versionEsquema(*destino), versionEsquema(almacen()));
    }
    admin->ejecuta(QStringLiteral("DROP DATABASE ") + nombre);
}

} // namespace
