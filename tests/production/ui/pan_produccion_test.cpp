// Las pantallas de producción de punta a punta: la fórmula cargada en panFormula, el total y las
// alertas que siguen a lo escrito, y la corrida con su pregunta, su "Listo!" y los campos de vuelta
// a cero.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "production/ui/pan_formula.h"
#include "production/ui/pan_produccion.h"
#include "reports/ui/salida_informes.h"
#include "sales/ui/panel_prueba.h"
#include "widgets/grilla.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>

namespace orv {
namespace {

using prueba::hijo;
using prueba::Textos;

class PantallasProduccion : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta(QStringLiteral(
            "INSERT INTO Articulos (idArticulo, Codigo, Descripcion, StockActual, StockMinimo, PrecioCosto, esMateriaPrima) "
            "VALUES (1, 'P01', 'Sandwich', 0, 0, 40, 0), (2, 'M01', 'Pan', 50, 5, 3, 1), (3, 'M02', 'Jamon', 10, 5, 2.5, 1)"));
    }
};

TEST_F(PantallasProduccion, FormulaTotalAlertasYCorrida) {
    {
        panFormula f(a(), estado_, std::nullopt);
        auto* mat = hijo<QComboBox>(f, "cboMat");
        EXPECT_EQ(mat->count(), 2); // sólo las materias primas, por descripción: Jamon, Pan
        const auto agrega = [&](int materia, const char* cantidad) {
            mat->setCurrentIndex(materia);
            hijo<QLineEdit>(f, "Text1")->setText(QString::fromLatin1(cantidad));
            hijo<QPushButton>(f, "Command1")->click();
        };
        agrega(1, "2");
        agrega(0, "0.5");
        agrega(0, "0.25");
        hijo<QTableWidget>(f, "ms1")->setCurrentCell(2, 0);
        hijo<QPushButton>(f, "Command2")->click();
        EXPECT_EQ(Textos(f, {"Text2"}), QStringList{"7.25"});
        // Sin artículo elegido se dice y la pantalla sigue con lo cargado.
        auto caja = prueba::respondeCaja(QStringLiteral("Aceptar"));
        hijo<QPushButton>(f, "Command4")->click();
        EXPECT_EQ(caja->texto, "Elija el artículo a producir.");
        hijo<QComboBox>(f, "cboArticulos")->setCurrentIndex(0);
        hijo<QPushButton>(f, "Command4")->click();
        EXPECT_EQ(f.result(), QDialog::Accepted);
    }
    EXPECT_EQ(prueba::Filas(a(), "SELECT idArticuloFinal, idArticuloMP, Cantidad, CostoTotal FROM FormulaProduccion ORDER BY idItemFormula"),
              (QStringList{"1|2|2|6", "1|3|0.5|1.25"}));

    {
        // Marcado después como materia prima, el artículo sigue con su fórmula para editarla.
        a().ejecuta("UPDATE Articulos SET esMateriaPrima = 1 WHERE idArticulo = 1");
        panFormula f(a(), estado_, 1);
        EXPECT_EQ(Textos(f, {"cboArticulos", "Text2"}), (QStringList{"Sandwich", "7.25"}));
        a().ejecuta("UPDATE Articulos SET esMateriaPrima = 0 WHERE idArticulo = 1");
    }

    PanProduccion p(a(), estado_, reloj_, *salida_);
    EXPECT_EQ(p.formulas()->modelo().rowCount(), 1);
    auto* art = hijo<QComboBox>(p, "cbArt");
    art->setCurrentIndex(0);
    hijo<QLineEdit>(p, "txCantAProd")->setText("10");
    hijo<QLineEdit>(p, "txManoObra")->setText("5");
    EXPECT_EQ(Textos(p, {"txTot"}), QStringList{"77.50"});
    // Con la mano de obra ilegible el total queda, pero las alertas siguen a la cantidad.
    hijo<QLineEdit>(p, "txManoObra")->setText("abc");
    hijo<QLineEdit>(p, "txCantAProd")->setText("40");
    EXPECT_EQ(Textos(p, {"txTot"}), QStringList{"77.50"});
    const int falta = p.alertas()->modelo().columna("Falta");
    EXPECT_EQ(p.alertas()->modelo().valor(0, falta).toString() + p.alertas()->modelo().valor(1, falta).toString(), "SiSi");

    hijo<QLineEdit>(p, "txManoObra")->setText("5");
    {
        prueba::VigiaDeCajas vigia(QStringLiteral("Registra"));
        hijo<QPushButton>(p, "Command4")->click();
        EXPECT_EQ(vigia.vistas, (QStringList{"Registra la producción?", "Listo!"}));
    }
    EXPECT_EQ(Textos(p, {"cbArt", "txCantAProd", "txManoObra"}), (QStringList{"", "0", "0"}));
    EXPECT_EQ(prueba::Filas(a(), "SELECT CantidadProducida, CostoManoObra, CostoTotal FROM RegistroProduccion"),
              QStringList{"40|5|295"});
    EXPECT_EQ(p.registros()->modelo().rowCount(), 2);
}

} // namespace
} // namespace orv
