#include "customers/ui/panel_clientes.h"

#include "customers/clientes.h"
#include "customers/cuenta.h"
#include "customers/ui/pan_historico.h"
#include "customers/ui/pan_liq_comision.h"
#include "customers/ui/pan_puntaje_vip_cliente.h"
#include "customers/ui/pan_ve_comisiones.h"
#include "customers/ui/pan_vendedores.h"
#include "store/formato.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/previsualiza.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace orv {

PanelClientes::PanelClientes(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                             AccionesClientes acciones, QWidget* padre)
    : QWidget(padre), almacen_(almacen), estado_(estado), reloj_(reloj), salida_(salida), acciones_(std::move(acciones)) {
    setObjectName(QStringLiteral("PanelClientes"));
    QHBoxLayout* busquedas = armaBusquedas();
    armaGrilla();
    DisponePanel(this, QStringLiteral("Clientes"), busquedas, grilla_, armaBotones());
}

// Los dos filtros, el reinicio y los botones de la grilla.
QHBoxLayout* PanelClientes::armaBusquedas() {
    auto* fila = new QHBoxLayout;
    fila->setSpacing(6);
    text2_ = CajaBusqueda(QStringLiteral("Text2"), QStringLiteral("<por Nombre>"),
                          QStringLiteral("Nombre o empresa: muestra sólo los clientes que lo contienen"), 120, this);
    text17_ = CajaBusqueda(QStringLiteral("Text17"), QStringLiteral("<por Localidad>"),
                           QStringLiteral("Localidad: muestra sólo los clientes que la contienen"), 120, this);
    for (QLineEdit* t : {text2_, text17_}) {
        connect(t, &QLineEdit::textEdited, this, &PanelClientes::carga);
        // Enter en un filtro pulsa el botón de Enter del panel, "Cuenta y saldos".
        connect(t, &QLineEdit::returnPressed, this, [this] {
            if (command9_->isEnabled()) cuenta();
        });
    }
    fila->addWidget(text2_, 3);
    fila->addWidget(text17_, 2);
    auto* reinicio = Enlace(QStringLiteral("Command33"), QStringLiteral("Borra los filtros pre-establecidos"), this);
    connect(reinicio, &QPushButton::clicked, this, [this] {
        text2_->clear();
        text17_->clear();
        carga();
    });
    fila->addWidget(reinicio);
    fila->addStretch(1);
    auto* refrescar = BotonIcono(QStringLiteral("cmdRefrescaClientes"), QStyle::SP_BrowserReload,
                                 QStringLiteral("Actualizar la lista"), this);
    auto* previa = BotonIcono(QStringLiteral("cmdPreviaClientes"), QStyle::SP_FileDialogContentsView,
                              QStringLiteral("Vista previa de impresión"), this);
    connect(refrescar, &QPushButton::clicked, this, &PanelClientes::refresca);
    connect(previa, &QPushButton::clicked, this, [this] { PrevisualizaGrilla(*grilla_); });
    fila->addWidget(refrescar);
    fila->addWidget(previa);
    return fila;
}

void PanelClientes::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->fijaTextoAgrupar(QStringLiteral("Arrastrar aquí columnas para agrupar"));
    grilla_->setObjectName(QStringLiteral("Data2"));
    grilla_->fijaTituloImpresion(QStringLiteral("Clientes"));
    grilla_->fijaClave(QStringLiteral("idVendedor"));
    const std::pair<const char*, const char*> titulos[] = {
        {"Zona", "Zona"},           {"Nombre", "Nombre"},       {"Domicilio", "Domicilio"}, {"Localidad", "Localidad"},
        {"Telefono", "Teléfono"},   {"Telefono2", "Teléfono 2"}, {"e-mail", "e-mail"},      {"Cuit", "CUIT"},
        {"Descuento", "Desc. %"},   {"idVendedor", "Nro."},     {"Empresa", "Empresa"}};
    for (const auto& [campo, titulo] : titulos) grilla_->fijaTitulo(QString::fromLatin1(campo), QString::fromUtf8(titulo));
    connect(grilla_, &Grilla::filaActivada, this, [this] {
        if (command10_->isEnabled()) editar();
    });
}

QPushButton* PanelClientes::boton(const char* nombre, const QString& texto, void (PanelClientes::*accion)()) {
    QPushButton* b = BotonPanel(QString::fromLatin1(nombre), texto, this);
    connect(b, &QPushButton::clicked, this, accion);
    return b;
}

// La columna de botones: ficha, cuenta, puntos e histórico.
QVBoxLayout* PanelClientes::armaBotones() {
    auto* columna = new QVBoxLayout;
    columna->setSpacing(6);
    columna->addWidget(boton("Command12", QStringLiteral("Nuevo"), &PanelClientes::nuevo));
    command10_ = boton("Command10", QStringLiteral("Editar"), &PanelClientes::editar);
    columna->addWidget(command10_);
    columna->addWidget(boton("Command11", QStringLiteral("Quitar"), &PanelClientes::quitar));
    columna->addSpacing(12);
    command9_ = boton("Command9", QStringLiteral("Cuenta y saldos"), &PanelClientes::cuenta);
    columna->addWidget(command9_);
    columna->addWidget(boton("Command8", QStringLiteral("Ingresar cobranza"), &PanelClientes::cobranza));
    columna->addSpacing(12);
    columna->addWidget(boton("Command31", QStringLiteral("Puntos VIP"), &PanelClientes::puntosVip));
    columna->addWidget(boton("Command48", QStringLiteral("Histórico"), &PanelClientes::historico));
    columna->addStretch(1);
    return columna;
}

void PanelClientes::carga() {
    Intenta(this, [this] {
        const ConsultaConParametros c = ConsultaPanelClientes(almacen_, text2_->text(), text17_->text());
        grilla_->fijaConsulta(c.sql, c.parametros);
    });
    if (grilla_->modelo().columnCount() == 0 || anchosPuestos_) return;
    anchosPuestos_ = true;
    const std::pair<const char*, int> anchos[] = {{"Zona", 100},     {"Nombre", 210},  {"Domicilio", 190}, {"Localidad", 130},
                                                  {"Telefono", 110}, {"Telefono2", 110}, {"e-mail", 190},   {"Cuit", 110},
                                                  {"Descuento", 70}, {"idVendedor", 60}, {"Empresa", 200}};
    for (const auto& [campo, ancho] : anchos) grilla_->fijaAnchoColumna(QString::fromLatin1(campo), ancho);
}

void PanelClientes::entra() {
    command9_->setDefault(true);
    text2_->clear();
    text2_->setFocus();
}

void PanelClientes::refresca() {
    Intenta(this, [this] { grilla_->refresca(); });
}

std::optional<qint64> PanelClientes::idActual() const { return ClaveActual(*grilla_, QStringLiteral("idVendedor")); }

bool PanelClientes::abreFicha(std::optional<qint64> id) {
    PanVendedores ficha(almacen_, estado_, id, this);
    return ficha.exec() == QDialog::Accepted;
}

void PanelClientes::nuevo() {
    if (abreFicha(std::nullopt)) refresca();
}

void PanelClientes::editar() {
    const auto id = idActual();
    if (id && abreFicha(*id)) refresca();
}

void PanelClientes::quitar() {
    const auto id = idActual();
    if (!id) return;
    // Las líneas de la cuenta se van con el cliente: si tiene saldo, la pregunta lo dice antes.
    Dinero saldo;
    if (!Intenta(this, [&] { saldo = SaldoCliente(almacen_, *id); })) return;
    QString pregunta = QStringLiteral("Borra este cliente de la lista");
    if (!saldo.esCero())
        pregunta = QStringLiteral("El cliente tiene un saldo de ") + FormatoMoneda(saldo, estado_.MascaraMoneda) +
                   QStringLiteral(" en su cuenta corriente, que se borra con él.\n") + pregunta;
    if (!Pregunta(pregunta, this)) return;
    if (Intenta(this, [&] { BorraCliente(almacen_, *id); })) refresca();
}

void PanelClientes::cuenta() {
    const auto id = idActual();
    if (!id) return;
    PanVeComisiones pantalla(almacen_, estado_, reloj_, salida_, *id, this);
    pantalla.exec();
}

void PanelClientes::cobranza() {
    const auto id = idActual();
    if (!id) return;
    PanLiqComision pantalla(almacen_, estado_, reloj_, salida_, *id, this);
    pantalla.exec();
    if (pantalla.registrada() && acciones_.cajaCambiada) acciones_.cajaCambiada();
}

void PanelClientes::puntosVip() {
    PanPuntajeVipCliente pantalla(almacen_, estado_, reloj_, idActual(), this);
    pantalla.exec();
}

void PanelClientes::historico() {
    PanHistorico pantalla(almacen_, estado_, reloj_, salida_, idActual(), this);
    pantalla.exec();
}

} // namespace orv
