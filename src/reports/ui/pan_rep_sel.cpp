#include "reports/ui/pan_rep_sel.h"

#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"
#include "store/formato.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDateEdit>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace orv {

namespace {

QLabel* lineaPeriodo(const QDate& desde, const QDate& hasta, QWidget* padre) {
    auto* l = new QLabel(QStringLiteral("Período: del ") + FechaTexto(desde) + QStringLiteral(" al ") + FechaTexto(hasta), padre);
    l->setStyleSheet(QStringLiteral("color: #5b6b7b;"));
    return l;
}

} // namespace

PanRepSelArt::PanRepSelArt(const QDate& desde, const QDate& hasta, QWidget* padre)
    : QDialog(padre), desde_(desde), hasta_(hasta) {
    setObjectName(QStringLiteral("PanRepSelArt"));
    setWindowTitle(QStringLiteral("Ventas por artículo"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(18, 16, 18, 12);
    auto* f = new QFormLayout;
    text1_ = new QLineEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setMaxLength(50);
    check1_ = new QCheckBox(QStringLiteral("Todos los artículos?"), this);
    check1_->setObjectName(QStringLiteral("Check1"));
    f->addRow(QStringLiteral("Codigo Articulo :"), text1_);
    f->addRow(QString(), check1_);
    capa->addLayout(f);
    capa->addWidget(lineaPeriodo(desde, hasta, this));
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanRepSelArt::acepta);
    resize(420, sizeHint().height());
    CentrarVentana(this);
    text1_->setFocus();
}

bool PanRepSelArt::todos() const { return check1_->isChecked(); }
QString PanRepSelArt::codigo() const { return text1_->text().trimmed(); }

void PanRepSelArt::acepta() {
    // O un artículo o todos: las dos cosas a la vez, o ninguna, no se entienden.
    if (todos() == !codigo().isEmpty()) {
        MensajeError(QStringLiteral("O un articulo o todos, debe borrar el codigo!"), this);
        return;
    }
    accept();
}

PanRepSelVen::PanRepSelVen(const Almacen& almacen, const QDate& desde, const QDate& hasta, QWidget* padre)
    : QDialog(padre), desde_(desde), hasta_(hasta) {
    setObjectName(QStringLiteral("PanRepSelVen"));
    setWindowTitle(QStringLiteral("Ventas por cliente"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(18, 16, 18, 12);
    auto* f = new QFormLayout;
    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    combo1_->setEditable(true);
    combo1_->setInsertPolicy(QComboBox::NoInsert);
    LlenaLista(combo1_, almacen, QStringLiteral("SELECT Nombre FROM Vendedores ORDER BY Nombre"), {}, QStringLiteral("Nombre"));
    combo1_->completer()->setFilterMode(Qt::MatchContains);
    combo1_->completer()->setCaseSensitivity(Qt::CaseInsensitive);
    combo1_->setCurrentIndex(-1);
    combo1_->setMinimumWidth(300);
    check1_ = new QCheckBox(QStringLiteral("Todos"), this);
    check1_->setObjectName(QStringLiteral("Check1"));
    f->addRow(QStringLiteral("Cliente :"), combo1_);
    f->addRow(QString(), check1_);
    capa->addLayout(f);
    capa->addWidget(lineaPeriodo(desde, hasta, this));
    connect(check1_, &QCheckBox::toggled, combo1_, &QWidget::setDisabled);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanRepSelVen::acepta);
    resize(460, sizeHint().height());
    CentrarVentana(this);
    combo1_->setFocus();
}

bool PanRepSelVen::todos() const { return check1_->isChecked(); }
QString PanRepSelVen::nombre() const { return combo1_->currentText().trimmed(); }

void PanRepSelVen::acepta() {
    if (!todos() && nombre().isEmpty()) {
        MensajeError(QStringLiteral("Elija un cliente o marque Todos."), this);
        return;
    }
    accept();
}

PanSelCta::PanSelCta(const Almacen& almacen, const QDate& desde, const QDate& hasta, QWidget* padre) : QDialog(padre) {
    setObjectName(QStringLiteral("panSelCta"));
    setWindowTitle(QStringLiteral("Seleccione Cuenta"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(18, 16, 18, 12);
    auto* f = new QFormLayout;
    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    LlenaCombo(combo1_, almacen, QStringLiteral("SELECT idCuenta, Cuenta FROM Cuentas ORDER BY idCuenta"), {},
               QStringLiteral("Cuenta"), QStringLiteral("idCuenta"));
    combo1_->setCurrentIndex(-1);
    combo1_->setMinimumWidth(260);
    dt1_ = CampoFecha(QStringLiteral("dt1"), this);
    dt1_->setDate(desde);
    dt2_ = CampoFecha(QStringLiteral("dt2"), this);
    dt2_->setDate(hasta);
    f->addRow(QStringLiteral("Seleccione la cuenta :"), combo1_);
    f->addRow(QStringLiteral("Desde :"), dt1_);
    f->addRow(QStringLiteral("Hasta :"), dt2_);
    capa->addLayout(f);
    connect(BotonesAlPie(this, capa, true, QStringLiteral("Aceptar"), QStringLiteral("Cancelar")), &QPushButton::clicked,
            this, &PanSelCta::acepta);
    resize(440, sizeHint().height());
    CentrarVentana(this);
    combo1_->setFocus();
}

qint64 PanSelCta::idCuenta() const { return combo1_->currentIndex() < 0 ? 0 : combo1_->currentData().toLongLong(); }
QDate PanSelCta::desde() const { return dt1_->date(); }
QDate PanSelCta::hasta() const { return dt2_->date(); }

void PanSelCta::acepta() {
    if (combo1_->currentIndex() < 0) {
        MensajeError(QStringLiteral("Seleccione una cuenta de la lista!"), this);
        return;
    }
    accept();
}

PanPrinComprobantes::PanPrinComprobantes(QWidget* padre) : QDialog(padre) {
    setObjectName(QStringLiteral("panPrinComprobantes"));
    setWindowTitle(QStringLiteral("Impresión de comprobantes"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(18, 16, 18, 12);
    option1_ = new QRadioButton(QStringLiteral("Comerciales"), this);
    option1_->setObjectName(QStringLiteral("Option1"));
    option1_->setChecked(true);
    option2_ = new QRadioButton(QStringLiteral("Otros Documentos no comerciales"), this);
    option2_->setObjectName(QStringLiteral("Option2"));
    capa->addWidget(option1_);
    capa->addWidget(option2_);
    connect(BotonesAlPie(this, capa, true, QStringLiteral("Imprimir")), &QPushButton::clicked,
            this, &QDialog::accept);
    resize(380, sizeHint().height());
    CentrarVentana(this);
}

bool PanPrinComprobantes::comerciales() const { return option1_->isChecked(); }

} // namespace orv
