#pragma once
// Panel "Usuarios del sistema" de la ventana principal: la grilla de usuarios agrupada por nivel
// y sus botones "Modificar", "Nuevo", "Borrar" y "Niveles de acceso...".

#include "store/almacen.h"

#include <QWidget>
#include <optional>

namespace orv {

class Grilla;

class PanelUsuarios : public QWidget {
    Q_OBJECT
public:
    explicit PanelUsuarios(Almacen& almacen, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }

    void modificar();
    void nuevo();
    void borrar();
    void niveles();
    // Vuelve a leer la grilla, con los grupos abiertos.
    void refresca();

Q_SIGNALS:
    // Cambió la lista de usuarios (nombres incluidos): la lista de vendedores se vuelve a llenar.
    void usuariosCambiados();

private:
    void edita(std::optional<qint64> id);
    void abreGrupos();

    Almacen& almacen_;
    Grilla* grilla_;
};

} // namespace orv
