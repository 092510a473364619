#pragma once
// La foto del artículo actual del panel: una ventana sin modalidad que nunca se queda con el
// teclado, con la imagen estirada a su tamaño.

#include <QWidget>

class QLabel;

namespace orv {

class panFoto : public QWidget {
    Q_OBJECT
public:
    // `devuelveFoco`: la ventana a la que vuelve el teclado si ésta se activa.
    explicit panFoto(QWidget* devuelveFoco, QWidget* padre = nullptr);

    // Muestra la foto de la ruta (la deja como Tag). Un archivo que falta o no se lee deja la
    // imagen vacía.
    void muestra(const QString& ruta);
    const QString& tag() const { return tag_; }
    bool tieneImagen() const;

protected:
    void changeEvent(QEvent* e) override;

private:
    QWidget* devuelveFoco_;
    QLabel* imagen_;
    QString tag_;
};

} // namespace orv
