// Esquema de un almacén nuevo: tablas, índices, vistas y filas de partida.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "store/actualizacion.h"
#include "store/esquema.h"

#include <QDate>

using namespace orv;
using namespace orv::prueba;

namespace {

class EsquemaNuevo : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (IsSkipped()) return;
        ASSERT_GE(actualizaEsquema(almacen()), 1);
    }
};
ORV_AMBOS_MOTORES(EsquemaNuevo);

struct Caso {
    QString sql;
    QStringList esperadas;
    QVariantList parametros = {};
};

QStringList columnas(Almacen& a, const QString& relacion) {
    const QSqlRecord r = a.consulta(QStringLiteral("SELECT * FROM ") + relacion + QStringLiteral(" WHERE 1=0")).record();
    QStringList nombres;
    for (int i = 0; i < r.count(); ++i) nombres << r.fieldName(i).toLower();
    return nombres;
}

} // namespace

// La grilla de caja y la de reimpresión toman columnas por número.
TEST_P(EsquemaNuevo, LasVistasQueSeLeenPorNumeroDeColumnaConservanSuOrden) {
    EXPECT_EQ(columnas(almacen(), QStringLiteral("ConsultaCaja")).mid(0, 9),
              QString("fecha cuenta factura detalles ingreso egreso formapago idcaja idcomprobante").split(u' '));
    EXPECT_EQ(columnas(almacen(), QStringLiteral("ConsultaTiposComprobantesPorFecha")).value(4), "idcomprobante");
}

// Las filas de partida que el programa busca por su clave o su nombre (los tipos de movimiento los
// buscan el registro y los ajustes de stock, y sus pruebas los ven).
TEST_P(EsquemaNuevo, FilasDePartidaQueElProgramaBusca) {
    QString permisos = QStringLiteral("UsuarioSuper");
    for (const QString& p : columnasPermiso()) permisos += QStringLiteral(" + ") + p;
    const Caso casos[] = {
        {"SELECT idCuenta, Cuenta FROM Cuentas ORDER BY 1",
         {"1|Ventas Mostrador", "2|Cobranza Clientes", "3|Gastos Generales", "4|Pago a Proveedores", "5|Retiros"}},
        {"SELECT FormaPago, EsACuenta, EsTarjetaCredito FROM FormasDePago ORDER BY 1",
         {"CHEQ|0|0", "CTA CTE|1|0", "EFVO|0|0", "TARJETA|0|1"}},
        // El cliente 1 es el consumidor final y su zona existe (el panel de clientes la une con INNER JOIN).
        {"SELECT v.idVendedor, v.Nombre, t.TipoIva, z.Zona FROM (Vendedores v INNER JOIN Zonas z ON v.idZona = z.idZona) "
         "INNER JOIN TipoDeIva t ON v.idTipoIva = t.idTipoIva",
         {"1|Consumidor Final|Consumidor Final|General"}},
        {"SELECT Tipo, Letra, PuntoDeVenta, Correlativo, NombrePlantilla FROM TiposDeComprobantes",
         {"FACTURA B|B|0001|0|factura.rpt"}},
        // El nivel supervisor tiene todo y su usuario no tiene contraseña todavía.
        {"SELECT idNivel, Nombre, " + permisos + " FROM Niveles", {"1|Supervisor|40"}},
        {"SELECT idUsuario, NombreUsuario, NombreCompleto, idNivel, Contrasenia FROM Usuarios",
         {"1|supervisor|Supervisor|1|NULL"}},
    };
    for (const Caso& c : casos) EXPECT_EQ(Filas(almacen(), c.sql), c.esperadas) << c.sql.toStdString();
}

TEST_P(EsquemaNuevo, ClavesNuevasTrasLasDePartidaYUnDiaSeCierraUnaVez) {
    Almacen& a = almacen();
    EXPECT_EQ(a.inserta("INSERT INTO Cuentas (Cuenta) VALUES (?)", {"Bancos"}, "idCuenta"), 6);
    EXPECT_EQ(a.inserta("INSERT INTO Vendedores (Nombre, idZona) VALUES (?, 1)", {"Ana"}, "idVendedor"), 2);
    EXPECT_EQ(a.inserta("INSERT INTO TiposMovimientoStock (TipoMovimientoStock) VALUES ('Rotura')", {}, "idTipoMovimiento"),
              6);

    const QDate dia(2024, 3, 15);
    a.ejecuta(QStringLiteral("INSERT INTO CorteCaja (FECHA) VALUES (?)"), {dia});
    EXPECT_THROW(a.ejecuta(QStringLiteral("INSERT INTO CorteCaja (FECHA) VALUES (?)"), {dia}), ErrorAlmacen);
    a.ejecuta(QStringLiteral("INSERT INTO CorteCaja (FECHA) VALUES (?)"), {dia.addDays(1)});
    EXPECT_EQ(a.valor(QStringLiteral("SELECT FECHA FROM CorteCaja WHERE FECHA = ?"), {dia}).toDate(), dia);
}

TEST_P(EsquemaNuevo, TextosLargosYNoLatinosVuelvenTalCualSeGuardaron) {
    Almacen& a = almacen();
    const QString largo = QString(9991, QLatin1Char('x')) + QStringLiteral("ñÑáé€'\"\\%");
    const QString otros = QStringLiteral("Ελληνικά · 日本語 · Русский · עברית · 😀");
    a.ejecuta("INSERT INTO Comprobantes (Observaciones, Cupon) VALUES (?, ?)", {largo, otros.left(30)});
    EXPECT_EQ(Filas(a, "SELECT Observaciones, Cupon FROM Comprobantes"), QStringList({largo + u'|' + otros.left(30)}));
    // Texto no latino buscado con LIKE por una parte; la columna con guion va entre comillas dobles.
    a.ejecuta("INSERT INTO Articulos (Codigo, Descripcion) VALUES ('990001', ?)", {otros});
    EXPECT_EQ(a.valor("SELECT Descripcion FROM Articulos WHERE Descripcion LIKE ?", {"%日本語%"}).toString(), otros);
    a.ejecuta("UPDATE Vendedores SET \"e-mail\" = ? WHERE idVendedor = 1", {"o'neil@ejemplo.com.ar"});
    EXPECT_EQ(a.valor("SELECT email FROM _ConsultaClientes WHERE idVendedor = 1").toString(), "o'neil@ejemplo.com.ar");
}

// --- Vistas sobre filas armadas para ellas ---------------------------------------------------

// Rubro 1; artículos 1 (yerba) y 2 (azúcar); cliente 2; factura 1 y presupuesto 2 (tipo 2, no
// comercial). La cuenta del cliente: dos débitos y un pago; la del proveedor, debe y haber. La caja:
// la venta, y movimientos a los que les falta su cuenta (borrada o que nunca existió), su
// comprobante o su usuario. Producción del azúcar con yerba y azúcar; comisiones del vendedor, con
// una liquidación. Todo el 20/05/2024.
const char* const kConDatos = R"(
INSERT INTO Rubros (Rubro) VALUES ('Almacén');
INSERT INTO Articulos (idRubro, Codigo, Descripcion, PrecioVenta, ImprimeCodigoBarra, StockActual, StockMinimo) VALUES
  (1, '010001', 'Yerba 1 kg', 1234.56, 1, 5, 10), (1, '010002', 'Azúcar', 0, 0, 0, 0);
INSERT INTO Vendedores (Nombre, idZona, idTipoIva) VALUES ('Almacén O''Higgins', 1, 2);
INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, EsComercial) VALUES ('PRESUPUESTO', 'X', '0001', 0);
INSERT INTO Comprobantes (Factura, idTipoComprobante, idVendedor, idTipoIva, Fecha, Nombre, FormaPago, HizoCaja, HizoStock,
  EsComercial, TipoStock, SubTotal, Total) VALUES
  ('B0001-00000001', 1, 2, 2, '2024-05-20', 'Almacén O''Higgins', 'CTA CTE', 1, 1, 1, 0, 2469.12, 2469.12),
  ('X0001-00000001', 2, 2, NULL, '2024-05-20', 'Almacén O''Higgins', NULL, 0, 0, 0, 0, 0, 99.99);
INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, Unitario, SubTotal, Fecha, EsComercial, Descripcion) VALUES
  (1, 1, 2, 1234.56, 2469.12, '2024-05-20', 1, NULL), (2, 2, 7, 1, 7, '2024-05-20', 0, 'Azúcar a granel');
INSERT INTO Comisiones (idVendedor, idComprobante, Fecha, Tipo, Comision, Liquidacion) VALUES
  (2, 1, '2024-05-20', 'FACTURA', 2469.12, 0), (2, 1, '2024-05-20', 'FACTURA', 0.1, 0), (2, 0, '2024-05-20', 'PAGO', 0, 1000.03);
INSERT INTO Proveedores (Nombre, RazonSocial) VALUES ('Molinos', 'Molinos S.A.');
INSERT INTO CtaProve (idProveedor, idCompra, Fecha, Debe, Haber) VALUES (1, 1, '2024-05-20', 5000.01, 0), (1, 0, '2024-05-20', 0, 4999.99);
INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) VALUES
  (1, 1, '2024-05-20', 'VENTA : B0001-00000001', 2469.12, 0, 'EFVO', 1);
INSERT INTO Cuentas (Cuenta) VALUES ('Bancos');
INSERT INTO Caja (idCuenta, idComprobante, idUsuario, Fecha, Ingreso, Egreso) VALUES (6, NULL, 1, '2024-05-20', 1, 0),
  (1, 0, 77, '2024-05-20', 1, 0), (1, 2, NULL, '2024-05-20', 1, 0), (999, 1, 1, '2024-05-20', 1, 0);
DELETE FROM Cuentas WHERE idCuenta = 6;
INSERT INTO MovimientoStock (idArticulo, Fecha, idTipoMovimiento, Comprobante, idComprobante, Ingreso, Egreso) VALUES
  (1, '2024-05-20', 1, 'FA 0001-1', 5, 3, 0), (2, '2024-05-20', 1, 'FA 0001-1', 5, 4, 0);
INSERT INTO FormulaProduccion (idArticuloFinal, idArticuloMP, Cantidad, CostoTotal) VALUES (2, 1, 2, 10.1), (2, 2, 1.5, 0.2);
INSERT INTO RegistroProduccion (Fecha, idArticuloProducido, CantidadProducida, CostoManoObra, CostoTotal) VALUES
  ('2024-05-20', 2, 1, 5, 15.3);
INSERT INTO DetRegistroProduccion (idRegistroProduccion, idArticuloMP, Cantidad, CostoTotal) VALUES (1, 1, 2, 10.1);
INSERT INTO DetComisiones (Fecha, Detalle, idUsuario, idComprobante, Porcentaje, Importe) VALUES
  ('2024-05-20', 'VENTA', 1, 1, 5, 123.456), ('2024-05-20', 'LIQUIDACION', 1, 0, 0, -100)
)";

class VistasConDatos : public EsquemaNuevo {
protected:
    void SetUp() override {
        EsquemaNuevo::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        almacen().ejecutaGuion(QString::fromUtf8(kConDatos));
    }

    const QDate dia{2024, 5, 20};
};
ORV_AMBOS_MOTORES(VistasConDatos);

TEST_P(VistasConDatos, CadaVistaDaSusFilas) {
    const Caso casos[] = {
        // Una fila por línea; la descripción propia de la línea manda sobre la del artículo.
        {"SELECT Factura, Tipo, TipoIva, Nombre, Codigo, Descripcion, Cantidad, Unitario, SubTotal, Total, Fecha "
         "FROM ConsultaComprobantes ORDER BY idComprobante",
         {"B0001-00000001|FACTURA B|Responsable Inscripto|Almacén O'Higgins|010001|Yerba 1 kg|2|1234.56|2469.12|2469.12|"
          "2024-05-20",
          "X0001-00000001|PRESUPUESTO|NULL|Almacén O'Higgins|010002|Azúcar a granel|7|1|7|99.99|2024-05-20"}},
        // Una fila por movimiento aunque falte su cuenta, su comprobante o su usuario.
        {"SELECT Cuenta, Factura, NombreUsuario, NombreCompleto, Ingreso, Egreso, idComprobante FROM ConsultaCaja "
         "WHERE Fecha = ? ORDER BY idCaja",
         {"Ventas Mostrador|B0001-00000001|supervisor|Supervisor|2469.12|0|1", "NULL|NULL|supervisor|Supervisor|1|0|NULL",
          "Ventas Mostrador|NULL|NULL|NULL|1|0|0", "Ventas Mostrador|X0001-00000001|NULL|NULL|1|0|2",
          "NULL|B0001-00000001|supervisor|Supervisor|1|0|1"},
         {dia}},
        {"SELECT count(*), count(Cuenta) FROM ConsultaCaja", {"5|3"}},
        // El resumen del cierre agrupa por cuenta sobre la vista.
        {"SELECT Cuenta, sum(Ingreso) FROM ConsultaCaja WHERE idUsuario = 1 AND Cuenta IS NOT NULL GROUP BY Cuenta",
         {"Ventas Mostrador|2469.12"}},
        // Saldos: 2469.12 + 0.10 - 1000.03 del cliente; 5000.01 - 4999.99 del proveedor.
        {"SELECT idVendedor, Nombre, Saldo FROM ConsultaSaldoClientes WHERE Saldo <> 0", {"2|Almacén O'Higgins|1469.19"}},
        {"SELECT Tipo, Factura, TipoComprobante, Comision, Liquidacion FROM ConsultaCtaCte WHERE idVendedor = 2 "
         "ORDER BY idCuentaVendedor",
         {"FACTURA|B0001-00000001|FACTURA B|2469.12|0", "FACTURA|B0001-00000001|FACTURA B|0.1|0", "PAGO|NULL|NULL|0|1000.03"}},
        {"SELECT idProveedor, RazonSocial, Saldo FROM ConsultaSaldoProveedores", {"1|Molinos S.A.|0.02"}},
        // Todos los comprobantes, con sus marcas (la pantalla de borrado los necesita).
        {"SELECT idComprobante, FECDETALLE, HizoCaja, HizoStock, TipoStock, EsComercial FROM ConsultaFacturas "
         "WHERE FECDETALLE = ? ORDER BY idComprobante",
         {"1|2024-05-20|1|1|0|1", "2|2024-05-20|0|0|0|0"},
         {dia}},
        {"SELECT Factura, Total FROM ConsultaComprobantesNoComerciales WHERE Fecha = ?", {"X0001-00000001|99.99"}, {dia}},
        {"SELECT idComprobante, SubTotal FROM ConsultaDetalles WHERE FECDETALLE >= ? AND FECDETALLE <= ? AND Codigo = ?",
         {"1|2469.12"},
         {dia, dia, "010001"}},
        // Rankings: sólo lo vendido en comprobantes comerciales.
        {"SELECT Codigo, SumaDeCantidad FROM RankingArticulo", {"010001|2"}},
        {"SELECT Nombre, SumaDeTotal FROM RankingComisiones", {"Almacén O'Higgins|2469.12"}},
        {"SELECT count(*) FROM consultaventasclientes WHERE fecha >= ? AND nombre = ?", {"2"}, {dia, "Almacén O'Higgins"}},
        {"SELECT Factura, NombrePlantilla FROM ConsultaTiposComprobantesPorFecha ORDER BY idComprobante",
         {"B0001-00000001|factura.rpt", "X0001-00000001|NULL"}},
        {"SELECT count(*) FROM ConsultaHeaderComprobantes WHERE Fecha = ? AND idVendedor = 2", {"2"}, {dia}},
        // Faltantes de un rubro; etiquetas del día (compras de artículos marcados); movimientos.
        {"SELECT Codigo, Rubro FROM ConsultaArticulos WHERE StockActual <= StockMinimo AND idRubro = 1 ORDER BY Codigo",
         {"010001|Almacén", "010002|Almacén"}},
        {"SELECT Codigo, Ingreso FROM ConsultaMovStock WHERE Fecha = ? AND idTipoMovimiento = 1 AND Ingreso > 0 AND "
         "ImprimeCodigoBarra <> 0",
         {"010001|3"},
         {dia}},
        {"SELECT Codigo, TipoMovimientoStock, Ingreso FROM ConsultaMovimientosStock ORDER BY Codigo",
         {"010001|Compra|3", "010002|Compra|4"}},
        // Producción: una fila por fórmula, la fórmula completa y el registro con sus materias primas.
        {"SELECT Codigo, SumaDeCostoTotal, SumaDeCantidad FROM ConsultaFormulaProduccion", {"010002|10.3|3.5"}},
        {"SELECT Codigo, Codigo_1, Descripcion_1 FROM ConsultaFormulaProduccionCompleta ORDER BY idItemFormula",
         {"010002|010001|Yerba 1 kg", "010002|010002|Azúcar"}},
        {"SELECT CostoTotal, CostoTotal_1, Codigo_1 FROM ConsultaRegistroProduccion", {"15.3|10.1|010001"}},
        // Comisiones de vendedores: las liquidaciones (sin comprobante) también aparecen.
        {"SELECT Factura, NombreCompleto, Importe FROM ConsultaComisionesVenta WHERE idUsuario = 1 AND Fecha = ? "
         "ORDER BY idDetComisiones",
         {"B0001-00000001|Supervisor|123.456", "NULL|Supervisor|-100"},
         {dia}},
    };
    for (const Caso& c : casos)
        EXPECT_EQ(Filas(almacen(), c.sql, c.parametros), c.esperadas) << c.sql.toStdString();
}
