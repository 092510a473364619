// Portada: Esc la cierra en el acto; si no, su temporizador (con el fundido de salida).

#include "app/ui/pan_portada.h"

#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace orv;

namespace {

TEST(PanPortada, EscLaCierraYSinoElTemporizador) {
    // Con un minuto por delante, sólo Esc puede cerrarla rechazada.
    PanPortada larga(60000);
    QTimer::singleShot(0, &larga, [&larga] { QTest::keyClick(&larga, Qt::Key_Escape); });
    EXPECT_EQ(larga.exec(), QDialog::Rejected);
    EXPECT_FALSE(larga.isVisible());

    PanPortada corta(80);
    corta.setFundidoMs(20);
    bool salvaguarda = false; // si el temporizador no funcionara, la prueba no se colgaría
    QTimer::singleShot(5000, &corta, [&] {
        salvaguarda = true;
        corta.reject();
    });
    EXPECT_EQ(corta.exec(), QDialog::Accepted);
    EXPECT_FALSE(salvaguarda);
}

} // namespace
