// Capturas de pantalla: dibuja el ingreso, la ventana principal en cada panel y el editor de
// niveles sobre un almacén de ejemplo, y guarda un PNG por pantalla y tamaño.
//
//   orvanta_capturas CARPETA_DE_SALIDA

#include "access/ingreso.h"
#include "access/ui/pan_ed_usuario.h"
#include "access/ui/pan_ingreso.h"
#include "access/ui/pan_niveles.h"
#include "access/ui/pan_supervisor_inicial.h"
#include "articles/ui/pan_articulo.h"
#include "app/configuracion.h"
#include "articles/movimientos_stock.h"
#include "articles/ui/pan_borr_mov_stock.h"
#include "articles/ui/pan_camb_stock.h"
#include "articles/ui/pan_ed_rubros.h"
#include "articles/ui/pan_ingr_stock.h"
#include "articles/ui/pan_rubros.h"
#include "articles/ui/pan_foto.h"
#include "articles/ui/pan_lis_pre.h"
#include "articles/ui/pan_cam_pre.h"
#include "articles/ui/panel_articulos.h"
#include "articles/ui/pan_gen_matriz.h"
#include "articles/ui/pan_matrices.h"
#include "articles/etiquetas.h"
#include "articles/ui/pan_conf_etiq.h"
#include "articles/ui/pan_etiquetas.h"
#include "articles/ui/pan_importa_excel.h"
#include "production/ui/pan_formula.h"
#include "production/ui/pan_produccion.h"
#include "suppliers/ui/pan_compras.h"
#include "suppliers/ui/pan_cta_prove.h"
#include "suppliers/ui/pan_ingr_pago_prove.h"
#include "suppliers/ui/pan_nue_compra.h"
#include "suppliers/ui/pan_nue_prove.h"
#include "cash/ui/pan_caja.h"
#include "cash/ui/pan_corte_caja.h"
#include "cash/ui/pan_formas_pago.h"
#include "cash/ui/pan_plan_ctas.h"
#include "cash/ui/pan_situacion.h"
#include "cash/ui/panel_caja.h"
#include "store/formato.h"
#include "customers/cuenta.h"
#include "customers/comisiones.h"
#include "customers/ui/pan_cobra_premio.h"
#include "customers/ui/pan_comisiones.h"
#include "customers/ui/pan_historico.h"
#include "customers/ui/pan_liq.h"
#include "customers/ui/pan_liq_comision.h"
#include "customers/ui/pan_nue_tabla_vip.h"
#include "customers/ui/pan_puntaje_vip_cliente.h"
#include "customers/ui/pan_tabla_premios_vip.h"
#include "customers/ui/pan_resumen_cuenta.h"
#include "customers/ui/pan_ve_comisiones.h"
#include "customers/ui/pan_vendedores.h"
#include "app/estado.h"
#include "sales/ui/pan_comprobantes.h"
#include "sales/diseno_ticket.h"
#include "sales/ui/pan_conf_fiscal.h"
#include "sales/ticket.h"
#include "sales/ui/pan_conf_tkt.h"
#include "ticket_en_imagen.h"
#include "sales/ui/pan_corr_num.h"
#include "sales/ui/pan_fpago.h"
#include "sales/ui/pan_nue_tipo_comproba.h"
#include "sales/ui/pan_pre_fact.h"
#include "sales/ui/pan_sel_art.h"
#include "sales/cliente_venta.h"
#include "sales/ui/panel_venta.h"
#include "maintenance/datos_ejemplo.h"
#include "maintenance/ui/pan_help.h"
#include "maintenance/ui/pan_region.h"
#include "maintenance/ui/pan_zonas.h"
#include "reports/catalogo.h"
#include "reports/informe.h"
#include "reports/ui/pan_mensajeria.h"
#include "reports/ui/pan_print_crystal.h"
#include "widgets/grilla.h"
#include "reports/ui/pan_rep_sel.h"
#include "reports/ui/salida_informes.h"
#include "reports/ui/visor_informe.h"
#include "store/aviso.h"
#include "shell/pan_principal.h"
#include "store/actualizacion.h"
#include "store/almacen.h"
#include "store/reloj.h"
#include "maintenance/respaldo.h"
#include "maintenance/restauracion.h"
#include "maintenance/ui/pan_backup.h"
#include "maintenance/ui/pan_restaurar.h"
#include "maintenance/ui/pan_sel_path.h"
#include "maintenance/ui/pan_tablas.h"

#include <QApplication>
#include <QAbstractButton>
#include <QMessageBox>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QPainter>
#include <QPixmap>
#include <QPrinter>
#include <QListWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <tuple>
#include <QLineEdit>
#include <QListWidget>
#include <QSqlQuery>
#include <QPushButton>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>
#include <QFile>
#include <QRadioButton>
#include <QProcess>
#include <QTableView>
#include <cstdio>

namespace {

QString salida;
int guardadas = 0;

void guarda(QWidget& w, const QString& nombre) {
    QApplication::processEvents();
    QApplication::processEvents();
    const QString ruta = QDir(salida).filePath(nombre + QStringLiteral(".png"));
    if (w.grab().save(ruta)) {
        ++guardadas;
        std::printf("%s\n", qPrintable(ruta));
    } else {
        std::fprintf(stderr, "No se pudo guardar %s\n", qPrintable(ruta));
    }
}

// La ventana con otra ventana suya pintada encima, en el lugar donde se ve.
void guardaConEncima(QWidget& w, QWidget& encima, const QString& nombre) {
    QApplication::processEvents();
    QApplication::processEvents();
    QPixmap imagen = w.grab();
    {
        QPainter pintor(&imagen);
        pintor.drawPixmap(encima.geometry().topLeft() - w.geometry().topLeft(), encima.grab());
    }
    const QString ruta = QDir(salida).filePath(nombre + QStringLiteral(".png"));
    if (imagen.save(ruta)) {
        ++guardadas;
        std::printf("%s\n", qPrintable(ruta));
    } else {
        std::fprintf(stderr, "No se pudo guardar %s\n", qPrintable(ruta));
    }
}

// El asistente de importación con una planilla real (.xlsx escrito por ssconvert) con filas malas:
// los tres pasos y el informe de errores después de importar. Lo importado se borra al terminar,
// para que la captura del tamaño siguiente importe lo mismo.
void capturaImportacion(orv::Almacen& almacen, const orv::Configuracion& conf, QWidget& w, const QSize& t, const QString& sufijo) {
    QTemporaryDir carpeta;
    const QString csv = carpeta.filePath(QStringLiteral("Lista de precios.csv"));
    QFile f(csv);
    if (!f.open(QIODevice::WriteOnly)) return;
    f.write("Codigo,Descripcion,Costo,Venta,Stock\n"
            "IMP-001,Fideos tirabuzón 500 g,310.5,452.9,24\n"
            "IMP-002,Arroz largo fino 1 kg,520,749.99,18\n"
            "IMP-003,,120,199,5\n"
            "IMP-004,Aceite de girasol 900 ml,abc,1890,12\n"
            "IMP-005,Yerba mate suave 1 kg,1710,2390.5,30\n"
            "IMP-001,Fideos repetidos,300,450,1\n"
            "IMP-007,Galletitas de agua,95.25,149,40\n"
            "IMP-008,Café molido 250 g,1999,2899,\n");
    f.close();
    const QString xlsx = carpeta.filePath(QStringLiteral("Lista de precios.xlsx"));
    QProcess::execute(QStringLiteral("ssconvert"), {csv, xlsx});
    if (!QFile::exists(xlsx)) {
        std::fprintf(stderr, "importación: ssconvert no escribió la planilla\n");
        return;
    }
    orv::panImportaExcel p(almacen, conf, &w);
    p.resize(std::min(t.width() - 40, 960), std::min(t.height() - 60, 660));
    p.fijaArchivo(xlsx);
    p.show();
    guarda(p, QStringLiteral("importa_excel_paso1") + sufijo);
    p.abreHoja();
    auto* pasos = p.findChild<QTabWidget*>(QStringLiteral("SSTab1"));
    pasos->setCurrentIndex(1);
    auto* campos = p.findChild<QComboBox*>(QStringLiteral("Combo2"));
    for (const char* campo : {"Codigo", "Descripcion", "PrecioCosto", "PrecioVenta", "StockActual"}) {
        campos->setCurrentText(QString::fromLatin1(campo));
        p.agregaAlMapa();
    }
    p.findChild<QRadioButton*>(QStringLiteral("Option4"))->setChecked(true);
    p.findChild<QLineEdit*>(QStringLiteral("txCampoFijo"))->setText(QStringLiteral("1"));
    campos->setCurrentText(QStringLiteral("idRubro"));
    p.agregaAlMapa();
    guarda(p, QStringLiteral("importa_excel_paso2") + sufijo);
    pasos->setCurrentIndex(2);
    guarda(p, QStringLiteral("importa_excel_paso3") + sufijo);
    QTimer respuesta;
    QObject::connect(&respuesta, &QTimer::timeout, [] {
        for (QWidget* v : QApplication::topLevelWidgets())
            if (auto* m = qobject_cast<QMessageBox*>(v); m && m->isVisible()) m->accept();
    });
    respuesta.start(20);
    p.importa();
    while (p.importando()) QApplication::processEvents(QEventLoop::AllEvents, 20);
    respuesta.stop();
    guarda(p, QStringLiteral("importa_excel_errores") + sufijo);
    almacen.ejecuta(QStringLiteral("DELETE FROM Articulos WHERE Codigo LIKE 'IMP-%'"));
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "Uso: orvanta_capturas CARPETA_DE_SALIDA\n");
        return 2;
    }
    salida = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(salida);

    QTemporaryDir datos;
    const orv::RelojFijo reloj(QDateTime(QDate(2026, 11, 23), QTime(10, 30)));
    auto almacen = orv::Almacen::abreSQLite(datos.filePath(QStringLiteral("BASE.db")));
    orv::actualizaEsquema(*almacen);

    // Antes de los datos: la pantalla del primer ingreso.
    {
        orv::PanSupervisorInicial p(*almacen);
        p.show();
        guarda(p, QStringLiteral("supervisor_inicial"));
    }
    orv::cargaDatosEjemplo(*almacen, reloj);
    orv::FijaSupervisorInicial(*almacen, QStringLiteral("supervisor"), QStringLiteral("clave"),
                               QStringLiteral("clave"));
    {
        orv::PanIngreso p(*almacen);
        p.fijaUsuario(QStringLiteral("supervisor"));
        p.show();
        guarda(p, QStringLiteral("ingreso"));
    }

    // Unas líneas de venta de esta terminal, para ver el panel "Vender" con datos.
    almacen->ejecuta(QStringLiteral(
        "INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, Sn, PCRed) "
        "SELECT idArticulo, Codigo, Descripcion, 2, PrecioVenta, 2 * PrecioVenta, '', 1 FROM Articulos "
        "ORDER BY idArticulo LIMIT 12"));

    orv::EstadoAplicacion estado;
    estado.IdRed = 1;
    estado.idUsuarioActual = 1;
    estado.idNivelActual = 1;
    estado.NombreUsuarioActual = QStringLiteral("Supervisor");
    estado.carpetaDatos = datos.path();
    estado.almacenAbierto = almacen->descripcion();
    const orv::Configuracion conf(datos.path(), datos.filePath(QStringLiteral("usuario.conf")));

    // Una foto en IMAGES para la ficha del artículo, y un nivel sin derechos sobre los precios.
    // La foto es de un paquete de yerba: va a la primera yerba de 1 kg del catálogo de ejemplo.
    const qint64 conFoto = almacen
                               ->valor(QStringLiteral("SELECT COALESCE((SELECT min(idArticulo) FROM Articulos WHERE "
                                                      "Descripcion LIKE 'Yerba mate%1 kg'), (SELECT min(idArticulo) "
                                                      "FROM Articulos))"))
                               .toLongLong();
    {
        QDir(datos.path()).mkpath(QStringLiteral("IMAGES"));
        QImage foto(420, 320, QImage::Format_RGB32);
        QPainter pintor(&foto);
        QLinearGradient fondo(0, 0, 420, 320);
        fondo.setColorAt(0, QColor(0xf4, 0xe9, 0xc8));
        fondo.setColorAt(1, QColor(0x8a, 0xb0, 0x6e));
        pintor.fillRect(foto.rect(), fondo);
        pintor.setBrush(QColor(0x3d, 0x6b, 0x2e));
        pintor.drawRoundedRect(60, 20, 180, 210, 18, 18);
        pintor.setPen(Qt::white);
        pintor.setFont(QFont(QStringLiteral("Sans"), 22, QFont::Bold));
        pintor.drawText(QRect(60, 20, 180, 210), Qt::AlignCenter, QStringLiteral("YERBA\n1 kg"));
        pintor.end();
        const QString ruta = QDir(datos.path()).filePath(QStringLiteral("IMAGES/yerba.png"));
        foto.save(ruta);
        almacen->ejecuta(QStringLiteral("UPDATE Articulos SET Foto = ? WHERE idArticulo = ?"), {ruta, conFoto});
    }
    orv::EstadoAplicacion sinCostos = estado;
    sinCostos.idNivelActual = static_cast<qint16>(almacen->inserta(
        QStringLiteral("INSERT INTO Niveles (Nombre, VePreCostos, PermCambioPrecios) VALUES ('Mostrador', 0, 0)"), {},
        QStringLiteral("idNivel")));

    const QList<QSize> tamanios = {QSize(1280, 800), QSize(1024, 768), QSize(800, 600)};
    const char* const nombres[] = {"articulos", "clientes", "caja", "vender", "informes", "", "utilidades",
                                   "proveedores"};
    for (const QSize& t : tamanios) {
        const QString sufijo = QStringLiteral("_%1x%2").arg(t.width()).arg(t.height());
        orv::PanPrincipal w(*almacen, estado, conf, reloj);
        w.fijaTerminacion([](int) {});
        w.show();
        w.setWindowState(Qt::WindowNoState); // abre maximizada; aquí, del tamaño de cada captura
        w.resize(t);
        QApplication::setActiveWindow(&w); // el foco se ve como lo ve el cajero
        guarda(w, QStringLiteral("principal_bienvenida") + sufijo);
        for (int i = 0; i < 8; ++i) {
            if (i == 5) continue; // Mensajería: su pantalla propia, más abajo
            w.botPrincipal(i);
            guarda(w, QStringLiteral("principal_%1_%2").arg(i).arg(QString::fromLatin1(nombres[i])) + sufijo);
        }
        {
            // El panel de artículos en el artículo con foto, con la ventana de la foto a la vista.
            w.botPrincipal(0);
            orv::Grilla* lista = w.panelArticulos()->grilla();
            const int columnaId = lista->modelo().columna(QStringLiteral("idArticulo"));
            for (int f = 0; lista->irAFila(f); ++f)
                if (lista->modelo().valor(f, columnaId).toLongLong() == conFoto) break;
            auto* mostrar = w.findChild<QCheckBox*>(QStringLiteral("chkMuesFoto"));
            mostrar->setChecked(true);
            if (orv::panFoto* foto = w.panelArticulos()->foto()) {
                // Sobre la grilla, al pie, sin tapar la columna de botones.
                foto->move(w.geometry().topLeft() + QPoint(t.width() - foto->width() - 200, t.height() - foto->height() - 60));
                guardaConEncima(w, *foto, QStringLiteral("principal_0_articulos_con_foto") + sufijo);
            }
            mostrar->setChecked(false);
            orv::panLisPre lisPre(*almacen, *w.salidaInformes(), reloj, &w);
            lisPre.show();
            guarda(lisPre, QStringLiteral("lis_pre") + sufijo);
        }
        w.findChild<QPushButton*>(QStringLiteral("Label37"))->click();
        guarda(w, QStringLiteral("principal_8_usuarios") + sufijo);
        {
            // Clientes: la ficha, la cuenta con unos meses de movimientos, una cobranza recién
            // registrada (sin caja, para no cambiar las capturas de la caja) y el resumen.
            const qint64 conCuenta = almacen->valor(QStringLiteral("SELECT idVendedor FROM Comisiones GROUP BY idVendedor "
                                                                   "ORDER BY count(*) DESC, idVendedor LIMIT 1")).toLongLong();
            orv::PanVendedores ficha(*almacen, estado, conCuenta, &w);
            ficha.show();
            guarda(ficha, QStringLiteral("cliente_editar") + sufijo);
            orv::PanVendedores nuevo(*almacen, estado, std::nullopt, &w);
            nuevo.show();
            guarda(nuevo, QStringLiteral("cliente_nuevo") + sufijo);
            orv::PanLiqComision cobro(*almacen, estado, reloj, *w.salidaInformes(), conCuenta, &w);
            cobro.show();
            guarda(cobro, QStringLiteral("liq_comision") + sufijo);
            cobro.findChild<QLineEdit*>(QStringLiteral("Text2"))->setText(QStringLiteral("1,250.00"));
            cobro.findChild<QCheckBox*>(QStringLiteral("Check1"))->setChecked(false);
            cobro.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
            cobro.temporizador()->stop();
            guarda(cobro, QStringLiteral("liq_comision_registrada") + sufijo);
            orv::PanVeComisiones cuenta(*almacen, estado, reloj, *w.salidaInformes(), conCuenta, &w);
            cuenta.resize(std::min(t.width() - 40, 1000), std::min(t.height() - 60, 640));
            cuenta.show();
            guarda(cuenta, QStringLiteral("ve_comisiones") + sufijo);
            orv::PanResumenCuenta resumen(*almacen, estado.MascaraMoneda, reloj, *w.salidaInformes(), conCuenta, &w);
            resumen.show();
            guarda(resumen, QStringLiteral("resumen_cuenta") + sufijo);
            // La misma cobranza en cada tamaño: ésta se quita antes del próximo.
            if (cobro.recibo()) orv::BorraLineaCuenta(*almacen, *cobro.recibo());
        }
        {
            // Comisiones de la vendedora del ejemplo (con su liquidación de hace diez días) y la
            // liquidación que propone la diferencia; la tabla de premios y uno en edición; el diario
            // de puntos del cliente con tarjeta en el último mes y el cobro de un premio elegido.
            const qint64 vendedora = almacen->valor(QStringLiteral("SELECT MIN(idUsuario) FROM DetComisiones")).toLongLong();
            orv::PanComisiones comisiones(*almacen, estado, reloj, *w.salidaInformes(), vendedora, &w);
            comisiones.resize(std::min(t.width() - 40, 1000), std::min(t.height() - 60, 640));
            comisiones.show();
            guarda(comisiones, QStringLiteral("comisiones") + sufijo);
            const orv::TotalesComisiones tot =
                orv::TotalesComisionesVendedor(*almacen, vendedora, reloj.hoy().addDays(-30), reloj.hoy());
            orv::PanLiq liq(*almacen, reloj, orv::Formato(tot.diferencia(), QStringLiteral("0.00##")), &w);
            liq.findChild<QCheckBox*>(QStringLiteral("chkCaja"))->setChecked(true);
            liq.show();
            guarda(liq, QStringLiteral("liq_comisiones") + sufijo);
            orv::PanTablaPremiosVIP premios(*almacen, conf, estado, reloj, &w);
            premios.show();
            guarda(premios, QStringLiteral("tabla_premios_vip") + sufijo);
            const qint64 premio = almacen->valor(QStringLiteral("SELECT MIN(idTablaVIP) FROM TablaVIP")).toLongLong();
            orv::PanNueTablaVIP edicion(*almacen, conf, estado.MascaraMoneda, reloj, premio, &w);
            edicion.show();
            guarda(edicion, QStringLiteral("nue_tabla_vip") + sufijo);
            const qint64 conTarjeta =
                almacen->valor(QStringLiteral("SELECT MIN(idVendedor) FROM Vendedores WHERE LENGTH(NroClienteVIP) > 0")).toLongLong();
            orv::PanPuntajeVipCliente puntos(*almacen, estado, reloj, conTarjeta, &w);
            puntos.findChild<QDateEdit*>(QStringLiteral("dt1"))->setDate(reloj.hoy().addDays(-30));
            puntos.mostrar();
            puntos.resize(std::min(t.width() - 40, 1000), std::min(t.height() - 60, 600));
            puntos.show();
            guarda(puntos, QStringLiteral("puntaje_vip_cliente") + sufijo);
            orv::PanCobraPremio cobro(*almacen, reloj, estado.idUsuarioActual, conTarjeta, &w);
            cobro.premios()->setCurrentIndex(0);
            cobro.show();
            guarda(cobro, QStringLiteral("cobra_premio") + sufijo);
        }
        // Venta con un cliente elegido, normal y agrandada.
        w.botPrincipal(3);
        const QVariant cliente = almacen->valor(QStringLiteral("SELECT min(idVendedor) FROM Vendedores WHERE idVendedor > 1"));
        w.findChild<QLineEdit*>(QStringLiteral("Text8"))->setText(cliente.toString());
        w.panelVenta()->eligeCliente();
        w.findChild<QLineEdit*>(QStringLiteral("txSuPago"))->setText(QStringLiteral("50000"));
        guarda(w, QStringLiteral("principal_3_vender_con_cliente") + sufijo);
        w.command55();
        guarda(w, QStringLiteral("principal_3_vender_agrandado") + sufijo);
        w.command55();
        // Una línea imposible llegada por otro camino: el panel abre, la señala y se puede borrar.
        almacen->ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = 1e300 WHERE idTmpFac = (SELECT max(idTmpFac) FROM TmpFac)"));
        w.botPrincipal(0);
        w.botPrincipal(3);
        guarda(w, QStringLiteral("principal_3_vender_linea_imposible") + sufijo);
        almacen->ejecuta(QStringLiteral("UPDATE TmpFac SET Cantidad = 2 WHERE idTmpFac = (SELECT max(idTmpFac) FROM TmpFac)"));
        w.botPrincipal(3);
        // La grilla con el foco, como queda con F7.
        w.panelVenta()->grilla()->tabla()->setFocus();
        guarda(w, QStringLiteral("principal_3_vender_grilla_con_foco") + sufijo);
        // Con cliente predeterminado, la venta nueva empieza con él y el cursor en el código; un
        // código que no es de ningún artículo se avisa en el panel.
        orv::FijaClientePredeterminado(*almacen, conf, QStringLiteral("1"));
        w.panelVenta()->reseteaFactura();
        guarda(w, QStringLiteral("principal_3_vender_cliente_predeterminado") + sufijo);
        auto* codigo = w.findChild<QLineEdit*>(QStringLiteral("Text7"));
        codigo->setText(QStringLiteral("7790000000017"));
        QMetaObject::invokeMethod(codigo, "returnPressed");
        guarda(w, QStringLiteral("principal_3_vender_codigo_no_encontrado") + sufijo);
        orv::FijaClientePredeterminado(*almacen, conf, QString());
        almacen->ejecuta(QStringLiteral(
            "INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, Sn, PCRed) "
            "SELECT idArticulo, Codigo, Descripcion, 2, PrecioVenta, 2 * PrecioVenta, '', 1 FROM Articulos "
            "ORDER BY idArticulo LIMIT 12"));
        {
            orv::DatosFPago d;
            d.idTipoComprobante = 1;
            d.nombreCliente = QStringLiteral("Ana Núñez");
            d.cuit = QStringLiteral("27-12345678-0");
            d.idTipoIva = 1;
            d.posicionFormaPago = 0;
            orv::PanFPago fpago(*almacen, QStringLiteral("CUIT"), d, &w);
            fpago.show();
            guarda(fpago, QStringLiteral("fpago") + sufijo);
            orv::PanSelArt selArt(*almacen, conf, estado.MascaraMoneda, &w);
            selArt.show();
            guarda(selArt, QStringLiteral("sel_art") + sufijo);
            orv::PanCorrNum corrNum(*almacen, conf, &w);
            corrNum.show();
            guarda(corrNum, QStringLiteral("corr_num") + sufijo);
            orv::FijaClientePredeterminado(*almacen, conf, QStringLiteral("1"));
            orv::PanPreFact preFact(*almacen, conf, &w);
            preFact.show();
            guarda(preFact, QStringLiteral("pre_fact") + sufijo);
            orv::FijaClientePredeterminado(*almacen, conf, QString());
            orv::PanNueTipoComproba nuevoTipo(*almacen, conf, 1, &w);
            nuevoTipo.show();
            guarda(nuevoTipo, QStringLiteral("nue_tipo_comproba") + sufijo);
            {
                // El configurador del ticket con un diseño de mostrador: encabezado, artículos y totales.
                orv::DisenoTicket d;
                d.puerto = QStringLiteral("/dev/usb/lp0");
                d.lugares = QList<std::optional<QPointF>>(orv::ElementosTicket().size());
                const std::pair<int, QPointF> lugares[] = {{0, {18, 3}},  {1, {18, 9}},  {2, {22, 15}}, {5, {2, 26}},
                                                           {7, {50, 26}}, {6, {2, 32}},  {8, {2, 42}},  {9, {28, 110}},
                                                           {13, {28, 118}}, {14, {2, 128}}, {16, {28, 136}}, {17, {12, 150}}};
                for (const auto& [i, l] : lugares) d.lugares[i] = l;
                orv::GrabaDisenoTicket(conf, d);
                orv::panConfTkt tkt(conf, &w);
                tkt.show();
                guarda(tkt, QStringLiteral("conf_tkt") + sufijo);
                // Un ticket de ejemplo con ese diseño, dibujado desde los bytes que recibiría la impresora.
                const qint64 ticket = almacen->valor(QStringLiteral("SELECT MAX(c.idComprobante) FROM Comprobantes c INNER JOIN "
                                                                    "TiposDeComprobantes t ON t.idTipoComprobante = c.idTipoComprobante "
                                                                    "WHERE t.Tipo = 'TICKET'")).toLongLong();
                if (t == tamanios.first() && ticket > 0) {
                    const QByteArray bytes = orv::ArmaTicket(orv::LeeDatosTicket(*almacen, ticket), orv::LeeDisenoTicket(conf),
                                                             orv::LeePaginaCodigos(conf));
                    const QString ruta = QDir(salida).filePath(QStringLiteral("ticket_impreso.png"));
                    if (TicketEnImagen(bytes).save(ruta)) {
                        ++guardadas;
                        std::printf("%s\n", qPrintable(ruta));
                    }
                }
            }
            for (const auto& [ficha, id, nivel] :
                 {std::tuple{"articulo_nuevo", qint64(0), &estado}, std::tuple{"articulo_editar", conFoto, &estado},
                  std::tuple{"articulo_nuevo_sin_costos", qint64(0), &sinCostos},
                  std::tuple{"articulo_editar_sin_costos", conFoto, &sinCostos}}) {
                orv::PanArticulo articulo(*almacen, *nivel, conf, id, &w);
                articulo.show();
                guarda(articulo, QString::fromLatin1(ficha) + sufijo);
            }
            orv::PanConfFiscal fiscal(QStringLiteral("IMPRESORA FISCAL : HASAR O COMPAT. 615 - PL8F|PUERTO : 2"),
                                      QStringLiteral("49"), &w);
            fiscal.show();
            guarda(fiscal, QStringLiteral("conf_fiscal") + sufijo);
        }

        {
            // Informes: el catálogo libre, las pantallas que piden el sujeto y el visor en ventana.
            orv::PanPrintCrystal catalogo(*w.salidaInformes(), conf, &w);
            catalogo.show();
            guarda(catalogo, QStringLiteral("print_crystal") + sufijo);
            orv::PanMailto mailto(conf, &w);
            mailto.show();
            guarda(mailto, QStringLiteral("mailto") + sufijo);
            orv::PanRepSelArt selArtInf(QDate(2026, 11, 1), QDate(2026, 11, 30), &w);
            selArtInf.show();
            guarda(selArtInf, QStringLiteral("rep_sel_art") + sufijo);
            orv::PanRepSelVen selVen(*almacen, QDate(2026, 11, 1), QDate(2026, 11, 30), &w);
            selVen.show();
            guarda(selVen, QStringLiteral("rep_sel_ven") + sufijo);
            orv::PanSelCta selCta(*almacen, QDate(2026, 11, 1), QDate(2026, 11, 30), &w);
            selCta.show();
            guarda(selCta, QStringLiteral("sel_cta") + sufijo);
            orv::PanMensajeria mensajeria(*almacen, conf, reloj, &w);
            mensajeria.show();
            guarda(mensajeria, QStringLiteral("mensajeria") + sufijo);
            orv::PanConfInt confInt(conf, &w);
            confInt.show();
            guarda(confInt, QStringLiteral("conf_int") + sufijo);
            orv::PanPrinComprobantes prinComp(&w);
            prinComp.show();
            guarda(prinComp, QStringLiteral("prin_comprobantes") + sufijo);
            w.salidaInformes()->fijaDestino(orv::SalidaInformes::Ventana);
            w.salidaInformes()->emite(QStringLiteral("listadeprecios.rpt"),
                                      orv::SeleccionUsual(QStringLiteral("listadeprecios.rpt"), QDate(2026, 1, 1),
                                                          QDate(2026, 12, 31)));
            if (orv::VisorInforme* visor = w.salidaInformes()->ultimoVisor()) {
                visor->resize(t);
                guarda(*visor, QStringLiteral("visor_informe") + sufijo);
                delete visor;
            }
        }

        orv::PanNiveles niveles(*almacen, &w);
        niveles.show();
        guarda(niveles, QStringLiteral("niveles") + sufijo);
        orv::PanEdUsuario usuario(*almacen, 1, &w);
        usuario.show();
        guarda(usuario, QStringLiteral("usuario") + sufijo);
        {
            // Rubros y stock, con unos ajustes del primer artículo para ver el diario.
            const qint64 idArticulo = almacen->valor(QStringLiteral("SELECT min(idArticulo) FROM Articulos")).toLongLong();
            if (t == tamanios.first())
                for (const char* cantidad : {"24", "6", "1.5"})
                    orv::RegistraAjusteStock(*almacen,
                                             {idArticulo, orv::IdTipoMovimiento(*almacen, orv::kTipoCompra),
                                              QStringLiteral("R-0001-00004512"), QString::fromLatin1(cantidad), true},
                                             reloj.hoy());
            orv::PanRubros rubros(*almacen, &w);
            rubros.show();
            guarda(rubros, QStringLiteral("rubros") + sufijo);
            orv::PanEdRubros edRubros(
                *almacen, almacen->valor(QStringLiteral("SELECT min(idRubro) FROM Rubros")).toLongLong(), &w);
            edRubros.show();
            guarda(edRubros, QStringLiteral("ed_rubros") + sufijo);
            orv::panNueProve proveedor(
                *almacen, almacen->valor(QStringLiteral("SELECT min(idProveedor) FROM Proveedores")).toLongLong(),
                estado.ClaveImpositiva, &w);
            proveedor.show();
            guarda(proveedor, QStringLiteral("nue_prove") + sufijo);
            {
                // Una compra a medio ingresar, con líneas leídas por código, y una de ejemplo reabierta.
                const qint64 prove = almacen->valor(QStringLiteral("SELECT min(idProveedor) FROM Proveedores")).toLongLong();
                const QString razon =
                    almacen->valor(QStringLiteral("SELECT RazonSocial FROM Proveedores WHERE idProveedor = ?"), {prove}).toString();
                orv::panNueCompra compra(*almacen, estado, conf, reloj, prove, razon, std::nullopt, &w);
                QSqlQuery q = almacen->consulta(
                    QStringLiteral("SELECT Codigo FROM Articulos WHERE IdProveedor = ? ORDER BY idArticulo LIMIT 6 OFFSET 12"), {prove});
                int n = 0;
                while (q.next()) {
                    compra.findChild<QLineEdit*>(QStringLiteral("txtCodigo"))->setText(q.value(0).toString());
                    compra.buscaPorCodigo();
                    compra.findChild<QLineEdit*>(QStringLiteral("txtCant"))->setText(QString::number(12 * (1 + n++ % 3)));
                    compra.agrega();
                }
                compra.findChild<QLineEdit*>(QStringLiteral("txPorImp"))->setText(QStringLiteral("21"));
                compra.findChild<QLineEdit*>(QStringLiteral("txPtoVta"))->setText(QStringLiteral("0003"));
                compra.findChild<QLineEdit*>(QStringLiteral("txNroComproba"))->setText(QStringLiteral("00018844"));
                compra.resize(std::min(t.width() - 40, 1120), std::min(t.height() - 40, 760));
                compra.show();
                guarda(compra, QStringLiteral("nue_compra") + sufijo);
                compra.hide();
                orv::panNueCompra reabierta(*almacen, estado, conf, reloj, prove, razon,
                                            almacen->valor(QStringLiteral("SELECT min(idCompra) FROM Compras")).toLongLong(), &w);
                reabierta.resize(std::min(t.width() - 40, 1120), std::min(t.height() - 40, 760));
                reabierta.show();
                guarda(reabierta, QStringLiteral("nue_compra_reabierta") + sufijo);
                // El registro de compras del proveedor, su cuenta con un pago y el pago eligiendo documentos.
                const orv::ContextoCompras contexto{*almacen, estado, conf, reloj, *w.salidaInformes(), {}, {}};
                orv::panCompras registro(contexto, prove, &w);
                registro.resize(std::min(t.width() - 40, 1000), std::min(t.height() - 60, 580));
                registro.show();
                guarda(registro, QStringLiteral("compras") + sufijo);
                orv::panCtaProve cuenta(contexto, prove, &w);
                cuenta.resize(std::min(t.width() - 40, 920), std::min(t.height() - 60, 560));
                cuenta.show();
                guarda(cuenta, QStringLiteral("cta_prove") + sufijo);
                // El pago, a un proveedor que tiene su remito impago.
                orv::panIngrPagoProve pago(
                    contexto, almacen->valor(QStringLiteral("SELECT MIN(idProveedor) FROM Compras WHERE Cancelada = 0")).toLongLong(),
                    &w);
                if (auto* lista = pago.findChild<QListWidget*>(QStringLiteral("List1")); lista && lista->count() > 0)
                    lista->item(0)->setSelected(true);
                pago.findChild<QLineEdit*>(QStringLiteral("txTot"))->setText(QStringLiteral("15,000.00"));
                pago.show();
                guarda(pago, QStringLiteral("ingr_pago_prove") + sufijo);
            }
            orv::PanIngrStock ingrStock(*almacen, conf, reloj, idArticulo, &w);
            ingrStock.show();
            guarda(ingrStock, QStringLiteral("ingr_stock") + sufijo);
            orv::panBorrMovStock borrMov(*almacen, &w);
            borrMov.show();
            guarda(borrMov, QStringLiteral("borr_mov_stock") + sufijo);
            orv::panCambStock cambStock(*almacen, &w);
            cambStock.show();
            guarda(cambStock, QStringLiteral("camb_stock") + sufijo);
            orv::panCamPre precios(*almacen, estado, conf, &w);
            precios.resize(std::min(t.width() - 40, 1000), std::min(t.height() - 60, 640));
            if (auto* rubro = precios.findChild<QComboBox*>(QStringLiteral("Combo1")); rubro && rubro->count() > 1) {
                rubro->setCurrentIndex(1);
                precios.muestra();
            }
            precios.findChild<QLineEdit*>(QStringLiteral("Text3"))->setText(QStringLiteral("8.5"));
            precios.findChild<QLineEdit*>(QStringLiteral("Text4"))->setText(QStringLiteral("10"));
            precios.show();
            guarda(precios, QStringLiteral("cam_pre") + sufijo);
        }
        capturaImportacion(*almacen, conf, w, t, sufijo);
        if (t.width() >= 1024) {
            // Producción: las fórmulas, una corrida por registrar con sus alertas, los registros y el
            // editor de una fórmula.
            orv::PanProduccion produccion(*almacen, estado, reloj, *w.salidaInformes(), &w);
            produccion.show();
            guarda(produccion, QStringLiteral("produccion_formulas") + sufijo);
            produccion.solapas()->setCurrentIndex(1);
            auto* cbArt = produccion.findChild<QComboBox*>(QStringLiteral("cbArt"));
            cbArt->setCurrentIndex(cbArt->count() - 1);
            produccion.findChild<QLineEdit*>(QStringLiteral("txCantAProd"))->setText(QStringLiteral("30"));
            produccion.findChild<QLineEdit*>(QStringLiteral("txManoObra"))->setText(QStringLiteral("2500"));
            guarda(produccion, QStringLiteral("produccion_corrida") + sufijo);
            produccion.solapas()->setCurrentIndex(2);
            guarda(produccion, QStringLiteral("produccion_registros") + sufijo);
            orv::panFormula formula(*almacen, estado,
                                    almacen->valor(QStringLiteral("SELECT min(idArticuloFinal) FROM FormulaProduccion")).toLongLong(),
                                    &w);
            formula.show();
            guarda(formula, QStringLiteral("formula") + sufijo);

            // Matriz: las características y el generador con filas de a una y de todas las combinaciones.
            orv::panMatrices matrices(*almacen, &w);
            matrices.caracteristicas()->setCurrentRow(0);
            matrices.show();
            guarda(matrices, QStringLiteral("matrices") + sufijo);
            orv::panNueCaracMatriz nueCarac(*almacen, &w);
            nueCarac.show();
            guarda(nueCarac, QStringLiteral("nue_carac_matriz") + sufijo);
            orv::panGenMatriz generador(*almacen, conf, QStringLiteral("050041"), QStringLiteral("Guardapolvo"),
                                        QStringLiteral("5"), {}, &w);
            const auto elige = [&generador](int lista, std::initializer_list<int> filas) {
                for (int f : filas) generador.listas()[lista]->item(f)->setSelected(true);
            };
            elige(0, {2});
            elige(1, {0});
            generador.ingresar();
            elige(0, {0, 1});
            elige(1, {1, 2, 3});
            generador.todas();
            generador.show();
            guarda(generador, QStringLiteral("gen_matriz") + sufijo);
        }
        if (t.width() >= 1024) {
            // Etiquetas: el día con más compras de artículos marcados (en el comercio de ejemplo, el
            // remito de la fiambrería que llegó hoy), sus entradas, la hoja de ejemplo y, una vez,
            // la primera hoja impresa como la ve la impresora.
            const QDate dia = almacen->valor(QStringLiteral("SELECT Fecha FROM ConsultaMovStock WHERE idTipoMovimiento = 1 AND "
                                                            "Ingreso > 0 AND ImprimeCodigoBarra <> 0 GROUP BY Fecha "
                                                            "ORDER BY sum(Ingreso) DESC, Fecha DESC"))
                                  .toDate();
            orv::panEtiq etiq(*almacen, reloj, &w);
            etiq.fecha()->setDate(dia);
            etiq.show();
            guarda(etiq, QStringLiteral("etiq") + sufijo);
            orv::panCgoBarra cgoBarra(*almacen, dia, &w);
            cgoBarra.aImprimir()->item(0)->setSelected(true);
            cgoBarra.aImprimir()->item(1)->setSelected(true);
            cgoBarra.pasaElegidos(cgoBarra.aImprimir(), cgoBarra.disponibles());
            cgoBarra.findChild<QLineEdit*>(QStringLiteral("Text2"))->setText(QStringLiteral("4"));
            cgoBarra.show();
            guarda(cgoBarra, QStringLiteral("cgo_barra") + sufijo);
            const QString hoja = orv::NombresHojasEtiquetas(*almacen).value(0);
            orv::panConfEtiq conf(*almacen, hoja, &w);
            conf.show();
            guarda(conf, QStringLiteral("conf_etiq") + sufijo);
            if (t.width() == 1280) {
                QStringList codigos;
                for (int i = 0; i < cgoBarra.aImprimir()->count(); ++i) codigos << cgoBarra.aImprimir()->item(i)->text();
                const orv::TrabajoEtiquetas trabajo = orv::PreparaImpresionEtiquetas(*almacen, hoja, codigos, QStringLiteral("4"), true);
                constexpr double kPxPorMm = 6.0;
                QImage imagen(int(210 * kPxPorMm), int(297 * kPxPorMm), QImage::Format_RGB32);
                imagen.fill(Qt::white);
                QPainter p(&imagen);
                p.setRenderHint(QPainter::Antialiasing);
                p.scale(kPxPorMm, kPxPorMm);
                p.setPen(QPen(QColor(200, 200, 200), 0));
                for (const orv::LugarEtiqueta& l : orv::TrabajoDePrueba(trabajo.hoja).lugares)
                    p.drawRect(QRectF(l.origen, QSizeF(trabajo.hoja.ancho, trabajo.hoja.largo)));
                orv::DibujaPaginaEtiquetas(p, trabajo.hoja, trabajo.lugares, 0, trabajo.ean13);
                p.end();
                const QString ruta = QDir(salida).filePath(QStringLiteral("hoja_etiquetas.png"));
                if (imagen.save(ruta)) {
                    ++guardadas;
                    std::printf("%s\n", qPrintable(ruta));
                }
            }
        }
        {
            // La caja de un viernes (el día cerrado), un movimiento escrito a mano, los catálogos y el
            // cierre del sábado con su arqueo.
            const QDate viernes = reloj.hoy().addDays(-3), sabado = reloj.hoy().addDays(-2);
            w.botPrincipal(2);
            w.panelCaja()->fijaPeriodo(viernes, viernes);
            w.panelCaja()->filtra();
            guarda(w, QStringLiteral("principal_2_caja_un_dia") + sufijo);
            const qint64 manual =
                almacen->valor(QStringLiteral("SELECT max(idCaja) FROM Caja WHERE idComprobante IS NULL")).toLongLong();
            orv::PanCaja movimiento(*almacen, estado.idUsuarioActual, manual, reloj.hoy(), &w);
            movimiento.show();
            guarda(movimiento, QStringLiteral("pan_caja") + sufijo);
            orv::panPlanCtas plan(*almacen, &w);
            plan.show();
            guarda(plan, QStringLiteral("plan_ctas") + sufijo);
            orv::panFormasPago formas(*almacen, &w);
            formas.show();
            guarda(formas, QStringLiteral("formas_pago") + sufijo);
            orv::panEditFPago forma(
                *almacen, almacen->valor(QStringLiteral("SELECT min(idTipoFormaPago) FROM FormasDePago")).toLongLong(), &w);
            forma.show();
            guarda(forma, QStringLiteral("edit_fpago") + sufijo);
            // Lo contado: el efectivo con 12,50 de menos, lo demás justo.
            orv::panCorteCaja corte(*almacen, estado, reloj, &w);
            corte.fecha()->setDate(sabado);
            corte.calcula();
            QTableWidget* arqueo = corte.arqueo();
            for (int f = 0; f < arqueo->rowCount(); ++f) {
                const orv::Dinero esperado = orv::ImporteMostrado(arqueo->item(f, 1)->text());
                const bool efectivo = arqueo->item(f, 0)->text() == QLatin1String("EFVO");
                arqueo->item(f, 2)->setText((efectivo ? esperado - orv::Dinero(12, 5000) : esperado).aTexto().chopped(2));
            }
            corte.show();
            guarda(corte, QStringLiteral("corte_caja") + sufijo);
            if (t == tamanios.first()) {
                QPrinter hoja(QPrinter::HighResolution);
                hoja.setOutputFormat(QPrinter::PdfFormat);
                hoja.setOutputFileName(QDir(salida).filePath(QStringLiteral("corte_caja_hoja.pdf")));
                corte.imprimeEn(hoja);
                // Un día cerrado: el cierre apagado y lo que se contó al cerrarlo.
                corte.fecha()->setDate(viernes);
                QTimer::singleShot(0, [] {
                    if (auto* m = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) m->accept();
                });
                corte.calcula();
                guarda(corte, QStringLiteral("corte_caja_dia_cerrado") + sufijo);
            }
        }
        {
            // Configuración: "Datos Locales" en cada pestaña, la red, las zonas, las situaciones de
            // IVA y la ayuda, cada una sobre la ventana de ese tamaño.
            w.botPrincipal(6);
            orv::panRegion region(*almacen, conf, &w);
            region.show();
            const char* const pestanias[] = {"pais", "impositivo", "codificacion", "puntos", "balanza", "negocio"};
            for (int i = 0; i < region.pestanias()->count(); ++i) {
                region.pestanias()->setCurrentIndex(i);
                guardaConEncima(w, region, QStringLiteral("region_%1_%2").arg(i).arg(QString::fromLatin1(pestanias[i])) + sufijo);
            }
            region.hide();
            orv::PanConfRed red(conf, estado, &w);
            red.show();
            guardaConEncima(w, red, QStringLiteral("conf_red") + sufijo);
            red.hide();
            orv::panZonas zonas(*almacen, &w);
            zonas.show();
            guardaConEncima(w, zonas, QStringLiteral("zonas") + sufijo);
            zonas.pestanias()->setCurrentIndex(1);
            guardaConEncima(w, zonas, QStringLiteral("zonas_localidades") + sufijo);
            zonas.hide();
            orv::panSitIvas ivas(*almacen, &w);
            ivas.show();
            guardaConEncima(w, ivas, QStringLiteral("sit_ivas") + sufijo);
            orv::panEdSitIva iva(*almacen, 2, &ivas);
            iva.show();
            guardaConEncima(w, iva, QStringLiteral("ed_sit_iva") + sufijo);
            iva.hide();
            ivas.hide();
            // La ayuda abierta sobre el panel "Vender", en su tema.
            w.botPrincipal(3);
            orv::panHelp ayuda(orv::TemaDePantalla(orv::TemasAyuda(), {QStringLiteral("PanelPrincipal3")}), &w);
            ayuda.show();
            guardaConEncima(w, ayuda, QStringLiteral("ayuda_vender") + sufijo);
            ayuda.muestraTema(orv::TemaDePantalla(orv::TemasAyuda(), {QStringLiteral("panRegion")}));
            guardaConEncima(w, ayuda, QStringLiteral("ayuda_utilidades") + sufijo);
        }
        if (t.width() >= 1024) {
            // Mantenimiento: el respaldo antes y después de copiar, el selector de carpetas, la
            // lista de respaldos para restaurar y el explorador de tablas agrupado por rubro.
            const QString respaldos = QDir(datos.path()).filePath(QStringLiteral("Respaldos"));
            QDir().mkpath(respaldos);
            if (orv::RespaldosEnCarpeta(respaldos).isEmpty()) {
                orv::HaceRespaldo(*almacen, conf, respaldos, reloj.ahora().addDays(-7).addSecs(3600 * 9));
                orv::HaceRespaldo(*almacen, conf, respaldos, reloj.ahora().addDays(-1).addSecs(3600 * 8 + 125));
                orv::AnotaCarpetaRespaldos(conf, respaldos);
            }
            orv::PanBackup backup(*almacen, conf, reloj, &w);
            backup.show();
            guarda(backup, QStringLiteral("backup") + sufijo);
            {
                QEventLoop espera;
                QObject::connect(&backup, &orv::PanBackup::respaldoTerminado, &espera, &QEventLoop::quit);
                QTimer cajas;
                QObject::connect(&cajas, &QTimer::timeout, [] {
                    if (auto* m = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) m->accept();
                });
                cajas.start(20);
                backup.hacerBackup();
                if (backup.enCurso()) espera.exec();
            }
            guarda(backup, QStringLiteral("backup_hecho") + sufijo);
            orv::panSelPath selector(respaldos, &w);
            selector.show();
            guarda(selector, QStringLiteral("sel_path") + sufijo);
            orv::panRestaurar restaurar(*almacen, conf, reloj, &w);
            restaurar.show();
            guarda(restaurar, QStringLiteral("restaurar") + sufijo);
            orv::panTablas tablas(*almacen, &w);
            tablas.show();
            tablas.combo()->setCurrentIndex(0);
            tablas.grilla()->agrupaPor(QStringLiteral("Rubro"));
            guarda(tablas, QStringLiteral("tablas") + sufijo);
            tablas.combo()->setCurrentIndex(3);
            guarda(tablas, QStringLiteral("tablas_comprobantes") + sufijo);
        }
        w.hide();
    }
    // Informes del catálogo en PDF; make capturas los pasa a PNG con pdftoppm.
    for (const char* nombre : {"listacajasimple.rpt", "listadeprecios.rpt", "listadepreciosporcodigo.rpt", "faltante.rpt",
                               "inventario.rpt", "lista_tot_facturas_diario.rpt", "lista_facturas.rpt"}) {
        const QString n = QString::fromLatin1(nombre);
        try {
            const QString pdf = QDir(salida).filePath(QStringLiteral("informe_") + n.chopped(4) + QStringLiteral(".pdf"));
            orv::GuardaInforme(*almacen, orv::LeeDefinicion(orv::BuscaDefinicion(n, QString())),
                               orv::SeleccionUsual(n, QDate(2026, 1, 1), QDate(2026, 12, 31)), estado.MascaraMoneda,
                               reloj.ahora(), pdf);
            std::printf("%s\n", qPrintable(pdf));
        } catch (const orv::Aviso& e) {
            std::fprintf(stderr, "%s: %s\n", nombre, qPrintable(e.texto()));
        }
    }
    // El resumen de cuenta del cliente con más movimientos, de los dos últimos meses, con su saldo anterior.
    try {
        const qint64 id = almacen->valor(QStringLiteral("SELECT idVendedor FROM Comisiones GROUP BY idVendedor "
                                                        "ORDER BY count(*) DESC, idVendedor LIMIT 1")).toLongLong();
        const QDate desde(2026, 10, 1), hasta(2026, 11, 23);
        const QString pdf = QDir(salida).filePath(QStringLiteral("informe_resumencuenta.pdf"));
        orv::GuardaInforme(*almacen, orv::LeeDefinicion(orv::BuscaDefinicion(QStringLiteral("resumencuenta.rpt"), QString())),
                           orv::SeleccionResumenCuenta(id, orv::NombreCliente(*almacen, id), desde, hasta,
                                                       orv::SaldoClienteAntesDe(*almacen, id, desde), estado.MascaraMoneda),
                           estado.MascaraMoneda, reloj.ahora(), pdf);
        std::printf("%s\n", qPrintable(pdf));
    } catch (const orv::Aviso& e) {
        std::fprintf(stderr, "resumencuenta.rpt: %s\n", qPrintable(e.texto()));
    }
    // Una FACTURA A y una FACTURA B registradas desde el panel "Vender", que salen a PDF por la
    // salida de informes; make capturas las pasa a PNG.
    {
        conf.graba(orv::clave::miscelaneas, QStringLiteral("CoefIva"), QStringLiteral("21"));
        orv::PanPrincipal w(*almacen, estado, conf, reloj);
        w.fijaTerminacion([](int) {});
        w.resize(1280, 800);
        w.show();
        w.botPrincipal(3);
        orv::SalidaInformes* s = w.salidaInformes();
        s->fijaDestino(QStringLiteral("2 - A un archivo"), QStringLiteral("1"));
        // Responde "Sí" a la pregunta de registrar y "Aceptar" a cualquier aviso.
        QTimer respuestas;
        QObject::connect(&respuestas, &QTimer::timeout, [] {
            for (QWidget* v : QApplication::topLevelWidgets())
                if (auto* m = qobject_cast<QMessageBox*>(v); m && m->isVisible()) {
                    std::fprintf(stderr, "aviso: %s\n", qPrintable(m->text()));
                    for (QAbstractButton* b : m->buttons())
                        if (b->text() == QStringLiteral("Sí") || b->text() == QStringLiteral("Aceptar")) b->click();
                }
        });
        respuestas.start(20);
        struct Venta {
            const char* tipo;
            const char* cliente; // por nombre
            const char* archivo;
        };
        for (const Venta& v : {Venta{"FACTURA A", "Oscar Bianchi", "comprobante_factura_a.pdf"},
                               Venta{"FACTURA B", "Ana", "comprobante_factura_b.pdf"},
                               Venta{"NOTA DE CREDITO B", "Ana", "comprobante_nota_credito_b.pdf"}}) {
            const QString pdf = QDir(salida).filePath(QString::fromLatin1(v.archivo));
            s->eligeArchivo = [pdf](const QString&) { return pdf; };
            const QVariant tipo = almacen->valor(QStringLiteral("SELECT idTipoComprobante FROM TiposDeComprobantes WHERE Tipo = ?"),
                                                 {QString::fromLatin1(v.tipo)});
            auto* combo = w.findChild<QComboBox*>(QStringLiteral("cboSelTipoCo"));
            combo->setCurrentIndex(combo->findData(tipo));
            w.panelVenta()->eligeTipo();
            if (almacen->valor(QStringLiteral("SELECT count(*) FROM TmpFac WHERE PCRed = 1")).toInt() == 0)
                almacen->ejecuta(QStringLiteral(
                    "INSERT INTO TmpFac (idArticulo, Codigo, Descripcion, Cantidad, Unitario, SubTotal, Sn, PCRed) "
                    "SELECT idArticulo, Codigo, Descripcion, 1, PrecioVenta, PrecioVenta, '', 1 FROM Articulos "
                    "ORDER BY idArticulo DESC LIMIT 7"));
            w.panelVenta()->entra();
            const QVariant cliente = almacen->valor(QStringLiteral("SELECT min(idVendedor) FROM Vendedores WHERE Nombre LIKE ?"),
                                                    {QString::fromUtf8(v.cliente) + QLatin1Char('%')});
            w.findChild<QLineEdit*>(QStringLiteral("Text8"))->setText(cliente.toString());
            w.panelVenta()->eligeCliente();
            w.panelVenta()->totales();
            w.panelVenta()->registrar();
            std::printf("%s\n", qPrintable(pdf));
        }
        respuestas.stop();
        // La caja del día con esos comprobantes, como la imprime el cajero al cerrar.
        try {
            const QString pdf = QDir(salida).filePath(QStringLiteral("informe_caja_del_dia.pdf"));
            orv::GuardaInforme(*almacen, orv::LeeDefinicion(orv::BuscaDefinicion(QStringLiteral("listacajasimple.rpt"), QString())),
                               orv::SeleccionCajaDia(reloj.hoy()), estado.MascaraMoneda, reloj.ahora(), pdf);
            std::printf("%s\n", qPrintable(pdf));
        } catch (const orv::Aviso& e) {
            std::fprintf(stderr, "caja del día: %s\n", qPrintable(e.texto()));
        }
        // Las pantallas que miran hacia atrás, con esos dos comprobantes ya registrados.
        const qint64 ultimo = almacen->valor(QStringLiteral("SELECT max(idComprobante) FROM Comprobantes")).toLongLong();
        orv::PanBorraFactura borra(*almacen, reloj.hoy(), &w);
        borra.show();
        guarda(borra, QStringLiteral("borra_factura"));
        orv::PanReImpresion reimpresion(*almacen, *s, reloj.hoy(), &w);
        reimpresion.show();
        guarda(reimpresion, QStringLiteral("reimpresion"));
        orv::PanDetComprobante detalle(*almacen, ultimo, &w);
        detalle.show();
        guarda(detalle, QStringLiteral("det_comprobante"));
        // El comprobante registrado "A una ventana", del tamaño con que abre en esta pantalla.
        s->fijaDestino(orv::SalidaInformes::Ventana);
        s->imprimeComprobante(almacen->valor(QStringLiteral("SELECT NombrePlantilla FROM TiposDeComprobantes "
                                                            "WHERE Tipo = 'FACTURA B'")).toString(),
                              ultimo);
        if (orv::VisorInforme* visor = s->ultimoVisor()) {
            guarda(*visor, QStringLiteral("visor_comprobante"));
            delete visor;
        }
    }
    {
        // El histórico del cliente con más comprobantes en los últimos tres meses, y la situación del
        // último mes por día con sus gráficos; la situación en PDF (make capturas lo dibuja a PNG) y sus
        // gráficos en PNG.
        orv::SalidaInformes salidaHistorico(*almacen, conf, estado, reloj, nullptr);
        const qint64 conDocumentos = almacen->valor(QStringLiteral("SELECT idVendedor FROM Comprobantes WHERE idVendedor > 1 "
                                                                   "GROUP BY idVendedor ORDER BY count(*) DESC, idVendedor LIMIT 1"))
                                         .toLongLong();
        for (const QSize& t : {QSize(1280, 800), QSize(1024, 768)}) {
            const QString sufijo = QStringLiteral("_%1x%2").arg(t.width()).arg(t.height());
            orv::PanHistorico historico(*almacen, estado, reloj, salidaHistorico, conDocumentos);
            historico.filtro().desde->setDate(reloj.hoy().addMonths(-3));
            historico.mostrar();
            historico.resize(std::min(t.width() - 40, 1100), std::min(t.height() - 60, 560));
            historico.show();
            guarda(historico, QStringLiteral("historico_cliente") + sufijo);
            orv::PanSituacion situacion(*almacen, estado, reloj.hoy().addDays(-30), reloj.hoy());
            situacion.resize(t.width() - 24, t.height() - 40);
            situacion.show();
            QApplication::processEvents();
            guarda(situacion, QStringLiteral("situacion") + sufijo);
            if (t.width() != 1280) continue;
            situacion.agrupacion()->setCurrentText(QStringLiteral("Mensual"));
            guarda(situacion, QStringLiteral("situacion_mensual") + sufijo);
            situacion.agrupacion()->setCurrentText(QStringLiteral("Diario"));
            const QString pdf = QDir(salida).filePath(QStringLiteral("situacion.pdf"));
            QPrinter impresora(QPrinter::HighResolution);
            impresora.setOutputFormat(QPrinter::PdfFormat);
            impresora.setPageOrientation(QPageLayout::Landscape);
            impresora.setOutputFileName(pdf);
            situacion.imprimeEn(impresora);
            std::printf("%s\n", qPrintable(pdf));
            for (const QString& png : situacion.guardaGraficos(salida)) std::printf("%s\n", qPrintable(png));
        }
    }
    std::printf("%d capturas en %s\n", guardadas, qPrintable(salida));
    return guardadas > 0 ? 0 : 1;
}
