#include "suppliers/ui/contexto_compras.h"

#include "suppliers/ui/pan_nue_compra.h"

namespace orv {

bool AbreIngresoCompra(const ContextoCompras& c, qint64 idProveedor, const QString& nombre, std::optional<qint64> idCompra,
                       QWidget* padre) {
    panNueCompra compra(c.almacen, c.estado, c.conf, c.reloj, idProveedor, nombre, idCompra, padre);
    compra.fijaArticuloNuevo(c.articuloNuevo);
    if (compra.exec() != QDialog::Accepted) return false;
    if (c.cambios) c.cambios();
    return true;
}

} // namespace orv
