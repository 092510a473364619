#pragma once
// "Configurar etiquetas": la definición de una hoja de etiquetas en milímetros, con la hoja
// dibujada al lado, su impresión de prueba y el guardado por nombre.

#include "articles/etiquetas.h"
#include "store/almacen.h"

#include <QDialog>
#include <QSizeF>
#include <array>
#include <optional>

class QLabel;
class QLineEdit;
class QScrollArea;

namespace orv {

// La hoja dibujada a escala: el papel, el contorno de cada etiqueta y su símbolo de prueba.
class VistaHoja : public QWidget {
    Q_OBJECT
public:
    VistaHoja(QSizeF papelMm, QWidget* padre = nullptr);
    void fijaHoja(const std::optional<HojaEtiquetas>& hoja);

protected:
    void paintEvent(QPaintEvent* e) override;

private:
    QSizeF papel_;
    std::optional<HojaEtiquetas> hoja_;
};

class panConfEtiq : public QDialog {
    Q_OBJECT
public:
    // Con un nombre, carga la definición guardada con ese nombre (si existe).
    panConfEtiq(Almacen& almacen, const QString& nombre, QWidget* padre = nullptr);

    // Text1 .. Text10, en el orden de los campos.
    QLineEdit* campo(int n) const { return campos_[size_t(n - 1)]; }
    // El nombre con que se guardó una definición; vacío si no se guardó ninguna.
    const QString& guardada() const { return guardada_; }

    void guardar();       // Command1
    void imprimePrueba(); // Command2
    // Al dejar un campo: si no es un número lo dice y vuelve a 1 (el tamaño de fuente a 10);
    // si lo es, redibuja la hoja.
    void dejaCampo(int n);

private:
    QLayout* armaCampos();
    CamposHoja leeCampos() const;
    void carga(const HojaEtiquetas& h);
    void redibuja();

    Almacen& almacen_;
    std::array<QLineEdit*, 10> campos_{};
    VistaHoja* hoja_ = nullptr;
    QScrollArea* desliza_ = nullptr;
    QLabel* label10_ = nullptr;
    QString guardada_;
};

} // namespace orv
