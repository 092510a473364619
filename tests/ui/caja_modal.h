#pragma once
// Responde la próxima caja de mensaje modal: anota lo que mostró y pulsa un botón por su texto
// (o Esc si el texto es vacío).

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <memory>

namespace orv::prueba {

struct CajaVista {
    bool vista = false;
    QString titulo;
    QString texto;
    QMessageBox::Icon icono = QMessageBox::NoIcon;
    QStringList botones;
};

// La caja de mensaje visible, aunque otra ventana modal figure como la activa; nullptr si no hay.
inline QMessageBox* cajaVisible() {
    if (auto* caja = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) return caja;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* m = qobject_cast<QMessageBox*>(w); m && m->isVisible()) return m;
    return nullptr;
}

// Pulsa el botón de la caja con ese texto; si no hay ninguno, la cierra.
inline void pulsa(QMessageBox* caja, const QString& boton) {
    for (QAbstractButton* b : caja->buttons())
        if (b->text() == boton) {
            b->click();
            return;
        }
    caja->reject();
}

inline std::shared_ptr<CajaVista> respondeCaja(const QString& boton) {
    auto vista = std::make_shared<CajaVista>();
    auto* reloj = new QTimer;
    reloj->setInterval(5);
    QObject::connect(reloj, &QTimer::timeout, [vista, reloj, boton] {
        QMessageBox* caja = cajaVisible();
        if (!caja) return;
        reloj->stop();
        reloj->deleteLater();
        vista->vista = true;
        vista->titulo = caja->windowTitle();
        vista->texto = caja->text();
        vista->icono = caja->icon();
        for (QAbstractButton* b : caja->buttons()) vista->botones << b->text();
        if (boton.isEmpty())
            QTest::keyClick(caja, Qt::Key_Escape);
        else
            pulsa(caja, boton);
    });
    reloj->start();
    return vista;
}

} // namespace orv::prueba
