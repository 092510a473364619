#include "articles/ui/pan_etiquetas.h"

#include "articles/etiquetas.h"
#include "articles/ui/imprime_etiquetas.h"
#include "articles/ui/pan_conf_etiq.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>

namespace orv {

panEtiq::panEtiq(Almacen& almacen, const Reloj& reloj, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panEtiq"));
    setWindowTitle(QStringLiteral("Etiquetas Cgo Barras"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->addWidget(TituloPanel(QStringLiteral("Gestión Etiquetas código de barra"), this));
    auto* proposito = new QLabel(QStringLiteral("Desde aquí podrá imprimir las etiquetas de aquellos artículos ingresados al "
                                                "stock que no poseen su propia etiqueta EAN13 comercial y requieren tener una."),
                                 this);
    proposito->setWordWrap(true);
    capa->addWidget(proposito);
    auto* campos = new QFormLayout;
    dtPicker1_ = CampoFecha(QStringLiteral("DTPicker1"), this);
    dtPicker1_->setDate(reloj.hoy());
    dtPicker1_->setMaximumWidth(160);
    campos->addRow(QStringLiteral("Imprimir ingresos al stock del día :"), dtPicker1_);
    capa->addLayout(campos);
    capa->addStretch(1);
    auto* pie = new QHBoxLayout;
    pie->addStretch(1);
    QPushButton* configura = BotonEnFila(pie, "Command32", QStringLiteral("&Configurar e Imprimir Etiquetas"), this, 240);
    QPushButton* salir = BotonEnFila(pie, "Command1", QStringLiteral("&Salir"), this);
    capa->addLayout(pie);
    connect(configura, &QPushButton::clicked, this, &panEtiq::configurar);
    connect(salir, &QPushButton::clicked, this, &QDialog::reject);
    resize(520, 240);
    CentrarVentana(this);
}

void panEtiq::configurar() {
    // Las listas salen de la base al abrirse: si falla, el aviso ya se mostró y no se abre.
    std::unique_ptr<panCgoBarra> p;
    if (!Intenta(this, [&] { p = std::make_unique<panCgoBarra>(almacen_, dtPicker1_->date(), this); })) return;
    p->exec();
}

panCgoBarra::panCgoBarra(Almacen& almacen, const QDate& dia, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panCgoBarra"));
    setWindowTitle(QStringLiteral("Impresion de Códigos de Barra"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    // 1. El día de las entradas.
    label3_ = new QLabel(QStringLiteral("Este proceso permite imprimir etiquetas de códigos de barra de los articulos ingresados "
                                        "al stock en la fecha ") +
                             dia.toString(QStringLiteral("dd/MM/yyyy")),
                         this);
    label3_->setObjectName(QStringLiteral("Label3"));
    label3_->setWordWrap(true);
    capa->addWidget(label3_);
    capa->addLayout(armaListas(), 1);
    capa->addLayout(armaFormato());
    // 2. Los formatos, una vez; 3 y 4. una entrada por unidad; 5. todas a imprimir.
    combo1_->addItems(NombresHojasEtiquetas(almacen_));
    list1_->addItems(EtiquetasDelDia(almacen_, dia));
    pasaTodos(list1_, list2_);
    resize(640, 560);
    CentrarVentana(this);
}

// Las dos listas con los cuatro botones entre ellas y la cuenta de lo que se imprime.
QLayout* panCgoBarra::armaListas() {
    auto* grilla = new QGridLayout;
    const auto lista = [this](const char* nombre) {
        auto* l = new QListWidget(this);
        l->setObjectName(QString::fromLatin1(nombre));
        l->setSelectionMode(QAbstractItemView::ExtendedSelection);
        return l;
    };
    list1_ = lista("List1");
    list2_ = lista("List2");
    grilla->addWidget(new QLabel(QStringLiteral("Items disponibles"), this), 0, 0);
    grilla->addWidget(new QLabel(QStringLiteral("Items a Imprimir código"), this), 0, 2);
    grilla->addWidget(list1_, 1, 0);
    grilla->addWidget(list2_, 1, 2);
    auto* botones = new QVBoxLayout;
    botones->addStretch(1);
    const auto boton = [&](const char* nombre, const char* texto, auto accion) {
        QPushButton* b = BotonEnFila(botones, nombre, QString::fromUtf8(texto), this, 48);
        connect(b, &QPushButton::clicked, this, accion);
    };
    boton("Command1", ">", [this] { pasaElegidos(list1_, list2_); });
    boton("Command2", ">>", [this] { pasaTodos(list1_, list2_); });
    boton("Command3", "<", [this] { pasaElegidos(list2_, list1_); });
    boton("Command4", "<<", [this] { pasaTodos(list2_, list1_); });
    botones->addStretch(1);
    grilla->addLayout(botones, 1, 1);
    auto* cuenta = new QHBoxLayout;
    cuenta->addStretch(1);
    cuenta->addWidget(new QLabel(QStringLiteral("Nº de ítems seleccionados :"), this));
    label8_ = new QLabel(QStringLiteral("0"), this);
    label8_->setObjectName(QStringLiteral("Label8"));
    label8_->setMinimumWidth(50);
    cuenta->addWidget(label8_);
    grilla->addLayout(cuenta, 2, 2);
    return grilla;
}

// Comienzo, formato, la opción EAN-13 y los botones.
QLayout* panCgoBarra::armaFormato() {
    auto* capa = new QVBoxLayout;
    auto* campos = new QFormLayout;
    text2_ = new QLineEdit(QStringLiteral("1"), this);
    text2_->setObjectName(QStringLiteral("Text2"));
    text2_->setMaximumWidth(80);
    text2_->setAlignment(Qt::AlignRight);
    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    combo1_->setMinimumWidth(260);
    chkEan13_ = new QCheckBox(QStringLiteral("Los códigos EAN-13 válidos se imprimen como EAN-13"), this);
    chkEan13_->setObjectName(QStringLiteral("chkEan13"));
    campos->addRow(QStringLiteral("Comenzar a imprimir en la etiqueta nº :"), text2_);
    campos->addRow(QStringLiteral("Formato de etiqueta a utilizar :"), combo1_);
    campos->addRow(QString(), chkEan13_);
    capa->addLayout(campos);
    auto* pie = new QHBoxLayout;
    connect(BotonEnFila(pie, "Command7", QStringLiteral("&Nuevo Formato"), this, 120), &QPushButton::clicked, this,
            &panCgoBarra::nuevoFormato);
    connect(BotonEnFila(pie, "Command8", QStringLiteral("&Configurar Hoja..."), this, 140), &QPushButton::clicked, this,
            &panCgoBarra::configurarHoja);
    pie->addStretch(1);
    connect(BotonEnFila(pie, "Command6", QStringLiteral("&Imprimir"), this), &QPushButton::clicked, this, &panCgoBarra::imprimir);
    connect(BotonEnFila(pie, "Command5", QStringLiteral("&Cerrar"), this), &QPushButton::clicked, this, &QDialog::reject);
    capa->addLayout(pie);
    return capa;
}

void panCgoBarra::actualizaCuenta() { label8_->setText(QString::number(list2_->count())); }

void panCgoBarra::pasaElegidos(QListWidget* de, QListWidget* a) {
    const QList<QListWidgetItem*> elegidos = de->selectedItems();
    if (elegidos.isEmpty()) {
        MensajeAtencion(QStringLiteral("Debe seleccionar al menos un elemento."), this);
        return;
    }
    // En el orden de la lista, no en el de la selección.
    for (int i = 0; i < de->count();) {
        if (de->item(i)->isSelected()) a->addItem(de->takeItem(i)->text());
        else ++i;
    }
    actualizaCuenta();
}

void panCgoBarra::pasaTodos(QListWidget* de, QListWidget* a) {
    QStringList textos;
    for (int i = 0; i < de->count(); ++i) textos << de->item(i)->text();
    de->clear();
    a->addItems(textos);
    actualizaCuenta();
}

void panCgoBarra::nuevoFormato() {
    panConfEtiq conf(almacen_, QString(), this);
    conf.exec();
    releeFormatos(conf.guardada());
}

void panCgoBarra::configurarHoja() {
    panConfEtiq conf(almacen_, combo1_->currentText(), this);
    conf.exec();
    releeFormatos(conf.guardada());
}

// Un formato recién guardado aparece en la lista y queda elegido; si no, sigue el que estaba.
void panCgoBarra::releeFormatos(const QString& guardada) {
    const QString elegido = guardada.isEmpty() ? combo1_->currentText() : guardada;
    Intenta(this, [&] {
        combo1_->clear();
        combo1_->addItems(NombresHojasEtiquetas(almacen_));
        combo1_->setCurrentIndex(std::max(0, combo1_->findText(elegido)));
    });
}

void panCgoBarra::imprimir() {
    QStringList codigos;
    for (int i = 0; i < list2_->count(); ++i) codigos << list2_->item(i)->text();
    Intenta(this, [&] {
        const TrabajoEtiquetas t =
            PreparaImpresionEtiquetas(almacen_, combo1_->currentText(), codigos, text2_->text(), chkEan13_->isChecked());
        PrevisualizaEtiquetas(this, t);
    });
}

} // namespace orv
