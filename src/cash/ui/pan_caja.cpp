#include "cash/ui/pan_caja.h"

#include "cash/caja.h"
#include "cash/cuentas.h"
#include "store/entrada.h"
#include "store/formato.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QGridLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace orv {

namespace {

QLineEdit* importe(const char* nombre, QWidget* padre) {
    auto* t = new QLineEdit(padre);
    t->setObjectName(QString::fromLatin1(nombre));
    t->setAlignment(Qt::AlignRight);
    t->setMaximumWidth(160);
    return t;
}

// Un importe para corregirlo: con dos decimales, o con los cuatro que guarda si los usa (así
// aceptar sin tocarlo no lo redondea).
QString textoImporte(const std::optional<Dinero>& d) {
    if (!d) return {};
    return d->redondeado(2) == *d ? Formato(*d, QStringLiteral("0.00")) : d->aTexto();
}

} // namespace

PanCaja::PanCaja(Almacen& almacen, qint32 idUsuario, std::optional<qint64> idCaja, const QDate& fecha, QWidget* padre)
    : QDialog(padre), almacen_(almacen), idUsuario_(idUsuario), id_(idCaja) {
    setObjectName(QStringLiteral("PanCaja"));
    setWindowTitle(QStringLiteral("Movimiento de Caja"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* campos = new QFormLayout;
    campos->setSpacing(8);
    dtpicker1_ = CampoFecha(QStringLiteral("DTPicker1"), this);
    dtpicker1_->setDate(fecha);
    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    combo1_->setMinimumWidth(260);
    combo2_ = new QComboBox(this);
    combo2_->setObjectName(QStringLiteral("Combo2"));
    text1_ = new QPlainTextEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setTabChangesFocus(true);
    text1_->setFixedHeight(72);
    campos->addRow(QStringLiteral("Fecha :"), dtpicker1_);
    campos->addRow(QStringLiteral("Cuenta :"), combo1_);
    campos->addRow(QStringLiteral("F.Pago :"), combo2_);
    campos->addRow(QStringLiteral("Detalles  :"), text1_);
    capa->addLayout(campos);

    auto* montos = new QGridLayout;
    option1_ = new QRadioButton(QStringLiteral("Ingreso :"), this);
    option1_->setObjectName(QStringLiteral("Option1"));
    option2_ = new QRadioButton(QStringLiteral("Egreso :"), this);
    option2_->setObjectName(QStringLiteral("Option2"));
    text2_ = importe("Text2", this);
    text3_ = importe("Text3", this);
    montos->addWidget(option1_, 0, 0);
    montos->addWidget(text2_, 0, 1);
    montos->addWidget(option2_, 1, 0);
    montos->addWidget(text3_, 1, 1);
    montos->setColumnStretch(2, 1);
    capa->addLayout(montos);
    connect(option1_, &QRadioButton::clicked, this, [this] { eligeIngreso(true); });
    connect(option2_, &QRadioButton::clicked, this, [this] { eligeIngreso(false); });
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanCaja::acepta);

    carga();
    adjustSize();
    CentrarVentana(this);
    dtpicker1_->setFocus();
}

// Las listas y, para editar, el movimiento: cada valor como texto, un nulo queda vacío.
void PanCaja::carga() {
    LlenaCombo(combo1_, almacen_, ConsultaPlanCuentas(), {}, QStringLiteral("Cuenta"), QStringLiteral("idCuenta"));
    LlenaLista(combo2_, almacen_, ConsultaFormasPago(), {}, QStringLiteral("FormaPago"));
    combo1_->setCurrentIndex(-1);
    eligeIngreso(true);
    if (!id_) return;
    Intenta(this, [this] {
        const std::optional<MovimientoCaja> m = LeeMovimientoCaja(almacen_, *id_);
        if (!m) return;
        dtpicker1_->setDate(m->fecha);
        SelComboId(combo1_, m->idCuenta ? QVariant(*m->idCuenta) : QVariant());
        const int forma = combo2_->findText(m->formaPago);
        if (forma < 0 && !m->formaPago.isEmpty()) combo2_->addItem(m->formaPago); // una forma que ya no está en la lista
        combo2_->setCurrentIndex(forma >= 0 ? forma : combo2_->count() - 1);
        text1_->setPlainText(m->detalles);
        eligeIngreso(!m->egreso);
        text2_->setText(textoImporte(m->ingreso));
        text3_->setText(textoImporte(m->egreso));
    });
}

void PanCaja::eligeIngreso(bool ingreso) {
    option1_->setChecked(ingreso);
    option2_->setChecked(!ingreso);
    QLineEdit* activo = ingreso ? text2_ : text3_;
    QLineEdit* otro = ingreso ? text3_ : text2_;
    activo->setEnabled(true);
    otro->clear();
    otro->setEnabled(false);
    if (isVisible()) activo->setFocus();
}

void PanCaja::acepta() {
    const bool grabado = Intenta(this, [this] {
        MovimientoCaja m;
        m.fecha = dtpicker1_->date();
        const QVariant cuenta = combo1_->currentData();
        if (combo1_->currentIndex() >= 0 && !cuenta.isNull()) m.idCuenta = cuenta.toLongLong();
        m.formaPago = combo2_->currentText();
        m.detalles = text1_->toPlainText();
        if (option1_->isChecked() && !text2_->text().trimmed().isEmpty())
            m.ingreso = ExigeImporte(text2_->text(), QStringLiteral("Ingreso"));
        if (option2_->isChecked() && !text3_->text().trimmed().isEmpty())
            m.egreso = ExigeImporte(text3_->text(), QStringLiteral("Egreso"));
        id_ = GuardaMovimientoCaja(almacen_, id_, m, idUsuario_);
    });
    if (grabado) accept();
}

} // namespace orv
