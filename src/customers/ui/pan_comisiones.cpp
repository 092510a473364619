#include "customers/ui/pan_comisiones.h"

#include "customers/comisiones.h"
#include "customers/ui/pan_liq.h"
#include "reports/ui/lanzadores.h"
#include "store/formato.h"
#include "widgets/grilla.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

namespace {

constexpr int kDiasAtras = 30;

QLineEdit* Total(const char* nombre, QWidget* padre) {
    auto* t = new QLineEdit(QStringLiteral("0"), padre);
    t->setObjectName(QString::fromLatin1(nombre));
    t->setReadOnly(true);
    t->setAlignment(Qt::AlignRight);
    t->setMaximumWidth(150);
    return t;
}

} // namespace

PanComisiones::PanComisiones(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                             std::optional<qint64> idUsuario, QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), reloj_(reloj), salida_(salida) {
    setObjectName(QStringLiteral("panComisiones"));
    setWindowTitle(QStringLiteral("Comisiones Vendedores"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 14, 16, 14);
    capa->addLayout(armaFiltros());
    armaGrilla();
    auto* cuerpo = new QHBoxLayout;
    cuerpo->addWidget(grilla_, 1);
    cuerpo->addLayout(armaBotones());
    capa->addLayout(cuerpo, 1);
    capa->addLayout(armaTotales());

    if (idUsuario) SelComboId(cboVendedores_, *idUsuario);
    actualiza();
    resize(900, 560);
    CentrarVentana(this);
    grilla_->setFocus();
}

// Vendedor y período, con "Mostrar".
QHBoxLayout* PanComisiones::armaFiltros() {
    auto* fila = new QHBoxLayout;
    cboVendedores_ = new QComboBox(this);
    cboVendedores_->setObjectName(QStringLiteral("cboVendedores"));
    cboVendedores_->setMinimumWidth(220);
    LlenaCombo(cboVendedores_, almacen_, QStringLiteral("SELECT idUsuario, NombreCompleto FROM Usuarios ORDER BY idUsuario"), {},
               QStringLiteral("NombreCompleto"), QStringLiteral("idUsuario"));
    cboVendedores_->setCurrentIndex(-1);
    dt1_ = CampoFecha(QStringLiteral("dt1"), this);
    dt1_->setDate(reloj_.hoy().addDays(-kDiasAtras));
    dt2_ = CampoFecha(QStringLiteral("dt2"), this);
    dt2_->setDate(reloj_.hoy());
    const std::pair<const char*, QWidget*> campos[] = {{"Vendedor :", cboVendedores_}, {"Desde :", dt1_}, {"Hasta :", dt2_}};
    for (const auto& [texto, campo] : campos) {
        auto* etiqueta = new QLabel(QString::fromUtf8(texto), this);
        etiqueta->setBuddy(campo);
        fila->addWidget(etiqueta);
        fila->addWidget(campo);
        fila->addSpacing(8);
    }
    auto* ok = new QPushButton(QStringLiteral("Mostrar"), this);
    ok->setObjectName(QStringLiteral("btnOk"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &PanComisiones::mostrar);
    fila->addWidget(ok);
    fila->addStretch(1);
    return fila;
}

void PanComisiones::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->fijaTextoAgrupar(QStringLiteral("Arrastrar aquí columnas para agrupar"));
    grilla_->fijaClave(QStringLiteral("idDetComisiones"));
    grilla_->fijaTituloImpresion(QStringLiteral("Comisiones de vendedores"));
    const std::pair<const char*, const char*> titulos[] = {{"Fecha", "Fecha"},     {"Detalle", "Detalle"},
                                                           {"Tipo", "Comprobante"}, {"Factura", "Número"},
                                                           {"Porcentaje", "%"},     {"Importe", "Importe"},
                                                           {"idDetComisiones", "Nro."}};
    for (const auto& [campo, titulo] : titulos) grilla_->fijaTitulo(QString::fromLatin1(campo), QString::fromUtf8(titulo));
    grilla_->fijaMascara(QStringLiteral("Importe"), estado_.MascaraMoneda);
    grilla_->fijaMascara(QStringLiteral("Porcentaje"), QStringLiteral("0.00"));
    grilla_->ocultaColumna(QStringLiteral("idComprobante"));
    grilla_->ocultaColumna(QStringLiteral("NombreCompleto"));
}

QVBoxLayout* PanComisiones::armaBotones() {
    auto* columna = new QVBoxLayout;
    columna->setSpacing(6);
    const std::tuple<const char*, const char*, void (PanComisiones::*)()> botones[] = {
        {"OsenXPButton1", "Liquidar...", &PanComisiones::liquidar},
        {"OsenXPButton2", "Imprimir", &PanComisiones::imprimir},
        {"OsenXPButton3", "Quitar", &PanComisiones::quitar}};
    for (const auto& [nombre, texto, accion] : botones) {
        QPushButton* b = BotonPanel(QString::fromLatin1(nombre), QString::fromUtf8(texto), this);
        connect(b, &QPushButton::clicked, this, accion);
        columna->addWidget(b);
    }
    columna->addStretch(1);
    auto* salir = new QPushButton(QStringLiteral("Salir"), this);
    salir->setObjectName(QStringLiteral("cmdSalir"));
    salir->setAutoDefault(false);
    connect(salir, &QPushButton::clicked, this, &QDialog::accept);
    columna->addWidget(salir);
    return columna;
}

QVBoxLayout* PanComisiones::armaTotales() {
    auto* columna = new QVBoxLayout;
    auto* f = new QFormLayout;
    f->setLabelAlignment(Qt::AlignRight);
    txTotComis_ = Total("txTotComis", this);
    txTotCancel_ = Total("txTotCancel", this);
    txDif_ = Total("txDif", this);
    QFont fd = txDif_->font();
    fd.setBold(true);
    txDif_->setFont(fd);
    f->addRow(QStringLiteral("Total comisiones del período :"), txTotComis_);
    f->addRow(QStringLiteral("Total Liquidado :"), txTotCancel_);
    f->addRow(QStringLiteral("Diferencia :"), txDif_);
    auto* fila = new QHBoxLayout;
    fila->addStretch(1);
    fila->addLayout(f);
    columna->addLayout(fila);
    return columna;
}

std::optional<qint64> PanComisiones::vendedor() const {
    if (cboVendedores_->currentIndex() < 0) return std::nullopt;
    return cboVendedores_->currentData().toLongLong();
}

QStringList PanComisiones::totales() const { return {txTotComis_->text(), txTotCancel_->text(), txDif_->text()}; }

void PanComisiones::actualiza() {
    for (QLineEdit* t : {txTotComis_, txTotCancel_, txDif_}) t->setText(QStringLiteral("0"));
    const std::optional<qint64> id = vendedor();
    if (!id) return;
    Intenta(this, [&] {
        const ConsultaConParametros c = ConsultaComisionesVendedor(*id, dt1_->date(), dt2_->date());
        const bool primera = grilla_->modelo().columnCount() == 0;
        grilla_->fijaConsulta(c.sql, c.parametros);
        if (primera)
            for (const auto& [campo, ancho] : {std::pair{"Fecha", 90}, {"Detalle", 150}, {"Tipo", 150}, {"Factura", 130},
                                               {"Porcentaje", 60}, {"Importe", 110}, {"idDetComisiones", 60}})
                grilla_->fijaAnchoColumna(QString::fromLatin1(campo), ancho);
        const TotalesComisiones t = TotalesComisionesVendedor(almacen_, *id, dt1_->date(), dt2_->date());
        txTotComis_->setText(Formato(t.comisiones, QStringLiteral("Currency")));
        txTotCancel_->setText(Formato(t.liquidado, QStringLiteral("Currency")));
        txDif_->setText(Formato(t.diferencia(), QStringLiteral("Currency")));
    });
}

void PanComisiones::mostrar() {
    if (!vendedor()) return MensajeAtencion(QStringLiteral("Seleccione un vendedor!"), this);
    actualiza();
}

void PanComisiones::liquidar() {
    const std::optional<qint64> id = vendedor();
    if (!id) return MensajeAtencion(QStringLiteral("Seleccione un vendedor!"), this);
    // Lo que se le debe en el período, con todos sus decimales: liquidarlo deja la diferencia en cero.
    TotalesComisiones t;
    if (!Intenta(this, [&] { t = TotalesComisionesVendedor(almacen_, *id, dt1_->date(), dt2_->date()); })) return;
    PanLiq liq(almacen_, reloj_, Formato(t.diferencia(), QStringLiteral("0.00##")), this);
    if (liq.exec() != QDialog::Accepted) return;
    DatosLiquidacion d = liq.datos();
    d.idUsuario = *id;
    d.nombreVendedor = cboVendedores_->currentText();
    d.idUsuarioActual = estado_.idUsuarioActual;
    if (Intenta(this, [&] { LiquidaComisiones(almacen_, d); })) actualiza();
}

void PanComisiones::imprimir() {
    const std::optional<qint64> id = vendedor();
    if (!id) return MensajeAtencion(QStringLiteral("Seleccione un vendedor!"), this);
    InformeComisiones(salida_, dt1_->date(), dt2_->date(), *id);
}

void PanComisiones::quitar() {
    const std::optional<qint64> id = ClaveActual(*grilla_, QStringLiteral("idDetComisiones"));
    if (!id) return;
    if (!Pregunta(QStringLiteral("Elimina éste registro"), this)) return;
    if (Intenta(this, [&] { BorraLineaComision(almacen_, *id); })) actualiza();
}

} // namespace orv
