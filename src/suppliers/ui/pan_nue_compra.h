#pragma once
// "Ingreso de compra": las líneas del documento en el borrador de la terminal (por código, por
// código del proveedor o por la lista de artículos; un artículo nuevo desde su ficha), los totales,
// la forma de pago, los datos del documento y las opciones; "Aceptar" registra la compra entera o
// nada. Abierta con una compra guardada, la trae para corregirla.

#include "app/configuracion.h"
#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"
#include "suppliers/compras.h"

#include <QDialog>
#include <functional>
#include <optional>

class QCheckBox;
class QComboBox;
class QCompleter;
class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStandardItemModel;
class QTabWidget;
class QTimer;
class QWidget;

namespace orv {

class Grilla;

class panNueCompra : public QDialog {
    Q_OBJECT
public:
    // Sin idCompra, una compra nueva: el borrador de la terminal empieza vacío.
    panNueCompra(Almacen& almacen, const EstadoAplicacion& estado, const Configuracion& conf, const Reloj& reloj,
                 qint64 idProveedor, const QString& nombreProveedor, std::optional<qint64> idCompra,
                 QWidget* padre = nullptr);

    // "Nuevo Artículo..": abre la ficha de un artículo nuevo y devuelve su id (0 si no se grabó).
    // Sin esta función el botón queda apagado.
    void fijaArticuloNuevo(std::function<qint64()> f);

    // La compra registrada (después de Accepted).
    const CompraRegistrada& registrada() const { return registrada_; }

    // Pasos que también usan las pruebas de la pantalla.
    void buscaPorCodigo();          // txtCodigo: Enter o al salir
    void buscaPorCgoProveedor();    // Text1
    void eligeDeLista(qint64 idArticulo); // cboArticulos
    void agrega();                  // Command3
    void quita();                   // Command4
    void recalcula();               // Command5 y cada cambio de los porcentajes
    void acepta();                  // Command1

    // "Cancelar" y Esc: con líneas cargadas, pregunta antes de cerrar sin registrar.
    void reject() override;

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    QWidget* armaEntrada();
    void conectaEntrada();
    QWidget* armaTotales();
    QTabWidget* armaPestanias();
    QWidget* armaPago();
    QWidget* armaDocumento();
    QWidget* armaOpciones();
    QLineEdit* campo(const char* nombre, int ancho, bool aDerecha = true);
    void llenaListas();
    void leeConfiguracion();
    void grabaConfiguracion();
    void cargaCompra(qint64 idCompra);
    void muestraArticulo(const std::optional<ArticuloCompra>& art, bool porCodigo);
    void llenaArticulos();
    void cambiaFormaPago();
    void refrescaLineas();
    DatosCompra datos() const;

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Configuracion& conf_;
    qint64 idProveedor_;
    QString nombreProveedor_;
    std::optional<qint64> idCompra_;
    std::optional<qint64> idArticulo_; // txtCodigo.Tag
    std::function<qint64()> articuloNuevo_;
    CompraRegistrada registrada_;

    QCheckBox* check1_ = nullptr;
    QLineEdit* txtCodigo_ = nullptr;
    QLineEdit* text1_ = nullptr;
    QLineEdit* cboArticulos_ = nullptr;
    QStandardItemModel* articulos_ = nullptr;
    QCompleter* completa_ = nullptr;
    QTimer* demoraLista_ = nullptr;
    QLineEdit* txtCant_ = nullptr;
    QLineEdit* txtUnitario_ = nullptr;
    QLineEdit* txtBonif_ = nullptr;
    QLabel* lblAviso_ = nullptr;
    QPushButton* command3_ = nullptr;
    QPushButton* command4_ = nullptr;
    QPushButton* command6_ = nullptr;
    Grilla* grilla_ = nullptr;
    QLineEdit* txTotal_ = nullptr;
    QLineEdit* txtDescuento_ = nullptr;
    QLineEdit* txtMonDesc_ = nullptr;
    QLineEdit* txtSubTot_ = nullptr;
    QLineEdit* txPorImp_ = nullptr;
    QLineEdit* txTotImp_ = nullptr;
    QLineEdit* txTotTot_ = nullptr;
    QComboBox* cboFPago_ = nullptr;
    QComboBox* cbCta_ = nullptr;
    QLineEdit* txRef_ = nullptr;
    QDateEdit* dt1_ = nullptr;
    QComboBox* cboTipoComprobante_ = nullptr;
    QComboBox* cbLetra_ = nullptr;
    QLineEdit* txPtoVta_ = nullptr;
    QLineEdit* txNroComproba_ = nullptr;
    QCheckBox* chkRegCaja_ = nullptr;
    QCheckBox* chkRegStock_ = nullptr;
    QCheckBox* chkPendiente_ = nullptr;
    QCheckBox* chkPrec_ = nullptr;
};

} // namespace orv
