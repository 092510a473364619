#pragma once
// Dibujo directo de los informes hechos de tablas y párrafos simples, sin pasar por el maquetado
// de documentos de texto: una lista de 10 000 filas se dibuja en un par de segundos y el encabezado
// de la tabla se repite en cada página.
//
// Entiende este HTML: <table> (con <thead>), <tr> con style de background-color, color,
// font-weight: bold y border-top; <th>/<td> con align y colspan; dentro de las celdas texto,
// <b>, <i> y <br>; y <p> con align, <i> y <b> fuera de las tablas. Cualquier otra cosa queda
// para el maquetado general.

#include <QColor>
#include <QPainter>
#include <QString>
#include <QVector>
#include <optional>

namespace orv {

struct CeldaSimple {
    QString texto; // sin marcas; "\n" por cada <br>
    Qt::Alignment alineacion = Qt::AlignLeft;
    int columnas = 1; // colspan
    bool negrita = false;
    bool cursiva = false;
};

struct FilaSimple {
    QVector<CeldaSimple> celdas;
    QColor fondo;
    QColor tinta;
    bool negrita = false;
    bool lineaArriba = false;
    bool encabezado = false; // dentro de <thead>: se repite en cada página
};

struct BloqueSimple {
    bool esTabla = false;
    QVector<FilaSimple> filas;   // tabla
    CeldaSimple parrafo;         // párrafo
};

// Los bloques del cuerpo, o nada si el HTML usa algo que no está en la lista de arriba.
std::optional<QVector<BloqueSimple>> AnalizaCuerpoSimple(const QString& html);

// Anchos de las columnas de una tabla en el ancho dado: `natural`, lo que pide cada una sin partir
// renglones; `minimo`, su palabra más larga (con el relleno). Si sobra lugar, se reparte en
// proporción; si falta, ninguna baja de su mínimo mientras los mínimos quepan.
QVector<qreal> repartoDeAnchos(const QVector<qreal>& natural, const QVector<qreal>& minimo, qreal ancho);

// Reparte los bloques en páginas del alto dado y dibuja cada una con `pagina(n)` ya llamada (para
// el encabezado, el pie y el salto de página). Devuelve la cantidad de páginas.
class PaginasSimples {
public:
    PaginasSimples(const QVector<BloqueSimple>& bloques, const QFont& base, QPaintDevice* dispositivo, qreal ancho,
                   qreal alto);
    int paginas() const { return paginas_; }
    // Dibuja la página n (desde 0) con su esquina superior izquierda en `origen`.
    void dibuja(QPainter& p, int n, const QPointF& origen) const;

private:
    struct Renglon { // una fila o un párrafo, ya ubicado
        int bloque = 0;
        int fila = -1; // -1: párrafo
        int pagina = 0;
        qreal y = 0;
        qreal alto = 0;
    };
    void dibujaFila(QPainter& p, const FilaSimple& f, const QVector<qreal>& anchos, qreal x, qreal y, qreal alto) const;
    qreal altoFila(const FilaSimple& f, const QVector<qreal>& anchos) const;
    void mideTabla(int b);
    qreal altoJunto(int b, int r, qreal alto) const;

    const QVector<BloqueSimple>& bloques_;
    QFont base_;
    QFont negrita_;
    QFont cursiva_;
    QPaintDevice* dispositivo_;
    qreal ancho_;
    qreal relleno_;
    QVector<QVector<qreal>> anchos_; // por bloque
    QVector<Renglon> renglones_;
    QVector<QVector<int>> encabezados_; // por bloque: filas de <thead>
    int paginas_ = 1;
};

} // namespace orv
