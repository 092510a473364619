// Panel "Vender": cómo se arma la pantalla, un área por función (cabeza, cliente, carga de
// artículos, líneas, totales). Lo que hace cada control está en panel_venta.cpp.

#include "sales/ui/panel_venta.h"

#include "widgets/grilla.h"
#include "widgets/paneles.h"

#include <QComboBox>
#include <QCompleter>
#include <QDoubleValidator>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace orv {

namespace {

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

// Un porcentaje de los totales: angosto, a la derecha, empieza en 0.
QLineEdit* porcentaje(const QString& nombre, QWidget* padre) {
    QLineEdit* e = campo(nombre, padre);
    e->setText(QStringLiteral("0"));
    e->setMaximumWidth(56);
    e->setAlignment(Qt::AlignRight);
    return e;
}

} // namespace

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
    creaCamposDeCarga(entrada);
    auto* ge = new QGridLayout(entrada);
    ge->setContentsMargins(10, 6, 10, 8);
    ge->setHorizontalSpacing(8);
    ge->setVerticalSpacing(2);
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
    ge->addWidget(lblNoEncontrado_, 4, 0, 1, 6);
    return entrada;
}

// Los controles de la carga, con su aspecto; armaEntrada los ubica.
void PanelVenta::creaCamposDeCarga(QWidget* entrada) {
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

// Importes, porcentajes, pago y vuelto, y los botones de la venta; armaTotales los ubica.
void PanelVenta::creaImportes(QWidget* caja) {
    lblSubTotal_ = importe(QStringLiteral("lblSubTotal"), caja, 1.1);
    txtPorcDescuento_ = porcentaje(QStringLiteral("txtPorcDescuento"), caja);
    lblImporteDescuento_ = importe(QStringLiteral("lblImporteDescuento"), caja, 1.1);
    txtNeto_ = importe(QStringLiteral("txtNeto"), caja, 1.1);
    txtPorcImpuesto_ = porcentaje(QStringLiteral("txtPorcImpuesto"), caja);
    lblImpuestoImporte_ = importe(QStringLiteral("lblImpuestoImporte"), caja, 1.1);
    txtMontoTotal_ = importe(QStringLiteral("txtMontoTotal"), caja, 2.2, true);
    txSuPago_ = campo(QStringLiteral("txSuPago"), caja);
    txSuPago_->setAlignment(Qt::AlignRight);
    QFont fpago = txSuPago_->font();
    fpago.setPointSizeF(fpago.pointSizeF() * 1.3);
    txSuPago_->setFont(fpago);
    txSuVuelto_ = importe(QStringLiteral("txSuVuelto"), caja, 1.6, true);
    txSuVuelto_->setText(QStringLiteral("0"));
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
}

// Totales, pago y vuelto, y los botones de la venta.
QGroupBox* PanelVenta::armaTotales() {
    auto* caja = new QGroupBox(this);
    caja->setObjectName(QStringLiteral("cajaTotales"));
    caja->setMinimumWidth(290);
    caja->setMaximumWidth(330);
    creaImportes(caja);
    auto* gt = new QGridLayout(caja);
    gt->setContentsMargins(12, 10, 12, 10);
    gt->setVerticalSpacing(6);
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
    auto* botones = new QHBoxLayout;
    botones->addWidget(command18_);
    botones->addWidget(command21_);
    gt->addLayout(botones, f++, 0, 1, 3);
    gt->addWidget(command16_, f++, 0, 1, 3);
    gt->setColumnStretch(2, 1);
    return caja;
}

} // namespace orv
