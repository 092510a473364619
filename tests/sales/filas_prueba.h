#pragma once
// Filas del almacén como texto, para compararlas enteras con las esperadas; y los textos de Qt
// legibles en los mensajes de las pruebas.

#include "store/almacen.h"

#include <QSqlQuery>
#include <QSqlField>
#include <QSqlRecord>
#include <QStringList>
#include <ostream>

inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace orv::prueba {

// Un texto por fila con sus valores separados por "|": los números (un valor numérico, o una
// columna numérica, como NUMERIC en el servidor, que llega como texto exacto) como números en los
// dos motores ("2", "0.5", "-401.25"), el nulo como "NULL", lo demás tal cual ("0101").
inline QStringList Filas(const Almacen& a, const QString& sql, const QVariantList& parametros = {}) {
    const auto numerico = [](QMetaType t) {
        for (auto n : {QMetaType::Int, QMetaType::UInt, QMetaType::LongLong, QMetaType::ULongLong, QMetaType::Short,
                       QMetaType::UShort, QMetaType::Double, QMetaType::Float})
            if (t.id() == int(n)) return true;
        return false;
    };
    QStringList r;
    QSqlQuery q = a.consulta(sql, parametros);
    while (q.next()) {
        QStringList f;
        for (int i = 0; i < q.record().count(); ++i) {
            const QVariant v = q.value(i);
            f << (v.isNull() ? QStringLiteral("NULL")
                  : numerico(v.metaType()) || numerico(q.record().field(i).metaType()) ? QString::number(v.toDouble(), 'g', 15)
                                                                                       : v.toString());
        }
        r << f.join(u'|');
    }
    return r;
}

} // namespace orv::prueba
