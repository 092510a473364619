#include "app/arranque.h"
#include "app/configuracion.h"
#include "app/ui/aplicacion.h"
#include "app/ui/interfaz_arranque_qt.h"
#include "maintenance/datos_ejemplo.h"
#include "sales/cliente_venta.h"
#include "reports/catalogo.h"
#include "reports/informe.h"
#include "store/actualizacion.h"
#include "store/aviso.h"
#include "store/reloj.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDateTime>
#include <QDir>
#include <QGuiApplication>
#include <QLocale>
#include <QStandardPaths>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

QString version() {
    return QStringLiteral("%1.%2.%3").arg(ORVANTA_VERSION_MAYOR).arg(ORVANTA_VERSION_MENOR).arg(ORVANTA_VERSION_REVISION);
}

// Las órdenes que no abren ventanas tampoco necesitan pantalla.
bool sinVentanas(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        for (const char* o : {"--version", "--datos-ejemplo", "-h", "--ayuda", "--help"})
            if (std::strcmp(argv[i], o) == 0) return true;
    }
    return false;
}

// --datos, si no ORVANTA_DATOS, si no la carpeta de datos del usuario (~/.local/share/Orvanta).
QString carpetaDeDatos(const QCommandLineParser& p, const QCommandLineOption& datos) {
    QString carpeta = p.value(datos);
    if (carpeta.isEmpty()) carpeta = qEnvironmentVariable("ORVANTA_DATOS");
    if (carpeta.isEmpty()) carpeta = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return QDir::cleanPath(QDir::current().absoluteFilePath(carpeta));
}

void error(const QString& texto) { std::fprintf(stderr, "%s\n", qUtf8Printable(texto)); }

// Crea (si hace falta) y actualiza el almacén, y lo llena con los datos de ejemplo.
int cargaEjemplo(const orv::Configuracion& conf, const orv::Reloj& reloj) {
    const QString destino = orv::Arranque::destinoAlmacen(conf);
    const bool conServidor = destino.startsWith(QLatin1String("postgres"), Qt::CaseInsensitive);
    if (!conServidor && !orv::Arranque::carpetaUtilizable(conf.carpetaDatos())) {
        error(orv::kMensajeSinAlmacen + QStringLiteral(" (") + conf.carpetaDatos() + QLatin1Char(')'));
        return 1;
    }
    try {
        auto a = orv::Almacen::abre(destino, orv::Apertura::ControlaIntegridad);
        orv::actualizaEsquema(*a);
        orv::cargaDatosEjemplo(*a, reloj);
        // El comercio de ejemplo vende casi siempre al consumidor final: cada venta empieza con él.
        orv::FijaClientePredeterminado(*a, conf, QStringLiteral("1"));
        const auto cuenta = [&a](const char* tabla) {
            return a->valor(QStringLiteral("SELECT count(*) FROM ") + QLatin1String(tabla)).toLongLong();
        };
        std::printf("Datos de ejemplo cargados en %s: %lld artículos, %lld clientes, %lld proveedores, %lld rubros, "
                    "%lld comprobantes.\n",
                    qUtf8Printable(a->descripcion()), cuenta("Articulos"), cuenta("Vendedores"),
                    cuenta("Proveedores"), cuenta("Rubros"), cuenta("Comprobantes"));
        return 0;
    } catch (const orv::Aviso& e) {
        error(e.texto());
    } catch (const orv::AlmacenDanado& e) {
        error(orv::Arranque::textoAlmacenDanado(orv::Arranque::destinoAlmacen(conf), e));
    } catch (const orv::AlmacenMasNuevo& e) {
        error(orv::Arranque::textoAlmacenMasNuevo(e.delAlmacen(), e.delPrograma()));
    } catch (const orv::ErrorAlmacen& e) {
        error(QStringLiteral("Error detectado : ") + e.descripcion() + QStringLiteral(" - ") + e.numero());
    } catch (const std::exception& e) {
        error(QString::fromUtf8(e.what()));
    }
    return 1;
}

// Arma un informe del catálogo sobre el almacén de la carpeta de datos y lo guarda en un archivo,
// sin abrir ventanas.
int informe(const orv::Configuracion& conf, const orv::Reloj& reloj, const QString& nombre, const QString& desdeTexto,
            const QString& hastaTexto, const QString& archivo) {
    const QDate hoy = reloj.hoy();
    const QDate desde = desdeTexto.isEmpty() ? hoy : QDate::fromString(desdeTexto, Qt::ISODate);
    const QDate hasta = hastaTexto.isEmpty() ? hoy : QDate::fromString(hastaTexto, Qt::ISODate);
    if (!desde.isValid() || !hasta.isValid()) {
        error(QStringLiteral("Fecha mal escrita: use AAAA-MM-DD."));
        return 2;
    }
    if (archivo.isEmpty()) {
        error(QStringLiteral("Falta --archivo con la salida (.pdf, .html, .odt, .xlsx o .csv)."));
        return 2;
    }
    const QString ruta = orv::BuscaDefinicion(nombre, conf.carpetaDatos());
    if (ruta.isEmpty()) {
        error(QStringLiteral("No se encuentra el informe ") + nombre);
        return 1;
    }
    try {
        auto a = orv::Almacen::abre(orv::Arranque::destinoAlmacen(conf), orv::Apertura::ControlaIntegridad);
        orv::actualizaEsquema(*a);
        QString mascara = conf.lee(orv::clave::miscelaneas, QStringLiteral("MascaraMoneda"));
        if (mascara.isEmpty()) mascara = orv::predeterminado::mascaraMoneda;
        const int n = orv::GuardaInforme(*a, orv::LeeDefinicion(ruta), orv::SeleccionUsual(nombre, desde, hasta),
                                         mascara, reloj.ahora(), archivo);
        std::printf("%s: %d\n", qUtf8Printable(archivo), n);
        return 0;
    } catch (const orv::Aviso& e) {
        error(e.texto());
    } catch (const orv::AlmacenDanado& e) {
        error(orv::Arranque::textoAlmacenDanado(orv::Arranque::destinoAlmacen(conf), e));
    } catch (const orv::AlmacenMasNuevo& e) {
        error(orv::Arranque::textoAlmacenMasNuevo(e.delAlmacen(), e.delPrograma()));
    } catch (const orv::ErrorAlmacen& e) {
        error(QStringLiteral("Error detectado : ") + e.descripcion() + QStringLiteral(" - ") + e.numero());
    } catch (const std::exception& e) {
        error(QString::fromUtf8(e.what()));
    }
    return 1;
}

bool conInforme(int argc, char** argv) {
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--informe") == 0) return true;
    return false;
}

} // namespace

int main(int argc, char** argv) {
    std::unique_ptr<QCoreApplication> app;
    if (conInforme(argc, argv)) {
        // Informes sin ventanas: hace falta Gui (letras, PDF) pero no una pantalla.
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        app = std::make_unique<QGuiApplication>(argc, argv);
    } else if (sinVentanas(argc, argv)) app = std::make_unique<QCoreApplication>(argc, argv);
    else app = std::make_unique<orv::AplicacionOrvanta>(argc, argv);
    QCoreApplication::setOrganizationName(QString());
    QCoreApplication::setApplicationName(QStringLiteral("Orvanta"));
    QCoreApplication::setApplicationVersion(version());
    // Ningún control da formato con la configuración regional del sistema.
    QLocale::setDefault(QLocale::c());

    QCommandLineParser p;
    p.setApplicationDescription(QStringLiteral("Orvanta: gestión comercial y punto de venta."));
    const QCommandLineOption ayuda({QStringLiteral("h"), QStringLiteral("ayuda"), QStringLiteral("help")},
                                   QStringLiteral("Muestra esta ayuda."));
    const QCommandLineOption datos(QStringLiteral("datos"),
                                   QStringLiteral("Carpeta de datos (base, configuración). También ORVANTA_DATOS."),
                                   QStringLiteral("carpeta"));
    const QCommandLineOption ejemplo(QStringLiteral("datos-ejemplo"),
                                     QStringLiteral("Carga los datos de ejemplo en un almacén nuevo y termina."));
    const QCommandLineOption verVersion(QStringLiteral("version"), QStringLiteral("Muestra la versión."));
    p.addOption(ayuda);
    p.addOption(datos);
    p.addOption(ejemplo);
    p.addOption(verVersion);
    const QCommandLineOption optInforme(QStringLiteral("informe"),
                                        QStringLiteral("Arma un informe del catálogo (NOMBRE.rpt) sin ventanas."),
                                        QStringLiteral("nombre"));
    const QCommandLineOption optDesde(QStringLiteral("desde"), QStringLiteral("Comienzo del período (AAAA-MM-DD)."),
                                      QStringLiteral("fecha"));
    const QCommandLineOption optHasta(QStringLiteral("hasta"), QStringLiteral("Fin del período (AAAA-MM-DD)."),
                                      QStringLiteral("fecha"));
    const QCommandLineOption optArchivo(QStringLiteral("archivo"),
                                        QStringLiteral("Archivo de salida del informe: .pdf, .html, .odt, .xlsx o .csv."),
                                        QStringLiteral("archivo"));
    p.addOption(optInforme);
    p.addOption(optDesde);
    p.addOption(optHasta);
    p.addOption(optArchivo);
    if (!p.parse(QCoreApplication::arguments())) {
        error(p.errorText());
        return 2;
    }
    if (p.isSet(ayuda)) {
        QString texto = p.helpText();
        texto.replace(QLatin1String("Usage:"), QLatin1String("Uso:"));
        texto.replace(QLatin1String("Options:"), QLatin1String("Opciones:"));
        std::printf("%s", qUtf8Printable(texto));
        return 0;
    }
    if (p.isSet(verVersion)) {
        std::printf("Orvanta %s\n", qUtf8Printable(version()));
        return 0;
    }

    const orv::Configuracion conf(carpetaDeDatos(p, datos));
    const orv::Reloj reloj;
    if (p.isSet(ejemplo)) return cargaEjemplo(conf, reloj);
    if (p.isSet(optInforme))
        return informe(conf, reloj, p.value(optInforme), p.value(optDesde), p.value(optHasta), p.value(optArchivo));

    // Desde aquí, lo que falle queda anotado en la carpeta de datos.
    orv::AplicacionOrvanta::registraEn(conf.carpetaDatos());
    orv::InterfazArranqueQt ui(reloj);
    orv::Arranque arranque(conf, reloj, ui);
    const orv::FinArranque fin = arranque.ejecuta();
    if (fin != orv::FinArranque::Ventana) return orv::codigoSalida(fin);
    return QCoreApplication::exec();
}
