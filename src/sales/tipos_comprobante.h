#pragma once
// Tipo de comprobante de la venta: el predeterminado de la terminal y la vista previa del
// próximo número.

#include "app/configuracion.h"
#include "store/almacen.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace orv {

// Número tal como se muestra: Letra + " " + PuntoDeVenta + "-" + el número con ocho cifras.
QString NumeroMostrado(const QString& letra, const QString& puntoDeVenta, qint64 numero);

// Próximo número del tipo (Correlativo + 1) en su forma mostrada; vacío si el tipo no existe.
// Es sólo una vista previa: el número se toma de nuevo al registrar.
QString ProximoNumeroMostrado(const Almacen& a, qint64 idTipoComprobante);

// Tipo predeterminado: el de "ComprobantePredeterminado" si es numérico; si no, el primero de
// la tabla, que queda grabado como predeterminado. Nada si no hay ningún tipo.
std::optional<qint64> TipoComprobantePredeterminado(const Almacen& a, const Configuracion& conf);

// Número tal como se guarda en Comprobantes.Factura: Letra + PuntoDeVenta + "-" + ocho cifras,
// sin blanco, cortado a 15 caracteres.
QString NumeroGuardado(const QString& letra, const QString& puntoDeVenta, qint64 numero);

inline const QString kSinPlantilla = QStringLiteral("<Seleccionar>");

// Un tipo de comprobante tal como lo edita la pantalla (los números, como texto tipeado).
struct TipoComprobante {
    QString tipo;
    QString letra;
    QString puntoDeVenta;
    QString correlativo = QStringLiteral("0");
    // El correlativo como estaba al leer el tipo: sólo se escribe el número si el usuario lo cambió,
    // y sólo si nadie lo movió mientras tanto.
    std::optional<qint64> correlativoLeido;
    bool descuentaStock = false;
    bool registraCaja = false;
    bool operacionInversa = false;
    bool esComercial = false;
    QString plantilla = kSinPlantilla;
    QString modDocumento;
};

std::optional<TipoComprobante> LeeTipo(const Almacen& a, qint64 idTipoComprobante);
// Tipo, letra y punto de venta no vacíos, una plantilla elegida y un correlativo numérico;
// si no, Aviso "Error, ingrese la información correctamente!". Además el nombre cabe en su columna
// y el correlativo es un entero de 0 en adelante que cabe en la suya; si no, un aviso que lo dice.
void ValidaTipo(const TipoComprobante& t);
// Agrega (sin id) o modifica el tipo: letra de un carácter, punto de venta de cuatro,
// ModDocumento de las tres primeras cifras (0 si no es número). Al modificar, el correlativo se
// escribe sólo si cambió respecto de `correlativoLeido`, y sólo si en el almacén sigue siendo ése:
// si otro puesto registró un comprobante mientras tanto, un aviso con el número de ahora y nada
// cambia. Devuelve el id.
qint64 GuardaTipo(Almacen& a, std::optional<qint64> idTipoComprobante, const TipoComprobante& t);
void BorraTipo(Almacen& a, qint64 idTipoComprobante);

// Textos que explican las cuatro marcas del tipo.
namespace explicacion {
inline const QString esComercial = QStringLiteral(
    "Utilice ésta opción en aquellos comprobantes en los cuales realiza operaciones que comprometen a la "
    "contabilidad y estadísticas. Por ejemplo para un documento tipo presupuesto, debe quedar sin tildar.");
inline const QString operacionInversa = QStringLiteral(
    "Utilice ésta opción en aquellos comprobantes que desee que realicen una operacion de contrapartida contable "
    "y de stock. Por ejemplo una nota de crédito.");
inline const QString descuentaStock = QStringLiteral(
    "Ésta opción es para aquellos comprobantes que desee que descuenten cantidades de stock de la mercadería. Por "
    "ejemplo para presupuestos no debería usarlos.");
inline const QString registraCaja = QStringLiteral(
    "Utilice ésta opción en aquellos documentos que generan movimiento en la contabilidad, osea ingreso de caja y "
    "cuenta corriente.");
} // namespace explicacion

// Esquema de impresión según los primeros 16 caracteres de la plantilla.
enum class EsquemaImpresion { Plantilla, Fiscal, Tickets };
EsquemaImpresion EsquemaDe(const QString& plantilla);

// Impresoras fiscales: modelos Hasar, códigos de documento y el texto de la plantilla.
const QStringList& ModelosHasar();
const QStringList& DocumentosFiscales();
enum class ModeloFiscal { EpsonTMU, Epson200, Hasar };
QString TextoModeloFiscal(ModeloFiscal m, const QString& itemHasar = {});
// "IMPRESORA FISCAL : " + modelo + "|PUERTO : " + puerto
QString PlantillaFiscal(const QString& textoModelo, const QString& puerto);
struct LecturaFiscal {
    ModeloFiscal modelo = ModeloFiscal::Hasar;
    QString itemHasar; // por posición, como siempre
    QString puerto;    // el último carácter si es una cifra
};
LecturaFiscal LeePlantillaFiscal(const QString& plantilla);
// "IMPRESORA TICKETS PUERTO : " + puerto
QString PlantillaTickets(const QString& puerto);

} // namespace orv
