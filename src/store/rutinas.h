#pragma once
// Rutinas generales que usa todo el sistema: leer un valor, contar filas, consultar un
// permiso, saber si un día está cerrado, saber si un archivo está.

#include "store/almacen.h"

#include <QDate>
#include <QString>
#include <QVariant>
#include <QVariantList>

namespace orv {

// Una consulta con sus parámetros ligados, como la piden las grillas.
struct ConsultaConParametros {
    QString sql;
    QVariantList parametros;
};

// Valor del campo `campo` (por nombre, sin distinguir mayúsculas) en la primera fila de la
// consulta; QVariant nulo cuando la consulta no da filas. Los errores del almacén se propagan.
QVariant LeeCampo(const Almacen& a, const QString& sql, const QVariantList& parametros, const QString& campo);

// Cantidad de filas de una consulta, o de una tabla si se da sólo su nombre. Vacía: 0.
qint64 CuentaRegistros(const Almacen& a, const QString& sqlOTabla, const QVariantList& parametros = {});

// ¿El nivel tiene el permiso `campo` (una columna de Niveles)? UsuarioSuper da todos; 1 y -1
// cuentan como encendido. Un nivel inexistente no tiene ninguno. Un nombre de columna que no
// es un permiso es un error de programación (std::invalid_argument).
bool TieneNivel(const Almacen& a, int idNivel, const QString& campo);
// Igual, pero lanza el aviso "Nivel no permitido!" cuando no lo tiene.
void ExigeNivel(const Almacen& a, int idNivel, const QString& campo);

// Falso para un día cerrado (una fila de CorteCaja con esa fecha).
bool FechaAbierta(const Almacen& a, const QDate& fecha);
// Igual, pero lanza el aviso "Error, fecha cerrada para ingresar movimientos!" cuando está cerrado.
void ExigeFechaAbierta(const Almacen& a, const QDate& fecha);

// Id de la fila de `tabla` cuya `columnaNombre` es `nombre`; si no está, la agrega sólo con ese
// nombre. Tabla y columnas son nombres del sistema, nunca texto del usuario.
qint64 buscaOAgrega(Almacen& a, const QString& tabla, const QString& columnaId, const QString& columnaNombre,
                    const QString& nombre);

// Dentro de una transacción que va a cambiar el stock de varios artículos: toma las filas de
// Articulos cuyos ids da `seleccionIds` (un SELECT de una columna, con sus parámetros) en el orden
// de la clave, antes de escribir. Dos terminales que tocan los mismos artículos en otro orden se
// esperan en vez de trabarse. En SQLite la transacción de escritura ya es única: no hace nada.
void BloqueaArticulos(Almacen& a, const QString& seleccionIds, const QVariantList& parametros);

// Mueve el stock de los artículos de unas líneas, una vez por artículo con la suma de sus
// cantidades (una cantidad nula cuenta como cero), después de tomar sus filas con BloqueaArticulos.
// `lineas` es la tabla de líneas con su condición, con un parámetro ("TmpFac WHERE PCRed = ?");
// `entra` suma al stock y si no, resta. Con `nuloComoCero` un stock nulo cuenta como cero; si no,
// sigue nulo.
void MueveStock(Almacen& a, const QString& lineas, const QVariant& valor, bool entra, bool nuloComoCero);

// Un campo Sí/No leído del almacén: nulo o 0 es no.
bool SiNo(const QVariant& v);

// Lo que se agrega a un SELECT para tomar las filas leídas hasta confirmar: " FOR UPDATE" en
// PostgreSQL; nada en SQLite, donde la transacción de escritura ya es única.
QString TomaFilas(const Almacen& a);

// Falso para una ruta de menos de 4 caracteres; si no, si el archivo o carpeta existe.
bool ExisteArchivo(const QString& ruta);

// Texto para un LIKE ... ESCAPE '\\' que busca literalmente '%', '_' y '\\'.
QString EscapaLike(const QString& s);

// "La columna contiene el texto", sin distinguir mayúsculas (también Ñ y vocales con tilde) en los
// dos motores. Un parámetro: el texto tal cual, sin comodines ('%' y '_' se buscan literalmente).
QString CondicionContiene(const Almacen& a, const QString& columna);

} // namespace orv
