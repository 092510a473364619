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
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanPuntajeVipCliente::PanPuntajeVipCliente(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj,
                                           std::optional<qint64> idCliente, QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), reloj_(reloj) {
    setObjectName(QStringLiteral("panPuntajeVipCliente"));
    setWindowTitle(QStringLiteral("Puntaje Vip"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 14, 16, 14);
    filtro_ = ArmaFiltroPeriodo(this, QStringLiteral("Cliente :"));
    LlenaCombo(filtro_.lista, almacen_,
               QStringLiteral("SELECT idVendedor, Nombre FROM Vendedores WHERE LENGTH(NroClienteVIP) > 0 ORDER BY Nombre"), {},
               QStringLiteral("Nombre"), QStringLiteral("idVendedor"));
    filtro_.lista->setCurrentIndex(-1);
    filtro_.desde->setDate(reloj_.hoy());
    filtro_.hasta->setDate(reloj_.hoy());
    connect(filtro_.mostrar, &QPushButton::clicked, this, &PanPuntajeVipCliente::mostrar);
    capa->addLayout(filtro_.fila);
    armaGrilla();
    capa->addWidget(grilla_, 1);
    capa->addLayout(armaPie());

    if (idCliente) {
        SelComboId(filtro_.lista, *idCliente);
        if (cliente()) mostrar();
    }
    resize(900, 540);
    CentrarVentana(this);
    filtro_.lista->setFocus();
}

void PanPuntajeVipCliente::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->fijaTextoAgrupar(QStringLiteral("Arrastrar aquí columnas para agrupar"));
    grilla_->fijaClave(QStringLiteral("idVip"));
    grilla_->fijaTituloImpresion(QStringLiteral("Puntaje VIP"));
    anchos_ = PanelLista::fijaColumnas(*grilla_,
                                       {{"Fecha", "Fecha", 90},
                                        {"PuntosVIP", "Puntos", 70},
                                        {"Tipo", "Comprobante", 170},
                                        {"Factura", "Número", 130},
                                        {"Total", "Total", 110, true},
                                        {"NombreCompleto", "Operador", 200}},
                                       estado_.MascaraMoneda);
    for (const char* oculta : {"idVip", "idCliente", "idUsuario", "idComprobante"}) grilla_->ocultaColumna(QString::fromLatin1(oculta));
}

// Los tres totales y el cobro de un premio.
QHBoxLayout* PanPuntajeVipCliente::armaPie() {
    auto* fila = new QHBoxLayout;
    auto* cobrar = BotonPanel(QStringLiteral("OsenXPButton1"), QStringLiteral("Cobrar Premio..."), this);
    connect(cobrar, &QPushButton::clicked, this, &PanPuntajeVipCliente::cobrarPremio);
    fila->addWidget(cobrar, 0, Qt::AlignTop);
    fila->addStretch(1);
    totales_ = ArmaTotalesPeriodo(this, QStringLiteral("Total puntos obtenidos :"), QStringLiteral("Total en premios cobrados :"),
                                  120);
    fila->addLayout(totales_.capa);
    return fila;
}

std::optional<qint64> PanPuntajeVipCliente::cliente() const {
    if (filtro_.lista->currentIndex() < 0) return std::nullopt;
    return filtro_.lista->currentData().toLongLong();
}

QStringList PanPuntajeVipCliente::totales() const { return totales_.textos(); }

void PanPuntajeVipCliente::mostrar() {
    const std::optional<qint64> id = cliente();
    if (!id) return MensajeAtencion(QStringLiteral("Seleccione un cliente!"), this);
    totales_.ceros();
    Intenta(this, [&] {
        const ConsultaConParametros c = ConsultaPuntosCliente(*id, filtro_.desde->date(), filtro_.hasta->date());
        const bool primera = grilla_->modelo().columnCount() == 0;
        grilla_->fijaConsulta(c.sql, c.parametros);
        if (primera)
            for (const auto& [campo, ancho] : anchos_) grilla_->fijaAnchoColumna(campo, ancho);
        const TotalesPuntos t = TotalesPuntosCliente(almacen_, *id, filtro_.desde->date(), filtro_.hasta->date());
        totales_.muestra(QString::number(t.obtenidos), QString::number(t.cobrados), QString::number(t.diferencia()));
    });
}

void PanPuntajeVipCliente::cobrarPremio() {
    const std::optional<qint64> id = cliente();
    if (!id) return MensajeAtencion(QStringLiteral("Seleccione un cliente!"), this);
    PanCobraPremio cobro(almacen_, reloj_, estado_.idUsuarioActual, *id, this);
    if (cobro.exec() == QDialog::Accepted) mostrar();
}

} // namespace orv
