#pragma once
// Atiende la próxima ventana modal de un tipo dado: cuando aparece, corre la acción sobre ella.
// Sirve para conducir diálogos abiertos con exec() desde el código que se prueba.

#include <QApplication>
#include <QTimer>
#include <functional>
#include <memory>

namespace orv::prueba {

struct Atendida {
    bool vista = false;
};

template <typename T>
std::shared_ptr<Atendida> alAbrirse(std::function<void(T*)> accion, int limiteMs = 10000) {
    auto estado = std::make_shared<Atendida>();
    auto* reloj = new QTimer;
    reloj->setInterval(5);
    auto vueltas = std::make_shared<int>(0);
    QObject::connect(reloj, &QTimer::timeout, [estado, reloj, accion, vueltas, limiteMs] {
        if (++*vueltas * 5 > limiteMs) {
            reloj->stop();
            reloj->deleteLater();
            return;
        }
        auto* w = qobject_cast<T*>(QApplication::activeModalWidget());
        if (!w) return;
        reloj->stop();
        reloj->deleteLater();
        estado->vista = true;
        accion(w);
    });
    reloj->start();
    return estado;
}

} // namespace orv::prueba
