// Definiciones de las tablas y los índices del sistema.

#include "store/esquema.h"
#include "store/esquema_interno.h"

namespace orv::esquema {

namespace {

// ---------------------------------------------------------------------------------------------
// Tablas. Largos de texto: nombres y descripciones 100, códigos 50, notas 255, teléfonos 50,
// CUIT 30, códigos postales 20; las columnas de largo fijado por la historia del almacén lo conservan.
// Importes con valor 0 por omisión; las marcas sí/no, 0.
// ---------------------------------------------------------------------------------------------
const char* const kTablas[] = {
    // Catálogo
    R"(CREATE TABLE Articulos (
        idArticulo {CONTADOR},
        idRubro {LARGO},
        IdProveedor {LARGO},
        Codigo {TEXTO(50)},
        Descripcion {MEMO},
        DescripcionMatriz {TEXTO(50)},
        StockActual {DOBLE} DEFAULT 0,
        StockMinimo {DOBLE} DEFAULT 0,
        PrecioCosto {DINERO} DEFAULT 0,
        PrecioVenta {DINERO} DEFAULT 0,
        PrecioFinal {DINERO} DEFAULT 0,
        UtilidadPorcentaje {DOBLE} DEFAULT 0,
        CgoProveedor {TEXTO(50)},
        ImprimeCodigoBarra {SINO} DEFAULT 0,
        esMateriaPrima {SINO} DEFAULT 0,
        Foto {TEXTO(255)},
        UltimaFechaCompra {FECHA},
        UltimaFechaVenta {FECHA}))",
    R"(CREATE TABLE Rubros (
        idRubro {CONTADOR},
        Rubro {TEXTO(100)},
        PuntosVIP {DOBLE} DEFAULT 0))",
    R"(CREATE TABLE Matriz (
        idMatriz {CONTADOR},
        Tipo {TEXTO(40)},
        Valor {TEXTO(40)}))",
    R"(CREATE TABLE FormulaProduccion (
        idItemFormula {CONTADOR},
        idArticuloFinal {LARGO},
        idArticuloMP {LARGO},
        Cantidad {DOBLE} DEFAULT 0,
        CostoTotal {DINERO} DEFAULT 0))",
    R"(CREATE TABLE RegistroProduccion (
        idRegistroProduccion {CONTADOR},
        Fecha {FECHA},
        idArticuloProducido {LARGO},
        CantidadProducida {DOBLE} DEFAULT 0,
        CostoManoObra {DINERO} DEFAULT 0,
        CostoTotal {DINERO} DEFAULT 0))",
    R"(CREATE TABLE DetRegistroProduccion (
        idDetReg {CONTADOR},
        idRegistroProduccion {LARGO},
        idArticuloMP {LARGO},
        Cantidad {DOBLE} DEFAULT 0,
        CostoTotal {DINERO} DEFAULT 0))",
    R"(CREATE TABLE Etiquetas (
        idEtiqueta {CONTADOR},
        Nombre {TEXTO(100)},
        No_Ancho {DOBLE} DEFAULT 0,
        No_Largo {DOBLE} DEFAULT 0,
        Margen_Izq {DOBLE} DEFAULT 0,
        Margen_Sup {DOBLE} DEFAULT 0,
        Dist_Colum {DOBLE} DEFAULT 0,
        Dist_Filas {DOBLE} DEFAULT 0,
        Etiq_Ancho {DOBLE} DEFAULT 0,
        Etiq_Largo {DOBLE} DEFAULT 0,
        TamanoFuente {DOBLE} DEFAULT 0))",

    // Stock
    R"(CREATE TABLE MovimientoStock (
        idMovimientoStock {CONTADOR},
        idArticulo {LARGO},
        Fecha {FECHA},
        idTipoMovimiento {LARGO},
        Comprobante {TEXTO(50)},
        idComprobante {LARGO},
        Ingreso {DOBLE} DEFAULT 0,
        Egreso {DOBLE} DEFAULT 0,
        Observaciones {TEXTO(255)}))",
    R"(CREATE TABLE TiposMovimientoStock (
        idTipoMovimiento {CONTADOR},
        TipoMovimientoStock {TEXTO(50)}))",

    // Ventas
    R"(CREATE TABLE TiposDeComprobantes (
        idTipoComprobante {CONTADOR},
        Tipo {TEXTO(50)},
        Letra {TEXTO(5)},
        PuntoDeVenta {TEXTO(10)},
        Correlativo {LARGO} DEFAULT 0,
        DescuentaStock {SINO} DEFAULT 0,
        RegistraCaja {SINO} DEFAULT 0,
        OperacionInversa {SINO} DEFAULT 0,
        EsComercial {SINO} DEFAULT 0,
        NombrePlantilla {TEXTO(255)},
        ModDocumento {ENTERO}))",
    R"(CREATE TABLE Comprobantes (
        idComprobante {CONTADOR},
        Factura {TEXTO(30)},
        idTipoComprobante {LARGO},
        idVendedor {LARGO},
        idTipoIva {LARGO},
        Fecha {FECHA},
        Nombre {TEXTO(100)},
        Cuit {TEXTO(30)},
        FormaPago {TEXTO(50)},
        HizoCaja {SINO} DEFAULT 0,
        HizoStock {SINO} DEFAULT 0,
        EsComercial {SINO} DEFAULT 0,
        TipoStock {LARGO} DEFAULT 0,
        SubTotal {DINERO} DEFAULT 0,
        MontDescuento {DINERO} DEFAULT 0,
        Total {DINERO} DEFAULT 0,
        PorcDescuento {DOBLE} DEFAULT 0,
        ImporteNeto {DINERO} DEFAULT 0,
        ImporteIVA {DINERO} DEFAULT 0,
        PorcentajeIVA {DOBLE} DEFAULT 0,
        SuPago {DINERO} DEFAULT 0,
        Cupon {TEXTO(30)},
        Remito {TEXTO(30)},
        Observaciones {MEMO},
        idEmpresa {LARGO},
        idUsuario {LARGO},
        idVendio {LARGO},
        Comision {DOBLE} DEFAULT 0,
        ImpresoFiscal {TEXTO(1)}))",
    R"(CREATE TABLE DetalleComprobantes (
        idDetalle {CONTADOR},
        idComprobante {LARGO},
        idArticulo {LARGO},
        Cantidad {DOBLE} DEFAULT 0,
        Unitario {DINERO} DEFAULT 0,
        SubTotal {DINERO} DEFAULT 0,
        costounitario {DINERO} DEFAULT 0,
        Sn {TEXTO(50)},
        Descripcion {MEMO},
        Fecha {FECHA},
        EsComercial {SINO} DEFAULT 0,
        idUsuario {LARGO}))",
    R"(CREATE TABLE TmpFac (
        idTmpFac {CONTADOR},
        idArticulo {LARGO},
        Codigo {TEXTO(50)},
        Descripcion {MEMO},
        Cantidad {DOBLE} DEFAULT 0,
        Unitario {DINERO} DEFAULT 0,
        SubTotal {DINERO} DEFAULT 0,
        Sn {TEXTO(50)},
        PCRed {LARGO}))",

    // Clientes, vendedores y puntos
    R"(CREATE TABLE Vendedores (
        idVendedor {CONTADOR},
        Nombre {TEXTO(100)},
        Domicilio {TEXTO(100)},
        Localidad {TEXTO(100)},
        Telefono {TEXTO(50)},
        Telefono2 {TEXTO(50)},
        "e-mail" {TEXTO(100)},
        Cuit {TEXTO(30)},
        Empresa {TEXTO(50)},
        CPostal {TEXTO(10)},
        Comision {DOBLE} DEFAULT 0,
        Descuento {DOBLE} DEFAULT 0,
        idZona {LARGO},
        idTipoIva {LARGO},
        idTipoFormaPago {LARGO},
        NroClienteVIP {TEXTO(30)},
        PuntosVIP {LARGO} DEFAULT 0))",
    R"(CREATE TABLE Zonas (
        idZona {CONTADOR},
        Zona {TEXTO(50)}))",
    R"(CREATE TABLE Localidades (
        idLocalidad {CONTADOR},
        Localidad {TEXTO(100)}))",
    R"(CREATE TABLE TipoDeIva (
        idTipoIva {CONTADOR},
        TipoIva {TEXTO(50)},
        Fiscal {TEXTO(1)}))",
    R"(CREATE TABLE Comisiones (
        idCuentaVendedor {CONTADOR},
        idVendedor {LARGO},
        idComprobante {LARGO},
        Fecha {FECHA},
        Tipo {TEXTO(50)},
        Comision {DINERO} DEFAULT 0,
        Liquidacion {DINERO} DEFAULT 0))",
    R"(CREATE TABLE DetComisiones (
        idDetComisiones {CONTADOR},
        Fecha {FECHA},
        Detalle {TEXTO(20)},
        idUsuario {LARGO},
        idComprobante {LARGO},
        Porcentaje {DOBLE} DEFAULT 0,
        Importe {DINERO} DEFAULT 0))",
    R"(CREATE TABLE Vip (
        idVip {CONTADOR},
        idCliente {LARGO},
        Fecha {FECHA},
        idUsuario {LARGO},
        idComprobante {LARGO},
        PuntosVIP {LARGO} DEFAULT 0))",
    R"(CREATE TABLE TablaVIP (
        idTablaVIP {CONTADOR},
        idArticulo {LARGO},
        Cantidad {DOBLE} DEFAULT 0,
        VigenciaDESDE {FECHA},
        VigenciaHASTA {FECHA},
        PuntosRequeridos {DOBLE} DEFAULT 0))",

    // Proveedores y compras
    R"(CREATE TABLE Proveedores (
        idProveedor {CONTADOR},
        Nombre {TEXTO(100)},
        RazonSocial {TEXTO(100)},
        Cuit {TEXTO(30)},
        Telefono {TEXTO(50)},
        Telefono2 {TEXTO(50)},
        email {TEXTO(100)},
        Direccion {TEXTO(100)},
        CBU {TEXTO(50)},
        CPostal {TEXTO(10)},
        BancoNombre {TEXTO(50)}))",
    R"(CREATE TABLE Compras (
        idCompra {CONTADOR},
        LetComprobante {TEXTO(5)},
        TipComprobante {TEXTO(30)},
        SucComprobante {LARGO},
        NroComprobante {LARGO},
        idProveedor {LARGO},
        idTipoFormaPago {LARGO},
        idCta {LARGO},
        idFPago {LARGO},
        Fecha {FECHA},
        Cancelada {SINO} DEFAULT 0,
        RegistraCaja {SINO} DEFAULT 0,
        RegistraStock {SINO} DEFAULT 0,
        Neto {DINERO} DEFAULT 0,
        Iva1 {DINERO} DEFAULT 0,
        Total {DINERO} DEFAULT 0,
        Tasa1 {DOBLE} DEFAULT 0,
        Referencia {TEXTO(254)},
        Descuento {DOBLE} DEFAULT 0,
        MontoDescuento {DINERO} DEFAULT 0))",
    R"(CREATE TABLE DetCompras (
        idDetCompra {CONTADOR},
        idCompra {LARGO},
        idProveedor {LARGO},
        idArticulo {LARGO},
        Cantidad {DOBLE} DEFAULT 0,
        PrecioUnitario {DINERO} DEFAULT 0,
        SubTotal {DINERO} DEFAULT 0))",
    R"(CREATE TABLE TmpFacCompra (
        idTmpFacCompra {CONTADOR},
        idArticulo {LARGO},
        Codigo {TEXTO(50)},
        Descripcion {MEMO},
        Cantidad {DOBLE} DEFAULT 0,
        Unitario {DINERO} DEFAULT 0,
        SubTotal {DINERO} DEFAULT 0))",
    R"(CREATE TABLE CtaProve (
        idMovCta {CONTADOR},
        idProveedor {LARGO},
        idCompra {LARGO},
        idCuenta {LARGO},
        Fecha {FECHA},
        Detalle {TEXTO(255)},
        Referencia {TEXTO(100)},
        Debe {DINERO} DEFAULT 0,
        Haber {DINERO} DEFAULT 0))",

    // Caja, usuarios y empresa
    R"(CREATE TABLE Caja (
        idCaja {CONTADOR},
        idCuenta {LARGO},
        idComprobante {LARGO},
        Fecha {FECHA},
        Detalles {TEXTO(254)},
        Ingreso {DINERO} DEFAULT 0,
        Egreso {DINERO} DEFAULT 0,
        FormaPago {TEXTO(50)},
        idUsuario {LARGO}))",
    R"(CREATE TABLE Cuentas (
        idCuenta {CONTADOR},
        Cuenta {TEXTO(100)}))",
    R"(CREATE TABLE FormasDePago (
        idTipoFormaPago {CONTADOR},
        FormaPago {TEXTO(50)},
        EsACuenta {SINO} DEFAULT 0,
        EsTarjetaCredito {SINO} DEFAULT 0))",
    R"(CREATE TABLE CorteCaja (
        idCorte {CONTADOR},
        FECHA {FECHA}))",
    R"(CREATE TABLE Usuarios (
        idUsuario {CONTADOR},
        NombreCompleto {TEXTO(100)},
        NombreUsuario {TEXTO(50)},
        Contrasenia {TEXTO(255)},
        idNivel {LARGO},
        Comision {DOBLE} DEFAULT 0))",
    // Niveles: las columnas de permiso se agregan desde columnasPermiso().
    R"(CREATE TABLE Empresa (
        idEmpresa {CONTADOR},
        NombreEmpresa {TEXTO(100)},
        NombreFantasia {TEXTO(100)},
        Direccion {TEXTO(100)},
        CgoPostal {TEXTO(20)},
        Telefono {TEXTO(50)},
        email {TEXTO(100)},
        web {TEXTO(100)},
        Cuit {TEXTO(30)},
        CondicionIva {TEXTO(50)},
        InicioActividades {FECHA}))",
};

// Índices: los que el almacén tuvo siempre (las claves ya tienen el suyo) y los que pide la
// rapidez de un comercio. El nombre lleva la tabla delante para ser único en la base.
// Articulos.IdProveedor queda deliberadamente sin índice.
const char* const kIndices[] = {
    "CREATE INDEX Vendedores_NroClienteVIP ON Vendedores (NroClienteVIP)",
    "CREATE INDEX Vendedores_Nombre ON Vendedores (Nombre)",
    "CREATE INDEX TablaVIP_idArticulo ON TablaVIP (idArticulo)",
    "CREATE INDEX TablaVIP_VigenciaDESDE ON TablaVIP (VigenciaDESDE)",
    "CREATE INDEX TablaVIP_VigenciaHASTA ON TablaVIP (VigenciaHASTA)",
    "CREATE INDEX Vip_idCliente ON Vip (idCliente)",
    "CREATE INDEX Vip_idUsuario ON Vip (idUsuario)",
    "CREATE INDEX Vip_Fecha ON Vip (Fecha)",
    "CREATE INDEX Vip_idComprobante ON Vip (idComprobante)",
    "CREATE INDEX Comprobantes_idVendio ON Comprobantes (idVendio)",
    "CREATE INDEX Comprobantes_ImpresoFiscal ON Comprobantes (ImpresoFiscal)",
    "CREATE INDEX Comprobantes_idUsuario ON Comprobantes (idUsuario)",
    "CREATE INDEX Comprobantes_Fecha ON Comprobantes (Fecha)",
    "CREATE INDEX Comprobantes_idVendedor ON Comprobantes (idVendedor)",
    "CREATE INDEX DetComisiones_Fecha ON DetComisiones (Fecha)",
    "CREATE INDEX DetComisiones_idUsuario ON DetComisiones (idUsuario)",
    "CREATE INDEX DetComisiones_idComprobante ON DetComisiones (idComprobante)",
    "CREATE UNIQUE INDEX CorteCaja_Fecha ON CorteCaja (FECHA)",
    "CREATE INDEX Caja_idUsuario ON Caja (idUsuario)",
    "CREATE INDEX Caja_Fecha ON Caja (Fecha)",
    "CREATE INDEX Caja_idComprobante ON Caja (idComprobante)",
    "CREATE INDEX DetalleComprobantes_idUsuario ON DetalleComprobantes (idUsuario)",
    "CREATE INDEX DetalleComprobantes_idComprobante ON DetalleComprobantes (idComprobante)",
    "CREATE INDEX DetalleComprobantes_idArticulo ON DetalleComprobantes (idArticulo)",
    "CREATE INDEX Articulos_DescripcionMatriz ON Articulos (DescripcionMatriz)",
    "CREATE INDEX Articulos_esMateriaPrima ON Articulos (esMateriaPrima)",
    "CREATE INDEX Articulos_Codigo ON Articulos (Codigo)",
    "CREATE INDEX Articulos_CgoProveedor ON Articulos (CgoProveedor)",
    "CREATE INDEX Articulos_idRubro ON Articulos (idRubro)",
    "CREATE INDEX FormulaProduccion_idArticuloFinal ON FormulaProduccion (idArticuloFinal)",
    "CREATE INDEX FormulaProduccion_idArticuloMP ON FormulaProduccion (idArticuloMP)",
    "CREATE INDEX RegistroProduccion_Fecha ON RegistroProduccion (Fecha)",
    "CREATE INDEX RegistroProduccion_idArticuloProducido ON RegistroProduccion (idArticuloProducido)",
    "CREATE INDEX DetRegistroProduccion_idRegistroProduccion ON DetRegistroProduccion (idRegistroProduccion)",
    "CREATE INDEX DetRegistroProduccion_idArticuloMP ON DetRegistroProduccion (idArticuloMP)",
    "CREATE INDEX MovimientoStock_idArticulo ON MovimientoStock (idArticulo)",
    "CREATE INDEX MovimientoStock_Fecha ON MovimientoStock (Fecha)",
    "CREATE INDEX MovimientoStock_idComprobante ON MovimientoStock (idComprobante)",
    "CREATE INDEX TmpFac_PCRed ON TmpFac (PCRed)",
    "CREATE INDEX Comisiones_idVendedor ON Comisiones (idVendedor)",
    "CREATE INDEX Comisiones_idComprobante ON Comisiones (idComprobante)",
    "CREATE INDEX CtaProve_idProveedor ON CtaProve (idProveedor)",
    "CREATE INDEX CtaProve_idCompra ON CtaProve (idCompra)",
    "CREATE INDEX Compras_idProveedor ON Compras (idProveedor)",
    "CREATE INDEX Compras_Fecha ON Compras (Fecha)",
    "CREATE INDEX DetCompras_idCompra ON DetCompras (idCompra)",
    "CREATE INDEX Usuarios_NombreUsuario ON Usuarios (NombreUsuario)",
};

QString tablaNiveles() {
    QString s = QStringLiteral("CREATE TABLE Niveles (idNivel {CONTADOR}, Nombre {TEXTO(50)}, "
                               "UsuarioSuper {SINO} DEFAULT 0");
    for (const QString& c : columnasPermiso()) s += QStringLiteral(", ") + c + QStringLiteral(" {SINO} DEFAULT 0");
    return s + QLatin1Char(')');
}

} // namespace

QStringList DefinicionesDeTablas() {
    QStringList r;
    for (const char* t : kTablas) r << QString::fromUtf8(t);
    return r << tablaNiveles();
}

QStringList DefinicionesDeIndices() {
    QStringList r;
    for (const char* i : kIndices) r << QString::fromUtf8(i);
    return r;
}

} // namespace orv::esquema
