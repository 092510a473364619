#include "store/rutinas.h"

#include "store/aviso.h"
#include "store/esquema.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlRecord>
#include <stdexcept>

namespace orv {

namespace {

bool esIdentificador(const QString& s) {
    static const QRegularExpression re(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    return re.match(s).hasMatch();
}

bool encendido(const QVariant& v) {
    if (v.isNull()) return false;
    const int n = v.toInt();
    return n == 1 || n == -1;
}

// Nombre canónico de la columna de permiso, o vacío si no es un permiso.
QString columnaPermiso(const QString& campo) {
    if (campo.compare(QLatin1String("UsuarioSuper"), Qt::CaseInsensitive) == 0) return QStringLiteral("UsuarioSuper");
    for (const QString& c : columnasPermiso())
        if (c.compare(campo, Qt::CaseInsensitive) == 0) return c;
    return {};
}

} // namespace

QVariant LeeCampo(const Almacen& a, const QString& sql, const QVariantList& parametros, const QString& campo) {
    QSqlQuery q = a.consulta(sql, parametros);
    if (!q.next()) return {};
    const int i = q.record().indexOf(campo);
    if (i < 0)
        throw ErrorAlmacen(QStringLiteral("La consulta no tiene el campo %1").arg(campo), {}, sql);
    return q.value(i);
}

qint64 CuentaRegistros(const Almacen& a, const QString& sqlOTabla, const QVariantList& parametros) {
    const QString t = sqlOTabla.trimmed();
    const QString sql = esIdentificador(t) ? QStringLiteral("SELECT count(*) FROM ") + t
                                           : QStringLiteral("SELECT count(*) FROM (") + t + QStringLiteral(") cuenta");
    return a.valor(sql, parametros).toLongLong();
}

bool TieneNivel(const Almacen& a, int idNivel, const QString& campo) {
    const QString columna = columnaPermiso(campo);
    if (columna.isEmpty()) throw std::invalid_argument("permiso desconocido: " + campo.toStdString());
    QSqlQuery q = a.consulta(QStringLiteral("SELECT UsuarioSuper, ") + columna +
                                 QStringLiteral(" FROM Niveles WHERE idNivel = ?"),
                             {idNivel});
    if (!q.next()) return false;
    return encendido(q.value(0)) || encendido(q.value(1));
}

void ExigeNivel(const Almacen& a, int idNivel, const QString& campo) {
    if (!TieneNivel(a, idNivel, campo)) throw Aviso(QStringLiteral("Nivel no permitido!"), QStringLiteral("Error"));
}

bool FechaAbierta(const Almacen& a, const QDate& fecha) {
    return a.valor(QStringLiteral("SELECT count(*) FROM CorteCaja WHERE FECHA = ?"), {fecha}).toInt() == 0;
}

void ExigeFechaAbierta(const Almacen& a, const QDate& fecha) {
    if (!FechaAbierta(a, fecha))
        throw Aviso(QStringLiteral("Error, fecha cerrada para ingresar movimientos!"), QStringLiteral("Error"));
}

qint64 buscaOAgrega(Almacen& a, const QString& tabla, const QString& columnaId, const QString& columnaNombre,
                    const QString& nombre) {
    const QVariant id = a.valor(QStringLiteral("SELECT %1 FROM %2 WHERE %3 = ? ORDER BY %1")
                                    .arg(columnaId, tabla, columnaNombre),
                                {nombre});
    if (!id.isNull()) return id.toLongLong();
    return a.inserta(QStringLiteral("INSERT INTO %1 (%2) VALUES (?)").arg(tabla, columnaNombre), {nombre}, columnaId);
}

void BloqueaArticulos(Almacen& a, const QString& seleccionIds, const QVariantList& parametros) {
    if (!a.esPostgreSQL()) return;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idArticulo FROM Articulos WHERE idArticulo IN (") + seleccionIds +
                                 QStringLiteral(") ORDER BY idArticulo FOR UPDATE"),
                             parametros);
    while (q.next()) {
    }
}

void MueveStock(Almacen& a, const QString& lineas, const QVariant& valor, bool entra, bool nuloComoCero) {
    BloqueaArticulos(a, QStringLiteral("SELECT idArticulo FROM ") + lineas, {valor});
    a.ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = ") +
                  (nuloComoCero ? QStringLiteral("COALESCE(StockActual, 0)") : QStringLiteral("StockActual")) +
                  (entra ? QStringLiteral(" + ") : QStringLiteral(" - ")) +
                  QStringLiteral("s.Cantidad FROM (SELECT idArticulo, SUM(COALESCE(Cantidad, 0)) AS Cantidad FROM ") + lineas +
                  QStringLiteral(" GROUP BY idArticulo) AS s WHERE Articulos.idArticulo = s.idArticulo"),
              {valor});
}

bool SiNo(const QVariant& v) { return !v.isNull() && v.toInt() != 0; }

QString TomaFilas(const Almacen& a) { return a.esPostgreSQL() ? QStringLiteral(" FOR UPDATE") : QString(); }

bool ExisteArchivo(const QString& ruta) {
    if (ruta.size() < 4) return false;
    return QFileInfo::exists(ruta);
}

QString EscapaLike(const QString& s) {
    QString r;
    r.reserve(s.size() + 4);
    for (QChar c : s) {
        if (c == u'\\' || c == u'%' || c == u'_') r += u'\\';
        r += c;
    }
    return r;
}

QString CondicionContiene(const Almacen& a, const QString& columna) {
    return a.esPostgreSQL() ? QStringLiteral("strpos(lower(COALESCE(%1, '')), lower(?)) > 0").arg(columna)
                            : QStringLiteral("orv_contiene(%1, ?) <> 0").arg(columna);
}

} // namespace orv
