// Borrado y reimpresión de comprobantes registrados, desde sus pantallas.

#include "apoyo/pantalla_prueba.h"
#include "apoyo/modal.h"
#include "reports/ui/salida_informes.h"
#include "sales/registro.h"
#include "sales/ui/pan_comprobantes.h"
#include "widgets/grilla.h"
#include "store/actualizacion.h"
#include "store/formato.h"
#include "../../ui/caja_modal.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QSqlRecord>
#include <QTimer>

namespace orv {
namespace {

using prueba::respondeCaja;

const QDate kHoy(2026, 11, 23);

class ComprobantesRegistrados : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, StockActual) VALUES ('A1', 'Yerba', 10)"));
        ayer_ = registra(kHoy.addDays(-1), 1);
        hoy1_ = registra(kHoy, 2);
        hoy2_ = registra(kHoy, 3);
    }
    qint64 registra(const QDate& dia, double cantidad) {
        a().ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                   "VALUES (1, 'A1', 'Yerba', ?, 100, ?, 1)"),
                    {cantidad, cantidad * 100});
        DatosRegistro d;
        d.idRed = 1;
        d.idUsuario = 1;
        d.idTipoComprobante = 1; // FACTURA B: stock y caja
        d.nombreCliente = QStringLiteral("Cons.Final");
        d.total = Dinero(qint64(cantidad * 100));
        d.hoy = dia;
        return RegistraComprobante(a(), d, Ruta::Plantilla).idComprobante;
    }
    double stock() { return a().valor(QStringLiteral("SELECT StockActual FROM Articulos WHERE Codigo = 'A1'")).toDouble(); }

    qint64 ayer_ = 0, hoy1_ = 0, hoy2_ = 0;
};

TEST_F(ComprobantesRegistrados, ElBorradoAbreEnElDiaPreguntaYDeshace) {
    EXPECT_DOUBLE_EQ(stock(), 4);
    PanBorraFactura p(a(), kHoy);
    p.show();
    ASSERT_TRUE(p.grilla()->filaActual().has_value());
    EXPECT_EQ(p.grilla()->filaActual()->value(QStringLiteral("idComprobante")).toLongLong(), hoy1_);

    auto caja = respondeCaja(QStringLiteral("No"));
    p.findChild<QPushButton*>(QStringLiteral("Command29"))->click();
    EXPECT_EQ(caja->texto, QStringLiteral("Borra todo movimiento asociando a esta factura? ??"));
    EXPECT_EQ(a().valor(QStringLiteral("SELECT count(*) FROM Comprobantes")).toInt(), 3);

    caja = respondeCaja(QStringLiteral("Sí"));
    p.findChild<QPushButton*>(QStringLiteral("Command29"))->click();
    EXPECT_TRUE(caja->vista);
    EXPECT_EQ(a().valor(QStringLiteral("SELECT count(*) FROM Comprobantes WHERE idComprobante = ?"), {hoy1_}).toInt(), 0);
    EXPECT_EQ(a().valor(QStringLiteral("SELECT count(*) FROM Caja WHERE idComprobante = ?"), {hoy1_}).toInt(), 0);
    EXPECT_DOUBLE_EQ(stock(), 6);
    // Vuelve al primer comprobante de hoy que queda.
    ASSERT_TRUE(p.grilla()->filaActual().has_value());
    EXPECT_EQ(p.grilla()->filaActual()->value(QStringLiteral("idComprobante")).toLongLong(), hoy2_);

    // Sin comprobantes, Eliminar no pregunta nada.
    a().ejecuta(QStringLiteral("DELETE FROM Comprobantes"));
    p.grilla()->refresca();
    bool pregunto = false;
    QTimer vigia; // cierra cualquier caja que aparezca; se apaga al salir de la prueba
    QObject::connect(&vigia, &QTimer::timeout, [&pregunto] {
        if (QMessageBox* m = prueba::cajaVisible()) {
            pregunto = true;
            m->reject();
        }
    });
    vigia.start(5);
    p.findChild<QPushButton*>(QStringLiteral("Command29"))->click();
    QTest::qWait(50);
    vigia.stop();
    EXPECT_FALSE(pregunto);
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
    EXPECT_EQ(p.findChild<QDateEdit*>(QStringLiteral("dt1"))->date(), kHoy);
    EXPECT_EQ(p.grilla()->modelo().rowCount(), 2);
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
    EXPECT_EQ(caja->texto, QStringLiteral("Enviando a la impresora fiscal ... "));
    EXPECT_EQ(caja->titulo, QStringLiteral("Ok"));
    EXPECT_EQ(a().valor(QStringLiteral("SELECT ImpresoFiscal FROM Comprobantes WHERE idComprobante = ?"), {ayer_}).toString(),
              QStringLiteral("N"));
    EXPECT_FALSE(QFile::exists(pdf));
}

TEST_F(ComprobantesRegistrados, ElDetalleMuestraLasLineasDeUnSoloComprobante) {
    a().ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                               "VALUES (1, 'A1', 'Yerba', 1, 100, 100, 1), (1, 'A1', 'Yerba suave', 4, 50, 200, 1)"));
    DatosRegistro d;
    d.idRed = 1;
    d.idTipoComprobante = 1;
    d.hoy = kHoy;
    const qint64 id = RegistraComprobante(a(), d, Ruta::Nada).idComprobante;
    PanDetComprobante p(a(), id);
    ASSERT_EQ(p.grilla()->modelo().rowCount(), 2);
    p.grilla()->irAFila(1);
    EXPECT_EQ(p.grilla()->filaActual()->value(QStringLiteral("Descripcion")).toString(), QStringLiteral("Yerba suave"));
    EXPECT_EQ(Dinero::desdeVariant(p.grilla()->filaActual()->value(QStringLiteral("SubTotal"))), Dinero(200));
    EXPECT_EQ(p.windowTitle(), QStringLiteral("Detalle de un Comprobante"));
    // Número, fecha (en la forma de siempre, también en SQLite) y cliente, una sola vez arriba.
    const QString cabecera = p.findChild<QLabel*>(QStringLiteral("lblComprobante"))->text();
    EXPECT_TRUE(cabecera.contains(FechaTexto(kHoy))) << qPrintable(cabecera);
}

TEST_F(ComprobantesRegistrados, LaPlantillaDeReimpresionCaeEnLaDeSiempre) {
    const QString carpeta = base_->carpeta();
    EXPECT_EQ(PlantillaDeReimpresion(a(), hoy1_, carpeta), QStringLiteral("factura.rpt"));
    a().ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET NombrePlantilla = 'factura_discrimina_iva.rpt'"));
    EXPECT_EQ(PlantillaDeReimpresion(a(), hoy1_, carpeta), QStringLiteral("factura_discrimina_iva.rpt"));
    for (const char* otra : {"/no/esta/mas.rpt", "IMPRESORA FISCAL : HASAR|PUERTO : 1", "IMPRESORA TICKETS PUERTO : COM1"}) {
        a().ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET NombrePlantilla = ?"), {QString::fromLatin1(otra)});
        EXPECT_EQ(PlantillaDeReimpresion(a(), hoy1_, carpeta), QStringLiteral("factura_discrimina_iva.rpt")) << otra;
    }
    a().ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET NombrePlantilla = NULL"));
    EXPECT_TRUE(PlantillaDeReimpresion(a(), hoy1_, carpeta).isEmpty());
}

} // namespace
} // namespace orv
