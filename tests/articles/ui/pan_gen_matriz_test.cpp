// Las pantallas de la matriz: el generador con "Ingresar" de a una fila, "Todas las combinaciones"
// y lo que recuerda, y las características con sus valores.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "articles/ui/pan_gen_matriz.h"
#include "articles/ui/pan_matrices.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace orv {
namespace {

using prueba::hijo;

class PantallasMatriz : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        AgregaCaracteristica(a(), "Color", {"Rojo", "Azul", "Negro"});
        AgregaCaracteristica(a(), "Talle", {"S", "M", "L", "XL"});
    }
    static QStringList textos(const QList<VarianteMatriz>& filas) {
        QStringList r;
        for (const VarianteMatriz& v : filas) r << QStringList{v.codigo, v.descripcion, v.caracteristicas, v.stock}.join('|');
        return r;
    }
};

TEST_F(PantallasMatriz, GeneradorDeAUnaYTodasLasCombinaciones) {
    const QList<VarianteMatriz> antes = {{"0099", "Remera Col:Rojo - Tal:S", "Col:Rojo - Tal:S", "2"}};
    panGenMatriz g(a(), *conf_, "0099", "Remera", "2", antes);
    ASSERT_TRUE(g.listo());
    const auto elige = [&](int lista, std::initializer_list<int> filas) {
        for (int f : filas) {
            g.listas()[lista]->item(f)->setSelected(true);
            Q_EMIT g.listas()[lista]->itemClicked(g.listas()[lista]->item(f));
        }
    };
    EXPECT_FALSE(hijo<QPushButton>(g, "Command3")->isEnabled());
    elige(1, {3});
    hijo<QPushButton>(g, "Command3")->click();
    // Dos valores de una característica no son una fila: se dice y la elección queda.
    elige(0, {0, 1});
    auto caja = prueba::respondeCaja("Aceptar");
    hijo<QPushButton>(g, "Command3")->click();
    EXPECT_TRUE(caja->texto.startsWith("Para \"Ingresar\" elija un solo valor"));
    elige(1, {0, 1});
    hijo<QCheckBox>(g, "optEnDescripcion")->setChecked(false);
    hijo<QLineEdit>(g, "txtSep")->setText("/");
    hijo<QPushButton>(g, "cmdTodas")->click();
    EXPECT_EQ(textos(g.filas()), (QStringList{"0099|Remera Col:Rojo - Tal:S|Col:Rojo - Tal:S|2", "0100|Remera Tal:XL|Tal:XL|2",
                                               "0101|Remera|Col:Rojo / Tal:S|2", "0102|Remera|Col:Rojo / Tal:M|2",
                                               "0103|Remera|Col:Azul / Tal:S|2", "0104|Remera|Col:Azul / Tal:M|2"}));
    EXPECT_EQ(g.listas()[0]->selectedItems().size() + g.listas()[1]->selectedItems().size(), 0);
    hijo<QPushButton>(g, "Command1")->click();
    EXPECT_EQ(g.result(), QDialog::Accepted);
    // Lo elegido queda para la próxima vez.
    panGenMatriz otra(a(), *conf_, "1", "x", "0", {});
    EXPECT_EQ(hijo<QLineEdit>(otra, "txtSep")->text(), "/");
    EXPECT_FALSE(hijo<QCheckBox>(otra, "optEnDescripcion")->isChecked());
}

TEST_F(PantallasMatriz, SinCaracteristicasElGeneradorAvisaYNoSeMuestra) {
    BorraCaracteristica(a(), "Color");
    BorraCaracteristica(a(), "Talle");
    auto caja = prueba::respondeCaja("Aceptar");
    panGenMatriz g(a(), *conf_, "1", "x", "0", {});
    EXPECT_FALSE(g.listo());
    EXPECT_EQ(caja->texto, "Debe crear primero las características de las matrices en Herramientas!");
}

TEST_F(PantallasMatriz, ValoresDeUnaCaracteristica) {
    panMatrices m(a());
    m.caracteristicas()->setCurrentRow(1);
    EXPECT_EQ(hijo<QLabel>(m, "Label3")->text(), "Lista de valores o elementos de la característica Talle");
    m.valorNuevo()->setText("XXL");
    Q_EMIT m.valorNuevo()->returnPressed();
    EXPECT_EQ(m.valores()->count(), 5);
    EXPECT_TRUE(m.valorNuevo()->text().isEmpty());
    // Quitar el último valor de Color se lleva la característica de la lista.
    m.caracteristicas()->setCurrentRow(0);
    for (int i = 0; i < 3; ++i) {
        m.valores()->setCurrentRow(0);
        m.quitaValor();
    }
    QStringList lista;
    for (int i = 0; i < m.caracteristicas()->count(); ++i) lista << m.caracteristicas()->item(i)->text();
    EXPECT_EQ(lista, QStringList{"Talle"});
    EXPECT_EQ(prueba::Filas(a(), "SELECT Tipo, Valor FROM Matriz ORDER BY idMatriz"),
              (QStringList{"Talle|S", "Talle|M", "Talle|L", "Talle|XL", "Talle|XXL"}));
}

} // namespace
} // namespace orv
