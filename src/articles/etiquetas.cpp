#include "articles/etiquetas.h"

#include "store/entrada.h"

#include <QPainter>
#include <QSqlQuery>
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <zint.h>

namespace orv {

namespace {

// Una corrida de etiquetas vive en memoria entera (las listas de la pantalla): un tope generoso
// evita que una cantidad mal cargada en una compra cuelgue el programa.
constexpr qint64 kEtiquetasMaximas = 20000;

// El ancho que un carácter Code 39 ocupa en una fuente de barras, en em, y sus 13 módulos (barras
// anchas del doble de las angostas, más el espacio entre caracteres). El EAN-13 usa el mismo módulo.
constexpr double kAnchoCaracterEm = 0.6;
constexpr double kModulosPorCaracter = 13.0;
// Zona en blanco a cada lado del símbolo, en módulos: sin ella un lector no encuentra el comienzo.
constexpr double kZonaQuieta = 10.0;
constexpr double kMmPorPunto = 25.4 / 72.0;

const QString kCampoNombre = QStringLiteral("Guardar configuración");
const QString kCampoComienzo = QStringLiteral("Comenzar a imprimir en la etiqueta nº");

struct BorraSimbolo {
    void operator()(zint_symbol* s) const { ZBarcode_Delete(s); }
};

HojaEtiquetas hojaDeFila(const QSqlQuery& q) {
    HojaEtiquetas h;
    h.nombre = q.value(0).toString();
    h.porAncho = int(std::lround(q.value(1).toDouble()));
    h.porLargo = int(std::lround(q.value(2).toDouble()));
    h.margenIzq = q.value(3).toDouble();
    h.margenSup = q.value(4).toDouble();
    h.distColum = q.value(5).toDouble();
    h.distFilas = q.value(6).toDouble();
    h.ancho = q.value(7).toDouble();
    h.largo = q.value(8).toDouble();
    h.tamanoFuente = int(std::lround(q.value(9).toDouble()));
    return h;
}

// Codifica con zint; el texto del error si no se puede.
std::optional<Simbolo> codifica(const QString& codigo, bool ean13, QString* error) {
    std::unique_ptr<zint_symbol, BorraSimbolo> s(ZBarcode_Create());
    s->symbology = ean13 ? BARCODE_EANX : BARCODE_CODE39;
    s->show_hrt = 0;
    s->option_2 = 0; // Code 39 sin dígito verificador
    const QByteArray datos = codigo.toUtf8();
    const int r = ZBarcode_Encode(s.get(), reinterpret_cast<const unsigned char*>(datos.constData()), int(datos.size()));
    if (r >= ZINT_ERROR || ZBarcode_Buffer_Vector(s.get(), 0) >= ZINT_ERROR || !s->vector || s->width <= 0) {
        if (error) *error = QString::fromUtf8(s->errtxt);
        return std::nullopt;
    }
    // Las barras vienen en las unidades del dibujo de zint; el primer y el último módulo de estos
    // símbolos son barras, así que su extensión es el ancho del símbolo en módulos.
    double x0 = std::numeric_limits<double>::max(), x1 = 0, y0 = x0, y1 = 0;
    for (const zint_vector_rect* b = s->vector->rectangles; b; b = b->next) {
        x0 = std::min(x0, double(b->x));
        x1 = std::max(x1, double(b->x + b->width));
        y0 = std::min(y0, double(b->y));
        y1 = std::max(y1, double(b->y + b->height));
    }
    Simbolo sim;
    sim.modulos = s->width;
    sim.ean13 = ean13;
    const double porModulo = (x1 - x0) / s->width;
    for (const zint_vector_rect* b = s->vector->rectangles; b; b = b->next)
        sim.barras << QRectF((b->x - x0) / porModulo, (b->y - y0) / (y1 - y0), b->width / porModulo, b->height / (y1 - y0));
    return sim;
}

} // namespace

HojaEtiquetas LeeCamposHoja(const CamposHoja& c, bool conNombre) {
    HojaEtiquetas h;
    if (conNombre) {
        if (c.nombre.trimmed().isEmpty())
            throw AvisoAtencion(QStringLiteral("Escriba el nombre con que se guarda la configuración."));
        ExigeTexto(c.nombre, kLargoNombreHoja, kCampoNombre);
    }
    h.nombre = c.nombre;
    h.porAncho = int(ExigeEntero(c.porAncho, QStringLiteral("Nº de etiquetas a lo ancho"), 1, 100));
    h.porLargo = int(ExigeEntero(c.porLargo, QStringLiteral("Nº de etiquetas a lo largo"), 1, 100));
    h.margenIzq = ExigeNumero(c.margenIzq, QStringLiteral("Margen Izquierdo"), 0, 2000);
    h.margenSup = ExigeNumero(c.margenSup, QStringLiteral("Margen Superior"), 0, 2000);
    h.distColum = ExigeNumero(c.distColum, QStringLiteral("Entre columnas"), 0, 2000);
    h.distFilas = ExigeNumero(c.distFilas, QStringLiteral("Entre filas"), 0, 2000);
    h.ancho = ExigeNumero(c.ancho, QStringLiteral("Ancho"), 0, 2000);
    h.largo = ExigeNumero(c.largo, QStringLiteral("Largo"), 0, 2000);
    h.tamanoFuente = int(ExigeEntero(c.tamanoFuente, QStringLiteral("Tamaño Fuente Texto"), 1, 400));
    if (h.ancho <= 0 || h.largo <= 0)
        throw AvisoAtencion(QStringLiteral("El ancho y el largo de la etiqueta deben ser mayores que cero."));
    return h;
}

QStringList NombresHojasEtiquetas(const Almacen& a) {
    QStringList r;
    QSqlQuery q = a.consulta(QStringLiteral("SELECT DISTINCT Nombre FROM Etiquetas WHERE Nombre IS NOT NULL ORDER BY Nombre"));
    while (q.next()) r << q.value(0).toString();
    return r;
}

std::optional<HojaEtiquetas> LeeHojaEtiquetas(const Almacen& a, const QString& nombre) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Nombre, No_Ancho, No_Largo, Margen_Izq, Margen_Sup, Dist_Colum, Dist_Filas, "
                                            "Etiq_Ancho, Etiq_Largo, TamanoFuente FROM Etiquetas WHERE Nombre = ? "
                                            "ORDER BY idEtiqueta"),
                             {nombre});
    if (!q.next()) return std::nullopt;
    return hojaDeFila(q);
}

void GuardaHojaEtiquetas(Almacen& a, const HojaEtiquetas& h) {
    // 1. Los valores, en el orden de las columnas.
    const QVariantList valores = {h.porAncho, h.porLargo, h.margenIzq, h.margenSup, h.distColum,
                                  h.distFilas, h.ancho,    h.largo,     h.tamanoFuente};
    Transaccion t(a);
    // 2. La definición con ese nombre se reemplaza; si no hay, se agrega.
    const int cambiadas = a.ejecuta(QStringLiteral("UPDATE Etiquetas SET No_Ancho = ?, No_Largo = ?, Margen_Izq = ?, Margen_Sup = ?, "
                                                   "Dist_Colum = ?, Dist_Filas = ?, Etiq_Ancho = ?, Etiq_Largo = ?, "
                                                   "TamanoFuente = ? WHERE Nombre = ?"),
                                    valores + QVariantList{h.nombre});
    if (cambiadas == 0)
        a.ejecuta(QStringLiteral("INSERT INTO Etiquetas (No_Ancho, No_Largo, Margen_Izq, Margen_Sup, Dist_Colum, Dist_Filas, "
                                 "Etiq_Ancho, Etiq_Largo, TamanoFuente, Nombre) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                  valores + QVariantList{h.nombre});
    t.confirmar();
}

QStringList EtiquetasDelDia(const Almacen& a, const QDate& dia) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Codigo, Ingreso FROM ConsultaMovStock WHERE Fecha = ? AND idTipoMovimiento = 1 "
                                            "AND Ingreso > 0 AND ImprimeCodigoBarra <> 0 ORDER BY idMovimientoStock"),
                             {dia});
    QStringList r;
    while (q.next()) {
        // Una entrada por unidad entera: se cuenta desde 1 mientras no pase la cantidad.
        const double unidades = std::floor(q.value(1).toDouble());
        if (r.size() + unidades > kEtiquetasMaximas)
            throw AvisoAtencion(QStringLiteral("Las compras del %1 suman más de %2 etiquetas: revise las cantidades ingresadas.")
                                    .arg(dia.toString(QStringLiteral("dd/MM/yyyy")))
                                    .arg(kEtiquetasMaximas));
        const QString codigo = q.value(0).toString();
        for (int i = 0; i < int(unidades); ++i) r << codigo;
    }
    return r;
}

int LeeComienzo(const QString& texto, const HojaEtiquetas& hoja) {
    if (texto.trimmed().isEmpty()) return 1;
    return std::max(1, int(ExigeEntero(texto.trimmed(), kCampoComienzo, 0, hoja.porHoja())));
}

QList<LugarEtiqueta> ReparteEtiquetas(const HojaEtiquetas& h, const QStringList& codigos, int comienzo) {
    QList<LugarEtiqueta> r;
    const int porHoja = std::max(1, h.porHoja());
    for (int i = 0; i < codigos.size(); ++i) {
        const int k = comienzo - 1 + i;
        const int enHoja = k % porHoja;
        const int c = enHoja % h.porAncho;
        const int fila = enHoja / h.porAncho;
        r << LugarEtiqueta{k / porHoja,
                           QPointF(h.margenIzq + c * (h.distColum + h.ancho), h.margenSup + fila * (h.distFilas + h.largo)),
                           codigos[i]};
    }
    return r;
}

int PaginasEtiquetas(const QList<LugarEtiqueta>& lugares) {
    return lugares.isEmpty() ? 1 : lugares.last().pagina + 1;
}

bool EsEan13(const QString& codigo) {
    if (codigo.size() != 13) return false;
    int suma = 0;
    for (int i = 0; i < 13; ++i) {
        if (codigo[i] < u'0' || codigo[i] > u'9') return false;
        if (i < 12) suma += (codigo[i].unicode() - u'0') * (i % 2 ? 3 : 1);
    }
    return (10 - suma % 10) % 10 == codigo[12].unicode() - u'0';
}

Simbolo CodificaEtiqueta(const QString& codigo, bool ean13) {
    QString error;
    if (auto s = codifica(codigo, ean13 && EsEan13(codigo), &error)) return *s;
    throw AvisoAtencion(QStringLiteral("El código \"%1\" no se puede imprimir como código de barra (%2).").arg(codigo, error));
}

QStringList CodigosSinSimbolo(const QStringList& codigos, bool ean13) {
    QStringList r;
    for (const QString& c : codigos)
        if (!r.contains(c) && !codifica(c, ean13 && EsEan13(c), nullptr)) r << c;
    return r;
}

QRectF RectanguloSimbolo(const HojaEtiquetas& h, const Simbolo& s, QPointF origen) {
    const double em = h.tamanoFuente * kMmPorPunto;
    double modulo = em * kAnchoCaracterEm / kModulosPorCaracter;
    const double cabe = h.ancho / (s.modulos + 2 * kZonaQuieta);
    modulo = std::min(modulo, cabe);
    return QRectF(origen.x() + kZonaQuieta * modulo, origen.y(), s.modulos * modulo, std::min(em, h.largo));
}

void DibujaPaginaEtiquetas(QPainter& p, const HojaEtiquetas& h, const QList<LugarEtiqueta>& lugares, int pagina, bool ean13) {
    p.save();
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::black);
    for (const LugarEtiqueta& l : lugares) {
        if (l.pagina != pagina) continue;
        const Simbolo s = CodificaEtiqueta(l.codigo, ean13);
        const QRectF r = RectanguloSimbolo(h, s, l.origen);
        const double modulo = r.width() / s.modulos;
        for (const QRectF& b : s.barras)
            p.drawRect(QRectF(r.x() + b.x() * modulo, r.y() + b.y() * r.height(), b.width() * modulo, b.height() * r.height()));
    }
    p.restore();
}

TrabajoEtiquetas PreparaImpresionEtiquetas(const Almacen& a, const QString& formato, const QStringList& codigos,
                                           const QString& comienzo, bool ean13) {
    // 1. La definición de la hoja.
    const std::optional<HojaEtiquetas> hoja = LeeHojaEtiquetas(a, formato);
    if (!hoja) throw Aviso(kSinHojaEtiquetas);
    // 2. Algo para imprimir, desde una posición de la hoja.
    if (codigos.isEmpty())
        throw AvisoAtencion(QStringLiteral("No hay ítems para imprimir: pase los que quiera a \"Items a Imprimir código\"."));
    const int desde = LeeComienzo(comienzo, *hoja);
    // 3. Cada código se puede dibujar; si no, ninguno se imprime y se dice cuáles.
    const QStringList malos = CodigosSinSimbolo(codigos, ean13);
    if (!malos.isEmpty())
        throw AvisoAtencion(QStringLiteral("Estos códigos tienen signos que un código de barra no admite: %1. Páselos a "
                                           "\"Items disponibles\" para imprimir los demás.")
                                .arg(malos.join(QStringLiteral(", "))));
    // 4. El lugar de cada etiqueta.
    return {*hoja, ReparteEtiquetas(*hoja, codigos, desde), ean13};
}

TrabajoEtiquetas TrabajoDePrueba(const HojaEtiquetas& hoja) {
    QStringList numeros;
    for (int i = 1; i <= hoja.porHoja(); ++i) numeros << QString::number(i);
    return {hoja, ReparteEtiquetas(hoja, numeros, 1), false};
}

} // namespace orv
