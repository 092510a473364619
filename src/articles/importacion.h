#pragma once
// Importación de una hoja de planilla a artículos, clientes o proveedores: el mapa de columnas
// ("XLS" una columna de la hoja, "CFI" un valor fijo, "CIN" un contador), la conversión de cada
// celda al tipo de su campo con un error claro por fila, y la escritura por lotes, cada lote en su
// transacción, para mostrar el avance y poder cancelar entre uno y otro.

#include "articles/planillas.h"
#include "store/almacen.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <optional>

namespace orv {

// La tabla destino, por su posición en la lista de la pantalla.
enum class TablaDestino { Articulos = 0, Vendedores = 1, Proveedores = 2 };
QString NombreTabla(TablaDestino t);

enum class TipoCampo { Texto, Entero, Doble, Dinero, Fecha, SiNo };

struct CampoDestino {
    QString nombre;   // como se muestra y como va en el SQL ("e-mail" sin sus comillas)
    TipoCampo tipo;
    int largo = 0;    // de un texto; 0 sin tope
    bool obligatorio = false;
};
// Los campos que se pueden importar de cada tabla, en el orden de la tabla (sin la clave, que la
// pone el almacén).
const QList<CampoDestino>& CamposDe(TablaDestino t);

// Una fila del mapa, con el texto de sus cinco columnas.
struct Mapeo {
    QString tipo;          // "XLS", "CFI" o "CIN"
    QString externo;       // la columna de la hoja, el valor fijo o el primer número
    QString interno;       // el campo destino
    QString incrementador; // el paso de un contador; "0" en los otros
    QString mascara;       // vacía: el valor tal cual
    friend bool operator==(const Mapeo&, const Mapeo&) = default;
};
inline const QString kMapeoColumna = QStringLiteral("XLS");
inline const QString kMapeoFijo = QStringLiteral("CFI");
inline const QString kMapeoContador = QStringLiteral("CIN");

// Un contador: comienzo y paso deben ser números ("Error, ingrese campos numéricos!").
Mapeo MapeoContador(const QString& comenzarEn, const QString& incrementar, const QString& campo, const QString& mascara);

// Las máscaras que ofrece la pantalla.
QStringList MascarasDeIngreso();

// Un número escrito en una planilla: con coma o punto decimal. Con los dos, el último es el
// decimal ("1.234,50", "1,234.50"); con uno solo que aparece una vez, ése es el decimal ("12,5",
// "12.5"); repetido, agrupa miles ("1.234.567"). Admite signo, "$" y blancos. nullopt si no es un
// número.
std::optional<QString> NumeroDePlanilla(QStringView texto);

// Una hoja leída para importar: los títulos de la primera fila escrita (las columnas sin título se
// llaman F1, F2...) y las filas de datos debajo, en su orden.
struct HojaLeida {
    QStringList titulos;
    QList<FilaPlanilla> filas;
};
HojaLeida LeeHoja(Planilla& planilla, int hoja);

struct ErrorImportacion {
    int fila = 0; // el número de la fila en la hoja; 0 una fila agregada en la grilla
    QString texto;
    friend bool operator==(const ErrorImportacion&, const ErrorImportacion&) = default;
};
// La línea del informe de errores: "Fila 7: ..." ("Fila agregada: ..." la que no viene de la hoja).
QString LineaDeError(const ErrorImportacion& e);

inline constexpr int kFilasPorLote = 500;

// Una importación en marcha. Cada avanza() escribe el lote siguiente en una transacción; entre
// lotes la pantalla muestra el avance y puede dejar de llamarlo (cancelar): lo confirmado queda.
class Importacion {
public:
    // Lanza Aviso si el mapa está vacío o nombra una columna que la hoja no tiene o un campo que
    // la tabla no tiene. `coefIva` completa el precio final de los artículos que no lo traen.
    Importacion(Almacen& a, TablaDestino tabla, QList<Mapeo> mapa, const HojaLeida& hoja, QString coefIva,
                int filasPorLote = kFilasPorLote);

    // Escribe el lote siguiente; false si ya no quedaban filas.
    bool avanza();
    bool terminada() const { return siguiente_ >= filas_.size(); }
    int total() const { return int(filas_.size()); }
    int procesadas() const { return int(siguiente_); }
    int importadas() const { return importadas_; }
    const QList<ErrorImportacion>& errores() const { return errores_; }

private:
    struct Destino {
        CampoDestino campo;
        const Mapeo* mapeo;
        int columna; // de la hoja, para "XLS"
    };
    // Una fila de la hoja en un lote: sus valores para el INSERT o lo que tiene mal.
    struct Convertida {
        int fila;
        QVariantList valores;
        QString error;
    };
    // Los valores de una fila para el INSERT; lanza Aviso con lo que está mal.
    QVariantList valores(const FilaPlanilla& fila, qsizetype indice) const;
    // Los códigos de artículo de un lote que el almacén ya tiene, con la descripción del primer
    // artículo que lo usa, en una lectura.
    void leeCodigosUsados(const QList<Convertida>& filas);
    // Por qué una fila convertida no entra (código ya usado, zona que no existe); vacío si entra.
    QString rechazo(const QVariantList& v) const;
    // Cuenta una fila que entra; su código queda ocupado para las siguientes.
    void ocupa(const QVariantList& v);
    void insertaJuntas(const QList<QVariantList>& filas);
    void loteFila(qsizetype desde, qsizetype hasta, bool filaPorFila);

    Almacen& a_;
    TablaDestino tabla_;
    QList<Mapeo> mapa_;
    QList<FilaPlanilla> filas_;
    QList<Destino> destinos_;
    QString insert_;     // hasta VALUES
    QString marcasFila_; // (?, ?, ...) de una fila
    double coefIva_ = 0;
    int indiceCodigo_ = -1;
    int indiceDescripcion_ = -1;
    int indiceVenta_ = -1;
    int indiceZona_ = -1;
    bool agregaPrecioFinal_ = false;
    int filasPorLote_;
    qsizetype siguiente_ = 0;
    int importadas_ = 0;
    QList<ErrorImportacion> errores_;
    QHash<QString, QString> codigosUsados_; // del lote en curso
    QSet<qint64> zonas_;                    // las que hay, leídas al empezar
};

} // namespace orv
