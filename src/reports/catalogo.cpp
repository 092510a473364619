#include "reports/catalogo.h"

#include "store/aviso.h"
#include "store/formato.h"

#include <QFileInfo>

namespace orv {

QString TextoPeriodo(const QDate& desde, const QDate& hasta) {
    return QStringLiteral("Del ") + FechaTexto(desde) + QStringLiteral(" al ") + FechaTexto(hasta);
}

Seleccion SeleccionComprobante(qint64 idComprobante) {
    Seleccion s;
    s.condicion = QStringLiteral("idComprobante = ?");
    s.parametros = {idComprobante};
    return s;
}

Seleccion SeleccionUsual(const QString& nombre, const QDate& desde, const QDate& hasta) {
    const QString n = QFileInfo(nombre).fileName().toLower();
    Seleccion s;
    if (n == QStringLiteral("listacajasimple.rpt")) {
        s.condicion = QStringLiteral("Fecha >= ? AND Fecha <= ?");
        s.parametros = {desde, hasta};
        s.periodo = TextoPeriodo(desde, hasta);
        return s;
    }
    if (n == QStringLiteral("faltante.rpt")) {
        s.condicion = QStringLiteral("StockActual <= StockMinimo");
        s.periodo = QStringLiteral("Al ") + FechaTexto(hasta);
        return s;
    }
    if (n == QStringLiteral("listadepreciosporcodigo.rpt") || n == QStringLiteral("listadepreciosporalfabeto.rpt")) {
        // Todos los rubros: un artículo sin rubro no está en ninguna lista.
        s.condicion = QStringLiteral("idRubro <> 0");
        s.periodo = QStringLiteral("Al ") + FechaTexto(hasta);
        return s;
    }
    if (n == QStringLiteral("listadeprecios.rpt") || n == QStringLiteral("inventario.rpt")) {
        s.periodo = QStringLiteral("Al ") + FechaTexto(hasta);
        return s;
    }
    throw Aviso(QStringLiteral("El informe ") + nombre + QStringLiteral(" no es del catálogo."));
}

} // namespace orv
