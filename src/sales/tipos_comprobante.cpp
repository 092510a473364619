#include "sales/tipos_comprobante.h"

#include "store/aviso.h"
#include "store/entrada.h"
#include "store/formato.h"

#include <QSqlQuery>
#include <limits>

namespace orv {

namespace {
constexpr qint64 kCorrelativoMaximo = 2147483647; // lo que guarda la columna
} // namespace

QString NumeroMostrado(const QString& letra, const QString& puntoDeVenta, qint64 numero) {
    return letra + u' ' + puntoDeVenta + u'-' + QStringLiteral("%1").arg(numero, 8, 10, QLatin1Char('0'));
}

QString ProximoNumeroMostrado(const Almacen& a, qint64 idTipoComprobante) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Letra, PuntoDeVenta, Correlativo FROM TiposDeComprobantes "
                                            "WHERE idTipoComprobante = ?"),
                             {idTipoComprobante});
    if (!q.next()) return {};
    return NumeroMostrado(q.value(0).toString(), q.value(1).toString(), q.value(2).toLongLong() + 1);
}

std::optional<qint64> TipoComprobantePredeterminado(const Almacen& a, const Configuracion& conf) {
    const QString guardado = conf.lee(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado"));
    // Un número guardado que no es un entero razonable se toma como si no hubiera ninguno.
    if (const auto id = LeeEntero(guardado, 1, std::numeric_limits<qint32>::max())) return *id;
    const QVariant primero =
        a.valor(QStringLiteral("SELECT idTipoComprobante FROM TiposDeComprobantes ORDER BY idTipoComprobante"));
    if (primero.isNull()) return std::nullopt;
    conf.graba(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado"), primero.toString());
    return primero.toLongLong();
}

QString NumeroGuardado(const QString& letra, const QString& puntoDeVenta, qint64 numero) {
    return CortaTexto(letra + puntoDeVenta + u'-' + QStringLiteral("%1").arg(numero, 8, 10, QLatin1Char('0')), 15);
}

std::optional<TipoComprobante> LeeTipo(const Almacen& a, qint64 idTipoComprobante) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Tipo, Letra, PuntoDeVenta, Correlativo, DescuentaStock, RegistraCaja, "
                                            "OperacionInversa, EsComercial, NombrePlantilla, ModDocumento "
                                            "FROM TiposDeComprobantes WHERE idTipoComprobante = ?"),
                             {idTipoComprobante});
    if (!q.next()) return std::nullopt;
    TipoComprobante t;
    t.tipo = q.value(0).toString();
    t.letra = q.value(1).toString();
    t.puntoDeVenta = q.value(2).toString();
    t.correlativo = QString::number(q.value(3).toLongLong());
    t.correlativoLeido = q.value(3).toLongLong();
    t.descuentaStock = q.value(4).toInt() != 0;
    t.registraCaja = q.value(5).toInt() != 0;
    t.operacionInversa = q.value(6).toInt() != 0;
    t.esComercial = q.value(7).toInt() != 0;
    t.plantilla = q.value(8).toString();
    t.modDocumento = q.value(9).isNull() ? QString() : QString::number(q.value(9).toInt());
    return t;
}

void ValidaTipo(const TipoComprobante& t) {
    if (t.tipo.trimmed().isEmpty() || t.letra.trimmed().isEmpty() || t.puntoDeVenta.trimmed().isEmpty() ||
        t.plantilla == kSinPlantilla || !EsNumerico(QStringView(t.correlativo)))
        throw Aviso(QStringLiteral("Error, ingrese la información correctamente!"));
    ExigeTexto(t.tipo, 40, QStringLiteral("Tipo"));
    ExigeEntero(t.correlativo, QStringLiteral("Correlativo"), 0, kCorrelativoMaximo);
}

qint64 GuardaTipo(Almacen& a, std::optional<qint64> idTipoComprobante, const TipoComprobante& t) {
    ValidaTipo(t);
    const QString mod = t.modDocumento.trimmed();
    const int modDocumento = int(LeeEntero(mod.left(3), -99, 999).value_or(0));
    const qint64 correlativo = ExigeEntero(t.correlativo, QStringLiteral("Correlativo"), 0, kCorrelativoMaximo);
    QVariantList valores{t.tipo,
                               CortaTexto(t.letra.trimmed(), 1),
                               CortaTexto(t.puntoDeVenta.trimmed(), 4),
                               correlativo,
                               t.descuentaStock ? 1 : 0,
                               t.registraCaja ? 1 : 0,
                               t.plantilla,
                               t.operacionInversa ? 1 : 0,
                               t.esComercial ? 1 : 0,
                               modDocumento};
    if (!idTipoComprobante)
        return a.inserta(QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, Correlativo, "
                                        "DescuentaStock, RegistraCaja, NombrePlantilla, OperacionInversa, EsComercial, "
                                        "ModDocumento) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                         valores, QStringLiteral("idTipoComprobante"));
    // El número se toca sólo si el usuario lo cambió, y con la condición de que siga como se leyó.
    const bool cambiaNumero = !t.correlativoLeido || *t.correlativoLeido != correlativo;
    const qint64 leido = t.correlativoLeido.value_or(0);
    valores[3] = cambiaNumero ? 1 : 0;
    QVariantList p = valores;
    p.insert(4, correlativo);
    p << *idTipoComprobante << (cambiaNumero && t.correlativoLeido ? 1 : 0) << leido;
    if (a.ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET Tipo = ?, Letra = ?, PuntoDeVenta = ?, "
                                 "Correlativo = CASE WHEN ? = 1 THEN ? ELSE Correlativo END, "
                                 "DescuentaStock = ?, RegistraCaja = ?, NombrePlantilla = ?, OperacionInversa = ?, "
                                 "EsComercial = ?, ModDocumento = ? WHERE idTipoComprobante = ? "
                                 "AND (? = 0 OR COALESCE(Correlativo, 0) = ?)"),
                  p) > 0)
        return *idTipoComprobante;
    const QVariant ahora =
        a.valor(QStringLiteral("SELECT COALESCE(Correlativo, 0) FROM TiposDeComprobantes WHERE idTipoComprobante = ?"),
                {*idTipoComprobante});
    if (!ahora.isValid() || ahora.isNull()) throw Aviso(QStringLiteral("No encontrado!!"));
    throw AvisoAtencion(QStringLiteral("Otro puesto registró un comprobante de este tipo mientras lo editaba: el último "
                                       "número es ahora %1. No se guardó nada; revise el número y vuelva a guardar.")
                            .arg(ahora.toLongLong()));
}

void BorraTipo(Almacen& a, qint64 idTipoComprobante) {
    a.ejecuta(QStringLiteral("DELETE FROM TiposDeComprobantes WHERE idTipoComprobante = ?"), {idTipoComprobante});
}

EsquemaImpresion EsquemaDe(const QString& plantilla) {
    const QString p = plantilla.left(16);
    if (p == QStringLiteral("IMPRESORA FISCAL")) return EsquemaImpresion::Fiscal;
    if (p == QStringLiteral("IMPRESORA TICKET")) return EsquemaImpresion::Tickets;
    return EsquemaImpresion::Plantilla;
}

const QStringList& ModelosHasar() {
    static const QStringList m = {QStringLiteral("262"),  QStringLiteral("614"),  QStringLiteral("615 - PL8F"),
                                  QStringLiteral("950"),  QStringLiteral("951"),  QStringLiteral("P320"),
                                  QStringLiteral("PJ20"), QStringLiteral("PR4")};
    return m;
}

const QStringList& DocumentosFiscales() {
    static const QStringList d = {
        QStringLiteral("48 - Factura A"),   QStringLiteral("49 - Factura B"),   QStringLiteral("82 - N.CREDITO A"),
        QStringLiteral("43 - N.CREDITO B"), QStringLiteral("68 - N.DEBITO A"),  QStringLiteral("69 - N.DEBITO B"),
        QStringLiteral("97 - RECIBO A"),    QStringLiteral("98 - RECIBO B"),    QStringLiteral("120- RECIBO X"),
        QStringLiteral("114- REMITO"),      QStringLiteral("117- PRESUPUESTOS")};
    return d;
}

QString TextoModeloFiscal(ModeloFiscal m, const QString& itemHasar) {
    switch (m) {
    case ModeloFiscal::EpsonTMU: return QStringLiteral("EPSON TMU2000AF");
    case ModeloFiscal::Epson200: return QStringLiteral("EPSON 200 80 COL");
    case ModeloFiscal::Hasar: return QStringLiteral("HASAR O COMPAT. ") + itemHasar;
    }
    return {};
}

QString PlantillaFiscal(const QString& textoModelo, const QString& puerto) {
    return QStringLiteral("IMPRESORA FISCAL : ") + textoModelo + QStringLiteral("|PUERTO : ") + puerto;
}

LecturaFiscal LeePlantillaFiscal(const QString& plantilla) {
    LecturaFiscal l;
    if (plantilla.contains(QStringLiteral("TMU"))) {
        l.modelo = ModeloFiscal::EpsonTMU;
    } else if (plantilla.contains(QStringLiteral("80 COL"))) {
        l.modelo = ModeloFiscal::Epson200;
    } else {
        l.modelo = ModeloFiscal::Hasar;
        // Lo que queda entre "IMPRESORA FISCAL : HASAR O COMPAT. " (35) y "|PUERTO : n" (11).
        if (plantilla.size() >= 47) l.itemHasar = plantilla.mid(35, plantilla.size() - 46);
    }
    if (!plantilla.isEmpty() && plantilla.back().isDigit()) l.puerto = plantilla.back();
    return l;
}

QString PlantillaTickets(const QString& puerto) { return QStringLiteral("IMPRESORA TICKETS PUERTO : ") + puerto; }

} // namespace orv
