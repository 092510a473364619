// La ficha del artículo conducida con el teclado: derechos, cuentas de precio mientras se escribe,
// orden de carga, código propuesto, foco y la foto.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "articles/articulos.h"
#include "articles/ui/pan_articulo.h"

#include <QTest>
#include <QtWidgets>

namespace orv {
namespace {

using prueba::hijo;
using prueba::respondeCaja;

QLineEdit* campo(const QWidget& w, const char* nombre) { return hijo<QLineEdit>(w, nombre); }

void escribe(QLineEdit* e, const QString& texto) {
    e->setFocus();
    QApplication::processEvents();
    e->selectAll();
    QTest::keyClicks(e, texto);
}

class PanArticuloPrueba : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        estado_.carpetaDatos = base_->carpeta();
        a().ejecuta("INSERT INTO Rubros (idRubro, Rubro) VALUES (7, 'Bebidas'), (8, 'Almacén')");
        a().ejecuta("INSERT INTO Proveedores (RazonSocial) VALUES ('Distribuidora Sur')");
    }
    // Un nivel con los dos derechos de precios elegidos, para el usuario de la prueba.
    void nivel(bool veCostos, bool cambiaPrecios) {
        estado_.idNivelActual = static_cast<qint16>(
            a().inserta("INSERT INTO Niveles (Nombre, VePreCostos, PermCambioPrecios) VALUES ('Cajero', ?, ?)",
                        {veCostos ? 1 : 0, cambiaPrecios ? 1 : 0}, "idNivel"));
    }
    qint64 articulo() {
        DatosArticulo d;
        d.codigo = "070001";
        d.descripcion = "Agua mineral";
        d.idRubro = 7;
        d.stockActual = "10";
        d.precioCosto = "100";
        d.precioVenta = "150";
        d.utilidad = "33";
        d.cgoProveedor = "AG-500";
        return GrabaArticulo(a(), 0, d, {});
    }
};

// Con cada par de derechos (ve costos, cambia precios): costo, margen y sus rótulos visibles;
// costo y venta habilitados y margen editable; venta visible; y los textos de costo y venta.
TEST_F(PanArticuloPrueba, DerechosOcultanCostoYMargenOApaganLosPrecios) {
    const std::tuple<bool, bool, const char*> casos[] = {
        {true, true, "1111|111|1||"}, {false, true, "0000|111|1||"}, {true, false, "1111|000|1|0|0"}, {false, false, "0000|000|1|0|0"}};
    for (const auto& [veCostos, cambiaPrecios, esperado] : casos) {
        nivel(veCostos, cambiaPrecios);
        PanArticulo p(a(), estado_, *conf_, 0);
        p.show();
        QString r;
        for (const char* n : {"Text1_3", "txPorUt", "lblCosto", "Label3"}) r += hijo<QWidget>(p, n)->isVisible() ? u'1' : u'0';
        r += u'|';
        for (bool b : {campo(p, "Text1_3")->isEnabled(), campo(p, "Text1_4")->isEnabled(), !campo(p, "txPorUt")->isReadOnly()})
            r += b ? u'1' : u'0';
        r += campo(p, "Text1_4")->isVisible() ? QStringLiteral("|1|") : QStringLiteral("|0|");
        r += campo(p, "Text1_3")->text() + u'|' + campo(p, "Text1_4")->text();
        EXPECT_EQ(r, QString::fromLatin1(esperado)) << veCostos << cambiaPrecios;
    }
}

TEST_F(PanArticuloPrueba, MargenYVentaSeCuentanMientrasSeEscribe) {
    conf_->graba(clave::miscelaneas, "PorcentUtil", "40");
    PanArticulo p(a(), estado_, *conf_, 0);
    p.show();
    EXPECT_EQ(campo(p, "txPorUt")->text(), "40");
    escribe(campo(p, "Text1_3"), "100");
    EXPECT_EQ(campo(p, "Text1_4")->text(), "140.00");
    escribe(campo(p, "txPorUt"), "30");
    EXPECT_EQ(campo(p, "Text1_4")->text(), "130.00");
    escribe(campo(p, "Text1_4"), "150");
    EXPECT_EQ(campo(p, "txPorUt")->text(), "50.0");
    // Con costo 0 el margen queda como estaba, sin mensaje.
    escribe(campo(p, "Text1_3"), "0");
    escribe(campo(p, "Text1_4"), "99");
    EXPECT_EQ(campo(p, "txPorUt")->text(), "50.0");
}

TEST_F(PanArticuloPrueba, AlAbrirGanaElMargenGuardadoYElPrecioNoSeToca) {
    const qint64 id = articulo();
    PanArticulo p(a(), estado_, *conf_, id);
    p.show();
    EXPECT_EQ(QStringList({campo(p, "Text1_0")->text(), campo(p, "Text1_3")->text(), campo(p, "Text1_4")->text(),
                           campo(p, "txPorUt")->text(), hijo<QLabel>(p, "Label2")->text(),
                           hijo<QComboBox>(p, "Combo1")->currentText()}),
              QStringList({"070001", "100.00", "150.00", "33", "7", "Bebidas"}));
    EXPECT_FALSE(hijo<QPushButton>(p, "Command4")->isEnabled());
    // Con "Igual al codigo del proveedor", el código del proveedor tapa el código en pantalla.
    conf_->graba(clave::miscelaneas, "CheckIgualProve", "1");
    PanArticulo igual(a(), estado_, *conf_, id);
    EXPECT_EQ(campo(igual, "Text1_0")->text(), "AG-500");
}

TEST_F(PanArticuloPrueba, ElRubroProponeElCodigoSoloSiEstaVacio) {
    articulo();
    PanArticulo p(a(), estado_, *conf_, 0);
    p.show();
    auto* rubros = hijo<QComboBox>(p, "Combo1");
    const auto elige = [&](const QString& rubro) {
        rubros->setCurrentIndex(rubros->findText(rubro));
        Q_EMIT rubros->activated(rubros->currentIndex());
    };
    elige("Bebidas");
    EXPECT_EQ(campo(p, "Text1_0")->text(), "070002");
    elige("Almacén");
    EXPECT_EQ(campo(p, "Text1_0")->text(), "070002");
    EXPECT_EQ(hijo<QLabel>(p, "Label2")->text(), "8");
    campo(p, "Text1_0")->clear();
    elige("Almacén");
    EXPECT_EQ(campo(p, "Text1_0")->text(), "080001");
}

TEST_F(PanArticuloPrueba, EnterEnElCodigoPasaALaDescripcionYDesdeEllaGraba) {
    PanArticulo p(a(), estado_, *conf_, 0);
    p.show();
    QApplication::setActiveWindow(&p);
    escribe(campo(p, "Text1_0"), "7791234");
    QTest::keyClick(campo(p, "Text1_0"), Qt::Key_Return);
    EXPECT_TRUE(p.isVisible());
    EXPECT_TRUE(campo(p, "Text1_1")->hasFocus());
    QTest::keyClicks(campo(p, "Text1_1"), "Fideos");
    QTest::keyClick(campo(p, "Text1_1"), Qt::Key_Return);
    EXPECT_EQ(p.result(), QDialog::Accepted);
    EXPECT_EQ(a().valor("SELECT Codigo || '|' || Descripcion FROM Articulos WHERE idArticulo = ?", {p.idArticulo()}).toString(),
              "7791234|Fideos");
}

TEST_F(PanArticuloPrueba, LaFotoSeEligeEnImagesYLasBarrasLaRecorren) {
    const QString carpeta = QDir(base_->carpeta()).filePath("IMAGES");
    QDir().mkpath(carpeta);
    QImage imagen(800, 400, QImage::Format_RGB32);
    imagen.fill(Qt::darkGreen);
    const QString ruta = QDir(carpeta).filePath("agua.png");
    ASSERT_TRUE(imagen.save(ruta));
    PanArticulo p(a(), estado_, *conf_, 0);
    QString carpetaOfrecida;
    p.eligeImagen = [&](const QString& c) {
        carpetaOfrecida = c;
        return ruta;
    };
    p.show();
    EXPECT_EQ(hijo<QLabel>(p, "lblimagen")->text(), "<Foto>");
    QTest::mouseClick(hijo<QPushButton>(p, "Command3"), Qt::LeftButton);
    EXPECT_EQ(carpetaOfrecida, carpeta);
    EXPECT_EQ(hijo<QLabel>(p, "lblimagen")->text(), ruta);
    auto* vert = hijo<QScrollBar>(p, "vert");
    auto* horiz = hijo<QScrollBar>(p, "horiz");
    auto* foto = hijo<QLabel>(p, "Image2");
    EXPECT_GT(horiz->maximum(), 0);
    EXPECT_GT(vert->maximum(), 0);
    horiz->setValue(horiz->maximum());
    vert->setValue(vert->maximum());
    EXPECT_EQ(foto->pos(), QPoint(-horiz->maximum(), -vert->maximum()));
    EXPECT_TRUE(hijo<QPushButton>(p, "Command1")->isDefault());
    EXPECT_EQ(p.datos().foto, ruta);
}

TEST_F(PanArticuloPrueba, LasPuertasSeHabilitanSoloConSuFuncion) {
    PanArticulo p(a(), estado_, *conf_, 0);
    for (const char* n : {"OsenXPButton1", "OsenXPButton2"}) EXPECT_FALSE(hijo<QToolButton>(p, n)->isEnabled()) << n;
    EXPECT_FALSE(hijo<QPushButton>(p, "Command4")->isEnabled());
    p.fijaNuevoRubro([&] { a().ejecuta("INSERT INTO Rubros (Rubro) VALUES ('Limpieza')"); });
    // La matriz pide código y descripción; con filas, "&Aceptar" graba una por fila y no el artículo base.
    int pedidos = 0;
    p.fijaGeneraMatriz([&](const QString& codigo, const QString& descripcion, const QString& existencia,
                           const QList<VarianteMatriz>& filas) -> std::optional<QList<VarianteMatriz>> {
        ++pedidos;
        return filas + QList<VarianteMatriz>{{codigo, descripcion + " Rojo", "Col:Rojo", existencia},
                                             {SiguienteCodigo(codigo), descripcion + " Azul", "Col:Azul", "1"}};
    });
    EXPECT_TRUE(hijo<QPushButton>(p, "Command4")->isEnabled());
    auto caja = prueba::respondeCaja("Aceptar");
    p.generaMatriz();
    EXPECT_EQ(caja->texto, "Ingrese el código y la descripción para poder hacer la matriz de artículos!");
    EXPECT_EQ(pedidos, 0);
    hijo<QLineEdit>(p, "Text1_0")->setText("0099");
    hijo<QLineEdit>(p, "Text1_1")->setText("Remera");
    hijo<QLineEdit>(p, "Text1_2")->setText("4");
    p.generaMatriz();
    EXPECT_EQ(p.matriz().size(), 2);
    hijo<QPushButton>(p, "Command1")->click();
    EXPECT_EQ(prueba::Filas(a(), "SELECT Codigo, Descripcion, DescripcionMatriz, StockActual FROM Articulos ORDER BY idArticulo"),
              (QStringList{"0099|Remera Rojo|Col:Rojo|4", "0100|Remera Azul|Col:Azul|1"}));
    a().ejecuta("DELETE FROM Articulos");
    hijo<QToolButton>(p, "OsenXPButton1")->click();
    EXPECT_EQ(hijo<QComboBox>(p, "Combo1")->findText("Limpieza") >= 0, true);
    // Esc cierra sin grabar.
    p.show();
    QTest::keyClick(&p, Qt::Key_Escape);
    EXPECT_EQ(p.result(), QDialog::Rejected);
    EXPECT_EQ(a().valor("SELECT count(*) FROM Articulos").toInt(), 0);
}

} // namespace
} // namespace orv
