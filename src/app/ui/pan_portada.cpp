#include "app/ui/pan_portada.h"

#include "widgets/ventanas.h"

#include <QFrame>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPropertyAnimation>
#include <QTimer>
#include <QVBoxLayout>

namespace orv {

PanPortada::PanPortada(int demoraMs, QWidget* padre)
    : QDialog(padre, Qt::FramelessWindowHint | Qt::Dialog),
      reloj_(new QTimer(this)),
      fundido_(new QPropertyAnimation(this, "windowOpacity", this)) {
    setObjectName(QStringLiteral("PanPortada"));
    setModal(true);
    setFixedSize(460, 260);
    // Las plataformas sin composición (pruebas, escritorio remoto mínimo) no tienen transparencia.
    const QString plataforma = QGuiApplication::platformName();
    if (plataforma == QLatin1String("offscreen") || plataforma == QLatin1String("minimal")) fundidoMs_ = 0;

    auto* marco = new QFrame(this);
    marco->setObjectName(QStringLiteral("marco"));
    marco->setStyleSheet(QStringLiteral(
        "#marco { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #1f4e79, stop:1 #2e75b6);"
        " border: 1px solid #16375a; }"
        "QLabel { color: white; background: transparent; }"));

    auto* nombre = new QLabel(QStringLiteral("Orvanta"), marco);
    nombre->setObjectName(QStringLiteral("lblNombre"));
    QFont f = nombre->font();
    f.setPointSize(30);
    f.setBold(true);
    nombre->setFont(f);
    nombre->setAlignment(Qt::AlignCenter);

    auto* linea = new QLabel(QStringLiteral("Gestión comercial y punto de venta"), marco);
    linea->setObjectName(QStringLiteral("lblDescripcion"));
    QFont f2 = linea->font();
    f2.setPointSize(12);
    linea->setFont(f2);
    linea->setAlignment(Qt::AlignCenter);

    auto* version = new QLabel(QStringLiteral("Versión %1.%2.%3")
                                   .arg(ORVANTA_VERSION_MAYOR)
                                   .arg(ORVANTA_VERSION_MENOR)
                                   .arg(ORVANTA_VERSION_REVISION),
                               marco);
    version->setObjectName(QStringLiteral("lblVersion"));
    version->setAlignment(Qt::AlignRight | Qt::AlignBottom);

    auto* capa = new QVBoxLayout(marco);
    capa->setContentsMargins(24, 24, 24, 14);
    capa->addStretch(2);
    capa->addWidget(nombre);
    capa->addWidget(linea);
    capa->addStretch(3);
    capa->addWidget(version);

    auto* exterior = new QVBoxLayout(this);
    exterior->setContentsMargins(0, 0, 0, 0);
    exterior->addWidget(marco);

    reloj_->setSingleShot(true);
    reloj_->setInterval(demoraMs);
    connect(reloj_, &QTimer::timeout, this, &PanPortada::termina);
    connect(fundido_, &QPropertyAnimation::finished, this, [this] {
        if (terminando_) accept();
    });
}

void PanPortada::showEvent(QShowEvent* e) {
    QDialog::showEvent(e);
    CentrarVentana(this);
    terminando_ = false;
    if (fundidoMs_ > 0) {
        fundido_->stop();
        fundido_->setDuration(fundidoMs_);
        fundido_->setStartValue(0.0);
        fundido_->setEndValue(1.0);
        fundido_->start();
    }
    reloj_->start();
}

void PanPortada::termina() {
    if (fundidoMs_ <= 0) {
        accept();
        return;
    }
    terminando_ = true;
    fundido_->stop();
    fundido_->setDuration(fundidoMs_);
    fundido_->setStartValue(windowOpacity());
    fundido_->setEndValue(0.0);
    fundido_->start();
}

void PanPortada::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_Escape) {
        // Sin fundido de salida.
        reloj_->stop();
        fundido_->stop();
        terminando_ = false;
        reject();
        return;
    }
    QDialog::keyPressEvent(e);
}

} // namespace orv
