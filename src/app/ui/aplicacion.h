#pragma once
// La aplicación de ventanas de Orvanta: la última red contra una falla que se escapa de un
// manejador de eventos. La falla se muestra y se anota en el registro, y el programa sigue; el
// borrador de la venta está en el almacén, así que no se pierde nada de lo cargado.

#include <QApplication>
#include <QString>

namespace orv {

class AplicacionOrvanta : public QApplication {
public:
    AplicacionOrvanta(int& argc, char** argv);
    bool notify(QObject* receptor, QEvent* evento) override;

    // Desde ahora los errores y las fallas quedan también en <carpeta>/orvanta.log (sólo para el
    // dueño), con fecha y hora. Con una carpeta vacía deja de anotar.
    static void registraEn(const QString& carpeta);
};

} // namespace orv
