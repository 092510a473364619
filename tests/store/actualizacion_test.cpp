// Actualización del esquema por pasos: una sola vez, en orden, entera o nada, sin perder filas.

#include "apoyo/base_prueba.h"
#include "store/actualizacion.h"
#include "store/esquema.h"

#include <QDate>
#include <atomic>
#include <mutex>
#include <thread>

using namespace orv;
using namespace orv::prueba;

namespace {

class Actualizacion : public PorMotor {
protected:
    int cuenta(const QString& tablaOVista) {
        return almacen().valor(QStringLiteral("SELECT count(*) FROM ") + tablaOVista).toInt();
    }
    // Cantidad de tablas, vistas e índices del almacén: la huella del esquema.
    int objetosDelEsquema() {
        if (almacen().esPostgreSQL())
            return almacen()
                .valor(QStringLiteral("SELECT count(*) FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
                                      "WHERE n.nspname = current_schema() AND c.relkind IN ('r', 'v', 'i')"))
                .toInt();
        return almacen().valor(QStringLiteral("SELECT count(*) FROM sqlite_master WHERE type IN ('table','view','index')"))
            .toInt();
    }
    void soloLectura(bool si) {
        if (almacen().esPostgreSQL())
            almacen().ejecuta(si ? QStringLiteral("SET default_transaction_read_only = on")
                                 : QStringLiteral("SET default_transaction_read_only = off"));
        else
            almacen().ejecuta(si ? QStringLiteral("PRAGMA query_only = ON") : QStringLiteral("PRAGMA query_only = OFF"));
    }
    int ultimoPaso() const { return pasosDelSistema().back().numero; }

    // Un almacén con el paso 1 y filas de trabajo.
    void almacenConDatos() {
        ASSERT_GE(actualizaEsquema(almacen()), 1);
        Almacen& a = almacen();
        for (int i = 1; i <= 25; ++i)
            a.ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, PrecioVenta) VALUES (?, ?, ?)"),
                      {QStringLiteral("01%1").arg(i, 4, 10, QLatin1Char('0')), QStringLiteral("Artículo '%1'").arg(i),
                       QStringLiteral("%1.2500").arg(i)});
        a.ejecuta(QStringLiteral("INSERT INTO Comprobantes (Factura, Fecha, Total, idVendedor) VALUES (?, ?, ?, 1)"),
                  {QStringLiteral("B0001-00000001"), QDate(2024, 1, 2), QStringLiteral("10.5000")});
        a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, Fecha, Ingreso, Detalles) VALUES (1, ?, ?, ?)"),
                  {QDate(2024, 1, 2), QStringLiteral("10.5000"), QStringLiteral("VENTA : B0001-00000001")});
    }
};
ORV_AMBOS_MOTORES(Actualizacion);

std::vector<PasoEsquema> conPasos(std::initializer_list<PasoEsquema> extra) {
    std::vector<PasoEsquema> v = pasosDelSistema();
    v.insert(v.end(), extra);
    return v;
}

} // namespace

TEST_P(Actualizacion, AlmacenNuevoQuedaAlDiaYUnaSegundaCorridaNoHaceNada) {
    EXPECT_EQ(versionEsquema(almacen()), 0);
    EXPECT_EQ(actualizaEsquema(almacen()), static_cast<int>(pasosDelSistema().size()));
    EXPECT_EQ(versionEsquema(almacen()), ultimoPaso());
    const int huella = objetosDelEsquema();
    const int tipos = cuenta(QStringLiteral("TiposMovimientoStock"));

    // Al día, la actualización sólo lee: con el almacén en sólo lectura no falla.
    soloLectura(true);
    EXPECT_EQ(actualizaEsquema(almacen()), 0);
    EXPECT_EQ(actualizaEsquema(almacen()), 0);
    soloLectura(false);

    EXPECT_EQ(versionEsquema(almacen()), ultimoPaso());
    EXPECT_EQ(objetosDelEsquema(), huella);
    EXPECT_EQ(cuenta(QStringLiteral("TiposMovimientoStock")), tipos) << "las filas de partida no se repiten";
    EXPECT_EQ(cuenta(QStringLiteral("PasosEsquema")), static_cast<int>(pasosDelSistema().size()));
    EXPECT_EQ(cuenta(QStringLiteral("Usuarios")), 1);
}

TEST_P(Actualizacion, UnPasoNuevoAgregaColumnaEIndiceSinPerderFilas) {
    almacenConDatos();
    if (HasFatalFailure()) return;
    const int n = ultimoPaso() + 1;
    const auto pasos = conPasos({{n, QStringLiteral("Código de barras del artículo"), [](Almacen& a) {
                                      a.ejecuta(ddl(a.dialecto(),
                                                    QStringLiteral("ALTER TABLE Articulos ADD COLUMN CodigoBarras {TEXTO(20)}")));
                                      a.ejecuta(QStringLiteral(
                                          "CREATE INDEX Articulos_CodigoBarras ON Articulos (CodigoBarras)"));
                                  }}});
    EXPECT_EQ(actualizaEsquema(almacen(), pasos), 1);
    EXPECT_EQ(versionEsquema(almacen()), n);
    EXPECT_TRUE(almacen().existeColumna(QStringLiteral("Articulos"), QStringLiteral("CodigoBarras")));

    EXPECT_EQ(cuenta(QStringLiteral("Articulos")), 25);
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT Descripcion FROM Articulos WHERE Codigo = '010007'")).toString(),
              QStringLiteral("Artículo '7'"));
    EXPECT_EQ(cuenta(QStringLiteral("Comprobantes")), 1);
    EXPECT_EQ(cuenta(QStringLiteral("Caja")), 1);
    EXPECT_EQ(cuenta(QStringLiteral("ConsultaArticulos")), 25) << "las vistas siguen respondiendo";

    // La columna nueva se usa y el índice existe: crearlo de nuevo falla.
    almacen().ejecuta(QStringLiteral("UPDATE Articulos SET CodigoBarras = ? WHERE Codigo = '010001'"),
                      {QStringLiteral("7790001000017")});
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT Codigo FROM Articulos WHERE CodigoBarras = ?"),
                              {QStringLiteral("7790001000017")})
                  .toString(),
              QStringLiteral("010001"));
    EXPECT_THROW(almacen().ejecuta(QStringLiteral("CREATE INDEX Articulos_CodigoBarras ON Articulos (CodigoBarras)")),
                 ErrorAlmacen);

    EXPECT_EQ(actualizaEsquema(almacen(), pasos), 0) << "cada paso se aplica una sola vez";
}

TEST_P(Actualizacion, UnPasoQueFallaSeDeshaceEntero) {
    almacenConDatos();
    if (HasFatalFailure()) return;
    const int bueno = ultimoPaso() + 1;
    const int malo = bueno + 1;
    const auto pasos = conPasos(
        {{bueno, QStringLiteral("Observaciones del rubro"),
          [](Almacen& a) { a.ejecuta(ddl(a.dialecto(), QStringLiteral("ALTER TABLE Rubros ADD COLUMN Nota {MEMO}"))); }},
         {malo, QStringLiteral("Paso que se corta a la mitad"), [](Almacen& a) {
              a.ejecuta(ddl(a.dialecto(), QStringLiteral("ALTER TABLE Articulos ADD COLUMN Peso {DOBLE}")));
              a.ejecuta(QStringLiteral("UPDATE Articulos SET Peso = 1, PrecioVenta = 0"));
              a.ejecuta(QStringLiteral("DELETE FROM Caja"));
              a.ejecuta(QStringLiteral("UPDATE TablaQueNoExiste SET x = 1"));
          }}});
    EXPECT_THROW(actualizaEsquema(almacen(), pasos), ErrorAlmacen);

    // El paso bueno quedó; del malo no queda nada.
    EXPECT_EQ(versionEsquema(almacen()), bueno);
    EXPECT_TRUE(almacen().existeColumna(QStringLiteral("Rubros"), QStringLiteral("Nota")));
    EXPECT_FALSE(almacen().existeColumna(QStringLiteral("Articulos"), QStringLiteral("Peso")));
    EXPECT_EQ(cuenta(QStringLiteral("Caja")), 1);
    EXPECT_EQ(cuenta(QStringLiteral("Articulos WHERE PrecioVenta = 0")), 0);
    EXPECT_EQ(almacen().profundidadTransaccion(), 0);
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT count(*) FROM PasosEsquema WHERE Paso = ?"), {malo}).toInt(), 0);

    // Corregido el paso, la próxima corrida lo aplica.
    const auto corregidos = conPasos(
        {pasos[pasos.size() - 2],
         {malo, QStringLiteral("Peso del artículo"),
          [](Almacen& a) { a.ejecuta(ddl(a.dialecto(), QStringLiteral("ALTER TABLE Articulos ADD COLUMN Peso {DOBLE}"))); }}});
    EXPECT_EQ(actualizaEsquema(almacen(), corregidos), 1);
    EXPECT_EQ(versionEsquema(almacen()), malo);
    EXPECT_TRUE(almacen().existeColumna(QStringLiteral("Articulos"), QStringLiteral("Peso")));
}

TEST_P(Actualizacion, UnPasoInicialQueFallaNoDejaMedioEsquema) {
    const std::vector<PasoEsquema> pasos = {
        {1, QStringLiteral("Inicial roto"), [](Almacen& a) {
             creaEsquemaInicial(a);
             a.ejecuta(QStringLiteral("INSERT INTO NoExiste VALUES (1)"));
         }}};
    EXPECT_THROW(actualizaEsquema(almacen(), pasos), ErrorAlmacen);
    EXPECT_EQ(versionEsquema(almacen()), 0);
    EXPECT_FALSE(almacen().existeTabla(QStringLiteral("Articulos")));
    EXPECT_FALSE(almacen().existeTabla(QStringLiteral("ConsultaCaja")));
    // Y después el almacén se crea bien.
    EXPECT_EQ(actualizaEsquema(almacen()), static_cast<int>(pasosDelSistema().size()));
    EXPECT_EQ(cuenta(QStringLiteral("Niveles")), 1);
}

TEST_P(Actualizacion, DosTerminalesActualizanALaVezUnAlmacenNuevo) {
    const QString destino = base().destino();
    std::atomic<int> aplicados{0};
    std::atomic<int> fallas{0};
    std::string error;
    std::mutex mutexError;
    const auto terminal = [&]() {
        try {
            // Cada hilo abre y cierra su propia conexión.
            auto a = Almacen::abre(destino);
            aplicados += actualizaEsquema(*a);
        } catch (const std::exception& e) {
            ++fallas;
            std::lock_guard<std::mutex> l(mutexError);
            error = e.what();
        }
    };
    std::thread t1(terminal);
    std::thread t2(terminal);
    t1.join();
    t2.join();

    EXPECT_EQ(fallas.load(), 0) << error;
    EXPECT_EQ(aplicados.load(), static_cast<int>(pasosDelSistema().size()));
    EXPECT_EQ(versionEsquema(almacen()), ultimoPaso());
    EXPECT_EQ(cuenta(QStringLiteral("PasosEsquema")), static_cast<int>(pasosDelSistema().size()));
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT count(DISTINCT Paso) FROM PasosEsquema")).toInt(),
              static_cast<int>(pasosDelSistema().size()));
    EXPECT_EQ(cuenta(QStringLiteral("TiposMovimientoStock")), 5);
    EXPECT_EQ(cuenta(QStringLiteral("Vendedores")), 1);
    EXPECT_EQ(cuenta(QStringLiteral("Usuarios")), 1);
}
