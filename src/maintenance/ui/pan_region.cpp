#include "maintenance/ui/pan_region.h"

#include "app/estado.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orv {

namespace {

// La fecha mínima del campo se muestra en blanco y quiere decir "sin fecha".
const QDate kSinFecha(1900, 1, 1);

QLineEdit* campo(const char* nombre, int largo, QWidget* padre, int ancho = 0) {
    auto* c = new QLineEdit(padre);
    c->setObjectName(QString::fromLatin1(nombre));
    c->setMaxLength(largo);
    if (ancho > 0) c->setMaximumWidth(ancho);
    return c;
}

QComboBox* lista(const char* nombre, const QStringList& valores, QWidget* padre) {
    auto* c = new QComboBox(padre);
    c->setObjectName(QString::fromLatin1(nombre));
    c->addItems(valores);
    c->setMaxVisibleItems(20);
    return c;
}

// Elige `valor` en la lista; uno guardado que la lista no trae se agrega, para no cambiarlo al aceptar.
void elige(QComboBox* c, const QString& valor, const QString& defecto) {
    const QString v = valor.isEmpty() ? defecto : valor;
    int i = c->findText(v);
    if (i < 0) {
        c->addItem(v);
        i = c->count() - 1;
    }
    c->setCurrentIndex(i);
}

// Una pestaña con sus filas de rótulo y campo, y una nota al pie si la tiene.
QWidget* pagina(QWidget* padre, std::initializer_list<std::pair<const char*, QWidget*>> filas, const QString& nota = {}) {
    auto* w = new QWidget(padre);
    auto* capa = new QVBoxLayout(w);
    auto* f = new QFormLayout;
    f->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    for (const auto& [rotulo, control] : filas) {
        control->setParent(w);
        f->addRow(QString::fromUtf8(rotulo), control);
    }
    capa->addLayout(f);
    if (!nota.isEmpty()) {
        auto* n = new QLabel(nota, w);
        n->setWordWrap(true);
        n->setEnabled(false);
        capa->addWidget(n);
    }
    capa->addStretch(1);
    return w;
}

const QString kRigeAlArrancar = QStringLiteral("Un cambio en este valor rige desde el próximo inicio del programa.");

} // namespace

panRegion::panRegion(Almacen& almacen, const Configuracion& conf, QWidget* padre)
    : QDialog(padre), almacen_(almacen), conf_(conf) {
    setObjectName(QStringLiteral("panRegion"));
    setWindowTitle(QStringLiteral("Configuraciones Varias"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->addWidget(TituloDialogo("lblTitulo", QStringLiteral("Datos locales del sistema"), this));
    pestanias_ = new QTabWidget(this);
    pestanias_->setObjectName(QStringLiteral("SSTab1"));
    pestanias_->addTab(armaPais(), QStringLiteral("País y Moneda"));
    pestanias_->addTab(armaImpositivo(), QStringLiteral("Impositivo"));
    pestanias_->addTab(armaCodificacion(), QStringLiteral("Codificación"));
    pestanias_->addTab(armaPuntos(), QStringLiteral("Puntos VIP"));
    pestanias_->addTab(armaBalanza(), QStringLiteral("Balanza"));
    pestanias_->addTab(armaNegocio(), QStringLiteral("Datos Negocio"));
    capa->addWidget(pestanias_, 1);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &panRegion::acepta);
    carga();
    resize(600, 460);
    CentrarVentana(this);
}

QWidget* panRegion::armaPais() {
    cboPais_ = lista("cboPais", Paises(), this);
    cboMascara_ = lista("cboMascara", MascarasMoneda(), this);
    return pagina(pestanias_, {{"País :", cboPais_}, {"Formato de moneda :", cboMascara_}},
                  QStringLiteral("El formato de moneda es el de los importes de pantallas, comprobantes e informes. ") +
                      kRigeAlArrancar);
}

QWidget* panRegion::armaImpositivo() {
    txIva_ = campo("txIva", 12, this, 90);
    txIva_->setAlignment(Qt::AlignRight);
    cboClaveImpositiva_ = lista("cboClaveImpositiva", ClavesImpositivas(), this);
    return pagina(pestanias_, {{"IVA % :", txIva_}, {"Clave fiscal :", cboClaveImpositiva_}},
                  QStringLiteral("El porcentaje de IVA es el que la venta suma a los precios; se puede cambiar también "
                                 "en la misma venta. La clave fiscal nombra el número de contribuyente de clientes y "
                                 "proveedores (con \"CUIT\" se controlan sus cifras). ") +
                      kRigeAlArrancar);
}

QWidget* panRegion::armaCodificacion() {
    txNumCifrasRubro_ = campo("txNumCifrasRubro", 2, this, 60);
    txNumCifrasArticulo_ = campo("txNumCifrasArticulo", 2, this, 60);
    return pagina(pestanias_, {{"Cifras del rubro :", txNumCifrasRubro_}, {"Cifras del artículo :", txNumCifrasArticulo_}},
                  QStringLiteral("El código que se propone para un artículo nuevo es el número del rubro y el del "
                                 "artículo dentro del rubro, con estas cifras (de 1 a %1 cada uno). ")
                          .arg(kCifrasMaximas) +
                      kRigeAlArrancar);
}

QWidget* panRegion::armaPuntos() {
    optVipPorPeso_ = new QRadioButton(QStringLiteral("Por importe: los puntos del rubro por cada peso vendido"), this);
    optVipPorPeso_->setObjectName(QStringLiteral("optVipPorPeso"));
    optVipPorCantidad_ = new QRadioButton(QStringLiteral("Por cantidad: los puntos del rubro por cada unidad vendida"), this);
    optVipPorCantidad_->setObjectName(QStringLiteral("optVipPorCantidad"));
    auto* w = new QWidget(pestanias_);
    auto* capa = new QVBoxLayout(w);
    auto* titulo = new QLabel(QStringLiteral("Cómo suman puntos los clientes con tarjeta en cada venta :"), w);
    capa->addWidget(titulo);
    capa->addWidget(optVipPorPeso_);
    capa->addWidget(optVipPorCantidad_);
    capa->addStretch(1);
    optVipPorPeso_->setParent(w);
    optVipPorCantidad_->setParent(w);
    return w;
}

QWidget* panRegion::armaBalanza() {
    txBalPrefijos_ = campo("txBalPrefijos", 40, this, 160);
    txBalPrefijos_->setPlaceholderText(QStringLiteral("20-29"));
    txBalCifrasCodigo_ = campo("txBalCifrasCodigo", 2, this, 60);
    txBalCifrasCodigo_->setPlaceholderText(QStringLiteral("5"));
    txBalCifrasValor_ = campo("txBalCifrasValor", 2, this, 60);
    txBalCifrasValor_->setPlaceholderText(QStringLiteral("5"));
    cboBalValor_ = lista("cboBalValor", {QStringLiteral("Precio"), QStringLiteral("Peso")}, this);
    txBalDecimales_ = campo("txBalDecimales", 2, this, 60);
    // Sin decimales escritos: dos para un importe, tres para un peso en kilos.
    const auto decimalesDeOmision = [this] {
        txBalDecimales_->setPlaceholderText(cboBalValor_->currentText() == QStringLiteral("Peso") ? QStringLiteral("3")
                                                                                                 : QStringLiteral("2"));
    };
    decimalesDeOmision();
    connect(cboBalValor_, &QComboBox::currentTextChanged, this, decimalesDeOmision);
    return pagina(pestanias_,
                  {{"Prefijos :", txBalPrefijos_},
                   {"Cifras del código :", txBalCifrasCodigo_},
                   {"Cifras del valor :", txBalCifrasValor_},
                   {"La etiqueta trae :", cboBalValor_},
                   {"Decimales del valor :", txBalDecimales_}},
                  QStringLiteral("Las etiquetas EAN-13 de la balanza empiezan con uno de estos prefijos (20-29, o "
                                 "20,21) y siguen con el código del artículo y el importe o el peso: prefijo, código "
                                 "y valor suman 12 cifras. Un campo vacío toma el valor gris. Rige desde la próxima "
                                 "entrada a \"Vender\"."));
}

QWidget* panRegion::armaNegocio() {
    txNomEmpresa_ = campo("txNomEmpresa", 100, this);
    txFantasia_ = campo("txFantasia", 100, this);
    txDireccion_ = campo("txDireccion", 100, this);
    txCgoPost_ = campo("txCgoPost", 20, this, 120);
    txTelefono_ = campo("txTelefono", 50, this);
    txEMail_ = campo("txEMail", 100, this);
    txWeb_ = campo("txWeb", 100, this);
    txCuit_ = campo("txCuit", 30, this, 200);
    txCondicionIva_ = campo("txCondicionIva", 50, this);
    dtInicioActividades_ = CampoFecha(QStringLiteral("dtInicioActividades"), this);
    dtInicioActividades_->setMinimumDate(kSinFecha);
    dtInicioActividades_->setSpecialValueText(QStringLiteral(" "));
    return pagina(pestanias_,
                  {{"Nombre :", txNomEmpresa_},
                   {"Nombre de fantasía :", txFantasia_},
                   {"Dirección :", txDireccion_},
                   {"Código postal :", txCgoPost_},
                   {"Teléfono :", txTelefono_},
                   {"E-Mail :", txEMail_},
                   {"Web :", txWeb_},
                   {"Clave fiscal :", txCuit_},
                   {"Condición de IVA :", txCondicionIva_},
                   {"Inicio de actividades :", dtInicioActividades_}},
                  QStringLiteral("Los datos del negocio encabezan tickets, comprobantes e informes."));
}

void panRegion::carga() {
    const ValoresLocales v = LeeValoresLocales(conf_);
    elige(cboPais_, v.pais, predeterminado::pais);
    elige(cboMascara_, v.mascaraMoneda, predeterminado::mascaraMoneda);
    elige(cboClaveImpositiva_, v.claveImpositiva, predeterminado::claveImpositiva);
    txIva_->setText(v.coefIva);
    txNumCifrasRubro_->setText(v.cifrasRubro.isEmpty() ? QString::number(predeterminado::nroCifrasRubro) : v.cifrasRubro);
    txNumCifrasArticulo_->setText(v.cifrasArticulo.isEmpty() ? QString::number(predeterminado::nroCifrasArticulo)
                                                             : v.cifrasArticulo);
    (v.vipPorPeso ? optVipPorPeso_ : optVipPorCantidad_)->setChecked(true);
    txBalPrefijos_->setText(v.balanza.prefijos);
    txBalCifrasCodigo_->setText(v.balanza.cifrasCodigo);
    txBalCifrasValor_->setText(v.balanza.cifrasValor);
    elige(cboBalValor_, v.balanza.valor, QStringLiteral("Precio"));
    txBalDecimales_->setText(v.balanza.decimales);

    DatosNegocio n;
    Intenta(this, [&] { n = LeeDatosNegocio(almacen_); });
    txNomEmpresa_->setText(n.nombreEmpresa);
    txFantasia_->setText(n.nombreFantasia);
    txDireccion_->setText(n.direccion);
    txCgoPost_->setText(n.cgoPostal);
    txTelefono_->setText(n.telefono);
    txEMail_->setText(n.email);
    txWeb_->setText(n.web);
    txCuit_->setText(n.cuit);
    txCondicionIva_->setText(n.condicionIva);
    dtInicioActividades_->setDate(n.inicioActividades.isValid() ? n.inicioActividades : kSinFecha);
}

ValoresLocales panRegion::valores() const {
    return {cboPais_->currentText(),
            cboMascara_->currentText(),
            cboClaveImpositiva_->currentText(),
            txIva_->text(),
            txNumCifrasRubro_->text(),
            txNumCifrasArticulo_->text(),
            optVipPorPeso_->isChecked(),
            {txBalPrefijos_->text(), txBalCifrasCodigo_->text(), txBalCifrasValor_->text(), cboBalValor_->currentText(),
             txBalDecimales_->text()}};
}

DatosNegocio panRegion::negocio() const {
    const QDate inicio = dtInicioActividades_->date();
    return {0,
            txNomEmpresa_->text(),
            txFantasia_->text(),
            txDireccion_->text(),
            txCgoPost_->text(),
            txTelefono_->text(),
            txEMail_->text(),
            txWeb_->text(),
            txCuit_->text(),
            txCondicionIva_->text(),
            inicio == kSinFecha ? QDate() : inicio};
}

void panRegion::acepta() {
    if (Intenta(this, [this] { GrabaDatosLocales(almacen_, conf_, valores(), negocio()); })) accept();
}

} // namespace orv
