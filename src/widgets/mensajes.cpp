#include "widgets/mensajes.h"

#include "store/entrada.h"

#include <QAbstractButton>
#include <QPushButton>

namespace orv {

QMessageBox::Icon iconoDeCaja(Icono icono) {
    switch (icono) {
    case Icono::Ninguno:
        return QMessageBox::NoIcon;
    case Icono::Informacion:
        return QMessageBox::Information;
    case Icono::Exclamacion:
        return QMessageBox::Warning;
    case Icono::Pregunta:
        return QMessageBox::Question;
    case Icono::Stop:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

void Mensaje(const QString& texto, const QString& titulo, Icono icono, QWidget* padre) {
    QMessageBox caja(iconoDeCaja(icono), titulo, texto, QMessageBox::Ok, padre);
    caja.button(QMessageBox::Ok)->setText(QStringLiteral("Aceptar"));
    caja.exec();
}

void MensajeError(const QString& texto, QWidget* padre) {
    Mensaje(texto, QStringLiteral("Error"), Icono::Stop, padre);
}

void MensajeAtencion(const QString& texto, QWidget* padre) {
    Mensaje(texto, QStringLiteral("Atención"), Icono::Exclamacion, padre);
}

void MuestraAviso(const Aviso& aviso, QWidget* padre) { Mensaje(aviso.texto(), aviso.titulo(), aviso.icono(), padre); }

bool PreguntaSiNo(const QString& texto, const QString& titulo, Icono icono, QWidget* padre) {
    QMessageBox caja(iconoDeCaja(icono), titulo, texto, QMessageBox::Yes | QMessageBox::No, padre);
    caja.button(QMessageBox::Yes)->setText(QStringLiteral("Sí"));
    caja.button(QMessageBox::No)->setText(QStringLiteral("No"));
    caja.setEscapeButton(QMessageBox::No);
    return caja.exec() == QMessageBox::Yes;
}

bool Pregunta(const QString& texto, QWidget* padre) {
    return PreguntaSiNo(texto + QStringLiteral(" ??"), QStringLiteral("Pregunta"), Icono::Pregunta, padre);
}

void MensajeErrorAlmacen(const ErrorAlmacen& e, QWidget* padre) {
    Mensaje(QStringLiteral("Error detectado: ") + e.descripcion(), QStringLiteral("Error ") + e.numero(), Icono::Stop,
            padre);
}

void MensajeFallaInesperada(const char* que, QWidget* padre) {
    const QString motivo = que && *que ? QString::fromUtf8(que) : QStringLiteral("sin descripción");
    qCritical("Falla inesperada: %s", qUtf8Printable(motivo));
    MensajeError(QStringLiteral("Ocurrió una falla inesperada: ") + motivo +
                     QStringLiteral("\nLo que estaba haciendo no se completó; lo ya guardado no cambió."),
                 padre);
}

bool Intenta(QWidget* padre, const std::function<void()>& accion) {
    try {
        accion();
        return true;
    } catch (const Aviso& a) {
        MuestraAviso(a, padre);
    } catch (const ErrorAlmacen& e) {
        MensajeErrorAlmacen(e, padre);
    } catch (const ImporteFueraDeRango&) {
        MensajeError(kImporteFueraDeRango, padre);
    } catch (const std::exception& e) {
        MensajeFallaInesperada(e.what(), padre);
    } catch (...) {
        MensajeFallaInesperada(nullptr, padre);
    }
    return false;
}

bool Intenta(QWidget* padre, const std::function<void()>& accion, const QString& siFalla) {
    QString motivo;
    try {
        accion();
        return true;
    } catch (const Aviso& a) {
        motivo = a.texto();
    } catch (const ErrorAlmacen& e) {
        motivo = e.descripcion();
    } catch (const std::exception& e) {
        motivo = QString::fromUtf8(e.what());
    } catch (...) {
        motivo = QStringLiteral("sin descripción");
    }
    qWarning("%s (%s)", qUtf8Printable(siFalla), qUtf8Printable(motivo));
    MensajeError(siFalla, padre);
    return false;
}

} // namespace orv
