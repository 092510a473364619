// Pantallas de ingreso, supervisor inicial, usuarios y niveles conducidas como lo hace la gente.

#include "access/ingreso.h"
#include "access/niveles.h"
#include "access/ui/pan_ed_usuario.h"
#include "access/ui/pan_ingreso.h"
#include "access/ui/pan_niveles.h"
#include "access/ui/pan_supervisor_inicial.h"
#include "access/ui/panel_usuarios.h"
#include "access/usuarios.h"
#include "apoyo/base_prueba.h"
#include "apoyo/modal.h"
#include "widgets/grilla.h"
#include "store/actualizacion.h"
#include "store/rutinas.h"
#include "../../ui/caja_modal.h"

#include <QCheckBox>
#include <QComboBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

namespace orv {
namespace {

using prueba::alAbrirse;
using prueba::respondeCaja;

template <typename T>
T* hijo(QWidget* w, const char* nombre) {
    T* h = w->findChild<T*>(QString::fromLatin1(nombre));
    EXPECT_NE(h, nullptr) << nombre;
    return h;
}

class PantallasAcceso : public ::testing::Test {
protected:
    void SetUp() override {
        base_ = std::make_unique<prueba::AlmacenDePrueba>(prueba::Motor::SQLite);
        actualizaEsquema(a());
        FijaSupervisorInicial(a(), QStringLiteral("supervisor"), QStringLiteral("super"), QStringLiteral("super"));
        supervisor_ = a().valor(QStringLiteral("SELECT idNivel FROM Niveles WHERE UsuarioSuper <> 0")).toLongLong();
        ana_ = GuardaUsuario(a(), std::nullopt,
                             {QStringLiteral("Ana Núñez"), QStringLiteral("Ana"), QStringLiteral("clave"), supervisor_,
                              QStringLiteral("0")});
    }
    Almacen& a() { return base_->almacen(); }

    std::unique_ptr<prueba::AlmacenDePrueba> base_;
    qint64 supervisor_ = 0;
    qint64 ana_ = 0;
};

TEST_F(PantallasAcceso, IngresoFallidoEsperaAvisaYVaciaLosCampos) {
    PanIngreso p(a());
    p.show();
    EXPECT_TRUE(hijo<QLabel>(&p, "Label5")->text().startsWith(QStringLiteral("Usuario de Windows : ")));
    auto* user = hijo<QLineEdit>(&p, "txUser");
    auto* pass = hijo<QLineEdit>(&p, "txPass");
    EXPECT_EQ(pass->echoMode(), QLineEdit::Password);
    QTest::keyClicks(user, QStringLiteral("ana"));
    QTest::keyClicks(pass, QStringLiteral("equivocada"));
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    QTest::mouseClick(hijo<QPushButton>(&p, "Command1"), Qt::LeftButton);
    // Durante la espera los campos quedan deshabilitados y nada se respondió todavía.
    EXPECT_FALSE(user->isEnabled());
    EXPECT_FALSE(pass->isEnabled());
    EXPECT_FALSE(caja->vista);
    QTRY_VERIFY_WITH_TIMEOUT(caja->vista, 5000);
    EXPECT_EQ(caja->texto, QStringLiteral("Usuario y/o contraseña inválido/a !!"));
    EXPECT_EQ(caja->titulo, QStringLiteral("Error"));
    EXPECT_EQ(caja->icono, QMessageBox::Critical);
    QTRY_VERIFY(user->isEnabled());
    EXPECT_TRUE(pass->isEnabled());
    EXPECT_TRUE(user->text().isEmpty());
    EXPECT_TRUE(pass->text().isEmpty());
    EXPECT_TRUE(p.isVisible());
    EXPECT_FALSE(p.usuario());

    // Segundo intento, con el nombre en otras mayúsculas y Enter: entra.
    QTest::keyClicks(user, QStringLiteral("ANA"));
    QTest::keyClicks(pass, QStringLiteral("clave"));
    QTest::keyClick(pass, Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(!p.isVisible(), 5000);
    EXPECT_EQ(p.result(), QDialog::Accepted);
    ASSERT_TRUE(p.usuario());
    EXPECT_EQ(p.usuario()->idUsuario, ana_);
    EXPECT_EQ(p.usuario()->nombreCompleto, QStringLiteral("Ana Núñez"));
}

TEST_F(PantallasAcceso, CancelarTerminaSinUsuarioAunDuranteLaEspera) {
    PanIngreso p(a());
    p.fijaPausa(300);
    p.show();
    QTest::keyClicks(hijo<QLineEdit>(&p, "txUser"), QStringLiteral("ana"));
    QTest::keyClicks(hijo<QLineEdit>(&p, "txPass"), QStringLiteral("clave"));
    QTest::mouseClick(hijo<QPushButton>(&p, "Command1"), Qt::LeftButton);
    QTest::mouseClick(hijo<QPushButton>(&p, "Command2"), Qt::LeftButton);
    EXPECT_EQ(p.result(), QDialog::Rejected);
    QTest::qWait(400); // la espera ya no responde nada
    EXPECT_FALSE(p.usuario());
    EXPECT_EQ(p.result(), QDialog::Rejected);
}

TEST_F(PantallasAcceso, SupervisorInicialPideLaClaveDosVeces) {
    prueba::AlmacenDePrueba nuevo(prueba::Motor::SQLite);
    actualizaEsquema(nuevo.almacen());
    PanSupervisorInicial p(nuevo.almacen());
    p.show();
    EXPECT_EQ(hijo<QLineEdit>(&p, "txUser")->text(), QStringLiteral("supervisor"));
    QTest::keyClicks(hijo<QLineEdit>(&p, "txPass"), QStringLiteral("uno"));
    QTest::keyClicks(hijo<QLineEdit>(&p, "txPass2"), QStringLiteral("dos"));
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    QTest::mouseClick(hijo<QPushButton>(&p, "Command1"), Qt::LeftButton);
    EXPECT_TRUE(caja->vista);
    EXPECT_EQ(caja->texto, QStringLiteral("Las contraseñas no coinciden!"));
    EXPECT_TRUE(FaltaClaveInicial(nuevo.almacen()));
    EXPECT_TRUE(hijo<QLineEdit>(&p, "txPass")->text().isEmpty());

    QTest::keyClicks(hijo<QLineEdit>(&p, "txPass"), QStringLiteral("la buena"));
    QTest::keyClicks(hijo<QLineEdit>(&p, "txPass2"), QStringLiteral("la buena"));
    QTest::mouseClick(hijo<QPushButton>(&p, "Command1"), Qt::LeftButton);
    EXPECT_EQ(p.result(), QDialog::Accepted);
    EXPECT_FALSE(FaltaClaveInicial(nuevo.almacen()));
    EXPECT_TRUE(Ingresa(nuevo.almacen(), p.usuario(), QStringLiteral("la buena")));
}

TEST_F(PantallasAcceso, AltaModificacionYBajaDeUsuariosDesdeElPanel) {
    PanelUsuarios panel(a());
    panel.resize(900, 600);
    panel.show();
    QSignalSpy cambios(&panel, &PanelUsuarios::usuariosCambiados);

    // Nuevo con datos incompletos: "Datos mal ingresados!" y el diálogo sigue abierto.
    auto caja = std::make_shared<prueba::CajaVista>();
    alAbrirse<PanEdUsuario>([&caja](PanEdUsuario* d) {
        EXPECT_EQ(d->findChild<QLabel*>(QStringLiteral("lblNotaPass"))->text(),
                  QStringLiteral("Obligatoria para un usuario nuevo."));
        QTest::keyClicks(d->findChild<QLineEdit*>(QStringLiteral("txNomCompleto")), QStringLiteral("Beto O'Hara"));
        QTest::keyClicks(d->findChild<QLineEdit*>(QStringLiteral("txUser")), QStringLiteral("beto"));
        caja = respondeCaja(QStringLiteral("Aceptar"));
        QTest::mouseClick(d->findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
        EXPECT_TRUE(d->isVisible());
        // Completa contraseña, nivel y comisión.
        QTest::keyClicks(d->findChild<QLineEdit*>(QStringLiteral("txPass")), QStringLiteral("b3t0"));
        d->findChild<QComboBox*>(QStringLiteral("cbNivel"))->setCurrentIndex(0);
        auto* comision = d->findChild<QLineEdit*>(QStringLiteral("txComision"));
        comision->clear();
        QTest::keyClicks(comision, QStringLiteral("3.5"));
        QTest::mouseClick(d->findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
    });
    QTest::mouseClick(hijo<QPushButton>(&panel, "Command12Users"), Qt::LeftButton);
    EXPECT_TRUE(caja->vista);
    EXPECT_EQ(caja->texto, QStringLiteral("Datos mal ingresados!"));
    EXPECT_EQ(cambios.count(), 1);
    const QVariant beto = a().valor(QStringLiteral("SELECT idUsuario FROM Usuarios WHERE NombreUsuario = 'beto'"));
    ASSERT_FALSE(beto.isNull());
    EXPECT_DOUBLE_EQ(a().valor(QStringLiteral("SELECT Comision FROM Usuarios WHERE idUsuario = ?"), {beto}).toDouble(),
                     3.5);
    const QString resumen =
        a().valor(QStringLiteral("SELECT Contrasenia FROM Usuarios WHERE idUsuario = ?"), {beto}).toString();
    EXPECT_FALSE(resumen.contains(QStringLiteral("b3t0")));
    EXPECT_TRUE(Ingresa(a(), QStringLiteral("beto"), QStringLiteral("b3t0")));

    // La grilla agrupada no muestra contraseñas; en una fila de grupo "Modificar" no hace nada.
    Grilla* g = panel.grilla();
    ASSERT_TRUE(g->agrupada());
    EXPECT_EQ(g->modelo().columna(QStringLiteral("Contrasenia")), -1);
    QTreeWidget* arbol = g->arbol();
    ASSERT_GE(arbol->topLevelItemCount(), 1);
    arbol->setCurrentItem(arbol->topLevelItem(0));
    EXPECT_FALSE(g->filaActual());
    panel.modificar(); // sin diálogo: si se abriera, la prueba quedaría esperando
    // Pone como actual la fila del usuario, dentro de su grupo.
    auto selecciona = [&](qint64 id) {
        for (int i = 0; i < arbol->topLevelItemCount(); ++i)
            for (int h = 0; h < arbol->topLevelItem(i)->childCount(); ++h) {
                arbol->setCurrentItem(arbol->topLevelItem(i)->child(h));
                if (g->claveActual() && g->claveActual()->toLongLong() == id) return true;
            }
        return false;
    };
    ASSERT_TRUE(selecciona(beto.toLongLong()));

    // Modificar: la clave empieza vacía y vacía se conserva.
    alAbrirse<PanEdUsuario>([](PanEdUsuario* d) {
        auto* pass = d->findChild<QLineEdit*>(QStringLiteral("txPass"));
        EXPECT_TRUE(pass->text().isEmpty());
        EXPECT_EQ(d->findChild<QLabel*>(QStringLiteral("lblNotaPass"))->text(),
                  QStringLiteral("Déjela vacía para conservar la contraseña actual."));
        auto* nombre = d->findChild<QLineEdit*>(QStringLiteral("txNomCompleto"));
        EXPECT_EQ(nombre->text(), QStringLiteral("Beto O'Hara"));
        EXPECT_EQ(d->findChild<QLineEdit*>(QStringLiteral("txComision"))->text(), QStringLiteral("3.5"));
        nombre->clear();
        QTest::keyClicks(nombre, QStringLiteral("Alberto O'Hara"));
        QTest::mouseClick(d->findChild<QPushButton*>(QStringLiteral("Command1")), Qt::LeftButton);
    });
    QTest::mouseClick(hijo<QPushButton>(&panel, "Command10Users"), Qt::LeftButton);
    EXPECT_EQ(cambios.count(), 2);
    EXPECT_EQ(a().valor(QStringLiteral("SELECT NombreCompleto FROM Usuarios WHERE idUsuario = ?"), {beto}).toString(),
              QStringLiteral("Alberto O'Hara"));
    EXPECT_EQ(a().valor(QStringLiteral("SELECT Contrasenia FROM Usuarios WHERE idUsuario = ?"), {beto}).toString(),
              resumen);

    // Borrar pregunta y, con "No", no borra.
    ASSERT_TRUE(selecciona(beto.toLongLong()));
    auto pregunta = respondeCaja(QStringLiteral("No"));
    QTest::mouseClick(hijo<QPushButton>(&panel, "Command11Users"), Qt::LeftButton);
    EXPECT_EQ(pregunta->texto, QStringLiteral("Borra este usuario de la lista ??"));
    EXPECT_TRUE(LeeUsuario(a(), beto.toLongLong()));
    respondeCaja(QStringLiteral("Sí"));
    QTest::mouseClick(hijo<QPushButton>(&panel, "Command11Users"), Qt::LeftButton);
    EXPECT_FALSE(LeeUsuario(a(), beto.toLongLong()));
    EXPECT_EQ(cambios.count(), 3);
}

TEST_F(PantallasAcceso, EditorDeNivelesAgregaGuardaAlCambiarDeFilaYNoBorraNivelesEnUso) {
    PanNiveles p(a());
    p.show();
    auto* pestanias = hijo<QTabWidget>(&p, "SSTab1");
    ASSERT_EQ(pestanias->count(), 4);
    EXPECT_EQ(pestanias->tabText(0), QStringLiteral("Ingreso/Cambios"));
    EXPECT_EQ(pestanias->tabText(1), QStringLiteral("Eliminar"));
    EXPECT_EQ(pestanias->tabText(2), QStringLiteral("Visualizar"));
    EXPECT_EQ(pestanias->tabText(3), QStringLiteral("Otros"));
    auto* lista = hijo<QListWidget>(&p, "DBGrid1");
    const int antes = lista->count();

    auto nuevoNivel = [&](const QString& nombre) {
        auto visto = alAbrirse<QInputDialog>([nombre](QInputDialog* d) {
            EXPECT_EQ(d->windowTitle(), QStringLiteral("Nuevo Nivel"));
            EXPECT_EQ(d->labelText(), QStringLiteral("Ingrese el nombre del nivel de acceso"));
            d->setTextValue(nombre);
            d->accept();
        });
        QTest::mouseClick(hijo<QPushButton>(&p, "Command1"), Qt::LeftButton);
        EXPECT_TRUE(visto->vista);
    };
    nuevoNivel(QStringLiteral("Cajeros"));
    ASSERT_EQ(lista->count(), antes + 1);
    nuevoNivel(QStringLiteral("CAJEROS")); // repetido: no se agrega
    EXPECT_EQ(lista->count(), antes + 1);
    const qint64 cajeros = p.nivelActual().value();
    EXPECT_EQ(lista->currentItem()->text(), QStringLiteral("Cajeros"));
    for (const Permiso& per : Permisos()) EXPECT_FALSE(p.casilla(per.columna)->isChecked());

    // Se tilda "Ventas" y "Nivel solo operador de P.O.S."; se graba al pasar a otro nivel.
    p.casilla(QStringLiteral("VeVentas"))->click();
    p.casilla(QStringLiteral("SoloPOS"))->click();
    EXPECT_EQ(p.casilla(QStringLiteral("SoloPOS"))->text(), QStringLiteral("Nivel solo operador de P.O.S."));
    EXPECT_FALSE(TieneNivel(a(), int(cajeros), QStringLiteral("VeVentas")));
    lista->setCurrentRow(0);
    EXPECT_TRUE(TieneNivel(a(), int(cajeros), QStringLiteral("VeVentas")));
    EXPECT_TRUE(ModoPOS(a(), int(cajeros)));
    EXPECT_FALSE(TieneNivel(a(), int(cajeros), QStringLiteral("VeCaja")));

    // El supervisor tiene usuarios: no se borra.
    auto error = respondeCaja(QStringLiteral("Aceptar"));
    QTest::mouseClick(hijo<QPushButton>(&p, "Command2"), Qt::LeftButton);
    EXPECT_EQ(error->texto, QStringLiteral("Existen usuarios ya asignados a éste nivel!"));
    EXPECT_EQ(error->titulo, QStringLiteral("Error"));
    EXPECT_EQ(lista->count(), antes + 1);

    // Cajeros no tiene usuarios: pregunta y borra.
    for (int i = 0; i < lista->count(); ++i)
        if (lista->item(i)->data(Qt::UserRole).toLongLong() == cajeros) lista->setCurrentRow(i);
    auto pregunta = respondeCaja(QStringLiteral("Sí"));
    QTest::mouseClick(hijo<QPushButton>(&p, "Command2"), Qt::LeftButton);
    EXPECT_EQ(pregunta->texto, QStringLiteral("ATENCION! Elimina éste nivel de usuario?"));
    EXPECT_EQ(pregunta->titulo, QStringLiteral("Eliminar"));
    EXPECT_EQ(lista->count(), antes);
    EXPECT_FALSE(LeeNivel(a(), cajeros));
}

TEST_F(PantallasAcceso, NivelRenombradoSeGuardaAlCerrarYUnNombreRepetidoNoSeAcepta) {
    PanNiveles p(a());
    p.show();
    auto* nombre = hijo<QLineEdit>(&p, "txNombre");
    const qint64 id = p.nivelActual().value();
    nombre->setText(QStringLiteral("Dueño"));
    p.casilla(QStringLiteral("PermBackup"))->click();
    QTest::keyClick(&p, Qt::Key_Escape);
    EXPECT_FALSE(p.isVisible());
    EXPECT_EQ(LeeNivel(a(), id)->nombre, QStringLiteral("Dueño"));

    const qint64 otro = NuevoNivel(a(), QStringLiteral("Repositores")).value();
    PanNiveles q(a());
    q.show();
    hijo<QLineEdit>(&q, "txNombre")->setText(QStringLiteral("repositores"));
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    QTest::mouseClick(hijo<QPushButton>(&q, "Command3"), Qt::LeftButton);
    EXPECT_TRUE(caja->vista);
    EXPECT_EQ(LeeNivel(a(), id)->nombre, QStringLiteral("Dueño"));
    EXPECT_EQ(LeeNivel(a(), otro)->nombre, QStringLiteral("Repositores"));
}

// Otro puesto borra el nivel que se está editando con un cambio sin grabar: cualquier salida lo
// dice una sola vez, descarta lo pendiente y hace lo que se pidió.
TEST_F(PantallasAcceso, NivelBorradoPorOtroPuestoNoEncierraAlEditor) {
    const std::function<void(PanNiveles&)> salidas[] = {
        [](PanNiveles& p) { hijo<QListWidget>(&p, "DBGrid1")->setCurrentRow(0); },
        [](PanNiveles& p) { hijo<QPushButton>(&p, "Command3")->click(); },
        [](PanNiveles& p) {
            alAbrirse<QInputDialog>([](QInputDialog* d) { d->reject(); });
            hijo<QPushButton>(&p, "Command1")->click();
        },
        [](PanNiveles& p) { hijo<QPushButton>(&p, "cmdCerrar")->click(); },
        [](PanNiveles& p) { QTest::keyClick(&p, Qt::Key_Escape); },
    };
    for (const auto& sale : salidas) {
        const qint64 id = NuevoNivel(a(), QStringLiteral("Repositores")).value();
        PanNiveles p(a());
        p.show();
        auto* lista = hijo<QListWidget>(&p, "DBGrid1");
        lista->setCurrentRow(lista->count() - 1);
        ASSERT_EQ(p.nivelActual(), id);
        p.casilla(QStringLiteral("VeCaja"))->click();
        base_->otraConexion()->ejecuta(QStringLiteral("DELETE FROM Niveles WHERE idNivel = ?"), {id});
        // Cada caja que aparezca se anota y se acepta; después de la salida, Esc cierra sin más.
        QStringList cajas;
        QTimer responde;
        QObject::connect(&responde, &QTimer::timeout, [&cajas] {
            if (QMessageBox* caja = prueba::cajaVisible()) {
                cajas << caja->text();
                prueba::pulsa(caja, QStringLiteral("Aceptar"));
            }
        });
        responde.start(5);
        sale(p);
        EXPECT_NE(p.nivelActual(), id);
        EXPECT_TRUE(lista->findItems(QStringLiteral("Repositores"), Qt::MatchExactly).isEmpty());
        QTest::keyClick(&p, Qt::Key_Escape);
        QTest::qWait(30);
        EXPECT_FALSE(p.isVisible());
        ASSERT_EQ(cajas.size(), 1) << cajas.join(u'|').toStdString();
        EXPECT_TRUE(cajas[0].startsWith(QStringLiteral("No encontrado!")));
    }
}

} // namespace
} // namespace orv
