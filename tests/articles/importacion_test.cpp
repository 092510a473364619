// Importación de hojas: las filas importadas completas contra las esperadas y la lista de errores
// por fila (código ya usado, vacío en un obligatorio, texto en un número, fecha imposible, importe
// fuera de rango, zona que no existe), los lotes y la cancelación entre ellos, y una falla del
// almacén en medio de un lote. En los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "articles/importacion.h"

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

Celda T(const char* t) { return Celda::deTexto(QString::fromUtf8(t)); }
Celda N(double n) { return Celda::deNumero(n); }
Celda F(int a, int m, int d) { return Celda::deFecha(QDate(a, m, d)); }
const Celda V{};

HojaLeida hoja(QStringList titulos, std::initializer_list<std::pair<int, QList<Celda>>> filas) {
    HojaLeida h{std::move(titulos), {}};
    for (const auto& [numero, celdas] : filas) h.filas << FilaPlanilla{numero, celdas};
    return h;
}

Mapeo columna(const char* externo, const char* interno, const char* mascara = "") {
    return {kMapeoColumna, QString::fromUtf8(externo), QString::fromUtf8(interno), QStringLiteral("0"), QString::fromUtf8(mascara)};
}
Mapeo fijo(const char* valor, const char* interno) {
    return {kMapeoFijo, QString::fromUtf8(valor), QString::fromUtf8(interno), QStringLiteral("0"), QString()};
}

QStringList lineas(const Importacion& imp) {
    QStringList r;
    for (const ErrorImportacion& e : imp.errores()) r << LineaDeError(e);
    return r;
}

// Corre la importación entera; devuelve cuántos lotes hizo.
int completa(Importacion& imp) {
    int lotes = 0;
    while (imp.avanza()) ++lotes;
    return lotes;
}

TEST(LecturaDeValores, NumerosConComaOPuntoDecimalYFechasDeSerie) {
    const std::pair<const char*, std::optional<QString>> numeros[] = {
        {"1.234,50", "1234.50"}, {"1,234.50", "1234.50"}, {"12,5", "12.5"},         {"12.5", "12.5"},
        {"1.234.567", "1234567"}, {"1,234,567", "1234567"}, {"$ 1 234,5", "1234.5"}, {"-3,25", "-3.25"},
        {"abc", std::nullopt},    {"", std::nullopt},       {"1,2.3.4", std::nullopt}, {"12,5 kg", std::nullopt}};
    for (const auto& [texto, esperado] : numeros) EXPECT_EQ(NumeroDePlanilla(QString::fromUtf8(texto)), esperado) << texto;
    EXPECT_EQ(FechaDeSerie(45432), QDate(2024, 5, 20));
    EXPECT_EQ(FechaDeSerie(45432.75), QDate(2024, 5, 20));
    EXPECT_EQ(FechaDeSerie(1), QDate(1899, 12, 31));
    EXPECT_EQ(FechaDeSerie(0, true), QDate(1904, 1, 1));
}

class Importa : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion) VALUES ('A1', 'Arroz')"));
    }
    QStringList articulos() {
        return Filas(almacen(), QStringLiteral("SELECT Codigo, Descripcion, idRubro, PrecioCosto, PrecioVenta, PrecioFinal, "
                                               "StockActual, CgoProveedor, esMateriaPrima, UltimaFechaCompra FROM Articulos "
                                               "ORDER BY idArticulo"));
    }
};

TEST_P(Importa, ArticulosConSusErroresPorFilaEnLotes) {
    const HojaLeida h = hoja({"Codigo", "Nombre", "Venta", "Costo", "Alta", "MP"},
                             {{2, {T("A2"), T("Yerba"), T("1.234,50"), N(800), F(2024, 5, 20), T("Sí")}},
                              {3, {T("A1"), T("Arroz largo"), N(10)}},
                              {4, {T("A3"), T("  "), N(10)}},
                              {5, {T("A4"), T("Azúcar"), T("12,5"), T("abc")}},
                              {6, {N(7790001000012), T("Té"), N(7.25), V, V, N(0)}},
                              {7, {T("A2"), T("Yerba otra vez"), N(1)}},
                              {8, {T("A6"), T("Mate"), T("3.5"), V, T("31/02/2024")}},
                              {9, {T("A7"), T("Bombilla"), N(1e15)}},
                              {10, {T("A8"), T("Termo"), N(20), N(15), T("01/03/2024"), T("tal vez")}},
                              {11, {T("A9"), T("Vaso"), N(2), N(1), T("2024-03-02"), T("no")}},
                              {12, {T("A9"), T("Vaso chico"), N(1)}}});
    const QList<Mapeo> mapa = {columna("Codigo", "Codigo"),
                               columna("Nombre", "Descripcion"),
                               columna("Venta", "PrecioVenta"),
                               columna("Costo", "PrecioCosto"),
                               columna("Alta", "UltimaFechaCompra"),
                               columna("MP", "esMateriaPrima"),
                               fijo("3", "idRubro"),
                               MapeoContador(QStringLiteral("100"), QStringLiteral("5"), QStringLiteral("CgoProveedor"),
                                             QStringLiteral("000000"))};
    Importacion imp(almacen(), TablaDestino::Articulos, mapa, h, QStringLiteral("21"), 4);
    ASSERT_TRUE(imp.avanza());
    EXPECT_EQ(imp.procesadas(), 4);
    EXPECT_EQ(imp.importadas(), 1);
    EXPECT_EQ(completa(imp), 2);
    EXPECT_EQ(imp.procesadas(), 11);
    EXPECT_EQ(imp.importadas(), 3);
    EXPECT_EQ(articulos(), (QStringList{
                               "A1|Arroz|NULL|0|0|0|0|NULL|0|NULL",
                               "A2|Yerba|3|800|1234.5|1493.745|0|000100|1|2024-05-20",
                               "7790001000012|Té|3|0|7.25|8.7725|0|000120|0|NULL",
                               "A9|Vaso|3|1|2|2.42|0|000145|0|2024-03-02",
                           }));
    EXPECT_EQ(lineas(imp), (QStringList{
                               "Fila 3: el código A1 ya es del artículo \"Arroz\"; no se importó",
                               "Fila 4: Descripcion está vacío y es obligatorio",
                               "Fila 5: PrecioCosto: \"abc\" no es un número",
                               "Fila 7: el código A2 ya es del artículo \"Yerba\"; no se importó",
                               "Fila 8: UltimaFechaCompra: \"31/02/2024\" no es una fecha",
                               "Fila 9: PrecioVenta: \"1000000000000000\" está fuera de rango",
                               "Fila 10: esMateriaPrima: \"tal vez\" no es Sí ni No",
                               "Fila 12: el código A9 ya es del artículo \"Vaso\"; no se importó",
                           }));
}

TEST_P(Importa, CancelarEntreLotesDejaLoConfirmado) {
    HojaLeida h{{"Codigo", "Nombre"}, {}};
    for (int i = 0; i < 10; ++i) h.filas << FilaPlanilla{i + 2, {T("C"), Celda::deTexto(QStringLiteral("Artículo %1").arg(i))}};
    // El código sale del contador con su máscara: 0001, 0002...
    const QList<Mapeo> mapa = {MapeoContador(QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("Codigo"), QStringLiteral("0000")),
                               columna("Nombre", "Descripcion")};
    {
        Importacion imp(almacen(), TablaDestino::Articulos, mapa, h, QString(), 4);
        ASSERT_TRUE(imp.avanza());
        ASSERT_TRUE(imp.avanza());
        EXPECT_EQ(imp.importadas(), 8);
        EXPECT_FALSE(imp.terminada());
    } // cancelada: no se llama más a avanza()
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT count(*), min(Codigo), max(Codigo), max(PrecioFinal) FROM Articulos WHERE Codigo <> 'A1'")),
              QStringList{"8|0001|0008|0"});
    // Importar la misma hoja otra vez informa los ocho ya importados y agrega los dos que faltaban.
    Importacion otra(almacen(), TablaDestino::Articulos, mapa, h, QString(), 100);
    completa(otra);
    EXPECT_EQ(otra.importadas(), 2);
    EXPECT_EQ(otra.errores().size(), 8);
    EXPECT_EQ(otra.errores().first(), (ErrorImportacion{2, "el código 0001 ya es del artículo \"Artículo 0\"; no se importó"}));
}

TEST_P(Importa, ClientesYProveedoresConSusCampos) {
    const HojaLeida h = hoja({"Nombre", "Correo", "Zona", "Descuento", "Puntos", "CUIT"},
                             {{2, {T("Ana Pérez"), T("ana@x.com"), N(1), T("10,5"), N(30), N(20123456786)}},
                              {3, {T("Beto"), V, N(99), V, V}},
                              {4, {T("Carla"), V, T("uno")}},
                              {5, {T("Dario"), V, N(1), V, T("abc")}},
                              {6, {T("Eva"), V, N(1), T("7"), N(2.5)}},
                              {7, {T("Fede"), V, N(1), V, V, T("30-11111111-8")}},
                              {8, {T("Gabi"), V, V}}});
    Importacion clientes(almacen(), TablaDestino::Vendedores,
                         {columna("Nombre", "Nombre"), columna("Correo", "e-mail"), columna("Zona", "idZona"),
                          columna("Descuento", "Descuento"), columna("Puntos", "PuntosVIP"), columna("CUIT", "Cuit")},
                         h, QString());
    completa(clientes);
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT Nombre, \"e-mail\", idZona, Descuento, PuntosVIP, Cuit FROM Vendedores "
                                              "WHERE Nombre <> 'Consumidor Final' ORDER BY idVendedor")),
              (QStringList{"Ana Pérez|ana@x.com|1|10.5|30|20123456786", "Fede|NULL|1|0|0|30-11111111-8"}));
    EXPECT_EQ(lineas(clientes), (QStringList{"Fila 3: la zona 99 no existe", "Fila 4: idZona: \"uno\" no es un número",
                                             "Fila 5: PuntosVIP: \"abc\" no es un número",
                                             "Fila 6: PuntosVIP: \"2.5\" no es un número entero",
                                             "Fila 8: idZona está vacío y es obligatorio"}));

    Importacion proveedores(almacen(), TablaDestino::Proveedores,
                            {columna("Nombre", "Nombre"), columna("Nombre", "RazonSocial"), columna("CUIT", "Cuit", "00000000000"),
                             fijo("Banco Nación", "BancoNombre")},
                            h, QString());
    completa(proveedores);
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT Nombre, RazonSocial, Cuit, BancoNombre FROM Proveedores ORDER BY idProveedor")),
              (QStringList{"Ana Pérez|Ana Pérez|20123456786|Banco Nación", "Beto|Beto|NULL|Banco Nación",
                           "Carla|Carla|NULL|Banco Nación", "Dario|Dario|NULL|Banco Nación", "Eva|Eva|NULL|Banco Nación",
                           "Fede|Fede|30-11111111-8|Banco Nación", "Gabi|Gabi|NULL|Banco Nación"}));
    EXPECT_EQ(lineas(proveedores), QStringList{});
}

TEST_P(Importa, UnMapaQueNoSirveSeDiceAntesDeEmpezar) {
    const HojaLeida h = hoja({"Codigo", "Nombre"}, {{2, {T("X1"), T("Uno")}}});
    struct Caso {
        QList<Mapeo> mapa;
        const char* aviso;
    };
    const Caso casos[] = {
        {{}, "La migración no tiene campos: agréguelos en el Paso 2."},
        {{columna("Codigo", "Codigo"), columna("Precio", "Descripcion")}, "La hoja no tiene la columna \"Precio\"."},
        {{columna("Codigo", "Codigo"), columna("Nombre", "Nombre")}, "La tabla Articulos no tiene el campo \"Nombre\"."},
        {{columna("Nombre", "Descripcion")}, "Falta el campo Codigo en la migración: es obligatorio en Articulos."},
        {{columna("Codigo", "Codigo"), columna("Nombre", "Descripcion"), {kMapeoContador, "uno", "CgoProveedor", "1", ""}},
         "Error, ingrese campos numéricos!"},
    };
    for (const Caso& c : casos)
        EXPECT_EQ(AvisoDe([&] { Importacion(almacen(), TablaDestino::Articulos, c.mapa, h, QString()); }), QString::fromUtf8(c.aviso));
    EXPECT_EQ(AvisoDe([] { MapeoContador(QStringLiteral("1"), QStringLiteral("x"), QStringLiteral("Codigo"), {}); }),
              QStringLiteral("Error, ingrese campos numéricos!"));
    // Un incremento de 0 es un número: da siempre el mismo valor.
    EXPECT_EQ(MapeoContador(QStringLiteral("7"), QStringLiteral("0"), QStringLiteral("Codigo"), {}),
              (Mapeo{kMapeoContador, "7", "Codigo", "0", ""}));
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT count(*) FROM Articulos")), QStringList{"1"});
}

TEST_P(Importa, UnaFilaQueElAlmacenRechazaNoSeLlevaAlRestoDelLote) {
    // Un disparador rechaza al proveedor llamado "Rechazado".
    if (almacen().esPostgreSQL()) {
        almacen().ejecuta(QStringLiteral(
            "CREATE FUNCTION rechaza() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN "
            "IF NEW.Nombre = 'Rechazado' THEN RAISE EXCEPTION 'proveedor rechazado'; END IF; RETURN NEW; END $$"));
        almacen().ejecuta(QStringLiteral(
            "CREATE TRIGGER Proveedores_rechaza BEFORE INSERT ON Proveedores FOR EACH ROW EXECUTE FUNCTION rechaza()"));
    } else {
        almacen().ejecuta(QStringLiteral("CREATE TRIGGER Proveedores_rechaza BEFORE INSERT ON Proveedores WHEN NEW.Nombre = 'Rechazado' "
                                         "BEGIN SELECT RAISE(ABORT, 'proveedor rechazado'); END"));
    }
    const HojaLeida h = hoja({"Nombre"}, {{2, {T("Uno")}}, {3, {T("Rechazado")}}, {4, {T("Tres")}}, {5, {T("Cuatro")}}});
    Importacion imp(almacen(), TablaDestino::Proveedores, {columna("Nombre", "Nombre")}, h, QString(), 3);
    completa(imp);
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT Nombre FROM Proveedores ORDER BY idProveedor")),
              (QStringList{"Uno", "Tres", "Cuatro"}));
    EXPECT_EQ(imp.importadas(), 3);
    ASSERT_EQ(imp.errores().size(), 1);
    EXPECT_EQ(imp.errores()[0].fila, 3);
    EXPECT_TRUE(imp.errores()[0].texto.startsWith(QStringLiteral("el almacén no la aceptó: "))) << imp.errores()[0].texto.toStdString();
    EXPECT_TRUE(imp.errores()[0].texto.contains(QStringLiteral("proveedor rechazado")));
}

ORV_AMBOS_MOTORES(Importa);

} // namespace
} // namespace orv
