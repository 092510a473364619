#include "articles/ui/pan_cam_pre.h"

#include "articles/cambio_precios.h"
#include "widgets/grilla.h"
#include "widgets/listas.h"
#include "widgets/mensajes.h"
#include "widgets/paneles.h"
#include "widgets/ventanas.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlRecord>
#include <QVBoxLayout>

namespace orv {

namespace {

const QString kTodos = QStringLiteral("<Todos>");

std::optional<qint64> elegido(const QComboBox* c) {
    if (c->currentIndex() <= 0) return std::nullopt; // "<Todos>" o nada
    return c->currentData().toLongLong();
}

QLineEdit* numero(const char* nombre, const QString& texto, QWidget* padre) {
    auto* e = new QLineEdit(texto, padre);
    e->setObjectName(QString::fromLatin1(nombre));
    e->setAlignment(Qt::AlignRight);
    e->setMaximumWidth(120);
    return e;
}

} // namespace

panCamPre::panCamPre(Almacen& almacen, const EstadoAplicacion& estado, const Configuracion& conf, QWidget* padre)
    : QDialog(padre), almacen_(almacen), estado_(estado), conf_(conf) {
    setObjectName(QStringLiteral("panCamPre"));
    setWindowTitle(QStringLiteral("Actualizaciones de Precios Masivos"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(16, 12, 16, 12);
    auto* aviso = new QLabel(QStringLiteral("Aquí podrá cambiar los precios de los artículos en forma práctica. Bien puede editar "
                                            "el precio de cada ítem uno a uno o bien utilizar el panel de cambios masivos para "
                                            "alteraciones generales."),
                             this);
    aviso->setWordWrap(true);
    capa->addWidget(aviso);
    auto* arriba = new QHBoxLayout;
    arriba->addWidget(armaFiltros(), 1);
    arriba->addWidget(armaCambio());
    capa->addLayout(arriba);
    armaGrilla();
    capa->addWidget(grilla_, 1);
    muestra();
    resize(1000, 640);
    CentrarVentana(this);
}

QWidget* panCamPre::armaFiltros() {
    auto* caja = new QGroupBox(QStringLiteral("Artículos"), this);
    auto* g = new QGridLayout(caja);
    combo1_ = new QComboBox(caja);
    combo1_->setObjectName(QStringLiteral("Combo1"));
    combo2_ = new QComboBox(caja);
    combo2_->setObjectName(QStringLiteral("Combo2"));
    for (QComboBox* c : {combo1_, combo2_}) c->addItem(kTodos, 0);
    LlenaCombo(combo1_, almacen_, QStringLiteral("SELECT idRubro, Rubro FROM Rubros ORDER BY Rubro"), {}, QStringLiteral("Rubro"),
               QStringLiteral("idRubro"));
    LlenaCombo(combo2_, almacen_, QStringLiteral("SELECT idProveedor, RazonSocial FROM Proveedores ORDER BY RazonSocial"), {},
               QStringLiteral("RazonSocial"), QStringLiteral("idProveedor"));
    text1_ = numero("Text1", QStringLiteral("0"), caja);
    text2_ = numero("Text2", QStringLiteral("9999999999999"), caja);
    const std::tuple<const char*, QWidget*, int, int> filas[] = {
        {"&Rubro :", combo1_, 0, 0}, {"&Proveedor :", combo2_, 1, 0}, {"&Desde Cgo :", text1_, 0, 2}, {"&Hasta Cgo :", text2_, 1, 2}};
    for (const auto& [texto, campo, fila, columna] : filas) {
        auto* l = new QLabel(QString::fromUtf8(texto), caja);
        l->setBuddy(campo);
        g->addWidget(l, fila, columna);
        g->addWidget(campo, fila, columna + 1);
    }
    g->setColumnStretch(1, 1);
    connect(combo1_, &QComboBox::activated, this, &panCamPre::muestra);
    connect(combo2_, &QComboBox::activated, this, &panCamPre::muestra);
    return caja;
}

QWidget* panCamPre::armaCambio() {
    auto* caja = new QGroupBox(QStringLiteral("Cambio masivo (%)"), this);
    auto* g = new QGridLayout(caja);
    text3_ = numero("Text3", QStringLiteral("0"), caja);
    text4_ = numero("Text4", QStringLiteral("0"), caja);
    g->addWidget(new QLabel(QStringLiteral("Precio de Costo"), caja), 0, 0);
    g->addWidget(new QLabel(QStringLiteral("Precio de Venta"), caja), 0, 1);
    g->addWidget(text3_, 1, 0);
    g->addWidget(text4_, 1, 1);
    auto* command1 = new QPushButton(QStringLiteral("&Generar cambio masivo"), caja);
    command1->setObjectName(QStringLiteral("Command1"));
    command1->setAutoDefault(false);
    g->addWidget(command1, 2, 0, 1, 2);
    connect(command1, &QPushButton::clicked, this, &panCamPre::generaCambio);
    return caja;
}

void panCamPre::armaGrilla() {
    grilla_ = new Grilla(almacen_, this);
    grilla_->setObjectName(QStringLiteral("DBGrid1"));
    grilla_->permiteAgrupar(false);
    grilla_->fijaClave(QStringLiteral("idArticulo"));
    grilla_->fijaTituloImpresion(QStringLiteral("Precios de artículos"));
    const std::pair<const char*, const char*> titulos[] = {{"Codigo", "Código"},          {"CgoProveedor", "Cód. proveedor"},
                                                           {"Descripcion", "Descripción"}, {"DescripcionMatriz", "Caracteristicas"},
                                                           {"PrecioCosto", "Precio de costo"}, {"PrecioVenta", "Precio de venta"}};
    for (const auto& [campo, titulo] : titulos) grilla_->fijaTitulo(QString::fromLatin1(campo), QString::fromUtf8(titulo));
    grilla_->fijaMascara(QStringLiteral("PrecioCosto"), estado_.MascaraMoneda);
    grilla_->fijaMascara(QStringLiteral("PrecioVenta"), estado_.MascaraMoneda);
    grilla_->ocultaColumna(QStringLiteral("idArticulo"));
    grilla_->fijaAnchosIniciales({{"Codigo", 120}, {"CgoProveedor", 120}, {"Descripcion", 300}, {"DescripcionMatriz", 130},
                                  {"PrecioCosto", 110}, {"PrecioVenta", 110}});
    // Cada precio corregido se graba solo (la venta, con su precio final); lo que no se lee se
    // rechaza y la celda vuelve a su valor.
    grilla_->fijaEditables({QStringLiteral("PrecioCosto"), QStringLiteral("PrecioVenta")},
                           [this](const QSqlRecord& fila, const QString& campo, const QVariant& valor) {
                               CambiaPrecioArticulo(almacen_, fila.value(QStringLiteral("idArticulo")).toLongLong(), campo,
                                                    valor.toString(), conf_.lee(clave::miscelaneas, QStringLiteral("CoefIva")));
                           });
}

void panCamPre::muestra() {
    Intenta(this, [this] {
        const ConsultaConParametros c = ArticulosParaPrecios(elegido(combo1_), elegido(combo2_));
        grilla_->fijaConsulta(c.sql, c.parametros);
    });
}

void panCamPre::generaCambio() {
    const RangoPrecios r{elegido(combo1_), elegido(combo2_), text1_->text(), text2_->text()};
    qint64 cuantos = 0;
    if (!Intenta(this, [&] { cuantos = CuentaCambioPrecios(almacen_, r); })) return;
    if (cuantos == 0) {
        MensajeAtencion(QStringLiteral("Ningún artículo del rubro y el proveedor elegidos tiene su código en ese rango."), this);
        return;
    }
    if (!PreguntaSiNo(QStringLiteral("Se cambiarán los precios de %1 artículos: costo %2 %, venta %3 %.\n¿Continúa?")
                          .arg(cuantos)
                          .arg(text3_->text().trimmed(), text4_->text().trimmed()),
                      QStringLiteral("Pregunta"), Icono::Pregunta, this))
        return;
    qint64 cambiados = 0;
    if (!Intenta(this, [&] {
            cambiados = CambiaPrecios(almacen_, r, text3_->text(), text4_->text(),
                                      conf_.lee(clave::miscelaneas, QStringLiteral("CoefIva")));
        }))
        return;
    Intenta(this, [this] { grilla_->refresca(); });
    Mensaje(QStringLiteral("Se cambiaron los precios de %1 artículos.").arg(cambiados), QStringLiteral("Listo"),
            Icono::Informacion, this);
}

} // namespace orv
