// Cajas de mensaje del sistema; la guardia de las acciones y la última red de la aplicación
// (ninguna falla termina el programa); carga y selección de listas; ubicación de ventanas; la
// portada, que se cierra con Esc o sola.

#include "app/ui/aplicacion.h"
#include "app/ui/pan_portada.h"
#include "caja_modal.h"
#include "store/dinero.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QFile>
#include <QListWidget>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

using namespace orv;
using orv::prueba::respondeCaja;

namespace {

TEST(Mensajes, TitulosIconosYBotonesDelSistemaYPreguntaVerdaderaSoloConSi) {
    const QString pregunta = QStringLiteral("Pregunta|Borra este rubro ??|%1|Sí,No").arg(QMessageBox::Question);
    const struct {
        std::function<bool()> muestra;
        const char* boton; // vacío: Esc
        bool devuelve;
        QString caja; // título|texto|icono|botones
    } casos[] = {
        {[] { return Pregunta("Borra este rubro"); }, "Sí", true, pregunta},
        {[] { return Pregunta("Borra este rubro"); }, "No", false, pregunta},
        {[] { return Pregunta("Borra este rubro"); }, "", false, pregunta},
        {[] { return MensajeError("No encontrado!"), false; }, "Aceptar", false,
         QStringLiteral("Error|No encontrado!|%1|Aceptar").arg(QMessageBox::Critical)},
        {[] { return MensajeAtencion("Falta el cliente"), false; }, "Aceptar", false,
         QStringLiteral("Atención|Falta el cliente|%1|Aceptar").arg(QMessageBox::Warning)},
        {[] { return MuestraAviso(Aviso("Nivel no permitido!", "Atención", Icono::Exclamacion)), false; },
         "Aceptar", false, QStringLiteral("Atención|Nivel no permitido!|%1|Aceptar").arg(QMessageBox::Warning)},
    };
    for (const auto& c : casos) {
        auto vista = respondeCaja(QString::fromUtf8(c.boton));
        EXPECT_EQ(c.muestra(), c.devuelve) << c.boton;
        EXPECT_EQ(QStringList({vista->titulo, vista->texto, QString::number(vista->icono), vista->botones.join(u',')}).join(u'|'),
                  c.caja);
    }
}

class Listas : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        a_ = Almacen::abreSQLite(dir_.filePath("BASE.db"));
        a_->ejecuta("CREATE TABLE Rubros (idRubro INTEGER PRIMARY KEY, Descripcion TEXT)");
        a_->ejecuta("INSERT INTO Rubros VALUES (10, 'Almacén'), (20, 'Bebidas'), (30, 'Bazar'), (40, 'O''Higgins')");
        LlenaCombo(&rubros_, *a_, "SELECT * FROM Rubros ORDER BY idRubro", {}, "Descripcion",
                   "idRubro");
    }
    // Textos y claves de una lista, en una línea.
    static std::string items(const QComboBox& c) {
        QStringList l;
        for (int i = 0; i < c.count(); ++i) l << c.itemText(i) + u'=' + c.itemData(i).toString();
        return l.join(u'|').toStdString();
    }
    QTemporaryDir dir_;
    std::unique_ptr<Almacen> a_;
    QComboBox rubros_;
};

TEST_F(Listas, LlenanConParametrosYClavesSinVaciarLoQueHabiaYLosErroresSeAvisanSoloEnElCombo) {
    QComboBox combo;
    combo.addItem("<Todos>", 0);
    // Los nombres de los campos, sin distinguir mayúsculas.
    LlenaCombo(&combo, *a_, "SELECT idRubro, Descripcion FROM Rubros WHERE idRubro > ? ORDER BY idRubro", {10},
               "descripcion", "IDRUBRO");
    EXPECT_EQ(items(combo), "<Todos>=0|Bebidas=20|Bazar=30|O'Higgins=40");
    // Una consulta que falla o un campo que no trae: "Error detectado : ... - ..." y la lista como estaba.
    for (const auto& [sql, campo] : {std::pair{"SELECT * FROM NoExiste", "x"}, {"SELECT idRubro FROM Rubros", "Nombre"}}) {
        auto vista = respondeCaja("Aceptar");
        LlenaCombo(&combo, *a_, QString::fromLatin1(sql), {}, QString::fromLatin1(campo), "idRubro");
        EXPECT_TRUE(vista->vista) << sql;
        EXPECT_TRUE(vista->texto.startsWith("Error detectado : ") && vista->texto.contains(" - "))
            << vista->texto.toStdString();
        EXPECT_EQ(combo.count(), 4);
    }
    QListWidget lista;
    LlenaLista(&lista, *a_, "SELECT Descripcion FROM Rubros WHERE Descripcion LIKE ? ORDER BY Descripcion",
               {"B%"}, "Descripcion");
    LlenaLista(&lista, *a_, "SELECT mal FROM", {}, "mal"); // sin caja ni excepción
    ASSERT_EQ(lista.count(), 2);
    EXPECT_EQ(lista.item(0)->text() + u'|' + lista.item(1)->text(), "Bazar|Bebidas");
    QComboBox sinClave;
    LlenaLista(&sinClave, *a_, "SELECT Descripcion FROM Rubros WHERE Descripcion = ?", {"O'Higgins"},
               "Descripcion");
    EXPECT_EQ(items(sinClave), "O'Higgins=");
}

TEST_F(Listas, SeleccionPorClaveOPorLosPrimerosCaracteresSinCoincidenciaNoDejaNada) {
    // Fila que queda elegida en el combo (-1: ninguna).
    const std::pair<std::function<void()>, int> casos[] = {
        {[&] { SelComboId(&rubros_, 30); }, 2},
        {[&] { SelComboId(&rubros_, "20"); }, 1}, // la clave leída como texto también vale
        {[&] { SelComboId(&rubros_, 99); }, -1},
        {[&] { SelComboId(&rubros_, QVariant()); }, -1},
        {[&] { SelComboTexto(&rubros_, "Bazar y regalería", 5); }, 2},
        {[&] { SelComboTexto(&rubros_, "Ba", 2); }, 2}, // el primero que empieza así
        {[&] { SelComboTexto(&rubros_, "bebidas", 7); }, -1}, // distingue mayúsculas
        {[&] { SelComboTexto(&rubros_, "cualquiera", 0); }, 0},
    };
    for (int i = 0; i < int(std::size(casos)); ++i) {
        casos[i].first();
        EXPECT_EQ(rubros_.currentIndex(), casos[i].second) << "caso " << i;
    }
    QComboBox vacio;
    SelComboTexto(&vacio, "x", 0);
    EXPECT_EQ(vacio.currentIndex(), -1);
}

TEST(Ventanas, CentrarVentanaEnSuPantalla) {
    QWidget w;
    w.resize(300, 200);
    w.move(0, 0);
    CentrarVentana(&w);
    const QRect zona = w.screen()->availableGeometry();
    EXPECT_NEAR(w.frameGeometry().center().x(), zona.center().x(), 2);
    EXPECT_NEAR(w.frameGeometry().center().y(), zona.center().y(), 2);
}

const QString kNoSeCompleto = "\nLo que estaba haciendo no se completó; lo ya guardado no cambió.";

TEST(Guardia, CadaFallaSaleComoMensajeYElUsuarioSigueDondeEstaba) {
    struct Caso {
        const char* que;
        std::function<void()> accion;
        QString titulo;
        QString texto;
    };
    const std::vector<Caso> casos = {
        {"aviso", [] { throw Aviso("Falta el cliente!", "Atención", Icono::Exclamacion); },
         "Atención", "Falta el cliente!"},
        {"dinero que no cabe", [] { (void)(Dinero(922337203685477) + Dinero(922337203685477)); }, "Error",
         "Importe fuera de rango!"},
        {"falla de la biblioteca", [] { throw std::length_error("vector demasiado grande"); }, "Error",
         QStringLiteral("Ocurrió una falla inesperada: vector demasiado grande") + kNoSeCompleto},
        {"cualquier cosa", [] { throw 42; }, "Error",
         QStringLiteral("Ocurrió una falla inesperada: sin descripción") + kNoSeCompleto},
    };
    for (const auto& c : casos) {
        auto vista = respondeCaja("Aceptar");
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
    auto vista = respondeCaja("Aceptar");
    QEvent evento(QEvent::User);
    EXPECT_FALSE(QCoreApplication::sendEvent(&f, &evento));
    EXPECT_EQ(vista->texto, QStringLiteral("Ocurrió una falla inesperada: se escapó del manejador") + kNoSeCompleto);

    // El programa sigue atendiendo eventos.
    QEvent otro(QEvent::None);
    EXPECT_NO_THROW(QCoreApplication::sendEvent(&f, &otro));

    // Queda anotado en un registro que sólo lee el dueño.
    QFile registro(dir.filePath("orvanta.log"));
    ASSERT_TRUE(registro.open(QIODevice::ReadOnly));
    EXPECT_TRUE(QString::fromUtf8(registro.readAll()).contains("falla: Falla inesperada: se escapó del manejador"));
    EXPECT_EQ(registro.permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteGroup |
                                        QFileDevice::WriteOther),
              QFileDevice::Permissions());
    AplicacionOrvanta::registraEn(QString());
}

TEST(PanPortada, EscLaCierraYSinoElTemporizador) {
    // Con un minuto por delante, sólo Esc puede cerrarla rechazada.
    PanPortada larga(60000);
    QTimer::singleShot(0, &larga, [&larga] { QTest::keyClick(&larga, Qt::Key_Escape); });
    EXPECT_EQ(larga.exec(), QDialog::Rejected);
    EXPECT_FALSE(larga.isVisible());

    PanPortada corta(80);
    corta.setFundidoMs(20);
    bool salvaguarda = false; // si el temporizador no funcionara, la prueba no se colgaría
    QTimer::singleShot(5000, &corta, [&] {
        salvaguarda = true;
        corta.reject();
    });
    EXPECT_EQ(corta.exec(), QDialog::Accepted);
    EXPECT_FALSE(salvaguarda);
}

} // namespace
