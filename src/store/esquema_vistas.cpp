// Las consultas guardadas del sistema, como vistas.

#include "store/esquema_interno.h"

namespace orv::esquema {

namespace {

// Importes con signo: una nota de crédito guarda negativos su subtotal, su neto y su total, pero positivos
// su descuento y su IVA. Las consultas de listas dan cada importe de la cabecera con el signo del
// total del comprobante (su valor absoluto, negativo si el total lo es), así en toda página
// subtotal - descuento = neto y neto + IVA = total, y las sumas de un período restan las notas
// de crédito. CAST conserva el tipo de la columna (PostgreSQL reemplaza la vista en su lugar).
const std::vector<Vista> kVistas = {
    {"ConsultaArticulos", R"(
        SELECT Articulos.idArticulo, Articulos.idRubro, Rubros.Rubro, Articulos.Codigo, Articulos.Descripcion,
               Articulos.DescripcionMatriz, Articulos.StockActual, Articulos.StockMinimo, Articulos.PrecioCosto,
               Articulos.PrecioVenta, Articulos.PrecioFinal, Articulos.UtilidadPorcentaje, Articulos.CgoProveedor,
               Articulos.ImprimeCodigoBarra, Articulos.esMateriaPrima, Articulos.Foto, Articulos.UltimaFechaCompra,
               Articulos.UltimaFechaVenta, Articulos.IdProveedor, Proveedores.RazonSocial AS Proveedor
        FROM (Articulos LEFT JOIN Rubros ON Articulos.idRubro = Rubros.idRubro)
             LEFT JOIN Proveedores ON Articulos.IdProveedor = Proveedores.idProveedor)"},

    // Columnas en el orden de la grilla de caja: Fecha, Cuenta, Factura, Detalles, Ingreso, Egreso,
    // FormaPago, idCaja, idComprobante.
    {"ConsultaCaja", R"(
        SELECT Caja.Fecha, Cuentas.Cuenta, Comprobantes.Factura, Caja.Detalles, Caja.Ingreso, Caja.Egreso,
               Caja.FormaPago, Caja.idCaja, Caja.idComprobante, Caja.idCuenta, Caja.idUsuario,
               Usuarios.NombreUsuario, Usuarios.NombreCompleto
        FROM ((Caja LEFT JOIN Cuentas ON Caja.idCuenta = Cuentas.idCuenta)
              LEFT JOIN Comprobantes ON Caja.idComprobante = Comprobantes.idComprobante)
             LEFT JOIN Usuarios ON Caja.idUsuario = Usuarios.idUsuario)",
     // En SQLite la cuenta, el comprobante y el usuario se leen por su clave en la misma fila: una
     // por movimiento, nula si ya no está, como con LEFT JOIN. SQLite sólo los lee para las filas
     // que entrega, así que contar los movimientos (COUNT(*) sale del índice más chico de Caja) y
     // saltar filas hasta una página lejana de la grilla no pasa por esas tablas; con las uniones,
     // SQLite las recorre para cada fila aunque no se pidan. PostgreSQL deja de lado por sí mismo
     // una unión LEFT JOIN por clave que no se usa, y arma mejor las lecturas grandes con uniones.
     R"(
        SELECT Caja.Fecha,
               (SELECT Cuentas.Cuenta FROM Cuentas WHERE Cuentas.idCuenta = Caja.idCuenta) AS Cuenta,
               (SELECT Comprobantes.Factura FROM Comprobantes
                 WHERE Comprobantes.idComprobante = Caja.idComprobante) AS Factura,
               Caja.Detalles, Caja.Ingreso, Caja.Egreso, Caja.FormaPago, Caja.idCaja, Caja.idComprobante,
               Caja.idCuenta, Caja.idUsuario,
               (SELECT Usuarios.NombreUsuario FROM Usuarios WHERE Usuarios.idUsuario = Caja.idUsuario) AS NombreUsuario,
               (SELECT Usuarios.NombreCompleto FROM Usuarios WHERE Usuarios.idUsuario = Caja.idUsuario) AS NombreCompleto
        FROM Caja)"},

    {"ConsultaCtaCte", R"(
        SELECT Comisiones.idVendedor, Comisiones.Fecha, Comisiones.Tipo, Comprobantes.Factura,
               TiposDeComprobantes.Tipo AS TipoComprobante, Comisiones.Comision, Comisiones.Liquidacion,
               Comisiones.idCuentaVendedor, Comisiones.idComprobante, Vendedores.Nombre
        FROM ((Comisiones LEFT JOIN Comprobantes ON Comisiones.idComprobante = Comprobantes.idComprobante)
              LEFT JOIN TiposDeComprobantes ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante)
             LEFT JOIN Vendedores ON Comisiones.idVendedor = Vendedores.idVendedor)"},

    {"ConsultaComisiones", R"(
        SELECT Comisiones.Fecha, Vendedores.Nombre, Comisiones.Tipo, Comprobantes.Factura, Comisiones.Comision,
               Comisiones.Liquidacion, Comisiones.idVendedor, Comisiones.idCuentaVendedor, Comisiones.idComprobante
        FROM (Comisiones LEFT JOIN Vendedores ON Comisiones.idVendedor = Vendedores.idVendedor)
             LEFT JOIN Comprobantes ON Comisiones.idComprobante = Comprobantes.idComprobante)"},

    {"ConsultaComisiones2", R"(
        SELECT Comisiones.IdCuentaVendedor, Comisiones.idVendedor, Comisiones.Fecha, Comisiones.Tipo,
               Comisiones.Comision, Comisiones.Liquidacion, Comisiones.idComprobante, Vendedores.Nombre,
               Vendedores.Domicilio, Vendedores.Localidad, Vendedores.CPostal, Vendedores.Telefono, Vendedores.Cuit,
               TipoDeIva.TipoIva
        FROM (Comisiones LEFT JOIN Vendedores ON Comisiones.idVendedor = Vendedores.idVendedor)
             LEFT JOIN TipoDeIva ON Vendedores.idTipoIva = TipoDeIva.idTipoIva)"},

    // Un comprobante con sus líneas: la cabecera se repite en cada línea. El SubTotal es el de la
    // línea; el de la cabecera es SubTotalComprobante. Es el comprobante como se imprime: una nota
    // de crédito dice lo que es con su tipo, y sus importes van sin signo, como en el papel.
    {"ConsultaComprobantes", R"(
        SELECT Comprobantes.idComprobante, Comprobantes.Factura, Comprobantes.idTipoComprobante,
               TiposDeComprobantes.Tipo, TiposDeComprobantes.Letra, TiposDeComprobantes.PuntoDeVenta,
               TiposDeComprobantes.NombrePlantilla, Comprobantes.Fecha, Comprobantes.idVendedor, Comprobantes.Nombre,
               Comprobantes.Cuit, Comprobantes.idTipoIva, TipoDeIva.TipoIva, Vendedores.Domicilio,
               Vendedores.Localidad, Vendedores.CPostal, Vendedores.Telefono, Comprobantes.FormaPago,
               CAST(ABS(Comprobantes.SubTotal) AS NUMERIC(19,4)) AS SubTotalComprobante, Comprobantes.PorcDescuento,
               CAST(ABS(Comprobantes.MontDescuento) AS NUMERIC(19,4)) AS MontDescuento,
               CAST(ABS(Comprobantes.ImporteNeto) AS NUMERIC(19,4)) AS ImporteNeto, Comprobantes.PorcentajeIVA,
               CAST(ABS(Comprobantes.ImporteIVA) AS NUMERIC(19,4)) AS ImporteIVA,
               CAST(ABS(Comprobantes.Total) AS NUMERIC(19,4)) AS Total,
               Comprobantes.SuPago, Comprobantes.Cupon, Comprobantes.Remito, Comprobantes.Observaciones,
               Comprobantes.HizoCaja, Comprobantes.HizoStock, Comprobantes.TipoStock, Comprobantes.EsComercial,
               Comprobantes.ImpresoFiscal, Comprobantes.idUsuario, Comprobantes.idVendio,
               DetalleComprobantes.idDetalle, DetalleComprobantes.idArticulo, Articulos.Codigo,
               COALESCE(DetalleComprobantes.Descripcion, Articulos.Descripcion) AS Descripcion,
               DetalleComprobantes.Cantidad, DetalleComprobantes.Unitario, DetalleComprobantes.SubTotal,
               DetalleComprobantes.Sn
        FROM ((((Comprobantes LEFT JOIN TiposDeComprobantes
                   ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante)
                LEFT JOIN Vendedores ON Comprobantes.idVendedor = Vendedores.idVendedor)
               LEFT JOIN TipoDeIva ON Comprobantes.idTipoIva = TipoDeIva.idTipoIva)
              LEFT JOIN DetalleComprobantes ON Comprobantes.idComprobante = DetalleComprobantes.idComprobante)
             LEFT JOIN Articulos ON DetalleComprobantes.idArticulo = Articulos.idArticulo)"},

    {"ConsultaComprobantesNoComerciales", R"(
        SELECT Comprobantes.Fecha, TiposDeComprobantes.Tipo, Comprobantes.Factura, Comprobantes.Nombre,
               Comprobantes.FormaPago,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.SubTotal)
                         ELSE ABS(Comprobantes.SubTotal) END AS NUMERIC(19,4)) AS SubTotal,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.MontDescuento)
                         ELSE ABS(Comprobantes.MontDescuento) END AS NUMERIC(19,4)) AS MontDescuento,
               Comprobantes.Total, Comprobantes.idComprobante, Comprobantes.idTipoComprobante, Comprobantes.idVendedor,
               Comprobantes.Observaciones
        FROM Comprobantes LEFT JOIN TiposDeComprobantes
             ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante
        WHERE COALESCE(Comprobantes.EsComercial, 0) = 0)"},

    // Líneas vendidas con la fecha de su comprobante (FECDETALLE). Las de un comprobante de
    // operación inversa (una nota de crédito) restan: cantidad e importe van con signo negativo.
    {"ConsultaDetalles", R"(
        SELECT Comprobantes.Fecha AS FECDETALLE, Comprobantes.Factura, TiposDeComprobantes.Tipo,
               Comprobantes.idVendedor, Comprobantes.Nombre, DetalleComprobantes.idComprobante,
               DetalleComprobantes.idDetalle, DetalleComprobantes.idArticulo, Articulos.Codigo,
               COALESCE(DetalleComprobantes.Descripcion, Articulos.Descripcion) AS Descripcion, Articulos.idRubro,
               CASE WHEN COALESCE(Comprobantes.TipoStock, 0) <> 0 THEN -DetalleComprobantes.Cantidad
                    ELSE DetalleComprobantes.Cantidad END AS Cantidad,
               DetalleComprobantes.Unitario,
               CAST(CASE WHEN COALESCE(Comprobantes.TipoStock, 0) <> 0 THEN -DetalleComprobantes.SubTotal
                         ELSE DetalleComprobantes.SubTotal END AS NUMERIC(19,4)) AS SubTotal,
               DetalleComprobantes.costounitario, DetalleComprobantes.EsComercial, DetalleComprobantes.Sn,
               DetalleComprobantes.idUsuario
        FROM ((DetalleComprobantes INNER JOIN Comprobantes
                 ON DetalleComprobantes.idComprobante = Comprobantes.idComprobante)
              LEFT JOIN TiposDeComprobantes ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante)
             LEFT JOIN Articulos ON DetalleComprobantes.idArticulo = Articulos.idArticulo)"},

    // Cabeceras de comprobante con la fecha como FECDETALLE y las marcas que guardó el registro.
    // Subtotal, descuento, neto e IVA llevan el signo del total (ver la nota del comienzo).
    {"ConsultaFacturas", R"(
        SELECT Comprobantes.idComprobante, Comprobantes.Factura, Comprobantes.Fecha AS FECDETALLE,
               TiposDeComprobantes.Tipo, Comprobantes.Nombre, Comprobantes.FormaPago,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.SubTotal)
                         ELSE ABS(Comprobantes.SubTotal) END AS NUMERIC(19,4)) AS SubTotal,
               Comprobantes.PorcDescuento,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.MontDescuento)
                         ELSE ABS(Comprobantes.MontDescuento) END AS NUMERIC(19,4)) AS MontDescuento,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.ImporteNeto)
                         ELSE ABS(Comprobantes.ImporteNeto) END AS NUMERIC(19,4)) AS ImporteNeto,
               Comprobantes.PorcentajeIVA,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.ImporteIVA)
                         ELSE ABS(Comprobantes.ImporteIVA) END AS NUMERIC(19,4)) AS ImporteIVA,
               Comprobantes.Total, Comprobantes.HizoCaja,
               Comprobantes.HizoStock, Comprobantes.TipoStock, Comprobantes.EsComercial, Comprobantes.idTipoComprobante,
               Comprobantes.idVendedor, Comprobantes.idUsuario, Comprobantes.ImpresoFiscal
        FROM Comprobantes LEFT JOIN TiposDeComprobantes
             ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante)"},

    {"ConsultaHeaderComprobantes", R"(
        SELECT Comprobantes.idVendedor, Vendedores.Nombre, Comprobantes.Fecha, TiposDeComprobantes.Tipo,
               Comprobantes.Factura,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.SubTotal)
                         ELSE ABS(Comprobantes.SubTotal) END AS NUMERIC(19,4)) AS SubTotal,
               Comprobantes.PorcDescuento,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.MontDescuento)
                         ELSE ABS(Comprobantes.MontDescuento) END AS NUMERIC(19,4)) AS MontDescuento,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.ImporteNeto)
                         ELSE ABS(Comprobantes.ImporteNeto) END AS NUMERIC(19,4)) AS ImporteNeto,
               Comprobantes.PorcentajeIVA,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.ImporteIVA)
                         ELSE ABS(Comprobantes.ImporteIVA) END AS NUMERIC(19,4)) AS ImporteIVA,
               Comprobantes.Total, Comprobantes.FormaPago, Comprobantes.EsComercial, Comprobantes.idComprobante
        FROM (Comprobantes INNER JOIN Vendedores ON Comprobantes.idVendedor = Vendedores.idVendedor)
             LEFT JOIN TiposDeComprobantes ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante)"},

    {"ConsultaMovimientosStock", R"(
        SELECT MovimientoStock.idMovimientoStock, MovimientoStock.Fecha, MovimientoStock.idArticulo,
               Articulos.Codigo, Articulos.Descripcion, MovimientoStock.idTipoMovimiento,
               TiposMovimientoStock.TipoMovimientoStock, MovimientoStock.Comprobante, MovimientoStock.idComprobante,
               MovimientoStock.Ingreso, MovimientoStock.Egreso, MovimientoStock.Observaciones
        FROM (MovimientoStock LEFT JOIN Articulos ON MovimientoStock.idArticulo = Articulos.idArticulo)
             LEFT JOIN TiposMovimientoStock ON MovimientoStock.idTipoMovimiento = TiposMovimientoStock.idTipoMovimiento)"},

    {"ConsultaMovStock", R"(
        SELECT MovimientoStock.idMovimientoStock, MovimientoStock.Fecha, MovimientoStock.idTipoMovimiento,
               MovimientoStock.idArticulo, Articulos.Codigo, Articulos.Descripcion, Articulos.CgoProveedor,
               Articulos.PrecioVenta, Articulos.PrecioFinal, Articulos.ImprimeCodigoBarra, MovimientoStock.Ingreso,
               MovimientoStock.Egreso, MovimientoStock.Comprobante, MovimientoStock.idComprobante
        FROM MovimientoStock INNER JOIN Articulos ON MovimientoStock.idArticulo = Articulos.idArticulo)"},

    // Saldo del cliente: débitos (Comision) menos créditos (Liquidacion).
    {"ConsultaSaldoClientes", R"(
        SELECT Vendedores.idVendedor, Vendedores.Nombre, Vendedores.Domicilio, Vendedores.Localidad,
               Vendedores.Telefono,
               SUM(COALESCE(Comisiones.Comision, 0)) AS Debitos,
               SUM(COALESCE(Comisiones.Liquidacion, 0)) AS Creditos,
               SUM(COALESCE(Comisiones.Comision, 0)) - SUM(COALESCE(Comisiones.Liquidacion, 0)) AS Saldo
        FROM Vendedores INNER JOIN Comisiones ON Vendedores.idVendedor = Comisiones.idVendedor
        GROUP BY Vendedores.idVendedor, Vendedores.Nombre, Vendedores.Domicilio, Vendedores.Localidad,
                 Vendedores.Telefono)"},

    // Saldo con el proveedor: Debe (lo que se le debe) menos Haber (lo pagado).
    {"ConsultaSaldoProveedores", R"(
        SELECT Proveedores.idProveedor, Proveedores.Nombre, Proveedores.RazonSocial, Proveedores.Telefono,
               SUM(COALESCE(CtaProve.Debe, 0)) AS Debe,
               SUM(COALESCE(CtaProve.Haber, 0)) AS Haber,
               SUM(COALESCE(CtaProve.Debe, 0)) - SUM(COALESCE(CtaProve.Haber, 0)) AS Saldo
        FROM Proveedores INNER JOIN CtaProve ON Proveedores.idProveedor = CtaProve.idProveedor
        GROUP BY Proveedores.idProveedor, Proveedores.Nombre, Proveedores.RazonSocial, Proveedores.Telefono)"},

    {"ConsultaTablaPremiosVIP", R"(
        SELECT TablaVIP.idTablaVIP, TablaVIP.idArticulo, Articulos.Codigo, Articulos.Descripcion, TablaVIP.Cantidad,
               TablaVIP.PuntosRequeridos, TablaVIP.VigenciaDESDE, TablaVIP.VigenciaHASTA
        FROM TablaVIP LEFT JOIN Articulos ON TablaVIP.idArticulo = Articulos.idArticulo)"},

    // Orden de la grilla de reimpresión: Fecha, tipo, Factura, Total, idComprobante.
    {"ConsultaTiposComprobantesPorFecha", R"(
        SELECT Comprobantes.Fecha, TiposDeComprobantes.Tipo, Comprobantes.Factura, Comprobantes.Total,
               Comprobantes.idComprobante, TiposDeComprobantes.NombrePlantilla, TiposDeComprobantes.ModDocumento,
               Comprobantes.idTipoComprobante, Comprobantes.Nombre, Comprobantes.ImpresoFiscal
        FROM Comprobantes LEFT JOIN TiposDeComprobantes
             ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante)"},

    // Ventas por cliente: una venta sin cliente confirmado (idVendedor 0) también es venta, con el
    // nombre que quedó en el comprobante ("Cons.Final").
    {"consultaventasclientes", R"(
        SELECT Comprobantes.Fecha, CAST(COALESCE(Vendedores.Nombre, Comprobantes.Nombre) AS VARCHAR(100)) AS Nombre,
               Comprobantes.idVendedor, TiposDeComprobantes.Tipo,
               Comprobantes.Factura, Comprobantes.FormaPago,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.SubTotal)
                         ELSE ABS(Comprobantes.SubTotal) END AS NUMERIC(19,4)) AS SubTotal,
               CAST(CASE WHEN Comprobantes.Total < 0 THEN -ABS(Comprobantes.MontDescuento)
                         ELSE ABS(Comprobantes.MontDescuento) END AS NUMERIC(19,4)) AS MontDescuento,
               Comprobantes.Total, Comprobantes.EsComercial, Comprobantes.idComprobante
        FROM (Comprobantes LEFT JOIN Vendedores ON Comprobantes.idVendedor = Vendedores.idVendedor)
             LEFT JOIN TiposDeComprobantes ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante)"},

    // Artículos más vendidos: sólo líneas de comprobantes comerciales; las de una nota de crédito
    // restan, como en ConsultaDetalles.
    {"RankingArticulo", R"(
        SELECT Articulos.idArticulo, Articulos.Codigo, Articulos.Descripcion,
               SUM(CASE WHEN COALESCE(Comprobantes.TipoStock, 0) <> 0 THEN -DetalleComprobantes.Cantidad
                        ELSE DetalleComprobantes.Cantidad END) AS SumaDeCantidad,
               SUM(CASE WHEN COALESCE(Comprobantes.TipoStock, 0) <> 0 THEN -DetalleComprobantes.SubTotal
                        ELSE DetalleComprobantes.SubTotal END) AS SumaDeSubTotal
        FROM (DetalleComprobantes INNER JOIN Articulos ON DetalleComprobantes.idArticulo = Articulos.idArticulo)
             LEFT JOIN Comprobantes ON DetalleComprobantes.idComprobante = Comprobantes.idComprobante
        WHERE COALESCE(DetalleComprobantes.EsComercial, 0) <> 0
        GROUP BY Articulos.idArticulo, Articulos.Codigo, Articulos.Descripcion)"},

    // Clientes por importe comprado en comprobantes comerciales.
    {"RankingComisiones", R"(
        SELECT Vendedores.idVendedor, Vendedores.Nombre, COUNT(*) AS CuentaDeComprobantes,
               SUM(Comprobantes.Total) AS SumaDeTotal
        FROM Comprobantes INNER JOIN Vendedores ON Comprobantes.idVendedor = Vendedores.idVendedor
        WHERE COALESCE(Comprobantes.EsComercial, 0) <> 0
        GROUP BY Vendedores.idVendedor, Vendedores.Nombre)"},

    // Consultas del explorador de tablas: se muestran como vienen.
    {"_ConsultaArticulosPorRubro", R"(
        SELECT Rubros.Rubro, Articulos.Codigo, Articulos.Descripcion, Articulos.StockActual, Articulos.StockMinimo,
               Articulos.PrecioCosto, Articulos.PrecioVenta, Articulos.PrecioFinal, Articulos.CgoProveedor,
               Articulos.idArticulo, Articulos.idRubro
        FROM Articulos LEFT JOIN Rubros ON Articulos.idRubro = Rubros.idRubro)"},

    {"_ConsultaClientes", R"(
        SELECT Vendedores.idVendedor, Vendedores.Nombre, Vendedores.Domicilio, Vendedores.Localidad,
               Vendedores.CPostal, Vendedores.Telefono, Vendedores.Telefono2, Vendedores."e-mail" AS email,
               Vendedores.Cuit, TipoDeIva.TipoIva, Zonas.Zona, Vendedores.Empresa, Vendedores.Descuento,
               Vendedores.NroClienteVIP, Vendedores.PuntosVIP
        FROM (Vendedores LEFT JOIN Zonas ON Vendedores.idZona = Zonas.idZona)
             LEFT JOIN TipoDeIva ON Vendedores.idTipoIva = TipoDeIva.idTipoIva)"},

    {"_ConsultaCaja", R"(
        SELECT Caja.Fecha, Cuentas.Cuenta, Caja.Detalles, Caja.Ingreso, Caja.Egreso, Caja.FormaPago,
               Usuarios.NombreUsuario, Caja.idCaja, Caja.idComprobante
        FROM (Caja LEFT JOIN Cuentas ON Caja.idCuenta = Cuentas.idCuenta)
             LEFT JOIN Usuarios ON Caja.idUsuario = Usuarios.idUsuario)"},

    {"_ConsultaDetalleVentas", R"(
        SELECT Comprobantes.Fecha, TiposDeComprobantes.Tipo, Comprobantes.Factura, Comprobantes.Nombre,
               Articulos.Codigo, COALESCE(DetalleComprobantes.Descripcion, Articulos.Descripcion) AS Descripcion,
               DetalleComprobantes.Cantidad, DetalleComprobantes.Unitario, DetalleComprobantes.SubTotal,
               DetalleComprobantes.idComprobante
        FROM ((DetalleComprobantes INNER JOIN Comprobantes
                 ON DetalleComprobantes.idComprobante = Comprobantes.idComprobante)
              LEFT JOIN TiposDeComprobantes ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante)
             LEFT JOIN Articulos ON DetalleComprobantes.idArticulo = Articulos.idArticulo)"},

    // Las cuatro consultas de producción y comisiones. Donde el texto original repetía un nombre
    // de columna (Articulos y Articulos_1), la segunda lleva el sufijo _1. First() pasa a MIN().
    {"ConsultaFormulaProduccion", R"(
        SELECT Articulos.Codigo,
               MIN(FormulaProduccion.idItemFormula) AS PrimeroDeidItemFormula,
               MIN(FormulaProduccion.idArticuloFinal) AS PrimeroDeidArticuloFinal,
               MIN(FormulaProduccion.idArticuloMP) AS PrimeroDeidArticuloMP,
               SUM(FormulaProduccion.CostoTotal) AS SumaDeCostoTotal,
               MIN(Articulos.Descripcion) AS PrimeroDeDescripcion,
               SUM(FormulaProduccion.Cantidad) AS SumaDeCantidad,
               MIN(Articulos_1.Codigo) AS PrimeroDeCodigo,
               MIN(Articulos_1.Descripcion) AS PrimeroDeDescripcion1
        FROM (FormulaProduccion INNER JOIN Articulos ON FormulaProduccion.idArticuloFinal = Articulos.idArticulo)
             INNER JOIN Articulos AS Articulos_1 ON FormulaProduccion.idArticuloMP = Articulos_1.idArticulo
        GROUP BY Articulos.Codigo)"},

    {"ConsultaFormulaProduccionCompleta", R"(
        SELECT Articulos.Codigo, FormulaProduccion.idItemFormula, FormulaProduccion.idArticuloFinal,
               FormulaProduccion.idArticuloMP, FormulaProduccion.CostoTotal, Articulos.Descripcion,
               FormulaProduccion.Cantidad, Articulos_1.Codigo AS Codigo_1, Articulos_1.Descripcion AS Descripcion_1
        FROM (FormulaProduccion INNER JOIN Articulos ON FormulaProduccion.idArticuloFinal = Articulos.idArticulo)
             INNER JOIN Articulos AS Articulos_1 ON FormulaProduccion.idArticuloMP = Articulos_1.idArticulo)"},

    {"ConsultaRegistroProduccion", R"(
        SELECT Articulos.idArticulo, Articulos.Codigo, Articulos.Descripcion, RegistroProduccion.idRegistroProduccion,
               RegistroProduccion.Fecha, RegistroProduccion.CantidadProducida, RegistroProduccion.CostoManoObra,
               RegistroProduccion.CostoTotal, DetRegistroProduccion.idArticuloMP, DetRegistroProduccion.Cantidad,
               Articulos_1.Codigo AS Codigo_1, Articulos_1.Descripcion AS Descripcion_1,
               DetRegistroProduccion.CostoTotal AS CostoTotal_1
        FROM ((Articulos INNER JOIN RegistroProduccion ON Articulos.idArticulo = RegistroProduccion.idArticuloProducido)
              INNER JOIN DetRegistroProduccion
                 ON RegistroProduccion.idRegistroProduccion = DetRegistroProduccion.idRegistroProduccion)
             INNER JOIN Articulos AS Articulos_1 ON DetRegistroProduccion.idArticuloMP = Articulos_1.idArticulo)"},

    {"ConsultaComisionesVenta", R"(
        SELECT DetComisiones.idUsuario, DetComisiones.Fecha, DetComisiones.idDetComisiones, DetComisiones.Detalle,
               DetComisiones.idComprobante, DetComisiones.Porcentaje, DetComisiones.Importe, Usuarios.NombreCompleto,
               TiposDeComprobantes.Tipo, Comprobantes.Factura
        FROM ((DetComisiones INNER JOIN Usuarios ON DetComisiones.idUsuario = Usuarios.idUsuario)
              LEFT JOIN Comprobantes ON DetComisiones.idComprobante = Comprobantes.idComprobante)
             LEFT JOIN TiposDeComprobantes ON Comprobantes.idTipoComprobante = TiposDeComprobantes.idTipoComprobante)"},
};

} // namespace

const std::vector<Vista>& Vistas() { return kVistas; }

void CreaVistas(Almacen& a) {
    for (const Vista& v : kVistas)
        a.ejecuta(QStringLiteral("CREATE VIEW %1 AS %2").arg(QString::fromUtf8(v.nombre), v.textoPara(a.dialecto())));
}

void RehaceVista(Almacen& a, const char* nombre) {
    for (const Vista& v : kVistas) {
        if (qstrcmp(v.nombre, nombre) != 0) continue;
        const QString n = QString::fromUtf8(v.nombre);
        if (a.esPostgreSQL()) {
            a.ejecuta(QStringLiteral("CREATE OR REPLACE VIEW %1 AS %2").arg(n, v.textoPara(a.dialecto())));
        } else {
            a.ejecuta(QStringLiteral("DROP VIEW IF EXISTS ") + n);
            a.ejecuta(QStringLiteral("CREATE VIEW %1 AS %2").arg(n, v.textoPara(a.dialecto())));
        }
    }
}

} // namespace orv::esquema
