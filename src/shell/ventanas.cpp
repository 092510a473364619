#include "shell/ventanas.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace orv {

void CentrarVentana(QWidget* ventana) {
    if (!ventana) return;
    QScreen* pantalla = ventana->screen();
    if (!pantalla) pantalla = QGuiApplication::primaryScreen();
    if (!pantalla) return;
    const QRect zona = pantalla->availableGeometry();
    const QSize tam = ventana->frameGeometry().size();
    ventana->move(zona.x() + (zona.width() - tam.width()) / 2, zona.y() + (zona.height() - tam.height()) / 2);
}

} // namespace orv
