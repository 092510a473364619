#include "customers/ui/pan_historico.h"

#include "customers/historico.h"
#include "reports/ui/lanzadores.h"
#include "sales/ui/pan_comprobantes.h"
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
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kElijaCliente = QStringLiteral("Seleccione un cliente!");

} // namespace

PanHistorico::PanHistorico(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                           std::optional<qint64> idVendedor, QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), salida_(salida) {
    setObjectName(QStringLiteral("PanHistorico"));
    setWindowTitle(QStringLiteral("Documentos del cliente"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 14, 16, 14);
    filtro_ = ArmaFiltroPeriodo(this, QStringLiteral("Cliente :"));
    LlenaCombo(filtro_.lista, almacen_, QStringLiteral("SELECT idVendedor, Nombre FROM Vendedores ORDER BY Nombre"), {},
               QStringLiteral("Nombre"), QStringLiteral("idVendedor"));
    filtro_.lista->setCurrentIndex(-1);
    filtro_.desde->setDate(reloj.hoy());
    filtro_.hasta->setDate(reloj.hoy());
    connect(filtro_.mostrar, &QPushButton::clicked, this, &PanHistorico::mostrar);
    capa->addLayout(filtro_.fila);
    armaGrilla();
    auto* cuerpo = new QHBoxLayout;
    cuerpo->addWidget(grilla_, 1);
    cuerpo->addLayout(ColumnaBotones(this,
                                     {{"OsenXPButton1", "Detalles...", [this] { detalles(); }},
                                      {"OsenXPButton2", "Imprimir", [this] { imprimir(); }}},
                                     "cmdSalir"));
    capa->addLayout(cuerpo, 1);

    auto* totales = new QFormLayout;
    totales->setLabelAlignment(Qt::AlignRight);
    comerciales_ = CampoTotal("txTotComis", this, 150);
    noComerciales_ = CampoTotal("txTotCancel", this, 150);
    totales->addRow(QStringLiteral("Total comprobantes comerciales :"), comerciales_);
    totales->addRow(QStringLiteral("Total no comerciales :"), noComerciales_);
    auto* pie = new QHBoxLayout;
    pie->addStretch(1);
    pie->addLayout(totales);
    capa->addLayout(pie);

    if (idVendedor) SelComboId(filtro_.lista, *idVendedor);
    actualiza();
    resize(1100, 560);
    CentrarVentana(this);
    grilla_->setFocus();
}

void PanHistorico::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("DBGrid1"));
    grilla_->fijaClave(QStringLiteral("idComprobante"));
    grilla_->fijaTituloImpresion(QStringLiteral("Documentos del cliente"));
    PanelLista::fijaColumnas(*grilla_,
                             {{"Fecha", "Fecha", 0},
                              {"Tipo", "Comprobante", 0},
                              {"Factura", "Número", 0},
                              {"SubTotal", "Subtotal", 0, true},
                              {"PorcDescuento", "Desc. %", 0},
                              {"MontDescuento", "Descuento", 0, true},
                              {"ImporteNeto", "Neto", 0, true},
                              {"PorcentajeIVA", "IVA %", 0},
                              {"ImporteIVA", "IVA", 0, true},
                              {"Total", "Total", 0, true},
                              {"FormaPago", "Forma de pago", 0}},
                             estado_.MascaraMoneda);
    grilla_->fijaMascara(QStringLiteral("PorcDescuento"), QStringLiteral("0.00"));
    grilla_->fijaMascara(QStringLiteral("PorcentajeIVA"), QStringLiteral("0.00"));
    grilla_->fijaAnchosIniciales({{"Fecha", 80}, {"Tipo", 125}, {"Factura", 115}, {"SubTotal", 80}, {"PorcDescuento", 50},
                                  {"MontDescuento", 70}, {"ImporteNeto", 80}, {"PorcentajeIVA", 45}, {"ImporteIVA", 70},
                                  {"Total", 85}, {"FormaPago", 65}});
    grilla_->ocultaColumna(QStringLiteral("idVendedor"));
    grilla_->ocultaColumna(QStringLiteral("idComprobante"));
    connect(grilla_, &Grilla::filaActivada, this, &PanHistorico::detalles);
}

std::optional<qint64> PanHistorico::cliente() const {
    if (filtro_.lista->currentIndex() < 0) return std::nullopt;
    return filtro_.lista->currentData().toLongLong();
}

QStringList PanHistorico::totales() const { return {comerciales_->text(), noComerciales_->text()}; }

void PanHistorico::actualiza() {
    comerciales_->setText(QStringLiteral("0"));
    noComerciales_->setText(QStringLiteral("0"));
    const std::optional<qint64> id = cliente();
    if (!id) return;
    const QDate desde = filtro_.desde->date();
    const QDate hasta = filtro_.hasta->date();
    Intenta(this, [&] {
        const ConsultaConParametros c = ConsultaHistoricoCliente(*id, desde, hasta);
        grilla_->fijaConsulta(c.sql, c.parametros);
        const TotalesHistorico t = TotalesHistoricoCliente(almacen_, *id, desde, hasta);
        comerciales_->setText(FormatoMoneda(t.comerciales, estado_.MascaraMoneda));
        noComerciales_->setText(FormatoMoneda(t.noComerciales, estado_.MascaraMoneda));
    });
}

void PanHistorico::mostrar() {
    if (!cliente()) return MensajeAtencion(kElijaCliente, this);
    actualiza();
}

void PanHistorico::detalles() {
    const std::optional<qint64> id = ClaveActual(*grilla_, QStringLiteral("idComprobante"));
    if (!id) return;
    PanDetComprobante detalle(almacen_, *id, this);
    detalle.exec();
}

void PanHistorico::imprimir() {
    const std::optional<qint64> id = cliente();
    if (!id) return MensajeAtencion(kElijaCliente, this);
    InformeHistoricoCliente(salida_, filtro_.desde->date(), filtro_.hasta->date(), *id);
}

} // namespace orv
