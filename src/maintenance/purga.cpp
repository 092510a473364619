#include "maintenance/purga.h"

#include <QDir>

namespace orv {

const QStringList& TablasQuePurga() {
    static const QStringList tablas = {QStringLiteral("CtaProve"),        QStringLiteral("DetCompras"),
                                       QStringLiteral("Caja"),            QStringLiteral("MovimientoStock"),
                                       QStringLiteral("Comisiones"),      QStringLiteral("Comprobantes"),
                                       QStringLiteral("DetalleComprobantes"), QStringLiteral("Compras")};
    return tablas;
}

std::vector<std::pair<QString, int>> PurgaDatos(Almacen& almacen) {
    std::vector<std::pair<QString, int>> borradas;
    Transaccion t(almacen);
    for (const QString& tabla : TablasQuePurga())
        borradas.emplace_back(tabla, almacen.ejecuta(QStringLiteral("DELETE FROM ") + tabla));
    t.confirmar();
    return borradas;
}

ResultadoPurga RespaldaYPurga(Almacen& almacen, const Configuracion& conf, const QDateTime& momento,
                              const std::function<void(int)>& avance) {
    const QString carpeta = CarpetaRespaldos(conf);
    QDir().mkpath(carpeta);
    ResultadoPurga r;
    r.respaldo = HaceRespaldo(almacen, conf, carpeta, MomentoLibre(carpeta, momento, almacen.dialecto()), avance);
    r.borradas = PurgaDatos(almacen);
    return r;
}

const std::vector<TablaExplorable>& TablasExplorables() {
    static const std::vector<TablaExplorable> tablas = {
        {QStringLiteral("Artículos por rubro"), QStringLiteral("SELECT * FROM _ConsultaArticulosPorRubro")},
        {QStringLiteral("Clientes"), QStringLiteral("SELECT * FROM _ConsultaClientes")},
        {QStringLiteral("Proveedores"), QStringLiteral("SELECT * FROM Proveedores ORDER BY RazonSocial")},
        {QStringLiteral("Comprobantes"), QStringLiteral("SELECT * FROM Comprobantes ORDER BY Fecha")},
        {QStringLiteral("Compras"), QStringLiteral("SELECT * FROM Compras ORDER BY Fecha")},
        {QStringLiteral("Caja"), QStringLiteral("SELECT * FROM _ConsultaCaja")},
        {QStringLiteral("Detalle de ventas"), QStringLiteral("SELECT * FROM _ConsultaDetalleVentas")},
    };
    return tablas;
}

} // namespace orv
