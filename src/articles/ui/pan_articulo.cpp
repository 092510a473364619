#include "articles/ui/pan_articulo.h"

#include "store/entrada.h"
#include "store/rutinas.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace orv {

namespace {

// Los siete campos del arreglo Text1, en el orden de su índice.
const char* const kCaptions[7] = {"Código :",           "Descripción :",      "Existencia :",
                                  "Precio de Costo :",  "Precio de Venta :",  "Mínimo de Aviso :",
                                  "Código del proveedor :"};
enum Campo { kCodigo = 0, kDescripcion, kExistencia, kCosto, kVenta, kMinimo, kCgoProveedor };

const QString kSinFoto = QStringLiteral("<Foto>");
const QString kConFoco = QStringLiteral("QLineEdit { background: #fff3c4; }");
constexpr int kAnchoMarco = 300;
constexpr int kAltoMarco = 250;

QToolButton* botonMas(const QString& nombre, const QString& ayuda, QWidget* padre) {
    auto* b = new QToolButton(padre);
    b->setObjectName(nombre);
    b->setText(QStringLiteral("+"));
    b->setToolTip(ayuda);
    b->setEnabled(false);
    return b;
}

} // namespace

PanArticulo::PanArticulo(Almacen& almacen, const EstadoAplicacion& estado, const Configuracion& conf,
                         qint64 idArticulo, QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), conf_(conf), id_(idArticulo) {
    setObjectName(QStringLiteral("panArticulo"));
    setWindowTitle(id_ ? QStringLiteral("Modificar artículo") : QStringLiteral("Nuevo artículo"));
    setModal(true);
    eligeImagen = [this](const QString& carpeta) {
        return QFileDialog::getOpenFileName(this, QStringLiteral("Seleccione la imágen correspondiente"), carpeta,
                                            QStringLiteral("Imágenes (*.png *.jpg *.jpeg *.bmp *.gif);;Todos (*)"));
    };

    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(18, 16, 18, 12);
    auto* cuerpo = new QHBoxLayout;
    cuerpo->setSpacing(18);
    auto* campos = new QGridLayout;
    campos->setHorizontalSpacing(8);
    campos->setVerticalSpacing(7);
    armaCampos(campos);
    cuerpo->addLayout(campos, 1);
    cuerpo->addWidget(armaImagen(), 0, Qt::AlignTop);
    capa->addLayout(cuerpo);
    armaBotones(capa);

    llenaRubros();
    llenaProveedores();
    aplicaDerechos();
    if (const QString igual = conf_.lee(clave::miscelaneas, QStringLiteral("CheckIgualProve")); !igual.isEmpty())
        chkIgualCodigo_->setChecked(LeeNumero(igual).value_or(0) != 0);

    if (id_) {
        Intenta(this, [&] {
            if (const auto d = LeeArticulo(almacen_, id_)) carga(*d);
        });
        command4_->setEnabled(false);
    } else {
        if (!text1_[kCosto]->isEnabled()) {
            text1_[kCosto]->setText(QStringLiteral("0"));
            text1_[kVenta]->setText(QStringLiteral("0"));
        }
        txPorUt_->setText(conf_.lee(clave::miscelaneas, QStringLiteral("PorcentUtil")));
    }
    if (lblimagen_->text().isEmpty()) lblimagen_->setText(kSinFoto);
    adjustSize();
    CentrarVentana(this);
    (id_ ? text1_[kDescripcion] : static_cast<QWidget*>(combo1_))->setFocus();
}

void PanArticulo::creaCampos() {
    for (int i = 0; i < 7; ++i) {
        text1_[i] = new QLineEdit(this);
        text1_[i]->setObjectName(QStringLiteral("Text1_%1").arg(i));
        text1_[i]->installEventFilter(this);
    }
    text1_[kCodigo]->setMaxLength(kLargoCodigo);
    text1_[kCgoProveedor]->setMaxLength(kLargoCodigo);
    for (int i : {kCodigo, kCgoProveedor, kExistencia, kMinimo, kCosto, kVenta}) text1_[i]->setMinimumWidth(150);
    text1_[kDescripcion]->setMinimumWidth(340);
    for (int i : {kExistencia, kMinimo, kCosto, kVenta}) {
        text1_[i]->setAlignment(Qt::AlignRight);
        text1_[i]->setMaximumWidth(150);
    }
    txPorUt_ = new QLineEdit(this);
    txPorUt_->setObjectName(QStringLiteral("txPorUt"));
    txPorUt_->setAlignment(Qt::AlignRight);
    txPorUt_->setMaximumWidth(70);
    txPorUt_->installEventFilter(this);
    combo1_ = new QComboBox(this);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    combo2_ = new QComboBox(this);
    combo2_->setObjectName(QStringLiteral("Combo2"));
    label2_ = new QLabel(this);
    label2_->setObjectName(QStringLiteral("Label2"));
    label2_->hide();
    nuevoRubro_ = botonMas(QStringLiteral("OsenXPButton1"), QStringLiteral("Rubro nuevo"), this);
    nuevoProveedor_ = botonMas(QStringLiteral("OsenXPButton2"), QStringLiteral("Proveedor nuevo"), this);
    chkIgualCodigo_ = new QCheckBox(QStringLiteral("Igual al codigo del proveedor"), this);
    chkIgualCodigo_->setObjectName(QStringLiteral("chkIgualCodigo"));
    check1_ = new QCheckBox(QStringLiteral("Imprime código de barra ?"), this);
    check1_->setObjectName(QStringLiteral("Check1"));
    chkMatPrim_ = new QCheckBox(QStringLiteral("Es materia prima de producción ?"), this);
    chkMatPrim_->setObjectName(QStringLiteral("chkMatPrim"));
}

void PanArticulo::armaCampos(QGridLayout* g) {
    creaCampos();
    const auto etiqueta = [this](int i) { return new QLabel(QString::fromUtf8(kCaptions[i]), this); };
    const auto conBoton = [this](QWidget* w, QWidget* b) {
        auto* f = new QHBoxLayout;
        f->setSpacing(4);
        f->addWidget(w, 1);
        f->addWidget(b);
        return f;
    };
    g->addWidget(new QLabel(QStringLiteral("Rubro :"), this), 0, 0);
    g->addLayout(conBoton(combo1_, nuevoRubro_), 0, 1, 1, 3);
    g->addWidget(etiqueta(kCodigo), 1, 0);
    g->addWidget(text1_[kCodigo], 1, 1);
    g->addWidget(chkIgualCodigo_, 1, 2, 1, 2);
    g->addWidget(etiqueta(kDescripcion), 2, 0);
    g->addWidget(text1_[kDescripcion], 2, 1, 1, 3);
    g->addWidget(new QLabel(QStringLiteral("Proveedor :"), this), 3, 0);
    g->addLayout(conBoton(combo2_, nuevoProveedor_), 3, 1, 1, 3);
    g->addWidget(etiqueta(kCgoProveedor), 4, 0);
    g->addWidget(text1_[kCgoProveedor], 4, 1);
    g->addWidget(etiqueta(kExistencia), 5, 0);
    g->addWidget(text1_[kExistencia], 5, 1);
    g->addWidget(etiqueta(kMinimo), 5, 2, Qt::AlignRight);
    g->addWidget(text1_[kMinimo], 5, 3);
    lblCosto_ = etiqueta(kCosto);
    lblCosto_->setObjectName(QStringLiteral("lblCosto"));
    label3_ = new QLabel(QStringLiteral("% Ut."), this);
    label3_->setObjectName(QStringLiteral("Label3"));
    g->addWidget(lblCosto_, 6, 0);
    g->addWidget(text1_[kCosto], 6, 1);
    g->addWidget(label3_, 6, 2, Qt::AlignRight);
    g->addWidget(txPorUt_, 6, 3, Qt::AlignLeft);
    g->addWidget(etiqueta(kVenta), 7, 0);
    g->addWidget(text1_[kVenta], 7, 1);
    g->addWidget(check1_, 8, 1, 1, 3);
    g->addWidget(chkMatPrim_, 9, 1, 1, 3);
    g->setRowStretch(10, 1);
    g->setColumnStretch(1, 1);

    connect(combo1_, &QComboBox::activated, this, &PanArticulo::eligeRubro);
    connect(text1_[kCosto], &QLineEdit::textChanged, this, &PanArticulo::cambiaCosto);
    connect(text1_[kVenta], &QLineEdit::textChanged, this, &PanArticulo::cambiaVenta);
    connect(txPorUt_, &QLineEdit::textChanged, this, &PanArticulo::cambiaMargen);
    connect(text1_[kCgoProveedor], &QLineEdit::textChanged, this, &PanArticulo::cambiaCgoProveedor);
}

QWidget* PanArticulo::armaImagen() {
    auto* zona = new QWidget(this);
    auto* g = new QGridLayout(zona);
    g->setContentsMargins(0, 0, 0, 0);
    g->setSpacing(2);
    marcoImagen_ = new QFrame(zona);
    marcoImagen_->setObjectName(QStringLiteral("marcoImagen"));
    marcoImagen_->setFrameShape(QFrame::StyledPanel);
    marcoImagen_->setFixedSize(kAnchoMarco, kAltoMarco);
    image2_ = new QLabel(marcoImagen_);
    image2_->setObjectName(QStringLiteral("Image2"));
    vert_ = new QScrollBar(Qt::Vertical, zona);
    vert_->setObjectName(QStringLiteral("vert"));
    horiz_ = new QScrollBar(Qt::Horizontal, zona);
    horiz_->setObjectName(QStringLiteral("horiz"));
    lblimagen_ = new QLabel(zona);
    lblimagen_->setObjectName(QStringLiteral("lblimagen"));
    lblimagen_->setWordWrap(true);
    lblimagen_->setMaximumWidth(kAnchoMarco);
    lblimagen_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    command3_ = new QPushButton(QStringLiteral("Seleccionar..."), zona);
    command3_->setObjectName(QStringLiteral("Command3"));
    command3_->setAutoDefault(false);
    g->addWidget(marcoImagen_, 0, 0);
    g->addWidget(vert_, 0, 1);
    g->addWidget(horiz_, 1, 0);
    g->addWidget(lblimagen_, 2, 0, 1, 2);
    g->addWidget(command3_, 3, 0, 1, 2, Qt::AlignLeft);
    connect(vert_, &QScrollBar::valueChanged, this, &PanArticulo::mueveImagen);
    connect(horiz_, &QScrollBar::valueChanged, this, &PanArticulo::mueveImagen);
    connect(command3_, &QPushButton::clicked, this, &PanArticulo::seleccionaImagen);
    muestraImagen(QString());
    return zona;
}

void PanArticulo::armaBotones(QBoxLayout* capa) {
    auto* pie = new QHBoxLayout;
    command4_ = new QPushButton(QStringLiteral("Generar matriz..."), this);
    command4_->setObjectName(QStringLiteral("Command4"));
    command4_->setEnabled(false);
    command1_ = new QPushButton(QStringLiteral("&Aceptar"), this);
    command1_->setObjectName(QStringLiteral("Command1"));
    command2_ = new QPushButton(QStringLiteral("&Cancelar"), this);
    command2_->setObjectName(QStringLiteral("Command2"));
    for (QPushButton* b : {command1_, command2_, command4_}) b->setAutoDefault(false);
    lblMatriz_ = new QLabel(this);
    lblMatriz_->setObjectName(QStringLiteral("lblMatriz"));
    pie->addWidget(command4_);
    pie->addWidget(lblMatriz_);
    pie->addStretch(1);
    pie->addWidget(command1_);
    pie->addWidget(command2_);
    capa->addSpacing(6);
    capa->addLayout(pie);
    connect(command1_, &QPushButton::clicked, this, &PanArticulo::acepta);
    connect(command2_, &QPushButton::clicked, this, &QDialog::reject);
    connect(command4_, &QPushButton::clicked, this, &PanArticulo::generaMatriz);
    connect(nuevoRubro_, &QToolButton::clicked, this, [this] {
        if (!alNuevoRubro_) return;
        alNuevoRubro_();
        llenaRubros();
    });
    connect(nuevoProveedor_, &QToolButton::clicked, this, [this] {
        if (!alNuevoProveedor_) return;
        alNuevoProveedor_();
        llenaProveedores();
    });
}

void PanArticulo::fijaNuevoRubro(std::function<void()> f) {
    alNuevoRubro_ = std::move(f);
    nuevoRubro_->setEnabled(static_cast<bool>(alNuevoRubro_));
}

void PanArticulo::fijaNuevoProveedor(std::function<void()> f) {
    alNuevoProveedor_ = std::move(f);
    nuevoProveedor_->setEnabled(static_cast<bool>(alNuevoProveedor_));
}

void PanArticulo::fijaGeneraMatriz(GeneradorMatriz f) {
    alGeneraMatriz_ = std::move(f);
    command4_->setEnabled(static_cast<bool>(alGeneraMatriz_) && id_ == 0);
}

void PanArticulo::generaMatriz() {
    if (!alGeneraMatriz_ || id_ != 0) return;
    const QString codigo = text1_[kCodigo]->text().trimmed();
    const QString descripcion = text1_[kDescripcion]->text().trimmed();
    if (codigo.isEmpty() || descripcion.isEmpty()) {
        MensajeError(QStringLiteral("Ingrese el código y la descripción para poder hacer la matriz de artículos!"), this);
        return;
    }
    const auto filas = alGeneraMatriz_(codigo, descripcion, text1_[kExistencia]->text(), matriz_);
    if (!filas) return;
    matriz_ = *filas;
    lblMatriz_->setText(matriz_.isEmpty() ? QString()
                                          : QStringLiteral("Matriz: %1 artículo%2 por grabar").arg(matriz_.size())
                                                .arg(matriz_.size() == 1 ? QString() : QStringLiteral("s")));
}

// Las listas se vuelven a llenar conservando lo elegido (después de un rubro o proveedor nuevo).
void PanArticulo::llenaRubros() {
    const QVariant elegido = combo1_->currentData();
    combo1_->clear();
    LlenaCombo(combo1_, almacen_, QStringLiteral("SELECT idRubro, Rubro FROM Rubros ORDER BY Rubro"), {},
               QStringLiteral("Rubro"), QStringLiteral("idRubro"));
    SelComboId(combo1_, elegido);
}

void PanArticulo::llenaProveedores() {
    const QVariant elegido = combo2_->currentData();
    combo2_->clear();
    LlenaCombo(combo2_, almacen_,
               QStringLiteral("SELECT idProveedor, RazonSocial FROM Proveedores ORDER BY RazonSocial"), {},
               QStringLiteral("RazonSocial"), QStringLiteral("idProveedor"));
    SelComboId(combo2_, elegido);
}

// Sin VePreCostos no se ven costo ni margen; sin PermCambioPrecios no se cambian los precios, y
// tampoco el margen, que cambiaría el de venta.
void PanArticulo::aplicaDerechos() {
    bool veCostos = false;
    bool cambiaPrecios = false;
    Intenta(this, [&] {
        veCostos = TieneNivel(almacen_, estado_.idNivelActual, QStringLiteral("VePreCostos"));
        cambiaPrecios = TieneNivel(almacen_, estado_.idNivelActual, QStringLiteral("PermCambioPrecios"));
    });
    for (QWidget* w : {static_cast<QWidget*>(text1_[kCosto]), static_cast<QWidget*>(lblCosto_),
                       static_cast<QWidget*>(txPorUt_), static_cast<QWidget*>(label3_)})
        w->setVisible(veCostos);
    text1_[kCosto]->setEnabled(cambiaPrecios);
    text1_[kVenta]->setEnabled(cambiaPrecios);
    txPorUt_->setReadOnly(!cambiaPrecios);
}

// El orden importa: el costo llega con el margen vacío (no toca la venta), la venta rehace el
// margen y el margen guardado llega último, sin foco, y queda.
void PanArticulo::carga(const DatosArticulo& d) {
    label2_->setText(d.idRubro.isNull() ? QString() : d.idRubro.toString());
    SelComboId(combo1_, d.idRubro);
    SelComboId(combo2_, d.idProveedor);
    text1_[kCodigo]->setText(d.codigo);
    text1_[kDescripcion]->setText(d.descripcion);
    text1_[kExistencia]->setText(d.stockActual);
    text1_[kMinimo]->setText(d.stockMinimo);
    text1_[kCosto]->setText(d.precioCosto);
    text1_[kVenta]->setText(d.precioVenta);
    text1_[kCgoProveedor]->setText(d.cgoProveedor);
    check1_->setChecked(d.imprimeCodigoBarra);
    chkMatPrim_->setChecked(d.esMateriaPrima);
    lblimagen_->setText(d.foto);
    if (!d.foto.isEmpty()) muestraImagen(d.foto);
    txPorUt_->setText(d.utilidad);
    existenciaAlAbrir_ = d.existenciaAlAbrir;
}

void PanArticulo::eligeRubro(int indice) {
    if (indice < 0) return;
    const QVariant idRubro = combo1_->itemData(indice);
    label2_->setText(idRubro.toString());
    // Sólo un artículo nuevo sin código recibe la propuesta.
    if (id_ != 0 || !text1_[kCodigo]->text().isEmpty()) return;
    Intenta(this, [&] {
        text1_[kCodigo]->setText(
            ProponeCodigo(almacen_, idRubro.toLongLong(), estado_.NroCifrasRubro, estado_.NroCifrasArticulo));
    });
}

void PanArticulo::cambiaCosto() {
    if (const auto venta = VentaDesdeMargen(text1_[kCosto]->text(), txPorUt_->text()))
        text1_[kVenta]->setText(*venta);
}

void PanArticulo::cambiaVenta() {
    if (margenConFoco_) return;
    if (const auto margen = MargenDesdeVenta(text1_[kCosto]->text(), text1_[kVenta]->text()))
        txPorUt_->setText(*margen);
}

void PanArticulo::cambiaMargen() {
    if (!margenConFoco_) return;
    if (const auto venta = VentaDesdeMargen(text1_[kCosto]->text(), txPorUt_->text()))
        text1_[kVenta]->setText(*venta);
}

void PanArticulo::cambiaCgoProveedor() {
    if (chkIgualCodigo_->isChecked()) text1_[kCodigo]->setText(text1_[kCgoProveedor]->text());
}

bool PanArticulo::eventFilter(QObject* o, QEvent* e) {
    auto* campo = qobject_cast<QLineEdit*>(o);
    if (campo == text1_[kCodigo] && e->type() == QEvent::KeyPress) {
        const int tecla = static_cast<QKeyEvent*>(e)->key();
        if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            text1_[kDescripcion]->setFocus();
            return true;
        }
    }
    if (campo && (e->type() == QEvent::FocusIn || e->type() == QEvent::FocusOut)) {
        const bool entra = e->type() == QEvent::FocusIn;
        campo->setStyleSheet(entra ? kConFoco : QString());
        if (entra) QTimer::singleShot(0, campo, &QLineEdit::selectAll);
        if (campo == txPorUt_) margenConFoco_ = entra;
        // En el código, Enter pasa a la descripción y no acepta; desde la descripción, acepta.
        if (entra && campo == text1_[kCodigo]) command1_->setDefault(false);
        if (entra && campo == text1_[kDescripcion]) command1_->setDefault(true);
    }
    return QDialog::eventFilter(o, e);
}

void PanArticulo::seleccionaImagen() {
    const QString carpeta = QDir(estado_.carpetaDatos).filePath(QStringLiteral("IMAGES"));
    QDir().mkpath(carpeta);
    const QString ruta = eligeImagen ? eligeImagen(carpeta) : QString();
    if (!ruta.isEmpty() && QFileInfo::exists(ruta)) lblimagen_->setText(QFileInfo(ruta).absoluteFilePath());
    command1_->setDefault(true);
    muestraImagen(lblimagen_->text() == kSinFoto ? QString() : lblimagen_->text());
}

void PanArticulo::muestraImagen(const QString& ruta) {
    QImageReader lector(ruta);
    lector.setAutoTransform(true);
    const QImage imagen = ruta.isEmpty() ? QImage() : lector.read();
    if (imagen.isNull()) {
        image2_->setPixmap(QPixmap());
        image2_->setText(ruta.isEmpty() ? QString() : QStringLiteral("No se puede mostrar la imagen."));
        image2_->setAlignment(Qt::AlignCenter);
        image2_->setGeometry(0, 0, kAnchoMarco, kAltoMarco);
    } else {
        image2_->setPixmap(QPixmap::fromImage(imagen));
        image2_->resize(imagen.size());
    }
    // Las barras corren la imagen dentro del marco lo que sobresale de él.
    vert_->setMaximum(imagen.isNull() ? 0 : std::max(0, imagen.height() - kAltoMarco));
    horiz_->setMaximum(imagen.isNull() ? 0 : std::max(0, imagen.width() - kAnchoMarco));
    vert_->setPageStep(kAltoMarco);
    horiz_->setPageStep(kAnchoMarco);
    vert_->setValue(0);
    horiz_->setValue(0);
    mueveImagen();
}

void PanArticulo::mueveImagen() {
    if (!image2_->pixmap().isNull()) image2_->move(-horiz_->value(), -vert_->value());
}

DatosArticulo PanArticulo::datos() const {
    DatosArticulo d;
    d.codigo = text1_[kCodigo]->text();
    d.descripcion = text1_[kDescripcion]->text();
    d.idRubro = label2_->text().isEmpty() ? QVariant() : QVariant(label2_->text().toLongLong());
    d.idProveedor = combo2_->currentIndex() >= 0 ? combo2_->currentData() : QVariant();
    d.stockActual = text1_[kExistencia]->text();
    d.stockMinimo = text1_[kMinimo]->text();
    d.precioCosto = text1_[kCosto]->text();
    d.precioVenta = text1_[kVenta]->text();
    d.utilidad = txPorUt_->text();
    d.cgoProveedor = text1_[kCgoProveedor]->text();
    d.imprimeCodigoBarra = check1_->isChecked();
    d.esMateriaPrima = chkMatPrim_->isChecked();
    d.foto = lblimagen_->text() == kSinFoto ? QString() : lblimagen_->text();
    d.existenciaAlAbrir = existenciaAlAbrir_;
    return d;
}

void PanArticulo::acepta() {
    const DatosArticulo d = datos();
    const QString coefIva = conf_.lee(clave::miscelaneas, QStringLiteral("CoefIva"));
    if (Intenta(this, [&] {
            if (matriz_.isEmpty() || id_ != 0) id_ = GrabaArticulo(almacen_, id_, d, coefIva);
            else id_ = GrabaArticuloConMatriz(almacen_, d, matriz_, coefIva).front();
        }))
        accept();
}

} // namespace orv
