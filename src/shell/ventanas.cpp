#include "shell/ventanas.h"

#include <QBoxLayout>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QPushButton>
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

QPushButton* BotonesAlPie(QDialog* dialogo, QBoxLayout* capa, bool predeterminado, const QString& aceptar,
                          const QString& cancelar) {
    auto* botones = new QDialogButtonBox(dialogo);
    auto* a = botones->addButton(aceptar, QDialogButtonBox::AcceptRole);
    a->setObjectName(QStringLiteral("Command1"));
    if (predeterminado) a->setDefault(true);
    auto* c = botones->addButton(cancelar, QDialogButtonBox::RejectRole);
    c->setObjectName(QStringLiteral("Command2"));
    QObject::connect(c, &QPushButton::clicked, dialogo, &QDialog::reject);
    capa->addWidget(botones);
    return a;
}

} // namespace orv
