// Fórmulas y corridas de producción: lo que una corrida escribe (registro, detalle, existencias y
// diario) en cantidades exactas, la columna "Falta" y las corridas que no escriben nada, en los
// dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "production/produccion.h"

#include <functional>

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

const QDate kHoy(2026, 11, 25);

class Produccion : public prueba::PorMotorAlDia {
protected:
    // 1 es el producido; 2, 3 y 4 son materias primas (4 se borra después de cargar la fórmula).
    void prepara() override {
        almacen().ejecuta(QStringLiteral(
            "INSERT INTO Articulos (idArticulo, Codigo, Descripcion, StockActual, StockMinimo, PrecioCosto, PrecioVenta, "
            "esMateriaPrima) VALUES (1, 'P01', 'Sandwich', NULL, 0, 40, 60, 0), (2, 'M01', 'Pan', 50, 5, 3, 4, 1), "
            "(3, 'M02', 'Jamon', 10, 5, 2.5, 3, 1), (4, 'M03', 'Queso', 8, 1, 7, 9, 1)"));
        QList<LineaFormula> lineas;
        for (const MateriaPrima& mp : MateriasPrimas(almacen()))
            lineas << LineaDeFormula(mp, mp.codigo == u"M01" ? QStringLiteral("2") : QStringLiteral("0.5"));
        GuardaFormula(almacen(), 1, lineas, std::nullopt);
        // Ni el costo nuevo ni la materia prima borrada llegan a la corrida.
        almacen().ejecuta(QStringLiteral("UPDATE Articulos SET PrecioCosto = 99 WHERE idArticulo = 2"));
        almacen().ejecuta(QStringLiteral("DELETE FROM Articulos WHERE idArticulo = 4"));
    }
    QStringList articulos() {
        return Filas(almacen(), QStringLiteral("SELECT idArticulo, StockActual, PrecioCosto, PrecioVenta FROM Articulos "
                                               "ORDER BY idArticulo"));
    }
    QStringList registro() {
        return Filas(almacen(), QStringLiteral("SELECT r.idRegistroProduccion, r.Fecha, r.idArticuloProducido, r.CantidadProducida, "
                                               "r.CostoManoObra, r.CostoTotal, d.idArticuloMP, d.Cantidad, d.CostoTotal "
                                               "FROM RegistroProduccion r LEFT JOIN DetRegistroProduccion d "
                                               "ON d.idRegistroProduccion = r.idRegistroProduccion ORDER BY d.idDetReg"));
    }
    QStringList diario() {
        return Filas(almacen(), QStringLiteral("SELECT m.idArticulo, m.Fecha, t.TipoMovimientoStock, m.Comprobante, m.Ingreso, "
                                               "m.Egreso FROM MovimientoStock m LEFT JOIN TiposMovimientoStock t "
                                               "ON t.idTipoMovimiento = m.idTipoMovimiento ORDER BY m.idMovimientoStock"));
    }
    qint64 corre(const char* cantidad, const char* manoObra, std::optional<qint64> articulo = 1) {
        return RegistraProduccion(almacen(), {articulo, QString::fromLatin1(cantidad), QString::fromLatin1(manoObra), kHoy});
    }
};

TEST_P(Produccion, LaFormulaCongelaElCostoDeCadaMateriaPrima) {
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT idArticuloFinal, idArticuloMP, Cantidad, CostoTotal FROM FormulaProduccion "
                                              "ORDER BY idItemFormula")),
              (QStringList{"1|3|0.5|1.25", "1|2|2|6", "1|4|0.5|3.5"}));
    // La grilla de fórmulas: el costo de una unidad, sin la materia prima que ya no existe.
    EXPECT_EQ(Filas(almacen(), ConsultaFormulas()), QStringList{"P01|Sandwich|7.25|1"});
    EXPECT_EQ(*TotalCorrida(almacen(), 1, 10, Dinero(5)), Dinero(77, 5000));
    EXPECT_FALSE(TotalCorrida(almacen(), 2, 10, Dinero(5)));
}

TEST_P(Produccion, UnaCorridaEscribeRegistroExistenciasYDiario) {
    const qint64 r1 = corre("10", "5");
    const qint64 r2 = corre("1.5", "");
    const QString n1 = QString::number(r1), n2 = QString::number(r2);
    EXPECT_EQ(registro(), (QStringList{n1 + "|2026-11-25|1|10|5|77.5|3|5|12.5", n1 + "|2026-11-25|1|10|5|77.5|2|20|60",
                                       n2 + "|2026-11-25|1|1.5|0|10.875|3|0.75|1.875", n2 + "|2026-11-25|1|1.5|0|10.875|2|3|9"}));
    // El producido sube (de nulo a 11.5), las materias primas bajan; ningún precio cambia.
    EXPECT_EQ(articulos(), (QStringList{"1|11.5|40|60", "2|27|99|4", "3|4.25|2.5|3"}));
    EXPECT_EQ(diario(), (QStringList{"1|2026-11-25|Produccion|PRODUCCION " + n1 + "|10|0", "3|2026-11-25|Produccion|PRODUCCION " + n1 + "|0|5",
                                     "2|2026-11-25|Produccion|PRODUCCION " + n1 + "|0|20",
                                     "1|2026-11-25|Produccion|PRODUCCION " + n2 + "|1.5|0", "3|2026-11-25|Produccion|PRODUCCION " + n2 + "|0|0.75",
                                     "2|2026-11-25|Produccion|PRODUCCION " + n2 + "|0|3"}));
}

// "Falta" compara lo que falta (necesario − existencia) con el mínimo: 20 − 50 < 5 es 'No';
// 20 − 10 = 10 no es menor que 5: 'Si'. Con existencia nula la comparación no es cierta: 'Si'.
TEST_P(Produccion, LaColumnaFaltaContraElMinimo) {
    const auto alertas = [this](double cantidad) {
        const ConsultaAlertas c = AlertasDeStock(1, cantidad);
        return Filas(almacen(), c.sql, c.parametros);
    };
    EXPECT_EQ(alertas(10), (QStringList{"0.5|M02|Jamon|10|5|5|No|12.5", "2|M01|Pan|50|5|20|No|60"}));
    EXPECT_EQ(alertas(40), (QStringList{"0.5|M02|Jamon|10|5|20|Si|50", "2|M01|Pan|50|5|80|Si|240"}));
    almacen().ejecuta(QStringLiteral("UPDATE Articulos SET StockActual = NULL WHERE idArticulo = 3"));
    EXPECT_EQ(alertas(1), (QStringList{"0.5|M02|Jamon|NULL|5|0.5|Si|1.25", "2|M01|Pan|50|5|2|No|6"}));
}

// Lo que no se puede leer o no tiene fórmula se rechaza; una falla del almacén en el último paso
// (el diario) deshace el registro, el detalle y las existencias.
TEST_P(Produccion, UnaCorridaRechazadaOQueFallaNoDejaNada) {
    const QStringList antes = articulos();
    const struct {
        std::function<void()> accion;
        QString aviso;
    } casos[] = {
        {[this] { corre("10", "5", std::nullopt); }, "Elija el artículo a producir."},
        {[this] { corre("abc", "5"); }, "Cantidad a producir: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        {[this] { corre("2,5", "5"); }, "Cantidad a producir: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        {[this] { corre("0", "5"); }, "La cantidad a producir debe ser mayor que cero."},
        {[this] { corre("10", "abc"); }, "Costos de Mano de Obra: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        {[this] { corre("10", "-1"); }, "El costo de mano de obra no puede ser negativo."},
        {[this] { corre("10", "5", 2); }, "Ese artículo no tiene fórmula de producción."},
        {[this] {
             almacen().ejecuta(QStringLiteral("ALTER TABLE MovimientoStock RENAME TO MovimientoStockAparte"));
             try {
                 corre("10", "5");
             } catch (...) {
                 almacen().ejecuta(QStringLiteral("ALTER TABLE MovimientoStockAparte RENAME TO MovimientoStock"));
                 throw;
             }
         },
         "ErrorAlmacen"},
    };
    for (const auto& c : casos) EXPECT_EQ(AvisoDe(c.accion), c.aviso);
    EXPECT_TRUE(registro().isEmpty());
    EXPECT_TRUE(diario().isEmpty());
    EXPECT_EQ(articulos(), antes);
}

TEST_P(Produccion, UnArticuloTieneUnaSolaFormula) {
    const MateriaPrima pan{2, "M01", "Pan", Dinero(3)};
    const QList<LineaFormula> una = {LineaDeFormula(pan, "4")};
    EXPECT_EQ(AvisoDe([&] { GuardaFormula(almacen(), 1, una, std::nullopt); }),
              "Ese artículo ya tiene su fórmula de producción: elíjala en la lista y use \"Editar\".");
    EXPECT_EQ(AvisoDe([&] { GuardaFormula(almacen(), std::nullopt, una, std::nullopt); }), "Elija el artículo a producir.");
    EXPECT_EQ(AvisoDe([&] { GuardaFormula(almacen(), 1, {}, 1); }), "Agregue al menos una materia prima a la fórmula.");
    EXPECT_EQ(AvisoDe([&] { LineaDeFormula(pan, "0"); }), "La cantidad de materia prima debe ser mayor que cero.");
    // Editar reemplaza la fórmula entera, también si pasa a ser de otro artículo.
    GuardaFormula(almacen(), 3, una, 1);
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT idArticuloFinal, idArticuloMP, Cantidad, CostoTotal FROM FormulaProduccion")),
              QStringList{"3|2|4|12"});
    BorraFormula(almacen(), 3);
    EXPECT_TRUE(Filas(almacen(), ConsultaFormulas()).isEmpty());
}

ORV_AMBOS_MOTORES(Produccion);

} // namespace
} // namespace orv
