#pragma once
// Cajas de mensaje del sistema: títulos "Error", "Atención", "Pregunta" y botones en castellano.

#include "store/almacen.h"
#include "store/aviso.h"

#include <QMessageBox>
#include <QString>
#include <functional>

class QWidget;

namespace orv {

QMessageBox::Icon iconoDeCaja(Icono icono);

// Caja con un único botón "Aceptar".
void Mensaje(const QString& texto, const QString& titulo, Icono icono, QWidget* padre = nullptr);
// Título "Error", ícono de alto.
void MensajeError(const QString& texto, QWidget* padre = nullptr);
// Título "Atención", ícono de exclamación.
void MensajeAtencion(const QString& texto, QWidget* padre = nullptr);
// Muestra un aviso que lanzó la lógica, con su título e ícono.
void MuestraAviso(const Aviso& aviso, QWidget* padre = nullptr);

// "Error detectado: <descripción>" con el título "Error <número>".
void MensajeErrorAlmacen(const ErrorAlmacen& e, QWidget* padre = nullptr);
// La guardia de toda acción de una pantalla: corre `accion` y, si algo falla, lo muestra y
// devuelve false, dejando al usuario donde estaba. Un aviso sale con su título; un error del
// almacén con su número; un importe que no cabe como "Importe fuera de rango!"; cualquier otra
// falla como falla inesperada, que además queda en el registro del programa.
bool Intenta(QWidget* padre, const std::function<void()>& accion);
// La misma guardia para una acción cuya falla, sea cual sea, el sistema dice siempre con un mismo
// texto (título "Error"): se muestra `siFalla` y el motivo queda en el registro del programa.
bool Intenta(QWidget* padre, const std::function<void()>& accion, const QString& siFalla);
// "Ocurrió una falla inesperada: ..." y la anota en el registro (qCritical).
void MensajeFallaInesperada(const char* que, QWidget* padre = nullptr);

// Pregunta Sí/No con el texto seguido de " ??" y el título "Pregunta". Verdadero sólo para Sí.
bool Pregunta(const QString& texto, QWidget* padre = nullptr);
// Pregunta Sí/No con texto y título tal cual; verdadero sólo para Sí.
bool PreguntaSiNo(const QString& texto, const QString& titulo, Icono icono = Icono::Pregunta,
                  QWidget* padre = nullptr);

} // namespace orv
