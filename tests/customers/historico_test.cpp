// El histórico de un cliente: sus comprobantes de un período, en orden y con el signo de cada uno,
// y los dos totales (comerciales y no comerciales) para varios períodos. En los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "customers/historico.h"
#include "maintenance/ventas_ejemplo.h"

namespace orv {
namespace {

using prueba::Filas;

constexpr qint64 kAna = 5, kBeto = 6;

class HistoricoCliente : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        Almacen& a = almacen();
        a.ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre) VALUES (5, 'Ana'), (6, 'Beto')"));
        a.ejecuta(QStringLiteral("DELETE FROM TiposDeComprobantes")); // los tipos son éstos, no los de partida
        a.ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (idTipoComprobante, Tipo, Letra, PuntoDeVenta, Correlativo, "
                                 "DescuentaStock, RegistraCaja, OperacionInversa, EsComercial, NombrePlantilla) VALUES "
                                 "(11, 'FACTURA B', 'B', '0001', 0, 0, 0, 0, 1, ''), "
                                 "(12, 'NOTA DE CREDITO B', 'B', '0001', 0, 0, 0, 1, 1, ''), "
                                 "(13, 'PRESUPUESTO', 'X', '0002', 0, 0, 0, 0, 0, '')"));
        a.ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, PrecioVenta) VALUES ('P100', 'Cien', 100), "
                                 "('P70', 'Setenta', 70), ('P30', 'Treinta', 30), ('P999', 'Mucho', 999), ('P12', 'Poco', 12.34)"));
        vende(kAna, "FACTURA B", "P100", 21, QDate(2026, 3, 2));
        vende(kAna, "PRESUPUESTO", "P70", 0, QDate(2026, 3, 2));
        vende(kAna, "NOTA DE CREDITO B", "P30", 21, QDate(2026, 3, 9));
        vende(kBeto, "FACTURA B", "P999", 0, QDate(2026, 3, 5));
        vende(kAna, "FACTURA B", "P12", 0, QDate(2026, 4, 1));
    }
    // Un comprobante del cliente con una unidad del artículo y el IVA dado.
    void vende(qint64 cliente, const char* tipo, const char* codigo, double iva, QDate dia) {
        VentaEjemplo v;
        v.fecha = dia;
        v.tipo = QString::fromLatin1(tipo);
        v.idCliente = cliente;
        v.porcImpuesto = iva;
        v.lineas = {{QString::fromLatin1(codigo), 1}};
        RegistraVentaEjemplo(almacen(), v, 1, 1);
    }
    QStringList totales(qint64 cliente, QDate desde, QDate hasta) {
        const TotalesHistorico t = TotalesHistoricoCliente(almacen(), cliente, desde, hasta);
        return {t.comerciales.aTexto(), t.noComerciales.aTexto()};
    }
};

// La grilla: sólo Ana, sólo marzo (los dos días del borde incluidos), por fecha y tipo; la nota de
// crédito con sus importes en negativo salvo los porcentajes.
TEST_P(HistoricoCliente, LosComprobantesDelPeriodo) {
    const ConsultaConParametros c = ConsultaHistoricoCliente(kAna, QDate(2026, 3, 2), QDate(2026, 3, 9));
    EXPECT_EQ(Filas(almacen(), c.sql, c.parametros),
              (QStringList{"5|2026-03-02|FACTURA B|B0001-00000001|100|0|0|100|21|21|121|EFVO|1",
                           "5|2026-03-02|PRESUPUESTO|X0002-00000001|70|0|0|70|0|0|70|EFVO|2",
                           "5|2026-03-09|NOTA DE CREDITO B|B0001-00000001|-30|0|0|-30|21|-6.3|-36.3|EFVO|3"}));
}

TEST_P(HistoricoCliente, LosDosTotales) {
    const struct {
        const char* que;
        qint64 cliente;
        QDate desde, hasta;
        QStringList esperados;
    } casos[] = {
        {"marzo: la nota de crédito resta de lo comercial", kAna, QDate(2026, 3, 1), QDate(2026, 3, 31), {"84.7000", "70.0000"}},
        {"un solo día", kAna, QDate(2026, 3, 2), QDate(2026, 3, 2), {"121.0000", "70.0000"}},
        {"todo, con el comprobante de abril", kAna, QDate(2026, 1, 1), QDate(2026, 12, 31), {"97.0400", "70.0000"}},
        {"otro cliente", kBeto, QDate(2026, 1, 1), QDate(2026, 12, 31), {"999.0000", "0.0000"}},
        {"un período sin comprobantes", kAna, QDate(2026, 5, 1), QDate(2026, 5, 31), {"0.0000", "0.0000"}},
        {"un cliente sin comprobantes", 77, QDate(2026, 1, 1), QDate(2026, 12, 31), {"0.0000", "0.0000"}},
    };
    for (const auto& c : casos) EXPECT_EQ(totales(c.cliente, c.desde, c.hasta), c.esperados) << c.que;
}

ORV_AMBOS_MOTORES(HistoricoCliente);

} // namespace
} // namespace orv
