// Datos locales: lo que "Datos Locales" guarda llega a los lugares que lo leen (el próximo arranque,
// el código propuesto, el precio con impuesto, la balanza, los puntos); un valor malo no guarda
// nada; la fila del negocio.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "app/arranque.h"
#include "articles/articulos.h"
#include "maintenance/datos_locales.h"
#include "store/actualizacion.h"
#include "store/formato.h"

#include <QDir>
#include <QTemporaryDir>

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

// Un arranque sin ventanas: todo se acepta, nadie ingresa.
class ArranqueCallado : public InterfazArranque {
    void mensaje(const QString&, const QString&, Icono) override {}
    bool pregunta(const QString&, const QString&) override { return true; }
    void muestraPortada() override {}
    int anchoPantalla() override { return 1280; }
    SeparadoresRegionales separadoresRegionales() override { return {".", "/", ":", ".", "$", ",", ","}; }
    bool login(Almacen&, EstadoAplicacion&) override { return false; }
    void muestraVentana(Almacen&, EstadoAplicacion&, const Configuracion&) override {}
};

ValoresLocales valoresDePartida() {
    return {"ARGENTINA", "###,###,##0.00", "CUIT", "21", "2", "4", true, {"", "", "", "Precio", ""}};
}

DatosNegocio negocioDePartida() {
    return {0, "Almacén Don Tito S.R.L.", "Don Tito", "San Martín 1450", "S2000", "0341 455-1020", "ventas@dontito.com.ar",
            "www.dontito.com.ar", "30-71234567-1", "IVA Responsable Inscripto", QDate(2009, 3, 2)};
}

// Cada caso cambia los valores de partida; después se mira lo que leen los demás: el estado del
// próximo arranque, un importe con la máscara de ese arranque, el código propuesto para el artículo
// 8 del rubro 3, el precio final de 100 con CoefIva, una etiqueta de balanza y la forma de los puntos.
TEST(DatosLocales, LosValoresGuardadosLleganALosLugaresQueLosLeen) {
    const struct {
        const char* que;
        std::function<void(ValoresLocales&)> cambia;
        QStringList leido;
    } casos[] = {
        {"de partida", [](ValoresLocales&) {},
         {"ARGENTINA", "CUIT", "1,234.50", "030008", "121", "00123|12.5", "P"}},
        {"Chile, tres decimales, RUT, 19 %, cifras 3 y 5, puntos por cantidad",
         [](ValoresLocales& v) {
             v = {"CHILE", "###,###,##0.000", "RUT", "19", "3", "5", false, {}};
         },
         {"CHILE", "RUT", "1,234.500", "00300008", "119", "00123|12.5", "C"}},
        {"impuesto con decimales",
         [](ValoresLocales& v) { v.coefIva = "10.5"; }, {"ARGENTINA", "CUIT", "1,234.50", "030008", "110.5", "00123|12.5", "P"}},
        {"sin impuesto", [](ValoresLocales& v) { v.coefIva = ""; }, {"ARGENTINA", "CUIT", "1,234.50", "030008", "100", "00123|12.5", "P"}},
        {"balanza de peso con prefijo 28, código de 4 y valor de 6",
         [](ValoresLocales& v) { v.balanza = {" 28 ", "4", "6", "Peso", "3"}; },
         {"ARGENTINA", "CUIT", "1,234.50", "030008", "121", "0012|3.01 kg", "P"}},
    };
    for (const auto& c : casos) {
        QTemporaryDir dir;
        const QString datos = dir.filePath("datos");
        QDir().mkpath(datos);
        Configuracion conf(datos, dir.filePath("u.conf"));
        {
            auto a = Almacen::abreSQLite(QDir(datos).filePath(kArchivoAlmacen));
            actualizaEsquema(*a);
            ValoresLocales v = valoresDePartida();
            c.cambia(v);
            GrabaDatosLocales(*a, conf, v, negocioDePartida());
        }
        ArranqueCallado ui;
        RelojFijo reloj(QDateTime(QDate(2026, 11, 23), QTime(9, 0)));
        Arranque arranque(conf, reloj, ui);
        ASSERT_EQ(arranque.ejecuta(), FinArranque::SinIngreso) << c.que;
        const EstadoAplicacion& e = arranque.estado();
        const ConfBalanza balanza = LeeConfBalanza(conf);
        // Una etiqueta real de cada forma: 20 00123 01250 y 28 0012 003010, con su dígito verificador.
        const auto etiqueta = LeeEtiquetaBalanza(balanza, balanza.esPrecio ? QStringLiteral("2000123012506") : QStringLiteral("2800120030103"));
        ASSERT_TRUE(etiqueta) << c.que;
        EXPECT_EQ(QStringList({e.Pais, e.ClaveImpositiva, FormatoMoneda(Dinero::desdeTexto(u"1234.5").value(), e.MascaraMoneda),
                               CodigoPropuesto(3, 7, e.NroCifrasRubro, e.NroCifrasArticulo),
                               QString::number(PrecioConImpuesto(Dinero::desdeTexto(u"100").value(), LeeCoefIva(conf.lee(clave::miscelaneas, "CoefIva"))).aDouble()),
                               etiqueta->codigoArticulo + u'|' +
                                   (etiqueta->esPrecio ? QString::number(etiqueta->precio.aDouble()) : QString::number(etiqueta->peso) + " kg"),
                               conf.lee(clave::miscelaneas, "FormaCalculoVIP")}),
                  c.leido)
            << c.que;
    }
}

class DatosLocalesPorMotor : public prueba::PorMotorAlDia {
protected:
    void prepara() override { conf_ = std::make_unique<Configuracion>(base().carpeta(), base().carpeta() + "/u.conf"); }
    QStringList empresa() {
        return Filas(almacen(), "SELECT idEmpresa, NombreEmpresa, NombreFantasia, Direccion, CgoPostal, Telefono, email, web, Cuit, "
                                "CondicionIva, InicioActividades FROM Empresa ORDER BY idEmpresa");
    }
    std::unique_ptr<Configuracion> conf_;
};

// Con un valor malo sale el aviso y no cambia nada: ni la configuración ni el negocio.
TEST_P(DatosLocalesPorMotor, UnValorMaloDaSuMensajeYNoGuardaNada) {
    GrabaDatosLocales(almacen(), *conf_, valoresDePartida(), negocioDePartida());
    const ValoresLocales antes = LeeValoresLocales(*conf_);
    const QStringList empresaAntes = empresa();
    const struct {
        std::function<void(ValoresLocales&, DatosNegocio&)> cambia;
        const char* aviso;
    } casos[] = {
        {[](ValoresLocales& v, DatosNegocio&) { v.cifrasRubro = "dos"; }, "Ingrese las cifras correctamente !!"},
        {[](ValoresLocales& v, DatosNegocio&) { v.cifrasArticulo = ""; }, "Ingrese las cifras correctamente !!"},
        {[](ValoresLocales& v, DatosNegocio&) { v.cifrasArticulo = "0"; }, "Ingrese las cifras correctamente !!"},
        {[](ValoresLocales& v, DatosNegocio&) { v.cifrasRubro = "11"; }, "Ingrese las cifras correctamente !!"},
        {[](ValoresLocales& v, DatosNegocio&) { v.coefIva = "10,5"; }, "Impuesto (IVA %): el número está mal escrito"},
        {[](ValoresLocales& v, DatosNegocio&) { v.coefIva = "5000"; }, "Impuesto (IVA %): Importe fuera de rango!"},
        {[](ValoresLocales& v, DatosNegocio&) { v.balanza.cifrasCodigo = "cinco"; }, "Balanza, cifras del código: el número está mal escrito"},
        {[](ValoresLocales& v, DatosNegocio&) { v.balanza = {"20-29", "5", "6", "Precio", ""}; },
         "Balanza: prefijo (2 cifras), código (5) y valor (6) deben sumar 12 cifras."},
        {[](ValoresLocales& v, DatosNegocio&) { v.balanza.prefijos = "2x"; },
         "Balanza: los prefijos de la balanza (\"2x\") no se entienden; escríbalos como 20-29 o 20,21."},
        {[](ValoresLocales&, DatosNegocio& n) { n.cuit = "30-71234567-2"; },
         "Error, el CUIT 30-71234567-2 del negocio no es válido: revise sus cifras!"},
        {[](ValoresLocales&, DatosNegocio& n) { n.nombreEmpresa = QString(101, u'x'); }, "Nombre de la empresa: admite hasta 100 caracteres"},
    };
    for (const auto& c : casos) {
        ValoresLocales v = valoresDePartida();
        v.pais = "PERU";
        DatosNegocio n = negocioDePartida();
        n.telefono = "otro";
        c.cambia(v, n);
        EXPECT_TRUE(AvisoDe([&] { GrabaDatosLocales(almacen(), *conf_, v, n); }).startsWith(QString::fromUtf8(c.aviso)))
            << c.aviso << " / " << AvisoDe([&] { GrabaDatosLocales(almacen(), *conf_, v, n); }).toStdString();
        EXPECT_EQ(LeeValoresLocales(*conf_), antes) << c.aviso;
        EXPECT_EQ(empresa(), empresaAntes) << c.aviso;
    }
    // Con otra clave fiscal el número del negocio no se controla.
    ValoresLocales v = valoresDePartida();
    v.claveImpositiva = "RUT";
    DatosNegocio n = negocioDePartida();
    n.cuit = "76.086.428-5";
    EXPECT_EQ(AvisoDe([&] { GrabaDatosLocales(almacen(), *conf_, v, n); }), "");
}

// Sin filas agrega una; con filas cambia sólo la primera, también la fecha de inicio a nula.
TEST_P(DatosLocalesPorMotor, ElNegocioAgregaLaPrimeraFilaYDespuesCambiaLaPrimera) {
    const qint64 id = GrabaDatosLocales(almacen(), *conf_, valoresDePartida(), negocioDePartida());
    EXPECT_EQ(empresa(), QStringList({QString::number(id) + "|Almacén Don Tito S.R.L.|Don Tito|San Martín 1450|S2000|0341 455-1020|"
                                      "ventas@dontito.com.ar|www.dontito.com.ar|30-71234567-1|IVA Responsable Inscripto|2009-03-02"}));
    almacen().ejecuta("INSERT INTO Empresa (NombreEmpresa) VALUES ('Segunda fila')");
    DatosNegocio n = LeeDatosNegocio(almacen());
    EXPECT_EQ(n.id, id);
    n.nombreEmpresa = "Don Tito e Hijos";
    n.web = "";
    n.inicioActividades = QDate();
    EXPECT_EQ(GrabaDatosLocales(almacen(), *conf_, valoresDePartida(), n), id);
    EXPECT_EQ(empresa(), QStringList({QString::number(id) + "|Don Tito e Hijos|Don Tito|San Martín 1450|S2000|0341 455-1020|"
                                      "ventas@dontito.com.ar|NULL|30-71234567-1|IVA Responsable Inscripto|NULL",
                                      QString::number(id + 1) + "|Segunda fila|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"}));
    EXPECT_EQ(LeeDatosNegocio(almacen()), (DatosNegocio{id, "Don Tito e Hijos", "Don Tito", "San Martín 1450", "S2000", "0341 455-1020",
                                                        "ventas@dontito.com.ar", "", "30-71234567-1", "IVA Responsable Inscripto", QDate()}));
}

ORV_AMBOS_MOTORES(DatosLocalesPorMotor);

} // namespace
} // namespace orv
