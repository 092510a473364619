#pragma once
// "Configurador del ticket": el puerto de la impresora de tickets, sus parámetros serie y los
// elementos del ticket ubicados con el mouse sobre la hoja.

#include "app/configuracion.h"
#include "sales/diseno_ticket.h"

#include <QDialog>
#include <QList>
#include <QPoint>

class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;

namespace orv {

class panConfTkt : public QDialog {
    Q_OBJECT
public:
    panConfTkt(const Configuracion& conf, QWidget* padre = nullptr);

    QCheckBox* opcion(int i) const { return opciones_[i]; }
    QLabel* elemento(int i) const { return elementos_[i]; }
    // El puerto elegido, se acepte o no.
    QString puerto() const;
    // El diseño como está en la pantalla.
    DisenoTicket diseno() const;
    // Ubica un elemento en la hoja (en mm), como al soltarlo con el mouse.
    void ubica(int i, QPointF mm);

    void aceptar(); // Command1

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    QWidget* armaPuerto();
    QWidget* armaOpciones();
    QWidget* armaHoja();
    void cambiaPuerto();
    void cambiaAncho();
    AnchoTicket anchoElegido() const; // el rollo de la lista, o el de siempre
    void adentro(QLabel* l, QPoint p); // mueve el elemento sin que salga de la hoja
    void muestra(int i, bool si);

    const Configuracion& conf_;
    QComboBox* cboPuerto_ = nullptr;
    QLineEdit* txtConfPuerto_ = nullptr;
    QComboBox* cboPagina_ = nullptr;
    QComboBox* cboAncho_ = nullptr;
    QFrame* picTkt_ = nullptr;
    QList<QCheckBox*> opciones_;
    QList<QLabel*> elementos_;
    QPoint agarre_; // dónde se tomó el elemento que se arrastra, desde su esquina
};

} // namespace orv
