#include "access/ui/pan_niveles.h"

#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orv {

PanNiveles::PanNiveles(Almacen& almacen, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panNiveles"));
    setWindowTitle(QStringLiteral("Niveles de acceso"));
    setModal(true);

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 16, 16, 12);
    auto* cuerpo = new QHBoxLayout;
    cuerpo->setSpacing(14);
    capa->addLayout(cuerpo, 1);

    lista_ = new QListWidget(this);
    lista_->setObjectName(QStringLiteral("DBGrid1"));
    lista_->setMinimumWidth(190);
    lista_->setMaximumWidth(240);
    cuerpo->addWidget(lista_);

    auto* derecha = new QVBoxLayout;
    derecha->setSpacing(10);
    cuerpo->addLayout(derecha, 1);
    auto* fila = new QHBoxLayout;
    fila->addWidget(new QLabel(QStringLiteral("Nombre :"), this));
    txNombre_ = new QLineEdit(this);
    txNombre_->setObjectName(QStringLiteral("txNombre"));
    fila->addWidget(txNombre_, 1);
    derecha->addLayout(fila);
    chkSuper_ = new QCheckBox(QStringLiteral("Éste es un nivel supervisor ?"), this);
    chkSuper_->setObjectName(QStringLiteral("chkUsuarioSuper"));
    derecha->addWidget(chkSuper_);

    pestanias_ = armaPestanias();
    derecha->addWidget(pestanias_, 1);

    capa->addLayout(armaBotones());
    connect(lista_, &QListWidget::currentRowChanged, this, &PanNiveles::filaCambiada);

    recarga(std::nullopt);
    resize(760, 420);
    CentrarVentana(this);
}

// Una pestaña por grupo de permisos, con sus casillas en columnas de ocho.
QTabWidget* PanNiveles::armaPestanias() {
    auto* pestanias = new QTabWidget(this);
    pestanias->setObjectName(QStringLiteral("SSTab1"));
    for (Pestania p : {Pestania::IngresoCambios, Pestania::Eliminar, Pestania::Visualizar, Pestania::Otros}) {
        auto* hoja = new QWidget(pestanias);
        auto* grilla = new QGridLayout(hoja);
        grilla->setContentsMargins(14, 14, 14, 14);
        grilla->setHorizontalSpacing(24);
        grilla->setVerticalSpacing(6);
        int n = 0;
        for (const Permiso& per : Permisos()) {
            if (per.pestania != p) continue;
            auto* c = new QCheckBox(per.leyenda, hoja);
            c->setObjectName(QStringLiteral("chk") + per.columna);
            casillas_.insert(per.columna.toLower(), c);
            grilla->addWidget(c, n % 8, n / 8);
            ++n;
        }
        grilla->setRowStretch(8, 1);
        grilla->setColumnStretch(2, 1);
        pestanias->addTab(hoja, tituloPestania(p));
    }
    return pestanias;
}

QHBoxLayout* PanNiveles::armaBotones() {
    auto boton = [this](const QString& texto, const char* nombre) {
        auto* b = new QPushButton(texto, this);
        b->setObjectName(QLatin1String(nombre));
        b->setAutoDefault(false);
        return b;
    };
    auto* nuevo = boton(QStringLiteral("Nuevo Nivel"), "Command1");
    auto* eliminar = boton(QStringLiteral("Eliminar"), "Command2");
    auto* guardar = boton(QStringLiteral("Guardar cambios"), "Command3");
    auto* cerrar = boton(QStringLiteral("Cerrar"), "cmdCerrar");
    connect(nuevo, &QPushButton::clicked, this, &PanNiveles::nuevoNivel);
    connect(eliminar, &QPushButton::clicked, this, &PanNiveles::eliminaNivel);
    connect(guardar, &QPushButton::clicked, this, [this] { guardaCambios(); });
    connect(cerrar, &QPushButton::clicked, this, &PanNiveles::accept);
    auto* botones = new QHBoxLayout;
    botones->addWidget(nuevo);
    botones->addWidget(eliminar);
    botones->addStretch(1);
    botones->addWidget(guardar);
    botones->addWidget(cerrar);
    return botones;
}

std::optional<qint64> PanNiveles::nivelActual() const {
    const QListWidgetItem* it = lista_->currentItem();
    if (!it) return std::nullopt;
    return it->data(Qt::UserRole).toLongLong();
}

void PanNiveles::recarga(std::optional<qint64> seleccionar) {
    cambiando_ = true;
    lista_->clear();
    Intenta(this, [&] {
        for (const NivelEnLista& n : ListaNiveles(almacen_)) {
            auto* it = new QListWidgetItem(n.nombre, lista_);
            it->setData(Qt::UserRole, n.idNivel);
            if (seleccionar && *seleccionar == n.idNivel) lista_->setCurrentItem(it);
        }
    });
    if (!lista_->currentItem() && lista_->count() > 0) lista_->setCurrentRow(0);
    cambiando_ = false;
    if (const auto id = nivelActual())
        muestra(*id);
    else {
        cargado_.reset();
        txNombre_->clear();
    }
}

void PanNiveles::muestra(qint64 idNivel) {
    bool leido = false;
    cargado_.reset();
    if (Intenta(this, [&] { cargado_ = LeeNivel(almacen_, idNivel); })) leido = true;
    const bool hay = cargado_.has_value();
    txNombre_->setText(hay ? cargado_->nombre : QString());
    chkSuper_->setChecked(hay && cargado_->usuarioSuper);
    for (const Permiso& p : Permisos()) casilla(p.columna)->setChecked(hay && cargado_->permisos.value(p.columna));
    if (leido && !hay) {
        // Otro puesto lo borró después de llenarse la lista: nada que editar ahí.
        MensajeError(QStringLiteral("No encontrado! Otro puesto borró este nivel de acceso."), this);
        recarga(std::nullopt);
    }
}

DatosNivel PanNiveles::enPantalla() const {
    DatosNivel d;
    if (cargado_) d.idNivel = cargado_->idNivel;
    d.nombre = txNombre_->text();
    d.usuarioSuper = chkSuper_->isChecked();
    for (const Permiso& p : Permisos()) d.permisos.insert(p.columna, casilla(p.columna)->isChecked());
    return d;
}

bool PanNiveles::guardaCambios() {
    if (!cargado_) return true;
    const DatosNivel d = enPantalla();
    if (d.nombre == cargado_->nombre && d.usuarioSuper == cargado_->usuarioSuper && d.permisos == cargado_->permisos)
        return true;
    if (Intenta(this, [&] { GuardaNivel(almacen_, d); })) {
        cargado_ = d;
        if (QListWidgetItem* it = lista_->currentItem(); it && it->data(Qt::UserRole).toLongLong() == d.idNivel)
            it->setText(d.nombre.trimmed());
        return true;
    }
    // Un nombre vacío o repetido se corrige en el editor. Pero si otro puesto borró el nivel, lo
    // pendiente ya no tiene dónde guardarse: el aviso ya se dio una vez, se descarta y se sigue.
    bool existe = true;
    if (!Intenta(this, [&] { existe = LeeNivel(almacen_, d.idNivel).has_value(); }) || existe) return false;
    olvidaBorrado();
    return true;
}

void PanNiveles::olvidaBorrado() {
    const qint64 borrado = cargado_->idNivel;
    cargado_.reset();
    const auto actual = nivelActual();
    recarga(actual && *actual != borrado ? actual : std::nullopt);
}

void PanNiveles::filaCambiada() {
    if (cambiando_) return;
    const std::optional<qint64> anterior = cargado_ ? std::optional<qint64>(cargado_->idNivel) : std::nullopt;
    if (!guardaCambios() && anterior) {
        // No se pudo grabar: se vuelve al nivel que se estaba editando, con lo tipeado.
        cambiando_ = true;
        for (int i = 0; i < lista_->count(); ++i)
            if (lista_->item(i)->data(Qt::UserRole).toLongLong() == *anterior) lista_->setCurrentRow(i);
        cambiando_ = false;
        return;
    }
    if (const auto id = nivelActual(); id && (!cargado_ || cargado_->idNivel != *id)) muestra(*id);
}

void PanNiveles::nuevoNivel() {
    if (!guardaCambios()) return;
    bool ok = false;
    const QString nombre = QInputDialog::getText(this, QStringLiteral("Nuevo Nivel"),
                                                 QStringLiteral("Ingrese el nombre del nivel de acceso"),
                                                 QLineEdit::Normal, QString(), &ok);
    if (!ok || nombre.trimmed().isEmpty()) return;
    Intenta(this, [&] {
        const auto id = NuevoNivel(almacen_, nombre);
        recarga(id ? id : nivelActual());
    });
}

void PanNiveles::eliminaNivel() {
    const auto id = nivelActual();
    if (!id) return;
    Intenta(this, [&] {
        if (NivelEnUso(almacen_, *id)) {
            MensajeError(QStringLiteral("Existen usuarios ya asignados a éste nivel!"), this);
            return;
        }
        if (!PreguntaSiNo(QStringLiteral("ATENCION! Elimina éste nivel de usuario?"), QStringLiteral("Eliminar"),
                          Icono::Pregunta, this))
            return;
        EliminaNivel(almacen_, *id);
        cargado_.reset();
        recarga(std::nullopt);
    });
}

void PanNiveles::done(int r) {
    if (!guardaCambios()) return;
    QDialog::done(r);
}

} // namespace orv
