#include "cash/ui/pan_corte_caja.h"

#include "store/entrada.h"
#include "store/formato.h"
#include "store/rutinas.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QTextDocument>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kTodos = QStringLiteral("<Todos>");
constexpr int kColContado = 2;

QTableWidget* lista(const char* nombre, const QStringList& titulos, QWidget* padre) {
    auto* t = new QTableWidget(0, int(titulos.size()), padre);
    t->setObjectName(QString::fromLatin1(nombre));
    t->setHorizontalHeaderLabels(titulos);
    t->verticalHeader()->hide();
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    t->setSelectionBehavior(QAbstractItemView::SelectRows);
    t->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    t->setMinimumHeight(120);
    return t;
}

QLineEdit* totalCorte(const char* nombre, QWidget* padre) {
    auto* t = new QLineEdit(padre);
    t->setObjectName(QString::fromLatin1(nombre));
    t->setReadOnly(true);
    t->setAlignment(Qt::AlignRight);
    t->setMaximumWidth(140);
    return t;
}

QTableWidgetItem* celda(const QString& texto, bool derecha, bool editable = false) {
    auto* c = new QTableWidgetItem(texto);
    if (derecha) c->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (!editable) c->setFlags(c->flags() & ~Qt::ItemIsEditable);
    return c;
}

} // namespace

panCorteCaja::panCorteCaja(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), reloj_(reloj) {
    setObjectName(QStringLiteral("panCorteCaja"));
    setWindowTitle(QStringLiteral("Corte diario de caja"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    auto* arriba = new QHBoxLayout;
    dt1_ = CampoFecha(QStringLiteral("dt1"), this);
    dt1_->setDate(reloj_.hoy());
    cboUsuario_ = new QComboBox(this);
    cboUsuario_->setObjectName(QStringLiteral("cboUsuario"));
    cboUsuario_->setMinimumWidth(200);
    cboUsuario_->addItem(kTodos, 0);
    LlenaCombo(cboUsuario_, almacen_, ConsultaUsuariosCorte(), {}, QStringLiteral("NombreCompleto"), QStringLiteral("idUsuario"));
    cboUsuario_->setCurrentIndex(0);
    auto* ok = new QPushButton(QStringLiteral("OK !"), this);
    ok->setObjectName(QStringLiteral("OsenXPButton1"));
    ok->setDefault(true);
    for (const auto& [texto, campo] : {std::pair<const char*, QWidget*>{"Fecha :", dt1_}, {"Usuario :", cboUsuario_}}) {
        arriba->addWidget(new QLabel(QString::fromLatin1(texto), this));
        arriba->addWidget(campo);
        arriba->addSpacing(10);
    }
    arriba->addWidget(ok);
    arriba->addStretch(1);
    capa->addLayout(arriba);
    capa->addWidget(armaListas(), 1);
    capa->addWidget(armaArqueo(), 1);

    auto* pie = new QHBoxLayout;
    auto* imprimir = new QPushButton(QStringLiteral("Imprimir"), this);
    imprimir->setObjectName(QStringLiteral("OsenXPButton2"));
    cerrar_ = new QPushButton(QStringLiteral("Cerrar Ejercicio del día"), this);
    cerrar_->setObjectName(QStringLiteral("OsenXPButton4"));
    cerrar_->setEnabled(false);
    auto* salir = new QPushButton(QStringLiteral("Salir"), this);
    salir->setObjectName(QStringLiteral("OsenXPButton3"));
    for (QPushButton* b : {imprimir, cerrar_, salir}) b->setAutoDefault(false);
    pie->addWidget(imprimir);
    pie->addWidget(cerrar_);
    pie->addStretch(1);
    pie->addWidget(salir);
    capa->addLayout(pie);

    connect(ok, &QPushButton::clicked, this, &panCorteCaja::calcula);
    connect(imprimir, &QPushButton::clicked, this, &panCorteCaja::imprime);
    connect(cerrar_, &QPushButton::clicked, this, &panCorteCaja::cierra);
    connect(salir, &QPushButton::clicked, this, &QDialog::reject);
    eligeImpresora = [this](QPrinter& p) {
        QPrintDialog dialogo(&p, this);
        return dialogo.exec() == QDialog::Accepted;
    };
    resize(760, 640);
    CentrarVentana(this);
}

// Las dos listas del día con sus totales.
QWidget* panCorteCaja::armaListas() {
    auto* zona = new QWidget(this);
    auto* fila = new QHBoxLayout(zona);
    fila->setContentsMargins(0, 0, 0, 0);
    auto* ventas = new QGroupBox(QStringLiteral("Ventas por Valores"), zona);
    auto* cv = new QVBoxLayout(ventas);
    listVentas_ = lista("listVentas", {QStringLiteral("Forma de pago"), QStringLiteral("Total")}, ventas);
    txTotVentas_ = totalCorte("txTotVentas", ventas);
    auto* fv = new QFormLayout;
    fv->addRow(QStringLiteral("Total ventas :"), txTotVentas_);
    cv->addWidget(listVentas_, 1);
    cv->addLayout(fv);
    auto* caja = new QGroupBox(QStringLiteral("Movimientos por cuenta"), zona);
    auto* cc = new QVBoxLayout(caja);
    listcaja_ = lista("listcaja", {QStringLiteral("Cuenta"), QStringLiteral("Ingresos"), QStringLiteral("Egresos")}, caja);
    txTotEntrada_ = totalCorte("txTotEntrada", caja);
    txTotSalida_ = totalCorte("txTotSalida", caja);
    auto* ft = new QHBoxLayout;
    ft->addStretch(1);
    ft->addWidget(new QLabel(QStringLiteral("Totales"), caja));
    ft->addWidget(txTotEntrada_);
    ft->addWidget(txTotSalida_);
    cc->addWidget(listcaja_, 1);
    cc->addLayout(ft);
    fila->addWidget(ventas, 2);
    fila->addWidget(caja, 3);
    return zona;
}

QWidget* panCorteCaja::armaArqueo() {
    auto* grupo = new QGroupBox(QStringLiteral("Arqueo: lo contado en la caja"), this);
    auto* c = new QVBoxLayout(grupo);
    tablaArqueo_ = lista("tablaArqueo",
                         {QStringLiteral("Forma de pago"), QStringLiteral("Esperado"), QStringLiteral("Contado"),
                          QStringLiteral("Diferencia")},
                         grupo);
    tablaArqueo_->setEditTriggers(QAbstractItemView::AllEditTriggers);
    auto* nota = new QLabel(QStringLiteral("Escriba lo contado de cada forma de pago (opcional); se guarda con el cierre."), grupo);
    nota->setEnabled(false);
    c->addWidget(tablaArqueo_, 1);
    c->addWidget(nota);
    connect(tablaArqueo_, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* i) {
        if (i->column() == kColContado) cambiaContado(i->row());
    });
    return grupo;
}

std::optional<qint64> panCorteCaja::usuarioElegido() const {
    if (cboUsuario_->currentIndex() < 0 || cboUsuario_->currentText() == kTodos) return std::nullopt;
    return cboUsuario_->currentData().toLongLong();
}

void panCorteCaja::calcula() {
    const QDate d = dt1_->date();
    const std::optional<qint64> u = usuarioElegido();
    if (!Intenta(this, [&] {
            resumen_ = ResumenDelDia(almacen_, d, u);
            esperado_ = ArqueoEsperado(almacen_, d, u);
        }))
        return;
    calculado_ = true;
    muestraResumen();
    // Un día cerrado muestra lo que se contó al cerrarlo, si se contó.
    QList<LineaArqueo> guardado;
    if (!resumen_.abierta) Intenta(this, [&] { guardado = ArqueoGuardado(almacen_, d); });
    if (!guardado.isEmpty()) esperado_ = guardado;
    muestraArqueo(esperado_, resumen_.abierta);
    // Las cifras quedan a la vista; un día cerrado lo dice y no se cierra de nuevo.
    cerrar_->setEnabled(Intenta(this, [&] { ExigeFechaAbierta(almacen_, d); }));
}

void panCorteCaja::muestraResumen() {
    const QString& mascara = estado_.MascaraMoneda;
    const auto texto = [&](const std::optional<Dinero>& v) { return v ? FormatoMoneda(*v, mascara) : QString(); };
    listVentas_->setRowCount(0);
    for (const VentasPorForma& v : resumen_.ventas) {
        const int f = listVentas_->rowCount();
        listVentas_->insertRow(f);
        listVentas_->setItem(f, 0, celda(v.formaPago, false));
        listVentas_->setItem(f, 1, celda(FormatoMoneda(v.total, mascara), true));
    }
    listcaja_->setRowCount(0);
    for (const MovimientosPorCuenta& c : resumen_.cuentas) {
        const int f = listcaja_->rowCount();
        listcaja_->insertRow(f);
        listcaja_->setItem(f, 0, celda(c.cuenta, false));
        listcaja_->setItem(f, 1, celda(FormatoMoneda(c.ingresos, mascara), true));
        listcaja_->setItem(f, 2, celda(FormatoMoneda(c.egresos, mascara), true));
    }
    txTotVentas_->setText(texto(resumen_.totalVentas));
    txTotEntrada_->setText(texto(resumen_.totalEntrada));
    txTotSalida_->setText(texto(resumen_.totalSalida));
}

void panCorteCaja::muestraArqueo(const QList<LineaArqueo>& lineas, bool editable) {
    const QSignalBlocker quieto(tablaArqueo_);
    tablaArqueo_->setRowCount(0);
    for (const LineaArqueo& l : lineas) {
        const int f = tablaArqueo_->rowCount();
        tablaArqueo_->insertRow(f);
        tablaArqueo_->setItem(f, 0, celda(l.formaPago, false));
        tablaArqueo_->setItem(f, 1, celda(FormatoMoneda(l.esperado, estado_.MascaraMoneda), true));
        tablaArqueo_->setItem(f, kColContado, celda(l.contado ? Formato(*l.contado, QStringLiteral("0.00")) : QString(), true, editable));
        tablaArqueo_->setItem(f, 3, celda(QString(), true));
        cambiaContado(f);
    }
}

// La diferencia de una línea al escribir lo contado; un importe que no se lee lo dice ahí mismo.
void panCorteCaja::cambiaContado(int fila) {
    if (fila < 0 || fila >= esperado_.size() || !tablaArqueo_->item(fila, kColContado)) return;
    const QSignalBlocker quieto(tablaArqueo_);
    const QString escrito = tablaArqueo_->item(fila, kColContado)->text().trimmed();
    const Dinero esperado = esperado_[fila].esperado;
    QTableWidgetItem* dif = tablaArqueo_->item(fila, 3);
    dif->setForeground(QBrush());
    if (escrito.isEmpty()) {
        dif->setText(QString());
        return;
    }
    const std::optional<Dinero> contado = LeeImporte(escrito);
    if (!contado) {
        dif->setText(QStringLiteral("mal escrito"));
        dif->setForeground(Qt::red);
        return;
    }
    const Dinero d = *contado - esperado;
    dif->setText(FormatoMoneda(d, estado_.MascaraMoneda));
    if (d < Dinero()) dif->setForeground(Qt::red);
}

QList<LineaArqueo> panCorteCaja::leeArqueo() const {
    QList<LineaArqueo> r = esperado_;
    for (int f = 0; f < r.size() && f < tablaArqueo_->rowCount(); ++f) {
        const QString escrito = tablaArqueo_->item(f, kColContado)->text().trimmed();
        if (!escrito.isEmpty()) r[f].contado = ExigeImporte(escrito, QStringLiteral("Contado ") + r[f].formaPago);
    }
    return r;
}

void panCorteCaja::cierra() {
    const QDate d = dt1_->date();
    QList<LineaArqueo> arqueo;
    if (!Intenta(this, [&] { arqueo = leeArqueo(); })) return;
    const bool si = PreguntaSiNo(QStringLiteral("Está seguro de cerrar el ejercicio para el día ") + FechaTexto(d) +
                                     QStringLiteral(" ?.\nÉsto no permitirá registrar movimientos de caja ni ventas por el día de hoy.\n"
                                                    "Desea continuar ?"),
                                 QStringLiteral("Atención"), Icono::Exclamacion, this);
    cerrar_->setEnabled(false);
    if (!si) return;
    bool cerrado = false;
    if (!Intenta(this, [&] { cerrado = CierraDia(almacen_, reloj_.hoy(), d, arqueo, estado_.idUsuarioActual); })) return;
    if (!cerrado)
        Mensaje(QStringLiteral("El día ") + FechaTexto(reloj_.hoy()) + QStringLiteral(" ya estaba cerrado (desde otro puesto)."),
                QStringLiteral("Atención"), Icono::Exclamacion, this);
}

void panCorteCaja::imprime() {
    if (!calculado_) calcula();
    QPrinter impresora(QPrinter::HighResolution);
    if (!eligeImpresora || !eligeImpresora(impresora)) return;
    imprimeEn(impresora);
}

void panCorteCaja::imprimeEn(QPrinter& impresora) {
    QList<LineaArqueo> arqueo = esperado_;
    // Lo contado que se lee entra en la hoja; lo mal escrito queda afuera.
    for (int f = 0; f < arqueo.size() && f < tablaArqueo_->rowCount(); ++f)
        arqueo[f].contado = LeeImporte(tablaArqueo_->item(f, kColContado)->text().trimmed());
    QTextDocument hoja;
    hoja.setHtml(HojaCorteHtml(resumen_, cboUsuario_->currentText(), arqueo, estado_.MascaraMoneda));
    hoja.print(&impresora);
}

} // namespace orv
