#include "sales/ui/pan_nue_tipo_comproba.h"

#include "sales/ui/pan_conf_fiscal.h"
#include "sales/ui/pan_conf_tkt.h"
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
    pestanias->addTab(armaPrincipales(pestanias), QStringLiteral("Principales"));
    pestanias->addTab(armaImpresion(pestanias), QStringLiteral("Impresión"));
    pestanias->addTab(armaOpciones(pestanias), QStringLiteral("Opciones"));
    capa->addWidget(pestanias, 1);

    connect(BotonesAlPie(this, capa, false), &QPushButton::clicked, this, &PanNueTipoComproba::acepta);
    connect(chkInversa_, &QCheckBox::toggled, this, &PanNueTipoComproba::actualizaStock);

    if (idTipo) {
        setWindowTitle(QStringLiteral("Modificar tipo de comprobante"));
        carga(almacen, *idTipo);
    }
    actualizaStock();
    resize(600, 460);
    CentrarVentana(this);
    txTipo_->setFocus();
}

QWidget* PanNueTipoComproba::armaPrincipales(QWidget* padre) {
    auto* principales = new QWidget(padre);
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
    return principales;
}

QWidget* PanNueTipoComproba::armaImpresion(QWidget* padre) {
    auto* impresion = new QWidget(padre);
    auto* ci = new QVBoxLayout(impresion);
    auto* modelo = new QGroupBox(QStringLiteral("Modelo impresión"), impresion);
    auto* cm = new QVBoxLayout(modelo);
    auto opcion = [&](QRadioButton*& b, const char* nombre, const QString& texto) {
        b = new QRadioButton(texto, modelo);
        b->setObjectName(QLatin1String(nombre));
        cm->addWidget(b);
    };
    opcion(optCrystal_, "optCrystal", QStringLiteral("Plantilla de informe (*.rpt)"));
    opcion(optFiscal_, "optFiscal", QStringLiteral("Impresora Fiscal"));
    opcion(optTickets_, "optTickets", QStringLiteral("Impresora de Tickets"));
    optCrystal_->setChecked(true);
    ci->addWidget(modelo);
    lblPlantilla_ = new QLabel(kSinPlantilla, impresion);
    lblPlantilla_->setObjectName(QStringLiteral("lblPlantilla"));
    lblPlantilla_->setWordWrap(true);
    lblPlantilla_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* opciones = new QPushButton(QStringLiteral("Opciones..."), impresion);
    opciones->setObjectName(QStringLiteral("cmdOpciones"));
    connect(opciones, &QPushButton::clicked, this, &PanNueTipoComproba::opciones);
    ci->addWidget(lblPlantilla_);
    ci->addWidget(opciones, 0, Qt::AlignLeft);
    ci->addStretch(1);
    return impresion;
}

QWidget* PanNueTipoComproba::armaOpciones(QWidget* padre) {
    auto* marcas = new QWidget(padre);
    auto* co = new QVBoxLayout(marcas);
    // Cada marca va con su explicación debajo.
    auto marca = [&](QCheckBox*& c, const char* nombre, const QString& texto, const QString& ayuda) {
        c = new QCheckBox(texto, marcas);
        c->setObjectName(QLatin1String(nombre));
        co->addWidget(c);
        co->addWidget(explica(ayuda, marcas));
    };
    marca(chkEsComercial_, "chkEsComercial", QStringLiteral("Comprobante comercial ?"), explicacion::esComercial);
    marca(chkInversa_, "chkInversa", QStringLiteral("Comprobante de operación inversa ?"), explicacion::operacionInversa);
    marca(chkStock_, "chkStock", QStringLiteral("Descuenta cantidades del stock ?"), explicacion::descuentaStock);
    marca(chkCaja_, "chkCaja", QStringLiteral("Genera movimiento contable / caja ?"), explicacion::registraCaja);
    co->addStretch(1);
    return marcas;
}

void PanNueTipoComproba::carga(const Almacen& almacen, qint64 idTipo) {
    std::optional<TipoComprobante> t;
    Intenta(this, [&] { t = LeeTipo(almacen, idTipo); });
    if (!t) {
        noEncontrado_ = true;
        MensajeError(QStringLiteral("No encontrado!!"), this);
        return;
    }
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
        // El diseño y el puerto son de la máquina, comunes a todos los tipos de ticket; el tipo
        // guarda el puerto que se le dio al aceptar.
        panConfTkt tkt(conf_, this);
        if (tkt.exec() != QDialog::Accepted || tkt.puerto().isEmpty()) return;
        lblPlantilla_->setText(PlantillaTickets(tkt.puerto()));
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
