#pragma once
// PanVeComisiones ("Estado de cuentas del cliente"): las líneas de la cuenta del cliente y su
// saldo, la búsqueda por día, los débitos y créditos a mano, el borrado de una línea, el resumen,
// los saldos de todos los clientes y el arreglo de las ventas a cuenta sin línea.

#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>

class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace orv {

class Grilla;
class SalidaInformes;

class PanVeComisiones : public QDialog {
    Q_OBJECT
public:
    PanVeComisiones(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                    qint64 idVendedor, QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }
    QString saldo() const;

    // Título, líneas y saldo leídos otra vez.
    void actualiza();

    void debitarAcreditar(); // Command12
    void quitar();           // Command11
    void resumen();          // Command1
    void arreglar();         // Command3
    void resumenPeriodo();   // cmdResumenPeriodo
    void saldos();           // cmdSaldosClientes
    void buscaDia();         // DTPicker1

private:
    void armaGrilla();
    QVBoxLayout* armaBotones();
    QPushButton* boton(const char* nombre, const QString& texto, void (PanVeComisiones::*accion)());

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Reloj& reloj_;
    SalidaInformes& salida_;
    qint64 id_;
    QLabel* label1_ = nullptr;
    Grilla* grilla_ = nullptr;
    QLineEdit* text1_ = nullptr;
    QDateEdit* dtPicker1_ = nullptr;
};

} // namespace orv
