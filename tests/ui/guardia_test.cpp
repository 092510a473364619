// La guardia de las acciones y la última red de la aplicación: ninguna falla termina el programa.

#include "app/ui/aplicacion.h"
#include "caja_modal.h"
#include "widgets/mensajes.h"
#include "store/almacen.h"
#include "store/dinero.h"

#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <vector>

using namespace orv;
using orv::prueba::respondeCaja;

namespace {

const QString kNoSeCompleto = QStringLiteral("\nLo que estaba haciendo no se completó; lo ya guardado no cambió.");

TEST(Guardia, CadaFallaSaleComoMensajeYElUsuarioSigueDondeEstaba) {
    struct Caso {
        const char* que;
        std::function<void()> accion;
        QString titulo;
        QString texto;
    };
    const std::vector<Caso> casos = {
        {"aviso", [] { throw Aviso(QStringLiteral("Falta el cliente!"), QStringLiteral("Atención"), Icono::Exclamacion); },
         QStringLiteral("Atención"), QStringLiteral("Falta el cliente!")},
        {"dinero que no cabe", [] { (void)(Dinero(922337203685477) + Dinero(922337203685477)); }, QStringLiteral("Error"),
         QStringLiteral("Importe fuera de rango!")},
        {"falla de la biblioteca", [] { throw std::length_error("vector demasiado grande"); }, QStringLiteral("Error"),
         QStringLiteral("Ocurrió una falla inesperada: vector demasiado grande") + kNoSeCompleto},
        {"cualquier cosa", [] { throw 42; }, QStringLiteral("Error"),
         QStringLiteral("Ocurrió una falla inesperada: sin descripción") + kNoSeCompleto},
    };
    for (const auto& c : casos) {
        auto vista = respondeCaja(QStringLiteral("Aceptar"));
        EXPECT_FALSE(Intenta(nullptr, c.accion)) << c.que;
        EXPECT_TRUE(vista->vista) << c.que;
        EXPECT_EQ(QStringList({vista->titulo, vista->texto}), QStringList({c.titulo, c.texto})) << c.que;
    }
    EXPECT_TRUE(Intenta(nullptr, [] {}));
}

// Un objeto cuyo manejador de eventos falla, como un botón con un error que nadie atrapó.
class Fallon : public QObject {
public:
    bool event(QEvent* e) override {
        if (e->type() == QEvent::User) throw std::runtime_error("se escapó del manejador");
        return QObject::event(e);
    }
};

TEST(Guardia, LaAplicacionMuestraYAnotaLoQueSeEscapaYSigue) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    AplicacionOrvanta::registraEn(dir.path());

    Fallon f;
    auto vista = respondeCaja(QStringLiteral("Aceptar"));
    QEvent evento(QEvent::User);
    EXPECT_FALSE(QCoreApplication::sendEvent(&f, &evento));
    EXPECT_EQ(vista->texto, QStringLiteral("Ocurrió una falla inesperada: se escapó del manejador") + kNoSeCompleto);

    // El programa sigue atendiendo eventos.
    QEvent otro(QEvent::None);
    EXPECT_NO_THROW(QCoreApplication::sendEvent(&f, &otro));

    // Queda anotado en un registro que sólo lee el dueño.
    QFile registro(dir.filePath(QStringLiteral("orvanta.log")));
    ASSERT_TRUE(registro.open(QIODevice::ReadOnly));
    EXPECT_TRUE(QString::fromUtf8(registro.readAll()).contains(QStringLiteral("falla: Falla inesperada: se escapó del manejador")));
    EXPECT_EQ(registro.permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteGroup |
                                        QFileDevice::WriteOther),
              QFileDevice::Permissions());
    AplicacionOrvanta::registraEn(QString());
}

} // namespace
