#include "articles/ui/pan_camb_stock.h"

#include "articles/movimientos_stock.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlRecord>
#include <QTimer>
#include <QVBoxLayout>

namespace orv {

panCambStock::panCambStock(Almacen& almacen, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panCambStock"));
    setWindowTitle(QStringLiteral("Cambios masivos de stock"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    auto* nota = new QLabel(QStringLiteral("Éste proceso permite cambiar las cantidades de stock en los artículos."), this);
    nota->setObjectName(QStringLiteral("Label1"));
    nota->setWordWrap(true);
    capa->addWidget(nota);
    armaBusquedas(capa);
    armaGrilla(capa);
    armaBotones(capa);
    resize(860, 600);
    CentrarVentana(this);
    text1_->setFocus();
}

// Las búsquedas mueven la grilla a la primera fila que empieza con lo escrito; no la filtran.
void panCambStock::armaBusquedas(QVBoxLayout* capa) {
    auto* busquedas = new QHBoxLayout;
    text1_ = new QLineEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setPlaceholderText(QStringLiteral("<por Cgo>"));
    text1_->setFixedWidth(170);
    text2_ = new QLineEdit(this);
    text2_->setObjectName(QStringLiteral("Text2"));
    text2_->setPlaceholderText(QStringLiteral("<por Descripcion>"));
    text2_->setFixedWidth(300);
    busquedas->addWidget(text1_);
    busquedas->addWidget(text2_);
    busquedas->addStretch(1);
    capa->addLayout(busquedas);
    connect(text1_, &QLineEdit::textEdited, this, [this](const QString& t) {
        if (!t.isEmpty()) Intenta(this, [&] { grilla_->busca(QStringLiteral("Codigo"), t); });
    });
    connect(text2_, &QLineEdit::textEdited, this, [this](const QString& t) {
        if (!t.isEmpty()) Intenta(this, [&] { grilla_->busca(QStringLiteral("Descripcion"), t); });
    });
    text1_->installEventFilter(this);
    text2_->installEventFilter(this);
}

void panCambStock::armaGrilla(QVBoxLayout* capa) {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->permiteAgrupar(false);
    grilla_->fijaTituloImpresion(QStringLiteral("Stock de artículos"));
    grilla_->fijaClave(QStringLiteral("idArticulo"));
    grilla_->fijaTitulo(QStringLiteral("Codigo"), QStringLiteral("Código"));
    grilla_->fijaTitulo(QStringLiteral("Descripcion"), QStringLiteral("Descripción"));
    grilla_->fijaTitulo(QStringLiteral("StockActual"), QStringLiteral("Stock Actual"));
    grilla_->fijaTitulo(QStringLiteral("StockMinimo"), QStringLiteral("Stock Mínimo"));
    grilla_->fijaMascara(QStringLiteral("StockActual"), QStringLiteral("General Number"));
    grilla_->fijaMascara(QStringLiteral("StockMinimo"), QStringLiteral("General Number"));
    grilla_->ocultaColumna(QStringLiteral("idArticulo"));
    // Cada celda corregida se graba sola; lo que no se lee se rechaza y la celda vuelve a su valor.
    grilla_->fijaEditables(CamposStockEditables(), [this](const QSqlRecord& fila, const QString& campo, const QVariant& valor) {
        GrabaCampoStock(almacen_, fila.value(QStringLiteral("idArticulo")).toLongLong(), campo, valor.toString());
    });
    Intenta(this, [this] {
        grilla_->fijaConsulta(ConsultaCambioStock());
        grilla_->fijaAnchoColumna(QStringLiteral("Codigo"), 140);
        grilla_->fijaAnchoColumna(QStringLiteral("Descripcion"), 360);
        grilla_->fijaAnchoColumna(QStringLiteral("StockActual"), 110);
        grilla_->fijaAnchoColumna(QStringLiteral("StockMinimo"), 110);
    });
    capa->addWidget(grilla_, 1);
}

void panCambStock::armaBotones(QVBoxLayout* capa) {
    auto* botones = new QHBoxLayout;
    auto* resetea = new QPushButton(QStringLiteral("&Resetea Stock..."), this);
    resetea->setObjectName(QStringLiteral("Command1"));
    resetea->setAutoDefault(false);
    auto* cerrar = new QPushButton(QStringLiteral("&Cerrar"), this);
    cerrar->setObjectName(QStringLiteral("Command2"));
    cerrar->setAutoDefault(false);
    cerrar->setMinimumWidth(100);
    botones->addWidget(resetea);
    botones->addStretch(1);
    botones->addWidget(cerrar);
    capa->addLayout(botones);
    connect(resetea, &QPushButton::clicked, this, &panCambStock::reseteaStock);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::accept);
}

bool panCambStock::eventFilter(QObject* o, QEvent* e) {
    if ((o == text1_ || o == text2_) && e->type() == QEvent::FocusIn)
        QTimer::singleShot(0, static_cast<QLineEdit*>(o), &QLineEdit::selectAll);
    return QDialog::eventFilter(o, e);
}

void panCambStock::reseteaStock() {
    if (!PreguntaSiNo(QStringLiteral("Está seguro de blanquear el stock a cero?"), QStringLiteral("ATENCION"),
                      Icono::Pregunta, this))
        return;
    if (Intenta(this, [this] { BlanqueaStock(almacen_); })) grilla_->refresca();
}

} // namespace orv
