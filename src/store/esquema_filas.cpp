// Filas de partida del almacén.

#include "store/esquema.h"
#include "store/esquema_interno.h"

namespace orv::esquema {

namespace {

bool vacia(const Almacen& a, const QString& tabla) {
    return a.valor(QStringLiteral("SELECT count(*) FROM ") + tabla).toLongLong() == 0;
}

} // namespace

// Filas que el sistema da por existentes. En una tabla vacía van todas, numeradas por el almacén
// (1, 2, ... en un almacén nuevo); en una tabla con filas se agregan sólo las que el programa
// busca por nombre o por número, y lo demás queda como el comercio lo dejó.
void CargaFilasDePartida(Almacen& a) {
    const auto falta = [&a](bool tablaVacia, bool requerida, const QString& sqlCuenta, const QVariant& valor) {
        if (tablaVacia) return true;
        return requerida && a.valor(sqlCuenta, {valor}).toInt() == 0;
    };

    // El tipo 1 es la compra.
    {
        const bool nueva = vacia(a, QStringLiteral("TiposMovimientoStock"));
        for (const char* t : {"Compra", "Venta", "Ajuste de inventario", "Produccion", "Devolucion"}) {
            const QString texto = QString::fromUtf8(t);
            if (falta(nueva, texto == u"Compra" || texto == u"Venta",
                      QStringLiteral("SELECT count(*) FROM TiposMovimientoStock WHERE TipoMovimientoStock = ?"), texto))
                a.ejecuta(QStringLiteral("INSERT INTO TiposMovimientoStock (TipoMovimientoStock) VALUES (?)"), {texto});
        }
    }
    {
        const bool nueva = vacia(a, QStringLiteral("Cuentas"));
        int orden = 0;
        for (const char* c : {"Ventas Mostrador", "Cobranza Clientes", "Gastos Generales", "Pago a Proveedores", "Retiros"}) {
            const QString texto = QString::fromUtf8(c);
            if (falta(nueva, orden++ < 2, QStringLiteral("SELECT count(*) FROM Cuentas WHERE Cuenta = ?"), texto))
                a.ejecuta(QStringLiteral("INSERT INTO Cuentas (Cuenta) VALUES (?)"), {texto});
        }
    }
    {
        struct Forma {
            const char* nombre;
            int aCuenta;
            int tarjeta;
            bool requerida;
        };
        const bool nueva = vacia(a, QStringLiteral("FormasDePago"));
        for (const Forma& f : {Forma{"EFVO", 0, 0, true}, Forma{"CTA CTE", 1, 0, true}, Forma{"CHEQ", 0, 0, true},
                               Forma{"TARJETA", 0, 1, false}}) {
            const QString texto = QString::fromUtf8(f.nombre);
            if (falta(nueva, f.requerida, QStringLiteral("SELECT count(*) FROM FormasDePago WHERE FormaPago = ?"), texto))
                a.ejecuta(QStringLiteral("INSERT INTO FormasDePago (FormaPago, EsACuenta, EsTarjetaCredito) VALUES (?, ?, ?)"),
                          {texto, f.aCuenta, f.tarjeta});
        }
    }
    // El 1 es Consumidor Final: el cliente 1 y la situación por omisión de la venta lo suponen.
    {
        struct Iva {
            const char* nombre;
            const char* fiscal;
        };
        const bool nueva = vacia(a, QStringLiteral("TipoDeIva"));
        for (const Iva& i : {Iva{"Consumidor Final", "F"}, Iva{"Responsable Inscripto", "I"}, Iva{"Monotributo", "M"},
                             Iva{"Exento", "E"}, Iva{"No Responsable", "N"}, Iva{"Responsable no Inscripto", "R"}}) {
            const QString texto = QString::fromUtf8(i.nombre);
            if (falta(nueva, texto == u"Consumidor Final", QStringLiteral("SELECT count(*) FROM TipoDeIva WHERE TipoIva = ?"),
                      texto))
                a.ejecuta(QStringLiteral("INSERT INTO TipoDeIva (TipoIva, Fiscal) VALUES (?, ?)"),
                          {texto, QString::fromUtf8(i.fiscal)});
        }
    }
    if (vacia(a, QStringLiteral("Zonas")))
        a.ejecuta(QStringLiteral("INSERT INTO Zonas (Zona) VALUES (?)"), {QStringLiteral("General")});
    if (a.valor(QStringLiteral("SELECT count(*) FROM Vendedores WHERE idVendedor = 1")).toInt() == 0) {
        const QVariant zona = a.valor(QStringLiteral("SELECT MIN(idZona) FROM Zonas"));
        const QVariant consumidor = a.valor(QStringLiteral("SELECT MIN(idTipoIva) FROM TipoDeIva WHERE TipoIva = ?"),
                                            {QStringLiteral("Consumidor Final")});
        a.ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, idZona, idTipoIva, Comision, Descuento, "
                                 "PuntosVIP) VALUES (1, ?, ?, ?, 0, 0, 0)"),
                  {QStringLiteral("Consumidor Final"), zona, consumidor});
    }

    if (vacia(a, QStringLiteral("TiposDeComprobantes")))
        a.ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, Correlativo, DescuentaStock, "
                                 "RegistraCaja, OperacionInversa, EsComercial, NombrePlantilla) "
                                 "VALUES (?, ?, ?, 0, 1, 1, 0, 1, ?)"),
                  {QStringLiteral("FACTURA B"), QStringLiteral("B"), QStringLiteral("0001"), QStringLiteral("factura.rpt")});

    // Nivel supervisor con todos los permisos y su usuario, todavía sin contraseña.
    if (vacia(a, QStringLiteral("Niveles"))) {
        QString cols = QStringLiteral("Nombre, UsuarioSuper");
        QString vals = QStringLiteral("?, 1");
        for (const QString& c : columnasPermiso()) {
            cols += QStringLiteral(", ") + c;
            vals += QStringLiteral(", 1");
        }
        a.ejecuta(QStringLiteral("INSERT INTO Niveles (%1) VALUES (%2)").arg(cols, vals), {QStringLiteral("Supervisor")});
    }
    const QVariant nivel = a.valor(QStringLiteral("SELECT MIN(idNivel) FROM Niveles WHERE UsuarioSuper <> 0"));
    if (vacia(a, QStringLiteral("Usuarios")) && !nivel.isNull())
        a.ejecuta(QStringLiteral("INSERT INTO Usuarios (NombreCompleto, NombreUsuario, Contrasenia, idNivel, Comision) "
                                 "VALUES (?, ?, NULL, ?, 0)"),
                  {QStringLiteral("Supervisor"), QStringLiteral("supervisor"), nivel});
}

} // namespace orv::esquema
