#pragma once
// "Gestión de Producción": las fórmulas, la corrida con sus alertas de stock y los registros de
// las corridas hechas.

#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>
#include <optional>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLineEdit;
class QTabWidget;

namespace orv {

class Grilla;
class SalidaInformes;

class PanProduccion : public QDialog {
    Q_OBJECT
public:
    PanProduccion(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, SalidaInformes& salida,
                  QWidget* padre = nullptr);

    // Solapa "Fórmulas".
    void nueva();   // Command1
    void editar();  // Command2
    void quitar();  // Command3
    // Solapa "Registrar": total y alertas al elegir el artículo o cambiar cantidad o mano de obra.
    void recalcula();
    void registrar(); // Command4

    QTabWidget* solapas() const { return solapas_; }
    Grilla* formulas() const { return dbGrid1_; }
    Grilla* alertas() const { return dbGrid2_; }
    Grilla* registros() const { return gridEx1_; }

private:
    QWidget* armaFormulas();
    QWidget* armaRegistrar();
    QLayout* armaCamposCorrida(QWidget* solapa);
    QWidget* armaInformes();
    void llenaArticulos();
    void refrescaFormulas();
    std::optional<qint64> articuloElegido() const;

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Reloj& reloj_;
    SalidaInformes& salida_;
    QTabWidget* solapas_ = nullptr;
    Grilla* dbGrid1_ = nullptr;
    Grilla* dbGrid2_ = nullptr;
    Grilla* gridEx1_ = nullptr;
    QComboBox* cbArt_ = nullptr;
    QLineEdit* txCantAProd_ = nullptr;
    QLineEdit* txManoObra_ = nullptr;
    QLineEdit* txTot_ = nullptr;
    QDateEdit* dt1_ = nullptr;
    QCheckBox* chkImpr_ = nullptr;
};

} // namespace orv
