#pragma once
// Envíos por correo a la casa central: la configuración del correo (panConfInt) y el módulo de
// envíos (panMensajeria), que junta listas, ventas, movimientos de stock y comisiones de un
// período en una página HTML y la manda adjunta.

#include "app/configuracion.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>
#include <functional>

class QCheckBox;
class QDateEdit;
class QLabel;
class QLineEdit;

namespace orv {

struct DatosCorreo;

class PanConfInt : public QDialog {
    Q_OBJECT
public:
    explicit PanConfInt(const Configuracion& conf, QWidget* padre = nullptr);
    void acepta();

private:
    const Configuracion& conf_;
    QLineEdit* destino_;
    QLineEdit* destinoNombre_;
    QLineEdit* de_;
    QLineEdit* deNombre_;
    QLineEdit* smtp_;
    QLineEdit* titulo_;
    QCheckBox* chkAut_;
    QLineEdit* usuario_;
    QLineEdit* clave_;
    QLabel* notaClave_;
};

class PanMensajeria : public QDialog {
    Q_OBJECT
public:
    PanMensajeria(const Almacen& almacen, const Configuracion& conf, const Reloj& reloj, QWidget* padre = nullptr);

    void configurar(); // BotCfgInt
    void conectar();   // Command28
    void enviar();     // BotConn
    // Archivo que se arma y se adjunta, en la carpeta de datos.
    QString archivoEnvio() const;

    // Puntos de interacción que las pruebas reemplazan.
    std::function<bool()> estaConectado;
    std::function<void(const DatosCorreo&, const QString& para, const QString& asunto, const QString& cuerpo,
                       const QString& nombre, const QString& adjunto)>
        envia;

private:
    const Almacen& almacen_;
    const Configuracion& conf_;
    const Reloj& reloj_;
    QDateEdit* desde_;
    QDateEdit* hasta_;
    QCheckBox* check_[4];
};

// Hay una red en uso (una interfaz activa, que no es la local, con dirección).
bool EstaConectado();

} // namespace orv
