// Cambio de precios por porcentajes: qué artículos entran (rubro, proveedor y el valor del comienzo
// del código) y cómo quedan costo, venta y precio final, comparando las filas completas; los
// porcentajes mal escritos que no cambian nada; y un precio corregido en la grilla. En los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "articles/cambio_precios.h"

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

// Códigos numéricos, uno que empieza con cifras y uno sin cifras (vale 0).
const QString kArticulos = QStringLiteral(
    "INSERT INTO Articulos (idArticulo, Codigo, idRubro, IdProveedor, PrecioCosto, PrecioVenta, PrecioFinal) VALUES "
    "(1, '100', 1, 1, 100, 150, 181.5), (2, '250', 2, 1, 19.99, 30, 36.3), (3, '999999', 1, 2, 10, 12.5, 15.125), "
    "(4, '1000000', 1, 1, 1000, 1500, 1815), (5, '12abc', 2, 2, 7.77, 9.99, 12.0879), (6, 'abc', 1, 1, 1, 2, 2.42)");

class CambioPrecios : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        almacen().ejecutaGuion(QStringLiteral(
            "INSERT INTO Rubros (idRubro, Rubro) VALUES (1, 'Almacén'), (2, 'D''Angelo bebidas');"
            "INSERT INTO Proveedores (idProveedor, RazonSocial) VALUES (1, 'Norte'), (2, '<Todos>')"));
        almacen().ejecutaGuion(kArticulos);
    }
    QStringList precios() {
        return Filas(almacen(), QStringLiteral("SELECT Codigo, PrecioCosto, PrecioVenta, PrecioFinal FROM Articulos ORDER BY idArticulo"));
    }
};

TEST_P(CambioPrecios, PorcentajesSobreElRangoConElPrecioFinalAlDia) {
    const QStringList antes = precios();
    struct Caso {
        const char* nombre;
        RangoPrecios rango;
        const char* costo;
        const char* venta;
        qint64 cambian;
        QStringList esperado;
    };
    const Caso casos[] = {
        {"costo +10 %, venta igual, todos hasta 999999", {std::nullopt, std::nullopt, "0", "999999"}, "10", "0", 5,
         {"100|110|150|181.5", "250|21.989|30|36.3", "999999|11|12.5|15.125", "1000000|1000|1500|1815", "12abc|8.547|9.99|12.0879",
          "abc|1.1|2|2.42"}},
        {"costo −100 % y venta +7.5 % del rubro 1 y el proveedor 1", {1, 1, "0", "9999999"}, "-100", "7.5", 3,
         {"100|0|161.25|195.1125", "250|19.99|30|36.3", "999999|10|12.5|15.125", "1000000|0|1612.5|1951.125", "12abc|7.77|9.99|12.0879",
          "abc|0|2.15|2.6015"}},
        {"el proveedor llamado <Todos> no es todos", {std::nullopt, 2, "12", "12"}, "50", "50", 1,
         {"100|100|150|181.5", "250|19.99|30|36.3", "999999|10|12.5|15.125", "1000000|1000|1500|1815", "12abc|11.655|14.985|18.1319",
          "abc|1|2|2.42"}},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.nombre);
        almacen().ejecuta(QStringLiteral("DELETE FROM Articulos"));
        almacen().ejecutaGuion(kArticulos);
        EXPECT_EQ(precios(), antes);
        EXPECT_EQ(CuentaCambioPrecios(almacen(), c.rango), c.cambian);
        EXPECT_EQ(CambiaPrecios(almacen(), c.rango, QString::fromLatin1(c.costo), QString::fromLatin1(c.venta), QStringLiteral("21")),
                  c.cambian);
        EXPECT_EQ(precios(), c.esperado);
    }
}

TEST_P(CambioPrecios, LoMalEscritoNoCambiaNadaYLaGrillaCorrigeUnPrecio) {
    const QStringList antes = precios();
    const RangoPrecios todos{std::nullopt, std::nullopt, "0", "99999999"};
    EXPECT_EQ(AvisoDe([&] { CambiaPrecios(almacen(), todos, QStringLiteral("10,5"), QStringLiteral("0"), QStringLiteral("21")); })
                  .left(16),
              QStringLiteral("Precio de Costo:"));
    EXPECT_EQ(AvisoDe([&] { CambiaPrecios(almacen(), todos, QStringLiteral("0"), QString(), QStringLiteral("21")); }).left(16),
              QStringLiteral("Precio de Venta:"));
    EXPECT_EQ(AvisoDe([&] { CambiaPrecios(almacen(), {std::nullopt, std::nullopt, "", "9"}, "1", "1", "21"); }).left(10),
              QStringLiteral("Desde Cgo:"));
    EXPECT_EQ(precios(), antes);
    CambiaPrecioArticulo(almacen(), 1, QStringLiteral("PrecioVenta"), QStringLiteral("1,234.50"), QStringLiteral("10.5"));
    CambiaPrecioArticulo(almacen(), 2, QStringLiteral("PrecioCosto"), QStringLiteral("20"), QStringLiteral("21"));
    EXPECT_EQ(AvisoDe([&] { CambiaPrecioArticulo(almacen(), 2, QStringLiteral("PrecioCosto"), QStringLiteral("veinte"), "21"); })
                  .left(16),
              QStringLiteral("Precio de Costo:"));
    EXPECT_EQ(precios().mid(0, 2), QStringList({"100|100|1234.5|1364.1225", "250|20|30|36.3"}));
}

ORV_AMBOS_MOTORES(CambioPrecios);

} // namespace
} // namespace orv
