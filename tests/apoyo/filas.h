#pragma once
// Filas del almacén como texto, para compararlas enteras con las esperadas en los dos motores; el
// aviso de una acción; y los textos de Qt legibles en los mensajes de las pruebas (este PrintTo debe
// verse en todo archivo de un programa de pruebas que muestre un QString).

#include "store/almacen.h"
#include "store/aviso.h"

#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <functional>
#include <ostream>

inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace orv::prueba {

// Un texto por fila con sus valores separados por "|": los números (un valor numérico, o una
// columna numérica, como NUMERIC en el servidor, que llega como texto exacto) redondeados a cuatro
// decimales y sin ceros de más en los dos motores ("2", "0.5", "-401.25"), el nulo como "NULL", lo
// demás tal cual ("0101", "2024-05-20").
inline QStringList Filas(const Almacen& a, const QString& sql, const QVariantList& parametros = {}) {
    const QList<int> numericos = {QMetaType::Int, QMetaType::UInt, QMetaType::LongLong, QMetaType::ULongLong, QMetaType::Short,
                                  QMetaType::UShort, QMetaType::Double, QMetaType::Float};
    const auto numero = [](double v) {
        QString t = QString::number(v, 'f', 4);
        while (t.endsWith(u'0')) t.chop(1);
        if (t.endsWith(u'.')) t.chop(1);
        return t == QStringLiteral("-0") ? QStringLiteral("0") : t;
    };
    QStringList r;
    QSqlQuery q = a.consulta(sql, parametros);
    while (q.next()) {
        QStringList f;
        for (int i = 0; i < q.record().count(); ++i) {
            const QVariant v = q.value(i);
            const bool esNumero = numericos.contains(v.typeId()) || numericos.contains(q.record().field(i).metaType().id());
            f << (v.isNull() ? QStringLiteral("NULL") : esNumero ? numero(v.toDouble()) : v.toString());
        }
        r << f.join(u'|');
    }
    return r;
}

// El texto del aviso que lanza `accion`, "ErrorAlmacen" si lo que falla es el almacén, y vacío si
// no falla nada.
inline QString AvisoDe(const std::function<void()>& accion) {
    try {
        accion();
    } catch (const Aviso& e) {
        return e.texto();
    } catch (const ErrorAlmacen&) {
        return QStringLiteral("ErrorAlmacen");
    }
    return {};
}

} // namespace orv::prueba
