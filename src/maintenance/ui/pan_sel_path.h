#pragma once
// "Seleccionar ubicación": el árbol de carpetas de una unidad, la unidad elegida en una lista y,
// abajo, la ruta elegida. "&Aceptar" la devuelve.

#include <QDialog>
#include <QString>

class QComboBox;
class QFileSystemModel;
class QLabel;
class QTreeView;

namespace orv {

class panSelPath : public QDialog {
    Q_OBJECT
public:
    explicit panSelPath(const QString& inicial, QWidget* padre = nullptr);

    // La carpeta elegida (vacía si no se eligió ninguna).
    QString ruta() const { return ruta_; }
    // Muestra la pantalla y devuelve la carpeta aceptada; vacío si se canceló.
    static QString elige(const QString& inicial, QWidget* padre);

    void cambiaUnidad(int indice); // Drive1
    void seleccionaCarpeta(const QString& carpeta);

private:
    QComboBox* unidades_;
    QTreeView* arbol_;
    QFileSystemModel* modelo_;
    QLabel* estado_;
    QString ruta_;
};

} // namespace orv
