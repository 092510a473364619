#include "customers/ui/pan_puntaje_vip_cliente.h"

#include "customers/puntos.h"
#include "customers/ui/pan_cobra_premio.h"
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

QLineEdit* Total(const char* nombre, QWidget* padre) {
    auto* t = new QLineEdit(QStringLiteral("0"), padre);
    t->setObjectName(QString::fromLatin1(nombre));
    t->setReadOnly(true);
    t->setAlignment(Qt::AlignRight);
    t->setMaximumWidth(120);
    return t;
}

} // namespace

PanPuntajeVipCliente::PanPuntajeVipCliente(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj,
                                           std::optional<qint64> idCliente, QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), reloj_(reloj) {
    setObjectName(QStringLiteral("panPuntajeVipCliente"));
    setWindowTitle(QStringLiteral("Puntaje Vip"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 14, 16, 14);
    capa->addLayout(armaFiltros());
    armaGrilla();
    capa->addWidget(grilla_, 1);
    capa->addLayout(armaPie());

    if (idCliente) {
        SelComboId(cboVendedores_, *idCliente);
        if (cliente()) mostrar();
    }
    resize(900, 540);
    CentrarVentana(this);
    cboVendedores_->setFocus();
}

// Cliente con tarjeta y período, con "Mostrar".
QHBoxLayout* PanPuntajeVipCliente::armaFiltros() {
    auto* fila = new QHBoxLayout;
    cboVendedores_ = new QComboBox(this);
    cboVendedores_->setObjectName(QStringLiteral("cboVendedores"));
    cboVendedores_->setMinimumWidth(240);
    LlenaCombo(cboVendedores_, almacen_,
               QStringLiteral("SELECT idVendedor, Nombre FROM Vendedores WHERE LENGTH(NroClienteVIP) > 0 ORDER BY Nombre"), {},
               QStringLiteral("Nombre"), QStringLiteral("idVendedor"));
    cboVendedores_->setCurrentIndex(-1);
    dt1_ = CampoFecha(QStringLiteral("dt1"), this);
    dt1_->setDate(reloj_.hoy());
    dt2_ = CampoFecha(QStringLiteral("dt2"), this);
    dt2_->setDate(reloj_.hoy());
    const std::pair<const char*, QWidget*> campos[] = {{"Cliente :", cboVendedores_}, {"Desde :", dt1_}, {"Hasta :", dt2_}};
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
    connect(ok, &QPushButton::clicked, this, &PanPuntajeVipCliente::mostrar);
    fila->addWidget(ok);
    fila->addStretch(1);
    return fila;
}

void PanPuntajeVipCliente::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->fijaTextoAgrupar(QStringLiteral("Arrastrar aquí columnas para agrupar"));
    grilla_->fijaClave(QStringLiteral("idVip"));
    grilla_->fijaTituloImpresion(QStringLiteral("Puntaje VIP"));
    const std::pair<const char*, const char*> titulos[] = {{"Fecha", "Fecha"},          {"PuntosVIP", "Puntos"},
                                                           {"Tipo", "Comprobante"},     {"Factura", "Número"},
                                                           {"Total", "Total"},          {"NombreCompleto", "Operador"}};
    for (const auto& [campo, titulo] : titulos) grilla_->fijaTitulo(QString::fromLatin1(campo), QString::fromUtf8(titulo));
    grilla_->fijaMascara(QStringLiteral("Total"), estado_.MascaraMoneda);
    for (const char* oculta : {"idVip", "idCliente", "idUsuario", "idComprobante"}) grilla_->ocultaColumna(QString::fromLatin1(oculta));
}

// Los tres totales y el cobro de un premio.
QHBoxLayout* PanPuntajeVipCliente::armaPie() {
    auto* fila = new QHBoxLayout;
    auto* cobrar = BotonPanel(QStringLiteral("OsenXPButton1"), QStringLiteral("Cobrar Premio..."), this);
    connect(cobrar, &QPushButton::clicked, this, &PanPuntajeVipCliente::cobrarPremio);
    fila->addWidget(cobrar, 0, Qt::AlignTop);
    fila->addStretch(1);
    auto* f = new QFormLayout;
    f->setLabelAlignment(Qt::AlignRight);
    txTotComis_ = Total("txTotComis", this);
    txTotCancel_ = Total("txTotCancel", this);
    txDif_ = Total("txDif", this);
    QFont fd = txDif_->font();
    fd.setBold(true);
    txDif_->setFont(fd);
    f->addRow(QStringLiteral("Total puntos obtenidos :"), txTotComis_);
    f->addRow(QStringLiteral("Total en premios cobrados :"), txTotCancel_);
    f->addRow(QStringLiteral("Diferencia :"), txDif_);
    fila->addLayout(f);
    return fila;
}

std::optional<qint64> PanPuntajeVipCliente::cliente() const {
    if (cboVendedores_->currentIndex() < 0) return std::nullopt;
    return cboVendedores_->currentData().toLongLong();
}

QStringList PanPuntajeVipCliente::totales() const { return {txTotComis_->text(), txTotCancel_->text(), txDif_->text()}; }

void PanPuntajeVipCliente::mostrar() {
    const std::optional<qint64> id = cliente();
    if (!id) return MensajeAtencion(QStringLiteral("Seleccione un cliente!"), this);
    for (QLineEdit* t : {txTotComis_, txTotCancel_, txDif_}) t->setText(QStringLiteral("0"));
    Intenta(this, [&] {
        const ConsultaConParametros c = ConsultaPuntosCliente(*id, dt1_->date(), dt2_->date());
        const bool primera = grilla_->modelo().columnCount() == 0;
        grilla_->fijaConsulta(c.sql, c.parametros);
        if (primera)
            for (const auto& [campo, ancho] : {std::pair{"Fecha", 90}, {"PuntosVIP", 70}, {"Tipo", 170}, {"Factura", 130},
                                               {"Total", 110}, {"NombreCompleto", 200}})
                grilla_->fijaAnchoColumna(QString::fromLatin1(campo), ancho);
        const TotalesPuntos t = TotalesPuntosCliente(almacen_, *id, dt1_->date(), dt2_->date());
        txTotComis_->setText(QString::number(t.obtenidos));
        txTotCancel_->setText(QString::number(t.cobrados));
        txDif_->setText(QString::number(t.diferencia()));
    });
}

void PanPuntajeVipCliente::cobrarPremio() {
    const std::optional<qint64> id = cliente();
    if (!id) return MensajeAtencion(QStringLiteral("Seleccione un cliente!"), this);
    PanCobraPremio cobro(almacen_, reloj_, estado_.idUsuarioActual, *id, this);
    if (cobro.exec() == QDialog::Accepted) mostrar();
}

} // namespace orv
