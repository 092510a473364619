#include "articles/matriz.h"

#include "store/aviso.h"
#include "store/entrada.h"

#include <QRegularExpression>
#include <QSqlQuery>

namespace orv {

namespace {

const QString kCampoCaracteristica = QStringLiteral("Característica");
const QString kCampoValor = QStringLiteral("Valor");

bool existeCaracteristica(const Almacen& a, const QString& tipo) {
    return a.valor(QStringLiteral("SELECT count(*) FROM Matriz WHERE Tipo = ?"), {tipo}).toLongLong() > 0;
}

} // namespace

QStringList Caracteristicas(const Almacen& a) {
    QStringList r;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Tipo FROM Matriz GROUP BY Tipo ORDER BY MIN(idMatriz)"));
    while (q.next()) r << q.value(0).toString();
    return r;
}

QList<ValorMatriz> ValoresDe(const Almacen& a, const QString& tipo) {
    QList<ValorMatriz> r;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idMatriz, Valor FROM Matriz WHERE Tipo = ? ORDER BY idMatriz"), {tipo});
    while (q.next()) r << ValorMatriz{q.value(0).toLongLong(), q.value(1).toString()};
    return r;
}

void AgregaCaracteristica(Almacen& a, const QString& tipo, const QStringList& valores) {
    // 1. Un nombre nuevo y al menos un valor, sin repetidos.
    const QString nombre = tipo.trimmed();
    if (nombre.isEmpty()) throw AvisoAtencion(QStringLiteral("Escriba el nombre de la característica."));
    ExigeTexto(nombre, kLargoMatriz, kCampoCaracteristica);
    QStringList limpios;
    for (const QString& v : valores) {
        const QString t = v.trimmed();
        if (t.isEmpty()) continue;
        ExigeTexto(t, kLargoMatriz, kCampoValor);
        if (limpios.contains(t)) throw AvisoAtencion(QStringLiteral("El valor \"%1\" está repetido.").arg(t));
        limpios << t;
    }
    if (limpios.isEmpty()) throw AvisoAtencion(QStringLiteral("Escriba al menos un valor de la característica."));

    Transaccion t(a);
    if (existeCaracteristica(a, nombre))
        throw AvisoAtencion(QStringLiteral("La característica \"%1\" ya existe: agregue sus valores en \"Elementos\".").arg(nombre));
    // 2. Todos los valores en una sentencia, en el orden en que se escribieron.
    QString sql = QStringLiteral("INSERT INTO Matriz (Tipo, Valor) VALUES ");
    QVariantList parametros;
    for (const QString& v : limpios) {
        sql += parametros.isEmpty() ? QStringLiteral("(?, ?)") : QStringLiteral(", (?, ?)");
        parametros << nombre << v;
    }
    a.ejecuta(sql, parametros);
    t.confirmar();
}

qint64 AgregaValor(Almacen& a, const QString& tipo, const QString& valor) {
    const QString v = valor.trimmed();
    if (v.isEmpty()) throw AvisoAtencion(QStringLiteral("Escriba el valor."));
    ExigeTexto(v, kLargoMatriz, kCampoValor);
    Transaccion t(a);
    if (a.valor(QStringLiteral("SELECT count(*) FROM Matriz WHERE Tipo = ? AND Valor = ?"), {tipo, v}).toLongLong() > 0)
        throw AvisoAtencion(QStringLiteral("\"%1\" ya es un valor de \"%2\".").arg(v, tipo));
    const qint64 id =
        a.inserta(QStringLiteral("INSERT INTO Matriz (Tipo, Valor) VALUES (?, ?)"), {tipo, v}, QStringLiteral("idMatriz"));
    t.confirmar();
    return id;
}

void QuitaValor(Almacen& a, qint64 idMatriz) {
    a.ejecuta(QStringLiteral("DELETE FROM Matriz WHERE idMatriz = ?"), {idMatriz});
}

void BorraCaracteristica(Almacen& a, const QString& tipo) {
    a.ejecuta(QStringLiteral("DELETE FROM Matriz WHERE Tipo = ?"), {tipo});
}

QString TextoCaracteristicas(const QList<Eleccion>& elecciones, const OpcionesMatriz& o) {
    QStringList partes;
    for (const Eleccion& e : elecciones)
        partes << (o.sinTitulo ? QString() : e.caracteristica.left(3) + QLatin1Char(':')) + e.valor;
    return partes.join(QLatin1Char(' ') + o.separador + QLatin1Char(' '));
}

QString SiguienteCodigo(const QString& codigo) {
    static const QRegularExpression cifrasFinales(QStringLiteral("([0-9]+)$"));
    const QRegularExpressionMatch m = cifrasFinales.match(codigo);
    if (!m.hasMatch()) return codigo + QLatin1Char('1');
    // Suma uno a las cifras como texto: sin tope de largo y conservando los ceros de la izquierda.
    QString cifras = m.captured(1);
    int i = int(cifras.size()) - 1;
    for (; i >= 0; --i) {
        if (cifras[i] != u'9') {
            cifras[i] = QChar(cifras[i].unicode() + 1);
            break;
        }
        cifras[i] = u'0';
    }
    if (i < 0) cifras.prepend(u'1');
    return codigo.left(m.capturedStart(1)) + cifras;
}

VarianteMatriz Variante(const QString& codigo, const QString& descripcionBase, const QString& stock,
                        const QList<Eleccion>& elecciones, const OpcionesMatriz& o) {
    if (elecciones.isEmpty()) throw AvisoAtencion(QStringLiteral("Elija un valor de alguna característica."));
    const QString texto = TextoCaracteristicas(elecciones, o);
    return {codigo, o.enDescripcion ? descripcionBase + QLatin1Char(' ') + texto : descripcionBase, texto, stock};
}

QList<VarianteMatriz> Combinaciones(const QString& codigo, const QString& descripcionBase, const QString& stock,
                                    const QList<QList<Eleccion>>& porCaracteristica, const OpcionesMatriz& o) {
    // El producto se arma de a una característica: cada combinación anterior por cada valor nuevo.
    QList<QList<Eleccion>> combinaciones = {{}};
    for (const QList<Eleccion>& valores : porCaracteristica) {
        if (valores.isEmpty()) continue;
        QList<QList<Eleccion>> siguientes;
        for (const QList<Eleccion>& c : combinaciones)
            for (const Eleccion& e : valores) siguientes << (QList<Eleccion>(c) << e);
        combinaciones = siguientes;
    }
    if (combinaciones.front().isEmpty()) throw AvisoAtencion(QStringLiteral("Elija los valores de las características a combinar."));
    QList<VarianteMatriz> r;
    QString c = codigo;
    for (const QList<Eleccion>& e : combinaciones) {
        r << Variante(c, descripcionBase, stock, e, o);
        c = SiguienteCodigo(c);
    }
    return r;
}

QList<qint64> GrabaArticuloConMatriz(Almacen& a, const DatosArticulo& base, const QList<VarianteMatriz>& variantes,
                                     const QString& coefIva) {
    if (variantes.isEmpty()) return {GrabaArticulo(a, 0, base, coefIva)};
    QList<qint64> ids;
    Transaccion t(a);
    for (qsizetype i = 0; i < variantes.size(); ++i) {
        const VarianteMatriz& v = variantes[i];
        DatosArticulo d = base;
        d.codigo = v.codigo;
        d.descripcion = v.descripcion;
        d.stockActual = v.stock;
        d.existenciaAlAbrir.reset();
        try {
            ExigeTexto(v.caracteristicas, kLargoDescripcionMatriz, QStringLiteral("Características"));
            const qint64 id = GrabaArticulo(a, 0, d, coefIva);
            a.ejecuta(QStringLiteral("UPDATE Articulos SET DescripcionMatriz = ? WHERE idArticulo = ?"),
                      {v.caracteristicas.isEmpty() ? QVariant() : QVariant(v.caracteristicas), id});
            ids << id;
        } catch (const Aviso& e) {
            throw Aviso(QStringLiteral("Fila %1 de la matriz (%2): %3").arg(i + 1).arg(v.codigo, e.texto()), e.titulo(), e.icono());
        }
    }
    t.confirmar();
    return ids;
}

} // namespace orv
