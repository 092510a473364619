#include "base_prueba.h"

#include "store/actualizacion.h"

#include <QCoreApplication>
#include <QFile>
#include <QRandomGenerator>
#include <QUrl>
#include <QUrlQuery>
#include <mutex>
#include <thread>

namespace orv::prueba {

std::string nombreMotor(const ::testing::TestParamInfo<Motor>& info) {
    return info.param == Motor::SQLite ? "SQLite" : "PostgreSQL";
}

bool hayPostgreSQL() { return !qEnvironmentVariableIsEmpty("ORVANTA_PRUEBA_PG"); }

AlmacenDePrueba::AlmacenDePrueba(Motor m) : motor_(m) {
    if (!dir_.isValid()) throw std::runtime_error("no se pudo crear la carpeta temporal");
    if (m == Motor::SQLite) {
        destino_ = dir_.filePath(QStringLiteral("BASE.db"));
        almacen_ = Almacen::abreSQLite(destino_);
        return;
    }
    const QString uri = qEnvironmentVariable("ORVANTA_PRUEBA_PG");
    esquema_ = QStringLiteral("p%1_%2")
                   .arg(QCoreApplication::applicationPid())
                   .arg(QRandomGenerator::global()->generate64(), 0, 36);
    {
        auto admin = Almacen::abrePostgreSQL(uri);
        admin->ejecuta(QStringLiteral("CREATE SCHEMA ") + esquema_);
    }
    QUrl url(uri);
    QUrlQuery q(url);
    q.addQueryItem(QStringLiteral("options"), QStringLiteral("-csearch_path=") + esquema_);
    url.setQuery(q);
    destino_ = url.toString(QUrl::FullyEncoded);
    almacen_ = Almacen::abrePostgreSQL(destino_);
}

AlmacenDePrueba::~AlmacenDePrueba() {
    almacen_.reset();
    if (motor_ == Motor::PostgreSQL && !esquema_.isEmpty()) {
        try {
            auto admin = Almacen::abrePostgreSQL(qEnvironmentVariable("ORVANTA_PRUEBA_PG"));
            admin->ejecuta(QStringLiteral("DROP SCHEMA ") + esquema_ + QStringLiteral(" CASCADE"));
        } catch (...) {
        }
    }
}

void CreaAlmacenDanado(const QString& ruta) {
    {
        auto a = Almacen::abreSQLite(ruta);
        Transaccion t(*a);
        a->ejecuta(QStringLiteral("CREATE TABLE Lineas (id INTEGER PRIMARY KEY, texto TEXT)"));
        for (int i = 0; i < 400; ++i)
            a->ejecuta(QStringLiteral("INSERT INTO Lineas (texto) VALUES (?)"), {QString(200, QLatin1Char('a' + i % 26))});
        t.confirmar();
    } // al cerrar, el diario pasa al archivo
    const qint64 pagina = 4096;
    QFile f(ruta);
    if (!f.open(QIODevice::ReadWrite) || f.size() < 10 * pagina) throw std::runtime_error("almacén de prueba chico");
    f.seek(6 * pagina); // la séptima página: una hoja de la tabla
    f.write(QByteArray(64, '\xff'));
}

std::unique_ptr<Almacen> AlmacenDePrueba::otraConexion() const { return Almacen::abre(destino_); }

void PorMotor::SetUp() {
    if (GetParam() == Motor::PostgreSQL && !hayPostgreSQL())
        GTEST_SKIP() << "ORVANTA_PRUEBA_PG sin definir: se omite PostgreSQL";
    base_ = std::make_unique<AlmacenDePrueba>(GetParam());
}

QStringList PorMotor::enTerminales(const std::vector<std::function<void(Almacen&)>>& tareas) {
    QStringList errores;
    std::mutex m;
    std::vector<std::thread> hilos;
    for (const auto& tarea : tareas)
        hilos.emplace_back([&, tarea] {
            try {
                tarea(*base_->otraConexion());
            } catch (const std::exception& e) {
                std::lock_guard<std::mutex> l(m);
                errores << QString::fromUtf8(e.what());
            } catch (...) {
                std::lock_guard<std::mutex> l(m);
                errores << QStringLiteral("falla sin descripción");
            }
        });
    for (auto& h : hilos) h.join();
    return errores;
}

void PorMotorAlDia::SetUp() {
    PorMotor::SetUp();
    if (!base_) return;
    actualizaEsquema(almacen());
    prepara();
}

} // namespace orv::prueba
