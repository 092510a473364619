#pragma once
// Selección de siempre de cada informe del catálogo, para un período.

#include "reports/informe.h"

#include <QDate>

namespace orv {

// Selección usual del informe (por nombre de archivo) entre dos fechas. Los informes que no
// dependen de fechas no llevan condición. Lanza Aviso para un informe que no es del catálogo.
Seleccion SeleccionUsual(const QString& nombre, const QDate& desde, const QDate& hasta);
// Selección de un comprobante por su id (plantillas de comprobantes).
Seleccion SeleccionComprobante(qint64 idComprobante);
// "Del dd/mm/aaaa al dd/mm/aaaa"
QString TextoPeriodo(const QDate& desde, const QDate& hasta);

} // namespace orv
