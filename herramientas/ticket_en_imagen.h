#pragma once
// Lo que una impresora de tickets haría con unos bytes ESC/POS, dibujado: las órdenes se leen aparte
// del programa que las escribió (inicio, página de códigos, negrita, alineación, corte y cajón) y el
// texto se decodifica con la página elegida, como lo hace la impresora.

#include <QByteArray>
#include <QImage>

QImage TicketEnImagen(const QByteArray& bytes, int columnas = 42);
