#include "maintenance/respaldo.h"

#include "app/arranque.h"
#include "store/archivos.h"
#include "store/aviso.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <QUrlQuery>
#include <filesystem>
#include <sqlite3.h>
#include <system_error>
#include <unistd.h>

namespace orv {

namespace {

const QString kCarpetaRespaldos = QStringLiteral("CarpetaBackup");

// Páginas por tramo de la copia en línea: 8 MB con páginas de 4 KB, para avisar el avance seguido.
constexpr int kPaginasPorTramo = 2048;

QString textoSQLite(sqlite3* db, int rc) {
    return db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(rc));
}

bool ejecutaSQLite(sqlite3* db, const char* sql, QString& error) {
    char* mensaje = nullptr;
    if (sqlite3_exec(db, sql, nullptr, nullptr, &mensaje) == SQLITE_OK) return true;
    error = QString::fromUtf8(mensaje ? mensaje : sqlite3_errmsg(db));
    sqlite3_free(mensaje);
    return false;
}

// El archivo del almacén sólo para el dueño: lleva ventas, clientes y, en la configuración, claves.
void soloDueno(const QString& archivo) { QFile::setPermissions(archivo, QFile::ReadOwner | QFile::WriteOwner); }

// La última línea útil de lo que dijo un programa, para el mensaje.
QString ultimasLineas(const QStringList& lineas, int cuantas) {
    QStringList utiles;
    for (const QString& l : lineas)
        if (!l.trimmed().isEmpty() && !l.contains(QLatin1String(": dumping contents of table"))) utiles << l.trimmed();
    return utiles.mid(qMax(0, utiles.size() - cuantas)).join(QLatin1Char('\n'));
}

// La versión mayor que dice `programa --version` ("pg_dump (PostgreSQL) 16.4"); 0 si no corre.
int versionMayorDe(const QString& programa) {
    QProcess p;
    p.start(programa, {QStringLiteral("--version")});
    if (!p.waitForFinished(5000) || p.exitCode() != 0) return 0;
    static const QRegularExpression version(QStringLiteral("\\)\\s*(\\d+)"));
    const auto m = version.match(QString::fromUtf8(p.readAllStandardOutput()));
    return m.hasMatch() ? m.captured(1).toInt() : 0;
}

} // namespace

ArchivosRespaldo NombresDeRespaldo(const QDateTime& momento, Dialecto dialecto) {
    const QString marca = momento.toString(QStringLiteral("yyyyMMddHHmmss"));
    return {kPrefijoRespaldo + marca + (dialecto == Dialecto::SQLite ? kExtensionSQLite : kExtensionPostgreSQL),
            kPrefijoConfiguracion + marca + QStringLiteral(".ini")};
}

QDateTime MomentoLibre(const QString& carpeta, const QDateTime& momento, Dialecto dialecto) {
    const QDir dir(carpeta);
    QDateTime m = momento;
    while (dir.exists(NombresDeRespaldo(m, dialecto).almacen) || dir.exists(NombresDeRespaldo(m, dialecto).configuracion))
        m = m.addSecs(1);
    return m;
}

QString CarpetaRespaldos(const Configuracion& conf) {
    const QString anotada = conf.lee(clave::miscelaneas, kCarpetaRespaldos);
    if (!anotada.isEmpty() && QFileInfo(anotada).isDir()) return anotada;
    return QDir(conf.carpetaDatos()).filePath(QStringLiteral("Respaldos"));
}

void AnotaCarpetaRespaldos(const Configuracion& conf, const QString& carpeta) {
    conf.graba(clave::miscelaneas, kCarpetaRespaldos, QDir::cleanPath(carpeta));
}

QString BuscaProgramaPostgreSQL(const QString& nombre, int mayor) {
    // Primero el de la misma versión mayor, instalado aparte por versión; después uno más nuevo.
    const QString propio = QStringLiteral("/usr/lib/postgresql/%1/bin/%2").arg(mayor).arg(nombre);
    if (QFileInfo(propio).isExecutable()) return propio;
    const QDir instalados(QStringLiteral("/usr/lib/postgresql"));
    for (const QString& v : instalados.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString p = instalados.filePath(v + QStringLiteral("/bin/") + nombre);
        if (v.toInt() > mayor && QFileInfo(p).isExecutable()) return p;
    }
    const QString enRuta = QStandardPaths::findExecutable(nombre);
    if (!enRuta.isEmpty() && versionMayorDe(enRuta) >= mayor) return enRuta;
    return {};
}

int VersionMayorServidor(Almacen& almacen) {
    return almacen.valor(QStringLiteral("SHOW server_version_num")).toInt() / 10000;
}

QString ProgramaParaServidor(Almacen& almacen, const QString& nombre) {
    const int mayor = VersionMayorServidor(almacen);
    const QString programa = BuscaProgramaPostgreSQL(nombre, mayor);
    if (programa.isEmpty())
        throw Aviso(QStringLiteral("No se encontró en esta máquina el programa %1 de PostgreSQL %2 (la versión del "
                                   "servidor) ni uno más nuevo.\nInstale el paquete postgresql-client-%2 y vuelva "
                                   "a intentarlo.")
                        .arg(nombre)
                        .arg(mayor));
    return programa;
}

DireccionServidor SeparaClave(const QString& uri) {
    QUrl url(uri);
    DireccionServidor d;
    d.clave = url.password(QUrl::FullyDecoded);
    url.setPassword(QString());
    QUrlQuery q(url);
    if (q.hasQueryItem(QStringLiteral("password"))) {
        d.clave = q.queryItemValue(QStringLiteral("password"), QUrl::FullyDecoded);
        q.removeAllQueryItems(QStringLiteral("password"));
        url.setQuery(q);
    }
    d.uri = url.toString(QUrl::FullyEncoded);
    return d;
}

QString CopiaEnLineaSQLite(const QString& origen, const QString& destino, std::atomic<int>* porcentaje,
                           const std::atomic<bool>* cancela) {
    sqlite3* fuente = nullptr;
    sqlite3* copia = nullptr;
    QString error;
    const auto cierra = [&] {
        if (fuente) sqlite3_exec(fuente, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close_v2(fuente);
        sqlite3_close_v2(copia);
    };
    int rc = sqlite3_open_v2(QFile::encodeName(origen).constData(), &fuente, SQLITE_OPEN_READWRITE, nullptr);
    if (rc != SQLITE_OK) {
        error = textoSQLite(fuente, rc);
        cierra();
        return error;
    }
    sqlite3_busy_timeout(fuente, 10000);
    // 1. Una sola lectura de principio a fin: lo que otro puesto escriba mientras tanto no entra en
    // la copia ni la obliga a empezar de nuevo.
    if (!ejecutaSQLite(fuente, "BEGIN; SELECT count(*) FROM sqlite_master;", error)) {
        cierra();
        return error;
    }
    rc = sqlite3_open_v2(QFile::encodeName(destino).constData(), &copia, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                         nullptr);
    if (rc != SQLITE_OK) {
        error = textoSQLite(copia, rc);
        cierra();
        return error;
    }
    // 2. Página por página, de a tramos. El archivo nuevo va sin diario ni una espera del disco por
    // tramo: si algo falla se borra entero; al final se asienta en el disco una sola vez.
    if (!ejecutaSQLite(copia, "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF;", error)) {
        cierra();
        return error;
    }
    sqlite3_backup* b = sqlite3_backup_init(copia, "main", fuente, "main");
    if (!b) {
        error = textoSQLite(copia, SQLITE_ERROR);
        cierra();
        return error;
    }
    do {
        rc = sqlite3_backup_step(b, kPaginasPorTramo);
        const int total = sqlite3_backup_pagecount(b);
        if (porcentaje && total > 0)
            porcentaje->store(int(qint64(total - sqlite3_backup_remaining(b)) * 100 / total));
        if (rc == SQLITE_BUSY || rc == SQLITE_LOCKED) sqlite3_sleep(20);
        if (cancela && cancela->load()) break;
    } while (rc == SQLITE_OK || rc == SQLITE_BUSY || rc == SQLITE_LOCKED);
    const bool completa = rc == SQLITE_DONE;
    const int fin = sqlite3_backup_finish(b);
    if (!completa) {
        error = cancela && cancela->load() ? QStringLiteral("Copia cancelada.") : textoSQLite(copia, fin);
        cierra();
        return error;
    }
    // 3. La copia queda en un solo archivo, legible también desde una carpeta de sólo lectura, y
    // en el disco antes de darla por hecha.
    if (!ejecutaSQLite(copia, "PRAGMA journal_mode=DELETE", error)) {
        cierra();
        return error;
    }
    cierra();
    QFile hecha(destino);
    if (!hecha.open(QIODevice::ReadWrite) || ::fsync(hecha.handle()) != 0)
        return QStringLiteral("No se pudo asentar en el disco %1").arg(QDir::toNativeSeparators(destino));
    return {};
}

QString TamanoLegible(qint64 bytes) {
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

bool ReemplazaArchivo(const QString& desde, const QString& hasta) {
    std::error_code e;
    std::filesystem::rename(QFile::encodeName(desde).constData(), QFile::encodeName(hasta).constData(), e);
    return !e;
}

Respaldo::Respaldo(Almacen& almacen, const Configuracion& conf, const QString& carpeta, const QDateTime& momento,
                   QObject* padre)
    : QObject(padre), almacen_(almacen), conf_(conf), carpeta_(QDir::cleanPath(carpeta)) {
    if (carpeta.trimmed().isEmpty()) throw Aviso(QStringLiteral("Seleccione un destino !"));
    const QFileInfo fi(carpeta_);
    if (!fi.isDir())
        throw Aviso(QStringLiteral("No existe la carpeta de destino %1").arg(QDir::toNativeSeparators(carpeta_)));
    if (!fi.isWritable())
        throw Aviso(QStringLiteral("La carpeta de destino %1 no admite escritura").arg(QDir::toNativeSeparators(carpeta_)));
    if (!almacen_.esPostgreSQL() && !QFileInfo::exists(almacen_.descripcion()))
        throw Aviso(QStringLiteral("No se encuentra el archivo de la base de datos %1")
                        .arg(QDir::toNativeSeparators(almacen_.descripcion())));
    nombres_ = NombresDeRespaldo(momento, almacen_.dialecto());
    resultado_.almacen = QDir(carpeta_).filePath(nombres_.almacen);
    resultado_.configuracion = QDir(carpeta_).filePath(nombres_.configuracion);
    // A medio escribir, el archivo no lleva el nombre de un respaldo.
    parcial_ = resultado_.almacen + QStringLiteral(".parcial");
    if (almacen_.esPostgreSQL()) {
        programa_ = ProgramaParaServidor(almacen_, QStringLiteral("pg_dump"));
        servidor_ = SeparaClave(Arranque::destinoAlmacen(conf_));
        esquema_ = almacen_.valor(QStringLiteral("SELECT current_schema()")).toString();
        tablas_ = qMax(1, almacen_.valor(QStringLiteral("SELECT count(*) FROM information_schema.tables WHERE "
                                                        "table_schema = current_schema() AND table_type = 'BASE TABLE'"))
                              .toInt());
    }
}

Respaldo::~Respaldo() {
    if (hilo_) {
        cancela_ = true;
        hilo_->wait();
        delete hilo_;
    }
    if (proceso_ && proceso_->state() != QProcess::NotRunning) {
        proceso_->kill();
        proceso_->waitForFinished(5000);
    }
    if (enCurso_) QFile::remove(parcial_);
}

void Respaldo::empieza() {
    if (enCurso_) return;
    enCurso_ = true;
    QFile::remove(parcial_);
    Q_EMIT avance(0);
    if (almacen_.esPostgreSQL()) empiezaPostgreSQL();
    else empiezaSQLite();
}

void Respaldo::empiezaSQLite() {
    const QString origen = almacen_.descripcion();
    hilo_ = QThread::create([this, origen] { errorHilo_ = CopiaEnLineaSQLite(origen, parcial_, &porcentaje_, &cancela_); });
    vigia_ = new QTimer(this);
    vigia_->setInterval(100);
    connect(vigia_, &QTimer::timeout, this, [this] { Q_EMIT avance(porcentaje_.load()); });
    connect(hilo_, &QThread::finished, this, [this] {
        vigia_->stop();
        hilo_->deleteLater();
        hilo_ = nullptr;
        acaba(errorHilo_);
    });
    vigia_->start();
    hilo_->start();
}

void Respaldo::empiezaPostgreSQL() {
    proceso_ = new QProcess(this);
    QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    if (!servidor_.clave.isEmpty()) entorno.insert(QStringLiteral("PGPASSWORD"), servidor_.clave);
    proceso_->setProcessEnvironment(entorno);
    connect(proceso_, &QProcess::readyReadStandardError, this, &Respaldo::leeAvancePostgreSQL);
    connect(proceso_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError e) {
        if (e == QProcess::FailedToStart) acaba(QStringLiteral("No se pudo ejecutar %1").arg(programa_));
    });
    connect(proceso_, &QProcess::finished, this, [this](int codigo, QProcess::ExitStatus estado) {
        leeAvancePostgreSQL();
        if (estado == QProcess::NormalExit && codigo == 0) acaba({});
        else acaba(QStringLiteral("pg_dump terminó con el código %1:\n%2").arg(codigo).arg(ultimasLineas(salidaProceso_, 4)));
    });
    proceso_->start(programa_, {QStringLiteral("--format=custom"), QStringLiteral("--verbose"),
                                QStringLiteral("--schema=") + esquema_, QStringLiteral("--file=") + parcial_,
                                QStringLiteral("--dbname=") + servidor_.uri});
}

void Respaldo::leeAvancePostgreSQL() {
    if (!proceso_) return;
    const QString texto = QString::fromUtf8(proceso_->readAllStandardError());
    for (const QString& linea : texto.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        salidaProceso_ << linea;
        // pg_dump dice cada tabla que vuelca: el avance es la parte de las tablas ya volcadas.
        if (linea.contains(QLatin1String(": dumping contents of table"))) ++tablasHechas_;
    }
    if (salidaProceso_.size() > 200) salidaProceso_ = salidaProceso_.mid(salidaProceso_.size() - 50);
    Q_EMIT avance(qMin(99, tablasHechas_ * 100 / tablas_));
}

void Respaldo::acaba(const QString& error) {
    if (!enCurso_) return;
    enCurso_ = false;
    QString problema = error;
    if (problema.isEmpty() && !ReemplazaArchivo(parcial_, resultado_.almacen))
        problema = QStringLiteral("No se pudo escribir %1").arg(QDir::toNativeSeparators(resultado_.almacen));
    if (!problema.isEmpty()) {
        QFile::remove(parcial_);
        Q_EMIT termino(false, problema);
        return;
    }
    soloDueno(resultado_.almacen);
    resultado_.bytes = QFileInfo(resultado_.almacen).size();
    // La configuración de la máquina, tal cual está en su archivo (vacío si todavía no hay valores).
    const QString origen = conf_.archivoMaquina();
    const QString parcialConf = resultado_.configuracion + QStringLiteral(".parcial");
    QFile::remove(parcialConf);
    const bool copiada = QFileInfo::exists(origen) ? QFile::copy(origen, parcialConf) : CreaArchivoPrivado(parcialConf);
    if (!copiada || !ReemplazaArchivo(parcialConf, resultado_.configuracion)) {
        QFile::remove(parcialConf);
        Q_EMIT termino(false, QStringLiteral("No se pudo escribir %1").arg(QDir::toNativeSeparators(resultado_.configuracion)));
        return;
    }
    soloDueno(resultado_.configuracion);
    Q_EMIT avance(100);
    Q_EMIT termino(true, {});
}

ResultadoRespaldo HaceRespaldo(Almacen& almacen, const Configuracion& conf, const QString& carpeta,
                               const QDateTime& momento, const std::function<void(int)>& avance) {
    Respaldo r(almacen, conf, carpeta, momento);
    if (avance) QObject::connect(&r, &Respaldo::avance, &r, avance);
    const auto [ok, detalle] = EsperaTermino(r);
    if (!ok) throw Aviso(QStringLiteral("Ocurrieron errores al intentar copiar!\n") + detalle);
    return r.resultado();
}

} // namespace orv
