// El panel "Vender" conducido como lo usa un cajero: lector de códigos, teclado y mouse; y
// "Registrar": el orden de las negativas (fecha cerrada primero), la pregunta, el comprobante que
// queda y sale por la salida de informes, y una falla que no pierde el borrador.

#include "panel_prueba.h"
#include "reports/ui/salida_informes.h"
#include "reports/ui/visor_informe.h"
#include "sales/ui/panel_venta.h"
#include "sales/borrador.h"
#include "sales/cliente_venta.h"
#include "sales/diseno_ticket.h"
#include "sales/tipos_comprobante.h"
#include "sales/ui/pan_fpago.h"
#include "sales/ui/pan_sel_cliente.h"
#include "widgets/grilla.h"

#include <QFile>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTableView>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>

namespace orv {
namespace {

using prueba::alAbrirse;
using prueba::respondeCaja;

// La pregunta de registrar, que la vigía de cajas responde con "Sí".
const QString kRegistra = QStringLiteral("Registra e Imprime :FACTURA B ??");

class PanelVentaTest : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, PrecioVenta, CgoProveedor, StockActual) VALUES "
                                   "('0101', 'Yerba 1 kg', 100, 'PRV-1', 5), ('AB''1%*', 'Código raro', 19.99, 'P''2', NULL), "
                                   "('0303', 'Azúcar 1 kg', 250, NULL, NULL), ('0404', 'Sin precio', NULL, 'PRV-4', NULL), "
                                   "('00123', 'Queso por kg', 20, NULL, NULL)"));
        a().ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, Cuit, idTipoIva, Descuento, idTipoFormaPago, "
                                   "Domicilio, NroClienteVIP) VALUES (5, 'Ana O''Neil', '27-11111111-1', 1, 10, 1, 'Mitre 1', '123456'), "
                                   "(12345, 'Bruno Cinco Cifras', NULL, 1, 0, NULL, NULL, NULL)"));
        salida_->fijaDestino(QStringLiteral("2 - A un archivo"), QStringLiteral("1"));
        salida_->eligeArchivo = [this](const QString&) { return pdf(); };
        panel_ = nuevoPanel(estado_);
    }
    // Un panel como el de la ventana principal, que imprime a un archivo.
    std::unique_ptr<PanelVenta> nuevoPanel(EstadoAplicacion& e) {
        auto p = std::make_unique<PanelVenta>(a(), e, *conf_);
        p->resize(1200, 700);
        p->leeCoefIva();
        p->llenaTiposComprobante();
        p->llenaArticulos();
        p->llenaVendedores();
        p->llenaFormasPago();
        p->fijaSalida(salida_.get());
        p->fijaReloj(&reloj_);
        p->show();
        QApplication::setActiveWindow(p.get());
        p->entra();
        return p;
    }
    QString pdf() const { return base_->carpeta() + QStringLiteral("/comprobante.pdf"); }
    template <typename T = QLineEdit>
    T* w(const char* nombre) const { return prueba::hijo<T>(*panel_, nombre); }
    QStringList textos(std::initializer_list<const char*> nombres) const { return prueba::Textos(*panel_, nombres); }
    // Código, cantidad, unitario y subtotal de cada línea del borrador de la terminal.
    QStringList lineas(qint32 red = 1) const {
        return prueba::Filas(a(), QStringLiteral("SELECT Codigo, Cantidad, Unitario, SubTotal FROM TmpFac WHERE PCRed = ? ORDER BY idTmpFac"), {red});
    }
    // Lo que hace el lector: cada código y Enter en el campo de código.
    void escanea(std::initializer_list<const char*> codigos) {
        for (const char* c : codigos) prueba::Teclea(*panel_, "Text7", QString::fromUtf8(c));
    }
    // Escribe en un campo sin Enter, reemplazando lo que tenía.
    void escribe(const char* campo, const QString& texto) {
        w(campo)->setFocus();
        w(campo)->selectAll();
        QTest::keyClicks(w(campo), texto);
    }
    void cliente(const QString& numero) { prueba::Teclea(*panel_, "Text8", numero); }
    // Comprobantes, borrador y correlativo de la FACTURA B.
    QStringList almacenado() {
        return prueba::Filas(a(), QStringLiteral("SELECT (SELECT count(*) FROM Comprobantes), (SELECT count(*) FROM TmpFac), "
                                                 "(SELECT Correlativo FROM TiposDeComprobantes WHERE idTipoComprobante = 1)"));
    }
    void f9() {
        QApplication::setActiveWindow(panel_.get());
        QTest::keyClick(panel_.get(), Qt::Key_F9);
    }
    Almacen& a() const { return base_->almacen(); }

    std::unique_ptr<PanelVenta> panel_;
};
class Registrar : public PanelVentaTest {};

// El lector suma el mismo artículo en su línea; "3*" antes del código pide 3 sin pasar por
// "Cantidad", que lo muestra mientras llega el código; un código que no está (o una etiqueta de
// balanza mal leída) se avisa en el panel sin una caja que se trague el Enter del escaneo siguiente.
TEST_F(PanelVentaTest, ElLectorSumaMultiplicaYAvisaLoQueNoEsta) {
    escanea({"0101", "0101"});
    EXPECT_EQ(lineas(), QStringList{"0101|2|100|200"});
    // La carga vuelve a su estado: código vacío con el foco, cantidad 1, precio 0.
    EXPECT_EQ(textos({"lblItems", "txtMontoTotal", "Text7", "txtCant", "txUnit"}),
              QStringList({"2.0 de 1 ítems.", "200.00", "", "1", "0"}));
    EXPECT_TRUE(w("Text7")->hasFocus());
    QTest::keyClicks(w("Text7"), QStringLiteral("3*"));
    EXPECT_EQ(w("txtCant")->text(), QStringLiteral("3"));
    QTest::keyClicks(w("Text7"), QStringLiteral("0101"));
    QTest::keyClick(w("Text7"), Qt::Key_Return);
    escanea({"1.5*0303", "AB'1%*"}); // el último parece un multiplicador, pero es un código
    EXPECT_EQ(lineas(), QStringList({"0101|5|100|500", "0303|1.5|250|375", "AB'1%*|1|19.99|19.99"}));

    prueba::VigiaDeCajas vigia;
    escanea({"NO-EXISTE"});
    EXPECT_TRUE(w<QLabel>("lblNoEncontrado")->isVisible());
    EXPECT_EQ(textos({"lblNoEncontrado", "txtMontoTotal"}), QStringList({"Articulo no encontrado!   NO-EXISTE", "894.99"}));
    EXPECT_EQ(w("Text7")->selectedText(), QStringLiteral("NO-EXISTE"));
    // El código queda marcado: el escaneo siguiente lo reemplaza.
    QTest::keyClicks(w("Text7"), QStringLiteral("0101"));
    QTest::keyClick(w("Text7"), Qt::Key_Return);
    EXPECT_FALSE(w<QLabel>("lblNoEncontrado")->isVisible());
    EXPECT_EQ(lineas().first(), QStringLiteral("0101|6|100|600"));

    // Cada etiqueta de balanza es su línea, al importe de la etiqueta; la mal leída se dice en la
    // franja como un código que no está. La configuración se vuelve a leer al entrar al panel.
    escanea({"2000123012506", "3*2000123012506"});
    conf_->graba(clave::miscelaneas, QStringLiteral("BalanzaValor"), QStringLiteral("Peso"));
    panel_->entra();
    escanea({"2100123003501", "2000123012507"});
    EXPECT_EQ(lineas().mid(3), QStringList({"00123|1|12.5|12.5", "00123|3|12.5|37.5", "00123|0.35|20|7"}));
    EXPECT_EQ(std::make_pair(w<QLabel>("lblNoEncontrado")->text(), w("Text7")->selectedText()),
              std::make_pair(QStringLiteral("Código de balanza mal leído (dígito verificador): 2000123012507. Vuelva a escanearlo."),
                             QStringLiteral("2000123012507")));
    QTest::qWait(30);
    EXPECT_EQ(vigia.vistas, QStringList());
}

// Medio kilo escrito en "Cantidad" después del código, que al perder el foco muestra el precio; el
// código del proveedor (donde se escanea el del bulto) trae el precio antes de agregar, y con otro
// precio escrito suma con el unitario viejo; sin precio, el cursor va al precio.
TEST_F(PanelVentaTest, CantidadYCodigoDelProveedorConElPrecioALaVista) {
    w("Text7")->setFocus();
    QTest::keyClicks(w("Text7"), QStringLiteral("0303"));
    w("txtCant")->setFocus();
    EXPECT_EQ(w("txUnit")->text(), QStringLiteral("250.00"));
    escribe("txtCant", QStringLiteral("0.5"));
    QTest::keyClick(w("txtCant"), Qt::Key_Return);
    prueba::Teclea(*panel_, "Text16", QStringLiteral("PRV-1"));
    w("Text16")->setFocus();
    QTest::keyClicks(w("Text16"), QStringLiteral("PRV-1"));
    w("txUnit")->setFocus();
    EXPECT_EQ(w("Text7")->text(), QStringLiteral("0101"));
    escribe("txUnit", QStringLiteral("150"));
    QTest::keyClick(w("txUnit"), Qt::Key_Return);
    EXPECT_EQ(lineas(), QStringList({"0303|0.5|250|125", "0101|2|100|300"}));
    prueba::Teclea(*panel_, "Text16", QStringLiteral("PRV-4"));
    EXPECT_EQ(lineas().size(), 2);
    EXPECT_TRUE(w("txUnit")->hasFocus());
}

// Tarjeta de seis cifras y cliente de cinco; el descuento del cliente llega en dos pasos; los
// totales con impuesto y el vuelto.
TEST_F(PanelVentaTest, TarjetaDeSeisCifrasYClienteDeCincoConDescuentoEnDosPasos) {
    escanea({"0303"}); // 250
    prueba::Teclea(*panel_, "Text8", QStringLiteral("123456"));
    EXPECT_EQ(textos({"Label6", "lblCli", "lblCuit"}), QStringList({"Cliente VIP:", "Ana O'Neil", "CUIT - RFC : 27-11111111-1"}));
    EXPECT_EQ(std::make_pair(panel_->clienteEsVip(), panel_->idCliente()), std::make_pair(true, std::optional<qint64>(5)));
    EXPECT_TRUE(w("Text7")->hasFocus());
    // El descuento del cliente todavía no llega a los totales; "Mas Datos..." lo confirma.
    EXPECT_EQ(textos({"txtPorcDescuento", "txtMontoTotal"}), QStringList({"0", "250.00"}));
    alAbrirse<PanFPago>([](PanFPago* d) {
        EXPECT_EQ(d->findChild<QLineEdit*>(QStringLiteral("Text2"))->text(), QStringLiteral("10"));
        d->findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    });
    QTest::keyClick(panel_.get(), Qt::Key_F5);
    EXPECT_EQ(textos({"txtPorcDescuento", "lblImporteDescuento", "txtMontoTotal"}), QStringList({"10", "25.00", "225.00"}));
    // El impuesto va sobre el neto y queda para la venta siguiente; el vuelto sigue al pago, puede
    // ser negativo y queda en blanco si se borra el pago.
    QApplication::setActiveWindow(panel_.get()); // el diálogo se llevó la activación
    escanea({"0303", "0101"});
    escribe("txtPorcImpuesto", QStringLiteral("21"));
    w("Text7")->setFocus();
    EXPECT_EQ(textos({"lblSubTotal", "lblImporteDescuento", "txtNeto", "lblImpuestoImporte", "txtMontoTotal"}),
              QStringList({"600.00", "60.00", "540.00", "113.40", "653.40"}));
    EXPECT_EQ(conf_->lee(clave::miscelaneas, QStringLiteral("CoefIva")), QStringLiteral("21"));
    QTest::keyClick(panel_.get(), Qt::Key_F6);
    QTest::keyClicks(w("txSuPago"), QStringLiteral("1000"));
    EXPECT_EQ(textos({"txSuVuelto"}), QStringList{"346.60"});
    w("txSuPago")->setText(QStringLiteral("600"));
    EXPECT_EQ(textos({"txSuVuelto"}), QStringList{"-53.40"});
    w("txSuPago")->clear();
    EXPECT_EQ(textos({"txSuVuelto"}), QStringList{""});

    // Cinco cifras es número de cliente; escribir en el campo deja la venta sin cliente elegido.
    escribe("Text8", QStringLiteral("12345"));
    EXPECT_EQ(std::make_pair(panel_->idCliente(), w<QLabel>("Label6")->text()), std::make_pair(std::optional<qint64>(), QStringLiteral("???")));
    QTest::keyClick(w("Text8"), Qt::Key_Return);
    EXPECT_EQ(textos({"Label6", "lblCli"}), QStringList({"Cliente:", "Bruno Cinco Cifras"}));
    EXPECT_FALSE(panel_->clienteEsVip());

    // Un número que no está abre la búsqueda; cancelada, el campo queda vacío.
    auto busqueda = alAbrirse<PanSelCliente>([](PanSelCliente* d) { d->reject(); });
    escribe("Text8", QStringLiteral("999999"));
    QTest::keyClick(w("Text8"), Qt::Key_Return);
    EXPECT_TRUE(busqueda->vista);
    EXPECT_TRUE(w("Text8")->text().isEmpty());
    // Y elegido en la búsqueda, por nombre.
    alAbrirse<PanSelCliente>([](PanSelCliente* d) { prueba::Teclea(*d, "Text1", QStringLiteral("ana")); });
    prueba::Teclea(*panel_, "Text8", QStringLiteral("Ana"));
    EXPECT_EQ(panel_->idCliente(), 5);
    EXPECT_EQ(textos({"Text8", "Label6"}), QStringList({"5", "Cliente:"}));
}

TEST_F(PanelVentaTest, TeclasMasMenosBorrarYAnular) {
    escanea({"0101", "0303"});
    QTableView* t = panel_->grilla()->tabla();
    t->setFocus();
    panel_->grilla()->irAFila(0);
    QTest::keyClick(t, Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(lineas().first(), QStringLiteral("0101|2|100|200"));
    panel_->grilla()->irAFila(0);
    QTest::keyClick(t, Qt::Key_Minus, Qt::KeypadModifier);
    QTest::keyClick(t, Qt::Key_Minus); // el del teclado principal hace lo mismo
    EXPECT_EQ(lineas().first(), QStringLiteral("0101|0|100|0"));
    EXPECT_EQ(w<QLabel>("txtMontoTotal")->text(), QStringLiteral("250.00"));

    // Supr pregunta y borra la línea actual; el botón también. Sin líneas el total vuelve a 0.
    panel_->grilla()->irAFila(1);
    auto pregunta = respondeCaja(QStringLiteral("Sí"));
    QTest::keyClick(t, Qt::Key_Delete);
    EXPECT_EQ(pregunta->texto, QStringLiteral("Borra este ítem? ??"));
    EXPECT_EQ(lineas(), QStringList{"0101|0|100|0"});
    panel_->grilla()->irAFila(0);
    respondeCaja(QStringLiteral("Sí"));
    QTest::mouseClick(w<QPushButton>("Command18"), Qt::LeftButton);
    EXPECT_TRUE(lineas().empty());
    EXPECT_EQ(textos({"txtMontoTotal", "lblSubTotal"}), QStringList({"0.00", "0.00"}));
    EXPECT_FALSE(w<QPushButton>("Command18")->isEnabled());

    // Anular (F8) vacía todo y deja el impuesto.
    escanea({"0303"});
    w("txtPorcImpuesto")->setText(QStringLiteral("21"));
    prueba::Teclea(*panel_, "Text8", QStringLiteral("5"));
    auto anula = respondeCaja(QStringLiteral("Sí"));
    QApplication::setActiveWindow(panel_.get()); // las cajas de mensaje se llevaron la activación
    QTest::keyClick(panel_.get(), Qt::Key_F8);
    EXPECT_EQ(anula->texto, QStringLiteral("Está seguro de cancelar el documento actual? ??"));
    EXPECT_TRUE(lineas().empty());
    EXPECT_EQ(textos({"lblItems", "lblCli", "lblDirCli", "lblCuit", "Label6", "txtPorcImpuesto"}),
              QStringList({"0 ítems.", "<Sin seleccion de cliente>", "Domicilio - Telefonos - e-mail", "CUIT : 0", "????", "21"}));
    EXPECT_EQ(std::make_pair(estado_.NombreClienteActual, panel_->idCliente()), std::make_pair(QStringLiteral("Cons.Final"), std::optional<qint64>()));
}

// Con permiso, la grilla se corrige. Lo que un cajero puede teclear mal en el panel (cada camino
// una vez; los topes de cada campo se prueban en la lógica) se rechaza con un mensaje que lo
// nombra, el programa sigue, el borrador guardado y los totales no cambian, y la grilla vuelve a
// mostrar lo guardado.
TEST_F(PanelVentaTest, CorreccionesYLoTecleadoFueraDeRango) {
    panel_->fijaSoloLectura(false);
    escanea({"0101"});
    auto& m = panel_->grilla()->modelo();
    const auto enLaGrilla = [&](const char* columna, const char* valor) {
        return [&m, columna, valor] { m.setData(m.index(0, m.columna(QString::fromLatin1(columna))), QString::fromLatin1(valor)); };
    };
    const QString malEscrito = QStringLiteral(": el número está mal escrito. Use el punto para los decimales (1234.50).");
    const std::tuple<const char*, std::function<void()>, QString> casos[] = {
        {"código de barras en la cantidad",
         [&] {
             escribe("txtCant", QStringLiteral("4006381333931"));
             escanea({"0303"});
         },
         QStringLiteral("Cantidad: Importe fuera de rango!")},
        {"unitario que no cabe, en la grilla", enLaGrilla("Unitario", "922337203685477"), QStringLiteral("Unitario: Importe fuera de rango!")},
        {"cantidad con letras, en la grilla", enLaGrilla("Cantidad", "abc"), "Cantidad" + malEscrito},
        {"descuento con coma decimal",
         [&] {
             escribe("txtPorcDescuento", QStringLiteral("1,5"));
             w("Text7")->setFocus();
         },
         "Desc." + malEscrito},
    };
    for (const auto& [que, teclea, mensaje] : casos) {
        QApplication::setActiveWindow(panel_.get()); // las cajas de mensaje se llevan la activación
        auto caja = respondeCaja(QStringLiteral("Aceptar"));
        teclea();
        EXPECT_TRUE(QTest::qWaitFor([&] { return caja->vista; }, 3000)) << que;
        EXPECT_EQ(caja->texto, mensaje) << que;
        EXPECT_EQ(lineas(), QStringList{"0101|1|100|100"}) << que;
        EXPECT_TRUE(QTest::qWaitFor([&] { return m.data(m.index(0, m.columna(QStringLiteral("Cantidad")))).toDouble() == 1.0; }, 3000))
            << que;
        EXPECT_EQ(textos({"txtMontoTotal", "txtPorcDescuento"}), QStringList({"100.00", "0"})) << que;
        w("txtCant")->setText(QStringLiteral("1"));
        w("Text7")->clear();
    }
    // Una corrección buena recalcula la línea y los totales; sin permiso la grilla no se corrige.
    ASSERT_TRUE(m.setData(m.index(0, m.columna(QStringLiteral("Cantidad"))), QStringLiteral("3")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return lineas() == QStringList{"0101|3|100|300"}; }, 3000));
    EXPECT_EQ(textos({"txtMontoTotal"}), QStringList{"300.00"});
    panel_->fijaSoloLectura(true);
    EXPECT_FALSE(m.flags(m.index(0, 0)) & Qt::ItemIsEditable);
    EXPECT_EQ(panel_->grilla()->tabla()->editTriggers(), QAbstractItemView::NoEditTriggers);
}

// El borrador sobrevive al reinicio y cada terminal ve el suyo; una línea imposible guardada por
// otro camino no traba el panel: abre y la señala (borrarla es como borrar cualquier otra).
TEST_F(PanelVentaTest, AlAbrirVeSuBorradorAunqueTengaUnaLineaImposible) {
    escanea({"0101", "0303"});
    AgregaLinea(a(), 2, {OrigenLinea::CodigoBarras, QStringLiteral("0101"), {}, QStringLiteral("1"), QStringLiteral("0")});
    a().ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = 1e300, SubTotal = 900000000000000 WHERE PCRed = 1 AND Codigo = '0101'"));
    // "Reinicio": otro panel de la misma terminal ve sus dos líneas (no la de la terminal 2) y señala la mala.
    panel_.reset();
    panel_ = nuevoPanel(estado_);
    EXPECT_EQ(panel_->grilla()->modelo().rowCount(), 2);
    EXPECT_EQ(textos({"lblItems", "txtMontoTotal"}),
              QStringList({"La línea \"Yerba 1 kg\" tiene una cantidad o un importe fuera de rango: bórrela o corríjala.", "0.00"}));
    EXPECT_EQ(panel_->grilla()->filaActual()->value(QStringLiteral("Codigo")).toString(), QStringLiteral("0101")); // la señalada
    // Un cliente sin forma de pago propia se ve con EFVO, la forma con que se guarda la venta.
    prueba::Teclea(*panel_, "Text8", QStringLiteral("12345"));
    EXPECT_EQ(QStringList({textos({"cboFPago"}).first(), estado_.FormaPagoActual}), QStringList({"EFVO", "EFVO"}));
}

TEST_F(Registrar, LasNegativasEnSuOrdenYNadaEscrito) {
    // Fecha cerrada: antes que todo, aun sin cliente.
    a().ejecuta(QStringLiteral("INSERT INTO CorteCaja (Fecha) VALUES (?)"), {QDate(2026, 11, 23)});
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    f9();
    EXPECT_EQ(caja->texto, QStringLiteral("Error, fecha cerrada para ingresar movimientos!"));
    a().ejecuta(QStringLiteral("DELETE FROM CorteCaja"));

    // Sin cliente, con el cursor en el cliente.
    escanea({"0101"});
    caja = respondeCaja(QStringLiteral("Aceptar"));
    panel_->findChild<QPushButton*>(QStringLiteral("Command16"))->click();
    EXPECT_EQ(std::make_pair(caja->titulo, caja->texto), std::make_pair(QStringLiteral("Error"), QStringLiteral("Seleccione Cliente!")));
    EXPECT_EQ(panel_->focusWidget(), w("Text8"));

    // La pregunta, con el tipo; No no hace nada.
    cliente(QStringLiteral("5"));
    caja = respondeCaja(QStringLiteral("No"));
    f9();
    EXPECT_EQ(caja->texto, QStringLiteral("Registra e Imprime :FACTURA B ??"));
    EXPECT_EQ(almacenado(), QStringList{"0|1|0"});

    // Sin líneas, después de la pregunta.
    a().ejecuta(QStringLiteral("DELETE FROM TmpFac"));
    prueba::VigiaDeCajas cajas(kRegistra);
    f9();
    EXPECT_EQ(cajas.vistas, QStringList({kRegistra, "No hay articulos a facturar!"}));
    EXPECT_EQ(almacenado(), QStringList{"0|0|0"});
}

// Registrar: el comprobante sale por la salida vigente (aquí, a un archivo) y empieza otra venta.
// Después, la caja que nunca toca el mouse: con cliente predeterminado cada venta empieza con él y
// el cursor en el código; otro número lo cambia sólo para esa venta. Escanear y F9: el comprobante
// se ve en una ventana casi del alto de la pantalla, Esc la cierra y la próxima venta ya está lista
// para escanear, con el predeterminado.
TEST_F(Registrar, RegistraPorLaSalidaVigenteYLaVentaSiguienteQuedaListaParaEscanear) {
    QSignalSpy registrado(panel_.get(), &PanelVenta::comprobanteRegistrado);
    escanea({"0101", "0101"});
    cliente(QStringLiteral("5"));
    w("txSuPago")->setText(QStringLiteral("500"));
    prueba::VigiaDeCajas cajas(kRegistra);
    f9();
    ASSERT_EQ(registrado.count(), 1);
    // Lo que el panel pasa al registro (el resto de las filas lo mira la prueba del registro).
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT Factura, idVendedor, Nombre, Cuit, FormaPago, SuPago, Total, idUsuario, "
                                                 "(SELECT StockActual FROM Articulos), (SELECT count(*) FROM Caja) FROM Comprobantes "
                                                 "WHERE idComprobante = ?"),
                            {registrado.at(0).at(0)}),
              QStringList{"B0001-00000001|5|Ana O'Neil|27-11111111-1|EFVO|500|200|1|3|1"});
    const QString t = prueba::TextoDelPdf(pdf());
    EXPECT_TRUE(t.contains(QStringLiteral("0001-00000001")) && t.contains(QStringLiteral("Ana O'Neil"))) << t.toStdString();
    // Venta nueva: borrador vacío, sin cliente, y el próximo número a la vista.
    EXPECT_EQ(almacenado(), QStringList{"1|0|1"});
    EXPECT_EQ(prueba::Textos(*panel_, {"Text8", "lblProx"}), QStringList({"", "B 0001-00000002"}));
    EXPECT_FALSE(panel_->idCliente());

    FijaClientePredeterminado(a(), *conf_, QStringLiteral("5"));
    SalidaInformes aLaVentana(a(), *conf_, estado_, reloj_, panel_.get());
    aLaVentana.fijaDestino(QStringLiteral("0 - A una ventana"), QStringLiteral("1"));
    panel_->fijaSalida(&aLaVentana);
    QApplication::setActiveWindow(panel_.get()); // la caja de la pregunta se llevó la activación
    panel_->reseteaFactura();
    EXPECT_EQ(prueba::Textos(*panel_, {"Text8", "lblCli"}), QStringList({"5", "Ana O'Neil"}));
    EXPECT_TRUE(w("Text7")->hasFocus());
    w("Text8")->clear();
    cliente(QStringLiteral("12345"));
    escanea({"0101"});
    f9();
    EXPECT_EQ(cajas.vistas, QStringList({kRegistra, kRegistra})); // sólo la pregunta de registrar
    EXPECT_EQ(prueba::Filas(a(), QStringLiteral("SELECT Nombre FROM Comprobantes ORDER BY idComprobante")),
              QStringList({"Ana O'Neil", "Bruno Cinco Cifras"}));
    QPointer<VisorInforme> visor = aLaVentana.ultimoVisor();
    ASSERT_TRUE(visor);
    EXPECT_GE(visor->height(), visor->screen()->availableGeometry().height() * 9 / 10);
    QApplication::setActiveWindow(visor);
    QTest::keyClick(visor, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return visor.isNull(); }, 2000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return w("Text7")->hasFocus(); }, 2000));
    EXPECT_EQ(std::make_pair(panel_->idCliente(), estado_.NombreClienteActual), std::make_pair(std::optional<qint64>(5), QStringLiteral("Ana O'Neil")));
    panel_->fijaSalida(salida_.get());
}

TEST_F(Registrar, UnaFallaLoDiceUnaVezYGuardaElBorradorYElNumero) {
    a().ejecuta(QStringLiteral("DROP TABLE Caja")); // la última escritura del registro falla en el motor
    escanea({"0101"});
    cliente(QStringLiteral("5"));
    prueba::VigiaDeCajas cajas(kRegistra);
    f9();
    ASSERT_EQ(cajas.vistas.size(), 2);
    EXPECT_TRUE(cajas.vistas[1].startsWith(QStringLiteral("No se registró el comprobante: "))) << cajas.vistas[1].toStdString();
    EXPECT_TRUE(cajas.vistas[1].endsWith(QStringLiteral("El borrador queda como estaba.")));
    EXPECT_EQ(almacenado(), QStringList{"0|1|0"});
    EXPECT_EQ(panel_->idCliente(), 5);
    EXPECT_FALSE(QFile::exists(pdf()));
}

// Con la impresora de tickets en la red, el comprobante registrado sale en ESC/POS con su número,
// el corte y el cajón (contado); con la impresora apagada, el mensaje llega después del registro y
// no se pierde nada.
TEST_F(Registrar, ElTicketSaleImpresoYUnaImpresoraApagadaNoPierdeElComprobante) {
    QTcpServer impresora;
    ASSERT_TRUE(impresora.listen(QHostAddress::LocalHost));
    const QString puerto = QStringLiteral("127.0.0.1:%1").arg(impresora.serverPort());
    a().ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET NombrePlantilla = ? WHERE idTipoComprobante = 1"), {PlantillaTickets(puerto)});
    DisenoTicket d;
    d.puerto = puerto;
    d.lugares = QList<std::optional<QPointF>>(ElementosTicket().size());
    d.lugares[5] = QPointF(1, 1); // Nro de Ticket
    GrabaDisenoTicket(*conf_, d);
    escanea({"0101"});
    cliente(QStringLiteral("5"));
    w("txSuPago")->setText(QStringLiteral("500"));
    prueba::VigiaDeCajas cajas(kRegistra);
    f9();
    QByteArray llegado;
    if (impresora.waitForNewConnection(3000)) {
        QTcpSocket* c = impresora.nextPendingConnection();
        while (c->waitForReadyRead(500)) llegado += c->readAll();
        llegado += c->readAll();
    }
    EXPECT_EQ(std::make_pair(llegado.contains("Nro Ticket : B0001-00000001\n"), llegado.right(9).toHex()),
              std::make_pair(true, QByteArray("1d5642001b700019fa")));
    impresora.close();
    escanea({"0101"});
    cliente(QStringLiteral("5"));
    f9();
    EXPECT_EQ(cajas.vistas, (QStringList{kRegistra, kRegistra,
                                         QStringLiteral("La impresora de tickets (%1) no responde: Connection refused.\nEl comprobante "
                                                        "quedó registrado: puede volver a imprimirlo desde \"Reimpresion de "
                                                        "documentos\".")
                                             .arg(puerto)}));
    EXPECT_EQ(almacenado(), QStringList{"2|0|2"});
}

} // namespace
} // namespace orv
