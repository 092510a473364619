// Cajas de mensaje del sistema; la guardia de las acciones y la última red de la aplicación
// (ninguna falla termina el programa); carga y selección de listas; ubicación de ventanas; la
// portada, que se cierra con Esc o sola.

#include "apoyo/modal.h"
#include "app/ui/aplicacion.h"
#include "app/ui/pan_portada.h"
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

const QString kNoSeCompleto = "\nLo que estaba haciendo no se completó; lo ya guardado no cambió.";

// Título, texto, icono y botones de la caja que se vio.
QString caja(const prueba::CajaVista& v) {
    return QStringList({v.titulo, v.texto, QString::number(v.icono), v.botones.join(u',')}).join(u'|');
}

TEST(Mensajes, CajasDelSistemaYLaGuardiaQueMuestraCadaFallaYDejaAlUsuarioDondeEstaba) {
    const QString pregunta = QStringLiteral("Pregunta|Borra este rubro ??|%1|Sí,No").arg(QMessageBox::Question);
    const QString error = QStringLiteral("Error|%2|%1|Aceptar").arg(QMessageBox::Critical);
    const QString atencion = QStringLiteral("Atención|%2|%1|Aceptar").arg(QMessageBox::Warning);
    const struct {
        std::function<bool()> muestra;
        const char* boton; // vacío: Esc
        bool devuelve;
        QString caja;
    } casos[] = {
        // Pregunta agrega los signos y sólo "Sí" es verdadero.
        {[] { return Pregunta("Borra este rubro"); }, "Sí", true, pregunta},
        {[] { return Pregunta("Borra este rubro"); }, "No", false, pregunta},
        {[] { return Pregunta("Borra este rubro"); }, "", false, pregunta},
        {[] { return MensajeError("No encontrado!"), false; }, "Aceptar", false, error.arg("No encontrado!")},
        {[] { return MensajeAtencion("Falta el cliente"), false; }, "Aceptar", false, atencion.arg("Falta el cliente")},
        // La guardia: un aviso, un importe que no cabe, una falla de la biblioteca o cualquier otra cosa.
        {[] { return Intenta(nullptr, [] { throw Aviso("Nivel no permitido!", "Atención", Icono::Exclamacion); }); }, "Aceptar",
         false, atencion.arg("Nivel no permitido!")},
        {[] { return Intenta(nullptr, [] { (void)(Dinero(922337203685477) + Dinero(922337203685477)); }); }, "Aceptar", false,
         error.arg("Importe fuera de rango!")},
        {[] { return Intenta(nullptr, [] { throw std::length_error("vector demasiado grande"); }); }, "Aceptar", false,
         error.arg("Ocurrió una falla inesperada: vector demasiado grande" + kNoSeCompleto)},
        {[] { return Intenta(nullptr, [] { throw 42; }); }, "Aceptar", false,
         error.arg("Ocurrió una falla inesperada: sin descripción" + kNoSeCompleto)},
    };
    for (const auto& c : casos) {
        auto vista = respondeCaja(QString::fromUtf8(c.boton));
        EXPECT_EQ(c.muestra(), c.devuelve) << c.caja.toStdString();
        EXPECT_EQ(caja(*vista), c.caja);
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
    AplicacionOrvanta::registraEn(dir.path());
    Fallon f;
    auto vista = respondeCaja("Aceptar");
    QEvent evento(QEvent::User);
    EXPECT_FALSE(QCoreApplication::sendEvent(&f, &evento));
    EXPECT_EQ(vista->texto, "Ocurrió una falla inesperada: se escapó del manejador" + kNoSeCompleto);
    QEvent otro(QEvent::None); // el programa sigue atendiendo eventos
    EXPECT_NO_THROW(QCoreApplication::sendEvent(&f, &otro));
    // Queda anotado en un registro que sólo lee el dueño.
    QFile registro(dir.filePath("orvanta.log"));
    ASSERT_TRUE(registro.open(QIODevice::ReadOnly));
    EXPECT_TRUE(QString::fromUtf8(registro.readAll()).contains("falla: Falla inesperada: se escapó del manejador"));
    EXPECT_EQ(registro.permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther | QFileDevice::WriteGroup | QFileDevice::WriteOther),
              QFileDevice::Permissions());
    AplicacionOrvanta::registraEn(QString());
}

TEST(Listas, LlenanConParametrosYClavesSinVaciarLoQueHabiaYSeleccionanPorClaveOPorTexto) {
    QTemporaryDir dir;
    auto a = Almacen::abreSQLite(dir.filePath("BASE.db"));
    a->ejecuta("CREATE TABLE Rubros (idRubro INTEGER PRIMARY KEY, Descripcion TEXT)");
    a->ejecuta("INSERT INTO Rubros VALUES (10, 'Almacén'), (20, 'Bebidas'), (30, 'Bazar'), (40, 'O''Higgins')");
    auto items = [](const QComboBox& c) {
        QStringList l;
        for (int i = 0; i < c.count(); ++i) l << c.itemText(i) + u'=' + c.itemData(i).toString();
        return l.join(u'|');
    };
    QComboBox combo;
    combo.addItem("<Todos>", 0);
    // Los nombres de los campos, sin distinguir mayúsculas.
    LlenaCombo(&combo, *a, "SELECT idRubro, Descripcion FROM Rubros WHERE idRubro > ? ORDER BY idRubro", {10}, "descripcion", "IDRUBRO");
    EXPECT_EQ(items(combo), "<Todos>=0|Bebidas=20|Bazar=30|O'Higgins=40");
    // Una consulta que falla o un campo que no trae: "Error detectado : ... - ..." y la lista como estaba.
    for (const auto& [sql, campo] : {std::pair{"SELECT * FROM NoExiste", "x"}, {"SELECT idRubro FROM Rubros", "Nombre"}}) {
        auto vista = respondeCaja("Aceptar");
        LlenaCombo(&combo, *a, sql, {}, campo, "idRubro");
        EXPECT_TRUE(vista->texto.startsWith("Error detectado : ") && vista->texto.contains(" - ")) << vista->texto.toStdString();
        EXPECT_EQ(combo.count(), 4);
    }
    // Las listas sin clave; una consulta que falla no dice nada.
    QListWidget lista;
    LlenaLista(&lista, *a, "SELECT Descripcion FROM Rubros WHERE Descripcion LIKE ? ORDER BY Descripcion", {"B%"}, "Descripcion");
    LlenaLista(&lista, *a, "SELECT mal FROM", {}, "mal");
    ASSERT_EQ(lista.count(), 2);
    EXPECT_EQ(lista.item(0)->text() + u'|' + lista.item(1)->text(), "Bazar|Bebidas");

    // Fila que queda elegida (-1: ninguna): la clave también leída como texto, los primeros caracteres
    // distinguiendo mayúsculas, el primero que empieza así.
    QComboBox rubros;
    LlenaCombo(&rubros, *a, "SELECT * FROM Rubros ORDER BY idRubro", {}, "Descripcion", "idRubro");
    const std::pair<std::function<void()>, int> casos[] = {
        {[&] { SelComboId(&rubros, 30); }, 2},      {[&] { SelComboId(&rubros, "20"); }, 1},
        {[&] { SelComboId(&rubros, 99); }, -1},     {[&] { SelComboId(&rubros, QVariant()); }, -1},
        {[&] { SelComboTexto(&rubros, "Bazar y regalería", 5); }, 2}, {[&] { SelComboTexto(&rubros, "Ba", 2); }, 2},
        {[&] { SelComboTexto(&rubros, "bebidas", 7); }, -1},           {[&] { SelComboTexto(&rubros, "cualquiera", 0); }, 0},
    };
    for (int i = 0; i < int(std::size(casos)); ++i) {
        casos[i].first();
        EXPECT_EQ(rubros.currentIndex(), casos[i].second) << "caso " << i;
    }
}

TEST(Ventanas, CentrarLaVentanaYLaPortadaQueSeCierraConEscOSola) {
    QWidget w;
    w.resize(300, 200);
    w.move(0, 0);
    CentrarVentana(&w);
    EXPECT_LE((w.frameGeometry().center() - w.screen()->availableGeometry().center()).manhattanLength(), 2);
    // Con un minuto por delante, sólo Esc puede cerrar la portada rechazada.
    PanPortada larga(60000);
    QTimer::singleShot(0, &larga, [&larga] { QTest::keyClick(&larga, Qt::Key_Escape); });
    EXPECT_EQ(larga.exec(), QDialog::Rejected);
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
