#pragma once
// Panel "Articulos" de la ventana principal: la grilla del catálogo con sus tres búsquedas (código y
// código de proveedor mueven la grilla, descripción la filtra), los botones de la ficha, el stock,
// los rubros y los informes, y la ventana de la foto que sigue a la fila actual.

#include "app/configuracion.h"
#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QSqlRecord>
#include <QWidget>
#include <functional>
#include <optional>

class QCheckBox;
class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace orv {

class Grilla;
class SalidaInformes;
class panFoto;

// Lo que el panel avisa a la ventana que lo contiene.
struct AccionesArticulos {
    // Se agregó, cambió o borró un artículo (la ventana vuelve a llenar la lista de la venta).
    std::function<void()> articulosCambiados;
};

class PanelArticulos : public QWidget {
    Q_OBJECT
public:
    PanelArticulos(Almacen& almacen, const EstadoAplicacion& estado, const Configuracion& conf, const Reloj& reloj,
                   SalidaInformes& salida, AccionesArticulos acciones, QWidget* padre = nullptr);

    Grilla* grilla() const { return grilla_; }

    // Al abrir la ventana: la lista completa (o, sin artículos con rubro, todos los que hay).
    void carga();

    // ResetFiltroArticulos: la lista completa, si tiene alguna fila.
    void reseteaFiltro();
    // Filtro por descripción (cada cambio de Text11).
    void filtraDescripcion(const QString& texto);

    void nuevo();        // Command1
    // La ficha de un artículo nuevo abierta desde otra pantalla (la compra): su id, o 0 si no se grabó.
    qint64 articuloNuevo();
    void editar();       // Command3 y doble clic
    void quitar();       // Command2
    void movStock();     // Command5
    void faltante();     // Command27
    void rubros();       // Command6
    void ajustarInventario(); // Command52
    void listaPrecios(); // Command45
    void cambioPrecios(); // Command37
    void produccion();   // Command35
    void refresca();     // Command4
    void muestraFoto(bool si); // chkMuesFoto

    panFoto* foto() const { return foto_; }

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    QHBoxLayout* armaBusquedas();
    QVBoxLayout* armaBotones();
    void armaGrilla();
    bool abreFicha(qint64 id);
    QPushButton* boton(const char* nombre, const QString& texto, void (PanelArticulos::*accion)());
    // Al tomar el foco Text1 (o después de "Mov. Stock"): reinicio, búsquedas vacías y "Mov.
    // Stock" como botón de Enter.
    void entraCodigo();
    void entraCgoProveedor();
    // El id de la fila actual si es una fila de datos con id.
    std::optional<qint64> idActual() const;
    void cambiados();
    void sigueFoto();

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Configuracion& conf_;
    const Reloj& reloj_;
    SalidaInformes& salida_;
    AccionesArticulos acciones_;
    Grilla* grilla_ = nullptr;
    QLineEdit* text1_ = nullptr;
    QLineEdit* text15_ = nullptr;
    QLineEdit* text11_ = nullptr;
    QPushButton* command3_ = nullptr;
    QPushButton* command5_ = nullptr;
    QCheckBox* chkMuesFoto_ = nullptr;
    panFoto* foto_ = nullptr;
    bool anchosPuestos_ = false;
    qint64 ultimoGrabado_ = 0; // el artículo de la última ficha aceptada
};

} // namespace orv
