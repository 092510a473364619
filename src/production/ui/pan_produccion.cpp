#include "production/ui/pan_produccion.h"

#include "production/produccion.h"
#include "production/ui/pan_formula.h"
#include "reports/ui/lanzadores.h"
#include "store/entrada.h"
#include "store/formato.h"
#include "widgets/grilla.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/previsualiza.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kMexico = QStringLiteral("MEXICO");

QLineEdit* campoNumero(const char* nombre, QWidget* padre) {
    auto* t = new QLineEdit(QStringLiteral("0"), padre);
    t->setObjectName(QString::fromLatin1(nombre));
    t->setAlignment(Qt::AlignRight);
    t->setMaximumWidth(160);
    return t;
}

} // namespace

PanProduccion::PanProduccion(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                             QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), reloj_(reloj), salida_(salida) {
    const bool paquetes = estado_.Pais == kMexico;
    setObjectName(QStringLiteral("PanProduccion"));
    setWindowTitle(paquetes ? QStringLiteral("Gestión de Paquetes") : QStringLiteral("Gestión de Producción"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    auto* label4 = new QLabel(paquetes ? QStringLiteral("Armado de Paquetes") : QStringLiteral("Producción de artículos acabados"),
                              this);
    label4->setObjectName(QStringLiteral("Label4"));
    QFont f = label4->font();
    f.setPointSizeF(f.pointSizeF() * 1.4);
    f.setBold(true);
    label4->setFont(f);
    capa->addWidget(label4);
    solapas_ = new QTabWidget(this);
    solapas_->setObjectName(QStringLiteral("SSTab1"));
    solapas_->addTab(armaFormulas(), QStringLiteral("Fórmulas"));
    solapas_->addTab(armaRegistrar(), QStringLiteral("Registrar"));
    solapas_->addTab(armaInformes(), QStringLiteral("Informes"));
    capa->addWidget(solapas_, 1);

    refrescaFormulas();
    Intenta(this, [this] { gridEx1_->fijaConsulta(ConsultaRegistros()); });
    resize(980, 620);
    CentrarVentana(this);
}

QWidget* PanProduccion::armaFormulas() {
    auto* w = new QWidget(this);
    auto* fila = new QHBoxLayout(w);
    dbGrid1_ = new Grilla(almacen_, w);
    dbGrid1_->setObjectName(QStringLiteral("DBGrid1"));
    dbGrid1_->permiteAgrupar(false);
    dbGrid1_->fijaClave(QStringLiteral("PrimeroDeidArticuloFinal"));
    dbGrid1_->fijaTituloImpresion(QStringLiteral("Fórmulas de producción"));
    dbGrid1_->fijaTitulo(QStringLiteral("Codigo"), QStringLiteral("Codigo"));
    dbGrid1_->fijaTitulo(QStringLiteral("PrimeroDeDescripcion"), QStringLiteral("Descripcion"));
    dbGrid1_->fijaTitulo(QStringLiteral("SumaDeCostoTotal"), QStringLiteral("Costo Total"));
    dbGrid1_->fijaMascara(QStringLiteral("SumaDeCostoTotal"), estado_.MascaraMoneda);
    dbGrid1_->ocultaColumna(QStringLiteral("PrimeroDeidArticuloFinal"));
    fila->addWidget(dbGrid1_, 1);
    auto* botones = new QVBoxLayout;
    connect(BotonEnFila(botones, "Command1", QStringLiteral("&Nueva..."), w), &QPushButton::clicked, this, &PanProduccion::nueva);
    connect(BotonEnFila(botones, "Command2", QStringLiteral("&Editar"), w), &QPushButton::clicked, this, &PanProduccion::editar);
    connect(BotonEnFila(botones, "Command3", QStringLiteral("&Quitar"), w), &QPushButton::clicked, this, &PanProduccion::quitar);
    botones->addStretch(1);
    fila->addLayout(botones);
    connect(dbGrid1_, &Grilla::filaActivada, this, &PanProduccion::editar);
    return w;
}

QWidget* PanProduccion::armaRegistrar() {
    auto* w = new QWidget(this);
    auto* capa = new QVBoxLayout(w);
    capa->addLayout(armaCamposCorrida(w));
    auto* alertas = new QLabel(QStringLiteral("<b>Alertas de Stock :</b> (Materia prima que se encuentra con el stock comprometido)"), w);
    capa->addWidget(alertas);
    dbGrid2_ = new Grilla(almacen_, w);
    dbGrid2_->setObjectName(QStringLiteral("DBGrid2"));
    dbGrid2_->permiteAgrupar(false);
    dbGrid2_->fijaTituloImpresion(QStringLiteral("Alertas de stock"));
    const std::pair<const char*, const char*> titulos[] = {
        {"Cantidad", "Cant. x unidad"}, {"Codigo", "Código"}, {"Descripcion", "Descripción"},   {"StockActual", "Stock Actual"},
        {"StockMinimo", "Stock Mínimo"}, {"Necesario", "Necesario"}, {"Falta", "Falta ?"}, {"ElCostoTotal", "Costo Total"}};
    for (const auto& [campo, titulo] : titulos) dbGrid2_->fijaTitulo(QString::fromLatin1(campo), QString::fromUtf8(titulo));
    dbGrid2_->fijaMascara(QStringLiteral("ElCostoTotal"), estado_.MascaraMoneda);
    capa->addWidget(dbGrid2_, 1);
    auto* pie = new QHBoxLayout;
    chkImpr_ = new QCheckBox(QStringLiteral("Imprime comprobante de producción ?"), w);
    chkImpr_->setObjectName(QStringLiteral("chkImpr"));
    pie->addWidget(chkImpr_);
    pie->addStretch(1);
    QPushButton* registra = BotonEnFila(pie, "Command4", QStringLiteral("&Registrar !"), w, 140);
    capa->addLayout(pie);
    connect(registra, &QPushButton::clicked, this, &PanProduccion::registrar);
    return w;
}

// Artículo, cantidad, mano de obra, total y fecha de la corrida.
QLayout* PanProduccion::armaCamposCorrida(QWidget* solapa) {
    auto* campos = new QFormLayout;
    cbArt_ = new QComboBox(solapa);
    cbArt_->setObjectName(QStringLiteral("cbArt"));
    cbArt_->setMinimumWidth(360);
    txCantAProd_ = campoNumero("txCantAProd", solapa);
    txManoObra_ = campoNumero("txManoObra", solapa);
    txTot_ = campoNumero("txTot", solapa);
    txTot_->setReadOnly(true);
    txTot_->clear();
    dt1_ = CampoFecha(QStringLiteral("dt1"), solapa);
    dt1_->setDate(reloj_.hoy());
    dt1_->setMaximumWidth(160);
    campos->addRow(QStringLiteral("Artículo a producir :"), cbArt_);
    campos->addRow(QStringLiteral("Cantidad a producir :"), txCantAProd_);
    campos->addRow(QStringLiteral("Costos de Mano de Obra :"), txManoObra_);
    campos->addRow(QStringLiteral("Costo TOTAL :"), txTot_);
    campos->addRow(QStringLiteral("Fecha de producción :"), dt1_);
    connect(cbArt_, &QComboBox::currentIndexChanged, this, &PanProduccion::recalcula);
    connect(txCantAProd_, &QLineEdit::textChanged, this, &PanProduccion::recalcula);
    connect(txManoObra_, &QLineEdit::textChanged, this, &PanProduccion::recalcula);
    return campos;
}

QWidget* PanProduccion::armaInformes() {
    auto* w = new QWidget(this);
    auto* capa = new QVBoxLayout(w);
    gridEx1_ = new Grilla(almacen_, w);
    gridEx1_->setObjectName(QStringLiteral("GridEX1"));
    gridEx1_->fijaTextoAgrupar(QStringLiteral("Arrastre la columna para agrupar"));
    gridEx1_->fijaTituloImpresion(QStringLiteral("Registros de producción"));
    const std::pair<const char*, const char*> titulos[] = {
        {"Codigo", "Codigo Art."},           {"Descripcion", "Descripcion Art."},  {"idRegistroProduccion", "# Prod."},
        {"Fecha", "Fecha"},                  {"CantidadProducida", "Cnt. Producida"}, {"CostoManoObra", "Mano de Obra"},
        {"CostoTotal", "Costo Total"},       {"Cantidad", "Cantidad"},          {"Codigo_1", "Codigo M.Pr."},
        {"Descripcion_1", "Descripcion M.Pr."}, {"CostoTotal_1", "Costo M.Pr."}};
    for (const auto& [campo, titulo] : titulos) gridEx1_->fijaTitulo(QString::fromLatin1(campo), QString::fromUtf8(titulo));
    for (const char* dinero : {"CostoManoObra", "CostoTotal", "CostoTotal_1"})
        gridEx1_->fijaMascara(QString::fromLatin1(dinero), estado_.MascaraMoneda);
    capa->addWidget(gridEx1_, 1);
    auto* pie = new QHBoxLayout;
    pie->addStretch(1);
    auto* previa = BotonIcono(QStringLiteral("Command26"), QStyle::SP_FileDialogContentsView,
                              QStringLiteral("Vista previa de impresión"), w);
    pie->addWidget(previa);
    capa->addLayout(pie);
    connect(previa, &QPushButton::clicked, this, [this] { PrevisualizaGrilla(*gridEx1_); });
    return w;
}

void PanProduccion::llenaArticulos() {
    const QSignalBlocker quieto(cbArt_);
    cbArt_->clear();
    LlenaCombo(cbArt_, almacen_, QStringLiteral("SELECT PrimeroDeidArticuloFinal, PrimeroDeDescripcion FROM "
                                                "ConsultaFormulaProduccion ORDER BY PrimeroDeDescripcion"),
               {}, QStringLiteral("PrimeroDeDescripcion"), QStringLiteral("PrimeroDeidArticuloFinal"));
    cbArt_->setCurrentIndex(-1);
}

void PanProduccion::refrescaFormulas() {
    Intenta(this, [this] {
        dbGrid1_->fijaConsulta(ConsultaFormulas());
        dbGrid1_->fijaAnchoColumna(QStringLiteral("Codigo"), 130);
        dbGrid1_->fijaAnchoColumna(QStringLiteral("PrimeroDeDescripcion"), 420);
        dbGrid1_->fijaAnchoColumna(QStringLiteral("SumaDeCostoTotal"), 130);
    });
    llenaArticulos();
    recalcula();
}

void PanProduccion::nueva() {
    panFormula formula(almacen_, estado_, std::nullopt, this);
    if (formula.exec() == QDialog::Accepted) refrescaFormulas();
}

void PanProduccion::editar() {
    const auto id = ClaveActual(*dbGrid1_, QStringLiteral("PrimeroDeidArticuloFinal"));
    if (!id) return;
    panFormula formula(almacen_, estado_, *id, this);
    if (formula.exec() == QDialog::Accepted) refrescaFormulas();
}

void PanProduccion::quitar() {
    const auto id = ClaveActual(*dbGrid1_, QStringLiteral("PrimeroDeidArticuloFinal"));
    if (!id) return;
    if (!PreguntaSiNo(QStringLiteral("Está seguro de eliminar éste set de fórmulas de producción para dicho artículo?"),
                      QStringLiteral("Atención"), Icono::Pregunta, this))
        return;
    Intenta(this, [&] { BorraFormula(almacen_, *id); });
    refrescaFormulas();
}

std::optional<qint64> PanProduccion::articuloElegido() const {
    if (cbArt_->currentIndex() < 0) return std::nullopt;
    return cbArt_->currentData().toLongLong();
}

void PanProduccion::recalcula() {
    const auto id = articuloElegido();
    const auto cantidad = LeeNumero(txCantAProd_->text().trimmed());
    if (!id || !cantidad) return;
    Intenta(this, [&] {
        const ConsultaAlertas c = AlertasDeStock(*id, *cantidad);
        dbGrid2_->fijaConsulta(c.sql, c.parametros);
        const auto manoObra = LeeImporte(txManoObra_->text().trimmed());
        if (!manoObra) return;
        if (const auto total = TotalCorrida(almacen_, *id, *cantidad, *manoObra))
            txTot_->setText(FormatoMoneda(*total, estado_.MascaraMoneda));
    });
}

void PanProduccion::registrar() {
    const Corrida c{articuloElegido(), txCantAProd_->text(), txManoObra_->text(), dt1_->date()};
    if (!PreguntaSiNo(QStringLiteral("Registra la producción?"), QStringLiteral("Registro"), Icono::Pregunta, this)) return;
    qint64 id = 0;
    if (!Intenta(this, [&] { id = RegistraProduccion(almacen_, c); })) return;
    if (chkImpr_->isChecked()) Intenta(this, [&] { InformeProduccion(salida_, id); });
    Mensaje(QStringLiteral("Listo!"), QStringLiteral("OK"), Icono::Informacion, this);
    cbArt_->setCurrentIndex(-1);
    txCantAProd_->setText(QStringLiteral("0"));
    txManoObra_->setText(QStringLiteral("0"));
    txTot_->clear();
    dbGrid2_->modelo().cierra();
    Intenta(this, [this] { gridEx1_->refresca(); });
}

} // namespace orv
