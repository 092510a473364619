#include "store/funciones_sqlite.h"

#include "store/dinero.h"

#include <QString>
#include <sqlite3.h>

namespace orv {

namespace {

qint64 filasNumeradas = 0;

void numeraFila(sqlite3_context* ctx, int, sqlite3_value**) {
    auto* n = static_cast<qint64*>(sqlite3_user_data(ctx));
    sqlite3_result_int64(ctx, ++*n);
}

QString texto(sqlite3_value* v, int bytes) {
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(v)), bytes);
}

bool hayNulo(sqlite3_value** args) {
    return sqlite3_value_type(args[0]) == SQLITE_NULL || sqlite3_value_type(args[1]) == SQLITE_NULL;
}

void empiezaCon(sqlite3_context* ctx, int, sqlite3_value** args) {
    if (hayNulo(args)) {
        sqlite3_result_int(ctx, 0);
        return;
    }
    const QString prefijo = texto(args[1], sqlite3_value_bytes(args[1]));
    // Cada carácter del prefijo ocupa a lo sumo 4 bytes en el valor: alcanza con decodificar
    // el comienzo (un carácter cortado al final queda fuera de lo que se compara).
    const QString comienzo = texto(args[0], qMin<int>(sqlite3_value_bytes(args[0]), int(4 * prefijo.size())));
    sqlite3_result_int(ctx, comienzo.startsWith(prefijo, Qt::CaseInsensitive) ? 1 : 0);
}

void contiene(sqlite3_context* ctx, int, sqlite3_value** args) {
    if (hayNulo(args)) {
        sqlite3_result_int(ctx, 0);
        return;
    }
    const QString valor = texto(args[0], sqlite3_value_bytes(args[0]));
    sqlite3_result_int(ctx, valor.contains(texto(args[1], sqlite3_value_bytes(args[1])), Qt::CaseInsensitive) ? 1 : 0);
}

// Importe × factor a cuatro decimales, exacto como en el programa (el REAL de SQLite se toma por su
// forma decimal más corta). Nulo si el importe es nulo; un importe que no cabe, error.
void dineroPor(sqlite3_context* ctx, int, sqlite3_value** args) {
    if (sqlite3_value_type(args[0]) == SQLITE_NULL) {
        sqlite3_result_null(ctx);
        return;
    }
    try {
        const Dinero importe = sqlite3_value_type(args[0]) == SQLITE_INTEGER
                                   ? Dinero(sqlite3_value_int64(args[0]))
                                   : Dinero::desdeDouble(sqlite3_value_double(args[0]));
        sqlite3_result_double(ctx, importe.por(sqlite3_value_double(args[1])).aDouble());
    } catch (const std::exception&) {
        sqlite3_result_error(ctx, "importe fuera de rango", -1);
    }
}

} // namespace

bool RegistraFuncionesSQLite(sqlite3* db) {
    if (!db) return false;
    constexpr int kDeterminista = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    return sqlite3_create_function_v2(db, "orv_fila", 0, SQLITE_UTF8, &filasNumeradas, numeraFila, nullptr, nullptr,
                                      nullptr) == SQLITE_OK &&
           sqlite3_create_function_v2(db, "orv_empieza", 2, kDeterminista, nullptr, empiezaCon, nullptr, nullptr,
                                      nullptr) == SQLITE_OK &&
           sqlite3_create_function_v2(db, "orv_contiene", 2, kDeterminista, nullptr, contiene, nullptr, nullptr,
                                      nullptr) == SQLITE_OK &&
           sqlite3_create_function_v2(db, "orv_por", 2, kDeterminista, nullptr, dineroPor, nullptr, nullptr, nullptr) == SQLITE_OK;
}

void ReiniciaNumeracionDeFilas() { filasNumeradas = 0; }

} // namespace orv
