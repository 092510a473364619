#include "articles/planillas.h"

#include "store/aviso.h"
#include "store/formato.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <array>
#include <cmath>
#include <freexl.h>

namespace orv {

QString Celda::aTexto() const {
    switch (tipo) {
    case Tipo::Vacia: return {};
    case Tipo::Texto: return texto;
    case Tipo::Numero:
        // Un entero (un código de barras escrito como número) sale con todas sus cifras.
        if (std::trunc(numero) == numero && std::fabs(numero) < 1e18) return QString::number(qint64(numero));
        return Formato(QVariant(numero), QString());
    case Tipo::Fecha: return FechaTexto(fecha);
    }
    return {};
}

std::optional<int> Planilla::buscaHoja(const QString& nombre) const {
    QString buscado = nombre.trimmed();
    if (buscado.endsWith(u'$')) buscado.chop(1);
    const QStringList todas = hojas();
    for (int i = 0; i < todas.size(); ++i)
        if (todas[i].compare(buscado, Qt::CaseInsensitive) == 0 || todas[i].compare(nombre.trimmed(), Qt::CaseInsensitive) == 0)
            return i;
    return std::nullopt;
}

std::unique_ptr<Planilla> Planilla::abre(const QString& ruta) {
    const QFileInfo info(ruta);
    if (!info.exists() || !info.isFile()) throw Aviso(QStringLiteral("No existe el archivo %1").arg(ruta));
    if (!info.isReadable()) throw Aviso(QStringLiteral("No se puede leer el archivo %1").arg(ruta));
    const QString ext = info.suffix().toLower();
    if (ext == QLatin1StringView("xls")) return AbreXls(ruta);
    if (ext == QLatin1StringView("xlsx")) return AbreXlsx(ruta);
    if (ext == QLatin1StringView("ods")) return AbreOds(ruta);
    if (ext == QLatin1StringView("csv") || ext == QLatin1StringView("txt")) return AbreCsv(ruta);
    throw Aviso(QStringLiteral("El archivo %1 no es una planilla: se leen archivos .xls, .xlsx, .ods y .csv.").arg(info.fileName()));
}

QDate FechaDeSerie(double serie, bool base1904) {
    const QDate origen = base1904 ? QDate(1904, 1, 1) : QDate(1899, 12, 30);
    return origen.addDays(qint64(std::floor(serie)));
}

// ---------------------------------------------------------------------------------------------
// .csv
// ---------------------------------------------------------------------------------------------

namespace {

// Los caracteres de Windows-1252 entre 0x80 y 0x9F; del 0xA0 en adelante coincide con Latin-1.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
    0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

} // namespace

QString DecodificaTexto(const QByteArray& bytes) {
    if (bytes.startsWith("\xEF\xBB\xBF")) return QString::fromUtf8(bytes.constData() + 3, bytes.size() - 3);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString texto = utf8.decode(bytes);
    if (!utf8.hasError()) return texto;
    texto.clear();
    texto.reserve(bytes.size());
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        texto += (b >= 0x80 && b < 0xA0) ? QChar(kWindows1252[b - 0x80]) : QChar(char16_t(b));
    }
    return texto;
}

QChar DetectaSeparador(QStringView primeraLinea) {
    const QChar candidatos[] = {u';', u',', u'\t', u'|'};
    int cuentas[4] = {0, 0, 0, 0};
    bool entreComillas = false;
    for (const QChar c : primeraLinea) {
        if (c == u'"') entreComillas = !entreComillas;
        if (entreComillas) continue;
        for (int i = 0; i < 4; ++i) cuentas[i] += c == candidatos[i];
    }
    int mejor = 1; // ',' si no hay ninguno
    for (int i = 0; i < 4; ++i)
        if (cuentas[i] > cuentas[mejor]) mejor = i;
    return candidatos[mejor];
}

namespace {

class LectorCsv : public LectorHoja {
public:
    LectorCsv(const QString& texto, QChar separador) : texto_(texto), sep_(separador) {}

    std::optional<FilaPlanilla> siguiente() override {
        while (pos_ < texto_.size()) {
            FilaPlanilla fila;
            fila.numero = ++linea_;
            bool algo = false;
            for (const QString& campo : campos()) {
                fila.celdas << (campo.isEmpty() ? Celda() : Celda::deTexto(campo));
                algo = algo || !campo.trimmed().isEmpty();
            }
            while (!fila.celdas.isEmpty() && fila.celdas.last().tipo == Celda::Tipo::Vacia) fila.celdas.removeLast();
            if (algo) return fila;
        }
        return std::nullopt;
    }

private:
    // Los campos de un registro: entre comillas pueden llevar separadores, saltos de línea y
    // comillas dobladas (""). Deja pos_ al comienzo del registro siguiente.
    QStringList campos() {
        QStringList r;
        QString actual;
        bool entreComillas = false;
        while (pos_ < texto_.size()) {
            const QChar c = texto_[pos_++];
            if (entreComillas) {
                if (c == u'"' && pos_ < texto_.size() && texto_[pos_] == u'"') {
                    actual += c;
                    ++pos_;
                } else if (c == u'"') {
                    entreComillas = false;
                } else {
                    if (c == u'\n') ++linea_;
                    actual += c;
                }
            } else if (c == u'"') {
                entreComillas = true;
            } else if (c == sep_) {
                r << actual;
                actual.clear();
            } else if (c == u'\r' || c == u'\n') {
                if (c == u'\r' && pos_ < texto_.size() && texto_[pos_] == u'\n') ++pos_;
                break;
            } else {
                actual += c;
            }
        }
        r << actual;
        return r;
    }

    QString texto_;
    QChar sep_;
    qsizetype pos_ = 0;
    int linea_ = 0;
};

class PlanillaCsv : public Planilla {
public:
    PlanillaCsv(QString nombre, QString texto) : nombre_(std::move(nombre)), texto_(std::move(texto)) {
        sep_ = DetectaSeparador(QStringView(texto_).left(texto_.indexOf(u'\n') < 0 ? texto_.size() : texto_.indexOf(u'\n')));
    }
    QStringList hojas() const override { return {nombre_}; }
    std::unique_ptr<LectorHoja> lee(int hoja) override {
        if (hoja != 0) throw Aviso(QStringLiteral("La planilla no tiene esa hoja."));
        return std::make_unique<LectorCsv>(texto_, sep_);
    }

private:
    QString nombre_;
    QString texto_;
    QChar sep_;
};

} // namespace

std::unique_ptr<Planilla> AbreCsv(const QString& ruta) {
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly)) throw Aviso(QStringLiteral("No se puede leer el archivo %1").arg(ruta));
    const QByteArray bytes = f.readAll();
    if (bytes.contains('\0'))
        throw Aviso(QStringLiteral("El archivo %1 no es un texto separado por comas.").arg(QFileInfo(ruta).fileName()));
    return std::make_unique<PlanillaCsv>(QFileInfo(ruta).completeBaseName(), DecodificaTexto(bytes));
}

// ---------------------------------------------------------------------------------------------
// .xls (libro de Excel 97 a 2003)
// ---------------------------------------------------------------------------------------------

namespace {

Celda celdaXls(const FreeXL_CellValue& v) {
    switch (v.type) {
    case FREEXL_CELL_INT: return Celda::deNumero(v.value.int_value);
    case FREEXL_CELL_DOUBLE: return Celda::deNumero(v.value.double_value);
    case FREEXL_CELL_TEXT:
    case FREEXL_CELL_SST_TEXT: return Celda::deTexto(QString::fromUtf8(v.value.text_value));
    case FREEXL_CELL_DATE:
    case FREEXL_CELL_DATETIME: {
        const QDate f = QDate::fromString(QString::fromLatin1(v.value.text_value).left(10), Qt::ISODate);
        return f.isValid() ? Celda::deFecha(f) : Celda::deTexto(QString::fromLatin1(v.value.text_value));
    }
    case FREEXL_CELL_TIME: return Celda::deTexto(QString::fromLatin1(v.value.text_value));
    default: return {};
    }
}

class LectorXls : public LectorHoja {
public:
    LectorXls(const void* libro, QString nombre, unsigned filas, unsigned short columnas)
        : libro_(libro), nombre_(std::move(nombre)), filas_(filas), columnas_(columnas) {}
    std::optional<FilaPlanilla> siguiente() override {
        while (fila_ < filas_) {
            FilaPlanilla f;
            f.numero = int(fila_) + 1;
            bool algo = false;
            for (unsigned short c = 0; c < columnas_; ++c) {
                FreeXL_CellValue v;
                if (freexl_get_cell_value(libro_, fila_, c, &v) != FREEXL_OK)
                    throw Aviso(QStringLiteral("La hoja %1 está dañada (fila %2).").arg(nombre_).arg(f.numero));
                f.celdas << celdaXls(v);
                algo = algo || !f.celdas.last().vacia();
            }
            ++fila_;
            while (!f.celdas.isEmpty() && f.celdas.last().tipo == Celda::Tipo::Vacia) f.celdas.removeLast();
            if (algo) return f;
        }
        return std::nullopt;
    }

private:
    const void* libro_;
    QString nombre_;
    unsigned filas_;
    unsigned short columnas_;
    unsigned fila_ = 0;
};

class PlanillaXls : public Planilla {
public:
    PlanillaXls(const void* libro, QStringList hojas) : libro_(libro), hojas_(std::move(hojas)) {}
    ~PlanillaXls() override { freexl_close(libro_); }
    QStringList hojas() const override { return hojas_; }
    std::unique_ptr<LectorHoja> lee(int hoja) override {
        unsigned filas = 0;
        unsigned short columnas = 0;
        if (hoja < 0 || hoja >= hojas_.size() || freexl_select_active_worksheet(libro_, static_cast<unsigned short>(hoja)) != FREEXL_OK ||
            freexl_worksheet_dimensions(libro_, &filas, &columnas) != FREEXL_OK)
            throw Aviso(QStringLiteral("No se puede leer la hoja de la planilla."));
        return std::make_unique<LectorXls>(libro_, hojas_.value(hoja), filas, columnas);
    }

private:
    const void* libro_;
    QStringList hojas_;
};

} // namespace

std::unique_ptr<Planilla> AbreXls(const QString& ruta) {
    const void* libro = nullptr;
    const QString nombre = QFileInfo(ruta).fileName();
    if (freexl_open(QFile::encodeName(ruta).constData(), &libro) != FREEXL_OK) {
        if (libro) freexl_close(libro);
        throw Aviso(QStringLiteral("El archivo %1 no es un libro .xls que se pueda leer (está dañado o es de otro formato).").arg(nombre));
    }
    unsigned cuantas = 0;
    QStringList hojas;
    if (freexl_get_info(libro, FREEXL_BIFF_SHEET_COUNT, &cuantas) == FREEXL_OK) {
        for (unsigned i = 0; i < cuantas; ++i) {
            const char* n = nullptr;
            if (freexl_get_worksheet_name(libro, static_cast<unsigned short>(i), &n) != FREEXL_OK || !n) break;
            hojas << QString::fromUtf8(n);
        }
    }
    if (hojas.isEmpty()) {
        freexl_close(libro);
        throw Aviso(QStringLiteral("El archivo %1 no tiene hojas que se puedan leer.").arg(nombre));
    }
    return std::make_unique<PlanillaXls>(libro, hojas);
}

} // namespace orv
