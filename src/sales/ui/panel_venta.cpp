#include "sales/ui/panel_venta.h"

#include "reports/ui/salida_informes.h"
#include "sales/registro.h"
#include "sales/salida_comprobante.h"
#include "sales/tipos_comprobante.h"
#include "sales/ui/pan_comprobantes.h"
#include "sales/ui/pan_fpago.h"
#include "sales/ui/pan_sel_art.h"
#include "sales/ui/pan_sel_cliente.h"
#include "widgets/grilla.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "store/entrada.h"
#include "store/formato.h"
#include "store/rutinas.h"

#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QDoubleValidator>
#include <QEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSqlQuery>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kLineas = QStringLiteral("SELECT Codigo, Cantidad, Descripcion, Unitario, SubTotal, Sn, idTmpFac, "
                                       "idArticulo FROM TmpFac WHERE PCRed = ? ORDER BY idTmpFac");

QLabel* rotulo(const QString& texto, QWidget* padre, Qt::Alignment a = Qt::AlignRight | Qt::AlignVCenter) {
    auto* l = new QLabel(texto, padre);
    l->setAlignment(a);
    return l;
}

QLabel* importe(const QString& nombre, QWidget* padre, double escala = 1.0, bool negrita = false) {
    auto* l = new QLabel(QStringLiteral("0.00"), padre);
    l->setObjectName(nombre);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont f = l->font();
    f.setPointSizeF(f.pointSizeF() * escala);
    f.setBold(negrita);
    l->setFont(f);
    l->setMinimumWidth(120);
    return l;
}

QLineEdit* campo(const QString& nombre, QWidget* padre, const QString& ayuda = {}) {
    auto* e = new QLineEdit(padre);
    e->setObjectName(nombre);
    e->setToolTip(ayuda);
    e->setPlaceholderText(ayuda);
    return e;
}

} // namespace

PanelVenta::PanelVenta(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf, QWidget* padre)
    : QWidget(padre), almacen_(almacen), estado_(estado), conf_(conf) {
    armaPantalla();
    conecta();
}

void PanelVenta::armaPantalla() {
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(0, 0, 0, 0);
    capa->setSpacing(8);
    capa->addLayout(armaCabeza());
    capa->addWidget(armaCliente());
    capa->addWidget(armaEntrada());
    auto* cuerpo = new QHBoxLayout;
    cuerpo->setSpacing(12);
    cuerpo->addWidget(armaLineas(), 1);
    cuerpo->addWidget(armaTotales());
    capa->addLayout(cuerpo, 1);

    auto* teclas = new QLabel(QStringLiteral(
        "F2 Cliente · F3 Buscar artículo · F4 Cgo. proveedor · F5 Mas Datos... · F6 Su Pago · "
        "F7 Líneas · Supr Borrar ítem · +/− cantidad de la línea · 3* antes del código: 3 unidades · "
        "F8 Anular · F9 Registrar · Esc Código"), this);
    teclas->setObjectName(QStringLiteral("lblTeclas"));
    teclas->setEnabled(false);
    teclas->setWordWrap(true);
    capa->addWidget(teclas);

    limpiaEntrada();
    lblCli_->setText(QStringLiteral("<Sin seleccion de cliente>"));
    lblDirCli_->setText(QStringLiteral("Domicilio - Telefonos - e-mail"));
    lblCuit_->setText(QStringLiteral("CUIT : 0"));
}

// Cabeza: título, tipo de comprobante, próximo número y el botón de agrandar.
QHBoxLayout* PanelVenta::armaCabeza() {
    auto* cabeza = new QHBoxLayout;
    cabeza->addWidget(TituloPanel(QStringLiteral("Vender"), this));
    cabeza->addSpacing(24);
    lblTipCompro_ = new QPushButton(this);
    lblTipCompro_->setObjectName(QStringLiteral("lblTipCompro"));
    lblTipCompro_->setFlat(true);
    lblTipCompro_->setCursor(Qt::PointingHandCursor);
    lblTipCompro_->setToolTip(QStringLiteral("Clic para cambiar el tipo de comprobante"));
    lblTipCompro_->setStyleSheet(QStringLiteral("text-align: left; font-weight: bold; font-size: 12pt;"));
    lblTipCompro_->setFocusPolicy(Qt::NoFocus);
    cboSelTipoCo_ = new QComboBox(this);
    cboSelTipoCo_->setObjectName(QStringLiteral("cboSelTipoCo"));
    cboSelTipoCo_->setMinimumWidth(200);
    cboSelTipoCo_->hide();
    lblProx_ = new QLabel(this);
    lblProx_->setObjectName(QStringLiteral("lblProx"));
    lblProx_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont fp = lblProx_->font();
    fp.setBold(true);
    fp.setPointSizeF(fp.pointSizeF() * 1.15);
    lblProx_->setFont(fp);
    cabeza->addWidget(lblTipCompro_);
    cabeza->addWidget(cboSelTipoCo_);
    cabeza->addSpacing(12);
    cabeza->addWidget(rotulo(QStringLiteral("Próximo Nro. :"), this));
    cabeza->addWidget(lblProx_);
    cabeza->addStretch(1);
    auto* reimpresion = Enlace(QStringLiteral("lblReimpresion"), QStringLiteral("Reimpresión de documentos..."), this);
    reimpresion->setFocusPolicy(Qt::NoFocus);
    cabeza->addWidget(reimpresion);
    connect(reimpresion, &QPushButton::clicked, this, &PanelVenta::reimpresion);
    command55_ = new QPushButton(QStringLiteral("Maximizar"), this);
    command55_->setObjectName(QStringLiteral("Command55"));
    command55_->setAutoDefault(false);
    command55_->setFocusPolicy(Qt::NoFocus);
    cabeza->addWidget(command55_);
    return cabeza;
}

// Cliente, vendedor y forma de pago.
QGroupBox* PanelVenta::armaCliente() {
    auto* cliente = new QGroupBox(this);
    auto* gc = new QGridLayout(cliente);
    gc->setContentsMargins(10, 8, 10, 8);
    gc->setHorizontalSpacing(8);
    label6_ = new QLabel(QStringLiteral("????"), cliente);
    label6_->setObjectName(QStringLiteral("Label6"));
    label6_->setMinimumWidth(80);
    text8_ = campo(QStringLiteral("Text8"), cliente, QStringLiteral("Nro. de cliente o tarjeta"));
    text8_->setMinimumWidth(150);
    text8_->setMaximumWidth(190);
    command38_ = new QPushButton(QStringLiteral("Buscar..."), cliente);
    command38_->setObjectName(QStringLiteral("Command38"));
    command38_->setFocusPolicy(Qt::TabFocus);
    lblCli_ = new QLabel(cliente);
    lblCli_->setObjectName(QStringLiteral("lblCli"));
    QFont fc = lblCli_->font();
    fc.setBold(true);
    fc.setPointSizeF(fc.pointSizeF() * 1.1);
    lblCli_->setFont(fc);
    // El nombre y la dirección del cliente se acortan antes que empujar el ancho del panel.
    lblCli_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblDirCli_ = new QLabel(cliente);
    lblDirCli_->setObjectName(QStringLiteral("lblDirCli"));
    lblDirCli_->setEnabled(false);
    lblDirCli_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblCuit_ = new QLabel(cliente);
    lblCuit_->setObjectName(QStringLiteral("lblCuit"));
    lblCuit_->setEnabled(false);
    cboVendedores_ = new QComboBox(cliente);
    cboVendedores_->setObjectName(QStringLiteral("cboVendedores"));
    cboVendedores_->setMinimumWidth(130);
    cboFPago_ = new QComboBox(cliente);
    cboFPago_->setObjectName(QStringLiteral("cboFPago"));
    cboFPago_->setMinimumWidth(120);
    command17_ = new QPushButton(QStringLiteral("Mas Datos..."), cliente);
    command17_->setObjectName(QStringLiteral("Command17"));
    command17_->setFocusPolicy(Qt::TabFocus);
    gc->addWidget(label6_, 0, 0);
    gc->addWidget(text8_, 0, 1);
    gc->addWidget(command38_, 0, 2);
    gc->addWidget(lblCli_, 0, 3);
    gc->addWidget(rotulo(QStringLiteral("Vendedor ?"), cliente), 0, 4);
    gc->addWidget(cboVendedores_, 0, 5);
    gc->addWidget(lblDirCli_, 1, 3);
    gc->addWidget(lblCuit_, 1, 1, 1, 2);
    gc->addWidget(rotulo(QStringLiteral("F. Pago ?"), cliente), 1, 4);
    gc->addWidget(cboFPago_, 1, 5);
    gc->addWidget(command17_, 0, 6, 2, 1);
    gc->setColumnStretch(3, 1); // el nombre del cliente toma el lugar que sobra
    return cliente;
}

// Carga de artículos, con el aviso del código que no se encontró debajo del código.
QGroupBox* PanelVenta::armaEntrada() {
    auto* entrada = new QGroupBox(this);
    auto* ge = new QGridLayout(entrada);
    ge->setContentsMargins(10, 6, 10, 8);
    ge->setHorizontalSpacing(8);
    ge->setVerticalSpacing(2);
    text7_ = campo(QStringLiteral("Text7"), entrada,
                   QStringLiteral("Ingrese el código del artículo manualmente o por pistola de cgo de barras."));
    text7_->setPlaceholderText(QStringLiteral("Código o código de barras"));
    QFont fcod = text7_->font();
    fcod.setPointSizeF(fcod.pointSizeF() * 1.25);
    text7_->setFont(fcod);
    text16_ = campo(QStringLiteral("Text16"), entrada, QStringLiteral("Ingrese el código del proveedor"));
    text16_->setPlaceholderText(QStringLiteral("Cgo. proveedor"));
    text16_->setMaximumWidth(140);
    text9_ = new QComboBox(entrada);
    text9_->setObjectName(QStringLiteral("Text9"));
    text9_->setEditable(true);
    text9_->setInsertPolicy(QComboBox::NoInsert);
    text9_->completer()->setCompletionMode(QCompleter::PopupCompletion);
    text9_->completer()->setFilterMode(Qt::MatchContains);
    text9_->setMinimumWidth(220);
    command58_ = new QPushButton(QStringLiteral("..."), entrada);
    command58_->setObjectName(QStringLiteral("Command58"));
    command58_->setToolTip(QStringLiteral("Buscar artículo (F3)"));
    command58_->setMaximumWidth(36);
    command58_->setFocusPolicy(Qt::TabFocus);
    txtCant_ = campo(QStringLiteral("txtCant"), entrada, QStringLiteral("Ingrese la cantidad"));
    txtCant_->setText(QStringLiteral("1"));
    txtCant_->setMaximumWidth(80);
    txtCant_->setAlignment(Qt::AlignRight);
    txUnit_ = campo(QStringLiteral("txUnit"), entrada);
    txUnit_->setText(QStringLiteral("0"));
    txUnit_->setMaximumWidth(120);
    txUnit_->setAlignment(Qt::AlignRight);
    auto* soloNumeros = new QDoubleValidator(-1e12, 1e12, 4, txUnit_);
    soloNumeros->setLocale(QLocale::c());
    soloNumeros->setNotation(QDoubleValidator::StandardNotation);
    txUnit_->setValidator(soloNumeros);
    txtUnitImpuesto_ = campo(QStringLiteral("txtUnitImpuesto"), entrada);
    txtUnitImpuesto_->setText(QStringLiteral("0"));
    txtUnitImpuesto_->setReadOnly(true);
    txtUnitImpuesto_->setFocusPolicy(Qt::NoFocus);
    txtUnitImpuesto_->setMaximumWidth(120);
    txtUnitImpuesto_->setAlignment(Qt::AlignRight);
    command20_ = new QPushButton(QStringLiteral("Agregar"), entrada);
    command20_->setObjectName(QStringLiteral("Command20"));
    command20_->setDefault(true);
    command20_->setMinimumHeight(text7_->sizeHint().height());
    auto rot = [&](const QString& t) {
        QLabel* l = rotulo(t, entrada, Qt::AlignLeft | Qt::AlignBottom);
        l->setWordWrap(true); // los títulos largos bajan de renglón en pantallas angostas
        return l;
    };
    // Primera fila: lo que usa el cajero en cada línea. Segunda: las otras formas de elegir.
    ge->addWidget(rot(QStringLiteral("Código")), 0, 0);
    ge->addWidget(rot(QStringLiteral("Cantidad")), 0, 2);
    ge->addWidget(rot(QStringLiteral("Precio Unitario")), 0, 3);
    ge->addWidget(rot(QStringLiteral("Precio Unitario ( con impuesto )")), 0, 4);
    ge->addWidget(text7_, 1, 0, 1, 2);
    ge->addWidget(txtCant_, 1, 2);
    ge->addWidget(txUnit_, 1, 3);
    ge->addWidget(txtUnitImpuesto_, 1, 4);
    ge->addWidget(command20_, 1, 5);
    ge->addWidget(rot(QStringLiteral("Cgo. Proveedor")), 2, 0);
    ge->addWidget(rot(QStringLiteral("Artículo")), 2, 1);
    ge->addWidget(text16_, 3, 0);
    auto* lista = new QHBoxLayout;
    lista->setSpacing(4);
    lista->addWidget(text9_, 1);
    lista->addWidget(command58_);
    ge->addLayout(lista, 3, 1, 1, 4);
    ge->setColumnStretch(1, 3);
    text16_->setMaximumWidth(QWIDGETSIZE_MAX);
    text7_->setMinimumWidth(200);
    lblNoEncontrado_ = new QLabel(entrada);
    lblNoEncontrado_->setObjectName(QStringLiteral("lblNoEncontrado"));
    lblNoEncontrado_->setStyleSheet(
        QStringLiteral("background: #b00020; color: white; font-weight: bold; padding: 6px 10px; border-radius: 3px;"));
    QFont fav = lblNoEncontrado_->font();
    fav.setPointSizeF(fav.pointSizeF() * 1.2);
    lblNoEncontrado_->setFont(fav);
    lblNoEncontrado_->setWordWrap(true);
    lblNoEncontrado_->hide();
    ge->addWidget(lblNoEncontrado_, 4, 0, 1, 6);
    return entrada;
}

// Las líneas de la venta.
Grilla* PanelVenta::armaLineas() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("DBGrid4"));
    grilla_->fijaTituloImpresion(QStringLiteral("Venta en curso"));
    grilla_->fijaClave(QStringLiteral("idTmpFac"));
    grilla_->permiteAgrupar(false); // las líneas de una venta no se agrupan
    grilla_->fijaTitulo(QStringLiteral("Codigo"), QStringLiteral("Codigo"));
    grilla_->fijaTitulo(QStringLiteral("Cantidad"), QStringLiteral("Cant."));
    grilla_->fijaTitulo(QStringLiteral("Descripcion"), QStringLiteral("Descripcion"));
    grilla_->fijaTitulo(QStringLiteral("Unitario"), QStringLiteral("Unitario"));
    grilla_->fijaTitulo(QStringLiteral("SubTotal"), QStringLiteral("SubTotal"));
    grilla_->fijaTitulo(QStringLiteral("Sn"), QStringLiteral("Nro Serie"));
    grilla_->fijaMascara(QStringLiteral("Cantidad"), QStringLiteral("General Number"));
    grilla_->fijaMascara(QStringLiteral("Unitario"), estado_.MascaraMoneda);
    grilla_->fijaMascara(QStringLiteral("SubTotal"), estado_.MascaraMoneda);
    grilla_->ocultaColumna(QStringLiteral("idTmpFac"));
    grilla_->ocultaColumna(QStringLiteral("idArticulo"));
    grilla_->tabla()->horizontalHeader()->setStretchLastSection(true); // "Nro Serie" toma lo que queda
    grilla_->tabla()->horizontalHeader()->setMinimumSectionSize(12);
    // Las columnas se reparten el ancho (ajustaGrilla): no hace falta desplazarse a los costados.
    grilla_->tabla()->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return grilla_;
}

// Totales, pago y vuelto, y los botones de la venta.
QGroupBox* PanelVenta::armaTotales() {
    auto* caja = new QGroupBox(this);
    caja->setObjectName(QStringLiteral("cajaTotales"));
    caja->setMinimumWidth(290);
    caja->setMaximumWidth(330);
    auto* gt = new QGridLayout(caja);
    gt->setContentsMargins(12, 10, 12, 10);
    gt->setVerticalSpacing(6);
    lblSubTotal_ = importe(QStringLiteral("lblSubTotal"), caja, 1.1);
    txtPorcDescuento_ = campo(QStringLiteral("txtPorcDescuento"), caja);
    txtPorcDescuento_->setText(QStringLiteral("0"));
    txtPorcDescuento_->setMaximumWidth(56);
    txtPorcDescuento_->setAlignment(Qt::AlignRight);
    lblImporteDescuento_ = importe(QStringLiteral("lblImporteDescuento"), caja, 1.1);
    txtNeto_ = importe(QStringLiteral("txtNeto"), caja, 1.1);
    txtPorcImpuesto_ = campo(QStringLiteral("txtPorcImpuesto"), caja);
    txtPorcImpuesto_->setText(QStringLiteral("0"));
    txtPorcImpuesto_->setMaximumWidth(56);
    txtPorcImpuesto_->setAlignment(Qt::AlignRight);
    lblImpuestoImporte_ = importe(QStringLiteral("lblImpuestoImporte"), caja, 1.1);
    txtMontoTotal_ = importe(QStringLiteral("txtMontoTotal"), caja, 2.2, true);
    txSuPago_ = campo(QStringLiteral("txSuPago"), caja);
    txSuPago_->setAlignment(Qt::AlignRight);
    QFont fpago = txSuPago_->font();
    fpago.setPointSizeF(fpago.pointSizeF() * 1.3);
    txSuPago_->setFont(fpago);
    txSuVuelto_ = importe(QStringLiteral("txSuVuelto"), caja, 1.6, true);
    txSuVuelto_->setText(QStringLiteral("0"));
    auto porciento = [&](QLineEdit* e) {
        auto* w = new QWidget(caja);
        auto* h = new QHBoxLayout(w);
        h->setContentsMargins(0, 0, 0, 0);
        h->setSpacing(4);
        h->addWidget(e);
        h->addWidget(new QLabel(QStringLiteral("%"), w));
        return w;
    };
    int f = 0;
    gt->addWidget(rotulo(QStringLiteral("Sub Total"), caja, Qt::AlignLeft | Qt::AlignVCenter), f, 0);
    gt->addWidget(lblSubTotal_, f++, 2);
    gt->addWidget(rotulo(QStringLiteral("Desc."), caja, Qt::AlignLeft | Qt::AlignVCenter), f, 0);
    gt->addWidget(porciento(txtPorcDescuento_), f, 1);
    gt->addWidget(lblImporteDescuento_, f++, 2);
    gt->addWidget(rotulo(QStringLiteral("NETO"), caja, Qt::AlignLeft | Qt::AlignVCenter), f, 0);
    gt->addWidget(txtNeto_, f++, 2);
    gt->addWidget(rotulo(QStringLiteral("Imp."), caja, Qt::AlignLeft | Qt::AlignVCenter), f, 0);
    gt->addWidget(porciento(txtPorcImpuesto_), f, 1);
    gt->addWidget(lblImpuestoImporte_, f++, 2);
    auto* linea = new QFrame(caja);
    linea->setFrameShape(QFrame::HLine);
    linea->setFrameShadow(QFrame::Sunken);
    gt->addWidget(linea, f++, 0, 1, 3);
    auto* total = rotulo(QStringLiteral("TOTAL"), caja, Qt::AlignLeft | Qt::AlignVCenter);
    QFont ft = total->font();
    ft.setBold(true);
    ft.setPointSizeF(ft.pointSizeF() * 1.4);
    total->setFont(ft);
    gt->addWidget(total, f, 0);
    gt->addWidget(txtMontoTotal_, f++, 1, 1, 2);
    gt->addWidget(rotulo(QStringLiteral("Su Pago ?"), caja, Qt::AlignLeft | Qt::AlignVCenter), f, 0);
    gt->addWidget(txSuPago_, f++, 1, 1, 2);
    gt->addWidget(rotulo(QStringLiteral("Su Vuelto:"), caja, Qt::AlignLeft | Qt::AlignVCenter), f, 0);
    gt->addWidget(txSuVuelto_, f++, 1, 1, 2);
    lblItems_ = new QLabel(QStringLiteral("0 ítems."), caja);
    lblItems_->setObjectName(QStringLiteral("lblItems"));
    lblItems_->setAlignment(Qt::AlignRight);
    lblItems_->setWordWrap(true); // el aviso de una línea imposible es largo
    gt->addWidget(lblItems_, f++, 0, 1, 3);
    gt->setRowStretch(f++, 1);
    command18_ = new QPushButton(QStringLiteral("Borrar"), caja);
    command18_->setObjectName(QStringLiteral("Command18"));
    command18_->setEnabled(false);
    command21_ = new QPushButton(QStringLiteral("Anular"), caja);
    command21_->setObjectName(QStringLiteral("Command21"));
    command16_ = new QPushButton(QStringLiteral("Registrar"), caja);
    command16_->setObjectName(QStringLiteral("Command16"));
    command16_->setMinimumHeight(command16_->sizeHint().height() * 3 / 2);
    QFont fr = command16_->font();
    fr.setBold(true);
    fr.setPointSizeF(fr.pointSizeF() * 1.2);
    command16_->setFont(fr);
    for (QPushButton* b : {command18_, command21_, command16_}) {
        b->setAutoDefault(false);
        b->setFocusPolicy(Qt::TabFocus);
    }
    auto* botones = new QHBoxLayout;
    botones->addWidget(command18_);
    botones->addWidget(command21_);
    gt->addLayout(botones, f++, 0, 1, 3);
    gt->addWidget(command16_, f++, 0, 1, 3);
    gt->setColumnStretch(2, 1);
    return caja;
}

void PanelVenta::conecta() {
    connect(command55_, &QPushButton::clicked, this, &PanelVenta::agrandarPulsado);
    connect(lblTipCompro_, &QPushButton::clicked, this, [this] {
        lblTipCompro_->hide();
        cboSelTipoCo_->show();
        cboSelTipoCo_->setFocus();
        cboSelTipoCo_->showPopup();
    });
    connect(cboSelTipoCo_, &QComboBox::activated, this, [this] {
        eligeTipo();
        text7_->setFocus();
    });
    connect(command20_, &QPushButton::clicked, this, &PanelVenta::agregar);
    connect(command18_, &QPushButton::clicked, this, &PanelVenta::borrarItem);
    connect(command21_, &QPushButton::clicked, this, &PanelVenta::anular);
    connect(command16_, &QPushButton::clicked, this, &PanelVenta::registrar);
    connect(command38_, &QPushButton::clicked, this, &PanelVenta::eligeCliente);
    connect(command58_, &QPushButton::clicked, this, &PanelVenta::buscaArticulo);
    connect(command17_, &QPushButton::clicked, this, &PanelVenta::masDatos);

    // Enter en cada campo hace lo del botón que corresponde (el lector de códigos termina con
    // Enter en Text7, y la línea se agrega con el precio del artículo).
    connect(text7_, &QLineEdit::returnPressed, this, &PanelVenta::agregar);
    // "3*" antes del código: la cantidad se ve en su campo mientras llega el código (el "0" hace
    // las veces del código que todavía no se escribió).
    connect(text7_, &QLineEdit::textEdited, this, [this](const QString& t) {
        if (const auto cantidad = SeparaCantidad(t + QStringLiteral("0")).cantidad) txtCant_->setText(*cantidad);
    });
    // Enter en el código del proveedor o en la lista trae antes el precio del artículo: nunca se
    // agrega una línea a un precio que el cajero no vio.
    connect(text16_, &QLineEdit::returnPressed, this, [this] {
        tag_ = OrigenLinea::CodigoProveedor;
        agregaConPrecioALaVista(codigoProveedor());
    });
    connect(txtCant_, &QLineEdit::returnPressed, this, &PanelVenta::agregar);
    connect(txUnit_, &QLineEdit::returnPressed, this, &PanelVenta::agregar);
    connect(text8_, &QLineEdit::returnPressed, this, &PanelVenta::eligeCliente);
    connect(text8_, &QLineEdit::textEdited, this, [this] {
        idCliente_.reset();
        label6_->setText(QStringLiteral("???"));
    });
    connect(txUnit_, &QLineEdit::textChanged, this, &PanelVenta::actualizaConImpuesto);
    connect(txSuPago_, &QLineEdit::textChanged, this, &PanelVenta::actualizaVuelto);
    connect(grilla_, &Grilla::filaCambiada, this, [this] { command18_->setEnabled(grilla_->filaActual().has_value()); });
    connect(grilla_, &Grilla::filaEditada, this, &PanelVenta::recalculaLineas);

    for (QObject* o : {static_cast<QObject*>(text7_), static_cast<QObject*>(text16_), static_cast<QObject*>(text9_),
                       static_cast<QObject*>(txtCant_), static_cast<QObject*>(txtPorcDescuento_),
                       static_cast<QObject*>(txtPorcImpuesto_), static_cast<QObject*>(cboSelTipoCo_),
                       static_cast<QObject*>(grilla_->tabla())})
        o->installEventFilter(this);
    text9_->lineEdit()->installEventFilter(this);
    connect(text9_->lineEdit(), &QLineEdit::returnPressed, this, [this] {
        tag_ = OrigenLinea::Lista;
        agregaConPrecioALaVista(precioPorLista());
    });

    auto atajo = [this](QKeySequence k, auto f) {
        auto* s = new QShortcut(k, this);
        s->setContext(Qt::WidgetWithChildrenShortcut);
        connect(s, &QShortcut::activated, this, f);
    };
    atajo(Qt::Key_F2, [this] {
        text8_->setFocus();
        text8_->selectAll();
    });
    atajo(Qt::Key_F3, [this] { buscaArticulo(); });
    atajo(Qt::Key_F4, [this] { text16_->setFocus(); });
    atajo(Qt::Key_F5, [this] { masDatos(); });
    atajo(Qt::Key_F6, [this] { txSuPago_->setFocus(); });
    atajo(Qt::Key_F7, [this] { grilla_->tabla()->setFocus(); });
    atajo(Qt::Key_F8, [this] { anular(); });
    atajo(Qt::Key_F9, [this] { registrar(); });
    atajo(Qt::Key_Escape, [this] { text7_->setFocus(); });
}

bool PanelVenta::eventFilter(QObject* o, QEvent* e) {
    if (e->type() == QEvent::FocusIn) {
        if (o == text7_) {
            tag_ = OrigenLinea::CodigoBarras;
            QTimer::singleShot(0, text7_, &QLineEdit::selectAll);
        } else if (o == text16_) {
            tag_ = OrigenLinea::CodigoProveedor;
        } else if (o == text9_ || o == text9_->lineEdit()) {
            tag_ = OrigenLinea::Lista;
        } else if (o == txtCant_) {
            QTimer::singleShot(0, txtCant_, &QLineEdit::selectAll);
        }
    } else if (e->type() == QEvent::FocusOut) {
        const auto razon = static_cast<QFocusEvent*>(e)->reason();
        if (razon != Qt::PopupFocusReason) {
            if (o == text7_) precioPorCodigo();
            else if (o == text16_) codigoProveedor();
            else if (o == text9_->lineEdit()) precioPorLista();
            else if (o == txtPorcDescuento_) {
                if (tomaPorcentaje(txtPorcDescuento_, QStringLiteral("Desc."), porcDescuento_)) {
                    estado_.DescuentoClienteActual = porcDescuento_;
                    totales();
                }
            } else if (o == txtPorcImpuesto_) {
                if (tomaPorcentaje(txtPorcImpuesto_, QStringLiteral("Imp."), porcImpuesto_)) {
                    conf_.graba(clave::miscelaneas, QStringLiteral("CoefIva"), txtPorcImpuesto_->text());
                    totales();
                }
            } else if (o == cboSelTipoCo_ && !cboSelTipoCo_->view()->isVisible()) {
                cboSelTipoCo_->hide();
                lblTipCompro_->show();
            }
        }
    } else if (e->type() == QEvent::KeyPress && o == grilla_->tabla()) {
        auto* k = static_cast<QKeyEvent*>(e);
        // "+" y "-" cambian la cantidad de la línea, los del teclado numérico y también los del
        // teclado principal, para la portátil que no tiene teclado numérico.
        if (k->key() == Qt::Key_Plus) {
            cambiaCantidadActual(+1);
            return true;
        }
        if (k->key() == Qt::Key_Minus) {
            cambiaCantidadActual(-1);
            return true;
        }
        if (k->key() == Qt::Key_Delete) {
            borrarItem();
            return true;
        }
    }
    return QWidget::eventFilter(o, e);
}

// --- listas ---

void PanelVenta::llenaTiposComprobante() {
    cboSelTipoCo_->clear();
    LlenaCombo(cboSelTipoCo_, almacen_,
               QStringLiteral("SELECT idTipoComprobante, Tipo FROM TiposDeComprobantes ORDER BY idTipoComprobante"), {},
               QStringLiteral("Tipo"), QStringLiteral("idTipoComprobante"));
    SelComboId(cboSelTipoCo_, estado_.idTipoComprobanteActual);
    lblTipCompro_->setText(cboSelTipoCo_->currentText());
}

void PanelVenta::eligeTipo() {
    if (cboSelTipoCo_->currentIndex() < 0) return;
    estado_.idTipoComprobanteActual = cboSelTipoCo_->currentData().toInt();
    lblTipCompro_->setText(cboSelTipoCo_->currentText());
    if (!Intenta(this, [this] { lblProx_->setText(ProximoNumeroMostrado(almacen_, estado_.idTipoComprobanteActual)); }))
        lblProx_->clear();
    cboSelTipoCo_->hide();
    lblTipCompro_->show();
}

void PanelVenta::llenaVendedores() {
    const QVariant elegido = cboVendedores_->currentData();
    cboVendedores_->clear();
    LlenaCombo(cboVendedores_, almacen_, QStringLiteral("SELECT idUsuario, NombreCompleto FROM Usuarios ORDER BY idUsuario"),
               {}, QStringLiteral("NombreCompleto"), QStringLiteral("idUsuario"));
    if (elegido.isValid()) SelComboId(cboVendedores_, elegido);
}

void PanelVenta::seleccionaVendedor(qint64 idUsuario) { SelComboId(cboVendedores_, idUsuario); }

void PanelVenta::llenaArticulos() {
    text9_->clear();
    LlenaCombo(text9_, almacen_, QStringLiteral("SELECT idArticulo, Descripcion FROM Articulos ORDER BY Descripcion"), {},
               QStringLiteral("Descripcion"), QStringLiteral("idArticulo"));
    text9_->setCurrentIndex(-1);
    text9_->setEditText(QString());
}

void PanelVenta::llenaFormasPago() {
    const int antes = cboFPago_->currentIndex();
    cboFPago_->clear();
    LlenaCombo(cboFPago_, almacen_, QStringLiteral("SELECT idTipoFormaPago, FormaPago FROM FormasDePago ORDER BY idTipoFormaPago"),
               {}, QStringLiteral("FormaPago"), QStringLiteral("idTipoFormaPago"));
    cboFPago_->setCurrentIndex(antes >= 0 && antes < cboFPago_->count() ? antes : (cboFPago_->count() ? 0 : -1));
}

void PanelVenta::leeCoefIva() {
    const QString coef = conf_.lee(clave::miscelaneas, QStringLiteral("CoefIva"));
    if (EsNumerico(QStringView(coef))) txtPorcImpuesto_->setText(coef);
}

// --- entrada al panel y grilla ---

void PanelVenta::entra() {
    leeLineas(false);
    eligeTipo();
    QTimer::singleShot(0, this, &PanelVenta::ajustaGrilla);
    // Una venta sin cliente toma el predeterminado, si lo hay; con cliente, el cajero sigue cargando.
    // Un número escrito y todavía no confirmado no se pisa.
    if (idCliente_ || (text8_->text().isEmpty() && aplicaClientePredeterminado())) text7_->setFocus();
    else text8_->setFocus();
}

bool PanelVenta::aplicaClientePredeterminado() {
    std::optional<ClienteVenta> c;
    Intenta(this, [&] { c = ClientePredeterminado(almacen_, conf_); });
    if (!c) return false;
    text8_->setText(QString::number(c->idVendedor));
    llenaCliente(*c, QStringLiteral("Cliente:"));
    return true;
}

void PanelVenta::leeLineas(bool alFinal) {
    Intenta(this, [this] { grilla_->fijaConsulta(kLineas, {estado_.IdRed}); });
    if (alFinal) {
        int ultima = 0;
        while (grilla_->modelo().asegura(ultima + 1)) ++ultima;
        if (grilla_->modelo().rowCount() > 0) grilla_->irAFila(ultima);
    }
    command18_->setEnabled(grilla_->filaActual().has_value());
    totales();
}

void PanelVenta::fijaSoloLectura(bool si) {
    soloLectura_ = si;
    if (si) {
        grilla_->fijaEditables({}, {});
        return;
    }
    grilla_->fijaEditables({QStringLiteral("Cantidad"), QStringLiteral("Unitario"), QStringLiteral("Sn")},
                           [this](const QSqlRecord& r, const QString& campo, const QVariant& valor) {
                               // Si se rechaza, la grilla se refresca y la celda vuelve a su valor.
                               Intenta(this, [&] {
                                   CorrigeLinea(almacen_, r.value(QStringLiteral("idTmpFac")).toLongLong(), campo, valor);
                               });
                           });
}

void PanelVenta::ajustaGrilla() {
    QTableView* t = grilla_->tabla();
    const int ancho = t->viewport()->width();
    static constexpr int proporcion[] = {18, 10, 30, 19, 19};
    QHeaderView* h = t->horizontalHeader();
    for (int visual = 0, usadas = 0; visual < h->count() && usadas < 5; ++visual) {
        const int logica = h->logicalIndex(visual);
        if (h->isSectionHidden(logica)) continue;
        h->resizeSection(logica, ancho * proporcion[usadas++] / 100);
    }
}

void PanelVenta::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    ajustaGrilla();
}

// --- precios de la carga ---

void PanelVenta::muestraPrecio(const QVariant& precio) {
    const Dinero p = Dinero::desdeVariant(precio);
    txUnit_->setText(FormatoMoneda(p, estado_.MascaraMoneda));
    actualizaConImpuesto();
}

void PanelVenta::actualizaConImpuesto() {
    // Sólo se muestra: un precio que no se lee o no cabe deja el precio con impuesto en blanco.
    const auto v = LeeImporte(txUnit_->text());
    const double imp = porcentajeVigente(txtPorcImpuesto_, porcImpuesto_);
    if (!v || *v > Dinero(kImporteMaximo) || *v < -Dinero(kImporteMaximo)) {
        txtUnitImpuesto_->clear();
        return;
    }
    txtUnitImpuesto_->setText(FormatoMoneda(imp == 0 ? *v : v->por(imp / 100.0 + 1.0), estado_.MascaraMoneda));
}

void PanelVenta::precioPorCodigo() {
    Intenta(this, [this] {
        const QString codigo = SeparaCantidad(text7_->text()).codigo;
        const auto art = codigo.isEmpty() ? std::nullopt : ArticuloPorCodigo(almacen_, codigo);
        if (!art || art->precioVenta.isNull()) {
            text9_->setEditText(QString());
            txUnit_->setText(QStringLiteral("0"));
            txtUnitImpuesto_->setText(QStringLiteral("0"));
        } else {
            muestraPrecio(art->precioVenta);
            SelComboId(text9_, art->idArticulo);
        }
    });
    if (text7_->text().isEmpty()) text9_->setEditText(QString());
}

std::optional<qint64> PanelVenta::articuloDeLista() const {
    const int i = text9_->findText(text9_->currentText(), Qt::MatchExactly);
    if (i < 0) return std::nullopt;
    return text9_->itemData(i).toLongLong();
}

std::optional<ArticuloVenta> PanelVenta::precioPorLista() {
    if (tag_ != OrigenLinea::Lista) return std::nullopt;
    const auto id = articuloDeLista();
    if (!id) return std::nullopt;
    std::optional<ArticuloVenta> art;
    Intenta(this, [&] { art = ArticuloPorId(almacen_, *id); });
    if (!art) {
        txUnit_->setText(QStringLiteral("0"));
        txtUnitImpuesto_->setText(QStringLiteral("0"));
        text7_->clear();
        text16_->clear();
        return std::nullopt;
    }
    muestraPrecio(art->precioVenta);
    text7_->setText(art->codigo);
    text16_->setText(art->cgoProveedor);
    return art;
}

std::optional<ArticuloVenta> PanelVenta::codigoProveedor() {
    if (text16_->text().trimmed().isEmpty()) return std::nullopt;
    std::optional<ArticuloVenta> art;
    Intenta(this, [&] { art = ArticuloPorCgoProveedor(almacen_, text16_->text()); });
    if (art) {
        text9_->setEditText(art->descripcion);
        text7_->setText(art->codigo);
        precioPorLista(); // con el Tag "TEXT" no hace nada
    }
    return art;
}

void PanelVenta::agregaConPrecioALaVista(const std::optional<ArticuloVenta>& art) {
    // Sin artículo, "Agregar" dice lo que falta. Con artículo sin precio, el cursor va al precio
    // para que el cajero lo escriba; con precio, se muestra y se agrega.
    if (art && art->precioVenta.isNull()) {
        txUnit_->setFocus();
        txUnit_->selectAll();
        return;
    }
    if (art) muestraPrecio(art->precioVenta);
    agregar();
}

// --- agregar, borrar, anular ---

void PanelVenta::agregar() {
    PedidoLinea p;
    p.origen = tag_;
    const CodigoConCantidad escrito = SeparaCantidad(text7_->text());
    p.codigo = escrito.codigo;
    p.idDeLista = articuloDeLista();
    p.cantidad = escrito.cantidad.value_or(txtCant_->text());
    p.unitario = txUnit_->text();
    bool noEncontrado = false;
    const bool agregada = Intenta(this, [&] {
        try {
            AgregaLinea(almacen_, estado_.IdRed, p);
        } catch (const ErrorAlmacen& e) {
            throw Aviso(QStringLiteral("Error:") + e.descripcion());
        } catch (const Aviso& a) {
            if (a.texto() != kArticuloNoEncontrado) throw;
            noEncontrado = true;
        }
    });
    if (noEncontrado) {
        muestraNoEncontrado(p.origen == OrigenLinea::Lista ? text9_->currentText() : p.codigo);
        return;
    }
    if (!agregada) {
        text7_->setFocus();
        return;
    }
    QApplication::beep();
    lblNoEncontrado_->hide();
    leeLineas(true);
    limpiaEntrada();
    tag_ = OrigenLinea::CodigoBarras;
    text7_->setFocus();
}

void PanelVenta::muestraNoEncontrado(const QString& codigo) {
    // Sin caja modal: el Enter del próximo escaneo no se pierde cerrándola. El código queda
    // marcado y lo que se escanee después lo reemplaza.
    lblNoEncontrado_->setText(kArticuloNoEncontrado +
                              (codigo.trimmed().isEmpty() ? QString() : QStringLiteral("   ") + codigo.trimmed()));
    lblNoEncontrado_->show();
    QApplication::beep();
    QTimer::singleShot(180, this, [] { QApplication::beep(); }); // dos pitidos: no entró
    text7_->setFocus();
    text7_->selectAll();
}

void PanelVenta::limpiaEntrada() {
    text9_->setCurrentIndex(-1);
    text9_->setEditText(QString());
    txtCant_->setText(QStringLiteral("1"));
    text7_->clear();
    text16_->clear();
    txUnit_->setText(QStringLiteral("0"));
    txtUnitImpuesto_->setText(QStringLiteral("0"));
}

void PanelVenta::borrarItem() {
    const auto id = grilla_->claveActual();
    if (!id) return;
    if (!Pregunta(QStringLiteral("Borra este ítem?"), this)) return;
    Intenta(this, [&] { BorraLinea(almacen_, id->toLongLong()); });
    leeLineas(false);
}

void PanelVenta::anular() {
    if (!Pregunta(QStringLiteral("Está seguro de cancelar el documento actual?"), this)) return;
    reseteaFactura();
}

void PanelVenta::cambiaCantidadActual(double delta) {
    const auto id = grilla_->claveActual();
    if (!id) return;
    Intenta(this, [&] { CambiaCantidad(almacen_, id->toLongLong(), delta); });
    grilla_->refresca();
    totales();
}

void PanelVenta::recalculaLineas() {
    bool recalculo = false;
    if (!Intenta(this, [&] {
            if (!TieneNivel(almacen_, estado_.idNivelActual, QStringLiteral("CamPreVentaArticulos"))) return;
            RecalculaLineas(almacen_, estado_.IdRed);
            recalculo = true;
        }) ||
        !recalculo)
        return;
    grilla_->refresca();
    totales();
}

QDate PanelVenta::hoy() const {
    static const Reloj relojDelSistema;
    return (reloj_ ? reloj_ : &relojDelSistema)->hoy();
}

void PanelVenta::registrar() {
    const QDate hoy = this->hoy();
    // 1. Fecha cerrada.
    if (!Intenta(this, [&] { ExigeFechaAbierta(almacen_, hoy); })) return;
    // 3. Cliente.
    if (text8_->text().trimmed().isEmpty()) {
        MensajeError(QStringLiteral("Seleccione Cliente!"), this);
        text8_->setFocus();
        return;
    }
    // 4. Pregunta.
    if (!Pregunta(QStringLiteral("Registra e Imprime :") + cboSelTipoCo_->currentText(), this)) return;
    // 5. Líneas.
    leeLineas(false);
    totales();
    if (CuentaRegistros(almacen_, QStringLiteral("SELECT idTmpFac FROM TmpFac WHERE PCRed = ?"), {estado_.IdRed}) == 0) {
        MensajeError(QStringLiteral("No hay articulos a facturar!"), this);
        return;
    }
    // 6. Ruta de salida, con sus preguntas.
    const std::optional<TipoComprobante> tipo = LeeTipo(almacen_, estado_.idTipoComprobanteActual);
    const QString plantilla = tipo && tipo->plantilla != kSinPlantilla ? tipo->plantilla : QString();
    PreguntasRuta preguntas;
    preguntas.preguntaSinPlantilla = [this](const QString& t) {
        return PreguntaSiNo(t, QStringLiteral("Atención"), Icono::Exclamacion, this);
    };
    preguntas.avisoTickets = [this](const QString& t) { Mensaje(t, QString(), Icono::Ninguno, this); };
    std::optional<Ruta> ruta;
    if (!Intenta(this, [&] { ruta = DecideRuta(almacen_, plantilla, tipo ? tipo->letra : QString(), idCliente_, preguntas); }))
        return;
    if (!ruta) return;

    // 7 a 17, todo o nada.
    DatosRegistro d;
    d.idRed = estado_.IdRed;
    d.idUsuario = estado_.idUsuarioActual;
    d.idTipoComprobante = estado_.idTipoComprobanteActual;
    d.idCliente = idCliente_;
    d.clienteEsVip = clienteEsVip_;
    d.nombreCliente = estado_.NombreClienteActual;
    d.cuitCliente = estado_.CuitClienteActual;
    d.idTipoIva = estado_.idTipoIvaActual;
    d.formaPago = estado_.FormaPagoActual;
    d.cupon = estado_.CuponActual;
    if (cboVendedores_->currentIndex() >= 0) d.idVendio = cboVendedores_->currentData().toLongLong();
    d.textoTipo = lblTipCompro_->text();
    d.suPago = ImporteMostrado(txSuPago_->text());
    d.subTotal = ImporteMostrado(lblSubTotal_->text());
    d.porcDescuento = porcentajeVigente(txtPorcDescuento_, porcDescuento_);
    d.montDescuento = ImporteMostrado(lblImporteDescuento_->text());
    d.neto = ImporteMostrado(txtNeto_->text());
    d.porcImpuesto = Dinero::desdeDouble(porcentajeVigente(txtPorcImpuesto_, porcImpuesto_));
    d.importeIva = ImporteMostrado(lblImpuestoImporte_->text());
    d.total = ImporteMostrado(txtMontoTotal_->text());
    d.formaCalculoVip = conf_.lee(clave::miscelaneas, QStringLiteral("FormaCalculoVIP"));
    d.hoy = hoy;
    const auto noSeRegistro = [](const QString& motivo) {
        return Aviso(QStringLiteral("No se registró el comprobante: ") + motivo +
                     QStringLiteral("\nEl borrador queda como estaba."));
    };
    Registrado r;
    const bool registrado = Intenta(this, [&] {
        try {
            r = RegistraComprobante(almacen_, d, *ruta);
        } catch (const Aviso& a) {
            throw noSeRegistro(a.texto());
        } catch (const ErrorAlmacen& e) {
            throw noSeRegistro(e.descripcion());
        } catch (const ImporteFueraDeRango&) {
            throw noSeRegistro(kImporteFueraDeRango);
        }
    });
    if (!registrado) return;
    estado_.MontDescuentoActual = d.montDescuento;
    // 18. Impresión, con el comprobante ya guardado: una falla no pierde nada.
    if (*ruta == Ruta::Plantilla && salida_) salida_->imprimeComprobante(plantilla, r.idComprobante);
    // 19 y 20.
    reseteaFactura();
    Q_EMIT comprobanteRegistrado(r.idComprobante);
}

void PanelVenta::reimpresion() {
    if (!Intenta(this, [this] { ExigeNivel(almacen_, estado_.idNivelActual, QStringLiteral("veventas")); })) return;
    if (!salida_) return;
    PanReImpresion dialogo(almacen_, *salida_, hoy(), this);
    dialogo.exec();
}

void PanelVenta::reseteaFactura() {
    // 1 y 2
    txSuPago_->clear();
    txSuVuelto_->setText(FormatoMoneda(Dinero(), estado_.MascaraMoneda));
    Intenta(this, [this] { VaciaBorrador(almacen_, estado_.IdRed); });
    // 3
    label6_->setText(QStringLiteral("????"));
    clienteEsVip_ = false;
    idCliente_.reset();
    SelComboId(cboVendedores_, estado_.idUsuarioActual);
    // 4
    estado_.DescuentoClienteActual = 0;
    estado_.MontDescuentoActual = Dinero();
    estado_.NombreClienteActual = QStringLiteral("Cons.Final");
    estado_.FormaPagoActual = QStringLiteral("EFVO");
    estado_.ObservacionesActual.clear();
    estado_.idTipoIvaActual = 1;
    estado_.CuitClienteActual.clear();
    estado_.CuponActual = QStringLiteral("000");
    text8_->clear();
    for (QLabel* l : {lblSubTotal_, txtMontoTotal_, txtNeto_, lblImporteDescuento_, lblImpuestoImporte_})
        l->setText(FormatoMoneda(Dinero(), estado_.MascaraMoneda));
    txtPorcDescuento_->setText(QStringLiteral("0"));
    // 5
    const QString ultimo = conf_.lee(clave::miscelaneas, QStringLiteral("UltimoComprobantePredeterminado"));
    if (!EsNumerico(QStringView(ultimo))) {
        Intenta(this, [this] {
            if (const auto tipo = TipoComprobantePredeterminado(almacen_, conf_))
                estado_.idTipoComprobanteActual = qint32(*tipo);
        });
    }
    // 6
    lblCli_->setText(QStringLiteral("<Sin seleccion de cliente>"));
    lblDirCli_->setText(QStringLiteral("Domicilio - Telefonos - e-mail"));
    lblCuit_->setText(QStringLiteral("CUIT : 0"));
    SelComboId(cboSelTipoCo_, estado_.idTipoComprobanteActual);
    lblTipCompro_->setText(cboSelTipoCo_->currentText());
    Intenta(this, [this] { lblProx_->setText(ProximoNumeroMostrado(almacen_, estado_.idTipoComprobanteActual)); });
    grilla_->refresca();
    command18_->setEnabled(false);
    lblItems_->setText(QStringLiteral("0 ítems."));
    limpiaEntrada();
    lblNoEncontrado_->hide();
    if (aplicaClientePredeterminado()) text7_->setFocus();
    else text8_->setFocus();
}

// --- totales y vuelto ---

void PanelVenta::totales() {
    const QString& m = estado_.MascaraMoneda;
    Totales t;
    if (!Intenta(this, [&] {
            t = CalculaTotales(almacen_, estado_.IdRed, porcentajeVigente(txtPorcDescuento_, porcDescuento_),
                               porcentajeVigente(txtPorcImpuesto_, porcImpuesto_));
        }))
        return;
    txtMontoTotal_->setText(Formato(QVariant(0.0), m));
    if (t.hayLineas) {
        lblSubTotal_->setText(Formato(QVariant(t.subTotal), m));
        lblImporteDescuento_->setText(Formato(QVariant(t.descuento), m));
        txtNeto_->setText(Formato(QVariant(t.neto), m));
        lblImpuestoImporte_->setText(Formato(QVariant(t.impuesto), m));
        txtMontoTotal_->setText(Formato(QVariant(t.total), m));
        lblItems_->setText(TextoItems(t));
    }
    // Una línea imposible no traba el panel: se dice cuál es, se elige y se puede borrar.
    lblItems_->setStyleSheet(t.problema.isEmpty() ? QString() : QStringLiteral("color: #b00020; font-weight: bold;"));
    if (!t.problema.isEmpty()) {
        for (QLabel* l : {lblSubTotal_, lblImporteDescuento_, txtNeto_, lblImpuestoImporte_}) l->setText(Formato(QVariant(0.0), m));
        lblItems_->setText(t.problema);
        for (int f = 0; grilla_->modelo().asegura(f); ++f)
            if (grilla_->modelo().registro(f).value(QStringLiteral("idTmpFac")).toLongLong() == t.idLineaConProblema) {
                grilla_->irAFila(f);
                break;
            }
    }
    command18_->setEnabled(grilla_->filaActual().has_value());
    if (t.problema.isEmpty()) actualizaVuelto();
    else txSuVuelto_->clear(); // sin total no hay vuelto que dar
}

void PanelVenta::actualizaVuelto() {
    // El vuelto sigue a lo que se escribe en "Su Pago ?", también cuando se borra; un pago que no
    // se lee o no cabe no muestra vuelto.
    const auto pago = LeeImporte(txSuPago_->text());
    const auto total = LeeImporte(txtMontoTotal_->text());
    const Dinero tope(kImporteMaximo);
    if (txSuPago_->text().trimmed().isEmpty() || !pago || !total || *pago > tope || *pago < -tope) {
        txSuVuelto_->clear();
        return;
    }
    txSuVuelto_->setText(FormatoMoneda(*pago - *total, estado_.MascaraMoneda));
}

double PanelVenta::porcentajeVigente(const QLineEdit* campo, double& vigente) const {
    // Vacío es 0; lo que no se lee deja el último porcentaje bueno, y así los totales no cambian.
    const QString t = campo->text().trimmed();
    if (t.isEmpty()) return vigente = 0;
    const auto v = LeeNumero(t);
    if (v && std::fabs(*v) <= kPorcentajeMaximo) vigente = *v;
    return vigente;
}

bool PanelVenta::tomaPorcentaje(QLineEdit* campo, const QString& nombre, double& vigente) {
    const QString t = campo->text().trimmed();
    const auto v = t.isEmpty() ? std::optional<double>(0.0) : LeeNumero(t);
    if (v && std::fabs(*v) <= kPorcentajeMaximo) {
        vigente = *v;
        return true;
    }
    // El campo vuelve al porcentaje vigente y se dice por qué, después de que el foco termine de moverse.
    campo->setText(QString::number(vigente, 'g', 12));
    QTimer::singleShot(0, this, [this, nombre, t] {
        Intenta(this, [&] { ExigePorcentaje(t, nombre); });
    });
    return false;
}

// --- cliente ---

void PanelVenta::llenaCliente(const ClienteVenta& c, const QString& etiqueta) {
    label6_->setText(etiqueta);
    idCliente_ = c.idVendedor;
    clienteEsVip_ = c.vip;
    estado_.NombreClienteActual = c.nombre;
    lblCli_->setText(c.nombre);
    estado_.CuitClienteActual = c.cuit;
    estado_.idTipoIvaActual = c.idTipoIva;
    estado_.DescuentoClienteActual = c.descuento; // llega a los totales sólo por "Mas Datos..."
    SelComboId(cboFPago_, c.idTipoFormaPago);
    // Un cliente sin forma de pago propia paga en efectivo, y la pantalla lo muestra así.
    if (cboFPago_->currentText().isEmpty()) cboFPago_->setCurrentIndex(cboFPago_->findText(QStringLiteral("EFVO")));
    estado_.FormaPagoActual = cboFPago_->currentText().isEmpty() ? QStringLiteral("EFVO") : cboFPago_->currentText();
    // Un cliente sin domicilio, teléfonos ni e-mail (el consumidor final) no muestra sólo las comas.
    lblDirCli_->setText(QString(c.direccion).remove(u',').trimmed().isEmpty() ? QString() : c.direccion);
    lblCuit_->setText(QStringLiteral("CUIT - RFC : ") + c.cuit);
}

void PanelVenta::eligeCliente() {
    std::optional<ClienteVenta> porNumero;
    Intenta(this, [&] { porNumero = ClientePorNumero(almacen_, text8_->text()); });
    if (porNumero) {
        llenaCliente(*porNumero, porNumero->vip ? QStringLiteral("Cliente VIP:") : QStringLiteral("Cliente:"));
        text7_->setFocus();
        return;
    }
    PanSelCliente busca(almacen_, this);
    if (busca.exec() == QDialog::Accepted && busca.idVendedor()) {
        std::optional<ClienteVenta> c;
        Intenta(this, [&] { c = ClientePorId(almacen_, *busca.idVendedor()); });
        if (c) {
            text8_->setText(QString::number(c->idVendedor));
            llenaCliente(*c, QStringLiteral("Cliente:"));
            clienteEsVip_ = false;
            text7_->setFocus();
        }
    }
    if (!idCliente_) {
        text8_->clear();
        text8_->setFocus();
    }
}

void PanelVenta::buscaArticulo() {
    PanSelArt busca(almacen_, conf_, estado_.MascaraMoneda, this);
    if (busca.exec() == QDialog::Accepted && !busca.codigo().isEmpty()) {
        text7_->setText(busca.codigo());
        tag_ = OrigenLinea::CodigoBarras;
        precioPorCodigo();
        txtCant_->setFocus();
    }
}

void PanelVenta::masDatos() {
    DatosFPago d;
    d.idTipoComprobante = estado_.idTipoComprobanteActual;
    d.observaciones = estado_.ObservacionesActual;
    d.descuento = estado_.DescuentoClienteActual;
    d.nombreCliente = estado_.NombreClienteActual;
    d.cuit = estado_.CuitClienteActual;
    d.idTipoIva = estado_.idTipoIvaActual;
    d.cupon = estado_.CuponActual;
    d.posicionFormaPago = cboFPago_->currentIndex();
    PanFPago pantalla(almacen_, estado_.ClaveImpositiva, d, this);
    if (pantalla.exec() != QDialog::Accepted) return;
    const DatosFPago r = pantalla.datos();
    estado_.idTipoComprobanteActual = qint32(r.idTipoComprobante);
    SelComboId(cboSelTipoCo_, r.idTipoComprobante);
    estado_.ObservacionesActual = r.observaciones;
    estado_.DescuentoClienteActual = r.descuento;
    txtPorcDescuento_->setText(QString::number(r.descuento, 'g', 12));
    estado_.NombreClienteActual = r.nombreCliente;
    estado_.CuitClienteActual = r.cuit;
    if (r.idTipoIva > 0) estado_.idTipoIvaActual = r.idTipoIva;
    estado_.CuponActual = r.cupon;
    estado_.FormaPagoActual = r.formaPago;
    if (r.posicionFormaPago >= 0 && r.posicionFormaPago < cboFPago_->count()) cboFPago_->setCurrentIndex(r.posicionFormaPago);
    lblTipCompro_->setText(cboSelTipoCo_->currentText());
    Intenta(this, [this] { lblProx_->setText(ProximoNumeroMostrado(almacen_, estado_.idTipoComprobanteActual)); });
    totales();
}

} // namespace orv
