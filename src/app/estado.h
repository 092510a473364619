#pragma once
// Estado de la aplicación: los valores que el arranque deja listos y que todas las pantallas leen.
// Una sola instancia, creada por el arranque y pasada a quien la necesite.

#include "app/regional.h"
#include "store/dinero.h"

#include <QString>
#include <QtGlobal>

namespace orv {

namespace predeterminado {
inline const QString claveImpositiva = QStringLiteral("CUIT");
inline const QString mascaraMoneda = QStringLiteral("###,###,##0.00");
inline const QString pais = QStringLiteral("ARGENTINA");
inline constexpr qint16 nroCifrasArticulo = 4;
inline constexpr qint16 nroCifrasRubro = 2;
} // namespace predeterminado

struct EstadoAplicacion {
    // Terminal y país (configuración de la máquina, leídos al arrancar).
    qint32 IdRed = 0;
    QString ClaveImpositiva = predeterminado::claveImpositiva;
    QString MascaraMoneda = predeterminado::mascaraMoneda;
    QString Pais = predeterminado::pais;
    qint16 NroCifrasArticulo = predeterminado::nroCifrasArticulo;
    qint16 NroCifrasRubro = predeterminado::nroCifrasRubro;

    // Usuario que ingresó.
    qint32 idUsuarioActual = 0;
    qint16 idNivelActual = 0;
    QString NombreUsuarioActual;

    // Venta en curso (sólo en memoria; las líneas están en TmpFac).
    qint32 idTipoComprobanteActual = 0;
    QString CuponActual;                 // "000" tras el primer reinicio de la venta
    double DescuentoClienteActual = 0;   // porcentaje
    Dinero MontDescuentoActual;
    QString NombreClienteActual = QStringLiteral("Cons.Final");
    QString FormaPagoActual = QStringLiteral("EFVO");
    QString ObservacionesActual;
    qint32 idTipoIvaActual = 1;
    QString CuitClienteActual;

    // Separadores del sistema operativo tal como se leyeron (sólo informativos).
    SeparadoresRegionales regional;

    // Carpeta de datos y almacén abierto (ruta del archivo o servidor/base).
    QString carpetaDatos;
    QString almacenAbierto;
};

} // namespace orv
