#include "reports/informe.h"

#include "reports/exporta.h"
#include "reports/tablas.h"
#include "store/aviso.h"
#include "store/dinero.h"
#include "store/formato.h"
#include "store/letras.h"

#include <QAbstractTextDocumentLayout>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTextDocument>
#include <QTextDocumentWriter>
#include <kainjow/mustache.hpp>
#include <optional>

namespace orv {

namespace mu = kainjow::mustache;

namespace {

Aviso errorPlantilla(const QString& ruta) {
    return Aviso(QStringLiteral("Error en la lectura de la plantilla : ") + ruta);
}

QStringList lista(const QString& texto) {
    QStringList r;
    for (const QString& p : texto.split(u',', Qt::SkipEmptyParts)) r << p.trimmed();
    return r;
}

std::string u8(const QString& s) { return s.toStdString(); }

bool contieneSinMayusculas(const QStringList& l, const QString& s) {
    for (const QString& x : l)
        if (x.compare(s, Qt::CaseInsensitive) == 0) return true;
    return false;
}

QString consulta(const DefinicionInforme& d, const Seleccion& s) {
    QString sql = QStringLiteral("SELECT * FROM (") + d.fuente + QStringLiteral(") AS q");
    if (!s.condicion.trimmed().isEmpty()) sql += QStringLiteral(" WHERE ") + s.condicion;
    if (!d.orden.isEmpty()) sql += QStringLiteral(" ORDER BY ") + d.orden;
    return sql;
}

QString texto(const QVariant& v, bool esMoneda, const QString& mascara) {
    if (v.isNull()) return {};
    if (esMoneda) return FormatoMoneda(Dinero::desdeVariant(v), mascara);
    if (v.typeId() == QMetaType::Double) return QString::number(v.toDouble(), 'g', 15);
    // Las fechas, también las que SQLite devuelve como texto ISO.
    if (const auto f = FechaGuardadaTexto(v)) return *f;
    return v.toString();
}

mu::data siNo(bool v) { return v ? mu::data::type::bool_true : mu::data::type::bool_false; }

// El negocio que emite, de la primera fila de Empresa: emisor.<campo> y emisor.hay_<campo>. El
// domicilio junta la dirección y el código postal.
mu::data emisor(const Almacen& a, QString& nombre) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT NombreEmpresa, NombreFantasia, Direccion, CgoPostal, Telefono, email, web, "
                                            "Cuit, CondicionIva, InicioActividades FROM Empresa ORDER BY idEmpresa"));
    const bool hay = q.next();
    const auto campo = [&](int c) { return hay ? texto(q.value(c), false, QString()).trimmed() : QString(); };
    nombre = campo(0);
    QString domicilio = campo(2);
    if (!campo(3).isEmpty()) domicilio += QStringLiteral(" (") + campo(3) + u')';
    const std::pair<const char*, QString> campos[] = {
        {"nombre", nombre},        {"fantasia", campo(1)},     {"domicilio", domicilio},
        {"telefono", campo(4)},    {"email", campo(5)},        {"web", campo(6)},
        {"cuit", campo(7)},        {"condicionIva", campo(8)}, {"inicioActividades", campo(9)},
    };
    mu::data e;
    for (const auto& [clave, valor] : campos) {
        e.set(clave, u8(valor));
        e.set(std::string("hay_") + clave, siNo(!valor.isEmpty()));
    }
    return e;
}

} // namespace

DefinicionInforme LeeDefinicion(const QString& ruta) {
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly)) throw errorPlantilla(ruta);
    const QString todo = QString::fromUtf8(f.readAll());
    const QString inicio = todo.trimmed();
    if (!inicio.startsWith(QStringLiteral("{{!"))) throw errorPlantilla(ruta);
    const qsizetype fin = inicio.indexOf(QStringLiteral("}}"));
    if (fin < 0) throw errorPlantilla(ruta);
    DefinicionInforme d;
    d.ruta = ruta;
    d.plantilla = inicio.mid(fin + 2);
    // Cabecera: "clave: valor"; un valor puede seguir en las líneas siguientes (la fuente).
    QString clave;
    QMap<QString, QString> valores;
    for (const QString& linea : inicio.mid(3, fin - 3).split(u'\n')) {
        static const QRegularExpression kv(QStringLiteral("^\\s*([a-zA-Záéíóú]+)\\s*:\\s*(.*)$"));
        const auto m = kv.match(linea);
        if (m.hasMatch()) {
            clave = m.captured(1).toLower();
            valores[clave] = m.captured(2).trimmed();
        } else if (!clave.isEmpty() && !linea.trimmed().isEmpty()) {
            valores[clave] += u' ' + linea.trimmed();
        }
    }
    d.fuente = valores.value(QStringLiteral("fuente"));
    if (d.fuente.isEmpty()) throw errorPlantilla(ruta);
    d.titulo = valores.value(QStringLiteral("titulo"));
    d.orden = valores.value(QStringLiteral("orden"));
    d.moneda = lista(valores.value(QStringLiteral("moneda")));
    d.totales = lista(valores.value(QStringLiteral("totales")));
    d.letras = lista(valores.value(QStringLiteral("letras")));
    d.grupo = valores.value(QStringLiteral("grupo"));
    d.saldo = lista(valores.value(QStringLiteral("saldo")));
    d.encabezado = valores.value(QStringLiteral("encabezado")).compare(QStringLiteral("no"), Qt::CaseInsensitive) != 0;
    d.horizontal = valores.value(QStringLiteral("orientacion")).compare(QStringLiteral("horizontal"), Qt::CaseInsensitive) == 0;
    const QString pagina = valores.value(QStringLiteral("pagina")).toLower();
    d.pagina = pagina == QStringLiteral("carta") ? QPageSize::Letter
             : pagina == QStringLiteral("oficio") ? QPageSize::Legal
                                                   : QPageSize::A4;
    return d;
}

QStringList CarpetasDeInformes(const QString& carpetaDatos) {
    QStringList r;
    if (!carpetaDatos.isEmpty()) r << QDir(carpetaDatos).filePath(QStringLiteral("reportes"));
    const QString programa = QCoreApplication::applicationDirPath();
    r << QDir(programa).filePath(QStringLiteral("reportes"));
#ifdef ORVANTA_REPORTES_FUENTE
    r << QStringLiteral(ORVANTA_REPORTES_FUENTE);
#endif
    return r;
}

QString BuscaDefinicion(const QString& nombre, const QString& carpetaDatos) {
    if (QFileInfo(nombre).isAbsolute()) return QFileInfo::exists(nombre) ? nombre : QString();
    for (const QString& c : CarpetasDeInformes(carpetaDatos)) {
        const QString ruta = QDir(c).filePath(nombre);
        if (QFileInfo::exists(ruta)) return ruta;
    }
    return {};
}

InformeArmado ArmaInforme(const Almacen& a, const DefinicionInforme& d, const Seleccion& s, const QString& mascaraMoneda,
                          const QDateTime& ahora) {
    InformeArmado inf;
    inf.titulo = d.titulo;
    inf.periodo = s.periodo;
    inf.emitido = Formato(QVariant(ahora), QStringLiteral("dd/mm/yyyy hh:nn"));
    inf.horizontal = d.horizontal;
    inf.encabezado = d.encabezado;
    inf.pagina = d.pagina;
    const mu::data datosEmisor = emisor(a, inf.empresa);

    QSqlQuery q = a.consulta(consulta(d, s), s.parametros);
    const QSqlRecord campos = q.record();
    // Nombre de cada campo como lo escribe la definición ({{Detalles}}): PostgreSQL los da en
    // minúsculas y SQLite como los escribió la consulta.
    QVector<QStringList> alias(campos.count());
    static const QRegularExpression marca(QStringLiteral("\\{\\{[{&]?\\s*([A-Za-z_][A-Za-z0-9_]*)\\s*\\}?\\}\\}"));
    for (auto it = marca.globalMatch(d.plantilla); it.hasNext();) {
        const QString n = it.next().captured(1);
        for (int c = 0; c < campos.count(); ++c)
            if (campos.fieldName(c).compare(n, Qt::CaseInsensitive) == 0 && !alias[c].contains(n)) alias[c] << n;
    }
    // Grupos: filas seguidas con el mismo valor del campo de grupo (la definición ordena por él).
    const int colGrupo = d.grupo.isEmpty() ? -1 : campos.indexOf(d.grupo);
    if (!d.grupo.isEmpty() && colGrupo < 0) throw errorPlantilla(d.ruta);
    const auto montoDe = [&](const QString& campo) -> Dinero {
        const int c = campos.indexOf(campo);
        return c < 0 ? Dinero() : Dinero::desdeVariant(q.value(c));
    };
    const auto totalesDe = [&](const QMap<QString, Dinero>& s) {
        mu::data t;
        for (const QString& n : d.totales) t.set(u8(n), u8(FormatoMoneda(s.value(n), mascaraMoneda)));
        return t;
    };
    QMap<QString, Dinero> sumas;
    mu::data filas{mu::data::type::list};
    mu::data grupos{mu::data::type::list};
    std::optional<mu::data> primera;
    std::optional<mu::data> grupo; // el grupo en curso
    mu::data filasGrupo{mu::data::type::list};
    QMap<QString, Dinero> sumasGrupo;
    qint64 cantidadGrupo = 0;
    QVariant valorGrupo;
    Dinero saldo = s.saldoInicial;
    const auto cierraGrupo = [&]() {
        if (!grupo) return;
        grupo->set("filas", filasGrupo);
        grupo->set("cantidad", std::to_string(cantidadGrupo));
        grupo->set("uno", siNo(cantidadGrupo == 1));
        grupo->set("totales", totalesDe(sumasGrupo));
        grupo->set("saldo", u8(FormatoMoneda(saldo, mascaraMoneda)));
        grupos.push_back(*grupo);
        grupo.reset();
        filasGrupo = mu::data{mu::data::type::list};
        sumasGrupo.clear();
        cantidadGrupo = 0;
    };
    while (q.next()) {
        const bool nuevoGrupo = colGrupo >= 0 && (inf.filas == 0 || q.value(colGrupo) != valorGrupo);
        if (nuevoGrupo) {
            cierraGrupo();
            valorGrupo = q.value(colGrupo);
            saldo = s.saldoInicial;
        }
        if (!d.saldo.isEmpty()) {
            saldo += montoDe(d.saldo.value(0));
            if (d.saldo.size() > 1) saldo -= montoDe(d.saldo.value(1));
        }
        mu::data fila;
        for (int c = 0; c < campos.count(); ++c) {
            const QString nombre = campos.fieldName(c);
            const bool esMoneda = contieneSinMayusculas(d.moneda, nombre);
            const QString t = texto(q.value(c), esMoneda, mascaraMoneda);
            const std::string valor = u8(t);
            const auto hay = t.trimmed().isEmpty() ? mu::data::type::bool_false : mu::data::type::bool_true;
            fila.set(u8(nombre), valor);
            fila.set(u8(QStringLiteral("hay_") + nombre), hay);
            for (const QString& n : alias[c]) {
                fila.set(u8(n), valor);
                fila.set(u8(QStringLiteral("hay_") + n), hay);
            }
            for (const QString& l : d.letras)
                if (l.compare(nombre, Qt::CaseInsensitive) == 0)
                    fila.set(u8(l + QStringLiteral("EnLetras")), u8(ImporteEnLetras(Dinero::desdeVariant(q.value(c)))));
            for (const QString& t : d.totales)
                if (t.compare(nombre, Qt::CaseInsensitive) == 0) {
                    const Dinero m = Dinero::desdeVariant(q.value(c));
                    sumas[t] += m;
                    sumasGrupo[t] += m;
                }
        }
        if (!d.saldo.isEmpty()) fila.set("saldo", u8(FormatoMoneda(saldo, mascaraMoneda)));
        fila.set("par", (colGrupo >= 0 ? cantidadGrupo : inf.filas) % 2 == 1 ? mu::data::type::bool_true
                                                                              : mu::data::type::bool_false);
        if (inf.filas == 0) primera.emplace(fila);
        if (nuevoGrupo) {
            // El grupo lleva los campos de su primera fila (para el título: {{grupo}}, la cuenta...).
            grupo.emplace(fila);
            grupo->set("grupo", u8(texto(valorGrupo, contieneSinMayusculas(d.moneda, d.grupo), mascaraMoneda)));
        }
        if (colGrupo >= 0) filasGrupo.push_back(fila);
        filas.push_back(fila);
        ++inf.filas;
        ++cantidadGrupo;
    }
    cierraGrupo();
    const mu::data totales = totalesDe(sumas);
    mu::data parametros;
    for (auto it = s.parametrosInforme.cbegin(); it != s.parametrosInforme.cend(); ++it)
        parametros.set(u8(it.key()), u8(it.value()));

    mu::data contexto;
    contexto.set("empresa", u8(inf.empresa));
    contexto.set("emisor", datosEmisor);
    contexto.set("titulo", u8(inf.titulo));
    contexto.set("periodo", u8(inf.periodo));
    contexto.set("emitido", u8(inf.emitido));
    contexto.set("filas", filas);
    contexto.set("grupos", grupos);
    if (primera) contexto.set("primera", *primera);
    contexto.set("hayFilas", inf.filas > 0 ? mu::data::type::bool_true : mu::data::type::bool_false);
    contexto.set("cantidad", std::to_string(inf.filas));
    contexto.set("uno", siNo(inf.filas == 1));
    contexto.set("totales", totales);
    contexto.set("parametros", parametros);

    mu::mustache plantilla(u8(d.plantilla));
    if (!plantilla.is_valid()) throw errorPlantilla(d.ruta);
    inf.cuerpo = QString::fromStdString(plantilla.render(contexto));
    return inf;
}

namespace {

QFont conTamanio(QFont f, qreal puntos, bool negrita = false) {
    f.setPointSizeF(puntos);
    f.setBold(negrita);
    return f;
}

// Empresa, título y período arriba, con una línea debajo.
void pintaEncabezado(QPainter& p, const InformeArmado& inf, const QRectF& zona, qreal dpi, const QFont& base) {
    const qreal tercio = zona.height() / 3;
    p.setFont(conTamanio(base, 7.5));
    p.drawText(QRectF(0, 0, zona.width(), tercio), Qt::AlignLeft | Qt::AlignVCenter, inf.empresa);
    p.setFont(conTamanio(base, 12, true));
    p.drawText(QRectF(0, tercio, zona.width(), tercio), Qt::AlignLeft | Qt::AlignVCenter, inf.titulo);
    p.setFont(conTamanio(base, 7.5));
    p.drawText(QRectF(0, 2 * tercio, zona.width(), tercio - dpi * 0.05), Qt::AlignLeft | Qt::AlignVCenter, inf.periodo);
    p.setPen(QPen(Qt::darkGray, dpi / 100.0));
    p.drawLine(QPointF(0, zona.bottom() - dpi * 0.04), QPointF(zona.width(), zona.bottom() - dpi * 0.04));
    p.setPen(Qt::black);
}

// Una línea y debajo la fecha de emisión a la izquierda y el número de página a la derecha.
void pintaPie(QPainter& p, const InformeArmado& inf, const QRectF& zona, qreal dpi, const QFont& base,
              const QString& pagina) {
    p.setPen(QPen(Qt::darkGray, dpi / 100.0));
    p.drawLine(QPointF(0, zona.top() + dpi * 0.04), QPointF(zona.width(), zona.top() + dpi * 0.04));
    p.setPen(Qt::black);
    p.setFont(conTamanio(base, 7.5));
    const QRectF renglon(0, zona.top() + dpi * 0.06, zona.width(), zona.height());
    p.drawText(renglon, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Emitido el ") + inf.emitido);
    p.drawText(renglon, Qt::AlignRight | Qt::AlignVCenter, pagina);
}

} // namespace

int PintaInforme(const InformeArmado& inf, QPagedPaintDevice& dispositivo) {
    dispositivo.setPageSize(QPageSize(inf.pagina));
    dispositivo.setPageOrientation(inf.horizontal ? QPageLayout::Landscape : QPageLayout::Portrait);
    dispositivo.setPageMargins(QMarginsF(15, 12, 15, 12), QPageLayout::Millimeter);
    QPainter p(&dispositivo);
    const QRectF hoja = QRectF(0, 0, dispositivo.width(), dispositivo.height());
    const qreal dpi = dispositivo.logicalDpiY();
    const qreal alto = inf.encabezado ? dpi * 0.55 : 0.0; // encabezado
    const qreal altoPie = dpi * 0.3; // pie

    QFont base(QStringLiteral("DejaVu Sans"));
    base.setPointSizeF(9);
    // Sin ligaduras: "fi" y "fl" quedan como dos letras en el texto del PDF, y una búsqueda de
    // "fino" o "flete" los encuentra.
    base.setStyleStrategy(QFont::PreferNoShaping);
    const QRectF cuerpo(0, alto, hoja.width(), hoja.height() - alto - altoPie);
    // Las listas hechas de tablas simples se dibujan directo (rápido aun con miles de filas, y con
    // el encabezado de la tabla en cada página); lo demás, con el maquetado de documentos.
    const std::optional<QVector<BloqueSimple>> simples = AnalizaCuerpoSimple(inf.cuerpo);
    std::optional<PaginasSimples> directo;
    QTextDocument doc;
    if (simples) {
        directo.emplace(*simples, base, &dispositivo, cuerpo.width(), cuerpo.height());
    } else {
        doc.documentLayout()->setPaintDevice(&dispositivo); // medidas de letras del dispositivo, no de la pantalla
        doc.setDocumentMargin(0);
        doc.setDefaultFont(base);
        doc.setHtml(inf.cuerpo);
        doc.setPageSize(cuerpo.size());
    }
    const int paginas = directo ? directo->paginas() : qMax(1, doc.pageCount());

    for (int n = 0; n < paginas; ++n) {
        if (n > 0) dispositivo.newPage();
        if (inf.encabezado) pintaEncabezado(p, inf, QRectF(0, 0, hoja.width(), alto), dpi, base);
        // Cuerpo: la porción de la página n.
        if (directo) {
            directo->dibuja(p, n, QPointF(0, alto));
        } else {
            p.save();
            p.translate(0, alto);
            const qreal arriba = n * doc.pageSize().height();
            p.translate(0, -arriba);
            QAbstractTextDocumentLayout::PaintContext ctx;
            ctx.clip = QRectF(0, arriba, doc.pageSize().width(), doc.pageSize().height());
            p.setClipRect(ctx.clip);
            doc.documentLayout()->draw(&p, ctx);
            p.restore();
        }
        pintaPie(p, inf, QRectF(0, hoja.height() - altoPie, hoja.width(), altoPie), dpi, base,
                 QStringLiteral("Página %1 de %2").arg(n + 1).arg(paginas));
    }
    return paginas;
}

int GuardaInforme(Almacen& a, const DefinicionInforme& d, const Seleccion& s, const QString& mascaraMoneda,
                  const QDateTime& ahora, const QString& archivo) {
    const QString ext = QFileInfo(archivo).suffix().toLower();
    if (ext == QStringLiteral("csv") || ext == QStringLiteral("xlsx")) {
        const qint64 n = ext == QStringLiteral("csv") ? ExportaCSV(a, consulta(d, s), s.parametros, {}, archivo)
                                                       : ExportaXLSX(a, consulta(d, s), s.parametros, {}, archivo);
        return int(n);
    }
    const InformeArmado inf = ArmaInforme(a, d, s, mascaraMoneda, ahora);
    if (ext == QStringLiteral("pdf")) {
        QPdfWriter pdf(archivo);
        pdf.setResolution(300);
        pdf.setTitle(inf.titulo);
        pdf.setCreator(QStringLiteral("Orvanta"));
        const int paginas = PintaInforme(inf, pdf);
        if (!QFileInfo::exists(archivo)) throw Aviso(QStringLiteral("No se pudo escribir el archivo ") + archivo);
        return paginas;
    }
    const QString html = QStringLiteral("<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>") +
                         inf.titulo.toHtmlEscaped() + QStringLiteral("</title></head><body>\n<p>") +
                         inf.empresa.toHtmlEscaped() + QStringLiteral("</p>\n<h1>") + inf.titulo.toHtmlEscaped() +
                         QStringLiteral("</h1>\n<p>") + inf.periodo.toHtmlEscaped() + QStringLiteral("</p>\n") +
                         inf.cuerpo + QStringLiteral("\n<p>Emitido el ") + inf.emitido.toHtmlEscaped() +
                         QStringLiteral("</p></body></html>\n");
    if (ext == QStringLiteral("html") || ext == QStringLiteral("htm")) {
        QSaveFile f(archivo);
        if (!f.open(QIODevice::WriteOnly) || f.write(html.toUtf8()) < 0 || !f.commit())
            throw Aviso(QStringLiteral("No se pudo escribir el archivo ") + archivo);
        return int(inf.filas);
    }
    if (ext == QStringLiteral("odt")) {
        QTextDocument doc;
        doc.setHtml(html);
        QTextDocumentWriter w(archivo, "odf");
        if (!w.write(&doc)) throw Aviso(QStringLiteral("No se pudo escribir el archivo ") + archivo);
        return int(inf.filas);
    }
    throw Aviso(QStringLiteral("Tipo de archivo no admitido: ") + archivo);
}

} // namespace orv
