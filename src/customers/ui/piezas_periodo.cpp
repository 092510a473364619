#include "customers/ui/piezas_periodo.h"

#include "widgets/paneles.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

FiltroPeriodo ArmaFiltroPeriodo(QWidget* padre, const QString& etiquetaLista) {
    FiltroPeriodo f;
    f.fila = new QHBoxLayout;
    f.lista = new QComboBox(padre);
    f.lista->setObjectName(QStringLiteral("cboVendedores"));
    f.lista->setMinimumWidth(230);
    f.desde = CampoFecha(QStringLiteral("dt1"), padre);
    f.hasta = CampoFecha(QStringLiteral("dt2"), padre);
    const std::pair<QString, QWidget*> campos[] = {
        {etiquetaLista, f.lista}, {QStringLiteral("Desde :"), f.desde}, {QStringLiteral("Hasta :"), f.hasta}};
    for (const auto& [texto, campo] : campos) {
        auto* etiqueta = new QLabel(texto, padre);
        etiqueta->setBuddy(campo);
        f.fila->addWidget(etiqueta);
        f.fila->addWidget(campo);
        f.fila->addSpacing(8);
    }
    f.mostrar = new QPushButton(QStringLiteral("Mostrar"), padre);
    f.mostrar->setObjectName(QStringLiteral("btnOk"));
    f.mostrar->setDefault(true);
    f.fila->addWidget(f.mostrar);
    f.fila->addStretch(1);
    return f;
}

TotalesPeriodo ArmaTotalesPeriodo(QWidget* padre, const QString& leyendaSuma, const QString& leyendaResta, int ancho) {
    TotalesPeriodo t;
    t.capa = new QFormLayout;
    t.capa->setLabelAlignment(Qt::AlignRight);
    t.suma = CampoTotal("txTotComis", padre, ancho);
    t.resta = CampoTotal("txTotCancel", padre, ancho);
    t.diferencia = CampoTotal("txDif", padre, ancho);
    QFont fd = t.diferencia->font();
    fd.setBold(true);
    t.diferencia->setFont(fd);
    t.capa->addRow(leyendaSuma, t.suma);
    t.capa->addRow(leyendaResta, t.resta);
    t.capa->addRow(QStringLiteral("Diferencia :"), t.diferencia);
    t.ceros();
    return t;
}

void TotalesPeriodo::ceros() const { muestra(QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0")); }

void TotalesPeriodo::muestra(const QString& s, const QString& r, const QString& d) const {
    suma->setText(s);
    resta->setText(r);
    diferencia->setText(d);
}

QStringList TotalesPeriodo::textos() const { return {suma->text(), resta->text(), diferencia->text()}; }

QVBoxLayout* ColumnaBotones(QDialog* pantalla, std::initializer_list<BotonAccion> botones, const char* nombreSalir) {
    auto* columna = new QVBoxLayout;
    columna->setSpacing(6);
    for (const BotonAccion& b : botones) {
        QPushButton* boton = BotonPanel(QString::fromLatin1(b.nombre), QString::fromUtf8(b.texto), pantalla);
        QObject::connect(boton, &QPushButton::clicked, pantalla, b.accion);
        columna->addWidget(boton);
    }
    columna->addStretch(1);
    auto* salir = new QPushButton(QStringLiteral("Salir"), pantalla);
    salir->setObjectName(QString::fromLatin1(nombreSalir));
    salir->setAutoDefault(false);
    QObject::connect(salir, &QPushButton::clicked, pantalla, &QDialog::accept);
    columna->addWidget(salir);
    return columna;
}

} // namespace orv
