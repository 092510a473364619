#include "customers/ui/pan_nue_tabla_vip.h"

#include "customers/puntos.h"
#include "sales/borrador.h"
#include "sales/ui/pan_sel_art.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QDateEdit>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kSinArticulo = QStringLiteral("<Seleccione Artículo>");

QLineEdit* Numero(const char* nombre, QWidget* padre) {
    auto* t = new QLineEdit(padre);
    t->setObjectName(QString::fromLatin1(nombre));
    t->setAlignment(Qt::AlignRight);
    t->setMaximumWidth(120);
    return t;
}

} // namespace

PanNueTablaVIP::PanNueTablaVIP(Almacen& almacen, const Configuracion& conf, const QString& mascaraMoneda, const Reloj& reloj,
                               std::optional<qint64> idTablaVIP, QWidget* padre)
    : QDialog(padre), almacen_(almacen), conf_(conf), mascaraMoneda_(mascaraMoneda), id_(idTablaVIP) {
    setObjectName(QStringLiteral("panNueTablaVIP"));
    setWindowTitle(QStringLiteral("Nuevo Premio VIP"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* f = new QFormLayout;
    f->setSpacing(8);
    lblArtic_ = Enlace(QStringLiteral("lblArtic"), kSinArticulo, this);
    lblArtic_->setMinimumWidth(320);
    lblArtic_->setToolTip(QStringLiteral("Pulse para elegir el artículo del premio"));
    connect(lblArtic_, &QPushButton::clicked, this, &PanNueTablaVIP::eligeArticulo);
    dt1_ = CampoFecha(QStringLiteral("dt1"), this);
    dt1_->setDate(reloj.hoy());
    dt2_ = CampoFecha(QStringLiteral("dt2"), this);
    dt2_->setDate(reloj.hoy().addDays(kDiasVigenciaPremio));
    txCant_ = Numero("txCant", this);
    txPtos_ = Numero("txPtos", this);
    txPtos_->setToolTip(QStringLiteral("Puntos enteros, sin separadores decimales"));
    f->addRow(QStringLiteral("Artículo :"), lblArtic_);
    f->addRow(QStringLiteral("Cantidad :"), txCant_);
    f->addRow(QStringLiteral("Vigencia desde :"), dt1_);
    f->addRow(QStringLiteral("Vigencia hasta :"), dt2_);
    f->addRow(QStringLiteral("Puntos requeridos :"), txPtos_);
    capa->addLayout(f);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanNueTablaVIP::acepta);
    if (id_) carga();
    adjustSize();
    CentrarVentana(this);
    lblArtic_->setFocus();
}

void PanNueTablaVIP::carga() {
    Intenta(this, [this] {
        const std::optional<DatosPremio> p = LeePremio(almacen_, *id_);
        if (!p) throw AvisoAtencion(QStringLiteral("El premio ya no está en la tabla: otro puesto lo quitó."));
        idArticulo_ = p->idArticulo;
        lblArtic_->setText(p->idArticulo ? p->descripcion : kSinArticulo);
        dt1_->setDate(p->desde);
        dt2_->setDate(p->hasta);
        txCant_->setText(p->cantidad);
        txPtos_->setText(p->puntos);
    });
}

void PanNueTablaVIP::eligeArticulo() {
    PanSelArt busqueda(almacen_, conf_, mascaraMoneda_, this);
    if (busqueda.exec() == QDialog::Accepted) ponArticulo(busqueda.codigo());
}

void PanNueTablaVIP::ponArticulo(const QString& codigo) {
    Intenta(this, [&] {
        const auto articulo = ArticuloPorCodigo(almacen_, codigo);
        if (!articulo) throw AvisoAtencion(QStringLiteral("El artículo ya no está en el catálogo."));
        idArticulo_ = articulo->idArticulo;
        lblArtic_->setText(articulo->descripcion);
    });
}

void PanNueTablaVIP::acepta() {
    DatosPremio d;
    d.idArticulo = idArticulo_;
    d.desde = dt1_->date();
    d.hasta = dt2_->date();
    d.cantidad = txCant_->text();
    d.puntos = txPtos_->text();
    if (Intenta(this, [&] { GuardaPremio(almacen_, id_, d); })) accept();
}

} // namespace orv
