#include "reports/ui/panel_informes.h"

#include "cash/ui/pan_situacion.h"
#include "reports/catalogo.h"
#include "reports/ui/pan_print_crystal.h"
#include "reports/ui/pan_rep_sel.h"
#include "reports/ui/salida_informes.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"

#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace orv {

PanelInformes::PanelInformes(Almacen& almacen, const Configuracion& conf, SalidaInformes& salida, QWidget* padre)
    : QWidget(padre), almacen_(almacen), conf_(conf), salida_(salida) {
    setObjectName(QStringLiteral("PanelPrincipal4"));
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(0, 0, 0, 0);
    capa->setSpacing(12);
    capa->addWidget(TituloPanel(QStringLiteral("Estadísticas e informes"), this));

    auto* periodo = new QHBoxLayout;
    desde_ = CampoFecha(QStringLiteral("Dtpicker4"), this);
    hasta_ = CampoFecha(QStringLiteral("Dtpicker5"), this);
    periodo->addWidget(new QLabel(QStringLiteral("Desde :"), this));
    periodo->addWidget(desde_);
    periodo->addSpacing(8);
    periodo->addWidget(new QLabel(QStringLiteral("Hasta :"), this));
    periodo->addWidget(hasta_);
    periodo->addStretch(1);
    capa->addLayout(periodo);

    auto* grupos = new QGridLayout;
    grupos->setHorizontalSpacing(18);
    grupos->setVerticalSpacing(14);
    struct Entrada {
        const char* nombre;
        const char* texto;
        void (PanelInformes::*accion)();
    };
    const auto grupo = [this, grupos](const QString& titulo, int fila, int col, std::initializer_list<Entrada> entradas) {
        auto* g = new QGroupBox(titulo, this);
        auto* v = new QVBoxLayout(g);
        v->setSpacing(2);
        for (const Entrada& e : entradas) {
            auto* b = Enlace(QString::fromLatin1(e.nombre), QString::fromUtf8(e.texto), g);
            v->addWidget(b);
            connect(b, &QPushButton::clicked, this, e.accion);
        }
        v->addStretch(1);
        grupos->addWidget(g, fila, col);
    };
    grupo(QStringLiteral("Ventas"), 0, 0,
          {{"Label25", "Comprobantes", &PanelInformes::comprobantes},
           {"Label27", "Ventas Resúmen", &PanelInformes::ventasResumen},
           {"Label30", "Ventas Items", &PanelInformes::ventasItems},
           {"Label34", "Ventas x Cliente", &PanelInformes::ventasCliente},
           {"Label36", "Ranking Vta Clientes", &PanelInformes::rankingClientes},
           {"Label38", "Ranking Artículos", &PanelInformes::rankingArticulos}});
    grupo(QStringLiteral("Clientes y proveedores"), 0, 1,
          {{"Label32", "Deuda Clientes", &PanelInformes::deudaClientes},
           {"Label44", "Compras", &PanelInformes::compras},
           {"label46", "Deuda con proveedores", &PanelInformes::deudaProveedores}});
    grupo(QStringLiteral("Artículos"), 1, 0,
          {{"Label40", "Listas de precios", &PanelInformes::listasPrecios},
           {"Label42", "Inventario", &PanelInformes::inventario}});
    grupo(QStringLiteral("Caja y otros"), 1, 1,
          {{"Label48", "Estado de Cuentas", &PanelInformes::estadoCuentas},
           {"Label50", "Situación General", &PanelInformes::situacion},
           {"lblCatalogoInformes", "Todos los informes...", &PanelInformes::catalogo}});
    grupos->setColumnStretch(0, 1);
    grupos->setColumnStretch(1, 1);
    grupos->setColumnStretch(2, 1);
    capa->addLayout(grupos);
    capa->addStretch(1);
}

void PanelInformes::fijaPeriodo(const QDate& desde, const QDate& hasta) {
    const QSignalBlocker a(desde_);
    const QSignalBlocker b(hasta_);
    desde_->setDate(desde);
    hasta_->setDate(hasta);
}

QDate PanelInformes::d1() const { return desde_->date(); }
QDate PanelInformes::d2() const { return hasta_->date(); }

// Cada entrada del panel es una acción con su guardia: la selección y la salida del informe.
void PanelInformes::usual(const QString& nombre) {
    Intenta(this, [&] { salida_.emite(nombre, SeleccionUsual(nombre, d1(), d2())); });
}

void PanelInformes::comprobantes() {
    PanPrinComprobantes d(this);
    if (d.exec() != QDialog::Accepted) return;
    const bool comerciales = d.comerciales();
    Intenta(this, [&] {
        salida_.emite(comerciales ? QStringLiteral("lista_facturas.rpt") : QStringLiteral("lista_no_comerciales.rpt"),
                      SeleccionListaComprobantes(comerciales, d1(), d2()));
    });
}

void PanelInformes::ventasResumen() {
    Intenta(this, [&] {
        salida_.emite(QStringLiteral("lista_tot_facturas_diario.rpt"), SeleccionVentasResumen(d1(), d2()));
    });
}

void PanelInformes::ventasItems() {
    PanRepSelArt d(d1(), d2(), this);
    if (d.exec() != QDialog::Accepted) return;
    Intenta(this, [&] {
        salida_.emite(QStringLiteral("total_articulos.rpt"),
                      SeleccionVentasItems(d.desde(), d.hasta(), d.todos() ? QString() : d.codigo()));
    });
}

void PanelInformes::ventasCliente() {
    PanRepSelVen d(almacen_, d1(), d2(), this);
    if (d.exec() != QDialog::Accepted) return;
    Intenta(this, [&] {
        salida_.emite(QStringLiteral("lista_ventas_clientes.rpt"),
                      SeleccionVentasClientes(d.desde(), d.hasta(), d.todos() ? QString() : d.nombre()));
    });
}

void PanelInformes::deudaClientes() { usual(QStringLiteral("saldotodosclientes.rpt")); }
void PanelInformes::rankingClientes() { usual(QStringLiteral("total_comisiones.rpt")); }
void PanelInformes::rankingArticulos() { usual(QStringLiteral("ranking_articulos.rpt")); }
void PanelInformes::listasPrecios() { usual(QStringLiteral("listadeprecios.rpt")); }
void PanelInformes::inventario() { usual(QStringLiteral("inventario.rpt")); }
void PanelInformes::deudaProveedores() { usual(QStringLiteral("saldotodosprove.rpt")); }

void PanelInformes::compras() {
    Intenta(this, [&] { salida_.emite(QStringLiteral("compras1.rpt"), SeleccionCompras(d1(), d2(), std::nullopt)); });
}

void PanelInformes::estadoCuentas() {
    PanSelCta d(almacen_, d1(), d2(), this);
    if (d.exec() != QDialog::Accepted) return;
    Intenta(this, [&] {
        salida_.emite(QStringLiteral("movctas.rpt"), SeleccionEstadoCuenta(d.idCuenta(), d.desde(), d.hasta()));
    });
}

void PanelInformes::catalogo() {
    PanPrintCrystal d(salida_, conf_, this);
    d.exec();
}

void PanelInformes::situacion() {
    PanSituacion pantalla(almacen_, salida_.estado(), d1(), d2(), this);
    pantalla.exec();
}

} // namespace orv
