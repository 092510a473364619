#include "widgets/listas.h"

#include "widgets/mensajes.h"

#include <QComboBox>
#include <QListWidget>
#include <QSqlQuery>
#include <QSqlRecord>

namespace orv {

namespace {

// Recorre las filas y entrega texto y clave de cada una. Lanza ErrorAlmacen.
template <typename F>
void recorre(const Almacen& a, const QString& sql, const QVariantList& parametros, const QString& campoTexto,
             const QString& campoId, F&& agrega) {
    QSqlQuery q = a.consulta(sql, parametros);
    const QSqlRecord r = q.record();
    const int iTexto = r.indexOf(campoTexto);
    const int iId = campoId.isEmpty() ? -1 : r.indexOf(campoId);
    if (iTexto < 0) throw ErrorAlmacen(QStringLiteral("No se encuentra el campo %1").arg(campoTexto), QStringLiteral("3265"));
    if (!campoId.isEmpty() && iId < 0)
        throw ErrorAlmacen(QStringLiteral("No se encuentra el campo %1").arg(campoId), QStringLiteral("3265"));
    while (q.next()) agrega(q.value(iTexto).toString(), iId >= 0 ? q.value(iId) : QVariant());
}

bool mismaClave(const QVariant& a, const QVariant& b) {
    if (a.isNull() || b.isNull()) return false;
    bool okA = false;
    bool okB = false;
    const qlonglong na = a.toLongLong(&okA);
    const qlonglong nb = b.toLongLong(&okB);
    if (okA && okB) return na == nb;
    return a.toString() == b.toString();
}

} // namespace

void LlenaLista(QComboBox* lista, const Almacen& a, const QString& sql, const QVariantList& parametros,
                const QString& campo) {
    if (!lista) return;
    try {
        recorre(a, sql, parametros, campo, {}, [lista](const QString& t, const QVariant&) { lista->addItem(t); });
    } catch (const std::exception&) {
    }
}

void LlenaLista(QListWidget* lista, const Almacen& a, const QString& sql, const QVariantList& parametros,
                const QString& campo) {
    if (!lista) return;
    try {
        recorre(a, sql, parametros, campo, {}, [lista](const QString& t, const QVariant&) { lista->addItem(t); });
    } catch (const std::exception&) {
    }
}

void LlenaCombo(QComboBox* combo, const Almacen& a, const QString& sql, const QVariantList& parametros,
                const QString& campoTexto, const QString& campoId) {
    if (!combo) return;
    try {
        recorre(a, sql, parametros, campoTexto, campoId,
                [combo](const QString& t, const QVariant& id) { combo->addItem(t, id); });
    } catch (const ErrorAlmacen& e) {
        MensajeError(QStringLiteral("Error detectado : ") + e.descripcion() + QStringLiteral(" - ") + e.numero(),
                     combo->window());
    }
}

void SelComboId(QComboBox* combo, const QVariant& id) {
    if (!combo) return;
    for (int i = 0; i < combo->count(); ++i) {
        if (mismaClave(combo->itemData(i), id)) {
            combo->setCurrentIndex(i);
            return;
        }
    }
    combo->setCurrentIndex(-1);
}

void SelComboTexto(QComboBox* combo, const QString& texto, int largo) {
    if (!combo) return;
    const QString buscado = texto.left(largo);
    for (int i = 0; i < combo->count(); ++i) {
        if (combo->itemText(i).left(largo) == buscado) {
            combo->setCurrentIndex(i);
            return;
        }
    }
    combo->setCurrentIndex(-1);
}

} // namespace orv
