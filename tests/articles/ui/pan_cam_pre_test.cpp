// El cambio de precios en la pantalla: la grilla del rubro elegido, el cambio que se pregunta con la
// cantidad de artículos (No no cambia nada, Sí cambia y lo dice) y un precio corregido en la celda.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "articles/ui/pan_cam_pre.h"
#include "widgets/grilla.h"

#include <QTest>
#include <QtWidgets>

namespace orv {
namespace {

using prueba::hijo;
using prueba::respondeCaja;

class PanCamPre : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecutaGuion(QStringLiteral(
            "INSERT INTO Rubros (idRubro, Rubro) VALUES (7, 'Bebidas'), (8, 'Almacén');"
            "INSERT INTO Articulos (Codigo, Descripcion, idRubro, PrecioCosto, PrecioVenta) VALUES "
            "('100', 'Agua', 7, 100, 150), ('200', 'Soda', 7, 50, 80), ('300', 'Yerba', 8, 900, 1200)"));
        conf_->graba(clave::miscelaneas, QStringLiteral("CoefIva"), QStringLiteral("21"));
    }
    QStringList precios() {
        return prueba::Filas(a(), QStringLiteral("SELECT Codigo, PrecioCosto, PrecioVenta, PrecioFinal FROM Articulos ORDER BY Codigo"));
    }
};

TEST_F(PanCamPre, CambioPreguntadoYPrecioCorregidoEnLaCelda) {
    panCamPre p(a(), estado_, *conf_);
    p.show();
    EXPECT_EQ(p.grilla()->modelo().rowCount(), 3);
    auto* rubro = hijo<QComboBox>(p, "Combo1");
    rubro->setCurrentText(QStringLiteral("Bebidas"));
    Q_EMIT rubro->activated(rubro->currentIndex());
    EXPECT_EQ(p.grilla()->modelo().rowCount(), 2);
    hijo<QLineEdit>(p, "Text3")->setText(QStringLiteral("10"));
    auto no = respondeCaja(QStringLiteral("No"));
    hijo<QPushButton>(p, "Command1")->click();
    EXPECT_EQ(no->texto, QStringLiteral("Se cambiarán los precios de 2 artículos: costo 10 %, venta 0 %.\n¿Continúa?"));
    EXPECT_EQ(precios(), QStringList({"100|100|150|0", "200|50|80|0", "300|900|1200|0"}));
    auto si = respondeCaja(QStringLiteral("Sí"));
    auto listo = respondeCaja(QStringLiteral("Aceptar"));
    hijo<QPushButton>(p, "Command1")->click();
    EXPECT_EQ(listo->texto, QStringLiteral("Se cambiaron los precios de 2 artículos."));
    EXPECT_EQ(precios(), QStringList({"100|110|150|181.5", "200|55|80|96.8", "300|900|1200|0"}));
    // La venta de la primera fila, corregida en su celda.
    const QModelIndex celda = p.grilla()->modelo().index(0, p.grilla()->modelo().columna(QStringLiteral("PrecioVenta")));
    p.grilla()->modelo().setData(celda, QStringLiteral("200"));
    QApplication::processEvents(); // se graba al terminar la edición
    EXPECT_EQ(precios().first(), QStringLiteral("100|110|200|242"));
}

} // namespace
} // namespace orv
