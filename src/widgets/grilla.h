#pragma once
// Grilla compartida por todos los paneles: consulta SQL con carga perezosa, títulos, máscaras,
// columnas ocultas, distribución guardada en archivo, búsqueda incremental, agrupación por una
// columna arrastrada a la banda superior, vista previa de impresión y exportación.
//
// La consulta debería llevar ORDER BY: las páginas se leen con LIMIT/OFFSET sobre ella. No queda
// ninguna consulta a medio leer entre una página y otra, así que la grilla no retiene una
// instantánea de lectura.
//
// Búsqueda incremental (busca): va a la primera fila, en el orden de la grilla, cuyo valor
// guardado empieza con el texto, sin distinguir mayúsculas. Hay dos caminos con el mismo
// resultado:
//  - Por el orden: la grilla lee su orden de la propia consulta cuando ésta termina en
//    "ORDER BY columna [ASC|DESC]" (una sola columna, con o sin "tabla.", sin otro ORDER BY
//    adentro) y la columna está en el resultado. Si se busca en esa columna, sus valores son
//    enteros y el texto son cifras, halla el primer valor que coincide probando rangos del
//    índice (para "12": 12, 120–129, 1200–1299, ...), cuenta las filas anteriores con el mismo
//    FROM/WHERE y los mismos parámetros (con repetidos, la primera del valor) y lee la página de
//    esa fila por el valor. Conviene que la columna tenga índice.
//  - Por prefijo de texto: si la columna buscada es de texto y el motor la compara por sus bytes
//    (SQLite siempre; PostgreSQL con intercalación C, POSIX o C.UTF-8), las coincidencias son unos
//    pocos rangos del índice de esa columna: uno por cada forma en mayúsculas y minúsculas del
//    texto que de veras aparece ("abc", "ABC"...), hallados saltando por el índice. Si es la
//    columna del orden, la primera coincidencia es la primera del menor rango; si no, la de menor
//    valor del orden entre las de esos rangos. Su posición se cuenta como en el camino anterior.
//    Necesita índices en las dos columnas; si la fila hallada comparte su valor del orden con
//    otras (su lugar entre ellas es incierto), se recorre la grilla.
//  - Fila por fila: en cualquier otro caso (fecha, orden de varias columnas, intercalación que
//    no ordena por bytes) numera las filas en el orden de la grilla hasta la primera que coincide.
// Los valores llegan siempre como parámetros ligados y los nombres de columna salen del
// resultado de la consulta.

#include "store/almacen.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QJsonObject>
#include <QSqlRecord>
#include <QStringList>
#include <QVariantList>
#include <QVector>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

class QTableView;
class QTreeWidget;
class QTreeWidgetItem;
class QStackedWidget;
class QLabel;
class QTimer;
class QToolButton;

namespace orv {

// Modelo de la grilla: páginas de 256 filas leídas a pedido, sin contar antes el total.
class ModeloGrilla : public QAbstractTableModel {
    Q_OBJECT
public:
    static constexpr int kPagina = 256;

    explicit ModeloGrilla(QObject* padre = nullptr);
    // Abre la consulta y lee sólo la primera página. Lanza ErrorAlmacen si la consulta falla.
    void abre(Almacen& a, const QString& sql, const QVariantList& parametros);
    void cierra();

    int rowCount(const QModelIndex& padre = {}) const override;
    int columnCount(const QModelIndex& padre = {}) const override;
    QVariant data(const QModelIndex& i, int rol = Qt::DisplayRole) const override;
    QVariant headerData(int seccion, Qt::Orientation o, int rol = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& i) const override;
    // Las celdas editables no escriben en el almacén: avisan con edicionPedida y la grilla
    // llama a quien la usa, que graba por su lógica y refresca.
    bool setData(const QModelIndex& i, const QVariant& valor, int rol = Qt::EditRole) override;
    void fijaEditables(const QStringList& campos);
    bool canFetchMore(const QModelIndex& padre) const override;
    void fetchMore(const QModelIndex& padre) override;

    // Garantiza que la fila (desde 0) esté dentro de las filas conocidas; false si no existe.
    bool asegura(int fila);
    const QSqlRecord& campos() const { return campos_; }
    int columna(const QString& campo) const; // -1 si no está
    QString campo(int columna) const;
    QVariant valor(int fila, int columna) const;
    QSqlRecord registro(int fila) const;
    int paginasEnMemoria() const { return int(paginas_.size()); }

    using Pagina = QVector<QVector<QVariant>>;
    // Filas de una consulta con las mismas columnas que la de la grilla.
    Pagina leeFilas(const QString& sql, const QVariantList& parametros) const;
    // Deja en memoria una página leída por otro camino (por ejemplo, por la clave del orden en
    // vez de por su número de fila). Una página de menos de kPagina filas es la última.
    void ponPagina(qint64 numero, Pagina filas);
    // Lee la página `numero` a partir de la anterior o la siguiente, si están en memoria (por el
    // valor del orden, en vez de saltar filas con OFFSET); nada si no puede.
    using LectorVecino = std::function<std::optional<Pagina>(qint64 numero, const Pagina* anterior, const Pagina* siguiente)>;
    void fijaLectorVecino(LectorVecino l) { lectorVecino_ = std::move(l); }

    void fijaTitulo(const QString& campo, const QString& texto);
    QString titulo(const QString& campo) const;
    void fijaMascara(const QString& campo, const QString& mascara);
    QString mascara(const QString& campo) const;
    // Texto de la celda tal como se muestra.
    QString texto(const QVariant& v, int columna) const;
    bool alineaDerecha(int columna) const;

private:
    Pagina leePagina(qint64 numero) const;
    const Pagina* pagina(qint64 numero) const;

    Almacen* almacen_ = nullptr;
    QString sql_;
    QVariantList parametros_;
    QSqlRecord campos_;
    int filas_ = 0;
    bool fin_ = true;
    mutable QHash<qint64, Pagina> paginas_;
    QHash<QString, QString> titulos_;  // por campo en minúsculas
    QHash<QString, QString> mascaras_; // por campo en minúsculas
    QStringList editables_;            // en minúsculas
    LectorVecino lectorVecino_;

Q_SIGNALS:
    void edicionPedida(int fila, const QString& campo, const QVariant& valor);
};

class BandaAgrupar;

class Grilla : public QWidget {
    Q_OBJECT
public:
    explicit Grilla(Almacen& a, QWidget* padre = nullptr);
    ~Grilla() override;

    // Liga la grilla a una consulta con parámetros ligados; conserva títulos, máscaras y
    // columnas ocultas y aplica la distribución cargada. Lanza ErrorAlmacen si la consulta falla.
    void fijaConsulta(const QString& sql, const QVariantList& parametros = {});
    const QString& sql() const { return sql_; }
    const QVariantList& parametros() const { return parametros_; }

    // Columna clave: con ella refresca() vuelve a la misma fila aunque cambie su posición.
    void fijaClave(const QString& campo) { clave_ = campo; }
    void fijaTitulo(const QString& campo, const QString& texto);
    void fijaMascara(const QString& campo, const QString& mascara); // números a la derecha
    void ocultaColumna(const QString& campo, bool oculta = true);
    bool columnaOculta(const QString& campo) const;
    void fijaTituloImpresion(const QString& t) { tituloImpresion_ = t; }
    QString tituloImpresion() const { return tituloImpresion_; }

    // Vuelve a leer la consulta conservando distribución, agrupación y fila actual.
    void refresca();

    // Distribución: orden y ancho de columnas y columna de agrupación. Un archivo que falta o
    // está dañado no es una falla: carga devuelve false y la grilla queda como estaba.
    bool guardaDistribucion(const QString& ruta) const;
    bool cargaDistribucion(const QString& ruta);
    QJsonObject distribucion() const;
    bool aplicaDistribucion(const QJsonObject& d);

    // Va a la primera fila cuyo valor en `campo` empieza con `texto` (sin distinguir
    // mayúsculas). Devuelve false si no hay ninguna. En vista agrupada busca dentro de los grupos.
    bool busca(const QString& campo, const QString& texto);

    // Columnas que se corrigen en la grilla (doble clic, F2 o empezar a escribir). `graba`
    // recibe la fila, el campo y el texto; un aviso o una falla que lance se muestra al usuario.
    // Después la grilla se refresca (una celda rechazada vuelve a su valor) y emite filaEditada.
    using GrabaCelda = std::function<void(const QSqlRecord& fila, const QString& campo, const QVariant& valor)>;
    void fijaEditables(const QStringList& campos, GrabaCelda graba);

    // Muestra u oculta la banda de agrupación (una grilla sin banda no se agrupa arrastrando).
    void permiteAgrupar(bool si);
    // Texto de la banda vacía; cada grilla tiene el suyo.
    void fijaTextoAgrupar(const QString& texto);
    void agrupaPor(const QString& campo);
    void quitaAgrupacion();
    QStringList agrupacion() const { return agrupar_; }
    bool agrupada() const { return !agrupar_.isEmpty(); }

    // Renglón "Registros: N de M" bajo la grilla. El total se cuenta de a tramos mientras el
    // programa no tiene otra cosa que hacer; si la consulta se ordena por una sola columna, de paso
    // quedan marcas de posición (un valor cada tantas filas y cuántas filas hay antes de él) con
    // las que la búsqueda cuenta sólo desde la marca anterior y no desde un extremo.
    void muestraNavegador(bool si);
    // Todas las filas de la consulta; nada mientras no se terminaron de contar (o sin navegador).
    std::optional<qint64> totalFilas() const;
    // Filas entre una marca y la siguiente y filas leídas en cada tramo.
    void fijaTramosMarcas(int cada, int tramo);

    // Registro de la fila de datos actual; nada si no hay fila o es una fila de grupo.
    std::optional<QSqlRecord> filaActual() const;
    std::optional<QVariant> claveActual() const;
    // Fila actual en la vista sin agrupar (desde 0), -1 si no hay.
    int filaActualNumero() const;
    bool irAFila(int fila);

    QStringList ordenColumnas() const; // campos en el orden en que se ven (incluye ocultos)
    int anchoColumna(const QString& campo) const;
    void fijaAnchoColumna(const QString& campo, int ancho);
    // Anchos en píxeles de algunas columnas para cuando la grilla recibe sus columnas por primera vez
    // (las demás van al ancho de su contenido); después quedan los que el usuario haya dado.
    void fijaAnchosIniciales(std::initializer_list<std::pair<const char*, int>> anchos);
    QString tituloColumna(const QString& campo) const;

    ModeloGrilla& modelo() { return *modelo_; }
    const ModeloGrilla& modelo() const { return *modelo_; }
    QTableView* tabla() const { return tabla_; }
    QTreeWidget* arbol() const { return arbol_; }
    Almacen& almacen() const { return almacen_; }

    void exportaCSV(const QString& ruta);
    void exportaXLSX(const QString& ruta);

Q_SIGNALS:
    void filaCambiada();
    void filaActivada();
    void filaEditada();

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    void armaGrupos();
    void cargaGrupo(QTreeWidgetItem* grupo);
    void aplicaOcultas();
    void anchosIniciales();
    void menuContextual(const QPoint& global);
    void menuEncabezado(const QPoint& local);
    void pideExportar(bool excel);
    void actualizaBanda();
    int posicionDe(const QString& campo, const QVariant& valor, bool prefijo) const;
    std::optional<int> posicionPorOrden(const QString& campo, const QVariant& valor, bool prefijo) const;
    struct PorOrden; // las consultas de la búsqueda por la columna del orden
    std::optional<QVariant> valorEntero(const PorOrden& o, const QVariant& valor, bool prefijo) const;
    std::optional<int> posicionDeValor(const PorOrden& o, const QVariant& v) const;
    qint64 filasAntes(const PorOrden& o, const QVariant& v) const;
    qint64 filasAntesDesdeLosExtremos(const PorOrden& o, const QVariant& v, bool cercaDelFinal) const;
    void leePaginaDe(const PorOrden& o, const QVariant& v, qint64 antes, qint64 nulos, bool nulosAntes) const;
    std::optional<ModeloGrilla::Pagina> leeVecina(qint64 numero, const ModeloGrilla::Pagina* anterior,
                                                  const ModeloGrilla::Pagina* siguiente) const;
    // Búsqueda por prefijo de texto por los índices (grilla_prefijo.cpp).
    std::optional<int> posicionPorPrefijo(const QString& campo, const QString& texto) const;
    std::optional<QVariant> ordenDeLaCoincidencia(const PorOrden& o, const QString& donde, const QVariantList& valores,
                                                  const QString& empieza, const QVariant& buscado) const;
    bool ordenaPorBytes(const QString& campo) const;
    void olvidaOrden();
    // Marcas de posición y total (grilla_marcas.cpp).
    void empiezaMarcas();
    void avanzaMarcas();
    void tramoDeMarcas(const PorOrden& o);
    std::optional<qint64> filasAntesPorMarcas(const PorOrden& o, const QVariant& v) const;
    void actualizaNavegador();
    QString campoSeguro(const QString& campo) const;

    Almacen& almacen_;
    QString sql_;
    QVariantList parametros_;
    QString clave_;
    QString tituloImpresion_;
    GrabaCelda grabaCelda_;
    QStringList ocultas_; // en minúsculas
    QStringList agrupar_;
    QJsonObject pendiente_; // distribución cargada antes de tener columnas
    QHash<QString, int> anchosPedidos_; // campo en minúsculas -> ancho inicial

    // Consulta ordenada por una sola columna ("... ORDER BY col [ASC|DESC]"): la búsqueda sobre
    // esa columna, si es entera, cuenta filas por el índice en vez de numerarlas.
    struct Orden {
        QString base;    // la consulta sin su ORDER BY
        QString columna; // nombre de la columna en el resultado
        bool descendente = false;
    };
    static std::optional<Orden> ordenDe(const QString& sql);
    std::optional<Orden> orden_;
    // Filas con valor en la columna del orden y el último de esos valores, leídos juntos la primera
    // vez que una búsqueda cerca del final los necesita. Valen hasta la próxima lectura de la
    // consulta (como las páginas de la grilla) o hasta que se busca un valor posterior al último.
    struct Extremo {
        qint64 total = 0;
        QVariant ultimo;
    };
    mutable std::optional<Extremo> extremo_;
    // La última fila hallada por el orden: su valor y las filas con valor antes de ella. Vale lo
    // mismo que el total: hasta la próxima lectura de la consulta.
    struct Referencia {
        QVariant valor;
        qint64 antes = 0;
    };
    mutable std::optional<Referencia> referencia_;
    // Marcas de posición sobre la columna del orden y el total, contados de a tramos.
    struct Marcas {
        bool porOrden = false; // si no, sólo se cuenta el total, de una vez
        QString c;
        bool entero = true;    // la columna es entera; si no, de texto ordenado por bytes
        std::vector<std::pair<QVariant, qint64>> puntos; // valor y filas con valor antes de él
        QVariant desde;         // dónde empieza el próximo tramo (nulo: en el primer valor)
        bool estricto = false;  // el próximo tramo empieza después de `desde`, no en él
        qint64 antes = 0;       // filas con valor antes del próximo tramo
        std::optional<qint64> total;
    };
    std::optional<Marcas> marcas_;
    int cadaMarca_ = 1024;
    int tramoMarcas_ = 4096;
    QTimer* tramos_ = nullptr;
    QLabel* navegador_ = nullptr;
    // Por columna: si el motor la compara por los bytes de su texto (sabido al primer pedido).
    mutable QHash<QString, bool> porBytes_;

    ModeloGrilla* modelo_;
    BandaAgrupar* banda_;
    QStackedWidget* pila_;
    QTableView* tabla_;
    QTreeWidget* arbol_;
    QPoint inicioArrastre_;
    int seccionArrastre_ = -1;
};

} // namespace orv
