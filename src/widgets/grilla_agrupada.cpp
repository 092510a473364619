#include "widgets/grilla.h"
#include "widgets/grilla_interna.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMimeData>
#include <QSqlQuery>
#include <QStackedWidget>
#include <QTableView>
#include <QToolButton>
#include <QTreeWidget>

namespace orv {

using namespace grilla;

// ---------------------------------------------------------------------------------------------
// Banda de agrupación

BandaAgrupar::BandaAgrupar(Grilla& g) : QFrame(&g), grilla_(g) {
    setObjectName(QStringLiteral("bandaAgrupar"));
    setAcceptDrops(true);
    setFrameShape(QFrame::StyledPanel);
    auto* l = new QHBoxLayout(this);
    l->setContentsMargins(8, 4, 8, 4);
    l->setSpacing(6);
    texto_ = new QLabel(QStringLiteral("Arrastre aquí la columna que desee agrupar"), this);
    texto_->setObjectName(QStringLiteral("textoAgrupar"));
    QPalette p = texto_->palette();
    p.setColor(QPalette::WindowText, p.color(QPalette::Disabled, QPalette::WindowText));
    texto_->setPalette(p);
    ficha_ = new QToolButton(this);
    ficha_->setObjectName(QStringLiteral("fichaAgrupar"));
    ficha_->setToolTip(QStringLiteral("Quitar la agrupación"));
    ficha_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    ficha_->setAutoRaise(false);
    l->addWidget(texto_);
    l->addWidget(ficha_);
    l->addStretch(1);
    connect(ficha_, &QToolButton::clicked, this, [this] { grilla_.quitaAgrupacion(); });
    muestra({});
}

void BandaAgrupar::fijaTexto(const QString& texto) { texto_->setText(texto); }

void BandaAgrupar::muestra(const QString& titulo) {
    ficha_->setVisible(!titulo.isEmpty());
    texto_->setVisible(titulo.isEmpty());
    ficha_->setText(titulo + QStringLiteral("  ✕"));
}

void BandaAgrupar::dragEnterEvent(QDragEnterEvent* e) {
    if (e->mimeData()->hasFormat(QLatin1String(kMimeColumna))) e->acceptProposedAction();
}

void BandaAgrupar::dropEvent(QDropEvent* e) {
    const QString campo = QString::fromUtf8(e->mimeData()->data(QLatin1String(kMimeColumna)));
    e->acceptProposedAction();
    grilla_.agrupaPor(campo);
}

// --- agrupación ---

void Grilla::agrupaPor(const QString& campo) {
    if (modelo_->columna(campo) < 0) return;
    agrupar_ = QStringList{modelo_->campo(modelo_->columna(campo))};
    armaGrupos();
    pila_->setCurrentWidget(arbol_);
    actualizaBanda();
}

void Grilla::quitaAgrupacion() {
    agrupar_.clear();
    arbol_->clear();
    pila_->setCurrentWidget(tabla_);
    actualizaBanda();
    tabla_->setFocus();
}

void Grilla::actualizaBanda() {
    banda_->muestra(agrupada() ? modelo_->titulo(agrupar_.first()) : QString());
}

void Grilla::armaGrupos() {
    arbol_->clear();
    const QString g = agrupada() ? campoSeguro(agrupar_.first()) : QString();
    if (g.isEmpty()) return;
    const int nc = modelo_->columnCount();
    QStringList titulos;
    for (int c = 0; c < nc; ++c) titulos << modelo_->titulo(modelo_->campo(c));
    arbol_->setColumnCount(nc);
    arbol_->setHeaderLabels(titulos);
    // Mismo orden y anchos de columnas que la tabla.
    auto* enc = tabla_->horizontalHeader();
    for (int v = 0; v < nc; ++v) {
        const int logica = enc->logicalIndex(v);
        arbol_->header()->moveSection(arbol_->header()->visualIndex(logica), v);
        arbol_->header()->resizeSection(logica, enc->sectionSize(logica));
    }
    aplicaOcultas();
    const int cg = modelo_->columna(g);
    try {
        QSqlQuery q = ejecutaAdelante(almacen_,
                                      QStringLiteral("SELECT g, COUNT(*) FROM (SELECT ") + g +
                                          QStringLiteral(" AS g FROM (") + sql_ +
                                          QStringLiteral(") AS q) AS t GROUP BY g ORDER BY g"),
                                      parametros_);
        const int primera = enc->logicalIndex(0);
        while (q.next()) {
            auto* it = new QTreeWidgetItem(arbol_);
            const QVariant valor = q.value(0);
            it->setText(primera, modelo_->titulo(g) + QStringLiteral(": ") +
                                     (valor.isNull() || valor.toString().isEmpty() ? QStringLiteral("(vacío)")
                                                                                    : modelo_->texto(valor, cg)) +
                                     QStringLiteral("  (") + QString::number(q.value(1).toLongLong()) +
                                     QStringLiteral(")"));
            it->setData(primera, kRolRegistro, valor);
            it->setData(primera, kRolCargado, false);
            QFont f = it->font(primera);
            f.setBold(true);
            it->setFont(primera, f);
            it->setFirstColumnSpanned(true);
            it->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
        }
    } catch (const ErrorAlmacen&) {
    }
    if (arbol_->topLevelItemCount() > 0) arbol_->setCurrentItem(arbol_->topLevelItem(0));
}

void Grilla::cargaGrupo(QTreeWidgetItem* grupo) {
    if (!grupo || grupo->parent() || !agrupada()) return;
    const int primera = tabla_->horizontalHeader()->logicalIndex(0);
    if (grupo->data(primera, kRolCargado).toBool()) return;
    grupo->setData(primera, kRolCargado, true);
    const QString g = campoSeguro(agrupar_.first());
    if (g.isEmpty()) return;
    const QVariant valor = grupo->data(primera, kRolRegistro);
    QVariantList p = parametros_;
    QString sql = QStringLiteral("SELECT * FROM (") + sql_ + QStringLiteral(") AS q WHERE ") + g;
    if (valor.isNull()) {
        sql += QStringLiteral(" IS NULL");
    } else {
        sql += QStringLiteral(" = ?");
        p << valor;
    }
    try {
        QSqlQuery q = ejecutaAdelante(almacen_, sql, p);
        const int nc = modelo_->columnCount();
        QList<QTreeWidgetItem*> hijos;
        while (q.next()) {
            auto* it = new QTreeWidgetItem;
            QVariantList r;
            r.reserve(nc);
            for (int c = 0; c < nc; ++c) {
                const QVariant v = q.value(c);
                r << v;
                it->setText(c, modelo_->texto(v, c));
                if (modelo_->alineaDerecha(c)) it->setTextAlignment(c, Qt::AlignRight | Qt::AlignVCenter);
            }
            it->setData(0, kRolRegistro, r);
            hijos << it;
        }
        grupo->addChildren(hijos);
    } catch (const ErrorAlmacen&) {
    }
}

} // namespace orv
