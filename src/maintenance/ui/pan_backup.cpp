#include "maintenance/ui/pan_backup.h"

#include "maintenance/respaldo.h"
#include "maintenance/ui/pan_sel_path.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanBackup::PanBackup(Almacen& almacen, const Configuracion& conf, const Reloj& reloj, QWidget* padre)
    : DialogoConTarea(padre), almacen_(almacen), conf_(conf), reloj_(reloj) {
    setObjectName(QStringLiteral("PanBackup"));
    setWindowTitle(QStringLiteral("Backup del Sistema"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 14, 16, 14);
    capa->addWidget(TituloDialogo("lblTitulo", QStringLiteral("Backup del Sistema"), this));

    text1_ = new QLineEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setReadOnly(true);
    text1_->setText(almacen_.esPostgreSQL() ? almacen_.descripcion() + QStringLiteral(" (PostgreSQL)")
                                            : QDir::toNativeSeparators(almacen_.descripcion()));
    text2_ = new QLineEdit(this);
    text2_->setObjectName(QStringLiteral("Text2"));
    text2_->setPlaceholderText(QStringLiteral("Carpeta donde se guardan los dos archivos del respaldo"));
    const QString anterior = CarpetaRespaldos(conf_);
    if (QFileInfo(anterior).isDir()) text2_->setText(QDir::toNativeSeparators(anterior));
    buscar_ = new QPushButton(QStringLiteral("Buscar ubicación..."), this);
    buscar_->setObjectName(QStringLiteral("Command3"));
    buscar_->setAutoDefault(false);
    auto* destino = new QHBoxLayout;
    destino->addWidget(text2_, 1);
    destino->addWidget(buscar_);
    auto* campos = new QFormLayout;
    campos->addRow(QStringLiteral("Origen :"), text1_);
    campos->addRow(QStringLiteral("Destino :"), destino);
    capa->addLayout(campos);

    avance_ = new QProgressBar(this);
    avance_->setObjectName(QStringLiteral("pbAvance"));
    avance_->setRange(0, 100);
    avance_->setValue(0);
    hecho_ = new QLabel(this);
    hecho_->setObjectName(QStringLiteral("lblHecho"));
    hecho_->setWordWrap(true);
    hecho_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    capa->addWidget(avance_);
    capa->addWidget(hecho_);
    capa->addStretch(1);

    auto* botones = new QHBoxLayout;
    hacer_ = BotonEnFila(botones, "Command1", QStringLiteral("&Hacer Backup"), this, 130);
    botones->addStretch(1);
    salir_ = BotonEnFila(botones, "Command2", QStringLiteral("&Salir"), this);
    capa->addLayout(botones);

    connect(hacer_, &QPushButton::clicked, this, &PanBackup::hacerBackup);
    connect(buscar_, &QPushButton::clicked, this, &PanBackup::buscaUbicacion);
    connect(salir_, &QPushButton::clicked, this, &QDialog::reject);
    resize(640, 260);
    CentrarVentana(this);
}

void PanBackup::buscaUbicacion() {
    const QString elegida = panSelPath::elige(QDir::fromNativeSeparators(text2_->text()), this);
    if (!elegida.isEmpty()) text2_->setText(QDir::toNativeSeparators(elegida));
}

void PanBackup::hacerBackup() {
    if (enCurso()) return;
    const QString carpeta = QDir::fromNativeSeparators(text2_->text().trimmed());
    if (carpeta.isEmpty()) {
        Mensaje(QStringLiteral("Seleccione un destino !"), QStringLiteral("Error"), Icono::Stop, this);
        buscaUbicacion();
        return;
    }
    Intenta(this, [&] { respaldo_ = new Respaldo(almacen_, conf_, carpeta, reloj_.ahora(), this); });
    if (!respaldo_) return;
    connect(respaldo_, &Respaldo::avance, avance_, &QProgressBar::setValue);
    connect(respaldo_, &Respaldo::termino, this, &PanBackup::termina);
    hacer_->setEnabled(false);
    buscar_->setEnabled(false);
    salir_->setEnabled(false);
    text2_->setEnabled(false);
    hecho_->setText(QStringLiteral("Copiando..."));
    setCursor(Qt::BusyCursor);
    respaldo_->empieza();
}

void PanBackup::termina(bool ok, const QString& detalle) {
    unsetCursor();
    const ResultadoRespaldo r = respaldo_->resultado();
    respaldo_->deleteLater();
    respaldo_ = nullptr;
    buscar_->setEnabled(true);
    salir_->setEnabled(true);
    text2_->setEnabled(true);
    if (!ok) {
        hacer_->setEnabled(true);
        avance_->setValue(0);
        hecho_->clear();
        Mensaje(QStringLiteral("Ocurrieron errores al intentar copiar!\n") + detalle, QStringLiteral("Error"), Icono::Stop, this);
        Q_EMIT respaldoTerminado(false);
        return;
    }
    // Una visita de la pantalla, un respaldo; la carpeta queda para los respaldos automáticos.
    AnotaCarpetaRespaldos(conf_, QFileInfo(r.almacen).absolutePath());
    hecho_->setText(QStringLiteral("%1 (%2)\n%3")
                        .arg(QDir::toNativeSeparators(r.almacen), TamanoLegible(r.bytes),
                             QDir::toNativeSeparators(r.configuracion)));
    Mensaje(QStringLiteral("Listo, Operación realizada correctamente!"), QStringLiteral("Ok"), Icono::Informacion, this);
    Q_EMIT respaldoTerminado(true);
}

} // namespace orv
