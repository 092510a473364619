// Zonas, localidades y situaciones de IVA: alta, corrección y borrado, con lo que cada borrado
// protege, en los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "maintenance/zonas_iva.h"

namespace orv {
namespace {

using prueba::AvisoDe;
using prueba::Filas;

class ZonasIva : public prueba::PorMotorAlDia {
protected:
    void prepara() override {
        // Las filas de partida: la zona "General" y las situaciones de siempre, con el cliente 1
        // (consumidor final) en la zona y en la situación 1.
        zona_ = AgregaEnLista(almacen(), ListaZonas::Zonas, "  Centro ");
        almacen().ejecuta("INSERT INTO Vendedores (Nombre, idZona, idTipoIva) VALUES ('Ana', ?, 2), ('Beto', ?, 2)", {zona_, zona_});
    }
    qint64 zona_ = 0;
};

// Cada paso y lo que queda en la lista (el aviso si lo hubo).
TEST_P(ZonasIva, ZonasYLocalidadesSeAgreganCorrigenYBorranYUnaZonaConClientesNo) {
    Almacen& a = almacen();
    const qint64 norte = AgregaEnLista(a, ListaZonas::Zonas, "Norte");
    const qint64 rosario = AgregaEnLista(a, ListaZonas::Localidades, "Rosario");
    const struct {
        const char* que;
        std::function<void()> paso;
        const char* aviso;
        QStringList zonas;
        QStringList localidades;
    } casos[] = {
        {"de partida", [] {}, "", {"Centro", "General", "Norte"}, {"Rosario"}},
        {"nombre vacío", [&] { AgregaEnLista(a, ListaZonas::Zonas, "   "); }, "Error, escriba el nombre!", {"Centro", "General", "Norte"}, {"Rosario"}},
        {"nombre largo", [&] { AgregaEnLista(a, ListaZonas::Zonas, QString(51, u'z')); }, "Zona: admite hasta 50 caracteres (tiene 51).",
         {"Centro", "General", "Norte"}, {"Rosario"}},
        {"corrige", [&] { CambiaEnLista(a, ListaZonas::Zonas, norte, "Zona Norte"); }, "", {"Centro", "General", "Zona Norte"}, {"Rosario"}},
        {"corrige a vacío", [&] { CambiaEnLista(a, ListaZonas::Localidades, rosario, ""); }, "Error, escriba el nombre!",
         {"Centro", "General", "Zona Norte"}, {"Rosario"}},
        {"zona con clientes", [&] { BorraDeLista(a, ListaZonas::Zonas, zona_); },
         "Error, existen clientes en ésta zona (2)! Pase esos clientes a otra zona antes de eliminarla.",
         {"Centro", "General", "Zona Norte"}, {"Rosario"}},
        {"zona sin clientes", [&] { BorraDeLista(a, ListaZonas::Zonas, norte); }, "", {"Centro", "General"}, {"Rosario"}},
        {"localidad", [&] { BorraDeLista(a, ListaZonas::Localidades, rosario); }, "", {"Centro", "General"}, {}},
    };
    for (const auto& c : casos) {
        EXPECT_EQ(AvisoDe(c.paso), QString::fromUtf8(c.aviso)) << c.que;
        EXPECT_EQ(Filas(a, "SELECT Zona FROM Zonas ORDER BY Zona"), c.zonas) << c.que;
        EXPECT_EQ(Filas(a, "SELECT Localidad FROM Localidades ORDER BY Localidad"), c.localidades) << c.que;
    }
}

TEST_P(ZonasIva, SituacionesDeIvaConSuLetraYUnaConClientesNoSeBorra) {
    Almacen& a = almacen();
    const qint64 nueva = GuardaSituacionIva(a, std::nullopt, {"Sujeto no categorizado", "S"});
    // Una situación que sólo nombra un comprobante viejo.
    const qint64 vieja = GuardaSituacionIva(a, std::nullopt, {"Exterior", ""});
    a.ejecuta("INSERT INTO Comprobantes (Factura, idTipoIva) VALUES ('A0001-00000001', ?)", {vieja});
    const struct {
        const char* que;
        std::function<void()> paso;
        const char* aviso;
    } casos[] = {
        {"sin nombre", [&] { GuardaSituacionIva(a, nueva, {" ", "X"}); }, "Error, escriba el nombre!"},
        {"dos letras", [&] { GuardaSituacionIva(a, nueva, {"Sujeto", "XY"}); }, "Clave Fiscal: admite hasta 1 caracteres (tiene 2)."},
        {"corrige", [&] { GuardaSituacionIva(a, nueva, {"Sujeto no categorizado", " T "}); }, ""},
        {"con clientes", [&] { BorraSituacionIva(a, 2); }, "Error, existen clientes con ésta condición !"},
        {"sólo en comprobantes", [&] { BorraSituacionIva(a, vieja); }, ""},
    };
    for (const auto& c : casos) EXPECT_EQ(AvisoDe(c.paso), QString::fromUtf8(c.aviso)) << c.que;
    EXPECT_EQ(Filas(a, "SELECT idTipoIva, TipoIva, Fiscal FROM TipoDeIva ORDER BY idTipoIva"),
              QStringList({"1|Consumidor Final|F", "2|Responsable Inscripto|I", "3|Monotributo|M", "4|Exento|E", "5|No Responsable|N",
                           "6|Responsable no Inscripto|R", QString::number(nueva) + "|Sujeto no categorizado|T"}));
    EXPECT_EQ(LeeSituacionIva(a, nueva), (SituacionIva{"Sujeto no categorizado", "T"}));
    EXPECT_EQ(LeeSituacionIva(a, vieja), std::nullopt);
}

ORV_AMBOS_MOTORES(ZonasIva);

} // namespace
} // namespace orv
