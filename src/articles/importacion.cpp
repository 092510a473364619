#include "articles/importacion.h"

#include "articles/articulos.h"
#include "store/aviso.h"
#include "store/entrada.h"
#include "store/formato.h"

#include <QSqlQuery>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace orv {

QString NombreTabla(TablaDestino t) {
    switch (t) {
    case TablaDestino::Articulos: return QStringLiteral("Articulos");
    case TablaDestino::Vendedores: return QStringLiteral("Vendedores");
    case TablaDestino::Proveedores: return QStringLiteral("Proveedores");
    }
    return {};
}

const QList<CampoDestino>& CamposDe(TablaDestino t) {
    using T = TipoCampo;
    static const QList<CampoDestino> articulos = {
        {QStringLiteral("idRubro"), T::Entero},         {QStringLiteral("IdProveedor"), T::Entero},
        {QStringLiteral("Codigo"), T::Texto, kLargoCodigo, true}, {QStringLiteral("Descripcion"), T::Texto, 0, true},
        {QStringLiteral("DescripcionMatriz"), T::Texto, 50}, {QStringLiteral("StockActual"), T::Doble},
        {QStringLiteral("StockMinimo"), T::Doble},      {QStringLiteral("PrecioCosto"), T::Dinero},
        {QStringLiteral("PrecioVenta"), T::Dinero},     {QStringLiteral("PrecioFinal"), T::Dinero},
        {QStringLiteral("UtilidadPorcentaje"), T::Doble}, {QStringLiteral("CgoProveedor"), T::Texto, kLargoCodigo},
        {QStringLiteral("ImprimeCodigoBarra"), T::SiNo}, {QStringLiteral("esMateriaPrima"), T::SiNo},
        {QStringLiteral("Foto"), T::Texto, kLargoFoto}, {QStringLiteral("UltimaFechaCompra"), T::Fecha},
        {QStringLiteral("UltimaFechaVenta"), T::Fecha}};
    static const QList<CampoDestino> clientes = {
        {QStringLiteral("Nombre"), T::Texto, 100, true}, {QStringLiteral("Domicilio"), T::Texto, 100},
        {QStringLiteral("Localidad"), T::Texto, 100},  {QStringLiteral("Telefono"), T::Texto, 50},
        {QStringLiteral("Telefono2"), T::Texto, 50},   {QStringLiteral("e-mail"), T::Texto, 100},
        {QStringLiteral("Cuit"), T::Texto, 30},        {QStringLiteral("Empresa"), T::Texto, 50},
        {QStringLiteral("CPostal"), T::Texto, 10},     {QStringLiteral("Comision"), T::Doble},
        {QStringLiteral("Descuento"), T::Doble},       {QStringLiteral("idZona"), T::Entero, 0, true},
        {QStringLiteral("idTipoIva"), T::Entero},      {QStringLiteral("idTipoFormaPago"), T::Entero},
        {QStringLiteral("NroClienteVIP"), T::Texto, 30}, {QStringLiteral("PuntosVIP"), T::Entero}};
    static const QList<CampoDestino> proveedores = {
        {QStringLiteral("Nombre"), T::Texto, 100, true}, {QStringLiteral("RazonSocial"), T::Texto, 100},
        {QStringLiteral("Cuit"), T::Texto, 30},          {QStringLiteral("Telefono"), T::Texto, 50},
        {QStringLiteral("Telefono2"), T::Texto, 50},     {QStringLiteral("email"), T::Texto, 100},
        {QStringLiteral("Direccion"), T::Texto, 100},    {QStringLiteral("CBU"), T::Texto, 50},
        {QStringLiteral("CPostal"), T::Texto, 10},       {QStringLiteral("BancoNombre"), T::Texto, 50}};
    switch (t) {
    case TablaDestino::Articulos: return articulos;
    case TablaDestino::Vendedores: return clientes;
    case TablaDestino::Proveedores: return proveedores;
    }
    return articulos;
}

Mapeo MapeoContador(const QString& comenzarEn, const QString& incrementar, const QString& campo, const QString& mascara) {
    if (!LeeNumero(comenzarEn.trimmed()) || !LeeNumero(incrementar.trimmed()))
        throw Aviso(QStringLiteral("Error, ingrese campos numéricos!"));
    return {kMapeoContador, comenzarEn.trimmed(), campo, incrementar.trimmed(), mascara};
}

QStringList MascarasDeIngreso() {
    return {QString(), QStringLiteral("000000"), QStringLiteral("00000000"), QStringLiteral("0000000000000"),
            QStringLiteral("###,###,##0.00"), QStringLiteral("0.00"), QStringLiteral("0"), QStringLiteral("dd/mm/yyyy")};
}

std::optional<QString> NumeroDePlanilla(QStringView texto) {
    QString t;
    t.reserve(texto.size());
    for (const QChar c : texto)
        if (!c.isSpace() && c != u'$') t += c;
    if (t.isEmpty()) return std::nullopt;
    const qsizetype comas = t.count(u','), puntos = t.count(u'.');
    if (comas && puntos) {
        const QChar decimal = t.lastIndexOf(u',') > t.lastIndexOf(u'.') ? u',' : u'.';
        t.remove(decimal == u',' ? u'.' : u',');
        t.replace(decimal, u'.');
    } else if (comas == 1) {
        t.replace(u',', u'.');
    } else if (comas > 1) {
        t.remove(u',');
    } else if (puntos > 1) {
        t.remove(u'.');
    }
    if (!LeeNumero(t) || t.count(u'.') > 1) return std::nullopt;
    return t;
}

HojaLeida LeeHoja(Planilla& planilla, int hoja) {
    HojaLeida r;
    auto lector = planilla.lee(hoja);
    auto titulos = lector->siguiente();
    if (!titulos) return r;
    for (qsizetype i = 0; i < titulos->celdas.size(); ++i) {
        const QString t = titulos->celdas[i].aTexto().trimmed();
        r.titulos << (t.isEmpty() ? QStringLiteral("F%1").arg(i + 1) : t);
    }
    while (auto f = lector->siguiente()) r.filas << std::move(*f);
    return r;
}

QString LineaDeError(const ErrorImportacion& e) {
    return e.fila > 0 ? QStringLiteral("Fila %1: %2").arg(QString::number(e.fila), e.texto) : QStringLiteral("Fila agregada: ") + e.texto;
}

namespace {

QString columnaSql(const QString& nombre) { return nombre.contains(u'-') ? u'"' + nombre + u'"' : nombre; }

QVariant nulo(TipoCampo t) {
    switch (t) {
    case TipoCampo::Texto:
    case TipoCampo::Dinero: return QVariant(QMetaType(QMetaType::QString));
    case TipoCampo::Entero: return QVariant(QMetaType(QMetaType::LongLong));
    case TipoCampo::Doble: return QVariant(QMetaType(QMetaType::Double));
    case TipoCampo::Fecha: return QVariant(QMetaType(QMetaType::QDate));
    case TipoCampo::SiNo: return QVariant(QMetaType(QMetaType::Int));
    }
    return {};
}

// Un campo numérico vacío vale 0 (como en las fichas); las claves de otra tabla quedan sin valor.
bool ceroSiVacio(const CampoDestino& c) {
    return c.tipo == TipoCampo::Doble || c.tipo == TipoCampo::Dinero || c.tipo == TipoCampo::SiNo ||
           c.nombre == QLatin1StringView("PuntosVIP");
}

Aviso malEscrito(const CampoDestino& c, const Celda& celda, const char* que) {
    return Aviso(QStringLiteral("%1: \"%2\" no es %3").arg(c.nombre, celda.aTexto(), QString::fromUtf8(que)));
}

// El texto numérico de una celda ("." decimal, sin miles): el número de una celda numérica, o el
// texto leído con coma o punto decimal. `fijo`: el texto que dejó una máscara ("." decimal y ","
// de miles).
QString numeroDe(const CampoDestino& c, const Celda& celda, bool fijo) {
    if (celda.tipo == Celda::Tipo::Numero) return celda.aTexto();
    if (celda.tipo == Celda::Tipo::Texto) {
        if (fijo && LeeNumero(celda.texto.trimmed())) return celda.texto.trimmed().remove(u',');
        if (!fijo)
            if (auto n = NumeroDePlanilla(celda.texto)) return *n;
    }
    throw malEscrito(c, celda, "un número");
}

QVariant convierte(const CampoDestino& c, const Celda& celda, bool fijo) {
    if (celda.vacia()) {
        if (c.obligatorio) throw Aviso(QStringLiteral("%1 está vacío y es obligatorio").arg(c.nombre));
        return ceroSiVacio(c) ? (c.tipo == TipoCampo::Dinero ? QVariant(Dinero().aVariant()) : QVariant(0)) : nulo(c.tipo);
    }
    switch (c.tipo) {
    case TipoCampo::Texto: {
        const QString t = celda.aTexto().trimmed();
        if (c.largo > 0 && CuentaCaracteres(t) > c.largo)
            throw Aviso(QStringLiteral("%1: \"%2\" tiene más de %3 caracteres").arg(c.nombre, t, QString::number(c.largo)));
        if (t.contains(QChar(0))) throw malEscrito(c, celda, "un texto");
        return t;
    }
    case TipoCampo::Entero: {
        const auto n = LeeEntero(numeroDe(c, celda, fijo), std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
        if (!n) throw malEscrito(c, celda, "un número entero");
        return *n;
    }
    case TipoCampo::Doble: return LeeNumero(numeroDe(c, celda, fijo)).value_or(0.0);
    case TipoCampo::Dinero: {
        const auto d = Dinero::desdeTexto(numeroDe(c, celda, fijo));
        if (!d || d->diezmilesimos() / Dinero::kEscala > kImporteMaximo || -d->diezmilesimos() / Dinero::kEscala > kImporteMaximo)
            throw Aviso(QStringLiteral("%1: \"%2\" está fuera de rango").arg(c.nombre, celda.aTexto()));
        return d->aVariant();
    }
    case TipoCampo::Fecha: {
        if (celda.tipo == Celda::Tipo::Fecha) return celda.fecha;
        const auto f = celda.tipo == Celda::Tipo::Texto ? FechaDesdeTexto(celda.texto.trimmed()) : std::nullopt;
        if (!f) throw malEscrito(c, celda, "una fecha");
        return *f;
    }
    case TipoCampo::SiNo: {
        if (celda.tipo == Celda::Tipo::Numero) return celda.numero != 0 ? 1 : 0;
        const QString t = celda.aTexto().trimmed().toLower();
        static const QStringList si = {QStringLiteral("si"), QStringLiteral("sí"), QStringLiteral("s"), QStringLiteral("x"),
                                       QStringLiteral("verdadero"), QStringLiteral("true"), QStringLiteral("1"), QStringLiteral("-1")};
        static const QStringList no = {QStringLiteral("no"), QStringLiteral("n"), QStringLiteral("falso"), QStringLiteral("false"),
                                       QStringLiteral("0")};
        if (si.contains(t)) return 1;
        if (no.contains(t)) return 0;
        throw malEscrito(c, celda, "Sí ni No");
    }
    }
    return {};
}

// La máscara aplicada al valor de la celda; el resultado es texto.
Celda enmascarada(const Celda& c, const QString& mascara) {
    if (mascara.isEmpty() || c.vacia()) return c;
    switch (c.tipo) {
    case Celda::Tipo::Numero: return Celda::deTexto(Formato(QVariant(c.numero), mascara));
    case Celda::Tipo::Fecha: return Celda::deTexto(Formato(QVariant(c.fecha), mascara));
    default: {
        // Un texto que es número con coma decimal se enmascara por su valor.
        const auto n = NumeroDePlanilla(c.texto);
        return Celda::deTexto(Formato(n ? QVariant(*n) : QVariant(c.texto), mascara));
    }
    }
}

} // namespace

Importacion::Importacion(Almacen& a, TablaDestino tabla, QList<Mapeo> mapa, const HojaLeida& hoja, QString coefIva,
                         int filasPorLote)
    : a_(a), tabla_(tabla), mapa_(std::move(mapa)), filas_(hoja.filas), coefIva_(LeeCoefIva(coefIva)),
      filasPorLote_(std::max(1, filasPorLote)) {
    if (mapa_.isEmpty()) throw Aviso(QStringLiteral("La migración no tiene campos: agréguelos en el Paso 2."));
    const QList<CampoDestino>& campos = CamposDe(tabla_);
    for (const Mapeo& m : mapa_) {
        const auto campo = std::find_if(campos.begin(), campos.end(), [&](const CampoDestino& c) { return c.nombre == m.interno; });
        if (campo == campos.end())
            throw Aviso(QStringLiteral("La tabla %1 no tiene el campo \"%2\".").arg(NombreTabla(tabla_), m.interno));
        int columna = -1;
        if (m.tipo == kMapeoColumna) {
            columna = int(hoja.titulos.indexOf(m.externo.trimmed()));
            if (columna < 0) throw Aviso(QStringLiteral("La hoja no tiene la columna \"%1\".").arg(m.externo.trimmed()));
        } else if (m.tipo == kMapeoContador) {
            MapeoContador(m.externo, m.incrementador, m.interno, m.mascara);
        } else if (m.tipo != kMapeoFijo) {
            throw Aviso(QStringLiteral("Tipo de migración desconocido: \"%1\".").arg(m.tipo));
        }
        // El mismo campo dos veces: vale el último.
        const Destino d{*campo, &m, columna};
        auto previo = std::find_if(destinos_.begin(), destinos_.end(), [&](const Destino& x) { return x.campo.nombre == m.interno; });
        if (previo != destinos_.end()) *previo = d;
        else destinos_ << d;
    }
    for (const CampoDestino& c : campos)
        if (c.obligatorio && std::none_of(destinos_.begin(), destinos_.end(), [&](const Destino& d) { return d.campo.nombre == c.nombre; }))
            throw Aviso(QStringLiteral("Falta el campo %1 en la migración: es obligatorio en %2.").arg(c.nombre, NombreTabla(tabla_)));

    QStringList columnas;
    for (qsizetype i = 0; i < destinos_.size(); ++i) {
        columnas << columnaSql(destinos_[i].campo.nombre);
        if (destinos_[i].campo.nombre == QLatin1StringView("Codigo") && tabla_ == TablaDestino::Articulos) indiceCodigo_ = int(i);
        if (destinos_[i].campo.nombre == QLatin1StringView("Descripcion") && tabla_ == TablaDestino::Articulos)
            indiceDescripcion_ = int(i);
        if (destinos_[i].campo.nombre == QLatin1StringView("PrecioVenta") && tabla_ == TablaDestino::Articulos) indiceVenta_ = int(i);
        if (destinos_[i].campo.nombre == QLatin1StringView("idZona") && tabla_ == TablaDestino::Vendedores) indiceZona_ = int(i);
    }
    // Las zonas que un cliente puede tener, una vez para toda la importación.
    if (indiceZona_ >= 0) {
        QSqlQuery q = a_.consulta(QStringLiteral("SELECT idZona FROM Zonas"));
        while (q.next()) zonas_.insert(q.value(0).toLongLong());
    }
    // El precio final de un artículo es su precio de venta con el impuesto, si la hoja no lo trae.
    agregaPrecioFinal_ = indiceVenta_ >= 0 && !columnas.contains(QStringLiteral("PrecioFinal"));
    if (agregaPrecioFinal_) columnas << QStringLiteral("PrecioFinal");
    QStringList marcas;
    for (qsizetype i = 0; i < columnas.size(); ++i) marcas << QStringLiteral("?");
    insert_ = QStringLiteral("INSERT INTO %1 (%2) VALUES ").arg(NombreTabla(tabla_), columnas.join(u", "));
    marcasFila_ = u'(' + marcas.join(u", ") + u')';
}

QVariantList Importacion::valores(const FilaPlanilla& fila, qsizetype indice) const {
    QVariantList v;
    for (const Destino& d : destinos_) {
        const Mapeo& m = *d.mapeo;
        Celda celda;
        if (m.tipo == kMapeoColumna) celda = fila.celdas.value(d.columna);
        else if (m.tipo == kMapeoFijo) celda = m.externo.isEmpty() ? Celda() : Celda::deTexto(m.externo);
        else celda = Celda::deNumero(*LeeNumero(m.externo) + *LeeNumero(m.incrementador) * double(indice));
        v << convierte(d.campo, enmascarada(celda, m.mascara), !m.mascara.isEmpty());
    }
    if (agregaPrecioFinal_) {
        const Dinero precioFinal = PrecioConImpuesto(Dinero::desdeVariant(v[indiceVenta_]), coefIva_);
        if (std::llabs(precioFinal.diezmilesimos() / Dinero::kEscala) > kImporteMaximo)
            throw Aviso(QStringLiteral("PrecioFinal: el precio de venta con el impuesto está fuera de rango"));
        v << precioFinal.aVariant();
    }
    return v;
}

void Importacion::leeCodigosUsados(const QList<Convertida>& filas) {
    codigosUsados_.clear();
    if (indiceCodigo_ < 0) return;
    QSet<QString> codigos;
    for (const Convertida& c : filas)
        if (c.error.isEmpty() && !c.valores[indiceCodigo_].isNull()) codigos.insert(c.valores[indiceCodigo_].toString());
    if (codigos.isEmpty()) return;
    QSqlQuery q = a_.consulta(QStringLiteral("SELECT Codigo, COALESCE(Descripcion, '') FROM Articulos WHERE Codigo IN (") +
                                  QStringLiteral("?, ").repeated(codigos.size() - 1) + QStringLiteral("?) ORDER BY idArticulo"),
                              QVariantList(codigos.begin(), codigos.end()));
    while (q.next()) // vale el primer artículo que lo usa
        if (!codigosUsados_.contains(q.value(0).toString())) codigosUsados_.insert(q.value(0).toString(), q.value(1).toString());
}

QString Importacion::rechazo(const QVariantList& v) const {
    if (indiceCodigo_ >= 0 && !v[indiceCodigo_].isNull()) {
        const auto otro = codigosUsados_.constFind(v[indiceCodigo_].toString());
        if (otro != codigosUsados_.constEnd())
            return QStringLiteral("el código %1 ya es del artículo \"%2\"; no se importó").arg(otro.key(), otro.value());
    }
    if (indiceZona_ >= 0 && !zonas_.contains(v[indiceZona_].toLongLong()))
        return QStringLiteral("la zona %1 no existe").arg(v[indiceZona_].toString());
    return {};
}

void Importacion::ocupa(const QVariantList& v) {
    if (indiceCodigo_ >= 0 && !v[indiceCodigo_].isNull())
        codigosUsados_.insert(v[indiceCodigo_].toString(), indiceDescripcion_ >= 0 ? v[indiceDescripcion_].toString() : QString());
    ++importadas_;
}

void Importacion::insertaJuntas(const QList<QVariantList>& filas) {
    // Cien filas por sentencia: pocas idas y vueltas, y siempre lejos del tope de parámetros.
    constexpr qsizetype kFilasPorSentencia = 100;
    for (qsizetype desde = 0; desde < filas.size(); desde += kFilasPorSentencia) {
        const qsizetype n = std::min(kFilasPorSentencia, filas.size() - desde);
        QVariantList parametros;
        for (qsizetype i = desde; i < desde + n; ++i) parametros += filas[i];
        a_.ejecuta(insert_ + (marcasFila_ + QStringLiteral(", ")).repeated(n - 1) + marcasFila_, parametros);
    }
}

void Importacion::loteFila(qsizetype desde, qsizetype hasta, bool filaPorFila) {
    Transaccion t(a_);
    // 1. Cada fila convertida, o lo que tiene mal.
    QList<Convertida> filas;
    for (qsizetype i = desde; i < hasta; ++i) {
        Convertida c{filas_[i].numero, {}, {}};
        try {
            c.valores = valores(filas_[i], i);
        } catch (const Aviso& e) {
            c.error = e.texto();
        }
        filas << c;
    }
    // 2. Los códigos de estas filas que el almacén ya tiene, en una lectura.
    leeCodigosUsados(filas);
    // 3. En el orden de la hoja: la que no pasa se informa; una fila anterior también ocupa su código.
    QList<QVariantList> aceptadas;
    for (Convertida& c : filas) {
        if (c.error.isEmpty()) c.error = rechazo(c.valores);
        if (!c.error.isEmpty()) {
            errores_ << ErrorImportacion{c.fila, c.error};
            continue;
        }
        if (!filaPorFila) {
            aceptadas << c.valores;
            ocupa(c.valores);
            continue;
        }
        // Después de una falla del almacén, cada fila en su punto de guardado: la que falla se
        // informa con lo que dijo el almacén y las demás entran.
        try {
            Transaccion unaFila(a_);
            a_.ejecuta(insert_ + marcasFila_, c.valores);
            unaFila.confirmar();
            ocupa(c.valores);
        } catch (const ErrorAlmacen& e) {
            errores_ << ErrorImportacion{c.fila, QStringLiteral("el almacén no la aceptó: %1").arg(e.descripcion())};
        }
    }
    // 4. Las aceptadas, juntas.
    insertaJuntas(aceptadas);
    t.confirmar();
}

bool Importacion::avanza() {
    if (terminada()) return false;
    const qsizetype hasta = std::min(siguiente_ + filasPorLote_, filas_.size());
    const int importadasAntes = importadas_;
    const qsizetype erroresAntes = errores_.size();
    try {
        loteFila(siguiente_, hasta, false);
    } catch (const ErrorAlmacen&) {
        // El lote se deshizo entero: se repite fila por fila.
        importadas_ = importadasAntes;
        errores_.resize(erroresAntes);
        loteFila(siguiente_, hasta, true);
    }
    siguiente_ = hasta;
    return true;
}

} // namespace orv
