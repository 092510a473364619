// Módulo de envíos: la configuración del correo y el envío de la página HTML a un servidor SMTP real.

#include "apoyo/pantalla_prueba.h"
#include "apoyo/servidor_smtp.h"
#include "reports/correo.h"
#include "reports/ui/pan_mensajeria.h"
#include "store/actualizacion.h"
#include "../../ui/caja_modal.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace orv {
namespace {

using prueba::respondeCaja;

class Mensajeria : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, PrecioFinal) VALUES ('A1', 'Yerba <1 kg>', 10)"));
        const qint64 c = a().inserta(QStringLiteral("INSERT INTO Comprobantes (Factura, Fecha, Nombre, Total) VALUES ('B0001-00000007', ?, 'Ana', 10)"),
                                     {QDate(2026, 11, 10)}, QStringLiteral("idComprobante"));
        a().ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, SubTotal) VALUES (?, 1, 1, 10)"), {c});
        const qint64 fuera = a().inserta(QStringLiteral("INSERT INTO Comprobantes (Factura, Fecha, Nombre, Total) VALUES ('B0001-00000099', ?, 'Luis', 10)"),
                                         {QDate(2026, 12, 10)}, QStringLiteral("idComprobante"));
        a().ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, SubTotal) VALUES (?, 1, 1, 10)"), {fuera});
    }
    void configura(const QString& servidor) {
        DatosCorreo d;
        d.destino = QStringLiteral("central@almacen.com.ar");
        d.destinoNombre = QStringLiteral("Casa Central");
        d.de = QStringLiteral("sucursal@almacen.com.ar");
        d.deNombre = QStringLiteral("Sucursal Norte");
        d.smtp = servidor;
        d.tituloMensaje = QStringLiteral("Novedades de la sucursal");
        GrabaDatosCorreo(*conf_, d, false);
    }
};

TEST_F(Mensajeria, EnviaLasSeccionesElegidasDelPeriodoAUnServidorReal) {
    ServidorSmtp s;
    ASSERT_TRUE(s.listo());
    configura(s.servidor());
    PanMensajeria p(a(), *conf_, reloj_);
    EXPECT_EQ(p.findChild<QDateEdit*>(QStringLiteral("DTPicker2"))->date(), QDate(2026, 11, 23));
    EXPECT_EQ(p.findChild<QDateEdit*>(QStringLiteral("DTPicker3"))->date(), QDate(2026, 11, 23));
    p.findChild<QDateEdit*>(QStringLiteral("DTPicker2"))->setDate(QDate(2026, 11, 1));
    p.findChild<QDateEdit*>(QStringLiteral("DTPicker3"))->setDate(QDate(2026, 11, 30));
    p.findChild<QCheckBox*>(QStringLiteral("Check1"))->setChecked(true);
    p.findChild<QCheckBox*>(QStringLiteral("Check2"))->setChecked(true);
    p.show();
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    p.findChild<QPushButton*>(QStringLiteral("BotConn"))->click();
    EXPECT_EQ(caja->texto, QStringLiteral("Información enviada a central@almacen.com.ar"));
    ASSERT_EQ(s.recibidos(), 1);
    const QJsonObject m = s.mensaje(1);
    EXPECT_EQ(m[QStringLiteral("encabezados")].toObject()[QStringLiteral("Subject")].toString(), QStringLiteral("Novedades de la sucursal"));
    EXPECT_EQ(m[QStringLiteral("encabezados")].toObject()[QStringLiteral("To")].toString(),
              QStringLiteral("Casa Central <central@almacen.com.ar>"));
    EXPECT_EQ(m[QStringLiteral("texto")].toString().trimmed(), QStringLiteral("Informacion de 01/11/2026 al 30/11/2026"));
    const QJsonArray adj = m[QStringLiteral("adjuntos")].toArray();
    ASSERT_EQ(adj.size(), 1);
    EXPECT_EQ(adj[0].toObject()[QStringLiteral("nombre")].toString(), QStringLiteral("envio.htm"));
    const QString html = QString::fromUtf8(QByteArray::fromBase64(adj[0].toObject()[QStringLiteral("contenido")].toString().toLatin1()));
    EXPECT_TRUE(html.contains(QStringLiteral("I n f o r m e : Lista de Precios / Stock al 23/11/2026")));
    EXPECT_TRUE(html.contains(QStringLiteral("I n f o r m e : Ventas al 23/11/2026")));
    EXPECT_FALSE(html.contains(QStringLiteral("Movimientos de Stock")));
    EXPECT_TRUE(html.contains(QStringLiteral("B0001-00000007")));
    EXPECT_FALSE(html.contains(QStringLiteral("B0001-00000099"))) << "fuera del período";
    EXPECT_TRUE(html.contains(QStringLiteral("Yerba &lt;1 kg&gt;")));
    EXPECT_TRUE(QFile::exists(p.archivoEnvio()));
    EXPECT_TRUE(p.archivoEnvio().startsWith(base_->carpeta()));

    // Sin ninguna sección el correo sale igual, con el adjunto vacío.
    for (int i = 1; i <= 4; ++i) p.findChild<QCheckBox*>(QStringLiteral("Check%1").arg(i))->setChecked(false);
    caja = respondeCaja(QStringLiteral("Aceptar"));
    p.findChild<QPushButton*>(QStringLiteral("BotConn"))->click();
    ASSERT_EQ(s.recibidos(), 2);
    const QJsonArray vacio = s.mensaje(2)[QStringLiteral("adjuntos")].toArray();
    ASSERT_EQ(vacio.size(), 1);
    EXPECT_TRUE(vacio[0].toObject()[QStringLiteral("contenido")].toString().isEmpty());
}

TEST_F(Mensajeria, SinDestinoPideVerificarYUnServidorCaidoSeDiceEnCastellano) {
    PanMensajeria p(a(), *conf_, reloj_);
    int envios = 0;
    const auto real = p.envia;
    p.envia = [&](const DatosCorreo& d, const QString& para, const QString& asunto, const QString& cuerpo,
                  const QString& nombre, const QString& adjunto) {
        ++envios;
        real(d, para, asunto, cuerpo, nombre, adjunto);
    };
    p.show();
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    p.findChild<QPushButton*>(QStringLiteral("BotConn"))->click();
    EXPECT_EQ(caja->texto, QStringLiteral("Verificar datos de configuración!"));
    EXPECT_EQ(caja->titulo, QStringLiteral("Error"));
    EXPECT_EQ(envios, 0);

    configura(QStringLiteral("127.0.0.1:1"));
    caja = respondeCaja(QStringLiteral("Aceptar"));
    p.findChild<QPushButton*>(QStringLiteral("BotConn"))->click();
    EXPECT_EQ(envios, 1);
    EXPECT_TRUE(caja->texto.startsWith(QStringLiteral("No se pudo enviar el correo a central@almacen.com.ar"))) << caja->texto.toStdString();
}

TEST_F(Mensajeria, ConectarYNotificaciones) {
    PanMensajeria p(a(), *conf_, reloj_);
    p.show();
    p.estaConectado = [] { return true; };
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    p.findChild<QPushButton*>(QStringLiteral("Command28"))->click();
    EXPECT_EQ(caja->texto, QStringLiteral("Ya está conectado a internet"));
    EXPECT_EQ(caja->titulo, QStringLiteral("Atención"));
    p.estaConectado = [] { return false; };
    caja = respondeCaja(QStringLiteral("Aceptar"));
    p.findChild<QPushButton*>(QStringLiteral("Command28"))->click();
    EXPECT_TRUE(caja->texto.startsWith(QStringLiteral("No hay conexión a internet")));
    caja = respondeCaja(QStringLiteral("Aceptar"));
    p.findChild<QPushButton*>(QStringLiteral("cmdNotificaciones"))->click();
    EXPECT_EQ(caja->texto, QStringLiteral("En construcción"));
}

TEST_F(Mensajeria, LaConfiguracionNuncaMuestraLaClaveYVaciaLaConserva) {
    DatosCorreo d;
    d.clave = QStringLiteral("secreta");
    GrabaDatosCorreo(*conf_, d, true);
    {
        PanConfInt c(*conf_);
        EXPECT_TRUE(c.findChild<QLineEdit*>(QStringLiteral("txAutPass"))->text().isEmpty());
        for (QLineEdit* e : c.findChildren<QLineEdit*>()) EXPECT_NE(e->text(), QStringLiteral("secreta"));
        c.findChild<QLineEdit*>(QStringLiteral("txEmailDestino"))->setText(QStringLiteral("central@almacen.com.ar"));
        c.findChild<QLineEdit*>(QStringLiteral("txEmailSMTP"))->setText(QStringLiteral("smtp.correo.com.ar:587"));
        c.findChild<QCheckBox*>(QStringLiteral("chkAut"))->setChecked(true);
        c.findChild<QLineEdit*>(QStringLiteral("txAutUser"))->setText(QStringLiteral("sucursal"));
        c.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    }
    EXPECT_EQ(conf_->lee(clave::configuracion, QStringLiteral("TieneAutenticacion")), QStringLiteral("SI"));
    EXPECT_EQ(conf_->lee(clave::configuracion, QStringLiteral("EmailSMTP")), QStringLiteral("smtp.correo.com.ar:587"));
    EXPECT_EQ(LeeDatosCorreo(*conf_).clave, QStringLiteral("secreta"));
    {
        PanConfInt c(*conf_);
        EXPECT_TRUE(c.findChild<QCheckBox*>(QStringLiteral("chkAut"))->isChecked());
        c.findChild<QCheckBox*>(QStringLiteral("chkAut"))->setChecked(false);
        c.findChild<QLineEdit*>(QStringLiteral("txAutPass"))->setText(QStringLiteral("otra"));
        c.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    }
    EXPECT_EQ(conf_->lee(clave::configuracion, QStringLiteral("TieneAutenticacion")), QStringLiteral("NO"));
    EXPECT_EQ(LeeDatosCorreo(*conf_).clave, QStringLiteral("otra"));
}

} // namespace
} // namespace orv
