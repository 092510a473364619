#include "access/usuarios.h"

#include "access/contrasenias.h"
#include "access/niveles.h"
#include "store/aviso.h"
#include "store/entrada.h"
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
    ExigeTexto(d.nombreCompleto.trimmed(), kLargoNombreCompleto, QStringLiteral("Nombre completo"));
    ExigeTexto(d.nombreUsuario.trimmed(), kLargoNombreUsuario, QStringLiteral("Nombre de usuario"));
    ExigePorcentaje(d.comision, QStringLiteral("Comisión %"));
}

qint64 GuardaUsuario(Almacen& a, std::optional<qint64> idUsuario, const DatosUsuario& d) {
    ValidaUsuario(d, !idUsuario.has_value());
    // El resumen se calcula antes de abrir la transacción: tarda y no toca el almacén.
    const QString resumen = d.contrasenia.isEmpty() ? QString() : CifraContrasenia(d.contrasenia);
    const double comision = ExigePorcentaje(d.comision, QStringLiteral("Comisión %"));
    Transaccion t(a);
    const CuidaAdministradores administradores(a);
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
        administradores.exige(QStringLiteral("No se puede cambiar el nivel de ") + d.nombreCompleto.trimmed() +
                              QStringLiteral(": es el último usuario que puede administrar los usuarios del sistema. "
                                             "Antes dé a otro usuario un nivel con el permiso \"Usuarios\"."));
    }
    t.confirmar();
    return id;
}

void BorraUsuario(Almacen& a, qint64 idUsuario) {
    Transaccion t(a);
    const CuidaAdministradores administradores(a);
    const QString nombre =
        a.valor(QStringLiteral("SELECT NombreCompleto FROM Usuarios WHERE idUsuario = ?"), {idUsuario}).toString();
    a.ejecuta(QStringLiteral("DELETE FROM Usuarios WHERE idUsuario = ?"), {idUsuario});
    administradores.exige(QStringLiteral("No se puede borrar a ") + nombre +
                          QStringLiteral(": es el último usuario que puede administrar los usuarios del sistema. "
                                         "Antes dé a otro usuario un nivel con el permiso \"Usuarios\"."));
    t.confirmar();
}

QString ConsultaUsuarios() {
    return QStringLiteral("SELECT Niveles.Nombre, Usuarios.idUsuario, Usuarios.NombreCompleto, Usuarios.NombreUsuario, "
                          "Usuarios.idNivel FROM Usuarios INNER JOIN Niveles ON Usuarios.idNivel = Niveles.idNivel "
                          "ORDER BY Niveles.Nombre, Usuarios.NombreCompleto");
}

} // namespace orv
