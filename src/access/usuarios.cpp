#include "access/usuarios.h"

#include "access/contrasenias.h"
#include "store/aviso.h"
#include "store/formato.h"


#include <QSqlQuery>

namespace orv {

std::optional<DatosUsuario> LeeUsuario(const Almacen& a, qint64 idUsuario) {
    QSqlQuery q = a.consulta(
        QStringLiteral("SELECT NombreCompleto, NombreUsuario, idNivel, Comision FROM Usuarios WHERE idUsuario = ?"),
        {idUsuario});
    if (!q.next()) return std::nullopt;
    DatosUsuario d;
    d.nombreCompleto = q.value(0).toString();
    d.nombreUsuario = q.value(1).toString();
    d.idNivel = q.value(2);
    d.comision = q.value(3).isNull() ? QStringLiteral("0") : QString::number(q.value(3).toDouble(), 'g', 12);
    return d;
}

void ValidaUsuario(const DatosUsuario& d, bool nuevo) {
    const bool bien = !d.nombreCompleto.trimmed().isEmpty() && !d.nombreUsuario.trimmed().isEmpty() &&
                      (!nuevo || !d.contrasenia.isEmpty()) && EsNumerico(QStringView(d.comision)) && !d.idNivel.isNull() &&
                      d.idNivel.isValid();
    if (!bien) throw Aviso(QStringLiteral("Datos mal ingresados!"));
}

qint64 GuardaUsuario(Almacen& a, std::optional<qint64> idUsuario, const DatosUsuario& d) {
    ValidaUsuario(d, !idUsuario.has_value());
    // El resumen se calcula antes de abrir la transacción: tarda y no toca el almacén.
    const QString resumen = d.contrasenia.isEmpty() ? QString() : CifraContrasenia(d.contrasenia);
    const double comision = Val(d.comision);
    Transaccion t(a);
    qint64 id = 0;
    if (!idUsuario) {
        id = a.inserta(QStringLiteral("INSERT INTO Usuarios (NombreCompleto, NombreUsuario, Contrasenia, idNivel, "
                                      "Comision) VALUES (?, ?, ?, ?, ?)"),
                       {d.nombreCompleto.trimmed(), d.nombreUsuario.trimmed(), resumen, d.idNivel, comision},
                       QStringLiteral("idUsuario"));
    } else {
        id = *idUsuario;
        if (a.valor(QStringLiteral("SELECT idUsuario FROM Usuarios WHERE idUsuario = ?"), {id}).isNull())
            throw Aviso(QStringLiteral("No encontrado!"));
        if (resumen.isEmpty())
            a.ejecuta(QStringLiteral("UPDATE Usuarios SET NombreCompleto = ?, NombreUsuario = ?, idNivel = ?, "
                                     "Comision = ? WHERE idUsuario = ?"),
                      {d.nombreCompleto.trimmed(), d.nombreUsuario.trimmed(), d.idNivel, comision, id});
        else
            a.ejecuta(QStringLiteral("UPDATE Usuarios SET NombreCompleto = ?, NombreUsuario = ?, Contrasenia = ?, "
                                     "idNivel = ?, Comision = ? WHERE idUsuario = ?"),
                      {d.nombreCompleto.trimmed(), d.nombreUsuario.trimmed(), resumen, d.idNivel, comision, id});
    }
    t.confirmar();
    return id;
}

void BorraUsuario(Almacen& a, qint64 idUsuario) {
    a.ejecuta(QStringLiteral("DELETE FROM Usuarios WHERE idUsuario = ?"), {idUsuario});
}

QString ConsultaUsuarios() {
    return QStringLiteral("SELECT Niveles.Nombre, Usuarios.idUsuario, Usuarios.NombreCompleto, Usuarios.NombreUsuario, "
                          "Usuarios.idNivel FROM Usuarios INNER JOIN Niveles ON Usuarios.idNivel = Niveles.idNivel "
                          "ORDER BY Niveles.Nombre, Usuarios.NombreCompleto");
}

} // namespace orv
