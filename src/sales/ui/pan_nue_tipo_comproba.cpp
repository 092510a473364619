#include "sales/ui/pan_nue_tipo_comproba.h"

#include "sales/ui/pan_conf_fiscal.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"
#include "store/rutinas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFileInfo>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orv {

namespace {

QLabel* explica(const QString& texto, QWidget* padre) {
    auto* l = new QLabel(texto, padre);
    l->setWordWrap(true);
    l->setEnabled(false);
    l->setContentsMargins(22, 0, 0, 8);
    return l;
}

} // namespace

PanNueTipoComproba::PanNueTipoComproba(const Almacen& almacen, const Configuracion& conf, std::optional<qint64> idTipo,
                                       QWidget* padre)
    : QDialog(padre), conf_(conf) {
    setObjectName(QStringLiteral("panNueTipoComproba"));
    setWindowTitle(QStringLiteral("Nuevo tipo de comprobante"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    auto* pestanias = new QTabWidget(this);
    pestanias->setObjectName(QStringLiteral("SSTab1"));

    // Principales
    auto* principales = new QWidget(pestanias);
    auto* fp = new QFormLayout(principales);
    txTipo_ = new QLineEdit(principales);
    txTipo_->setObjectName(QStringLiteral("txTipo"));
    txTipo_->setMaxLength(40);
    cbLetra_ = new QComboBox(principales);
    cbLetra_->setObjectName(QStringLiteral("cbLetra"));
    cbLetra_->setEditable(true);
    cbLetra_->addItems({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D"),
                        QStringLiteral("F"), QStringLiteral("R"), QStringLiteral("X")});
    cbLetra_->setCurrentIndex(-1);
    cbPtoVta_ = new QComboBox(principales);
    cbPtoVta_->setObjectName(QStringLiteral("cbPtoVta"));
    cbPtoVta_->setEditable(true);
    for (int i = 0; i <= 10; ++i) cbPtoVta_->addItem(QStringLiteral("%1").arg(i, 4, 10, QLatin1Char('0')));
    cbPtoVta_->setCurrentIndex(-1);
    txCorrelativo_ = new QLineEdit(QStringLiteral("0"), principales);
    txCorrelativo_->setObjectName(QStringLiteral("txCorrelativo"));
    txCorrelativo_->setMaximumWidth(140);
    txtModDocumento_ = new QLineEdit(principales);
    txtModDocumento_->setObjectName(QStringLiteral("txtModDocumento"));
    txtModDocumento_->setMaximumWidth(80);
    fp->addRow(QStringLiteral("Tipo :"), txTipo_);
    fp->addRow(QStringLiteral("Letra :"), cbLetra_);
    fp->addRow(QStringLiteral("Punto de venta :"), cbPtoVta_);
    fp->addRow(QStringLiteral("Comenzar en nro :"), txCorrelativo_);
    fp->addRow(QStringLiteral("Cód. documento fiscal :"), txtModDocumento_);
    pestanias->addTab(principales, QStringLiteral("Principales"));

    // Impresión
    auto* impresion = new QWidget(pestanias);
    auto* ci = new QVBoxLayout(impresion);
    auto* modelo = new QGroupBox(QStringLiteral("Modelo impresión"), impresion);
    auto* cm = new QVBoxLayout(modelo);
    optCrystal_ = new QRadioButton(QStringLiteral("Plantilla de informe (*.rpt)"), modelo);
    optCrystal_->setObjectName(QStringLiteral("optCrystal"));
    optFiscal_ = new QRadioButton(QStringLiteral("Impresora Fiscal"), modelo);
    optFiscal_->setObjectName(QStringLiteral("optFiscal"));
    optTickets_ = new QRadioButton(QStringLiteral("Impresora de Tickets"), modelo);
    optTickets_->setObjectName(QStringLiteral("optTickets"));
    optCrystal_->setChecked(true);
    cm->addWidget(optCrystal_);
    cm->addWidget(optFiscal_);
    cm->addWidget(optTickets_);
    ci->addWidget(modelo);
    lblPlantilla_ = new QLabel(kSinPlantilla, impresion);
    lblPlantilla_->setObjectName(QStringLiteral("lblPlantilla"));
    lblPlantilla_->setWordWrap(true);
    lblPlantilla_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* opciones = new QPushButton(QStringLiteral("Opciones..."), impresion);
    opciones->setObjectName(QStringLiteral("cmdOpciones"));
    ci->addWidget(lblPlantilla_);
    ci->addWidget(opciones, 0, Qt::AlignLeft);
    ci->addStretch(1);
    pestanias->addTab(impresion, QStringLiteral("Impresión"));

    // Opciones
    auto* marcas = new QWidget(pestanias);
    auto* co = new QVBoxLayout(marcas);
    chkEsComercial_ = new QCheckBox(QStringLiteral("Comprobante comercial ?"), marcas);
    chkEsComercial_->setObjectName(QStringLiteral("chkEsComercial"));
    chkInversa_ = new QCheckBox(QStringLiteral("Comprobante de operación inversa ?"), marcas);
    chkInversa_->setObjectName(QStringLiteral("chkInversa"));
    chkStock_ = new QCheckBox(QStringLiteral("Descuenta cantidades del stock ?"), marcas);
    chkStock_->setObjectName(QStringLiteral("chkStock"));
    chkCaja_ = new QCheckBox(QStringLiteral("Genera movimiento contable / caja ?"), marcas);
    chkCaja_->setObjectName(QStringLiteral("chkCaja"));
    co->addWidget(chkEsComercial_);
    co->addWidget(explica(explicacion::esComercial, marcas));
    co->addWidget(chkInversa_);
    co->addWidget(explica(explicacion::operacionInversa, marcas));
    co->addWidget(chkStock_);
    co->addWidget(explica(explicacion::descuentaStock, marcas));
    co->addWidget(chkCaja_);
    co->addWidget(explica(explicacion::registraCaja, marcas));
    co->addStretch(1);
    pestanias->addTab(marcas, QStringLiteral("Opciones"));
    capa->addWidget(pestanias, 1);

    connect(BotonesAlPie(this, capa, false), &QPushButton::clicked, this, &PanNueTipoComproba::acepta);
    connect(opciones, &QPushButton::clicked, this, &PanNueTipoComproba::opciones);
    connect(chkInversa_, &QCheckBox::toggled, this, &PanNueTipoComproba::actualizaStock);

    if (idTipo) {
        setWindowTitle(QStringLiteral("Modificar tipo de comprobante"));
        std::optional<TipoComprobante> t;
        Intenta(this, [&] { t = LeeTipo(almacen, *idTipo); });
        if (!t) {
            noEncontrado_ = true;
            MensajeError(QStringLiteral("No encontrado!!"), this);
        } else {
            txTipo_->setText(t->tipo);
            cbLetra_->setEditText(t->letra);
            cbPtoVta_->setEditText(t->puntoDeVenta);
            txCorrelativo_->setText(t->correlativo);
            correlativoLeido_ = t->correlativoLeido;
            txtModDocumento_->setText(t->modDocumento);
            chkStock_->setChecked(t->descuentaStock);
            chkCaja_->setChecked(t->registraCaja);
            lblPlantilla_->setText(t->plantilla.isEmpty() ? kSinPlantilla : t->plantilla);
            chkInversa_->setChecked(t->operacionInversa);
            chkEsComercial_->setChecked(t->esComercial);
            switch (EsquemaDe(t->plantilla)) {
            case EsquemaImpresion::Fiscal: optFiscal_->setChecked(true); break;
            case EsquemaImpresion::Tickets: optTickets_->setChecked(true); break;
            case EsquemaImpresion::Plantilla: optCrystal_->setChecked(true); break;
            }
        }
    }
    actualizaStock();
    resize(600, 460);
    CentrarVentana(this);
    txTipo_->setFocus();
}

void PanNueTipoComproba::actualizaStock() {
    chkStock_->setText(chkInversa_->isChecked() ? QStringLiteral("Aumenta cantidades del stock ?")
                                                : QStringLiteral("Descuenta cantidades del stock ?"));
}

void PanNueTipoComproba::eligePlantilla(const QString& ruta) {
    if (!ExisteArchivo(ruta) || !QFileInfo(ruta).isFile()) {
        MensajeError(QStringLiteral("Seleccione un archivo válido!"), this);
        lblPlantilla_->setText(kSinPlantilla);
        return;
    }
    lblPlantilla_->setText(QFileInfo(ruta).absoluteFilePath());
}

void PanNueTipoComproba::opciones() {
    if (optCrystal_->isChecked()) {
        // Primero las plantillas propias de la carpeta de datos; si no hay, las que trae el programa.
        QString carpeta = QDir(conf_.carpetaDatos()).filePath(QStringLiteral("reportes"));
        if (!QDir(carpeta).exists()) carpeta = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("reportes"));
        if (!QDir(carpeta).exists()) carpeta = QCoreApplication::applicationDirPath();
        const QString ruta = QFileDialog::getOpenFileName(this, QStringLiteral("Seleccione una plantilla de informe"),
                                                          carpeta, QStringLiteral("Plantillas de informe (*.rpt)"));
        if (ruta.isNull()) return; // cancelado: queda lo que estaba
        eligePlantilla(ruta);
    } else if (optFiscal_->isChecked()) {
        PanConfFiscal fiscal(lblPlantilla_->text(), txtModDocumento_->text(), this);
        if (fiscal.exec() != QDialog::Accepted) return;
        txtModDocumento_->setText(fiscal.modDocumento());
        lblPlantilla_->setText(fiscal.plantilla());
    } else {
        bool ok = false;
        const QString actual = lblPlantilla_->text();
        const QString previo = EsquemaDe(actual) == EsquemaImpresion::Tickets ? actual.mid(27) : QString();
        QStringList puertos = {QStringLiteral("LPT1"), QStringLiteral("COM1"), QStringLiteral("COM2"),
                               QStringLiteral("/dev/usb/lp0"), QStringLiteral("/dev/ttyS0"), QStringLiteral("/dev/ttyUSB0")};
        if (!previo.isEmpty() && !puertos.contains(previo)) puertos.prepend(previo);
        const QString puerto = QInputDialog::getItem(this, QStringLiteral("Impresora de Tickets"), QStringLiteral("Puerto :"),
                                                     puertos, previo.isEmpty() ? 0 : int(puertos.indexOf(previo)), true, &ok);
        if (!ok || puerto.trimmed().isEmpty()) return;
        lblPlantilla_->setText(PlantillaTickets(puerto.trimmed()));
    }
}

TipoComprobante PanNueTipoComproba::datos() const {
    TipoComprobante t;
    t.tipo = txTipo_->text();
    t.letra = cbLetra_->currentText();
    t.puntoDeVenta = cbPtoVta_->currentText();
    t.correlativo = txCorrelativo_->text().trimmed();
    t.correlativoLeido = correlativoLeido_;
    t.descuentaStock = chkStock_->isChecked();
    t.registraCaja = chkCaja_->isChecked();
    t.operacionInversa = chkInversa_->isChecked();
    t.esComercial = chkEsComercial_->isChecked();
    t.plantilla = lblPlantilla_->text();
    t.modDocumento = txtModDocumento_->text();
    return t;
}

void PanNueTipoComproba::acepta() {
    if (Intenta(this, [this] { ValidaTipo(datos()); })) accept();
}

} // namespace orv
