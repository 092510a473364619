#pragma once
// Lectura de planillas de cálculo: .xls, .xlsx, .ods y .csv con una misma forma. Una planilla da
// sus hojas, y cada hoja sus filas de celdas, de a una, sin cargar el archivo entero: una hoja de
// cien mil filas se recorre con la memoria de una fila (más las cadenas compartidas de un .xlsx).
//
// Un archivo que no se puede leer (no existe, está dañado, no es una planilla) lanza un Aviso que
// lo dice; nunca termina el programa.

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

namespace orv {

struct Celda {
    enum class Tipo { Vacia, Texto, Numero, Fecha };
    Tipo tipo = Tipo::Vacia;
    QString texto;   // Texto
    double numero = 0; // Numero
    QDate fecha;     // Fecha

    static Celda deTexto(QString t) { return {Tipo::Texto, std::move(t), 0, {}}; }
    static Celda deNumero(double n) { return {Tipo::Numero, {}, n, {}}; }
    static Celda deFecha(QDate f) { return {Tipo::Fecha, {}, 0, f}; }
    bool vacia() const { return tipo == Tipo::Vacia || (tipo == Tipo::Texto && texto.trimmed().isEmpty()); }
    // Lo que se ve: el texto, el número sin ceros de más ("12.5"; un entero con todas sus cifras),
    // la fecha "dd/mm/aaaa".
    QString aTexto() const;
    friend bool operator==(const Celda&, const Celda&) = default;
};

// Una fila de la hoja: su número (1 es la primera de la hoja) y sus celdas desde la columna A, sin
// las vacías del final.
struct FilaPlanilla {
    int numero = 0;
    QList<Celda> celdas;
};

// Recorre una hoja de arriba abajo. Las filas enteramente vacías no se devuelven.
class LectorHoja {
public:
    virtual ~LectorHoja() = default;
    // La fila siguiente; nullopt al terminar la hoja. Lanza Aviso si el archivo está dañado.
    virtual std::optional<FilaPlanilla> siguiente() = 0;
};

class Planilla {
public:
    virtual ~Planilla() = default;
    // Abre por la extensión (.xls, .xlsx, .ods, .csv o .txt). Lanza Aviso si no se puede.
    static std::unique_ptr<Planilla> abre(const QString& ruta);

    // Los nombres de las hojas en su orden (un .csv tiene una, con el nombre del archivo).
    virtual QStringList hojas() const = 0;
    // Un lector de la hoja por su posición.
    virtual std::unique_ptr<LectorHoja> lee(int hoja) = 0;

    // La posición de la hoja por su nombre, con o sin el "$" del final ("Hoja1$" es "Hoja1"), sin
    // distinguir mayúsculas; nullopt si no hay una hoja así.
    std::optional<int> buscaHoja(const QString& nombre) const;
};

// Lecturas de cada formato (planillas.cpp, planillas_zip.cpp).
std::unique_ptr<Planilla> AbreXls(const QString& ruta);
std::unique_ptr<Planilla> AbreXlsx(const QString& ruta);
std::unique_ptr<Planilla> AbreOds(const QString& ruta);
std::unique_ptr<Planilla> AbreCsv(const QString& ruta);

// Texto de un .csv: UTF-8 (con o sin BOM) si sus bytes lo son, si no Windows-1252.
QString DecodificaTexto(const QByteArray& bytes);
// El separador de un .csv por su primera línea: ';', ',', tabulación o '|', el que más aparece
// fuera de comillas; ',' si no aparece ninguno.
QChar DetectaSeparador(QStringView primeraLinea);

// La fecha de un número de serie de las planillas (días desde el 30/12/1899, o desde el 1/1/1904 en
// los libros con esa base); la fracción del día se descarta.
QDate FechaDeSerie(double serie, bool base1904 = false);

} // namespace orv
