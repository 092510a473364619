#pragma once
// Visor de un informe en una ventana propia: páginas como saldrán impresas, zoom, impresión y
// exportación. Queda abierto mientras se sigue trabajando en el programa.

#include "reports/informe.h"

#include <QPrinter>
#include <QWidget>
#include <functional>

class QLabel;
class QPrintPreviewWidget;

namespace orv {

class VisorInforme : public QWidget {
    Q_OBJECT
public:
    // `guarda` escribe el informe en el archivo elegido (la extensión dice el formato).
    VisorInforme(InformeArmado informe, std::function<void(const QString&)> guarda, QWidget* padre = nullptr);

    int paginas() const;
    int paginaActual() const;
    const InformeArmado& informe() const { return informe_; }
    QPrintPreviewWidget* vista() const { return vista_; }

    void imprimir();
    void exportar();

private:
    void actualizaPagina();

    InformeArmado informe_;
    std::function<void(const QString&)> guarda_;
    QPrinter impresora_;
    QPrintPreviewWidget* vista_ = nullptr;
    QLabel* pagina_ = nullptr;
};

} // namespace orv
