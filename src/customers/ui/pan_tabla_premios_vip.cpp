#include "customers/ui/pan_tabla_premios_vip.h"

#include "customers/puntos.h"
#include "customers/ui/pan_nue_tabla_vip.h"
#include "customers/ui/piezas_periodo.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/previsualiza.h"
#include "widgets/ventanas.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanTablaPremiosVIP::PanTablaPremiosVIP(Almacen& almacen, const Configuracion& conf, const EstadoAplicacion& estado,
                                       const Reloj& reloj, QWidget* padre)
    : QDialog(padre), almacen_(almacen), conf_(conf), estado_(estado), reloj_(reloj) {
    setObjectName(QStringLiteral("panTablaPremiosVIP"));
    setWindowTitle(QStringLiteral("Tabla de premios VIP"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 14, 16, 14);
    capa->addWidget(TituloPanel(QStringLiteral("Tabla de premios VIP"), this));
    armaGrilla();
    auto* cuerpo = new QHBoxLayout;
    cuerpo->addWidget(grilla_, 1);
    cuerpo->addLayout(ColumnaBotones(this,
                                     {{"OsenXPButton1", "Agregar...", [this] { agregar(); }},
                                      {"OsenXPButton3", "Editar...", [this] { editar(); }},
                                      {"OsenXPButton2", "Quitar", [this] { quitar(); }},
                                      {"OsenXPButton4", "Imprimir", [this] { imprimir(); }}},
                                     "OsenXPButton5"));
    capa->addLayout(cuerpo, 1);

    carga();
    resize(960, 480);
    CentrarVentana(this);
    grilla_->setFocus();
}

void PanTablaPremiosVIP::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->fijaTextoAgrupar(QStringLiteral("Arrastrar aquí columnas para agrupar"));
    grilla_->fijaClave(QStringLiteral("idTablaVIP"));
    grilla_->fijaTituloImpresion(QStringLiteral("Tabla de premios VIP"));
    anchos_ = PanelLista::fijaColumnas(*grilla_,
                                       {{"Codigo", "Código", 120},
                                        {"Descripcion", "Artículo", 250},
                                        {"Cantidad", "Cantidad", 70},
                                        {"PuntosRequeridos", "Puntos", 70},
                                        {"VigenciaDESDE", "Vigente desde", 105},
                                        {"VigenciaHASTA", "Vigente hasta", 105},
                                        {"idTablaVIP", "Nro.", 50}},
                                       estado_.MascaraMoneda);
    grilla_->ocultaColumna(QStringLiteral("idArticulo"));
    connect(grilla_, &Grilla::filaActivada, this, &PanTablaPremiosVIP::editar);
}

void PanTablaPremiosVIP::carga() {
    Intenta(this, [this] {
        const ConsultaConParametros c = ConsultaTablaPremios();
        const bool primera = grilla_->modelo().columnCount() == 0;
        grilla_->fijaConsulta(c.sql, c.parametros);
        if (primera)
            for (const auto& [campo, ancho] : anchos_) grilla_->fijaAnchoColumna(campo, ancho);
    });
}

void PanTablaPremiosVIP::edita(std::optional<qint64> id) {
    PanNueTablaVIP premio(almacen_, conf_, estado_.MascaraMoneda, reloj_, id, this);
    if (premio.exec() == QDialog::Accepted) carga();
}

void PanTablaPremiosVIP::agregar() { edita(std::nullopt); }

void PanTablaPremiosVIP::editar() {
    if (const auto id = ClaveActual(*grilla_, QStringLiteral("idTablaVIP"))) edita(*id);
}

void PanTablaPremiosVIP::quitar() {
    const auto id = ClaveActual(*grilla_, QStringLiteral("idTablaVIP"));
    if (!id) return;
    if (!Pregunta(QStringLiteral("Quita este premio de la tabla"), this)) return;
    if (Intenta(this, [&] { BorraPremio(almacen_, *id); })) carga();
}

void PanTablaPremiosVIP::imprimir() { PrevisualizaGrilla(*grilla_); }

} // namespace orv
