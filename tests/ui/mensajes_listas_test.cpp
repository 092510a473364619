// Cajas de mensaje del sistema y carga/selección de listas.

#include "caja_modal.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QListWidget>
#include <QScreen>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace orv;
using orv::prueba::respondeCaja;

namespace {

TEST(Mensajes, PreguntaAgregaSignosYDevuelveVerdaderoSoloConSi) {
    auto vista = respondeCaja(QStringLiteral("Sí"));
    EXPECT_TRUE(Pregunta(QStringLiteral("Borra este rubro")));
    ASSERT_TRUE(vista->vista);
    EXPECT_EQ(vista->texto, QStringLiteral("Borra este rubro ??"));
    EXPECT_EQ(vista->titulo, QStringLiteral("Pregunta"));
    EXPECT_EQ(vista->icono, QMessageBox::Question);
    EXPECT_EQ(vista->botones.size(), 2);
    EXPECT_TRUE(vista->botones.contains(QStringLiteral("No")));

    respondeCaja(QStringLiteral("No"));
    EXPECT_FALSE(Pregunta(QStringLiteral("Borra este rubro")));
    respondeCaja(QString()); // Esc
    EXPECT_FALSE(Pregunta(QStringLiteral("Borra este rubro")));
}

TEST(Mensajes, TitulosEIconosDelSistema) {
    auto error = respondeCaja(QStringLiteral("Aceptar"));
    MensajeError(QStringLiteral("No encontrado!"));
    EXPECT_EQ(error->titulo, QStringLiteral("Error"));
    EXPECT_EQ(error->icono, QMessageBox::Critical);
    EXPECT_EQ(error->botones, QStringList{QStringLiteral("Aceptar")});

    auto atencion = respondeCaja(QStringLiteral("Aceptar"));
    MensajeAtencion(QStringLiteral("Falta el cliente"));
    EXPECT_EQ(atencion->titulo, QStringLiteral("Atención"));
    EXPECT_EQ(atencion->icono, QMessageBox::Warning);

    auto aviso = respondeCaja(QStringLiteral("Aceptar"));
    MuestraAviso(Aviso(QStringLiteral("Nivel no permitido!"), QStringLiteral("Atención"), Icono::Exclamacion));
    EXPECT_EQ(aviso->texto, QStringLiteral("Nivel no permitido!"));
    EXPECT_EQ(aviso->titulo, QStringLiteral("Atención"));
}

class Listas : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        a_ = Almacen::abreSQLite(dir_.filePath(QStringLiteral("BASE.db")));
        a_->ejecuta(QStringLiteral("CREATE TABLE Rubros (idRubro INTEGER PRIMARY KEY, Descripcion TEXT)"));
        for (const auto& [id, d] : QList<QPair<int, QString>>{
                 {10, QStringLiteral("Almacén")}, {20, QStringLiteral("Bebidas")}, {30, QStringLiteral("Bazar")},
                 {40, QStringLiteral("O'Higgins")}})
            a_->ejecuta(QStringLiteral("INSERT INTO Rubros VALUES (?, ?)"), {id, d});
    }
    QTemporaryDir dir_;
    std::unique_ptr<Almacen> a_;
};

TEST_F(Listas, LlenaComboGuardaLaClaveYNoVaciaLaLista) {
    QComboBox combo;
    combo.addItem(QStringLiteral("<Todos>"), 0);
    LlenaCombo(&combo, *a_, QStringLiteral("SELECT idRubro, Descripcion FROM Rubros WHERE idRubro > ? ORDER BY idRubro"),
               {10}, QStringLiteral("descripcion"), QStringLiteral("IDRUBRO"));
    ASSERT_EQ(combo.count(), 4);
    EXPECT_EQ(combo.itemText(0), QStringLiteral("<Todos>"));
    EXPECT_EQ(combo.itemText(3), QStringLiteral("O'Higgins"));
    EXPECT_EQ(combo.itemData(1).toInt(), 20);
    EXPECT_EQ(combo.itemData(3).toInt(), 40);
}

TEST_F(Listas, LlenaComboConErrorAvisaYSigue) {
    QComboBox combo;
    combo.addItem(QStringLiteral("previo"), 1);
    auto vista = respondeCaja(QStringLiteral("Aceptar"));
    LlenaCombo(&combo, *a_, QStringLiteral("SELECT * FROM NoExiste"), {}, QStringLiteral("x"), QStringLiteral("y"));
    ASSERT_TRUE(vista->vista);
    EXPECT_TRUE(vista->texto.startsWith(QStringLiteral("Error detectado : "))) << qPrintable(vista->texto);
    EXPECT_TRUE(vista->texto.contains(QStringLiteral(" - ")));
    EXPECT_EQ(combo.count(), 1);

    // Un campo que la consulta no trae también es un error informado.
    auto campo = respondeCaja(QStringLiteral("Aceptar"));
    LlenaCombo(&combo, *a_, QStringLiteral("SELECT idRubro FROM Rubros"), {}, QStringLiteral("Nombre"),
               QStringLiteral("idRubro"));
    EXPECT_TRUE(campo->vista);
    EXPECT_EQ(combo.count(), 1);
}

TEST_F(Listas, LlenaListaAgregaEnOrdenEIgnoraErrores) {
    QListWidget lista;
    LlenaLista(&lista, *a_, QStringLiteral("SELECT Descripcion FROM Rubros WHERE Descripcion LIKE ? ORDER BY Descripcion"),
               {QStringLiteral("B%")}, QStringLiteral("Descripcion"));
    ASSERT_EQ(lista.count(), 2);
    EXPECT_EQ(lista.item(0)->text(), QStringLiteral("Bazar"));
    EXPECT_EQ(lista.item(1)->text(), QStringLiteral("Bebidas"));
    LlenaLista(&lista, *a_, QStringLiteral("SELECT mal FROM"), {}, QStringLiteral("mal")); // sin caja ni excepción
    EXPECT_EQ(lista.count(), 2);

    QComboBox combo;
    LlenaLista(&combo, *a_, QStringLiteral("SELECT Descripcion FROM Rubros WHERE Descripcion = ?"),
               {QStringLiteral("O'Higgins")}, QStringLiteral("Descripcion"));
    ASSERT_EQ(combo.count(), 1);
    EXPECT_FALSE(combo.itemData(0).isValid());
}

TEST_F(Listas, SelComboIdSinCoincidenciaNoDejaNadaSeleccionado) {
    QComboBox combo;
    LlenaCombo(&combo, *a_, QStringLiteral("SELECT * FROM Rubros ORDER BY idRubro"), {}, QStringLiteral("Descripcion"),
               QStringLiteral("idRubro"));
    SelComboId(&combo, 30);
    EXPECT_EQ(combo.currentText(), QStringLiteral("Bazar"));
    SelComboId(&combo, QStringLiteral("20")); // la clave leída como texto también vale
    EXPECT_EQ(combo.currentIndex(), 1);
    SelComboId(&combo, 99);
    EXPECT_EQ(combo.currentIndex(), -1);
    SelComboId(&combo, QVariant());
    EXPECT_EQ(combo.currentIndex(), -1);
}

TEST_F(Listas, SelComboTextoComparaLosPrimerosCaracteres) {
    QComboBox combo;
    LlenaCombo(&combo, *a_, QStringLiteral("SELECT * FROM Rubros ORDER BY idRubro"), {}, QStringLiteral("Descripcion"),
               QStringLiteral("idRubro"));
    SelComboTexto(&combo, QStringLiteral("Bazar y regalería"), 5);
    EXPECT_EQ(combo.currentText(), QStringLiteral("Bazar"));
    SelComboTexto(&combo, QStringLiteral("Ba"), 2); // el primero que empieza así
    EXPECT_EQ(combo.currentText(), QStringLiteral("Bazar"));
    SelComboTexto(&combo, QStringLiteral("bebidas"), 7); // distingue mayúsculas
    EXPECT_EQ(combo.currentIndex(), -1);
    SelComboTexto(&combo, QStringLiteral("cualquiera"), 0);
    EXPECT_EQ(combo.currentIndex(), 0);

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
