#pragma once
// Salida de los informes: el destino elegido en la ventana principal (Combo1, arriba, junto a la
// fecha) y las copias (Text10) quedan para todos los informes que siguen, los lance la pantalla
// que los lance, hasta que el destino se cambie. Una sola instancia, en la ventana principal.
//
//   0 - A una ventana     visor con páginas, zoom, impresión y exportación
//   1 - A la impresora    diálogo de impresión con las copias de Text10
//   2 - A un archivo      PDF, HTML, XLSX, ODT o CSV según la extensión elegida
//   3 - Enviar por e-mail PDF adjunto al destinatario de la configuración
//   4 - Vista previa      vista previa de impresión

#include "app/configuracion.h"
#include "app/estado.h"
#include "reports/informe.h"
#include "reports/ui/visor_informe.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QObject>
#include <QPointer>
#include <functional>

class QPrinter;
class QWidget;

namespace orv {



class SalidaInformes : public QObject {
    Q_OBJECT
public:
    enum Destino { Ventana = 0, Impresora = 1, Archivo = 2, Correo = 3, VistaPrevia = 4 };

    SalidaInformes(Almacen& almacen, const Configuracion& conf, const EstadoAplicacion& estado, const Reloj& reloj,
                   QWidget* ventana);

    // Cambio de Combo1: el destino es la cifra del comienzo del texto; las copias, las de Text10.
    // Con el correo toma el asunto, el mensaje y el destinatario de la configuración.
    void fijaDestino(const QString& textoCombo, const QString& copias);
    // Cambio de Text10.
    void fijaCopias(const QString& copias);
    // Vuelve al estado inicial: a una ventana, una copia, sin datos de correo.
    void reinicia();
    // Fija el destino sin pasar por Combo1 (el faltante va siempre a una ventana).
    void fijaDestino(Destino d) { destino_ = d; }
    // Vuelve a tomar el destino y las copias de la última elección de Combo1.
    void restableceDestino() { fijaDestino(textoCombo_, textoCopias_); }

    Destino destino() const { return destino_; }
    int copias() const { return copias_; }
    const QString& asuntoCorreo() const { return asunto_; }
    const QString& mensajeCorreo() const { return mensaje_; }
    const QString& destinatarioCorreo() const { return destinatario_; }
    QString carpetaDatos() const { return conf_.carpetaDatos(); }
    const Configuracion& configuracion() const { return conf_; }
    const EstadoAplicacion& estado() const { return estado_; }

    // Arma el informe `nombre` (archivo *.rpt: la copia de la carpeta de datos o la del programa,
    // o una ruta completa) con la selección y lo manda al destino vigente. Lanza Aviso si la
    // definición falta o no se puede leer, o si la salida falla. Devuelve falso si el usuario
    // desistió (canceló la impresora o el archivo).
    bool emite(const QString& nombre, const Seleccion& seleccion);
    // Lo mismo, mostrando el error en pantalla. Verdadero si el informe salió.
    bool imprime(const QString& nombre, const Seleccion& seleccion);
    // Un comprobante por su plantilla (la ruta guardada en el tipo, o el nombre de una definición)
    // con la selección de su id, al destino vigente. Cualquier falla dice "Error en la lectura de
    // la plantilla : " + plantilla, salvo la del correo, que dice su motivo; el comprobante ya está
    // guardado y se puede reimprimir.
    bool imprimeComprobante(const QString& plantilla, qint64 idComprobante);
    // Como PDF adjunto a un destinatario dado, con su asunto y su mensaje (no los de la
    // configuración). Lanza Aviso con el motivo si el envío falla.
    void enviaPorCorreo(const QString& nombre, const Seleccion& seleccion, const QString& para, const QString& nombrePara,
                        const QString& asunto, const QString& mensaje);
    // A un archivo dado, sin preguntar: la extensión dice el formato.
    void exporta(const QString& nombre, const Seleccion& seleccion, const QString& archivo);

    // El último visor abierto (destino 0), mientras siga abierto.
    VisorInforme* ultimoVisor() const { return visor_; }

    // Puntos de interacción que las pruebas reemplazan. Por omisión, los diálogos del sistema.
    // Prepara la impresora (copias ya puestas); falso si el usuario canceló.
    std::function<bool(QPrinter&)> eligeImpresora;
    // Nombre del archivo de salida para el destino 2; vacío si el usuario canceló.
    std::function<QString(const QString& titulo)> eligeArchivo;
    // Envío del PDF por correo (destino 3): destinatario, nombre, asunto, mensaje, adjunto.
    std::function<void(const QString&, const QString&, const QString&, const QString&, const QString&)> enviaCorreo;

private:
    DefinicionInforme definicion(const QString& nombre) const;
    InformeArmado arma(const DefinicionInforme& d, const Seleccion& s) const;
    void guarda(const DefinicionInforme& d, const Seleccion& s, const QString& archivo) const;
    void correo(const DefinicionInforme& d, const QString& titulo, const Seleccion& seleccion, const QString& para,
                const QString& nombrePara, const QString& asunto, const QString& mensaje);

    Almacen& almacen_;
    const Configuracion& conf_;
    const EstadoAplicacion& estado_;
    const Reloj& reloj_;
    QWidget* ventana_;
    Destino destino_ = Ventana;
    int copias_ = 1;
    QString asunto_;
    QString mensaje_;
    QString destinatario_;
    QString nombreDestinatario_;
    QString textoCombo_;
    QString textoCopias_;
    QPointer<VisorInforme> visor_;
};

// Pregunta por un archivo para guardar un informe (PDF, HTML, XLSX, ODT, CSV). Si ya existe,
// "El archivo <nombre> ya existe, desea sobreescribirlo?" (Sí/No/Cancelar, "Atención"): Sí lo
// borra; No y Cancelar desisten. Vacío si se desistió.
QString EligeArchivoInforme(QWidget* padre, const QString& titulo, const QString& carpeta);
// La misma pregunta sobre un nombre ya elegido. Verdadero si se puede escribir.
bool ConfirmaSobreescribir(const QString& archivo, QWidget* padre);

} // namespace orv
