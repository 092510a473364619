#include "sales/ui/panel_venta.h"

#include "reports/ui/salida_informes.h"
#include "sales/registro.h"
#include "sales/salida_comprobante.h"
#include "sales/tipos_comprobante.h"
#include "sales/ui/pan_comprobantes.h"
#include "sales/ui/pan_fpago.h"
#include "sales/ui/pan_sel_art.h"
#include "sales/ui/pan_sel_cliente.h"
#include "widgets/grilla.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "store/entrada.h"
#include "store/formato.h"
#include "store/rutinas.h"

#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QDoubleValidator>
#include <QEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSqlQuery>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kLineas = QStringLiteral("SELECT Codigo, Cantidad, Descripcion, Unitario, SubTotal, Sn, idTmpFac, "
                                       "idArticulo FROM TmpFac WHERE PCRed = ? ORDER BY idTmpFac");

} // namespace

PanelVenta::PanelVenta(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf, QWidget* padre)
    : QWidget(padre), almacen_(almacen), estado_(estado), conf_(conf), balanza_(LeeConfBalanza(conf)) {
    armaPantalla();
    conecta();
}

void PanelVenta::conecta() {
    connect(command55_, &QPushButton::clicked, this, &PanelVenta::agrandarPulsado);
    connect(lblTipCompro_, &QPushButton::clicked, this, [this] {
        lblTipCompro_->hide();
        cboSelTipoCo_->show();
        cboSelTipoCo_->setFocus();
        cboSelTipoCo_->showPopup();
    });
    connect(cboSelTipoCo_, &QComboBox::activated, this, [this] {
        eligeTipo();
        text7_->setFocus();
    });
    connect(command20_, &QPushButton::clicked, this, &PanelVenta::agregar);
    connect(command18_, &QPushButton::clicked, this, &PanelVenta::borrarItem);
    connect(command21_, &QPushButton::clicked, this, &PanelVenta::anular);
    connect(command16_, &QPushButton::clicked, this, &PanelVenta::registrar);
    connect(command38_, &QPushButton::clicked, this, &PanelVenta::eligeCliente);
    connect(command58_, &QPushButton::clicked, this, &PanelVenta::buscaArticulo);
    connect(command17_, &QPushButton::clicked, this, &PanelVenta::masDatos);

    // Enter en cada campo hace lo del botón que corresponde (el lector de códigos termina con
    // Enter en Text7, y la línea se agrega con el precio del artículo).
    connect(text7_, &QLineEdit::returnPressed, this, &PanelVenta::agregar);
    // "3*" antes del código: la cantidad se ve en su campo mientras llega el código (el "0" hace
    // las veces del código que todavía no se escribió).
    connect(text7_, &QLineEdit::textEdited, this, [this](const QString& t) {
        if (const auto cantidad = SeparaCantidad(t + QStringLiteral("0")).cantidad) txtCant_->setText(*cantidad);
    });
    // Enter en el código del proveedor o en la lista trae antes el precio del artículo: nunca se
    // agrega una línea a un precio que el cajero no vio.
    connect(text16_, &QLineEdit::returnPressed, this, [this] {
        tag_ = OrigenLinea::CodigoProveedor;
        agregaConPrecioALaVista(codigoProveedor());
    });
    connect(txtCant_, &QLineEdit::returnPressed, this, &PanelVenta::agregar);
    connect(txUnit_, &QLineEdit::returnPressed, this, &PanelVenta::agregar);
    connect(text8_, &QLineEdit::returnPressed, this, &PanelVenta::eligeCliente);
    connect(text8_, &QLineEdit::textEdited, this, [this] {
        idCliente_.reset();
        label6_->setText(QStringLiteral("???"));
    });
    connect(txUnit_, &QLineEdit::textChanged, this, &PanelVenta::actualizaConImpuesto);
    connect(txSuPago_, &QLineEdit::textChanged, this, &PanelVenta::actualizaVuelto);
    connect(grilla_, &Grilla::filaCambiada, this, [this] { command18_->setEnabled(grilla_->filaActual().has_value()); });
    connect(grilla_, &Grilla::filaEditada, this, &PanelVenta::recalculaLineas);

    for (QObject* o : {static_cast<QObject*>(text7_), static_cast<QObject*>(text16_), static_cast<QObject*>(text9_),
                       static_cast<QObject*>(txtCant_), static_cast<QObject*>(txtPorcDescuento_),
                       static_cast<QObject*>(txtPorcImpuesto_), static_cast<QObject*>(cboSelTipoCo_),
                       static_cast<QObject*>(grilla_->tabla())})
        o->installEventFilter(this);
    text9_->lineEdit()->installEventFilter(this);
    connect(text9_->lineEdit(), &QLineEdit::returnPressed, this, [this] {
        tag_ = OrigenLinea::Lista;
        agregaConPrecioALaVista(precioPorLista());
    });

    conectaAtajos();
}

// Las teclas de función del panel, dichas al pie de la pantalla.
void PanelVenta::conectaAtajos() {
    auto atajo = [this](QKeySequence k, auto f) {
        auto* s = new QShortcut(k, this);
        s->setContext(Qt::WidgetWithChildrenShortcut);
        connect(s, &QShortcut::activated, this, f);
    };
    atajo(Qt::Key_F2, [this] {
        text8_->setFocus();
        text8_->selectAll();
    });
    atajo(Qt::Key_F3, [this] { buscaArticulo(); });
    atajo(Qt::Key_F4, [this] { text16_->setFocus(); });
    atajo(Qt::Key_F5, [this] { masDatos(); });
    atajo(Qt::Key_F6, [this] { txSuPago_->setFocus(); });
    atajo(Qt::Key_F7, [this] { grilla_->tabla()->setFocus(); });
    atajo(Qt::Key_F8, [this] { anular(); });
    atajo(Qt::Key_F9, [this] { registrar(); });
    atajo(Qt::Key_Escape, [this] { text7_->setFocus(); });
}

bool PanelVenta::eventFilter(QObject* o, QEvent* e) {
    if (e->type() == QEvent::FocusIn) {
        if (o == text7_) {
            tag_ = OrigenLinea::CodigoBarras;
            QTimer::singleShot(0, text7_, &QLineEdit::selectAll);
        } else if (o == text16_) {
            tag_ = OrigenLinea::CodigoProveedor;
        } else if (o == text9_ || o == text9_->lineEdit()) {
            tag_ = OrigenLinea::Lista;
        } else if (o == txtCant_) {
            QTimer::singleShot(0, txtCant_, &QLineEdit::selectAll);
        }
    } else if (e->type() == QEvent::FocusOut) {
        const auto razon = static_cast<QFocusEvent*>(e)->reason();
        if (razon != Qt::PopupFocusReason) {
            if (o == text7_) precioPorCodigo();
            else if (o == text16_) codigoProveedor();
            else if (o == text9_->lineEdit()) precioPorLista();
            else if (o == txtPorcDescuento_) {
                if (tomaPorcentaje(txtPorcDescuento_, QStringLiteral("Desc."), porcDescuento_)) {
                    estado_.DescuentoClienteActual = porcDescuento_;
                    totales();
                }
            } else if (o == txtPorcImpuesto_) {
                if (tomaPorcentaje(txtPorcImpuesto_, QStringLiteral("Imp."), porcImpuesto_)) {
                    conf_.graba(clave::miscelaneas, QStringLiteral("CoefIva"), txtPorcImpuesto_->text());
                    totales();
                }
            } else if (o == cboSelTipoCo_ && !cboSelTipoCo_->view()->isVisible()) {
                cboSelTipoCo_->hide();
                lblTipCompro_->show();
            }
        }
    } else if (e->type() == QEvent::KeyPress && o == grilla_->tabla()) {
        auto* k = static_cast<QKeyEvent*>(e);
        // "+" y "-" cambian la cantidad de la línea, los del teclado numérico y también los del
        // teclado principal, para la portátil que no tiene teclado numérico.
        if (k->key() == Qt::Key_Plus) {
            cambiaCantidadActual(+1);
            return true;
        }
        if (k->key() == Qt::Key_Minus) {
            cambiaCantidadActual(-1);
            return true;
        }
        if (k->key() == Qt::Key_Delete) {
            borrarItem();
            return true;
        }
    }
    return QWidget::eventFilter(o, e);
}

// --- listas ---

void PanelVenta::llenaTiposComprobante() {
    cboSelTipoCo_->clear();
    LlenaCombo(cboSelTipoCo_, almacen_,
               QStringLiteral("SELECT idTipoComprobante, Tipo FROM TiposDeComprobantes ORDER BY idTipoComprobante"), {},
               QStringLiteral("Tipo"), QStringLiteral("idTipoComprobante"));
    SelComboId(cboSelTipoCo_, estado_.idTipoComprobanteActual);
    lblTipCompro_->setText(cboSelTipoCo_->currentText());
}

void PanelVenta::eligeTipo() {
    if (cboSelTipoCo_->currentIndex() < 0) return;
    estado_.idTipoComprobanteActual = cboSelTipoCo_->currentData().toInt();
    lblTipCompro_->setText(cboSelTipoCo_->currentText());
    if (!Intenta(this, [this] { lblProx_->setText(ProximoNumeroMostrado(almacen_, estado_.idTipoComprobanteActual)); }))
        lblProx_->clear();
    cboSelTipoCo_->hide();
    lblTipCompro_->show();
}

void PanelVenta::llenaVendedores() {
    const QVariant elegido = cboVendedores_->currentData();
    cboVendedores_->clear();
    LlenaCombo(cboVendedores_, almacen_, QStringLiteral("SELECT idUsuario, NombreCompleto FROM Usuarios ORDER BY idUsuario"),
               {}, QStringLiteral("NombreCompleto"), QStringLiteral("idUsuario"));
    if (elegido.isValid()) SelComboId(cboVendedores_, elegido);
}

void PanelVenta::seleccionaVendedor(qint64 idUsuario) { SelComboId(cboVendedores_, idUsuario); }

void PanelVenta::llenaArticulos() {
    text9_->clear();
    LlenaCombo(text9_, almacen_, QStringLiteral("SELECT idArticulo, Descripcion FROM Articulos ORDER BY Descripcion"), {},
               QStringLiteral("Descripcion"), QStringLiteral("idArticulo"));
    text9_->setCurrentIndex(-1);
    text9_->setEditText(QString());
}

void PanelVenta::llenaFormasPago() {
    const int antes = cboFPago_->currentIndex();
    cboFPago_->clear();
    LlenaCombo(cboFPago_, almacen_, QStringLiteral("SELECT idTipoFormaPago, FormaPago FROM FormasDePago ORDER BY idTipoFormaPago"),
               {}, QStringLiteral("FormaPago"), QStringLiteral("idTipoFormaPago"));
    cboFPago_->setCurrentIndex(antes >= 0 && antes < cboFPago_->count() ? antes : (cboFPago_->count() ? 0 : -1));
}

void PanelVenta::leeCoefIva() {
    const QString coef = conf_.lee(clave::miscelaneas, QStringLiteral("CoefIva"));
    if (EsNumerico(QStringView(coef))) txtPorcImpuesto_->setText(coef);
}

// --- entrada al panel y grilla ---

void PanelVenta::entra() {
    balanza_ = LeeConfBalanza(conf_);
    leeLineas(false);
    eligeTipo();
    QTimer::singleShot(0, this, &PanelVenta::ajustaGrilla);
    // Una venta sin cliente toma el predeterminado, si lo hay; con cliente, el cajero sigue cargando.
    // Un número escrito y todavía no confirmado no se pisa.
    if (idCliente_ || (text8_->text().isEmpty() && aplicaClientePredeterminado())) text7_->setFocus();
    else text8_->setFocus();
}

bool PanelVenta::aplicaClientePredeterminado() {
    std::optional<ClienteVenta> c;
    Intenta(this, [&] { c = ClientePredeterminado(almacen_, conf_); });
    if (!c) return false;
    text8_->setText(QString::number(c->idVendedor));
    llenaCliente(*c, QStringLiteral("Cliente:"));
    return true;
}

void PanelVenta::leeLineas(bool alFinal) {
    Intenta(this, [this] { grilla_->fijaConsulta(kLineas, {estado_.IdRed}); });
    if (alFinal) {
        int ultima = 0;
        while (grilla_->modelo().asegura(ultima + 1)) ++ultima;
        if (grilla_->modelo().rowCount() > 0) grilla_->irAFila(ultima);
    }
    command18_->setEnabled(grilla_->filaActual().has_value());
    totales();
}

void PanelVenta::fijaSoloLectura(bool si) {
    soloLectura_ = si;
    if (si) {
        grilla_->fijaEditables({}, {});
        return;
    }
    grilla_->fijaEditables({QStringLiteral("Cantidad"), QStringLiteral("Unitario"), QStringLiteral("Sn")},
                           [this](const QSqlRecord& r, const QString& campo, const QVariant& valor) {
                               CorrigeLinea(almacen_, r.value(QStringLiteral("idTmpFac")).toLongLong(), campo, valor);
                           });
}

void PanelVenta::ajustaGrilla() {
    QTableView* t = grilla_->tabla();
    const int ancho = t->viewport()->width();
    static constexpr int proporcion[] = {18, 10, 30, 19, 19};
    QHeaderView* h = t->horizontalHeader();
    for (int visual = 0, usadas = 0; visual < h->count() && usadas < 5; ++visual) {
        const int logica = h->logicalIndex(visual);
        if (h->isSectionHidden(logica)) continue;
        h->resizeSection(logica, ancho * proporcion[usadas++] / 100);
    }
}

void PanelVenta::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    ajustaGrilla();
}

// --- precios de la carga ---

void PanelVenta::muestraPrecio(const QVariant& precio) {
    const Dinero p = Dinero::desdeVariant(precio);
    txUnit_->setText(FormatoMoneda(p, estado_.MascaraMoneda));
    actualizaConImpuesto();
}

void PanelVenta::actualizaConImpuesto() {
    // Sólo se muestra: un precio que no se lee o no cabe deja el precio con impuesto en blanco.
    const auto v = LeeImporte(txUnit_->text());
    const double imp = porcentajeVigente(txtPorcImpuesto_, porcImpuesto_);
    if (!v || *v > Dinero(kImporteMaximo) || *v < -Dinero(kImporteMaximo)) {
        txtUnitImpuesto_->clear();
        return;
    }
    txtUnitImpuesto_->setText(FormatoMoneda(imp == 0 ? *v : v->por(imp / 100.0 + 1.0), estado_.MascaraMoneda));
}

void PanelVenta::precioPorCodigo() {
    Intenta(this, [this] {
        const QString codigo = SeparaCantidad(text7_->text()).codigo;
        const auto art = codigo.isEmpty() ? std::nullopt : ArticuloPorCodigo(almacen_, codigo);
        if (!art || art->precioVenta.isNull()) {
            text9_->setEditText(QString());
            txUnit_->setText(QStringLiteral("0"));
            txtUnitImpuesto_->setText(QStringLiteral("0"));
        } else {
            muestraPrecio(art->precioVenta);
            SelComboId(text9_, art->idArticulo);
        }
    });
    if (text7_->text().isEmpty()) text9_->setEditText(QString());
}

std::optional<qint64> PanelVenta::articuloDeLista() const {
    const int i = text9_->findText(text9_->currentText(), Qt::MatchExactly);
    if (i < 0) return std::nullopt;
    return text9_->itemData(i).toLongLong();
}

std::optional<ArticuloVenta> PanelVenta::precioPorLista() {
    if (tag_ != OrigenLinea::Lista) return std::nullopt;
    const auto id = articuloDeLista();
    if (!id) return std::nullopt;
    std::optional<ArticuloVenta> art;
    Intenta(this, [&] { art = ArticuloPorId(almacen_, *id); });
    if (!art) {
        txUnit_->setText(QStringLiteral("0"));
        txtUnitImpuesto_->setText(QStringLiteral("0"));
        text7_->clear();
        text16_->clear();
        return std::nullopt;
    }
    muestraPrecio(art->precioVenta);
    text7_->setText(art->codigo);
    text16_->setText(art->cgoProveedor);
    return art;
}

std::optional<ArticuloVenta> PanelVenta::codigoProveedor() {
    if (text16_->text().trimmed().isEmpty()) return std::nullopt;
    std::optional<ArticuloVenta> art;
    Intenta(this, [&] { art = ArticuloPorCgoProveedor(almacen_, text16_->text()); });
    if (art) {
        text9_->setEditText(art->descripcion);
        text7_->setText(art->codigo);
        precioPorLista(); // con el Tag "TEXT" no hace nada
    }
    return art;
}

void PanelVenta::agregaConPrecioALaVista(const std::optional<ArticuloVenta>& art) {
    // Sin artículo, "Agregar" dice lo que falta. Con artículo sin precio, el cursor va al precio
    // para que el cajero lo escriba; con precio, se muestra y se agrega.
    if (art && art->precioVenta.isNull()) {
        txUnit_->setFocus();
        txUnit_->selectAll();
        return;
    }
    if (art) muestraPrecio(art->precioVenta);
    agregar();
}

// --- agregar, borrar, anular ---

void PanelVenta::agregar() {
    PedidoLinea p;
    p.origen = tag_;
    const CodigoConCantidad escrito = SeparaCantidad(text7_->text());
    p.codigo = escrito.codigo;
    p.idDeLista = articuloDeLista();
    p.cantidad = escrito.cantidad.value_or(txtCant_->text());
    p.unitario = txUnit_->text();
    bool noEncontrado = false;
    QString etiquetaErronea;
    const bool agregada = Intenta(this, [&] {
        try {
            // Una etiqueta de balanza trae su importe o su peso; cualquier otro código, lo de siempre.
            if (p.origen != OrigenLinea::CodigoBarras ||
                !AgregaLineaBalanza(almacen_, balanza_, estado_.IdRed, p.codigo, escrito.cantidad))
                AgregaLinea(almacen_, estado_.IdRed, p);
        } catch (const ErrorAlmacen& e) {
            throw Aviso(QStringLiteral("Error:") + e.descripcion());
        } catch (const ArticuloNoEncontrado&) {
            noEncontrado = true;
        } catch (const CodigoBalanzaErroneo& e) {
            etiquetaErronea = e.texto();
        }
    });
    if (noEncontrado) {
        muestraNoEncontrado(p.origen == OrigenLinea::Lista ? text9_->currentText() : p.codigo);
        return;
    }
    if (!etiquetaErronea.isEmpty()) {
        muestraEnFranja(etiquetaErronea);
        return;
    }
    if (!agregada) {
        text7_->setFocus();
        return;
    }
    QApplication::beep();
    lblNoEncontrado_->hide();
    leeLineas(true);
    limpiaEntrada();
    tag_ = OrigenLinea::CodigoBarras;
    text7_->setFocus();
}

void PanelVenta::muestraNoEncontrado(const QString& codigo) {
    muestraEnFranja(kArticuloNoEncontrado +
                    (codigo.trimmed().isEmpty() ? QString() : QStringLiteral("   ") + codigo.trimmed()));
}

void PanelVenta::muestraEnFranja(const QString& texto) {
    // Sin caja modal: el Enter del próximo escaneo no se pierde cerrándola. El código queda
    // marcado y lo que se escanee después lo reemplaza.
    lblNoEncontrado_->setText(texto);
    lblNoEncontrado_->show();
    QApplication::beep();
    QTimer::singleShot(180, this, [] { QApplication::beep(); }); // dos pitidos: no entró
    text7_->setFocus();
    text7_->selectAll();
}

void PanelVenta::limpiaEntrada() {
    text9_->setCurrentIndex(-1);
    text9_->setEditText(QString());
    txtCant_->setText(QStringLiteral("1"));
    text7_->clear();
    text16_->clear();
    txUnit_->setText(QStringLiteral("0"));
    txtUnitImpuesto_->setText(QStringLiteral("0"));
}

void PanelVenta::borrarItem() {
    const auto id = grilla_->claveActual();
    if (!id) return;
    if (!Pregunta(QStringLiteral("Borra este ítem?"), this)) return;
    Intenta(this, [&] { BorraLinea(almacen_, id->toLongLong()); });
    leeLineas(false);
}

void PanelVenta::anular() {
    if (!Pregunta(QStringLiteral("Está seguro de cancelar el documento actual?"), this)) return;
    reseteaFactura();
}

void PanelVenta::cambiaCantidadActual(double delta) {
    const auto id = grilla_->claveActual();
    if (!id) return;
    Intenta(this, [&] { CambiaCantidad(almacen_, id->toLongLong(), delta); });
    grilla_->refresca();
    totales();
}

void PanelVenta::recalculaLineas() {
    bool recalculo = false;
    if (!Intenta(this, [&] {
            if (!TieneNivel(almacen_, estado_.idNivelActual, QStringLiteral("CamPreVentaArticulos"))) return;
            RecalculaLineas(almacen_, estado_.IdRed);
            recalculo = true;
        }) ||
        !recalculo)
        return;
    grilla_->refresca();
    totales();
}

} // namespace orv
