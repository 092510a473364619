// El histórico de un cliente: sus comprobantes de un período, en orden y con el signo de cada uno,
// y los dos totales (comerciales y no comerciales) para varios períodos. En los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "customers/historico.h"
#include "sales/registro.h"

namespace orv {
namespace {

using prueba::Filas;

constexpr qint64 kAna = 5, kBeto = 6;
constexpr qint64 kFactura = 11, kNota = 12, kPresupuesto = 13;

class HistoricoCliente : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        Almacen& a = almacen();
        a.ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre) VALUES (5, 'Ana'), (6, 'Beto')"));
        a.ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (idTipoComprobante, Tipo, Letra, PuntoDeVenta, Correlativo, "
                                 "DescuentaStock, RegistraCaja, OperacionInversa, EsComercial, NombrePlantilla) VALUES "
                                 "(11, 'FACTURA B', 'B', '0001', 0, 0, 0, 0, 1, ''), "
                                 "(12, 'NOTA DE CREDITO B', 'B', '0001', 0, 0, 0, 1, 1, ''), "
                                 "(13, 'PRESUPUESTO', 'X', '0002', 0, 0, 0, 0, 0, '')"));
        vende(kAna, kFactura, Dinero(100), Dinero(21), QDate(2026, 3, 2));
        vende(kAna, kPresupuesto, Dinero(70), Dinero(), QDate(2026, 3, 2));
        vende(kAna, kNota, Dinero(30), Dinero(6, 3000), QDate(2026, 3, 9));
        vende(kBeto, kFactura, Dinero(999), Dinero(), QDate(2026, 3, 5));
        vende(kAna, kFactura, Dinero(12, 3456), Dinero(), QDate(2026, 4, 1));
    }
    // Un comprobante del cliente con el neto y el IVA dados; el total es la suma.
    void vende(qint64 cliente, qint64 tipo, Dinero neto, Dinero iva, QDate dia) {
        almacen().ejecuta(QStringLiteral("INSERT INTO TmpFac (Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                         "VALUES ('X', 'Uno', 1, ?, ?, 1)"),
                          {neto.aVariant(), neto.aVariant()});
        DatosRegistro d;
        d.idRed = 1;
        d.idUsuario = 1;
        d.idTipoComprobante = tipo;
        d.idCliente = cliente;
        d.subTotal = d.neto = neto;
        d.porcImpuesto = iva.esCero() ? Dinero() : Dinero(21);
        d.importeIva = iva;
        d.total = neto + iva;
        d.hoy = dia;
        RegistraComprobante(almacen(), d, Ruta::Nada);
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
        {"todo, con el comprobante de abril", kAna, QDate(2026, 1, 1), QDate(2026, 12, 31), {"97.0456", "70.0000"}},
        {"otro cliente", kBeto, QDate(2026, 1, 1), QDate(2026, 12, 31), {"999.0000", "0.0000"}},
        {"un período sin comprobantes", kAna, QDate(2026, 5, 1), QDate(2026, 5, 31), {"0.0000", "0.0000"}},
        {"un cliente sin comprobantes", 77, QDate(2026, 1, 1), QDate(2026, 12, 31), {"0.0000", "0.0000"}},
    };
    for (const auto& c : casos) EXPECT_EQ(totales(c.cliente, c.desde, c.hasta), c.esperados) << c.que;
}

ORV_AMBOS_MOTORES(HistoricoCliente);

} // namespace
} // namespace orv
