#pragma once
// "Ajustes de Stock por artículo": una entrada o salida de stock de un artículo, con su tipo y
// el comprobante que la respalda. Recuerda el último tipo y el último comprobante usados.

#include "app/configuracion.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QVBoxLayout;

namespace orv {

class PanIngrStock : public QDialog {
    Q_OBJECT
public:
    PanIngrStock(Almacen& almacen, const Configuracion& conf, const Reloj& reloj, qint64 idArticulo,
                 QWidget* padre = nullptr);

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    void armaCampos(QVBoxLayout* capa);
    void cargaRecordados();
    void eligeTipo();
    void acepta();

    Almacen& almacen_;
    const Configuracion& conf_;
    const Reloj& reloj_;
    qint64 idArticulo_;
    QLabel* label1_;
    QLineEdit* text1_;
    QLineEdit* text2_;
    QComboBox* combo1_;
    QRadioButton* option1_;
    QRadioButton* option2_;
    QLabel* label5_;
};

} // namespace orv
