// Grilla compartida: carga perezosa, distribución, búsqueda, agrupación, refresco e impresión.

#include "widgets/grilla.h"
#include "widgets/previsualiza.h"

#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QPrinter>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace orv;

namespace {

constexpr int kFilas = 60000;
const QString kSql = "SELECT id, Nombre, Rubro, Importe FROM Prueba ORDER BY id";

// Almacén SQLite con una tabla de 60 000 filas: Nombre "Art000001"..., Rubro de a tres (Bebidas,
// Limpieza, vacío), Importe n + 0.5. La fila 50 000 se llama "Zeta O'Brien".
class GrillaTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        almacen_ = Almacen::abreSQLite(dir_.filePath("grilla.db"));
        almacen_->ejecuta("CREATE TABLE Prueba (id INTEGER PRIMARY KEY, Nombre TEXT, Rubro TEXT, Importe NUMERIC(19,4))");
        almacen_->ejecuta(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
                                         "INSERT INTO Prueba SELECT i, CASE WHEN i = 50000 THEN 'Zeta O''Brien' ELSE "
                                         "printf('Art%06d', i) END, CASE i % 3 WHEN 0 THEN 'Bebidas' WHEN 1 THEN 'Limpieza' "
                                         "ELSE NULL END, i + 0.5 FROM n"),
                          {kFilas});
    }
    std::unique_ptr<Grilla> nueva(const QString& sql = kSql, const QVariantList& parametros = {}) {
        auto g = std::make_unique<Grilla>(*almacen_);
        g->resize(900, 500);
        if (!sql.isEmpty()) g->fijaConsulta(sql, parametros);
        return g;
    }
    QString ruta(const QString& n) const { return dir_.filePath(n); }
    static int id(const Grilla& g) { return g.filaActual()->value("id").toInt(); }

    QTemporaryDir dir_;
    std::unique_ptr<Almacen> almacen_;
};

TEST_F(GrillaTest, AbreSinLeerTodoElResultadoYBajaDeAPaginas) {
    auto g = nueva();
    g->show();
    QCoreApplication::processEvents();
    EXPECT_LT(g->modelo().rowCount(), 2 * ModeloGrilla::kPagina);
    EXPECT_EQ(g->modelo().paginasEnMemoria(), 1);
    EXPECT_EQ(id(*g), 1);
    const int antes = g->modelo().rowCount();
    QTest::keyClick(g->tabla(), Qt::Key_End, Qt::ControlModifier);
    QCoreApplication::processEvents();
    EXPECT_GT(g->modelo().rowCount(), antes);
    EXPECT_LT(g->modelo().rowCount(), kFilas);
}

TEST_F(GrillaTest, MascaraTituloColumnaOcultaYParametrosLigados) {
    auto g = nueva();
    g->fijaTitulo("Importe", "Precio");
    g->fijaMascara("Importe", "#,##0.00");
    g->ocultaColumna("id");
    ASSERT_TRUE(g->irAFila(1233));
    const auto& m = g->modelo();
    const int c = m.columna("Importe");
    EXPECT_EQ(m.headerData(c, Qt::Horizontal).toString() + u'|' + m.data(m.index(1233, c)).toString(), "Precio|1,234.50");
    EXPECT_TRUE(m.data(m.index(0, c), Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight);
    EXPECT_FALSE(m.data(m.index(0, 1), Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight);
    EXPECT_TRUE(g->tabla()->isColumnHidden(m.columna("id")));
    EXPECT_EQ(id(*g), 1234); // la columna oculta sigue en el registro de la fila

    auto h = nueva("SELECT id, Nombre FROM Prueba WHERE Nombre = ? OR id < ? ORDER BY id", {"Zeta O'Brien", 3});
    EXPECT_EQ(h->modelo().rowCount(), 3);
    EXPECT_EQ(h->modelo().valor(2, 1).toString(), "Zeta O'Brien");
}

TEST_F(GrillaTest, DistribucionIdaYVueltaYUnaDanadaDejaLaDeFabrica) {
    const QString archivo = ruta("data1_PanPrincipal");
    {
        auto g = nueva();
        auto* enc = g->tabla()->horizontalHeader();
        enc->moveSection(enc->visualIndex(g->modelo().columna("Importe")), 0);
        g->fijaAnchoColumna("Nombre", 237);
        g->agrupaPor("Rubro");
        ASSERT_TRUE(g->guardaDistribucion(archivo));
    }
    // Se carga antes de ligar la consulta (así arranca la ventana principal) o sobre una grilla ya ligada.
    auto antes = nueva(QString());
    ASSERT_TRUE(antes->cargaDistribucion(archivo));
    antes->fijaConsulta(kSql);
    auto despues = nueva();
    ASSERT_TRUE(despues->cargaDistribucion(archivo));
    for (Grilla* g : {antes.get(), despues.get()}) {
        EXPECT_EQ(g->ordenColumnas(), QStringList({"Importe", "id", "Nombre", "Rubro"}));
        EXPECT_EQ(g->anchoColumna("Nombre"), 237);
        EXPECT_EQ(g->agrupacion(), QStringList{"Rubro"});
        EXPECT_EQ(g->arbol()->topLevelItemCount(), 3); // vacío, Bebidas, Limpieza
    }

    auto g = nueva();
    const QStringList orden = g->ordenColumnas();
    const int ancho = g->anchoColumna("Nombre");
    EXPECT_FALSE(g->cargaDistribucion(ruta("no_existe")));
    for (const QByteArray& basura : {QByteArray("{\"columnas\": [ {\"campo\""), QByteArray("\x00\xff\x10", 3), QByteArray("[1,2,3]"),
                                     QByteArray("{\"version\":1,\"columnas\":7}")}) {
        QFile f(ruta("dataUsers_PanPrincipal"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(basura);
        f.close();
        EXPECT_FALSE(g->cargaDistribucion(f.fileName())) << basura.toStdString();
        EXPECT_TRUE(g->ordenColumnas() == orden && g->anchoColumna("Nombre") == ancho && !g->agrupada());
    }
    // Una columna guardada que la consulta ya no tiene se pasa por alto.
    QFile f(ruta("data2_PanPrincipal"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(R"({"version":1,"columnas":[{"campo":"Borrada","ancho":80},{"campo":"Rubro","ancho":90}], "agrupar":["Borrada"]})");
    f.close();
    EXPECT_TRUE(g->cargaDistribucion(f.fileName()));
    EXPECT_EQ(g->ordenColumnas().first(), "Rubro");
    EXPECT_FALSE(g->agrupada());
}

TEST_F(GrillaTest, BuscaLejosSinTraerLasFilasIntermediasYSinMoverseSiNoHalla) {
    auto g = nueva();
    ASSERT_TRUE(g->busca("Nombre", "zeta o'b"));
    EXPECT_EQ(g->filaActualNumero(), 49999);
    EXPECT_LT(g->modelo().paginasEnMemoria(), 4);
    ASSERT_TRUE(g->busca("Nombre", "ART0012")); // la primera de varias
    EXPECT_EQ(id(*g), 1200);
    // Sin coincidencia, o con una columna que no es un campo, no se mueve.
    for (const auto& [campo, texto] : {std::pair{"Nombre", "Nadie"}, {"Nombre", "Art_0"}, {"id) OR (1=1", "1"}})
        EXPECT_FALSE(g->busca(QString::fromLatin1(campo), QString::fromLatin1(texto))) << campo << " " << texto;
    EXPECT_EQ(id(*g), 1200);
}

TEST_F(GrillaTest, FilaDeGrupoNoDaRegistroYLaFichaQuitaLaAgrupacion) {
    auto g = nueva(QString());
    g->fijaClave("id");
    g->fijaConsulta(kSql);
    g->agrupaPor("Rubro");
    auto* arbol = g->arbol();
    ASSERT_EQ(arbol->topLevelItemCount(), 3);
    QTreeWidgetItem* bebidas = arbol->topLevelItem(1);
    EXPECT_TRUE(bebidas->text(0).contains("Bebidas") && bebidas->text(0).contains("(20000)"));
    arbol->setCurrentItem(bebidas);
    EXPECT_FALSE(g->filaActual() || g->claveActual());
    bebidas->setExpanded(true);
    ASSERT_EQ(bebidas->childCount(), 20000);
    arbol->setCurrentItem(bebidas->child(0));
    EXPECT_EQ(g->claveActual()->toInt(), 3);
    EXPECT_EQ(g->filaActual()->value("Rubro").toString(), "Bebidas");
    arbol->topLevelItem(0)->setExpanded(true); // el grupo de los vacíos también se abre
    EXPECT_EQ(arbol->topLevelItem(0)->childCount(), 20000);
    QTest::mouseClick(g->findChild<QToolButton*>("fichaAgrupar"), Qt::LeftButton);
    EXPECT_FALSE(g->agrupada());
    EXPECT_TRUE(g->filaActual().has_value());
}

TEST_F(GrillaTest, RefrescaConservaLaFilaPorClaveOPorNumeroYLosGruposAbiertos) {
    // Con clave: otra terminal agrega filas que quedan antes y cambia la fila actual.
    auto g = nueva(QString());
    g->fijaClave("id");
    g->fijaConsulta("SELECT id, Nombre, Importe FROM Prueba ORDER BY Nombre");
    ASSERT_TRUE(g->irAFila(700));
    const QVariant clave = *g->claveActual();
    g->fijaAnchoColumna("Nombre", 222);
    almacen_->ejecuta("INSERT INTO Prueba (id, Nombre) VALUES (?, 'A primero'), (?, 'A segundo')", {kFilas + 1, kFilas + 2});
    almacen_->ejecuta("UPDATE Prueba SET Importe = 99 WHERE id = ?", {clave});
    g->refresca();
    EXPECT_EQ(*g->claveActual(), clave);
    EXPECT_EQ(g->filaActualNumero(), 702);
    EXPECT_EQ(g->filaActual()->value("Importe").toInt(), 99);
    EXPECT_EQ(g->anchoColumna("Nombre"), 222);

    // Sin clave, el mismo número de fila; si las filas se acaban, la última.
    auto s = nueva();
    ASSERT_TRUE(s->irAFila(1000));
    almacen_->ejecuta("DELETE FROM Prueba WHERE id <= 10");
    s->refresca();
    EXPECT_EQ(std::pair(s->filaActualNumero(), id(*s)), std::pair(1000, 1011));
    almacen_->ejecuta("DELETE FROM Prueba WHERE id > 500");
    s->refresca();
    EXPECT_EQ(id(*s), 500);

    // Agrupada: los grupos abiertos siguen abiertos.
    s->agrupaPor("Rubro");
    s->arbol()->topLevelItem(2)->setExpanded(true);
    almacen_->ejecuta("UPDATE Prueba SET Rubro = 'Almacén' WHERE id = 13");
    s->refresca();
    ASSERT_EQ(s->arbol()->topLevelItemCount(), 4);
    EXPECT_TRUE(s->arbol()->topLevelItem(3)->isExpanded());
    EXPECT_EQ(s->arbol()->topLevelItem(3)->childCount(), 162);
}

TEST_F(GrillaTest, ImprimeTodasLasFilasConPaginas) {
    almacen_->ejecuta("DELETE FROM Prueba WHERE id > 300");
    auto g = nueva();
    g->fijaTituloImpresion("Artículos");
    QPrinter pr(QPrinter::ScreenResolution);
    pr.setOutputFormat(QPrinter::PdfFormat);
    pr.setOutputFileName(ruta("grilla.pdf"));
    const int paginas = ImprimeGrilla(*g, pr);
    EXPECT_GE(paginas, 4); // 300 filas no caben en tres hojas A4
    EXPECT_LE(paginas, 12);
    EXPECT_GT(QFileInfo(ruta("grilla.pdf")).size(), 1000);
}

} // namespace
