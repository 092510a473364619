#include "apoyo/base_prueba.h"
#include "store/actualizacion.h"
#include "store/aviso.h"
#include "store/esquema.h"
#include "store/rutinas.h"

#include <QFile>
#include <QTemporaryDir>

using namespace orv;
using namespace orv::prueba;

class Rutinas : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (IsSkipped()) return;
        actualizaEsquema(almacen());
    }
    int nuevoNivel(const QString& nombre) {
        return static_cast<int>(
            almacen().inserta(QStringLiteral("INSERT INTO Niveles (Nombre) VALUES (?)"), {nombre}, QStringLiteral("idNivel")));
    }
    void fija(int idNivel, const QString& columna, int valor) {
        almacen().ejecuta(QStringLiteral("UPDATE Niveles SET ") + columna + QStringLiteral(" = ? WHERE idNivel = ?"),
                          {valor, idNivel});
    }
};
ORV_AMBOS_MOTORES(Rutinas);

TEST_P(Rutinas, LeeCampoDaNuloSinFilasYElValorPorNombreSinDistinguirMayusculas) {
    const QString sql = QStringLiteral("SELECT * FROM Cuentas WHERE Cuenta = ?");
    EXPECT_TRUE(LeeCampo(almacen(), sql, {QStringLiteral("No existe")}, QStringLiteral("idCuenta")).isNull());
    const QVariant id = LeeCampo(almacen(), sql, {QStringLiteral("Ventas Mostrador")}, QStringLiteral("IDCUENTA"));
    ASSERT_FALSE(id.isNull());
    EXPECT_GT(id.toInt(), 0);

    // Un nombre con apóstrofo viaja ligado y se encuentra tal cual.
    almacen().ejecuta(QStringLiteral("INSERT INTO Cuentas (Cuenta) VALUES (?)"), {QStringLiteral("D'Angelo & Cía")});
    EXPECT_EQ(LeeCampo(almacen(), sql, {QStringLiteral("D'Angelo & Cía")}, QStringLiteral("Cuenta")).toString(),
              QStringLiteral("D'Angelo & Cía"));
    EXPECT_THROW(LeeCampo(almacen(), sql, {QStringLiteral("Ventas Mostrador")}, QStringLiteral("NoHay")), ErrorAlmacen);
    EXPECT_THROW(LeeCampo(almacen(), QStringLiteral("SELECT * FROM TablaQueNoExiste"), {}, QStringLiteral("x")),
                 ErrorAlmacen);
}

TEST_P(Rutinas, CuentaRegistrosDeTablaYDeConsulta) {
    EXPECT_EQ(CuentaRegistros(almacen(), QStringLiteral("CorteCaja")), 0);
    EXPECT_EQ(CuentaRegistros(almacen(), QStringLiteral("TmpFac")), 0);
    const qint64 formas = CuentaRegistros(almacen(), QStringLiteral("FormasDePago"));
    EXPECT_GE(formas, 3);
    EXPECT_EQ(CuentaRegistros(almacen(), QStringLiteral("SELECT * FROM FormasDePago WHERE FormaPago IN (?, ?)"),
                              {QStringLiteral("EFVO"), QStringLiteral("CHEQ")}),
              2);
    EXPECT_EQ(CuentaRegistros(almacen(), QStringLiteral("SELECT * FROM FormasDePago WHERE FormaPago = ?"),
                              {QStringLiteral("NADA")}),
              0);
}

TEST_P(Rutinas, TieneNivelSupervisorUnoMenosUnoYNivelInexistente) {
    // Supervisor con todo lo demás apagado: pasa todas las preguntas.
    const int super = nuevoNivel(QStringLiteral("Jefe"));
    fija(super, QStringLiteral("UsuarioSuper"), -1);
    for (const QString& c : columnasPermiso()) EXPECT_TRUE(TieneNivel(almacen(), super, c)) << c.toStdString();

    const int cajero = nuevoNivel(QStringLiteral("Cajero"));
    for (const QString& c : columnasPermiso()) EXPECT_FALSE(TieneNivel(almacen(), cajero, c)) << c.toStdString();
    fija(cajero, QStringLiteral("VeVentas"), 1);
    fija(cajero, QStringLiteral("SoloPOS"), -1);
    EXPECT_TRUE(TieneNivel(almacen(), cajero, QStringLiteral("veventas")));
    EXPECT_TRUE(TieneNivel(almacen(), cajero, QStringLiteral("soloPOS")));
    EXPECT_FALSE(TieneNivel(almacen(), cajero, QStringLiteral("usuarioSuper")));
    EXPECT_FALSE(TieneNivel(almacen(), cajero, QStringLiteral("VeCaja")));

    // Un valor distinto de 1 y -1 no cuenta como encendido.
    fija(cajero, QStringLiteral("VeCaja"), 2);
    EXPECT_FALSE(TieneNivel(almacen(), cajero, QStringLiteral("VeCaja")));

    // Un nivel borrado no tiene ningún permiso.
    EXPECT_FALSE(TieneNivel(almacen(), 987654, QStringLiteral("VeVentas")));
    EXPECT_FALSE(TieneNivel(almacen(), 987654, QStringLiteral("UsuarioSuper")));

    try {
        ExigeNivel(almacen(), cajero, QStringLiteral("BorrCaja"));
        FAIL() << "debía avisar";
    } catch (const Aviso& a) {
        EXPECT_EQ(a.texto(), QStringLiteral("Nivel no permitido!"));
        EXPECT_EQ(a.titulo(), QStringLiteral("Error"));
    }
    EXPECT_NO_THROW(ExigeNivel(almacen(), cajero, QStringLiteral("VeVentas")));
}

TEST_P(Rutinas, TieneNivelRechazaLoQueNoEsUnPermiso) {
    // El nombre de columna nunca llega al SQL si no es un permiso conocido.
    EXPECT_THROW(TieneNivel(almacen(), 1, QStringLiteral("Nombre")), std::invalid_argument);
    EXPECT_THROW(TieneNivel(almacen(), 1, QStringLiteral("VeCaja FROM Niveles; DROP TABLE Niveles; --")),
                 std::invalid_argument);
    EXPECT_TRUE(almacen().existeTabla(QStringLiteral("Niveles")));
}

TEST_P(Rutinas, FechaAbiertaSoloFallaEnElDiaCerrado) {
    const QDate cerrado(2026, 11, 20);
    EXPECT_TRUE(FechaAbierta(almacen(), cerrado));
    almacen().ejecuta(QStringLiteral("INSERT INTO CorteCaja (FECHA) VALUES (?)"), {cerrado});
    EXPECT_FALSE(FechaAbierta(almacen(), cerrado));
    EXPECT_TRUE(FechaAbierta(almacen(), cerrado.addDays(1)));
    EXPECT_TRUE(FechaAbierta(almacen(), cerrado.addDays(-1)));
    try {
        ExigeFechaAbierta(almacen(), cerrado);
        FAIL() << "debía avisar";
    } catch (const Aviso& a) {
        EXPECT_EQ(a.texto(), QStringLiteral("Error, fecha cerrada para ingresar movimientos!"));
        EXPECT_EQ(a.titulo(), QStringLiteral("Error"));
    }
}

TEST(RutinasArchivos, ExisteArchivo) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString ruta = dir.filePath(QStringLiteral("logo.png"));
    EXPECT_FALSE(ExisteArchivo(ruta));
    QFile f(ruta);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("x");
    f.close();
    EXPECT_TRUE(ExisteArchivo(ruta));
    EXPECT_TRUE(ExisteArchivo(dir.path()));
    EXPECT_FALSE(ExisteArchivo(QString()));
    EXPECT_FALSE(ExisteArchivo(QStringLiteral("/tm")));
    EXPECT_FALSE(ExisteArchivo(QStringLiteral("a.b")));
}
