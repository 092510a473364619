// Purga de los archivos de trabajo y fuentes del explorador de tablas.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"

#include "maintenance/datos_ejemplo.h"
#include "maintenance/purga.h"
#include "store/reloj.h"

#include <QDir>
#include <QFileInfo>

using namespace orv;
using namespace orv::prueba;

namespace {

// Las tablas que tocan la venta, las compras y el stock, con las que deben quedar intactas.
const char* const kTablas[] = {"CtaProve",   "DetCompras", "Caja",          "MovimientoStock",  "Comisiones",
                               "Comprobantes", "DetalleComprobantes", "Compras", "DetComisiones", "Vip",
                               "CorteCaja",  "TmpFac",     "Vendedores",    "Proveedores",      "Articulos",
                               "TiposDeComprobantes"};

// "tabla|filas" de cada tabla, más la suma de existencias y de puntos y los numeradores.
QStringList estado(Almacen& a) {
    QStringList e;
    for (const char* t : kTablas)
        e << QString::fromLatin1(t) + u'|' + a.valor(QStringLiteral("SELECT count(*) FROM ") + QString::fromLatin1(t)).toString();
    e << Filas(a, QStringLiteral("SELECT sum(StockActual) FROM Articulos"));
    e << Filas(a, QStringLiteral("SELECT sum(PuntosVIP) FROM Vendedores"));
    e << Filas(a, QStringLiteral("SELECT Tipo, Correlativo FROM TiposDeComprobantes ORDER BY Tipo"));
    return e;
}

class Purga : public PorMotorAlDia {
protected:
    void prepara() override {
        cargaDatosEjemplo(almacen(), reloj_);
        // Un día cerrado, un borrador de venta y una compra con su cuenta, que los datos de ejemplo no traen.
        almacen().ejecuta(QStringLiteral("INSERT INTO CorteCaja (Fecha) VALUES (?)"), {QDate(2024, 6, 13)});
        almacen().ejecuta(QStringLiteral("INSERT INTO TmpFac (PCRed, idArticulo, Cantidad) VALUES (7, 1, 2)"));
        almacen().ejecuta(QStringLiteral("INSERT INTO CtaProve (idProveedor, Fecha, Debe) VALUES (1, ?, 100)"),
                          {QDate(2024, 6, 13)});
    }
    RelojFijo reloj_{QDateTime(QDate(2024, 6, 14), QTime(10, 30))};
};
ORV_AMBOS_MOTORES(Purga);

TEST_P(Purga, VaciaLasTablasDeTrabajoYDejaLasDemasComoEstaban) {
    const QStringList antes = estado(almacen());
    const auto borradas = PurgaDatos(almacen());
    QStringList esperado = antes;
    for (int i = 0; i < antes.size(); ++i) {
        const QString tabla = antes[i].section(u'|', 0, 0);
        if (TablasQuePurga().contains(tabla)) esperado[i] = tabla + QStringLiteral("|0");
    }
    EXPECT_EQ(estado(almacen()), esperado);
    // Cada tabla vaciada dice cuántas filas tenía.
    QStringList dichas, teniamos;
    for (const auto& [tabla, filas] : borradas) dichas << tabla + u'|' + QString::number(filas);
    for (const QString& t : TablasQuePurga())
        for (const QString& fila : antes)
            if (fila.section(u'|', 0, 0) == t) teniamos << fila;
    EXPECT_EQ(dichas, teniamos);
}

// Una falla en la última tabla (que no se puede vaciar) no deja nada borrado en las anteriores.
TEST_P(Purga, UnaFallaAMitadNoBorraNada) {
    if (!almacen().esPostgreSQL()) almacen().ejecuta(QStringLiteral("PRAGMA legacy_alter_table=ON"));
    almacen().ejecuta(QStringLiteral("ALTER TABLE Compras RENAME TO ComprasAparte"));
    const auto anteriores = [&] {
        QStringList e;
        for (const QString& t : TablasQuePurga().mid(0, 7))
            e << t + u'|' + almacen().valor(QStringLiteral("SELECT count(*) FROM ") + t).toString();
        return e;
    };
    const QStringList antes = anteriores();
    EXPECT_EQ(AvisoDe([&] { PurgaDatos(almacen()); }), QStringLiteral("ErrorAlmacen"));
    EXPECT_EQ(anteriores(), antes);
    EXPECT_FALSE(antes.contains(QStringLiteral("Comprobantes|0")));
}

// El respaldo de antes de purgar tiene todo lo que la purga borró.
TEST_P(Purga, AntesDePurgarRespalda) {
    const QString datos = base().carpeta() + QStringLiteral("/datos");
    QDir().mkpath(datos);
    Configuracion conf(datos, base().carpeta() + QStringLiteral("/usuario.ini"));
    if (almacen().esPostgreSQL()) conf.graba(clave::configuracion, QStringLiteral("BaseDatos"), base().destino());
    const qint64 comprobantes = almacen().valor(QStringLiteral("SELECT count(*) FROM Comprobantes")).toLongLong();
    const QDateTime momento(QDate(2024, 6, 14), QTime(19, 0, 0));
    const ResultadoPurga r = RespaldaYPurga(almacen(), conf, momento);
    const QString ext = almacen().esPostgreSQL() ? QStringLiteral(".dump") : QStringLiteral(".db");
    EXPECT_EQ(r.respaldo.almacen, datos + QStringLiteral("/Respaldos/ORVBACK_20240614190000") + ext);
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT count(*) FROM Comprobantes")).toLongLong(), 0);
    if (almacen().esPostgreSQL()) return; // el volcado del servidor se lee en las pruebas de respaldo
    auto copia = Almacen::abreSQLite(r.respaldo.almacen);
    EXPECT_EQ(copia->valor(QStringLiteral("SELECT count(*) FROM Comprobantes")).toLongLong(), comprobantes);
    EXPECT_GT(comprobantes, 0);
}

// Cada archivo del explorador se lee en los dos motores.
TEST_P(Purga, ElExploradorLeeCadaArchivo) {
    QStringList leidas;
    for (const TablaExplorable& t : TablasExplorables())
        leidas << t.titulo + u'|' + QString::number(Filas(almacen(), t.sql).isEmpty() ? 0 : 1);
    EXPECT_EQ(leidas, (QStringList{QStringLiteral("Artículos por rubro|1"), QStringLiteral("Clientes|1"),
                                   QStringLiteral("Proveedores|1"), QStringLiteral("Comprobantes|1"),
                                   QStringLiteral("Compras|1"), QStringLiteral("Caja|1"), QStringLiteral("Detalle de ventas|1")}));
}

} // namespace
