// Ventana principal: carga, niveles aplicados, paneles con el mouse y con el teclado, venta que
// sobrevive al cambio de panel, modo punto de venta, distribución de las grillas y su reinicio.

#include "access/niveles.h"
#include "access/ui/panel_usuarios.h"
#include "apoyo/modal.h"
#include "apoyo/pantalla_prueba.h"
#include "reports/ui/pan_mensajeria.h"
#include "reports/ui/salida_informes.h"
#include "sales/ui/panel_venta.h"
#include "shell/pan_principal.h"
#include "widgets/grilla.h"

#include <QTest>
#include <QtWidgets>

namespace orv {
namespace {

using prueba::hijo;
using prueba::respondeCaja;

class VentanaPrincipal : public prueba::PantallaDePrueba {
protected:
    void SetUp() override {
        PantallaDePrueba::SetUp();
        estado_.IdRed = 7;
        estado_.idTipoComprobanteActual = 0;
        estado_.NombreUsuarioActual = "Ana O'Neil";
        estado_.carpetaDatos = base_->carpeta();
    }
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
        a().ejecuta(QStringLiteral("INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, PCRed) "
                                   "VALUES (1, ?, 'Yerba 1 kg', 2, 100, 200, ?)"),
                    {codigo, terminal});
    }

    int niveles_ = 0;
    int terminado_ = -1;
};

TEST_F(VentanaPrincipal, CargaConLosValoresGuardadosYLosQueNoSonEnterosDanLosDeSiempre) {
    conf_->graba(clave::miscelaneas, "ModoPrint", "3");
    conf_->graba(clave::miscelaneas, "CopiasPrint", "2");
    auto w = ventana();
    EXPECT_EQ(w->windowTitle(), PanPrincipal::tituloVentana("Ana O'Neil"));
    EXPECT_EQ(hijo<QLabel>(*w, "Label14")->text() + u'|' + hijo<QLabel>(*w, "Label11")->text(),
              "Hola Ana O'Neil !!|lunes, 23 de noviembre de 2026");
    // El destino guardado ya está en la salida de los informes; cambiarlo lo graba.
    auto* combo1 = hijo<QComboBox>(*w, "Combo1");
    auto* text10 = hijo<QLineEdit>(*w, "Text10");
    EXPECT_EQ(std::pair(combo1->currentIndex(), text10->text()), std::pair(3, QStringLiteral("2")));
    EXPECT_EQ(std::pair(w->salidaInformes()->destino(), w->salidaInformes()->copias()), std::pair(SalidaInformes::Correo, 2));
    combo1->setCurrentIndex(1);
    text10->selectAll();
    QTest::keyClicks(text10, "3,5"); // la coma no entra: nada se lee como 3
    EXPECT_EQ(conf_->lee(clave::miscelaneas, "ModoPrint") + u'|' + conf_->lee(clave::miscelaneas, "CopiasPrint"),
              "1|35");
    EXPECT_EQ(std::pair(w->salidaInformes()->destino(), w->salidaInformes()->copias()), std::pair(SalidaInformes::Impresora, 35));
    // Sin comprobante predeterminado se toma el primero y queda grabado; las fechas, hoy; el vendedor, el usuario.
    EXPECT_EQ(conf_->lee(clave::miscelaneas, "ComprobantePredeterminado"), "1");
    EXPECT_EQ(estado_.idTipoComprobanteActual, 1);
    for (const char* nombre : {"DTPicker1", "dtpickerHasta", "Dtpicker4", "Dtpicker5"})
        EXPECT_EQ(hijo<QDateEdit>(*w, nombre)->date(), QDate(2026, 11, 23)) << nombre;
    EXPECT_EQ(w->panelVenta()->vendedores()->currentData().toInt(), 1);

    // Un número que no es entero no se corta: "2,5" no es 2 copias ni "1.5" el destino 1.
    conf_->graba(clave::miscelaneas, "ModoPrint", "1.5");
    conf_->graba(clave::miscelaneas, "CopiasPrint", "2,5");
    a().ejecuta("INSERT INTO TiposDeComprobantes (Tipo, Letra, PuntoDeVenta, Correlativo) VALUES ('NOTA DE CREDITO B', 'B', '0002', 41)");
    conf_->graba(clave::miscelaneas, "ComprobantePredeterminado", "2");
    w = ventana();
    EXPECT_EQ(std::pair(hijo<QComboBox>(*w, "Combo1")->currentIndex(), hijo<QLineEdit>(*w, "Text10")->text()), std::pair(0, QStringLiteral("1")));
    EXPECT_EQ(estado_.idTipoComprobanteActual, 2);
    w->botPrincipal(3);
    EXPECT_EQ(hijo<QPushButton>(*w, "lblTipCompro")->text() + u'|' + hijo<QLabel>(*w, "lblProx")->text(),
              "NOTA DE CREDITO B|B 0002-00000042");
    // Otro tipo elegido en la lista cambia el tipo de la venta y la vista previa del número.
    hijo<QComboBox>(*w, "cboSelTipoCo")->setCurrentIndex(0);
    w->panelVenta()->eligeTipo();
    EXPECT_EQ(QString::number(estado_.idTipoComprobanteActual) + u'|' + hijo<QLabel>(*w, "lblProx")->text(), "1|B 0001-00000001");
}

TEST_F(VentanaPrincipal, NivelesApaganSoloSusControlesYElModoPuntoDeVentaEsDeQuienNoEsSupervisor) {
    const qint16 borrado = nivel({});
    a().ejecuta("DELETE FROM Niveles WHERE idNivel = ?", {borrado});
    // Botones laterales 0..7 y "Usuarios del sistema" (1: habilitado), modo punto de venta y panel al mostrarse.
    const struct {
        qint16 nivel;
        const char* habilitados;
        bool pos;
        int panel;
    } casos[] = {
        {1, "11111111 1", false, PanPrincipal::kBienvenida},
        // Qué controles apaga cada permiso se prueba con los niveles; aquí, que la ventana los apaga.
        {nivel({"VeClientes", "VeUsuarios", "SoloPOS"}), "10111111 0", false, PanPrincipal::kBienvenida},
        {qint16(NuevoNivel(a(), "Sin nada").value()), "00000000 0", false, PanPrincipal::kBienvenida},
        {borrado, "00000000 0", false, PanPrincipal::kBienvenida},
        {nivel({}, true), "11111111 1", false, PanPrincipal::kBienvenida}, // supervisor con "solo P.O.S."
        {nivel({}), "11111111 1", true, 3},
    };
    for (const auto& c : casos) {
        estado_.idNivelActual = c.nivel;
        auto w = ventana();
        w->show();
        QString habilitados;
        for (int i = 0; i < 8; ++i) habilitados += w->botonLateral(i)->isEnabled() ? u'1' : u'0';
        habilitados += QStringLiteral(" ") + (hijo<QWidget>(*w, "Label37")->isEnabled() ? u'1' : u'0');
        EXPECT_EQ(habilitados.toStdString(), c.habilitados) << c.nivel;
        EXPECT_EQ(w->modoPOS(), c.pos) << c.nivel;
        EXPECT_EQ(w->agrandada(), c.pos) << c.nivel;
        EXPECT_EQ(w->panelActual(), c.panel) << c.nivel;
    }
    // Sin "Precio en la venta de artículos" las líneas no se corrigen en la grilla.
    estado_.idNivelActual = qint16(NuevoNivel(a(), "Otro sin nada").value());
    EXPECT_TRUE(ventana()->panelVenta()->soloLectura());
}

// Destino y copias son de la ventana: un nivel con informes y sin utilidades los elige igual.
TEST_F(VentanaPrincipal, SinUtilidadesElDestinoYLasCopiasSeEligenDesdeCualquierPanel) {
    estado_.idNivelActual = nivel({"VeUtilidades", "SoloPOS"});
    auto w = ventana();
    w->show();
    auto* combo1 = hijo<QComboBox>(*w, "Combo1");
    auto* text10 = hijo<QLineEdit>(*w, "Text10");
    for (int panel : {4, 3, 0}) {
        w->botPrincipal(panel);
        EXPECT_TRUE(combo1->isVisible() && combo1->isEnabled() && text10->isVisible() && text10->isEnabled()) << panel;
    }
}

TEST_F(VentanaPrincipal, CambioDePanelYVentaQueSobrevive) {
    lineaDeVenta(7, "0101");
    lineaDeVenta(7, "0102");
    lineaDeVenta(99, "OTRA"); // borrador de otra terminal
    a().ejecuta("INSERT INTO Usuarios (NombreCompleto, NombreUsuario, idNivel) VALUES ('Bruno', 'bruno', 1)");
    auto w = ventana();
    w->resize(1100, 700);
    w->show();
    QTest::mouseClick(w->botonLateral(3), Qt::LeftButton);
    EXPECT_EQ(w->panelActual(), 3);
    EXPECT_EQ(hijo<QStackedWidget>(*w, "pilaPaneles")->currentWidget()->objectName(), "zonaPanel3");
    Grilla* lineas = w->panelVenta()->grilla();
    ASSERT_EQ(lineas->modelo().rowCount(), 2);
    EXPECT_EQ(lineas->modelo().valor(0, lineas->modelo().columna("Codigo")).toString(), "0101");
    EXPECT_EQ(hijo<QLabel>(*w, "lblCli")->text() + u'|' + hijo<QLabel>(*w, "lblItems")->text() + u'|' + estado_.NombreClienteActual,
              "<Sin seleccion de cliente>|4.0 de 2 ítems.|Cons.Final");

    // "Mensajería" abre su pantalla, modal, y deja al frente el panel que estaba.
    auto mensajeria = prueba::alAbrirse<PanMensajeria>([](PanMensajeria* p) { p->reject(); });
    w->botonLateral(5)->click();
    EXPECT_TRUE(mensajeria->vista);
    EXPECT_EQ(w->panelActual(), 3);
    EXPECT_TRUE(w->botonLateral(3)->isChecked());

    // Se elige otro vendedor, se va a otros paneles y se vuelve: todo sigue igual.
    auto* vendedores = w->panelVenta()->vendedores();
    vendedores->setCurrentIndex(vendedores->findText("Bruno"));
    estado_.ObservacionesActual = "entregar el lunes";
    for (int panel : {0, 2}) {
        QTest::mouseClick(w->botonLateral(panel), Qt::LeftButton);
        EXPECT_EQ(w->panelActual(), panel);
    }
    lineaDeVenta(7, "0103");
    QTest::mouseClick(w->botonLateral(3), Qt::LeftButton);
    EXPECT_EQ(vendedores->currentText() + u'|' + estado_.ObservacionesActual, "Bruno|entregar el lunes");
    EXPECT_EQ(lineas->modelo().rowCount(), 3);
    // Un usuario cambiado aparece en la lista de vendedores sin perder la elección.
    a().ejecuta("UPDATE Usuarios SET NombreCompleto = 'Bruno Díaz' WHERE NombreUsuario = 'bruno'");
    Q_EMIT w->panelUsuarios()->usuariosCambiados();
    EXPECT_EQ(vendedores->currentText(), "Bruno Díaz");
    // "Usuarios del sistema" desde Utilidades lleva al panel 8.
    QTest::mouseClick(w->botonLateral(6), Qt::LeftButton);
    QTest::mouseClick(hijo<QPushButton>(*w, "Label37"), Qt::LeftButton);
    EXPECT_EQ(w->panelActual(), 8);
}

// La ventana abre maximizada, cada panel lateral se abre con Alt y su letra subrayada, en una
// pantalla chica el panel se desplaza en lugar de quedar cortado, y el panel de venta se agranda.
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
    auto* zona = hijo<QScrollArea>(*w, "zonaPanel3");
    const QWidget* registrar = hijo<QPushButton>(*w, "Command16");
    // "Registrar" queda a la vista o a un desplazamiento: dentro del panel desplazable, nunca fuera.
    EXPECT_GE(zona->widget()->width(), zona->widget()->minimumSizeHint().width());
    EXPECT_TRUE(zona->widget()->rect().contains(registrar->mapTo(zona->widget(), registrar->rect().bottomRight())));
    // "Maximizar" esconde la barra lateral y "Restaurar" la devuelve.
    for (const auto& [texto, barra] : {std::pair{"Restaurar", false}, {"Maximizar", true}}) {
        QTest::mouseClick(hijo<QPushButton>(*w, "Command55"), Qt::LeftButton);
        EXPECT_EQ(hijo<QPushButton>(*w, "Command55")->text() + u'|' + (hijo<QWidget>(*w, "barraLateral")->isVisible() ? "sí" : "no"),
                  QString::fromUtf8(texto) + u'|' + (barra ? "sí" : "no"));
    }
}

TEST_F(VentanaPrincipal, ModoPuntoDeVentaSoloVeLaVentaYSalirCierraElAlmacen) {
    estado_.idNivelActual = nivel({});
    auto w = ventana();
    w->show();
    EXPECT_FALSE(hijo<QWidget>(*w, "barraLateral")->isVisible());
    auto* boton = hijo<QPushButton>(*w, "Command55");
    EXPECT_EQ(boton->text(), "Salir");
    w->hide(); // una segunda activación no repite nada
    w->show();
    EXPECT_EQ(boton->text(), "Salir");
    QTest::mouseClick(boton, Qt::LeftButton);
    EXPECT_THROW(a().base(), ErrorAlmacen); // cerrado antes de terminar
    EXPECT_EQ(terminado_, 0);
    EXPECT_FALSE(w->isVisible());
    EXPECT_TRUE(QFile::exists(archivo("data1_PanPrincipal"))); // guardó la distribución al cerrar
}

TEST_F(VentanaPrincipal, DistribucionesSeGuardanAlCerrarYResetGrillasLasBorra) {
    {
        auto w = ventana();
        w->show();
        w->botPrincipal(7);
        hijo<Grilla>(*w, "Data5")->fijaAnchoColumna("RazonSocial", 333);
        w->close();
    }
    for (const QString& f : PanPrincipal::archivosDistribucion()) EXPECT_TRUE(QFile::exists(archivo(f))) << f.toStdString();
    {
        auto w = ventana(); // se vuelve a abrir con el ancho guardado
        EXPECT_EQ(hijo<Grilla>(*w, "Data5")->anchoColumna("RazonSocial"), 333);
        auto no = respondeCaja("No"); // "No" no borra nada
        w->resetGrillas();
        EXPECT_EQ(no->titulo, "Reestablecer");
        EXPECT_TRUE(no->texto.startsWith("Atención! Ésta opción elimina la distribución personalizada") &&
                    no->texto.endsWith("\nDesea Continuar ?"));
        EXPECT_EQ(terminado_, -1);
        EXPECT_TRUE(QFile::exists(archivo("dataUsers_PanPrincipal")));
        // "Sí" borra, avisa y termina sin volver a guardarlas.
        respondeCaja("Sí");
        std::shared_ptr<prueba::CajaVista> aviso;
        QTimer::singleShot(0, [&aviso] { aviso = respondeCaja("Aceptar"); });
        w->resetGrillas();
        ASSERT_TRUE(aviso);
        EXPECT_EQ(aviso->texto, "Ahora el sistema se cerrará para volver a entrar con la distribución reestablecida.");
        EXPECT_EQ(terminado_, 0);
    }
    for (const QString& f : PanPrincipal::archivosDistribucion()) EXPECT_FALSE(QFile::exists(archivo(f))) << f.toStdString();
}

TEST_F(VentanaPrincipal, TotalesDeCajaDelPeriodo) {
    // El total de egresos toma sólo el primer día del período, como siempre.
    for (const auto& [dia, ingreso, egreso] : {std::tuple{20, 1000.5, 100}, {21, 250.0, 40}, {22, 10.0, 5}})
        a().ejecuta("INSERT INTO Caja (idCuenta, Fecha, Detalles, Ingreso, Egreso) VALUES (1, ?, 'x', ?, ?)",
                    {QDate(2026, 11, dia), ingreso, egreso});
    auto w = ventana();
    w->botPrincipal(2);
    hijo<QDateEdit>(*w, "DTPicker1")->setDate(QDate(2026, 11, 20));
    EXPECT_EQ(hijo<QLineEdit>(*w, "Text3")->text() + u'|' + hijo<QLineEdit>(*w, "Text4")->text() + u'|' + hijo<QLineEdit>(*w, "Text5")->text(),
              "1,260.50|100.00|1,160.50");
    EXPECT_EQ(hijo<Grilla>(*w, "Data3")->modelo().rowCount(), 3);
}

} // namespace
} // namespace orv
