#pragma once
// Piezas comunes de los paneles de la ventana principal.

#include "store/almacen.h"

#include <QString>
#include <QVariantList>
#include <QWidget>

class QLabel;

namespace orv {

class Grilla;

// Título grande de un panel.
QLabel* TituloPanel(const QString& texto, QWidget* padre);

// Panel de lista: título y una grilla de sólo lectura sobre una consulta.
class PanelLista : public QWidget {
    Q_OBJECT
public:
    PanelLista(Almacen& almacen, const QString& titulo, const QString& nombreGrilla, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }
    // Liga la grilla; un error del almacén deja la grilla vacía (la ventana carga igual).
    void fijaConsulta(const QString& sql, const QVariantList& parametros = {});

private:
    Grilla* grilla_;
};

} // namespace orv
