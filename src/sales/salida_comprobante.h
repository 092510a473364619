#pragma once
// Por dónde sale un comprobante según el esquema de impresión de su tipo: sin plantilla, impresora
// de tickets, impresora fiscal o plantilla de informe.

#include "store/almacen.h"

#include <QString>
#include <functional>
#include <optional>

namespace orv {

enum class Ruta { Nada, Tickets, Fiscal, Plantilla };

inline const QString kPreguntaSinPlantilla = QStringLiteral(
    "ATENCION: La plantilla relacionada a la impresión de éste documento no existe o no se encuentra, desea "
    "registrar el documento de todas formas ?");
inline const QString kCuitInvalidoFiscal =
    QStringLiteral("Cliente con CUIT Inválido!!, no se puede facturar en impresoras fiscales!");

struct PreguntasRuta {
    // "ATENCION: La plantilla ..." (título "Atención", Sí/No): verdadero para seguir.
    std::function<bool(const QString& texto)> preguntaSinPlantilla;
};

// Decide la ruta por los primeros 18 caracteres de la plantilla. Nada si el usuario no quiso
// seguir. Para la ruta fiscal con letra "A" revisa el CUIT guardado del cliente (no el editado en
// la venta) y lanza Aviso kCuitInvalidoFiscal si falta o no es válido.
std::optional<Ruta> DecideRuta(const Almacen& a, const QString& plantilla, const QString& letra,
                               std::optional<qint64> idCliente, const PreguntasRuta& preguntas);

// Valor de Comprobantes.ImpresoFiscal para la ruta: "N" sólo para la fiscal (queda pendiente).
QString ImpresoFiscalDe(Ruta r);

} // namespace orv
