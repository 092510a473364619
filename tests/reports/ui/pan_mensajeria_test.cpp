// Módulo de envíos: la página HTML con las secciones elegidas del período, a quién va, qué dice
// si falta el destino o el servidor no atiende, y la configuración que nunca muestra la clave.

#include "../../ui/caja_modal.h"
#include "../apoyo_informes.h"
#include "apoyo/pantalla_prueba.h"
#include "reports/correo.h"
#include "reports/ui/pan_mensajeria.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>

namespace orv {
namespace {

using namespace prueba;

class Mensajeria : public PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta("INSERT INTO Articulos (Codigo, Descripcion, PrecioFinal) VALUES ('A1', 'Yerba <1 kg>', 10)");
        for (const auto& [factura, mes] : {std::pair{"B0001-00000007", 11}, {"B0001-00000099", 12}}) {
            const qint64 c = a().inserta("INSERT INTO Comprobantes (Factura, Fecha, Nombre, Total) VALUES (?, ?, 'Ana', 10)",
                                         {QString::fromLatin1(factura), QDate(2026, mes, 10)}, "idComprobante");
            a().ejecuta("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, SubTotal) VALUES (?, 1, 1, 10)", {c});
        }
        // El envío real se prueba con el correo; aquí se anota lo que se manda y sólo sigue hacia 127.0.0.1.
        p_ = std::make_unique<PanMensajeria>(a(), *conf_, reloj_);
        enviado_ = p_->envia;
        p_->envia = [this](const DatosCorreo& d, const QString& para, const QString& asunto, const QString& cuerpo,
                          const QString& nombre, const QString& adjunto) {
            envios_ << QStringList({para, nombre, asunto, cuerpo.trimmed(), leeArchivo(adjunto)}).join(u'|');
            if (d.smtp.startsWith("127.")) enviado_(d, para, asunto, cuerpo, nombre, adjunto);
        };
        p_->show();
    }
    void configura(const QString& servidor) {
        DatosCorreo d;
        d.destino = "central@almacen.com.ar";
        d.destinoNombre = "Casa Central";
        d.de = "sucursal@almacen.com.ar";
        d.smtp = servidor;
        d.tituloMensaje = "Novedades de la sucursal";
        GrabaDatosCorreo(*conf_, d, false);
    }
    // Pulsa "Conectar y enviar" y devuelve el título y el texto de la caja que responde.
    QString envia() {
        auto caja = respondeCaja("Aceptar");
        p_->findChild<QPushButton*>("BotConn")->click();
        return caja->titulo + u'|' + caja->texto;
    }

    std::unique_ptr<PanMensajeria> p_;
    decltype(PanMensajeria::envia) enviado_;
    QStringList envios_;
};

TEST_F(Mensajeria, EnviaLasSeccionesElegidasDelPeriodo) {
    configura("smtp.correo.com.ar");
    auto* desde = p_->findChild<QDateEdit*>("DTPicker2");
    auto* hasta = p_->findChild<QDateEdit*>("DTPicker3");
    EXPECT_EQ(std::pair(desde->date(), hasta->date()), std::pair(QDate(2026, 11, 23), QDate(2026, 11, 23)));
    desde->setDate(QDate(2026, 11, 1));
    hasta->setDate(QDate(2026, 11, 30));
    p_->findChild<QCheckBox*>("Check1")->setChecked(true);
    p_->findChild<QCheckBox*>("Check2")->setChecked(true);
    EXPECT_EQ(envia(), "Envío|Información enviada a central@almacen.com.ar");
    ASSERT_EQ(envios_.size(), 1);
    EXPECT_TRUE(envios_[0].startsWith("central@almacen.com.ar|Casa Central|Novedades de la sucursal|"
                                      "Informacion de 01/11/2026 al 30/11/2026|"));
    EXPECT_EQ(discrepancias(envios_[0], {"I n f o r m e : Lista de Precios / Stock al 23/11/2026", "I n f o r m e : Ventas al 23/11/2026",
                                         "B0001-00000007", "Yerba &lt;1 kg&gt;"},
                            {"Movimientos de Stock", "B0001-00000099"}),
              "");
    EXPECT_TRUE(p_->archivoEnvio().startsWith(base_->carpeta()));
    // Sin ninguna sección el correo sale igual, con el adjunto vacío.
    for (int i = 1; i <= 4; ++i) p_->findChild<QCheckBox*>(QStringLiteral("Check%1").arg(i))->setChecked(false);
    envia();
    ASSERT_EQ(envios_.size(), 2);
    EXPECT_TRUE(envios_[1].endsWith("al 30/11/2026|"));
}

TEST_F(Mensajeria, SinDestinoPideVerificarYUnServidorQueNoAtiendeSeDiceEnCastellano) {
    EXPECT_EQ(envia(), "Error|Verificar datos de configuración!");
    EXPECT_TRUE(envios_.isEmpty());
    configura("127.0.0.1:1");
    EXPECT_TRUE(envia().contains("|No se pudo enviar el correo a central@almacen.com.ar"));
    EXPECT_EQ(envios_.size(), 1);
}

TEST_F(Mensajeria, LaConfiguracionNuncaMuestraLaClaveYVaciaLaConserva) {
    DatosCorreo d;
    d.clave = "secreta";
    GrabaDatosCorreo(*conf_, d, true);
    auto grabado = [&] {
        return QStringList({conf_->lee(clave::configuracion, "TieneAutenticacion"), conf_->lee(clave::configuracion, "EmailSMTP"),
                            LeeDatosCorreo(*conf_).clave});
    };
    for (const auto& [aut, clave, queda] : {std::tuple{true, "", "SI|smtp.correo.com.ar:587|secreta"},
                                            {false, "otra", "NO|smtp.correo.com.ar:587|otra"}}) {
        PanConfInt c(*conf_);
        for (QLineEdit* e : c.findChildren<QLineEdit*>()) EXPECT_NE(e->text(), "secreta");
        EXPECT_EQ(c.findChild<QCheckBox*>("chkAut")->isChecked(), !aut); // lo grabado antes
        c.findChild<QLineEdit*>("txEmailSMTP")->setText("smtp.correo.com.ar:587");
        c.findChild<QCheckBox*>("chkAut")->setChecked(aut);
        c.findChild<QLineEdit*>("txAutPass")->setText(QString::fromLatin1(clave));
        c.findChild<QPushButton*>("Command1")->click();
        EXPECT_EQ(grabado().join(u'|'), queda);
    }
}

} // namespace
} // namespace orv
