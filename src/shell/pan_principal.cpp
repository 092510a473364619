#include "shell/pan_principal.h"
#include "access/niveles.h"
#include "access/ui/panel_usuarios.h"
#include "articles/ui/pan_borr_mov_stock.h"
#include "articles/ui/pan_etiquetas.h"
#include "articles/ui/pan_importa_excel.h"
#include "articles/ui/pan_matrices.h"
#include "articles/ui/panel_articulos.h"
#include "cash/ui/panel_caja.h"
#include "customers/ui/pan_comisiones.h"
#include "customers/ui/pan_tabla_premios_vip.h"
#include "customers/ui/panel_clientes.h"
#include "maintenance/ui/pan_backup.h"
#include "maintenance/ui/pan_restaurar.h"
#include "maintenance/ui/pan_tablas.h"
#include "maintenance/ui/purgar_datos.h"
#include "reports/ui/pan_mensajeria.h"
#include "reports/ui/panel_informes.h"
#include "reports/ui/salida_informes.h"
#include "sales/tipos_comprobante.h"
#include "sales/ui/pan_comprobantes.h"
#include "sales/ui/pan_corr_num.h"
#include "sales/ui/panel_venta.h"
#include "suppliers/ui/panel_proveedores.h"
#include "maintenance/ui/pan_help.h"
#include "maintenance/ui/pan_region.h"
#include "maintenance/ui/pan_zonas.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"
#include "store/entrada.h"
#include "store/formato.h"
#include "store/rutinas.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QApplication>
#include <QCoreApplication>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QFormLayout>
#include <QFrame>
#include <QGroupBox>
#include <QKeyEvent>
#include <QToolButton>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QScrollArea>
#include <QSqlQuery>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>
#include <functional>

namespace orv {

namespace {

// Con la letra subrayada, Alt + esa letra abre el panel desde cualquier lugar de la ventana.
const char* const kCaptions[8] = {"&Artículos", "C&lientes", "&Caja", "&Vender", "&Informes", "&Mensajería",
                                  "&Utilidades", "&Proveedores"};

const QString kEstiloBarra = QStringLiteral(
    "QFrame#barraLateral { background: #243447; }"
    "QFrame#barraLateral QPushButton { color: #e8eef4; background: transparent; border: none;"
    "  text-align: left; padding: 10px 18px; font-size: 11pt; }"
    "QFrame#barraLateral QPushButton:hover { background: #30455c; }"
    "QFrame#barraLateral QPushButton:checked { background: #3d6a99; font-weight: bold; }"
    "QFrame#barraLateral QPushButton:disabled { color: #6f8296; }"
    "QFrame#barraLateral QLabel { color: #e8eef4; }");

// Un grupo de enlaces de "Utilidades": cada uno con su nombre de control, su texto y lo que abre.
struct EnlaceUtilidad {
    const char* nombre;
    const char* texto; // UTF-8
    std::function<void()> abre;
};

QGroupBox* grupoDeEnlaces(const QString& titulo, std::initializer_list<EnlaceUtilidad> enlaces, QWidget* padre) {
    auto* grupo = new QGroupBox(titulo, padre);
    auto* capa = new QVBoxLayout(grupo);
    for (const EnlaceUtilidad& e : enlaces) {
        QPushButton* enlace = Enlace(QString::fromLatin1(e.nombre), QString::fromUtf8(e.texto), grupo);
        capa->addWidget(enlace);
        QObject::connect(enlace, &QPushButton::clicked, grupo, e.abre);
    }
    return grupo;
}

} // namespace

QString PanPrincipal::tituloVentana(const QString& nombreUsuario) {
    return QStringLiteral("Orvanta ver %1.%2.%3 | Usuario : ")
               .arg(ORVANTA_VERSION_MAYOR)
               .arg(ORVANTA_VERSION_MENOR)
               .arg(ORVANTA_VERSION_REVISION) +
           nombreUsuario;
}

QStringList PanPrincipal::archivosDistribucion() {
    return {QStringLiteral("data1_PanPrincipal"), QStringLiteral("data2_PanPrincipal"),
            QStringLiteral("data3_PanPrincipal"), QStringLiteral("data5_PanPrincipal"),
            QStringLiteral("dataUsers_PanPrincipal")};
}

PanPrincipal::PanPrincipal(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf, const Reloj& reloj,
                           QWidget* padre)
    : QMainWindow(padre), almacen_(almacen), estado_(estado), conf_(conf), reloj_(reloj),
      termina_([](int codigo) { QCoreApplication::exit(codigo); }) {
    setObjectName(QStringLiteral("PanPrincipal"));
    armaVentana();
    carga();
    // F1 en cualquier ventana del programa abre la ayuda de esa pantalla.
    qApp->installEventFilter(this);
}

PanPrincipal::~PanPrincipal() = default;

QWidget* PanPrincipal::panel(int indice) const {
    return indice >= 0 && indice < kPaneles ? paneles_[size_t(indice)] : nullptr;
}

void PanPrincipal::armaVentana() {
    salida_ = new SalidaInformes(almacen_, conf_, estado_, reloj_, this);
    auto* centro = new QWidget(this);
    auto* fila = new QHBoxLayout(centro);
    fila->setContentsMargins(0, 0, 0, 0);
    fila->setSpacing(0);

    armaBarraLateral(centro);
    fila->addWidget(barraLateral_);

    // Encabezado con la fecha y los paneles apilados.
    auto* derecha = new QVBoxLayout;
    derecha->setContentsMargins(24, 14, 24, 16);
    derecha->setSpacing(12);
    armaEncabezado(centro);
    derecha->addWidget(encabezado_);

    armaPaneles(centro);
    derecha->addWidget(pila_, 1);
    fila->addLayout(derecha, 1);
    setCentralWidget(centro);

    auto* estadoTxt = new QLabel(this);
    estadoTxt->setObjectName(QStringLiteral("StatusTxt"));
    statusBar()->addWidget(estadoTxt, 1);
    statusBar()->setSizeGripEnabled(true);

    timer1_ = new QTimer(this);
    timer1_->setObjectName(QStringLiteral("Timer1"));
    timer1_->setInterval(4500);
    connect(timer1_, &QTimer::timeout, this,
            [this] { fecha_->setText(Formato(QVariant(reloj_.hoy()), QStringLiteral("long date"))); });

    connect(usuarios_, &PanelUsuarios::usuariosCambiados, venta_, &PanelVenta::llenaVendedores);
    connect(venta_, &PanelVenta::agrandarPulsado, this, &PanPrincipal::command55);

    // Comisiones del vendedor de la fila, desde el panel de usuarios; una liquidación puede
    // asentarse en la caja.
    connect(usuarios_, &PanelUsuarios::comisionesPedidas, this, [this](qint64 idUsuario) {
        PanComisiones pantalla(almacen_, estado_, reloj_, *salida_, idUsuario, this);
        pantalla.exec();
        refrescaCaja();
    });
}

// Columna de botones laterales, con la marca arriba.
void PanPrincipal::armaBarraLateral(QWidget* centro) {
    barraLateral_ = new QFrame(centro);
    barraLateral_->setObjectName(QStringLiteral("barraLateral"));
    barraLateral_->setStyleSheet(kEstiloBarra);
    barraLateral_->setFixedWidth(180);
    auto* columna = new QVBoxLayout(barraLateral_);
    columna->setContentsMargins(0, 16, 0, 16);
    columna->setSpacing(2);
    auto* marca = new QLabel(QStringLiteral("Orvanta"), barraLateral_);
    QFont fm = marca->font();
    fm.setPointSizeF(fm.pointSizeF() * 1.7);
    fm.setBold(true);
    marca->setFont(fm);
    marca->setContentsMargins(18, 0, 0, 14);
    columna->addWidget(marca);
    auto* grupo = new QButtonGroup(this);
    grupo->setExclusive(true);
    for (int i = 0; i < 8; ++i) {
        auto* b = new QPushButton(QString::fromUtf8(kCaptions[i]), barraLateral_);
        b->setObjectName(QStringLiteral("botPrincipal%1").arg(i));
        b->setCheckable(i != 5);
        b->setCursor(Qt::PointingHandCursor);
        b->setFocusPolicy(Qt::TabFocus);
        if (i != 5) grupo->addButton(b);
        connect(b, &QPushButton::clicked, this, [this, i] { botPrincipal(i); });
        botones_[size_t(i)] = b;
        columna->addWidget(b);
    }
    // Mensajería no tiene panel: abre su pantalla propia, y el botón no queda marcado.
    botones_[5]->setCheckable(false);
    columna->addStretch(1);
    // Al pie, la ayuda: el dibujo y su texto abren lo mismo que F1 en el panel a la vista.
    auto* filaAyuda = new QHBoxLayout;
    filaAyuda->setContentsMargins(12, 0, 0, 0);
    filaAyuda->setSpacing(0);
    auto* image4 = new QToolButton(barraLateral_);
    image4->setObjectName(QStringLiteral("Image4"));
    image4->setIcon(style()->standardIcon(QStyle::SP_MessageBoxQuestion));
    image4->setIconSize(QSize(22, 22));
    image4->setAutoRaise(true);
    image4->setCursor(Qt::PointingHandCursor);
    image4->setToolTip(QStringLiteral("Ayuda (F1)"));
    auto* label1 = new QPushButton(QStringLiteral("Ayuda"), barraLateral_);
    label1->setObjectName(QStringLiteral("Label1"));
    label1->setCursor(Qt::PointingHandCursor);
    label1->setFocusPolicy(Qt::TabFocus);
    label1->setToolTip(QStringLiteral("Ayuda (F1)"));
    filaAyuda->addWidget(image4);
    filaAyuda->addWidget(label1, 1);
    columna->addLayout(filaAyuda);
    connect(image4, &QToolButton::clicked, this, &PanPrincipal::ayudaDelPanel);
    connect(label1, &QPushButton::clicked, this, &PanPrincipal::ayudaDelPanel);
}

// Encabezado: destino y copias de los informes, y la fecha.
void PanPrincipal::armaEncabezado(QWidget* centro) {
    encabezado_ = new QFrame(centro);
    encabezado_->setObjectName(QStringLiteral("encabezado"));
    auto* cabeza = new QHBoxLayout(encabezado_);
    cabeza->setContentsMargins(0, 0, 0, 0);
    cabeza->setSpacing(6);
    // Destino y copias de los informes: de la ventana, a la vista desde cualquier panel.
    combo1_ = new QComboBox(encabezado_);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    combo1_->setToolTip(QStringLiteral("A dónde salen los informes y los comprobantes"));
    text10_ = new QLineEdit(encabezado_);
    text10_->setObjectName(QStringLiteral("Text10"));
    // Sólo cifras, de 1 a 999: ni separadores de miles ni decimales que se pudieran leer de otra forma.
    text10_->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[1-9][0-9]{0,2}")), text10_));
    text10_->setMaximumWidth(48);
    text10_->setAlignment(Qt::AlignRight);
    auto* salida = new QLabel(QStringLiteral("Informes :"), encabezado_);
    salida->setBuddy(combo1_);
    auto* copias = new QLabel(QStringLiteral("Copias :"), encabezado_);
    copias->setBuddy(text10_);
    cabeza->addWidget(salida);
    cabeza->addWidget(combo1_);
    cabeza->addSpacing(10);
    cabeza->addWidget(copias);
    cabeza->addWidget(text10_);
    cabeza->addStretch(1);
    fecha_ = new QLabel(encabezado_);
    fecha_->setObjectName(QStringLiteral("Label11"));
    QFont ff = fecha_->font();
    ff.setPointSizeF(ff.pointSizeF() * 1.1);
    fecha_->setFont(ff);
    cabeza->addWidget(fecha_);
    auto* ayuda = new QPushButton(style()->standardIcon(QStyle::SP_MessageBoxQuestion), QStringLiteral("Ayuda"), encabezado_);
    ayuda->setObjectName(QStringLiteral("Command57"));
    ayuda->setToolTip(QStringLiteral("Ayuda del panel a la vista (F1)"));
    ayuda->setFocusPolicy(Qt::TabFocus);
    cabeza->addSpacing(10);
    cabeza->addWidget(ayuda);
    connect(ayuda, &QPushButton::clicked, this, &PanPrincipal::ayudaDelPanel);
}

// Los paneles apilados, cada uno en su zona desplazable.
void PanPrincipal::armaPaneles(QWidget* centro) {
    pila_ = new QStackedWidget(centro);
    pila_->setObjectName(QStringLiteral("pilaPaneles"));
    bienvenida_ = armaBienvenida();
    pila_->addWidget(bienvenida_);

    // Un artículo que cambia en el panel cambia también la lista de artículos de la venta.
    articulos_ = new PanelArticulos(almacen_, estado_, conf_, reloj_, *salida_,
                                    {[this] { venta_->llenaArticulos(); }}, pila_);
    // Una cobranza asentada en la caja se ve en el panel de caja.
    clientes_ = new PanelClientes(almacen_, estado_, reloj_, *salida_, {[this] { refrescaCaja(); }}, pila_);
    caja_ = new PanelCaja(almacen_, estado_, reloj_, *salida_, pila_);
    venta_ = new PanelVenta(almacen_, estado_, conf_, pila_);
    venta_->fijaSalida(salida_);
    venta_->fijaReloj(&reloj_);
    connect(venta_, &PanelVenta::comprobanteRegistrado, this, &PanPrincipal::refrescaCaja);
    // Una compra puede dar de alta un artículo desde su ficha; compras, pagos y borrados cambian el
    // stock, la caja y los costos.
    proveedores_ = new PanelProveedores({almacen_, estado_, conf_, reloj_, *salida_, [this] { return articulos_->articuloNuevo(); },
                                         [this] {
                                             articulos_->refresca();
                                             refrescaCaja();
                                         }},
                                        pila_);
    usuarios_ = new PanelUsuarios(almacen_, pila_);
    paneles_ = {articulos_, clientes_, caja_, venta_, armaInformes(), nullptr, armaUtilidades(), proveedores_,
                usuarios_};
    // Cada panel en su zona desplazable: en una pantalla chica aparecen las barras en lugar de
    // quedar controles fuera de la vista.
    for (int i = 0; i < kPaneles; ++i)
        if (QWidget* p = paneles_[size_t(i)]) {
            p->setObjectName(QStringLiteral("PanelPrincipal%1").arg(i));
            auto* zona = new QScrollArea(pila_);
            zona->setObjectName(QStringLiteral("zonaPanel%1").arg(i));
            zona->setWidgetResizable(true);
            zona->setFrameShape(QFrame::NoFrame);
            zona->setWidget(p);
            pila_->addWidget(zona);
        }
}

QWidget* PanPrincipal::armaBienvenida() {
    auto* w = new QWidget(this);
    w->setObjectName(QStringLiteral("panelPrin"));
    auto* capa = new QVBoxLayout(w);
    capa->addStretch(2);
    auto* bienvenido = new QLabel(QStringLiteral("Bienvenido!"), w);
    bienvenido->setObjectName(QStringLiteral("lblBienvenido"));
    QFont fb = bienvenido->font();
    fb.setPointSizeF(fb.pointSizeF() * 2.6);
    fb.setBold(true);
    bienvenido->setFont(fb);
    bienvenido->setAlignment(Qt::AlignCenter);
    saludo_ = new QLabel(w);
    saludo_->setObjectName(QStringLiteral("Label14"));
    QFont fs = saludo_->font();
    fs.setPointSizeF(fs.pointSizeF() * 1.5);
    saludo_->setFont(fs);
    saludo_->setAlignment(Qt::AlignCenter);
    auto* ayuda = new QLabel(QStringLiteral("Elija en la columna de la izquierda con qué desea trabajar."), w);
    ayuda->setAlignment(Qt::AlignCenter);
    ayuda->setEnabled(false);
    auto* label13 = Enlace(QStringLiteral("Label13"), QStringLiteral("¿Primera vez? Presione F1 (o aquí) para ver la ayuda."), w);
    connect(label13, &QPushButton::clicked, this, &PanPrincipal::ayudaDelPanel);
    capa->addWidget(bienvenido);
    capa->addWidget(saludo_);
    capa->addSpacing(12);
    capa->addWidget(ayuda);
    capa->addWidget(label13, 0, Qt::AlignCenter);
    capa->addStretch(3);
    return w;
}

QWidget* PanPrincipal::armaInformes() {
    informes_ = new PanelInformes(almacen_, conf_, *salida_, this);
    return informes_;
}

QWidget* PanPrincipal::armaUtilidades() {
    auto* w = new QWidget(this);
    auto* capa = new QVBoxLayout(w);
    capa->setContentsMargins(0, 0, 0, 0);
    capa->setSpacing(14);
    capa->addWidget(TituloPanel(QStringLiteral("Utilidades y Configuraciones"), w));
    // Los grupos en dos columnas: a la izquierda lo de todos los días, a la derecha la configuración
    // y el mantenimiento.
    auto* columnas = new QHBoxLayout;
    columnas->setSpacing(18);
    auto* izquierda = new QVBoxLayout;
    auto* derecha = new QVBoxLayout;
    for (QVBoxLayout* c : {izquierda, derecha}) {
        c->setSpacing(14);
        columnas->addLayout(c, 1);
    }
    capa->addLayout(columnas);
    izquierda->addWidget(grupoDeEnlaces(
        QStringLiteral("Sistema"),
        {{"Label37", "Usuarios del sistema",
          [this] {
              muestraPanel(paneles_[8]);
              botones_[6]->setChecked(true);
              usuarios_->grilla()->setFocus();
          }},
         {"Label39", "Comprobantes",
          [this] {
              PanCorrNum dialogo(almacen_, conf_, this);
              dialogo.exec();
              // Vuelve a llenar el tipo de la venta y elige el que tenía.
              venta_->llenaTiposComprobante();
          }},
         {"label28", "Eliminar ventas",
          [this] {
              PanBorraFactura dialogo(almacen_, reloj_.hoy(), this);
              dialogo.exec();
              refrescaCaja();
          }},
         {"Label31", "Elimina Stock", [this] { panBorrMovStock(almacen_, this).exec(); }},
         {"lblResetGrillas", "Reset Grillas", [this] { resetGrillas(); }}},
        w));
    // Herramientas del catálogo: las características de la matriz y las etiquetas de código de barra
    // de las compras de un día.
    izquierda->addWidget(grupoDeEnlaces(QStringLiteral("Herramientas"),
                                   {{"lblMatrices", "Matrices de artículos", [this] { panMatrices(almacen_, this).exec(); }},
                                    {"lblEtiquetas", "Etiquetas Cgo Barras", [this] { panEtiq(almacen_, reloj_, this).exec(); }}},
                                   w));
    // Datos del país y del negocio, la terminal, las zonas de los clientes y las situaciones de IVA.
    derecha->addWidget(grupoDeEnlaces(
        QStringLiteral("Configuración"),
        {{"Label43", "Datos Locales", [this] { datosLocales(); }},
         {"lblConfRed", "Configuración de red", [this] { PanConfRed(conf_, estado_, this).exec(); }},
         {"lblZonas", "Zonas y Localidades", [this] { panZonas(almacen_, this).exec(); }},
         {"lblSitIvas", "Situaciones de IVA", [this] { panSitIvas(almacen_, this).exec(); }}},
        w));
    // Los premios que canjean los clientes con tarjeta.
    izquierda->addWidget(grupoDeEnlaces(
        QStringLiteral("Clientes con tarjeta"),
        {{"lblTablaPremiosVIP", "Tabla de premios VIP", [this] { PanTablaPremiosVIP(almacen_, conf_, estado_, reloj_, this).exec(); }}},
        w));
    // Respaldo y restauración del almacén, la purga de los archivos de trabajo y el explorador de
    // los archivos principales.
    derecha->addWidget(grupoDeEnlaces(
        QStringLiteral("Mantenimiento"),
        {{"Label47", "Respaldar B.Datos", [this] { PanBackup(almacen_, conf_, reloj_, this).exec(); }},
         {"lblRestaurar", "Restaurar B.Datos",
          [this] {
              panRestaurar pantalla(almacen_, conf_, reloj_, this);
              pantalla.exec();
              // Lo que muestran los paneles ya no es lo del almacén: se vuelve a entrar.
              if (!pantalla.restaurado()) return;
              sinGuardar_ = true;
              close();
              termina_(0);
          }},
         {"Label29", "Purgar datos",
          [this] {
              if (!PurgarDatos(almacen_, conf_, reloj_, this)) return;
              articulos_->refresca();
              proveedores_->carga();
              refrescaCaja();
          }},
         {"Label52", "Multi-Tablas", [this] { panTablas(almacen_, this).exec(); }}},
        w));
    // Migración de artículos, clientes o proveedores desde una planilla de cálculo.
    derecha->addWidget(grupoDeEnlaces(QStringLiteral("Planillas"),
                                   {{"lblImportaExcel", "Importar datos de Planillas de cálculo",
                                     [this] {
                                         panImportaExcel(almacen_, conf_, this).exec();
                                         // Los paneles muestran lo importado.
                                         articulos_->refresca();
                                         clientes_->refresca();
                                         proveedores_->carga();
                                     }}},
                                   w));
    izquierda->addStretch(1);
    derecha->addStretch(1);
    capa->addStretch(1);
    return w;
}

void PanPrincipal::carga() {
    // 1. Centrar y texto fijo de la línea de estado. La ventana abre maximizada; al restaurarla
    // queda de un tamaño que cabe en la pantalla.
    const QRect libre = screen() ? screen()->availableGeometry() : QRect(0, 0, 1280, 800);
    resize(qMin(1180, libre.width()), qMin(760, libre.height()));
    CentrarVentana(this);
    setWindowState(windowState() | Qt::WindowMaximized);
    findChild<QLabel*>(QStringLiteral("StatusTxt"))
        ->setText(QStringLiteral("Terminal %1  ·  %2").arg(estado_.IdRed).arg(estado_.almacenAbierto));
    fecha_->setText(Formato(QVariant(reloj_.hoy()), QStringLiteral("long date")));
    timer1_->start();

    // 2. Destino y copias de los informes.
    preparaSalidaInformes();

    // 3. Fechas del día.
    primeraActivacion_ = false;
    const QDate hoy = reloj_.hoy();
    informes_->fijaPeriodo(hoy, hoy);
    caja_->fijaPeriodo(hoy, hoy);

    // 4 y 5. Tipos de comprobante y el predeterminado. Cada paso de la carga tiene su guardia:
    // una falla se dice y la carga sigue.
    Intenta(this, [&] {
        if (const auto tipo = TipoComprobantePredeterminado(almacen_, conf_))
            estado_.idTipoComprobanteActual = qint32(*tipo);
    });
    venta_->llenaTiposComprobante();

    // 6. Valores de la venta en curso.
    reiniciaVentaEnCurso();

    // 7. Porcentaje de impuesto.
    venta_->leeCoefIva();

    // 8. Artículos y vendedores.
    venta_->llenaArticulos();
    venta_->llenaVendedores();

    // 9. Bienvenida al frente y niveles.
    pila_->setCurrentWidget(bienvenida_);
    aplicaNiveles();

    // 10. Saludo y título.
    saludo_->setText(QStringLiteral("Hola ") + estado_.NombreUsuarioActual + QStringLiteral(" !!"));
    setWindowTitle(tituloVentana(estado_.NombreUsuarioActual));

    // 11 y 12. Consultas de las grillas y sus distribuciones guardadas.
    cargaGrillas();

    // 13. Formas de pago, impuesto otra vez y el usuario actual como vendedor.
    venta_->llenaFormasPago();
    venta_->leeCoefIva();
    venta_->seleccionaVendedor(estado_.idUsuarioActual);

    // 14. Precio en la venta; sin poder leer el nivel, las líneas no se corrigen.
    bool corrigePrecios = false;
    Intenta(this, [&] {
        corrigePrecios = TieneNivel(almacen_, estado_.idNivelActual, QStringLiteral("CamPreVentaArticulos"));
    });
    venta_->fijaSoloLectura(!corrigePrecios);
}

void PanPrincipal::reiniciaVentaEnCurso() {
    estado_.DescuentoClienteActual = 0;
    estado_.MontDescuentoActual = Dinero();
    estado_.NombreClienteActual = QStringLiteral("Cons.Final");
    estado_.idTipoIvaActual = 1;
    estado_.CuitClienteActual.clear();
    estado_.FormaPagoActual = QStringLiteral("EFVO");
    estado_.ObservacionesActual.clear();
}

// Destino y copias de los informes, como quedaron guardados; cada cambio se guarda y pasa a la
// salida de los informes.
void PanPrincipal::preparaSalidaInformes() {
    combo1_->addItems({QStringLiteral("0 - A una ventana"), QStringLiteral("1 - A la impresora"),
                       QStringLiteral("2 - A un archivo"), QStringLiteral("3 - Enviar por e-mail"),
                       QStringLiteral("4 - Vista previa")});
    // Un valor guardado que no es un número entero de la lista (o de 1 a 999 copias) no se
    // redondea ni se corta: se toma el de siempre.
    const QString modo = conf_.lee(clave::miscelaneas, QStringLiteral("ModoPrint"));
    combo1_->setCurrentIndex(int(LeeEntero(modo, 0, combo1_->count() - 1).value_or(0)));
    const QString copias = conf_.lee(clave::miscelaneas, QStringLiteral("CopiasPrint"));
    text10_->setText(QString::number(LeeEntero(copias, 1, 999).value_or(1)));
    // Como al elegir en la lista: el destino y las copias pasan a la salida de los informes.
    salida_->fijaDestino(combo1_->currentText(), text10_->text());
    connect(combo1_, &QComboBox::currentIndexChanged, this, [this](int i) {
        salida_->fijaDestino(combo1_->currentText(), text10_->text());
        conf_.graba(clave::miscelaneas, QStringLiteral("ModoPrint"), QString::number(i));
    });
    connect(text10_, &QLineEdit::textChanged, this, [this](const QString& t) {
        conf_.graba(clave::miscelaneas, QStringLiteral("CopiasPrint"), t);
        salida_->fijaDestino(combo1_->currentText(), t);
    });
}

void PanPrincipal::cargaGrillas() {
    articulos_->carga();
    clientes_->carga();
    proveedores_->carga();
    refrescaCaja();
    for (const auto& [grilla, archivo] : grillasConArchivo()) grilla->cargaDistribucion(archivo);
}

std::vector<std::pair<Grilla*, QString>> PanPrincipal::grillasConArchivo() const {
    const QStringList archivos = archivosDistribucion();
    const QDir carpeta(conf_.carpetaDatos());
    return {{articulos_->grilla(), carpeta.filePath(archivos[0])},
            {clientes_->grilla(), carpeta.filePath(archivos[1])},
            {caja_->grilla(), carpeta.filePath(archivos[2])},
            {proveedores_->grilla(), carpeta.filePath(archivos[3])},
            {usuarios_->grilla(), carpeta.filePath(archivos[4])}};
}

void PanPrincipal::guardaDistribuciones() const {
    for (const auto& [grilla, archivo] : grillasConArchivo()) grilla->guardaDistribucion(archivo);
}

void PanPrincipal::refrescaCaja() { caja_->refresca(); }

void PanPrincipal::aplicaNiveles() {
    QStringList apagar;
    if (!Intenta(this, [&] {
            apagar = ControlesSinPermiso(almacen_, estado_.idNivelActual);
            modoPOS_ = ModoPOS(almacen_, estado_.idNivelActual);
        })) {
        // Sin poder leer los niveles no se concede nada.
        apagar.clear();
        for (const QString& c : OrdenAplicaNiveles()) apagar += BuscaPermiso(c)->controles;
        modoPOS_ = false;
    }
    for (const QString& nombre : apagar)
        if (QWidget* w = findChild<QWidget*>(nombre)) w->setEnabled(false);
}

int PanPrincipal::panelActual() const {
    QWidget* w = pila_->currentWidget();
    if (auto* zona = qobject_cast<QScrollArea*>(w)) w = zona->widget();
    for (int i = 0; i < kPaneles; ++i)
        if (paneles_[size_t(i)] == w) return i;
    return kBienvenida;
}

void PanPrincipal::botPrincipal(int indice) {
    if (indice < 0 || indice > 7) return;
    if (indice == 5) {
        // Mensajería: su pantalla propia, modal; el panel del frente no cambia.
        PanMensajeria mensajeria(almacen_, conf_, reloj_, this);
        mensajeria.exec();
        return;
    }
    QWidget* p = paneles_[size_t(indice)];
    muestraPanel(p);
    botones_[size_t(indice)]->setChecked(true);
    switch (indice) {
    case 0: articulos_->grilla()->setFocus(); break;
    case 1: clientes_->entra(); break;
    case 2: caja_->entra(); break;
    case 3: venta_->entra(); break;
    default: p->setFocus(); break;
    }
}

void PanPrincipal::muestraPanel(QWidget* panel) {
    // El panel está dentro de su zona desplazable, que es la que se apila.
    for (QWidget* w = panel; w; w = w->parentWidget())
        if (w->parentWidget() == pila_) {
            pila_->setCurrentWidget(w);
            return;
        }
}

void PanPrincipal::agranda(bool si) {
    agrandada_ = si;
    barraLateral_->setVisible(!si);
    encabezado_->setVisible(!si);
    if (si) muestraPanel(venta_);
    QTimer::singleShot(0, venta_, &PanelVenta::ajustaGrilla);
}

void PanPrincipal::command55() {
    QPushButton* b = venta_->botonAgrandar();
    const QString texto = b->text();
    if (texto == QStringLiteral("Maximizar")) {
        agranda(true);
        b->setText(QStringLiteral("Restaurar"));
    } else if (texto == QStringLiteral("Restaurar")) {
        agranda(false);
        b->setText(QStringLiteral("Maximizar"));
    } else if (texto == QStringLiteral("Salir")) {
        almacen_.cierra();
        close();
        termina_(0);
    }
}

void PanPrincipal::showEvent(QShowEvent* e) {
    QMainWindow::showEvent(e);
    if (primeraActivacion_) return;
    primeraActivacion_ = true;
    if (modoPOS_) {
        venta_->entra();
        command55();
        venta_->botonAgrandar()->setText(QStringLiteral("Salir"));
        setWindowState(windowState() | Qt::WindowMaximized);
    }
}

void PanPrincipal::resetGrillas() {
    if (!PreguntaSiNo(QStringLiteral("Atención! Ésta opción elimina la distribución personalizada de las columnas de "
                                     "las grillas de artículos, clientes, proveedores, usuarios y caja.\n"
                                     "Desea Continuar ?"),
                      QStringLiteral("Reestablecer"), Icono::Exclamacion, this))
        return;
    const QDir carpeta(conf_.carpetaDatos());
    for (const QString& archivo : archivosDistribucion()) QFile::remove(carpeta.filePath(archivo));
    Mensaje(QStringLiteral("Ahora el sistema se cerrará para volver a entrar con la distribución reestablecida."),
            QStringLiteral("Reestablecer"), Icono::Informacion, this);
    sinGuardar_ = true;
    close();
    termina_(0);
}

void PanPrincipal::datosLocales() {
    panRegion region(almacen_, conf_, this);
    region.exec();
    // El impuesto guardado pasa a la venta en curso; los precios finales se vuelven a calcular al
    // abrir la búsqueda de artículos.
    venta_->leeCoefIva();
    venta_->totales();
}

void PanPrincipal::abreAyuda(const QStringList& nombres) {
    panHelp ayuda(TemaDePantalla(TemasAyuda(), nombres), QApplication::activeModalWidget() ? QApplication::activeModalWidget() : this);
    ayuda.exec();
}

QString PanPrincipal::nombrePanelActual() const {
    const int i = panelActual();
    return i == kBienvenida ? bienvenida_->objectName() : paneles_[size_t(i)]->objectName();
}

void PanPrincipal::ayudaDelPanel() { abreAyuda({nombrePanelActual(), objectName()}); }

bool PanPrincipal::eventFilter(QObject* o, QEvent* e) {
    if (e->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(e)->key() == Qt::Key_F1 &&
        static_cast<QKeyEvent*>(e)->modifiers() == Qt::NoModifier && o->isWidgetType()) {
        // La tecla llega al control con el foco: su tema, o el de su panel o su ventana.
        const auto* control = static_cast<QWidget*>(o);
        QWidget* ventana = control->window();
        // Dentro de la ayuda misma, F1 no abre otra.
        if (qobject_cast<panHelp*>(ventana)) return true;
        QStringList nombres = panHelp::nombresDesde(control);
        // En la ventana principal, un control fuera de los paneles (el encabezado, la barra) da el
        // tema del panel a la vista.
        if (ventana == this) nombres.insert(qMax(qsizetype(0), nombres.size() - 1), nombrePanelActual());
        // Después de terminar este evento, para no abrir una ventana modal en medio de su entrega.
        QTimer::singleShot(0, this, [this, nombres] { abreAyuda(nombres); });
        return true;
    }
    return QMainWindow::eventFilter(o, e);
}

void PanPrincipal::closeEvent(QCloseEvent* e) {
    if (!sinGuardar_) guardaDistribuciones();
    QMainWindow::closeEvent(e);
}

} // namespace orv
