#include "maintenance/ui/pan_sel_path.h"

#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QDir>
#include <QFileSystemModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStorageInfo>
#include <QTreeView>
#include <QVBoxLayout>

namespace orv {

panSelPath::panSelPath(const QString& inicial, QWidget* padre) : QDialog(padre) {
    setObjectName(QStringLiteral("panSelPath"));
    setWindowTitle(QStringLiteral("Seleccionar ubicación"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);

    // Las unidades montadas: la carpeta personal, la raíz y los medios (pen drives, discos de red).
    unidades_ = new QComboBox(this);
    unidades_->setObjectName(QStringLiteral("Drive1"));
    unidades_->addItem(QDir::toNativeSeparators(QDir::homePath()), QDir::homePath());
    for (const QStorageInfo& v : QStorageInfo::mountedVolumes())
        if (v.isValid() && v.isReady() && !v.isReadOnly())
            unidades_->addItem(QDir::toNativeSeparators(v.rootPath()) + QStringLiteral("  ") + v.displayName(), v.rootPath());
    auto* fila = new QHBoxLayout;
    fila->addWidget(new QLabel(QStringLiteral("Unidad :"), this));
    fila->addWidget(unidades_, 1);
    capa->addLayout(fila);

    modelo_ = new QFileSystemModel(this);
    modelo_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    modelo_->setRootPath(QStringLiteral("/"));
    arbol_ = new QTreeView(this);
    arbol_->setObjectName(QStringLiteral("OsenXPTreeView1"));
    arbol_->setModel(modelo_);
    for (int c = 1; c < modelo_->columnCount(); ++c) arbol_->hideColumn(c);
    arbol_->header()->hide();
    capa->addWidget(arbol_, 1);

    estado_ = new QLabel(this);
    estado_->setObjectName(QStringLiteral("StatusBar1"));
    estado_->setFrameShape(QFrame::StyledPanel);
    estado_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    capa->addWidget(estado_);

    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    QPushButton* aceptar = BotonEnFila(botones, "Command1", QStringLiteral("&Aceptar"), this);
    QPushButton* cancelar = BotonEnFila(botones, "Command2", QStringLiteral("&Cancelar"), this);
    capa->addLayout(botones);

    connect(unidades_, &QComboBox::currentIndexChanged, this, &panSelPath::cambiaUnidad);
    connect(arbol_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& i) { seleccionaCarpeta(modelo_->filePath(i)); });
    connect(aceptar, &QPushButton::clicked, this, [this] {
        if (!ruta_.isEmpty()) accept();
    });
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);

    if (QFileInfo(inicial).isDir()) {
        arbol_->setRootIndex(modelo_->index(QStringLiteral("/")));
        const QModelIndex i = modelo_->index(inicial);
        arbol_->setCurrentIndex(i);
        arbol_->scrollTo(i);
        seleccionaCarpeta(inicial);
    } else {
        cambiaUnidad(0);
    }
    resize(520, 520);
    CentrarVentana(this);
}

void panSelPath::cambiaUnidad(int indice) {
    const QString raiz = unidades_->itemData(indice).toString();
    arbol_->setRootIndex(modelo_->index(raiz));
    seleccionaCarpeta(raiz);
}

void panSelPath::seleccionaCarpeta(const QString& carpeta) {
    ruta_ = QDir::cleanPath(carpeta);
    estado_->setText(QDir::toNativeSeparators(ruta_));
}

QString panSelPath::elige(const QString& inicial, QWidget* padre) {
    panSelPath p(inicial, padre);
    return p.exec() == QDialog::Accepted ? p.ruta() : QString();
}

} // namespace orv
