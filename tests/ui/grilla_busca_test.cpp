// Búsqueda de la grilla por la columna de orden (cuenta por el índice) contra una búsqueda fila
// por fila, en los dos motores, en orden ascendente y descendente, con repetidos y nulos; y la
// búsqueda fila por fila en columnas de texto.

#include "apoyo/base_prueba.h"
#include "widgets/grilla.h"

#include <QRandomGenerator>
#include <QTableView>
#include <limits>

namespace orv {
namespace {

using prueba::PorMotor;

class GrillaBusca : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (!base_) return;
        Almacen& a = almacen();
        a.ejecuta(QStringLiteral("CREATE TABLE Numeros (n BIGINT, etiqueta TEXT)"));
        a.ejecuta(QStringLiteral("CREATE INDEX Numeros_n ON Numeros (n)"));
        Transaccion t(a);
        // Valores dispersos entre 1 y 49 999 (faltan muchos: el 12 no está, el 120 y el 1200 sí).
        for (int i = 0; i < 1500; ++i) {
            const qint64 n = (qint64(i) * 7919) % 50000 + 1;
            if (QString::number(n) == QStringLiteral("12")) continue;
            agrega(n);
        }
        for (qint64 n : {120, 120, 120, 1200, 1201, 7, -15, 0}) agrega(n);
        for (int i = 0; i < 3; ++i) agrega(QVariant(QMetaType(QMetaType::LongLong)));
        t.confirmar();
    }
    void agrega(const QVariant& n) {
        almacen().ejecuta(QStringLiteral("INSERT INTO Numeros (n, etiqueta) VALUES (?, ?)"),
                          {n, QStringLiteral("fila ") + n.toString()});
    }
    // Fila esperada recorriendo todas las filas en el orden de la grilla.
    static int fuerzaBruta(Grilla& g, const QString& texto) {
        ModeloGrilla& m = g.modelo();
        const int col = m.columna(QStringLiteral("n"));
        for (int f = 0; m.asegura(f); ++f) {
            const QVariant v = m.valor(f, col);
            if (!v.isNull() && QString::number(v.toLongLong()).startsWith(texto)) return f;
        }
        return -1;
    }
    std::unique_ptr<Grilla> grilla(const QString& sql) {
        auto g = std::make_unique<Grilla>(almacen());
        g->fijaConsulta(sql);
        return g;
    }
    // Fila esperada para una columna de texto: sin distinguir mayúsculas, también fuera de ASCII.
    static int fuerzaBrutaTexto(Grilla& g, const QString& campo, const QString& texto) {
        ModeloGrilla& m = g.modelo();
        const int col = m.columna(campo);
        for (int f = 0; m.asegura(f); ++f) {
            const QVariant v = m.valor(f, col);
            if (!v.isNull() && v.toString().startsWith(texto, Qt::CaseInsensitive)) return f;
        }
        return -1;
    }
    void comparaTodo(const QString& sql, const QStringList& masTextos = {}) {
        QStringList textos = masTextos;
        textos += QStringList{QStringLiteral("1"),    QStringLiteral("12"),   QStringLiteral("120"),
                              QStringLiteral("1200"), QStringLiteral("7"),    QStringLiteral("0"),
                              QStringLiteral("00"),   QStringLiteral("07"),   QStringLiteral("9"),
                              QStringLiteral("4999"), QStringLiteral("49999"), QStringLiteral("123456789"),
                              QStringLiteral("5"),    QStringLiteral("49")};
        QRandomGenerator azar(20261123);
        for (int i = 0; i < 40; ++i) textos << QString::number(azar.bounded(1, 60000)).left(azar.bounded(1, 6));
        auto rapida = grilla(sql);
        auto lenta = grilla(sql);
        for (const QString& t : textos) {
            const int esperada = fuerzaBruta(*lenta, t);
            const bool hallada = rapida->busca(QStringLiteral("n"), t);
            EXPECT_EQ(hallada, esperada >= 0) << sql.toStdString() << " / " << t.toStdString();
            if (hallada) {
                EXPECT_EQ(rapida->filaActualNumero(), esperada) << sql.toStdString() << " / " << t.toStdString();
            }
            if (hallada && esperada >= 0) {
                // La fila a la que fue es de verdad una que empieza con el texto.
                const auto r = rapida->filaActual();
                ASSERT_TRUE(r);
                EXPECT_TRUE(QString::number(r->value(QStringLiteral("n")).toLongLong()).startsWith(t));
                // Toda la página de esa fila coincide con la que se lee saltando filas.
                const int col = lenta->modelo().columna(QStringLiteral("n"));
                const int inicio = esperada / ModeloGrilla::kPagina * ModeloGrilla::kPagina;
                for (int f = inicio; f < inicio + ModeloGrilla::kPagina && lenta->modelo().asegura(f); ++f) {
                    ASSERT_TRUE(rapida->modelo().asegura(f)) << f;
                    const QVariant a = rapida->modelo().valor(f, col);
                    const QVariant b = lenta->modelo().valor(f, col);
                    ASSERT_EQ(a.isNull(), b.isNull()) << t.toStdString() << " fila " << f;
                    ASSERT_EQ(a.toLongLong(), b.toLongLong()) << t.toStdString() << " fila " << f;
                }
            }
        }
    }
};

TEST_P(GrillaBusca, OrdenAscendenteIgualQueFilaPorFila) {
    comparaTodo(QStringLiteral("SELECT n, etiqueta FROM Numeros ORDER BY n"));
}

TEST_P(GrillaBusca, OrdenDescendenteIgualQueFilaPorFila) {
    comparaTodo(QStringLiteral("SELECT n, etiqueta FROM Numeros ORDER BY Numeros.n DESC"));
}

TEST_P(GrillaBusca, ConParametrosYFiltro) {
    comparaTodo(QStringLiteral("SELECT n, etiqueta FROM Numeros WHERE n > 100 OR n IS NULL ORDER BY n"));
}

TEST_P(GrillaBusca, TextosQueNoSonCifrasYColumnasDeTexto) {
    auto g = grilla(QStringLiteral("SELECT n, etiqueta FROM Numeros ORDER BY n"));
    EXPECT_FALSE(g->busca(QStringLiteral("n"), QStringLiteral("1%")));
    EXPECT_FALSE(g->busca(QStringLiteral("n"), QStringLiteral("_")));
    EXPECT_FALSE(g->busca(QStringLiteral("n"), QStringLiteral("1'")));
    EXPECT_TRUE(g->busca(QStringLiteral("n"), QStringLiteral("-1")));
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("n")).toLongLong(), -15);
    // Una columna que no es la del orden se busca fila por fila, sin distinguir mayúsculas.
    EXPECT_TRUE(g->busca(QStringLiteral("etiqueta"), QStringLiteral("FILA 120")));
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("n")).toLongLong(), 120);
}

TEST_P(GrillaBusca, FilasAgregadasDespuesDeLaPrimeraBusquedaNoCorrenLaPosicion) {
    agrega(49990);
    agrega(49991);
    auto g = grilla(QStringLiteral("SELECT n, etiqueta FROM Numeros ORDER BY n"));
    ASSERT_TRUE(g->busca(QStringLiteral("n"), QStringLiteral("49990"))); // cerca del final: usa el total
    // Otra terminal agrega filas al final y una en el medio; la grilla no se refrescó.
    auto otra = base().otraConexion();
    for (qint64 n : {60000, 60001, 60002})
        otra->ejecuta(QStringLiteral("INSERT INTO Numeros (n, etiqueta) VALUES (?, 'nueva')"), {n});
    ASSERT_TRUE(g->busca(QStringLiteral("n"), QStringLiteral("49991")));
    auto fresca = grilla(QStringLiteral("SELECT n, etiqueta FROM Numeros ORDER BY n"));
    EXPECT_EQ(g->filaActualNumero(), fuerzaBruta(*fresca, QStringLiteral("49991")));
}

TEST_P(GrillaBusca, OrdenesQueNoSonDeUnaColumnaDelResultadoIgualQueFilaPorFila) {
    // Varias columnas: la búsqueda por n va fila por fila y da la primera de los repetidos.
    comparaTodo(QStringLiteral("SELECT n, etiqueta FROM Numeros ORDER BY n, etiqueta DESC"));
    // Columna calculada con el nombre del orden (sin índice, pero el mismo resultado).
    comparaTodo(QStringLiteral("SELECT n * 2 AS n, etiqueta FROM Numeros ORDER BY n DESC"));
    // "Numeros.n" ordena por la columna de la tabla, no por la del resultado que se llama igual.
    comparaTodo(QStringLiteral("SELECT -n AS n, etiqueta FROM Numeros ORDER BY Numeros.n"),
                {QStringLiteral("15"), QStringLiteral("-1"), QStringLiteral("-4999")});
}

TEST_P(GrillaBusca, PosicionesConocidasConRepetidosYNulos) {
    almacen().ejecuta(QStringLiteral("DELETE FROM Numeros"));
    for (qint64 n : {1201, 5, 120, 99, 1200, 7, 120})
        agrega(n);
    agrega(QVariant(QMetaType(QMetaType::LongLong)));
    agrega(QVariant(QMetaType(QMetaType::LongLong)));
    const bool pg = GetParam() == prueba::Motor::PostgreSQL;
    // Los nulos van al comienzo en SQLite ascendente y en PostgreSQL descendente.
    const int nulosAsc = pg ? 0 : 2;
    const int nulosDesc = pg ? 2 : 0;

    auto asc = grilla(QStringLiteral("SELECT n, etiqueta FROM Numeros ORDER BY n"));
    // El 12 no está: el primero que empieza con "12" es el primero de los dos 120.
    ASSERT_TRUE(asc->busca(QStringLiteral("n"), QStringLiteral("12")));
    EXPECT_EQ(asc->filaActualNumero(), nulosAsc + 3); // después de 5, 7 y 99
    EXPECT_EQ(asc->filaActual()->value(QStringLiteral("n")).toLongLong(), 120);
    EXPECT_EQ(asc->modelo().valor(nulosAsc + 2, 0).toLongLong(), 99);
    ASSERT_TRUE(asc->busca(QStringLiteral("n"), QStringLiteral("1200")));
    EXPECT_EQ(asc->filaActualNumero(), nulosAsc + 5);
    ASSERT_TRUE(asc->busca(QStringLiteral("n"), QStringLiteral("9")));
    EXPECT_EQ(asc->filaActual()->value(QStringLiteral("n")).toLongLong(), 99);
    // Sin coincidencia la fila no se mueve.
    EXPECT_FALSE(asc->busca(QStringLiteral("n"), QStringLiteral("13")));
    EXPECT_FALSE(asc->busca(QStringLiteral("n"), QStringLiteral("1202")));
    EXPECT_FALSE(asc->busca(QStringLiteral("n"), QStringLiteral("05")));
    EXPECT_EQ(asc->filaActual()->value(QStringLiteral("n")).toLongLong(), 99);

    auto desc = grilla(QStringLiteral("SELECT n, etiqueta FROM Numeros ORDER BY n DESC"));
    // En descendente el primero que empieza con "12" es el mayor.
    ASSERT_TRUE(desc->busca(QStringLiteral("n"), QStringLiteral("12")));
    EXPECT_EQ(desc->filaActualNumero(), nulosDesc);
    EXPECT_EQ(desc->filaActual()->value(QStringLiteral("n")).toLongLong(), 1201);
    ASSERT_TRUE(desc->busca(QStringLiteral("n"), QStringLiteral("1200")));
    EXPECT_EQ(desc->filaActualNumero(), nulosDesc + 1);
    ASSERT_TRUE(desc->busca(QStringLiteral("n"), QStringLiteral("5")));
    EXPECT_EQ(desc->filaActualNumero(), nulosDesc + 6);
    // Repetidos en descendente: sin los mayores, la primera de las dos filas con 120.
    almacen().ejecuta(QStringLiteral("DELETE FROM Numeros WHERE n > 1000"));
    desc->refresca();
    ASSERT_TRUE(desc->busca(QStringLiteral("n"), QStringLiteral("12")));
    EXPECT_EQ(desc->filaActualNumero(), nulosDesc);
    EXPECT_EQ(desc->modelo().valor(nulosDesc + 1, 0).toLongLong(), 120);
    EXPECT_NE(desc->modelo().valor(nulosDesc + 2, 0).toLongLong(), 120);
}

TEST_P(GrillaBusca, ValoresExtremosDeSesentaYCuatroBits) {
    // Valores de 19 cifras y otros de signo opuesto en la misma columna.
    for (qint64 n : {std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::max() - 807,
                     std::numeric_limits<qint64>::min() + 1, qint64(-4611686018427387904), qint64(4611686018427387904)})
        agrega(n);
    comparaTodo(QStringLiteral("SELECT n, etiqueta FROM Numeros ORDER BY n"),
                {QStringLiteral("922337203685477"), QStringLiteral("9223372036854775807"),
                 QStringLiteral("9223372036854775808"), QStringLiteral("92233720368547758070"),
                 QStringLiteral("4611686018427387904"), QStringLiteral("46116860184")});
    comparaTodo(QStringLiteral("SELECT n, etiqueta FROM Numeros ORDER BY n DESC"),
                {QStringLiteral("922337203685477"), QStringLiteral("9223372036854775807"), QStringLiteral("4")});
}

TEST_P(GrillaBusca, FilasAgregadasAntesDeLaPrimeraBusquedaCercaDelFinal) {
    // Mil filas más al final, para que las búsquedas cerca del final no lleguen a la última página
    // (una grilla que ya leyó su final no muestra filas nuevas hasta refrescarse).
    agrega(49991);
    almacen().ejecuta(QStringLiteral("WITH RECURSIVE s(i) AS (SELECT 50001 UNION ALL SELECT i + 1 FROM s "
                                     "WHERE i < 51000) INSERT INTO Numeros (n, etiqueta) SELECT i, 'relleno' FROM s"));
    const QString sql = QStringLiteral("SELECT n, etiqueta FROM Numeros ORDER BY n");
    auto g = grilla(sql);
    auto otra = base().otraConexion();
    auto comparaConFresca = [&](const QString& t) {
        auto fresca = grilla(sql);
        ASSERT_TRUE(g->busca(QStringLiteral("n"), t)) << t.toStdString();
        EXPECT_EQ(g->filaActualNumero(), fuerzaBruta(*fresca, t)) << t.toStdString();
        EXPECT_TRUE(QString::number(g->filaActual()->value(QStringLiteral("n")).toLongLong()).startsWith(t));
    };
    // Una búsqueda cerca del comienzo no necesita el total.
    comparaConFresca(QStringLiteral("120"));
    // Otra terminal agrega filas al final; después se busca cerca del final.
    for (qint64 n : {60000, 60001, 60002})
        otra->ejecuta(QStringLiteral("INSERT INTO Numeros (n, etiqueta) VALUES (?, 'nueva')"), {n});
    comparaConFresca(QStringLiteral("49991"));
    // Filas agregadas después de leer el total: las que quedan más allá del último valor leído
    // no corren la posición de las anteriores, y buscarlas las halla en su lugar.
    otra->ejecuta(QStringLiteral("INSERT INTO Numeros (n, etiqueta) VALUES (?, 'otra'), (?, 'otra')"), {70000, 70001});
    comparaConFresca(QStringLiteral("505"));
    comparaConFresca(QStringLiteral("70001"));
}

TEST_P(GrillaBusca, ColumnaDeTextoSinDistinguirMayusculasNiComodines) {
    Almacen& a = almacen();
    a.ejecuta(QStringLiteral("CREATE TABLE Nombres (id INTEGER, nombre VARCHAR(60))"));
    const QStringList nombres = {QStringLiteral("Zeta O'Brien"), QStringLiteral("ñoqui"),   QStringLiteral("Ñandú"),
                                 QStringLiteral("alba"),          QStringLiteral("Álvarez"), QStringLiteral("100%"),
                                 QStringLiteral("1_0"),           QStringLiteral("10a"),     QStringLiteral("Ana"),
                                 QStringLiteral("ana"),           QStringLiteral("O'Brien"), QStringLiteral("éclair")};
    for (int i = 0; i < nombres.size(); ++i)
        a.ejecuta(QStringLiteral("INSERT INTO Nombres (id, nombre) VALUES (?, ?)"), {i + 1, nombres[i]});
    a.ejecuta(QStringLiteral("INSERT INTO Nombres (id, nombre) VALUES (?, NULL)"), {99});
    const QStringList textos = {QStringLiteral("ñ"),     QStringLiteral("Ñ"),    QStringLiteral("ÑAN"),
                                QStringLiteral("á"),     QStringLiteral("ÁLV"),  QStringLiteral("É"),
                                QStringLiteral("ana"),   QStringLiteral("ANA"),  QStringLiteral("1_"),
                                QStringLiteral("10"),    QStringLiteral("100%"), QStringLiteral("%"),
                                QStringLiteral("_"),     QStringLiteral("'"),    QStringLiteral("o'b"),
                                QStringLiteral("zeta o'"), QStringLiteral("Nadie"), QStringLiteral("\\")};
    for (const QString& sql : {QStringLiteral("SELECT id, nombre FROM Nombres ORDER BY nombre"),
                               QStringLiteral("SELECT id, nombre FROM Nombres ORDER BY nombre DESC"),
                               QStringLiteral("SELECT id, nombre FROM Nombres ORDER BY id")}) {
        auto g = grilla(sql);
        auto lenta = grilla(sql);
        for (const QString& t : textos) {
            const int esperada = fuerzaBrutaTexto(*lenta, QStringLiteral("nombre"), t);
            EXPECT_EQ(g->busca(QStringLiteral("nombre"), t), esperada >= 0)
                << sql.toStdString() << " / " << t.toStdString();
            if (esperada >= 0) {
                EXPECT_EQ(g->filaActualNumero(), esperada) << sql.toStdString() << " / " << t.toStdString();
            }
        }
    }
    // Los casos que no dependen del orden de los textos en cada motor.
    auto g = grilla(QStringLiteral("SELECT id, nombre FROM Nombres ORDER BY id"));
    ASSERT_TRUE(g->busca(QStringLiteral("nombre"), QStringLiteral("ñ")));
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("nombre")).toString(), QStringLiteral("ñoqui"));
    ASSERT_TRUE(g->busca(QStringLiteral("nombre"), QStringLiteral("ÑAN")));
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("nombre")).toString(), QStringLiteral("Ñandú"));
    ASSERT_TRUE(g->busca(QStringLiteral("nombre"), QStringLiteral("1_")));
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("nombre")).toString(), QStringLiteral("1_0"));
    EXPECT_FALSE(g->busca(QStringLiteral("nombre"), QStringLiteral("%")));
    ASSERT_TRUE(g->busca(QStringLiteral("nombre"), QStringLiteral("o'b")));
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("id")).toInt(), 11);
    // La clave numérica también se busca por su texto.
    ASSERT_TRUE(g->busca(QStringLiteral("id"), QStringLiteral("9")));
    EXPECT_EQ(g->filaActual()->value(QStringLiteral("id")).toInt(), 9);
}

ORV_AMBOS_MOTORES(GrillaBusca);

} // namespace
} // namespace orv
