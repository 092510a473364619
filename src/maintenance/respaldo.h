#pragma once
// Respaldo del almacén y de la configuración de la máquina en una carpeta elegida.
//
// Dos archivos nombrados por la fecha y la hora: "ORVBACK_" + AAAAMMDDHHMMSS con el almacén
// (".db" en SQLite, ".dump" en PostgreSQL) y "ORVREGBACK" + AAAAMMDDHHMMSS + ".ini" con la
// configuración. El almacén se copia coherente aunque esté en uso: SQLite por su copia en línea,
// dentro de una sola lectura; PostgreSQL por pg_dump de la versión mayor del servidor. La copia
// corre fuera del hilo de la ventana (un hilo o un proceso) y avisa su avance.

#include "app/configuracion.h"
#include "store/almacen.h"

#include <QDateTime>
#include <QEventLoop>
#include <QObject>
#include <QString>
#include <QStringList>
#include <atomic>
#include <functional>
#include <memory>
#include <utility>

class QProcess;
class QThread;
class QTimer;

namespace orv {

inline const QString kPrefijoRespaldo = QStringLiteral("ORVBACK_");
inline const QString kPrefijoConfiguracion = QStringLiteral("ORVREGBACK");
inline const QString kExtensionSQLite = QStringLiteral(".db");
inline const QString kExtensionPostgreSQL = QStringLiteral(".dump");

struct ArchivosRespaldo {
    QString almacen;       // nombre del archivo del almacén, sin carpeta
    QString configuracion; // nombre del archivo de la configuración
};

// Los nombres de los dos archivos de un respaldo hecho en `momento`.
ArchivosRespaldo NombresDeRespaldo(const QDateTime& momento, Dialecto dialecto);

// El primer momento desde `momento` cuyo respaldo no pisa otro de `carpeta` (los respaldos que el
// programa hace por su cuenta nunca reemplazan uno anterior).
QDateTime MomentoLibre(const QString& carpeta, const QDateTime& momento, Dialecto dialecto);

// Carpeta de los respaldos que el programa hace por su cuenta (antes de purgar o de restaurar):
// la del último respaldo hecho a mano, si sigue existiendo; si no, "Respaldos" en la carpeta de datos.
QString CarpetaRespaldos(const Configuracion& conf);
// Anota la carpeta del último respaldo hecho a mano.
void AnotaCarpetaRespaldos(const Configuracion& conf, const QString& carpeta);

// El programa de PostgreSQL (pg_dump, pg_restore) de la versión mayor `mayor` del servidor, o de
// una más nueva (las dos leen servidores más viejos). Vacío si no hay ninguno en la máquina.
QString BuscaProgramaPostgreSQL(const QString& nombre, int mayor);
// Versión mayor del servidor al que está conectado el almacén.
int VersionMayorServidor(Almacen& almacen);
// Ruta del programa de PostgreSQL que corresponde al servidor; lanza Aviso si no está.
QString ProgramaParaServidor(Almacen& almacen, const QString& nombre);

// Dirección del servidor y su clave por separado: la clave viaja a los programas de PostgreSQL
// en PGPASSWORD, nunca en la línea de órdenes.
struct DireccionServidor {
    QString uri;
    QString clave;
};
DireccionServidor SeparaClave(const QString& uri);

// Copia en línea de un almacén SQLite en un archivo nuevo `destino`: una instantánea coherente
// aunque otra conexión esté escribiendo, con el diario del archivo nuevo en modo DELETE (un solo
// archivo). `porcentaje` recibe el avance; `cancela` se mira entre tramos. Vacío si salió bien, o
// el texto del error. Corre en cualquier hilo (no usa las conexiones de Qt).
QString CopiaEnLineaSQLite(const QString& origen, const QString& destino, std::atomic<int>* porcentaje = nullptr,
                           const std::atomic<bool>* cancela = nullptr);

// El tamaño de un archivo para leerlo de un vistazo ("588.0 kB", "1.1 GB").
QString TamanoLegible(qint64 bytes);

// Renombra reemplazando al que ya estuviera (en un solo paso).
bool ReemplazaArchivo(const QString& desde, const QString& hasta);

struct ResultadoRespaldo {
    QString almacen;       // ruta del archivo del almacén
    QString configuracion; // ruta del archivo de la configuración
    qint64 bytes = 0;      // tamaño del archivo del almacén
};

// Un respaldo en curso. Se crea con todo controlado (lanza Aviso si la carpeta no sirve o falta
// pg_dump); `empieza` lo lanza y vuelve enseguida; `termino` llega una sola vez.
class Respaldo : public QObject {
    Q_OBJECT
public:
    Respaldo(Almacen& almacen, const Configuracion& conf, const QString& carpeta, const QDateTime& momento,
             QObject* padre = nullptr);
    ~Respaldo() override;

    void empieza();
    bool enCurso() const { return enCurso_; }
    const ResultadoRespaldo& resultado() const { return resultado_; }

Q_SIGNALS:
    void avance(int porcentaje);
    // ok: los dos archivos quedaron escritos; si no, `detalle` dice qué falló.
    void termino(bool ok, const QString& detalle);

private:
    void empiezaSQLite();
    void empiezaPostgreSQL();
    void leeAvancePostgreSQL();
    void acaba(const QString& error);

    Almacen& almacen_;
    const Configuracion& conf_;
    QString carpeta_;
    ArchivosRespaldo nombres_;
    QString parcial_;
    ResultadoRespaldo resultado_;
    bool enCurso_ = false;

    QThread* hilo_ = nullptr;
    QTimer* vigia_ = nullptr;
    std::atomic<int> porcentaje_{0};
    std::atomic<bool> cancela_{false};
    QString errorHilo_;

    QProcess* proceso_ = nullptr;
    QString programa_;
    DireccionServidor servidor_;
    QString esquema_;
    int tablas_ = 1;
    int tablasHechas_ = 0;
    QStringList salidaProceso_;
};

// Lanza una tarea (Respaldo, Restauracion) y espera, atendiendo los eventos, a su señal termino;
// devuelve lo que dijo.
template <typename Tarea>
std::pair<bool, QString> EsperaTermino(Tarea& tarea) {
    std::pair<bool, QString> fin{false, {}};
    bool terminada = false;
    QEventLoop bucle;
    QObject::connect(&tarea, &Tarea::termino, &bucle, [&](bool ok, const QString& detalle) {
        fin = {ok, detalle};
        terminada = true;
        bucle.quit();
    });
    tarea.empieza();
    if (!terminada) bucle.exec();
    return fin;
}

// Un respaldo entero, esperando su final. Lanza Aviso si falla.
ResultadoRespaldo HaceRespaldo(Almacen& almacen, const Configuracion& conf, const QString& carpeta,
                               const QDateTime& momento, const std::function<void(int)>& avance = {});

} // namespace orv
