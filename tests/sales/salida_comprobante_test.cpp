// Ruta de salida de un comprobante según su esquema de impresión.

#include "apoyo/base_prueba.h"
#include "sales/salida_comprobante.h"
#include "sales/tipos_comprobante.h"
#include "store/actualizacion.h"
#include "store/aviso.h"

namespace orv {
namespace {

using prueba::PorMotor;

class SalidaComprobante : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (!base_) return;
        actualizaEsquema(almacen());
    }
    qint64 cliente(const QVariant& cuit) {
        return almacen().inserta(QStringLiteral("INSERT INTO Vendedores (Nombre, Cuit) VALUES ('X', ?)"), {cuit},
                                 QStringLiteral("idVendedor"));
    }
    PreguntasRuta preguntas(bool responde) {
        PreguntasRuta p;
        p.preguntaSinPlantilla = [this, responde](const QString& t) {
            preguntado_ = t;
            return responde;
        };
        p.avisoTickets = [this](const QString& t) { avisado_ = t; };
        return p;
    }
    QString preguntado_, avisado_;
};

TEST_P(SalidaComprobante, RutasPorElComienzoDeLaPlantilla) {
    Almacen& a = almacen();
    // Vacía: pregunta; con "No" no se registra.
    EXPECT_FALSE(DecideRuta(a, QString(), QStringLiteral("B"), std::nullopt, preguntas(false)));
    EXPECT_EQ(preguntado_, kPreguntaSinPlantilla);
    EXPECT_EQ(DecideRuta(a, QString(), QStringLiteral("B"), std::nullopt, preguntas(true)), Ruta::Nada);
    // Tickets: "En construccion" y sigue, sin nada pendiente.
    EXPECT_EQ(DecideRuta(a, PlantillaTickets(QStringLiteral("COM1")), QStringLiteral("B"), std::nullopt, preguntas(true)),
              Ruta::Tickets);
    EXPECT_EQ(avisado_, QStringLiteral("En construccion"));
    EXPECT_EQ(ImpresoFiscalDe(Ruta::Tickets), QStringLiteral("S"));
    // Una plantilla de diez caracteres (o un archivo que ya no está) va por la plantilla.
    preguntado_.clear();
    EXPECT_EQ(DecideRuta(a, QStringLiteral("factur.rpt"), QStringLiteral("A"), std::nullopt, preguntas(true)),
              Ruta::Plantilla);
    EXPECT_TRUE(preguntado_.isEmpty());
    EXPECT_EQ(ImpresoFiscalDe(Ruta::Plantilla), QStringLiteral("S"));
    EXPECT_EQ(ImpresoFiscalDe(Ruta::Fiscal), QStringLiteral("N"));
}

TEST_P(SalidaComprobante, FiscalConLetraARevisaElCuitGuardado) {
    Almacen& a = almacen();
    const QString fiscal = PlantillaFiscal(TextoModeloFiscal(ModeloFiscal::EpsonTMU), QStringLiteral("1"));
    const qint64 bueno = cliente(QStringLiteral("20-12345678-6"));
    const qint64 malo = cliente(QStringLiteral("20-12345678-0"));
    const qint64 sinCuit = cliente(QVariant());
    const qint64 diez = cliente(QStringLiteral("20-1234567-6"));
    EXPECT_EQ(DecideRuta(a, fiscal, QStringLiteral("A"), bueno, preguntas(true)), Ruta::Fiscal);
    for (auto id : {std::optional<qint64>(malo), std::optional<qint64>(sinCuit), std::optional<qint64>(diez),
                    std::optional<qint64>()}) {
        try {
            DecideRuta(a, fiscal, QStringLiteral("A"), id, preguntas(true));
            ADD_FAILURE() << "aceptó un CUIT inválido";
        } catch (const Aviso& e) {
            EXPECT_EQ(e.texto(), kCuitInvalidoFiscal);
        }
    }
    // Con letra B no se revisa nada.
    EXPECT_EQ(DecideRuta(a, fiscal, QStringLiteral("B"), sinCuit, preguntas(true)), Ruta::Fiscal);
}

ORV_AMBOS_MOTORES(SalidaComprobante);

} // namespace
} // namespace orv
