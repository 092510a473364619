#pragma once
// Ventana principal: la columna de botones laterales, los paneles apilados en el mismo lugar, la
// página de bienvenida, la fecha y la línea de estado. Vive lo que vive el programa.

#include "app/configuracion.h"
#include "app/estado.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QMainWindow>
#include <QStringList>
#include <array>
#include <functional>

class QComboBox;
class QDateEdit;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTimer;

namespace orv {

class Grilla;
class PanelArticulos;
class PanelCaja;
class PanelClientes;
class PanelProveedores;
class PanelUsuarios;
class PanelInformes;
class PanelVenta;
class SalidaInformes;

class PanPrincipal : public QMainWindow {
    Q_OBJECT
public:
    static constexpr int kPaneles = 9;   // 0..7 con botón lateral (el 5 no tiene panel) y 8, usuarios
    static constexpr int kBienvenida = -1;

    PanPrincipal(Almacen& almacen, EstadoAplicacion& estado, const Configuracion& conf, const Reloj& reloj,
                 QWidget* padre = nullptr);
    ~PanPrincipal() override;

    // "Orvanta ver M.m.r | Usuario : <nombre>"
    static QString tituloVentana(const QString& nombreUsuario);
    // Archivos de distribución de las grillas, en la carpeta de datos.
    static QStringList archivosDistribucion();

    // Clic en un botón lateral (0..7).
    void botPrincipal(int indice);
    // Panel al frente: 0..8, o kBienvenida.
    int panelActual() const;
    bool modoPOS() const { return modoPOS_; }
    bool agrandada() const { return agrandada_; }

    // Apaga los controles que el nivel del usuario no permite. Corre una vez, al cargar.
    void aplicaNiveles();
    // "Maximizar" / "Restaurar" / "Salir", según el texto del botón.
    void command55();
    // "Reset Grillas": pregunta, borra las distribuciones y termina el programa.
    void resetGrillas();
    void guardaDistribuciones() const;
    // "Datos Locales": la pantalla y, al cerrarla, el impuesto guardado a la venta.
    void datosLocales();
    // La ayuda en el tema de esos nombres de objeto (el primero que un tema nombra), o en el primero.
    void abreAyuda(const QStringList& nombres);
    // Command57, Image4, Label1 y Label13: la ayuda del panel a la vista.
    void ayudaDelPanel();
    QString nombrePanelActual() const;

    // Qué hacer para terminar el proceso (las pruebas lo reemplazan).
    void fijaTerminacion(std::function<void(int)> f) { termina_ = std::move(f); }

    PanelVenta* panelVenta() const { return venta_; }
    PanelArticulos* panelArticulos() const { return articulos_; }
    PanelCaja* panelCaja() const { return caja_; }
    PanelInformes* panelInformes() const { return informes_; }
    // La salida de los informes: todos los informes y comprobantes pasan por ella.
    SalidaInformes* salidaInformes() const { return salida_; }
    PanelUsuarios* panelUsuarios() const { return usuarios_; }
    QWidget* panel(int indice) const;
    QPushButton* botonLateral(int indice) const { return botones_[size_t(indice)]; }

protected:
    void showEvent(QShowEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    void armaVentana();
    QWidget* armaBienvenida();
    QWidget* armaUtilidades();
    QWidget* armaInformes();
    void carga();
    void preparaSalidaInformes();
    void reiniciaVentaEnCurso();
    void cargaGrillas();
    void refrescaCaja();
    void agranda(bool si);
    void muestraPanel(QWidget* panel);
    void armaBarraLateral(QWidget* centro);
    void armaEncabezado(QWidget* centro);
    void armaPaneles(QWidget* centro);
    std::vector<std::pair<Grilla*, QString>> grillasConArchivo() const;

    Almacen& almacen_;
    EstadoAplicacion& estado_;
    const Configuracion& conf_;
    const Reloj& reloj_;
    std::function<void(int)> termina_;

    QFrame* barraLateral_ = nullptr;
    QFrame* encabezado_ = nullptr;
    QStackedWidget* pila_ = nullptr;
    QWidget* bienvenida_ = nullptr;
    std::array<QWidget*, kPaneles> paneles_{};
    std::array<QPushButton*, 8> botones_{};
    PanelArticulos* articulos_ = nullptr;
    PanelClientes* clientes_ = nullptr;
    PanelCaja* caja_ = nullptr;
    PanelProveedores* proveedores_ = nullptr;
    PanelVenta* venta_ = nullptr;
    PanelUsuarios* usuarios_ = nullptr;
    QLabel* fecha_ = nullptr;
    QLabel* saludo_ = nullptr;
    QTimer* timer1_ = nullptr;
    SalidaInformes* salida_ = nullptr;
    QComboBox* combo1_ = nullptr;
    QLineEdit* text10_ = nullptr;
    PanelInformes* informes_ = nullptr;

    bool primeraActivacion_ = false;
    bool modoPOS_ = false;
    bool agrandada_ = false;
    bool sinGuardar_ = false;
};

} // namespace orv
