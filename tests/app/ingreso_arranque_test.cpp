// El ingreso dentro del arranque real: primer ingreso de un almacén nuevo y cancelación.

#include "access/ingreso.h"
#include "access/ui/pan_ingreso.h"
#include "access/ui/pan_supervisor_inicial.h"
#include "apoyo/base_prueba.h"
#include "apoyo/modal.h"
#include "app/ui/interfaz_arranque_qt.h"
#include "store/actualizacion.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace orv {
namespace {

using prueba::alAbrirse;

void escribe(QWidget* d, const char* campo, const QString& texto) {
    auto* e = d->findChild<QLineEdit*>(QString::fromLatin1(campo));
    ASSERT_NE(e, nullptr) << campo;
    // keyClicks sólo sabe teclas ASCII; la eñe se escribe de una vez.
    e->setText(texto);
}

TEST(IngresoAlArrancar, AlmacenNuevoPideSupervisorYLuegoIngresa) {
    prueba::AlmacenDePrueba base(prueba::Motor::SQLite);
    actualizaEsquema(base.almacen());
    const RelojFijo reloj(QDateTime(QDate(2026, 11, 22), QTime(9, 0)));
    InterfazArranqueQt ui(reloj);
    EstadoAplicacion estado;

    auto supervisor = alAbrirse<PanSupervisorInicial>([](PanSupervisorInicial* d) {
        escribe(d, "txUser", QStringLiteral("Dueña"));
        escribe(d, "txPass", QStringLiteral("s3cr3ta"));
        escribe(d, "txPass2", QStringLiteral("s3cr3ta"));
        d->findChild<QPushButton*>(QStringLiteral("Command1"))->click();
        // Después del supervisor viene el ingreso, con el nombre ya escrito.
        alAbrirse<PanIngreso>([](PanIngreso* i) {
            EXPECT_EQ(i->findChild<QLineEdit*>(QStringLiteral("txUser"))->text(), QStringLiteral("Dueña"));
            i->fijaPausa(10);
            escribe(i, "txPass", QStringLiteral("s3cr3ta"));
            i->findChild<QPushButton*>(QStringLiteral("Command1"))->click();
        });
    });
    ASSERT_TRUE(ui.login(base.almacen(), estado));
    EXPECT_TRUE(supervisor->vista);
    EXPECT_EQ(estado.idUsuarioActual, 1);
    EXPECT_EQ(estado.NombreUsuarioActual, QStringLiteral("Supervisor"));
    EXPECT_FALSE(FaltaClaveInicial(base.almacen()));

    // El segundo arranque va directo al ingreso; "&Cancelar" deja sin usuario.
    EstadoAplicacion otro;
    auto ingreso = alAbrirse<PanIngreso>([](PanIngreso* i) {
        i->findChild<QPushButton*>(QStringLiteral("Command2"))->click();
    });
    EXPECT_FALSE(ui.login(base.almacen(), otro));
    EXPECT_TRUE(ingreso->vista);
    EXPECT_EQ(otro.idUsuarioActual, 0);
}

TEST(IngresoAlArrancar, CancelarElSupervisorInicialNoTocaNada) {
    prueba::AlmacenDePrueba base(prueba::Motor::SQLite);
    actualizaEsquema(base.almacen());
    const RelojFijo reloj(QDateTime(QDate(2026, 11, 22), QTime(9, 0)));
    InterfazArranqueQt ui(reloj);
    EstadoAplicacion estado;
    alAbrirse<PanSupervisorInicial>([](PanSupervisorInicial* d) {
        escribe(d, "txPass", QStringLiteral("x"));
        d->findChild<QPushButton*>(QStringLiteral("Command2"))->click();
    });
    EXPECT_FALSE(ui.login(base.almacen(), estado));
    EXPECT_TRUE(FaltaClaveInicial(base.almacen()));
}

} // namespace
} // namespace orv
