#pragma once
// Base de las pruebas de pantallas: un almacén SQLite al día, la configuración en su carpeta, el
// estado de la terminal 1 con el supervisor, un reloj fijo y la salida de los informes; y el
// control hijo por su nombre.

#include "apoyo/base_prueba.h"
#include "app/configuracion.h"
#include "app/estado.h"
#include "reports/ui/salida_informes.h"
#include "store/actualizacion.h"
#include "store/reloj.h"

#include <QWidget>
#include <memory>

namespace orv::prueba {

// El control hijo con ese nombre; la prueba falla si no está.
template <typename T>
T* hijo(const QWidget* w, const char* nombre) {
    T* h = w->findChild<T*>(QString::fromLatin1(nombre));
    EXPECT_NE(h, nullptr) << nombre;
    return h;
}
template <typename T>
T* hijo(const QWidget& w, const char* nombre) {
    return hijo<T>(&w, nombre);
}

class PantallaDePrueba : public ::testing::Test {
protected:
    void SetUp() override {
        base_ = std::make_unique<AlmacenDePrueba>(Motor::SQLite);
        actualizaEsquema(a());
        conf_ = std::make_unique<Configuracion>(base_->carpeta(), base_->carpeta() + QStringLiteral("/u.conf"));
        estado_.IdRed = 1;
        estado_.idUsuarioActual = 1;
        estado_.idNivelActual = 1;
        estado_.idTipoComprobanteActual = 1;
        salida_ = std::make_unique<SalidaInformes>(a(), *conf_, estado_, reloj_, nullptr);
    }
    Almacen& a() { return base_->almacen(); }

    std::unique_ptr<AlmacenDePrueba> base_;
    std::unique_ptr<Configuracion> conf_;
    EstadoAplicacion estado_;
    RelojFijo reloj_{QDateTime(QDate(2026, 11, 23), QTime(9, 15))};
    std::unique_ptr<SalidaInformes> salida_;
};

} // namespace orv::prueba
