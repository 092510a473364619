#include "reports/ui/salida_informes.h"

#include "reports/catalogo.h"
#include "reports/correo.h"
#include "reports/ui/visor_informe.h"
#include "widgets/mensajes.h"
#include "widgets/ventanas.h"
#include "store/aviso.h"
#include "store/entrada.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTemporaryDir>
#include <optional>

namespace orv {

namespace {

// El correo que lleva un informe no salió: el aviso trae el motivo que dio el servidor.
class FallaDelEnvio : public Aviso {
public:
    explicit FallaDelEnvio(const Aviso& a) : Aviso(a) {}
};

// Nombre de archivo sin caracteres que los sistemas de archivos no aceptan.
QString nombreLimpio(const QString& s) {
    QString r;
    for (QChar c : s) r += (c.isLetterOrNumber() || c == u'-' || c == u'_') ? c : QChar(u'_');
    return r.isEmpty() ? QStringLiteral("informe") : r;
}

// Impresora con la página del informe y las copias pedidas.
void preparaImpresora(QPrinter& p, const InformeArmado& inf, int copias) {
    p.setPageSize(QPageSize(inf.pagina));
    p.setPageOrientation(inf.horizontal ? QPageLayout::Landscape : QPageLayout::Portrait);
    p.setCopyCount(copias);
    p.setDocName(inf.titulo);
}

} // namespace

bool ConfirmaSobreescribir(const QString& archivo, QWidget* padre) {
    if (!QFileInfo::exists(archivo)) return true;
    QMessageBox caja(QMessageBox::Warning, QStringLiteral("Atención"),
                     QStringLiteral("El archivo ") + archivo + QStringLiteral(" ya existe, desea sobreescribirlo?"),
                     QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, padre);
    caja.button(QMessageBox::Yes)->setText(QStringLiteral("Sí"));
    caja.button(QMessageBox::No)->setText(QStringLiteral("No"));
    caja.button(QMessageBox::Cancel)->setText(QStringLiteral("Cancelar"));
    caja.setDefaultButton(QMessageBox::No);
    if (caja.exec() != QMessageBox::Yes) return false;
    if (!QFile::remove(archivo)) throw Aviso(QStringLiteral("No se pudo borrar el archivo ") + archivo);
    return true;
}

QString EligeArchivoInforme(QWidget* padre, const QString& titulo, const QString& carpeta) {
    QFileDialog dialogo(padre, titulo, carpeta);
    dialogo.setObjectName(QStringLiteral("cd1"));
    dialogo.setAcceptMode(QFileDialog::AcceptSave);
    dialogo.setOption(QFileDialog::DontUseNativeDialog);
    // La pregunta por el archivo existente es la del sistema, no la del diálogo.
    dialogo.setOption(QFileDialog::DontConfirmOverwrite);
    dialogo.setNameFilters({QStringLiteral("Documento PDF (*.pdf)"), QStringLiteral("Archivo HTML (*.html)"),
                            QStringLiteral("Archivo Excel (*.xlsx)"), QStringLiteral("Documento de texto ODT (*.odt)"),
                            QStringLiteral("Valores separados por comas (*.csv)")});
    dialogo.setDefaultSuffix(QStringLiteral("pdf"));
    if (dialogo.exec() != QDialog::Accepted || dialogo.selectedFiles().isEmpty()) return {};
    QString archivo = dialogo.selectedFiles().constFirst();
    // Sin extensión: la del filtro elegido.
    if (QFileInfo(archivo).suffix().isEmpty()) {
        const QString filtro = dialogo.selectedNameFilter();
        const qsizetype i = filtro.indexOf(QStringLiteral("(*."));
        if (i >= 0) archivo += u'.' + filtro.mid(i + 3).chopped(1);
    }
    return ConfirmaSobreescribir(archivo, padre) ? archivo : QString();
}

SalidaInformes::SalidaInformes(Almacen& almacen, const Configuracion& conf, const EstadoAplicacion& estado,
                               const Reloj& reloj, QWidget* ventana)
    : QObject(ventana), almacen_(almacen), conf_(conf), estado_(estado), reloj_(reloj), ventana_(ventana) {
    eligeImpresora = [this](QPrinter& p) {
        QPrintDialog dialogo(&p, ventana_);
        dialogo.setWindowTitle(QStringLiteral("Imprimir"));
        return dialogo.exec() == QDialog::Accepted;
    };
    eligeArchivo = [this](const QString& titulo) {
        return EligeArchivoInforme(ventana_, QStringLiteral("Guardar ") + titulo, QDir::homePath());
    };
    enviaCorreo = [this](const QString& para, const QString& nombre, const QString& asunto, const QString& mensaje,
                         const QString& adjunto) { EnviaMail(LeeDatosCorreo(conf_), para, asunto, mensaje, nombre, adjunto); };
}

void SalidaInformes::fijaDestino(const QString& textoCombo, const QString& copias) {
    textoCombo_ = textoCombo;
    textoCopias_ = copias;
    const QChar c = textoCombo.isEmpty() ? QChar(u'0') : textoCombo.at(0);
    destino_ = (c >= u'0' && c <= u'4') ? Destino(c.unicode() - u'0') : Ventana;
    fijaCopias(copias);
    if (destino_ == Correo) {
        destinatario_ = conf_.lee(clave::configuracion, QStringLiteral("EmailDestino"));
        nombreDestinatario_ = conf_.lee(clave::configuracion, QStringLiteral("EmailDestinoNombre"));
        asunto_ = conf_.lee(clave::configuracion, QStringLiteral("EmailTituloMensaje"));
        mensaje_ = QStringLiteral("Ver archivo adjunto");
    }
}

void SalidaInformes::fijaCopias(const QString& copias) {
    const QString t = copias.trimmed();
    // Text10 sólo admite enteros de 1 a 999; otra cosa (vacío, mientras se escribe) es una copia.
    copias_ = int(LeeEntero(t, 1, 999).value_or(1));
}

void SalidaInformes::reinicia() {
    destino_ = Ventana;
    copias_ = 1;
    asunto_.clear();
    mensaje_.clear();
    destinatario_.clear();
    nombreDestinatario_.clear();
}

DefinicionInforme SalidaInformes::definicion(const QString& nombre) const {
    const QString ruta = BuscaDefinicion(nombre, conf_.carpetaDatos());
    if (ruta.isEmpty()) throw Aviso(QStringLiteral("Error en la lectura de la plantilla : ") + nombre);
    return LeeDefinicion(ruta);
}

InformeArmado SalidaInformes::arma(const DefinicionInforme& d, const Seleccion& s) const {
    return ArmaInforme(almacen_, d, s, estado_.MascaraMoneda, reloj_.ahora());
}

void SalidaInformes::guarda(const DefinicionInforme& d, const Seleccion& s, const QString& archivo) const {
    GuardaInforme(almacen_, d, s, estado_.MascaraMoneda, reloj_.ahora(), archivo);
}

void SalidaInformes::exporta(const QString& nombre, const Seleccion& seleccion, const QString& archivo) {
    guarda(definicion(nombre), seleccion, archivo);
}

void SalidaInformes::correo(const DefinicionInforme& d, const QString& titulo, const Seleccion& seleccion,
                            const QString& para, const QString& nombrePara, const QString& asunto,
                            const QString& mensaje) {
    QTemporaryDir dir(QDir(conf_.carpetaDatos()).filePath(QStringLiteral("envio-XXXXXX")));
    if (!dir.isValid()) throw Aviso(QStringLiteral("No se pudo preparar el adjunto en ") + conf_.carpetaDatos());
    const QString pdf = dir.filePath(nombreLimpio(titulo) + QStringLiteral(".pdf"));
    guarda(d, seleccion, pdf);
    try {
        enviaCorreo(para, nombrePara, asunto, mensaje, pdf);
    } catch (const Aviso& a) {
        throw FallaDelEnvio(a);
    }
}

void SalidaInformes::enviaPorCorreo(const QString& nombre, const Seleccion& seleccion, const QString& para,
                                    const QString& nombrePara, const QString& asunto, const QString& mensaje) {
    const DefinicionInforme d = definicion(nombre);
    correo(d, d.titulo.isEmpty() ? QFileInfo(nombre).completeBaseName() : d.titulo, seleccion, para, nombrePara, asunto,
           mensaje);
}

bool SalidaInformes::emite(const QString& nombre, const Seleccion& seleccion) {
    const DefinicionInforme d = definicion(nombre);
    const QString titulo = d.titulo.isEmpty() ? QFileInfo(nombre).completeBaseName() : d.titulo;
    switch (destino_) {
    case Archivo: {
        const QString archivo = eligeArchivo(titulo);
        if (archivo.isEmpty()) return false;
        guarda(d, seleccion, archivo);
        return true;
    }
    case Correo: {
        if (destinatario_.trimmed().isEmpty()) throw Aviso(QStringLiteral("Verificar datos de configuración!"));
        correo(d, titulo, seleccion, destinatario_, nombreDestinatario_, asunto_, mensaje_);
        return true;
    }
    case Impresora: {
        const InformeArmado inf = arma(d, seleccion);
        QPrinter impresora(QPrinter::HighResolution);
        preparaImpresora(impresora, inf, copias_);
        if (!eligeImpresora(impresora)) return false;
        PintaInforme(inf, impresora);
        return true;
    }
    case VistaPrevia: {
        const InformeArmado inf = arma(d, seleccion);
        QPrinter impresora(QPrinter::HighResolution);
        preparaImpresora(impresora, inf, copias_);
        QPrintPreviewDialog vista(&impresora, ventana_);
        vista.setObjectName(QStringLiteral("vistaPrevia"));
        vista.setWindowTitle(QStringLiteral("Vista previa - ") + inf.titulo);
        connect(&vista, &QPrintPreviewDialog::paintRequested, &vista, [&inf](QPrinter* p) { PintaInforme(inf, *p); });
        TamanioDeLectura(&vista);
        vista.exec();
        return true;
    }
    case Ventana: break;
    }
    const InformeArmado inf = arma(d, seleccion);
    auto* visor = new VisorInforme(inf, [this, d, seleccion](const QString& archivo) { guarda(d, seleccion, archivo); },
                                   ventana_);
    visor->show();
    visor->raise();
    visor->activateWindow();
    // Al cerrarlo (Esc), la ventana de la que salió vuelve al frente con el foco donde lo dejó: en
    // la venta, el campo con que empieza la venta siguiente.
    if (ventana_)
        connect(visor, &QObject::destroyed, ventana_, [w = QPointer<QWidget>(ventana_)] {
            if (w) w->window()->activateWindow();
        });
    visor_ = visor;
    return true;
}

bool SalidaInformes::imprimeComprobante(const QString& plantilla, qint64 idComprobante) {
    bool salio = false;
    // Si lo que falló es el correo, se dice por qué (el servidor no atiende, rechazó la clave...):
    // la plantilla está bien y culparla mandaría a buscar el problema donde no está.
    std::optional<Aviso> envio;
    Intenta(ventana_,
            [&] {
                try {
                    salio = emite(plantilla, SeleccionComprobante(idComprobante));
                } catch (const FallaDelEnvio& f) {
                    envio = f;
                }
            },
            QStringLiteral("Error en la lectura de la plantilla : ") + plantilla);
    if (envio) MuestraAviso(*envio, ventana_);
    return salio;
}

bool SalidaInformes::imprime(const QString& nombre, const Seleccion& seleccion) {
    bool emitido = false;
    Intenta(ventana_, [&] { emitido = emite(nombre, seleccion); });
    return emitido;
}

} // namespace orv
