#pragma once
// Pantalla de ingreso: nombre de usuario y contraseña. Cada intento espera un segundo antes de
// responder, sin congelar la ventana. "&Cancelar" (o Esc) termina el programa.

#include "access/ingreso.h"
#include "store/almacen.h"

#include <QDialog>
#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace orv {

class PanIngreso : public QDialog {
    Q_OBJECT
public:
    explicit PanIngreso(Almacen& almacen, QWidget* padre = nullptr);

    // Usuario que ingresó (sólo tras Accepted).
    const std::optional<UsuarioIngresado>& usuario() const { return usuario_; }
    void fijaUsuario(const QString& nombre);
    // Espera de cada intento, en milisegundos (1000 salvo en pruebas).
    void fijaPausa(int ms);
    // Nombre del usuario del sistema operativo, tal como se muestra.
    static QString usuarioDelSistema();

    void reject() override;

private:
    void acepta();
    void verifica();
    void habilita(bool si);

    Almacen& almacen_;
    std::optional<UsuarioIngresado> usuario_;
    QLineEdit* txUser_;
    QLineEdit* txPass_;
    QPushButton* aceptar_;
    QTimer* pausa_;
};

} // namespace orv
