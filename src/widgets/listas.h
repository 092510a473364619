#pragma once
// Carga de listas y combos desde el almacén, y selección por clave o por texto.
// Las rutinas no vacían la lista: quien llama lo hace antes cuando corresponde.

#include "store/almacen.h"

#include <QString>
#include <QVariant>
#include <QVariantList>

class QComboBox;
class QListWidget;

namespace orv {

// Agrega el texto del campo de cada fila, en orden. Los errores se ignoran.
void LlenaLista(QComboBox* lista, const Almacen& a, const QString& sql, const QVariantList& parametros,
                const QString& campo);
void LlenaLista(QListWidget* lista, const Almacen& a, const QString& sql, const QVariantList& parametros,
                const QString& campo);

// Como LlenaLista, y guarda la clave de cada fila como dato del elemento (Qt::UserRole).
// Ante un error muestra "Error detectado : <descripción> - <número>" y sigue.
void LlenaCombo(QComboBox* combo, const Almacen& a, const QString& sql, const QVariantList& parametros,
                const QString& campoTexto, const QString& campoId);

// Selecciona el primer elemento cuyo dato es la clave; si no hay ninguno, no queda nada seleccionado.
void SelComboId(QComboBox* combo, const QVariant& id);
// Selecciona el primer elemento cuyos primeros `largo` caracteres coinciden con los del texto;
// si no hay ninguno, no queda nada seleccionado. Con largo 0 coincide el primero.
void SelComboTexto(QComboBox* combo, const QString& texto, int largo);

} // namespace orv
