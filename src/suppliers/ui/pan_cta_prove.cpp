#include "suppliers/ui/pan_cta_prove.h"

#include "reports/ui/lanzadores.h"
#include "store/formato.h"
#include "suppliers/cuenta_proveedor.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

panCtaProve::panCtaProve(const ContextoCompras& c, qint64 idProveedor, QWidget* padre)
    : QDialog(padre), c_(c), id_(idProveedor) {
    setObjectName(QStringLiteral("panCtaProve"));
    setWindowTitle(QStringLiteral("Cuenta del proveedor"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 14, 16, 14);
    Intenta(this, [this] { razon_ = RazonSocialProveedor(c_.almacen, id_); });
    capa->addWidget(TituloDialogo("Label1", QStringLiteral("Cuenta del proveedor ") + razon_, this));
    auto* ayuda = new QLabel(QStringLiteral("Éste es el informe de los movimientos de cuenta del proveedor seleccionado. Aquí se "
                                            "registran las compras en cuenta corriente y los pagos que efectuamos."),
                             this);
    ayuda->setWordWrap(true);
    capa->addWidget(ayuda);

    auto* arriba = new QHBoxLayout;
    dt1_ = CampoFecha(QStringLiteral("dt1"), this);
    dt1_->setDate(QDate(2000, 1, 1));
    auto* desde = new QLabel(QStringLiteral("Mostrar &desde :"), this);
    desde->setBuddy(dt1_);
    auto* command3 = BotonIcono(QStringLiteral("Command3"), QStyle::SP_BrowserReload, QStringLiteral("Mostrar desde la fecha"), this);
    txTotal_ = CampoSaldo("txTotal", this);
    auto* saldo = new QLabel(QStringLiteral("Saldo :"), this);
    saldo->setBuddy(txTotal_);
    for (QWidget* w : std::initializer_list<QWidget*>{desde, dt1_, command3}) arriba->addWidget(w);
    arriba->addStretch(1);
    arriba->addWidget(saldo);
    arriba->addWidget(txTotal_);
    capa->addLayout(arriba);

    armaGrilla();
    auto* cuerpo = new QHBoxLayout;
    cuerpo->addWidget(grilla_, 1);
    auto* botones = new QVBoxLayout;
    const std::tuple<const char*, QString, void (panCtaProve::*)()> acciones[] = {
        {"Command12", QStringLiteral("&Ver Registro..."), &panCtaProve::verRegistro},
        {"Command11", QStringLiteral("&Quitar"), &panCtaProve::quitar},
        {"Command1", QStringLiteral("&Imprimir"), &panCtaProve::imprimir}};
    for (const auto& [nombre, texto, accion] : acciones)
        connect(BotonEnFila(botones, nombre, texto, this, 140), &QPushButton::clicked, this, accion);
    botones->addStretch(1);
    connect(BotonEnFila(botones, "Command2", QStringLiteral("&Salir"), this, 140), &QPushButton::clicked, this, &QDialog::reject);
    cuerpo->addLayout(botones);
    capa->addLayout(cuerpo, 1);

    connect(command3, &QPushButton::clicked, this, &panCtaProve::actualiza);
    connect(dt1_, &QDateEdit::dateChanged, this, &panCtaProve::actualiza);
    connect(grilla_, &Grilla::filaActivada, this, &panCtaProve::verRegistro);
    actualiza();
    resize(920, 560);
    CentrarVentana(this);
    grilla_->setFocus();
}

void panCtaProve::armaGrilla() {
    grilla_ = new Grilla(c_.almacen, this);
    grilla_->setObjectName(QStringLiteral("DBGrid1"));
    grilla_->fijaClave(QStringLiteral("idMovCta"));
    grilla_->fijaTituloImpresion(QStringLiteral("Cuenta del proveedor"));
    grilla_->permiteAgrupar(false);
    for (const auto& [campo, titulo] : {std::pair{"idMovCta", "Nro."}, std::pair{"Detalle", "Detalle"},
                                        std::pair{"Referencia", "Referencia"}, std::pair{"Debe", "Debe"},
                                        std::pair{"Haber", "Haber"}})
        grilla_->fijaTitulo(QString::fromLatin1(campo), QString::fromLatin1(titulo));
    grilla_->fijaMascara(QStringLiteral("Debe"), c_.estado.MascaraMoneda);
    grilla_->fijaMascara(QStringLiteral("Haber"), c_.estado.MascaraMoneda);
    grilla_->ocultaColumna(QStringLiteral("idCompra"));
    grilla_->fijaAnchosIniciales(
        {{"idMovCta", 45}, {"Fecha", 85}, {"Detalle", 290}, {"Referencia", 140}, {"Debe", 100}, {"Haber", 100}});
}

void panCtaProve::actualiza() {
    Intenta(this, [this] {
        const ConsultaConParametros q = CuentaProveedor(id_, dt1_->date());
        grilla_->fijaConsulta(q.sql, q.parametros);
    });
    muestraSaldo();
}

// El saldo de toda la cuenta, sin mirar la fecha; sin líneas, queda como estaba.
void panCtaProve::muestraSaldo() {
    Intenta(this, [this] {
        if (const std::optional<Dinero> s = SaldoProveedor(c_.almacen, id_)) txTotal_->setText(FormatoMoneda(*s, c_.estado.MascaraMoneda));
    });
}

void panCtaProve::verRegistro() {
    const std::optional<qint64> mov = ClaveActual(*grilla_, QStringLiteral("idMovCta"));
    if (!mov) return;
    std::optional<qint64> compra;
    if (!Intenta(this, [&] { compra = CompraDeMovimiento(c_.almacen, *mov); }) || !compra) return;
    if (AbreIngresoCompra(c_, id_, razon_, compra, this)) actualiza();
}

void panCtaProve::quitar() {
    const std::optional<qint64> mov = ClaveActual(*grilla_, QStringLiteral("idMovCta"));
    if (!mov) return;
    if (!PreguntaSiNo(QStringLiteral("Está seguro de borrar dicho movimiento?"), QStringLiteral("Atención"), Icono::Exclamacion, this))
        return;
    if (Intenta(this, [&] { QuitaMovimientoProveedor(c_.almacen, *mov); })) actualiza();
}

void panCtaProve::imprimir() {
    Intenta(this, [this] { InformeCtaProveedor(c_.salida, id_, dt1_->date(), txTotal_->text()); });
}

} // namespace orv
