// La regla del código, las cuentas de precio de la ficha, el precio con impuesto y la grabación
// de un artículo, en los dos motores.

#include "apoyo/base_prueba.h"
#include "articles/articulos.h"
#include "sales/borrador.h"
#include "apoyo/filas.h"
#include "store/actualizacion.h"

#include <QThread>
#include <atomic>
#include <optional>
#include <thread>

namespace orv::prueba {
namespace {

TEST(CodigoPropuesto, RubroYCantidadConSusMascaras) {
    struct Caso {
        qint64 rubro, cuantos;
        int cifrasRubro, cifrasArticulo;
        const char* codigo;
    };
    const Caso casos[] = {
        {7, 12, 2, 4, "070013"},   // los anchos de siempre
        {7, 0, 2, 4, "070001"},    // rubro sin artículos
        {7, 12, 2, 0, "0713"},     // máscara de artículo vacía: el número tal cual
        {7, 12, 0, 4, "70013"},    // máscara de rubro vacía
        {7, 12, -3, 4, "70013"},   // un ancho negativo es una máscara vacía
        {123, 12, 2, 4, "1230013"}, // más ancho que la máscara: sale entero
        {7, 9999, 2, 4, "0710000"},
    };
    for (const Caso& c : casos)
        EXPECT_EQ(CodigoPropuesto(c.rubro, c.cuantos, c.cifrasRubro, c.cifrasArticulo), QString::fromLatin1(c.codigo))
            << c.rubro << " " << c.cuantos << " " << c.cifrasRubro << " " << c.cifrasArticulo;
    // La máscara sale de 48 ceros: un ancho mayor no agrega más.
    EXPECT_EQ(CodigoPropuesto(7, 12, 60, 0), QString(47, u'0') + QStringLiteral("713"));
}

TEST(PreciosDeLaFicha, VentaYMargenEnLosDosSentidos) {
    struct Caso {
        const char* costo;
        const char* otro; // margen para la venta; venta para el margen
        std::optional<const char*> venta;
        std::optional<const char*> margen;
    };
    const Caso casos[] = {
        {"100", "30", "130.00", "-70.0"},
        {"100", "150", "250.00", "50.0"},
        {"1,234.50", "10", "1,357.95", "-99.2"},
        {"1,000.00", "1,333.33", "14,333.30", "33.3"},
        {"0", "30", "0.00", std::nullopt},    // costo 0: el margen queda como estaba
        {"", "150", std::nullopt, std::nullopt}, // costo vacío
        {"abc", "30", std::nullopt, std::nullopt},
        {"100", "", std::nullopt, std::nullopt},
        {"100", "1,5", std::nullopt, std::nullopt}, // coma ambigua: no se adivina
        {"100", "-100", "0.00", "-200.0"},
        {"99999999999999", "1e9", std::nullopt, "-100.0"}, // no cabe: la venta queda como estaba
    };
    for (const Caso& c : casos) {
        const auto venta = VentaDesdeMargen(QString::fromUtf8(c.costo), QString::fromUtf8(c.otro));
        const auto margen = MargenDesdeVenta(QString::fromUtf8(c.costo), QString::fromUtf8(c.otro));
        EXPECT_EQ(venta, c.venta ? std::optional<QString>(QString::fromUtf8(*c.venta)) : std::nullopt)
            << c.costo << " / " << c.otro;
        EXPECT_EQ(margen, c.margen ? std::optional<QString>(QString::fromUtf8(*c.margen)) : std::nullopt)
            << c.costo << " / " << c.otro;
    }
}

class Articulos : public PorMotorAlDia {
protected:
    DatosArticulo ficha(const QString& codigo, const QString& descripcion) {
        DatosArticulo d;
        d.codigo = codigo;
        d.descripcion = descripcion;
        return d;
    }
    QStringList fila(qint64 id) {
        return Filas(almacen(),
                     QStringLiteral("SELECT Codigo, Descripcion, idRubro, IdProveedor, StockActual, StockMinimo, "
                                    "PrecioCosto, PrecioVenta, PrecioFinal, UtilidadPorcentaje, CgoProveedor, "
                                    "ImprimeCodigoBarra, esMateriaPrima, Foto FROM Articulos WHERE idArticulo = ?"),
                     {id});
    }
};

TEST_P(Articulos, PropuestaCuentaLosDelRubroYRepiteTrasUnBorrado) {
    for (int i = 1; i <= 13; ++i)
        almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, idRubro) VALUES (?, 'x', 7)"),
                          {CodigoPropuesto(7, i - 1, 2, 4)});
    almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, idRubro) VALUES ('9', 'otro', 8)"));
    EXPECT_EQ(ProponeCodigo(almacen(), 7, 2, 4), QStringLiteral("070014"));
    EXPECT_EQ(ProponeCodigo(almacen(), 9, 2, 4), QStringLiteral("090001"));
    almacen().ejecuta(QStringLiteral("DELETE FROM Articulos WHERE Codigo = '070005'"));
    EXPECT_EQ(ProponeCodigo(almacen(), 7, 2, 4), QStringLiteral("070013")); // repite el último
}

// La ficha entera, con una descripción de diez mil letras con apóstrofos, tal cual ida y vuelta.
TEST_P(Articulos, GrabaLaFichaEnteraYLaVuelveALeer) {
    almacen().ejecuta(QStringLiteral("INSERT INTO Rubros (Rubro) VALUES ('Almacén')"));
    QString larga = QStringLiteral("Yerba 'Don Tito' de l'Abbaye");
    for (int i = 0; larga.size() < 10000; ++i) larga += QStringLiteral(" ñandú %1").arg(i);
    larga.truncate(10000);
    DatosArticulo d = ficha(QStringLiteral(" 010001 "), larga);
    d.idRubro = 1;
    d.idProveedor = 3;
    d.stockActual = QStringLiteral("12.5");
    d.stockMinimo = QStringLiteral("4");
    d.precioCosto = QStringLiteral("1,000.00");
    d.precioVenta = QStringLiteral("1,300.00");
    d.utilidad = QStringLiteral("30.0");
    d.cgoProveedor = QStringLiteral("YM-1");
    d.imprimeCodigoBarra = true;
    d.foto = QStringLiteral("/datos/IMAGES/yerba.png");
    const qint64 id = GrabaArticulo(almacen(), 0, d, QStringLiteral("21"));
    EXPECT_EQ(fila(id), QStringList{QStringLiteral("010001|%1|1|3|12.5|4|1000|1300|1573|30|YM-1|1|0|/datos/IMAGES/yerba.png").arg(larga)});

    DatosArticulo leido = *LeeArticulo(almacen(), id);
    EXPECT_EQ(QStringList({leido.codigo, leido.descripcion, leido.stockActual, leido.precioCosto, leido.precioVenta, leido.utilidad}),
              QStringList({QStringLiteral("010001"), larga, QStringLiteral("12.5"), QStringLiteral("1,000.00"),
                           QStringLiteral("1,300.00"), QStringLiteral("30")}));
    leido.precioVenta = QStringLiteral("1,500.00");
    leido.idProveedor = QVariant();
    leido.esMateriaPrima = true;
    EXPECT_EQ(GrabaArticulo(almacen(), id, leido, QStringLiteral("abc")), id);
    EXPECT_EQ(fila(id), QStringList{QStringLiteral("010001|%1|1|NULL|12.5|4|1000|1500|1500|30|YM-1|1|1|/datos/IMAGES/yerba.png").arg(larga)});
}

TEST_P(Articulos, PrecioConImpuestoAlGrabarYAlAbrirLaBusqueda) {
    struct Caso {
        const char* coef;
        const char* final;
    };
    for (const Caso& c : {Caso{"21", "121"}, Caso{"10.5", "110.5"}, Caso{"abc", "100"}, Caso{"0", "100"},
                          Caso{"", "100"}, Caso{"21,5", "100"}}) {
        almacen().ejecuta(QStringLiteral("DELETE FROM Articulos"));
        DatosArticulo d = ficha(QStringLiteral("1"), QStringLiteral("Azúcar"));
        d.precioVenta = QStringLiteral("100");
        const qint64 id = GrabaArticulo(almacen(), 0, d, QString::fromLatin1(c.coef));
        almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, PrecioVenta, PrecioFinal) VALUES ('2', 100, 7)"));
        EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT PrecioFinal FROM Articulos WHERE idArticulo = ?"), {id}),
                  QStringList{QString::fromLatin1(c.final)})
            << c.coef;
        RefrescaPrecioFinal(almacen(), QString::fromLatin1(c.coef));
        EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT PrecioFinal FROM Articulos ORDER BY Codigo")),
                  QStringList({QString::fromLatin1(c.final), QString::fromLatin1(c.final)}))
            << c.coef;
    }
}

TEST_P(Articulos, UnCodigoEsDeUnSoloArticulo) {
    const qint64 yerba = GrabaArticulo(almacen(), 0, ficha(QStringLiteral("779001"), QStringLiteral("Yerba")), {});
    const qint64 azucar = GrabaArticulo(almacen(), 0, ficha(QStringLiteral("779002"), QStringLiteral("Azúcar")), {});
    const QStringList antes = Filas(almacen(), QStringLiteral("SELECT * FROM Articulos ORDER BY idArticulo"));
    const QString aviso = QStringLiteral("Error, el código 779001 ya es del artículo \"Yerba\"!");
    EXPECT_EQ(AvisoDe([&] { GrabaArticulo(almacen(), 0, ficha(QStringLiteral("779001 "), QStringLiteral("Otra")), {}); }),
              aviso);
    EXPECT_EQ(AvisoDe([&] { GrabaArticulo(almacen(), azucar, ficha(QStringLiteral("779001"), QStringLiteral("Azúcar")), {}); }),
              aviso);
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT * FROM Articulos ORDER BY idArticulo")), antes);
    // El mismo artículo conserva su código.
    EXPECT_EQ(AvisoDe([&] { GrabaArticulo(almacen(), yerba, ficha(QStringLiteral("779001"), QStringLiteral("Yerba x")), {}); }),
              QString());
}

// Dos puestos graban a la vez el mismo código: el segundo espera al primero y recibe el aviso.
TEST_P(Articulos, DosPuestosNoGrabanElMismoCodigoALaVez) {
    Transaccion primero(almacen());
    GrabaArticulo(almacen(), 0, ficha(QStringLiteral("779100"), QStringLiteral("Yerba")), {});
    std::atomic<bool> termino{false};
    QString aviso;
    std::thread segundo([&] {
        const auto otro = base().otraConexion();
        aviso = AvisoDe([&] { GrabaArticulo(*otro, 0, ficha(QStringLiteral("779100"), QStringLiteral("Otra")), {}); });
        termino = true;
    });
    QThread::msleep(400);
    EXPECT_FALSE(termino);
    primero.confirmar();
    segundo.join();
    EXPECT_EQ(aviso, QStringLiteral("Error, el código 779100 ya es del artículo \"Yerba\"!"));
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT Descripcion FROM Articulos WHERE Codigo = '779100'")),
              QStringList{QStringLiteral("Yerba")});
}

TEST_P(Articulos, LoQueLaFichaRechazaNoSeGraba) {
    struct Caso {
        DatosArticulo d;
        const char* aviso;
    };
    const auto con = [this](auto cambia) {
        DatosArticulo d = ficha(QStringLiteral("1"), QStringLiteral("Yerba"));
        cambia(d);
        return d;
    };
    const Caso casos[] = {
        {con([](DatosArticulo& d) { d.descripcion = QStringLiteral("  "); }), "Error, coloque una descripción!"},
        {con([](DatosArticulo& d) { d.codigo = QString(); }), "Error, coloque un código!"},
        {con([](DatosArticulo& d) { d.precioCosto = QStringLiteral("2,5"); }),
         "Precio de Costo: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        {con([](DatosArticulo& d) { d.stockActual = QStringLiteral("abc"); }),
         "Existencia: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        {con([](DatosArticulo& d) { d.codigo = QString(51, u'1'); }), "Código: admite hasta 50 caracteres (tiene 51)."},
    };
    for (const Caso& c : casos)
        EXPECT_EQ(AvisoDe([&] { GrabaArticulo(almacen(), 0, c.d, {}); }), QString::fromUtf8(c.aviso));
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT count(*) FROM Articulos")).toInt(), 0);
}

TEST_P(Articulos, LaExistenciaSoloSeEscribeSiElUsuarioLaCambio) {
    DatosArticulo d = ficha(QStringLiteral("1"), QStringLiteral("Yerba"));
    d.stockActual = QStringLiteral("10");
    const qint64 id = GrabaArticulo(almacen(), 0, d, {});
    DatosArticulo abierta = *LeeArticulo(almacen(), id);
    // Mientras la ficha está abierta, otro puesto vende 3.
    almacen().ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = StockActual - 3 WHERE idArticulo = ?"), {id});
    abierta.descripcion = QStringLiteral("Yerba suave");
    GrabaArticulo(almacen(), id, abierta, {});
    EXPECT_EQ(fila(id).value(0).section(u'|', 1, 4), QStringLiteral("Yerba suave|NULL|NULL|7"));
    // Cambiar la existencia leída cuando ya no es la del almacén se rechaza, sin grabar nada.
    abierta.stockActual = QStringLiteral("20");
    abierta.descripcion = QStringLiteral("Yerba dulce");
    EXPECT_EQ(AvisoDe([&] { GrabaArticulo(almacen(), id, abierta, {}); }),
              QStringLiteral("La existencia cambió mientras editaba el artículo (ahora es 7). "
                             "Cierre la ficha y vuelva a abrirla para corregirla."));
    EXPECT_EQ(fila(id).value(0).section(u'|', 1, 4), QStringLiteral("Yerba suave|NULL|NULL|7"));
    abierta = *LeeArticulo(almacen(), id);
    abierta.stockActual = QStringLiteral("20");
    GrabaArticulo(almacen(), id, abierta, {});
    EXPECT_EQ(fila(id).value(0).section(u'|', 4, 4), QStringLiteral("20"));
    EXPECT_EQ(AvisoDe([&] { GrabaArticulo(almacen(), id + 1, abierta, {}); }), QStringLiteral("No encontrado!"));
}

ORV_AMBOS_MOTORES(Articulos);

} // namespace
} // namespace orv::prueba
