#pragma once
// Lo que comparten las pantallas de compras y cuentas de proveedores: el almacén, la terminal, la
// configuración, el reloj, la salida de informes y las puertas a otros temas.

#include "app/configuracion.h"
#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QString>
#include <functional>
#include <optional>

class QWidget;

namespace orv {

class SalidaInformes;

struct ContextoCompras {
    Almacen& almacen;
    const EstadoAplicacion& estado;
    const Configuracion& conf;
    const Reloj& reloj;
    SalidaInformes& salida;
    // Abre la ficha de un artículo nuevo; su id, o 0 si no se grabó ("Nuevo Artículo.." de la compra).
    std::function<qint64()> articuloNuevo;
    // Una compra, un pago o un borrado cambiaron el stock, la caja o los costos.
    std::function<void()> cambios;
};

// El ingreso de una compra del proveedor (nueva, o la guardada para corregirla); true si se registró.
bool AbreIngresoCompra(const ContextoCompras& c, qint64 idProveedor, const QString& nombre, std::optional<qint64> idCompra,
                       QWidget* padre);

} // namespace orv
