#pragma once
// Apoyo de las pruebas de informes: el texto de un PDF, un archivo escrito o leído de una vez y
// qué le falta o le sobra a un texto (el texto de un aviso está en el apoyo común).

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"

#include <QFile>
#include <QProcess>
#include <QStringDecoder>
#include <QStringList>
#include <string>

namespace orv::prueba {

// Texto de un PDF con pdftotext, tal cual: una ligadura ("ﬁ" en lugar de "fi") queda a la vista,
// como la vería quien busca una palabra en el PDF.
inline QString textoDePdf(const QString& ruta) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), ruta, QStringLiteral("-")});
    p.waitForFinished(30000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

// El contenido tal cual, también la marca de orden de bytes del comienzo.
inline QString leeArchivo(const QString& ruta) {
    QFile f(ruta);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return f.open(QIODevice::ReadOnly) ? QString(utf8(f.readAll())) : QString();
}

inline QString escribeArchivo(const QString& ruta, const QByteArray& contenido) {
    QFile f(ruta);
    if (f.open(QIODevice::WriteOnly)) f.write(contenido);
    return ruta;
}

// "falta X" por cada X de `trae` que el texto no tiene y "sobra X" por cada X de `noTrae` que
// tiene; vacío si el texto cumple con todo.
inline std::string discrepancias(const QString& texto, const QStringList& trae, const QStringList& noTrae = {}) {
    QStringList d;
    for (const QString& t : trae)
        if (!texto.contains(t)) d << QStringLiteral("falta ") + t;
    for (const QString& t : noTrae)
        if (texto.contains(t)) d << QStringLiteral("sobra ") + t;
    return d.join(QStringLiteral("; ")).toStdString();
}

} // namespace orv::prueba
