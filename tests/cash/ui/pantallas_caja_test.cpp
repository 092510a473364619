// El panel de caja y el cierre: lo que una fecha cerrada detiene (con su mensaje una sola vez), el
// borrado que pregunta, "Quitar" sin filas que no pregunta nada, y el cierre que escribe el día de
// la máquina.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "cash/ui/pan_caja.h"
#include "cash/ui/pan_corte_caja.h"
#include "cash/ui/pan_formas_pago.h"
#include "cash/ui/pan_plan_ctas.h"
#include "cash/ui/panel_caja.h"
#include "reports/apoyo_informes.h"
#include "reports/ui/salida_informes.h"
#include "widgets/grilla.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QTableWidget>

namespace orv {
namespace {

using prueba::Filas;
using prueba::VigiaDeCajas;

const QString kCerrada = QStringLiteral("Error, fecha cerrada para ingresar movimientos!");
const QString kPregunta = QStringLiteral("Borra este movimiento de Caja ??");
const QDate kCerrado(2026, 11, 20), kAbierto(2026, 11, 21);

class PantallasCaja : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta("INSERT INTO Caja (idCaja, idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) VALUES "
                    "(1, 1, ?, 'del día cerrado', 10, 0, 'EFVO', 1), (2, 1, ?, 'del día abierto', 20, 0, 'EFVO', 1)",
                    {kCerrado, kAbierto});
        a().ejecuta("INSERT INTO CorteCaja (FECHA) VALUES (?)", {kCerrado});
    }
};

TEST_F(PantallasCaja, FechaCerradaDetieneEditarYQuitarYQuitarSinFilasNoPregunta) {
    PanelCaja panel(a(), estado_, reloj_, *salida_);
    panel.fijaPeriodo(kCerrado, kAbierto);
    panel.filtra();
    Grilla* g = panel.grilla();
    const struct {
        const char* que;
        int fila;
        void (PanelCaja::*accion)();
        QStringList vistas;
        QStringList quedan;
    } casos[] = {
        {"editar del día cerrado", 0, &PanelCaja::editar, {kCerrada}, {"1", "2"}},
        {"quitar del día cerrado", 0, &PanelCaja::quitar, {kPregunta, kCerrada}, {"1", "2"}},
        {"quitar del día abierto", 1, &PanelCaja::quitar, {kPregunta}, {"1"}},
    };
    for (const auto& c : casos) {
        ASSERT_TRUE(g->irAFila(c.fila)) << c.que;
        VigiaDeCajas vigia(kPregunta);
        auto abierta = prueba::alAbrirse<PanCaja>([](PanCaja* d) { d->reject(); }, 300);
        (panel.*c.accion)();
        QTest::qWait(400);
        EXPECT_FALSE(abierta->vista) << c.que;
        EXPECT_EQ(vigia.vistas, c.vistas) << c.que;
        EXPECT_EQ(Filas(a(), "SELECT idCaja FROM Caja ORDER BY idCaja"), c.quedan) << c.que;
    }
    // Un período sin filas: "Quitar" no pregunta nada y los totales son cero.
    panel.fijaPeriodo(QDate(2026, 1, 1), QDate(2026, 1, 2));
    panel.filtra();
    VigiaDeCajas vigia;
    panel.quitar();
    QTest::qWait(50);
    EXPECT_EQ(vigia.vistas, QStringList());
    EXPECT_EQ(prueba::hijo<QLineEdit>(panel, "Text3")->text() + u'|' + prueba::hijo<QLineEdit>(panel, "Text5")->text(), "0.00|0.00");
}

TEST_F(PantallasCaja, ElCierreDeUnDiaCerradoNoSeHabilitaYElDeOtroDiaCierraHoy) {
    panCorteCaja corte(a(), estado_, reloj_);
    QPushButton* cerrar = corte.botonCerrar();
    {
        VigiaDeCajas vigia;
        corte.fecha()->setDate(kCerrado);
        corte.calcula();
        QTest::qWait(50);
        EXPECT_EQ(vigia.vistas, QStringList({kCerrada}));
        EXPECT_FALSE(cerrar->isEnabled());
    }
    VigiaDeCajas vigia(QStringLiteral("Está seguro"));
    corte.fecha()->setDate(kAbierto);
    corte.calcula();
    ASSERT_TRUE(cerrar->isEnabled());
    corte.cierra();
    QTest::qWait(50);
    EXPECT_EQ(vigia.vistas, QStringList({"Está seguro de cerrar el ejercicio para el día 21/11/2026 ?.\nÉsto no permitirá registrar "
                                         "movimientos de caja ni ventas por el día de hoy.\nDesea continuar ?"}));
    EXPECT_FALSE(cerrar->isEnabled());
    EXPECT_EQ(Filas(a(), "SELECT FECHA FROM CorteCaja ORDER BY FECHA"), QStringList({"2026-11-20", "2026-11-23"}));
}

TEST_F(PantallasCaja, PanCajaCargaElMovimientoYGuardaSoloLoBienEscrito) {
    a().ejecuta("UPDATE Caja SET idCuenta = 2, FormaPago = 'CHEQ', Detalles = 'Cobro de O''Brien', Ingreso = 0, Egreso = 12.5 "
                "WHERE idCaja = 2");
    PanCaja d(a(), 7, 2, kCerrado);
    EXPECT_EQ(QStringList({d.fecha()->date().toString(Qt::ISODate), d.cuenta()->currentText(), d.formaPago()->currentText(),
                           d.detalles()->toPlainText(), d.ingreso()->isEnabled() ? "ingreso" : "egreso", d.ingreso()->text(),
                           d.egreso()->text()}),
              QStringList({"2026-11-21", "Cobranza Clientes", "CHEQ", "Cobro de O'Brien", "egreso", "", "12.50"}));
    // Lo mal escrito se dice nombrando el campo y no se guarda; lo bien escrito, sí, con el usuario.
    const struct {
        const char* egreso;
        QStringList vistas;
        QString fila;
    } casos[] = {
        {"1,5", {"Egreso: el número está mal escrito. Use el punto para los decimales (1234.50)."},
         "2|2026-11-21|2|Cobro de O'Brien|0|12.5|CHEQ|1"},
        {"", {"Ingrese el importe del movimiento."}, "2|2026-11-21|2|Cobro de O'Brien|0|12.5|CHEQ|1"},
        {"1,234.5", {}, "2|2026-11-21|2|Cobro de O'Brien|0|1234.5|CHEQ|7"},
    };
    for (const auto& c : casos) {
        VigiaDeCajas vigia;
        d.egreso()->setText(QString::fromLatin1(c.egreso));
        d.acepta();
        QTest::qWait(50);
        EXPECT_EQ(vigia.vistas, c.vistas) << c.egreso;
        EXPECT_EQ(Filas(a(), "SELECT idCaja, Fecha, idCuenta, Detalles, Ingreso, Egreso, FormaPago, idUsuario FROM Caja WHERE idCaja = 2"),
                  QStringList({c.fila}))
            << c.egreso;
    }
    EXPECT_EQ(d.result(), QDialog::Accepted);
}

TEST_F(PantallasCaja, ElCierreMuestraLasCifrasCuentaLaCajaYLaImprime) {
    a().ejecuta("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) VALUES "
                "(1, ?, 'VENTA :TICK. a Cons.Final', 100.25, 0, 'EFVO', 1), (3, ?, 'Flete', 0, 30, 'EFVO', 1)",
                {kAbierto, kAbierto});
    panCorteCaja corte(a(), estado_, reloj_);
    corte.fecha()->setDate(kAbierto);
    corte.calcula();
    const auto filas = [](const QTableWidget* t) {
        QStringList r;
        for (int f = 0; f < t->rowCount(); ++f) {
            QStringList celdas;
            for (int c = 0; c < t->columnCount(); ++c) celdas << (t->item(f, c) ? t->item(f, c)->text() : QString());
            r << celdas.join(u'|');
        }
        return r;
    };
    EXPECT_EQ(filas(prueba::hijo<QTableWidget>(corte, "listVentas")), QStringList({"EFVO|100.25"}));
    EXPECT_EQ(filas(prueba::hijo<QTableWidget>(corte, "listcaja")),
              QStringList({"Gastos Generales|0.00|30.00", "Ventas Mostrador|120.25|0.00"}));
    EXPECT_EQ(prueba::hijo<QLineEdit>(corte, "txTotVentas")->text() + u'|' + prueba::hijo<QLineEdit>(corte, "txTotEntrada")->text() +
                  u'|' + prueba::hijo<QLineEdit>(corte, "txTotSalida")->text(),
              "100.25|120.25|30.00");
    // Lo contado: una diferencia exacta, uno mal escrito, uno justo.
    QTableWidget* arqueo = corte.arqueo();
    ASSERT_EQ(filas(arqueo), QStringList({"CHEQ|0.00||", "EFVO|90.25||", "TARJETA|0.00||"}));
    arqueo->item(0, 2)->setText("0");
    arqueo->item(1, 2)->setText("90.1");
    arqueo->item(2, 2)->setText("1,5");
    EXPECT_EQ(filas(arqueo), QStringList({"CHEQ|0.00|0|0.00", "EFVO|90.25|90.1|-0.15", "TARJETA|0.00|1,5|mal escrito"}));
    {
        VigiaDeCajas vigia(QStringLiteral("Está seguro"));
        corte.cierra(); // lo mal escrito no deja cerrar
        QTest::qWait(50);
        EXPECT_EQ(vigia.vistas, QStringList({"Contado TARJETA: el número está mal escrito. Use el punto para los decimales (1234.50)."}));
        arqueo->item(2, 2)->setText(QString());
        corte.cierra();
        QTest::qWait(50);
    }
    EXPECT_EQ(Filas(a(), "SELECT Fecha, FechaCierre, FormaPago, Esperado, Contado FROM ArqueoCaja ORDER BY FormaPago"),
              QStringList({"2026-11-21|2026-11-23|CHEQ|0|0", "2026-11-21|2026-11-23|EFVO|90.25|90.1"}));
    // La hoja, en PDF: las dos listas, los totales y el arqueo.
    QPrinter hoja(QPrinter::HighResolution);
    hoja.setOutputFormat(QPrinter::PdfFormat);
    hoja.setOutputFileName(base_->carpeta() + "/corte.pdf");
    corte.imprimeEn(hoja);
    EXPECT_EQ(prueba::discrepancias(prueba::textoDePdf(base_->carpeta() + "/corte.pdf"),
                                    {"Corte diario de caja", "21/11/2026", "<Todos>", "Ventas por Valores", "Total ventas :",
                                     "Gastos Generales", "120.25", "Arqueo", "90.25", "90.10", "-0.15"}),
              "");
}

TEST_F(PantallasCaja, CatalogosDicenPorQueNoSeTocaUnaFilaDelSistema) {
    panPlanCtas plan(a());
    plan.pideNombre = [] { return QString(); };
    plan.nueva(); // cancelar no agrega nada
    plan.pideNombre = [] { return QStringLiteral("Caja chica"); };
    plan.nueva();
    EXPECT_EQ(Filas(a(), "SELECT count(*) FROM Cuentas WHERE Cuenta = 'Caja chica'"), QStringList({"1"}));
    Grilla* g = plan.grilla();
    int ventas = 0;
    while (g->irAFila(ventas) && g->filaActual()->value("Cuenta").toString() != "Ventas Mostrador") ++ventas;
    VigiaDeCajas vigia(QStringLiteral("Borra esta cuenta"));
    plan.quitar();
    QTest::qWait(50);
    panEditFPago cheque(a(), a().valor("SELECT idTipoFormaPago FROM FormasDePago WHERE FormaPago = 'CHEQ'").toLongLong());
    cheque.nombre()->setText("CHEQUE");
    cheque.acepta();
    QTest::qWait(50);
    EXPECT_EQ(vigia.vistas,
              QStringList({"Borra esta cuenta ??",
                           "La cuenta \"Ventas Mostrador\" la usa el sistema para registrar ventas y cobranzas: no se puede borrar.",
                           "La forma de pago \"CHEQ\" tiene un significado fijo en el sistema: no se puede cambiar su nombre."}));
    EXPECT_NE(cheque.result(), QDialog::Accepted);
    EXPECT_EQ(Filas(a(), "SELECT count(*) FROM Cuentas WHERE Cuenta = 'Ventas Mostrador'"), QStringList({"1"}));
}

// La lista de formas de pago pregunta antes de borrar, no borra una que el sistema usa y sí las demás.
TEST_F(PantallasCaja, ListaDeFormasDePagoBorraSoloLoQueElSistemaNoUsa) {
    panFormasPago formas(a());
    VigiaDeCajas vigia(QStringLiteral("Elimina"));
    for (const char* forma : {"CHEQ", "TARJETA"}) {
        Grilla* g = formas.grilla();
        for (int f = 0; g->irAFila(f) && g->filaActual()->value("FormaPago").toString() != QLatin1String(forma);) ++f;
        formas.borrar();
        QTest::qWait(50);
    }
    EXPECT_EQ(vigia.vistas, QStringList({"Elimina éste registro ??",
                                         "La forma de pago \"CHEQ\" tiene un significado fijo en el sistema: no se puede borrar.",
                                         "Elimina éste registro ??"}));
    EXPECT_EQ(Filas(a(), "SELECT FormaPago FROM FormasDePago ORDER BY idTipoFormaPago"), QStringList({"EFVO", "CTA CTE", "CHEQ"}));
}

} // namespace
} // namespace orv
