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

TEST(Balanza, DigitoVerificador) {
    // Etiquetas de verdad: dos de productos y las de balanza de estas pruebas.
    for (const char* codigo : {"4006381333931", "5901234123457", "2000123012506", "2100123003501", "2504567015005"}) {
        const QString c = QString::fromLatin1(codigo);
        EXPECT_EQ(DigitoVerificadorEan13(QStringView(c).left(12)), c.back().digitValue()) << codigo;
    }
}

TEST(Balanza, LecturaDeLaEtiquetaConLaConfiguracion) {
    QTemporaryDir dir;
    Configuracion conf(dir.path(), dir.path() + QStringLiteral("/u.conf"));
    const auto lee = [](const ConfBalanza& c, const char* codigo) -> QString {
        try {
            const auto e = LeeEtiquetaBalanza(c, QString::fromLatin1(codigo));
            if (!e) return QStringLiteral("no es de balanza");
            return e->codigoArticulo + QLatin1Char('|') +
                   (e->esPrecio ? QStringLiteral("$") + QString::number(e->precio.aDouble()) : QString::number(e->peso) + QStringLiteral(" kg"));
        } catch (const CodigoBalanzaErroneo& e) {
            return e.texto();
        }
    };

    // Por omisión: prefijos 20 a 29, cinco cifras de código y cinco de importe con dos decimales.
    const ConfBalanza omision = LeeConfBalanza(conf);
    EXPECT_TRUE(omision.problema.isEmpty());
    EXPECT_EQ(lee(omision, "2000123012506"), QStringLiteral("00123|$12.5"));
    EXPECT_EQ(lee(omision, "2904567009996"), QStringLiteral("04567|$9.99"));
    EXPECT_EQ(lee(omision, "2000123012507"),
              QStringLiteral("Código de balanza mal leído (dígito verificador): 2000123012507. Vuelva a escanearlo."));
    EXPECT_EQ(lee(omision, "2000123000008"), QStringLiteral("La etiqueta de balanza 2000123000008 no trae importe."));
    for (const char* otro : {"3000123012505", "1234567890128", "200012301250", "20001230125066", "20001230125O6"})
        EXPECT_EQ(lee(omision, otro), QStringLiteral("no es de balanza")) << otro;

    // Peso en kilos con tres decimales (por omisión para el peso), sólo con los prefijos dados.
    conf.graba(clave::miscelaneas, QStringLiteral("BalanzaValor"), QStringLiteral("Peso"));
    conf.graba(clave::miscelaneas, QStringLiteral("BalanzaPrefijos"), QStringLiteral("21, 25"));
    conf.graba(clave::miscelaneas, QStringLiteral("BalanzaCifrasCodigo"), QStringLiteral("cinco")); // no es un número: 5
    const ConfBalanza peso = LeeConfBalanza(conf);
    EXPECT_EQ(lee(peso, "2100123003501"), QStringLiteral("00123|0.35 kg"));
    EXPECT_EQ(lee(peso, "2504567015005"), QStringLiteral("04567|1.5 kg"));
    EXPECT_EQ(lee(peso, "2000123012506"), QStringLiteral("no es de balanza"));

    // Una configuración imposible se dice al escanear una etiqueta, no se adivina.
    conf.graba(clave::miscelaneas, QStringLiteral("BalanzaCifrasValor"), QStringLiteral("6"));
    EXPECT_EQ(lee(LeeConfBalanza(conf), "2100123003501"),
              QStringLiteral("Código de balanza sin leer: prefijo (2 cifras), código (5) y valor (6) deben sumar 12 "
                             "cifras (Miscelaneas)."));
    conf.graba(clave::miscelaneas, QStringLiteral("BalanzaCifrasValor"), QStringLiteral("5"));
    conf.graba(clave::miscelaneas, QStringLiteral("BalanzaPrefijos"), QStringLiteral("29-20"));
    EXPECT_EQ(lee(LeeConfBalanza(conf), "2100123003501"),
              QStringLiteral("Código de balanza sin leer: los prefijos de la balanza (\"29-20\") no se entienden; "
                             "escríbalos como 20-29 o 20,21 (Miscelaneas)."));
}

class LineaBalanza : public prueba::PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (!base_) return;
        actualizaEsquema(almacen());
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
