#include "customers/ui/pan_cobra_premio.h"

#include "customers/cuenta.h"
#include "customers/puntos.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanCobraPremio::PanCobraPremio(Almacen& almacen, const Reloj& reloj, qint32 idUsuario, qint64 idCliente, QWidget* padre)
    : QDialog(padre), almacen_(almacen), reloj_(reloj), idUsuario_(idUsuario), idCliente_(idCliente) {
    setObjectName(QStringLiteral("panCobraPremio"));
    setWindowTitle(QStringLiteral("Cobro de Premio VIP"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* cliente = new QLabel(this);
    cliente->setObjectName(QStringLiteral("lblCliente"));
    QFont fc = cliente->font();
    fc.setBold(true);
    cliente->setFont(fc);
    Intenta(this, [&] { cliente->setText(QStringLiteral("Premio para ") + NombreCliente(almacen_, idCliente_)); });
    capa->addWidget(cliente);
    auto* f = new QFormLayout;
    cboPremio_ = new QComboBox(this);
    cboPremio_->setObjectName(QStringLiteral("cboPremio"));
    cboPremio_->setMinimumWidth(320);
    const ConsultaConParametros vigentes = ConsultaPremiosVigentes(reloj_.hoy());
    LlenaCombo(cboPremio_, almacen_, vigentes.sql, vigentes.parametros, QStringLiteral("Descripcion"),
               QStringLiteral("idTablaVIP"));
    cboPremio_->setCurrentIndex(-1);
    f->addRow(QStringLiteral("Premio :"), cboPremio_);
    capa->addLayout(f);
    connect(cboPremio_, &QComboBox::activated, this, &PanCobraPremio::eligePremio);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanCobraPremio::acepta);
    adjustSize();
    CentrarVentana(this);
    cboPremio_->setFocus();
}

void PanCobraPremio::eligePremio() {
    if (cboPremio_->currentIndex() < 0) return;
    QString falta;
    if (!Intenta(this, [&] { falta = FaltanPuntos(almacen_, idCliente_, cboPremio_->currentData().toLongLong()); })) return;
    if (falta.isEmpty()) return;
    MensajeError(falta, this);
    cboPremio_->setCurrentIndex(-1);
}

void PanCobraPremio::acepta() {
    if (cboPremio_->currentIndex() < 0) return MensajeAtencion(QStringLiteral("Seleccione un premio!"), this);
    const qint64 premio = cboPremio_->currentData().toLongLong();
    if (Intenta(this, [&] { CobraPremio(almacen_, idCliente_, premio, reloj_.hoy(), idUsuario_); })) accept();
}

} // namespace orv
