#include "articles/rubros.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/formato.h"

#include <QSqlQuery>

namespace orv {

namespace {

double puntosDe(const DatosRubro& d) {
    return ExigeNumero(d.puntos.trimmed(), kCampoPuntajeRubro, -kCantidadMaxima, kCantidadMaxima);
}

} // namespace

std::optional<DatosRubro> LeeRubro(const Almacen& a, qint64 idRubro) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Rubro, PuntosVIP FROM Rubros WHERE idRubro = ?"), {idRubro});
    if (!q.next()) return std::nullopt;
    DatosRubro d;
    d.nombre = q.value(0).toString();
    d.puntos = q.value(1).isNull() ? QStringLiteral("0") : QString::number(q.value(1).toDouble(), 'g', 15);
    return d;
}

void ValidaRubro(const DatosRubro& d) {
    // 1. El puntaje, antes que el nombre.
    if (!EsNumerico(QStringView(d.puntos.trimmed())))
        throw Aviso(kErrorPuntajeRubro);
    puntosDe(d);
    // 2. El nombre: sólo el vacío se rechaza.
    if (d.nombre.isEmpty()) throw Aviso(QStringLiteral("Error, coloque un nombre!"));
    ExigeTexto(d.nombre, kLargoRubro, QStringLiteral("Nombre"));
}

qint64 GuardaRubro(Almacen& a, std::optional<qint64> idRubro, const DatosRubro& d) {
    ValidaRubro(d);
    const double puntos = puntosDe(d);
    // 3. Alta o modificación.
    if (!idRubro)
        return a.inserta(QStringLiteral("INSERT INTO Rubros (Rubro, PuntosVIP) VALUES (?, ?)"), {d.nombre, puntos},
                         QStringLiteral("idRubro"));
    if (a.ejecuta(QStringLiteral("UPDATE Rubros SET Rubro = ?, PuntosVIP = ? WHERE idRubro = ?"),
                  {d.nombre, puntos, *idRubro}) == 0)
        throw Aviso(QStringLiteral("No encontrado!"));
    return *idRubro;
}

void BorraRubro(Almacen& a, qint64 idRubro) {
    // Un rubro con artículos no se borra: sus artículos quedarían sin familia.
    Transaccion t(a);
    if (!a.valor(QStringLiteral("SELECT idRubro FROM Articulos WHERE idRubro = ? LIMIT 1"), {idRubro}).isNull())
        throw Aviso(QStringLiteral("Error, no puede borrar éste rubro porque posee artículos relacionados.!"));
    a.ejecuta(QStringLiteral("DELETE FROM Rubros WHERE idRubro = ?"), {idRubro});
    t.confirmar();
}

QString ConsultaRubros() {
    return QStringLiteral("SELECT idRubro, Rubro, PuntosVIP FROM Rubros ORDER BY Rubro");
}

} // namespace orv
