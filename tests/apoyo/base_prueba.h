#pragma once
// Almacenes de prueba en los dos motores.
//
// SQLite: un archivo nuevo en una carpeta temporal.
// PostgreSQL: un esquema nuevo en el servidor de pruebas que indica ORVANTA_PRUEBA_PG
// (lo levanta scripts/pruebas.sh); sin esa variable las variantes PostgreSQL se omiten.

#include "store/almacen.h"
#include "store/aviso.h"

#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace orv::prueba {

enum class Motor { SQLite, PostgreSQL };

std::string nombreMotor(const ::testing::TestParamInfo<Motor>& info);

// Un almacén vacío y descartable; se borra al destruirse.
class AlmacenDePrueba {
public:
    explicit AlmacenDePrueba(Motor m);
    ~AlmacenDePrueba();
    AlmacenDePrueba(const AlmacenDePrueba&) = delete;
    AlmacenDePrueba& operator=(const AlmacenDePrueba&) = delete;

    Almacen& almacen() { return *almacen_; }
    // Abre otra conexión al mismo almacén (otra terminal).
    std::unique_ptr<Almacen> otraConexion() const;
    // Texto con el que Almacen::abre llega a este mismo almacén.
    const QString& destino() const { return destino_; }
    // Carpeta temporal propia de la prueba (datos, configuración).
    QString carpeta() const { return dir_.path(); }
    Motor motor() const { return motor_; }

private:
    Motor motor_;
    QTemporaryDir dir_;
    QString destino_;
    QString esquema_;
    std::unique_ptr<Almacen> almacen_;
};

// Un almacén SQLite con una tabla de muchas filas y una página del medio rota: se abre y lee su
// esquema sin quejarse; sólo un control de integridad (o leer esa tabla) descubre el daño.
void CreaAlmacenDanado(const QString& ruta);

// Omite la prueba PostgreSQL si no hay servidor de pruebas.
bool hayPostgreSQL();

// Base para pruebas parametrizadas por motor.
class PorMotor : public ::testing::TestWithParam<Motor> {
protected:
    void SetUp() override;
    void TearDown() override { base_.reset(); }
    Almacen& almacen() { return base_->almacen(); }
    AlmacenDePrueba& base() { return *base_; }
    // Corre cada tarea a la vez en su hilo, con su conexión (otra terminal); devuelve lo que falló.
    QStringList enTerminales(const std::vector<std::function<void(Almacen&)>>& tareas);

    std::unique_ptr<AlmacenDePrueba> base_;
};

// Base para pruebas parametrizadas por motor sobre un almacén al día; `prepara` carga lo propio de
// cada prueba (no se llama si el motor se omite).
class PorMotorAlDia : public PorMotor {
protected:
    void SetUp() override;
    virtual void prepara() {}
};

#define ORV_AMBOS_MOTORES(Clase)                                                                   \
    INSTANTIATE_TEST_SUITE_P(Motores, Clase,                                                       \
                             ::testing::Values(::orv::prueba::Motor::SQLite,                       \
                                               ::orv::prueba::Motor::PostgreSQL),                  \
                             ::orv::prueba::nombreMotor)

} // namespace orv::prueba
