// Portada y ventana principal.

#include "app/ui/pan_portada.h"
#include "shell/pan_principal.h"
#include "store/actualizacion.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace orv;

namespace {

// Si ORVANTA_CAPTURAS indica una carpeta, deja allí la imagen del control.
void captura(QWidget& w, const QString& nombre) {
    const QString carpeta = qEnvironmentVariable("ORVANTA_CAPTURAS");
    const QPixmap imagen = w.grab();
    EXPECT_FALSE(imagen.isNull());
    if (!carpeta.isEmpty()) imagen.save(QDir(carpeta).filePath(nombre + QStringLiteral(".png")));
}

TEST(PanPortada, EscLaCierraEnElActo) {
    PanPortada p(60000);
    QTimer::singleShot(0, &p, [&p] { QTest::keyClick(&p, Qt::Key_Escape); });
    QElapsedTimer t;
    t.start();
    EXPECT_EQ(p.exec(), QDialog::Rejected);
    EXPECT_LT(t.elapsed(), 1000);
    EXPECT_FALSE(p.isVisible());
}

TEST(PanPortada, ElTemporizadorLaCierraSola) {
    PanPortada p(80);
    p.setFundidoMs(20); // también el camino del fundido de salida
    // Salvaguarda: si el temporizador no funcionara, la prueba no se colgaría.
    bool salvaguarda = false;
    QTimer::singleShot(5000, &p, [&] {
        salvaguarda = true;
        p.reject();
    });
    QElapsedTimer t;
    t.start();
    EXPECT_EQ(p.exec(), QDialog::Accepted);
    EXPECT_FALSE(salvaguarda);
    EXPECT_GE(t.elapsed(), 80);
}

TEST(PanPortada, SeCentraEnLaPantalla) {
    PanPortada p(60000);
    p.setFundidoMs(0);
    p.show();
    QCoreApplication::processEvents();
    const QRect zona = p.screen()->availableGeometry();
    EXPECT_NEAR(p.frameGeometry().center().x(), zona.center().x(), 2);
    captura(p, QStringLiteral("portada"));
    p.close();
}

} // namespace
