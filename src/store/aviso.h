#pragma once
// Mensaje para el usuario: la lógica lo lanza y la pantalla lo muestra tal cual.

#include <QString>
#include <exception>
#include <utility>

namespace orv {

enum class Icono { Ninguno, Informacion, Exclamacion, Pregunta, Stop };

class Aviso : public std::exception {
public:
    Aviso(QString texto, QString titulo = QStringLiteral("Error"), Icono icono = Icono::Stop)
        : texto_(std::move(texto)), titulo_(std::move(titulo)), icono_(icono), utf8_(texto_.toUtf8()) {}

    const QString& texto() const { return texto_; }
    const QString& titulo() const { return titulo_; }
    Icono icono() const { return icono_; }
    const char* what() const noexcept override { return utf8_.constData(); }

private:
    QString texto_;
    QString titulo_;
    Icono icono_;
    QByteArray utf8_;
};

// Aviso con título "Atención" y signo de exclamación: algo que el usuario puede corregir.
inline Aviso AvisoAtencion(QString texto) { return Aviso(std::move(texto), QStringLiteral("Atención"), Icono::Exclamacion); }

} // namespace orv
