// El panel de artículos: las acciones de fila no hacen nada sobre una fila de grupo, "Quitar"
// pregunta y borra, el código leído y Enter llevan al ajuste de stock de ese artículo, la
// descripción filtra (también a los que no tienen rubro) y la foto sigue a la fila actual.

#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "articles/ui/pan_articulo.h"
#include "articles/ui/pan_foto.h"
#include "articles/ui/pan_ingr_stock.h"
#include "articles/ui/panel_articulos.h"
#include "reports/ui/salida_informes.h"
#include "sales/ui/panel_prueba.h"
#include "widgets/grilla.h"

#include <QImage>
#include <QTest>
#include <QtWidgets>

namespace orv {
namespace {

using prueba::hijo;

// Mientras vive, cierra toda ventana modal que aparezca (ficha, ajuste, pregunta) y anota su clase.
class VigiaDeModales {
public:
    VigiaDeModales() {
        QObject::connect(&reloj_, &QTimer::timeout, [this] {
            if (auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                vistas << QString::fromLatin1(d->metaObject()->className());
                d->reject();
            }
        });
        reloj_.start(5);
    }
    QStringList vistas;

private:
    QTimer reloj_;
};

class PanelArticulosPrueba : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta("INSERT INTO Rubros (idRubro, Rubro) VALUES (1, 'Almacén'), (2, 'Limpieza')");
        a().ejecuta("INSERT INTO Articulos (idArticulo, Codigo, Descripcion, idRubro, StockActual, Foto) VALUES "
                    "(1, '0101', 'Yerba Mate 1 kg', 1, 10, ?), (2, '0102', 'Lavandina 1 l', 2, 4, NULL), "
                    "(3, '0103', 'Detergente', 2, 7, '/no/esta.png'), (4, '0104', 'Yerba sin rubro', 0, 1, NULL)",
                    {foto()});
        panel_ = std::make_unique<PanelArticulos>(a(), estado_, *conf_, reloj_, *salida_,
                                                  AccionesArticulos{[this] { ++cambios_; }});
        panel_->carga();
        panel_->resize(1000, 600);
        panel_->show();
        QApplication::setActiveWindow(panel_.get());
    }
    QString foto() {
        const QString ruta = base_->carpeta() + QStringLiteral("/yerba.png");
        QImage(40, 30, QImage::Format_RGB32).save(ruta);
        return ruta;
    }
    Grilla& grilla() { return *panel_->grilla(); }
    QStringList codigos() {
        QStringList r;
        for (int f = 0; f < grilla().modelo().rowCount(); ++f) r << grilla().modelo().valor(f, 0).toString();
        return r;
    }
    QStringList articulos() { return prueba::Filas(a(), "SELECT idArticulo, StockActual FROM Articulos ORDER BY idArticulo"); }

    std::unique_ptr<PanelArticulos> panel_;
    int cambios_ = 0;
};

TEST_F(PanelArticulosPrueba, AccionesDeFilaNoHacenNadaSobreUnGrupoYQuitarPreguntaYBorra) {
    EXPECT_EQ(codigos(), (QStringList{"0101", "0102", "0103"})); // la lista completa: sin el que no tiene rubro
    grilla().agrupaPor("Rubro");
    grilla().arbol()->setCurrentItem(grilla().arbol()->topLevelItem(0));
    ASSERT_FALSE(grilla().filaActual().has_value());
    {
        // Un clic que abriera algo volvería recién con la ventana cerrada por el vigía.
        VigiaDeModales vigia;
        for (const char* boton : {"Command3", "Command2", "Command5"}) hijo<QPushButton>(*panel_, boton)->click();
        Q_EMIT grilla().filaActivada();
        EXPECT_EQ(vigia.vistas, QStringList{});
    }
    EXPECT_EQ(articulos(), (QStringList{"1|10", "2|4", "3|7", "4|1"}));
    EXPECT_EQ(cambios_, 0);

    grilla().quitaAgrupacion();
    grilla().irAFila(1);
    for (const auto& [respuesta, quedan] : {std::pair{"No", 4}, {"Sí", 3}}) {
        auto caja = prueba::respondeCaja(QString::fromUtf8(respuesta));
        hijo<QPushButton>(*panel_, "Command2")->click();
        EXPECT_EQ(caja->titulo + u'|' + caja->texto, QStringLiteral("Pregunta|Borra este articulo de la lista ??"));
        EXPECT_EQ(articulos().size(), quedan) << respuesta;
    }
    EXPECT_EQ(articulos(), (QStringList{"1|10", "3|7", "4|1"}));
    EXPECT_EQ(codigos(), (QStringList{"0101", "0103"}));
    EXPECT_EQ(cambios_, 1);
}

TEST_F(PanelArticulosPrueba, CodigoLeidoYEnterAbrenElAjusteDeEseArticulo) {
    auto* text1 = hijo<QLineEdit>(*panel_, "Text1");
    auto* text11 = hijo<QLineEdit>(*panel_, "Text11");
    // La descripción filtra y muestra también al que no tiene rubro; tomar el código lo reinicia.
    text11->setFocus();
    QTest::keyClicks(text11, "yerba");
    EXPECT_EQ(codigos(), (QStringList{"0101", "0104"}));
    QString visto;
    auto ajuste = prueba::alAbrirse<PanIngrStock>([&visto](PanIngrStock* d) {
        visto = d->findChild<QLabel*>("Label1")->text();
        d->reject();
    });
    prueba::Teclea(*panel_, "Text1", "0102");
    EXPECT_TRUE(ajuste->vista);
    EXPECT_EQ(visto, "Lavandina 1 l");
    EXPECT_EQ(codigos(), (QStringList{"0101", "0102", "0103"}));
    EXPECT_EQ(text1->text() + u'|' + text11->text(), "|");
    EXPECT_EQ(panel_->focusWidget(), text1);
    EXPECT_TRUE(hijo<QPushButton>(*panel_, "Command5")->isDefault());
    // Sin permiso de stock el botón está apagado y Enter no abre nada.
    hijo<QPushButton>(*panel_, "Command5")->setEnabled(false);
    VigiaDeModales vigia;
    prueba::Teclea(*panel_, "Text1", "0101");
    EXPECT_EQ(vigia.vistas, QStringList{});
}

TEST_F(PanelArticulosPrueba, FotoSigueALaFilaActualYUnArchivoQueFaltaLaDejaVacia) {
    auto* chk = hijo<QCheckBox>(*panel_, "chkMuesFoto");
    chk->setChecked(true);
    ASSERT_NE(panel_->foto(), nullptr);
    const struct {
        int fila;
        QString tag;
        bool imagen;
    } casos[] = {{0, foto(), true}, {1, QString(), false}, {2, QStringLiteral("/no/esta.png"), false}, {0, foto(), true}};
    for (const auto& c : casos) {
        grilla().irAFila(c.fila);
        EXPECT_TRUE(panel_->foto()->isVisible()) << c.fila;
        EXPECT_EQ(panel_->foto()->tag(), c.tag) << c.fila;
        EXPECT_EQ(panel_->foto()->tieneImagen(), c.imagen) << c.fila;
    }
    chk->setChecked(false);
    EXPECT_FALSE(panel_->foto()->isVisible());
}

} // namespace
} // namespace orv
