#include "maintenance/ventas_ejemplo.h"

#include "cash/caja.h"
#include "cash/corte.h"
#include "customers/cuenta.h"
#include "sales/borrador.h"
#include "store/aviso.h"

#include <QHash>
#include <QSqlQuery>
#include <random>

namespace orv {

namespace {

Dinero alCentavo(double importe) { return Dinero::desdeDouble(importe).redondeado(2); }

// Los datos del cliente tal como la venta los toma de su ficha.
void completaCliente(const Almacen& a, DatosRegistro& d, qint64 idCliente) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Nombre, Cuit, idTipoIva FROM Vendedores WHERE idVendedor = ?"),
                             {idCliente});
    if (!q.next()) throw Aviso(QStringLiteral("No existe el cliente %1.").arg(idCliente));
    d.idCliente = idCliente;
    d.nombreCliente = q.value(0).toString();
    d.cuitCliente = q.value(1).toString();
    d.idTipoIva = q.value(2).isNull() ? 1 : q.value(2).toInt();
}

} // namespace

Registrado RegistraVentaEjemplo(Almacen& a, const VentaEjemplo& v, qint32 idRed, qint32 idUsuario) {
    Transaccion t(a);
    DatosRegistro d;
    d.idRed = idRed;
    d.idUsuario = idUsuario;
    d.textoTipo = v.tipo;
    d.idTipoComprobante =
        a.valor(QStringLiteral("SELECT MIN(idTipoComprobante) FROM TiposDeComprobantes WHERE Tipo = ?"), {v.tipo})
            .toLongLong();
    if (d.idTipoComprobante == 0) throw Aviso(QStringLiteral("No existe el tipo de comprobante ") + v.tipo + '.');
    if (v.idCliente) completaCliente(a, d, *v.idCliente);
    d.clienteEsVip = v.porTarjeta;
    d.formaPago = v.formaPago;

    VaciaBorrador(a, idRed);
    for (const LineaEjemplo& l : v.lineas) {
        PedidoLinea p;
        p.origen = OrigenLinea::CodigoBarras;
        p.codigo = l.codigo;
        // Como en la venta: el precio del artículo queda escrito en el unitario.
        if (const std::optional<ArticuloVenta> art = ArticuloPorCodigo(a, l.codigo))
            p.unitario = Dinero::desdeVariant(art->precioVenta).aTexto();
        p.cantidad = QString::number(l.cantidad, 'g', 10);
        AgregaLinea(a, idRed, p);
    }
    const Totales tot = CalculaTotales(a, idRed, v.porcDescuento, v.porcImpuesto);
    if (!tot.problema.isEmpty()) throw Aviso(tot.problema);
    d.subTotal = alCentavo(tot.subTotal);
    d.porcDescuento = v.porcDescuento;
    d.montDescuento = alCentavo(tot.descuento);
    d.neto = d.subTotal - d.montDescuento;
    d.porcImpuesto = Dinero::desdeDouble(v.porcImpuesto);
    d.importeIva = d.neto.porcentaje(v.porcImpuesto).redondeado(2);
    d.total = d.neto + d.importeIva;
    d.suPago = d.total;
    d.hoy = v.fecha;
    const Registrado r = RegistraComprobante(a, d, Ruta::Plantilla);
    t.confirmar();
    return r;
}

namespace {

// Terminal propia de la carga, para no mezclarse con el borrador de ninguna caja.
constexpr qint32 kTerminalEjemplo = -1;

struct Clientes {
    qint64 consumidorFinal = 1;
    qint64 empresa = 0;    // responsable inscripto que compra a cuenta
    qint64 otraEmpresa = 0; // responsable inscripto de contado
    qint64 conTarjeta = 0;  // particular con tarjeta de cliente
    qint64 vecinoACuenta = 0;
};

Clientes leeClientes(const Almacen& a) {
    Clientes c;
    const auto id = [&a](const char* sql, const QVariantList& p) {
        return a.valor(QString::fromUtf8(sql), p).toLongLong();
    };
    const char* const porIvaYPago = "SELECT MIN(v.idVendedor) FROM (Vendedores v INNER JOIN TipoDeIva t "
                                    "ON t.idTipoIva = v.idTipoIva) INNER JOIN FormasDePago f "
                                    "ON f.idTipoFormaPago = v.idTipoFormaPago WHERE t.TipoIva = ? AND f.FormaPago = ?";
    const QString inscripto = QStringLiteral("Responsable Inscripto");
    c.empresa = id(porIvaYPago, {inscripto, QStringLiteral("CTA CTE")});
    c.otraEmpresa = id(porIvaYPago, {inscripto, QStringLiteral("EFVO")});
    c.conTarjeta = id("SELECT MIN(idVendedor) FROM Vendedores WHERE LENGTH(NroClienteVIP) > 0", {});
    c.vecinoACuenta = id("SELECT MAX(v.idVendedor) FROM Vendedores v INNER JOIN FormasDePago f "
                         "ON f.idTipoFormaPago = v.idTipoFormaPago WHERE f.FormaPago = ?",
                         {QStringLiteral("CTA CTE")});
    if (!c.empresa || !c.otraEmpresa || !c.conTarjeta || !c.vecinoACuenta)
        throw Aviso(QStringLiteral("Faltan los clientes de los datos de ejemplo."));
    return c;
}

// Artículos con stock de sobra, en el orden de su clave; cada venta descuenta lo que lleva, así
// ninguno queda en negativo.
class Gondola {
public:
    explicit Gondola(const Almacen& a) {
        QSqlQuery q = a.consulta(QStringLiteral("SELECT Codigo, StockActual FROM Articulos WHERE StockActual >= 12 "
                                                "ORDER BY idArticulo"));
        while (q.next()) {
            codigos_ << q.value(0).toString();
            stock_.insert(codigos_.back(), q.value(1).toDouble());
        }
        if (codigos_.size() < 20) throw Aviso(QStringLiteral("Faltan los artículos de los datos de ejemplo."));
    }
    // Una línea de 1 a 3 unidades de un artículo que todavía alcanza.
    LineaEjemplo toma() {
        for (;;) {
            const QString& c = codigos_[int(gen_() % quint32(codigos_.size()))];
            const double cantidad = 1 + gen_() % 3;
            if (stock_[c] < cantidad + 2) continue;
            stock_[c] -= cantidad;
            return {c, cantidad};
        }
    }
    std::vector<LineaEjemplo> toma(int n) {
        std::vector<LineaEjemplo> l;
        while (int(l.size()) < n) l.push_back(toma());
        return l;
    }
    int dado(int caras) { return int(gen_() % quint32(caras)); }

private:
    QStringList codigos_;
    QHash<QString, double> stock_;
    std::mt19937 gen_{20261123u};
};

// Unos meses de cuenta corriente de los dos clientes que compran a cuenta: una compra por mes,
// cobranzas parciales (en efectivo y con cheque, asentadas en la caja), intereses por un pago
// atrasado y una bonificación.
template <typename Registra>
void cuentasDeMeses(Almacen& a, const Clientes& c, Gondola& g, const QDate& hoy, qint32 idUsuario, Registra registra) {
    const QString cta = QStringLiteral("CTA CTE");
    for (int atras : {95, 65, 35}) {
        registra(hoy.addDays(-atras), "FACTURA A", c.empresa, cta, 10, g.toma(4));
        registra(hoy.addDays(-atras + 2), "FACTURA B", c.vecinoACuenta, cta, 0, g.toma(2));
    }
    const struct {
        int atras;
        qint64 cliente;
        const char* importe;
        const char* forma;
    } cobranzas[] = {{80, c.empresa, "15,000.00", "CHEQ"},  {78, c.vecinoACuenta, "2,000.00", "EFVO"},
                     {50, c.empresa, "13,000.00", "CHEQ"},  {47, c.vecinoACuenta, "1,000.00", "EFVO"},
                     {22, c.empresa, "16,000.00", "CHEQ"},  {17, c.vecinoACuenta, "1,500.00", "EFVO"},
                     {3, c.empresa, "10,000.00", "EFVO"}};
    for (const auto& p : cobranzas) {
        const QString nombre = a.valor(QStringLiteral("SELECT Nombre FROM Vendedores WHERE idVendedor = ?"), {p.cliente}).toString();
        RegistraCobranza(a, {.idVendedor = p.cliente, .fecha = hoy.addDays(-p.atras), .importe = QString::fromLatin1(p.importe),
                             .formaPago = QString::fromLatin1(p.forma), .asientaCaja = true,
                             .detalles = QStringLiteral("Asentar Cobranza a ") + nombre, .idUsuario = idUsuario});
    }
    RegistraLineaManual(a, c.vecinoACuenta, hoy.addDays(-40), QStringLiteral("Intereses por pago atrasado"),
                        QStringLiteral("150.00"), true);
    RegistraLineaManual(a, c.empresa, hoy.addDays(-30), QStringLiteral("Bonificación por volumen"), QStringLiteral("250.00"),
                        false);
}

} // namespace

namespace {

// La caja de la última semana además de las ventas: gastos, retiros y pagos escritos a mano, y el
// día de hace tres días cerrado con su arqueo (el efectivo contado con diez pesos de menos).
void cargaCajaEjemplo(Almacen& a, const QDate& hoy, qint32 idUsuario) {
    const auto cuenta = [&a](const char* nombre) {
        return a.valor(QStringLiteral("SELECT MIN(idCuenta) FROM Cuentas WHERE Cuenta = ?"), {QString::fromLatin1(nombre)}).toLongLong();
    };
    const qint64 gastos = cuenta("Gastos Generales"), retiros = cuenta("Retiros"), proveedores = cuenta("Pago a Proveedores");
    const struct {
        int atras;
        qint64 idCuenta;
        const char* detalles;
        qint64 pesos;
        bool ingreso;
        const char* forma;
    } filas[] = {
        {7, gastos, "Fondo fijo para cambio", 5000, true, "EFVO"},         {6, gastos, "Artículos de limpieza", 385, false, "EFVO"},
        {5, proveedores, "Pago a Distribuidora del Litoral", 4200, false, "EFVO"},
        {4, gastos, "Flete de mercadería", 650, false, "EFVO"},            {3, retiros, "Retiro del dueño", 2000, false, "EFVO"},
        {3, gastos, "Luz del local (factura bimestral)", 1824, false, "EFVO"}, {2, gastos, "Bolsas y papel de envolver", 290, false, "EFVO"},
        {1, retiros, "Retiro para depósito en el banco", 3000, false, "EFVO"},
    };
    for (const auto& f : filas) {
        const Dinero importe(f.pesos);
        GuardaMovimientoCaja(a, std::nullopt,
                             MovimientoCaja{hoy.addDays(-f.atras), f.idCuenta, QString::fromLatin1(f.forma), QString::fromUtf8(f.detalles),
                                            f.ingreso ? std::optional(importe) : std::nullopt, f.ingreso ? std::nullopt : std::optional(importe)},
                             idUsuario);
    }
    const QDate cerrado = hoy.addDays(-3);
    QList<LineaArqueo> arqueo = ArqueoEsperado(a, cerrado, std::nullopt);
    for (LineaArqueo& l : arqueo)
        if (l.formaPago == QLatin1String("EFVO")) l.contado = l.esperado - Dinero(10);
    CierraDia(a, cerrado, cerrado, arqueo, idUsuario);
}

} // namespace

void CargaVentasEjemplo(Almacen& a, const QDate& hoy) {
    Transaccion t(a);
    const Clientes c = leeClientes(a);
    Gondola g(a);
    const qint32 idUsuario = a.valor(QStringLiteral("SELECT COALESCE(MIN(idUsuario), 1) FROM Usuarios")).toInt();
    const QString efvo = QStringLiteral("EFVO"), cta = QStringLiteral("CTA CTE");
    // Una venta del tipo, al cliente, con la forma de pago, el descuento y las líneas; IVA 21 %.
    const auto registra = [&](const QDate& dia, const char* tipo, qint64 cliente, const QString& forma,
                              double descuento, std::vector<LineaEjemplo> lineas, bool porTarjeta = false) {
        const VentaEjemplo v{dia, QString::fromUtf8(tipo), cliente, porTarjeta, forma, descuento, 21, std::move(lineas)};
        RegistraVentaEjemplo(a, v, kTerminalEjemplo, idUsuario);
    };
    // Primero lo de los meses anteriores, así los números de los comprobantes siguen a las fechas.
    cuentasDeMeses(a, c, g, hoy, idUsuario, registra);
    const std::vector<LineaEjemplo> compraEmpresa = g.toma(4), compraTarjeta = g.toma(3);
    for (int atras = 21; atras >= 1; --atras) {
        const QDate dia = hoy.addDays(-atras);
        // El mostrador: ventas de contado al consumidor final, con factura o ticket; el domingo,
        // que abre sólo a la mañana, menos.
        const int ventas = dia.dayOfWeek() == Qt::Sunday ? 1 : 2 + g.dado(3);
        for (int i = 0; i < ventas; ++i)
            registra(dia, i % 2 ? "TICKET" : "FACTURA B", c.consumidorFinal, efvo, 0, g.toma(1 + g.dado(4)));
        // Lo de ciertos días: cuenta corriente, tarjeta, presupuesto, remito, notas de crédito.
        switch (atras) {
        case 20: registra(dia, "FACTURA A", c.empresa, cta, 0, compraEmpresa); break;
        case 18: registra(dia, "FACTURA B", c.conTarjeta, efvo, 0, compraTarjeta, true); break;
        case 16: registra(dia, "PRESUPUESTO", c.otraEmpresa, efvo, 0, g.toma(5)); break;
        case 15: registra(dia, "FACTURA A", c.otraEmpresa, efvo, 5, g.toma(5)); break;
        case 13: registra(dia, "REMITO", c.empresa, cta, 0, g.toma(3)); break;
        case 12: registra(dia, "FACTURA A", c.empresa, cta, 10, g.toma(3)); break;
        // Devoluciones de una unidad de lo comprado antes.
        case 10: registra(dia, "NOTA DE CREDITO B", c.conTarjeta, efvo, 0, {{compraTarjeta[0].codigo, 1}}, true); break;
        case 8: registra(dia, "FACTURA B", c.vecinoACuenta, cta, 0, g.toma(2)); break;
        case 6: registra(dia, "NOTA DE CREDITO A", c.empresa, cta, 0, {{compraEmpresa[1].codigo, 1}}); break;
        case 4: registra(dia, "FACTURA B", c.conTarjeta, efvo, 0, g.toma(2), true); break;
        case 2: registra(dia, "FACTURA A", c.otraEmpresa, efvo, 0, g.toma(6)); break;
        default: break;
        }
    }
    cargaCajaEjemplo(a, hoy, idUsuario);
    t.confirmar();
}

} // namespace orv
