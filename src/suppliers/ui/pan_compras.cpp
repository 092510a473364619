#include "suppliers/ui/pan_compras.h"

#include "reports/ui/lanzadores.h"
#include "suppliers/compras.h"
#include "suppliers/cuenta_proveedor.h"
#include "suppliers/ui/pan_ingr_pago_prove.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

panCompras::panCompras(const ContextoCompras& c, qint64 idProveedor, QWidget* padre) : QDialog(padre), c_(c), id_(idProveedor) {
    setObjectName(QStringLiteral("panCompras"));
    setWindowTitle(QStringLiteral("Gestión Compras"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 14, 16, 14);
    Intenta(this, [this] { razon_ = RazonSocialProveedor(c_.almacen, id_); });
    capa->addWidget(TituloDialogo("lblProve", razon_, this));
    capa->addLayout(armaFiltro());

    armaGrilla();
    auto* cuerpo = new QHBoxLayout;
    cuerpo->addWidget(grilla_, 1);
    auto* botones = new QVBoxLayout;
    const std::tuple<const char*, QString, void (panCompras::*)()> acciones[] = {
        {"Command2", QStringLiteral("&Nueva..."), &panCompras::nueva},
        {"Command4", QStringLiteral("&Editar..."), &panCompras::editar},
        {"Command3", QStringLiteral("&Borrar"), &panCompras::borrar},
        {"Command5", QStringLiteral("&Informe..."), &panCompras::informe},
        {"Command7", QStringLiteral("Ingresar &Pagos"), &panCompras::pagos}};
    for (const auto& [nombre, texto, accion] : acciones)
        connect(BotonEnFila(botones, nombre, texto, this, 140), &QPushButton::clicked, this, accion);
    botones->addStretch(1);
    connect(BotonEnFila(botones, "Command6", QStringLiteral("&Salir"), this, 140), &QPushButton::clicked, this, &QDialog::reject);
    cuerpo->addLayout(botones);
    capa->addLayout(cuerpo, 1);

    muestra(false);
    resize(1000, 580);
    CentrarVentana(this);
    grilla_->setFocus();
}

QLayout* panCompras::armaFiltro() {
    auto* fila = new QHBoxLayout;
    cboTipoComprobante_ = new QComboBox(this);
    cboTipoComprobante_->setObjectName(QStringLiteral("cboTipoComprobante"));
    cboTipoComprobante_->addItem(QStringLiteral("<Todos>"));
    cboTipoComprobante_->addItems(TiposDocumentoCompra());
    dt1_ = CampoFecha(QStringLiteral("dt1"), this);
    dt1_->setDate(QDate(2000, 1, 1));
    dt2_ = CampoFecha(QStringLiteral("dt2"), this);
    dt2_->setDate(c_.reloj.hoy());
    auto* command1 = BotonIcono(QStringLiteral("Command1"), QStyle::SP_BrowserReload, QStringLiteral("Aplicar el filtro"), this);
    connect(command1, &QPushButton::clicked, this, &panCompras::filtra);
    const std::pair<const char*, QWidget*> campos[] = {{"&Tipo :", cboTipoComprobante_}, {"Mostrar &desde :", dt1_}, {"&hasta", dt2_}};
    for (const auto& [texto, campo] : campos) {
        auto* l = new QLabel(QString::fromUtf8(texto), this);
        l->setBuddy(campo);
        fila->addWidget(l);
        fila->addWidget(campo);
        fila->addSpacing(8);
    }
    fila->addWidget(command1);
    fila->addStretch(1);
    return fila;
}

void panCompras::armaGrilla() {
    grilla_ = new Grilla(c_.almacen, this);
    grilla_->setObjectName(QStringLiteral("DBGrid1"));
    grilla_->fijaClave(QStringLiteral("idCompra"));
    grilla_->fijaTituloImpresion(QStringLiteral("Compras"));
    const std::pair<const char*, const char*> titulos[] = {
        {"idCompra", "Nro."},        {"TipComprobante", "Tipo"}, {"LetComprobante", "Letra"},    {"SucComprobante", "Suc."},
        {"NroComprobante", "Número"}, {"Iva1", "Impuesto"},     {"Cancelada", "Cancelada"},     {"RegistraStock", "Stock"},
        {"RegistraCaja", "Caja"}};
    for (const auto& [campo, titulo] : titulos) grilla_->fijaTitulo(QString::fromLatin1(campo), QString::fromUtf8(titulo));
    for (const char* campo : {"Neto", "Iva1", "Total"}) grilla_->fijaMascara(QString::fromLatin1(campo), c_.estado.MascaraMoneda);
    grilla_->fijaAnchosIniciales({{"idCompra", 50}, {"Fecha", 85}, {"TipComprobante", 95}, {"LetComprobante", 45},
                                  {"SucComprobante", 45}, {"NroComprobante", 75}, {"Neto", 100}, {"Iva1", 90}, {"Total", 105},
                                  {"Cancelada", 70}, {"RegistraStock", 50}, {"RegistraCaja", 50}});
    connect(grilla_, &Grilla::filaActivada, this, &panCompras::editar);
}

void panCompras::muestra(bool conFiltro) {
    filtrada_ = conFiltro;
    Intenta(this, [&] {
        const std::optional<FiltroCompras> f =
            conFiltro ? std::optional(FiltroCompras{cboTipoComprobante_->currentText(), dt1_->date(), dt2_->date()}) : std::nullopt;
        const ConsultaConParametros q = ComprasDeProveedor(id_, f);
        grilla_->fijaConsulta(q.sql, q.parametros);
    });
}

void panCompras::filtra() { muestra(true); }

void panCompras::nueva() {
    if (AbreIngresoCompra(c_, id_, razon_, std::nullopt, this)) muestra(filtrada_);
}

void panCompras::editar() {
    const std::optional<qint64> id = ClaveActual(*grilla_, QStringLiteral("idCompra"));
    if (id && AbreIngresoCompra(c_, id_, razon_, id, this)) muestra(filtrada_);
}

void panCompras::borrar() {
    const std::optional<qint64> id = ClaveActual(*grilla_, QStringLiteral("idCompra"));
    if (!id) return;
    if (!PreguntaSiNo(QStringLiteral("Elimina la compra seleccionada?"), QStringLiteral("Atención"), Icono::Exclamacion, this)) return;
    if (!Intenta(this, [&] { BorraCompra(c_.almacen, *id); })) return;
    if (c_.cambios) c_.cambios();
    muestra(filtrada_);
}

void panCompras::informe() {
    Intenta(this, [this] { InformeComprasProveedor(c_.salida, dt1_->date(), dt2_->date(), id_); });
}

void panCompras::pagos() {
    panIngrPagoProve pago(c_, id_, this);
    if (pago.exec() == QDialog::Accepted) muestra(filtrada_);
}

} // namespace orv
