#pragma once
// Tabla HTML de cualquier consulta, con el marcado que espera quien recibe los envíos: una franja
// con el título, los nombres de los campos como títulos y una fila por registro.

#include "store/almacen.h"

#include <QDate>
#include <QString>
#include <QVariantList>

namespace orv {

// `ancho` es el ancho de la tabla en píxeles; `separar` agrega párrafos vacíos después, para la
// tabla siguiente. Los valores se escapan para HTML. Lanza ErrorAlmacen si la consulta falla.
QString HtmlDeConsulta(const Almacen& a, const QString& titulo, const QString& sql, const QVariantList& parametros,
                       qint16 ancho, bool separar, const QDate& hoy);

// Una página entera alrededor de las tablas, que declara su juego de caracteres (UTF-8): quien la
// abre lee bien los acentos y las eñes.
QString PaginaHtml(const QString& titulo, const QString& cuerpo);

} // namespace orv
