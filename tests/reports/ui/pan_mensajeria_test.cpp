// Módulo de envíos: la configuración del correo y el envío de la página HTML a un servidor SMTP real.

#include "../../ui/caja_modal.h"
#include "../apoyo_informes.h"
#include "apoyo/pantalla_prueba.h"
#include "apoyo/servidor_smtp.h"
#include "reports/correo.h"
#include "reports/ui/pan_mensajeria.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QJsonArray>
#include <QLineEdit>
#include <QPushButton>

namespace orv {
namespace {

using namespace prueba;

class Mensajeria : public PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, PrecioFinal) VALUES ('A1', 'Yerba <1 kg>', 10)"));
        for (const auto& [factura, fecha, nombre] : {std::tuple{"B0001-00000007", QDate(2026, 11, 10), "Ana"},
                                                     std::tuple{"B0001-00000099", QDate(2026, 12, 10), "Luis"}}) {
            const qint64 c = a().inserta(QStringLiteral("INSERT INTO Comprobantes (Factura, Fecha, Nombre, Total) VALUES (?, ?, ?, 10)"),
                                         {QString::fromLatin1(factura), fecha, QString::fromLatin1(nombre)},
                                         QStringLiteral("idComprobante"));
            a().ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, SubTotal) "
                                       "VALUES (?, 1, 1, 10)"),
                        {c});
        }
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
    // Pulsa "Conectar y enviar" y devuelve el texto de la caja que responde.
    static QString envia(PanMensajeria& p) {
        auto caja = respondeCaja(QStringLiteral("Aceptar"));
        p.findChild<QPushButton*>(QStringLiteral("BotConn"))->click();
        return caja->titulo + u'|' + caja->texto;
    }
};

TEST_F(Mensajeria, EnviaLasSeccionesElegidasDelPeriodoAUnServidorReal) {
    ServidorSmtp s;
    ASSERT_TRUE(s.listo());
    configura(s.servidor());
    PanMensajeria p(a(), *conf_, reloj_);
    auto* desde = p.findChild<QDateEdit*>(QStringLiteral("DTPicker2"));
    auto* hasta = p.findChild<QDateEdit*>(QStringLiteral("DTPicker3"));
    EXPECT_EQ(std::pair(desde->date(), hasta->date()), std::pair(QDate(2026, 11, 23), QDate(2026, 11, 23)));
    desde->setDate(QDate(2026, 11, 1));
    hasta->setDate(QDate(2026, 11, 30));
    p.findChild<QCheckBox*>(QStringLiteral("Check1"))->setChecked(true);
    p.findChild<QCheckBox*>(QStringLiteral("Check2"))->setChecked(true);
    p.show();
    EXPECT_EQ(envia(p), QStringLiteral("Envío|Información enviada a central@almacen.com.ar"));
    ASSERT_EQ(s.recibidos(), 1);
    const QJsonObject m = s.mensaje(1);
    const QJsonObject e = m[QStringLiteral("encabezados")].toObject();
    const QJsonArray adj = m[QStringLiteral("adjuntos")].toArray();
    ASSERT_EQ(adj.size(), 1);
    EXPECT_EQ(QStringList({e[QStringLiteral("Subject")].toString(), e[QStringLiteral("To")].toString(),
                           m[QStringLiteral("texto")].toString().trimmed(), adj[0][QStringLiteral("nombre")].toString()}),
              QStringList({"Novedades de la sucursal", "Casa Central <central@almacen.com.ar>",
                           "Informacion de 01/11/2026 al 30/11/2026", "envio.htm"}));
    const QByteArray html = QByteArray::fromBase64(adj[0][QStringLiteral("contenido")].toString().toLatin1());
    EXPECT_EQ(discrepancias(QString::fromUtf8(html),
                            {"I n f o r m e : Lista de Precios / Stock al 23/11/2026", "I n f o r m e : Ventas al 23/11/2026",
                             "B0001-00000007", "Yerba &lt;1 kg&gt;"},
                            {"Movimientos de Stock", "B0001-00000099"}),
              "");
    EXPECT_TRUE(p.archivoEnvio().startsWith(base_->carpeta()));
    EXPECT_TRUE(QFile::exists(p.archivoEnvio()));

    // Sin ninguna sección el correo sale igual, con el adjunto vacío.
    for (int i = 1; i <= 4; ++i) p.findChild<QCheckBox*>(QStringLiteral("Check%1").arg(i))->setChecked(false);
    envia(p);
    ASSERT_EQ(s.recibidos(), 2);
    EXPECT_EQ(s.mensaje(2)[QStringLiteral("adjuntos")][0][QStringLiteral("contenido")].toString(), QString());
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
    EXPECT_EQ(envia(p), QStringLiteral("Error|Verificar datos de configuración!"));
    EXPECT_EQ(envios, 0);
    configura(QStringLiteral("127.0.0.1:1"));
    EXPECT_TRUE(envia(p).contains(QStringLiteral("|No se pudo enviar el correo a central@almacen.com.ar")));
    EXPECT_EQ(envios, 1);

    // Conectar: dice si ya hay conexión.
    for (const bool conectado : {true, false}) {
        p.estaConectado = [conectado] { return conectado; };
        auto caja = respondeCaja(QStringLiteral("Aceptar"));
        p.findChild<QPushButton*>(QStringLiteral("Command28"))->click();
        EXPECT_TRUE(caja->texto.startsWith(conectado ? QStringLiteral("Ya está conectado a internet")
                                                     : QStringLiteral("No hay conexión a internet")));
    }
}

TEST_F(Mensajeria, LaConfiguracionNuncaMuestraLaClaveYVaciaLaConserva) {
    DatosCorreo d;
    d.clave = QStringLiteral("secreta");
    GrabaDatosCorreo(*conf_, d, true);
    {
        PanConfInt c(*conf_);
        for (QLineEdit* e : c.findChildren<QLineEdit*>()) EXPECT_NE(e->text(), QStringLiteral("secreta"));
        EXPECT_TRUE(c.findChild<QLineEdit*>(QStringLiteral("txAutPass"))->text().isEmpty());
        c.findChild<QLineEdit*>(QStringLiteral("txEmailDestino"))->setText(QStringLiteral("central@almacen.com.ar"));
        c.findChild<QLineEdit*>(QStringLiteral("txEmailSMTP"))->setText(QStringLiteral("smtp.correo.com.ar:587"));
        c.findChild<QCheckBox*>(QStringLiteral("chkAut"))->setChecked(true);
        c.findChild<QLineEdit*>(QStringLiteral("txAutUser"))->setText(QStringLiteral("sucursal"));
        c.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    }
    auto grabado = [&] {
        return QStringList({conf_->lee(clave::configuracion, QStringLiteral("TieneAutenticacion")),
                            conf_->lee(clave::configuracion, QStringLiteral("EmailSMTP")), LeeDatosCorreo(*conf_).clave});
    };
    EXPECT_EQ(grabado(), QStringList({"SI", "smtp.correo.com.ar:587", "secreta"}));
    {
        PanConfInt c(*conf_);
        EXPECT_TRUE(c.findChild<QCheckBox*>(QStringLiteral("chkAut"))->isChecked());
        c.findChild<QCheckBox*>(QStringLiteral("chkAut"))->setChecked(false);
        c.findChild<QLineEdit*>(QStringLiteral("txAutPass"))->setText(QStringLiteral("otra"));
        c.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    }
    EXPECT_EQ(grabado(), QStringList({"NO", "smtp.correo.com.ar:587", "otra"}));
}

} // namespace
} // namespace orv
