#pragma once
// "Impresora Fiscal": modelo, documento y puerto de la impresora fiscal de un tipo de comprobante.

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;

namespace orv {

class PanConfFiscal : public QDialog {
    Q_OBJECT
public:
    // Abre con la plantilla y el código de documento que tiene el tipo.
    PanConfFiscal(const QString& plantilla, const QString& modDocumento, QWidget* padre = nullptr);
    // Lo que queda en el tipo al aceptar.
    QString plantilla() const;
    QString modDocumento() const; // las tres primeras posiciones del documento elegido

private:
    void actualizaModelo();
    void acepta();

    QRadioButton* optEpsonTMU_;
    QRadioButton* optEpson200_;
    QRadioButton* optHasar_;
    QListWidget* listhasar_;
    QComboBox* cboModComprobante_;
    QLineEdit* txPuerto_;
    QLabel* label3_;
};

} // namespace orv
