#include "store/archivos.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace orv {

bool CreaCarpetaPrivada(const QString& carpeta) {
    if (carpeta.isEmpty()) return false;
    const QFileInfo fi(carpeta);
    if (fi.exists()) return fi.isDir();
    const QString padre = fi.absolutePath();
    if (!QDir().mkpath(padre)) return false;
    // Se crea ya con sus permisos: no hay un momento en que otro usuario pueda entrar.
    QDir(padre).mkdir(fi.fileName(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QFileInfo(carpeta).isDir();
}

bool CreaArchivoPrivado(const QString& archivo) {
    if (QFileInfo::exists(archivo)) return true;
    QFile f(archivo);
    // NewOnly: si otro proceso lo creó recién, se respeta el suyo.
    if (f.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner)) return true;
    return QFileInfo::exists(archivo);
}

} // namespace orv
