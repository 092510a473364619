// Borrador de la venta, cliente de la venta, tipos de comprobante y la ruta de salida de un
// comprobante según su esquema de impresión, en los dos motores.

#include "apoyo/base_prueba.h"
#include "apoyo/filas.h"
#include "sales/borrador.h"
#include "sales/cliente_venta.h"
#include "sales/salida_comprobante.h"
#include "sales/tipos_comprobante.h"
#include "store/actualizacion.h"
#include "store/aviso.h"
#include "store/entrada.h"

#include <QTemporaryDir>
#include <functional>
#include <vector>

namespace orv {
namespace {

using prueba::PorMotorAlDia;
using O = OrigenLinea;
using prueba::AvisoDe;

class Venta : public PorMotorAlDia {
protected:
    void prepara() override {
        almacen().ejecuta(QStringLiteral("INSERT INTO Articulos (idArticulo, Codigo, Descripcion, PrecioVenta, CgoProveedor) VALUES "
                                         "(1, '0101', 'Yerba 1 kg', 100, '7790001'), (2, 'AB''1%*', 'Código raro', 19.99, 'P''01'), "
                                         "(3, '0303', 'Sin precio', NULL, NULL)"));
    }
    LineaAgregada agrega(qint32 red, O o, const char* codigo, const char* cant, const char* unit, std::optional<qint64> id = {}) {
        return AgregaLinea(almacen(), red, {o, QString::fromUtf8(codigo), id, QString::fromUtf8(cant), QString::fromUtf8(unit)});
    }
    // Código, cantidad, unitario y subtotal de una línea, o de todas las de una terminal.
    QStringList linea(qint64 idTmpFac) {
        return prueba::Filas(almacen(), QStringLiteral("SELECT Codigo, Cantidad, Unitario, SubTotal FROM TmpFac WHERE idTmpFac = ?"),
                             {idTmpFac});
    }
    QStringList borrador(qint32 red = 1) {
        return prueba::Filas(almacen(), QStringLiteral("SELECT Codigo, Cantidad, Unitario, SubTotal, Sn FROM TmpFac WHERE PCRed = ? "
                                                       "ORDER BY idTmpFac"),
                             {red});
    }
};

// Agregar: una línea nueva o la suma a la del mismo artículo, paso por paso.
TEST_P(Venta, AgregarSumaALaLineaDelMismoArticulo) {
    // Terminal, origen, código, cantidad y precio escritos; si suma a una línea que ya estaba, cómo
    // queda la línea, y por qué.
    struct Paso {
        qint32 red;
        O origen;
        const char *codigo, *cantidad, *unitario;
        bool suma;
        const char *linea, *que;
    };
    const Paso pasos[] = {
        {1, O::CodigoBarras, "0101", "1", "0", false, "0101|1|100|100", "por código de barras, con el precio del artículo"},
        {1, O::CodigoBarras, "0101", "1", "0", true, "0101|2|100|200", "otra vez el mismo"},
        {2, O::CodigoBarras, "0101", "0.5", "0", false, "0101|0.5|100|50", "otra terminal, su línea"},
        {2, O::CodigoBarras, "0101", "0.5", "0", true, "0101|1|100|100", "medio y medio"},
        {2, O::CodigoBarras, "0101", "0.5", "0", true, "0101|2|100|200", "1.5 queda entero, al par: 2"},
        {2, O::CodigoBarras, "0101", "0.5", "0", true, "0101|2|100|200", "2.5 al par: 2"},
        {3, O::CodigoBarras, "0101", "dos", "0", false, "0101|1|100|100", "cantidad que no es número: 1 en una línea nueva"},
        {3, O::CodigoBarras, "0101", "x", "0", true, "0101|1|100|100", "...y 0 al sumar"},
        {3, O::CodigoBarras, "0101", "3 cajas", "0", true, "0101|4|100|400", "el número del principio"},
        {4, O::CodigoProveedor, "0101", "1", "100", false, "0101|1|100|100", "con el precio escrito"},
        {4, O::CodigoProveedor, "0101", "1", "150", true, "0101|2|100|300", "otro precio: el unitario viejo, el subtotal nuevo"},
        {4, O::Lista, "", "3", "0", false, "0303|3|0|0", "de la lista, sin precio: a 0"},
        {4, O::CodigoBarras, "AB'1%*", "3", "0", false, "AB'1%*|3|19.99|59.97", "apóstrofo y comodines; 19.99 × 3 exacto"},
    };
    for (const Paso& p : pasos) {
        const LineaAgregada l = agrega(p.red, p.origen, p.codigo, p.cantidad, p.unitario, p.origen == O::Lista ? std::optional<qint64>(3) : std::nullopt);
        EXPECT_EQ(l.fusionada, p.suma) << p.que;
        EXPECT_EQ(linea(l.idTmpFac), QStringList{QString::fromUtf8(p.linea)}) << p.que;
    }
    EXPECT_EQ(prueba::Filas(almacen(), QStringLiteral("SELECT PCRed, Codigo FROM TmpFac ORDER BY idTmpFac")),
              QStringList({"1|0101", "2|0101", "3|0101", "4|0101", "4|0303", "4|AB'1%*"}));
}

// Descuento sobre el subtotal e impuesto sobre el neto, por terminal. Una línea imposible guardada
// por otro camino no traba el panel: los totales quedan en cero, la señalan y se puede borrar.
TEST_P(Venta, TotalesConDescuentoEImpuestoSobreElNeto) {
    const auto totales = [&](qint32 red, double desc, double imp) {
        const Totales t = CalculaTotales(almacen(), red, desc, imp);
        return QVariantList{t.hayLineas, t.subTotal, t.descuento, t.neto, t.impuesto, t.total, TextoItems(t), t.problema};
    };
    EXPECT_EQ(totales(1, 10, 21), QVariantList({false, 0.0, 0.0, 0.0, 0.0, 0.0, "0 ítems.", ""}));
    agrega(1, O::CodigoProveedor, "0101", "4", "200");
    agrega(1, O::CodigoProveedor, "AB'1%*", "2", "50");
    const qint64 sinPrecio = agrega(1, O::Lista, "", "1", "100", 3).idTmpFac;
    agrega(2, O::CodigoBarras, "0101", "1", "0");
    EXPECT_EQ(totales(1, 10, 21), QVariantList({true, 1000.0, 100.0, 900.0, 189.0, 1089.0, "7.0 de 3 ítems.", ""}));
    EXPECT_EQ(totales(1, 0, 0), QVariantList({true, 1000.0, 0.0, 1000.0, 0.0, 1000.0, "7.0 de 3 ítems.", ""}));
    EXPECT_EQ(totales(2, 0, 0), QVariantList({true, 100.0, 0.0, 100.0, 0.0, 100.0, "1.0 de 1 ítems.", ""}));
    // Cada importe a centavos: 21 % de 99,50 es 20,895 y el total 120,40, no 120,395.
    EXPECT_EQ(totales(2, 0.5, 21), QVariantList({true, 100.0, 0.5, 99.5, 20.9, 120.4, "1.0 de 1 ítems.", ""}));

    almacen().ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = 1e300, SubTotal = 900000000000000 WHERE idTmpFac = ?"), {sinPrecio});
    const Totales t = CalculaTotales(almacen(), 1, 0, 0);
    EXPECT_EQ(std::make_tuple(t.hayLineas, t.lineas, t.total, t.idLineaConProblema, t.problema),
              std::make_tuple(true, qint64(3), 0.0, sinPrecio,
                              QStringLiteral("La línea \"Sin precio\" tiene una cantidad o un importe fuera de rango: bórrela o corríjala.")));
    EXPECT_THROW(RecalculaLineas(almacen(), 1), Aviso);
    BorraLinea(almacen(), sinPrecio);
    EXPECT_EQ(totales(1, 0, 0), QVariantList({true, 900.0, 0.0, 900.0, 0.0, 900.0, "6.0 de 2 ítems.", ""}));
    VaciaBorrador(almacen(), 1);
    EXPECT_EQ(std::make_pair(borrador(1).size(), borrador(2).size()), std::make_pair(qsizetype(0), qsizetype(1)));
}

TEST_P(Venta, TeclasMasYMenosYCorreccionesEnLaGrilla) {
    const qint64 id = agrega(1, O::CodigoBarras, "0101", "1", "0").idTmpFac;
    const std::pair<std::function<void()>, const char*> pasos[] = {
        {[&] { CambiaCantidad(almacen(), id, +1); }, "0101|2|100|200|NULL"},
        {[&] { CambiaCantidad(almacen(), id, -1); }, "0101|1|100|100|NULL"},
        {[&] { CambiaCantidad(almacen(), id, -1); }, "0101|0|100|0|NULL"}, // la línea queda
        {[&] { CambiaCantidad(almacen(), id, -1); }, "0101|-1|100|-100|NULL"},
        // Una corrección en la grilla no recalcula hasta que se pide.
        {[&] { CorrigeLinea(almacen(), id, QStringLiteral("Cantidad"), QStringLiteral("3")); }, "0101|3|100|-100|NULL"},
        {[&] { CorrigeLinea(almacen(), id, QStringLiteral("Unitario"), QStringLiteral("1,250.50")); }, "0101|3|1250.5|-100|NULL"},
        {[&] { CorrigeLinea(almacen(), id, QStringLiteral("Sn"), QStringLiteral("SN-'42'")); }, "0101|3|1250.5|-100|SN-'42'"},
        {[&] { RecalculaLineas(almacen(), 1); }, "0101|3|1250.5|3751.5|SN-'42'"},
    };
    for (const auto& [paso, queda] : pasos) {
        paso();
        EXPECT_EQ(borrador(), QStringList{QString::fromUtf8(queda)});
    }
    EXPECT_THROW(CorrigeLinea(almacen(), id, QStringLiteral("PCRed"), 5), Aviso);
    BorraLinea(almacen(), id);
    EXPECT_TRUE(borrador().isEmpty());
}

// Un artículo que no está, o lo que no se puede leer o no cabe, se rechaza con un aviso que lo
// dice, nunca termina el programa y el borrador queda exactamente como estaba.
TEST_P(Venta, LoQueNoSeEncuentraOFueraDeRangoSeRechazaSinTocarElBorrador) {
    const qint64 id = agrega(1, O::CodigoBarras, "0101", "2", "0").idTmpFac;
    const QStringList antes = borrador();
    const QString cantidadFuera = QStringLiteral("Cantidad: Importe fuera de rango!");
    const QString unitarioFuera = QStringLiteral("Unitario: Importe fuera de rango!");
    const QString malEscrita = QStringLiteral(": el número está mal escrito. Use el punto para los decimales (1234.50).");
    const auto nueva = [this](const char* cant, const char* unit) {
        return [=, this] { agrega(1, O::CodigoProveedor, "AB'1%*", cant, unit); };
    };
    const auto corrige = [this, id](const char* campo, const char* valor) {
        return [=, this] { CorrigeLinea(almacen(), id, QString::fromLatin1(campo), QString::fromLatin1(valor)); };
    };
    const auto pide = [this](O origen, const char* codigo, const char* unit, std::optional<qint64> id = {}) {
        return [=, this] { agrega(1, origen, codigo, "1", unit, id); };
    };
    const std::tuple<const char*, std::function<void()>, QString> casos[] = {
        {"código que no está", pide(O::CodigoBarras, "9999", "0"), kArticuloNoEncontrado},
        {"código con apóstrofos", pide(O::CodigoBarras, "0101' OR '1'='1", "0"), kArticuloNoEncontrado},
        {"código con comodín", pide(O::CodigoBarras, "AB%", "0"), kArticuloNoEncontrado},
        {"precio que no es número", pide(O::CodigoProveedor, "0101", "diez"), kArticuloNoEncontrado},
        {"de la lista, uno que no está", pide(O::Lista, "", "1", 987654), kArticuloNoEncontrado},
        {"de la lista, sin elegir", pide(O::Lista, "", "1"), "Error:No hay ningún artículo elegido en la lista."},
        {"código de barras en la cantidad", nueva("4006381333931", "10"), cantidadFuera},
        {"cantidad con coma decimal", nueva("1,5", "10"), "Cantidad" + malEscrita},
        {"precio sobre el tope", nueva("1", "1000000000000"), unitarioFuera},
        {"línea que no cabe", nueva("999999", "999999999"), kImporteFueraDeRango},
        {"sumar a la línea hasta pasarse", [this] { agrega(1, O::CodigoBarras, "0101", "999999999", "0"); }, cantidadFuera},
        {"tecla + sobre una cantidad enorme", [this, id] { CambiaCantidad(almacen(), id, 1e300); }, cantidadFuera},
        {"tecla + más allá de la cantidad máxima", [this, id] { CambiaCantidad(almacen(), id, 999999998); }, cantidadFuera},
        {"corregir con letras", corrige("Cantidad", "abc"), "Cantidad" + malEscrita},
        {"corregir con 1e300", corrige("Cantidad", "1e300"), cantidadFuera},
        {"corregir el unitario hasta pasarse", corrige("Unitario", "999999999999"), kImporteFueraDeRango},
        {"corregir el unitario con letras", corrige("Unitario", "abc"), "Unitario" + malEscrita},
    };
    for (const auto& [que, accion, aviso] : casos) {
        EXPECT_EQ(AvisoDe(accion), aviso) << que;
        EXPECT_EQ(borrador(), antes) << que;
    }
    // Las búsquedas exactas, con apóstrofos y comodines en el código.
    EXPECT_EQ(std::make_pair(ArticuloPorCgoProveedor(almacen(), QStringLiteral("P'01"))->idArticulo,
                             ArticuloPorCodigo(almacen(), QStringLiteral("AB'1%*"))->descripcion),
              std::make_pair(qint64(2), QStringLiteral("Código raro")));
}

// El cliente de la venta por número o por tarjeta según el largo de lo escrito. El cliente con que
// empieza cada venta: sólo un número de cliente que existe; lo demás se rechaza sin cambiar lo
// guardado, y un cliente que ya no está deja la venta sin cliente.
TEST_P(Venta, ClientePorNumeroOPorTarjetaYClientePredeterminado) {
    Almacen& a = almacen();
    a.ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, Cuit, idTipoIva, Descuento, idTipoFormaPago, Domicilio, "
                             "Telefono, Telefono2, \"e-mail\", NroClienteVIP) VALUES (77, 'Ana D''Angelo', '20-12345678-6', 3, 10, 2, "
                             "'Mitre 1', '341 1', '', 'ana@x.com', '123456'), (123456, 'Número alto', NULL, 1, 0, NULL, NULL, NULL, "
                             "NULL, NULL, NULL)"));
    const auto datos = [](const std::optional<ClienteVenta>& c) {
        if (!c) return QVariantList();
        return QVariantList{c->idVendedor, c->vip, c->nombre, c->cuit, c->idTipoIva, c->descuento, c->idTipoFormaPago.toInt(), c->direccion};
    };
    const auto cliente = [&](const char* escrito) { return datos(ClientePorNumero(a, QString::fromUtf8(escrito))); };
    const QVariantList ana = {77, false, "Ana D'Angelo", "20-12345678-6", 3, 10.0, 2, "Mitre 1, 341 1, , ana@x.com"};
    EXPECT_EQ(cliente("77"), ana);
    // Seis cifras es tarjeta aunque exista un cliente con ese número.
    QVariantList tarjeta = ana;
    tarjeta[1] = true;
    EXPECT_EQ(cliente("123456"), tarjeta);
    for (const char* nada : {"654321", "99999", "Ana", "1'", "1.5"}) EXPECT_EQ(cliente(nada), QVariantList()) << nada;

    QTemporaryDir d;
    const Configuracion conf(d.path(), d.filePath(QStringLiteral("usuario.conf")));
    const auto guardado = [&] { return conf.lee(clave::miscelaneas, QStringLiteral("ClientePredeterminado")); };
    EXPECT_FALSE(ClientePredeterminado(a, conf));
    FijaClientePredeterminado(a, conf, QStringLiteral(" 77 "));
    EXPECT_EQ(datos(ClientePredeterminado(a, conf)), ana);
    for (const char* malo : {"99999", "Ana", "1.5", "-1", "99999999999999999999"}) {
        EXPECT_THROW(FijaClientePredeterminado(a, conf, QString::fromLatin1(malo)), Aviso) << malo;
        EXPECT_EQ(guardado(), QStringLiteral("77"));
    }
    a.ejecuta(QStringLiteral("DELETE FROM Vendedores WHERE idVendedor = 77"));
    EXPECT_FALSE(ClientePredeterminado(a, conf));
    FijaClientePredeterminado(a, conf, QString());
    EXPECT_TRUE(guardado().isEmpty());
}

TEST(Multiplicador, NumeroYAsteriscoAntesDelCodigo) {
    // Lo escrito, y el código y la cantidad que salen ("-": sin multiplicador).
    const std::pair<const char*, const char*> casos[] = {
        {"3*7791234567890", "7791234567890|3"}, {"1.5*0303", "0303|1.5"}, {"12*AB'1%*", "AB'1%*|12"}, {"0101", "0101|-"},
        {"AB'1%*", "AB'1%*|-"},     // el asterisco del código no es un multiplicador
        {"3*", "3*|-"},             // sin código todavía
        {"1,5*0303", "1,5*0303|-"}, // la coma no es decimal
        {"*0101", "*0101|-"}, {"-2*0101", "-2*0101|-"}, {"3.*0101", "3.*0101|-"},
    };
    for (const auto& [escrito, esperado] : casos) {
        const CodigoConCantidad r = SeparaCantidad(QString::fromUtf8(escrito));
        EXPECT_EQ(r.codigo + u'|' + r.cantidad.value_or(QStringLiteral("-")), QString::fromUtf8(esperado)) << escrito;
    }
}

TEST_P(Venta, TiposDeComprobanteNumeracionYValidaciones) {
    Almacen& a = almacen();
    EXPECT_EQ(ProximoNumeroMostrado(a, 1), QStringLiteral("B 0001-00000001"));
    a.ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET Correlativo = 41 WHERE idTipoComprobante = 1"));
    EXPECT_EQ(QStringList({ProximoNumeroMostrado(a, 1), ProximoNumeroMostrado(a, 999),
                           NumeroGuardado(QStringLiteral("A"), QStringLiteral("0002"), 42),
                           NumeroMostrado(QStringLiteral("A"), QStringLiteral("0002"), 123456789),
                           NumeroGuardado(QStringLiteral("A"), QStringLiteral("0002"), 1234567890)}),
              QStringList({"B 0001-00000042", "", "A0002-00000042", "A 0002-123456789", "A0002-123456789"}));

    // Como lo deja la pantalla: el punto de venta con su nombre, el documento fiscal cortado en 3.
    const TipoComprobante t = {.tipo = QStringLiteral("NOTA DE CRÉDITO 'B'"), .letra = QStringLiteral("Bx"),
                               .puntoDeVenta = QStringLiteral("0003 - Sucursal"), .correlativo = QStringLiteral("100"),
                               .correlativoLeido = {}, .descuentaStock = true, .registraCaja = false, .operacionInversa = true,
                               .esComercial = false, .plantilla = PlantillaFiscal(TextoModeloFiscal(ModeloFiscal::Hasar), QStringLiteral("2")),
                               .modDocumento = QStringLiteral("43 - N.CREDITO B").left(3)};
    // Un campo mal escrito y el aviso; un nombre más largo que su columna se rechaza en vez de cortarse callado.
    const QString mal = QStringLiteral("Error, ingrese la información correctamente!");
    const std::tuple<QString TipoComprobante::*, QString, QString> malos[] = {
        {&TipoComprobante::correlativo, "cien", mal}, {&TipoComprobante::letra, "", mal}, {&TipoComprobante::plantilla, kSinPlantilla, mal},
        {&TipoComprobante::tipo, "  ", mal}, {&TipoComprobante::tipo, QString(41, u'X'), "Tipo: admite hasta 40 caracteres (tiene 41)."},
    };
    for (const auto& [campo, valor, aviso] : malos) {
        TipoComprobante m = t;
        m.*campo = valor;
        EXPECT_EQ(AvisoDe([&] { GuardaTipo(a, std::nullopt, m); }), aviso) << valor.toStdString();
    }
    const qint64 id = GuardaTipo(a, std::nullopt, t);
    const TipoComprobante l = LeeTipo(a, id).value();
    EXPECT_EQ(QVariantList({l.tipo, l.letra, l.puntoDeVenta, l.correlativo, l.modDocumento, l.operacionInversa, l.descuentaStock,
                            l.registraCaja, l.esComercial}),
              QVariantList({t.tipo, "B", "0003", "100", "43", true, true, false, false}));
    // "Comenzar en" 100: el primero será el 101.
    EXPECT_EQ(ProximoNumeroMostrado(a, id), QStringLiteral("B 0003-00000101"));
    TipoComprobante sinModelo = l;
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
    const QString fuera = QStringLiteral("Correlativo: Importe fuera de rango!");
    // Lo que deja el usuario en el diálogo (leyó 100), el número en el almacén al guardar, el aviso
    // (vacío: se guarda), y Tipo y Correlativo en el almacén después.
    const struct {
        const char *que, *escrito;
        qint64 otroPuesto;
        QString aviso;
        const char* queda;
    } casos[] = {
        {"sin tocar el número, otro puesto vendió", "100", 105, {}, "FACTURA X NUEVA|105"},
        {"número cambiado, nadie lo movió", "200", 100, {}, "FACTURA X NUEVA|200"},
        {"número cambiado, otro puesto vendió", "200", 105,
         QStringLiteral("Otro puesto registró un comprobante de este tipo mientras lo editaba: el último número es ahora "
                        "105. No se guardó nada; revise el número y vuelva a guardar."),
         "FACTURA X|105"},
        {"correlativo 1e300", "1e300", 100, fuera, "FACTURA X|100"},
        {"veinte cifras", "99999999999999999999", 100, fuera, "FACTURA X|100"},
        {"negativo", "-1", 100, fuera, "FACTURA X|100"},
    };
    const TipoComprobante t = {.tipo = QStringLiteral("FACTURA X"), .letra = QStringLiteral("B"), .puntoDeVenta = QStringLiteral("0001"),
                         .correlativo = QStringLiteral("100"), .correlativoLeido = {}, .descuentaStock = false, .registraCaja = false,
                         .operacionInversa = false, .esComercial = false, .plantilla = QStringLiteral("factura.rpt"), .modDocumento = {}};
    for (const auto& c : casos) {
        const qint64 id = GuardaTipo(a, std::nullopt, t);
        TipoComprobante editado = LeeTipo(a, id).value();
        a.ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET Correlativo = ? WHERE idTipoComprobante = ?"), {c.otroPuesto, id});
        editado.tipo = QStringLiteral("FACTURA X NUEVA");
        editado.correlativo = QString::fromLatin1(c.escrito);
        EXPECT_EQ(AvisoDe([&] { GuardaTipo(a, id, editado); }), c.aviso) << c.que;
        EXPECT_EQ(prueba::Filas(a, QStringLiteral("SELECT Tipo, Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = ?"), {id}),
                  QStringList{QString::fromLatin1(c.queda)})
            << c.que;
    }
}

TEST(TiposDeComprobante, PlantillasDeImpresorasIdaYVuelta) {
    const auto idaYVuelta = [](ModeloFiscal m, const QString& item, const char* puerto) {
        const QString plantilla = PlantillaFiscal(TextoModeloFiscal(m, item), QString::fromLatin1(puerto));
        const LecturaFiscal l = LeePlantillaFiscal(plantilla);
        return std::make_tuple(plantilla, l.modelo == m, l.itemHasar, l.puerto);
    };
    EXPECT_EQ(idaYVuelta(ModeloFiscal::Hasar, QStringLiteral("615 - PL8F"), "3"),
              std::make_tuple(QStringLiteral("IMPRESORA FISCAL : HASAR O COMPAT. 615 - PL8F|PUERTO : 3"), true, QStringLiteral("615 - PL8F"),
                              QStringLiteral("3")));
    for (const QString& item : ModelosHasar()) EXPECT_EQ(std::get<2>(idaYVuelta(ModeloFiscal::Hasar, item, "1")), item);
    EXPECT_EQ(idaYVuelta(ModeloFiscal::Epson200, {}, "2"),
              std::make_tuple(QStringLiteral("IMPRESORA FISCAL : EPSON 200 80 COL|PUERTO : 2"), true, QString(), QStringLiteral("2")));
    EXPECT_EQ(std::get<1>(idaYVuelta(ModeloFiscal::EpsonTMU, {}, "")), true);
    // Un texto de otra clase (un tipo nuevo, una plantilla) abre como Hasar sin modelo; el modelo
    // Hasar se corta por posición: un blanco de más lo corre.
    EXPECT_EQ(LeePlantillaFiscal(kSinPlantilla).modelo, ModeloFiscal::Hasar);
    EXPECT_NE(LeePlantillaFiscal(QStringLiteral("IMPRESORA FISCAL :  HASAR O COMPAT. 950|PUERTO : 1")).itemHasar, QStringLiteral("950"));
}

// La ruta sale del comienzo de la plantilla: vacía pregunta (con "No" no se registra); tickets avisa
// y sigue; cualquier otra (de diez caracteres, o un archivo que ya no está) va por la plantilla sin
// preguntar. La fiscal con letra A revisa el CUIT guardado del cliente; con B, no.
TEST_P(Venta, RutaPorElComienzoDeLaPlantillaYCuitDeLaFiscalConLetraA) {
    almacen().ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, Cuit) VALUES (11, 'Bueno', '20-12345678-6'), "
                                     "(12, 'Malo', '20-12345678-0'), (13, 'Sin CUIT', NULL), (14, 'Diez cifras', '20-1234567-6')"));
    const QString fiscal = PlantillaFiscal(TextoModeloFiscal(ModeloFiscal::EpsonTMU), QStringLiteral("1"));
    // Plantilla, letra, cliente y respuesta a la pregunta; la ruta ("no": no se registra) o el aviso, y lo que se dijo.
    const struct { QString plantilla; const char* letra; std::optional<qint64> cliente; bool si; QString sale; QStringList dicho; } casos[] = {
        {QString(), "B", {}, false, "no", {kPreguntaSinPlantilla}},
        {QString(), "B", {}, true, "Nada", {kPreguntaSinPlantilla}},
        {PlantillaTickets(QStringLiteral("COM1")), "B", {}, true, "Tickets", {}},
        {QStringLiteral("factur.rpt"), "A", {}, true, "Plantilla", {}},
        {fiscal, "A", 11, true, "Fiscal", {}},
        {fiscal, "A", 12, true, kCuitInvalidoFiscal, {}},
        {fiscal, "A", 13, true, kCuitInvalidoFiscal, {}},
        {fiscal, "A", 14, true, kCuitInvalidoFiscal, {}},
        {fiscal, "A", {}, true, kCuitInvalidoFiscal, {}},
        {fiscal, "B", 13, true, "Fiscal", {}},
    };
    const QStringList nombres = {"Nada", "Tickets", "Fiscal", "Plantilla"};
    for (const auto& c : casos) {
        QStringList dicho;
        PreguntasRuta p;
        p.preguntaSinPlantilla = [&](const QString& t) {
            dicho << t;
            return c.si;
        };
        std::optional<Ruta> r;
        const QString aviso = AvisoDe([&] { r = DecideRuta(almacen(), c.plantilla, QString::fromLatin1(c.letra), c.cliente, p); });
        EXPECT_EQ(aviso.isEmpty() ? (r ? nombres.at(int(*r)) : QStringLiteral("no")) : aviso, c.sale)
            << c.plantilla.toStdString() << ' ' << c.letra << ' ' << c.cliente.value_or(0);
        EXPECT_EQ(dicho, c.dicho) << c.plantilla.toStdString();
    }
}

ORV_AMBOS_MOTORES(Venta);

} // namespace
} // namespace orv
