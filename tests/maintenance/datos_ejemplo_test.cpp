// Datos de ejemplo, en los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"

#include "maintenance/datos_ejemplo.h"
#include "sales/balanza.h"
#include "store/actualizacion.h"
#include "store/aviso.h"
#include "store/dinero.h"

#include <QRegularExpression>
#include <QSet>
#include <QSqlQuery>

using namespace orv;
using namespace orv::prueba;

namespace {

// Un EAN-13 con su dígito verificador.
bool eanValido(const QString& ean) {
    return QRegularExpression(QStringLiteral("^\\d{13}$")).match(ean).hasMatch() &&
           DigitoVerificadorEan13(QStringView(ean).left(12)) == ean.back().digitValue();
}

// Huella de lo que cargan los datos de ejemplo, para ver que una carga rechazada no tocó nada.
QStringList huella(Almacen& a) {
    QStringList h = Filas(a, "SELECT Tipo, Letra, Correlativo, NombrePlantilla FROM TiposDeComprobantes ORDER BY 1");
    for (const char* t : {"Articulos", "Rubros", "Vendedores", "Proveedores", "Zonas", "Localidades", "TipoDeIva",
                          "FormasDePago"})
        h << t + (u'=' + a.valor(QStringLiteral("SELECT count(*) FROM ") + t).toString());
    return h;
}

class DatosEjemplo : public PorMotorAlDia {
protected:
    RelojFijo reloj_{QDateTime(QDate(2024, 6, 14), QTime(10, 30))};
};
ORV_AMBOS_MOTORES(DatosEjemplo);

} // namespace

TEST_P(DatosEjemplo, ArticulosConCodigoEanYPreciosExactos) {
    Almacen& a = almacen();
    cargaDatosEjemplo(a, reloj_);
    QSet<QString> codigos, barras;
    int enFalta = 0, materiasPrimas = 0;
    QSqlQuery q = a.consulta(
        "SELECT Articulos.Codigo, Articulos.idRubro, Articulos.CgoProveedor, Articulos.PrecioCosto, Articulos.PrecioVenta, "
        "Articulos.PrecioFinal, Articulos.UtilidadPorcentaje, Articulos.StockActual, Articulos.StockMinimo, "
        "Articulos.esMateriaPrima, Proveedores.idProveedor, Rubros.idRubro, Articulos.DescripcionMatriz "
        "FROM (Articulos LEFT JOIN Proveedores ON Articulos.IdProveedor = Proveedores.idProveedor) "
        "LEFT JOIN Rubros ON Articulos.idRubro = Rubros.idRubro");
    while (q.next()) {
        // El código es el interno (rubro y número) o el de barras del paquete, un EAN-13 argentino.
        const QString codigo = q.value(0).toString();
        const QString ean = q.value(2).toString();
        SCOPED_TRACE(codigo.toStdString());
        EXPECT_TRUE(eanValido(ean) && ean.startsWith("779")) << qPrintable(ean);
        // Las variantes de una matriz comparten el código del proveedor, como las graba la ficha.
        EXPECT_FALSE(codigos.contains(codigo) || (q.value(12).isNull() && barras.contains(ean))) << "repetido";
        codigos << codigo;
        barras << ean;
        EXPECT_FALSE(q.value(10).isNull() || q.value(11).isNull()) << "proveedor o rubro inexistente";

        // Venta = costo × (1 + utilidad) al centavo; final = venta × 1,21 sin redondeo.
        const qint64 costo = Dinero::desdeVariant(q.value(3)).diezmilesimos();
        const qint64 venta = Dinero::desdeVariant(q.value(4)).diezmilesimos();
        EXPECT_TRUE(costo > 0 && venta > costo && venta % 100 == 0) << costo << " " << venta;
        EXPECT_NEAR(double(venta), double(costo) * (1.0 + q.value(6).toDouble() / 100.0), 50.0);
        EXPECT_EQ(Dinero::desdeVariant(q.value(5)).diezmilesimos() * 100, venta * 121);
        EXPECT_TRUE(q.value(7).toDouble() >= 0 && q.value(8).toDouble() > 0);
        if (q.value(7).toDouble() <= q.value(8).toDouble()) ++enFalta;
        if (q.value(9).toInt() != 0) ++materiasPrimas;
    }
    EXPECT_EQ(codigos.size(), 310); // 300 a la venta, 2 elaborados y 8 variantes de una matriz
    EXPECT_TRUE(enFalta > 0 && enFalta < 100) << "el informe de faltantes tiene algo que mostrar: " << enFalta;
    EXPECT_GT(materiasPrimas, 0);
}

TEST_P(DatosEjemplo, SiempreLosMismosDatos) {
    AlmacenDePrueba otro(GetParam());
    actualizaEsquema(otro.almacen());
    cargaDatosEjemplo(almacen(), reloj_);
    cargaDatosEjemplo(otro.almacen(), reloj_);
    const QString sql = "SELECT Codigo, Descripcion, CgoProveedor, PrecioVenta, StockActual FROM Articulos UNION ALL "
                        "SELECT Nombre, Cuit, NroClienteVIP, idVendedor, 0 FROM Vendedores ORDER BY 1, 2";
    EXPECT_EQ(Filas(almacen(), sql), Filas(otro.almacen(), sql));
}

// Cada informe tiene algo que mostrar: comprobantes de cada clase, notas de crédito que restan,
// comisiones; y ningún artículo queda con existencia negativa.
TEST_P(DatosEjemplo, HayComprobantesDeCadaClaseYNingunaExistenciaNegativa) {
    Almacen& a = almacen();
    cargaDatosEjemplo(a, reloj_);
    const QStringList clases = {"FACTURA A", "FACTURA B", "NOTA DE CREDITO A", "NOTA DE CREDITO B", "PRESUPUESTO", "REMITO", "TICKET"};
    EXPECT_EQ(Filas(a, "SELECT DISTINCT t.Tipo FROM Comprobantes c INNER JOIN TiposDeComprobantes t ON t.idTipoComprobante = "
                       "c.idTipoComprobante WHERE t.Tipo IN (?, ?, ?, ?, ?, ?, ?) ORDER BY t.Tipo",
                    QVariant(clases).toList()),
              clases);
    EXPECT_EQ(Filas(a, "SELECT CASE WHEN (SELECT count(*) FROM Comisiones) > 0 THEN 'comisiones' END, CASE WHEN (SELECT "
                       "MIN(Total) FROM ConsultaFacturas) < 0 THEN 'notas que restan' END, (SELECT count(*) FROM Articulos "
                       "WHERE StockActual < 0)"),
              QStringList{"comisiones|notas que restan|0"});
    // Dos fórmulas con corridas, y las características con un artículo en 2 colores × 4 talles.
    EXPECT_EQ(Filas(a, "SELECT (SELECT count(DISTINCT idArticuloFinal) FROM FormulaProduccion), (SELECT count(*) FROM "
                       "RegistroProduccion), (SELECT count(*) FROM Matriz), (SELECT count(*) FROM Articulos WHERE "
                       "DescripcionMatriz IS NOT NULL)"),
              QStringList{"2|2|7|8"});
}

TEST_P(DatosEjemplo, UnaCargaRechazadaOQueFallaNoCambiaNada) {
    Almacen& a = almacen();
    const QStringList vacio = huella(a);
    // Sin la tabla de localidades la carga falla después de escribir proveedores y artículos.
    a.ejecuta("ALTER TABLE Localidades RENAME TO Localidades2");
    EXPECT_THROW(cargaDatosEjemplo(a, reloj_), ErrorAlmacen);
    a.ejecuta("ALTER TABLE Localidades2 RENAME TO Localidades");
    EXPECT_EQ(huella(a), vacio);
    // Con un cliente de más, o ya cargados, se niega.
    a.ejecuta("INSERT INTO Vendedores (Nombre, idZona) VALUES (?, 1)", {"D'Angelo"});
    const QStringList conCliente = huella(a);
    EXPECT_THROW(cargaDatosEjemplo(a, reloj_), Aviso);
    EXPECT_EQ(huella(a), conCliente);
    a.ejecuta("DELETE FROM Vendedores WHERE idVendedor <> 1");
    cargaDatosEjemplo(a, reloj_);
    const QStringList cargado = huella(a);
    try {
        cargaDatosEjemplo(a, reloj_);
        FAIL() << "la segunda carga debía negarse";
    } catch (const Aviso& e) {
        EXPECT_EQ(e.texto(), "El almacén ya tiene datos: los datos de ejemplo sólo se cargan en un almacén nuevo.");
        EXPECT_TRUE(e.titulo() == "Atención" && e.icono() == Icono::Exclamacion);
    }
    EXPECT_EQ(huella(a), cargado);
    EXPECT_EQ(a.profundidadTransaccion(), 0);
}
