#pragma once
// Pantalla que corre una tarea larga (un respaldo, una restauración): mientras corre, ni la cruz
// ni Esc la cierran, porque la tarea quedaría a medias.

#include <QCloseEvent>
#include <QDialog>

namespace orv {

class DialogoConTarea : public QDialog {
public:
    using QDialog::QDialog;
    virtual bool enCurso() const = 0;

protected:
    void closeEvent(QCloseEvent* e) override {
        if (enCurso()) e->ignore();
        else QDialog::closeEvent(e);
    }
    void reject() override {
        if (!enCurso()) QDialog::reject();
    }
};

} // namespace orv
