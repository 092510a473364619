// Pantallas de tipos de comprobante y "Mas Datos...": controles, textos y lo que graban.

#include "apoyo/pantalla_prueba.h"
#include "apoyo/modal.h"
#include "sales/tipos_comprobante.h"
#include "sales/ui/pan_conf_fiscal.h"
#include "sales/ui/pan_corr_num.h"
#include "sales/ui/pan_fpago.h"
#include "sales/ui/pan_nue_tipo_comproba.h"
#include "sales/ui/pan_pre_fact.h"
#include "widgets/grilla.h"
#include "store/actualizacion.h"
#include "store/rutinas.h"
#include "../../ui/caja_modal.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace orv {
namespace {

using prueba::alAbrirse;
using prueba::respondeCaja;

class PantallasComprobantes : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        conf_->graba(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado"), QStringLiteral("1"));
    }
    template <typename T>
    static T* h(QWidget* w, const char* n) {
        T* r = w->findChild<T*>(QString::fromLatin1(n));
        EXPECT_NE(r, nullptr) << n;
        return r;
    }
};

TEST_F(PantallasComprobantes, NuevoTipoValidaExplicaYEligePlantilla) {
    PanNueTipoComproba d(a(), *conf_, std::nullopt);
    d.show();
    auto* stock = h<QCheckBox>(&d, "chkStock");
    EXPECT_EQ(stock->text(), QStringLiteral("Descuenta cantidades del stock ?"));
    h<QCheckBox>(&d, "chkInversa")->click();
    EXPECT_EQ(stock->text(), QStringLiteral("Aumenta cantidades del stock ?"));
    bool explicaciones = true;
    for (const QString& t : {explicacion::esComercial, explicacion::operacionInversa, explicacion::descuentaStock,
                             explicacion::registraCaja}) {
        bool esta = false;
        for (QLabel* l : d.findChildren<QLabel*>()) esta = esta || l->text() == t;
        explicaciones = explicaciones && esta;
    }
    EXPECT_TRUE(explicaciones);

    // Sin plantilla no se acepta.
    h<QLineEdit>(&d, "txTipo")->setText(QStringLiteral("REMITO 'R'"));
    h<QComboBox>(&d, "cbLetra")->setEditText(QStringLiteral("R"));
    h<QComboBox>(&d, "cbPtoVta")->setEditText(QStringLiteral("0002"));
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    QTest::mouseClick(h<QPushButton>(&d, "Command1"), Qt::LeftButton);
    EXPECT_EQ(caja->texto, QStringLiteral("Error, ingrese la información correctamente!"));
    EXPECT_TRUE(d.isVisible());
    // Un archivo que no está se rechaza; uno que está queda con su ruta completa.
    caja = respondeCaja(QStringLiteral("Aceptar"));
    d.eligePlantilla(base_->carpeta() + QStringLiteral("/no-esta.rpt"));
    EXPECT_EQ(caja->texto, QStringLiteral("Seleccione un archivo válido!"));
    EXPECT_EQ(h<QLabel>(&d, "lblPlantilla")->text(), kSinPlantilla);
    const QString ruta = base_->carpeta() + QStringLiteral("/remito.rpt");
    QFile f(ruta);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.close();
    d.eligePlantilla(ruta);
    EXPECT_EQ(h<QLabel>(&d, "lblPlantilla")->text(), ruta);
    h<QLineEdit>(&d, "txCorrelativo")->setText(QStringLiteral("cien"));
    caja = respondeCaja(QStringLiteral("Aceptar"));
    QTest::mouseClick(h<QPushButton>(&d, "Command1"), Qt::LeftButton);
    EXPECT_TRUE(caja->vista);
    h<QLineEdit>(&d, "txCorrelativo")->setText(QStringLiteral("100"));
    QTest::mouseClick(h<QPushButton>(&d, "Command1"), Qt::LeftButton);
    EXPECT_EQ(d.result(), QDialog::Accepted);
    const TipoComprobante t = d.datos();
    EXPECT_TRUE(t.operacionInversa && t.descuentaStock == false);
    EXPECT_EQ(t.plantilla, ruta);
}

TEST_F(PantallasComprobantes, ImpresoraFiscalAbreConLoGuardadoYEscribeLaPlantilla) {
    PanConfFiscal f(QStringLiteral("IMPRESORA FISCAL : EPSON 200 80 COL|PUERTO : 2"), QStringLiteral("49"));
    EXPECT_TRUE(h<QRadioButton>(&f, "optEpson200")->isChecked());
    EXPECT_EQ(h<QLineEdit>(&f, "txPuerto")->text(), QStringLiteral("2"));
    EXPECT_FALSE(h<QListWidget>(&f, "listhasar")->isEnabled());
    EXPECT_EQ(h<QComboBox>(&f, "cboModComprobante")->currentText(), QStringLiteral("49 - Factura B"));
    EXPECT_EQ(f.plantilla(), QStringLiteral("IMPRESORA FISCAL : EPSON 200 80 COL|PUERTO : 2"));

    PanConfFiscal g(kSinPlantilla, QString());
    g.show();
    EXPECT_TRUE(h<QRadioButton>(&g, "optHasar")->isChecked());
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    QTest::mouseClick(h<QPushButton>(&g, "Command1"), Qt::LeftButton);
    EXPECT_EQ(caja->texto, QStringLiteral("Error, seleccione un modelo!"));
    h<QListWidget>(&g, "listhasar")->setCurrentRow(2);
    h<QComboBox>(&g, "cboModComprobante")->setCurrentIndex(8);
    EXPECT_EQ(h<QLabel>(&g, "Label3")->text(), QStringLiteral("HASAR O COMPAT. 615 - PL8F"));
    QTest::mouseClick(h<QPushButton>(&g, "Command1"), Qt::LeftButton);
    EXPECT_EQ(g.result(), QDialog::Accepted);
    // Sin puerto la plantilla termina en "|PUERTO : ".
    EXPECT_EQ(g.plantilla(), QStringLiteral("IMPRESORA FISCAL : HASAR O COMPAT. 615 - PL8F|PUERTO : "));
    EXPECT_EQ(g.modDocumento(), QStringLiteral("120"));
}

TEST_F(PantallasComprobantes, ComprobantesYNumeracionEditaBorraYPredetermina) {
    TipoComprobante otro;
    otro.tipo = QStringLiteral("PRESUPUESTO");
    otro.letra = QStringLiteral("X");
    otro.puntoDeVenta = QStringLiteral("0001");
    otro.plantilla = QString();
    GuardaTipo(a(), std::nullopt, otro);
    PanCorrNum p(a(), *conf_);
    p.show();
    // "Editar..." sin fila avisa.
    p.grilla()->fijaConsulta(QStringLiteral("SELECT idTipoComprobante, Tipo FROM TiposDeComprobantes WHERE 1 = 0 "
                                            "ORDER BY idTipoComprobante"));
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    p.editar();
    EXPECT_EQ(caja->texto, QStringLiteral("Seleccione un tipo de comprobante previamente!"));
    p.grilla()->fijaConsulta(QStringLiteral("SELECT idTipoComprobante, Tipo, Letra, PuntoDeVenta, Correlativo "
                                            "FROM TiposDeComprobantes ORDER BY idTipoComprobante"));
    ASSERT_TRUE(p.grilla()->irAFila(0));
    EXPECT_EQ(h<QLineEdit>(&p, "txTipo")->text(), QStringLiteral("FACTURA B"));

    // Editar: se cambia el correlativo.
    alAbrirse<PanNueTipoComproba>([](PanNueTipoComproba* d) {
        auto* c = d->findChild<QLineEdit*>(QStringLiteral("txCorrelativo"));
        c->setText(QStringLiteral("41"));
        d->findChild<QLabel*>(QStringLiteral("lblPlantilla"))->setText(PlantillaTickets(QStringLiteral("COM1")));
        d->findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    });
    p.editar();
    EXPECT_EQ(ProximoNumeroMostrado(a(), 1), QStringLiteral("B 0001-00000042"));
    EXPECT_EQ(LeeTipo(a(), 1)->plantilla, QStringLiteral("IMPRESORA TICKETS PUERTO : COM1"));

    // Predeterminar.
    {
        PanPreFact d(a(), *conf_);
        d.show();
        auto* combo = d.findChild<QComboBox*>(QStringLiteral("Combo1"));
        EXPECT_EQ(combo->currentIndex(), 0); // el predeterminado que quedó al abrir la ventana: el primero
        combo->setCurrentIndex(-1);
        auto aviso = respondeCaja(QStringLiteral("Aceptar"));
        d.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
        EXPECT_EQ(aviso->texto, QStringLiteral("Seleccione un tipo de comprobante!"));
        EXPECT_NE(d.result(), QDialog::Accepted);
        ASSERT_GE(combo->count(), 2);
        combo->setCurrentIndex(1);
        d.findChild<QCheckBox*>(QStringLiteral("chkUEm"))->setChecked(true);
        d.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
        EXPECT_EQ(d.result(), QDialog::Accepted);
    }
    EXPECT_EQ(conf_->lee(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado")),
              a().valor(QStringLiteral("SELECT idTipoComprobante FROM TiposDeComprobantes ORDER BY idTipoComprobante "
                                       "LIMIT 1 OFFSET 1")).toString());
    EXPECT_EQ(conf_->lee(clave::miscelaneas, QStringLiteral("UltimoComprobantePredeterminado")), QStringLiteral("1"));

    // Borrar pregunta con su título.
    const qint64 antes = CuentaRegistros(a(), QStringLiteral("TiposDeComprobantes"));
    ASSERT_TRUE(p.grilla()->irAFila(0));
    auto pregunta = respondeCaja(QStringLiteral("Sí"));
    p.borrar();
    EXPECT_EQ(pregunta->texto, QStringLiteral("Está seguro de eliminar este esquema de comprobantes?"));
    EXPECT_EQ(pregunta->titulo, QStringLiteral("Atención !!"));
    EXPECT_EQ(CuentaRegistros(a(), QStringLiteral("TiposDeComprobantes")), antes - 1);
}

TEST_F(PantallasComprobantes, MasDatosFormaDePagoACuentaTarjetaYValidaciones) {
    DatosFPago d;
    d.idTipoComprobante = 1;
    d.nombreCliente = QStringLiteral("Ana");
    d.descuento = 10;
    d.idTipoIva = 1;
    d.posicionFormaPago = 0;
    PanFPago p(a(), QStringLiteral("RUT"), d);
    p.show();
    auto* combo1 = h<QComboBox>(&p, "Combo1");
    auto* check1 = h<QCheckBox>(&p, "Check1");
    auto* cupon = h<QLineEdit>(&p, "txCupon");
    EXPECT_FALSE(cupon->isVisible());
    bool rotuloClave = false;
    for (QLabel* l : p.findChildren<QLabel*>()) rotuloClave = rotuloClave || l->text() == QStringLiteral("RUT :");
    EXPECT_TRUE(rotuloClave);
    // Una forma a cuenta tilda "A cuenta..."; una tarjeta muestra el cupón.
    combo1->setCurrentIndex(combo1->findText(QStringLiteral("CTA CTE")));
    p.formaElegida();
    EXPECT_TRUE(check1->isChecked());
    // ...con el mismo efecto que hacerle clic: CTA CTE y la lista quieta.
    EXPECT_EQ(combo1->currentText(), QStringLiteral("CTA CTE"));
    EXPECT_FALSE(combo1->isEnabled());
    combo1->setCurrentIndex(combo1->findText(QStringLiteral("TARJETA")));
    p.formaElegida();
    EXPECT_FALSE(check1->isChecked());
    EXPECT_TRUE(cupon->isVisible());
    // "A cuenta..." elige CTA CTE y bloquea la lista; al destildar, EFVO.
    check1->click();
    EXPECT_EQ(combo1->currentText(), QStringLiteral("CTA CTE"));
    EXPECT_FALSE(combo1->isEnabled());
    check1->click();
    EXPECT_EQ(combo1->currentText(), QStringLiteral("EFVO"));
    EXPECT_TRUE(combo1->isEnabled());
    // Descuento que no es número.
    h<QLineEdit>(&p, "Text2")->setText(QStringLiteral("diez"));
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    QTest::mouseClick(h<QPushButton>(&p, "Command1"), Qt::LeftButton);
    EXPECT_EQ(caja->texto, QStringLiteral("Datos mal ingresados !"));
    // Un descuento con coma decimal es ambiguo: se rechaza, nunca se toma por 1.
    h<QLineEdit>(&p, "Text2")->setText(QStringLiteral("1,5"));
    auto ambiguo = respondeCaja(QStringLiteral("Aceptar"));
    QTest::mouseClick(h<QPushButton>(&p, "Command1"), Qt::LeftButton);
    EXPECT_EQ(ambiguo->texto, QStringLiteral("Descuento: el número está mal escrito. Use el punto para los decimales (1234.50)."));
    EXPECT_NE(p.result(), QDialog::Accepted);
    h<QLineEdit>(&p, "Text2")->setText(QStringLiteral("5"));
    h<QLineEdit>(&p, "txCupon")->setText(QStringLiteral("0042"));
    QTest::mouseClick(h<QPushButton>(&p, "Command1"), Qt::LeftButton);
    EXPECT_EQ(p.result(), QDialog::Accepted);
    const DatosFPago r = p.datos();
    EXPECT_DOUBLE_EQ(r.descuento, 5);
    EXPECT_EQ(r.formaPago, QStringLiteral("EFVO"));
    EXPECT_EQ(r.cupon, QStringLiteral("0042"));
}

} // namespace
} // namespace orv
