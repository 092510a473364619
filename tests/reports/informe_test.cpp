// Motor de informes: definiciones, selección con parámetros ligados, totales, escape de HTML y
// archivos de salida (el texto del PDF se lee con pdftotext).

#include "apoyo/base_prueba.h"
#include "maintenance/datos_ejemplo.h"
#include "reports/catalogo.h"
#include "reports/informe.h"
#include "store/actualizacion.h"
#include "store/aviso.h"
#include "store/reloj.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace orv {
namespace {

using prueba::PorMotor;

const QDateTime kAhora(QDate(2026, 11, 23), QTime(10, 30));

QString escribe(const QTemporaryDir& d, const QString& nombre, const QString& texto) {
    const QString ruta = d.filePath(nombre);
    QFile f(ruta);
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(texto.toUtf8());
    return ruta;
}

QString textoDePdf(const QString& ruta) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), ruta, QStringLiteral("-")});
    p.waitForFinished(30000);
    // NFKC deshace las ligaduras tipográficas ("ﬁ" → "fi") que el PDF guarda como un solo signo.
    return QString::fromUtf8(p.readAllStandardOutput()).normalized(QString::NormalizationForm_KC);
}

TEST(DefinicionInforme, CabeceraYErrores) {
    QTemporaryDir d;
    const QString ruta = escribe(d, QStringLiteral("x.rpt"),
                                 QStringLiteral("{{! fuente: SELECT a,\n            b FROM T\n    titulo: Título con eñe\n"
                                                "    orden: a DESC\n    moneda: b, c\n    totales: b\n"
                                                "    orientacion: horizontal\n    pagina: Oficio }}\n<p>{{titulo}}</p>"));
    const DefinicionInforme def = LeeDefinicion(ruta);
    EXPECT_EQ(def.fuente, QStringLiteral("SELECT a, b FROM T"));
    EXPECT_EQ(def.titulo, QStringLiteral("Título con eñe"));
    EXPECT_EQ(def.orden, QStringLiteral("a DESC"));
    EXPECT_EQ(def.moneda, (QStringList{QStringLiteral("b"), QStringLiteral("c")}));
    EXPECT_EQ(def.totales, QStringList{QStringLiteral("b")});
    EXPECT_TRUE(def.horizontal);
    EXPECT_EQ(def.pagina, QPageSize::Legal);
    EXPECT_EQ(def.plantilla.trimmed(), QStringLiteral("<p>{{titulo}}</p>"));
    for (const QString& malo : {escribe(d, QStringLiteral("sinfuente.rpt"), QStringLiteral("{{! titulo: x }}<p></p>")),
                                escribe(d, QStringLiteral("sincabecera.rpt"), QStringLiteral("<p>hola</p>")),
                                d.filePath(QStringLiteral("no-esta.rpt"))}) {
        try {
            LeeDefinicion(malo);
            ADD_FAILURE() << malo.toStdString();
        } catch (const Aviso& e) {
            EXPECT_EQ(e.texto(), QStringLiteral("Error en la lectura de la plantilla : ") + malo);
        }
    }
}

class Informes : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (!base_) return;
        actualizaEsquema(almacen());
        ASSERT_TRUE(dir_.isValid());
    }
    void caja(const QDate& f, const QString& detalle, const QString& ingreso, const QString& egreso) {
        almacen().ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago) "
                                         "VALUES (1, ?, ?, ?, ?, 'EFVO')"),
                          {f, detalle, ingreso, egreso});
    }
    DefinicionInforme cajaSimple() {
        const QString ruta = BuscaDefinicion(QStringLiteral("listacajasimple.rpt"), QString());
        EXPECT_FALSE(ruta.isEmpty());
        return LeeDefinicion(ruta);
    }
    QTemporaryDir dir_;
};

TEST_P(Informes, SeleccionPorPeriodoTotalesYEscape) {
    caja(QDate(2026, 10, 31), QStringLiteral("fuera del período"), QStringLiteral("999"), QStringLiteral("0"));
    caja(QDate(2026, 11, 1), QStringLiteral("Venta a O'Brien <b>"), QStringLiteral("1234.5"), QStringLiteral("0"));
    caja(QDate(2026, 11, 30), QStringLiteral("Pago luz & gas"), QStringLiteral("0"), QStringLiteral("200.25"));
    caja(QDate(2026, 12, 1), QStringLiteral("también fuera"), QStringLiteral("5"), QStringLiteral("0"));
    const Seleccion s = SeleccionUsual(QStringLiteral("listacajasimple.rpt"), QDate(2026, 11, 1), QDate(2026, 11, 30));
    const InformeArmado inf = ArmaInforme(almacen(), cajaSimple(), s, QStringLiteral("###,###,##0.00"), kAhora);
    EXPECT_EQ(inf.filas, 2);
    EXPECT_EQ(inf.periodo, QStringLiteral("Del 01/11/2026 al 30/11/2026"));
    EXPECT_EQ(inf.titulo, QStringLiteral("Movimientos de caja"));
    EXPECT_TRUE(inf.cuerpo.contains(QStringLiteral("1,234.50")));
    EXPECT_TRUE(inf.cuerpo.contains(QStringLiteral("200.25")));
    EXPECT_TRUE(inf.cuerpo.contains(QStringLiteral("01/11/2026")));
    EXPECT_FALSE(inf.cuerpo.contains(QStringLiteral("fuera")));
    EXPECT_FALSE(inf.cuerpo.contains(QStringLiteral("<b>")));
    EXPECT_TRUE(inf.cuerpo.contains(QStringLiteral("&lt;b&gt;")));
    EXPECT_TRUE(inf.cuerpo.contains(QStringLiteral("&amp; gas")));
    EXPECT_TRUE(inf.cuerpo.contains(QStringLiteral("(2 movimientos)")));

    // El PDF lleva las filas, los totales, el encabezado y el pie.
    const QString pdf = dir_.filePath(QStringLiteral("caja.pdf"));
    EXPECT_EQ(GuardaInforme(almacen(), cajaSimple(), s, QStringLiteral("###,###,##0.00"), kAhora, pdf), 1);
    const QString t = textoDePdf(pdf);
    for (const char* esperado : {"Movimientos de caja", "Del 01/11/2026 al 30/11/2026", "Venta a O'Brien <b>", "1,234.50",
                                 "200.25", "Página 1 de 1", "Emitido el 23/11/2026 10:30"})
        EXPECT_TRUE(t.contains(QString::fromUtf8(esperado))) << esperado << "\n" << t.toStdString();
    EXPECT_FALSE(t.contains(QStringLiteral("fuera del")));
}

TEST_P(Informes, GruposConTotalesYSaldoAcumuladoQueVuelveACeroEnCadaGrupo) {
    almacen().ejecuta(QStringLiteral("INSERT INTO Cuentas (Cuenta) VALUES ('Banco')"));
    const QVariant banco = almacen().valor(QStringLiteral("SELECT idCuenta FROM Cuentas WHERE Cuenta = 'Banco'"));
    caja(QDate(2026, 11, 2), QStringLiteral("v1"), QStringLiteral("100"), QStringLiteral("0"));
    caja(QDate(2026, 11, 3), QStringLiteral("g1"), QStringLiteral("0"), QStringLiteral("30.5"));
    caja(QDate(2026, 11, 4), QStringLiteral("v2"), QStringLiteral("10"), QStringLiteral("0"));
    almacen().ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso) VALUES (?, ?, 'dep', 0, 7)"),
                      {banco, QDate(2026, 11, 5)});
    const QString ruta = escribe(dir_, QStringLiteral("g.rpt"),
                                 QStringLiteral("{{! fuente: SELECT Cuenta, Fecha, Detalles, Ingreso, Egreso, idCaja FROM ConsultaCaja\n"
                                                "    orden: Cuenta, Fecha, idCaja\n    moneda: Ingreso, Egreso\n"
                                                "    totales: Ingreso, Egreso\n    grupo: Cuenta\n    saldo: Ingreso, Egreso }}\n"
                                                "{{#grupos}}[{{grupo}}:{{cantidad}}{{#filas}} {{Detalles}}={{saldo}}{{/filas}}"
                                                " T={{totales.Ingreso}}/{{totales.Egreso}} S={{saldo}}]{{/grupos}}"
                                                " G={{totales.Ingreso}}/{{totales.Egreso}} N={{cantidad}}"));
    const InformeArmado inf = ArmaInforme(almacen(), LeeDefinicion(ruta), Seleccion{}, QStringLiteral("0.00"), kAhora);
    EXPECT_EQ(inf.cuerpo.trimmed(),
              QStringLiteral("[Banco:1 dep=-7.00 T=0.00/7.00 S=-7.00]"
                             "[Ventas Mostrador:3 v1=100.00 g1=69.50 v2=79.50 T=110.00/30.50 S=79.50]"
                             " G=110.00/37.50 N=4"));

    // Un campo de grupo que la fuente no tiene es un error de la definición, no un informe vacío.
    const QString mala = escribe(dir_, QStringLiteral("m.rpt"),
                                 QStringLiteral("{{! fuente: SELECT Cuenta FROM ConsultaCaja\n    grupo: NoEsta }}x"));
    EXPECT_THROW(ArmaInforme(almacen(), LeeDefinicion(mala), Seleccion{}, QString(), kAhora), Aviso);
}

TEST_P(Informes, MuchasFilasVariasPaginasYOtrosArchivos) {
    Transaccion tr(almacen());
    for (int i = 0; i < 300; ++i)
        caja(QDate(2026, 11, 1 + i % 28), QStringLiteral("Movimiento %1").arg(i, 3, 10, QLatin1Char('0')),
             QStringLiteral("10"), QStringLiteral("0"));
    tr.confirmar();
    const Seleccion s = SeleccionUsual(QStringLiteral("listacajasimple.rpt"), QDate(2026, 11, 1), QDate(2026, 11, 30));
    const QString pdf = dir_.filePath(QStringLiteral("muchas.pdf"));
    const int paginas = GuardaInforme(almacen(), cajaSimple(), s, QString(), kAhora, pdf);
    EXPECT_GT(paginas, 3);
    const QString t = textoDePdf(pdf);
    EXPECT_TRUE(t.contains(QStringLiteral("Página %1 de %1").arg(paginas)));
    EXPECT_TRUE(t.contains(QStringLiteral("Movimiento 000")));
    EXPECT_TRUE(t.contains(QStringLiteral("Movimiento 299")));
    EXPECT_TRUE(t.contains(QStringLiteral("3,000.00"))); // total de ingresos

    for (const char* ext : {"html", "odt", "csv", "xlsx"}) {
        const QString archivo = dir_.filePath(QStringLiteral("salida.") + QString::fromLatin1(ext));
        GuardaInforme(almacen(), cajaSimple(), s, QString(), kAhora, archivo);
        EXPECT_GT(QFileInfo(archivo).size(), 100) << ext;
    }
    QFile html(dir_.filePath(QStringLiteral("salida.html")));
    ASSERT_TRUE(html.open(QIODevice::ReadOnly));
    EXPECT_TRUE(QString::fromUtf8(html.readAll()).contains(QStringLiteral("Movimiento 150")));
    EXPECT_THROW(GuardaInforme(almacen(), cajaSimple(), s, QString(), kAhora, dir_.filePath(QStringLiteral("x.doc"))),
                 Aviso);
}

TEST_P(Informes, CadaDefinicionDelProgramaSaleEnPdfConLosDatosDeEjemplo) {
    const RelojFijo reloj(kAhora);
    cargaDatosEjemplo(almacen(), reloj);
    QStringList definiciones;
    for (const QString& c : CarpetasDeInformes(QString()))
        for (const QString& f : QDir(c).entryList({QStringLiteral("*.rpt")}, QDir::Files))
            if (!definiciones.contains(f) && !f.startsWith(QStringLiteral("factura"))) definiciones << f;
    ASSERT_GE(definiciones.size(), 3);
    for (const QString& nombre : definiciones) {
        const QString pdf = dir_.filePath(nombre + QStringLiteral(".pdf"));
        const Seleccion s = SeleccionUsual(nombre, QDate(2026, 1, 1), QDate(2026, 12, 31));
        EXPECT_GE(GuardaInforme(almacen(), LeeDefinicion(BuscaDefinicion(nombre, QString())), s, QString(), kAhora, pdf), 1)
            << nombre.toStdString();
        EXPECT_FALSE(textoDePdf(pdf).trimmed().isEmpty()) << nombre.toStdString();
    }
    // La lista de precios trae un artículo de los datos de ejemplo.
    const QString precios = textoDePdf(dir_.filePath(QStringLiteral("listadeprecios.rpt.pdf")));
    const QString primero = almacen().valor(QStringLiteral("SELECT Descripcion FROM Articulos ORDER BY idArticulo")).toString();
    EXPECT_TRUE(precios.contains(primero)) << primero.toStdString();
    // El faltante trae los artículos por debajo del mínimo y ninguno por encima.
    const QString faltante = textoDePdf(dir_.filePath(QStringLiteral("faltante.rpt.pdf")));
    const QString bajo = almacen().valor(QStringLiteral("SELECT Codigo FROM Articulos WHERE StockActual < StockMinimo "
                                                        "ORDER BY idArticulo")).toString();
    const QString sobrado = almacen().valor(QStringLiteral("SELECT Codigo FROM Articulos WHERE StockActual > StockMinimo "
                                                           "ORDER BY idArticulo")).toString();
    ASSERT_FALSE(bajo.isEmpty());
    EXPECT_TRUE(faltante.contains(bajo)) << bajo.toStdString();
    EXPECT_FALSE(faltante.contains(sobrado + QStringLiteral(" "))) << sobrado.toStdString();
}

TEST_P(Informes, ComprobantesConSusLineasTotalesYImporteEnLetras) {
    Almacen& a = almacen();
    a.ejecuta(QStringLiteral("INSERT INTO Empresa (NombreEmpresa) VALUES ('Almacén Don Tito')"));
    a.ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, Domicilio, Localidad) "
                             "VALUES (77, 'Ana O''Neil', 'Mitre 1', 'Rosario')"));
    const qint64 id = a.inserta(
        QStringLiteral("INSERT INTO Comprobantes (Factura, idTipoComprobante, idVendedor, idTipoIva, Fecha, Nombre, Cuit, "
                       "FormaPago, SubTotal, MontDescuento, ImporteNeto, PorcentajeIVA, ImporteIVA, Total, ImpresoFiscal) "
                       "VALUES ('B0001-00000042', 1, 77, 1, ?, 'Ana O''Neil', '20-12345678-6', 'EFVO', '1000', '0', "
                       "'826.45', 21, '173.55', '1000', 'S')"),
        {QDate(2026, 11, 23)}, QStringLiteral("idComprobante"));
    for (const auto& [desc, cant, unit] : {std::tuple{"Yerba 1 kg", 2, "300"}, std::tuple{"Azúcar 1 kg", 4, "100"}})
        a.ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, Descripcion, Cantidad, Unitario, SubTotal) "
                                 "VALUES (?, ?, ?, ?, ?)"),
                  {id, QString::fromUtf8(desc), cant, QString::fromLatin1(unit),
                   QString::number(cant * QString::fromLatin1(unit).toInt())});
    // Otro comprobante que no debe aparecer.
    a.ejecuta(QStringLiteral("INSERT INTO Comprobantes (Factura, Nombre, Total) VALUES ('B0001-00000043', 'Otro', '5')"));
    for (const char* plantilla : {"factura.rpt", "factura_discrimina_iva.rpt"}) {
        const QString pdf = dir_.filePath(QString::fromLatin1(plantilla) + QStringLiteral(".pdf"));
        GuardaInforme(a, LeeDefinicion(BuscaDefinicion(QString::fromLatin1(plantilla), QString())), SeleccionComprobante(id),
                      QString(), kAhora, pdf);
        const QString t = textoDePdf(pdf);
        for (const char* esperado : {"Almacén Don Tito", "B0001-00000042", "Ana O'Neil", "Yerba 1 kg", "Azúcar 1 kg",
                                     "1,000.00", "mil con 00/100.-", "Mitre 1", "23/11/2026"})
            EXPECT_TRUE(t.contains(QString::fromUtf8(esperado))) << plantilla << ": " << esperado << "\n" << t.toStdString();
        EXPECT_FALSE(t.contains(QStringLiteral("00000043"))) << plantilla;
        EXPECT_EQ(t.contains(QStringLiteral("173.55")), QByteArray(plantilla) == "factura_discrimina_iva.rpt") << plantilla;
    }
}

TEST(BuscaDefinicion, LaCopiaDeLaCarpetaDeDatosMandaSobreLaDelPrograma) {
    QTemporaryDir d;
    ASSERT_TRUE(QDir(d.path()).mkpath(QStringLiteral("reportes")));
    EXPECT_NE(BuscaDefinicion(QStringLiteral("listadeprecios.rpt"), d.path()), QString());
    const QString propia = escribe(d, QStringLiteral("reportes/listadeprecios.rpt"),
                                   QStringLiteral("{{! fuente: SELECT 1 AS x }}<p>propia</p>"));
    EXPECT_EQ(BuscaDefinicion(QStringLiteral("listadeprecios.rpt"), d.path()), propia);
    EXPECT_EQ(BuscaDefinicion(QStringLiteral("no-existe.rpt"), d.path()), QString());
    EXPECT_THROW(SeleccionUsual(QStringLiteral("no-existe.rpt"), {}, {}), Aviso);
}

ORV_AMBOS_MOTORES(Informes);

} // namespace
} // namespace orv
