#include "store/actualizacion.h"

#include "store/esquema.h"

#include <QDateTime>

namespace orv {

namespace {

// Número arbitrario que identifica el candado de actualización entre terminales PostgreSQL.
constexpr qint64 kCandadoActualizacion = 7318004512;

int ultimoPasoAnotado(Almacen& a) {
    try {
        return a.valor(QStringLiteral("SELECT MAX(Paso) FROM PasosEsquema")).toInt();
    } catch (const ErrorAlmacen&) {
        return 0; // la tabla todavía no existe: almacén nuevo
    }
}

} // namespace

AlmacenMasNuevo::AlmacenMasNuevo(int delAlmacen, int delPrograma)
    : ErrorAlmacen(QStringLiteral("La base de datos está en la versión %1 del esquema y este programa llega hasta la "
                                  "versión %2: la actualizó un Orvanta más nuevo.")
                       .arg(delAlmacen)
                       .arg(delPrograma)),
      delAlmacen_(delAlmacen),
      delPrograma_(delPrograma) {}

const std::vector<PasoEsquema>& pasosDelSistema() {
    static const std::vector<PasoEsquema> pasos = {
        {1, QStringLiteral("Esquema inicial: tablas, índices, consultas y filas de partida"), creaEsquemaInicial},
        {2, QStringLiteral("Consulta de caja que se cuenta sin leer cuentas, comprobantes ni usuarios"),
         rehaceConsultaCaja},
        {3, QStringLiteral("Consultas de ventas en las que una nota de crédito resta en todas sus cifras"),
         rehaceConsultasDeVentas},
        {4, QStringLiteral("Descripciones de artículos sin tope de largo"), ensanchaDescripciones},
        {5, QStringLiteral("Datos fiscales del negocio: CUIT, condición de IVA e inicio de actividades"), completaEmpresa},
        {6, QStringLiteral("Índice de texto para buscar artículos por una parte de su descripción"), indexaDescripciones},
        {7, QStringLiteral("Códigos de artículos ordenados por sus bytes en PostgreSQL, como en SQLite"),
         indexaCodigosPorBytes},
        {8, QStringLiteral("Arqueo de caja al cerrar el día e índice de los totales de caja"), creaArqueoCaja},
        {9, QStringLiteral("Índice de la cuenta corriente de cada cliente por fecha"), indexaCuentasClientes},
        {10, QStringLiteral("Borrador de la compra propio de cada terminal"), borradorCompraPorTerminal},
        {11, QStringLiteral("Lugar libre en las páginas de artículos para cambiar precios y stock sin tocar los índices"),
         dejaLugarEnArticulos},
        {12, QStringLiteral("Índices de la venta por rubro y de las notas de crédito de un período"), indexaVentasPorFecha},
        {13, QStringLiteral("El índice de las notas de crédito de un período lleva el número de cada una"), indexaNotasConSuNumero},
        {14, QStringLiteral("Totales de toda la caja llevados por el servidor"), llevaTotalesCaja},
    };
    return pasos;
}

int versionEsquema(Almacen& a) { return ultimoPasoAnotado(a); }

int actualizaEsquema(Almacen& a, const std::vector<PasoEsquema>& pasos) {
    if (pasos.empty()) return 0;
    const int actual = ultimoPasoAnotado(a); // la única consulta de un almacén al día
    if (actual > pasos.back().numero) throw AlmacenMasNuevo(actual, pasos.back().numero);
    if (actual == pasos.back().numero) return 0;

    int aplicados = 0;
    for (const PasoEsquema& paso : pasos) {
        if (paso.numero <= actual) continue;
        Transaccion t(a);
        if (a.esPostgreSQL())
            a.valor(QStringLiteral("SELECT pg_advisory_xact_lock(?)"), {kCandadoActualizacion});
        a.ejecuta(ddl(a.dialecto(), QStringLiteral("CREATE TABLE IF NOT EXISTS PasosEsquema ("
                                                   "Paso {LARGO} PRIMARY KEY, Descripcion {TEXTO(200)}, "
                                                   "Aplicado {TEXTO(30)})")));
        // Otra terminal pudo haberlo aplicado mientras esperábamos el candado.
        if (a.valor(QStringLiteral("SELECT count(*) FROM PasosEsquema WHERE Paso = ?"), {paso.numero}).toInt() > 0)
            continue;
        paso.aplica(a);
        a.ejecuta(QStringLiteral("INSERT INTO PasosEsquema (Paso, Descripcion, Aplicado) VALUES (?, ?, ?)"),
                  {paso.numero, paso.descripcion,
                   QDateTime::currentDateTimeUtc().toString(Qt::ISODate)});
        t.confirmar();
        ++aplicados;
    }
    a.olvidaPreparadas(); // con el esquema nuevo, cada sentencia se vuelve a preparar
    return aplicados;
}

} // namespace orv
