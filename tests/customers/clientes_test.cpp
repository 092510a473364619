// La ficha del cliente: lo que se rechaza al grabar (nombre, zona, CUIT, descuento, tarjeta), lo
// que se graba entero, la lista del panel con sus filtros y el borrado con sus líneas. En los dos
// motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "customers/clientes.h"
#include "customers/cuenta.h"

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

const QString kFicha = QStringLiteral(
    "SELECT Nombre, Empresa, Domicilio, Localidad, Telefono, Telefono2, \"e-mail\", Cuit, Descuento, NroClienteVIP, idZona, "
    "idTipoIva, idTipoFormaPago, Comision, PuntosVIP FROM Vendedores WHERE idVendedor <> 1 ORDER BY idVendedor");

class Clientes : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        almacen().ejecuta(QStringLiteral("INSERT INTO Zonas (idZona, Zona) VALUES (7, 'Norte'), (8, 'Sur')"));
    }
    // Una ficha completa en la zona 7.
    static DatosCliente ficha(const char* nombre, const char* tarjeta = "", const char* cuit = "") {
        DatosCliente d;
        d.nombre = QString::fromUtf8(nombre);
        d.empresa = QStringLiteral("D'Angelo S.A.");
        d.domicilio = QStringLiteral("Mitre 120");
        d.localidad = QStringLiteral("Funes");
        d.telefono = QStringLiteral("341-555");
        d.email = QStringLiteral("ana@correo.com.ar");
        d.cuit = QString::fromLatin1(cuit);
        d.descuento = QStringLiteral("2.5");
        d.nroClienteVIP = QString::fromLatin1(tarjeta);
        d.idZona = 7;
        d.idTipoIva = 2;
        d.idTipoFormaPago = 1;
        return d;
    }
    qint64 graba(const DatosCliente& d, std::optional<qint64> id = std::nullopt, bool conCuit = true) {
        return GrabaCliente(almacen(), id, d, conCuit, QStringLiteral("CUIT"));
    }
};

TEST_P(Clientes, AlGrabarSeRechazaLoQueElRestoDelSistemaNoPuedeUsar) {
    graba(ficha("Ana", "123456"));
    const QString kTarjeta = QStringLiteral("Error, el número de cliente VIP lleva sólo cifras, al menos 6!");
    auto conZona = [](QVariant zona) {
        DatosCliente d = ficha("Bruno");
        d.idZona = zona;
        return d;
    };
    auto conDescuento = [](const char* descuento) {
        DatosCliente d = ficha("Bruno");
        d.descuento = QString::fromLatin1(descuento);
        return d;
    };
    const struct {
        DatosCliente datos;
        QString aviso;
    } casos[] = {
        {ficha("  "), "Error, coloque el nombre del cliente!"},
        {conZona(QVariant()), "Error, elija la zona del cliente!"},
        {conZona(99), "Error, elija la zona del cliente!"},
        {ficha("Bruno", "", "20-12345678-0"), "Error, el CUIT 20-12345678-0 no es válido: revise sus cifras!"},
        {conDescuento("1,5"), "Descuento %: el número está mal escrito. Use el punto para los decimales (1234.50)."},
        // Con menos de 6 cifras la venta lo tomaría por un número de cliente.
        {ficha("Bruno", "12345"), kTarjeta},
        {ficha("Bruno", "12345a"), kTarjeta},
        {ficha("Bruno", "123456"), "Error, la tarjeta 123456 ya es del cliente \"Ana\"!"},
        {ficha(std::string(101, 'x').c_str()), "Nombre y Apellido: admite hasta 100 caracteres (tiene 101)."},
    };
    for (const auto& c : casos) EXPECT_EQ(AvisoDe([&] { graba(c.datos); }), c.aviso) << c.datos.nombre.toStdString();
    // Aceptados: CUIT válido, sin tarjeta, descuento vacío; fuera de la Argentina el número no se controla.
    DatosCliente sinDescuento = ficha("Carla", "", "20-12345678-6");
    sinDescuento.descuento.clear();
    graba(sinDescuento);
    graba(ficha("Dora", "", "XAXX010101000"), std::nullopt, false);
    EXPECT_EQ(Filas(almacen(), kFicha),
              (QStringList{"Ana|D'Angelo S.A.|Mitre 120|Funes|341-555|NULL|ana@correo.com.ar||2.5|123456|7|2|1|0|0",
                           "Carla|D'Angelo S.A.|Mitre 120|Funes|341-555|NULL|ana@correo.com.ar|20-12345678-6|0|NULL|7|2|1|0|0",
                           "Dora|D'Angelo S.A.|Mitre 120|Funes|341-555|NULL|ana@correo.com.ar|XAXX010101000|2.5|NULL|7|2|1|0|0"}));
    // La localidad nueva queda una sola vez en la lista de localidades.
    EXPECT_EQ(Filas(almacen(), QStringLiteral("SELECT Localidad FROM Localidades")), QStringList{"Funes"});
}

TEST_P(Clientes, ModificarCambiaLaFichaYLeerLaDevuelveIgual) {
    const qint64 id = graba(ficha("Ana", "123456"));
    DatosCliente d = ficha("Ana María", "123456", "27-00000000-6");
    d.idZona = 8;
    d.idTipoFormaPago = QVariant();
    d.localidad = QStringLiteral("Roldán");
    EXPECT_EQ(graba(d, id), id); // su propia tarjeta no es de otro
    const std::optional<DatosCliente> leido = LeeCliente(almacen(), id);
    ASSERT_TRUE(leido.has_value());
    EXPECT_EQ(QStringList({leido->nombre, leido->localidad, leido->cuit, leido->descuento, leido->nroClienteVIP,
                           leido->idZona.toString(), leido->idTipoFormaPago.isNull() ? "NULL" : "?"}),
              (QStringList{"Ana María", "Roldán", "27-00000000-6", "2.5", "123456", "8", "NULL"}));
    EXPECT_EQ(AvisoDe([&] { graba(d, id + 100); }), "El cliente ya no existe: otro puesto lo borró.");
    EXPECT_FALSE(LeeCliente(almacen(), id + 100).has_value());
}

// La lista del panel: sólo clientes con zona, por zona, localidad y nombre; los filtros buscan
// una parte del nombre o la empresa y de la localidad, sin distinguir mayúsculas ni acentos raros.
TEST_P(Clientes, ElPanelListaLosClientesConZonaYFiltra) {
    almacen().ejecuta(QStringLiteral(
        "INSERT INTO Vendedores (idVendedor, Nombre, Empresa, Localidad, idZona) VALUES "
        "(10, 'Ñoño Pérez', NULL, 'Funes', 8), (11, 'Ana', 'Panadería La Espiga', 'Rosario', 7), "
        "(12, 'Bruno', NULL, 'Funes', 7), (13, 'Sin zona', NULL, 'Funes', NULL), (14, 'Zona borrada', NULL, 'Funes', 99)"));
    const struct {
        const char *nombre, *localidad;
        QStringList ids;
    } casos[] = {
        {"", "", {"1", "12", "11", "10"}},     // Consumidor Final está en la zona de partida, "General"
        {"ñoÑO", "", {"10"}},
        {"espiga", "", {"11"}},
        {"", "fun", {"12", "10"}},
        {"b", "FUNES", {"12"}},
        {"%", "", {}},
    };
    for (const auto& c : casos) {
        const ConsultaConParametros q = ConsultaPanelClientes(almacen(), QString::fromUtf8(c.nombre), QString::fromUtf8(c.localidad));
        QStringList ids;
        for (const QString& f : Filas(almacen(), q.sql, q.parametros)) ids << f.section(u'|', 9, 9);
        EXPECT_EQ(ids, c.ids) << c.nombre << " / " << c.localidad;
    }
}

// Borrar un cliente se lleva sus líneas (y su deuda, del total) y nada más: ni las de otro, ni
// sus comprobantes, ni sus puntos, ni la caja. El cliente de la venta se borra como cualquiera.
TEST_P(Clientes, BorrarSeLlevaLasLineasDelClienteYNadaMas) {
    Almacen& a = almacen();
    const qint64 ana = graba(ficha("Ana"));
    const qint64 bruno = graba(ficha("Bruno"));
    RegistraLineaManual(a, ana, QDate(2026, 11, 1), "Deuda", "500", true);
    RegistraLineaManual(a, bruno, QDate(2026, 11, 1), "Deuda", "70", true);
    a.ejecuta(QStringLiteral("INSERT INTO Comprobantes (Factura, idVendedor, Total) VALUES ('B0001-00000001', ?, 500)"), {ana});
    a.ejecuta(QStringLiteral("INSERT INTO Vip (idCliente, PuntosVIP) VALUES (?, 5)"), {ana});
    const QString total = QStringLiteral("SELECT sum(Comision) - sum(Liquidacion) FROM Comisiones");
    EXPECT_EQ(Filas(a, total), QStringList{"570"});
    EXPECT_TRUE(BorraCliente(a, ana));
    EXPECT_FALSE(BorraCliente(a, ana));
    EXPECT_TRUE(BorraCliente(a, 1));
    EXPECT_EQ(Filas(a, total), QStringList{"70"});
    EXPECT_EQ(SaldoCliente(a, ana).aTexto(), "0.0000");
    EXPECT_EQ(Filas(a, QStringLiteral("SELECT (SELECT count(*) FROM Vendedores), (SELECT count(*) FROM Comprobantes), "
                                      "(SELECT count(*) FROM Vip)")),
              QStringList{"1|1|1"});
}

ORV_AMBOS_MOTORES(Clientes);

} // namespace
} // namespace orv
