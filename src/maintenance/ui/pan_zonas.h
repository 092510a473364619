#pragma once
// Pantallas chicas de la configuración: "Configuracion de red" (número de esta terminal), "Zonas y
// Localidades" y las situaciones frente al IVA con su edición.

#include "app/configuracion.h"
#include "app/estado.h"
#include "maintenance/zonas_iva.h"
#include "store/almacen.h"
#include "widgets/dialogo_lista.h"

#include <QDialog>
#include <array>
#include <optional>

class QLineEdit;
class QTabWidget;

namespace orv {

class Grilla;

class PanConfRed : public QDialog {
    Q_OBJECT
public:
    PanConfRed(const Configuracion& conf, EstadoAplicacion& estado, QWidget* padre = nullptr);
    void acepta(); // "&Aceptar": si el número se lee, se graba y rige enseguida
    QLineEdit* campoId() const { return txIdRed_; }

private:
    const Configuracion& conf_;
    EstadoAplicacion& estado_;
    QLineEdit* txIdRed_;
};

class panZonas : public QDialog {
    Q_OBJECT
public:
    explicit panZonas(Almacen& almacen, QWidget* padre = nullptr);
    // Agrega el nombre escrito en el campo de la pestaña; "&Eliminar" pregunta y borra la fila actual.
    void agrega(ListaZonas l);
    void elimina(ListaZonas l);
    Grilla* grilla(ListaZonas l) const { return grillas_[size_t(l)]; }
    QLineEdit* nuevo(ListaZonas l) const { return nuevos_[size_t(l)]; }
    QTabWidget* pestanias() const { return pestanias_; }

private:
    QWidget* armaPestania(ListaZonas l, const char* sufijo, const QString& rotulo);

    Almacen& almacen_;
    QTabWidget* pestanias_;
    std::array<Grilla*, 2> grillas_{};
    std::array<QLineEdit*, 2> nuevos_{};
};

class panEdSitIva : public QDialog {
    Q_OBJECT
public:
    // Sin id, una situación nueva.
    panEdSitIva(Almacen& almacen, std::optional<qint64> idTipoIva, QWidget* padre = nullptr);
    void acepta();
    QLineEdit* nombre() const { return txNombre_; }
    QLineEdit* clave() const { return txClave_; }

private:
    Almacen& almacen_;
    std::optional<qint64> id_;
    QLineEdit* txNombre_;
    QLineEdit* txClave_;
};

class panSitIvas : public DialogoLista {
    Q_OBJECT
public:
    explicit panSitIvas(Almacen& almacen, QWidget* padre = nullptr);

private:
    bool edita(std::optional<qint64> id) override;
    void borraFila(qint64 id) override;
};

} // namespace orv
