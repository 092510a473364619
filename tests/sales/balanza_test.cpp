// Códigos de balanza: el dígito verificador EAN-13, la lectura de la etiqueta con la
// configuración de "Miscelaneas", y la línea que deja en el borrador, en los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "sales/balanza.h"
#include "store/actualizacion.h"

#include <QTemporaryDir>

namespace orv {
namespace {

using prueba::AvisoDe;

// Cada etiqueta leída con la configuración de "Miscelaneas" que rige en ese momento: el código del
// artículo y el importe o el peso, "no es de balanza", o el aviso. Las etiquetas válidas son reales:
// su dígito verificador es el de la norma.
TEST(Balanza, LecturaDeLaEtiquetaConLaConfiguracion) {
    QTemporaryDir dir;
    Configuracion conf(dir.path(), dir.path() + QStringLiteral("/u.conf"));
    const auto lee = [&conf](const char* codigo) -> QString {
        try {
            const auto e = LeeEtiquetaBalanza(LeeConfBalanza(conf), QString::fromLatin1(codigo));
            if (!e) return QStringLiteral("no es de balanza");
            return e->codigoArticulo + QLatin1Char('|') +
                   (e->esPrecio ? QStringLiteral("$") + QString::number(e->precio.aDouble()) : QString::number(e->peso) + QStringLiteral(" kg"));
        } catch (const CodigoBalanzaErroneo& e) {
            return e.texto();
        }
    };
    // Clave de "Miscelaneas" a grabar antes (vacía: la configuración sigue como estaba), código y lectura.
    const struct {
        const char *clave, *valor, *codigo, *lectura;
    } casos[] = {
        // Por omisión: prefijos 20 a 29, cinco cifras de código y cinco de importe con dos decimales.
        {"", "", "2000123012506", "00123|$12.5"},
        {"", "", "2904567009996", "04567|$9.99"},
        {"", "", "2000123012507", "Código de balanza mal leído (dígito verificador): 2000123012507. Vuelva a escanearlo."},
        {"", "", "2000123000008", "La etiqueta de balanza 2000123000008 no trae importe."},
        {"", "", "3000123012505", "no es de balanza"},
        {"", "", "4006381333931", "no es de balanza"},
        {"", "", "200012301250", "no es de balanza"},
        {"", "", "20001230125066", "no es de balanza"},
        {"", "", "20001230125O6", "no es de balanza"},
        // Peso en kilos con tres decimales (por omisión para el peso), sólo con los prefijos dados; un
        // número de cifras que no es un número toma el suyo.
        {"BalanzaValor", "Peso", "2100123003501", "00123|0.35 kg"},
        {"BalanzaPrefijos", "21, 25", "2504567015005", "04567|1.5 kg"},
        {"BalanzaCifrasCodigo", "cinco", "2000123012506", "no es de balanza"},
        // Una configuración imposible se dice al escanear una etiqueta, no se adivina.
        {"BalanzaCifrasValor", "6", "2100123003501",
         "Código de balanza sin leer: prefijo (2 cifras), código (5) y valor (6) deben sumar 12 cifras (Miscelaneas)."},
        {"BalanzaCifrasValor", "5", "2100123003501", "00123|0.35 kg"},
        {"BalanzaPrefijos", "29-20", "2100123003501",
         "Código de balanza sin leer: los prefijos de la balanza (\"29-20\") no se entienden; escríbalos como 20-29 o 20,21 "
         "(Miscelaneas)."},
    };
    for (const auto& c : casos) {
        if (*c.clave) conf.graba(clave::miscelaneas, QString::fromLatin1(c.clave), QString::fromLatin1(c.valor));
        EXPECT_EQ(lee(c.codigo), QString::fromUtf8(c.lectura)) << c.clave << "=" << c.valor << " " << c.codigo;
    }
}

class LineaBalanza : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        // El queso se pesa (código 123 sin ceros); el pan se etiqueta con precio; un artículo tiene
        // por código una etiqueta entera, y otro no tiene precio.
        almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (idArticulo, Codigo, Descripcion, PrecioVenta) VALUES "
                                         "(1, '123', 'Queso por kg', 20), (2, '04567', 'Pan casero', 8), "
                                         "(3, '2000999010002', 'Bandeja fija', 10), (4, '00777', 'Sin precio', NULL)"));
    }
    // Lo que pasa al escanear: "línea", "de siempre" o el aviso.
    QString escanea(const ConfBalanza& c, const char* codigo, std::optional<QString> multiplicador = {}) {
        QString r;
        const QString aviso = AvisoDe([&] {
            r = AgregaLineaBalanza(almacen(), c, 1, QString::fromLatin1(codigo), multiplicador) ? QStringLiteral("línea")
                                                                                                : QStringLiteral("de siempre");
        });
        return aviso.isEmpty() ? r : aviso;
    }
    QStringList borrador() {
        return prueba::Filas(almacen(), QStringLiteral("SELECT idArticulo, Codigo, Cantidad, Descripcion, Unitario, SubTotal, PCRed "
                                                       "FROM TmpFac ORDER BY idTmpFac"));
    }
};

TEST_P(LineaBalanza, CadaEtiquetaEsUnaLineaConSuImporteOSuPeso) {
    ConfBalanza precio;
    ConfBalanza peso;
    peso.esPrecio = false;
    peso.decimales = 3;
    struct Paso {
        const ConfBalanza& conf;
        const char* codigo;
        std::optional<QString> multiplicador;
        QString resultado;
    };
    const Paso pasos[] = {
        {precio, "2000123012506", {}, QStringLiteral("línea")},
        {precio, "2000123012506", {}, QStringLiteral("línea")},           // la misma etiqueta otra vez: otra línea
        {precio, "2504567015005", QStringLiteral("2"), QStringLiteral("línea")}, // dos bolsas al precio de la etiqueta
        {peso, "2100123003501", {}, QStringLiteral("línea")},
        {peso, "2100123003501", QStringLiteral("2"),
         QStringLiteral("La etiqueta de balanza ya trae el peso: escanéela sin multiplicador.")},
        {peso, "2000777015007", {}, QStringLiteral("Sin precio: el artículo no tiene precio de venta para venderlo por peso.")},
        {precio, "2000999010002", {}, QStringLiteral("de siempre")},      // es el código de un artículo
        {precio, "4006381333931", {}, QStringLiteral("de siempre")},
        {precio, "2023456123459", {}, QStringLiteral("Articulo no encontrado!")},
        {precio, "2000123012507", {}, QStringLiteral("Código de balanza mal leído (dígito verificador): 2000123012507. "
                                                     "Vuelva a escanearlo.")},
    };
    for (const Paso& p : pasos) EXPECT_EQ(escanea(p.conf, p.codigo, p.multiplicador), p.resultado) << p.codigo;
    EXPECT_EQ(borrador(), (QStringList{QStringLiteral("1|123|1|Queso por kg|12.5|12.5|1"),
                                       QStringLiteral("1|123|1|Queso por kg|12.5|12.5|1"),
                                       QStringLiteral("2|04567|2|Pan casero|15|30|1"),
                                       QStringLiteral("1|123|0.35|Queso por kg|20|7|1")}));
}

ORV_AMBOS_MOTORES(LineaBalanza);

} // namespace
} // namespace orv
