#include "sales/balanza.h"

#include "store/entrada.h"

#include <QSqlQuery>
#include <QStringList>
#include <cmath>

namespace orv {

namespace {

const QString kClavePrefijos = QStringLiteral("BalanzaPrefijos");
const QString kClaveCifrasCodigo = QStringLiteral("BalanzaCifrasCodigo");
const QString kClaveCifrasValor = QStringLiteral("BalanzaCifrasValor");
const QString kClaveValor = QStringLiteral("BalanzaValor");
const QString kClaveDecimales = QStringLiteral("BalanzaDecimales");

// Un número de la configuración: el valor por omisión si falta o no es un entero.
int entero(const QString& texto, int defecto) {
    const auto v = LeeEntero(texto.trimmed(), 0, 99);
    return v ? int(*v) : defecto;
}

// "20-29", "20,21" o "28": rangos de prefijos, todos del mismo largo. Nada si no se lee.
std::optional<std::pair<QList<std::pair<int, int>>, int>> leePrefijos(const QString& texto) {
    QList<std::pair<int, int>> rangos;
    int largo = 0;
    for (const QString& parte : texto.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QStringList extremos = parte.trimmed().split(QLatin1Char('-'));
        if (extremos.size() > 2) return std::nullopt;
        std::pair<int, int> r;
        for (int i = 0; i < extremos.size(); ++i) {
            const QString e = extremos[i].trimmed();
            const auto v = LeeEntero(e, 0, 99999);
            if (!v || e.startsWith(QLatin1Char('+')) || e.startsWith(QLatin1Char('-'))) return std::nullopt;
            if (largo != 0 && e.size() != largo) return std::nullopt;
            largo = int(e.size());
            (i == 0 ? r.first : r.second) = int(*v);
        }
        if (extremos.size() == 1) r.second = r.first;
        if (r.second < r.first) return std::nullopt;
        rangos << r;
    }
    if (rangos.isEmpty()) return std::nullopt;
    return std::pair{rangos, largo};
}

bool soloCifras(QStringView t) {
    for (QChar c : t)
        if (c < u'0' || c > u'9') return false;
    return true;
}

// ¿13 cifras con un prefijo de la balanza?
bool tieneForma(const ConfBalanza& conf, QStringView codigo) {
    if (codigo.size() != 13 || !soloCifras(codigo)) return false;
    const int prefijo = codigo.left(conf.cifrasPrefijo).toInt();
    for (const auto& [desde, hasta] : conf.prefijos)
        if (prefijo >= desde && prefijo <= hasta) return true;
    return false;
}

qint64 potencia10(int n) {
    qint64 p = 1;
    while (n-- > 0) p *= 10;
    return p;
}

std::optional<ArticuloVenta> articuloDeEtiqueta(const Almacen& a, const QString& cifras) {
    if (auto art = ArticuloPorCodigo(a, cifras)) return art;
    QString sinCeros = cifras;
    while (sinCeros.size() > 1 && sinCeros.startsWith(QLatin1Char('0'))) sinCeros.remove(0, 1);
    if (sinCeros != cifras) return ArticuloPorCodigo(a, sinCeros);
    return std::nullopt;
}

} // namespace

TextosBalanza LeeTextosBalanza(const Configuracion& c) {
    return {c.lee(clave::miscelaneas, kClavePrefijos), c.lee(clave::miscelaneas, kClaveCifrasCodigo),
            c.lee(clave::miscelaneas, kClaveCifrasValor), c.lee(clave::miscelaneas, kClaveValor),
            c.lee(clave::miscelaneas, kClaveDecimales)};
}

void GrabaTextosBalanza(const Configuracion& c, const TextosBalanza& t) {
    c.graba(clave::miscelaneas, kClavePrefijos, t.prefijos);
    c.graba(clave::miscelaneas, kClaveCifrasCodigo, t.cifrasCodigo);
    c.graba(clave::miscelaneas, kClaveCifrasValor, t.cifrasValor);
    c.graba(clave::miscelaneas, kClaveValor, t.valor);
    c.graba(clave::miscelaneas, kClaveDecimales, t.decimales);
}

ConfBalanza LeeConfBalanza(const Configuracion& c) { return InterpretaBalanza(LeeTextosBalanza(c)); }

ConfBalanza InterpretaBalanza(const TextosBalanza& t) {
    ConfBalanza r;
    const QString prefijos = t.prefijos.trimmed();
    if (!prefijos.isEmpty()) {
        if (const auto p = leePrefijos(prefijos)) {
            r.prefijos = p->first;
            r.cifrasPrefijo = p->second;
        } else {
            r.problema = QStringLiteral("los prefijos de la balanza (\"") + prefijos +
                         QStringLiteral("\") no se entienden; escríbalos como 20-29 o 20,21");
        }
    }
    r.cifrasCodigo = entero(t.cifrasCodigo, 5);
    r.cifrasValor = entero(t.cifrasValor, 5);
    r.esPrecio = t.valor.trimmed().compare(QStringLiteral("Peso"), Qt::CaseInsensitive) != 0;
    r.decimales = entero(t.decimales, r.esPrecio ? 2 : 3);
    if (r.problema.isEmpty() && (r.cifrasCodigo < 1 || r.cifrasValor < 1 ||
                                 r.cifrasPrefijo + r.cifrasCodigo + r.cifrasValor != 12))
        r.problema = QStringLiteral("prefijo (%1 cifras), código (%2) y valor (%3) deben sumar 12 cifras")
                         .arg(r.cifrasPrefijo)
                         .arg(r.cifrasCodigo)
                         .arg(r.cifrasValor);
    if (r.problema.isEmpty() && r.decimales > 4)
        r.problema = QStringLiteral("el valor admite hasta 4 decimales (dice %1)").arg(r.decimales);
    return r;
}

int DigitoVerificadorEan13(QStringView doce) {
    int suma = 0;
    for (int i = 0; i < 12; ++i) suma += (doce[i].unicode() - u'0') * (i % 2 == 0 ? 1 : 3);
    return (10 - suma % 10) % 10;
}

std::optional<EtiquetaBalanza> LeeEtiquetaBalanza(const ConfBalanza& conf, QStringView codigo) {
    if (!tieneForma(conf, codigo)) return std::nullopt;
    if (!conf.problema.isEmpty())
        throw CodigoBalanzaErroneo(QStringLiteral("Código de balanza sin leer: ") + conf.problema +
                                   QStringLiteral(" (Miscelaneas)."));
    if (DigitoVerificadorEan13(codigo.left(12)) != codigo[12].unicode() - u'0')
        throw CodigoBalanzaErroneo(QStringLiteral("Código de balanza mal leído (dígito verificador): ") +
                                   codigo.toString() + QStringLiteral(". Vuelva a escanearlo."));
    EtiquetaBalanza e;
    e.codigoArticulo = codigo.mid(conf.cifrasPrefijo, conf.cifrasCodigo).toString();
    const qint64 valor = codigo.mid(conf.cifrasPrefijo + conf.cifrasCodigo, conf.cifrasValor).toLongLong();
    e.esPrecio = conf.esPrecio;
    if (valor == 0)
        throw CodigoBalanzaErroneo(QStringLiteral("La etiqueta de balanza ") + codigo.toString() +
                                   (conf.esPrecio ? QStringLiteral(" no trae importe.") : QStringLiteral(" no trae peso.")));
    if (conf.esPrecio)
        e.precio = Dinero::desdeDiezmilesimos(valor * potencia10(4 - conf.decimales));
    else
        e.peso = double(valor) / double(potencia10(conf.decimales));
    return e;
}

std::optional<LineaAgregada> AgregaLineaBalanza(Almacen& a, const ConfBalanza& conf, qint32 idRed,
                                                const QString& codigo, const std::optional<QString>& multiplicador) {
    // 1. Sólo una etiqueta de balanza que no es el código de un artículo.
    if (!tieneForma(conf, codigo) || ArticuloPorCodigo(a, codigo)) return std::nullopt;
    const EtiquetaBalanza e = *LeeEtiquetaBalanza(conf, codigo);
    // 2. El artículo de la etiqueta.
    const auto art = articuloDeEtiqueta(a, e.codigoArticulo);
    if (!art) throw ArticuloNoEncontrado();
    // 3. Cantidad y precio de la línea.
    double cantidad = 1;
    Dinero unitario = e.precio;
    if (e.esPrecio) {
        if (multiplicador) cantidad = ExigeCantidad(*multiplicador, QStringLiteral("Cantidad"));
    } else {
        if (multiplicador)
            throw Aviso(QStringLiteral("La etiqueta de balanza ya trae el peso: escanéela sin multiplicador."));
        if (art->precioVenta.isNull())
            throw Aviso(art->descripcion + QStringLiteral(": el artículo no tiene precio de venta para venderlo por peso."));
        cantidad = e.peso;
        unitario = Dinero::desdeVariant(art->precioVenta);
    }
    ExigeImporteEnRango(unitario);
    Dinero subTotal;
    try {
        subTotal = unitario.por(cantidad);
    } catch (const ImporteFueraDeRango&) {
        throw Aviso(kImporteFueraDeRango);
    }
    ExigeImporteEnRango(subTotal);
    // 4. Una línea propia: dos etiquetas del mismo artículo no se suman.
    Transaccion t(a);
    LineaAgregada r;
    r.idArticulo = art->idArticulo;
    r.cantidad = cantidad;
    r.idTmpFac = a.inserta(
        QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Cantidad, Descripcion, Unitario, SubTotal, PCRed) "
                       "VALUES (?, ?, ?, ?, ?, ?, ?)"),
        {art->idArticulo, art->codigo, cantidad, art->descripcion, unitario.aVariant(), subTotal.aVariant(), idRed},
        QStringLiteral("idTmpFac"));
    t.confirmar();
    return r;
}

} // namespace orv
