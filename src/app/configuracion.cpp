#include "app/configuracion.h"

#include "store/archivos.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStringList>
#include <memory>

namespace orv {

namespace {

// "SOFTWARE\Orvanta\Miscelaneas\" (o con separadores dobles) -> {"Orvanta", "Miscelaneas"}.
QStringList partesRuta(const QString& ruta) {
    QStringList partes = ruta.split(QLatin1Char('\\'), Qt::SkipEmptyParts);
    if (!partes.isEmpty() && partes.first().compare(QLatin1String("SOFTWARE"), Qt::CaseInsensitive) == 0)
        partes.removeFirst();
    return partes;
}

// Un valor escrito a mano con comas sin comillas llega como lista: se recompone.
QString comoTexto(const QVariant& v) {
    if (v.typeId() == QMetaType::QStringList) return v.toStringList().join(QLatin1Char(','));
    return v.toString();
}

bool sePuedeEscribir(const QString& archivo) {
    const QFileInfo fi(archivo);
    if (fi.exists()) return fi.isFile() && fi.isWritable();
    const QFileInfo carpeta(fi.absolutePath());
    return carpeta.isDir() && carpeta.isWritable();
}

} // namespace

Configuracion::Configuracion(QString carpetaDatos) : carpeta_(std::move(carpetaDatos)) {}

Configuracion::Configuracion(QString carpetaDatos, QString archivoUsuario)
    : carpeta_(std::move(carpetaDatos)), archivoUsuario_(std::move(archivoUsuario)) {}

QString Configuracion::archivoMaquina(const QString& aplicacion) const {
    return QDir(carpeta_).filePath(aplicacion + QStringLiteral(".ini"));
}

QString Configuracion::archivoUsuario(const QString& aplicacion) const {
    if (!archivoUsuario_.isEmpty()) return archivoUsuario_;
    return QSettings(QSettings::UserScope, clave::aplicacion, aplicacion).fileName();
}

QString Configuracion::LeeRegistro(const QString& ruta, const QString& nombre, const QString& defecto) const {
    const QStringList partes = partesRuta(ruta);
    if (partes.isEmpty() || nombre.isEmpty()) return defecto;
    const QString archivo = archivoMaquina(partes.first());
    if (!QFileInfo(archivo).isFile()) return defecto;

    QSettings s(archivo, QSettings::IniFormat);
    const QString grupo = partes.mid(1).join(QLatin1Char('/'));
    if (!grupo.isEmpty()) s.beginGroup(grupo);
    QString valor = comoTexto(s.value(nombre));
    if (valor.isEmpty()) return defecto;
    if (valor.endsWith(QChar(u'\0'))) valor.chop(1);
    return valor;
}

void Configuracion::GrabaRegistro(const QString& ruta, const QString& nombre, const QString& texto) const {
    const QStringList partes = partesRuta(ruta);
    if (partes.isEmpty() || nombre.isEmpty()) return;
    const QString archivo = archivoMaquina(partes.first());
    // La carpeta de datos y la configuración nacen sólo para el dueño; al reescribirlo, QSettings
    // conserva los permisos del archivo.
    CreaCarpetaPrivada(QFileInfo(archivo).absolutePath());
    if (sePuedeEscribir(archivo)) CreaArchivoPrivado(archivo);
    // Lo que no se puede escribir se pierde en silencio: la próxima lectura da el valor anterior.
    if (!sePuedeEscribir(archivo)) return;

    QSettings s(archivo, QSettings::IniFormat);
    const QString grupo = partes.mid(1).join(QLatin1Char('/'));
    if (!grupo.isEmpty()) s.beginGroup(grupo);
    const bool estaba = s.contains(nombre);
    const QVariant anterior = s.value(nombre);
    s.setValue(nombre, texto);
    s.sync();
    if (s.status() != QSettings::NoError) {
        // QSettings conserva en memoria lo no escrito; se repone lo que hay en el archivo.
        if (estaba) s.setValue(nombre, anterior);
        else s.remove(nombre);
    }
}

QString Configuracion::LeeUsuario(const QString& aplicacion, const QString& seccion, const QString& clave) const {
    std::unique_ptr<QSettings> s;
    if (archivoUsuario_.isEmpty())
        s = std::make_unique<QSettings>(QSettings::UserScope, clave::aplicacion, aplicacion);
    else
        s = std::make_unique<QSettings>(archivoUsuario_, QSettings::IniFormat);
    s->beginGroup(seccion);
    return comoTexto(s->value(clave));
}

QString Configuracion::LeeClave(const QString& aplicacion, const QString& seccion, const QString& clave) const {
    const QString ruta = QStringLiteral("SOFTWARE\\") + aplicacion + QLatin1Char('\\') + seccion + QLatin1Char('\\');
    const QString deMaquina = LeeRegistro(ruta, clave, QString());
    if (!deMaquina.isEmpty()) return deMaquina;
    const QString deUsuario = LeeUsuario(aplicacion, seccion, clave);
    if (deUsuario.isEmpty()) return {};
    GrabaRegistro(ruta, clave, deUsuario);
    return deUsuario;
}

void Configuracion::GrabaClave(const QString& aplicacion, const QString& seccion, const QString& clave,
                               const QString& valor) const {
    // Separadores dobles a propósito: nombran la misma clave que la lectura.
    const QString ruta =
        QStringLiteral("SOFTWARE\\\\") + aplicacion + QStringLiteral("\\\\") + seccion + QStringLiteral("\\\\");
    GrabaRegistro(ruta, clave, valor);
}

} // namespace orv
