#include "customers/ui/pan_ve_comisiones.h"

#include "customers/cuenta.h"
#include "customers/ui/pan_nue_comision.h"
#include "customers/ui/pan_resumen_cuenta.h"
#include "reports/ui/lanzadores.h"
#include "store/formato.h"
#include "store/rutinas.h"
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

PanVeComisiones::PanVeComisiones(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj,
                                 SalidaInformes& salida, qint64 idVendedor, QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), reloj_(reloj), salida_(salida), id_(idVendedor) {
    setObjectName(QStringLiteral("PanVeComisiones"));
    setWindowTitle(QStringLiteral("Estado de cuentas del cliente"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 14, 16, 14);
    label1_ = new QLabel(this);
    label1_->setObjectName(QStringLiteral("Label1"));
    QFont ft = label1_->font();
    ft.setPointSizeF(ft.pointSizeF() * 1.3);
    ft.setBold(true);
    label1_->setFont(ft);
    capa->addWidget(label1_);

    auto* arriba = new QHBoxLayout;
    dtPicker1_ = CampoFecha(QStringLiteral("DTPicker1"), this);
    auto* buscar = new QLabel(QStringLiteral("Buscar en el dia :"), this);
    buscar->setBuddy(dtPicker1_);
    arriba->addWidget(buscar);
    arriba->addWidget(dtPicker1_);
    arriba->addStretch(1);
    text1_ = CampoSaldo("Text1", this);
    auto* saldo = new QLabel(QStringLiteral("SALDO :"), this);
    saldo->setBuddy(text1_);
    arriba->addWidget(saldo);
    arriba->addWidget(text1_);
    capa->addLayout(arriba);

    armaGrilla();
    auto* cuerpo = new QHBoxLayout;
    cuerpo->addWidget(grilla_, 1);
    cuerpo->addLayout(armaBotones());
    capa->addLayout(cuerpo, 1);

    actualiza();
    // El día de hoy, sin mover la grilla: la búsqueda empieza cuando el usuario elige un día.
    {
        const QSignalBlocker quieto(dtPicker1_);
        dtPicker1_->setDate(reloj_.hoy());
    }
    connect(dtPicker1_, &QDateEdit::dateChanged, this, &PanVeComisiones::buscaDia);
    resize(900, 560);
    CentrarVentana(this);
    grilla_->setFocus();
}

void PanVeComisiones::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->fijaTextoAgrupar(QStringLiteral("Arrastrar aquí columnas para agrupar"));
    grilla_->fijaClave(QStringLiteral("idCuentaVendedor"));
    grilla_->fijaTituloImpresion(QStringLiteral("Cuenta corriente"));
    const std::pair<const char*, const char*> titulos[] = {{"Fecha", "Fecha"},
                                                           {"Tipo", "Movimiento"},
                                                           {"TipoComprobante", "Comprobante"},
                                                           {"Factura", "Número"},
                                                           {"Comision", "Debe"},
                                                           {"Liquidacion", "Haber"},
                                                           {"idCuentaVendedor", "Nro."}};
    for (const auto& [campo, titulo] : titulos) grilla_->fijaTitulo(QString::fromLatin1(campo), QString::fromUtf8(titulo));
    grilla_->fijaMascara(QStringLiteral("Comision"), estado_.MascaraMoneda);
    grilla_->fijaMascara(QStringLiteral("Liquidacion"), estado_.MascaraMoneda);
    grilla_->ocultaColumna(QStringLiteral("idComprobante"));
}

QPushButton* PanVeComisiones::boton(const char* nombre, const QString& texto, void (PanVeComisiones::*accion)()) {
    QPushButton* b = BotonPanel(QString::fromLatin1(nombre), texto, this);
    connect(b, &QPushButton::clicked, this, accion);
    return b;
}

QVBoxLayout* PanVeComisiones::armaBotones() {
    auto* columna = new QVBoxLayout;
    columna->setSpacing(6);
    columna->addWidget(boton("Command12", QStringLiteral("Debitar / Acreditar"), &PanVeComisiones::debitarAcreditar));
    columna->addWidget(boton("Command11", QStringLiteral("Quitar"), &PanVeComisiones::quitar));
    columna->addSpacing(12);
    columna->addWidget(boton("Command1", QStringLiteral("Resumen"), &PanVeComisiones::resumen));
    auto* periodo = boton("cmdResumenPeriodo", QStringLiteral("Resumen del período..."), &PanVeComisiones::resumenPeriodo);
    periodo->setToolTip(QStringLiteral("El resumen de cuenta de un período, como PDF o por e-mail al cliente"));
    columna->addWidget(periodo);
    columna->addWidget(boton("cmdSaldosClientes", QStringLiteral("Saldos de clientes"), &PanVeComisiones::saldos));
    columna->addSpacing(12);
    // El arreglo escribe en las cuentas de todos los clientes: sólo con permiso de cambiar clientes.
    QPushButton* arreglar = boton("Command3", QStringLiteral("Arreglar"), &PanVeComisiones::arreglar);
    arreglar->setToolTip(QStringLiteral("Agrega la línea que falte a cada venta a cuenta corriente, de todos los clientes"));
    bool permitido = false;
    Intenta(this, [&] { permitido = TieneNivel(almacen_, estado_.idNivelActual, QStringLiteral("NueCliente")); });
    arreglar->setEnabled(permitido);
    columna->addWidget(arreglar);
    columna->addStretch(1);
    auto* salir = new QPushButton(QStringLiteral("Salir"), this);
    salir->setObjectName(QStringLiteral("Command2"));
    salir->setAutoDefault(false);
    connect(salir, &QPushButton::clicked, this, &QDialog::accept);
    columna->addWidget(salir);
    return columna;
}

void PanVeComisiones::actualiza() {
    Intenta(this, [this] {
        label1_->setText(QStringLiteral("Movim. de ") + NombreCliente(almacen_, id_));
        const ConsultaConParametros c = ConsultaLineasCuenta(id_);
        const bool primera = grilla_->modelo().columnCount() == 0;
        grilla_->fijaConsulta(c.sql, c.parametros);
        if (primera)
            for (const auto& [campo, ancho] : {std::pair{"Fecha", 90}, {"Tipo", 190}, {"TipoComprobante", 150},
                                               {"Factura", 130}, {"Comision", 100}, {"Liquidacion", 100}, {"idCuentaVendedor", 60}})
                grilla_->fijaAnchoColumna(QString::fromLatin1(campo), ancho);
        text1_->setText(Formato(SaldoCliente(almacen_, id_), QStringLiteral("Currency")));
    });
}

QString PanVeComisiones::saldo() const { return text1_->text(); }

void PanVeComisiones::buscaDia() {
    Intenta(this, [this] {
        if (const auto fila = PrimeraLineaDelDia(almacen_, id_, dtPicker1_->date())) grilla_->irAFila(int(*fila));
    });
}

void PanVeComisiones::debitarAcreditar() {
    PanNueComision nueva(almacen_, reloj_, id_, this);
    if (nueva.exec() == QDialog::Accepted) actualiza();
}

void PanVeComisiones::quitar() {
    const std::optional<qint64> id = ClaveActual(*grilla_, QStringLiteral("idCuentaVendedor"));
    if (!id) return;
    if (!Pregunta(QStringLiteral("Borra este registro de comisiones"), this)) return;
    if (Intenta(this, [&] { BorraLineaCuenta(almacen_, *id); })) actualiza();
}

void PanVeComisiones::resumen() { InformeCtaCteCliente(salida_, id_); }

void PanVeComisiones::saldos() { InformeSaldoClientes(salida_, reloj_.hoy()); }

void PanVeComisiones::resumenPeriodo() {
    PanResumenCuenta pantalla(almacen_, estado_.MascaraMoneda, reloj_, salida_, id_, this);
    pantalla.exec();
}

void PanVeComisiones::arreglar() {
    qint64 agregadas = 0;
    if (!Intenta(this, [&] { agregadas = ArreglaCuentas(almacen_); })) return;
    Mensaje(agregadas == 0   ? QStringLiteral("Todas las ventas a cuenta corriente tienen su línea en la cuenta.")
            : agregadas == 1 ? QStringLiteral("Se agregó 1 línea de una venta a cuenta corriente.")
                             : QStringLiteral("Se agregaron %1 líneas de ventas a cuenta corriente.").arg(agregadas),
            QStringLiteral("Atención"), Icono::Informacion, this);
    actualiza();
}

} // namespace orv
