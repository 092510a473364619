#pragma once
// Catálogo libre de informes: todas las definiciones de las carpetas de informes, para imprimir,
// ver, enviar por correo o exportar sin selección. Y la pantalla de datos del correo.

#include "app/configuracion.h"

#include <QDialog>
#include <functional>

class QLineEdit;
class QListWidget;
class QPlainTextEdit;

namespace orv {

class SalidaInformes;

// "Enviar por e-mail": para, nombre, asunto y mensaje. Aceptar exige un destinatario.
class PanMailto : public QDialog {
    Q_OBJECT
public:
    explicit PanMailto(const Configuracion& conf, QWidget* padre = nullptr);
    QString enviarA() const;
    QString asunto() const;
    QString cuerpo() const;
    QString nombre() const;
    void fijaAsunto(const QString& asunto);

private:
    void acepta();
    QLineEdit* txEnviarA_;
    QLineEdit* text1_;
    QLineEdit* txAsunto_;
    QPlainTextEdit* txCuerpo_;
};

class PanPrintCrystal : public QDialog {
    Q_OBJECT
public:
    PanPrintCrystal(SalidaInformes& salida, const Configuracion& conf, QWidget* padre = nullptr);

    QListWidget* lista() const { return file1_; }
    // Nombre del informe elegido; vacío si no hay ninguno.
    QString elegido() const;

    void imprimir();     // Command1: a la impresora
    void vistaPrevia();  // Command2: a una ventana
    void enviarMail();   // Command4: HTML adjunto por correo
    void exportar();     // Command5: HTML, Excel, ODT o PDF

    // Punto de interacción: el archivo de "Exportar diferentes formatos" (las pruebas lo reemplazan).
    std::function<QString()> eligeArchivo;

private:
    SalidaInformes& salida_;
    const Configuracion& conf_;
    QListWidget* file1_;
};

} // namespace orv
