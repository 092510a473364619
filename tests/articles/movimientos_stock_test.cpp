// Movimientos de stock a mano: el ajuste y su borrado con reversión, la corrección de la grilla
// y el blanqueo, comparando filas enteras del diario y de los artículos, en los dos motores.

#include "apoyo/base_prueba.h"
#include "articles/movimientos_stock.h"
#include "apoyo/filas.h"
#include "store/actualizacion.h"

#include <functional>

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

const QDate kHoy(2026, 11, 23);

class MovimientosStock : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (idArticulo, Codigo, Descripcion, StockActual, StockMinimo) VALUES "
                                         "(1, '010001', 'Yerba', 10, 2), (2, '010002', 'Azucar', NULL, 1), "
                                         "(3, '010003', 'Arroz', 3, 0)"));
        compra_ = *IdTipoMovimiento(almacen(), kTipoCompra);
    }
    qint64 ajusta(qint64 idArticulo, const char* cantidad, bool suma, const char* comprobante = "") {
        return RegistraAjusteStock(almacen(), {idArticulo, compra_, QString::fromUtf8(comprobante), QString::fromUtf8(cantidad), suma},
                                   kHoy);
    }
    QStringList stock() {
        return Filas(almacen(), QStringLiteral("SELECT idArticulo, StockActual, StockMinimo FROM Articulos ORDER BY idArticulo"));
    }
    QStringList diario() {
        return Filas(almacen(), QStringLiteral("SELECT idArticulo, Fecha, idTipoMovimiento, Comprobante, Ingreso, Egreso, "
                                               "idComprobante FROM MovimientoStock ORDER BY idMovimientoStock"));
    }
    qint64 compra_ = 0;
};

TEST_P(MovimientosStock, AjusteYBorradoDevuelvenElSaldo) {
    const QString c = QString::number(compra_);
    const auto fila = [&](const char* art, const char* comprobante, const char* ingreso, const char* egreso) {
        return QStringLiteral("%1|2026-11-23|%2|%3|%4|%5|NULL")
            .arg(QString::fromUtf8(art), c, QString::fromUtf8(comprobante), QString::fromUtf8(ingreso), QString::fromUtf8(egreso));
    };
    const qint64 m1 = ajusta(1, "5", true, "R-0001");
    const qint64 m2 = ajusta(1, "2.5", false, "FC A'01");
    const qint64 m3 = ajusta(1, "-5", true);         // "Suma" de un negativo: baja el stock
    const qint64 m4 = ajusta(2, "4", true);          // un stock nulo pasa a ser la cantidad
    const qint64 m5 = ajusta(3, "1,000", false);     // miles bien agrupados; el stock queda negativo
    const qint64 m6 = ajusta(99, "5", true);         // un artículo que ya no está: sólo la fila del diario
    EXPECT_EQ(diario(), (QStringList{fila("1", "R-0001", "5", "0"), fila("1", "FC A'01", "0", "2.5"), fila("1", "", "-5", "0"),
                                     fila("2", "", "4", "0"), fila("3", "", "0", "1000"), fila("99", "", "5", "0")}));
    EXPECT_EQ(stock(), (QStringList{QStringLiteral("1|7.5|2"), QStringLiteral("2|4|1"), QStringLiteral("3|-997|0")}));

    // Borrar devuelve cada efecto; el nulo ya no vuelve: queda 0. Un movimiento que ya no está no cambia nada.
    for (const qint64 m : {m3, m6, m1, m5, m4, m2}) EXPECT_TRUE(BorraMovimientoStock(almacen(), m));
    EXPECT_FALSE(BorraMovimientoStock(almacen(), m1));
    EXPECT_TRUE(diario().isEmpty());
    EXPECT_EQ(stock(), (QStringList{QStringLiteral("1|10|2"), QStringLiteral("2|0|1"), QStringLiteral("3|3|0")}));
}

// Un ajuste o una corrección de la grilla que no se puede leer no escribe nada.
TEST_P(MovimientosStock, LoQueNoSeLeeNoEscribeNada) {
    const QString malEscrito = QStringLiteral(": el número está mal escrito. Use el punto para los decimales (1234.50).");
    const auto ajuste = [this](const char* cantidad, bool conTipo) {
        return [=, this] {
            RegistraAjusteStock(almacen(), {1, conTipo ? std::optional<qint64>(compra_) : std::nullopt, QString(), QString::fromUtf8(cantidad), true},
                                kHoy);
        };
    };
    const auto grilla = [this](const char* columna, const char* valor) {
        return [=, this] { GrabaCampoStock(almacen(), 3, QString::fromLatin1(columna), QString::fromLatin1(valor)); };
    };
    const std::pair<std::function<void()>, QString> casos[] = {
        {ajuste("abc", true), kErrorCantidadTipo},
        {ajuste("", true), kErrorCantidadTipo},
        {ajuste("5", false), kErrorCantidadTipo},
        // "2,5" parece un número, pero la coma no es decimal: se rechaza en vez de tomar 2 o 25.
        {ajuste("2,5", true), "Cantidad" + malEscrito},
        {ajuste("1e12", true), QStringLiteral("Cantidad: Importe fuera de rango!")},
        {grilla("StockActual", "1,5"), "Stock Actual" + malEscrito},
        {grilla("StockMinimo", ""), QStringLiteral("Stock Mínimo") + malEscrito},
        {grilla("PrecioVenta", "1"), QStringLiteral("Esa columna no se puede corregir.")},
    };
    for (const auto& [accion, aviso] : casos) EXPECT_EQ(AvisoDe(accion), aviso);
    EXPECT_TRUE(diario().isEmpty());
    EXPECT_EQ(stock(), (QStringList{QStringLiteral("1|10|2"), QStringLiteral("2|NULL|1"), QStringLiteral("3|3|0")}));
}

TEST_P(MovimientosStock, GrillaYBlanqueoNoEscribenMovimientos) {
    GrabaCampoStock(almacen(), 1, QStringLiteral("StockActual"), QStringLiteral("12.5"));
    GrabaCampoStock(almacen(), 2, QStringLiteral("stockminimo"), QStringLiteral(" 4 "));
    EXPECT_EQ(stock(), (QStringList{QStringLiteral("1|12.5|2"), QStringLiteral("2|NULL|4"), QStringLiteral("3|3|0")}));
    // El blanqueo pone en cero el stock actual de todos; el mínimo y el diario quedan.
    ajusta(3, "2", true, "R-7");
    BlanqueaStock(almacen());
    EXPECT_EQ(stock(), (QStringList{QStringLiteral("1|0|2"), QStringLiteral("2|0|4"), QStringLiteral("3|0|0")}));
    EXPECT_EQ(diario(), QStringList{QStringLiteral("3|2026-11-23|%1|R-7|2|0|NULL").arg(compra_)});
}

ORV_AMBOS_MOTORES(MovimientosStock);

} // namespace
} // namespace orv
