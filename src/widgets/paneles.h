#pragma once
// Piezas comunes de los paneles de la ventana principal.

#include "store/almacen.h"

#include <QString>
#include <QVariantList>
#include <QList>
#include <QPair>
#include <QStyle>
#include <QWidget>
#include <initializer_list>
#include <optional>

class QBoxLayout;
class QDateEdit;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace orv {

class Grilla;

// Título grande de un panel.
QLabel* TituloPanel(const QString& texto, QWidget* padre);
// Etiqueta que se pulsa como un vínculo (las entradas de los paneles).
QPushButton* Enlace(const QString& nombre, const QString& texto, QWidget* padre);
// Disposición de un panel de tema: el título arriba, la fila de búsquedas (o filtros) y, debajo, la
// grilla con la columna de botones a su derecha. La grilla se estira. Devuelve la capa, para un pie.
QVBoxLayout* DisponePanel(QWidget* panel, const QString& titulo, QLayout* busquedas, QWidget* grilla, QLayout* botones);
// Caja de búsqueda de un panel: con su leyenda adentro, su explicación y el botón para vaciarla.
QLineEdit* CajaBusqueda(const QString& nombre, const QString& leyenda, const QString& explicacion, int anchoMinimo,
                        QWidget* padre);
// Botón de la columna de un panel: no responde a Enter por sí solo y tiene un ancho mínimo parejo.
QPushButton* BotonPanel(const QString& nombre, const QString& texto, QWidget* padre);
// El mismo botón para una pantalla que todavía no forma parte del programa: se ve apagado y lo dice.
QPushButton* BotonPosterior(const QString& nombre, const QString& texto, QWidget* padre);
// Botón sólo con un ícono del estilo (actualizar, vista previa) y su leyenda.
QPushButton* BotonIcono(const QString& nombre, QStyle::StandardPixmap dibujo, const QString& ayuda, QWidget* padre);
// La clave de la fila actual de la grilla (una fila de datos con ese campo no vacío); nullopt si no hay.
std::optional<qint64> ClaveActual(const Grilla& grilla, const QString& campo);
// Fecha con calendario desplegable, dd/MM/yyyy.
QDateEdit* CampoFecha(const QString& nombre, QWidget* padre);
// Campo de sólo lectura para un total, alineado a la derecha.
QLineEdit* CampoTotal(const char* nombre, QWidget* padre, int anchoMaximo = 150);
// El saldo de una cuenta: un total en negrita, de 150 a 170 puntos de ancho.
QLineEdit* CampoSaldo(const char* nombre, QWidget* padre);
// El título de un diálogo (el nombre de la persona o el tema), en negrita y más grande.
QLabel* TituloDialogo(const char* nombre, const QString& texto, QWidget* padre);

// Un botón de texto con su nombre al final de la fila (o columna) de botones; Enter no lo pulsa.
QPushButton* BotonEnFila(QBoxLayout* fila, const char* nombre, const QString& texto, QWidget* padre, int anchoMinimo = 100);

// Panel de lista: título y una grilla de sólo lectura sobre una consulta.
class PanelLista : public QWidget {
    Q_OBJECT
public:
    PanelLista(Almacen& almacen, const QString& titulo, const QString& nombreGrilla, QWidget* padre = nullptr);
    Grilla* grilla() const { return grilla_; }
    struct Columna {
        const char* campo;
        const char* titulo; // UTF-8
        int ancho;          // en píxeles; 0 deja el de siempre
        bool dinero = false;
    };
    // Títulos, anchos y máscara de moneda de las columnas (se aplican al ligar la consulta; una
    // distribución guardada por el usuario manda sobre los anchos).
    void fijaColumnas(std::initializer_list<Columna> columnas, const QString& mascaraMoneda);
    // Liga la grilla; un error del almacén deja la grilla vacía (la ventana carga igual).
    void fijaConsulta(const QString& sql, const QVariantList& parametros = {});

    // Títulos y máscara de moneda de las columnas de una grilla cualquiera; devuelve los anchos
    // pedidos, para aplicarlos cuando la grilla ya tiene su consulta.
    static QList<QPair<QString, int>> fijaColumnas(Grilla& grilla, std::initializer_list<Columna> columnas,
                                                   const QString& mascaraMoneda);

private:
    Grilla* grilla_;
    QList<QPair<QString, int>> anchos_;
};

} // namespace orv
