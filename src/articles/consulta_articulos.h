#pragma once
// Lo que lee el panel de artículos: la lista completa (el reinicio del filtro), la búsqueda por una
// parte de la descripción y la foto de un artículo. Las dos listas van por código, el orden por el
// que la grilla pagina y busca.

#include "store/almacen.h"
#include "store/rutinas.h"

#include <QString>
#include <QVariantList>

namespace orv {

// Los artículos con rubro (INNER JOIN: uno sin rubro no aparece), sin filtro, por código. Los
// códigos (el propio y el del proveedor) se ordenan y comparan por sus bytes en los dos motores.
QString ConsultaArticulosCompleta(const Almacen& a);

// El reinicio del filtro liga la lista completa sólo si tiene alguna fila; si no, la grilla sigue
// mostrando lo que mostraba.
bool HayArticulosConRubro(const Almacen& a);

// Por dónde se busca la descripción. Los dos caminos dan las mismas filas.
enum class CaminoTexto {
    Indice,    // el índice de texto del motor cuando el texto tiene 3 letras o más y el índice está
               // (en SQLite, si coinciden muchos, recorrer por código llena antes la primera página)
    Recorrido, // la tabla fila por fila
};

// Los artículos cuya descripción contiene el texto, sin distinguir mayúsculas (también Ñ y ñ, Á y
// á); '%', '_', '\' y comillas se buscan tal cual. LEFT JOIN: aparece también un artículo sin rubro.
// Un texto vacío trae todos los que tienen descripción. Mismas columnas y orden que la lista
// completa.
ConsultaConParametros ConsultaArticulosPorDescripcion(const Almacen& a, const QString& texto,
                                                 CaminoTexto camino = CaminoTexto::Indice);

// El almacén tiene el índice de texto de las descripciones (el paso 6 pudo quedar sin él).
bool HayIndiceDescripciones(const Almacen& a);

// La ruta de la foto del artículo; vacía si no tiene o si el artículo ya no existe.
QString FotoDeArticulo(const Almacen& a, qint64 idArticulo);

} // namespace orv
