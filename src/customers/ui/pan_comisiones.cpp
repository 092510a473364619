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
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

namespace {

constexpr int kDiasAtras = 30;

} // namespace

PanComisiones::PanComisiones(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                             std::optional<qint64> idUsuario, QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), reloj_(reloj), salida_(salida) {
    setObjectName(QStringLiteral("panComisiones"));
    setWindowTitle(QStringLiteral("Comisiones Vendedores"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 14, 16, 14);
    filtro_ = ArmaFiltroPeriodo(this, QStringLiteral("Vendedor :"));
    LlenaCombo(filtro_.lista, almacen_, QStringLiteral("SELECT idUsuario, NombreCompleto FROM Usuarios ORDER BY idUsuario"), {},
               QStringLiteral("NombreCompleto"), QStringLiteral("idUsuario"));
    filtro_.lista->setCurrentIndex(-1);
    filtro_.desde->setDate(reloj_.hoy().addDays(-kDiasAtras));
    filtro_.hasta->setDate(reloj_.hoy());
    connect(filtro_.mostrar, &QPushButton::clicked, this, &PanComisiones::mostrar);
    capa->addLayout(filtro_.fila);
    armaGrilla();
    auto* cuerpo = new QHBoxLayout;
    cuerpo->addWidget(grilla_, 1);
    cuerpo->addLayout(ColumnaBotones(this,
                                     {{"OsenXPButton1", "Liquidar...", [this] { liquidar(); }},
                                      {"OsenXPButton2", "Imprimir", [this] { imprimir(); }},
                                      {"OsenXPButton3", "Quitar", [this] { quitar(); }}},
                                     "cmdSalir"));
    capa->addLayout(cuerpo, 1);
    totales_ = ArmaTotalesPeriodo(this, QStringLiteral("Total comisiones del período :"), QStringLiteral("Total Liquidado :"), 150);
    auto* pie = new QHBoxLayout;
    pie->addStretch(1);
    pie->addLayout(totales_.capa);
    capa->addLayout(pie);

    if (idUsuario) SelComboId(filtro_.lista, *idUsuario);
    actualiza();
    resize(900, 560);
    CentrarVentana(this);
    grilla_->setFocus();
}

void PanComisiones::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->fijaTextoAgrupar(QStringLiteral("Arrastrar aquí columnas para agrupar"));
    grilla_->fijaClave(QStringLiteral("idDetComisiones"));
    grilla_->fijaTituloImpresion(QStringLiteral("Comisiones de vendedores"));
    anchos_ = PanelLista::fijaColumnas(*grilla_,
                                       {{"Fecha", "Fecha", 90},
                                        {"Detalle", "Detalle", 150},
                                        {"Tipo", "Comprobante", 150},
                                        {"Factura", "Número", 130},
                                        {"Porcentaje", "%", 60},
                                        {"Importe", "Importe", 110, true},
                                        {"idDetComisiones", "Nro.", 60}},
                                       estado_.MascaraMoneda);
    grilla_->fijaMascara(QStringLiteral("Porcentaje"), QStringLiteral("0.00"));
    grilla_->ocultaColumna(QStringLiteral("idComprobante"));
    grilla_->ocultaColumna(QStringLiteral("NombreCompleto"));
}

std::optional<qint64> PanComisiones::vendedor() const {
    if (filtro_.lista->currentIndex() < 0) return std::nullopt;
    return filtro_.lista->currentData().toLongLong();
}

QStringList PanComisiones::totales() const { return totales_.textos(); }

void PanComisiones::actualiza() {
    totales_.ceros();
    const std::optional<qint64> id = vendedor();
    if (!id) return;
    Intenta(this, [&] {
        const ConsultaConParametros c = ConsultaComisionesVendedor(*id, filtro_.desde->date(), filtro_.hasta->date());
        const bool primera = grilla_->modelo().columnCount() == 0;
        grilla_->fijaConsulta(c.sql, c.parametros);
        if (primera)
            for (const auto& [campo, ancho] : anchos_) grilla_->fijaAnchoColumna(campo, ancho);
        const TotalesComisiones t = TotalesComisionesVendedor(almacen_, *id, filtro_.desde->date(), filtro_.hasta->date());
        const QString moneda = QStringLiteral("Currency");
        totales_.muestra(Formato(t.comisiones, moneda), Formato(t.liquidado, moneda), Formato(t.diferencia(), moneda));
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
    if (!Intenta(this, [&] { t = TotalesComisionesVendedor(almacen_, *id, filtro_.desde->date(), filtro_.hasta->date()); })) return;
    PanLiq liq(almacen_, reloj_, Formato(t.diferencia(), QStringLiteral("0.00##")), this);
    if (liq.exec() != QDialog::Accepted) return;
    DatosLiquidacion d = liq.datos();
    d.idUsuario = *id;
    d.nombreVendedor = filtro_.lista->currentText();
    d.idUsuarioActual = estado_.idUsuarioActual;
    if (Intenta(this, [&] { LiquidaComisiones(almacen_, d); })) actualiza();
}

void PanComisiones::imprimir() {
    const std::optional<qint64> id = vendedor();
    if (!id) return MensajeAtencion(QStringLiteral("Seleccione un vendedor!"), this);
    InformeComisiones(salida_, filtro_.desde->date(), filtro_.hasta->date(), *id);
}

void PanComisiones::quitar() {
    const std::optional<qint64> id = ClaveActual(*grilla_, QStringLiteral("idDetComisiones"));
    if (!id) return;
    if (!Pregunta(QStringLiteral("Elimina éste registro"), this)) return;
    if (Intenta(this, [&] { BorraLineaComision(almacen_, *id); })) actualiza();
}

} // namespace orv
