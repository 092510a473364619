// Salida de los informes: el destino que queda para los informes siguientes, cada destino con lo
// que entrega, los errores en castellano, las pantallas que piden el sujeto y el catálogo libre.

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

const QString kCaja = QStringLiteral("listacajasimple.rpt");

class SalidaDeInformes : public PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        salida_ = std::make_unique<SalidaInformes>(a(), *conf_, estado_, reloj_, nullptr);
        for (const auto& [dia, detalle, ingreso] :
             {std::tuple{5, "Venta a O'Brien", "150.5"}, std::tuple{6, "Venta mostrador", "20"}, std::tuple{40, "Fuera", "9"}})
            a().ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago) "
                                       "VALUES (1, ?, ?, ?, 0, 'EFVO')"),
                        {QDate(2026, 11, 1).addDays(dia - 1), QString::fromUtf8(detalle), QString::fromLatin1(ingreso)});
    }
    void TearDown() override {
        QList<QPointer<QWidget>> visores;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->objectName() == QStringLiteral("visorInforme")) visores << w;
        for (const QPointer<QWidget>& v : visores) delete v.data();
    }
    QString ruta(const QString& n) const { return QDir(base_->carpeta()).filePath(n); }
    void correo(const QString& destino, const QString& nombre = {}) {
        conf_->graba(clave::configuracion, QStringLiteral("EmailDestino"), destino);
        conf_->graba(clave::configuracion, QStringLiteral("EmailDestinoNombre"), nombre);
        conf_->graba(clave::configuracion, QStringLiteral("EmailTituloMensaje"), QStringLiteral("Caja"));
    }
    bool emite() { return salida_->emite(kCaja, SeleccionUsual(kCaja, QDate(2026, 11, 1), QDate(2026, 11, 30))); }

    std::unique_ptr<SalidaInformes> salida_;
};

TEST_F(SalidaDeInformes, ElDestinoSaleDelTextoDeCombo1YQuedaHastaQueCambie) {
    EXPECT_EQ(salida_->destino(), SalidaInformes::Ventana);
    salida_->fijaDestino(QStringLiteral("4 - Vista previa"), QStringLiteral("3"));
    EXPECT_EQ(salida_->destino(), SalidaInformes::VistaPrevia);
    EXPECT_EQ(salida_->copias(), 3);
    for (const char* malas : {"dos", "0"}) { // copias que no son un número: una
        salida_->fijaCopias(QString::fromLatin1(malas));
        EXPECT_EQ(salida_->copias(), 1) << malas;
    }
    // Con el correo toma destinatario, asunto y mensaje de la configuración en ese momento.
    correo(QStringLiteral("casa@central.com.ar"));
    salida_->fijaDestino(QStringLiteral("3 - Enviar por e-mail"), QStringLiteral("1"));
    correo(QStringLiteral("otro@central.com.ar"));
    EXPECT_EQ(salida_->destino(), SalidaInformes::Correo);
    EXPECT_EQ(QStringList({salida_->destinatarioCorreo(), salida_->asuntoCorreo(), salida_->mensajeCorreo()}),
              QStringList({"casa@central.com.ar", "Caja", "Ver archivo adjunto"}));
    // Un texto que no empieza con una cifra de la lista vuelve a la ventana; reinicia también.
    salida_->fijaDestino(QStringLiteral("9 - otra cosa"), QStringLiteral("1"));
    EXPECT_EQ(salida_->destino(), SalidaInformes::Ventana);
    salida_->fijaDestino(QStringLiteral("1 - A la impresora"), QStringLiteral("2"));
    salida_->reinicia();
    EXPECT_EQ(salida_->destino(), SalidaInformes::Ventana);
    EXPECT_EQ(salida_->copias(), 1);
    EXPECT_TRUE(salida_->destinatarioCorreo().isEmpty());
}

TEST_F(SalidaDeInformes, CadaDestinoEntregaElInformeConSuSeleccion) {
    // 2: al archivo elegido, con el formato de su extensión; cancelado, nada.
    salida_->fijaDestino(QStringLiteral("2 - A un archivo"), QStringLiteral("1"));
    QStringList pedidos;
    for (const char* archivo : {"caja.pdf", "caja.csv", ""}) {
        salida_->eligeArchivo = [&, archivo](const QString& titulo) {
            pedidos << titulo;
            return *archivo ? ruta(QString::fromLatin1(archivo)) : QString();
        };
        EXPECT_EQ(emite(), *archivo != 0) << archivo;
    }
    EXPECT_EQ(pedidos.first(), QStringLiteral("Movimientos de caja"));
    EXPECT_EQ(discrepancias(textoDePdf(ruta(QStringLiteral("caja.pdf"))), {"Venta a O'Brien", "170.50"}, {"Fuera"}), "");
    EXPECT_EQ(leeArchivo(ruta(QStringLiteral("caja.csv"))).count(u'\n'), 3); // encabezado y dos filas

    // 1: la impresora con las copias de Text10 (aquí, una impresora a PDF); cancelada, nada.
    salida_->fijaDestino(QStringLiteral("1 - A la impresora"), QStringLiteral("2"));
    int copias = 0;
    salida_->eligeImpresora = [&](QPrinter& p) {
        copias = p.copyCount();
        p.setOutputFormat(QPrinter::PdfFormat);
        p.setOutputFileName(ruta(QStringLiteral("impreso.pdf")));
        return true;
    };
    ASSERT_TRUE(emite());
    EXPECT_EQ(copias, 2);
    EXPECT_EQ(discrepancias(textoDePdf(ruta(QStringLiteral("impreso.pdf"))), {"Venta mostrador", "Página 1 de 1"}), "");
    salida_->eligeImpresora = [](QPrinter&) { return false; };
    EXPECT_FALSE(emite());

    // 3: el PDF adjunto, al destinatario tomado al elegir el destino; sin destinatario no se arma nada.
    QStringList enviado;
    salida_->enviaCorreo = [&](const QString& para, const QString& nombre, const QString& asunto, const QString& mensaje,
                               const QString& archivo) {
        enviado = {para, nombre, asunto, mensaje, QFileInfo(archivo).fileName(), leeArchivo(archivo).left(5)};
        EXPECT_TRUE(archivo.startsWith(base_->carpeta()));
    };
    correo(QStringLiteral("casa@central.com.ar"), QStringLiteral("Casa Central"));
    salida_->fijaDestino(QStringLiteral("3 - Enviar por e-mail"), QStringLiteral("1"));
    ASSERT_TRUE(emite());
    EXPECT_EQ(enviado, QStringList({"casa@central.com.ar", "Casa Central", "Caja", "Ver archivo adjunto",
                                    "Movimientos_de_caja.pdf", "%PDF-"}));
    correo(QString());
    salida_->fijaDestino(QStringLiteral("3 - Enviar por e-mail"), QStringLiteral("1"));
    enviado.clear();
    EXPECT_EQ(textoDeAviso([&] { emite(); }), QStringLiteral("Verificar datos de configuración!"));
    EXPECT_TRUE(enviado.isEmpty());

    // 0: una ventana con las páginas, que queda abierta.
    salida_->fijaDestino(QStringLiteral("0 - A una ventana"), QStringLiteral("1"));
    ASSERT_TRUE(emite());
    VisorInforme* visor = salida_->ultimoVisor();
    ASSERT_NE(visor, nullptr);
    EXPECT_TRUE(visor->isVisible());
    EXPECT_EQ(visor->windowTitle(), QStringLiteral("Movimientos de caja"));
    EXPECT_EQ(std::pair(visor->paginas(), visor->informe().filas), std::pair(1, qint64(2)));

    // 4: la vista previa de impresión, modal.
    salida_->fijaDestino(QStringLiteral("4 - Vista previa"), QStringLiteral("1"));
    QString titulo;
    auto vista = alAbrirse<QPrintPreviewDialog>([&](QPrintPreviewDialog* d) {
        titulo = d->windowTitle();
        d->reject();
    });
    ASSERT_TRUE(emite());
    EXPECT_TRUE(vista->vista);
    EXPECT_EQ(titulo, QStringLiteral("Vista previa - Movimientos de caja"));
}

TEST_F(SalidaDeInformes, UnaDefinicionQueFaltaOEstaRotaDiceCualYNoSaleNada) {
    salida_->fijaDestino(QStringLiteral("2 - A un archivo"), QStringLiteral("1"));
    bool preguntado = false;
    salida_->eligeArchivo = [&](const QString&) {
        preguntado = true;
        return ruta(QStringLiteral("x.pdf"));
    };
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    EXPECT_FALSE(salida_->imprime(QStringLiteral("no_existe.rpt"), Seleccion{}));
    EXPECT_EQ(caja->texto, QStringLiteral("Error en la lectura de la plantilla : no_existe.rpt"));
    EXPECT_FALSE(preguntado);
    // Una copia rota en la carpeta de datos no cae en silencio sobre la del programa.
    QDir(base_->carpeta()).mkpath(QStringLiteral("reportes"));
    escribeArchivo(ruta(QStringLiteral("reportes/listacajasimple.rpt")), "<p>sin cabecera</p>");
    EXPECT_THROW(emite(), Aviso);
    EXPECT_FALSE(QFileInfo::exists(ruta(QStringLiteral("x.pdf"))));

    // Un comprobante con una plantilla que falta: el mensaje con su nombre.
    const QString falta = ruta(QStringLiteral("plantillas/no esta.rpt"));
    caja = respondeCaja(QStringLiteral("Aceptar"));
    EXPECT_FALSE(salida_->imprimeComprobante(falta, 1));
    EXPECT_EQ(QStringList({caja->titulo, caja->texto}),
              QStringList({"Error", QStringLiteral("Error en la lectura de la plantilla : ") + falta}));
}

TEST_F(SalidaDeInformes, ElComprobanteSaleAlDestinoVigente) {
    const qint64 id = a().inserta(
        QStringLiteral("INSERT INTO Comprobantes (Factura, idTipoComprobante, Fecha, Nombre, FormaPago, SubTotal, "
                       "ImporteNeto, PorcentajeIVA, ImporteIVA, Total, EsComercial) "
                       "VALUES ('0001-00000042', 1, ?, 'Almacén Don Tito', 'EFVO', 121, 100, 21, 21, 121, 1)"),
        {QDate(2026, 11, 20)}, QStringLiteral("idComprobante"));
    a().ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, Descripcion, Cantidad, Unitario, SubTotal) "
                               "VALUES (?, 'Yerba 1 kg', 1, 121, 121)"),
                {id});
    // Con ModoPrint 0 el comprobante se abre en una ventana, no en papel.
    salida_->fijaDestino(QStringLiteral("0 - A una ventana"), QStringLiteral("1"));
    ASSERT_TRUE(salida_->imprimeComprobante(QStringLiteral("factura.rpt"), id));
    ASSERT_NE(salida_->ultimoVisor(), nullptr);
    EXPECT_EQ(salida_->ultimoVisor()->informe().filas, 1);
    EXPECT_TRUE(salida_->ultimoVisor()->informe().cuerpo.contains(QStringLiteral("0001-00000042")));
    salida_->fijaDestino(QStringLiteral("2 - A un archivo"), QStringLiteral("1"));
    salida_->eligeArchivo = [&](const QString&) { return ruta(QStringLiteral("f.pdf")); };
    ASSERT_TRUE(salida_->imprimeComprobante(QStringLiteral("factura.rpt"), id));
    EXPECT_TRUE(textoDePdf(ruta(QStringLiteral("f.pdf"))).contains(QStringLiteral("Yerba 1 kg")));
}

TEST_F(SalidaDeInformes, PantallasQuePidenElSujeto) {
    // Un artículo o todos: las dos cosas, o ninguna, se rechazan con el mensaje del sistema.
    {
        PanRepSelArt d(QDate(2026, 11, 1), QDate(2026, 11, 30));
        auto* codigo = d.findChild<QLineEdit*>(QStringLiteral("Text1"));
        auto* todos = d.findChild<QCheckBox*>(QStringLiteral("Check1"));
        auto* aceptar = d.findChild<QPushButton*>(QStringLiteral("Command1"));
        ASSERT_TRUE(codigo && todos && aceptar);
        d.show();
        for (const bool conCodigo : {false, true}) {
            codigo->setText(conCodigo ? QStringLiteral("A'1") : QString());
            todos->setChecked(conCodigo);
            auto caja = respondeCaja(QStringLiteral("Aceptar"));
            aceptar->click();
            EXPECT_EQ(QStringList({caja->titulo, caja->texto}),
                      QStringList({"Error", "O un articulo o todos, debe borrar el codigo!"}));
            EXPECT_EQ(d.result(), 0);
        }
        todos->setChecked(false);
        aceptar->click();
        EXPECT_EQ(d.result(), int(QDialog::Accepted));
        EXPECT_FALSE(d.todos());
        EXPECT_EQ(d.codigo(), QStringLiteral("A'1"));
        EXPECT_EQ(d.hasta(), QDate(2026, 11, 30));
    }
    // La cuenta: sin elegir no se acepta; elegida, da su id y el período de la pantalla.
    const qint64 banco = a().inserta(QStringLiteral("INSERT INTO Cuentas (Cuenta) VALUES ('Banco Nación')"), {},
                                     QStringLiteral("idCuenta"));
    PanSelCta d(a(), QDate(2026, 10, 1), QDate(2026, 10, 31));
    auto* combo = d.findChild<QComboBox*>(QStringLiteral("Combo1"));
    ASSERT_TRUE(combo);
    d.show();
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    d.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    EXPECT_EQ(caja->texto, QStringLiteral("Seleccione una cuenta de la lista!"));
    EXPECT_EQ(d.result(), 0);
    combo->setCurrentIndex(combo->findText(QStringLiteral("Banco Nación")));
    d.findChild<QDateEdit*>(QStringLiteral("dt1"))->setDate(QDate(2026, 9, 15));
    d.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    EXPECT_EQ(d.result(), int(QDialog::Accepted));
    EXPECT_EQ(d.idCuenta(), banco);
    EXPECT_EQ(std::pair(d.desde(), d.hasta()), std::pair(QDate(2026, 9, 15), QDate(2026, 10, 31)));
}

TEST_F(SalidaDeInformes, CatalogoLibreListaCadaDefinicionUnaVezYExportaConLaPreguntaDelSistema) {
    QDir(base_->carpeta()).mkpath(QStringLiteral("reportes"));
    QFile::copy(BuscaDefinicion(kCaja, QString()), ruta(QStringLiteral("reportes/listacajasimple.rpt")));
    PanPrintCrystal p(*salida_, *conf_);
    QStringList nombres;
    for (int i = 0; i < p.lista()->count(); ++i) nombres << p.lista()->item(i)->text();
    EXPECT_EQ(nombres.count(kCaja), 1);
    EXPECT_TRUE(nombres.contains(QStringLiteral("factura.rpt")));
    p.lista()->setCurrentRow(nombres.indexOf(kCaja));

    // Exportar sin selección: todas las filas, también las de otro mes.
    const QString html = ruta(QStringLiteral("caja.html"));
    p.eligeArchivo = [&] { return html; };
    p.exportar();
    EXPECT_EQ(discrepancias(leeArchivo(html), {"Fuera", "Venta a O&apos;Brien"}), "");
    // Ya existe: "No" lo deja como está; "Sí" lo reemplaza.
    escribeArchivo(html, "viejo");
    auto caja = respondeCaja(QStringLiteral("No"));
    p.exportar();
    EXPECT_EQ(QStringList({caja->titulo, caja->texto, QString::number(caja->botones.size()), leeArchivo(html)}),
              QStringList({"Atención", QStringLiteral("El archivo %1 ya existe, desea sobreescribirlo?").arg(html), "3",
                           "viejo"}));
    caja = respondeCaja(QStringLiteral("Sí"));
    p.exportar();
    EXPECT_TRUE(leeArchivo(html).contains(QStringLiteral("Fuera")));
    // Otra extensión no exporta.
    p.eligeArchivo = [&] { return ruta(QStringLiteral("caja.txt")); };
    p.exportar();
    EXPECT_FALSE(QFileInfo::exists(ruta(QStringLiteral("caja.txt"))));

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
        m->findChild<QLineEdit*>(QStringLiteral("txEnviarA"))->setText(QStringLiteral("contador@estudio.com.ar"));
        m->findChild<QLineEdit*>(QStringLiteral("Text1"))->setText(QStringLiteral("Estudio"));
        m->fijaAsunto(QStringLiteral("Caja de noviembre"));
        m->findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    });
    caja = respondeCaja(QStringLiteral("Aceptar"));
    p.enviarMail();
    EXPECT_TRUE(mail->vista);
    EXPECT_EQ(enviado, QStringList({"contador@estudio.com.ar", "Estudio", "Caja de noviembre", "Ver archivo adjunto",
                                    ruta(QStringLiteral("reporte.html"))}));
    EXPECT_TRUE(QFileInfo::exists(ruta(QStringLiteral("reporte.html"))));
}

} // namespace
} // namespace orv
