#pragma once
// Funciones propias que cada conexión SQLite del almacén tiene desde que se abre, para las
// búsquedas de las grillas y de los paneles:
//  orv_fila()                 1, 2, 3... en el orden en que se leen las filas. ROW_NUMBER() obliga a
//                             SQLite a guardar el resultado entero antes de filtrar; con ésta, la
//                             lectura se detiene en la primera coincidencia.
//  orv_empieza(valor, texto)  1 si el valor empieza con el texto, sin distinguir mayúsculas también
//                             fuera de ASCII (Ñ y ñ, Á y á, que el LIKE de SQLite distingue).
//  orv_contiene(valor, texto) 1 si el valor contiene el texto, con la misma comparación.
// Las dos últimas dan 0 si alguno es nulo; el texto va tal cual: % y _ no son comodines.
// Y para los importes:
//  orv_por(importe, factor)   importe × factor a cuatro decimales, con la misma cuenta exacta del
//                             dinero del programa (nulo sigue nulo).

struct sqlite3;

namespace orv {

// false si SQLite no las aceptó.
bool RegistraFuncionesSQLite(sqlite3* db);
// Vuelve a empezar la numeración de orv_fila(); se llama antes de cada consulta que la usa.
void ReiniciaNumeracionDeFilas();

} // namespace orv
