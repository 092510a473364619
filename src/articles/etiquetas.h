#pragma once
// Etiquetas de código de barra: las hojas de etiquetas (medidas en milímetros), las etiquetas de
// las compras de un día (una por unidad), su lugar en la hoja y el dibujo del símbolo.
//
// El símbolo se dibuja barra por barra (Code 39 con sus asteriscos de inicio y fin, sin dígito
// verificador y sin texto legible debajo): no depende de una fuente instalada en la máquina.

#include "store/almacen.h"

#include <QDate>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <optional>

class QPainter;

namespace orv {

inline constexpr int kLargoNombreHoja = 100; // Etiquetas.Nombre
inline const QString kSinHojaEtiquetas = QStringLiteral("No se encontró registro de definciciones de etiquetas !");

// Una fila de `Etiquetas`: la grilla de la hoja y el tamaño del símbolo.
struct HojaEtiquetas {
    QString nombre;
    int porAncho = 1;         // No_Ancho
    int porLargo = 1;         // No_Largo
    double margenIzq = 0;     // Margen_Izq, mm
    double margenSup = 0;     // Margen_Sup, mm
    double distColum = 0;     // Dist_Colum, mm
    double distFilas = 0;     // Dist_Filas, mm
    double ancho = 0;         // Etiq_Ancho, mm
    double largo = 0;         // Etiq_Largo, mm
    int tamanoFuente = 10;    // TamanoFuente, puntos

    int porHoja() const { return porAncho * porLargo; }
};

// Los diez campos de la hoja como se tipearon, en el orden de la tabla.
struct CamposHoja {
    QString nombre, porAncho, porLargo, margenIzq, margenSup, distColum, distFilas, ancho, largo, tamanoFuente;
};

// Lee los campos: cantidades enteras de 1 a 100, distancias de 0 a 2000 mm, el tamaño de la
// etiqueta mayor que 0, la fuente de 1 a 400 puntos. Un valor que no se lee o no cabe se rechaza
// con un aviso que nombra su campo. Sin `conNombre` el nombre no se controla (la vista previa).
HojaEtiquetas LeeCamposHoja(const CamposHoja& c, bool conNombre);

// Los nombres de las hojas guardadas, por nombre.
QStringList NombresHojasEtiquetas(const Almacen& a);
// La hoja con ese nombre; nada si no existe.
std::optional<HojaEtiquetas> LeeHojaEtiquetas(const Almacen& a, const QString& nombre);
// Graba la hoja: la fila con su nombre si existe (todas, si hubiera varias), una nueva si no.
void GuardaHojaEtiquetas(Almacen& a, const HojaEtiquetas& hoja);

// Los códigos de las entradas de stock de tipo 1 (compras) del día de artículos marcados con
// "Imprime código de barra ?", uno por unidad: 3 unidades son tres entradas; 2.5 son dos. En el
// orden de carga de los movimientos.
QStringList EtiquetasDelDia(const Almacen& a, const QDate& dia);

// El lugar de una etiqueta en la hoja: página (desde 0), origen del símbolo en mm y su código.
struct LugarEtiqueta {
    int pagina = 0;
    QPointF origen;
    QString codigo;
};

// "Comenzar a imprimir en la etiqueta nº": vacío o 0 es la primera; más allá de la hoja se rechaza.
int LeeComienzo(const QString& texto, const HojaEtiquetas& hoja);
// Reparte los códigos desde la posición `comienzo` (1 es la primera) de la primera hoja: la
// etiqueta de la columna c y la fila r tiene su origen en Margen_Izq + c × (Dist_Colum +
// Etiq_Ancho), Margen_Sup + r × (Dist_Filas + Etiq_Largo); cada hoja nueva empieza arriba. Las
// páginas alcanzan para todos los códigos; las posiciones que sobran quedan en blanco.
QList<LugarEtiqueta> ReparteEtiquetas(const HojaEtiquetas& hoja, const QStringList& codigos, int comienzo);
// Páginas que ocupa un reparto (al menos una).
int PaginasEtiquetas(const QList<LugarEtiqueta>& lugares);

// Un código de 13 cifras con su dígito verificador EAN-13 correcto.
bool EsEan13(const QString& codigo);

// Las barras de un símbolo, en módulos (el ancho de la barra más angosta) desde su borde izquierdo;
// el alto va de 0 a 1.
struct Simbolo {
    QList<QRectF> barras;
    int modulos = 0;
    bool ean13 = false;
};
// Code 39 de `*` + código + `*`; con `ean13` y un código EAN-13 válido, EAN-13. Un código con
// signos que Code 39 no tiene lanza un aviso que lo nombra.
Simbolo CodificaEtiqueta(const QString& codigo, bool ean13);
// Los códigos, de los dados, que no se pueden dibujar; sin repetir.
QStringList CodigosSinSimbolo(const QStringList& codigos, bool ean13);

// El rectángulo del símbolo en mm a partir de su origen: alto del tamaño de la fuente (en puntos)
// y barras del ancho que tendría esa fuente; si no cabe en la etiqueta, se angosta hasta caber.
QRectF RectanguloSimbolo(const HojaEtiquetas& hoja, const Simbolo& s, QPointF origen);
// Dibuja en `p` (en mm) los símbolos de una página.
void DibujaPaginaEtiquetas(QPainter& p, const HojaEtiquetas& hoja, const QList<LugarEtiqueta>& lugares, int pagina,
                           bool ean13);

// Lo que "&Imprimir" manda a la impresora.
struct TrabajoEtiquetas {
    HojaEtiquetas hoja;
    QList<LugarEtiqueta> lugares;
    bool ean13 = false;
};
// "&Imprimir": la hoja con el nombre elegido (si no hay, kSinHojaEtiquetas), al menos un ítem, el
// comienzo leído y todos los códigos dibujables (si no, un aviso que nombra los que no lo son, para
// pasarlos a la otra lista); después el reparto en la hoja.
TrabajoEtiquetas PreparaImpresionEtiquetas(const Almacen& a, const QString& formato, const QStringList& codigos,
                                           const QString& comienzo, bool ean13);
// "&Imprimir Prueba" y la vista de la hoja: una página con todas sus posiciones, cada una con su
// número como código.
TrabajoEtiquetas TrabajoDePrueba(const HojaEtiquetas& hoja);

} // namespace orv
