#include "sales/ui/pan_pre_fact.h"

#include "sales/cliente_venta.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"
#include "store/entrada.h"
#include "store/formato.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <limits>

namespace orv {

PanPreFact::PanPreFact(const Almacen& almacen, const Configuracion& conf, QWidget* padre) : QDialog(padre), almacen_(almacen), conf_(conf) {
    setObjectName(QStringLiteral("panPreFact"));
    setWindowTitle(QStringLiteral("Seleccione el comprobante a predeterminar"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->addWidget(new QLabel(QStringLiteral("Comprobante con que empieza cada venta :"), this));
    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    LlenaCombo(combo1_, almacen, QStringLiteral("SELECT idTipoComprobante, Tipo FROM TiposDeComprobantes ORDER BY idTipoComprobante"),
               {}, QStringLiteral("Tipo"), QStringLiteral("idTipoComprobante"));
    combo1_->setCurrentIndex(-1);
    const QString pred = conf_.lee(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado"));
    if (const auto id = LeeEntero(pred, 0, std::numeric_limits<qint32>::max())) SelComboId(combo1_, *id);
    chkUEm_ = new QCheckBox(QStringLiteral("Último emitido queda como predeterminado"), this);
    chkUEm_->setObjectName(QStringLiteral("chkUEm"));
    chkUEm_->setChecked(EsNumerico(QStringView(conf_.lee(clave::miscelaneas, QStringLiteral("UltimoComprobantePredeterminado")))));
    capa->addWidget(combo1_);
    capa->addWidget(chkUEm_);
    // El cliente de cada venta, para el negocio que casi siempre vende al consumidor final: la
    // venta empieza con él y el cursor en el código. Vacío, cada venta pide su cliente.
    capa->addSpacing(8);
    auto* rotuloCliente = new QLabel(QStringLiteral("Cliente con que empieza cada venta (Nro. de cliente, vacío: ninguno) :"), this);
    rotuloCliente->setWordWrap(true);
    capa->addWidget(rotuloCliente);
    txtClientePred_ = new QLineEdit(this);
    txtClientePred_->setObjectName(QStringLiteral("txtClientePredeterminado"));
    txtClientePred_->setPlaceholderText(QStringLiteral("Ninguno"));
    txtClientePred_->setText(conf_.lee(clave::miscelaneas, QStringLiteral("ClientePredeterminado")));
    capa->addWidget(txtClientePred_);
    connect(BotonesAlPie(this, capa, false), &QPushButton::clicked, this, &PanPreFact::acepta);
    resize(420, sizeHint().height());
    CentrarVentana(this);
}

void PanPreFact::acepta() {
    if (combo1_->currentIndex() < 0) {
        MensajeError(QStringLiteral("Seleccione un tipo de comprobante!"), this);
        return;
    }
    if (!Intenta(this, [this] { FijaClientePredeterminado(almacen_, conf_, txtClientePred_->text()); })) {
        txtClientePred_->setFocus();
        txtClientePred_->selectAll();
        return;
    }
    conf_.graba(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado"), combo1_->currentData().toString());
    conf_.graba(clave::miscelaneas, QStringLiteral("UltimoComprobantePredeterminado"),
                chkUEm_->isChecked() ? QStringLiteral("1") : QString());
    accept();
}

} // namespace orv
