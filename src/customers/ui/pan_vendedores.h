#pragma once
// PanVendedores ("Clientes"): la ficha de un cliente. Sin id, un cliente nuevo. Graba ella misma
// al aceptar; el panel sólo refresca su lista.

#include "app/estado.h"
#include "store/almacen.h"

#include <QDialog>
#include <optional>

class QComboBox;
class QFormLayout;
class QLineEdit;

namespace orv {

struct DatosCliente;

class PanVendedores : public QDialog {
    Q_OBJECT
public:
    PanVendedores(Almacen& almacen, const EstadoAplicacion& estado, std::optional<qint64> idVendedor,
                  QWidget* padre = nullptr);

    std::optional<qint64> idVendedor() const { return id_; }

private:
    QLineEdit* campo(const char* nombre, int largo);
    void armaDatos(QFormLayout* f);
    void armaListas(QFormLayout* f);
    void carga(const DatosCliente& d);
    DatosCliente datos() const;
    void acepta();

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    std::optional<qint64> id_;
    QLineEdit* nombre_ = nullptr;
    QLineEdit* empresa_ = nullptr;
    QLineEdit* domicilio_ = nullptr;
    QLineEdit* telefono_ = nullptr;
    QLineEdit* telefono2_ = nullptr;
    QLineEdit* email_ = nullptr;
    QLineEdit* cuit_ = nullptr;
    QLineEdit* descuento_ = nullptr;
    QLineEdit* vip_ = nullptr;
    QComboBox* cboLocalidades_ = nullptr;
    QComboBox* cboZona_ = nullptr;
    QComboBox* cbTipoIva_ = nullptr;
    QComboBox* cboFPago_ = nullptr;
};

} // namespace orv
