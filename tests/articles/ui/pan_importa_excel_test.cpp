// El asistente de importación con una planilla real (.xlsx escrito por ssconvert): las hojas del
// archivo, la tabla destino y sus campos, el mapa armado columna tras columna con un valor fijo y un
// contador, la grilla corregida antes de migrar, el informe de errores y lo importado; y una
// importación grande cancelada entre lotes que deja lo confirmado y lo dice.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "articles/ui/pan_importa_excel.h"

#include <QProcess>
#include <QTest>
#include <QtWidgets>

namespace orv {
namespace {

using prueba::hijo;
using prueba::respondeCaja;

class PanImportaExcel : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion) VALUES ('Y1', 'Yerba')"));
        conf_->graba(clave::miscelaneas, QStringLiteral("CoefIva"), QStringLiteral("21"));
    }
    // Un .xlsx escrito por la suite de oficina a partir del CSV.
    QString planilla(const QByteArray& csv) {
        const QString origen = base_->carpeta() + QStringLiteral("/lista.csv");
        QFile f(origen);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(csv);
        f.close();
        const QString destino = base_->carpeta() + QStringLiteral("/lista.xlsx");
        QProcess::execute(QStringLiteral("ssconvert"), {origen, destino});
        EXPECT_TRUE(QFile::exists(destino));
        return destino;
    }
    void mapea(panImportaExcel& p, const char* columnaHoja, const char* campo) {
        hijo<QRadioButton>(p, "Option3")->setChecked(true);
        auto* lista = hijo<QListWidget>(p, "List1");
        EXPECT_EQ(lista->currentItem() ? lista->currentItem()->text() : QString(), QString::fromUtf8(columnaHoja));
        hijo<QComboBox>(p, "Combo2")->setCurrentText(QString::fromUtf8(campo));
        hijo<QPushButton>(p, "Command4")->click();
    }
    QStringList filasMapa(panImportaExcel& p) {
        QStringList r;
        for (const Mapeo& m : p.mapa()) r << QStringList{m.tipo, m.externo, m.interno, m.incrementador, m.mascara}.join(u'|');
        return r;
    }
    // Pulsa "Importar" y espera el final, respondiendo el mensaje que lo cuenta.
    std::shared_ptr<prueba::CajaVista> importa(panImportaExcel& p, bool cancelaEnSeguida = false) {
        auto caja = respondeCaja(QStringLiteral("Aceptar"), 120000);
        hijo<QPushButton>(p, "Command2")->click();
        if (cancelaEnSeguida) {
            QApplication::processEvents();
            hijo<QPushButton>(p, "cmdCancelar")->click();
        }
        for (int i = 0; i < 24000 && !caja->vista; ++i) QTest::qWait(5);
        return caja;
    }
};

TEST_F(PanImportaExcel, TresPasosConUnaPlanillaRealYSuInformeDeErrores) {
    const QString ruta = planilla("Codigo,Detalle,Precio,Costo\n"
                                  "A1,Caf\xC3\xA9,12.5,8\n"
                                  "Y1,Yerba repetida,3,2\n"
                                  "A3,,4,3\n"
                                  "A4,Az\xC3\xBA" "car,abc,1\n"
                                  "A5,T\xC3\xA9,7.25,\n");
    panImportaExcel p(a(), *conf_);
    p.show();
    EXPECT_EQ(hijo<QTabWidget>(p, "SSTab1")->tabText(2), QStringLiteral("Paso 3"));
    p.fijaArchivo(ruta);
    EXPECT_EQ(hijo<QComboBox>(p, "Combo3")->currentText(), QStringLiteral("lista.csv"));
    hijo<QComboBox>(p, "Combo3")->setCurrentText(QStringLiteral("Lista.csv$"));
    hijo<QPushButton>(p, "Command8")->click();
    auto* gx1 = hijo<QTableView>(p, "gx1");
    ASSERT_EQ(gx1->model()->rowCount(), 5);
    EXPECT_EQ(gx1->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Detalle"));

    auto* tabla = hijo<QComboBox>(p, "Combo1");
    tabla->setCurrentIndex(1);
    EXPECT_EQ(hijo<QLabel>(p, "Label12")->text(), QStringLiteral("Clientes"));
    tabla->setCurrentIndex(0);
    EXPECT_EQ(hijo<QLabel>(p, "Label12")->text(), QStringLiteral("Artículos"));
    EXPECT_EQ(hijo<QComboBox>(p, "Combo2")->itemText(2), QStringLiteral("Codigo"));

    // Sin campo elegido, "Agregar" con una columna no hace nada.
    hijo<QPushButton>(p, "Command4")->click();
    EXPECT_TRUE(p.mapa().isEmpty());
    mapea(p, "Codigo", "Codigo");
    mapea(p, "Detalle", "Descripcion");
    mapea(p, "Precio", "PrecioVenta");
    mapea(p, "Costo", "PrecioCosto");
    hijo<QRadioButton>(p, "Option4")->setChecked(true);
    EXPECT_FALSE(hijo<QListWidget>(p, "List1")->isEnabled());
    hijo<QRadioButton>(p, "Option2")->setChecked(true);
    hijo<QLineEdit>(p, "txComenzarEn")->setText(QStringLiteral("x"));
    hijo<QComboBox>(p, "Combo2")->setCurrentText(QStringLiteral("CgoProveedor"));
    auto error = respondeCaja(QStringLiteral("Aceptar"));
    hijo<QPushButton>(p, "Command4")->click();
    EXPECT_EQ(error->texto, QStringLiteral("Error, ingrese campos numéricos!"));
    hijo<QLineEdit>(p, "txComenzarEn")->setText(QStringLiteral("10"));
    hijo<QLineEdit>(p, "txIncrementar")->setText(QStringLiteral("10"));
    hijo<QComboBox>(p, "cboMascara")->setCurrentText(QStringLiteral("0000"));
    hijo<QPushButton>(p, "Command4")->click();
    hijo<QRadioButton>(p, "Option1")->setChecked(true);
    hijo<QLineEdit>(p, "txCampoFijo")->setText(QStringLiteral("5"));
    hijo<QComboBox>(p, "Combo2")->setCurrentText(QStringLiteral("StockActual"));
    hijo<QPushButton>(p, "Command4")->click();
    EXPECT_EQ(filasMapa(p), (QStringList{"XLS|Codigo|Codigo|0|", "XLS|Detalle|Descripcion|0|", "XLS|Precio|PrecioVenta|0|",
                                         "XLS|Costo|PrecioCosto|0|", "CIN|10|CgoProveedor|10|0000", "CFI|5|StockActual|0|"}));
    // La primera fila del mapa queda mientras haya otras; las demás se quitan.
    auto* ms1 = hijo<QTableWidget>(p, "MS1");
    ms1->setCurrentCell(0, 0);
    hijo<QPushButton>(p, "Command7")->click();
    ms1->setCurrentCell(5, 0);
    hijo<QPushButton>(p, "Command7")->click();
    EXPECT_EQ(ms1->rowCount(), 5);

    // La descripción vacía de A3 se corrige en la grilla antes de migrar.
    gx1->model()->setData(gx1->model()->index(2, 1), QStringLiteral("Azúcar rubia"));
    auto fin = importa(p);
    EXPECT_EQ(fin->texto, QStringLiteral("Importación terminada: 3 de 5 filas importadas, 2 con errores (vea el informe)."));
    auto* list3 = hijo<QListWidget>(p, "List3");
    QStringList informe;
    for (int i = 0; i < list3->count(); ++i) informe << list3->item(i)->text();
    EXPECT_EQ(informe, (QStringList{"Fila 3: el código Y1 ya es del artículo \"Yerba\"; no se importó",
                                    "Fila 5: PrecioVenta: \"abc\" no es un número"}));
    EXPECT_EQ(hijo<QProgressBar>(p, "Prb1")->value(), 5);
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT Codigo, Descripcion, PrecioVenta, PrecioCosto, PrecioFinal, CgoProveedor, "
                                                "StockActual FROM Articulos ORDER BY idArticulo")),
              (QStringList{"Y1|Yerba|0|0|0|NULL|0", "A1|Café|12.5|8|15.125|0010|0", "A3|Azúcar rubia|4|3|4.84|0030|0",
                           "A5|Té|7.25|0|8.7725|0050|0"}));
}

TEST_F(PanImportaExcel, CancelarEntreLotesDiceCuantasEntraron) {
    QByteArray csv = "Codigo;Nombre\n";
    for (int i = 0; i < 3000; ++i) csv += "C" + QByteArray::number(i) + ";Articulo " + QByteArray::number(i) + "\n";
    const QString ruta = base_->carpeta() + QStringLiteral("/muchos.csv");
    QFile f(ruta);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(csv);
    f.close();
    panImportaExcel p(a(), *conf_);
    p.show();
    p.fijaArchivo(ruta);
    ASSERT_TRUE(p.abreHoja());
    mapea(p, "Codigo", "Codigo");
    mapea(p, "Nombre", "Descripcion");
    auto fin = importa(p, true);
    const qint64 entraron = a().valor(QStringLiteral("SELECT count(*) FROM Articulos WHERE Codigo LIKE 'C%'")).toLongLong();
    EXPECT_LT(entraron, 3000);
    EXPECT_EQ(entraron % kFilasPorLote, 0);
    EXPECT_EQ(fin->texto, QStringLiteral("Importación cancelada: %1 filas importadas de 3000; las importadas quedan.").arg(entraron));
    EXPECT_FALSE(p.importando());
    EXPECT_TRUE(hijo<QPushButton>(p, "Command2")->isEnabled());
}

} // namespace
} // namespace orv
