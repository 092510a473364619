// El diseño del ticket: lo que queda escrito en la sección "Ticket", lo que la pantalla muestra al
// volver a abrirla y el puerto que el tipo de comprobante recibe al aceptar.

#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "sales/diseno_ticket.h"
#include "sales/ui/pan_conf_tkt.h"
#include "sales/ui/pan_nue_tipo_comproba.h"
#include "sales/ui/panel_prueba.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace orv {
namespace {

using prueba::hijo;

class ConfTicket : public prueba::PantallaDePrueba {
protected:
    // Las claves de la sección tal como quedaron, "clave=valor", en el orden de los elementos.
    QStringList seccion() {
        QStringList r;
        for (const ElementoTicket& e : ElementosTicket()) r << e.titulo + u'=' + conf_->lee(clave::ticket, e.titulo);
        for (const char* c : {"Puerto", "ParametrosPuerto", "PaginaCodigos", "Columnas"})
            r << QString::fromLatin1(c) + u'=' + conf_->lee(clave::ticket, QString::fromLatin1(c));
        return r;
    }
    static QStringList esperada(std::initializer_list<std::pair<int, const char*>> valores, const char* puerto,
                                const char* parametros, const char* pagina, const char* columnas) {
        QStringList r;
        for (const ElementoTicket& e : ElementosTicket()) r << e.titulo + u'=';
        for (const auto& [i, v] : valores) r[i] += QString::fromUtf8(v);
        r << QStringLiteral("Puerto=") + QString::fromUtf8(puerto) << QStringLiteral("ParametrosPuerto=") + QString::fromUtf8(parametros)
          << QStringLiteral("PaginaCodigos=") + QString::fromUtf8(pagina) << QStringLiteral("Columnas=") + QString::fromUtf8(columnas);
        return r;
    }
};

TEST_F(ConfTicket, LoUbicadoSeGuardaYVuelveASuLugar) {
    {
        panConfTkt d(*conf_);
        d.show();
        // Nada ubicado todavía: todo apagado y escondido.
        for (int i = 0; i < ElementosTicket().size(); ++i) EXPECT_FALSE(d.opcion(i)->isChecked() || d.elemento(i)->isVisible()) << i;
        hijo<QComboBox>(d, "cboPuerto")->setCurrentText(QStringLiteral("COM2"));
        hijo<QLineEdit>(d, "txtConfPuerto")->setText(QStringLiteral("9600,n,8,1"));
        EXPECT_EQ(hijo<QComboBox>(d, "cboPagina")->currentText(), QStringLiteral("CP858"));
        hijo<QComboBox>(d, "cboPagina")->setCurrentText(QStringLiteral("CP850"));
        // La hoja toma el ancho del rollo.
        auto* ancho = hijo<QComboBox>(d, "cboAncho");
        EXPECT_EQ(ancho->currentText(), QStringLiteral("80 mm, 42 columnas"));
        ancho->setCurrentText(QStringLiteral("58 mm, 32 columnas"));
        EXPECT_EQ(hijo<QFrame>(d, "PicTkt")->width(), 174);
        ancho->setCurrentText(QStringLiteral("80 mm, 48 columnas"));
        EXPECT_EQ(hijo<QFrame>(d, "PicTkt")->width(), 240);
        for (const auto& [i, x, y] : {std::tuple{0, 10.0, 2.0}, std::tuple{8, 1.0, 30.0}, std::tuple{13, 40.0, 60.4}, std::tuple{5, 3.0, 9.0}}) {
            d.opcion(i)->setChecked(true);
            d.ubica(i, QPointF(x, y));
        }
        d.opcion(5)->setChecked(false); // ubicado y apagado: no va
        QTest::mouseClick(hijo<QPushButton>(d, "Command1"), Qt::LeftButton);
        EXPECT_EQ(d.result(), QDialog::Accepted);
    }
    EXPECT_EQ(seccion(), esperada({{0, "10,2"}, {8, "1,30"}, {13, "40,60.3333"}}, "COM2", "9600,n,8,1", "CP850", "48"));
    // Al volver: encendidos y en su lugar; Cancelar no escribe nada.
    panConfTkt d(*conf_);
    d.show();
    QStringList vistos;
    for (int i = 0; i < ElementosTicket().size(); ++i)
        if (d.opcion(i)->isChecked() && d.elemento(i)->isVisible())
            vistos << QStringLiteral("%1@%2,%3").arg(i).arg(d.elemento(i)->x()).arg(d.elemento(i)->y());
    EXPECT_EQ(vistos, (QStringList{"0@30,6", "8@3,90", "13@120,181"}));
    EXPECT_EQ(prueba::Textos(d, {"cboPuerto", "txtConfPuerto", "cboPagina", "cboAncho"}),
              (QStringList{"COM2", "9600,n,8,1", "CP850", "80 mm, 48 columnas"}));
    d.opcion(0)->setChecked(false);
    QTest::mouseClick(hijo<QPushButton>(d, "Command2"), Qt::LeftButton);
    EXPECT_EQ(seccion(), esperada({{0, "10,2"}, {8, "1,30"}, {13, "40,60.3333"}}, "COM2", "9600,n,8,1", "CP850", "48"));
}

TEST_F(ConfTicket, ParametrosSoloEnUnPuertoSerieYUnaClaveIlegibleNoUbicaNada) {
    panConfTkt d(*conf_);
    auto* puerto = hijo<QComboBox>(d, "cboPuerto");
    auto* parametros = hijo<QLineEdit>(d, "txtConfPuerto");
    const struct {
        const char* puerto;
        bool serie;
    } casos[] = {{"LPT1", false}, {"COM1", true}, {"/dev/ttyUSB0", true}, {"/dev/usb/lp0", false}, {"192.168.0.50:9100", false}};
    for (const auto& c : casos) {
        puerto->setCurrentText(QString::fromUtf8(c.puerto));
        EXPECT_EQ(parametros->isEnabled(), c.serie) << c.puerto;
    }
    for (const char* malo : {"", "12", "x,3", "3,", ",4"}) {
        conf_->graba(clave::ticket, QStringLiteral("Fecha"), QString::fromUtf8(malo));
        EXPECT_FALSE(LeeDisenoTicket(*conf_).lugares.value(7)) << malo;
    }
    conf_->graba(clave::ticket, QStringLiteral("Fecha"), QStringLiteral("2.5, 7"));
    EXPECT_EQ(LeeDisenoTicket(*conf_).lugares.value(7), QPointF(2.5, 7));
    // Unas columnas que no son de un rollo dejan las de siempre.
    for (const auto& [guardadas, leidas] : {std::pair{"48", 48}, std::pair{"40", 42}, std::pair{"", 42}, std::pair{"x", 42}}) {
        conf_->graba(clave::ticket, QStringLiteral("Columnas"), QString::fromUtf8(guardadas));
        EXPECT_EQ(LeeDisenoTicket(*conf_).columnas, leidas) << guardadas;
    }
}

// "Opciones..." de un tipo de ticket abre el configurador; al aceptar, el tipo toma el puerto.
TEST_F(ConfTicket, ElTipoDeComprobanteTomaElPuertoAlAceptar) {
    PanNueTipoComproba t(a(), *conf_, std::nullopt);
    t.show();
    hijo<QRadioButton>(t, "optTickets")->setChecked(true);
    prueba::alAbrirse<panConfTkt>([](panConfTkt* d) {
        d->findChild<QComboBox*>(QStringLiteral("cboPuerto"))->setCurrentText(QStringLiteral("/dev/usb/lp1"));
        d->reject();
    });
    t.opciones();
    const QString antes = hijo<QLabel>(t, "lblPlantilla")->text();
    prueba::alAbrirse<panConfTkt>([](panConfTkt* d) {
        d->findChild<QComboBox*>(QStringLiteral("cboPuerto"))->setCurrentText(QStringLiteral("/dev/usb/lp1"));
        d->aceptar();
    });
    t.opciones();
    EXPECT_EQ(QStringList({antes, hijo<QLabel>(t, "lblPlantilla")->text()}),
              (QStringList{antes, "IMPRESORA TICKETS PUERTO : /dev/usb/lp1"}));
    EXPECT_NE(antes, QStringLiteral("IMPRESORA TICKETS PUERTO : /dev/usb/lp1"));
}

} // namespace
} // namespace orv
