#pragma once
// Esquema propio de un banco en el servidor PostgreSQL de pruebas (ORVANTA_PRUEBA_PG): se crea al
// pedirlo y se borra al salir, también si algo falla.

#include "store/almacen.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QUrl>
#include <QUrlQuery>

struct EsquemaPostgreSQL {
    QString servidor = qEnvironmentVariable("ORVANTA_PRUEBA_PG");
    QString nombre;
    bool hay() const { return !servidor.isEmpty(); }
    // Crea el esquema y devuelve el destino para Almacen::abre.
    QString crea() {
        nombre = QStringLiteral("banco_%1_%2")
                     .arg(QCoreApplication::applicationPid())
                     .arg(QRandomGenerator::global()->generate(), 0, 36);
        orv::Almacen::abrePostgreSQL(servidor)->ejecuta(QStringLiteral("CREATE SCHEMA ") + nombre);
        QUrl url(servidor);
        QUrlQuery q(url);
        q.addQueryItem(QStringLiteral("options"), QStringLiteral("-csearch_path=") + nombre);
        url.setQuery(q);
        return url.toString(QUrl::FullyEncoded);
    }
    ~EsquemaPostgreSQL() {
        if (nombre.isEmpty()) return;
        try {
            orv::Almacen::abrePostgreSQL(servidor)->ejecuta(QStringLiteral("DROP SCHEMA ") + nombre + QStringLiteral(" CASCADE"));
        } catch (const orv::ErrorAlmacen&) {
        }
    }
};
