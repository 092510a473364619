// Búsqueda de la grilla por la columna de orden (cuenta por el índice) contra una búsqueda fila
// por fila, en los dos motores, en orden ascendente y descendente, con repetidos y nulos.

#include "apoyo/base_prueba.h"
#include "shell/grilla.h"

#include <QRandomGenerator>
#include <QTableView>

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
    void comparaTodo(const QString& sql) {
        QStringList textos = {QStringLiteral("1"),    QStringLiteral("12"),   QStringLiteral("120"),
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

ORV_AMBOS_MOTORES(GrillaBusca);

} // namespace
} // namespace orv
