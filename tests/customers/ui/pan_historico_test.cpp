// El histórico conducido como el usuario: "Histórico" del panel de clientes lo abre con el cliente de
// la fila actual y sus comprobantes de hoy; otro período cambia la grilla y los dos totales; el
// detalle se abre con las líneas del comprobante elegido; sin cliente, "Mostrar" lo pide.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "customers/ui/pan_historico.h"
#include "customers/ui/panel_clientes.h"
#include "reports/ui/salida_informes.h"
#include "sales/ui/pan_comprobantes.h"
#include "widgets/grilla.h"

#include <QtWidgets>

namespace orv {
namespace {

using prueba::hijo;

class PantallaHistorico : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta("INSERT INTO Vendedores (idVendedor, Nombre, idZona) VALUES (501, 'Ana', 1), (502, 'Bruno', 1)");
        a().ejecuta("INSERT INTO TiposDeComprobantes (idTipoComprobante, Tipo, EsComercial, OperacionInversa) VALUES "
                    "(11, 'FACTURA B', 1, 0), (13, 'PRESUPUESTO', 0, 0)");
        a().ejecuta("INSERT INTO Comprobantes (idComprobante, Factura, idTipoComprobante, idVendedor, Fecha, EsComercial, Total) "
                    "VALUES (71, 'B0001-00000071', 11, 501, '2026-11-23', 1, 121), (72, 'X0002-00000003', 13, 501, '2026-11-23', 0, 40), "
                    "(73, 'B0001-00000050', 11, 501, '2026-11-02', 1, 10.5), (74, 'B0001-00000074', 11, 502, '2026-11-23', 1, 999)");
        a().ejecuta("INSERT INTO DetalleComprobantes (idComprobante, Descripcion, Cantidad, Unitario, SubTotal) VALUES "
                    "(71, 'Taza', 2, 50, 100), (71, 'Vela', 1, 21, 21), (72, 'Plato', 1, 40, 40)");
    }
};

QStringList Columna(Grilla* g, const char* campo) {
    QStringList r;
    for (int i = 0; i < g->modelo().rowCount(); ++i) r << g->modelo().registro(i).value(QString::fromLatin1(campo)).toString();
    return r;
}

TEST_F(PantallaHistorico, DesdeElPanelConSusTotalesYElDetalle) {
    PanelClientes panel(a(), estado_, reloj_, *salida_, {});
    panel.carga();
    ASSERT_TRUE(panel.grilla()->irAFila(0)); // Ana, por nombre
    QStringList visto;
    prueba::alAbrirse<PanHistorico>([&](PanHistorico* h) {
        visto << h->filtro().lista->currentText() << Columna(h->grilla(), "Factura") << h->totales();
        h->filtro().desde->setDate(QDate(2026, 11, 1));
        hijo<QPushButton>(h, "btnOk")->click();
        visto << Columna(h->grilla(), "Factura") << h->totales();
        h->grilla()->irAFila(1);
        prueba::alAbrirse<PanDetComprobante>([&](PanDetComprobante* d) {
            visto << Columna(d->grilla(), "Descripcion");
            d->accept();
        });
        hijo<QPushButton>(h, "OsenXPButton1")->click();
        h->accept();
    });
    hijo<QPushButton>(panel, "Command48")->click();
    EXPECT_EQ(visto, (QStringList{"Ana", "B0001-00000071", "X0002-00000003", "121.00", "40.00",
                                  "B0001-00000050", "B0001-00000071", "X0002-00000003", "131.50", "40.00",
                                  "Taza", "Vela"}));
}

TEST_F(PantallaHistorico, SinClienteMostrarLoPideYLosTotalesQuedanEnCero) {
    PanHistorico h(a(), estado_, reloj_, *salida_, std::nullopt);
    h.show();
    prueba::VigiaDeCajas cajas;
    hijo<QPushButton>(h, "btnOk")->click();
    hijo<QPushButton>(h, "OsenXPButton1")->click(); // sin fila: nada
    EXPECT_EQ(cajas.vistas, QStringList{"Seleccione un cliente!"});
    EXPECT_EQ(h.totales(), (QStringList{"0", "0"}));
    EXPECT_EQ(h.grilla()->modelo().rowCount(), 0);
}

} // namespace
} // namespace orv
