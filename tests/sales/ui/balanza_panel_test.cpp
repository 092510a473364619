// El lector en el panel "Vender" con etiquetas de balanza: la línea con el importe o el peso de
// la etiqueta, y la etiqueta mal leída dicha en el panel, sin una caja que se trague el Enter.

#include "apoyo/pantalla_prueba.h"
#include "panel_prueba.h"
#include "sales/ui/panel_venta.h"

namespace orv {
namespace {

class BalanzaEnElPanel : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, PrecioVenta) VALUES "
                                   "('00123', 'Queso por kg', 20), ('0101', 'Yerba 1 kg', 100)"));
    }
    void abrePanel() {
        panel_ = std::make_unique<PanelVenta>(a(), estado_, *conf_);
        panel_->resize(1200, 700);
        panel_->llenaTiposComprobante();
        panel_->llenaArticulos();
        panel_->fijaReloj(&reloj_);
        panel_->show();
        QApplication::setActiveWindow(panel_.get());
        panel_->entra();
    }
    void escanea(const char* codigo) { prueba::Teclea(*panel_, "Text7", QString::fromLatin1(codigo)); }
    QStringList lineas() const {
        return prueba::Filas(a(), QStringLiteral("SELECT Codigo, Cantidad, Unitario, SubTotal FROM TmpFac ORDER BY idTmpFac"));
    }
    QLabel* franja() const { return prueba::hijo<QLabel>(*panel_, "lblNoEncontrado"); }
    Almacen& a() const { return base_->almacen(); }

    std::unique_ptr<PanelVenta> panel_;
};

TEST_F(BalanzaEnElPanel, EtiquetasConPrecioYConPeso) {
    abrePanel();
    prueba::VigiaDeCajas vigia;
    escanea("2000123012506");
    escanea("3*2000123012506");
    escanea("0101");
    EXPECT_EQ(lineas(), (QStringList{"00123|1|12.5|12.5", "00123|3|12.5|37.5", "0101|1|100|100"}));
    EXPECT_EQ(prueba::Textos(*panel_, {"txtMontoTotal", "Text7"}), (QStringList{"150.00", ""}));

    // Mal leída: se dice en la franja, el código queda marcado y el escaneo siguiente entra.
    escanea("2000123012507");
    EXPECT_TRUE(franja()->isVisible());
    EXPECT_EQ(franja()->text(),
              QStringLiteral("Código de balanza mal leído (dígito verificador): 2000123012507. Vuelva a escanearlo."));
    EXPECT_EQ(prueba::hijo<QLineEdit>(*panel_, "Text7")->selectedText(), QStringLiteral("2000123012507"));
    QTest::keyClicks(prueba::hijo<QLineEdit>(*panel_, "Text7"), QStringLiteral("2000123012506"));
    QTest::keyClick(prueba::hijo<QLineEdit>(*panel_, "Text7"), Qt::Key_Return);
    EXPECT_FALSE(franja()->isVisible());
    EXPECT_EQ(lineas().size(), 4);

    // La balanza que pesa: la configuración se vuelve a leer al entrar al panel.
    conf_->graba(clave::miscelaneas, QStringLiteral("BalanzaValor"), QStringLiteral("Peso"));
    panel_->entra();
    escanea("2100123003501");
    EXPECT_EQ(lineas().last(), QStringLiteral("00123|0.35|20|7"));
    QTest::qWait(30);
    EXPECT_EQ(vigia.vistas, QStringList());
}

} // namespace
} // namespace orv
