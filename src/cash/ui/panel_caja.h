#pragma once
// Panel "Caja" de la ventana principal: los movimientos de un período (con filtros de cuenta y
// forma de pago), los totales de ingresos, egresos y su diferencia, el movimiento a mano, su
// edición y su borrado, el plan de cuentas, las formas de pago, el cierre del día y los listados.

#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QList>
#include <QPair>
#include <QWidget>
#include <optional>

class QComboBox;
class QDateEdit;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QBoxLayout;
class QVBoxLayout;
class QHBoxLayout;

namespace orv {

class Grilla;
class SalidaInformes;

class PanelCaja : public QWidget {
    Q_OBJECT
public:
    PanelCaja(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
              QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }
    QDateEdit* desde() const { return dtpicker1_; }
    QDateEdit* hasta() const { return dtpickerHasta_; }

    // Período sin volver a leer (al abrir la ventana, antes de cargar las grillas).
    void fijaPeriodo(const QDate& desde, const QDate& hasta);
    // Al elegir el panel: el día de hoy como comienzo, con el foco en él.
    void entra();

    void filtra();      // Command34: la grilla del período y los totales
    void refresca();    // Command19: la grilla como está, y los totales
    void totales();
    void nuevo();       // Command7
    void editar();      // Command14 y doble clic
    void quitar();      // Command13
    void planCuentas(); // Command36
    void formasPago();
    void corteCaja();   // Command46
    void mostrar();     // Command28
    void imprimir();    // Command15

private:
    QHBoxLayout* armaFiltros();
    QVBoxLayout* armaBotones();
    QHBoxLayout* armaTotales();
    void armaGrilla();
    void llenaFiltros();
    QPushButton* boton(QBoxLayout* columna, const char* nombre, const QString& texto, void (PanelCaja::*accion)());
    // La fila actual si es de datos: su idCaja y su fecha.
    struct Fila {
        qint64 idCaja;
        QDate fecha;
        QVariant idComprobante;
    };
    std::optional<Fila> filaActual() const;

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Reloj& reloj_;
    SalidaInformes& salida_;
    Grilla* grilla_ = nullptr;
    QDateEdit* dtpicker1_ = nullptr;
    QDateEdit* dtpickerHasta_ = nullptr;
    QComboBox* cboCuenta_ = nullptr;
    QComboBox* cboFormaPago_ = nullptr;
    QLineEdit* text3_ = nullptr;
    QLineEdit* text4_ = nullptr;
    QLineEdit* text5_ = nullptr;
    QPushButton* command14_ = nullptr;
    QRadioButton* option1_ = nullptr;
    QList<QPair<QString, int>> anchos_;
};

} // namespace orv
