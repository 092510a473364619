#include "reports/tablas.h"

#include <QFontMetricsF>
#include <QHash>
#include <QPaintDevice>
#include <QRegularExpression>

namespace orv {

namespace {

// Entidades con nombre que aparecen en textos en castellano, además de las de marcado.
QChar entidadConNombre(const QString& e) {
    static const QHash<QString, char16_t> nombres = {
        {QStringLiteral("amp"), u'&'},      {QStringLiteral("lt"), u'<'},        {QStringLiteral("gt"), u'>'},
        {QStringLiteral("quot"), u'"'},     {QStringLiteral("apos"), u'\''},     {QStringLiteral("nbsp"), 0x00A0},
        {QStringLiteral("mdash"), 0x2014},  {QStringLiteral("ndash"), 0x2013},   {QStringLiteral("hellip"), 0x2026},
        {QStringLiteral("laquo"), 0x00AB},  {QStringLiteral("raquo"), 0x00BB},   {QStringLiteral("iexcl"), 0x00A1},
        {QStringLiteral("iquest"), 0x00BF}, {QStringLiteral("deg"), 0x00B0},     {QStringLiteral("ordm"), 0x00BA},
        {QStringLiteral("ordf"), 0x00AA},   {QStringLiteral("middot"), 0x00B7},  {QStringLiteral("times"), 0x00D7},
        {QStringLiteral("euro"), 0x20AC},   {QStringLiteral("aacute"), 0x00E1},  {QStringLiteral("eacute"), 0x00E9},
        {QStringLiteral("iacute"), 0x00ED}, {QStringLiteral("oacute"), 0x00F3},  {QStringLiteral("uacute"), 0x00FA},
        {QStringLiteral("Aacute"), 0x00C1}, {QStringLiteral("Eacute"), 0x00C9},  {QStringLiteral("Iacute"), 0x00CD},
        {QStringLiteral("Oacute"), 0x00D3}, {QStringLiteral("Uacute"), 0x00DA},  {QStringLiteral("ntilde"), 0x00F1},
        {QStringLiteral("Ntilde"), 0x00D1}, {QStringLiteral("uuml"), 0x00FC},    {QStringLiteral("Uuml"), 0x00DC},
    };
    const auto it = nombres.constFind(e);
    return it == nombres.cend() ? QChar() : QChar(it.value());
}

QString entidades(const QString& s) {
    if (!s.contains(u'&')) return s;
    QString r;
    r.reserve(s.size());
    for (qsizetype i = 0; i < s.size(); ++i) {
        if (s[i] != u'&') {
            r += s[i];
            continue;
        }
        const qsizetype fin = s.indexOf(u';', i);
        if (fin < 0 || fin - i > 10) {
            r += s[i];
            continue;
        }
        const QString e = s.mid(i + 1, fin - i - 1);
        QChar c = entidadConNombre(e);
        if (c.isNull() && e.startsWith(u'#')) {
            bool ok = false;
            const uint n = e.startsWith(QLatin1String("#x")) || e.startsWith(QLatin1String("#X")) ? e.mid(2).toUInt(&ok, 16)
                                                                                                 : e.mid(1).toUInt(&ok, 10);
            if (ok && n > 0 && n < 0x10000) c = QChar(char16_t(n));
        }
        if (c.isNull()) {
            r += s[i];
            continue;
        }
        r += c;
        i = fin;
    }
    return r;
}

// Valor de un atributo (style, align, colspan) de una marca; vacío si no está.
QString atributo(const QString& atributos, const char* nombre) {
    if (atributos.isEmpty()) return {};
    static const auto patron = [](const char* n) {
        return QRegularExpression(QStringLiteral(R"re((?:^|\s)%1\s*=\s*(?:"([^"]*)"|'([^']*)'|([^\s>]+)))re").arg(QLatin1String(n)),
                                  QRegularExpression::CaseInsensitiveOption);
    };
    static const QRegularExpression estilo = patron("style"), alinea = patron("align"), columnas = patron("colspan");
    const QLatin1String n(nombre);
    const QRegularExpression& re = n == QLatin1String("style") ? estilo : n == QLatin1String("align") ? alinea : columnas;
    const auto m = re.match(atributos);
    if (!m.hasMatch()) return {};
    for (int i = 1; i <= 3; ++i)
        if (m.capturedStart(i) >= 0) return m.captured(i);
    return {};
}

// Valor de una propiedad de un style="...".
QString propiedad(const QString& estilo, const char* nombre) {
    for (const QString& parte : estilo.split(u';')) {
        const qsizetype dos = parte.indexOf(u':');
        if (dos > 0 && parte.left(dos).trimmed().compare(QLatin1String(nombre), Qt::CaseInsensitive) == 0)
            return parte.mid(dos + 1).trimmed();
    }
    return {};
}

Qt::Alignment alineacion(const QString& a) {
    if (a.compare(QLatin1String("right"), Qt::CaseInsensitive) == 0) return Qt::AlignRight;
    if (a.compare(QLatin1String("center"), Qt::CaseInsensitive) == 0 || a.compare(QLatin1String("middle"), Qt::CaseInsensitive) == 0)
        return Qt::AlignHCenter;
    return Qt::AlignLeft;
}

void agregaTexto(CeldaSimple& c, const QString& t) {
    for (QChar ch : t) {
        if (ch.isSpace() && ch != QChar(0x00A0)) {
            if (!c.texto.isEmpty() && !c.texto.endsWith(u' ') && !c.texto.endsWith(u'\n')) c.texto += u' ';
        } else {
            c.texto += ch;
        }
    }
}

void cierraTexto(CeldaSimple& c) {
    c.texto = c.texto.trimmed();
    c.texto.replace(QStringLiteral(" \n"), QStringLiteral("\n"));
}

} // namespace

QVector<qreal> repartoDeAnchos(const QVector<qreal>& natural, const QVector<qreal>& minimo, qreal ancho) {
    qreal total = 0, totalMinimo = 0;
    for (qreal w : natural) total += w;
    for (qreal w : minimo) totalMinimo += w;
    QVector<qreal> anchos = natural;
    if (total <= 0) return anchos;
    if (total <= ancho) {
        // Sobra lugar: se reparte en proporción al ancho de cada una.
        for (qreal& w : anchos) w += (ancho - total) * (w / total);
    } else if (totalMinimo >= ancho) {
        // Ni las palabras enteras caben: todas se achican por igual desde su mínimo.
        for (int c = 0; c < anchos.size(); ++c) anchos[c] = minimo[c] * ancho / totalMinimo;
    } else {
        // Falta lugar: cada columna conserva su palabra más larga y lo demás se reparte en
        // proporción a lo que cada una puede ceder partiendo sus renglones.
        const qreal cedible = total - totalMinimo;
        for (int c = 0; c < anchos.size(); ++c)
            anchos[c] = minimo[c] + (ancho - totalMinimo) * (natural[c] - minimo[c]) / cedible;
    }
    return anchos;
}

namespace {

// Lee el cuerpo simple marca por marca; cada marca devuelve false si sale de lo que se admite.
class AnalizadorSimple {
public:
    bool marca(const QString& nombre, const QString& atributos, bool cierra) {
        if (nombre == QLatin1String("table")) return tabla(cierra);
        if (nombre == QLatin1String("thead") || nombre == QLatin1String("tbody")) {
            if (dentro_ != Dentro::Tabla) return false;
            if (nombre == QLatin1String("thead")) enThead_ = !cierra;
            return true;
        }
        if (nombre == QLatin1String("tr")) return fila(atributos, cierra);
        if (nombre == QLatin1String("td") || nombre == QLatin1String("th")) return celda(nombre, atributos, cierra);
        if (nombre == QLatin1String("p")) return parrafo(atributos, cierra);
        if (nombre == QLatin1String("b") || nombre == QLatin1String("strong") || nombre == QLatin1String("i") ||
            nombre == QLatin1String("em")) {
            if (!celda_ || !atributos.isEmpty()) return false;
            if (!cierra) (nombre == QLatin1String("i") || nombre == QLatin1String("em") ? celda_->cursiva : celda_->negrita) = true;
            return true;
        }
        if (nombre == QLatin1String("br")) {
            if (!celda_) return false;
            celda_->texto += u'\n';
            return true;
        }
        return false;
    }

    // Texto entre marcas: sólo dentro de una celda o un párrafo.
    bool texto(const QString& t) {
        if (t.trimmed().isEmpty() && !(celda_ && !t.isEmpty())) return true;
        if (!celda_) return false;
        agregaTexto(*celda_, entidades(t));
        return true;
    }

    std::optional<QVector<BloqueSimple>> resultado() const {
        if (dentro_ != Dentro::Nada) return std::nullopt;
        return bloques_;
    }

private:
    enum class Dentro { Nada, Tabla, Fila, Celda, Parrafo };

    bool tabla(bool cierra) {
        if (cierra) return pasa(Dentro::Tabla, Dentro::Nada);
        if (dentro_ != Dentro::Nada) return false; // tablas anidadas: al maquetado general
        BloqueSimple b;
        b.esTabla = true;
        bloques_ << b;
        dentro_ = Dentro::Tabla;
        return true;
    }

    bool fila(const QString& atributos, bool cierra) {
        if (cierra) return pasa(Dentro::Fila, Dentro::Tabla);
        if (dentro_ != Dentro::Tabla) return false;
        FilaSimple f;
        const QString estilo = atributo(atributos, "style");
        const QString fondo = propiedad(estilo, "background-color");
        if (!fondo.isEmpty()) f.fondo = QColor::fromString(fondo);
        const QString tinta = propiedad(estilo, "color");
        if (!tinta.isEmpty()) f.tinta = QColor::fromString(tinta);
        f.negrita = propiedad(estilo, "font-weight").compare(QLatin1String("bold"), Qt::CaseInsensitive) == 0;
        f.lineaArriba = !propiedad(estilo, "border-top").isEmpty();
        f.encabezado = enThead_;
        bloques_.last().filas << f;
        dentro_ = Dentro::Fila;
        return true;
    }

    bool celda(const QString& nombre, const QString& atributos, bool cierra) {
        if (cierra) return cierraCelda(Dentro::Celda, Dentro::Fila);
        if (dentro_ != Dentro::Fila || !atributo(atributos, "style").isEmpty()) return false;
        CeldaSimple c;
        const QString al = atributo(atributos, "align");
        c.alineacion = al.isEmpty() && nombre == QLatin1String("th") ? Qt::AlignHCenter : alineacion(al);
        c.columnas = qMax(1, atributo(atributos, "colspan").toInt());
        c.negrita = nombre == QLatin1String("th");
        bloques_.last().filas.last().celdas << c;
        celda_ = &bloques_.last().filas.last().celdas.last();
        dentro_ = Dentro::Celda;
        return true;
    }

    bool parrafo(const QString& atributos, bool cierra) {
        if (cierra) return cierraCelda(Dentro::Parrafo, Dentro::Nada);
        if (dentro_ != Dentro::Nada) return false;
        BloqueSimple b;
        b.parrafo.alineacion = alineacion(atributo(atributos, "align"));
        bloques_ << b;
        celda_ = &bloques_.last().parrafo;
        dentro_ = Dentro::Parrafo;
        return true;
    }

    bool pasa(Dentro desde, Dentro hacia) {
        if (dentro_ != desde) return false;
        dentro_ = hacia;
        return true;
    }

    bool cierraCelda(Dentro desde, Dentro hacia) {
        if (!pasa(desde, hacia)) return false;
        cierraTexto(*celda_);
        celda_ = nullptr;
        return true;
    }

    QVector<BloqueSimple> bloques_;
    Dentro dentro_ = Dentro::Nada;
    bool enThead_ = false;
    CeldaSimple* celda_ = nullptr;
};

} // namespace

std::optional<QVector<BloqueSimple>> AnalizaCuerpoSimple(const QString& html) {
    AnalizadorSimple analizador;
    qsizetype i = 0;
    const qsizetype n = html.size();
    while (i < n) {
        const qsizetype menor = html.indexOf(u'<', i);
        if (!analizador.texto(html.mid(i, (menor < 0 ? n : menor) - i))) return std::nullopt;
        if (menor < 0) break;
        if (html.mid(menor, 4) == QLatin1String("<!--")) {
            const qsizetype fin = html.indexOf(QLatin1String("-->"), menor);
            if (fin < 0) return std::nullopt;
            i = fin + 3;
            continue;
        }
        const qsizetype mayor = html.indexOf(u'>', menor);
        if (mayor < 0) return std::nullopt;
        QString marca = html.mid(menor + 1, mayor - menor - 1).trimmed();
        i = mayor + 1;
        const bool cierra = marca.startsWith(u'/');
        if (cierra) marca = marca.mid(1).trimmed();
        if (marca.endsWith(u'/')) marca.chop(1);
        static const QRegularExpression blanco(QStringLiteral("\\s"));
        const qsizetype espacio = marca.indexOf(blanco);
        const QString nombre = (espacio < 0 ? marca : marca.left(espacio)).toLower();
        if (!analizador.marca(nombre, espacio < 0 ? QString() : marca.mid(espacio + 1), cierra)) return std::nullopt;
    }
    return analizador.resultado();
}

PaginasSimples::PaginasSimples(const QVector<BloqueSimple>& bloques, const QFont& base, QPaintDevice* dispositivo,
                               qreal ancho, qreal alto)
    : bloques_(bloques), base_(base), negrita_(base), cursiva_(base), dispositivo_(dispositivo), ancho_(ancho) {
    negrita_.setBold(true);
    cursiva_.setItalic(true);
    const qreal pxDispositivo = dispositivo->logicalDpiY() / 96.0;
    relleno_ = 3 * pxDispositivo;
    const QFontMetricsF fm(base_, dispositivo_);
    const QFontMetricsF fmN(negrita_, dispositivo_);
    const qreal separacion = fm.height() * 0.5;

    anchos_.resize(bloques.size());
    encabezados_.resize(bloques.size());
    for (int b = 0; b < bloques.size(); ++b)
        if (bloques[b].esTabla) mideTabla(b);

    // Renglones en páginas; el encabezado de una tabla se repite arriba de cada página nueva.
    int pagina = 0;
    qreal y = 0;
    const auto nuevaPagina = [&]() {
        ++pagina;
        y = 0;
    };
    for (int b = 0; b < bloques.size(); ++b) {
        if (b > 0 && y > 0) y += separacion;
        if (!bloques[b].esTabla) {
            const CeldaSimple& c = bloques[b].parrafo;
            const QFontMetricsF& m = c.negrita ? fmN : fm;
            const qreal h = c.texto.isEmpty()
                                ? m.height()
                                : m.boundingRect(QRectF(0, 0, ancho_, 1e9), Qt::TextWordWrap | int(c.alineacion), c.texto).height();
            if (y > 0 && y + h > alto) nuevaPagina();
            renglones_ << Renglon{b, -1, pagina, y, h};
            y += h;
            continue;
        }
        const QVector<FilaSimple>& filas = bloques[b].filas;
        for (int r = 0; r < filas.size(); ++r) {
            const qreal h = altoFila(filas[r], anchos_[b]);
            qreal junto = altoJunto(b, r, h);
            if (junto > alto) junto = h; // no cabe en ninguna página: se parte como venga
            if (y > 0 && y + junto > alto) {
                nuevaPagina();
                if (!filas[r].encabezado)
                    for (int e : encabezados_[b]) {
                        const qreal he = altoFila(filas[e], anchos_[b]);
                        renglones_ << Renglon{b, e, pagina, y, he};
                        y += he;
                    }
            }
            renglones_ << Renglon{b, r, pagina, y, h};
            y += h;
        }
    }
    paginas_ = pagina + 1;
}

// Anchos de las columnas de la tabla b: el natural de cada una (su línea más larga) y el mínimo
// (su palabra más larga, que no se puede partir: un número de comprobante, un importe), repartidos
// en el ancho de la hoja. Anota también las filas de su encabezado.
void PaginasSimples::mideTabla(int b) {
    const QFontMetricsF fm(base_, dispositivo_);
    const QFontMetricsF fmN(negrita_, dispositivo_);
    static const QRegularExpression blancos(QStringLiteral("\\s+"));
    int columnas = 0;
    for (const FilaSimple& f : bloques_[b].filas) {
        int c = 0;
        for (const CeldaSimple& x : f.celdas) c += x.columnas;
        columnas = qMax(columnas, c);
    }
    QVector<qreal> natural(columnas, 2 * relleno_);
    QVector<qreal> minimo(columnas, 2 * relleno_);
    for (int r = 0; r < bloques_[b].filas.size(); ++r) {
        const FilaSimple& f = bloques_[b].filas[r];
        if (f.encabezado) encabezados_[b] << r;
        int c = 0;
        for (const CeldaSimple& x : f.celdas) {
            if (x.columnas == 1 && c < columnas) {
                const QFontMetricsF& m = (x.negrita || f.negrita) ? fmN : fm;
                qreal w = 0, palabra = 0;
                for (const QString& linea : x.texto.split(u'\n')) {
                    const qreal wl = m.horizontalAdvance(linea);
                    w = qMax(w, wl);
                    // Las palabras se miden sólo si la línea entera pasa el mínimo que ya tiene la columna.
                    if (wl + 3 * relleno_ + 1 <= minimo[c]) continue;
                    if (!linea.contains(u' ')) palabra = qMax(palabra, wl);
                    else
                        for (const QString& p : linea.split(blancos, Qt::SkipEmptyParts))
                            palabra = qMax(palabra, m.horizontalAdvance(p));
                }
                // Con un relleno más que el de la celda: dos importes vecinos no quedan pegados.
                natural[c] = qMax(natural[c], w + 3 * relleno_ + 1);
                minimo[c] = qMax(minimo[c], palabra + 3 * relleno_ + 1);
            }
            c += x.columnas;
        }
    }
    anchos_[b] = repartoDeAnchos(natural, minimo, ancho_);
}

// Alto de la fila r de la tabla b (`alto`) junto con las que tienen que ir con ella en la misma página: el
// título de un grupo no queda solo al pie (va con su primera fila), y los totales que cierran un
// grupo (filas en negrita con varias celdas) no empiezan solos una página (van con su última fila).
qreal PaginasSimples::altoJunto(int b, int r, qreal alto) const {
    const QVector<FilaSimple>& filas = bloques_[b].filas;
    const auto esCierre = [&](int k) { return !filas[k].encabezado && filas[k].negrita && filas[k].celdas.size() > 1; };
    const FilaSimple& f = filas[r];
    const bool titulo = !f.encabezado && f.celdas.size() == 1 && f.celdas[0].columnas > 1 && r + 1 < filas.size();
    qreal junto = alto;
    int k = r + 1;
    if (titulo) junto += altoFila(filas[k++], anchos_[b]);
    if (!esCierre(r))
        for (; k < filas.size() && esCierre(k); ++k) junto += altoFila(filas[k], anchos_[b]);
    return junto;
}

qreal PaginasSimples::altoFila(const FilaSimple& f, const QVector<qreal>& anchos) const {
    const QFontMetricsF fm(base_, dispositivo_);
    const QFontMetricsF fmN(negrita_, dispositivo_);
    qreal alto = fm.height();
    int c = 0;
    for (const CeldaSimple& x : f.celdas) {
        qreal w = 0;
        for (int k = c; k < c + x.columnas && k < anchos.size(); ++k) w += anchos[k];
        c += x.columnas;
        const QFontMetricsF& m = (x.negrita || f.negrita) ? fmN : fm;
        const qreal util = w - 2 * relleno_;
        const bool variasLineas = x.texto.contains(u'\n') || m.horizontalAdvance(x.texto) > util;
        if (variasLineas) alto = qMax(alto, m.boundingRect(QRectF(0, 0, util, 1e9), Qt::TextWordWrap, x.texto).height());
    }
    return alto + 2 * relleno_;
}

void PaginasSimples::dibujaFila(QPainter& p, const FilaSimple& f, const QVector<qreal>& anchos, qreal x, qreal y,
                                qreal alto) const {
    qreal total = 0;
    for (qreal w : anchos) total += w;
    if (f.fondo.isValid()) p.fillRect(QRectF(x, y, total, alto), f.fondo);
    if (f.lineaArriba) {
        p.save();
        p.setPen(QPen(f.tinta.isValid() ? f.tinta : QColor(0x24, 0x34, 0x47), dispositivo_->logicalDpiY() / 96.0));
        p.drawLine(QPointF(x, y), QPointF(x + total, y));
        p.restore();
    }
    p.setPen(f.tinta.isValid() ? f.tinta : QColor(Qt::black));
    int c = 0;
    qreal cx = x;
    for (const CeldaSimple& celda : f.celdas) {
        qreal w = 0;
        for (int k = c; k < c + celda.columnas && k < anchos.size(); ++k) w += anchos[k];
        c += celda.columnas;
        if (!celda.texto.isEmpty()) {
            QFont fuente = (celda.negrita || f.negrita) ? negrita_ : base_;
            if (celda.cursiva) fuente.setItalic(true);
            p.setFont(fuente);
            p.drawText(QRectF(cx + relleno_, y + relleno_, w - 2 * relleno_, alto - 2 * relleno_),
                       int(celda.alineacion) | Qt::AlignVCenter | Qt::TextWordWrap, celda.texto);
        }
        cx += w;
    }
}

void PaginasSimples::dibuja(QPainter& p, int n, const QPointF& origen) const {
    p.save();
    for (const Renglon& r : renglones_) {
        if (r.pagina != n) continue;
        const BloqueSimple& b = bloques_[r.bloque];
        if (r.fila >= 0) {
            dibujaFila(p, b.filas[r.fila], anchos_[r.bloque], origen.x(), origen.y() + r.y, r.alto);
            continue;
        }
        QFont fuente = b.parrafo.negrita ? negrita_ : base_;
        if (b.parrafo.cursiva) fuente.setItalic(true);
        p.setFont(fuente);
        p.setPen(Qt::black);
        p.drawText(QRectF(origen.x(), origen.y() + r.y, ancho_, r.alto), int(b.parrafo.alineacion) | Qt::TextWordWrap,
                   b.parrafo.texto);
    }
    p.restore();
}

} // namespace orv
