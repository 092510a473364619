#include "sales/ui/panel_venta.h"

#include "sales/tipos_comprobante.h"
#include "shell/grilla.h"
#include "shell/listas.h"
#include "shell/paneles.h"
#include "store/formato.h"

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kLineas = QStringLiteral("SELECT Codigo, Cantidad, Descripcion, Unitario, SubTotal, Sn, idTmpFac, "
                                       "idArticulo FROM TmpFac WHERE PCRed = ? ORDER BY idTmpFac");

QLabel* etiqueta(const QString& texto, QWidget* padre) {
    auto* l = new QLabel(texto, padre);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return l;
}

} // namespace

PanelVenta::PanelVenta(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf, QWidget* padre)
    : QWidget(padre), almacen_(almacen), estado_(estado), conf_(conf) {
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(0, 0, 0, 0);
    capa->setSpacing(10);

    auto* cabeza = new QHBoxLayout;
    cabeza->addWidget(TituloPanel(QStringLiteral("Vender"), this));
    cabeza->addStretch(1);
    command55_ = new QPushButton(QStringLiteral("Maximizar"), this);
    command55_->setObjectName(QStringLiteral("Command55"));
    command55_->setAutoDefault(false);
    command55_->setFocusPolicy(Qt::TabFocus);
    cabeza->addWidget(command55_);
    capa->addLayout(cabeza);

    auto* datos = new QGridLayout;
    datos->setHorizontalSpacing(10);
    datos->setVerticalSpacing(8);
    lblTipCompro_ = new QPushButton(this);
    lblTipCompro_->setObjectName(QStringLiteral("lblTipCompro"));
    lblTipCompro_->setFlat(true);
    lblTipCompro_->setCursor(Qt::PointingHandCursor);
    lblTipCompro_->setToolTip(QStringLiteral("Clic para cambiar el tipo de comprobante"));
    lblTipCompro_->setStyleSheet(QStringLiteral("text-align: left; font-weight: bold;"));
    cboSelTipoCo_ = new QComboBox(this);
    cboSelTipoCo_->setObjectName(QStringLiteral("cboSelTipoCo"));
    cboSelTipoCo_->setMinimumWidth(200);
    cboSelTipoCo_->hide();
    cboSelTipoCo_->installEventFilter(this);
    lblProx_ = new QLabel(this);
    lblProx_->setObjectName(QStringLiteral("lblProx"));
    lblProx_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont numero = lblProx_->font();
    numero.setBold(true);
    lblProx_->setFont(numero);
    lblCli_ = new QLabel(QStringLiteral("<Sin seleccion de cliente>"), this);
    lblCli_->setObjectName(QStringLiteral("lblCli"));
    cboVendedores_ = new QComboBox(this);
    cboVendedores_->setObjectName(QStringLiteral("cboVendedores"));
    cboVendedores_->setMinimumWidth(200);

    auto* tipo = new QHBoxLayout;
    tipo->setSpacing(0);
    tipo->addWidget(lblTipCompro_);
    tipo->addWidget(cboSelTipoCo_);
    tipo->addStretch(1);
    datos->addWidget(etiqueta(QStringLiteral("Comprobante :"), this), 0, 0);
    datos->addLayout(tipo, 0, 1);
    datos->addWidget(etiqueta(QStringLiteral("Próximo Nro. :"), this), 0, 2);
    datos->addWidget(lblProx_, 0, 3);
    datos->addWidget(etiqueta(QStringLiteral("Cliente :"), this), 1, 0);
    datos->addWidget(lblCli_, 1, 1);
    datos->addWidget(etiqueta(QStringLiteral("Vendedor :"), this), 1, 2);
    datos->addWidget(cboVendedores_, 1, 3);
    datos->setColumnStretch(1, 1);
    capa->addLayout(datos);

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
    capa->addWidget(grilla_, 1);

    lblItems_ = new QLabel(QStringLiteral("0 ítems."), this);
    lblItems_->setObjectName(QStringLiteral("lblItems"));
    capa->addWidget(lblItems_);

    connect(command55_, &QPushButton::clicked, this, &PanelVenta::agrandarPulsado);
    connect(lblTipCompro_, &QPushButton::clicked, this, [this] {
        lblTipCompro_->hide();
        cboSelTipoCo_->show();
        cboSelTipoCo_->setFocus();
    });
    connect(cboSelTipoCo_, &QComboBox::activated, this, [this] {
        eligeTipo();
        cboSelTipoCo_->clearFocus();
    });
}

bool PanelVenta::eventFilter(QObject* o, QEvent* e) {
    if (o == cboSelTipoCo_ && e->type() == QEvent::FocusOut && !cboSelTipoCo_->view()->isVisible()) {
        cboSelTipoCo_->hide();
        lblTipCompro_->show();
    }
    return QWidget::eventFilter(o, e);
}

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
    try {
        lblProx_->setText(ProximoNumeroMostrado(almacen_, estado_.idTipoComprobanteActual));
    } catch (const ErrorAlmacen&) {
        lblProx_->clear();
    }
}

void PanelVenta::llenaVendedores() {
    const QVariant elegido = cboVendedores_->currentData();
    cboVendedores_->clear();
    LlenaCombo(cboVendedores_, almacen_, QStringLiteral("SELECT idUsuario, NombreCompleto FROM Usuarios ORDER BY idUsuario"),
               {}, QStringLiteral("NombreCompleto"), QStringLiteral("idUsuario"));
    if (elegido.isValid()) SelComboId(cboVendedores_, elegido);
}

void PanelVenta::seleccionaVendedor(qint64 idUsuario) { SelComboId(cboVendedores_, idUsuario); }

void PanelVenta::entra() {
    try {
        grilla_->fijaConsulta(kLineas, {estado_.IdRed});
    } catch (const ErrorAlmacen&) {
    }
    eligeTipo();
    actualizaItems();
    QTimer::singleShot(0, this, &PanelVenta::ajustaGrilla);
}

void PanelVenta::actualizaItems() {
    try {
        QSqlQuery q = almacen_.consulta(
            QStringLiteral("SELECT count(*), sum(Cantidad) FROM TmpFac WHERE PCRed = ?"), {estado_.IdRed});
        if (q.next() && q.value(0).toInt() > 0)
            lblItems_->setText(Formato(q.value(1), QStringLiteral("0.0")) + QStringLiteral(" de ") +
                               q.value(0).toString() + QStringLiteral(" ítems."));
        else
            lblItems_->setText(QStringLiteral("0 ítems."));
    } catch (const ErrorAlmacen&) {
    }
}

void PanelVenta::ajustaGrilla() {
    QTableView* t = grilla_->tabla();
    const int ancho = t->viewport()->width();
    static constexpr int proporcion[] = {18, 10, 30, 19, 19};
    QHeaderView* h = t->horizontalHeader();
    int usadas = 0;
    int resto = ancho;
    QList<int> demas;
    for (int visual = 0; visual < h->count(); ++visual) {
        const int logica = h->logicalIndex(visual);
        if (h->isSectionHidden(logica)) continue;
        if (usadas < 5) {
            const int a = ancho * proporcion[usadas++] / 100;
            h->resizeSection(logica, a);
            resto -= a;
        } else {
            demas << logica;
        }
    }
    // Lo que queda del ancho se reparte entre las columnas siguientes ("Nro Serie").
    for (int logica : demas) h->resizeSection(logica, qMax(40, resto / int(demas.size())));
}

void PanelVenta::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    ajustaGrilla();
}

} // namespace orv
