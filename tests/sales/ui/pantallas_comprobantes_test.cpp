// Pantallas de tipos de comprobante y "Mas Datos...": controles, textos y lo que graban; y el
// borrado y la reimpresión de comprobantes registrados.

#include "panel_prueba.h"
#include "reports/ui/salida_informes.h"
#include "sales/registro.h"
#include "sales/tipos_comprobante.h"
#include "sales/ui/pan_comprobantes.h"
#include "sales/ui/pan_conf_fiscal.h"
#include "sales/ui/pan_corr_num.h"
#include "sales/ui/pan_fpago.h"
#include "sales/ui/pan_nue_tipo_comproba.h"
#include "sales/ui/pan_pre_fact.h"
#include "store/formato.h"
#include "store/rutinas.h"
#include "widgets/grilla.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

namespace orv {
namespace {

using prueba::hijo;
using prueba::respondeCaja;

class PantallasComprobantes : public prueba::PantallaDePrueba {
protected:
    // Pulsa el botón de un diálogo que responde con una caja: el texto de la caja.
    static QString cajaAlPulsar(const QWidget& w, const char* boton) {
        auto caja = respondeCaja(QStringLiteral("Aceptar"));
        QTest::mouseClick(hijo<QPushButton>(w, boton), Qt::LeftButton);
        return caja->texto;
    }
};

TEST_F(PantallasComprobantes, NuevoTipoValidaExplicaYEligePlantilla) {
    PanNueTipoComproba d(a(), *conf_, std::nullopt);
    d.show();
    auto* stock = hijo<QCheckBox>(d, "chkStock");
    EXPECT_EQ(stock->text(), QStringLiteral("Descuenta cantidades del stock ?"));
    hijo<QCheckBox>(d, "chkInversa")->click();
    EXPECT_EQ(stock->text(), QStringLiteral("Aumenta cantidades del stock ?"));
    // Sin plantilla no se acepta y el diálogo sigue abierto (lo demás que se rechaza lo prueba la
    // lógica); un archivo que no está se rechaza; uno que está queda con su ruta.
    hijo<QLineEdit>(d, "txTipo")->setText(QStringLiteral("REMITO 'R'"));
    hijo<QComboBox>(d, "cbLetra")->setEditText(QStringLiteral("R"));
    hijo<QComboBox>(d, "cbPtoVta")->setEditText(QStringLiteral("0002"));
    EXPECT_EQ(cajaAlPulsar(d, "Command1"), QStringLiteral("Error, ingrese la información correctamente!"));
    EXPECT_TRUE(d.isVisible());
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    d.eligePlantilla(base_->carpeta() + QStringLiteral("/no-esta.rpt"));
    EXPECT_EQ(std::make_pair(caja->texto, hijo<QLabel>(d, "lblPlantilla")->text()),
              std::make_pair(QStringLiteral("Seleccione un archivo válido!"), kSinPlantilla));
    const QString ruta = base_->carpeta() + QStringLiteral("/remito.rpt");
    ASSERT_TRUE(QFile(ruta).open(QIODevice::WriteOnly));
    d.eligePlantilla(ruta);
    EXPECT_EQ(hijo<QLabel>(d, "lblPlantilla")->text(), ruta);
    hijo<QLineEdit>(d, "txCorrelativo")->setText(QStringLiteral("100"));
    QTest::mouseClick(hijo<QPushButton>(d, "Command1"), Qt::LeftButton);
    EXPECT_EQ(d.result(), QDialog::Accepted);
    const TipoComprobante t = d.datos();
    EXPECT_EQ(std::make_tuple(t.tipo, t.letra, t.puntoDeVenta, t.correlativo, t.operacionInversa, t.descuentaStock, t.plantilla),
              std::make_tuple(QStringLiteral("REMITO 'R'"), QStringLiteral("R"), QStringLiteral("0002"), QStringLiteral("100"), true,
                              false, ruta));
}

TEST_F(PantallasComprobantes, ImpresoraFiscalAbreConLoGuardadoYEscribeLaPlantilla) {
    PanConfFiscal f(QStringLiteral("IMPRESORA FISCAL : EPSON 200 80 COL|PUERTO : 2"), QStringLiteral("49"));
    EXPECT_TRUE(hijo<QRadioButton>(f, "optEpson200")->isChecked());
    EXPECT_FALSE(hijo<QListWidget>(f, "listhasar")->isEnabled());
    EXPECT_EQ(prueba::Textos(f, {"txPuerto", "cboModComprobante"}), QStringList({"2", "49 - Factura B"}));

    PanConfFiscal g(kSinPlantilla, QString());
    g.show();
    EXPECT_TRUE(hijo<QRadioButton>(g, "optHasar")->isChecked());
    EXPECT_EQ(cajaAlPulsar(g, "Command1"), QStringLiteral("Error, seleccione un modelo!"));
    hijo<QListWidget>(g, "listhasar")->setCurrentRow(2);
    hijo<QComboBox>(g, "cboModComprobante")->setCurrentIndex(8);
    EXPECT_EQ(hijo<QLabel>(g, "Label3")->text(), QStringLiteral("HASAR O COMPAT. 615 - PL8F"));
    QTest::mouseClick(hijo<QPushButton>(g, "Command1"), Qt::LeftButton);
    EXPECT_EQ(g.result(), QDialog::Accepted);
    // Sin puerto la plantilla termina en "|PUERTO : ".
    EXPECT_EQ(std::make_pair(g.plantilla(), g.modDocumento()),
              std::make_pair(QStringLiteral("IMPRESORA FISCAL : HASAR O COMPAT. 615 - PL8F|PUERTO : "), QStringLiteral("120")));
}

TEST_F(PantallasComprobantes, ComprobantesYNumeracionEditaBorraYPredetermina) {
    conf_->graba(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado"), QStringLiteral("1"));
    const qint64 presupuesto = a().inserta(QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, NombrePlantilla) "
                                                          "VALUES ('PRESUPUESTO', 'X', '0001', '')"), {}, QStringLiteral("idTipoComprobante"));
    PanCorrNum p(a(), *conf_);
    p.show();
    // "Editar..." sin fila avisa.
    p.grilla()->fijaConsulta(QStringLiteral("SELECT idTipoComprobante, Tipo FROM TiposDeComprobantes WHERE 1 = 0 ORDER BY idTipoComprobante"));
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    p.editar();
    EXPECT_EQ(caja->texto, QStringLiteral("Seleccione un tipo de comprobante previamente!"));
    p.grilla()->fijaConsulta(QStringLiteral("SELECT idTipoComprobante, Tipo, Letra, PuntoDeVenta, Correlativo "
                                            "FROM TiposDeComprobantes ORDER BY idTipoComprobante"));
    ASSERT_TRUE(p.grilla()->irAFila(0));
    EXPECT_EQ(hijo<QLineEdit>(p, "txTipo")->text(), QStringLiteral("FACTURA B"));

    // Editar: se cambian el correlativo y la plantilla.
    prueba::alAbrirse<PanNueTipoComproba>([](PanNueTipoComproba* d) {
        d->findChild<QLineEdit*>(QStringLiteral("txCorrelativo"))->setText(QStringLiteral("41"));
        d->findChild<QLabel*>(QStringLiteral("lblPlantilla"))->setText(PlantillaTickets(QStringLiteral("COM1")));
        d->findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    });
    p.editar();
    EXPECT_EQ(std::make_pair(ProximoNumeroMostrado(a(), 1), LeeTipo(a(), 1)->plantilla),
              std::make_pair(QStringLiteral("B 0001-00000042"), QStringLiteral("IMPRESORA TICKETS PUERTO : COM1")));

    // Predeterminar: abre con el vigente; sin elegir avisa.
    {
        PanPreFact d(a(), *conf_);
        d.show();
        auto* combo = hijo<QComboBox>(d, "Combo1");
        EXPECT_EQ(combo->currentIndex(), 0);
        combo->setCurrentIndex(-1);
        EXPECT_EQ(cajaAlPulsar(d, "Command1"), QStringLiteral("Seleccione un tipo de comprobante!"));
        EXPECT_NE(d.result(), QDialog::Accepted);
        combo->setCurrentIndex(1);
        hijo<QCheckBox>(d, "chkUEm")->setChecked(true);
        QTest::mouseClick(hijo<QPushButton>(d, "Command1"), Qt::LeftButton);
        EXPECT_EQ(d.result(), QDialog::Accepted);
    }
    EXPECT_EQ(QStringList({conf_->lee(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado")),
                           conf_->lee(clave::miscelaneas, QStringLiteral("UltimoComprobantePredeterminado"))}),
              QStringList({QString::number(presupuesto), "1"}));

    // Borrar pregunta con su título.
    const qint64 antes = CuentaRegistros(a(), QStringLiteral("TiposDeComprobantes"));
    ASSERT_TRUE(p.grilla()->irAFila(0));
    auto pregunta = respondeCaja(QStringLiteral("Sí"));
    p.borrar();
    EXPECT_EQ(std::make_pair(pregunta->titulo, pregunta->texto),
              std::make_pair(QStringLiteral("Atención !!"), QStringLiteral("Está seguro de eliminar este esquema de comprobantes?")));
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
    auto* forma = hijo<QComboBox>(p, "Combo1");
    auto* aCuenta = hijo<QCheckBox>(p, "Check1");
    auto* cupon = hijo<QLineEdit>(p, "txCupon");
    EXPECT_FALSE(cupon->isVisible());
    // Lo que se ve: la forma, si es a cuenta, si la lista se puede cambiar, si se ve el cupón.
    const auto estado = [&] { return std::make_tuple(forma->currentText(), aCuenta->isChecked(), forma->isEnabled(), cupon->isVisible()); };
    const auto elige = [&](const char* f) {
        forma->setCurrentIndex(forma->findText(QString::fromLatin1(f)));
        p.formaElegida();
    };
    // Una forma a cuenta hace lo mismo que tildar "A cuenta...": CTA CTE y la lista quieta.
    elige("CTA CTE");
    EXPECT_EQ(estado(), std::make_tuple(QStringLiteral("CTA CTE"), true, false, false));
    elige("TARJETA");
    EXPECT_EQ(estado(), std::make_tuple(QStringLiteral("TARJETA"), false, true, true));
    // "A cuenta..." elige CTA CTE y bloquea la lista; al destildar, EFVO. El cupón sólo lo muestra o
    // lo tapa elegir en la lista.
    aCuenta->click();
    EXPECT_EQ(estado(), std::make_tuple(QStringLiteral("CTA CTE"), true, false, true));
    aCuenta->click();
    EXPECT_EQ(estado(), std::make_tuple(QStringLiteral("EFVO"), false, true, true));
    // Un descuento que no es número, o con coma decimal (ambiguo: nunca se toma por 1), se rechaza.
    for (const auto& [escrito, aviso] : {std::pair{"diez", "Datos mal ingresados !"},
                                         std::pair{"1,5", "Descuento: el número está mal escrito. Use el punto para los decimales (1234.50)."}}) {
        hijo<QLineEdit>(p, "Text2")->setText(QString::fromUtf8(escrito));
        EXPECT_EQ(cajaAlPulsar(p, "Command1"), QString::fromUtf8(aviso));
        EXPECT_NE(p.result(), QDialog::Accepted) << escrito;
    }
    hijo<QLineEdit>(p, "Text2")->setText(QStringLiteral("5"));
    cupon->setText(QStringLiteral("0042"));
    QTest::mouseClick(hijo<QPushButton>(p, "Command1"), Qt::LeftButton);
    EXPECT_EQ(p.result(), QDialog::Accepted);
    const DatosFPago r = p.datos();
    EXPECT_EQ(std::make_tuple(r.descuento, r.formaPago, r.cupon), std::make_tuple(5.0, QStringLiteral("EFVO"), QStringLiteral("0042")));
}

const QDate kHoy(2026, 11, 23);

class ComprobantesRegistrados : public PantallasComprobantes {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, StockActual) VALUES ('A1', 'Yerba', 10)"));
        ayer_ = registra(kHoy.addDays(-1), {1});
        hoy1_ = registra(kHoy, {2});
        hoy2_ = registra(kHoy, {3});
    }
    // Una FACTURA B (stock y caja) con una línea de yerba por cantidad, a 100.
    qint64 registra(const QDate& dia, std::initializer_list<int> cantidades) {
        for (int c : cantidades)
            a().ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                       "VALUES (1, 'A1', 'Yerba', ?, 100, ?, 1)"),
                        {c, c * 100});
        DatosRegistro d;
        d.idRed = 1;
        d.idUsuario = 1;
        d.idTipoComprobante = 1;
        d.hoy = dia;
        return RegistraComprobante(a(), d, Ruta::Plantilla).idComprobante;
    }
    // Los comprobantes que quedan, las cajas y el stock.
    QStringList almacenado() {
        return prueba::Filas(a(), QStringLiteral("SELECT (SELECT count(*) FROM Comprobantes), (SELECT count(*) FROM Caja), "
                                                 "(SELECT StockActual FROM Articulos)"));
    }
    static qint64 actual(const Grilla* g) { return g->filaActual() ? g->filaActual()->value(QStringLiteral("idComprobante")).toLongLong() : 0; }

    qint64 ayer_ = 0, hoy1_ = 0, hoy2_ = 0;
};

TEST_F(ComprobantesRegistrados, ElBorradoAbreEnElDiaPreguntaYDeshace) {
    PanBorraFactura p(a(), kHoy);
    p.show();
    EXPECT_EQ(actual(p.grilla()), hoy1_);
    auto* eliminar = p.findChild<QPushButton*>(QStringLiteral("Command29"));
    auto caja = respondeCaja(QStringLiteral("No"));
    eliminar->click();
    EXPECT_EQ(caja->texto, QStringLiteral("Borra todo movimiento asociando a esta factura? ??"));
    EXPECT_EQ(almacenado(), QStringList{"3|3|4"});
    caja = respondeCaja(QStringLiteral("Sí"));
    eliminar->click();
    EXPECT_TRUE(caja->vista);
    EXPECT_EQ(almacenado(), QStringList{"2|2|6"});
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT idComprobante FROM Comprobantes ORDER BY idComprobante")),
              QStringList({QString::number(ayer_), QString::number(hoy2_)}));
    // Vuelve al primer comprobante de hoy que queda.
    EXPECT_EQ(actual(p.grilla()), hoy2_);

    // Sin comprobantes, Eliminar no pregunta nada.
    a().ejecuta(QStringLiteral("DELETE FROM Comprobantes"));
    p.grilla()->refresca();
    prueba::VigiaDeCajas vigia;
    eliminar->click();
    QTest::qWait(50);
    EXPECT_EQ(vigia.vistas, QStringList());
}

// La reimpresión por fecha sale con la plantilla del tipo (si ya no sirve, con la última que
// sirvió), o sólo se marca pendiente para la impresora fiscal.
TEST_F(ComprobantesRegistrados, ReimpresionPorFechaConPlantillaYMarcaFiscal) {
    const QString pdf = base_->carpeta() + QStringLiteral("/re.pdf");
    salida_->fijaDestino(QStringLiteral("2 - A un archivo"), QStringLiteral("1"));
    salida_->eligeArchivo = [&](const QString&) { return pdf; };
    PanReImpresion p(a(), *salida_, kHoy);
    p.show();
    EXPECT_EQ(std::make_pair(p.findChild<QDateEdit*>(QStringLiteral("dt1"))->date(), p.grilla()->modelo().rowCount()), std::make_pair(kHoy, 2));
    p.findChild<QDateEdit*>(QStringLiteral("dt1"))->setDate(kHoy.addDays(-1));
    ASSERT_EQ(p.grilla()->modelo().rowCount(), 1);
    p.grilla()->irAFila(0);
    EXPECT_EQ(PlantillaDeReimpresion(a(), ayer_, base_->carpeta()), QStringLiteral("factura.rpt"));
    p.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    EXPECT_TRUE(prueba::TextoDelPdf(pdf).contains(QStringLiteral("0001-00000001")));

    // Con "Emite en Impresor Fiscal ?" sólo marca el comprobante como pendiente.
    QFile::remove(pdf);
    p.findChild<QCheckBox*>(QStringLiteral("optFiscal"))->setChecked(true);
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    p.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    EXPECT_EQ(std::make_pair(caja->titulo, caja->texto), std::make_pair(QStringLiteral("Ok"), QStringLiteral("Enviando a la impresora fiscal ... ")));
    EXPECT_EQ(a().valor(QStringLiteral("SELECT ImpresoFiscal FROM Comprobantes WHERE idComprobante = ?"), {ayer_}).toString(),
              QStringLiteral("N"));
    EXPECT_FALSE(QFile::exists(pdf));

    const auto con = [&](const QVariant& plantilla) {
        a().ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET NombrePlantilla = ?"), {plantilla});
        return PlantillaDeReimpresion(a(), hoy1_, base_->carpeta());
    };
    EXPECT_EQ(con(QStringLiteral("factura_discrimina_iva.rpt")), QStringLiteral("factura_discrimina_iva.rpt"));
    for (const char* otra : {"/no/esta/mas.rpt", "IMPRESORA FISCAL : HASAR|PUERTO : 1", "IMPRESORA TICKETS PUERTO : COM1"})
        EXPECT_EQ(con(QString::fromLatin1(otra)), QStringLiteral("factura_discrimina_iva.rpt")) << otra;
    EXPECT_TRUE(con(QVariant()).isEmpty());
}

TEST_F(ComprobantesRegistrados, ElDetalleMuestraLasLineasDeUnSoloComprobante) {
    const qint64 id = registra(kHoy, {1, 4});
    PanDetComprobante p(a(), id);
    ASSERT_EQ(p.grilla()->modelo().rowCount(), 2);
    p.grilla()->irAFila(1);
    EXPECT_EQ(Dinero::desdeVariant(p.grilla()->filaActual()->value(QStringLiteral("SubTotal"))), Dinero(400));
    // Número, fecha (en la forma de siempre, también en SQLite) y cliente, una sola vez arriba.
    const QString cabecera = p.findChild<QLabel*>(QStringLiteral("lblComprobante"))->text();
    EXPECT_TRUE(cabecera.contains(FechaTexto(kHoy))) << qPrintable(cabecera);
}

} // namespace
} // namespace orv
