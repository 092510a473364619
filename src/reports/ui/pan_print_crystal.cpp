#include "reports/ui/pan_print_crystal.h"

#include "reports/catalogo.h"
#include "reports/ui/salida_informes.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"
#include "store/aviso.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orv {

PanMailto::PanMailto(const Configuracion& conf, QWidget* padre) : QDialog(padre) {
    setObjectName(QStringLiteral("panMailto"));
    setWindowTitle(QStringLiteral("Enviar por e-mail"));
    setModal(true);
    auto* capa = new QVBoxLayout(this);
    capa->setContentsMargins(18, 16, 18, 12);
    auto* f = new QFormLayout;
    txEnviarA_ = new QLineEdit(conf.lee(clave::configuracion, QStringLiteral("EmailDestino")), this);
    txEnviarA_->setObjectName(QStringLiteral("txEnviarA"));
    text1_ = new QLineEdit(conf.lee(clave::configuracion, QStringLiteral("EmailDestinoNombre")), this);
    text1_->setObjectName(QStringLiteral("Text1"));
    txAsunto_ = new QLineEdit(conf.lee(clave::configuracion, QStringLiteral("EmailTituloMensaje")), this);
    txAsunto_->setObjectName(QStringLiteral("txAsunto"));
    txCuerpo_ = new QPlainTextEdit(this);
    txCuerpo_->setObjectName(QStringLiteral("txCuerpo"));
    txCuerpo_->setPlainText(QStringLiteral("Ver archivo adjunto"));
    f->addRow(QStringLiteral("Enviar a :"), txEnviarA_);
    f->addRow(QStringLiteral("Nombre :"), text1_);
    f->addRow(QStringLiteral("Asunto :"), txAsunto_);
    f->addRow(QStringLiteral("Mensaje :"), txCuerpo_);
    capa->addLayout(f);
    connect(BotonesAlPie(this, capa), &QPushButton::clicked, this, &PanMailto::acepta);
    resize(520, 360);
    CentrarVentana(this);
    txEnviarA_->setFocus();
}

QString PanMailto::enviarA() const { return txEnviarA_->text().trimmed(); }
QString PanMailto::asunto() const { return txAsunto_->text(); }
QString PanMailto::cuerpo() const { return txCuerpo_->toPlainText(); }
QString PanMailto::nombre() const { return text1_->text().trimmed(); }
void PanMailto::fijaAsunto(const QString& asunto) { txAsunto_->setText(asunto); }

void PanMailto::acepta() {
    if (enviarA().isEmpty()) {
        MensajeError(QStringLiteral("Ingrese la dirección de correo del destinatario."), this);
        txEnviarA_->setFocus();
        return;
    }
    accept();
}

PanPrintCrystal::PanPrintCrystal(SalidaInformes& salida, const Configuracion& conf, QWidget* padre)
    : QDialog(padre), salida_(salida), conf_(conf) {
    setObjectName(QStringLiteral("panPrintCrystal"));
    setWindowTitle(QStringLiteral("Catálogo de informes"));
    setModal(true);
    auto* capa = new QGridLayout(this);
    capa->setContentsMargins(18, 16, 18, 14);
    capa->setHorizontalSpacing(14);
    auto* titulo = new QLabel(QStringLiteral("Informes disponibles :"), this);
    capa->addWidget(titulo, 0, 0);
    file1_ = new QListWidget(this);
    file1_->setObjectName(QStringLiteral("File1"));
    file1_->setMinimumWidth(300);
    capa->addWidget(file1_, 1, 0, 6, 1);

    // Cada nombre una vez: la copia de la carpeta de datos manda sobre la del programa.
    QStringList nombres;
    for (const QString& carpeta : CarpetasDeInformes(conf_.carpetaDatos()))
        for (const QString& n : QDir(carpeta).entryList({QStringLiteral("*.rpt"), QStringLiteral("*.RPT")}, QDir::Files))
            if (!nombres.contains(n, Qt::CaseInsensitive)) nombres << n;
    nombres.sort(Qt::CaseInsensitive);
    file1_->addItems(nombres);
    if (file1_->count() > 0) file1_->setCurrentRow(0);

    const auto boton = [this, capa](const char* nombre, const QString& texto, int fila, void (PanPrintCrystal::*accion)()) {
        auto* b = new QPushButton(texto, this);
        b->setObjectName(QString::fromLatin1(nombre));
        b->setMinimumWidth(210);
        b->setAutoDefault(false);
        capa->addWidget(b, fila, 1);
        connect(b, &QPushButton::clicked, this, accion);
        return b;
    };
    boton("Command1", QStringLiteral("Imprimir"), 1, &PanPrintCrystal::imprimir);
    boton("Command2", QStringLiteral("Vista Previa"), 2, &PanPrintCrystal::vistaPrevia);
    boton("Command4", QStringLiteral("Enviar por e-mail"), 3, &PanPrintCrystal::enviarMail);
    boton("Command5", QStringLiteral("Exportar diferentes formatos"), 4, &PanPrintCrystal::exportar);
    auto* cerrar = new QPushButton(QStringLiteral("&Cerrar"), this);
    cerrar->setObjectName(QStringLiteral("Command3"));
    cerrar->setAutoDefault(false);
    capa->addWidget(cerrar, 6, 1, Qt::AlignBottom);
    capa->setRowStretch(5, 1);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::reject);
    connect(file1_, &QListWidget::itemDoubleClicked, this, &PanPrintCrystal::vistaPrevia);

    eligeArchivo = [this] {
        QFileDialog d(this, QStringLiteral("Exportar a Html, Excel o Word"), QDir::homePath());
        d.setObjectName(QStringLiteral("cd1"));
        d.setAcceptMode(QFileDialog::AcceptSave);
        d.setOption(QFileDialog::DontUseNativeDialog);
        d.setOption(QFileDialog::DontConfirmOverwrite);
        d.setNameFilters({QStringLiteral("Archivo HTML (*.html)"), QStringLiteral("Archivo Excel (*.xlsx)"),
                          QStringLiteral("Archivo Word (*.odt)"), QStringLiteral("Documento PDF (*.pdf)")});
        if (d.exec() != QDialog::Accepted || d.selectedFiles().isEmpty()) return QString();
        QString archivo = d.selectedFiles().constFirst();
        if (QFileInfo(archivo).suffix().isEmpty()) {
            const QString filtro = d.selectedNameFilter();
            archivo += u'.' + filtro.mid(filtro.indexOf(QStringLiteral("(*.")) + 3).chopped(1);
        }
        return archivo;
    };

    resize(620, 380);
    CentrarVentana(this);
    file1_->setFocus();
}

QString PanPrintCrystal::elegido() const {
    const QListWidgetItem* i = file1_->currentItem();
    return i ? i->text() : QString();
}

void PanPrintCrystal::imprimir() {
    if (elegido().isEmpty()) return;
    // Como antes: el destino queda en la impresora para los informes que siguen.
    salida_.fijaDestino(SalidaInformes::Impresora);
    salida_.imprime(elegido(), Seleccion{});
}

void PanPrintCrystal::vistaPrevia() {
    if (elegido().isEmpty()) return;
    salida_.fijaDestino(SalidaInformes::Ventana);
    salida_.imprime(elegido(), Seleccion{});
}

void PanPrintCrystal::enviarMail() {
    if (elegido().isEmpty()) return;
    PanMailto datos(conf_, this);
    if (datos.exec() != QDialog::Accepted) return;
    // El informe va como página HTML, en la carpeta de datos; la del envío anterior se reemplaza.
    const QString archivo = QDir(conf_.carpetaDatos()).filePath(QStringLiteral("reporte.html"));
    Intenta(this, [&] {
        if (QFile::exists(archivo) && !QFile::remove(archivo))
            throw Aviso(QStringLiteral("No se pudo borrar el archivo ") + archivo);
        salida_.exporta(elegido(), Seleccion{}, archivo);
        salida_.enviaCorreo(datos.enviarA(), datos.nombre(), datos.asunto(), datos.cuerpo(), archivo);
        Mensaje(QStringLiteral("Informe enviado a ") + datos.enviarA(), QStringLiteral("Enviar por e-mail"),
                Icono::Informacion, this);
    });
}

void PanPrintCrystal::exportar() {
    if (elegido().isEmpty()) return;
    const QString archivo = eligeArchivo();
    if (archivo.isEmpty()) return;
    Intenta(this, [&] {
        if (!ConfirmaSobreescribir(archivo, this)) return;
        // La extensión elige el formato; otra cualquiera no exporta nada.
        const QString ext = QFileInfo(archivo).suffix().toLower();
        if (ext != QStringLiteral("html") && ext != QStringLiteral("htm") && ext != QStringLiteral("xlsx") &&
            ext != QStringLiteral("odt") && ext != QStringLiteral("pdf"))
            return;
        salida_.exporta(elegido(), Seleccion{}, archivo);
    });
}

} // namespace orv
