#pragma once
// panCorteCaja, "Corte diario de caja": los totales de una fecha por forma de pago y por cuenta,
// de un usuario o de todos, el arqueo de lo contado, la hoja impresa y el cierre del día.

#include "app/estado.h"
#include "cash/corte.h"
#include "store/almacen.h"
#include "store/reloj.h"

#include <QDialog>
#include <functional>

class QComboBox;
class QDateEdit;
class QLineEdit;
class QPrinter;
class QPushButton;
class QTableWidget;

namespace orv {

class panCorteCaja : public QDialog {
    Q_OBJECT
public:
    panCorteCaja(Almacen& almacen, const EstadoAplicacion& estado, const Reloj& reloj, QWidget* padre = nullptr);

    void calcula(); // OsenXPButton1 "OK !"
    void imprime(); // OsenXPButton2
    void cierra();  // OsenXPButton4
    // La hoja del cierre, tal como está en la pantalla, en la impresora dada (o un PDF).
    void imprimeEn(QPrinter& impresora);

    // Prepara la impresora; falso si el usuario canceló. Las pruebas y las capturas lo reemplazan.
    std::function<bool(QPrinter&)> eligeImpresora;

    QDateEdit* fecha() const { return dt1_; }
    QComboBox* usuario() const { return cboUsuario_; }
    QTableWidget* arqueo() const { return tablaArqueo_; }
    QPushButton* botonCerrar() const { return cerrar_; }

private:
    QWidget* armaListas();
    QWidget* armaArqueo();
    void muestraResumen();
    void muestraArqueo(const QList<LineaArqueo>& lineas, bool editable);
    void cambiaContado(int fila);
    // Las líneas del arqueo con lo que se escribió; lanza un aviso si un importe está mal escrito.
    QList<LineaArqueo> leeArqueo() const;
    std::optional<qint64> usuarioElegido() const;

    Almacen& almacen_;
    const EstadoAplicacion& estado_;
    const Reloj& reloj_;
    ResumenDia resumen_;
    QList<LineaArqueo> esperado_;
    bool calculado_ = false;
    QDateEdit* dt1_;
    QComboBox* cboUsuario_;
    QTableWidget* listVentas_ = nullptr;
    QTableWidget* listcaja_ = nullptr;
    QTableWidget* tablaArqueo_ = nullptr;
    QLineEdit* txTotVentas_ = nullptr;
    QLineEdit* txTotEntrada_ = nullptr;
    QLineEdit* txTotSalida_ = nullptr;
    QPushButton* cerrar_;
};

} // namespace orv
