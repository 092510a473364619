#pragma once
// Cliente de la venta: por número de cliente, por número de tarjeta o elegido en la búsqueda.

#include "app/configuracion.h"
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

// Cliente con que empieza cada venta ("ClientePredeterminado" de "Miscelaneas": un número de
// cliente). Nada si no hay ninguno fijado o el cliente ya no existe: la venta empieza sin cliente.
std::optional<ClienteVenta> ClientePredeterminado(const Almacen& a, const Configuracion& conf);
// Fija el cliente con que empieza cada venta; vacío lo quita. Un número que no es de un cliente
// se rechaza con un aviso y el valor guardado no cambia.
void FijaClientePredeterminado(const Almacen& a, const Configuracion& conf, const QString& numero);

struct FormaDePago {
    bool aCuenta = false;
    bool tarjeta = false;
};
std::optional<FormaDePago> LeeFormaDePago(const Almacen& a, qint64 idTipoFormaPago);

// Datos de "Mas Datos..." (sólo para esta venta).
struct DatosFPago {
    qint64 idTipoComprobante = 0;
    QString observaciones;
    double descuento = 0;
    QString nombreCliente;
    QString cuit;
    qint32 idTipoIva = 0;
    QString cupon;
    int posicionFormaPago = -1;
    QString formaPago;
};
// Controles de "&Aceptar": una situación de IVA elegida ("Seleccione un tipo de iva para el
// cliente!"), forma de pago y descuento numérico ("Datos mal ingresados !").
void ValidaFPago(bool hayTiposIva, const QString& formaPago, const QString& tipoIva, const QString& descuento);

// Consulta de la búsqueda de clientes.
QString ConsultaSeleccionClientes();

} // namespace orv
