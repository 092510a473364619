// Borrador de la venta, cliente de la venta y tipos de comprobante, en los dos motores.

#include "apoyo/base_prueba.h"
#include "sales/borrador.h"
#include "sales/cliente_venta.h"
#include "sales/tipos_comprobante.h"
#include "store/actualizacion.h"
#include "store/aviso.h"
#include "store/entrada.h"
#include "store/rutinas.h"

#include <QSqlQuery>
#include <QTemporaryDir>
#include <functional>
#include <vector>

namespace orv {
namespace {

using prueba::PorMotor;

class Venta : public PorMotor {
protected:
    void SetUp() override {
        PorMotor::SetUp();
        if (!base_) return;
        actualizaEsquema(almacen());
        yerba_ = articulo(QStringLiteral("0101"), QStringLiteral("Yerba 1 kg"), QStringLiteral("100"), QStringLiteral("7790001"));
        raro_ = articulo(QStringLiteral("AB'1%*"), QStringLiteral("Código raro"), QStringLiteral("19.99"), QStringLiteral("P'01"));
        sinPrecio_ = articulo(QStringLiteral("0303"), QStringLiteral("Sin precio"), QString(), QString());
    }
    qint64 articulo(const QString& codigo, const QString& descripcion, const QString& precio, const QString& prove) {
        return almacen().inserta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, PrecioVenta, CgoProveedor) "
                                                "VALUES (?, ?, ?, ?)"),
                                 {codigo, descripcion, precio.isEmpty() ? QVariant() : QVariant(precio), prove},
                                 QStringLiteral("idArticulo"));
    }
    LineaAgregada agrega(qint32 red, OrigenLinea o, const QString& codigo, const QString& cant, const QString& unit,
                         std::optional<qint64> id = std::nullopt) {
        return AgregaLinea(almacen(), red, {o, codigo, id, cant, unit});
    }
    // Cantidad, Unitario y SubTotal de la línea.
    std::tuple<double, double, double> linea(qint64 idTmpFac) {
        QSqlQuery q = almacen().consulta(
            QStringLiteral("SELECT Cantidad, Unitario, SubTotal FROM TmpFac WHERE idTmpFac = ?"), {idTmpFac});
        EXPECT_TRUE(q.next());
        return {q.value(0).toDouble(), Dinero::desdeVariant(q.value(1)).aDouble(),
                Dinero::desdeVariant(q.value(2)).aDouble()};
    }
    qint64 lineas(qint32 red) {
        return CuentaRegistros(almacen(), QStringLiteral("SELECT idTmpFac FROM TmpFac WHERE PCRed = ?"), {red});
    }
    qint64 yerba_ = 0, raro_ = 0, sinPrecio_ = 0;
};

TEST_P(Venta, EscanearDosVecesElMismoArticuloSumaEnUnaLinea) {
    const auto l1 = agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("1"), QStringLiteral("0"));
    const auto l2 = agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("1"), QStringLiteral("0"));
    EXPECT_FALSE(l1.fusionada);
    EXPECT_TRUE(l2.fusionada);
    EXPECT_EQ(l1.idTmpFac, l2.idTmpFac);
    EXPECT_EQ(lineas(1), 1);
    // "TEXTBA" toma el precio del artículo aunque el campo diga 0.
    EXPECT_EQ(linea(l1.idTmpFac), std::make_tuple(2.0, 100.0, 200.0));
}

TEST_P(Venta, CantidadesFraccionariasAlSumarQuedanEnterasConRedondeoAlPar) {
    const auto a = agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("0.5"), QStringLiteral("0"));
    EXPECT_DOUBLE_EQ(std::get<0>(linea(a.idTmpFac)), 0.5);
    agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("0.5"), QStringLiteral("0"));
    EXPECT_EQ(linea(a.idTmpFac), std::make_tuple(1.0, 100.0, 100.0));
    agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("0.5"), QStringLiteral("0"));
    EXPECT_DOUBLE_EQ(std::get<0>(linea(a.idTmpFac)), 2.0); // 1.5 va al par: 2
    agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("0.5"), QStringLiteral("0"));
    EXPECT_DOUBLE_EQ(std::get<0>(linea(a.idTmpFac)), 2.0); // 2.5 va al par: 2
    // Una cantidad que no es número: 1 en una línea nueva, 0 al sumar.
    const auto r = agrega(2, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("dos"), QStringLiteral("0"));
    EXPECT_DOUBLE_EQ(std::get<0>(linea(r.idTmpFac)), 1.0);
    agrega(2, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("x"), QStringLiteral("0"));
    EXPECT_DOUBLE_EQ(std::get<0>(linea(r.idTmpFac)), 1.0);
    // "3 cajas": Val toma el número del principio.
    agrega(2, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("3 cajas"), QStringLiteral("0"));
    EXPECT_DOUBLE_EQ(std::get<0>(linea(r.idTmpFac)), 4.0);
}

TEST_P(Venta, SumarConOtroPrecioDejaElUnitarioViejoYElSubtotalNuevo) {
    const auto a = agrega(1, OrigenLinea::CodigoProveedor, QStringLiteral("0101"), QStringLiteral("1"), QStringLiteral("100"));
    agrega(1, OrigenLinea::CodigoProveedor, QStringLiteral("0101"), QStringLiteral("1"), QStringLiteral("150"));
    EXPECT_EQ(linea(a.idTmpFac), std::make_tuple(2.0, 100.0, 300.0));
    // Desde la lista, con precio escrito, y un artículo sin precio a 0.
    const auto b = agrega(1, OrigenLinea::Lista, QString(), QStringLiteral("3"), QStringLiteral("0"), sinPrecio_);
    EXPECT_EQ(linea(b.idTmpFac), std::make_tuple(3.0, 0.0, 0.0));
    // El importe por la cantidad es exacto: 19.99 × 3.
    const auto c = agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("AB'1%*"), QStringLiteral("3"), QStringLiteral("0"));
    EXPECT_EQ(linea(c.idTmpFac), std::make_tuple(3.0, 19.99, 59.97));
}

TEST_P(Venta, ArticuloNoEncontradoNoTocaElBorrador) {
    agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("1"), QStringLiteral("0"));
    auto texto = [&](OrigenLinea o, const QString& codigo, const QString& unit, std::optional<qint64> id) {
        try {
            agrega(1, o, codigo, QStringLiteral("1"), unit, id);
        } catch (const Aviso& e) {
            EXPECT_EQ(e.titulo(), QStringLiteral("Error"));
            return e.texto();
        }
        return QString();
    };
    EXPECT_EQ(texto(OrigenLinea::CodigoBarras, QStringLiteral("9999"), QStringLiteral("0"), {}),
              QStringLiteral("Articulo no encontrado!"));
    EXPECT_EQ(texto(OrigenLinea::CodigoBarras, QStringLiteral("0101' OR '1'='1"), QStringLiteral("0"), {}),
              QStringLiteral("Articulo no encontrado!"));
    EXPECT_EQ(texto(OrigenLinea::CodigoProveedor, QStringLiteral("0101"), QStringLiteral("diez"), {}),
              QStringLiteral("Articulo no encontrado!"));
    EXPECT_TRUE(texto(OrigenLinea::Lista, QString(), QStringLiteral("1"), {}).startsWith(QStringLiteral("Error:")));
    EXPECT_EQ(texto(OrigenLinea::Lista, QString(), QStringLiteral("1"), 987654), QStringLiteral("Articulo no encontrado!"));
    EXPECT_EQ(lineas(1), 1);
    EXPECT_DOUBLE_EQ(std::get<0>(linea(almacen().valor(QStringLiteral("SELECT idTmpFac FROM TmpFac")).toLongLong())), 1.0);
}

TEST_P(Venta, TotalesConDescuentoEImpuestoSobreElNeto) {
    EXPECT_FALSE(CalculaTotales(almacen(), 1, 10, 21).hayLineas);
    EXPECT_EQ(TextoItems(CalculaTotales(almacen(), 1, 0, 0)), QStringLiteral("0 ítems."));
    agrega(1, OrigenLinea::CodigoProveedor, QStringLiteral("0101"), QStringLiteral("4"), QStringLiteral("200"));
    agrega(1, OrigenLinea::CodigoProveedor, QStringLiteral("AB'1%*"), QStringLiteral("2"), QStringLiteral("50"));
    agrega(1, OrigenLinea::Lista, QString(), QStringLiteral("1"), QStringLiteral("100"), sinPrecio_);
    agrega(2, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("1"), QStringLiteral("0"));
    const Totales t = CalculaTotales(almacen(), 1, 10, 21);
    EXPECT_DOUBLE_EQ(t.subTotal, 1000);
    EXPECT_DOUBLE_EQ(t.descuento, 100);
    EXPECT_DOUBLE_EQ(t.neto, 900);
    EXPECT_DOUBLE_EQ(t.impuesto, 189);
    EXPECT_DOUBLE_EQ(t.total, 1089);
    EXPECT_EQ(TextoItems(t), QStringLiteral("7.0 de 3 ítems."));
    // Sin descuento ni impuesto el total es el subtotal; la otra terminal va aparte.
    EXPECT_DOUBLE_EQ(CalculaTotales(almacen(), 1, 0, 0).total, 1000);
    EXPECT_DOUBLE_EQ(CalculaTotales(almacen(), 2, 0, 0).total, 100);
    VaciaBorrador(almacen(), 1);
    EXPECT_EQ(lineas(1), 0);
    EXPECT_EQ(lineas(2), 1);
}

TEST_P(Venta, TeclasMasYMenosYCorreccionesEnLaGrilla) {
    const auto a = agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("1"), QStringLiteral("0"));
    CambiaCantidad(almacen(), a.idTmpFac, +1);
    EXPECT_EQ(linea(a.idTmpFac), std::make_tuple(2.0, 100.0, 200.0));
    CambiaCantidad(almacen(), a.idTmpFac, -1);
    CambiaCantidad(almacen(), a.idTmpFac, -1);
    EXPECT_EQ(linea(a.idTmpFac), std::make_tuple(0.0, 100.0, 0.0)); // la línea queda
    CambiaCantidad(almacen(), a.idTmpFac, -1);
    EXPECT_EQ(linea(a.idTmpFac), std::make_tuple(-1.0, 100.0, -100.0));
    // Una corrección en la grilla no recalcula hasta que se pide.
    CorrigeLinea(almacen(), a.idTmpFac, QStringLiteral("Cantidad"), QStringLiteral("3"));
    CorrigeLinea(almacen(), a.idTmpFac, QStringLiteral("Unitario"), QStringLiteral("1,250.50"));
    CorrigeLinea(almacen(), a.idTmpFac, QStringLiteral("Sn"), QStringLiteral("SN-'42'"));
    EXPECT_EQ(linea(a.idTmpFac), std::make_tuple(3.0, 1250.5, -100.0));
    RecalculaLineas(almacen(), 1);
    EXPECT_EQ(linea(a.idTmpFac), std::make_tuple(3.0, 1250.5, 3751.5));
    EXPECT_EQ(almacen().valor(QStringLiteral("SELECT Sn FROM TmpFac WHERE idTmpFac = ?"), {a.idTmpFac}).toString(),
              QStringLiteral("SN-'42'"));
    EXPECT_THROW(CorrigeLinea(almacen(), a.idTmpFac, QStringLiteral("PCRed"), 5), Aviso);
    BorraLinea(almacen(), a.idTmpFac);
    EXPECT_EQ(lineas(1), 0);
}

// Lo que no se puede leer o no cabe se rechaza con un aviso que lo dice, nunca termina el programa
// y el borrador queda exactamente como estaba.
TEST_P(Venta, LoEscritoFueraDeRangoSeRechazaSinTocarElBorrador) {
    const auto l = agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("2"), QStringLiteral("0"));
    const auto filas = [this] {
        std::vector<std::string> r;
        QSqlQuery q = almacen().consulta(QStringLiteral("SELECT idTmpFac, idArticulo, Cantidad, Unitario, SubTotal, Sn FROM TmpFac "
                                                        "ORDER BY idTmpFac"));
        while (q.next())
            r.push_back(QStringLiteral("%1|%2|%3|%4|%5|%6")
                            .arg(q.value(0).toString(), q.value(1).toString(), QString::number(q.value(2).toDouble()),
                                 Dinero::desdeVariant(q.value(3)).aTexto(), Dinero::desdeVariant(q.value(4)).aTexto(),
                                 q.value(5).toString())
                            .toStdString());
        return r;
    };
    const auto antes = filas();
    const QString cantidadFuera = QStringLiteral("Cantidad: Importe fuera de rango!");
    const QString unitarioFuera = QStringLiteral("Unitario: Importe fuera de rango!");
    const QString malEscrita =
        QStringLiteral("Cantidad: el número está mal escrito. Use el punto para los decimales (1234.50).");
    struct Caso {
        const char* que;
        std::function<void()> accion;
        QString aviso;
    };
    const auto nueva = [this](const char* cant, const char* unit) {
        return [this, cant, unit] {
            agrega(1, OrigenLinea::CodigoProveedor, QStringLiteral("AB'1%*"), QString::fromLatin1(cant), QString::fromLatin1(unit));
        };
    };
    const auto corrige = [this, &l](const char* campo, const char* valor) {
        return [this, &l, campo, valor] {
            CorrigeLinea(almacen(), l.idTmpFac, QString::fromLatin1(campo), QString::fromLatin1(valor));
        };
    };
    const std::vector<Caso> casos = {
        {"código de barras en la cantidad", nueva("4006381333931", "10"), cantidadFuera},
        {"cantidad 1e300", nueva("1e300", "10"), cantidadFuera},
        {"cantidad con coma decimal", nueva("1,5", "10"), malEscrita},
        {"precio que no cabe en el dinero", nueva("1", "922337203685477"), unitarioFuera},
        {"precio sobre el tope", nueva("1", "1000000000000"), unitarioFuera},
        {"línea que no cabe", nueva("999999", "999999999"), kImporteFueraDeRango},
        {"sumar a la línea hasta pasarse", [this] {
             agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("999999999"), QStringLiteral("0"));
         }, cantidadFuera},
        {"tecla + sobre una cantidad enorme", [this, &l] { CambiaCantidad(almacen(), l.idTmpFac, 1e300); }, cantidadFuera},
        {"tecla + más allá de la cantidad máxima", [this, &l] { CambiaCantidad(almacen(), l.idTmpFac, 999999998); },
         cantidadFuera},
        {"corregir con letras", corrige("Cantidad", "abc"), malEscrita},
        {"corregir con 1e300", corrige("Cantidad", "1e300"), cantidadFuera},
        {"corregir el unitario hasta pasarse", corrige("Unitario", "999999999999"), kImporteFueraDeRango},
        {"corregir el unitario con letras", corrige("Unitario", "abc"),
         QStringLiteral("Unitario: el número está mal escrito. Use el punto para los decimales (1234.50).")},
    };
    for (const Caso& c : casos) {
        QString visto;
        try {
            c.accion();
        } catch (const Aviso& a) {
            visto = a.texto();
        }
        EXPECT_EQ(visto.toStdString(), c.aviso.toStdString()) << c.que;
        EXPECT_EQ(filas(), antes) << c.que;
    }
}

// Una línea imposible guardada por otro camino no traba el panel: los totales la señalan y se
// puede borrar.
TEST_P(Venta, UnaLineaImposibleSeSenalaYSePuedeBorrar) {
    agrega(1, OrigenLinea::CodigoBarras, QStringLiteral("0101"), QStringLiteral("1"), QStringLiteral("0"));
    const auto mala = agrega(1, OrigenLinea::CodigoProveedor, QStringLiteral("AB'1%*"), QStringLiteral("1"), QStringLiteral("5"));
    almacen().ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = 1e300, SubTotal = 900000000000000 WHERE idTmpFac = ?"),
                      {mala.idTmpFac});
    const Totales t = CalculaTotales(almacen(), 1, 0, 0);
    EXPECT_EQ(std::make_tuple(t.hayLineas, t.lineas, t.total, t.idLineaConProblema, t.problema),
              std::make_tuple(true, qint64(2), 0.0, mala.idTmpFac,
                              QStringLiteral("La línea \"Código raro\" tiene una cantidad o un importe fuera de rango: "
                                             "bórrela o corríjala.")));
    EXPECT_THROW(RecalculaLineas(almacen(), 1), Aviso);
    BorraLinea(almacen(), mala.idTmpFac);
    const Totales despues = CalculaTotales(almacen(), 1, 0, 0);
    EXPECT_EQ(std::make_tuple(despues.problema, despues.total), std::make_tuple(QString(), 100.0));
}

TEST_P(Venta, ArticulosPorCodigoProveedorYLista) {
    EXPECT_EQ(ArticuloPorCgoProveedor(almacen(), QStringLiteral("P'01"))->idArticulo, raro_);
    EXPECT_EQ(ArticuloPorCodigo(almacen(), QStringLiteral("AB'1%*"))->descripcion, QStringLiteral("Código raro"));
    EXPECT_FALSE(ArticuloPorCodigo(almacen(), QStringLiteral("AB%")));
    EXPECT_TRUE(ArticuloPorId(almacen(), sinPrecio_)->precioVenta.isNull());
}

TEST_P(Venta, ClientePorNumeroOPorTarjetaSegunElLargo) {
    Almacen& a = almacen();
    const qint64 ana = a.inserta(QStringLiteral("INSERT INTO Vendedores (Nombre, Cuit, idTipoIva, Descuento, idTipoFormaPago, "
                                                "Domicilio, Telefono, Telefono2, \"e-mail\", NroClienteVIP) "
                                                "VALUES ('Ana D''Angelo', '20-12345678-6', 3, 10, 2, 'Mitre 1', '341 1', '', "
                                                "'ana@x.com', '123456')"),
                                 {}, QStringLiteral("idVendedor"));
    a.ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, idTipoIva) VALUES (123456, 'Número alto', 1)"));
    const auto porNumero = ClientePorNumero(a, QString::number(ana));
    ASSERT_TRUE(porNumero);
    EXPECT_FALSE(porNumero->vip);
    EXPECT_EQ(porNumero->nombre, QStringLiteral("Ana D'Angelo"));
    EXPECT_EQ(porNumero->cuit, QStringLiteral("20-12345678-6"));
    EXPECT_EQ(porNumero->idTipoIva, 3);
    EXPECT_DOUBLE_EQ(porNumero->descuento, 10);
    EXPECT_EQ(porNumero->idTipoFormaPago.toInt(), 2);
    EXPECT_EQ(porNumero->direccion, QStringLiteral("Mitre 1, 341 1, , ana@x.com"));
    // Seis cifras es tarjeta aunque exista un cliente con ese número.
    const auto tarjeta = ClientePorNumero(a, QStringLiteral("123456"));
    ASSERT_TRUE(tarjeta);
    EXPECT_TRUE(tarjeta->vip);
    EXPECT_EQ(tarjeta->idVendedor, ana);
    EXPECT_FALSE(ClientePorNumero(a, QStringLiteral("654321")));
    EXPECT_FALSE(ClientePorNumero(a, QStringLiteral("99999")));
    EXPECT_FALSE(ClientePorNumero(a, QStringLiteral("Ana")));
    EXPECT_FALSE(ClientePorNumero(a, QStringLiteral("1'")));
    EXPECT_FALSE(ClientePorNumero(a, QStringLiteral("1.5")));
}

// El cliente con que empieza cada venta: sólo un número de cliente que existe; lo demás se rechaza
// sin cambiar lo guardado, y un cliente que ya no está deja la venta sin cliente.
TEST_P(Venta, ClientePredeterminadoSoloDeUnClienteQueExiste) {
    Almacen& a = almacen();
    QTemporaryDir d;
    const Configuracion conf(d.path(), d.filePath(QStringLiteral("usuario.conf")));
    const qint64 ana = a.inserta(QStringLiteral("INSERT INTO Vendedores (Nombre, idTipoIva) VALUES ('Ana', 1)"), {},
                                 QStringLiteral("idVendedor"));
    EXPECT_FALSE(ClientePredeterminado(a, conf));
    FijaClientePredeterminado(a, conf, QStringLiteral(" ") + QString::number(ana) + QStringLiteral(" "));
    ASSERT_TRUE(ClientePredeterminado(a, conf));
    EXPECT_EQ(ClientePredeterminado(a, conf)->nombre, QStringLiteral("Ana"));
    EXPECT_FALSE(ClientePredeterminado(a, conf)->vip);
    for (const QString& malo : {QStringLiteral("99999"), QStringLiteral("Ana"), QStringLiteral("1.5"), QStringLiteral("-1"),
                                QStringLiteral("99999999999999999999")}) {
        EXPECT_THROW(FijaClientePredeterminado(a, conf, malo), Aviso) << qPrintable(malo);
        EXPECT_EQ(conf.lee(clave::miscelaneas, QStringLiteral("ClientePredeterminado")), QString::number(ana));
    }
    a.ejecuta(QStringLiteral("DELETE FROM Vendedores WHERE idVendedor = ?"), {ana});
    EXPECT_FALSE(ClientePredeterminado(a, conf));
    FijaClientePredeterminado(a, conf, QString());
    EXPECT_TRUE(conf.lee(clave::miscelaneas, QStringLiteral("ClientePredeterminado")).isEmpty());
}

TEST(Multiplicador, NumeroYAsteriscoAntesDelCodigo) {
    const struct {
        const char* escrito;
        const char* codigo;
        std::optional<QString> cantidad;
    } casos[] = {
        {"3*7791234567890", "7791234567890", QStringLiteral("3")},
        {"1.5*0303", "0303", QStringLiteral("1.5")},
        {"12*AB'1%*", "AB'1%*", QStringLiteral("12")},
        {"0101", "0101", std::nullopt},
        {"AB'1%*", "AB'1%*", std::nullopt}, // el asterisco del código no es un multiplicador
        {"3*", "3*", std::nullopt},         // sin código todavía
        {"*0101", "*0101", std::nullopt},
        {"1,5*0303", "1,5*0303", std::nullopt}, // la coma no es decimal
        {"-2*0101", "-2*0101", std::nullopt},
        {"3.*0101", "3.*0101", std::nullopt},
    };
    for (const auto& c : casos) {
        const CodigoConCantidad r = SeparaCantidad(QString::fromUtf8(c.escrito));
        EXPECT_EQ(r.codigo, QString::fromUtf8(c.codigo)) << c.escrito;
        EXPECT_EQ(r.cantidad, c.cantidad) << c.escrito;
    }
}

TEST_P(Venta, TiposDeComprobanteNumeracionYValidaciones) {
    Almacen& a = almacen();
    EXPECT_EQ(ProximoNumeroMostrado(a, 1), QStringLiteral("B 0001-00000001"));
    a.ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET Correlativo = 41 WHERE idTipoComprobante = 1"));
    EXPECT_EQ(ProximoNumeroMostrado(a, 1), QStringLiteral("B 0001-00000042"));
    EXPECT_EQ(ProximoNumeroMostrado(a, 999), QString());
    EXPECT_EQ(NumeroGuardado(QStringLiteral("A"), QStringLiteral("0002"), 42), QStringLiteral("A0002-00000042"));
    EXPECT_EQ(NumeroMostrado(QStringLiteral("A"), QStringLiteral("0002"), 123456789), QStringLiteral("A 0002-123456789"));
    EXPECT_EQ(NumeroGuardado(QStringLiteral("A"), QStringLiteral("0002"), 1234567890), QStringLiteral("A0002-123456789"));

    TipoComprobante t;
    t.tipo = QStringLiteral("NOTA DE CRÉDITO 'B'");
    t.letra = QStringLiteral("Bx");
    t.puntoDeVenta = QStringLiteral("0003 - Sucursal");
    t.correlativo = QStringLiteral("100");
    t.operacionInversa = true;
    t.descuentaStock = true;
    t.plantilla = PlantillaFiscal(TextoModeloFiscal(ModeloFiscal::Hasar, QStringLiteral("615 - PL8F")), QStringLiteral("2"));
    t.modDocumento = QStringLiteral("43 - N.CREDITO B").left(3); // lo que deja la pantalla fiscal
    auto rechaza = [&](auto cambia) {
        TipoComprobante m = t;
        cambia(m);
        try {
            GuardaTipo(a, std::nullopt, m);
        } catch (const Aviso& e) {
            return e.texto() == QStringLiteral("Error, ingrese la información correctamente!");
        }
        return false;
    };
    EXPECT_TRUE(rechaza([](TipoComprobante& m) { m.correlativo = QStringLiteral("cien"); }));
    EXPECT_TRUE(rechaza([](TipoComprobante& m) { m.letra.clear(); }));
    EXPECT_TRUE(rechaza([](TipoComprobante& m) { m.plantilla = kSinPlantilla; }));
    EXPECT_TRUE(rechaza([](TipoComprobante& m) { m.tipo = QStringLiteral("  "); }));
    const qint64 id = GuardaTipo(a, std::nullopt, t);
    const TipoComprobante leido = LeeTipo(a, id).value();
    EXPECT_EQ(leido.tipo, t.tipo);
    EXPECT_EQ(leido.letra, QStringLiteral("B"));
    EXPECT_EQ(leido.puntoDeVenta, QStringLiteral("0003"));
    EXPECT_EQ(leido.correlativo, QStringLiteral("100"));
    EXPECT_EQ(leido.modDocumento, QStringLiteral("43"));
    EXPECT_TRUE(leido.operacionInversa && leido.descuentaStock && !leido.registraCaja && !leido.esComercial);
    // "Comenzar en" 100: el primero será el 101.
    EXPECT_EQ(ProximoNumeroMostrado(a, id), QStringLiteral("B 0003-00000101"));
    TipoComprobante sinModelo = leido;
    sinModelo.modDocumento = QStringLiteral("ninguno");
    GuardaTipo(a, id, sinModelo);
    EXPECT_EQ(LeeTipo(a, id)->modDocumento, QStringLiteral("0"));
    BorraTipo(a, id);
    EXPECT_FALSE(LeeTipo(a, id));
    EXPECT_THROW(GuardaTipo(a, id, t), Aviso);
}

// Editar un tipo no devuelve su número a lo que era al abrir el diálogo: el número se escribe sólo
// si el usuario lo cambió, y sólo si ningún otro puesto lo movió mientras tanto.
TEST_P(Venta, ElCorrelativoSeEscribeSoloSiCambioYNadieLoMovio) {
    Almacen& a = almacen();
    struct Caso {
        const char* que;
        const char* escrito;   // lo que deja el usuario en el diálogo (leyó 100)
        qint64 otroPuesto;     // el número en el almacén al guardar
        QString aviso;         // vacío: se guarda
        QVariantList esperado; // Tipo y Correlativo en el almacén después
    };
    const std::vector<Caso> casos = {
        {"sin tocar el número, otro puesto vendió", "100", 105, {}, {QStringLiteral("FACTURA X NUEVA"), 105}},
        {"número cambiado, nadie lo movió", "200", 100, {}, {QStringLiteral("FACTURA X NUEVA"), 200}},
        {"número cambiado, otro puesto vendió", "200", 105,
         QStringLiteral("Otro puesto registró un comprobante de este tipo mientras lo editaba: el último número es ahora "
                        "105. No se guardó nada; revise el número y vuelva a guardar."),
         {QStringLiteral("FACTURA X"), 105}},
        {"correlativo 1e300", "1e300", 100, QStringLiteral("Correlativo: Importe fuera de rango!"),
         {QStringLiteral("FACTURA X"), 100}},
        {"veinte cifras", "99999999999999999999", 100, QStringLiteral("Correlativo: Importe fuera de rango!"),
         {QStringLiteral("FACTURA X"), 100}},
        {"negativo", "-1", 100, QStringLiteral("Correlativo: Importe fuera de rango!"), {QStringLiteral("FACTURA X"), 100}},
    };
    for (const Caso& c : casos) {
        TipoComprobante t;
        t.tipo = QStringLiteral("FACTURA X");
        t.letra = QStringLiteral("B");
        t.puntoDeVenta = QStringLiteral("0001");
        t.correlativo = QStringLiteral("100");
        t.plantilla = QStringLiteral("factura.rpt");
        const qint64 id = GuardaTipo(a, std::nullopt, t);
        TipoComprobante editado = LeeTipo(a, id).value();
        a.ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET Correlativo = ? WHERE idTipoComprobante = ?"),
                  {c.otroPuesto, id});
        editado.tipo = QStringLiteral("FACTURA X NUEVA");
        editado.correlativo = QString::fromLatin1(c.escrito);
        QString visto;
        try {
            GuardaTipo(a, id, editado);
        } catch (const Aviso& e) {
            visto = e.texto();
        }
        EXPECT_EQ(visto.toStdString(), c.aviso.toStdString()) << c.que;
        QSqlQuery q = a.consulta(QStringLiteral("SELECT Tipo, Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = ?"),
                                 {id});
        ASSERT_TRUE(q.next());
        EXPECT_EQ(QVariantList({q.value(0).toString(), q.value(1).toLongLong()}), c.esperado) << c.que;
    }
    // Un nombre más largo que su columna se rechaza en vez de cortarse callado.
    TipoComprobante largo;
    largo.tipo = QString(41, u'X');
    largo.letra = QStringLiteral("B");
    largo.puntoDeVenta = QStringLiteral("0001");
    largo.plantilla = QStringLiteral("factura.rpt");
    EXPECT_THROW(GuardaTipo(a, std::nullopt, largo), Aviso);
}

TEST(TiposDeComprobante, PlantillasDeImpresorasIdaYVuelta) {
    const QString hasar = PlantillaFiscal(TextoModeloFiscal(ModeloFiscal::Hasar, QStringLiteral("615 - PL8F")), QStringLiteral("3"));
    EXPECT_EQ(hasar, QStringLiteral("IMPRESORA FISCAL : HASAR O COMPAT. 615 - PL8F|PUERTO : 3"));
    LecturaFiscal l = LeePlantillaFiscal(hasar);
    EXPECT_EQ(l.modelo, ModeloFiscal::Hasar);
    EXPECT_EQ(l.itemHasar, QStringLiteral("615 - PL8F"));
    EXPECT_EQ(l.puerto, QStringLiteral("3"));
    for (const QString& item : ModelosHasar())
        EXPECT_EQ(LeePlantillaFiscal(PlantillaFiscal(TextoModeloFiscal(ModeloFiscal::Hasar, item), QStringLiteral("1"))).itemHasar,
                  item);
    l = LeePlantillaFiscal(PlantillaFiscal(TextoModeloFiscal(ModeloFiscal::Epson200), QStringLiteral("2")));
    EXPECT_EQ(l.modelo, ModeloFiscal::Epson200);
    EXPECT_EQ(l.puerto, QStringLiteral("2"));
    l = LeePlantillaFiscal(PlantillaFiscal(TextoModeloFiscal(ModeloFiscal::EpsonTMU), QString()));
    EXPECT_EQ(l.modelo, ModeloFiscal::EpsonTMU);
    EXPECT_TRUE(l.puerto.isEmpty());
    // Un texto de otra clase (un tipo nuevo, una plantilla) abre como Hasar sin modelo.
    l = LeePlantillaFiscal(kSinPlantilla);
    EXPECT_EQ(l.modelo, ModeloFiscal::Hasar);
    EXPECT_TRUE(l.itemHasar.isEmpty());
    // El modelo Hasar se corta por posición: un blanco de más lo corre.
    EXPECT_NE(LeePlantillaFiscal(QStringLiteral("IMPRESORA FISCAL :  HASAR O COMPAT. 950|PUERTO : 1")).itemHasar,
              QStringLiteral("950"));

    EXPECT_EQ(EsquemaDe(hasar), EsquemaImpresion::Fiscal);
    EXPECT_EQ(EsquemaDe(PlantillaTickets(QStringLiteral("COM1"))), EsquemaImpresion::Tickets);
    EXPECT_EQ(PlantillaTickets(QStringLiteral("COM1")), QStringLiteral("IMPRESORA TICKETS PUERTO : COM1"));
    EXPECT_EQ(EsquemaDe(QStringLiteral("/x/factura.rpt")), EsquemaImpresion::Plantilla);
    EXPECT_EQ(EsquemaDe(QString()), EsquemaImpresion::Plantilla);
    ASSERT_EQ(DocumentosFiscales().size(), 11);
    EXPECT_EQ(DocumentosFiscales().at(8).left(3), QStringLiteral("120"));
}

ORV_AMBOS_MOTORES(Venta);

} // namespace
} // namespace orv
