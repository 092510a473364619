#include "articles/ui/pan_importa_excel.h"

#include "articles/ui/modelo_hoja.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace orv {

namespace {

const QString kAviso = QStringLiteral(
    "Con ésta herramienta podrá migrar información contenida en planillas Excel hacia la base de datos del sistema, "
    "logrando así mayor agilidad y menor pérdida de tiempo. Seleccione primero el archivo-planilla correspondiente con el "
    "botón \"Abrir\", luego seleccione la hoja que contiene los datos a migrar. Seguidamente seleccione la tabla destino "
    "dentro del sistema donde se alojarán los datos.");

// Lo que la lista de tablas muestra, en el orden de TablaDestino.
const char* const kTablas[] = {"Artículos", "Clientes", "Proveedores"};

QLineEdit* campo(const char* nombre, QWidget* padre, int ancho = 0) {
    auto* e = new QLineEdit(padre);
    e->setObjectName(QString::fromLatin1(nombre));
    if (ancho > 0) e->setMaximumWidth(ancho);
    return e;
}

QLabel* etiqueta(const QString& texto, QWidget* padre, bool ajusta = false) {
    auto* l = new QLabel(texto, padre);
    l->setWordWrap(ajusta);
    return l;
}

} // namespace

panImportaExcel::panImportaExcel(Almacen& almacen, const Configuracion& conf, QWidget* padre)
    : QDialog(padre), almacen_(almacen), conf_(conf) {
    setObjectName(QStringLiteral("panImportaExcel"));
    setWindowTitle(QStringLiteral("Importar datos de Planillas de cálculo"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    pasos_ = new QTabWidget(this);
    pasos_->setObjectName(QStringLiteral("SSTab1"));
    pasos_->addTab(armaPaso1(), QStringLiteral("Paso 1"));
    pasos_->addTab(armaPaso2(), QStringLiteral("Paso 2"));
    pasos_->addTab(armaPaso3(), QStringLiteral("Paso 3"));
    capa->addWidget(pasos_);
    eligeTabla();
    eligeOrigen();
    resize(960, 660);
    CentrarVentana(this);
}

panImportaExcel::~panImportaExcel() = default;

QWidget* panImportaExcel::armaPaso1() {
    auto* w = new QWidget(this);
    auto* capa = new QVBoxLayout(w);
    capa->addWidget(etiqueta(kAviso, w, true));
    auto* g = new QGridLayout;
    text1_ = campo("Text1", w);
    auto* command1 = new QToolButton(w);
    command1->setObjectName(QStringLiteral("Command1"));
    command1->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    command1->setToolTip(QStringLiteral("Seleccione el archivo Excel"));
    combo3_ = new QComboBox(w);
    combo3_->setObjectName(QStringLiteral("Combo3"));
    combo3_->setEditable(true);
    combo3_->addItem(QStringLiteral("Hoja1$"));
    combo3_->setMinimumWidth(220);
    auto* command8 = new QPushButton(QStringLiteral("Abrir.."), w);
    command8->setObjectName(QStringLiteral("Command8"));
    combo1_ = new QComboBox(w);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    for (const char* t : kTablas) combo1_->addItem(QString::fromUtf8(t));
    g->addWidget(etiqueta(QStringLiteral("Archivo de Origen ?"), w), 0, 0);
    g->addWidget(text1_, 0, 1, 1, 2);
    g->addWidget(command1, 0, 3);
    g->addWidget(etiqueta(QStringLiteral("Hoja :"), w), 1, 0);
    g->addWidget(combo3_, 1, 1);
    g->addWidget(command8, 1, 2, Qt::AlignLeft);
    g->addWidget(etiqueta(QStringLiteral("( Los campos deben comenzar en la grilla A1 con sus títulos correspondientes para mayor "
                                         "precisión )"),
                          w, true),
                 2, 1, 1, 3);
    g->addWidget(etiqueta(QStringLiteral("Tabla destino en el sistema :"), w), 3, 0);
    g->addWidget(combo1_, 3, 1);
    g->setColumnStretch(2, 1);
    capa->addLayout(g);
    capa->addStretch(1);
    auto* fila = new QHBoxLayout;
    fila->addStretch(1);
    QPushButton* siguiente = BotonEnFila(fila, "Command5", QStringLiteral("Siguiente"), w);
    capa->addLayout(fila);

    connect(command1, &QToolButton::clicked, this, &panImportaExcel::eligeArchivo);
    connect(text1_, &QLineEdit::editingFinished, this, [this] { fijaArchivo(text1_->text()); });
    connect(command8, &QPushButton::clicked, this, &panImportaExcel::abreHoja);
    connect(combo1_, &QComboBox::currentIndexChanged, this, &panImportaExcel::eligeTabla);
    connect(siguiente, &QPushButton::clicked, this, [this] { pasos_->setCurrentIndex(1); });
    return w;
}

QWidget* panImportaExcel::armaEspecial(QWidget* padre) {
    frame1_ = new QGroupBox(padre);
    frame1_->setObjectName(QStringLiteral("Frame1"));
    auto* g = new QGridLayout(frame1_);
    option1_ = new QRadioButton(QStringLiteral("Valor fijo ?"), frame1_);
    option1_->setObjectName(QStringLiteral("Option1"));
    option1_->setChecked(true);
    option2_ = new QRadioButton(QStringLiteral("Valor autoincremental ?"), frame1_);
    option2_->setObjectName(QStringLiteral("Option2"));
    txCampoFijo_ = campo("txCampoFijo", frame1_);
    txComenzarEn_ = campo("txComenzarEn", frame1_, 90);
    txComenzarEn_->setText(QStringLiteral("1"));
    txIncrementar_ = campo("txIncrementar", frame1_, 50);
    txIncrementar_->setText(QStringLiteral("1"));
    g->addWidget(option1_, 0, 0);
    g->addWidget(txCampoFijo_, 0, 1, 1, 3);
    g->addWidget(option2_, 1, 0);
    g->addWidget(etiqueta(QStringLiteral("Comenzar en :"), frame1_), 1, 1);
    g->addWidget(txComenzarEn_, 1, 2);
    auto* sumar = new QHBoxLayout;
    sumar->addWidget(etiqueta(QStringLiteral("Sumar de a"), frame1_));
    sumar->addWidget(txIncrementar_);
    sumar->addWidget(etiqueta(QStringLiteral("dígito."), frame1_));
    sumar->addStretch(1);
    g->addLayout(sumar, 2, 1, 1, 3);
    return frame1_;
}

QWidget* panImportaExcel::armaPaso2() {
    auto* w = new QWidget(this);
    auto* capa = new QVBoxLayout(w);
    label12_ = new QLabel(QStringLiteral("<Seleccione en paso 1>"), w);
    label12_->setObjectName(QStringLiteral("Label12"));
    QFont negrita = label12_->font();
    negrita.setBold(true);
    negrita.setPointSizeF(negrita.pointSizeF() * 1.2);
    label12_->setFont(negrita);
    capa->addWidget(label12_);

    auto* arriba = new QHBoxLayout;
    auto* origen = new QVBoxLayout;
    option3_ = new QRadioButton(QStringLiteral("Campo de la planilla Excel"), w);
    option3_->setObjectName(QStringLiteral("Option3"));
    option3_->setChecked(true);
    list1_ = new QListWidget(w);
    list1_->setObjectName(QStringLiteral("List1"));
    option4_ = new QRadioButton(QStringLiteral("Campo especial"), w);
    option4_->setObjectName(QStringLiteral("Option4"));
    origen->addWidget(option3_);
    origen->addWidget(list1_, 1);
    origen->addWidget(option4_);
    origen->addWidget(armaEspecial(w));
    arriba->addLayout(origen, 1);

    auto* destino = new QVBoxLayout;
    destino->addWidget(etiqueta(QStringLiteral("Campos de la base de datos del sistema"), w));
    combo2_ = new QComboBox(w);
    combo2_->setObjectName(QStringLiteral("Combo2"));
    destino->addWidget(combo2_);
    destino->addWidget(etiqueta(QStringLiteral("      Máscara de ingreso del campo"), w));
    cboMascara_ = new QComboBox(w);
    cboMascara_->setObjectName(QStringLiteral("cboMascara"));
    cboMascara_->setEditable(true);
    cboMascara_->addItems(MascarasDeIngreso());
    destino->addWidget(cboMascara_);
    auto* agregar = new QPushButton(QStringLiteral("Agregar a la migración"), w);
    agregar->setObjectName(QStringLiteral("Command4"));
    destino->addWidget(agregar);
    destino->addStretch(1);
    arriba->addLayout(destino, 1);
    capa->addLayout(arriba, 1);

    auto* mapa = new QHBoxLayout;
    ms1_ = new QTableWidget(0, 5, w);
    ms1_->setObjectName(QStringLiteral("MS1"));
    ms1_->setHorizontalHeaderLabels(
        {QStringLiteral("Tipo"), QStringLiteral("Campo Externo"), QStringLiteral("Campo Interno"), QStringLiteral("Incrementador"),
         QStringLiteral("Mascara")});
    ms1_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    ms1_->setSelectionBehavior(QAbstractItemView::SelectRows);
    ms1_->horizontalHeader()->setStretchLastSection(true);
    ms1_->setColumnWidth(1, 220);
    ms1_->setColumnWidth(2, 180);
    mapa->addWidget(ms1_, 1);
    auto* command7 = BotonIcono("Command7", QStyle::SP_TrashIcon, QStringLiteral("Quitar de la migración"), w);
    mapa->addWidget(command7, 0, Qt::AlignTop);
    capa->addLayout(mapa, 1);
    auto* fila = new QHBoxLayout;
    fila->addStretch(1);
    QPushButton* siguiente = BotonEnFila(fila, "Command6", QStringLiteral("Siguiente"), w);
    capa->addLayout(fila);

    connect(option3_, &QRadioButton::toggled, this, &panImportaExcel::eligeOrigen);
    connect(agregar, &QPushButton::clicked, this, &panImportaExcel::agregaAlMapa);
    connect(command7, &QPushButton::clicked, this, &panImportaExcel::quitaDelMapa);
    connect(siguiente, &QPushButton::clicked, this, [this] { pasos_->setCurrentIndex(2); });
    return w;
}

QWidget* panImportaExcel::armaPaso3() {
    auto* w = new QWidget(this);
    auto* capa = new QVBoxLayout(w);
    capa->addWidget(etiqueta(QStringLiteral("Información de la planilla ( puede realizar cambios antes de migrar ) :"), w));
    modelo_ = new ModeloHoja(this);
    gx1_ = new QTableView(w);
    gx1_->setObjectName(QStringLiteral("gx1"));
    gx1_->setModel(modelo_);
    gx1_->verticalHeader()->setDefaultSectionSize(22);
    capa->addWidget(gx1_, 3);
    auto* filas = new QHBoxLayout;
    QPushButton* agregaFila = BotonEnFila(filas, "cmdAgregaFila", QStringLiteral("Agregar fila"), w);
    QPushButton* quitaFila = BotonEnFila(filas, "cmdQuitaFila", QStringLiteral("Quitar fila"), w);
    filas->addStretch(1);
    capa->addLayout(filas);
    capa->addWidget(etiqueta(QStringLiteral("Informe de errores :"), w));
    list3_ = new QListWidget(w);
    list3_->setObjectName(QStringLiteral("List3"));
    capa->addWidget(list3_, 2);
    prb1_ = new QProgressBar(w);
    prb1_->setObjectName(QStringLiteral("Prb1"));
    prb1_->setValue(0);
    capa->addWidget(prb1_);
    auto* pie = new QHBoxLayout;
    resultado_ = new QLabel(w);
    resultado_->setObjectName(QStringLiteral("lblResultado"));
    pie->addWidget(resultado_, 1);
    command2_ = BotonEnFila(pie, "Command2", QStringLiteral("Importar"), w);
    cmdCancelar_ = BotonEnFila(pie, "cmdCancelar", QStringLiteral("Cancelar"), w);
    cmdCancelar_->setEnabled(false);
    command3_ = BotonEnFila(pie, "Command3", QStringLiteral("&Salir"), w);
    capa->addLayout(pie);

    connect(agregaFila, &QPushButton::clicked, this, [this] {
        const int fila = gx1_->currentIndex().isValid() ? gx1_->currentIndex().row() + 1 : modelo_->rowCount();
        modelo_->insertRow(fila);
        gx1_->setCurrentIndex(modelo_->index(fila, 0));
    });
    connect(quitaFila, &QPushButton::clicked, this, [this] {
        if (gx1_->currentIndex().isValid()) modelo_->removeRow(gx1_->currentIndex().row());
    });
    // Pulsar el título de una columna de la hoja la elige en la lista del Paso 2.
    connect(gx1_->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int c) { list1_->setCurrentRow(c); });
    connect(command2_, &QPushButton::clicked, this, &panImportaExcel::importa);
    connect(cmdCancelar_, &QPushButton::clicked, this, &panImportaExcel::cancela);
    connect(command3_, &QPushButton::clicked, this, &panImportaExcel::reject);
    return w;
}

void panImportaExcel::eligeArchivo() {
    const QString ruta = QFileDialog::getOpenFileName(
        this, QStringLiteral("Seleccione el archivo Excel"), QDir::homePath(),
        QStringLiteral("Archivo Planilla (*.xls *.xlsx *.ods *.csv);;Archivo Planilla Excel (*.xls *.xlsx);;Todos los archivos (*)"));
    if (ruta.isEmpty() || !QFileInfo::exists(ruta)) return;
    text1_->setText(QDir::toNativeSeparators(ruta));
    fijaArchivo(ruta);
}

void panImportaExcel::fijaArchivo(const QString& ruta) {
    if (text1_->text() != ruta) text1_->setText(ruta);
    if (!QFileInfo(ruta).isFile()) return;
    Intenta(this, [&] {
        const QStringList hojas = Planilla::abre(ruta)->hojas();
        combo3_->clear();
        combo3_->addItems(hojas);
    });
}

bool panImportaExcel::abreHoja() {
    return Intenta(this, [&] {
        modelo_->fija({});
        list1_->clear();
        auto planilla = Planilla::abre(text1_->text().trimmed());
        const auto hoja = planilla->buscaHoja(combo3_->currentText());
        if (!hoja)
            throw Aviso(QStringLiteral("La planilla no tiene la hoja \"%1\"; sus hojas son: %2.")
                            .arg(combo3_->currentText(), planilla->hojas().join(QStringLiteral(", "))));
        modelo_->fija(LeeHoja(*planilla, *hoja));
        list1_->addItems(modelo_->hoja().titulos);
        if (list1_->count() > 0) list1_->setCurrentRow(0);
        gx1_->resizeColumnsToContents();
        for (int c = 0; c < modelo_->columnCount(); ++c) gx1_->setColumnWidth(c, std::min(gx1_->columnWidth(c), 320));
        prb1_->setValue(0);
        resultado_->setText(QStringLiteral("%1 filas en la hoja.").arg(modelo_->rowCount()));
    });
}

void panImportaExcel::eligeTabla() {
    combo2_->clear();
    for (const CampoDestino& c : CamposDe(TablaDestino(combo1_->currentIndex()))) combo2_->addItem(c.nombre);
    combo2_->setCurrentIndex(-1);
    label12_->setText(combo1_->currentText());
}

void panImportaExcel::eligeOrigen() {
    const bool deLaHoja = option3_->isChecked();
    list1_->setEnabled(deLaHoja);
    frame1_->setVisible(!deLaHoja);
    if (deLaHoja) list1_->setFocus();
}

void panImportaExcel::agregaFilaMapa(const Mapeo& m) {
    const int fila = ms1_->rowCount();
    ms1_->insertRow(fila);
    const QString textos[] = {m.tipo, m.externo, m.interno, m.incrementador, m.mascara};
    for (int c = 0; c < 5; ++c) ms1_->setItem(fila, c, new QTableWidgetItem(textos[c]));
    combo2_->setCurrentIndex(-1);
    cboMascara_->setCurrentIndex(-1);
    cboMascara_->clearEditText();
}

void panImportaExcel::agregaAlMapa() {
    const QString interno = combo2_->currentText();
    const QString mascara = cboMascara_->currentText();
    if (option4_->isChecked() && option2_->isChecked()) {
        Intenta(this, [&] { agregaFilaMapa(MapeoContador(txComenzarEn_->text(), txIncrementar_->text(), interno, mascara)); });
    } else if (option4_->isChecked()) {
        agregaFilaMapa({kMapeoFijo, txCampoFijo_->text(), interno, QStringLiteral("0"), mascara});
    } else if (list1_->currentItem() && combo2_->currentIndex() >= 0) {
        agregaFilaMapa({kMapeoColumna, list1_->currentItem()->text(), interno, QStringLiteral("0"), mascara});
        // La columna siguiente de la hoja, para mapearlas una tras otra.
        list1_->setCurrentRow(std::min(list1_->currentRow() + 1, list1_->count() - 1));
    }
}

void panImportaExcel::quitaDelMapa() {
    const int fila = ms1_->currentRow();
    if (fila < 0) return;
    // Como en las otras grillas de este tipo: la primera fila queda mientras haya otras.
    if (ms1_->rowCount() == 1 || fila >= 1) ms1_->removeRow(fila);
}

QList<Mapeo> panImportaExcel::mapa() const {
    QList<Mapeo> r;
    for (int f = 0; f < ms1_->rowCount(); ++f) {
        const auto texto = [&](int c) { return ms1_->item(f, c) ? ms1_->item(f, c)->text() : QString(); };
        r << Mapeo{texto(0), texto(1), texto(2), texto(3), texto(4)};
    }
    return r;
}

void panImportaExcel::importa() {
    if (importando()) return;
    const bool empezo = Intenta(this, [&] {
        importacion_ = std::make_unique<Importacion>(almacen_, TablaDestino(combo1_->currentIndex()), mapa(), modelo_->hoja(),
                                                     conf_.lee(clave::miscelaneas, QStringLiteral("CoefIva")));
    });
    if (!empezo) return;
    list3_->clear();
    erroresMostrados_ = 0;
    cancelar_ = false;
    prb1_->setRange(0, std::max(1, importacion_->total()));
    prb1_->setValue(0);
    command2_->setEnabled(false);
    command3_->setEnabled(false);
    cmdCancelar_->setEnabled(true);
    gx1_->setEnabled(false);
    resultado_->setText(QStringLiteral("Importando..."));
    QTimer::singleShot(0, this, &panImportaExcel::siguienteLote);
}

void panImportaExcel::siguienteLote() {
    if (!importacion_) return;
    bool sigue = false;
    if (!cancelar_) {
        const bool bien = Intenta(this, [&] { sigue = importacion_->avanza(); });
        sigue = bien && sigue && !importacion_->terminada();
    }
    const auto& errores = importacion_->errores();
    for (; erroresMostrados_ < errores.size(); ++erroresMostrados_) list3_->addItem(LineaDeError(errores[erroresMostrados_]));
    prb1_->setValue(importacion_->procesadas());
    resultado_->setText(QStringLiteral("%1 de %2 filas leídas, %3 importadas.")
                            .arg(importacion_->procesadas())
                            .arg(importacion_->total())
                            .arg(importacion_->importadas()));
    // El lote siguiente después de atender la ventana: el avance se ve y Cancelar responde.
    if (sigue) QTimer::singleShot(0, this, &panImportaExcel::siguienteLote);
    else terminaImportacion();
}

void panImportaExcel::terminaImportacion() {
    const int importadas = importacion_->importadas();
    const int total = importacion_->total();
    const bool completa = importacion_->terminada();
    const qsizetype errores = importacion_->errores().size();
    importacion_.reset();
    command2_->setEnabled(true);
    command3_->setEnabled(true);
    cmdCancelar_->setEnabled(false);
    gx1_->setEnabled(true);
    QString texto = completa ? QStringLiteral("Importación terminada: %1 de %2 filas importadas").arg(importadas).arg(total)
                             : QStringLiteral("Importación cancelada: %1 filas importadas de %2; las importadas quedan.")
                                   .arg(importadas)
                                   .arg(total);
    if (completa) texto += errores ? QStringLiteral(", %1 con errores (vea el informe).").arg(errores) : QStringLiteral(".");
    resultado_->setText(texto);
    Mensaje(texto, QStringLiteral("Importar"), completa && errores == 0 ? Icono::Informacion : Icono::Exclamacion, this);
}

void panImportaExcel::reject() {
    // Con una importación en curso, cerrar la ventana la cancela primero.
    if (importando()) {
        cancelar_ = true;
        return;
    }
    QDialog::reject();
}

} // namespace orv
