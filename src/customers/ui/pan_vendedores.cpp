#include "customers/ui/pan_vendedores.h"

#include "customers/clientes.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanVendedores::PanVendedores(Almacen& almacen, const EstadoAplicacion& estado, std::optional<qint64> idVendedor,
                             QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), id_(idVendedor) {
    setObjectName(QStringLiteral("PanVendedores"));
    setWindowTitle(QStringLiteral("Clientes"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* f = new QFormLayout;
    f->setSpacing(8);
    armaDatos(f);
    armaListas(f);
    capa->addLayout(f);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanVendedores::acepta);

    // Un cliente nuevo empieza con la primera forma de pago; uno que ya no está deja la ficha
    // vacía y al grabar se dice.
    if (!id_) {
        cboFPago_->setCurrentIndex(cboFPago_->count() > 0 ? 0 : -1);
    } else {
        Intenta(this, [this] {
            if (const auto d = LeeCliente(almacen_, *id_)) carga(*d);
        });
    }
    adjustSize();
    CentrarVentana(this);
    nombre_->setFocus();
}

QLineEdit* PanVendedores::campo(const char* nombre, int largo) {
    auto* t = new QLineEdit(this);
    t->setObjectName(QString::fromLatin1(nombre));
    t->setMaxLength(largo);
    t->setMinimumWidth(320);
    return t;
}

// Las cajas de texto, con los títulos de siempre; el del número fiscal es el del país.
void PanVendedores::armaDatos(QFormLayout* f) {
    nombre_ = campo("Text1", kLargoNombreCliente);
    empresa_ = campo("Text2", kLargoEmpresaCliente);
    domicilio_ = campo("Text3", kLargoDomicilioCliente);
    telefono_ = campo("Text4", kLargoTelefonoCliente);
    telefono2_ = campo("Text5", kLargoTelefonoCliente);
    email_ = campo("Text6", kLargoEmailCliente);
    cuit_ = campo("Text7", kLargoCuitCliente);
    descuento_ = campo("Text8", 20);
    vip_ = campo("Text9", kLargoTarjetaCliente);
    vip_->setPlaceholderText(QStringLiteral("Mas de 6 caracteres"));
    vip_->setToolTip(QStringLiteral("Número de la tarjeta del cliente: sólo cifras, al menos %1").arg(kCifrasTarjeta));
    descuento_->setMaximumWidth(100);
    descuento_->setMinimumWidth(80);
    f->addRow(QStringLiteral("Nombre y Apellido :"), nombre_);
    f->addRow(QStringLiteral("Nombre / Empresa :"), empresa_);
    f->addRow(QStringLiteral("Domicilio :"), domicilio_);
    cboLocalidades_ = new QComboBox(this);
    cboLocalidades_->setObjectName(QStringLiteral("cboLocalidades"));
    cboLocalidades_->setEditable(true);
    cboLocalidades_->setInsertPolicy(QComboBox::NoInsert);
    f->addRow(QStringLiteral("Localidad :"), cboLocalidades_);
    f->addRow(QStringLiteral("Telefono :"), telefono_);
    f->addRow(QStringLiteral("Telefono (2) :"), telefono2_);
    f->addRow(QStringLiteral("e-mail :"), email_);
    const QString clave = estado_.ClaveImpositiva.isEmpty() ? QStringLiteral("CUIT") : estado_.ClaveImpositiva;
    f->addRow(clave + QStringLiteral(" :"), cuit_);
    f->addRow(QStringLiteral("Descuento % :"), descuento_);
    f->addRow(QStringLiteral("Cliente VIP nro :"), vip_);
}

// Las listas: localidades (texto libre), zonas, situación fiscal y forma de pago preferida.
void PanVendedores::armaListas(QFormLayout* f) {
    auto lista = [this](const char* nombre) {
        auto* c = new QComboBox(this);
        c->setObjectName(QString::fromLatin1(nombre));
        c->setMinimumWidth(220);
        return c;
    };
    cboZona_ = lista("cboZona");
    cbTipoIva_ = lista("cbTipoIva");
    cboFPago_ = lista("cboFPago");
    LlenaLista(cboLocalidades_, almacen_, ConsultaLocalidades(), {}, QStringLiteral("Localidad"));
    cboLocalidades_->setCurrentIndex(-1);
    LlenaCombo(cboZona_, almacen_, ConsultaZonas(), {}, QStringLiteral("Zona"), QStringLiteral("idZona"));
    LlenaCombo(cbTipoIva_, almacen_, ConsultaTiposIva(), {}, QStringLiteral("TipoIva"), QStringLiteral("idTipoIva"));
    LlenaCombo(cboFPago_, almacen_, ConsultaFormasPagoCliente(), {}, QStringLiteral("FormaPago"),
               QStringLiteral("idTipoFormaPago"));
    for (QComboBox* c : {cboZona_, cbTipoIva_, cboFPago_}) c->setCurrentIndex(-1);
    // Con una sola zona (la de un almacén nuevo) no hay nada que elegir.
    if (cboZona_->count() == 1) cboZona_->setCurrentIndex(0);
    f->addRow(QStringLiteral("Zona :"), cboZona_);
    f->addRow(QStringLiteral("Posición fiscal :"), cbTipoIva_);
    f->addRow(QStringLiteral("F.Pago Preferida :"), cboFPago_);
}

void PanVendedores::carga(const DatosCliente& d) {
    nombre_->setText(d.nombre);
    empresa_->setText(d.empresa);
    domicilio_->setText(d.domicilio);
    cboLocalidades_->setEditText(d.localidad);
    telefono_->setText(d.telefono);
    telefono2_->setText(d.telefono2);
    email_->setText(d.email);
    cuit_->setText(d.cuit);
    descuento_->setText(d.descuento);
    vip_->setText(d.nroClienteVIP);
    if (!d.idTipoIva.isNull()) SelComboId(cbTipoIva_, d.idTipoIva);
    if (!d.idZona.isNull()) SelComboId(cboZona_, d.idZona);
    if (!d.idTipoFormaPago.isNull()) SelComboId(cboFPago_, d.idTipoFormaPago);
}

DatosCliente PanVendedores::datos() const {
    auto elegido = [](const QComboBox* c) { return c->currentIndex() < 0 ? QVariant() : c->currentData(); };
    DatosCliente d;
    d.nombre = nombre_->text();
    d.empresa = empresa_->text();
    d.domicilio = domicilio_->text();
    d.localidad = cboLocalidades_->currentText();
    d.telefono = telefono_->text();
    d.telefono2 = telefono2_->text();
    d.email = email_->text();
    d.cuit = cuit_->text();
    d.descuento = descuento_->text();
    d.nroClienteVIP = vip_->text();
    d.idZona = elegido(cboZona_);
    d.idTipoIva = elegido(cbTipoIva_);
    d.idTipoFormaPago = elegido(cboFPago_);
    return d;
}

void PanVendedores::acepta() {
    const DatosCliente d = datos();
    const bool conCuit = estado_.ClaveImpositiva.compare(QStringLiteral("CUIT"), Qt::CaseInsensitive) == 0;
    if (Intenta(this, [&] { id_ = GrabaCliente(almacen_, id_, d, conCuit, estado_.ClaveImpositiva); })) accept();
}

} // namespace orv
