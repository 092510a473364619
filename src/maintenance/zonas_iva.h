#pragma once
// Zonas y localidades de los clientes, y situaciones frente al IVA (TipoDeIva).
//
// Una zona con clientes no se borra: el panel de clientes lista a cada cliente junto a su zona, y
// sin ella dejaría de verse. Una situación de IVA con clientes tampoco; una que sólo figura en
// comprobantes viejos sí (el comprobante guarda su propio número de situación).

#include "store/almacen.h"

#include <QString>
#include <optional>

namespace orv {

// Las dos listas de "Zonas y Localidades".
enum class ListaZonas { Zonas, Localidades };

// Consulta de la grilla de cada lista: su clave y su nombre, por nombre.
QString ConsultaListaZonas(ListaZonas l);
// Campo de la clave y del nombre de cada lista ("idZona", "Zona"...).
QString ClaveListaZonas(ListaZonas l);
QString NombreListaZonas(ListaZonas l);

// Agrega un nombre (sin blancos a los lados; vacío o más largo que su columna se rechaza). Devuelve su id.
qint64 AgregaEnLista(Almacen& a, ListaZonas l, const QString& nombre);
// Cambia el nombre de una fila, con los mismos controles.
void CambiaEnLista(Almacen& a, ListaZonas l, qint64 id, const QString& nombre);
// Borra una fila. Una zona con clientes se rechaza con un aviso que dice cuántos.
void BorraDeLista(Almacen& a, ListaZonas l, qint64 id);

inline const QString kMensajeSinNombre = QStringLiteral("Error, escriba el nombre!");
inline const QString kMensajeIvaConClientes = QStringLiteral("Error, existen clientes con ésta condición !");

// Situaciones de IVA: nombre (TipoIva) y letra fiscal (Fiscal) que se manda a la impresora fiscal.
struct SituacionIva {
    QString nombre;
    QString fiscal;
    friend bool operator==(const SituacionIva&, const SituacionIva&) = default;
};
QString ConsultaSituacionesIva();
std::optional<SituacionIva> LeeSituacionIva(const Almacen& a, qint64 idTipoIva);
// Sin id agrega una situación; con id la cambia. El nombre vacío da kMensajeSinNombre; la letra
// fiscal es de un carácter (o ninguno). Devuelve el id.
qint64 GuardaSituacionIva(Almacen& a, std::optional<qint64> idTipoIva, const SituacionIva& s);
// Con clientes en esa situación da kMensajeIvaConClientes y no borra nada.
void BorraSituacionIva(Almacen& a, qint64 idTipoIva);

} // namespace orv
