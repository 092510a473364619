#pragma once
// Lo que teclea el cajero o el lector de códigos, lo que muestran los controles (para compararlo
// entero) y el texto de un comprobante impreso a PDF.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QTest>

namespace orv::prueba {

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

} // namespace orv::prueba
