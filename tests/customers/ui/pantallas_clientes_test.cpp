// Las pantallas de clientes conducidas como el usuario: la cobranza que se apaga y se cierra sola a
// los 4500 ms (o que se rechaza y queda como estaba), el saldo de la cuenta que sigue a un débito a
// mano, y la pregunta del borrado que dice la deuda.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "customers/cuenta.h"
#include "customers/ui/pan_liq_comision.h"
#include "customers/ui/pan_nue_comision.h"
#include "customers/ui/pan_ve_comisiones.h"
#include "customers/ui/panel_clientes.h"
#include "reports/ui/salida_informes.h"
#include "widgets/grilla.h"

#include <QTest>
#include <QtWidgets>

namespace orv {
namespace {

using prueba::Filas;
using prueba::hijo;

const QString kLineas = QStringLiteral("SELECT idVendedor, Tipo, Comision, Liquidacion FROM Comisiones ORDER BY idCuentaVendedor");

class PantallasClientes : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta("INSERT INTO Vendedores (idVendedor, Nombre, idZona) VALUES (501, 'Ana', 1), (502, 'Bruno', 1)");
    }
};

TEST_F(PantallasClientes, LaCobranzaSeApagaYSeCierraSolaOQuedaComoEstaba) {
    // "abc": el mensaje, nada escrito y la pantalla lista para corregir.
    PanLiqComision mal(a(), estado_, reloj_, *salida_, 501);
    mal.show();
    hijo<QLineEdit>(mal, "Text2")->setText("abc");
    auto caja = prueba::respondeCaja("Aceptar");
    hijo<QPushButton>(mal, "Command1")->click();
    EXPECT_TRUE(caja->vista);
    EXPECT_EQ(QStringList({caja->texto, QString::number(hijo<QPushButton>(mal, "Command1")->isEnabled()),
                           QString::number(mal.temporizador()->isActive())}),
              (QStringList{"Importe: el número está mal escrito. Use el punto para los decimales (1234.50).", "1", "0"}));
    EXPECT_TRUE(Filas(a(), kLineas).isEmpty());

    PanLiqComision bien(a(), estado_, reloj_, *salida_, 501);
    bien.show();
    EXPECT_EQ(hijo<QLabel>(bien, "Label4")->text(), "Asentar Cobranza a Ana");
    hijo<QLineEdit>(bien, "Text2")->setText("1,234.56");
    hijo<QPushButton>(bien, "Command1")->click();
    EXPECT_EQ(QStringList({QString::number(hijo<QPushButton>(bien, "Command1")->isEnabled()),
                           QString::number(hijo<QPushButton>(bien, "Command2")->isDefault()),
                           QString::number(bien.temporizador()->isActive()), QString::number(bien.temporizador()->interval()),
                           hijo<QLabel>(bien, "lblRegistrada")->text()}),
              (QStringList{"0", "1", "1", "4500", QStringLiteral("Cobranza registrada: recibo Nº %1.").arg(*bien.recibo())}));
    EXPECT_EQ(Filas(a(), kLineas), QStringList{"501|PAGO|0|1234.56"});
    EXPECT_EQ(Filas(a(), "SELECT Detalles, Ingreso, FormaPago FROM Caja"), QStringList{"Asentar Cobranza a Ana|1234.56|EFVO"});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bien.isVisible(); }, 6000));
    EXPECT_EQ(bien.result(), QDialog::Accepted);
}

TEST_F(PantallasClientes, ElSaldoSigueAlDebitoAMano) {
    PanVeComisiones cuenta(a(), estado_, reloj_, *salida_, 501);
    cuenta.show();
    EXPECT_EQ(QStringList({hijo<QLabel>(cuenta, "Label1")->text(), cuenta.saldo()}), (QStringList{"Movim. de Ana", "$0.00"}));
    prueba::alAbrirse<PanNueComision>([](PanNueComision* p) {
        hijo<QLineEdit>(p, "Text1")->setText("Flete");
        hijo<QLineEdit>(p, "Text2")->setText("1,500.5");
        hijo<QPushButton>(p, "Command1")->click();
    });
    hijo<QPushButton>(cuenta, "Command12")->click();
    EXPECT_EQ(cuenta.saldo(), "$1,500.50");
    EXPECT_EQ(cuenta.grilla()->modelo().rowCount(), 1);
}

TEST_F(PantallasClientes, LaPreguntaDelBorradoDiceLaDeuda) {
    RegistraLineaManual(a(), 501, QDate(2026, 11, 1), "Deuda", "1234", true);
    PanelClientes panel(a(), estado_, reloj_, *salida_, {});
    panel.show();
    panel.carga();
    // Las filas, por zona, localidad y nombre: Ana, Bruno, Consumidor Final.
    const struct {
        int fila;
        const char* respuesta;
        const char* pregunta;
        int quedan;
    } casos[] = {
        {0, "No", "El cliente tiene un saldo de 1,234.00 en su cuenta corriente, que se borra con él.\nBorra este cliente de la lista ??", 3},
        {0, "Sí", "El cliente tiene un saldo de 1,234.00 en su cuenta corriente, que se borra con él.\nBorra este cliente de la lista ??", 2},
        {0, "Sí", "Borra este cliente de la lista ??", 1},
    };
    for (const auto& c : casos) {
        panel.grilla()->irAFila(c.fila);
        auto caja = prueba::respondeCaja(QString::fromUtf8(c.respuesta));
        hijo<QPushButton>(panel, "Command11")->click();
        EXPECT_EQ(caja->texto, QString::fromUtf8(c.pregunta));
        EXPECT_EQ(panel.grilla()->modelo().rowCount(), c.quedan);
    }
    EXPECT_TRUE(Filas(a(), kLineas).isEmpty());
}

} // namespace
} // namespace orv
