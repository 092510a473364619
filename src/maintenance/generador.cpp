#include "maintenance/generador.h"

#include "store/rutinas.h"

#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <algorithm>

namespace orv {

namespace {

constexpr qint64 kProveedores = 10;

// Serie de números 1..? como origen de filas; el límite es el último parámetro de la orden.
QString serie(Dialecto d) {
    if (d == Dialecto::PostgreSQL)
        return QStringLiteral(" FROM generate_series(CAST(1 AS BIGINT), CAST(? AS BIGINT)) AS n(i)");
    return QStringLiteral(" FROM (WITH RECURSIVE s(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM s WHERE i < ?) "
                          "SELECT i FROM s) AS n");
}

// Entero con ceros a la izquierda hasta `ancho` cifras; uno más largo queda entero, nunca se corta.
QString relleno(Dialecto d, const QString& expresion, int ancho) {
    const QString n = QString::number(ancho);
    if (d == Dialecto::SQLite) return QStringLiteral("printf('%0") + n + QStringLiteral("d', ") + expresion + QLatin1Char(')');
    const QString texto = QStringLiteral("CAST(") + expresion + QStringLiteral(" AS TEXT)");
    return QStringLiteral("CASE WHEN length(") + texto + QStringLiteral(") >= ") + n + QStringLiteral(" THEN ") + texto +
           QStringLiteral(" ELSE lpad(") + texto + QStringLiteral(", ") + n + QStringLiteral(", '0') END");
}


// Palabras que se combinan en las descripciones: producto, marca y presentación.
const char* const kProductos[] = {"Yerba",   "Arroz",   "Fideos",  "Galletitas", "Gaseosa", "Detergente",
                                  "Shampoo", "Cuaderno", "Alfajor", "Leche",      "Queso",   "Jamón",
                                  "Aceite",  "Azúcar",  "Harina",  "Café",       "Té",      "Mermelada",
                                  "Jabón",   "Lavandina", "Pilas", "Lápiz",      "Vino",    "Cerveza"};
const char* const kMarcas[] = {"La Serenísima", "Don Pedro", "Marolio", "Arcor", "Ledesma", "Cañuelas",
                               "Natura", "Sancor", "Bagley", "Terrabusi", "Rivadavia", "El Ñandú"};
const char* const kPresentaciones[] = {"500 g", "1 kg", "250 g", "1 l", "1,5 l", "x 6 u.", "x 12 u.", "2 kg", "750 cc",
                                       "100 g"};
// Prefijo con que cada proveedor numera sus artículos.
const char* const kPrefijosProveedor[] = {"ARC", "LSR", "MRL", "DPD", "LDS", "CNL", "NTR", "SNC", "BGL", "TRB"};

// CASE sobre `expresion` % (cantidad de palabras) que elige una de ellas.
template <size_t N>
QString eligePalabra(const QString& expresion, const char* const (&palabras)[N]) {
    QString r = QStringLiteral("CASE ") + expresion + QStringLiteral(" % ") + QString::number(N);
    for (size_t w = 0; w < N; ++w)
        r += QStringLiteral(" WHEN %1 THEN '%2'").arg(w).arg(QString::fromUtf8(palabras[w]));
    return r + QStringLiteral(" END");
}

void generaArticulos(Almacen& a, qint64 cantidad, qint64 rubrosPedidos) {
    const Dialecto d = a.dialecto();
    std::vector<qint64> proveedores;
    for (qint64 p = 1; p <= kProveedores; ++p)
        proveedores.push_back(a.inserta(
            QStringLiteral("INSERT INTO Proveedores (Nombre, RazonSocial, Cuit, CBU) VALUES (?, ?, '', '')"),
            {QStringLiteral("Contacto %1").arg(p), QStringLiteral("Proveedor generado %1 S.A.").arg(p)},
            QStringLiteral("idProveedor")));

    // Sin cantidad pedida, hasta 9 999 artículos por rubro, para que el código conserve sus cuatro
    // cifras de artículo.
    const qint64 rubros = rubrosPedidos > 0 ? rubrosPedidos : std::max<qint64>(50, (cantidad + 9998) / 9999);

    // Cada fila sale de su número i en el rubro y de j = i + un desplazamiento propio del rubro, que
    // mezcla las palabras y los números de proveedor entre rubros. Los valores del rubro van ligados
    // una sola vez, en la subconsulta.
    const QString codigo = QStringLiteral("prefijo || ") + relleno(d, QStringLiteral("i"), 4);
    const QString descripcion = eligePalabra(QStringLiteral("j"), kProductos) + QStringLiteral(" || ' ' || ") +
                                eligePalabra(QStringLiteral("(j / 24)"), kMarcas) + QStringLiteral(" || ' ' || ") +
                                eligePalabra(QStringLiteral("(j / 7)"), kPresentaciones);
    const QString cgoProveedor =
        QStringLiteral("proveedor || '-' || ") + relleno(d, QStringLiteral("((j * 7919) % 1000000)"), 6);
    const QString costo = QStringLiteral("((i * 7919 + d) % 500000 + 100)"); // centavos
    const QString margen = QStringLiteral("(20 + (i % 5) * 5)");              // por ciento
    // Venta = costo × (1 + margen / 100), al centavo.
    const QString venta =
        QStringLiteral("ROUND(") + costo + QStringLiteral(" * (100 + ") + margen + QStringLiteral(") / 100.0)");
    const QString sql =
        QStringLiteral("INSERT INTO Articulos (idRubro, IdProveedor, Codigo, Descripcion, StockActual, StockMinimo, "
                       "PrecioCosto, PrecioVenta, PrecioFinal, UtilidadPorcentaje, CgoProveedor, ImprimeCodigoBarra, "
                       "esMateriaPrima, Foto) SELECT idRubro, idProveedor, ") +
        codigo + QStringLiteral(", ") + descripcion + QStringLiteral(", i % 120, 5 + i % 10, ") + costo +
        QStringLiteral(" / 100.0, ") + venta + QStringLiteral(" / 100.0, ") + venta +
        QStringLiteral(" * 121 / 10000.0, ") + margen + QStringLiteral(", ") + cgoProveedor +
        QStringLiteral(", 0, CASE WHEN i % 50 = 0 THEN 1 ELSE 0 END, '' FROM (SELECT i, i + CAST(? AS BIGINT) AS j, "
                       "CAST(? AS BIGINT) AS d, CAST(? AS BIGINT) AS idRubro, CAST(? AS BIGINT) AS idProveedor, "
                       "CAST(? AS TEXT) AS prefijo, CAST(? AS TEXT) AS proveedor") +
        serie(d) + QStringLiteral(") AS s");

    for (qint64 r = 0; r < rubros; ++r) {
        const qint64 enRubro = cantidad / rubros + (r < cantidad % rubros ? 1 : 0);
        if (enRubro == 0) continue;
        const qint64 idRubro =
            a.inserta(QStringLiteral("INSERT INTO Rubros (Rubro, PuntosVIP) VALUES (?, ?)"),
                      {QStringLiteral("Rubro generado %1").arg(r + 1), double(1 + r % 3)}, QStringLiteral("idRubro"));
        const qint64 desplazamiento = r * 104729;
        // Las cifras del rubro con el ancho por omisión (dos), como al proponer un código.
        const QString prefijo = QStringLiteral("%1").arg(idRubro, 2, 10, QLatin1Char('0'));
        const size_t p = size_t(r % kProveedores);
        a.ejecuta(sql, {r * 1009 + 3, desplazamiento, idRubro, proveedores[p], prefijo,
                        QString::fromLatin1(kPrefijosProveedor[p]), enRubro});
    }
}

void generaCaja(Almacen& a, qint64 filas, qint64 porDia, const QDate& hasta) {
    const Dialecto d = a.dialecto();
    const qint64 ventas = buscaOAgrega(a, QStringLiteral("Cuentas"), QStringLiteral("idCuenta"), QStringLiteral("Cuenta"),
                                      QStringLiteral("Ventas Mostrador"));
    const qint64 compras = buscaOAgrega(a, QStringLiteral("Cuentas"), QStringLiteral("idCuenta"), QStringLiteral("Cuenta"),
                                       QStringLiteral("Pago a Proveedores"));
    const QVariant usuario = a.valor(QStringLiteral("SELECT MIN(idUsuario) FROM Usuarios"));

    // `porDia` filas por día; la última fila cae en `hasta`, así el número de fila sigue el orden de las fechas.
    const QString diasAtras = QStringLiteral("((? - i) / ") + QString::number(qMax<qint64>(1, porDia)) + QLatin1Char(')');
    const QString fecha = d == Dialecto::PostgreSQL
                              ? QStringLiteral("CAST(? AS DATE) - CAST(") + diasAtras + QStringLiteral(" AS INTEGER)")
                              : QStringLiteral("date(?, '-' || ") + diasAtras + QStringLiteral(" || ' days')");
    const QString monto = QStringLiteral("((i * 7919) % 99991 + 50) / 100.0");
    const QString sql =
        QStringLiteral("INSERT INTO Caja (idCuenta, idComprobante, Fecha, Detalles, Ingreso, Egreso, FormaPago, idUsuario) "
                       "SELECT CASE WHEN i % 10 = 0 THEN CAST(? AS INTEGER) ELSE CAST(? AS INTEGER) END, 0, ") +
        fecha +
        QStringLiteral(", CASE WHEN i % 10 = 0 THEN 'Compra de mercadería' ELSE 'VENTA : B0001-' || ") +
        relleno(d, QStringLiteral("i"), 8) + QStringLiteral(" END, CASE WHEN i % 10 = 0 THEN 0 ELSE ") + monto +
        QStringLiteral(" END, CASE WHEN i % 10 = 0 THEN ") + monto + QStringLiteral(" ELSE 0 END, 'EFVO', ?") + serie(d);
    a.ejecuta(sql, {compras, ventas, hasta.toString(Qt::ISODate), filas, usuario, filas});
}

// La fecha `dias` días antes de `hasta` (el primer parámetro), en el dialecto.
QString diasAntes(Dialecto d, const QString& dias) {
    return d == Dialecto::PostgreSQL ? QStringLiteral("CAST(? AS DATE) - CAST(") + dias + QStringLiteral(" AS INTEGER)")
                                     : QStringLiteral("date(?, '-' || ") + dias + QStringLiteral(" || ' days')");
}

// Los clientes, con una compra a cuenta y una cobranza de la mitad cada uno; el primero con
// `lineasGrande` líneas más, nueve de cada diez compras y la décima una cobranza. Devuelve su id.
qint64 generaClientes(Almacen& a, qint64 clientes, qint64 lineasGrande, const QDate& hasta) {
    const Dialecto d = a.dialecto();
    const qint64 zona = buscaOAgrega(a, QStringLiteral("Zonas"), QStringLiteral("idZona"), QStringLiteral("Zona"),
                                     QStringLiteral("General"));
    const qint64 antes = a.valor(QStringLiteral("SELECT COALESCE(MAX(idVendedor), 0) FROM Vendedores")).toLongLong();
    a.ejecuta(QStringLiteral("INSERT INTO Vendedores (Nombre, Domicilio, Localidad, Telefono, idZona, idTipoIva, Comision, "
                             "Descuento, PuntosVIP) SELECT 'Cliente ' || ") +
                  relleno(d, QStringLiteral("i"), 6) +
                  QStringLiteral(", 'Calle ' || i, 'Localidad ' || (i % 50), '', CAST(? AS INTEGER), 1, 0, 0, 0") + serie(d),
              {zona, clientes});
    const QString fin = hasta.toString(Qt::ISODate);
    const QString importe = QStringLiteral("(100 + idVendedor % 900)");
    a.ejecuta(QStringLiteral("INSERT INTO Comisiones (idVendedor, Fecha, Tipo, Comision, Liquidacion) SELECT idVendedor, ") +
                  diasAntes(d, QStringLiteral("(idVendedor % 60) + 10")) + QStringLiteral(", 'VENTA CTA CTE', ") + importe +
                  QStringLiteral(", 0 FROM Vendedores WHERE idVendedor > ? ORDER BY idVendedor"),
              {fin, antes});
    a.ejecuta(QStringLiteral("INSERT INTO Comisiones (idVendedor, Fecha, Tipo, Comision, Liquidacion) SELECT idVendedor, ") +
                  diasAntes(d, QStringLiteral("idVendedor % 10")) + QStringLiteral(", 'PAGO', 0, ") + importe +
                  QStringLiteral(" / 2.0 FROM Vendedores WHERE idVendedor > ? ORDER BY idVendedor"),
              {fin, antes});
    const qint64 grande = a.valor(QStringLiteral("SELECT MIN(idVendedor) FROM Vendedores WHERE idVendedor > ?"), {antes}).toLongLong();
    if (lineasGrande > 0)
        a.ejecuta(QStringLiteral("INSERT INTO Comisiones (idVendedor, Fecha, Tipo, Comision, Liquidacion) SELECT CAST(? AS INTEGER), ") +
                      diasAntes(d, QStringLiteral("((? - i) / 50)")) +
                      QStringLiteral(", CASE WHEN i % 10 = 0 THEN 'PAGO' ELSE 'VENTA CTA CTE' END, "
                                     "CASE WHEN i % 10 = 0 THEN 0 ELSE (i * 7919) % 99991 / 100.0 END, "
                                     "CASE WHEN i % 10 = 0 THEN 2000 ELSE 0 END") +
                      serie(d),
                  {grande, fin, lineasGrande, lineasGrande});
    return grande;
}

// Los comprobantes con sus dos líneas: primero las cabeceras, con el total de las dos líneas (con
// signo en las notas de crédito), y después las líneas desde las cabeceras nuevas. El número n de
// un comprobante (desde 1) decide su tipo, su cliente, su fecha y sus importes; los que no son del
// cliente grande se reparten entre los clientes que le siguen. Devuelve cuántos son del grande.
qint64 generaComprobantes(Almacen& a, qint64 cantidad, qint64 porDia, qint64 delGrande, qint64 idGrande, const QDate& hasta) {
    const Dialecto d = a.dialecto();
    const QString tipo = QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, Correlativo, DescuentaStock, "
                                        "RegistraCaja, OperacionInversa, EsComercial, NombrePlantilla) VALUES (?, 'B', ?, ?, 0, 0, ?, 1, '')");
    const qint64 factura = a.inserta(tipo, {QStringLiteral("FACTURA B"), QStringLiteral("0001"), cantidad, 0},
                                     QStringLiteral("idTipoComprobante"));
    const qint64 nota = a.inserta(tipo, {QStringLiteral("NOTA DE CREDITO B"), QStringLiteral("0002"), cantidad / 50, 1},
                                  QStringLiteral("idTipoComprobante"));
    const qint64 antes = a.valor(QStringLiteral("SELECT COALESCE(MAX(idComprobante), 0) FROM Comprobantes")).toLongLong();
    const QVariant usuario = a.valor(QStringLiteral("SELECT MIN(idUsuario) FROM Usuarios"));
    QSqlQuery rangos = a.consulta(QStringLiteral("SELECT MIN(idVendedor), MAX(idVendedor), MIN(ar.idArticulo), MAX(ar.idArticulo) "
                                                 "FROM Vendedores, (SELECT MIN(idArticulo) AS idArticulo FROM Articulos "
                                                 "UNION ALL SELECT MAX(idArticulo) FROM Articulos) AS ar"));
    rangos.next();
    // Los demás clientes son los que siguen al grande (los generados con él).
    const qint64 clientes = std::max<qint64>(1, rangos.value(1).toLongLong() - idGrande);
    const qint64 primerCliente = rangos.value(1).toLongLong() > idGrande ? idGrande + 1 : idGrande;
    const qint64 primerArticulo = rangos.value(2).toLongLong(), articulos = rangos.value(3).toLongLong() - primerArticulo + 1;
    rangos.finish();
    const qint64 paso = delGrande > 0 ? std::max<qint64>(1, cantidad / delGrande) : 0;

    // Importe de la línea l (1 o 2) del comprobante n: de 0,50 a 1 000,40.
    const auto linea = [](const QString& n, const QString& l) {
        return QStringLiteral("((") + n + QStringLiteral(" * 7919 + ") + l + QStringLiteral(" * 104729) % 99991 + 50) / 100.0");
    };
    const QString signo = QStringLiteral("CASE WHEN i % 50 = 0 THEN -1 ELSE 1 END");
    const QString total = signo + QStringLiteral(" * (") + linea(QStringLiteral("i"), QStringLiteral("1")) + QStringLiteral(" + ") +
                          linea(QStringLiteral("i"), QStringLiteral("2")) + QLatin1Char(')');
    const QString cliente = QString::number(primerCliente) + QStringLiteral(" + i % ") + QString::number(clientes);
    a.ejecuta(QStringLiteral("INSERT INTO Comprobantes (Factura, idTipoComprobante, idVendedor, Fecha, Nombre, FormaPago, HizoCaja, "
                             "HizoStock, EsComercial, TipoStock, SubTotal, ImporteNeto, Total, idUsuario, idEmpresa, ImpresoFiscal) "
                             "SELECT 'B0001-' || ") +
                  relleno(d, QStringLiteral("i"), 8) + QStringLiteral(", CASE WHEN i % 50 = 0 THEN %1 ELSE %2 END, ").arg(nota).arg(factura) +
                  (paso > 0 ? QStringLiteral("CASE WHEN (i - 1) % %1 = 0 THEN %2 ELSE %3 END").arg(paso).arg(idGrande).arg(cliente) : cliente) +
                  QStringLiteral(", ") + diasAntes(d, QStringLiteral("((? - i) / ") + QString::number(qMax<qint64>(1, porDia)) + u')') +
                  QStringLiteral(", 'Cliente generado', 'EFVO', 0, 0, 1, CASE WHEN i % 50 = 0 THEN 1 ELSE 0 END, ") + total +
                  QStringLiteral(", ") + total + QStringLiteral(", ") + total + QStringLiteral(", CAST(? AS INTEGER), 1, 'S'") + serie(d),
              {hasta.toString(Qt::ISODate), cantidad, usuario, cantidad});
    const QString n = QStringLiteral("(CAST(c.idComprobante AS BIGINT) - ") + QString::number(antes) + u')';
    a.ejecuta(QStringLiteral("INSERT INTO DetalleComprobantes (idComprobante, idArticulo, Cantidad, Unitario, SubTotal, costounitario, "
                             "Descripcion, Fecha, EsComercial, idUsuario) SELECT c.idComprobante, ") +
                  QString::number(primerArticulo) + QStringLiteral(" + (") + n + QStringLiteral(" * 31 + l.n * 17) % ") +
                  QString::number(articulos) + QStringLiteral(", 1, ") + linea(n, QStringLiteral("l.n")) + QStringLiteral(", ") +
                  linea(n, QStringLiteral("l.n")) +
                  QStringLiteral(", 0, 'Artículo generado', c.Fecha, 1, c.idUsuario FROM Comprobantes c "
                                 "CROSS JOIN (SELECT 1 AS n UNION ALL SELECT 2) l WHERE c.idComprobante > ?"),
              {antes});
    return paso > 0 ? (cantidad + paso - 1) / paso : 0;
}

} // namespace

bool esEgresoFilaCaja(qint64 n) { return n % 10 == 0; }

qint64 centavosFilaCaja(qint64 n) { return (n * 7919) % 99991 + 50; }

ResumenGeneracion generaAlmacenGrande(Almacen& a, const OpcionesGenerador& opciones) {
    ResumenGeneracion r;
    const QDate hasta = opciones.hasta.isValid() ? opciones.hasta : QDate::currentDate();
    Transaccion t(a);
    if (opciones.articulos > 0) generaArticulos(a, opciones.articulos, opciones.rubros);
    if (opciones.filasCaja > 0) generaCaja(a, opciones.filasCaja, opciones.filasCajaPorDia, hasta);
    if (opciones.clientes > 0)
        r.idClienteGrande = generaClientes(a, opciones.clientes, opciones.lineasClienteGrande, hasta);
    if (opciones.comprobantes > 0)
        r.comprobantesClienteGrande =
            generaComprobantes(a, opciones.comprobantes, opciones.comprobantesPorDia, opciones.comprobantesClienteGrande,
                               r.idClienteGrande > 0 ? r.idClienteGrande : 1, hasta);
    t.confirmar();
    r.clientes = std::max<qint64>(0, opciones.clientes);

    r.articulos = std::max<qint64>(0, opciones.articulos);
    r.filasCaja = std::max<qint64>(0, opciones.filasCaja);
    r.comprobantes = std::max<qint64>(0, opciones.comprobantes);
    for (qint64 n = 1; n <= r.filasCaja; ++n)
        (esEgresoFilaCaja(n) ? r.egresos : r.ingresos) += centavosFilaCaja(n) * 100;
    return r;
}

} // namespace orv
