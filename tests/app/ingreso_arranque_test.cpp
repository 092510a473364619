// El ingreso dentro del arranque real: primer ingreso de un almacén nuevo (con claves que primero
// no coinciden) y cancelación.

#include "access/ingreso.h"
#include "access/ui/pan_ingreso.h"
#include "access/ui/pan_supervisor_inicial.h"
#include "apoyo/base_prueba.h"
#include "apoyo/modal.h"
#include "app/ui/interfaz_arranque_qt.h"
#include "store/actualizacion.h"

#include <QLineEdit>
#include <QPushButton>

namespace orv {
namespace {

using prueba::alAbrirse;

// keyClicks sólo sabe teclas ASCII; la eñe se escribe de una vez.
void escribe(QWidget* d, const char* campo, const QString& texto) {
    auto* e = d->findChild<QLineEdit*>(campo);
    ASSERT_NE(e, nullptr) << campo;
    e->setText(texto);
}

void pulsa(QWidget* d, const char* boton) { d->findChild<QPushButton*>(boton)->click(); }

class IngresoAlArrancar : public ::testing::Test {
protected:
    void SetUp() override { actualizaEsquema(base_.almacen()); }
    prueba::AlmacenDePrueba base_{prueba::Motor::SQLite};
    const RelojFijo reloj_{QDateTime(QDate(2026, 11, 22), QTime(9, 0))};
    InterfazArranqueQt ui_{reloj_};
};

TEST_F(IngresoAlArrancar, AlmacenNuevoPideSupervisorYLuegoIngresa) {
    EstadoAplicacion estado;
    auto supervisor = alAbrirse<PanSupervisorInicial>([](PanSupervisorInicial* d) {
        // Claves que no coinciden: se avisa, se borran y el diálogo sigue abierto.
        EXPECT_EQ(d->findChild<QLineEdit*>("txUser")->text(), "supervisor");
        escribe(d, "txPass", "uno");
        escribe(d, "txPass2", "dos");
        auto caja = prueba::respondeCaja("Aceptar");
        pulsa(d, "Command1");
        EXPECT_EQ(caja->texto, "Las contraseñas no coinciden!");
        EXPECT_TRUE(d->findChild<QLineEdit*>("txPass")->text().isEmpty() && d->isVisible());
        escribe(d, "txUser", "Dueña");
        escribe(d, "txPass", "s3cr3ta");
        escribe(d, "txPass2", "s3cr3ta");
        pulsa(d, "Command1");
        // Después del supervisor viene el ingreso, con el nombre ya escrito.
        alAbrirse<PanIngreso>([](PanIngreso* i) {
            EXPECT_EQ(i->findChild<QLineEdit*>("txUser")->text(), "Dueña");
            i->fijaPausa(10);
            escribe(i, "txPass", "s3cr3ta");
            pulsa(i, "Command1");
        });
    });
    ASSERT_TRUE(ui_.login(base_.almacen(), estado));
    EXPECT_TRUE(supervisor->vista);
    EXPECT_EQ(estado.idUsuarioActual, 1);
    EXPECT_EQ(estado.NombreUsuarioActual, "Supervisor");
    EXPECT_FALSE(FaltaClaveInicial(base_.almacen()));

    // El segundo arranque va directo al ingreso; "&Cancelar" deja sin usuario.
    EstadoAplicacion otro;
    auto ingreso = alAbrirse<PanIngreso>([](PanIngreso* i) { pulsa(i, "Command2"); });
    EXPECT_FALSE(ui_.login(base_.almacen(), otro));
    EXPECT_TRUE(ingreso->vista);
    EXPECT_EQ(otro.idUsuarioActual, 0);
}

TEST_F(IngresoAlArrancar, CancelarElSupervisorInicialNoTocaNada) {
    EstadoAplicacion estado;
    alAbrirse<PanSupervisorInicial>([](PanSupervisorInicial* d) {
        escribe(d, "txPass", "x");
        pulsa(d, "Command2");
    });
    EXPECT_FALSE(ui_.login(base_.almacen(), estado));
    EXPECT_TRUE(FaltaClaveInicial(base_.almacen()));
}

} // namespace
} // namespace orv
