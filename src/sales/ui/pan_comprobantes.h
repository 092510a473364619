#pragma once
// Pantallas sobre comprobantes ya registrados: el borrado ("Seleccione Venta a Borrar"), la
// reimpresión por fecha ("Reimpresion de documentos") y el detalle de uno.

#include "store/almacen.h"

#include <QDate>
#include <QDialog>

class QCheckBox;
class QDateEdit;

namespace orv {

class Grilla;
class SalidaInformes;

class PanBorraFactura : public QDialog {
    Q_OBJECT
public:
    PanBorraFactura(Almacen& almacen, const QDate& hoy, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }
    void eliminar(); // Command29
    // Va al primer comprobante del día; nada si no hay ninguno.
    bool vaAlDia(const QDate& dia);

private:
    Almacen& almacen_;
    QDate hoy_;
    Grilla* grilla_;
};

class PanReImpresion : public QDialog {
    Q_OBJECT
public:
    PanReImpresion(Almacen& almacen, SalidaInformes& salida, const QDate& hoy, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }
    void buscaFecha();
    void imprimir();

private:
    Almacen& almacen_;
    SalidaInformes& salida_;
    QDateEdit* dt1_;
    Grilla* grilla_;
    QCheckBox* optFiscal_;
};

class PanDetComprobante : public QDialog {
    Q_OBJECT
public:
    PanDetComprobante(Almacen& almacen, qint64 idComprobante, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }

private:
    Grilla* grilla_;
};

// Plantilla para reimprimir un comprobante: la de su tipo si es un archivo que existe (una ruta,
// o el nombre de una definición de las carpetas de informes); si no, "factura_discrimina_iva.rpt".
// Vacía si el tipo no tiene plantilla.
QString PlantillaDeReimpresion(const Almacen& a, qint64 idComprobante, const QString& carpetaDatos);

} // namespace orv
