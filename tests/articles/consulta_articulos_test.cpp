// Las listas del panel de artículos en los dos motores: la búsqueda por descripción da lo mismo por
// el índice de texto que recorriendo la tabla, el índice sigue a cada alta, cambio y baja, el paso
// que lo crea indexa lo que ya había, y el borrado de un artículo.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "articles/articulos.h"
#include "articles/consulta_articulos.h"
#include "store/actualizacion.h"

#include <algorithm>

namespace orv::prueba {
namespace {

class ConsultaArticulos : public PorMotorAlDia {
protected:
    void articulos() {
        almacen().ejecuta(QStringLiteral("INSERT INTO Rubros (idRubro, Rubro) VALUES (1, 'Almacén'), (2, 'Bazar')"));
        almacen().ejecuta(QStringLiteral(
            "INSERT INTO Articulos (Codigo, Descripcion, idRubro) VALUES ('0101', 'Yerba Mate 1 kg', 1), "
            "('0102', 'YERBA suave', 1), ('0103', 'Descuento 50% off', 2), ('0104', 'Galletitas O''Neil', 1), "
            "('0105', 'Ñandú de peluche', 2), ('0106', 'ñoquis_caseros', 0), ('0107', NULL, 1), "
            "('0108', 'Café 50x', 1)"));
    }
    // Código y rubro de cada fila, en el orden de la lista.
    QStringList lista(const ConsultaConParametros& c) {
        return Filas(almacen(), QStringLiteral("SELECT Codigo, Rubro FROM (") + c.sql + QStringLiteral(") AS q"),
                     c.parametros);
    }
    QStringList porDescripcion(const QString& texto, CaminoTexto camino = CaminoTexto::Indice) {
        return lista(ConsultaArticulosPorDescripcion(almacen(), texto, camino));
    }
};

TEST_P(ConsultaArticulos, DescripcionIgualPorIndiceYRecorriendoSinMayusculasYConComodinesLiterales) {
    articulos();
    ASSERT_TRUE(HayIndiceDescripciones(almacen()));
    const struct {
        const char* texto;
        QStringList filas;
    } casos[] = {
        {"yerba", {"0101|Almacén", "0102|Almacén"}},
        {"ERB", {"0101|Almacén", "0102|Almacén"}},
        {"Mate 1", {"0101|Almacén"}},
        {"50%", {"0103|Bazar"}},              // el % es una letra más: "Café 50x" no
        {"0%", {"0103|Bazar"}},               // dos letras: por la tabla
        {"%", {"0103|Bazar"}},
        {"_c", {"0106|NULL"}},
        {"s_c", {"0106|NULL"}},
        {"o'n", {"0104|Almacén"}},
        {"'", {"0104|Almacén"}},
        {"ÑAN", {"0105|Bazar"}},              // mayúsculas fuera de ASCII
        {"ñ", {"0105|Bazar", "0106|NULL"}},
        {"noquis", {}},                       // la tilde de la eñe cuenta
        {"ñoquis", {"0106|NULL"}},            // sin rubro: aparece al buscar
        {"1\" y", {}},                      // una comilla doble en el texto no es sintaxis
        {"xyz", {}},
        {"", {"0101|Almacén", "0102|Almacén", "0103|Bazar", "0104|Almacén", "0105|Bazar", "0106|NULL",
              "0108|Almacén"}},
    };
    for (const auto& c : casos) {
        const QString texto = QString::fromUtf8(c.texto);
        EXPECT_EQ(porDescripcion(texto), c.filas) << c.texto;
        EXPECT_EQ(porDescripcion(texto, CaminoTexto::Recorrido), c.filas) << c.texto;
    }
    // La lista completa deja afuera al que no tiene rubro (y no filtra la descripción nula).
    EXPECT_EQ(lista({ConsultaArticulosCompleta(almacen()), {}}),
              (QStringList{"0101|Almacén", "0102|Almacén", "0103|Bazar", "0104|Almacén", "0105|Bazar", "0107|Almacén",
                           "0108|Almacén"}));
    EXPECT_TRUE(HayArticulosConRubro(almacen()));
    almacen().ejecuta(QStringLiteral("UPDATE Articulos SET idRubro = 9"));
    EXPECT_FALSE(HayArticulosConRubro(almacen()));
}

TEST_P(ConsultaArticulos, IndiceSigueAltasCambiosYBajas) {
    articulos();
    DatosArticulo d;
    d.codigo = QStringLiteral("0200");
    d.descripcion = QStringLiteral("Té verde en hebras");
    d.idRubro = 2;
    const qint64 id = GrabaArticulo(almacen(), 0, d, QString());
    EXPECT_EQ(porDescripcion(QStringLiteral("VERDE")), QStringList{"0200|Bazar"});
    d.descripcion = QStringLiteral("Té negro en hebras");
    GrabaArticulo(almacen(), id, d, QString());
    almacen().ejecuta(QStringLiteral("UPDATE Articulos SET Descripcion = 'Yerba con palo' WHERE Codigo = '0102'"));
    const struct {
        const char* texto;
        QStringList filas;
    } casos[] = {
        {"verde", {}},
        {"negro", {"0200|Bazar"}},
        {"hebras", {"0200|Bazar"}},
        {"suave", {}},
        {"yerba", {"0101|Almacén", "0102|Almacén"}},
    };
    for (const auto& c : casos) EXPECT_EQ(porDescripcion(QString::fromUtf8(c.texto)), c.filas) << c.texto;

    EXPECT_TRUE(BorraArticulo(almacen(), id));
    EXPECT_FALSE(BorraArticulo(almacen(), id)); // ya no estaba
    EXPECT_EQ(porDescripcion(QStringLiteral("hebras")), QStringList{});
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT count(*) FROM Articulos")), QStringList{"8"});
    if (!almacen().esPostgreSQL()) { // el índice de SQLite coincide con la tabla, fila por fila
        EXPECT_NO_THROW(almacen().ejecuta(
            QStringLiteral("INSERT INTO ArticulosTexto (ArticulosTexto, rank) VALUES ('integrity-check', 1)")));
    }
}

// Un almacén que ya tenía artículos antes del índice: el paso los indexa a todos, sin tocarlos.
TEST(ConsultaArticulosPaso, IndexaLoQueYaHabia) {
    for (Motor m : {Motor::SQLite, Motor::PostgreSQL}) {
        if (m == Motor::PostgreSQL && !hayPostgreSQL()) continue;
        AlmacenDePrueba base(m);
        Almacen& a = base.almacen();
        // Los pasos de antes del índice de texto (el 6); los de después también quedan para el final.
        std::vector<PasoEsquema> previos;
        for (const PasoEsquema& p : pasosDelSistema())
            if (p.numero < 6) previos.push_back(p);
        actualizaEsquema(a, previos);
        EXPECT_FALSE(HayIndiceDescripciones(a));
        a.ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, idRubro) VALUES ('1', 'Arroz largo fino', 1), "
                                 "('2', 'Fideos finos', 1), ('3', 'Azúcar', 1)"));
        const QString antes = Filas(a, QStringLiteral("SELECT * FROM Articulos ORDER BY Codigo")).join(u'\n');
        EXPECT_EQ(actualizaEsquema(a), int(pasosDelSistema().size() - previos.size()));
        EXPECT_TRUE(HayIndiceDescripciones(a));
        EXPECT_EQ(Filas(a, QStringLiteral("SELECT * FROM Articulos ORDER BY Codigo")).join(u'\n'), antes);
        const ConsultaConParametros c = ConsultaArticulosPorDescripcion(a, QStringLiteral("FIN"));
        EXPECT_EQ(Filas(a, QStringLiteral("SELECT Codigo FROM (") + c.sql + QStringLiteral(") AS q"), c.parametros),
                  (QStringList{"1", "2"}));
    }
}

ORV_AMBOS_MOTORES(ConsultaArticulos);

} // namespace
} // namespace orv::prueba
