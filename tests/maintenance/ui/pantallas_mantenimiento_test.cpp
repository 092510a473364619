// Las pantallas de mantenimiento conducidas como el usuario: el respaldo que pide destino y después
// copia, la restauración elegida en la lista, la purga con sus dos preguntas y el explorador de tablas.

#include "apoyo/filas.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "maintenance/respaldo.h"
#include "maintenance/ui/pan_backup.h"
#include "maintenance/ui/pan_restaurar.h"
#include "maintenance/ui/pan_sel_path.h"
#include "maintenance/ui/pan_tablas.h"
#include "maintenance/ui/purgar_datos.h"
#include "widgets/grilla.h"

#include <QtWidgets>
#include <QSignalSpy>

namespace orv {
namespace {

using prueba::Filas;
using prueba::hijo;

// Responde "Sí" a toda pregunta y "Aceptar" a los demás mensajes, anotando "título: texto".
class Respondedor {
public:
    Respondedor() {
        QObject::connect(&reloj_, &QTimer::timeout, [this] {
            if (QMessageBox* m = prueba::cajaVisible()) {
                vistas << m->windowTitle() + QStringLiteral(": ") + m->text();
                prueba::pulsa(m, m->button(QMessageBox::Yes) ? QStringLiteral("Sí") : QStringLiteral("Aceptar"));
            }
        });
        reloj_.start(5);
    }
    QStringList vistas;

private:
    QTimer reloj_;
};

class PantallasMantenimiento : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        destino_ = base_->carpeta() + QStringLiteral("/pendrive");
        QDir().mkpath(destino_);
        a().ejecuta("INSERT INTO Vendedores (idVendedor, Nombre) VALUES (501, 'Ana'), (502, 'Bruno')");
        a().ejecuta("INSERT INTO Comprobantes (idComprobante, Fecha, Factura, Nombre) VALUES (1, '2026-11-20', "
                    "'B0001-00000001', 'Ana')");
        a().ejecuta("INSERT INTO Caja (Fecha, Detalles, Ingreso) VALUES ('2026-11-20', 'Venta', 10)");
    }
    QString destino_;
};

TEST_F(PantallasMantenimiento, SinDestinoLoPideYDespuesHaceUnSoloRespaldo) {
    PanBackup pantalla(a(), *conf_, reloj_);
    pantalla.show();
    EXPECT_EQ(hijo<QLineEdit>(pantalla, "Text1")->text(), QDir::toNativeSeparators(base_->destino()));
    auto caja = prueba::respondeCaja(QStringLiteral("Aceptar"));
    auto selector = prueba::alAbrirse<panSelPath>([&](panSelPath* p) {
        p->seleccionaCarpeta(destino_);
        hijo<QPushButton>(p, "Command1")->click();
    });
    hijo<QPushButton>(pantalla, "Command1")->click();
    EXPECT_EQ(caja->titulo + u'|' + caja->texto, QStringLiteral("Error|Seleccione un destino !"));
    EXPECT_TRUE(selector->vista);
    EXPECT_EQ(hijo<QLineEdit>(pantalla, "Text2")->text(), QDir::toNativeSeparators(destino_));

    Respondedor respuestas;
    QSignalSpy fin(&pantalla, &PanBackup::respaldoTerminado);
    hijo<QPushButton>(pantalla, "Command1")->click();
    EXPECT_FALSE(hijo<QPushButton>(pantalla, "Command1")->isEnabled()); // mientras copia
    ASSERT_TRUE(fin.wait(20000));
    EXPECT_EQ(fin.at(0).at(0).toBool(), true);
    EXPECT_EQ(respuestas.vistas, QStringList{QStringLiteral("Ok: Listo, Operación realizada correctamente!")});
    EXPECT_FALSE(hijo<QPushButton>(pantalla, "Command1")->isEnabled()); // una visita, un respaldo
    EXPECT_EQ(QDir(destino_).entryList(QDir::Files),
              (QStringList{QStringLiteral("ORVBACK_20261123091500.db"), QStringLiteral("ORVREGBACK20261123091500.ini")}));
    EXPECT_EQ(hijo<QProgressBar>(pantalla, "pbAvance")->value(), 100);
    EXPECT_EQ(CarpetaRespaldos(*conf_), destino_);
}

TEST_F(PantallasMantenimiento, RestauraElRespaldoElegidoDespuesDeConfirmar) {
    HaceRespaldo(a(), *conf_, destino_, QDateTime(QDate(2026, 11, 20), QTime(20, 30, 5)));
    AnotaCarpetaRespaldos(*conf_, destino_);
    a().ejecuta("DELETE FROM Vendedores WHERE idVendedor = 502");
    a().ejecuta("INSERT INTO Caja (Fecha, Detalles, Ingreso) VALUES ('2026-11-23', 'Después', 5)");

    panRestaurar pantalla(a(), *conf_, reloj_);
    pantalla.show();
    auto* lista = hijo<QTreeWidget>(pantalla, "lstRespaldos");
    ASSERT_EQ(lista->topLevelItemCount(), 1);
    QStringList fila;
    for (int c = 0; c < 6; ++c) fila << (c == 2 ? QStringLiteral("tamaño") : lista->topLevelItem(0)->text(c));
    EXPECT_EQ(fila, (QStringList{"20/11/2026", "20:30:05", "tamaño", "Archivo", "Sí", "ORVBACK_20261120203005.db"}));
    EXPECT_TRUE(lista->topLevelItem(0)->text(2).endsWith(QStringLiteral(" kB"))) << lista->topLevelItem(0)->text(2).toStdString();

    Respondedor respuestas;
    QSignalSpy fin(&pantalla, &panRestaurar::restauracionTerminada);
    hijo<QPushButton>(pantalla, "Command1")->click();
    ASSERT_TRUE(fin.wait(20000));
    EXPECT_TRUE(pantalla.restaurado());
    ASSERT_EQ(respuestas.vistas.size(), 2);
    EXPECT_TRUE(respuestas.vistas[0].startsWith(QStringLiteral("Pregunta: La base de datos actual se reemplaza por el "
                                                               "respaldo del 20/11/2026 20:30:05")));
    EXPECT_TRUE(respuestas.vistas[1].startsWith(QStringLiteral("Listo: Se restauró el respaldo del 20/11/2026 20:30:05")));
    EXPECT_TRUE(respuestas.vistas[1].contains(QStringLiteral("ORVBACK_20261123091500.db"))) << respuestas.vistas[1].toStdString();
    a().olvidaPreparadas();
    EXPECT_EQ(Filas(a(), "SELECT idVendedor, Nombre FROM Vendedores ORDER BY 1"), (QStringList{"1|Consumidor Final", "501|Ana", "502|Bruno"}));
    EXPECT_EQ(Filas(a(), "SELECT Detalles FROM Caja"), QStringList{"Venta"});
}

TEST_F(PantallasMantenimiento, PurgaConSusDosPreguntasDespuesDeRespaldar) {
    QWidget ventana;
    {
        // Un "No" a la primera pregunta no toca nada.
        auto no = prueba::respondeCaja(QStringLiteral("No"));
        EXPECT_FALSE(PurgarDatos(a(), *conf_, reloj_, &ventana));
        EXPECT_EQ(no->texto, QStringLiteral("Borra todos los movimientos de facturas, caja, compras y stock? ??"));
        EXPECT_EQ(a().valor("SELECT count(*) FROM Comprobantes").toInt(), 1);
    }
    Respondedor respuestas;
    EXPECT_TRUE(PurgarDatos(a(), *conf_, reloj_, &ventana));
    const QString respaldo = QDir::toNativeSeparators(base_->carpeta() + QStringLiteral("/Respaldos/ORVBACK_20261123091500.db"));
    EXPECT_EQ(respuestas.vistas,
              (QStringList{QStringLiteral("Pregunta: Borra todos los movimientos de facturas, caja, compras y stock? ??"),
                           QStringLiteral("Pregunta: Está completamente seguro ??"),
                           QStringLiteral("Listo: Los archivos de trabajo osea COMPROBANTES,DETALLES,MOVIMIENTOS DE STOCK, "
                                          "CAJA Y CUENTAS CORRIENTES han sido vaciados !\n\nAntes se guardó un respaldo en ") +
                               respaldo,
                           QStringLiteral("Ok: Recuerde colocar correctamente la numeración de los comprobantes")}));
    EXPECT_EQ(Filas(a(), "SELECT (SELECT count(*) FROM Comprobantes), (SELECT count(*) FROM Caja), "
                         "(SELECT count(*) FROM Vendedores)"),
              QStringList{"0|0|3"});
    EXPECT_TRUE(QFileInfo::exists(respaldo));
}

TEST_F(PantallasMantenimiento, MultiTablasMuestraCadaArchivoDeSoloLectura) {
    panTablas pantalla(a());
    pantalla.show();
    auto* combo = hijo<QComboBox>(pantalla, "Combo1");
    EXPECT_EQ(combo->count(), 7);
    QStringList vistas;
    for (int i = 0; i < combo->count(); ++i) {
        combo->setCurrentIndex(i);
        const ModeloGrilla& m = pantalla.grilla()->modelo();
        vistas << combo->itemText(i) + u'|' + QString::number(m.rowCount()) + u'|' + m.campo(0);
        EXPECT_FALSE(m.flags(m.index(0, 0)) & Qt::ItemIsEditable);
    }
    EXPECT_EQ(vistas, (QStringList{"Artículos por rubro|0|Rubro", "Clientes|3|idVendedor", "Proveedores|0|idProveedor",
                                   "Comprobantes|1|idComprobante", "Compras|0|idCompra", "Caja|1|Fecha",
                                   "Detalle de ventas|0|Fecha"}));
}

} // namespace
} // namespace orv
