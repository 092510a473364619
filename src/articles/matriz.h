#pragma once
// La matriz de artículos: características (color, talle, medida...) con sus valores en la tabla
// Matriz, y las variantes que el generador arma a partir de un artículo base, una por
// combinación de valores, que se graban como artículos junto con la ficha.

#include "articles/articulos.h"
#include "store/almacen.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace orv {

// Largos de las columnas de la matriz.
inline constexpr int kLargoMatriz = 40;            // Matriz.Tipo y Matriz.Valor
inline constexpr int kLargoDescripcionMatriz = 50; // Articulos.DescripcionMatriz

struct ValorMatriz {
    qint64 idMatriz = 0;
    QString valor;
};

// Las características, por nombre. Una característica existe mientras tenga algún valor.
QStringList Caracteristicas(const Almacen& a);
// Los valores de una característica, en el orden en que se cargaron.
QList<ValorMatriz> ValoresDe(const Almacen& a, const QString& tipo);

// "Nueva característica...": el nombre con sus valores no vacíos, en una transacción. Un nombre
// vacío, uno que ya existe o ningún valor se rechazan con un aviso, sin escribir nada.
void AgregaCaracteristica(Almacen& a, const QString& tipo, const QStringList& valores);
// Un valor más para una característica; uno repetido se rechaza. Devuelve su idMatriz.
qint64 AgregaValor(Almacen& a, const QString& tipo, const QString& valor);
// Quita un valor; el último se lleva la característica.
void QuitaValor(Almacen& a, qint64 idMatriz);
// "&Eliminar": la característica con todos sus valores.
void BorraCaracteristica(Almacen& a, const QString& tipo);

// ---------------------------------------------------------------------------------------------
// Generador
// ---------------------------------------------------------------------------------------------

struct OpcionesMatriz {
    QString separador = QStringLiteral("-"); // txtSep
    bool sinTitulo = false;                  // optTit: "No agregar título de la característica"
    bool enDescripcion = true;               // optEnDescripcion
};

// El valor elegido de una característica.
struct Eleccion {
    QString caracteristica;
    QString valor;
};

// Una fila del generador: un artículo por grabar.
struct VarianteMatriz {
    QString codigo;
    QString descripcion;
    QString caracteristicas;
    QString stock;
};

// El texto de características de una combinación: cada valor con las tres primeras letras de su
// característica y ":" delante (salvo sinTitulo), separados por " <separador> ". Color y Talle,
// Rojo y XL, separador "-": "Col:Rojo - Tal:XL".
QString TextoCaracteristicas(const QList<Eleccion>& elecciones, const OpcionesMatriz& o);

// El código de la fila siguiente: el número del final del código más uno, con el mismo ancho
// ("070013" → "070014", "0099" → "0100", "REM-09" → "REM-10"); sin número al final, se le agrega
// un 1 ("REM" → "REM1").
QString SiguienteCodigo(const QString& codigo);

// "Ingresar": la fila de una combinación, con el código dado. Sin ninguna elección, aviso.
VarianteMatriz Variante(const QString& codigo, const QString& descripcionBase, const QString& stock,
                        const QList<Eleccion>& elecciones, const OpcionesMatriz& o);

// "Todas las combinaciones": el producto de los valores elegidos de cada característica (las que
// no tienen ninguno quedan afuera), la primera característica por fuera. Los códigos siguen desde
// `codigo`. Sin valores elegidos, aviso.
QList<VarianteMatriz> Combinaciones(const QString& codigo, const QString& descripcionBase, const QString& stock,
                                    const QList<QList<Eleccion>>& porCaracteristica, const OpcionesMatriz& o);

// "&Aceptar" de la ficha nueva con matriz: una fila de Articulos por variante, con su código,
// descripción, características y existencia, y lo demás de la ficha (rubro, proveedor, precios,
// marcas, foto), todo en una transacción. El artículo base no se graba aparte: su código es el
// de la primera fila. Un aviso de una fila dice cuál es. Devuelve los ids en el orden de las filas.
QList<qint64> GrabaArticuloConMatriz(Almacen& a, const DatosArticulo& base, const QList<VarianteMatriz>& variantes,
                                     const QString& coefIva);

} // namespace orv
