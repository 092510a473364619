#pragma once
// Carpetas y archivos que sólo ve el usuario dueño: la carpeta de datos, el almacén y la
// configuración guardan ventas, clientes y claves.

#include <QString>

namespace orv {

// Crea la carpeta (y las que falten antes) con permisos 700 para la última. Una carpeta que ya
// existe conserva los suyos: si se comparte a propósito, así sigue. Falso si no queda una carpeta.
bool CreaCarpetaPrivada(const QString& carpeta);

// Crea el archivo vacío con permisos 600 si no existe; uno que existe no se toca. Falso si no
// existe ni se pudo crear.
bool CreaArchivoPrivado(const QString& archivo);

} // namespace orv
