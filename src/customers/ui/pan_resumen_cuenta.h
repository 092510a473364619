#pragma once
// El resumen de cuenta de un cliente en un período, con el saldo que traía: como archivo (PDF u
// otro formato, por la extensión) o como PDF por e-mail, con la dirección del cliente propuesta.

#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>

class QDateEdit;
class QLineEdit;

namespace orv {

class SalidaInformes;
struct Seleccion;

class PanResumenCuenta : public QDialog {
    Q_OBJECT
public:
    PanResumenCuenta(Almacen& almacen, const QString& mascaraMoneda, const Reloj& reloj, SalidaInformes& salida, qint64 idVendedor,
                     QWidget* padre = nullptr);

    void guarda();  // cmdArchivo
    void envia();   // cmdCorreo

private:
    bool selecciona(Seleccion& s);

    Almacen& almacen_;
    SalidaInformes& salida_;
    QString mascara_;
    qint64 id_;
    QString nombre_;
    QDateEdit* desde_ = nullptr;
    QDateEdit* hasta_ = nullptr;
    QLineEdit* email_ = nullptr;
};

} // namespace orv
