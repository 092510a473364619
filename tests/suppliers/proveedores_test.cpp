// Proveedores: la ficha grabada y leída campo por campo (el banco sólo al agregar), los rechazos,
// el aviso de CUIT repetido, el borrado con sus compras y su cuenta (y lo que queda) y la búsqueda
// por nombre del panel. En los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "suppliers/proveedores.h"

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

class Proveedores : public prueba::PorMotorAlDia {
protected:
    static DatosProveedor datos(const QString& razon, const QString& cuit) {
        return {QStringLiteral("Ana O'Neill"), razon, QStringLiteral("Av. Pellegrini 1200"), QStringLiteral("2000"),
                QStringLiteral("341 555-0101"), QString(), cuit, QStringLiteral("compras@norte.com.ar"),
                QStringLiteral("Banco Municipal"), QStringLiteral("0650020701000000123456")};
    }
    QStringList fila(qint64 id) {
        return Filas(almacen(), QStringLiteral("SELECT Nombre, RazonSocial, Cuit, Telefono, Telefono2, email, Direccion, "
                                               "CBU, CPostal, BancoNombre FROM Proveedores WHERE idProveedor = ?"),
                     {id});
    }
};

TEST_P(Proveedores, FichaGrabadaYLeidaElBancoSoloAlAgregar) {
    const qint64 id = GuardaProveedor(almacen(), std::nullopt, datos(QStringLiteral("Distribuidora Norte"), "30-12345678-1"));
    EXPECT_EQ(fila(id), QStringList{"Ana O'Neill|Distribuidora Norte|30-12345678-1|341 555-0101||compras@norte.com.ar|"
                                    "Av. Pellegrini 1200|0650020701000000123456|2000|Banco Municipal"});
    DatosProveedor cambio = datos(QStringLiteral("Distribuidora Norte S.A."), QString());
    cambio.telefono2 = QStringLiteral("341 555-0202");
    cambio.banco = QStringLiteral("Otro banco");
    EXPECT_EQ(GuardaProveedor(almacen(), id, cambio), id);
    EXPECT_EQ(fila(id), QStringList{"Ana O'Neill|Distribuidora Norte S.A.||341 555-0101|341 555-0202|compras@norte.com.ar|"
                                    "Av. Pellegrini 1200|0650020701000000123456|2000|Banco Municipal"});
    const DatosProveedor leido = LeeProveedor(almacen(), id).value_or(DatosProveedor{});
    EXPECT_EQ(QStringList({leido.nombre, leido.razonSocial, leido.cuit, leido.telefono2, leido.banco, leido.cPostal}),
              QStringList({"Ana O'Neill", "Distribuidora Norte S.A.", "", "341 555-0202", "Banco Municipal", "2000"}));

    // Rechazos: un campo que no cabe, un proveedor que otra terminal borró. Nada cambia.
    DatosProveedor largo = cambio;
    largo.cPostal = QStringLiteral("12345678901");
    EXPECT_EQ(AvisoDe([&] { GuardaProveedor(almacen(), id, largo); }),
              QStringLiteral("C.Postal: admite hasta 10 caracteres (tiene 11)."));
    EXPECT_EQ(AvisoDe([&] { GuardaProveedor(almacen(), id + 50, cambio); }), QStringLiteral("No encontrado!"));
    EXPECT_FALSE(LeeProveedor(almacen(), id + 50));
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT count(*) FROM Proveedores")), QStringList{"1"});
}

TEST_P(Proveedores, CuitRepetidoDeOtroProveedor) {
    const qint64 norte = GuardaProveedor(almacen(), std::nullopt, datos(QStringLiteral("Norte"), "30-12345678-1"));
    DatosProveedor sinRazon = datos(QString(), "20-11111111-2");
    const qint64 ana = GuardaProveedor(almacen(), std::nullopt, sinRazon);
    struct Caso {
        std::optional<qint64> id;
        QString cuit;
        std::optional<QString> otro;
    };
    const Caso casos[] = {{std::nullopt, "30-12345678-1", "Norte"}, {std::nullopt, " 20-11111111-2 ", "Ana O'Neill"},
                          {norte, "30-12345678-1", std::nullopt},   {ana, "30-12345678-1", "Norte"},
                          {std::nullopt, "", std::nullopt},          {std::nullopt, "27-99999999-0", std::nullopt}};
    for (const Caso& c : casos)
        EXPECT_EQ(OtroProveedorConCuit(almacen(), c.id, c.cuit), c.otro) << c.cuit.toStdString();
}

TEST_P(Proveedores, BorradoConComprasYCuentaSinTocarStockNiCaja) {
    const qint64 norte = GuardaProveedor(almacen(), std::nullopt, datos(QStringLiteral("Norte"), QString()));
    const qint64 sur = GuardaProveedor(almacen(), std::nullopt, datos(QStringLiteral("Sur"), QString()));
    for (qint64 p : {norte, sur}) {
        const qint64 compra = almacen().inserta(
            QStringLiteral("INSERT INTO Compras (idProveedor, Fecha, Total) VALUES (?, '2026-11-20', 1000)"), {p},
            QStringLiteral("idCompra"));
        almacen().ejecuta(QStringLiteral("INSERT INTO DetCompras (idCompra, idProveedor, idArticulo, Cantidad) VALUES (?, ?, 1, 10)"),
                          {compra, p});
        almacen().ejecuta(QStringLiteral("INSERT INTO CtaProve (idProveedor, idCompra, Fecha, Debe) VALUES (?, ?, '2026-11-20', 1000)"),
                          {p, compra});
        almacen().ejecuta(QStringLiteral("INSERT INTO Caja (Fecha, Detalles, Egreso) VALUES ('2026-11-20', ?, 1000)"),
                          {QStringLiteral("Compra %1").arg(p)});
        almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, IdProveedor, StockActual) VALUES (?, 'Yerba', ?, 10)"),
                          {QStringLiteral("A%1").arg(p), p});
    }
    BorraProveedor(almacen(), norte);
    const QString quedan = QStringLiteral(
        "SELECT (SELECT count(*) FROM Proveedores), (SELECT count(*) FROM Compras), (SELECT count(*) FROM DetCompras), "
        "(SELECT count(*) FROM CtaProve), (SELECT count(*) FROM Caja WHERE Detalles LIKE 'Compra %'), "
        "(SELECT count(*) FROM Articulos WHERE IdProveedor = ?), (SELECT sum(StockActual) FROM Articulos WHERE Codigo LIKE 'A%')");
    EXPECT_EQ(Filas(almacen(), quedan, {norte}), QStringList{"1|1|1|1|2|1|20"});
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT idProveedor FROM Compras")), QStringList{QString::number(sur)});
}

TEST_P(Proveedores, BusquedaPorNombreEnRazonSocialOContacto) {
    for (const char* razon : {"Ñandú Hnos.", "Lácteos del Sur", "100% Natural", "Bazar Norte"})
        GuardaProveedor(almacen(), std::nullopt, datos(QString::fromUtf8(razon), QString()));
    almacen().ejecuta(QStringLiteral("UPDATE Proveedores SET Nombre = 'Pedro' WHERE RazonSocial = 'Bazar Norte'"));
    auto lista = [&](const char* texto) {
        const ConsultaConParametros c = ListaProveedores(almacen(), QString::fromUtf8(texto));
        return Filas(almacen(), QStringLiteral("SELECT RazonSocial FROM (") + c.sql + QStringLiteral(") AS q"), c.parametros)
            .join(u',');
    };
    const std::pair<const char*, const char*> casos[] = {
        {"", "100% Natural,Bazar Norte,Lácteos del Sur,Ñandú Hnos."},
        {"ñan", "Ñandú Hnos."},
        {"LÁC", "Lácteos del Sur"},
        {"%", "100% Natural"},
        {"o'n", "100% Natural,Lácteos del Sur,Ñandú Hnos."}, // el contacto Ana O'Neill
        {"pedro", "Bazar Norte"},
        {"_", ""}};
    for (const auto& [texto, esperado] : casos) EXPECT_EQ(lista(texto), QString::fromUtf8(esperado)) << texto;
}

ORV_AMBOS_MOTORES(Proveedores);

} // namespace
} // namespace orv
