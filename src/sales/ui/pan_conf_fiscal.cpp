#include "sales/ui/pan_conf_fiscal.h"

#include "sales/tipos_comprobante.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace orv {

PanConfFiscal::PanConfFiscal(const QString& plantilla, const QString& modDocumento, QWidget* padre) : QDialog(padre) {
    setObjectName(QStringLiteral("panConfFiscal"));
    setWindowTitle(QStringLiteral("Impresora Fiscal"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);

    auto* modelos = new QGroupBox(QStringLiteral("Modelo"), this);
    auto* cm = new QVBoxLayout(modelos);
    optEpsonTMU_ = new QRadioButton(QStringLiteral("EPSON TMU-2000AF (recomendada)"), modelos);
    optEpsonTMU_->setObjectName(QStringLiteral("optEpsonTMU"));
    optEpson200_ = new QRadioButton(QStringLiteral("EPSON LX200 80 col"), modelos);
    optEpson200_->setObjectName(QStringLiteral("optEpson200"));
    optHasar_ = new QRadioButton(QStringLiteral("HASAR o compatible :"), modelos);
    optHasar_->setObjectName(QStringLiteral("optHasar"));
    listhasar_ = new QListWidget(modelos);
    listhasar_->setObjectName(QStringLiteral("listhasar"));
    listhasar_->addItems(ModelosHasar());
    listhasar_->setMaximumHeight(110);
    cm->addWidget(optEpsonTMU_);
    cm->addWidget(optEpson200_);
    cm->addWidget(optHasar_);
    cm->addWidget(listhasar_);
    capa->addWidget(modelos);

    auto* datos = new QFormLayout;
    cboModComprobante_ = new QComboBox(this);
    cboModComprobante_->setObjectName(QStringLiteral("cboModComprobante"));
    cboModComprobante_->addItems(DocumentosFiscales());
    txPuerto_ = new QLineEdit(this);
    txPuerto_->setObjectName(QStringLiteral("txPuerto"));
    txPuerto_->setMaxLength(1);
    txPuerto_->setMaximumWidth(50);
    label3_ = new QLabel(this);
    label3_->setObjectName(QStringLiteral("Label3"));
    QFont f = label3_->font();
    f.setBold(true);
    label3_->setFont(f);
    datos->addRow(QStringLiteral("Comprobante :"), cboModComprobante_);
    datos->addRow(QStringLiteral("Puerto          Configuración :"), txPuerto_);
    datos->addRow(QStringLiteral("Seleccionada"), label3_);
    capa->addLayout(datos);

    connect(BotonesAlPie(this, capa, false), &QPushButton::clicked, this, &PanConfFiscal::acepta);

    // Lo que ya tiene el tipo.
    const LecturaFiscal l = LeePlantillaFiscal(plantilla);
    switch (l.modelo) {
    case ModeloFiscal::EpsonTMU: optEpsonTMU_->setChecked(true); break;
    case ModeloFiscal::Epson200: optEpson200_->setChecked(true); break;
    case ModeloFiscal::Hasar:
        optHasar_->setChecked(true);
        for (int i = 0; i < listhasar_->count(); ++i)
            if (listhasar_->item(i)->text().left(30) == l.itemHasar.left(30)) listhasar_->setCurrentRow(i);
        break;
    }
    const int largo = l.modelo == ModeloFiscal::Hasar ? 3 : int(modDocumento.size());
    const QString inicio = modDocumento.left(largo);
    cboModComprobante_->setCurrentIndex(-1);
    if (!inicio.isEmpty())
        for (int i = 0; i < cboModComprobante_->count(); ++i)
            if (cboModComprobante_->itemText(i).startsWith(inicio)) {
                cboModComprobante_->setCurrentIndex(i);
                break;
            }
    txPuerto_->setText(l.puerto);
    actualizaModelo();

    for (QRadioButton* o : {optEpsonTMU_, optEpson200_, optHasar_})
        connect(o, &QRadioButton::toggled, this, &PanConfFiscal::actualizaModelo);
    connect(listhasar_, &QListWidget::currentRowChanged, this, &PanConfFiscal::actualizaModelo);
    CentrarVentana(this);
}

void PanConfFiscal::actualizaModelo() {
    listhasar_->setEnabled(optHasar_->isChecked());
    if (optEpsonTMU_->isChecked()) label3_->setText(TextoModeloFiscal(ModeloFiscal::EpsonTMU));
    else if (optEpson200_->isChecked()) label3_->setText(TextoModeloFiscal(ModeloFiscal::Epson200));
    else
        label3_->setText(TextoModeloFiscal(ModeloFiscal::Hasar,
                                           listhasar_->currentItem() ? listhasar_->currentItem()->text() : QString()));
}

QString PanConfFiscal::plantilla() const { return PlantillaFiscal(label3_->text(), txPuerto_->text()); }

QString PanConfFiscal::modDocumento() const { return cboModComprobante_->currentText().left(3); }

void PanConfFiscal::acepta() {
    if (optHasar_->isChecked() && !listhasar_->currentItem()) {
        MensajeError(QStringLiteral("Error, seleccione un modelo!"), this);
        return;
    }
    accept();
}

} // namespace orv
