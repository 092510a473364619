#pragma once
// Piezas internas de la grilla compartidas por sus archivos (la vista, el modelo, la búsqueda y la
// agrupación). No se usan fuera de widgets/.

#include "store/almacen.h"

#include <QFrame>
#include <QSqlQuery>

class QLabel;
class QToolButton;

namespace orv {

class Grilla;

namespace grilla {

inline const char* const kMimeColumna = "application/x-orvanta-columna";
constexpr int kRolRegistro = Qt::UserRole + 1; // fila de un grupo: sus valores
constexpr int kRolCargado = Qt::UserRole + 2;  // grupo: sus filas ya leídas

// Consulta sólo hacia adelante con parámetros ligados.
inline QSqlQuery ejecutaAdelante(Almacen& a, const QString& sql, const QVariantList& parametros) {
    return a.consulta(sql, parametros);
}

} // namespace grilla

// Banda sobre la grilla: se suelta aquí el título de una columna para agrupar por ella.
class BandaAgrupar : public QFrame {
public:
    explicit BandaAgrupar(Grilla& g);
    void muestra(const QString& titulo);

protected:
    void dragEnterEvent(QDragEnterEvent* e) override;
    void dropEvent(QDropEvent* e) override;

private:
    Grilla& grilla_;
    QLabel* texto_;
    QToolButton* ficha_;
};

} // namespace orv
