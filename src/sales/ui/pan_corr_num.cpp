#include "sales/ui/pan_corr_num.h"

#include "sales/tipos_comprobante.h"
#include "sales/ui/pan_nue_tipo_comproba.h"
#include "sales/ui/pan_pre_fact.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orv {

namespace {

QLineEdit* vista(const QString& nombre, QWidget* padre) {
    auto* e = new QLineEdit(padre);
    e->setObjectName(nombre);
    e->setReadOnly(true);
    return e;
}

QCheckBox* marca(const QString& nombre, const QString& texto, QWidget* padre) {
    auto* c = new QCheckBox(texto, padre);
    c->setObjectName(nombre);
    c->setAttribute(Qt::WA_TransparentForMouseEvents);
    c->setFocusPolicy(Qt::NoFocus);
    return c;
}

} // namespace

PanCorrNum::PanCorrNum(Almacen& almacen, const Configuracion& conf, QWidget* padre)
    : QDialog(padre), almacen_(almacen), conf_(conf) {
    setObjectName(QStringLiteral("PanCorrNum"));
    setWindowTitle(QStringLiteral("Comprobantes y Numeración"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    auto* cuerpo = new QHBoxLayout;
    capa->addLayout(cuerpo, 1);

    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->permiteAgrupar(false);
    grilla_->fijaClave(QStringLiteral("idTipoComprobante"));
    grilla_->fijaTitulo(QStringLiteral("idTipoComprobante"), QStringLiteral("Nro."));
    grilla_->fijaTitulo(QStringLiteral("PuntoDeVenta"), QStringLiteral("Pto. Vta."));
    grilla_->fijaTitulo(QStringLiteral("Correlativo"), QStringLiteral("Último Nro."));
    Intenta(this, [this] {
        grilla_->fijaConsulta(QStringLiteral("SELECT idTipoComprobante, Tipo, Letra, PuntoDeVenta, Correlativo "
                                             "FROM TiposDeComprobantes ORDER BY idTipoComprobante"));
    });
    grilla_->fijaAnchoColumna(QStringLiteral("idTipoComprobante"), 50);
    grilla_->fijaAnchoColumna(QStringLiteral("Tipo"), 200);
    grilla_->fijaAnchoColumna(QStringLiteral("Letra"), 50);
    cuerpo->addWidget(grilla_, 3);

    auto* pestanias = new QTabWidget(this);
    auto* principales = new QWidget(pestanias);
    auto* fp = new QFormLayout(principales);
    txTipo_ = vista(QStringLiteral("txTipo"), principales);
    cbLetra_ = vista(QStringLiteral("cbLetra"), principales);
    cbPtoVta_ = vista(QStringLiteral("cbPtoVta"), principales);
    txCorrelativo_ = vista(QStringLiteral("txCorrelativo"), principales);
    fp->addRow(QStringLiteral("Tipo :"), txTipo_);
    fp->addRow(QStringLiteral("Letra :"), cbLetra_);
    fp->addRow(QStringLiteral("Punto de venta :"), cbPtoVta_);
    fp->addRow(QStringLiteral("Último nro. :"), txCorrelativo_);
    pestanias->addTab(principales, QStringLiteral("Principales"));
    auto* opciones = new QWidget(pestanias);
    auto* co = new QVBoxLayout(opciones);
    chkStock_ = marca(QStringLiteral("chkStock"), QStringLiteral("Descuenta cantidades del stock ?"), opciones);
    chkCaja_ = marca(QStringLiteral("chkCaja"), QStringLiteral("Genera movimiento contable / caja ?"), opciones);
    chkInversa_ = marca(QStringLiteral("chkInversa"), QStringLiteral("Comprobante de operación inversa ?"), opciones);
    chkEsComercial_ = marca(QStringLiteral("chkEsComercial"), QStringLiteral("Comprobante comercial ?"), opciones);
    for (QCheckBox* c : {chkEsComercial_, chkInversa_, chkStock_, chkCaja_}) co->addWidget(c);
    co->addStretch(1);
    pestanias->addTab(opciones, QStringLiteral("Opciones"));
    auto* esquema = new QWidget(pestanias);
    auto* ce = new QVBoxLayout(esquema);
    lblPlantilla_ = new QLabel(esquema);
    lblPlantilla_->setObjectName(QStringLiteral("lblPlantilla"));
    lblPlantilla_->setWordWrap(true);
    lblPlantilla_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    ce->addWidget(lblPlantilla_);
    ce->addStretch(1);
    pestanias->addTab(esquema, QStringLiteral("Esquema de impresión"));
    cuerpo->addWidget(pestanias, 2);

    auto* botones = new QHBoxLayout;
    auto boton = [&](const char* nombre, const char* texto) {
        auto* b = new QPushButton(QString::fromUtf8(texto), this);
        b->setObjectName(QString::fromLatin1(nombre));
        b->setAutoDefault(false);
        botones->addWidget(b);
        return b;
    };
    auto* nuevo = boton("cmdNuevo", "&Nuevo tipo...");
    auto* editar = boton("cmdEditar", "&Editar...");
    auto* borrar = boton("cmdBorrar", "&Borrar");
    auto* predeterminar = boton("cmdPredeterminar", "&Predeterminar para ventas...");
    botones->addStretch(1);
    auto* cerrar = boton("cmdCerrar", "&Cerrar");
    capa->addLayout(botones);
    connect(nuevo, &QPushButton::clicked, this, &PanCorrNum::nuevo);
    connect(editar, &QPushButton::clicked, this, &PanCorrNum::editar);
    connect(borrar, &QPushButton::clicked, this, &PanCorrNum::borrar);
    connect(predeterminar, &QPushButton::clicked, this, &PanCorrNum::predeterminar);
    connect(cerrar, &QPushButton::clicked, this, &PanCorrNum::accept);
    connect(grilla_, &Grilla::filaCambiada, this, &PanCorrNum::muestraFila);
    connect(grilla_, &Grilla::filaActivada, this, &PanCorrNum::editar);

    muestraFila();
    resize(900, 480);
    CentrarVentana(this);
}

void PanCorrNum::muestraFila() {
    std::optional<TipoComprobante> t;
    if (const auto id = grilla_->claveActual()) {
        Intenta(this, [&] { t = LeeTipo(almacen_, id->toLongLong()); });
    }
    txTipo_->setText(t ? t->tipo : QString());
    cbLetra_->setText(t ? t->letra : QString());
    cbPtoVta_->setText(t ? t->puntoDeVenta : QString());
    txCorrelativo_->setText(t ? t->correlativo : QString());
    chkStock_->setText(t && t->operacionInversa ? QStringLiteral("Aumenta cantidades del stock ?")
                                                : QStringLiteral("Descuenta cantidades del stock ?"));
    chkStock_->setChecked(t && t->descuentaStock);
    chkCaja_->setChecked(t && t->registraCaja);
    chkInversa_->setChecked(t && t->operacionInversa);
    chkEsComercial_->setChecked(t && t->esComercial);
    lblPlantilla_->setText(t ? t->plantilla : QString());
}

void PanCorrNum::nuevo() {
    PanNueTipoComproba dialogo(almacen_, conf_, std::nullopt, this);
    if (dialogo.exec() != QDialog::Accepted) return;
    Intenta(this, [&] { GuardaTipo(almacen_, std::nullopt, dialogo.datos()); });
    grilla_->refresca();
    muestraFila();
}

void PanCorrNum::editar() {
    const auto id = grilla_->claveActual();
    if (!id) {
        MensajeError(QStringLiteral("Seleccione un tipo de comprobante previamente!"), this);
        return;
    }
    PanNueTipoComproba dialogo(almacen_, conf_, id->toLongLong(), this);
    if (dialogo.noEncontrado() || dialogo.exec() != QDialog::Accepted) return;
    Intenta(this, [&] { GuardaTipo(almacen_, id->toLongLong(), dialogo.datos()); });
    grilla_->refresca();
    muestraFila();
}

void PanCorrNum::borrar() {
    const auto id = grilla_->claveActual();
    if (!id) return;
    if (!PreguntaSiNo(QStringLiteral("Está seguro de eliminar este esquema de comprobantes?"),
                      QStringLiteral("Atención !!"), Icono::Exclamacion, this))
        return;
    Intenta(this, [&] { BorraTipo(almacen_, id->toLongLong()); });
    grilla_->refresca();
    muestraFila();
}

void PanCorrNum::predeterminar() {
    PanPreFact dialogo(almacen_, conf_, this);
    dialogo.exec();
}

} // namespace orv
