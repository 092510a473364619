#include "articles/ui/pan_lis_pre.h"

#include "reports/ui/lanzadores.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace orv {

panLisPre::panLisPre(Almacen& almacen, SalidaInformes& salida, const Reloj& reloj, QWidget* padre)
    : QDialog(padre), salida_(salida), reloj_(reloj) {
    setObjectName(QStringLiteral("panLisPre"));
    setWindowTitle(QStringLiteral("Lista de precios"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);

    auto* orden = new QGroupBox(QStringLiteral("Orden"), this);
    auto* capaOrden = new QVBoxLayout(orden);
    option1_ = new QRadioButton(QStringLiteral("Por Código"), orden);
    option1_->setObjectName(QStringLiteral("Option1"));
    option1_->setChecked(true);
    option2_ = new QRadioButton(QStringLiteral("Por Alfabeto"), orden);
    option2_->setObjectName(QStringLiteral("Option2"));
    capaOrden->addWidget(option1_);
    capaOrden->addWidget(option2_);
    capa->addWidget(orden);

    auto* campos = new QFormLayout;
    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    combo1_->setMinimumWidth(240);
    combo1_->addItem(QStringLiteral("<Todos>"));
    LlenaCombo(combo1_, almacen, QStringLiteral("SELECT idRubro, Rubro FROM Rubros ORDER BY Rubro"), {},
               QStringLiteral("Rubro"), QStringLiteral("idRubro"));
    combo1_->setCurrentIndex(0);
    campos->addRow(QStringLiteral("Rubro :"), combo1_);
    capa->addLayout(campos);
    capa->addStretch(1);

    QPushButton* aceptar = BotonesAlPie(this, capa);
    connect(aceptar, &QPushButton::clicked, this, &panLisPre::acepta);
    setMinimumWidth(360);
    CentrarVentana(this);
}

void panLisPre::acepta() {
    const QVariant id = combo1_->currentData();
    const std::optional<qint64> rubro = id.isValid() ? std::optional<qint64>(id.toLongLong()) : std::nullopt;
    // imprime dice por sí misma lo que falla; la pantalla se cierra sólo si el informe salió.
    if (InformeListaPrecios(salida_, rubro, option1_->isChecked(), reloj_.hoy())) accept();
}

} // namespace orv
