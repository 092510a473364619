#pragma once
// "Proveedor": alta o modificación de un proveedor. Aceptar con el contacto vacío no hace nada;
// con un CUIT que ya tiene otro proveedor, pregunta antes de grabar. Si algo se rechaza, la
// pantalla sigue abierta con lo escrito.

#include "store/almacen.h"

#include <QDialog>
#include <optional>

class QFormLayout;
class QLineEdit;

namespace orv {

struct DatosProveedor;

class panNueProve : public QDialog {
    Q_OBJECT
public:
    // Sin id, proveedor nuevo. `claveImpositiva` es el nombre del campo del CUIT (p. ej. "CUIT").
    panNueProve(Almacen& almacen, std::optional<qint64> idProveedor, const QString& claveImpositiva,
                QWidget* padre = nullptr);
    // El proveedor grabado (después de Accepted).
    std::optional<qint64> idProveedor() const { return id_; }

private:
    QLineEdit* campo(QFormLayout* capa, const char* nombre, const QString& titulo, int ancho);
    void carga();
    DatosProveedor datos() const;
    void acepta();

    Almacen& almacen_;
    std::optional<qint64> id_;
    QString clave_;
    QLineEdit* txNombre_;
    QLineEdit* txRazon_;
    QLineEdit* txDomicilio_;
    QLineEdit* txCPost_;
    QLineEdit* txTel_;
    QLineEdit* txTel2_;
    QLineEdit* txCuit_;
    QLineEdit* txEMail_;
    QLineEdit* txtBanco_;
    QLineEdit* txCBU_;
};

} // namespace orv
