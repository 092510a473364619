// El panel "Vender" conducido como lo usa un cajero: lector de códigos, teclado y mouse.

#include "apoyo/pantalla_prueba.h"
#include "panel_prueba.h"
#include "apoyo/modal.h"
#include "sales/cliente_venta.h"
#include "sales/ui/pan_fpago.h"
#include "sales/ui/pan_sel_cliente.h"
#include "sales/ui/panel_venta.h"
#include "widgets/grilla.h"
#include "store/actualizacion.h"
#include "store/rutinas.h"
#include "../../ui/caja_modal.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>
#include <QTest>
#include <functional>
#include <vector>

namespace orv {
namespace {

using prueba::alAbrirse;
using prueba::respondeCaja;

class PanelVentaTest : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        articulo(QStringLiteral("0101"), QStringLiteral("Yerba 1 kg"), 100, QStringLiteral("PRV-1"));
        articulo(QStringLiteral("AB'1%*"), QStringLiteral("Código raro"), 19.99, QStringLiteral("P'2"));
        articulo(QStringLiteral("0303"), QStringLiteral("Azúcar 1 kg"), 250, QString());
        a().ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, Cuit, idTipoIva, Descuento, idTipoFormaPago, "
                                   "Domicilio, NroClienteVIP) VALUES (5, 'Ana O''Neil', '27-11111111-1', 1, 10, 1, 'Mitre 1', "
                                   "'123456')"));
        a().ejecuta(QStringLiteral("INSERT INTO Vendedores (idVendedor, Nombre, idTipoIva, Descuento) "
                                   "VALUES (12345, 'Bruno Cinco Cifras', 1, 0)"));
        panel_ = nuevoPanel(estado_);
    }
    void articulo(const QString& codigo, const QString& desc, double precio, const QString& prove) {
        a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, PrecioVenta, CgoProveedor) VALUES (?, ?, ?, ?)"),
                    {codigo, desc, precio, prove});
    }
    std::unique_ptr<PanelVenta> nuevoPanel(EstadoAplicacion& e) { return prueba::AbrePanelVenta(a(), e, *conf_); }
    template <typename T>
    T* w(const char* nombre) const {
        T* h = panel_->findChild<T*>(QString::fromLatin1(nombre));
        EXPECT_NE(h, nullptr) << nombre;
        return h;
    }
    QString texto(const char* nombre) const {
        if (auto* l = panel_->findChild<QLabel*>(QString::fromLatin1(nombre))) return l->text();
        return w<QLineEdit>(nombre)->text();
    }
    // Lo que hace el lector: el código y Enter en el campo de código.
    void escanea(const QString& codigo) { prueba::Teclea(*panel_, "Text7", codigo); }
    std::vector<std::tuple<QString, double, double, double>> lineas(qint32 red = 1) {
        std::vector<std::tuple<QString, double, double, double>> r;
        QSqlQuery q = a().consulta(
            QStringLiteral("SELECT Codigo, Cantidad, Unitario, SubTotal FROM TmpFac WHERE PCRed = ? ORDER BY idTmpFac"), {red});
        while (q.next())
            r.emplace_back(q.value(0).toString(), q.value(1).toDouble(), q.value(2).toDouble(), q.value(3).toDouble());
        return r;
    }

    std::unique_ptr<PanelVenta> panel_;
};

TEST_F(PanelVentaTest, EscanearDosVecesElMismoArticulo) {
    escanea(QStringLiteral("0101"));
    escanea(QStringLiteral("0101"));
    ASSERT_EQ(lineas().size(), 1u);
    EXPECT_EQ(lineas()[0], std::make_tuple(QStringLiteral("0101"), 2.0, 100.0, 200.0));
    EXPECT_EQ(texto("lblItems"), QStringLiteral("2.0 de 1 ítems."));
    EXPECT_EQ(texto("txtMontoTotal"), QStringLiteral("200.00"));
    // La carga vuelve a su estado: código vacío con el foco, cantidad 1, precios 0.
    EXPECT_TRUE(w<QLineEdit>("Text7")->text().isEmpty());
    EXPECT_TRUE(w<QLineEdit>("Text7")->hasFocus());
    EXPECT_EQ(texto("txtCant"), QStringLiteral("1"));
    EXPECT_EQ(texto("txUnit"), QStringLiteral("0"));
    // Con apóstrofos y comodines en el código.
    escanea(QStringLiteral("AB'1%*"));
    EXPECT_EQ(lineas().size(), 2u);
    EXPECT_EQ(texto("txtMontoTotal"), QStringLiteral("219.99"));
}

TEST_F(PanelVentaTest, MedioKiloDosVecesYArticuloQueNoEsta) {
    for (int i = 0; i < 2; ++i) {
        QLineEdit* t7 = w<QLineEdit>("Text7");
        t7->setFocus();
        QTest::keyClicks(t7, QStringLiteral("0303"));
        QLineEdit* cant = w<QLineEdit>("txtCant");
        cant->setFocus(); // el código pierde el foco: se muestra el precio
        EXPECT_EQ(texto("txUnit"), QStringLiteral("250.00"));
        cant->selectAll();
        QTest::keyClicks(cant, QStringLiteral("0.5"));
        QTest::keyClick(cant, Qt::Key_Return);
        EXPECT_DOUBLE_EQ(std::get<1>(lineas()[0]), i == 0 ? 0.5 : 1.0);
    }
    // Un código que no está se avisa en el panel, sin una caja que se trague el Enter del próximo
    // escaneo: el código queda marcado y el próximo lo reemplaza.
    auto caja = respondeCaja(QStringLiteral("Aceptar"));
    escanea(QStringLiteral("NO-EXISTE"));
    auto* aviso = w<QLabel>("lblNoEncontrado");
    EXPECT_TRUE(aviso->isVisible());
    EXPECT_EQ(aviso->text(), QStringLiteral("Articulo no encontrado!   NO-EXISTE"));
    EXPECT_EQ(w<QLineEdit>("Text7")->selectedText(), QStringLiteral("NO-EXISTE"));
    EXPECT_EQ(lineas().size(), 1u);
    QTest::keyClicks(w<QLineEdit>("Text7"), QStringLiteral("0101"));
    QTest::keyClick(w<QLineEdit>("Text7"), Qt::Key_Return);
    EXPECT_FALSE(aviso->isVisible());
    ASSERT_EQ(lineas().size(), 2u);
    EXPECT_EQ(std::get<0>(lineas()[1]), QStringLiteral("0101"));
    QTest::qWait(30);
    EXPECT_FALSE(caja->vista);
}

// "3*" antes del código pide 3 sin pasar por "Cantidad", que muestra el número mientras llega el
// código; un código que sólo parece un multiplicador se busca entero.
TEST_F(PanelVentaTest, MultiplicadorAntesDelCodigo) {
    QLineEdit* t7 = w<QLineEdit>("Text7");
    t7->setFocus();
    QTest::keyClicks(t7, QStringLiteral("3*"));
    EXPECT_EQ(texto("txtCant"), QStringLiteral("3"));
    QTest::keyClicks(t7, QStringLiteral("0101"));
    QTest::keyClick(t7, Qt::Key_Return);
    escanea(QStringLiteral("1.5*0303"));
    escanea(QStringLiteral("2*0101")); // se suma a la línea que ya estaba
    escanea(QStringLiteral("AB'1%*"));
    using L = std::tuple<QString, double, double, double>;
    EXPECT_EQ(lineas(), (std::vector<L>{{QStringLiteral("0101"), 5.0, 100.0, 500.0},
                                        {QStringLiteral("0303"), 1.5, 250.0, 375.0},
                                        {QStringLiteral("AB'1%*"), 1.0, 19.99, 19.99}}));
    EXPECT_EQ(texto("txtCant"), QStringLiteral("1"));
}

// Con cliente predeterminado, cada venta empieza con él y el cursor en el código; escribir otro
// número lo cambia para esta venta, y la siguiente vuelve a empezar con el predeterminado.
TEST_F(PanelVentaTest, ClientePredeterminadoEnCadaVentaNueva) {
    FijaClientePredeterminado(a(), *conf_, QStringLiteral("5"));
    auto panel = nuevoPanel(estado_);
    auto* t8 = panel->findChild<QLineEdit*>(QStringLiteral("Text8"));
    EXPECT_EQ(t8->text(), QStringLiteral("5"));
    EXPECT_EQ(panel->findChild<QLabel*>(QStringLiteral("lblCli"))->text(), QStringLiteral("Ana O'Neil"));
    EXPECT_EQ(panel->idCliente(), std::optional<qint64>(5));
    EXPECT_TRUE(panel->findChild<QLineEdit*>(QStringLiteral("Text7"))->hasFocus());
    t8->setFocus();
    t8->selectAll();
    QTest::keyClicks(t8, QStringLiteral("12345"));
    QTest::keyClick(t8, Qt::Key_Return);
    EXPECT_EQ(panel->idCliente(), std::optional<qint64>(12345));
    panel->reseteaFactura();
    EXPECT_EQ(panel->idCliente(), std::optional<qint64>(5));
    EXPECT_EQ(estado_.NombreClienteActual, QStringLiteral("Ana O'Neil"));
    EXPECT_TRUE(panel->findChild<QLineEdit*>(QStringLiteral("Text7"))->hasFocus());
}

TEST_F(PanelVentaTest, CodigoDeProveedorConOtroPrecioSumaConElUnitarioViejo) {
    auto porProveedor = [&](const QString& precio) {
        QLineEdit* t16 = w<QLineEdit>("Text16");
        t16->setFocus();
        QTest::keyClicks(t16, QStringLiteral("PRV-1"));
        QLineEdit* unit = w<QLineEdit>("txUnit");
        unit->setFocus();
        EXPECT_EQ(texto("Text7"), QStringLiteral("0101"));
        unit->selectAll();
        QTest::keyClicks(unit, precio);
        QTest::keyClick(unit, Qt::Key_Return);
    };
    porProveedor(QStringLiteral("100"));
    porProveedor(QStringLiteral("150"));
    ASSERT_EQ(lineas().size(), 1u);
    EXPECT_EQ(lineas()[0], std::make_tuple(QStringLiteral("0101"), 2.0, 100.0, 300.0));
}

TEST_F(PanelVentaTest, TarjetaDeSeisCifrasYClienteDeCincoConDescuentoEnDosPasos) {
    escanea(QStringLiteral("0303")); // 250
    QLineEdit* t8 = w<QLineEdit>("Text8");
    t8->setFocus();
    QTest::keyClicks(t8, QStringLiteral("123456"));
    QTest::keyClick(t8, Qt::Key_Return);
    EXPECT_EQ(texto("Label6"), QStringLiteral("Cliente VIP:"));
    EXPECT_EQ(texto("lblCli"), QStringLiteral("Ana O'Neil"));
    EXPECT_EQ(texto("lblCuit"), QStringLiteral("CUIT - RFC : 27-11111111-1"));
    EXPECT_TRUE(panel_->clienteEsVip());
    EXPECT_EQ(panel_->idCliente(), 5);
    EXPECT_TRUE(w<QLineEdit>("Text7")->hasFocus());
    // El descuento del cliente todavía no llega a los totales.
    EXPECT_DOUBLE_EQ(estado_.DescuentoClienteActual, 10);
    EXPECT_EQ(texto("txtPorcDescuento"), QStringLiteral("0"));
    EXPECT_EQ(texto("txtMontoTotal"), QStringLiteral("250.00"));
    // "Mas Datos..." lo confirma.
    alAbrirse<PanFPago>([](PanFPago* d) {
        EXPECT_EQ(d->findChild<QLineEdit*>(QStringLiteral("Text2"))->text(), QStringLiteral("10"));
        d->findChild<QPushButton*>(QStringLiteral("Command1"))->click();
    });
    QTest::keyClick(panel_.get(), Qt::Key_F5);
    EXPECT_EQ(texto("txtPorcDescuento"), QStringLiteral("10"));
    EXPECT_EQ(texto("lblImporteDescuento"), QStringLiteral("25.00"));
    EXPECT_EQ(texto("txtMontoTotal"), QStringLiteral("225.00"));

    // Cinco cifras es número de cliente; escribir en el campo deja la venta sin cliente elegido.
    t8->selectAll();
    QTest::keyClicks(t8, QStringLiteral("12345"));
    EXPECT_FALSE(panel_->idCliente());
    EXPECT_EQ(texto("Label6"), QStringLiteral("???"));
    QTest::keyClick(t8, Qt::Key_Return);
    EXPECT_EQ(texto("Label6"), QStringLiteral("Cliente:"));
    EXPECT_EQ(texto("lblCli"), QStringLiteral("Bruno Cinco Cifras"));
    EXPECT_FALSE(panel_->clienteEsVip());

    // Un número que no está abre la búsqueda; cancelada, el campo queda vacío.
    t8->selectAll();
    QTest::keyClicks(t8, QStringLiteral("999999"));
    auto busqueda = alAbrirse<PanSelCliente>([](PanSelCliente* d) { d->reject(); });
    QTest::keyClick(t8, Qt::Key_Return);
    EXPECT_TRUE(busqueda->vista);
    EXPECT_TRUE(t8->text().isEmpty());
    // Y elegido en la búsqueda, por nombre.
    t8->setText(QStringLiteral("Ana"));
    alAbrirse<PanSelCliente>([](PanSelCliente* d) {
        QTest::keyClicks(d->findChild<QLineEdit*>(QStringLiteral("Text1")), QStringLiteral("ana"));
        QTest::keyClick(d->findChild<QLineEdit*>(QStringLiteral("Text1")), Qt::Key_Return);
    });
    QTest::keyClick(t8, Qt::Key_Return);
    EXPECT_EQ(panel_->idCliente(), 5);
    EXPECT_EQ(texto("Text8"), QStringLiteral("5"));
    EXPECT_EQ(texto("Label6"), QStringLiteral("Cliente:"));
}

TEST_F(PanelVentaTest, TotalesConDescuentoEImpuestoYPorcentajesMalos) {
    escanea(QStringLiteral("0303"));
    escanea(QStringLiteral("0303"));
    escanea(QStringLiteral("0101")); // 600
    QLineEdit* desc = w<QLineEdit>("txtPorcDescuento");
    QLineEdit* imp = w<QLineEdit>("txtPorcImpuesto");
    desc->setFocus();
    desc->selectAll();
    QTest::keyClicks(desc, QStringLiteral("10"));
    imp->setFocus();
    imp->selectAll();
    QTest::keyClicks(imp, QStringLiteral("21"));
    w<QLineEdit>("Text7")->setFocus();
    EXPECT_EQ(texto("lblSubTotal"), QStringLiteral("600.00"));
    EXPECT_EQ(texto("lblImporteDescuento"), QStringLiteral("60.00"));
    EXPECT_EQ(texto("txtNeto"), QStringLiteral("540.00"));
    EXPECT_EQ(texto("lblImpuestoImporte"), QStringLiteral("113.40"));
    EXPECT_EQ(texto("txtMontoTotal"), QStringLiteral("653.40"));
    EXPECT_EQ(conf_->lee(clave::miscelaneas, QStringLiteral("CoefIva")), QStringLiteral("21"));
    // Su pago y su vuelto, que puede ser negativo.
    QTest::keyClick(panel_.get(), Qt::Key_F6);
    QTest::keyClicks(w<QLineEdit>("txSuPago"), QStringLiteral("1000"));
    EXPECT_EQ(texto("txSuVuelto"), QStringLiteral("346.60"));
    w<QLineEdit>("txSuPago")->setText(QStringLiteral("600"));
    EXPECT_EQ(texto("txSuVuelto"), QStringLiteral("-53.40"));
    // Un porcentaje que no es número deja los totales como estaban.
    desc->setFocus();
    desc->selectAll();
    QTest::keyClicks(desc, QStringLiteral("diez"));
    w<QLineEdit>("Text7")->setFocus();
    EXPECT_EQ(texto("txtMontoTotal"), QStringLiteral("653.40"));
}

TEST_F(PanelVentaTest, TeclasMasMenosBorrarYAnular) {
    escanea(QStringLiteral("0101"));
    escanea(QStringLiteral("0303"));
    QTableView* t = panel_->grilla()->tabla();
    t->setFocus();
    panel_->grilla()->irAFila(0);
    QTest::keyClick(t, Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(lineas()[0], std::make_tuple(QStringLiteral("0101"), 2.0, 100.0, 200.0));
    panel_->grilla()->irAFila(0);
    QTest::keyClick(t, Qt::Key_Minus, Qt::KeypadModifier);
    QTest::keyClick(t, Qt::Key_Minus); // el del teclado principal hace lo mismo
    EXPECT_EQ(lineas()[0], std::make_tuple(QStringLiteral("0101"), 0.0, 100.0, 0.0));
    EXPECT_EQ(texto("txtMontoTotal"), QStringLiteral("250.00"));

    // Supr pregunta y borra la línea actual.
    panel_->grilla()->irAFila(1);
    auto pregunta = respondeCaja(QStringLiteral("Sí"));
    QTest::keyClick(t, Qt::Key_Delete);
    EXPECT_EQ(pregunta->texto, QStringLiteral("Borra este ítem? ??"));
    ASSERT_EQ(lineas().size(), 1u);
    // Sin líneas el total vuelve a 0 y lo demás queda como estaba.
    panel_->grilla()->irAFila(0);
    respondeCaja(QStringLiteral("Sí"));
    QTest::mouseClick(w<QPushButton>("Command18"), Qt::LeftButton);
    EXPECT_TRUE(lineas().empty());
    EXPECT_EQ(texto("txtMontoTotal"), QStringLiteral("0.00"));
    EXPECT_EQ(texto("lblSubTotal"), QStringLiteral("0.00")); // el último valor (una línea en 0)
    EXPECT_FALSE(w<QPushButton>("Command18")->isEnabled());

    // Anular vacía todo y deja el impuesto.
    escanea(QStringLiteral("0303"));
    w<QLineEdit>("txtPorcImpuesto")->setText(QStringLiteral("21"));
    w<QLineEdit>("Text8")->setText(QStringLiteral("5"));
    panel_->eligeCliente();
    auto anula = respondeCaja(QStringLiteral("Sí"));
    QApplication::setActiveWindow(panel_.get()); // las cajas de mensaje se llevaron la activación
    QTest::keyClick(panel_.get(), Qt::Key_F8);
    EXPECT_EQ(anula->texto, QStringLiteral("Está seguro de cancelar el documento actual? ??"));
    EXPECT_TRUE(lineas().empty());
    EXPECT_EQ(texto("lblItems"), QStringLiteral("0 ítems."));
    EXPECT_EQ(texto("lblCli"), QStringLiteral("<Sin seleccion de cliente>"));
    EXPECT_EQ(texto("lblDirCli"), QStringLiteral("Domicilio - Telefonos - e-mail"));
    EXPECT_EQ(texto("lblCuit"), QStringLiteral("CUIT : 0"));
    EXPECT_EQ(texto("Label6"), QStringLiteral("????"));
    EXPECT_EQ(texto("txtPorcImpuesto"), QStringLiteral("21"));
    EXPECT_EQ(estado_.NombreClienteActual, QStringLiteral("Cons.Final"));
    EXPECT_FALSE(panel_->idCliente());
}

TEST_F(PanelVentaTest, ElBorradorSobreviveAlReinicioYCadaTerminalVeElSuyo) {
    escanea(QStringLiteral("0101"));
    escanea(QStringLiteral("0303"));
    EstadoAplicacion otra = estado_;
    otra.IdRed = 2;
    auto segunda = nuevoPanel(otra);
    EXPECT_EQ(segunda->grilla()->modelo().rowCount(), 0);
    QLineEdit* t7 = segunda->findChild<QLineEdit*>(QStringLiteral("Text7"));
    t7->setFocus();
    QTest::keyClicks(t7, QStringLiteral("0101"));
    QTest::keyClick(t7, Qt::Key_Return);
    EXPECT_EQ(lineas(1).size(), 2u);
    EXPECT_EQ(lineas(2).size(), 1u);
    // "Reinicio": otro panel de la misma terminal ve las dos líneas, con el cliente de siempre.
    segunda.reset();
    panel_.reset();
    EstadoAplicacion nuevo;
    nuevo.IdRed = 1;
    nuevo.idUsuarioActual = 1;
    panel_ = nuevoPanel(nuevo);
    EXPECT_EQ(panel_->grilla()->modelo().rowCount(), 2);
    EXPECT_EQ(texto("lblItems"), QStringLiteral("2.0 de 2 ítems."));
    EXPECT_EQ(texto("lblCli"), QStringLiteral("<Sin seleccion de cliente>"));
}

TEST_F(PanelVentaTest, ProximoNumeroSigueAlCorrelativo) {
    EXPECT_EQ(texto("lblProx"), QStringLiteral("B 0001-00000001"));
    a().ejecuta(QStringLiteral("UPDATE TiposDeComprobantes SET Correlativo = 99 WHERE idTipoComprobante = 1"));
    EXPECT_EQ(texto("lblProx"), QStringLiteral("B 0001-00000001")); // es una vista previa
    panel_->entra();
    EXPECT_EQ(texto("lblProx"), QStringLiteral("B 0001-00000100"));
}

TEST_F(PanelVentaTest, CorregirLaGrillaRecalculaConPermiso) {
    panel_->fijaSoloLectura(false);
    escanea(QStringLiteral("0101"));
    QTableView* t = panel_->grilla()->tabla();
    const int col = panel_->grilla()->modelo().columna(QStringLiteral("Cantidad"));
    ASSERT_TRUE(panel_->grilla()->modelo().setData(panel_->grilla()->modelo().index(0, col), QStringLiteral("3")));
    QTRY_COMPARE(std::get<3>(lineas()[0]), 300.0);
    EXPECT_EQ(texto("txtMontoTotal"), QStringLiteral("300.00"));
    // Sin permiso la grilla no se corrige.
    panel_->fijaSoloLectura(true);
    EXPECT_FALSE(panel_->grilla()->modelo().flags(panel_->grilla()->modelo().index(0, col)) & Qt::ItemIsEditable);
    EXPECT_EQ(t->editTriggers(), QAbstractItemView::NoEditTriggers);
}

// Lo que un cajero puede teclear mal en el panel: cada cosa se rechaza con un mensaje que la nombra,
// el programa sigue y el borrador guardado no cambia.
TEST_F(PanelVentaTest, LoTecleadoFueraDeRangoSeRechazaYElBorradorNoCambia) {
    panel_->fijaSoloLectura(false);
    escanea(QStringLiteral("0101"));
    const auto antes = lineas();
    const auto escribe = [this](const char* campo, const QString& texto) {
        QLineEdit* c = w<QLineEdit>(campo);
        c->setFocus();
        c->selectAll();
        QTest::keyClicks(c, texto);
    };
    const auto cantidadYCodigo = [&](const QString& cantidad) {
        return [&, cantidad] {
            escribe("txtCant", cantidad);
            escanea(QStringLiteral("0303"));
        };
    };
    struct Caso {
        const char* que;
        std::function<void()> teclea;
        QString mensaje;
    };
    const QString malEscrito = QStringLiteral(": el número está mal escrito. Use el punto para los decimales (1234.50).");
    const std::vector<Caso> casos = {
        {"código de barras en la cantidad", cantidadYCodigo(QStringLiteral("4006381333931")),
         QStringLiteral("Cantidad: Importe fuera de rango!")},
        {"cantidad 1e300", cantidadYCodigo(QStringLiteral("1e300")), QStringLiteral("Cantidad: Importe fuera de rango!")},
        {"unitario que no cabe en el dinero",
         [&] {
             // El campo del precio no deja escribirlo; la grilla sí.
             auto& m = panel_->grilla()->modelo();
             m.setData(m.index(0, m.columna(QStringLiteral("Unitario"))), QStringLiteral("922337203685477"));
         },
         QStringLiteral("Unitario: Importe fuera de rango!")},
        {"corrección de la grilla con letras",
         [&] {
             auto& m = panel_->grilla()->modelo();
             m.setData(m.index(0, m.columna(QStringLiteral("Cantidad"))), QStringLiteral("abc"));
         },
         QStringLiteral("Cantidad") + malEscrito},
        {"corrección de la grilla con 1e300",
         [&] {
             auto& m = panel_->grilla()->modelo();
             m.setData(m.index(0, m.columna(QStringLiteral("Cantidad"))), QStringLiteral("1e300"));
         },
         QStringLiteral("Cantidad: Importe fuera de rango!")},
        {"descuento con coma decimal",
         [&] {
             escribe("txtPorcDescuento", QStringLiteral("1,5"));
             w<QLineEdit>("Text7")->setFocus();
         },
         QStringLiteral("Desc.") + malEscrito},
    };
    for (const Caso& c : casos) {
        QApplication::setActiveWindow(panel_.get()); // las cajas de mensaje se llevan la activación
        auto caja = respondeCaja(QStringLiteral("Aceptar"));
        c.teclea();
        EXPECT_TRUE(QTest::qWaitFor([&] { return caja->vista; }, 3000)) << c.que;
        EXPECT_EQ(caja->texto.toStdString(), c.mensaje.toStdString()) << c.que;
        EXPECT_EQ(lineas(), antes) << c.que;
        // La grilla muestra lo guardado y los totales siguen iguales.
        auto& m = panel_->grilla()->modelo();
        EXPECT_TRUE(QTest::qWaitFor([&] { return m.data(m.index(0, m.columna(QStringLiteral("Cantidad")))).toDouble() == 1.0; },
                                    3000))
            << c.que;
        EXPECT_EQ(texto("txtMontoTotal"), QStringLiteral("100.00")) << c.que;
        w<QLineEdit>("txtCant")->setText(QStringLiteral("1"));
        w<QLineEdit>("txUnit")->setText(QStringLiteral("0"));
        w<QLineEdit>("Text16")->clear();
        w<QLineEdit>("Text7")->clear();
    }
    EXPECT_EQ(texto("txtPorcDescuento"), QStringLiteral("0"));
}

// Enter en el código del proveedor (donde se escanea el código del bulto) trae el precio antes de
// agregar; un artículo sin precio deja el cursor en el precio.
TEST_F(PanelVentaTest, EnterEnElCodigoDelProveedorAgregaConElPrecioALaVista) {
    prueba::Teclea(*panel_, "Text16", QStringLiteral("PRV-1"));
    ASSERT_EQ(lineas().size(), 1u);
    EXPECT_EQ(lineas()[0], std::make_tuple(QStringLiteral("0101"), 1.0, 100.0, 100.0));
    a().ejecuta(QStringLiteral("INSERT INTO Articulos (Codigo, Descripcion, PrecioVenta, CgoProveedor) "
                               "VALUES ('0404', 'Sin precio', NULL, 'PRV-4')"));
    prueba::Teclea(*panel_, "Text16", QStringLiteral("PRV-4"));
    EXPECT_EQ(lineas().size(), 1u);
    EXPECT_TRUE(w<QLineEdit>("txUnit")->hasFocus());
}

// Una línea imposible guardada por otro camino no traba el panel: abre, la señala y se borra.
TEST_F(PanelVentaTest, UnaLineaImposibleNoTrabaElPanel) {
    escanea(QStringLiteral("0101"));
    a().ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = 1e300, SubTotal = 900000000000000"));
    panel_ = nuevoPanel(estado_);
    panel_->entra();
    EXPECT_EQ(texto("lblItems"), QStringLiteral("La línea \"Yerba 1 kg\" tiene una cantidad o un importe fuera de rango: "
                                                "bórrela o corríjala."));
    EXPECT_EQ(texto("txtMontoTotal"), QStringLiteral("0.00"));
    EXPECT_TRUE(panel_->grilla()->claveActual().has_value()); // la línea señalada es la actual
    QApplication::setActiveWindow(panel_.get());
    panel_->grilla()->tabla()->setFocus();
    auto si = respondeCaja(QStringLiteral("Sí"));
    QTest::keyClick(panel_->grilla()->tabla(), Qt::Key_Delete);
    EXPECT_TRUE(si->vista);
    EXPECT_TRUE(lineas().empty());
    // Un cliente sin forma de pago propia se ve con EFVO, la forma con que se guarda la venta.
    prueba::Teclea(*panel_, "Text8", QStringLiteral("12345"));
    EXPECT_EQ(panel_->findChild<QComboBox*>(QStringLiteral("cboFPago"))->currentText(), QStringLiteral("EFVO"));
    EXPECT_EQ(estado_.FormaPagoActual, QStringLiteral("EFVO"));
    // "Su Vuelto:" sigue a "Su Pago ?" también cuando se borra.
    escanea(QStringLiteral("0303"));
    QLineEdit* pago = w<QLineEdit>("txSuPago");
    pago->setText(QStringLiteral("300"));
    EXPECT_EQ(texto("txSuVuelto"), QStringLiteral("50.00"));
    pago->clear();
    EXPECT_EQ(texto("txSuVuelto"), QString());
}

} // namespace
} // namespace orv
