#pragma once
// "Backup del Sistema": copia el almacén y la configuración de la máquina a una carpeta elegida
// (un pen drive, un disco de red), en dos archivos con la fecha y la hora. Una visita, un respaldo.

#include "app/configuracion.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include "maintenance/ui/dialogo_tarea.h"

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace orv {

class Respaldo;

class PanBackup : public DialogoConTarea {
    Q_OBJECT
public:
    PanBackup(Almacen& almacen, const Configuracion& conf, const Reloj& reloj, QWidget* padre = nullptr);

    void hacerBackup();      // Command1
    void buscaUbicacion();   // Command3
    bool enCurso() const override { return respaldo_ != nullptr; }

Q_SIGNALS:
    // El respaldo terminó (para quien espera sin mirar la pantalla).
    void respaldoTerminado(bool ok);

private:
    void termina(bool ok, const QString& detalle);

    Almacen& almacen_;
    const Configuracion& conf_;
    const Reloj& reloj_;
    QLineEdit* text1_;
    QLineEdit* text2_;
    QPushButton* hacer_;
    QPushButton* buscar_;
    QPushButton* salir_;
    QProgressBar* avance_;
    QLabel* hecho_;
    Respaldo* respaldo_ = nullptr;
};

} // namespace orv
