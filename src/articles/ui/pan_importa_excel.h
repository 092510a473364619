#pragma once
// "Importar datos de Planillas de cálculo": el asistente de tres pasos que migra una hoja de una
// planilla a artículos, clientes o proveedores. Paso 1, el archivo, la hoja y la tabla destino;
// Paso 2, el mapa de columnas y valores especiales hacia los campos; Paso 3, la hoja en una grilla
// editable, la importación por lotes con su avance y el informe de errores.

#include "app/configuracion.h"
#include "articles/importacion.h"
#include "store/almacen.h"

#include <QDialog>
#include <memory>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTabWidget;
class QTableView;
class QTableWidget;

namespace orv {

class ModeloHoja;

class panImportaExcel : public QDialog {
    Q_OBJECT
public:
    panImportaExcel(Almacen& almacen, const Configuracion& conf, QWidget* padre = nullptr);
    ~panImportaExcel() override;

    // Command8 "Abrir..": lee la hoja de Combo3 del archivo de Text1 en la grilla y sus columnas en List1.
    bool abreHoja();
    // Text1 con un archivo: sus hojas en Combo3.
    void fijaArchivo(const QString& ruta);
    // Command4 "Agregar a la migración".
    void agregaAlMapa();
    // Command7: quita la fila actual del mapa.
    void quitaDelMapa();
    // Command2 "Importar": empieza la importación; los lotes siguen con la ventana viva.
    void importa();
    // Cancelar: deja de importar después del lote en curso.
    void cancela() { cancelar_ = true; }
    bool importando() const { return importacion_ != nullptr; }
    // El mapa como está en MS1.
    QList<Mapeo> mapa() const;

private:
    QWidget* armaPaso1();
    QWidget* armaPaso2();
    QWidget* armaEspecial(QWidget* padre);
    QWidget* armaPaso3();
    void eligeTabla();
    void eligeArchivo();
    void eligeOrigen();
    void agregaFilaMapa(const Mapeo& m);
    void siguienteLote();
    void terminaImportacion();
    void reject() override;

    Almacen& almacen_;
    const Configuracion& conf_;
    QTabWidget* pasos_ = nullptr;
    // Paso 1
    QLineEdit* text1_ = nullptr;
    QComboBox* combo3_ = nullptr;
    QComboBox* combo1_ = nullptr;
    // Paso 2
    QLabel* label12_ = nullptr;
    QRadioButton* option3_ = nullptr;
    QRadioButton* option4_ = nullptr;
    QRadioButton* option1_ = nullptr;
    QRadioButton* option2_ = nullptr;
    QListWidget* list1_ = nullptr;
    QGroupBox* frame1_ = nullptr;
    QLineEdit* txCampoFijo_ = nullptr;
    QLineEdit* txComenzarEn_ = nullptr;
    QLineEdit* txIncrementar_ = nullptr;
    QComboBox* combo2_ = nullptr;
    QComboBox* cboMascara_ = nullptr;
    QTableWidget* ms1_ = nullptr;
    // Paso 3
    ModeloHoja* modelo_ = nullptr;
    QTableView* gx1_ = nullptr;
    QListWidget* list3_ = nullptr;
    QProgressBar* prb1_ = nullptr;
    QPushButton* command2_ = nullptr;
    QPushButton* cmdCancelar_ = nullptr;
    QPushButton* command3_ = nullptr;
    QLabel* resultado_ = nullptr;

    std::unique_ptr<Importacion> importacion_;
    qsizetype erroresMostrados_ = 0;
    bool cancelar_ = false;
};

} // namespace orv
