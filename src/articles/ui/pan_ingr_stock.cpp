#include "articles/ui/pan_ingr_stock.h"

#include "articles/movimientos_stock.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kUltimoTipo = QStringLiteral("UltimoTipoMovimientoStock");
const QString kUltimoComprobante = QStringLiteral("UltimoComprobanteStock");

} // namespace

PanIngrStock::PanIngrStock(Almacen& almacen, const Configuracion& conf, const Reloj& reloj, qint64 idArticulo,
                           QWidget* padre)
    : QDialog(padre), almacen_(almacen), conf_(conf), reloj_(reloj), idArticulo_(idArticulo) {
    setObjectName(QStringLiteral("PanIngrStock"));
    setWindowTitle(QStringLiteral("Ajustes de Stock por artículo"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    armaCampos(capa);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanIngrStock::acepta);
    cargaRecordados();
    connect(combo1_, &QComboBox::currentIndexChanged, this, &PanIngrStock::eligeTipo);
    Intenta(this, [this] { label1_->setText(DescripcionArticulo(almacen_, idArticulo_).value_or(QString())); });
    text1_->installEventFilter(this);

    setMinimumWidth(420);
    adjustSize();
    CentrarVentana(this);
    text1_->setFocus();
}

void PanIngrStock::armaCampos(QVBoxLayout* capa) {
    label1_ = new QLabel(this);
    label1_->setObjectName(QStringLiteral("Label1"));
    QFont negrita = label1_->font();
    negrita.setBold(true);
    negrita.setPointSizeF(negrita.pointSizeF() * 1.15);
    label1_->setFont(negrita);
    label1_->setWordWrap(true);
    capa->addWidget(label1_);

    auto* campos = new QFormLayout;
    campos->setSpacing(8);
    text1_ = new QLineEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setMaximumWidth(140);
    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    combo1_->setMinimumWidth(220);
    text2_ = new QLineEdit(this);
    text2_->setObjectName(QStringLiteral("Text2"));
    text2_->setMaxLength(50);
    campos->addRow(QStringLiteral("Cantidad :"), text1_);
    campos->addRow(QStringLiteral("Tipo :"), combo1_);
    campos->addRow(QStringLiteral("Comprobante :"), text2_);
    capa->addLayout(campos);

    auto* operacion = new QGroupBox(this);
    auto* co = new QHBoxLayout(operacion);
    option1_ = new QRadioButton(QStringLiteral("Suma"), operacion);
    option1_->setObjectName(QStringLiteral("Option1"));
    option2_ = new QRadioButton(QStringLiteral("Resta"), operacion);
    option2_->setObjectName(QStringLiteral("Option2"));
    option1_->setChecked(true);
    co->addWidget(option1_);
    co->addWidget(option2_);
    co->addStretch(1);
    capa->addWidget(operacion);

    label5_ = new QLabel(this);
    label5_->setObjectName(QStringLiteral("Label5"));
    label5_->hide();
}

// Los tipos, el último usado (o "Compra") y el último comprobante.
void PanIngrStock::cargaRecordados() {
    LlenaCombo(combo1_, almacen_,
               QStringLiteral("SELECT idTipoMovimiento, TipoMovimientoStock FROM TiposMovimientoStock "
                              "ORDER BY idTipoMovimiento"),
               {}, QStringLiteral("TipoMovimientoStock"), QStringLiteral("idTipoMovimiento"));
    const int ultimo = combo1_->findText(conf_.lee(clave::configuracion, kUltimoTipo), Qt::MatchExactly);
    combo1_->setCurrentIndex(ultimo >= 0 ? ultimo : combo1_->findText(kTipoCompra, Qt::MatchExactly));
    text2_->setText(conf_.lee(clave::configuracion, kUltimoComprobante));
    eligeTipo();
}

bool PanIngrStock::eventFilter(QObject* o, QEvent* e) {
    if (o == text1_ && e->type() == QEvent::FocusIn) QTimer::singleShot(0, text1_, &QLineEdit::selectAll);
    return QDialog::eventFilter(o, e);
}

void PanIngrStock::eligeTipo() {
    label5_->clear();
    if (combo1_->currentIndex() < 0) return;
    Intenta(this, [this] {
        if (const auto id = IdTipoMovimiento(almacen_, combo1_->currentText())) label5_->setText(QString::number(*id));
    });
}

void PanIngrStock::acepta() {
    AjusteStock ajuste;
    ajuste.idArticulo = idArticulo_;
    bool esNumero = false;
    const qint64 idTipo = label5_->text().toLongLong(&esNumero);
    if (esNumero) ajuste.idTipoMovimiento = idTipo;
    ajuste.comprobante = text2_->text();
    ajuste.cantidad = text1_->text();
    ajuste.suma = option1_->isChecked();
    if (!Intenta(this, [&] { RegistraAjusteStock(almacen_, ajuste, reloj_.hoy()); })) {
        text1_->setFocus();
        return;
    }
    conf_.graba(clave::configuracion, kUltimoTipo, combo1_->currentText());
    conf_.graba(clave::configuracion, kUltimoComprobante, text2_->text());
    accept();
}

} // namespace orv
