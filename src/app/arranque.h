#pragma once
// Secuencia de arranque: desde que se lanza el programa hasta la ventana principal.
//
// Los pasos corren siempre en el mismo orden. Lo que se ve en pantalla (mensajes, portada,
// ingreso, ventana) pasa por InterfazArranque, para poder conducir la secuencia sin ventanas.

#include "app/configuracion.h"
#include "app/estado.h"
#include "app/regional.h"
#include "store/almacen.h"
#include "store/aviso.h"
#include "store/reloj.h"

#include <QLockFile>
#include <QString>
#include <memory>

namespace orv {

class InterfazArranque {
public:
    virtual ~InterfazArranque() = default;
    virtual void mensaje(const QString& texto, const QString& titulo, Icono icono) = 0;
    // Sí/No; verdadero sólo para Sí.
    virtual bool pregunta(const QString& texto, const QString& titulo) = 0;
    // Portada modal; vuelve cuando se cierra.
    virtual void muestraPortada() = 0;
    // Ancho de la pantalla principal, en píxeles.
    virtual int anchoPantalla() = 0;
    virtual SeparadoresRegionales separadoresRegionales() = 0;
    // Ingreso de un usuario: completa idUsuarioActual, idNivelActual y NombreUsuarioActual.
    // Falso si no ingresó nadie.
    virtual bool login(Almacen& almacen, EstadoAplicacion& estado) = 0;
    // Muestra la ventana principal (no modal) y vuelve.
    virtual void muestraVentana(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf) = 0;
};

// Cómo terminó la secuencia.
enum class FinArranque {
    Ventana,           // la ventana principal quedó abierta: sigue el bucle de eventos
    OtraInstancia,     // ya hay otro programa abierto sobre la misma carpeta de datos
    SinAlmacen,        // no se pudo abrir el almacén, o está dañado
    AlmacenVacio,      // BASE.db existe vacío y el usuario no quiso preparar en él un almacén nuevo
    SinActualizar,     // falló la actualización del esquema, o el almacén es de un programa más nuevo
    RegionalRechazado, // el usuario no aceptó seguir con otro formato regional
    SinIngreso,        // nadie ingresó
};

// Código de salida del proceso para cada final (0 para los que eligió el usuario).
int codigoSalida(FinArranque fin);

inline const QString kMensajeSinAlmacen = QStringLiteral("No se puede conectar a la base de datos!");
inline const QString kTituloSinAlmacen = QStringLiteral("La conexión falló");
inline const QString kMensajeOtraInstancia =
    QStringLiteral("Error, el programa ya está ejecutándose, por favor maximice la ventana correspondiente !!");
inline const QString kMensajePantalla = QStringLiteral(
    "ATENCION : Para poder visualizar el sistema en toda su magnitud, debe configurar la pantalla en una "
    "resolución de 800 x 600 pixels o superior. Para ello, dirijase al Panel de control de Windows, elija "
    "Pantalla y en la hojuela Configuración realize el cambio correspondiente.");
inline const QString kTituloPantalla = QStringLiteral("Visualización de Video");
inline const QString kArchivoAlmacen = QStringLiteral("BASE.db");
inline const QString kArchivoBloqueo = QStringLiteral("orvanta.lock");

class Arranque {
public:
    Arranque(const Configuracion& conf, const Reloj& reloj, InterfazArranque& ui);
    ~Arranque();
    Arranque(const Arranque&) = delete;
    Arranque& operator=(const Arranque&) = delete;

    // Corre la secuencia completa. Nunca lanza: toda falla termina en un mensaje y un final.
    FinArranque ejecuta();

    EstadoAplicacion& estado() { return estado_; }
    const EstadoAplicacion& estado() const { return estado_; }
    // El almacén abierto (nulo si no se llegó a abrir).
    Almacen* almacen() const { return almacen_.get(); }

    // Terminal: el valor de IdRed si es numérico; si no, los segundos del reloj, que quedan grabados.
    static qint32 LeeIdRed(const Configuracion& conf, const Reloj& reloj);
    // Dónde está el almacén: el URI de PostgreSQL de "BaseDatos" o <carpeta>/BASE.db.
    static QString destinoAlmacen(const Configuracion& conf);
    // La carpeta existe (o se pudo crear, sólo para el dueño) y admite escritura.
    static bool carpetaUtilizable(const QString& carpeta);
    // Texto del mensaje de falla al abrir o actualizar el almacén.
    static QString textoFallaAlmacen(const QString& inicio, const ErrorAlmacen& e, int linea);
    // Almacén SQLite dañado: qué se encontró y cómo volver a trabajar.
    static QString textoAlmacenDanado(const QString& archivo, const ErrorAlmacen& e);
    // Almacén actualizado por un programa más nuevo: las dos versiones.
    static QString textoAlmacenMasNuevo(int delAlmacen, int delPrograma);
    // Pregunta ante un BASE.db de 0 bytes.
    static QString textoAlmacenVacio(const QString& archivo);

private:
    void leeConfiguracion();
    bool otraInstancia();
    bool abreAlmacen();
    bool aceptaAlmacenVacio();
    bool actualiza();
    bool controlRegional();

    const Configuracion& conf_;
    const Reloj& reloj_;
    InterfazArranque& ui_;
    EstadoAplicacion estado_;
    std::unique_ptr<QLockFile> bloqueo_;
    std::unique_ptr<Almacen> almacen_;
};

} // namespace orv
