#pragma once
// Deja un archivo sin permiso de escritura, también para root (atributo inmutable).

#include <QFile>
#include <QString>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace orv::prueba {

class SoloLectura {
public:
    explicit SoloLectura(QString ruta) : ruta_(std::move(ruta)) {
        QFile::setPermissions(ruta_, QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther);
        if (::geteuid() == 0) fijaInmutable(true);
    }
    ~SoloLectura() {
        if (inmutable_) fijaInmutable(false);
        QFile::setPermissions(ruta_, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    }
    // ¿Quedó de verdad sin escritura? (un sistema de archivos sin atributos no lo permite)
    bool vale() const {
        QFile f(ruta_);
        return !f.open(QIODevice::Append);
    }

private:
    void fijaInmutable(bool si) {
        const int fd = ::open(QFile::encodeName(ruta_).constData(), O_RDONLY);
        if (fd < 0) return;
        int banderas = 0;
        if (::ioctl(fd, FS_IOC_GETFLAGS, &banderas) == 0) {
            banderas = si ? (banderas | FS_IMMUTABLE_FL) : (banderas & ~FS_IMMUTABLE_FL);
            if (::ioctl(fd, FS_IOC_SETFLAGS, &banderas) == 0) inmutable_ = si;
        }
        ::close(fd);
    }
    QString ruta_;
    bool inmutable_ = false;
};

} // namespace orv::prueba
