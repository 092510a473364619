// "Ingreso de compra": lo que hace cada campo y cada botón.

#include "suppliers/ui/pan_nue_compra.h"

#include "store/entrada.h"
#include "store/formato.h"
#include "widgets/grilla.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QDateEdit>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSqlQuery>
#include <QStandardItemModel>

namespace orv {

namespace {

constexpr int kArticulosEnLista = 40;

const QString kPendiente = QStringLiteral("CheckPendiente");
const QString kRegStock = QStringLiteral("CheckRegistraStock");
const QString kRegCaja = QStringLiteral("CheckRegCaja");
const QString kCuenta = QStringLiteral("CtaContable");
const QString kFormaPago = QStringLiteral("CheckFPago");
const QString kTipo = QStringLiteral("TipoComprobanteCompra");
const QString kAlicuota = QStringLiteral("AlicuotaImpositiva");

bool esEnter(QEvent* e) {
    if (e->type() != QEvent::KeyPress) return false;
    const int tecla = static_cast<QKeyEvent*>(e)->key();
    return tecla == Qt::Key_Return || tecla == Qt::Key_Enter;
}

} // namespace

void panNueCompra::llenaListas() {
    LlenaCombo(cboFPago_, almacen_, QStringLiteral("SELECT idTipoFormaPago, FormaPago FROM FormasDePago ORDER BY idTipoFormaPago"),
               {}, QStringLiteral("FormaPago"), QStringLiteral("idTipoFormaPago"));
    LlenaCombo(cbCta_, almacen_, QStringLiteral("SELECT idCuenta, Cuenta FROM Cuentas ORDER BY idCuenta"), {},
               QStringLiteral("Cuenta"), QStringLiteral("idCuenta"));
}

// Las opciones de la última compra.
void panNueCompra::leeConfiguracion() {
    const auto lee = [this](const QString& clave) { return conf_.lee(clave::miscelaneas, clave); };
    chkPendiente_->setChecked(lee(kPendiente) == u"1");
    chkRegStock_->setChecked(lee(kRegStock) == u"1");
    chkRegCaja_->setChecked(lee(kRegCaja) == u"1");
    cboFPago_->setCurrentIndex(-1);
    cbCta_->setCurrentIndex(-1);
    if (!lee(kCuenta).isEmpty()) SelComboId(cbCta_, lee(kCuenta).toLongLong());
    if (!lee(kFormaPago).isEmpty()) SelComboId(cboFPago_, lee(kFormaPago).toLongLong());
    if (!lee(kTipo).isEmpty()) SelComboTexto(cboTipoComprobante_, lee(kTipo), 0);
    if (cboTipoComprobante_->currentIndex() < 0) cboTipoComprobante_->setCurrentIndex(0);
    txPorImp_->setText(lee(kAlicuota));
    cambiaFormaPago();
}

void panNueCompra::grabaConfiguracion() {
    const auto graba = [this](const QString& clave, const QString& valor) { conf_.graba(clave::miscelaneas, clave, valor); };
    const auto marca = [](QCheckBox* c) { return c->isChecked() ? QStringLiteral("1") : QStringLiteral("0"); };
    graba(kPendiente, marca(chkPendiente_));
    graba(kRegStock, marca(chkRegStock_));
    graba(kRegCaja, marca(chkRegCaja_));
    graba(kCuenta, cbCta_->currentIndex() < 0 ? QString() : cbCta_->currentData().toString());
    graba(kFormaPago, cboFPago_->currentIndex() < 0 ? QString() : cboFPago_->currentData().toString());
    graba(kTipo, cboTipoComprobante_->currentText());
    graba(kAlicuota, txPorImp_->text());
}

// La compra guardada, en el borrador y en los campos.
void panNueCompra::cargaCompra(qint64 idCompra) {
    Intenta(this, [&] {
        const std::optional<CompraGuardada> g = CargaCompra(almacen_, estado_.IdRed, idCompra);
        if (!g) {
            idCompra_.reset();
            VaciaBorradorCompra(almacen_, estado_.IdRed);
            throw AvisoAtencion(QStringLiteral("La compra ya no existe: se ingresa como nueva."));
        }
        const DatosCompra& d = g->datos;
        SelComboTexto(cbLetra_, d.letra, 1);
        txPtoVta_->setText(d.sucursal);
        txNroComproba_->setText(d.numero);
        chkRegStock_->setChecked(d.registraStock);
        chkRegCaja_->setChecked(d.registraCaja);
        dt1_->setDate(d.fecha);
        // El tipo se guarda en sus primeros 10 caracteres.
        SelComboTexto(cboTipoComprobante_, d.tipo, 10);
        chkPendiente_->setChecked(d.pendiente);
        txPorImp_->setText(d.alicuota);
        txRef_->setText(d.referencia);
        SelComboId(cboFPago_, d.idFormaPago ? QVariant(*d.idFormaPago) : QVariant());
        SelComboId(cbCta_, d.idCuenta ? QVariant(*d.idCuenta) : QVariant());
        cambiaFormaPago();
    });
}

// Una forma de pago en cuenta corriente no mueve la caja.
void panNueCompra::cambiaFormaPago() {
    const bool ctaCte = EsCuentaCorriente(cboFPago_->currentText());
    if (ctaCte) chkRegCaja_->setChecked(false);
    chkRegCaja_->setEnabled(!ctaCte);
}

void panNueCompra::muestraArticulo(const std::optional<ArticuloCompra>& art, bool porCodigo) {
    lblAviso_->clear();
    if (!art) {
        idArticulo_.reset();
        (porCodigo ? cboArticulos_ : txtCodigo_)->clear();
        txtUnitario_->setText(QStringLiteral("0"));
        lblAviso_->setText(QStringLiteral("Articulo no encontrado!"));
        return;
    }
    idArticulo_ = art->idArticulo;
    txtCodigo_->setText(art->codigo);
    cboArticulos_->setText(art->descripcion);
    txtUnitario_->setText(FormatoMoneda(art->costo, estado_.MascaraMoneda));
    if (txtCant_->text().trimmed().isEmpty()) txtCant_->setText(QStringLiteral("1"));
}

void panNueCompra::buscaPorCodigo() {
    txtCodigo_->setModified(false);
    if (txtCodigo_->text().trimmed().isEmpty()) return;
    Intenta(this, [this] {
        muestraArticulo(ArticuloDeCompra(almacen_, BuscaArticuloPor::Codigo, txtCodigo_->text().trimmed()), true);
    });
}

void panNueCompra::buscaPorCgoProveedor() {
    text1_->setModified(false);
    if (text1_->text().trimmed().isEmpty()) return;
    Intenta(this, [this] {
        muestraArticulo(ArticuloDeCompra(almacen_, BuscaArticuloPor::CgoProveedor, text1_->text().trimmed()), true);
    });
}

void panNueCompra::eligeDeLista(qint64 idArticulo) {
    Intenta(this, [&] { muestraArticulo(ArticuloDeCompra(almacen_, BuscaArticuloPor::Id, idArticulo), false); });
    txtCant_->setFocus();
    txtCant_->selectAll();
}

// La lista de artículos que contienen lo escrito (sólo los del proveedor, con Check1).
void panNueCompra::llenaArticulos() {
    Intenta(this, [this] {
        const ConsultaConParametros c =
            ListaArticulosCompra(almacen_, cboArticulos_->text().trimmed(),
                                 check1_->isChecked() ? std::optional<qint64>(idProveedor_) : std::nullopt, kArticulosEnLista);
        articulos_->clear();
        QSqlQuery q = almacen_.consulta(c.sql, c.parametros);
        while (q.next()) {
            auto* item = new QStandardItem(q.value(1).toString());
            item->setData(q.value(0), Qt::UserRole);
            item->setToolTip(q.value(2).toString());
            articulos_->appendRow(item);
        }
    });
    if (cboArticulos_->hasFocus()) completa_->complete();
}

void panNueCompra::agrega() {
    const PedidoLineaCompra p{idArticulo_, txtCant_->text(), txtUnitario_->text(), txtBonif_->text()};
    if (!Intenta(this, [&] { AgregaLineaCompra(almacen_, estado_.IdRed, p); })) return;
    idArticulo_.reset();
    for (QLineEdit* e : {txtCodigo_, text1_, cboArticulos_, txtCant_, txtUnitario_}) e->clear();
    txtBonif_->setText(QStringLiteral("0"));
    lblAviso_->clear();
    refrescaLineas();
    txtCodigo_->setFocus();
}

void panNueCompra::quita() {
    const std::optional<qint64> id = ClaveActual(*grilla_, QStringLiteral("idTmpFacCompra"));
    if (!id) return;
    if (Intenta(this, [&] { BorraLineaCompra(almacen_, estado_.IdRed, *id); })) refrescaLineas();
}

void panNueCompra::refrescaLineas() {
    Intenta(this, [this] {
        const ConsultaConParametros c = LineasBorradorCompra(estado_.IdRed);
        grilla_->fijaConsulta(c.sql, c.parametros);
    });
    recalcula();
}

// Totales con lo escrito en los porcentajes; uno que no se lee deja los totales en blanco.
void panNueCompra::recalcula() {
    const std::optional<double> descuento = LeeNumero(txtDescuento_->text().trimmed());
    const std::optional<double> alicuota =
        txPorImp_->text().trimmed().isEmpty() ? std::optional<double>(0) : LeeNumero(txPorImp_->text().trimmed());
    const QList<QLineEdit*> campos = {txTotal_, txtMonDesc_, txtSubTot_, txTotImp_, txTotTot_};
    for (QLineEdit* e : campos) e->clear();
    if (!descuento || !alicuota) return;
    Intenta(this, [&] {
        const TotalesCompra t = CalculaTotalesCompra(almacen_, estado_.IdRed, *descuento, *alicuota);
        const Dinero valores[] = {t.neto, t.montoDescuento, t.subTotal, t.impuesto, t.total};
        for (int i = 0; i < campos.size(); ++i) campos[i]->setText(FormatoMoneda(valores[i], estado_.MascaraMoneda));
    });
}

DatosCompra panNueCompra::datos() const {
    DatosCompra d;
    d.idRed = estado_.IdRed;
    d.idUsuario = estado_.idUsuarioActual;
    d.idProveedor = idProveedor_;
    d.nombreProveedor = nombreProveedor_;
    d.idCompraAnterior = idCompra_;
    d.tipo = cboTipoComprobante_->currentText();
    d.letra = cbLetra_->currentText();
    d.sucursal = txPtoVta_->text();
    d.numero = txNroComproba_->text();
    d.fecha = dt1_->date();
    if (cboFPago_->currentIndex() >= 0) d.idFormaPago = cboFPago_->currentData().toLongLong();
    d.formaPago = cboFPago_->currentText();
    if (cbCta_->currentIndex() >= 0) d.idCuenta = cbCta_->currentData().toLongLong();
    d.referencia = txRef_->text();
    d.descuento = txtDescuento_->text();
    d.alicuota = txPorImp_->text();
    d.pendiente = chkPendiente_->isChecked();
    d.registraCaja = chkRegCaja_->isChecked();
    d.registraStock = chkRegStock_->isChecked();
    d.asignaCostos = chkPrec_->isChecked();
    return d;
}

void panNueCompra::acepta() {
    grabaConfiguracion();
    const DatosCompra d = datos();
    // Una falla del almacén se dice con su número; un aviso, con su título. En los dos casos la
    // compra anterior y el borrador quedan como estaban y la pantalla sigue abierta.
    bool fallo = false;
    const bool hecho = Intenta(this, [&] {
        try {
            registrada_ = RegistraCompra(almacen_, d);
        } catch (const ErrorAlmacen& e) {
            fallo = true;
            Mensaje(QStringLiteral("Error Detectado !! : ") + e.descripcion() + QStringLiteral(" (") + e.numero() +
                        QStringLiteral(")"),
                    QStringLiteral("Error"), Icono::Stop, this);
        }
    });
    if (!hecho || fallo) return;
    Mensaje(QStringLiteral("Compra Ingresada Correctamente !!"), QStringLiteral("Listo"), Icono::Exclamacion, this);
    accept();
}

void panNueCompra::reject() {
    if (grilla_->modelo().rowCount() > 0 &&
        !PreguntaSiNo(QStringLiteral("La compra no se registró. ¿Cierra igual?"), QStringLiteral("Pregunta"), Icono::Pregunta, this))
        return;
    QDialog::reject();
}

bool panNueCompra::eventFilter(QObject* o, QEvent* e) {
    if (e->type() == QEvent::FocusIn && o == txtCant_) QMetaObject::invokeMethod(txtCant_, &QLineEdit::selectAll, Qt::QueuedConnection);
    if (!esEnter(e)) return QDialog::eventFilter(o, e);
    // Con el lector de códigos: el código y Enter buscan el artículo y llevan a la cantidad; Enter
    // en la cantidad, el unitario o la bonificación agrega la línea.
    if (o == txtCodigo_ || o == text1_) {
        o == txtCodigo_ ? buscaPorCodigo() : buscaPorCgoProveedor();
        if (idArticulo_) {
            txtCant_->setFocus();
            txtCant_->selectAll();
        }
        return true;
    }
    if (o == cboArticulos_) {
        if (completa_->popup()->isVisible()) return false;
        if (idArticulo_) txtCant_->setFocus();
        return true;
    }
    if (o == txtCant_ || o == txtUnitario_ || o == txtBonif_) {
        agrega();
        return true;
    }
    return QDialog::eventFilter(o, e);
}

} // namespace orv
