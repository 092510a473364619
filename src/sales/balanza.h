#pragma once
// Códigos de balanza: la etiqueta EAN-13 que imprime la balanza del mostrador lleva, detrás de un
// prefijo reservado (20 a 29), el código del artículo y el importe a cobrar o el peso. Al
// escanearla, la venta agrega ese artículo con ese importe o esa cantidad.
//
// Se configura en la sección "Miscelaneas":
//   BalanzaPrefijos      prefijos de la balanza: "20-29" (por omisión), "20,21" o "28"
//   BalanzaCifrasCodigo  cifras del código del artículo (5)
//   BalanzaCifrasValor   cifras del importe o del peso (5)
//   BalanzaValor         "Precio" (por omisión) o "Peso"
//   BalanzaDecimales     decimales del valor (2 para un precio, 3 para un peso en kilos)
// Prefijo, código y valor ocupan las 12 primeras cifras; la 13.ª es el dígito verificador.

#include "app/configuracion.h"
#include "sales/borrador.h"
#include "store/almacen.h"
#include "store/aviso.h"
#include "store/dinero.h"

#include <QList>
#include <QString>
#include <QStringView>
#include <optional>

namespace orv {

struct ConfBalanza {
    QList<std::pair<int, int>> prefijos{{20, 29}}; // rangos cerrados
    int cifrasPrefijo = 2;
    int cifrasCodigo = 5;
    int cifrasValor = 5;
    bool esPrecio = true; // si no, el valor es un peso
    int decimales = 2;
    // Vacío si la configuración se puede usar; si no, qué está mal.
    QString problema;
};

// Los cinco valores de la balanza tal como están escritos en la configuración.
struct TextosBalanza {
    QString prefijos;
    QString cifrasCodigo;
    QString cifrasValor;
    QString valor;     // "Precio" o "Peso"
    QString decimales;
    friend bool operator==(const TextosBalanza&, const TextosBalanza&) = default;
};
TextosBalanza LeeTextosBalanza(const Configuracion& conf);
void GrabaTextosBalanza(const Configuracion& conf, const TextosBalanza& t);

// Interpreta los valores con los de omisión: uno que falta o no es un número toma el suyo. Una
// combinación imposible (prefijo, código y valor que no suman 12 cifras, prefijos de distinto
// largo) queda dicha en `problema`.
ConfBalanza InterpretaBalanza(const TextosBalanza& t);
// InterpretaBalanza de lo que dice la configuración.
ConfBalanza LeeConfBalanza(const Configuracion& conf);

// Dígito verificador EAN-13 de las 12 primeras cifras.
int DigitoVerificadorEan13(QStringView doceCifras);

// La etiqueta de un código de barras de balanza.
struct EtiquetaBalanza {
    QString codigoArticulo; // las cifras del código, como vienen ("00123")
    bool esPrecio = true;
    Dinero precio;          // si esPrecio: lo que se cobra por la etiqueta
    double peso = 0;        // si no: la cantidad
};

// El código que se rechaza por su dígito verificador (o por una configuración imposible). La venta
// lo muestra en el panel, como un código que no está, para no perder el próximo escaneo.
class CodigoBalanzaErroneo : public Aviso {
public:
    explicit CodigoBalanzaErroneo(QString texto) : Aviso(std::move(texto)) {}
};

// Nada si el código no tiene la forma de una etiqueta de balanza (13 cifras con un prefijo de la
// balanza). Lanza CodigoBalanzaErroneo si la tiene pero su dígito verificador no coincide, o si la
// configuración no se puede usar.
std::optional<EtiquetaBalanza> LeeEtiquetaBalanza(const ConfBalanza& conf, QStringView codigo);

// Si `codigo` es una etiqueta de balanza y no hay un artículo con ese mismo código, agrega su
// línea al borrador de la terminal y la devuelve; si no, nada (la venta sigue por el camino de
// siempre). El artículo se busca por su Codigo igual a las cifras de la etiqueta, o a esas cifras
// sin los ceros de adelante. Cada etiqueta es una línea propia, nunca sumada a otra: con precio,
// la cantidad es 1 (o la del multiplicador) al importe de la etiqueta; con peso, el peso al precio
// de venta del artículo (el multiplicador se rechaza). Lanza ArticuloNoEncontrado si no hay
// artículo, y Aviso si el artículo no tiene precio para venderlo por peso. Una transacción.
std::optional<LineaAgregada> AgregaLineaBalanza(Almacen& a, const ConfBalanza& conf, qint32 idRed,
                                                const QString& codigo, const std::optional<QString>& multiplicador);

} // namespace orv
