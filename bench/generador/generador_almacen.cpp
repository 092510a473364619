// generador_almacen DESTINO [--articulos N] [--rubros N] [--caja N] [--clientes N] [--lineas-cliente N]
// Crea (o abre) el almacén DESTINO, lo pone al día y le agrega artículos y filas de caja
// (y clientes con su cuenta corriente, uno de ellos con muchas líneas) para medir rendimiento. DESTINO es la ruta de un archivo SQLite o un URI postgresql://.

#include "maintenance/generador.h"
#include "store/actualizacion.h"
#include "store/almacen.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QStringList>
#include <cstdio>
#include <utility>

namespace {

int uso() {
    std::fprintf(stderr, "uso: generador_almacen DESTINO [--articulos N] [--rubros N] [--caja N] [--clientes N] "
                         "[--lineas-cliente N]\n"
                         "  DESTINO: archivo SQLite o postgresql://usuario@servidor/base\n"
                         "  por omisión 100000 artículos (un rubro cada 9999, al menos 50) y 1000000 filas de caja,\n"
                         "  sin clientes; --lineas-cliente son las líneas de más del primer cliente\n");
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments();
    args.removeFirst();
    if (args.isEmpty()) return uso();

    QString destino;
    orv::OpcionesGenerador opciones;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        const std::pair<const char*, qint64*> numeros[] = {{"--articulos", &opciones.articulos},
                                                          {"--rubros", &opciones.rubros},
                                                          {"--caja", &opciones.filasCaja},
                                                          {"--clientes", &opciones.clientes},
                                                          {"--lineas-cliente", &opciones.lineasClienteGrande}};
        qint64* destinoNumero = nullptr;
        for (const auto& [opcion, valor] : numeros)
            if (a == QLatin1String(opcion)) destinoNumero = valor;
        if (destinoNumero) {
            bool ok = false;
            const qint64 n = i + 1 < args.size() ? args[i + 1].toLongLong(&ok) : 0;
            if (!ok || n < 0) return uso();
            *destinoNumero = n;
            ++i;
        } else if (destino.isEmpty() && !a.startsWith(QLatin1String("--"))) {
            destino = a;
        } else {
            return uso();
        }
    }
    if (destino.isEmpty()) return uso();

    try {
        QElapsedTimer reloj;
        reloj.start();
        auto almacen = orv::Almacen::abre(destino);
        orv::actualizaEsquema(*almacen);
        const orv::ResumenGeneracion r = orv::generaAlmacenGrande(*almacen, opciones);
        almacen->cierra();
        std::printf("%s: %lld artículos y %lld filas de caja (ingresos %lld.%04lld, egresos %lld.%04lld), %lld clientes "
                    "en %.1f s\n",
                    qPrintable(destino), r.articulos, r.filasCaja, r.ingresos / 10000, r.ingresos % 10000,
                    r.egresos / 10000, r.egresos % 10000, r.clientes, double(reloj.elapsed()) / 1000.0);
    } catch (const orv::ErrorAlmacen& e) {
        std::fprintf(stderr, "Error del almacén: %s\n", qPrintable(e.descripcion()));
        return 1;
    }
    return 0;
}
