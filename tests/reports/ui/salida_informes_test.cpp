// Salida de los informes: cada destino con lo que entrega y el que queda para los informes
// siguientes, los errores en castellano, las pantallas que piden el sujeto y el catálogo libre.

#include "../../ui/caja_modal.h"
#include "../apoyo_informes.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "reports/catalogo.h"
#include "reports/ui/pan_print_crystal.h"
#include "reports/ui/pan_rep_sel.h"
#include "reports/ui/salida_informes.h"
#include "reports/ui/visor_informe.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPushButton>

namespace orv {
namespace {

using namespace prueba;

class SalidaDeInformes : public PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        salida_ = std::make_unique<SalidaInformes>(a(), *conf_, estado_, reloj_, nullptr);
        a().ejecuta("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago) VALUES (1, ?, 'Venta a O''Brien', "
                    "150.5, 0, 'EFVO'), (1, ?, 'Venta mostrador', 20, 0, 'EFVO'), (1, ?, 'Fuera', 9, 0, 'EFVO')",
                    {QDate(2026, 11, 5), QDate(2026, 11, 6), QDate(2026, 12, 10)});
        salida_->eligeArchivo = [this](const QString& titulo) {
            pedidos_ << titulo;
            return archivo_.isEmpty() ? QString() : ruta(archivo_);
        };
    }
    void TearDown() override {
        QList<QPointer<QWidget>> visores;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->objectName() == "visorInforme") visores << w;
        for (const QPointer<QWidget>& v : visores) delete v.data();
    }
    QString ruta(const QString& n) const { return QDir(base_->carpeta()).filePath(n); }
    void correo(const QString& destino) {
        conf_->graba(clave::configuracion, "EmailDestino", destino);
        conf_->graba(clave::configuracion, "EmailDestinoNombre", "Casa Central");
        conf_->graba(clave::configuracion, "EmailTituloMensaje", "Caja");
    }
    bool emite() { return salida_->emite("listacajasimple.rpt", SeleccionUsual("listacajasimple.rpt", {2026, 11, 1}, {2026, 11, 30})); }

    std::unique_ptr<SalidaInformes> salida_;
    QStringList pedidos_;
    QString archivo_; // el que se elige al guardar; vacío: cancelado
};

TEST_F(SalidaDeInformes, CadaDestinoEntregaElInformeConSuSeleccionYQuedaHastaQueCambie) {
    // 2: al archivo elegido, con el formato de su extensión; cancelado, nada.
    salida_->fijaDestino("2 - A un archivo", "1");
    for (const char* archivo : {"caja.pdf", "caja.csv", ""}) {
        archivo_ = QString::fromLatin1(archivo);
        EXPECT_EQ(emite(), !archivo_.isEmpty()) << archivo;
    }
    EXPECT_EQ(pedidos_.first(), "Movimientos de caja");
    EXPECT_EQ(discrepancias(textoDePdf(ruta("caja.pdf")), {"Venta a O'Brien", "170.50"}, {"Fuera"}), "");
    EXPECT_EQ(leeArchivo(ruta("caja.csv")).count(u'\n'), 3); // encabezado y dos filas

    // 1: la impresora con las copias de Text10 (aquí, una impresora a PDF); cancelada, nada. Copias que no son un número: una.
    salida_->fijaDestino("1 - A la impresora", "2");
    int copias = 0;
    salida_->eligeImpresora = [&](QPrinter& p) {
        copias = p.copyCount();
        p.setOutputFormat(QPrinter::PdfFormat);
        p.setOutputFileName(ruta("impreso.pdf"));
        return true;
    };
    ASSERT_TRUE(emite());
    EXPECT_EQ(copias, 2);
    EXPECT_EQ(discrepancias(textoDePdf(ruta("impreso.pdf")), {"Venta mostrador", "Página 1 de 1"}), "");
    salida_->eligeImpresora = [](QPrinter&) { return false; };
    EXPECT_FALSE(emite());
    for (const char* malas : {"dos", "0"}) {
        salida_->fijaCopias(QString::fromLatin1(malas));
        EXPECT_EQ(salida_->copias(), 1) << malas;
    }

    // 3: el PDF adjunto al destinatario que había al elegir el destino; sin destinatario no se arma nada.
    QStringList enviado;
    salida_->enviaCorreo = [&](const QString& para, const QString& nombre, const QString& asunto, const QString& mensaje,
                               const QString& archivo) {
        enviado = {para, nombre, asunto, mensaje, QFileInfo(archivo).fileName(), leeArchivo(archivo).left(5)};
        EXPECT_TRUE(archivo.startsWith(base_->carpeta()));
    };
    correo("casa@central.com.ar");
    salida_->fijaDestino("3 - Enviar por e-mail", "1");
    correo("otro@central.com.ar");
    ASSERT_TRUE(emite());
    EXPECT_EQ(enviado, QStringList({"casa@central.com.ar", "Casa Central", "Caja", "Ver archivo adjunto", "Movimientos_de_caja.pdf", "%PDF-"}));
    correo(QString());
    salida_->fijaDestino("3 - Enviar por e-mail", "1");
    enviado.clear();
    EXPECT_EQ(textoDeAviso([&] { emite(); }), "Verificar datos de configuración!");
    EXPECT_TRUE(enviado.isEmpty());

    // 4: la vista previa de impresión, modal.
    salida_->fijaDestino("4 - Vista previa", "1");
    QString titulo;
    auto vista = alAbrirse<QPrintPreviewDialog>([&](QPrintPreviewDialog* d) {
        titulo = d->windowTitle();
        d->reject();
    });
    ASSERT_TRUE(emite());
    EXPECT_EQ(titulo, "Vista previa - Movimientos de caja");
    // 0, y un texto que no empieza con una cifra de la lista: una ventana con las páginas, que queda abierta.
    salida_->fijaDestino("9 - otra cosa", "1");
    ASSERT_TRUE(emite());
    ASSERT_NE(salida_->ultimoVisor(), nullptr);
    EXPECT_TRUE(salida_->ultimoVisor()->isVisible());
    EXPECT_EQ(salida_->ultimoVisor()->windowTitle(), "Movimientos de caja");
    EXPECT_EQ(std::pair(salida_->ultimoVisor()->paginas(), salida_->ultimoVisor()->informe().filas), std::pair(1, qint64(2)));
    // Reiniciar vuelve a la ventana, una copia y sin destinatario.
    salida_->fijaDestino("1 - A la impresora", "2");
    salida_->reinicia();
    EXPECT_EQ(std::pair(salida_->destino(), salida_->copias()), std::pair(SalidaInformes::Ventana, 1));
    EXPECT_TRUE(salida_->destinatarioCorreo().isEmpty());
}

TEST_F(SalidaDeInformes, UnaDefinicionQueFaltaOEstaRotaDiceCualYNoSaleNada) {
    salida_->fijaDestino("2 - A un archivo", "1");
    archivo_ = "x.pdf";
    auto caja = respondeCaja("Aceptar");
    EXPECT_FALSE(salida_->imprime("no_existe.rpt", Seleccion{}));
    EXPECT_EQ(caja->texto, "Error en la lectura de la plantilla : no_existe.rpt");
    // Un comprobante con una plantilla que falta: el mensaje con su nombre.
    const QString falta = ruta("plantillas/no esta.rpt");
    caja = respondeCaja("Aceptar");
    EXPECT_FALSE(salida_->imprimeComprobante(falta, 1));
    EXPECT_EQ(QStringList({caja->titulo, caja->texto}), QStringList({"Error", "Error en la lectura de la plantilla : " + falta}));
    // Una copia rota en la carpeta de datos no cae en silencio sobre la del programa.
    QDir(base_->carpeta()).mkpath("reportes");
    escribeArchivo(ruta("reportes/listacajasimple.rpt"), "<p>sin cabecera</p>");
    EXPECT_THROW(emite(), Aviso);
    EXPECT_TRUE(pedidos_.isEmpty());
}

TEST_F(SalidaDeInformes, PantallasQuePidenElSujetoRechazanLoQueNoAlcanza) {
    // Un artículo o todos: las dos cosas, o ninguna, se rechazan.
    PanRepSelArt art(QDate(2026, 11, 1), QDate(2026, 11, 30));
    art.show();
    for (const bool conCodigo : {false, true}) {
        art.findChild<QLineEdit*>("Text1")->setText(conCodigo ? "A'1" : "");
        art.findChild<QCheckBox*>("Check1")->setChecked(conCodigo);
        auto caja = respondeCaja("Aceptar");
        art.findChild<QPushButton*>("Command1")->click();
        EXPECT_EQ(QStringList({caja->titulo, caja->texto}), QStringList({"Error", "O un articulo o todos, debe borrar el codigo!"}));
        EXPECT_EQ(art.result(), 0);
    }
    art.findChild<QCheckBox*>("Check1")->setChecked(false);
    art.findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(art.result(), int(QDialog::Accepted));
    EXPECT_EQ(std::tuple(art.todos(), art.codigo(), art.hasta()), std::tuple(false, QStringLiteral("A'1"), QDate(2026, 11, 30)));

    // La cuenta: sin elegir no se acepta; elegida, da su id y el período de la pantalla.
    const qint64 banco = a().inserta("INSERT INTO Cuentas (Cuenta) VALUES ('Banco Nación')", {}, "idCuenta");
    PanSelCta cta(a(), QDate(2026, 10, 1), QDate(2026, 10, 31));
    cta.show();
    auto caja = respondeCaja("Aceptar");
    cta.findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(caja->texto, "Seleccione una cuenta de la lista!");
    EXPECT_EQ(cta.result(), 0);
    cta.findChild<QComboBox*>("Combo1")->setCurrentIndex(cta.findChild<QComboBox*>("Combo1")->findText("Banco Nación"));
    cta.findChild<QDateEdit*>("dt1")->setDate(QDate(2026, 9, 15));
    cta.findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(cta.result(), int(QDialog::Accepted));
    EXPECT_EQ(std::tuple(cta.idCuenta(), cta.desde(), cta.hasta()), std::tuple(banco, QDate(2026, 9, 15), QDate(2026, 10, 31)));
}

TEST_F(SalidaDeInformes, CatalogoLibreListaCadaDefinicionUnaVezYExportaConLaPreguntaDelSistema) {
    QDir(base_->carpeta()).mkpath("reportes");
    QFile::copy(BuscaDefinicion("listacajasimple.rpt", QString()), ruta("reportes/listacajasimple.rpt"));
    PanPrintCrystal p(*salida_, *conf_);
    QStringList nombres;
    for (int i = 0; i < p.lista()->count(); ++i) nombres << p.lista()->item(i)->text();
    EXPECT_EQ(nombres.count("listacajasimple.rpt"), 1);
    EXPECT_TRUE(nombres.contains("factura.rpt"));
    p.lista()->setCurrentRow(nombres.indexOf("listacajasimple.rpt"));

    // Exportar sin selección: todas las filas, también las de otro mes. Si ya existe, "No" lo deja como está.
    const QString html = ruta("caja.html");
    p.eligeArchivo = [&] { return html; };
    p.exportar();
    EXPECT_EQ(discrepancias(leeArchivo(html), {"Fuera", "Venta a O&apos;Brien"}), "");
    escribeArchivo(html, "viejo");
    for (const char* boton : {"No", "Sí"}) {
        auto caja = respondeCaja(QString::fromUtf8(boton));
        p.exportar();
        EXPECT_EQ(QStringList({caja->titulo, caja->texto, QString::number(caja->botones.size())}),
                  QStringList({"Atención", "El archivo " + html + " ya existe, desea sobreescribirlo?", "3"}));
        EXPECT_EQ(leeArchivo(html) == "viejo", *boton == 'N') << boton;
    }
    p.eligeArchivo = [&] { return ruta("caja.txt"); }; // otra extensión no exporta
    p.exportar();
    EXPECT_FALSE(QFileInfo::exists(ruta("caja.txt")));

    // Imprimir deja el destino en la impresora para los informes siguientes; Vista Previa, en la ventana.
    salida_->eligeImpresora = [](QPrinter&) { return false; };
    p.imprimir();
    EXPECT_EQ(salida_->destino(), SalidaInformes::Impresora);
    p.vistaPrevia();
    EXPECT_EQ(salida_->destino(), SalidaInformes::Ventana);
    ASSERT_NE(salida_->ultimoVisor(), nullptr);
    EXPECT_EQ(salida_->ultimoVisor()->informe().filas, 3);

    // Por correo: la página HTML de la carpeta de datos, con los datos de la pantalla del correo.
    QStringList enviado;
    salida_->enviaCorreo = [&](const QString& para, const QString& nombre, const QString& asunto, const QString& mensaje,
                               const QString& archivo) { enviado = {para, nombre, asunto, mensaje, archivo}; };
    auto mail = alAbrirse<PanMailto>([](PanMailto* m) {
        m->findChild<QLineEdit*>("txEnviarA")->setText("contador@estudio.com.ar");
        m->findChild<QLineEdit*>("Text1")->setText("Estudio");
        m->fijaAsunto("Caja de noviembre");
        m->findChild<QPushButton*>("Command1")->click();
    });
    respondeCaja("Aceptar");
    p.enviarMail();
    EXPECT_TRUE(mail->vista);
    EXPECT_EQ(enviado, QStringList({"contador@estudio.com.ar", "Estudio", "Caja de noviembre", "Ver archivo adjunto", ruta("reporte.html")}));
    EXPECT_TRUE(QFileInfo::exists(ruta("reporte.html")));
}

} // namespace
} // namespace orv
