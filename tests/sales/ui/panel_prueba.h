#pragma once
// El panel "Vender" abierto como en la ventana principal, y lo que hace el lector de códigos.

#include "sales/ui/panel_venta.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
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
inline void Teclea(PanelVenta& p, const char* campo, const QString& texto) {
    auto* t = p.findChild<QLineEdit*>(QString::fromLatin1(campo));
    t->setFocus();
    QTest::keyClicks(t, texto);
    QTest::keyClick(t, Qt::Key_Return);
}

} // namespace orv::prueba
