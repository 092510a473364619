// La situación en pantalla: las cifras con la máscara de moneda, los dos gráficos con una barra por
// período y por rubro (y el resto de los rubros juntos), la agrupación que vuelve a dibujar, la hoja
// en un PDF de una sola página y los gráficos en PNG.

#include "apoyo/pantalla_prueba.h"
#include "cash/ui/pan_situacion.h"

#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QHorizontalBarSeries>
#include <QPrinter>
#include <QRegularExpression>
#include <QtWidgets>

namespace orv {
namespace {

using prueba::hijo;

class PantallaSituacion : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta("INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso) VALUES "
                    "(1, 0, '2026-10-05', 'VENTA :FACT. a Ana', 1000, 0), (1, 0, '2026-11-20', 'VENTA :FACT. a Ana', 250.5, 0), "
                    "(3, 0, '2026-11-21', 'Luz', 0, 80), (3, 0, '2025-01-01', 'Apertura', 5000, 0)");
        a().ejecuta("INSERT INTO Comisiones (idVendedor, Comision, Liquidacion) VALUES (1, 900, 0), (1, 0, 300)");
        a().ejecuta("INSERT INTO CtaProve (idProveedor, Debe, Haber) VALUES (1, 1200, 0)");
        // Catorce rubros con una venta cada uno: del 1 al 14, de 10 en 10.
        for (int r = 1; r <= 14; ++r) {
            a().ejecuta("INSERT INTO Rubros (idRubro, Rubro) VALUES (?, ?)", {r, QStringLiteral("Rubro %1").arg(r, 2, 10, QLatin1Char('0'))});
            a().ejecuta("INSERT INTO Articulos (idArticulo, idRubro, StockActual, PrecioCosto) VALUES (?, ?, 1, 2)", {r, r});
            a().ejecuta("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Fecha, EsComercial, SubTotal) VALUES (1, ?, '2026-11-20', 1, ?)",
                        {r, 10 * r});
        }
        a().ejecuta("INSERT INTO Comprobantes (idComprobante, Fecha, EsComercial, TipoStock) VALUES (1, '2026-11-20', 1, 0)");
    }
    static QStringList barras(QChartView* v) {
        QStringList r;
        for (QAbstractSeries* s : v->chart()->series())
            for (QBarSet* set : static_cast<QAbstractBarSeries*>(s)->barSets()) {
                QStringList valores;
                for (int i = 0; i < set->count(); ++i) valores << QString::number(set->at(i));
                r << set->label() + QLatin1Char(':') + valores.join(u',');
            }
        return r;
    }
};

TEST_F(PantallaSituacion, CifrasGraficosPdfYPng) {
    PanSituacion p(a(), estado_, QDate(2026, 10, 1), QDate(2026, 11, 30));
    p.show();
    QStringList cifras;
    for (const char* n : {"lblDisCaja", "lblUtilBruta", "lblDeuCli", "lblDeuPro"}) cifras << hijo<QLabel>(p, n)->text();
    EXPECT_EQ(cifras, (QStringList{"6,170.50", "28.00", "Deuda de Clientes : 600.00", "Deuda con proveedores : 1,200.00"}));
    auto* movimientos = hijo<QChartView>(p, "MSChart1");
    auto* rubros = hijo<QChartView>(p, "MSChart3");
    EXPECT_EQ(barras(movimientos), (QStringList{"Volúmenes de Ingresos:1000,250.5,0", "Volúmenes de Gastos:0,0,80"}));
    // Los doce mayores, de abajo hacia arriba, y arriba de todo los dos menores juntos (10 + 20).
    EXPECT_EQ(barras(rubros), (QStringList{"Venta por Rubro:30,30,40,50,60,70,80,90,100,110,120,130,140"}));

    p.agrupacion()->setCurrentText(QStringLiteral("Mensual"));
    EXPECT_EQ(barras(movimientos), (QStringList{"Volúmenes de Ingresos:1000,250.5", "Volúmenes de Gastos:0,80"}));

    const QString pdf = base_->carpeta() + QStringLiteral("/situacion.pdf");
    QPrinter impresora(QPrinter::HighResolution);
    impresora.setOutputFormat(QPrinter::PdfFormat);
    impresora.setPageOrientation(QPageLayout::Landscape);
    impresora.setOutputFileName(pdf);
    p.imprimeEn(impresora);
    QFile f(pdf);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromLatin1(f.readAll()).count(QRegularExpression(QStringLiteral("/Type\\s*/Page[^s]"))), 1);

    const QStringList png = p.guardaGraficos(base_->carpeta());
    ASSERT_EQ(png.size(), 2);
    for (const QString& archivo : png) {
        const QImage imagen(archivo);
        EXPECT_EQ(imagen.size(), hijo<QChartView>(p, archivo.contains("rubro") ? "MSChart3" : "MSChart1")->size() * 2) << archivo.toStdString();
        // El gráfico entero, agrandado: abajo a la izquierda están las letras oscuras de los ejes.
        int oscuros = 0;
        for (int y = imagen.height() / 2; y < imagen.height(); ++y)
            for (int x = 0; x < imagen.width() / 6; ++x) oscuros += imagen.pixelColor(x, y).lightness() < 110;
        EXPECT_GT(oscuros, 50) << archivo.toStdString();
    }
}

} // namespace
} // namespace orv
