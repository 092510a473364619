#pragma once
// La hoja leída en una grilla editable: cada celda se corrige como texto, y se agregan y quitan
// filas antes de importar. La importación toma las filas tal como quedaron.

#include "articles/importacion.h"

#include <QAbstractTableModel>

namespace orv {

class ModeloHoja : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    void fija(HojaLeida hoja);
    const HojaLeida& hoja() const { return hoja_; }

    int rowCount(const QModelIndex& padre = {}) const override;
    int columnCount(const QModelIndex& padre = {}) const override;
    QVariant data(const QModelIndex& i, int rol = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& i, const QVariant& valor, int rol = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& i) const override;
    // Títulos de las columnas; a la izquierda, el número de la fila en la hoja ("+" una agregada).
    QVariant headerData(int seccion, Qt::Orientation o, int rol = Qt::DisplayRole) const override;
    // Filas nuevas, vacías, sin número de la hoja.
    bool insertRows(int fila, int cuantas, const QModelIndex& padre = {}) override;
    bool removeRows(int fila, int cuantas, const QModelIndex& padre = {}) override;

private:
    HojaLeida hoja_;
};

} // namespace orv
