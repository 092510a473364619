#pragma once
// Filas del almacén como texto, para compararlas enteras con las esperadas; el aviso de una
// acción; y los textos de Qt legibles en los mensajes de las pruebas.

#include "store/almacen.h"
#include "store/aviso.h"

#include <QSqlQuery>
#include <QSqlField>
#include <QSqlRecord>
#include <QStringList>
#include <functional>
#include <ostream>

inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace orv::prueba {

// Un texto por fila con sus valores separados por "|": los números (un valor numérico, o una
// columna numérica, como NUMERIC en el servidor, que llega como texto exacto) como números en los
// dos motores ("2", "0.5", "-401.25"), el nulo como "NULL", lo demás tal cual ("0101").
inline QStringList Filas(const Almacen& a, const QString& sql, const QVariantList& parametros = {}) {
    const QList<int> numericos = {QMetaType::Int, QMetaType::UInt, QMetaType::LongLong, QMetaType::ULongLong, QMetaType::Short,
                                  QMetaType::UShort, QMetaType::Double, QMetaType::Float};
    QStringList r;
    QSqlQuery q = a.consulta(sql, parametros);
    while (q.next()) {
        QStringList f;
        for (int i = 0; i < q.record().count(); ++i) {
            const QVariant v = q.value(i);
            const bool numero = numericos.contains(v.typeId()) || numericos.contains(q.record().field(i).metaType().id());
            f << (v.isNull() ? QStringLiteral("NULL") : numero ? QString::number(v.toDouble(), 'g', 15) : v.toString());
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
