#pragma once
// Registro de un comprobante: del borrador de la terminal a un comprobante numerado con todos sus
// efectos (líneas, stock, caja o cuenta corriente, comisión del vendedor, puntos del cliente), en
// una sola transacción; y su borrado, que deshace lo que el comprobante dice que hizo.

#include "sales/salida_comprobante.h"
#include "store/almacen.h"
#include "store/dinero.h"

#include <QDate>
#include <QString>
#include <optional>

namespace orv {

// Lo que la venta en curso tiene al pulsar "Registrar".
struct DatosRegistro {
    qint32 idRed = 0;
    qint32 idUsuario = 0;
    qint64 idTipoComprobante = 0;
    std::optional<qint64> idCliente; // el cliente elegido (número confirmado)
    bool clienteEsVip = false;       // elegido por su tarjeta
    QString nombreCliente = QStringLiteral("Cons.Final");
    QString cuitCliente;
    qint32 idTipoIva = 1;
    QString formaPago = QStringLiteral("EFVO");
    QString cupon;
    std::optional<qint64> idVendio; // vendedor elegido en la lista
    QString textoTipo;              // el tipo como se ve en la venta
    // Importes como los muestra la venta, ya redondeados por la máscara.
    Dinero suPago;
    Dinero subTotal;
    double porcDescuento = 0;
    Dinero montDescuento;
    Dinero neto;
    Dinero porcImpuesto;
    Dinero importeIva;
    Dinero total;
    QString formaCalculoVip; // "P": puntos por importe; otro: por cantidad
    QDate hoy;
};

struct Registrado {
    qint64 idComprobante = 0;
    qint64 numero = 0;
    QString factura; // como se guarda
    qint64 puntos = 0;
};

// Número completo del comprobante: letra, punto de venta, "-" y ocho cifras.
QString NumeroCompleto(const QString& letra, const QString& puntoDeVenta, qint64 numero);

// Escribe el comprobante con la ruta ya decidida y vacía el borrador de la terminal, todo o nada:
// el número se toma dentro de la misma transacción (dos terminales nunca reciben el mismo). Lanza
// Aviso o ErrorAlmacen si algo falla; entonces no queda nada escrito, el número no se consume y el
// borrador sigue como estaba.
Registrado RegistraComprobante(Almacen& a, const DatosRegistro& d, Ruta ruta);

// Comprobante que se borra, con las marcas que guardó al registrarse.
struct ComprobanteABorrar {
    qint64 idComprobante = 0;
    bool hizoCaja = false;
    bool hizoStock = false;
    bool tipoStock = false; // la operación inversa del tipo, cuando se registró
};
std::optional<ComprobanteABorrar> LeeComprobanteABorrar(const Almacen& a, qint64 idComprobante);

// Borra el comprobante y deshace sus efectos según sus propias marcas, en una transacción. Los
// puntos del cliente y el número no se devuelven; un stock nulo queda nulo. Si el comprobante ya
// no está (otra terminal lo borró), lanza el aviso kComprobanteYaBorrado sin tocar nada.
inline const QString kComprobanteYaBorrado = QStringLiteral("El comprobante ya fue eliminado desde otra terminal.");
void BorraComprobante(Almacen& a, const ComprobanteABorrar& c);

} // namespace orv
