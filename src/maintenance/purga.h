#pragma once
// Purga de los archivos de trabajo al empezar un período nuevo, y las fuentes del explorador de
// tablas (Multi-Tablas).

#include "app/configuracion.h"
#include "maintenance/respaldo.h"
#include "store/almacen.h"

#include <QDateTime>
#include <functional>

#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

namespace orv {

// Las tablas que vacía la purga, en el orden en que las vacía. Quedan las demás: clientes,
// proveedores, artículos con su stock, comisiones de vendedores, puntos, cierres de caja, el
// borrador de la venta, la producción y los numeradores de los comprobantes.
const QStringList& TablasQuePurga();

// Vacía las tablas de trabajo en una sola transacción: quedan todas vacías o ninguna. Devuelve
// las filas borradas de cada una, en el orden de TablasQuePurga.
std::vector<std::pair<QString, int>> PurgaDatos(Almacen& almacen);

struct ResultadoPurga {
    ResultadoRespaldo respaldo;
    std::vector<std::pair<QString, int>> borradas;
};
// Primero un respaldo en la carpeta de los respaldos automáticos, después la purga. Si el respaldo
// falla, lanza Aviso y no se borra nada.
ResultadoPurga RespaldaYPurga(Almacen& almacen, const Configuracion& conf, const QDateTime& momento,
                              const std::function<void(int)>& avance = {});

// Multi-Tablas: el título de cada archivo principal de la lista y su consulta, por su posición.
struct TablaExplorable {
    QString titulo;
    QString sql;
};
const std::vector<TablaExplorable>& TablasExplorables();

} // namespace orv
