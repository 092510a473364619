#include "sales/ui/pan_comprobantes.h"

#include "reports/informe.h"
#include "reports/ui/salida_informes.h"
#include "sales/registro.h"
#include "sales/ticket.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"
#include "store/aviso.h"
#include "store/formato.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kMascara = QStringLiteral("###,###,##0.00");

QPushButton* boton(const char* nombre, const QString& texto, QWidget* padre) {
    auto* b = new QPushButton(texto, padre);
    b->setObjectName(QString::fromLatin1(nombre));
    b->setAutoDefault(false);
    return b;
}

} // namespace

QString PlantillaDeReimpresion(const Almacen& a, qint64 idComprobante, const QString& carpetaDatos) {
    const QString plantilla =
        a.valor(QStringLiteral("SELECT NombrePlantilla FROM ConsultaTiposComprobantesPorFecha WHERE idComprobante = ?"),
                {idComprobante})
            .toString();
    if (plantilla.trimmed().isEmpty()) return {};
    // Fiscal, tickets o un archivo que ya no está: la plantilla de siempre.
    if (BuscaDefinicion(plantilla, carpetaDatos).isEmpty()) return QStringLiteral("factura_discrimina_iva.rpt");
    return plantilla;
}

PanBorraFactura::PanBorraFactura(Almacen& almacen, const QDate& hoy, QWidget* padre)
    : QDialog(padre), almacen_(almacen), hoy_(hoy) {
    setObjectName(QStringLiteral("panBorraFactura"));
    setWindowTitle(QStringLiteral("Seleccione Venta a Borrar"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->fijaClave(QStringLiteral("idComprobante"));
    grilla_->fijaConsulta(QStringLiteral("SELECT FECDETALLE, Tipo, Factura, Nombre, FormaPago, Total, HizoCaja, HizoStock, "
                                         "TipoStock, idComprobante FROM ConsultaFacturas ORDER BY FECDETALLE, idComprobante"));
    grilla_->fijaTitulo(QStringLiteral("FECDETALLE"), QStringLiteral("Fecha"));
    grilla_->fijaTitulo(QStringLiteral("FormaPago"), QStringLiteral("Forma de pago"));
    grilla_->fijaTitulo(QStringLiteral("Nombre"), QStringLiteral("Cliente"));
    grilla_->fijaMascara(QStringLiteral("Total"), kMascara);
    for (const char* o : {"HizoCaja", "HizoStock", "TipoStock", "idComprobante"}) grilla_->ocultaColumna(QString::fromLatin1(o));
    capa->addWidget(grilla_, 1);
    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    auto* eliminar = boton("Command29", QStringLiteral("&Eliminar"), this);
    auto* salir = boton("Command30", QStringLiteral("&Salir"), this);
    botones->addWidget(eliminar);
    botones->addWidget(salir);
    capa->addLayout(botones);
    connect(eliminar, &QPushButton::clicked, this, &PanBorraFactura::eliminar);
    connect(salir, &QPushButton::clicked, this, &QDialog::reject);
    resize(820, 520);
    CentrarVentana(this);
    vaAlDia(hoy_);
    grilla_->setFocus();
}

bool PanBorraFactura::vaAlDia(const QDate& dia) {
    // Las filas van por fecha: la primera del día está después de todas las anteriores.
    bool encontrado = false;
    Intenta(this, [&] {
        if (almacen_.valor(QStringLiteral("SELECT count(*) FROM ConsultaFacturas WHERE FECDETALLE = ?"), {dia}).toInt() == 0)
            return;
        const int antes =
            almacen_.valor(QStringLiteral("SELECT count(*) FROM ConsultaFacturas WHERE FECDETALLE < ?"), {dia}).toInt();
        encontrado = grilla_->irAFila(antes);
    });
    return encontrado;
}

void PanBorraFactura::eliminar() {
    const std::optional<QSqlRecord> fila = grilla_->filaActual();
    if (!fila) return;
    if (!Pregunta(QStringLiteral("Borra todo movimiento asociando a esta factura?"), this)) return;
    Intenta(this, [&] {
        const auto c = LeeComprobanteABorrar(almacen_, fila->value(QStringLiteral("idComprobante")).toLongLong());
        if (!c) throw Aviso(kComprobanteYaBorrado);
        BorraComprobante(almacen_, *c);
    });
    grilla_->refresca();
    vaAlDia(hoy_);
}

PanReImpresion::PanReImpresion(Almacen& almacen, SalidaInformes& salida, const QDate& hoy, QWidget* padre)
    : QDialog(padre), almacen_(almacen), salida_(salida) {
    setObjectName(QStringLiteral("panReImpresion"));
    setWindowTitle(QStringLiteral("Reimpresion de documentos"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    auto* fila = new QHBoxLayout;
    dt1_ = CampoFecha(QStringLiteral("dt1"), this);
    dt1_->setDate(hoy);
    fila->addWidget(new QLabel(QStringLiteral("Buscar en la fecha :"), this));
    fila->addWidget(dt1_);
    fila->addStretch(1);
    capa->addLayout(fila);
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("data1"));
    grilla_->fijaClave(QStringLiteral("idComprobante"));
    grilla_->fijaMascara(QStringLiteral("Total"), kMascara);
    grilla_->fijaTitulo(QStringLiteral("Tipo"), QStringLiteral("Comprobante"));
    capa->addWidget(grilla_, 1);
    optFiscal_ = new QCheckBox(QStringLiteral("Emite en Impresor Fiscal ?"), this);
    optFiscal_->setObjectName(QStringLiteral("optFiscal"));
    capa->addWidget(optFiscal_);
    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    auto* imprimir = boton("Command1", QStringLiteral("&Imprimir"), this);
    auto* salir = boton("Command2", QStringLiteral("&Salir"), this);
    botones->addWidget(imprimir);
    botones->addWidget(salir);
    capa->addLayout(botones);
    connect(imprimir, &QPushButton::clicked, this, &PanReImpresion::imprimir);
    connect(salir, &QPushButton::clicked, this, &QDialog::reject);
    connect(dt1_, &QDateEdit::dateChanged, this, &PanReImpresion::buscaFecha);
    resize(720, 480);
    CentrarVentana(this);
    buscaFecha();
}

void PanReImpresion::buscaFecha() {
    grilla_->fijaConsulta(QStringLiteral("SELECT Fecha, Tipo, Factura, Total, idComprobante FROM ConsultaTiposComprobantesPorFecha "
                                         "WHERE Fecha = ? ORDER BY idComprobante"),
                          {dt1_->date()});
}

void PanReImpresion::imprimir() {
    const std::optional<QSqlRecord> fila = grilla_->filaActual();
    if (!fila) return;
    const qint64 id = fila->value(QStringLiteral("idComprobante")).toLongLong();
    Intenta(this, [&] {
        if (optFiscal_->isChecked()) {
            // Queda pendiente para la impresora fiscal, sea el tipo que sea.
            almacen_.ejecuta(QStringLiteral("UPDATE Comprobantes SET ImpresoFiscal = 'N' WHERE idComprobante = ?"), {id});
            Mensaje(QStringLiteral("Enviando a la impresora fiscal ... "), QStringLiteral("Ok"), Icono::Informacion, this);
            return;
        }
        if (EsComprobanteDeTicket(almacen_, id)) return ImprimeTicket(almacen_, salida_.configuracion(), id);
        const QString plantilla = PlantillaDeReimpresion(almacen_, id, salida_.carpetaDatos());
        if (plantilla.isEmpty()) return;
        salida_.imprimeComprobante(plantilla, id);
    });
}

PanDetComprobante::PanDetComprobante(Almacen& almacen, qint64 idComprobante, QWidget* padre) : QDialog(padre) {
    setObjectName(QStringLiteral("panDetComprobante"));
    setWindowTitle(QStringLiteral("Detalle de un Comprobante"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    // Número, fecha y cliente son los mismos en todas las líneas: van una vez, arriba.
    auto* cabecera = new QLabel(this);
    cabecera->setObjectName(QStringLiteral("lblComprobante"));
    QSqlQuery q = almacen.consulta(QStringLiteral("SELECT Factura, Fecha, Nombre FROM ConsultaComprobantes "
                                                  "WHERE idComprobante = ? ORDER BY idDetalle"),
                                   {idComprobante});
    if (q.next()) {
        QStringList partes;
        for (int i = 0; i < 3; ++i) {
            const QVariant v = q.value(i);
            if (v.isNull() || v.toString().trimmed().isEmpty()) continue;
            partes << FechaGuardadaTexto(v).value_or(v.toString().trimmed());
        }
        cabecera->setText(partes.join(QStringLiteral("   ·   ")));
    }
    QFont negrita = cabecera->font();
    negrita.setBold(true);
    cabecera->setFont(negrita);
    capa->addWidget(cabecera);
    grilla_ = new Grilla(almacen, this);
    grilla_->setObjectName(QStringLiteral("DBGrid1"));
    grilla_->fijaConsulta(QStringLiteral("SELECT Codigo, Descripcion, Cantidad, Unitario, SubTotal "
                                         "FROM ConsultaComprobantes WHERE idComprobante = ? ORDER BY idDetalle"),
                          {idComprobante});
    grilla_->fijaTitulo(QStringLiteral("Codigo"), QStringLiteral("Código"));
    grilla_->fijaTitulo(QStringLiteral("Descripcion"), QStringLiteral("Descripción"));
    grilla_->fijaMascara(QStringLiteral("Unitario"), kMascara);
    grilla_->fijaMascara(QStringLiteral("SubTotal"), kMascara);
    capa->addWidget(grilla_, 1);
    auto* botones = new QDialogButtonBox(this);
    auto* aceptar = botones->addButton(QStringLiteral("Aceptar"), QDialogButtonBox::AcceptRole);
    aceptar->setObjectName(QStringLiteral("Command1"));
    connect(aceptar, &QPushButton::clicked, this, &QDialog::accept);
    capa->addWidget(botones);
    resize(760, 420);
    CentrarVentana(this);
}

} // namespace orv
