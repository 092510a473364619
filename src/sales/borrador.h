#pragma once
// Borrador de la venta: las líneas de TmpFac de una terminal, cómo se agregan, se corrigen y
// se borran, y los totales del panel "Vender".

#include "store/almacen.h"
#include "store/rutinas.h"
#include "store/aviso.h"
#include "store/dinero.h"

#include <QString>
#include <optional>

namespace orv {

struct ArticuloVenta {
    qint64 idArticulo = 0;
    QString codigo;
    QString descripcion;
    QString cgoProveedor;
    QVariant precioVenta; // nulo si el artículo no tiene precio
};

// Búsquedas exactas; la primera fila gana. Nada si no hay artículo.
std::optional<ArticuloVenta> ArticuloPorCodigo(const Almacen& a, const QString& codigo);
std::optional<ArticuloVenta> ArticuloPorId(const Almacen& a, qint64 idArticulo);
std::optional<ArticuloVenta> ArticuloPorCgoProveedor(const Almacen& a, const QString& cgoProveedor);

// De dónde salió el artículo (lo que dice el Tag de "Agregar").
enum class OrigenLinea {
    CodigoBarras, // "TEXTBA": por código, con el precio de venta del artículo
    CodigoProveedor, // "TEXT": por código, con el precio tal como está escrito
    Lista,        // "COMBO": el elegido en la lista, con el precio tal como está escrito
};

inline const QString kArticuloNoEncontrado = QStringLiteral("Articulo no encontrado!");
// El aviso de "Agregar" cuando el código no es de ningún artículo (o el precio no es un número):
// la venta lo muestra en el panel en vez de una caja.
class ArticuloNoEncontrado : public Aviso {
public:
    ArticuloNoEncontrado() : Aviso(kArticuloNoEncontrado) {}
};

// El multiplicador de la caja: "3*" antes del código pide 3 de ese artículo ("1.5*" también,
// con el punto decimal). Sin un número y un asterisco adelante, el texto entero es el código.
struct CodigoConCantidad {
    QString codigo;
    std::optional<QString> cantidad;
};
CodigoConCantidad SeparaCantidad(const QString& texto);

struct PedidoLinea {
    OrigenLinea origen = OrigenLinea::CodigoBarras;
    QString codigo;                    // Text7
    std::optional<qint64> idDeLista;   // artículo elegido en Text9
    QString cantidad;                  // txtCant, como se tipeó
    QString unitario;                  // txUnit, como se tipeó
};

struct LineaAgregada {
    qint64 idTmpFac = 0;
    qint64 idArticulo = 0;
    double cantidad = 0;
    bool fusionada = false; // el artículo ya estaba en el borrador
};

// "Agregar": una línea nueva, o la suma a la línea del mismo artículo. Al sumar, la cantidad
// queda entera (redondeo a par en la mitad) y el Unitario no cambia; el SubTotal sale del
// precio nuevo. Lanza Aviso "Articulo no encontrado!" si no hay artículo o el precio no es un
// número, y Aviso "Error: ..." si se pidió de la lista sin elegir nada. Una cantidad o un precio
// ambiguos o fuera de rango se rechazan con un aviso que nombra el campo, y nada se escribe
// si la línea no cabe en los topes de un importe. Una sola transacción.
LineaAgregada AgregaLinea(Almacen& a, qint32 idRed, const PedidoLinea& p);

// Teclas + y - del teclado numérico: suma delta a la cantidad y recalcula el SubTotal. Rechaza
// (sin cambiar nada) lo que deje la línea fuera de los topes.
void CambiaCantidad(Almacen& a, qint64 idTmpFac, double delta);
// Corrección en la grilla de Cantidad, Unitario o Sn de una línea (sin recalcular el SubTotal).
// Lo que no se lee o no cabe se rechaza con un aviso y la línea queda como estaba.
void CorrigeLinea(Almacen& a, qint64 idTmpFac, const QString& campo, const QVariant& valor);
// SubTotal = Unitario × Cantidad en todas las líneas de la terminal, con las cuentas del dinero.
void RecalculaLineas(Almacen& a, qint32 idRed);
void BorraLinea(Almacen& a, qint64 idTmpFac);
// Vacía el borrador de la terminal.
void VaciaBorrador(Almacen& a, qint32 idRed);

// Al abrir la búsqueda de artículos se rehace el precio con impuesto de todos los artículos:
// PrecioVenta × (1 + CoefIva / 100) si CoefIva se lee como un número distinto de 0 (LeeCoefIva);
// si no, PrecioVenta.
void RefrescaPrecioFinal(Almacen& a, const QString& coefIva);
// Búsqueda de artículos cuya descripción contiene el texto (comodines como texto común).
ConsultaConParametros BuscaArticulos(const Almacen& a, const QString& texto);

struct Totales {
    bool hayLineas = false;
    double subTotal = 0, descuento = 0, neto = 0, impuesto = 0, total = 0;
    double unidades = 0;
    qint64 lineas = 0;
    // Una línea guardada con una cantidad o un importe imposibles: los totales quedan en cero y
    // el panel dice cuál es para que se borre.
    QString problema;
    qint64 idLineaConProblema = 0;
};

// Descuento sobre el subtotal y el impuesto sobre el neto, cada uno a centavos, de modo que
// subtotal − descuento = neto y neto + impuesto = total al centavo. Sin líneas, hayLineas es falso y sólo el total vale 0. Nunca
// falla por una línea mala: la señala en `problema`.
Totales CalculaTotales(const Almacen& a, qint32 idRed, double porcDescuento, double porcImpuesto);
// "7.0 de 3 ítems." o "0 ítems."
QString TextoItems(const Totales& t);

} // namespace orv
