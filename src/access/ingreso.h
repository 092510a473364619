#pragma once
// Ingreso al sistema: quién es el usuario actual y con qué nivel.

#include "store/almacen.h"

#include <QString>
#include <optional>

namespace orv {

struct UsuarioIngresado {
    qint32 idUsuario = 0;
    qint16 idNivel = 0;
    QString nombreCompleto;
};

// Busca al usuario por nombre sin distinguir mayúsculas y verifica la contraseña contra su
// resumen. Si hay varios con el mismo nombre gana el primero (por idUsuario) cuya contraseña
// corresponde. Un usuario sin contraseña guardada no puede ingresar. Cuando el resumen fue
// hecho con parámetros viejos se rehace en el momento. Los errores del almacén se propagan.
std::optional<UsuarioIngresado> Ingresa(Almacen& a, const QString& usuario, const QString& contrasenia);

// Verdadero mientras ningún usuario tenga contraseña: un almacén recién creado, cuyo supervisor
// todavía no eligió la suya.
bool FaltaClaveInicial(const Almacen& a);

// Nombre de usuario del supervisor que trae un almacén nuevo (para proponerlo en pantalla).
QString NombreSupervisorInicial(const Almacen& a);

// Fija el nombre de usuario y la contraseña del supervisor (el primer usuario de un nivel
// supervisor; si no hay ninguno, lo crea, junto con el nivel si hace falta). Lanza Aviso
// "Datos mal ingresados!" con un nombre o contraseña vacíos y "Las contraseñas no coinciden!"
// cuando la repetición difiere. Sólo vale mientras FaltaClaveInicial: después lanza Aviso.
// Devuelve el idUsuario.
qint32 FijaSupervisorInicial(Almacen& a, const QString& usuario, const QString& contrasenia,
                             const QString& repeticion);

} // namespace orv
