// Actualización del esquema por pasos: una sola vez, en orden, entera o nada, sin perder filas.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "store/actualizacion.h"
#include "store/esquema.h"

#include <QDate>
#include <atomic>

using namespace orv;
using namespace orv::prueba;

namespace {

class Actualizacion : public PorMotor {
protected:
    int cuenta(const QString& tablaOVista) { return almacen().valor("SELECT count(*) FROM " + tablaOVista).toInt(); }
    // Cantidad de tablas, vistas e índices del almacén: la huella del esquema.
    int objetosDelEsquema() {
        return cuenta(almacen().esPostgreSQL()
                          ? "pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace WHERE n.nspname = current_schema() "
                            "AND c.relkind IN ('r', 'v', 'i')"
                          : "sqlite_master WHERE type IN ('table', 'view', 'index')");
    }
    void soloLectura(bool si) {
        almacen().ejecuta(almacen().esPostgreSQL() ? (si ? "SET default_transaction_read_only = on"
                                                         : "SET default_transaction_read_only = off")
                                                   : (si ? "PRAGMA query_only = ON" : "PRAGMA query_only = OFF"));
    }
    static int pasos() { return static_cast<int>(pasosDelSistema().size()); }
    static int ultimoPaso() { return pasosDelSistema().back().numero; }

    // Un almacén al día con filas de trabajo.
    void almacenConDatos() {
        ASSERT_GE(actualizaEsquema(almacen()), 1);
        for (int i = 1; i <= 25; ++i)
            almacen().ejecuta("INSERT INTO Articulos (Codigo, Descripcion, PrecioVenta) VALUES (?, ?, ?)",
                              {QStringLiteral("01%1").arg(i, 4, 10, QLatin1Char('0')),
                               QStringLiteral("Artículo '%1'").arg(i), QStringLiteral("%1.2500").arg(i)});
        almacen().ejecuta("INSERT INTO Caja (idCuenta, Fecha, Ingreso, Detalles) VALUES (1, ?, ?, ?)",
                          {QDate(2024, 1, 2), "10.5000", "VENTA : B0001-00000001"});
    }
};
ORV_AMBOS_MOTORES(Actualizacion);

std::vector<PasoEsquema> conPasos(std::initializer_list<PasoEsquema> extra) {
    std::vector<PasoEsquema> v = pasosDelSistema();
    v.insert(v.end(), extra);
    return v;
}

void agrega(Almacen& a, const char* columna) { a.ejecuta(ddl(a.dialecto(), QString::fromUtf8(columna))); }

} // namespace

TEST_P(Actualizacion, LaConsultaDeCajaSeRehaceSinRomperUnaVistaDelComercio) {
    // Un almacén que quedó en el paso 1, con movimientos y una vista propia sobre la consulta de caja.
    ASSERT_EQ(actualizaEsquema(almacen(), std::vector<PasoEsquema>{pasosDelSistema().front()}), 1);
    almacen().ejecuta("INSERT INTO Caja (idCuenta, idUsuario, Fecha, Ingreso, Egreso) VALUES (1, 1, ?, ?, 0), "
                      "(555, 1, ?, ?, 0)",
                      {QDate(2024, 1, 2), "10.5000", QDate(2024, 1, 3), "3.0000"});
    almacen().ejecuta("CREATE VIEW CajaDelComercio AS SELECT Fecha, Cuenta, NombreUsuario, Ingreso FROM ConsultaCaja");
    EXPECT_EQ(actualizaEsquema(almacen()), pasos() - 1);
    EXPECT_EQ(versionEsquema(almacen()), ultimoPaso());
    EXPECT_EQ(Filas(almacen(), "SELECT Cuenta, NombreUsuario, Ingreso FROM CajaDelComercio ORDER BY Fecha"),
              QStringList({"Ventas Mostrador|supervisor|10.5", "NULL|supervisor|3"}));
}

TEST_P(Actualizacion, UnPasoQueFallaSeDeshaceEnteroYCorregidoSeAplicaUnaVezSinPerderFilas) {
    almacenConDatos();
    if (HasFatalFailure()) return;
    const int bueno = ultimoPaso() + 1;
    const int malo = bueno + 1;
    const PasoEsquema pasoBueno{bueno, "Observaciones del rubro",
                                [](Almacen& a) { agrega(a, "ALTER TABLE Rubros ADD COLUMN Nota {MEMO}"); }};
    const auto lista = conPasos({pasoBueno, {malo, "Paso que se corta a la mitad", [](Almacen& a) {
                                                 agrega(a, "ALTER TABLE Articulos ADD COLUMN CodigoBarras {TEXTO(20)}");
                                                 a.ejecuta("UPDATE Articulos SET CodigoBarras = '1', PrecioVenta = 0");
                                                 a.ejecuta("DELETE FROM Caja");
                                                 a.ejecuta("UPDATE TablaQueNoExiste SET x = 1");
                                             }}});
    EXPECT_THROW(actualizaEsquema(almacen(), lista), ErrorAlmacen);
    // El paso bueno quedó; del malo no queda nada.
    EXPECT_EQ(versionEsquema(almacen()), bueno);
    EXPECT_TRUE(almacen().existeColumna("Rubros", "Nota"));
    EXPECT_FALSE(almacen().existeColumna("Articulos", "CodigoBarras"));
    EXPECT_EQ(Filas(almacen(), "SELECT count(*) FROM Caja UNION ALL SELECT count(*) FROM Articulos WHERE PrecioVenta = 0"),
              QStringList({"1", "0"}));
    EXPECT_EQ(almacen().profundidadTransaccion(), 0);

    // Corregido, agrega su columna y su índice una sola vez, y las filas y las vistas siguen ahí.
    const PasoEsquema corregido{malo, "Código de barras del artículo", [](Almacen& a) {
                                    agrega(a, "ALTER TABLE Articulos ADD COLUMN CodigoBarras {TEXTO(20)}");
                                    a.ejecuta("CREATE INDEX Articulos_CodigoBarras ON Articulos (CodigoBarras)");
                                }};
    const auto corregidos = conPasos({pasoBueno, corregido});
    EXPECT_EQ(actualizaEsquema(almacen(), corregidos), 1);
    EXPECT_EQ(actualizaEsquema(almacen(), corregidos), 0);
    EXPECT_EQ(versionEsquema(almacen()), malo);
    almacen().ejecuta("UPDATE Articulos SET CodigoBarras = ? WHERE Codigo = '010007'", {"7790001000017"});
    EXPECT_EQ(Filas(almacen(), "SELECT Codigo, Descripcion, PrecioVenta FROM Articulos WHERE CodigoBarras = ?",
                    {"7790001000017"}),
              QStringList({"010007|Artículo '7'|7.25"}));
    EXPECT_EQ(Filas(almacen(), "SELECT count(*) FROM ConsultaArticulos UNION ALL SELECT count(*) FROM Caja"),
              QStringList({"25", "1"}));
    EXPECT_THROW(almacen().ejecuta("CREATE INDEX Articulos_CodigoBarras ON Articulos (CodigoBarras)"), ErrorAlmacen);
}

// Dos terminales abren a la vez un almacén nuevo: los pasos se aplican una vez en total, y al día
// la actualización sólo lee.
TEST_P(Actualizacion, DosTerminalesActualizanALaVezUnAlmacenNuevoYLuegoSoloSeLee) {
    EXPECT_EQ(versionEsquema(almacen()), 0);
    std::atomic<int> aplicados{0};
    const auto terminal = [&](Almacen& a) { aplicados += actualizaEsquema(a); };
    EXPECT_EQ(enTerminales({terminal, terminal}), QStringList());
    EXPECT_EQ(aplicados.load(), pasos());
    EXPECT_EQ(versionEsquema(almacen()), ultimoPaso());
    EXPECT_EQ(Filas(almacen(), "SELECT count(*), count(DISTINCT Paso) FROM PasosEsquema UNION ALL SELECT count(*), 0 FROM "
                               "TiposMovimientoStock UNION ALL SELECT count(*), 0 FROM Vendedores UNION ALL "
                               "SELECT count(*), 0 FROM Usuarios"),
              QStringList({QStringLiteral("%1|%1").arg(pasos()), "5|0", "1|0", "1|0"}));
    // Con el almacén en sólo lectura la actualización no falla ni cambia el esquema.
    const int huella = objetosDelEsquema();
    soloLectura(true);
    EXPECT_EQ(actualizaEsquema(almacen()), 0);
    soloLectura(false);
    EXPECT_EQ(objetosDelEsquema(), huella);
}

// Un almacén de antes de los pasos numerados: menos tablas y columnas, sin las claves propias de
// hoy, textos más angostos, una columna y un índice que el sistema no conoce y una vista vieja.
TEST_P(Actualizacion, AlmacenAnteriorALosPasosSeAdoptaSinPerderFilas) {
    Almacen& a = almacen();
    for (const char* sql : {
             "CREATE TABLE Articulos (idArticulo {CONTADOR}, Codigo {TEXTO(50)}, Descripcion {TEXTO(100)}, "
             "PrecioVenta {DINERO}, Color {TEXTO(20)})",
             "CREATE TABLE Compras (idCompra {CONTADOR}, Fecha {FECHA}, Total {DINERO}, Referencia {TEXTO(50)})",
             "CREATE TABLE Caja (idCaja {CONTADOR}, Detalles {TEXTO(100)}, Ingreso {DINERO})",
             "CREATE TABLE TmpFac (idTmpFac {CONTADOR}, Descripcion {TEXTO(100)})",
             "CREATE TABLE DetalleComprobantes (idComprobante {LARGO}, idArticulo {LARGO}, Cantidad {DOBLE})",
             "CREATE INDEX DetalleComprobantes_Anterior ON DetalleComprobantes (idArticulo)",
             "CREATE TABLE Cuentas (idCuenta {CONTADOR}, Cuenta {TEXTO(100)})",
             "CREATE TABLE Vendedores (idVendedor {CONTADOR}, Nombre {TEXTO(100)}, \"e-mail\" {TEXTO(50)})",
             "CREATE VIEW ConsultaArticulos AS SELECT idArticulo, Codigo FROM Articulos"})
        agrega(a, sql);
    const QString referencia = QStringLiteral("Remito 0001-00001234 de Distribuidora Ñandú").leftJustified(50, u'·');
    const QString enies(100, u'ñ');
    a.ejecuta("INSERT INTO Articulos VALUES (3, '010003', ?, 1500.25, 'verde'), (9, '010009', 'Sal', 10.5, NULL)",
              {"Yerba O'Higgins 1 kg"});
    a.ejecuta("INSERT INTO Compras VALUES (4, ?, 300, ?)", {QDate(2024, 1, 5), referencia});
    a.ejecuta("INSERT INTO Caja VALUES (1, ?, 10.5)", {enies});
    a.ejecuta("INSERT INTO DetalleComprobantes VALUES (1, 3, 2), (1, 9, 1)");
    a.ejecuta("INSERT INTO Cuentas VALUES (1, 'Ventas Mostrador'), (2, 'Banco')");
    a.ejecuta("INSERT INTO Vendedores VALUES (1, 'Consumidor Final', NULL), (7, 'Ana', 'ana@correo.ar')");

    EXPECT_EQ(actualizaEsquema(a), pasos());
    EXPECT_EQ(actualizaEsquema(a), 0);

    // Cada fila entera; las columnas nuevas con su valor de partida, las claves nuevas en el orden
    // de las filas, y de las filas de partida sólo las que el programa busca por nombre.
    const std::pair<const char*, QStringList> casos[] = {
        {"SELECT idArticulo, Codigo, Descripcion, PrecioVenta, Color, PrecioFinal, esMateriaPrima, IdProveedor "
         "FROM Articulos ORDER BY 1",
         {"3|010003|Yerba O'Higgins 1 kg|1500.25|verde|0|0|NULL", "9|010009|Sal|10.5|NULL|0|0|NULL"}},
        {"SELECT idCompra, Fecha, Total, Referencia, MontoDescuento FROM Compras",
         {"4|2024-01-05|300|" + referencia + "|0"}},
        {"SELECT idCaja, Detalles, Ingreso, Egreso, idUsuario FROM Caja", {"1|" + enies + "|10.5|0|NULL"}},
        {"SELECT idDetalle, idComprobante, idArticulo, Cantidad, SubTotal FROM DetalleComprobantes ORDER BY 1",
         {"1|1|3|2|0", "2|1|9|1|0"}},
        {"SELECT idCuenta, Cuenta FROM Cuentas ORDER BY 1", {"1|Ventas Mostrador", "2|Banco", "3|Cobranza Clientes"}},
        {"SELECT idVendedor, Nombre, \"e-mail\", PuntosVIP FROM Vendedores ORDER BY 1",
         {"1|Consumidor Final|NULL|0", "7|Ana|ana@correo.ar|0"}},
        {"SELECT Codigo, PrecioFinal, Proveedor FROM ConsultaArticulos ORDER BY 1", {"010003|0|NULL", "010009|0|NULL"}},
    };
    for (const auto& [sql, esperadas] : casos) EXPECT_EQ(Filas(a, QString::fromUtf8(sql)), esperadas) << sql;

    // Los textos angostos se ensancharon (las descripciones, también debajo de las vistas), los
    // contadores siguen a las claves que había y el índice propio del comercio sigue ahí.
    a.ejecuta("UPDATE Compras SET Referencia = ?", {QString(254, u'é')});
    a.ejecuta("UPDATE Articulos SET Descripcion = ?", {QString(10000, u'y')});
    a.ejecuta("INSERT INTO TmpFac (Descripcion) SELECT Descripcion FROM Articulos");
    EXPECT_EQ(Filas(a, "SELECT max(length(Descripcion)) FROM ConsultaArticulos UNION ALL SELECT max(length(Descripcion)) FROM TmpFac"),
              QStringList({"10000", "10000"}));
    EXPECT_EQ(a.inserta("INSERT INTO Caja (Detalles) VALUES (?)", {QString(254, u'é')}, "idCaja"), 2);
    EXPECT_EQ(a.inserta("INSERT INTO Vendedores (Nombre) VALUES ('Beto')", {}, "idVendedor"), 8);
    EXPECT_EQ(a.inserta("INSERT INTO DetalleComprobantes (idComprobante) VALUES (2)", {}, "idDetalle"), 3);
    EXPECT_EQ(cuenta(a.esPostgreSQL() ? "pg_indexes WHERE schemaname = current_schema() AND "
                                        "indexname = 'detallecomprobantes_anterior'"
                                      : "sqlite_master WHERE name = 'DetalleComprobantes_Anterior'"),
              1);
}

TEST_P(Actualizacion, LosDatosFiscalesDelNegocioSeAgreganSinTocarSuFila) {
    // Un almacén de antes, con la fila del negocio y sin sus datos fiscales.
    const std::vector<PasoEsquema> hastaDos(pasosDelSistema().begin(), pasosDelSistema().begin() + 2);
    ASSERT_EQ(actualizaEsquema(almacen(), hastaDos), 2);
    almacen().ejecuta("DROP TABLE Empresa");
    agrega(almacen(), "CREATE TABLE Empresa (idEmpresa {CONTADOR}, NombreEmpresa {TEXTO(100)}, Direccion {TEXTO(100)})");
    almacen().ejecuta("INSERT INTO Empresa (NombreEmpresa, Direccion) VALUES ('Don Tito', 'San Martín 1450')");
    EXPECT_EQ(actualizaEsquema(almacen()), pasos() - 2);
    almacen().ejecuta("UPDATE Empresa SET Cuit = '30-71234567-1', InicioActividades = ?", {QDate(2009, 3, 2)});
    EXPECT_EQ(Filas(almacen(), "SELECT NombreEmpresa, Direccion, Cuit, CondicionIva, InicioActividades FROM Empresa"),
              QStringList{"Don Tito|San Martín 1450|30-71234567-1|NULL|2009-03-02"});
}
