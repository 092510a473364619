// Salida de los informes: cada destino con lo que entrega y el que queda para los informes
// siguientes, los errores en castellano, las pantallas que piden el sujeto, el panel
// "Estadísticas e informes", el catálogo libre y el módulo de envíos.

#include "../apoyo_informes.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "reports/catalogo.h"
#include "reports/correo.h"
#include "reports/ui/pan_mensajeria.h"
#include "reports/ui/lanzadores.h"
#include "reports/ui/pan_print_crystal.h"
#include "reports/ui/pan_rep_sel.h"
#include "reports/ui/panel_informes.h"
#include "reports/ui/salida_informes.h"
#include "reports/ui/visor_informe.h"

#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QtWidgets>

namespace orv {
namespace {

using namespace prueba;

// Atiende la próxima pantalla intermedia de tipo T: marca la casilla o la opción y acepta.
template <typename T>
std::function<void()> eligiendo(const char* casilla) {
    return [casilla] {
        alAbrirse<T>([casilla](T* p) {
            p->template findChild<QAbstractButton*>(QString::fromLatin1(casilla))->setChecked(true);
            p->template findChild<QPushButton*>("Command1")->click();
        });
    };
}

class SalidaDeInformes : public PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago) VALUES (1, ?, 'Venta a O''Brien', "
                    "150.5, 0, 'EFVO'), (3, ?, 'Venta mostrador', 20, 0, 'EFVO'), (1, ?, 'Fuera', 9, 0, 'EFVO')",
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
    // Líneas de datos del CSV elegido (sin el encabezado).
    QStringList csv() const { return leeArchivo(ruta(archivo_)).split(u'\n', Qt::SkipEmptyParts).mid(1); }
    // El panel de informes con el período de noviembre, todo a un CSV.
    PanelInformes& panel() {
        salida_->fijaDestino("2 - A un archivo", "1");
        archivo_ = "salida.csv";
        panel_ = std::make_unique<PanelInformes>(a(), *conf_, *salida_);
        panel_->fijaPeriodo(QDate(2026, 11, 1), QDate(2026, 11, 30));
        return *panel_;
    }
    void pulsa(const char* nombre) { panel_->findChild<QPushButton*>(QString::fromLatin1(nombre))->click(); }

    std::unique_ptr<PanelInformes> panel_;
    QStringList pedidos_;
    QString archivo_; // el que se elige al guardar; vacío: cancelado
};

TEST_F(SalidaDeInformes, CadaDestinoEntregaElInformeConSuSeleccionYQuedaHastaQueCambie) {
    // 2: al archivo elegido, con el formato de su extensión; cancelado, nada.
    salida_->fijaDestino("2 - A un archivo", "1");
    for (const char* archivo : {"caja.csv", "", "caja.pdf"}) {
        archivo_ = QString::fromLatin1(archivo);
        EXPECT_EQ(emite(), !archivo_.isEmpty()) << archivo;
    }
    EXPECT_EQ(pedidos_.first(), "Movimientos de caja");
    EXPECT_EQ(discrepancias(textoDePdf(ruta("caja.pdf")), {"Venta a O'Brien", "170.50"}, {"Fuera"}), "");
    archivo_ = "caja.csv";
    EXPECT_EQ(csv().size(), 2);

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
    for (const char* destino : {"", "casa@central.com.ar"}) {
        correo(QString::fromLatin1(destino));
        salida_->fijaDestino("3 - Enviar por e-mail", "1");
        correo("otro@central.com.ar");
        EXPECT_EQ(AvisoDe([&] { emite(); }), *destino ? "" : "Verificar datos de configuración!");
        EXPECT_EQ(enviado.isEmpty(), !*destino);
    }
    EXPECT_EQ(enviado, QStringList({"casa@central.com.ar", "Casa Central", "Caja", "Ver archivo adjunto", "Movimientos_de_caja.pdf", "%PDF-"}));

    // 4: la vista previa de impresión, modal.
    salida_->fijaDestino("4 - Vista previa", "1");
    QString titulo;
    alAbrirse<QPrintPreviewDialog>([&](QPrintPreviewDialog* d) {
        titulo = d->windowTitle();
        d->reject();
    });
    ASSERT_TRUE(emite());
    EXPECT_EQ(titulo, "Vista previa - Movimientos de caja");
    // 0, y un texto que no empieza con una cifra de la lista: una ventana con las páginas, que queda abierta.
    salida_->fijaDestino("9 - otra cosa", "1");
    ASSERT_TRUE(emite());
    VisorInforme* visor = salida_->ultimoVisor();
    ASSERT_NE(visor, nullptr);
    EXPECT_EQ(std::tuple(visor->isVisible(), visor->windowTitle(), visor->paginas(), visor->informe().filas),
              std::tuple(true, QStringLiteral("Movimientos de caja"), 1, qint64(2)));
    // Reiniciar vuelve a la ventana, una copia y sin destinatario.
    salida_->fijaDestino("3 - Enviar por e-mail", "2");
    salida_->reinicia();
    EXPECT_EQ(std::tuple(salida_->destino(), salida_->copias(), salida_->destinatarioCorreo()),
              std::tuple(SalidaInformes::Ventana, 1, QString()));
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
    // Un comprobante por correo cuyo envío falla dice el motivo del servidor, no que falló la plantilla.
    correo("casa@central.com.ar");
    salida_->fijaDestino("3 - Enviar por e-mail", "1");
    salida_->enviaCorreo = [](const QString&, const QString&, const QString&, const QString&, const QString&) {
        throw Aviso("No se pudo enviar el correo a casa@central.com.ar por smtp.x: el servidor rechazó el usuario o la clave.");
    };
    caja = respondeCaja("Aceptar");
    EXPECT_FALSE(salida_->imprimeComprobante("factura.rpt", 1));
    EXPECT_EQ(caja->texto, "No se pudo enviar el correo a casa@central.com.ar por smtp.x: el servidor rechazó el usuario o la clave.");
}

TEST_F(SalidaDeInformes, CadaEntradaDelPanelLanzaSuInformeConElSujetoDeSuPantalla) {
    panel();
    // El estado de cuentas abre con el período del panel; se elige la cuenta 1.
    QDate desdeMostrado;
    auto cuenta = [&desdeMostrado] {
        alAbrirse<PanSelCta>([&desdeMostrado](PanSelCta* p) {
            desdeMostrado = p->findChild<QDateEdit*>("dt1")->date();
            p->findChild<QComboBox*>("Combo1")->setCurrentIndex(p->findChild<QComboBox*>("Combo1")->findData(1));
            p->findChild<QPushButton*>("Command1")->click();
        });
    };
    const std::tuple<const char*, std::function<void()>, const char*> entradas[] = {
        {"Label27", {}, "Resumen de ventas por día"},
        {"Label32", {}, "Deuda de clientes"},
        {"Label36", {}, "Ranking de ventas por cliente"},
        {"Label38", {}, "Ranking de artículos vendidos"},
        {"Label40", {}, "Lista de precios"},
        {"Label42", {}, "Inventario valorizado"},
        {"Label44", {}, "Compras"},
        {"label46", {}, "Deuda con proveedores"},
        {"Label25", eligiendo<PanPrinComprobantes>("Option1"), "Comprobantes emitidos"},
        {"Label25", eligiendo<PanPrinComprobantes>("Option2"), "Documentos no comerciales"},
        {"Label30", eligiendo<PanRepSelArt>("Check1"), "Artículos vendidos"},
        {"Label34", eligiendo<PanRepSelVen>("Check1"), "Ventas por cliente"},
        {"Label48", cuenta, "Estado de cuentas"},
    };
    for (const auto& [etiqueta, intermedia, titulo] : entradas) {
        pedidos_.clear();
        if (intermedia) intermedia();
        pulsa(etiqueta);
        EXPECT_EQ(pedidos_, QStringList{QString::fromUtf8(titulo)}) << etiqueta;
    }
    EXPECT_EQ(desdeMostrado, QDate(2026, 11, 1));
    ASSERT_EQ(csv().size(), 1); // el movimiento de la cuenta 1 en el período
    EXPECT_TRUE(csv()[0].contains("Venta a O'Brien"));

    // Cancelar la pantalla intermedia no lanza nada; el catálogo libre trae todas las definiciones.
    pedidos_.clear();
    auto cancelada = alAbrirse<PanRepSelArt>([](PanRepSelArt* p) { p->reject(); });
    pulsa("Label30");
    EXPECT_TRUE(cancelada->vista && pedidos_.isEmpty());
    auto catalogo = alAbrirse<PanPrintCrystal>([](PanPrintCrystal* p) {
        EXPECT_GT(p->lista()->count(), 20);
        p->reject();
    });
    pulsa("lblCatalogoInformes");
    EXPECT_TRUE(catalogo->vista);
}

TEST_F(SalidaDeInformes, ElFaltanteVaALaVentanaYAhiQuedaHastaQueLaListaDePreciosVuelveALaLista) {
    panel();
    a().ejecuta("INSERT INTO Articulos (Codigo, Descripcion, idRubro, StockActual, StockMinimo) "
                "VALUES ('F1', 'Falta esto', 1, 1, 5), ('S1', 'Sobra esto', 2, 9, 5)");
    ASSERT_TRUE(InformeFaltante(*salida_, QDate(2026, 11, 23)));
    ASSERT_NE(salida_->ultimoVisor(), nullptr);
    EXPECT_EQ(salida_->ultimoVisor()->informe().filas, 1);
    EXPECT_TRUE(salida_->ultimoVisor()->informe().cuerpo.contains("Falta esto"));
    // Un informe del panel sale también en la ventana, hasta que la lista de precios vuelve a tomar el
    // destino de la lista: al archivo, el rubro 2. La caja del día, completa, también al archivo.
    pulsa("Label42");
    ASSERT_TRUE(InformeListaPrecios(*salida_, 2, true, QDate(2026, 11, 23)));
    EXPECT_EQ(pedidos_, QStringList{"Lista de precios por código"});
    EXPECT_TRUE(csv().size() == 1 && csv()[0].contains("Sobra esto"));
    ASSERT_TRUE(InformeCaja(*salida_, QDate(2026, 11, 6), true));
    EXPECT_EQ(pedidos_.last(), "Caja completa");
    EXPECT_EQ(csv().size(), 1);
}

TEST_F(SalidaDeInformes, UnArticuloOTodosPeroNoLasDosCosasNiNinguna) {
    PanRepSelArt art(QDate(2026, 11, 1), QDate(2026, 11, 30));
    art.show();
    for (const bool conCodigo : {false, true}) {
        art.findChild<QLineEdit*>("Text1")->setText(conCodigo ? "A'1" : "");
        art.findChild<QCheckBox*>("Check1")->setChecked(conCodigo);
        auto caja = respondeCaja("Aceptar");
        art.findChild<QPushButton*>("Command1")->click();
        EXPECT_EQ(caja->titulo + u'|' + caja->texto, "Error|O un articulo o todos, debe borrar el codigo!");
        EXPECT_EQ(art.result(), 0);
    }
    art.findChild<QCheckBox*>("Check1")->setChecked(false);
    art.findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(std::tuple(art.result(), art.todos(), art.codigo()), std::tuple(int(QDialog::Accepted), false, QStringLiteral("A'1")));
}

TEST_F(SalidaDeInformes, CatalogoLibreListaCadaDefinicionUnaVezYExportaConLaPreguntaDelSistema) {
    QDir(base_->carpeta()).mkpath("reportes");
    QFile::copy(BuscaDefinicion("listacajasimple.rpt", QString()), ruta("reportes/listacajasimple.rpt"));
    PanPrintCrystal p(*salida_, *conf_);
    QStringList nombres;
    for (int i = 0; i < p.lista()->count(); ++i) nombres << p.lista()->item(i)->text();
    EXPECT_EQ(nombres.count("listacajasimple.rpt"), 1);
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
        EXPECT_EQ(caja->titulo + u'|' + caja->texto, "Atención|El archivo " + html + " ya existe, desea sobreescribirlo?");
        EXPECT_EQ(leeArchivo(html) == "viejo", *boton == 'N') << boton;
    }
    // Imprimir deja el destino en la impresora para los informes siguientes; Vista Previa, en la ventana.
    salida_->eligeImpresora = [](QPrinter&) { return false; };
    p.imprimir();
    EXPECT_EQ(salida_->destino(), SalidaInformes::Impresora);
    p.vistaPrevia();
    EXPECT_EQ(salida_->destino(), SalidaInformes::Ventana);
    EXPECT_EQ(salida_->ultimoVisor()->informe().filas, 3);
    // Por correo: la página HTML de la carpeta de datos, a quien dice la pantalla del correo.
    QStringList enviado;
    salida_->enviaCorreo = [&](const QString& para, const QString&, const QString& asunto, const QString&, const QString& archivo) {
        enviado = {para, asunto, archivo};
    };
    alAbrirse<PanMailto>([](PanMailto* m) {
        m->findChild<QLineEdit*>("txEnviarA")->setText("contador@estudio.com.ar");
        m->fijaAsunto("Caja de noviembre");
        m->findChild<QPushButton*>("Command1")->click();
    });
    respondeCaja("Aceptar");
    p.enviarMail();
    EXPECT_EQ(enviado, QStringList({"contador@estudio.com.ar", "Caja de noviembre", ruta("reporte.html")}));
}

// Módulo de envíos: la página HTML con las secciones elegidas del período, a quién va y qué dice si
// falta el destino o el servidor no atiende.
TEST_F(SalidaDeInformes, MensajeriaEnviaLasSeccionesElegidasDelPeriodo) {
    a().ejecuta("INSERT INTO Articulos (Codigo, Descripcion, PrecioFinal) VALUES ('A1', 'Yerba <1 kg>', 10)");
    a().ejecuta("INSERT INTO Comprobantes (Factura, Fecha, Nombre, Total) VALUES ('B0001-00000007', ?, 'Ana', 10), "
                "('B0001-00000099', ?, 'Ana', 10)",
                {QDate(2026, 11, 10), QDate(2026, 12, 10)});
    a().ejecuta("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, SubTotal) SELECT idComprobante, 1, 1, 10 FROM Comprobantes");
    PanMensajeria p(a(), *conf_, reloj_);
    // El envío real se prueba con el correo; aquí se anota lo que se manda y sólo sigue hacia 127.0.0.1.
    QStringList envios;
    const auto real = p.envia;
    p.envia = [&](const DatosCorreo& d, const QString& para, const QString& asunto, const QString& cuerpo, const QString& nombre,
                  const QString& adjunto) {
        envios << QStringList({para, nombre, asunto, cuerpo.trimmed(), leeArchivo(adjunto)}).join(u'|');
        if (d.smtp.startsWith("127.")) real(d, para, asunto, cuerpo, nombre, adjunto);
    };
    p.show();
    auto envia = [&p] { // "Conectar y enviar": título y texto de la caja que responde
        auto caja = respondeCaja("Aceptar");
        p.findChild<QPushButton*>("BotConn")->click();
        return caja->titulo + u'|' + caja->texto;
    };
    auto configura = [&](const char* servidor) {
        DatosCorreo d;
        d.destino = "central@almacen.com.ar";
        d.destinoNombre = "Casa Central";
        d.smtp = QString::fromLatin1(servidor);
        d.tituloMensaje = "Novedades de la sucursal";
        GrabaDatosCorreo(*conf_, d, false);
    };
    EXPECT_EQ(envia(), "Error|Verificar datos de configuración!");
    EXPECT_TRUE(envios.isEmpty());

    configura("smtp.correo.com.ar");
    auto* desde = p.findChild<QDateEdit*>("DTPicker2");
    EXPECT_EQ(desde->date(), QDate(2026, 11, 23));
    desde->setDate(QDate(2026, 11, 1));
    p.findChild<QDateEdit*>("DTPicker3")->setDate(QDate(2026, 11, 30));
    p.findChild<QCheckBox*>("Check1")->setChecked(true);
    p.findChild<QCheckBox*>("Check2")->setChecked(true);
    EXPECT_EQ(envia(), "Envío|Información enviada a central@almacen.com.ar");
    ASSERT_EQ(envios.size(), 1);
    EXPECT_TRUE(envios[0].startsWith("central@almacen.com.ar|Casa Central|Novedades de la sucursal|Informacion de 01/11/2026 al 30/11/2026|"));
    EXPECT_EQ(discrepancias(envios[0], {"I n f o r m e : Lista de Precios / Stock al 23/11/2026", "I n f o r m e : Ventas al 23/11/2026",
                                        "B0001-00000007", "Yerba &lt;1 kg&gt;"},
                            {"Movimientos de Stock", "B0001-00000099"}),
              "");
    EXPECT_TRUE(p.archivoEnvio().startsWith(base_->carpeta()));
    // Sin ninguna sección el correo sale igual, con el adjunto vacío; un servidor que no atiende se dice.
    for (int i = 1; i <= 4; ++i) p.findChild<QCheckBox*>(QStringLiteral("Check%1").arg(i))->setChecked(false);
    configura("127.0.0.1:1");
    EXPECT_TRUE(envia().contains("|No se pudo enviar el correo a central@almacen.com.ar"));
    ASSERT_EQ(envios.size(), 2);
    // La página adjunta declara su juego de caracteres; sin secciones no lleva tablas.
    EXPECT_EQ(discrepancias(envios[0], {"charset=utf-8", "10/11/2026"}, {"2026-11-10"}), "");
    EXPECT_EQ(discrepancias(envios[1], {"al 30/11/2026|<HTML><HEAD>", "charset=utf-8", "</BODY></HTML>"}, {"<TABLE"}), "");
}

TEST_F(SalidaDeInformes, ConfiguracionDelCorreoNuncaMuestraLaClaveYVaciaLaConserva) {
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
