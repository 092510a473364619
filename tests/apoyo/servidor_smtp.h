#pragma once
// Servidor SMTP de prueba en 127.0.0.1 (python3-aiosmtpd): guarda cada mensaje recibido como JSON
// en su carpeta, y cada intento de entrar con usuario y clave. Lo levanta y lo baja quien lo crea.

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTcpServer>
#include <QTemporaryDir>

namespace orv {

enum class Cifrado { No, StartTls };

// Un servidor SMTP de prueba: guarda cada mensaje como JSON en su carpeta. Con usuario y clave
// exige entrar; con Cifrado::StartTls ofrece STARTTLS (certificado propio, certificado()) y sólo
// acepta el usuario y la clave sobre la conexión cifrada.
class ServidorSmtp {
public:
    explicit ServidorSmtp(const QString& usuario = {}, const QString& clave = {}, Cifrado cifrado = Cifrado::No) {
        QTcpServer libre;
        libre.listen(QHostAddress::LocalHost, 0);
        puerto_ = libre.serverPort();
        libre.close();
        QStringList args{QStringLiteral(ORVANTA_SERVIDOR_SMTP), QString::number(puerto_), dir_.path()};
        if (!usuario.isEmpty()) args << usuario << clave;
        if (!usuario.isEmpty() && cifrado == Cifrado::StartTls) args << QStringLiteral("tls");
        proceso_.start(QStringLiteral("/usr/bin/python3"), args);
        for (int i = 0; i < 100 && !listo_; ++i) {
            proceso_.waitForReadyRead(100);
            listo_ = proceso_.readAllStandardOutput().contains("LISTO");
        }
    }
    ~ServidorSmtp() {
        proceso_.terminate();
        if (!proceso_.waitForFinished(3000)) proceso_.kill();
        proceso_.waitForFinished(3000);
    }
    bool listo() const { return listo_; }
    QString servidor() const { return QStringLiteral("127.0.0.1:%1").arg(puerto_); }
    int recibidos() const { return int(QDir(dir_.path()).entryList({QStringLiteral("mensaje*.json")}).size()); }
    // Veces que un cliente mandó usuario y clave (AUTH), bien o mal.
    int autenticaciones() const {
        return int(QDir(dir_.path()).entryList({QStringLiteral("autenticacion*.json")}).size());
    }
    // Certificado con el que el servidor cifra (PEM), para confiar en él.
    QString certificado() const { return dir_.filePath(QStringLiteral("certificado.pem")); }
    QJsonObject mensaje(int n) const {
        QFile f(dir_.filePath(QStringLiteral("mensaje%1.json").arg(n)));
        return f.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(f.readAll()).object() : QJsonObject{};
    }
    quint16 puerto() const { return puerto_; }

private:
    QTemporaryDir dir_;
    QProcess proceso_;
    quint16 puerto_ = 0;
    bool listo_ = false;
};

} // namespace orv
