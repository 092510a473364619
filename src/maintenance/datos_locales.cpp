#include "maintenance/datos_locales.h"

#include "store/cuit.h"
#include "store/entrada.h"
#include "store/rutinas.h"

#include <QSqlQuery>
#include <limits>

namespace orv {

namespace {

const QString kPais = QStringLiteral("Pais");
const QString kMascara = QStringLiteral("MascaraMoneda");
const QString kClaveImpositiva = QStringLiteral("ClaveImpositiva");
const QString kCoefIva = QStringLiteral("CoefIva");
const QString kCifrasRubro = QStringLiteral("NroCifrasRubro");
const QString kCifrasArticulo = QStringLiteral("NroCifrasArticulo");
const QString kFormaVip = QStringLiteral("FormaCalculoVIP");

// Largo de cada columna de Empresa (esquema_tablas.cpp).
constexpr int kLargoNombre = 100, kLargoPostal = 20, kLargoTelefono = 50, kLargoCuit = 30, kLargoCondicion = 50;

QStringList desdeUtf8(std::initializer_list<const char*> textos) {
    QStringList r;
    r.reserve(qsizetype(textos.size()));
    for (const char* t : textos) r << QString::fromUtf8(t);
    return r;
}

// Los números de la balanza se escriben como enteros; vacío deja el de omisión.
void exigeCifrasBalanza(const QString& texto, const QString& campo, qint64 maximo) {
    if (!texto.trimmed().isEmpty()) ExigeEntero(texto.trimmed(), campo, 0, maximo);
}

void controlaBalanza(const TextosBalanza& t) {
    exigeCifrasBalanza(t.cifrasCodigo, QStringLiteral("Balanza, cifras del código"), 12);
    exigeCifrasBalanza(t.cifrasValor, QStringLiteral("Balanza, cifras del valor"), 12);
    exigeCifrasBalanza(t.decimales, QStringLiteral("Balanza, decimales"), 12);
    const ConfBalanza c = InterpretaBalanza(t);
    if (!c.problema.isEmpty()) throw Aviso(QStringLiteral("Balanza: ") + c.problema + QLatin1Char('.'));
}

void controlaNegocio(const DatosNegocio& n, const QString& claveImpositiva) {
    const struct {
        const QString& texto;
        int largo;
        const char* campo;
    } textos[] = {{n.nombreEmpresa, kLargoNombre, "Nombre de la empresa"},
                  {n.nombreFantasia, kLargoNombre, "Nombre de fantasía"},
                  {n.direccion, kLargoNombre, "Dirección"},
                  {n.cgoPostal, kLargoPostal, "Código postal"},
                  {n.telefono, kLargoTelefono, "Teléfono"},
                  {n.email, kLargoNombre, "E-Mail"},
                  {n.web, kLargoNombre, "Web"},
                  {n.cuit, kLargoCuit, "Clave fiscal del negocio"},
                  {n.condicionIva, kLargoCondicion, "Condición frente al IVA"}};
    for (const auto& t : textos) ExigeTexto(t.texto, t.largo, QString::fromUtf8(t.campo));
    const QString cuit = n.cuit.trimmed();
    if (claveImpositiva.compare(QStringLiteral("CUIT"), Qt::CaseInsensitive) == 0 && !cuit.isEmpty() && !CuitValido(cuit))
        throw Aviso(QStringLiteral("Error, el CUIT ") + cuit + QStringLiteral(" del negocio no es válido: revise sus cifras!"));
}

QVariant textoONulo(const QString& t) { return t.isEmpty() ? QVariant(QMetaType(QMetaType::QString)) : QVariant(t); }

qint64 grabaNegocio(Almacen& a, const DatosNegocio& n) {
    Transaccion t(a);
    // La primera fila, tomada hasta confirmar: dos puestos que aceptan a la vez no agregan dos.
    const QVariant id = a.valor(QStringLiteral("SELECT idEmpresa FROM Empresa ORDER BY idEmpresa LIMIT 1") + TomaFilas(a));
    const QVariantList valores = {textoONulo(n.nombreEmpresa), textoONulo(n.nombreFantasia), textoONulo(n.direccion),
                                  textoONulo(n.cgoPostal),     textoONulo(n.telefono),       textoONulo(n.email),
                                  textoONulo(n.web),           textoONulo(n.cuit.trimmed()), textoONulo(n.condicionIva),
                                  n.inicioActividades.isValid() ? QVariant(n.inicioActividades) : QVariant(QMetaType(QMetaType::QDate))};
    qint64 resultado = 0;
    if (id.isNull()) {
        resultado = a.inserta(QStringLiteral("INSERT INTO Empresa (NombreEmpresa, NombreFantasia, Direccion, CgoPostal, Telefono, "
                                             "email, web, Cuit, CondicionIva, InicioActividades) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
                              valores, QStringLiteral("idEmpresa"));
    } else {
        resultado = id.toLongLong();
        a.ejecuta(QStringLiteral("UPDATE Empresa SET NombreEmpresa = ?, NombreFantasia = ?, Direccion = ?, CgoPostal = ?, "
                                 "Telefono = ?, email = ?, web = ?, Cuit = ?, CondicionIva = ?, InicioActividades = ? "
                                 "WHERE idEmpresa = ?"),
                  valores + QVariantList{resultado});
    }
    t.confirmar();
    return resultado;
}

} // namespace

const QStringList& Paises() {
    static const QStringList lista = desdeUtf8({
        "ARGENTINA", "ESPAÑA", "CHILE", "BRAZIL", "COLOMBIA", "PARAGUAY", "PERU", "BOLIVIA", "VENEZUELA", "ECUADOR",
        "REPUBLICA DOMINICANA", "HONDURAS", "CUBA", "COSTA RICA", "EL SALVADOR", "GUATEMALA", "NICARAGUA", "PANAMA",
        "URUGUAY", "ITALY", "UNITED STATES", "MEXICO", "AFGHANISTAN", "ALBANIA", "ALGERIA", "AMERICAN SAMOA", "ANDORRA",
        "ANGOLA", "ANGUILLA", "ANTARCTICA", "ANTIGUA AND BARBUDA", "ARMENIA", "ARUBA", "AUSTRALIA", "AUSTRIA",
        "AZERBAIJAN", "BAHAMAS", "BAHRAIN", "BANGLADESH", "BARBADOS", "BELARUS", "BELGIUM", "BELIZE", "BENIN",
        "BERMUDA", "BHUTAN", "BOSNIA AND HERZEGOVINA", "BOTSWANA", "BOUVET ISLAND", "BRITISH INDIAN OCEAN TERRITORY",
        "BRUNEI DARUSSALAM", "BULGARIA", "BURKINA FASO", "BURUNDI", "CAMBODIA", "CAMEROON", "CANADA", "CAPE VERDE",
        "CAYMAN ISLANDS", "CENTRAL AFRICAN REPUBLIC", "CHAD", "CHINA", "CHRISTMAS ISLAND", "COCOS (KEELING) ISLANDS",
        "COMOROS", "CONGO", "CONGO, DEMOCRATIC REPUBLIC", "COOK ISLANDS", "COTE D'IVOIRE", "CROATIA", "CURACAO",
        "CYPRUS", "CZECH REPUBLIC", "DENMARK", "DJIBOUTI", "DOMINICA", "EAST TIMOR", "EGYPT", "EQUATORIAL GUINEA",
        "ERITREA", "ESTONIA", "ETHIOPIA", "FALKLAND ISLANDS (MALVINAS)", "FAROE ISLANDS", "FIJI", "FINLAND", "FRANCE",
        "FRENCH GUIANA", "FRENCH POLYNESIA", "FRENCH SOUTHERN TERRITORIES", "GABON", "GAMBIA", "GEORGIA", "GERMANY",
        "GHANA", "GIBRALTAR", "GREECE", "GREENLAND", "GRENADA", "GUADELOUPE", "GUAM", "GUERNSEY", "GUINEA",
        "GUINEA-BISSAU", "GUYANA", "HAITI", "HEARD AND MCDONALD ISLANDS", "HONG KONG", "HUNGARY", "ICELAND", "INDIA",
        "INDONESIA", "IRAN", "IRAQ", "IRELAND", "ISLE OF MAN", "ISRAEL", "JAMAICA", "JAPAN", "JERSEY", "JORDAN",
        "KAZAKHSTAN", "KENYA", "KIRIBATI", "KOREA, NORTH", "KOREA, SOUTH", "KOSOVO", "KUWAIT", "KYRGYZSTAN", "LAOS",
        "LATVIA", "LEBANON", "LESOTHO", "LIBERIA", "LIBYA", "LIECHTENSTEIN", "LITHUANIA", "LUXEMBOURG", "MACAO",
        "MACEDONIA", "MADAGASCAR", "MALAWI", "MALAYSIA", "MALDIVES", "MALI", "MALTA", "MARSHALL ISLANDS", "MARTINIQUE",
        "MAURITANIA", "MAURITIUS", "MAYOTTE", "MICRONESIA", "MOLDOVA", "MONACO", "MONGOLIA", "MONTENEGRO", "MONTSERRAT",
        "MOROCCO", "MOZAMBIQUE", "MYANMAR", "NAMIBIA", "NAURU", "NEPAL", "NETHERLANDS", "NEW CALEDONIA", "NEW ZEALAND",
        "NIGER", "NIGERIA", "NIUE", "NORFOLK ISLAND", "NORTHERN MARIANA ISLANDS", "NORWAY", "OMAN", "PAKISTAN", "PALAU",
        "PALESTINE", "PAPUA NEW GUINEA", "PHILIPPINES", "PITCAIRN", "POLAND", "PORTUGAL", "PUERTO RICO", "QATAR",
        "REUNION", "ROMANIA", "RUSSIAN FEDERATION", "RWANDA", "SAINT BARTHELEMY", "SAINT HELENA", "SAINT KITTS AND NEVIS",
        "SAINT LUCIA", "SAINT MARTIN", "SAINT PIERRE AND MIQUELON", "SAINT VINCENT AND THE GRENADINES", "SAMOA",
        "SAN MARINO", "SAO TOME AND PRINCIPE", "SAUDI ARABIA", "SENEGAL", "SERBIA", "SEYCHELLES", "SIERRA LEONE",
        "SINGAPORE", "SINT MAARTEN", "SLOVAKIA", "SLOVENIA", "SOLOMON ISLANDS", "SOMALIA", "SOUTH AFRICA",
        "SOUTH GEORGIA AND SOUTH SANDWICH ISLANDS", "SOUTH SUDAN", "SRI LANKA", "SUDAN", "SURINAME",
        "SVALBARD AND JAN MAYEN", "SWAZILAND", "SWEDEN", "SWITZERLAND", "SYRIA", "TAIWAN", "TAJIKISTAN", "TANZANIA",
        "THAILAND", "TOGO", "TOKELAU", "TONGA", "TRINIDAD AND TOBAGO", "TUNISIA", "TURKEY", "TURKMENISTAN",
        "TURKS AND CAICOS ISLANDS", "TUVALU", "UGANDA", "UKRAINE", "UNITED ARAB EMIRATES", "UNITED KINGDOM",
        "UNITED STATES MINOR OUTLYING ISLANDS", "UZBEKISTAN", "VANUATU", "VATICAN CITY STATE", "VIET NAM",
        "VIRGIN ISLANDS (BRITISH)", "VIRGIN ISLANDS (U.S.)", "WALLIS AND FUTUNA", "WESTERN SAHARA", "YEMEN", "ZAMBIA",
        "ZIMBABWE",
    });
    return lista;
}

const QStringList& MascarasMoneda() {
    static const QStringList lista = {QStringLiteral("###,###,##0.00"), QStringLiteral("###,###,##0.000"),
                                      QStringLiteral("###,###,##0.0"), QStringLiteral("###,###,##0"),
                                      QStringLiteral("##########0.00"), QStringLiteral("##########0")};
    return lista;
}

const QStringList& ClavesImpositivas() {
    static const QStringList lista = {QStringLiteral("CUIT"), QStringLiteral("RUT"), QStringLiteral("RUC"),
                                      QStringLiteral("NIF"),  QStringLiteral("CIF"), QStringLiteral("RFC"),
                                      QStringLiteral("NIT"),  QStringLiteral("RIF"), QStringLiteral("CPF"),
                                      QStringLiteral("CNPJ"), QStringLiteral("RTN"), QStringLiteral("RNC")};
    return lista;
}

ValoresLocales LeeValoresLocales(const Configuracion& conf) {
    const auto lee = [&](const QString& clave) { return conf.lee(clave::miscelaneas, clave); };
    ValoresLocales v{lee(kPais), lee(kMascara), lee(kClaveImpositiva), lee(kCoefIva), lee(kCifrasRubro), lee(kCifrasArticulo),
                     true, LeeTextosBalanza(conf)};
    if (!LeeNumero(v.coefIva.trimmed())) v.coefIva.clear();
    const QString vip = lee(kFormaVip);
    v.vipPorPeso = vip.isEmpty() || vip == QStringLiteral("P");
    return v;
}

DatosNegocio LeeDatosNegocio(const Almacen& a) {
    QSqlQuery q = a.consulta(QStringLiteral("SELECT idEmpresa, NombreEmpresa, NombreFantasia, Direccion, CgoPostal, Telefono, email, "
                                            "web, Cuit, CondicionIva, InicioActividades FROM Empresa ORDER BY idEmpresa LIMIT 1"));
    DatosNegocio n;
    if (!q.next()) return n;
    n = {q.value(0).toLongLong(), q.value(1).toString(), q.value(2).toString(), q.value(3).toString(), q.value(4).toString(),
         q.value(5).toString(), q.value(6).toString(), q.value(7).toString(), q.value(8).toString(), q.value(9).toString(),
         q.value(10).toDate()};
    return n;
}

qint64 GrabaDatosLocales(Almacen& a, const Configuracion& conf, const ValoresLocales& v, const DatosNegocio& n) {
    // 1. Todo se controla antes de escribir nada.
    const auto cifras = [](const QString& t) {
        const auto c = LeeEntero(t.trimmed(), 1, kCifrasMaximas);
        if (!c) throw Aviso(kMensajeCifras, QStringLiteral("Error"), Icono::Stop);
        return QString::number(*c);
    };
    const QString cifrasRubro = cifras(v.cifrasRubro);
    const QString cifrasArticulo = cifras(v.cifrasArticulo);
    const QString coefIva = v.coefIva.trimmed();
    if (!coefIva.isEmpty()) ExigePorcentaje(coefIva, QStringLiteral("Impuesto (IVA %)"));
    controlaBalanza(v.balanza);
    controlaNegocio(n, v.claveImpositiva.isEmpty() ? conf.lee(clave::miscelaneas, kClaveImpositiva) : v.claveImpositiva);

    // 2. El negocio.
    const qint64 id = grabaNegocio(a, n);

    // 3. La configuración.
    const auto graba = [&](const QString& clave, const QString& valor) { conf.graba(clave::miscelaneas, clave, valor); };
    graba(kCifrasRubro, cifrasRubro);
    graba(kCifrasArticulo, cifrasArticulo);
    if (!v.pais.isEmpty()) graba(kPais, v.pais);
    if (!v.mascaraMoneda.isEmpty()) graba(kMascara, v.mascaraMoneda);
    if (!v.claveImpositiva.isEmpty()) graba(kClaveImpositiva, v.claveImpositiva);
    graba(kFormaVip, v.vipPorPeso ? QStringLiteral("P") : QStringLiteral("C"));
    graba(kCoefIva, coefIva);
    TextosBalanza b = v.balanza;
    for (QString* t : {&b.prefijos, &b.cifrasCodigo, &b.cifrasValor, &b.valor, &b.decimales}) *t = t->trimmed();
    GrabaTextosBalanza(conf, b);
    return id;
}

qint32 GrabaIdRed(const Configuracion& conf, const QString& texto) {
    const auto id = LeeEntero(texto.trimmed(), std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
    if (!id) throw Aviso(kMensajeIdRed, QStringLiteral("Error"), Icono::Stop);
    conf.graba(clave::miscelaneas, QStringLiteral("IdRed"), QString::number(*id));
    return qint32(*id);
}

} // namespace orv
