#include "articles/ui/pan_foto.h"

#include <QEvent>
#include <QImageReader>
#include <QLabel>
#include <QPixmap>
#include <QTimer>
#include <QVBoxLayout>

namespace orv {

panFoto::panFoto(QWidget* devuelveFoco, QWidget* padre)
    : QWidget(padre, Qt::Tool), devuelveFoco_(devuelveFoco) {
    setObjectName(QStringLiteral("panFoto"));
    setWindowTitle(QStringLiteral("Foto"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(0, 0, 0, 0);
    imagen_ = new QLabel(this);
    imagen_->setObjectName(QStringLiteral("Image1"));
    imagen_->setScaledContents(true);
    imagen_->setMinimumSize(1, 1);
    imagen_->setStyleSheet(QStringLiteral("background: white;"));
    capa->addWidget(imagen_);
    resize(320, 320);
}

void panFoto::muestra(const QString& ruta) {
    tag_ = ruta;
    QPixmap foto;
    if (!ruta.isEmpty()) {
        QImageReader lector(ruta);
        lector.setAutoTransform(true);
        foto = QPixmap::fromImage(lector.read()); // vacía si falta o no se lee
    }
    imagen_->setPixmap(foto);
    if (!isVisible()) show();
}

bool panFoto::tieneImagen() const { return !imagen_->pixmap().isNull(); }

void panFoto::changeEvent(QEvent* e) {
    QWidget::changeEvent(e);
    // Activada (por un clic), le devuelve el teclado a la ventana del panel después de que el
    // administrador de ventanas termine de activarla.
    if (e->type() == QEvent::ActivationChange && isActiveWindow() && devuelveFoco_)
        QTimer::singleShot(0, devuelveFoco_, [w = devuelveFoco_] { w->window()->activateWindow(); });
}

} // namespace orv
