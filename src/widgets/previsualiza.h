#pragma once
// Vista previa de impresión de una grilla: título, columnas como se ven, encabezado y pie
// de página con la fecha y "Página n de m". Imprime el resultado completo de la consulta.

class QPrinter;

namespace orv {

class Grilla;

// Muestra la vista previa modal de la grilla.
void PrevisualizaGrilla(Grilla& grilla);

// Dibuja la grilla en la impresora (la misma rutina sirve a la vista previa y a un PDF).
// Devuelve la cantidad de páginas dibujadas.
int ImprimeGrilla(Grilla& grilla, QPrinter& impresora);

} // namespace orv
