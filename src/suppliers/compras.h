#pragma once
// Compras a proveedores: el registro de un documento de compra desde el borrador de la terminal,
// con todos sus efectos (renglones, stock y su diario, costos, caja y cuenta del proveedor), la
// nueva registración de una compra que se corrige, y la carga de una compra en el borrador.

#include "store/almacen.h"
#include "suppliers/borrador_compra.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <optional>

namespace orv {

// Tipos de documento y letras que se ofrecen.
QStringList TiposDocumentoCompra();
QStringList LetrasDocumentoCompra();
inline const QString kFormaPagoCtaCte = QStringLiteral("CTA CTE");
// ¿La forma de pago es la cuenta corriente? (en mayúsculas: entonces no hay movimiento de caja).
bool EsCuentaCorriente(const QString& formaPago);

// Número del documento: letra, sucursal en cuatro cifras, "-" y ocho cifras ("A0001-00000123").
QString NumeroDocumentoCompra(const QString& letra, qint64 sucursal, qint64 numero);

// Lo que tiene la pantalla de la compra al pulsar "Aceptar".
struct DatosCompra {
    qint32 idRed = 0;
    qint32 idUsuario = 0;
    qint64 idProveedor = 0;
    QString nombreProveedor;
    std::optional<qint64> idCompraAnterior; // la compra que se corrige
    QString tipo = QStringLiteral("FACTURA");
    QString letra;
    QString sucursal; // txPtoVta, como se tipeó
    QString numero;   // txNroComproba
    QDate fecha;
    std::optional<qint64> idFormaPago;
    QString formaPago;
    std::optional<qint64> idCuenta;
    QString referencia;
    QString descuento = QStringLiteral("0"); // porcentaje, como se tipeó
    QString alicuota;                        // txPorImp
    bool pendiente = false;                  // "Pendiente de entregar ?": la compra nace sin cancelar
    bool registraCaja = false;
    bool registraStock = false;
    bool asignaCostos = false; // sólo con stock: el unitario de la línea pasa al costo del artículo
};

struct CompraRegistrada {
    qint64 idCompra = 0;
    QString numero; // "A0001-00000123"
    TotalesCompra totales;
};

inline const QString kCompraRepetida = QStringLiteral("Error, éste comprobante ya fué ingresado!");

// "Aceptar": todo o nada, en una transacción. Primero revisa lo escrito (con el aviso de cada campo);
// luego quita la compra que se corrige (su stock por sus renglones, su fila de caja, su cuenta; el
// diario de stock y los costos quedan), controla que el documento no esté ya ingresado y escribe la
// compra, sus renglones y, si se pidió, el stock, el costo y la fecha de última compra de cada
// artículo y su diario; la fila de caja; y en la cuenta del proveedor el Debe y, salvo en cuenta
// corriente, el Haber del pago en el acto. Un rechazo o una falla dejan la compra anterior como
// estaba. El borrador queda.
CompraRegistrada RegistraCompra(Almacen& a, const DatosCompra& d);

// Una compra guardada, para corregirla: vacía el borrador de la terminal y pone en él sus renglones;
// devuelve sus datos (el descuento vuelve a empezar en 0) y sus totales guardados. Nada si no existe.
struct CompraGuardada {
    DatosCompra datos;
    Dinero neto, impuesto, total;
};
std::optional<CompraGuardada> CargaCompra(Almacen& a, qint32 idRed, qint64 idCompra);

// ---- Registro de compras de un proveedor ----

// Las compras del proveedor por fecha, de un tipo (o "<Todos>") entre dos fechas; sin filtro, todas.
// El tipo se compara como se guarda, en sus primeros 10 caracteres.
struct FiltroCompras {
    QString tipo = QStringLiteral("<Todos>");
    QDate desde;
    QDate hasta;
};
ConsultaConParametros ComprasDeProveedor(qint64 idProveedor, const std::optional<FiltroCompras>& filtro);

// "Borrar": deshace la compra por su cuenta, en una transacción: su cuenta entera (también el pago en
// el acto), su salida de caja (por cuenta, fecha y número de compra) y, si movió stock, lo que su
// diario dice que entró, borrando ese diario. Los renglones quedan y el costo no vuelve. No mira la
// fecha cerrada. Si otra terminal ya la borró, no hace nada.
void BorraCompra(Almacen& a, qint64 idCompra);

} // namespace orv
