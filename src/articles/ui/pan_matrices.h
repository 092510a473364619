#pragma once
// "Administración de Matrices de articulos": las características con sus valores, y
// "Nueva característica..." (panNueCaracMatriz), que toma una con sus primeros valores.

#include "store/almacen.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace orv {

class panNueCaracMatriz : public QDialog {
    Q_OBJECT
public:
    explicit panNueCaracMatriz(Almacen& almacen, QWidget* padre = nullptr);
    // "&Aceptar": graba la característica con los valores escritos.
    void acepta();

private:
    Almacen& almacen_;
    QLineEdit* text1_;
    QLineEdit* text2_[8];
};

class panMatrices : public QDialog {
    Q_OBJECT
public:
    explicit panMatrices(Almacen& almacen, QWidget* padre = nullptr);

    void nueva();            // Command1 "&Nueva característica..."
    void eliminar();         // Command2 "&Eliminar"
    void eligeCaracteristica();
    void agregaValor();      // Command3
    void quitaValor();       // Command4
    QListWidget* caracteristicas() const { return list1_; }
    QListWidget* valores() const { return list2_; }
    QLineEdit* valorNuevo() const { return text1_; }

private:
    QWidget* armaElementos();
    void llenaCaracteristicas();
    QString elegida() const;

    Almacen& almacen_;
    QListWidget* list1_;
    QListWidget* list2_;
    QLabel* label3_;
    QLineEdit* text1_;
    QPushButton* command3_;
};

} // namespace orv
