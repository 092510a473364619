#include "apoyo/base_prueba.h"
#include "store/entrada.h"

#include <optional>
#include <vector>

using namespace orv;

namespace {

// Lo que sale de leer un texto: el valor o nada, con las tres lecturas lado a lado.
struct Lectura {
    const char* texto;
    std::optional<double> numero;
    std::optional<qint64> entero; // entre -1e12 y 1e12
    std::optional<QString> importe;
};

bool operator==(const Lectura& a, const Lectura& b) {
    return QString::fromUtf8(a.texto) == QString::fromUtf8(b.texto) && a.numero == b.numero &&
           a.entero == b.entero && a.importe == b.importe;
}

std::ostream& operator<<(std::ostream& os, const Lectura& l) {
    const auto o = [&os](const auto& v) -> std::ostream& {
        if (v) return os << *v;
        return os << "-";
    };
    os << '"' << l.texto << "\" ";
    o(l.numero) << ' ';
    o(l.entero) << ' ';
    return os << (l.importe ? l.importe->toStdString() : std::string("-"));
}

Lectura lee(const char* texto) {
    const QString t = QString::fromUtf8(texto);
    const auto imp = LeeImporte(t);
    return {texto, LeeNumero(t), LeeEntero(t, -1'000'000'000'000, 1'000'000'000'000),
            imp ? std::optional<QString>(imp->aTexto()) : std::nullopt};
}

} // namespace

TEST(Entrada, LeeLoQueSeEscribeSinAdivinar) {
    const std::nullopt_t no = std::nullopt;
    const std::vector<Lectura> esperado = {
        {"12", 12.0, 12, QStringLiteral("12.0000")},
        {"-3", -3.0, -3, QStringLiteral("-3.0000")},
        {"1,234", 1234.0, 1234, QStringLiteral("1234.0000")},
        {"1,234,567.5", 1234567.5, no, QStringLiteral("1234567.5000")},
        {"0.1", 0.1, no, QStringLiteral("0.1000")},
        // La coma decimal es ambigua: nunca se toma por 1 ni por 15.
        {"1,5", no, no, no},
        {"12,34", no, no, no},
        {"1234,567", no, no, no},
        {",123", no, no, no},
        {"abc", no, no, no},
        {"", no, no, no},
        {"12abc", no, no, no},
        // Un exponente es un número, pero no un entero escrito con cifras ni un importe que quepa.
        {"1e3", 1000.0, no, QStringLiteral("1000.0000")},
        {"1e300", 1e300, no, no},
        {"1e400", no, no, no},
        // Veinte cifras no dan la vuelta a un negativo.
        {"99999999999999999999", 1e20, no, no},
        {"922337203685477", 922337203685477.0, no, QStringLiteral("922337203685477.0000")},
        {"1000000000001", 1000000000001.0, no, QStringLiteral("1000000000001.0000")},
    };
    std::vector<Lectura> visto;
    for (const auto& e : esperado) visto.push_back(lee(e.texto));
    EXPECT_EQ(visto, esperado);
}

TEST(Entrada, LosCamposRechazanConElNombreDelCampo) {
    struct Caso {
        const char* texto;
        std::function<void(const QString&)> lectura;
        QString mensaje; // vacío: se acepta
    };
    const QString malEscrito =
        QStringLiteral("Cantidad: el número está mal escrito. Use el punto para los decimales (1234.50).");
    const QString fuera = QStringLiteral("Cantidad: Importe fuera de rango!");
    const auto cantidad = [](const QString& t) { ExigeCantidad(t, QStringLiteral("Cantidad")); };
    const auto importe = [](const QString& t) { ExigeImporte(t, QStringLiteral("Cantidad")); };
    const auto porcentaje = [](const QString& t) { ExigePorcentaje(t, QStringLiteral("Cantidad")); };
    const auto correlativo = [](const QString& t) { ExigeEntero(t, QStringLiteral("Cantidad"), 0, 2147483647); };
    const std::vector<Caso> casos = {
        {"2.5", cantidad, {}},
        {"4006381333931", cantidad, fuera}, // un código de barras en la cantidad
        {"1e300", cantidad, fuera},
        {"abc", cantidad, malEscrito},
        {"999999999999", importe, {}},
        {"1000000000000", importe, fuera},
        {"922337203685477", importe, fuera},
        {"-922337203685478", importe, fuera},
        {"1,5", porcentaje, malEscrito},
        {"1.5", porcentaje, {}},
        {"1001", porcentaje, fuera},
        {"1e3", correlativo, {}},
        {"1e300", correlativo, fuera},
        {"99999999999999999999", correlativo, fuera},
        {"-1", correlativo, fuera},
        {"2.5", correlativo, QStringLiteral("Cantidad: debe ser un número entero.")},
    };
    for (const auto& c : casos) {
        QString visto;
        try {
            c.lectura(QString::fromUtf8(c.texto));
        } catch (const Aviso& a) {
            visto = a.texto();
        }
        EXPECT_EQ(visto, c.mensaje) << c.texto;
    }
}

TEST(Entrada, TextosCortadosEnLetrasEnteras) {
    const QString e = QStringLiteral("e\u0301");          // é hecha de dos puntos de código
    const QString cara = QString::fromUtf8("\xF0\x9F\x98\x80"); // un emoji: dos unidades, un carácter
    struct Caso {
        QString texto;
        int maximo;
        QString esperado;
    };
    const std::vector<Caso> casos = {
        {QStringLiteral("CAFE"), 3, QStringLiteral("CAF")},
        {QStringLiteral("CAF") + e, 4, QStringLiteral("CAF")}, // no deja la e sin su acento
        {QStringLiteral("CAF") + e, 5, QStringLiteral("CAF") + e},
        {QStringLiteral("AB") + cara, 3, QStringLiteral("AB") + cara},
        {QStringLiteral("ABC") + cara, 3, QStringLiteral("ABC")},
        {QStringLiteral("AB") + cara + cara, 3, QStringLiteral("AB") + cara},
        {QStringLiteral("AB"), 0, QString()},
    };
    for (const auto& c : casos) EXPECT_EQ(CortaTexto(c.texto, c.maximo), c.esperado) << c.texto.toStdString();

    // Los límites se cuentan igual que en el servidor, y un nulo nunca llega al almacén.
    EXPECT_NO_THROW(ExigeTexto(QStringLiteral("AB") + cara, 3, QStringLiteral("Nombre")));
    EXPECT_THROW(ExigeTexto(QStringLiteral("ABC") + cara, 3, QStringLiteral("Nombre")), Aviso);
    EXPECT_THROW(ExigeTexto(QStringLiteral("A") + QChar(u'\0'), 3, QStringLiteral("Nombre")), Aviso);
}
