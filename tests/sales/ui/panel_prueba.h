#pragma once
// Un control por su nombre, lo que teclea el cajero o el lector de códigos, lo que muestran los
// controles (para compararlo entero), el texto de un comprobante impreso a PDF, y un vigía de cajas
// de mensaje.

#include "apoyo/modal.h"
#include "../filas_prueba.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace orv::prueba {

// El control con ese nombre dentro de `w`; una falla de la prueba si no está.
template <typename T = QLineEdit>
T* Hijo(const QWidget& w, const char* nombre) {
    T* h = w.findChild<T*>(QString::fromLatin1(nombre));
    EXPECT_NE(h, nullptr) << nombre;
    return h;
}

// El texto y Enter en un campo del panel, como el lector o el cajero.
inline void Teclea(QWidget& p, const char* campo, const QString& texto) {
    auto* t = p.findChild<QLineEdit*>(QString::fromLatin1(campo));
    t->setFocus();
    QTest::keyClicks(t, texto);
    QTest::keyClick(t, Qt::Key_Return);
}

// Lo que muestran los controles nombrados (rótulo, campo o lista), en ese orden.
inline QStringList Textos(const QWidget& w, std::initializer_list<const char*> nombres) {
    QStringList r;
    for (const char* n : nombres) {
        QWidget* c = w.findChild<QWidget*>(QString::fromLatin1(n));
        if (auto* l = qobject_cast<QLabel*>(c)) r << l->text();
        else if (auto* e = qobject_cast<QLineEdit*>(c)) r << e->text();
        else if (auto* b = qobject_cast<QComboBox*>(c)) r << b->currentText();
        else r << QStringLiteral("(no hay %1)").arg(QLatin1String(n));
    }
    return r;
}

// El texto de un PDF, como lo lee una persona.
inline QString TextoDelPdf(const QString& ruta) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {ruta, QStringLiteral("-")});
    p.waitForFinished(30000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

// Mientras vive, responde toda caja de mensaje que aparezca y anota su texto: "Sí" a la que empieza
// con `siA` (si se da), "Aceptar" (o Esc) a las demás. Sin `siA` sirve para ver que no aparece
// ninguna sin dejar a nadie esperando la próxima.
class VigiaDeCajas {
public:
    explicit VigiaDeCajas(const QString& siA = {}) {
        QObject::connect(&reloj_, &QTimer::timeout, [this, siA] {
            if (QMessageBox* m = cajaVisible()) {
                vistas << m->text();
                pulsa(m, !siA.isEmpty() && m->text().startsWith(siA) ? QStringLiteral("Sí") : QStringLiteral("Aceptar"));
            }
        });
        reloj_.start(5);
    }
    QStringList vistas;

private:
    QTimer reloj_;
};

} // namespace orv::prueba
