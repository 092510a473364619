#include "sales/ui/pan_conf_tkt.h"

#include "sales/ticket.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace orv {

namespace {

// La hoja: el ancho del rollo elegido, 200 mm de largo, a 3 píxeles por mm.
constexpr double kPxPorMm = 3.0;
constexpr double kLargoMm = 200.0;

} // namespace

panConfTkt::panConfTkt(const Configuracion& conf, QWidget* padre) : QDialog(padre), conf_(conf) {
    setObjectName(QStringLiteral("panConfTkt"));
    setWindowTitle(QStringLiteral("Configurador del ticket"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    auto* fila = new QHBoxLayout;
    auto* izquierda = new QVBoxLayout;
    izquierda->addWidget(armaPuerto());
    izquierda->addWidget(armaOpciones(), 1);
    fila->addLayout(izquierda);
    fila->addWidget(armaHoja());
    capa->addLayout(fila, 1);
    QPushButton* acepta = BotonesAlPie(this, capa);
    connect(acepta, &QPushButton::clicked, this, &panConfTkt::aceptar);

    // 1. Lo guardado: el rollo, y cada elemento ubicado se enciende y se muestra en su lugar.
    const DisenoTicket d = LeeDisenoTicket(conf_);
    for (int i = 0; i < AnchosTicket().size(); ++i)
        if (AnchosTicket()[i].columnas == d.columnas) cboAncho_->setCurrentIndex(i);
    cambiaAncho();
    for (int i = 0; i < elementos_.size(); ++i) {
        if (const std::optional<QPointF> l = d.lugares.value(i)) {
            ubica(i, *l);
            opciones_[i]->setChecked(true);
        }
    }
    if (!d.puerto.isEmpty()) {
        if (cboPuerto_->findText(d.puerto) < 0) cboPuerto_->addItem(d.puerto);
        cboPuerto_->setCurrentText(d.puerto);
    }
    txtConfPuerto_->setText(d.parametros);
    cboPagina_->setCurrentText(NombrePaginaCodigos(LeePaginaCodigos(conf_)));
    cambiaPuerto();
    CentrarVentana(this);
}

QWidget* panConfTkt::armaPuerto() {
    auto* caja = new QGroupBox(QStringLiteral("Puerto"), this);
    auto* f = new QFormLayout(caja);
    cboPuerto_ = new QComboBox(caja);
    cboPuerto_->setObjectName(QStringLiteral("cboPuerto"));
    // También una impresora de red ("192.168.0.50:9100") o una cola de impresión ("cups:Tickets").
    cboPuerto_->setEditable(true);
    cboPuerto_->addItems(PuertosTicket());
    txtConfPuerto_ = new QLineEdit(caja);
    txtConfPuerto_->setObjectName(QStringLiteral("txtConfPuerto"));
    txtConfPuerto_->setPlaceholderText(QStringLiteral("9600,n,8,1"));
    f->addRow(QStringLiteral("Puerto :"), cboPuerto_);
    f->addRow(QStringLiteral("Parámetros :"), txtConfPuerto_);
    // La página de códigos de la impresora: las letras acentuadas salen bien sólo con la suya.
    cboPagina_ = new QComboBox(caja);
    cboPagina_->setObjectName(QStringLiteral("cboPagina"));
    cboPagina_->addItems({NombrePaginaCodigos(PaginaCodigos::CP858), NombrePaginaCodigos(PaginaCodigos::CP850)});
    f->addRow(QStringLiteral("Página de códigos :"), cboPagina_);
    // El rollo: las líneas del ticket se arman con sus columnas.
    cboAncho_ = new QComboBox(caja);
    cboAncho_->setObjectName(QStringLiteral("cboAncho"));
    for (const AnchoTicket& a : AnchosTicket()) cboAncho_->addItem(a.texto);
    f->addRow(QStringLiteral("Papel :"), cboAncho_);
    connect(cboPuerto_, &QComboBox::currentTextChanged, this, &panConfTkt::cambiaPuerto);
    connect(cboAncho_, &QComboBox::currentIndexChanged, this, &panConfTkt::cambiaAncho);
    return caja;
}

// Una opción por elemento: lo muestra u oculta en la hoja.
QWidget* panConfTkt::armaOpciones() {
    auto* caja = new QGroupBox(QStringLiteral("Elementos del ticket"), this);
    auto* c = new QVBoxLayout(caja);
    c->setSpacing(2);
    for (int i = 0; i < ElementosTicket().size(); ++i) {
        auto* o = new QCheckBox(ElementosTicket()[i].titulo, caja);
        o->setObjectName(QStringLiteral("OptOption%1").arg(i));
        c->addWidget(o);
        opciones_ << o;
        connect(o, &QCheckBox::toggled, this, [this, i](bool si) { muestra(i, si); });
    }
    c->addStretch(1);
    return caja;
}

// La hoja con una etiqueta por elemento, escondidas hasta que se encienden.
QWidget* panConfTkt::armaHoja() {
    auto* c = new QVBoxLayout;
    auto* w = new QWidget(this);
    w->setLayout(c);
    c->setContentsMargins(0, 0, 0, 0);
    c->addWidget(new QLabel(QStringLiteral("Arrastre cada elemento a su lugar en el ticket:"), w));
    picTkt_ = new QFrame(w);
    picTkt_->setObjectName(QStringLiteral("PicTkt"));
    picTkt_->setFrameShape(QFrame::Box);
    picTkt_->setAutoFillBackground(true);
    QPalette pal = picTkt_->palette();
    pal.setColor(QPalette::Window, Qt::white);
    pal.setColor(QPalette::WindowText, Qt::black);
    picTkt_->setPalette(pal);
    for (int i = 0; i < ElementosTicket().size(); ++i) {
        auto* l = new QLabel(ElementosTicket()[i].muestra, picTkt_);
        l->setObjectName(QStringLiteral("lblElemento%1").arg(i));
        QFont f = l->font();
        f.setPointSizeF(f.pointSizeF() * 0.85);
        l->setFont(f);
        l->adjustSize();
        l->setCursor(Qt::OpenHandCursor);
        l->installEventFilter(this);
        l->move(6, 6 + i * 16);
        l->hide();
        elementos_ << l;
    }
    c->addWidget(picTkt_);
    c->addStretch(1);
    return w;
}

// 2. Los parámetros sirven sólo en un puerto serie.
void panConfTkt::cambiaPuerto() { txtConfPuerto_->setEnabled(EsPuertoSerie(cboPuerto_->currentText().trimmed())); }

// La hoja toma el ancho del rollo; lo que quedaba fuera vuelve al borde.
void panConfTkt::cambiaAncho() {
    const double mm = anchoElegido().mm;
    picTkt_->setFixedSize(int(mm * kPxPorMm), int(kLargoMm * kPxPorMm));
    for (QLabel* l : elementos_) adentro(l, l->pos());
}

AnchoTicket panConfTkt::anchoElegido() const { return AnchosTicket().value(cboAncho_->currentIndex(), AnchosTicket().first()); }

void panConfTkt::muestra(int i, bool si) { elementos_[i]->setVisible(si); }

QString panConfTkt::puerto() const { return cboPuerto_->currentText().trimmed(); }

// Como al arrastrarlo, el elemento queda dentro de la hoja.
void panConfTkt::ubica(int i, QPointF mm) { adentro(elementos_[i], QPoint(int(std::lround(mm.x() * kPxPorMm)), int(std::lround(mm.y() * kPxPorMm)))); }

void panConfTkt::adentro(QLabel* l, QPoint p) {
    l->move(std::clamp(p.x(), 0, std::max(0, picTkt_->width() - l->width())),
            std::clamp(p.y(), 0, std::max(0, picTkt_->height() - l->height())));
}

DisenoTicket panConfTkt::diseno() const {
    DisenoTicket d;
    d.puerto = puerto();
    d.parametros = txtConfPuerto_->text().trimmed();
    d.columnas = anchoElegido().columnas;
    for (int i = 0; i < elementos_.size(); ++i) {
        const QPoint p = elementos_[i]->pos();
        d.lugares << (opciones_[i]->isChecked() ? std::optional<QPointF>(QPointF(p.x() / kPxPorMm, p.y() / kPxPorMm))
                                                : std::nullopt);
    }
    return d;
}

// 3. Un elemento se arrastra con el mouse y queda donde se suelta, dentro de la hoja.
bool panConfTkt::eventFilter(QObject* o, QEvent* e) {
    auto* l = qobject_cast<QLabel*>(o);
    if (!l || !elementos_.contains(l)) return QDialog::eventFilter(o, e);
    if (e->type() == QEvent::MouseButtonPress) {
        agarre_ = static_cast<QMouseEvent*>(e)->position().toPoint();
        l->setCursor(Qt::ClosedHandCursor);
        return true;
    }
    if (e->type() == QEvent::MouseMove && (static_cast<QMouseEvent*>(e)->buttons() & Qt::LeftButton)) {
        const QPoint p = picTkt_->mapFromGlobal(static_cast<QMouseEvent*>(e)->globalPosition().toPoint()) - agarre_;
        adentro(l, p);
        return true;
    }
    if (e->type() == QEvent::MouseButtonRelease) {
        l->setCursor(Qt::OpenHandCursor);
        return true;
    }
    return QDialog::eventFilter(o, e);
}

// 4. Cada elemento con su lugar, o vacío si está apagado; el puerto y sus parámetros.
void panConfTkt::aceptar() {
    GrabaDisenoTicket(conf_, diseno());
    GrabaPaginaCodigos(conf_, cboPagina_->currentIndex() == 1 ? PaginaCodigos::CP850 : PaginaCodigos::CP858);
    accept();
}

} // namespace orv
