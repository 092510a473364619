#include "maintenance/ui/pan_tablas.h"

#include "maintenance/purga.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/previsualiza.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

panTablas::panTablas(Almacen& almacen, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panTablas"));
    setWindowTitle(QStringLiteral("Multi-Tablas"));
    setModal(true);
    setSizeGripEnabled(true);
    auto* capa = new QVBoxLayout(this);

    auto* fila = new QHBoxLayout;
    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    combo1_->setMinimumWidth(220);
    for (const TablaExplorable& t : TablasExplorables()) combo1_->addItem(t.titulo);
    combo1_->setCurrentIndex(-1);
    combo1_->setPlaceholderText(QStringLiteral("Tabla ?"));
    auto* titulo = new QLabel(QStringLiteral("Tabla ?"), this);
    titulo->setBuddy(combo1_);
    fila->addWidget(titulo);
    fila->addWidget(combo1_);
    fila->addStretch(1);
    QPushButton* imprime = BotonEnFila(fila, "Command1", QStringLiteral("&Imprimir"), this);
    QPushButton* salir = BotonEnFila(fila, "Command2", QStringLiteral("&Salir"), this);
    capa->addLayout(fila);

    // La grilla ocupa todo lo que queda y sigue a la pantalla cuando cambia de tamaño.
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("GridEX1"));
    grilla_->permiteAgrupar(true);
    grilla_->fijaTextoAgrupar(QStringLiteral("Arrastre aquí la columna que desee agrupar"));
    capa->addWidget(grilla_, 1);

    connect(combo1_, &QComboBox::currentIndexChanged, this, &panTablas::eligeTabla);
    connect(imprime, &QPushButton::clicked, this, &panTablas::imprimir);
    connect(salir, &QPushButton::clicked, this, &QDialog::accept);
    resize(1000, 600);
    CentrarVentana(this);
}

void panTablas::eligeTabla(int indice) {
    const auto& tablas = TablasExplorables();
    if (indice < 0 || indice >= int(tablas.size())) return;
    grilla_->quitaAgrupacion();
    grilla_->fijaTituloImpresion(tablas[size_t(indice)].titulo);
    if (Intenta(this, [&] { grilla_->fijaConsulta(tablas[size_t(indice)].sql); })) ajustaAnchos();
}

// Cada archivo trae sus propias columnas: cada una toma el ancho de su título o de lo más largo de
// las primeras filas, sin pasar de un tope.
void panTablas::ajustaAnchos() {
    const ModeloGrilla& m = grilla_->modelo();
    const QFontMetrics medida(grilla_->font());
    constexpr int kFilas = 60, kMinimo = 50, kMaximo = 320, kMargen = 18;
    for (int c = 0; c < m.columnCount(); ++c) {
        int ancho = medida.horizontalAdvance(m.headerData(c, Qt::Horizontal).toString());
        for (int f = 0; f < qMin(kFilas, m.rowCount()); ++f)
            ancho = qMax(ancho, medida.horizontalAdvance(m.data(m.index(f, c)).toString()));
        grilla_->fijaAnchoColumna(m.campo(c), qBound(kMinimo, ancho + kMargen, kMaximo));
    }
}

void panTablas::imprimir() {
    if (combo1_->currentIndex() < 0) return;
    PrevisualizaGrilla(*grilla_);
}

} // namespace orv
