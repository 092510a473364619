#include "widgets/grilla.h"

#include "reports/exporta.h"
#include "widgets/mensajes.h"
#include "widgets/previsualiza.h"
#include "store/aviso.h"
#include "store/formato.h"

#include <QApplication>
#include <algorithm>
#include <limits>
#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QSaveFile>
#include <QScopeGuard>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QStackedWidget>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <sqlite3.h>

namespace orv {

namespace {

const char* const kMimeColumna = "application/x-orvanta-columna";
constexpr int kRolRegistro = Qt::UserRole + 1;
constexpr int kRolCargado = Qt::UserRole + 2;
constexpr int kMaxPaginasEnMemoria = 512;

bool esNumerico(QMetaType t) {
    switch (t.id()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Short:
    case QMetaType::UShort:
        return true;
    default:
        return false;
    }
}

// Consulta sólo hacia adelante con parámetros ligados.
QSqlQuery ejecutaAdelante(Almacen& a, const QString& sql, const QVariantList& parametros) {
    return a.consulta(sql, parametros);
}

QString escapaLike(const QString& s) {
    QString r;
    r.reserve(s.size() + 4);
    for (QChar c : s) {
        if (c == u'\\' || c == u'%' || c == u'_') r += u'\\';
        r += c;
    }
    return r;
}

// Funciones propias para SQLite, registradas en la conexión del almacén.
//
// orv_fila() devuelve 1, 2, 3... en el orden en que se leen las filas. ROW_NUMBER() obliga a
// SQLite a guardar el resultado entero antes de filtrar; así, la lectura se detiene en la primera
// coincidencia.
qint64 filasNumeradas = 0;

void numeraFila(sqlite3_context* ctx, int, sqlite3_value**) {
    auto* n = static_cast<qint64*>(sqlite3_user_data(ctx));
    sqlite3_result_int64(ctx, ++*n);
}

// orv_empieza(valor, prefijo): 1 si el texto del valor empieza con el prefijo sin distinguir
// mayúsculas, también fuera de ASCII (Ñ y ñ, Á y á, que el LIKE de SQLite distingue); 0 si no o
// si alguno es nulo. El prefijo va tal cual: % y _ no son comodines.
void empiezaCon(sqlite3_context* ctx, int, sqlite3_value** args) {
    if (sqlite3_value_type(args[0]) == SQLITE_NULL || sqlite3_value_type(args[1]) == SQLITE_NULL) {
        sqlite3_result_int(ctx, 0);
        return;
    }
    const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(args[1]));
    const QString prefijo = QString::fromUtf8(p, sqlite3_value_bytes(args[1]));
    const auto* v = reinterpret_cast<const char*>(sqlite3_value_text(args[0]));
    // Cada carácter del prefijo ocupa a lo sumo 4 bytes en el valor: alcanza con decodificar
    // el comienzo (un carácter cortado al final queda fuera de lo que se compara).
    const qsizetype bytes = qMin<qsizetype>(sqlite3_value_bytes(args[0]), 4 * prefijo.size());
    const QString comienzo = QString::fromUtf8(v, bytes);
    sqlite3_result_int(ctx, comienzo.startsWith(prefijo, Qt::CaseInsensitive) ? 1 : 0);
}

bool registraFunciones(const Almacen& a) {
    if (a.esPostgreSQL()) return false;
    const QVariant h = a.base().driver()->handle();
    if (qstrcmp(h.typeName(), "sqlite3*") != 0) return false;
    sqlite3* db = *static_cast<sqlite3* const*>(h.constData());
    if (!db) return false;
    // Ya registradas en esta conexión: volver a registrarlas invalidaría las sentencias preparadas
    // (y fallaría con alguna en curso).
    sqlite3_stmt* prueba = nullptr;
    const bool estan =
        sqlite3_prepare_v2(db, "SELECT orv_fila(), orv_empieza('', '')", -1, &prueba, nullptr) == SQLITE_OK;
    sqlite3_finalize(prueba);
    if (estan) return true;
    return sqlite3_create_function_v2(db, "orv_fila", 0, SQLITE_UTF8, &filasNumeradas, numeraFila, nullptr,
                                      nullptr, nullptr) == SQLITE_OK &&
           sqlite3_create_function_v2(db, "orv_empieza", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                      empiezaCon, nullptr, nullptr, nullptr) == SQLITE_OK;
}

} // namespace

// ---------------------------------------------------------------------------------------------
// ModeloGrilla

ModeloGrilla::ModeloGrilla(QObject* padre) : QAbstractTableModel(padre) {}

void ModeloGrilla::abre(Almacen& a, const QString& sql, const QVariantList& parametros) {
    beginResetModel();
    almacen_ = &a;
    sql_ = sql;
    parametros_ = parametros;
    paginas_.clear();
    filas_ = 0;
    fin_ = true;
    try {
        QVariantList p = parametros_;
        p << kPagina << 0;
        QSqlQuery q = ejecutaAdelante(a, QStringLiteral("SELECT * FROM (") + sql_ +
                                             QStringLiteral(") AS q LIMIT ? OFFSET ?"),
                                      p);
        campos_ = q.record();
        Pagina primera;
        while (q.next()) {
            QVector<QVariant> fila(campos_.count());
            for (int c = 0; c < campos_.count(); ++c) fila[c] = q.value(c);
            primera.push_back(std::move(fila));
        }
        filas_ = int(primera.size());
        fin_ = primera.size() < kPagina;
        paginas_.insert(0, std::move(primera));
    } catch (...) {
        campos_ = {};
        almacen_ = nullptr;
        endResetModel();
        throw;
    }
    endResetModel();
}

void ModeloGrilla::cierra() {
    beginResetModel();
    almacen_ = nullptr;
    paginas_.clear();
    campos_ = {};
    filas_ = 0;
    fin_ = true;
    endResetModel();
}

ModeloGrilla::Pagina ModeloGrilla::leeFilas(const QString& sql, const QVariantList& parametros) const {
    Pagina r;
    if (!almacen_) return r;
    QSqlQuery q = ejecutaAdelante(*almacen_, sql, parametros);
    const int n = campos_.count();
    while (q.next()) {
        QVector<QVariant> fila(n);
        for (int c = 0; c < n; ++c) fila[c] = q.value(c);
        r.push_back(std::move(fila));
    }
    return r;
}

ModeloGrilla::Pagina ModeloGrilla::leePagina(qint64 numero) const {
    QVariantList p = parametros_;
    p << kPagina << numero * kPagina;
    return leeFilas(QStringLiteral("SELECT * FROM (") + sql_ + QStringLiteral(") AS q LIMIT ? OFFSET ?"), p);
}

Qt::ItemFlags ModeloGrilla::flags(const QModelIndex& i) const {
    Qt::ItemFlags f = QAbstractTableModel::flags(i);
    if (i.isValid() && editables_.contains(campo(i.column()).toLower())) f |= Qt::ItemIsEditable;
    return f;
}

bool ModeloGrilla::setData(const QModelIndex& i, const QVariant& valor, int rol) {
    if (rol != Qt::EditRole || !i.isValid() || !editables_.contains(campo(i.column()).toLower())) return false;
    Q_EMIT edicionPedida(i.row(), campo(i.column()), valor);
    return true;
}

void ModeloGrilla::fijaEditables(const QStringList& campos) {
    editables_.clear();
    for (const QString& c : campos) editables_ << c.toLower();
}

void ModeloGrilla::ponPagina(qint64 numero, Pagina filas) {
    paginas_.insert(numero, std::move(filas));
}

const ModeloGrilla::Pagina* ModeloGrilla::pagina(qint64 numero) const {
    auto it = paginas_.constFind(numero);
    if (it != paginas_.cend()) return &it.value();
    if (paginas_.size() >= kMaxPaginasEnMemoria) {
        // Se descartan las páginas lejanas; se vuelven a leer si hacen falta.
        for (auto j = paginas_.begin(); j != paginas_.end();) {
            if (qAbs(j.key() - numero) > kMaxPaginasEnMemoria / 4) j = paginas_.erase(j);
            else ++j;
        }
    }
    Pagina p;
    try {
        p = leePagina(numero);
    } catch (const ErrorAlmacen&) {
        // Una lectura fallida deja celdas vacías; se reintenta al volver a pintarlas.
        return nullptr;
    }
    return &paginas_.insert(numero, std::move(p)).value();
}

int ModeloGrilla::rowCount(const QModelIndex& padre) const { return padre.isValid() ? 0 : filas_; }

int ModeloGrilla::columnCount(const QModelIndex& padre) const {
    return padre.isValid() ? 0 : campos_.count();
}

bool ModeloGrilla::canFetchMore(const QModelIndex& padre) const {
    return !padre.isValid() && !fin_ && almacen_;
}

void ModeloGrilla::fetchMore(const QModelIndex& padre) {
    if (!canFetchMore(padre)) return;
    asegura(filas_);
}

bool ModeloGrilla::asegura(int fila) {
    if (fila < 0) return false;
    if (fila < filas_) return true;
    if (fin_ || !almacen_) return false;
    const qint64 numero = fila / kPagina;
    const Pagina* p = pagina(numero);
    if (!p) return false;
    // Una página vacía más allá de lo leído no dice dónde termina el resultado.
    if (p->isEmpty() && numero * kPagina > filas_) return false;
    const qint64 hasta = numero * kPagina + p->size();
    const bool fin = p->size() < kPagina;
    if (hasta > filas_) {
        beginInsertRows({}, filas_, int(hasta) - 1);
        filas_ = int(hasta);
        fin_ = fin;
        endInsertRows();
    } else if (fin) {
        fin_ = true;
    }
    return fila < filas_;
}

QVariant ModeloGrilla::valor(int fila, int columna) const {
    if (fila < 0 || fila >= filas_ || columna < 0 || columna >= campos_.count()) return {};
    const Pagina* p = pagina(fila / kPagina);
    const int dentro = fila % kPagina;
    if (!p || dentro >= p->size()) return {};
    return p->at(dentro).at(columna);
}

QSqlRecord ModeloGrilla::registro(int fila) const {
    QSqlRecord r = campos_;
    for (int c = 0; c < r.count(); ++c) r.setValue(c, valor(fila, c));
    return r;
}

int ModeloGrilla::columna(const QString& campo) const { return campos_.indexOf(campo); }

QString ModeloGrilla::campo(int columna) const { return campos_.fieldName(columna); }

bool ModeloGrilla::alineaDerecha(int columna) const {
    if (columna < 0 || columna >= campos_.count()) return false;
    return mascaras_.contains(campo(columna).toLower()) || esNumerico(campos_.field(columna).metaType());
}

QString ModeloGrilla::texto(const QVariant& v, int columna) const {
    if (v.isNull()) return {};
    const QString m = mascaras_.value(campo(columna).toLower());
    if (!m.isEmpty()) return Formato(v, m);
    if (const auto f = FechaGuardadaTexto(v)) return *f;
    if (v.typeId() == QMetaType::Double) return Formato(v, QString());
    return v.toString();
}

QVariant ModeloGrilla::data(const QModelIndex& i, int rol) const {
    if (!i.isValid()) return {};
    switch (rol) {
    case Qt::DisplayRole:
        return texto(valor(i.row(), i.column()), i.column());
    case Qt::EditRole:
        return valor(i.row(), i.column());
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(alineaDerecha(i.column()) ? (Qt::AlignRight | Qt::AlignVCenter)
                                                             : (Qt::AlignLeft | Qt::AlignVCenter));
    default:
        return {};
    }
}

QVariant ModeloGrilla::headerData(int seccion, Qt::Orientation o, int rol) const {
    if (o == Qt::Horizontal && rol == Qt::DisplayRole) return titulo(campo(seccion));
    if (o == Qt::Horizontal && rol == Qt::TextAlignmentRole)
        return QVariant::fromValue(alineaDerecha(seccion) ? (Qt::AlignRight | Qt::AlignVCenter)
                                                          : (Qt::AlignLeft | Qt::AlignVCenter));
    if (o == Qt::Vertical && rol == Qt::DisplayRole) return seccion + 1;
    return {};
}

void ModeloGrilla::fijaTitulo(const QString& campo, const QString& texto) {
    titulos_.insert(campo.toLower(), texto);
    const int c = columna(campo);
    if (c >= 0) Q_EMIT headerDataChanged(Qt::Horizontal, c, c);
}

QString ModeloGrilla::titulo(const QString& campo) const {
    return titulos_.value(campo.toLower(), campo);
}

void ModeloGrilla::fijaMascara(const QString& campo, const QString& mascara) {
    mascaras_.insert(campo.toLower(), mascara);
    const int c = columna(campo);
    if (c >= 0 && filas_ > 0) Q_EMIT dataChanged(index(0, c), index(filas_ - 1, c));
}

QString ModeloGrilla::mascara(const QString& campo) const { return mascaras_.value(campo.toLower()); }

// ---------------------------------------------------------------------------------------------
// Banda de agrupación

class BandaAgrupar : public QFrame {
public:
    explicit BandaAgrupar(Grilla& g) : QFrame(&g), grilla_(g) {
        setObjectName(QStringLiteral("bandaAgrupar"));
        setAcceptDrops(true);
        setFrameShape(QFrame::StyledPanel);
        auto* l = new QHBoxLayout(this);
        l->setContentsMargins(8, 4, 8, 4);
        l->setSpacing(6);
        texto_ = new QLabel(QStringLiteral("Arrastre aquí la columna que desee agrupar"), this);
        texto_->setObjectName(QStringLiteral("textoAgrupar"));
        QPalette p = texto_->palette();
        p.setColor(QPalette::WindowText, p.color(QPalette::Disabled, QPalette::WindowText));
        texto_->setPalette(p);
        ficha_ = new QToolButton(this);
        ficha_->setObjectName(QStringLiteral("fichaAgrupar"));
        ficha_->setToolTip(QStringLiteral("Quitar la agrupación"));
        ficha_->setToolButtonStyle(Qt::ToolButtonTextOnly);
        ficha_->setAutoRaise(false);
        l->addWidget(texto_);
        l->addWidget(ficha_);
        l->addStretch(1);
        connect(ficha_, &QToolButton::clicked, this, [this] { grilla_.quitaAgrupacion(); });
        muestra({});
    }

    void muestra(const QString& titulo) {
        ficha_->setVisible(!titulo.isEmpty());
        texto_->setVisible(titulo.isEmpty());
        ficha_->setText(titulo + QStringLiteral("  ✕"));
    }

protected:
    void dragEnterEvent(QDragEnterEvent* e) override {
        if (e->mimeData()->hasFormat(QLatin1String(kMimeColumna))) e->acceptProposedAction();
    }
    void dropEvent(QDropEvent* e) override {
        const QString campo = QString::fromUtf8(e->mimeData()->data(QLatin1String(kMimeColumna)));
        e->acceptProposedAction();
        grilla_.agrupaPor(campo);
    }

private:
    Grilla& grilla_;
    QLabel* texto_;
    QToolButton* ficha_;
};

// ---------------------------------------------------------------------------------------------
// Grilla

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
            grabaCelda_(r, campo, valor);
            refresca();
            Q_EMIT filaEditada();
        });
    });
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

// --- posición ---

QString Grilla::campoSeguro(const QString& campo) const {
    const int c = modelo_->columna(campo);
    if (c < 0) return {};
    // El nombre sale de la propia consulta; sólo se admite un identificador simple.
    const QString n = modelo_->campo(c);
    for (QChar ch : n)
        if (!(ch.isLetterOrNumber() || ch == u'_')) return {};
    return n;
}

void Grilla::olvidaOrden() {
    orden_.reset();
    extremo_.reset();
}

std::optional<Grilla::Orden> Grilla::ordenDe(const QString& sql) {
    static const QRegularExpression ordenSimple(
        QStringLiteral(R"(^(.*\S)\s+ORDER\s+BY\s+(?:(\w+)\s*\.\s*)?(\w+)(?:\s+(ASC|DESC))?\s*;?\s*$)"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression otroOrden(QStringLiteral(R"(\bORDER\s+BY\b)"),
                                              QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = ordenSimple.match(sql);
    if (!m.hasMatch()) return std::nullopt;
    Orden o{m.captured(1), m.captured(3), m.captured(4).compare(QStringLiteral("DESC"), Qt::CaseInsensitive) == 0};
    // Otro ORDER BY adentro (subconsulta, ventana): la última cláusula podría no ser del todo.
    if (otroOrden.match(o.base).hasMatch()) return std::nullopt;
    const QString tabla = m.captured(2);
    if (!tabla.isEmpty()) {
        // "tabla.columna" ordena por la columna de esa tabla, que puede no ser la del resultado con
        // ese nombre. Se descarta si alguna expresión toma el nombre (AS columna) o si la consulta
        // nombra esa columna de otra tabla.
        const QRegularExpression alias(QStringLiteral(R"(\bAS\s+)") + o.columna + QStringLiteral(R"(\b)"),
                                       QRegularExpression::CaseInsensitiveOption);
        if (alias.match(o.base).hasMatch()) return std::nullopt;
        const QRegularExpression calificada(QStringLiteral(R"((\w+)\s*\.\s*)") + o.columna + QStringLiteral(R"(\b)"),
                                            QRegularExpression::CaseInsensitiveOption);
        for (auto it = calificada.globalMatch(o.base); it.hasNext();)
            if (it.next().captured(1).compare(tabla, Qt::CaseInsensitive) != 0) return std::nullopt;
    }
    return o;
}

namespace {

bool esEntero(const QVariant& v) {
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::UShort: return true;
    default: return false;
    }
}

// Enteros no negativos cuyo texto empieza con las cifras `texto` (sin ceros a la izquierda):
// los rangos [p·10^k, (p+1)·10^k), crecientes y disjuntos, mientras quepan en 64 bits. El último
// puede quedar sin tope (nullopt) si (p+1)·10^k ya no cabe.
QList<QPair<qint64, std::optional<qint64>>> rangosDePrefijo(qint64 p) {
    QList<QPair<qint64, std::optional<qint64>>> r;
    if (p == 0) return {{0, 1}};
    qint64 lo = p;
    std::optional<qint64> hi;
    if (p < std::numeric_limits<qint64>::max()) hi = p + 1;
    for (;;) {
        r.append({lo, hi});
        if (!hi || __builtin_mul_overflow(lo, 10, &lo)) break;
        qint64 siguiente = 0;
        if (__builtin_mul_overflow(*hi, 10, &siguiente)) hi.reset();
        else hi = siguiente;
    }
    return r;
}

} // namespace

std::optional<int> Grilla::posicionPorOrden(const QString& campo, const QVariant& valor, bool prefijo) const {
    if (!orden_ || orden_->columna.compare(campo, Qt::CaseInsensitive) != 0) return std::nullopt;
    const QString c = campoSeguro(campo);
    if (c.isEmpty() || modelo_->rowCount() == 0) return std::nullopt;

    const bool desc = orden_->descendente;
    // "Antes" y "después" en el orden de la grilla.
    const QString antesDe = desc ? QStringLiteral(" > ?") : QStringLiteral(" < ?");
    const QString desdeV = desc ? QStringLiteral(" <= ?") : QStringLiteral(" >= ?");
    const QString hastaV = desc ? QStringLiteral(" >= ?") : QStringLiteral(" <= ?");
    const QString directo = desc ? QStringLiteral(" DESC") : QString();
    const QString inverso = desc ? QString() : QStringLiteral(" DESC");
    const QString desde = QStringLiteral(" FROM (") + orden_->base + QStringLiteral(") AS q WHERE ");
    auto primero = [&](const QString& condicion, const QVariantList& extra, const QString& sentido) -> QVariant {
        QVariantList p = parametros_;
        p += extra;
        QSqlQuery q = ejecutaAdelante(almacen_,
                                      QStringLiteral("SELECT ") + c + desde + condicion + QStringLiteral(" ORDER BY ") +
                                          c + sentido + QStringLiteral(" LIMIT 1"),
                                      p);
        return q.next() ? q.value(0) : QVariant();
    };
    auto cuenta = [&](const QString& condicion, const QVariantList& extra) -> qint64 {
        QVariantList p = parametros_;
        p += extra;
        QSqlQuery q = ejecutaAdelante(almacen_, QStringLiteral("SELECT COUNT(*)") + desde + condicion, p);
        return q.next() ? q.value(0).toLongLong() : 0;
    };
    // Si v está después de w en el orden de la grilla.
    auto despues = [desc](qint64 v, qint64 w) { return desc ? v < w : v > w; };

    try {
        // 0. Primer y último valor no nulos: dicen si la columna es entera y acotan la búsqueda.
        const QVariant primeroDeTodos = primero(c + QStringLiteral(" IS NOT NULL"), {}, directo);
        if (primeroDeTodos.isNull()) return -1; // sólo nulos: ninguno coincide con nada
        const QVariant ultimoDeTodos = primero(c + QStringLiteral(" IS NOT NULL"), {}, inverso);
        if (!esEntero(primeroDeTodos) || !esEntero(ultimoDeTodos)) return std::nullopt;
        const qint64 a = primeroDeTodos.toLongLong();
        const qint64 z = ultimoDeTodos.toLongLong();

        // 1. El valor de la primera fila que coincide, en el orden de la grilla.
        QVariant encontrado;
        if (!prefijo) {
            if (!esEntero(valor)) return std::nullopt;
            encontrado = primero(c + QStringLiteral(" = ?"), {valor.toLongLong()}, directo);
        } else {
            const QString texto = valor.toString();
            if (texto.isEmpty() || texto.size() > 19) return std::nullopt;
            for (QChar ch : texto)
                if (ch < u'0' || ch > u'9') return std::nullopt;
            if (texto.size() > 1 && texto.startsWith(u'0')) return -1; // ningún entero se escribe así
            bool ok = false;
            const qint64 p = texto.toLongLong(&ok);
            if (!ok) return std::nullopt;
            // En orden ascendente el primer rango con alguna fila tiene el valor buscado (el menor
            // de ese rango); en descendente, el último (el mayor). Los rangos fuera de [a, z] no se
            // consultan.
            auto rangos = rangosDePrefijo(p);
            if (desc) std::reverse(rangos.begin(), rangos.end());
            const qint64 menor = desc ? z : a;
            const qint64 mayor = desc ? a : z;
            for (const auto& [lo, hi] : rangos) {
                if (lo > mayor || (hi && *hi <= menor)) continue;
                encontrado = hi ? primero(c + QStringLiteral(" >= ? AND ") + c + QStringLiteral(" < ?"), {lo, *hi},
                                          directo)
                                : primero(c + QStringLiteral(" >= ?"), {lo}, directo);
                if (!encontrado.isNull()) break;
            }
        }
        if (encontrado.isNull()) return -1;
        const qint64 v = encontrado.toLongLong();

        // 2. Cuántas filas hay antes. Los nulos van primero en SQLite ascendente y en
        // PostgreSQL descendente.
        const bool nulosAntes = almacen_.esPostgreSQL() == desc;
        const qint64 nulos = nulosAntes ? cuenta(c + QStringLiteral(" IS NULL"), {}) : 0;
        std::optional<qint64> antesNoNulos;
        // Cerca del final conviene contar lo que queda detrás y restarlo del total.
        const bool cercaDelFinal = a != z && (double(v) - double(a)) / (double(z) - double(a)) > 0.5;
        if (cercaDelFinal) {
            if (!extremo_ || despues(v, extremo_->ultimo)) {
                // Total y último valor en una sola sentencia, para que se correspondan (el último,
                // por el índice; MAX no lo usaría a través de una vista con uniones). El total son
                // todas las filas menos las de valor nulo: un COUNT(*) sin condición sobre una
                // consulta de una sola tabla lo responde SQLite con el índice más chico, sin leer
                // las filas; las nulas se cuentan por el índice de la columna.
                const QString de = QStringLiteral(" FROM (") + orden_->base + QStringLiteral(") AS q");
                QSqlQuery q = ejecutaAdelante(
                    almacen_,
                    QStringLiteral("SELECT (SELECT COUNT(*)") + de + QStringLiteral(") - (SELECT COUNT(*)") + de +
                        QStringLiteral(" WHERE ") + c + QStringLiteral(" IS NULL), (SELECT ") + c + de +
                        QStringLiteral(" WHERE ") + c + QStringLiteral(" IS NOT NULL ORDER BY ") + c + inverso +
                        QStringLiteral(" LIMIT 1)"),
                    parametros_ + parametros_ + parametros_);
                if (q.next() && esEntero(q.value(1)))
                    extremo_ = Extremo{q.value(0).toLongLong(), q.value(1).toLongLong()};
                else
                    extremo_.reset();
            }
            // Lo agregado después de leer el total (más allá de su último valor) no cuenta.
            if (extremo_ && !despues(v, extremo_->ultimo)) {
                const qint64 detras = cuenta(c + desdeV + QStringLiteral(" AND ") + c + hastaV, {v, extremo_->ultimo});
                if (detras <= extremo_->total) antesNoNulos = extremo_->total - detras;
            }
        }
        if (!antesNoNulos) antesNoNulos = cuenta(c + antesDe, {v});
        const qint64 antes = nulos + *antesNoNulos;
        if (antes > std::numeric_limits<int>::max()) return std::nullopt;

        // 3. La página de esa fila se lee por el valor del orden y no saltando filas: lo que
        // está antes de v (hasta el comienzo de la página) y lo que sigue desde v.
        const qint64 numero = antes / ModeloGrilla::kPagina;
        const qint64 previas = antes - numero * ModeloGrilla::kPagina;
        if (numero * ModeloGrilla::kPagina >= nulos) { // la página no toca el bloque de nulos del comienzo
            const QString todo = QStringLiteral("SELECT * FROM (") + orden_->base + QStringLiteral(") AS q WHERE ") + c;
            QVariantList p1 = parametros_;
            p1 << v << previas;
            ModeloGrilla::Pagina pagina =
                previas > 0 ? modelo_->leeFilas(todo + antesDe + QStringLiteral(" ORDER BY ") + c + inverso +
                                                    QStringLiteral(" LIMIT ?"),
                                                p1)
                            : ModeloGrilla::Pagina{};
            std::reverse(pagina.begin(), pagina.end());
            const bool completa = pagina.size() == previas; // si no, otra terminal cambió filas
            QVariantList p2 = parametros_;
            p2 << v << (ModeloGrilla::kPagina - previas);
            pagina += modelo_->leeFilas(todo + desdeV + QStringLiteral(" ORDER BY ") + c + directo +
                                            QStringLiteral(" LIMIT ?"),
                                        p2);
            // Al final del orden pueden venir los nulos, que las dos lecturas anteriores no traen.
            if (!nulosAntes && pagina.size() < ModeloGrilla::kPagina) {
                QVariantList p3 = parametros_;
                p3 << (ModeloGrilla::kPagina - pagina.size());
                pagina += modelo_->leeFilas(todo + QStringLiteral(" IS NULL LIMIT ?"), p3);
            }
            if (completa) modelo_->ponPagina(numero, std::move(pagina));
        }
        return int(antes);
    } catch (const ErrorAlmacen&) {
        return std::nullopt;
    }
}

int Grilla::posicionDe(const QString& campo, const QVariant& valor, bool prefijo) const {
    const QString c = campoSeguro(campo);
    if (c.isEmpty() || sql_.isEmpty()) return -1;
    if (const auto rapida = posicionPorOrden(campo, valor, prefijo)) return *rapida;
    // SQLite: orv_empieza compara sin distinguir mayúsculas (también Ñ, Á...) y convierte a texto
    // por sí sola; si no se pudo registrar, LIKE (que sólo iguala mayúsculas ASCII). PostgreSQL:
    // ILIKE sobre el texto tal como se tecleó, con los comodines escapados.
    const bool funciones = registraFunciones(almacen_);
    const QString condicion = !prefijo                ? QStringLiteral("c = ?")
                              : almacen_.esPostgreSQL() ? QStringLiteral("CAST(c AS TEXT) ILIKE ? ESCAPE '\\'")
                              : funciones               ? QStringLiteral("orv_empieza(c, ?) <> 0")
                                                        : QStringLiteral("c LIKE ? ESCAPE '\\'");
    // Con el numerador, el LIMIT -1 impide que SQLite funda la subconsulta con la de afuera
    // (si no, numeraría sólo las filas que coinciden).
    const QString sql = QStringLiteral("SELECT n FROM (SELECT ") +
                        (funciones ? QStringLiteral("orv_fila()") : QStringLiteral("ROW_NUMBER() OVER ()")) +
                        QStringLiteral(" AS n, c FROM (SELECT ") + c + QStringLiteral(" AS c FROM (") + sql_ +
                        QStringLiteral(") AS q) AS q2") + (funciones ? QStringLiteral(" LIMIT -1") : QString()) +
                        QStringLiteral(") AS t WHERE ") + condicion + QStringLiteral(" LIMIT 1");
    filasNumeradas = 0;
    QVariantList p = parametros_;
    if (!prefijo) p << valor;
    else if (funciones) p << valor.toString();
    else p << escapaLike(almacen_.esPostgreSQL() ? valor.toString() : valor.toString().toLower()) + u'%';
    try {
        QSqlQuery q = ejecutaAdelante(almacen_, sql, p);
        if (q.next()) return q.value(0).toInt() - 1;
    } catch (const ErrorAlmacen&) {
    }
    return -1;
}

bool Grilla::irAFila(int fila) {
    if (!modelo_->asegura(fila)) return false;
    const QModelIndex i = modelo_->index(fila, qMax(0, tabla_->horizontalHeader()->logicalIndex(0)));
    tabla_->setCurrentIndex(i);
    tabla_->scrollTo(i, QAbstractItemView::PositionAtCenter);
    return true;
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

bool Grilla::busca(const QString& campo, const QString& texto) {
    if (agrupada()) {
        const int c = modelo_->columna(campo);
        if (c < 0) return false;
        const QString buscado = texto.toLower();
        for (int g = 0; g < arbol_->topLevelItemCount(); ++g) {
            QTreeWidgetItem* grupo = arbol_->topLevelItem(g);
            cargaGrupo(grupo);
            for (int h = 0; h < grupo->childCount(); ++h) {
                const QVariantList r = grupo->child(h)->data(0, kRolRegistro).toList();
                if (c < r.size() && r.at(c).toString().toLower().startsWith(buscado)) {
                    grupo->setExpanded(true);
                    arbol_->setCurrentItem(grupo->child(h));
                    arbol_->scrollToItem(grupo->child(h));
                    return true;
                }
            }
        }
        return false;
    }
    const int fila = posicionDe(campo, texto, true);
    return fila >= 0 && irAFila(fila);
}

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
        modelo_->abre(almacen_, sql_, parametros_);
    } catch (const ErrorAlmacen&) {
        return;
    }
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

// --- agrupación ---

void Grilla::agrupaPor(const QString& campo) {
    if (modelo_->columna(campo) < 0) return;
    agrupar_ = QStringList{modelo_->campo(modelo_->columna(campo))};
    armaGrupos();
    pila_->setCurrentWidget(arbol_);
    actualizaBanda();
}

void Grilla::quitaAgrupacion() {
    agrupar_.clear();
    arbol_->clear();
    pila_->setCurrentWidget(tabla_);
    actualizaBanda();
    tabla_->setFocus();
}

void Grilla::actualizaBanda() {
    banda_->muestra(agrupada() ? modelo_->titulo(agrupar_.first()) : QString());
}

void Grilla::armaGrupos() {
    arbol_->clear();
    const QString g = agrupada() ? campoSeguro(agrupar_.first()) : QString();
    if (g.isEmpty()) return;
    const int nc = modelo_->columnCount();
    QStringList titulos;
    for (int c = 0; c < nc; ++c) titulos << modelo_->titulo(modelo_->campo(c));
    arbol_->setColumnCount(nc);
    arbol_->setHeaderLabels(titulos);
    // Mismo orden y anchos de columnas que la tabla.
    auto* enc = tabla_->horizontalHeader();
    for (int v = 0; v < nc; ++v) {
        const int logica = enc->logicalIndex(v);
        arbol_->header()->moveSection(arbol_->header()->visualIndex(logica), v);
        arbol_->header()->resizeSection(logica, enc->sectionSize(logica));
    }
    aplicaOcultas();
    const int cg = modelo_->columna(g);
    try {
        QSqlQuery q = ejecutaAdelante(almacen_,
                                      QStringLiteral("SELECT g, COUNT(*) FROM (SELECT ") + g +
                                          QStringLiteral(" AS g FROM (") + sql_ +
                                          QStringLiteral(") AS q) AS t GROUP BY g ORDER BY g"),
                                      parametros_);
        const int primera = enc->logicalIndex(0);
        while (q.next()) {
            auto* it = new QTreeWidgetItem(arbol_);
            const QVariant valor = q.value(0);
            it->setText(primera, modelo_->titulo(g) + QStringLiteral(": ") +
                                     (valor.isNull() || valor.toString().isEmpty() ? QStringLiteral("(vacío)")
                                                                                    : modelo_->texto(valor, cg)) +
                                     QStringLiteral("  (") + QString::number(q.value(1).toLongLong()) +
                                     QStringLiteral(")"));
            it->setData(primera, kRolRegistro, valor);
            it->setData(primera, kRolCargado, false);
            QFont f = it->font(primera);
            f.setBold(true);
            it->setFont(primera, f);
            it->setFirstColumnSpanned(true);
            it->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
        }
    } catch (const ErrorAlmacen&) {
    }
    if (arbol_->topLevelItemCount() > 0) arbol_->setCurrentItem(arbol_->topLevelItem(0));
}

void Grilla::cargaGrupo(QTreeWidgetItem* grupo) {
    if (!grupo || grupo->parent() || !agrupada()) return;
    const int primera = tabla_->horizontalHeader()->logicalIndex(0);
    if (grupo->data(primera, kRolCargado).toBool()) return;
    grupo->setData(primera, kRolCargado, true);
    const QString g = campoSeguro(agrupar_.first());
    if (g.isEmpty()) return;
    const QVariant valor = grupo->data(primera, kRolRegistro);
    QVariantList p = parametros_;
    QString sql = QStringLiteral("SELECT * FROM (") + sql_ + QStringLiteral(") AS q WHERE ") + g;
    if (valor.isNull()) {
        sql += QStringLiteral(" IS NULL");
    } else {
        sql += QStringLiteral(" = ?");
        p << valor;
    }
    try {
        QSqlQuery q = ejecutaAdelante(almacen_, sql, p);
        const int nc = modelo_->columnCount();
        QList<QTreeWidgetItem*> hijos;
        while (q.next()) {
            auto* it = new QTreeWidgetItem;
            QVariantList r;
            r.reserve(nc);
            for (int c = 0; c < nc; ++c) {
                const QVariant v = q.value(c);
                r << v;
                it->setText(c, modelo_->texto(v, c));
                if (modelo_->alineaDerecha(c)) it->setTextAlignment(c, Qt::AlignRight | Qt::AlignVCenter);
            }
            it->setData(0, kRolRegistro, r);
            hijos << it;
        }
        grupo->addChildren(hijos);
    } catch (const ErrorAlmacen&) {
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
