#pragma once
// Alta o modificación de un usuario. La pantalla sólo junta los datos y los controla; quien la
// abre los graba. La contraseña guardada nunca se muestra: al modificar, el campo empieza vacío
// y vacío deja la que estaba.

#include "access/usuarios.h"
#include "store/almacen.h"

#include <QDialog>
#include <optional>

class QComboBox;
class QLineEdit;

namespace orv {

class PanEdUsuario : public QDialog {
    Q_OBJECT
public:
    // Sin id, usuario nuevo.
    PanEdUsuario(const Almacen& almacen, std::optional<qint64> idUsuario, QWidget* padre = nullptr);
    DatosUsuario datos() const;
    std::optional<qint64> idUsuario() const { return id_; }

private:
    void acepta();

    std::optional<qint64> id_;
    QLineEdit* txNomCompleto_;
    QLineEdit* txUser_;
    QLineEdit* txPass_;
    QComboBox* cbNivel_;
    QLineEdit* txComision_;
};

} // namespace orv
