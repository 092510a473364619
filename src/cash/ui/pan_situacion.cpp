#include "cash/ui/pan_situacion.h"

#include "store/aviso.h"
#include "store/formato.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QComboBox>
#include <QCoreApplication>
#include <QDateEdit>
#include <QDir>
#include <QFileDialog>
#include <QGraphicsLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHorizontalBarSeries>
#include <QLabel>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>
#include <QValueAxis>
#include <cmath>

namespace orv {

namespace {

// Los rubros que el gráfico nombra uno por uno; el resto va junto en "Otros rubros".
constexpr int kRubrosNombrados = 12;
// Con más períodos que éstos, las leyendas del eje van de costado.
constexpr int kPeriodosDerechos = 12;

const QColor kColorIngresos(0x2e, 0x7d, 0x32);
const QColor kColorGastos(0xc6, 0x28, 0x28);
const QColor kColorRubros(0x15, 0x65, 0xc0);

QLabel* cifra(const char* nombre, QWidget* padre) {
    auto* l = new QLabel(QStringLiteral("0"), padre);
    l->setObjectName(QString::fromLatin1(nombre));
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QFont f = l->font();
    f.setPointSizeF(f.pointSizeF() * 1.5);
    f.setBold(true);
    l->setFont(f);
    return l;
}

QGroupBox* recuadro(const QString& titulo, QLabel* valor, QWidget* padre) {
    auto* g = new QGroupBox(titulo, padre);
    auto* v = new QVBoxLayout(g);
    v->addWidget(valor);
    return g;
}

QChartView* vistaGrafico(const char* nombre, QWidget* padre) {
    auto* v = new QChartView(padre);
    v->setObjectName(QString::fromLatin1(nombre));
    v->setRenderHint(QPainter::Antialiasing);
    v->setMinimumSize(420, 220);
    return v;
}

// Un gráfico nuevo para la vista; el anterior se borra.
QChart* graficoNuevo(QChartView* vista, const QString& titulo) {
    auto* g = new QChart;
    g->setTitle(titulo);
    g->setAnimationOptions(QChart::NoAnimation);
    g->setMargins(QMargins(4, 4, 4, 4));
    QChart* viejo = vista->chart();
    vista->setChart(g);
    delete viejo;
    return g;
}

// El eje de importes de un gráfico, de cero (o del menor negativo) al mayor, con números enteros.
QValueAxis* ejeImportes(double menor, double mayor) {
    auto* eje = new QValueAxis;
    eje->setRange(std::min(0.0, menor), mayor > 0 ? mayor * 1.08 : 1.0);
    eje->setLabelFormat(QStringLiteral("%.0f"));
    eje->applyNiceNumbers();
    return eje;
}

// El gráfico dibujado de nuevo en el rectángulo, del tamaño que sea: la escena se dibuja con
// líneas y letras, no como la imagen que se ve en pantalla.
// Un gráfico recién armado acomoda sus ejes y leyendas cuando se procesa su pedido de
// disposición: se procesa antes, para no dibujarlo a medio armar.
void dibujaGrafico(QPainter& p, QChartView& vista, const QRectF& destino) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    if (QGraphicsLayout* capa = vista.chart()->layout()) capa->activate();
    p.fillRect(destino, Qt::white);
    p.setRenderHint(QPainter::Antialiasing);
    vista.scene()->render(&p, destino, vista.sceneRect(), Qt::IgnoreAspectRatio);
}

} // namespace

// "Deuda de Clientes" y "Deuda con proveedores" como dos barras de largo proporcional, la mayor de
// punta a punta de la base.
class BarrasDeuda : public QWidget {
public:
    explicit BarrasDeuda(QWidget* padre) : QWidget(padre) {
        setObjectName(QStringLiteral("shBase"));
        setMinimumHeight(54);
    }
    void fija(Dinero clientes, Dinero proveedores) {
        clientes_ = std::fabs(clientes.aDouble());
        proveedores_ = std::fabs(proveedores.aDouble());
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.fillRect(rect(), palette().base());
        p.setPen(palette().mid().color());
        p.drawRect(rect().adjusted(0, 0, -1, -1));
        const double mayor = std::max(clientes_, proveedores_);
        const int ancho = width() - 12;
        const int alto = (height() - 18) / 2;
        const std::pair<double, QColor> barras[] = {{clientes_, kColorIngresos}, {proveedores_, kColorGastos}};
        int y = 6;
        for (const auto& [valor, color] : barras) {
            const int largo = mayor > 0 ? int(std::lround(ancho * valor / mayor)) : 0;
            p.fillRect(QRect(6, y, largo, alto), color);
            y += alto + 6;
        }
    }

private:
    double clientes_ = 0;
    double proveedores_ = 0;
};

PanSituacion::PanSituacion(Almacen& almacen, const EstadoAplicacion& estado, const QDate& desde, const QDate& hasta,
                           QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado) {
    setObjectName(QStringLiteral("panSituacion"));
    setWindowTitle(QStringLiteral("Situación de la empresa"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(14, 12, 14, 12);

    auto* fila = new QHBoxLayout;
    cboGroup_ = new QComboBox(this);
    cboGroup_->setObjectName(QStringLiteral("cboGroup"));
    cboGroup_->addItems(TextosAgrupacion());
    desde_ = CampoFecha(QStringLiteral("DTPicker1"), this);
    hasta_ = CampoFecha(QStringLiteral("DTPicker2"), this);
    desde_->setDate(desde);
    hasta_->setDate(hasta);
    fila->addWidget(new QLabel(QStringLiteral("Agrupar :"), this));
    fila->addWidget(cboGroup_);
    fila->addSpacing(12);
    fila->addWidget(new QLabel(QStringLiteral("Rango :"), this));
    fila->addWidget(desde_);
    fila->addWidget(hasta_);
    armaBotones(fila);
    capa->addLayout(fila);
    capa->addWidget(armaHoja(), 1);

    connect(cboGroup_, &QComboBox::currentIndexChanged, this, &PanSituacion::dibuja);
    resize(1000, 700);
    CentrarVentana(this);
    dibuja();
}

void PanSituacion::armaBotones(QHBoxLayout* fila) {
    auto* actualizar = BotonEnFila(fila, "Command1", QStringLiteral("Actualizar"), this);
    actualizar->setDefault(true);
    connect(actualizar, &QPushButton::clicked, this, &PanSituacion::dibuja);
    fila->addStretch(1);
    connect(BotonEnFila(fila, "cmdImprimir", QStringLiteral("Imprimir..."), this), &QPushButton::clicked, this,
            &PanSituacion::imprimir);
    connect(BotonEnFila(fila, "cmdPdf", QStringLiteral("Guardar PDF..."), this), &QPushButton::clicked, this,
            &PanSituacion::guardaPdf);
    connect(BotonEnFila(fila, "cmdGraficos", QStringLiteral("Gráficos a PNG..."), this), &QPushButton::clicked, this,
            &PanSituacion::exportaGraficos);
    connect(BotonEnFila(fila, "cmdSalir", QStringLiteral("Salir"), this, 80), &QPushButton::clicked, this, &QDialog::accept);
}

// La hoja que se ve y se imprime: el título con el período, las cifras a la izquierda y los dos
// gráficos a la derecha.
QWidget* PanSituacion::armaHoja() {
    hoja_ = new QWidget(this);
    hoja_->setObjectName(QStringLiteral("hojaSituacion"));
    hoja_->setAutoFillBackground(true);
    auto* grilla = new QGridLayout(hoja_);
    grilla->setContentsMargins(10, 8, 10, 8);
    titulo_ = new QLabel(hoja_);
    titulo_->setObjectName(QStringLiteral("lblTitulo"));
    QFont f = titulo_->font();
    f.setPointSizeF(f.pointSizeF() * 1.3);
    f.setBold(true);
    titulo_->setFont(f);
    grilla->addWidget(titulo_, 0, 0, 1, 2);
    grilla->addWidget(armaCifras(), 1, 0, 2, 1);
    movimientos_ = vistaGrafico("MSChart1", hoja_);
    rubros_ = vistaGrafico("MSChart3", hoja_);
    grilla->addWidget(movimientos_, 1, 1);
    grilla->addWidget(rubros_, 2, 1);
    grilla->setColumnStretch(1, 1);
    grilla->setRowStretch(1, 1);
    grilla->setRowStretch(2, 1);
    return hoja_;
}

QWidget* PanSituacion::armaCifras() {
    auto* columna = new QWidget(hoja_);
    columna->setFixedWidth(290);
    auto* v = new QVBoxLayout(columna);
    v->setContentsMargins(0, 0, 0, 0);
    lblDisCaja_ = cifra("lblDisCaja", columna);
    lblUtilBruta_ = cifra("lblUtilBruta", columna);
    v->addWidget(recuadro(QStringLiteral(" Disponibilidades actuales "), lblDisCaja_, columna));
    v->addWidget(recuadro(QStringLiteral(" Valorización bruta de la mercadería "), lblUtilBruta_, columna));

    auto* deudas = new QGroupBox(QStringLiteral(" Deudas "), columna);
    auto* d = new QGridLayout(deudas);
    lblDeuCli_ = new QLabel(deudas);
    lblDeuCli_->setObjectName(QStringLiteral("lblDeuCli"));
    lblDeuPro_ = new QLabel(deudas);
    lblDeuPro_->setObjectName(QStringLiteral("lblDeuPro"));
    shBase_ = new BarrasDeuda(deudas);
    d->addWidget(lblDeuCli_, 0, 0);
    d->addWidget(lblDeuPro_, 1, 0);
    d->addWidget(shBase_, 2, 0);
    v->addWidget(deudas);
    v->addStretch(1);
    return columna;
}

void PanSituacion::dibuja() {
    const QDate desde = desde_->date();
    const QDate hasta = hasta_->date();
    if (!Intenta(this, [&] { situacion_ = LeeSituacion(almacen_, AgrupacionDeTexto(cboGroup_->currentText()), desde, hasta); }))
        situacion_ = {};
    const QString& m = estado_.MascaraMoneda;
    titulo_->setText(QStringLiteral("Situación de la empresa del ") + FechaTexto(desde) + QStringLiteral(" al ") +
                     FechaTexto(hasta));
    lblDisCaja_->setText(FormatoMoneda(situacion_.caja, m));
    lblUtilBruta_->setText(FormatoMoneda(situacion_.mercaderia, m));
    lblDeuCli_->setText(QStringLiteral("Deuda de Clientes : ") + FormatoMoneda(situacion_.deudaClientes, m));
    lblDeuPro_->setText(QStringLiteral("Deuda con proveedores : ") + FormatoMoneda(situacion_.deudaProveedores, m));
    shBase_->fija(situacion_.deudaClientes, situacion_.deudaProveedores);
    dibujaMovimientos();
    dibujaRubros();
}

// Ingresos contra gastos, un par de barras por día, mes o año.
void PanSituacion::dibujaMovimientos() {
    QChart* g = graficoNuevo(movimientos_, QStringLiteral("Ingresos y gastos (") + cboGroup_->currentText() + u')');
    auto* ingresos = new QBarSet(QStringLiteral("Volúmenes de Ingresos"));
    auto* gastos = new QBarSet(QStringLiteral("Volúmenes de Gastos"));
    ingresos->setColor(kColorIngresos);
    gastos->setColor(kColorGastos);
    QStringList periodos;
    double menor = 0, mayor = 0;
    for (const IngresosDelGrupo& p : situacion_.movimientos) {
        periodos << p.periodo;
        *ingresos << p.ingresos.aDouble();
        *gastos << p.gastos.aDouble();
        menor = std::min({menor, p.ingresos.aDouble(), p.gastos.aDouble()});
        mayor = std::max({mayor, p.ingresos.aDouble(), p.gastos.aDouble()});
    }
    auto* serie = new QBarSeries;
    serie->append(ingresos);
    serie->append(gastos);
    g->addSeries(serie);
    auto* ejeX = new QBarCategoryAxis;
    ejeX->append(periodos);
    if (periodos.size() > kPeriodosDerechos) ejeX->setLabelsAngle(-90);
    g->addAxis(ejeX, Qt::AlignBottom);
    serie->attachAxis(ejeX);
    QValueAxis* ejeY = ejeImportes(menor, mayor);
    g->addAxis(ejeY, Qt::AlignLeft);
    serie->attachAxis(ejeY);
    g->legend()->setAlignment(Qt::AlignBottom);
}

// La venta de cada rubro, de la mayor a la menor; después de los primeros, el resto junto.
void PanSituacion::dibujaRubros() {
    QChart* g = graficoNuevo(rubros_, QStringLiteral("Venta por Rubro"));
    QList<VentaDelRubro> filas = situacion_.rubros.mid(0, kRubrosNombrados);
    if (situacion_.rubros.size() > kRubrosNombrados) {
        VentaDelRubro otros{QStringLiteral("Otros rubros"), Dinero()};
        for (const VentaDelRubro& r : situacion_.rubros.mid(kRubrosNombrados)) otros.importe += r.importe;
        filas << otros;
    }
    auto* set = new QBarSet(QStringLiteral("Venta por Rubro"));
    set->setColor(kColorRubros);
    QStringList nombres;
    double menor = 0, mayor = 0;
    // El eje vertical dibuja la primera categoría abajo: se cargan al revés, la mayor arriba.
    for (auto r = filas.crbegin(); r != filas.crend(); ++r) {
        nombres << (r->rubro.isEmpty() ? QStringLiteral("(sin nombre)") : r->rubro);
        *set << r->importe.aDouble();
        menor = std::min(menor, r->importe.aDouble());
        mayor = std::max(mayor, r->importe.aDouble());
    }
    auto* serie = new QHorizontalBarSeries;
    serie->append(set);
    g->addSeries(serie);
    auto* ejeY = new QBarCategoryAxis;
    ejeY->append(nombres);
    g->addAxis(ejeY, Qt::AlignLeft);
    serie->attachAxis(ejeY);
    QValueAxis* ejeX = ejeImportes(menor, mayor);
    g->addAxis(ejeX, Qt::AlignBottom);
    serie->attachAxis(ejeX);
    g->legend()->hide();
}

// La hoja se dibuja primero en una imagen al triple de su tamaño en pantalla (unos 270 puntos por
// pulgada en una hoja apaisada) y la imagen va a la página: dibujada directo sobre la impresora, cada
// cuadro y cada gráfico se convertiría en una imagen del tamaño de la resolución de la impresora.
void PanSituacion::imprimeEn(QPrinter& impresora) {
    constexpr int kAumento = 3;
    QImage imagen(hoja_->size() * kAumento, QImage::Format_ARGB32);
    imagen.setDevicePixelRatio(kAumento);
    imagen.fill(Qt::white);
    {
        QPainter p(&imagen);
        p.setRenderHint(QPainter::Antialiasing);
        hoja_->render(&p, QPoint(), QRegion(), QWidget::DrawChildren);
        for (QChartView* vista : {movimientos_, rubros_}) dibujaGrafico(p, *vista, QRectF(vista->geometry()));
    }
    QPainter p(&impresora);
    const QRectF pagina = impresora.pageLayout().paintRectPixels(impresora.resolution());
    const QSizeF tam = QSizeF(hoja_->size()).scaled(pagina.size(), Qt::KeepAspectRatio);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.drawImage(QRectF(QPointF(0, 0), tam), imagen);
}

QStringList PanSituacion::guardaGraficos(const QString& carpeta) {
    const std::pair<QChartView*, const char*> graficos[] = {{movimientos_, "ingresos_y_gastos.png"},
                                                            {rubros_, "venta_por_rubro.png"}};
    QStringList escritos;
    for (const auto& [vista, nombre] : graficos) {
        // El gráfico se vuelve a dibujar al doble de su tamaño en pantalla: las letras quedan nítidas.
        QImage imagen(vista->size() * 2, QImage::Format_ARGB32);
        QPainter p(&imagen);
        dibujaGrafico(p, *vista, QRectF(imagen.rect()));
        p.end();
        const QString archivo = QDir(carpeta).filePath(QString::fromLatin1(nombre));
        if (!imagen.save(archivo, "PNG")) throw Aviso(QStringLiteral("No se pudo guardar ") + archivo);
        escritos << archivo;
    }
    return escritos;
}

void PanSituacion::imprimir() {
    QPrinter impresora(QPrinter::HighResolution);
    impresora.setPageOrientation(QPageLayout::Landscape);
    QPrintDialog dialogo(&impresora, this);
    if (dialogo.exec() != QDialog::Accepted) return;
    imprimeEn(impresora);
}

void PanSituacion::guardaPdf() {
    const QString inicial = QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
                                .filePath(QStringLiteral("situacion_") + hasta_->date().toString(Qt::ISODate) + QStringLiteral(".pdf"));
    const QString archivo = QFileDialog::getSaveFileName(this, QStringLiteral("Guardar la situación en PDF"), inicial,
                                                         QStringLiteral("Documento PDF (*.pdf)"));
    if (archivo.isEmpty()) return;
    QPrinter impresora(QPrinter::HighResolution);
    impresora.setOutputFormat(QPrinter::PdfFormat);
    impresora.setPageOrientation(QPageLayout::Landscape);
    impresora.setOutputFileName(archivo);
    imprimeEn(impresora);
}

void PanSituacion::exportaGraficos() {
    const QString carpeta = QFileDialog::getExistingDirectory(
        this, QStringLiteral("Carpeta para los gráficos"), QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
    if (carpeta.isEmpty()) return;
    QStringList escritos;
    if (Intenta(this, [&] { escritos = guardaGraficos(carpeta); }))
        Mensaje(QStringLiteral("Gráficos guardados:\n") + escritos.join(u'\n'), QStringLiteral("Situación de la empresa"),
                Icono::Informacion, this);
}

} // namespace orv
