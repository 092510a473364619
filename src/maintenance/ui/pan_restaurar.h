#pragma once
// "Restaurar B.Datos": los respaldos de una carpeta con su fecha, hora y tamaño; el elegido vuelve
// a ser el almacén (y, si se pide, la configuración) después de confirmar. Antes se respalda el
// almacén actual. Terminada, el programa se cierra para volver a abrirse sobre lo restaurado.

#include "app/configuracion.h"
#include "maintenance/restauracion.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include "maintenance/ui/dialogo_tarea.h"
#include <QList>

class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace orv {

class panRestaurar : public DialogoConTarea {
    Q_OBJECT
public:
    panRestaurar(Almacen& almacen, const Configuracion& conf, const Reloj& reloj, QWidget* padre = nullptr);

    void llenaLista(const QString& carpeta);
    void buscaUbicacion();   // Command3
    void otroArchivo();      // Command4
    void restaurar();        // Command1
    bool restaurado() const { return restaurado_; }
    bool enCurso() const override { return tarea_ != nullptr; }

Q_SIGNALS:
    void restauracionTerminada(bool ok);

private:
    void agrega(const InfoRespaldo& r);
    void termina(bool ok, const QString& detalle, const InfoRespaldo& r);
    void habilita(bool si);

    Almacen& almacen_;
    const Configuracion& conf_;
    const Reloj& reloj_;
    QLineEdit* carpeta_;
    QTreeWidget* lista_;
    QList<InfoRespaldo> respaldos_;
    QCheckBox* conConfiguracion_;
    QProgressBar* avance_;
    QLabel* etapa_;
    QPushButton* restaurar_;
    QPushButton* buscar_;
    QPushButton* otro_;
    QPushButton* salir_;
    Restauracion* tarea_ = nullptr;
    bool restaurado_ = false;
};

} // namespace orv
