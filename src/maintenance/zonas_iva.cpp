#include "maintenance/zonas_iva.h"

#include "customers/clientes.h"
#include "store/entrada.h"
#include "store/rutinas.h"

#include <QSqlQuery>

namespace orv {

namespace {

struct DatosLista {
    const char* tabla;
    const char* clave;
    const char* nombre;
    int largo;
    const char* campo; // cómo se llama en un aviso
};

const DatosLista& datos(ListaZonas l) {
    static const DatosLista zonas{"Zonas", "idZona", "Zona", 50, "Zona"};
    static const DatosLista localidades{"Localidades", "idLocalidad", "Localidad", 100, "Localidad"};
    return l == ListaZonas::Zonas ? zonas : localidades;
}

QString exigeNombre(const QString& nombre, int largo, const QString& campo) {
    const QString n = nombre.trimmed();
    if (n.isEmpty()) throw Aviso(kMensajeSinNombre);
    ExigeTexto(n, largo, campo);
    return n;
}

} // namespace

QString ConsultaListaZonas(ListaZonas l) {
    if (l == ListaZonas::Zonas) return ConsultaZonas();
    return QStringLiteral("SELECT idLocalidad, Localidad FROM Localidades ORDER BY Localidad");
}

QString ClaveListaZonas(ListaZonas l) { return QString::fromLatin1(datos(l).clave); }
QString NombreListaZonas(ListaZonas l) { return QString::fromLatin1(datos(l).nombre); }

qint64 AgregaEnLista(Almacen& a, ListaZonas l, const QString& nombre) {
    const DatosLista& d = datos(l);
    const QString n = exigeNombre(nombre, d.largo, QString::fromLatin1(d.campo));
    return a.inserta(QStringLiteral("INSERT INTO %1 (%2) VALUES (?)").arg(QLatin1String(d.tabla), QLatin1String(d.nombre)), {n},
                     QString::fromLatin1(d.clave));
}

void CambiaEnLista(Almacen& a, ListaZonas l, qint64 id, const QString& nombre) {
    const DatosLista& d = datos(l);
    const QString n = exigeNombre(nombre, d.largo, QString::fromLatin1(d.campo));
    a.ejecuta(QStringLiteral("UPDATE %1 SET %2 = ? WHERE %3 = ?")
                  .arg(QLatin1String(d.tabla), QLatin1String(d.nombre), QLatin1String(d.clave)),
              {n, id});
}

void BorraDeLista(Almacen& a, ListaZonas l, qint64 id) {
    const DatosLista& d = datos(l);
    Transaccion t(a);
    if (l == ListaZonas::Zonas) {
        // La zona se toma antes de contar: un cliente que se le asigna a la vez espera el borrado.
        a.valor(QStringLiteral("SELECT idZona FROM Zonas WHERE idZona = ?") + TomaFilas(a), {id});
        const qint64 clientes = a.valor(QStringLiteral("SELECT count(*) FROM Vendedores WHERE idZona = ?"), {id}).toLongLong();
        if (clientes > 0)
            throw Aviso(QStringLiteral("Error, existen clientes en ésta zona (%1)! Pase esos clientes a otra zona antes de "
                                       "eliminarla.")
                            .arg(clientes));
    }
    a.ejecuta(QStringLiteral("DELETE FROM %1 WHERE %2 = ?").arg(QLatin1String(d.tabla), QLatin1String(d.clave)), {id});
    t.confirmar();
}

QString ConsultaSituacionesIva() { return QStringLiteral("SELECT idTipoIva, TipoIva, Fiscal FROM TipoDeIva ORDER BY idTipoIva"); }

std::optional<SituacionIva> LeeSituacionIva(const Almacen& a, qint64 idTipoIva) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT TipoIva, Fiscal FROM TipoDeIva WHERE idTipoIva = ?"), {idTipoIva});
    if (!q.next()) return std::nullopt;
    return SituacionIva{q.value(0).toString(), q.value(1).toString()};
}

qint64 GuardaSituacionIva(Almacen& a, std::optional<qint64> idTipoIva, const SituacionIva& s) {
    if (s.nombre.trimmed().isEmpty()) throw Aviso(kMensajeSinNombre);
    ExigeTexto(s.nombre, 50, QStringLiteral("Nombre"));
    const QString fiscal = s.fiscal.trimmed();
    ExigeTexto(fiscal, 1, QStringLiteral("Clave Fiscal"));
    const QVariant letra = fiscal.isEmpty() ? QVariant(QMetaType(QMetaType::QString)) : QVariant(fiscal);
    if (!idTipoIva)
        return a.inserta(QStringLiteral("INSERT INTO TipoDeIva (TipoIva, Fiscal) VALUES (?, ?)"), {s.nombre, letra},
                         QStringLiteral("idTipoIva"));
    a.ejecuta(QStringLiteral("UPDATE TipoDeIva SET TipoIva = ?, Fiscal = ? WHERE idTipoIva = ?"), {s.nombre, letra, *idTipoIva});
    return *idTipoIva;
}

void BorraSituacionIva(Almacen& a, qint64 idTipoIva) {
    Transaccion t(a);
    a.valor(QStringLiteral("SELECT idTipoIva FROM TipoDeIva WHERE idTipoIva = ?") + TomaFilas(a), {idTipoIva});
    if (a.valor(QStringLiteral("SELECT count(*) FROM Vendedores WHERE idTipoIva = ?"), {idTipoIva}).toLongLong() > 0)
        throw Aviso(kMensajeIvaConClientes);
    a.ejecuta(QStringLiteral("DELETE FROM TipoDeIva WHERE idTipoIva = ?"), {idTipoIva});
    t.confirmar();
}

} // namespace orv
