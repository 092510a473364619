#pragma once
// panNueTablaVIP ("Nuevo Premio VIP"): el artículo del premio (elegido en la búsqueda de
// artículos), su cantidad, su vigencia y los puntos que pide. Sin id agrega; con id cambia.

#include "app/configuracion.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>
#include <optional>

class QDateEdit;
class QLineEdit;
class QPushButton;

namespace orv {

class PanNueTablaVIP : public QDialog {
    Q_OBJECT
public:
    PanNueTablaVIP(Almacen& almacen, const Configuracion& conf, const QString& mascaraMoneda, const Reloj& reloj,
                   std::optional<qint64> idTablaVIP, QWidget* padre = nullptr);

    void eligeArticulo(); // clic en lblArtic
    // Pone el artículo de ese código, como si se lo hubiera elegido en la búsqueda.
    void ponArticulo(const QString& codigo);

private:
    void carga();
    void acepta();

    Almacen& almacen_;
    const Configuracion& conf_;
    QString mascaraMoneda_;
    std::optional<qint64> id_;
    std::optional<qint64> idArticulo_;
    QPushButton* lblArtic_ = nullptr;
    QDateEdit* dt1_ = nullptr;
    QDateEdit* dt2_ = nullptr;
    QLineEdit* txCant_ = nullptr;
    QLineEdit* txPtos_ = nullptr;
};

} // namespace orv
