#pragma once
// Ubicación de ventanas y los botones al pie de un diálogo.

#include <QString>

class QBoxLayout;
class QDialog;
class QPushButton;
class QWidget;

namespace orv {

// Centra la ventana en la pantalla donde está (o en la principal).
void CentrarVentana(QWidget* ventana);
// Una ventana para leer páginas: casi todo el alto de la pantalla y el ancho de una hoja que se
// lee sin acercar (hasta `anchoMaximo`), centrada.
void TamanioDeLectura(QWidget* ventana, int anchoMaximo = 1100);

// Aceptar ("Command1") y Cancelar ("Command2", que cierra el diálogo con reject) al pie de
// `capa`. Devuelve Aceptar para conectarlo; con `predeterminado`, Enter lo pulsa.
QPushButton* BotonesAlPie(QDialog* dialogo, QBoxLayout* capa, bool predeterminado = true,
                          const QString& aceptar = QStringLiteral("&Aceptar"),
                          const QString& cancelar = QStringLiteral("&Cancelar"));

} // namespace orv
