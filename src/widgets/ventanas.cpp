#include "widgets/ventanas.h"

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

void TamanioDeLectura(QWidget* ventana, int anchoMaximo) {
    if (!ventana) return;
    QScreen* pantalla = ventana->parentWidget() ? ventana->parentWidget()->screen() : ventana->screen();
    if (!pantalla) pantalla = QGuiApplication::primaryScreen();
    const QRect zona = pantalla ? pantalla->availableGeometry() : QRect(0, 0, 1024, 768);
    ventana->resize(qMin(anchoMaximo, zona.width() * 95 / 100), zona.height() * 92 / 100);
    CentrarVentana(ventana);
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
