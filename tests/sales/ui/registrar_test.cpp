// "Registrar" en el panel "Vender", con teclado y mouse: el orden de las negativas (fecha
// cerrada primero), la pregunta, el comprobante que queda y sale por la salida de informes, y una
// falla que no pierde el borrador.

#include "apoyo/pantalla_prueba.h"
#include "panel_prueba.h"
#include "reports/ui/salida_informes.h"
#include "reports/ui/visor_informe.h"
#include "sales/cliente_venta.h"

#include <QFile>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>

namespace orv {
namespace {

using prueba::respondeCaja;

// Responde las próximas `cuantas` cajas: "Sí" a la pregunta de registrar, "Aceptar" a las demás, y
// anota el texto de cada una.
std::shared_ptr<QStringList> respondeTodas(int cuantas) {
    auto vistas = std::make_shared<QStringList>();
    auto* reloj = new QTimer;
    reloj->setInterval(5);
    auto vueltas = std::make_shared<int>(0);
    QObject::connect(reloj, &QTimer::timeout, [vistas, reloj, vueltas, cuantas] {
        if (++*vueltas > 2000 || vistas->size() >= cuantas) {
            reloj->stop();
            reloj->deleteLater();
            return;
        }
        QMessageBox* caja = prueba::cajaVisible();
        if (!caja) return;
        vistas->append(caja->text());
        prueba::pulsa(caja, caja->text().startsWith(QStringLiteral("Registra e Imprime")) ? QStringLiteral("Sí")
                                                                                          : QStringLiteral("Aceptar"));
    });
    reloj->start();
    return vistas;
}

class Registrar : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, PrecioVenta, StockActual) VALUES ('0101', 'Yerba 1 kg', 100, 5)"));
        a().ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, Cuit, idTipoIva) VALUES (7, 'Kiosco O''Hara', '20-12345678-6', 1)"));
        salida_ = std::make_unique<SalidaInformes>(a(), *conf_, estado_, reloj_, nullptr);
        salida_->fijaDestino(QStringLiteral("2 - A un archivo"), QStringLiteral("1"));
        salida_->eligeArchivo = [this](const QString&) { return pdf(); };
        panel_ = prueba::AbrePanelVenta(a(), estado_, *conf_);
        panel_->fijaSalida(salida_.get());
        panel_->fijaReloj(&reloj_);
    }
    QString pdf() const { return base_->carpeta() + QStringLiteral("/comprobante.pdf"); }
    QLineEdit* campo(const char* n) { return panel_->findChild<QLineEdit*>(QString::fromLatin1(n)); }
    void escanea(const QString& codigo) { prueba::Teclea(*panel_, "Text7", codigo); }
    void cliente(const QString& numero) { prueba::Teclea(*panel_, "Text8", numero); }
    // Comprobantes, borrador y correlativo de la FACTURA B.
    QStringList almacenado() {
        return prueba::Filas(a(), QStringLiteral("SELECT (SELECT count(*) FROM Comprobantes), (SELECT count(*) FROM TmpFac), "
                                                 "(SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = 1)"));
    }
    void f9() {
        QApplication::setActiveWindow(panel_.get());
        QTest::keyClick(panel_.get(), Qt::Key_F9);
    }

    std::unique_ptr<SalidaInformes> salida_;
    std::unique_ptr<PanelVenta> panel_;
};

TEST_F(Registrar, LasNegativasEnSuOrdenYNadaEscrito) {
    // Fecha cerrada: antes que todo, aun sin cliente.
    a().ejecuta(QStringLiteral("INSERT INTO CorteCaja (Fecha) VALUES (?)"), {QDate(2026, 11, 23)});
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    f9();
    EXPECT_EQ(caja->texto, QStringLiteral("Error, fecha cerrada para ingresar movimientos!"));
    a().ejecuta(QStringLiteral("DELETE FROM CorteCaja"));

    // Sin cliente, con el cursor en el cliente.
    escanea(QStringLiteral("0101"));
    caja = respondeCaja(QStringLiteral("Aceptar"));
    panel_->findChild<QPushButton*>(QStringLiteral("Command16"))->click();
    EXPECT_EQ(std::make_pair(caja->titulo, caja->texto), std::make_pair(QStringLiteral("Error"), QStringLiteral("Seleccione Cliente!")));
    EXPECT_EQ(panel_->focusWidget(), campo("Text8"));

    // La pregunta, con el tipo; No no hace nada.
    cliente(QStringLiteral("7"));
    caja = respondeCaja(QStringLiteral("No"));
    f9();
    EXPECT_EQ(caja->texto, QStringLiteral("Registra e Imprime :FACTURA B ??"));
    EXPECT_EQ(almacenado(), QStringList{"0|1|0"});

    // Sin líneas, después de la pregunta.
    a().ejecuta(QStringLiteral("DELETE FROM TmpFac"));
    auto cajas = respondeTodas(2);
    f9();
    EXPECT_EQ(*cajas, QStringList({"Registra e Imprime :FACTURA B ??", "No hay articulos a facturar!"}));
    EXPECT_EQ(almacenado(), QStringList{"0|0|0"});
}

TEST_F(Registrar, RegistraImprimePorLaSalidaVigenteYEmpiezaOtraVenta) {
    QSignalSpy registrado(panel_.get(), &PanelVenta::comprobanteRegistrado);
    escanea(QStringLiteral("0101"));
    escanea(QStringLiteral("0101"));
    cliente(QStringLiteral("7"));
    campo("txSuPago")->setText(QStringLiteral("500"));
    auto cajas = respondeTodas(1);
    f9();
    EXPECT_EQ(cajas->size(), 1);
    ASSERT_EQ(registrado.count(), 1);
    // Lo que el panel pasa al registro (el resto de las filas lo mira la prueba del registro).
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT Factura, idVendedor, Nombre, Cuit, FormaPago, SuPago, Total, idUsuario, "
                                                 "(SELECT StockActual FROM Articulos) FROM Comprobantes WHERE idComprobante = ?"),
                            {registrado.at(0).at(0)}),
              QStringList{"B0001-00000001|7|Kiosco O'Hara|20-12345678-6|EFVO|500|200|1|3"});
    EXPECT_EQ(a().valor(QStringLiteral("SELECT count(*) FROM Caja")).toInt(), 1);
    // Salió por la salida vigente (aquí, a un archivo) con su plantilla.
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {pdf(), QStringLiteral("-")});
    p.waitForFinished(30000);
    const QString t = QString::fromUtf8(p.readAllStandardOutput());
    EXPECT_TRUE(t.contains(QStringLiteral("0001-00000001")) && t.contains(QStringLiteral("Kiosco O'Hara"))) << t.toStdString();
    // Venta nueva: borrador vacío, sin cliente, y el próximo número a la vista.
    EXPECT_EQ(almacenado(), QStringList{"1|0|1"});
    EXPECT_EQ(prueba::Textos(*panel_, {"Text8", "lblProx"}), QStringList({"", "B 0001-00000002"}));
    EXPECT_FALSE(panel_->idCliente());
}

// La caja que nunca toca el mouse: con cliente predeterminado, cada venta empieza con él y el
// cursor en el código; otro número lo cambia sólo para esa venta. Escanear y F9: el comprobante se
// ve en una ventana casi del alto de la pantalla, Esc la cierra y la próxima venta ya está lista
// para escanear, con el predeterminado.
TEST_F(Registrar, SoloConElTecladoDelEscaneoALaVentaSiguiente) {
    a().ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, idTipoIva) VALUES (12345, 'Bruno', 1)"));
    FijaClientePredeterminado(a(), *conf_, QStringLiteral("7"));
    SalidaInformes aLaVentana(a(), *conf_, estado_, reloj_, panel_.get());
    aLaVentana.fijaDestino(QStringLiteral("0 - A una ventana"), QStringLiteral("1"));
    panel_->fijaSalida(&aLaVentana);
    panel_->reseteaFactura();
    EXPECT_EQ(prueba::Textos(*panel_, {"Text8", "lblCli"}), QStringList({"7", "Kiosco O'Hara"}));
    EXPECT_TRUE(campo("Text7")->hasFocus());
    campo("Text8")->clear();
    cliente(QStringLiteral("12345"));
    escanea(QStringLiteral("0101"));
    auto cajas = respondeTodas(1);
    f9();
    ASSERT_EQ(cajas->size(), 1); // sólo la pregunta de registrar
    EXPECT_TRUE(cajas->at(0).startsWith(QStringLiteral("Registra e Imprime :FACTURA B")));
    EXPECT_EQ(a().valor(QStringLiteral("SELECT Nombre FROM Comprobantes")).toString(), QStringLiteral("Bruno"));
    QPointer<VisorInforme> visor = aLaVentana.ultimoVisor();
    ASSERT_TRUE(visor);
    EXPECT_GE(visor->height(), visor->screen()->availableGeometry().height() * 9 / 10);
    QApplication::setActiveWindow(visor);
    QTest::keyClick(visor, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return visor.isNull(); }, 2000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return campo("Text7")->hasFocus(); }, 2000));
    EXPECT_EQ(std::make_pair(panel_->idCliente(), estado_.NombreClienteActual), std::make_pair(std::optional<qint64>(7), QStringLiteral("Kiosco O'Hara")));
    panel_->fijaSalida(salida_.get());
}

TEST_F(Registrar, UnaFallaLoDiceUnaVezYGuardaElBorradorYElNumero) {
    a().ejecuta(QStringLiteral("DROP TABLE Caja")); // la última escritura del registro falla en el motor
    escanea(QStringLiteral("0101"));
    cliente(QStringLiteral("7"));
    auto cajas = respondeTodas(2);
    f9();
    ASSERT_EQ(cajas->size(), 2);
    EXPECT_TRUE(cajas->at(1).startsWith(QStringLiteral("No se registró el comprobante: "))) << cajas->at(1).toStdString();
    EXPECT_TRUE(cajas->at(1).endsWith(QStringLiteral("El borrador queda como estaba.")));
    EXPECT_EQ(almacenado(), QStringList{"0|1|0"});
    EXPECT_EQ(panel_->idCliente(), 7);
    EXPECT_FALSE(QFile::exists(pdf()));
}

} // namespace
} // namespace orv
