#include "articles/ui/modelo_hoja.h"

namespace orv {

void ModeloHoja::fija(HojaLeida hoja) {
    beginResetModel();
    hoja_ = std::move(hoja);
    endResetModel();
}

int ModeloHoja::rowCount(const QModelIndex& padre) const { return padre.isValid() ? 0 : int(hoja_.filas.size()); }
int ModeloHoja::columnCount(const QModelIndex& padre) const { return padre.isValid() ? 0 : int(hoja_.titulos.size()); }

QVariant ModeloHoja::data(const QModelIndex& i, int rol) const {
    if (!i.isValid()) return {};
    const Celda c = hoja_.filas[i.row()].celdas.value(i.column());
    if (rol == Qt::DisplayRole || rol == Qt::EditRole) return c.aTexto();
    if (rol == Qt::TextAlignmentRole && c.tipo == Celda::Tipo::Numero) return int(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

bool ModeloHoja::setData(const QModelIndex& i, const QVariant& valor, int rol) {
    if (!i.isValid() || rol != Qt::EditRole) return false;
    QList<Celda>& celdas = hoja_.filas[i.row()].celdas;
    while (celdas.size() <= i.column()) celdas << Celda();
    const QString t = valor.toString();
    if (t == celdas[i.column()].aTexto()) return false; // sin cambios: la celda conserva su tipo
    celdas[i.column()] = t.isEmpty() ? Celda() : Celda::deTexto(t);
    Q_EMIT dataChanged(i, i);
    return true;
}

Qt::ItemFlags ModeloHoja::flags(const QModelIndex& i) const {
    return i.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable : Qt::NoItemFlags;
}

QVariant ModeloHoja::headerData(int seccion, Qt::Orientation o, int rol) const {
    if (rol != Qt::DisplayRole) return {};
    if (o == Qt::Horizontal) return hoja_.titulos.value(seccion);
    if (seccion < 0 || seccion >= hoja_.filas.size()) return {};
    const int numero = hoja_.filas[seccion].numero;
    return numero > 0 ? QVariant(numero) : QVariant(QStringLiteral("+"));
}

bool ModeloHoja::insertRows(int fila, int cuantas, const QModelIndex& padre) {
    if (padre.isValid() || fila < 0 || fila > hoja_.filas.size() || cuantas < 1) return false;
    beginInsertRows(padre, fila, fila + cuantas - 1);
    for (int i = 0; i < cuantas; ++i) hoja_.filas.insert(fila, FilaPlanilla{});
    endInsertRows();
    return true;
}

bool ModeloHoja::removeRows(int fila, int cuantas, const QModelIndex& padre) {
    if (padre.isValid() || fila < 0 || cuantas < 1 || fila + cuantas > hoja_.filas.size()) return false;
    beginRemoveRows(padre, fila, fila + cuantas - 1);
    hoja_.filas.remove(fila, cuantas);
    endRemoveRows();
    return true;
}

} // namespace orv
