// Un registro que muere de golpe en cualquier sentencia (un proceso hijo que se corta solo, 50
// veces en lugares al azar): el almacén queda sin el comprobante o con todo el comprobante, nunca a
// medias, y el borrador sigue o se fue con él.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "store/actualizacion.h"

#include <QProcess>
#include <QRandomGenerator>

namespace orv {
namespace {

// Comprobantes, líneas, movimientos, caja, tarjeta, comisiones, correlativo, borrador, stock y puntos.
using Foto = std::vector<double>;

class RegistroInterrumpido : public ::testing::Test {
protected:
    void SetUp() override {
        base_ = std::make_unique<prueba::AlmacenDePrueba>(prueba::Motor::SQLite);
        actualizaEsquema(a());
        a().ejecuta(QStringLiteral("INSERT INTO Rubros (idRubro, Rubro, PuntosVIP) VALUES (1, 'Almacén', 3)"));
        a().ejecuta(QStringLiteral("UPDATE Usuarios SET Comision = 5 WHERE idUsuario = 1"));
        a().ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, PuntosVIP) VALUES (2, 'Cliente', 0)"));
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, idRubro, StockActual, PrecioCosto) VALUES "
                                   "('A1', 'Uno', 1, 1000, 10), ('A2', 'Dos', 1, 1000, 10), ('A3', 'Tres', 1, 1000, 10)"));
    }
    Almacen& a() { return base_->almacen(); }
    void borrador() {
        a().ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                   "SELECT idArticulo, Codigo, Descripcion, 2, 10, 20, 1 FROM Articulos"));
    }
    Foto foto() {
        Foto f;
        for (const QString& x : prueba::Filas(a(), QStringLiteral(
                 "SELECT (SELECT count(*) FROM Comprobantes), (SELECT count(*) FROM DetalleComprobantes), (SELECT count(*) FROM MovimientoStock), "
                 "(SELECT count(*) FROM Caja), (SELECT count(*) FROM Vip), (SELECT count(*) FROM DetComisiones), "
                 "(SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = 1), (SELECT count(*) FROM TmpFac), "
                 "(SELECT sum(StockActual) FROM Articulos), (SELECT PuntosVIP FROM Vendedores WHERE idVendedor = 2)")).first().split(u'|'))
            f.push_back(x.toDouble());
        return f;
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
    Foto paso = foto();
    for (size_t i = 0; i < paso.size(); ++i) paso[i] -= antes[i];
    EXPECT_EQ(paso, (Foto{1, 3, 3, 1, 1, 1, 1, -3, -6, 18}));

    QRandomGenerator azar(20261123);
    int cortados = 0, completos = 0;
    for (int vuelta = 0; vuelta < 50; ++vuelta) {
        if (foto()[7] == 0) borrador();
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
        Foto esperado = f0;
        for (size_t i = 0; i < esperado.size(); ++i) esperado[i] += paso[i];
        EXPECT_EQ(f1, esperado) << "quedó a medias al cortar en la sentencia " << en;
    }
    EXPECT_GT(cortados, 30);
    EXPECT_GT(completos, 0);
    // Los comprobantes completos están enteros, con sus números seguidos.
    EXPECT_EQ(a().valor(QStringLiteral("SELECT count(DISTINCT Factura) || '|' || max(Factura) FROM Comprobantes")).toString(),
              QStringLiteral("%1|B0001-%2").arg(completos + 1).arg(completos + 1, 8, 10, QLatin1Char('0')));
}

} // namespace
} // namespace orv
