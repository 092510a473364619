// Ayuda y datos locales desde la ventana principal: F1 abre el tema de la pantalla donde se está,
// los controles de ayuda el del panel a la vista; el impuesto de "Datos Locales" pasa a la venta al
// cerrarla. Y los temas mismos: cada uno con su título y su texto, y sus vínculos a temas que están.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "maintenance/ayuda.h"
#include "maintenance/ui/pan_help.h"
#include "maintenance/ui/pan_region.h"
#include "shell/pan_principal.h"

#include <QRegularExpression>
#include <QTest>
#include <QtWidgets>

namespace orv {
namespace {

using prueba::hijo;

class AyudaYDatosLocales : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        estado_.carpetaDatos = base_->carpeta();
        w_ = std::make_unique<PanPrincipal>(a(), estado_, *conf_, reloj_);
        w_->fijaTerminacion([](int) {});
        w_->show();
        QApplication::setActiveWindow(w_.get());
    }
    void TearDown() override {
        w_.reset();
        PantallaDePrueba::TearDown();
    }
    std::unique_ptr<PanPrincipal> w_;
};

// El título del tema con que se abrió la ayuda después de `accion` ("" si no se abrió).
QString temaAbierto(const std::function<void()>& accion) {
    auto titulo = std::make_shared<QString>();
    auto vista = prueba::alAbrirse<panHelp>([titulo](panHelp* h) {
        *titulo = h->temas()->currentItem() ? h->temas()->currentItem()->text() : QStringLiteral("(ninguno)");
        h->accept();
    }, 3000);
    accion();
    if (!QTest::qWaitFor([&] { return vista->vista; }, 3000)) return {};
    return *titulo;
}

TEST_F(AyudaYDatosLocales, F1YLosControlesDeAyudaAbrenElTemaDeLaPantalla) {
    // F1 donde está el foco (o en la ventana, si el foco no quedó en ningún control).
    const auto f1 = [this] { QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : w_.get(), Qt::Key_F1); };
    const auto boton = [this](const char* nombre) { return [this, nombre] { hijo<QAbstractButton>(*w_, nombre)->click(); }; };
    const struct {
        int panel; // -1: la bienvenida
        std::function<void()> accion;
        const char* tema;
    } casos[] = {
        {-1, f1, "Primeros pasos"},
        {-1, boton("Label13"), "Primeros pasos"},
        {3, f1, "Vender"},
        {0, f1, "Artículos"},
        {1, boton("Command57"), "Clientes"},
        {2, boton("Image4"), "Caja y cierre del día"},
        {7, boton("Label1"), "Proveedores y compras"},
        {4, f1, "Informes"},
        {6, f1, "Utilidades y configuración"},
    };
    for (const auto& c : casos) {
        if (c.panel >= 0) w_->botPrincipal(c.panel);
        QApplication::processEvents();
        EXPECT_EQ(temaAbierto(c.accion), QString::fromUtf8(c.tema)) << c.panel;
    }
    // Dentro de una pantalla abierta desde Utilidades, F1 abre el tema de esa pantalla.
    w_->botPrincipal(6);
    QString tema;
    auto region = prueba::alAbrirse<panRegion>([&](panRegion* p) {
        hijo<QLineEdit>(*p, "txIva")->setFocus();
        tema = temaAbierto([p] { QTest::keyClick(hijo<QLineEdit>(*p, "txIva"), Qt::Key_F1); });
        p->reject();
    });
    hijo<QAbstractButton>(*w_, "Label43")->click();
    EXPECT_TRUE(region->vista);
    EXPECT_EQ(tema, "Utilidades y configuración");
}

TEST_F(AyudaYDatosLocales, AlCerrarDatosLocalesElImpuestoGuardadoPasaALaVenta) {
    conf_->graba(clave::miscelaneas, "CoefIva", "21");
    auto* impuesto = hijo<QLineEdit>(*w_, "txtPorcImpuesto");
    const struct {
        const char* escrito;
        bool acepta;
        const char* enLaVenta;
    } casos[] = {{"10.5", true, "10.5"}, {"27", false, "10.5"}, {"", true, "10.5"}};
    // Aceptado queda lo escrito; cancelado, lo que había; vacío no cambia el campo de la venta.
    for (const auto& c : casos) {
        auto region = prueba::alAbrirse<panRegion>([&c](panRegion* p) {
            hijo<QLineEdit>(*p, "txIva")->setText(c.escrito);
            c.acepta ? p->acepta() : p->reject();
        });
        w_->datosLocales();
        EXPECT_TRUE(region->vista) << c.escrito;
        EXPECT_EQ(impuesto->text(), c.enLaVenta) << c.escrito;
    }
}

// Cada tema tiene título, texto de verdad y pantallas; cada vínculo lleva a otro tema que está.
TEST(TemasDeAyuda, CadaTemaTieneTituloTextoYVinculosQueLlevanAOtroTema) {
    const QList<TemaAyuda> temas = TemasAyuda();
    QStringList titulos, archivos;
    for (const TemaAyuda& t : temas) {
        titulos << t.titulo;
        archivos << t.archivo;
    }
    EXPECT_EQ(titulos, QStringList({"Primeros pasos", "Vender", "Artículos", "Clientes", "Caja y cierre del día", "Proveedores y compras",
                                    "Informes", "Utilidades y configuración"}));
    static const QRegularExpression vinculo(QStringLiteral("href=\"([^\"#]+)"));
    for (const TemaAyuda& t : temas) {
        QFile f(kCarpetaAyuda + u'/' + t.archivo);
        ASSERT_TRUE(f.open(QIODevice::ReadOnly)) << t.archivo.toStdString();
        const QString html = QString::fromUtf8(f.readAll());
        QTextDocument d;
        d.setHtml(html);
        EXPECT_GT(d.toPlainText().size(), 400) << t.archivo.toStdString();
        EXPECT_FALSE(t.pantallas.isEmpty()) << t.archivo.toStdString();
        for (auto m = vinculo.globalMatch(html); m.hasNext();)
            EXPECT_TRUE(archivos.contains(m.next().captured(1))) << t.archivo.toStdString();
    }
    // El más interno de los nombres manda; un nombre que ningún tema lista no cuenta.
    EXPECT_EQ(TemaDePantalla(temas, {"txIva", "panRegion", "PanPrincipal"}), 7);
    EXPECT_EQ(TemaDePantalla(temas, {"", "otraCosa"}), -1);
}

} // namespace
} // namespace orv
