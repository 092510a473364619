#include "suppliers/ui/pan_nue_compra.h"

#include "store/entrada.h"
#include "store/formato.h"
#include "widgets/grilla.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDateEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace orv {

namespace {

QLabel* rotulo(const QString& texto, QWidget* campo, QWidget* padre) {
    auto* l = new QLabel(texto, padre);
    l->setBuddy(campo);
    return l;
}

QCheckBox* casilla(const char* nombre, const QString& texto, QWidget* padre) {
    auto* c = new QCheckBox(texto, padre);
    c->setObjectName(QString::fromLatin1(nombre));
    return c;
}

} // namespace

panNueCompra::panNueCompra(Almacen& almacen, const EstadoAplicacion& estado, const Configuracion& conf, const Reloj& reloj,
                           qint64 idProveedor, const QString& nombreProveedor, std::optional<qint64> idCompra,
                           QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), conf_(conf), idProveedor_(idProveedor),
      nombreProveedor_(nombreProveedor), idCompra_(idCompra) {
    setObjectName(QStringLiteral("panNueCompra"));
    setWindowTitle(QStringLiteral("Ingreso de compra"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 12, 16, 12);
    capa->setSpacing(8);
    capa->addWidget(TituloDialogo("lblProve", nombreProveedor_, this));
    capa->addWidget(armaEntrada());

    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("DBGrid1"));
    grilla_->fijaClave(QStringLiteral("idTmpFacCompra"));
    grilla_->setMinimumHeight(150);
    grilla_->permiteAgrupar(false);
    grilla_->ocultaColumna(QStringLiteral("idTmpFacCompra"));
    grilla_->fijaTitulo(QStringLiteral("Codigo"), QStringLiteral("Código"));
    grilla_->fijaTitulo(QStringLiteral("Descripcion"), QStringLiteral("Descripción"));
    for (const char* c : {"Unitario", "SubTotal"}) grilla_->fijaMascara(QString::fromLatin1(c), estado_.MascaraMoneda);
    grilla_->fijaAnchosIniciales({{"Codigo", 130}, {"Descripcion", 360}});
    capa->addWidget(grilla_, 1);

    auto* pie = new QHBoxLayout;
    pie->addWidget(armaPestanias(), 3);
    pie->addWidget(armaTotales(), 2);
    capa->addLayout(pie);
    QPushButton* aceptar = BotonesAlPie(this, capa, false);
    connect(aceptar, &QPushButton::clicked, this, &panNueCompra::acepta);

    dt1_->setDate(reloj.hoy());
    llenaListas();
    leeConfiguracion();
    if (idCompra_)
        cargaCompra(*idCompra_);
    else
        Intenta(this, [this] { VaciaBorradorCompra(almacen_, estado_.IdRed); });
    refrescaLineas();
    // Lo más ancho que la pantalla deja, para ver la descripción y los importes de cada línea.
    const QRect libre = screen() ? screen()->availableGeometry() : QRect(0, 0, 1280, 800);
    resize(qMin(1120, libre.width() - 40), qMin(760, libre.height() - 40));
    CentrarVentana(this);
    txtCodigo_->setFocus();
}

void panNueCompra::fijaArticuloNuevo(std::function<qint64()> f) {
    articuloNuevo_ = std::move(f);
    command6_->setEnabled(bool(articuloNuevo_));
}

QLineEdit* panNueCompra::campo(const char* nombre, int ancho, bool aDerecha) {
    auto* e = new QLineEdit(this);
    e->setObjectName(QString::fromLatin1(nombre));
    if (ancho > 0) {
        e->setMinimumWidth(ancho / 2);
        e->setMaximumWidth(ancho);
    }
    if (aDerecha) e->setAlignment(Qt::AlignRight);
    return e;
}

// La fila del artículo (por código, por código del proveedor o por su nombre) y la de la línea.
QWidget* panNueCompra::armaEntrada() {
    auto* caja = new QGroupBox(QStringLiteral("Artículo"), this);
    auto* g = new QGridLayout(caja);
    g->setHorizontalSpacing(8);
    txtCodigo_ = campo("txtCodigo", 170, false);
    text1_ = campo("Text1", 170, false);
    cboArticulos_ = campo("cboArticulos", 0, false);
    cboArticulos_->setPlaceholderText(QStringLiteral("Escriba parte de la descripción"));
    articulos_ = new QStandardItemModel(this);
    completa_ = new QCompleter(articulos_, this);
    completa_->setCaseSensitivity(Qt::CaseInsensitive);
    completa_->setFilterMode(Qt::MatchContains);
    completa_->setMaxVisibleItems(12);
    cboArticulos_->setCompleter(completa_);
    demoraLista_ = new QTimer(this);
    demoraLista_->setSingleShot(true);
    demoraLista_->setInterval(150);
    check1_ = casilla("Check1", QStringLiteral("Mostrar solo articulos del proveedor"), this);
    txtCant_ = campo("txtCant", 110);
    txtUnitario_ = campo("txtUnitario", 130);
    txtBonif_ = campo("txtBonif", 70);
    txtBonif_->setText(QStringLiteral("0"));
    command3_ = BotonPanel(QStringLiteral("Command3"), QStringLiteral("A&gregar"), this);
    command4_ = BotonPanel(QStringLiteral("Command4"), QStringLiteral("&Quitar"), this);
    command6_ = BotonPanel(QStringLiteral("Command6"), QStringLiteral("&Nuevo Artículo.."), this);
    command6_->setEnabled(false);
    // Caben a 1024 puntos de ancho junto a los campos de la línea.
    for (QPushButton* b : {command3_, command4_, command6_}) b->setMinimumWidth(100);
    lblAviso_ = new QLabel(this);
    lblAviso_->setObjectName(QStringLiteral("lblAviso"));
    lblAviso_->setStyleSheet(QStringLiteral("color: #b3261e; font-weight: bold;"));

    g->addWidget(rotulo(QStringLiteral("&Código :"), txtCodigo_, caja), 0, 0);
    g->addWidget(txtCodigo_, 0, 1);
    g->addWidget(rotulo(QStringLiteral("Cód. &proveedor :"), text1_, caja), 0, 2);
    g->addWidget(text1_, 0, 3);
    g->addWidget(rotulo(QStringLiteral("&Artículo :"), cboArticulos_, caja), 0, 4);
    g->addWidget(cboArticulos_, 0, 5, 1, 3);
    g->addWidget(rotulo(QStringLiteral("Can&tidad :"), txtCant_, caja), 1, 0);
    g->addWidget(txtCant_, 1, 1);
    g->addWidget(rotulo(QStringLiteral("&Unitario :"), txtUnitario_, caja), 1, 2);
    g->addWidget(txtUnitario_, 1, 3);
    g->addWidget(rotulo(QStringLiteral("% &Bo:"), txtBonif_, caja), 1, 4);
    g->addWidget(txtBonif_, 1, 5);
    auto* botones = new QHBoxLayout;
    botones->addWidget(command3_);
    botones->addWidget(command4_);
    botones->addWidget(command6_);
    g->addLayout(botones, 1, 6, 1, 2);
    g->addWidget(check1_, 2, 0, 1, 4);
    g->addWidget(lblAviso_, 2, 4, 1, 4);
    g->setColumnStretch(5, 1);

    conectaEntrada();
    return caja;
}

// Enter y la salida de cada campo, la lista que sigue a lo escrito y los botones de la línea.
void panNueCompra::conectaEntrada() {
    for (QLineEdit* e : {txtCodigo_, text1_, cboArticulos_, txtCant_, txtUnitario_, txtBonif_}) e->installEventFilter(this);
    connect(txtCodigo_, &QLineEdit::editingFinished, this, [this] {
        if (txtCodigo_->isModified()) buscaPorCodigo();
    });
    connect(text1_, &QLineEdit::editingFinished, this, [this] {
        if (text1_->isModified()) buscaPorCgoProveedor();
    });
    // Lo que se escribe en la lista deja de ser el artículo elegido hasta que se elija otro.
    connect(cboArticulos_, &QLineEdit::textEdited, this, [this] {
        idArticulo_.reset();
        txtCodigo_->clear();
        demoraLista_->start();
    });
    connect(demoraLista_, &QTimer::timeout, this, &panNueCompra::llenaArticulos);
    connect(check1_, &QCheckBox::toggled, this, &panNueCompra::llenaArticulos);
    connect(completa_, qOverload<const QModelIndex&>(&QCompleter::activated), this, [this](const QModelIndex& i) {
        eligeDeLista(i.data(Qt::UserRole).toLongLong());
    });
    connect(command3_, &QPushButton::clicked, this, &panNueCompra::agrega);
    connect(command4_, &QPushButton::clicked, this, &panNueCompra::quita);
    connect(command6_, &QPushButton::clicked, this, [this] {
        const qint64 id = articuloNuevo_ ? articuloNuevo_() : 0;
        if (id > 0) eligeDeLista(id);
    });
}

QWidget* panNueCompra::armaTotales() {
    auto* caja = new QGroupBox(QStringLiteral("Totales"), this);
    auto* f = new QFormLayout(caja);
    f->setLabelAlignment(Qt::AlignRight);
    txTotal_ = campo("txTotal", 160);
    txtDescuento_ = campo("txtDescuento", 70);
    txtDescuento_->setText(QStringLiteral("0"));
    txtMonDesc_ = campo("txtMonDesc", 160);
    txtSubTot_ = campo("txtSubTot", 160);
    txPorImp_ = campo("txPorImp", 70);
    txTotImp_ = campo("txTotImp", 160);
    txTotTot_ = campo("txTotTot", 160);
    for (QLineEdit* e : {txTotal_, txtMonDesc_, txtSubTot_, txTotImp_, txTotTot_}) {
        e->setReadOnly(true);
        e->setFocusPolicy(Qt::NoFocus);
    }
    QFont grande = txTotTot_->font();
    grande.setBold(true);
    grande.setPointSizeF(grande.pointSizeF() * 1.2);
    txTotTot_->setFont(grande);
    auto* descuento = new QHBoxLayout;
    descuento->addWidget(txtDescuento_);
    descuento->addWidget(txtMonDesc_);
    auto* impuesto = new QHBoxLayout;
    impuesto->addWidget(txPorImp_);
    impuesto->addWidget(txTotImp_);
    f->addRow(QStringLiteral("Neto :"), txTotal_);
    f->addRow(rotulo(QStringLiteral("% &Desc. :"), txtDescuento_, caja), descuento);
    f->addRow(QStringLiteral("SubTotal :"), txtSubTot_);
    f->addRow(rotulo(QStringLiteral("% &Imp. :"), txPorImp_, caja), impuesto);
    f->addRow(QStringLiteral("Total :"), txTotTot_);
    auto* command5 = BotonPanel(QStringLiteral("Command5"), QStringLiteral("&Recalcular"), caja);
    f->addRow(QString(), command5);
    connect(command5, &QPushButton::clicked, this, &panNueCompra::recalcula);
    // Los totales siguen a lo que se escribe en los porcentajes.
    connect(txtDescuento_, &QLineEdit::textChanged, this, &panNueCompra::recalcula);
    connect(txPorImp_, &QLineEdit::textChanged, this, &panNueCompra::recalcula);
    return caja;
}

QTabWidget* panNueCompra::armaPestanias() {
    auto* t = new QTabWidget(this);
    t->setObjectName(QStringLiteral("SSTab1"));
    t->addTab(armaPago(), QStringLiteral("Formas de Pago"));
    t->addTab(armaDocumento(), QStringLiteral("Documento"));
    t->addTab(armaOpciones(), QStringLiteral("Opciones"));
    return t;
}

QWidget* panNueCompra::armaPago() {
    auto* w = new QWidget(this);
    auto* f = new QFormLayout(w);
    cboFPago_ = new QComboBox(w);
    cboFPago_->setObjectName(QStringLiteral("cboFPago"));
    cbCta_ = new QComboBox(w);
    cbCta_->setObjectName(QStringLiteral("cbCta"));
    txRef_ = campo("txRef", 0, false);
    f->addRow(rotulo(QStringLiteral("&Forma de Pago :"), cboFPago_, w), cboFPago_);
    f->addRow(rotulo(QStringLiteral("Cuenta C&ontable :"), cbCta_, w), cbCta_);
    f->addRow(rotulo(QStringLiteral("Referencia / Nro Cheque / Tarj. :"), txRef_, w), txRef_);
    connect(cboFPago_, &QComboBox::currentIndexChanged, this, &panNueCompra::cambiaFormaPago);
    return w;
}

QWidget* panNueCompra::armaDocumento() {
    auto* w = new QWidget(this);
    auto* f = new QFormLayout(w);
    dt1_ = CampoFecha(QStringLiteral("dt1"), w);
    cboTipoComprobante_ = new QComboBox(w);
    cboTipoComprobante_->setObjectName(QStringLiteral("cboTipoComprobante"));
    cboTipoComprobante_->addItems(TiposDocumentoCompra());
    cbLetra_ = new QComboBox(w);
    cbLetra_->setObjectName(QStringLiteral("cbLetra"));
    cbLetra_->addItems(LetrasDocumentoCompra());
    txPtoVta_ = campo("txPtoVta", 60);
    txPtoVta_->setMaxLength(4);
    txNroComproba_ = campo("txNroComproba", 110);
    txNroComproba_->setMaxLength(8);
    auto* numero = new QHBoxLayout;
    numero->addWidget(cbLetra_);
    numero->addWidget(txPtoVta_);
    numero->addWidget(new QLabel(QStringLiteral("-"), w));
    numero->addWidget(txNroComproba_);
    numero->addStretch(1);
    f->addRow(rotulo(QStringLiteral("F&echa :"), dt1_, w), dt1_);
    f->addRow(rotulo(QStringLiteral("Tipo :"), cboTipoComprobante_, w), cboTipoComprobante_);
    f->addRow(rotulo(QStringLiteral("Nro :"), txNroComproba_, w), numero);
    return w;
}

QWidget* panNueCompra::armaOpciones() {
    auto* w = new QWidget(this);
    auto* c = new QVBoxLayout(w);
    chkRegCaja_ = casilla("chkRegCaja", QStringLiteral("Registra movimento de caja ?"), w);
    chkRegStock_ = casilla("chkRegStock", QStringLiteral("Registra movimento de stock ?"), w);
    chkPendiente_ = casilla("chkPendiente", QStringLiteral("Pendiente de entregar ?"), w);
    chkPrec_ = casilla("chkPrec", QStringLiteral("A&signar precios del documento a costos de la mercadería"), w);
    for (QCheckBox* x : {chkRegCaja_, chkRegStock_, chkPendiente_, chkPrec_}) c->addWidget(x);
    c->addStretch(1);
    // Los costos se asignan sólo con el movimiento de stock.
    connect(chkRegStock_, &QCheckBox::toggled, chkPrec_, &QCheckBox::setEnabled);
    chkPrec_->setEnabled(false);
    return w;
}

} // namespace orv
