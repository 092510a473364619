// Búsqueda de la grilla contra una búsqueda fila por fila, en los dos motores: por la columna de
// orden (cuenta por el índice) ascendente y descendente, con repetidos, nulos (al comienzo o al
// final según el motor) y valores extremos, sin moverse si no halla, con filas que otra terminal
// agrega; y en columnas de texto, sin mayúsculas ni comodines, también por los índices de texto
// (la columna del orden y otra), con repetidos, nulos y la vista agrupada. Todo, también con las
// marcas de posición que deja el navegador al contar.

#include "apoyo/base_prueba.h"
#include "widgets/grilla.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSqlDriver>
#include <limits>
#include <sqlite3.h>

namespace orv {
namespace {

using prueba::PorMotor;

class GrillaBusca : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (!base_) return;
        almacen().ejecuta("CREATE TABLE Numeros (n BIGINT, etiqueta TEXT)");
        almacen().ejecuta("CREATE INDEX Numeros_n ON Numeros (n)");
        Transaccion t(almacen());
        // Valores dispersos entre 1 y 49 999 (faltan muchos: el 12 no está, el 120 y el 1200 sí).
        for (int i = 0; i < 1500; ++i)
            if (const qint64 n = (qint64(i) * 7919) % 50000 + 1; n != 12) agrega(n);
        for (qint64 n : {120, 120, 120, 1200, 1201, 7, -15, 0}) agrega(n);
        for (int i = 0; i < 150; ++i) agrega(qint64(30000)); // más repetidos que un tramo de marcas
        for (int i = 0; i < 3; ++i) agrega(QVariant(QMetaType(QMetaType::LongLong)));
        t.confirmar();
    }
    void agrega(const QVariant& n) {
        almacen().ejecuta("INSERT INTO Numeros (n, etiqueta) VALUES (?, ?)", {n, QStringLiteral("fila ") + n.toString()});
    }
    std::unique_ptr<Grilla> grilla(const QString& sql) {
        auto g = std::make_unique<Grilla>(almacen());
        g->fijaConsulta(sql);
        return g;
    }
    // Fila esperada recorriendo todas las filas en el orden de la grilla: la primera cuyo texto
    // empieza con `texto` sin distinguir mayúsculas, también fuera de ASCII; -1 si ninguna.
    static int filaPorFila(Grilla& g, const QString& campo, const QString& texto) {
        ModeloGrilla& m = g.modelo();
        const int col = m.columna(campo);
        for (int f = 0; m.asegura(f); ++f)
            if (const QVariant v = m.valor(f, col); !v.isNull() && v.toString().startsWith(texto, Qt::CaseInsensitive)) return f;
        return -1;
    }
    // Una grilla con navegador que ya terminó de contar (con marcas cada pocas filas, para que
    // haya muchas y tramos de un solo valor).
    std::unique_ptr<Grilla> contada(const QString& sql) {
        auto g = grilla(sql);
        g->fijaTramosMarcas(37, 64);
        g->muestraNavegador(true);
        QElapsedTimer reloj;
        reloj.start();
        while (!g->totalFilas() && reloj.elapsed() < 20000) QCoreApplication::processEvents();
        return g;
    }
    // Cada texto lleva a la misma fila que la búsqueda fila por fila, y la página de esa fila es la
    // misma que se lee sin saltar ninguna; sin marcas y con ellas. El total contado de a tramos es
    // el de las filas.
    void comparaTodo(const QString& sql, const QString& campo, QStringList textos) {
        QRandomGenerator azar(20261123);
        for (int i = 0; i < 40; ++i) textos << QString::number(azar.bounded(1, 60000)).left(azar.bounded(1, 6));
        auto lenta = grilla(sql);
        const int col = lenta->modelo().columna(campo);
        int filas = 0;
        while (lenta->modelo().asegura(filas)) ++filas;
        // Las páginas leídas una tras otra (desde la anterior, por el valor del orden) dan la
        // columna del orden igual que la consulta leída de una vez.
        const QString orden = sql.section(QStringLiteral("ORDER BY "), -1).section(u' ', 0, 0).section(u',', 0, 0);
        if (const int co = lenta->modelo().columna(orden); co >= 0) {
            const ModeloGrilla::Pagina todas = lenta->modelo().leeFilas(sql, {});
            ASSERT_EQ(todas.size(), filas) << sql.toStdString();
            for (int f = 0; f < filas; ++f)
                ASSERT_EQ(lenta->modelo().valor(f, co), todas.at(f).at(co)) << sql.toStdString() << " fila " << f;
        }
        const std::unique_ptr<Grilla> rapidas[] = {grilla(sql), contada(sql)};
        ASSERT_EQ(rapidas[1]->totalFilas(), filas) << sql.toStdString();
        auto valor = [col](Grilla& g, int f) {
            const QVariant v = g.modelo().valor(f, col);
            return v.isNull() ? "nulo" : v.toString();
        };
        for (const QString& t : textos) {
            const int esperada = filaPorFila(*lenta, campo, t);
            for (const auto& rapida : rapidas) {
                const std::string donde = sql.toStdString() + " / " + t.toStdString() + (rapida->totalFilas() ? " (marcas)" : "");
                const int antes = rapida->filaActualNumero();
                ASSERT_EQ(rapida->busca(campo, t), esperada >= 0) << donde;
                if (esperada < 0) { // sin coincidencia la fila no se mueve
                    EXPECT_EQ(rapida->filaActualNumero(), antes) << donde;
                    continue;
                }
                EXPECT_EQ(rapida->filaActualNumero(), esperada) << donde;
                const int inicio = esperada / ModeloGrilla::kPagina * ModeloGrilla::kPagina;
                for (int f = inicio; f < inicio + ModeloGrilla::kPagina && lenta->modelo().asegura(f); ++f) {
                    ASSERT_TRUE(rapida->modelo().asegura(f)) << donde << " fila " << f;
                    ASSERT_EQ(valor(*rapida, f), valor(*lenta, f)) << donde << " fila " << f;
                }
            }
        }
    }
};

TEST_P(GrillaBusca, CadaOrdenIgualQueFilaPorFilaTambienConValoresExtremos) {
    const QStringList textos = {"1", "12", "120", "1200", "7", "0", "00", "07", "9", "4999", "49999", "123456789", "5", "49",
                                "15", "-1", "-4999", "922337203685477", "9223372036854775807", "9223372036854775808",
                                "92233720368547758070", "4611686018427387904", "46116860184"};
    const QString asc = "SELECT n, etiqueta FROM Numeros ORDER BY n";
    const QString desc = "SELECT n, etiqueta FROM Numeros ORDER BY Numeros.n DESC";
    for (const QString& sql : QStringList{asc, desc, "SELECT n, etiqueta FROM Numeros WHERE n > 100 OR n IS NULL ORDER BY n",
                               // Varias columnas: fila por fila, la primera de los repetidos.
                               "SELECT n, etiqueta FROM Numeros ORDER BY n, etiqueta DESC",
                               // Columna calculada con el nombre del orden (sin índice, el mismo resultado).
                               "SELECT n * 2 AS n, etiqueta FROM Numeros ORDER BY n DESC",
                               // "Numeros.n" ordena por la columna de la tabla, no por la del resultado que se llama igual.
                               "SELECT -n AS n, etiqueta FROM Numeros ORDER BY Numeros.n"})
        comparaTodo(sql, "n", textos);
    // Valores de 19 cifras y otros de signo opuesto en la misma columna.
    for (qint64 n : {std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::max() - 807,
                     std::numeric_limits<qint64>::min() + 1, qint64(-4611686018427387904), qint64(4611686018427387904)})
        agrega(n);
    for (const QString& sql : {asc, desc}) comparaTodo(sql, "n", textos);
}

TEST_P(GrillaBusca, FilasQueOtraTerminalAgregaAntesYDespuesDeLeerElTotal) {
    // Mil filas más al final, para que las búsquedas cerca del final no lleguen a la última página
    // (una grilla que ya leyó su final no muestra filas nuevas hasta refrescarse).
    agrega(49991);
    almacen().ejecuta(QStringLiteral("WITH RECURSIVE s(i) AS (SELECT 50001 UNION ALL SELECT i + 1 FROM s WHERE i < 51000) "
                                     "INSERT INTO Numeros (n, etiqueta) SELECT i, 'relleno' FROM s"));
    const QString sql = "SELECT n, etiqueta FROM Numeros ORDER BY n";
    auto g = grilla(sql);
    auto otra = base().otraConexion();
    auto comparaConFresca = [&](const char* t) {
        auto fresca = grilla(sql);
        ASSERT_TRUE(g->busca("n", QString::fromLatin1(t))) << t;
        EXPECT_EQ(g->filaActualNumero(), filaPorFila(*fresca, "n", QString::fromLatin1(t))) << t;
    };
    comparaConFresca("120"); // cerca del comienzo: no necesita el total
    for (qint64 n : {60000, 60001, 60002})
        otra->ejecuta("INSERT INTO Numeros (n, etiqueta) VALUES (?, 'nueva')", {n});
    comparaConFresca("49991"); // cerca del final: lee el total
    // Filas agregadas después de leer el total: las que quedan más allá del último valor leído no
    // corren la posición de las anteriores, y buscarlas las halla en su lugar.
    otra->ejecuta("INSERT INTO Numeros (n, etiqueta) VALUES (?, 'otra'), (?, 'otra')", {70000, 70001});
    for (const char* t : {"505", "49991", "70001"}) comparaConFresca(t);
}

TEST_P(GrillaBusca, TextoSinDistinguirMayusculasNiComodinesEnCualquierOrden) {
    auto g = grilla("SELECT n, etiqueta FROM Numeros ORDER BY n");
    for (const char* t : {"1%", "_", "1'"}) EXPECT_FALSE(g->busca("n", QString::fromLatin1(t))) << t;
    EXPECT_TRUE(g->busca("n", "-1"));
    EXPECT_EQ(g->filaActual()->value("n").toLongLong(), -15);
    // Una columna que no es la del orden se busca fila por fila.
    EXPECT_TRUE(g->busca("etiqueta", "FILA 120"));
    EXPECT_EQ(g->filaActual()->value("n").toLongLong(), 120);

    almacen().ejecuta("CREATE TABLE Nombres (id INTEGER, nombre VARCHAR(60))");
    const QStringList nombres = {"Zeta O'Brien", "ñoqui", "Ñandú", "alba", "Álvarez", "100%",
                                 "1_0",          "10a",   "Ana",   "ana",  "O'Brien", "éclair"};
    for (int i = 0; i < nombres.size(); ++i)
        almacen().ejecuta("INSERT INTO Nombres (id, nombre) VALUES (?, ?)", {i + 1, nombres[i]});
    almacen().ejecuta("INSERT INTO Nombres (id, nombre) VALUES (99, NULL)");
    const QStringList textos = {"ñ", "Ñ", "ÑAN", "á", "ÁLV", "É", "ana", "ANA", "1_", "10", "100%", "%", "_", "'", "o'b",
                                "zeta o'", "Nadie", "\\"};
    for (const char* orden : {"nombre", "nombre DESC", "id"})
        comparaTodo(QStringLiteral("SELECT id, nombre FROM Nombres ORDER BY ") + QString::fromLatin1(orden),
                    "nombre", textos);
    // Los casos que no dependen del orden de los textos en cada motor; la clave numérica, por su texto.
    auto h = grilla("SELECT id, nombre FROM Nombres ORDER BY id");
    for (const auto& [campo, texto, id] : {std::tuple{"nombre", "ñ", 2}, {"nombre", "ÑAN", 3}, {"nombre", "1_", 7},
                                           {"nombre", "o'b", 11}, {"nombre", "%", 11}, {"id", "9", 9}}) {
        h->busca(QString::fromLatin1(campo), QString::fromUtf8(texto));
        EXPECT_EQ(h->filaActual()->value("id").toInt(), id) << texto;
    }
}

// Sentencias SQLite que numeran filas (la búsqueda fila por fila) mientras vive el objeto.
class CuentaRecorridos {
public:
    explicit CuentaRecorridos(Almacen& a) {
        const QVariant h = a.base().driver()->handle();
        db_ = *static_cast<sqlite3* const*>(h.constData());
        sqlite3_trace_v2(db_, SQLITE_TRACE_STMT, &CuentaRecorridos::traza, &n_);
    }
    ~CuentaRecorridos() { sqlite3_trace_v2(db_, 0, nullptr, nullptr); }
    int recorridos() const { return n_; }

private:
    static int traza(unsigned, void* n, void*, void* x) {
        if (QByteArray(static_cast<const char*>(x)).contains("orv_fila()")) ++*static_cast<int*>(n);
        return 0;
    }
    sqlite3* db_ = nullptr;
    int n_ = 0;
};

TEST_P(GrillaBusca, TextoPorLosIndicesIgualQueFilaPorFila) {
    almacen().ejecuta("CREATE TABLE Catalogo (id INTEGER, codigo VARCHAR(20), prov VARCHAR(20))");
    almacen().ejecuta("CREATE INDEX Catalogo_codigo ON Catalogo (codigo)");
    almacen().ejecuta("CREATE INDEX Catalogo_prov ON Catalogo (prov)");
    {
        Transaccion t(almacen());
        const char* const prefijos[] = {"ARC-", "arc-", "Lsr-", "NTR-"};
        for (int i = 1; i <= 1200; ++i)
            almacen().ejecuta("INSERT INTO Catalogo (id, codigo, prov) VALUES (?, ?, ?)",
                              {i, QStringLiteral("%1%2").arg(i % 37 + 1, 2, 10, QChar(u'0')).arg(i, 4, 10, QChar(u'0')),
                               QString::fromLatin1(prefijos[i % 4]) + QString::number((i * 7919) % 10007)});
        // Repetidos, mayúsculas, comodines, fuera de ASCII, nulos y el último de la lista. Los
        // repetidos del código coinciden igual en las dos columnas: entre ellos ningún orden es fijo.
        const QVariant nulo(QMetaType(QMetaType::QString));
        for (const auto& [id, codigo, prov] :
             {std::tuple<int, QVariant, QVariant>{2001, "AB-1", "ñandú"}, {2002, "ab-2", "Ñandú"}, {2003, "Ab-3", "100%"},
              {2004, "AB-1", "Ñandú"}, {2005, "100%", "1_0"}, {2006, "1_0", "ARC-1"}, {2007, "zz-ultimo", "zz-ultimo"},
              {2008, nulo, "ARC-nulo"}, {2009, "ñu", nulo}})
            almacen().ejecuta("INSERT INTO Catalogo (id, codigo, prov) VALUES (?, ?, ?)", {id, codigo, prov});
        t.confirmar();
    }
    const QStringList textos = {"0",   "01",   "010",  "0100", "01000", "3",   "38",        "AB",         "ab-",   "aB-1",
                                "Ab-3", "ZZ-ULT", "zz-ultimo", "zz-ultimoX", "%", "_", "1_", "100%", "ñ",   "Ñ",
                                "ÑAN", "arc",  "ARC-1", "arc-79", "lsr", "NTR-9", "ntr-99", "x",        "nadie", "\\"};
    for (const char* orden : {"codigo", "codigo DESC", "id", "id DESC"})
        for (const char* campo : {"codigo", "prov"})
            comparaTodo(QStringLiteral("SELECT id, codigo, prov FROM Catalogo ORDER BY ") + QLatin1String(orden),
                        QLatin1String(campo), textos);

    // Sin recorrer filas cuando el valor del orden de la coincidencia es único (en SQLite se ve
    // qué sentencias corren).
    if (GetParam() == prueba::Motor::SQLite) {
        auto g = grilla("SELECT id, codigo, prov FROM Catalogo ORDER BY codigo");
        CuentaRecorridos cuenta(almacen());
        for (const auto& [campo, texto] : {std::pair{"codigo", "0100"}, {"codigo", "ZZ-U"}, {"codigo", "ab-2"},
                                           {"codigo", "Ñ"}, {"prov", "100%"}, {"prov", "arc-79"}, {"prov", "ZZ"}, {"prov", "lsr-1"}}) {
            ASSERT_TRUE(g->busca(QString::fromLatin1(campo), QString::fromUtf8(texto))) << texto;
            EXPECT_TRUE(g->filaActual()->value(campo).toString().startsWith(QString::fromUtf8(texto), Qt::CaseInsensitive))
                << texto;
        }
        EXPECT_EQ(cuenta.recorridos(), 0);
    }
    // En la vista agrupada la búsqueda sigue dentro de los grupos.
    auto g = grilla("SELECT id, codigo, prov FROM Catalogo ORDER BY codigo");
    g->agrupaPor("prov");
    ASSERT_TRUE(g->busca("codigo", "AB-2"));
    EXPECT_EQ(g->filaActual()->value("id").toInt(), 2002);
}

ORV_AMBOS_MOTORES(GrillaBusca);

} // namespace
} // namespace orv
