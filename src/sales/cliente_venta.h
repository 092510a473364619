#pragma once
// Cliente de la venta: por número de cliente, por número de tarjeta o elegido en la búsqueda.

#include "store/almacen.h"

#include <QString>
#include <QVariant>
#include <optional>

namespace orv {

struct ClienteVenta {
    qint64 idVendedor = 0;
    QString nombre;
    QString cuit;
    qint32 idTipoIva = 1;
    double descuento = 0;
    QVariant idTipoFormaPago;
    QString direccion; // domicilio, teléfonos y e-mail, separados por ", "
    bool vip = false;  // vino por el número de tarjeta
};

// Texto numérico de menos de 6 caracteres: número de cliente; de 6 o más: número de tarjeta.
// Nada si el texto no es numérico o no hay cliente (entonces se busca por nombre).
std::optional<ClienteVenta> ClientePorNumero(const Almacen& a, const QString& texto);
std::optional<ClienteVenta> ClientePorId(const Almacen& a, qint64 idVendedor);

// Consulta de la búsqueda de clientes.
QString ConsultaSeleccionClientes();

} // namespace orv
