#include "customers/ui/pan_tabla_premios_vip.h"

#include "customers/puntos.h"
#include "customers/ui/pan_nue_tabla_vip.h"
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
    auto* columna = new QVBoxLayout;
    columna->setSpacing(6);
    const std::tuple<const char*, const char*, void (PanTablaPremiosVIP::*)()> botones[] = {
        {"OsenXPButton1", "Agregar...", &PanTablaPremiosVIP::agregar},
        {"OsenXPButton3", "Editar...", &PanTablaPremiosVIP::editar},
        {"OsenXPButton2", "Quitar", &PanTablaPremiosVIP::quitar},
        {"OsenXPButton4", "Imprimir", &PanTablaPremiosVIP::imprimir}};
    for (const auto& [nombre, texto, accion] : botones) {
        QPushButton* b = BotonPanel(QString::fromLatin1(nombre), QString::fromUtf8(texto), this);
        connect(b, &QPushButton::clicked, this, accion);
        columna->addWidget(b);
    }
    columna->addStretch(1);
    auto* salir = new QPushButton(QStringLiteral("Salir"), this);
    salir->setObjectName(QStringLiteral("OsenXPButton5"));
    salir->setAutoDefault(false);
    connect(salir, &QPushButton::clicked, this, &QDialog::accept);
    columna->addWidget(salir);
    cuerpo->addLayout(columna);
    capa->addLayout(cuerpo, 1);

    carga();
    resize(860, 480);
    CentrarVentana(this);
    grilla_->setFocus();
}

void PanTablaPremiosVIP::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->fijaTextoAgrupar(QStringLiteral("Arrastrar aquí columnas para agrupar"));
    grilla_->fijaClave(QStringLiteral("idTablaVIP"));
    grilla_->fijaTituloImpresion(QStringLiteral("Tabla de premios VIP"));
    const std::pair<const char*, const char*> titulos[] = {
        {"Codigo", "Código"},           {"Descripcion", "Artículo"},           {"Cantidad", "Cantidad"},
        {"PuntosRequeridos", "Puntos"}, {"VigenciaDESDE", "Vigente desde"},   {"VigenciaHASTA", "Vigente hasta"},
        {"idTablaVIP", "Nro."}};
    for (const auto& [campo, titulo] : titulos) grilla_->fijaTitulo(QString::fromLatin1(campo), QString::fromUtf8(titulo));
    grilla_->ocultaColumna(QStringLiteral("idArticulo"));
    connect(grilla_, &Grilla::filaActivada, this, &PanTablaPremiosVIP::editar);
}

void PanTablaPremiosVIP::carga() {
    Intenta(this, [this] {
        const ConsultaConParametros c = ConsultaTablaPremios();
        const bool primera = grilla_->modelo().columnCount() == 0;
        grilla_->fijaConsulta(c.sql, c.parametros);
        if (primera)
            for (const auto& [campo, ancho] : {std::pair{"Codigo", 100}, {"Descripcion", 260}, {"Cantidad", 70},
                                               {"PuntosRequeridos", 70}, {"VigenciaDESDE", 100}, {"VigenciaHASTA", 100},
                                               {"idTablaVIP", 50}})
                grilla_->fijaAnchoColumna(QString::fromLatin1(campo), ancho);
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
