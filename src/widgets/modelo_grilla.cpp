#include "widgets/grilla.h"
#include "widgets/grilla_interna.h"

#include "store/formato.h"

#include <QSqlField>
#include <QSqlQuery>

namespace orv {

using namespace grilla;

namespace {

constexpr int kMaxPaginasEnMemoria = 512;

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
        // Con una vecina en memoria, la página se lee desde su valor del orden, sin saltar filas.
        const auto anterior = paginas_.constFind(numero - 1), siguiente = paginas_.constFind(numero + 1);
        std::optional<Pagina> vecina;
        if (lectorVecino_)
            vecina = lectorVecino_(numero, anterior != paginas_.cend() ? &anterior.value() : nullptr,
                                   siguiente != paginas_.cend() ? &siguiente.value() : nullptr);
        p = vecina ? std::move(*vecina) : leePagina(numero);
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
    return mascaras_.contains(campo(columna).toLower()) || EsTipoNumerico(campos_.field(columna).metaType());
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

} // namespace orv
