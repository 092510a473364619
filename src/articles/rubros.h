#pragma once
// Rubros: las familias en que se agrupan los artículos. Cada rubro da la primera parte del
// código de sus artículos y los puntos por venta del programa de clientes VIP.

#include "store/almacen.h"

#include <QString>
#include <optional>

namespace orv {

inline constexpr int kLargoRubro = 100; // Rubros.Rubro
inline const QString kErrorPuntajeRubro = QStringLiteral("Ingrese el puntaje correspondiente al rubro!");
inline const QString kCampoPuntajeRubro = QStringLiteral("Puntaje VIP"); // nombre del campo en sus avisos

struct DatosRubro {
    QString nombre;  // Text1, como se tipeó
    QString puntos;  // txPuntosVip, como se tipeó
};

// El rubro tal como se muestra al modificarlo; nada si ya no existe.
std::optional<DatosRubro> LeeRubro(const Almacen& a, qint64 idRubro);

// Los controles al aceptar, en su orden: primero el puntaje ("Ingrese el puntaje correspondiente
// al rubro!" si no es un número; vacío tampoco lo es), después el nombre ("Error, coloque un
// nombre!" sólo si está vacío: un nombre de espacios se acepta). Un puntaje ambiguo ("1,5") o un
// nombre que no cabe en su columna se rechazan con un aviso que nombra el campo.
void ValidaRubro(const DatosRubro& d);

// Agrega (sin id) o modifica un rubro, después de ValidaRubro. El nombre se guarda tal cual se
// tipeó (apóstrofos y espacios incluidos); cambiarlo no toca los códigos de sus artículos. Lanza
// Aviso "No encontrado!" si el rubro a modificar ya no está. Devuelve el idRubro.
qint64 GuardaRubro(Almacen& a, std::optional<qint64> idRubro, const DatosRubro& d);

// Borra un rubro que ningún artículo usa. Con artículos: Aviso "Error, no puede borrar éste rubro
// porque posee artículos relacionados.!" y el rubro queda.
void BorraRubro(Almacen& a, qint64 idRubro);

// Consulta de la grilla de rubros, por nombre.
QString ConsultaRubros();

} // namespace orv
