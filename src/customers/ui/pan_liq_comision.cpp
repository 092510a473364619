#include "customers/ui/pan_liq_comision.h"

#include "customers/cuenta.h"
#include "reports/ui/lanzadores.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace orv {

PanLiqComision::PanLiqComision(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj,
                               SalidaInformes& salida, qint64 idVendedor, QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), salida_(salida), id_(idVendedor) {
    setObjectName(QStringLiteral("PanLiqComision"));
    setWindowTitle(QStringLiteral("Cobranza de Clientes"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    label4_ = new QLabel(this);
    label4_->setObjectName(QStringLiteral("Label4"));
    QFont ft = label4_->font();
    ft.setBold(true);
    ft.setPointSizeF(ft.pointSizeF() * 1.15);
    label4_->setFont(ft);
    capa->addWidget(label4_);
    auto* f = new QFormLayout;
    f->setSpacing(8);
    dtPicker1_ = CampoFecha(QStringLiteral("DTPicker1"), this);
    dtPicker1_->setDate(reloj.hoy());
    auto* text1 = new QLineEdit(QStringLiteral("COBRO"), this);
    text1->setObjectName(QStringLiteral("Text1"));
    text1->setReadOnly(true);
    text1->setFocusPolicy(Qt::NoFocus);
    text1->setMaximumWidth(160);
    text2_ = new QLineEdit(this);
    text2_->setObjectName(QStringLiteral("Text2"));
    text2_->setAlignment(Qt::AlignRight);
    text2_->setMaximumWidth(160);
    text2_->setToolTip(QStringLiteral("Con punto decimal y, si quiere, comas de miles: 1,234.56"));
    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    combo1_->setMinimumWidth(160);
    // La lista puede no llenarse (LlenaLista sigue ante un error): la cobranza se toma igual.
    LlenaLista(combo1_, almacen_, QStringLiteral("SELECT FormaPago FROM FormasDePago ORDER BY idTipoFormaPago"), {},
               QStringLiteral("FormaPago"));
    check1_ = new QCheckBox(QStringLiteral("Asienta movimiento en la Caja ?"), this);
    check1_->setObjectName(QStringLiteral("Check1"));
    check1_->setChecked(true);
    check2_ = new QCheckBox(QStringLiteral("Emite recibo al cliente ?"), this);
    check2_->setObjectName(QStringLiteral("Check2"));
    f->addRow(QStringLiteral("Fecha :"), dtPicker1_);
    f->addRow(QStringLiteral("Tipo :"), text1);
    f->addRow(QStringLiteral("Importe :"), text2_);
    f->addRow(QStringLiteral("F.Pago :"), combo1_);
    f->addRow(QString(), check1_);
    f->addRow(QString(), check2_);
    capa->addLayout(f);
    lblRegistrada_ = new QLabel(this);
    lblRegistrada_->setObjectName(QStringLiteral("lblRegistrada"));
    lblRegistrada_->setStyleSheet(QStringLiteral("color: #1d6b35; font-weight: bold;"));
    lblRegistrada_->hide();
    capa->addWidget(lblRegistrada_);
    command1_ = BotonesAlPie(this, capa);
    command2_ = findChild<QPushButton*>(QStringLiteral("Command2"));
    connect(command1_, &QPushButton::clicked, this, &PanLiqComision::acepta);
    timer1_ = new QTimer(this);
    timer1_->setObjectName(QStringLiteral("Timer1"));
    timer1_->setSingleShot(true);
    timer1_->setInterval(kCierreTrasCobranzaMs);
    connect(timer1_, &QTimer::timeout, this, &QDialog::accept);

    Intenta(this, [this] { label4_->setText(QStringLiteral("Asentar Cobranza a ") + NombreCliente(almacen_, id_)); });
    adjustSize();
    CentrarVentana(this);
    text2_->setFocus();
}

void PanLiqComision::acepta() {
    if (recibo_) return;
    DatosCobranza d;
    d.idVendedor = id_;
    d.fecha = dtPicker1_->date();
    d.importe = text2_->text();
    d.formaPago = combo1_->currentText();
    d.asientaCaja = check1_->isChecked();
    d.detalles = label4_->text();
    d.idUsuario = estado_.idUsuarioActual;
    if (!Intenta(this, [&] { recibo_ = RegistraCobranza(almacen_, d); })) {
        text2_->setFocus();
        text2_->selectAll();
        return;
    }
    // El recibo sale después de confirmada la cobranza: si falla, la cobranza queda.
    if (check2_->isChecked()) InformeLiquidacionComision(salida_, *recibo_);
    lblRegistrada_->setText(QStringLiteral("Cobranza registrada: recibo Nº %1.").arg(*recibo_));
    lblRegistrada_->show();
    command1_->setEnabled(false);
    if (command2_) {
        command2_->setDefault(true);
        command2_->setFocus();
    }
    timer1_->start();
}

} // namespace orv
