#pragma once
// panSituacion ("Situación de la empresa"): la hoja con la caja, la mercadería, las dos deudas y
// los gráficos de ingresos contra gastos y de venta por rubro de un período. Sólo lee. La hoja se
// imprime o se guarda en PDF en una sola página, y los gráficos se guardan como PNG.

#include "app/estado.h"
#include "cash/situacion.h"
#include "store/almacen.h"

#include <QDate>
#include <QDialog>
#include <QStringList>

class QChartView;
class QComboBox;
class QDateEdit;
class QHBoxLayout;
class QLabel;
class QPrinter;

namespace orv {

class BarrasDeuda;

class PanSituacion : public QDialog {
    Q_OBJECT
public:
    // El período llega del panel de informes; la hoja se dibuja al abrir.
    PanSituacion(Almacen& almacen, const EstadoAplicacion& estado, const QDate& desde, const QDate& hasta,
                 QWidget* padre = nullptr);

    const Situacion& situacion() const { return situacion_; }
    QComboBox* agrupacion() const { return cboGroup_; }
    QWidget* hoja() const { return hoja_; }

    void dibuja(); // Command1, y al cambiar la agrupación
    // La hoja en una página de la impresora (o del PDF), achicada para que entre entera.
    void imprimeEn(QPrinter& impresora);
    // Los dos gráficos como PNG en la carpeta; devuelve los archivos escritos.
    QStringList guardaGraficos(const QString& carpeta);

    void imprimir();        // cmdImprimir
    void guardaPdf();       // cmdPdf
    void exportaGraficos(); // cmdGraficos

private:
    QWidget* armaHoja();
    QWidget* armaCifras();
    void armaBotones(QHBoxLayout* fila);
    void dibujaMovimientos();
    void dibujaRubros();

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    Situacion situacion_;
    QComboBox* cboGroup_ = nullptr;
    QDateEdit* desde_ = nullptr;
    QDateEdit* hasta_ = nullptr;
    QWidget* hoja_ = nullptr;
    QLabel* titulo_ = nullptr;
    QLabel* lblDisCaja_ = nullptr;
    QLabel* lblUtilBruta_ = nullptr;
    QLabel* lblDeuCli_ = nullptr;
    QLabel* lblDeuPro_ = nullptr;
    BarrasDeuda* shBase_ = nullptr;
    QChartView* movimientos_ = nullptr;
    QChartView* rubros_ = nullptr;
};

} // namespace orv
