#include "customers/ui/pan_resumen_cuenta.h"

#include "customers/cuenta.h"
#include "reports/catalogo.h"
#include "reports/ui/salida_informes.h"
#include "store/formato.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

namespace {
const QString kResumen = QStringLiteral("resumencuenta.rpt");
}

PanResumenCuenta::PanResumenCuenta(Almacen& almacen, const QString& mascaraMoneda, const Reloj& reloj, SalidaInformes& salida, qint64 idVendedor,
                                   QWidget* padre)
    : QDialog(padre), almacen_(almacen), salida_(salida), mascara_(mascaraMoneda), id_(idVendedor) {
    setObjectName(QStringLiteral("PanResumenCuenta"));
    setWindowTitle(QStringLiteral("Resumen de cuenta"));
    setModal(true);
    QString email;
    Intenta(this, [&] {
        nombre_ = NombreCliente(almacen_, id_);
        email = EmailCliente(almacen_, id_);
    });

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* titulo = new QLabel(nombre_, this);
    QFont ft = titulo->font();
    ft.setBold(true);
    titulo->setFont(ft);
    capa->addWidget(titulo);
    auto* f = new QFormLayout;
    // Del primer día del mes pasado a hoy: el resumen de siempre.
    const QDate hoy = reloj.hoy();
    desde_ = CampoFecha(QStringLiteral("dtDesde"), this);
    desde_->setDate(QDate(hoy.year(), hoy.month(), 1).addMonths(-1));
    hasta_ = CampoFecha(QStringLiteral("dtHasta"), this);
    hasta_->setDate(hoy);
    email_ = new QLineEdit(email, this);
    email_->setObjectName(QStringLiteral("txtEmail"));
    email_->setMinimumWidth(280);
    f->addRow(QStringLiteral("Desde :"), desde_);
    f->addRow(QStringLiteral("Hasta :"), hasta_);
    f->addRow(QStringLiteral("e-mail :"), email_);
    capa->addLayout(f);

    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    auto boton = [&](const char* nombre, const QString& texto, void (PanResumenCuenta::*accion)()) {
        auto* b = new QPushButton(texto, this);
        b->setObjectName(QString::fromLatin1(nombre));
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, accion);
        botones->addWidget(b);
        return b;
    };
    boton("cmdArchivo", QStringLiteral("&Guardar..."), &PanResumenCuenta::guarda);
    boton("cmdCorreo", QStringLiteral("&Enviar por e-mail"), &PanResumenCuenta::envia);
    auto* cerrar = new QPushButton(QStringLiteral("&Cerrar"), this);
    cerrar->setObjectName(QStringLiteral("Command2"));
    cerrar->setAutoDefault(false);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::reject);
    botones->addWidget(cerrar);
    capa->addLayout(botones);
    adjustSize();
    CentrarVentana(this);
}

bool PanResumenCuenta::selecciona(Seleccion& s) {
    if (desde_->date() > hasta_->date()) {
        MensajeError(QStringLiteral("Error, la fecha desde es posterior a la fecha hasta!"), this);
        return false;
    }
    return Intenta(this, [&] {
        const Dinero anterior = SaldoClienteAntesDe(almacen_, id_, desde_->date());
        s = SeleccionResumenCuenta(id_, nombre_, desde_->date(), hasta_->date(), anterior, mascara_);
    });
}

void PanResumenCuenta::guarda() {
    Seleccion s;
    if (!selecciona(s)) return;
    const QString archivo =
        EligeArchivoInforme(this, QStringLiteral("Resumen de cuenta - ") + nombre_, salida_.carpetaDatos());
    if (archivo.isEmpty()) return;
    if (Intenta(this, [&] { salida_.exporta(kResumen, s, archivo); }))
        Mensaje(QStringLiteral("El resumen quedó en ") + archivo, QStringLiteral("Atención"), Icono::Informacion, this);
}

void PanResumenCuenta::envia() {
    const QString para = email_->text().trimmed();
    if (para.isEmpty() || !para.contains(u'@')) {
        MensajeError(QStringLiteral("Error, escriba el e-mail del cliente!"), this);
        email_->setFocus();
        return;
    }
    Seleccion s;
    if (!selecciona(s)) return;
    const QString asunto = QStringLiteral("Resumen de cuenta ") + TextoPeriodo(desde_->date(), hasta_->date());
    const QString mensaje = QStringLiteral("Estimado cliente: le enviamos adjunto el resumen de su cuenta corriente.");
    if (Intenta(this, [&] { salida_.enviaPorCorreo(kResumen, s, para, nombre_, asunto, mensaje); }))
        Mensaje(QStringLiteral("El resumen se envió a ") + para, QStringLiteral("Atención"), Icono::Informacion, this);
}

} // namespace orv
