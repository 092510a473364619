#pragma once
// "Generador de Matriz de artículos": una lista por característica y la grilla de las variantes
// por crear a partir del artículo base. "Ingresar" agrega la fila de los valores elegidos;
// "Todas las combinaciones", una fila por cada combinación de los valores elegidos.

#include "app/configuracion.h"
#include "articles/matriz.h"
#include "store/almacen.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTableWidget;

namespace orv {

class panGenMatriz : public QDialog {
    Q_OBJECT
public:
    // `filas`: las que ya se habían generado para esta ficha (se siguen desde la última).
    panGenMatriz(Almacen& almacen, const Configuracion& conf, const QString& codigo, const QString& descripcion,
                 const QString& existencia, const QList<VarianteMatriz>& filas, QWidget* padre = nullptr);

    // Falso si no hay características: ya se avisó y la pantalla no se muestra.
    bool listo() const { return listo_; }

    void ingresar();       // Command3 "Ingresar"
    void todas();          // cmdTodas "Todas las combinaciones"
    void quitar();         // Command4 "Quitar"
    void acepta();         // Command1 "&Aceptar"
    QList<VarianteMatriz> filas() const;

    // Las listas de valores, una por característica, en su orden.
    const QList<QListWidget*>& listas() const { return listCar_; }

private:
    QWidget* armaCaracteristicas(const QStringList& caracteristicas);
    QLayout* armaOpciones();
    QWidget* armaResultado();
    QLayout* armaBotones();
    OpcionesMatriz opciones() const;
    QList<Eleccion> elegidos(int lista) const;
    void agrega(const QList<VarianteMatriz>& filas);
    void limpiaElecciones();

    Almacen& almacen_;
    const Configuracion& conf_;
    bool listo_ = false;
    QString existencia_;
    QString siguiente_; // el código de la próxima fila (lblCgo)
    QLabel* lblCgo_;
    QLabel* lblDesc_;
    QLineEdit* txtSep_ = nullptr;
    QCheckBox* optTit_ = nullptr;
    QCheckBox* optEnDescripcion_ = nullptr;
    QList<QLabel*> tit_;
    QList<QListWidget*> listCar_;
    QPushButton* command3_ = nullptr;
    QTableWidget* msf_ = nullptr;
};

} // namespace orv
