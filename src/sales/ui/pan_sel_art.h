#pragma once
// Búsqueda de artículos de la venta: filtra por descripción mientras se escribe.

#include "app/configuracion.h"
#include "store/almacen.h"

#include <QDialog>

class QLineEdit;

namespace orv {

class Grilla;

class PanSelArt : public QDialog {
    Q_OBJECT
public:
    PanSelArt(Almacen& almacen, const Configuracion& conf, const QString& mascaraMoneda, QWidget* padre = nullptr);
    // Código del artículo elegido (tras Accepted).
    QString codigo() const { return codigo_; }
    Grilla* grilla() const { return grilla_; }

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    void filtra();
    void acepta();

    Almacen& almacen_;
    QLineEdit* text1_;
    Grilla* grilla_;
    QString codigo_;
};

} // namespace orv
