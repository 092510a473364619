#pragma once
// Piezas internas de la grilla compartidas por sus archivos (la vista, el modelo, la búsqueda y la
// agrupación). No se usan fuera de widgets/.

#include "store/almacen.h"
#include "widgets/grilla.h"

#include <QFrame>
#include <QSqlQuery>
#include <optional>

class QLabel;
class QToolButton;

namespace orv {

class Grilla;

namespace grilla {

inline const char* const kMimeColumna = "application/x-orvanta-columna";
constexpr int kRolRegistro = Qt::UserRole + 1; // fila de un grupo: sus valores
constexpr int kRolCargado = Qt::UserRole + 2;  // grupo: sus filas ya leídas

// Consulta sólo hacia adelante con parámetros ligados.
inline QSqlQuery ejecutaAdelante(Almacen& a, const QString& sql, const QVariantList& parametros) {
    return a.consulta(sql, parametros);
}

bool esEntero(const QVariant& v);
// "el valor de col empieza con el texto, sin distinguir mayúsculas", como la evalúa la búsqueda
// fila por fila, con un parámetro: el que da parametroEmpieza.
QString condicionEmpieza(const Almacen& a, const QString& col);
QVariant parametroEmpieza(const Almacen& a, const QString& texto);

} // namespace grilla

// Las consultas de la búsqueda sobre la consulta base de la grilla, ordenada por la columna c
// (entera, o de texto que el motor ordena por sus bytes), en el sentido de la grilla.
struct Grilla::PorOrden {
    Almacen& almacen;
    const QString& base;
    const QVariantList& parametros;
    QString c;
    bool desc;
    // "Antes" y "después" en el orden de la grilla.
    QString antesDe = desc ? QStringLiteral(" > ?") : QStringLiteral(" < ?");
    QString desdeV = desc ? QStringLiteral(" <= ?") : QStringLiteral(" >= ?");
    QString hastaV = desc ? QStringLiteral(" >= ?") : QStringLiteral(" <= ?");
    QString directo = desc ? QStringLiteral(" DESC") : QString();
    QString inverso = desc ? QString() : QStringLiteral(" DESC");
    QString desde = QStringLiteral(" FROM (") + base + QStringLiteral(") AS q WHERE ");
    // Primer y último valor no nulos de la columna, en el orden de la grilla.
    QVariant a = {}, z = {};
    bool entero = true;

    QVariant primero(const QString& condicion, const QVariantList& extra, const QString& sentido) const {
        QSqlQuery q = grilla::ejecutaAdelante(almacen,
                                              QStringLiteral("SELECT ") + c + desde + condicion +
                                                  QStringLiteral(" ORDER BY ") + c + sentido + QStringLiteral(" LIMIT 1"),
                                              parametros + extra);
        return q.next() ? q.value(0) : QVariant();
    }
    qint64 cuenta(const QString& condicion, const QVariantList& extra) const {
        QSqlQuery q =
            grilla::ejecutaAdelante(almacen, QStringLiteral("SELECT COUNT(*)") + desde + condicion, parametros + extra);
        return q.next() ? q.value(0).toLongLong() : 0;
    }
    bool esDeLaColumna(const QVariant& v) const {
        return entero ? grilla::esEntero(v) : v.typeId() == QMetaType::QString;
    }
    // Un número que crece con el valor (para textos, sus primeros ocho bytes): sirve para estimar
    // en qué parte del orden cae un valor.
    double clave(const QVariant& v) const {
        if (entero) return double(v.toLongLong());
        const QByteArray b = v.toString().toUtf8();
        quint64 k = 0;
        for (int i = 0; i < 8; ++i) k = (k << 8) | (i < b.size() ? quint8(b[i]) : 0u);
        return double(k);
    }
    // Si v está después de w en el orden de la grilla.
    bool despues(const QVariant& v, const QVariant& w) const {
        const bool mayor = entero ? v.toLongLong() > w.toLongLong() : v.toString().toUtf8() > w.toString().toUtf8();
        const bool menor = entero ? v.toLongLong() < w.toLongLong() : v.toString().toUtf8() < w.toString().toUtf8();
        return desc ? menor : mayor;
    }

    // 0. Primer y último valor no nulos: dicen de qué tipo es la columna y acotan la búsqueda.
    // -1 si la columna sólo tiene nulos (nada coincide), nada si no es entera (ni de texto, si se
    // admite texto).
    std::optional<int> leeExtremos(bool admiteTexto) {
        const QVariant primeroDeTodos = primero(c + QStringLiteral(" IS NOT NULL"), {}, directo);
        if (primeroDeTodos.isNull()) return -1;
        const QVariant ultimoDeTodos = primero(c + QStringLiteral(" IS NOT NULL"), {}, inverso);
        entero = grilla::esEntero(primeroDeTodos) && grilla::esEntero(ultimoDeTodos);
        const bool texto = primeroDeTodos.typeId() == QMetaType::QString && ultimoDeTodos.typeId() == QMetaType::QString;
        if (!entero && !(admiteTexto && texto)) return std::nullopt;
        a = primeroDeTodos;
        z = ultimoDeTodos;
        return 0;
    }
};

// Banda sobre la grilla: se suelta aquí el título de una columna para agrupar por ella.
class BandaAgrupar : public QFrame {
public:
    explicit BandaAgrupar(Grilla& g);
    void muestra(const QString& titulo);
    void fijaTexto(const QString& texto);

protected:
    void dragEnterEvent(QDragEnterEvent* e) override;
    void dropEvent(QDropEvent* e) override;

private:
    Grilla& grilla_;
    QLabel* texto_;
    QToolButton* ficha_;
};

} // namespace orv
