// Los libros que son un .zip de XML: .xlsx (Office Open XML) y .ods (OpenDocument). Cada hoja se lee
// con QXmlStreamReader directamente del .zip, descomprimida a medida que se lee, fila por fila.

#include "articles/planillas.h"

#include "store/aviso.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QXmlStreamReader>
#include <algorithm>
#include <cstring>
#include <zlib.h>

namespace orv {

namespace {

// Tope de filas iguales repetidas o de columnas que se expanden (una hoja vacía de un .ods declara
// un millón de filas repetidas: ésas no se expanden porque están vacías).
constexpr int kTopeRepeticiones = 1 << 20;
constexpr int kTopeColumnas = 16384;

// El directorio de un .zip: dónde empieza cada entrada, cómo está comprimida y cuánto ocupa.
struct EntradaDirectorio {
    quint16 metodo = 0; // 0 guardada, 8 comprimida (deflate)
    quint32 comprimido = 0;
    quint32 posicionLocal = 0;
};

quint16 lee16(const char* p) { return quint16(uchar(p[0]) | uchar(p[1]) << 8); }
quint32 lee32(const char* p) { return quint32(lee16(p)) | quint32(lee16(p + 2)) << 16; }

// Lee el directorio central del final del archivo; nullopt si no es un .zip (o está cortado).
std::optional<QHash<QString, EntradaDirectorio>> leeDirectorio(QFile& f) {
    const qint64 largo = f.size();
    const qint64 cola = std::min<qint64>(largo, 65535 + 22);
    if (cola < 22 || !f.seek(largo - cola)) return std::nullopt;
    const QByteArray fin = f.read(cola);
    qsizetype finDir = -1;
    for (qsizetype i = fin.size() - 22; i >= 0; --i)
        if (lee32(fin.constData() + i) == 0x06054b50) {
            finDir = i;
            break;
        }
    if (finDir < 0) return std::nullopt;
    const quint16 entradas = lee16(fin.constData() + finDir + 10);
    const quint32 tamanio = lee32(fin.constData() + finDir + 12);
    const quint32 inicio = lee32(fin.constData() + finDir + 16);
    if (qint64(inicio) + tamanio > largo || !f.seek(inicio)) return std::nullopt;
    const QByteArray dir = f.read(tamanio);
    QHash<QString, EntradaDirectorio> r;
    qsizetype p = 0;
    for (int i = 0; i < entradas; ++i) {
        if (p + 46 > dir.size() || lee32(dir.constData() + p) != 0x02014b50) return std::nullopt;
        const char* e = dir.constData() + p;
        const quint16 largoNombre = lee16(e + 28), largoExtra = lee16(e + 30), largoComentario = lee16(e + 32);
        if (p + 46 + largoNombre > dir.size()) return std::nullopt;
        r.insert(QString::fromUtf8(e + 46, largoNombre), {lee16(e + 10), lee32(e + 20), lee32(e + 42)});
        p += 46 + largoNombre + largoExtra + largoComentario;
    }
    return r;
}

// Los bytes de una entrada, descomprimidos a medida que se leen (zlib, deflate sin cabecera).
class EntradaComprimida : public QIODevice {
public:
    EntradaComprimida(const QString& ruta, const EntradaDirectorio& e) : archivo_(ruta), entrada_(e) {
        inflateInit2(&z_, -MAX_WBITS);
    }
    ~EntradaComprimida() override { inflateEnd(&z_); }
    // Se para al comienzo de los datos; false si el archivo no lo permite.
    bool prepara() {
        if (!archivo_.open(QIODevice::ReadOnly) || !archivo_.seek(entrada_.posicionLocal)) return false;
        const QByteArray local = archivo_.read(30);
        if (local.size() < 30 || lee32(local.constData()) != 0x04034b50) return false;
        if (!archivo_.seek(qint64(entrada_.posicionLocal) + 30 + lee16(local.constData() + 26) + lee16(local.constData() + 28)))
            return false;
        restante_ = entrada_.comprimido;
        return (entrada_.metodo == 0 || entrada_.metodo == 8) && open(QIODevice::ReadOnly);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* datos, qint64 maximo) override {
        if (maximo <= 0) return 0;
        if (entrada_.metodo == 0) {
            const QByteArray b = archivo_.read(std::min<qint64>(maximo, restante_));
            restante_ -= b.size();
            if (b.isEmpty()) return -1;
            std::memcpy(datos, b.constData(), size_t(b.size()));
            return b.size();
        }
        z_.next_out = reinterpret_cast<Bytef*>(datos);
        z_.avail_out = uInt(std::min<qint64>(maximo, 1 << 30));
        const uInt pedido = z_.avail_out;
        while (z_.avail_out == pedido && !terminado_) {
            if (z_.avail_in == 0) {
                comprimido_ = archivo_.read(std::min<qint64>(restante_, 1 << 16));
                restante_ -= comprimido_.size();
                if (comprimido_.isEmpty()) return -1; // cortado antes del final
                z_.next_in = reinterpret_cast<Bytef*>(comprimido_.data());
                z_.avail_in = uInt(comprimido_.size());
            }
            const int r = inflate(&z_, Z_NO_FLUSH);
            if (r == Z_STREAM_END) terminado_ = true;
            else if (r != Z_OK && r != Z_BUF_ERROR) return -1;
        }
        const qint64 leidos = pedido - z_.avail_out;
        return leidos > 0 ? leidos : -1;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QFile archivo_;
    EntradaDirectorio entrada_;
    z_stream z_{};
    QByteArray comprimido_;
    qint64 restante_ = 0;
    bool terminado_ = false;
};

// Una entrada del .zip abierta para leer, con su lector de XML.
class EntradaZip {
public:
    EntradaZip(const QString& ruta, const QString& entrada, const QString& formato) : nombre_(QFileInfo(ruta).fileName()) {
        QFile f(ruta);
        const auto dir = f.open(QIODevice::ReadOnly) ? leeDirectorio(f) : std::nullopt;
        if (!dir)
            throw Aviso(QStringLiteral("El archivo %1 no es un libro %2 que se pueda leer (está dañado o es de otro formato).")
                            .arg(nombre_, formato));
        if (!dir->contains(entrada))
            throw Aviso(QStringLiteral("El archivo %1 no es un libro %2 que se pueda leer: le falta %3.").arg(nombre_, formato, entrada));
        archivo_ = std::make_unique<EntradaComprimida>(ruta, dir->value(entrada));
        if (!archivo_->prepara())
            throw Aviso(QStringLiteral("El archivo %1 no es un libro %2 que se pueda leer (está dañado o es de otro formato).")
                            .arg(nombre_, formato));
        xml_.setDevice(archivo_.get());
    }
    static bool existe(const QString& ruta, const QString& entrada) {
        QFile f(ruta);
        const auto dir = f.open(QIODevice::ReadOnly) ? leeDirectorio(f) : std::nullopt;
        return dir && dir->contains(entrada);
    }
    QXmlStreamReader& xml() { return xml_; }
    // Avanza al próximo elemento de apertura o de cierre; false al terminar. Un XML roto lanza Aviso.
    bool avanza() {
        while (!xml_.atEnd()) {
            const auto t = xml_.readNext();
            if (t == QXmlStreamReader::StartElement || t == QXmlStreamReader::EndElement) return true;
        }
        if (xml_.hasError())
            throw Aviso(QStringLiteral("El archivo %1 está dañado: %2 (línea %3).")
                            .arg(nombre_, xml_.errorString())
                            .arg(xml_.lineNumber()));
        return false;
    }
    bool abre(QLatin1StringView nombre) const { return xml_.isStartElement() && xml_.name() == nombre; }
    bool cierra(QLatin1StringView nombre) const { return xml_.isEndElement() && xml_.name() == nombre; }
    QString atributo(QLatin1StringView nombre) const {
        for (const QXmlStreamAttribute& a : xml_.attributes())
            if (a.name() == nombre) return a.value().toString();
        return {};
    }
    // El texto de los <t> (o del elemento de texto que se pida) hasta el cierre de `fin`; saltea
    // las lecturas fonéticas (<rPh>).
    QString textoHasta(QLatin1StringView fin, QLatin1StringView elementoTexto = QLatin1StringView("t")) {
        QString r;
        while (avanza()) {
            if (cierra(fin)) break;
            if (abre(QLatin1StringView("rPh"))) xml_.skipCurrentElement();
            else if (abre(elementoTexto))
                r += xml_.readElementText(QXmlStreamReader::IncludeChildElements);
        }
        return r;
    }

private:
    QString nombre_;
    std::unique_ptr<EntradaComprimida> archivo_;
    QXmlStreamReader xml_;
};

// "C12" → 2 (columna A es 0); sin letras, -1.
int columnaDeReferencia(QStringView ref) {
    int col = 0;
    int letras = 0;
    for (const QChar c : ref) {
        if (c >= u'A' && c <= u'Z') col = col * 26 + (c.unicode() - u'A' + 1);
        else if (c >= u'a' && c <= u'z') col = col * 26 + (c.unicode() - u'a' + 1);
        else break;
        if (++letras > 3) return -1;
    }
    return letras ? col - 1 : -1;
}

void ponCelda(QList<Celda>& celdas, int columna, Celda c) {
    if (columna < 0 || columna >= kTopeColumnas) return;
    while (celdas.size() <= columna) celdas << Celda();
    celdas[columna] = std::move(c);
}

void quitaVaciasDelFinal(QList<Celda>& celdas) {
    while (!celdas.isEmpty() && celdas.last().tipo == Celda::Tipo::Vacia) celdas.removeLast();
}

bool algoEscrito(const QList<Celda>& celdas) {
    for (const Celda& c : celdas)
        if (!c.vacia()) return true;
    return false;
}

// ---------------------------------------------------------------------------------------------
// .xlsx
// ---------------------------------------------------------------------------------------------

// Un formato de número es de fecha si es uno de los de fecha del programa (14 a 22, 27 a 36, 45 a
// 47, 50 a 58) o si su texto, sin lo que va entre comillas o corchetes, tiene d, m, y, h o s.
bool esFormatoDeFecha(int id, const QString& codigo) {
    if ((id >= 14 && id <= 22) || (id >= 27 && id <= 36) || (id >= 45 && id <= 47) || (id >= 50 && id <= 58)) return true;
    if (codigo.isEmpty()) return false;
    bool comillas = false;
    int corchetes = 0;
    for (qsizetype i = 0; i < codigo.size(); ++i) {
        const QChar c = codigo[i].toLower();
        if (c == u'\\') {
            ++i;
            continue;
        }
        if (c == u'"') comillas = !comillas;
        else if (!comillas && c == u'[') ++corchetes;
        else if (!comillas && c == u']') --corchetes;
        else if (!comillas && corchetes == 0 && (c == u'd' || c == u'm' || c == u'y' || c == u'h' || c == u's')) return true;
    }
    return false;
}

struct LibroXlsx {
    QString ruta;
    QStringList hojas;
    QStringList entradas; // el XML de cada hoja dentro del .zip
    QStringList cadenas;  // las cadenas compartidas
    QList<bool> estiloFecha; // por número de estilo de celda
    bool base1904 = false;
};

void leeLibro(LibroXlsx& libro) {
    QHash<QString, QString> destinos; // rId → entrada
    {
        EntradaZip rel(libro.ruta, QStringLiteral("xl/_rels/workbook.xml.rels"), QStringLiteral(".xlsx"));
        while (rel.avanza())
            if (rel.abre(QLatin1StringView("Relationship"))) {
                QString destino = rel.atributo(QLatin1StringView("Target"));
                destino = destino.startsWith(u'/') ? destino.mid(1) : QStringLiteral("xl/") + destino;
                destinos.insert(rel.atributo(QLatin1StringView("Id")), destino);
            }
    }
    EntradaZip wb(libro.ruta, QStringLiteral("xl/workbook.xml"), QStringLiteral(".xlsx"));
    while (wb.avanza()) {
        if (wb.abre(QLatin1StringView("workbookPr"))) {
            const QString b = wb.atributo(QLatin1StringView("date1904"));
            libro.base1904 = b == QLatin1StringView("1") || b == QLatin1StringView("true");
        } else if (wb.abre(QLatin1StringView("sheet"))) {
            libro.hojas << wb.atributo(QLatin1StringView("name"));
            libro.entradas << destinos.value(wb.atributo(QLatin1StringView("id")));
        }
    }
}

void leeCadenas(LibroXlsx& libro) {
    if (!EntradaZip::existe(libro.ruta, QStringLiteral("xl/sharedStrings.xml"))) return;
    EntradaZip ss(libro.ruta, QStringLiteral("xl/sharedStrings.xml"), QStringLiteral(".xlsx"));
    while (ss.avanza())
        if (ss.abre(QLatin1StringView("si"))) libro.cadenas << ss.textoHasta(QLatin1StringView("si"));
}

void leeEstilos(LibroXlsx& libro) {
    if (!EntradaZip::existe(libro.ruta, QStringLiteral("xl/styles.xml"))) return;
    EntradaZip st(libro.ruta, QStringLiteral("xl/styles.xml"), QStringLiteral(".xlsx"));
    QHash<int, QString> propios;
    bool enCeldas = false;
    while (st.avanza()) {
        if (st.abre(QLatin1StringView("numFmt")))
            propios.insert(st.atributo(QLatin1StringView("numFmtId")).toInt(), st.atributo(QLatin1StringView("formatCode")));
        else if (st.abre(QLatin1StringView("cellXfs"))) enCeldas = true;
        else if (st.cierra(QLatin1StringView("cellXfs"))) enCeldas = false;
        else if (enCeldas && st.abre(QLatin1StringView("xf"))) {
            const int id = st.atributo(QLatin1StringView("numFmtId")).toInt();
            libro.estiloFecha << esFormatoDeFecha(id, propios.value(id));
        }
    }
}

class LectorXlsx : public LectorHoja {
public:
    LectorXlsx(std::shared_ptr<const LibroXlsx> libro, const QString& entrada)
        : libro_(std::move(libro)), hoja_(libro_->ruta, entrada, QStringLiteral(".xlsx")) {}

    std::optional<FilaPlanilla> siguiente() override {
        while (hoja_.avanza()) {
            if (!hoja_.abre(QLatin1StringView("row"))) continue;
            FilaPlanilla f;
            const QString r = hoja_.atributo(QLatin1StringView("r"));
            f.numero = r.isEmpty() ? ultima_ + 1 : r.toInt();
            ultima_ = f.numero;
            int columna = 0;
            while (hoja_.avanza() && !hoja_.cierra(QLatin1StringView("row"))) {
                if (!hoja_.abre(QLatin1StringView("c"))) continue;
                const int ref = columnaDeReferencia(hoja_.atributo(QLatin1StringView("r")));
                columna = ref >= 0 ? ref : columna;
                ponCelda(f.celdas, columna, celda());
                ++columna;
            }
            quitaVaciasDelFinal(f.celdas);
            if (algoEscrito(f.celdas)) return f;
        }
        return std::nullopt;
    }

private:
    // La celda abierta en el lector, hasta su cierre.
    Celda celda() {
        const QString tipo = hoja_.atributo(QLatin1StringView("t"));
        const int estilo = hoja_.atributo(QLatin1StringView("s")).toInt();
        QString valor;
        bool hayValor = false;
        while (hoja_.avanza() && !hoja_.cierra(QLatin1StringView("c"))) {
            if (hoja_.abre(QLatin1StringView("v"))) {
                valor = hoja_.xml().readElementText();
                hayValor = true;
            } else if (hoja_.abre(QLatin1StringView("is"))) {
                valor = hoja_.textoHasta(QLatin1StringView("is"));
                hayValor = true;
            }
        }
        if (!hayValor) return {};
        if (tipo == QLatin1StringView("s")) {
            bool ok = false;
            const int i = valor.toInt(&ok);
            if (!ok || i < 0 || i >= libro_->cadenas.size()) throw Aviso(QStringLiteral("El libro está dañado: una celda nombra un texto que no tiene."));
            return Celda::deTexto(libro_->cadenas[i]);
        }
        if (tipo == QLatin1StringView("inlineStr") || tipo == QLatin1StringView("str") || tipo == QLatin1StringView("e")) return Celda::deTexto(valor);
        if (tipo == QLatin1StringView("d")) {
            const QDate d = QDate::fromString(valor.left(10), Qt::ISODate);
            return d.isValid() ? Celda::deFecha(d) : Celda::deTexto(valor);
        }
        bool ok = false;
        const double n = valor.toDouble(&ok);
        if (!ok) return Celda::deTexto(valor);
        if (tipo != QLatin1StringView("b") && estilo >= 0 && estilo < libro_->estiloFecha.size() && libro_->estiloFecha[estilo])
            return Celda::deFecha(FechaDeSerie(n, libro_->base1904));
        return Celda::deNumero(n);
    }

    std::shared_ptr<const LibroXlsx> libro_;
    EntradaZip hoja_;
    int ultima_ = 0;
};

class PlanillaXlsx : public Planilla {
public:
    explicit PlanillaXlsx(std::shared_ptr<const LibroXlsx> libro) : libro_(std::move(libro)) {}
    QStringList hojas() const override { return libro_->hojas; }
    std::unique_ptr<LectorHoja> lee(int hoja) override {
        if (hoja < 0 || hoja >= libro_->hojas.size()) throw Aviso(QStringLiteral("La planilla no tiene esa hoja."));
        return std::make_unique<LectorXlsx>(libro_, libro_->entradas[hoja]);
    }

private:
    std::shared_ptr<const LibroXlsx> libro_;
};

// ---------------------------------------------------------------------------------------------
// .ods
// ---------------------------------------------------------------------------------------------

class LectorOds : public LectorHoja {
public:
    LectorOds(const QString& ruta, int hoja) : xml_(ruta, QStringLiteral("content.xml"), QStringLiteral(".ods")) {
        int vista = -1;
        while (xml_.avanza()) {
            if (!xml_.abre(QLatin1StringView("table"))) continue;
            if (++vista == hoja) return;
            xml_.xml().skipCurrentElement();
        }
        terminado_ = true;
    }

    std::optional<FilaPlanilla> siguiente() override {
        if (pendientes_ > 0) return repite();
        while (!terminado_ && xml_.avanza()) {
            if (xml_.cierra(QLatin1StringView("table"))) break;
            if (!xml_.abre(QLatin1StringView("table-row"))) continue;
            const int repetida = std::clamp(xml_.atributo(QLatin1StringView("number-rows-repeated")).toInt(), 1, kTopeRepeticiones);
            FilaPlanilla f;
            f.numero = fila_ + 1;
            fila_ += repetida;
            f.celdas = celdas();
            if (!algoEscrito(f.celdas)) continue;
            actual_ = f;
            pendientes_ = repetida - 1;
            return f;
        }
        terminado_ = true;
        return std::nullopt;
    }

private:
    FilaPlanilla repite() {
        --pendientes_;
        ++actual_.numero;
        return actual_;
    }

    QList<Celda> celdas() {
        QList<Celda> r;
        int vaciasPendientes = 0;
        while (xml_.avanza() && !xml_.cierra(QLatin1StringView("table-row"))) {
            const bool cubierta = xml_.abre(QLatin1StringView("covered-table-cell"));
            if (!cubierta && !xml_.abre(QLatin1StringView("table-cell"))) continue;
            const int veces = std::clamp(xml_.atributo(QLatin1StringView("number-columns-repeated")).toInt(), 1, kTopeColumnas);
            const Celda c = cubierta ? (xml_.xml().skipCurrentElement(), Celda()) : celda();
            if (c.tipo == Celda::Tipo::Vacia) {
                vaciasPendientes += veces;
                continue;
            }
            for (; vaciasPendientes > 0 && r.size() < kTopeColumnas; --vaciasPendientes) r << Celda();
            vaciasPendientes = 0;
            for (int i = 0; i < veces && r.size() < kTopeColumnas; ++i) r << c;
        }
        return r;
    }

    Celda celda() {
        const QString tipo = xml_.atributo(QLatin1StringView("value-type"));
        const QString valor = xml_.atributo(QLatin1StringView("value"));
        const QString fecha = xml_.atributo(QLatin1StringView("date-value"));
        const QString logico = xml_.atributo(QLatin1StringView("boolean-value"));
        QStringList parrafos;
        while (xml_.avanza() && !xml_.cierra(QLatin1StringView("table-cell"))) {
            if (xml_.abre(QLatin1StringView("annotation"))) xml_.xml().skipCurrentElement();
            else if (xml_.abre(QLatin1StringView("p"))) parrafos << parrafo();
        }
        if (tipo == QLatin1StringView("float") || tipo == QLatin1StringView("percentage") || tipo == QLatin1StringView("currency")) {
            bool ok = false;
            const double n = valor.toDouble(&ok);
            if (ok) return Celda::deNumero(n);
        }
        if (tipo == QLatin1StringView("date")) {
            const QDate d = QDate::fromString(fecha.left(10), Qt::ISODate);
            if (d.isValid()) return Celda::deFecha(d);
        }
        if (tipo == QLatin1StringView("boolean")) return Celda::deNumero(logico == QLatin1StringView("true") ? 1 : 0);
        const QString texto = parrafos.join(u'\n');
        return texto.isEmpty() ? Celda() : Celda::deTexto(texto);
    }

    // El texto de un <text:p>: sus partes, los espacios de <text:s c="n"/>, tabulaciones y saltos.
    QString parrafo() {
        QString r;
        int nivel = 1;
        while (nivel > 0 && !xml_.xml().atEnd()) {
            const auto t = xml_.xml().readNext();
            if (t == QXmlStreamReader::Characters) r += xml_.xml().text();
            else if (t == QXmlStreamReader::StartElement) {
                if (xml_.abre(QLatin1StringView("s")))
                    r += QString(std::max(1, xml_.atributo(QLatin1StringView("c")).toInt()), u' ');
                else if (xml_.abre(QLatin1StringView("tab"))) r += u'\t';
                else if (xml_.abre(QLatin1StringView("line-break"))) r += u'\n';
                else if (xml_.abre(QLatin1StringView("note"))) {
                    xml_.xml().skipCurrentElement();
                    continue;
                }
                ++nivel;
            } else if (t == QXmlStreamReader::EndElement) {
                --nivel;
            }
        }
        if (xml_.xml().hasError()) xml_.avanza(); // lanza el aviso del XML roto
        return r;
    }

    EntradaZip xml_;
    bool terminado_ = false;
    int fila_ = 0;
    int pendientes_ = 0;
    FilaPlanilla actual_;
};

class PlanillaOds : public Planilla {
public:
    PlanillaOds(QString ruta, QStringList hojas) : ruta_(std::move(ruta)), hojas_(std::move(hojas)) {}
    QStringList hojas() const override { return hojas_; }
    std::unique_ptr<LectorHoja> lee(int hoja) override {
        if (hoja < 0 || hoja >= hojas_.size()) throw Aviso(QStringLiteral("La planilla no tiene esa hoja."));
        return std::make_unique<LectorOds>(ruta_, hoja);
    }

private:
    QString ruta_;
    QStringList hojas_;
};

} // namespace

std::unique_ptr<Planilla> AbreXlsx(const QString& ruta) {
    auto libro = std::make_shared<LibroXlsx>();
    libro->ruta = ruta;
    leeLibro(*libro);
    if (libro->hojas.isEmpty())
        throw Aviso(QStringLiteral("El archivo %1 no tiene hojas que se puedan leer.").arg(QFileInfo(ruta).fileName()));
    leeCadenas(*libro);
    leeEstilos(*libro);
    return std::make_unique<PlanillaXlsx>(libro);
}

std::unique_ptr<Planilla> AbreOds(const QString& ruta) {
    EntradaZip contenido(ruta, QStringLiteral("content.xml"), QStringLiteral(".ods"));
    QStringList hojas;
    while (contenido.avanza())
        if (contenido.abre(QLatin1StringView("table"))) {
            hojas << contenido.atributo(QLatin1StringView("name"));
            contenido.xml().skipCurrentElement();
        }
    if (hojas.isEmpty())
        throw Aviso(QStringLiteral("El archivo %1 no tiene hojas que se puedan leer.").arg(QFileInfo(ruta).fileName()));
    return std::make_unique<PlanillaOds>(ruta, hojas);
}

} // namespace orv
