#pragma once
// Panel "Vender" de la ventana principal: el tipo de comprobante y su próximo número, el
// cliente, la carga de artículos por código, código de proveedor o lista, las líneas del
// borrador de esta terminal, los totales y "Su Pago ?" / "Su Vuelto:".
//
// La pantalla se arma en panel_venta_pantalla.cpp; el registro, los totales y el cliente están en
// panel_venta_registro.cpp; la carga de líneas, aquí en panel_venta.cpp.
//
// Todo se hace con el teclado: un lector de códigos de barras escribe el código y Enter en el
// campo de código, y la línea se agrega sin depender de un cambio de foco.

#include "app/configuracion.h"
#include "app/estado.h"
#include "store/reloj.h"
#include "sales/balanza.h"
#include "sales/borrador.h"
#include "sales/cliente_venta.h"
#include "sales/registro.h"
#include "store/almacen.h"

#include <QWidget>
#include <optional>

class QComboBox;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orv {

class Grilla;
class SalidaInformes;

class PanelVenta : public QWidget {
    Q_OBJECT
public:
    PanelVenta(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf, QWidget* padre = nullptr);

    // --- tipo de comprobante ---
    void llenaTiposComprobante();
    // Clic de cboSelTipoCo: el tipo elegido pasa a la venta y se muestra su próximo número.
    void eligeTipo();
    // --- listas de la carga ---
    void llenaVendedores();
    void seleccionaVendedor(qint64 idUsuario);
    void llenaArticulos();
    void llenaFormasPago();
    void leeCoefIva();

    // Al entrar al panel: vuelve a leer las líneas de esta terminal y el tipo elegido, y pone el
    // cursor en el cliente; con cliente (elegido o predeterminado), en el código del artículo.
    void entra();
    // Anchos de las cinco primeras columnas de las líneas: 18, 10, 30, 19 y 19 % del ancho.
    void ajustaGrilla();
    // Nivel sin "Precio en la venta de artículos": las líneas no se corrigen en la grilla.
    void fijaSoloLectura(bool si);
    bool soloLectura() const { return soloLectura_; }

    // --- acciones (botones y teclas) ---
    void agregar();             // Command20
    void borrarItem();          // Command18
    void anular();              // Command21
    void reseteaFactura();
    // "Registrar" (Command16, F9): del borrador al comprobante, su impresión y una venta nueva.
    void registrar();
    // "Reimpresión de documentos...": sólo para niveles que ven las ventas.
    void reimpresion();
    // La salida de informes por la que se imprimen los comprobantes, y el reloj del día.
    void fijaSalida(SalidaInformes* salida) { salida_ = salida; }
    void fijaReloj(const Reloj* reloj) { reloj_ = reloj; }
    void eligeCliente();        // Command38
    void buscaArticulo();       // Command58
    void masDatos();            // Command17
    void cambiaCantidadActual(double delta);
    void recalculaLineas();     // después de corregir la grilla
    // Vuelve a calcular y mostrar los totales; devuelve por qué no valen, o nada si valen.
    QString totales();

    // Cliente elegido (Text8.Tag) y si vino por tarjeta.
    std::optional<qint64> idCliente() const { return idCliente_; }
    bool clienteEsVip() const { return clienteEsVip_; }

    Grilla* grilla() const { return grilla_; }
    QPushButton* botonAgrandar() const { return command55_; }
    QComboBox* vendedores() const { return cboVendedores_; }

Q_SIGNALS:
    void agrandarPulsado();
    // Un comprobante quedó registrado (la caja tiene filas nuevas).
    void comprobanteRegistrado(qint64 idComprobante);

protected:
    bool eventFilter(QObject* o, QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    void armaPantalla();
    QHBoxLayout* armaCabeza();
    QGroupBox* armaCliente();
    QGroupBox* armaEntrada();
    Grilla* armaLineas();
    QGroupBox* armaTotales();
    void creaCamposDeCarga(QWidget* entrada);
    void creaImportes(QWidget* caja);
    bool aplicaClientePredeterminado();
    DatosRegistro datosDelRegistro(const QDate& hoy);
    void conectaAtajos();
    void muestraNoEncontrado(const QString& codigo);
    // Lo que el lector trajo y no entró, en la franja roja bajo el código, con dos pitidos.
    void muestraEnFranja(const QString& texto);
    void conecta();
    void precioPorCodigo();       // Text7 pierde el foco
    // Text9 pierde el foco: el artículo elegido en la lista, con su precio ya a la vista.
    std::optional<ArticuloVenta> precioPorLista();
    // Text16 pierde el foco: el artículo del código del proveedor; nada si no hay.
    std::optional<ArticuloVenta> codigoProveedor();
    // Enter en el código del proveedor o en la lista: muestra el precio y agrega, o, si el artículo
    // no tiene precio, lleva el cursor al precio.
    void agregaConPrecioALaVista(const std::optional<ArticuloVenta>& art);
    // El porcentaje del campo si se lee (vacío es 0), si no el último bueno.
    double porcentajeVigente(const QLineEdit* campo, double& vigente) const;
    // Al dejar el campo: toma el porcentaje, o lo rechaza con un aviso y el campo vuelve al vigente.
    bool tomaPorcentaje(QLineEdit* campo, const QString& nombre, double& vigente);
    void muestraPrecio(const QVariant& precio);
    void actualizaConImpuesto();  // cambio de txUnit
    void actualizaVuelto();
    void llenaCliente(const ClienteVenta& c, const QString& etiqueta);
    void limpiaEntrada();
    void leeLineas(bool alFinal);
    std::optional<qint64> articuloDeLista() const;

    Almacen& almacen_;
    EstadoAplicacion& estado_;
    const Configuracion& conf_;

    QPushButton* lblTipCompro_ = nullptr;
    QComboBox* cboSelTipoCo_ = nullptr;
    QLabel* lblProx_ = nullptr;
    QLabel* label6_ = nullptr;
    QLineEdit* text8_ = nullptr;
    QPushButton* command38_ = nullptr;
    QLabel* lblCli_ = nullptr;
    QLabel* lblDirCli_ = nullptr;
    QLabel* lblCuit_ = nullptr;
    QComboBox* cboVendedores_ = nullptr;
    QComboBox* cboFPago_ = nullptr;
    QPushButton* command17_ = nullptr;
    QLineEdit* text7_ = nullptr;
    QLineEdit* text16_ = nullptr;
    QComboBox* text9_ = nullptr;
    QPushButton* command58_ = nullptr;
    QLineEdit* txtCant_ = nullptr;
    QLineEdit* txUnit_ = nullptr;
    QLineEdit* txtUnitImpuesto_ = nullptr;
    QPushButton* command20_ = nullptr;
    Grilla* grilla_ = nullptr;
    QLabel* lblSubTotal_ = nullptr;
    QLineEdit* txtPorcDescuento_ = nullptr;
    QLabel* lblImporteDescuento_ = nullptr;
    QLabel* txtNeto_ = nullptr;
    QLineEdit* txtPorcImpuesto_ = nullptr;
    QLabel* lblImpuestoImporte_ = nullptr;
    QLabel* txtMontoTotal_ = nullptr;
    QLineEdit* txSuPago_ = nullptr;
    QLabel* txSuVuelto_ = nullptr;
    QLabel* lblItems_ = nullptr;
    QLabel* lblNoEncontrado_ = nullptr; // el código que no es de ningún artículo, sin caja modal
    QPushButton* command18_ = nullptr;
    QPushButton* command21_ = nullptr;
    QPushButton* command16_ = nullptr;
    SalidaInformes* salida_ = nullptr;
    const Reloj* reloj_ = nullptr;
    QDate hoy() const; // por el reloj fijado, o el del sistema
    QPushButton* command55_ = nullptr;

    OrigenLinea tag_ = OrigenLinea::CodigoBarras; // Command20.Tag
    std::optional<qint64> idCliente_;
    bool clienteEsVip_ = false;
    bool soloLectura_ = false;
    ConfBalanza balanza_; // se lee al crear el panel y cada vez que se entra
    // Los porcentajes que usan los totales: un texto que no se lee no los cambia.
    mutable double porcDescuento_ = 0;
    mutable double porcImpuesto_ = 0;
};

} // namespace orv
