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
            p->template findChild<QPushButton*>("Command1")->click();
        });
    };
}

class PanelDeInformes : public PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        salida_ = std::make_unique<SalidaInformes>(a(), *conf_, estado_, reloj_, nullptr);
        // Todo a CSV: las filas de la selección, sin formato, para contarlas.
        salida_->fijaDestino("2 - A un archivo", "1");
        salida_->eligeArchivo = [this](const QString& titulo) {
            pedidos_ << titulo;
            return QDir(base_->carpeta()).filePath("salida.csv");
        };
        panel_ = std::make_unique<PanelInformes>(a(), *conf_, *salida_);
        panel_->fijaPeriodo(QDate(2026, 11, 1), QDate(2026, 11, 30));
        a().ejecuta("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso) VALUES (1, ?, 'venta', 10, 0), "
                    "(3, ?, 'luz', 10, 0), (1, ?, 'venta dic', 10, 0)",
                    {QDate(2026, 11, 5), QDate(2026, 11, 6), QDate(2026, 12, 10)});
    }
    // Líneas de datos del último CSV (sin el encabezado).
    QStringList ultimoCsv() const {
        return leeArchivo(QDir(base_->carpeta()).filePath("salida.csv")).split(u'\n', Qt::SkipEmptyParts).mid(1);
    }
    void pulsa(const char* nombre) { panel_->findChild<QPushButton*>(QString::fromLatin1(nombre))->click(); }

    std::unique_ptr<SalidaInformes> salida_;
    std::unique_ptr<PanelInformes> panel_;
    QStringList pedidos_;
};

TEST_F(PanelDeInformes, CadaEntradaLanzaSuInformeConElSujetoDeSuPantalla) {
    // El estado de cuentas abre con el período del panel; se elige la cuenta 1.
    QDate desdeMostrado;
    auto cuenta = [&desdeMostrado] {
        alAbrirse<PanSelCta>([&desdeMostrado](PanSelCta* p) {
            desdeMostrado = p->findChild<QDateEdit*>("dt1")->date();
            p->findChild<QComboBox*>("Combo1")->setCurrentIndex(p->findChild<QComboBox*>("Combo1")->findData(1));
            p->findChild<QPushButton*>("Command1")->click();
        });
    };
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
        {"Label48", cuenta, "Estado de cuentas"},
    };
    for (const auto& e : entradas) {
        pedidos_.clear();
        if (e.intermedia) e.intermedia();
        pulsa(e.etiqueta);
        EXPECT_EQ(pedidos_, QStringList{QString::fromUtf8(e.titulo)}) << e.etiqueta;
    }
    EXPECT_EQ(desdeMostrado, QDate(2026, 11, 1));
    ASSERT_EQ(ultimoCsv().size(), 1) << ultimoCsv().join(u'|').toStdString(); // la venta de la cuenta 1 en el período
    EXPECT_TRUE(ultimoCsv()[0].contains("venta"));

    // Cancelar la pantalla intermedia no lanza nada; el catálogo libre trae todas las definiciones.
    pedidos_.clear();
    auto cancelada = alAbrirse<PanRepSelArt>([](PanRepSelArt* p) { p->reject(); });
    pulsa("Label30");
    EXPECT_TRUE(cancelada->vista);
    EXPECT_TRUE(pedidos_.isEmpty());
    auto catalogo = alAbrirse<PanPrintCrystal>([](PanPrintCrystal* p) {
        EXPECT_GT(p->lista()->count(), 20);
        p->reject();
    });
    pulsa("lblCatalogoInformes");
    EXPECT_TRUE(catalogo->vista);
}

TEST_F(PanelDeInformes, ElFaltanteVaALaVentanaYAhiQuedaHastaQueLaListaDePreciosVuelveALaLista) {
    a().ejecuta("INSERT INTO Articulos (Codigo, Descripcion, idRubro, StockActual, StockMinimo) "
                "VALUES ('F1', 'Falta esto', 1, 1, 5), ('S1', 'Sobra esto', 2, 9, 5)");
    ASSERT_TRUE(InformeFaltante(*salida_, QDate(2026, 11, 23)));
    EXPECT_EQ(salida_->destino(), SalidaInformes::Ventana);
    ASSERT_NE(salida_->ultimoVisor(), nullptr);
    EXPECT_EQ(salida_->ultimoVisor()->informe().filas, 1);
    EXPECT_TRUE(salida_->ultimoVisor()->informe().cuerpo.contains("Falta esto"));
    delete salida_->ultimoVisor();
    // Un informe del panel sale también en la ventana...
    pulsa("Label42");
    EXPECT_TRUE(pedidos_.isEmpty());
    ASSERT_NE(salida_->ultimoVisor(), nullptr);
    delete salida_->ultimoVisor();
    // ...hasta que la lista de precios vuelve a tomar el destino de la lista: al archivo, el rubro 2.
    ASSERT_TRUE(InformeListaPrecios(*salida_, 2, true, QDate(2026, 11, 23)));
    EXPECT_EQ(salida_->destino(), SalidaInformes::Archivo);
    ASSERT_EQ(ultimoCsv().size(), 1);
    EXPECT_TRUE(ultimoCsv()[0].contains("Sobra esto"));
    // La caja del día, completa.
    ASSERT_TRUE(InformeCaja(*salida_, QDate(2026, 11, 6), true));
    EXPECT_EQ(pedidos_.last(), "Caja completa");
    EXPECT_EQ(ultimoCsv().size(), 1);
}

} // namespace
} // namespace orv
