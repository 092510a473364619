#pragma once
// Ventana principal del programa.

#include "app/estado.h"
#include "store/reloj.h"

#include <QMainWindow>

class QLabel;

namespace orv {

class PanPrincipal : public QMainWindow {
    Q_OBJECT
public:
    PanPrincipal(const EstadoAplicacion& estado, const Reloj& reloj, QWidget* padre = nullptr);

    // "Orvanta ver M.m.r | Usuario : <nombre>"
    static QString tituloVentana(const QString& nombreUsuario);

private:
    const EstadoAplicacion& estado_;
    const Reloj& reloj_;
    QLabel* fecha_;
};

} // namespace orv
