#pragma once
// Producción: las fórmulas (cuánto de cada materia prima lleva una unidad de un artículo acabado
// y lo que costaba al cargarla), la corrida que fabrica una cantidad y su registro.
//
// Una corrida escribe, en una sola transacción, el registro con una fila de detalle por materia
// prima, la existencia del producido (sube) y la de cada materia prima (baja) con sus filas del
// diario de stock. No toca precios ni costos de ningún artículo.

#include "store/almacen.h"
#include "store/dinero.h"

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

namespace orv {

inline const QString kTipoProduccion = QStringLiteral("Produccion");

// Una materia prima de la lista de panFormula, con el costo que tenía al abrir la pantalla.
struct MateriaPrima {
    qint64 idArticulo = 0;
    QString codigo;
    QString descripcion;
    Dinero precioCosto;
};

// Una fila de una fórmula: la cantidad por unidad producida y su costo congelado.
struct LineaFormula {
    qint64 idArticuloMP = 0;
    QString codigo;
    QString descripcion;
    double cantidad = 0;
    Dinero costoTotal; // PrecioCosto × Cantidad al cargar la fórmula
};

// Los artículos que se pueden producir (no son materia prima), por descripción.
QString ConsultaArticulosProducibles();
// Las materias primas con su costo de hoy, por descripción.
QList<MateriaPrima> MateriasPrimas(const Almacen& a);

// "Agregar M.Prima": la fila de la fórmula con la cantidad escrita ("Cant. ?", mayor que cero) y su
// costo, PrecioCosto × Cantidad. Lanza Aviso si la cantidad no se lee.
LineaFormula LineaDeFormula(const MateriaPrima& mp, const QString& cantidad);
// Lo que suma la columna "Costo" de una fórmula: el costo de una unidad.
Dinero CostoDeFormula(const QList<LineaFormula>& lineas);

// Las filas de la fórmula de un artículo, en el orden en que se cargaron. Una materia prima que
// ya no existe no aparece.
QList<LineaFormula> LeeFormula(const Almacen& a, qint64 idArticuloFinal);

// "&Aceptar" de panFormula: graba la fórmula entera del artículo en una transacción. Con
// `reemplaza` (lo que se editaba) se borra antes esa fórmula; un artículo nuevo que ya tiene la
// suya se rechaza (se edita, no se agrega otra encima). Sin artículo o sin filas, Aviso.
void GuardaFormula(Almacen& a, std::optional<qint64> idArticuloFinal, const QList<LineaFormula>& lineas,
                   std::optional<qint64> reemplaza);
// "&Quitar": borra la fórmula del artículo.
void BorraFormula(Almacen& a, qint64 idArticuloFinal);

// Las fórmulas de la grilla DBGrid1 (una fila por fórmula, con el costo de una unidad).
QString ConsultaFormulas();

// La grilla DBGrid2 de la corrida: cada materia prima con lo necesario para `cantidad`, su costo y
// "Falta": 'No' cuando (necesario − existencia) < mínimo, si no 'Si'. Parámetros ligados en
// `parametros`.
struct ConsultaAlertas {
    QString sql;
    QVariantList parametros;
};
ConsultaAlertas AlertasDeStock(qint64 idArticuloFinal, double cantidad);

// "Costo TOTAL :": costo de las materias primas para `cantidad` más la mano de obra. nullopt si el
// artículo no tiene fórmula.
std::optional<Dinero> TotalCorrida(const Almacen& a, qint64 idArticuloFinal, double cantidad, Dinero manoObra);

// Lo que junta la solapa "Registrar".
struct Corrida {
    std::optional<qint64> idArticulo; // cbArt
    QString cantidad;                 // txCantAProd
    QString manoObra;                 // txManoObra
    QDate fecha;                      // dt1
};

// "&Registrar !": lee y valida la corrida (artículo con fórmula, cantidad mayor que cero, mano de
// obra no negativa) y, en una transacción:
//   1. el registro (RegistroProduccion) con la mano de obra;
//   2. una fila de detalle por materia prima: Cantidad = cantidad × la de la fórmula, CostoTotal =
//      cantidad × el costo de la fórmula; el total del registro = mano de obra + esos costos;
//   3. la existencia del producido sube y la de cada materia prima baja, sumando en el almacén;
//   4. las filas del diario de stock del tipo "Produccion" (una entrada y una salida por materia
//      prima), con "PRODUCCION <número>" como comprobante.
// Devuelve idRegistroProduccion. Lanza Aviso con lo que está mal, sin escribir nada.
qint64 RegistraProduccion(Almacen& a, const Corrida& c);

// Los registros con su detalle para la solapa "Informes".
QString ConsultaRegistros();

} // namespace orv
