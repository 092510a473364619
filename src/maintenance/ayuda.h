#pragma once
// Textos de ayuda: páginas HTML que viajan dentro del programa (recursos ":/ayuda/"). Cada página
// es un tema: su título es el <title>, y <meta name="pantallas" content="..."> nombra las pantallas
// (nombres de objeto) cuya tecla F1 la abre. Los temas se ordenan por el nombre del archivo.

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace orv {

inline const QString kCarpetaAyuda = QStringLiteral(":/ayuda");

struct TemaAyuda {
    QString archivo;      // "02_venta.html"
    QString titulo;
    QStringList pantallas;
    QUrl direccion() const { return QUrl(QStringLiteral("qrc:/ayuda/") + archivo); }
};

// Los temas de una carpeta de páginas (por omisión, los que trae el programa).
QList<TemaAyuda> TemasAyuda(const QString& carpeta = kCarpetaAyuda);

// El tema de la pantalla: `nombres` son los nombres de objeto desde el control con el foco hacia
// afuera (el control, su panel, su ventana...); gana el primero que un tema nombra. -1 si ninguno.
int TemaDePantalla(const QList<TemaAyuda>& temas, const QStringList& nombres);

} // namespace orv
