// Lectura de lo que se escribe en un campo: número, entero acotado, importe y texto, sin adivinar.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "store/entrada.h"

#include <functional>
#include <vector>

using namespace orv;

namespace {

// Las tres lecturas de un texto lado a lado: número, entero entre -1e12 y 1e12, importe; "-" es nada.
std::string lee(const char* texto) {
    const QString t = QString::fromUtf8(texto);
    const auto numero = LeeNumero(t);
    const auto entero = LeeEntero(t, -1'000'000'000'000, 1'000'000'000'000);
    const auto importe = LeeImporte(t);
    return QStringLiteral("%1: %2 %3 %4")
        .arg(t, numero ? QString::number(*numero, 'g', 15) : "-", entero ? QString::number(*entero) : "-",
             importe ? importe->aTexto() : "-")
        .toStdString();
}

} // namespace

TEST(Entrada, LeeLoQueSeEscribeSinAdivinar) {
    const std::vector<std::string> esperado = {
        "12: 12 12 12.0000", "-3: -3 -3 -3.0000", "1,234: 1234 1234 1234.0000",
        "1,234,567.5: 1234567.5 - 1234567.5000", "0.1: 0.1 - 0.1000",
        // La coma decimal es ambigua: nunca se toma por 1 ni por 15.
        "1,5: - - -", "12,34: - - -", "1234,567: - - -", ",123: - - -", "abc: - - -", ": - - -", "12abc: - - -",
        // Un exponente es un número, pero no un entero escrito con cifras ni un importe que no cabe.
        "1e3: 1000 - 1000.0000", "1e300: 1e+300 - -", "1e400: - - -",
        // Veinte cifras no dan la vuelta a un negativo.
        "99999999999999999999: 1e+20 - -", "922337203685477: 922337203685477 - 922337203685477.0000",
        "1000000000001: 1000000000001 - 1000000000001.0000",
    };
    std::vector<std::string> visto;
    for (const std::string& e : esperado) visto.push_back(lee(e.substr(0, e.find(": ")).c_str()));
    EXPECT_EQ(visto, esperado);
}

TEST(Entrada, LosCamposRechazanConElNombreDelCampo) {
    const QString malEscrito = "Cantidad: el número está mal escrito. Use el punto para los decimales (1234.50).";
    const QString fuera = "Cantidad: Importe fuera de rango!";
    using Lectura = std::function<void(const QString&)>;
    const Lectura cantidad = [](const QString& t) { ExigeCantidad(t, "Cantidad"); };
    const Lectura importe = [](const QString& t) { ExigeImporte(t, "Cantidad"); };
    const Lectura porcentaje = [](const QString& t) { ExigePorcentaje(t, "Cantidad"); };
    const Lectura correlativo = [](const QString& t) { ExigeEntero(t, "Cantidad", 0, 2147483647); };
    const struct {
        const char* texto;
        const Lectura& lectura;
        QString mensaje; // vacío: se acepta
    } casos[] = {
        {"2.5", cantidad, {}},
        {"4006381333931", cantidad, fuera}, // un código de barras en la cantidad
        {"1e300", cantidad, fuera},           {"abc", cantidad, malEscrito},
        {"999999999999", importe, {}},        {"1000000000000", importe, fuera},
        {"922337203685477", importe, fuera},  {"-922337203685478", importe, fuera},
        {"1,5", porcentaje, malEscrito},      {"1.5", porcentaje, {}},
        {"1001", porcentaje, fuera},          {"1e3", correlativo, {}},
        {"1e300", correlativo, fuera},        {"99999999999999999999", correlativo, fuera},
        {"-1", correlativo, fuera},           {"2.5", correlativo, "Cantidad: debe ser un número entero."},
    };
    for (const auto& c : casos) {
        QString visto;
        try {
            c.lectura(QString::fromUtf8(c.texto));
        } catch (const Aviso& a) {
            visto = a.texto();
        }
        EXPECT_EQ(visto.toStdString(), c.mensaje.toStdString()) << c.texto;
    }
}

TEST(Entrada, TextosCortadosEnLetrasEnteras) {
    const QString e = QStringLiteral("e\u0301");          // é hecha de dos puntos de código
    const QString cara = QString::fromUtf8("\xF0\x9F\x98\x80"); // un emoji: dos unidades, un carácter
    const struct {
        QString texto;
        int maximo;
        QString esperado;
    } casos[] = {
        {"CAFE", 3, "CAF"},
        {"CAF" + e, 4, "CAF"}, // no deja la e sin su acento
        {"CAF" + e, 5, "CAF" + e},
        {"AB" + cara, 3, "AB" + cara},
        {"ABC" + cara, 3, "ABC"},
        {"AB" + cara + cara, 3, "AB" + cara},
        {"AB", 0, ""},
    };
    for (const auto& c : casos) EXPECT_EQ(CortaTexto(c.texto, c.maximo), c.esperado) << c.texto.toStdString();

    // Los límites se cuentan igual que en el servidor, y un nulo nunca llega al almacén.
    EXPECT_NO_THROW(ExigeTexto("AB" + cara, 3, "Nombre"));
    EXPECT_THROW(ExigeTexto("ABC" + cara, 3, "Nombre"), Aviso);
    EXPECT_THROW(ExigeTexto(QStringLiteral("A") + QChar(u'\0'), 3, "Nombre"), Aviso);
}
