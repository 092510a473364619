#pragma once
// Salida de una hoja de etiquetas: la vista previa con su botón de imprimir (la impresora o un
// PDF, desde el diálogo de impresión) y el dibujo de las páginas en milímetros desde el borde
// del papel.

#include "articles/etiquetas.h"

class QPrinter;
class QWidget;

namespace orv {

// Dibuja todas las páginas del trabajo en la impresora (o en el PDF). Devuelve las páginas.
int PintaEtiquetas(QPrinter& impresora, const TrabajoEtiquetas& trabajo);

// La vista previa modal del trabajo; desde ella se imprime.
void PrevisualizaEtiquetas(QWidget* padre, const TrabajoEtiquetas& trabajo);

} // namespace orv
