// Pantallas de la configuración: "Configuraciones Varias" carga y guarda lo que muestra, un valor
// malo se dice y no cierra; el número de la terminal rige enseguida; zonas con su pregunta.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "maintenance/ui/pan_region.h"
#include "maintenance/ui/pan_zonas.h"
#include "widgets/grilla.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

namespace orv {
namespace {

using prueba::Filas;
using prueba::hijo;
using prueba::VigiaDeCajas;

class PantallasRegion : public prueba::PantallaDePrueba {};

// Lo que muestran los campos, en el orden de las pestañas.
QStringList muestra(const panRegion& p) {
    QStringList r;
    for (const char* n : {"cboPais", "cboMascara", "cboClaveImpositiva", "cboBalValor"}) r << hijo<QComboBox>(p, n)->currentText();
    for (const char* n : {"txIva", "txNumCifrasRubro", "txNumCifrasArticulo", "txBalPrefijos", "txBalCifrasCodigo", "txBalCifrasValor",
                          "txBalDecimales", "txNomEmpresa", "txFantasia", "txDireccion", "txCgoPost", "txTelefono", "txEMail",
                          "txWeb", "txCuit", "txCondicionIva"})
        r << hijo<QLineEdit>(p, n)->text();
    r << hijo<QDateEdit>(p, "dtInicioActividades")->text().trimmed();
    r << (hijo<QRadioButton>(p, "optVipPorPeso")->isChecked() ? "por importe" : "por cantidad");
    return r;
}

TEST_F(PantallasRegion, CargaLoGuardadoYAceptarGuardaLoQueMuestra) {
    // Sin nada guardado: los valores de omisión, y un país guardado que la lista no trae queda igual.
    {
        panRegion p(a(), *conf_);
        EXPECT_EQ(muestra(p), QStringList({"ARGENTINA", "###,###,##0.00", "CUIT", "Precio", "", "2", "4", "", "", "", "", "", "", "",
                                           "", "", "", "", "", "", "", "por importe"}));
    }
    const std::pair<const char*, const char*> grabados[] = {{"Pais", "GONDWANA"},     {"CoefIva", "no"},
                                                           {"FormaCalculoVIP", "C"}, {"NroCifrasRubro", "3"},
                                                           {"BalanzaValor", "Peso"}, {"BalanzaDecimales", "3"}};
    for (const auto& [nombre, valor] : grabados) conf_->graba(clave::miscelaneas, nombre, valor);
    a().ejecuta("INSERT INTO Empresa (NombreEmpresa, Cuit, InicioActividades) VALUES ('Don Tito', '30-71234567-1', ?)", {QDate(2009, 3, 2)});
    panRegion p(a(), *conf_);
    EXPECT_EQ(muestra(p), QStringList({"GONDWANA", "###,###,##0.00", "CUIT", "Peso", "", "3", "4", "", "", "", "3", "Don Tito", "", "",
                                       "", "", "", "", "30-71234567-1", "", "02/03/2009", "por cantidad"}));
    hijo<QComboBox>(p, "cboMascara")->setCurrentText("###,###,##0.000");
    hijo<QLineEdit>(p, "txIva")->setText("10.5");
    hijo<QLineEdit>(p, "txNumCifrasArticulo")->setText("5");
    hijo<QLineEdit>(p, "txFantasia")->setText("Despensa Don Tito");
    hijo<QRadioButton>(p, "optVipPorPeso")->setChecked(true);
    hijo<QDateEdit>(p, "dtInicioActividades")->setDate(QDate(1900, 1, 1)); // en blanco: sin fecha
    VigiaDeCajas vigia;
    p.acepta();
    EXPECT_EQ(vigia.vistas, QStringList());
    EXPECT_EQ(p.result(), QDialog::Accepted);
    QStringList guardado;
    for (const char* c : {"Pais", "MascaraMoneda", "ClaveImpositiva", "CoefIva", "NroCifrasRubro", "NroCifrasArticulo", "FormaCalculoVIP",
                          "BalanzaValor", "BalanzaDecimales"})
        guardado << conf_->lee(clave::miscelaneas, c);
    EXPECT_EQ(guardado, QStringList({"GONDWANA", "###,###,##0.000", "CUIT", "10.5", "3", "5", "P", "Peso", "3"}));
    EXPECT_EQ(Filas(a(), "SELECT NombreEmpresa, NombreFantasia, Cuit, InicioActividades FROM Empresa"),
              QStringList({"Don Tito|Despensa Don Tito|30-71234567-1|NULL"}));
}

TEST_F(PantallasRegion, UnValorMaloSeDiceYLaPantallaQuedaAbiertaSinGuardar) {
    const struct {
        const char* campo;
        const char* texto;
        const char* mensaje;
    } casos[] = {
        {"txNumCifrasRubro", "x", "Ingrese las cifras correctamente !!"},
        {"txBalCifrasValor", "9", "Balanza: prefijo (2 cifras), código (5) y valor (9) deben sumar 12 cifras."},
    };
    for (const auto& c : casos) {
        panRegion p(a(), *conf_);
        hijo<QLineEdit>(p, c.campo)->setText(c.texto);
        VigiaDeCajas vigia;
        p.acepta();
        QTest::qWait(30);
        ASSERT_EQ(vigia.vistas.size(), 1) << c.campo;
        EXPECT_TRUE(vigia.vistas[0].startsWith(QString::fromUtf8(c.mensaje))) << vigia.vistas[0].toStdString();
        EXPECT_NE(p.result(), QDialog::Accepted) << c.campo;
        EXPECT_EQ(conf_->lee(clave::miscelaneas, "NroCifrasRubro") + conf_->lee(clave::miscelaneas, "CoefIva"), "") << c.campo;
        EXPECT_EQ(Filas(a(), "SELECT count(*) FROM Empresa"), QStringList({"0"})) << c.campo;
    }
}

TEST_F(PantallasRegion, ElNumeroDeLaTerminalRigeEnseguidaYUnoMaloNo) {
    conf_->graba(clave::miscelaneas, "IdRed", "1");
    const struct {
        const char* texto;
        QStringList vistas;
        qint32 idRed;
    } casos[] = {{"abc", {"Error, datos mal ingresados!. El Id debe ser numerico."}, 1},
                 {"1.5", {"Error, datos mal ingresados!. El Id debe ser numerico."}, 1},
                 {"99999999999", {"Error, datos mal ingresados!. El Id debe ser numerico."}, 1},
                 {"0", {}, 0},
                 {" 23 ", {}, 23}};
    for (const auto& c : casos) {
        PanConfRed p(*conf_, estado_);
        EXPECT_EQ(p.campoId()->text(), QString::number(estado_.IdRed)) << c.texto;
        p.campoId()->setText(c.texto);
        VigiaDeCajas vigia;
        p.acepta();
        QTest::qWait(30);
        EXPECT_EQ(vigia.vistas, c.vistas) << c.texto;
        EXPECT_EQ(std::pair(estado_.IdRed, conf_->lee(clave::miscelaneas, "IdRed")), std::pair(c.idRed, QString::number(c.idRed))) << c.texto;
    }
}

TEST_F(PantallasRegion, ZonasSeAgreganEnLaPestaniaYEliminarPreguntaYRespetaLosClientes) {
    panZonas p(a());
    p.nuevo(ListaZonas::Zonas)->setText("Norte");
    p.agrega(ListaZonas::Zonas);
    EXPECT_EQ(p.nuevo(ListaZonas::Zonas)->text(), "");
    Grilla* g = p.grilla(ListaZonas::Zonas);
    EXPECT_EQ(Filas(a(), "SELECT Zona FROM Zonas ORDER BY Zona"), QStringList({"General", "Norte"}));
    // El nombre se corrige en la misma grilla; vacío se rechaza y queda el anterior.
    for (const char* nombre : {"Zona Norte", ""}) {
        VigiaDeCajas vigia;
        g->modelo().setData(g->modelo().index(1, g->modelo().columna("Zona")), QString::fromUtf8(nombre));
        QTest::qWait(30);
        EXPECT_EQ(vigia.vistas, *nombre ? QStringList() : QStringList({"Error, escriba el nombre!"})) << nombre;
        EXPECT_EQ(Filas(a(), "SELECT Zona FROM Zonas ORDER BY Zona"), QStringList({"General", "Zona Norte"})) << nombre;
    }
    const struct {
        int fila;
        QStringList vistas;
        QStringList quedan;
    } casos[] = {
        {0, {"Elimina?", "Error, existen clientes en ésta zona (1)! Pase esos clientes a otra zona antes de eliminarla."}, {"General", "Zona Norte"}},
        {1, {"Elimina?"}, {"General"}},
    };
    for (const auto& c : casos) {
        ASSERT_TRUE(g->irAFila(c.fila));
        VigiaDeCajas vigia("Elimina?");
        p.elimina(ListaZonas::Zonas);
        QTest::qWait(50);
        EXPECT_EQ(vigia.vistas, c.vistas) << c.fila;
        EXPECT_EQ(Filas(a(), "SELECT Zona FROM Zonas ORDER BY Zona"), c.quedan) << c.fila;
        EXPECT_EQ(g->modelo().rowCount(), c.quedan.size()) << c.fila;
    }
}

} // namespace
} // namespace orv
