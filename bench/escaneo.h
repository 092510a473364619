#pragma once
// Piezas comunes de los bancos: cuántas veces se pinta una tabla, y el código leído a una línea
// del borrador de una terminal (por la lógica de la venta y, como piso, las órdenes SQL sueltas).

#include "sales/borrador.h"
#include "store/almacen.h"

#include <QEvent>
#include <QObject>
#include <QSqlQuery>
#include <QStringList>
#include <benchmark/benchmark.h>

namespace banco {

constexpr qint32 kTerminal = 1;

// Cuenta las veces que se pinta el objeto vigilado.
class CuentaPintadas : public QObject {
public:
    int pintadas = 0;
    bool eventFilter(QObject* o, QEvent* e) override {
        if (e->type() == QEvent::Paint) ++pintadas;
        return QObject::eventFilter(o, e);
    }
};

inline void agregaPorCodigo(orv::Almacen& a, const QString& codigo) {
    orv::AgregaLinea(a, kTerminal, {orv::OrigenLinea::CodigoBarras, codigo, std::nullopt, QStringLiteral("1"),
                                    QStringLiteral("0")});
}

// Deja el borrador en sus 200 primeras líneas.
inline void recortaBorrador(orv::Almacen& a) {
    a.ejecuta(QStringLiteral("DELETE FROM TmpFac WHERE PCRed = ? AND idTmpFac > (SELECT MIN(idTmpFac) + 199 FROM TmpFac "
                             "WHERE PCRed = ?)"),
              {kTerminal, kTerminal});
}

// Una vuelta = un código leído: la línea nueva y los totales, por la lógica de la venta.
inline void escaneaALinea(benchmark::State& estado, orv::Almacen& a, const QStringList& codigos) {
    int i = 0;
    for (auto _ : estado) {
        agregaPorCodigo(a, codigos.at(i++ % codigos.size()));
        const orv::Totales t = orv::CalculaTotales(a, kTerminal, 10, 21);
        benchmark::DoNotOptimize(t.total);
        estado.PauseTiming();
        recortaBorrador(a);
        estado.ResumeTiming();
    }
}

// Piso: las órdenes del alta de una línea y de los totales, sin nada alrededor.
inline void escaneaALineaPiso(benchmark::State& estado, orv::Almacen& a, const QStringList& codigos) {
    int i = 0;
    for (auto _ : estado) {
        const QString codigo = codigos.at(i++ % codigos.size());
        QSqlQuery art = a.consulta(QStringLiteral("SELECT idArticulo, Codigo, Descripcion, CgoProveedor, PrecioVenta "
                                                  "FROM Articulos WHERE Codigo = ? ORDER BY idArticulo"),
                                   {codigo});
        art.next();
        const QVariant id = art.value(0), desc = art.value(2), precio = art.value(4);
        art.finish();
        QSqlQuery ya = a.consulta(
            QStringLiteral("SELECT idTmpFac, Cantidad FROM TmpFac WHERE PCRed = ? AND idArticulo = ? ORDER BY idTmpFac"),
            {kTerminal, id});
        ya.next();
        ya.finish();
        a.ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Cantidad, Descripcion, Unitario, SubTotal, PCRed) "
                                 "VALUES (?, ?, 1, ?, ?, ?, ?)"),
                  {id, codigo, desc, precio, precio, kTerminal});
        QSqlQuery tot = a.consulta(
            QStringLiteral("SELECT count(*), sum(SubTotal), sum(Cantidad) FROM TmpFac WHERE PCRed = ?"), {kTerminal});
        tot.next();
        benchmark::DoNotOptimize(tot.value(1));
        estado.PauseTiming();
        recortaBorrador(a);
        estado.ResumeTiming();
    }
}

} // namespace banco
