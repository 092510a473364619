#pragma once
// Filas de una consulta como textos "a|b|c", comparables en los dos motores.

#include "store/almacen.h"

#include <QRegularExpression>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <string>
#include <vector>

namespace orv::prueba {

// Nulo es "-"; un número (SQLite lo da double o entero, PostgreSQL como texto decimal exacto)
// va con cuatro decimales; un código con ceros adelante, una fecha o un texto, tal cual.
inline QString comoTexto(const QVariant& v) {
    static const QRegularExpression numero(QStringLiteral("^-?(0|[1-9]\\d*)(\\.\\d+)?$"));
    if (v.isNull()) return QStringLiteral("-");
    const QString t = v.toString();
    const bool esNumero = v.typeId() == QMetaType::Double || numero.match(t).hasMatch();
    return esNumero ? QString::number(v.toDouble(), 'f', 4) : t;
}

using Filas = std::vector<std::string>;

inline Filas filas(const Almacen& a, const QString& sql, const QVariantList& parametros = {}) {
    Filas r;
    QSqlQuery q = a.consulta(sql, parametros);
    while (q.next()) {
        QStringList f;
        for (int i = 0; i < q.record().count(); ++i) f << comoTexto(q.value(i));
        r.push_back(f.join(u'|').toStdString());
    }
    return r;
}

// Las filas esperadas, escritas a mano, pasan por la misma lectura.
inline Filas filas(const QStringList& escritas) {
    Filas r;
    for (const QString& f : escritas) {
        QStringList campos;
        for (const QString& c : f.split(u'|')) campos << (c == QStringLiteral("-") ? c : comoTexto(c));
        r.push_back(campos.join(u'|').toStdString());
    }
    return r;
}

} // namespace orv::prueba
