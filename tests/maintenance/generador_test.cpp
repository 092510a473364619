// Generador de almacenes grandes, en los dos motores: rubros pedidos, códigos con la regla de la
// ficha, códigos de proveedor con su prefijo y descripciones que varían.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"

#include "maintenance/generador.h"
#include "store/actualizacion.h"

using namespace orv;
using namespace orv::prueba;

namespace {

class Generador : public PorMotorAlDia {};

TEST_P(Generador, RubrosPedidosCodigosDeLaFichaYDeProveedor) {
    OpcionesGenerador o;
    o.articulos = 1001;
    o.rubros = 3;
    o.filasCaja = 0;
    EXPECT_EQ(generaAlmacenGrande(almacen(), o).articulos, 1001);

    // Artículos por rubro (el resto va a los primeros), y el primero y el último de cada uno: las
    // cifras del rubro y el número en el rubro, de 1 en adelante.
    QStringList esperadas;
    QString primero;
    for (const auto& [n, cuantos] : {std::pair{1, 334}, {2, 334}, {3, 333}}) {
        const QString cifras = QStringLiteral("%1").arg(
            almacen().valor("SELECT idRubro FROM Rubros WHERE Rubro = ?", {QStringLiteral("Rubro generado %1").arg(n)}).toLongLong(),
            2, 10, QLatin1Char('0'));
        if (primero.isEmpty()) primero = cifras + "0001";
        esperadas << QStringLiteral("Rubro generado %1|%2|").arg(n).arg(cuantos) + cifras + "0001|" + cifras +
                         QStringLiteral("%1").arg(cuantos, 4, 10, QLatin1Char('0'));
    }
    EXPECT_EQ(Filas(almacen(), "SELECT Rubros.Rubro, count(*), min(Articulos.Codigo), max(Articulos.Codigo) FROM Articulos "
                               "INNER JOIN Rubros ON Articulos.idRubro = Rubros.idRubro GROUP BY Rubros.Rubro ORDER BY 1"),
              esperadas);

    // Código de proveedor: prefijo de tres letras de su proveedor, guion y seis cifras, distinto del
    // código propio; la descripción combina producto, marca y presentación, y se repite poco.
    EXPECT_EQ(Filas(almacen(), "SELECT count(*) FROM Articulos WHERE CgoProveedor = Codigo OR length(CgoProveedor) <> 10 "
                               "OR substr(CgoProveedor, 4, 1) <> '-'"),
              QStringList{"0"});
    EXPECT_EQ(Filas(almacen(), "SELECT count(DISTINCT substr(CgoProveedor, 1, 3)), count(DISTINCT CgoProveedor), "
                               "CASE WHEN count(DISTINCT Descripcion) > 900 THEN 'variadas' ELSE 'repetidas' END FROM Articulos"),
              QStringList{"3|1001|variadas"});
    EXPECT_EQ(Filas(almacen(), "SELECT Descripcion, CgoProveedor FROM Articulos WHERE Codigo = ?", {primero}),
              QStringList{"Gaseosa La Serenísima 500 g|ARC-031676"});
}

// Clientes listados por el panel (con zona), todos con saldo distinto de cero, y el cliente grande
// con sus líneas (más las dos de todos), una cobranza de cada diez, la última en `hasta`.
TEST_P(Generador, ClientesConSaldoYUnaCuentaGrande) {
    OpcionesGenerador o;
    o.articulos = 0;
    o.filasCaja = 0;
    o.clientes = 300;
    o.lineasClienteGrande = 1000;
    o.hasta = QDate(2026, 11, 23);
    const ResumenGeneracion r = generaAlmacenGrande(almacen(), o);
    EXPECT_EQ(Filas(almacen(), "SELECT count(*), count(DISTINCT v.Nombre) FROM Vendedores v INNER JOIN Zonas z "
                               "ON z.idZona = v.idZona WHERE v.idVendedor >= ?", {r.idClienteGrande}),
              QStringList{"300|300"});
    EXPECT_EQ(Filas(almacen(), "SELECT count(*) FROM ConsultaSaldoClientes WHERE Saldo <> 0"), QStringList{"300"});
    EXPECT_EQ(Filas(almacen(), "SELECT count(*), sum(CASE WHEN Tipo = 'PAGO' THEN 1 ELSE 0 END), max(Fecha) "
                               "FROM Comisiones WHERE idVendedor = ?", {r.idClienteGrande}),
              QStringList{"1002|101|2026-11-23"});
}

// Comprobantes con dos líneas cada uno cuya suma es su total (con el signo de la nota de crédito, una
// de cada 50), los del cliente grande, y las fechas de 100 por día hasta `hasta`.
TEST_P(Generador, ComprobantesConSusLineasYLosDelClienteGrande) {
    OpcionesGenerador o;
    o.articulos = 30;
    o.filasCaja = 0;
    o.clientes = 5;
    o.comprobantes = 1000;
    o.comprobantesPorDia = 100;
    o.comprobantesClienteGrande = 10;
    o.hasta = QDate(2026, 11, 23);
    const ResumenGeneracion r = generaAlmacenGrande(almacen(), o);
    EXPECT_EQ(QList<qint64>({r.comprobantes, r.comprobantesClienteGrande}), (QList<qint64>{1000, 10}));
    EXPECT_EQ(Filas(almacen(), "SELECT count(*), sum(TipoStock), min(Fecha), max(Fecha), count(DISTINCT idVendedor), "
                               "sum(CASE WHEN idVendedor = ? THEN 1 ELSE 0 END) FROM Comprobantes", {r.idClienteGrande}),
              QStringList{"1000|20|2026-11-14|2026-11-23|5|10"});
    // Cada comprobante: dos líneas de artículos que existen, con su fecha, que suman su total.
    EXPECT_EQ(Filas(almacen(), "SELECT count(*) FROM Comprobantes c WHERE 2 <> (SELECT count(*) FROM DetalleComprobantes d "
                               "INNER JOIN Articulos a ON a.idArticulo = d.idArticulo WHERE d.idComprobante = c.idComprobante "
                               "AND d.Fecha = c.Fecha) OR ABS(c.Total) <> (SELECT SUM(SubTotal) FROM DetalleComprobantes d "
                               "WHERE d.idComprobante = c.idComprobante)"),
              QStringList{"0"});
}

ORV_AMBOS_MOTORES(Generador);

} // namespace
