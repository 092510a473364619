// Ingreso, contraseñas, niveles y usuarios sobre los dos motores.

#include "access/contrasenias.h"
#include "access/ingreso.h"
#include "access/niveles.h"
#include "access/usuarios.h"
#include "apoyo/base_prueba.h"
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

using prueba::PorMotor;

TEST(Contrasenias, ResumenNoGuardaLaClaveYVerificaSoloLaCorrecta) {
    const QString r = CifraContrasenia(QStringLiteral("ñandú 'x'"));
    EXPECT_TRUE(r.startsWith(QStringLiteral("$argon2id$")));
    EXPECT_FALSE(r.contains(QStringLiteral("ñandú")));
    EXPECT_TRUE(VerificaContrasenia(r, QStringLiteral("ñandú 'x'")));
    EXPECT_FALSE(VerificaContrasenia(r, QStringLiteral("Ñandú 'x'")));
    EXPECT_FALSE(VerificaContrasenia(r, QString()));
    // Dos resúmenes de la misma clave difieren (sal distinta) y ambos verifican.
    const QString r2 = CifraContrasenia(QStringLiteral("ñandú 'x'"));
    EXPECT_NE(r, r2);
    EXPECT_TRUE(VerificaContrasenia(r2, QStringLiteral("ñandú 'x'")));
    EXPECT_FALSE(ContraseniaParaRecifrar(r));
    // Resúmenes vacíos, dañados o de otro cifrado no abren nada.
    EXPECT_FALSE(VerificaContrasenia(QString(), QString()));
    EXPECT_FALSE(VerificaContrasenia(QStringLiteral("secreto"), QStringLiteral("secreto")));
    EXPECT_FALSE(VerificaContrasenia(r.left(r.size() - 3), QStringLiteral("ñandú 'x'")));
    EXPECT_TRUE(ContraseniaParaRecifrar(QStringLiteral("texto viejo")));
}

class Acceso : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (!base_) return;
        actualizaEsquema(almacen());
    }
    qint64 nivelSupervisor() {
        return almacen().valor(QStringLiteral("SELECT idNivel FROM Niveles WHERE UsuarioSuper <> 0")).toLongLong();
    }
    qint64 usuario(const QString& nombre, const QString& clave, qint64 nivel) {
        return GuardaUsuario(almacen(), std::nullopt,
                             {QStringLiteral("Nombre ") + nombre, nombre, clave, nivel, QStringLiteral("0")});
    }
};

TEST_P(Acceso, AlmacenNuevoPideElSupervisorAntesDelPrimerIngreso) {
    Almacen& a = almacen();
    ASSERT_TRUE(FaltaClaveInicial(a));
    EXPECT_EQ(NombreSupervisorInicial(a), QStringLiteral("supervisor"));
    // Sin contraseña nadie entra, ni con la clave vacía.
    EXPECT_FALSE(Ingresa(a, QStringLiteral("supervisor"), QString()));

    EXPECT_THROW(FijaSupervisorInicial(a, QStringLiteral("jefe"), QStringLiteral("abc"), QStringLiteral("abd")), Aviso);
    EXPECT_THROW(FijaSupervisorInicial(a, QStringLiteral("  "), QStringLiteral("abc"), QStringLiteral("abc")), Aviso);
    EXPECT_THROW(FijaSupervisorInicial(a, QStringLiteral("jefe"), QString(), QString()), Aviso);
    EXPECT_TRUE(FaltaClaveInicial(a));

    const qint32 id = FijaSupervisorInicial(a, QStringLiteral("Jefe"), QStringLiteral("l'ave"), QStringLiteral("l'ave"));
    EXPECT_FALSE(FaltaClaveInicial(a));
    // Es el supervisor que trajo el almacén, no uno nuevo.
    EXPECT_EQ(CuentaRegistros(a, QStringLiteral("Usuarios")), 1);
    const auto u = Ingresa(a, QStringLiteral("jEFE"), QStringLiteral("l'ave"));
    ASSERT_TRUE(u);
    EXPECT_EQ(u->idUsuario, id);
    EXPECT_TRUE(TieneNivel(a, u->idNivel, QStringLiteral("BorrTodosLosDatos")));
    // Una segunda vez ya no vale: el supervisor cambia su clave desde los usuarios.
    EXPECT_THROW(FijaSupervisorInicial(a, QStringLiteral("otro"), QStringLiteral("x"), QStringLiteral("x")), Aviso);
}

TEST_P(Acceso, SinUsuariosSupervisoresElPrimerIngresoLosCrea) {
    Almacen& a = almacen();
    a.ejecuta(QStringLiteral("DELETE FROM Usuarios"));
    a.ejecuta(QStringLiteral("DELETE FROM Niveles"));
    ASSERT_TRUE(FaltaClaveInicial(a));
    FijaSupervisorInicial(a, QStringLiteral("dueño"), QStringLiteral("1234"), QStringLiteral("1234"));
    const auto u = Ingresa(a, QStringLiteral("DUEÑO"), QStringLiteral("1234"));
    ASSERT_TRUE(u);
    EXPECT_TRUE(TieneNivel(a, u->idNivel, QStringLiteral("VeUsuarios")));
    EXPECT_FALSE(ModoPOS(a, u->idNivel));
}

TEST_P(Acceso, IngresoPorNombreSinMayusculasYClaveExacta) {
    Almacen& a = almacen();
    const qint64 nivel = nivelSupervisor();
    const qint64 ana = usuario(QStringLiteral("Ana"), QStringLiteral("Clave1"), nivel);
    usuario(QStringLiteral("O'Brien"), QStringLiteral("%_*"), nivel);

    const auto u = Ingresa(a, QStringLiteral("ANA"), QStringLiteral("Clave1"));
    ASSERT_TRUE(u);
    EXPECT_EQ(u->idUsuario, ana);
    EXPECT_EQ(u->idNivel, nivel);
    EXPECT_EQ(u->nombreCompleto, QStringLiteral("Nombre Ana"));
    EXPECT_FALSE(Ingresa(a, QStringLiteral("ana"), QStringLiteral("clave1")));
    EXPECT_FALSE(Ingresa(a, QStringLiteral("ana "), QStringLiteral("Clave1")));
    EXPECT_FALSE(Ingresa(a, QStringLiteral("nadie"), QStringLiteral("Clave1")));
    EXPECT_FALSE(Ingresa(a, QString(), QString()));
    // Apóstrofos y comodines son texto común.
    EXPECT_TRUE(Ingresa(a, QStringLiteral("o'brien"), QStringLiteral("%_*")));
    EXPECT_FALSE(Ingresa(a, QStringLiteral("o'brien"), QStringLiteral("%")));
}

TEST_P(Acceso, DosUsuariosConElMismoNombreEntraElDeLaClave) {
    Almacen& a = almacen();
    const qint64 nivel = nivelSupervisor();
    const qint64 nuevo = NuevoNivel(a, QStringLiteral("Cajeros")).value();
    const qint64 primero = usuario(QStringLiteral("caja"), QStringLiteral("uno"), nivel);
    const qint64 segundo = usuario(QStringLiteral("Caja"), QStringLiteral("dos"), nuevo);
    EXPECT_EQ(Ingresa(a, QStringLiteral("caja"), QStringLiteral("uno"))->idUsuario, primero);
    EXPECT_EQ(Ingresa(a, QStringLiteral("caja"), QStringLiteral("dos"))->idUsuario, segundo);
    // Con la misma clave gana el primero.
    GuardaUsuario(a, segundo, {QStringLiteral("X"), QStringLiteral("caja"), QStringLiteral("uno"), nuevo,
                               QStringLiteral("0")});
    EXPECT_EQ(Ingresa(a, QStringLiteral("CAJA"), QStringLiteral("uno"))->idUsuario, primero);
}

TEST_P(Acceso, UnResumenViejoSeRehaceAlIngresar) {
    Almacen& a = almacen();
    const qint64 id = usuario(QStringLiteral("vieja"), QStringLiteral("clave"), nivelSupervisor());
    // Un resumen argon2id con parámetros más chicos (como los de versiones anteriores).
    QByteArray texto("clave");
    char viejo[128];
    ASSERT_EQ(crypto_pwhash_str_alg(viejo, texto.constData(), 5, 2, 8u * 1024u * 1024u, crypto_pwhash_ALG_ARGON2ID13), 0);
    a.ejecuta(QStringLiteral("UPDATE Usuarios SET Contrasenia = ? WHERE idUsuario = ?"), {QString::fromLatin1(viejo), id});
    ASSERT_TRUE(Ingresa(a, QStringLiteral("vieja"), QStringLiteral("clave")));
    const QString rehecho = a.valor(QStringLiteral("SELECT Contrasenia FROM Usuarios WHERE idUsuario = ?"), {id}).toString();
    EXPECT_NE(rehecho, QString::fromLatin1(viejo));
    EXPECT_FALSE(ContraseniaParaRecifrar(rehecho));
    EXPECT_TRUE(Ingresa(a, QStringLiteral("vieja"), QStringLiteral("clave")));
}

TEST_P(Acceso, UsuarioModificadoConservaOCambiaSuClave) {
    Almacen& a = almacen();
    const qint64 nivel = nivelSupervisor();
    const qint64 id = usuario(QStringLiteral("beto"), QStringLiteral("primera"), nivel);
    const QString antes = a.valor(QStringLiteral("SELECT Contrasenia FROM Usuarios WHERE idUsuario = ?"), {id}).toString();

    auto d = LeeUsuario(a, id).value();
    EXPECT_TRUE(d.contrasenia.isEmpty()); // nunca vuelve la clave, ni su resumen
    d.nombreCompleto = QStringLiteral("Alberto D'Amico");
    d.comision = QStringLiteral("2.5");
    GuardaUsuario(a, id, d);
    EXPECT_EQ(a.valor(QStringLiteral("SELECT Contrasenia FROM Usuarios WHERE idUsuario = ?"), {id}).toString(), antes);
    EXPECT_TRUE(Ingresa(a, QStringLiteral("beto"), QStringLiteral("primera")));
    const auto leido = LeeUsuario(a, id).value();
    EXPECT_EQ(leido.nombreCompleto, QStringLiteral("Alberto D'Amico"));
    EXPECT_EQ(leido.comision, QStringLiteral("2.5"));

    d.contrasenia = QStringLiteral("segunda");
    GuardaUsuario(a, id, d);
    EXPECT_FALSE(Ingresa(a, QStringLiteral("beto"), QStringLiteral("primera")));
    EXPECT_TRUE(Ingresa(a, QStringLiteral("beto"), QStringLiteral("segunda")));

    BorraUsuario(a, id);
    EXPECT_THROW(GuardaUsuario(a, id, d), Aviso);
    EXPECT_FALSE(LeeUsuario(a, id));
    EXPECT_FALSE(Ingresa(a, QStringLiteral("beto"), QStringLiteral("segunda")));
}

TEST(Usuarios, DatosMalIngresados) {
    const DatosUsuario bien{QStringLiteral("Ana Pérez"), QStringLiteral("ana"), QStringLiteral("x"), 1,
                            QStringLiteral("0")};
    EXPECT_NO_THROW(ValidaUsuario(bien, true));
    auto falla = [&](auto cambia, bool nuevo) {
        DatosUsuario d = bien;
        cambia(d);
        try {
            ValidaUsuario(d, nuevo);
        } catch (const Aviso& e) {
            return e.texto() == QStringLiteral("Datos mal ingresados!") && e.titulo() == QStringLiteral("Error");
        }
        return false;
    };
    EXPECT_TRUE(falla([](DatosUsuario& d) { d.nombreCompleto = QStringLiteral(" "); }, false));
    EXPECT_TRUE(falla([](DatosUsuario& d) { d.nombreUsuario.clear(); }, false));
    EXPECT_TRUE(falla([](DatosUsuario& d) { d.contrasenia.clear(); }, true));
    EXPECT_FALSE(falla([](DatosUsuario& d) { d.contrasenia.clear(); }, false));
    EXPECT_TRUE(falla([](DatosUsuario& d) { d.comision = QStringLiteral("diez"); }, false));
    EXPECT_TRUE(falla([](DatosUsuario& d) { d.comision.clear(); }, false));
    EXPECT_TRUE(falla([](DatosUsuario& d) { d.idNivel = QVariant(); }, false));
}

TEST_P(Acceso, NivelesNuevosRepetidosYEnUso) {
    Almacen& a = almacen();
    const auto antes = ListaNiveles(a).size();
    const auto id = NuevoNivel(a, QStringLiteral("Repositor's"));
    ASSERT_TRUE(id);
    EXPECT_FALSE(NuevoNivel(a, QStringLiteral("repositor's")));
    EXPECT_FALSE(NuevoNivel(a, QStringLiteral("   ")));
    EXPECT_EQ(ListaNiveles(a).size(), antes + 1);

    // Un nivel nuevo empieza sin ningún permiso.
    const DatosNivel d = LeeNivel(a, *id).value();
    EXPECT_FALSE(d.usuarioSuper);
    for (const Permiso& p : Permisos()) EXPECT_FALSE(d.permisos.value(p.columna)) << p.columna.toStdString();
    EXPECT_EQ(ControlesSinPermiso(a, int(*id)).size(), 35);

    const qint64 u = usuario(QStringLiteral("repo"), QStringLiteral("r"), *id);
    try {
        EliminaNivel(a, *id);
        ADD_FAILURE() << "borró un nivel con usuarios";
    } catch (const Aviso& e) {
        EXPECT_EQ(e.texto(), QStringLiteral("Existen usuarios ya asignados a éste nivel!"));
    }
    EXPECT_TRUE(LeeNivel(a, *id));
    BorraUsuario(a, u);
    EliminaNivel(a, *id);
    EXPECT_FALSE(LeeNivel(a, *id));
}

TEST_P(Acceso, GuardarNivelGrabaCadaPermisoYSoloEse) {
    Almacen& a = almacen();
    const qint64 id = NuevoNivel(a, QStringLiteral("Prueba")).value();
    // Se enciende un permiso por vez y se comprueba que TieneNivel ve ése y ningún otro.
    for (const Permiso& p : Permisos()) {
        DatosNivel d = LeeNivel(a, id).value();
        for (auto it = d.permisos.begin(); it != d.permisos.end(); ++it) it.value() = it.key() == p.columna;
        GuardaNivel(a, d);
        for (const Permiso& q : Permisos())
            EXPECT_EQ(TieneNivel(a, int(id), q.columna), q.columna == p.columna)
                << p.columna.toStdString() << " / " << q.columna.toStdString();
    }
    DatosNivel d = LeeNivel(a, id).value();
    d.nombre = QStringLiteral("supervisor");
    EXPECT_THROW(GuardaNivel(a, d), Aviso); // repite el nombre de otro nivel
    d.nombre.clear();
    EXPECT_THROW(GuardaNivel(a, d), Aviso);
    d.nombre = QStringLiteral("Prueba renombrada");
    d.usuarioSuper = true;
    GuardaNivel(a, d);
    EXPECT_EQ(LeeNivel(a, id)->nombre, QStringLiteral("Prueba renombrada"));
    EXPECT_TRUE(TieneNivel(a, int(id), QStringLiteral("VeArticulos")));
}

TEST_P(Acceso, MatrizDePermisosDeLaVentanaPrincipal) {
    Almacen& a = almacen();
    const qint64 super = nivelSupervisor();
    EXPECT_TRUE(ControlesSinPermiso(a, int(super)).isEmpty());

    // Supervisor con todas las columnas apagadas: sigue pudiendo todo, y SoloPOS no lo afecta.
    DatosNivel ds = LeeNivel(a, super).value();
    for (auto it = ds.permisos.begin(); it != ds.permisos.end(); ++it) it.value() = false;
    ds.permisos[QStringLiteral("SoloPOS")] = true;
    GuardaNivel(a, ds);
    EXPECT_TRUE(ControlesSinPermiso(a, int(super)).isEmpty());
    EXPECT_FALSE(ModoPOS(a, int(super)));

    // Todo encendido menos un permiso "Ve": sólo se apaga su botón lateral.
    const qint64 id = NuevoNivel(a, QStringLiteral("Casi todo")).value();
    const QList<QPair<QString, QString>> ve = {
        {QStringLiteral("VeArticulos"), QStringLiteral("botPrincipal0")},
        {QStringLiteral("VeClientes"), QStringLiteral("botPrincipal1")},
        {QStringLiteral("VeCaja"), QStringLiteral("botPrincipal2")},
        {QStringLiteral("VeVentas"), QStringLiteral("botPrincipal3")},
        {QStringLiteral("VeInformes"), QStringLiteral("botPrincipal4")},
        {QStringLiteral("VeExportar"), QStringLiteral("botPrincipal5")},
        {QStringLiteral("PermEnviaMail"), QStringLiteral("botPrincipal5")},
        {QStringLiteral("VeUtilidades"), QStringLiteral("botPrincipal6")},
        {QStringLiteral("VeProveedores"), QStringLiteral("botPrincipal7")},
        {QStringLiteral("VeUsuarios"), QStringLiteral("Label37")},
        {QStringLiteral("VeRubros"), QStringLiteral("Command6")},
        {QStringLiteral("VeSaldoClientes"), QStringLiteral("Command9")},
    };
    for (const auto& [columna, control] : ve) {
        DatosNivel d = LeeNivel(a, id).value();
        for (auto it = d.permisos.begin(); it != d.permisos.end(); ++it) it.value() = it.key() != columna;
        GuardaNivel(a, d);
        EXPECT_EQ(ControlesSinPermiso(a, int(id)), QStringList{control}) << columna.toStdString();
    }
    // VeExportar encendido con PermEnviaMail apagado: Mensajería apagada igual.
    DatosNivel d = LeeNivel(a, id).value();
    for (auto it = d.permisos.begin(); it != d.permisos.end(); ++it) it.value() = true;
    d.permisos[QStringLiteral("PermEnviaMail")] = false;
    d.permisos[QStringLiteral("SoloPOS")] = true;
    GuardaNivel(a, d);
    EXPECT_EQ(ControlesSinPermiso(a, int(id)), QStringList{QStringLiteral("botPrincipal5")});
    EXPECT_TRUE(ModoPOS(a, int(id)));

    // Un 1 y un -1 cuentan igual; un nivel que ya no existe no tiene ningún permiso ni POS.
    a.ejecuta(QStringLiteral("UPDATE Niveles SET VeCaja = -1, VeVentas = 1 WHERE idNivel = ?"), {id});
    EXPECT_TRUE(TieneNivel(a, int(id), QStringLiteral("VeCaja")));
    EXPECT_TRUE(TieneNivel(a, int(id), QStringLiteral("VeVentas")));
    a.ejecuta(QStringLiteral("DELETE FROM Niveles WHERE idNivel = ?"), {id});
    EXPECT_EQ(ControlesSinPermiso(a, int(id)).size(), 35);
    EXPECT_FALSE(ModoPOS(a, int(id)));
}

TEST(Niveles, TablaDePermisosCompletaYOrdenDeAplicacion) {
    // Cada columna de permiso del almacén tiene su casilla, y ninguna sobra.
    QSet<QString> columnas;
    for (const QString& c : columnasPermiso()) columnas.insert(c.toLower());
    QSet<QString> casillas;
    for (const Permiso& p : Permisos()) casillas.insert(p.columna.toLower());
    EXPECT_EQ(columnas, casillas);
    EXPECT_EQ(Permisos().size(), size_t(columnasPermiso().size()));
    // El orden de aplicación nombra 30 permisos distintos, todos con controles.
    EXPECT_EQ(OrdenAplicaNiveles().size(), 30);
    EXPECT_EQ(QSet<QString>(OrdenAplicaNiveles().begin(), OrdenAplicaNiveles().end()).size(), 30);
    for (const QString& c : OrdenAplicaNiveles()) {
        ASSERT_NE(BuscaPermiso(c), nullptr) << c.toStdString();
        EXPECT_FALSE(BuscaPermiso(c)->controles.isEmpty()) << c.toStdString();
    }
    // Los permisos que no apagan nada quedan fuera del orden.
    for (const char* sinEfecto : {"NueUsuario", "NueCompra", "NueVenta", "BorrUsuario", "BorrCompra", "BorrVenta"})
        EXPECT_FALSE(OrdenAplicaNiveles().contains(QString::fromLatin1(sinEfecto)));
}

// Texto del aviso que lanza `f`; vacío si no lanza.
QString aviso(const std::function<void()>& f) {
    try {
        f();
    } catch (const Aviso& a) {
        return a.texto();
    }
    return {};
}

TEST_P(Acceso, NombresQueNoCabenONulosYComisionesAmbiguasSeRechazanSinGuardarNada) {
    Almacen& a = almacen();
    const QVariant n = nivelSupervisor();
    const QString emojis = QString::fromUtf8("\U0001F600").repeated(50); // 50 caracteres para el servidor
    const struct {
        DatosUsuario datos;
        const char* aviso; // comienzo; vacío si se guarda
    } casos[] = {
        {{QStringLiteral("Ana"), QStringLiteral("a1"), QStringLiteral("x"), n, QStringLiteral("1,5")}, "Comisión %: el número está mal escrito"},
        {{QStringLiteral("Ana"), QStringLiteral("a2"), QStringLiteral("x"), n, QStringLiteral("1.5")}, ""},
        {{QStringLiteral("Ana"), QString(10000, u'a'), QStringLiteral("x"), n, QStringLiteral("0")}, "Nombre de usuario: admite hasta 50 caracteres (tiene 10000)."},
        {{QStringLiteral("Ana"), QStringLiteral("a") + QChar(0), QStringLiteral("x"), n, QStringLiteral("0")}, "Nombre de usuario: el texto tiene un carácter nulo"},
        {{QString(101, u'n'), QStringLiteral("a3"), QStringLiteral("x"), n, QStringLiteral("0")}, "Nombre completo: admite hasta 100 caracteres (tiene 101)."},
        {{QStringLiteral("Ana"), emojis, QStringLiteral("x"), n, QStringLiteral("0")}, ""},
    };
    for (const auto& c : casos) {
        qint64 id = 0;
        const QString texto = aviso([&] { id = GuardaUsuario(a, std::nullopt, c.datos); });
        EXPECT_TRUE(*c.aviso ? texto.startsWith(QString::fromUtf8(c.aviso)) : texto.isEmpty()) << texto.toStdString();
        const auto leido = LeeUsuario(a, id);
        EXPECT_EQ(leido ? leido->nombreUsuario + u'/' + leido->comision : QString(),
                  *c.aviso ? QString() : c.datos.nombreUsuario + u'/' + (c.datos.comision));
    }
    EXPECT_TRUE(aviso([&] { NuevoNivel(a, QString(51, u'n')); }).startsWith(QStringLiteral("Nombre del nivel: admite hasta 50")));
    DatosNivel d = LeeNivel(a, NuevoNivel(a, emojis).value()).value();
    d.nombre += QChar(0);
    EXPECT_TRUE(aviso([&] { GuardaNivel(a, d); }).startsWith(QStringLiteral("Nombre del nivel: el texto tiene un carácter nulo")));
}

// Nunca queda el sistema sin quien administre los usuarios (nivel con "Usuarios" o supervisor).
TEST_P(Acceso, ElUltimoQueAdministraUsuariosNoSeBorraNiPierdeElPermiso) {
    Almacen& a = almacen();
    const qint64 sup = a.valor(QStringLiteral("SELECT idUsuario FROM Usuarios")).toLongLong();
    const qint64 gerencia = NuevoNivel(a, QStringLiteral("Gerencia")).value();
    const qint64 caja = NuevoNivel(a, QStringLiteral("Caja")).value();
    auto nivel = [&](qint64 id, bool super, bool usuarios) {
        DatosNivel d = LeeNivel(a, id).value();
        d.usuarioSuper = super;
        d.permisos[QStringLiteral("VeUsuarios")] = usuarios;
        GuardaNivel(a, d);
    };
    auto pasa = [&](qint64 id, qint64 nivel) {
        DatosUsuario d = LeeUsuario(a, id).value();
        d.idNivel = nivel;
        GuardaUsuario(a, id, d);
    };
    nivel(gerencia, false, true);
    const qint64 cajero = usuario(QStringLiteral("cajero"), QStringLiteral("c"), caja);
    qint64 gerente = 0;
    auto estado = [&] { // usuario:nivel:S(upervisor)U(suarios), por usuario
        QStringList filas;
        QSqlQuery q = a.consulta(QStringLiteral("SELECT NombreUsuario, Nombre, UsuarioSuper, VeUsuarios FROM Usuarios "
                                                "INNER JOIN Niveles ON Usuarios.idNivel = Niveles.idNivel ORDER BY 1"));
        while (q.next())
            filas << q.value(0).toString() + u':' + q.value(1).toString() + u':' +
                         (q.value(2).toInt() ? QStringLiteral("S") : QString()) + (q.value(3).toInt() ? QStringLiteral("U") : QString());
        return filas.join(u' ');
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
        {[&] { gerente = usuario(QStringLiteral("gerente"), QStringLiteral("g"), nivelSupervisor()); }, "",
         "gerente:Supervisor:SU supervisor:Gerencia:S"},
        {[&] { nivel(gerencia, false, false); }, "", "gerente:Supervisor:SU supervisor:Gerencia:"},
        {[&] { BorraUsuario(a, gerente); }, "No se puede borrar a Nombre gerente: es el último",
         "gerente:Supervisor:SU supervisor:Gerencia:"},
    };
    for (const auto& p : pasos) {
        const QString texto = aviso(p.hace);
        EXPECT_TRUE(*p.aviso ? texto.startsWith(QString::fromUtf8(p.aviso)) : texto.isEmpty()) << texto.toStdString();
        EXPECT_EQ(estado(), QString::fromUtf8(p.queda)) << p.queda;
    }
}

// Dos puestos borran a la vez a los dos últimos administradores: el segundo no puede.
TEST_P(Acceso, DosPuestosNoBorranALaVezALosDosUltimosAdministradores) {
    Almacen& a = almacen();
    const qint64 uno = a.valor(QStringLiteral("SELECT idUsuario FROM Usuarios")).toLongLong();
    const qint64 dos = usuario(QStringLiteral("dos"), QStringLiteral("d"), nivelSupervisor());
    QString otroPuesto;
    Transaccion t(a);
    BorraUsuario(a, uno); // sin confirmar todavía
    std::thread hilo([&] { otroPuesto = aviso([&] { BorraUsuario(*base().otraConexion(), dos); }); });
    std::this_thread::sleep_for(std::chrono::milliseconds(400)); // el otro llega a su borrado
    t.confirmar();
    hilo.join();
    EXPECT_TRUE(otroPuesto.startsWith(QStringLiteral("No se puede borrar a Nombre dos"))) << otroPuesto.toStdString();
    EXPECT_EQ(CuentaAdministradores(a), 1);
    EXPECT_TRUE(LeeUsuario(a, dos));
}

ORV_AMBOS_MOTORES(Acceso);

} // namespace
} // namespace orv
