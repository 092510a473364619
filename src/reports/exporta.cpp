#include "reports/exporta.h"

#include "store/aviso.h"
#include "store/formato.h"

#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QSqlError>
#include <QSqlField>
#include <QSqlRecord>
#include <xlsxwriter.h>

#include <vector>

namespace orv {

namespace {

struct Columnas {
    std::vector<int> indices;
    QStringList titulos;
};

Columnas columnasVisibles(const QSqlRecord& r, const OpcionesExporta& o) {
    Columnas c;
    for (int i = 0; i < r.count(); ++i) {
        if (o.omitir.contains(r.fieldName(i), Qt::CaseInsensitive)) continue;
        c.indices.push_back(i);
        c.titulos << (i < o.titulos.size() && !o.titulos.at(i).isEmpty() ? o.titulos.at(i)
                                                                          : r.fieldName(i));
    }
    return c;
}

// Texto de una celda con formato fijo, sin depender del idioma del equipo.
QString textoCelda(const QVariant& v) {
    if (v.isNull()) return {};
    switch (v.typeId()) {
    case QMetaType::QDate:
        return v.toDate().toString(Qt::ISODate);
    case QMetaType::QDateTime:
        return v.toDateTime().toString(Qt::ISODate);
    case QMetaType::Double:
    case QMetaType::Float:
        return QString::number(v.toDouble(), 'g', 15);
    default:
        return v.toString();
    }
}

// Un texto que es un número decimal simple ("12.5000", "-3"), como llegan los NUMERIC.
bool textoNumerico(const QString& s, double& d) {
    if (s.isEmpty() || s.size() > 24) return false;
    int i = (s.at(0) == u'-') ? 1 : 0;
    bool cifras = false, punto = false;
    for (; i < s.size(); ++i) {
        const QChar c = s.at(i);
        if (c.isDigit()) cifras = true;
        else if (c == u'.' && !punto) punto = true;
        else return false;
    }
    if (!cifras) return false;
    bool ok = false;
    d = s.toDouble(&ok);
    return ok;
}

// Consulta sólo hacia adelante: el controlador no guarda las filas ya leídas.
QSqlQuery abreAdelante(Almacen& a, const QString& sql, const QVariantList& parametros) {
    return a.consulta(sql, parametros);
}

} // namespace

QString CampoCSV(const QString& texto) {
    if (!texto.contains(u',') && !texto.contains(u'"') && !texto.contains(u'\n') &&
        !texto.contains(u'\r'))
        return texto;
    QString s = texto;
    s.replace(QLatin1String("\""), QLatin1String("\"\""));
    return u'"' + s + u'"';
}

qint64 ExportaCSV(Almacen& a, const QString& sql, const QVariantList& parametros,
                  const OpcionesExporta& opciones, const QString& ruta) {
    QSqlQuery q = abreAdelante(a, sql, parametros);
    QFile f(ruta);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw Aviso(QStringLiteral("No se pudo escribir el archivo ") + ruta + QStringLiteral("."),
                    QStringLiteral("Exportar"), Icono::Stop);
    const Columnas c = columnasVisibles(q.record(), opciones);
    QByteArray bloque("\xEF\xBB\xBF");
    auto linea = [&](const QStringList& campos) {
        QStringList fuera;
        fuera.reserve(campos.size());
        for (const QString& s : campos) fuera << CampoCSV(s);
        bloque += fuera.join(u',').toUtf8();
        bloque += "\r\n";
        if (bloque.size() > (1 << 16)) {
            f.write(bloque);
            bloque.clear();
        }
    };
    linea(c.titulos);
    qint64 filas = 0;
    QStringList campos;
    while (q.next()) {
        campos.clear();
        for (int i : c.indices) campos << textoCelda(q.value(i));
        linea(campos);
        ++filas;
    }
    f.write(bloque);
    if (!f.flush() || f.error() != QFileDevice::NoError)
        throw Aviso(QStringLiteral("No se pudo escribir el archivo ") + ruta + QStringLiteral("."),
                    QStringLiteral("Exportar"), Icono::Stop);
    return filas;
}

qint64 ExportaXLSX(Almacen& a, const QString& sql, const QVariantList& parametros,
                   const OpcionesExporta& opciones, const QString& ruta) {
    QSqlQuery q = abreAdelante(a, sql, parametros);
    const Columnas c = columnasVisibles(q.record(), opciones);

    lxw_workbook_options op{};
    op.constant_memory = LXW_TRUE; // fila por fila, sin retener la hoja en memoria
    const QByteArray rutaLocal = QFile::encodeName(ruta);
    lxw_workbook* libro = workbook_new_opt(rutaLocal.constData(), &op);
    if (!libro)
        throw Aviso(QStringLiteral("No se pudo escribir el archivo ") + ruta + QStringLiteral("."),
                    QStringLiteral("Exportar"), Icono::Stop);
    lxw_worksheet* hoja = workbook_add_worksheet(libro, "Datos");
    lxw_format* negrita = workbook_add_format(libro);
    format_set_bold(negrita);

    for (size_t j = 0; j < c.indices.size(); ++j)
        worksheet_write_string(hoja, 0, lxw_col_t(j), c.titulos.at(qsizetype(j)).toUtf8().constData(),
                               negrita);
    qint64 filas = 0;
    // Una hoja de Excel admite 1 048 576 filas; el resto no cabe.
    constexpr qint64 kMaxFilas = 1048575;
    while (filas < kMaxFilas && q.next()) {
        ++filas;
        for (size_t j = 0; j < c.indices.size(); ++j) {
            const QVariant v = q.value(c.indices[j]);
            if (v.isNull()) continue;
            double d = 0;
            if (EsTipoNumerico(v.metaType()))
                worksheet_write_number(hoja, lxw_row_t(filas), lxw_col_t(j), v.toDouble(), nullptr);
            else if (v.typeId() == QMetaType::QString && textoNumerico(v.toString(), d))
                worksheet_write_number(hoja, lxw_row_t(filas), lxw_col_t(j), d, nullptr);
            else
                worksheet_write_string(hoja, lxw_row_t(filas), lxw_col_t(j),
                                       textoCelda(v).toUtf8().constData(), nullptr);
        }
    }
    if (workbook_close(libro) != LXW_NO_ERROR)
        throw Aviso(QStringLiteral("No se pudo escribir el archivo ") + ruta + QStringLiteral("."),
                    QStringLiteral("Exportar"), Icono::Stop);
    return filas;
}

} // namespace orv
