#pragma once
// Exportación del resultado completo de una consulta a CSV y a Excel (XLSX).
//
// Se recorre la consulta hacia adelante, fila por fila: nunca se carga el resultado entero.
// Los importes salen con punto decimal; las fechas en ISO (aaaa-mm-dd).

#include "store/almacen.h"
#include "store/aviso.h"

#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtGlobal>

namespace orv {

// Títulos de las columnas: los dados, y para las que falten el nombre del campo.
// Columnas ocultas: se omiten los campos listados en `omitir`.
struct OpcionesExporta {
    QStringList titulos;
    QStringList omitir;
};

// CSV en UTF-8 con BOM, separador ",", comillas y saltos de línea CRLF a la manera RFC 4180.
// Devuelve la cantidad de filas de datos escritas. Lanza ErrorAlmacen si la consulta falla
// y Aviso si no se puede escribir el archivo.
qint64 ExportaCSV(Almacen& a, const QString& sql, const QVariantList& parametros,
                  const OpcionesExporta& opciones, const QString& ruta);

// Libro XLSX con una hoja "Datos": títulos en negrita, números como números.
qint64 ExportaXLSX(Almacen& a, const QString& sql, const QVariantList& parametros,
                   const OpcionesExporta& opciones, const QString& ruta);

// Un campo CSV: entre comillas si lleva coma, comillas o salto de línea (comillas dobladas).
QString CampoCSV(const QString& texto);

} // namespace orv
