// Las pantallas de comisiones y de puntos conducidas como el usuario: la liquidación que pide cuenta
// y forma de pago con la caja y deja la diferencia en cero; el premio que no alcanza, que se dice y
// se deja de elegir, y el que se cobra.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "customers/ui/pan_cobra_premio.h"
#include "customers/ui/pan_comisiones.h"
#include "customers/ui/pan_liq.h"
#include "customers/ui/pan_puntaje_vip_cliente.h"
#include "reports/ui/salida_informes.h"
#include "widgets/grilla.h"

#include <QtWidgets>

namespace orv {
namespace {

using prueba::Filas;
using prueba::hijo;

class PantallasPuntosComisiones : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta("INSERT INTO Usuarios (idUsuario, NombreCompleto, NombreUsuario, Comision) VALUES (7, 'Carla', 'carla', 2.5)");
        a().ejecuta("INSERT INTO DetComisiones (Fecha, Detalle, idUsuario, idComprobante, Porcentaje, Importe) VALUES "
                    "('2026-11-20', 'Comision x Vta', 7, 0, 2.5, 25.125), ('2026-10-01', 'Comision x Vta', 7, 0, 2.5, 99)");
        a().ejecuta("INSERT INTO Vendedores (idVendedor, Nombre, NroClienteVIP, PuntosVIP) VALUES (501, 'Ana', '123456', 100), "
                    "(502, 'Bruno', '654321', 5), (503, 'Sin tarjeta', '', 50)");
        a().ejecuta("INSERT INTO Articulos (idArticulo, Codigo, Descripcion) VALUES (102, 'B1', 'Taza'), (103, 'V1', 'Vela')");
        a().ejecuta("INSERT INTO TablaVIP (idArticulo, Cantidad, VigenciaDESDE, VigenciaHASTA, PuntosRequeridos) VALUES "
                    "(102, 1, '2026-11-01', '2026-11-30', 80), (103, 1, '2026-11-01', '2026-11-22', 1)");
    }
};

TEST_F(PantallasPuntosComisiones, LaLiquidacionPideCuentaConCajaYDejaLaDiferenciaEnCero) {
    PanComisiones pantalla(a(), estado_, reloj_, *salida_, 7);
    pantalla.show();
    EXPECT_EQ(pantalla.totales(), (QStringList{"$25.13", "$0.00", "$25.13"})); // los últimos 30 días
    EXPECT_EQ(pantalla.grilla()->modelo().rowCount(), 1);
    prueba::VigiaDeCajas cajas;
    QStringList visto;
    prueba::alAbrirse<PanLiq>([&](PanLiq* liq) {
        auto* aPagar = hijo<QLineEdit>(liq, "txAPagar");
        auto* cuenta = hijo<QComboBox>(liq, "cboCuenta");
        visto << aPagar->text() << QString::number(cuenta->isEnabled());
        hijo<QCheckBox>(liq, "chkCaja")->click();
        hijo<QPushButton>(liq, "Command1")->click(); // sin cuenta ni forma de pago: no cierra
        visto << QString::number(cuenta->isEnabled()) << QString::number(liq->isVisible());
        cuenta->setCurrentIndex(cuenta->findText("Retiros"));
        hijo<QComboBox>(liq, "cboFPago")->setCurrentIndex(0);
        hijo<QPushButton>(liq, "Command1")->click();
    });
    hijo<QPushButton>(pantalla, "OsenXPButton1")->click();
    EXPECT_EQ(visto, (QStringList{"25.125", "0", "1", "1"}));
    EXPECT_EQ(cajas.vistas, QStringList{"Error, debe seleccionar una cuenta y una forma de pago!"});
    EXPECT_EQ(pantalla.totales(), (QStringList{"$25.13", "$25.13", "$0.00"}));
    EXPECT_EQ(Filas(a(), "SELECT c.Cuenta, k.Fecha, k.Detalles, k.Egreso, k.FormaPago FROM Caja k JOIN Cuentas c ON c.idCuenta = k.idCuenta"),
              QStringList{"Retiros|2026-11-23|Liq.Comisiones a Carla|25.125|EFVO"});
}

TEST_F(PantallasPuntosComisiones, ElPremioQueNoAlcanzaSeDiceYElQueAlcanzaSeCobra) {
    const struct {
        qint64 cliente;
        QStringList mensajes;
        QStringList diario;
    } casos[] = {
        {502, {"Error, no puede cobrar este premio puesto que posee 5 puntos acumulados y requiere al menos 80", "Seleccione un premio!"}, {}},
        {501, {}, {"501|2026-11-23|1|0|-80"}},
    };
    for (const auto& c : casos) {
        PanPuntajeVipCliente puntos(a(), estado_, reloj_, c.cliente);
        puntos.show();
        prueba::VigiaDeCajas cajas;
        QStringList ofrecidos;
        prueba::alAbrirse<PanCobraPremio>([&](PanCobraPremio* cobro) {
            for (int i = 0; i < cobro->premios()->count(); ++i) ofrecidos << cobro->premios()->itemText(i);
            cobro->premios()->setCurrentIndex(0);
            Q_EMIT cobro->premios()->activated(0);
            hijo<QPushButton>(cobro, "Command1")->click();
            if (cobro->isVisible()) cobro->reject();
        });
        hijo<QPushButton>(puntos, "OsenXPButton1")->click();
        EXPECT_EQ(ofrecidos, QStringList{"Taza"}); // la vela venció ayer
        EXPECT_EQ(cajas.vistas, c.mensajes) << c.cliente;
        EXPECT_EQ(Filas(a(), "SELECT idCliente, Fecha, idUsuario, idComprobante, PuntosVIP FROM Vip"), c.diario) << c.cliente;
        EXPECT_EQ(puntos.totales(), c.diario.isEmpty() ? (QStringList{"0", "0", "0"}) : (QStringList{"0", "80", "-80"}));
    }
    // Sólo los clientes con tarjeta se pueden elegir.
    PanPuntajeVipCliente sinTarjeta(a(), estado_, reloj_, 503);
    auto* lista = hijo<QComboBox>(sinTarjeta, "cboVendedores");
    EXPECT_EQ(QStringList({QString::number(lista->count()), QString::number(lista->currentIndex())}), (QStringList{"2", "-1"}));
}

} // namespace
} // namespace orv
