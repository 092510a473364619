// Esquema de un almacén nuevo: tablas, tipos, índices, vistas y filas de partida.

#include "apoyo/base_prueba.h"
#include "store/actualizacion.h"
#include "store/esquema.h"

#include <QDate>
#include <QSqlRecord>
#include <cmath>

using namespace orv;
using namespace orv::prueba;

namespace {

// Importe leído del almacén, en diezmilésimos. PostgreSQL lo entrega como texto decimal exacto
// (HighPrecision); SQLite como número de coma flotante, que se redondea a 4 decimales.
qint64 diezmilesimos(const QVariant& v) {
    if (v.typeId() == QMetaType::QString) {
        const QString t = v.toString();
        const bool negativo = t.startsWith(QLatin1Char('-'));
        const QString sinSigno = negativo ? t.mid(1) : t;
        const qsizetype punto = sinSigno.indexOf(QLatin1Char('.'));
        const QString entera = punto < 0 ? sinSigno : sinSigno.left(punto);
        QString fraccion = punto < 0 ? QString() : sinSigno.mid(punto + 1);
        fraccion = (fraccion + QStringLiteral("0000")).left(4);
        const qint64 r = entera.toLongLong() * 10000 + fraccion.toLongLong();
        return negativo ? -r : r;
    }
    return std::llround(v.toDouble() * 10000.0);
}

QStringList columnasDe(Almacen& a, const QString& relacion) {
    const QSqlRecord r = a.consulta(QStringLiteral("SELECT * FROM ") + relacion + QStringLiteral(" WHERE 1=0")).record();
    QStringList nombres;
    for (int i = 0; i < r.count(); ++i) nombres << r.fieldName(i).toLower();
    return nombres;
}

class EsquemaNuevo : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (IsSkipped()) return;
        ASSERT_GE(actualizaEsquema(almacen()), 1);
    }
    QVariant valor(const QString& sql, const QVariantList& p = {}) { return almacen().valor(sql, p); }
};
ORV_AMBOS_MOTORES(EsquemaNuevo);

struct TablaEsperada {
    const char* tabla;
    const char* columnas;
};

// Cada consulta guardada con las columnas que el programa y sus informes leen por nombre.
const TablaEsperada kVistas[] = {
    {"ConsultaArticulos", "idArticulo idRubro Rubro Codigo Descripcion StockActual StockMinimo PrecioVenta PrecioFinal"},
    {"ConsultaCaja", "idCaja Fecha idCuenta Cuenta FormaPago Detalles Ingreso Egreso idUsuario Factura idComprobante"},
    {"ConsultaCtaCte", "idVendedor Fecha Comision Liquidacion Tipo Factura TipoComprobante"},
    {"ConsultaComisiones", "Fecha Nombre Comision Liquidacion"},
    {"ConsultaComisiones2", "IdCuentaVendedor Nombre Fecha Liquidacion"},
    {"ConsultaComprobantes", "idComprobante Factura Tipo Fecha Nombre Total SubTotalComprobante Codigo Descripcion "
                             "Cantidad Unitario SubTotal"},
    {"ConsultaComprobantesNoComerciales", "Fecha Factura Tipo Total idComprobante"},
    {"ConsultaDetalles", "FECDETALLE Codigo idComprobante Descripcion Cantidad Unitario SubTotal"},
    {"ConsultaFacturas", "FECDETALLE HizoCaja HizoStock TipoStock idComprobante Factura Nombre Total Tipo EsComercial"},
    {"ConsultaHeaderComprobantes", "Fecha idVendedor Tipo Factura Total"},
    {"ConsultaMovimientosStock", "Fecha idMovimientoStock idArticulo Ingreso Egreso Codigo Descripcion "
                                 "TipoMovimientoStock"},
    {"ConsultaMovStock", "Fecha idTipoMovimiento Ingreso ImprimeCodigoBarra Codigo"},
    {"ConsultaSaldoClientes", "idVendedor Nombre Saldo"},
    {"ConsultaSaldoProveedores", "idProveedor RazonSocial Saldo"},
    {"ConsultaTablaPremiosVIP", "idTablaVIP VigenciaDESDE VigenciaHASTA Descripcion PuntosRequeridos"},
    {"ConsultaTiposComprobantesPorFecha", "Fecha Factura Total idComprobante NombrePlantilla"},
    {"consultaventasclientes", "fecha nombre Total"},
    {"RankingArticulo", "Codigo Descripcion SumaDeCantidad"},
    {"RankingComisiones", "Nombre"},
    {"_ConsultaArticulosPorRubro", "Rubro Codigo Descripcion"},
    {"_ConsultaClientes", "idVendedor Nombre"},
    {"_ConsultaCaja", "Fecha Cuenta Ingreso Egreso"},
    {"_ConsultaDetalleVentas", "Fecha Factura Codigo Cantidad"},
    {"ConsultaFormulaProduccion", "Codigo PrimeroDeidItemFormula PrimeroDeidArticuloFinal PrimeroDeidArticuloMP "
                                  "SumaDeCostoTotal PrimeroDeDescripcion SumaDeCantidad PrimeroDeCodigo "
                                  "PrimeroDeDescripcion1"},
    {"ConsultaFormulaProduccionCompleta", "Codigo idItemFormula idArticuloFinal idArticuloMP CostoTotal Descripcion "
                                          "Cantidad Codigo_1 Descripcion_1"},
    {"ConsultaRegistroProduccion", "idArticulo Codigo Descripcion idRegistroProduccion Fecha CantidadProducida "
                                   "CostoManoObra CostoTotal idArticuloMP Cantidad Codigo_1 Descripcion_1 CostoTotal_1"},
    {"ConsultaComisionesVenta", "idUsuario Fecha idDetComisiones Detalle idComprobante Porcentaje Importe "
                                "NombreCompleto Tipo Factura"},
};

} // namespace

TEST_P(EsquemaNuevo, UnDiaSeCierraUnaSolaVezYElProveedorDelArticuloNoTieneIndice) {
    const QDate dia(2024, 3, 15);
    almacen().ejecuta(QStringLiteral("INSERT INTO CorteCaja (FECHA) VALUES (?)"), {dia});
    EXPECT_THROW(almacen().ejecuta(QStringLiteral("INSERT INTO CorteCaja (FECHA) VALUES (?)"), {dia}), ErrorAlmacen);
    almacen().ejecuta(QStringLiteral("INSERT INTO CorteCaja (FECHA) VALUES (?)"), {dia.addDays(1)});
    EXPECT_EQ(valor(QStringLiteral("SELECT count(*) FROM CorteCaja")).toInt(), 2);
    EXPECT_EQ(valor(QStringLiteral("SELECT FECHA FROM CorteCaja WHERE FECHA = ?"), {dia}).toDate(), dia);

    const QString indicesDeArticulos =
        almacen().esPostgreSQL()
            ? QStringLiteral("SELECT string_agg(indexdef, ';') FROM pg_indexes WHERE schemaname = current_schema() "
                             "AND tablename = 'articulos'")
            : QStringLiteral("SELECT group_concat(sql, ';') FROM sqlite_master WHERE type = 'index' "
                             "AND tbl_name = 'Articulos' AND sql IS NOT NULL");
    const QString def = valor(indicesDeArticulos).toString().toLower();
    EXPECT_TRUE(def.contains(QStringLiteral("(codigo)"))) << def.toStdString();
    EXPECT_TRUE(def.contains(QStringLiteral("(esmateriaprima)"))) << def.toStdString();
    EXPECT_FALSE(def.contains(QStringLiteral("(idproveedor)"))) << def.toStdString();
}

TEST_P(EsquemaNuevo, CadaVistaRespondeConLasColumnasQueSeLeen) {
    for (const TablaEsperada& v : kVistas) {
        QStringList reales;
        ASSERT_NO_THROW(reales = columnasDe(almacen(), QString::fromUtf8(v.tabla))) << v.tabla;
        for (const QString& c : QString::fromUtf8(v.columnas).split(QLatin1Char(' '), Qt::SkipEmptyParts))
            EXPECT_TRUE(reales.contains(c.toLower())) << v.tabla << "." << c.toStdString();
        EXPECT_EQ(QSet<QString>(reales.begin(), reales.end()).size(), reales.size())
            << v.tabla << " repite nombres: " << reales.join(QLatin1Char(',')).toStdString();
    }
}

TEST_P(EsquemaNuevo, GrillasQueLeenPorPosicionEncuentranSusColumnas) {
    // La grilla de caja y la de reimpresión toman columnas por número.
    const QStringList caja = columnasDe(almacen(), QStringLiteral("ConsultaCaja"));
    const QStringList ordenCaja = {QStringLiteral("fecha"),   QStringLiteral("cuenta"),   QStringLiteral("factura"),
                                   QStringLiteral("detalles"), QStringLiteral("ingreso"), QStringLiteral("egreso"),
                                   QStringLiteral("formapago"), QStringLiteral("idcaja"), QStringLiteral("idcomprobante")};
    EXPECT_EQ(caja.mid(0, ordenCaja.size()), ordenCaja);
    const QStringList reimpresion = columnasDe(almacen(), QStringLiteral("ConsultaTiposComprobantesPorFecha"));
    EXPECT_EQ(reimpresion.value(4), QStringLiteral("idcomprobante"));
}

TEST_P(EsquemaNuevo, FilasDePartida) {
    EXPECT_EQ(valor(QStringLiteral("SELECT TipoMovimientoStock FROM TiposMovimientoStock WHERE idTipoMovimiento = 1"))
                  .toString(),
              QStringLiteral("Compra"));
    EXPECT_EQ(valor(QStringLiteral("SELECT count(*) FROM TiposMovimientoStock WHERE TipoMovimientoStock = 'Venta'"))
                  .toInt(),
              1);
    for (const char* c : {"Ventas Mostrador", "Cobranza Clientes"})
        EXPECT_EQ(valor(QStringLiteral("SELECT count(*) FROM Cuentas WHERE Cuenta = ?"), {QString::fromUtf8(c)}).toInt(),
                  1)
            << c;

    // El cliente 1 es el consumidor final y su zona existe (el panel de clientes la une con INNER JOIN).
    QSqlQuery cf = almacen().consulta(QStringLiteral(
        "SELECT Vendedores.Nombre, Vendedores.idTipoIva, Zonas.Zona FROM Vendedores INNER JOIN Zonas "
        "ON Vendedores.idZona = Zonas.idZona WHERE Vendedores.idVendedor = 1"));
    ASSERT_TRUE(cf.next());
    EXPECT_EQ(cf.value(0).toString(), QStringLiteral("Consumidor Final"));
    EXPECT_EQ(cf.value(1).toInt(), 1);
    EXPECT_EQ(cf.value(2).toString(), QStringLiteral("General"));

    // El nivel supervisor tiene todo y su usuario no tiene contraseña todavía.
    QString suma = QStringLiteral("UsuarioSuper");
    for (const QString& p : columnasPermiso()) suma += QStringLiteral(" + ") + p;
    EXPECT_EQ(valor(QStringLiteral("SELECT ") + suma + QStringLiteral(" FROM Niveles WHERE idNivel = 1")).toInt(), 40);
    EXPECT_EQ(valor(QStringLiteral("SELECT Nombre FROM Niveles WHERE idNivel = 1")).toString(), QStringLiteral("Supervisor"));
    QSqlQuery u = almacen().consulta(
        QStringLiteral("SELECT idUsuario, NombreCompleto, idNivel, Contrasenia FROM Usuarios WHERE NombreUsuario = ?"),
        {QStringLiteral("supervisor")});
    ASSERT_TRUE(u.next());
    EXPECT_EQ(u.value(0).toInt(), 1);
    EXPECT_EQ(u.value(1).toString(), QStringLiteral("Supervisor"));
    EXPECT_EQ(u.value(2).toInt(), 1);
    EXPECT_TRUE(u.value(3).isNull());
    EXPECT_FALSE(u.next());

    EXPECT_EQ(valor(QStringLiteral("SELECT count(*) FROM Empresa")).toInt(), 0);
}

TEST_P(EsquemaNuevo, LasClavesNuevasSiguenALasDePartida) {
    // Una fila nueva no choca con las de partida: las secuencias de claves están al día.
    const qint64 cuentas = valor(QStringLiteral("SELECT MAX(idCuenta) FROM Cuentas")).toLongLong();
    EXPECT_EQ(almacen().inserta(QStringLiteral("INSERT INTO Cuentas (Cuenta) VALUES (?)"), {QStringLiteral("Bancos")},
                                QStringLiteral("idCuenta")),
              cuentas + 1);
    EXPECT_EQ(almacen().inserta(QStringLiteral("INSERT INTO Vendedores (Nombre, idZona) VALUES (?, 1)"),
                                {QStringLiteral("Ana")}, QStringLiteral("idVendedor")),
              2);
    EXPECT_EQ(almacen().inserta(QStringLiteral("INSERT INTO TiposMovimientoStock (TipoMovimientoStock) VALUES (?)"),
                                {QStringLiteral("Rotura")}, QStringLiteral("idTipoMovimiento")),
              6);
    // Las marcas sí/no y los importes empiezan en 0.
    QSqlQuery q = almacen().consulta(QStringLiteral("SELECT EsACuenta, EsTarjetaCredito FROM FormasDePago WHERE "
                                                    "idTipoFormaPago = ?"),
                                     {almacen().inserta(QStringLiteral("INSERT INTO FormasDePago (FormaPago) VALUES (?)"),
                                                        {QStringLiteral("DEBITO")}, QStringLiteral("idTipoFormaPago"))});
    ASSERT_TRUE(q.next());
    EXPECT_EQ(q.value(0).toInt(), 0);
    EXPECT_EQ(q.value(1).toInt(), 0);
    const qint64 art = almacen().inserta(QStringLiteral("INSERT INTO Articulos (Codigo) VALUES (?)"),
                                         {QStringLiteral("010001")}, QStringLiteral("idArticulo"));
    EXPECT_EQ(diezmilesimos(valor(QStringLiteral("SELECT PrecioVenta FROM Articulos WHERE idArticulo = ?"), {art})), 0);
    EXPECT_EQ(valor(QStringLiteral("SELECT StockActual FROM Articulos WHERE idArticulo = ?"), {art}).toDouble(), 0.0);
}

// --- Vistas sobre filas armadas para ellas ---------------------------------------------------

class VistasConDatos : public EsquemaNuevo {
protected:
    void SetUp() override {
        EsquemaNuevo::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        Almacen& a = almacen();
        rubro = a.inserta(QStringLiteral("INSERT INTO Rubros (Rubro) VALUES (?)"), {QStringLiteral("Almacén")},
                          QStringLiteral("idRubro"));
        yerba = a.inserta(QStringLiteral("INSERT INTO Articulos (idRubro, Codigo, Descripcion, PrecioVenta, "
                                         "ImprimeCodigoBarra, StockActual, StockMinimo) VALUES (?, ?, ?, ?, 1, 5, 10)"),
                          {rubro, QStringLiteral("010001"), QStringLiteral("Yerba 1 kg"), QStringLiteral("1234.5600")},
                          QStringLiteral("idArticulo"));
        azucar = a.inserta(QStringLiteral("INSERT INTO Articulos (idRubro, Codigo, Descripcion) VALUES (?, ?, ?)"),
                           {rubro, QStringLiteral("010002"), QStringLiteral("Azúcar")}, QStringLiteral("idArticulo"));
        cliente = a.inserta(QStringLiteral("INSERT INTO Vendedores (Nombre, idZona, idTipoIva) VALUES (?, 1, 2)"),
                            {QStringLiteral("Almacén O'Higgins")}, QStringLiteral("idVendedor"));
        factura = a.inserta(
            QStringLiteral("INSERT INTO Comprobantes (Factura, idTipoComprobante, idVendedor, idTipoIva, Fecha, Nombre, "
                           "FormaPago, HizoCaja, HizoStock, EsComercial, TipoStock, SubTotal, Total) "
                           "VALUES (?, 1, ?, 2, ?, ?, ?, 1, 1, 1, 0, ?, ?)"),
            {QStringLiteral("B0001-00000001"), cliente, dia, QStringLiteral("Almacén O'Higgins"),
             QStringLiteral("CTA CTE"), QStringLiteral("2469.1200"), QStringLiteral("2469.1200")},
            QStringLiteral("idComprobante"));
        a.ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, Unitario, "
                                 "SubTotal, Fecha, EsComercial) VALUES (?, ?, 2, ?, ?, ?, 1)"),
                  {factura, yerba, QStringLiteral("1234.5600"), QStringLiteral("2469.1200"), dia});
        // Un presupuesto: no comercial.
        const qint64 tipoPresu = a.inserta(
            QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, EsComercial) VALUES (?, 'X', "
                           "'0001', 0)"),
            {QStringLiteral("PRESUPUESTO")}, QStringLiteral("idTipoComprobante"));
        presupuesto = a.inserta(
            QStringLiteral("INSERT INTO Comprobantes (Factura, idTipoComprobante, idVendedor, Fecha, Nombre, "
                           "EsComercial, Total) VALUES (?, ?, ?, ?, ?, 0, ?)"),
            {QStringLiteral("X0001-00000001"), tipoPresu, cliente, dia, QStringLiteral("Almacén O'Higgins"),
             QStringLiteral("99.9900")},
            QStringLiteral("idComprobante"));
        a.ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, Unitario, "
                                 "SubTotal, Fecha, EsComercial, Descripcion) VALUES (?, ?, 7, 1, 7, ?, 0, ?)"),
                  {presupuesto, azucar, dia, QStringLiteral("Azúcar a granel")});
        // Cuenta del cliente: dos débitos y un pago.
        for (const char* importe : {"2469.1200", "0.1000"})
            a.ejecuta(QStringLiteral("INSERT INTO Comisiones (idVendedor, idComprobante, Fecha, Tipo, Comision, "
                                     "Liquidacion) VALUES (?, ?, ?, 'FACTURA', ?, 0)"),
                      {cliente, factura, dia, QString::fromUtf8(importe)});
        a.ejecuta(QStringLiteral("INSERT INTO Comisiones (idVendedor, idComprobante, Fecha, Tipo, Comision, Liquidacion) "
                                 "VALUES (?, 0, ?, 'PAGO', 0, ?)"),
                  {cliente, dia, QStringLiteral("1000.0300")});
        a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, "
                                 "FormaPago, idUsuario) VALUES (1, ?, ?, ?, ?, 0, 'EFVO', 1)"),
                  {factura, dia, QStringLiteral("VENTA : B0001-00000001"), QStringLiteral("2469.1200")});
    }

    const QDate dia{2024, 5, 20};
    qint64 rubro = 0, yerba = 0, azucar = 0, cliente = 0, factura = 0, presupuesto = 0;
};
ORV_AMBOS_MOTORES(VistasConDatos);

TEST_P(VistasConDatos, ComprobanteConSusLineas) {
    QSqlQuery q = almacen().consulta(QStringLiteral("SELECT * FROM ConsultaComprobantes WHERE idComprobante = ?"),
                                     {factura});
    ASSERT_TRUE(q.next());
    EXPECT_EQ(q.value(QStringLiteral("Factura")).toString(), QStringLiteral("B0001-00000001"));
    EXPECT_EQ(q.value(QStringLiteral("Tipo")).toString(), QStringLiteral("FACTURA B"));
    EXPECT_EQ(q.value(QStringLiteral("TipoIva")).toString(), QStringLiteral("Responsable Inscripto"));
    EXPECT_EQ(q.value(QStringLiteral("Nombre")).toString(), QStringLiteral("Almacén O'Higgins"));
    EXPECT_EQ(q.value(QStringLiteral("Codigo")).toString(), QStringLiteral("010001"));
    EXPECT_EQ(q.value(QStringLiteral("Descripcion")).toString(), QStringLiteral("Yerba 1 kg"));
    EXPECT_DOUBLE_EQ(q.value(QStringLiteral("Cantidad")).toDouble(), 2.0);
    EXPECT_EQ(diezmilesimos(q.value(QStringLiteral("Unitario"))), 12345600);
    EXPECT_EQ(diezmilesimos(q.value(QStringLiteral("SubTotal"))), 24691200);
    EXPECT_EQ(diezmilesimos(q.value(QStringLiteral("Total"))), 24691200);
    EXPECT_EQ(q.value(QStringLiteral("Fecha")).toDate(), dia);
    EXPECT_FALSE(q.next()) << "una fila por línea";

    // La descripción propia de la línea manda sobre la del artículo.
    EXPECT_EQ(almacen()
                  .valor(QStringLiteral("SELECT Descripcion FROM ConsultaComprobantes WHERE idComprobante = ?"),
                         {presupuesto})
                  .toString(),
              QStringLiteral("Azúcar a granel"));
}

TEST_P(VistasConDatos, CajaConSuCuentaYSuComprobante) {
    QSqlQuery q = almacen().consulta(QStringLiteral("SELECT * FROM ConsultaCaja WHERE Fecha = ?"), {dia});
    ASSERT_TRUE(q.next());
    EXPECT_EQ(q.value(QStringLiteral("Cuenta")).toString(), QStringLiteral("Ventas Mostrador"));
    EXPECT_EQ(q.value(QStringLiteral("Factura")).toString(), QStringLiteral("B0001-00000001"));
    EXPECT_EQ(q.value(QStringLiteral("NombreUsuario")).toString(), QStringLiteral("supervisor"));
    EXPECT_EQ(diezmilesimos(q.value(QStringLiteral("Ingreso"))), 24691200);
    EXPECT_EQ(diezmilesimos(q.value(QStringLiteral("Egreso"))), 0);
    EXPECT_EQ(q.value(QStringLiteral("idComprobante")).toLongLong(), factura);
    EXPECT_FALSE(q.next());
    // El resumen del cierre agrupa por cuenta sobre la vista.
    EXPECT_EQ(diezmilesimos(almacen().valor(QStringLiteral(
                  "SELECT sum(Ingreso) FROM ConsultaCaja WHERE idUsuario = 1 GROUP BY Cuenta"))),
              24691200);
}

TEST_P(VistasConDatos, CajaUnaFilaPorMovimientoAunqueFalteSuCuentaComprobanteOUsuario) {
    Almacen& a = almacen();
    const qint64 bancos = a.inserta(QStringLiteral("INSERT INTO Cuentas (Cuenta) VALUES (?)"), {QStringLiteral("Bancos")},
                                    QStringLiteral("idCuenta"));
    const QVariant nulo(QMetaType(QMetaType::LongLong));
    struct Movimiento {
        QVariant idCuenta, idComprobante, idUsuario;
    };
    const Movimiento movimientos[] = {
        {bancos, nulo, 1},          // la cuenta se borra después; sin comprobante
        {1, 0, 77},                 // comprobante 0 y un usuario que no existe
        {1, presupuesto, nulo},     // sin usuario
        {999, factura, 1},          // una cuenta que nunca existió
    };
    for (const Movimiento& m : movimientos)
        a.ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, idUsuario, Fecha, Ingreso, Egreso) "
                                 "VALUES (?, ?, ?, ?, 1, 0)"),
                  {m.idCuenta, m.idComprobante, m.idUsuario, dia});
    a.ejecuta(QStringLiteral("DELETE FROM Cuentas WHERE idCuenta = ?"), {bancos});

    // Cuenta, factura, usuario y nombre completo de cada movimiento, en orden; "-" es nulo.
    const QStringList esperadas = {
        QStringLiteral("Ventas Mostrador|B0001-00000001|supervisor|Supervisor"),
        QStringLiteral("-|-|supervisor|Supervisor"),
        QStringLiteral("Ventas Mostrador|-|-|-"),
        QStringLiteral("Ventas Mostrador|X0001-00000001|-|-"),
        QStringLiteral("-|B0001-00000001|supervisor|Supervisor"),
    };
    QStringList filas;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Cuenta, Factura, NombreUsuario, NombreCompleto FROM ConsultaCaja "
                                            "ORDER BY idCaja"));
    while (q.next()) {
        QStringList f;
        for (int c = 0; c < 4; ++c) f << (q.value(c).isNull() ? QStringLiteral("-") : q.value(c).toString());
        filas << f.join(u'|');
    }
    EXPECT_EQ(filas, esperadas);
    EXPECT_EQ(a.valor(QStringLiteral("SELECT COUNT(*) FROM ConsultaCaja")).toInt(), int(esperadas.size()));
    EXPECT_EQ(a.valor(QStringLiteral("SELECT COUNT(*) FROM ConsultaCaja WHERE Cuenta IS NULL")).toInt(), 2);
}

TEST_P(VistasConDatos, SaldoDelClienteEsDebitosMenosCreditos) {
    // 2469.12 + 0.10 - 1000.03 = 1469.19, exacto.
    EXPECT_EQ(diezmilesimos(almacen().valor(
                  QStringLiteral("SELECT Saldo FROM ConsultaSaldoClientes WHERE idVendedor = ?"), {cliente})),
              14691900);
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT count(*) FROM ConsultaSaldoClientes WHERE Saldo <> 0")).toInt(), 1);

    QSqlQuery cta = almacen().consulta(
        QStringLiteral("SELECT * FROM ConsultaCtaCte WHERE idVendedor = ? ORDER BY idCuentaVendedor"), {cliente});
    ASSERT_TRUE(cta.next());
    EXPECT_EQ(cta.value(QStringLiteral("Factura")).toString(), QStringLiteral("B0001-00000001"));
    EXPECT_EQ(cta.value(QStringLiteral("Tipo")).toString(), QStringLiteral("FACTURA"));
    EXPECT_EQ(cta.value(QStringLiteral("TipoComprobante")).toString(), QStringLiteral("FACTURA B"));
    ASSERT_TRUE(cta.next());
    ASSERT_TRUE(cta.next());
    EXPECT_EQ(cta.value(QStringLiteral("Tipo")).toString(), QStringLiteral("PAGO"));
    EXPECT_TRUE(cta.value(QStringLiteral("Factura")).isNull()) << "un pago no tiene comprobante";
    EXPECT_EQ(diezmilesimos(cta.value(QStringLiteral("Liquidacion"))), 10000300);
    EXPECT_FALSE(cta.next());
}

TEST_P(VistasConDatos, SaldoDelProveedorEsDebeMenosHaber) {
    const qint64 prov = almacen().inserta(QStringLiteral("INSERT INTO Proveedores (Nombre, RazonSocial) VALUES (?, ?)"),
                                          {QStringLiteral("Molinos"), QStringLiteral("Molinos S.A.")},
                                          QStringLiteral("idProveedor"));
    almacen().ejecuta(QStringLiteral("INSERT INTO CtaProve (idProveedor, idCompra, Fecha, Debe, Haber) VALUES "
                                     "(?, 1, ?, ?, 0), (?, 0, ?, 0, ?)"),
                      {prov, dia, QStringLiteral("5000.0100"), prov, dia, QStringLiteral("4999.9900")});
    EXPECT_EQ(diezmilesimos(almacen().valor(
                  QStringLiteral("SELECT Saldo FROM ConsultaSaldoProveedores WHERE idProveedor = ?"), {prov})),
              200);
}

TEST_P(VistasConDatos, ListadosDeComprobantesYVentas) {
    // ConsultaFacturas trae todos los comprobantes (la pantalla de borrado los necesita), con sus marcas.
    QSqlQuery f = almacen().consulta(QStringLiteral("SELECT * FROM ConsultaFacturas WHERE FECDETALLE = ? "
                                                    "ORDER BY idComprobante"),
                                     {dia});
    ASSERT_TRUE(f.next());
    EXPECT_EQ(f.value(QStringLiteral("idComprobante")).toLongLong(), factura);
    EXPECT_NE(f.value(QStringLiteral("HizoCaja")).toInt(), 0);
    EXPECT_NE(f.value(QStringLiteral("HizoStock")).toInt(), 0);
    EXPECT_EQ(f.value(QStringLiteral("TipoStock")).toInt(), 0);
    EXPECT_EQ(f.value(QStringLiteral("FECDETALLE")).toDate(), dia);
    ASSERT_TRUE(f.next());
    EXPECT_EQ(f.value(QStringLiteral("idComprobante")).toLongLong(), presupuesto);
    EXPECT_EQ(f.value(QStringLiteral("EsComercial")).toInt(), 0);

    EXPECT_EQ(almacen()
                  .valor(QStringLiteral("SELECT Factura FROM ConsultaComprobantesNoComerciales WHERE fecha = ?"), {dia})
                  .toString(),
              QStringLiteral("X0001-00000001"));
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT count(*) FROM ConsultaComprobantesNoComerciales")).toInt(), 1);

    QSqlQuery d = almacen().consulta(QStringLiteral("SELECT * FROM ConsultaDetalles WHERE FECDETALLE >= ? AND "
                                                    "FECDETALLE <= ? AND Codigo = ?"),
                                     {dia, dia, QStringLiteral("010001")});
    ASSERT_TRUE(d.next());
    EXPECT_EQ(d.value(QStringLiteral("idComprobante")).toLongLong(), factura);
    EXPECT_EQ(diezmilesimos(d.value(QStringLiteral("SubTotal"))), 24691200);
    EXPECT_FALSE(d.next());

    // Ranking de artículos: sólo lo vendido en comprobantes comerciales.
    QSqlQuery r = almacen().consulta(QStringLiteral("SELECT Codigo, SumaDeCantidad FROM RankingArticulo"));
    ASSERT_TRUE(r.next());
    EXPECT_EQ(r.value(0).toString(), QStringLiteral("010001"));
    EXPECT_DOUBLE_EQ(r.value(1).toDouble(), 2.0);
    EXPECT_FALSE(r.next());
    EXPECT_EQ(diezmilesimos(almacen().valor(QStringLiteral("SELECT SumaDeTotal FROM RankingComisiones WHERE Nombre = ?"),
                                            {QStringLiteral("Almacén O'Higgins")})),
              24691200);

    EXPECT_EQ(almacen()
                  .valor(QStringLiteral("SELECT count(*) FROM consultaventasclientes WHERE fecha >= ? AND nombre = ?"),
                         {dia, QStringLiteral("Almacén O'Higgins")})
                  .toInt(),
              2);
    EXPECT_EQ(almacen()
                  .valor(QStringLiteral("SELECT NombrePlantilla FROM ConsultaTiposComprobantesPorFecha "
                                        "WHERE idComprobante = ?"),
                         {factura})
                  .toString(),
              QStringLiteral("factura.rpt"));
    EXPECT_EQ(almacen()
                  .valor(QStringLiteral("SELECT count(*) FROM ConsultaHeaderComprobantes WHERE Fecha = ? AND "
                                        "idVendedor = ?"),
                         {dia, cliente})
                  .toInt(),
              2);
}

TEST_P(VistasConDatos, ArticulosYMovimientosDeStock) {
    QSqlQuery a = almacen().consulta(QStringLiteral("SELECT * FROM ConsultaArticulos WHERE StockActual <= StockMinimo "
                                                    "AND idRubro = ?"),
                                     {rubro});
    ASSERT_TRUE(a.next());
    EXPECT_EQ(a.value(QStringLiteral("Codigo")).toString(), QStringLiteral("010001"));
    EXPECT_EQ(a.value(QStringLiteral("Rubro")).toString(), QStringLiteral("Almacén"));

    almacen().ejecuta(QStringLiteral("INSERT INTO MovimientoStock (idArticulo, Fecha, idTipoMovimiento, Comprobante, "
                                     "idComprobante, Ingreso, Egreso) VALUES (?, ?, 1, 'FA 0001-1', 5, 3, 0), "
                                     "(?, ?, 1, 'FA 0001-1', 5, 4, 0)"),
                      {yerba, dia, azucar, dia});
    // Las etiquetas del día: compras de artículos marcados para etiquetar.
    QSqlQuery e = almacen().consulta(QStringLiteral("SELECT Codigo, Ingreso FROM ConsultaMovStock WHERE Fecha = ? AND "
                                                    "idTipoMovimiento = 1 AND Ingreso > 0 AND ImprimeCodigoBarra <> 0"),
                                     {dia});
    ASSERT_TRUE(e.next());
    EXPECT_EQ(e.value(0).toString(), QStringLiteral("010001"));
    EXPECT_DOUBLE_EQ(e.value(1).toDouble(), 3.0);
    EXPECT_FALSE(e.next());
    EXPECT_EQ(almacen()
                  .valor(QStringLiteral("SELECT TipoMovimientoStock FROM ConsultaMovimientosStock WHERE idArticulo = ?"),
                         {azucar})
                  .toString(),
              QStringLiteral("Compra"));
}

TEST_P(VistasConDatos, ProduccionYComisionesDeVendedores) {
    Almacen& a = almacen();
    a.ejecuta(QStringLiteral("INSERT INTO FormulaProduccion (idArticuloFinal, idArticuloMP, Cantidad, CostoTotal) "
                             "VALUES (?, ?, 2, ?), (?, ?, 1.5, ?)"),
              {azucar, yerba, QStringLiteral("10.1000"), azucar, azucar, QStringLiteral("0.2000")});
    QSqlQuery f = a.consulta(QStringLiteral("SELECT * FROM ConsultaFormulaProduccion WHERE PrimeroDeidArticuloFinal = ?"),
                             {azucar});
    ASSERT_TRUE(f.next());
    EXPECT_EQ(f.value(QStringLiteral("Codigo")).toString(), QStringLiteral("010002"));
    EXPECT_EQ(diezmilesimos(f.value(QStringLiteral("SumaDeCostoTotal"))), 103000);
    EXPECT_DOUBLE_EQ(f.value(QStringLiteral("SumaDeCantidad")).toDouble(), 3.5);
    EXPECT_FALSE(f.next()) << "una fila por fórmula";

    QSqlQuery c = a.consulta(QStringLiteral("SELECT * FROM ConsultaFormulaProduccionCompleta WHERE idArticuloFinal = ? "
                                            "ORDER BY idItemFormula"),
                             {azucar});
    ASSERT_TRUE(c.next());
    EXPECT_EQ(c.value(QStringLiteral("Codigo")).toString(), QStringLiteral("010002"));
    EXPECT_EQ(c.value(QStringLiteral("Codigo_1")).toString(), QStringLiteral("010001"));
    EXPECT_EQ(c.value(QStringLiteral("Descripcion_1")).toString(), QStringLiteral("Yerba 1 kg"));

    const qint64 reg = a.inserta(QStringLiteral("INSERT INTO RegistroProduccion (Fecha, idArticuloProducido, "
                                                "CantidadProducida, CostoManoObra, CostoTotal) VALUES (?, ?, 1, 5, ?)"),
                                 {dia, azucar, QStringLiteral("15.3000")}, QStringLiteral("idRegistroProduccion"));
    a.ejecuta(QStringLiteral("INSERT INTO DetRegistroProduccion (idRegistroProduccion, idArticuloMP, Cantidad, "
                             "CostoTotal) VALUES (?, ?, 2, ?)"),
              {reg, yerba, QStringLiteral("10.1000")});
    QSqlQuery r = a.consulta(QStringLiteral("SELECT * FROM ConsultaRegistroProduccion WHERE idRegistroProduccion = ?"),
                             {reg});
    ASSERT_TRUE(r.next());
    EXPECT_EQ(diezmilesimos(r.value(QStringLiteral("CostoTotal"))), 153000);
    EXPECT_EQ(diezmilesimos(r.value(QStringLiteral("CostoTotal_1"))), 101000);
    EXPECT_EQ(r.value(QStringLiteral("Codigo_1")).toString(), QStringLiteral("010001"));

    // Comisiones de vendedores: las liquidaciones (sin comprobante) también aparecen.
    a.ejecuta(QStringLiteral("INSERT INTO DetComisiones (Fecha, Detalle, idUsuario, idComprobante, Porcentaje, Importe) "
                             "VALUES (?, 'VENTA', 1, ?, 5, ?), (?, 'LIQUIDACION', 1, 0, 0, ?)"),
              {dia, factura, QStringLiteral("123.4560"), dia, QStringLiteral("-100.0000")});
    QSqlQuery v = a.consulta(QStringLiteral("SELECT * FROM ConsultaComisionesVenta WHERE idUsuario = 1 AND Fecha = ? "
                                            "ORDER BY idDetComisiones"),
                             {dia});
    ASSERT_TRUE(v.next());
    EXPECT_EQ(v.value(QStringLiteral("Factura")).toString(), QStringLiteral("B0001-00000001"));
    EXPECT_EQ(v.value(QStringLiteral("NombreCompleto")).toString(), QStringLiteral("Supervisor"));
    ASSERT_TRUE(v.next());
    EXPECT_TRUE(v.value(QStringLiteral("Factura")).isNull());
    EXPECT_EQ(diezmilesimos(v.value(QStringLiteral("Importe"))), -1000000);
}

// --- Textos e importes verbatim ---------------------------------------------------------------

TEST_P(EsquemaNuevo, TextosVuelvenTalCualSeGuardaron) {
    const QString apostrofe = QStringLiteral("Almacén O'Higgins; DROP TABLE Caja; --");
    const QString coma = QStringLiteral("1,5");
    const QString largo = QString(9991, QLatin1Char('x')) + QStringLiteral("ñÑáé€'\"\\%");
    const QString otros = QStringLiteral("Ελληνικά · 日本語 · Русский · עברית · 😀");
    ASSERT_EQ(largo.size(), 10000);

    const qint64 id = almacen().inserta(
        QStringLiteral("INSERT INTO Comprobantes (Nombre, Cuit, Observaciones, Cupon) VALUES (?, ?, ?, ?)"),
        {apostrofe, coma, largo, otros.left(30)}, QStringLiteral("idComprobante"));
    QSqlQuery q = almacen().consulta(
        QStringLiteral("SELECT Nombre, Cuit, Observaciones, Cupon FROM Comprobantes WHERE idComprobante = ?"), {id});
    ASSERT_TRUE(q.next());
    EXPECT_EQ(q.value(0).toString(), apostrofe);
    EXPECT_EQ(q.value(1).toString(), coma);
    EXPECT_EQ(q.value(2).toString(), largo);
    EXPECT_EQ(q.value(3).toString(), otros.left(30));
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT count(*) FROM Caja")).toInt(), 0);

    // Texto no latino en una columna de texto común y buscado con LIKE por una parte.
    almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion) VALUES (?, ?)"),
                      {QStringLiteral("990001"), otros});
    EXPECT_EQ(almacen()
                  .valor(QStringLiteral("SELECT Descripcion FROM Articulos WHERE Descripcion LIKE ?"),
                         {QStringLiteral("%日本語%")})
                  .toString(),
              otros);

    // La columna con guion se escribe entre comillas dobles.
    almacen().ejecuta(QStringLiteral("UPDATE Vendedores SET \"e-mail\" = ? WHERE idVendedor = 1"),
                      {QStringLiteral("o'neil@ejemplo.com.ar")});
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT \"e-mail\" FROM Vendedores WHERE idVendedor = 1")).toString(),
              QStringLiteral("o'neil@ejemplo.com.ar"));
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT email FROM _ConsultaClientes WHERE idVendedor = 1")).toString(),
              QStringLiteral("o'neil@ejemplo.com.ar"));
}

TEST_P(EsquemaNuevo, ImportesDeCuatroDecimalesSonExactos) {
    const QString importes[] = {QStringLiteral("12345678.1234"), QStringLiteral("-0.0001"),
                                QStringLiteral("999999999.9999"), QStringLiteral("0.1000")};
    const qint64 esperados[] = {123456781234LL, -1LL, 9999999999999LL, 1000LL};
    for (int i = 0; i < 4; ++i) {
        const qint64 id = almacen().inserta(QStringLiteral("INSERT INTO Caja (idCuenta, Ingreso) VALUES (1, ?)"),
                                            {importes[i]}, QStringLiteral("idCaja"));
        EXPECT_EQ(diezmilesimos(almacen().valor(QStringLiteral("SELECT Ingreso FROM Caja WHERE idCaja = ?"), {id})),
                  esperados[i])
            << importes[i].toStdString();
    }
    // Diez veces 0.10 suman 1.00 exacto.
    for (int i = 0; i < 10; ++i)
        almacen().ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, Egreso) VALUES (2, ?)"), {QStringLiteral("0.1000")});
    EXPECT_EQ(diezmilesimos(almacen().valor(QStringLiteral("SELECT sum(Egreso) FROM Caja WHERE idCuenta = 2"))), 10000);
    if (almacen().esPostgreSQL()) {
        EXPECT_EQ(almacen().valor(QStringLiteral("SELECT Ingreso FROM Caja WHERE idCaja = 1")).toString(),
                  QStringLiteral("12345678.1234"));
    }
}
