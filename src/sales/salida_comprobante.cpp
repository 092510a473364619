#include "sales/salida_comprobante.h"

#include "store/aviso.h"
#include "store/cuit.h"

namespace orv {

std::optional<Ruta> DecideRuta(const Almacen& a, const QString& plantilla, const QString& letra,
                               std::optional<qint64> idCliente, const PreguntasRuta& preguntas) {
    const QString p = plantilla.left(18);
    if (p.isEmpty()) {
        // Sólo un campo vacío llega acá; una ruta a un archivo que ya no está falla al imprimir.
        if (!preguntas.preguntaSinPlantilla || !preguntas.preguntaSinPlantilla(kPreguntaSinPlantilla))
            return std::nullopt;
        return Ruta::Nada;
    }
    if (p == QStringLiteral("IMPRESORA TICKETS ")) return Ruta::Tickets;
    if (p == QStringLiteral("IMPRESORA FISCAL :")) {
        if (letra == QStringLiteral("A")) {
            const QVariant cuit =
                idCliente ? a.valor(QStringLiteral("SELECT Cuit FROM Vendedores WHERE idVendedor = ?"), {*idCliente})
                          : QVariant();
            if (cuit.isNull() || !CuitValido(cuit.toString())) throw Aviso(kCuitInvalidoFiscal);
        }
        return Ruta::Fiscal;
    }
    return Ruta::Plantilla;
}

QString ImpresoFiscalDe(Ruta r) { return r == Ruta::Fiscal ? QStringLiteral("N") : QStringLiteral("S"); }

} // namespace orv
