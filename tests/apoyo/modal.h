#pragma once
// Ventanas modales abiertas con exec() desde el código que se prueba: un reloj mira cada 5 ms y,
// cuando aparece la esperada, corre la acción sobre ella. Las cajas de mensaje se responden por el
// texto del botón (o Esc si el texto es vacío), anotando lo que mostraron.

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

namespace orv::prueba {

struct Atendida {
    bool vista = false;
};

// Corre `accion` sobre la primera ventana que devuelva `busca`; pasado el límite deja de mirar, para
// no quedarse con una ventana de un paso posterior.
template <typename T>
void alAparecer(std::function<T*()> busca, std::function<void(T*)> accion, int limiteMs) {
    auto* reloj = new QTimer;
    reloj->setInterval(5);
    auto vueltas = std::make_shared<int>(0);
    QObject::connect(reloj, &QTimer::timeout, [reloj, busca, accion, vueltas, limiteMs] {
        const bool vencido = ++*vueltas * 5 > limiteMs;
        T* w = vencido ? nullptr : busca();
        if (!w && !vencido) return;
        reloj->stop();
        reloj->deleteLater();
        if (w) accion(w);
    });
    reloj->start();
}

template <typename T>
std::shared_ptr<Atendida> alAbrirse(std::function<void(T*)> accion, int limiteMs = 10000) {
    auto estado = std::make_shared<Atendida>();
    alAparecer<T>([] { return qobject_cast<T*>(QApplication::activeModalWidget()); },
                  [estado, accion](T* w) {
                      estado->vista = true;
                      accion(w);
                  },
                  limiteMs);
    return estado;
}

struct CajaVista {
    bool vista = false;
    QString titulo;
    QString texto;
    QMessageBox::Icon icono = QMessageBox::NoIcon;
    QStringList botones;
};

// La caja de mensaje visible, aunque otra ventana modal figure como la activa; nullptr si no hay.
inline QMessageBox* cajaVisible() {
    if (auto* caja = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) return caja;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* m = qobject_cast<QMessageBox*>(w); m && m->isVisible()) return m;
    return nullptr;
}

// Pulsa el botón de la caja con ese texto; si no hay ninguno, la cierra.
inline void pulsa(QMessageBox* caja, const QString& boton) {
    for (QAbstractButton* b : caja->buttons())
        if (b->text() == boton) return b->click();
    caja->reject();
}

inline std::shared_ptr<CajaVista> respondeCaja(const QString& boton, int limiteMs = 10000) {
    auto vista = std::make_shared<CajaVista>();
    alAparecer<QMessageBox>(cajaVisible,
                            [vista, boton](QMessageBox* caja) {
                                *vista = {true, caja->windowTitle(), caja->text(), caja->icon(), {}};
                                for (QAbstractButton* b : caja->buttons()) vista->botones << b->text();
                                if (boton.isEmpty())
                                    QTest::keyClick(caja, Qt::Key_Escape);
                                else
                                    pulsa(caja, boton);
                            },
                            limiteMs);
    return vista;
}

// Mientras vive, responde toda caja de mensaje que aparezca y anota su texto: "Sí" a la que empieza
// con `siA` (si se da), "Aceptar" (o Esc) a las demás. Sin `siA` sirve para ver que no aparece
// ninguna sin dejar a nadie esperando la próxima.
class VigiaDeCajas {
public:
    explicit VigiaDeCajas(const QString& siA = {}) {
        QObject::connect(&reloj_, &QTimer::timeout, [this, siA] {
            if (QMessageBox* m = cajaVisible()) {
                vistas << m->text();
                pulsa(m, !siA.isEmpty() && m->text().startsWith(siA) ? QStringLiteral("Sí") : QStringLiteral("Aceptar"));
            }
        });
        reloj_.start(5);
    }
    QStringList vistas;

private:
    QTimer reloj_;
};

} // namespace orv::prueba
