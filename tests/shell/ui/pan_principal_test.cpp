// Ventana principal: carga, niveles aplicados, paneles, venta que sobrevive, modo punto de venta,
// distribución de las grillas y su reinicio.

#include "access/niveles.h"
#include "access/ui/panel_usuarios.h"
#include "apoyo/base_prueba.h"
#include "apoyo/modal.h"
#include "reports/ui/pan_mensajeria.h"
#include "sales/ui/panel_venta.h"
#include "widgets/grilla.h"
#include "reports/ui/salida_informes.h"
#include "shell/pan_principal.h"
#include "store/actualizacion.h"
#include "store/reloj.h"
#include "../../ui/caja_modal.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace orv {
namespace {

using prueba::respondeCaja;

class VentanaPrincipal : public ::testing::Test {
protected:
    void SetUp() override {
        base_ = std::make_unique<prueba::AlmacenDePrueba>(prueba::Motor::SQLite);
        actualizaEsquema(a());
        estado_.IdRed = 7;
        estado_.idUsuarioActual = 1;
        estado_.idNivelActual = 1;
        estado_.NombreUsuarioActual = QStringLiteral("Ana O'Neil");
        estado_.carpetaDatos = base_->carpeta();
        conf_ = std::make_unique<Configuracion>(base_->carpeta(), QDir(base_->carpeta()).filePath(QStringLiteral("u.conf")));
    }
    Almacen& a() { return base_->almacen(); }
    std::unique_ptr<PanPrincipal> ventana() {
        auto w = std::make_unique<PanPrincipal>(a(), estado_, *conf_, reloj_);
        w->fijaTerminacion([this](int c) { terminado_ = c; });
        return w;
    }
    // Un nivel con todo encendido salvo las columnas dadas.
    qint16 nivel(const QStringList& apagadas, bool super = false) {
        const qint64 id = NuevoNivel(a(), QStringLiteral("Nivel %1").arg(++niveles_)).value();
        DatosNivel d = LeeNivel(a(), id).value();
        d.usuarioSuper = super;
        for (auto it = d.permisos.begin(); it != d.permisos.end(); ++it) it.value() = !apagadas.contains(it.key());
        GuardaNivel(a(), d);
        return qint16(id);
    }
    QString archivo(const QString& nombre) const { return QDir(base_->carpeta()).filePath(nombre); }
    void lineaDeVenta(qint32 terminal, const QString& codigo) {
        a().ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, "
                                   "PCRed) VALUES (1, ?, 'Yerba 1 kg', 2, 100, 200, ?)"),
                    {codigo, terminal});
    }

    std::unique_ptr<prueba::AlmacenDePrueba> base_;
    EstadoAplicacion estado_;
    std::unique_ptr<Configuracion> conf_;
    const RelojFijo reloj_{QDateTime(QDate(2026, 11, 22), QTime(10, 0))};
    int niveles_ = 0;
    int terminado_ = -1;
};

TEST_F(VentanaPrincipal, CargaEnOrdenConLosValoresGuardados) {
    conf_->graba(clave::miscelaneas, QStringLiteral("ModoPrint"), QStringLiteral("3"));
    conf_->graba(clave::miscelaneas, QStringLiteral("CopiasPrint"), QStringLiteral("2"));
    auto w = ventana();
    EXPECT_EQ(w->windowTitle(), PanPrincipal::tituloVentana(QStringLiteral("Ana O'Neil")));
    EXPECT_TRUE(w->windowTitle().startsWith(QStringLiteral("Orvanta ver ")));
    EXPECT_EQ(w->findChild<QLabel*>(QStringLiteral("Label14"))->text(), QStringLiteral("Hola Ana O'Neil !!"));
    EXPECT_EQ(w->findChild<QLabel*>(QStringLiteral("Label11"))->text(), QStringLiteral("domingo, 22 de noviembre de 2026"));
    EXPECT_EQ(w->findChild<QTimer*>(QStringLiteral("Timer1"))->interval(), 4500);
    EXPECT_EQ(w->panelActual(), PanPrincipal::kBienvenida);

    auto* combo1 = w->findChild<QComboBox*>(QStringLiteral("Combo1"));
    ASSERT_EQ(combo1->count(), 5);
    EXPECT_EQ(combo1->itemText(0), QStringLiteral("0 - A una ventana"));
    EXPECT_EQ(combo1->itemText(4), QStringLiteral("4 - Vista previa"));
    EXPECT_EQ(combo1->currentIndex(), 3);
    EXPECT_EQ(w->findChild<QLineEdit*>(QStringLiteral("Text10"))->text(), QStringLiteral("2"));
    // El destino guardado ya está en la salida de los informes al abrir la ventana.
    EXPECT_EQ(w->salidaInformes()->destino(), SalidaInformes::Correo);
    EXPECT_EQ(w->salidaInformes()->copias(), 2);
    combo1->setCurrentIndex(1);
    EXPECT_EQ(conf_->lee(clave::miscelaneas, QStringLiteral("ModoPrint")), QStringLiteral("1"));
    EXPECT_EQ(w->salidaInformes()->destino(), SalidaInformes::Impresora);

    // "Mensajería" abre su pantalla, modal, y deja al frente el panel que estaba.
    w->botPrincipal(4);
    auto mensajeria = prueba::alAbrirse<PanMensajeria>([](PanMensajeria* p) { p->reject(); });
    w->botonLateral(5)->click();
    EXPECT_TRUE(mensajeria->vista);
    EXPECT_EQ(w->panelActual(), 4);
    EXPECT_TRUE(w->botonLateral(4)->isChecked());
    w->findChild<QLineEdit*>(QStringLiteral("Text10"))->setText(QStringLiteral("4"));
    EXPECT_EQ(conf_->lee(clave::miscelaneas, QStringLiteral("CopiasPrint")), QStringLiteral("4"));
    EXPECT_EQ(w->salidaInformes()->copias(), 4);
    EXPECT_EQ(w->salidaInformes()->destino(), SalidaInformes::Impresora);

    // Sin comprobante predeterminado se toma el primero y queda grabado.
    EXPECT_EQ(conf_->lee(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado")), QStringLiteral("1"));
    EXPECT_EQ(estado_.idTipoComprobanteActual, 1);
    for (const char* nombre : {"DTPicker1", "dtpickerHasta", "Dtpicker4", "Dtpicker5"})
        EXPECT_EQ(w->findChild<QDateEdit*>(QString::fromLatin1(nombre))->date(), QDate(2026, 11, 22)) << nombre;
    // El vendedor elegido es el usuario actual.
    EXPECT_EQ(w->panelVenta()->vendedores()->currentData().toInt(), 1);
}

TEST_F(VentanaPrincipal, ValoresGuardadosQueNoSonEnterosDanLosDeSiempre) {
    // Un número que no es entero no se corta: "2,5" no es 2 copias ni "1.5" el destino 1.
    conf_->graba(clave::miscelaneas, QStringLiteral("ModoPrint"), QStringLiteral("1.5"));
    conf_->graba(clave::miscelaneas, QStringLiteral("CopiasPrint"), QStringLiteral("2,5"));
    a().ejecuta(QStringLiteral("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, Correlativo) "
                               "VALUES ('NOTA DE CREDITO B', 'B', '0002', 41)"));
    conf_->graba(clave::miscelaneas, QStringLiteral("ComprobantePredeterminado"), QStringLiteral("2"));
    auto w = ventana();
    EXPECT_EQ(w->findChild<QComboBox*>(QStringLiteral("Combo1"))->currentIndex(), 0);
    EXPECT_EQ(w->findChild<QLineEdit*>(QStringLiteral("Text10"))->text(), QStringLiteral("1"));
    EXPECT_EQ(estado_.idTipoComprobanteActual, 2);
    w->botPrincipal(3);
    EXPECT_EQ(w->findChild<QPushButton*>(QStringLiteral("lblTipCompro"))->text(), QStringLiteral("NOTA DE CREDITO B"));
    EXPECT_EQ(w->findChild<QLabel*>(QStringLiteral("lblProx"))->text(), QStringLiteral("B 0002-00000042"));
    // Otro tipo elegido en la lista cambia el tipo de la venta y la vista previa del número.
    auto* tipos = w->findChild<QComboBox*>(QStringLiteral("cboSelTipoCo"));
    tipos->setCurrentIndex(0);
    w->panelVenta()->eligeTipo();
    EXPECT_EQ(estado_.idTipoComprobanteActual, 1);
    EXPECT_EQ(w->findChild<QLabel*>(QStringLiteral("lblProx"))->text(), QStringLiteral("B 0001-00000001"));
}

TEST_F(VentanaPrincipal, NivelesApaganSoloSusControles) {
    // Supervisor: todo habilitado.
    {
        auto w = ventana();
        for (int i = 0; i < 8; ++i) EXPECT_TRUE(w->botonLateral(i)->isEnabled()) << i;
        EXPECT_TRUE(w->findChild<QWidget*>(QStringLiteral("Label37"))->isEnabled());
        EXPECT_FALSE(w->modoPOS());
    }
    // Cada "Ve" apagado apaga su botón y ningún otro.
    const QList<QPair<QString, int>> ve = {{QStringLiteral("VeArticulos"), 0}, {QStringLiteral("VeClientes"), 1},
                                           {QStringLiteral("VeCaja"), 2},      {QStringLiteral("VeVentas"), 3},
                                           {QStringLiteral("VeInformes"), 4},  {QStringLiteral("VeExportar"), 5},
                                           {QStringLiteral("VeUtilidades"), 6}, {QStringLiteral("VeProveedores"), 7},
                                           {QStringLiteral("PermEnviaMail"), 5}};
    for (const auto& [columna, boton] : ve) {
        estado_.idNivelActual = nivel({columna});
        auto w = ventana();
        for (int i = 0; i < 8; ++i)
            EXPECT_EQ(w->botonLateral(i)->isEnabled(), i != boton) << columna.toStdString() << " botón " << i;
        EXPECT_TRUE(w->findChild<QWidget*>(QStringLiteral("Label37"))->isEnabled());
    }
    // Sin "Usuarios": el acceso a "Usuarios del sistema" queda apagado.
    estado_.idNivelActual = nivel({QStringLiteral("VeUsuarios")});
    EXPECT_FALSE(ventana()->findChild<QWidget*>(QStringLiteral("Label37"))->isEnabled());

    // Un nivel nuevo, sin nada: todos los botones apagados y la ventana en la bienvenida.
    estado_.idNivelActual = qint16(NuevoNivel(a(), QStringLiteral("Sin nada")).value());
    auto w = ventana();
    w->show();
    for (int i = 0; i < 8; ++i) EXPECT_FALSE(w->botonLateral(i)->isEnabled()) << i;
    EXPECT_EQ(w->panelActual(), PanPrincipal::kBienvenida);
    EXPECT_FALSE(w->agrandada());
    // Sin "Precio en la venta de artículos" las líneas no se corrigen en la grilla.
    EXPECT_TRUE(w->panelVenta()->soloLectura());
}

// Destino y copias son de la ventana: un nivel con informes y sin utilidades los elige igual.
TEST_F(VentanaPrincipal, SinUtilidadesElDestinoYLasCopiasSeEligenDesdeCualquierPanel) {
    estado_.idNivelActual = nivel({QStringLiteral("VeUtilidades"), QStringLiteral("SoloPOS")});
    auto w = ventana();
    w->show();
    auto* combo1 = w->findChild<QComboBox*>(QStringLiteral("Combo1"));
    auto* text10 = w->findChild<QLineEdit*>(QStringLiteral("Text10"));
    for (int panel : {4, 3, 0}) {
        w->botPrincipal(panel);
        EXPECT_TRUE(combo1->isVisible() && combo1->isEnabled() && text10->isVisible() && text10->isEnabled()) << panel;
    }
    combo1->setCurrentIndex(2);
    text10->selectAll();
    QTest::keyClicks(text10, QStringLiteral("3,5")); // la coma no entra: nada se lee como 3
    EXPECT_EQ(w->salidaInformes()->destino(), SalidaInformes::Archivo);
    EXPECT_EQ(w->salidaInformes()->copias(), 35);
    EXPECT_EQ(conf_->lee(clave::miscelaneas, QStringLiteral("CopiasPrint")), QStringLiteral("35"));
}

TEST_F(VentanaPrincipal, NivelBorradoNoTieneNingunPermiso) {
    const qint16 id = nivel({}, false);
    a().ejecuta(QStringLiteral("DELETE FROM Niveles WHERE idNivel = ?"), {id});
    estado_.idNivelActual = id;
    auto w = ventana();
    for (int i = 0; i < 8; ++i) EXPECT_FALSE(w->botonLateral(i)->isEnabled()) << i;
    EXPECT_FALSE(w->findChild<QWidget*>(QStringLiteral("Label37"))->isEnabled());
    EXPECT_FALSE(w->modoPOS());
}

TEST_F(VentanaPrincipal, CambioDePanelYVentaQueSobrevive) {
    lineaDeVenta(7, QStringLiteral("0101"));
    lineaDeVenta(7, QStringLiteral("0102"));
    lineaDeVenta(99, QStringLiteral("OTRA")); // borrador de otra terminal
    a().ejecuta(QStringLiteral("INSERT INTO Usuarios (NombreCompleto, NombreUsuario, idNivel) VALUES ('Bruno', 'bruno', 1)"));
    auto w = ventana();
    w->resize(1100, 700);
    w->show();
    auto* pila = w->findChild<QStackedWidget*>(QStringLiteral("pilaPaneles"));
    QTest::mouseClick(w->botonLateral(3), Qt::LeftButton);
    EXPECT_EQ(w->panelActual(), 3);
    EXPECT_EQ(pila->currentWidget()->objectName(), QStringLiteral("zonaPanel3"));
    Grilla* lineas = w->panelVenta()->grilla();
    ASSERT_EQ(lineas->modelo().rowCount(), 2);
    EXPECT_EQ(lineas->modelo().valor(0, lineas->modelo().columna(QStringLiteral("Codigo"))).toString(),
              QStringLiteral("0101"));
    EXPECT_EQ(w->findChild<QLabel*>(QStringLiteral("lblCli"))->text(), QStringLiteral("<Sin seleccion de cliente>"));
    EXPECT_EQ(w->findChild<QLabel*>(QStringLiteral("lblItems"))->text(), QStringLiteral("4.0 de 2 ítems."));
    EXPECT_EQ(estado_.NombreClienteActual, QStringLiteral("Cons.Final"));

    // Se elige otro vendedor, se va a otro panel y se vuelve: todo sigue igual.
    auto* vendedores = w->panelVenta()->vendedores();
    vendedores->setCurrentIndex(vendedores->findText(QStringLiteral("Bruno")));
    estado_.ObservacionesActual = QStringLiteral("entregar el lunes");
    QTest::mouseClick(w->botonLateral(0), Qt::LeftButton);
    EXPECT_EQ(w->panelActual(), 0);
    QTest::mouseClick(w->botonLateral(2), Qt::LeftButton);
    EXPECT_EQ(w->panelActual(), 2);
    lineaDeVenta(7, QStringLiteral("0103"));
    QTest::mouseClick(w->botonLateral(3), Qt::LeftButton);
    EXPECT_EQ(vendedores->currentText(), QStringLiteral("Bruno"));
    EXPECT_EQ(estado_.ObservacionesActual, QStringLiteral("entregar el lunes"));
    EXPECT_EQ(lineas->modelo().rowCount(), 3);

    // Un usuario nuevo aparece en la lista de vendedores sin perder la elección.
    a().ejecuta(QStringLiteral("UPDATE Usuarios SET NombreCompleto = 'Bruno Díaz' WHERE NombreUsuario = 'bruno'"));
    Q_EMIT w->panelUsuarios()->usuariosCambiados();
    EXPECT_EQ(vendedores->currentText(), QStringLiteral("Bruno Díaz"));

    // "Usuarios del sistema" desde Utilidades lleva al panel 8.
    QTest::mouseClick(w->botonLateral(6), Qt::LeftButton);
    QTest::mouseClick(w->findChild<QPushButton*>(QStringLiteral("Label37")), Qt::LeftButton);
    EXPECT_EQ(w->panelActual(), 8);
}

// La ventana abre maximizada, cada panel lateral se abre con Alt y su letra subrayada, y en una
// pantalla chica el panel se desplaza en lugar de quedar cortado.
TEST_F(VentanaPrincipal, PanelesConElTecladoYEnPantallaChica) {
    auto w = ventana();
    EXPECT_TRUE(w->windowState() & Qt::WindowMaximized);
    w->show();
    QApplication::setActiveWindow(w.get());
    const std::pair<char, int> teclas[] = {{'V', 3}, {'A', 0}, {'L', 1}, {'C', 2}, {'I', 4}, {'U', 6}, {'P', 7}, {'V', 3}};
    for (const auto& [letra, panel] : teclas) {
        QTest::keyClick(w.get(), Qt::Key(letra), Qt::AltModifier);
        // El botón se muestra pulsado un instante antes de abrir su panel.
        EXPECT_TRUE(QTest::qWaitFor([&, panel = panel] { return w->panelActual() == panel; }, 2000)) << letra;
    }
    w->setWindowState(Qt::WindowNoState);
    w->resize(800, 600);
    QApplication::processEvents();
    auto* zona = w->findChild<QScrollArea*>(QStringLiteral("zonaPanel3"));
    ASSERT_NE(zona, nullptr);
    const QWidget* registrar = w->findChild<QPushButton*>(QStringLiteral("Command16"));
    // "Registrar" queda a la vista o a un desplazamiento: dentro del panel desplazable, nunca fuera.
    EXPECT_GE(zona->widget()->width(), zona->widget()->minimumSizeHint().width());
    EXPECT_TRUE(zona->widget()->rect().contains(registrar->mapTo(zona->widget(), registrar->rect().bottomRight())));
}

TEST_F(VentanaPrincipal, MaximizarYRestaurarConLasProporcionesDeLaGrilla) {
    lineaDeVenta(7, QStringLiteral("0101"));
    auto w = ventana();
    w->resize(1200, 760);
    w->show();
    w->botPrincipal(3);
    auto* boton = w->findChild<QPushButton*>(QStringLiteral("Command55"));
    EXPECT_EQ(boton->text(), QStringLiteral("Maximizar"));
    auto* barra = w->findChild<QWidget*>(QStringLiteral("barraLateral"));
    QTest::mouseClick(boton, Qt::LeftButton);
    EXPECT_EQ(boton->text(), QStringLiteral("Restaurar"));
    EXPECT_FALSE(barra->isVisible());
    QTest::qWait(20);
    QTableView* t = w->panelVenta()->grilla()->tabla();
    const int ancho = t->viewport()->width();
    const int esperados[] = {18, 10, 30, 19, 19};
    for (int i = 0, visibles = 0; visibles < 5; ++i) {
        const int logica = t->horizontalHeader()->logicalIndex(i);
        if (t->horizontalHeader()->isSectionHidden(logica)) continue;
        EXPECT_NEAR(t->horizontalHeader()->sectionSize(logica), ancho * esperados[visibles] / 100, 1) << i;
        ++visibles;
    }
    QTest::mouseClick(boton, Qt::LeftButton);
    EXPECT_EQ(boton->text(), QStringLiteral("Maximizar"));
    EXPECT_TRUE(barra->isVisible());
}

TEST_F(VentanaPrincipal, ModoPuntoDeVentaSoloVeLaVentaYSalirCierraElAlmacen) {
    estado_.idNivelActual = nivel({});
    a().ejecuta(QStringLiteral("UPDATE Niveles SET SoloPOS = 1 WHERE idNivel = ?"), {estado_.idNivelActual});
    auto w = ventana();
    EXPECT_TRUE(w->modoPOS());
    w->show();
    EXPECT_EQ(w->panelActual(), 3);
    EXPECT_TRUE(w->agrandada());
    EXPECT_FALSE(w->findChild<QWidget*>(QStringLiteral("barraLateral"))->isVisible());
    auto* boton = w->findChild<QPushButton*>(QStringLiteral("Command55"));
    EXPECT_EQ(boton->text(), QStringLiteral("Salir"));
    // Una segunda activación no repite nada.
    w->hide();
    w->show();
    EXPECT_EQ(boton->text(), QStringLiteral("Salir"));

    QTest::mouseClick(boton, Qt::LeftButton);
    EXPECT_THROW(a().base(), ErrorAlmacen); // cerrado antes de terminar
    EXPECT_EQ(terminado_, 0);
    EXPECT_FALSE(w->isVisible());
    // Al cerrar guardó la distribución de las grillas.
    EXPECT_TRUE(QFile::exists(archivo(QStringLiteral("data1_PanPrincipal"))));
}

TEST_F(VentanaPrincipal, SupervisorConSoloPOSNoEntraEnModoPuntoDeVenta) {
    estado_.idNivelActual = nivel({}, true);
    a().ejecuta(QStringLiteral("UPDATE Niveles SET SoloPOS = -1 WHERE idNivel = ?"), {estado_.idNivelActual});
    auto w = ventana();
    w->show();
    EXPECT_FALSE(w->modoPOS());
    EXPECT_EQ(w->panelActual(), PanPrincipal::kBienvenida);
}

TEST_F(VentanaPrincipal, DistribucionesSeGuardanAlCerrarYResetGrillasLasBorra) {
    {
        auto w = ventana();
        w->show();
        w->botPrincipal(7);
        auto* proveedores = w->findChild<Grilla*>(QStringLiteral("Data5"));
        ASSERT_NE(proveedores, nullptr);
        proveedores->fijaAnchoColumna(QStringLiteral("RazonSocial"), 333);
        w->close();
    }
    for (const QString& f : PanPrincipal::archivosDistribucion()) EXPECT_TRUE(QFile::exists(archivo(f))) << f.toStdString();
    {
        // Se vuelve a abrir con el ancho guardado.
        auto w = ventana();
        EXPECT_EQ(w->findChild<Grilla*>(QStringLiteral("Data5"))->anchoColumna(QStringLiteral("RazonSocial")), 333);

        // "No" no borra nada.
        auto no = respondeCaja(QStringLiteral("No"));
        w->resetGrillas();
        EXPECT_TRUE(no->vista);
        EXPECT_EQ(no->titulo, QStringLiteral("Reestablecer"));
        EXPECT_TRUE(no->texto.startsWith(QStringLiteral("Atención! Ésta opción elimina la distribución personalizada")));
        EXPECT_TRUE(no->texto.endsWith(QStringLiteral("\nDesea Continuar ?")));
        EXPECT_EQ(terminado_, -1);
        EXPECT_TRUE(QFile::exists(archivo(QStringLiteral("dataUsers_PanPrincipal"))));

        // "Sí" borra, avisa y termina sin volver a guardarlas.
        auto si = respondeCaja(QStringLiteral("Sí"));
        std::shared_ptr<prueba::CajaVista> aviso;
        QTimer::singleShot(0, [&aviso] { aviso = respondeCaja(QStringLiteral("Aceptar")); });
        w->resetGrillas();
        ASSERT_TRUE(aviso);
        EXPECT_EQ(aviso->texto,
                  QStringLiteral("Ahora el sistema se cerrará para volver a entrar con la distribución reestablecida."));
        EXPECT_EQ(terminado_, 0);
    }
    for (const QString& f : PanPrincipal::archivosDistribucion())
        EXPECT_FALSE(QFile::exists(archivo(f))) << f.toStdString();
}

TEST_F(VentanaPrincipal, TotalesDeCajaDelPeriodo) {
    // El total de egresos toma sólo el primer día del período, como siempre.
    auto mov = [&](const QDate& f, double ingreso, double egreso) {
        a().ejecuta(QStringLiteral("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso) VALUES (1, ?, 'x', ?, ?)"),
                    {f, ingreso, egreso});
    };
    mov(QDate(2026, 11, 20), 1000.5, 100);
    mov(QDate(2026, 11, 21), 250, 40);
    mov(QDate(2026, 11, 22), 10, 5);
    auto w = ventana();
    w->botPrincipal(2);
    w->findChild<QDateEdit*>(QStringLiteral("DTPicker1"))->setDate(QDate(2026, 11, 20));
    EXPECT_EQ(w->findChild<QLineEdit*>(QStringLiteral("Text3"))->text(), QStringLiteral("1,260.50"));
    EXPECT_EQ(w->findChild<QLineEdit*>(QStringLiteral("Text4"))->text(), QStringLiteral("100.00"));
    EXPECT_EQ(w->findChild<QLineEdit*>(QStringLiteral("Text5"))->text(), QStringLiteral("1,160.50"));
    EXPECT_EQ(w->findChild<Grilla*>(QStringLiteral("Data3"))->modelo().rowCount(), 3);
}

} // namespace
} // namespace orv
