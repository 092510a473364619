// Pantallas de etiquetas: lo que "Impresion de Códigos de Barra" muestra al abrir y cómo pasan las
// entradas de una lista a la otra; "Configurar etiquetas" con un campo mal escrito y al guardar
// sobre una definición que ya existe.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "articles/etiquetas.h"
#include "articles/ui/pan_conf_etiq.h"
#include "articles/ui/pan_etiquetas.h"
#include "sales/ui/panel_prueba.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace orv {
namespace {

using prueba::hijo;
using prueba::respondeCaja;
using prueba::Textos;

const QDate kDia(2026, 11, 25);

QStringList items(const QListWidget* l) {
    QStringList r;
    for (int i = 0; i < l->count(); ++i) r << l->item(i)->text();
    return r;
}

class PantallasEtiquetas : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (idArticulo, Codigo, Descripcion, ImprimeCodigoBarra) VALUES "
                                   "(1, '010001', 'Yerba', 1), (2, '020001', 'Lavandina', 1)"));
        a().ejecuta(QStringLiteral("INSERT INTO MovimientoStock (idArticulo, Fecha, idTipoMovimiento, Ingreso, Egreso) VALUES "
                                   "(1, ?, 1, 2, 0), (2, ?, 1, 3, 0)"),
                    {kDia, kDia});
        GuardaHojaEtiquetas(a(), {QStringLiteral("Rollo"), 1, 1, 0, 0, 0, 0, 50, 25, 18});
        GuardaHojaEtiquetas(a(), {QStringLiteral("A4 3x7"), 3, 7, 7.2, 15.15, 2.5, 0, 63.5, 38.1, 24});
    }
    QStringList hojas() {
        return prueba::Filas(a(), QStringLiteral("SELECT Nombre, No_Ancho, No_Largo, Margen_Izq, Margen_Sup, Dist_Colum, Dist_Filas, "
                                                 "Etiq_Ancho, Etiq_Largo, TamanoFuente FROM Etiquetas ORDER BY idEtiqueta"));
    }
};

TEST_F(PantallasEtiquetas, LasEntradasDelDiaPasanDeUnaListaALaOtra) {
    panCgoBarra d(a(), kDia);
    d.show();
    EXPECT_EQ(Textos(d, {"Label3", "Label8", "Combo1", "Text2"}),
              (QStringList{"Este proceso permite imprimir etiquetas de códigos de barra de los articulos ingresados al stock en "
                           "la fecha 25/11/2026",
                           "5", "A4 3x7", "1"}));
    EXPECT_EQ(items(d.disponibles()), QStringList{});
    EXPECT_EQ(items(d.aImprimir()), (QStringList{"010001", "010001", "020001", "020001", "020001"}));
    // Sin elegir nada, el aviso de siempre.
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    hijo<QPushButton>(d, "Command3")->click();
    EXPECT_EQ(QStringList({caja->titulo, caja->texto}), (QStringList{"Atención", "Debe seleccionar al menos un elemento."}));
    // Dos elegidas vuelven, en el orden de la lista; después todas y todas de nuevo.
    d.aImprimir()->item(3)->setSelected(true);
    d.aImprimir()->item(0)->setSelected(true);
    hijo<QPushButton>(d, "Command3")->click();
    const auto listas = [&] {
        return QStringList{items(d.disponibles()).join(u','), items(d.aImprimir()).join(u','), hijo<QLabel>(d, "Label8")->text()};
    };
    EXPECT_EQ(listas(), (QStringList{"010001,020001", "010001,020001,020001", "3"}));
    hijo<QPushButton>(d, "Command2")->click();
    EXPECT_EQ(listas(), (QStringList{"", "010001,020001,020001,010001,020001", "5"}));
    hijo<QPushButton>(d, "Command4")->click();
    EXPECT_EQ(listas(), (QStringList{"010001,020001,020001,010001,020001", "", "0"}));
}

TEST_F(PantallasEtiquetas, UnCampoQueNoEsNumeroVuelveAUnoYLaFuenteADiez) {
    panConfEtiq d(a(), QStringLiteral("A4 3x7"), nullptr);
    d.show();
    QApplication::setActiveWindow(&d);
    EXPECT_EQ(Textos(d, {"Text7", "Text1", "Text2", "Text3", "Text4", "Text5", "Text6", "Text8", "Text9", "Text10"}),
              (QStringList{"A4 3x7", "3", "7", "7.2", "2.5", "15.15", "0", "63.5", "38.1", "24"}));
    for (const auto& [nombre, vuelve] : {std::pair{"Text1", "1"}, std::pair{"Text10", "10"}}) {
        QLineEdit* t = hijo<QLineEdit>(d, nombre);
        t->setFocus();
        t->selectAll();
        QTest::keyClicks(t, QStringLiteral("x"));
        auto caja = respondeCaja(QStringLiteral("Aceptar"));
        QTest::keyClick(t, Qt::Key_Return);
        EXPECT_EQ(QStringList({t->text(), caja->texto}),
                  (QStringList{QString::fromLatin1(vuelve), QStringLiteral("\"x\" no es un número: el campo vuelve a ") +
                                                                QString::fromLatin1(vuelve) + u'.'}));
    }
}

TEST_F(PantallasEtiquetas, GuardarSobreUnNombreExistentePreguntaAntes) {
    panConfEtiq d(a(), QString(), nullptr);
    d.show();
    d.campo(7)->setText(QStringLiteral("Rollo"));
    d.campo(1)->setText(QStringLiteral("2"));
    const QStringList antes = hojas();
    auto no = respondeCaja(QStringLiteral("No"));
    d.guardar();
    EXPECT_EQ(QStringList({no->titulo, no->texto}),
              (QStringList{"Pregunta", "La definición de etiquetas llamada 'Rollo' ya existe, desea sobreescribirla ?"}));
    EXPECT_EQ(hojas(), antes);
    EXPECT_EQ(d.guardada(), QString());
    auto si = respondeCaja(QStringLiteral("Sí"));
    d.guardar();
    EXPECT_TRUE(si->vista);
    EXPECT_EQ(hojas(), (QStringList{"Rollo|2|7|7.2|15.15|2.5|0|63.5|38.1|24", "A4 3x7|3|7|7.2|15.15|2.5|0|63.5|38.1|24"}));
    EXPECT_EQ(d.guardada(), QStringLiteral("Rollo"));
}

} // namespace
} // namespace orv
