#include "maintenance/ui/pan_restaurar.h"

#include "maintenance/respaldo.h"
#include "maintenance/ui/pan_sel_path.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace orv {

panRestaurar::panRestaurar(Almacen& almacen, const Configuracion& conf, const Reloj& reloj, QWidget* padre)
    : DialogoConTarea(padre), almacen_(almacen), conf_(conf), reloj_(reloj) {
    setObjectName(QStringLiteral("panRestaurar"));
    setWindowTitle(QStringLiteral("Restaurar B.Datos"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 14, 16, 14);
    capa->addWidget(TituloDialogo("lblTitulo", QStringLiteral("Restaurar un respaldo"), this));

    auto* fila = new QHBoxLayout;
    carpeta_ = new QLineEdit(this);
    carpeta_->setObjectName(QStringLiteral("Text2"));
    carpeta_->setReadOnly(true);
    fila->addWidget(new QLabel(QStringLiteral("Carpeta :"), this));
    fila->addWidget(carpeta_, 1);
    buscar_ = BotonEnFila(fila, "Command3", QStringLiteral("Buscar ubicación..."), this);
    otro_ = BotonEnFila(fila, "Command4", QStringLiteral("Otro archivo..."), this);
    capa->addLayout(fila);

    lista_ = new QTreeWidget(this);
    lista_->setObjectName(QStringLiteral("lstRespaldos"));
    lista_->setRootIsDecorated(false);
    lista_->setHeaderLabels({QStringLiteral("Fecha"), QStringLiteral("Hora"), QStringLiteral("Tamaño"),
                             QStringLiteral("Base de datos"), QStringLiteral("Configuración"), QStringLiteral("Archivo")});
    lista_->header()->setStretchLastSection(true);
    for (const auto& [c, ancho] : {std::pair{0, 95}, {1, 75}, {2, 90}, {3, 110}, {4, 110}}) lista_->setColumnWidth(c, ancho);
    capa->addWidget(lista_, 1);

    conConfiguracion_ = new QCheckBox(QStringLiteral("Restaurar también la configuración de esta máquina"), this);
    conConfiguracion_->setObjectName(QStringLiteral("chkConfiguracion"));
    conConfiguracion_->setChecked(true);
    capa->addWidget(conConfiguracion_);
    etapa_ = new QLabel(QStringLiteral("Antes de restaurar se guarda un respaldo de la base de datos actual."), this);
    etapa_->setObjectName(QStringLiteral("lblEtapa"));
    etapa_->setWordWrap(true);
    avance_ = new QProgressBar(this);
    avance_->setObjectName(QStringLiteral("pbAvance"));
    avance_->setRange(0, 100);
    avance_->setValue(0);
    capa->addWidget(etapa_);
    capa->addWidget(avance_);

    auto* botones = new QHBoxLayout;
    restaurar_ = BotonEnFila(botones, "Command1", QStringLiteral("&Restaurar"), this, 120);
    botones->addStretch(1);
    salir_ = BotonEnFila(botones, "Command2", QStringLiteral("&Salir"), this);
    capa->addLayout(botones);

    connect(buscar_, &QPushButton::clicked, this, &panRestaurar::buscaUbicacion);
    connect(otro_, &QPushButton::clicked, this, &panRestaurar::otroArchivo);
    connect(restaurar_, &QPushButton::clicked, this, &panRestaurar::restaurar);
    connect(salir_, &QPushButton::clicked, this, &QDialog::reject);
    connect(lista_, &QTreeWidget::currentItemChanged, this, [this] { habilita(true); });

    llenaLista(CarpetaRespaldos(conf_));
    resize(820, 460);
    CentrarVentana(this);
}

void panRestaurar::agrega(const InfoRespaldo& r) {
    auto* item = new QTreeWidgetItem(lista_);
    item->setText(0, r.momento.toString(QStringLiteral("dd/MM/yyyy")));
    item->setText(1, r.momento.toString(QStringLiteral("HH:mm:ss")));
    item->setText(2, TamanoLegible(r.bytes));
    item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
    item->setText(3, r.tipo == TipoRespaldo::SQLite ? QStringLiteral("Archivo") : QStringLiteral("PostgreSQL"));
    item->setText(4, r.configuracion.isEmpty() ? QStringLiteral("No está") : QStringLiteral("Sí"));
    item->setText(5, QFileInfo(r.ruta).fileName());
    respaldos_ << r;
}

void panRestaurar::llenaLista(const QString& carpeta) {
    lista_->clear();
    respaldos_.clear();
    carpeta_->setText(QDir::toNativeSeparators(carpeta));
    for (const InfoRespaldo& r : RespaldosEnCarpeta(carpeta)) agrega(r);
    if (lista_->topLevelItemCount() > 0) lista_->setCurrentItem(lista_->topLevelItem(0));
    habilita(true);
}

void panRestaurar::buscaUbicacion() {
    const QString elegida = panSelPath::elige(QDir::fromNativeSeparators(carpeta_->text()), this);
    if (!elegida.isEmpty()) llenaLista(elegida);
}

void panRestaurar::otroArchivo() {
    const QString archivo = QFileDialog::getOpenFileName(this, QStringLiteral("Elegir un respaldo"),
                                                         QDir::fromNativeSeparators(carpeta_->text()));
    if (archivo.isEmpty()) return;
    // Un archivo que no es un respaldo de este programa se rechaza aquí mismo.
    Intenta(this, [&] {
        const InfoRespaldo r = ExaminaRespaldo(archivo);
        agrega(r);
        lista_->setCurrentItem(lista_->topLevelItem(lista_->topLevelItemCount() - 1));
    });
}

void panRestaurar::habilita(bool si) {
    const bool libre = si && !enCurso();
    restaurar_->setEnabled(libre && lista_->currentItem() && !restaurado_);
    buscar_->setEnabled(libre);
    otro_->setEnabled(libre);
    salir_->setEnabled(libre);
    lista_->setEnabled(libre);
    conConfiguracion_->setEnabled(libre);
}

void panRestaurar::restaurar() {
    const int fila = lista_->indexOfTopLevelItem(lista_->currentItem());
    if (fila < 0 || enCurso()) return;
    const InfoRespaldo r = respaldos_.at(fila);
    const QString cuando = r.momento.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    if (!PreguntaSiNo(QStringLiteral("La base de datos actual se reemplaza por el respaldo del %1 (%2).\n"
                                     "Antes se guarda un respaldo de la actual en %3.\n"
                                     "Los demás puestos deben salir del programa. ¿Restaura el respaldo?")
                          .arg(cuando, TamanoLegible(r.bytes), QDir::toNativeSeparators(CarpetaRespaldos(conf_))),
                      QStringLiteral("Pregunta"), Icono::Pregunta, this))
        return;
    Intenta(this, [&] {
        tarea_ = new Restauracion(almacen_, conf_, r, conConfiguracion_->isChecked(), reloj_.ahora(), this);
    });
    if (!tarea_) return;
    connect(tarea_, &Restauracion::etapa, etapa_, &QLabel::setText);
    connect(tarea_, &Restauracion::avance, avance_, &QProgressBar::setValue);
    connect(tarea_, &Restauracion::termino, this, [this, r](bool ok, const QString& detalle) { termina(ok, detalle, r); });
    habilita(false);
    setCursor(Qt::BusyCursor);
    tarea_->empieza();
}

void panRestaurar::termina(bool ok, const QString& detalle, const InfoRespaldo& r) {
    unsetCursor();
    const ResultadoRestauracion hecho = tarea_->resultado();
    tarea_->deleteLater();
    tarea_ = nullptr;
    restaurado_ = ok;
    habilita(true);
    avance_->setValue(ok ? 100 : 0);
    if (!ok) {
        etapa_->setText(QStringLiteral("No se restauró."));
        Mensaje(detalle, QStringLiteral("Error"), Icono::Stop, this);
        Q_EMIT restauracionTerminada(false);
        return;
    }
    qint64 filas = 0;
    for (qint64 n : hecho.filas) filas += n;
    QString texto = QStringLiteral("Se restauró el respaldo del %1: %2 tablas, %3 filas en total.")
                        .arg(r.momento.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss")))
                        .arg(hecho.filas.size())
                        .arg(filas);
    if (hecho.configuracion) texto += QStringLiteral("\nTambién volvió la configuración de esta máquina.");
    if (!hecho.respaldoPrevio.isEmpty())
        texto += QStringLiteral("\nLa base de datos reemplazada quedó en %1").arg(QDir::toNativeSeparators(hecho.respaldoPrevio));
    texto += QStringLiteral("\n\nEl programa se cerrará ahora; vuelva a abrirlo para trabajar con lo restaurado.");
    etapa_->setText(QStringLiteral("Restaurado."));
    Mensaje(texto, QStringLiteral("Listo"), Icono::Informacion, this);
    Q_EMIT restauracionTerminada(true);
    accept();
}

} // namespace orv
