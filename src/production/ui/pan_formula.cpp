#include "production/ui/pan_formula.h"

#include "articles/movimientos_stock.h"
#include "store/formato.h"
#include "widgets/paneles.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTableWidget>
#include <QVBoxLayout>

namespace orv {

namespace {

QString cantidadTexto(double c) { return QString::number(c, 'g', 15); }

} // namespace

panFormula::panFormula(Almacen& almacen, const EstadoAplicacion& estado, std::optional<qint64> idArticuloFinal,
                       QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), editado_(idArticuloFinal) {
    setObjectName(QStringLiteral("panFormula"));
    setWindowTitle(QStringLiteral("Formula de Producción"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->addLayout(armaEleccion());
    capa->addWidget(new QLabel(QStringLiteral("Está compuesto por :"), this));
    ms1_ = new QTableWidget(0, 4, this);
    ms1_->setObjectName(QStringLiteral("ms1"));
    ms1_->setHorizontalHeaderLabels({QStringLiteral("Codigo"), QStringLiteral("Cantidad"), QStringLiteral("Descripción"),
                                     QStringLiteral("Costo")});
    ms1_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    ms1_->setSelectionBehavior(QAbstractItemView::SelectRows);
    ms1_->setSelectionMode(QAbstractItemView::SingleSelection);
    ms1_->verticalHeader()->hide();
    ms1_->horizontalHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
    ms1_->setColumnWidth(0, 110);
    ms1_->setColumnWidth(1, 80);
    ms1_->setColumnWidth(3, 100);
    capa->addWidget(ms1_, 1);
    capa->addLayout(armaBotones());

    llenaListas();
    if (editado_) {
        Intenta(this, [this] {
            for (const LineaFormula& l : LeeFormula(almacen_, *editado_)) agregaFila(l);
        });
        SelComboId(cboArticulos_, *editado_);
        // Un artículo marcado como materia prima después de cargar su fórmula la sigue teniendo.
        if (cboArticulos_->currentIndex() < 0)
            Intenta(this, [this] {
                if (const auto d = DescripcionArticulo(almacen_, *editado_)) {
                    cboArticulos_->addItem(*d, *editado_);
                    cboArticulos_->setCurrentIndex(cboArticulos_->count() - 1);
                }
            });
    }
    totaliza();
    resize(720, 480);
    CentrarVentana(this);
}

// El artículo, la materia prima y su cantidad, con el botón que la agrega.
QLayout* panFormula::armaEleccion() {
    auto* g = new QGridLayout;
    cboArticulos_ = new QComboBox(this);
    cboArticulos_->setObjectName(QStringLiteral("cboArticulos"));
    cboMat_ = new QComboBox(this);
    cboMat_->setObjectName(QStringLiteral("cboMat"));
    // La lista de materias primas en tres columnas: descripción, código y costo.
    auto* vista = new QTableView(cboMat_);
    vista->horizontalHeader()->hide();
    vista->verticalHeader()->hide();
    vista->setSelectionBehavior(QAbstractItemView::SelectRows);
    vista->setShowGrid(false);
    vista->setMinimumWidth(560);
    cboMat_->setModel(new QStandardItemModel(0, 3, cboMat_));
    cboMat_->setView(vista);
    text1_ = new QLineEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setAlignment(Qt::AlignRight);
    text1_->setMaximumWidth(90);
    g->addWidget(new QLabel(QStringLiteral("Artículo a producir ? :"), this), 0, 0);
    g->addWidget(cboArticulos_, 0, 1, 1, 3);
    g->addWidget(new QLabel(QStringLiteral("Materia Prima ?"), this), 1, 0);
    g->addWidget(cboMat_, 1, 1);
    g->addWidget(new QLabel(QStringLiteral("Cant. ?"), this), 1, 2);
    g->addWidget(text1_, 1, 3);
    auto* filaAgrega = new QHBoxLayout;
    filaAgrega->addStretch(1);
    QPushButton* agrega = BotonEnFila(filaAgrega, "Command1", QStringLiteral("Agregar M.Prima :"), this, 0);
    g->addLayout(filaAgrega, 2, 0, 1, 4);
    g->setColumnStretch(1, 1);
    connect(agrega, &QPushButton::clicked, this, &panFormula::agregaMateria);
    connect(text1_, &QLineEdit::returnPressed, this, &panFormula::agregaMateria);
    return g;
}

QLayout* panFormula::armaBotones() {
    auto* fila = new QHBoxLayout;
    QPushButton* quita = BotonEnFila(fila, "Command2", QStringLiteral("Quitar M.Prima"), this, 0);
    text2_ = new QLineEdit(this);
    text2_->setObjectName(QStringLiteral("Text2"));
    text2_->setReadOnly(true);
    text2_->setAlignment(Qt::AlignRight);
    text2_->setMaximumWidth(140);
    fila->addStretch(1);
    fila->addWidget(new QLabel(QStringLiteral("Costo Total :"), this));
    fila->addWidget(text2_);
    fila->addSpacing(20);
    QPushButton* acepta = BotonEnFila(fila, "Command4", QStringLiteral("&Aceptar"), this, 0);
    QPushButton* cancela = BotonEnFila(fila, "Command3", QStringLiteral("&Cancelar"), this, 0);
    connect(quita, &QPushButton::clicked, this, &panFormula::quitaMateria);
    connect(acepta, &QPushButton::clicked, this, &panFormula::acepta);
    connect(cancela, &QPushButton::clicked, this, &QDialog::reject);
    return fila;
}

void panFormula::llenaListas() {
    LlenaCombo(cboArticulos_, almacen_, ConsultaArticulosProducibles(), {}, QStringLiteral("Descripcion"),
               QStringLiteral("idArticulo"));
    cboArticulos_->setCurrentIndex(-1);
    Intenta(this, [this] { materias_ = MateriasPrimas(almacen_); });
    auto* modelo = static_cast<QStandardItemModel*>(cboMat_->model());
    for (const MateriaPrima& mp : materias_) {
        auto* costo = new QStandardItem(FormatoMoneda(mp.precioCosto, estado_.MascaraMoneda));
        costo->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        modelo->appendRow({new QStandardItem(mp.descripcion), new QStandardItem(mp.codigo), costo});
    }
    auto* vista = static_cast<QTableView*>(cboMat_->view());
    vista->setColumnWidth(0, 340);
    vista->setColumnWidth(1, 110);
    vista->setColumnWidth(2, 100);
    cboMat_->setCurrentIndex(-1);
}

void panFormula::agregaFila(const LineaFormula& l) {
    lineas_ << l;
    const int f = ms1_->rowCount();
    ms1_->insertRow(f);
    const QString textos[4] = {l.codigo, cantidadTexto(l.cantidad), l.descripcion, FormatoMoneda(l.costoTotal, estado_.MascaraMoneda)};
    for (int c = 0; c < 4; ++c) {
        auto* celda = new QTableWidgetItem(textos[c]);
        if (c == 1 || c == 3) celda->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        ms1_->setItem(f, c, celda);
    }
}

void panFormula::agregaMateria() {
    const int i = cboMat_->currentIndex();
    if (i < 0 || i >= materias_.size()) {
        MensajeAtencion(QStringLiteral("Elija la materia prima."), this);
        return;
    }
    if (!Intenta(this, [&] { agregaFila(LineaDeFormula(materias_[i], text1_->text())); })) return;
    totaliza();
    text1_->clear();
    cboMat_->setFocus();
}

void panFormula::quitaMateria() {
    const int f = ms1_->currentRow();
    if (f < 0 || f >= lineas_.size()) return;
    lineas_.removeAt(f);
    ms1_->removeRow(f);
    totaliza();
}

void panFormula::totaliza() { text2_->setText(FormatoMoneda(CostoDeFormula(lineas_), estado_.MascaraMoneda)); }

void panFormula::acepta() {
    const std::optional<qint64> elegido =
        cboArticulos_->currentIndex() >= 0 ? std::optional<qint64>(cboArticulos_->currentData().toLongLong()) : std::nullopt;
    if (Intenta(this, [&] { GuardaFormula(almacen_, elegido, lineas_, editado_); })) accept();
}

} // namespace orv
