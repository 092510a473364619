#include "maintenance/generador.h"

#include "store/rutinas.h"

#include <QString>
#include <QStringList>
#include <algorithm>

namespace orv {

namespace {

constexpr qint64 kFilasPorDia = 300;
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


void generaArticulos(Almacen& a, qint64 cantidad) {
    const Dialecto d = a.dialecto();
    std::vector<qint64> proveedores;
    for (qint64 p = 1; p <= kProveedores; ++p)
        proveedores.push_back(a.inserta(
            QStringLiteral("INSERT INTO Proveedores (Nombre, RazonSocial, Cuit, CBU) VALUES (?, ?, '', '')"),
            {QStringLiteral("Contacto %1").arg(p), QStringLiteral("Proveedor generado %1 S.A.").arg(p)},
            QStringLiteral("idProveedor")));

    // Hasta 9 999 artículos por rubro, para que el código conserve sus cuatro cifras de artículo.
    const qint64 rubros = std::max<qint64>(50, (cantidad + 9998) / 9999);
    static const char* const kPalabras[] = {"Yerba", "Arroz", "Fideos", "Galletitas", "Gaseosa", "Detergente",
                                            "Shampoo", "Cuaderno", "Alfajor", "Leche", "Queso", "Jamón"};
    QString descripcion = QStringLiteral("CASE i % 12");
    for (int w = 0; w < 12; ++w)
        descripcion += QStringLiteral(" WHEN %1 THEN '%2'").arg(w).arg(QString::fromUtf8(kPalabras[w]));
    descripcion += QStringLiteral(" END");

    // Código: dígitos del rubro (ligados, ya con sus ceros) y número del artículo en el rubro.
    const QString codigo = QStringLiteral("? || ") + relleno(d, QStringLiteral("i"), 4);
    const QString costo = QStringLiteral("((i * 7919 + ?) % 500000 + 100)");       // centavos
    const QString margen = QStringLiteral("(20 + (i % 5) * 5)");                     // por ciento
    // Venta = costo × (1 + margen / 100), al centavo.
    const QString venta =
        QStringLiteral("ROUND(") + costo + QStringLiteral(" * (100 + ") + margen + QStringLiteral(") / 100.0)");
    // El código y el costo se repiten en la orden: sus parámetros van en el orden del texto.
    const QString sql =
        QStringLiteral("INSERT INTO Articulos (idRubro, IdProveedor, Codigo, Descripcion, StockActual, StockMinimo, "
                       "PrecioCosto, PrecioVenta, PrecioFinal, UtilidadPorcentaje, CgoProveedor, ImprimeCodigoBarra, "
                       "esMateriaPrima, Foto) SELECT ?, ?, ") +
        codigo + QStringLiteral(", ") + descripcion + QStringLiteral(" || ' ' || ") + codigo +
        QStringLiteral(", i % 120, 5 + i % 10, ") + costo + QStringLiteral(" / 100.0, ") + venta + QStringLiteral(" / 100.0, ") +
        venta + QStringLiteral(" * 121 / 10000.0, ") + margen + QStringLiteral(", 'P' || ") + codigo +
        QStringLiteral(", 0, CASE WHEN i % 50 = 0 THEN 1 ELSE 0 END, ''") + serie(d);

    for (qint64 r = 0; r < rubros; ++r) {
        const qint64 enRubro = cantidad / rubros + (r < cantidad % rubros ? 1 : 0);
        if (enRubro == 0) continue;
        const qint64 idRubro =
            a.inserta(QStringLiteral("INSERT INTO Rubros (Rubro, PuntosVIP) VALUES (?, ?)"),
                      {QStringLiteral("Rubro generado %1").arg(r + 1), double(1 + r % 3)}, QStringLiteral("idRubro"));
        const qint64 desplazamiento = r * 104729;
        const QString prefijo = QStringLiteral("%1").arg(idRubro, 2, 10, QLatin1Char('0'));
        a.ejecuta(sql, {idRubro, proveedores[size_t(r % kProveedores)], prefijo, prefijo, desplazamiento,
                        desplazamiento, desplazamiento, prefijo, enRubro});
    }
}

void generaCaja(Almacen& a, qint64 filas, const QDate& hasta) {
    const Dialecto d = a.dialecto();
    const qint64 ventas = buscaOAgrega(a, QStringLiteral("Cuentas"), QStringLiteral("idCuenta"), QStringLiteral("Cuenta"),
                                      QStringLiteral("Ventas Mostrador"));
    const qint64 compras = buscaOAgrega(a, QStringLiteral("Cuentas"), QStringLiteral("idCuenta"), QStringLiteral("Cuenta"),
                                       QStringLiteral("Pago a Proveedores"));
    const QVariant usuario = a.valor(QStringLiteral("SELECT MIN(idUsuario) FROM Usuarios"));

    // 300 filas por día; la última fila cae en `hasta`, así el número de fila sigue el orden de las fechas.
    const QString diasAtras = QStringLiteral("((? - i) / ") + QString::number(kFilasPorDia) + QLatin1Char(')');
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

} // namespace

bool esEgresoFilaCaja(qint64 n) { return n % 10 == 0; }

qint64 centavosFilaCaja(qint64 n) { return (n * 7919) % 99991 + 50; }

ResumenGeneracion generaAlmacenGrande(Almacen& a, const OpcionesGenerador& opciones) {
    ResumenGeneracion r;
    const QDate hasta = opciones.hasta.isValid() ? opciones.hasta : QDate::currentDate();
    Transaccion t(a);
    if (opciones.articulos > 0) generaArticulos(a, opciones.articulos);
    if (opciones.filasCaja > 0) generaCaja(a, opciones.filasCaja, hasta);
    t.confirmar();

    r.articulos = std::max<qint64>(0, opciones.articulos);
    r.filasCaja = std::max<qint64>(0, opciones.filasCaja);
    for (qint64 n = 1; n <= r.filasCaja; ++n)
        (esEgresoFilaCaja(n) ? r.egresos : r.ingresos) += centavosFilaCaja(n) * 100;
    return r;
}

} // namespace orv
