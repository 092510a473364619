#include "maintenance/restauracion.h"

#include "app/arranque.h"
#include "maintenance/respaldo.h"
#include "store/actualizacion.h"
#include "store/aviso.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QThread>
#include <algorithm>
#include <sqlite3.h>

namespace orv {

namespace {

// Tablas sin las que un archivo no es un almacén de este programa.
const char* const kTablasPropias[] = {"PasosEsquema", "Articulos", "Comprobantes", "Vendedores", "Caja"};

QDateTime momentoDelNombre(const QFileInfo& fi) {
    static const QRegularExpression marca(QStringLiteral("^ORVBACK_(\\d{14})\\."));
    const auto m = marca.match(fi.fileName());
    const QDateTime t = m.hasMatch() ? QDateTime::fromString(m.captured(1), QStringLiteral("yyyyMMddHHmmss")) : QDateTime();
    return t.isValid() ? t : fi.lastModified();
}

// Una consulta de una sola columna entera por fila, o de un solo valor.
bool leeEnteros(sqlite3* db, const QByteArray& sql, QList<qint64>& valores, QStringList* textos, QString& error) {
    sqlite3_stmt* s = nullptr;
    if (sqlite3_prepare_v2(db, sql.constData(), -1, &s, nullptr) != SQLITE_OK) {
        error = QString::fromUtf8(sqlite3_errmsg(db));
        return false;
    }
    int rc;
    while ((rc = sqlite3_step(s)) == SQLITE_ROW) {
        valores << sqlite3_column_int64(s, 0);
        if (textos) textos->append(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(s, 0))));
    }
    if (rc != SQLITE_DONE) error = QString::fromUtf8(sqlite3_errmsg(db));
    sqlite3_finalize(s);
    return rc == SQLITE_DONE;
}

ControlCopia cuentaFilas(sqlite3* db) {
    ControlCopia c;
    QList<qint64> nada;
    QStringList tablas;
    if (!leeEnteros(db, "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' "
                        "ORDER BY name",
                    nada, &tablas, c.error))
        return c;
    for (const QString& t : tablas) {
        QList<qint64> n;
        if (!leeEnteros(db, "SELECT count(*) FROM \"" + t.toUtf8() + "\"", n, nullptr, c.error)) return c;
        c.filas.insert(t, n.value(0));
    }
    return c;
}

// Abre un archivo SQLite con su manejo; nulo y el error si no se pudo.
sqlite3* abre(const QString& ruta, int modo, QString& error) {
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(QFile::encodeName(ruta).constData(), &db, modo, nullptr);
    if (rc == SQLITE_OK) {
        sqlite3_busy_timeout(db, 10000);
        return db;
    }
    error = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(rc));
    sqlite3_close_v2(db);
    return nullptr;
}

QString textoNoEsRespaldo(const QString& ruta, const QString& motivo) {
    return QStringLiteral("El archivo %1 no es un respaldo de Orvanta (%2). No se restauró nada.")
        .arg(QDir::toNativeSeparators(ruta), motivo);
}

} // namespace

InfoRespaldo ExaminaRespaldo(const QString& ruta) {
    const QFileInfo fi(ruta);
    QFile f(ruta);
    if (!fi.isFile() || !f.open(QIODevice::ReadOnly))
        throw Aviso(QStringLiteral("No se puede leer el archivo %1").arg(QDir::toNativeSeparators(ruta)));
    const QByteArray cabeza = f.read(16);
    InfoRespaldo r;
    if (cabeza == QByteArray("SQLite format 3\0", 16)) r.tipo = TipoRespaldo::SQLite;
    else if (cabeza.startsWith("PGDMP")) r.tipo = TipoRespaldo::PostgreSQL;
    else throw Aviso(textoNoEsRespaldo(ruta, QStringLiteral("no es una base de datos ni un volcado de PostgreSQL")));
    r.ruta = fi.absoluteFilePath();
    r.bytes = fi.size();
    r.momento = momentoDelNombre(fi);
    const QString conf = fi.dir().filePath(kPrefijoConfiguracion + r.momento.toString(QStringLiteral("yyyyMMddHHmmss")) +
                                           QStringLiteral(".ini"));
    if (QFileInfo(conf).isFile()) r.configuracion = conf;
    return r;
}

QList<InfoRespaldo> RespaldosEnCarpeta(const QString& carpeta) {
    QList<InfoRespaldo> lista;
    const QDir dir(carpeta);
    for (const QFileInfo& fi : dir.entryInfoList({kPrefijoRespaldo + QLatin1Char('*')}, QDir::Files)) {
        if (fi.fileName().endsWith(QLatin1String(".parcial"))) continue;
        try {
            lista << ExaminaRespaldo(fi.absoluteFilePath());
        } catch (const Aviso&) {
            // Un archivo con el nombre de un respaldo que no lo es no se ofrece.
        }
    }
    std::sort(lista.begin(), lista.end(), [](const InfoRespaldo& a, const InfoRespaldo& b) { return a.momento > b.momento; });
    return lista;
}

ControlCopia CuentaFilasSQLite(const QString& ruta) {
    ControlCopia c;
    sqlite3* db = abre(ruta, SQLITE_OPEN_READONLY, c.error);
    if (!db) return c;
    c = cuentaFilas(db);
    sqlite3_close_v2(db);
    return c;
}

ControlCopia ControlaCopiaSQLite(const QString& ruta) {
    ControlCopia c;
    sqlite3* db = abre(ruta, SQLITE_OPEN_READWRITE, c.error);
    if (!db) return c;
    const auto falla = [&](const QString& motivo) {
        c.error = motivo;
        c.filas.clear();
        sqlite3_close_v2(db);
        return c;
    };
    QList<qint64> nada;
    QStringList resultado;
    // 1. Entera: cada página de cada tabla e índice.
    if (!leeEnteros(db, "PRAGMA integrity_check(1)", nada, &resultado, c.error))
        return falla(QStringLiteral("El respaldo %1 está dañado o no es una base de datos: %2. No se restauró nada.")
                         .arg(QDir::toNativeSeparators(ruta), c.error));
    if (resultado.value(0) != QLatin1String("ok"))
        return falla(QStringLiteral("El respaldo %1 está dañado: %2. No se restauró nada.")
                         .arg(QDir::toNativeSeparators(ruta), resultado.value(0)));
    // 2. De este programa.
    c = cuentaFilas(db);
    if (!c.error.isEmpty()) return falla(textoNoEsRespaldo(ruta, c.error));
    for (const char* t : kTablasPropias)
        if (!c.filas.contains(QString::fromLatin1(t)))
            return falla(textoNoEsRespaldo(ruta, QStringLiteral("le falta la tabla %1").arg(QString::fromLatin1(t))));
    // 3. De un esquema que este programa conoce.
    QList<qint64> paso;
    if (!leeEnteros(db, "SELECT MAX(Paso) FROM PasosEsquema", paso, nullptr, c.error)) return falla(c.error);
    const int conocido = pasosDelSistema().back().numero;
    if (paso.value(0) > conocido)
        return falla(QStringLiteral("El respaldo %1 es de un Orvanta más nuevo que este (versión %2 del esquema; este "
                                    "programa llega hasta la %3). No se restauró nada.")
                         .arg(QDir::toNativeSeparators(ruta))
                         .arg(paso.value(0))
                         .arg(conocido));
    sqlite3_close_v2(db);
    return c;
}

QString VuelcaSQLite(const QString& copia, const QString& vivo, std::atomic<int>* porcentaje) {
    QString error;
    sqlite3* fuente = abre(copia, SQLITE_OPEN_READONLY, error);
    if (!fuente) return error;
    sqlite3* destino = abre(vivo, SQLITE_OPEN_READWRITE, error);
    if (!destino) {
        sqlite3_close_v2(fuente);
        return error;
    }
    // Una sola transacción de escritura en el almacén: los demás puestos siguen leyendo lo de
    // antes hasta que termina, y una falla a mitad no deja nada a medias.
    sqlite3_backup* b = sqlite3_backup_init(destino, "main", fuente, "main");
    int rc = SQLITE_ERROR;
    if (b) {
        int esperas = 0;
        do {
            rc = sqlite3_backup_step(b, -1);
            if (rc == SQLITE_BUSY || rc == SQLITE_LOCKED) {
                // Otro puesto está escribiendo: se espera hasta 30 s a que termine.
                if (++esperas > 300) break;
                sqlite3_sleep(100);
            }
        } while (rc == SQLITE_BUSY || rc == SQLITE_LOCKED);
        if (porcentaje) porcentaje->store(100);
        rc = sqlite3_backup_finish(b) == SQLITE_OK && rc == SQLITE_DONE ? SQLITE_DONE : (rc == SQLITE_DONE ? SQLITE_ERROR : rc);
    }
    if (rc != SQLITE_DONE)
        error = rc == SQLITE_BUSY || rc == SQLITE_LOCKED
                    ? QStringLiteral("Otro puesto no dejó de escribir en la base de datos durante 30 segundos.")
                    : QString::fromUtf8(sqlite3_errmsg(destino));
    sqlite3_close_v2(destino);
    sqlite3_close_v2(fuente);
    return error;
}

bool RestauraConfiguracion(const Configuracion& conf, const QString& archivo) {
    // La terminal y el lugar del almacén son de esta máquina, no del respaldo.
    const QString idRed = conf.lee(clave::miscelaneas, QStringLiteral("IdRed"));
    const QString base = conf.lee(clave::configuracion, QStringLiteral("BaseDatos"));
    const QString destino = conf.archivoMaquina();
    const QString parcial = destino + QStringLiteral(".restaura");
    QFile::remove(parcial);
    if (!QFile::copy(archivo, parcial)) return false;
    QFile::setPermissions(parcial, QFile::ReadOwner | QFile::WriteOwner);
    {
        QSettings s(parcial, QSettings::IniFormat);
        s.setValue(clave::miscelaneas + QStringLiteral("/IdRed"), idRed);
        if (base.isEmpty()) s.remove(clave::configuracion + QStringLiteral("/BaseDatos"));
        else s.setValue(clave::configuracion + QStringLiteral("/BaseDatos"), base);
        s.sync();
        if (s.status() != QSettings::NoError) {
            QFile::remove(parcial);
            return false;
        }
    }
    return ReemplazaArchivo(parcial, destino);
}

Restauracion::Restauracion(Almacen& almacen, const Configuracion& conf, const InfoRespaldo& respaldo,
                           bool conConfiguracion, const QDateTime& momento, QObject* padre)
    : QObject(padre), almacen_(almacen), conf_(conf), respaldo_(respaldo), conConfiguracion_(conConfiguracion),
      momento_(momento) {
    const bool deServidor = respaldo_.tipo == TipoRespaldo::PostgreSQL;
    if (deServidor != almacen_.esPostgreSQL())
        throw Aviso(deServidor ? QStringLiteral("El respaldo es de una base de datos PostgreSQL y este programa trabaja "
                                                "con una base de datos en un archivo. No se restauró nada.")
                               : QStringLiteral("El respaldo es de una base de datos en un archivo y este programa "
                                                "trabaja con un servidor PostgreSQL. No se restauró nada."));
    if (deServidor) programa_ = ProgramaParaServidor(almacen_, QStringLiteral("pg_restore"));
    else temporal_ = almacen_.descripcion() + QStringLiteral(".restaura");
}

Restauracion::~Restauracion() {
    if (hilo_) {
        hilo_->wait();
        delete hilo_;
    }
    if (!temporal_.isEmpty()) QFile::remove(temporal_);
}

void Restauracion::empieza() {
    if (enCurso_) return;
    enCurso_ = true;
    controla();
}

void Restauracion::enHilo(std::function<void()> trabajo, std::function<void()> despues) {
    hilo_ = QThread::create(std::move(trabajo));
    connect(hilo_, &QThread::finished, this, [this, despues = std::move(despues)] {
        hilo_->deleteLater();
        hilo_ = nullptr;
        despues();
    });
    hilo_->start();
}

void Restauracion::corre(const QStringList& argumentos, std::function<void(bool, const QString&)> despues) {
    auto* p = new QProcess(this);
    const DireccionServidor d = SeparaClave(Arranque::destinoAlmacen(conf_));
    QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    if (!d.clave.isEmpty()) entorno.insert(QStringLiteral("PGPASSWORD"), d.clave);
    p->setProcessEnvironment(entorno);
    p->setProcessChannelMode(QProcess::MergedChannels);
    QStringList args = argumentos;
    args.replaceInStrings(QStringLiteral("{servidor}"), d.uri);
    connect(p, &QProcess::finished, this, [p, despues](int codigo, QProcess::ExitStatus estado) {
        p->deleteLater();
        despues(estado == QProcess::NormalExit && codigo == 0, QString::fromUtf8(p->readAll()));
    });
    connect(p, &QProcess::errorOccurred, this, [this, p, despues](QProcess::ProcessError e) {
        if (e != QProcess::FailedToStart) return;
        p->deleteLater();
        despues(false, QStringLiteral("No se pudo ejecutar %1").arg(programa_));
    });
    p->start(programa_, args);
}

QString Restauracion::esquemaDestino() const {
    const QString actual = almacen_.valor(QStringLiteral("SELECT current_schema()")).toString();
    if (!actual.isEmpty()) return actual;
    // El esquema del almacén todavía no existe (una base nueva): el primero de la ruta de búsqueda.
    const QString ruta = almacen_.valor(QStringLiteral("SELECT current_setting('search_path')")).toString();
    return ruta.section(QLatin1Char(','), 0, 0).trimmed().remove(QLatin1Char('"'));
}

bool Restauracion::almacenVacio() const { return !almacen_.existeTabla(QStringLiteral("PasosEsquema")); }

// 1. La copia: entera, de este programa, de un esquema conocido.
void Restauracion::controla() {
    Q_EMIT etapa(QStringLiteral("Controlando el respaldo..."));
    if (respaldo_.tipo == TipoRespaldo::SQLite) {
        enHilo(
            [this] {
                // Se controla y se vuelca una copia propia: el archivo elegido puede estar en un
                // medio que se quita o que otro cambia.
                QFile::remove(temporal_);
                if (!QFile::copy(respaldo_.ruta, temporal_)) {
                    errorHilo_ = QStringLiteral("No se pudo copiar %1 a la carpeta de datos.")
                                     .arg(QDir::toNativeSeparators(respaldo_.ruta));
                    return;
                }
                const ControlCopia c = ControlaCopiaSQLite(temporal_);
                errorHilo_ = c.error;
                filasCopia_ = c.filas;
            },
            [this] {
                if (!errorHilo_.isEmpty()) acaba(errorHilo_.replace(temporal_, respaldo_.ruta));
                else respaldaActual();
            });
        return;
    }
    corre({QStringLiteral("--list"), respaldo_.ruta}, [this](bool ok, const QString& salida) {
        // Cada tabla del volcado es una línea "TABLE DATA <esquema> <tabla> <dueño>".
        static const QRegularExpression linea(QStringLiteral("TABLE DATA (\\S+) pasosesquema "));
        const auto m = linea.match(salida);
        if (!ok || !m.hasMatch()) return acaba(textoNoEsRespaldo(respaldo_.ruta, QStringLiteral("pg_restore no lo lee como un volcado de este programa")));
        const QString esquema = esquemaDestino();
        if (m.captured(1) != esquema)
            return acaba(QStringLiteral("El respaldo es del esquema %1 y la base de datos usa el esquema %2. No se restauró nada.")
                             .arg(m.captured(1), esquema));
        conTrigramas_ = salida.contains(QLatin1String("descripciontrigramas"));
        respaldaActual();
    });
}

// 2. El almacén de ahora, respaldado antes de reemplazarlo (uno vacío no tiene qué perder).
void Restauracion::respaldaActual() {
    if (almacenVacio()) return vuelca();
    Q_EMIT etapa(QStringLiteral("Respaldando la base de datos actual..."));
    const QString carpeta = CarpetaRespaldos(conf_);
    QDir().mkpath(carpeta);
    try {
        auto* r = new Respaldo(almacen_, conf_, carpeta, MomentoLibre(carpeta, momento_, almacen_.dialecto()), this);
        connect(r, &Respaldo::avance, this, &Restauracion::avance);
        connect(r, &Respaldo::termino, this, [this, r](bool ok, const QString& detalle) {
            r->deleteLater();
            if (!ok) return acaba(QStringLiteral("No se pudo respaldar la base de datos actual: ") + detalle);
            resultado_.respaldoPrevio = r->resultado().almacen;
            vuelca();
        });
        r->empieza();
    } catch (const Aviso& a) {
        acaba(QStringLiteral("No se pudo respaldar la base de datos actual: ") + a.texto());
    }
}

// 3. El contenido del respaldo entra en el almacén.
void Restauracion::vuelca() {
    Q_EMIT etapa(QStringLiteral("Restaurando..."));
    Q_EMIT avance(0);
    if (respaldo_.tipo == TipoRespaldo::SQLite) {
        const QString vivo = almacen_.descripcion();
        enHilo([this, vivo] { errorHilo_ = VuelcaSQLite(temporal_, vivo, &porcentaje_); }, [this] { verifica(errorHilo_); });
        return;
    }
    // El índice de texto usa la extensión pg_trgm, que vive fuera del esquema y no viaja en el
    // volcado: en una base nueva se crea antes, donde la crea la actualización del esquema.
    if (conTrigramas_) {
        try {
            almacen_.ejecuta(QStringLiteral("CREATE EXTENSION IF NOT EXISTS pg_trgm SCHEMA public"));
        } catch (const ErrorAlmacen&) {
            // Sin la extensión, pg_restore dirá qué índice no pudo crear.
        }
    }
    corre({QStringLiteral("--clean"), QStringLiteral("--if-exists"), QStringLiteral("--single-transaction"),
           QStringLiteral("--exit-on-error"), QStringLiteral("--no-owner"), QStringLiteral("--no-privileges"),
           QStringLiteral("--dbname={servidor}"), respaldo_.ruta},
          [this](bool ok, const QString& salida) { verifica(ok ? QString() : QStringLiteral("pg_restore: ") + salida.trimmed()); });
}

// 4. Las filas de cada tabla del almacén, comparadas con las de la copia.
void Restauracion::verifica(const QString& error) {
    if (!error.isEmpty()) return acaba(QStringLiteral("No se pudo restaurar; la base de datos quedó como estaba.\n") + error);
    almacen_.olvidaPreparadas();
    if (respaldo_.tipo == TipoRespaldo::PostgreSQL) {
        try {
            // Primero los nombres: en el servidor, otra consulta a mitad de lectura perdería el resto.
            QStringList tablas;
            QSqlQuery t = almacen_.consulta(QStringLiteral(
                "SELECT table_name FROM information_schema.tables WHERE table_schema = current_schema() "
                "AND table_type = 'BASE TABLE' ORDER BY table_name"));
            while (t.next()) tablas << t.value(0).toString();
            t.finish();
            for (const QString& tabla : tablas)
                resultado_.filas.insert(tabla, almacen_.valor(QStringLiteral("SELECT count(*) FROM ") + tabla).toLongLong());
        } catch (const ErrorAlmacen& e) {
            return acaba(QStringLiteral("La base de datos restaurada no se puede leer: ") + e.descripcion());
        }
        return acaba({});
    }
    const ControlCopia vivo = CuentaFilasSQLite(almacen_.descripcion());
    if (vivo.error.isEmpty() && vivo.filas == filasCopia_) {
        resultado_.filas = vivo.filas;
        return acaba({});
    }
    // No quedó lo que tenía la copia: vuelve el almacén de antes, desde su respaldo.
    QString vuelta = QStringLiteral("no había nada que reponer");
    if (!resultado_.respaldoPrevio.isEmpty()) {
        const QString e = VuelcaSQLite(resultado_.respaldoPrevio, almacen_.descripcion());
        vuelta = e.isEmpty() ? QStringLiteral("se repuso la base de datos anterior") : QStringLiteral("tampoco se pudo reponer la anterior: ") + e;
    }
    acaba(QStringLiteral("La base de datos restaurada no tiene las mismas filas que el respaldo (%1); %2.")
              .arg(vivo.error.isEmpty() ? QStringLiteral("las cantidades no coinciden") : vivo.error, vuelta));
}

// 5. La configuración, y el final.
void Restauracion::acaba(const QString& error) {
    if (!enCurso_) return;
    enCurso_ = false;
    if (!temporal_.isEmpty()) QFile::remove(temporal_);
    if (!error.isEmpty()) {
        Q_EMIT termino(false, error);
        return;
    }
    if (conConfiguracion_ && !respaldo_.configuracion.isEmpty()) {
        resultado_.configuracion = RestauraConfiguracion(conf_, respaldo_.configuracion);
        if (!resultado_.configuracion) {
            Q_EMIT termino(false, QStringLiteral("La base de datos se restauró, pero no se pudo escribir la configuración en %1.")
                                    .arg(QDir::toNativeSeparators(conf_.archivoMaquina())));
            return;
        }
    }
    Q_EMIT avance(100);
    Q_EMIT termino(true, {});
}

ResultadoRestauracion Restaura(Almacen& almacen, const Configuracion& conf, const QString& ruta, bool conConfiguracion,
                               const QDateTime& momento) {
    Restauracion r(almacen, conf, ExaminaRespaldo(ruta), conConfiguracion, momento);
    const auto [ok, detalle] = EsperaTermino(r);
    if (!ok) throw Aviso(detalle);
    return r.resultado();
}

} // namespace orv
