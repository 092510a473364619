#pragma once
// Las tablas chicas de la configuración se atienden igual: una lista (la grilla compartida) con
// "Nueva...", "Editar", "Borrar" y "Salir"; doble clic o Enter en una fila la edita. Cada pantalla
// arma su grilla y dice cómo se edita y cómo se borra una fila.

#include "store/almacen.h"

#include <QDialog>
#include <optional>

class QVBoxLayout;

namespace orv {

class Grilla;

class DialogoLista : public QDialog {
    Q_OBJECT
public:
    // Los nombres de los botones (objectName) de Nueva, Editar y Borrar.
    struct NombresBotones {
        const char* nueva;
        const char* editar;
        const char* borrar;
    };
    Grilla* grilla() const { return grilla_; }
    void nueva();
    void editar(); // sin fila elegida, lo dice
    void borrar(); // pregunta antes

protected:
    // Deja la capa con la grilla (sin configurar) y la fila de botones debajo; `encima` se pone
    // sobre la grilla si no es nulo.
    DialogoLista(Almacen& almacen, const QString& nombre, const QString& titulo, NombresBotones botones, QWidget* encima,
                 QWidget* padre);
    // Abre la edición de una fila (sin id, una nueva); true si se aceptó.
    virtual bool edita(std::optional<qint64> id) = 0;
    // Borra la fila; lanza Aviso si no se puede.
    virtual void borraFila(qint64 id) = 0;

    Almacen& almacen_;

private:
    void abre(std::optional<qint64> id);
    Grilla* grilla_;
};

} // namespace orv
