// Rutinas generales: lectura de un campo, cuentas, permisos por nivel y días cerrados.

#include "apoyo/base_prueba.h"
#include "store/actualizacion.h"
#include "store/aviso.h"
#include "store/esquema.h"
#include "store/rutinas.h"

#include <QFile>
#include <QTemporaryDir>

using namespace orv;
using namespace orv::prueba;

namespace {

class Rutinas : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (IsSkipped()) return;
        actualizaEsquema(almacen());
    }
};
ORV_AMBOS_MOTORES(Rutinas);

QString avisoDe(const std::function<void()>& f) {
    try {
        f();
    } catch (const Aviso& a) {
        return a.titulo() + ": " + a.texto();
    }
    return {};
}

} // namespace

TEST_P(Rutinas, LeeCampoPorNombreYCuentaRegistrosConParametrosLigados) {
    const QString sql = "SELECT * FROM Cuentas WHERE Cuenta = ?";
    almacen().ejecuta("INSERT INTO Cuentas (Cuenta) VALUES (?)", {"D'Angelo & Cía"});
    EXPECT_TRUE(LeeCampo(almacen(), sql, {"No existe"}, "idCuenta").isNull());
    EXPECT_EQ(LeeCampo(almacen(), sql, {"Ventas Mostrador"}, "IDCUENTA").toInt(), 1);
    EXPECT_EQ(LeeCampo(almacen(), sql, {"D'Angelo & Cía"}, "Cuenta").toString(), "D'Angelo & Cía");
    EXPECT_THROW(LeeCampo(almacen(), sql, {"Ventas Mostrador"}, "NoHay"), ErrorAlmacen);
    EXPECT_THROW(LeeCampo(almacen(), "SELECT * FROM TablaQueNoExiste", {}, "x"), ErrorAlmacen);

    EXPECT_EQ(CuentaRegistros(almacen(), "CorteCaja"), 0);
    EXPECT_EQ(CuentaRegistros(almacen(), "FormasDePago"), 4);
    EXPECT_EQ(CuentaRegistros(almacen(), "SELECT * FROM FormasDePago WHERE FormaPago IN (?, ?)", {"EFVO", "CHEQ"}), 2);
    EXPECT_EQ(CuentaRegistros(almacen(), "SELECT * FROM Cuentas WHERE Cuenta LIKE ?", {"D'Angelo%"}), 1);
}

TEST_P(Rutinas, TieneNivelSoloConUnoOMenosUnoYElSupervisorPasaTodo) {
    const auto nivel = [this](const char* nombre, const QString& encendidas, int valor) {
        const qint64 id = almacen().inserta("INSERT INTO Niveles (Nombre) VALUES (?)", {nombre}, "idNivel");
        for (const QString& c : encendidas.split(u' ', Qt::SkipEmptyParts))
            almacen().ejecuta("UPDATE Niveles SET " + c + " = ? WHERE idNivel = ?", {valor, id});
        return static_cast<int>(id);
    };
    const int jefe = nivel("Jefe", "UsuarioSuper", -1);
    const int cajero = nivel("Cajero", "VeVentas", 1);
    almacen().ejecuta("UPDATE Niveles SET SoloPOS = -1, VeCaja = 2 WHERE idNivel = ?", {cajero});
    for (const QString& c : columnasPermiso()) {
        EXPECT_TRUE(TieneNivel(almacen(), jefe, c)) << c.toStdString();
        const bool cajeroPuede = QStringList{"veventas", "solopos"}.contains(c.toLower());
        EXPECT_EQ(TieneNivel(almacen(), cajero, c), cajeroPuede) << c.toStdString(); // VeCaja = 2 no cuenta
        EXPECT_FALSE(TieneNivel(almacen(), 987654, c)) << "un nivel borrado no tiene permisos";
    }
    EXPECT_TRUE(TieneNivel(almacen(), cajero, "veventas"));
    EXPECT_FALSE(TieneNivel(almacen(), cajero, "usuarioSuper"));
    EXPECT_EQ(avisoDe([&] { ExigeNivel(almacen(), cajero, "BorrCaja"); }), "Error: Nivel no permitido!");
    EXPECT_EQ(avisoDe([&] { ExigeNivel(almacen(), cajero, "VeVentas"); }), "");
    // El nombre de columna nunca llega al SQL si no es un permiso conocido.
    EXPECT_THROW(TieneNivel(almacen(), 1, "Nombre"), std::invalid_argument);
    EXPECT_THROW(TieneNivel(almacen(), 1, "VeCaja FROM Niveles; DROP TABLE Niveles; --"), std::invalid_argument);
}

TEST_P(Rutinas, FechaAbiertaSoloFallaEnElDiaCerrado) {
    const QDate cerrado(2026, 11, 20);
    EXPECT_TRUE(FechaAbierta(almacen(), cerrado));
    almacen().ejecuta("INSERT INTO CorteCaja (FECHA) VALUES (?)", {cerrado});
    EXPECT_FALSE(FechaAbierta(almacen(), cerrado));
    EXPECT_TRUE(FechaAbierta(almacen(), cerrado.addDays(1)) && FechaAbierta(almacen(), cerrado.addDays(-1)));
    EXPECT_EQ(avisoDe([&] { ExigeFechaAbierta(almacen(), cerrado); }),
              "Error: Error, fecha cerrada para ingresar movimientos!");
}

TEST(RutinasArchivos, ExisteArchivoConRutasDeMenosDeCuatroLetras) {
    QTemporaryDir dir;
    const QString ruta = dir.filePath("logo.png");
    EXPECT_FALSE(ExisteArchivo(ruta));
    QFile f(ruta);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.close();
    EXPECT_TRUE(ExisteArchivo(ruta) && ExisteArchivo(dir.path()));
    for (const char* no : {"", "/", "/tm"}) EXPECT_FALSE(ExisteArchivo(no)) << no;
}
