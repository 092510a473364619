#include "articles/ui/panel_articulos.h"
#include "articles/ui/pan_cam_pre.h"

#include "articles/articulos.h"
#include "articles/consulta_articulos.h"
#include "articles/ui/pan_articulo.h"
#include "articles/ui/pan_camb_stock.h"
#include "articles/ui/pan_ed_rubros.h"
#include "articles/ui/pan_foto.h"
#include "articles/ui/pan_ingr_stock.h"
#include "articles/ui/pan_lis_pre.h"
#include "articles/ui/pan_gen_matriz.h"
#include "articles/ui/pan_rubros.h"
#include "production/ui/pan_produccion.h"
#include "reports/ui/lanzadores.h"
#include "suppliers/ui/pan_nue_prove.h"
#include "widgets/grilla.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/previsualiza.h"

#include <QCheckBox>
#include <QEvent>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace orv {

PanelArticulos::PanelArticulos(Almacen& almacen, const EstadoAplicacion& estado, const Configuracion& conf,
                               const Reloj& reloj, SalidaInformes& salida, AccionesArticulos acciones, QWidget* padre)
    : QWidget(padre), almacen_(almacen), estado_(estado), conf_(conf), reloj_(reloj), salida_(salida),
      acciones_(std::move(acciones)) {
    setObjectName(QStringLiteral("PanelArticulos"));
    QHBoxLayout* busquedas = armaBusquedas();
    armaGrilla();
    DisponePanel(this, QStringLiteral("Articulos"), busquedas, grilla_, armaBotones());
}

// Las tres búsquedas, el reinicio, la foto y los dos botones de la grilla.
QHBoxLayout* PanelArticulos::armaBusquedas() {
    auto* fila = new QHBoxLayout;
    fila->setSpacing(6);
    // Anchos mínimos chicos: en 1024x768 la fila entra sin empujar los botones fuera de la vista.
    text1_ = CajaBusqueda(QStringLiteral("Text1"), QStringLiteral("<por Código>"),
                          QStringLiteral("Código: lleva la grilla al primer artículo que empieza así. Enter: Mov. Stock"),
                          80, this);
    text15_ = CajaBusqueda(QStringLiteral("Text15"), QStringLiteral("<por Cgo. Prove.>"),
                           QStringLiteral("Código del proveedor: lleva la grilla al primer artículo que empieza así"), 80,
                           this);
    text11_ = CajaBusqueda(QStringLiteral("Text11"), QStringLiteral("<por Descripción>"),
                           QStringLiteral("Descripción: muestra sólo los artículos que la contienen"), 120, this);
    fila->addWidget(text1_, 2);
    fila->addWidget(text15_, 2);
    fila->addWidget(text11_, 3);
    auto* reinicio = Enlace(QStringLiteral("Command33"), QStringLiteral("Borra los filtros pre-establecidos"), this);
    connect(reinicio, &QPushButton::clicked, this, &PanelArticulos::reseteaFiltro);
    fila->addWidget(reinicio);
    chkMuesFoto_ = new QCheckBox(QStringLiteral("Mostrar imágen"), this);
    chkMuesFoto_->setObjectName(QStringLiteral("chkMuesFoto"));
    connect(chkMuesFoto_, &QCheckBox::toggled, this, &PanelArticulos::muestraFoto);
    fila->addWidget(chkMuesFoto_);
    fila->addStretch(1);
    auto* refrescar = BotonIcono(QStringLiteral("Command4"), QStyle::SP_BrowserReload, QStringLiteral("Actualizar la lista"), this);
    auto* previa = BotonIcono(QStringLiteral("Command25"), QStyle::SP_FileDialogContentsView,
                              QStringLiteral("Vista previa de impresión"), this);
    connect(refrescar, &QPushButton::clicked, this, &PanelArticulos::refresca);
    connect(previa, &QPushButton::clicked, this, [this] { PrevisualizaGrilla(*grilla_); });
    fila->addWidget(refrescar);
    fila->addWidget(previa);

    connect(text1_, &QLineEdit::textEdited, this, [this](const QString& t) {
        if (!t.isEmpty()) Intenta(this, [&] { grilla_->busca(QStringLiteral("Codigo"), t); });
    });
    connect(text15_, &QLineEdit::textEdited, this, [this](const QString& t) {
        if (!t.isEmpty()) Intenta(this, [&] { grilla_->busca(QStringLiteral("CgoProveedor"), t); });
    });
    connect(text11_, &QLineEdit::textEdited, this, &PanelArticulos::filtraDescripcion);
    // Enter en el código (lo que manda el lector al final) va al botón de Enter, "Mov. Stock".
    connect(text1_, &QLineEdit::returnPressed, this, [this] {
        if (command5_->isDefault() && command5_->isEnabled()) command5_->click();
    });
    text1_->installEventFilter(this);
    text15_->installEventFilter(this);
    return fila;
}

void PanelArticulos::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->fijaTextoAgrupar(QStringLiteral("Arrastrar aquí columnas para agrupar"));
    grilla_->muestraNavegador(true);
    grilla_->setObjectName(QStringLiteral("Data1"));
    grilla_->fijaTituloImpresion(QStringLiteral("Articulos"));
    grilla_->fijaClave(QStringLiteral("idArticulo"));
    const struct {
        const char* campo;
        const char* titulo;
        bool dinero;
    } columnas[] = {{"Codigo", "Código", false},           {"Descripcion", "Descripción", false},
                    {"Rubro", "Rubro", false},             {"StockActual", "Stock Actual", false},
                    {"StockMinimo", "Stock Mínimo", false}, {"PrecioCosto", "Precio Costo", true},
                    {"PrecioVenta", "Precio Venta", true}, {"CgoProveedor", "Cgo. Prove.", false},
                    {"idArticulo", "Nro.", false},         {"DescripcionMatriz", "Descripción Matriz", false}};
    for (const auto& c : columnas) {
        grilla_->fijaTitulo(QString::fromLatin1(c.campo), QString::fromUtf8(c.titulo));
        if (c.dinero) grilla_->fijaMascara(QString::fromLatin1(c.campo), estado_.MascaraMoneda);
    }
    connect(grilla_, &Grilla::filaActivada, this, [this] {
        // El doble clic edita como "Editar": no si el nivel no lo permite.
        if (command3_->isEnabled()) editar();
    });
    connect(grilla_, &Grilla::filaCambiada, this, &PanelArticulos::sigueFoto);
}

QPushButton* PanelArticulos::boton(const char* nombre, const QString& texto, void (PanelArticulos::*accion)()) {
    QPushButton* b = BotonPanel(QString::fromLatin1(nombre), texto, this);
    connect(b, &QPushButton::clicked, this, accion);
    return b;
}

// La columna de botones: ficha, stock e informes, rubros y precios.
QVBoxLayout* PanelArticulos::armaBotones() {
    auto* columna = new QVBoxLayout;
    columna->setSpacing(6);
    columna->addWidget(boton("Command1", QStringLiteral("Nuevo"), &PanelArticulos::nuevo));
    command3_ = boton("Command3", QStringLiteral("Editar"), &PanelArticulos::editar);
    columna->addWidget(command3_);
    columna->addWidget(boton("Command2", QStringLiteral("Quitar"), &PanelArticulos::quitar));
    columna->addSpacing(12);
    command5_ = boton("Command5", QStringLiteral("Mov. Stock"), &PanelArticulos::movStock);
    columna->addWidget(command5_);
    columna->addWidget(boton("Command52", QStringLiteral("Ajustar Inventario"), &PanelArticulos::ajustarInventario));
    columna->addWidget(boton("Command27", QStringLiteral("Faltante"), &PanelArticulos::faltante));
    columna->addSpacing(12);
    columna->addWidget(boton("Command6", QStringLiteral("Rubros"), &PanelArticulos::rubros));
    columna->addWidget(boton("Command45", QStringLiteral("Lista de precios"), &PanelArticulos::listaPrecios));
    columna->addWidget(boton("Command37", QStringLiteral("Cambio Precios"), &PanelArticulos::cambioPrecios));
    columna->addWidget(boton("Command35", QStringLiteral("Producción"), &PanelArticulos::produccion));
    columna->addStretch(1);
    return columna;
}

void PanelArticulos::carga() {
    reseteaFiltro();
    // Sin artículos con rubro, la lista de todos (también los que no tienen rubro), para que la
    // grilla tenga sus columnas y muestre lo que hay.
    if (grilla_->sql().isEmpty()) filtraDescripcion(QString());
    if (grilla_->modelo().columnCount() == 0 || anchosPuestos_) return;
    anchosPuestos_ = true;
    const std::pair<const char*, int> anchos[] = {{"Codigo", 120},     {"Descripcion", 280}, {"Rubro", 120},
                                                  {"StockActual", 90}, {"StockMinimo", 90}, {"PrecioCosto", 100},
                                                  {"PrecioVenta", 100}, {"CgoProveedor", 120}, {"idArticulo", 60},
                                                  {"DescripcionMatriz", 200}};
    for (const auto& [campo, ancho] : anchos) grilla_->fijaAnchoColumna(QString::fromLatin1(campo), ancho);
}

void PanelArticulos::reseteaFiltro() {
    Intenta(this, [this] {
        if (HayArticulosConRubro(almacen_)) grilla_->fijaConsulta(ConsultaArticulosCompleta(almacen_));
    });
}

void PanelArticulos::filtraDescripcion(const QString& texto) {
    Intenta(this, [&] {
        const ConsultaConParametros c = ConsultaArticulosPorDescripcion(almacen_, texto);
        grilla_->fijaConsulta(c.sql, c.parametros);
    });
}

void PanelArticulos::entraCodigo() {
    reseteaFiltro();
    text1_->clear();
    const QSignalBlocker quieto(text11_); // vaciarla no vuelve a filtrar
    text11_->clear();
    command5_->setDefault(true);
}

void PanelArticulos::entraCgoProveedor() {
    reseteaFiltro();
    const QSignalBlocker quieto(text11_);
    text11_->clear();
}

bool PanelArticulos::eventFilter(QObject* o, QEvent* e) {
    // El foco que vuelve con la ventana (al cerrar un mensaje, al volver de otra ventana) no es
    // "tomar el foco": no reinicia la lista ni borra lo escrito.
    if (e->type() == QEvent::FocusIn) {
        const Qt::FocusReason r = static_cast<QFocusEvent*>(e)->reason();
        if (r != Qt::ActiveWindowFocusReason && r != Qt::PopupFocusReason) {
            if (o == text1_) entraCodigo();
            else if (o == text15_) entraCgoProveedor();
        }
    }
    return QWidget::eventFilter(o, e);
}

std::optional<qint64> PanelArticulos::idActual() const {
    return ClaveActual(*grilla_, QStringLiteral("idArticulo"));
}

void PanelArticulos::cambiados() {
    Intenta(this, [this] { grilla_->refresca(); });
    if (acciones_.articulosCambiados) acciones_.articulosCambiados();
}

// La ficha de un artículo (0: uno nuevo), con sus botones de rubro y proveedor nuevos; true si se aceptó.
bool PanelArticulos::abreFicha(qint64 id) {
    PanArticulo ficha(almacen_, estado_, conf_, id, this);
    ficha.fijaNuevoRubro([this, &ficha] {
        PanEdRubros rubro(almacen_, std::nullopt, &ficha);
        rubro.exec();
    });
    ficha.fijaNuevoProveedor([this, &ficha] {
        panNueProve proveedor(almacen_, std::nullopt, estado_.ClaveImpositiva, &ficha);
        proveedor.exec();
    });
    ficha.fijaGeneraMatriz([this, &ficha](const QString& codigo, const QString& descripcion, const QString& existencia,
                                          const QList<VarianteMatriz>& filas) -> std::optional<QList<VarianteMatriz>> {
        panGenMatriz generador(almacen_, conf_, codigo, descripcion, existencia, filas, &ficha);
        if (!generador.listo() || generador.exec() != QDialog::Accepted) return std::nullopt;
        return generador.filas();
    });
    const bool aceptada = ficha.exec() == QDialog::Accepted;
    ultimoGrabado_ = ficha.idArticulo();
    return aceptada;
}

void PanelArticulos::cambioPrecios() {
    panCamPre precios(almacen_, estado_, conf_, this);
    precios.exec();
    cambiados();
}

void PanelArticulos::nuevo() {
    abreFicha(0);
    cambiados();
}

qint64 PanelArticulos::articuloNuevo() {
    const bool grabado = abreFicha(0);
    cambiados();
    return grabado ? ultimoGrabado_ : 0;
}

void PanelArticulos::editar() {
    const auto id = idActual();
    if (id && abreFicha(*id)) cambiados();
}

void PanelArticulos::quitar() {
    const auto id = idActual();
    if (!id) return;
    if (!Pregunta(QStringLiteral("Borra este articulo de la lista"), this)) return;
    if (!Intenta(this, [&] { BorraArticulo(almacen_, *id); })) return;
    cambiados();
}

void PanelArticulos::movStock() {
    const auto id = idActual();
    if (!id) return;
    {
        PanIngrStock ajuste(almacen_, conf_, reloj_, *id, this);
        ajuste.exec();
    }
    // De vuelta al código, listo para el próximo artículo leído (y la lista, al día).
    entraCodigo();
    text1_->setFocus();
}

void PanelArticulos::faltante() { InformeFaltante(salida_, reloj_.hoy()); }

void PanelArticulos::rubros() {
    PanRubros lista(almacen_, this);
    lista.exec();
    refresca(); // un rubro cambiado se ve en la columna "Rubro"
}

void PanelArticulos::ajustarInventario() {
    panCambStock cambios(almacen_, this);
    cambios.exec();
    refresca();
}

void PanelArticulos::produccion() {
    PanProduccion produccion(almacen_, estado_, reloj_, salida_, this);
    produccion.exec();
    refresca(); // las corridas cambian existencias
}

void PanelArticulos::listaPrecios() {
    panLisPre lista(almacen_, salida_, reloj_, this);
    lista.exec();
}

void PanelArticulos::refresca() {
    Intenta(this, [this] { grilla_->refresca(); });
}

void PanelArticulos::muestraFoto(bool si) {
    if (!si) {
        if (foto_) foto_->hide();
        return;
    }
    if (!foto_) foto_ = new panFoto(grilla_, this);
    sigueFoto();
}

void PanelArticulos::sigueFoto() {
    if (!chkMuesFoto_->isChecked() || !foto_) return;
    QString ruta;
    if (const auto id = idActual()) {
        try {
            ruta = FotoDeArticulo(almacen_, *id);
        } catch (const ErrorAlmacen&) {
            // Sin poder leerla, la ventana queda vacía: la foto no detiene a quien recorre la lista.
        }
    }
    foto_->muestra(ruta);
}

} // namespace orv
