#include "access/ingreso.h"

#include "access/contrasenias.h"
#include "access/usuarios.h"
#include "store/aviso.h"
#include "store/entrada.h"
#include "store/esquema.h"

#include <QSqlQuery>

namespace orv {

namespace {

// Resumen de una contraseña que nadie tiene: cuando el nombre no existe se verifica contra él,
// para que un nombre inexistente tarde lo mismo que una contraseña equivocada.
const QString& resumenSenuelo() {
    static const QString r = CifraContrasenia(QStringLiteral("\x01senuelo\x02"));
    return r;
}

} // namespace

std::optional<UsuarioIngresado> Ingresa(Almacen& a, const QString& usuario, const QString& contrasenia) {
    // La tabla de usuarios es chica: se compara el nombre acá para que las mayúsculas se
    // ignoren igual en los dos motores y también en letras acentuadas y eñes.
    QSqlQuery q = a.consulta(
        QStringLiteral("SELECT idUsuario, idNivel, NombreCompleto, NombreUsuario, Contrasenia FROM Usuarios "
                       "ORDER BY idUsuario"));
    bool alguno = false;
    while (q.next()) {
        if (q.value(3).toString().compare(usuario, Qt::CaseInsensitive) != 0) continue;
        alguno = true;
        const QString guardada = q.value(4).toString();
        if (!VerificaContrasenia(guardada, contrasenia)) continue;
        UsuarioIngresado u;
        u.idUsuario = q.value(0).toInt();
        u.idNivel = static_cast<qint16>(q.value(1).toInt());
        u.nombreCompleto = q.value(2).toString();
        q.finish();
        if (ContraseniaParaRecifrar(guardada))
            a.ejecuta(QStringLiteral("UPDATE Usuarios SET Contrasenia = ? WHERE idUsuario = ?"),
                      {CifraContrasenia(contrasenia), u.idUsuario});
        return u;
    }
    if (!alguno) VerificaContrasenia(resumenSenuelo(), contrasenia);
    return std::nullopt;
}

bool FaltaClaveInicial(const Almacen& a) {
    return a.valor(QStringLiteral("SELECT count(*) FROM Usuarios WHERE Contrasenia IS NOT NULL AND Contrasenia <> ''"))
               .toInt() == 0;
}

namespace {

QVariant supervisorExistente(const Almacen& a) {
    return a.valor(QStringLiteral("SELECT Usuarios.idUsuario FROM Usuarios INNER JOIN Niveles "
                                  "ON Usuarios.idNivel = Niveles.idNivel WHERE Niveles.UsuarioSuper <> 0 "
                                  "ORDER BY Usuarios.idUsuario"));
}

} // namespace

QString NombreSupervisorInicial(const Almacen& a) {
    const QVariant id = supervisorExistente(a);
    if (id.isNull()) return QStringLiteral("supervisor");
    return a.valor(QStringLiteral("SELECT NombreUsuario FROM Usuarios WHERE idUsuario = ?"), {id}).toString();
}

qint32 FijaSupervisorInicial(Almacen& a, const QString& usuario, const QString& contrasenia,
                             const QString& repeticion) {
    const QString nombre = usuario.trimmed();
    if (nombre.isEmpty() || contrasenia.isEmpty()) throw Aviso(QStringLiteral("Datos mal ingresados!"));
    ExigeTexto(nombre, kLargoNombreUsuario, QStringLiteral("Nombre del usuario"));
    if (contrasenia != repeticion) throw Aviso(QStringLiteral("Las contraseñas no coinciden!"));
    const QString resumen = CifraContrasenia(contrasenia);

    Transaccion t(a);
    if (!FaltaClaveInicial(a))
        throw Aviso(QStringLiteral("El supervisor ya tiene contraseña. Ingrese con ella."));
    QVariant id = supervisorExistente(a);
    if (id.isNull()) {
        QVariant nivel = a.valor(QStringLiteral("SELECT idNivel FROM Niveles WHERE UsuarioSuper <> 0 ORDER BY idNivel"));
        if (nivel.isNull())
            nivel = a.inserta(QStringLiteral("INSERT INTO Niveles (Nombre, UsuarioSuper) VALUES (?, 1)"),
                              {QStringLiteral("Supervisor")}, QStringLiteral("idNivel"));
        id = a.inserta(QStringLiteral("INSERT INTO Usuarios (NombreCompleto, NombreUsuario, idNivel, Comision) "
                                      "VALUES (?, ?, ?, 0)"),
                       {QStringLiteral("Supervisor"), nombre, nivel}, QStringLiteral("idUsuario"));
    }
    a.ejecuta(QStringLiteral("UPDATE Usuarios SET NombreUsuario = ?, Contrasenia = ? WHERE idUsuario = ?"),
              {nombre, resumen, id});
    t.confirmar();
    return id.toInt();
}

} // namespace orv
