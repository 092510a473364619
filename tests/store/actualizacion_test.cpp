// Actualización del esquema por pasos: una sola vez, en orden, entera o nada, sin perder filas.

#include "apoyo/base_prueba.h"
#include "store/actualizacion.h"
#include "store/esquema.h"

#include <QDate>
#include <QSqlQuery>
#include <QSqlRecord>
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

TEST_P(Actualizacion, LaConsultaDeCajaSeRehaceSinRomperUnaVistaDelComercio) {
    // Un almacén que quedó en el paso 1, con movimientos y una vista propia sobre la consulta de caja.
    ASSERT_EQ(actualizaEsquema(almacen(), std::vector<PasoEsquema>{pasosDelSistema().front()}), 1);
    Almacen& a = almacen();
    a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, idUsuario, Fecha, Ingreso, Egreso) VALUES (1, 1, ?, ?, 0), "
                             "(555, 1, ?, ?, 0)"),
              {QDate(2024, 1, 2), QStringLiteral("10.5000"), QDate(2024, 1, 3), QStringLiteral("3.0000")});
    a.ejecuta(QStringLiteral("CREATE VIEW CajaDelComercio AS SELECT Fecha, Cuenta, NombreUsuario, Ingreso "
                             "FROM ConsultaCaja"));

    EXPECT_EQ(actualizaEsquema(a), static_cast<int>(pasosDelSistema().size()) - 1);
    EXPECT_EQ(versionEsquema(a), ultimoPaso());
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Cuenta, NombreUsuario FROM CajaDelComercio ORDER BY Fecha"));
    ASSERT_TRUE(q.next());
    EXPECT_EQ(q.value(0).toString(), QStringLiteral("Ventas Mostrador"));
    EXPECT_EQ(q.value(1).toString(), QStringLiteral("supervisor"));
    ASSERT_TRUE(q.next());
    EXPECT_TRUE(q.value(0).isNull()) << "la cuenta 555 no existe";
    EXPECT_FALSE(q.next());
    EXPECT_EQ(cuenta(QStringLiteral("ConsultaCaja")), 2);
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

namespace {

// Un almacén de antes de los pasos numerados: menos tablas y columnas, sin las claves propias de
// hoy, textos más angostos, una columna y un índice que el sistema no conoce y una vista vieja.
const char* const kAlmacenAnterior[] = {
    "CREATE TABLE Articulos (idArticulo {CONTADOR}, Codigo {TEXTO(50)}, Descripcion {TEXTO(100)}, "
    "PrecioVenta {DINERO}, Color {TEXTO(20)})",
    "CREATE TABLE Compras (idCompra {CONTADOR}, Fecha {FECHA}, Total {DINERO}, Referencia {TEXTO(50)})",
    "CREATE TABLE Caja (idCaja {CONTADOR}, Detalles {TEXTO(100)}, Ingreso {DINERO})",
    "CREATE TABLE DetalleComprobantes (idComprobante {LARGO}, idArticulo {LARGO}, Cantidad {DOBLE})",
    "CREATE INDEX DetalleComprobantes_Anterior ON DetalleComprobantes (idArticulo)",
    "CREATE TABLE Cuentas (idCuenta {CONTADOR}, Cuenta {TEXTO(100)})",
    "CREATE TABLE Vendedores (idVendedor {CONTADOR}, Nombre {TEXTO(100)}, \"e-mail\" {TEXTO(50)})",
    "CREATE VIEW ConsultaArticulos AS SELECT idArticulo, Codigo FROM Articulos",
};

// Filas como textos comparables en los dos motores: números con cuatro decimales, nulos "NULL".
QList<QStringList> comoTextos(const QList<QVariantList>& filas) {
    QList<QStringList> r;
    for (const QVariantList& f : filas) {
        QStringList t;
        for (const QVariant& v : f) {
            bool esNumero = false;
            const double d = v.toString().toDouble(&esNumero);
            t << (v.isNull() ? QStringLiteral("NULL") : esNumero ? QString::number(d, 'f', 4) : v.toString());
        }
        r << t;
    }
    return r;
}

QList<QVariantList> filas(Almacen& a, const QString& sql) {
    QList<QVariantList> r;
    QSqlQuery q = a.consulta(sql);
    while (q.next()) {
        r << QVariantList{};
        for (int i = 0; i < q.record().count(); ++i) r.last() << q.value(i);
    }
    return r;
}

} // namespace

TEST_P(Actualizacion, AlmacenAnteriorALosPasosSeAdoptaSinPerderFilas) {
    Almacen& a = almacen();
    for (const char* sql : kAlmacenAnterior) a.ejecuta(ddl(a.dialecto(), QString::fromUtf8(sql)));
    const QString referencia = QStringLiteral("Remito 0001-00001234 de Distribuidora Ñandú").leftJustified(50, u'·');
    const QString yerba = QStringLiteral("Yerba O'Higgins 1 kg");
    a.ejecuta(QStringLiteral("INSERT INTO Articulos VALUES (3, '010003', ?, 1500.25, 'verde'), (9, '010009', 'Sal', 10.5, NULL)"),
              {yerba});
    a.ejecuta(QStringLiteral("INSERT INTO Compras VALUES (4, ?, 300, ?)"), {QDate(2024, 1, 5), referencia});
    a.ejecuta(QStringLiteral("INSERT INTO Caja VALUES (1, ?, 10.5)"), {QString(100, u'ñ')});
    a.ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes VALUES (1, 3, 2), (1, 9, 1)"));
    a.ejecuta(QStringLiteral("INSERT INTO Cuentas VALUES (1, 'Ventas Mostrador'), (2, 'Banco')"));
    a.ejecuta(QStringLiteral("INSERT INTO Vendedores VALUES (1, 'Consumidor Final', NULL), (7, 'Ana', 'ana@correo.ar')"));

    EXPECT_EQ(actualizaEsquema(a), static_cast<int>(pasosDelSistema().size()));
    EXPECT_EQ(actualizaEsquema(a), 0);

    // Cada fila entera; las columnas nuevas con su valor de partida, las claves nuevas en el orden
    // de las filas, y de las filas de partida sólo las que el programa busca por nombre.
    const struct {
        const char* sql;
        QList<QVariantList> filas;
    } casos[] = {
        {"SELECT idArticulo, Codigo, Descripcion, PrecioVenta, Color, PrecioFinal, esMateriaPrima, IdProveedor "
         "FROM Articulos ORDER BY 1",
         {{3, "010003", yerba, 1500.25, "verde", 0, 0, {}}, {9, "010009", "Sal", 10.5, {}, 0, 0, {}}}},
        {"SELECT idCompra, Fecha, Total, Referencia, MontoDescuento FROM Compras", {{4, "2024-01-05", 300, referencia, 0}}},
        {"SELECT idCaja, Detalles, Ingreso, Egreso, idUsuario FROM Caja", {{1, QString(100, u'ñ'), 10.5, 0, {}}}},
        {"SELECT idDetalle, idComprobante, idArticulo, Cantidad, SubTotal FROM DetalleComprobantes ORDER BY 1",
         {{1, 1, 3, 2, 0}, {2, 1, 9, 1, 0}}},
        {"SELECT idCuenta, Cuenta FROM Cuentas ORDER BY 1", {{1, "Ventas Mostrador"}, {2, "Banco"}, {3, "Cobranza Clientes"}}},
        {"SELECT idVendedor, Nombre, \"e-mail\", PuntosVIP FROM Vendedores ORDER BY 1",
         {{1, "Consumidor Final", {}, 0}, {7, "Ana", "ana@correo.ar", 0}}},
        {"SELECT Codigo, PrecioFinal, Proveedor FROM ConsultaArticulos ORDER BY 1", {{"010003", 0, {}}, {"010009", 0, {}}}},
    };
    for (const auto& k : casos) EXPECT_EQ(comoTextos(filas(a, QString::fromUtf8(k.sql))), comoTextos(k.filas)) << k.sql;

    // Los textos angostos se ensancharon, los contadores siguen a las claves que había y el índice
    // propio del comercio sigue ahí.
    a.ejecuta(QStringLiteral("UPDATE Compras SET Referencia = ?"), {QString(254, u'é')});
    EXPECT_EQ(a.inserta(QStringLiteral("INSERT INTO Caja (Detalles) VALUES (?)"), {QString(254, u'é')}, QStringLiteral("idCaja")), 2);
    EXPECT_EQ(a.inserta(QStringLiteral("INSERT INTO Vendedores (Nombre) VALUES ('Beto')"), {}, QStringLiteral("idVendedor")), 8);
    EXPECT_EQ(a.inserta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante) VALUES (2)"), {},
                        QStringLiteral("idDetalle")),
              3);
    EXPECT_EQ(a.valor(a.esPostgreSQL() ? QStringLiteral("SELECT count(*) FROM pg_indexes WHERE schemaname = current_schema() "
                                                        "AND indexname = 'detallecomprobantes_anterior'")
                                       : QStringLiteral("SELECT count(*) FROM sqlite_master WHERE name = 'DetalleComprobantes_Anterior'"))
                  .toInt(),
              1);
}
