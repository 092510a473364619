#pragma once
// El panel "Vender" abierto como en la ventana principal, lo que hace el lector de códigos, y lo
// que muestran los controles y guarda el borrador, para compararlos enteros.

#include "../../ui/caja_modal.h"
#include "../filas_prueba.h"
#include "sales/ui/panel_venta.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <memory>

namespace orv::prueba {

inline std::unique_ptr<PanelVenta> AbrePanelVenta(Almacen& a, EstadoAplicacion& e, const Configuracion& conf) {
    auto p = std::make_unique<PanelVenta>(a, e, conf);
    p->resize(1200, 700);
    p->leeCoefIva();
    p->llenaTiposComprobante();
    p->llenaArticulos();
    p->llenaVendedores();
    p->llenaFormasPago();
    p->show();
    QApplication::setActiveWindow(p.get());
    p->entra();
    return p;
}

// El texto y Enter en un campo del panel, como el lector o el cajero.
inline void Teclea(QWidget& p, const char* campo, const QString& texto) {
    auto* t = p.findChild<QLineEdit*>(QString::fromLatin1(campo));
    t->setFocus();
    QTest::keyClicks(t, texto);
    QTest::keyClick(t, Qt::Key_Return);
}

// Lo que muestran los controles nombrados (rótulo, campo o lista), en ese orden.
inline QStringList Textos(const QWidget& w, std::initializer_list<const char*> nombres) {
    QStringList r;
    for (const char* n : nombres) {
        QWidget* c = w.findChild<QWidget*>(QString::fromLatin1(n));
        if (auto* l = qobject_cast<QLabel*>(c)) r << l->text();
        else if (auto* e = qobject_cast<QLineEdit*>(c)) r << e->text();
        else if (auto* b = qobject_cast<QComboBox*>(c)) r << b->currentText();
        else r << QStringLiteral("(no hay %1)").arg(QLatin1String(n));
    }
    return r;
}

// Código, cantidad, unitario y subtotal de cada línea del borrador de la terminal.
inline QStringList LineasDelBorrador(const Almacen& a, qint32 red = 1) {
    return Filas(a, QStringLiteral("SELECT Codigo, Cantidad, Unitario, SubTotal FROM TmpFac WHERE PCRed = ? ORDER BY idTmpFac"), {red});
}

// Mientras vive, cierra toda caja de mensaje que aparezca y la cuenta: para ver que no aparece
// ninguna sin dejar a nadie esperando la próxima.
class VigiaDeCajas {
public:
    VigiaDeCajas() {
        QObject::connect(&reloj_, &QTimer::timeout, [this] {
            if (QMessageBox* m = cajaVisible()) {
                ++vistas;
                m->reject();
            }
        });
        reloj_.start(5);
    }
    int vistas = 0;

private:
    QTimer reloj_;
};

} // namespace orv::prueba
