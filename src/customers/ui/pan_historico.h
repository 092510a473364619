#pragma once
// PanHistorico ("Documentos del cliente"): los comprobantes de un cliente en un período con lo
// comercial y lo no comercial sumados aparte, el detalle de uno y el informe. Sólo lee.

#include "app/estado.h"
#include "customers/ui/piezas_periodo.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>
#include <QStringList>
#include <optional>

class QLineEdit;

namespace orv {

class Grilla;
class SalidaInformes;

class PanHistorico : public QDialog {
    Q_OBJECT
public:
    // Con un cliente, la pantalla lo trae elegido y muestra sus comprobantes de hoy.
    PanHistorico(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                 std::optional<qint64> idVendedor, QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }
    const FiltroPeriodo& filtro() const { return filtro_; }
    // Los dos totales como se ven: comerciales y no comerciales.
    QStringList totales() const;

    void mostrar();  // btnOk
    void detalles(); // OsenXPButton1 y doble clic
    void imprimir(); // OsenXPButton2

private:
    void armaGrilla();
    std::optional<qint64> cliente() const;
    void actualiza();

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    SalidaInformes& salida_;
    FiltroPeriodo filtro_;
    Grilla* grilla_ = nullptr;
    QLineEdit* comerciales_ = nullptr;
    QLineEdit* noComerciales_ = nullptr;
};

} // namespace orv
