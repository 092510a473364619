// Registra el borrador de la terminal 1 en un almacén SQLite y muere de golpe al empezar la
// sentencia número N (como si se cortara la luz): sirve para probar que un registro nunca queda
// a medias.
//
//   registro_interrumpido BASE.db N      (N = 0: no muere; al final escribe cuántas sentencias corrió)

#include "sales/registro.h"
#include "store/almacen.h"

#include <QCoreApplication>
#include <QSqlDriver>
#include <cstdio>
#include <cstdlib>
#include <sqlite3.h>

namespace {

struct Contador {
    long hasta = 0;
    long vistas = 0;
};

int alEmpezar(unsigned, void* c, void*, void*) {
    auto* k = static_cast<Contador*>(c);
    if (++k->vistas == k->hasta) std::_Exit(7);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc < 3) return 2;
    Contador contador;
    contador.hasta = std::atol(argv[2]);
    try {
        auto a = orv::Almacen::abreSQLite(QString::fromLocal8Bit(argv[1]));
        sqlite3* db = *static_cast<sqlite3* const*>(a->base().driver()->handle().constData());
        sqlite3_trace_v2(db, SQLITE_TRACE_STMT, alEmpezar, &contador);
        orv::DatosRegistro d;
        d.idRed = 1;
        d.idUsuario = 1;
        d.idTipoComprobante = 1;
        d.idCliente = 2;
        d.clienteEsVip = true;
        d.formaCalculoVip = QStringLiteral("C");
        d.idVendio = 1;
        d.nombreCliente = QStringLiteral("Cliente");
        d.neto = orv::Dinero(100);
        d.total = orv::Dinero(121);
        d.hoy = QDate(2026, 11, 23);
        orv::RegistraComprobante(*a, d, orv::Ruta::Plantilla);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 3;
    }
    std::printf("%ld\n", contador.vistas);
    return 0;
}
