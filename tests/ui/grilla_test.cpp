// Grilla compartida: carga perezosa, distribución, búsqueda, agrupación, refresco e impresión.

#include "widgets/grilla.h"
#include "widgets/previsualiza.h"

#include <QDir>
#include <QFile>
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
const QString kSql = QStringLiteral("SELECT id, Nombre, Rubro, Importe FROM Prueba ORDER BY id");

// Almacen SQLite con una tabla de `filas` filas: Nombre "Art000001"..., Rubro de a tres,
// Importe n + 0.5. La fila 50 000 se llama "Zeta O'Brien".
class GrillaTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        almacen_ = Almacen::abreSQLite(dir_.filePath(QStringLiteral("grilla.db")));
        almacen_->ejecuta(QStringLiteral(
            "CREATE TABLE Prueba (id INTEGER PRIMARY KEY, Nombre TEXT, Rubro TEXT, Importe NUMERIC(19,4))"));
        almacen_->ejecuta(QStringLiteral(
                              "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
                              "INSERT INTO Prueba SELECT i, CASE WHEN i = 50000 THEN 'Zeta O''Brien' "
                              "ELSE printf('Art%06d', i) END, CASE i % 3 WHEN 0 THEN 'Bebidas' WHEN 1 "
                              "THEN 'Limpieza' ELSE NULL END, i + 0.5 FROM n"),
                          {kFilas});
    }
    std::unique_ptr<Grilla> nueva() {
        auto g = std::make_unique<Grilla>(*almacen_);
        g->resize(900, 500);
        return g;
    }
    QString ruta(const QString& n) const { return dir_.filePath(n); }

    QTemporaryDir dir_;
    std::unique_ptr<Almacen> almacen_;
};

TEST_F(GrillaTest, AbreSinLeerTodoElResultado) {
    auto g = nueva();
    g->fijaConsulta(kSql);
    g->show();
    QCoreApplication::processEvents();
    EXPECT_LT(g->modelo().rowCount(), 2 * ModeloGrilla::kPagina);
    EXPECT_EQ(g->modelo().paginasEnMemoria(), 1);
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("id")).toInt(), 1);
    // Bajar al final de lo leído pide más filas, de a páginas.
    const int antes = g->modelo().rowCount();
    QTest::keyClick(g->tabla(), Qt::Key_End, Qt::ControlModifier);
    QCoreApplication::processEvents();
    EXPECT_GT(g->modelo().rowCount(), antes);
    EXPECT_LT(g->modelo().rowCount(), kFilas);
}

TEST_F(GrillaTest, MascaraTituloYColumnaOculta) {
    auto g = nueva();
    g->fijaConsulta(kSql);
    g->fijaTitulo(QStringLiteral("Importe"), QStringLiteral("Precio"));
    g->fijaMascara(QStringLiteral("Importe"), QStringLiteral("#,##0.00"));
    g->ocultaColumna(QStringLiteral("id"));
    ASSERT_TRUE(g->irAFila(1233));
    const auto& m = g->modelo();
    const int c = m.columna(QStringLiteral("Importe"));
    EXPECT_EQ(m.headerData(c, Qt::Horizontal).toString(), QStringLiteral("Precio"));
    EXPECT_EQ(m.data(m.index(1233, c)).toString(), QStringLiteral("1,234.50"));
    EXPECT_TRUE(m.data(m.index(0, c), Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight);
    EXPECT_FALSE(m.data(m.index(0, 1), Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight);
    EXPECT_TRUE(g->tabla()->isColumnHidden(m.columna(QStringLiteral("id"))));
    // La columna oculta sigue en el registro de la fila.
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("id")).toInt(), 1234);
}

TEST_F(GrillaTest, ConsultaConParametrosLigados) {
    auto g = nueva();
    g->fijaConsulta(QStringLiteral("SELECT id, Nombre FROM Prueba WHERE Nombre = ? OR id < ? ORDER BY id"),
                    {QStringLiteral("Zeta O'Brien"), 3});
    EXPECT_EQ(g->modelo().rowCount(), 3);
    EXPECT_EQ(g->modelo().valor(2, 1).toString(), QStringLiteral("Zeta O'Brien"));
}

TEST_F(GrillaTest, DistribucionIdaYVuelta) {
    const QString archivo = ruta(QStringLiteral("data1_PanPrincipal"));
    {
        auto g = nueva();
        g->fijaConsulta(kSql);
        auto* enc = g->tabla()->horizontalHeader();
        enc->moveSection(enc->visualIndex(g->modelo().columna(QStringLiteral("Importe"))), 0);
        g->fijaAnchoColumna(QStringLiteral("Nombre"), 237);
        g->agrupaPor(QStringLiteral("Rubro"));
        ASSERT_TRUE(g->guardaDistribucion(archivo));
    }
    auto g = nueva();
    // La distribución puede cargarse antes de ligar la consulta (así arranca la ventana principal).
    ASSERT_TRUE(g->cargaDistribucion(archivo));
    g->fijaConsulta(kSql);
    EXPECT_EQ(g->ordenColumnas(), (QStringList{QStringLiteral("Importe"), QStringLiteral("id"),
                                               QStringLiteral("Nombre"), QStringLiteral("Rubro")}));
    EXPECT_EQ(g->anchoColumna(QStringLiteral("Nombre")), 237);
    EXPECT_EQ(g->agrupacion(), QStringList{QStringLiteral("Rubro")});
    EXPECT_EQ(g->arbol()->topLevelItemCount(), 3); // NULL, Bebidas, Limpieza

    // También sobre una grilla ya ligada.
    auto h = nueva();
    h->fijaConsulta(kSql);
    ASSERT_TRUE(h->cargaDistribucion(archivo));
    EXPECT_EQ(h->ordenColumnas().first(), QStringLiteral("Importe"));
    EXPECT_TRUE(h->agrupada());
}

TEST_F(GrillaTest, DistribucionDanadaOFaltanteDejaLaDeFabrica) {
    auto g = nueva();
    g->fijaConsulta(kSql);
    const QStringList orden = g->ordenColumnas();
    const int ancho = g->anchoColumna(QStringLiteral("Nombre"));
    EXPECT_FALSE(g->cargaDistribucion(ruta(QStringLiteral("no_existe"))));
    for (const QByteArray& basura : {QByteArray("{\"columnas\": [ {\"campo\""), QByteArray("\x00\xff\x10", 3),
                                     QByteArray("[1,2,3]"), QByteArray("{\"version\":1,\"columnas\":7}")}) {
        QFile f(ruta(QStringLiteral("dataUsers_PanPrincipal")));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(basura);
        f.close();
        EXPECT_FALSE(g->cargaDistribucion(f.fileName())) << basura.toStdString();
        EXPECT_EQ(g->ordenColumnas(), orden);
        EXPECT_EQ(g->anchoColumna(QStringLiteral("Nombre")), ancho);
        EXPECT_FALSE(g->agrupada());
    }
    // Una columna guardada que la consulta ya no tiene se pasa por alto.
    QFile f(ruta(QStringLiteral("data2_PanPrincipal")));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(R"({"version":1,"columnas":[{"campo":"Borrada","ancho":80},{"campo":"Rubro","ancho":90}],
               "agrupar":["Borrada"]})");
    f.close();
    EXPECT_TRUE(g->cargaDistribucion(f.fileName()));
    EXPECT_EQ(g->ordenColumnas().first(), QStringLiteral("Rubro"));
    EXPECT_FALSE(g->agrupada());
}

TEST_F(GrillaTest, BuscaLaPrimeraFilaQueEmpiezaConElTexto) {
    auto g = nueva();
    g->fijaConsulta(kSql);
    // Lejos: fila 50 000, sin distinguir mayúsculas y con apóstrofo.
    ASSERT_TRUE(g->busca(QStringLiteral("Nombre"), QStringLiteral("zeta o'b")));
    EXPECT_EQ(g->filaActualNumero(), 49999);
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("id")).toInt(), 50000);
    // No hizo falta traer las filas intermedias.
    EXPECT_LT(g->modelo().paginasEnMemoria(), 4);
    // La primera de varias coincidencias.
    ASSERT_TRUE(g->busca(QStringLiteral("Nombre"), QStringLiteral("ART0012")));
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("Nombre")).toString(), QStringLiteral("Art001200"));
    // Los comodines de LIKE se buscan como texto.
    EXPECT_FALSE(g->busca(QStringLiteral("Nombre"), QStringLiteral("%")));
    EXPECT_FALSE(g->busca(QStringLiteral("Nombre"), QStringLiteral("Art_0")));
    EXPECT_FALSE(g->busca(QStringLiteral("Nombre"), QStringLiteral("Nadie")));
    EXPECT_EQ(g->filaActualNumero(), 1199); // una búsqueda fallida no mueve la fila
    // Columna que no existe o con nombre que no es un campo.
    EXPECT_FALSE(g->busca(QStringLiteral("id) OR (1=1"), QStringLiteral("1")));
    // Números: por el comienzo de su texto.
    ASSERT_TRUE(g->busca(QStringLiteral("id"), QStringLiteral("5999")));
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("id")).toInt(), 5999);
}

TEST_F(GrillaTest, FilaDeGrupoNoDaRegistro) {
    auto g = nueva();
    g->fijaClave(QStringLiteral("id"));
    g->fijaConsulta(kSql);
    g->agrupaPor(QStringLiteral("Rubro"));
    auto* arbol = g->arbol();
    ASSERT_EQ(arbol->topLevelItemCount(), 3);
    QTreeWidgetItem* bebidas = arbol->topLevelItem(1);
    EXPECT_TRUE(bebidas->text(0).contains(QStringLiteral("Bebidas")));
    EXPECT_TRUE(bebidas->text(0).contains(QStringLiteral("(20000)")));
    arbol->setCurrentItem(bebidas);
    EXPECT_FALSE(g->filaActual().has_value());
    EXPECT_FALSE(g->claveActual().has_value());
    bebidas->setExpanded(true);
    ASSERT_EQ(bebidas->childCount(), 20000);
    arbol->setCurrentItem(bebidas->child(0));
    ASSERT_TRUE(g->filaActual().has_value());
    EXPECT_EQ(g->claveActual()->toInt(), 3);
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("Rubro")).toString(), QStringLiteral("Bebidas"));
    // El grupo de los vacíos también se abre.
    arbol->topLevelItem(0)->setExpanded(true);
    EXPECT_EQ(arbol->topLevelItem(0)->childCount(), 20000);

    // La ficha de la banda quita la agrupación.
    auto* ficha = g->findChild<QToolButton*>(QStringLiteral("fichaAgrupar"));
    ASSERT_NE(ficha, nullptr);
    QTest::mouseClick(ficha, Qt::LeftButton);
    EXPECT_FALSE(g->agrupada());
    EXPECT_TRUE(g->filaActual().has_value());
}

TEST_F(GrillaTest, RefrescaConservaLaFilaPorClave) {
    auto g = nueva();
    g->fijaClave(QStringLiteral("id"));
    g->fijaConsulta(QStringLiteral("SELECT id, Nombre, Importe FROM Prueba ORDER BY Nombre"));
    ASSERT_TRUE(g->irAFila(700));
    const QVariant clave = *g->claveActual();
    g->fijaAnchoColumna(QStringLiteral("Nombre"), 222);
    // Otra terminal agrega filas que quedan antes y cambia la fila actual.
    almacen_->ejecuta(QStringLiteral("INSERT INTO Prueba (id, Nombre) VALUES (?, ?), (?, ?)"),
                      {kFilas + 1, QStringLiteral("A primero"), kFilas + 2, QStringLiteral("A segundo")});
    almacen_->ejecuta(QStringLiteral("UPDATE Prueba SET Importe = 99 WHERE id = ?"), {clave});
    g->refresca();
    EXPECT_EQ(*g->claveActual(), clave);
    EXPECT_EQ(g->filaActualNumero(), 702);
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("Importe")).toInt(), 99);
    EXPECT_EQ(g->anchoColumna(QStringLiteral("Nombre")), 222);
}

TEST_F(GrillaTest, RefrescaSinClaveConservaElNumeroDeFila) {
    auto g = nueva();
    g->fijaConsulta(kSql);
    ASSERT_TRUE(g->irAFila(1000));
    almacen_->ejecuta(QStringLiteral("DELETE FROM Prueba WHERE id <= 10"));
    g->refresca();
    EXPECT_EQ(g->filaActualNumero(), 1000);
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("id")).toInt(), 1011);
    // Si las filas se acaban, queda en la última.
    almacen_->ejecuta(QStringLiteral("DELETE FROM Prueba WHERE id > 500"));
    g->refresca();
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("id")).toInt(), 500);
}

TEST_F(GrillaTest, RefrescaAgrupadaConservaGruposAbiertos) {
    auto g = nueva();
    g->fijaConsulta(kSql);
    g->agrupaPor(QStringLiteral("Rubro"));
    g->arbol()->topLevelItem(2)->setExpanded(true);
    almacen_->ejecuta(QStringLiteral("UPDATE Prueba SET Rubro = 'Almacén' WHERE id = 1"));
    g->refresca();
    ASSERT_EQ(g->arbol()->topLevelItemCount(), 4);
    EXPECT_TRUE(g->arbol()->topLevelItem(3)->isExpanded());
    EXPECT_EQ(g->arbol()->topLevelItem(3)->childCount(), 19999);
}

TEST_F(GrillaTest, ImprimeTodasLasFilasConPaginas) {
    almacen_->ejecuta(QStringLiteral("DELETE FROM Prueba WHERE id > 300"));
    auto g = nueva();
    g->fijaConsulta(kSql);
    g->fijaTituloImpresion(QStringLiteral("Artículos"));
    QPrinter pr(QPrinter::ScreenResolution);
    pr.setOutputFormat(QPrinter::PdfFormat);
    pr.setOutputFileName(ruta(QStringLiteral("grilla.pdf")));
    const int paginas = ImprimeGrilla(*g, pr);
    EXPECT_GE(paginas, 4); // 300 filas no caben en tres hojas A4
    EXPECT_LE(paginas, 12);
    EXPECT_GT(QFileInfo(ruta(QStringLiteral("grilla.pdf"))).size(), 1000);
}

} // namespace
