#pragma once
// "Nuevo tipo de comprobante": alta o modificación de un tipo, con su esquema de impresión.
// La pantalla junta y controla los datos; quien la abre los graba.

#include "app/configuracion.h"
#include "sales/tipos_comprobante.h"
#include "store/almacen.h"

#include <QDialog>
#include <optional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace orv {

class PanNueTipoComproba : public QDialog {
    Q_OBJECT
public:
    PanNueTipoComproba(const Almacen& almacen, const Configuracion& conf, std::optional<qint64> idTipo,
                       QWidget* padre = nullptr);
    TipoComprobante datos() const;
    // El tipo a modificar ya no existe ("No encontrado!!" ya se mostró).
    bool noEncontrado() const { return noEncontrado_; }

    // "Opciones...": según la opción elegida, una plantilla, la impresora fiscal o la de tickets.
    void opciones();
    // Plantilla elegida por archivo: un archivo que no está se rechaza con "Seleccione un
    // archivo válido!" y la plantilla vuelve a "<Seleccionar>".
    void eligePlantilla(const QString& ruta);

private:
    QWidget* armaPrincipales(QWidget* padre);
    QWidget* armaImpresion(QWidget* padre);
    QWidget* armaOpciones(QWidget* padre);
    void carga(const Almacen& almacen, qint64 idTipo);
    void acepta();
    void actualizaStock();

    const Configuracion& conf_;
    QLineEdit* txTipo_;
    QComboBox* cbLetra_;
    QComboBox* cbPtoVta_;
    QLineEdit* txCorrelativo_;
    QLineEdit* txtModDocumento_;
    QCheckBox* chkStock_;
    QCheckBox* chkCaja_;
    QCheckBox* chkInversa_;
    QCheckBox* chkEsComercial_;
    QRadioButton* optCrystal_;
    QRadioButton* optFiscal_;
    QRadioButton* optTickets_;
    QLabel* lblPlantilla_;
    bool noEncontrado_ = false;
    std::optional<qint64> correlativoLeido_; // el número como estaba al abrir
};

} // namespace orv
