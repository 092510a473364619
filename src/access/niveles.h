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

// Largo de Niveles.Nombre.
inline constexpr int kLargoNombreNivel = 50;

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
// existe (sin distinguir mayúsculas) no agrega nada y devuelve nada; uno más largo que la columna
// o con un carácter nulo lanza Aviso.
std::optional<qint64> NuevoNivel(Almacen& a, const QString& nombre);

// Graba nombre, supervisor y permisos. Lanza Aviso si el nombre queda vacío, no cabe o repite el
// de otro nivel; si el nivel ya no existe ("No encontrado!"); o si el nivel deja de administrar
// usuarios (sin "Usuarios" ni supervisor) y sus usuarios eran los últimos que podían hacerlo.
void GuardaNivel(Almacen& a, const DatosNivel& d);

bool NivelEnUso(const Almacen& a, qint64 idNivel);
// Borra un nivel sin usuarios; con usuarios lanza Aviso "Existen usuarios ya asignados a éste nivel!".
void EliminaNivel(Almacen& a, qint64 idNivel);

// Usuarios que pueden administrar los usuarios del sistema: los de un nivel con el permiso
// "Usuarios" (VeUsuarios) o supervisor, con la misma regla que TieneNivel.
qint64 CuentaAdministradores(const Almacen& a);

// Cuida que un cambio no deje al sistema sin quien administre los usuarios. Se crea dentro de la
// transacción del cambio, antes de escribir: ordena a los puestos que hacen esos cambios a la vez
// (en SQLite ya los ordena la transacción) y cuenta a los administradores. `exige`, después de
// escribir, lanza Aviso con `texto` si había alguno y ya no queda ninguno; quien llama no confirma
// y la transacción deshace el cambio.
class CuidaAdministradores {
public:
    explicit CuidaAdministradores(Almacen& a);
    void exige(const QString& texto) const;

private:
    const Almacen& almacen_;
    qint64 antes_ = 0;
};

} // namespace orv
