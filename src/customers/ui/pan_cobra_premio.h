#pragma once
// panCobraPremio ("Cobro de Premio VIP"): uno de los premios vigentes hoy para el cliente con
// tarjeta. Al elegirlo dice si los puntos no alcanzan; "Aceptar" lo cobra y cierra.

#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>

class QComboBox;

namespace orv {

class PanCobraPremio : public QDialog {
    Q_OBJECT
public:
    PanCobraPremio(Almacen& almacen, const Reloj& reloj, qint32 idUsuario, qint64 idCliente, QWidget* padre = nullptr);

    QComboBox* premios() const { return cboPremio_; }

private:
    void eligePremio();
    void acepta();

    Almacen& almacen_;
    const Reloj& reloj_;
    qint32 idUsuario_;
    qint64 idCliente_;
    QComboBox* cboPremio_ = nullptr;
};

} // namespace orv
