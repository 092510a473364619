#pragma once
// El artículo: la regla del código, las cuentas de precio de la ficha, el precio con impuesto y
// la grabación de la ficha.

#include "store/almacen.h"
#include "store/dinero.h"

#include <QString>
#include <QStringView>
#include <QVariant>
#include <optional>

namespace orv {

// Máscaras de la ficha: el precio con dos decimales y miles, el margen con uno.
inline const QString kMascaraPrecioFicha = QStringLiteral("###,###,##0.00");
inline const QString kMascaraMargen = QStringLiteral("##0.0");

// Largos de las columnas de texto que la ficha escribe (la descripción no tiene tope).
inline constexpr int kLargoCodigo = 50;
inline constexpr int kLargoFoto = 255;

// ---------------------------------------------------------------------------------------------
// Regla del código
// ---------------------------------------------------------------------------------------------

// El código de un artículo nuevo: el rubro con `cifrasRubro` cifras y, detrás, la cantidad de
// artículos del rubro más uno con `cifrasArticulo` cifras. Un ancho de 0 (o negativo) pone el
// número tal cual; un número más ancho que su máscara sale entero. Rubro 7, 12 artículos y los
// anchos de siempre: "070013".
QString CodigoPropuesto(qint64 idRubro, qint64 articulosDelRubro, int cifrasRubro, int cifrasArticulo);

// El mismo código contando en el almacén los artículos del rubro. Es la cantidad y no el número
// más alto: tras borrar un artículo del rubro la propuesta puede repetir un código existente.
QString ProponeCodigo(const Almacen& a, qint64 idRubro, int cifrasRubro, int cifrasArticulo);

// ---------------------------------------------------------------------------------------------
// Cuentas de precio de la ficha (mientras se escribe). Los números se leen con "." decimal y ","
// de miles bien agrupados; lo que no se lee da nullopt y el campo queda como estaba.
// ---------------------------------------------------------------------------------------------

// Precio de venta = costo × (margen / 100 + 1), con kMascaraPrecioFicha.
std::optional<QString> VentaDesdeMargen(QStringView costo, QStringView margen);
// Margen = (venta / costo − 1) × 100, con kMascaraMargen. Costo 0 o vacío: nullopt.
std::optional<QString> MargenDesdeVenta(QStringView costo, QStringView venta);

// ---------------------------------------------------------------------------------------------
// Precio con impuesto
// ---------------------------------------------------------------------------------------------

// El porcentaje de impuesto del valor CoefIva ("21", "10.5"); 0 si está vacío o no se lee como
// número ("abc", "21,5").
double LeeCoefIva(const QString& coefIva);
// PrecioVenta × (1 + coef / 100); con coef 0, el mismo precio.
Dinero PrecioConImpuesto(Dinero precioVenta, double coef);

// ---------------------------------------------------------------------------------------------
// Ficha
// ---------------------------------------------------------------------------------------------

// Lo que la ficha muestra y devuelve, como texto de sus campos (los precios con sus miles).
struct DatosArticulo {
    QString codigo;
    QString descripcion;
    QVariant idRubro;     // nulo: sin rubro
    QVariant idProveedor; // nulo: sin proveedor
    QString stockActual;
    QString stockMinimo;
    QString precioCosto;
    QString precioVenta;
    QString utilidad;     // el margen que se ve, en por ciento
    QString cgoProveedor;
    bool imprimeCodigoBarra = false;
    bool esMateriaPrima = false;
    QString foto;         // ruta completa o vacío
    // Al modificar: la existencia como se leyó al abrir la ficha. Si el usuario no la cambió, la
    // grabación no toca el stock (las ventas de otros puestos siguen contando); si la cambió y en
    // el almacén ya no es la leída, no se graba nada y se dice la de ahora.
    std::optional<QString> existenciaAlAbrir;
};

// La ficha de un artículo como la carga la pantalla: precios con kMascaraPrecioFicha, cantidades
// y margen como números simples. nullopt si el artículo no existe.
std::optional<DatosArticulo> LeeArticulo(const Almacen& a, qint64 idArticulo);

// Graba la ficha: con idArticulo 0 agrega un artículo, si no modifica ese. Devuelve su id.
//   1. Descripción y código no pueden quedar vacíos; los números se leen sin ambigüedad.
//   2. El código no puede ser el de otro artículo: un código leído debe dar un solo artículo.
//   3. La existencia sólo si el usuario la cambió y nadie la movió mientras tanto.
//   4. Todas las columnas de la ficha y PrecioFinal (el precio de venta con CoefIva) en una
//      sola transacción.
// Lanza Aviso con lo que está mal, sin escribir nada.
qint64 GrabaArticulo(Almacen& a, qint64 idArticulo, const DatosArticulo& d, const QString& coefIva);

// "Quitar" del panel: borra el artículo. No mira movimientos, líneas de comprobantes, compras ni
// fórmulas que lo usan: esas filas quedan apuntando a un artículo que ya no está, y quien las lee
// lo tolera. Devuelve false si el artículo ya no existía.
bool BorraArticulo(Almacen& a, qint64 idArticulo);

} // namespace orv
