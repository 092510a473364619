// Las pantallas de compras y cuenta de un proveedor con el teclado: el pago que elige compras
// impagas (un importe mal escrito se vacía y se dice), la cuenta con su saldo y el borrado de una
// línea, y el registro de compras con su filtro y el borrado que se pregunta.

#include "apoyo/compras_prueba.h"
#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "reports/ui/salida_informes.h"
#include "sales/ui/panel_prueba.h"
#include "store/formato.h"
#include "suppliers/compras.h"
#include "suppliers/ui/pan_compras.h"
#include "suppliers/ui/pan_cta_prove.h"
#include "suppliers/ui/pan_ingr_pago_prove.h"
#include "widgets/grilla.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace orv {
namespace {

using prueba::hijo;
using prueba::respondeCaja;
using prueba::Textos;

class CuentaProve : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        proveedor_ = a().inserta(QStringLiteral("INSERT INTO Proveedores (Nombre, RazonSocial) VALUES ('Ana', 'Distribuidora Norte')"),
                                 {}, QStringLiteral("idProveedor"));
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, StockActual, PrecioCosto) VALUES ('7790001', 'Yerba', 5, 800)"));
        const qint64 art = a().valor(QStringLiteral("SELECT idArticulo FROM Articulos")).toLongLong();
        AgregaLineaCompra(a(), 1, {art, "2", "500", "0"});
        for (const char* tipo : {"FACTURA", "REMITO"}) {
            DatosCompra d = prueba::CompraDePrueba(a(), proveedor_, QString::number(++numero_), QStringLiteral("CTA CTE"));
            d.tipo = QString::fromLatin1(tipo);
            d.fecha = QDate(2026, 11, 10 * numero_);
            d.alicuota = QStringLiteral("0");
            d.pendiente = true;
            d.registraStock = true;
            compras_ << RegistraCompra(a(), d).idCompra;
        }
    }
    ContextoCompras contexto() { return {a(), estado_, *conf_, reloj_, *salida_, {}, [this] { ++cambios_; }}; }
    QString moneda(int pesos) const { return FormatoMoneda(Dinero(pesos), estado_.MascaraMoneda); }

    qint64 proveedor_ = 0;
    int numero_ = 0;
    int cambios_ = 0;
    QList<qint64> compras_;
};

TEST_F(CuentaProve, PagoQueEligeComprasYCuentaConSuSaldo) {
    panIngrPagoProve pago(contexto(), proveedor_);
    pago.show();
    auto* lista = hijo<QListWidget>(pago, "List1");
    ASSERT_EQ(lista->count(), 2);
    EXPECT_EQ(lista->item(0)->text(), QStringLiteral("A-0001-00000001 10/11/2026 ") + moneda(1000));
    lista->item(0)->setSelected(true);
    auto* importe = hijo<QLineEdit>(pago, "txTot");
    importe->setText(QStringLiteral("6OO"));
    auto error = respondeCaja(QStringLiteral("Aceptar"));
    hijo<QPushButton>(pago, "Command1")->click();
    EXPECT_EQ(QStringList({error->titulo, error->texto}), QStringList({"Error", "Error, el importe es incorrecto!"}));
    EXPECT_EQ(importe->text(), QString());
    EXPECT_TRUE(pago.isVisible());
    QTest::keyClicks(importe, QStringLiteral("600"));
    hijo<QLineEdit>(pago, "txDetalle")->setText(QStringLiteral("Transferencia"));
    auto listo = respondeCaja(QStringLiteral("Aceptar"));
    QTest::keyClick(importe, Qt::Key_Return);
    EXPECT_EQ(QStringList({listo->titulo, listo->texto}), QStringList({"Listo", "Pago asentado correctamente !"}));
    EXPECT_EQ(pago.result(), QDialog::Accepted);
    EXPECT_EQ(cambios_, 1);
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT NroComprobante, Cancelada FROM Compras ORDER BY idCompra")),
              QStringList({"1|1", "2|0"}));

    // La cuenta: 1000 + 1000 − 600; quitar el pago vuelve a 2000 y la compra sigue cancelada.
    panCtaProve cuenta(contexto(), proveedor_);
    cuenta.show();
    EXPECT_EQ(Textos(cuenta, {"Label1", "txTotal"}), QStringList({"Cuenta del proveedor Distribuidora Norte", moneda(1400)}));
    ASSERT_EQ(cuenta.grilla()->modelo().rowCount(), 3);
    cuenta.grilla()->irAFila(2);
    auto no = respondeCaja(QStringLiteral("No"));
    hijo<QPushButton>(cuenta, "Command11")->click();
    EXPECT_EQ(no->texto, QStringLiteral("Está seguro de borrar dicho movimiento?"));
    EXPECT_EQ(cuenta.grilla()->modelo().rowCount(), 3);
    auto si = respondeCaja(QStringLiteral("Sí"));
    hijo<QPushButton>(cuenta, "Command11")->click();
    EXPECT_EQ(Textos(cuenta, {"txTotal"}), QStringList{moneda(2000)});
    EXPECT_EQ(cuenta.grilla()->modelo().rowCount(), 2);
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT Cancelada FROM Compras ORDER BY idCompra")), QStringList({"1", "0"}));
}

TEST_F(CuentaProve, RegistroConFiltroYBorradoPreguntado) {
    panCompras registro(contexto(), proveedor_);
    registro.show();
    EXPECT_EQ(registro.grilla()->modelo().rowCount(), 2);
    hijo<QComboBox>(registro, "cboTipoComprobante")->setCurrentText(QStringLiteral("REMITO"));
    hijo<QPushButton>(registro, "Command1")->click();
    ASSERT_EQ(registro.grilla()->modelo().rowCount(), 1);
    auto no = respondeCaja(QStringLiteral("No"));
    hijo<QPushButton>(registro, "Command3")->click();
    EXPECT_EQ(QStringList({no->titulo, no->texto}), QStringList({"Atención", "Elimina la compra seleccionada?"}));
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT count(*) FROM Compras")), QStringList{"2"});
    auto si = respondeCaja(QStringLiteral("Sí"));
    hijo<QPushButton>(registro, "Command3")->click();
    EXPECT_EQ(registro.grilla()->modelo().rowCount(), 0); // el filtro sigue puesto
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT NroComprobante FROM Compras")), QStringList{"1"});
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT Codigo, StockActual FROM Articulos")), QStringList{"7790001|7"});
    EXPECT_EQ(cambios_, 1);
    // Sin filas, "Borrar" no pregunta nada.
    hijo<QPushButton>(registro, "Command3")->click();
    EXPECT_EQ(cambios_, 1);
}

} // namespace
} // namespace orv
