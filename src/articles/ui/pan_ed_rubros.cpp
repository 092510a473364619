#include "articles/ui/pan_ed_rubros.h"

#include "articles/rubros.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanEdRubros::PanEdRubros(Almacen& almacen, std::optional<qint64> idRubro, QWidget* padre)
    : QDialog(padre), almacen_(almacen), id_(idRubro) {
    setObjectName(QStringLiteral("PanEdRubros"));
    setWindowTitle(QStringLiteral("Rubros"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* campos = new QFormLayout;
    campos->setSpacing(8);
    text1_ = new QLineEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setMinimumWidth(300);
    text1_->setMaxLength(kLargoRubro);
    txPuntosVip_ = new QLineEdit(QStringLiteral("0"), this);
    txPuntosVip_->setObjectName(QStringLiteral("txPuntosVip"));
    txPuntosVip_->setMaximumWidth(100);
    campos->addRow(QStringLiteral("Nombre :"), text1_);
    campos->addRow(QStringLiteral("Puntaje VIP por ventas :"), txPuntosVip_);
    capa->addLayout(campos);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanEdRubros::acepta);

    // Si el rubro ya no está, la pantalla queda vacía y al grabar se avisa "No encontrado!".
    if (id_)
        Intenta(this, [this] {
            if (const auto d = LeeRubro(almacen_, *id_)) {
                text1_->setText(d->nombre);
                txPuntosVip_->setText(d->puntos);
            }
        });
    adjustSize();
    CentrarVentana(this);
    text1_->setFocus();
}

void PanEdRubros::acepta() {
    const DatosRubro d{text1_->text(), txPuntosVip_->text()};
    bool puntajeMal = false;
    const bool grabado = Intenta(this, [&] {
        try {
            id_ = GuardaRubro(almacen_, id_, d);
        } catch (const Aviso& a) {
            puntajeMal = a.texto() == kErrorPuntajeRubro || a.texto().startsWith(kCampoPuntajeRubro);
            throw;
        }
    });
    if (grabado) {
        accept();
        return;
    }
    QLineEdit* campo = puntajeMal ? txPuntosVip_ : text1_;
    campo->setFocus();
    campo->selectAll();
}

} // namespace orv
