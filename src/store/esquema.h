#pragma once
// Esquema del almacén: tablas, índices, consultas guardadas (vistas) y filas de partida.

#include "store/almacen.h"

#include <QString>
#include <QStringList>

namespace orv {

// Traduce los marcadores de tipo del DDL al dialecto:
//   {CONTADOR}  clave entera asignada por el almacén (PRIMARY KEY incluida)
//   {LARGO}     entero de 32 bits          {ENTERO}  entero de 16 bits
//   {DOBLE}     coma flotante doble        {DINERO}  NUMERIC(19,4)
//   {FECHA}     fecha sin hora (texto ISO en SQLite)
//   {SINO}      SMALLINT 0/1               {TEXTO(n)} texto de hasta n caracteres
//   {MEMO}      texto sin límite
QString ddl(Dialecto d, const QString& texto);

// Las 39 columnas de permiso de Niveles, en el orden de la tabla (sin UsuarioSuper).
// Sirve para validar el nombre de un permiso antes de ponerlo en el texto SQL.
const QStringList& columnasPermiso();

// Paso 1 de la actualización: deja el esquema completo de hoy y sus filas de partida. En un almacén
// nuevo lo crea todo; en uno hecho antes de los pasos numerados agrega sólo lo que falta (tablas,
// columnas, índices, filas de partida), ensancha los textos más angostos conservando su contenido y
// vuelve a crear las vistas del sistema. Nunca borra una fila.
void creaEsquemaInicial(Almacen& a);

// Paso 2: la consulta de caja con su texto de hoy (en SQLite, la cuenta, el comprobante y el
// usuario de cada movimiento se leen por su clave en vez de unir las tablas). No toca datos.
void rehaceConsultaCaja(Almacen& a);

// Paso 3: las consultas de comprobantes y de líneas con el signo de cada comprobante (una nota de
// crédito resta en todas sus cifras) y el comprobante impreso con sus importes sin signo. No toca datos.
void rehaceConsultasDeVentas(Almacen& a);

// Paso 4: la descripción de un artículo, y la de las líneas que la copian, sin tope de largo. En
// PostgreSQL las columnas pasan a texto sin límite (las vistas del sistema se rehacen alrededor);
// SQLite nunca hizo valer el largo. No toca datos.
void ensanchaDescripciones(Almacen& a);

// Paso 5: los datos fiscales del negocio en Empresa (Cuit, CondicionIva, InicioActividades), que
// los comprobantes imprimen como emisor. Agrega las columnas que falten; no toca las filas.
void completaEmpresa(Almacen& a);

// Paso 6: índice de texto sobre la descripción de los artículos, para la búsqueda "contiene" del
// panel. SQLite: la tabla ArticulosTexto (FTS5, trigramas, contenido en Articulos) que los
// disparadores de Articulos mantienen al día. PostgreSQL: la extensión pg_trgm y un índice GIN
// sobre lower(Descripcion). Si el motor no lo permite (SQLite sin FTS5, un servidor sin pg_trgm),
// el paso se aplica sin índice, lo anota en el registro del programa y la búsqueda recorre la
// tabla. No toca datos.
void indexaDescripciones(Almacen& a);

// Paso 7: en PostgreSQL, índices de Articulos.Codigo y Articulos.CgoProveedor con intercalación
// "C" (por los bytes del texto). El panel de artículos ordena y busca esas columnas así en los dos
// motores (SQLite compara texto por sus bytes), con el mismo orden sea cual sea la intercalación
// con que se creó la base, y la búsqueda por el comienzo del código salta por estos índices. En
// SQLite no hace nada. No toca datos.
void indexaCodigosPorBytes(Almacen& a);

// Paso 8: la tabla ArqueoCaja, lo contado de cada forma de pago al cerrar un día (la fecha
// contada, la del cierre, lo esperado, lo contado y quién contó), y el índice de Caja por fecha con
// sus importes para sumar un período sin leer las filas. No toca datos.
void creaArqueoCaja(Almacen& a);

// Paso 9: índice de la cuenta corriente de cada cliente por fecha (idVendedor, Fecha,
// idCuentaVendedor), el orden de la pantalla de la cuenta: la primera página de un cliente con
// muchas líneas se lee sin ordenarlas todas, y la búsqueda de un día cuenta por el índice. No toca
// datos.
void indexaCuentasClientes(Almacen& a);

// Paso 10: el borrador de la compra es de cada terminal, como el de la venta: la columna PCRed de
// TmpFacCompra y su índice. Las líneas que hubiera quedan sin terminal y ninguna compra las toma.
void borradorCompraPorTerminal(Almacen& a);

// Paso 11: en PostgreSQL, Articulos deja la mitad de cada página libre y se vuelve a escribir así.
// Un cambio de precios o de stock que no toca columnas con índice escribe la versión nueva de la
// fila en la misma página, sin tocar los nueve índices de la tabla (ni el de trigramas): la
// sentencia desnuda del cambio de precios de todo el catálogo pasa de unos 15 s a menos de 1 s con
// 300 000 artículos. La tabla ocupa el doble. En SQLite no hace nada. No toca datos.
void dejaLugarEnArticulos(Almacen& a);

// Tabla del índice de texto de las descripciones en SQLite.
inline constexpr const char* kTablaTextoArticulos = "ArticulosTexto";

// Paso 12: índices de la venta por rubro y de las notas de crédito de un período.
void indexaVentasPorFecha(Almacen& a);

// Paso 13: en PostgreSQL el índice de las notas de crédito de un período lleva el número de cada
// una, para leerlas sin ir a la tabla. En SQLite no hace nada.
void indexaNotasConSuNumero(Almacen& a);

// Paso 14: en PostgreSQL, los totales de ingresos y egresos de toda la caja, que el servidor lleva
// al día en la misma transacción de cada cambio en Caja (una fila por conexión, que se suman). Así
// las disponibilidades no recorren el libro entero. En SQLite no hace nada: allí la suma es rápida.
void llevaTotalesCaja(Almacen& a);

// Junta en la fila de partida los totales de caja de las conexiones que ya cerraron, para que la
// tabla no crezca con cada arranque. Se llama al abrir el almacén; en SQLite no hace nada.
void JuntaTotalesCaja(Almacen& a);

} // namespace orv
