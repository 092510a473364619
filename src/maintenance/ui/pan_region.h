#pragma once
// "Configuraciones Varias": país y moneda, impuesto, cifras de los códigos, forma de los puntos de
// los clientes con tarjeta, balanza del mostrador y los datos del negocio.

#include "app/configuracion.h"
#include "maintenance/datos_locales.h"
#include "store/almacen.h"

#include <QDialog>

class QComboBox;
class QDateEdit;
class QLineEdit;
class QRadioButton;
class QTabWidget;

namespace orv {

class panRegion : public QDialog {
    Q_OBJECT
public:
    panRegion(Almacen& almacen, const Configuracion& conf, QWidget* padre = nullptr);

    // "&Aceptar" (Command1): controla, guarda y cierra; si algo está mal lo dice y no guarda nada.
    void acepta();
    QTabWidget* pestanias() const { return pestanias_; }

private:
    QWidget* armaPais();
    QWidget* armaImpositivo();
    QWidget* armaCodificacion();
    QWidget* armaPuntos();
    QWidget* armaBalanza();
    QWidget* armaNegocio();
    void carga();
    ValoresLocales valores() const;
    DatosNegocio negocio() const;

    Almacen& almacen_;
    const Configuracion& conf_;
    QTabWidget* pestanias_;
    QComboBox* cboPais_ = nullptr;
    QComboBox* cboMascara_ = nullptr;
    QLineEdit* txIva_ = nullptr;
    QComboBox* cboClaveImpositiva_ = nullptr;
    QLineEdit* txNumCifrasRubro_ = nullptr;
    QLineEdit* txNumCifrasArticulo_ = nullptr;
    QRadioButton* optVipPorCantidad_ = nullptr;
    QRadioButton* optVipPorPeso_ = nullptr;
    QLineEdit* txBalPrefijos_ = nullptr;
    QLineEdit* txBalCifrasCodigo_ = nullptr;
    QLineEdit* txBalCifrasValor_ = nullptr;
    QComboBox* cboBalValor_ = nullptr;
    QLineEdit* txBalDecimales_ = nullptr;
    QLineEdit* txNomEmpresa_ = nullptr;
    QLineEdit* txFantasia_ = nullptr;
    QLineEdit* txDireccion_ = nullptr;
    QLineEdit* txCgoPost_ = nullptr;
    QLineEdit* txTelefono_ = nullptr;
    QLineEdit* txEMail_ = nullptr;
    QLineEdit* txWeb_ = nullptr;
    QLineEdit* txCuit_ = nullptr;
    QLineEdit* txCondicionIva_ = nullptr;
    QDateEdit* dtInicioActividades_ = nullptr;
};

} // namespace orv
