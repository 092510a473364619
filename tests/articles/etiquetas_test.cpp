// Etiquetas de código de barra: las entradas de un día (una por unidad comprada), la definición de
// la hoja que se lee y se guarda, el lugar en milímetros de cada etiqueta desde un comienzo dado y
// los códigos que se pueden dibujar.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "articles/etiquetas.h"
#include "store/entrada.h"

namespace orv {
namespace {

using prueba::Filas;
using prueba::AvisoDe;

const QDate kDia(2026, 11, 25);

class EtiquetasDelAlmacen : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        almacen().ejecuta(QStringLiteral(
            "INSERT INTO Articulos (idArticulo, Codigo, Descripcion, ImprimeCodigoBarra) VALUES "
            "(1, 'A-01', 'Marcado', 1), (2, 'B-02', 'Sin marca', 0), (3, 'C 03', 'Marcado suelto', 1)"));
        // Tipo 1 es la compra; 2 la venta.
        almacen().ejecuta(QStringLiteral(
            "INSERT INTO MovimientoStock (idArticulo, Fecha, idTipoMovimiento, Ingreso, Egreso) VALUES "
            "(1, ?, 1, 3, 0), (2, ?, 1, 2, 0), (3, ?, 1, 2.5, 0), (1, ?, 2, 4, 0), (1, ?, 1, 0, 1), "
            "(3, ?, 1, 5, 0), (1, ?, 1, 1, 0)"),
            {kDia, kDia, kDia, kDia, kDia, kDia.addDays(-1), kDia});
    }
    QStringList hojas() {
        return Filas(almacen(), QStringLiteral("SELECT Nombre, No_Ancho, No_Largo, Margen_Izq, Margen_Sup, Dist_Colum, Dist_Filas, "
                                               "Etiq_Ancho, Etiq_Largo, TamanoFuente FROM Etiquetas ORDER BY idEtiqueta"));
    }
};

// Tres unidades son tres entradas, 2.5 son dos; ni el artículo sin marca, ni la venta, ni la
// salida, ni la compra de otro día. En el orden de carga.
TEST_P(EtiquetasDelAlmacen, UnaEntradaPorUnidadCompradaEseDia) {
    EXPECT_EQ(EtiquetasDelDia(almacen(), kDia), (QStringList{"A-01", "A-01", "A-01", "C 03", "C 03", "A-01"}));
    EXPECT_EQ(EtiquetasDelDia(almacen(), kDia.addDays(-1)), (QStringList{"C 03", "C 03", "C 03", "C 03", "C 03"}));
    EXPECT_EQ(EtiquetasDelDia(almacen(), kDia.addDays(1)), QStringList{});
}

TEST_P(EtiquetasDelAlmacen, UnaCantidadDesmesuradaSeDiceEnVezDeColgarse) {
    almacen().ejecuta(QStringLiteral("UPDATE MovimientoStock SET Ingreso = 1e9 WHERE Ingreso = 5"));
    EXPECT_EQ(AvisoDe([&] { EtiquetasDelDia(almacen(), kDia.addDays(-1)); }),
              QStringLiteral("Las compras del 24/11/2026 suman más de 20000 etiquetas: revise las cantidades ingresadas."));
}

// Guardar con un nombre que ya existe reemplaza esa fila; otro nombre agrega una.
TEST_P(EtiquetasDelAlmacen, GuardarReemplazaLaDefinicionDelMismoNombre) {
    GuardaHojaEtiquetas(almacen(), {QStringLiteral("A4 3x7 'oficina'"), 3, 7, 7.2, 15.15, 2.5, 0, 63.5, 38.1, 24});
    GuardaHojaEtiquetas(almacen(), {QStringLiteral("Rollo"), 1, 1, 0, 0, 0, 0, 50, 25, 18});
    GuardaHojaEtiquetas(almacen(), {QStringLiteral("A4 3x7 'oficina'"), 3, 8, 7, 13, 2.5, 0, 63.5, 33.9, 20});
    EXPECT_EQ(hojas(), (QStringList{"A4 3x7 'oficina'|3|8|7|13|2.5|0|63.5|33.9|20", "Rollo|1|1|0|0|0|0|50|25|18"}));
    EXPECT_EQ(NombresHojasEtiquetas(almacen()), (QStringList{"A4 3x7 'oficina'", "Rollo"}));
    const auto leida = LeeHojaEtiquetas(almacen(), QStringLiteral("Rollo"));
    ASSERT_TRUE(leida);
    EXPECT_EQ(leida->ancho, 50);
    EXPECT_EQ(leida->tamanoFuente, 18);
    EXPECT_FALSE(LeeHojaEtiquetas(almacen(), QStringLiteral("rollo")));
}

TEST_P(EtiquetasDelAlmacen, ImprimirSinHojaSinItemsOConCodigosQueNoSeDibujan) {
    GuardaHojaEtiquetas(almacen(), {QStringLiteral("Chica"), 2, 3, 5, 10, 2, 3, 60, 30, 20});
    const auto aviso = [&](const char* hoja, QStringList codigos, const char* comienzo) {
        return AvisoDe([&] {
            PreparaImpresionEtiquetas(almacen(), QString::fromUtf8(hoja), codigos, QString::fromUtf8(comienzo), false);
        });
    };
    EXPECT_EQ(aviso("Grande", {"A"}, "1"), kSinHojaEtiquetas);
    EXPECT_EQ(aviso("Chica", {}, "1"), QStringLiteral("No hay ítems para imprimir: pase los que quiera a \"Items a Imprimir código\"."));
    EXPECT_EQ(aviso("Chica", {"A"}, "7"),
              QStringLiteral("Comenzar a imprimir en la etiqueta nº: ") + kImporteFueraDeRango);
    EXPECT_EQ(aviso("Chica", {"OK", "Ñandú", "a_b", "Ñandú"}, ""),
              QStringLiteral("Estos códigos tienen signos que un código de barra no admite: Ñandú, a_b. Páselos a \"Items "
                             "disponibles\" para imprimir los demás."));
    const TrabajoEtiquetas t = PreparaImpresionEtiquetas(almacen(), QStringLiteral("Chica"), {"A", "B"}, QStringLiteral("6"), true);
    EXPECT_EQ(t.hoja.nombre, QStringLiteral("Chica"));
    EXPECT_TRUE(t.ean13);
    ASSERT_EQ(t.lugares.size(), 2);
    EXPECT_EQ(t.lugares[1].pagina, 1);
}

ORV_AMBOS_MOTORES(EtiquetasDelAlmacen);

QString lugar(const LugarEtiqueta& l) {
    return QStringLiteral("%1|%2|%3|%4").arg(l.pagina).arg(l.origen.x()).arg(l.origen.y()).arg(l.codigo);
}

// Hoja de 2 × 3: margen izquierdo 5, superior 10, 2 mm entre columnas, 3 entre filas, etiquetas
// de 60 × 30. Las columnas empiezan en 5 y 67; las filas en 10, 43 y 76.
TEST(LugarDeEtiquetas, DesdeElComienzoYEnHojasNuevasDesdeArriba) {
    const HojaEtiquetas h{QStringLiteral("Chica"), 2, 3, 5, 10, 2, 3, 60, 30, 20};
    const QStringList seis = {"A", "B", "C", "D", "E", "F"};
    const struct {
        int comienzo;
        QStringList codigos;
        QStringList esperado;
    } casos[] = {
        {1, {"A", "B", "C"}, {"0|5|10|A", "0|67|10|B", "0|5|43|C"}},
        // Las tres primeras quedan en blanco; la cuarta lleva la primera entrada.
        {4, {"A"}, {"0|67|43|A"}},
        // Seis entradas desde la cuarta: tres en la primera hoja y tres arriba en la segunda.
        {4, seis, {"0|67|43|A", "0|5|76|B", "0|67|76|C", "1|5|10|D", "1|67|10|E", "1|5|43|F"}},
        // Una hoja llena y una más: la séptima vuelve a la primera posición.
        {1, seis + QStringList{"G"},
         {"0|5|10|A", "0|67|10|B", "0|5|43|C", "0|67|43|D", "0|5|76|E", "0|67|76|F", "1|5|10|G"}},
    };
    for (const auto& c : casos) {
        QStringList r;
        const QList<LugarEtiqueta> lugares = ReparteEtiquetas(h, c.codigos, c.comienzo);
        for (const LugarEtiqueta& l : lugares) r << lugar(l);
        EXPECT_EQ(r, c.esperado) << c.comienzo << " " << c.codigos.size();
    }
    // Once entradas desde la cuarta no se pierden: tres páginas.
    EXPECT_EQ(PaginasEtiquetas(ReparteEtiquetas(h, seis + seis.mid(0, 5), 4)), 3);
    EXPECT_EQ(PaginasEtiquetas({}), 1);
}

TEST(LugarDeEtiquetas, ComienzoEscrito) {
    const HojaEtiquetas h{QString(), 2, 3, 0, 0, 0, 0, 60, 30, 20};
    const QString campo = QStringLiteral("Comenzar a imprimir en la etiqueta nº: ");
    const struct {
        const char* texto;
        int comienzo;
        QString aviso;
    } casos[] = {
        {"", 1, {}},   {" ", 1, {}},  {"0", 1, {}}, {"6", 6, {}},
        {"7", 0, campo + kImporteFueraDeRango},
        {"x", 0, campo + QStringLiteral("el número está mal escrito. Use el punto para los decimales (1234.50).")},
        {"2.5", 0, campo.chopped(2) + QStringLiteral(": debe ser un número entero.")},
    };
    for (const auto& c : casos) {
        int r = 0;
        EXPECT_EQ(AvisoDe([&] { r = LeeComienzo(QString::fromUtf8(c.texto), h); }), c.aviso) << c.texto;
        EXPECT_EQ(r, c.comienzo) << c.texto;
    }
}

// Cada campo que no se lee dice cuál es.
TEST(LugarDeEtiquetas, CamposDeLaHoja) {
    const CamposHoja bien{"Rollo", "2", "3", "5", "10", "2", "3", "60", "30", "20"};
    const HojaEtiquetas h = LeeCamposHoja(bien, true);
    EXPECT_EQ(QStringLiteral("%1|%2|%3|%4|%5|%6|%7|%8|%9|%10")
                  .arg(h.nombre).arg(h.porAncho).arg(h.porLargo).arg(h.margenIzq).arg(h.margenSup).arg(h.distColum)
                  .arg(h.distFilas).arg(h.ancho).arg(h.largo).arg(h.tamanoFuente),
              QStringLiteral("Rollo|2|3|5|10|2|3|60|30|20"));
    const auto con = [&](auto campo, const char* valor) {
        CamposHoja c = bien;
        c.*campo = QString::fromUtf8(valor);
        return AvisoDe([&] { LeeCamposHoja(c, true); });
    };
    const QString mal = QStringLiteral(": el número está mal escrito. Use el punto para los decimales (1234.50).");
    EXPECT_EQ(con(&CamposHoja::porAncho, "x"), QStringLiteral("Nº de etiquetas a lo ancho") + mal);
    EXPECT_EQ(con(&CamposHoja::porLargo, "0"), QStringLiteral("Nº de etiquetas a lo largo: ") + kImporteFueraDeRango);
    EXPECT_EQ(con(&CamposHoja::margenSup, "1,5"), QStringLiteral("Margen Superior") + mal);
    EXPECT_EQ(con(&CamposHoja::ancho, "0"), QStringLiteral("El ancho y el largo de la etiqueta deben ser mayores que cero."));
    EXPECT_EQ(con(&CamposHoja::tamanoFuente, "x"), QStringLiteral("Tamaño Fuente Texto") + mal);
    EXPECT_EQ(con(&CamposHoja::nombre, " "), QStringLiteral("Escriba el nombre con que se guarda la configuración."));
    EXPECT_EQ(AvisoDe([&] { LeeCamposHoja({"", "2", "3", "5", "10", "2", "3", "60", "30", "20"}, false); }), QString());
}

TEST(LugarDeEtiquetas, CodigosEan13YLosQueNoSeDibujan) {
    const struct {
        const char* codigo;
        bool ean13;
    } casos[] = {{"7790001000016", false}, {"7790001000019", true}, {"4006381333931", true},
                 {"400638133393", false},  {"40063813339A1", false}, {"010001", false}};
    for (const auto& c : casos) EXPECT_EQ(EsEan13(QString::fromUtf8(c.codigo)), c.ean13) << c.codigo;
    // Code 39 tiene letras, cifras, el blanco y - . $ / + %; las minúsculas salen como mayúsculas.
    EXPECT_EQ(CodigosSinSimbolo({"AB-12 X", "abc", "$/+%.", "año", "a*b", "año"}, false), (QStringList{"año", "a*b"}));
    // Un EAN-13 mal verificado con la opción EAN-13 sale en Code 39.
    EXPECT_FALSE(CodificaEtiqueta(QStringLiteral("7790001000016"), true).ean13);
    EXPECT_TRUE(CodificaEtiqueta(QStringLiteral("7790001000019"), true).ean13);
    EXPECT_EQ(CodificaEtiqueta(QStringLiteral("7790001000019"), true).modulos, 95);
    // Code 39: 13 módulos por carácter (con inicio y fin), menos el último espacio.
    EXPECT_EQ(CodificaEtiqueta(QStringLiteral("010001"), false).modulos, 8 * 13 - 1);
}

// El símbolo mide lo que la fuente del tamaño dado; si no cabe en la etiqueta con sus márgenes
// en blanco, se angosta hasta caber.
TEST(LugarDeEtiquetas, TamanioDelSimbolo) {
    const Simbolo s = CodificaEtiqueta(QStringLiteral("010001"), false);
    const struct {
        double ancho, largo;
        int puntos;
        QString esperado;
    } casos[] = {
        {63.5, 38.1, 24, "13.9077|5|54.1569|8.4667"},
        {63.5, 5, 24, "13.9077|5|54.1569|5"},
        {40, 38.1, 24, "13.252|5|46.748|8.4667"},
    };
    for (const auto& c : casos) {
        const HojaEtiquetas h{QString(), 1, 1, 0, 0, 0, 0, c.ancho, c.largo, c.puntos};
        const QRectF r = RectanguloSimbolo(h, s, QPointF(10, 5));
        EXPECT_EQ(QStringLiteral("%1|%2|%3|%4").arg(r.x(), 0, 'g', 6).arg(r.y()).arg(r.right(), 0, 'g', 6).arg(r.height(), 0, 'g', 5),
                  c.esperado)
            << c.ancho;
    }
}

} // namespace
} // namespace orv
