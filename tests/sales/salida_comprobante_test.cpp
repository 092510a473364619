// Ruta de salida de un comprobante según su esquema de impresión.

#include "apoyo/base_prueba.h"
#include "sales/salida_comprobante.h"
#include "sales/tipos_comprobante.h"
#include "store/actualizacion.h"
#include "store/aviso.h"

namespace orv {
namespace {

class SalidaComprobante : public prueba::PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (base_) actualizaEsquema(almacen());
    }
    // Decide la ruta; responde `si` a la pregunta por la plantilla y anota lo que se dijo.
    std::optional<Ruta> ruta(const QString& plantilla, const char* letra, std::optional<qint64> cliente = {}, bool si = true) {
        dicho_.clear();
        PreguntasRuta p;
        p.preguntaSinPlantilla = [this, si](const QString& t) {
            dicho_ << t;
            return si;
        };
        p.avisoTickets = [this](const QString& t) { dicho_ << t; };
        return DecideRuta(almacen(), plantilla, QString::fromLatin1(letra), cliente, p);
    }
    QStringList dicho_;
};

TEST_P(SalidaComprobante, RutasPorElComienzoDeLaPlantilla) {
    // Vacía: pregunta; con "No" no se registra.
    EXPECT_EQ(ruta(QString(), "B", {}, false), std::nullopt);
    EXPECT_EQ(dicho_, QStringList{kPreguntaSinPlantilla});
    EXPECT_EQ(ruta(QString(), "B"), Ruta::Nada);
    // Tickets: "En construccion" y sigue, sin nada pendiente.
    EXPECT_EQ(ruta(PlantillaTickets(QStringLiteral("COM1")), "B"), Ruta::Tickets);
    EXPECT_EQ(dicho_, QStringList{"En construccion"});
    // Una plantilla de diez caracteres (o un archivo que ya no está) va por la plantilla, sin preguntar.
    EXPECT_EQ(ruta(QStringLiteral("factur.rpt"), "A"), Ruta::Plantilla);
    EXPECT_TRUE(dicho_.isEmpty());
    // Sólo lo fiscal queda pendiente de la impresora fiscal.
    EXPECT_EQ(QStringList({ImpresoFiscalDe(Ruta::Tickets), ImpresoFiscalDe(Ruta::Plantilla), ImpresoFiscalDe(Ruta::Fiscal)}),
              QStringList({"S", "S", "N"}));
}

TEST_P(SalidaComprobante, FiscalConLetraARevisaElCuitGuardado) {
    almacen().ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, Cuit) VALUES (11, 'Bueno', '20-12345678-6'), "
                                     "(12, 'Malo', '20-12345678-0'), (13, 'Sin CUIT', NULL), (14, 'Diez cifras', '20-1234567-6')"));
    const QString fiscal = PlantillaFiscal(TextoModeloFiscal(ModeloFiscal::EpsonTMU), QStringLiteral("1"));
    EXPECT_EQ(ruta(fiscal, "A", 11), Ruta::Fiscal);
    for (std::optional<qint64> malo : {std::optional<qint64>(12), std::optional<qint64>(13), std::optional<qint64>(14), std::optional<qint64>()}) {
        try {
            ruta(fiscal, "A", malo);
            ADD_FAILURE() << "aceptó un CUIT inválido: " << malo.value_or(0);
        } catch (const Aviso& e) {
            EXPECT_EQ(e.texto(), kCuitInvalidoFiscal);
        }
    }
    // Con letra B no se revisa nada.
    EXPECT_EQ(ruta(fiscal, "B", 13), Ruta::Fiscal);
}

ORV_AMBOS_MOTORES(SalidaComprobante);

} // namespace
} // namespace orv
