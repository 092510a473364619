// Borrado y reimpresión de comprobantes registrados, desde sus pantallas.

#include "apoyo/pantalla_prueba.h"
#include "panel_prueba.h"
#include "reports/ui/salida_informes.h"
#include "sales/registro.h"
#include "sales/ui/pan_comprobantes.h"
#include "widgets/grilla.h"
#include "store/formato.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QFile>
#include <QProcess>
#include <QPushButton>

namespace orv {
namespace {

using prueba::respondeCaja;

const QDate kHoy(2026, 11, 23);

class ComprobantesRegistrados : public prueba::PantallaDePrueba {
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
    EXPECT_EQ(a().valor(QStringLiteral("SELECT count(*) FROM Comprobantes WHERE idComprobante = ?"), {hoy1_}).toInt(), 0);
    // Vuelve al primer comprobante de hoy que queda.
    EXPECT_EQ(actual(p.grilla()), hoy2_);

    // Sin comprobantes, Eliminar no pregunta nada.
    a().ejecuta(QStringLiteral("DELETE FROM Comprobantes"));
    p.grilla()->refresca();
    const prueba::VigiaDeCajas vigia;
    eliminar->click();
    QTest::qWait(50);
    EXPECT_EQ(vigia.vistas, 0);
}

TEST_F(ComprobantesRegistrados, ReimpresionPorFechaConPlantillaYMarcaFiscal) {
    const EstadoAplicacion estado;
    const RelojFijo reloj(QDateTime(kHoy, QTime(9, 0)));
    SalidaInformes salida(a(), *conf_, estado, reloj, nullptr);
    const QString pdf = base_->carpeta() + QStringLiteral("/re.pdf");
    salida.fijaDestino(QStringLiteral("2 - A un archivo"), QStringLiteral("1"));
    salida.eligeArchivo = [&](const QString&) { return pdf; };
    PanReImpresion p(a(), salida, kHoy);
    p.show();
    EXPECT_EQ(std::make_pair(p.findChild<QDateEdit*>(QStringLiteral("dt1"))->date(), p.grilla()->modelo().rowCount()), std::make_pair(kHoy, 2));
    p.findChild<QDateEdit*>(QStringLiteral("dt1"))->setDate(kHoy.addDays(-1));
    ASSERT_EQ(p.grilla()->modelo().rowCount(), 1);
    p.grilla()->irAFila(0);
    p.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    QProcess t;
    t.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    t.waitForFinished(30000);
    EXPECT_TRUE(QString::fromUtf8(t.readAllStandardOutput()).contains(QStringLiteral("0001-00000001")));

    // Con "Emite en Impresor Fiscal ?" sólo marca el comprobante como pendiente.
    QFile::remove(pdf);
    p.findChild<QCheckBox*>(QStringLiteral("optFiscal"))->setChecked(true);
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    p.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    EXPECT_EQ(std::make_pair(caja->titulo, caja->texto), std::make_pair(QStringLiteral("Ok"), QStringLiteral("Enviando a la impresora fiscal ... ")));
    EXPECT_EQ(a().valor(QStringLiteral("SELECT ImpresoFiscal FROM Comprobantes WHERE idComprobante = ?"), {ayer_}).toString(),
              QStringLiteral("N"));
    EXPECT_FALSE(QFile::exists(pdf));
}

TEST_F(ComprobantesRegistrados, ElDetalleMuestraLasLineasDeUnSoloComprobante) {
    const qint64 id = registra(kHoy, {1, 4});
    PanDetComprobante p(a(), id);
    EXPECT_EQ(p.windowTitle(), QStringLiteral("Detalle de un Comprobante"));
    ASSERT_EQ(p.grilla()->modelo().rowCount(), 2);
    p.grilla()->irAFila(1);
    EXPECT_EQ(Dinero::desdeVariant(p.grilla()->filaActual()->value(QStringLiteral("SubTotal"))), Dinero(400));
    // Número, fecha (en la forma de siempre, también en SQLite) y cliente, una sola vez arriba.
    const QString cabecera = p.findChild<QLabel*>(QStringLiteral("lblComprobante"))->text();
    EXPECT_TRUE(cabecera.contains(FechaTexto(kHoy))) << qPrintable(cabecera);
}

TEST_F(ComprobantesRegistrados, LaPlantillaDeReimpresionCaeEnLaDeSiempre) {
    const QString carpeta = base_->carpeta();
    const auto con = [&](const QVariant& plantilla) {
        a().ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET NombrePlantilla = ?"), {plantilla});
        return PlantillaDeReimpresion(a(), hoy1_, carpeta);
    };
    EXPECT_EQ(PlantillaDeReimpresion(a(), hoy1_, carpeta), QStringLiteral("factura.rpt"));
    EXPECT_EQ(con(QStringLiteral("factura_discrimina_iva.rpt")), QStringLiteral("factura_discrimina_iva.rpt"));
    for (const char* otra : {"/no/esta/mas.rpt", "IMPRESORA FISCAL : HASAR|PUERTO : 1", "IMPRESORA TICKETS PUERTO : COM1"})
        EXPECT_EQ(con(QString::fromLatin1(otra)), QStringLiteral("factura_discrimina_iva.rpt")) << otra;
    EXPECT_TRUE(con(QVariant()).isEmpty());
}

} // namespace
} // namespace orv
