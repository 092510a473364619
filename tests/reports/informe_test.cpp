// Motor de informes: definiciones, selección con parámetros ligados, grupos, totales y saldos,
// escape de HTML, páginas y archivos de salida (el texto del PDF se lee con pdftotext); el dibujo
// directo de tablas simples, qué HTML entiende y su reparto en páginas con el encabezado repetido.

#include "apoyo/base_prueba.h"
#include "apoyo_informes.h"
#include "maintenance/datos_ejemplo.h"
#include "reports/catalogo.h"
#include "reports/informe.h"
#include "reports/tablas.h"
#include "store/actualizacion.h"
#include "store/reloj.h"

#include <QDir>
#include <QFileInfo>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <cmath>

namespace orv {
namespace {

using namespace prueba;

const QDateTime kAhora(QDate(2026, 11, 23), QTime(10, 30));

TEST(DefinicionInforme, CabeceraYErrores) {
    QTemporaryDir d;
    const DefinicionInforme def = LeeDefinicion(escribeArchivo(
        d.filePath("x.rpt"), "{{! fuente: SELECT a,\n            b FROM T\n    titulo: Título con eñe\n    orden: a DESC\n"
                             "    moneda: b, c\n    totales: b\n    orientacion: horizontal\n    pagina: Oficio }}\n<p>{{titulo}}</p>"));
    EXPECT_EQ(QStringList({def.fuente, def.titulo, def.orden, def.moneda.join(u'/'), def.totales.join(u'/'), def.plantilla.trimmed()}),
              QStringList({"SELECT a, b FROM T", "Título con eñe", "a DESC", "b/c", "b", "<p>{{titulo}}</p>"}));
    EXPECT_TRUE(def.horizontal && def.pagina == QPageSize::Legal);
    for (const QString& malo : {escribeArchivo(d.filePath("sinfuente.rpt"), "{{! titulo: x }}<p></p>"),
                                escribeArchivo(d.filePath("sincabecera.rpt"), "<p>hola</p>"), d.filePath("no-esta.rpt")})
        EXPECT_EQ(AvisoDe([&] { LeeDefinicion(malo); }), "Error en la lectura de la plantilla : " + malo);
    EXPECT_THROW(SeleccionUsual("no-existe.rpt", {}, {}), Aviso);
}

class Informes : public PorMotorAlDia {
protected:
    void caja(int mes, int dia, const QString& detalle, const QString& ingreso, const QString& egreso, qint64 cuenta = 1) {
        almacen().ejecuta("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago) VALUES (?, ?, ?, ?, ?, 'EFVO')",
                          {cuenta, QDate(2026, mes, dia), detalle, ingreso, egreso});
    }
    static DefinicionInforme definicion(const QString& nombre) { return LeeDefinicion(BuscaDefinicion(nombre, {})); }
    static Seleccion noviembre() { return SeleccionUsual("listacajasimple.rpt", {2026, 11, 1}, {2026, 11, 30}); }
    // Guarda el informe en un PDF y devuelve su texto.
    QString pdf(const QString& rpt, const Seleccion& s) {
        const QString ruta = dir_.filePath(rpt + ".pdf");
        GuardaInforme(almacen(), definicion(rpt), s, "###,###,##0.00", kAhora, ruta);
        return textoDePdf(ruta);
    }
    QTemporaryDir dir_;
};

TEST_P(Informes, SeleccionPorPeriodoTotalesEscapeYPdf) {
    caja(10, 31, "fuera del período", "999", "0");
    caja(11, 1, "Venta a O'Brien <b>", "1234.5", "0");
    caja(11, 30, "Pago luz & gas", "0", "200.25");
    caja(12, 1, "también fuera", "5", "0");
    const InformeArmado inf = ArmaInforme(almacen(), definicion("listacajasimple.rpt"), noviembre(), "###,###,##0.00", kAhora);
    EXPECT_EQ(inf.filas, 2);
    EXPECT_EQ(inf.titulo + u'|' + inf.periodo, "Movimientos de caja|Del 01/11/2026 al 30/11/2026");
    EXPECT_EQ(discrepancias(inf.cuerpo, {"1,234.50", "200.25", "01/11/2026", "&lt;b&gt;", "&amp; gas", "(2 movimientos)"}, {"fuera", "<b>"}),
              "");
    // En el PDF el texto escapado se lee tal cual y el pie lleva la hora del reloj (el resto del PDF lo
    // comparan entero los informes esperados).
    EXPECT_EQ(discrepancias(pdf("listacajasimple.rpt", noviembre()), {"Venta a O'Brien <b>", "Emitido el 23/11/2026 10:30"}), "");
}

TEST_P(Informes, GruposConTotalesYSaldoAcumuladoQueVuelveACeroEnCadaGrupo) {
    const qint64 banco = almacen().inserta("INSERT INTO Cuentas (Cuenta) VALUES ('Banco')", {}, "idCuenta");
    caja(11, 2, "v1", "100", "0");
    caja(11, 3, "g1", "0", "30.5");
    caja(11, 4, "v2", "10", "0");
    caja(11, 5, "dep", "0", "7", banco);
    const QString ruta = escribeArchivo(
        dir_.filePath("g.rpt"), "{{! fuente: SELECT Cuenta, Fecha, Detalles, Ingreso, Egreso, idCaja FROM ConsultaCaja\n"
                                "    orden: Cuenta, Fecha, idCaja\n    moneda: Ingreso, Egreso\n    totales: Ingreso, Egreso\n"
                                "    grupo: Cuenta\n    saldo: Ingreso, Egreso }}\n{{#grupos}}[{{grupo}}:{{cantidad}} fila{{^uno}}s{{/uno}}{{#filas}} "
                                "{{Detalles}}={{saldo}}{{/filas}} T={{totales.Ingreso}}/{{totales.Egreso}} S={{saldo}}]{{/grupos}}"
                                " G={{totales.Ingreso}}/{{totales.Egreso}} N={{cantidad}}");
    EXPECT_EQ(ArmaInforme(almacen(), LeeDefinicion(ruta), Seleccion{}, "0.00", kAhora).cuerpo.trimmed(),
              "[Banco:1 fila dep=-7.00 T=0.00/7.00 S=-7.00][Ventas Mostrador:3 filas v1=100.00 g1=69.50 v2=79.50 T=110.00/30.50 S=79.50]"
              " G=110.00/37.50 N=4");
    // Un campo de grupo que la fuente no tiene es un error de la definición, no un informe vacío.
    const QString mala = escribeArchivo(dir_.filePath("m.rpt"), "{{! fuente: SELECT Cuenta FROM ConsultaCaja\n    grupo: NoEsta }}x");
    EXPECT_THROW(ArmaInforme(almacen(), LeeDefinicion(mala), Seleccion{}, QString(), kAhora), Aviso);
}

// El archivo sale con el formato de su extensión (el reparto en páginas lo prueban las tablas simples).
TEST_P(Informes, CadaFormatoDeArchivoPorSuExtension) {
    caja(11, 5, "Movimiento del día 5", "10", "0");
    for (const QString ext : {"html", "odt", "csv", "xlsx"}) {
        GuardaInforme(almacen(), definicion("listacajasimple.rpt"), noviembre(), QString(), kAhora, dir_.filePath("salida." + ext));
        EXPECT_GT(QFileInfo(dir_.filePath("salida." + ext)).size(), 100) << ext.toStdString();
    }
    EXPECT_TRUE(leeArchivo(dir_.filePath("salida.html")).contains("Movimiento del día 5"));
    EXPECT_THROW(GuardaInforme(almacen(), definicion("listacajasimple.rpt"), noviembre(), {}, kAhora, dir_.filePath("x.doc")), Aviso);
}

TEST_P(Informes, CadaDefinicionDelProgramaSaleEnPdfConLosDatosDeEjemplo) {
    cargaDatosEjemplo(almacen(), RelojFijo(kAhora));
    QSet<QString> vistos;
    for (const QString& c : CarpetasDeInformes(QString()))
        for (const QString& n : QDir(c).entryList({"*.rpt"}, QDir::Files))
            if (!vistos.contains(n) && !n.startsWith("factura")) {
                vistos.insert(n);
                // Cada página nombra al negocio de ejemplo (un recibo que no se encontró no tiene emisor).
                const QString t = pdf(n, SeleccionUsual(n, {2026, 1, 1}, {2026, 12, 31}));
                EXPECT_TRUE(t.contains("Almacén y Despensa Don") || t.contains("No se encontró")) << n.toStdString();
            }
    EXPECT_GE(vistos.size(), 3);
}

TEST_P(Informes, ComprobantesConSusLineasTotalesYImporteEnLetras) {
    Almacen& a = almacen();
    a.ejecuta("INSERT INTO Empresa (NombreEmpresa, Direccion, CgoPostal, Cuit, CondicionIva, InicioActividades) VALUES "
              "('Almacén Don Tito', 'San Martín 1450', 'S2000', '30-71234567-1', 'IVA Responsable Inscripto', ?)",
              {QDate(2009, 3, 2)});
    a.ejecuta("INSERT INTO Vendedores (idVendedor, Nombre, Domicilio, Localidad) VALUES (77, 'Ana O''Neil', 'Mitre 1', 'Rosario')");
    const qint64 id = a.inserta("INSERT INTO Comprobantes (Factura, idTipoComprobante, idVendedor, idTipoIva, Fecha, Nombre, Cuit, "
                                "FormaPago, SubTotal, MontDescuento, ImporteNeto, PorcentajeIVA, ImporteIVA, Total, ImpresoFiscal, "
                                "EsComercial) VALUES ('B0001-00000042', 1, 77, 1, ?, 'Ana O''Neil', '20-12345678-6', 'EFVO', '1000', "
                                "'0', '826.45', 21, '173.55', '1000', 'S', 1)",
                                {QDate(2026, 11, 23)}, "idComprobante");
    a.ejecuta("INSERT INTO DetalleComprobantes (idComprobante, Descripcion, Cantidad, Unitario, SubTotal) "
              "VALUES (?, 'Fideos finos 500 g', 2, 300, 600), (?, 'Azúcar 1 kg', 4, 100, 400)",
              {id, id});
    const qint64 presupuesto =
        a.inserta("INSERT INTO Comprobantes (Factura, Nombre, Total, EsComercial) VALUES ('X0001-00000043', 'Otro', '5', 0)", {},
                  "idComprobante"); // no debe aparecer en la factura
    // El negocio que emite con sus datos fiscales; el CUIT del cliente, rotulado como suyo.
    const QStringList trae = {"Almacén Don Tito", "B0001-00000042", "Ana O'Neil", "Fideos finos 500 g", "Azúcar 1 kg",
                              "1,000.00", "mil con 00/100.-", "Mitre 1", "23/11/2026", "San Martín 1450 (S2000)",
                              "CUIT: 30-71234567-1", "IVA Responsable Inscripto", "Inicio de actividades: 02/03/2009",
                              "CUIT del cliente:", "20-12345678-6"};
    // Sólo la factura que discrimina el impuesto lo muestra.
    EXPECT_EQ(discrepancias(pdf("factura.rpt", SeleccionComprobante(id)), trae, {"00000043", "173.55", "no válido"}), "");
    // Lo que no es comercial (un presupuesto, un remito) lo dice.
    EXPECT_EQ(discrepancias(pdf("factura.rpt", SeleccionComprobante(presupuesto)), {"X0001-00000043", "Documento no válido como factura"}),
              "");
    EXPECT_EQ(discrepancias(pdf("factura_discrimina_iva.rpt", SeleccionComprobante(id)), trae + QStringList{"173.55"}, {"00000043"}), "");
    // El recibo: el emisor, quien paga con su CUIT rotulado, y el importe en letras con un solo punto.
    const qint64 recibo = a.inserta("INSERT INTO Comisiones (idVendedor, Fecha, Tipo, Comision, Liquidacion) "
                                    "VALUES (77, ?, 'Pago a cuenta', 0, 1000)", {QDate(2026, 11, 24)}, "idCuentaVendedor");
    const QString t = pdf("comprobantecomisiones.rpt", SeleccionLiquidacionComision(recibo)).simplified();
    EXPECT_EQ(discrepancias(t, {"Almacén Don Tito", "CUIT: 30-71234567-1", "RECIBO", "Recibimos de: Ana O'Neil",
                                "La suma de pesos mil con 00/100.-", "24/11/2026"},
                            {"100.-.", "Recibo de cobranza"}),
              "");
}

TEST(TablasSimples, CadaColumnaConservaSuPalabraMasLargaAntesDeAchicarOtras) {
    const struct {
        QVector<qreal> natural, minimo;
        qreal ancho;
        QVector<qreal> esperado;
    } casos[] = {
        {{10, 30}, {10, 10}, 80, {20, 60}},                  // sobra: en proporción
        {{100, 50, 30}, {20, 50, 30}, 130, {50, 50, 30}},    // falta: cede sólo la de texto
        {{100, 100}, {20, 60}, 120, {46, 73}},               // cede cada una lo que puede partir
        {{100, 100}, {60, 90}, 100, {40, 60}},               // ni las palabras caben: desde el mínimo
    };
    for (const auto& c : casos) {
        QVector<qreal> r = repartoDeAnchos(c.natural, c.minimo, c.ancho);
        for (qreal& w : r) w = std::floor(w);
        EXPECT_EQ(r, c.esperado) << c.ancho;
    }
}


ORV_AMBOS_MOTORES(Informes);

TEST(TablasSimples, EntiendeElHtmlDeLasListasYDejaLoDemas) {
    const auto b = AnalizaCuerpoSimple(QStringLiteral(
        "<table width=\"100%\" cellpadding=\"3\"><thead><tr style=\"background-color: #243447; color: #ffffff; font-weight: bold;\">"
        "<th align=\"left\">Código</th><th align=\"right\">Importe</th></tr></thead>\n"
        "<tr style=\"background-color: #eef2f6;\"><td>O&apos;Brien &amp; hijos &lt;sa&gt;</td><td align=\"right\"><b>1,234.50</b></td></tr>"
        "<tr style=\"border-top: 1px solid #243447;\"><td colspan=\"2\">Dos\n   l&iacute;neas&mdash;<br>aqu&#237; &euro;&#x41;</td></tr></table>"
        "<p align=\"right\"><i>Nada   más.</i></p>"));
    ASSERT_TRUE(b && b->size() == 2 && (*b)[0].esTabla && (*b)[0].filas.size() == 3);
    const auto& f = (*b)[0].filas;
    const auto& p = (*b)[1].parrafo;
    // Los textos sin marcas ni espacios de más; el encabezado en negrita con su tinta, el fondo de una fila, la
    // negrita y la alineación de una celda, la línea de arriba y las columnas que ocupa; el párrafo y su estilo.
    EXPECT_EQ(QStringList({f[1].celdas[0].texto, f[2].celdas[0].texto, p.texto}), QStringList({"O'Brien & hijos <sa>", "Dos líneas—\naquí €A", "Nada más."}));
    EXPECT_TRUE(f[0].encabezado && f[0].negrita && f[0].tinta == QColor(0xff, 0xff, 0xff) && f[0].celdas[1].alineacion == Qt::AlignRight);
    EXPECT_TRUE(!f[1].encabezado && f[1].fondo == QColor(0xee, 0xf2, 0xf6) && f[1].celdas[1].negrita);
    EXPECT_TRUE(f[2].lineaArriba && f[2].celdas[0].columnas == 2);
    EXPECT_TRUE(!(*b)[1].esTabla && p.cursiva && p.alineacion == Qt::AlignRight);

    // Lo que no está en la lista va al maquetado general.
    for (const char* otro : {"<div>x</div>", "<table><tr><td><table></table></td></tr></table>", "texto suelto",
                             "<table><tr><td style=\"color: red\">x</td></tr></table>", "<p><span>x</span></p>",
                             "<table><tr><td>sin cerrar</td></tr>", "<img src=\"logo.png\">"})
        EXPECT_FALSE(AnalizaCuerpoSimple(QString::fromUtf8(otro)).has_value()) << otro;
}

TEST(TablasSimples, MuchasFilasEnVariasPaginasConElEncabezadoEnCadaUna) {
    QString html = "<table><thead><tr><th>Columna uno</th><th>Columna dos</th></tr></thead>";
    for (int i = 1; i <= 300; ++i) {
        if (i % 50 == 1) html += QStringLiteral("<tr><td colspan=\"2\">Grupo %1</td></tr>").arg(i / 50 + 1);
        html += QStringLiteral("<tr><td>fila %1</td><td align=\"right\">%2.00</td></tr>").arg(i).arg(i * 3);
        // Grupos cortos de largo variable: alguno de sus totales cae justo en un salto de página.
        if (i % 7 == 0 || i % 11 == 0)
            html += QStringLiteral("<tr style=\"font-weight: bold;\"><td>Total hasta %1</td><td>x</td></tr>").arg(i);
    }
    html += "</table>";
    InformeArmado inf;
    inf.titulo = "Prueba";
    inf.cuerpo = html;
    QTemporaryDir d;
    const QString pdf = d.filePath("t.pdf");
    int paginas = 0;
    {
        QPdfWriter w(pdf);
        w.setResolution(300);
        paginas = PintaInforme(inf, w);
    }
    ASSERT_GT(paginas, 3);
    const QStringList hojas = textoDePdf(pdf).split(u'\f', Qt::SkipEmptyParts);
    ASSERT_GE(hojas.size(), paginas);
    int filas = 0;
    for (int n = 0; n < paginas; ++n) {
        const QString& h = hojas[n];
        EXPECT_TRUE(h.contains("Columna uno")) << "página " << n + 1;
        EXPECT_TRUE(h.contains(QStringLiteral("Página %1 de %2").arg(n + 1).arg(paginas)));
        filas += int(h.count("fila "));
        // Un título de grupo nunca es la última línea de una página.
        QStringList lineas = h.split(u'\n', Qt::SkipEmptyParts);
        while (!lineas.isEmpty() && (lineas.last().contains("Página") || lineas.last().trimmed().isEmpty()))
            lineas.removeLast();
        ASSERT_FALSE(lineas.isEmpty());
        EXPECT_FALSE(lineas.last().contains("Grupo")) << "página " << n + 1;
        // Y unos totales nunca son lo primero de una página, debajo del encabezado de la tabla.
        const qsizetype encabezado = lineas.indexOf(QRegularExpression(".*Columna uno.*"));
        ASSERT_GE(encabezado, 0);
        ASSERT_LT(encabezado + 1, lineas.size());
        EXPECT_FALSE(lineas[encabezado + 1].contains("Total")) << "página " << n + 1;
    }
    EXPECT_EQ(filas, 300) << "cada fila una vez, ninguna cortada ni repetida";
    EXPECT_TRUE(hojas[paginas - 1].contains("900.00"));
}

} // namespace
} // namespace orv
