#pragma once
// "Formula de Producción": el artículo a producir y las materias primas que lleva una unidad, con
// su cantidad y su costo de hoy. Graba la fórmula entera al aceptar.

#include "app/estado.h"
#include "production/produccion.h"
#include "store/almacen.h"

#include <QDialog>
#include <optional>

class QComboBox;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace orv {

class panFormula : public QDialog {
    Q_OBJECT
public:
    // Sin artículo: una fórmula nueva; con él, se edita la suya.
    panFormula(Almacen& almacen, const EstadoAplicacion& estado, std::optional<qint64> idArticuloFinal,
               QWidget* padre = nullptr);

    void agregaMateria(); // Command1 "Agregar M.Prima :"
    void quitaMateria();  // Command2
    void acepta();        // Command4 "&Aceptar"

    const QList<LineaFormula>& lineas() const { return lineas_; }

private:
    QLayout* armaEleccion();
    QLayout* armaBotones();
    void llenaListas();
    void agregaFila(const LineaFormula& l);
    void totaliza();

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    std::optional<qint64> editado_;
    QList<MateriaPrima> materias_;
    QList<LineaFormula> lineas_;
    QComboBox* cboArticulos_;
    QComboBox* cboMat_;
    QLineEdit* text1_;  // "Cant. ?"
    QLineEdit* text2_;  // "Costo Total :"
    QTableWidget* ms1_;
};

} // namespace orv
