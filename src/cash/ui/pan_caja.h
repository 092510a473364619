#pragma once
// PanCaja, "Movimiento de Caja": un movimiento escrito a mano, nuevo o para editar.

#include "store/almacen.h"

#include <QDate>
#include <QDialog>
#include <optional>

class QComboBox;
class QDateEdit;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;

namespace orv {

class PanCaja : public QDialog {
    Q_OBJECT
public:
    // Sin idCaja, un movimiento nuevo con la fecha dada; con él, ese movimiento.
    PanCaja(Almacen& almacen, qint32 idUsuario, std::optional<qint64> idCaja, const QDate& fecha, QWidget* padre = nullptr);

    void acepta(); // Command1
    // Option1 / Option2: ingreso o egreso, nunca los dos.
    void eligeIngreso(bool ingreso);

    QDateEdit* fecha() const { return dtpicker1_; }
    QComboBox* cuenta() const { return combo1_; }
    QComboBox* formaPago() const { return combo2_; }
    QPlainTextEdit* detalles() const { return text1_; }
    QLineEdit* ingreso() const { return text2_; }
    QLineEdit* egreso() const { return text3_; }
    std::optional<qint64> idCaja() const { return id_; }

private:
    void carga();

    Almacen& almacen_;
    qint32 idUsuario_;
    std::optional<qint64> id_;
    QDateEdit* dtpicker1_;
    QComboBox* combo1_;
    QComboBox* combo2_;
    QPlainTextEdit* text1_;
    QRadioButton* option1_;
    QRadioButton* option2_;
    QLineEdit* text2_;
    QLineEdit* text3_;
};

} // namespace orv
