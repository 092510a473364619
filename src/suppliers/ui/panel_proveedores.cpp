#include "suppliers/ui/panel_proveedores.h"

#include "suppliers/proveedores.h"
#include "suppliers/ui/pan_compras.h"
#include "suppliers/ui/pan_cta_prove.h"
#include "suppliers/ui/pan_ingr_pago_prove.h"
#include "suppliers/ui/pan_nue_prove.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlRecord>
#include <QVBoxLayout>

namespace orv {

PanelProveedores::PanelProveedores(const ContextoCompras& c, QWidget* padre)
    : QWidget(padre), c_(c), almacen_(c.almacen), estado_(c.estado) {
    setObjectName(QStringLiteral("PanelProveedores"));
    text13_ = CajaBusqueda(QStringLiteral("Text13"), QStringLiteral("<Por Nombre>"),
                           QStringLiteral("Muestra sólo los proveedores cuya razón social o contacto lo contiene"), 320,
                           this);
    text13_->setMaximumWidth(320);
    connect(text13_, &QLineEdit::textEdited, this, &PanelProveedores::carga);
    auto* busqueda = new QHBoxLayout;
    busqueda->addWidget(text13_);
    busqueda->addStretch(1);
    armaGrilla();
    DisponePanel(this, QStringLiteral("Proveedores"), busqueda, grilla_, armaBotones());
}

void PanelProveedores::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data5"));
    grilla_->fijaTituloImpresion(QStringLiteral("Proveedores"));
    grilla_->fijaClave(QStringLiteral("idProveedor"));
    const std::pair<const char*, const char*> titulos[] = {
        {"idProveedor", "Nro."},   {"Nombre", "Contacto"},     {"RazonSocial", "Razón social"}, {"Cuit", "CUIT"},
        {"Telefono", "Teléfono"},  {"Telefono2", "Teléfono 2"}, {"email", "e-mail"},             {"Direccion", "Dirección"},
        {"CBU", "Nro Cta Bancaria"}, {"CPostal", "C.P."},       {"BancoNombre", "Banco"}};
    for (const auto& [campo, titulo] : titulos) grilla_->fijaTitulo(QString::fromLatin1(campo), QString::fromUtf8(titulo));
    grilla_->fijaAnchosIniciales({{"idProveedor", 50}, {"Nombre", 170}, {"RazonSocial", 220}, {"Cuit", 120}, {"Telefono", 120},
                                  {"Telefono2", 120}, {"email", 200}, {"Direccion", 200}, {"CBU", 180}, {"CPostal", 60},
                                  {"BancoNombre", 140}});
    connect(grilla_, &Grilla::filaActivada, this, [this] {
        if (command42_->isEnabled()) editar(); // el doble clic edita si el nivel deja editar
    });
}

QPushButton* PanelProveedores::boton(const char* nombre, const QString& texto, void (PanelProveedores::*accion)()) {
    QPushButton* b = BotonPanel(QString::fromLatin1(nombre), texto, this);
    connect(b, &QPushButton::clicked, this, accion);
    return b;
}

QVBoxLayout* PanelProveedores::armaBotones() {
    auto* columna = new QVBoxLayout;
    columna->setSpacing(6);
    columna->addWidget(boton("Command40", QStringLiteral("Nuevo"), &PanelProveedores::nuevo));
    command42_ = boton("Command42", QStringLiteral("Editar"), &PanelProveedores::editar);
    columna->addWidget(command42_);
    columna->addWidget(boton("Command41", QStringLiteral("Quitar"), &PanelProveedores::quitar));
    columna->addSpacing(12);
    columna->addWidget(boton("Command39", QStringLiteral("Cuenta y saldos"), &PanelProveedores::cuenta));
    columna->addWidget(boton("Command43", QStringLiteral("Ingresar pago"), &PanelProveedores::pago));
    columna->addWidget(boton("Command44", QStringLiteral("Compras..."), &PanelProveedores::compras));
    columna->addSpacing(12);
    columna->addWidget(boton("cmdNuevaCompra", QStringLiteral("Nueva compra..."), &PanelProveedores::nuevaCompra));
    columna->addStretch(1);
    return columna;
}

void PanelProveedores::carga() {
    Intenta(this, [this] {
        const ConsultaConParametros c = ListaProveedores(almacen_, text13_->text());
        grilla_->fijaConsulta(c.sql, c.parametros);
    });
}

std::optional<qint64> PanelProveedores::idActual() const {
    return ClaveActual(*grilla_, QStringLiteral("idProveedor"));
}

bool PanelProveedores::abreFicha(std::optional<qint64> id) {
    panNueProve ficha(almacen_, id, estado_.ClaveImpositiva, this);
    if (ficha.exec() != QDialog::Accepted) return false;
    Intenta(this, [this] { grilla_->refresca(); });
    return true;
}

void PanelProveedores::nuevo() { abreFicha(std::nullopt); }

void PanelProveedores::editar() {
    if (const auto id = idActual()) abreFicha(id);
}

void PanelProveedores::quitar() {
    if (!grilla_->filaActual()) return;
    if (!PreguntaSiNo(QStringLiteral("Elimina éste proveedor de la lista?\nAtención!!: Se eliminarán también registros "
                                     "de cuenta y compras, no así el stock!"),
                      QStringLiteral("Atención"), Icono::Stop, this))
        return;
    const auto id = idActual();
    if (!id) return;
    if (Intenta(this, [&] { BorraProveedor(almacen_, *id); })) Intenta(this, [this] { grilla_->refresca(); });
}

void PanelProveedores::cuenta() {
    if (const auto id = idActual()) {
        panCtaProve cuenta(c_, *id, this);
        cuenta.exec();
    }
}

void PanelProveedores::pago() {
    if (const auto id = idActual()) {
        panIngrPagoProve pago(c_, *id, this);
        pago.exec();
    }
}

void PanelProveedores::compras() {
    if (const auto id = idActual()) {
        panCompras compras(c_, *id, this);
        compras.exec();
    }
}

void PanelProveedores::nuevaCompra() {
    const auto fila = grilla_->filaActual();
    const auto id = idActual();
    if (fila && id) AbreIngresoCompra(c_, *id, fila->value(QStringLiteral("RazonSocial")).toString(), std::nullopt, this);
}

} // namespace orv
