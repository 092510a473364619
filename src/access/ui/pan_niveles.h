#pragma once
// Editor de niveles de acceso: la lista de niveles a la izquierda y, a la derecha, el nombre, la
// casilla de supervisor y los permisos en cuatro pestañas. Lo cambiado se graba al pasar a otro
// nivel, con "Guardar cambios" y al cerrar. Si otro puesto borró el nivel que se está editando,
// se dice una vez, lo pendiente se descarta y el editor hace lo que se le pidió.

#include "access/niveles.h"
#include "store/almacen.h"

#include <QDialog>
#include <QHash>
#include <optional>

class QCheckBox;
class QHBoxLayout;
class QLineEdit;
class QListWidget;
class QTabWidget;

namespace orv {

class PanNiveles : public QDialog {
    Q_OBJECT
public:
    explicit PanNiveles(Almacen& almacen, QWidget* padre = nullptr);

    // Acciones de los botones (también para las pruebas).
    void nuevoNivel();
    void eliminaNivel();
    bool guardaCambios(); // falso si no se pudo grabar (ya avisó)

    QCheckBox* casilla(const QString& columna) const { return casillas_.value(columna.toLower()); }
    std::optional<qint64> nivelActual() const;

    void done(int r) override;

private:
    QTabWidget* armaPestanias();
    QHBoxLayout* armaBotones();
    void recarga(std::optional<qint64> seleccionar);
    void muestra(qint64 idNivel);
    // El nivel cargado ya no está: se olvida lo pendiente y se vuelve a leer la lista.
    void olvidaBorrado();
    void filaCambiada();
    DatosNivel enPantalla() const;

    Almacen& almacen_;
    QListWidget* lista_;
    QLineEdit* txNombre_;
    QCheckBox* chkSuper_;
    QTabWidget* pestanias_;
    QHash<QString, QCheckBox*> casillas_; // por columna en minúsculas
    std::optional<DatosNivel> cargado_;
    bool cambiando_ = false;
};

} // namespace orv
