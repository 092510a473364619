#pragma once
// Valores de configuración de la máquina: textos con nombre, agrupados por aplicación y sección.
//
// Dos raíces, como siempre tuvo el sistema:
//   máquina  <carpeta de datos>/<aplicación>.ini  (ej. Orvanta.ini): se escribe siempre aquí y se lee primero.
//   usuario  QSettings del usuario (~/.config/Orvanta/<aplicación>.conf): ubicación vieja, sólo lectura;
//            un valor que sólo está ahí se copia a la raíz de máquina la primera vez que se lee.
// Todo valor es texto; vacío equivale a "no está". Nada se guarda en memoria entre lecturas.

#include <QString>

namespace orv {

namespace clave {
inline const QString aplicacion = QStringLiteral("Orvanta");
inline const QString miscelaneas = QStringLiteral("Miscelaneas");
inline const QString configuracion = QStringLiteral("Configuracion");
inline const QString ticket = QStringLiteral("Ticket");
} // namespace clave

class Configuracion {
public:
    // Raíz de usuario: la del usuario del sistema operativo.
    explicit Configuracion(QString carpetaDatos);
    // Raíz de usuario en un archivo dado (pruebas, instalaciones portátiles).
    Configuracion(QString carpetaDatos, QString archivoUsuario);

    // Lee el valor; vacío si no está en ninguna raíz. Promueve a la máquina lo que sólo tenga el usuario.
    QString LeeClave(const QString& aplicacion, const QString& seccion, const QString& clave) const;
    // Escribe en la raíz de máquina. Un fallo al escribir no se informa.
    void GrabaClave(const QString& aplicacion, const QString& seccion, const QString& clave,
                    const QString& valor) const;

    // Lectura de bajo nivel en la raíz de máquina. `ruta` es "SOFTWARE\<aplicación>\<sección>\"
    // (separadores simples o dobles). Devuelve `defecto` si el valor falta o está vacío; un
    // carácter nulo final se quita.
    QString LeeRegistro(const QString& ruta, const QString& nombre, const QString& defecto) const;
    // Escritura de bajo nivel en la raíz de máquina; crea el archivo y la carpeta si faltan.
    void GrabaRegistro(const QString& ruta, const QString& nombre, const QString& texto) const;

    // Lectura de la raíz de usuario (la ubicación vieja).
    QString LeeUsuario(const QString& aplicacion, const QString& seccion, const QString& clave) const;

    // Archivo de la raíz de máquina para una aplicación.
    QString archivoMaquina(const QString& aplicacion = clave::aplicacion) const;
    QString archivoUsuario(const QString& aplicacion = clave::aplicacion) const;
    const QString& carpetaDatos() const { return carpeta_; }

    // Atajos para la aplicación del sistema.
    QString lee(const QString& seccion, const QString& nombre) const {
        return LeeClave(clave::aplicacion, seccion, nombre);
    }
    void graba(const QString& seccion, const QString& nombre, const QString& valor) const {
        GrabaClave(clave::aplicacion, seccion, nombre, valor);
    }

private:
    QString carpeta_;
    QString archivoUsuario_; // vacío: el del sistema operativo
};

} // namespace orv
