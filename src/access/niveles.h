#pragma once
// Niveles de acceso: la tabla de permisos, qué controles de la ventana principal apaga cada uno
// y el mantenimiento de la tabla Niveles.

#include "store/almacen.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace orv {

enum class Pestania { IngresoCambios, Eliminar, Visualizar, Otros };

// Título de la pestaña del editor de niveles.
QString tituloPestania(Pestania p);

struct Permiso {
    QString columna;    // columna de Niveles
    QString leyenda;    // texto de la casilla en el editor de niveles
    Pestania pestania;
    QStringList controles; // objectName de los controles de la ventana principal que apaga
};

// Todos los permisos, en el orden en que se muestran dentro de cada pestaña.
const std::vector<Permiso>& Permisos();
const Permiso* BuscaPermiso(const QString& columna);

// Columnas que revisa la ventana principal al cargar, en su orden.
const QStringList& OrdenAplicaNiveles();

// Controles de la ventana principal que el nivel no puede usar, en el orden en que se apagan
// (un control puede repetirse: "Mensajería" depende de dos permisos). Cada permiso se consulta
// al almacén en el momento.
QStringList ControlesSinPermiso(const Almacen& a, int idNivel);

// Modo punto de venta: nivel "solo operador de P.O.S." que no es supervisor.
bool ModoPOS(const Almacen& a, int idNivel);

struct DatosNivel {
    qint64 idNivel = 0;
    QString nombre;
    bool usuarioSuper = false;
    QHash<QString, bool> permisos; // por columna, tal como en Permisos()
};

struct NivelEnLista {
    qint64 idNivel = 0;
    QString nombre;
};

std::vector<NivelEnLista> ListaNiveles(const Almacen& a);
std::optional<DatosNivel> LeeNivel(const Almacen& a, qint64 idNivel);

// Agrega un nivel sólo con su nombre (todos los permisos apagados). Un nombre vacío o que ya
// existe (sin distinguir mayúsculas) no agrega nada y devuelve nada.
std::optional<qint64> NuevoNivel(Almacen& a, const QString& nombre);

// Graba nombre, supervisor y permisos. Lanza Aviso si el nombre queda vacío o repite el de otro
// nivel, o si el nivel ya no existe.
void GuardaNivel(Almacen& a, const DatosNivel& d);

bool NivelEnUso(const Almacen& a, qint64 idNivel);
// Borra un nivel sin usuarios; con usuarios lanza Aviso "Existen usuarios ya asignados a éste nivel!".
void EliminaNivel(Almacen& a, qint64 idNivel);

} // namespace orv
