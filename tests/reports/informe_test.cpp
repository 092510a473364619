// Motor de informes: definiciones, selección con parámetros ligados, grupos, totales y saldos,
// escape de HTML, páginas y archivos de salida (el texto del PDF se lee con pdftotext).

#include "apoyo/base_prueba.h"
#include "apoyo_informes.h"
#include "maintenance/datos_ejemplo.h"
#include "reports/catalogo.h"
#include "reports/informe.h"
#include "store/actualizacion.h"
#include "store/reloj.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace orv {
namespace {

using namespace prueba;

const QDateTime kAhora(QDate(2026, 11, 23), QTime(10, 30));

TEST(DefinicionInforme, CabeceraYErrores) {
    QTemporaryDir d;
    const DefinicionInforme def = LeeDefinicion(escribeArchivo(
        d.filePath(QStringLiteral("x.rpt")), "{{! fuente: SELECT a,\n            b FROM T\n    titulo: Título con eñe\n"
                                             "    orden: a DESC\n    moneda: b, c\n    totales: b\n"
                                             "    orientacion: horizontal\n    pagina: Oficio }}\n<p>{{titulo}}</p>"));
    EXPECT_EQ(QStringList({def.fuente, def.titulo, def.orden, def.moneda.join(u'/'), def.totales.join(u'/'),
                           def.plantilla.trimmed()})
                  .join(u'|')
                  .toStdString(),
              "SELECT a, b FROM T|Título con eñe|a DESC|b/c|b|<p>{{titulo}}</p>");
    EXPECT_TRUE(def.horizontal);
    EXPECT_EQ(def.pagina, QPageSize::Legal);
    for (const QString& malo : {escribeArchivo(d.filePath(QStringLiteral("sinfuente.rpt")), "{{! titulo: x }}<p></p>"),
                                escribeArchivo(d.filePath(QStringLiteral("sincabecera.rpt")), "<p>hola</p>"),
                                d.filePath(QStringLiteral("no-esta.rpt"))})
        EXPECT_EQ(textoDeAviso([&] { LeeDefinicion(malo); }),
                  QStringLiteral("Error en la lectura de la plantilla : ") + malo);
}

class Informes : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (!base_) return;
        actualizaEsquema(almacen());
    }
    void caja(const QDate& f, const QString& detalle, const QString& ingreso, const QString& egreso, qint64 cuenta = 1) {
        almacen().ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago) "
                                         "VALUES (?, ?, ?, ?, ?, 'EFVO')"),
                          {cuenta, f, detalle, ingreso, egreso});
    }
    static DefinicionInforme definicion(const QString& nombre) { return LeeDefinicion(BuscaDefinicion(nombre, {})); }
    static Seleccion noviembre() {
        return SeleccionUsual(QStringLiteral("listacajasimple.rpt"), QDate(2026, 11, 1), QDate(2026, 11, 30));
    }
    QString pdf(const QString& rpt, const Seleccion& s, const QString& nombre, int* paginas = nullptr) {
        const QString ruta = dir_.filePath(nombre);
        const int n = GuardaInforme(almacen(), definicion(rpt), s, QStringLiteral("###,###,##0.00"), kAhora, ruta);
        if (paginas) *paginas = n;
        return textoDePdf(ruta);
    }
    QTemporaryDir dir_;
};

TEST_P(Informes, SeleccionPorPeriodoTotalesEscapeYPdf) {
    caja(QDate(2026, 10, 31), QStringLiteral("fuera del período"), QStringLiteral("999"), QStringLiteral("0"));
    caja(QDate(2026, 11, 1), QStringLiteral("Venta a O'Brien <b>"), QStringLiteral("1234.5"), QStringLiteral("0"));
    caja(QDate(2026, 11, 30), QStringLiteral("Pago luz & gas"), QStringLiteral("0"), QStringLiteral("200.25"));
    caja(QDate(2026, 12, 1), QStringLiteral("también fuera"), QStringLiteral("5"), QStringLiteral("0"));
    const InformeArmado inf = ArmaInforme(almacen(), definicion(QStringLiteral("listacajasimple.rpt")), noviembre(),
                                          QStringLiteral("###,###,##0.00"), kAhora);
    EXPECT_EQ(inf.filas, 2);
    EXPECT_EQ((inf.titulo + u'|' + inf.periodo).toStdString(), "Movimientos de caja|Del 01/11/2026 al 30/11/2026");
    EXPECT_EQ(discrepancias(inf.cuerpo,
                            {QStringLiteral("1,234.50"), QStringLiteral("200.25"), QStringLiteral("01/11/2026"),
                             QStringLiteral("&lt;b&gt;"), QStringLiteral("&amp; gas"), QStringLiteral("(2 movimientos)")},
                            {QStringLiteral("fuera"), QStringLiteral("<b>")}),
              "");
    // El PDF lleva las filas, los totales, el encabezado y el pie.
    EXPECT_EQ(discrepancias(pdf(QStringLiteral("listacajasimple.rpt"), noviembre(), QStringLiteral("caja.pdf")),
                            {QStringLiteral("Movimientos de caja"), QStringLiteral("Del 01/11/2026 al 30/11/2026"),
                             QStringLiteral("Venta a O'Brien <b>"), QStringLiteral("1,234.50"), QStringLiteral("200.25"),
                             QStringLiteral("Página 1 de 1"), QStringLiteral("Emitido el 23/11/2026 10:30")},
                            {QStringLiteral("fuera del")}),
              "");
}

TEST_P(Informes, GruposConTotalesYSaldoAcumuladoQueVuelveACeroEnCadaGrupo) {
    const qint64 banco = almacen().inserta(QStringLiteral("INSERT INTO Cuentas (Cuenta) VALUES ('Banco')"), {},
                                           QStringLiteral("idCuenta"));
    caja(QDate(2026, 11, 2), QStringLiteral("v1"), QStringLiteral("100"), QStringLiteral("0"));
    caja(QDate(2026, 11, 3), QStringLiteral("g1"), QStringLiteral("0"), QStringLiteral("30.5"));
    caja(QDate(2026, 11, 4), QStringLiteral("v2"), QStringLiteral("10"), QStringLiteral("0"));
    caja(QDate(2026, 11, 5), QStringLiteral("dep"), QStringLiteral("0"), QStringLiteral("7"), banco);
    const QString ruta = escribeArchivo(
        dir_.filePath(QStringLiteral("g.rpt")),
        "{{! fuente: SELECT Cuenta, Fecha, Detalles, Ingreso, Egreso, idCaja FROM ConsultaCaja\n"
        "    orden: Cuenta, Fecha, idCaja\n    moneda: Ingreso, Egreso\n    totales: Ingreso, Egreso\n"
        "    grupo: Cuenta\n    saldo: Ingreso, Egreso }}\n"
        "{{#grupos}}[{{grupo}}:{{cantidad}}{{#filas}} {{Detalles}}={{saldo}}{{/filas}}"
        " T={{totales.Ingreso}}/{{totales.Egreso}} S={{saldo}}]{{/grupos}} G={{totales.Ingreso}}/{{totales.Egreso}} N={{cantidad}}");
    const InformeArmado inf = ArmaInforme(almacen(), LeeDefinicion(ruta), Seleccion{}, QStringLiteral("0.00"), kAhora);
    EXPECT_EQ(inf.cuerpo.trimmed().toStdString(), "[Banco:1 dep=-7.00 T=0.00/7.00 S=-7.00]"
                                                  "[Ventas Mostrador:3 v1=100.00 g1=69.50 v2=79.50 T=110.00/30.50 S=79.50]"
                                                  " G=110.00/37.50 N=4");
    // Un campo de grupo que la fuente no tiene es un error de la definición, no un informe vacío.
    const QString mala = escribeArchivo(dir_.filePath(QStringLiteral("m.rpt")),
                                        "{{! fuente: SELECT Cuenta FROM ConsultaCaja\n    grupo: NoEsta }}x");
    EXPECT_THROW(ArmaInforme(almacen(), LeeDefinicion(mala), Seleccion{}, QString(), kAhora), Aviso);
}

TEST_P(Informes, MuchasFilasVariasPaginasYCadaFormatoDeArchivo) {
    Transaccion tr(almacen());
    for (int i = 0; i < 300; ++i)
        caja(QDate(2026, 11, 1 + i % 28), QStringLiteral("Movimiento %1").arg(i, 3, 10, QLatin1Char('0')),
             QStringLiteral("10"), QStringLiteral("0"));
    tr.confirmar();
    int paginas = 0;
    const QString t = pdf(QStringLiteral("listacajasimple.rpt"), noviembre(), QStringLiteral("muchas.pdf"), &paginas);
    EXPECT_GT(paginas, 3);
    EXPECT_EQ(discrepancias(t, {QStringLiteral("Página %1 de %1").arg(paginas), QStringLiteral("Movimiento 000"),
                                QStringLiteral("Movimiento 299"), QStringLiteral("3,000.00")}),
              "");
    for (const char* ext : {"html", "odt", "csv", "xlsx"}) {
        const QString archivo = dir_.filePath(QStringLiteral("salida.") + QString::fromLatin1(ext));
        GuardaInforme(almacen(), definicion(QStringLiteral("listacajasimple.rpt")), noviembre(), QString(), kAhora, archivo);
        EXPECT_GT(QFileInfo(archivo).size(), 100) << ext;
    }
    EXPECT_TRUE(leeArchivo(dir_.filePath(QStringLiteral("salida.html"))).contains(QStringLiteral("Movimiento 150")));
    EXPECT_THROW(GuardaInforme(almacen(), definicion(QStringLiteral("listacajasimple.rpt")), noviembre(), QString(),
                               kAhora, dir_.filePath(QStringLiteral("x.doc"))),
                 Aviso);
}

TEST_P(Informes, CadaDefinicionDelProgramaSaleEnPdfConLosDatosDeEjemplo) {
    cargaDatosEjemplo(almacen(), RelojFijo(kAhora));
    QStringList nombres;
    for (const QString& c : CarpetasDeInformes(QString()))
        for (const QString& f : QDir(c).entryList({QStringLiteral("*.rpt")}, QDir::Files))
            if (!nombres.contains(f) && !f.startsWith(QStringLiteral("factura"))) nombres << f;
    ASSERT_GE(nombres.size(), 3);
    QMap<QString, QString> textos;
    for (const QString& n : nombres) {
        textos[n] = pdf(n, SeleccionUsual(n, QDate(2026, 1, 1), QDate(2026, 12, 31)), n + QStringLiteral(".pdf"));
        EXPECT_FALSE(textos[n].trimmed().isEmpty()) << n.toStdString();
    }
    // La lista de precios trae un artículo; el faltante, los que están bajo el mínimo y ninguno por encima.
    auto valor = [&](const char* sql) { return almacen().valor(QString::fromLatin1(sql)).toString(); };
    const QString bajo = valor("SELECT Codigo FROM Articulos WHERE StockActual < StockMinimo ORDER BY idArticulo");
    const QString sobrado = valor("SELECT Codigo FROM Articulos WHERE StockActual > StockMinimo ORDER BY idArticulo");
    ASSERT_FALSE(bajo.isEmpty());
    EXPECT_EQ(discrepancias(textos[QStringLiteral("listadeprecios.rpt")],
                            {valor("SELECT Descripcion FROM Articulos ORDER BY idArticulo")}),
              "");
    EXPECT_EQ(discrepancias(textos[QStringLiteral("faltante.rpt")], {bajo}, {sobrado + u' '}), "");
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
    a.ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, Descripcion, Cantidad, Unitario, SubTotal) "
                             "VALUES (?, 'Yerba 1 kg', 2, 300, 600), (?, 'Azúcar 1 kg', 4, 100, 400)"),
              {id, id});
    // Otro comprobante que no debe aparecer.
    a.ejecuta(QStringLiteral("INSERT INTO Comprobantes (Factura, Nombre, Total) VALUES ('B0001-00000043', 'Otro', '5')"));
    const QStringList trae = {QStringLiteral("Almacén Don Tito"), QStringLiteral("B0001-00000042"),
                              QStringLiteral("Ana O'Neil"),       QStringLiteral("Yerba 1 kg"),
                              QStringLiteral("Azúcar 1 kg"),      QStringLiteral("1,000.00"),
                              QStringLiteral("mil con 00/100.-"), QStringLiteral("Mitre 1"),
                              QStringLiteral("23/11/2026")};
    // Sólo la factura que discrimina el impuesto lo muestra.
    EXPECT_EQ(discrepancias(pdf(QStringLiteral("factura.rpt"), SeleccionComprobante(id), QStringLiteral("f.pdf")), trae,
                            {QStringLiteral("00000043"), QStringLiteral("173.55")}),
              "");
    EXPECT_EQ(discrepancias(pdf(QStringLiteral("factura_discrimina_iva.rpt"), SeleccionComprobante(id),
                                QStringLiteral("fd.pdf")),
                            trae + QStringList{QStringLiteral("173.55")}, {QStringLiteral("00000043")}),
              "");
}

TEST(BuscaDefinicion, LaCopiaDeLaCarpetaDeDatosMandaSobreLaDelPrograma) {
    QTemporaryDir d;
    ASSERT_TRUE(QDir(d.path()).mkpath(QStringLiteral("reportes")));
    EXPECT_NE(BuscaDefinicion(QStringLiteral("listadeprecios.rpt"), d.path()), QString());
    const QString propia =
        escribeArchivo(d.filePath(QStringLiteral("reportes/listadeprecios.rpt")), "{{! fuente: SELECT 1 AS x }}<p>propia</p>");
    EXPECT_EQ(BuscaDefinicion(QStringLiteral("listadeprecios.rpt"), d.path()), propia);
    EXPECT_EQ(BuscaDefinicion(QStringLiteral("no-existe.rpt"), d.path()), QString());
    EXPECT_THROW(SeleccionUsual(QStringLiteral("no-existe.rpt"), {}, {}), Aviso);
}

ORV_AMBOS_MOTORES(Informes);

} // namespace
} // namespace orv
