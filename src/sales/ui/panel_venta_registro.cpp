// Panel "Vender": registrar la venta y empezar otra, los totales y el vuelto, y el cliente.

#include "sales/ui/panel_venta.h"

#include "reports/ui/salida_informes.h"
#include "sales/registro.h"
#include "sales/salida_comprobante.h"
#include "sales/ticket.h"
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

QDate PanelVenta::hoy() const {
    static const Reloj relojDelSistema;
    return (reloj_ ? reloj_ : &relojDelSistema)->hoy();
}

// Lo que la venta muestra al pulsar "Registrar", como se guarda: los importes tal como se ven.
DatosRegistro PanelVenta::datosDelRegistro(const QDate& hoy) {
    DatosRegistro d;
    d.idRed = estado_.IdRed;
    d.idUsuario = estado_.idUsuarioActual;
    d.idTipoComprobante = estado_.idTipoComprobanteActual;
    d.idCliente = idCliente_;
    d.clienteEsVip = clienteEsVip_;
    d.nombreCliente = estado_.NombreClienteActual;
    d.cuitCliente = estado_.CuitClienteActual;
    d.idTipoIva = estado_.idTipoIvaActual;
    d.formaPago = estado_.FormaPagoActual;
    d.cupon = estado_.CuponActual;
    if (cboVendedores_->currentIndex() >= 0) d.idVendio = cboVendedores_->currentData().toLongLong();
    d.textoTipo = lblTipCompro_->text();
    d.suPago = ImporteMostrado(txSuPago_->text());
    d.subTotal = ImporteMostrado(lblSubTotal_->text());
    d.porcDescuento = porcentajeVigente(txtPorcDescuento_, porcDescuento_);
    d.montDescuento = ImporteMostrado(lblImporteDescuento_->text());
    d.neto = ImporteMostrado(txtNeto_->text());
    d.porcImpuesto = Dinero::desdeDouble(porcentajeVigente(txtPorcImpuesto_, porcImpuesto_));
    d.importeIva = ImporteMostrado(lblImpuestoImporte_->text());
    d.total = ImporteMostrado(txtMontoTotal_->text());
    d.formaCalculoVip = conf_.lee(clave::miscelaneas, QStringLiteral("FormaCalculoVIP"));
    d.hoy = hoy;
    return d;
}

void PanelVenta::registrar() {
    const QDate hoy = this->hoy();
    // 1. Fecha cerrada.
    if (!Intenta(this, [&] { ExigeFechaAbierta(almacen_, hoy); })) return;
    // 3. Cliente.
    if (text8_->text().trimmed().isEmpty()) {
        MensajeError(QStringLiteral("Seleccione Cliente!"), this);
        text8_->setFocus();
        return;
    }
    // 4. Pregunta.
    if (!Pregunta(QStringLiteral("Registra e Imprime :") + cboSelTipoCo_->currentText(), this)) return;
    // 5. Líneas.
    leeLineas(false);
    const QString problema = totales();
    if (CuentaRegistros(almacen_, QStringLiteral("SELECT idTmpFac FROM TmpFac WHERE PCRed = ?"), {estado_.IdRed}) == 0) {
        MensajeError(QStringLiteral("No hay articulos a facturar!"), this);
        return;
    }
    // Unos totales que no valen no se registran: quedarían en cero con líneas de verdad.
    if (!problema.isEmpty()) {
        MensajeError(QStringLiteral("No se registró el comprobante: ") + problema, this);
        return;
    }
    // 6. Ruta de salida, con sus preguntas.
    const std::optional<TipoComprobante> tipo = LeeTipo(almacen_, estado_.idTipoComprobanteActual);
    const QString plantilla = tipo && tipo->plantilla != kSinPlantilla ? tipo->plantilla : QString();
    PreguntasRuta preguntas;
    preguntas.preguntaSinPlantilla = [this](const QString& t) {
        return PreguntaSiNo(t, QStringLiteral("Atención"), Icono::Exclamacion, this);
    };
    std::optional<Ruta> ruta;
    if (!Intenta(this, [&] { ruta = DecideRuta(almacen_, plantilla, tipo ? tipo->letra : QString(), idCliente_, preguntas); }))
        return;
    if (!ruta) return;

    // 7 a 17, todo o nada.
    const DatosRegistro d = datosDelRegistro(hoy);
    const auto noSeRegistro = [](const QString& motivo) {
        return Aviso(QStringLiteral("No se registró el comprobante: ") + motivo +
                     QStringLiteral("\nEl borrador queda como estaba."));
    };
    Registrado r;
    const bool registrado = Intenta(this, [&] {
        try {
            r = RegistraComprobante(almacen_, d, *ruta);
        } catch (const Aviso& a) {
            throw noSeRegistro(a.texto());
        } catch (const ErrorAlmacen& e) {
            throw noSeRegistro(e.descripcion());
        } catch (const ImporteFueraDeRango&) {
            throw noSeRegistro(kImporteFueraDeRango);
        }
    });
    if (!registrado) return;
    estado_.MontDescuentoActual = d.montDescuento;
    // 18. Impresión, con el comprobante ya guardado: una falla no pierde nada.
    if (*ruta == Ruta::Plantilla && salida_) salida_->imprimeComprobante(plantilla, r.idComprobante);
    if (*ruta == Ruta::Tickets) Intenta(this, [&] { ImprimeTicket(almacen_, conf_, r.idComprobante); });
    // 19 y 20.
    reseteaFactura();
    Q_EMIT comprobanteRegistrado(r.idComprobante);
}

void PanelVenta::reimpresion() {
    if (!Intenta(this, [this] { ExigeNivel(almacen_, estado_.idNivelActual, QStringLiteral("veventas")); })) return;
    if (!salida_) return;
    PanReImpresion dialogo(almacen_, *salida_, hoy(), this);
    dialogo.exec();
}

void PanelVenta::reseteaFactura() {
    // 1 y 2
    txSuPago_->clear();
    txSuVuelto_->setText(FormatoMoneda(Dinero(), estado_.MascaraMoneda));
    Intenta(this, [this] { VaciaBorrador(almacen_, estado_.IdRed); });
    // 3
    label6_->setText(QStringLiteral("????"));
    clienteEsVip_ = false;
    idCliente_.reset();
    SelComboId(cboVendedores_, estado_.idUsuarioActual);
    // 4
    estado_.DescuentoClienteActual = 0;
    estado_.MontDescuentoActual = Dinero();
    estado_.NombreClienteActual = QStringLiteral("Cons.Final");
    estado_.FormaPagoActual = QStringLiteral("EFVO");
    estado_.ObservacionesActual.clear();
    estado_.idTipoIvaActual = 1;
    estado_.CuitClienteActual.clear();
    estado_.CuponActual = QStringLiteral("000");
    text8_->clear();
    for (QLabel* l : {lblSubTotal_, txtMontoTotal_, txtNeto_, lblImporteDescuento_, lblImpuestoImporte_})
        l->setText(FormatoMoneda(Dinero(), estado_.MascaraMoneda));
    txtPorcDescuento_->setText(QStringLiteral("0"));
    // 5
    const QString ultimo = conf_.lee(clave::miscelaneas, QStringLiteral("UltimoComprobantePredeterminado"));
    if (!EsNumerico(QStringView(ultimo))) {
        Intenta(this, [this] {
            if (const auto tipo = TipoComprobantePredeterminado(almacen_, conf_))
                estado_.idTipoComprobanteActual = qint32(*tipo);
        });
    }
    // 6
    lblCli_->setText(QStringLiteral("<Sin seleccion de cliente>"));
    lblDirCli_->setText(QStringLiteral("Domicilio - Telefonos - e-mail"));
    lblCuit_->setText(QStringLiteral("CUIT : 0"));
    SelComboId(cboSelTipoCo_, estado_.idTipoComprobanteActual);
    lblTipCompro_->setText(cboSelTipoCo_->currentText());
    Intenta(this, [this] { lblProx_->setText(ProximoNumeroMostrado(almacen_, estado_.idTipoComprobanteActual)); });
    grilla_->refresca();
    command18_->setEnabled(false);
    lblItems_->setText(QStringLiteral("0 ítems."));
    limpiaEntrada();
    lblNoEncontrado_->hide();
    if (aplicaClientePredeterminado()) text7_->setFocus();
    else text8_->setFocus();
}

// --- totales y vuelto ---

QString PanelVenta::totales() {
    const QString& m = estado_.MascaraMoneda;
    Totales t;
    if (!Intenta(this, [&] {
            t = CalculaTotales(almacen_, estado_.IdRed, porcentajeVigente(txtPorcDescuento_, porcDescuento_),
                               porcentajeVigente(txtPorcImpuesto_, porcImpuesto_));
        }))
        return QStringLiteral("No se pudieron calcular los totales.");
    txtMontoTotal_->setText(Formato(QVariant(0.0), m));
    if (t.hayLineas) {
        lblSubTotal_->setText(Formato(QVariant(t.subTotal), m));
        lblImporteDescuento_->setText(Formato(QVariant(t.descuento), m));
        txtNeto_->setText(Formato(QVariant(t.neto), m));
        lblImpuestoImporte_->setText(Formato(QVariant(t.impuesto), m));
        txtMontoTotal_->setText(Formato(QVariant(t.total), m));
        lblItems_->setText(TextoItems(t));
    }
    // Una línea imposible no traba el panel: se dice cuál es, se elige y se puede borrar.
    lblItems_->setStyleSheet(t.problema.isEmpty() ? QString() : QStringLiteral("color: #b00020; font-weight: bold;"));
    if (!t.problema.isEmpty()) {
        for (QLabel* l : {lblSubTotal_, lblImporteDescuento_, txtNeto_, lblImpuestoImporte_}) l->setText(Formato(QVariant(0.0), m));
        lblItems_->setText(t.problema);
        for (int f = 0; grilla_->modelo().asegura(f); ++f)
            if (grilla_->modelo().registro(f).value(QStringLiteral("idTmpFac")).toLongLong() == t.idLineaConProblema) {
                grilla_->irAFila(f);
                break;
            }
    }
    command18_->setEnabled(grilla_->filaActual().has_value());
    if (t.problema.isEmpty()) actualizaVuelto();
    else txSuVuelto_->clear(); // sin total no hay vuelto que dar
    return t.problema;
}

void PanelVenta::actualizaVuelto() {
    // El vuelto sigue a lo que se escribe en "Su Pago ?", también cuando se borra; un pago que no
    // se lee o no cabe no muestra vuelto.
    const auto pago = LeeImporte(txSuPago_->text());
    const auto total = LeeImporte(txtMontoTotal_->text());
    const Dinero tope(kImporteMaximo);
    if (txSuPago_->text().trimmed().isEmpty() || !pago || !total || *pago > tope || *pago < -tope) {
        txSuVuelto_->clear();
        return;
    }
    txSuVuelto_->setText(FormatoMoneda(*pago - *total, estado_.MascaraMoneda));
}

double PanelVenta::porcentajeVigente(const QLineEdit* campo, double& vigente) const {
    // Vacío es 0; lo que no se lee deja el último porcentaje bueno, y así los totales no cambian.
    const QString t = campo->text().trimmed();
    if (t.isEmpty()) return vigente = 0;
    const auto v = LeeNumero(t);
    if (v && std::fabs(*v) <= kPorcentajeMaximo) vigente = *v;
    return vigente;
}

bool PanelVenta::tomaPorcentaje(QLineEdit* campo, const QString& nombre, double& vigente) {
    const QString t = campo->text().trimmed();
    const auto v = t.isEmpty() ? std::optional<double>(0.0) : LeeNumero(t);
    if (v && std::fabs(*v) <= kPorcentajeMaximo) {
        vigente = *v;
        return true;
    }
    // El campo vuelve al porcentaje vigente y se dice por qué, después de que el foco termine de moverse.
    campo->setText(QString::number(vigente, 'g', 12));
    QTimer::singleShot(0, this, [this, nombre, t] {
        Intenta(this, [&] { ExigePorcentaje(t, nombre); });
    });
    return false;
}

// --- cliente ---

void PanelVenta::llenaCliente(const ClienteVenta& c, const QString& etiqueta) {
    label6_->setText(etiqueta);
    idCliente_ = c.idVendedor;
    clienteEsVip_ = c.vip;
    estado_.NombreClienteActual = c.nombre;
    lblCli_->setText(c.nombre);
    estado_.CuitClienteActual = c.cuit;
    estado_.idTipoIvaActual = c.idTipoIva;
    estado_.DescuentoClienteActual = c.descuento; // llega a los totales sólo por "Mas Datos..."
    SelComboId(cboFPago_, c.idTipoFormaPago);
    // Un cliente sin forma de pago propia paga en efectivo, y la pantalla lo muestra así.
    if (cboFPago_->currentText().isEmpty()) cboFPago_->setCurrentIndex(cboFPago_->findText(QStringLiteral("EFVO")));
    estado_.FormaPagoActual = cboFPago_->currentText().isEmpty() ? QStringLiteral("EFVO") : cboFPago_->currentText();
    // Un cliente sin domicilio, teléfonos ni e-mail (el consumidor final) no muestra sólo las comas.
    lblDirCli_->setText(QString(c.direccion).remove(u',').trimmed().isEmpty() ? QString() : c.direccion);
    lblCuit_->setText(QStringLiteral("CUIT - RFC : ") + c.cuit);
}

void PanelVenta::eligeCliente() {
    std::optional<ClienteVenta> porNumero;
    Intenta(this, [&] { porNumero = ClientePorNumero(almacen_, text8_->text()); });
    if (porNumero) {
        llenaCliente(*porNumero, porNumero->vip ? QStringLiteral("Cliente VIP:") : QStringLiteral("Cliente:"));
        text7_->setFocus();
        return;
    }
    PanSelCliente busca(almacen_, this);
    if (busca.exec() == QDialog::Accepted && busca.idVendedor()) {
        std::optional<ClienteVenta> c;
        Intenta(this, [&] { c = ClientePorId(almacen_, *busca.idVendedor()); });
        if (c) {
            text8_->setText(QString::number(c->idVendedor));
            llenaCliente(*c, QStringLiteral("Cliente:"));
            clienteEsVip_ = false;
            text7_->setFocus();
        }
    }
    if (!idCliente_) {
        text8_->clear();
        text8_->setFocus();
    }
}

void PanelVenta::buscaArticulo() {
    PanSelArt busca(almacen_, conf_, estado_.MascaraMoneda, this);
    if (busca.exec() == QDialog::Accepted && !busca.codigo().isEmpty()) {
        text7_->setText(busca.codigo());
        tag_ = OrigenLinea::CodigoBarras;
        precioPorCodigo();
        txtCant_->setFocus();
    }
}

void PanelVenta::masDatos() {
    DatosFPago d;
    d.idTipoComprobante = estado_.idTipoComprobanteActual;
    d.observaciones = estado_.ObservacionesActual;
    d.descuento = estado_.DescuentoClienteActual;
    d.nombreCliente = estado_.NombreClienteActual;
    d.cuit = estado_.CuitClienteActual;
    d.idTipoIva = estado_.idTipoIvaActual;
    d.cupon = estado_.CuponActual;
    d.posicionFormaPago = cboFPago_->currentIndex();
    PanFPago pantalla(almacen_, estado_.ClaveImpositiva, d, this);
    if (pantalla.exec() != QDialog::Accepted) return;
    const DatosFPago r = pantalla.datos();
    estado_.idTipoComprobanteActual = qint32(r.idTipoComprobante);
    SelComboId(cboSelTipoCo_, r.idTipoComprobante);
    estado_.ObservacionesActual = r.observaciones;
    estado_.DescuentoClienteActual = r.descuento;
    txtPorcDescuento_->setText(QString::number(r.descuento, 'g', 12));
    estado_.NombreClienteActual = r.nombreCliente;
    estado_.CuitClienteActual = r.cuit;
    if (r.idTipoIva > 0) estado_.idTipoIvaActual = r.idTipoIva;
    estado_.CuponActual = r.cupon;
    estado_.FormaPagoActual = r.formaPago;
    if (r.posicionFormaPago >= 0 && r.posicionFormaPago < cboFPago_->count()) cboFPago_->setCurrentIndex(r.posicionFormaPago);
    lblTipCompro_->setText(cboSelTipoCo_->currentText());
    Intenta(this, [this] { lblProx_->setText(ProximoNumeroMostrado(almacen_, estado_.idTipoComprobanteActual)); });
    totales();
}

} // namespace orv
