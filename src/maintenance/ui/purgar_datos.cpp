#include "maintenance/ui/purgar_datos.h"

#include "maintenance/purga.h"
#include "widgets/mensajes.h"

#include <QDir>
#include <QProgressDialog>

namespace orv {

bool PurgarDatos(Almacen& almacen, const Configuracion& conf, const Reloj& reloj, QWidget* padre) {
    if (!Pregunta(QStringLiteral("Borra todos los movimientos de facturas, caja, compras y stock?"), padre)) return false;
    // La segunda ya trae sus signos: va tal cual.
    if (!PreguntaSiNo(QStringLiteral("Está completamente seguro ??"), QStringLiteral("Pregunta"), Icono::Pregunta, padre))
        return false;

    // El respaldo de antes corre con su avance a la vista; sin respaldo no se borra nada.
    QProgressDialog avance(QStringLiteral("Respaldando la base de datos antes de purgar..."), QString(), 0, 100, padre);
    avance.setObjectName(QStringLiteral("dlgAvancePurga"));
    avance.setWindowTitle(QStringLiteral("Purgar datos"));
    avance.setWindowModality(Qt::WindowModal);
    avance.setMinimumDuration(0);
    avance.setValue(0);
    ResultadoPurga r;
    const bool hecha = Intenta(padre, [&] {
        r = RespaldaYPurga(almacen, conf, reloj.ahora(), [&avance](int p) { avance.setValue(p); });
    });
    avance.reset();
    if (!hecha) return false;

    Mensaje(QStringLiteral("Los archivos de trabajo osea COMPROBANTES,DETALLES,MOVIMIENTOS DE STOCK, CAJA Y CUENTAS "
                           "CORRIENTES han sido vaciados !\n\nAntes se guardó un respaldo en %1")
                .arg(QDir::toNativeSeparators(r.respaldo.almacen)),
            QStringLiteral("Listo"), Icono::Informacion, padre);
    Mensaje(QStringLiteral("Recuerde colocar correctamente la numeración de los comprobantes"), QStringLiteral("Ok"),
            Icono::Informacion, padre);
    return true;
}

} // namespace orv
