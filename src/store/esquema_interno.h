#pragma once
// Las partes del esquema que el paso 1 junta: definiciones de tablas e índices
// (esquema_tablas.cpp), consultas guardadas (esquema_vistas.cpp) y filas de partida
// (esquema_filas.cpp). Sólo para store/esquema*.cpp.

#include "store/almacen.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace orv::esquema {

// Cada CREATE TABLE del sistema con los marcadores de tipo de `ddl`, Niveles incluida.
QStringList DefinicionesDeTablas();
// Cada CREATE INDEX del sistema.
QStringList DefinicionesDeIndices();

// Consulta guardada, como vista. El mismo texto sirve a los dos motores, salvo donde SQLite tiene
// su propia forma de la misma consulta (las mismas filas y columnas, con los mismos tipos).
struct Vista {
    const char* nombre;
    const char* texto;
    const char* textoSQLite = nullptr;

    QString textoPara(Dialecto d) const {
        return QString::fromUtf8(d == Dialecto::SQLite && textoSQLite ? textoSQLite : texto).trimmed();
    }
};
const std::vector<Vista>& Vistas();
void CreaVistas(Almacen& a);
// Vuelve a crear una vista del sistema con su texto de hoy. PostgreSQL la reemplaza en su lugar
// (las mismas columnas), así no molesta una vista propia del comercio que la use.
void RehaceVista(Almacen& a, const char* nombre);

// Filas que el sistema da por existentes (ver esquema_filas.cpp).
void CargaFilasDePartida(Almacen& a);

} // namespace orv::esquema
