#include "articles/ui/pan_conf_etiq.h"

#include "articles/ui/imprime_etiquetas.h"
#include "store/entrada.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPrinter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace orv {

namespace {

// Píxeles por milímetro de la hoja dibujada.
constexpr double kEscalaVista = 2.4;

// Una hoja común de 3 × 7 etiquetas de 63.5 × 38.1 mm en A4, para empezar una definición nueva.
const HojaEtiquetas kHojaInicial{QString(), 3, 7, 7.2, 15.15, 2.5, 0, 63.5, 38.1, 24};

QString numero(double v) { return QString::number(v, 'g', 10); }

} // namespace

VistaHoja::VistaHoja(QSizeF papelMm, QWidget* padre) : QWidget(padre), papel_(papelMm) {
    setFixedSize(int(papel_.width() * kEscalaVista) + 2, int(papel_.height() * kEscalaVista) + 2);
}

void VistaHoja::fijaHoja(const std::optional<HojaEtiquetas>& hoja) {
    hoja_ = hoja;
    update();
}

void VistaHoja::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(kEscalaVista, kEscalaVista);
    p.setPen(QPen(Qt::darkGray, 0));
    p.setBrush(Qt::white);
    p.drawRect(QRectF(QPointF(0, 0), papel_));
    if (!hoja_) return;
    const TrabajoEtiquetas prueba = TrabajoDePrueba(*hoja_);
    p.setPen(QPen(QColor(150, 170, 210), 0));
    p.setBrush(Qt::NoBrush);
    for (const LugarEtiqueta& l : prueba.lugares) p.drawRect(QRectF(l.origen, QSizeF(hoja_->ancho, hoja_->largo)));
    DibujaPaginaEtiquetas(p, prueba.hoja, prueba.lugares, 0, false);
}

panConfEtiq::panConfEtiq(Almacen& almacen, const QString& nombre, QWidget* padre) : QDialog(padre), almacen_(almacen) {
    setObjectName(QStringLiteral("panConfEtiq"));
    setWindowTitle(QStringLiteral("Configurar etiquetas"));
    setModal(true);
    // El papel de la impresora predeterminada, en mm.
    const QSizeF papel = QPrinter().pageLayout().fullRect(QPageLayout::Millimeter).size();
    auto* capa = new QHBoxLayout(this);
    auto* izquierda = new QVBoxLayout;
    izquierda->addLayout(armaCampos());
    izquierda->addStretch(1);
    auto* botones = new QHBoxLayout;
    connect(BotonEnFila(botones, "Command2", QStringLiteral("&Imprimir Prueba"), this, 130), &QPushButton::clicked, this,
            &panConfEtiq::imprimePrueba);
    connect(BotonEnFila(botones, "Command1", QStringLiteral("&Guardar"), this), &QPushButton::clicked, this, &panConfEtiq::guardar);
    connect(BotonEnFila(botones, "Command3", QStringLiteral("&Salir"), this), &QPushButton::clicked, this, &QDialog::reject);
    izquierda->addLayout(botones);
    capa->addLayout(izquierda);

    auto* derecha = new QVBoxLayout;
    label10_ = new QLabel(QStringLiteral("Hoja : Ancho : %1 mm. , Largo : %2 mm.").arg(numero(papel.width()), numero(papel.height())),
                          this);
    label10_->setObjectName(QStringLiteral("Label10"));
    derecha->addWidget(label10_);
    hoja_ = new VistaHoja(papel, this);
    hoja_->setObjectName(QStringLiteral("hoja"));
    desliza_ = new QScrollArea(this);
    desliza_->setWidget(hoja_);
    desliza_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    desliza_->horizontalScrollBar()->setObjectName(QStringLiteral("HScroll1"));
    desliza_->verticalScrollBar()->setObjectName(QStringLiteral("VScroll1"));
    derecha->addWidget(desliza_, 1);
    capa->addLayout(derecha, 1);

    std::optional<HojaEtiquetas> guardadaAntes;
    if (!nombre.isEmpty()) Intenta(this, [&] { guardadaAntes = LeeHojaEtiquetas(almacen_, nombre); });
    carga(guardadaAntes.value_or(kHojaInicial));
    resize(980, 700);
    CentrarVentana(this);
}

// Los campos de la definición, con las medidas en mm.
QLayout* panConfEtiq::armaCampos() {
    auto* capa = new QVBoxLayout;
    for (int n = 1; n <= 10; ++n) {
        auto* t = new QLineEdit(this);
        t->setObjectName(QStringLiteral("Text%1").arg(n));
        if (n != 7) {
            t->setAlignment(Qt::AlignRight);
            t->setMaximumWidth(90);
            connect(t, &QLineEdit::editingFinished, this, [this, n] { dejaCampo(n); });
        }
        campos_[size_t(n - 1)] = t;
    }
    auto* grilla = new QFormLayout;
    grilla->addRow(QStringLiteral("Nº de etiquetas a lo ancho :"), campo(1));
    grilla->addRow(QStringLiteral("Nº de etiquetas a lo largo :"), campo(2));
    grilla->addRow(QStringLiteral("Margen Izquierdo :"), campo(3));
    grilla->addRow(QStringLiteral("Margen Superior :"), campo(5));
    grilla->addRow(QStringLiteral("Entre columnas :"), campo(4));
    grilla->addRow(QStringLiteral("Entre filas :"), campo(6));
    capa->addLayout(grilla);
    auto* tamanio = new QGroupBox(QStringLiteral("Tamaño de la etiqueta :"), this);
    auto* ft = new QFormLayout(tamanio);
    ft->addRow(QStringLiteral("Ancho :"), campo(8));
    ft->addRow(QStringLiteral("Largo :"), campo(9));
    capa->addWidget(tamanio);
    auto* resto = new QFormLayout;
    resto->addRow(QStringLiteral("Tamaño Fuente Texto :"), campo(10));
    resto->addRow(QStringLiteral("Guardar configuración :"), campo(7));
    capa->addLayout(resto);
    auto* nota = new QLabel(QStringLiteral("Las medidas van en milímetros; el tamaño de fuente, en puntos."), this);
    nota->setWordWrap(true);
    capa->addWidget(nota);
    return capa;
}

CamposHoja panConfEtiq::leeCampos() const {
    const auto t = [this](int n) { return campo(n)->text().trimmed(); };
    return {campo(7)->text(), t(1), t(2), t(3), t(5), t(4), t(6), t(8), t(9), t(10)};
}

void panConfEtiq::carga(const HojaEtiquetas& h) {
    campo(7)->setText(h.nombre);
    const std::pair<int, double> valores[] = {{1, h.porAncho},  {2, h.porLargo}, {3, h.margenIzq}, {5, h.margenSup}, {4, h.distColum},
                                              {6, h.distFilas}, {8, h.ancho},    {9, h.largo},     {10, h.tamanoFuente}};
    for (const auto& [n, v] : valores) campo(n)->setText(numero(v));
    redibuja();
}

void panConfEtiq::redibuja() {
    // Una definición que todavía no se lee (un campo en 0, fuera de rango) deja la hoja vacía;
    // guardarla o imprimirla dice qué campo falta.
    std::optional<HojaEtiquetas> h;
    try {
        h = LeeCamposHoja(leeCampos(), false);
    } catch (const Aviso&) {
    }
    hoja_->fijaHoja(h);
}

void panConfEtiq::dejaCampo(int n) {
    QLineEdit* t = campo(n);
    if (LeeNumero(t->text().trimmed())) {
        redibuja();
        return;
    }
    const QString escrito = t->text();
    t->setText(n == 10 ? QStringLiteral("10") : QStringLiteral("1"));
    redibuja();
    MensajeAtencion(QStringLiteral("\"%1\" no es un número: el campo vuelve a %2.").arg(escrito, t->text()), this);
    t->setFocus();
    t->selectAll();
}

void panConfEtiq::guardar() {
    Intenta(this, [this] {
        const HojaEtiquetas h = LeeCamposHoja(leeCampos(), true);
        if (LeeHojaEtiquetas(almacen_, h.nombre) &&
            !PreguntaSiNo(QStringLiteral("La definición de etiquetas llamada '%1' ya existe, desea sobreescribirla ?").arg(h.nombre),
                          QStringLiteral("Pregunta"), Icono::Pregunta, this))
            return;
        GuardaHojaEtiquetas(almacen_, h);
        guardada_ = h.nombre;
    });
}

void panConfEtiq::imprimePrueba() {
    Intenta(this, [this] { PrevisualizaEtiquetas(this, TrabajoDePrueba(LeeCamposHoja(leeCampos(), false))); });
}

} // namespace orv
