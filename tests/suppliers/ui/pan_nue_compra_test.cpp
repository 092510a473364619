// El ingreso de una compra como se hace en el mostrador: el lector de códigos escribe el código y
// Enter, se tipea la cantidad y Enter, sin tocar el ratón; la compra registrada con sus opciones
// recordadas; y la misma compra abierta de nuevo, con un error de tipeo que no la pierde.

#include "apoyo/compras_prueba.h"
#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "sales/ui/panel_prueba.h"
#include "store/formato.h"
#include "suppliers/ui/pan_nue_compra.h"
#include "widgets/grilla.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace orv {
namespace {

using prueba::hijo;
using prueba::respondeCaja;
using prueba::Textos;

class PanNueCompra : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        proveedor_ = a().inserta(QStringLiteral("INSERT INTO Proveedores (Nombre, RazonSocial) VALUES ('Ana', 'Distribuidora Norte')"),
                                 {}, QStringLiteral("idProveedor"));
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, CgoProveedor, StockActual, PrecioCosto, IdProveedor) "
                                   "VALUES ('7790001', 'Yerba 1 kg', 'N-10', 5, 800, ?), ('7790002', 'Azúcar 1 kg', 'N-55', 0, 500, ?)"),
                    {proveedor_, proveedor_});
    }
    static void teclea(QWidget* w, const QString& texto) {
        QTest::keyClicks(w, texto);
        QTest::keyClick(w, Qt::Key_Return);
    }
    QString moneda(int pesos) const { return FormatoMoneda(Dinero(pesos), estado_.MascaraMoneda); }
    qint64 proveedor_ = 0;
};

TEST_F(PanNueCompra, ConElLectorYElTecladoSinElRaton) {
    panNueCompra d(a(), estado_, *conf_, reloj_, proveedor_, QStringLiteral("Distribuidora Norte"), std::nullopt);
    d.show();
    QApplication::setActiveWindow(&d);
    auto* codigo = hijo<QLineEdit>(d, "txtCodigo");
    auto* cantidad = hijo<QLineEdit>(d, "txtCant");
    ASSERT_TRUE(codigo->hasFocus());

    // Código leído y Enter: la cantidad espera con 1 y el costo del artículo.
    teclea(codigo, QStringLiteral("7790001"));
    EXPECT_TRUE(cantidad->hasFocus());
    EXPECT_EQ(Textos(d, {"txtCant", "txtUnitario", "cboArticulos"}), QStringList({"1", moneda(800), "Yerba 1 kg"}));
    teclea(cantidad, QStringLiteral("12"));
    EXPECT_TRUE(codigo->hasFocus());
    // Por el código del proveedor, con bonificación.
    teclea(hijo<QLineEdit>(d, "Text1"), QStringLiteral("N-55"));
    QTest::keyClick(cantidad, Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), hijo<QLineEdit>(d, "txtBonif"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
    teclea(QApplication::focusWidget(), QStringLiteral("10"));
    // Un código que no existe se dice en la pantalla y no agrega nada.
    teclea(codigo, QStringLiteral("999"));
    EXPECT_EQ(hijo<QLabel>(d, "lblAviso")->text(), QStringLiteral("Articulo no encontrado!"));
    EXPECT_TRUE(codigo->hasFocus());
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT Codigo, Cantidad, Unitario, SubTotal FROM TmpFacCompra ORDER BY idTmpFacCompra")),
              QStringList({"7790001|12|800|9600", "7790002|1|450|450"}));

    hijo<QLineEdit>(d, "txPorImp")->setText(QStringLiteral("21"));
    EXPECT_EQ(Textos(d, {"txTotal", "txtSubTot", "txTotImp", "txTotTot"}),
              QStringList({moneda(10050), moneda(10050), FormatoMoneda(Dinero(2110, 5000), estado_.MascaraMoneda),
                           FormatoMoneda(Dinero(12160, 5000), estado_.MascaraMoneda)}));
    hijo<QLineEdit>(d, "txPtoVta")->setText(QStringLiteral("2"));
    hijo<QLineEdit>(d, "txNroComproba")->setText(QStringLiteral("4567"));
    hijo<QComboBox>(d, "cboFPago")->setCurrentText(QStringLiteral("EFVO"));
    hijo<QComboBox>(d, "cbCta")->setCurrentText(QStringLiteral("Pago a Proveedores"));
    hijo<QCheckBox>(d, "chkRegCaja")->setChecked(true);
    hijo<QCheckBox>(d, "chkRegStock")->setChecked(true);
    auto listo = respondeCaja(QStringLiteral("Aceptar"));
    hijo<QPushButton>(d, "Command1")->click();
    EXPECT_EQ(QStringList({listo->titulo, listo->texto}), QStringList({"Listo", "Compra Ingresada Correctamente !!"}));
    EXPECT_EQ(d.result(), QDialog::Accepted);
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT LetComprobante, SucComprobante, NroComprobante, Total, RegistraCaja FROM Compras")),
              QStringList{"A|2|4567|12160.5|1"});
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT Codigo, StockActual FROM Articulos ORDER BY idArticulo")),
              QStringList({"7790001|17", "7790002|1"}));
    // Las opciones quedan para la próxima compra.
    QStringList recordadas;
    for (const char* c : {"CheckRegCaja", "CheckRegistraStock", "CheckPendiente", "TipoComprobanteCompra", "AlicuotaImpositiva"})
        recordadas << conf_->lee(clave::miscelaneas, QString::fromLatin1(c));
    EXPECT_EQ(recordadas, QStringList({"1", "1", "0", "FACTURA", "21"}));
    panNueCompra otra(a(), estado_, *conf_, reloj_, proveedor_, QStringLiteral("Distribuidora Norte"), std::nullopt);
    EXPECT_EQ(Textos(otra, {"cboFPago", "cbCta", "txPorImp"}), QStringList({"EFVO", "Pago a Proveedores", "21"}));
    EXPECT_EQ(otra.findChild<Grilla*>(QStringLiteral("DBGrid1"))->modelo().rowCount(), 0);
}

TEST_F(PanNueCompra, CompraReabiertaYUnErrorDeTipeoNoLaPierde) {
    a().ejecuta(QStringLiteral("INSERT INTO TmpFacCompra (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                               "SELECT idArticulo, Codigo, Descripcion, 3, 700, 2100, 1 FROM Articulos WHERE Codigo = '7790001'"));
    DatosCompra datos = prueba::CompraDePrueba(a(), proveedor_, QStringLiteral("88"), QStringLiteral("CTA CTE"));
    datos.tipo = QStringLiteral("ORDEN DE COMPRA");
    datos.letra = QStringLiteral("X");
    datos.sucursal = QStringLiteral("3");
    datos.fecha = QDate(2026, 11, 2);
    datos.alicuota = QStringLiteral("10.5");
    datos.pendiente = true;
    const qint64 id = RegistraCompra(a(), datos).idCompra;
    a().ejecuta(QStringLiteral("DELETE FROM TmpFacCompra"));

    panNueCompra d(a(), estado_, *conf_, reloj_, proveedor_, QStringLiteral("Distribuidora Norte"), id);
    d.show();
    EXPECT_EQ(Textos(d, {"cbLetra", "txPtoVta", "txNroComproba", "cboTipoComprobante", "cboFPago", "txPorImp", "txTotTot"}),
              QStringList({"X", "0003", "00000088", "ORDEN DE COMPRA", "CTA CTE", "10.50",
                           FormatoMoneda(Dinero(2320, 5000), estado_.MascaraMoneda)}));
    EXPECT_FALSE(hijo<QCheckBox>(d, "chkRegCaja")->isEnabled());
    EXPECT_TRUE(hijo<QCheckBox>(d, "chkPendiente")->isChecked());
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT Codigo, Cantidad, Unitario FROM TmpFacCompra WHERE PCRed = 1")),
              QStringList{"7790001|3|700"});

    hijo<QLineEdit>(d, "txPorImp")->setText(QStringLiteral("10,5"));
    EXPECT_EQ(hijo<QLineEdit>(d, "txTotTot")->text(), QString());
    auto error = respondeCaja(QStringLiteral("Aceptar"));
    hijo<QPushButton>(d, "Command1")->click();
    EXPECT_EQ(QStringList({error->titulo, error->texto}), QStringList({"Error", "Porcentaje/alicuota impositiva incorrecta!!"}));
    EXPECT_TRUE(d.isVisible());
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT idCompra, Total FROM Compras")), QStringList{QStringLiteral("%1|2320.5").arg(id)});
    // Esc con líneas pregunta: No deja la pantalla abierta, Sí la cierra y la compra queda como estaba.
    auto no = respondeCaja(QStringLiteral("No"));
    QTest::keyClick(&d, Qt::Key_Escape);
    EXPECT_EQ(no->texto, QStringLiteral("La compra no se registró. ¿Cierra igual?"));
    EXPECT_TRUE(d.isVisible());
    auto si = respondeCaja(QStringLiteral("Sí"));
    QTest::keyClick(&d, Qt::Key_Escape);
    EXPECT_FALSE(d.isVisible());
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT count(*) FROM DetCompras")), QStringList{"1"});
}

} // namespace
} // namespace orv
