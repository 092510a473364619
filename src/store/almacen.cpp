#include "store/almacen.h"

#include "store/archivos.h"
#include "store/funciones_sqlite.h"

#include <QAtomicInteger>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlRecord>
#include <QUrl>
#include <QUrlQuery>
#include <sqlite3.h>

namespace orv {

namespace {

QString nuevaConexion() {
    static QAtomicInteger<quint64> contador{0};
    return QStringLiteral("orvanta_%1").arg(contador.fetchAndAddRelaxed(1) + 1);
}

// El texto del motor en una sola línea (libpq lo parte con saltos y tabulaciones).
QString textoError(const QSqlError& e) {
    QString t = e.databaseText().simplified();
    if (t.isEmpty()) t = e.driverText().simplified();
    if (t.isEmpty()) t = e.text().simplified();
    return t;
}

// El código del motor; si no lo da (una conexión que no llega), la clase de error de Qt.
QString numeroError(const QSqlError& e) {
    const QString n = e.nativeErrorCode().trimmed();
    return n.isEmpty() ? QString::number(static_cast<int>(e.type())) : n;
}

// Códigos de SQLite que dicen que el archivo está dañado o no es una base de datos.
bool esDano(const QSqlError& e) {
    bool ok = false;
    const int codigo = e.nativeErrorCode().toInt(&ok) & 0xff;
    return ok && (codigo == SQLITE_CORRUPT || codigo == SQLITE_NOTADB);
}

// Corta el control de integridad cuando vence su plazo.
struct Plazo {
    QElapsedTimer reloj;
    bool agotado = false;
};

int vigilaPlazo(void* p) {
    auto* plazo = static_cast<Plazo*>(p);
    if (plazo->reloj.elapsed() < kPlazoControlIntegridadMs) return 0;
    plazo->agotado = true;
    return 1; // SQLite interrumpe la sentencia en curso
}

sqlite3* manejoSQLite(const QSqlDatabase& db) {
    const QVariant h = db.driver()->handle();
    if (qstrcmp(h.typeName(), "sqlite3*") != 0) return nullptr;
    return *static_cast<sqlite3* const*>(h.constData());
}

} // namespace

QString DireccionSinClave(const QString& uri) {
    QString t = uri;
    // usuario:clave@ -> usuario:***@ (también en una dirección mal escrita, que QUrl no entiende)
    static const QRegularExpression conClave(QStringLiteral("^([A-Za-z][A-Za-z0-9+.-]*://[^/?#@:]*):[^/?#]*@"));
    t.replace(conClave, QStringLiteral("\\1:***@"));
    static const QRegularExpression enOpciones(QStringLiteral("([?&;]password=)[^&#]*"),
                                               QRegularExpression::CaseInsensitiveOption);
    t.replace(enOpciones, QStringLiteral("\\1***"));
    return t;
}

ErrorAlmacen::ErrorAlmacen(const QString& descripcion, QString numero, QString sql)
    : std::runtime_error(descripcion.toStdString()),
      descripcion_(descripcion),
      numero_(std::move(numero)),
      sql_(std::move(sql)) {}

Almacen::Almacen(Dialecto d, QString conexion, QString descripcion)
    : dialecto_(d), conexion_(std::move(conexion)), descripcion_(std::move(descripcion)) {}

Almacen::~Almacen() { cierra(); }

void Almacen::cierra() {
    if (conexion_.isEmpty()) return;
    preparadas_.clear();
    {
        QSqlDatabase db = QSqlDatabase::database(conexion_, false);
        if (db.isOpen()) {
            if (profundidad_ > 0) {
                QSqlQuery q(db);
                q.exec(QStringLiteral("ROLLBACK"));
                profundidad_ = 0;
            }
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(conexion_);
    conexion_.clear();
}

QSqlDatabase Almacen::base() const {
    if (conexion_.isEmpty()) throw ErrorAlmacen(QStringLiteral("El almacén de datos está cerrado."));
    return QSqlDatabase::database(conexion_, false);
}

std::unique_ptr<Almacen> Almacen::abre(const QString& destino, Apertura apertura) {
    if (destino.startsWith(QLatin1String("postgresql://"), Qt::CaseInsensitive) ||
        destino.startsWith(QLatin1String("postgres://"), Qt::CaseInsensitive))
        return abrePostgreSQL(destino);
    return abreSQLite(destino, apertura);
}

void Almacen::controlaIntegridad(const QString& ruta) {
    // En sólo lectura: un archivo dañado no recibe ni siquiera el traspaso del diario al cerrar.
    const QString nombre = nuevaConexion();
    const QString wal = ruta + QStringLiteral("-wal");
    const QString shm = ruta + QStringLiteral("-shm");
    const bool habiaWal = QFileInfo::exists(wal);
    const bool habiaShm = QFileInfo::exists(shm);
    QString problema;
    QString numero;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), nombre);
        db.setDatabaseName(ruta);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=10000"));
        if (db.open()) {
            sqlite3* h = manejoSQLite(db);
            Plazo plazo;
            plazo.reloj.start();
            if (h) sqlite3_progress_handler(h, 1000, vigilaPlazo, &plazo);
            {
                QSqlQuery q(db);
                q.setForwardOnly(true);
                // La cabecera y el esquema; después cada página de tablas e índices, hasta el primer daño.
                if (q.exec(QStringLiteral("SELECT count(*) FROM sqlite_master")) &&
                    q.exec(QStringLiteral("PRAGMA quick_check(1)"))) {
                    if (q.next() && q.value(0).toString() != QLatin1String("ok")) {
                        problema = q.value(0).toString().simplified();
                        numero = QString::number(SQLITE_CORRUPT);
                    }
                } else if (!plazo.agotado && esDano(q.lastError())) {
                    problema = textoError(q.lastError());
                    numero = numeroError(q.lastError());
                }
                // Otra falla (bloqueo, permisos) no es un daño: la informa la apertura de siempre.
            }
            if (h) sqlite3_progress_handler(h, 0, nullptr, nullptr);
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(nombre);
    if (problema.isEmpty()) return;
    // La carpeta queda como estaba: sin los diarios vacíos que abrir en sólo lectura dejó.
    if (!habiaWal && QFileInfo(wal).size() == 0) QFile::remove(wal);
    if (!habiaShm) QFile::remove(shm);
    throw AlmacenDanado(problema, numero);
}

std::unique_ptr<Almacen> Almacen::abreSQLite(const QString& ruta, Apertura apertura) {
    const QFileInfo archivo(ruta);
    const QFileInfo carpeta(archivo.absolutePath());
    if (!carpeta.exists() || !carpeta.isDir())
        throw ErrorAlmacen(QStringLiteral("No existe la carpeta de datos %1").arg(carpeta.absoluteFilePath()),
                           QStringLiteral("2"));
    if (archivo.exists() && !archivo.isWritable())
        throw ErrorAlmacen(QStringLiteral("El archivo %1 no admite escritura").arg(archivo.absoluteFilePath()),
                           QStringLiteral("13"));
    if (!archivo.exists() && !carpeta.isWritable())
        throw ErrorAlmacen(QStringLiteral("La carpeta %1 no admite escritura").arg(carpeta.absoluteFilePath()),
                           QStringLiteral("13"));
    if (archivo.exists() && apertura == Apertura::ControlaIntegridad)
        controlaIntegridad(archivo.absoluteFilePath());
    // Un almacén nuevo nace sólo para el dueño; SQLite da a sus diarios (-wal, -shm, -journal) los
    // permisos del archivo.
    if (!archivo.exists() && !CreaArchivoPrivado(archivo.absoluteFilePath()))
        throw ErrorAlmacen(QStringLiteral("No se pudo crear el archivo %1").arg(archivo.absoluteFilePath()),
                           QStringLiteral("13"));

    const QString nombre = nuevaConexion();
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), nombre);
        db.setDatabaseName(archivo.absoluteFilePath());
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=10000"));
        if (!db.open()) {
            const QSqlError e = db.lastError();
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(nombre);
            throw ErrorAlmacen(textoError(e), numeroError(e));
        }
    }
    std::unique_ptr<Almacen> a(new Almacen(Dialecto::SQLite, nombre, archivo.absoluteFilePath()));
    // La primera lectura descubre un archivo que no es una base de datos.
    a->valor(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    a->valor(QStringLiteral("PRAGMA journal_mode=WAL"));
    // Lo confirmado queda en el disco aunque se corte la luz o caiga el sistema.
    a->ejecuta(QStringLiteral("PRAGMA synchronous=FULL"));
    a->ejecuta(QStringLiteral("PRAGMA foreign_keys=OFF"));
    if (!RegistraFuncionesSQLite(manejoSQLite(a->base())))
        throw ErrorAlmacen(QStringLiteral("No se pudieron preparar las funciones de búsqueda en %1").arg(archivo.absoluteFilePath()));
    return a;
}

std::unique_ptr<Almacen> Almacen::abrePostgreSQL(const QString& uri) {
    const QUrl url(uri, QUrl::StrictMode);
    if (!url.isValid() || (url.scheme() != QLatin1String("postgresql") && url.scheme() != QLatin1String("postgres")))
        throw ErrorAlmacen(QStringLiteral("La dirección del servidor no es válida: %1").arg(DireccionSinClave(uri)),
                           QStringLiteral("1"));

    QString host = url.host();
    QString base = url.path();
    if (base.startsWith(QLatin1Char('/'))) base.remove(0, 1);
    QStringList opciones;
    bool conTiempo = false;
    const QUrlQuery q(url);
    for (const auto& [clave, valorTexto] : q.queryItems(QUrl::FullyDecoded)) {
        if (clave == QLatin1String("host")) host = valorTexto;
        else if (clave == QLatin1String("dbname")) base = valorTexto;
        else {
            if (clave == QLatin1String("connect_timeout")) conTiempo = true;
            opciones << clave + QLatin1Char('=') + valorTexto;
        }
    }
    if (!conTiempo) opciones << QStringLiteral("connect_timeout=5");

    const QString nombre = nuevaConexion();
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), nombre);
        if (!db.isValid()) {
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(nombre);
            throw ErrorAlmacen(QStringLiteral("Falta el controlador de PostgreSQL (QPSQL)."), QStringLiteral("3"));
        }
        db.setHostName(host);
        if (url.port() > 0) db.setPort(url.port());
        db.setDatabaseName(base);
        db.setUserName(url.userName(QUrl::FullyDecoded));
        db.setPassword(url.password(QUrl::FullyDecoded));
        db.setConnectOptions(opciones.join(QLatin1Char(';')));
        db.setNumericalPrecisionPolicy(QSql::HighPrecision);
        if (!db.open()) {
            const QSqlError e = db.lastError();
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(nombre);
            throw ErrorAlmacen(textoError(e), numeroError(e));
        }
    }
    const QString quien = (host.isEmpty() ? QStringLiteral("localhost") : host) + QLatin1Char('/') + base;
    std::unique_ptr<Almacen> a(new Almacen(Dialecto::PostgreSQL, nombre, quien));
    a->ejecuta(QStringLiteral("SET client_min_messages TO warning"));
    a->ejecuta(QStringLiteral("SET datestyle TO ISO, YMD"));
    return a;
}

void Almacen::fallo(const QSqlQuery& q, const QString& sql) const {
    const QSqlError e = q.lastError();
    throw ErrorAlmacen(textoError(e), numeroError(e), sql);
}

QSqlQuery Almacen::consulta(const QString& sql, const QVariantList& parametros) const {
    QSqlQuery q(base());
    q.setForwardOnly(true);
    if (parametros.isEmpty()) {
        if (!q.exec(sql)) fallo(q, sql);
        return q;
    }
    if (!q.prepare(sql)) fallo(q, sql);
    for (const QVariant& v : parametros) q.addBindValue(v);
    if (!q.exec()) fallo(q, sql);
    return q;
}

QSqlQuery& Almacen::ejecutaPreparada(const QString& sql, const QVariantList& parametros) const {
    constexpr size_t kPreparadasMaximas = 256;
    auto it = preparadas_.find(sql);
    if (it == preparadas_.end()) {
        if (preparadas_.size() >= kPreparadasMaximas) preparadas_.clear();
        auto q = std::make_unique<QSqlQuery>(base());
        q->setForwardOnly(true);
        if (!q->prepare(sql)) fallo(*q, sql);
        it = preparadas_.emplace(sql, std::move(q)).first;
    }
    QSqlQuery& q = *it->second;
    for (qsizetype i = 0; i < parametros.size(); ++i) q.bindValue(int(i), parametros.at(i));
    if (!q.exec()) {
        const QSqlError e = q.lastError();
        preparadas_.erase(it);
        throw ErrorAlmacen(textoError(e), numeroError(e), sql);
    }
    return q;
}

int Almacen::ejecuta(const QString& sql, const QVariantList& parametros) {
    if (parametros.isEmpty()) return consulta(sql).numRowsAffected();
    QSqlQuery& q = ejecutaPreparada(sql, parametros);
    const int filas = q.numRowsAffected();
    q.finish();
    return filas;
}

QVariant Almacen::valor(const QString& sql, const QVariantList& parametros) const {
    if (parametros.isEmpty()) {
        QSqlQuery q = consulta(sql);
        return q.next() ? q.value(0) : QVariant();
    }
    QSqlQuery& q = ejecutaPreparada(sql, parametros);
    const QVariant v = q.next() ? q.value(0) : QVariant();
    q.finish();
    return v;
}

qint64 Almacen::inserta(const QString& sqlInsert, const QVariantList& parametros, const QString& columnaId) {
    // Una clave nueva nunca es nula: nulo es que no volvió ninguna fila.
    const QVariant id = valor(sqlInsert + QStringLiteral(" RETURNING ") + columnaId, parametros);
    if (id.isNull()) throw ErrorAlmacen(QStringLiteral("El almacén no devolvió la clave nueva."), {}, sqlInsert);
    return id.toLongLong();
}

void Almacen::ejecutaGuion(const QString& guion) {
    const QStringList ordenes = guion.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (const QString& o : ordenes) {
        const QString t = o.trimmed();
        if (!t.isEmpty()) ejecuta(t);
    }
}

bool Almacen::existeTabla(const QString& nombre) const {
    if (esPostgreSQL())
        return valor(QStringLiteral("SELECT count(*) FROM information_schema.tables "
                                    "WHERE table_schema = current_schema() AND table_name = lower(?)"),
                     {nombre}).toInt() > 0;
    return valor(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type IN ('table','view') "
                                "AND lower(name) = lower(?)"),
                 {nombre}).toInt() > 0;
}

bool Almacen::existeColumna(const QString& tabla, const QString& columna) const {
    if (esPostgreSQL())
        return valor(QStringLiteral("SELECT count(*) FROM information_schema.columns WHERE table_schema = "
                                    "current_schema() AND table_name = lower(?) AND column_name = lower(?)"),
                     {tabla, columna}).toInt() > 0;
    return valor(QStringLiteral("SELECT count(*) FROM pragma_table_info(?) WHERE lower(name) = lower(?)"),
                 {tabla, columna}).toInt() > 0;
}

void Almacen::comienza() {
    if (profundidad_ == 0)
        ejecuta(esPostgreSQL() ? QStringLiteral("BEGIN") : QStringLiteral("BEGIN IMMEDIATE"));
    else
        ejecuta(QStringLiteral("SAVEPOINT orv_%1").arg(profundidad_));
    ++profundidad_;
}

void Almacen::confirma() {
    if (profundidad_ <= 0) return;
    if (profundidad_ == 1) ejecuta(QStringLiteral("COMMIT"));
    else ejecuta(QStringLiteral("RELEASE SAVEPOINT orv_%1").arg(profundidad_ - 1));
    --profundidad_;
}

void Almacen::deshace() {
    if (profundidad_ <= 0) return;
    --profundidad_;
    QSqlQuery q(base());
    if (profundidad_ == 0) {
        q.exec(QStringLiteral("ROLLBACK"));
    } else {
        q.exec(QStringLiteral("ROLLBACK TO SAVEPOINT orv_%1").arg(profundidad_));
        q.exec(QStringLiteral("RELEASE SAVEPOINT orv_%1").arg(profundidad_));
    }
}

Transaccion::Transaccion(Almacen& a) : almacen_(a) { almacen_.comienza(); }

Transaccion::~Transaccion() {
    if (!terminada_) almacen_.deshace();
}

void Transaccion::confirmar() {
    if (terminada_) return;
    almacen_.confirma();
    terminada_ = true;
}

} // namespace orv
