#include "suppliers/ui/pan_nue_prove.h"

#include "suppliers/proveedores.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

panNueProve::panNueProve(Almacen& almacen, std::optional<qint64> idProveedor, const QString& claveImpositiva,
                         QWidget* padre)
    : QDialog(padre), almacen_(almacen), id_(idProveedor), clave_(claveImpositiva) {
    setObjectName(QStringLiteral("panNueProve"));
    setWindowTitle(QStringLiteral("Proveedor"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* campos = new QFormLayout;
    campos->setSpacing(8);
    txNombre_ = campo(campos, "txNombre", QStringLiteral("Nombre Contacto :"), 320);
    txRazon_ = campo(campos, "txRazon", QStringLiteral("Razón Social :"), 320);
    txDomicilio_ = campo(campos, "txDomicilio", QStringLiteral("Domicilio :"), 320);
    txCPost_ = campo(campos, "txCPost", QStringLiteral("C.Postal :"), 90);
    txTel_ = campo(campos, "txTel", QStringLiteral("Telefono :"), 200);
    txTel2_ = campo(campos, "txTel2", QStringLiteral("Telefono (2) :"), 200);
    txCuit_ = campo(campos, "txCuit", claveImpositiva + QStringLiteral(" :"), 160);
    txEMail_ = campo(campos, "txEMail", QStringLiteral("e-mail :"), 320);
    txtBanco_ = campo(campos, "txtBanco", QStringLiteral("Banco :"), 240);
    txCBU_ = campo(campos, "txCBU", QStringLiteral("Nro Cta Bancaria :"), 240);
    capa->addLayout(campos);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &panNueProve::acepta);
    if (id_) carga();
    adjustSize();
    CentrarVentana(this);
    txNombre_->setFocus();
}

QLineEdit* panNueProve::campo(QFormLayout* capa, const char* nombre, const QString& titulo, int ancho) {
    auto* t = new QLineEdit(this);
    t->setObjectName(QString::fromLatin1(nombre));
    t->setMinimumWidth(ancho);
    if (ancho < 300) t->setMaximumWidth(ancho);
    capa->addRow(titulo, t);
    return t;
}

// Un proveedor que otra terminal borró: "No encontrado!" y la ficha vacía.
void panNueProve::carga() {
    std::optional<DatosProveedor> d;
    if (!Intenta(this, [&] { d = LeeProveedor(almacen_, *id_); })) return;
    if (!d) {
        MensajeError(QStringLiteral("No encontrado!"), this);
        return;
    }
    const std::pair<QLineEdit*, const QString*> campos[] = {
        {txNombre_, &d->nombre}, {txRazon_, &d->razonSocial}, {txDomicilio_, &d->domicilio}, {txCPost_, &d->cPostal},
        {txTel_, &d->telefono},  {txTel2_, &d->telefono2},    {txCuit_, &d->cuit},           {txEMail_, &d->email},
        {txtBanco_, &d->banco},  {txCBU_, &d->cbu}};
    for (const auto& [caja, valor] : campos) caja->setText(*valor);
}

DatosProveedor panNueProve::datos() const {
    return {txNombre_->text(), txRazon_->text(), txDomicilio_->text(), txCPost_->text(), txTel_->text(),
            txTel2_->text(),   txCuit_->text(),  txEMail_->text(),     txtBanco_->text(), txCBU_->text()};
}

void panNueProve::acepta() {
    if (txNombre_->text().isEmpty()) return; // sin contacto no se graba, sin aviso
    const DatosProveedor d = datos();
    std::optional<QString> otro;
    if (!Intenta(this, [&] { otro = OtroProveedorConCuit(almacen_, id_, d.cuit); })) return;
    if (otro && !PreguntaSiNo(QStringLiteral("El proveedor \"%1\" ya tiene el %2 %3.\n¿Graba igual éste proveedor?")
                                  .arg(*otro, clave_, d.cuit.trimmed()),
                              QStringLiteral("Atención"), Icono::Exclamacion, this)) {
        txCuit_->setFocus();
        txCuit_->selectAll();
        return;
    }
    if (Intenta(this, [&] { id_ = GuardaProveedor(almacen_, id_, d); })) accept();
}

} // namespace orv
