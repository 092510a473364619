#pragma once
// Ficha del artículo: alta (id 0) o modificación. Propone el código al elegir el rubro, cuenta
// precio de venta y margen mientras se escribe, elige la foto de la carpeta IMAGES y graba al
// aceptar.

#include "app/configuracion.h"
#include "app/estado.h"
#include "articles/articulos.h"
#include "articles/matriz.h"
#include "store/almacen.h"

#include <QDialog>
#include <functional>

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QFrame;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;
class QToolButton;

namespace orv {

class PanArticulo : public QDialog {
    Q_OBJECT
public:
    // idArticulo 0: artículo nuevo.
    PanArticulo(Almacen& almacen, const EstadoAplicacion& estado, const Configuracion& conf, qint64 idArticulo,
                QWidget* padre = nullptr);

    // Puertas a otras pantallas: el botón queda habilitado sólo si la función está puesta.
    // Rubro nuevo (OsenXPButton1): después se vuelve a llenar la lista de rubros.
    void fijaNuevoRubro(std::function<void()> f);
    // Proveedor nuevo (OsenXPButton2): después se vuelve a llenar la lista de proveedores.
    void fijaNuevoProveedor(std::function<void()> f);
    // "Generar matriz..." (Command4), sólo para un artículo nuevo: recibe el código, la
    // descripción, la existencia y las filas ya generadas, y devuelve las filas nuevas (nada si el
    // usuario desistió). Con filas, "&Aceptar" graba un artículo por fila.
    using GeneradorMatriz = std::function<std::optional<QList<VarianteMatriz>>(
        const QString& codigo, const QString& descripcion, const QString& existencia, const QList<VarianteMatriz>& filas)>;
    void fijaGeneraMatriz(GeneradorMatriz f);
    void generaMatriz();
    const QList<VarianteMatriz>& matriz() const { return matriz_; }

    // El artículo grabado (después de aceptar) o el que se editaba; 0 si no se grabó uno nuevo.
    qint64 idArticulo() const { return id_; }
    // Lo que la ficha muestra, como lo grabaría "&Aceptar".
    DatosArticulo datos() const;

    // Elige el archivo de la foto a partir de una carpeta; vacío si se cancela. Por omisión, el
    // diálogo de archivos "Seleccione la imágen correspondiente".
    std::function<QString(const QString& carpeta)> eligeImagen;
    // "Seleccionar...": elige la foto en IMAGES de la carpeta de datos y la muestra.
    void seleccionaImagen();
    // Muestra la foto de la ruta (vacía: "<Foto>") y ajusta las barras al tamaño de la imagen.
    void muestraImagen(const QString& ruta);

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    void creaCampos();
    void armaCampos(QGridLayout* g);
    QWidget* armaImagen();
    void armaBotones(QBoxLayout* capa);
    void llenaRubros();
    void llenaProveedores();
    void aplicaDerechos();
    void carga(const DatosArticulo& d);
    void eligeRubro(int indice);
    void cambiaCosto();
    void cambiaVenta();
    void cambiaMargen();
    void cambiaCgoProveedor();
    void mueveImagen();
    void acepta();

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Configuracion& conf_;
    qint64 id_;
    bool margenConFoco_ = false; // txPorUt tiene el foco: el precio de venta no rehace el margen
    std::optional<QString> existenciaAlAbrir_;

    QComboBox* combo1_;  // rubro
    QComboBox* combo2_;  // proveedor
    QLabel* label2_;     // idRubro, oculto
    QLineEdit* text1_[7];
    QLineEdit* txPorUt_;
    QLabel* lblCosto_;
    QLabel* label3_;
    QCheckBox* chkIgualCodigo_;
    QCheckBox* check1_;
    QCheckBox* chkMatPrim_;
    QFrame* marcoImagen_;
    QLabel* image2_;
    QScrollBar* vert_;
    QScrollBar* horiz_;
    QLabel* lblimagen_;
    QPushButton* command1_;
    QPushButton* command2_;
    QPushButton* command3_;
    QPushButton* command4_;
    QToolButton* nuevoRubro_;
    QToolButton* nuevoProveedor_;
    std::function<void()> alNuevoRubro_;
    std::function<void()> alNuevoProveedor_;
    GeneradorMatriz alGeneraMatriz_;
    QList<VarianteMatriz> matriz_;
    QLabel* lblMatriz_;
};

} // namespace orv
