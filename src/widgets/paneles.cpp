#include "widgets/paneles.h"

#include "widgets/grilla.h"
#include "widgets/mensajes.h"

#include <QBoxLayout>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

QPushButton* Enlace(const QString& nombre, const QString& texto, QWidget* padre) {
    auto* b = new QPushButton(texto, padre);
    b->setObjectName(nombre);
    b->setFlat(true);
    b->setCursor(Qt::PointingHandCursor);
    b->setStyleSheet(QStringLiteral("QPushButton { text-align: left; color: #1f5f9e; padding: 4px 2px; }"
                                    "QPushButton:disabled { color: #9aa5b1; }"));
    return b;
}

QVBoxLayout* DisponePanel(QWidget* panel, const QString& titulo, QLayout* busquedas, QWidget* grilla, QLayout* botones) {
    auto* capa = new QVBoxLayout(panel);
    capa->setContentsMargins(0, 0, 0, 0);
    capa->setSpacing(10);
    capa->addWidget(TituloPanel(titulo, panel));
    capa->addLayout(busquedas);
    auto* cuerpo = new QHBoxLayout;
    cuerpo->setSpacing(12);
    cuerpo->addWidget(grilla, 1);
    cuerpo->addLayout(botones);
    capa->addLayout(cuerpo, 1);
    return capa;
}

QLineEdit* CajaBusqueda(const QString& nombre, const QString& leyenda, const QString& explicacion, int anchoMinimo,
                        QWidget* padre) {
    auto* t = new QLineEdit(padre);
    t->setObjectName(nombre);
    t->setPlaceholderText(leyenda);
    t->setToolTip(explicacion);
    t->setClearButtonEnabled(true);
    t->setMinimumWidth(anchoMinimo);
    return t;
}

QPushButton* BotonPanel(const QString& nombre, const QString& texto, QWidget* padre) {
    auto* b = new QPushButton(texto, padre);
    b->setObjectName(nombre);
    b->setAutoDefault(false);
    b->setMinimumWidth(140);
    return b;
}

QPushButton* BotonPosterior(const QString& nombre, const QString& texto, QWidget* padre) {
    QPushButton* b = BotonPanel(nombre, texto, padre);
    b->setEnabled(false);
    b->setToolTip(QStringLiteral("Esta pantalla llega en una próxima versión del programa."));
    return b;
}

QPushButton* BotonIcono(const QString& nombre, QStyle::StandardPixmap dibujo, const QString& ayuda, QWidget* padre) {
    auto* b = new QPushButton(padre->style()->standardIcon(dibujo), QString(), padre);
    b->setObjectName(nombre);
    b->setToolTip(ayuda);
    b->setAutoDefault(false);
    return b;
}

std::optional<qint64> ClaveActual(const Grilla& grilla, const QString& campo) {
    const std::optional<QSqlRecord> fila = grilla.filaActual();
    if (!fila) return std::nullopt; // sin fila, o una fila de grupo
    const QVariant id = fila->value(campo);
    if (id.isNull() || id.toString().isEmpty()) return std::nullopt;
    return id.toLongLong();
}

QDateEdit* CampoFecha(const QString& nombre, QWidget* padre) {
    auto* d = new QDateEdit(padre);
    d->setObjectName(nombre);
    d->setCalendarPopup(true);
    d->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    return d;
}

QLineEdit* CampoTotal(const char* nombre, QWidget* padre, int anchoMaximo) {
    auto* t = new QLineEdit(padre);
    t->setObjectName(QString::fromLatin1(nombre));
    t->setReadOnly(true);
    t->setAlignment(Qt::AlignRight);
    t->setMaximumWidth(anchoMaximo);
    return t;
}

QLineEdit* CampoSaldo(const char* nombre, QWidget* padre) {
    QLineEdit* t = CampoTotal(nombre, padre, 170);
    t->setMinimumWidth(150);
    QFont f = t->font();
    f.setBold(true);
    t->setFont(f);
    return t;
}

QLabel* TituloDialogo(const char* nombre, const QString& texto, QWidget* padre) {
    auto* t = new QLabel(texto, padre);
    t->setObjectName(QString::fromLatin1(nombre));
    QFont f = t->font();
    f.setPointSizeF(f.pointSizeF() * 1.25);
    f.setBold(true);
    t->setFont(f);
    return t;
}

QLabel* TituloPanel(const QString& texto, QWidget* padre) {
    auto* t = new QLabel(texto, padre);
    t->setObjectName(QStringLiteral("lblTituloPanel"));
    QFont f = t->font();
    f.setPointSizeF(f.pointSizeF() * 1.6);
    f.setBold(true);
    t->setFont(f);
    return t;
}

PanelLista::PanelLista(Almacen& almacen, const QString& titulo, const QString& nombreGrilla, QWidget* padre)
    : QWidget(padre) {
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(0, 0, 0, 0);
    capa->setSpacing(10);
    capa->addWidget(TituloPanel(titulo, this));
    grilla_ = new Grilla(almacen, this);
    grilla_->setObjectName(nombreGrilla);
    grilla_->fijaTituloImpresion(titulo);
    capa->addWidget(grilla_, 1);
}

QList<QPair<QString, int>> PanelLista::fijaColumnas(Grilla& grilla, std::initializer_list<Columna> columnas,
                                                     const QString& mascaraMoneda) {
    QList<QPair<QString, int>> anchos;
    for (const Columna& c : columnas) {
        const QString campo = QString::fromLatin1(c.campo);
        grilla.fijaTitulo(campo, QString::fromUtf8(c.titulo));
        if (c.dinero) grilla.fijaMascara(campo, mascaraMoneda);
        if (c.ancho > 0) anchos.append({campo, c.ancho});
    }
    return anchos;
}

void PanelLista::fijaColumnas(std::initializer_list<Columna> columnas, const QString& mascaraMoneda) {
    anchos_ += fijaColumnas(*grilla_, columnas, mascaraMoneda);
}

QPushButton* BotonEnFila(QBoxLayout* fila, const char* nombre, const QString& texto, QWidget* padre, int anchoMinimo) {
    auto* b = new QPushButton(texto, padre);
    b->setObjectName(QString::fromLatin1(nombre));
    b->setAutoDefault(false);
    b->setMinimumWidth(anchoMinimo);
    fila->addWidget(b);
    return b;
}

void PanelLista::fijaConsulta(const QString& sql, const QVariantList& parametros) {
    const bool primera = grilla_->modelo().columnCount() == 0;
    // Si no se puede leer, se dice y la grilla queda vacía.
    if (!Intenta(this, [&] { grilla_->fijaConsulta(sql, parametros); })) return;
    if (primera)
        for (const auto& [campo, ancho] : anchos_) grilla_->fijaAnchoColumna(campo, ancho);
}

} // namespace orv
