// La ficha del proveedor con el teclado: Aceptar sin contacto no hace nada, el CUIT repetido se
// pregunta (No deja la ficha abierta en el CUIT, Sí graba) y un proveedor que otra terminal borró
// se dice al abrir, con la ficha vacía.

#include "apoyo/modal.h"
#include "apoyo/filas.h"
#include "apoyo/pantalla_prueba.h"
#include "sales/ui/panel_prueba.h"
#include "suppliers/ui/pan_nue_prove.h"

#include <QLineEdit>

namespace orv {
namespace {

using prueba::hijo;
using prueba::respondeCaja;
using prueba::Textos;

class PanNueProve : public prueba::PantallaDePrueba {
protected:
    QStringList proveedores() {
        return prueba::Filas(a(), QStringLiteral("SELECT Nombre, RazonSocial, Cuit FROM Proveedores ORDER BY idProveedor"));
    }
};

TEST_F(PanNueProve, SinContactoNadaYCuitRepetidoSePregunta) {
    a().ejecuta(QStringLiteral("INSERT INTO Proveedores (Nombre, RazonSocial, Cuit) VALUES ('Luis', 'Norte', '30-12345678-1')"));
    panNueProve d(a(), std::nullopt, QStringLiteral("CUIT"));
    d.show();
    QApplication::setActiveWindow(&d);
    EXPECT_TRUE(hijo<QLineEdit>(d, "txNombre")->hasFocus());
    QTest::keyClick(hijo<QLineEdit>(d, "txNombre"), Qt::Key_Return);
    EXPECT_TRUE(d.isVisible());
    hijo<QLineEdit>(d, "txNombre")->setText(QStringLiteral("Ana"));
    hijo<QLineEdit>(d, "txRazon")->setText(QStringLiteral("Sur"));
    hijo<QLineEdit>(d, "txCuit")->setText(QStringLiteral("30-12345678-1"));
    auto no = respondeCaja(QStringLiteral("No"));
    QTest::keyClick(hijo<QLineEdit>(d, "txRazon"), Qt::Key_Return);
    EXPECT_EQ(QStringList({no->titulo, no->texto}),
              QStringList({"Atención", "El proveedor \"Norte\" ya tiene el CUIT 30-12345678-1.\n¿Graba igual éste proveedor?"}));
    EXPECT_TRUE(d.isVisible());
    EXPECT_EQ(d.focusWidget(), hijo<QLineEdit>(d, "txCuit"));
    auto si = respondeCaja(QStringLiteral("Sí"));
    QTest::keyClick(hijo<QLineEdit>(d, "txCuit"), Qt::Key_Return);
    EXPECT_TRUE(si->vista);
    EXPECT_EQ(d.result(), QDialog::Accepted);
    EXPECT_EQ(proveedores(), (QStringList{"Luis|Norte|30-12345678-1", "Ana|Sur|30-12345678-1"}));
}

TEST_F(PanNueProve, BorradoPorOtraTerminalSeDiceAlAbrir) {
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    panNueProve d(a(), 77, QStringLiteral("CUIT"));
    EXPECT_EQ(QStringList({caja->titulo, caja->texto}), QStringList({"Error", "No encontrado!"}));
    EXPECT_EQ(Textos(d, {"txNombre", "txRazon", "txCuit"}), (QStringList{"", "", ""}));
}

} // namespace
} // namespace orv
