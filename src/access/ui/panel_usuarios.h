#pragma once
// Panel "Usuarios del sistema" de la ventana principal: la grilla de usuarios agrupada por nivel
// y sus botones "Modificar", "Nuevo", "Borrar", "Comisiones" y "Niveles de acceso...".

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
    // "Comisiones": pide a la ventana las comisiones del usuario de la fila actual.
    void comisiones();
    // Vuelve a leer la grilla, con los grupos abiertos.
    void refresca();

Q_SIGNALS:
    // Cambió la lista de usuarios (nombres incluidos): la lista de vendedores se vuelve a llenar.
    void usuariosCambiados();
    // Las comisiones del vendedor `idUsuario` (las abre la ventana, que tiene la salida de informes).
    void comisionesPedidas(qint64 idUsuario);

private:
    void edita(std::optional<qint64> id);
    void abreGrupos();

    Almacen& almacen_;
    Grilla* grilla_;
};

} // namespace orv
