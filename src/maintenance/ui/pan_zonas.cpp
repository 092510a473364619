#include "maintenance/ui/pan_zonas.h"

#include "maintenance/datos_locales.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlRecord>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orv {

// ---- Configuracion de red ----

PanConfRed::PanConfRed(const Configuracion& conf, EstadoAplicacion& estado, QWidget* padre)
    : QDialog(padre), conf_(conf), estado_(estado) {
    setObjectName(QStringLiteral("PanConfRed"));
    setWindowTitle(QStringLiteral("Configuracion de red"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* nota = new QLabel(QStringLiteral("Cada puesto de la red tiene su número: con él se separan las ventas y compras "
                                           "a medio cargar de cada terminal."),
                            this);
    nota->setWordWrap(true);
    capa->addWidget(nota);
    auto* f = new QFormLayout;
    txIdRed_ = new QLineEdit(this);
    txIdRed_->setObjectName(QStringLiteral("txIdRed"));
    txIdRed_->setMaximumWidth(120);
    txIdRed_->setAlignment(Qt::AlignRight);
    // Lo guardado; si no hay nada, el número con que trabaja esta terminal.
    const QString guardado = conf_.lee(clave::miscelaneas, QStringLiteral("IdRed"));
    txIdRed_->setText(guardado.isEmpty() ? QString::number(estado_.IdRed) : guardado);
    f->addRow(QStringLiteral("ID de la red :"), txIdRed_);
    capa->addLayout(f);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanConfRed::acepta);
    resize(380, sizeHint().height());
    CentrarVentana(this);
    txIdRed_->setFocus();
}

void PanConfRed::acepta() {
    qint32 id = 0;
    if (!Intenta(this, [&] { id = GrabaIdRed(conf_, txIdRed_->text()); })) {
        txIdRed_->setFocus();
        return;
    }
    estado_.IdRed = id;
    accept();
}

// ---- Zonas y Localidades ----

panZonas::panZonas(Almacen& almacen, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panZonas"));
    setWindowTitle(QStringLiteral("Zonas y Localidades"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    pestanias_ = new QTabWidget(this);
    pestanias_->setObjectName(QStringLiteral("SSTab1"));
    pestanias_->addTab(armaPestania(ListaZonas::Zonas, "Zona", QStringLiteral("Nueva zona :")), QStringLiteral("Zonas"));
    pestanias_->addTab(armaPestania(ListaZonas::Localidades, "Localidad", QStringLiteral("Nueva localidad :")),
                       QStringLiteral("Localidades"));
    capa->addWidget(pestanias_, 1);
    auto* pie = new QHBoxLayout;
    pie->addStretch(1);
    connect(BotonEnFila(pie, "cmdSalir", QStringLiteral("&Salir"), this), &QPushButton::clicked, this, &QDialog::accept);
    capa->addLayout(pie);
    resize(520, 480);
    CentrarVentana(this);
}

// Una pestaña: el campo para agregar, la grilla (el nombre se corrige en ella) y "&Eliminar".
QWidget* panZonas::armaPestania(ListaZonas l, const char* sufijo, const QString& rotulo) {
    auto* w = new QWidget(pestanias_);
    auto* capa = new QVBoxLayout(w);
    auto* fila = new QHBoxLayout;
    auto* nuevo = new QLineEdit(w);
    nuevo->setObjectName(QStringLiteral("txNueva%1").arg(QLatin1String(sufijo)));
    fila->addWidget(new QLabel(rotulo, w));
    fila->addWidget(nuevo, 1);
    auto* agregar = BotonEnFila(fila, QStringLiteral("cmdAgregar%1").arg(QLatin1String(sufijo)).toLatin1().constData(),
                                QStringLiteral("&Agregar"), w);
    capa->addLayout(fila);
    auto* g = new Grilla(almacen_, w);
    g->setObjectName(QStringLiteral("DBGrid%1").arg(QLatin1String(sufijo)));
    g->permiteAgrupar(false);
    g->fijaTituloImpresion(pestanias_->count() == 0 ? QStringLiteral("Zonas") : QStringLiteral("Localidades"));
    g->fijaClave(ClaveListaZonas(l));
    g->fijaTitulo(ClaveListaZonas(l), QStringLiteral("Nro."));
    g->fijaAnchosIniciales({{"idZona", 60}, {"idLocalidad", 60}, {"Zona", 320}, {"Localidad", 320}});
    // Un nombre que no sirve se dice y la celda vuelve al que tenía.
    g->fijaEditables({NombreListaZonas(l)}, [this, l](const QSqlRecord& f, const QString&, const QVariant& valor) {
        CambiaEnLista(almacen_, l, f.value(ClaveListaZonas(l)).toLongLong(), valor.toString());
    });
    Intenta(this, [&] { g->fijaConsulta(ConsultaListaZonas(l)); });
    capa->addWidget(g, 1);
    auto* pie = new QHBoxLayout;
    auto* eliminar = BotonEnFila(pie, QStringLiteral("cmdEliminar%1").arg(QLatin1String(sufijo)).toLatin1().constData(),
                                 QStringLiteral("&Eliminar"), w);
    pie->addStretch(1);
    auto* nota = new QLabel(QStringLiteral("Doble clic en un nombre para corregirlo."), w);
    nota->setEnabled(false);
    pie->addWidget(nota);
    capa->addLayout(pie);
    grillas_[size_t(l)] = g;
    nuevos_[size_t(l)] = nuevo;
    connect(agregar, &QPushButton::clicked, this, [this, l] { agrega(l); });
    connect(nuevo, &QLineEdit::returnPressed, this, [this, l] { agrega(l); });
    connect(eliminar, &QPushButton::clicked, this, [this, l] { elimina(l); });
    return w;
}

void panZonas::agrega(ListaZonas l) {
    QLineEdit* campo = nuevos_[size_t(l)];
    Grilla* g = grillas_[size_t(l)];
    if (Intenta(this, [&] {
            AgregaEnLista(almacen_, l, campo->text());
            g->refresca();
        }))
        campo->clear();
    campo->setFocus();
}

void panZonas::elimina(ListaZonas l) {
    Grilla* g = grillas_[size_t(l)];
    const auto id = g->claveActual();
    if (!id || id->isNull()) return;
    if (!PreguntaSiNo(QStringLiteral("Elimina?"), QStringLiteral("Atención"), Icono::Pregunta, this)) return;
    Intenta(this, [&] {
        BorraDeLista(almacen_, l, id->toLongLong());
        g->refresca();
    });
}

// ---- Situaciones de IVA ----

panEdSitIva::panEdSitIva(Almacen& almacen, std::optional<qint64> idTipoIva, QWidget* padre)
    : QDialog(padre), almacen_(almacen), id_(idTipoIva) {
    setObjectName(QStringLiteral("panEdSitIva"));
    setWindowTitle(id_ ? QStringLiteral("Situación impositiva") : QStringLiteral("Nueva situación impositiva"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(20, 18, 20, 14);
    auto* f = new QFormLayout;
    txNombre_ = new QLineEdit(this);
    txNombre_->setObjectName(QStringLiteral("txNombre"));
    txNombre_->setMaxLength(50);
    txNombre_->setMinimumWidth(260);
    txClave_ = new QLineEdit(this);
    txClave_->setObjectName(QStringLiteral("txClave"));
    txClave_->setMaxLength(1);
    txClave_->setMaximumWidth(40);
    f->addRow(QStringLiteral("Nombre :"), txNombre_);
    f->addRow(QStringLiteral("Clave Fiscal :"), txClave_);
    capa->addLayout(f);
    auto* nota = new QLabel(QStringLiteral("La clave fiscal es la letra de esta situación en la impresora fiscal."), this);
    nota->setEnabled(false);
    capa->addWidget(nota);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &panEdSitIva::acepta);
    if (id_)
        Intenta(this, [this] {
            if (const auto s = LeeSituacionIva(almacen_, *id_)) {
                txNombre_->setText(s->nombre);
                txClave_->setText(s->fiscal);
            }
        });
    adjustSize();
    CentrarVentana(this);
    txNombre_->setFocus();
}

void panEdSitIva::acepta() {
    if (Intenta(this, [this] { id_ = GuardaSituacionIva(almacen_, id_, {txNombre_->text(), txClave_->text()}); })) {
        accept();
        return;
    }
    txNombre_->setFocus();
}

panSitIvas::panSitIvas(Almacen& almacen, QWidget* padre)
    : DialogoLista(almacen, QStringLiteral("panSitIvas"), QStringLiteral("Situaciones frente al IVA"),
                   {"cmdNueva", "cmdEditar", "cmdBorrar"}, nullptr, padre) {
    grilla()->fijaClave(QStringLiteral("idTipoIva"));
    grilla()->fijaTitulo(QStringLiteral("idTipoIva"), QStringLiteral("Nro."));
    grilla()->fijaTitulo(QStringLiteral("TipoIva"), QStringLiteral("Situación"));
    grilla()->fijaTitulo(QStringLiteral("Fiscal"), QStringLiteral("Clave fiscal"));
    grilla()->fijaAnchosIniciales({{"idTipoIva", 60}, {"TipoIva", 260}, {"Fiscal", 90}});
    Intenta(this, [this] { grilla()->fijaConsulta(ConsultaSituacionesIva()); });
    resize(520, 400);
    CentrarVentana(this);
}

bool panSitIvas::edita(std::optional<qint64> id) {
    panEdSitIva edicion(almacen_, id, this);
    return edicion.exec() == QDialog::Accepted;
}

void panSitIvas::borraFila(qint64 id) { BorraSituacionIva(almacen_, id); }

} // namespace orv
