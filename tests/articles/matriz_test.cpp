// La matriz de artículos: características y valores, el texto y el código de cada fila del
// generador, y la grabación de las variantes como artículos en una transacción, en los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "articles/matriz.h"

#include <functional>

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

TEST(Matriz, TextoYCodigoDeCadaFila) {
    const QList<Eleccion> rojoXL = {{"Color", "Rojo"}, {"Talle", "XL"}};
    const struct {
        OpcionesMatriz opciones;
        QList<Eleccion> elecciones;
        const char* texto;
    } textos[] = {
        {{"-", false, true}, rojoXL, "Col:Rojo - Tal:XL"},
        {{"-", true, true}, rojoXL, "Rojo - XL"},
        {{"---", false, true}, rojoXL, "Col:Rojo --- Tal:XL"},
        {{"", false, true}, rojoXL, "Col:Rojo  Tal:XL"},
        {{"/", false, true}, {{"Talle", "XL"}}, "Tal:XL"}, // sólo lo elegido entra en la fila
    };
    for (const auto& t : textos) EXPECT_EQ(TextoCaracteristicas(t.elecciones, t.opciones), QString::fromUtf8(t.texto));

    const std::pair<const char*, const char*> codigos[] = {
        {"070013", "070014"}, {"0099", "0100"}, {"99", "100"}, {"REM-09", "REM-10"}, {"REM", "REM1"}, {"A9Z", "A9Z1"}, {"", "1"}};
    for (const auto& [antes, despues] : codigos) EXPECT_EQ(SiguienteCodigo(QString::fromLatin1(antes)), QString::fromLatin1(despues));

    // Sin la característica en la descripción, todas las filas llevan la descripción base.
    const VarianteMatriz v = Variante("0099", "Remera", "3", rojoXL, {"-", false, false});
    EXPECT_EQ(QStringList({v.codigo, v.descripcion, v.caracteristicas, v.stock}), QStringList({"0099", "Remera", "Col:Rojo - Tal:XL", "3"}));
    EXPECT_EQ(AvisoDe([] { Variante("1", "Remera", "0", {}, {}); }), "Elija un valor de alguna característica.");
    EXPECT_EQ(AvisoDe([] { Combinaciones("1", "Remera", "0", {{}, {}}, {}); }), "Elija los valores de las características a combinar.");
}

class MatrizArticulos : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        AgregaCaracteristica(almacen(), "Color", {"Rojo", "", " Azul ", "Negro"});
        AgregaCaracteristica(almacen(), "Talle", {"S", "M", "L", "XL"});
        base_.descripcion = "Remera";
        base_.idRubro = 7;
        base_.precioCosto = "1,000.00";
        base_.precioVenta = "1,500.00";
        base_.utilidad = "50";
        base_.stockMinimo = "2";
        base_.cgoProveedor = "RM-1";
    }
    // Todos los valores de cada característica, como si se eligieran todos en sus listas.
    QList<QList<Eleccion>> todos() {
        QList<QList<Eleccion>> r;
        for (const QString& c : Caracteristicas(almacen())) {
            r << QList<Eleccion>();
            for (const ValorMatriz& v : ValoresDe(almacen(), c)) r.back() << Eleccion{c, v.valor};
        }
        return r;
    }
    QStringList articulos() {
        return Filas(almacen(), "SELECT Codigo, Descripcion, DescripcionMatriz, StockActual, StockMinimo, idRubro, PrecioVenta, "
                                "CgoProveedor FROM Articulos ORDER BY idArticulo");
    }
    DatosArticulo base_;
};

TEST_P(MatrizArticulos, TresColoresPorCuatroTallesSonDoceArticulos) {
    EXPECT_EQ(Caracteristicas(almacen()), QStringList({"Color", "Talle"}));
    const QList<VarianteMatriz> filas = Combinaciones("070013", "Remera", "5", todos(), {"-", false, true});
    const QList<qint64> ids = GrabaArticuloConMatriz(almacen(), base_, filas, "21");
    EXPECT_EQ(ids.size(), 12);
    EXPECT_EQ(articulos(), (QStringList{
                               "070013|Remera Col:Rojo - Tal:S|Col:Rojo - Tal:S|5|2|7|1500|RM-1",
                               "070014|Remera Col:Rojo - Tal:M|Col:Rojo - Tal:M|5|2|7|1500|RM-1",
                               "070015|Remera Col:Rojo - Tal:L|Col:Rojo - Tal:L|5|2|7|1500|RM-1",
                               "070016|Remera Col:Rojo - Tal:XL|Col:Rojo - Tal:XL|5|2|7|1500|RM-1",
                               "070017|Remera Col:Azul - Tal:S|Col:Azul - Tal:S|5|2|7|1500|RM-1",
                               "070018|Remera Col:Azul - Tal:M|Col:Azul - Tal:M|5|2|7|1500|RM-1",
                               "070019|Remera Col:Azul - Tal:L|Col:Azul - Tal:L|5|2|7|1500|RM-1",
                               "070020|Remera Col:Azul - Tal:XL|Col:Azul - Tal:XL|5|2|7|1500|RM-1",
                               "070021|Remera Col:Negro - Tal:S|Col:Negro - Tal:S|5|2|7|1500|RM-1",
                               "070022|Remera Col:Negro - Tal:M|Col:Negro - Tal:M|5|2|7|1500|RM-1",
                               "070023|Remera Col:Negro - Tal:L|Col:Negro - Tal:L|5|2|7|1500|RM-1",
                               "070024|Remera Col:Negro - Tal:XL|Col:Negro - Tal:XL|5|2|7|1500|RM-1",
                           }));
}

// Una fila que no se puede grabar (su código ya es de otro artículo, sus características no
// caben) deshace todas: no queda ningún artículo de la matriz.
TEST_P(MatrizArticulos, UnaFilaQueNoSeGrabaDeshaceTodas) {
    almacen().ejecuta("INSERT INTO Articulos (Codigo, Descripcion) VALUES ('070015', 'Otro')");
    const QStringList antes = articulos();
    QList<VarianteMatriz> filas = Combinaciones("070013", "Remera", "5", todos(), {"-", true, false});
    EXPECT_EQ(AvisoDe([&] { GrabaArticuloConMatriz(almacen(), base_, filas, "21"); }),
              "Fila 3 de la matriz (070015): Error, el código 070015 ya es del artículo \"Otro\"!");
    filas = {Variante("X1", "Remera", "1", {{"Color", QString(48, u'a')}}, {})};
    EXPECT_EQ(AvisoDe([&] { GrabaArticuloConMatriz(almacen(), base_, filas, "21"); }),
              "Fila 1 de la matriz (X1): Características: admite hasta 50 caracteres (tiene 52).");
    EXPECT_EQ(articulos(), antes);
}

TEST_P(MatrizArticulos, CaracteristicasYValores) {
    const std::pair<std::function<void()>, QString> rechazos[] = {
        {[this] { AgregaCaracteristica(almacen(), "Color", {"Verde"}); },
         "La característica \"Color\" ya existe: agregue sus valores en \"Elementos\"."},
        {[this] { AgregaCaracteristica(almacen(), "Medida", {"", " "}); }, "Escriba al menos un valor de la característica."},
        {[this] { AgregaCaracteristica(almacen(), " ", {"1"}); }, "Escriba el nombre de la característica."},
        {[this] { AgregaCaracteristica(almacen(), "Medida", {"10", "10"}); }, "El valor \"10\" está repetido."},
        {[this] { AgregaValor(almacen(), "Talle", "XL"); }, "\"XL\" ya es un valor de \"Talle\"."},
    };
    for (const auto& [accion, aviso] : rechazos) EXPECT_EQ(AvisoDe(accion), aviso);

    AgregaValor(almacen(), "Talle", "XXL");
    const QList<ValorMatriz> colores = ValoresDe(almacen(), "Color");
    for (const ValorMatriz& v : colores) QuitaValor(almacen(), v.idMatriz); // el último se lleva la característica
    BorraCaracteristica(almacen(), "Nada");
    EXPECT_EQ(Filas(almacen(), "SELECT Tipo, Valor FROM Matriz ORDER BY idMatriz"),
              (QStringList{"Talle|S", "Talle|M", "Talle|L", "Talle|XL", "Talle|XXL"}));
    BorraCaracteristica(almacen(), "Talle");
    EXPECT_TRUE(Caracteristicas(almacen()).isEmpty());
}

ORV_AMBOS_MOTORES(MatrizArticulos);

} // namespace
} // namespace orv
