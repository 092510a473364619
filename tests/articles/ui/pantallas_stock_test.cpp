// Pantallas de rubros y de stock con el teclado: lo que muestran al abrir, lo que recuerdan, dónde
// queda el foco ante un rechazo, y que Enter acepta o busca donde corresponde.

#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "articles/movimientos_stock.h"
#include "articles/ui/pan_camb_stock.h"
#include "articles/ui/pan_ed_rubros.h"
#include "articles/ui/pan_ingr_stock.h"
#include "articles/ui/pan_rubros.h"
#include "sales/ui/panel_prueba.h"
#include "widgets/grilla.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace orv {
namespace {

using prueba::hijo;
using prueba::respondeCaja;
using prueba::Textos;

class PantallasStock : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (idArticulo, Codigo, Descripcion, StockActual, StockMinimo) VALUES "
                                   "(1, '010001', 'Yerba Mate 1 kg', 10, 2), (2, '020001', 'Lavandina 1 l', 4, 1), "
                                   "(3, '020002', 'Detergente', 7, 3)"));
    }
    QStringList stock() {
        return prueba::Filas(a(), QStringLiteral("SELECT StockActual, StockMinimo FROM Articulos ORDER BY idArticulo"));
    }
};

TEST_F(PantallasStock, AjusteRecuerdaTipoYComprobanteYEnterAcepta) {
    const QString compra = QString::number(*IdTipoMovimiento(a(), kTipoCompra));
    {
        PanIngrStock d(a(), *conf_, reloj_, 1);
        d.show();
        QApplication::setActiveWindow(&d);
        EXPECT_EQ(Textos(d, {"Label1", "Combo1", "Label5", "Text2", "Text1"}),
                  (QStringList{"Yerba Mate 1 kg", "Compra", compra, "", ""}));
        EXPECT_TRUE(hijo<QRadioButton>(d, "Option1")->isChecked());
        EXPECT_TRUE(hijo<QLineEdit>(d, "Text1")->hasFocus());
        // Lo que no se lee: el mensaje de siempre, la pantalla sigue y nada se escribe.
        auto caja = respondeCaja(QStringLiteral("Aceptar"));
        QTest::keyClicks(hijo<QLineEdit>(d, "Text1"), QStringLiteral("abc"));
        QTest::keyClick(hijo<QLineEdit>(d, "Text1"), Qt::Key_Return);
        EXPECT_EQ(caja->texto, kErrorCantidadTipo);
        EXPECT_TRUE(d.isVisible());
        hijo<QComboBox>(d, "Combo1")->setCurrentText(QStringLiteral("Devolucion"));
        hijo<QLineEdit>(d, "Text2")->setText(QStringLiteral("NC 0001-22"));
        hijo<QRadioButton>(d, "Option2")->setChecked(true);
        hijo<QLineEdit>(d, "Text1")->selectAll();
        QTest::keyClicks(hijo<QLineEdit>(d, "Text1"), QStringLiteral("3"));
        QTest::keyClick(hijo<QLineEdit>(d, "Text1"), Qt::Key_Return);
        EXPECT_EQ(d.result(), QDialog::Accepted);
    }
    EXPECT_EQ(stock().first(), QStringLiteral("7|2"));
    // La vez siguiente, con el tipo y el comprobante de la última.
    PanIngrStock d(a(), *conf_, reloj_, 2);
    EXPECT_EQ(Textos(d, {"Label1", "Combo1", "Text2"}), (QStringList{"Lavandina 1 l", "Devolucion", "NC 0001-22"}));
    EXPECT_EQ(hijo<QLabel>(d, "Label5")->text(), QString::number(*IdTipoMovimiento(a(), QStringLiteral("Devolucion"))));
}

TEST_F(PantallasStock, RubroRechazadoDejaElFocoEnElCampo) {
    PanRubros lista(a());
    lista.show();
    EXPECT_FALSE(hijo<QPushButton>(lista, "Command2")->isEnabled());
    EXPECT_FALSE(hijo<QPushButton>(lista, "Command3")->isEnabled());

    PanEdRubros d(a(), std::nullopt);
    d.show();
    QApplication::setActiveWindow(&d);
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    hijo<QLineEdit>(d, "txPuntosVip")->clear();
    QTest::keyClicks(hijo<QLineEdit>(d, "Text1"), QStringLiteral("Almacen"));
    QTest::keyClick(hijo<QLineEdit>(d, "Text1"), Qt::Key_Return);
    EXPECT_EQ(caja->texto, QStringLiteral("Ingrese el puntaje correspondiente al rubro!"));
    EXPECT_EQ(d.focusWidget(), hijo<QLineEdit>(d, "txPuntosVip"));
    QTest::keyClicks(hijo<QLineEdit>(d, "txPuntosVip"), QStringLiteral("2"));
    QTest::keyClick(hijo<QLineEdit>(d, "txPuntosVip"), Qt::Key_Return);
    EXPECT_EQ(d.result(), QDialog::Accepted);
    ASSERT_TRUE(d.idRubro().has_value());

    lista.grilla()->refresca();
    lista.grilla()->irAFila(0);
    EXPECT_TRUE(hijo<QPushButton>(lista, "Command2")->isEnabled());
    EXPECT_TRUE(hijo<QPushButton>(lista, "Command3")->isEnabled());
}

TEST_F(PantallasStock, CambiosMasivosBuscaYBlanquea) {
    panCambStock d(a());
    d.show();
    QApplication::setActiveWindow(&d);
    EXPECT_TRUE(hijo<QLineEdit>(d, "Text1")->hasFocus());
    QTest::keyClicks(hijo<QLineEdit>(d, "Text1"), QStringLiteral("0200"));
    EXPECT_EQ(d.grilla()->claveActual().value_or(QVariant()).toLongLong(), 2);
    QTest::keyClicks(hijo<QLineEdit>(d, "Text2"), QStringLiteral("deter"));
    EXPECT_EQ(d.grilla()->claveActual().value_or(QVariant()).toLongLong(), 3);

    auto caja = respondeCaja(QStringLiteral("Sí"));
    QTest::mouseClick(hijo<QPushButton>(d, "Command1"), Qt::LeftButton);
    EXPECT_EQ(std::make_pair(caja->titulo, caja->texto),
              std::make_pair(QStringLiteral("ATENCION"), QStringLiteral("Está seguro de blanquear el stock a cero?")));
    EXPECT_EQ(stock(), (QStringList{"0|2", "0|1", "0|3"}));
    EXPECT_EQ(d.grilla()->filaActual()->value(QStringLiteral("StockActual")).toDouble(), 0.0);
}

} // namespace
} // namespace orv
