// Datos de ejemplo, en los dos motores.

#include "apoyo/base_prueba.h"

#include "maintenance/datos_ejemplo.h"
#include "store/actualizacion.h"
#include "store/aviso.h"
#include "store/cuit.h"
#include "store/dinero.h"

#include <QRegularExpression>
#include <QSet>
#include <QSqlQuery>

using namespace orv;
using namespace orv::prueba;

namespace {

const QDateTime kAhora(QDate(2024, 6, 14), QTime(10, 30));

// Importe leído del almacén, en diezmilésimos.
qint64 diezmilesimos(const QVariant& v) { return Dinero::desdeVariant(v).diezmilesimos(); }

bool eanValido(const QString& ean) {
    static const QRegularExpression trece(QStringLiteral("^\\d{13}$"));
    if (!trece.match(ean).hasMatch()) return false;
    int suma = 0;
    for (int i = 0; i < 12; ++i) suma += (ean[i].unicode() - '0') * (i % 2 ? 3 : 1);
    return (10 - suma % 10) % 10 == ean[12].unicode() - '0';
}

bool cbuValido(const QString& cbu) {
    static const QRegularExpression veintidos(QStringLiteral("^\\d{22}$"));
    if (!veintidos.match(cbu).hasMatch()) return false;
    const auto bloque = [&cbu](int desde, int largo, const std::vector<int>& pesos) {
        int suma = 0;
        for (int i = 0; i < largo; ++i) suma += (cbu[desde + i].unicode() - '0') * pesos[size_t(i)];
        return (10 - suma % 10) % 10 == cbu[desde + largo].unicode() - '0';
    };
    return bloque(0, 7, {7, 1, 3, 9, 7, 1, 3}) && bloque(8, 13, {3, 9, 7, 1, 3, 9, 7, 1, 3, 9, 7, 1, 3});
}

qint64 cuenta(Almacen& a, const char* sql, const QVariantList& p = {}) {
    return a.valor(QString::fromUtf8(sql), p).toLongLong();
}

// Huella de lo que cargan los datos de ejemplo, para ver que una carga rechazada no tocó nada.
QString huella(Almacen& a) {
    QString h;
    for (const char* t : {"Articulos", "Rubros", "Vendedores", "Proveedores", "Zonas", "Localidades",
                          "TiposDeComprobantes", "TipoDeIva", "FormasDePago"})
        h += QStringLiteral("%1=%2;").arg(QString::fromUtf8(t)).arg(
            a.valor(QStringLiteral("SELECT count(*) FROM ") + QString::fromUtf8(t)).toLongLong());
    QSqlQuery q = a.consulta(QStringLiteral("SELECT Tipo, Letra, Correlativo, NombrePlantilla FROM TiposDeComprobantes "
                                            "ORDER BY idTipoComprobante"));
    while (q.next())
        h += q.value(0).toString() + q.value(1).toString() + q.value(2).toString() + q.value(3).toString() + QLatin1Char(';');
    return h;
}

class DatosEjemplo : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (IsSkipped()) return;
        actualizaEsquema(almacen());
    }
    RelojFijo reloj_{kAhora};
};
ORV_AMBOS_MOTORES(DatosEjemplo);

TEST_P(DatosEjemplo, ArticulosConCodigoEanYPreciosExactos) {
    Almacen& a = almacen();
    cargaDatosEjemplo(a, reloj_);

    QSet<QString> codigos;
    QSet<QString> barras;
    int enFalta = 0;
    int materiasPrimas = 0;
    QSqlQuery q = a.consulta(QStringLiteral(
        "SELECT Articulos.Codigo, Articulos.idRubro, Articulos.CgoProveedor, Articulos.PrecioCosto, "
        "Articulos.PrecioVenta, Articulos.PrecioFinal, Articulos.UtilidadPorcentaje, Articulos.StockActual, "
        "Articulos.StockMinimo, Articulos.esMateriaPrima, Proveedores.idProveedor, Rubros.idRubro "
        "FROM (Articulos LEFT JOIN Proveedores ON Articulos.IdProveedor = Proveedores.idProveedor) "
        "LEFT JOIN Rubros ON Articulos.idRubro = Rubros.idRubro"));
    static const QRegularExpression seis(QStringLiteral("^\\d{6}$"));
    int porBarras = 0;
    while (q.next()) {
        // El código es el interno (rubro y número) o el de barras del paquete.
        const QString codigo = q.value(0).toString();
        const QString ean = q.value(2).toString();
        if (codigo == ean) {
            ++porBarras;
        } else {
            EXPECT_TRUE(seis.match(codigo).hasMatch()) << qPrintable(codigo);
            EXPECT_EQ(codigo.left(2).toInt(), q.value(1).toInt()) << "el código empieza por el rubro: " << qPrintable(codigo);
        }
        EXPECT_FALSE(codigos.contains(codigo)) << "código repetido " << qPrintable(codigo);
        codigos << codigo;

        EXPECT_TRUE(eanValido(ean)) << qPrintable(ean);
        EXPECT_TRUE(ean.startsWith(QLatin1String("779"))) << qPrintable(ean);
        EXPECT_FALSE(barras.contains(ean)) << "código de barras repetido " << qPrintable(ean);
        barras << ean;

        EXPECT_FALSE(q.value(10).isNull()) << "proveedor inexistente en " << qPrintable(codigo);
        EXPECT_FALSE(q.value(11).isNull()) << "rubro inexistente en " << qPrintable(codigo);

        // Venta = costo × (1 + utilidad) al centavo; final = venta × 1,21 sin redondeo.
        const qint64 costo = diezmilesimos(q.value(3));
        const qint64 venta = diezmilesimos(q.value(4));
        const qint64 final_ = diezmilesimos(q.value(5));
        const double margen = q.value(6).toDouble();
        EXPECT_GT(costo, 0);
        EXPECT_EQ(venta % 100, 0) << "venta con más de dos decimales en " << qPrintable(codigo);
        EXPECT_NEAR(double(venta), double(costo) * (1.0 + margen / 100.0), 50.0) << qPrintable(codigo);
        EXPECT_GT(venta, costo);
        EXPECT_EQ(final_ * 100, venta * 121) << qPrintable(codigo);

        EXPECT_GE(q.value(7).toDouble(), 0.0);
        EXPECT_GT(q.value(8).toDouble(), 0.0);
        if (q.value(7).toDouble() <= q.value(8).toDouble()) ++enFalta;
        if (q.value(9).toInt() != 0) ++materiasPrimas;
    }
    EXPECT_EQ(codigos.size(), 300);
    EXPECT_GT(enFalta, 0) << "el informe de faltantes debería tener algo que mostrar";
    EXPECT_LT(enFalta, 100);
    EXPECT_GT(materiasPrimas, 0);
}

TEST_P(DatosEjemplo, ClientesYProveedoresConClavesValidas) {
    Almacen& a = almacen();
    cargaDatosEjemplo(a, reloj_);

    // Todos tienen zona, así aparecen en el panel de clientes.
    EXPECT_EQ(cuenta(a, "SELECT count(*) FROM Zonas INNER JOIN Vendedores ON Zonas.idZona = Vendedores.idZona"), 41);
    EXPECT_EQ(cuenta(a, "SELECT count(*) FROM Vendedores WHERE PuntosVIP <> 0"), 0);
    EXPECT_EQ(cuenta(a, "SELECT count(*) FROM Vendedores LEFT JOIN FormasDePago "
                        "ON Vendedores.idTipoFormaPago = FormasDePago.idTipoFormaPago "
                        "WHERE Vendedores.idVendedor <> 1 AND FormasDePago.idTipoFormaPago IS NULL"),
              0);
    EXPECT_GE(cuenta(a, "SELECT count(*) FROM Vendedores INNER JOIN FormasDePago "
                        "ON Vendedores.idTipoFormaPago = FormasDePago.idTipoFormaPago WHERE FormaPago = 'CTA CTE'"),
              5);

    int inscriptos = 0;
    QSqlQuery q = a.consulta(QStringLiteral(
        "SELECT Vendedores.Nombre, Vendedores.Cuit, TipoDeIva.TipoIva FROM Vendedores "
        "INNER JOIN TipoDeIva ON Vendedores.idTipoIva = TipoDeIva.idTipoIva WHERE Vendedores.idVendedor <> 1"));
    int clientes = 0;
    while (q.next()) {
        ++clientes;
        if (q.value(2).toString() == QLatin1String("Consumidor Final")) continue;
        ++inscriptos;
        EXPECT_TRUE(CuitValido(q.value(1).toString()))
            << qPrintable(q.value(0).toString()) << " " << qPrintable(q.value(1).toString());
    }
    EXPECT_EQ(clientes, 40) << "cada cliente con una situación de IVA existente";
    EXPECT_GE(inscriptos, 10);

    // Tarjetas VIP: numéricas, de 6 a 8 cifras, sin repetir (la venta las reconoce así).
    static const QRegularExpression tarjeta(QStringLiteral("^\\d{6,8}$"));
    QSet<QString> tarjetas;
    QSqlQuery v = a.consulta(QStringLiteral("SELECT NroClienteVIP FROM Vendedores WHERE NroClienteVIP IS NOT NULL "
                                            "AND NroClienteVIP <> ''"));
    while (v.next()) {
        const QString t = v.value(0).toString();
        EXPECT_TRUE(tarjeta.match(t).hasMatch()) << qPrintable(t);
        tarjetas << t;
    }
    EXPECT_EQ(tarjetas.size(), 15);

    QSqlQuery p = a.consulta(QStringLiteral("SELECT RazonSocial, Cuit, CBU, BancoNombre FROM Proveedores"));
    while (p.next()) {
        EXPECT_FALSE(p.value(0).toString().isEmpty());
        EXPECT_TRUE(CuitValido(p.value(1).toString())) << qPrintable(p.value(1).toString());
        EXPECT_TRUE(cbuValido(p.value(2).toString())) << qPrintable(p.value(2).toString());
        EXPECT_FALSE(p.value(3).toString().isEmpty());
    }
}

TEST_P(DatosEjemplo, SiempreLosMismosDatos) {
    AlmacenDePrueba otro(GetParam());
    actualizaEsquema(otro.almacen());
    cargaDatosEjemplo(almacen(), reloj_);
    cargaDatosEjemplo(otro.almacen(), reloj_);
    const auto volcado = [](Almacen& a) {
        QStringList filas;
        QSqlQuery q = a.consulta(QStringLiteral(
            "SELECT Codigo, Descripcion, CgoProveedor, PrecioVenta, StockActual FROM Articulos ORDER BY Codigo"));
        while (q.next())
            filas << q.value(0).toString() + q.value(1).toString() + q.value(2).toString() +
                         QString::number(diezmilesimos(q.value(3))) + q.value(4).toString();
        QSqlQuery c = a.consulta(QStringLiteral("SELECT Nombre, Cuit, NroClienteVIP FROM Vendedores ORDER BY idVendedor"));
        while (c.next()) filas << c.value(0).toString() + c.value(1).toString() + c.value(2).toString();
        return filas;
    };
    EXPECT_EQ(volcado(almacen()), volcado(otro.almacen()));
}

TEST_P(DatosEjemplo, SegundaCargaSeNiegaYNoCambiaNada) {
    Almacen& a = almacen();
    cargaDatosEjemplo(a, reloj_);
    const QString antes = huella(a);
    try {
        cargaDatosEjemplo(a, reloj_);
        FAIL() << "la segunda carga debía negarse";
    } catch (const Aviso& e) {
        EXPECT_EQ(e.texto(), QStringLiteral("El almacén ya tiene datos: los datos de ejemplo sólo se cargan en un almacén nuevo."));
        EXPECT_EQ(e.titulo(), QStringLiteral("Atención"));
        EXPECT_EQ(e.icono(), Icono::Exclamacion);
    }
    EXPECT_EQ(huella(a), antes);
    EXPECT_EQ(a.profundidadTransaccion(), 0);
}

TEST_P(DatosEjemplo, UnClienteDeMasBastaParaNegarse) {
    Almacen& a = almacen();
    a.ejecuta(QStringLiteral("INSERT INTO Vendedores (Nombre, idZona) VALUES (?, 1)"), {QStringLiteral("D'Angelo")});
    const QString antes = huella(a);
    EXPECT_THROW(cargaDatosEjemplo(a, reloj_), Aviso);
    EXPECT_EQ(huella(a), antes);
    EXPECT_EQ(cuenta(a, "SELECT count(*) FROM Articulos"), 0);
}

TEST_P(DatosEjemplo, UnaFallaAMitadDeCargaNoDejaNada) {
    Almacen& a = almacen();
    // Sin la tabla de localidades la carga falla después de escribir proveedores y artículos.
    a.ejecuta(QStringLiteral("DROP TABLE Localidades"));
    EXPECT_THROW(cargaDatosEjemplo(a, reloj_), ErrorAlmacen);
    EXPECT_EQ(cuenta(a, "SELECT count(*) FROM Articulos"), 0);
    EXPECT_EQ(cuenta(a, "SELECT count(*) FROM Proveedores"), 0);
    EXPECT_EQ(cuenta(a, "SELECT count(*) FROM Rubros"), 0);
    EXPECT_EQ(a.profundidadTransaccion(), 0);
}

} // namespace
