// Panel "Estadísticas e informes": cada entrada lanza su informe con el período del panel y el
// sujeto que piden sus pantallas, al destino vigente.

#include "../apoyo_informes.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "reports/ui/lanzadores.h"
#include "reports/ui/pan_print_crystal.h"
#include "reports/ui/pan_rep_sel.h"
#include "reports/ui/panel_informes.h"
#include "reports/ui/salida_informes.h"
#include "reports/ui/visor_informe.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QListWidget>
#include <QPushButton>

namespace orv {
namespace {

using namespace prueba;

// Atiende la próxima pantalla intermedia de tipo T: marca la casilla o la opción y acepta.
template <typename T>
std::function<void()> eligiendo(const char* casilla) {
    return [casilla] {
        alAbrirse<T>([casilla](T* p) {
            p->template findChild<QAbstractButton*>(QString::fromLatin1(casilla))->setChecked(true);
            p->template findChild<QPushButton*>(QStringLiteral("Command1"))->click();
        });
    };
}

class PanelDeInformes : public PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        salida_ = std::make_unique<SalidaInformes>(a(), *conf_, estado_, reloj_, nullptr);
        // Todo a CSV: las filas de la selección, sin formato, para contarlas.
        salida_->fijaDestino(QStringLiteral("2 - A un archivo"), QStringLiteral("1"));
        salida_->eligeArchivo = [this](const QString& titulo) {
            pedidos_ << titulo;
            return QDir(base_->carpeta()).filePath(QStringLiteral("salida%1.csv").arg(pedidos_.size()));
        };
        panel_ = std::make_unique<PanelInformes>(a(), *conf_, *salida_);
        panel_->fijaPeriodo(QDate(2026, 11, 1), QDate(2026, 11, 30));
        for (const auto& [cuenta, mes, dia, det] :
             {std::tuple{1, 11, 5, "venta"}, std::tuple{3, 11, 6, "luz"}, std::tuple{1, 12, 10, "venta dic"}})
            a().ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso) VALUES (?, ?, ?, 10, 0)"),
                        {cuenta, QDate(2026, mes, dia), QString::fromLatin1(det)});
    }
    // Líneas de datos del último CSV (sin el encabezado).
    QStringList ultimoCsv() const {
        const QString ruta = QDir(base_->carpeta()).filePath(QStringLiteral("salida%1.csv").arg(pedidos_.size()));
        return leeArchivo(ruta).split(u'\n', Qt::SkipEmptyParts).mid(1);
    }
    void pulsa(const char* nombre) {
        auto* b = panel_->findChild<QPushButton*>(QString::fromLatin1(nombre));
        ASSERT_NE(b, nullptr) << nombre;
        b->click();
    }

    std::unique_ptr<SalidaInformes> salida_;
    std::unique_ptr<PanelInformes> panel_;
    QStringList pedidos_;
};

TEST_F(PanelDeInformes, CadaEntradaLanzaSuInforme) {
    // El título del informe que salió; las que tienen pantalla intermedia la atienden antes.
    const struct {
        const char* etiqueta;
        std::function<void()> intermedia;
        const char* titulo;
    } entradas[] = {
        {"Label27", {}, "Resumen de ventas por día"},
        {"Label32", {}, "Deuda de clientes"},
        {"Label36", {}, "Ranking de ventas por cliente"},
        {"Label38", {}, "Ranking de artículos vendidos"},
        {"Label40", {}, "Lista de precios"},
        {"Label42", {}, "Inventario valorizado"},
        {"Label44", {}, "Compras"},
        {"label46", {}, "Deuda con proveedores"},
        {"Label25", eligiendo<PanPrinComprobantes>("Option1"), "Comprobantes emitidos"},
        {"Label25", eligiendo<PanPrinComprobantes>("Option2"), "Documentos no comerciales"},
        {"Label30", eligiendo<PanRepSelArt>("Check1"), "Artículos vendidos"},
        {"Label34", eligiendo<PanRepSelVen>("Check1"), "Ventas por cliente"},
    };
    for (const auto& e : entradas) {
        pedidos_.clear();
        if (e.intermedia) e.intermedia();
        pulsa(e.etiqueta);
        EXPECT_EQ(pedidos_, QStringList{QString::fromUtf8(e.titulo)}) << e.etiqueta;
    }
    // Cancelar la pantalla intermedia no lanza nada.
    pedidos_.clear();
    auto cancelada = alAbrirse<PanRepSelArt>([](PanRepSelArt* p) { p->reject(); });
    pulsa("Label30");
    EXPECT_TRUE(cancelada->vista);
    EXPECT_TRUE(pedidos_.isEmpty());
    // El catálogo libre, con todas las definiciones.
    auto catalogo = alAbrirse<PanPrintCrystal>([](PanPrintCrystal* p) {
        EXPECT_GT(p->lista()->count(), 20);
        p->reject();
    });
    pulsa("lblCatalogoInformes");
    EXPECT_TRUE(catalogo->vista);
}

TEST_F(PanelDeInformes, EstadoDeCuentasUsaLaCuentaYLasFechasElegidas) {
    // La pantalla abre con el período del panel; se elige la cuenta 1.
    QDate desdeMostrado;
    auto d = alAbrirse<PanSelCta>([&desdeMostrado](PanSelCta* p) {
        desdeMostrado = p->findChild<QDateEdit*>(QStringLiteral("dt1"))->date();
        auto* c = p->findChild<QComboBox*>(QStringLiteral("Combo1"));
        c->setCurrentIndex(c->findData(1));
        p->findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    });
    pulsa("Label48");
    EXPECT_TRUE(d->vista);
    EXPECT_EQ(desdeMostrado, QDate(2026, 11, 1));
    EXPECT_EQ(pedidos_.last(), QStringLiteral("Estado de cuentas"));
    const QStringList filas = ultimoCsv();
    ASSERT_EQ(filas.size(), 1) << filas.join(u'|').toStdString();
    EXPECT_TRUE(filas[0].contains(QStringLiteral("venta")));
}

TEST_F(PanelDeInformes, ElFaltanteVaALaVentanaYAhiQuedaHastaQueLaListaDePreciosVuelveALaLista) {
    a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, idRubro, StockActual, StockMinimo) "
                               "VALUES ('F1', 'Falta esto', 1, 1, 5), ('S1', 'Sobra esto', 2, 9, 5)"));
    ASSERT_TRUE(InformeFaltante(*salida_, QDate(2026, 11, 23)));
    EXPECT_EQ(salida_->destino(), SalidaInformes::Ventana);
    ASSERT_NE(salida_->ultimoVisor(), nullptr);
    EXPECT_EQ(salida_->ultimoVisor()->informe().filas, 1);
    EXPECT_TRUE(salida_->ultimoVisor()->informe().cuerpo.contains(QStringLiteral("Falta esto")));
    delete salida_->ultimoVisor();
    // Un informe del panel sale también en la ventana...
    pulsa("Label42");
    EXPECT_TRUE(pedidos_.isEmpty());
    ASSERT_NE(salida_->ultimoVisor(), nullptr);
    delete salida_->ultimoVisor();
    // ...hasta que la lista de precios vuelve a tomar el destino de la lista: al archivo, el rubro 2.
    ASSERT_TRUE(InformeListaPrecios(*salida_, 2, true, QDate(2026, 11, 23)));
    EXPECT_EQ(salida_->destino(), SalidaInformes::Archivo);
    const QStringList filas = ultimoCsv();
    ASSERT_EQ(filas.size(), 1);
    EXPECT_TRUE(filas[0].contains(QStringLiteral("Sobra esto")));
    // La caja del día, completa.
    ASSERT_TRUE(InformeCaja(*salida_, QDate(2026, 11, 6), true));
    EXPECT_EQ(pedidos_.last(), QStringLiteral("Caja completa"));
    EXPECT_EQ(ultimoCsv().size(), 1);
}

} // namespace
} // namespace orv
