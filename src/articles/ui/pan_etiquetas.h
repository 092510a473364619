#pragma once
// "Etiquetas Cgo Barras": el día de las compras y, desde ahí, "Impresion de Códigos de Barra" con
// una entrada por unidad ingresada, la hoja a usar y la posición donde empieza.

#include "store/almacen.h"
#include "store/reloj.h"

#include <QDate>
#include <QDialog>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QListWidget;

namespace orv {

class panEtiq : public QDialog {
    Q_OBJECT
public:
    panEtiq(Almacen& almacen, const Reloj& reloj, QWidget* padre = nullptr);
    QDateEdit* fecha() const { return dtPicker1_; }

    void configurar(); // Command32

private:
    Almacen& almacen_;
    QDateEdit* dtPicker1_;
};

class panCgoBarra : public QDialog {
    Q_OBJECT
public:
    panCgoBarra(Almacen& almacen, const QDate& dia, QWidget* padre = nullptr);

    QListWidget* disponibles() const { return list1_; }
    QListWidget* aImprimir() const { return list2_; }

    void pasaElegidos(QListWidget* de, QListWidget* a); // Command1 y Command3
    void pasaTodos(QListWidget* de, QListWidget* a);    // Command2 y Command4
    void nuevoFormato();                                // Command7
    void configurarHoja();                              // Command8
    void imprimir();                                    // Command6

private:
    QLayout* armaListas();
    QLayout* armaFormato();
    void actualizaCuenta();
    void releeFormatos(const QString& guardada);

    Almacen& almacen_;
    QLabel* label3_ = nullptr;
    QListWidget* list1_ = nullptr;
    QListWidget* list2_ = nullptr;
    QLabel* label8_ = nullptr;
    QLineEdit* text2_ = nullptr;
    QComboBox* combo1_ = nullptr;
    QCheckBox* chkEan13_ = nullptr;
};

} // namespace orv
