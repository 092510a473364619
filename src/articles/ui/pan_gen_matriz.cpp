#include "articles/ui/pan_gen_matriz.h"

#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QAbstractItemDelegate>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QTableWidget>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kSeparador = QStringLiteral("CaracterSeparador");
const QString kSinTitulo = QStringLiteral("AgregarTituloCaracteristica");
const QString kEnDescripcion = QStringLiteral("AgregarCaracteristicaEnDescripcion");
enum Columna { kCodigo = 0, kDescripcion, kCaracteristicas, kStock };

} // namespace

panGenMatriz::panGenMatriz(Almacen& almacen, const Configuracion& conf, const QString& codigo, const QString& descripcion,
                           const QString& existencia, const QList<VarianteMatriz>& filas, QWidget* padre)
    : QDialog(padre), almacen_(almacen), conf_(conf), existencia_(existencia) {
    setObjectName(QStringLiteral("panGenMatriz"));
    setWindowTitle(QStringLiteral("Generador de Matriz de artículos"));
    setModal(true);
    QStringList caracteristicas;
    Intenta(this, [&] { caracteristicas = Caracteristicas(almacen_); });
    lblCgo_ = new QLabel(codigo, this);
    lblCgo_->setObjectName(QStringLiteral("lblCgo"));
    lblCgo_->hide();
    lblDesc_ = new QLabel(descripcion, this);
    lblDesc_->setObjectName(QStringLiteral("lblDesc"));
    lblDesc_->hide();
    siguiente_ = filas.isEmpty() ? codigo : SiguienteCodigo(filas.back().codigo);

    auto* capa = new QVBoxLayout(this);
    capa->addLayout(armaOpciones());
    capa->addWidget(armaCaracteristicas(caracteristicas));
    capa->addWidget(armaResultado(), 1);
    capa->addLayout(armaBotones());
    agrega(filas);
    resize(900, 620);
    CentrarVentana(this);
    if (caracteristicas.isEmpty()) {
        MensajeAtencion(QStringLiteral("Debe crear primero las características de las matrices en Herramientas!"), padre);
        return;
    }
    listo_ = true;
}

// Separador y las dos marcas, con lo que quedó guardado la última vez.
QLayout* panGenMatriz::armaOpciones() {
    auto* fila = new QHBoxLayout;
    txtSep_ = new QLineEdit(QStringLiteral("-"), this);
    txtSep_->setObjectName(QStringLiteral("txtSep"));
    txtSep_->setMaximumWidth(50);
    optTit_ = new QCheckBox(QStringLiteral("No agregar título de la característica"), this);
    optTit_->setObjectName(QStringLiteral("optTit"));
    optEnDescripcion_ = new QCheckBox(QStringLiteral("Agregar la característica en la descripción"), this);
    optEnDescripcion_->setObjectName(QStringLiteral("optEnDescripcion"));
    optEnDescripcion_->setChecked(true);
    const QString sep = conf_.lee(clave::miscelaneas, kSeparador);
    const QString tit = conf_.lee(clave::miscelaneas, kSinTitulo);
    const QString desc = conf_.lee(clave::miscelaneas, kEnDescripcion);
    if (!sep.isEmpty()) txtSep_->setText(sep);
    if (!tit.isEmpty()) optTit_->setChecked(tit == u"1");
    if (!desc.isEmpty()) optEnDescripcion_->setChecked(desc == u"1");
    fila->addWidget(new QLabel(QStringLiteral("Caracter separador :"), this));
    fila->addWidget(txtSep_);
    fila->addSpacing(16);
    fila->addWidget(optTit_);
    fila->addSpacing(16);
    fila->addWidget(optEnDescripcion_);
    fila->addStretch(1);
    return fila;
}

// Una lista por característica, una al lado de la otra; se elige uno o varios valores de cada una.
QWidget* panGenMatriz::armaCaracteristicas(const QStringList& caracteristicas) {
    auto* zona = new QScrollArea(this);
    zona->setWidgetResizable(true);
    zona->setFrameShape(QFrame::NoFrame);
    zona->setMinimumHeight(190);
    auto* contenido = new QWidget(zona);
    auto* fila = new QHBoxLayout(contenido);
    fila->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < caracteristicas.size(); ++i) {
        auto* columna = new QVBoxLayout;
        auto* titulo = new QLabel(QStringLiteral("<b>%1</b>").arg(caracteristicas[i].toHtmlEscaped()), contenido);
        titulo->setObjectName(QStringLiteral("tit%1").arg(i + 1));
        titulo->setProperty("caracteristica", caracteristicas[i]);
        auto* lista = new QListWidget(contenido);
        lista->setObjectName(QStringLiteral("listCar%1").arg(i + 1));
        lista->setSelectionMode(QAbstractItemView::MultiSelection);
        lista->setMinimumWidth(130);
        Intenta(this, [&] {
            for (const ValorMatriz& v : ValoresDe(almacen_, caracteristicas[i])) {
                auto* item = new QListWidgetItem(v.valor, lista);
                item->setData(Qt::UserRole, v.idMatriz);
            }
        });
        connect(lista, &QListWidget::itemClicked, this, [this] { command3_->setEnabled(true); });
        columna->addWidget(titulo);
        columna->addWidget(lista, 1);
        fila->addLayout(columna);
        tit_ << titulo;
        listCar_ << lista;
    }
    fila->addStretch(1);
    zona->setWidget(contenido);
    return zona;
}

QWidget* panGenMatriz::armaResultado() {
    auto* marco = new QGroupBox(QStringLiteral("Resultado a crear (Puede cambiar el código ingresando al campo y confirmando con Enter)"),
                                this);
    auto* capa = new QVBoxLayout(marco);
    msf_ = new QTableWidget(0, 4, marco);
    msf_->setObjectName(QStringLiteral("msf"));
    msf_->setHorizontalHeaderLabels({QStringLiteral("Código"), QStringLiteral("Descripción"), QStringLiteral("Características"),
                                     QStringLiteral("Stock Actual")});
    msf_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
    msf_->verticalHeader()->hide();
    msf_->setColumnWidth(kCodigo, 120);
    msf_->setColumnWidth(kDescripcion, 300);
    msf_->setColumnWidth(kCaracteristicas, 220);
    msf_->horizontalHeader()->setStretchLastSection(true);
    // Enter confirma la celda y baja a la fila siguiente, para corregir códigos de corrido.
    connect(msf_->itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
            [this](QWidget*, QAbstractItemDelegate::EndEditHint pista) {
                if (pista == QAbstractItemDelegate::SubmitModelCache && msf_->currentRow() + 1 < msf_->rowCount())
                    msf_->setCurrentCell(msf_->currentRow() + 1, msf_->currentColumn());
            });
    capa->addWidget(msf_);
    return marco;
}

QLayout* panGenMatriz::armaBotones() {
    auto* fila = new QHBoxLayout;
    command3_ = BotonEnFila(fila, "Command3", QStringLiteral("Ingresar"), this, 0);
    command3_->setEnabled(false);
    QPushButton* todas = BotonEnFila(fila, "cmdTodas", QStringLiteral("Todas las combinaciones"), this, 0);
    todas->setToolTip(QStringLiteral("Una fila por cada combinación de los valores elegidos en las listas"));
    QPushButton* quita = BotonEnFila(fila, "Command4", QStringLiteral("Quitar"), this, 0);
    fila->addStretch(1);
    QPushButton* acepta = BotonEnFila(fila, "Command1", QStringLiteral("&Aceptar"), this, 0);
    QPushButton* cancela = BotonEnFila(fila, "Command2", QStringLiteral("&Cancelar"), this, 0);
    connect(command3_, &QPushButton::clicked, this, &panGenMatriz::ingresar);
    connect(todas, &QPushButton::clicked, this, &panGenMatriz::todas);
    connect(quita, &QPushButton::clicked, this, &panGenMatriz::quitar);
    connect(acepta, &QPushButton::clicked, this, &panGenMatriz::acepta);
    connect(cancela, &QPushButton::clicked, this, &QDialog::reject);
    return fila;
}

OpcionesMatriz panGenMatriz::opciones() const {
    return {txtSep_->text(), optTit_->isChecked(), optEnDescripcion_->isChecked()};
}

// Los valores elegidos de una lista, en el orden de la lista.
QList<Eleccion> panGenMatriz::elegidos(int lista) const {
    QList<Eleccion> r;
    const QString caracteristica = tit_[lista]->property("caracteristica").toString();
    for (int i = 0; i < listCar_[lista]->count(); ++i)
        if (listCar_[lista]->item(i)->isSelected()) r << Eleccion{caracteristica, listCar_[lista]->item(i)->text()};
    return r;
}

void panGenMatriz::agrega(const QList<VarianteMatriz>& filas) {
    for (const VarianteMatriz& v : filas) {
        const int f = msf_->rowCount();
        msf_->insertRow(f);
        const QString textos[4] = {v.codigo, v.descripcion, v.caracteristicas, v.stock};
        for (int c = 0; c < 4; ++c) msf_->setItem(f, c, new QTableWidgetItem(textos[c]));
        siguiente_ = SiguienteCodigo(v.codigo);
    }
    lblCgo_->setText(siguiente_);
}

void panGenMatriz::limpiaElecciones() {
    for (QListWidget* l : listCar_) l->clearSelection();
    command3_->setEnabled(false);
}

void panGenMatriz::ingresar() {
    QList<Eleccion> elecciones;
    for (int i = 0; i < listCar_.size(); ++i) {
        const QList<Eleccion> e = elegidos(i);
        if (e.size() > 1) {
            MensajeAtencion(QStringLiteral("Para \"Ingresar\" elija un solo valor de cada característica; para varios, use "
                                           "\"Todas las combinaciones\"."),
                            this);
            return;
        }
        elecciones += e;
    }
    if (Intenta(this, [&] { agrega({Variante(siguiente_, lblDesc_->text(), existencia_, elecciones, opciones())}); }))
        limpiaElecciones();
}

void panGenMatriz::todas() {
    QList<QList<Eleccion>> porCaracteristica;
    for (int i = 0; i < listCar_.size(); ++i) porCaracteristica << elegidos(i);
    if (Intenta(this, [&] { agrega(Combinaciones(siguiente_, lblDesc_->text(), existencia_, porCaracteristica, opciones())); }))
        limpiaElecciones();
}

void panGenMatriz::quitar() {
    const int f = msf_->currentRow();
    if (f >= 0) msf_->removeRow(f);
}

QList<VarianteMatriz> panGenMatriz::filas() const {
    QList<VarianteMatriz> r;
    const auto texto = [this](int f, int c) { return msf_->item(f, c) ? msf_->item(f, c)->text().trimmed() : QString(); };
    for (int f = 0; f < msf_->rowCount(); ++f)
        r << VarianteMatriz{texto(f, kCodigo), texto(f, kDescripcion), texto(f, kCaracteristicas), texto(f, kStock)};
    return r;
}

void panGenMatriz::acepta() {
    if (msf_->rowCount() == 0) {
        MensajeAtencion(QStringLiteral("Ingrese al menos una fila de la matriz."), this);
        return;
    }
    conf_.graba(clave::miscelaneas, kSeparador, txtSep_->text());
    conf_.graba(clave::miscelaneas, kSinTitulo, optTit_->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    conf_.graba(clave::miscelaneas, kEnDescripcion, optEnDescripcion_->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    accept();
}

} // namespace orv
