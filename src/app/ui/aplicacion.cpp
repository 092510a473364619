#include "app/ui/aplicacion.h"

#include "widgets/mensajes.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QMutex>
#include <exception>

namespace orv {

namespace {

QString& archivoRegistro() {
    static QString ruta;
    return ruta;
}

QtMessageHandler& manejadorAnterior() {
    static QtMessageHandler anterior = nullptr;
    return anterior;
}

void anota(QtMsgType tipo, const QMessageLogContext& contexto, const QString& texto) {
    if (tipo == QtCriticalMsg || tipo == QtFatalMsg || tipo == QtWarningMsg) {
        static QMutex mutex;
        const QMutexLocker cierre(&mutex);
        QFile f(archivoRegistro());
        // Se crea ya privado: puede nombrar clientes o importes.
        if (!archivoRegistro().isEmpty() &&
            f.open(QIODevice::Append | QIODevice::Text, QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
            const char* nivel = tipo == QtWarningMsg ? "aviso" : "falla";
            f.write(QStringLiteral("%1 %2: %3\n")
                        .arg(QDateTime::currentDateTime().toString(Qt::ISODate), QLatin1String(nivel), texto)
                        .toUtf8());
        }
    }
    if (manejadorAnterior()) manejadorAnterior()(tipo, contexto, texto);
}

} // namespace

AplicacionOrvanta::AplicacionOrvanta(int& argc, char** argv) : QApplication(argc, argv) {}

bool AplicacionOrvanta::notify(QObject* receptor, QEvent* evento) {
    try {
        return QApplication::notify(receptor, evento);
    } catch (const std::exception& e) {
        MensajeFallaInesperada(e.what(), activeWindow());
    } catch (...) {
        MensajeFallaInesperada(nullptr, activeWindow());
    }
    return false;
}

void AplicacionOrvanta::registraEn(const QString& carpeta) {
    archivoRegistro() = carpeta.isEmpty() ? QString() : QDir(carpeta).filePath(QStringLiteral("orvanta.log"));
    if (!manejadorAnterior()) manejadorAnterior() = qInstallMessageHandler(anota);
}

} // namespace orv
