#include "suppliers/ui/pan_ingr_pago_prove.h"

#include "suppliers/cuenta_proveedor.h"
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
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

panIngrPagoProve::panIngrPagoProve(const ContextoCompras& c, qint64 idProveedor, QWidget* padre)
    : QDialog(padre), c_(c), id_(idProveedor) {
    setObjectName(QStringLiteral("panIngrPagoProve"));
    setWindowTitle(QStringLiteral("Ingreso de pagos a un proveedor"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(18, 14, 18, 12);
    QString razon;
    Intenta(this, [&] { razon = RazonSocialProveedor(c_.almacen, id_); });
    capa->addWidget(TituloDialogo("lblProve", razon, this));
    list1_ = new QListWidget(this);
    list1_->setObjectName(QStringLiteral("List1"));
    list1_->setSelectionMode(QAbstractItemView::MultiSelection);
    auto* facturas = new QLabel(QStringLiteral("&Facturas impagas a cancelar :"), this);
    facturas->setBuddy(list1_);
    capa->addWidget(facturas);
    capa->addWidget(list1_, 1);
    capa->addWidget(armaDatos());
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &panIngrPagoProve::acepta);

    Intenta(this, [this] {
        for (const CompraImpaga& f : ComprasImpagas(c_.almacen, id_, c_.estado.MascaraMoneda)) {
            auto* item = new QListWidgetItem(f.texto, list1_);
            item->setData(Qt::UserRole, f.idCompra);
        }
    });
    resize(560, 600);
    CentrarVentana(this);
    txTot_->setFocus();
}

QWidget* panIngrPagoProve::armaDatos() {
    auto* w = new QWidget(this);
    auto* f = new QFormLayout(w);
    f->setContentsMargins(0, 6, 0, 0);
    txTot_ = new QLineEdit(w);
    txTot_->setObjectName(QStringLiteral("txTot"));
    txTot_->setAlignment(Qt::AlignRight);
    txTot_->setMaximumWidth(170);
    txTot_->setToolTip(QStringLiteral("Con punto decimal y, si quiere, comas de miles: 1,234.56"));
    cboFPago_ = new QComboBox(w);
    cboFPago_->setObjectName(QStringLiteral("cboFPago"));
    LlenaCombo(cboFPago_, c_.almacen, QStringLiteral("SELECT idTipoFormaPago, FormaPago FROM FormasDePago ORDER BY idTipoFormaPago"),
               {}, QStringLiteral("FormaPago"), QStringLiteral("idTipoFormaPago"));
    cbCta_ = new QComboBox(w);
    cbCta_->setObjectName(QStringLiteral("cbCta"));
    LlenaCombo(cbCta_, c_.almacen, QStringLiteral("SELECT idCuenta, Cuenta FROM Cuentas ORDER BY idCuenta"), {},
               QStringLiteral("Cuenta"), QStringLiteral("idCuenta"));
    const QString pagos = QStringLiteral("Pago a Proveedores");
    SelComboTexto(cbCta_, pagos, int(pagos.size()));
    dt1_ = CampoFecha(QStringLiteral("dt1"), w);
    dt1_->setDate(c_.reloj.hoy());
    txRef_ = new QLineEdit(w);
    txRef_->setObjectName(QStringLiteral("txRef"));
    txDetalle_ = new QLineEdit(w);
    txDetalle_->setObjectName(QStringLiteral("txDetalle"));
    chRegCaja_ = new QCheckBox(QStringLiteral("&Registra movimento de caja ?"), w);
    chRegCaja_->setObjectName(QStringLiteral("chRegCaja"));
    const std::pair<const char*, QWidget*> filas[] = {{"&Importe a cancelar :", txTot_},
                                                      {"Forma de &Pago :", cboFPago_},
                                                      {"Cuenta C&ontable :", cbCta_},
                                                      {"F&echa :", dt1_},
                                                      {"Referencia / Nro Cheque / Cupón Tarj. :", txRef_},
                                                      {"O&bservaciones :", txDetalle_}};
    for (const auto& [texto, campo] : filas) {
        auto* l = new QLabel(QString::fromUtf8(texto), w);
        l->setBuddy(campo);
        f->addRow(l, campo);
    }
    f->addRow(QString(), chRegCaja_);
    return w;
}

void panIngrPagoProve::acepta() {
    PagoProveedor p;
    p.idProveedor = id_;
    for (const QListWidgetItem* i : list1_->selectedItems()) p.comprasCanceladas << i->data(Qt::UserRole).toLongLong();
    p.importe = txTot_->text();
    p.formaPago = cboFPago_->currentText();
    if (cbCta_->currentIndex() >= 0) p.idCuenta = cbCta_->currentData().toLongLong();
    p.fecha = dt1_->date();
    p.referencia = txRef_->text();
    p.detalle = txDetalle_->text();
    p.registraCaja = chRegCaja_->isChecked();
    p.idUsuario = c_.estado.idUsuarioActual;
    bool rechazado = false;
    const bool hecho = Intenta(this, [&] {
        try {
            RegistraPagoProveedor(c_.almacen, p);
        } catch (const Aviso& a) {
            // El aviso, y el foco en el campo que lo causó; un importe mal escrito se vacía.
            rechazado = true;
            MuestraAviso(a, this);
            if (a.texto() == kCuentaIncorrecta) cbCta_->setFocus();
            if (a.texto() == kImporteIncorrecto) {
                txTot_->clear();
                txTot_->setFocus();
            }
        }
    });
    if (!hecho || rechazado) return;
    if (c_.cambios) c_.cambios();
    Mensaje(kPagoAsentado, QStringLiteral("Listo"), Icono::Exclamacion, this);
    accept();
}

} // namespace orv
