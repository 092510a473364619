#pragma once
// El cliente: su ficha (tabla Vendedores), su grabación con sus controles, su borrado y las
// consultas del panel "Clientes".

#include "store/almacen.h"
#include "store/rutinas.h"
#include "store/dinero.h"

#include <QString>
#include <QVariant>
#include <QVariantList>
#include <optional>

namespace orv {

// Largos de las columnas de texto de la ficha.
inline constexpr int kLargoNombreCliente = 100;
inline constexpr int kLargoEmpresaCliente = 50;
inline constexpr int kLargoDomicilioCliente = 100;
inline constexpr int kLargoLocalidadCliente = 100;
inline constexpr int kLargoTelefonoCliente = 50;
inline constexpr int kLargoEmailCliente = 100;
inline constexpr int kLargoCuitCliente = 30;
inline constexpr int kLargoTarjetaCliente = 30;

// Cifras mínimas de un número de tarjeta: con menos, la venta lo toma por un número de cliente.
inline constexpr int kCifrasTarjeta = 6;

// Lo que la ficha muestra y devuelve, como texto de sus campos; las claves de los combos como
// QVariant (nulo: sin elegir).
struct DatosCliente {
    QString nombre;
    QString empresa;
    QString domicilio;
    QString localidad;
    QString telefono;
    QString telefono2;
    QString email;
    QString cuit;
    QString descuento; // por ciento, "." decimal
    QString nroClienteVIP;
    QVariant idZona;
    QVariant idTipoIva;
    QVariant idTipoFormaPago;
};

// La ficha como la carga la pantalla; nullopt si el cliente no existe.
std::optional<DatosCliente> LeeCliente(const Almacen& a, qint64 idVendedor);

// Graba la ficha: sin id agrega un cliente, si no modifica ese. Devuelve su id.
//   1. Nombre y zona (una que exista: sin ella el panel no lo lista); textos dentro de su largo.
//   2. El número fiscal, si se escribió y `controlaCuit` (país con CUIT), debe pasar CuitValido.
//   3. El descuento es un porcentaje bien escrito; vacío vale 0.
//   4. La tarjeta, si se escribió: sólo cifras, al menos kCifrasTarjeta, y de ningún otro cliente.
//   5. La fila y, si la localidad es nueva, su entrada en Localidades, en una transacción.
// Lanza Aviso con lo que está mal, sin escribir nada.
qint64 GrabaCliente(Almacen& a, std::optional<qint64> idVendedor, const DatosCliente& d, bool controlaCuit,
                    const QString& claveImpositiva);

// "Quitar" del panel: borra las líneas de la cuenta del cliente y al cliente, en una transacción.
// Comprobantes, tarjeta y caja quedan. Devuelve false si el cliente ya no existía.
bool BorraCliente(Almacen& a, qint64 idVendedor);

// Consulta del panel: los clientes con zona, por zona, localidad y nombre. `nombre` filtra por
// nombre o empresa y `localidad` por localidad (contienen el texto, sin distinguir mayúsculas).
ConsultaConParametros ConsultaPanelClientes(const Almacen& a, const QString& nombre, const QString& localidad);

// Las listas de la ficha.
QString ConsultaZonas();
QString ConsultaLocalidades();
QString ConsultaTiposIva();
QString ConsultaFormasPagoCliente();

} // namespace orv
