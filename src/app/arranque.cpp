#include "app/arranque.h"

#include "store/actualizacion.h"
#include "store/esquema.h"
#include "store/archivos.h"
#include "store/formato.h"

#include <QDir>
#include <QFileInfo>
#include <cmath>
#include <limits>
#include <optional>

namespace orv {

namespace {

const QString kIdRed = QStringLiteral("IdRed");
const QString kModulo = QStringLiteral("Orvanta");

// Valor entero de una configuración, si es numérica y cabe en el rango.
std::optional<qint64> entero(const QString& texto, qint64 minimo, qint64 maximo) {
    if (!EsNumerico(QStringView(texto))) return std::nullopt;
    const double v = std::round(Val(texto));
    if (!std::isfinite(v) || v < static_cast<double>(minimo) || v > static_cast<double>(maximo))
        return std::nullopt;
    return static_cast<qint64>(v);
}

} // namespace

int codigoSalida(FinArranque fin) {
    switch (fin) {
    case FinArranque::Ventana:
    case FinArranque::RegionalRechazado:
    case FinArranque::AlmacenVacio:
    case FinArranque::SinIngreso:
        return 0;
    case FinArranque::OtraInstancia:
        return 2;
    case FinArranque::SinAlmacen:
    case FinArranque::SinActualizar:
        return 1;
    }
    return 1;
}

Arranque::Arranque(const Configuracion& conf, const Reloj& reloj, InterfazArranque& ui)
    : conf_(conf), reloj_(reloj), ui_(ui) {
    estado_.carpetaDatos = conf.carpetaDatos();
}

Arranque::~Arranque() {
    almacen_.reset();
    bloqueo_.reset();
}

qint32 Arranque::LeeIdRed(const Configuracion& conf, const Reloj& reloj) {
    const QString texto = conf.lee(clave::miscelaneas, kIdRed);
    if (const auto v = entero(texto, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()))
        return static_cast<qint32>(*v);
    // Primera vez (o valor inválido): los segundos del reloj, de 0 a 59, quedan como número de terminal.
    const qint32 id = reloj.ahora().time().second();
    conf.graba(clave::miscelaneas, kIdRed, QString::number(id));
    return id;
}

QString Arranque::destinoAlmacen(const Configuracion& conf) {
    const QString base = conf.lee(clave::configuracion, QStringLiteral("BaseDatos")).trimmed();
    if (base.startsWith(QLatin1String("postgresql://"), Qt::CaseInsensitive) ||
        base.startsWith(QLatin1String("postgres://"), Qt::CaseInsensitive))
        return base;
    return QDir(conf.carpetaDatos()).filePath(kArchivoAlmacen);
}

bool Arranque::carpetaUtilizable(const QString& carpeta) {
    if (!CreaCarpetaPrivada(carpeta)) return false;
    return QFileInfo(carpeta).isWritable();
}

QString Arranque::textoFallaAlmacen(const QString& inicio, const ErrorAlmacen& e, int linea) {
    return inicio + QStringLiteral("Error detectado :") + e.descripcion() + QLatin1Char('\n') +
           QStringLiteral("Numero : ") + e.numero() + QLatin1Char('\n') + QStringLiteral("Modulo : ") + kModulo +
           QLatin1Char('\n') + QStringLiteral("Línea : ") + QString::number(linea);
}

QString Arranque::textoAlmacenDanado(const QString& archivo, const ErrorAlmacen& e) {
    const QFileInfo fi(archivo);
    return QStringLiteral("La base de datos del sistema está dañada y no se abrió: %1\n"
                          "Problema encontrado: %2\n"
                          "El programa no escribió nada en ella.\n\n"
                          "Para volver a trabajar, cierre el programa, guarde ese archivo en otro lugar (puede "
                          "servir para recuperar datos) y copie en la carpeta de datos %3 la última copia de "
                          "respaldo (un archivo ORVBACK_... de la carpeta donde guarda sus respaldos) con el "
                          "nombre %4.")
        .arg(QDir::toNativeSeparators(fi.absoluteFilePath()), e.descripcion(),
             QDir::toNativeSeparators(fi.absolutePath()), fi.fileName());
}

QString Arranque::textoAlmacenMasNuevo(int delAlmacen, int delPrograma) {
    return QStringLiteral("La base de datos del sistema fue actualizada por un Orvanta más nuevo que este: está en la "
                          "versión %1 del esquema y este programa llega hasta la versión %2.\n"
                          "Instale en este equipo la versión de Orvanta que usan los demás puestos. La base de "
                          "datos no se modificó.")
        .arg(delAlmacen)
        .arg(delPrograma);
}

QString Arranque::textoAlmacenVacio(const QString& archivo) {
    return QStringLiteral("El archivo de la base de datos del sistema está vacío (0 bytes): %1\n"
                          "Si es una instalación nueva, responda Sí y el programa preparará en él una base de "
                          "datos nueva.\nSi allí estaban sus datos, responda No: el programa termina sin tocar el "
                          "archivo, y puede reponer su última copia de respaldo.\n"
                          "¿Prepara una base de datos nueva en ese archivo?")
        .arg(QDir::toNativeSeparators(QFileInfo(archivo).absoluteFilePath()));
}

void Arranque::leeConfiguracion() {
    // 1. Terminal.
    estado_.IdRed = LeeIdRed(conf_, reloj_);

    // 2. Valores del país; el predeterminado no se graba.
    const auto textoO = [this](const QString& nombre, const QString& predeterminado) {
        const QString v = conf_.lee(clave::miscelaneas, nombre);
        return v.isEmpty() ? predeterminado : v;
    };
    estado_.ClaveImpositiva = textoO(QStringLiteral("ClaveImpositiva"), predeterminado::claveImpositiva);
    estado_.MascaraMoneda = textoO(QStringLiteral("MascaraMoneda"), predeterminado::mascaraMoneda);
    estado_.Pais = textoO(QStringLiteral("Pais"), predeterminado::pais);
}

bool Arranque::otraInstancia() {
    // Un programa por carpeta de datos. Un bloqueo que dejó un proceso muerto se descarta solo;
    // uno vivo no vence nunca.
    bloqueo_ = std::make_unique<QLockFile>(QDir(conf_.carpetaDatos()).filePath(kArchivoBloqueo));
    bloqueo_->setStaleLockTime(0);
    if (bloqueo_->tryLock(0)) return false;
    const bool tomado = bloqueo_->error() == QLockFile::LockFailedError;
    // Sin carpeta utilizable no hay bloqueo posible: el paso 9 informará la falla real.
    bloqueo_.reset();
    return tomado;
}

bool Arranque::aceptaAlmacenVacio() {
    const QString destino = destinoAlmacen(conf_);
    if (destino.startsWith(QLatin1String("postgres"), Qt::CaseInsensitive)) return true;
    const QFileInfo fi(destino);
    // Un almacén que perdió su contenido no se convierte callado en uno nuevo.
    if (!fi.isFile() || fi.size() != 0) return true;
    return ui_.pregunta(textoAlmacenVacio(destino), QStringLiteral("Atención"));
}

bool Arranque::abreAlmacen() {
    const QString destino = destinoAlmacen(conf_);
    try {
        // El archivo SQLite se controla antes de escribir nada: uno dañado no se actualiza ni se llena.
        almacen_ = Almacen::abre(destino, Apertura::ControlaIntegridad);
        estado_.almacenAbierto = almacen_->descripcion();
        return true;
    } catch (const AlmacenDanado& e) {
        ui_.mensaje(textoAlmacenDanado(destino, e), QStringLiteral("Error"), Icono::Stop);
    } catch (const ErrorAlmacen& e) {
        ui_.mensaje(textoFallaAlmacen(QStringLiteral("Error al intentar abrir la base de datos del sistema, "), e, 9),
                    QStringLiteral("Error"), Icono::Stop);
    } catch (const std::exception& e) {
        ui_.mensaje(textoFallaAlmacen(QStringLiteral("Error al intentar abrir la base de datos del sistema, "),
                                      ErrorAlmacen(QString::fromUtf8(e.what())), 9),
                    QStringLiteral("Error"), Icono::Stop);
    }
    almacen_.reset();
    return false;
}

bool Arranque::actualiza() {
    try {
        actualizaEsquema(*almacen_);
        JuntaTotalesCaja(*almacen_);
        return true;
    } catch (const AlmacenMasNuevo& e) {
        ui_.mensaje(textoAlmacenMasNuevo(e.delAlmacen(), e.delPrograma()), QStringLiteral("Error"), Icono::Stop);
    } catch (const ErrorAlmacen& e) {
        ui_.mensaje(textoFallaAlmacen(QStringLiteral("Error al actualizar la base de datos del sistema, "), e, 10),
                    QStringLiteral("Error"), Icono::Stop);
    } catch (const std::exception& e) {
        ui_.mensaje(textoFallaAlmacen(QStringLiteral("Error al actualizar la base de datos del sistema, "),
                                      ErrorAlmacen(QString::fromUtf8(e.what())), 10),
                    QStringLiteral("Error"), Icono::Stop);
    }
    return false;
}

bool Arranque::controlRegional() {
    estado_.regional = ui_.separadoresRegionales();
    if (FormatoRegionalValido(estado_.regional)) return true;
    // El programa usa siempre su propio formato: con Sí sigue, con No termina. El sistema no se toca.
    return ui_.pregunta(TextoProblemaRegional(), QString());
}

FinArranque Arranque::ejecuta() {
    // 1 y 2.
    leeConfiguracion();

    // 3. Carpeta de datos (sólo con almacén SQLite; un BASE.db que falta se crea en el paso 9).
    const QString destino = destinoAlmacen(conf_);
    const bool conServidor = destino.startsWith(QLatin1String("postgres"), Qt::CaseInsensitive);
    if (!conServidor && !carpetaUtilizable(conf_.carpetaDatos()))
        ui_.mensaje(kMensajeSinAlmacen, kTituloSinAlmacen, Icono::Exclamacion);

    // 4. Cifras de los códigos de artículo.
    const auto cifras = [this](const QString& nombre, qint16 predeterminado) {
        const auto v = entero(conf_.lee(clave::miscelaneas, nombre), std::numeric_limits<qint16>::min(),
                              std::numeric_limits<qint16>::max());
        return v ? static_cast<qint16>(*v) : predeterminado;
    };
    estado_.NroCifrasArticulo = cifras(QStringLiteral("NroCifrasArticulo"), predeterminado::nroCifrasArticulo);
    estado_.NroCifrasRubro = cifras(QStringLiteral("NroCifrasRubro"), predeterminado::nroCifrasRubro);

    // 5. Forma de cálculo de los puntos.
    const QString vip = QStringLiteral("FormaCalculoVIP");
    if (conf_.lee(clave::miscelaneas, vip).isEmpty()) conf_.graba(clave::miscelaneas, vip, QStringLiteral("P"));

    // 6. Una sola instancia.
    if (otraInstancia()) {
        ui_.mensaje(kMensajeOtraInstancia, QStringLiteral("Error"), Icono::Stop);
        return FinArranque::OtraInstancia;
    }

    // 8. Portada.
    ui_.muestraPortada();

    // 9. Almacén.
    if (!aceptaAlmacenVacio()) return FinArranque::AlmacenVacio;
    if (!abreAlmacen()) return FinArranque::SinAlmacen;

    // 10. Esquema al día.
    if (!actualiza()) return FinArranque::SinActualizar;

    // 11. Pantalla.
    if (ui_.anchoPantalla() < 800) ui_.mensaje(kMensajePantalla, kTituloPantalla, Icono::Exclamacion);

    // 12. Formato regional.
    if (!controlRegional()) return FinArranque::RegionalRechazado;

    // 13. Ingreso.
    if (!ui_.login(*almacen_, estado_)) return FinArranque::SinIngreso;

    // 14. Ventana principal.
    ui_.muestraVentana(*almacen_, estado_, conf_);
    return FinArranque::Ventana;
}

} // namespace orv
