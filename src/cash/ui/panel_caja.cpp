#include "cash/ui/panel_caja.h"

#include "cash/caja.h"
#include "cash/cuentas.h"
#include "cash/ui/pan_caja.h"
#include "cash/ui/pan_corte_caja.h"
#include "cash/ui/pan_formas_pago.h"
#include "cash/ui/pan_plan_ctas.h"
#include "reports/ui/lanzadores.h"
#include "reports/ui/salida_informes.h"
#include "store/formato.h"
#include "store/rutinas.h"
#include "widgets/grilla.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"

#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSqlRecord>
#include <QStyle>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kTodas = QStringLiteral("<Todas>");

} // namespace

PanelCaja::PanelCaja(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                     QWidget* padre)
    : QWidget(padre), almacen_(almacen), estado_(estado), reloj_(reloj), salida_(salida) {
    setObjectName(QStringLiteral("PanelCaja"));
    QHBoxLayout* filtros = armaFiltros();
    armaGrilla();
    DisponePanel(this, QStringLiteral("Caja"), filtros, grilla_, armaBotones())->addLayout(armaTotales());
}

// Período, cuenta y forma de pago, y los dos botones de la grilla.
QHBoxLayout* PanelCaja::armaFiltros() {
    auto* fila = new QHBoxLayout;
    fila->setSpacing(6);
    dtpicker1_ = CampoFecha(QStringLiteral("DTPicker1"), this);
    dtpickerHasta_ = CampoFecha(QStringLiteral("dtpickerHasta"), this);
    cboCuenta_ = new QComboBox(this);
    cboCuenta_->setObjectName(QStringLiteral("cboCuenta"));
    cboCuenta_->setMinimumWidth(140);
    cboFormaPago_ = new QComboBox(this);
    cboFormaPago_->setObjectName(QStringLiteral("cboFormaPago"));
    cboFormaPago_->setMinimumWidth(90);
    const std::pair<const char*, QWidget*> campos[] = {
        {"Desde :", dtpicker1_}, {"Hasta :", dtpickerHasta_}, {"Cuenta :", cboCuenta_}, {"F.Pago :", cboFormaPago_}};
    for (const auto& [texto, campo] : campos) {
        auto* etiqueta = new QLabel(QString::fromLatin1(texto), this);
        etiqueta->setBuddy(campo);
        fila->addWidget(etiqueta);
        fila->addWidget(campo);
        fila->addSpacing(6);
    }
    fila->addStretch(1);
    const auto icono = [this](const char* nombre, QStyle::StandardPixmap dibujo, const QString& ayuda) {
        auto* b = new QPushButton(style()->standardIcon(dibujo), QString(), this);
        b->setObjectName(QString::fromLatin1(nombre));
        b->setToolTip(ayuda);
        b->setAutoDefault(false);
        return b;
    };
    auto* filtrar = icono("Command34", QStyle::SP_DialogApplyButton, QStringLiteral("Mostrar el período elegido"));
    auto* refrescar = icono("Command19", QStyle::SP_BrowserReload, QStringLiteral("Actualizar la lista"));
    connect(filtrar, &QPushButton::clicked, this, &PanelCaja::filtra);
    connect(refrescar, &QPushButton::clicked, this, &PanelCaja::refresca);
    fila->addWidget(filtrar);
    fila->addWidget(refrescar);
    for (QDateEdit* d : {dtpicker1_, dtpickerHasta_}) connect(d, &QDateEdit::dateChanged, this, &PanelCaja::filtra);
    for (QComboBox* c : {cboCuenta_, cboFormaPago_}) connect(c, &QComboBox::activated, this, &PanelCaja::filtra);
    return fila;
}

void PanelCaja::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data3"));
    grilla_->fijaTextoAgrupar(QStringLiteral("Arrastrar aquí columnas para agrupar"));
    grilla_->fijaTituloImpresion(QStringLiteral("Caja"));
    grilla_->fijaClave(QStringLiteral("idCaja"));
    anchos_ = PanelLista::fijaColumnas(*grilla_,
                                       {{"Fecha", "Fecha", 90},
                                        {"Cuenta", "Cuenta", 170},
                                        {"Factura", "Comprobante", 130},
                                        {"Detalles", "Detalles", 300},
                                        {"Ingreso", "Ingreso", 100, true},
                                        {"Egreso", "Egreso", 100, true},
                                        {"FormaPago", "Forma de pago", 110},
                                        {"NombreUsuario", "Usuario", 100},
                                        {"NombreCompleto", "Nombre completo", 160}},
                                       estado_.MascaraMoneda);
    for (const char* oculta : {"idCaja", "idComprobante", "idCuenta", "idUsuario"})
        grilla_->ocultaColumna(QString::fromLatin1(oculta));
    connect(grilla_, &Grilla::filaActivada, this, [this] {
        if (command14_->isEnabled()) editar();
    });
}

QPushButton* PanelCaja::boton(QBoxLayout* columna, const char* nombre, const QString& texto, void (PanelCaja::*accion)()) {
    QPushButton* b = BotonEnFila(columna, nombre, texto, this, 130);
    connect(b, &QPushButton::clicked, this, accion);
    return b;
}

// La columna de botones: el movimiento, los catálogos y el cierre, el comprobante y el listado.
QVBoxLayout* PanelCaja::armaBotones() {
    auto* columna = new QVBoxLayout;
    columna->setSpacing(6);
    boton(columna, "Command7", QStringLiteral("Nuevo"), &PanelCaja::nuevo);
    command14_ = boton(columna, "Command14", QStringLiteral("Editar"), &PanelCaja::editar);
    boton(columna, "Command13", QStringLiteral("Quitar"), &PanelCaja::quitar);
    columna->addSpacing(12);
    boton(columna, "Command36", QStringLiteral("Plan de cuentas"), &PanelCaja::planCuentas);
    boton(columna, "cmdFormasPago", QStringLiteral("Formas de pago"), &PanelCaja::formasPago);
    boton(columna, "Command46", QStringLiteral("Corte Caja"), &PanelCaja::corteCaja);
    boton(columna, "Command28", QStringLiteral("Mostrar..."), &PanelCaja::mostrar);
    columna->addSpacing(12);
    option1_ = new QRadioButton(QStringLiteral("Simple"), this);
    option1_->setObjectName(QStringLiteral("Option1"));
    option1_->setChecked(true);
    auto* completo = new QRadioButton(QStringLiteral("Completo"), this);
    completo->setObjectName(QStringLiteral("OsenXPOptionButton1"));
    columna->addWidget(option1_);
    columna->addWidget(completo);
    boton(columna, "Command15", QStringLiteral("Imprimir"), &PanelCaja::imprimir);
    columna->addStretch(1);
    return columna;
}

QHBoxLayout* PanelCaja::armaTotales() {
    auto* fila = new QHBoxLayout;
    fila->addStretch(1);
    text3_ = CampoTotal("Text3", this);
    text4_ = CampoTotal("Text4", this);
    text5_ = CampoTotal("Text5", this);
    const std::pair<const char*, QLineEdit*> totales[] = {{"Ingresos :", text3_}, {"Egresos :", text4_}, {"Diferencia :", text5_}};
    for (const auto& [texto, campo] : totales) {
        fila->addWidget(new QLabel(QString::fromLatin1(texto), this));
        fila->addWidget(campo);
        fila->addSpacing(8);
    }
    return fila;
}

// Los filtros de cuenta y forma de pago, conservando lo elegido si sigue en la lista.
void PanelCaja::llenaFiltros() {
    const QVariant cuenta = cboCuenta_->currentData();
    const QString forma = cboFormaPago_->currentText();
    cboCuenta_->clear();
    cboFormaPago_->clear();
    cboCuenta_->addItem(kTodas);
    cboFormaPago_->addItem(kTodas);
    LlenaCombo(cboCuenta_, almacen_, ConsultaPlanCuentas(), {}, QStringLiteral("Cuenta"), QStringLiteral("idCuenta"));
    LlenaLista(cboFormaPago_, almacen_, ConsultaFormasPago(), {}, QStringLiteral("FormaPago"));
    cboCuenta_->setCurrentIndex(qMax(0, cboCuenta_->findData(cuenta)));
    cboFormaPago_->setCurrentIndex(qMax(0, cboFormaPago_->findText(forma)));
}

void PanelCaja::fijaPeriodo(const QDate& desde, const QDate& hasta) {
    for (const auto& [campo, fecha] : {std::pair{dtpicker1_, desde}, {dtpickerHasta_, hasta}}) {
        const QSignalBlocker quieto(campo);
        campo->setDate(fecha);
    }
}

void PanelCaja::entra() {
    dtpicker1_->setDate(reloj_.hoy());
    dtpicker1_->setFocus();
}

void PanelCaja::filtra() {
    if (cboCuenta_->count() == 0) llenaFiltros();
    FiltroCaja f{dtpicker1_->date(), dtpickerHasta_->date(), std::nullopt, QString()};
    if (cboCuenta_->currentIndex() > 0) f.idCuenta = cboCuenta_->currentData().toLongLong();
    if (cboFormaPago_->currentIndex() > 0) f.formaPago = cboFormaPago_->currentText();
    const bool primera = grilla_->modelo().columnCount() == 0;
    Intenta(this, [&] {
        const ConsultaConParametros c = ConsultaMovimientosCaja(f);
        grilla_->fijaConsulta(c.sql, c.parametros);
        if (primera)
            for (const auto& [campo, ancho] : anchos_) grilla_->fijaAnchoColumna(campo, ancho);
    });
    totales();
}

void PanelCaja::refresca() {
    if (grilla_->sql().isEmpty()) return filtra();
    Intenta(this, [this] { grilla_->refresca(); });
    totales();
}

void PanelCaja::totales() {
    FiltroCaja f{dtpicker1_->date(), dtpickerHasta_->date(), std::nullopt, QString()};
    if (cboCuenta_->currentIndex() > 0) f.idCuenta = cboCuenta_->currentData().toLongLong();
    if (cboFormaPago_->currentIndex() > 0) f.formaPago = cboFormaPago_->currentText();
    Intenta(this, [&] {
        const TotalesCaja t = TotalesDeCaja(almacen_, f);
        text3_->setText(FormatoMoneda(t.ingreso, estado_.MascaraMoneda));
        text4_->setText(FormatoMoneda(t.egreso, estado_.MascaraMoneda));
        text5_->setText(FormatoMoneda(t.diferencia, estado_.MascaraMoneda));
    });
}

std::optional<PanelCaja::Fila> PanelCaja::filaActual() const {
    const std::optional<QSqlRecord> r = grilla_->filaActual();
    if (!r) return std::nullopt; // sin fila, o una fila de grupo
    const QVariant id = r->value(QStringLiteral("idCaja"));
    if (id.isNull() || id.toString().isEmpty()) return std::nullopt;
    return Fila{id.toLongLong(), r->value(QStringLiteral("Fecha")).toDate(), r->value(QStringLiteral("idComprobante"))};
}

void PanelCaja::nuevo() {
    PanCaja movimiento(almacen_, estado_.idUsuarioActual, std::nullopt, dtpicker1_->date(), this);
    movimiento.exec();
    refresca();
}

void PanelCaja::editar() {
    const std::optional<Fila> f = filaActual();
    if (!f) return;
    // Un día cerrado no se toca: el mensaje y nada más.
    if (!Intenta(this, [&] { ExigeFechaAbierta(almacen_, f->fecha); })) return;
    PanCaja movimiento(almacen_, estado_.idUsuarioActual, f->idCaja, f->fecha, this);
    movimiento.exec();
    refresca();
}

void PanelCaja::quitar() {
    const std::optional<Fila> f = filaActual();
    if (!f) return;
    if (!Pregunta(QStringLiteral("Borra este movimiento de Caja"), this)) return;
    if (!Intenta(this, [&] { BorraMovimientoCaja(almacen_, f->idCaja); })) return;
    refresca();
}

void PanelCaja::planCuentas() {
    panPlanCtas plan(almacen_, this);
    plan.exec();
    llenaFiltros();
    refresca(); // una cuenta borrada deja sus movimientos sin nombre de cuenta
}

void PanelCaja::formasPago() {
    panFormasPago formas(almacen_, this);
    formas.exec();
    llenaFiltros();
}

void PanelCaja::corteCaja() {
    panCorteCaja corte(almacen_, estado_, reloj_, this);
    corte.exec();
    refresca();
}

void PanelCaja::mostrar() {
    const std::optional<Fila> f = filaActual();
    if (!f || f->idComprobante.isNull() || f->idComprobante.toLongLong() == 0) return;
    QString plantilla;
    if (!Intenta(this, [&] { plantilla = PlantillaDeComprobante(almacen_, f->idComprobante.toLongLong()); })) return;
    if (plantilla.isEmpty()) return;
    // El comprobante se muestra en una ventana, sea cual sea el destino elegido para los informes.
    salida_.fijaDestino(SalidaInformes::Ventana);
    salida_.imprimeComprobante(plantilla, f->idComprobante.toLongLong());
    salida_.restableceDestino();
}

void PanelCaja::imprimir() {
    // El listado es siempre de un día: el del comienzo del período.
    InformeCaja(salida_, dtpicker1_->date(), !option1_->isChecked());
}

} // namespace orv
