#include "articles/ui/pan_matrices.h"

#include "articles/matriz.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orv {

panNueCaracMatriz::panNueCaracMatriz(Almacen& almacen, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panNueCaracMatriz"));
    setWindowTitle(QStringLiteral("Nueva característica..."));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    auto* g = new QGridLayout;
    text1_ = new QLineEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setMaxLength(kLargoMatriz);
    g->addWidget(new QLabel(QStringLiteral("Cararcterística :"), this), 0, 0);
    g->addWidget(text1_, 0, 1, 1, 2);
    g->addWidget(new QLabel(QStringLiteral("Valores :"), this), 1, 0, Qt::AlignTop);
    for (int i = 0; i < 8; ++i) {
        text2_[i] = new QLineEdit(this);
        text2_[i]->setObjectName(QStringLiteral("Text2_%1").arg(i));
        text2_[i]->setMaxLength(kLargoMatriz);
        g->addWidget(text2_[i], 1 + i / 2, 1 + i % 2);
    }
    capa->addLayout(g);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &panNueCaracMatriz::acepta);
    adjustSize();
    CentrarVentana(this);
    text1_->setFocus();
}

void panNueCaracMatriz::acepta() {
    QStringList valores;
    for (QLineEdit* t : text2_) valores << t->text();
    if (Intenta(this, [&] { AgregaCaracteristica(almacen_, text1_->text(), valores); })) accept();
}

panMatrices::panMatrices(Almacen& almacen, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panMatrices"));
    setWindowTitle(QStringLiteral("Administración de Matrices de articulos"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    auto* aviso = new QLabel(QStringLiteral("En ésta ventana podrá definir las matrices necesarias para que el sistema automatice "
                                            "la carga de artículos, podrá hacerla para aquellos ítems que requieran color, talle, "
                                            "medida, etc."),
                             this);
    aviso->setWordWrap(true);
    capa->addWidget(aviso);

    auto* cuerpo = new QHBoxLayout;
    auto* izquierda = new QVBoxLayout;
    list1_ = new QListWidget(this);
    list1_->setObjectName(QStringLiteral("List1"));
    izquierda->addWidget(new QLabel(QStringLiteral("Características :"), this));
    izquierda->addWidget(list1_, 1);
    QPushButton* nueva = BotonEnFila(izquierda, "Command1", QStringLiteral("&Nueva característica..."), this, 0);
    QPushButton* elimina = BotonEnFila(izquierda, "Command2", QStringLiteral("&Eliminar"), this, 0);
    cuerpo->addLayout(izquierda, 1);
    auto* solapas = new QTabWidget(this);
    solapas->addTab(armaElementos(), QStringLiteral("Elementos"));
    cuerpo->addWidget(solapas, 2);
    capa->addLayout(cuerpo, 1);
    auto* pie = new QHBoxLayout;
    pie->addStretch(1);
    QPushButton* cerrar = BotonEnFila(pie, "cmdCerrar", QStringLiteral("&Cerrar"), this);
    capa->addLayout(pie);

    connect(nueva, &QPushButton::clicked, this, &panMatrices::nueva);
    connect(elimina, &QPushButton::clicked, this, &panMatrices::eliminar);
    connect(list1_, &QListWidget::currentRowChanged, this, &panMatrices::eligeCaracteristica);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::accept);
    llenaCaracteristicas();
    resize(760, 460);
    CentrarVentana(this);
}

QWidget* panMatrices::armaElementos() {
    auto* w = new QWidget(this);
    auto* capa = new QVBoxLayout(w);
    label3_ = new QLabel(w);
    label3_->setObjectName(QStringLiteral("Label3"));
    list2_ = new QListWidget(w);
    list2_->setObjectName(QStringLiteral("List2"));
    text1_ = new QLineEdit(w);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setMaxLength(kLargoMatriz);
    auto* fila = new QHBoxLayout;
    fila->addWidget(text1_, 1);
    command3_ = BotonEnFila(fila, "Command3", QStringLiteral("Agregar"), w, 0);
    QPushButton* quita = BotonEnFila(fila, "Command4", QStringLiteral("Quitar"), w, 0);
    capa->addWidget(label3_);
    capa->addWidget(list2_, 1);
    capa->addLayout(fila);
    // Enter en el valor nuevo lo agrega.
    connect(text1_, &QLineEdit::returnPressed, this, &panMatrices::agregaValor);
    connect(command3_, &QPushButton::clicked, this, &panMatrices::agregaValor);
    connect(quita, &QPushButton::clicked, this, &panMatrices::quitaValor);
    return w;
}

void panMatrices::llenaCaracteristicas() {
    const QString antes = elegida();
    list1_->clear();
    Intenta(this, [this] { list1_->addItems(Caracteristicas(almacen_)); });
    const auto encontradas = list1_->findItems(antes, Qt::MatchExactly);
    if (!encontradas.isEmpty()) list1_->setCurrentItem(encontradas.front());
    else eligeCaracteristica();
}

QString panMatrices::elegida() const { return list1_->currentItem() ? list1_->currentItem()->text() : QString(); }

void panMatrices::eligeCaracteristica() {
    const QString tipo = elegida();
    list2_->clear();
    label3_->setText(tipo.isEmpty() ? QString() : QStringLiteral("Lista de valores o elementos de la característica ") + tipo);
    if (tipo.isEmpty()) return;
    Intenta(this, [&] {
        for (const ValorMatriz& v : ValoresDe(almacen_, tipo)) {
            auto* item = new QListWidgetItem(v.valor, list2_);
            item->setData(Qt::UserRole, v.idMatriz);
        }
    });
}

void panMatrices::nueva() {
    panNueCaracMatriz nueva(almacen_, this);
    if (nueva.exec() == QDialog::Accepted) llenaCaracteristicas();
}

void panMatrices::eliminar() {
    const QString tipo = elegida();
    if (tipo.isEmpty()) return;
    if (!PreguntaSiNo(QStringLiteral("Está seguro de eliminar esta característica?"), QStringLiteral("Atención"), Icono::Stop, this))
        return;
    Intenta(this, [&] { BorraCaracteristica(almacen_, tipo); });
    llenaCaracteristicas();
}

void panMatrices::agregaValor() {
    const QString tipo = elegida();
    if (tipo.isEmpty()) {
        MensajeAtencion(QStringLiteral("Elija la característica."), this);
        return;
    }
    qint64 id = 0;
    if (!Intenta(this, [&] { id = AgregaValor(almacen_, tipo, text1_->text()); })) return;
    auto* item = new QListWidgetItem(text1_->text().trimmed(), list2_);
    item->setData(Qt::UserRole, id);
    text1_->clear();
    text1_->setFocus();
}

// El último valor se lleva la característica: la lista se vuelve a llenar.
void panMatrices::quitaValor() {
    QListWidgetItem* item = list2_->currentItem();
    if (!item) return;
    Intenta(this, [&] { QuitaValor(almacen_, item->data(Qt::UserRole).toLongLong()); });
    delete item;
    if (list2_->count() == 0) llenaCaracteristicas();
}

} // namespace orv
