#pragma once
// Piezas de las pantallas que muestran los movimientos de una persona en un período (comisiones de
// un vendedor, puntos de un cliente): la fila de filtros, los tres totales al pie y la columna de
// botones.

#include <QDialog>
#include <QStringList>
#include <functional>
#include <initializer_list>

class QComboBox;
class QDateEdit;
class QFormLayout;
class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace orv {

// La lista de personas (cboVendedores, sin llenar), "Desde :" (dt1), "Hasta :" (dt2) y "Mostrar"
// (btnOk, el botón de Enter), en una fila.
struct FiltroPeriodo {
    QHBoxLayout* fila = nullptr;
    QComboBox* lista = nullptr;
    QDateEdit* desde = nullptr;
    QDateEdit* hasta = nullptr;
    QPushButton* mostrar = nullptr;
};
FiltroPeriodo ArmaFiltroPeriodo(QWidget* padre, const QString& etiquetaLista);

// Lo sumado (txTotComis), lo restado (txTotCancel) y la diferencia (txDif, en negrita), con sus
// leyendas a la derecha.
struct TotalesPeriodo {
    QFormLayout* capa = nullptr;
    QLineEdit* suma = nullptr;
    QLineEdit* resta = nullptr;
    QLineEdit* diferencia = nullptr;
    // Los tres en "0", antes de calcularlos.
    void ceros() const;
    void muestra(const QString& s, const QString& r, const QString& d) const;
    QStringList textos() const;
};
TotalesPeriodo ArmaTotalesPeriodo(QWidget* padre, const QString& leyendaSuma, const QString& leyendaResta, int ancho);

// Un botón por acción y, al pie, "Salir", que cierra la pantalla.
struct BotonAccion {
    const char* nombre;
    const char* texto; // UTF-8
    std::function<void()> accion;
};
QVBoxLayout* ColumnaBotones(QDialog* pantalla, std::initializer_list<BotonAccion> botones, const char* nombreSalir);

} // namespace orv
