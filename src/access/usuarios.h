#pragma once
// Usuarios del sistema: alta, modificación y baja. La contraseña se recibe en claro sólo para
// resumirla; nunca se lee de vuelta.

#include "store/almacen.h"

#include <QString>
#include <QVariant>
#include <optional>

namespace orv {

// Largos de Usuarios.NombreCompleto y Usuarios.NombreUsuario. La contraseña no tiene tope: se
// guarda sólo su resumen, de largo fijo.
inline constexpr int kLargoNombreCompleto = 100;
inline constexpr int kLargoNombreUsuario = 50;

struct DatosUsuario {
    QString nombreCompleto;
    QString nombreUsuario;
    QString contrasenia; // en claro; vacía al modificar = conservar la actual
    QVariant idNivel;    // nulo si no se eligió
    QString comision;    // porcentaje de comisión del vendedor, como se tipeó
};

// Lo que se muestra al modificar: todo menos la contraseña, que queda vacía.
std::optional<DatosUsuario> LeeUsuario(const Almacen& a, qint64 idUsuario);

// Controles del diálogo: nombre completo y de usuario no vacíos, comisión numérica, un nivel
// elegido, y contraseña no vacía para un usuario nuevo; si falta algo, Aviso "Datos mal
// ingresados!". Además lanza Aviso con el campo si un nombre no cabe en su columna o tiene un
// carácter nulo, y si la comisión es ambigua ("1,5") o está fuera de rango: nunca se trunca.
void ValidaUsuario(const DatosUsuario& d, bool nuevo);

// Agrega (sin id) o modifica un usuario. Al modificar, una contraseña vacía deja la guardada.
// Lanza Aviso "No encontrado!" si el usuario a modificar ya no está, y Aviso si el cambio de
// nivel deja al sistema sin nadie que pueda administrar los usuarios. Devuelve el idUsuario.
qint64 GuardaUsuario(Almacen& a, std::optional<qint64> idUsuario, const DatosUsuario& d);

// Borra un usuario. Lanza Aviso si es el último que puede administrar los usuarios.
void BorraUsuario(Almacen& a, qint64 idUsuario);

// Consulta de la grilla de usuarios, agrupable por nivel. No trae la contraseña.
QString ConsultaUsuarios();

} // namespace orv
