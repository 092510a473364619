#pragma once
// Pantallas que piden el sujeto de un informe antes de lanzarlo: un artículo o todos, un cliente
// o todos, una cuenta con sus fechas, y el tipo de lista de comprobantes.

#include "store/almacen.h"

#include <QDate>
#include <QDialog>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLineEdit;
class QRadioButton;

namespace orv {

// "Ventas Items": Text1 "Codigo Articulo :" y Check1 "Todos los artículos?". Se acepta uno de los dos,
// no ambos ni ninguno.
class PanRepSelArt : public QDialog {
    Q_OBJECT
public:
    PanRepSelArt(const QDate& desde, const QDate& hasta, QWidget* padre = nullptr);
    bool todos() const;
    QString codigo() const;
    QDate desde() const { return desde_; }
    QDate hasta() const { return hasta_; }

private:
    void acepta();
    QLineEdit* text1_;
    QCheckBox* check1_;
    QDate desde_, hasta_;
};

// "Ventas x Cliente": Combo1 con los nombres de los clientes y Check1 "Todos".
class PanRepSelVen : public QDialog {
    Q_OBJECT
public:
    PanRepSelVen(const Almacen& almacen, const QDate& desde, const QDate& hasta, QWidget* padre = nullptr);
    bool todos() const;
    QString nombre() const;
    QDate desde() const { return desde_; }
    QDate hasta() const { return hasta_; }

private:
    void acepta();
    QComboBox* combo1_;
    QCheckBox* check1_;
    QDate desde_, hasta_;
};

// "Seleccione Cuenta": la cuenta y el período del estado de cuenta.
class PanSelCta : public QDialog {
    Q_OBJECT
public:
    PanSelCta(const Almacen& almacen, const QDate& desde, const QDate& hasta, QWidget* padre = nullptr);
    qint64 idCuenta() const;
    QDate desde() const;
    QDate hasta() const;

private:
    void acepta();
    QComboBox* combo1_;
    QDateEdit* dt1_;
    QDateEdit* dt2_;
};

// "Impresión de comprobantes": comerciales u otros documentos no comerciales.
class PanPrinComprobantes : public QDialog {
    Q_OBJECT
public:
    explicit PanPrinComprobantes(QWidget* padre = nullptr);
    bool comerciales() const;

private:
    QRadioButton* option1_;
    QRadioButton* option2_;
};

} // namespace orv
