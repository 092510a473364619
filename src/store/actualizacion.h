#pragma once
// Actualización del esquema por pasos numerados.
//
// Cada paso se aplica una sola vez, en orden, dentro de su propia transacción, y queda
// anotado en la tabla PasosEsquema junto con sus cambios. Un almacén al día cuesta una
// sola consulta. Ningún paso borra datos.

#include "store/almacen.h"

#include <QString>
#include <functional>
#include <vector>

namespace orv {

// El almacén ya tiene pasos que este programa no conoce: lo actualizó una versión más nueva.
// Nada se escribe en él; seguir haría fallar la primera escritura, o algo peor.
class AlmacenMasNuevo : public ErrorAlmacen {
public:
    AlmacenMasNuevo(int delAlmacen, int delPrograma);
    int delAlmacen() const { return delAlmacen_; }
    int delPrograma() const { return delPrograma_; }

private:
    int delAlmacen_;
    int delPrograma_;
};

struct PasoEsquema {
    int numero;
    QString descripcion;
    std::function<void(Almacen&)> aplica;
};

// Los pasos del sistema, en orden. El paso 1 crea el esquema de hoy.
const std::vector<PasoEsquema>& pasosDelSistema();

// Último paso anotado en el almacén; 0 si el almacén está vacío.
int versionEsquema(Almacen& a);

// Aplica los pasos pendientes; devuelve cuántos aplicó. Lanza ErrorAlmacen si un paso
// falla: ese paso se deshace entero y el almacén queda en el paso anterior. Lanza
// AlmacenMasNuevo, sin escribir nada, si el almacén va más allá del último paso conocido.
int actualizaEsquema(Almacen& a, const std::vector<PasoEsquema>& pasos = pasosDelSistema());

} // namespace orv
