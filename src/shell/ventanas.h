#pragma once
// Ubicación de ventanas.

class QWidget;

namespace orv {

// Centra la ventana en la pantalla donde está (o en la principal).
void CentrarVentana(QWidget* ventana);

} // namespace orv
