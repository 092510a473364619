#include "widgets/grilla.h"
#include "widgets/grilla_interna.h"

#include "reports/exporta.h"
#include "widgets/mensajes.h"
#include "widgets/previsualiza.h"
#include "store/aviso.h"
#include "store/formato.h"

#include <QApplication>
#include <algorithm>
#include <QDrag>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QSaveFile>
#include <QScopeGuard>
#include <QSqlError>
#include <QSqlQuery>
#include <QStackedWidget>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace orv {

using namespace grilla;

namespace {
const QString kMarcoConFoco = QStringLiteral("QTableView, QTreeWidget { border: 2px solid #2f7bd1; }");
}

Grilla::Grilla(Almacen& a, QWidget* padre)
    : QWidget(padre), almacen_(a), modelo_(new ModeloGrilla(this)) {
    auto* l = new QVBoxLayout(this);
    l->setContentsMargins(0, 0, 0, 0);
    l->setSpacing(4);
    connect(modelo_, &ModeloGrilla::edicionPedida, this, [this](int fila, const QString& campo, const QVariant& valor) {
        if (!grabaCelda_) return;
        const QSqlRecord r = modelo_->registro(fila);
        // Se graba y se refresca cuando termina la edición, no dentro de ella.
        QTimer::singleShot(0, this, [this, r, campo, valor] {
            // Lo que se rechaza se dice, y al refrescar la celda vuelve a su valor.
            Intenta(this, [&] { grabaCelda_(r, campo, valor); });
            refresca();
            Q_EMIT filaEditada();
        });
    });
    modelo_->fijaLectorVecino([this](qint64 numero, const ModeloGrilla::Pagina* anterior,
                                     const ModeloGrilla::Pagina* siguiente) { return leeVecina(numero, anterior, siguiente); });
    banda_ = new BandaAgrupar(*this);
    pila_ = new QStackedWidget(this);
    l->addWidget(banda_);
    l->addWidget(pila_, 1);

    tabla_ = new QTableView(this);
    tabla_->setObjectName(QStringLiteral("tablaGrilla"));
    tabla_->setModel(modelo_);
    tabla_->setAlternatingRowColors(true);
    tabla_->setShowGrid(false);
    tabla_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabla_->setSelectionMode(QAbstractItemView::SingleSelection);
    tabla_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tabla_->setWordWrap(false);
    tabla_->setContextMenuPolicy(Qt::CustomContextMenu);
    tabla_->verticalHeader()->setVisible(false);
    tabla_->verticalHeader()->setDefaultSectionSize(tabla_->fontMetrics().height() + 8);
    tabla_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    auto* enc = tabla_->horizontalHeader();
    enc->setSectionsMovable(true);
    enc->setHighlightSections(false);
    enc->setStretchLastSection(true);
    enc->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    enc->setContextMenuPolicy(Qt::CustomContextMenu);
    enc->viewport()->installEventFilter(this);
    pila_->addWidget(tabla_);

    arbol_ = new QTreeWidget(this);
    arbol_->setObjectName(QStringLiteral("arbolGrilla"));
    arbol_->setAlternatingRowColors(true);
    arbol_->setUniformRowHeights(true);
    arbol_->setSelectionMode(QAbstractItemView::SingleSelection);
    arbol_->setContextMenuPolicy(Qt::CustomContextMenu);
    arbol_->header()->setStretchLastSection(true);
    pila_->addWidget(arbol_);

    connect(tabla_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& p) { menuContextual(tabla_->viewport()->mapToGlobal(p)); });
    connect(arbol_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& p) { menuContextual(arbol_->viewport()->mapToGlobal(p)); });
    connect(enc, &QWidget::customContextMenuRequested, this, &Grilla::menuEncabezado);
    connect(tabla_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { Q_EMIT filaCambiada(); });
    connect(arbol_, &QTreeWidget::currentItemChanged, this, [this] { Q_EMIT filaCambiada(); });
    connect(tabla_, &QAbstractItemView::activated, this, [this] { Q_EMIT filaActivada(); });
    connect(arbol_, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* it) {
        if (it && it->parent()) Q_EMIT filaActivada();
    });
    connect(arbol_, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* it) { cargaGrupo(it); });
    tabla_->installEventFilter(this);
    arbol_->installEventFilter(this);
    setFocusProxy(tabla_);
}

Grilla::~Grilla() = default;

void Grilla::fijaConsulta(const QString& sql, const QVariantList& parametros) {
    sql_ = sql;
    parametros_ = parametros;
    olvidaOrden();
    orden_ = ordenDe(sql);
    const QJsonObject previa = modelo_->columnCount() > 0 ? distribucion() : QJsonObject{};
    modelo_->abre(almacen_, sql, parametros);
    aplicaOcultas();
    if (!pendiente_.isEmpty()) {
        const QJsonObject d = pendiente_;
        pendiente_ = {};
        aplicaDistribucion(d);
    } else if (!previa.isEmpty()) {
        aplicaDistribucion(previa);
    } else {
        anchosIniciales();
        if (agrupada()) armaGrupos();
    }
    if (modelo_->rowCount() > 0 && !agrupada()) tabla_->setCurrentIndex(modelo_->index(0, 0));
    empiezaMarcas();
}

void Grilla::fijaTitulo(const QString& campo, const QString& texto) {
    modelo_->fijaTitulo(campo, texto);
    if (agrupada()) armaGrupos();
    actualizaBanda();
}

void Grilla::fijaMascara(const QString& campo, const QString& mascara) {
    modelo_->fijaMascara(campo, mascara);
}

void Grilla::ocultaColumna(const QString& campo, bool oculta) {
    ocultas_.removeAll(campo.toLower());
    if (oculta) ocultas_ << campo.toLower();
    aplicaOcultas();
}

bool Grilla::columnaOculta(const QString& campo) const { return ocultas_.contains(campo.toLower()); }

void Grilla::aplicaOcultas() {
    for (int c = 0; c < modelo_->columnCount(); ++c) {
        const bool oculta = ocultas_.contains(modelo_->campo(c).toLower());
        tabla_->setColumnHidden(c, oculta);
        if (c < arbol_->columnCount()) arbol_->setColumnHidden(c, oculta);
    }
}

void Grilla::anchosIniciales() {
    // La primera vez, cada columna al ancho de su título y de las filas ya leídas, entre el
    // ancho de siempre y un tope para que una descripción larga no se lleve la grilla.
    // Se miden las primeras filas, no toda la página: es lo que se ve al abrir.
    auto* enc = tabla_->horizontalHeader();
    const int precision = enc->resizeContentsPrecision();
    enc->setResizeContentsPrecision(40);
    const int minimo = enc->defaultSectionSize();
    const int tope = tabla_->fontMetrics().horizontalAdvance(QLatin1Char('M')) * 24;
    for (int c = 0; c < modelo_->columnCount(); ++c) {
        if (tabla_->isColumnHidden(c)) continue;
        // El ancho que pidió la pantalla, si lo pidió; si no, el del contenido.
        if (const int pedido = anchosPedidos_.value(modelo_->campo(c).toLower()); pedido > 0) {
            enc->resizeSection(c, pedido);
            continue;
        }
        tabla_->resizeColumnToContents(c);
        enc->resizeSection(c, std::clamp(enc->sectionSize(c), minimo, std::max(minimo, tope)));
    }
    enc->setResizeContentsPrecision(precision);
}

QString Grilla::tituloColumna(const QString& campo) const { return modelo_->titulo(campo); }

QStringList Grilla::ordenColumnas() const {
    QStringList r;
    const auto* enc = tabla_->horizontalHeader();
    for (int v = 0; v < enc->count(); ++v) r << modelo_->campo(enc->logicalIndex(v));
    return r;
}

int Grilla::anchoColumna(const QString& campo) const {
    const int c = modelo_->columna(campo);
    return c < 0 ? -1 : tabla_->horizontalHeader()->sectionSize(c);
}

void Grilla::fijaAnchosIniciales(std::initializer_list<std::pair<const char*, int>> anchos) {
    for (const auto& [campo, ancho] : anchos) anchosPedidos_.insert(QString::fromLatin1(campo).toLower(), ancho);
}

void Grilla::fijaAnchoColumna(const QString& campo, int ancho) {
    const int c = modelo_->columna(campo);
    if (c < 0 || ancho <= 0) return;
    tabla_->horizontalHeader()->resizeSection(c, ancho);
    if (agrupada()) arbol_->header()->resizeSection(c, ancho);
}

// --- distribución ---

QJsonObject Grilla::distribucion() const {
    QJsonArray columnas;
    for (const QString& campo : ordenColumnas()) {
        QJsonObject c;
        c.insert(QStringLiteral("campo"), campo);
        c.insert(QStringLiteral("ancho"), anchoColumna(campo));
        columnas.append(c);
    }
    QJsonObject d;
    d.insert(QStringLiteral("version"), 1);
    d.insert(QStringLiteral("columnas"), columnas);
    d.insert(QStringLiteral("agrupar"), QJsonArray::fromStringList(agrupar_));
    return d;
}

bool Grilla::aplicaDistribucion(const QJsonObject& d) {
    if (d.value(QStringLiteral("version")).toInt() != 1 || !d.value(QStringLiteral("columnas")).isArray())
        return false;
    if (modelo_->columnCount() == 0) {
        pendiente_ = d;
        return true;
    }
    auto* enc = tabla_->horizontalHeader();
    int destino = 0;
    for (const QJsonValue& v : d.value(QStringLiteral("columnas")).toArray()) {
        const QJsonObject c = v.toObject();
        const int logica = modelo_->columna(c.value(QStringLiteral("campo")).toString());
        if (logica < 0) continue; // columna que ya no existe en la consulta
        enc->moveSection(enc->visualIndex(logica), destino++);
        const int ancho = c.value(QStringLiteral("ancho")).toInt();
        if (ancho > 0 && ancho < 5000) enc->resizeSection(logica, ancho);
    }
    QStringList agrupar;
    for (const QJsonValue& v : d.value(QStringLiteral("agrupar")).toArray())
        if (modelo_->columna(v.toString()) >= 0) agrupar << v.toString();
    if (agrupar != agrupar_ || agrupada()) {
        agrupar_ = agrupar;
        if (agrupada()) armaGrupos();
        pila_->setCurrentWidget(agrupada() ? static_cast<QWidget*>(arbol_) : tabla_);
        actualizaBanda();
    }
    return true;
}

bool Grilla::guardaDistribucion(const QString& ruta) const {
    QSaveFile f(ruta);
    if (!f.open(QIODevice::WriteOnly)) return false;
    f.write(QJsonDocument(distribucion()).toJson(QJsonDocument::Indented));
    return f.commit();
}

bool Grilla::cargaDistribucion(const QString& ruta) {
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly)) return false;
    QJsonParseError e{};
    const QJsonDocument doc = QJsonDocument::fromJson(f.read(1 << 20), &e);
    if (e.error != QJsonParseError::NoError || !doc.isObject()) return false;
    return aplicaDistribucion(doc.object());
}

void Grilla::fijaEditables(const QStringList& campos, GrabaCelda graba) {
    grabaCelda_ = std::move(graba);
    modelo_->fijaEditables(campos);
    tabla_->setEditTriggers(campos.isEmpty() ? QAbstractItemView::NoEditTriggers
                                             : QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                                                   QAbstractItemView::AnyKeyPressed);
}

void Grilla::permiteAgrupar(bool si) {
    banda_->setVisible(si);
    if (!si && agrupada()) quitaAgrupacion();
}

void Grilla::fijaTextoAgrupar(const QString& texto) { banda_->fijaTexto(texto); }

int Grilla::filaActualNumero() const {
    if (agrupada()) return -1;
    const QModelIndex i = tabla_->currentIndex();
    return i.isValid() ? i.row() : -1;
}

std::optional<QSqlRecord> Grilla::filaActual() const {
    if (agrupada()) {
        const QTreeWidgetItem* it = arbol_->currentItem();
        if (!it || !it->parent()) return std::nullopt;
        const QVariantList v = it->data(0, kRolRegistro).toList();
        QSqlRecord r = modelo_->campos();
        for (int c = 0; c < r.count() && c < v.size(); ++c) r.setValue(c, v.at(c));
        return r;
    }
    const int f = filaActualNumero();
    if (f < 0) return std::nullopt;
    return modelo_->registro(f);
}

std::optional<QVariant> Grilla::claveActual() const {
    const auto r = filaActual();
    if (!r || clave_.isEmpty() || r->indexOf(clave_) < 0) return std::nullopt;
    return r->value(clave_);
}

void Grilla::refresca() {
    // Errores ignorados: una grilla que no se puede volver a leer queda como estaba.
    const int fila = filaActualNumero();
    const std::optional<QVariant> clave = claveActual();
    const int primera = tabla_->horizontalHeader()->logicalIndex(0);
    QVariantList abiertos;
    for (int g = 0; g < arbol_->topLevelItemCount(); ++g)
        if (arbol_->topLevelItem(g)->isExpanded())
            abiertos << arbol_->topLevelItem(g)->data(primera, kRolRegistro);
    const QJsonObject d = distribucion();
    const int desplazamiento = tabla_->verticalScrollBar()->value();
    try {
        extremo_.reset();
        referencia_.reset();
        modelo_->abre(almacen_, sql_, parametros_);
    } catch (const ErrorAlmacen&) {
        return;
    }
    empiezaMarcas();
    aplicaOcultas();
    aplicaDistribucion(d);
    if (agrupada()) {
        for (int g = 0; g < arbol_->topLevelItemCount(); ++g)
            if (abiertos.contains(arbol_->topLevelItem(g)->data(primera, kRolRegistro)))
                arbol_->topLevelItem(g)->setExpanded(true);
        if (clave) {
            const int c = modelo_->columna(clave_);
            for (int g = 0; g < arbol_->topLevelItemCount(); ++g) {
                QTreeWidgetItem* grupo = arbol_->topLevelItem(g);
                if (!grupo->isExpanded()) continue;
                for (int h = 0; h < grupo->childCount(); ++h)
                    if (grupo->child(h)->data(0, kRolRegistro).toList().value(c) == *clave)
                        arbol_->setCurrentItem(grupo->child(h));
            }
        }
        return;
    }
    int destino = fila;
    if (clave) {
        const int donde = posicionDe(clave_, *clave, false);
        if (donde >= 0) destino = donde;
    }
    if (destino >= 0) {
        // Si la fila ya no existe se leen las páginas hasta el final (a lo sumo hasta esa fila).
        while (!modelo_->asegura(destino) && modelo_->canFetchMore({})) modelo_->fetchMore({});
        if (destino >= modelo_->rowCount()) destino = modelo_->rowCount() - 1;
        if (destino >= 0) {
            tabla_->setCurrentIndex(modelo_->index(destino, tabla_->horizontalHeader()->logicalIndex(0)));
            tabla_->verticalScrollBar()->setValue(desplazamiento);
            tabla_->scrollTo(tabla_->currentIndex());
        }
    }
}

bool Grilla::eventFilter(QObject* o, QEvent* e) {
    // Con el foco, la grilla se enmarca: el cajero ve dónde van las teclas + y -.
    if ((o == tabla_ || o == arbol_) && (e->type() == QEvent::FocusIn || e->type() == QEvent::FocusOut)) {
        static_cast<QWidget*>(o)->setStyleSheet(e->type() == QEvent::FocusIn ? kMarcoConFoco : QString());
        return QWidget::eventFilter(o, e);
    }
    auto* enc = tabla_->horizontalHeader();
    if (o == enc->viewport()) {
        if (e->type() == QEvent::MouseButtonPress) {
            auto* m = static_cast<QMouseEvent*>(e);
            if (m->button() == Qt::LeftButton) {
                inicioArrastre_ = m->position().toPoint();
                seccionArrastre_ = enc->logicalIndexAt(inicioArrastre_);
            }
        } else if (e->type() == QEvent::MouseButtonRelease) {
            seccionArrastre_ = -1;
        } else if (e->type() == QEvent::MouseMove && seccionArrastre_ >= 0) {
            auto* m = static_cast<QMouseEvent*>(e);
            // Arrastrar el título hacia arriba, fuera del encabezado, lo lleva a la banda.
            if ((m->buttons() & Qt::LeftButton) && m->position().y() < -4) {
                const int seccion = seccionArrastre_;
                seccionArrastre_ = -1;
                // Se suelta primero el movimiento de columna en su lugar de partida.
                QMouseEvent suelta(QEvent::MouseButtonRelease, QPointF(inicioArrastre_),
                                   enc->viewport()->mapToGlobal(QPointF(inicioArrastre_)), Qt::LeftButton,
                                   Qt::NoButton, Qt::NoModifier);
                QApplication::sendEvent(enc->viewport(), &suelta);
                auto* datos = new QMimeData;
                datos->setData(QLatin1String(kMimeColumna), modelo_->campo(seccion).toUtf8());
                datos->setText(modelo_->titulo(modelo_->campo(seccion)));
                auto* arrastre = new QDrag(this);
                arrastre->setMimeData(datos);
                arrastre->exec(Qt::MoveAction);
                return true;
            }
        }
    }
    return QWidget::eventFilter(o, e);
}

// --- menús y exportación ---

void Grilla::menuEncabezado(const QPoint& local) {
    const int seccion = tabla_->horizontalHeader()->logicalIndexAt(local);
    QMenu m(this);
    if (seccion >= 0 && !banda_->isHidden()) {
        const QString campo = modelo_->campo(seccion);
        m.addAction(QStringLiteral("Agrupar por \"%1\"").arg(modelo_->titulo(campo)), this,
                    [this, campo] { agrupaPor(campo); });
    }
    if (agrupada()) m.addAction(QStringLiteral("Quitar la agrupación"), this, &Grilla::quitaAgrupacion);
    if (!m.isEmpty()) m.exec(tabla_->horizontalHeader()->viewport()->mapToGlobal(local));
}

void Grilla::menuContextual(const QPoint& global) {
    QMenu m(this);
    m.addAction(QStringLiteral("Exportar a CSV..."), this, [this] { pideExportar(false); });
    m.addAction(QStringLiteral("Exportar a Excel..."), this, [this] { pideExportar(true); });
    m.addSeparator();
    m.addAction(QStringLiteral("Vista previa de impresión..."), this, [this] { PrevisualizaGrilla(*this); });
    if (agrupada()) {
        m.addSeparator();
        m.addAction(QStringLiteral("Quitar la agrupación"), this, &Grilla::quitaAgrupacion);
    }
    m.exec(global);
}

namespace {
OpcionesExporta opcionesDe(const Grilla& g) {
    OpcionesExporta o;
    const ModeloGrilla& m = g.modelo();
    for (int c = 0; c < m.columnCount(); ++c) {
        o.titulos << m.titulo(m.campo(c));
        if (g.columnaOculta(m.campo(c))) o.omitir << m.campo(c);
    }
    return o;
}
} // namespace

void Grilla::exportaCSV(const QString& ruta) {
    ExportaCSV(almacen_, sql_, parametros_, opcionesDe(*this), ruta);
}

void Grilla::exportaXLSX(const QString& ruta) {
    ExportaXLSX(almacen_, sql_, parametros_, opcionesDe(*this), ruta);
}

void Grilla::pideExportar(bool excel) {
    const QString ruta = QFileDialog::getSaveFileName(
        this, excel ? QStringLiteral("Exportar a Excel") : QStringLiteral("Exportar a CSV"), QString(),
        excel ? QStringLiteral("Libro de Excel (*.xlsx)") : QStringLiteral("Texto separado por comas (*.csv)"));
    if (ruta.isEmpty()) return;
    Intenta(this, [&] {
        // El reloj de espera se va al terminar, también si falla (antes de mostrar el mensaje).
        const QScopeGuard listo([] { QApplication::restoreOverrideCursor(); });
        QApplication::setOverrideCursor(Qt::WaitCursor);
        if (excel) exportaXLSX(ruta);
        else exportaCSV(ruta);
    });
}

} // namespace orv
