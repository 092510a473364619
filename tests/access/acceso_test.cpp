// Ingreso, contraseñas, niveles y usuarios sobre los dos motores.

#include "access/contrasenias.h"
#include "access/ingreso.h"
#include "access/niveles.h"
#include "access/usuarios.h"
#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "store/actualizacion.h"
#include "store/aviso.h"
#include "store/esquema.h"
#include "store/rutinas.h"

#include <QSet>
#include <QSqlQuery>
#include <chrono>
#include <functional>
#include <sodium.h>
#include <thread>

namespace orv {
namespace {

using prueba::PorMotorAlDia;
using prueba::AvisoDe;

TEST(Contrasenias, ResumenArgon2idConSalQueNoGuardaLaClaveYVerificaSoloLaCorrecta) {
    const QString clave = "ñandú 'x'";
    const QString r = CifraContrasenia(clave), r2 = CifraContrasenia(clave);
    EXPECT_TRUE(r.startsWith("$argon2id$") && !r.contains("ñandú") && r != r2); // con sal distinta cada vez
    EXPECT_FALSE(ContraseniaParaRecifrar(r));
    EXPECT_TRUE(ContraseniaParaRecifrar("texto viejo"));
    // Sólo la clave exacta abre; resúmenes vacíos, dañados o de otro cifrado no abren nada.
    const std::tuple<QString, QString, bool> casos[] = {
        {r, clave, true}, {r2, clave, true}, {r, "Ñandú 'x'", false}, {r, QString(), false},
        {QString(), QString(), false}, {"secreto", "secreto", false},
        {r.left(r.size() - 3), clave, false}};
    for (const auto& [resumen, probada, abre] : casos)
        EXPECT_EQ(VerificaContrasenia(resumen, probada), abre) << resumen.toStdString() << " / " << probada.toStdString();
}

class Acceso : public PorMotorAlDia {
protected:
    qint64 nivelSupervisor() { return almacen().valor("SELECT idNivel FROM Niveles WHERE UsuarioSuper <> 0").toLongLong(); }
    qint64 usuario(const QString& nombre, const QString& clave, qint64 nivel) {
        return GuardaUsuario(almacen(), std::nullopt, {QStringLiteral("Nombre ") + nombre, nombre, clave, nivel, "0"});
    }
    // Graba el nivel con cada permiso encendido según `encendido`.
    void fija(qint64 id, const std::function<bool(const QString&)>& encendido, bool super = false) {
        DatosNivel d = LeeNivel(almacen(), id).value();
        d.usuarioSuper = super;
        for (auto it = d.permisos.begin(); it != d.permisos.end(); ++it) it.value() = encendido(it.key());
        GuardaNivel(almacen(), d);
    }
    QString clave(qint64 id) { return almacen().valor("SELECT Contrasenia FROM Usuarios WHERE idUsuario = ?", {id}).toString(); }
};

TEST_P(Acceso, AlmacenNuevoPideElSupervisorAntesDelPrimerIngreso) {
    Almacen& a = almacen();
    ASSERT_TRUE(FaltaClaveInicial(a));
    EXPECT_EQ(NombreSupervisorInicial(a), "supervisor");
    EXPECT_FALSE(Ingresa(a, "supervisor", QString())); // sin contraseña nadie entra
    // Claves que no coinciden, nombre o clave vacíos: no se fija nada.
    for (const auto& [nombre, clave, otra] : {std::tuple{"jefe", "abc", "abd"}, {"  ", "abc", "abc"}, {"jefe", "", ""}})
        EXPECT_THROW(FijaSupervisorInicial(a, nombre, clave, otra), Aviso) << nombre;
    EXPECT_TRUE(FaltaClaveInicial(a));
    const qint32 id = FijaSupervisorInicial(a, "Jefe", "l'ave", "l'ave");
    EXPECT_FALSE(FaltaClaveInicial(a));
    EXPECT_EQ(CuentaRegistros(a, "Usuarios"), 1); // el supervisor que trajo el almacén, no uno nuevo
    const auto u = Ingresa(a, "jEFE", "l'ave");
    ASSERT_TRUE(u);
    EXPECT_TRUE(u->idUsuario == id && TieneNivel(a, u->idNivel, "BorrTodosLosDatos"));
    // Una segunda vez ya no vale: el supervisor cambia su clave desde los usuarios.
    EXPECT_THROW(FijaSupervisorInicial(a, "otro", "x", "x"), Aviso);

    // Sin usuarios ni niveles, el primer ingreso los crea.
    a.ejecuta("DELETE FROM Usuarios");
    a.ejecuta("DELETE FROM Niveles");
    ASSERT_TRUE(FaltaClaveInicial(a));
    FijaSupervisorInicial(a, "dueño", "1234", "1234");
    const auto d = Ingresa(a, "DUEÑO", "1234");
    ASSERT_TRUE(d);
    EXPECT_TRUE(TieneNivel(a, d->idNivel, "VeUsuarios") && !ModoPOS(a, d->idNivel));
}

TEST_P(Acceso, IngresoPorNombreSinMayusculasYClaveExacta) {
    Almacen& a = almacen();
    const qint64 nivel = nivelSupervisor(), cajeros = NuevoNivel(a, "Cajeros").value();
    const qint64 ana = usuario("Ana", "Clave1", nivel), obrien = usuario("O'Brien", "%_*", nivel);
    const qint64 caja1 = usuario("caja", "uno", nivel), caja2 = usuario("Caja", "dos", cajeros);
    // Nombre, clave y quién entra (0: nadie). Apóstrofos y comodines son texto común; con el mismo
    // nombre entra el de la clave.
    const std::tuple<const char*, const char*, qint64> casos[] = {
        {"ANA", "Clave1", ana},   {"ana", "clave1", 0},     {"ana ", "Clave1", 0},  {"nadie", "Clave1", 0},
        {"", "", 0},              {"o'brien", "%_*", obrien}, {"o'brien", "%", 0}, {"caja", "uno", caja1},
        {"CAJA", "dos", caja2}};
    for (const auto& [nombre, clave, quien] : casos) {
        const auto u = Ingresa(a, nombre, clave);
        EXPECT_EQ(u ? u->idUsuario : 0, quien) << nombre << " / " << clave;
    }
    const auto u = Ingresa(a, "ana", "Clave1");
    EXPECT_EQ(u->nombreCompleto + u'/' + QString::number(u->idNivel), "Nombre Ana/" + QString::number(nivel));
    // Con la misma clave gana el primero.
    GuardaUsuario(a, caja2, {"X", "caja", "uno", cajeros, "0"});
    EXPECT_EQ(Ingresa(a, "CAJA", "uno")->idUsuario, caja1);
}

TEST_P(Acceso, UnResumenViejoSeRehaceAlIngresar) {
    Almacen& a = almacen();
    const qint64 id = usuario("vieja", "clave", nivelSupervisor());
    // Un resumen argon2id con parámetros más chicos (como los de versiones anteriores).
    char viejo[128];
    ASSERT_EQ(crypto_pwhash_str_alg(viejo, "clave", 5, 2, 8u * 1024u * 1024u, crypto_pwhash_ALG_ARGON2ID13), 0);
    a.ejecuta("UPDATE Usuarios SET Contrasenia = ? WHERE idUsuario = ?", {QString::fromLatin1(viejo), id});
    ASSERT_TRUE(Ingresa(a, "vieja", "clave"));
    EXPECT_NE(clave(id), QString::fromLatin1(viejo));
    EXPECT_FALSE(ContraseniaParaRecifrar(clave(id)));
    EXPECT_TRUE(Ingresa(a, "vieja", "clave"));
}

TEST_P(Acceso, UsuarioModificadoConservaOCambiaSuClaveYBorradoNoEntra) {
    Almacen& a = almacen();
    const qint64 id = usuario("beto", "primera", nivelSupervisor());
    const QString antes = clave(id);
    auto d = LeeUsuario(a, id).value();
    EXPECT_TRUE(d.contrasenia.isEmpty()); // nunca vuelve la clave, ni su resumen
    d.nombreCompleto = "Alberto D'Amico";
    GuardaUsuario(a, id, d);
    EXPECT_EQ(clave(id) + u'|' + LeeUsuario(a, id)->nombreCompleto, antes + "|Alberto D'Amico");
    d.contrasenia = "segunda";
    GuardaUsuario(a, id, d);
    EXPECT_TRUE(!Ingresa(a, "beto", "primera") && Ingresa(a, "beto", "segunda"));
    BorraUsuario(a, id);
    EXPECT_THROW(GuardaUsuario(a, id, d), Aviso);
    EXPECT_FALSE(LeeUsuario(a, id) || Ingresa(a, "beto", "segunda"));
}

TEST_P(Acceso, DatosMalIngresadosNombresQueNoCabenYComisionesAmbiguasNoGuardanNada) {
    Almacen& a = almacen();
    const QVariant n = nivelSupervisor();
    const qint64 beto = usuario("beto", "b", n.toLongLong());
    const QString emojis = QString::fromUtf8("\U0001F600").repeated(50); // 50 caracteres para el servidor
    const QString mal = "Datos mal ingresados!";
    const struct {
        DatosUsuario datos;
        std::optional<qint64> id; // nada: usuario nuevo
        QString aviso;            // comienzo; vacío si se guarda
    } casos[] = {
        {{" ", "a0", "x", n, "0"}, {}, mal},
        {{"Ana", "", "x", n, "0"}, {}, mal},
        {{"Ana", "a0", "", n, "0"}, {}, mal}, // uno nuevo necesita clave; al modificar, vacía se conserva
        {{"Ana", "a0", "x", n, "diez"}, {}, mal},
        {{"Ana", "a0", "x", n, ""}, {}, mal},
        {{"Ana", "a0", "x", QVariant(), "0"}, {}, mal},
        {{"Ana", "a1", "x", n, "1,5"}, {}, "Comisión %: el número está mal escrito"},
        {{"Ana", QString(10000, u'a'), "x", n, "0"}, {}, "Nombre de usuario: admite hasta 50 caracteres (tiene 10000)."},
        {{"Ana", QStringLiteral("a") + QChar(0), "x", n, "0"}, {}, "Nombre de usuario: el texto tiene un carácter nulo"},
        {{QString(101, u'n'), "a3", "x", n, "0"}, {}, "Nombre completo: admite hasta 100 caracteres (tiene 101)."},
        {{"Ana", "a2", "x", n, "1.5"}, {}, ""},
        {{"Ana", emojis, "x", n, "0"}, {}, ""},
        {{"Beto", "beto", "", n, "0"}, beto, ""},
    };
    for (const auto& c : casos) {
        qint64 id = c.id.value_or(0);
        const QString texto = AvisoDe([&] { id = GuardaUsuario(a, c.id, c.datos); });
        EXPECT_TRUE(c.aviso.isEmpty() ? texto.isEmpty() : texto.startsWith(c.aviso)) << texto.toStdString();
        const auto leido = LeeUsuario(a, id);
        EXPECT_EQ(leido ? leido->nombreUsuario + u'/' + leido->comision : QString(),
                  c.aviso.isEmpty() ? c.datos.nombreUsuario + u'/' + c.datos.comision : QString())
            << texto.toStdString();
    }
    EXPECT_TRUE(AvisoDe([&] { NuevoNivel(a, QString(51, u'n')); }).startsWith("Nombre del nivel: admite hasta 50"));
    DatosNivel d = LeeNivel(a, NuevoNivel(a, emojis).value()).value();
    d.nombre += QChar(0);
    EXPECT_TRUE(AvisoDe([&] { GuardaNivel(a, d); }).startsWith("Nombre del nivel: el texto tiene un carácter nulo"));
}

TEST_P(Acceso, NivelesNuevosRepetidosRenombradosYEnUso) {
    Almacen& a = almacen();
    const auto antes = ListaNiveles(a).size();
    const auto id = NuevoNivel(a, "Repositor's");
    ASSERT_TRUE(id);
    EXPECT_FALSE(NuevoNivel(a, "repositor's") || NuevoNivel(a, "   "));
    EXPECT_EQ(ListaNiveles(a).size(), antes + 1);
    // El nombre no puede quedar vacío ni repetir el de otro nivel.
    DatosNivel d = LeeNivel(a, *id).value();
    for (const char* malo : {"supervisor", ""}) {
        d.nombre = QString::fromLatin1(malo);
        EXPECT_THROW(GuardaNivel(a, d), Aviso) << malo;
    }
    d.nombre = "Repositores";
    GuardaNivel(a, d);
    EXPECT_EQ(LeeNivel(a, *id)->nombre, "Repositores");

    const qint64 u = usuario("repo", "r", *id);
    EXPECT_EQ(AvisoDe([&] { EliminaNivel(a, *id); }), "Existen usuarios ya asignados a éste nivel!");
    EXPECT_TRUE(LeeNivel(a, *id));
    BorraUsuario(a, u);
    EliminaNivel(a, *id);
    EXPECT_FALSE(LeeNivel(a, *id));
}

TEST_P(Acceso, CadaPermisoSeGrabaSoloYApagaSusControles) {
    Almacen& a = almacen();
    const qint64 id = NuevoNivel(a, "Prueba").value();
    EXPECT_EQ(ControlesSinPermiso(a, int(id)).size(), 37);
    // Un permiso encendido por vez: TieneNivel ve ése y ningún otro.
    for (const Permiso& p : Permisos()) {
        fija(id, [&](const QString& c) { return c == p.columna; });
        for (const Permiso& q : Permisos())
            EXPECT_EQ(TieneNivel(a, int(id), q.columna), q.columna == p.columna) << p.columna.toStdString() << " / "
                                                                                  << q.columna.toStdString();
    }
    // Todo encendido menos un permiso "Ve": sólo se apaga su control. Mensajería depende de dos.
    const std::pair<const char*, const char*> ve[] = {
        {"VeArticulos", "botPrincipal0"}, {"VeClientes", "botPrincipal1"}, {"VeCaja", "botPrincipal2"},
        {"VeVentas", "botPrincipal3"},    {"VeInformes", "botPrincipal4"}, {"VeExportar", "botPrincipal5"},
        {"PermEnviaMail", "botPrincipal5"}, {"VeUtilidades", "botPrincipal6"}, {"VeProveedores", "botPrincipal7"},
        {"VeUsuarios", "Label37"},        {"VeRubros", "Command6"},        {"VeSaldoClientes", "Command9"}};
    for (const auto& [columna, control] : ve) {
        fija(id, [&](const QString& c) { return c != QLatin1String(columna); });
        EXPECT_EQ(ControlesSinPermiso(a, int(id)), QStringList{QString::fromLatin1(control)}) << columna;
    }
    // Con "solo operador de P.O.S.": modo punto de venta, salvo para un supervisor, que además puede todo.
    fija(id, [](const QString&) { return true; });
    EXPECT_TRUE(ModoPOS(a, int(id)));
    fija(id, [](const QString& c) { return c == QLatin1String("SoloPOS"); }, true);
    EXPECT_TRUE(ControlesSinPermiso(a, int(id)).isEmpty());
    EXPECT_FALSE(ModoPOS(a, int(id)));
    // Un nivel que ya no existe no tiene ningún permiso ni POS.
    a.ejecuta("DELETE FROM Niveles WHERE idNivel = ?", {id});
    EXPECT_EQ(ControlesSinPermiso(a, int(id)).size(), 37);
    EXPECT_FALSE(ModoPOS(a, int(id)));
}

TEST(Niveles, CadaColumnaDePermisoTieneSuCasillaYCadaPermisoAplicadoSusControles) {
    QSet<QString> columnas, casillas;
    for (const QString& c : columnasPermiso()) columnas.insert(c.toLower());
    for (const Permiso& p : Permisos()) casillas.insert(p.columna.toLower());
    EXPECT_EQ(columnas, casillas);
    EXPECT_EQ(Permisos().size(), size_t(columnasPermiso().size()));
    for (const QString& c : OrdenAplicaNiveles())
        EXPECT_TRUE(BuscaPermiso(c) && !BuscaPermiso(c)->controles.isEmpty()) << c.toStdString();
}

// Nunca queda el sistema sin quien administre los usuarios (nivel con "Usuarios" o supervisor).
TEST_P(Acceso, ElUltimoQueAdministraUsuariosNoSeBorraNiPierdeElPermiso) {
    Almacen& a = almacen();
    const qint64 sup = a.valor("SELECT idUsuario FROM Usuarios").toLongLong();
    const qint64 gerencia = NuevoNivel(a, "Gerencia").value();
    const qint64 caja = NuevoNivel(a, "Caja").value();
    auto nivel = [&](qint64 id, bool super, bool usuarios) {
        fija(id, [usuarios](const QString& c) { return usuarios && c == QLatin1String("VeUsuarios"); }, super);
    };
    auto pasa = [&](qint64 id, qint64 nivel) {
        DatosUsuario d = LeeUsuario(a, id).value();
        d.idNivel = nivel;
        GuardaUsuario(a, id, d);
    };
    nivel(gerencia, false, true);
    const qint64 cajero = usuario("cajero", "c", caja);
    qint64 gerente = 0;
    auto estado = [&] { // usuario:nivel:S(upervisor)U(suarios), por usuario
        QStringList filas;
        QSqlQuery q = a.consulta(QStringLiteral("SELECT NombreUsuario, Nombre, UsuarioSuper, VeUsuarios FROM Usuarios "
                                                "INNER JOIN Niveles ON Usuarios.idNivel = Niveles.idNivel ORDER BY 1"));
        while (q.next())
            filas << q.value(0).toString() + u':' + q.value(1).toString() + u':' +
                         (q.value(2).toInt() ? "S" : QString()) + (q.value(3).toInt() ? "U" : QString());
        return filas.join(u' ').toStdString();
    };
    const struct {
        std::function<void()> hace;
        const char* aviso; // comienzo; vacío si se hace
        const char* queda;
    } pasos[] = {
        {[&] { BorraUsuario(a, sup); }, "No se puede borrar a Supervisor: es el último", "cajero:Caja: supervisor:Supervisor:SU"},
        {[&] { pasa(sup, caja); }, "No se puede cambiar el nivel de Supervisor", "cajero:Caja: supervisor:Supervisor:SU"},
        {[&] { pasa(sup, gerencia); }, "", "cajero:Caja: supervisor:Gerencia:U"},
        {[&] { nivel(gerencia, false, false); }, "El nivel \"Gerencia\" tiene a los últimos", "cajero:Caja: supervisor:Gerencia:U"},
        {[&] { nivel(gerencia, true, false); }, "", "cajero:Caja: supervisor:Gerencia:S"},
        {[&] { BorraUsuario(a, cajero); }, "", "supervisor:Gerencia:S"},
        {[&] { gerente = usuario("gerente", "g", nivelSupervisor()); }, "",
         "gerente:Supervisor:SU supervisor:Gerencia:S"},
        {[&] { nivel(gerencia, false, false); }, "", "gerente:Supervisor:SU supervisor:Gerencia:"},
        {[&] { BorraUsuario(a, gerente); }, "No se puede borrar a Nombre gerente: es el último",
         "gerente:Supervisor:SU supervisor:Gerencia:"},
    };
    for (const auto& p : pasos) {
        const QString texto = AvisoDe(p.hace);
        EXPECT_TRUE(*p.aviso ? texto.startsWith(QString::fromUtf8(p.aviso)) : texto.isEmpty()) << texto.toStdString();
        EXPECT_EQ(estado(), p.queda);
    }
}

// Dos puestos borran a la vez a los dos últimos administradores: el segundo no puede.
TEST_P(Acceso, DosPuestosNoBorranALaVezALosDosUltimosAdministradores) {
    Almacen& a = almacen();
    const qint64 uno = a.valor("SELECT idUsuario FROM Usuarios").toLongLong();
    const qint64 dos = usuario("dos", "d", nivelSupervisor());
    QString otroPuesto;
    Transaccion t(a);
    BorraUsuario(a, uno); // sin confirmar todavía
    std::thread hilo([&] { otroPuesto = AvisoDe([&] { BorraUsuario(*base().otraConexion(), dos); }); });
    std::this_thread::sleep_for(std::chrono::milliseconds(400)); // el otro llega a su borrado
    t.confirmar();
    hilo.join();
    EXPECT_TRUE(otroPuesto.startsWith("No se puede borrar a Nombre dos")) << otroPuesto.toStdString();
    EXPECT_EQ(CuentaAdministradores(a), 1);
    EXPECT_TRUE(LeeUsuario(a, dos));
}

ORV_AMBOS_MOTORES(Acceso);

} // namespace
} // namespace orv
