// Rutinas generales: lectura de un campo, cuentas, permisos por nivel y días cerrados.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "store/actualizacion.h"
#include "store/aviso.h"
#include "store/rutinas.h"

#include <QFile>
#include <QTemporaryDir>

using namespace orv;
using namespace orv::prueba;

namespace {

class Rutinas : public PorMotorAlDia {
protected:
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
    const auto nivel = [this](const char* columnas, const char* valores) {
        const QString sql = QStringLiteral("INSERT INTO Niveles (Nombre, %1) VALUES ('x', %2)").arg(columnas, valores);
        return int(almacen().inserta(sql, {}, "idNivel"));
    };
    const int jefe = nivel("UsuarioSuper", "-1");
    const int cajero = nivel("VeVentas, SoloPOS, VeCaja", "1, -1, 2");
    const std::tuple<int, const char*, bool> casos[] = {
        {jefe, "BorrTodosLosDatos", true}, {jefe, "VeCaja", true},        {cajero, "veventas", true},
        {cajero, "soloPOS", true},         {cajero, "VeCaja", false}, // 2 no cuenta como encendido
        {cajero, "usuarioSuper", false},   {cajero, "BorrCaja", false},   {987654, "VeVentas", false}, // nivel borrado
    };
    for (const auto& [id, permiso, esperado] : casos) EXPECT_EQ(TieneNivel(almacen(), id, permiso), esperado) << permiso;
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
