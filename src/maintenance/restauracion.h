#pragma once
// Restauración de un respaldo: el almacén y la configuración vuelven a como estaban.
//
// Antes de tocar nada se controla la copia (que sea un respaldo de este programa, entero, de un
// esquema que este programa conoce) y se respalda el almacén actual. En SQLite el contenido
// entra en el almacén en uso en una sola transacción de escritura, con los demás puestos
// conectados: si algo falla a mitad, el almacén queda como estaba. Después se cuentan las filas
// de cada tabla y se comparan con las de la copia; si no coinciden, vuelve el almacén anterior.
// En PostgreSQL, pg_restore en una sola transacción.

#include "app/configuracion.h"
#include "store/almacen.h"

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <atomic>
#include <functional>

namespace orv {

enum class TipoRespaldo { SQLite, PostgreSQL };

struct InfoRespaldo {
    QString ruta;
    TipoRespaldo tipo = TipoRespaldo::SQLite;
    QDateTime momento;     // el de su nombre; si el nombre no lo dice, el de la última escritura
    qint64 bytes = 0;
    QString configuracion; // el archivo de configuración del mismo momento, vacío si no está
};

// Mira el comienzo del archivo; lanza Aviso si no es un respaldo de este programa.
InfoRespaldo ExaminaRespaldo(const QString& ruta);
// Los respaldos de una carpeta, del más nuevo al más viejo.
QList<InfoRespaldo> RespaldosEnCarpeta(const QString& carpeta);

using FilasPorTabla = QMap<QString, qint64>;

// El control completo de una copia SQLite: íntegra, de este programa y de un esquema conocido.
struct ControlCopia {
    QString error; // vacío si la copia sirve
    FilasPorTabla filas;
};
ControlCopia ControlaCopiaSQLite(const QString& ruta);
// Las filas de cada tabla de un archivo SQLite (o el error, en `error`).
ControlCopia CuentaFilasSQLite(const QString& ruta);

// Pone en el almacén SQLite `vivo` el contenido de `copia`, en una sola transacción de escritura.
// Vacío si salió bien, o el texto del error (y el almacén sigue como estaba).
QString VuelcaSQLite(const QString& copia, const QString& vivo, std::atomic<int>* porcentaje = nullptr);

// Repone la configuración de la máquina desde un respaldo, conservando la terminal y la
// dirección del almacén de esta máquina. Falso si no pudo escribirla.
bool RestauraConfiguracion(const Configuracion& conf, const QString& archivo);

struct ResultadoRestauracion {
    QString respaldoPrevio; // el respaldo del almacén reemplazado (vacío si estaba vacío)
    FilasPorTabla filas;    // las filas de cada tabla después de restaurar
    bool configuracion = false;
};

class Restauracion : public QObject {
    Q_OBJECT
public:
    // Controla lo que se puede sin leer la copia entera; lanza Aviso si no se puede restaurar.
    Restauracion(Almacen& almacen, const Configuracion& conf, const InfoRespaldo& respaldo, bool conConfiguracion,
                 const QDateTime& momento, QObject* padre = nullptr);
    ~Restauracion() override;

    void empieza();
    const ResultadoRestauracion& resultado() const { return resultado_; }

Q_SIGNALS:
    void etapa(const QString& texto);
    void avance(int porcentaje);
    void termino(bool ok, const QString& detalle);

private:
    void controla();
    void respaldaActual();
    void vuelca();
    void verifica(const QString& error);
    void acaba(const QString& error);
    void enHilo(std::function<void()> trabajo, std::function<void()> despues);
    void corre(const QStringList& argumentos, std::function<void(bool ok, const QString& salida)> despues);
    bool almacenVacio() const;
    QString esquemaDestino() const;

    Almacen& almacen_;
    const Configuracion& conf_;
    InfoRespaldo respaldo_;
    bool conConfiguracion_;
    QDateTime momento_;
    QString temporal_;
    FilasPorTabla filasCopia_;
    ResultadoRestauracion resultado_;
    QString programa_;
    std::atomic<int> porcentaje_{0};
    QString errorHilo_;
    QThread* hilo_ = nullptr;
    bool enCurso_ = false;
    bool conTrigramas_ = false;
};

// Una restauración entera, esperando su final. Lanza Aviso si falla.
ResultadoRestauracion Restaura(Almacen& almacen, const Configuracion& conf, const QString& ruta, bool conConfiguracion,
                               const QDateTime& momento);

} // namespace orv
