// Pantallas de ingreso, supervisor inicial, usuarios y niveles conducidas como lo hace la gente.

#include "access/ingreso.h"
#include "access/niveles.h"
#include "access/ui/pan_ed_usuario.h"
#include "access/ui/pan_ingreso.h"
#include "access/ui/pan_niveles.h"
#include "access/ui/panel_usuarios.h"
#include "access/usuarios.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "store/rutinas.h"
#include "widgets/grilla.h"

#include <QSignalSpy>
#include <QTest>
#include <QtWidgets>
#include <functional>

namespace orv {
namespace {

using prueba::alAbrirse;
using prueba::hijo;
using prueba::respondeCaja;

void pulsa(QWidget* w, const char* boton) { QTest::mouseClick(hijo<QPushButton>(w, boton), Qt::LeftButton); }
void escribe(QWidget* w, const char* campo, const QString& texto) {
    hijo<QLineEdit>(w, campo)->clear();
    QTest::keyClicks(hijo<QLineEdit>(w, campo), texto);
}

class PantallasAcceso : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        FijaSupervisorInicial(a(), "supervisor", "super", "super");
        const qint64 supervisor = a().valor("SELECT idNivel FROM Niveles WHERE UsuarioSuper <> 0").toLongLong();
        ana_ = GuardaUsuario(a(), std::nullopt, {"Ana Núñez", "Ana", "clave", supervisor, "0"});
    }
    QVariant valor(const char* sql, const QVariantList& p = {}) { return a().valor(QString::fromLatin1(sql), p); }

    qint64 ana_ = 0;
};

TEST_F(PantallasAcceso, IngresoFallidoEsperaAvisaYVaciaLosCamposYElSegundoEntraConEnter) {
    PanIngreso p(a());
    p.show();
    auto* user = hijo<QLineEdit>(&p, "txUser");
    auto* pass = hijo<QLineEdit>(&p, "txPass");
    EXPECT_EQ(pass->echoMode(), QLineEdit::Password);
    escribe(&p, "txUser", "ana");
    escribe(&p, "txPass", "equivocada");
    auto caja = respondeCaja("Aceptar");
    pulsa(&p, "Command1");
    // Durante la espera los campos quedan deshabilitados y nada se respondió todavía.
    EXPECT_FALSE(user->isEnabled() || pass->isEnabled() || caja->vista);
    ASSERT_TRUE(QTest::qWaitFor([&] { return caja->vista; }, 5000));
    EXPECT_EQ(QStringList({caja->titulo, caja->texto}), QStringList({"Error", "Usuario y/o contraseña inválido/a !!"}));
    EXPECT_EQ(caja->icono, QMessageBox::Critical);
    EXPECT_TRUE(QTest::qWaitFor([&] { return user->isEnabled(); }, 5000));
    EXPECT_TRUE(pass->isEnabled() && user->text().isEmpty() && pass->text().isEmpty() && p.isVisible());
    EXPECT_FALSE(p.usuario());

    escribe(&p, "txUser", "ANA");
    escribe(&p, "txPass", "clave");
    QTest::keyClick(pass, Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !p.isVisible(); }, 5000));
    EXPECT_EQ(p.result(), QDialog::Accepted);
    ASSERT_TRUE(p.usuario());
    EXPECT_EQ(p.usuario()->idUsuario, ana_);
}

TEST_F(PantallasAcceso, CancelarTerminaSinUsuarioAunDuranteLaEspera) {
    PanIngreso p(a());
    p.fijaPausa(300);
    p.show();
    escribe(&p, "txUser", "ana");
    escribe(&p, "txPass", "clave");
    pulsa(&p, "Command1");
    pulsa(&p, "Command2");
    EXPECT_EQ(p.result(), QDialog::Rejected);
    QTest::qWait(400); // la espera ya no responde nada
    EXPECT_FALSE(p.usuario());
    EXPECT_EQ(p.result(), QDialog::Rejected);
}

TEST_F(PantallasAcceso, AltaModificacionYBajaDeUsuariosDesdeElPanel) {
    PanelUsuarios panel(a());
    panel.resize(900, 600);
    panel.show();
    QSignalSpy cambios(&panel, &PanelUsuarios::usuariosCambiados);
    auto contrasenia = [&](qint64 id) { return valor("SELECT Contrasenia FROM Usuarios WHERE idUsuario = ?", {id}).toString(); };

    // Nuevo sin contraseña: "Datos mal ingresados!" y el diálogo sigue abierto; completo, se graba y entra con su clave.
    auto caja = std::make_shared<prueba::CajaVista>();
    alAbrirse<PanEdUsuario>([&caja](PanEdUsuario* d) {
        escribe(d, "txNomCompleto", "Beto O'Hara");
        escribe(d, "txUser", "beto");
        caja = respondeCaja("Aceptar");
        pulsa(d, "Command1");
        EXPECT_TRUE(d->isVisible());
        escribe(d, "txPass", "b3t0");
        hijo<QComboBox>(d, "cbNivel")->setCurrentIndex(0);
        escribe(d, "txComision", "3.5");
        pulsa(d, "Command1");
    });
    pulsa(&panel, "Command12Users");
    EXPECT_EQ(caja->texto, "Datos mal ingresados!");
    const qint64 beto = valor("SELECT idUsuario FROM Usuarios WHERE NombreUsuario = 'beto'").toLongLong();
    const QString resumen = contrasenia(beto);
    EXPECT_TRUE(Ingresa(a(), "beto", "b3t0"));

    // La grilla agrupada no muestra contraseñas; en una fila de grupo "Modificar" no abre nada.
    Grilla* g = panel.grilla();
    ASSERT_TRUE(g->agrupada());
    EXPECT_EQ(g->modelo().columna("Contrasenia"), -1);
    QTreeWidget* arbol = g->arbol();
    arbol->setCurrentItem(arbol->topLevelItem(0));
    panel.modificar(); // si se abriera un diálogo, la prueba quedaría esperando
    auto selecciona = [&] { // la fila de beto, dentro de su grupo
        for (int i = 0; i < arbol->topLevelItemCount(); ++i)
            for (int h = 0; h < arbol->topLevelItem(i)->childCount(); ++h) {
                arbol->setCurrentItem(arbol->topLevelItem(i)->child(h));
                if (g->claveActual() && g->claveActual()->toLongLong() == beto) return true;
            }
        return false;
    };
    // Modificar: la clave empieza vacía y vacía se conserva.
    ASSERT_TRUE(selecciona());
    alAbrirse<PanEdUsuario>([](PanEdUsuario* d) {
        EXPECT_EQ(hijo<QLineEdit>(d, "txPass")->text() + u'|' + hijo<QLineEdit>(d, "txComision")->text(), "|3.5");
        escribe(d, "txNomCompleto", "Alberto O'Hara");
        pulsa(d, "Command1");
    });
    pulsa(&panel, "Command10Users");
    EXPECT_EQ(valor("SELECT NombreCompleto FROM Usuarios WHERE idUsuario = ?", {beto}).toString() + u'|' + contrasenia(beto),
              "Alberto O'Hara|" + resumen);
    // Borrar pregunta y, con "No", no borra.
    for (const char* respuesta : {"No", "Sí"}) {
        ASSERT_TRUE(selecciona());
        auto pregunta = respondeCaja(QString::fromUtf8(respuesta));
        pulsa(&panel, "Command11Users");
        EXPECT_EQ(pregunta->texto, "Borra este usuario de la lista ??");
        EXPECT_EQ(LeeUsuario(a(), beto).has_value(), *respuesta == 'N');
    }
    EXPECT_EQ(cambios.count(), 3);
}

TEST_F(PantallasAcceso, EditorDeNivelesAgregaGuardaAlCambiarDeFilaOCerrarYNoBorraNivelesEnUso) {
    PanNiveles p(a());
    p.show();
    auto* lista = hijo<QListWidget>(&p, "DBGrid1");
    const int antes = lista->count();
    auto visto = alAbrirse<QInputDialog>([](QInputDialog* d) {
        EXPECT_EQ(d->windowTitle() + u'|' + d->labelText(), "Nuevo Nivel|Ingrese el nombre del nivel de acceso");
        d->setTextValue("Cajeros");
        d->accept();
    });
    pulsa(&p, "Command1");
    EXPECT_TRUE(visto->vista);
    EXPECT_EQ(lista->count(), antes + 1);
    const qint64 cajeros = p.nivelActual().value();
    EXPECT_EQ(lista->currentItem()->text(), "Cajeros");

    // Se tilda "Ventas" y "Nivel solo operador de P.O.S."; se graba al pasar a otro nivel.
    p.casilla("VeVentas")->click();
    p.casilla("SoloPOS")->click();
    EXPECT_FALSE(TieneNivel(a(), int(cajeros), "VeVentas"));
    lista->setCurrentRow(0);
    EXPECT_EQ(ControlesSinPermiso(a(), int(cajeros)).size(), 36); // sólo Ventas
    EXPECT_TRUE(ModoPOS(a(), int(cajeros)));

    // El supervisor tiene usuarios: no se borra. Cajeros no tiene: pregunta y borra.
    auto error = respondeCaja("Aceptar");
    pulsa(&p, "Command2");
    EXPECT_EQ(QStringList({error->titulo, error->texto}), QStringList({"Error", "Existen usuarios ya asignados a éste nivel!"}));
    EXPECT_EQ(lista->count(), antes + 1);
    lista->setCurrentItem(lista->findItems("Cajeros", Qt::MatchExactly).value(0));
    auto pregunta = respondeCaja("Sí");
    pulsa(&p, "Command2");
    EXPECT_EQ(QStringList({pregunta->titulo, pregunta->texto}),
              QStringList({"Eliminar", "ATENCION! Elimina éste nivel de usuario?"}));
    EXPECT_EQ(lista->count(), antes);
    EXPECT_FALSE(LeeNivel(a(), cajeros));

    // Renombrado y con un permiso más, se graba al cerrar con Esc.
    lista->setCurrentRow(0);
    const qint64 id = p.nivelActual().value();
    hijo<QLineEdit>(&p, "txNombre")->setText("Dueño");
    p.casilla("PermBackup")->click();
    QTest::keyClick(&p, Qt::Key_Escape);
    EXPECT_FALSE(p.isVisible());
    EXPECT_EQ(LeeNivel(a(), id)->nombre, "Dueño");
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
        const qint64 id = NuevoNivel(a(), "Repositores").value();
        PanNiveles p(a());
        p.show();
        auto* lista = hijo<QListWidget>(&p, "DBGrid1");
        lista->setCurrentRow(lista->count() - 1);
        ASSERT_EQ(p.nivelActual(), id);
        p.casilla("VeCaja")->click();
        base_->otraConexion()->ejecuta("DELETE FROM Niveles WHERE idNivel = ?", {id});
        // Cada caja que aparezca se anota y se acepta; después de la salida, Esc cierra sin más.
        prueba::VigiaDeCajas vigia;
        sale(p);
        EXPECT_NE(p.nivelActual(), id);
        EXPECT_TRUE(lista->findItems("Repositores", Qt::MatchExactly).isEmpty());
        QTest::keyClick(&p, Qt::Key_Escape);
        QTest::qWait(30);
        EXPECT_FALSE(p.isVisible());
        ASSERT_EQ(vigia.vistas.size(), 1) << vigia.vistas.join(u'|').toStdString();
        EXPECT_TRUE(vigia.vistas[0].startsWith("No encontrado!"));
    }
}

} // namespace
} // namespace orv
