#pragma once
// PanLiqComision ("Cobranza de Clientes"): una cobranza en la cuenta del cliente, con su fila en
// la caja y su recibo si se piden. Registrada, la pantalla se cierra sola a los 4500 ms.

#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>
#include <optional>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace orv {

class SalidaInformes;

inline constexpr int kCierreTrasCobranzaMs = 4500;

class PanLiqComision : public QDialog {
    Q_OBJECT
public:
    PanLiqComision(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                   qint64 idVendedor, QWidget* padre = nullptr);

    bool registrada() const { return recibo_.has_value(); }
    // El número del recibo (el id de la línea de la cuenta), una vez registrada.
    std::optional<qint64> recibo() const { return recibo_; }
    QTimer* temporizador() const { return timer1_; }

private:
    void acepta();

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    SalidaInformes& salida_;
    qint64 id_;
    std::optional<qint64> recibo_;
    QLabel* label4_ = nullptr;
    QLabel* lblRegistrada_ = nullptr;
    QDateEdit* dtPicker1_ = nullptr;
    QLineEdit* text2_ = nullptr;
    QComboBox* combo1_ = nullptr;
    QCheckBox* check1_ = nullptr;
    QCheckBox* check2_ = nullptr;
    QPushButton* command1_ = nullptr;
    QPushButton* command2_ = nullptr;
    QTimer* timer1_ = nullptr;
};

} // namespace orv
