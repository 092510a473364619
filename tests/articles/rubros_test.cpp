// Rubros: los rechazos al aceptar, en su orden; la modificación; y el borrado, que no deja
// artículos sin rubro. En los dos motores.

#include "apoyo/base_prueba.h"
#include "articles/rubros.h"
#include "apoyo/filas.h"
#include "store/actualizacion.h"

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

class Rubros : public prueba::PorMotorAlDia {
protected:
    QStringList rubros() {
        return Filas(almacen(), QStringLiteral("SELECT Rubro, PuntosVIP FROM Rubros ORDER BY idRubro"));
    }
};

const QString kMalEscrito = QStringLiteral(": el número está mal escrito. Use el punto para los decimales (1234.50).");

TEST_P(Rubros, AltaConLosRechazosEnSuOrden) {
    struct Caso {
        QString nombre, puntos, aviso;
    };
    const QString largo(kLargoRubro + 1, QLatin1Char('x'));
    const Caso casos[] = {
        // El puntaje se mira antes que el nombre: vacío no es un número.
        {QString(), QString(), kErrorPuntajeRubro},
        {QStringLiteral("Bebidas"), QString(), kErrorPuntajeRubro},
        {QStringLiteral("Bebidas"), QStringLiteral("abc"), kErrorPuntajeRubro},
        // "1,5" pasa la prueba de número pero es ambiguo: no se toma por 1 ni por 15.
        {QStringLiteral("Bebidas"), QStringLiteral("1,5"), kCampoPuntajeRubro + kMalEscrito},
        {QString(), QStringLiteral("0"), QStringLiteral("Error, coloque un nombre!")},
        {largo, QStringLiteral("0"), QStringLiteral("Nombre: admite hasta 100 caracteres (tiene 101).")},
        // Aceptados: un nombre de espacios, un apóstrofo, puntaje 0, con decimales y miles.
        {QStringLiteral("   "), QStringLiteral("0"), QString()},
        {QStringLiteral("Fiambres D'Angelo"), QStringLiteral("2.5"), QString()},
        {QStringLiteral("Lácteos"), QStringLiteral(" 1,000 "), QString()},
    };
    for (const Caso& c : casos)
        EXPECT_EQ(AvisoDe([&] { GuardaRubro(almacen(), std::nullopt, {c.nombre, c.puntos}); }), c.aviso)
            << c.nombre.toStdString() << " / " << c.puntos.toStdString();
    EXPECT_EQ(rubros(), (QStringList{QStringLiteral("   |0"), QStringLiteral("Fiambres D'Angelo|2.5"),
                                     QStringLiteral("Lácteos|1000")}));
}

TEST_P(Rubros, ModificarCambiaNombreYPuntosSinTocarLosCodigos) {
    const qint64 id = GuardaRubro(almacen(), std::nullopt, {QStringLiteral("Almacen"), QStringLiteral("1")});
    almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (idRubro, Codigo, Descripcion) VALUES (?, '010001', 'Yerba')"), {id});
    EXPECT_EQ(GuardaRubro(almacen(), id, {QStringLiteral("Almacén"), QStringLiteral("3")}), id);
    // Un rechazo no cambia nada; un rubro que ya no está se dice.
    EXPECT_EQ(AvisoDe([&] { GuardaRubro(almacen(), id, {QString(), QStringLiteral("5")}); }),
              QStringLiteral("Error, coloque un nombre!"));
    EXPECT_EQ(AvisoDe([&] { GuardaRubro(almacen(), id + 100, {QStringLiteral("Otro"), QStringLiteral("5")}); }),
              QStringLiteral("No encontrado!"));
    const DatosRubro leido = LeeRubro(almacen(), id).value_or(DatosRubro{});
    EXPECT_EQ(rubros() + QStringList{leido.nombre + u'|' + leido.puntos} + Filas(almacen(), QStringLiteral("SELECT Codigo, idRubro FROM Articulos")),
              (QStringList{QStringLiteral("Almacén|3"), QStringLiteral("Almacén|3"), QStringLiteral("010001|%1").arg(id)}));
    EXPECT_FALSE(LeeRubro(almacen(), id + 100).has_value());
}

TEST_P(Rubros, SoloSeBorraUnRubroSinArticulos) {
    const qint64 conArticulos = GuardaRubro(almacen(), std::nullopt, {QStringLiteral("Limpieza"), QStringLiteral("0")});
    const qint64 vacio = GuardaRubro(almacen(), std::nullopt, {QStringLiteral("Perfumeria"), QStringLiteral("0")});
    almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (idRubro, Codigo, Descripcion) VALUES (?, '010001', 'Lavandina'), "
                                     "(?, '010002', 'Detergente')"),
                      {conArticulos, conArticulos});
    EXPECT_EQ(AvisoDe([&] { BorraRubro(almacen(), conArticulos); }),
              QStringLiteral("Error, no puede borrar éste rubro porque posee artículos relacionados.!"));
    EXPECT_EQ(AvisoDe([&] { BorraRubro(almacen(), vacio); }), QString());
    EXPECT_EQ(rubros(), QStringList{QStringLiteral("Limpieza|0")});
    // Sin sus artículos, también se borra.
    almacen().ejecuta(QStringLiteral("DELETE FROM Articulos"));
    BorraRubro(almacen(), conArticulos);
    EXPECT_TRUE(rubros().isEmpty());
}

ORV_AMBOS_MOTORES(Rubros);

} // namespace
} // namespace orv
