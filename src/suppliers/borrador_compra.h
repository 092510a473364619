#pragma once
// Borrador de la compra: las líneas de TmpFacCompra de una terminal mientras se arma una compra
// (artículo, cantidad, costo neto de la bonificación) y los totales del documento.

#include "store/almacen.h"
#include "store/dinero.h"
#include "store/rutinas.h"

#include <QString>
#include <optional>

namespace orv {

struct ArticuloCompra {
    qint64 idArticulo = 0;
    QString codigo;
    QString descripcion;
    Dinero costo; // PrecioCosto; nulo cuenta como 0
};

// Cómo se busca el artículo de una línea: por su código, por el código del proveedor, por la
// descripción exacta (la lista) o por su número.
enum class BuscaArticuloPor { Codigo, CgoProveedor, Descripcion, Id };
// El primero que coincide exactamente; nada si no hay.
std::optional<ArticuloCompra> ArticuloDeCompra(const Almacen& a, BuscaArticuloPor por, const QVariant& valor);

// La lista de artículos para elegir: idArticulo, Descripcion y Codigo de los que contienen el texto
// en la descripción, por descripción, hasta `limite`. Con proveedor, sólo los suyos.
ConsultaConParametros ListaArticulosCompra(const Almacen& a, const QString& texto, std::optional<qint64> idProveedor,
                                           int limite);

struct PedidoLineaCompra {
    std::optional<qint64> idArticulo; // el artículo hallado; sin él no hay línea
    QString cantidad;                 // txtCant, como se tipeó
    QString unitario;                 // txtUnitario
    QString bonificacion;             // txtBonif, un porcentaje
};

// "Agregar": una línea nueva (dos líneas del mismo artículo quedan dos). Unitario es el costo menos
// la bonificación; SubTotal, cantidad × unitario. Sin artículo, con un número mal escrito o un
// importe fuera de los topes, un aviso que lo dice y nada se escribe. Devuelve el idTmpFacCompra.
qint64 AgregaLineaCompra(Almacen& a, qint32 idRed, const PedidoLineaCompra& p);
// "Quitar": borra la línea si es de esta terminal.
void BorraLineaCompra(Almacen& a, qint32 idRed, qint64 idTmpFacCompra);
void VaciaBorradorCompra(Almacen& a, qint32 idRed);
// Las líneas de la terminal para la grilla, en el orden en que se agregaron.
ConsultaConParametros LineasBorradorCompra(qint32 idRed);

struct TotalesCompra {
    bool hayLineas = false;
    Dinero neto;           // txTotal: suma de las líneas
    Dinero montoDescuento; // txtMonDesc
    Dinero subTotal;       // txtSubTot: neto menos descuento
    Dinero impuesto;       // txTotImp: total menos subtotal, ya redondeados
    Dinero total;          // txTotTot
};
// Los totales del documento, cada importe a centavos: el impuesto es la diferencia entre el total y
// el subtotal ya redondeados, así subtotal + impuesto = total en el papel. Un resultado que no cabe
// en un importe se rechaza con un aviso.
TotalesCompra CalculaTotalesCompra(const Almacen& a, qint32 idRed, double porcDescuento, double porcImpuesto);

} // namespace orv
