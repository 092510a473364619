// Un registro que muere de golpe en cualquier sentencia (un proceso hijo que se corta solo, 50
// veces en lugares al azar): el almacén queda sin el comprobante o con todo el comprobante, nunca a
// medias, y el borrador sigue o se fue con él.

#include "apoyo/base_prueba.h"
#include "store/actualizacion.h"

#include <QProcess>
#include <QRandomGenerator>

namespace orv {
namespace {

struct Foto {
    qint64 comprobantes, lineas, movimientos, caja, vip, comisiones, correlativo, borrador;
    double stock, puntos;
    bool operator==(const Foto&) const = default;
};

class RegistroInterrumpido : public ::testing::Test {
protected:
    void SetUp() override {
        base_ = std::make_unique<prueba::AlmacenDePrueba>(prueba::Motor::SQLite);
        actualizaEsquema(a());
        a().ejecuta(QStringLiteral("INSERT INTO Rubros (Rubro, PuntosVIP) VALUES ('Almacén', 3)"));
        a().ejecuta(QStringLiteral("UPDATE Usuarios SET Comision = 5 WHERE idUsuario = 1"));
        a().ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, PuntosVIP) VALUES (2, 'Cliente', 0)"));
        for (int i = 1; i <= 3; ++i)
            a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, idRubro, StockActual, PrecioCosto) "
                                       "VALUES (?, 'Artículo', (SELECT min(idRubro) FROM Rubros), 1000, 10)"),
                        {QStringLiteral("A%1").arg(i)});
    }
    Almacen& a() { return base_->almacen(); }
    void borrador() {
        a().ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                   "SELECT idArticulo, Codigo, Descripcion, 2, 10, 20, 1 FROM Articulos"));
    }
    qint64 n(const char* sql) { return a().valor(QString::fromLatin1(sql)).toLongLong(); }
    Foto foto() {
        return Foto{n("SELECT count(*) FROM Comprobantes"), n("SELECT count(*) FROM DetalleComprobantes"),
                    n("SELECT count(*) FROM MovimientoStock"), n("SELECT count(*) FROM Caja"), n("SELECT count(*) FROM Vip"),
                    n("SELECT count(*) FROM DetComisiones"), n("SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = 1"),
                    n("SELECT count(*) FROM TmpFac"), a().valor(QStringLiteral("SELECT sum(StockActual) FROM Articulos")).toDouble(),
                    a().valor(QStringLiteral("SELECT PuntosVIP FROM Vendedores WHERE idVendedor = 2")).toDouble()};
    }
    // Corre el registro en un proceso que muere al empezar la sentencia `en` (0: no muere).
    std::pair<int, QString> corre(long en) {
        QProcess p;
        p.start(QStringLiteral(ORVANTA_REGISTRO_INTERRUMPIDO), {base_->destino(), QString::number(en)});
        EXPECT_TRUE(p.waitForFinished(60000));
        return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()).trimmed()};
    }

    std::unique_ptr<prueba::AlmacenDePrueba> base_;
};

TEST_F(RegistroInterrumpido, NuncaQuedaAMedias) {
    // Un registro entero, para saber cuántas sentencias corre y cuánto cambia cada cosa.
    borrador();
    const Foto antes = foto();
    const auto [codigo, cuantas] = corre(0);
    ASSERT_EQ(codigo, 0) << cuantas.toStdString();
    const long sentencias = cuantas.toLong();
    ASSERT_GT(sentencias, 10);
    const Foto uno = foto();
    const Foto paso{uno.comprobantes - antes.comprobantes, uno.lineas - antes.lineas, uno.movimientos - antes.movimientos,
                    uno.caja - antes.caja, uno.vip - antes.vip, uno.comisiones - antes.comisiones,
                    uno.correlativo - antes.correlativo, uno.borrador - antes.borrador, uno.stock - antes.stock,
                    uno.puntos - antes.puntos};
    EXPECT_EQ(paso, (Foto{1, 3, 3, 1, 1, 1, 1, -3, -6, 18}));

    QRandomGenerator azar(20261123);
    int cortados = 0, completos = 0;
    for (int vuelta = 0; vuelta < 50; ++vuelta) {
        if (foto().borrador == 0) borrador();
        const Foto f0 = foto();
        const long en = 1 + long(azar.bounded(quint32(sentencias + 2))); // a veces después del final
        const auto [c, salida] = corre(en);
        const Foto f1 = foto();
        if (f1 == f0) {
            ++cortados;
            EXPECT_EQ(c, 7) << "sin cambios, pero el proceso no murió (sentencia " << en << ")";
            continue;
        }
        ++completos;
        const Foto esperado{f0.comprobantes + paso.comprobantes, f0.lineas + paso.lineas, f0.movimientos + paso.movimientos,
                            f0.caja + paso.caja,          f0.vip + paso.vip,       f0.comisiones + paso.comisiones,
                            f0.correlativo + paso.correlativo, 0,                   f0.stock + paso.stock,
                            f0.puntos + paso.puntos};
        EXPECT_EQ(f1, esperado) << "quedó a medias al cortar en la sentencia " << en;
    }
    EXPECT_GT(cortados, 30);
    EXPECT_GT(completos, 0);
    // Los comprobantes completos están enteros, con sus números seguidos.
    EXPECT_EQ(n("SELECT count(DISTINCT Factura) FROM Comprobantes"), n("SELECT count(*) FROM Comprobantes"));
    EXPECT_EQ(n("SELECT max(Correlativo) FROM TiposDeComprobantes WHERE idTipoComprobante = 1"), n("SELECT count(*) FROM Comprobantes"));
}

} // namespace
} // namespace orv
