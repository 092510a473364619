// Cajas de mensaje del sistema, carga y selección de listas, ubicación de ventanas.

#include "caja_modal.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QListWidget>
#include <QScreen>
#include <QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>

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
        {[] { return Pregunta(QStringLiteral("Borra este rubro")); }, "Sí", true, pregunta},
        {[] { return Pregunta(QStringLiteral("Borra este rubro")); }, "No", false, pregunta},
        {[] { return Pregunta(QStringLiteral("Borra este rubro")); }, "", false, pregunta},
        {[] { return MensajeError(QStringLiteral("No encontrado!")), false; }, "Aceptar", false,
         QStringLiteral("Error|No encontrado!|%1|Aceptar").arg(QMessageBox::Critical)},
        {[] { return MensajeAtencion(QStringLiteral("Falta el cliente")), false; }, "Aceptar", false,
         QStringLiteral("Atención|Falta el cliente|%1|Aceptar").arg(QMessageBox::Warning)},
        {[] { return MuestraAviso(Aviso(QStringLiteral("Nivel no permitido!"), QStringLiteral("Atención"), Icono::Exclamacion)), false; },
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
        a_ = Almacen::abreSQLite(dir_.filePath(QStringLiteral("BASE.db")));
        a_->ejecuta(QStringLiteral("CREATE TABLE Rubros (idRubro INTEGER PRIMARY KEY, Descripcion TEXT)"));
        a_->ejecuta(QStringLiteral("INSERT INTO Rubros VALUES (10, 'Almacén'), (20, 'Bebidas'), (30, 'Bazar'), (40, 'O''Higgins')"));
        LlenaCombo(&rubros_, *a_, QStringLiteral("SELECT * FROM Rubros ORDER BY idRubro"), {}, QStringLiteral("Descripcion"),
                   QStringLiteral("idRubro"));
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
    combo.addItem(QStringLiteral("<Todos>"), 0);
    // Los nombres de los campos, sin distinguir mayúsculas.
    LlenaCombo(&combo, *a_, QStringLiteral("SELECT idRubro, Descripcion FROM Rubros WHERE idRubro > ? ORDER BY idRubro"), {10},
               QStringLiteral("descripcion"), QStringLiteral("IDRUBRO"));
    EXPECT_EQ(items(combo), "<Todos>=0|Bebidas=20|Bazar=30|O'Higgins=40");
    // Una consulta que falla o un campo que no trae: "Error detectado : ... - ..." y la lista como estaba.
    for (const auto& [sql, campo] : {std::pair{"SELECT * FROM NoExiste", "x"}, {"SELECT idRubro FROM Rubros", "Nombre"}}) {
        auto vista = respondeCaja(QStringLiteral("Aceptar"));
        LlenaCombo(&combo, *a_, QString::fromLatin1(sql), {}, QString::fromLatin1(campo), QStringLiteral("idRubro"));
        EXPECT_TRUE(vista->vista) << sql;
        EXPECT_TRUE(vista->texto.startsWith(QStringLiteral("Error detectado : ")) && vista->texto.contains(QStringLiteral(" - ")))
            << vista->texto.toStdString();
        EXPECT_EQ(combo.count(), 4);
    }
    QListWidget lista;
    LlenaLista(&lista, *a_, QStringLiteral("SELECT Descripcion FROM Rubros WHERE Descripcion LIKE ? ORDER BY Descripcion"),
               {QStringLiteral("B%")}, QStringLiteral("Descripcion"));
    LlenaLista(&lista, *a_, QStringLiteral("SELECT mal FROM"), {}, QStringLiteral("mal")); // sin caja ni excepción
    ASSERT_EQ(lista.count(), 2);
    EXPECT_EQ(lista.item(0)->text() + u'|' + lista.item(1)->text(), QStringLiteral("Bazar|Bebidas"));
    QComboBox sinClave;
    LlenaLista(&sinClave, *a_, QStringLiteral("SELECT Descripcion FROM Rubros WHERE Descripcion = ?"), {QStringLiteral("O'Higgins")},
               QStringLiteral("Descripcion"));
    EXPECT_EQ(items(sinClave), "O'Higgins=");
}

TEST_F(Listas, SeleccionPorClaveOPorLosPrimerosCaracteresSinCoincidenciaNoDejaNada) {
    // Fila que queda elegida en el combo (-1: ninguna).
    const std::pair<std::function<void()>, int> casos[] = {
        {[&] { SelComboId(&rubros_, 30); }, 2},
        {[&] { SelComboId(&rubros_, QStringLiteral("20")); }, 1}, // la clave leída como texto también vale
        {[&] { SelComboId(&rubros_, 99); }, -1},
        {[&] { SelComboId(&rubros_, QVariant()); }, -1},
        {[&] { SelComboTexto(&rubros_, QStringLiteral("Bazar y regalería"), 5); }, 2},
        {[&] { SelComboTexto(&rubros_, QStringLiteral("Ba"), 2); }, 2}, // el primero que empieza así
        {[&] { SelComboTexto(&rubros_, QStringLiteral("bebidas"), 7); }, -1}, // distingue mayúsculas
        {[&] { SelComboTexto(&rubros_, QStringLiteral("cualquiera"), 0); }, 0},
    };
    for (int i = 0; i < int(std::size(casos)); ++i) {
        casos[i].first();
        EXPECT_EQ(rubros_.currentIndex(), casos[i].second) << "caso " << i;
    }
    QComboBox vacio;
    SelComboTexto(&vacio, QStringLiteral("x"), 0);
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

} // namespace
