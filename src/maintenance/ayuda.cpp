#include "maintenance/ayuda.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace orv {

namespace {

// Lo que hace falta de la cabeza de la página; el cuerpo lo dibuja el visor.
TemaAyuda leeTema(const QString& ruta, const QString& archivo) {
    QFile f(ruta);
    TemaAyuda t{archivo, {}, {}};
    if (!f.open(QIODevice::ReadOnly)) return t;
    const QString texto = QString::fromUtf8(f.readAll());
    static const QRegularExpression titulo(QStringLiteral("<title>([^<]*)</title>"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression pantallas(QStringLiteral("<meta\\s+name=\"pantallas\"\\s+content=\"([^\"]*)\""),
                                              QRegularExpression::CaseInsensitiveOption);
    if (const auto m = titulo.match(texto); m.hasMatch()) t.titulo = m.captured(1).trimmed();
    if (const auto m = pantallas.match(texto); m.hasMatch()) t.pantallas = m.captured(1).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (t.titulo.isEmpty()) t.titulo = QFileInfo(archivo).completeBaseName();
    return t;
}

} // namespace

QList<TemaAyuda> TemasAyuda(const QString& carpeta) {
    QList<TemaAyuda> temas;
    const QDir dir(carpeta);
    for (const QString& archivo : dir.entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name))
        temas << leeTema(dir.filePath(archivo), archivo);
    return temas;
}

int TemaDePantalla(const QList<TemaAyuda>& temas, const QStringList& nombres) {
    for (const QString& nombre : nombres) {
        if (nombre.isEmpty()) continue;
        for (int i = 0; i < temas.size(); ++i)
            if (temas[i].pantallas.contains(nombre)) return i;
    }
    return -1;
}

} // namespace orv
