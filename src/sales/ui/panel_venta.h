#pragma once
// Panel "Vender" de la ventana principal: tipo de comprobante y próximo número, cliente y
// vendedor de la venta en curso, las líneas del borrador de esta terminal y el botón que agranda
// el panel a toda la ventana.

#include "app/configuracion.h"
#include "app/estado.h"
#include "store/almacen.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;

namespace orv {

class Grilla;

class PanelVenta : public QWidget {
    Q_OBJECT
public:
    PanelVenta(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf, QWidget* padre = nullptr);

    // Llena la lista de tipos y elige el predeterminado (o el que ya tenía la venta).
    void llenaTiposComprobante();
    // Elige el tipo de la lista como tipo de la venta y muestra su próximo número.
    void eligeTipo();
    void llenaVendedores();
    void seleccionaVendedor(qint64 idUsuario);
    // Al entrar al panel: vuelve a leer las líneas de esta terminal y el tipo elegido.
    void entra();
    // Anchos de las cinco primeras columnas de las líneas: 18, 10, 30, 19 y 19 % del ancho.
    void ajustaGrilla();
    // Las líneas no se pueden corregir en la grilla (nivel sin "Precio en la venta de artículos").
    void fijaSoloLectura(bool si) { soloLectura_ = si; }
    bool soloLectura() const { return soloLectura_; }

    Grilla* grilla() const { return grilla_; }
    QPushButton* botonAgrandar() const { return command55_; }
    QComboBox* vendedores() const { return cboVendedores_; }

Q_SIGNALS:
    void agrandarPulsado();

protected:
    bool eventFilter(QObject* o, QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private:
    void actualizaItems();

    Almacen& almacen_;
    EstadoAplicacion& estado_;
    const Configuracion& conf_;
    QPushButton* lblTipCompro_;
    QComboBox* cboSelTipoCo_;
    QLabel* lblProx_;
    QLabel* lblCli_;
    QComboBox* cboVendedores_;
    Grilla* grilla_;
    QLabel* lblItems_;
    QPushButton* command55_;
    bool soloLectura_ = false;
};

} // namespace orv
